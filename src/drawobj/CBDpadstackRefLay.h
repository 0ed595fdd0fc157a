#pragma once
#include <cstdio>

#include "base/CExPtrArray.h"
#include "base/CString.h"
#include "base/Pool.h"

namespace laminate {
class TextOut;
}

/// What a placed padstack says of one layer.
///
/// Forms read, in a padstack's "conductive" or "nonConductive": (layerNumber N (status T) (geometry SHAPE...)) and
/// (layer NAME (visible YES|NO) (status T) (geometry SHAPE...)); a form of any other keyword has status and geometry.
/// Written: (layerNumber N (status T)).
class CBDpadstackRefLay : public laminate::Pooled {
 public:
  CBDpadstackRefLay() = default;
  CBDpadstackRefLay(const CBDpadstackRefLay&) = default;
  CBDpadstackRefLay& operator=(const CBDpadstackRefLay&) = default;
  virtual ~CBDpadstackRefLay();

  CString m_sStatus;       ///< kept as text
  int m_nLayerNumber = 0;  ///< 0 where the form gives none, even if its shapes inherit one
  CString m_sLayerName;    ///< empty where the form gives none, likewise
  int m_bVisible = 1;      ///< 0 when the file says (visible NO)

  /// Always 0. Null raises.
  int nPrint2File(FILE* fp);
  void Write(laminate::TextOut& out) const;
  /// A copy in which `m_bVisible` is 1.
  CBDpadstackRefLay* pCopy() const;
};

/// Layer entries in file order; whoever holds the array owns them.
class CBDpadstackRefLayArray : public laminate::NamedArray<CBDpadstackRefLay> {};
