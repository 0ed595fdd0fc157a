#pragma once

/// A point in the plane in single precision; (0, 0) by default.
class CPointF {
 public:
  CPointF() = default;
  CPointF(float fX, float fY) : x(fX), y(fY) {}
  CPointF(const CPointF&) = default;
  CPointF& operator=(const CPointF&) = default;
  virtual ~CPointF() = default;

  /// Exact on both.
  bool operator==(const CPointF& other) const { return x == other.x && y == other.y; }
  bool operator!=(const CPointF& other) const { return !(*this == other); }

  float x = 0;
  float y = 0;
};
