#pragma once
#include "base/CPointD.h"
#include "drawobj/CBDfillet.h"
#include "drawobj/CBDvertex.h"

/// A corner or end point of an outline.
///
/// Form read: (pt X Y (width L) (tarc ... (r L)) (fillet ...)). Written likewise: the width only on lines and when its
/// absolute value is over 0.001 mm, "tarc" only when not 0 and always as (tarc ON (r L)), the fillet only when its
/// `m_dFilletWidth` is not 0.
///
/// Copy construction and assignment share the fillet, and both destructors delete it; assignment forgets the one that
/// was there. Use `pCopy`.
class CBDvertexPt : public CBDvertex {
 public:
  CBDvertexPt() : CBDvertex("PT") {}
  CBDvertexPt(const CBDvertexPt&) = default;
  CBDvertexPt& operator=(const CBDvertexPt&) = default;
  ~CBDvertexPt() override;

  double m_dTarc = 0;                    ///< radius by which the corner is rounded; 0: none
  CBDfillet* m_pFillet = new CBDfillet;  ///< owned; all zero on a point without fillet
  CPointD m_pt;

  /// See `CBDvertex::nPrint2File`.
  int nPrint2File(FILE* fp, int form, int flag);
  void Write(laminate::TextOut& out, int nForm, int nFlag) const;

  /// A deep copy without `m_dWidth`, which only `CBDvertex::pCopy` carries over.
  CBDvertexPt* pCopy() const;
  /// Moves `m_pt`; on side "B" its y is negated before.
  void vMoveRotate(double dX, double dY, double dAngle, CString sSide);
  /// Scales what `vMoveRotate` moves; sizes stay.
  void vSetScale(double dScale);
};
