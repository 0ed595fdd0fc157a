#include "technology/CBDcondLayer.h"

#include "base/TextOut.h"
#include "base/WriterText.h"
#include "technology/LibraryForms.h"
#include "technology/PropertyLines.h"

using namespace laminate;

// ---- CBDcondLayerRef ----

namespace {

std::unique_ptr<CBDcondLayerRef> ReadCondLayerRef(const CECadClsLvl& node) {
  auto p = std::make_unique<CBDcondLayerRef>();
  p->m_sName = Token(node, 1);
  p->m_sType = Token(RequireChild(node, "type"), 1);
  return p;
}

}  // namespace

void CBDcondLayerRef::Write(TextOut& out) const {
  const auto quote = QuoteIf(HoldsBracket(m_sName));
  const auto refer = Form<"(refer %s%s%s\n">(out, quote, m_sName, quote);
  out.Print<"(type %s)\n">(m_sType);
  out.Print<"(userDefType 0)\n">();
}

int CBDcondLayerRef::nPrint2File(FILE* fp) {
  return PrintTo(fp, [this](TextOut& out) { Write(out); });
}

// ---- CBDcondLayer ----

namespace {

// The number stands behind an item that is not looked at.
void ReadPropertyNumber(Walk<NoContext>&, const CECadClsLvl& node, CBDcondLayer& layer) {
  layer.m_nProperty = Atoi(Token(node, 2).View());
}

constexpr auto kCondLayer = MakeForm<CBDcondLayer>(          //
    Text<&CBDcondLayer::m_sType>("type"),                    //
    Custom<ReadPropertyNumber>("propertyI", "m_nProperty"),  //
    Text<&CBDcondLayer::m_sSoldering>("soldering"),          //
    Each<&CBDcondLayer::m_pRefArray, ReadCondLayerRef>("refer"));

}  // namespace

CBDcondLayer::CBDcondLayer() : m_pRefArray(new CBDcondLayerRefArray) {}
CBDcondLayer::~CBDcondLayer() { delete m_pRefArray; }

RowSpan<CBDcondLayer> laminate::CondLayerRows() { return kCondLayer.Rows(); }

std::unique_ptr<CBDcondLayer> laminate::ReadCondLayer(const CECadClsLvl& node) {
  auto p = std::make_unique<CBDcondLayer>();
  p->m_nLayerNumber = Atoi(Token(node, 1).View());
  WalkChildren(kCondLayer, node, *p);
  return p;
}

void CBDcondLayer::Write(TextOut& out) const {
  const auto layer = Form<"(layerNumber %d\n">(out, m_nLayerNumber);
  out.Print<"(type %s)\n">(m_sType);
  if (!m_sSoldering.IsEmpty()) out.Print<"(soldering %s)\n">(m_sSoldering);
  WriteEach(out, m_pRefArray);
  WriteProperties(out, m_aProperties);
}

int CBDcondLayer::nPrint2File(FILE* fp) {
  return PrintTo(fp, [this](TextOut& out) { Write(out); });
}
