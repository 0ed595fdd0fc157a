#pragma once
#include <cstdio>

#include "base/CExPtrArray.h"
#include "base/CPointD.h"
#include "base/CString.h"
#include "base/Pool.h"

class CBDdrawObjArray;

namespace laminate {
class TextOut;
}

/// A pin of a footprint with its pad shapes, in footprint coordinates.
class CBDtoeprintPin : public laminate::Pooled {
 public:
  CBDtoeprintPin();
  /// Copies member by member and shares `m_pDrawObjArray`: only one of the pins that share it may be destroyed; the
  /// host sets the pointer of the others to null.
  CBDtoeprintPin(const CBDtoeprintPin&) = default;
  /// As the copy constructor. The array that this pin held is not deleted: it is the host's to delete.
  CBDtoeprintPin& operator=(const CBDtoeprintPin&) = default;
  virtual ~CBDtoeprintPin();

  /// Writes the "pin" form, with all shapes in one "FPADSTACK" layer whatever their own. The name stands without
  /// quotes. Writing a shape may change its net name, as `CBDdrawObj::nPrint2File` tells. Always 0; a null stream
  /// raises `CInvalidArgException`.
  int nPrint2File(FILE* fp);
  void Write(laminate::TextOut& out);

  CString m_sName;
  CPointD m_ptLocation;  ///< mm
  // Reserved: nothing reads or writes these.
  CPointD m_ptReserved1;
  CPointD m_ptReserved2;
  CBDdrawObjArray* m_pDrawObjArray;  ///< owned
};

class CBDtoeprintPinArray : public laminate::NamedArray<CBDtoeprintPin> {
 public:
  /// The first pin of that name, or null. It stays the array's.
  CBDtoeprintPin* GetToeprintPin(CString sName);
};
