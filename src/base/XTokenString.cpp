#include "base/XTokenString.h"

namespace laminate {
namespace {

constexpr bool IsSpace(char ch) { return ch == ' ' || (ch >= '\t' && ch <= '\r'); }

}  // namespace

bool NextColumn(std::string_view& s, std::string_view sDelimiters, std::string_view& sColumn) {
  return CutColumn(s, sColumn, [sDelimiters](char ch) { return sDelimiters.find(ch) != std::string_view::npos; });
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
