#include "board/LayerTranslator.h"

#include "board/CBDboardContainer.h"
#include "board/LayerForms.h"
#include "reader/ObjectRow.h"

namespace laminate {

namespace {

// A layer that only tells about another is dropped, unless it names itself.
bool IsDropped(const CECadClsLvl& layer, const ShapeContext& context) {
  return context.sLayerType.IsEmpty() &&
         (FindChild(layer, "drawOf") != nullptr || FindChild(layer, "infoOf") != nullptr);
}

}  // namespace

int ReadBoardLayer(const CECadClsLvl* pNode, CBDboardContainer& board) {
  if (pNode == nullptr || board.m_pDrawObjArray == nullptr) AfxThrowInvalidArgException();
  CBDdrawObjArray& shapes = *board.m_pDrawObjArray;
  const ShapeContext context = ResolveLayer(*pNode, &shapes);
  if (IsDropped(*pNode, context)) return 0;
  // Rules, messages and remarks stand in layers too; their content is not kept.
  AppendShapesOfLayer(*pNode, context, shapes, AppendFirstOfRefer, {"ruleArea", "message", "info"});
  return 0;
}

}  // namespace laminate
