#pragma once
#include <cstdio>

#include "base/CString.h"
#include "base/Platform.h"
#include "base/Pool.h"

class CBDesigner;
class CBDlayerParameterArray;
class CBDtextSizeArray;
class CBDvisibleLayerSetArray;

namespace laminate {
class TextOut;
}

/// The display settings of a board. Read as
///   (parameter
///     (layerParameters (layer ...) ...)? (visibleLayerSet (set ...) ...)? (textSizeParameters (textSize ...) ...)?)
class CBDparameter : public laminate::Pooled {
 public:
  /// Creates the three arrays, empty.
  CBDparameter();
  /// Copies member by member and shares the three arrays: only one of the objects that share them may be destroyed; the
  /// host sets the pointers of the others to null.
  CBDparameter(const CBDparameter&) = default;
  /// As the copy constructor. The arrays that this object held are not deleted: they are the host's to delete.
  CBDparameter& operator=(const CBDparameter&) = default;
  /// Deletes the three arrays with their elements, each if not null.
  virtual ~CBDparameter();

  /// Writes the "parameter" form with the layer parameters; the other settings are not written, and the root is not
  /// used. Always 0; a null stream raises `CInvalidArgException`.
  int nPrint2File(FILE* fp, CBDesigner* pBDesigner);
  void Write(laminate::TextOut& out) const;

  CBDvisibleLayerSetArray* m_pVisibleLayerSetArray;  ///< named choices of layers; read and never written; owned
  int m_aReserved1[6] = {};                          ///< this and the other reserved fields: not used, the host's
  double m_dReserved1 = 0;
  int m_aReserved2[5] = {};
  CString m_sReserved1;
  CString m_sReserved2;
  CString m_sReserved3;
  __int64 m_nReserved1 = 0;
  CString m_sReserved4;
  CBDtextSizeArray* m_pTextSizeArray;              ///< read and never written; owned
  CBDlayerParameterArray* m_pLayerParameterArray;  ///< how layers are displayed; owned
};
