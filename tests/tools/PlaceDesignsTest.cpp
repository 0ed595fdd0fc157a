// Every footprint of every library of LAMINATE_DESIGNS is placed on both sides at several angles, and drawn.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "base/Designs.h"
#include "base/HostInterface.h"
#include "board/CBDboardContainer.h"
#include "board/CBDcomponent.h"
#include "board/CBDpin.h"
#include "drawobj/CBDdrawObj.h"
#include "drawobj/CBDdrawPad.h"
#include "drawobj/CBDdrawPadstack.h"
#include "facade/CBDesigner.h"
#include "facade/CPC_BD_Cls_Get.h"
#include "render/Picture.h"
#include "render/Scene.h"
#include "technology/CBDfootprint.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDheelprint.h"
#include "technology/CBDtoeprintPin.h"

namespace laminate::cli {

namespace {

class Boxes : public CHostInterface {
 public:
  int OnAfxMessageBox(const CString& sText, UINT, UINT) override {
    texts.emplace(sText.View());
    return IDOK;
  }
  std::set<std::string> texts;

 private:
  CHostInterfaceScope m_scope{*this};
};

bool HoldsRoundThermal(const CBDdrawObjArray& shapes) {
  return std::any_of(shapes.begin(), shapes.end(), [](const CBDdrawObj* p) {
    if (p->m_sKind == "ROUNDTHERMAL") return true;
    const auto* pPad = dynamic_cast<const CBDdrawPad*>(p);
    return pPad != nullptr && HoldsRoundThermal(*pPad->m_pShapes);
  });
}

// A round thermal cannot be copied, and so not placed.
bool CannotBePlaced(const CBDfootprint& footprint) {
  return HoldsRoundThermal(*footprint.m_pHeelprint->m_pDrawObjArray) ||
         std::any_of(footprint.m_pToeprintPinArray->begin(), footprint.m_pToeprintPinArray->end(),
                     [](const CBDtoeprintPin* p) { return HoldsRoundThermal(*p->m_pDrawObjArray); });
}

struct PlaceDesigns : testing::TestWithParam<std::string> {
  CPC_BD_Cls_Get facade;
  CBDesigner& root = *facade.pGetBDesigner();
  PlaceDesigns() {
    facade.vSetFtfFilePath(test::DesignFile(GetParam(), ".ftf").c_str());
    facade.vSetPcfFilePath(test::DesignFile(GetParam(), ".pcf").c_str());
    facade.vParseFtfAndPcf(0);
    EXPECT_TRUE(facade.GetLoadStatus().IsOk()) << facade.GetLoadStatus().m_sText.GetString();
  }
};

TEST_P(PlaceDesigns, EveryFootprintIsPlacedAndDrawn) {
  const Boxes boxes;
  int nPads = 0;
  const CPointD location(12.5, -7.25);
  EXPECT_GT(root.m_pFootprintContainer->m_pFootprintArray->GetSize(), 0);
  for (CBDfootprint* pFootprint : *root.m_pFootprintContainer->m_pFootprintArray) {
    for (const char* szSide : {"A", "B"}) {
      for (const double dAngle : {0.0, 30.0, 90.0, 315.0}) {
        const std::string sWhat =
            std::string(pFootprint->m_sName.View()) + " on " + szSide + " at " + std::to_string(dAngle);
        std::unique_ptr<CBDcomponent> pComponent;
        try {
          pComponent.reset(pFootprint->pGetComponentFromFootprint(root.m_pTechnology, szSide, dAngle, location, 1.0));
        } catch (const CInvalidArgException& e) {
          EXPECT_TRUE(CannotBePlaced(*pFootprint)) << sWhat << ": " << e.what();
          continue;
        }
        EXPECT_FALSE(CannotBePlaced(*pFootprint)) << sWhat;
        EXPECT_EQ(pComponent->m_pPinArray->GetSize(), pFootprint->m_pToeprintPinArray->GetSize()) << sWhat;
        EXPECT_EQ(pComponent->m_pDrawObjArray->GetSize(), pFootprint->m_pHeelprint->m_pDrawObjArray->GetSize())
            << sWhat;

        Scene scene(root, {});
        scene.AddComponent(*pComponent);
        EXPECT_EQ(scene.CountUndefined(), 0u) << sWhat;
        const Box frame = BoundsOf(scene);
        std::size_t nBytes = 0;
        DrawPicture(scene, frame, {}, [&nBytes](std::string_view s) { nBytes += s.size(); });
        EXPECT_GT(nBytes, 300u) << sWhat;
        // The picture reaches every pad.
        for (const CBDpin* pPin : *pComponent->m_pPinArray) {
          for (const CBDdrawObj* pShape : *pPin->m_pDrawObjArray) {
            const auto* pPad = dynamic_cast<const CBDdrawPadstack*>(pShape);
            if (pPad == nullptr) continue;
            const Vec pt(pPad->m_pt);
            EXPECT_TRUE(frame.low.x <= pt.x && pt.x <= frame.high.x && frame.low.y <= pt.y && pt.y <= frame.high.y)
                << sWhat << ", pin " << pPin->m_sName.GetString();
            ++nPads;
          }
        }
      }
    }
  }
  EXPECT_GT(nPads, 0);
  for (const std::string& sText : boxes.texts) {
    EXPECT_TRUE(sText == "Mult-Layer Or Zero Size Board Layer Found!" ||
                sText == "You tried to MoveRotate() for UNKNOWN drawObj type - OBLONG.")
        << sText;
  }
}

TEST_P(PlaceDesigns, PinsOfPlacedFootprintsLieWhereTheComponentHasThem) {
  // The designs have their pins where their footprints bring them, rounded to the resolution of the file.
  int nPins = 0;
  for (const CBDcomponent* pComponent : *root.m_pBoardContainer->m_pComponentArray) {
    CBDfootprint* pFootprint = root.m_pFootprintContainer->pGetFootprintWithName(pComponent->m_sFootprint);
    ASSERT_NE(pFootprint, nullptr) << pComponent->m_sFootprint.GetString();
    if (CannotBePlaced(*pFootprint)) continue;
    const std::unique_ptr<CBDcomponent> pPlaced(pFootprint->pGetComponentFromFootprint(
        root.m_pTechnology, pComponent->m_sPlacementSide, pComponent->m_dAngle, pComponent->m_ptLocation, 1.0));
    for (const CBDpin* pPin : *pComponent->m_pPinArray) {
      bool bFound = false;
      for (const CBDpin* pOther : *pPlaced->m_pPinArray) {
        bFound = bFound ||
                 (pOther->m_sName == pPin->m_sName && std::abs(pOther->m_ptLocation.x - pPin->m_ptLocation.x) < 2e-5 &&
                  std::abs(pOther->m_ptLocation.y - pPin->m_ptLocation.y) < 2e-5);
      }
      EXPECT_TRUE(bFound) << pComponent->m_sReference.GetString() << "." << pPin->m_sName.GetString();
      ++nPins;
    }
  }
  EXPECT_GT(nPins, 0);
}

INSTANTIATE_TEST_SUITE_P(All, PlaceDesigns, testing::ValuesIn(test::DesignNames()), test::NameOfDesignTest);

}  // namespace

}  // namespace laminate::cli
