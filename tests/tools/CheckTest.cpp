#include <thread>

#include "CommandRunner.h"
#include "Json.h"

namespace {

using Check = CommandTest;

TEST_F(Check, SaysThatAFileIsWellFormed) {
  folder.Write("b.pcf", kBoard);
  folder.Write("l.ftf", kLibrary);
  for (const char* szStrict : {"--json", "--strict"}) EXPECT_EQ(run({"check", "b.pcf", "l.ftf", szStrict}).status, 0);
  const CommandResult result = run({"check", "b.pcf", "l.ftf"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "b.pcf: well formed\nl.ftf: well formed\n");
  EXPECT_EQ(result.err, "");
}

TEST_F(Check, TellsWhatIsWrong) {
  struct Row {
    const char* name;
    const char* file;
    std::string text;
    const char* error;  // how the error line begins
  };
  const Row rows[] = {
      {"form left open", "f", "(a\n(b\n(c)\n", "f:2:1: error: "},
      {"bracket too many", "f", "(a))\n", "f:1:4: error: "},
      {"too deep", "f", std::string(21, '(') + std::string(21, ')') + "\n", "f:1:21: error: "},
      {"unknown root of a board", "b.pcf", "(abc\n)\n", "b.pcf"},
      {"unknown root of a library", "l.ftf", "(pcf\n)\n", "l.ftf"},
      {"missing value in a board", "b.pcf", "(pcf\n(boardContainer\n(nets\n(net)\n)\n)\n)\n", "b.pcf:4"},
      {"missing value in a component", "b.pcf",
       "(pcf\n(boardContainer\n(components\n(component (reference R)\n(angle)\n)\n)\n)\n)\n", "b.pcf:5"},
      {"missing value in a library", "l.ftf", "(ftf\n(footprintContainer\n(pads\n(pad)\n)\n)\n)\n", "l.ftf:4"},
      {"missing value in rules", "r.rul", "(design x\n(boardSpec\n(drillingRule (d 1))\n)\n)\n", "r.rul"},
      {"form left open in rules", "r.rul", "(design x\n(boardSpec\n", "r.rul:2:1: error: "}};
  for (const Row& row : rows) {
    folder.Write(row.file, row.text);
    for (const char* szOption : {"--strict", "--no-progress"}) {
      const CommandResult result = run({"check", row.file, szOption});
      EXPECT_EQ(result.status, 1) << row.name;
      EXPECT_EQ(result.out, std::string(row.file) + ": not well formed\n") << row.name;
      EXPECT_NE(("\n" + result.err).find("\n" + std::string(row.error)), std::string::npos)
          << row.name << ": " << result.err;
    }
  }
}

TEST_F(Check, TellsWhatIsSuspicious) {
  struct Row {
    const char* name;
    const char* text;
    const char* place;
    const char* word;
  };
  const Row rows[] = {{"string left open", "(a \"x)\n", "f:1:4: warning: ", "not closed"},
                      {"comment inside a string", "(a \"one\n// two\nthree\")\n", "f:2:1: warning: ", "comment"},
                      {"text lost before a quote", "(a b\"c\")\n", "f:1:4: warning: ", "lost"},
                      {"tab inside a token", "(a b\tc)\n", "f:1:5: warning: ", "tab"}};
  for (const Row& row : rows) {
    folder.Write("f", row.text);
    const CommandResult result = run({"check", "f"});
    const bool bOpen = std::string(row.name) == "string left open";
    EXPECT_EQ(result.status, bOpen ? 1 : 0) << row.name << result.err;
    EXPECT_NE(result.out.find(row.place), std::string::npos) << row.name << ": " << result.out;
    EXPECT_NE(result.out.find(row.word), std::string::npos) << row.name << ": " << result.out;
    if (!bOpen) {
      EXPECT_EQ(result.err, "") << row.name;
      EXPECT_EQ(run({"check", "f", "--strict"}).status, 3) << row.name;
    }
  }
}

TEST_F(Check, TellsTheBoxesOfALoad) {
  folder.Write(
      "b.pcf",
      "(pcf\n(boardContainer\n(boardLayout\n(layout\n(layer (conductive 1)\n(teapot)\n(teapot)\n)\n)\n)\n)\n)\n");
  const CommandResult result = run({"check", "b.pcf", "--strict"});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.out, "b.pcf: warning: New Draw Type : teapot (2 times)\nb.pcf: well formed\n");
  EXPECT_EQ(result.err, "warning: New Draw Type : teapot (2 times)\n");
}

TEST_F(Check, PrintsJson) {
  folder.Write("f", "(a b\tc)\n");
  folder.Write("g", "(a\n");
  folder.Write("h", "(a)\n");
  const CommandResult result = run({"check", "--json", "f", "g", "none", "h"});
  EXPECT_EQ(result.status, 1);
  const Json json = Json::parse(result.out);
  ASSERT_EQ(json.size(), 4u);
  EXPECT_EQ(json[0]["file"], "f");
  EXPECT_EQ(json[0]["wellFormed"], true);
  ASSERT_EQ(json[0]["findings"].size(), 1u);
  EXPECT_EQ(json[0]["findings"][0]["severity"], "warning");
  EXPECT_EQ(json[0]["findings"][0]["line"], 1);
  EXPECT_EQ(json[0]["findings"][0]["column"], 5);
  EXPECT_EQ(json[1]["wellFormed"], false);
  EXPECT_EQ(json[1]["findings"][0]["severity"], "error");
  EXPECT_EQ(json[2]["wellFormed"], false);
  EXPECT_EQ(json[2]["findings"].size(), 1u);
  EXPECT_EQ(json[3], Json({{"file", "h"}, {"wellFormed", true}, {"findings", Json::array()}}));
}

TEST_F(Check, KnowsTheKindOfAFileByItsEndingElseByItsFirstForm) {
  // A name that nothing defines is a finding of design data only.
  const std::string sParts = "(part \"P\"\n(packageRef \"NONE\")\n(pinAssignRef \"NONE\")\n)\n";
  struct Row {
    const char* file;
    std::string text;
    int status;
  };
  const Row rows[] = {{"x.cdf", sParts, 3},
                      {"X.CDF", sParts, 3},
                      {"parts", "(Japanese_coding: sjis)\n" + sParts, 3},
                      {"forms", "(other)\n" + sParts, 0},
                      {"board", "(pcf\n(boardContainer\n(nets\n(net)\n)\n)\n)\n", 1},
                      {"board.txt", "// comment\n\n (pnf\n(boardContainer\n(nets\n(net)\n)\n)\n)\n", 1},
                      {"library", "(ftf\n(footprintContainer\n(pads\n(pad)\n)\n)\n)\n", 1}};
  for (const Row& row : rows) {
    folder.Write(row.file, row.text);
    EXPECT_EQ(run({"check", "--strict", row.file}).status, row.status) << row.file;
  }
}

TEST_F(Check, TakesItsFilesAsOneDesign) {
  folder.Write("p.pkf",
               "(package \"PACK\"\n(type SMD)\n(mountForm default\n(footprintRef \"F\")\n(spec \"s\")\n)\n)\n");
  folder.Write("p.cdf", "(part \"P\"\n(packageRef \"PACK\")\n)\n(part \"Q\"\n(packageRef \"OTHER\")\n)\n");
  const CommandResult result = run({"check", "--strict", "p.pkf", "p.cdf"});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.out.find("PACK\""), std::string::npos) << result.out;
  EXPECT_NE(result.out.find("p.cdf:5"), std::string::npos) << result.out;
  EXPECT_NE(result.out.find("OTHER"), std::string::npos) << result.out;
}

