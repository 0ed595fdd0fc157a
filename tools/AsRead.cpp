#include "AsRead.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "base/Number.h"
#include "board/CBDboardContainer.h"
#include "board/CBDpin.h"
#include "board/LayerForms.h"
#include "drawobj/CBDdrawObj.h"
#include "drawobj/CBDdrawPadstack.h"
#include "drawobj/CBDsurface.h"
#include "save/SourceDesign.h"
#include "save/WrittenForms.h"
#include "technology/CBDcondLayer.h"
#include "technology/CBDfootprint.h"
#include "technology/CBDnonConductiveLayer.h"
#include "technology/CBDsubLayer.h"
#include "technology/CBDtechnologyContainer.h"
#include "technology/FootprintLayers.h"

namespace laminate::cli {

namespace {

constexpr std::string_view kPadstacks = "PADSTACK";
constexpr int kComponentLevel = 3;  // "pcf", "boardContainer" and "components" are open

// The type of a board's layer, by the technology; a layer that it does not know has the type that is given.
CString TypeOfLayer(const CBDtechnologyContainer& technology, const CString& sName, const CString& sOtherwise) {
  if (sName.IsEmpty()) return {};
  for (const CBDcondLayer* p : *technology.m_pCondLayerArray) {
    if (std::to_string(p->m_nLayerNumber) == sName.View()) return CString(kConductive);
  }
  for (const CBDnonConductiveLayer* p : *technology.m_pNonConductiveLayerArray) {
    if (p->m_sName == sName) return CString(kNonConductive);
  }
  for (const CBDsubLayer* p : *technology.m_pSubLayerArray) {
    if (p->m_sName == sName && NamesLayer(p->m_sLayerKind.View())) return p->m_sLayerKind;
  }
  if (sName == kPadstacks) return CString(kSystemLayer);
  return sOtherwise.IsEmpty() ? CString(kNonConductive) : sOtherwise;
}

// Puts the shapes of a placed component on the layers of the board, for a scope.
class OnBoardLayers {
 public:
  OnBoardLayers(CBDcomponent& component, CBDtechnologyContainer& technology) : m_technology(technology) {
    for (CBDpin* pPin : *component.m_pPinArray) {
      for (CBDdrawObj* p : *pPin->m_pDrawObjArray) {
        // Placing leaves the shapes of pins on the layers of the footprint.
        const CString sLayer = p->m_sLayerName == kPadstackLayer
                                   ? CString(kPadstacks)
                                   : CBDfootprint().sGetBDBoardLayNameFromFootprintLayName(&technology, p->m_sLayerName,
                                                                                           component.m_sPlacementSide);
        Put(*p, sLayer, 0);
      }
    }
    for (CBDdrawObj* p : *component.m_pDrawObjArray) Put(*p, p->m_sLayerName, 1);
  }
  ~OnBoardLayers() {
    for (const Former& former : m_former) {
      former.pShape->m_sLayerType = former.sType;
      former.pShape->m_sLayerName = former.sName;
      former.pShape->m_nLayerNumber = former.nNumber;
      former.pShape->m_bRefer = former.bRefer;
    }
  }
  OnBoardLayers(const OnBoardLayers&) = delete;
  OnBoardLayers& operator=(const OnBoardLayers&) = delete;

 private:
  struct Former {
    CBDdrawObj* pShape;
    CString sType;
    CString sName;
    int nNumber;
    int bRefer;
  };

  void Put(CBDdrawObj& shape, const CString& sLayer, int bRefer) {
    const CString sFormer = shape.m_sLayerName;
    m_former.push_back({&shape, shape.m_sLayerType, sFormer, shape.m_nLayerNumber, shape.m_bRefer});
    shape.m_sLayerType = TypeOfLayer(m_technology, sLayer, shape.m_sLayerType);
    shape.m_sLayerName = sLayer;
    shape.m_nLayerNumber = shape.m_sLayerType == kConductive ? Atoi(sLayer.View()) : 0;
    shape.m_bRefer = bRefer;
    // Shapes of its own are dealt out to a padstack's layers by the layer that they took over.
    const auto* pPadstack = dynamic_cast<const CBDdrawPadstack*>(&shape);
    if (pPadstack == nullptr) return;
    for (CBDdrawObj* p : *pPadstack->m_pShapes) {
      m_former.push_back({p, p->m_sLayerType, p->m_sLayerName, p->m_nLayerNumber, p->m_bRefer});
      if (p->m_sLayerName == sFormer) p->m_sLayerName = sLayer;
    }
  }

