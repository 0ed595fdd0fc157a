#pragma once
#include "drawobj/CBDdrawObj.h"

/// A hole in the form of an oval, tag "OVALHOLE".
///
/// Form read: (ovalHole (holeType N) (geometry (oval (pt X Y) (width L) (height L) (ovalAngle A)))). Of "geometry" the
/// first form counts, and only if it is "oval"; none at all raises. Written likewise in mode 1, the inner "oval" alone
/// otherwise; without "holeType", and with "%g": a size of exactly 12 is written as 12, which reads back as 12 database
/// units.
class CBDovalHole : public CBDdrawObj {
 public:
  CBDovalHole();
  CBDovalHole(const CBDovalHole&) = default;
  CBDovalHole& operator=(const CBDovalHole&) = default;
  ~CBDovalHole() override;

  CPointD m_pt;
  double m_dWidth = 0;   ///< across the length
  double m_dHeight = 0;  ///< the length
  double m_dAngle = 0;   ///< degrees; where the length points
  int m_nHoleType = 0;   ///< kept as a number

  /// The text of its own; see `CBDdrawObj`.
  int nPrint2File(FILE* fp, int mode);
  void Write(laminate::TextOut& out, int nMode) const;
  /// A copy of all own fields; see `CBDdrawObj`.
  CBDovalHole* pCopy() const;
  /// Moves the point; on side "B" its x is negated before.
  void vMoveRotate(double dX, double dY, double dAngle, CString sSide);
  /// Scales what `vMoveRotate` moves; sizes stay.
  void vSetScale(double dScale);
};
