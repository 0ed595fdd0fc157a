#include "base/XTokenString.h"

#include <gtest/gtest.h>

#include <climits>
#include <ctime>
#include <random>
#include <string>
#include <vector>

using namespace std::string_view_literals;
using laminate::LineColumns;
using laminate::NthColumn;

namespace {

using Columns = std::vector<std::string>;

Columns ByPlatformName(const char* szText, const char* szDelimiters = " ") {
  CStringArray array;
  const ULONGLONG nCount = XTokenString(szText, szDelimiters, array, 0, 0, 0, 1, 0);
  EXPECT_EQ(nCount, static_cast<ULONGLONG>(array.GetSize()));
  Columns columns;
  for (const CString& s : array) columns.emplace_back(s.View());
  return columns;
}
Columns BySplitting(std::string_view line) {
  const LineColumns cut(line);
  Columns columns(cut.begin(), cut.end());
  EXPECT_EQ(cut.Count(), static_cast<int>(columns.size()));
  for (int i = 0; i < cut.Count(); ++i) EXPECT_EQ(cut[i + 1], columns[static_cast<std::size_t>(i)]);
  return columns;
}

struct Row {
  const char* szText;
  Columns columns;
};
const Row kRows[] = {
    {"", {}},
    {"   ", {}},
    {"a", {"a"}},
    {"a b  c", {"a", "b", "c"}},
    {"\"a b\"", {"a b"}},
    {"\"a b\"c", {"a b", "c"}},
    {"x\"b c\"y", {"x", "b c", "y"}},
    {"x\"\"y", {"x", "", "y"}},
    {"\"\"", {""}},
    {"\"\" \"\"", {"", ""}},
    {"\"\"\"\"", {"", ""}},
    {"\"a\"\"b\"", {"a", "b"}},
    {"\" \"", {" "}},
    {"\"  a  \"", {"  a  "}},
    {"\"a b", {"a b"}},
    {"a \"", {"a", ""}},
    {"a\"", {"a", ""}},
    {"\"", {""}},
    {"a\tb", {"a\tb"}},
    {"\\\"a b\"", {"\\", "a b"}},
    {"(unit mm)", {"(unit", "mm)"}},
    {"(part \"A B\" x)", {"(part", "A B", "x)"}},
    {"(port \"1\" (symbPinId 2) (portName \"A\") (portType INOUT))",
     {"(port", "1", "(symbPinId", "2)", "(portName", "A", ")", "(portType", "INOUT))"}},
    {"a text of some length behind another one", {"a", "text", "of", "some", "length", "behind", "another", "one"}},
    {"\x95\x5C \x95\x22x", {"\x95\x5C", "\x95", "x"}},  // no double-byte text is known
};

TEST(XTokenString, CutsColumns) {
  for (const Row& row : kRows) {
    EXPECT_EQ(ByPlatformName(row.szText), row.columns) << row.szText;
    EXPECT_EQ(BySplitting(row.szText), row.columns) << row.szText;
  }
}

TEST(XTokenString, AppendsAndIgnoresItsOptions) {
  CStringArray array;
  array.Add("there");
  EXPECT_EQ(XTokenString("a b", " ", array, 0, 0, 0, 1, 0), 2u);
  EXPECT_EQ(XTokenString("c \"d e\"", " ", array, 7, -1, 3, 0, 99), 2u);
  EXPECT_EQ(XTokenString("f g", "", array, 0, 0, 0, 1, 0), 1u);
  EXPECT_EQ(XTokenString("h,i;j", ",;", array, 0, 0, 0, 1, 0), 3u);
  Columns columns;
  for (const CString& s : array) columns.emplace_back(s.View());
  EXPECT_EQ(columns, (Columns{"there", "a", "b", "c", "d e", "f g", "h", "i", "j"}));
  EXPECT_EQ(ByPlatformName("\ta b\n"), (Columns{"\ta", "b\n"})) << "trimming is the caller's";
}

TEST(XTokenString, RaisesOnNullTexts) {
  CStringArray array;
  EXPECT_THROW(XTokenString(nullptr, " ", array, 0, 0, 0, 1, 0), CInvalidArgException);
  EXPECT_THROW(XTokenString("f g", nullptr, array, 0, 0, 0, 1, 0), CInvalidArgException);
  EXPECT_TRUE(array.IsEmpty());
}

TEST(XTokenString, CutsAnElementOfItsOwnArray) {
  CStringArray array;
  array.Add("x y z w q r");
  EXPECT_EQ(XTokenString(array[0], " ", array, 0, 0, 0, 1, 0), 6u);
  Columns columns;
  for (const CString& s : array) columns.emplace_back(s.View());
  EXPECT_EQ(columns, (Columns{"x y z w q r", "x", "y", "z", "w", "q", "r"}));
}

TEST(NthColumn, CountsFromOne) {
  for (const Row& row : kRows) {
    for (int n = 0; n <= static_cast<int>(row.columns.size()) + 2; ++n) {
      const bool bThere = n >= 1 && n <= static_cast<int>(row.columns.size());
      const std::string expected = bThere ? row.columns[static_cast<std::size_t>(n) - 1] : "";
      EXPECT_EQ(NthColumn(CString(row.szText), n), std::string_view(expected)) << row.szText << ", " << n;
      EXPECT_EQ(LineColumns(row.szText)[n], expected);
    }
    EXPECT_EQ(NthColumn(CString(row.szText), INT_MAX), "");
    EXPECT_THROW(NthColumn(CString(row.szText), -1), CInvalidArgException);
    EXPECT_THROW(NthColumn(std::string_view(row.szText), INT_MIN), CInvalidArgException);
    EXPECT_THROW(LineColumns(row.szText)[-1], CInvalidArgException);
  }
  EXPECT_EQ(NthColumn("one two three"sv, 3), "three");
  EXPECT_EQ(NthColumn("one two three"sv, 4), "");
  EXPECT_EQ(NthColumn("one two three"sv, 0), "");
}

TEST(NthColumn, TrimsTheLine) {
  EXPECT_EQ(NthColumn(" \t\n\v\f\r one \r\n"sv, 1), "one");
  EXPECT_EQ(NthColumn("one \t"sv, 2), "");
  EXPECT_EQ(NthColumn("one \t two"sv, 2), "\t");
  EXPECT_EQ(NthColumn("\xA0 one"sv, 1), "\xA0");
  EXPECT_EQ(NthColumn("\"open  \t"sv, 1), "open") << "a quote left open ends where the trimmed line does";
  EXPECT_EQ(NthColumn("a\0b c"sv, 1).View(), "a\0b"sv);
  EXPECT_EQ(NthColumn("\0 a"sv, 2), "a");
}

TEST(LineColumns, ServesLineAfterLine) {
  LineColumns columns;
  EXPECT_EQ(columns.Count(), 0);
  EXPECT_EQ(columns[1], "");
  columns.Split("a b c");
  EXPECT_EQ(columns.Count(), 3);
  columns.Split("d");
  EXPECT_EQ(columns.Count(), 1);
  EXPECT_EQ(columns[1], "d");
  EXPECT_EQ(columns[2], "");
  std::vector<std::string_view> list{"old"};
  laminate::SplitColumns(" x \"y z\" ", list);
  EXPECT_EQ(list, (std::vector<std::string_view>{"x", "y z"}));
}

// Byte by byte, with a state, as the rules are told.
Columns PlainColumns(std::string_view line) {
  Columns columns;
  std::string column;
  bool bInQuote = false;
  bool bInColumn = false;
  for (const char ch : line) {
    if (bInQuote) {
      if (ch == '"') {
        columns.push_back(column);
        column.clear();
        bInQuote = false;
      } else {
        column += ch;
      }
    } else if (ch == '"' || ch == ' ') {
      if (bInColumn) columns.push_back(column);
      column.clear();
      bInColumn = false;
      bInQuote = ch == '"';
    } else {
      column += ch;
      bInColumn = true;
    }
  }
  if (bInQuote || bInColumn) columns.push_back(column);
  return columns;
}

TEST(XTokenString, AgreesWithAPlainReading) {
  // Every text of up to seven bytes of a small alphabet.
  constexpr std::string_view kAlphabet = "a\" \\";
  for (int nLength = 0; nLength <= 7; ++nLength) {
    int nTexts = 1;
    for (int i = 0; i < nLength; ++i) nTexts *= static_cast<int>(kAlphabet.size());
    for (int n = 0; n < nTexts; ++n) {
      std::string s;
      for (int i = 0, rest = n; i < nLength; ++i, rest /= 4) s += kAlphabet[static_cast<std::size_t>(rest % 4)];
      ASSERT_EQ(ByPlatformName(s.c_str()), PlainColumns(s)) << s;
    }
  }
}

TEST(XTokenString, TakesLinearTime) {
  std::string line;
  for (int i = 0; i < 500000; ++i) line += "a \"b\" ";
  const std::clock_t start = std::clock();
  LineColumns columns(line);
  EXPECT_LT((std::clock() - start) / CLOCKS_PER_SEC, 5);
  EXPECT_EQ(columns.Count(), 1000000);
  EXPECT_EQ(columns[1000000], "b");
}

}  // namespace
