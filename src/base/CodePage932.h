#pragma once
#include <cstdint>

#include "base/CString.h"

namespace laminate {

/// Turns UTF-16 into text of code page 932, unit by unit. A character that has no place there, one behind the first
/// 65536 and a lone surrogate each become one "?".
class CodePage932Narrower {
 public:
  /// Appends to a text, which must stay until `Finish`.
  explicit CodePage932Narrower(CString& sTarget) : m_sTarget(sTarget) {}
  void Add(std::uint16_t nUnit);
  void Finish();

 private:
  CString& m_sTarget;
  bool m_bHigh = false;  // the first half of a pair stands alone so far
};

}  // namespace laminate
