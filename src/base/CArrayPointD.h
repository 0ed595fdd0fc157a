#pragma once
#include "base/CArray.h"
#include "base/CPointD.h"
#include "base/RecordArray.h"

/// Array of points, which it holds by value, with value semantics.
class CArrayPointD : public CArray<CPointD, CPointD&>, public laminate::Pooled {
 public:
  CArrayPointD() = default;
  CArrayPointD(const CArrayPointD& s) : CArray(), Pooled() { Append(s); }
  CArrayPointD(CArrayPointD&& s) noexcept : CArray(), Pooled() { Swap(s); }
  CArrayPointD& operator=(const CArrayPointD& s) {
    Copy(s);
    return *this;
  }
  CArrayPointD& operator=(CArrayPointD&& s) noexcept {
    Swap(s);
    return *this;
  }
  /// A copy that the caller owns.
  CArrayPointD* clone() const { return new CArrayPointD(*this); }

  /// Equal points in the same order, exactly.
  friend bool operator==(const CArrayPointD& a, const CArrayPointD& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end());
  }
};

/// Owns its arrays of points; copied with them.
class CArrayArrayPointD : public laminate::ClonedArray<CArrayPointD, CArrayArrayPointD> {};
