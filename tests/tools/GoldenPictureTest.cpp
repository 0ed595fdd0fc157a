// The example's picture against one that was looked at. LAMINATE_RENEW_GOLDEN=1 takes the present picture over as that
// one.
#include <map>

#include "CommandRunner.h"
#include "Png.h"

namespace {

namespace fs = std::filesystem;

const fs::path kGolden = LAMINATE_GOLDEN;

PngPicture ReadPng(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return PngPicture(std::string(std::istreambuf_iterator<char>(in), {}));
}

// The tiles in which more than a few points differ by more than a shade; other versions of the drawing library shade
// edges in other ways.
int DifferentTiles(const PngPicture& a, const PngPicture& b) {
  if (a.width != b.width || a.height != b.height || a.bytes.empty()) return -1;
  constexpr int kShade = 24;
  constexpr int kTile = 16;
  constexpr int kFew = kTile * kTile / 20;
  std::map<std::pair<int, int>, int> points;
  for (int y = 0; y < a.height; ++y) {
    for (int x = 0; x < a.width; ++x) {
      const auto one = a.At(x, y);
      const auto other = b.At(x, y);
      int nMost = 0;
      for (std::size_t i = 0; i < one.size(); ++i) nMost = std::max(nMost, std::abs(one[i] - other[i]));
      if (nMost > kShade) ++points[{x / kTile, y / kTile}];
    }
  }
  return static_cast<int>(std::ranges::count_if(points, [](const auto& tile) { return tile.second > kFew; }));
}

struct GoldenPicture : CommandTest {
  PngPicture Draw(const std::vector<std::string>& more) const {
    const std::string sExample = LAMINATE_EXAMPLE;
    std::vector<std::string> call{"render", sExample + ".pcf", "--ftf", sExample + ".ftf", "--pixels", "480",
                                  "-o",     "picture.png"};
    call.insert(call.end(), more.begin(), more.end());
    const CommandResult result = run(call);
    EXPECT_EQ(result.status, 0) << result.err;
    return ReadPng(folder / "picture.png");
  }
};

TEST_F(GoldenPicture, TheExampleLooksAsItDid) {
  const PngPicture picture = Draw({});
  const char* szRenew = std::getenv("LAMINATE_RENEW_GOLDEN");
  if (szRenew != nullptr && std::string(szRenew) == "1") {
    fs::copy_file(folder / "picture.png", kGolden, fs::copy_options::overwrite_existing);
  }
  EXPECT_EQ(DifferentTiles(picture, ReadPng(kGolden)), 0);
}

TEST_F(GoldenPicture, AnotherPictureIsTold) {
  const PngPicture golden = ReadPng(kGolden);
  EXPECT_GT(DifferentTiles(Draw({"--side", "A"}), golden), 0);
  EXPECT_GT(DifferentTiles(Draw({"--layers", "1,2,3,4"}), golden), 0);
}

// A legend or a component that is not drawn any more must not pass for another way to shade.
TEST_F(GoldenPicture, ALossOfLittleIsTold) {
  const PngPicture golden = ReadPng(kGolden);
  const std::string sExample = LAMINATE_EXAMPLE;
  const auto lossOf = [&](const std::string& sForm) {
    std::ifstream in(sExample + ".pcf", std::ios::binary);
    std::string sBoard(std::istreambuf_iterator<char>(in), {});
    const std::size_t nFrom = sBoard.find(sForm);
    EXPECT_NE(nFrom, std::string::npos) << sForm;
    std::size_t nTo = nFrom;
    for (int nOpen = 0; nTo == nFrom || nOpen > 0; ++nTo) nOpen += sBoard[nTo] == '(' ? 1 : sBoard[nTo] == ')' ? -1 : 0;
    folder.Write("less.pcf", sBoard.erase(nFrom, nTo - nFrom));
    EXPECT_EQ(run({"render", "less.pcf", "--ftf", sExample + ".ftf", "--pixels", "480", "-o", "less.png"}).status, 0);
    return DifferentTiles(ReadPng(folder / "less.png"), golden);
  };
  EXPECT_GT(lossOf("(component (reference R1)"), 0);
  EXPECT_GT(lossOf("(component (reference TP1)"), 0);
}

}  // namespace
