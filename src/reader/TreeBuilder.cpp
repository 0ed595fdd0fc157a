#include "reader/TreeBuilder.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <memory>
#include <new>

namespace laminate {

// Behind a node's own fields its block holds the values and then the pointers to the children.
static_assert(sizeof(CECadClsLvl) % alignof(CString) == 0 && sizeof(CString) % alignof(CECadClsLvl*) == 0);

TreeBuilder::~TreeBuilder() {
  for (CECadClsLvl* pChild : m_children) delete pChild;
}

void TreeBuilder::KeepTokens(std::string_view text) {
  const std::less_equal<const char*> notBehind;
  for (std::string_view& s : m_tokens) {
    if (notBehind(text.data(), s.data()) && notBehind(s.data(), text.data() + text.size())) s = m_kept.emplace_back(s);
  }
}

TreeBuilder::Place TreeBuilder::Innermost() const {
  const OpenForm& form = m_open[static_cast<std::size_t>(std::clamp<std::int64_t>(m_nLevel, 1, kDeepestLevel) - 1)];
  const bool bNamed = form.nFirstToken < m_tokens.size();
  return {bNamed ? m_tokens[form.nFirstToken] : std::string_view(), form.nLine, form.nInLine};
}

CECadClsLvl* TreeBuilder::MakeNode(const OpenForm& form) {
  const std::string_view* const tokens = m_tokens.data() + form.nFirstToken;
  const std::size_t nTokens = m_tokens.size() - form.nFirstToken;
  const std::size_t nValues = nTokens == 0 ? 0 : nTokens - 1;
  const std::size_t nChildren = m_children.size() - form.nFirstChild;
  void* const block = TreeAllocate(sizeof(CECadClsLvl) + nValues * sizeof(CString) + nChildren * sizeof(CECadClsLvl*));
  auto* const node = ::new (block) CECadClsLvl;
  node->m_nLevel = static_cast<int>(m_nLevel);
  node->m_nLine = form.nLine;
  auto* const values = reinterpret_cast<CString*>(node + 1);
  std::size_t nMade = 0;
  try {
    if (nTokens != 0) node->m_sName = CString(CString::FromPadded(), tokens[0]);
    for (; nMade < nValues; ++nMade) {
      std::string_view s = tokens[nMade + 1];
      if (s.size() == 1 && s[0] == ' ') s = s.substr(0, 0);
      ::new (static_cast<void*>(values + nMade)) CString(CString::FromPadded(), s);
    }
  } catch (...) {
    std::destroy_n(values, nMade);
    delete node;
    throw;
  }
  if (nValues != 0) node->m_arrValues.Borrow(values, nValues);
  if (nChildren != 0) {
    auto* const children = reinterpret_cast<CECadClsLvl**>(values + nValues);
    std::memcpy(children, m_children.data() + form.nFirstChild, nChildren * sizeof *children);
    node->m_pChildren->Borrow(children, nChildren);
  }
  return node;
}

void TreeBuilder::CloseForm() {
  const OpenForm& form = m_open[static_cast<std::size_t>(m_nLevel - 1)];
  // Room for the pointer first, so that nothing can fail between the node's making and its place.
  if (m_children.size() == m_children.capacity()) m_children.reserve(2 * m_children.size() + 16);
  CECadClsLvl* const node = MakeNode(form);
  m_tokens.resize(form.nFirstToken);
  m_children.resize(form.nFirstChild);
  m_children.push_back(node);
  if (--m_nLevel != 0) return;
  m_kept.clear();
  if (m_pComplete != nullptr) {
    m_pComplete->Add(node);
  } else {
    m_pLast.reset(node);
  }
  m_children.clear();
}

}  // namespace laminate
