#pragma once
#include <span>
#include <vector>

#include "render/Geometry.h"

namespace laminate::cli {

/// Lines and arcs to be filled or stroked, in mm. A path is a row of figures; each begins with a move.
class Path {
 public:
  enum class Step { move, line, arc, close };
  struct Segment {
    Step step;
    Vec to;  ///< where the segment ends; of a `close` nothing
    Vec center;
    double radius = 0;
    double from = 0;   ///< direction of the arc's begin from its centre, in radians
    double sweep = 0;  ///< positive: counter-clockwise where y points up; at most a full turn either way
  };

  void Clear() { m_segments.clear(); }
  bool IsEmpty() const { return m_segments.empty(); }
  std::span<const Segment> Segments() const { return m_segments; }

  void Move(Vec to) { m_segments.push_back({.step = Step::move, .to = to, .center = {}}); }
  void Line(Vec to) { m_segments.push_back({.step = Step::line, .to = to, .center = {}}); }
  /// The path must stand at the arc's begin.
  void Arc(Vec center, double dRadius, double dFrom, double dSweep);
  void Close() { m_segments.push_back({.step = Step::close, .to = {}, .center = {}}); }

  void Circle(Vec center, double dRadius);
  void Polygon(std::initializer_list<Vec> corners);
  /// An upright rectangle around the origin, with round corners if the radius is not 0.
  void Rectangle(double dWidth, double dHeight, double dCorner);
  /// A rectangle around the origin whose short ends are half circles.
  void Oval(double dWidth, double dHeight);

  /// Moves everything.
  void Apply(const Motion& motion);
  /// Draws in what lies farther than `dLimit` from the axes; arcs that reach there become lines.
  void Limit(double dLimit);
  /// What the lines and arcs touch, without any pen width.
  Box Bounds() const;
  /// False when a number in it is no finite one: such a path cannot be drawn.
  bool IsFinite() const;

 private:
  std::vector<Segment> m_segments;
};

}  // namespace laminate::cli
