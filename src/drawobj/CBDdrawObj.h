#pragma once
#include <cstdio>

#include "base/CExPtrArray.h"
#include "base/CPointD.h"
#include "base/CString.h"
#include "base/Pool.h"

class CArrayPointD;
class CBDoblong;
class CBDoval;
class CBDvertexArc;

namespace laminate {
class TextOut;
}

/// Base of everything that is drawn on a board, a footprint, a pad or a padstack. Lengths are in mm, angles in degrees.
///
/// Only the destructor is virtual. Every other operation is declared by each class for itself, and the member of this
/// base looks at the tag `m_sKind` and calls the member of the class that the tag names, by the table in
/// drawobj/DrawObjFamily.h. A tag that an operation's list does not hold takes no part in that operation, and neither
/// does one that does not fit the object's class. Only where an operation looks at nothing of the object the tag alone
/// decides: in printing "AREA", "DELETE", "DRAWSUBBOARD" and "SQUARETHERMAL", in all headers but that of "SURFACE", in
/// copying "AREA", "DELETE" and "ROUNDTHERMAL", in moving and scaling "AREA", "DELETE" and "DRAWSUBBOARD", and in
/// deleting.
///
/// The members of the classes may be called directly. Their `nPrint2File` and `Write` then write the net name as it
/// stands, and their `pCopy` gives a new object, which the caller owns, that has none of the fields of this base. All
/// `nPrint2File` give 0 and raise on a null stream. Of `mode`, circle and rectangle ask whether it is 2, the others
/// whether it is 1, and some write the same in any.
///
/// The comments of the classes show their forms with letters for the tokens: X, Y, R and L are lengths (a text without
/// "." counts database units, of which 100000 make one mm), A a real number, mostly an angle, N an integer, T a text.
/// Forms within a form may stand in any order; those that are not shown are passed over.
///
/// Copy construction and assignment copy member by member: pointers are shared, what the target held before is not
/// released, and both destructors delete the same thing. Use them for objects that own nothing, and `pCopy` elsewhere.
class CBDdrawObj : public laminate::Pooled {
 public:
  CBDdrawObj();
  CBDdrawObj(const CBDdrawObj&) = default;
  CBDdrawObj& operator=(const CBDdrawObj&) = default;
  virtual ~CBDdrawObj();

  int m_bRefer = 0;        ///< 1 when the shape stood inside a "refer" form
  CString m_sLayerName;    ///< of a conductive layer its number as text
  CString m_sLayerType;    ///< "conductive", "nonConductive", "systemLayer" or empty
  int m_nLayerNumber = 0;  ///< of a conductive layer; 0 on any other
  CString m_sKind;         ///< the tag, set by each constructor; here "NONE"
  CString m_sNet;          ///< of a line, surface, pad or padstack; writing changes it, see `nPrint2File`
  CString m_sPenShape;     ///< of a line
  CString m_sSection;      ///< in a placed padstack: "conductive" or "nonConductive", the section that held the shape
  int m_nCavityFrom = -1;  ///< of a shape in a component's "refer"
  int m_nCavityTo = -1;    ///< likewise

  /// A deep copy, which the caller owns, with `m_bRefer`, `m_sLayerName`, `m_nLayerNumber`, `m_sLayerType`, `m_sNet`
  /// and `m_sPenShape`; the section and the cavity are not copied. Null for "OPENSHAPE", "NONE" and any tag that is
  /// unknown or does not fit the class; with "AREA" and "DELETE" any object gives a copy of that class. "ROUNDTHERMAL"
  /// cannot be copied: raises `CInvalidArgException`, also from within a shape that holds one. Each class leaves out
  /// some of its fields; see there.
  CBDdrawObj* pCopy() const;

  /// Writes the shape. `mode` 1: it stands by itself in a layer, a component, a pin or a group; 2: inside a "geometry"
  /// form that the caller opened. First `m_sNet` is prepared in the object itself: every "%" is doubled, and a text
  /// that is not empty gets a pair of quotes around it, anew with each call. When memory runs out in that, the name is
  /// as it was and nothing is written. "OPENSHAPE", "NONE" and unknown or unfit tags write nothing. Always 0; all text
  /// has been handed to the stream, which keeps its error. Null raises.
  int nPrint2File(FILE* fp, int mode);
  /// The same into a writer's buffer.
  void Write(laminate::TextOut& out, int nMode);

