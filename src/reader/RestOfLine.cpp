#include "reader/RestOfLine.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <utility>

#include "base/CException.h"

namespace laminate {
namespace {

using Numbers = std::vector<std::uint32_t>;

// Suffixes of a text in order, by induced sorting: the suffixes that begin at a local descent are sorted first (by
// their names, in a text of names if two are equal), all others follow from them in two sweeps.
class SuffixSorter {
 public:
  SuffixSorter(const Numbers& text, std::size_t nLargest)
      : m_text(text), m_nLargest(nLargest), m_isSmall(text.size(), false), m_sorted(text.size(), kEmpty) {}

  Numbers Sort() {
    const std::size_t n = m_text.size();
    if (n == 0) return {};
    for (std::size_t i = n - 1; i-- > 0;) {
      m_isSmall[i] = m_text[i] == m_text[i + 1] ? m_isSmall[i + 1] : m_text[i] < m_text[i + 1];
    }
    CountBuckets();
    Numbers descents;
    for (std::size_t i = 1; i < n; ++i) {
      if (IsDescent(i)) descents.push_back(static_cast<std::uint32_t>(i));
    }
    Induce(descents);
    if (descents.size() > 1) Induce(OrderOf(descents));
    return std::move(m_sorted);
  }

 private:
  static constexpr std::uint32_t kEmpty = std::numeric_limits<std::uint32_t>::max();

  bool IsDescent(std::size_t i) const { return i > 0 && m_isSmall[i] && !m_isSmall[i - 1]; }

  void CountBuckets() {
    m_begin.assign(m_nLargest + 2, 0);
    for (std::uint32_t c : m_text) ++m_begin[c + 1];
    for (std::size_t c = 0; c <= m_nLargest; ++c) m_begin[c + 1] += m_begin[c];
  }

  // Puts the given suffixes at the ends of their buckets and derives the place of every other one.
  void Induce(const Numbers& descents) {
    const std::size_t n = m_text.size();
    std::fill(m_sorted.begin(), m_sorted.end(), kEmpty);
    Numbers at(m_begin.begin() + 1, m_begin.end());
    for (std::size_t i = descents.size(); i-- > 0;) m_sorted[--at[m_text[descents[i]]]] = descents[i];
    at.assign(m_begin.begin(), m_begin.end() - 1);
    m_sorted[at[m_text[n - 1]]++] = static_cast<std::uint32_t>(n - 1);
    for (std::size_t i = 0; i < n; ++i) {
      const std::uint32_t s = m_sorted[i];
      if (s != kEmpty && s > 0 && !m_isSmall[s - 1]) m_sorted[at[m_text[s - 1]]++] = s - 1;
    }
    at.assign(m_begin.begin() + 1, m_begin.end());
    for (std::size_t i = n; i-- > 0;) {
      const std::uint32_t s = m_sorted[i];
      if (s != kEmpty && s > 0 && m_isSmall[s - 1]) m_sorted[--at[m_text[s - 1]]] = s - 1;
    }
  }

  // The descents in the order of their suffixes, from a first induction that sorted the pieces between them.
  Numbers OrderOf(const Numbers& descents) const {
    const std::size_t n = m_text.size();
    Numbers number(n, kEmpty);
    for (std::size_t k = 0; k < descents.size(); ++k) number[descents[k]] = static_cast<std::uint32_t>(k);
    Numbers names(descents.size());
    std::uint32_t nName = 0;
    std::uint32_t last = kEmpty;
    for (std::uint32_t s : m_sorted) {
      if (number[s] == kEmpty) continue;
      if (last != kEmpty && !SamePiece(descents, number[last], number[s])) ++nName;
      names[number[s]] = nName;
      last = s;
    }
    Numbers order(descents.size());
    if (nName + 1 == descents.size()) {
      for (std::size_t k = 0; k < names.size(); ++k) order[names[k]] = descents[k];
    } else {
      const Numbers ranks = SuffixSorter(names, nName).Sort();
      for (std::size_t k = 0; k < ranks.size(); ++k) order[k] = descents[ranks[k]];
    }
    return order;
  }

