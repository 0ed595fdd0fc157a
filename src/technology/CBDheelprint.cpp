#include "technology/CBDheelprint.h"

#include "base/TextOut.h"
#include "base/WriterText.h"
#include "drawobj/CBDhole.h"
#include "drawobj/DrawObjReader.h"
#include "technology/AreaForms.h"
#include "technology/FootprintLayers.h"
#include "technology/LibraryForms.h"

using namespace laminate;

CBDheelprint::CBDheelprint() : m_pDrawObjArray(new CBDdrawObjArray) {}
CBDheelprint::~CBDheelprint() { delete m_pDrawObjArray; }

void laminate::ReadHeelprint(const CECadClsLvl& node, CBDheelprint& heelprint, LibraryContext& context) {
  const CECadClsLvl* pLayout = FindChild(node, "layout");
  if (pLayout == nullptr) return;
  ForEachChild(*pLayout,
               [&](const CECadClsLvl& layer) { ReadFootprintLayerShapes(layer, *heelprint.m_pDrawObjArray, context); });
}

namespace {

// The layer name as it stands in the file: quoted if it holds a bracket, the shape being left as it is.
CString LayerNameOf(const CBDdrawObj& shape) {
  CString s = shape.m_sLayerName;
  if (HoldsBracket(s)) Enquote(s);
  return s;
}

void WriteShape(TextOut& out, CBDdrawObj& shape) {
  const int nMode = shape.m_sKind == "DRAWPAD" || shape.m_sKind == "DRAWPADSTACK" ? 2 : 1;
  if (IsSquareHole(shape)) {
    const auto hole = Form<"(squareHole\n">(out);
    const auto geometry = Form<"(geometry\n">(out);
    shape.Write(out, nMode);
  } else {
    shape.Write(out, nMode);
  }
}

}  // namespace

void CBDheelprint::Write(TextOut& out) {
  const auto heelprint = Form<"(heelprint\n">(out);
  WriteMinRect(out, CRectD());
  const auto layout = Form<"(layout\n">(out);
  if (m_pDrawObjArray == nullptr) return;
  bool bOpen = false;
  CString sOpen;
  for (CBDdrawObj* p : *m_pDrawObjArray) {
    if (p == nullptr || p->m_sLayerName.IsEmpty()) continue;
    CString sLayer = LayerNameOf(*p);
    if (!bOpen || sLayer != sOpen) {
      if (bOpen) out.Print<")\n">();
      if (sLayer == kPadstackLayer) {
        out.Print<"(layer (FPADSTACK)\n">();
      } else {
        out.Print<"(layer (footLayer %s)\n">(sLayer);
      }
      sOpen = std::move(sLayer);
      bOpen = true;
    }
    WriteShape(out, *p);
  }
  if (bOpen) out.Print<")\n">();
}

int CBDheelprint::nPrint2File(FILE* fp, int) {
  return PrintTo(fp, [this](TextOut& out) { Write(out); });
}
