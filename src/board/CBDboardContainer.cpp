#include "board/CBDboardContainer.h"

#include "base/TextOut.h"
#include "base/WriterText.h"
#include "board/CBDcompGroup.h"
#include "board/CBDcomponent.h"
#include "board/CBDnet.h"
#include "board/CBDsubBoard.h"
#include "board/LayerForms.h"
#include "board/LayerGathering.h"

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

// Copper layers are known by their number, all others by their name. The two are remembered apart: a number stays known
// while shapes of other layers pass, and so its next shape opens no layer anew.
class LayoutWriter {
 public:
  explicit LayoutWriter(TextOut& out) : m_out(out) {}

  void Write(CBDdrawObj& shape) {
    if (shape.m_nLayerNumber != 0) {
      if (m_bFirst || shape.m_nLayerNumber != m_nNumber) {
        m_nNumber = shape.m_nLayerNumber;
        CloseLayer();
        m_out.Print<"(layer (conductive %d)\n">(m_nNumber);
      }
    } else if (m_bFirst || shape.m_sLayerName != m_sName) {
      m_sName = shape.m_sLayerName;
      CloseLayer();
      OpenByType(shape);
    }
    m_bFirst = false;
    shape.Write(m_out, 1);
  }

  void End() { CloseLayer(); }

 private:
  void CloseLayer() {
    if (!m_bFirst) m_out.Print<")\n">();
  }
  void OpenByType(const CBDdrawObj& shape) {
    const auto quote = QuoteIf(HoldsBracket(m_sName));
    if (shape.m_sLayerType == kNonConductive) {
      m_out.Print<"(layer (nonConductive %s%s%s)\n">(quote, m_sName, quote);
    } else if (shape.m_sLayerType == kSystemLayer) {
      m_out.Print<"(layer (systemLayer (type %s%s%s))\n">(quote, m_sName, quote);
    }
    // Any other type opens nothing, and yet a bracket closes it in the end: the form is like that.
  }

  TextOut& m_out;
  bool m_bFirst = true;
  int m_nNumber = 0;
  CString m_sName;
};

void WriteLayout(TextOut& out, CBDdrawObjArray* pShapes) {
  if (pShapes == nullptr) return;
  LayoutWriter writer(out);
  for (CBDdrawObj* p : *pShapes) {
    if (p != nullptr) writer.Write(*p);
  }
  writer.End();
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
