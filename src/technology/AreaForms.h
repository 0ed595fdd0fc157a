#pragma once
#include "base/CRectD.h"
#include "base/TextOut.h"

namespace laminate {

/// Writes "(box", the corner (x, -y), the opposite corner (x + width, height - y), each coordinate divided by
/// `dDivisor`, and ")". A rectangle at 0 gives a negative zero, which is part of the form.
inline void WriteBox(TextOut& out, const CRectD& rc, double dDivisor = 1.0) {
  const auto box = Form<"(box\n">(out);
  PrintPt(out, CPointD(rc.x / dDivisor, -rc.y / dDivisor));
  PrintPt(out, CPointD((rc.x + rc.width) / dDivisor, (rc.height - rc.y) / dDivisor));
}

/// Writes the "area" form of a rectangle.
inline void WriteArea(TextOut& out, const CRectD& rc) {
  const auto area = Form<"(area\n">(out);
  WriteBox(out, rc);
}

/// Writes a "minRect" form.
inline void WriteMinRect(TextOut& out, const CRectD& rc, double dDivisor = 1.0) {
  const auto minRect = Form<"(minRect\n">(out);
  WriteBox(out, rc, dDivisor);
}

/// Writes a "grid" form whose steps are a thirtieth of the two lengths.
inline void WriteGrid(TextOut& out, double dLengthForX, double dLengthForY) {
  constexpr double kStepsPerLength = 30.0;
  const auto grid = Form<"(grid\n">(out);
  const auto rectGrid = Form<"(rectGrid\n">(out);
  {
    const auto origin = Form<"(origin\n">(out);
    out.Print<"(pt 0 0)\n">();
  }
  out.Print<"(x %.5f)\n">(dLengthForX / kStepsPerLength);
  out.Print<"(y %.5f)\n">(dLengthForY / kStepsPerLength);
}

}  // namespace laminate
