#include <thread>

#include "CommandRunner.h"
#include "Json.h"

namespace {

using Strings = std::vector<std::string>;

struct Export : CommandTest {
  Export() {
    folder.Write("b.pcf", kBoard);
    folder.Write("l.ftf", kLibrary);
  }
};

TEST_F(Export, WritesTheSet) {
  std::filesystem::create_directory(folder / "out");
  folder.Write("p.pkf", "(package \"PACK\"\n(type SMD)\n)\n");
  const CommandResult result =
      run({"export", "b.pcf", "--ftf", "l.ftf", "--package", "p.pkf", "-o", "out/set", "--quiet"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out, "");
  EXPECT_TRUE(folder.Read("out/set.pcf").starts_with("(pcf\n(header\n(version 2.0)\n"));
  EXPECT_TRUE(folder.Read("out/set.ftf").starts_with("(ftf\n(header\n(version 2.0)\n"));
  EXPECT_TRUE(folder.Read("out/set.tcf").starts_with("(tcf\n  (header\n    (version 2.0)\n"));
  EXPECT_EQ(folder.Read("out/set.cdf"), "(Japanese_coding: sjis)\n");
  EXPECT_NE(folder.Read("out/set.pkf").find("(package \"PACK\"\n    (type SMD)\n"), std::string::npos);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder / "out"), {}), 5);
}

TEST_F(Export, LeavesThePackageFileAloneWithoutPackages) {
  folder.Write("set.pkf", "old");
  EXPECT_EQ(run({"export", "b.pcf", "-o", "set", "--quiet"}).status, 0);
  EXPECT_EQ(folder.Read("set.pkf"), "old");
  EXPECT_EQ(folder.Names(), (Strings{"b.pcf", "l.ftf", "set.cdf", "set.ftf", "set.pcf", "set.pkf", "set.tcf"}));
}

TEST_F(Export, TakesTheStemWithTheEndingOfABoardFile) {
  EXPECT_EQ(run({"export", "b.pcf", "-o", "set.pcf", "--quiet"}).status, 0);
  EXPECT_EQ(folder.Names(), (Strings{"b.pcf", "l.ftf", "set.cdf", "set.ftf", "set.pcf", "set.tcf"}));
  EXPECT_EQ(run({"export", "b.pcf", "-o", "up.PCF", "--quiet"}).status, 0);
  EXPECT_NE(folder.Read("up.PCF.pcf"), "<no up.PCF.pcf>");
}

TEST_F(Export, WritesTheRecordsOfAPartsFile) {
  folder.Write("p.cdf", "(part \"P\"\n(packageRef \"PACK\")\n)\n");
  EXPECT_EQ(run({"export", "b.pcf", "--parts", "p.cdf", "-o", "set", "--quiet"}).status, 0);
  EXPECT_NE(folder.Read("set.cdf").find("(part \"P\"\n"), std::string::npos);
}

TEST_F(Export, ReplacesFilesAndKeepsTheirModesAndLinks) {
  std::filesystem::create_directory(folder / "elsewhere");
  folder.Write("elsewhere/real", "old");
  std::filesystem::create_symlink("elsewhere/real", folder / "set.pcf");
  folder.Write("set.ftf", "old");
  std::filesystem::permissions(folder / "set.ftf", std::filesystem::perms(0604));
  EXPECT_EQ(run({"export", "b.pcf", "-o", "set", "--quiet"}).status, 0);
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "set.pcf"));
  EXPECT_TRUE(folder.Read("elsewhere/real").starts_with("(pcf\n"));
  struct stat st {};
  ASSERT_EQ(stat((folder / "set.ftf").c_str(), &st), 0);
  EXPECT_EQ(st.st_mode & 07777, 0604u);
  EXPECT_TRUE(folder.Read("set.ftf").starts_with("(ftf\n"));
  EXPECT_EQ(folder.Names(), (Strings{"b.pcf", "elsewhere", "l.ftf", "set.cdf", "set.ftf", "set.pcf", "set.tcf"}));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder / "elsewhere"), {}), 1);
}

TEST_F(Export, ChangesNothingWhenOneFileCannotBeWritten) {
  folder.Write("set.cdf", "old cdf");
  folder.Write("set.pcf", "old pcf");
  // The last file of the set is a folder.
  std::filesystem::create_directory(folder / "set.tcf");
  const Strings before = folder.Names();
  CommandResult result = run({"export", "b.pcf", "-o", "set"});
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.err.find("set.tcf: error: cannot write: "), std::string::npos) << result.err;
  EXPECT_EQ(folder.Read("set.cdf"), "old cdf");
  EXPECT_EQ(folder.Read("set.pcf"), "old pcf");
  EXPECT_EQ(folder.Names(), before);

  result = run({"export", "b.pcf", "-o", "none/set"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(folder.Names(), before);
}

TEST_F(Export, ChangesNothingWhenAFileGrowsTooLarge) {
  folder.Write("set.pcf", "old");
  std::string sBoard = kBoard;
  std::string sNets;
  for (int i = 0; i < 400; ++i) sNets += "(net N" + std::to_string(i) + "\n(type T)\n(pen 1)\n)\n";
  sBoard.insert(sBoard.find("(net NC"), sNets);
  folder.Write("b.pcf", sBoard);
  const Strings before = folder.Names();
  run.nFileSize = 32 * 1024;
  const CommandResult result = run({"export", "b.pcf", "-o", "set", "--quiet"});
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.err.find("set.pcf: error: cannot write: "), std::string::npos) << result.err;
  EXPECT_EQ(folder.Read("set.pcf"), "old");
  EXPECT_EQ(folder.Names(), before);
}

