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

  int m_nBridgeAngle = 0;  ///< degrees
  double m_dBridgeWidth = 0;
  int m_nBridge = 0;  ///< how many bridges
  CPointD m_pt;
  double m_dIn = 0;   ///< inner size
  double m_dOut = 0;  ///< outer size

  /// The text of its own; see `CBDdrawObj`.
  int nPrint2File(FILE* fp);
  void Write(laminate::TextOut& out) const;
  /// Moves the point; on side "B" its y is negated before.
  void vMoveRotate(double dX, double dY, double dAngle, CString sSide);
  /// Scales what `vMoveRotate` moves; sizes stay.
  void vSetScale(double dScale);
};
