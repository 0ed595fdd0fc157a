#pragma once
#include <cmath>
#include <limits>

#include "base/CPointD.h"

namespace laminate::cli {

inline constexpr double kPi = 3.14159265358979323846;
inline constexpr double Radians(double dDegrees) { return dDegrees * (kPi / 180.0); }

/// A place or a displacement in the plane, in mm.
struct Vec {
  double x = 0;
  double y = 0;
  Vec() = default;
  Vec(double dX, double dY) : x(dX), y(dY) {}
  explicit Vec(const CPointD& pt) : x(pt.x), y(pt.y) {}

  bool IsFinite() const { return std::isfinite(x) && std::isfinite(y); }
  double Length() const { return std::hypot(x, y); }
  /// The direction, in radians counter-clockwise from the x axis.
  double Angle() const { return std::atan2(y, x); }

  friend Vec operator+(Vec a, Vec b) { return {a.x + b.x, a.y + b.y}; }
  friend Vec operator-(Vec a, Vec b) { return {a.x - b.x, a.y - b.y}; }
  friend Vec operator*(Vec a, double d) { return {a.x * d, a.y * d}; }
};
inline double Dot(Vec a, Vec b) { return a.x * b.x + a.y * b.y; }
inline double Cross(Vec a, Vec b) { return a.x * b.y - a.y * b.x; }
inline Vec Polar(double dRadius, double dAngle) { return {dRadius * std::cos(dAngle), dRadius * std::sin(dAngle)}; }

/// The upright rectangle around what it has taken up; empty at first.
struct Box {
  Vec low{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
  Vec high{-std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};

  bool IsEmpty() const { return !(low.x <= high.x && low.y <= high.y); }
  double Width() const { return high.x - low.x; }
  double Height() const { return high.y - low.y; }
  /// Points that are not finite are passed over.
  void Add(Vec p) {
    if (!p.IsFinite()) return;
    low = {std::fmin(low.x, p.x), std::fmin(low.y, p.y)};
    high = {std::fmax(high.x, p.x), std::fmax(high.y, p.y)};
  }
  void Add(const Box& box) {
    if (box.IsEmpty()) return;
    Add(box.low);
    Add(box.high);
  }
};

/// A motion of the plane without change of size: a turn, with or without a mirroring before it, and a shift after it.
class Motion {
 public:
  Motion() = default;
  /// Mirrors x (if asked to), turns counter-clockwise, then shifts.
  static Motion Placing(Vec shift, double dDegrees, bool bMirrorX) {
    Motion m;
    const Vec turn = UnitTurn(dDegrees);
    m.m_x = bMirrorX ? Vec(-turn.x, -turn.y) : turn;
    m.m_y = {-turn.y, turn.x};
    m.m_shift = shift;
    m.m_bMirrors = bMirrorX;
    return m;
  }
  /// Mirrors y, then shifts.
  static Motion Flipping(Vec shift) {
    Motion m;
    m.m_y = {0, -1};
    m.m_shift = shift;
    m.m_bMirrors = true;
    return m;
  }

  Vec operator()(Vec p) const { return Linear(p) + m_shift; }
  /// The direction that an angle (radians) becomes.
  double Angle(double dAngle) const { return m_bMirrors ? m_x.Angle() - dAngle : m_x.Angle() + dAngle; }
  bool Mirrors() const { return m_bMirrors; }
  Vec XAxis() const { return m_x; }
  Vec YAxis() const { return m_y; }
  Vec Shift() const { return m_shift; }

  /// First `inner`, then this.
  Motion After(const Motion& inner) const {
    Motion m;
    m.m_x = Linear(inner.m_x);
    m.m_y = Linear(inner.m_y);
    m.m_shift = (*this)(inner.m_shift);
    m.m_bMirrors = m_bMirrors != inner.m_bMirrors;
    return m;
  }

 private:
  Vec Linear(Vec p) const { return m_x * p.x + m_y * p.y; }
  static Vec UnitTurn(double dDegrees) {
    // Quarters are exact, so that upright shapes stay upright.
    CPointD pt(1, 0);
    pt.MoveRotate(0, 0, dDegrees);
    return Vec(pt);
  }

  Vec m_x{1, 0};
  Vec m_y{0, 1};
  Vec m_shift;
  bool m_bMirrors = false;
};

}  // namespace laminate::cli
