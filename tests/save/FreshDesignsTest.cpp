// Every real design is written anew and reads back to the same.
#include <cstdlib>
#include <filesystem>

#include "base/BKUtility.h"
#include "base/TestFolder.h"
#include "save/RoundTrip.h"

namespace laminate::test {
namespace {

TEST(FreshDesigns, EveryDesignReadsBackToTheSame) {
  const char* const szDesigns = std::getenv("LAMINATE_DESIGNS");
  ASSERT_NE(szDesigns, nullptr);
  int nDesigns = 0;
  for (const auto& folder : std::filesystem::directory_iterator(szDesigns)) {
    if (!folder.is_directory()) continue;
    std::string sBoard;
    std::string sFootprints;
    for (const auto& file : std::filesystem::directory_iterator(folder)) {
      if (file.path().extension() == ".pcf") sBoard = file.path();
      if (file.path().extension() == ".ftf") sFootprints = file.path();
    }
    SCOPED_TRACE(sBoard);
    const TestFolder data;
    BKUtility::GetInstance()->SetDataPath(CString(std::string_view(data.Path())));
    Design design;
    ASSERT_TRUE(Load(sBoard, sFootprints, design));
    BKUtility::GetInstance()->SetDataPath(CString());
    ExpectRoundTrip(design);
    ++nDesigns;
  }
  EXPECT_GT(nDesigns, 0);
}

}  // namespace
}  // namespace laminate::test
