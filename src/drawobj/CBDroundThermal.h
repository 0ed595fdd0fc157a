#pragma once
#include "drawobj/CBDdrawObj.h"

/// A round thermal relief, tag "ROUNDTHERMAL". It keeps its bridge angle as an int, and it cannot be copied by `pCopy`.
///
/// Form: (roundThermal (out L) (in L) (pt X Y) (nBridge N) (bridgeWidth L) (bridgeAngle N)).
class CBDroundThermal : public CBDdrawObj {
 public:
  CBDroundThermal();
  CBDroundThermal(const CBDroundThermal&) = default;
  CBDroundThermal& operator=(const CBDroundThermal&) = default;
  ~CBDroundThermal() override;

  int m_nBridgeAngle = 0;
  double m_dBridgeWidth = 0;
  int m_nBridge = 0;
  CPointD m_pt;
  double m_dIn = 0;
  double m_dOut = 0;

  int nPrint2File(FILE* fp);
  void Write(laminate::TextOut& out) const;
  /// Moves the point; on side "B" its y is negated before.
  void vMoveRotate(double dX, double dY, double dAngle, CString sSide);
  void vSetScale(double dScale);
};