  bool SamePiece(const Numbers& descents, std::uint32_t a, std::uint32_t b) const {
    const std::size_t n = m_text.size();
    const std::size_t endA = a + 1 < descents.size() ? descents[a + 1] : n;
    const std::size_t endB = b + 1 < descents.size() ? descents[b + 1] : n;
    std::size_t i = descents[a];
    std::size_t j = descents[b];
    if (endA - i != endB - j) return false;
    while (i < endA && m_text[i] == m_text[j]) {
      ++i;
      ++j;
    }
    // Both pieces run on over the first byte of the next descent; the one at the text's end has none.
    return i == endA && i < n && j < n && m_text[i] == m_text[j];
  }

  const Numbers& m_text;
  const std::size_t m_nLargest;
  std::vector<bool> m_isSmall;  // the suffix is smaller than the one behind it
  Numbers m_sorted;
  Numbers m_begin;  // where each byte's bucket begins
};

// Smallest value of any range, and the nearest value below a bound, in logarithmic time.
class Minima {
 public:
  explicit Minima(const Numbers& values) : m_nLeaves(std::bit_ceil(std::max<std::size_t>(values.size(), 1))) {
    m_tree.assign(2 * m_nLeaves, std::numeric_limits<std::uint32_t>::max());
    std::copy(values.begin(), values.end(), m_tree.begin() + static_cast<std::ptrdiff_t>(m_nLeaves));
    for (std::size_t i = m_nLeaves; i-- > 1;) m_tree[i] = std::min(m_tree[2 * i], m_tree[2 * i + 1]);
  }
  // Over the indexes from `first` to `last`, both included.
  std::uint32_t Min(std::size_t first, std::size_t last) const {
    std::uint32_t n = std::numeric_limits<std::uint32_t>::max();
    std::size_t a = first + m_nLeaves;
    std::size_t b = last + m_nLeaves + 1;
    for (; a < b; a /= 2, b /= 2) {
      if (a % 2 == 1) n = std::min(n, m_tree[a++]);
      if (b % 2 == 1) n = std::min(n, m_tree[--b]);
    }
    return n;
  }
  // The last index at or before `from` whose value is below the bound; there must be one.
  std::size_t LastBelow(std::size_t from, std::size_t bound) const {
    std::size_t i = from + m_nLeaves;
    while (m_tree[i] >= bound) {
      while (i % 2 == 0) i /= 2;
      --i;
    }
    while (i < m_nLeaves) i = m_tree[2 * i + 1] < bound ? 2 * i + 1 : 2 * i;
    return i - m_nLeaves;
  }
  // The first index at or behind `from` whose value is below the bound; `none` if there is none.
  std::size_t FirstBelow(std::size_t from, std::size_t bound, std::size_t none) const {
    if (from >= none) return none;
    std::size_t i = from + m_nLeaves;
    while (m_tree[i] >= bound) {
      while (i % 2 == 1) i /= 2;
      if (i == 0) return none;
      ++i;
    }
    while (i < m_nLeaves) i = m_tree[2 * i] < bound ? 2 * i : 2 * i + 1;
    return i - m_nLeaves;
  }

 private:
  std::size_t m_nLeaves;
  Numbers m_tree;
};

Numbers SortedSuffixes(std::string_view s) {
  Numbers text(s.size());
  for (std::size_t i = 0; i < s.size(); ++i) text[i] = static_cast<unsigned char>(s[i]);
  return SuffixSorter(text, 255).Sort();
}

Numbers RanksOf(const Numbers& sorted) {
  Numbers ranks(sorted.size());
  for (std::size_t i = 0; i < sorted.size(); ++i) ranks[sorted[i]] = static_cast<std::uint32_t>(i);
  return ranks;
}

// For each suffix in order, how many bytes it shares with the one before it.
Numbers SharedWithBefore(std::string_view s, const Numbers& sorted, const Numbers& ranks) {
  Numbers shared(s.size(), 0);
  std::size_t n = 0;
  for (std::size_t i = 0; i < s.size(); ++i) {
    if (ranks[i] == 0) {
      n = 0;
      continue;
    }
    const std::size_t j = sorted[ranks[i] - 1];
    while (std::max(i, j) + n < s.size() && s[i + n] == s[j + n]) ++n;
    shared[ranks[i]] = static_cast<std::uint32_t>(n);
    if (n > 0) --n;
  }
  return shared;
}

}  // namespace

// All suffixes of a line in order. Those that begin with a given text stand side by side, so its first occurrence is
// the smallest place among them.
class RestOfLine::Index {
 public:
  explicit Index(std::string_view s)
      : m_nSize(s.size()),
        m_sorted(SortedSuffixes(s)),
        m_ranks(RanksOf(m_sorted)),
        m_shared(SharedWithBefore(s, m_sorted, m_ranks)),
        m_places(m_sorted) {}

