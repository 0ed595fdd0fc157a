#pragma once
#include <cstdio>

#include "base/CExPtrArray.h"
#include "base/CString.h"
#include "base/CStringArray.h"
#include "base/Pool.h"

class CBDdrawObjArray;

namespace laminate {
class TextOut;
}

/// A named set of components, with shapes of its own. Read as
///   (compGroup NAME (list REFERENCE ...)? (side SIDE)? (pen N)? (layout (layer HEADER SHAPE ...) ...)?)
/// where several lists add up, HEADER names a layer as board/LayerForms.h tells, and of a "refer" among the shapes the
/// first form counts.
class CBDcompGroup : public laminate::Pooled {
 public:
  /// Creates the array of shapes, empty.
  CBDcompGroup();
  CBDcompGroup(const CBDcompGroup&) = delete;
  CBDcompGroup& operator=(const CBDcompGroup&) = delete;
  virtual ~CBDcompGroup();

  /// Writes the "compGroup" form, names and references without quotes and side and pen as constants:
  ///   (compGroup NAME (list REFERENCE ...) (side BOTH_SIDES) (pen 0)
  ///     (layout (layer (TYPE (type NAME)) SHAPE ...) ...))
  /// A run of shapes of one layer name is a "layer". Only those of system layers load again: the others are read
  /// without a "type". A shape without a layer name is left out and, as the last one, leaves a bracket open. The shapes
  /// change as their own writers tell. Always 0; a null stream raises `CInvalidArgException`.
  int nPrint2File(FILE* fp);
  void Write(laminate::TextOut& out);
  /// 1 if exactly that reference is in the list, else 0.
  int bIsExistReference(CString sReference);

  CString m_sName;
  CStringArray m_aList;              ///< references of components
  CString m_sSide;                   ///< read and never written
  int m_nPen = 0;                    ///< read and never written
  CBDdrawObjArray* m_pDrawObjArray;  ///< owned
};

class CBDcompGroupArray : public laminate::NamedArray<CBDcompGroup> {};
