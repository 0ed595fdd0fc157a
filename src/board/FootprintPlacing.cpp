// The operations of a footprint that place it on a board. They stand here because what they make is a component.
#include <cmath>
#include <memory>
#include <optional>
#include <string_view>

#include "base/HostInterface.h"
#include "board/CBDcomponent.h"
#include "board/CBDgate.h"
#include "board/CBDpin.h"
#include "drawobj/CBDdrawObj.h"
#include "drawobj/CBDdrawPad.h"
#include "drawobj/CBDdrawPadstack.h"
#include "drawobj/CBDsurface.h"
#include "drawobj/ShapeTools.h"
#include "technology/CBDfootprint.h"
#include "technology/CBDfootprintLayer.h"
#include "technology/CBDheelprint.h"
#include "technology/CBDmap.h"
#include "technology/CBDsubLayer.h"
#include "technology/CBDtechnologyContainer.h"
#include "technology/CBDtoeprintPin.h"

using laminate::AppendOwned;
using laminate::CopyDrawObj;
using laminate::Required;
using laminate::Scale;

namespace {

constexpr double kFullTurn = 360.0;
constexpr std::string_view kBackSide = "B";
// Appended to the name of a side's map this names the map of what goes through the board.
constexpr std::string_view kThroughSuffix = "_THRU";
constexpr std::string_view kThroughMark = "THRU";

// The angle of a placed pad or padstack; null for any other shape, whose angle placing leaves alone.
double* PadAngle(CBDdrawObj& shape) {
  if (auto* pPad = dynamic_cast<CBDdrawPad*>(&shape)) return &pPad->m_dAngle;
  if (auto* pPadstack = dynamic_cast<CBDdrawPadstack*>(&shape)) return &pPadstack->m_dAngle;
  return nullptr;
}

// Pads of pins wrap once, at 360 and above.
double WrapPinAngle(double dAngle) { return dAngle >= kFullTurn ? dAngle - kFullTurn : dAngle; }

// The turn of the back side and pads of the body: lifted once when 0 or below, then cut to below 360.
double WrapBodyAngle(double dAngle) { return std::fmod(dAngle <= 0 ? dAngle + kFullTurn : dAngle, kFullTurn); }

// Where a footprint goes. On the back side the turn is that of the mirrored board.
struct Place {
  CString side;
  double turn;
  CPointD location;
  double scale;

  Place(const CString& sSide, double dAngle, const CPointD& ptLocation, double dScale)
      : side(sSide), turn(sSide == kBackSide ? WrapBodyAngle(-dAngle) : dAngle), location(ptLocation), scale(dScale) {}

  void Move(CBDdrawObj& shape) const { shape.vMoveRotate(-location.x, -location.y, turn, side); }
};

std::unique_ptr<CBDpin> PlacePin(const CBDtoeprintPin& toeprint, const Place& place) {
  auto pPin = std::make_unique<CBDpin>();
  pPin->m_sName = toeprint.m_sName;
  CPointD& pt = pPin->m_ptLocation;
  pt = toeprint.m_ptLocation;
  Scale(pt, place.scale);
  if (place.side == kBackSide) pt.x *= -1.0;
  pt.MoveRotate(-place.location.x, -place.location.y, place.turn);
  for (const CBDdrawObj* pShape : Required(toeprint.m_pDrawObjArray)) {
    if (pShape == nullptr) continue;
    std::unique_ptr<CBDdrawObj> pCopy = CopyDrawObj(*pShape);
    // The scale works on the pin once more for each of its shapes; the shapes keep their size and offsets.
    Scale(pt, place.scale);
    if (pCopy == nullptr) continue;
    place.Move(*pCopy);
    if (double* pAngle = PadAngle(*pCopy)) *pAngle = WrapPinAngle(*pAngle + place.turn);
    AppendOwned(*pPin->m_pDrawObjArray, std::move(pCopy));
  }
  return pPin;
}

// A shape of the body: pads and padstacks go to their place, all other shapes stay where the footprint has them.
std::unique_ptr<CBDdrawObj> PlaceBodyShape(CBDfootprint& footprint, CBDtechnologyContainer* pTechnology,
                                           const CBDdrawObj& shape, const Place& place) {
  std::unique_ptr<CBDdrawObj> pCopy = CopyDrawObj(shape);
  if (pCopy == nullptr) return pCopy;
  double* pAngle = PadAngle(*pCopy);
  if (pAngle != nullptr) place.Move(*pCopy);

  const CString sLayer = pCopy->m_sLayerName;
  // The layer is looked up here for its kind and once more for its name: a host sees the warnings of both.
  const CString sBoardLayer = footprint.sGetBDBoardLayNameFromFootprintLayName(pTechnology, sLayer, place.side);
  const CString sSubLayerKind = footprint.sGetSubLayTypeFromBoardLayName(pTechnology, sBoardLayer);
  const CString sLayerType = footprint.sGetFootprintLayTypeFromFootprintLayName(pTechnology, sLayer);

  if (sLayerType == "COMPAREA") {
    if (auto* pSurface = dynamic_cast<CBDsurface*>(pCopy.get())) pSurface->m_bArea = 1;
  }
  if (sLayerType == "CONDUCTIVE") {
    pCopy->m_sLayerType = sSubLayerKind == "nonConductive" ? "nonConductive" : "conductive";
  }
  pCopy->m_sLayerName = sLayer == "FPADSTACK"
                            ? CString("PADSTACK")
                            : footprint.sGetBDBoardLayNameFromFootprintLayName(pTechnology, sLayer, place.side);
  if (pAngle != nullptr) *pAngle = WrapBodyAngle(*pAngle + place.turn);
  return pCopy;
}

// The map of that name, or the last one there is.
const CBDmap* SelectMap(const CBDmapArray& maps, std::string_view sName) {
  const CBDmap* pSelected = nullptr;
  for (const CBDmap* pMap : maps) {
    if (pMap == nullptr) continue;
    pSelected = pMap;
    if (pMap->m_sName == sName) break;
  }
  return pSelected;
}

// Nothing when the map does not tell. A correspondence of the layer without a board layer is warned of and passed over.
std::optional<CString> BoardLayerInMap(const CBDmap& map, const CString& sFootLayer) {
  for (const CBDcorrespondence* pCorrespondence : Required(map.m_pCorrespondenceArray)) {
    if (pCorrespondence == nullptr || pCorrespondence->m_sFootLayer != sFootLayer) continue;
    if (!pCorrespondence->m_aBoardLayers.IsEmpty()) return pCorrespondence->m_aBoardLayers[0];
    AfxMessageBox("Mult-Layer Or Zero Size Board Layer Found!");
  }
  return std::nullopt;
}

}  // namespace

