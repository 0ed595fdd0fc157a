#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "reader/CECadClsLvl.h"

namespace laminate {

/// The deepest form that the format allows.
inline constexpr int kDeepestLevel = 20;

/// What all parses share: the nesting, and the forms that are open. A form becomes a node when its closing bracket
/// comes, since then all that belongs to it is known and can stand in one block of memory. Forms that are still open
/// when the builder dies become nothing, and what was complete in them is freed.
class TreeBuilder {
 public:
  enum class Opened { ok, tooDeep, belowZero };

  /// Complete forms go to `pComplete`. With null the last one is kept here.
  explicit TreeBuilder(CECadClsLvlArray* pComplete) : m_pComplete(pComplete) {}
  ~TreeBuilder();
  TreeBuilder(const TreeBuilder&) = delete;
  TreeBuilder& operator=(const TreeBuilder&) = delete;

  /// Below zero after a closing bracket too many; one above the deepest after a failed `Open`.
  std::int64_t Level() const { return m_nLevel; }

  /// Delivers a token to the innermost form; outside any form it is dropped. Its bytes must last until its form is
  /// complete or `KeepTokens` is called, and at least 16 bytes must be readable from its first one on.
  void Token(std::string_view s) {
    if (!s.empty() && m_nLevel > 0) m_tokens.push_back(s);
  }
  /// The same for a token that does not last.
  void TokenToKeep(std::string_view s) {
    if (!s.empty() && m_nLevel > 0) m_tokens.push_back(m_kept.emplace_back(s));
  }

  /// The text that tokens may lie in is about to go.
  void KeepTokens(std::string_view text);
  /// A token that is one blank: the parses' mark for an empty string.
  void EmptyString() {
    static constexpr char kBlank[16] = " ";
    Token({kBlank, 1});
  }

  /// An opening bracket, `nInLine` bytes into line `nLine`.
  Opened Open(int nLine, std::size_t nInLine) {
    if (m_nLevel < 0 || m_nLevel >= kDeepestLevel) [[unlikely]] {
      return m_nLevel++ < 0 ? Opened::belowZero : Opened::tooDeep;
    }
    m_open[static_cast<std::size_t>(m_nLevel++)] = {m_tokens.size(), m_children.size(), m_kept.size(), nInLine, nLine};
    return Opened::ok;
  }
  /// A closing bracket; true when a top-level form is complete by it.
  bool Close() {
    if (m_nLevel <= 0) [[unlikely]] {
      --m_nLevel;
      return false;
    }
    CloseForm();
    return m_nLevel == 0;
  }

  /// The form that was completed last, where no array takes it; null when there is none.
  std::unique_ptr<CECadClsLvl> TakeLast() { return std::move(m_pLast); }

  /// The innermost open form; there must be one.
  struct Place {
    std::string_view sName;
    int nLine;
    std::size_t nInLine;
  };
  Place Innermost() const;

 private:
  struct OpenForm {
    std::size_t nFirstToken;
    std::size_t nFirstChild;
    std::size_t nFirstKept;
    std::size_t nInLine;
    int nLine;
  };

  void CloseForm();
  CECadClsLvl* MakeNode(const OpenForm& form);

  TreeMemory& m_memory = TreeMemory::OfThisThread();
  CECadClsLvlArray* m_pComplete;
  std::int64_t m_nLevel = 0;
  std::array<OpenForm, kDeepestLevel> m_open;  // the form of level n at n - 1
  std::vector<std::string_view> m_tokens;      // of all open forms
  std::vector<CECadClsLvl*> m_children;        // of all open forms; owned
  std::deque<std::string> m_kept;              // tokens that would not last
  std::size_t m_nKeptTokens = 0;               // so many of the first tokens are known to last
  std::unique_ptr<CECadClsLvl> m_pLast;
};

}  // namespace laminate
