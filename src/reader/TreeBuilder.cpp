#include "reader/TreeBuilder.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <memory>
#include <new>

#include "reader/LineReader.h"

namespace laminate {

// Behind a node's own fields its block holds the values and then the pointers to the children.
static_assert(sizeof(CECadClsLvl) % alignof(CString) == 0 && sizeof(CString) % alignof(CECadClsLvl*) == 0);

TreeBuilder::~TreeBuilder() {
  for (CECadClsLvl* pChild : m_children) delete pChild;
}

void TreeBuilder::KeepTokens(std::string_view text) {
  const std::less_equal<const char*> notBehind;
  for (; m_nKeptTokens < m_tokens.size(); ++m_nKeptTokens) {
    std::string_view& s = m_tokens[m_nKeptTokens];
    if (notBehind(text.data(), s.data()) && notBehind(s.data(), text.data() + text.size())) s = m_kept.emplace_back(s);
  }
  // What is kept by now may belong to any open form: it goes with the outermost one.
  for (OpenForm& form : m_open) form.nFirstKept = m_kept.size();
}

TreeBuilder::Place TreeBuilder::Innermost() const {
  const OpenForm& form = m_open[static_cast<std::size_t>(std::clamp<std::int64_t>(m_nLevel, 1, kDeepestLevel) - 1)];
  const bool bNamed = form.nFirstToken < m_tokens.size();
  return {bNamed ? m_tokens[form.nFirstToken] : std::string_view(), form.nLine, form.nInLine};
}

CECadClsLvl* TreeBuilder::MakeNode(const OpenForm& form) {
  static constexpr char kNoName[LineReader::kPadding] = {};
  const std::string_view* token = m_tokens.data() + form.nFirstToken;
  const std::string_view* const end = m_tokens.data() + m_tokens.size();
  const std::string_view sName = token == end ? std::string_view(kNoName, 0) : *token++;
  const auto nValues = static_cast<std::size_t>(end - token);
  const std::size_t nChildren = m_children.size() - form.nFirstChild;
  void* const block =
      m_memory.Allocate(sizeof(CECadClsLvl) + nValues * sizeof(CString) + nChildren * sizeof(CECadClsLvl*));
  CECadClsLvl* node = nullptr;
  CString* const values = reinterpret_cast<CString*>(static_cast<CECadClsLvl*>(block) + 1);
  CString* value = values;
  try {
    node = ::new (block) CECadClsLvl(sName, static_cast<int>(m_nLevel), form.nLine);
    for (; token != end; ++token, ++value) {
      const bool bEmpty = token->size() == 1 && (*token)[0] == ' ';
      ::new (static_cast<void*>(value)) CString(CString::FromPadded(), bEmpty ? token->substr(0, 0) : *token);
    }
  } catch (...) {
    std::destroy(values, value);
    if (node != nullptr) node->~CECadClsLvl();
    m_memory.Free(block);
    throw;
  }
  if (nValues != 0) node->m_arrValues.Borrow(values, nValues);
  if (nChildren != 0) {
    auto* const children = reinterpret_cast<CECadClsLvl**>(value);
    std::memcpy(children, m_children.data() + form.nFirstChild, nChildren * sizeof *children);
    node->m_ownChildren.Borrow(children, nChildren);
  }
  return node;
}

void TreeBuilder::CloseForm() {
  const OpenForm& form = m_open[static_cast<std::size_t>(m_nLevel - 1)];
  // Room for the pointer first, so that nothing can fail between the node's making and its place.
  if (m_children.size() == m_children.capacity()) m_children.reserve(2 * m_children.size() + 16);
  CECadClsLvl* const node = MakeNode(form);
  m_tokens.resize(form.nFirstToken);
  m_nKeptTokens = std::min(m_nKeptTokens, form.nFirstToken);
  if (m_kept.size() > form.nFirstKept) m_kept.resize(form.nFirstKept);
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
