#pragma once
#include <cstdio>
#include <memory>

#include "base/CExPtrArray.h"
#include "base/CPointD.h"
#include "base/CRectD.h"
#include "base/CString.h"
#include "base/Pool.h"

class CBDdrawObjArray;
class CECadClsLvl;

namespace laminate {
class TextOut;
}

/// A named shape of the library: what a padstack puts on a layer.
class CBDpad : public laminate::Pooled {
 public:
  CBDpad();
  /// Copies member by member and shares `m_pDrawObjArray`: only one of the pads that share it may be destroyed; the
  /// host sets the pointer of the others to null.
  CBDpad(const CBDpad&) = default;
  /// As the copy constructor. The array that this pad held is not deleted: it is the host's to delete.
  CBDpad& operator=(const CBDpad&) = default;
  virtual ~CBDpad();

  /// Writes the "pad" form. Its box and grid come from `m_rcArea`, the names are not quoted, and writing a shape
  /// changes that shape's net name. Always 0; a null stream raises `CInvalidArgException`.
  int nPrint2File(FILE* fp);
  /// The same into the text of a file that is being written.
  void Write(laminate::TextOut& out);

  int m_nUver = 1;  ///< no reader sets it
  CString m_sName;
  CPointD m_ptReserved1;
  CPointD m_ptReserved2;
  CPointD m_ptReserved3;
  CPointD m_ptReserved4;
  CString m_sReserved1;
  CString m_sReserved2;
  CBDdrawObjArray* m_pDrawObjArray;  ///< shapes, around the pad's origin; owned
  CRectD m_rcArea;                   ///< x, y, width and height in mm; no reader sets it
};

class CBDpadArray : public laminate::NamedArray<CBDpad> {};
