// A design that is loaded, exported, loaded and exported again. It has every kind of record, but none of the forms
// that do not load once they are written.
#include "CommandRunner.h"
#include "Json.h"

namespace {

const char kDesign[] = R"T((pcf
(header
(version 2.0)
(unit MM)
(timeZone "")
)
(technologyContainer
(technology own
(numberOfConductorLayer 2)
(footprintLayer
(layer Top (type CONDUCTIVE)) (layer "Body(1)" (type COMPAREA))
)
(nonConductiveLayer
(layer "Silk(A)") (layer Mask (propertyI sortKey 4))
)
(conductiveLayer
(layerNumber 1 (type POSI) (soldering REFLOW) (refer Mask (type RESIST) (userDefType 0)))
(layerNumber 2 (type NEGA) (propertyI wiring 2))
)
(subLayer
(systemLayer (type HOLE)) (drawLayerOf (conductive 1)) (infoLayerOf (nonConductive Mask))
)
(layerMapping
(map A
(correspondence (footLayer Top) (boardLayer (conductive 1) (nonConductive Mask)))
(correspondence (footLayer "Body(1)")
(boardLayer (nonConductive "Silk(A)") (systemLayer (type PADSTACK)) (systemLayer (type HOLE))))
)
(map B_THRU (correspondence (footLayer Top) (boardLayer (conductive 2))))
)
)
)
(boardContainer
(components
(component (reference R1)
(gateCount 1) (pinCount 2)
(part "10k (1)") (package P0402) (footprintSpec default) (footprint F1)
(placed YES) (placementSide B) (placementSideLock NO) (angleLock YES) (locationLock YES) (packageSymbol YES)
(outOfBoard NO) (outOfBoardLocation (pt 0.5 0.25)) (location (pt 100000 250000)) (angle 90) (drawRefDes YES)
(layout
(layer (nonConductive Mask)
(refer (line (net GND) (geometry (line (vertex (pt 0.0 0.0 (width 0.1)) (pt 1.0 0.0 (width 0.1)))))))
)
(layer (systemLayer (type PADSTACK))
(padstack S1 (net GND) (pt 1.0 2.0) (fromTo 1 2)
(conductive (layerNumber 1 (status CONNECT)) (layerNumber 2 (status NOCONNECT))))
)
)
(gate 1 (id A))
(pin 1 (pt 1.0 2.0) (gate 1 (name 1))
(layout (layer (systemLayer (type PADSTACK))
(padstack S1 (net GND) (pt 1.0 2.0) (angle 90) (fromTo 1 2) (conductive (layerNumber 1 (status CONNECT)))))))
(pin 2 (pt 3.0 2.0) (gate 1 (name 2)) (bondWire (pt 1.0 1.0) (pt 2.0 2.0)))
(propertyF Scale 2.5) (propertyS value 10k)
)
(component (reference "") (part X) (footprint F2) (outOfBoard NO) (drawRefDes NO))
)
(compGroups
(compGroup Group (list R1 R2) (side TOP) (pen 7)
(layout
(layer (systemLayer (type HOLE)) (donut (out 2.0) (in 1.0) (pt 1.0 1.0)))
)
)
)
(nets
(net "VCC 3V3" (type POWER) (lockMode FIXED) (pen 1) (rebuildRatsNest YES) (comp R1 (pin 1)) (comp R2 (pin 1)))
(net GND (type NORMAL) (lockMode UNFIXED) (pen 2) (rebuildRatsNest YES) (comp R1 (pin 2)))
)
(boardLayout
(layout
(layer (conductive 1)
(line (net GND) (geometry (line (vertex (pt 0 0 (width 20000))
(arc CW (r 1.0) (begin (pt 1.0 0.0 (width 0.2))) (center 2.0 0.0) (end (pt 3.0 0.0 (width 0.2))))
(pt 4.0 0.0 (width 0.2))))))
(surface (net "VCC 3V3") (geometry (surface (outlineWidth 0.1) (fillWidth 0.2)
(vertex (pt 0.0 0.0) (pt 5.0 0.0) (pt 5.0 5.0))
(openShape (outlineWidth 0.1) (vertex (pt 1.0 1.0) (pt 2.0 1.0) (pt 2.0 2.0))))))
(pad P1 (pt 1.0 2.0) (angle 45))
)
(layer (nonConductive Mask)
(line (geometry (line (vertex (pt 0.0 0.0 (width 0.1)) (pt 1.0 0.0 (width 0.1))))))
(text (geometry (text (string "A (text)") (width 1.0) (height 2.0) (pt 1.0 1.0) (textAngle 90))))
)
)
)
)
(parameter
(textSizeParameters (textSize 1 (width 5) (height 6)))
)
(libraryEntities
(part "10k (1)")
(package P0402)
(footprint F1)
(footprint F1 (side B))
(padstack S1)
(padstack S1 (side B) (flip X))
(pad P1)
(pad P1 (side B) (flip X))
(pad P2)
(pad P2 (side B) (flip X))
)
)
)T";

