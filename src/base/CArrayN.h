#pragma once
#include "base/CArray.h"

/// Array of 32-bit integers with value semantics; compares by size and then element by element.
class CArrayN : public CArray<int, int> {
 public:
  CArrayN() = default;
  CArrayN(const CArrayN& s) : CArray() { Append(s); }
  CArrayN(CArrayN&& s) noexcept : CArray() { Swap(s); }
  CArrayN& operator=(const CArrayN& s) {
    Copy(s);
    return *this;
  }
  CArrayN& operator=(CArrayN&& s) noexcept {
    Swap(s);
    return *this;
  }
  friend bool operator==(const CArrayN& a, const CArrayN& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end());
  }
};

/// Array of such arrays, which it holds by value; compares by size and then element by element.
class CArrayArrayN : public CArray<CArrayN, CArrayN&> {
 public:
  CArrayArrayN() = default;
  CArrayArrayN(const CArrayArrayN& s) : CArray() { Append(s); }
  CArrayArrayN(CArrayArrayN&& s) noexcept : CArray() { Swap(s); }
  CArrayArrayN& operator=(const CArrayArrayN& s) {
    Copy(s);
    return *this;
  }
  CArrayArrayN& operator=(CArrayArrayN&& s) noexcept {
    Swap(s);
    return *this;
  }
  friend bool operator==(const CArrayArrayN& a, const CArrayArrayN& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end());
  }
};
