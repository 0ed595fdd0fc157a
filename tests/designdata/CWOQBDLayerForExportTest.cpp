#include "designdata/CWOQBDLayerForExport.h"

#include <memory>
#include <type_traits>

#include "gtest/gtest.h"

namespace {

static_assert(std::has_virtual_destructor_v<CWOQBDLayerForExport> && !std::is_base_of_v<CObject, CWOQBDLayerForExport>);

TEST(LayerMap, GivesTheFirstNameOfAnId) {
  CWOQBDLayerForExportArray map;
  EXPECT_EQ(map.sGetBDLayerNameFromWOQLayID(0), "");
  map.SetSize(1);
  EXPECT_EQ(map.sGetBDLayerNameFromWOQLayID(0), "");
  map.SetSize(0);
  const auto add = [&map](int nId, const char* szName) {
    auto p = std::make_unique<CWOQBDLayerForExport>();
    EXPECT_EQ(p->m_nWOQLayID, 0);
    EXPECT_EQ(p->m_sBDLayerName, "");
    p->m_nWOQLayID = nId;
    p->m_sBDLayerName = szName;
    laminate::AppendOwned(map, std::move(p));
  };
  add(3, "three");
  add(3, "other");
  add(-1, "");
  add(-1, "behind one without a name");
  map.Add(nullptr);
  add(7, "seven");
  EXPECT_EQ(map.sGetBDLayerNameFromWOQLayID(3), "three");
  EXPECT_EQ(map.sGetBDLayerNameFromWOQLayID(-1), "");
  EXPECT_EQ(map.sGetBDLayerNameFromWOQLayID(7), "seven");
  EXPECT_EQ(map.sGetBDLayerNameFromWOQLayID(8), "");
  CWOQBDLayerForExport copy(*map.GetAt(0));
  EXPECT_EQ(copy.m_sBDLayerName, "three");
  EXPECT_EQ(copy.m_nWOQLayID, 3);
  CWOQBDLayerForExport target;
  target = copy;
  EXPECT_EQ(target.m_sBDLayerName, "three");
  EXPECT_EQ(target.m_nWOQLayID, 3);
  const CWOQBDLayerForExport& self = target;
  target = self;
  EXPECT_EQ(target.m_sBDLayerName, "three");
  EXPECT_EQ(target.m_nWOQLayID, 3);
  // A copy is its own.
  copy.m_sBDLayerName = "changed";
  EXPECT_EQ(map.sGetBDLayerNameFromWOQLayID(3), "three");
  // A host may change an entry in place.
  map.GetLastElement()->m_nWOQLayID = 9;
  EXPECT_EQ(map.sGetBDLayerNameFromWOQLayID(7), "");
  EXPECT_EQ(map.sGetBDLayerNameFromWOQLayID(9), "seven");
  map.DeleteAt(0, 1);
  EXPECT_EQ(map.sGetBDLayerNameFromWOQLayID(3), "other");
}

}  // namespace
