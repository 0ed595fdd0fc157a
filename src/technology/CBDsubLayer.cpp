#include "technology/CBDsubLayer.h"

#include "base/TextOut.h"
#include "base/WriterText.h"
#include "technology/LibraryForms.h"

using namespace laminate;

std::unique_ptr<CBDsubLayer> laminate::ReadSystemSubLayer(const CECadClsLvl& node) {
  auto p = std::make_unique<CBDsubLayer>();
  p->m_sLayerKind = "systemLayer";
  if (const CECadClsLvl* pType = FindChild(node, "type")) p->m_sName = Token(*pType, 1);
  return p;
}

namespace {

// The keyword is the kind of the layer that is drawn on. The last one counts.
void ReadDrawnLayer(Walk<NoContext>&, const CECadClsLvl& node, CBDsubLayer& layer) {
  layer.m_sLayerKind = node.m_sName;
  layer.m_sName = Token(node, 1);
}

constexpr auto kDrawnSubLayer = MakeForm<CBDsubLayer>(                 //
    Custom<ReadDrawnLayer>("conductive", "m_sLayerKind and m_sName"),  //
    Custom<ReadDrawnLayer>("nonConductive", "m_sLayerKind and m_sName"));

}  // namespace

std::unique_ptr<CBDsubLayer> laminate::ReadDrawnSubLayer(const CECadClsLvl& node) {
  auto p = std::make_unique<CBDsubLayer>();
  WalkChildren(kDrawnSubLayer, node, *p);
  return p;
}

void CBDsubLayer::Write(TextOut& out) const {
  const auto quote = QuoteIf(HoldsBracket(m_sName));
  if (m_sLayerKind == "systemLayer") {
    out.Print<"(systemLayer (type %s%s%s))\n">(quote, m_sName, quote);
  } else if (m_sLayerKind == "conductive") {
    out.Print<"(drawLayerOf (conductive %s%s%s))\n">(quote, m_sName, quote);
  } else if (m_sLayerKind == "nonConductive") {
    out.Print<"(drawLayerOf (nonConductive %s%s%s))\n">(quote, m_sName, quote);
  }
}

int CBDsubLayer::nPrint2File(FILE* fp) {
  return PrintTo(fp, [this](TextOut& out) { Write(out); });
}
