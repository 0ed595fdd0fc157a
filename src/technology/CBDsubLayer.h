#pragma once
#include <cstdio>

#include "base/CExPtrArray.h"
#include "base/CString.h"
#include "base/Pool.h"

namespace laminate {
class TextOut;
}

/// A layer that stands beside the copper layers: one of the system's own, or one that draws on another.
class CBDsubLayer : public laminate::Pooled {
 public:
  CBDsubLayer() = default;
  CBDsubLayer(const CBDsubLayer&) = default;
  CBDsubLayer& operator=(const CBDsubLayer&) = default;
  virtual ~CBDsubLayer() = default;

  /// Writes "(systemLayer (type NAME))" or a "drawLayerOf" form by the layer kind, the name in quotes if it holds a
  /// bracket; any other kind writes nothing. Always 0; a null stream raises `CInvalidArgException`.
  int nPrint2File(FILE* fp);
  /// The same into the text of a file that is being written.
  void Write(laminate::TextOut& out) const;

  CString m_sKind = "systemLayer";  ///< never used
  CString m_sLayerKind;             ///< "systemLayer", "conductive" or "nonConductive"
  CString m_sName;                  ///< the system layer's type, or the name of the layer it draws on
};

class CBDsubLayerArray : public laminate::NamedArray<CBDsubLayer> {};
