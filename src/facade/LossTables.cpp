#include "facade/LossTables.h"

namespace laminate {

namespace {

std::string_view Formatted(char* pBuffer, char* pEnd) { return {pBuffer, static_cast<std::size_t>(pEnd - pBuffer)}; }

bool SameValue(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

// A double that is a whole number of 1 / dScale survives; only the others are worth printing.
bool IsMultiple(double d, double dScale) {
  const double dUnits = d * dScale;
  return std::abs(dUnits) < 1e15 && std::round(dUnits) / dScale == d;
}

bool SurvivesFixed(double d, int nDecimals) {
  char buffer[kMaxNumberLength];
  return SameValue(Atof(Formatted(buffer, FormatFixed(buffer, d, nDecimals))), d);
}

}  // namespace

std::string_view ToText(Fate fate) {
  switch (fate) {
    case Fate::kept:
      return "kept";
    case Fate::normalised:
      return "normalised";
    case Fate::constant:
      return "constant";
    case Fate::dropped:
      return "dropped";
  }
  return {};
}

bool ReadsBackBare(std::string_view s) {
  return s.empty() || (s.find_first_of(std::string_view(" ()\"\n\0", 6)) == std::string_view::npos);
}

bool ReadsBackQuoted(std::string_view s, bool bBracketFollows) {
  // A blank stands for the empty text, and what is behind a NUL is not written.
  if (s == " " || s.find('\0') != std::string_view::npos) return false;
  for (std::size_t n = s.find('"'); n != std::string_view::npos; n = s.find('"', n + 1)) {
    if (n == 0 || s[n - 1] != '\\') return false;
  }
  // A backslash before the closing quote takes it into the text, unless a bracket follows.
  return s.empty() || s.back() != '\\' || bBracketFollows;
}

bool SurvivesLength(double d) { return IsMultiple(d, 1e5) || SurvivesFixed(d, 5); }

bool SurvivesAngle(double d) { return IsMultiple(d, 1e6) || SurvivesFixed(d, 6); }

bool SurvivesSignificant(double d) {
  char buffer[kMaxNumberLength];
  return SameValue(Atof(Formatted(buffer, FormatGeneral(buffer, d))), d);
}

bool SurvivesSixDigits(double d) {
  char buffer[kMaxNumberLength];
  return SameValue(LengthOf(Formatted(buffer, FormatGeneral(buffer, d))), d);
}

std::string ValueText(const CString& s) { return std::string(s.View()); }

std::string ValueText(double d) {
  char buffer[kMaxNumberLength];
  return std::string(Formatted(buffer, FormatShortest(buffer, d)));
}

std::string ValueText(const CPointD& pt) { return ValueText(pt.x) + " " + ValueText(pt.y); }

std::string ValueText(const CStringArray& texts) {
  std::string s;
  for (const CString& text : texts) s += (s.empty() ? "" : " ") + ValueText(text);
  return s;
}

std::string ValueText(const CArrayN& numbers) {
  std::string s;
  for (int n : numbers) s += (s.empty() ? "" : " ") + std::to_string(n);
  return s;
}

}  // namespace laminate
