#pragma once
#include <cstdio>

#include "base/CExPtrArray.h"
#include "base/Pool.h"

/// A numbered text size, in the file's own whole numbers. Read as
///   (textSize ID (width N)? (height N)? (space N)? (vSpace N)? (strokeWidth N)?)
class CBDtextSize : public laminate::Pooled {
 public:
  CBDtextSize() = default;
  CBDtextSize(const CBDtextSize&) = default;
  CBDtextSize& operator=(const CBDtextSize&) = default;
  virtual ~CBDtextSize() = default;

  /// Writes "(textSize N)" with `nIndex` + 1, five sizes that are always 0.00000, and a bracket too many; for hosts.
  /// Always 0; a null stream raises `CInvalidArgException`.
  int nPrint2File(FILE* fp, int nIndex);

  int m_nId = 0;
  int m_nWidth = 0;
  int m_nHeight = 0;
  int m_nSpace = 0;
  int m_nVSpace = 0;
  int m_nStrokeWidth = 0;
};

class CBDtextSizeArray : public laminate::NamedArray<CBDtextSize> {};
