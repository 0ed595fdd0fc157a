#pragma once
#include <cstdio>

#include "base/CExPtrArray.h"
#include "base/CString.h"
#include "base/Pool.h"

namespace laminate {
class TextOut;
}

/// One element of an outline: a point (`CBDvertexPt`) or an arc (`CBDvertexArc`). Lengths are in mm.
///
/// Only the destructor is virtual. The members here look at `m_sType`: "PT" goes to the point's member, anything else
/// to the arc's. A vertex fits its class when a point says "PT" and an arc anything else; one that does not fit prints
/// nothing, copies to null, and does not move.
class CBDvertex : public laminate::Pooled {
 public:
  CBDvertex() = default;
  CBDvertex(const CBDvertex&) = default;
  CBDvertex& operator=(const CBDvertex&) = default;
  virtual ~CBDvertex();

  double m_dWidth = 0;  ///< line width at this vertex
  CString m_sType;      ///< "PT" or "ARC", set by the constructors of the two kinds

  /// Writes the vertex. `form` 1: with line widths, as lines do; 2: without, as outlines do. `flag` is 1 for the first
  /// and the last vertex of a line and 0 otherwise: it keeps the direction of a fillet back. Always 0. Null raises.
  int nPrint2File(FILE* fp, int form, int flag);
  void Write(laminate::TextOut& out, int nForm, int nFlag) const;

  /// A deep copy with `m_dWidth`, which the caller owns; null when the vertex does not fit its class.
  CBDvertex* pCopy() const;

  /// See `CBDdrawObj::vMoveRotate`. On side "B" y is negated.
  void vMoveRotate(double dX, double dY, double dAngle, CString sSide);
  /// Multiplies the points by `dScale`; widths and radii stay.
  void vSetScale(double dScale);

  /// Deletes the elements of the `CBDvertexArray` that `p` points to whose `m_sType` is "PT" or "ARC", forgets the
  /// others, and deletes the array. Null raises.
  void DeleteVertexArray(void* p);

 protected:
  explicit CBDvertex(const char* szType) : m_sType(szType) {}
};

/// The vertices of a line or outline, in file order; whoever holds the array owns them.
class CBDvertexArray : public laminate::NamedArray<CBDvertex> {};
