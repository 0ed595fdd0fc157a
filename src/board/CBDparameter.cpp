#include "board/CBDparameter.h"

#include "base/TextOut.h"
#include "base/WriterText.h"
#include "board/BoardForms.h"
#include "board/CBDlayerParameter.h"
#include "board/CBDtextSize.h"
#include "board/CBDvisibleLayerSet.h"

using namespace laminate;

namespace {

constexpr auto kLayerParameters =
    MakeForm<CBDparameter>(Each<&CBDparameter::m_pLayerParameterArray, ReadLayerParameter>("layer"));
constexpr auto kVisibleLayerSets =
    MakeForm<CBDparameter>(Each<&CBDparameter::m_pVisibleLayerSetArray, ReadVisibleLayerSet>("set"));
constexpr auto kTextSizes = MakeForm<CBDparameter>(Each<&CBDparameter::m_pTextSizeArray, ReadTextSize>("textSize"));

constexpr auto kParameter = MakeForm<CBDparameter>(  //
    Nested<kLayerParameters>("layerParameters"),     //
    Nested<kVisibleLayerSets>("visibleLayerSet"),    //
    Nested<kTextSizes>("textSizeParameters"));

}  // namespace

CBDparameter::CBDparameter() { MakeOwned(m_pVisibleLayerSetArray, m_pTextSizeArray, m_pLayerParameterArray); }

CBDparameter::~CBDparameter() {
  delete m_pVisibleLayerSetArray;
  delete m_pTextSizeArray;
  delete m_pLayerParameterArray;
}

RowSpan<CBDparameter> laminate::ParameterRows() { return kParameter.Rows(); }

void laminate::ReadParameter(const CECadClsLvl& node, CBDparameter& parameter) {
  WalkChildren(kParameter, node, parameter);
}

void CBDparameter::Write(TextOut& out) const {
  const auto form = Form<"(parameter\n">(out);
  if (CountOf(m_pLayerParameterArray) == 0) return;
  const auto layers = Form<"(layerParameters\n">(out);
  WriteEach(out, m_pLayerParameterArray);
}

int CBDparameter::nPrint2File(FILE* fp, CBDesigner*) {
  return PrintTo(fp, [this](TextOut& out) { Write(out); });
}
