#pragma once
#include "drawobj/CBDdrawObj.h"
#include "drawobj/CBDvertex.h"

/// An area, tag "AREA", internal to the library: no keyword is read as one, and the only way to it is a host that sets
/// the tag "AREA" on a shape and copies it. Writes "(area\n)\n", whatever it holds.
class CBDareaz : public CBDdrawObj {
 public:
  CBDareaz();
  CBDareaz(const CBDareaz&) = default;
  CBDareaz& operator=(const CBDareaz&) = default;
  ~CBDareaz() override;

  double m_adSpare[5] = {};               ///< not used
  CBDvertexArray* m_pVertices = nullptr;  ///< owned; may be null

  /// The text of its own; see `CBDdrawObj`.
  int nPrint2File(FILE* fp, int mode);
  static void Write(laminate::TextOut& out, int nMode);
  /// A deep copy of all own fields.
  CBDareaz* pCopy() const;
  /// Moves the vertices, if there are any.
  void vMoveRotate(double dX, double dY, double dAngle, CString sSide);
  /// Scales what `vMoveRotate` moves; sizes stay.
  void vSetScale(double dScale);
};
