#include "technology/CBDtechnologyContainer.h"

#include "base/TextOut.h"
#include "base/WriterText.h"
#include "drawobj/ShapeTools.h"
#include "technology/CBDcondLayer.h"
#include "technology/CBDfootprintLayer.h"
#include "technology/CBDmap.h"
#include "technology/CBDnonConductiveLayer.h"
#include "technology/CBDsubLayer.h"
#include "technology/LibraryForms.h"

using namespace laminate;

CBDtechnologyContainer::CBDtechnologyContainer() {
  MakeOwned(m_pFootprintLayerArray, m_pNonConductiveLayerArray, m_pCondLayerArray, m_pSubLayerArray, m_pMapArray);
}

CBDtechnologyContainer::~CBDtechnologyContainer() {
  delete m_pFootprintLayerArray;
  delete m_pNonConductiveLayerArray;
  delete m_pCondLayerArray;
  delete m_pSubLayerArray;
  delete m_pMapArray;
}

// ---- reading ----

namespace {

using Technology = CBDtechnologyContainer;

int ConductorLayers(const CECadClsLvl& technology) {
  return Atoi(Token(RequireChild(technology, "numberOfConductorLayer"), 1).View());
}

struct Choice {
  const CECadClsLvl* pTechnology;
  int nConductorLayers;
};

// The "technology" with the most conductor layers among those that map layers, the first of equals; without such a one
// the first of all.
Choice Choose(const CECadClsLvl& container) {
  Choice best{nullptr, 0};
  ForEachChild(container, "technology", [&best](const CECadClsLvl& technology) {
    if (FindChild(technology, "layerMapping") == nullptr) return;
    const int n = ConductorLayers(technology);
    if (best.pTechnology == nullptr || n > best.nConductorLayers) best = {&technology, n};
  });
  if (best.pTechnology == nullptr) {
    const CECadClsLvl& first = RequireChild(container, "technology");
    best = {&first, ConductorLayers(first)};
  }
  return best;
}

// Every child, whatever its keyword, becomes an object of the array.
template <class Array, class Read>
void ReadEvery(const CECadClsLvl& section, Array* pArray, Read&& read) {
  if (pArray == nullptr) AfxThrowInvalidArgException();
  ForEachChild(section, [&](const CECadClsLvl& child) { AppendOwned(*pArray, read(child)); });
}

constexpr auto kConductiveLayers = MakeForm<Technology>(  //
    Each<&Technology::m_pCondLayerArray, ReadCondLayer>("layerNumber"));

constexpr auto kSubLayers = MakeForm<Technology>(                            //
    Each<&Technology::m_pSubLayerArray, ReadSystemSubLayer>("systemLayer"),  //
    Each<&Technology::m_pSubLayerArray, ReadDrawnSubLayer>("drawLayerOf"),   //
    Each<&Technology::m_pSubLayerArray, ReadDrawnSubLayer>("infoLayerOf"));

}  // namespace

RowSpan<CBDtechnologyContainer> laminate::SubLayerRows() { return kSubLayers.Rows(); }

void laminate::ReadTechnology(const CECadClsLvl& node, CBDtechnologyContainer& technology) {
  const Choice choice = Choose(node);
  const CECadClsLvl& chosen = *choice.pTechnology;
  technology.m_sName = Token(chosen, 1);
  technology.m_nConductorLayers = choice.nConductorLayers;
  // Each section is looked up when its turn comes, so that those before an absent one have been read.
  ReadEvery(RequireChild(chosen, "footprintLayer"), technology.m_pFootprintLayerArray, ReadFootprintLayer);
  ReadEvery(RequireChild(chosen, "nonConductiveLayer"), technology.m_pNonConductiveLayerArray, ReadNonConductiveLayer);
  WalkChildren(kConductiveLayers, RequireChild(chosen, "conductiveLayer"), technology);
  WalkChildren(kSubLayers, RequireChild(chosen, "subLayer"), technology);
  if (const CECadClsLvl* pMapping = FindChild(chosen, "layerMapping")) {
    ReadEvery(*pMapping, technology.m_pMapArray, ReadMap);
  }
}

void laminate::ReadFootprintTechnology(const CECadClsLvl& node, CBDtechnologyContainer& technology) {
  const CECadClsLvl* pTechnology = FindChild(node, "technology");
  if (pTechnology == nullptr) return;
  technology.m_sName = Token(*pTechnology, 1);
  if (const CECadClsLvl* pLayers = FindChild(*pTechnology, "footprintLayer")) {
    ReadEvery(*pLayers, technology.m_pFootprintLayerArray, ReadFootprintLayerOfLibrary);
  }
}

// ---- looking up ----

CBDmap* CBDtechnologyContainer::pGetMap(CString sName) {
  for (CBDmap* p : Required(m_pMapArray)) {
    if (p != nullptr && p->m_sName == sName) return p;
  }
  return nullptr;
}

CString CBDtechnologyContainer::sGetFootprintLayNameFromTypeInFoorprintLayerArray(CString sType) {
  for (const CBDfootprintLayer* p : Required(m_pFootprintLayerArray)) {
    if (p != nullptr && p->m_sType == sType) return p->m_sName;
  }
  return {};
}

CString CBDtechnologyContainer::sGetLayerTypeFromSubLayer(const CString& sName) const {
  for (const CBDsubLayer* p : Required(m_pSubLayerArray)) {
    if (p != nullptr && p->m_sName == sName)
      return p->m_sLayerKind == "type" ? CString("systemLayer") : p->m_sLayerKind;
  }
  return {};
}

// ---- writing ----

void CBDtechnologyContainer::Write(TextOut& out, TechnologySection section) const {
  const bool bBoard = section == TechnologySection::board;
  const auto container = Form<"(technologyContainer\n">(out);
  const auto technology = Form<"(technology %s\n">(out, m_sName);
  if (bBoard) {
    out.Print<"(numberOfConductorLayer %d)\n">(m_nConductorLayers);
    out.Print<"(padstackGroup default)\n">();
  }
  {
    const auto layers = Form<"(footprintLayer\n">(out);
    WriteEach(out, m_pFootprintLayerArray);
  }
  if (!bBoard) return;
  {
    const auto layers = Form<"(nonConductiveLayer\n">(out);
    WriteEach(out, m_pNonConductiveLayerArray);
  }
  {
    const auto layers = Form<"(conductiveLayer\n">(out);
    WriteEach(out, m_pCondLayerArray);
  }
  {
    const auto layers = Form<"(subLayer\n">(out);
    WriteEach(out, m_pSubLayerArray);
  }
  const auto maps = Form<"(layerMapping\n">(out);
  WriteEach(out, m_pMapArray);
}

int CBDtechnologyContainer::nPrint2File(FILE* fp, CString sKind) {
  const auto section = sKind == "PCF" ? TechnologySection::board : TechnologySection::footprint;
  return PrintTo(fp, [&](TextOut& out) { Write(out, section); });
}
