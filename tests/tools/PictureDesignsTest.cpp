// Placing and drawing on real designs: each folder of LAMINATE_DESIGNS is one, and LAMINATE_EXPECTED may hold
// placements that are expected of it.
#include "CommandRunner.h"
#include "Json.h"
#include "base/Designs.h"

namespace {

namespace fs = std::filesystem;
using Strings = std::vector<std::string>;

struct PictureDesigns : testing::TestWithParam<std::string> {
  TestFolder folder;
  CommandRunner run{folder};
  std::string File(const char* szEnding) const { return laminate::test::DesignFile(GetParam(), szEnding); }
};

Strings Words(const std::string& s) {
  std::istringstream in(s);
  Strings words;
  for (std::string sWord; in >> sWord;) words.push_back(sWord);
  return words;
}

// A line each: the footprint, the options, the component.
TEST_P(PictureDesigns, PlacementsAreTheExpectedOnes) {
  const char* szFolder = std::getenv("LAMINATE_EXPECTED");
  if (szFolder == nullptr) return;
  std::ifstream in(fs::path(szFolder) / GetParam() / "place.jsonl");
  ASSERT_TRUE(in) << "no placements for " << GetParam();
  int nLines = 0;
  for (std::string sLine; std::getline(in, sLine); ++nLines) {
    const Json expected = Json::parse(sLine);
    const std::string sFootprint = expected["footprint"];
    const std::string sOptions = expected["options"];
    Strings call{"place", sFootprint, "--pcf", File(".pcf"), "--ftf", File(".ftf"), "--json"};
    for (const std::string& s : Words(sOptions)) call.push_back(s);
    const CommandResult result = run(call);
    ASSERT_EQ(result.status, 0) << sFootprint << " " << sOptions << "\n" << result.err;
    EXPECT_EQ(FirstDifference(Json::parse(result.out), expected["component"]), "") << sFootprint << " " << sOptions;
  }
  EXPECT_GT(nLines, 0);
}

TEST_P(PictureDesigns, AreDrawnInEveryForm) {
  for (const char* szFile : {"a.svg", "a.png", "a.pdf"}) {
    for (const Strings& more : {Strings{}, Strings{"--side", "A"}, Strings{"--side", "B"}}) {
      Strings call{"render", File(".pcf"), "--ftf", File(".ftf"), "-o", szFile};
      call.insert(call.end(), more.begin(), more.end());
      const CommandResult result = run(call);
      EXPECT_EQ(result.status, 0) << result.err;
      EXPECT_EQ(result.err, "") << "every pad has its definition";
      EXPECT_GT(folder.Read(szFile).size(), 10000u) << szFile;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(All, PictureDesigns, testing::ValuesIn(laminate::test::DesignNames()),
                         laminate::test::NameOfDesignTest);

}  // namespace
