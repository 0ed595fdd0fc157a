#pragma once
#include "drawobj/CBDdrawObj.h"

/// A pad that is placed by the name of its definition, tag "DRAWPAD".
///
/// Form read: (pad NAME (pt X Y) (angle A) (net T) (geometry SHAPE...)), "fPad" likewise; a missing name raises. The
/// two are not told apart afterwards. Written as "pad" in mode 1 and as "fPad" otherwise, without net and geometry.
class CBDdrawPad : public CBDdrawObj {
 public:
  CBDdrawPad();
  CBDdrawPad(const CBDdrawPad&) = default;
  CBDdrawPad& operator=(const CBDdrawPad&) = default;
  ~CBDdrawPad() override;

  CBDdrawObjArray* m_pShapes = nullptr;  ///< shapes of "geometry"; owned, made by the constructor
  CString m_sPadName;                    ///< of its definition, which is not looked up
  CPointD m_pt;                          ///< where it stands
  double m_dAngle = 0;                   ///< degrees

  /// The text of its own; see `CBDdrawObj`.
  int nPrint2File(FILE* fp, int mode);
  void Write(laminate::TextOut& out, int nMode) const;
  /// A deep copy; shapes that copy to null are left out.
  CBDdrawPad* pCopy() const;
  /// Moves the point, on side "B" with its x negated before, then the shapes. The angle stays. A null array raises; the
  /// point has moved by then.
  void vMoveRotate(double dX, double dY, double dAngle, CString sSide);
  /// Scales what `vMoveRotate` moves; a null array is passed over.
  void vSetScale(double dScale);
};
