// The reader against the plain transcription of its rules: every short text, and many longer ones.
#include <gtest/gtest.h>

#include <random>

#include "reader/FormReader.h"
#include "reader/ReaderTestSupport.h"
#include "reader/TextVariety.h"

namespace {

class Differential : public testing::Test {
 protected:
  // False when something differs, so that a loop over very many texts ends at the first one.
  bool SameFile(const std::string& text) {
    return Same(text, "file", m_parser.File(text), ToOutcome(plain::ParseFile(text))) &&
           Same(text, "file, quotes end at line ends", m_parser.File(text, true),
                ToOutcome(plain::ParseFile(text, true))) &&
           Same(text, "file, stops at the form's end", m_parser.File(text, false, true),
                ToOutcome(plain::ParseFile(text, false, true)));
  }
  bool SameNamed(const std::string& text, const std::string& name) {
    return Same(text, "named form", m_parser.Named(text, name), ToOutcome(plain::ParseNamedForm(text, name)));
  }
  bool SameAt(const std::string& text, std::size_t offset) {
    return Same(text, "form at an offset", m_parser.At(text, offset), ToOutcome(plain::ParseFormAt(text, offset)));
  }
  // Remarks change nothing of what a parse gives.
  bool SameWithDiagnostics(const std::string& text) {
    laminate::Diagnostics diagnostics;
    return Same(text, "file with diagnostics", m_parser.File(text, false, false, &diagnostics),
                ToOutcome(plain::ParseFile(text))) &&
           Same(text, "form at an offset with diagnostics", m_parser.At(text, 0, &diagnostics),
                ToOutcome(plain::ParseFormAt(text, 0)));
  }

