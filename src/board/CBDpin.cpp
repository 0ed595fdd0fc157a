#include "board/CBDpin.h"

#include "base/TextOut.h"
#include "base/WriterText.h"
#include "board/BoardForms.h"
#include "board/LayerForms.h"

using namespace laminate;

// ---- CBDpinGate ----

namespace {
// The one value of the format whose absence is no fault: a gate without a name is written as "(gate 1 (name ))".
constexpr auto kPinGate = MakeForm<CBDpinGate>(OptionalText<&CBDpinGate::m_sName>("name"));
}  // namespace

RowSpan<CBDpinGate> laminate::PinGateRows() { return kPinGate.Rows(); }

std::unique_ptr<CBDpinGate> laminate::ReadPinGate(const CECadClsLvl& node) {
  auto p = std::make_unique<CBDpinGate>();
  p->m_nGate = Atoi(Token(node, 1).View());
  WalkFirstByName(kPinGate, node, *p);
  return p;
}

void CBDpinGate::Write(TextOut& out) {
  DoublePercents(m_sName);
  out.Print<"(gate %d (name %s))\n">(m_nGate, m_sName);
}

int CBDpinGate::nPrint2File(FILE* fp) {
  return PrintTo(fp, [this](TextOut& out) { Write(out); });
}

// ---- CBDbondwire ----

std::unique_ptr<CBDbondwire> laminate::ReadBondwire(const CECadClsLvl& node) {
  auto p = std::make_unique<CBDbondwire>();
  // The first two forms in it are the ends, whatever their names.
  CPointD* const ends[] = {&p->m_ptFrom, &p->m_ptTo};
  std::size_t nEnd = 0;
  ForEachChild(node, [&](const CECadClsLvl& child) {
    if (nEnd == std::size(ends)) return;
    CPointD& pt = *ends[nEnd++];
    pt.x = LengthOf(Token(child, 1).View());
    pt.y = LengthOf(Token(child, 2).View());
  });
  return p;
}

// ---- CBDpin ----

namespace {

// (refer (net NAME)? (msgTag ...)? SHAPE ...): the last shape counts.
void AppendLastOfRefer(const CECadClsLvl& refer, const ShapeContext& context, CBDdrawObjArray& shapes) {
  ShapeContext inRefer = context;
  inRefer.bRefer = 1;
  std::unique_ptr<CBDdrawObj> pLast;
  ForEachChild(refer, [&](const CECadClsLvl& child) {
    if (child.m_sName == "net" || child.m_sName == "msgTag") return;
    if (auto p = ReadDrawObj(child, inRefer)) pLast = std::move(p);
  });
  if (pLast != nullptr) AppendOwned(shapes, std::move(pLast));
}

void ReadPinLayout(Walk<BoardContext>& walk, const CECadClsLvl& layout, CBDpin& pin) {
  ForEachChild(layout, "layer", [&](const CECadClsLvl& layer) {
    const ShapeContext context = ResolveLayer(layer, walk.context.pBoardShapes);
    AppendShapesOfLayer(layer, context, *pin.m_pDrawObjArray, AppendLastOfRefer, {"footLayer"});
  });
}

constexpr auto kPin = MakeForm<CBDpin, BoardContext>(     //
    Point<&CBDpin::m_ptLocation>("pt"),                   //
    Each<&CBDpin::m_pPinGateArray, ReadPinGate>("gate"),  //
    Custom<ReadPinLayout>("layout", "m_pDrawObjArray"),   //
    Each<&CBDpin::m_pBondwireArray, ReadBondwire>("bondWire"));

}  // namespace

CBDpin::CBDpin() { MakeOwned(m_pBondwireArray, m_pPinGateArray, m_pDrawObjArray); }

CBDpin::~CBDpin() {
  delete m_pBondwireArray;
  delete m_pPinGateArray;
  delete m_pDrawObjArray;
}

RowSpan<CBDpin, BoardContext> laminate::PinRows() { return kPin.Rows(); }

std::unique_ptr<CBDpin> laminate::ReadPin(const CECadClsLvl& node, BoardContext& context) {
  auto p = std::make_unique<CBDpin>();
  p->m_sName = Token(node, 1);
  WalkChildren(kPin, node, *p, context);
  p->m_pPinGateArray->FreeExtra();
  p->m_pDrawObjArray->FreeExtra();
  return p;
}

void CBDpin::Write(TextOut& out) {
  DoublePercents(m_sName);
  const auto form = Form<"(pin %s\n">(out, m_sName);
  PrintPt(out, m_ptLocation);
  WriteEach(out, m_pPinGateArray);
  const auto layout = Form<"(layout\n">(out);
  WriteLayerBlocks(out, m_pDrawObjArray);
}

int CBDpin::nPrint2File(FILE* fp) {
  return PrintTo(fp, [this](TextOut& out) { Write(out); });
}
