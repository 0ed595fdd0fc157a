#pragma once
#include <string_view>
#include <vector>

#include "base/CString.h"
#include "base/CStringArray.h"

/// Splits a text at the bytes of `szDelimiters` and appends its columns to `arrOut`; gives their number. Runs of
/// delimiters make no empty columns. A double-quoted stretch is a column of its own without its quotes, may hold
/// delimiters, and ends at the closing quote whatever follows; an empty pair of quotes is an empty column, and an
/// unclosed quote runs to the end of the text. The five options are taken and have no effect. The text may be an
/// element of `arrOut`. A null text or null delimiters raise `CInvalidArgException`; whatever raises leaves `arrOut` as
/// it was.
ULONGLONG XTokenString(const char* szText, const char* szDelimiters, CStringArray& arrOut, int nOption1, int nOption2,
                       int nOption3, int nOption4, int nOption5);

namespace laminate {

/// The next column of a text, as `XTokenString` cuts it; `s` moves behind it. False when there is none left.
/// `isDelimiter` tells of a byte whether it parts columns.
template <class IsDelimiter>
bool CutColumn(std::string_view& s, std::string_view& sColumn, IsDelimiter isDelimiter) {
  std::size_t i = 0;
  while (i < s.size() && isDelimiter(s[i])) ++i;
  if (i == s.size()) {
    s = {};
    return false;
  }
  if (s[i] == '"') {
    s.remove_prefix(i + 1);
    const std::size_t close = s.find('"');
    sColumn = s.substr(0, close);
    s.remove_prefix(close == std::string_view::npos ? s.size() : close + 1);
    return true;
  }
  const std::size_t first = i;
  while (i < s.size() && s[i] != '"' && !isDelimiter(s[i])) ++i;
  sColumn = s.substr(first, i - first);
  s.remove_prefix(i);
  return true;
}
/// The same with the bytes of a text as delimiters.
bool NextColumn(std::string_view& s, std::string_view sDelimiters, std::string_view& sColumn);
/// The same with the blank as the one delimiter.
inline bool NextColumn(std::string_view& s, std::string_view& sColumn) {
  return CutColumn(s, sColumn, [](char ch) { return ch == ' '; });
}

/// A line without the white space of the C locale at both ends.
std::string_view Trimmed(std::string_view s);

/// The columns of a line, cut once: the line is trimmed of white space and split at single blanks as `XTokenString`
/// does. The columns are views of the line, whose bytes must outlive them. An object that serves line after line
/// allocates nothing once it has met its longest one.
class LineColumns {
 public:
  LineColumns() = default;
  explicit LineColumns(std::string_view sLine) { Split(sLine); }
  void Split(std::string_view sLine);
  int Count() const { return static_cast<int>(m_columns.size()); }
  /// Column `n`, counted from 1; empty for 0 and beyond the last. A negative one raises `CInvalidArgException`.
  std::string_view operator[](int n) const {
    if (n < 0) AfxThrowInvalidArgException();
    return n == 0 || n > Count() ? std::string_view() : m_columns[static_cast<std::size_t>(n) - 1];
  }
  auto begin() const { return m_columns.begin(); }
  auto end() const { return m_columns.end(); }

 private:
  std::vector<std::string_view> m_columns;
};

/// The same columns into a list of the caller's, which is emptied first.
void SplitColumns(std::string_view sLine, std::vector<std::string_view>& columns);

/// One column of a line, as `LineColumns` counts them. NUL is a byte like any other.
CString NthColumn(std::string_view sLine, int nColumn);
inline CString NthColumn(const CString& sLine, int nColumn) { return NthColumn(sLine.View(), nColumn); }

}  // namespace laminate