 private:
  bool Same(const std::string& text, const char* parse, const Outcome& outcome, const Outcome& expected) {
    if (outcome == expected) return true;
    ADD_FAILURE() << parse << " of " << Escaped(text) << "\n  gives " << outcome << "\n  not   " << expected;
    return false;
  }
  TextParser m_parser;
};

TEST_F(Differential, EveryShortText) {
  bool same = true;
  ForEveryText("()\"\\ a\n\x95", 6, [&](const std::string& text) { same = same && SameFile(text) && SameAt(text, 0); });
}

TEST_F(Differential, EveryShortTextInAForm) {
  bool same = true;
  ForEveryText("()\"\\ a\n\x95", 5, [&](const std::string& text) {
    same = same && SameFile("(a \"" + text + "\" b)") && SameAt("(a \"" + text + "\" b)", 0);
    same = same && SameFile("(a b" + text + ")") && SameAt("(a b" + text + ")", 0);
  });
}

TEST_F(Differential, EveryShortTextBehindANamedForm) {
  bool same = true;
  ForEveryText("()\"\\ a\n", 6, [&](const std::string& text) { same = same && SameNamed("(a\n" + text, "a"); });
  ForEveryText("( )a\t\n", 6, [&](const std::string& text) { same = same && SameNamed(text, "a"); });
}

TEST_F(Differential, EveryShortTextWithCommentsAndLineEnds) {
  bool same = true;
  ForEveryText("()\"a\r\n/", 6, [&](const std::string& text) {
    same = same && SameFile(text) && SameAt(text, 0) && SameNamed("(a\n" + text, "a");
  });
}

TEST_F(Differential, EveryShortStringOnALineOfItsOwn) {
  // Quotes after backslashes, several strings a line: the rest of the line decides.
  bool same = true;
  ForEveryText("\"\\) a", 8, [&](const std::string& text) { same = same && SameFile("(\"" + text); });
}

TEST_F(Differential, RandomTexts) {
  std::mt19937 random(1);
  const std::vector<std::string> pieces = {"(",    ")",     "\"",   "\\\"", "\\",   " ",     "a",    "bc",    "\n",
                                           "\r\n", "//",    "\t",   "\x95", "\x5C", "(net ", "\")",  "\\\")", "\r",
                                           "\x1A", "\x81/", "\v\f", "12.5", "  ",   "()",    "\"\"", "\" \""};
  bool same = true;
  for (int i = 0; i < 20000 && same; ++i) {
    std::string text = i % 3 == 0 ? "(a\n" : i % 3 == 1 ? "(a \"" : "";
    const std::size_t n = random() % 60;
    for (std::size_t k = 0; k < n; ++k) {
      // A NUL is an ordinary byte.
      if (random() % 100 == 0) {
        text += '\0';
      } else {
        text += pieces[random() % pieces.size()];
      }
    }
    same = SameFile(text) && SameAt(text, random() % (text.size() + 2)) && SameNamed(text, "a") &&
           SameWithDiagnostics(text);
  }
}

TEST_F(Differential, TextsOfManyBlocks) {
  // Blocks end anywhere between two lines: in forms, in strings, behind tokens of forms that are still open.
  std::mt19937 random(4);
  const std::vector<std::string> pieces = {"(net \"a b\"\nx y z\n)\n",
                                           "\"one\ntwo\"\n",
                                           "// a comment ( \"\n",
                                           "\r\n",
                                           "token\n",
                                           "\"a\\\"b\" c\n",
                                           "(a\n\"x\n// in it\n  y\"\n(b 1 2) \n)\r\n",
                                           "(p \"C:\\\")\n",
                                           "(s \"\x95\x5C\" \"\n\")\n"};
  bool same = true;
  for (int i = 0; i < 6 && same; ++i) {
    std::string text = "(r first\n(s second\n";
    while (text.size() < 400000) {
      text += pieces[random() % pieces.size()];
      if (random() % 3000 == 0) text += "w " + std::string(random() % 150000, 'v') + "\n";
    }
    if (i % 2 == 0) text += ")\n(t)\n)";
    same = SameFile(text) && SameNamed("(a\n" + text, "a") && SameAt("(a\n" + text, 0) && SameWithDiagnostics(text);
  }
}

TEST_F(Differential, FormsThatBlocksCut) {
  // One block ends in a form of many tokens, the next one in a form of few.
  std::mt19937 random(5);
  std::string text = "(r\n";
  while (text.size() < 600000) {
    text += "(a\n";
    for (std::size_t n = random() % 3 == 0 ? random() % 9000 : random() % 400; n > 0; --n) {
      text += std::to_string(random()) + "\n";
    }
    text += ")\n";
  }
  EXPECT_TRUE(SameFile(text + ")"));
}

TEST_F(Differential, RandomLinesOfManyStrings) {
  // So long that a line gets its index.
  std::mt19937 random(2);
  bool same = true;
  for (int i = 0; i < 6 && same; ++i) {
    std::string text = "(a ";
    for (int k = 0; k < 900; ++k) {
      text += '"';
      const std::size_t n = 1 + random() % 3;
      for (std::size_t j = 0; j < n; ++j) text += std::string(random() % 3, "ab"[random() % 2]) + "\\\"";
      text += random() % 40 == 0 ? "\")" : "x\" ";
    }
    same = SameFile(text + ")\n");
  }
}

TEST_F(Differential, OffsetsOfForms) {
  TextParser parser;
  std::mt19937 random(3);
  const std::vector<std::string> pieces = {"(net a", "(net \"a b\"", "\n",   "\r\n", " ",
                                           "\t",     "//",           "(net", "a",    "(pin a"};
  const std::vector<std::string> names = {"a", "b", "\"a b\"", "a", ""};
  for (int i = 0; i < 20000; ++i) {
    std::string text;
    const std::size_t n = random() % 12;
    for (std::size_t k = 0; k < n; ++k) text += pieces[random() % pieces.size()];
    ASSERT_EQ(parser.Offsets(text, "net", names), plain::CollectFormOffsets(text, "net", names)) << Escaped(text);
  }
}

// Many forms of one file by one reader, at ascending offsets and then at any; nothing that it remembers of one parse
// changes another.
TEST_F(Differential, FormsOfOneFile) {
  std::mt19937 random(4);
  const std::vector<std::string> pieces = {"(f a\n", "\\\"\n", "\\\"", "\"",    "\n", "\"\n",
                                           ")",      ")\n",    " b ",  "//c\n", "(",  "\r\n"};
  MemoryFileSystem files;
  const laminate::FileSystemScope scope(files);
  for (int i = 0; i < 1500; ++i) {
    std::string& text = files.files["text"];
    // Now and then longer than what is at hand at once.
    text = i % 500 == 0 ? std::string(70000, i % 1000 == 0 ? ' ' : '\n') : "";
    const std::size_t nFirst = text.size();
    const std::size_t n = random() % 30;
    for (std::size_t k = 0; k < n; ++k) text += pieces[random() % pieces.size()];
    if (i % 500 == 1) text += std::string(140000, '\n') + ")";
    std::vector<std::size_t> offsets;
    for (std::size_t k = nFirst; k < nFirst + 60; ++k) offsets.push_back(k);
    for (int k = 0; k < 20; ++k) offsets.push_back(random() % (text.size() + 1));
    CECadCls reader;
    reader.m_sFileName = "text";
    laminate::FormReader forms(reader);
    for (const std::size_t nOffset : offsets) {
      const std::unique_ptr<CECadClsLvl> pForm = forms.At(nOffset);
      const std::unique_ptr<CECadClsLvl> pAlone([&] {
        CECadCls other;
        other.m_sFileName = "text";
        CECadClsLvl* p = other.pParseFormAt(nOffset);
        EXPECT_EQ(reader.m_status.m_result, other.m_status.m_result) << Escaped(text.substr(nFirst)) << nOffset;
        EXPECT_EQ(reader.m_status.m_nLine, other.m_status.m_nLine) << Escaped(text.substr(nFirst)) << nOffset;
        return p;
      }());
      ASSERT_EQ(pForm == nullptr ? "" : Show(*pForm), pAlone == nullptr ? "" : Show(*pAlone))
          << Escaped(text.substr(nFirst)) << " at " << nOffset;
    }
  }
}

// What any prefix of a sound file gives.
TEST_F(Differential, EveryPrefixOfAFile) {
  std::string text =
      "(pcf\n(header\n(version 2.0)\n(timeZone \"\")\n)\n// a comment (with a bracket\n(net \"VCC 3V3\"\n(pen 1))\r\n"
      "(text \"one\n  two\n//dropped\nthree\\\"four\" 5)\n\t(path \"C:\\dir\\\")\n(sjis \"\x95\x5C\" "
      "\"\x83\x5C\")\n(a(b)c)\n)\n";
  for (int i = 0; i < 3; ++i) text += text;
  bool same = true;
  for (std::size_t n = 0; n <= text.size() && same; ++n) {
    const std::string prefix = text.substr(0, n);
    same = SameFile(prefix) && SameAt(prefix, 5) && SameNamed(prefix, "header") && SameNamed(prefix, "pcf");
  }
}

}  // namespace
