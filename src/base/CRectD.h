#pragma once
#include "base/RecordArray.h"

/// A rectangle as corner, width and height, in mm; all 0 by default.
class CRectD : public laminate::Pooled {
 public:
  CRectD() = default;
  CRectD(double dX, double dY, double dWidth, double dHeight) : x(dX), y(dY), width(dWidth), height(dHeight) {}
  CRectD(const CRectD&) = default;
  CRectD& operator=(const CRectD&) = default;
  virtual ~CRectD() = default;

  double GetWidth() const { return width; }
  double GetHeight() const { return height; }
  /// Width times height, in square mm.
  double GetArea() const { return GetWidth() * GetHeight(); }
  /// Sets all four to 0.
  void Init() { x = y = width = height = 0; }
  /// A copy that the caller owns.
  CRectD* clone() const { return new CRectD(*this); }

  /// Exact on all four.
  bool operator==(const CRectD& other) const {
    return x == other.x && y == other.y && width == other.width && height == other.height;
  }
  bool operator!=(const CRectD& other) const { return !(*this == other); }

  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
};

/// Owns its rectangles; copied and compared with them.
class CArrayRectD : public laminate::ClonedArray<CRectD, CArrayRectD> {};
