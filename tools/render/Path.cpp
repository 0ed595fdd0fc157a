#include "render/Path.h"

#include <algorithm>

namespace laminate::cli {

void Path::Arc(Vec center, double dRadius, double dFrom, double dSweep) {
  m_segments.push_back({.step = Step::arc,
                        .to = center + Polar(dRadius, dFrom + dSweep),
                        .center = center,
                        .radius = dRadius,
                        .from = dFrom,
                        .sweep = dSweep});
}

void Path::Circle(Vec center, double dRadius) {
  Move(center + Vec(dRadius, 0));
  Arc(center, dRadius, 0, 2 * kPi);
  Close();
}

void Path::Polygon(std::initializer_list<Vec> corners) {
  for (const Vec& corner : corners) {
    if (&corner == corners.begin()) {
      Move(corner);
    } else {
      Line(corner);
    }
  }
  Close();
}

void Path::Rectangle(double dWidth, double dHeight, double dCorner) {
  const double dX = std::abs(dWidth) / 2;
  const double dY = std::abs(dHeight) / 2;
  const double dR = std::min({std::abs(dCorner), dX, dY});
  if (dR == 0) {
    Polygon({{-dX, -dY}, {dX, -dY}, {dX, dY}, {-dX, dY}});
    return;
  }
  const Vec centers[] = {{dX - dR, dR - dY}, {dX - dR, dY - dR}, {dR - dX, dY - dR}, {dR - dX, dR - dY}};
  double dFrom = -kPi / 2;
  for (const Vec& center : centers) {
    const Vec begin = center + Polar(dR, dFrom);
    if (&center == centers) {
      Move(begin);
    } else {
      Line(begin);
    }
    Arc(center, dR, dFrom, kPi / 2);
    dFrom += kPi / 2;
  }
  Close();
}

void Path::Oval(double dWidth, double dHeight) {
  const double dR = std::min(std::abs(dWidth), std::abs(dHeight)) / 2;
  if (std::abs(dWidth) == std::abs(dHeight)) {
    Circle({}, dR);
  } else {
    Rectangle(dWidth, dHeight, dR);
  }
}

void Path::Apply(const Motion& motion) {
  for (Segment& segment : m_segments) {
    segment.to = motion(segment.to);
    if (segment.step != Step::arc) continue;
    segment.center = motion(segment.center);
    segment.from = motion.Angle(segment.from);
    if (motion.Mirrors()) segment.sweep = -segment.sweep;
  }
}

void Path::Limit(double dLimit) {
  const auto isNear = [dLimit](Vec p) { return std::abs(p.x) <= dLimit && std::abs(p.y) <= dLimit; };
  for (Segment& segment : m_segments) {
    if (segment.step == Step::arc && !(isNear(segment.to) && isNear(segment.center) && segment.radius <= dLimit)) {
      segment.step = Step::line;
    }
    if (!isNear(segment.to))
      segment.to = {std::clamp(segment.to.x, -dLimit, dLimit), std::clamp(segment.to.y, -dLimit, dLimit)};
  }
}

Box Path::Bounds() const {
  Box box;
  for (const Segment& segment : m_segments) {
    if (segment.step == Step::close) continue;
    box.Add(segment.to);
    if (segment.step != Step::arc) continue;
    // The outermost points on the axes that the arc passes.
    const double dLow = std::min(segment.from, segment.from + segment.sweep);
    const double dHigh = std::max(segment.from, segment.from + segment.sweep);
    if (!std::isfinite(dLow) || !std::isfinite(dHigh)) continue;
    double dQuarter = std::ceil(dLow / (kPi / 2));
    for (int n = 0; n <= 4 && dQuarter * (kPi / 2) <= dHigh; ++n, ++dQuarter) {
      box.Add(segment.center + Polar(segment.radius, dQuarter * (kPi / 2)));
    }
  }
  return box;
}

bool Path::IsFinite() const {
  return std::ranges::all_of(m_segments, [](const Segment& segment) {
    if (segment.step == Step::close) return true;
    if (!segment.to.IsFinite()) return false;
    return segment.step != Step::arc || (segment.center.IsFinite() && std::isfinite(segment.radius) &&
                                         std::isfinite(segment.from) && std::isfinite(segment.sweep));
  });
}

}  // namespace laminate::cli
