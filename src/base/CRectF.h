#pragma once
#include "base/CRectD.h"
#include "base/Number.h"

/// A rectangle as corner, width and height in single precision; all 0 by default.
class CRectF {
 public:
  CRectF() = default;
  CRectF(float fX, float fY, float fWidth, float fHeight) : x(fX), y(fY), width(fWidth), height(fHeight) {}
  CRectF(const CRectF&) = default;
  CRectF& operator=(const CRectF&) = default;
  virtual ~CRectF() = default;
  /// Each value to the nearest of single precision; one that is too large becomes infinite.
  CRectF& operator=(const CRectD& s) {
    x = laminate::Narrowed(s.x);
    y = laminate::Narrowed(s.y);
    width = laminate::Narrowed(s.width);
    height = laminate::Narrowed(s.height);
    return *this;
  }

  /// Exact on all four.
  bool operator==(const CRectF& other) const {
    return x == other.x && y == other.y && width == other.width && height == other.height;
  }
  bool operator!=(const CRectF& other) const { return !(*this == other); }

  float x = 0;
  float y = 0;
  float width = 0;
  float height = 0;
};
