#include "base/XTokenString.h"

#include <cstring>

namespace laminate {
namespace {

// Where `isDelimiter` tells which bytes part columns.
template <class IsDelimiter>
bool Next(std::string_view& s, std::string_view& sColumn, IsDelimiter isDelimiter) {
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

constexpr bool IsSpace(char ch) { return ch == ' ' || (ch >= '\t' && ch <= '\r'); }

}  // namespace

bool NextColumn(std::string_view& s, std::string_view sDelimiters, std::string_view& sColumn) {
  return Next(s, sColumn, [sDelimiters](char ch) { return sDelimiters.find(ch) != std::string_view::npos; });
}
bool NextColumn(std::string_view& s, std::string_view& sColumn) {
  return Next(s, sColumn, [](char ch) { return ch == ' '; });
}

std::string_view Trimmed(std::string_view s) {
  while (!s.empty() && IsSpace(s.front())) s.remove_prefix(1);
  while (!s.empty() && IsSpace(s.back())) s.remove_suffix(1);
  return s;
}

void SplitColumns(std::string_view sLine, std::vector<std::string_view>& columns) {
  columns.clear();
  std::string_view rest = Trimmed(sLine);
  WithPlatformFailures([&] {
    for (std::string_view column; NextColumn(rest, column);) columns.push_back(column);
  });
}

void LineColumns::Split(std::string_view sLine) { SplitColumns(sLine, m_columns); }

CString NthColumn(std::string_view sLine, int nColumn) {
  if (nColumn < 0) AfxThrowInvalidArgException();
  std::string_view rest = Trimmed(sLine);
  std::string_view column;
  for (int i = 0; i < nColumn; ++i) {
    if (!NextColumn(rest, column)) return CString();
  }
  return nColumn == 0 ? CString() : CString(column);
}

}  // namespace laminate

ULONGLONG XTokenString(const char* szText, const char* szDelimiters, CStringArray& arrOut, int, int, int, int, int) {
  if (szText == nullptr || szDelimiters == nullptr) AfxThrowInvalidArgException();
  std::string_view rest(szText);
  CStringArray columns;
  for (std::string_view column; laminate::NextColumn(rest, szDelimiters, column);) columns.Emplace(column);
  arrOut.Append(columns);
  return static_cast<ULONGLONG>(columns.GetSize());
}
