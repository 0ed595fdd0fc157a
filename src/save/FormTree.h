#pragma once
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "reader/CECadCls.h"
#include "reader/TextParse.h"

namespace laminate {

/// A form of a text: what the reader makes of it, and where it stands.
struct FormNode {
  const CECadClsLvl* pNode = nullptr;
  FormRange range{};
  std::vector<FormNode> children;
  bool bWhole = false;  ///< of a form that is wanted: it is to be written whole, or has been

  std::string_view Name() const { return pNode->m_sName.View(); }
};

/// The forms of a text.
class FormTree {
 public:
  /// `LineReader::kPadding` bytes must be readable behind the text, which must outlive the tree.
  explicit FormTree(std::string_view text);
  FormTree(const FormTree&) = delete;
  FormTree& operator=(const FormTree&) = delete;

  /// False when the text is not well formed; there are no roots then.
  bool IsSound() const { return m_bSound; }
  std::vector<FormNode>& Roots() { return m_roots; }
  const std::vector<FormNode>& Roots() const { return m_roots; }
  std::string_view Text() const { return m_text; }
  std::string_view TextOf(const FormNode& form) const {
    return m_text.substr(form.range.nBegin, form.range.nEnd - form.range.nBegin);
  }
  /// Name and values as they stand, without what surrounds them: what is between the opening bracket and the first form
  /// in it, or the closing bracket.
  FormRange HeadOf(const FormNode& form) const;

 private:
  std::string_view m_text;
  CECadCls m_reader;
  bool m_bSound;
  std::vector<FormNode> m_roots;
};

/// Equal names, values and forms in them, in the same order.
bool SameForm(const CECadClsLvl& a, const CECadClsLvl& b);
/// The same without the forms in them.
bool SameHead(const CECadClsLvl& a, const CECadClsLvl& b);
std::uint64_t HashForm(const CECadClsLvl& node);

}  // namespace laminate
