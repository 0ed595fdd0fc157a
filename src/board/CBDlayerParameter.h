#pragma once
#include <cstdio>

#include "base/CExPtrArray.h"
#include "base/CString.h"
#include "base/Pool.h"

namespace laminate {
class TextOut;
}

/// How a layer is displayed. Read as
///   (layer HEADER (colorId N)? (priority N)? (displayMode WORD)? (hatch (angle N)? (pitch N)?)? (mrcMode WORD)?)
/// where HEADER names a layer as board/LayerForms.h tells. It must be sound but is not kept: the three layer fields are
/// the host's to fill. Written as
///   (layer HEADER (colorId N) (priority N) (dispMode EMPTY) (hatch (angle 45) (pitch 20)) (mrcMode OFF))
class CBDlayerParameter : public laminate::Pooled {
 public:
  CBDlayerParameter() = default;
  CBDlayerParameter(const CBDlayerParameter&) = default;
  CBDlayerParameter& operator=(const CBDlayerParameter&) = default;
  virtual ~CBDlayerParameter() = default;

  /// Writes the "layer" form. Without a known layer type its opening line is missing and its bracket is one too many.
  /// Always 0; a null stream raises `CInvalidArgException`.
  int nPrint2File(FILE* fp);
  void Write(laminate::TextOut& out) const;

  CString m_sLayerType;    ///< "conductive", "nonConductive" or "systemLayer"
  CString m_sLayerName;    ///< of a non-conductive or system layer; written between quotes if it holds a bracket
  int m_nLayerNumber = 0;  ///< of a conductive layer
  int m_nColorId = 0;
  int m_nPriority = 0;
  CString m_sDisplayMode;  ///< never written: EMPTY stands there, under a keyword that is not read
  int m_nHatchAngle = 0;   ///< never written: 45 stands there
  int m_nHatchPitch = 0;   ///< never written: 20 stands there
  CString m_sMrcMode;      ///< never written: OFF stands there
};

class CBDlayerParameterArray : public laminate::NamedArray<CBDlayerParameter> {};
