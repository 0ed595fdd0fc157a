#include "designdata/LineScanner.h"

#include <algorithm>

#include "base/XTokenString.h"

namespace laminate {

bool ScannedLine::Take(std::string_view sLine, int nNumber) {
  const std::size_t n = sLine.find_first_not_of(" \t\n\v\f\r");
  if (n == std::string_view::npos) return false;
  m_sText = sLine.substr(n);
  m_place.line = nNumber;
  m_place.column = static_cast<int>(std::min<std::size_t>(n, std::numeric_limits<int>::max() - 1)) + 1;
  m_sUncut = Trimmed(m_sText);
  m_columns.clear();
  return true;
}

std::string_view ScannedLine::Cut(std::size_t n) const {
  if (n == 0) return {};
  std::string_view uncut = m_sUncut;
  while (m_columns.size() < n) {
    // Cut in place: a view that is put together and copied at once makes the processor wait.
    if (!NextColumn(uncut, m_columns.emplace_back())) {
      m_columns.pop_back();
      m_sUncut = {};
      return {};
    }
  }
  m_sUncut = uncut;
  return m_columns.back();
}

std::size_t CountColumns(std::string_view s) {
  constexpr int kMaxColumns = 100;
  const auto trimLeft = [](std::string_view t) { return t.substr(std::min(t.find_first_not_of(' '), t.size())); };
  s = trimLeft(s);
  s = s.substr(0, s.find_last_not_of(' ') + 1);
  std::size_t nBlank = 0;
  for (std::size_t i = 0; i < kMaxColumns; ++i) {
    nBlank = s.find(' ');
    if (nBlank == std::string_view::npos) return i + 1;
    s = trimLeft(s.substr(nBlank));
  }
  return nBlank;
}

void ScanReport::NotClosed(const TextPlace& place, std::string_view sWhat, const CString& sName,
                           std::string_view sEffect) const {
  if (!IsWanted()) return;
  std::string s(sWhat);
  if (!sName.IsEmpty()) {
    s += " \"";
    s += sName.View();
    s += '"';
  }
  s += " is not closed: ";
  s += sEffect;
  Add(Diagnostic::Severity::warning, place, s);
}

void ScanReport::Warn(const ScannedLine& line, std::string_view sReason) const {
  Add(Diagnostic::Severity::warning, line.Place(), sReason);
}

void ScanReport::Skipped(const ScannedLine& line, std::string_view sWhere) const {
  std::string s = "\"";
  s += line.Column(1);
  s += "\" means nothing ";
  s += sWhere;
  s += ": the line is skipped";
  Add(Diagnostic::Severity::note, line.Place(), s);
}

void ScanReport::OnNothing(const ScannedLine& line) const {
  std::string s = "there is nothing yet that \"";
  s += line.Column(1);
  s += "\" could belong to: the line is skipped";
  Warn(line, s);
}

void ScanReport::BehindEnd(const ScannedLine& line) const {
  if (!IsWanted()) return;
  std::string s = "\"";
  s += line.Column(1);
  s += "\" stands behind the end of what it belongs to";
  Add(Diagnostic::Severity::note, line.Place(), s);
}

}  // namespace laminate
