#include "board/CBDgate.h"

#include "base/TextOut.h"
#include "base/WriterText.h"
#include "board/BoardForms.h"

using namespace laminate;

namespace {

constexpr auto kGatePin = MakeForm<CBDgatePin>(Text<&CBDgatePin::m_sLockMode>("lockMode"));

std::unique_ptr<CBDgatePin> ReadGatePin(const CECadClsLvl& node) {
  auto p = std::make_unique<CBDgatePin>();
  p->m_sName = Token(node, 1);
  WalkFirstByName(kGatePin, node, *p);
  return p;
}

constexpr auto kGate = MakeForm<CBDgate>(  //
    Text<&CBDgate::m_sId>("id"),           //
    Each<&CBDgate::m_pGatePinArray, ReadGatePin>("pin"));

}  // namespace

CBDgate::CBDgate() : m_pGatePinArray(new CBDgatePinArray) {}
CBDgate::~CBDgate() { delete m_pGatePinArray; }

RowSpan<CBDgate> laminate::GateRows() { return kGate.Rows(); }
RowSpan<CBDgatePin> laminate::GatePinRows() { return kGatePin.Rows(); }

std::unique_ptr<CBDgate> laminate::ReadGate(const CECadClsLvl& node) {
  auto p = std::make_unique<CBDgate>();
  // As many children count as the form has values: (gate 1 (id A) (pin 1)) has one value, so its pin is not looked at.
  INT_PTR nLeft = node.m_arrValues.GetSize();
  std::uint64_t seen = 0;
  NoContext context;
  for (const CECadClsLvl* pChild : ChildrenOf(node)) {
    if (nLeft == 0) break;
    if (pChild == nullptr) continue;
    ReadChild(kGate, *pChild, *p, context, seen);
    --nLeft;
  }
  if (nLeft != 0) throw CInvalidArgException("\"gate\" has fewer forms in it than values", node.m_nLine);
  p->m_pGatePinArray->FreeExtra();
  return p;
}

void CBDgate::Write(TextOut& out) {
  if (!m_sId.IsEmpty()) out.Print<"(id %s)\n">(m_sId);
  out.Print<"(lockMode UNFIXED)\n">();
  if (m_pGatePinArray == nullptr) return;
  for (CBDgatePin* pPin : *m_pGatePinArray) {
    if (pPin == nullptr) continue;
    DoublePercents(pPin->m_sName);
    const auto pin = Form<"(pin \"%s\"\n">(out, pPin->m_sName);
    out.Print<"(lockMode UNFIXED)\n">();
  }
}

int CBDgate::nPrint2File(FILE* fp) {
  return PrintTo(fp, [this](TextOut& out) { Write(out); });
}
