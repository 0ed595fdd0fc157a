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

  double m_dOut = 0;  ///< outer size
  double m_dIn = 0;   ///< inner size
  CPointD m_pt;
  int m_nBridge = 0;  ///< how many bridges
  double m_dBridgeWidth = 0;
  double m_dBridgeAngle = 0;  ///< degrees

  /// The text of its own; see `CBDdrawObj`.
  int nPrint2File(FILE* fp, int mode);
  static void Write(laminate::TextOut& out, int nMode);
  /// A copy of all own fields; see `CBDdrawObj`.
  CBDsquareThermal* pCopy() const;
  /// Moves the point; on side "B" its y is negated before.
  void vMoveRotate(double dX, double dY, double dAngle, CString sSide);
  /// Scales what `vMoveRotate` moves; sizes stay.
  void vSetScale(double dScale);
};
