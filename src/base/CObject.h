#pragma once

class CArchive;

/// Name and size of a class, as `CObject::GetRuntimeClass` tells them.
struct CRuntimeClass {
  const char* m_lpszClassName;
  int m_nObjectSize;
};

/// Root of the platform's classes. It cannot be copied; classes of value semantics declare their own copy.
class CObject {
 public:
  virtual CRuntimeClass* GetRuntimeClass() const;
  virtual ~CObject() = default;
  /// Stores or loads the object; this base holds nothing.
  virtual void Serialize(CArchive& ar);
  /// Two debugging aids of the platform, which do nothing here.
  virtual void AssertValid() const {}
  virtual void Dump() const {}

  CObject(const CObject&) = delete;
  CObject& operator=(const CObject&) = delete;

 protected:
  CObject() = default;
};
