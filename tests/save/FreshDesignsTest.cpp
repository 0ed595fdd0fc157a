// Every real design is written anew and reads back to the same.
#include "base/BKUtility.h"
#include "base/Designs.h"
#include "base/TestFolder.h"
#include "save/RoundTrip.h"

namespace laminate::test {
namespace {

TEST(FreshDesigns, EveryDesignReadsBackToTheSame) {
  for (const std::string& sName : DesignNames()) {
    SCOPED_TRACE(sName);
    const TestFolder data;
    BKUtility::GetInstance()->SetDataPath(CString(std::string_view(data.Path())));
    Design design;
    ASSERT_TRUE(Load(DesignFile(sName, ".pcf"), DesignFile(sName, ".ftf"), design));
    BKUtility::GetInstance()->SetDataPath(CString());
    ExpectRoundTrip(design);
  }
  EXPECT_FALSE(DesignNames().empty());
}

}  // namespace
}  // namespace laminate::test
