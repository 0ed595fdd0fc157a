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
  if (pArray == nullptr) AfxThrowInvalidArgException();
  ForEachChild(*pSection, sKeyword, [&](const CECadClsLvl& child) { AppendOwned(*pArray, read(child)); });
  pArray->FreeExtra();
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
  if (pReader == nullptr || pReader->m_pRootArray == nullptr) AfxThrowInvalidArgException();
  if (target.board.m_pNetArray == nullptr) target.board.m_pNetArray = new CBDnetArray;
  const CECadClsLvl* pRoot = FindRoot(*pReader->m_pRootArray);
  if (pRoot == nullptr) {
    delete pReader;
    return -1;
  }
  // Each section is looked up when its turn comes, whatever their order in the file.
  if (const CECadClsLvl* pHeader = FindChild(*pRoot, "header")) {
    target.sVersion = Token(RequireChild(*pHeader, "version"), 1);
  }
  if (const CECadClsLvl* p = FindChild(*pRoot, "technologyContainer")) ReadTechnology(*p, target.technology);
  if (const CECadClsLvl* p = FindChild(*pRoot, "boardContainer")) ReadBoard(*p, target.board);
  if (const CECadClsLvl* p = FindChild(*pRoot, "parameter")) ReadParameter(*p, target.parameter);
  if (const CECadClsLvl* p = FindChild(*pRoot, "libraryEntities")) ReadLibraryEntities(*p, target.libraryEntities);
  return 0;
}

}  // namespace laminate
