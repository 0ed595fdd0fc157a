#include "facade/LibraryLosses.h"

#include <set>
#include <utility>

#include "base/CLProperty.h"
#include "drawobj/CBDhole.h"
#include "facade/ShapeLosses.h"
#include "technology/CBDcondLayer.h"
#include "technology/CBDfootprint.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDfootprintLayer.h"
#include "technology/CBDheelprint.h"
#include "technology/CBDmap.h"
#include "technology/CBDnonConductiveLayer.h"
#include "technology/CBDpad.h"
#include "technology/CBDpadstack.h"
#include "technology/CBDsubLayer.h"
#include "technology/CBDtechnologyContainer.h"
#include "technology/CBDtoeprintPin.h"

namespace laminate {

namespace {

constexpr auto kTechnology = Losses<CBDtechnologyContainer>(
    "CBDtechnologyContainer", Bare<&CBDtechnologyContainer::m_sName>(),
    Kept<&CBDtechnologyContainer::m_nConductorLayers>(), Kept<&CBDtechnologyContainer::m_pFootprintLayerArray>(),
    Kept<&CBDtechnologyContainer::m_pNonConductiveLayerArray>(), Kept<&CBDtechnologyContainer::m_pCondLayerArray>(),
    Kept<&CBDtechnologyContainer::m_pSubLayerArray>("but for those of another kind than the three"),
    Kept<&CBDtechnologyContainer::m_pMapArray>());
constexpr auto kFootprintLayer = Losses<CBDfootprintLayer>(
    "CBDfootprintLayer", QuotedIf<&CBDfootprintLayer::m_sName, false>(), Bare<&CBDfootprintLayer::m_sType>());
constexpr auto kNonConductiveLayer = Losses<CBDnonConductiveLayer>(
    "CBDnonConductiveLayer", Dropped<&CBDnonConductiveLayer::m_nSortKey>(), QuotedIf<&CBDnonConductiveLayer::m_sName>(),
    Kept<&CBDnonConductiveLayer::m_aProperties>("in a form that is not read"));
constexpr auto kCondLayer = Losses<CBDcondLayer>(
    "CBDcondLayer", Kept<&CBDcondLayer::m_nLayerNumber>(), Dropped<&CBDcondLayer::m_nProperty>(),
    Bare<&CBDcondLayer::m_sType>(), Bare<&CBDcondLayer::m_sSoldering>(),
    Kept<&CBDcondLayer::m_aProperties>("in a form that is not read"), Kept<&CBDcondLayer::m_pRefArray>());
constexpr auto kCondLayerRef = Losses<CBDcondLayerRef>("CBDcondLayerRef", QuotedIf<&CBDcondLayerRef::m_sName, false>(),
                                                       Bare<&CBDcondLayerRef::m_sType>(),
                                                       Told<&CBDcondLayerRef::m_nUserDefType>(Fate::constant, "0"));
constexpr auto kSubLayer =
    Losses<CBDsubLayer>("CBDsubLayer", Told<&CBDsubLayer::m_sKind>(Fate::dropped, "no file sets it"),
                        Kept<&CBDsubLayer::m_sLayerKind>(), QuotedIf<&CBDsubLayer::m_sName>());
constexpr auto kMap = Losses<CBDmap>("CBDmap", Bare<&CBDmap::m_sName>(), Kept<&CBDmap::m_pCorrespondenceArray>());

bool LosesBoardLayer(const CBDcorrespondence& p, std::string& sValue) {
  for (const CString& s : p.m_aBoardLayers) {
    const int n = Atoi(s.View());
    const bool bKept = n >= 1 && n <= kMaxConductiveLayer
                           ? s.View() == std::to_string(n)
                           : (s.View().find_first_of("()") == std::string_view::npos ? ReadsBackBare(s.View())
                                                                                     : ReadsBackQuoted(s.View(), true));
    if (bKept) continue;
    sValue = ValueText(s);
    return true;
  }
  return false;
}
constexpr auto kCorrespondence = Losses<CBDcorrespondence>(
    "CBDcorrespondence", QuotedIf<&CBDcorrespondence::m_sFootLayer>(),
    Custom<CBDcorrespondence>(
        "m_aBoardLayers", Fate::normalised,
        "the number alone where a name begins with one from 1 to 36; in quotes only if it holds a "
        "bracket",
        &LosesBoardLayer));

constexpr auto kPad =
    Losses<CBDpad>("CBDpad", Kept<&CBDpad::m_nUver>("in a form that is not read"), Bare<&CBDpad::m_sName>(),
                   Kept<&CBDpad::m_pDrawObjArray>(), Kept<&CBDpad::m_rcArea>("in a form that is not read"));
constexpr auto kPadstack = Losses<CBDpadstack>(
    "CBDpadstack", Kept<&CBDpadstack::m_nUver>("in a form that is not read"), Bare<&CBDpadstack::m_sName>(),
    Bare<&CBDpadstack::m_sType>(), Bare<&CBDpadstack::m_sThroughMode>(), Bare<&CBDpadstack::m_sIsBuildupVia>(),
    Kept<&CBDpadstack::m_pHole>("the shape of the hole alone"),
    Kept<&CBDpadstack::m_pPadSetArray>("but for those without a pad"),
    Kept<&CBDpadstack::m_rcArea>("in a form that is not read"), Kept<&CBDpadstack::m_aVerbatim>());
constexpr auto kPadstackHole =
    Losses<CBDpadstackHole>("CBDpadstackHole", Kept<&CBDpadstackHole::m_sFootLayer>("in a form that is not read"),
                            Kept<&CBDpadstackHole::m_pDrawObj>());
constexpr auto kPadSet = Losses<CBDpadSet>("CBDpadSet", Bare<&CBDpadSet::m_sFootLayer>(),
                                           Bare<&CBDpadSet::m_sConnect>(), Bare<&CBDpadSet::m_sNoConnect>(),
                                           Bare<&CBDpadSet::m_sThermal>(), Bare<&CBDpadSet::m_sClearance>());
constexpr auto kFootprint = Losses<CBDfootprint>(
    "CBDfootprint", Kept<&CBDfootprint::m_rcArea>("as the area; no reader sets it"),
    Told<&CBDfootprint::m_pPropertyArray>(Fate::normalised, "without quotes"), Kept<&CBDfootprint::m_nUver>(),
    Bare<&CBDfootprint::m_sName>(), Dropped<&CBDfootprint::m_ptBox1>("the area is made of m_rcArea"),
    Dropped<&CBDfootprint::m_ptBox2>("the area is made of m_rcArea"), Kept<&CBDfootprint::m_pHeelprint>(),
    Kept<&CBDfootprint::m_pToeprintPinArray>(), Kept<&CBDfootprint::m_aVerbatim>());
constexpr auto kHeelprint = Losses<CBDheelprint>("CBDheelprint", Kept<&CBDheelprint::m_pDrawObjArray>());
constexpr auto kToeprintPin =
    Losses<CBDtoeprintPin>("CBDtoeprintPin", Bare<&CBDtoeprintPin::m_sName>(), Length<&CBDtoeprintPin::m_ptLocation>(),
                           Kept<&CBDtoeprintPin::m_pDrawObjArray>());

void FindFootprintLosses(const CBDfootprint& footprint, LossFinder& finder) {
  kFootprint.Find(footprint, finder);
  ForEachElement(
      finder, "m_pPropertyArray", footprint.m_pPropertyArray,
      [](const CLProperty& property) { return property.m_sItem.View(); },
      [&finder](const CLProperty& property) {
        if (!ReadsBackBare(property.m_sItem.View()) || !ReadsBackBare(property.m_sComment.View())) {
          finder.Tell("CLProperty", {}, Fate::normalised, "without quotes",
                      ValueText(property.m_sItem) + " " + ValueText(property.m_sComment));
        }
      });
  if (footprint.m_pHeelprint != nullptr) {
    const LossFinder::Step step(finder, "m_pHeelprint");
    FindShapeLosses("m_pDrawObjArray", footprint.m_pHeelprint->m_pDrawObjArray, ExportPlace::heelprint, finder);
  }
  ForEachElement(
      finder, "m_pToeprintPinArray", footprint.m_pToeprintPinArray,
      [](const CBDtoeprintPin& pin) { return pin.m_sName.View(); },
      [&finder](const CBDtoeprintPin& pin) {
        kToeprintPin.Find(pin, finder);
        FindShapeLosses("m_pDrawObjArray", pin.m_pDrawObjArray, ExportPlace::toeprint, finder);
      });
}

void FindPadstackLosses(const CBDpadstack& padstack, LossFinder& finder) {
  kPadstack.Find(padstack, finder);
  if (padstack.m_pHole != nullptr && padstack.m_pHole->m_pDrawObj != nullptr) {
    const LossFinder::Step hole(finder, "m_pHole");
    const LossFinder::Step shape(finder, "m_pDrawObj");
    FindHoleLosses(*padstack.m_pHole->m_pDrawObj, finder);
  }
  ForEachElement(finder, "m_pPadSetArray", padstack.m_pPadSetArray, [&finder](const CBDpadSet& set) {
    const bool bPad = !set.m_sConnect.IsEmpty() || !set.m_sNoConnect.IsEmpty() || !set.m_sThermal.IsEmpty() ||
                      !set.m_sClearance.IsEmpty();
    if (bPad) {
      kPadSet.Find(set, finder);
    } else {
      finder.Tell("CBDpadSet", {}, Fate::dropped, "without a pad", ValueText(set.m_sFootLayer));
    }
  });
}

}  // namespace

void FindTechnologyLosses(const CBDtechnologyContainer& technology, LossFinder& finder) {
  kTechnology.Find(technology, finder);
  const auto name = [](const auto& object) { return object.m_sName.View(); };
  ForEachElement(finder, "m_pFootprintLayerArray", technology.m_pFootprintLayerArray, name,
                 [&finder](const CBDfootprintLayer& layer) { kFootprintLayer.Find(layer, finder); });
  ForEachElement(finder, "m_pNonConductiveLayerArray", technology.m_pNonConductiveLayerArray, name,
                 [&finder](const CBDnonConductiveLayer& layer) { kNonConductiveLayer.Find(layer, finder); });
  ForEachElement(finder, "m_pCondLayerArray", technology.m_pCondLayerArray, [&finder](const CBDcondLayer& layer) {
    kCondLayer.Find(layer, finder);
    ForEachElement(finder, "m_pRefArray", layer.m_pRefArray,
                   [&finder](const CBDcondLayerRef& ref) { kCondLayerRef.Find(ref, finder); });
  });
  ForEachElement(finder, "m_pSubLayerArray", technology.m_pSubLayerArray, name, [&finder](const CBDsubLayer& layer) {
    if (layer.m_sLayerKind == "systemLayer" || layer.m_sLayerKind == "conductive" ||
        layer.m_sLayerKind == "nonConductive") {
      kSubLayer.Find(layer, finder);
    } else {
      finder.Tell("CBDsubLayer", {}, Fate::dropped, "of another kind than the three", ValueText(layer.m_sLayerKind));
    }
  });
  ForEachElement(finder, "m_pMapArray", technology.m_pMapArray, name, [&finder](const CBDmap& map) {
    kMap.Find(map, finder);
    ForEachElement(finder, "m_pCorrespondenceArray", map.m_pCorrespondenceArray,
                   [&finder](const CBDcorrespondence& p) { kCorrespondence.Find(p, finder); });
  });
}

void FindFootprintTechnologyLosses(const CBDtechnologyContainer& ofFile, const CBDtechnologyContainer& ofBoard,
                                   LossFinder& finder) {
  constexpr std::string_view kInstead = "the board's technology stands in its place";
  if (!ofFile.m_sName.IsEmpty() && ofFile.m_sName != ofBoard.m_sName) {
    finder.Tell("CBDtechnologyContainer", "m_sName", Fate::dropped, kInstead, ValueText(ofFile.m_sName));
  }
  if (ofFile.m_pFootprintLayerArray == nullptr) return;
  std::set<std::pair<std::string_view, std::string_view>> known;
  if (ofBoard.m_pFootprintLayerArray != nullptr) {
    for (const CBDfootprintLayer* p : *ofBoard.m_pFootprintLayerArray) {
      if (p != nullptr) known.emplace(p->m_sName.View(), p->m_sType.View());
    }
  }
  ForEachElement(
      finder, "m_pFootprintLayerArray", ofFile.m_pFootprintLayerArray,
      [](const CBDfootprintLayer& layer) { return layer.m_sName.View(); },
      [&](const CBDfootprintLayer& layer) {
        if (!known.contains({layer.m_sName.View(), layer.m_sType.View()})) {
          finder.Tell("CBDfootprintLayer", {}, Fate::dropped, kInstead, ValueText(layer.m_sName));
        }
      });
}

void FindLibraryLosses(const CBDfootprintContainer& library, LossFinder& finder) {
  const auto name = [](const auto& object) { return object.m_sName.View(); };
  ForEachElement(finder, "m_pPadArray", library.m_pPadArray, name, [&finder](const CBDpad& pad) {
    kPad.Find(pad, finder);
    FindShapeLosses("m_pDrawObjArray", pad.m_pDrawObjArray, ExportPlace::inside, finder);
  });
  ForEachElement(finder, "m_pPadstackArray", library.m_pPadstackArray, name,
                 [&finder](const CBDpadstack& padstack) { FindPadstackLosses(padstack, finder); });
  ForEachElement(finder, "m_pFootprintArray", library.m_pFootprintArray, name,
                 [&finder](const CBDfootprint& footprint) { FindFootprintLosses(footprint, finder); });
}

void ListLibraryLedger(std::vector<RecordLedgerLine>& lines) {
  const auto list = [&lines](const auto&... tables) { (tables.List(lines), ...); };
  list(kTechnology, kFootprintLayer, kNonConductiveLayer, kCondLayer, kCondLayerRef, kSubLayer, kMap, kCorrespondence,
       kPad, kPadstack, kPadstackHole, kPadSet, kFootprint, kHeelprint, kToeprintPin);
}

}  // namespace laminate
