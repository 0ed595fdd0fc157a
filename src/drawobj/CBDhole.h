#pragma once
#include "drawobj/CBDdrawObj.h"

/// A drilled hole, tag "HOLE".
///
/// Form read: (hole (fromTo FROM TO) (drillType T) (holeType N) (geometry (circle R (pt X Y)))). Any other shape in
/// "geometry" leaves the placeholder. Written: "(hole\n", the shape in the same mode, ")\n"; of a hole whose shape has
/// the tag "SQUAREHOLE" the shape alone. The other fields are not written.
class CBDhole : public CBDdrawObj {
 public:
  CBDhole();
  CBDhole(const CBDhole&) = default;
  CBDhole& operator=(const CBDhole&) = default;
  ~CBDhole() override;

  int m_nFrom = 0;
  int m_nTo = 0;
  CString m_sDrillType;
  CBDdrawObj* m_pShape = nullptr;  ///< owned; the constructor makes a placeholder of tag "NONE"
  int m_nHoleType = 0;

  /// Writing prepares the net name of the shape; see `CBDdrawObj::nPrint2File`.
  int nPrint2File(FILE* fp, int mode);
  void Write(laminate::TextOut& out, int nMode);
  /// A deep copy; its shape is null when this one's is the placeholder. A null shape raises.
  CBDhole* pCopy() const;
  /// Moves the shape, if there is one.
  void vMoveRotate(double dX, double dY, double dAngle, CString sSide);
  void vSetScale(double dScale);
};