TEST_F(Export, RefusesASetThatHoldsAnInput) {
  const std::string sBoard = folder.Read("b.pcf");
  folder.Write("x.cdf", "");
  for (const Strings& row : {Strings{"export", "b.pcf", "-o", "b"}, Strings{"export", "b.pcf", "-o", "b.pcf"},
                             Strings{"export", "b.pcf", "--ftf", "l.ftf", "-o", "l"},
                             Strings{"export", "b.pcf", "--parts", "x.cdf", "-o", "./x"}}) {
    const CommandResult result = run(row);
    EXPECT_EQ(result.status, 2) << row.back();
  }
  EXPECT_EQ(folder.Read("b.pcf"), sBoard);
  EXPECT_EQ(folder.Names(), (Strings{"b.pcf", "l.ftf", "x.cdf"}));
}

// Some records are written in a form that loading refuses. The files are in place all the same.
TEST_F(Export, SaysWhatDoesNotLoadAgain) {
  const std::string kParameter = "(layer (conductive 1)\n(colorId 3)\n)\n";
  const std::string kLayout = "(layout\n(layer (conductive 1)\n(oval)\n)\n)\n";
  const std::string kConductive = "(layer (conductive (type 1))\n";
  // The bracket that is too many is told, and so is the form that lacks a value.
  const struct {
    const char* name;
    const char* before;  // where in the board
    std::string form;
    std::string written;  // begins with the line that is told
    const char* told;
  } rows[] = {
      {"a layer parameter closes a bracket too many", ")\n", "(parameter\n(layerParameters\n" + kParameter + ")\n)\n",
       ")\n", ":1: error: there is a closing bracket too many\n"},
      {"each of them does", ")\n", "(parameter\n(layerParameters\n" + kParameter + kParameter + ")\n)\n",
       ")\n(libraryEntities\n", ":1: error: there is a closing bracket too many\n"},
      {"a layout of shapes of no layer does", "(layer (conductive 1)", "(layer (oval)\n)\n", ")\n",
       ":1: error: there is a closing bracket too many\n"},
      {"a group's layer has a type", "(nets\n", "(compGroups\n(compGroup G\n(list R1)\n" + kLayout + ")\n)\n",
       kConductive, ": error: \"conductive\" has no value 1\n"},
      {"a pin's layer does", "(pin 2 (pt", "(pin 3 (pt 0 0)\n" + kLayout + ")\n", kConductive,
       ": error: \"conductive\" has no value 1\n"},
  };
  for (const auto& row : rows) {
    std::string sBoard = kBoard;
    sBoard.insert(sBoard.rfind(row.before), row.form);
    folder.Write("b.pcf", sBoard);
    const CommandResult result = run({"export", "b.pcf", "--ftf", "l.ftf", "-o", "set", "--quiet"});
    EXPECT_EQ(result.status, 3) << row.name;
    const std::string sWritten = folder.Read("set.pcf");
    const std::size_t nAt = sWritten.rfind(row.written);
    ASSERT_NE(nAt, std::string::npos) << row.name << sWritten;
    const auto nLine = 1 + std::count(sWritten.begin(), sWritten.begin() + static_cast<std::ptrdiff_t>(nAt), '\n');
    EXPECT_NE(result.err.find("set.pcf:" + std::to_string(nLine) + row.told), std::string::npos)
        << row.name << " " << nLine << " " << result.err;
  }
}

TEST_F(Export, SaysWhatOfALibraryDoesNotLoadAgain) {
  std::string sLibrary = kLibrary;
  sLibrary.insert(sLibrary.find("(padstack STACK1"), "(padstack EMPTY (throughMode NO))\n");
  folder.Write("l.ftf", sLibrary);
  const CommandResult result = run({"export", "b.pcf", "--ftf", "l.ftf", "-o", "set", "--quiet"});
  EXPECT_EQ(result.status, 3);
  const std::string sWritten = folder.Read("set.ftf");
  const std::size_t nAt = sWritten.find("\n(type )\n");
  ASSERT_NE(nAt, std::string::npos) << sWritten;
  const auto nLine = 2 + std::count(sWritten.begin(), sWritten.begin() + static_cast<std::ptrdiff_t>(nAt), '\n');
  EXPECT_EQ(result.err, "set.ftf:" + std::to_string(nLine) + ": error: \"type\" has no value 1\n");
}

