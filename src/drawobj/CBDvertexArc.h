#pragma once
#include "base/CPointD.h"
#include "drawobj/CBDvertex.h"

/// An arc of an outline, with its own begin and end. Radius, begin, centre, end and direction are kept as the file
/// gives them; nothing is derived or checked.
///
/// Form read: (arc T (r L) (begin (pt X Y (width L))) (center X Y) (end (pt X Y (width L)))). Written with one width,
/// that of the begin point, or `m_dWidth` when that is 0, at both ends, and only on lines.
class CBDvertexArc : public CBDvertex {
 public:
  CBDvertexArc() : CBDvertex("ARC") {}
  CBDvertexArc(const CBDvertexArc&) = default;
  CBDvertexArc& operator=(const CBDvertexArc&) = default;
  ~CBDvertexArc() override;

  double m_dEndWidth = 0;        ///< the width at the end point; read and never written
  double m_dBeginWidth = 0;      ///< the width at the begin point
  int m_nSpare = 0;              ///< only copied
  CString m_sDirection = "CCW";  ///< sweep direction, kept as text
  double m_dR = 0;               ///< radius
  CPointD m_ptBegin;
  CPointD m_ptCenter;
  CPointD m_ptEnd;

  /// As `CBDvertex::nPrint2File`, without a flag.
  int nPrint2File(FILE* fp, int form);
  void Write(laminate::TextOut& out, int nForm) const;

  /// A copy without `m_dEndWidth`, and without `m_dWidth`, which only `CBDvertex::pCopy` carries over.
  CBDvertexArc* pCopy() const;
  /// Moves begin, centre and end; on side "B" the y of each is negated before. The direction stays.
  void vMoveRotate(double dX, double dY, double dAngle, CString sSide);
  /// Scales what `vMoveRotate` moves; sizes stay.
  void vSetScale(double dScale);
};
