#pragma once
#include <cstdio>

#include "base/CExPtrArray.h"
#include "base/CString.h"
#include "base/Pool.h"

namespace laminate {
class TextOut;
}

/// A pin of a gate.
class CBDgatePin : public laminate::Pooled {
 public:
  CBDgatePin() = default;
  CBDgatePin(const CBDgatePin&) = default;
  CBDgatePin& operator=(const CBDgatePin&) = default;
  virtual ~CBDgatePin() = default;

  CString m_sName;
  CString m_sLockMode = "UNFIXED";
};

class CBDgatePinArray : public laminate::NamedArray<CBDgatePin> {};

/// A gate of a component.
class CBDgate : public laminate::Pooled {
 public:
  CBDgate();
  /// Copies member by member and shares `m_pGatePinArray`: only one of the gates that share it may be destroyed; the
  /// host sets the pointer of the others to null.
  CBDgate(const CBDgate&) = default;
  /// As the copy constructor. The array that this gate held is not deleted: it is the host's to delete.
  CBDgate& operator=(const CBDgate&) = default;
  virtual ~CBDgate();

  /// Writes what stands inside a "gate" form, not the form itself. Each "%" of a pin's name becomes "%%" in the pin, at
  /// every call anew; the lock modes are written as constants. Always 0; a null stream raises `CInvalidArgException`.
  int nPrint2File(FILE* fp);
  void Write(laminate::TextOut& out);

  CString m_sId;
  CString m_sLockMode = "UNFIXED";
  CBDgatePinArray* m_pGatePinArray;  ///< owned
};

class CBDgateArray : public laminate::NamedArray<CBDgate> {};
