#pragma once
#include "base/CArray.h"

/// Array of 32-bit integers with value semantics; compares by size and then element by element.
class CArrayN : public CArray<int, int> {
 public:
  CArrayN() = default;
  CArrayN(const CArrayN& s) : CArray() { Append(s); }
  CArrayN& operator=(const CArrayN& s) {
    Copy(s);
    return *this;
  }
  friend bool operator==(const CArrayN& a, const CArrayN& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end());
  }
};
