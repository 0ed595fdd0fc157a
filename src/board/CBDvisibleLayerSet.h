#pragma once
#include <cstdio>

#include "base/CExPtrArray.h"
#include "base/CString.h"
#include "base/CStringArray.h"
#include "base/Pool.h"

/// A named choice of layers to show. Read as
///   (set NAME (layer HEADER (visible YES | NO)) ...)
/// with a HEADER as board/LayerForms.h tells. A layer without a "visible" is not visible.
class CBDvisibleLayerSet : public laminate::Pooled {
 public:
  CBDvisibleLayerSet() = default;
  CBDvisibleLayerSet(const CBDvisibleLayerSet&) = delete;
  CBDvisibleLayerSet& operator=(const CBDvisibleLayerSet&) = delete;
  virtual ~CBDvisibleLayerSet() = default;

  /// Writes "(set NAME)" without its layers; for hosts, since no export writes sets. Always 0; a null stream raises
  /// `CInvalidArgException`.
  int nPrint2File(FILE* fp);

  CString m_sName;
  CStringArray m_aLayers;  ///< names of the visible layers; that of a conductive layer is its number's text
};

class CBDvisibleLayerSetArray : public laminate::NamedArray<CBDvisibleLayerSet> {};
