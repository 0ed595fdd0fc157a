#pragma once
// What the sources of the family share beside their grammars: types at run time, copies, moves.
#include <memory>
#include <type_traits>
#include <typeinfo>
#include <utility>

#include "base/CExPtrArray.h"
#include "drawobj/CBDdrawObj.h"
#include "drawobj/CBDvertex.h"
#include "reader/Grammar.h"

namespace laminate {

/// `CBDdrawObj::pCopy` with an owner.
std::unique_ptr<CBDdrawObj> CopyDrawObj(const CBDdrawObj& shape);

/// Appends a copy of each element; elements that copy to null are left out.
template <class X>
void CopyElements(const CExPtrArray<X*, X*>& from, CExPtrArray<X*, X*>& to) {
  const INT_PTR nOld = to.GetSize();
  INT_PTR nNew = nOld;
  to.SetSize(nOld + from.GetSize());
  // Slots that are not filled are null meanwhile, so that the array's owner can always delete it.
  for (const X* p : from) {
    if (p == nullptr) continue;
    if (X* pCopy = p->pCopy()) to.GetData()[nNew++] = pCopy;
  }
  if (nNew != to.GetSize()) to.SetSize(nNew);
}

/// The object as a `T` when it is one, a class derived from `T` included; null otherwise.
template <class T, class Base>
T* As(Base& object) {
  using Plain = std::remove_const_t<T>;
  if (typeid(object) == typeid(Plain)) [[likely]]
    return static_cast<T*>(&object);
  return dynamic_cast<T*>(&object);
}

/// A vertex says that it is a point.
inline bool SaysPoint(const CBDvertex& vertex) { return SameWord(vertex.m_sType.View(), "PT"); }

/// The side that mirrors.
inline bool IsBack(const CString& sSide) { return SameWord(sSide.View(), "B"); }

/// Moves one point: on the back side one coordinate is negated first.
inline void MoveMirroringX(CPointD& pt, double dX, double dY, double dAngle, const CString& sSide) {
  if (IsBack(sSide)) pt.x = -pt.x;
  pt.MoveRotate(dX, dY, dAngle);
}
inline void MoveMirroringY(CPointD& pt, double dX, double dY, double dAngle, const CString& sSide) {
  if (IsBack(sSide)) pt.y = -pt.y;
  pt.MoveRotate(dX, dY, dAngle);
}
inline void Scale(CPointD& pt, double dScale) {
  pt.x *= dScale;
  pt.y *= dScale;
}

/// Every element that there is.
template <class X>
void MoveElements(CExPtrArray<X*, X*>& elements, double dX, double dY, double dAngle, const CString& sSide) {
  for (X* p : elements) {
    if (p != nullptr) p->vMoveRotate(dX, dY, dAngle, sSide);
  }
}
template <class X>
void ScaleElements(CExPtrArray<X*, X*>& elements, double dScale) {
  for (X* p : elements) {
    if (p != nullptr) p->vSetScale(dScale);
  }
}

}  // namespace laminate
