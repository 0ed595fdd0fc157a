#include "board/CBDvisibleLayerSet.h"

#include "base/TextOut.h"
#include "board/BoardForms.h"
#include "board/LayerForms.h"

using namespace laminate;

std::unique_ptr<CBDvisibleLayerSet> laminate::ReadVisibleLayerSet(const CECadClsLvl& node) {
  auto p = std::make_unique<CBDvisibleLayerSet>();
  p->m_sName = Token(node, 1);
  ForEachChild(node, "layer", [&](const CECadClsLvl& layer) {
    // A layer that does not say whether it is visible is not.
    const CECadClsLvl* pVisible = FindChild(layer, "visible");
    if (pVisible == nullptr || Token(*pVisible, 1) != "YES") return;
    p->m_aLayers.Add(ResolveLayer(layer, nullptr).sLayerName);
  });
  return p;
}

int CBDvisibleLayerSet::nPrint2File(FILE* fp) {
  return PrintTo(fp, [this](TextOut& out) {
    out.Print<"(set %s\n">(m_sName);
    out.Print<")\n">();
  });
}
