#pragma once
#include "drawobj/CBDdrawObj.h"

/// A ring, tag "DONUT".
///
/// Form: (donut (out L) (in L) (pt X Y)).
class CBDdonut : public CBDdrawObj {
 public:
  CBDdonut();
  CBDdonut(const CBDdonut&) = default;
  CBDdonut& operator=(const CBDdonut&) = default;
  ~CBDdonut() override;

  double m_dOut = 0;  ///< outer size
  double m_dIn = 0;   ///< inner size
  CPointD m_pt;

  /// The text of its own; see `CBDdrawObj`.
  int nPrint2File(FILE* fp, int mode);
  void Write(laminate::TextOut& out, int nMode) const;
  /// A copy of all own fields; see `CBDdrawObj`.
  CBDdonut* pCopy() const;
  /// Moves the point; on side "B" its x is negated before.
  void vMoveRotate(double dX, double dY, double dAngle, CString sSide);
  /// Scales what `vMoveRotate` moves; sizes stay.
  void vSetScale(double dScale);
};
