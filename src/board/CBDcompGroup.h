#pragma once
#include <cstdio>

#include "base/CExPtrArray.h"
#include "base/CString.h"
#include "base/CStringArray.h"
#include "base/Pool.h"

class CBDdrawObjArray;

namespace laminate {
class TextOut;
}

/// A named set of components, with shapes of its own.
class CBDcompGroup : public laminate::Pooled {
 public:
  CBDcompGroup();
  CBDcompGroup(const CBDcompGroup&) = delete;
  CBDcompGroup& operator=(const CBDcompGroup&) = delete;
  virtual ~CBDcompGroup();

  /// Writes the "compGroup" form; side and pen are written as constants. Always 0; a null stream raises
  /// `CInvalidArgException`.
  int nPrint2File(FILE* fp);
  void Write(laminate::TextOut& out);
  /// 1 if exactly that reference is in the list, else 0.
  int bIsExistReference(CString sReference);

  CString m_sName;
  CStringArray m_aList;  ///< references of components
  CString m_sSide;
  int m_nPen = 0;
  CBDdrawObjArray* m_pDrawObjArray;  ///< owned
};

class CBDcompGroupArray : public laminate::NamedArray<CBDcompGroup> {};
