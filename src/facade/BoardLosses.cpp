#include "facade/BoardLosses.h"

#include <set>

#include "base/CGProperty.h"
#include "base/WriterText.h"
#include "board/CBDboardContainer.h"
#include "board/CBDcompGroup.h"
#include "board/CBDcomponent.h"
#include "board/CBDgate.h"
#include "board/CBDlayerParameter.h"
#include "board/CBDlibraryEntities.h"
#include "board/CBDnet.h"
#include "board/CBDparameter.h"
#include "board/CBDpin.h"
#include "board/CBDsubBoard.h"
#include "board/CBDtextSize.h"
#include "board/CBDvisibleLayerSet.h"
#include "drawobj/CBDdrawObj.h"
#include "facade/ShapeLosses.h"
#include "technology/CBDfootprint.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDpad.h"
#include "technology/CBDpadstack.h"

namespace laminate {

namespace {

// ---- nets ----

constexpr auto kNet =
    Losses<CBDnet>("CBDnet", QuotedDoubled<&CBDnet::m_sName, false>(), Bare<&CBDnet::m_sType>(),
                   Constant<&CBDnet::m_sLockMode, "UNFIXED">(), Bare<&CBDnet::m_sPen>(),
                   Constant<&CBDnet::m_sRatsNest, "YES">("NO for \"drawRatsNest\" and YES for \"rebuildRatsNest\""),
                   Kept<&CBDnet::m_pRefPinArray>());
constexpr auto kRefPin = Losses<CBDrefPin>("CBDrefPin", Bare<&CBDrefPin::m_sComp>(), Bare<&CBDrefPin::m_sPin>());

// ---- components ----

bool LosesGateCount(const CBDcomponent& p, std::string& sValue) {
  sValue = std::to_string(p.m_nGateCount);
  return p.m_nGateCount != 0 && p.m_nGateCount != CountOf(p.m_pGateArray);
}
bool LosesOriginalReference(const CBDcomponent& p, std::string& sValue) {
  sValue = ValueText(p.m_sOriginalReference);
  return !p.m_sOriginalReference.IsEmpty() && p.m_sOriginalReference != p.m_sReference;
}
bool LosesPackageSymbol(const CBDcomponent& p, std::string& sValue) {
  sValue = ValueText(p.m_sPackageSymbol);
  return !sValue.empty() && !(sValue == "YES" && CountOf(p.m_pGateArray) == 1);
}
bool LosesScale(const CBDcomponent& p, std::string& sValue) {
  if (p.m_dScale == 1.0) return false;
  if (p.m_pPropertyArray != nullptr) {
    for (const CGProperty* pProperty : *p.m_pPropertyArray) {
      if (pProperty != nullptr && pProperty->m_sItem == "Scale" && Atof(pProperty->m_sComment.View()) == p.m_dScale) {
        return false;
      }
    }
  }
  sValue = ValueText(p.m_dScale);
  return true;
}

constexpr auto kComponent = Losses<CBDcomponent>(
    "CBDcomponent", Custom<CBDcomponent>("m_dScale", Fate::dropped, "unless a property \"Scale\" says it", &LosesScale),
    Bare<&CBDcomponent::m_sReference>(),
    Custom<CBDcomponent>("m_nGateCount", Fate::normalised, "the number of gates", &LosesGateCount),
    Kept<&CBDcomponent::m_nPinCount>(),
    QuotedIf<&CBDcomponent::m_sPart, true, "() ">("in quotes only if it holds a bracket or a blank"),
    Bare<&CBDcomponent::m_sStockId>(), Bare<&CBDcomponent::m_sPackage>(), Bare<&CBDcomponent::m_sFootprintSpec>(),
    Bare<&CBDcomponent::m_sFootprint>(), Bare<&CBDcomponent::m_sReverseFootprint>(),
    Custom<CBDcomponent>("m_sOriginalReference", Fate::normalised, "the reference stands in its place",
                         &LosesOriginalReference),
    Bare<&CBDcomponent::m_sPlaced>(), Bare<&CBDcomponent::m_sPlacementSide>(), Bare<&CBDcomponent::m_sLocationLock>(),
    Bare<&CBDcomponent::m_sAngleLock>(), Bare<&CBDcomponent::m_sPlacementSideLock>(),
    Custom<CBDcomponent>("m_sPackageSymbol", Fate::normalised, "YES for exactly one gate, else nothing",
                         &LosesPackageSymbol),
    Constant<&CBDcomponent::m_sOutOfBoard, "NO">(), Length<&CBDcomponent::m_ptOutOfBoardLocation>(),
    Length<&CBDcomponent::m_ptLocation>(), Length<&CBDcomponent::m_ptMinRect1>(), Length<&CBDcomponent::m_ptMinRect2>(),
    Length<&CBDcomponent::m_dAngle>(), Constant<&CBDcomponent::m_sDrawRefDes, "NO">(),
    Kept<&CBDcomponent::m_pDrawObjArray>("but for shapes without a layer name"), Kept<&CBDcomponent::m_pGateArray>(),
    Kept<&CBDcomponent::m_pPinArray>(), Told<&CBDcomponent::m_pPropertyArray>(Fate::normalised, "without quotes"),
    Kept<&CBDcomponent::m_aVerbatim>());
constexpr auto kGate = Losses<CBDgate>("CBDgate", Bare<&CBDgate::m_sId>(), Constant<&CBDgate::m_sLockMode, "UNFIXED">(),
                                       Kept<&CBDgate::m_pGatePinArray>("in a form whose pins are not read"));
constexpr auto kGatePin = Losses<CBDgatePin>("CBDgatePin", QuotedDoubled<&CBDgatePin::m_sName, false>(),
                                             Constant<&CBDgatePin::m_sLockMode, "UNFIXED">());
constexpr auto kPin = Losses<CBDpin>("CBDpin", Told<&CBDpin::m_pBondwireArray>(Fate::dropped, {}),
                                     Kept<&CBDpin::m_pPinGateArray>(), BareDoubled<&CBDpin::m_sName>(),
                                     Kept<&CBDpin::m_pDrawObjArray>("but for shapes without a layer name"),
                                     Length<&CBDpin::m_ptLocation>());
constexpr auto kPinGate =
    Losses<CBDpinGate>("CBDpinGate", Kept<&CBDpinGate::m_nGate>(), BareDoubled<&CBDpinGate::m_sName>());
constexpr auto kGroup =
    Losses<CBDcompGroup>("CBDcompGroup", Bare<&CBDcompGroup::m_sName>(), Bare<&CBDcompGroup::m_aList>(),
                         Constant<&CBDcompGroup::m_sSide, "BOTH_SIDES">(), Constant<&CBDcompGroup::m_nPen, "0">(),
                         Kept<&CBDcompGroup::m_pDrawObjArray>("but for shapes without a layer name"));
constexpr auto kBoard = Losses<CBDboardContainer>(
    "CBDboardContainer", Kept<&CBDboardContainer::m_pComponentArray>(), Kept<&CBDboardContainer::m_pCompGroupArray>(),
    Kept<&CBDboardContainer::m_pNetArray>(), Kept<&CBDboardContainer::m_pDrawObjArray>("gathered by layer"),
    Told<&CBDboardContainer::m_pSubBoardArray>(Fate::dropped, {}));

void FindComponentLosses(const CBDcomponent& component, LossFinder& finder) {
  kComponent.Find(component, finder);
  FindShapeLosses("m_pDrawObjArray", component.m_pDrawObjArray, ExportPlace::component, finder);
  ForEachElement(finder, "m_pGateArray", component.m_pGateArray, [&finder](const CBDgate& gate) {
    kGate.Find(gate, finder);
    ForEachElement(finder, "m_pGatePinArray", gate.m_pGatePinArray,
                   [&finder](const CBDgatePin& pin) { kGatePin.Find(pin, finder); });
  });
  ForEachElement(
      finder, "m_pPinArray", component.m_pPinArray, [](const CBDpin& pin) { return pin.m_sName.View(); },
      [&finder](const CBDpin& pin) {
        kPin.Find(pin, finder);
        if (CountOf(pin.m_pBondwireArray) != 0) {
          finder.Tell("CBDpin", "m_pBondwireArray", Fate::dropped, {}, std::to_string(CountOf(pin.m_pBondwireArray)));
        }
        ForEachElement(finder, "m_pPinGateArray", pin.m_pPinGateArray,
                       [&finder](const CBDpinGate& gate) { kPinGate.Find(gate, finder); });
        FindShapeLosses("m_pDrawObjArray", pin.m_pDrawObjArray, ExportPlace::pin, finder);
      });
  ForEachElement(
      finder, "m_pPropertyArray", component.m_pPropertyArray,
      [](const CGProperty& property) { return property.m_sItem.View(); },
      [&finder](const CGProperty& property) {
        if (!ReadsBackBare(property.m_sItem.View()) || !ReadsBackBare(property.m_sComment.View())) {
          finder.Tell("CGProperty", {}, Fate::normalised, "without quotes",
                      ValueText(property.m_sItem) + " " + ValueText(property.m_sComment));
        }
      });
}

// ---- parameters and claims on the library ----

constexpr auto kParameter = Losses<CBDparameter>(
    "CBDparameter", Told<&CBDparameter::m_pVisibleLayerSetArray>(Fate::dropped, {}),
    Told<&CBDparameter::m_pTextSizeArray>(Fate::dropped, {}), Kept<&CBDparameter::m_pLayerParameterArray>());

bool LosesHeader(const CBDlayerParameter& p, std::string& sValue) {
  sValue = ValueText(p.m_sLayerType);
  return p.m_sLayerType != "conductive" && p.m_sLayerType != "nonConductive" && p.m_sLayerType != "systemLayer";
}
bool LosesName(const CBDlayerParameter& p, std::string& sValue) {
  std::string sHeader;
  if (LosesHeader(p, sHeader)) return false;
  const std::string_view name = p.m_sLayerName.View();
  sValue = std::string(name);
  if (p.m_sLayerType == "conductive") return !name.empty() && name != std::to_string(p.m_nLayerNumber);
  return name.find_first_of("()") == std::string_view::npos ? !ReadsBackBare(name) : !ReadsBackQuoted(name, true);
}
constexpr auto kLayerParameter = Losses<CBDlayerParameter>(
    "CBDlayerParameter",
    Custom<CBDlayerParameter>("m_sLayerType", Fate::normalised,
                              "of none of the three the header is missing, and a bracket is closed too many",
                              &LosesHeader),
    Custom<CBDlayerParameter>("m_sLayerName", Fate::normalised, "the number of a conductive layer", &LosesName),
    Kept<&CBDlayerParameter::m_nLayerNumber>("for hosts: reading a layer parameter takes none of its layer back"),
    Kept<&CBDlayerParameter::m_nColorId>(), Kept<&CBDlayerParameter::m_nPriority>(),
    Dropped<&CBDlayerParameter::m_sDisplayMode>("EMPTY is written, under a keyword that is not read"),
    Constant<&CBDlayerParameter::m_nHatchAngle, "45">(), Constant<&CBDlayerParameter::m_nHatchPitch, "20">(),
    Constant<&CBDlayerParameter::m_sMrcMode, "OFF">());

constexpr std::string_view kFromDesign = "written from the components and the library";
constexpr auto kEntities =
    Losses<CBDlibraryEntities>("CBDlibraryEntities", Told<&CBDlibraryEntities::m_aParts>(Fate::normalised, kFromDesign),
                               Told<&CBDlibraryEntities::m_aPackages>(Fate::normalised, kFromDesign),
                               Told<&CBDlibraryEntities::m_pLibFootprintArray>(Fate::normalised, kFromDesign),
                               Told<&CBDlibraryEntities::m_pLibPadstackArray>(Fate::normalised, kFromDesign),
                               Told<&CBDlibraryEntities::m_pLibPadArray>(Fate::normalised, kFromDesign));

// In order, for a file may choose its names so that those of a hash table collide.
using Names = std::set<std::string_view>;

template <auto kName, class X>
Names NamesOf(const CExPtrArray<X*, X*>* pArray) {
  Names names;
  if (pArray == nullptr) return names;
  for (const X* p : *pArray) {
    if (p != nullptr) names.insert((p->*kName).View());
  }
  return names;
}

template <class ReadsBack>
void FindUnclaimed(std::string_view sField, const CStringArray& claimed, const Names& written, ReadsBack readsBack,
                   LossFinder& finder) {
  for (const CString& s : claimed) {
    if (!s.IsEmpty() && !(written.contains(s.View()) && readsBack(s))) {
      finder.Tell("CBDlibraryEntities", sField, Fate::dropped, kFromDesign, ValueText(s));
    }
  }
}
template <class X>
void FindUnclaimed(std::string_view sField, const CExPtrArray<X*, X*>* pClaimed, const Names& written,
                   LossFinder& finder) {
  if (pClaimed == nullptr) return;
  for (const X* p : *pClaimed) {
    if (p == nullptr || p->m_sName.IsEmpty()) continue;
    // Each object is claimed for its own side and for the other one.
    bool bWritten = written.contains(p->m_sName.View()) && ReadsBackBare(p->m_sName.View()) &&
                    (p->m_sSide.IsEmpty() || p->m_sSide == "B");
    std::string sValue = ValueText(p->m_sName);
    if (!p->m_sSide.IsEmpty()) sValue += " " + ValueText(p->m_sSide);
    if constexpr (requires { p->m_sFlip; }) {
      bWritten = bWritten && (p->m_sSide.IsEmpty() ? p->m_sFlip.IsEmpty() : p->m_sFlip == "X");
      if (!p->m_sFlip.IsEmpty()) sValue += " " + ValueText(p->m_sFlip);
    }
    if (!bWritten) finder.Tell("CBDlibraryEntities", sField, Fate::dropped, kFromDesign, sValue);
  }
}

}  // namespace

void FindBoardLosses(const CBDboardContainer& board, LossFinder& finder) {
  ForEachElement(
      finder, "m_pComponentArray", board.m_pComponentArray,
      [](const CBDcomponent& component) { return component.m_sReference.View(); },
      [&finder](const CBDcomponent& component) { FindComponentLosses(component, finder); });
  const auto name = [](const auto& object) { return object.m_sName.View(); };
  ForEachElement(finder, "m_pCompGroupArray", board.m_pCompGroupArray, name, [&finder](const CBDcompGroup& group) {
    kGroup.Find(group, finder);
    FindShapeLosses("m_pDrawObjArray", group.m_pDrawObjArray, ExportPlace::group, finder);
  });
  ForEachElement(finder, "m_pNetArray", board.m_pNetArray, name, [&finder](const CBDnet& net) {
    kNet.Find(net, finder);
    ForEachElement(finder, "m_pRefPinArray", net.m_pRefPinArray,
                   [&finder](const CBDrefPin& pin) { kRefPin.Find(pin, finder); });
  });
  FindLayoutLosses("m_pDrawObjArray", board.m_pDrawObjArray, finder);
  ForEachElement(finder, "m_pSubBoardArray", board.m_pSubBoardArray, [&finder](const CBDsubBoard& subBoard) {
    finder.Tell("CBDsubBoard", {}, Fate::dropped, {},
                std::to_string(subBoard.m_nId) + " " + ValueText(subBoard.m_sRelativePath));
  });
}

void FindParameterLosses(const CBDparameter& parameter, LossFinder& finder) {
  ForEachElement(
      finder, "m_pVisibleLayerSetArray", parameter.m_pVisibleLayerSetArray,
      [](const CBDvisibleLayerSet& set) { return set.m_sName.View(); },
      [&finder](const CBDvisibleLayerSet& set) {
        finder.Tell("CBDvisibleLayerSet", {}, Fate::dropped, {}, ValueText(set.m_sName));
      });
  ForEachElement(finder, "m_pTextSizeArray", parameter.m_pTextSizeArray, [&finder](const CBDtextSize& size) {
    finder.Tell("CBDtextSize", {}, Fate::dropped, {}, std::to_string(size.m_nId));
  });
  ForEachElement(finder, "m_pLayerParameterArray", parameter.m_pLayerParameterArray,
                 [&finder](const CBDlayerParameter& p) { kLayerParameter.Find(p, finder); });
}

void FindEntityLosses(const CBDlibraryEntities& entities, const CBDboardContainer& board,
                      const CBDfootprintContainer& library, LossFinder& finder) {
  using Part = ledger_detail::QuotedIfTest<"() ", true>;
  FindUnclaimed(
      "m_aParts", entities.m_aParts, NamesOf<&CBDcomponent::m_sPart>(board.m_pComponentArray),
      [](const CString& s) { return !Part::Lost(s, {}); }, finder);
  FindUnclaimed(
      "m_aPackages", entities.m_aPackages, NamesOf<&CBDcomponent::m_sPackage>(board.m_pComponentArray),
      [](const CString& s) { return ReadsBackBare(s.View()); }, finder);
  FindUnclaimed("m_pLibFootprintArray", entities.m_pLibFootprintArray,
                NamesOf<&CBDfootprint::m_sName>(library.m_pFootprintArray), finder);
  FindUnclaimed("m_pLibPadstackArray", entities.m_pLibPadstackArray,
                NamesOf<&CBDpadstack::m_sName>(library.m_pPadstackArray), finder);
  FindUnclaimed("m_pLibPadArray", entities.m_pLibPadArray, NamesOf<&CBDpad::m_sName>(library.m_pPadArray), finder);
}

void ListBoardLedger(std::vector<RecordLedgerLine>& lines) {
  const auto list = [&lines](const auto&... tables) { (tables.List(lines), ...); };
  list(kBoard, kComponent, kGate, kGatePin, kPin, kPinGate, kGroup, kNet, kRefPin, kParameter, kLayerParameter,
       kEntities);
}

}  // namespace laminate
