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

  /// Writes "(comp COMP (pin PIN))". Neither name is quoted. Always 0; a null stream raises `CInvalidArgException`.
  int nPrint2File(FILE* fp);
  void Write(laminate::TextOut& out) const;

  CString m_sComp;
  CString m_sPin;
};

class CBDrefPinArray : public laminate::NamedArray<CBDrefPin> {};

/// A net of the board.
class CBDnet : public laminate::Pooled {
 public:
  CBDnet();
  /// Copies member by member and shares `m_pRefPinArray`: only one of the nets that share it may be destroyed; the host
  /// sets the pointer of the others to null.
  CBDnet(const CBDnet&) = default;
  /// As the copy constructor. The array that this net held is not deleted: it is the host's to delete.
  CBDnet& operator=(const CBDnet&) = default;
  virtual ~CBDnet();

  /// Writes the "net" form. First each "%" of `m_sName` becomes "%%" in this object, at every call anew. Lock mode and
  /// rats nest are written as constants. Always 0; a null stream raises `CInvalidArgException`.
  int nPrint2File(FILE* fp);
  void Write(laminate::TextOut& out);

  CString m_sName;
  CString m_sType;
  CString m_sLockMode;
  CString m_sPen;
  CString m_sRatsNest;  ///< value of "drawRatsNest" or "rebuildRatsNest", whichever came last
  CString m_sReserved1;
  CBDrefPinArray* m_pRefPinArray;  ///< pins in file order; owned
};

class CBDnetArray : public laminate::NamedArray<CBDnet> {};