TEST_F(Export, TellsWhatTheFilesDoNotHold) {
  std::string sBoard = kBoard;
  for (int i = 0; i < 2; ++i) sBoard.insert(sBoard.find("(pen 1)"), "(lockMode FIXED)\n");
  sBoard.insert(sBoard.find("(placementSide A)"), "(outOfBoard YES)\n");
  sBoard.insert(sBoard.find("(nets\n"), "(subBoards\n(subBoard 3 (relativePath p))\n)\n");
  folder.Write("b.pcf", sBoard);
  const CommandResult result = run({"export", "b.pcf", "-o", "set", "--loss-report", "loss.json"});
  EXPECT_NE(result.err.find("b.pcf: note: CBDnet.m_sLockMode, 1 time: constant (UNFIXED)\n"), std::string::npos)
      << result.err;
  EXPECT_NE(result.err.find("b.pcf: note: CBDcomponent.m_sOutOfBoard, 1 time: constant (NO)\n"), std::string::npos)
      << result.err;
  EXPECT_NE(result.err.find("b.pcf: note: CBDsubBoard, 1 time: dropped\n"), std::string::npos) << result.err;
  EXPECT_EQ(folder.Read("set.pcf").find("subBoard"), std::string::npos);
  const Json report = Json::parse(folder.Read("loss.json"));
  const Json expected = Json::parse(
      R"({"object": "m_pBoardContainer.m_pNetArray[VCC 3V3]", "class": "CBDnet", "field": "m_sLockMode",
          "fate": "constant", "note": "UNFIXED", "value": "FIXED"})");
  EXPECT_NE(std::find(report.begin(), report.end(), expected), report.end()) << report.dump(1);
  const CommandResult quiet = run({"export", "b.pcf", "-o", "set", "--quiet"});
  EXPECT_EQ(quiet.err.find("note:"), std::string::npos) << quiet.err;
}

// The set always has a library and parts, also those of a design that was loaded without them.
TEST_F(Export, SaysWhichFilesItEmpties) {
  const std::string kNoLibrary = "set.ftf: note: replaced by one without footprints: none were loaded (--ftf)\n";
  const std::string kNoParts = "set.cdf: note: replaced by one without parts: none were loaded (--parts)\n";
  folder.Write("p.cdf", "(part \"P\"\n(packageRef \"PACK\")\n)\n");
  const auto told = [this](const Strings& options) {
    Strings arguments{"export", "b.pcf", "-o", "set"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const CommandResult result = run(arguments);
    EXPECT_EQ(result.status, 0) << result.err;
    const std::size_t n = result.err.find("set.");
    return n == std::string::npos ? std::string() : result.err.substr(n);
  };
  EXPECT_EQ(told({}), "") << "nothing was there";
  EXPECT_EQ(told({}), kNoParts + kNoLibrary);
  EXPECT_EQ(told({"--ftf", "l.ftf"}), kNoParts);
  EXPECT_EQ(told({"--parts", "p.cdf"}), kNoLibrary);
  EXPECT_EQ(told({"--ftf", "l.ftf", "--parts", "p.cdf"}), "");
  EXPECT_EQ(told({"--quiet"}), "");
  // What fails replaces nothing.
  std::filesystem::remove(folder / "set.tcf");
  std::filesystem::create_directory(folder / "set.tcf");
  const CommandResult result = run({"export", "b.pcf", "-o", "set"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err.find("note: replaced"), std::string::npos) << result.err;
}

TEST_F(Export, RefusesALossReportThatIsAFileOfTheSetOrAnInput) {
  for (const char* szReport : {"set.pcf", "./set.cdf", "b.pcf"}) {
    EXPECT_EQ(run({"export", "b.pcf", "-o", "set", "--loss-report", szReport}).status, 2) << szReport;
  }
  EXPECT_EQ(folder.Names(), (Strings{"b.pcf", "l.ftf"}));
}

TEST_F(Export, WritesPipesInPlace) {
  ASSERT_EQ(mkfifo((folder / "set.tcf").c_str(), 0600), 0);
  std::string sRead;
  std::thread reader([&] { sRead = folder.Read("set.tcf"); });
  const CommandResult result = run({"export", "b.pcf", "-o", "set", "--quiet"});
  reader.join();
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_TRUE(std::filesystem::is_fifo(folder / "set.tcf"));
  EXPECT_TRUE(folder.Read("set.pcf").starts_with("(pcf\n"));
  EXPECT_EQ(run({"export", "b.pcf", "-o", "plain", "--quiet"}).status, 0);
  EXPECT_EQ(sRead, folder.Read("plain.tcf"));
}

}  // namespace
