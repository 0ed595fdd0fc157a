#pragma once
#include <array>

#include "base/CString.h"

/// A type that hosts may hold and copy, a text with a state behind it. Nothing in the library uses it.
class CTokenizer {
 public:
  CTokenizer() = default;
  CTokenizer(const CTokenizer&) = default;
  CTokenizer& operator=(const CTokenizer&) = default;
  ~CTokenizer() = default;

  CString m_sText;
  std::array<unsigned char, 32> m_aBlock{};
  int m_nValue = 0;
};
