#include "technology/CBDnonConductiveLayer.h"

#include "base/TextOut.h"
#include "base/WriterText.h"
#include "technology/LibraryForms.h"
#include "technology/PropertyLines.h"

using namespace laminate;

std::unique_ptr<CBDnonConductiveLayer> laminate::ReadNonConductiveLayer(const CECadClsLvl& node) {
  auto p = std::make_unique<CBDnonConductiveLayer>();
  p->m_sName = Token(node, 1);
  ForEachChild(node, "propertyI", [&p](const CECadClsLvl& property) {
    if (HasToken(property, 2) && Token(property, 1) == "sortKey") p->m_nSortKey = Atoi(Token(property, 2).View());
  });
  return p;
}

void CBDnonConductiveLayer::Write(TextOut& out) const {
  const auto quote = QuoteIf(HoldsBracket(m_sName));
  const auto layer = Form<"(layer %s%s%s">(out, quote, m_sName, quote);
  if (CountOf(&m_aProperties) != 0) out.Print<"\n">();
  WriteProperties(out, m_aProperties);
}

int CBDnonConductiveLayer::nPrint2File(FILE* fp) {
  return PrintTo(fp, [this](TextOut& out) { Write(out); });
}
