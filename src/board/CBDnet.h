#pragma once
#include <cstdio>

#include "base/CExPtrArray.h"
#include "base/CString.h"
#include "base/Pool.h"

namespace laminate {
class TextOut;
}

/// A pin of a net: a component's reference and the name of its pin.
class CBDrefPin : public laminate::Pooled {
 public:
  CBDrefPin() = default;
  CBDrefPin(const CBDrefPin&) = default;
  CBDrefPin& operator=(const CBDrefPin&) = default;
  virtual ~CBDrefPin() = default;

  /// Writes "(comp COMP (pin PIN))". Neither name is quoted. Always 0; a null stream raises `CInvalidArgException`, and
  /// a failing write is left in the stream's error flag.
  int nPrint2File(FILE* fp);
  /// The same into any output of text.
  void Write(laminate::TextOut& out) const;

  CString m_sComp;  ///< reference of the component
  CString m_sPin;   ///< name of its pin; empty without a "pin" form
};

class CBDrefPinArray : public laminate::NamedArray<CBDrefPin> {};

/// A net of the board. Its form, in which any child may be absent:
///   (net NAME (type TYPE) (lockMode MODE) (pen PEN) (drawRatsNest YES) (rebuildRatsNest YES) (comp REF (pin PIN)) ...)
/// A form without its value raises `CInvalidArgException` when it is read.
class CBDnet : public laminate::Pooled {
 public:
  CBDnet();
  /// Copies member by member and shares `m_pRefPinArray`: only one of the nets that share it may be destroyed; the host
  /// sets the pointer of the others to null.
  CBDnet(const CBDnet&) = default;
  /// As the copy constructor. The array that this net held is not deleted: it is the host's to delete.
  CBDnet& operator=(const CBDnet&) = default;
  virtual ~CBDnet();

  /// Writes the "net" form. First each "%" of `m_sName` becomes "%%" in this object, at every call anew. The name is
  /// written in quotes, type and pen without; nothing is escaped. Lock mode and rats nest are written as constants.
  /// Always 0; a null stream raises `CInvalidArgException`, and a failing write is left in the stream's error flag.
  int nPrint2File(FILE* fp);
  /// The same into any output of text.
  void Write(laminate::TextOut& out);

  CString m_sName;
  CString m_sType;                 ///< value of "type"
  CString m_sLockMode;             ///< value of "lockMode"; not written
  CString m_sPen;                  ///< value of "pen"
  CString m_sRatsNest;             ///< value of "drawRatsNest" or "rebuildRatsNest", whichever came last; not written
  CString m_sReserved1;            ///< empty; not used
  CBDrefPinArray* m_pRefPinArray;  ///< pins in file order; owned
};

class CBDnetArray : public laminate::NamedArray<CBDnet> {};
