#include "board/CBDcompGroup.h"

#include <algorithm>

#include "base/TextOut.h"
#include "board/BoardForms.h"
#include "board/LayerForms.h"

using namespace laminate;

namespace {

void ReadLayout(Walk<BoardContext>& walk, const CECadClsLvl& layout, CBDcompGroup& group) {
  ForEachChild(layout, "layer", [&](const CECadClsLvl& layer) {
    const ShapeContext context = ResolveLayer(layer, walk.context.pBoardShapes);
    AppendShapesOfLayer(layer, context, *group.m_pDrawObjArray, AppendFirstOfRefer);
  });
}

constexpr auto kCompGroup = MakeForm<CBDcompGroup, BoardContext>(  //
    Texts<&CBDcompGroup::m_aList>("list"),                         //
    Text<&CBDcompGroup::m_sSide>("side"),                          //
    Integer<&CBDcompGroup::m_nPen>("pen"),                         //
    Custom<ReadLayout>("layout", "m_pDrawObjArray"));

}  // namespace

CBDcompGroup::CBDcompGroup() : m_pDrawObjArray(new CBDdrawObjArray) {}
CBDcompGroup::~CBDcompGroup() { delete m_pDrawObjArray; }

RowSpan<CBDcompGroup, BoardContext> laminate::CompGroupRows() { return kCompGroup.Rows(); }

std::unique_ptr<CBDcompGroup> laminate::ReadCompGroup(const CECadClsLvl& node, BoardContext& context) {
  auto p = std::make_unique<CBDcompGroup>();
  p->m_sName = Token(node, 1);
  WalkChildren(kCompGroup, node, *p, context);
  p->m_aList.FreeExtra();
  p->m_pDrawObjArray->FreeExtra();
  return p;
}

int CBDcompGroup::bIsExistReference(CString sReference) {
  return std::find(m_aList.begin(), m_aList.end(), sReference) != m_aList.end() ? 1 : 0;
}

void CBDcompGroup::Write(TextOut& out) {
  const auto form = Form<"(compGroup %s\n">(out, m_sName);
  {
    const auto list = Form<"(list\n">(out);
    for (const CString& sReference : m_aList) out.Print<"%s\n">(sReference);
  }
  out.Print<"(side BOTH_SIDES)\n">();
  out.Print<"(pen 0)\n">();
  const auto layout = Form<"(layout\n">(out);
  WriteLayerBlocks(out, m_pDrawObjArray);
}

int CBDcompGroup::nPrint2File(FILE* fp) {
  return PrintTo(fp, [this](TextOut& out) { Write(out); });
}
