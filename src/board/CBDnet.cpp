#include "board/CBDnet.h"

#include "base/TextOut.h"
#include "base/WriterText.h"
#include "board/BoardForms.h"

using namespace laminate;

// ---- CBDrefPin ----

namespace {
constexpr auto kRefPin = MakeForm<CBDrefPin>(Text<&CBDrefPin::m_sPin>("pin"));
}

RowSpan<CBDrefPin> laminate::RefPinRows() { return kRefPin.Rows(); }

std::unique_ptr<CBDrefPin> laminate::ReadRefPin(const CECadClsLvl& node) {
  auto p = std::make_unique<CBDrefPin>();
  p->m_sComp = Token(node, 1);
  WalkFirstByName(kRefPin, node, *p);
  return p;
}

void CBDrefPin::Write(TextOut& out) const { out.Print<"(comp %s (pin %s))\n">(m_sComp, m_sPin); }

int CBDrefPin::nPrint2File(FILE* fp) {
  return PrintTo(fp, [this](TextOut& out) { Write(out); });
}

// ---- CBDnet ----

namespace {
// "drawRatsNest" and "rebuildRatsNest" share a field: the later one counts.
constexpr auto kNet = MakeForm<CBDnet>(             //
    Text<&CBDnet::m_sType>("type"),                 //
    Text<&CBDnet::m_sLockMode>("lockMode"),         //
    Text<&CBDnet::m_sPen>("pen"),                   //
    Text<&CBDnet::m_sRatsNest>("drawRatsNest"),     //
    Text<&CBDnet::m_sRatsNest>("rebuildRatsNest"),  //
    Each<&CBDnet::m_pRefPinArray, ReadRefPin>("comp"));
}  // namespace

CBDnet::CBDnet() : m_pRefPinArray(new CBDrefPinArray) {}
CBDnet::~CBDnet() { delete m_pRefPinArray; }

RowSpan<CBDnet> laminate::NetRows() { return kNet.Rows(); }

std::unique_ptr<CBDnet> laminate::ReadNet(const CECadClsLvl& node) {
  auto p = std::make_unique<CBDnet>();
  p->m_sName = Token(node, 1);
  WalkChildren(kNet, node, *p);
  p->m_pRefPinArray->FreeExtra();
  return p;
}

void CBDnet::Write(TextOut& out) {
  DoublePercents(m_sName);
  const auto form = Form<"(net \"%s\"\n">(out, m_sName);
  out.Print<"(type %s)\n">(m_sType);
  out.Print<"(lockMode UNFIXED)\n">();
  out.Print<"(pen %s)\n">(m_sPen);
  out.Print<"(drawRatsNest NO)\n">();
  out.Print<"(rebuildRatsNest YES)\n">();
  WriteEach(out, m_pRefPinArray);
}

int CBDnet::nPrint2File(FILE* fp) {
  return PrintTo(fp, [this](TextOut& out) { Write(out); });
}
