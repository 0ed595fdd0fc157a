#pragma once
#include <cstdio>

#include "base/CPointD.h"
#include "base/Pool.h"

class CBDdrawObjArray;

namespace laminate {
class TextOut;
}

/// The body of a footprint: its shapes outside the pins, in footprint coordinates and on footprint layers.
class CBDheelprint : public laminate::Pooled {
 public:
  CBDheelprint();
  /// Copies member by member and shares `m_pDrawObjArray`: only one of the objects that share it may be destroyed; the
  /// host sets the pointer of the others to null.
  CBDheelprint(const CBDheelprint&) = default;
  /// As the copy constructor. The array that this object held is not deleted: it is the host's to delete.
  CBDheelprint& operator=(const CBDheelprint&) = default;
  virtual ~CBDheelprint();

  /// Writes the "heelprint" form, with a layer block for each run of shapes of one layer; a shape without a layer name
  /// is left out. A layer name with a bracket in it is quoted, any other stands bare. Writing a shape may change its
  /// net name, as `CBDdrawObj::nPrint2File` tells. The second argument has no effect. Always 0; a null stream raises
  /// `CInvalidArgException`.
  int nPrint2File(FILE* fp, int nMode);
  void Write(laminate::TextOut& out);

  // Reserved: nothing reads or writes these.
  CPointD m_ptReserved1;
  CPointD m_ptReserved2;
  CBDdrawObjArray* m_pDrawObjArray;  ///< owned
};
