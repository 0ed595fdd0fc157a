#pragma once
#include "base/CArray.h"
#include "base/CString.h"

/// The platform's array of strings: value semantics by `Copy` and `Append`; element access out of range raises.
/// In an archive: the count in `WriteCount` form, then each string.
class CStringArray : public CArray<CString, const CString&> {
 public:
  CStringArray() = default;
  /// A list that is a member of a record is copied with it.
  CStringArray(const CStringArray& s) : CArray() { Append(s); }
  CStringArray& operator=(const CStringArray& s) {
    Copy(s);
    return *this;
  }
  void Serialize(CArchive& ar) override;

  friend bool operator==(const CStringArray& a, const CStringArray& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end());
  }
};
