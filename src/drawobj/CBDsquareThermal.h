#pragma once
#include "drawobj/CBDdrawObj.h"

/// A square thermal relief, tag "SQUARETHERMAL".
///
/// Form read: (squareThermal (out L) (in L) (pt X Y) (nBridge N) (bridgeWidth L) (bridgeAngle A)). Written as
/// "(squareThermal\n)\n", without its fields.
class CBDsquareThermal : public CBDdrawObj {
 public:
  CBDsquareThermal();
  CBDsquareThermal(const CBDsquareThermal&) = default;
  CBDsquareThermal& operator=(const CBDsquareThermal&) = default;
  ~CBDsquareThermal() override;

  double m_dOut = 0;
  double m_dIn = 0;
  CPointD m_pt;
  int m_nBridge = 0;
  double m_dBridgeWidth = 0;
  double m_dBridgeAngle = 0;

  int nPrint2File(FILE* fp, int mode);
  void Write(laminate::TextOut& out, int nMode) const;
  CBDsquareThermal* pCopy() const;
  /// Moves the point; on side "B" its y is negated before.
  void vMoveRotate(double dX, double dY, double dAngle, CString sSide);
  void vSetScale(double dScale);
};
