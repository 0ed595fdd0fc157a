#include "save/Spelling.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "reader/BoardFileSplitter.h"
#include "reader/CECadCls.h"
#include "reader/LineReader.h"
#include "reader/TextParse.h"

namespace laminate {
namespace {

enum Kind : unsigned char {
  kPlain = 0,
  kInQuotes = 1,  // stands in quotes, like any other byte
  kBackslash = 2,
  kHard = 4  // how it stands depends on what is around it
};

constexpr std::array<unsigned char, 256> kKinds = [] {
  std::array<unsigned char, 256> kinds{};
  for (std::size_t n = 0; n <= ' '; ++n) kinds[n] = kInQuotes;
  for (const char ch : {'(', ')'}) kinds[static_cast<unsigned char>(ch)] = kInQuotes;
  for (const char ch : {'\0', '\n', '\r', '"'}) kinds[static_cast<unsigned char>(ch)] = kHard;
  kinds['\\'] = kBackslash;
  return kinds;
}();

unsigned KindsOf(std::string_view s) {
  unsigned kinds = 0;
  for (const char ch : s) kinds |= kKinds[static_cast<unsigned char>(ch)];
  return kinds;
}

// Whether the reader makes the one value `s` of a form.
bool ReadsBack(std::string_view sForm, std::string_view s) {
  std::string sPadded(sForm);
  sPadded.append(LineReader::kPadding, '\0');
  CECadCls reader;
  if (ParseText(reader, std::string_view(sPadded).substr(0, sForm.size())) != 0) return false;
  const CECadClsLvlArray& roots = *reader.m_pRootArray;
  return roots.GetSize() == 1 && roots.GetAt(0)->m_pChildren->IsEmpty() && roots.GetAt(0)->m_arrValues.GetSize() == 1 &&
         roots.GetAt(0)->m_arrValues.GetData()[0].View() == s;
}

// Whether the splitter, which cuts a board file line by line, sees one form and takes no line of it for another one.
bool StaysWhole(std::string_view sForm) {
  int bInQuote = 0;
  int nDepth = 0;
  for (std::size_t nAt = 0; nAt < sForm.size();) {
    const std::size_t nEnd = std::min(sForm.find('\n', nAt), sForm.size());
    std::string_view sLine = sForm.substr(nAt, nEnd - nAt);
    nDepth += BraceCount(sLine, bInQuote);
    sLine.remove_prefix(std::min(sLine.find_first_not_of(" \t\v\f\r"), sLine.size()));
    if (nAt != 0) {
      for (const std::string_view sCut : {"(components", "(boardLayout"}) {
        if (sLine.starts_with(sCut)) return false;
      }
      // A form of these begins where its line ends outside the form that the text stands in.
      for (const std::string_view sCut : {"(component", "(layer"}) {
        if (nDepth == 0 && sLine.starts_with(sCut)) return false;
      }
    }
    nAt = nEnd + 1;
  }
  return nDepth == 0 && bInQuote == 0;
}

bool Holds(std::string_view sBefore, std::string_view sToken, std::string_view sBehind, std::string_view s) {
  std::string sForm(sBefore);
  sForm += sToken;
  sForm += sBehind;
  return ReadsBack(sForm, s) && StaysWhole(sForm);
}

}  // namespace

TokenPlace SpellText(std::string_view s, std::string& sToken) {
  const unsigned kinds = KindsOf(s);
  const bool bHard = (kinds & kHard) != 0 || s.ends_with('\\');
  sToken = s;
  // Two slashes make a comment of a line that begins with them.
  if (!s.empty() && (kinds & kInQuotes) == 0 && !s.starts_with("//")) {
    if ((kinds & kHard) == 0) return TokenPlace::anywhere;
    const bool bLinesEnd = s.find_first_of(std::string_view("\n\r\0", 3)) != s.npos;
    if (!bLinesEnd && Holds("(k ", sToken, ")\n", s)) return TokenPlace::anywhere;
  }
  sToken = '"';
  sToken += s;
  sToken += '"';
  if (!bHard) return s == " " ? TokenPlace::nowhere : TokenPlace::anywhere;
  if (Holds("(k\n", sToken, "\n)\n", s)) return TokenPlace::lineOfItsOwn;
  if (Holds("(k\n", sToken, ")\n", s)) return TokenPlace::closingLine;
  return TokenPlace::nowhere;
}

bool FitsAnywhere(std::string_view s) {
  std::string sToken;
  return SpellText(s, sToken) == TokenPlace::anywhere;
}

char* SpellReal(char* p, double d) noexcept { return FormatShortest(p, d); }

char* SpellLength(char* p, double d) noexcept {
  char* const end = FormatShortest(p, d);
  char* const exponent = std::find(p, end, 'e');
  if (std::find(p, exponent, '.') != exponent) return end;
  std::memmove(exponent + 2, exponent, static_cast<std::size_t>(end - exponent));
  exponent[0] = '.';
  exponent[1] = '0';
  return end + 2;
}

}  // namespace laminate
