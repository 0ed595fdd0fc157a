#include "reader/RestOfLine.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "reader/ByteScan.h"
#include "reader/PlainReader.h"

namespace {

int Plainly(const std::string& line, std::size_t from, std::size_t quote) {
  const std::string text = line.substr(from, quote - from + 1);
  std::string rest = line;
  rest.erase(0, rest.find(text));
  plain::ReplaceAll(rest, text, "");
  return rest.empty() ? laminate::RestOfLine::kNothing : static_cast<unsigned char>(rest[0]);
}

struct Case {
  const char* name;
  std::string line;
  std::size_t from;
  std::size_t quote;
  int expected;
};
const Case kCases[] = {
    {"nothing follows", "x\\\"", 0, 2, laminate::RestOfLine::kNothing},
    {"a bracket follows", "x\\\")", 0, 2, ')'},
    {"the text stands earlier on the line", "x\\\")  \"x\\\"y", 7, 9, ')'},
    {"the text stands twice, side by side", "x\\\"x\\\"z", 0, 2, 'z'},
    {"and that is all there is", "x\\\"x\\\"", 0, 2, laminate::RestOfLine::kNothing},
    {"occurrences go from left to right", "\"\"\"a", 0, 1, '"'},
};

TEST(RestOfLine, Cases) {
  for (const Case& c : kCases) {
    for (std::size_t budget : {std::size_t{65536}, std::size_t{0}}) {
      laminate::RestOfLine rest(budget);
      rest.Start(c.line);
      EXPECT_EQ(rest.FirstByte(c.from, c.quote), c.expected) << c.name << ", budget " << budget;
      EXPECT_EQ(Plainly(c.line, c.from, c.quote), c.expected) << c.name;
    }
  }
}

// Both ways of answering, on lines that repeat themselves.
TEST(RestOfLine, RandomLines) {
  std::mt19937 random(5);
  laminate::RestOfLine byStrings(1u << 30);
  laminate::RestOfLine byIndex(0);
  for (int i = 0; i < 30000; ++i) {
    std::string line;
    const std::size_t length = 1 + random() % 40;
    while (line.size() < length) {
      line += std::string(random() % 3, "ab"[random() % 2]) + (random() % 3 == 0   ? "\\\""
                                                               : random() % 7 == 0 ? ")"
                                                                                   : "");
    }
    byStrings.Start(line);
    byIndex.Start(line);
    std::size_t from = 0;
    while (from < line.size()) {
      for (std::size_t quote = from; quote < line.size(); quote += 1 + random() % 5) {
        const int expected = Plainly(line, from, quote);
        ASSERT_EQ(byStrings.FirstByte(from, quote), expected) << line << " from " << from << " to " << quote;
        ASSERT_EQ(byIndex.FirstByte(from, quote), expected) << line << " from " << from << " to " << quote;
      }
      from += 1 + random() % 7;
    }
  }
}

TEST(ByteScan, FindsWhatAPlainLoopFinds) {
  std::mt19937 random(7);
  for (int i = 0; i < 3000; ++i) {
    std::string text(random() % 300, 'x');
    for (std::size_t k = random() % 40; k > 0 && !text.empty(); --k)
      text[random() % text.size()] = "() \"\n\0\x95\xA8"[random() % 8];
    const char* end = text.data() + text.size();
    laminate::ByteScan<'(', ' ', '\0', '\n'> scan(text.data(), end);
    for (const char* p = text.data(); p != end; ++p) {
      if (*p != '(' && *p != ' ' && *p != '\0' && *p != '\n') continue;
      ASSERT_EQ(scan.Next() - text.data(), p - text.data());
    }
    ASSERT_EQ(scan.Next(), end);
    ASSERT_EQ(scan.Next(), end);
    if (text.size() >= 64) {
      EXPECT_EQ((laminate::Match<'(', '"', '\x95'>(text.data())),
                (laminate::MatchPlainly<'(', '"', '\x95'>(text.data())));
    }
  }
}

}  // namespace