  /// Writes the shape's opening line only, such as "(line\n". That of a surface whose outline width is under 0.001 mm
  /// is "(area\n(upperHeight 100000)\n(lowerHeight 0)\n", and "subBoard\n" has no bracket. Nothing for "OBLONG",
  /// "OPENSHAPE", "NONE", unknown tags, and "SURFACE" on an object that is none. Always 0. Null raises.
  int nPrint2Header2File(FILE* fp) const;
  void WriteHeader(laminate::TextOut& out) const;

  /// Moves the anchor points of the shape, and of what it holds, by `CPointD::MoveRotate(dX, dY, dAngle)`. With `sSide`
  /// "B", exactly, one coordinate of each point is negated before; which one, each class says. Sizes and angles stay.
  /// What a shape holds is moved with the same arguments, so it is taken to be in the same system as the shape's own
  /// point, not relative to it. "DRAWSUBBOARD" and "DELETE" do nothing; "OBLONG", "OPENSHAPE", "NONE" and unknown or
  /// unfit tags show the message box "You tried to MoveRotate() for UNKNOWN drawObj type - %s." and leave the object as
  /// it is.
  void vMoveRotate(double dX, double dY, double dAngle, CString sSide);
  /// Multiplies the anchor points by `dScale`; sizes stay. Of a text x is multiplied twice and y not at all. Tags that
  /// take no part fare as in `vMoveRotate`, with the same message box.
  void vSetScale(double dScale);

  /// Deletes the `CBDdrawObj` that `p` points to. Not those with the tags "OBLONG", "OPENSHAPE", "NONE" or an unknown
  /// one, which are left alone; null does nothing.
  void DeleteDrawObj(void* p);
  /// Deletes the elements of the `CBDdrawObjArray` that `p` points to by the same rule, forgets the others, and deletes
  /// the array. Null raises.
  void DeleteDrawObjArray(void* p);

  // ---- tools, which do not use the object ----

  /// The width of a line or outline. "SURFACE": the first vertex width over 0.001, else the outline width. "LINE": the
  /// first width of a point over 0.001 or begin width of an arc other than 0, else 0. Any other tag: 0. Null raises,
  /// and so does a line or surface without its array.
  double GetLineWidthFromDrawObj(CBDdrawObj* p);
  /// The rounded corner at `p2` between the legs towards `p1` and `p3`: the circle of radius `dRadius` that touches
  /// both. Three points in a new array, which the caller owns: tangent point on the leg towards `p1`, centre, tangent
  /// point on the leg towards `p3`. On a bisector along the x axis the centre lies `dRadius` from the corner, along the
  /// y axis `dRadius` times the square root of 2, whatever the corner's angle. Exact to about 1e-7 of the radius, by
  /// its pi of 3.1415927410125732. Legs of no length, opposite legs and legs that lie on each other give three points
  /// too.
  CArrayPointD* GetPtArrayFrom3Points(double dRadius, CPointD p1, CPointD p2, CPointD p3);
  /// The direction from `a` to `b` in degrees, from 0 up; 0 for equal points. Off the axes it is slightly below the
  /// exact value, by its factor for degrees of 57.2957763671875; just below the x axis it rounds to 360.
  double dChgPts2Angle(CPointD a, CPointD b);
  /// The distance in mm, by the root of the squares.
  double dGetDistanceFrom2Points(CPointD a, CPointD b);
  /// A new oval, which the caller owns, of the oblong's extent: `m_dWidth` is the short axis, `m_dHeight` the long one.
  /// Layer and net are not carried over. Null raises.
  CBDoval* pChangeOblong2Oval(CBDoblong* pOblong);
  /// The point at distance `m_dR` from the arc's begin point in the direction of `m_ptCenter`, which is taken as an
  /// offset from the begin point. NaN stands in it when the offset is (0, 0). Null raises.
  CPointD ptFindBDvertexArcCenterPt(CBDvertexArc* pArc);
};

/// Shapes; whoever holds the array owns them.
class CBDdrawObjArray : public laminate::NamedArray<CBDdrawObj> {};
