#include "save/FormTree.h"

#include <functional>

namespace laminate {

namespace {

// Ranges come in the order in which forms close.
FormNode Build(const CECadClsLvl& node, const FormRange*& pRange) {
  FormNode form;
  form.pNode = &node;
  form.children.reserve(static_cast<std::size_t>(node.m_pChildren->GetSize()));
  for (const CECadClsLvl* pChild : *node.m_pChildren) form.children.push_back(Build(*pChild, pRange));
  form.range = *pRange++;
  return form;
}

}  // namespace

FormTree::FormTree(std::string_view text) : m_text(text) {
  std::vector<FormRange> ranges;
  m_bSound = ParseText(m_reader, text, &ranges) == 0;
  if (!m_bSound) return;
  const FormRange* pRange = ranges.data();
  for (const CECadClsLvl* pRoot : *m_reader.m_pRootArray) m_roots.push_back(Build(*pRoot, pRange));
}

FormRange FormTree::HeadOf(const FormNode& form) const {
  const std::size_t nEnd = form.children.empty() ? form.range.nEnd - 1 : form.children.front().range.nBegin;
  const std::string_view s = m_text.substr(0, nEnd);
  const std::size_t nLast = s.find_last_not_of(" \t\r\n");
  const std::size_t nFirst = s.find_first_not_of(" \t\r\n", form.range.nBegin + 1);
  if (nFirst == s.npos) return {form.range.nBegin + 1, form.range.nBegin + 1};
  return {nFirst, nLast + 1};
}

bool SameHead(const CECadClsLvl& a, const CECadClsLvl& b) {
  return a.m_sName == b.m_sName && a.m_arrValues == b.m_arrValues;
}

bool SameForm(const CECadClsLvl& a, const CECadClsLvl& b) {
  if (a.m_pChildren->GetSize() != b.m_pChildren->GetSize() || !SameHead(a, b)) return false;
  for (INT_PTR i = 0; i < a.m_pChildren->GetSize(); ++i) {
    if (!SameForm(*a.m_pChildren->GetData()[i], *b.m_pChildren->GetData()[i])) return false;
  }
  return true;
}

std::uint64_t HashForm(const CECadClsLvl& node) {
  constexpr std::hash<std::string_view> hash;
  std::uint64_t n = 0x243f6a8885a308d3u;
  const auto add = [&n](std::uint64_t value) {
    n = (n ^ value) * 0x9e3779b97f4a7c15u;
    n ^= n >> 29;
  };
  add(hash(node.m_sName.View()));
  for (const CString& s : node.m_arrValues) add(hash(s.View()));
  add(static_cast<std::uint64_t>(node.m_arrValues.GetSize()));
  for (const CECadClsLvl* pChild : *node.m_pChildren) add(HashForm(*pChild));
  return n;
}

}  // namespace laminate
