// The libraries of real designs: the two loads of parts against the load of the whole.
#include <fstream>

#include "base/Designs.h"
#include "technology/CBDfootprint.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDpad.h"
#include "technology/CBDpadstack.h"
#include "technology/CBDtechnologyContainer.h"
#include "technology/FootprintFileLoad.h"
#include "technology/RecordTestSupport.h"

namespace {

using laminate::FootprintFileTarget;
using laminate::test::DesignFile;
using laminate::test::DesignNames;

struct Library {
  CBDtechnologyContainer technology;
  CBDfootprintContainer container;
  CBDdrawObjArray boardShapes;
  laminate::LoadStatus status;
  FootprintFileTarget target{technology, container, [this] { return &boardShapes; }, nullptr, status};

  // As a footprint file, which has all of the library but the areas that were read.
  std::string Text() {
    std::string s = Printed([this](std::FILE* fp) { return container.nPrint2File(fp, &technology); });
    for (const CBDfootprint* p : *container.m_pFootprintArray) s += Str(p->m_ptBox1) + " " + Str(p->m_ptBox2) + "\n";
    return s;
  }
};

struct FootprintFileDesigns : testing::TestWithParam<std::string> {
  const std::string path = DesignFile(GetParam(), ".ftf");
  BoxRecorder boxes;
  CHostInterfaceScope scope{boxes};
};

TEST_P(FootprintFileDesigns, ThePartsMakeTheWhole) {
  Library whole;
  laminate::LoadFootprintFile(CString(path), whole.target);
  ASSERT_TRUE(whole.status.IsOk());
  ASSERT_GT(whole.container.m_pFootprintArray->GetSize(), 0);
  Library parts;
  laminate::LoadPadsAndPadstacks(CString(path), parts.target);
  CStringArray names;
  for (CBDfootprint* p : *whole.container.m_pFootprintArray) {
    names.Add(p->m_sName);
    // What the loads of parts leave out.
    p->m_nUver = 1;
    p->m_pPropertyArray->DeleteAll();
  }
  for (CBDpadstack* p : *whole.container.m_pPadstackArray) p->m_sIsBuildupVia.Empty();

  std::ifstream in(path, std::ios::binary);
  std::string sFirstLine;
  std::getline(in, sFirstLine);
  if (sFirstLine.ends_with('\r')) {
    // Offsets do not count with such line ends: only what is found by its line can be held together.
    whole.container.m_pFootprintArray->DeleteAll();
  } else {
    laminate::LoadFootprintsByName(CString(path), names, parts.target);
  }
  EXPECT_TRUE(parts.status.IsOk());
  EXPECT_EQ(whole.Text(), parts.Text());
}

INSTANTIATE_TEST_SUITE_P(All, FootprintFileDesigns, testing::ValuesIn(DesignNames()), laminate::test::NameOfDesignTest);

}  // namespace
