#pragma once
#include <cstdint>

#include "render/Painter.h"

class CBDdrawObj;
class CBDline;
class CBDrectangle;
class CBDroundThermal;
class CBDsquareThermal;
class CBDsurface;
class CBDtext;

namespace laminate::cli {

/// How a shape is shown.
enum class Look : std::uint8_t {
  shape,    ///< as it says itself
  plane,    ///< a copper area of the layout: translucent, so that what lies below shows
  pad,      ///< filled, whatever it says of its outline
  outline,  ///< of an area only its outline
  hole,     ///< an opening
  ring      ///< a small ring at the place of a pad that has no definition
};

/// Draws shapes of the library, one at a time, in the group that the painter has open.
///
/// Round shapes, rectangles and surfaces are filled, the cut-outs of a surface left open; a rectangle or pad has its
/// outline drawn with its width on top. A rectangle outside a pad that has an outline width and no fill width is its
/// outline only. A mesh plane is hatched. Lines have the widths of their vertices. Thermals are drawn as hairlines:
/// they stand for what is left out of a plane. Sub-boards and shapes that hold a number that is not finite are not
/// drawn.
class Brush {
 public:
  /// `place` maps the board to the painter's sheet. No line is thinner than `dHairline`, in mm.
  Brush(Painter& painter, const Motion& place, double dHairline)
      : m_painter(painter), m_place(place), m_dHairline(dHairline) {}

  /// `motion` brings the shape to the board.
  void Draw(const CBDdrawObj& shape, const Motion& motion, Look look, const Owner& owner);

 private:
  void DrawLine(const CBDline& line);
  void DrawSurface(const CBDsurface& surface);
  void DrawRectangle(const CBDrectangle& rectangle);
  void DrawText(const CBDtext& text);
  void DrawThermal(const CBDroundThermal& thermal);
  void DrawThermal(const CBDsquareThermal& thermal);
  void DrawHole(const CBDdrawObj& shape);

  // Each of these takes up the path and leaves it empty.
  void FillPath();
  void CutPath();
  void StrokePath(const Pen& pen);
  /// The same for a shape around a point of its own, turned by its angle.
  void Turn(Vec center, double dDegrees);
  bool Arrive();
  bool IsNear(const TextLine& line) const;
  double AtLeastHairline(double dWidth) const;

  Painter& m_painter;
  Motion m_place;
  double m_dHairline;
  Path m_path;
  // Of the shape that is being drawn.
  Motion m_motion;
  Look m_look = Look::shape;
  Owner m_owner;
};

}  // namespace laminate::cli
