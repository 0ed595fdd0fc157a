#include "reader/CECadClsLvl.h"

#include <memory>

using laminate::TreeMemory;

namespace {

template <class Delete>
void ForEachNode(const CECadClsLvlArray& nodes, Delete deleteNode) {
  CECadClsLvl* const* const data = nodes.GetData();
  const INT_PTR nCount = nodes.GetSize();
  for (INT_PTR i = 0; i < nCount; ++i) {
    // While one node goes, a later one comes into the cache.
    if (i + 2 < nCount && data[i + 2] != nullptr) {
      __builtin_prefetch(data[i + 2]);
      __builtin_prefetch(reinterpret_cast<const char*>(data[i + 2]) + 64);
    }
    if (data[i] != nullptr) deleteNode(data[i]);
  }
}

}  // namespace

CECadClsLvlArray::~CECadClsLvlArray() {
  TreeMemory& memory = TreeMemory::OfThisThread();
  ForEachNode(*this, [&memory](CECadClsLvl* p) { CECadClsLvl::Delete(p, memory); });
  SetSize(0, -1);
}

CECadClsLvl::~CECadClsLvl() {
  if (m_pChildren != &m_ownChildren) delete m_pChildren;
}

bool CECadClsLvl::IsAsParsed() const noexcept {
  return m_pChildren == &m_ownChildren && !m_ownChildren.OwnsStorage() && !m_arrValues.OwnsStorage();
}

void CECadClsLvl::Delete(CECadClsLvl* p, TreeMemory& memory) noexcept {
  if (p->IsAsParsed()) {
    ForEachNode(p->m_ownChildren, [&memory](CECadClsLvl* pChild) { Delete(pChild, memory); });
    std::destroy(p->m_arrValues.begin(), p->m_arrValues.end());
    std::destroy_at(&p->m_sName);
  } else {
    p->~CECadClsLvl();
  }
  memory.Free(p);
}

void CECadClsLvl::operator delete(CECadClsLvl* p, std::destroying_delete_t) noexcept {
  Delete(p, TreeMemory::OfThisThread());
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
