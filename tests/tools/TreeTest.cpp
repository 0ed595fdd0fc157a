#include "CommandRunner.h"

namespace {

using Tree = CommandTest;

TEST_F(Tree, IsIndented) {
  folder.Write("f", "// comment\n(a 1 \"two words\" (b) 3 (c \"\" (d x)))\n(e)\n");
  const CommandResult result = run({"tree", "f"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.out, "a 1 \"two words\" 3\n  b\n  c \"\"\n    d x\ne\n");
}

TEST_F(Tree, IsAnArrayOfFormsInJson) {
  folder.Write("f", "(header\n(timeZone \"\")\n)\n(net \"VCC 3V3\"\n(pen 1))\n");
  EXPECT_EQ(run({"tree", "f", "--json"}).out,
            "[\n"
            "{\"name\": \"header\", \"level\": 1, \"values\": [], \"children\": [\n"
            "{\"name\": \"timeZone\", \"level\": 2, \"values\": [\"\"], \"children\": []}]},\n"
            "{\"name\": \"net\", \"level\": 1, \"values\": [\"VCC 3V3\"], \"children\": [\n"
            "{\"name\": \"pen\", \"level\": 2, \"values\": [\"1\"], \"children\": []}]}]\n");
}

TEST_F(Tree, OfAnEmptyFileIsEmpty) {
  folder.Write("f", "");
  EXPECT_EQ(run({"tree", "f"}).status, 0);
  EXPECT_EQ(run({"tree", "f"}).out, "");
  EXPECT_EQ(run({"tree", "f", "--json"}).out, "[]\n");
}

TEST_F(Tree, ShowsTheFormsThatWereCompleted) {
  struct Row {
    const char* text;
    const char* out;
    const char* err;
  };
  const Row rows[] = {
      {"(a 1)\n(b\n(c)\n", "a 1\n", "f:2:1: error: "},
      {"(a 1))\n", "a 1\n", "f:1:6: error: "},
      {")(a)\n", "", "warning: Parser meet unexpected Brace Counting Number, 0 at line number 1.!\nf:1:"},
      {"(a)\n(1(2(3(4(5(6(7(8(9(0(1(2(3(4(5(6(7(8(9(0(x", "a\n",
       "warning: Parser meet unexpected Brace Counting Number, 21 at line number 2.!\nf:2:41: error: "}};
  for (const Row& row : rows) {
    folder.Write("f", row.text);
    const CommandResult result = run({"tree", "f"});
    EXPECT_EQ(result.status, 1) << row.text;
    EXPECT_EQ(result.out, row.out) << row.text;
    EXPECT_TRUE(result.err.starts_with(row.err)) << result.err;
    EXPECT_NE(run({"tree", "f", "--json"}).out, "") << row.text;
  }
}

// The rules by which bytes become JSON text.
TEST_F(Tree, ConvertsTextToUtf8) {
  struct Row {
    const char* name;
    std::string bytes;
    const char* expected;
  };
  const Row rows[] = {
      {"ASCII stands as it is", "plain~", "plain~"},
      {"code page 932", "\x93\xFA\x96\x7B", "\u65E5\u672C"},
      {"a trail byte that equals a backslash", "\x95\x5C", "\u8868"},
      {"half-width katakana", "\xB1\xB2", "\uFF71\uFF72"},
      {"the wave dash of this code page", "\x81\x60", "\uFF5E"},
      {"the backslash is one", "a\\b\x93\xFA", "a\\\\b\u65E5"},
      {"invalid text byte by byte", "\x93\xFA\xFF", "\u0093\u00FA\u00FF"},
      {"a lone lead byte", "a\x93", "a\u0093"},
      {"bytes that the code page leaves out", "\x80\xA0\xFD", "\u0080\u00A0\u00FD"},
      {"control bytes", "a\tb\x01\x7F", "a\\tb\\u0001\\u007f"},
      {"NUL", std::string("a\0b", 3), "a\\u0000b"},
      {"an escaped quote", "a\\\"b", "a\\\\\\\"b"},
  };
  for (const Row& row : rows) {
    folder.Write("f", "(\"" + row.bytes + "\" )\n");
    const CommandResult result = run({"tree", "f", "--json"});
    EXPECT_EQ(result.out,
              "[\n{\"name\": \"" + std::string(row.expected) + "\", \"level\": 1, \"values\": [], \"children\": []}]\n")
        << row.name;
  }
}

TEST_F(Tree, KeepsValuesThatSpanLines) {
  folder.Write("f", "(a \"one\ntwo\")\n");
  EXPECT_NE(run({"tree", "f", "--json"}).out.find("[\"one\\ntwo\"]"), std::string::npos);
  EXPECT_EQ(run({"tree", "f"}).out, "a \"one two\"\n");
}

}  // namespace
