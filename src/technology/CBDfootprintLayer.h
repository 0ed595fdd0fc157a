#pragma once
#include <cstdio>

#include "base/CExPtrArray.h"
#include "base/CString.h"
#include "base/Pool.h"

namespace laminate {
class TextOut;
}

/// A layer that footprints may draw on.
class CBDfootprintLayer : public laminate::Pooled {
 public:
  CBDfootprintLayer() = default;
  CBDfootprintLayer(const CBDfootprintLayer&) = default;
  CBDfootprintLayer& operator=(const CBDfootprintLayer&) = default;
  virtual ~CBDfootprintLayer() = default;

  /// Writes "(layer NAME (type TYPE))", the name in quotes if it holds a bracket. Always 0; a null stream raises
  /// `CInvalidArgException`.
  int nPrint2File(FILE* fp);
  /// The same into the text of a file that is being written.
  void Write(laminate::TextOut& out) const;

  CString m_sName;
  CString m_sType;  ///< a word of the file such as "CONDUCTIVE" or "COMPAREA"
};

class CBDfootprintLayerArray : public laminate::NamedArray<CBDfootprintLayer> {};
