#pragma once
#include "base/CPointD.h"
#include "base/RecordArray.h"

/// A point in space, in mm; (0, 0, 0) by default.
class CPoint3D : public laminate::Pooled {
 public:
  CPoint3D() = default;
  CPoint3D(double dX, double dY, double dZ) : x(dX), y(dY), z(dZ) {}
  CPoint3D(const CPoint3D&) = default;
  CPoint3D& operator=(const CPoint3D&) = default;
  virtual ~CPoint3D() = default;

  double GetX() const { return x; }
  double GetY() const { return y; }
  double GetZ() const { return z; }
  void GetX(double& d) const { d = x; }
  void GetY(double& d) const { d = y; }
  void GetZ(double& d) const { d = z; }
  void SetX(double d) { x = d; }
  void SetY(double d) { y = d; }
  void SetZ(double d) { z = d; }
  void GetData(double& dX, double& dY, double& dZ) const {
    dX = x;
    dY = y;
    dZ = z;
  }
  void SetData(double dX, double dY, double dZ) {
    x = dX;
    y = dY;
    z = dZ;
  }
  /// Moves and turns the point in its plane, as `CPointD::MoveRotate` does.
  void MoveRotate(const double& dX, const double& dY, const double& dAngle) {
    CPointD pt(x, y);
    pt.MoveRotate(dX, dY, dAngle);
    x = pt.x;
    y = pt.y;
  }
  /// A copy that the caller owns.
  CPoint3D* clone() const { return new CPoint3D(*this); }

  /// Exact; a point always equals itself, whatever it holds.
  bool operator==(const CPoint3D& other) const {
    return this == &other || (x == other.x && y == other.y && z == other.z);
  }
  bool operator!=(const CPoint3D& other) const { return !(*this == other); }

  double x = 0;
  double y = 0;
  double z = 0;
};

/// Owns its points; copied and compared with them.
class CArrayPoint3D : public laminate::ClonedArray<CPoint3D, CArrayPoint3D> {};
