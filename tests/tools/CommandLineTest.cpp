// How the command is called: help, version, usage, exit statuses, the options that every command has.
#include "CommandRunner.h"

namespace {

const char* const kCommands[] = {"info", "nets", "components", "tree", "check", "dump", "design-data", "export"};

using CommandLine = CommandTest;

TEST_F(CommandLine, HelpGoesToStandardOutputWithAnExample) {
  for (const char* szOption : {"-h", "--help"}) {
    const CommandResult result = run({szOption});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_NE(result.out.find("Example:\n  laminate nets board.pcf"), std::string::npos) << result.out;
    for (const char* szCommand : kCommands)
      EXPECT_NE(result.out.find("\n  " + std::string(szCommand)), std::string::npos);
  }
  for (const std::string sCommand : kCommands) {
    for (const char* szOption : {"-h", "--help"}) {
      const CommandResult result = run({sCommand, szOption});
      EXPECT_EQ(result.status, 0) << sCommand;
      EXPECT_EQ(result.err, "") << sCommand;
      EXPECT_NE(result.out.find("Usage: laminate " + sCommand), std::string::npos) << result.out;
      EXPECT_NE(result.out.find("Example:\n  laminate " + sCommand + " "), std::string::npos) << result.out;
    }
  }
}

TEST_F(CommandLine, VersionIsOneLine) {
  const CommandResult result = run({"--version"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "laminate " LAMINATE_VERSION "\n");
  EXPECT_EQ(result.err, "");
}

TEST_F(CommandLine, WrongUsageIsStatusTwoAndOneLine) {
  folder.Write("b.pcf", kBoard);
  const std::vector<std::string> rows[] = {{},
                                           {"frobnicate"},
                                           {"--frobnicate"},
                                           {"nets"},
                                           {"nets", "b.pcf", "b.pcf"},
                                           {"nets", "b.pcf", "--frobnicate"},
                                           {"nets", "b.pcf", "-o"},
                                           {"nets", "b.pcf", "-o", "a", "-o", "b"},
                                           {"nets", "b.pcf", "--log"},
                                           {"nets", "b.pcf", "--progress", "--no-progress"},
                                           {"nets", "tree", "b.pcf"},
                                           {"components", "b.pcf", "--csv", "--json"},
                                           {"dump", "b.pcf", "--ftf"},
                                           {"info"},
                                           {"tree"},
                                           {"check"},
                                           {"design-data"},
                                           {"export", "b.pcf"},
                                           {"export", "b.pcf", "-o", "-"},
                                           {"export", "b.pcf", "-o", "folder/"},
                                           {"export", "b.pcf", "-o", ".pcf"}};
  for (const std::vector<std::string>& row : rows) {
    const CommandResult result = run(row);
    std::string sCall;
    for (const std::string& s : row) sCall += " " + s;
    EXPECT_EQ(result.status, 2) << sCall;
    EXPECT_EQ(result.out, "") << sCall;
    EXPECT_NE(result.err.find(": error: "), std::string::npos) << sCall;
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << sCall << ": " << result.err;
  }
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"b.pcf"});
}

