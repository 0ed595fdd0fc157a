#pragma once
// What the writers do to texts. Each change that a writer makes in its object is named here once.
#include <algorithm>
#include <string_view>
#include <utility>

#include "base/CString.h"
#include "base/TextOut.h"

namespace laminate {

/// "%" becomes "%%", in the object itself, so that every further write doubles again: the formats ask for it.
inline void DoublePercents(CString& s) {
  if (s.View().find('%') != std::string_view::npos) s.Replace("%", "%%");
}

/// Puts a text between double quotes, in the object itself.
inline void Enquote(CString& s) {
  CString sQuoted;
  sQuoted.Preallocate(s.GetLength() + 2);
  sQuoted += '"';
  sQuoted += s;
  sQuoted += '"';
  s = std::move(sQuoted);
}

inline bool HoldsBracket(const CString& s) { return s.View().find_first_of("()") != std::string_view::npos; }
inline bool HoldsBracketOrBlank(const CString& s) { return s.View().find_first_of("() ") != std::string_view::npos; }

/// What stands before and behind a name that is quoted only where it must be: a quote, or nothing.
inline std::string_view QuoteIf(bool bQuote) { return bQuote ? "\"" : ""; }

/// How many elements an array holds, empty slots left out. A null array is an empty one.
template <class Array>
INT_PTR CountOf(const Array* pArray) {
  return pArray == nullptr ? 0 : pArray->GetSize() - std::count(pArray->begin(), pArray->end(), nullptr);
}

/// Writes each element of an array, in order. A null array is an empty one.
template <class Array>
void WriteEach(TextOut& out, const Array* pArray) {
  if (pArray == nullptr) return;
  for (const auto& p : *pArray) {
    if (p != nullptr) p->Write(out);
  }
}

}  // namespace laminate
