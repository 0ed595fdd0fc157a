#pragma once
#include "drawobj/CBDdrawObj.h"

/// A rectangular hole, tag "SQUAREHOLE".
///
/// Form: (squareHole (pt X Y) (holeAngle A) (width L) (height L) (r L)). A "geometry" in it ends the reading: the
/// result is then the shape that the first form in "geometry" yields, whatever it is; none at all raises. The angle is
/// written when it is not 0.
class CBDsquareHole : public CBDdrawObj {
 public:
  CBDsquareHole();
  CBDsquareHole(const CBDsquareHole&) = default;
  CBDsquareHole& operator=(const CBDsquareHole&) = default;
  ~CBDsquareHole() override;

  double m_dCorner = 0;  ///< "r", the radius of the corners
  double m_dHeight = 0;
  double m_dWidth = 0;
  double m_dAngle = 0;
  CPointD m_pt;

  /// The text of its own; see `CBDdrawObj`.
  int nPrint2File(FILE* fp, int mode);
  void Write(laminate::TextOut& out, int nMode) const;
  /// A copy of all own fields; see `CBDdrawObj`.
  CBDsquareHole* pCopy() const;
  /// Moves the point; on side "B" its y is negated before.
  void vMoveRotate(double dX, double dY, double dAngle, CString sSide);
  /// Scales what `vMoveRotate` moves; sizes stay.
  void vSetScale(double dScale);
};
