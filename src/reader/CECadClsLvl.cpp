#include "reader/CECadClsLvl.h"

CECadClsLvl::CECadClsLvl() : m_pChildren(new CECadClsLvlArray) {}
CECadClsLvl::~CECadClsLvl() { delete m_pChildren; }

CECadClsLvl* CECadClsLvlArray::pFind(std::string_view sName) const {
  for (CECadClsLvl* pNode : *this) {
    if (pNode != nullptr && pNode->m_sName.View() == sName) return pNode;
  }
  return nullptr;
}

void CECadClsLvlArray::vFindAllByName(CString sName, CECadClsLvlArray& arrResult) const {
  // The count is taken first: the result may be this array itself.
  const INT_PTR nCount = GetSize();
  for (INT_PTR i = 0; i < nCount; ++i) {
    CECadClsLvl* pNode = GetAt(i);
    if (pNode != nullptr && pNode->m_sName == sName) arrResult.Add(pNode);
  }
}
