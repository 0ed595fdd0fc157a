#pragma once
#include "base/CString.h"
#include "base/Pool.h"
#include "base/RecordArray.h"

/// A property with an item, a comment and the kind of form that it came from, such as "propertyS". In the design data
/// the item is a key and the comment its value.
class CLProperty : public laminate::Pooled {
 public:
  CLProperty() = default;
  CLProperty(const CString& sItem, const CString& sComment, const CString& sKind = CString())
      : m_sItem(sItem), m_sComment(sComment), m_sKind(sKind) {}
  CLProperty(const CLProperty&) = default;
  CLProperty& operator=(const CLProperty&) = default;
  virtual ~CLProperty() = default;

  CString GetItem() const { return m_sItem; }
  CString GetComment() const { return m_sComment; }
  CString GetKind() const { return m_sKind; }
  void SetItem(const CString& s) { m_sItem = s; }
  void SetComment(const CString& s) { m_sComment = s; }
  void SetKind(const CString& s) { m_sKind = s; }
  /// A copy that the caller owns.
  CLProperty* clone() const { return new CLProperty(*this); }

  /// All three texts, exactly.
  bool operator==(const CLProperty& other) const {
    return this == &other || (m_sItem == other.m_sItem && m_sComment == other.m_sComment && m_sKind == other.m_sKind);
  }
  bool operator!=(const CLProperty& other) const { return !(*this == other); }

  /// In an archive: item, comment and kind as strings, without a version.
  void Serialize(CArchive& ar) {
    if (ar.IsStoring()) {
      ar << m_sItem << m_sComment << m_sKind;
    } else {
      ar >> m_sItem >> m_sComment >> m_sKind;
    }
  }

  CString m_sItem;
  CString m_sComment;
  CString m_sKind;
};

/// Owns its properties; copied, compared and archived with them.
class CLPropertyArray : public laminate::RecordArray<CLProperty, CLPropertyArray> {};