TEST_F(CommandLine, AnInputThatCannotBeReadIsStatusOneAndOneLine) {
  std::filesystem::create_directory(folder / "dir.pcf");
  folder.Write("good.pcf", kBoard);
  for (const std::string sName : {"none.pcf", "dir.pcf", ""}) {
    const std::vector<std::string> rows[] = {
        {"nets", sName}, {"nets", sName, "--json"}, {"info", sName},           {"components", sName},
        {"dump", sName}, {"tree", sName},           {"tree", sName, "--json"}, {"export", sName, "-o", "out"}};
    for (const std::vector<std::string>& row : rows) {
      const CommandResult result = run(row);
      EXPECT_EQ(result.status, 1) << row[0] << " " << sName;
      EXPECT_EQ(result.out, "") << row[0];
      EXPECT_TRUE(result.err.starts_with(sName.empty() ? "error: " : sName + ": error: "))
          << row[0] << ": " << result.err;
      EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    }
  }
  const std::vector<std::string> libraries[] = {{"info", "good.pcf", "--ftf", "none.ftf"},
                                                {"dump", "good.pcf", "--ftf", "none.ftf"},
                                                {"export", "good.pcf", "--ftf", "none.ftf", "-o", "out"},
                                                {"export", "good.pcf", "--package", "none.ftf", "-o", "out"},
                                                {"export", "good.pcf", "--parts", "none.ftf", "-o", "out"},
                                                {"design-data", "--rules", "none.ftf"},
                                                {"design-data", "--package", "none.ftf"},
                                                {"design-data", "--parts", "none.ftf"},
                                                {"design-data", "--components", "none.ftf"},
                                                {"design-data", "--archive-in", "none.ftf"}};
  for (const std::vector<std::string>& row : libraries) {
    const CommandResult result = run(row);
    EXPECT_EQ(result.status, 1) << row[0] << row[1];
    EXPECT_EQ(result.out, "");
    EXPECT_TRUE(result.err.starts_with("none.ftf: error: ")) << result.err;
  }
  EXPECT_EQ(folder.Names(), (std::vector<std::string>{"dir.pcf", "good.pcf"}));
}

struct Malformed {
  const char* name;
  std::string text;
  const char* expected;  // how the error line begins
};

const Malformed kMalformed[] = {
    {"form left open", "(pcf\n(boardContainer\n(nets\n", "b.pcf:3:1: error: "},
    {"bracket too many", "(pcf\n)\n)\n", "b.pcf:3:1: error: "},
    {"too deep", "(pcf\n" + std::string(20, '(') + std::string(20, ')') + "\n)\n", "b.pcf:2:20: error: "},
    {"unknown root", "(abc\n)\n", "b.pcf"},
    {"missing value", "(pcf\n(boardContainer\n(nets\n(net A\n(pen)\n)\n)\n)\n)\n", "b.pcf:5"},
    {"missing value in a component",
     "(pcf\n(boardContainer\n(components\n(component (reference R)\n(angle)\n)\n)\n)\n)\n", "b.pcf:5"},
    {"missing version", "(pcf\n(header\n)\n)\n", "b.pcf:2"}};

TEST_F(CommandLine, AnInputThatIsNotWellFormedPrintsNothing) {
  for (const Malformed& row : kMalformed) {
    folder.Write("b.pcf", row.text);
    const std::vector<std::string> calls[] = {{"info", "b.pcf"},
                                              {"info", "b.pcf", "--json"},
                                              {"nets", "b.pcf"},
                                              {"nets", "b.pcf", "--json"},
                                              {"components", "b.pcf"},
                                              {"components", "b.pcf", "--csv"},
                                              {"dump", "b.pcf"},
                                              {"dump", "b.pcf", "-o", "out.json"},
                                              {"nets", "b.pcf", "-o", "out"},
                                              {"export", "b.pcf", "-o", "out"}};
    for (const std::vector<std::string>& call : calls) {
      const CommandResult result = run(call);
      EXPECT_EQ(result.status, 1) << row.name << " " << call[0];
      EXPECT_EQ(result.out, "") << row.name << " " << call[0];
      EXPECT_NE(("\n" + result.err).find("\n" + std::string(row.expected)), std::string::npos)
          << row.name << ": " << result.err;
      EXPECT_NE(result.err.find(": error: "), std::string::npos) << result.err;
    }
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"b.pcf"}) << row.name;
  }
}

TEST_F(CommandLine, MessageBoxesAreWarnings) {
  folder.Write("b.pcf", "(pcf\n" + std::string(20, '(') + std::string(20, ')') + "\n)\n");
  const CommandResult result = run({"nets", "b.pcf"});
  EXPECT_TRUE(result.err.starts_with(
      "warning: Parser meet unexpected Brace Counting Number, 21 at line number 2.!\nb.pcf:2:20: error: "))
      << result.err;
}

