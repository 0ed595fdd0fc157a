#include "technology/CBDfootprintLayer.h"

#include "base/TextOut.h"
#include "base/WriterText.h"
#include "technology/LibraryForms.h"

using namespace laminate;

std::unique_ptr<CBDfootprintLayer> laminate::ReadFootprintLayer(const CECadClsLvl& node) {
  auto p = std::make_unique<CBDfootprintLayer>();
  p->m_sName = Token(node, 1);
  p->m_sType = Token(RequireChild(node, "type"), 1);
  return p;
}

std::unique_ptr<CBDfootprintLayer> laminate::ReadFootprintLayerOfLibrary(const CECadClsLvl& node) {
  auto p = std::make_unique<CBDfootprintLayer>();
  p->m_sName = Token(node, 1);
  if (const CECadClsLvl* pType = FindChild(node, "type")) p->m_sType = Token(*pType, 1);
  return p;
}

void CBDfootprintLayer::Write(TextOut& out) const {
  const auto quote = QuoteIf(HoldsBracket(m_sName));
  out.Print<"(layer %s%s%s (type %s))\n">(quote, m_sName, quote, m_sType);
}

int CBDfootprintLayer::nPrint2File(FILE* fp) {
  return PrintTo(fp, [this](TextOut& out) { Write(out); });
}
