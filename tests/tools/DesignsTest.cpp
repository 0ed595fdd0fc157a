// Every command on real designs: each folder of LAMINATE_DESIGNS is one, and LAMINATE_EXPECTED may hold what is
// expected of it.
#include <regex>
#include <tuple>

#include "CommandRunner.h"
#include "Json.h"
#include "PlaceInto.h"
#include "base/Designs.h"

namespace {

namespace fs = std::filesystem;

// The whole output of a program.
std::string Unpacked(const fs::path& path) {
  std::string s;
  FILE* fp = popen(("gzip -dc '" + path.string() + "'").c_str(), "r");
  char buffer[65536];
  while (const std::size_t n = fread(buffer, 1, sizeof buffer, fp)) s.append(buffer, n);
  EXPECT_EQ(pclose(fp), 0);
  return s;
}

// The number of the first line of that text, from 1; 0 when there is none.
std::size_t LineOf(const std::string& sLine, const std::string& s) {
  const std::size_t n = s.find("\n" + sLine + "\n");
  return n == std::string::npos
             ? 0
             : 2 + static_cast<std::size_t>(std::count(s.begin(), s.begin() + static_cast<std::ptrdiff_t>(n), '\n'));
}

struct DesignTest : testing::TestWithParam<std::string> {
  TestFolder folder;
  CommandRunner run{folder};
  std::string File(const char* szEnding) const { return laminate::test::DesignFile(GetParam(), szEnding); }
  // The file of what is expected, or an empty path.
  fs::path Expected(const char* szName) const {
    const char* szFolder = std::getenv("LAMINATE_EXPECTED");
    const fs::path path = szFolder == nullptr ? fs::path() : fs::path(szFolder) / GetParam() / szName;
    return fs::exists(path) ? path : fs::path();
  }
  // A number from a line "| what | number |" of the design's own description.
  std::size_t Count(const std::string& sWhat) const {
    const std::string s = BytesOf(laminate::test::DesignsFolder() / GetParam() / "SOURCE.md");
    std::smatch match;
    if (!std::regex_search(s, match, std::regex("\\| " + sWhat + "(?: \\*)? \\| (\\d+) \\|"))) {
      ADD_FAILURE() << "no count of " << sWhat;
      return 0;
    }
    return std::stoul(match[1]);
  }
};

TEST_P(DesignTest, Nets) {
  const CommandResult plain = run({"nets", File(".pcf")});
  EXPECT_EQ(plain.status, 0) << plain.err;
  EXPECT_EQ(plain.err, "");
  const CommandResult result = run({"nets", File(".pcf"), "--json"});
  EXPECT_EQ(result.status, 0) << result.err;
  const Json nets = Json::parse(result.out);
  EXPECT_EQ(nets.size(), Count("nets"));
  std::size_t nPins = 0;
  std::string sPlain;
  for (const Json& net : nets) {
    nPins += net["m_pRefPinArray"].size();
    sPlain += net["m_sName"].get<std::string>() + "\t";
    const char* szBefore = "";
    for (const Json& pin : net["m_pRefPinArray"]) {
      sPlain += szBefore + pin["m_sComp"].get<std::string>() + "." + pin["m_sPin"].get<std::string>();
      szBefore = " ";
    }
    sPlain += "\n";
  }
  EXPECT_EQ(nPins, Count("net pins"));
  EXPECT_EQ(plain.out, sPlain);
  if (const fs::path path = Expected("nets.json"); !path.empty()) {
    EXPECT_EQ(FirstDifference(nets, Json::parse(BytesOf(path))), "");
  }
}

TEST_P(DesignTest, Trees) {
  for (const char* szEnding : {".pcf", ".ftf", ".rul"}) {
    const CommandResult result = run({"tree", File(szEnding), "--json"});
    EXPECT_EQ(result.status, 0) << szEnding << result.err;
    EXPECT_EQ(Json::parse(result.out).size(), 1u) << szEnding;
    EXPECT_EQ(run({"tree", File(szEnding)}).status, 0) << szEnding;
  }
}

TEST_P(DesignTest, Info) {
  const CommandResult result = run({"info", File(".pcf"), "--ftf", File(".ftf"), "--json"});
  EXPECT_EQ(result.status, 0) << result.err;
  const Json info = Json::parse(result.out);
  EXPECT_EQ(info["conductorLayers"], Count("conductive layers"));
  EXPECT_EQ(info["components"], Count("components"));
  EXPECT_EQ(info["componentsOnSideA"], Count("of these on side A"));
  EXPECT_EQ(info["componentsOnSideB"], Count("of these on side B"));
  EXPECT_EQ(info["pins"], Count("pins"));
  EXPECT_EQ(info["nets"], Count("nets"));
  EXPECT_EQ(info["groups"], Count("component groups"));
  EXPECT_GT(info["extent"]["width"], 1.0);
  EXPECT_LT(info["extent"]["width"], 1000.0);
  EXPECT_EQ(run({"info", File(".pcf")}).status, 0);
}

TEST_P(DesignTest, Components) {
  const CommandResult result = run({"components", File(".pcf"), "--json"});
  EXPECT_EQ(Json::parse(result.out).size(), Count("components"));
  const std::string sCsv = run({"components", File(".pcf"), "--csv"}).out;
  EXPECT_EQ(static_cast<std::size_t>(std::count(sCsv.begin(), sCsv.end(), '\n')), Count("components") + 1);
}

TEST_P(DesignTest, Dump) {
  const CommandResult result = run({"dump", File(".pcf"), "--ftf", File(".ftf"), "-o", "dump.json"});
  EXPECT_EQ(result.status, 0) << result.err;
  const Json dump = Json::parse(folder.Read("dump.json"));
  EXPECT_EQ(dump["m_nComponentFileCount"], Count("`component` pieces of the splitter"));
  EXPECT_EQ(dump["m_nLayerFileCount"], Count("`layer` pieces of the splitter"));
  if (const fs::path path = Expected("dump.json.gz"); !path.empty()) {
    EXPECT_EQ(FirstDifference(dump, Json::parse(Unpacked(path))), "");
  }
}

TEST_P(DesignTest, DesignData) {
  const CommandResult result = run({"design-data", "--package", File(".pkf"), "--parts", File(".cdf"), "--rules",
                                    File(".rul"), "--components", File(".cmp"), "--json", "--archive-out", "data.bin"});
  EXPECT_EQ(result.status, 0) << result.err;
  const Json data = Json::parse(result.out);
  if (const fs::path path = Expected("design-data.json"); !path.empty()) {
    EXPECT_EQ(FirstDifference(data, Json::parse(BytesOf(path))), "");
  }
  if (const fs::path path = Expected("design-data.bin"); !path.empty()) {
    EXPECT_TRUE(folder.Read("data.bin") == BytesOf(path));
  }
  const CommandResult again = run({"design-data", "--archive-in", "data.bin", "--json"});
  EXPECT_EQ(again.status, 0) << again.err;
  EXPECT_FALSE(data["m_pPackageArray"].empty());
  EXPECT_EQ(FirstDifference(Json::parse(again.out), WithoutWhatNoImageHolds(data)), "");
}

TEST_P(DesignTest, Export) {
  const CommandResult result = run({"export", File(".pcf"), "--ftf", File(".ftf"), "--package", File(".pkf"), "--parts",
                                    File(".cdf"), "-o", "export", "--quiet"});
  EXPECT_EQ(result.status, 3) << result.err;
  // The board file closes a bracket too many behind its layer parameters; the library does not load where a text is
  // empty; the others do.
  std::string sLibrary;
  if (const std::size_t nLine = LineOf("(string )", folder.Read("export.ftf")); nLine != 0) {
    sLibrary = "export.ftf:" + std::to_string(nLine) + ": error: \"string\" has no value 1\n";
  }
  std::smatch match;
  ASSERT_TRUE(std::regex_match(
      result.err, match,
      std::regex("export\\.pcf: warning: Parser meet unexpected Brace Counting Number, 0 at line number \\d+\\.!\n" +
                 sLibrary + "export\\.pcf:(\\d+):1: error: there is a closing bracket too many\n")))
      << result.err << "for a library with\n"
      << sLibrary;
  const std::size_t nParameters = LineOf("(layerParameters", folder.Read("export.pcf"));
  EXPECT_NE(nParameters, 0u);
  EXPECT_GT(std::stoul(match[1]), nParameters);
  for (const char* szEnding : {".pcf", ".ftf", ".tcf", ".pkf", ".cdf"}) {
    const std::string sName = std::string("export") + szEnding;
    EXPECT_TRUE(fs::exists(folder / sName)) << sName;
    if (const fs::path path = Expected(sName.c_str()); !path.empty()) {
      EXPECT_TRUE(folder.Read(sName) == BytesOf(path)) << sName;
    }
  }
  EXPECT_EQ(folder.Names().size(), 5u);
}

TEST_P(DesignTest, Check) {
  const CommandResult result =
      run({"check", File(".pcf"), File(".ftf"), File(".rul"), File(".pkf"), File(".cdf"), File(".cmp")});
  EXPECT_EQ(result.status, 0) << result.err;
  std::size_t nGood = 0;
  for (std::size_t n = result.out.find(": well formed\n"); n != std::string::npos;
       n = result.out.find(": well formed\n", n + 1)) {
    ++nGood;
  }
  EXPECT_EQ(nGood, 6u) << result.out;
}

// All of a small design; of a large one as many as take no longer.
// Components from all over the board, most of them with a body area.
TEST_P(DesignTest, EditsStayWithinTheirComponents) {
  const std::string sBoard = BytesOf(File(".pcf"));
  const auto components = nlohmann::json::parse(run({"components", File(".pcf"), "--json"}).out);
  const auto edited = [&](const std::string& sOption, const std::string& sValue) {
    const CommandResult result =
        run({"edit", File(".pcf"), "--ftf", File(".ftf"), sOption, sValue, "-o", (folder / "out").string()});
    EXPECT_EQ(result.status, 0) << sOption << " " << sValue << ": " << result.err;
    EXPECT_EQ(folder.Read("out.ftf"), BytesOf(File(".ftf")));
    return folder.Read("out.pcf");
  };
  int nEdited = 0;
  for (std::size_t i = 0; i < components.size(); i += 1 + components.size() / 4) {
    const std::string sName = components[i]["reference"];
    if (!std::all_of(sName.begin(), sName.end(), [](unsigned char c) { return isalnum(c) != 0; })) continue;
    const std::size_t nBegin = sBoard.find("(component (reference " + sName + ")");
    ASSERT_NE(nBegin, std::string::npos) << sName;
    // Up to the next component, or to the end of them.
    const std::size_t nBehind =
        sBoard.size() - std::min(sBoard.find("(component (", nBegin + 1), sBoard.find("(boardLayout", nBegin));
    const std::pair<std::string, std::string> edits[] = {
        {"--move", sName + "=12.5,7"},
        {"--rotate", sName + "=33"},
        {"--set", "m_pBoardContainer.m_pComponentArray[" + sName + "].m_sPart=other part"}};
    for (const auto& [sOption, sValue] : edits) {
      SCOPED_TRACE(sOption + " " + sValue);
      const std::string s = edited(sOption, sValue);
      ASSERT_GT(s.size(), nBegin + nBehind);
      EXPECT_NE(s, sBoard);
      EXPECT_TRUE(s.compare(0, nBegin, sBoard, 0, nBegin) == 0);
      EXPECT_TRUE(s.compare(s.size() - nBehind, nBehind, sBoard, sBoard.size() - nBehind, nBehind) == 0);
    }
    for (const auto& [sOption, sValue, nLeft] : {std::tuple("--rename", sName + "=ZZ99", components.size()),
                                                 std::tuple("--remove", sName, components.size() - 1)}) {
      EXPECT_EQ(edited(sOption, sValue).find("(reference " + sName + ")"), std::string::npos);
      const auto left = nlohmann::json::parse(run({"components", (folder / "out.pcf").string(), "--json"}).out);
      EXPECT_EQ(left.size(), nLeft) << sOption;
    }
    ++nEdited;
  }
  EXPECT_GT(nEdited, 0);
}

TEST_P(DesignTest, FootprintsArePlacedIntoTheBoard) {
  const std::vector<std::string> names = FootprintNames(BytesOf(File(".ftf")));
  ASSERT_FALSE(names.empty());
  constexpr std::size_t kBytes = 16 << 20;
  const std::size_t nSample = std::clamp<std::size_t>(kBytes / fs::file_size(File(".pcf")), 4, names.size());
  std::size_t nShapes = 0;
  for (std::size_t i = 0; i < nSample; ++i) {
    for (const char* szSide : {"A", "B"}) {
      nShapes += ExpectPlacedInto(folder, run, File(""), names[i * names.size() / nSample], szSide);
    }
  }
  EXPECT_GT(nShapes, 2 * nSample);
}

INSTANTIATE_TEST_SUITE_P(Designs, DesignTest, testing::ValuesIn(laminate::test::DesignNames()),
                         laminate::test::NameOfDesignTest);

}  // namespace