CBDcomponent* CBDfootprint::pGetComponentFromFootprint(CBDtechnologyContainer* pTechnology, CString sSide,
                                                       double dAngle, CPointD ptLocation, double dScale) {
  const Place place(sSide, dAngle, ptLocation, dScale);
  auto pComponent = std::make_unique<CBDcomponent>();
  pComponent->m_sPlacementSide = sSide;
  pComponent->m_dAngle = dAngle;
  for (const CBDtoeprintPin* pToeprint : Required(m_pToeprintPinArray)) {
    if (pToeprint != nullptr) AppendOwned(*pComponent->m_pPinArray, PlacePin(*pToeprint, place));
  }
  if (m_pHeelprint != nullptr && m_pHeelprint->m_pDrawObjArray != nullptr) {
    for (const CBDdrawObj* pShape : *m_pHeelprint->m_pDrawObjArray) {
      if (pShape == nullptr) continue;
      auto pCopy = PlaceBodyShape(*this, pTechnology, *pShape, place);
      if (pCopy != nullptr) AppendOwned(*pComponent->m_pDrawObjArray, std::move(pCopy));
    }
  }
  return pComponent.release();
}

CString CBDfootprint::sGetBDBoardLayNameFromFootprintLayName(CBDtechnologyContainer* pTechnology, CString sFootLayer,
                                                             CString sSide) {
  const CBDmapArray& maps = Required(Required(pTechnology).m_pMapArray);
  for (;;) {
    const CBDmap* pMap = SelectMap(maps, sSide.View());
    if (pMap == nullptr) return {};
    if (const auto found = BoardLayerInMap(*pMap, sFootLayer)) return *found;
    if (sSide.Find(kThroughMark) >= 0) return {};
    sSide += kThroughSuffix;
  }
}

CString CBDfootprint::sGetBDfootprintLayNameFromBDBoardLayName(CBDmapArray* pMaps, CString sBoardLayer,
                                                               CString /*sMapName*/) {
  for (const CBDmap* pMap : Required(pMaps)) {
    if (pMap == nullptr) continue;
    for (const CBDcorrespondence* pCorrespondence : Required(pMap->m_pCorrespondenceArray)) {
      if (pCorrespondence == nullptr) continue;
      for (const CString& sLayer : pCorrespondence->m_aBoardLayers) {
        if (sLayer == sBoardLayer) return pCorrespondence->m_sFootLayer;
      }
    }
  }
  return {};
}

CString CBDfootprint::sGetFootprintLayTypeFromFootprintLayName(CBDtechnologyContainer* pTechnology,
                                                               CString sFootLayer) {
  for (const CBDfootprintLayer* pLayer : Required(Required(pTechnology).m_pFootprintLayerArray)) {
    if (pLayer != nullptr && pLayer->m_sName == sFootLayer) return pLayer->m_sType;
  }
  return {};
}

CString CBDfootprint::sGetSubLayTypeFromBoardLayName(CBDtechnologyContainer* pTechnology, CString sBoardLayer) {
  for (const CBDsubLayer* pLayer : Required(Required(pTechnology).m_pSubLayerArray)) {
    if (pLayer != nullptr && pLayer->m_sName == sBoardLayer) return pLayer->m_sLayerKind;
  }
  return {};
}
