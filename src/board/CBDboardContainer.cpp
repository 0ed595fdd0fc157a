#include "board/CBDboardContainer.h"

#include "base/TextOut.h"
#include "base/WriterText.h"
#include "board/CBDcompGroup.h"
#include "board/CBDcomponent.h"
#include "board/CBDnet.h"
#include "board/CBDsubBoard.h"
#include "board/LayerGathering.h"
#include "board/LayoutBlocks.h"

using namespace laminate;

CBDboardContainer::CBDboardContainer() {
  MakeOwned(m_pComponentArray, m_pCompGroupArray, m_pNetArray, m_pDrawObjArray, m_pSubBoardArray);
}

CBDboardContainer::~CBDboardContainer() {
  delete m_pComponentArray;
  delete m_pCompGroupArray;
  delete m_pNetArray;
  delete m_pDrawObjArray;
  delete m_pSubBoardArray;
}

void CBDboardContainer::vSortDrawObjForLayerOrder() {
  if (m_pDrawObjArray != nullptr) GatherByLayer(*m_pDrawObjArray);
}

namespace {

void WriteHeader(TextOut& out, const CBDdrawObj& shape, LayoutBlocks::Header header) {
  const auto quote = QuoteIf(HoldsBracket(shape.m_sLayerName));
  switch (header) {
    case LayoutBlocks::Header::none:
      return;
    case LayoutBlocks::Header::conductive:
      return out.Print<"(layer (conductive %d)\n">(shape.m_nLayerNumber);
    case LayoutBlocks::Header::nonConductive:
      return out.Print<"(layer (nonConductive %s%s%s)\n">(quote, shape.m_sLayerName, quote);
    case LayoutBlocks::Header::systemLayer:
      return out.Print<"(layer (systemLayer (type %s%s%s))\n">(quote, shape.m_sLayerName, quote);
  }
}

void WriteLayout(TextOut& out, CBDdrawObjArray* pShapes) {
  if (pShapes == nullptr) return;
  LayoutBlocks blocks;
  for (CBDdrawObj* p : *pShapes) {
    if (p == nullptr) continue;
    const LayoutBlocks::Step step = blocks.Next(*p);
    if (step.closes) out.Print<")\n">();
    WriteHeader(out, *p, step.opens);
    p->Write(out, 1);
  }
  if (blocks.CloseLast()) out.Print<")\n">();
}

}  // namespace

void CBDboardContainer::Write(TextOut& out) {
  vSortDrawObjForLayerOrder();
  const auto form = Form<"(boardContainer\n">(out);
  {
    const auto components = Form<"(components\n">(out);
    WriteEach(out, m_pComponentArray);
  }
  if (CountOf(m_pCompGroupArray) != 0) {
    const auto groups = Form<"(compGroups\n">(out);
    WriteEach(out, m_pCompGroupArray);
  }
  {
    const auto nets = Form<"(nets\n">(out);
    WriteEach(out, m_pNetArray);
  }
  const auto board = Form<"(boardLayout\n">(out);
  const auto layout = Form<"(layout\n">(out);
  WriteLayout(out, m_pDrawObjArray);
}

int CBDboardContainer::nPrint2File(FILE* fp) {
  return PrintTo(fp, [this](TextOut& out) { Write(out); });
}
