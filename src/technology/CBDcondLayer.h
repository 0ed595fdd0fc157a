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

  /// Writes the "refer" form, with a "userDefType" that is always 0. Always 0; a null stream raises
  /// `CInvalidArgException`.
  int nPrint2File(FILE* fp);
  void Write(laminate::TextOut& out) const;

  CString m_sName;
  CString m_sType;
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

  /// Writes the "layerNumber" form; `m_nProperty` is not written. Always 0; a null stream raises
  /// `CInvalidArgException`.
  int nPrint2File(FILE* fp);
  void Write(laminate::TextOut& out) const;

  int m_nLayerNumber = 0;
  int m_nProperty = -1;  ///< the number of its last "propertyI"
  CString m_sReserved1;
  CString m_sType = "POSI";
  CString m_sSoldering;
  CString m_sReserved2;
  CLPropertyArray m_aProperties;      ///< filled by the host only
  CBDcondLayerRefArray* m_pRefArray;  ///< owned
};

class CBDcondLayerArray : public laminate::NamedArray<CBDcondLayer> {};
