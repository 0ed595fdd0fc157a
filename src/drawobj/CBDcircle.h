#pragma once
#include "drawobj/CBDdrawObj.h"

/// A filled circle, tag "CIRCLE".
///
/// Form read: (circle R (pt X Y)); without "pt" the centre is (0, 0). Written the same way in mode 2; in any other mode
/// a "(geometry" form stands around it, which is right only inside a hole.
class CBDcircle : public CBDdrawObj {
 public:
  CBDcircle();
  CBDcircle(const CBDcircle&) = default;
  CBDcircle& operator=(const CBDcircle&) = default;
  ~CBDcircle() override;

  CPointD m_ptCenter;
  double m_dRadius = 0;

  /// The text of its own; see `CBDdrawObj`.
  int nPrint2File(FILE* fp, int mode);
  void Write(laminate::TextOut& out, int nMode) const;
  /// A copy of all own fields; see `CBDdrawObj`.
  CBDcircle* pCopy() const;
  /// Moves the centre; on side "B" its x is negated before.
  void vMoveRotate(double dX, double dY, double dAngle, CString sSide);
  /// Scales what `vMoveRotate` moves; sizes stay.
  void vSetScale(double dScale);
};