const char kDesignLibrary[] = R"T((ftf
(technologyContainer
(technology library
(footprintLayer
(layer Top (type CONDUCTIVE)) (layer Other (type SYMBOL))
)
)
)
(footprintContainer
(pads
(pad P1 (uver 3) (photo X) (geometry (rectangle (pt 0.0 0.0) (width 0.8) (height 0.9) (rAngle 45)) (circle 0.5)))
(pad P2)
)
(padstacks
(padstack S1 (type SURFACE) (throughMode NOTHROUGH) (isBuildupVia NO)
(hole (footLayer Hole) (geometry (circle 0.5)))
(padSet (footLayer Top) (connect (pad P1)) (clearance (pad P2)))
(padSet (footLayer Other))
)
)
(footprints
(footprint F1
(heelprint
(layout
(layer (footLayer Top)
(line (geometry (line (vertex (pt 0.5 0.5 (width 0.1)) (pt 1.5 0.5 (width 0.1))))))
)
)
)
(toeprint
(pin 1 (pt 0.0 0.0)
(layout (layer (footLayer FPADSTACK) (fpadstack (pt 0.0 0.0) (padstackGroup default (padstack S1))))))
)
(propertyS item value)
)
)
)
)
)T";

/// Where two dumps differ, as "PATH: A -> B"; arrays of different lengths by these alone.
void ListDifferences(const Json& a, const Json& b, const std::string& sPath, std::vector<std::string>& list) {
  const bool bArrays = a.is_array() && b.is_array();
  if (bArrays && a.size() != b.size()) {
    list.push_back(sPath + ": " + std::to_string(a.size()) + " -> " + std::to_string(b.size()));
  } else if (bArrays) {
    for (std::size_t i = 0; i < a.size(); ++i) ListDifferences(a[i], b[i], sPath + "." + std::to_string(i), list);
  } else if (a.is_object() && b.is_object()) {
    EXPECT_EQ(a.size(), b.size()) << sPath;
    for (const auto& [sKey, value] : a.items()) ListDifferences(value, b.at(sKey), sPath + "." + sKey, list);
  } else if (a != b) {
    list.push_back(sPath + ": " + a.dump() + " -> " + b.dump());
  }
}

