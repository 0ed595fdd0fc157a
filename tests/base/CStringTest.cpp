#include "base/CString.h"

#include <gtest/gtest.h>

#include <atomic>
#include <climits>
#include <cstdint>
#include <ctime>
#include <random>
#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

#include "base/LocaleScope.h"

using namespace std::string_view_literals;

namespace {

using laminate::test::LocaleScope;

static_assert(sizeof(CString) <= 16);
static_assert(std::is_nothrow_move_constructible_v<CString> && std::is_nothrow_copy_constructible_v<CString>);

std::string Text(const CString& s) {
  EXPECT_EQ(s.GetString()[s.GetLength()], '\0') << "no NUL behind the text";
  return std::string(s.View());
}
CString Make(std::string_view s) { return CString(s); }

// Lengths around the border between the two ways of holding a text, and around steps of memory.
const std::size_t kLengths[] = {0, 1, 7, 14, 15, 16, 17, 23, 24, 27, 28, 31, 32, 100, 511, 512, 513, 5000};

std::string Sample(std::size_t nLength) {
  std::string s(nLength, 'x');
  for (std::size_t i = 0; i < nLength; ++i) s[i] = static_cast<char>('a' + i % 26);
  return s;
}

TEST(CString, SharesLongTextsAndHoldsShortOnes) {
  for (const std::size_t n : kLengths) {
    const CString made(Sample(n));
    const CString copy(made);
    CString assigned("another text, which is longer than sixteen bytes");
    assigned = made;
    const auto isInside = [](const CString& s) {
      const auto offset = reinterpret_cast<std::uintptr_t>(s.GetString()) - reinterpret_cast<std::uintptr_t>(&s);
      return offset < sizeof s;
    };
    for (const CString* ps : std::initializer_list<const CString*>{&made, &copy, &assigned}) {
      EXPECT_EQ(isInside(*ps), n <= 15) << n;
      EXPECT_EQ(ps->GetString() == made.GetString(), n > 15 || ps == &made) << n;
    }
  }
}

TEST(CString, IsMadeOfTextsBytesAndParts) {
  EXPECT_EQ(Text(CString()), "");
  EXPECT_EQ(Text(CString("abc")), "abc");
  EXPECT_EQ(Text(CString(static_cast<const char*>(nullptr))), "");
  EXPECT_EQ(Text(CString("abc", 2)), "ab");
  EXPECT_EQ(Text(CString("a\0c", 3)), "a\0c"sv);
  EXPECT_EQ(Text(CString("abc", 0)), "");
  EXPECT_EQ(Text(CString("abc", -1)), "");
  EXPECT_EQ(Text(CString(nullptr, 5)), "");
  EXPECT_EQ(Text(CString('x')), "x");
  EXPECT_EQ(Text(CString('x', 20)), std::string(20, 'x'));
  EXPECT_EQ(Text(CString('x', 0)), "");
  EXPECT_EQ(Text(CString('x', -3)), "");
  EXPECT_EQ(Text(CString('\0', 3)), "\0\0\0"sv);
  EXPECT_EQ(Text(CString("a\0b"sv)), "a\0b"sv);
  for (const std::size_t n : kLengths) {
    const std::string s = Sample(n);
    const CString made(s);
    EXPECT_EQ(Text(made), s);
    EXPECT_EQ(made.GetLength(), static_cast<int>(n));
    EXPECT_EQ(made.IsEmpty(), n == 0);
    const CString copy(made);
    EXPECT_EQ(Text(copy), s);
    CString source(made);
    const CString moved(std::move(source));
    EXPECT_EQ(Text(moved), s);
  }
}

TEST(CString, IsAssigned) {
  for (const std::size_t nOld : kLengths) {
    for (const std::size_t nNew : kLengths) {
      const CString old(Sample(nOld));
      const std::string s = Sample(nNew);
      CString a(old);
      a = CString(s);
      EXPECT_EQ(Text(a), s);
      CString b(old);
      b = s.c_str();
      EXPECT_EQ(Text(b), s);
      CString c(old);
      c = std::string_view(s);
      EXPECT_EQ(Text(c), s);
      CString d(old);
      const CString source(s);
      d = source;
      EXPECT_EQ(Text(d), s);
      EXPECT_EQ(Text(old), Sample(nOld)) << "a copy changed its source";
    }
  }
  CString s("abc");
  s = 'q';
  EXPECT_EQ(Text(s), "q");
  s = static_cast<const char*>(nullptr);
  EXPECT_EQ(Text(s), "");
}

TEST(CString, IsAssignedFromItself) {
  for (const std::size_t n : kLengths) {
    const std::string text = Sample(n);
    CString s(text);
    CString& same = s;
    s = same;
    EXPECT_EQ(Text(s), text);
    s = std::move(same);
    EXPECT_EQ(Text(s), text);
    s = s.GetString();
    EXPECT_EQ(Text(s), text);
    for (const std::size_t nFrom : {std::size_t{1}, std::size_t{3}, n / 2, n}) {
      if (nFrom > n) continue;
      CString part(text);
      part = part.View().substr(nFrom);
      EXPECT_EQ(Text(part), text.substr(nFrom)) << n << " from " << nFrom;
      CString shared(text);
      const CString other(shared);
      shared = shared.View().substr(nFrom);
      EXPECT_EQ(Text(shared), text.substr(nFrom));
      EXPECT_EQ(Text(other), text);
    }
  }
}

// Short texts are copied in pieces that overlap.
TEST(CString, IsAssignedTextsOfEveryLength) {
  const std::string bytes = "0123456789abcdefghij";
  for (std::size_t n = 0; n <= 18; ++n) {
    const std::string_view text = std::string_view(bytes).substr(0, n);
    for (const char* szBefore : {"", "before", "a text that is held outside"}) {
      CString s = szBefore;
      s = text;
      EXPECT_EQ(s, text);
      CString padded = szBefore;
      padded.AssignPadded(text);
      EXPECT_EQ(padded, text);
      EXPECT_EQ(padded.GetString()[n], '\0');
    }
    EXPECT_EQ(CString(text), text);
    // A part of the text itself, from each place on.
    for (std::size_t nFrom = 0; nFrom <= n; ++nFrom) {
      CString s(text);
      s = s.View().substr(nFrom);
      EXPECT_EQ(s, text.substr(nFrom));
    }
  }
}

TEST(CString, GivesBytesByPosition) {
  for (const std::size_t n : kLengths) {
    const std::string text = Sample(n);
    const CString s(text);
    const int nLength = static_cast<int>(n);
    for (int i = 0; i < nLength; ++i) {
      ASSERT_EQ(s[i], text[static_cast<std::size_t>(i)]);
      ASSERT_EQ(s.GetAt(i), text[static_cast<std::size_t>(i)]);
    }
    EXPECT_EQ(s[nLength], '\0');
    EXPECT_EQ(s.GetAt(nLength), '\0');
    for (const int nBad : {-1, nLength + 1, INT_MIN, INT_MAX}) {
      EXPECT_THROW(s[nBad], CInvalidArgException) << nBad;
      EXPECT_THROW(s.GetAt(nBad), CInvalidArgException) << nBad;
    }
    EXPECT_THROW(s[SIZE_MAX], CInvalidArgException);
    EXPECT_THROW(s[std::int64_t{-1}], CInvalidArgException);
    EXPECT_THROW(s[std::int64_t{1} << 40], CInvalidArgException);
  }
}

TEST(CString, TellsViews) {
  const CString s("ab\0cd"sv);
  EXPECT_EQ(s.View(), "ab\0cd"sv);
  EXPECT_EQ(s.CView(), "ab");
  EXPECT_EQ(CString("ab").CView(), "ab");
  EXPECT_EQ(CString("\0"sv).CView(), "");
  EXPECT_STREQ(static_cast<const char*>(s), "ab");
}

TEST(CString, Compares) {
  struct Row {
    std::string_view a, b;
    int expected;
    int expectedNoCase;
  };
  const Row rows[] = {
      {"", "", 0, 0},
      {"a", "", 1, 1},
      {"", "a", -1, -1},
      {"abc", "abc", 0, 0},
      {"abc", "abd", -1, -1},
      {"abc", "ab", 1, 1},
      {"ABC", "abc", -1, 0},
      {"a", "B", 1, -1},
      {"[", "a", -1, -1},
      {"\x80", "a", 1, 1},  // bytes, not signed characters
      {"\xFF", "\x01", 1, 1},
      {"\xC4", "\xE4", -1, -1},  // letters are those of ASCII
      {"a\0b"sv, "a\0c"sv, -1, -1},
      {"a\0"sv, "a", 1, 1},
      {"0123456789abcdefX", "0123456789ABCDEFx", 1, 0},
  };
  for (const Row& row : rows) {
    const CString a(row.a);
    const CString b(row.b);
    EXPECT_EQ(a.Compare(b), row.expected) << row.a << " " << row.b;
    EXPECT_EQ(b.Compare(a), -row.expected);
    EXPECT_EQ(a.CompareNoCase(b), row.expectedNoCase) << row.a << " " << row.b;
    EXPECT_EQ(b.CompareNoCase(a), -row.expectedNoCase);
    EXPECT_EQ(a == b, row.expected == 0);
    EXPECT_EQ(a != b, row.expected != 0);
    EXPECT_EQ(a < b, row.expected < 0);
    EXPECT_EQ(a > b, row.expected > 0);
    EXPECT_EQ(a <= b, row.expected <= 0);
    EXPECT_EQ(a >= b, row.expected >= 0);
  }
  const CString s("m");
  EXPECT_TRUE(s == "m" && "m" == s && s != "n" && "n" != s);
  EXPECT_TRUE(s < "n" && s <= "m" && s > "l" && s >= "m");
  EXPECT_TRUE("l" < s && "m" <= s && "n" > s && "m" >= s);
  EXPECT_TRUE(CString() == static_cast<const char*>(nullptr));
  EXPECT_EQ(s.Compare(static_cast<const char*>(nullptr)), 1);
  EXPECT_EQ(s.CompareNoCase("M"), 0);
  EXPECT_EQ(s.CompareNoCase(static_cast<const char*>(nullptr)), 1);
  EXPECT_FALSE(CString("m\0"sv) == "m");
}

TEST(CString, Finds) {
  const CString s("abcabc");
  EXPECT_EQ(s.Find('c'), 2);
  EXPECT_EQ(s.Find('c', 3), 5);
  EXPECT_EQ(s.Find('c', 6), -1);
  EXPECT_EQ(s.Find('c', 7), -1);
  EXPECT_EQ(s.Find('c', -1), -1);
  EXPECT_EQ(s.Find('x'), -1);
  EXPECT_EQ(s.Find("bc"), 1);
  EXPECT_EQ(s.Find("bc", 2), 4);
  EXPECT_EQ(s.Find("bc", 5), -1);
  EXPECT_EQ(s.Find(""), 0);
  EXPECT_EQ(s.Find("", 6), 6);
  EXPECT_EQ(s.Find("", 7), -1);
  EXPECT_EQ(s.Find("abc", -1), -1);
  EXPECT_EQ(s.Find(static_cast<const char*>(nullptr)), -1);
  EXPECT_EQ(s.Find(CString("ca")), 2);
  EXPECT_EQ(s.ReverseFind('a'), 3);
  EXPECT_EQ(s.ReverseFind('x'), -1);
  EXPECT_EQ(s.FindOneOf("xc"), 2);
  EXPECT_EQ(s.FindOneOf("x"), -1);
  EXPECT_EQ(s.FindOneOf(""), -1);
  EXPECT_EQ(s.FindOneOf(nullptr), -1);
  EXPECT_EQ(CString().Find('a'), -1);
  EXPECT_EQ(CString().ReverseFind('a'), -1);
  EXPECT_EQ(CString().Find(""), 0);
  const CString nul("a\0b\0c"sv);
  EXPECT_EQ(nul.Find('\0'), 1);
  EXPECT_EQ(nul.Find('\0', 2), 3);
  EXPECT_EQ(nul.Find("\0c"sv), 3);
  EXPECT_EQ(nul.ReverseFind('\0'), 3);
}

TEST(CString, TakesParts) {
  const CString s("0123456789");
  struct Row {
    CString part;
    const char* expected;
  };
  const Row rows[] = {
      {s.Left(3), "012"},
      {s.Left(0), ""},
      {s.Left(-1), ""},
      {s.Left(10), "0123456789"},
      {s.Left(11), "0123456789"},
      {s.Right(3), "789"},
      {s.Right(0), ""},
      {s.Right(-5), ""},
      {s.Right(10), "0123456789"},
      {s.Right(INT_MAX), "0123456789"},
      {s.Mid(4), "456789"},
      {s.Mid(10), ""},
      {s.Mid(11), ""},
      {s.Mid(-2), "0123456789"},
      {s.Mid(4, 2), "45"},
      {s.Mid(4, 0), ""},
      {s.Mid(4, -1), ""},
      {s.Mid(8, 5), "89"},
      {s.Mid(-3, 2), "01"},
      {s.Mid(2, INT_MAX), "23456789"},
      {s.Mid(INT_MAX, INT_MAX), ""},
      {s.Mid(INT_MIN, 1), "0"},
      {s.SpanIncluding("3210"), "0123"},
      {s.SpanIncluding("9"), ""},
      {s.SpanIncluding(""), ""},
      {s.SpanIncluding(nullptr), ""},
      {s.SpanIncluding("0123456789"), "0123456789"},
      {s.SpanExcluding("54"), "0123"},
      {s.SpanExcluding("x"), "0123456789"},
      {s.SpanExcluding(""), "0123456789"},
      {s.SpanExcluding("0"), ""},
  };
  int i = 0;
  for (const Row& row : rows) EXPECT_EQ(Text(row.part), row.expected) << i++;
  EXPECT_EQ(Text(CString("a\0b\0"sv).Mid(1, 2)), "\0b"sv);
  EXPECT_EQ(Text(CString().Mid(0)), "");
}

TEST(CString, Tokenizes) {
  struct Row {
    std::string_view text;
    const char* set;
    std::vector<std::string> tokens;
  };
  const Row rows[] = {
      {"", " ", {}},
      {"   ", " ", {}},
      {"a", " ", {"a"}},
      {" a  b ", " ", {"a", "b"}},
      {"a,b;c", ",;", {"a", "b", "c"}},
      {",,a,,", ",", {"a"}},
      {"abc", "", {"abc"}},
      {"abc", nullptr, {"abc"}},
      {"a\0b c"sv, " ", {std::string("a\0b", 3), "c"}},
      {"a long token of many bytes", " ", {"a", "long", "token", "of", "many", "bytes"}},
  };
  for (const Row& row : rows) {
    const CString s(row.text);
    std::vector<std::string> tokens;
    int nAt = 0;
    for (CString token = s.Tokenize(row.set, nAt); nAt != -1; token = s.Tokenize(row.set, nAt)) {
      tokens.push_back(Text(token));
      ASSERT_LE(nAt, s.GetLength());
      ASSERT_LT(tokens.size(), 100u) << row.text;
    }
    EXPECT_EQ(tokens, row.tokens) << row.text;
  }
  int nAt = -1;
  EXPECT_THROW(CString("a").Tokenize(" ", nAt), CInvalidArgException);
  nAt = 5;
  EXPECT_EQ(Text(CString("a").Tokenize(" ", nAt)), "");
  EXPECT_EQ(nAt, -1);
}

TEST(CString, Appends) {
  for (const std::size_t n : kLengths) {
    for (const std::size_t nMore : kLengths) {
      const std::string a = Sample(n);
      const std::string b = Sample(nMore);
      CString s(a);
      const CString other(s);
      s += CString(b);
      ASSERT_EQ(Text(s), a + b);
      ASSERT_EQ(Text(other), a);
      s = a.c_str();
      s += b.c_str();
      ASSERT_EQ(Text(s), a + b);
      s = a.c_str();
      s.Append(b.c_str(), static_cast<int>(nMore));
      ASSERT_EQ(Text(s), a + b);
      ASSERT_EQ(Text(CString(a) + CString(b)), a + b);
      ASSERT_EQ(Text(CString(a) + b.c_str()), a + b);
      ASSERT_EQ(Text(a.c_str() + CString(b)), a + b);
    }
    CString s(Sample(n));
    s += 'x';
    EXPECT_EQ(Text(s), Sample(n) + 'x');
    s += '\0';
    EXPECT_EQ(Text(s), Sample(n) + 'x' + '\0');
    EXPECT_EQ(Text(CString(Sample(n)) + '!'), Sample(n) + '!');
    EXPECT_EQ(Text('!' + CString(Sample(n))), '!' + Sample(n));
  }
  CString s("a");
  s += static_cast<const char*>(nullptr);
  s.Append(static_cast<const char*>(nullptr));
  s.Append(nullptr, 3);
  s.Append("xyz", 0);
  s.Append("xyz", -2);
  EXPECT_EQ(Text(s), "a");
  EXPECT_EQ(Text(static_cast<const char*>(nullptr) + s + static_cast<const char*>(nullptr)), "a");
}

TEST(CString, AppendsAndInsertsPartsOfItself) {
  for (const std::size_t n : kLengths) {
    const std::string text = Sample(n);
    CString s(text);
    s += s;
    EXPECT_EQ(Text(s), text + text);
    CString t(text);
    t += t.GetString();
    EXPECT_EQ(Text(t), text + text);
    CString u(text);
    u.Append(u);
    EXPECT_EQ(Text(u), text + text);
    if (n < 3) continue;
    CString v(text);
    v += v.View().substr(1, n - 2);
    EXPECT_EQ(Text(v), text + text.substr(1, n - 2));
    CString w(text);
    w.Insert(1, w.View());
    EXPECT_EQ(Text(w), text.substr(0, 1) + text + text.substr(1));
    CString x(text);
    x.Insert(2, x.View().substr(1, 2));
    EXPECT_EQ(Text(x), text.substr(0, 2) + text.substr(1, 2) + text.substr(2));
    CString y(text);
    y.Replace(y.View().substr(0, 1), y.View().substr(0, 3));
    std::string expected;
    for (const char ch : text) expected += ch == 'a' ? text.substr(0, 3) : std::string(1, ch);
    EXPECT_EQ(Text(y), expected);
    CString z(text);
    z.AppendFormat("%s", z.GetString());
    EXPECT_EQ(Text(z), text + text);
    z = text.c_str();
    z.Format("<%s>", z.GetString());
    EXPECT_EQ(Text(z), "<" + text + ">");
  }
}

TEST(CString, Trims) {
  struct Row {
    std::string_view text, left, right, both;
  };
  const Row rows[] = {
      {"", "", "", ""},
      {" ", "", "", ""},
      {" \t\n\v\f\r", "", "", ""},
      {"a", "a", "a", "a"},
      {" a ", "a ", " a", "a"},
      {"\t a b \n", "a b \n", "\t a b", "a b"},
      {"\x85"
       "a\xA0",
       "\x85"
       "a\xA0",
       "\x85"
       "a\xA0",
       "\x85"
       "a\xA0"},
      {"\0 a \0"sv, "\0 a \0"sv, "\0 a \0"sv, "\0 a \0"sv},
      {"                a text of more than sixteen bytes                 ",
       "a text of more than sixteen bytes                 ", "                a text of more than sixteen bytes",
       "a text of more than sixteen bytes"},
      {"                              b                                 ", "b                                 ",
       "                              b", "b"},
  };
  for (const Row& row : rows) {
    const CString shared(row.text);
    EXPECT_EQ(Text(CString(row.text).TrimLeft()), row.left);
    EXPECT_EQ(Text(CString(row.text).TrimRight()), row.right);
    EXPECT_EQ(Text(CString(row.text).Trim()), row.both);
    CString copy(shared);
    copy.Trim();
    EXPECT_EQ(Text(copy), row.both);
    EXPECT_EQ(Text(shared), row.text);
  }
  EXPECT_EQ(Text(Make("xxaxx").TrimLeft('x')), "axx");
  EXPECT_EQ(Text(Make("xxaxx").TrimRight('x')), "xxa");
  EXPECT_EQ(Text(Make("xxaxx").Trim('x')), "a");
  EXPECT_EQ(Text(Make("xyaxy").TrimLeft("yx")), "axy");
  EXPECT_EQ(Text(Make("xyaxy").TrimRight("yx")), "xya");
  EXPECT_EQ(Text(Make("xyaxy").Trim("yx")), "a");
  EXPECT_EQ(Text(Make("xyaxy").Trim("")), "xyaxy");
  EXPECT_EQ(Text(Make("xyaxy").Trim(nullptr)), "xyaxy");
  EXPECT_EQ(Text(Make("xx").Trim('x')), "");
}

TEST(CString, ChangesCaseAndOrder) {
  EXPECT_EQ(Text(Make("aZ0\xE4[z").MakeUpper()), "AZ0\xE4[Z");
  EXPECT_EQ(Text(Make("aZ0\xC4@Z").MakeLower()), "az0\xC4@z");
  EXPECT_EQ(Text(Make("abc").MakeReverse()), "cba");
  EXPECT_EQ(Text(Make("").MakeReverse()), "");
  EXPECT_EQ(Text(Make("a\0b"sv).MakeUpper()), "A\0B"sv);
  const CString shared("abcdefghijklmnopqrstuvwxyz");
  CString copy(shared);
  copy.MakeUpper();
  EXPECT_EQ(Text(copy), "ABCDEFGHIJKLMNOPQRSTUVWXYZ");
  EXPECT_EQ(Text(shared), "abcdefghijklmnopqrstuvwxyz");
}

TEST(CString, Replaces) {
  struct Row {
    std::string_view text, from, to, expected;
    int nCount;
  };
  const Row rows[] = {
      {"abc", "b", "x", "axc", 1},
      {"abc", "", "x", "abc", 0},
      {"abc", "d", "x", "abc", 0},
      {"", "a", "x", "", 0},
      {"aaa", "a", "", "", 3},
      {"aaaa", "aa", "a", "aa", 2},  // one pass: what it makes is not looked at again
      {"aaa", "aa", "x", "xa", 1},   // occurrences do not overlap
      {"abababa", "aba", "x", "xbx", 2},
      {"%", "%", "%%", "%%", 1},
      {"a\0b\0c"sv, "\0"sv, "--", "a--b--c", 2},
      {"short", "s", "a text that is much longer than before ", "a text that is much longer than before hort", 1},
      {"one long text that becomes short", " long text that becomes short", "", "one", 1},
  };
  for (const Row& row : rows) {
    CString s(row.text);
    EXPECT_EQ(s.Replace(row.from, row.to), row.nCount) << row.text;
    EXPECT_EQ(Text(s), row.expected);
  }
  CString s("a.b.c");
  EXPECT_EQ(s.Replace('.', '-'), 2);
  EXPECT_EQ(Text(s), "a-b-c");
  EXPECT_EQ(s.Replace('-', '-'), 0);
  EXPECT_EQ(s.Replace("-", "+"), 2);
  EXPECT_EQ(s.Replace("+", nullptr), 2);
  CString nuls("a\0b, a\0c"sv);
  EXPECT_EQ(nuls.Replace(CString("a\0b"sv), CString("\0"sv)), 1);
  EXPECT_EQ(Text(nuls), "\0, a\0c"sv);
  EXPECT_EQ(nuls.Replace(CString("\0c"sv), "d"), 1);
  EXPECT_EQ(nuls.Replace("ad", CString("e\0"sv)), 1);
  EXPECT_EQ(Text(nuls), "\0, e\0"sv);
  EXPECT_EQ(Text(s), "abc");
  EXPECT_EQ(s.Replace(nullptr, "x"), 0);
  EXPECT_EQ(s.Remove('b'), 1);
  EXPECT_EQ(s.Remove('b'), 0);
  EXPECT_EQ(Text(s), "ac");
  CString shared("0123456789-0123456789");
  CString copy(shared);
  EXPECT_EQ(copy.Remove('5'), 2);
  EXPECT_EQ(copy.Replace('6', '7'), 2);
  EXPECT_EQ(Text(copy), "012347789-012347789");
  EXPECT_EQ(Text(shared), "0123456789-0123456789");
}

TEST(CString, InsertsAndDeletes) {
  struct Insertion {
    int nPos;
    const char* expected;
  };
  for (const Insertion& row : {Insertion{0, "XYabc"},
                               {1, "aXYbc"},
                               {3, "abcXY"},
                               {4, "abcXY"},
                               {-1, "XYabc"},
                               {INT_MAX, "abcXY"},
                               {INT_MIN, "XYabc"}}) {
    CString s("abc");
    EXPECT_EQ(s.Insert(row.nPos, "XY"), 5);
    EXPECT_EQ(Text(s), row.expected) << row.nPos;
  }
  CString s("abc");
  EXPECT_EQ(s.Insert(1, 'x'), 4);
  EXPECT_EQ(s.Insert(1, ""), 4);
  EXPECT_EQ(CString("ab").Insert(1, CString("x\0y"sv)), 5) << "a NUL of a CString is a byte like any other";
  EXPECT_EQ(s.Insert(1, static_cast<const char*>(nullptr)), 4);
  EXPECT_EQ(Text(s), "axbc");
  struct Deletion {
    int nPos, nCount;
    const char* expected;
  };
  for (const Deletion& row : {Deletion{0, 1, "bcdef"},
                              {0, 6, ""},
                              {0, INT_MAX, ""},
                              {2, 2, "abef"},
                              {5, 1, "abcde"},
                              {5, 9, "abcde"},
                              {6, 1, "abcdef"},
                              {7, 1, "abcdef"},
                              {-1, 2, "cdef"},
                              {1, 0, "abcdef"},
                              {1, -1, "abcdef"},
                              {INT_MIN, 1, "bcdef"},
                              {INT_MAX, INT_MAX, "abcdef"}}) {
    CString d("abcdef");
    EXPECT_EQ(d.Delete(row.nPos, row.nCount), static_cast<int>(std::strlen(row.expected)));
    EXPECT_EQ(Text(d), row.expected) << row.nPos << "," << row.nCount;
  }
  for (const std::size_t n : kLengths) {
    for (const int nPos : {0, 1, static_cast<int>(n / 2), static_cast<int>(n)}) {
      const std::string text = Sample(n);
      const CString shared(text);
      CString copy(shared);
      copy.Delete(nPos, 3);
      std::string expected = text;
      if (nPos < static_cast<int>(n)) expected.erase(static_cast<std::size_t>(nPos), 3);
      EXPECT_EQ(Text(copy), expected);
      EXPECT_EQ(Text(shared), text);
    }
  }
}

TEST(CString, SetsOneByte) {
  CString s("abc");
  s.SetAt(1, 'x');
  EXPECT_EQ(Text(s), "axc");
  s.SetAt(2, '\0');
  EXPECT_EQ(Text(s), "ax\0"sv);
  for (const int nBad : {-1, 3, INT_MAX, INT_MIN}) EXPECT_THROW(s.SetAt(nBad, 'y'), CInvalidArgException);
  const CString shared("a text of more than sixteen bytes");
  CString copy(shared);
  copy.SetAt(0, 'A');
  EXPECT_EQ(Text(copy), "A text of more than sixteen bytes");
  EXPECT_EQ(Text(shared), "a text of more than sixteen bytes");
}

TEST(CString, TruncatesAndEmpties) {
  for (const std::size_t n : kLengths) {
    for (const std::size_t nKeep : kLengths) {
      const CString shared(Sample(n));
      CString s(shared);
      s.Truncate(static_cast<int>(nKeep));
      EXPECT_EQ(Text(s), Sample(std::min(n, nKeep)));
      EXPECT_EQ(Text(shared), Sample(n));
    }
    CString s(Sample(n));
    s.Empty();
    EXPECT_EQ(Text(s), "");
    s.Empty();
    EXPECT_EQ(Text(s), "");
  }
  CString s("abc");
  EXPECT_THROW(s.Truncate(-1), CInvalidArgException);
  EXPECT_EQ(Text(s), "abc");
}

TEST(CString, LendsItsBuffer) {
  CString s("abc");
  char* p = s.GetBuffer(100);
  EXPECT_STREQ(p, "abc");
  std::memset(p, 'x', 100);
  p[100] = '\0';
  s.ReleaseBuffer();
  EXPECT_EQ(Text(s), std::string(100, 'x'));
  p = s.GetBuffer();
  p[2] = '\0';
  s.ReleaseBuffer();
  EXPECT_EQ(Text(s), "xx");
  p = s.GetBuffer(5);
  std::memcpy(p, "a\0b\0c", 5);
  s.ReleaseBuffer(5);
  EXPECT_EQ(Text(s), "a\0b\0c"sv);
  s.GetBuffer(40)[0] = 'z';
  s.ReleaseBuffer(0);
  EXPECT_EQ(Text(s), "");
  EXPECT_THROW(s.GetBuffer(-1), CInvalidArgException);
  EXPECT_THROW(s.GetBufferSetLength(-1), CInvalidArgException);
  s.GetBuffer(10);
  EXPECT_THROW(s.ReleaseBuffer(-2), CInvalidArgException);
  EXPECT_THROW(s.ReleaseBuffer(1000000), CInvalidArgException);
  s.ReleaseBuffer(0);

  // A buffer that no NUL was left in ends with the memory that was asked for, or a little behind.
  p = s.GetBuffer(20);
  std::memset(p, 'y', 20);
  s.ReleaseBuffer(20);
  EXPECT_EQ(Text(s), std::string(20, 'y'));

  CString shared("a text of more than sixteen bytes");
  CString copy(shared);
  copy.GetBuffer()[0] = 'A';
  copy.ReleaseBuffer();
  EXPECT_EQ(Text(copy), "A text of more than sixteen bytes");
  EXPECT_EQ(Text(shared), "a text of more than sixteen bytes");

  for (const std::size_t n : kLengths) {
    CString t("ab");
    p = t.GetBufferSetLength(static_cast<int>(n));
    EXPECT_EQ(t.GetLength(), static_cast<int>(n));
    std::string expected = std::string("ab").substr(0, n) + std::string(n > 2 ? n - 2 : 0, '\0');
    EXPECT_EQ(Text(t), expected);
    if (n != 0) p[n - 1] = '!';
    t.ReleaseBuffer(static_cast<int>(n));
    if (n != 0) expected[n - 1] = '!';
    EXPECT_EQ(Text(t), expected);
  }
}

TEST(CString, KeepsItsTextWhenItPreallocates) {
  for (const std::size_t n : kLengths) {
    CString s(Sample(n));
    s.Preallocate(1000);
    EXPECT_EQ(Text(s), Sample(n));
    const char* before = s.GetString();
    for (int i = s.GetLength(); i < 1000; ++i) s += 'x';
    EXPECT_TRUE(n > 1000 || s.GetString() == before) << "moved for all its room";
    s.Preallocate(-5);
    s.Preallocate(0);
    EXPECT_EQ(s.GetLength(), static_cast<int>(std::max<std::size_t>(n, 1000)));
  }
}

TEST(CString, Formats) {
  CString s;
  s.Format("%d-%s-%.2f", 5, "abc", 1.5);
  EXPECT_EQ(Text(s), "5-abc-1.50");
  s.Format("%s", "");
  EXPECT_EQ(Text(s), "");
  s.AppendFormat("%c%c", 'a', '\0');
  EXPECT_EQ(Text(s), "a\0"sv);
  for (const int n : {1, 14, 15, 16, 510, 511, 512, 513, 5000, 100000}) {
    s.Format("%*d", n, 7);
    EXPECT_EQ(Text(s), std::string(static_cast<std::size_t>(n) - 1, ' ') + "7");
    s.AppendFormat("%s", "!");
    EXPECT_EQ(s.GetLength(), n + 1);
  }
  s.Format("%%");
  EXPECT_EQ(Text(s), "%");
  const char* szNoFormat = nullptr;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#pragma GCC diagnostic ignored "-Wformat-security"
  EXPECT_THROW(s.Format(szNoFormat), CInvalidArgException);
#pragma GCC diagnostic pop
  EXPECT_EQ(Text(s), "%") << "a failure leaves the text alone";
}

TEST(CString, IsTheSameUnderEveryLocale) {
  {
    const LocaleScope german("de_DE.UTF-8");
    ASSERT_TRUE(german.IsSet());
    ASSERT_EQ(localeconv()->decimal_point[0], ',');
    CString s;
    s.Format("%.2f %g", 1.5, 2.5);
    EXPECT_EQ(Text(s), "1.50 2.5");
    s.AppendFormat(" %.1f", 0.5);
    EXPECT_EQ(Text(s), "1.50 2.5 0.5");
    char sz[16];
    std::snprintf(sz, sizeof sz, "%.1f", 0.5);
    EXPECT_STREQ(sz, "0,5") << "the caller's locale must be back";
  }
  {
    const LocaleScope japanese("ja_JP.SJIS");
    ASSERT_TRUE(japanese.IsSet());
    EXPECT_EQ(Text(Make("\x82\x81z").MakeUpper()), "\x82\x81Z");
    EXPECT_EQ(Text(Make("\xA0 \x85").Trim()), "\xA0 \x85");
    EXPECT_EQ(CString("\x95\x5C").Find('\\'), 1);
  }
}

TEST(CString, RaisesBeforeItsLengthOverflows) {
  // Lengths are 32-bit: what would pass them raises before any memory is asked for.
  CString s;
  EXPECT_THROW(s.GetBuffer(INT_MAX), CMemoryException);
  EXPECT_THROW(CString('x', INT_MAX), CMemoryException);
  EXPECT_THROW(s.Preallocate(INT_MAX), CMemoryException);
  EXPECT_EQ(Text(s), "");
  const std::string_view huge(s.GetString(), std::size_t{1} << 40);
  EXPECT_THROW(CString{huge}, CMemoryException);
  EXPECT_THROW(s = huge, CMemoryException);
  EXPECT_EQ(Text(s), "");
}

TEST(CString, IsSharedBetweenThreads) {
  for (int nRound = 0; nRound < 20; ++nRound) {
    const CString original("a text that is shared by all the threads of this test");
    std::vector<std::thread> threads;
    std::atomic<int> nWrong = 0;
    for (int t = 0; t < 4; ++t) {
      threads.emplace_back([copy = original, t, &nWrong]() mutable {
        for (int i = 0; i < 500; ++i) {
          CString own(copy);
          own += static_cast<char>('0' + t);
          CString other = own;
          other.SetAt(0, 'A');
          if (own.GetLength() != copy.GetLength() + 1 || own[own.GetLength() - 1] != '0' + t || own[0] != 'a') ++nWrong;
          if (i % 7 == 0) copy = CString(own.Left(copy.GetLength()));
        }
      });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(nWrong, 0);
    EXPECT_EQ(Text(original), "a text that is shared by all the threads of this test");
  }
}

// Every operation beside the same one of std::string, at random, on a few strings that share texts.
TEST(CString, BehavesLikeAStandardString) {
  std::mt19937 random(20250713);
  const auto pick = [&random](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
  constexpr int kStrings = 6;
  std::string model[kStrings];
  CString tested[kStrings];
  const auto randomText = [&] {
    static const int kSizes[] = {0, 1, 2, 3, 14, 15, 16, 17, 40, 300};
    std::string s(static_cast<std::size_t>(kSizes[pick(10)]), ' ');
    for (char& ch : s) ch = "ab \0\xFF%"[pick(6)];
    return s;
  };
  for (int nStep = 0; nStep < 200000; ++nStep) {
    const int a = pick(kStrings);
    const int b = pick(kStrings);
    std::string& m = model[a];
    CString& t = tested[a];
    const int nPos = pick(static_cast<int>(m.size()) + 3) - 1;
    const int nCount = pick(20) - 1;
    const auto at = std::min(static_cast<std::size_t>(std::max(nPos, 0)), m.size());
    const auto count = static_cast<std::size_t>(std::max(nCount, 0));
    switch (pick(22)) {
      case 0:
        t = tested[b];
        m = model[b];
        break;
      case 1:
        t += tested[b];
        m += std::string(model[b]);
        break;
      case 2: {
        const std::string s = randomText();
        t = std::string_view(s);
        m = s;
        break;
      }
      case 3: {
        const std::string s = randomText();
        t += std::string_view(s);
        m += s;
        break;
      }
      case 4:
        t.Insert(nPos, tested[b].View());
        m.insert(at, std::string(model[b]));
        break;
      case 5:
        t.Delete(nPos, nCount);
        m.erase(at, count);
        break;
      case 6:
        t = t.Mid(nPos, nCount);
        m = m.substr(at, count);
        break;
      case 7:
        t = t.Left(nCount);
        m = m.substr(0, count);
        break;
      case 8:
        t = t.Right(nCount);
        m = m.substr(m.size() - std::min(count, m.size()));
        break;
      case 9: {
        const auto first = m.find_first_not_of(" \t\n\v\f\r");
        m = first == std::string::npos ? "" : m.substr(first, m.find_last_not_of(" \t\n\v\f\r") - first + 1);
        t.Trim();
        break;
      }
      case 10: {
        const int n = t.Replace("a", "bb");
        int nExpected = 0;
        for (std::size_t i = 0; (i = m.find('a', i)) != std::string::npos; i += 2, ++nExpected) m.replace(i, 1, "bb");
        ASSERT_EQ(n, nExpected);
        break;
      }
      case 11:
        t.Remove('b');
        std::erase(m, 'b');
        break;
      case 12:
        t.Truncate(nCount < 0 ? 0 : nCount);
        m = m.substr(0, count);
        break;
      case 13:
        if (at < m.size()) {
          t.SetAt(static_cast<int>(at), 'q');
          m[at] = 'q';
        }
        break;
      case 14:
        t.MakeReverse();
        std::reverse(m.begin(), m.end());
        break;
      case 15:
        t = tested[a] + tested[b];
        m = m + model[b];
        break;
      case 16:
        std::swap(tested[a], tested[b]);
        std::swap(model[a], model[b]);
        break;
      case 17: {
        CString moved(std::move(t));
        t = std::move(moved);
        break;
      }
      case 18:
        t = t.View().substr(at);
        m = std::string(m.substr(at));
        break;
      case 19:
        t.GetBuffer(pick(100));
        t.ReleaseBuffer(static_cast<int>(m.size()));
        break;
      case 20:
        t.Preallocate(pick(600));
        break;
      case 21:
        t += '\0';
        m += '\0';
        break;
    }
    if (m.size() > 3000) {
      m.resize(10);
      t.Truncate(10);
    }
    ASSERT_EQ(t.View(), std::string_view(m)) << "step " << nStep;
    ASSERT_EQ(t.GetString()[m.size()], '\0');
    ASSERT_EQ(tested[b].View(), std::string_view(model[b]));
    const int nCompared = m.compare(model[b]);
    ASSERT_EQ(t.Compare(tested[b]), nCompared < 0 ? -1 : nCompared > 0 ? 1 : 0);
    const auto found = m.find(model[b]);
    ASSERT_EQ(t.Find(tested[b]), found == std::string::npos ? -1 : static_cast<int>(found));
  }
}

TEST(CString, GrowsInLinearTime) {
  // Each step appends to a text of many; copying all of it each time would take minutes.
  const std::clock_t start = std::clock();
  CString s;
  for (int i = 0; i < 3000000; ++i) s += 'x';
  EXPECT_EQ(s.GetLength(), 3000000);
  CString many(std::string(300000, '%'));
  EXPECT_EQ(many.Replace("%", "%%"), 300000);
  EXPECT_EQ(many.GetLength(), 600000);
  EXPECT_LT((std::clock() - start) / CLOCKS_PER_SEC, 5);
}

}  // namespace
