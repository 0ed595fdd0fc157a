#pragma once
#include <cstdio>

#include "base/CExPtrArray.h"
#include "base/CLProperty.h"
#include "base/CString.h"
#include "base/Pool.h"

namespace laminate {
class TextOut;
}

/// A layer of the board that is no copper: silk screen, solder resist and the like.
class CBDnonConductiveLayer : public laminate::Pooled {
 public:
  CBDnonConductiveLayer() = default;
  CBDnonConductiveLayer(const CBDnonConductiveLayer&) = default;
  CBDnonConductiveLayer& operator=(const CBDnonConductiveLayer&) = default;
  virtual ~CBDnonConductiveLayer() = default;

  /// Writes "(layer NAME (ITEM COMMENT) ...)", the name in quotes if it holds a bracket, so that a blank splits it when
  /// it is read again; the sort key is not written. Always 0; a null stream raises
  /// `CInvalidArgException`.
  int nPrint2File(FILE* fp);
  /// The same into the text of a file that is being written.
  void Write(laminate::TextOut& out) const;

  int m_nSortKey = -1;  ///< place in listings; -1 when the file tells none
  CString m_sName;
  CString m_sReserved1;
  CString m_sReserved2;
  CLPropertyArray m_aProperties;  ///< owns its elements and copies them with the layer; filled by the host only
};

class CBDnonConductiveLayerArray : public laminate::NamedArray<CBDnonConductiveLayer> {};
