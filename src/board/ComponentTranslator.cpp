#include "board/ComponentTranslator.h"

#include "board/BoardForms.h"
#include "board/CBDboardContainer.h"
#include "board/CBDcomponent.h"

namespace laminate {

int ReadComponent(const CECadClsLvl* pNode, CBDboardContainer& board) {
  if (pNode == nullptr || board.m_pComponentArray == nullptr) AfxThrowInvalidArgException();
  BoardContext context{board.m_pDrawObjArray};
  AppendOwned(*board.m_pComponentArray, ReadComponentForm(*pNode, context));
  return 0;
}

}  // namespace laminate
