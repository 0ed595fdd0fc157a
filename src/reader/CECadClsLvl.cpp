#include "reader/CECadClsLvl.h"

CECadClsLvlArray::CECadClsLvlArray() = default;
CECadClsLvlArray::~CECadClsLvlArray() {
  // While one node goes, the next ones come into the cache.
  CECadClsLvl** const nodes = GetData();
  const INT_PTR nCount = GetSize();
  for (INT_PTR i = 0; i < nCount; ++i) {
    if (i + 2 < nCount) {
      __builtin_prefetch(nodes[i + 2]);
      __builtin_prefetch(reinterpret_cast<const char*>(nodes[i + 2]) + 64);
    }
    delete nodes[i];
  }
  SetSize(0, -1);
}

CECadClsLvl::CECadClsLvl() noexcept : m_pChildren(&m_ownChildren) {}
CECadClsLvl::~CECadClsLvl() {
  if (m_pChildren != &m_ownChildren) delete m_pChildren;
}

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
