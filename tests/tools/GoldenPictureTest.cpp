// The example's picture against one that was looked at. LAMINATE_RENEW_GOLDEN=1 takes the present picture over as that
// one.
#include <cairo.h>

#include "CommandRunner.h"

namespace {

namespace fs = std::filesystem;

const fs::path kGolden = LAMINATE_GOLDEN;

struct Picture {
  int width = 0;
  int height = 0;
  std::vector<unsigned char> bytes;  // three for each point
};

Picture ReadPng(const fs::path& path) {
  Picture picture;
  cairo_surface_t* p = cairo_image_surface_create_from_png(path.c_str());
  EXPECT_EQ(cairo_surface_status(p), CAIRO_STATUS_SUCCESS) << path;
  if (cairo_surface_status(p) == CAIRO_STATUS_SUCCESS) {
    picture.width = cairo_image_surface_get_width(p);
    picture.height = cairo_image_surface_get_height(p);
    for (int y = 0; y < picture.height; ++y) {
      const unsigned char* pRow = cairo_image_surface_get_data(p) + y * cairo_image_surface_get_stride(p);
      for (int x = 0; x < picture.width; ++x) picture.bytes.insert(picture.bytes.end(), pRow + 4 * x, pRow + 4 * x + 3);
    }
  }
  cairo_surface_destroy(p);
  return picture;
}

// The share of bytes that differ by more than a shade.
double Difference(const Picture& a, const Picture& b) {
  if (a.width != b.width || a.height != b.height || a.bytes.empty()) return 1;
  constexpr int kShade = 24;
  std::size_t n = 0;
  for (std::size_t i = 0; i < a.bytes.size(); ++i) {
    if (std::abs(static_cast<int>(a.bytes[i]) - static_cast<int>(b.bytes[i])) > kShade) ++n;
  }
  return static_cast<double>(n) / static_cast<double>(a.bytes.size());
}

struct GoldenPicture : CommandTest {
  Picture Draw(const std::vector<std::string>& more) const {
    const std::string sExample = LAMINATE_EXAMPLE;
    std::vector<std::string> call{"render", sExample + ".pcf", "--ftf", sExample + ".ftf", "--pixels", "480",
                                  "-o",     "picture.png"};
    call.insert(call.end(), more.begin(), more.end());
    const CommandResult result = run(call);
    EXPECT_EQ(result.status, 0) << result.err;
    return ReadPng(folder / "picture.png");
  }
};

// Other versions of the drawing library shade edges in other ways.
constexpr double kTolerance = 0.01;

TEST_F(GoldenPicture, TheExampleLooksAsItDid) {
  const Picture picture = Draw({});
  const char* szRenew = std::getenv("LAMINATE_RENEW_GOLDEN");
  if (szRenew != nullptr && std::string(szRenew) == "1") {
    fs::copy_file(folder / "picture.png", kGolden, fs::copy_options::overwrite_existing);
  }
  EXPECT_LT(Difference(picture, ReadPng(kGolden)), kTolerance);
}

TEST_F(GoldenPicture, AnotherPictureIsTold) {
  const Picture golden = ReadPng(kGolden);
  EXPECT_GT(Difference(Draw({"--side", "A"}), golden), kTolerance);
  EXPECT_GT(Difference(Draw({"--layers", "1,2,3,4"}), golden), kTolerance);
}

}  // namespace
