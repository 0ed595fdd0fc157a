#pragma once
#include "drawobj/CBDdrawObj.h"

/// A rectangle, tag "RECTANGLE".
///
/// Form read: (rectangle (pt X Y) (width L) (height L) (rAngle A) (outlineWidth L) (fillWidth L) (fillAngle A)).
/// Written the same way in mode 2; in any other mode the form (rectangle (geometry ...)) stands around it, which is not
/// read back.
class CBDrectangle : public CBDdrawObj {
 public:
  CBDrectangle();
  CBDrectangle(const CBDrectangle&) = default;
  CBDrectangle& operator=(const CBDrectangle&) = default;
  ~CBDrectangle() override;

  double m_dFillAngle = 0;
  double m_dFillWidth = 0;
  double m_dOutlineWidth = 0;
  double m_dAngle = 0;
  double m_dHeight = 0;
  double m_dWidth = 0;
  CPointD m_pt;

  /// The text of its own; see `CBDdrawObj`.
  int nPrint2File(FILE* fp, int mode);
  void Write(laminate::TextOut& out, int nMode) const;
  /// A copy of all own fields; see `CBDdrawObj`.
  CBDrectangle* pCopy() const;
  /// Moves the point; on side "B" its x is negated before.
  void vMoveRotate(double dX, double dY, double dAngle, CString sSide);
  /// Scales what `vMoveRotate` moves; sizes stay.
  void vSetScale(double dScale);
};
