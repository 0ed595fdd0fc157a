#pragma once

/// A point in the plane, in mm; (0, 0) by default.
class CPointD {
 public:
  CPointD() = default;
  CPointD(double dX, double dY) : x(dX), y(dY) {}
  CPointD(const CPointD&) = default;
  CPointD& operator=(const CPointD&) = default;
  virtual ~CPointD() = default;

  double GetX() const { return x; }
  double GetY() const { return y; }
  void GetX(double& d) const { d = x; }
  void GetY(double& d) const { d = y; }
  void SetX(double d) { x = d; }
  void SetY(double d) { y = d; }
  void SetData(double dX, double dY) {
    x = dX;
    y = dY;
  }
  /// Turns the point by `dAngle` degrees counter-clockwise about the origin, then subtracts (dX, dY). With 0, 0, 0 no
  /// bit of it changes; multiples of 90 degrees are exact.
  void MoveRotate(const double& dX, const double& dY, const double& dAngle);

  double x = 0;
  double y = 0;
};

/// Exact.
inline bool operator==(const CPointD& a, const CPointD& b) { return a.x == b.x && a.y == b.y; }
