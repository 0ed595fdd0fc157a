#pragma once
#include "drawobj/CBDdrawObj.h"

/// A drilled hole, tag "HOLE".
///
/// Form read: (hole (fromTo FROM TO) (drillType T) (holeType N) (geometry (circle R (pt X Y)))). Of "geometry" the
/// first form counts: one other than "circle" leaves the placeholder, and none at all raises. Written: "(hole\n", the
/// shape in the same mode, ")\n"; of a hole whose shape has the tag "SQUAREHOLE" the shape alone. The other fields are
/// not written.
class CBDhole : public CBDdrawObj {
 public:
  CBDhole();
  CBDhole(const CBDhole&) = default;
  CBDhole& operator=(const CBDhole&) = default;
  ~CBDhole() override;

  int m_nFrom = 0;                 ///< first layer of the span, kept as the file gives it
  int m_nTo = 0;                   ///< last layer of the span, likewise
  CString m_sDrillType;            ///< kept as text
  CBDdrawObj* m_pShape = nullptr;  ///< owned; the constructor makes a placeholder of tag "NONE"
  int m_nHoleType = 0;             ///< kept as a number

  /// The text of its own, see `CBDdrawObj`; that of the shape through `CBDdrawObj::nPrint2File`, which changes its net
  /// name.
  int nPrint2File(FILE* fp, int mode);
  void Write(laminate::TextOut& out, int nMode);
  /// A deep copy; its shape is null when this one's is the placeholder. A null shape raises.
  CBDhole* pCopy() const;
  /// Moves the shape, if there is one.
  void vMoveRotate(double dX, double dY, double dAngle, CString sSide);
  /// Scales what `vMoveRotate` moves; sizes stay.
  void vSetScale(double dScale);
};
