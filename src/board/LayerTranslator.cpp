#include "board/LayerTranslator.h"

#include "board/CBDboardContainer.h"
#include "board/LayerForms.h"
#include "reader/ObjectRow.h"

namespace laminate {

namespace {

// Rules, messages and remarks stand in layers too; their content is not kept.
bool IsRemark(std::string_view sKeyword) {
  return sKeyword == "ruleArea" || sKeyword == "message" || sKeyword == "info";
}

// A layer that only tells about another is dropped, unless it names itself.
bool IsDropped(const CECadClsLvl& layer, const ShapeContext& context) {
  return context.sLayerType.IsEmpty() &&
         (FindChild(layer, "drawOf") != nullptr || FindChild(layer, "infoOf") != nullptr);
}

}  // namespace

int ReadBoardLayer(const CECadClsLvl* pNode, CBDboardContainer& board) {
  if (pNode == nullptr || board.m_pDrawObjArray == nullptr) AfxThrowInvalidArgException();
  CBDdrawObjArray& shapes = *board.m_pDrawObjArray;
  ShapeContext context = ResolveLayer(*pNode, &shapes);
  if (IsDropped(*pNode, context)) return 0;
  ForEachChild(*pNode, [&](const CECadClsLvl& child) {
    const std::string_view sKeyword = child.m_sName.View();
    if (NamesLayer(sKeyword) || IsRemark(sKeyword)) return;
    if (sKeyword == "refer") {
      AppendFirstOfRefer(child, context, shapes);
    } else {
      AppendShape(child, context, shapes);
    }
  });
  return 0;
}

}  // namespace laminate
