#include "board/CBDlayerParameter.h"

#include "base/TextOut.h"
#include "base/WriterText.h"
#include "board/BoardForms.h"
#include "board/LayerForms.h"

using namespace laminate;

namespace {

constexpr auto kHatch = MakeForm<CBDlayerParameter>(      //
    Integer<&CBDlayerParameter::m_nHatchAngle>("angle"),  //
    Integer<&CBDlayerParameter::m_nHatchPitch>("pitch"));

constexpr auto kLayerParameter = MakeForm<CBDlayerParameter>(  //
    Integer<&CBDlayerParameter::m_nColorId>("colorId"),        //
    Integer<&CBDlayerParameter::m_nPriority>("priority"),      //
    Text<&CBDlayerParameter::m_sDisplayMode>("displayMode"),   //
    NestedByName<kHatch>("hatch"),                             //
    Text<&CBDlayerParameter::m_sMrcMode>("mrcMode"));

}  // namespace

RowSpan<CBDlayerParameter> laminate::LayerParameterRows() { return kLayerParameter.Rows(); }

std::unique_ptr<CBDlayerParameter> laminate::ReadLayerParameter(const CECadClsLvl& node) {
  auto p = std::make_unique<CBDlayerParameter>();
  // The layer must be named properly, but is not kept.
  static_cast<void>(ResolveLayer(node, nullptr));
  WalkChildren(kLayerParameter, node, *p);
  return p;
}

void CBDlayerParameter::Write(TextOut& out) const {
  const auto quote = QuoteIf(HoldsBracket(m_sLayerName));
  if (m_sLayerType == kConductive) {
    out.Print<"(layer (conductive %d)\n">(m_nLayerNumber);
  } else if (m_sLayerType == kNonConductive) {
    out.Print<"(layer (nonConductive %s%s%s)\n">(quote, m_sLayerName, quote);
  } else if (m_sLayerType == kSystemLayer) {
    out.Print<"(layer (systemLayer (type %s%s%s))\n">(quote, m_sLayerName, quote);
  }
  out.Print<"(colorId %d)\n">(m_nColorId);
  out.Print<"(priority %d)\n">(m_nPriority);
  // The reader knows "displayMode", so the written mode does not come back.
  out.Print<"(dispMode EMPTY)\n">();
  out.Print<"(hatch (angle 45) (pitch 20))\n">();
  out.Print<"(mrcMode OFF)\n">();
  out.Print<")\n">();
}

int CBDlayerParameter::nPrint2File(FILE* fp) {
  return PrintTo(fp, [this](TextOut& out) { Write(out); });
}
