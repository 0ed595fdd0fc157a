#pragma once
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace laminate {

/// Judges a quote after a backslash inside a string. The rule reads: take a copy of the line, delete all before the
/// first occurrence of the string's text so far, remove all occurrences of that text; what remains is the rest of the
/// line, and its first byte decides. Done as it reads this costs the line's length for every quote. Here the first
/// questions on a line are answered by the common prefixes of the string with every place of the line, computed once
/// per string; a line with so many strings that this too would add up gets one index of all its suffixes. Either way
/// the answer is exactly that of the rule.
class RestOfLine {
 public:
  /// `nBudget` is how many steps the way by strings may take before the line gets its index; one more per byte of the
  /// line is granted for every 4096 of it.
  explicit RestOfLine(std::size_t nBudget = 64 * 1024);
  ~RestOfLine();
  RestOfLine(const RestOfLine&) = delete;
  RestOfLine& operator=(const RestOfLine&) = delete;

  /// The line that the next questions are about; it must outlive them. Free of cost.
  void Start(std::string_view sLine);
  std::string_view Line() const { return m_line; }

  static constexpr int kNothing = -1;
  /// The first byte of the rest behind the quote at `nQuote`, for a string whose text on this line begins at `nFrom`;
  /// `kNothing` when the rest is empty.
  int FirstByte(std::size_t nFrom, std::size_t nQuote);

 private:
  class Index;

  void ComputePrefixes(std::size_t nFrom);
  std::size_t CommonPrefix(std::size_t n) const { return n < m_nFrom ? m_before[n] : m_own[n - m_nFrom]; }
  int ByteAt(std::size_t n) const { return n == m_line.size() ? kNothing : static_cast<unsigned char>(m_line[n]); }

  static constexpr std::size_t kBudgetPerStep = 4096;
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  const std::size_t m_nBudget;
  std::string_view m_line;
  std::size_t m_nSpent = 0;
  std::size_t m_nFrom = kNone;          // the string that the prefixes below belong to
  std::size_t m_nFirst = 0;             // where its text occurs first: it only moves on as the text grows
  std::vector<std::uint32_t> m_own;     // common prefix of the string with its own suffixes, to the line's end
  std::vector<std::uint32_t> m_before;  // and with the places of the line before it
  std::unique_ptr<Index> m_pIndex;
};

}  // namespace laminate
