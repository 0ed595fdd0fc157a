#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "reader/CECadClsLvl.h"

namespace laminate {

/// The deepest form that the format allows.
inline constexpr int kDeepestLevel = 20;

/// Delivers a token to a form: the first one that is not empty becomes its name, later ones its values. A token that is
/// one blank is the parses' mark for an empty string. Tokens outside any form are dropped.
inline void DeliverToken(CECadClsLvl* pNode, std::string_view sToken) {
  if (sToken.empty() || pNode == nullptr) return;
  if (pNode->m_sName.IsEmpty()) {
    pNode->m_sName = sToken;
  } else if (sToken.size() == 1 && sToken[0] == ' ') {
    pNode->m_arrValues.Emplace();
  } else {
    pNode->m_arrValues.Emplace(sToken);
  }
}

/// What all parses share: the nesting, and the forms that are open. A form is attached to its parent, or handed over as
/// a complete one, when its closing bracket comes; those still open when the builder dies are freed.
class TreeBuilder {
 public:
  enum class Opened { ok, tooDeep, belowZero };

  /// Complete forms go to `pComplete`. With null the last one is kept here.
  explicit TreeBuilder(CECadClsLvlArray* pComplete) : m_pComplete(pComplete) {}

  /// Below zero after a closing bracket too many; one above the deepest after a failed `Open`.
  std::int64_t Level() const { return m_nLevel; }
  void Token(std::string_view s) { DeliverToken(m_pCurrent, s); }

  /// An opening bracket at line `nLine`, `nOffset` bytes into the text; `sToken` stood directly before it.
  Opened Open(std::string_view sToken, int nLine, std::size_t nOffset) {
    if (m_nLevel < 0 || m_nLevel >= kDeepestLevel) [[unlikely]] {
      return m_nLevel++ < 0 ? Opened::belowZero : Opened::tooDeep;
    }
    Token(sToken);
    OpenForm& form = m_open[static_cast<std::size_t>(m_nLevel)];
    form.node = std::make_unique<CECadClsLvl>();
    form.nOffset = nOffset;
    m_pCurrent = form.node.get();
    m_pCurrent->m_nLevel = static_cast<int>(++m_nLevel);
    m_pCurrent->m_nLine = nLine;
    return Opened::ok;
  }
  /// A closing bracket; true when a top-level form is complete by it.
  bool Close(std::string_view sToken) {
    Token(sToken);
    if (--m_nLevel < 0) [[unlikely]]
      return false;
    std::unique_ptr<CECadClsLvl>& node = m_open[static_cast<std::size_t>(m_nLevel)].node;
    if (m_nLevel != 0) {
      m_pCurrent = m_open[static_cast<std::size_t>(m_nLevel - 1)].node.get();
      m_pCurrent->m_pChildren->Add(node.get());
      node.release();
      return false;
    }
    m_pCurrent = nullptr;
    if (m_pComplete == nullptr) {
      m_pLast = std::move(node);
    } else {
      m_pComplete->Add(node.get());
      node.release();
    }
    return true;
  }

  /// The form that was completed last, where no array takes it; null when there is none.
  std::unique_ptr<CECadClsLvl> TakeLast() { return std::move(m_pLast); }
  /// Of the innermost open form; null when none is open.
  const CECadClsLvl* Innermost() const { return m_pCurrent; }
  std::size_t InnermostOffset() const {
    return m_nLevel > 0 ? m_open[static_cast<std::size_t>(m_nLevel - 1)].nOffset : 0;
  }

 private:
  struct OpenForm {
    std::unique_ptr<CECadClsLvl> node;
    std::size_t nOffset = 0;
  };
  CECadClsLvlArray* m_pComplete;
  std::int64_t m_nLevel = 0;
  CECadClsLvl* m_pCurrent = nullptr;
  std::array<OpenForm, kDeepestLevel> m_open;  // the form of level n at n - 1
  std::unique_ptr<CECadClsLvl> m_pLast;
};

}  // namespace laminate
