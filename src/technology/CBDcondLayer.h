#pragma once
#include <cstdio>

#include "base/CExPtrArray.h"
#include "base/CLProperty.h"
#include "base/CString.h"
#include "base/Platform.h"
#include "base/Pool.h"

namespace laminate {
class TextOut;
}

/// A non-conductive layer that a conductive layer refers to.
class CBDcondLayerRef : public laminate::Pooled {
 public:
  CBDcondLayerRef() = default;
  CBDcondLayerRef(const CBDcondLayerRef&) = default;
  CBDcondLayerRef& operator=(const CBDcondLayerRef&) = default;
  virtual ~CBDcondLayerRef() = default;

  /// Writes "(refer NAME (type TYPE) (userDefType 0))", the name in quotes if it holds a bracket. Always 0; a null
  /// stream raises `CInvalidArgException`.
  int nPrint2File(FILE* fp);
  /// The same into the text of a file that is being written.
  void Write(laminate::TextOut& out) const;

  CString m_sName;             ///< of the non-conductive layer
  CString m_sType;             ///< what it is to this one, such as "RESIST"
  __int64 m_nUserDefType = 0;  ///< never set and not written
};

class CBDcondLayerRefArray : public laminate::NamedArray<CBDcondLayerRef> {};

/// A copper layer of the board, known by its number.
class CBDcondLayer : public laminate::Pooled {
 public:
  CBDcondLayer();
  /// Copies number, texts and properties, and shares `m_pRefArray`: only one of the layers that share it may be
  /// destroyed; the host sets the pointer of the others to null.
  CBDcondLayer(const CBDcondLayer&) = default;
  /// As the copy constructor. The array that this layer held is not deleted: it is the host's to delete.
  CBDcondLayer& operator=(const CBDcondLayer&) = default;
  virtual ~CBDcondLayer();

  /// Writes "(layerNumber N (type T) (soldering S) REFERENCE ... (ITEM COMMENT) ...)", no soldering when it is empty;
  /// `m_nProperty` is not written. Always 0; a null stream raises `CInvalidArgException`.
  int nPrint2File(FILE* fp);
  /// The same into the text of a file that is being written.
  void Write(laminate::TextOut& out) const;

  int m_nLayerNumber = 0;
  int m_nProperty = -1;  ///< the number of its last "propertyI"
  CString m_sReserved1;
  CString m_sType = "POSI";  ///< "POSI" or "NEGA": what is drawn is copper, or is free of it
  CString m_sSoldering;      ///< a word of the file such as "REFLOW"; may be empty
  CString m_sReserved2;
  CLPropertyArray m_aProperties;      ///< filled by the host only
  CBDcondLayerRefArray* m_pRefArray;  ///< owned
};

class CBDcondLayerArray : public laminate::NamedArray<CBDcondLayer> {};
