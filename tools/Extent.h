#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "base/CPointD.h"

class CBDdrawObj;
class CBDesigner;

namespace laminate::cli {

/// A box around points, in mm; empty until it takes one.
class Extent {
 public:
  bool IsEmpty() const { return m_bEmpty; }
  double Left() const { return m_dLeft; }
  double Bottom() const { return m_dBottom; }
  double Right() const { return m_dRight; }
  double Top() const { return m_dTop; }
  /// Points that are no place, such as those of a not finite number, are passed over.
  void Take(double x, double y);
  void Take(const CPointD& pt) { Take(pt.x, pt.y); }

  /// Takes the outline of a shape: its points, arcs in full, the size of round and square shapes. Widths of lines are
  /// left out; pads, padstacks, texts and holes of other shapes count with their place.
  void Take(const CBDdrawObj& shape);

 private:
  bool m_bEmpty = true;
  double m_dLeft = 0;
  double m_dBottom = 0;
  double m_dRight = 0;
  double m_dTop = 0;
};

/// Names of the board layers on which footprint layers of type "OUTLINE" land.
std::vector<std::string> OutlineLayers(const CBDesigner& root);

/// The extent of the board: that of the layout shapes on its outline layers, or, where there are none, of all layout
/// shapes.
Extent BoardExtent(const CBDesigner& root);

}  // namespace laminate::cli
