#include "render/BoardLayers.h"

#include <algorithm>
#include <unordered_set>

#include "base/Number.h"
#include "technology/CBDcondLayer.h"
#include "technology/CBDfootprintLayer.h"
#include "technology/CBDmap.h"
#include "technology/CBDnonConductiveLayer.h"
#include "technology/CBDsubLayer.h"
#include "technology/CBDtechnologyContainer.h"

namespace laminate::cli {

namespace {

// The map of that name, or the last one: so does the library when it places a footprint.
const CBDmap* MapOf(const std::vector<const CBDmap*>& maps, std::string_view sName) {
  const auto it = std::ranges::find_if(maps, [sName](const CBDmap* pMap) { return pMap->m_sName == sName; });
  if (it != maps.end()) return *it;
  return maps.empty() ? nullptr : maps.back();
}

template <class Array, class Visit>
void ForEach(const Array* pArray, Visit visit) {
  if (pArray == nullptr) return;
  for (const auto* p : *pArray) {
    if (p != nullptr) visit(*p);
  }
}

// By footprint layer: the first correspondence in the map of that name that names board layers.
Correspondences CorrespondencesOf(const std::vector<const CBDmap*>& maps, std::string_view sName) {
  Correspondences index;
  const CBDmap* pMap = MapOf(maps, sName);
  if (pMap == nullptr) return index;
  ForEach(pMap->m_pCorrespondenceArray, [&index](const CBDcorrespondence& correspondence) {
    if (!correspondence.m_aBoardLayers.IsEmpty()) {
      index.try_emplace(correspondence.m_sFootLayer.View(), &correspondence);
    }
  });
  return index;
}

const CBDcorrespondence* Find(const Correspondences& index, std::string_view sFootLayer) {
  const auto it = index.find(sFootLayer);
  return it == index.end() ? nullptr : it->second;
}

}  // namespace

BoardLayers::BoardLayers(const CBDtechnologyContainer& technology) {
  ForEach(technology.m_pCondLayerArray,
          [this](const CBDcondLayer& layer) { FindOrAdd(std::to_string(layer.m_nLayerNumber), true); });
  ForEach(technology.m_pNonConductiveLayerArray,
          [this](const CBDnonConductiveLayer& layer) { FindOrAdd(layer.m_sName.View(), false); });
  ForEach(technology.m_pSubLayerArray, [this](const CBDsubLayer& layer) {
    if (!layer.m_sName.IsEmpty()) FindOrAdd(layer.m_sName.View(), layer.m_sLayerKind == "conductive");
  });
  ForEach(technology.m_pMapArray, [this](const CBDmap& map) { m_maps.push_back(&map); });
  m_front = {CorrespondencesOf(m_maps, "A"), CorrespondencesOf(m_maps, "A_THRU")};
  m_back = {CorrespondencesOf(m_maps, "B"), CorrespondencesOf(m_maps, "B_THRU")};
  TellTypes(technology);
  TellPlaces(technology);
  m_nHoleLayer = FindHoleLayer();
}

int BoardLayers::Find(std::string_view sName) const {
  const auto it = m_index.find(std::string(sName));
  return it == m_index.end() ? -1 : static_cast<int>(it->second);
}

std::size_t BoardLayers::FindOrAdd(std::string_view sName, bool bConductive) {
  const auto [it, bNew] = m_index.try_emplace(std::string(sName), m_layers.size());
  if (bNew) {
    m_layers.push_back({.name = std::string(sName),
                        .conductive = bConductive,
                        .number = bConductive ? Atoi(sName) : 0,
                        .type = {},
                        .place = LayerPlace::common});
  }
  return it->second;
}

const std::vector<std::size_t>& BoardLayers::LandsOn(std::string_view sFootLayer, std::string_view sSide) {
  std::string sKey(sSide);
  sKey += '\n';
  sKey += sFootLayer;
  const auto [it, bNew] = m_landings.try_emplace(std::move(sKey));
  if (bNew) {
    const SideMaps& maps = sSide == "B" ? m_back : m_front;
    const CBDcorrespondence* p = laminate::cli::Find(maps.own, sFootLayer);
    if (p == nullptr) p = laminate::cli::Find(maps.through, sFootLayer);
    if (p != nullptr) {
      std::unordered_set<std::size_t> seen;
      for (const CString& sLayer : p->m_aBoardLayers) {
        const std::size_t n = FindOrAdd(sLayer.View(), Atoi(sLayer.View()) > 0);
        if (seen.insert(n).second) it->second.push_back(n);
      }
    }
  }
  return it->second;
}

void BoardLayers::TellTypes(const CBDtechnologyContainer& technology) {
  std::unordered_map<std::string_view, std::string_view> types;
  ForEach(technology.m_pFootprintLayerArray,
          [&types](const CBDfootprintLayer& layer) { types.try_emplace(layer.m_sName.View(), layer.m_sType.View()); });
  for (const CBDmap* pMap : m_maps) {
    ForEach(pMap->m_pCorrespondenceArray, [&](const CBDcorrespondence& correspondence) {
      const auto it = types.find(correspondence.m_sFootLayer.View());
      if (it == types.end()) return;
      for (const CString& sLayer : correspondence.m_aBoardLayers) {
        const int n = Find(sLayer.View());
        if (n >= 0 && m_layers[static_cast<std::size_t>(n)].type.empty()) {
          m_layers[static_cast<std::size_t>(n)].type = it->second;
        }
      }
    });
  }
}

// A footprint layer that lands on different layers on the two sides tells their places. Where a footprint has a layer
// for its own side and one for the other, the former comes first.
void BoardLayers::TellPlaces(const CBDtechnologyContainer& technology) {
  std::vector<bool> told(m_layers.size());
  const auto tell = [&](const CString& sLayer, LayerPlace place) {
    const int n = Find(sLayer.View());
    if (n < 0 || told[static_cast<std::size_t>(n)]) return;
    told[static_cast<std::size_t>(n)] = true;
    m_layers[static_cast<std::size_t>(n)].place = place;
  };
  if (const CBDmap* pFront = MapOf(m_maps, "A")) {
    ForEach(pFront->m_pCorrespondenceArray, [&](const CBDcorrespondence& front) {
      const CBDcorrespondence* pBack = laminate::cli::Find(m_back.own, front.m_sFootLayer.View());
      if (pBack == nullptr || front.m_aBoardLayers.IsEmpty() || front.m_aBoardLayers == pBack->m_aBoardLayers) return;
      for (const CString& sLayer : front.m_aBoardLayers) tell(sLayer, LayerPlace::sideA);
      for (const CString& sLayer : pBack->m_aBoardLayers) tell(sLayer, LayerPlace::sideB);
    });
  }
  int nLast = technology.m_nConductorLayers;
  for (const BoardLayer& layer : m_layers) nLast = std::max(nLast, layer.number);
  for (std::size_t i = 0; i < m_layers.size(); ++i) {
    BoardLayer& layer = m_layers[i];
    if (!layer.conductive || told[i]) continue;
    layer.place = layer.number == 1       ? LayerPlace::sideA
                  : layer.number == nLast ? LayerPlace::sideB
                                          : LayerPlace::inside;
  }
}

std::size_t BoardLayers::FindHoleLayer() {
  const auto it = std::ranges::find(m_layers, "HOLE", &BoardLayer::type);
  return it != m_layers.end() ? static_cast<std::size_t>(it - m_layers.begin()) : FindOrAdd("HOLE", false);
}

}  // namespace laminate::cli
