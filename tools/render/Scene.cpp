#include "render/Scene.h"

#include <algorithm>
#include <array>
#include <tuple>

#include "JsonText.h"
#include "board/CBDboardContainer.h"
#include "board/CBDcompGroup.h"
#include "board/CBDcomponent.h"
#include "board/CBDpin.h"
#include "drawobj/CBDdrawPad.h"
#include "drawobj/CBDdrawPadstack.h"
#include "drawobj/CBDhole.h"
#include "drawobj/CBDovalHole.h"
#include "drawobj/CBDpadstackRefLay.h"
#include "drawobj/CBDsquareHole.h"
#include "drawobj/CBDsurface.h"
#include "facade/CBDesigner.h"
#include "render/Palette.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDpad.h"
#include "technology/CBDpadstack.h"

namespace laminate::cli {

namespace {

bool IsHole(const CBDdrawObj& shape) {
  return dynamic_cast<const CBDhole*>(&shape) != nullptr || dynamic_cast<const CBDovalHole*>(&shape) != nullptr ||
         dynamic_cast<const CBDsquareHole*>(&shape) != nullptr;
}

// Side "A" or "B" of what is placed: its own word where it is one of these, else that of its component.
std::string_view SideOf(std::string_view sOwn, const CBDcomponent* pComponent) {
  if (sOwn == "A" || sOwn == "B") return sOwn;
  return pComponent != nullptr && pComponent->m_sPlacementSide == "B" ? "B" : "A";
}

// The first object of each name.
template <class X, class Array>
std::unordered_map<std::string_view, const X*> IndexByName(const Array* pArray) {
  std::unordered_map<std::string_view, const X*> index;
  if (pArray == nullptr) return index;
  index.reserve(static_cast<std::size_t>(pArray->GetSize()));
  for (const X* p : *pArray) {
    if (p != nullptr) index.try_emplace(p->m_sName.View(), p);
  }
  return index;
}

// The entry of a placed padstack for a layer, or null.
const CBDpadstackRefLay* EntryOf(const CBDdrawPadstack& padstack, const BoardLayer& layer) {
  if (padstack.m_pRefLays == nullptr) return nullptr;
  for (const CBDpadstackRefLay* p : *padstack.m_pRefLays) {
    if (p == nullptr) continue;
    if (layer.conductive ? p->m_nLayerNumber == layer.number && p->m_sLayerName.IsEmpty()
                         : p->m_sLayerName == std::string_view(layer.name)) {
      return p;
    }
  }
  return nullptr;
}

// A span of two layers holds what lies between them, one of a single layer that layer, and none all.
bool IsInSpan(const CBDdrawPadstack& padstack, int nLayer) {
  const auto [nLow, nHigh] = std::minmax(padstack.m_nFrom, padstack.m_nTo);
  if (nHigh == 0) return true;
  return nLow == 0 ? nLayer == nHigh : nLow <= nLayer && nLayer <= nHigh;
}

}  // namespace

Scene::Scene(const CBDesigner& root, const Selection& selection)
    : m_root(root), m_selection(selection), m_layers(*root.m_pTechnology) {
  const CBDfootprintContainer& library = *root.m_pFootprintContainer;
  m_selectedLayers.insert(m_selection.layers.begin(), m_selection.layers.end());
  m_pads = IndexByName<CBDpad>(library.m_pPadArray);
  m_padstacks = IndexByName<CBDpadstack>(library.m_pPadstackArray);
}

void Scene::AddBoard() {
  const CBDboardContainer& board = *m_root.m_pBoardContainer;
  Add(board.m_pDrawObjArray, {Home::layout});
  if (board.m_pCompGroupArray != nullptr) {
    for (const CBDcompGroup* pGroup : *board.m_pCompGroupArray) {
      if (pGroup != nullptr) Add(pGroup->m_pDrawObjArray, {Home::group});
    }
  }
  if (board.m_pComponentArray != nullptr) {
    for (const CBDcomponent* pComponent : *board.m_pComponentArray) {
      if (pComponent != nullptr) AddComponent(*pComponent);
    }
  }
}

void Scene::AddComponent(const CBDcomponent& component) {
  Add(component.m_pDrawObjArray, {Home::component, &component});
  if (component.m_pPinArray == nullptr) return;
  for (const CBDpin* pPin : *component.m_pPinArray) {
    if (pPin != nullptr) Add(pPin->m_pDrawObjArray, {Home::pin, &component});
  }
}

void Scene::Add(const CBDdrawObjArray* pShapes, const Around& around) {
  if (pShapes == nullptr) return;
  for (const CBDdrawObj* pShape : *pShapes) {
    if (pShape == nullptr) continue;
    const std::string_view sLayer = pShape->m_sLayerName.View();
    if (around.home == Home::pin && m_layers.Find(sLayer) < 0) {
      // The pins of a component that was placed, and not loaded, still bear the layers of their footprint.
      const auto& layers = m_layers.LandsOn(sLayer, SideOf({}, around.component));
      for (const std::size_t nLayer : layers) {
        AddOn(nLayer, *pShape, around);
        // A padstack spreads over the layers by itself.
        if (dynamic_cast<const CBDdrawPadstack*>(pShape) != nullptr) break;
      }
      if (!layers.empty()) continue;
    }
    // What landed on no layer when it was placed is on none.
    if (sLayer.empty() && around.home == Home::component) continue;
    AddOn(m_layers.FindOrAdd(sLayer, pShape->m_sLayerType == "conductive"), *pShape, around);
  }
}

void Scene::AddOn(std::size_t nLayer, const CBDdrawObj& shape, const Around& around) {
  if (const auto* pPadstack = dynamic_cast<const CBDdrawPadstack*>(&shape)) {
    AddPadstack(nLayer, *pPadstack, around);
    return;
  }
  if (const auto* pPad = dynamic_cast<const CBDdrawPad*>(&shape)) {
    AddPad(nLayer, *pPad, around);
    return;
  }
  Item item{.shape = &shape, .netOwner = &shape, .component = around.component, .motion = 0, .look = Look::shape};
  if (IsHole(shape)) {
    item.look = Look::hole;
  } else if (m_layers[nLayer].type == "COMPAREA") {
    item.look = Look::outline;
  } else if (around.home == Home::layout && m_layers[nLayer].conductive &&
             dynamic_cast<const CBDsurface*>(&shape) != nullptr) {
    item.look = Look::plane;
  }
  Put(nLayer, item);
}

void Scene::AddPad(std::size_t nLayer, const CBDdrawPad& pad, const Around& around) {
  Item item{.shape = &pad, .netOwner = &pad, .component = around.component, .motion = 0, .look = Look::pad};
  if (pad.m_pShapes != nullptr && !pad.m_pShapes->IsEmpty()) {
    // They have coordinates of the board.
    for (const CBDdrawObj* pShape : *pad.m_pShapes) {
      if (pShape == nullptr) continue;
      item.shape = pShape;
      Put(nLayer, item);
    }
    return;
  }
  item.motion = AddMotion(Motion::Placing(Vec(pad.m_pt), pad.m_dAngle, SideOf({}, around.component) == "B"));
  if (!AddPadShapes(nLayer, pad.m_sPadName, item)) AddRing(nLayer, item);
}

void Scene::AddPadstack(std::size_t nLayer, const CBDdrawPadstack& padstack, const Around& around) {
  AddOwnShapes(padstack, around);
  const std::string_view sSide = SideOf(padstack.m_sSide.View(), around.component);
  const std::string_view sFlip = padstack.m_sFlip.View();
  // A flip about the other axis is the same with half a turn.
  const bool bMirror = sFlip.empty() ? sSide == "B" : sFlip == "X" || sFlip == "Y";
  const double dAngle = padstack.m_dAngle + (sFlip == "Y" ? 180 : 0);
  Item item{.shape = &padstack,
            .netOwner = &padstack,
            .component = around.component,
            .motion = AddMotion(Motion::Placing(Vec(padstack.m_pt), dAngle, bMirror)),
            .look = Look::pad};
  const Landing& landing = LandingOf(padstack.m_sPadstackName.View(), sSide);
  if (landing.padstack == nullptr || (landing.pads.empty() && landing.hole == nullptr)) {
    AddRing(nLayer, item);
    return;
  }
  bool bCopperSelected = false;
  for (const PadOnLayer& pad : landing.pads) {
    const BoardLayer& layer = m_layers[pad.layer];
    if (layer.conductive && !IsInSpan(padstack, layer.number)) continue;
    const CBDpadstackRefLay* pEntry = EntryOf(padstack, layer);
    if (pEntry != nullptr && pEntry->m_bVisible == 0) continue;
    if (layer.conductive) bCopperSelected = bCopperSelected || IsSelected(pad.layer);
    const bool bNotConnected = pEntry != nullptr && pEntry->m_sStatus == "NOCONNECT";
    const CString& sPad =
        bNotConnected && !pad.pads->m_sNoConnect.IsEmpty() ? pad.pads->m_sNoConnect : pad.pads->m_sConnect;
    if (!sPad.IsEmpty() && !AddPadShapes(pad.layer, sPad, item)) AddRing(pad.layer, item);
    if (pEntry != nullptr && pEntry->m_sStatus == "THERMAL") AddPadShapes(pad.layer, pad.pads->m_sThermal, item);
  }
  // A hole goes through every layer: it is drawn wherever a pad of it may be.
  if (landing.hole != nullptr && (bCopperSelected || IsSelected(m_layers.HoleLayer()))) {
    item.shape = landing.hole;
    item.look = Look::hole;
    if (m_contents.size() <= m_layers.HoleLayer()) m_contents.resize(m_layers.HoleLayer() + 1);
    m_contents[m_layers.HoleLayer()].holes.push_back(item);
  }
}

// Shapes that a placed padstack has itself are on the layer of their section, in coordinates of the board.
void Scene::AddOwnShapes(const CBDdrawPadstack& padstack, const Around& around) {
  if (padstack.m_pShapes == nullptr) return;
  for (const CBDdrawObj* pShape : *padstack.m_pShapes) {
    if (pShape == nullptr) continue;
    const bool bConductive = pShape->m_sSection == "conductive" && pShape->m_nLayerNumber != 0;
    const std::size_t nLayer = bConductive ? m_layers.FindOrAdd(std::to_string(pShape->m_nLayerNumber), true)
                                           : m_layers.FindOrAdd(pShape->m_sLayerName.View(), false);
    Put(nLayer, {.shape = pShape,
                 .netOwner = &padstack,
                 .component = around.component,
                 .motion = 0,
                 .look = IsHole(*pShape) ? Look::hole : Look::pad});
  }
}

// False when the library has no such pad.
bool Scene::AddPadShapes(std::size_t nLayer, const CString& sPad, Item item) {
  const auto it = m_pads.find(sPad.View());
  if (it == m_pads.end()) return false;
  if (it->second->m_pDrawObjArray == nullptr) return true;
  for (const CBDdrawObj* pShape : *it->second->m_pDrawObjArray) {
    if (pShape == nullptr) continue;
    item.shape = pShape;
    Put(nLayer, item);
  }
  return true;
}

void Scene::AddRing(std::size_t nLayer, Item item) {
  if (IsSelected(nLayer)) m_undefined.insert(item.netOwner);
  item.look = Look::ring;
  Put(nLayer, item);
}

void Scene::Put(std::size_t nLayer, const Item& item) {
  if (!IsSelected(nLayer)) return;
  if (m_contents.size() <= nLayer) m_contents.resize(nLayer + 1);
  Content& content = m_contents[nLayer];
  switch (item.look) {
    case Look::plane:
      content.planes.push_back(item);
      break;
    case Look::hole:
      content.holes.push_back(item);
      break;
    case Look::pad:
    case Look::ring:
      content.pads.push_back(item);
      break;
    case Look::shape:
    case Look::outline:
      content.shapes.push_back(item);
      break;
  }
}

std::uint32_t Scene::AddMotion(const Motion& motion) {
  m_motions.push_back(motion);
  return static_cast<std::uint32_t>(m_motions.size() - 1);
}

const Scene::Landing& Scene::LandingOf(std::string_view sPadstack, std::string_view sSide) {
  std::string sKey(sSide);
  sKey += sPadstack;
  const auto [it, bNew] = m_landings.try_emplace(std::move(sKey));
  Landing& landing = it->second;
  if (!bNew) return landing;
  const auto found = m_padstacks.find(sPadstack);
  if (found == m_padstacks.end()) return landing;
  landing.padstack = found->second;
  if (landing.padstack->m_pHole != nullptr) landing.hole = landing.padstack->m_pHole->m_pDrawObj;
  if (landing.padstack->m_pPadSetArray != nullptr) {
    for (const CBDpadSet* pPads : *landing.padstack->m_pPadSetArray) {
      if (pPads == nullptr) continue;
      for (const std::size_t nLayer : m_layers.LandsOn(pPads->m_sFootLayer.View(), sSide)) {
        landing.pads.push_back({nLayer, pPads});
      }
    }
  }
  return landing;
}

bool Scene::IsSelected(std::size_t nLayer) const {
  const BoardLayer& layer = m_layers[nLayer];
  if (!m_selectedLayers.empty()) return m_selectedLayers.contains(layer.name);
  if (!m_selection.side) return true;
  return layer.place == LayerPlace::common ||
         layer.place == (m_selection.side == View::sideB ? LayerPlace::sideB : LayerPlace::sideA);
}

// From the back to the front: the far side's other layers, copper from far to near, common layers, the near side's
// other layers, the outline, holes. Openings of the near side's resist and stencil lie below its copper, so that of
// them a rim is seen around each pad. Among equals, what covers most comes first, and then what the board names last.
std::vector<std::size_t> Scene::DrawingOrder() const {
  const LayerPlace near = Seen() == View::sideB ? LayerPlace::sideB : LayerPlace::sideA;
  const auto rank = [&](std::size_t n) {
    const BoardLayer& layer = m_layers[n];
    enum Rank { farOthers, copper, openings, nearCopper, common, nearOthers, outline, holes };
    Rank nRank = farOthers;
    if (n == m_layers.HoleLayer()) {
      nRank = holes;
    } else if (layer.type == "OUTLINE") {
      nRank = outline;
    } else if (layer.conductive) {
      nRank = layer.place == near ? nearCopper : copper;
    } else if (layer.place == LayerPlace::common) {
      nRank = common;
    } else if (layer.place == near) {
      nRank = layer.type == "RESIST" || layer.type == "METALMASK" ? openings : nearOthers;
    }
    const long nDepth = Seen() == View::sideB ? layer.number : -static_cast<long>(layer.number);
    return std::tuple(static_cast<int>(nRank), nDepth, CoverRank(layer.type), -static_cast<long>(n));
  };
  std::vector<std::size_t> order;
  for (std::size_t n = 0; n < m_contents.size(); ++n) {
    if (!m_contents[n].IsEmpty()) order.push_back(n);
  }
  std::ranges::sort(order, {}, rank);
  return order;
}

void Scene::Draw(Painter& painter, const Motion& place, double dHairline, const Step& step) const {
  const std::vector<LayerStyle> styles = StylesOf(m_layers);
  Brush brush(painter, place, dHairline);
  std::string sNet;
  std::string sReference;
  for (const std::size_t nLayer : DrawingOrder()) {
    const std::string sName = ToUtf8(m_layers[nLayer].name);
    painter.BeginGroup({.layer = sName, .colour = styles[nLayer].colour, .opacity = styles[nLayer].opacity});
    const Content& content = m_contents[nLayer];
    for (const auto* pItems : {&content.planes, &content.shapes, &content.pads, &content.holes}) {
      for (const Item& item : *pItems) {
        step();
        sNet = ToUtf8(item.netOwner->m_sNet.View());
        sReference = item.component != nullptr ? ToUtf8(item.component->m_sReference.View()) : std::string();
        brush.Draw(*item.shape, m_motions[item.motion], item.look, {.net = sNet, .reference = sReference});
      }
    }
    painter.EndGroup();
  }
}

Box BoundsOf(const Scene& scene) {
  BoundsPainter painter;
  scene.Draw(painter, Motion(), 0);
  return painter.Bounds();
}

}  // namespace laminate::cli
