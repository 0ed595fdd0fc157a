#pragma once
#include "base/CString.h"
#include "base/Pool.h"
#include "base/RecordArray.h"

/// A property with an item and a comment: its key and its value.
class CGProperty : public laminate::Pooled {
 public:
  CGProperty() = default;
  CGProperty(const CString& sItem, const CString& sComment) : m_sItem(sItem), m_sComment(sComment) {}
  CGProperty(const CGProperty&) = default;
  CGProperty& operator=(const CGProperty&) = default;
  virtual ~CGProperty() = default;

  CString GetItem() const { return m_sItem; }
  CString GetComment() const { return m_sComment; }
  void SetItem(const CString& s) { m_sItem = s; }
  void SetComment(const CString& s) { m_sComment = s; }
  /// A copy that the caller owns.
  CGProperty* clone() const { return new CGProperty(*this); }

  /// Both texts, exactly.
  bool operator==(const CGProperty& other) const {
    return this == &other || (m_sItem == other.m_sItem && m_sComment == other.m_sComment);
  }
  bool operator!=(const CGProperty& other) const { return !(*this == other); }

  CString m_sItem;
  CString m_sComment;
};

/// Owns its properties; copied and compared with them.
class CGPropertyArray : public laminate::ClonedArray<CGProperty, CGPropertyArray> {};
