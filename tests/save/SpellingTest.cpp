// How numbers and texts are spelled, held against the reader and the splitter.
#include "save/Spelling.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>

#include "base/CString.h"
#include "reader/BoardFileSplitter.h"
#include "reader/CECadCls.h"
#include "reader/Grammar.h"
#include "reader/LineReader.h"
#include "reader/TextParse.h"
#include "save/FormText.h"

namespace laminate {
namespace {

std::string Length(double d) {
  char buffer[kMaxNumberLength + 2];
  return std::string(buffer, SpellLength(buffer, d));
}
std::string Real(double d) {
  char buffer[kMaxNumberLength];
  return std::string(buffer, SpellReal(buffer, d));
}

TEST(Spelling, LengthsHaveAPoint) {
  EXPECT_EQ(Length(0), "0.0");
  EXPECT_EQ(Length(-0.0), "-0.0");
  EXPECT_EQ(Length(12), "12.0");
  EXPECT_EQ(Length(-0.125), "-0.125");
  EXPECT_EQ(Length(1e-5), "1.0e-05");
  EXPECT_EQ(Length(1e300), "1.0e+300");
  EXPECT_EQ(Length(1.5e300), "1.5e+300");
  EXPECT_EQ(Real(45), "45");
  EXPECT_EQ(Real(0.1), "0.1");
}

TEST(Spelling, NumbersReadBackToTheSameBits) {
  std::mt19937_64 random(7);
  std::vector<double> numbers = {0.0,
                                 -0.0,
                                 std::numeric_limits<double>::denorm_min(),
                                 std::numeric_limits<double>::min(),
                                 std::numeric_limits<double>::max(),
                                 0.1 + 0.2,
                                 1e22,
                                 1e23,
                                 123456789012345678.0};
  for (int i = 0; i < 20000; ++i) {
    const auto d = std::bit_cast<double>(random());
    if (std::isfinite(d)) numbers.push_back(d);
    numbers.push_back(static_cast<double>(static_cast<std::int64_t>(random() % 2000000000) - 1000000000) / 100000);
  }
  for (const double d : numbers) {
    EXPECT_EQ(std::bit_cast<std::uint64_t>(LengthOf(Length(d))), std::bit_cast<std::uint64_t>(d)) << Length(d);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(Atof(Real(d))), std::bit_cast<std::uint64_t>(d)) << Real(d);
  }
}

struct Spelled {
  const char* szText;
  const char* szToken;  // null: none gives it back
  TokenPlace place = TokenPlace::anywhere;
};

TEST(Spelling, OfTexts) {
  const Spelled cases[] = {
      {"GND", "GND"},
      {"", "\"\""},
      {"A B", "\"A B\""},
      {"Silk(top)", "\"Silk(top)\""},
      {"tab\there", "\"tab\there\""},
      {"back\\slash", "back\\slash"},
      {"ends\\", "ends\\"},
      {"//no comment", "\"//no comment\""},
      {"//comment", "\"//comment\""},
      {"/one", "/one"},
      {"100%", "100%"},
      {"\x83\x5c", "\x83\x5c"},  // a double-byte character whose second byte is a backslash
      {"a \x83\x5c", "\"a \x83\x5c\"", TokenPlace::closingLine},
      {"a b\\", "\"a b\\\"", TokenPlace::closingLine},
      {"say\\\"so\\\"", "say\\\"so\\\""},
      {"say \\\"so\\\" to", "\"say \\\"so\\\" to\"", TokenPlace::lineOfItsOwn},
      {"two\nlines", "\"two\nlines\"", TokenPlace::lineOfItsOwn},
      // What nothing gives back.
      {" ", nullptr},
      {"a\"b", nullptr},
      {"\"", nullptr},
      {"ends\n", nullptr},
      {"a\r\nb", nullptr},
      {"a\n//b", nullptr},
      {"a\n(components", nullptr},
      {"a (\\\")", nullptr},
  };
  for (const Spelled& spelled : cases) {
    std::string sToken;
    const TokenPlace place = SpellText(spelled.szText, sToken);
    if (spelled.szToken == nullptr) {
      EXPECT_EQ(place, TokenPlace::nowhere) << spelled.szText << " became " << sToken;
    } else {
      EXPECT_EQ(place, spelled.place) << spelled.szText;
      EXPECT_EQ(sToken, spelled.szToken);
    }
  }
}

// The values of the one form that a text holds.
std::vector<std::string> ValuesOf(const std::string& sText) {
  std::string sPadded = sText;
  sPadded.append(LineReader::kPadding, '\0');
  CECadCls reader;
  std::vector<std::string> values;
  if (ParseText(reader, std::string_view(sPadded).substr(0, sText.size())) != 0) return values;
  if (reader.m_pRootArray->GetSize() != 1) return values;
  for (const CString& s : reader.m_pRootArray->GetAt(0)->m_arrValues) values.emplace_back(s.View());
  return values;
}

// Texts of the bytes that matter, in every order that chance gives.
TEST(Spelling, RandomTextsReadBackOrAreRefused) {
  constexpr std::string_view kBytes("ab \"\\()\n\r\t/\x83\x5c\x82", 14);
  std::mt19937 random(11);
  int nSaid = 0;
  for (int i = 0; i < 60000; ++i) {
    std::string sText;
    for (unsigned n = random() % 9; n > 0; --n) sText += kBytes[random() % kBytes.size()];
    std::string sFile;
    SaveLosses losses;
    {
      TextOut out(sFile);
      FormText text(out, losses);
      {
        const FormText::Form form(text, "net");
        text.Token("&A::s", CString(std::string_view(sText)));
        const FormText::Form inner(text, "type");
        text.Word("T");
      }
      text.EndLine();
      out.Flush();
    }
    if (losses.IsRefused()) {
      EXPECT_EQ(losses.Refused()[0].value, sText);
      continue;
    }
    ++nSaid;
    EXPECT_EQ(ValuesOf(sFile), std::vector<std::string>{sText}) << sFile;
    int bInQuote = 0;
    int nDepth = 0;
    for (std::size_t nAt = 0; nAt < sFile.size();) {
      const std::size_t nEnd = std::min(sFile.find('\n', nAt), sFile.size());
      nDepth += BraceCount(std::string_view(sFile).substr(nAt, nEnd - nAt), bInQuote);
      nAt = nEnd + 1;
    }
    EXPECT_EQ(nDepth, 0) << sFile;
    EXPECT_EQ(bInQuote, 0) << sFile;
  }
  EXPECT_GT(nSaid, 10000);
}

// ---- the layout of forms ----

std::string Written(void (*write)(FormText&), const FormStyle& style = {}) {
  std::string s;
  SaveLosses losses;
  TextOut out(s);
  FormText text(out, losses, style);
  write(text);
  out.Flush();
  return s;
}

TEST(FormText, LinesAndIndent) {
  const auto write = [](FormText& text) {
    const FormText::Form net(text, "net");
    text.Token("", CString("A"));
    {
      const FormText::Form comp(text, "comp", FormText::Lines::one);
      text.Word("R1");
      const FormText::Form pin(text, "pin");
      text.Token(1);
    }
    const FormText::Form pen(text, "pen");
    text.Real("", 0.5);
  };
  EXPECT_EQ(Written(write), "(net A\n(comp R1 (pin 1))\n(pen 0.5)\n)");
  FormStyle style;
  style.sLineEnd = "\r\n";
  style.sIndent = "\t";
  style.sStep = "  ";
  EXPECT_EQ(Written(write, style), "(net A\r\n\t  (comp R1 (pin 1))\r\n\t  (pen 0.5)\r\n\t)");
}

// A backslash before the closing quote stands only where the form and the line end behind it.
TEST(FormText, ATextThatMustStandLastComesBehindTheFormsInIt) {
  EXPECT_EQ(Written([](FormText& text) {
              const FormText::Form net(text, "net");
              text.Token("", CString("a b\\"));
              const FormText::Form pen(text, "pen");
              text.Token(1);
            }),
            "(net\n(pen 1)\n\"a b\\\")");
}

TEST(FormText, ATextThatMustStandLastCannotHaveAnotherBehindIt) {
  SaveLosses losses;
  std::string s;
  {
    TextOut out(s);
    FormText text(out, losses);
    const FormText::Step step(text, "m_pNetArray", "GND", 3);
    const FormText::Form form(text, "propertyS");
    text.Token("&CGProperty::m_sItem", CString("a b\\"), true);
    text.Token("&CGProperty::m_sComment", CString("x"));
  }
  ASSERT_EQ(losses.Refused().size(), 1u);
  EXPECT_EQ(losses.Refused()[0].object, "m_pNetArray[GND]");
  EXPECT_EQ(losses.Refused()[0].name, "CGProperty.m_sItem");
  EXPECT_EQ(losses.Refused()[0].value, "a b\\");
  EXPECT_EQ(s, "(propertyS \"\" x)");
}

TEST(FormText, NumbersThatAreNoneAreRefusedUnlessAllowed) {
  SaveLosses losses;
  losses.Allow("CBDoval.m_dAngle");
  std::string s;
  {
    TextOut out(s);
    FormText text(out, losses);
    const FormText::Form form(text, "a");
    text.Length("&CBDoval::m_dWidth", std::numeric_limits<double>::quiet_NaN());
    text.Real("&CBDoval::m_dAngle", -std::numeric_limits<double>::infinity());
  }
  ASSERT_EQ(losses.Refused().size(), 1u);
  EXPECT_EQ(losses.Refused()[0].name, "CBDoval.m_dWidth");
  ASSERT_EQ(losses.Allowed().size(), 1u);
  EXPECT_EQ(losses.Allowed()[0].value, "-inf");
  EXPECT_EQ(s, "(a 0.0 0)");
}

TEST(FormText, TheFormatAllowsTwentyLevels) {
  const auto refused = [](int nForms, int nLevel) {
    std::string s;
    SaveLosses losses;
    TextOut out(s);
    FormText text(out, losses, {.nLevel = nLevel});
    for (int i = 0; i < nForms; ++i) text.Open("f", FormText::Lines::one);
    for (int i = 0; i < nForms; ++i) text.Close();
    return losses.IsRefused();
  };
  EXPECT_FALSE(refused(20, 0));
  EXPECT_TRUE(refused(21, 0));
  EXPECT_FALSE(refused(17, 3));
  EXPECT_TRUE(refused(18, 3));
}

}  // namespace
}  // namespace laminate
