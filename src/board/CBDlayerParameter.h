#pragma once
#include <cstdio>

#include "base/CExPtrArray.h"
#include "base/CString.h"
#include "base/Pool.h"

namespace laminate {
class TextOut;
}

/// How a layer is displayed. The three layer fields are the host's to fill: no reader sets them.
class CBDlayerParameter : public laminate::Pooled {
 public:
  CBDlayerParameter() = default;
  CBDlayerParameter(const CBDlayerParameter&) = default;
  CBDlayerParameter& operator=(const CBDlayerParameter&) = default;
  virtual ~CBDlayerParameter() = default;

  /// Writes the "layer" form. Without a known layer type its opening line is missing and its bracket is one too many.
  /// Display mode, hatch and mrc mode are written as constants. Always 0; a null stream raises `CInvalidArgException`.
  int nPrint2File(FILE* fp);
  void Write(laminate::TextOut& out) const;

  CString m_sLayerType;  ///< "conductive", "nonConductive" or "systemLayer"
  CString m_sLayerName;
  int m_nLayerNumber = 0;
  int m_nColorId = 0;
  int m_nPriority = 0;
  CString m_sDisplayMode;
  int m_nHatchAngle = 0;
  int m_nHatchPitch = 0;
  CString m_sMrcMode;
};

class CBDlayerParameterArray : public laminate::NamedArray<CBDlayerParameter> {};