  const CBDtechnologyContainer& m_technology;
  std::vector<Former> m_former;
};

// What every shape of a file has from where it stands, or anew, and what an area's form says.
bool IsGivenByFile(const SaveLoss& loss) {
  constexpr std::string_view kNames[] = {
      "CBDdrawObj.m_bRefer",   "CBDdrawObj.m_nLayerNumber", "CBDdrawObj.m_sLayerName", "CBDdrawObj.m_sLayerType",
      "CBDdrawObj.m_sSection", "CBDdrawPadstack.m_pHole",   "CBDsurface.m_bArea"};
  return std::ranges::find(kNames, loss.name) != std::end(kNames);
}

// Names and places are what the caller of the command asked for.
bool IsAskedFor(const SaveLoss& loss) {
  return loss.name.starts_with("CBDcomponent.") || loss.name.starts_with("CBDpin.");
}

std::size_t RemoveShapesWithoutLayer(CBDdrawObjArray& shapes) {
  std::size_t n = 0;
  for (INT_PTR i = shapes.GetSize(); i-- > 0;) {
    if (!shapes.GetAt(i)->m_sLayerName.IsEmpty()) continue;
    shapes.DeleteAt(static_cast<int>(i), 1);
    ++n;
  }
  return n;
}

std::ptrdiff_t CountFlatAreas(const CBDdrawObjArray& shapes) {
  return std::ranges::count_if(shapes, [](const CBDdrawObj* p) {
    const auto* pSurface = dynamic_cast<const CBDsurface*>(p);
    return pSurface != nullptr && pSurface->m_bArea != 0 && pSurface->m_dLowerHeight == 0 &&
           pSurface->m_dUpperHeight == 0;
  });
}

}  // namespace

std::unique_ptr<CBDcomponent> MakeAsRead(Console& console, const Place& place, CBDcomponent& placed,
                                         const CBDesigner& root) {
  SaveLosses losses;
  const HeldText text([&] {
    const OnBoardLayers layers(placed, *root.m_pTechnology);
    return FormsAsText(
        losses, [&placed](FormText& forms) { Put(forms, placed); }, kComponentLevel);
  }());
  OwnedDesign design;
  if (!ReadComponentText(text.View(), design) || design.pBoard->m_pComponentArray->IsEmpty()) {
    console.Fail(place, "the placed component cannot be saved");
  }
  std::unique_ptr<CBDcomponent> pRead(design.pBoard->m_pComponentArray->RemoveLastElement());

  std::map<std::string, std::size_t> lost;
  for (const SaveLoss& loss : losses.Refused()) {
    if (IsAskedFor(loss)) console.Fail(place, loss.name + " cannot be saved: " + loss.reason);
    if (!IsGivenByFile(loss)) ++lost[loss.name + " is lost: " + loss.reason];
  }
  if (const auto n = CountFlatAreas(*placed.m_pDrawObjArray)) {
    lost["an area without height becomes a surface"] = static_cast<std::size_t>(n);
  }
  std::size_t nWithoutLayer = RemoveShapesWithoutLayer(*pRead->m_pDrawObjArray);
  for (CBDpin* pPin : *pRead->m_pPinArray) nWithoutLayer += RemoveShapesWithoutLayer(*pPin->m_pDrawObjArray);
  if (nWithoutLayer != 0) lost["a shape without a layer on the board is left out"] = nWithoutLayer;
  for (const auto& [sWhat, n] : lost) {
    console.Warning(place, "in the saved board " + sWhat + (n == 1 ? "" : " (" + std::to_string(n) + " times)"));
  }
  return pRead;
}

}  // namespace laminate::cli
