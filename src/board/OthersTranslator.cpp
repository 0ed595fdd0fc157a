#include "board/OthersTranslator.h"

#include "board/BoardForms.h"
#include "board/CBDboardContainer.h"
#include "board/CBDcompGroup.h"
#include "board/CBDlibraryEntities.h"
#include "board/CBDnet.h"
#include "board/CBDparameter.h"
#include "board/CBDsubBoard.h"
#include "drawobj/CBDdrawObj.h"
#include "reader/CECadCls.h"
#include "technology/CBDtechnologyContainer.h"

namespace laminate {

namespace {

const CECadClsLvl* FindRoot(const CECadClsLvlArray& forms) {
  for (const std::string_view sName : {"pcf", "tcf", "pnf"}) {
    if (const CECadClsLvl* p = forms.pFind(sName)) return p;
  }
  return nullptr;
}

// The children of one name in the section of that name, if there is one, become objects of the array.
template <class Array, class Read>
void ReadSection(const CECadClsLvl& node, std::string_view sSection, std::string_view sKeyword, Array* pArray,
                 Read&& read) {
  const CECadClsLvl* pSection = FindChild(node, sSection);
  if (pSection == nullptr) return;
  Array& array = Required(pArray);
  ForEachChild(*pSection, sKeyword, [&](const CECadClsLvl& child) { AppendOwned(array, read(child)); });
  array.FreeExtra();
}

void ReadBoard(const CECadClsLvl& node, CBDboardContainer& board) {
  BoardContext context{board.m_pDrawObjArray};
  ReadSection(node, "subBoards", "subBoard", board.m_pSubBoardArray, ReadSubBoard);
  ReadSection(node, "compGroups", "compGroup", board.m_pCompGroupArray,
              [&context](const CECadClsLvl& child) { return ReadCompGroup(child, context); });
  ReadSection(node, "nets", "net", board.m_pNetArray, ReadNet);
}

}  // namespace

int ReadOthers(CECadCls* pReader, OthersTarget& target) {
  const CECadClsLvlArray& forms = Required(Required(pReader).m_pRootArray);
  CBDboardContainer* pBoard = target.pBoard;
  if (pBoard != nullptr && pBoard->m_pNetArray == nullptr) pBoard->m_pNetArray = new CBDnetArray;
  const CECadClsLvl* pRoot = FindRoot(forms);
  if (pRoot == nullptr) {
    delete pReader;
    return -1;
  }
  // Each section is looked up when its turn comes, whatever their order in the file.
  if (const CECadClsLvl* pHeader = FindChild(*pRoot, "header")) {
    target.sVersion = Token(RequireChild(*pHeader, "version"), 1);
  }
  if (const CECadClsLvl* p = FindChild(*pRoot, "technologyContainer")) ReadTechnology(*p, Required(target.pTechnology));
  if (const CECadClsLvl* p = FindChild(*pRoot, "boardContainer")) ReadBoard(*p, Required(pBoard));
  if (const CECadClsLvl* p = FindChild(*pRoot, "parameter")) ReadParameter(*p, Required(target.pParameter));
  if (const CECadClsLvl* p = FindChild(*pRoot, "libraryEntities")) {
    ReadLibraryEntities(*p, Required(target.pLibraryEntities));
  }
  return 0;
}

}  // namespace laminate