  // Where the text of `nLength` bytes from `nFrom` on occurs first.
  std::size_t FirstOccurrence(std::size_t nFrom, std::size_t nLength) const {
    const std::size_t rank = m_ranks[nFrom];
    const std::size_t first = m_shared.LastBelow(rank, nLength);
    const std::size_t behind = m_shared.FirstBelow(rank + 1, nLength, m_nSize);
    return m_places.Min(first, behind - 1);
  }
  // How many bytes the suffixes from two different places share.
  std::size_t CommonPrefix(std::size_t a, std::size_t b) const {
    if (std::max(a, b) >= m_nSize) return 0;
    const auto [first, last] = std::minmax(m_ranks[a], m_ranks[b]);
    return m_shared.Min(first + 1, last);
  }

 private:
  std::size_t m_nSize;
  Numbers m_sorted;
  Numbers m_ranks;
  Minima m_shared;
  Minima m_places;
};

RestOfLine::RestOfLine(std::size_t nBudget) : m_nBudget(nBudget) {}
RestOfLine::~RestOfLine() = default;

void RestOfLine::Start(std::string_view sLine) {
  // The tables count in 32 bits; a string of such a line could not be held anyway.
  if (sLine.size() >= std::numeric_limits<std::uint32_t>::max()) AfxThrowMemoryException();
  m_line = sLine;
  m_nSpent = 0;
  m_nFrom = kNone;
  m_pIndex.reset();
}

void RestOfLine::ComputePrefixes(std::size_t nFrom) {
  const std::string_view own = m_line.substr(nFrom);
  const std::size_t n = own.size();
  m_own.assign(n, 0);
  m_own[0] = static_cast<std::uint32_t>(n);
  // [begin, end) is the stretch that reaches farthest to the right and is known to equal the string's beginning.
  std::size_t begin = 0;
  std::size_t end = 0;
  for (std::size_t i = 1; i < n; ++i) {
    std::size_t k = i < end ? std::min<std::size_t>(end - i, m_own[i - begin]) : 0;
    while (i + k < n && own[k] == own[i + k]) ++k;
    m_own[i] = static_cast<std::uint32_t>(k);
    if (i + k > end) {
      begin = i;
      end = i + k;
    }
  }
  m_before.assign(nFrom, 0);
  begin = end = 0;
  for (std::size_t i = 0; i < nFrom; ++i) {
    std::size_t k = i < end ? std::min<std::size_t>(end - i, m_own[i - begin]) : 0;
    while (k < n && m_line[i + k] == own[k]) ++k;
    m_before[i] = static_cast<std::uint32_t>(k);
    if (i + k > end) {
      begin = i;
      end = i + k;
    }
  }
  m_nFrom = nFrom;
  m_nFirst = 0;
  m_nSpent += m_line.size();
}

int RestOfLine::FirstByte(std::size_t nFrom, std::size_t nQuote) {
  const std::size_t nLength = nQuote - nFrom + 1;
  if (m_pIndex == nullptr && m_nFrom != nFrom) {
    if (m_nSpent < m_nBudget + m_nBudget / kBudgetPerStep * m_line.size()) {
      ComputePrefixes(nFrom);
    } else {
      m_pIndex = std::make_unique<Index>(m_line);
    }
  }
  if (m_pIndex != nullptr) {
    const std::size_t nFirst = m_pIndex->FirstOccurrence(nFrom, nLength);
    const std::size_t nBehind = nFirst + nLength;
    return ByteAt(nBehind + m_pIndex->CommonPrefix(nFirst, nBehind) / nLength * nLength);
  }
  while (CommonPrefix(m_nFirst) < nLength) ++m_nFirst;
  std::size_t nBehind = m_nFirst + nLength;
  while (nBehind < m_line.size() && CommonPrefix(nBehind) >= nLength) {
    nBehind += nLength;
    ++m_nSpent;
  }
  return ByteAt(nBehind);
}

}  // namespace laminate
