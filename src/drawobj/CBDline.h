#pragma once
#include "drawobj/CBDdrawObj.h"
#include "drawobj/CBDvertex.h"

class CBDsurface;

/// A line, that is a track or a drawn stroke, tag "LINE". It has no width of its own: widths are on its vertices.
///
/// Form read: (line (net T) (penShape T) (thermalData T) (vertex ...) (geometry (line (penShape T) (vertex ...) (type
/// T) (dashLine (dash A) (blank A))))), "shieldLine" likewise. The first form in "geometry" counts, whatever its
/// keyword, and none at all raises. The vertices of all places are appended. Written: (line (net T) (geometry (line
/// (penShape SQUARE) (vertex ...)))) in mode 1, the inner "line" alone otherwise; no other pen shape, and nothing else,
/// is written.
class CBDline : public CBDdrawObj {
 public:
  CBDline();
  CBDline(const CBDline&) = default;
  CBDline& operator=(const CBDline&) = default;
  ~CBDline() override;

  CString m_sThermalData;                 ///< kept as text
  CString m_sLineType;                    ///< "type", kept as text
  double m_dDash = 0;                     ///< a number as the file gives it, not a length: 150000 stays 150000
  double m_dBlank = 0;                    ///< likewise
  CBDvertexArray* m_pVertices = nullptr;  ///< owned, made by the constructor

  /// The text of its own, the net name as it stands; see `CBDdrawObj`.
  int nPrint2File(FILE* fp, int mode);
  void Write(laminate::TextOut& out, int nMode) const;
  /// A deep copy of thermal data and vertices; line type, dash and blank stay at their defaults. A null array raises.
  CBDline* pCopy() const;
  /// Moves the vertices, if there are any.
  void vMoveRotate(double dX, double dY, double dAngle, CString sSide);
  /// Scales what `vMoveRotate` moves; sizes stay.
  void vSetScale(double dScale);

  /// A new surface, which the caller owns, with the vertices of `pLine`, which is deleted. Nothing else carries over.
  /// `pLine` may be this object; a failure for want of memory leaves it alive. A line without array gives a surface
  /// without one. Null raises.
  CBDsurface* pChangeCBDline2CBDsurface(CBDline* pLine);
  /// Index in `m_pVertices`, null slots counted, of the first point whose fillet has an `m_dWidth` other than 0, or -1.
  /// A null array and a null fillet raise.
  int nGetFilletPtIndex() const;
};