struct RoundTrip : CommandTest {
  void Export(const std::string& sFrom, const std::string& sTo) {
    const CommandResult result =
        run({"export", sFrom + ".pcf", "--ftf", sFrom + ".ftf", "-o", sTo, "--loss-report", sTo + ".loss", "--quiet"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
  }
  Json Dump(const std::string& sName) {
    EXPECT_EQ(run({"dump", sName + ".pcf", "--ftf", sName + ".ftf", "-o", "dump.json"}).status, 0);
    return Json::parse(folder.Read("dump.json"));
  }
};

TEST_F(RoundTrip, TheSecondExportIsTheFirst) {
  folder.Write("own.pcf", kDesign);
  folder.Write("own.ftf", kDesignLibrary);
  Export("own", "one");
  Export("one", "two");
  for (const char* szEnding : {".pcf", ".ftf", ".tcf", ".cdf"}) {
    EXPECT_EQ(folder.Read(std::string("one") + szEnding), folder.Read(std::string("two") + szEnding)) << szEnding;
  }
  EXPECT_EQ(Json::parse(folder.Read("two.loss")), Json::array());
  // The technology file stands for itself.
  EXPECT_EQ(run({"check", "one.tcf"}).status, 0);
}

TEST_F(RoundTrip, WhatComesBackIsTheSameButForWhatTheReportTells) {
  folder.Write("own.pcf", kDesign);
  folder.Write("own.ftf", kDesignLibrary);
  Export("own", "one");
  std::vector<std::string> differences;
  ListDifferences(Dump("own"), Dump("one"), "", differences);
  EXPECT_EQ(differences, (std::vector<std::string>{
                             ".m_pTechnology.m_pNonConductiveLayerArray.1.m_nSortKey: 4 -> -1",
                             ".m_pTechnology.m_pCondLayerArray.1.m_nProperty: 2 -> -1",
                             ".m_pFtfTechnology.m_sName: \"library\" -> \"own\"",
                             ".m_pFtfTechnology.m_pFootprintLayerArray.1.m_sName: \"Other\" -> \"Body(1)\"",
                             ".m_pFtfTechnology.m_pFootprintLayerArray.1.m_sType: \"SYMBOL\" -> \"COMPAREA\"",
                             ".m_pFootprintContainer.m_pPadstackArray.0.m_pPadSetArray: 2 -> 1",
                             ".m_pBoardContainer.m_pComponentArray.0.m_sDrawRefDes: \"YES\" -> \"NO\"",
                             ".m_pBoardContainer.m_pComponentArray.0.m_pPinArray.1.m_pBondwireArray: 1 -> 0",
                             ".m_pBoardContainer.m_pCompGroupArray.0.m_sSide: \"TOP\" -> \"BOTH_SIDES\"",
                             ".m_pBoardContainer.m_pCompGroupArray.0.m_nPen: 7 -> 0",
                             ".m_pBoardContainer.m_pNetArray.0.m_sLockMode: \"FIXED\" -> \"UNFIXED\"",
                             ".m_pParameter.m_pTextSizeArray: 1 -> 0",
                         }));
  std::vector<std::string> losses;
  for (const Json& loss : Json::parse(folder.Read("one.loss"))) {
    losses.push_back(loss["object"].get<std::string>() + "." + loss["field"].get<std::string>() + ": " +
                     loss["value"].get<std::string>());
  }
  EXPECT_EQ(losses, (std::vector<std::string>{
                        "m_pTechnology.m_pNonConductiveLayerArray[Mask].m_nSortKey: 4",
                        "m_pTechnology.m_pCondLayerArray[1].m_nProperty: 2",
                        "m_pFtfTechnology.m_sName: library",
                        "m_pFtfTechnology.m_pFootprintLayerArray[Other].: Other",
                        "m_pFootprintContainer.m_pPadstackArray[S1].m_pPadSetArray[1].: Other",
                        "m_pBoardContainer.m_pComponentArray[R1].m_sDrawRefDes: YES",
                        "m_pBoardContainer.m_pComponentArray[R1].m_pPinArray[2].m_pBondwireArray: 1",
                        "m_pBoardContainer.m_pCompGroupArray[Group].m_sSide: TOP",
                        "m_pBoardContainer.m_pCompGroupArray[Group].m_nPen: 7",
                        "m_pBoardContainer.m_pNetArray[VCC 3V3].m_sLockMode: FIXED",
                        "m_pParameter.m_pTextSizeArray[0].: 1",
                    }));
}

}  // namespace
