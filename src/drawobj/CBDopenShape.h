#pragma once
#include "drawobj/CBDdrawObj.h"
#include "drawobj/CBDvertex.h"

/// A cut-out inside a surface, tag "OPENSHAPE". It stands nowhere else, and the base members pass it over.
///
/// Form: (openShape (outlineWidth L) (vertex ...)).
class CBDopenShape : public CBDdrawObj {
 public:
  CBDopenShape();
  CBDopenShape(const CBDopenShape&) = default;
  CBDopenShape& operator=(const CBDopenShape&) = default;
  ~CBDopenShape() override;

  double m_dOutlineWidth = 0;
  CBDvertexArray* m_pVertices = nullptr;  ///< owned, made by the constructor

  /// The text of its own; see `CBDdrawObj`.
  int nPrint2File(FILE* fp);
  void Write(laminate::TextOut& out) const;
  /// A deep copy without the shared fields. A null array raises.
  CBDopenShape* pCopy() const;
  /// Moves the vertices, if there are any.
  void vMoveRotate(double dX, double dY, double dAngle, CString sSide);
  /// Scales what `vMoveRotate` moves; sizes stay.
  void vSetScale(double dScale);
};

/// The cut-outs of a surface, in file order; whoever holds the array owns them.
class CBDopenShapeArray : public laminate::NamedArray<CBDopenShape> {};