// A pipe gives its content only once, and a check reads it for the kind, the forms and the records.
TEST_F(Check, ReadsAPipe) {
  struct Row {
    const char* pipe;
    std::string text;
    int status;
    const char* out;
  };
  const Row rows[] = {
      {"open", "(a\n(b\n", 1, "open: not well formed\n"},
      {"forms", "(a)\n", 0, "forms: well formed\n"},
      {"b.pcf", kBoard, 0, "b.pcf: well formed\n"},
      {"bad.pcf", "(pcf\n(boardContainer\n(nets\n(net)\n)\n)\n)\n", 1, "bad.pcf: not well formed\n"},
      {"rules", "(design x\n(boardSpec\n(drillingRule (d 1))\n)\n)\n", 1, "rules: not well formed\n"},
      {"part", "(part \"P\"\n", 3,
       "part:1:1: warning: part \"P\" is not closed: what was read of it is kept\npart: well formed\n"}};
  for (const Row& row : rows) {
    ASSERT_EQ(mkfifo((folder / row.pipe).c_str(), 0600), 0);
    std::thread writer([&] { folder.Write(row.pipe, row.text); });
    const CommandResult result = run({"check", "--strict", row.pipe});
    writer.join();
    EXPECT_EQ(result.status, row.status) << row.pipe << ": " << result.err;
    EXPECT_EQ(result.out, row.out) << row.pipe;
  }
}

TEST_F(Check, TellsFilesThatCannotBeRead) {
  folder.Write("f", "(a)\n");
  const CommandResult result = run({"check", "none", "f"});
  EXPECT_EQ(result.status, 1);
  EXPECT_TRUE(result.err.starts_with("none: error: ")) << result.err;
  EXPECT_EQ(result.out, "f: well formed\n");
}

TEST_F(Check, FindsNoFaultInTheExample) {
  const CommandResult result =
      run({"check", "--strict", LAMINATE_EXAMPLE ".pcf", LAMINATE_EXAMPLE ".ftf", LAMINATE_EXAMPLE ".rul",
           LAMINATE_EXAMPLE ".pkf", LAMINATE_EXAMPLE ".cdf", LAMINATE_EXAMPLE ".cmp"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.out.find("warning"), std::string::npos) << result.out;
  for (const char* szEnding : {".pcf", ".ftf", ".rul", ".pkf", ".cdf", ".cmp"}) {
    EXPECT_NE(result.out.find(LAMINATE_EXAMPLE + std::string(szEnding) + ": well formed\n"), std::string::npos);
  }
}

}  // namespace
