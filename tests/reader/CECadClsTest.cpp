#include "reader/CECadCls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <functional>
#include <limits>
#include <utility>

#include "base/CException.h"
#include "base/LocaleScope.h"
#include "base/TestFolder.h"
#include "reader/LineReader.h"
#include "reader/ReaderTestSupport.h"
#include "reader/TextParse.h"

namespace {

using laminate::Diagnostic;
using laminate::LoadStatus;
using testing::ElementsAre;
using testing::IsEmpty;

std::string Brackets(std::size_t n) { return std::string(n, '('); }
std::string Closings(std::size_t n) { return std::string(n, ')'); }

class Reader : public testing::Test {
 protected:
  // The forms of the whole file; a text for the result when it is not 0.
  std::string File(const std::string& text, bool bQuoteEndsAtLineEnd = false) {
    const Outcome outcome = m_parser.File(text, bQuoteEndsAtLineEnd);
    return (outcome.result == 0 ? "" : std::to_string(outcome.result) + " ") + Brief(*m_parser.Reader().m_pRootArray);
  }
  std::string Named(const std::string& text, const std::string& name) {
    const Outcome outcome = m_parser.Named(text, name);
    return (outcome.result == 0 ? "" : std::to_string(outcome.result) + " ") + Brief(*m_parser.Reader().m_pRootArray);
  }
  std::string At(const std::string& text, ULONGLONG nOffset = 0) {
    m_parser.Boxes().clear();
    m_parser.Files().files["text"] = text;
    CECadCls reader;
    reader.m_sFileName = "text";
    const std::unique_ptr<CECadClsLvl> node(reader.pParseFormAt(nOffset));
    EXPECT_TRUE(reader.m_pRootArray->IsEmpty()) << "the form is the caller's alone";
    return node == nullptr ? "null" : "{" + Brief(*node) + "}";
  }
  TextParser m_parser;
};

// ---- what the three parses make of a text ----

struct Case {
  const char* name;
  std::string text;
  std::string file;    // what the whole-file parse gives
  std::string simple;  // what the other two give; the named form holds the text between its first and last line
};
// Of the simple parses: the string goes on to the file's end, so no form closes.
const std::string kOpen = "open";

const Case kCases[] = {
    {"an empty string is an empty value", "(timeZone \"\")", "{timeZone['']}", "{timeZone['']}"},
    {"a string of one blank is an empty value", "(a \" \")", "{a['']}", "{a['']}"},
    {"quotes make no difference to what becomes the name", "(\"x\" \"y\")", "{x[y]}", "{x[y]}"},
    {"an empty string in the name's place is a blank name", "(\"\" b)", "{ [b]}", "{ [b]}"},
    {"text behind a closing quote", "(a \"b\"c)", "{a[b,c]}", "{a[bc]}"},
    {"text behind an empty string", "(a \"\"b)", "{a['',b]}", "{a[ b]}"},
    {"an empty string that another one touches", "(a \"\"\"\")", "{a['','']}", "{a['']}"},
    {"text before an opening quote is lost", "(a b\"c\")", "{a[c]}", "{a[c]}"},
    {"two strings side by side", "(a \"b\"\"c\")", "{a[b,c]}", "{a[c]}"},
    {"an escaped quote keeps its backslash", "(a \"x\\\"y\")", "{a[x\\\"y]}", "{a[x\\\"y]}"},
    {"a string that ends in a backslash before a bracket", "(a \"C:\\dir\\\")", "{a[C:\\dir\\]}", "{a[C:\\dir]}"},
    {"two backslashes before the closing quote", "(a \"x\\\\\")", "{a[x\\\\]}", "{a[x]}"},
    {"three backslashes before the closing quote", "(a \"x\\\\\\\") b\")", "{a[x\\\\\\]}", "{a[x\\\") b]}"},
    {"a backslash elsewhere is an ordinary byte", "(a \\b c\\d \"e\\f\")", "{a[\\b,c\\d,e\\f]}", "{a[\\b,c\\d,e\\f]}"},
    {"a quote after a backslash outside a string", "(a b\\\"c\\\" d)", "{a[b\\\"c\\\",d]}", kOpen},
    {"a string over two lines", "(a \"one\ntwo\")", "{a[one\ntwo]}", "{a[one\ntwo]}"},
    {"blanks at the start of a string's second line", "(a \"one\n  two\")", "{a[one\n  two]}", "{a[one\ntwo]}"},
    {"tabs there", "(a \"one\n\ttwo\")", "{a[one\n\ttwo]}", "{a[one\ntwo]}"},
    {"a quote that begins a string's second line", "(a \"one\n\" b)", "{a[one\n ,b]}", "{a[one\n,b]}"},
    {"a comment line inside a string is dropped", "(a \"one\n//(b)\ntwo\")", "{a[one\ntwo]}", "{a[one\ntwo]}"},
    {"a comment counts in the first column only", "(a\n //x\n)", "{a[//x]}", "{a[//x]}"},
    {"two slashes later in a line are text", "(a b//c)", "{a[b//c]}", "{a[b//c]}"},
    {"one slash is text", "(a\n/x\n)", "{a[/x]}", "{a[/x]}"},
    {"a bracket ends a token", "(a(b)c)", "{a[c]{b[]}}", "{a[c]{b[]}}"},
    {"a form without name", "()", "{[]}", "{[]}"},
    {"a name behind a nested form", "((b)c d)", "{c[d]{b[]}}", "{c[d]{b[]}}"},
    {"values and nested forms are kept apart", "(a 1 (b) 2)", "{a[1,2]{b[]}}", "{a[1,2]{b[]}}"},
    {"a line end separates tokens", "(a b\nc\r\nd\n)", "{a[b,c,d]}", "{a[b,c,d]}"},
    {"a tab does not", "(a b\tc)", "{a[b\tc]}", "{a[b\tc]}"},
    {"tabs at a line's start are trimmed", "(a\n\t\tb\n)", "{a[b]}", "{a[b]}"},
    {"blanks and tabs in turn at a line's start", "(a\n\t b\n \t c\n)", "{a[b,c]}", "{a[b,c]}"},
    {"only blanks and then tabs", "(a\n\t \tb\n)", "{a[b]}", "{a[\tb]}"},
    {"other white space at a line's start", "(a\n\v\fb\n)", "{a[b]}", "{a[\v\fb]}"},
    {"a lone CR is an ordinary byte", "(a b\rc)", "{a[b\rc]}", "{a[b\rc]}"},
    {"two CR before a LF", "(a b\r\r\n)", "{a[b\r]}", "{a[b\r]}"},
    {"a CR in a string at its line's end", "(a \"b\r\nc\")", "{a[b\nc]}", "{a[b\nc]}"},
    {"0x1A is an ordinary byte",
     "(a b\x1A"
     "c)",
     "{a[b\x1A"
     "c]}",
     "{a[b\x1A"
     "c]}"},
    {"so is NUL", std::string("(a b\0c \"\0\")", 11), std::string("{a[b\0c,\0]}", 10), std::string("{a[b\0c,\0]}", 10)},
    {"brackets and blanks in a string", "(a \"( )\")", "{a[( )]}", "{a[( )]}"},
    {"a line that is only white space", "(a\n \t \n)", "{a[]}", "{a[]}"},
    {"LF CR", "(a\n\rb\n\r)", "{a[b]}", "{a[\rb,\r]}"},
    // Double-byte text: the trail byte may be that of a backslash.
    {"a trail byte 0x5C before the closing quote", "(a \"\x95\x5C\" b)", "{a[\x95\x5C,b]}", kOpen},
    {"and before a bracket", "(a \"\x95\x5C\")", "{a[\x95\x5C]}", "{a[\x95]}"},
    {"a lead byte as a trail byte", "(a \"\x95\x95\x5C\"x\")", "{a[\x95\x95\x5C\"x]}", "{a[\x95\x95\x5C\"x]}"},
    {"half-width katakana count as lead bytes", "(a \"\xB1\" b)", "{a[\xB1,b]}", "{a[\xB1,b]}"},
    {"one before a backslash makes that a trail byte", "(a \"\xB1\\\" b)", "{a[\xB1\\,b]}", kOpen},
    {"a bracket as a trail byte is a bracket still", "(a \x95)", "{a[\x95]}", "{a[\x95]}"},
    {"a lead byte at a line's end does not reach over it", "(a \"\x95\n\\\"x\")", "{a[\x95\n\\\"x]}",
     "{a[\x95\n\\\"x]}"},
};

TEST_F(Reader, Cases) {
  for (const Case& c : kCases) {
    EXPECT_EQ(File(c.text), c.file) << c.name;
    EXPECT_EQ(At(c.text), c.simple == kOpen ? "null" : c.simple) << c.name;
    EXPECT_EQ(Named("(w\n" + c.text + "\n)", "w"), c.simple == kOpen ? "-1 " : "{w[]" + c.simple + "}") << c.name;
  }
}

TEST_F(Reader, Example) {
  const std::string text = "(header\n(version 2.0)\n(timeZone \"\")\n)\n// a comment\n(net \"VCC 3V3\"\n(pen 1))\n";
  EXPECT_EQ(m_parser.File(text),
            (Outcome{0, "{header/1@1[]{version/2@2[2.0,]}{timeZone/2@3[,]}}{net/1@6[VCC 3V3,]{pen/2@7[1,]}}", {}, 7}));
}

TEST_F(Reader, ARootPerTopLevelForm) {
  EXPECT_EQ(File("(a)(b) (c)\n(d)"), "{a[]}{b[]}{c[]}{d[]}");
  EXPECT_EQ(File("x (a) y\n\"z\" w(b)"), "{a[]}{b[]}") << "tokens outside any form are dropped";
}

TEST_F(Reader, FilesWithoutForms) {
  for (const char* text : {"", "\n", "// only\n//comments", "//", "a b \"c\"", " \t\n"}) {
    EXPECT_EQ(File(text), "") << text;
    EXPECT_EQ(At(text), "null") << text;
    EXPECT_EQ(Named(text, "a"), "") << text;
    EXPECT_TRUE(m_parser.Reader().m_status.IsOk());
  }
}

TEST_F(Reader, AByteOrderMarkIsATokenOutsideAnyForm) {
  EXPECT_EQ(File("\xEF\xBB\xBF(a)"), "{a[]}");
  EXPECT_EQ(At("\xEF\xBB\xBF(a)"), "{a[]}");
  EXPECT_EQ(Named("\xEF\xBB\xBF(a\n)", "a"), "") << "and the line holds something else";
  EXPECT_EQ(m_parser.File(std::string("\xFF\xFE(\0a\0)\0\n\0", 10)),
            (Outcome{0, std::string("{\0a\0/1@1[]}", 11), {}, 2}))
      << "of two bytes a character";
}

TEST_F(Reader, WhiteSpaceIsThatOfTheCLocale) {
  const laminate::test::LocaleScope japanese("ja_JP.SJIS");
  ASSERT_TRUE(japanese.IsSet());
  EXPECT_EQ(File("(a\n\xA0x\n\x85y\n)"), "{a[\xA0x,\x85y]}");
}

// ---- nesting ----

TEST_F(Reader, TwentyLevelsAreAccepted) {
  const std::string text = Brackets(20) + "x" + Closings(20);
  const Outcome file = m_parser.File(text);
  EXPECT_EQ(file.result, 0);
  EXPECT_THAT(file.messages, IsEmpty());
  EXPECT_THAT(file.forms, testing::HasSubstr("x/20@1"));
  EXPECT_EQ(m_parser.Named("(a\n" + Brackets(19) + Closings(20), "a").result, 0);
  EXPECT_THAT(m_parser.At(text, 0).forms, testing::HasSubstr("x/20@1"));
}

TEST_F(Reader, TwentyOneAreNot) {
  const std::string text = "(done)\n" + Brackets(21) + Closings(21);
  const std::string message = "Parser meet unexpected Brace Counting Number, 21 at line number 2.!";
  EXPECT_EQ(m_parser.File(text), (Outcome{-1, "{done/1@1[]}", {message}, 2})) << "what was complete is kept";
  EXPECT_EQ(m_parser.Named("(a\n" + Brackets(20), "a"), (Outcome{-1, "", {message}, 2}));
  EXPECT_THAT(m_parser.Named("x\n//c\n(a\n" + Brackets(20), "a").messages,
              ElementsAre("Parser meet unexpected Brace Counting Number, 21 at line number 4.!"))
      << "lines before the form count too";
  EXPECT_EQ(m_parser.At(Brackets(21) + Closings(21), 0), (Outcome{0, "", {}, 1})) << "no form and no message";
  EXPECT_EQ(m_parser.At("(a)" + Brackets(21) + Closings(21), 0).forms, "") << "not even a form that had closed";
}

TEST_F(Reader, AnOpeningBracketBelowLevelZero) {
  const std::string message = "Parser meet unexpected Brace Counting Number, 0 at line number 1.!";
  EXPECT_EQ(m_parser.File(")("), (Outcome{-1, "", {message}, 1}));
  EXPECT_EQ(m_parser.File("(a)))(b)"),
            (Outcome{-1, "{a/1@1[]}", {"Parser meet unexpected Brace Counting Number, -1 at line number 1.!"}, 1}));
  EXPECT_EQ(m_parser.Named("(a\n))(b)", "a"),
            (Outcome{-1, "{a/1@1[]}", {"Parser meet unexpected Brace Counting Number, 0 at line number 2.!"}, 2}));
  EXPECT_EQ(m_parser.At("(a))(b)", 0), (Outcome{0, "{a/1@1[]}", {}, 1})) << "the parse stops with the form it has";
  EXPECT_EQ(m_parser.At(")(b)", 0), (Outcome{0, "", {}, 1}));
}

TEST_F(Reader, BracketsOutOfBalance) {
  EXPECT_EQ(m_parser.File("(a (b)"), (Outcome{-1, "", {}, 1}));
  EXPECT_EQ(m_parser.File("(a))"), (Outcome{-1, "{a/1@1[]}", {}, 1})) << "the level ends below zero";
  EXPECT_EQ(m_parser.File("(a)\n(b"), (Outcome{-1, "{a/1@1[]}", {}, 2}));
  EXPECT_EQ(m_parser.Named("(a\n(b)", "a"), (Outcome{-1, "", {}, 2}));
  EXPECT_EQ(m_parser.At("(a (b)", 0), (Outcome{0, "", {}, 1}));
}

TEST_F(Reader, VeryManyBrackets) {
  constexpr std::size_t kMany = 1000000;
  EXPECT_EQ(m_parser.File(Brackets(kMany)).result, -1);
  EXPECT_EQ(m_parser.File(Closings(kMany)), (Outcome{-1, "", {}, 1}));
  EXPECT_EQ(m_parser.At(Closings(kMany) + "(", 0), (Outcome{0, "", {}, 1}));
  std::string pairs;
  for (std::size_t i = 0; i < kMany; ++i) pairs += "()";
  m_parser.File(pairs);
  EXPECT_EQ(m_parser.Reader().m_pRootArray->GetSize(), static_cast<INT_PTR>(kMany));
}

// ---- what is particular to each parse ----

TEST_F(Reader, ANamedFormBeginsAtALineThatHoldsNothingElse) {
  EXPECT_EQ(Named("(x\n)\n \t(pads  \n(pad a)\n)\n(pads\n)", "pads"), "{pads[]{pad[a]}}");
  EXPECT_EQ(Named("(pads a\n)", "pads"), "");
  EXPECT_EQ(Named("(pads)\n", "pads"), "");
  EXPECT_EQ(Named("(padstacks\n)", "pads"), "");
  EXPECT_EQ(Named("(pads\t\n)", "pads"), "") << "tabs are trimmed on the left only";
  EXPECT_EQ(Named("\t (pads\n)", "pads"), "") << "blanks go first, then tabs";
  EXPECT_EQ(Named("//(pads\n(pads\r\n)", "pads"), "{pads[]}");
  EXPECT_EQ(Named("(a\n(b\n(c)\n)\n)", "b"), "{b[]{c[]}}") << "at any depth";
}

TEST_F(Reader, ANamedFormEndsBehindItsLine) {
  EXPECT_EQ(m_parser.Named("(a\n)\n(b\n", "a"), (Outcome{0, "{a/1@1[]}", {}, 3})) << "the next line ends the parse";
  EXPECT_EQ(m_parser.Named("(a\n)\n//\n\n(b\n", "a").lineNo, 4) << "a comment line does not";
  EXPECT_EQ(Named("(a\n) (b) c\n(d)", "a"), "{a[]}{b[]}") << "what stands behind it on its line counts";
  EXPECT_EQ(Named("(a\n))\n(d)", "a"), "-1 {a[]}");
  EXPECT_EQ(Named("(a\n)(b\n)", "a"), "-1 {a[]}");
}

TEST_F(Reader, NamedFormsAddUp) {
  MemoryFileSystem& files = m_parser.Files();
  files.files["text"] = "(pads\n1\n)\n(padstacks\n2\n)\n";
  CECadCls reader;
  reader.m_sFileName = "text";
  EXPECT_EQ(reader.nParseNamedForm("padstacks"), 0);
  EXPECT_EQ(reader.m_nLineNo, 6);
  EXPECT_EQ(reader.nParseNamedForm("pads"), 0);
  EXPECT_EQ(reader.m_nLineNo, 4);
  EXPECT_EQ(reader.nParseNamedForm("none"), 0);
  EXPECT_EQ(Brief(*reader.m_pRootArray), "{padstacks[2]}{pads[1]}");
}

TEST_F(Reader, AFormAtAnOffset) {
  const std::string text = "(a 1)\n(b 2)\n(c 3)\n";
  EXPECT_EQ(At(text, 6), "{b[2]}");
  EXPECT_EQ(At(text, 7), "null") << "a closing bracket without its opening one";
  EXPECT_EQ(At(text, 11), "{c[3]}") << "an empty line comes first";
  EXPECT_EQ(At(text, text.size()), "null");
  EXPECT_EQ(At(text, text.size() + 1), "null");
  EXPECT_EQ(At(text, ~ULONGLONG{0}), "null");
  EXPECT_EQ(At("(a)(b) c\n(d)"), "{b[]}") << "a second form on the line takes the first one's place";
  EXPECT_EQ(At("(a)(b\n)"), "{a[]}");
  EXPECT_EQ(m_parser.At(text, 6).lineNo, 2) << "counted from the offset";
}

TEST_F(Reader, AFormAtAnOffsetReadsNoMoreThanItNeeds) {
  class CountingFileSystem : public MemoryFileSystem {
   public:
    std::int64_t Read(Handle h, void* pBuffer, std::size_t nBytes) override {
      const std::int64_t n = MemoryFileSystem::Read(h, pBuffer, nBytes);
      nBytesRead += n;
      return n;
    }
    std::int64_t nBytesRead = 0;
  };
  CountingFileSystem files;
  const laminate::FileSystemScope scope(files);
  files.files["text"] = "(a\n)\n\n" + std::string(10 * 1024 * 1024, 'x');
  CECadCls reader;
  reader.m_sFileName = "text";
  delete reader.pParseFormAt(0);
  EXPECT_LT(files.nBytesRead, 1024 * 1024);
}

TEST_F(Reader, OffsetsOfForms) {
  using List = std::vector<unsigned long long>;
  EXPECT_EQ(m_parser.Offsets("(pad a\n)\n \t(pad b\n(pad \"c d\"\n(pads a\n", "pad", {"a", "b", "\"c d\""}),
            (List{0, 9, 18}));
  EXPECT_EQ(m_parser.Reader().m_nLineNo, 5);
  EXPECT_EQ(m_parser.Offsets("(pad a b\n(pad\n(pad  a\n(pad a \n(pad a)\n//(pad a\n", "pad", {"a"}), List{});
  EXPECT_EQ(m_parser.Offsets("(pad a\r\n(pad a\r\n", "pad", {"a"}), (List{1, 9})) << "the line's second byte";
  EXPECT_EQ(m_parser.Offsets("(x\n(pad a", "pad", {"a"}), (List{2})) << "no line end: one byte before the line";
  EXPECT_EQ(m_parser.Offsets("(pad a", "pad", {"a"}), List{}) << "no offset is below zero";
  EXPECT_EQ(m_parser.Offsets("(pad a\n", "pad", {"a", "b", "a"}), (List{0, 0})) << "once per wanted name";
  EXPECT_EQ(m_parser.Offsets("(pad \n", "pad", {""}), (List{0}));
}

TEST_F(Reader, EachScanBeginsAnew) {
  MemoryFileSystem& files = m_parser.Files();
  files.files["text"] = "//x\n(pad a\n//y\n(pad b\n";
  CECadCls reader;
  reader.m_sFileName = "text";
  CStringArray a;
  a.Add("a");
  CStringArray b;
  b.Add("b");
  reader.nParseFile(0);
  reader.vCollectFormOffsets("pad", a);
  EXPECT_EQ(reader.m_nLineNo, 4) << "comment lines are counted";
  ASSERT_EQ(reader.m_arrOffset.GetSize(), 1);
  EXPECT_EQ(reader.m_arrOffset[0], 4u);
  reader.vCollectFormOffsets("pad", b);
  ASSERT_EQ(reader.m_arrOffset.GetSize(), 1);
  EXPECT_EQ(reader.m_arrOffset[0], 15u);
  delete reader.pParseFormAt(15);
  EXPECT_EQ(reader.m_nLineNo, 1);
  reader.m_sFileName = "missing";
  reader.vCollectFormOffsets("pad", b);
  EXPECT_TRUE(reader.m_arrOffset.IsEmpty());
  EXPECT_EQ(reader.m_nLineNo, 0);
  EXPECT_FALSE(reader.m_status.IsOk());
  reader.m_sFileName = "text";
  reader.vCollectFormOffsets("pad", a);
  EXPECT_TRUE(reader.m_status.IsOk());
  reader.m_sFileName = "missing";
  EXPECT_EQ(reader.pParseFormAt(0), nullptr);
  reader.m_sFileName = "text";
  delete reader.pParseFormAt(100);
  EXPECT_TRUE(reader.m_status.IsOk());
}

TEST_F(Reader, OffsetsInAFileOfTwoByteLineEnds) {
  const std::string text = "(pads\r\n(pad a\r\n(hole 1)\r\n)\r\n)\r\n";
  const auto offsets = m_parser.Offsets(text, "pad", {"a"});
  EXPECT_THAT(offsets, ElementsAre(8u));
  EXPECT_EQ(At(text, offsets[0]), "{hole[1]}") << "without its bracket the first line is no form";
}

TEST_F(Reader, AnOffsetThatNoFileCanHave) {
  laminate::FileSystem real;
  const laminate::FileSystemScope scope(real);
  const laminate::test::TestFolder folder;
  CECadCls reader;
  reader.m_sFileName = CString(folder.Write("text", "(a)\n"));
  for (const ULONGLONG nOffset : {ULONGLONG{1} << 40, ULONGLONG{1} << 60, ~ULONGLONG{0} >> 1, ~ULONGLONG{0}}) {
    EXPECT_EQ(reader.pParseFormAt(nOffset), nullptr);
    EXPECT_TRUE(reader.m_status.IsOk()) << reader.m_status.m_sText.GetString();
  }
}

TEST_F(Reader, OffsetsLeadToTheForms) {
  const std::string text = "(pads\n(pad a\n(hole 1)\n)\n  (pad b\n(hole 2)\n)\n)\n";
  const auto offsets = m_parser.Offsets(text, "pad", {"a", "b"});
  ASSERT_EQ(offsets.size(), 2u);
  EXPECT_EQ(At(text, offsets[0]), "{pad[a]{hole[1]}}");
  EXPECT_EQ(At(text, offsets[1]), "{pad[b]{hole[2]}}");
}

TEST_F(Reader, AQuoteAfterABackslashAtALinesEnd) {
  EXPECT_EQ(File("(a \"b\\\"\nc\")", false), "{a[b\\\"\nc]}") << "is embedded";
  EXPECT_EQ(File("(a \"b\\\"\nc)", true), "{a[b\\,'',c]}") << "or closes, and adds an empty value";
  EXPECT_EQ(File("(a \"x\\\"y\\z\n\"\n)", true), "{a[x\\\"y\\z\n,'']}") << "the backslash of the line before counts";
  EXPECT_EQ(File("(x\\\"q \"x\\\"\n\"\n)", true), "{x\\\"q[x\\\"\n,\"]}")
      << "a quote that follows an embedded one begins the next token";
  EXPECT_EQ(File("(a \"b\\\" c\")", true), "{a[b\\\" c]}") << "elsewhere it is embedded either way";
}

TEST_F(Reader, TheRestOfTheLineIsSoughtFromTheFirstOccurrence) {
  // The string's text stands before the string too, so what follows its first occurrence decides.
  EXPECT_EQ(File("(x\\\") \"x\\\" y\")"), "{x\\\"[]}") << "a bracket follows there: the string closes";
  EXPECT_EQ(File("(a x\\\"\")\" \"x\\\"y\")"), "{a[),x\\\"y]}") << "a quote follows there: it goes on";
}

TEST_F(Reader, ThePreviousByteOfALinesFirstByte) {
  // A line that begins with a quote: the byte before it is the last but one of the latest line of two bytes or more.
  EXPECT_EQ(File("(a \"x\\y\n\" b\")"), "{a[x\\y\n\" b]}");
  EXPECT_EQ(File("(a \"x\\y\n\n\" b\")"), "{a[x\\y\n\n\" b]}") << "an empty line leaves it";
  EXPECT_EQ(File("(a \"x\\y\nz\n\" b\")"), "{a[x\\y\nz\n\" b]}") << "so does a line of one byte";
  EXPECT_EQ(File("(a \"x\\y\nzz\n\" b)"), "{a[x\\y\nzz\n ,b]}");
  EXPECT_EQ(File("(a \"x\\y\n//zz\n\" b\")"), "{a[x\\y\n\" b]}") << "comments are not examined";
  EXPECT_EQ(File("(a \"x\\y\r\n\" b\")"), "{a[x\\y\n\" b]}") << "line ends do not count";
}

TEST_F(Reader, StopsAtTheFormsEnd) {
  EXPECT_EQ(m_parser.File("(a\n)\n(b)\n(", false, true), (Outcome{0, "{a/1@1[]}", {}, 2}));
  EXPECT_EQ(m_parser.File("(a)\n(b)\n(", false, true), (Outcome{0, "{a/1@1[]}{b/1@2[]}", {}, 2})) << "not in line 1";
  EXPECT_EQ(m_parser.File("\n\n(b)\n", false, true), (Outcome{0, "", {}, 2})) << "before any form too";
}

TEST_F(Reader, AStringLeftOpen) {
  EXPECT_EQ(File("(a) \"b"), "{a[]}");
  EXPECT_EQ(File("(a \"b)\n"), "-1 ");
}

TEST_F(Reader, ParsesAddToTheRoots) {
  m_parser.Files().files["text"] = "(a)";
  CECadCls reader;
  reader.m_sFileName = "text";
  reader.nParseFile(0);
  reader.nParseFile(0);
  EXPECT_EQ(Brief(*reader.m_pRootArray), "{a[]}{a[]}");
  EXPECT_EQ(reader.m_nLineNo, 1);
}

TEST_F(Reader, ANewReaderIsEmpty) {
  const CECadCls reader;
  EXPECT_EQ(reader.m_bStopAtFormEnd, 0);
  EXPECT_EQ(reader.m_nLineNo, 0);
  EXPECT_TRUE(reader.m_pRootArray->IsEmpty());
  EXPECT_TRUE(reader.m_arrN.IsEmpty());
  EXPECT_TRUE(reader.m_arrOffset.IsEmpty());
  EXPECT_TRUE(reader.m_sFileName.IsEmpty());
}

// ---- tokens and look-ups ----

TEST_F(Reader, DeliversTokens) {
  CECadCls reader;
  CECadClsLvl node;
  const auto add = [&](const char* sz) {
    CString sToken = sz;
    reader.vAddToken(&node, sToken);
    return std::string(sToken.View());
  };
  EXPECT_EQ(add(""), "");
  EXPECT_EQ(Brief(node), "[]");
  EXPECT_EQ(add(" "), " ") << "the name may be one blank";
  EXPECT_EQ(add(" "), "") << "a value may not";
  EXPECT_EQ(add("  "), "  ");
  EXPECT_EQ(add("x"), "x");
  EXPECT_EQ(Brief(node), " ['',  ,x]");
  CString sToken = " ";
  reader.vAddToken(nullptr, sToken);
  EXPECT_EQ(sToken, " ");
}

TEST_F(Reader, FindsByName) {
  m_parser.File("(a 1)(b)(a 2)(A)");
  CECadClsLvlArray& roots = *m_parser.Reader().m_pRootArray;
  ASSERT_NE(roots.pFindByName("a"), nullptr);
  EXPECT_EQ(roots.pFindByName("a")->m_arrValues[0], "1") << "the first of two";
  EXPECT_EQ(roots.pFindByName("c"), nullptr);
  EXPECT_EQ(roots.pFindByName(""), nullptr);
  CECadClsLvlArray found;
  found.Add(roots[1]);
  roots.vFindAllByName("a", found);
  EXPECT_EQ(Brief(found), "{b[]}{a[1]}{a[2]}") << "appended";
  EXPECT_EQ(roots.GetSize(), 4);
  found.SetSize(0, -1);
}

TEST_F(Reader, PassesOverNullSlots) {
  m_parser.File("(a)(a)");
  CECadClsLvlArray& roots = *m_parser.Reader().m_pRootArray;
  CECadClsLvlArray nodes;
  for (CECadClsLvl* p : {static_cast<CECadClsLvl*>(nullptr), roots[0], static_cast<CECadClsLvl*>(nullptr), roots[1]}) {
    nodes.Add(p);
  }
  EXPECT_EQ(nodes.pFindByName("a"), roots[0]);
  CECadClsLvlArray found;
  nodes.vFindAllByName("a", found);
  nodes.vFindAllByName("b", found);
  EXPECT_EQ(Brief(found), "{a[]}{a[]}");
  found.vFindAllByName("a", found);
  EXPECT_EQ(found.GetSize(), 4) << "also into the array itself";
  found.SetSize(0, -1);
  nodes.SetSize(0, -1);
  // Arrays and nodes die with null slots in any place.
  for (int nNull = 0; nNull < 4; ++nNull) {
    CECadClsLvlArray owner;
    CECadClsLvl parent;
    for (int i = 0; i < 4; ++i) {
      owner.Add(i == nNull ? nullptr : new CECadClsLvl);
      parent.m_pChildren->Add(i == nNull ? nullptr : new CECadClsLvl);
    }
  }
}

TEST_F(Reader, AReaderWithoutRootsRaises) {
  m_parser.Files().files["text"] = "(a\n)";
  CECadCls reader;
  reader.m_sFileName = "text";
  delete std::exchange(reader.m_pRootArray, nullptr);
  EXPECT_THROW(reader.nParseFile(0), CInvalidArgException);
  EXPECT_THROW(reader.nParseNamedForm("a"), CInvalidArgException);
  EXPECT_EQ(reader.m_nLineNo, 0) << "nothing is read";
  const std::unique_ptr<CECadClsLvl> form(reader.pParseFormAt(0));
  ASSERT_NE(form, nullptr) << "the form goes elsewhere";
  EXPECT_EQ(Brief(*form), "a[]");
}

TEST_F(Reader, ANewNodeIsEmpty) {
  const CECadClsLvl node;
  EXPECT_EQ(Brief(node), "[]");
  EXPECT_EQ(node.m_nLevel, 0);
  EXPECT_EQ(node.m_nLine, 0);
}

TEST_F(Reader, AMissingValueRaises) {
  m_parser.File("(a)");
  EXPECT_THROW(m_parser.Reader().m_pRootArray->GetAt(0)->m_arrValues[0], CInvalidArgException);
}

// ---- sizes ----

TEST_F(Reader, LongTokensAndManyOfThem) {
  const std::string token(8 * 1024 * 1024, 't');
  m_parser.File("(" + token + " \"" + token + "\")");
  const CECadClsLvl& node = *m_parser.Reader().m_pRootArray->GetAt(0);
  EXPECT_EQ(node.m_sName.View(), token);
  EXPECT_EQ(node.m_arrValues[0].View(), token);
  std::string values = "(a";
  for (int i = 0; i < 1000000; ++i) values += " 1";
  m_parser.File(values + ")");
  EXPECT_EQ(m_parser.Reader().m_pRootArray->GetAt(0)->m_arrValues.GetSize(), 1000000);
}

TEST_F(Reader, AFormOfVeryManyLines) {
  // Its values stay while block after block is read: what is kept once is not looked at again.
  constexpr int kLines = 3000000;
  std::string text = "(a\n";
  for (int i = 0; i < kLines; ++i) text += "1\n";
  m_parser.File(text + ")");
  EXPECT_EQ(m_parser.Reader().m_pRootArray->GetAt(0)->m_arrValues.GetSize(), kLines);
}

TEST_F(Reader, AStringOverVeryManyLines) {
  std::string value;
  for (int i = 0; i < 200000; ++i) value += "x\n";
  m_parser.File("(a \"" + value + "\")");
  EXPECT_EQ(m_parser.Reader().m_pRootArray->GetAt(0)->m_arrValues[0].View(), value + " ");
  EXPECT_EQ(At("(a \"" + value + "\")"), "{a[" + value + "]}");
}

TEST_F(Reader, AStringOfVeryManyEscapedQuotes) {
  std::string value;
  for (int i = 0; i < 200000; ++i) value += "\\\"";
  EXPECT_EQ(File("(a \"" + value + "x\")"), "{a[" + value + "x]}");
  std::string strings;
  std::string values;
  for (int i = 0; i < 20000; ++i) {
    strings += " \"s" + std::to_string(i) + "\\\"x\"";
    values += (i == 0 ? "s" : ",s") + std::to_string(i) + "\\\"x";
  }
  EXPECT_EQ(File("(a" + strings + ")"), "{a[" + values + "]}");
}

TEST_F(Reader, CostGrowsWithTheTextAndNoFaster) {
  const auto repeated = [](std::string_view s, int n) {
    std::string text;
    for (int i = 0; i < n; ++i) text += s;
    return text;
  };
  struct Text {
    const char* what;
    int n;
    std::function<std::string(int)> make;
  };
  const Text texts[] = {
      {"a string of escaped quotes", 60000, [&](int n) { return "(a \"" + repeated("\\\"", n) + "x\")"; }},
      {"strings of an escaped quote", 20000, [&](int n) { return "(a" + repeated(" \"s\\\"x\"", n) + ")"; }},
      {"lines of one form", 1000000, [&](int n) { return "(a\n" + repeated("1\n", n) + ")"; }},
      {"forms of one form", 200000, [&](int n) { return "(a\n" + repeated("(b)", n) + ")"; }},
      {"lines of a string", 300000, [&](int n) { return "(a \"" + repeated("x\n", n) + "\")"; }},
  };
  for (const Text& text : texts) {
    // Of the processor, and the best of some: what else runs on the machine counts less.
    const auto cost = [&](int n) {
      m_parser.Files().files["text"] = text.make(n);
      std::clock_t best = std::numeric_limits<std::clock_t>::max();
      for (int i = 0; i < 5; ++i) {
        const std::clock_t start = std::clock();
        CECadCls reader;
        reader.m_sFileName = "text";
        EXPECT_EQ(reader.nParseFile(0), 0);
        reader.m_pRootArray->DeleteAll();
        best = std::min(best, std::clock() - start);
      }
      return static_cast<double>(best);
    };
    EXPECT_LT(cost(4 * text.n), 9 * cost(text.n)) << text.what;
  }
}

// ---- how a parse ended ----

struct Fault {
  const char* name;
  std::string text;
  int line;
  int column;
  const char* reason;
};
const Fault kFaults[] = {
    {"a form left open", "(a)\n (b\n(c)\n", 2, 2, "the form \"b\" is not closed"},
    {"the innermost one", "(a\n(b \"x\ny\" (c (d) e\n", 3, 4, "the form \"c\" is not closed"},
    {"one without name", "(a\n(", 2, 1, "the form is not closed"},
    {"a bracket too many", "(a)\n\t))(", 2, 2, "there is a closing bracket too many"},
    {"behind many columns", "(a" + std::string(100, ' ') + "))", 1, 104, "there is a closing bracket too many"},
    {"a form too deep", "(a\n" + Brackets(22), 2, 20, "forms nest deeper than 20 levels"},
};

TEST_F(Reader, TellsWhereAParseFailed) {
  for (const Fault& fault : kFaults) {
    // Of the form at an offset the first form counts, and a named form stands a level and a line deeper.
    const bool bSecondForm = fault.text.starts_with("(a)\n");
    const bool bTooMany = fault.text.ends_with("))(") || fault.text.ends_with("))");
    const bool bTooDeep = fault.text.ends_with("((");
    for (int parse = 0; parse < 4; ++parse) {
      laminate::Diagnostics diagnostics;
      int line = fault.line;
      int column = fault.column;
      if (parse == 0) {
        m_parser.File(fault.text, false, false, &diagnostics);
      } else if (parse == 1) {
        m_parser.At(bSecondForm ? fault.text.substr(4) : fault.text, 0, &diagnostics);
        if (bSecondForm) --line;
      } else if (parse == 2) {
        m_parser.File(fault.text);
      } else {
        std::string text = fault.text;
        if (bTooMany) text.insert(text.rfind("))") + 1, ")");
        m_parser.Named("(w\n" + text, "w", &diagnostics);
        ++line;
        if (bTooMany) ++column;
        if (bTooDeep) --column;
      }
      const LoadStatus& status = m_parser.Reader().m_status;
      EXPECT_EQ(status.m_result, LoadStatus::Result::notWellFormed) << fault.name << parse;
      EXPECT_EQ(status.m_sFile, "text");
      EXPECT_EQ(status.m_nLine, line) << fault.name << parse;
      EXPECT_EQ(status.m_nColumn, column) << fault.name << parse;
      EXPECT_EQ(status.m_sText, fault.reason) << fault.name << parse;
      if (parse == 2) continue;
      ASSERT_EQ(diagnostics.list.size(), 1u) << fault.name;
      EXPECT_EQ(diagnostics.list[0].severity, Diagnostic::Severity::error);
      EXPECT_EQ(diagnostics.list[0].line, line);
      EXPECT_EQ(diagnostics.list[0].column, column);
      EXPECT_EQ(diagnostics.list[0].reason, fault.reason);
    }
  }
}

struct Remarks {
  const char* name;
  std::string text;
  std::vector<std::string> expected;  // of both kinds of parse
};
const Remarks kRemarks[] = {
    {"nothing to say", "(a \"b c\"\n\t(d\n) \"\te\" )", {}},
    {"a string left open", "(a)\n(b) \"c", {"2:5 the string is not closed"}},
    {"a comment line in a string", "(a \"b\n// c\nd\")\n// e", {"2:1 a comment line inside a string is dropped"}},
    {"text lost before a quote", "(a b\"c\")", {"1:4 text directly before an opening quote is lost"}},
    {"a tab in a token", "(a b\tc\n\t)", {"1:5 a tab does not separate tokens and is part of this one"}},
    {"a tab at a line's end", "(a b\t\n)", {"1:5 a tab does not separate tokens and is part of this one"}},
};

TEST_F(Reader, Remarks) {
  for (const auto& c : kRemarks) {
    laminate::Diagnostics diagnostics;
    m_parser.File(c.text, false, false, &diagnostics);
    std::vector<std::string> said;
    for (const Diagnostic& d : diagnostics.list) {
      EXPECT_EQ(d.severity, Diagnostic::Severity::warning);
      EXPECT_EQ(d.file, "text");
      said.push_back(std::to_string(d.line) + ":" + std::to_string(d.column) + " " + std::string(d.reason.View()));
    }
    EXPECT_EQ(said, c.expected) << c.name;
    EXPECT_TRUE(m_parser.Reader().m_status.IsOk()) << "remarks are no faults";
  }
}

TEST_F(Reader, RemarksOfTheSimpleParses) {
  const auto remarks = [&](const std::string& text) {
    laminate::Diagnostics diagnostics;
    m_parser.At(text, 0, &diagnostics);
    std::vector<std::string> said;
    for (const Diagnostic& d : diagnostics.list) {
      said.push_back(std::to_string(d.line) + ":" + std::to_string(d.column) + " " + std::string(d.reason.View()));
    }
    return said;
  };
  EXPECT_THAT(remarks("(a \"b\"\n \t(d\n) \"\te\" )"), IsEmpty());
  EXPECT_THAT(
      remarks("(a \"b\n//\nc\" d\"\" e\tf)"),
      ElementsAre("2:1 a comment line inside a string is dropped", "3:5 text directly before an opening quote is lost",
                  "3:9 a tab does not separate tokens and is part of this one"));
  EXPECT_THAT(remarks("(a)\"b"), ElementsAre("1:4 the string is not closed"));
}

// ---- files that cannot be read ----

class FailingFileSystem : public MemoryFileSystem {
 public:
  std::int64_t Read(Handle h, void* pBuffer, std::size_t nBytes) override {
    return nReads-- == 0 ? -EIO : MemoryFileSystem::Read(h, pBuffer, std::min<std::size_t>(nBytes, 10));
  }
  int nReads = 0;
};

TEST_F(Reader, AFileThatCannotBeReadIsAnEmptyOne) {
  FailingFileSystem files;
  const laminate::FileSystemScope scope(files);
  files.files["text"] = "(pad a\n)\n(pad a\n)\n(pad a\n)\n";
  CECadCls reader;
  CStringArray names;
  names.Add("a");
  const auto expectNothing = [&](int nResult) {
    EXPECT_EQ(nResult, 0);
    EXPECT_TRUE(reader.m_pRootArray->IsEmpty());
    EXPECT_TRUE(reader.m_arrOffset.IsEmpty());
    EXPECT_EQ(reader.m_nLineNo, 0);
    EXPECT_EQ(reader.m_status.m_result, LoadStatus::Result::cannotOpen);
    EXPECT_EQ(reader.m_status.m_sFile, reader.m_sFileName);
    EXPECT_EQ(reader.m_status.m_nLine, 0);
    EXPECT_FALSE(reader.m_status.m_sText.IsEmpty());
    EXPECT_EQ(files.OpenCount(), 0u);
  };
  for (const char* szName : {"missing", "", "text"}) {
    reader.m_sFileName = szName;
    for (int nReads : {0, 1}) {
      files.nReads = nReads;
      expectNothing(reader.nParseFile(0));
      files.nReads = nReads;
      expectNothing(reader.nParseNamedForm("pad a)"));
      files.nReads = nReads;
      EXPECT_EQ(reader.pParseFormAt(9), nullptr);
      expectNothing(0);
      files.nReads = nReads;
      reader.vCollectFormOffsets("pad", names);
      expectNothing(0);
    }
  }
  files.nReads = 1000;
  EXPECT_EQ(reader.nParseFile(0), 0);
  EXPECT_TRUE(reader.m_status.IsOk()) << "each parse tells of itself";
  EXPECT_EQ(reader.m_pRootArray->GetSize(), 3);
}

TEST_F(Reader, AFolderIsAnEmptyFile) {
  laminate::FileSystem real;
  const laminate::FileSystemScope scope(real);
  CECadCls reader;
  reader.m_sFileName = "/";
  EXPECT_EQ(reader.nParseFile(0), 0);
  EXPECT_EQ(reader.m_status.m_result, LoadStatus::Result::cannotOpen);
  EXPECT_EQ(reader.pParseFormAt(0), nullptr);
  EXPECT_EQ(reader.m_status.m_result, LoadStatus::Result::cannotOpen);
}

// ---- failures on the way ----

TEST_F(Reader, AHostThatRaisesInTheBoxLosesNothing) {
  class Raising : public CHostInterface {
   public:
    int OnAfxMessageBox(const CString&, UINT, UINT) override { throw CInvalidArgException("no box", 0); }
  };
  Raising host;
  const CHostInterfaceScope scope(host);
  m_parser.Files().files["text"] = "(a)(b\n(c)" + Brackets(30);
  CECadCls reader;
  reader.m_sFileName = "text";
  EXPECT_THROW(reader.nParseFile(0), CInvalidArgException);
  EXPECT_EQ(Brief(*reader.m_pRootArray), "{a[]}");
  EXPECT_EQ(m_parser.Files().OpenCount(), 0u);
  m_parser.Files().files["text"] = "(a\n)" + Brackets(30);
  EXPECT_THROW(reader.nParseNamedForm("a"), CInvalidArgException);
  EXPECT_EQ(Brief(*reader.m_pRootArray), "{a[]}{a[]}");
}

// ---- texts at hand ----

struct TextAtHand {
  explicit TextAtHand(const std::string& s) : padded(s + std::string(laminate::LineReader::kPadding, '\0')) {
    result = laminate::ParseText(reader, std::string_view(padded).substr(0, s.size()), &ranges);
  }
  std::string padded;
  CECadCls reader;
  std::vector<laminate::FormRange> ranges;
  int result;
};

TEST(TextAtHandTest, TellsWhereEachFormStands) {
  const std::string text = "// (no)\n(a 1\r\n (b \"x)(y\") (c\n)\n)\n(d)";
  const TextAtHand parsed(text);
  EXPECT_EQ(parsed.result, 0);
  EXPECT_EQ(Brief(*parsed.reader.m_pRootArray), "{a[1]{b[x)(y]}{c[]}}{d[]}");
  std::vector<std::string> forms;
  for (const laminate::FormRange& range : parsed.ranges) {
    forms.push_back(text.substr(range.nBegin, range.nEnd - range.nBegin));
  }
  EXPECT_EQ(forms, (std::vector<std::string>{"(b \"x)(y\")", "(c\n)", "(a 1\r\n (b \"x)(y\") (c\n)\n)", "(d)"}));
}

TEST(TextAtHandTest, IsReadAsAFileIsAndShowsNoBox) {
  BoxRecorder boxes;
  const CHostInterfaceScope scope(boxes);
  const TextAtHand open("(a (b)");
  EXPECT_EQ(open.result, -1);
  EXPECT_EQ(open.reader.m_status.m_result, laminate::LoadStatus::Result::notWellFormed);
  EXPECT_EQ(open.reader.m_status.m_nLine, 1);
  const TextAtHand closed("(a)\n)");
  EXPECT_EQ(closed.result, -1);
  EXPECT_EQ(Brief(*closed.reader.m_pRootArray), "{a[]}");
  const TextAtHand deep(std::string(21, '('));
  EXPECT_EQ(deep.result, -1);
  EXPECT_TRUE(boxes.texts.empty());
}

}  // namespace
