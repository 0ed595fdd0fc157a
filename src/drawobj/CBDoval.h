#pragma once
#include "drawobj/CBDdrawObj.h"

/// An oval, tag "OVAL".
///
/// Form read: (oval (pt X Y) (width L) (height L) (ovalAngle A)). Written the same way, the angle only when it is not
/// 0; in mode 1 the form (oval (geometry ...)) stands around it, which is not read back.
class CBDoval : public CBDdrawObj {
 public:
  CBDoval();
  CBDoval(const CBDoval&) = default;
  CBDoval& operator=(const CBDoval&) = default;
  ~CBDoval() override;

  double m_dAngle = 0;   ///< degrees; where the length points
  double m_dHeight = 0;  ///< the length
  double m_dWidth = 0;   ///< across it
  CPointD m_pt;

  /// The text of its own; see `CBDdrawObj`.
  int nPrint2File(FILE* fp, int mode);
  void Write(laminate::TextOut& out, int nMode) const;
  /// A copy of all own fields; see `CBDdrawObj`.
  CBDoval* pCopy() const;
  /// Moves the point; on side "B" its y is negated before.
  void vMoveRotate(double dX, double dY, double dAngle, CString sSide);
  /// Scales what `vMoveRotate` moves; sizes stay.
  void vSetScale(double dScale);
};
