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

  CString m_sName;                  ///< the pin's name in the gate
  CString m_sLockMode = "UNFIXED";  ///< as read; "UNFIXED" is written
};

class CBDgatePinArray : public laminate::NamedArray<CBDgatePin> {};

/// A gate of a component. Only as many forms in it are read as it has values, so that the pins of a written gate, which
/// stand behind its id and its lock mode, do not come back.
///
///   (gate NUMBER ... (id ID)? (pin NAME (lockMode M)?) ...)
class CBDgate : public laminate::Pooled {
 public:
  /// Makes a gate without id and pins.
  CBDgate();
  /// Copies member by member and shares `m_pGatePinArray`: only one of the gates that share it may be destroyed; the
  /// host sets the pointer of the others to null.
  CBDgate(const CBDgate&) = default;
  /// As the copy constructor. The array that this gate held is not deleted: it is the host's to delete.
  CBDgate& operator=(const CBDgate&) = default;
  /// Deletes the array with the pins in it.
  virtual ~CBDgate();

  /// Writes what stands inside a "gate" form, not the form itself. Each "%" of a pin's name becomes "%%" in the pin, at
  /// every call anew; the lock modes are written as constants. Always 0; a null stream raises `CInvalidArgException`.
  int nPrint2File(FILE* fp);
  /// The same into the text of a file that is being written.
  void Write(laminate::TextOut& out);

  CString m_sId;                     ///< may be empty
  CString m_sLockMode = "UNFIXED";   ///< never read; "UNFIXED" is written
  CBDgatePinArray* m_pGatePinArray;  ///< owned
};

class CBDgateArray : public laminate::NamedArray<CBDgate> {};