TEST_F(CommandLine, EqualWarningsAreCounted) {
  folder.Write("b.pcf",
               "(pcf\n(boardContainer\n(boardLayout\n(layout\n(layer (conductive 1)\n(teapot)\n(teapot)\n(kettle)\n"
               "(teapot)\n)\n)\n)\n)\n)\n");
  const CommandResult result = run({"nets", "b.pcf"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "warning: New Draw Type : teapot (3 times)\nwarning: New Draw Type : kettle\n");
}

TEST_F(CommandLine, CommonOptionsStandBeforeOrBehindTheCommand) {
  folder.Write("b.pcf", kBoard);
  for (const std::vector<std::string>& row : {std::vector<std::string>{"--log", "log.txt", "nets", "b.pcf"},
                                              {"nets", "--log", "log.txt", "b.pcf"},
                                              {"nets", "b.pcf", "--log=log.txt"}}) {
    std::filesystem::remove(folder / "log.txt");
    EXPECT_EQ(run(row).status, 0);
    const std::string sLog = folder.Read("log.txt");
    EXPECT_TRUE(sLog.starts_with("separate PCF file into several file.\nParsing - ")) << sLog;
    EXPECT_TRUE(sLog.ends_with("Complete PCF file Parsing\n")) << sLog;
  }
}

TEST_F(CommandLine, TheLogHoldsBothFiles) {
  folder.Write("b.pcf", kBoard);
  folder.Write("l.ftf", kLibrary);
  EXPECT_EQ(run({"dump", "b.pcf", "--ftf", "l.ftf", "--log", "log.txt", "-o", "out.json"}).status, 0);
  const std::string sLog = folder.Read("log.txt");
  EXPECT_TRUE(sLog.starts_with("FTF file parsing\n")) << sLog;
  EXPECT_NE(sLog.find("\nComplete Translating FTF file to BD Database\nseparate PCF file"), std::string::npos) << sLog;
}

TEST_F(CommandLine, ALogThatCannotBeWrittenOrIsAnInputIsRefused) {
  folder.Write("b.pcf", kBoard);
  CommandResult result = run({"nets", "b.pcf", "--log", "none/log.txt"});
  EXPECT_EQ(result.status, 1);
  EXPECT_TRUE(result.err.starts_with("none/log.txt: error: ")) << result.err;
  result = run({"nets", "b.pcf", "--log", "./b.pcf"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(folder.Read("b.pcf"), kBoard);
  result = run({"nets", "b.pcf", "--log", "/dev/full"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "/dev/full: warning: the log is not complete\n");
  EXPECT_NE(result.out, "");
}

TEST_F(CommandLine, ALogThatIsAlsoAnotherOutputIsRefused) {
  folder.Write("b.pcf", kBoard);
  folder.Write("l.ftf", kLibrary);
  folder.Write("p.cdf", "(part \"P\"\n(packageRef \"PACK\")\n)\n");
  folder.Write("old", "old");
  folder.Write("set.pcf", "old");
  const std::vector<std::string> before = folder.Names();
  const std::vector<std::pair<std::vector<std::string>, std::string>> rows = {
      {{"info", "b.pcf", "-o", "./old"}, "old"},
      {{"nets", "b.pcf", "-o", "old"}, "./old"},
      {{"nets", "b.pcf", "-o", "new"}, "./new"},
      {{"components", "b.pcf", "-o", "old"}, "old"},
      {{"tree", "b.pcf", "-o", "old"}, "old"},
      {{"check", "b.pcf", "-o", "old"}, "old"},
      {{"dump", "b.pcf", "-o", "old"}, "old"},
      {{"render", "b.pcf", "-o", "new.svg"}, "new.svg"},
      {{"design-data", "--parts", "p.cdf", "-o", "old"}, "old"},
      {{"design-data", "--parts", "p.cdf", "--archive-out", "old"}, "old"},
      {{"save", "b.pcf", "-o", "set"}, "set.pcf"},
      {{"edit", "b.pcf", "--remove", "R1", "-o", "set"}, "./set.pcf"},
      {{"export", "b.pcf", "-o", "set"}, "set.pcf"},
      {{"export", "b.pcf", "-o", "set"}, "set.tcf"},
      {{"export", "b.pcf", "-o", "set", "--loss-report", "old"}, "old"},
      {{"place", "F0402", "--pcf", "b.pcf", "--ftf", "l.ftf", "-o", "old"}, "old"},
      {{"place", "F0402", "--pcf", "b.pcf", "--ftf", "l.ftf", "--render", "new.svg"}, "new.svg"},
      {{"place", "F0402", "--pcf", "b.pcf", "--ftf", "l.ftf", "--into", "set"}, "set.pcf"},
  };
  for (auto [arguments, sLog] : rows) {
    arguments.insert(arguments.end(), {"--log", sLog});
    const CommandResult result = run(arguments);
    EXPECT_EQ(result.status, 2) << arguments.front() << result.err;
    EXPECT_EQ(result.err, sLog + ": error: two outputs have the same name\n") << arguments.front();
    EXPECT_EQ(folder.Read("old"), "old") << arguments.front();
    EXPECT_EQ(folder.Read("set.pcf"), "old") << arguments.front();
    EXPECT_EQ(folder.Names(), before) << arguments.front();
  }
  // Standard output and a device lose nothing.
  EXPECT_EQ(run({"nets", "b.pcf", "-o", "/dev/null", "--log", "/dev/null"}).status, 0);
  EXPECT_EQ(run({"nets", "b.pcf", "-o", "-", "--log", "log.txt"}).status, 0);
  EXPECT_NE(folder.Read("log.txt"), "");
}

TEST_F(CommandLine, TheWorkingFolderCanBeChosenAndIsKept) {
  folder.Write("bad.pcf", "(pcf\n(boardContainer\n");
  EXPECT_EQ(run({"nets", "bad.pcf", "--work-dir", "pieces"}).status, 1);
  // The pieces of a load that ended early lie there.
  EXPECT_TRUE(std::filesystem::exists(folder / "pieces/Data"));
  folder.Write("b.pcf", kBoard);
  EXPECT_EQ(run({"nets", "b.pcf", "--work-dir", "pieces"}).status, 0);
  folder.Write("file", "");
  const CommandResult result = run({"nets", "b.pcf", "--work-dir", "file"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out, "");
}

TEST_F(CommandLine, ProgressIsShownWhenAskedFor) {
  folder.Write("b.pcf", kBoard);
  folder.Write("l.ftf", kLibrary);
  EXPECT_EQ(run({"nets", "b.pcf"}).err, "");
  EXPECT_EQ(run({"nets", "b.pcf", "--no-progress"}).err, "");
  CommandResult result = run({"nets", "b.pcf", "--progress"});
  EXPECT_EQ(result.status, 0);
  for (const char* szPart : {"\rboard [", "] 40 %", "] 60 %", "] 80 %", "] 100 %"}) {
    EXPECT_NE(result.err.find(szPart), std::string::npos) << szPart;
  }
  // The bar is gone at the end.
  EXPECT_TRUE(result.err.ends_with("\r\033[K"));
  EXPECT_EQ(result.out.find('\r'), std::string::npos);
  result = run({"info", "b.pcf", "--ftf", "l.ftf", "--progress"});
  EXPECT_NE(result.err.find("\rfootprints ["), std::string::npos);
}

TEST_F(CommandLine, NothingIsColouredOffATerminal) {
  folder.Write("b.pcf", "(pcf\n");
  EXPECT_EQ(run({"nets", "b.pcf"}).err.find('\033'), std::string::npos);
}

TEST_F(CommandLine, NamesThatLookLikeOptionsCanBeGiven) {
  folder.Write("--json", kBoard);
  const CommandResult result = run({"nets", "--", "--json"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_TRUE(result.out.starts_with("VCC 3V3\t")) << result.out;
}

TEST_F(CommandLine, MessagesKeepToTheirLine) {
  const CommandResult result = run({"nets", "a\nb\033[31m.pcf"});
  EXPECT_EQ(result.status, 1);
  EXPECT_TRUE(result.err.starts_with("a b [31m.pcf: error: ")) << result.err;
  EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1);
}

TEST_F(CommandLine, ManyArgumentsAreTakenInOneCall) {
  folder.Write("f", "(a)\n");
  std::vector<std::string> call{"check"};
  for (int i = 0; i < 20000; ++i) call.push_back("f" + std::to_string(i));
  call.push_back("f");
  const CommandResult result = run(call);
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 20000);
  EXPECT_EQ(result.out, "f: well formed\n");
}

}  // namespace
