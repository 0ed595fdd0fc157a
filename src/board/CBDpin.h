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

/// The place of a component's pin in one of its gates.
class CBDpinGate : public laminate::Pooled {
 public:
  CBDpinGate() = default;
  CBDpinGate(const CBDpinGate&) = default;
  CBDpinGate& operator=(const CBDpinGate&) = default;
  virtual ~CBDpinGate() = default;

  /// Writes "(gate NUMBER (name NAME))". First each "%" of `m_sName` becomes "%%" in this object, at every call anew.
  /// Always 0; a null stream raises `CInvalidArgException`.
  int nPrint2File(FILE* fp);
  /// The same into the text of a file that is being written.
  void Write(laminate::TextOut& out);

  int m_nGate = 0;  ///< number of the gate, from 1
  CString m_sName;  ///< the pin's name in the gate
};

class CBDpinGateArray : public laminate::NamedArray<CBDpinGate> {};

/// A bond wire of a pin, in mm. Read and never written.
class CBDbondwire : public laminate::Pooled {
 public:
  CBDbondwire() = default;
  CBDbondwire(const CBDbondwire&) = default;
  CBDbondwire& operator=(const CBDbondwire&) = default;
  virtual ~CBDbondwire() = default;

  CPointD m_ptTo;    ///< the second form of a "bondWire"
  CPointD m_ptFrom;  ///< the first one
};

class CBDbondwireArray : public laminate::NamedArray<CBDbondwire> {};

/// A pin of a component.
///
///   (pin NAME (pt X Y) (gate NUMBER (name NAME)) ... (layout (layer (conductive N) SHAPE ...) ...) (bondWire ...) ...)
class CBDpin : public laminate::Pooled {
 public:
  /// Makes an unnamed pin with empty arrays.
  CBDpin();
  /// Copies member by member and shares the three arrays: only one of the pins that share them may be destroyed; the
  /// host sets the pointers of the others to null.
  CBDpin(const CBDpin&) = default;
  /// As the copy constructor. The arrays that this pin held are not deleted: they are the host's to delete.
  CBDpin& operator=(const CBDpin&) = default;
  /// Deletes the arrays with all in them.
  virtual ~CBDpin();

  /// Writes the "pin" form, without the bond wires. A layer is written as "(layer (TYPE (type NAME))", which loads
  /// again for a system layer alone. First each "%" of `m_sName` becomes "%%" in this object, at every call anew.
  /// Always 0; a null stream raises `CInvalidArgException`.
  int nPrint2File(FILE* fp);
  /// The same into the text of a file that is being written.
  void Write(laminate::TextOut& out);

  CBDbondwireArray* m_pBondwireArray;  ///< owned
  CBDpinGateArray* m_pPinGateArray;    ///< owned
  CString m_sName;                     ///< name of the footprint's pin
  CBDdrawObjArray* m_pDrawObjArray;    ///< shapes on the board; owned
  CPointD m_ptLocation;                ///< mm
};

class CBDpinArray : public laminate::NamedArray<CBDpin> {};
