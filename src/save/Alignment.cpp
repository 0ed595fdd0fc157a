#include "save/Alignment.h"

#include <algorithm>
#include <unordered_map>

namespace laminate {

namespace {

using Kind = AlignedStep::Kind;

struct Pair {
  std::size_t i;
  std::size_t j;
};

// The elements between two pairs.
struct Gap {
  std::size_t iBegin, iEnd;
  std::size_t jBegin, jEnd;
  bool IsOneSided() const { return iBegin == iEnd || jBegin == jEnd; }
};

// The longest part of the pairs, which are in the order of j, in which i rises too.
std::vector<Pair> LongestRising(const std::vector<Pair>& pairs) {
  constexpr std::size_t kNone = static_cast<std::size_t>(-1);
  std::vector<std::size_t> tails;  // the pair that ends the best row of each length
  std::vector<std::size_t> before(pairs.size(), kNone);
  for (std::size_t n = 0; n < pairs.size(); ++n) {
    const auto it = std::lower_bound(tails.begin(), tails.end(), pairs[n].i,
                                     [&](std::size_t tail, std::size_t i) { return pairs[tail].i < i; });
    if (it != tails.begin()) before[n] = *(it - 1);
    if (it == tails.end()) {
      tails.push_back(n);
    } else {
      *it = n;
    }
  }
  std::vector<Pair> rising;
  for (std::size_t n = tails.empty() ? kNone : tails.back(); n != kNone; n = before[n]) rising.push_back(pairs[n]);
  std::reverse(rising.begin(), rising.end());
  return rising;
}

// Pairs elements of a gap whose numbers are equal, the first with the first, and that `accept` takes.
template <class OldNumber, class NewNumber, class Accept>
std::vector<Pair> PairByNumber(const Gap& gap, OldNumber oldNumber, NewNumber newNumber, Accept accept) {
  std::unordered_map<std::uint64_t, std::vector<std::size_t>> olds;
  for (std::size_t i = gap.iEnd; i-- != gap.iBegin;) olds[oldNumber(i)].push_back(i);
  std::vector<Pair> pairs;
  for (std::size_t j = gap.jBegin; j != gap.jEnd; ++j) {
    const auto it = olds.find(newNumber(j));
    if (it == olds.end() || it->second.empty() || !accept(it->second.back(), j)) continue;
    pairs.push_back({it->second.back(), j});
    it->second.pop_back();
  }
  return LongestRising(pairs);
}

class Aligner {
 public:
  explicit Aligner(const Comparison& comparison) : m_comparison(comparison) {}

  std::vector<AlignedStep> Run() {
    const Comparison& c = m_comparison;
    Gap gap{0, c.nOld, 0, c.nNew};
    while (!gap.IsOneSided() && c.same(gap.iBegin, gap.jBegin)) Step(Kind::kept, gap.iBegin++, gap.jBegin++);
    std::size_t nSuffix = 0;
    while (!gap.IsOneSided() && c.same(gap.iEnd - 1, gap.jEnd - 1)) {
      --gap.iEnd;
      --gap.jEnd;
      ++nSuffix;
    }
    ByContent(gap);
    for (std::size_t n = 0; n < nSuffix; ++n) Step(Kind::kept, gap.iEnd + n, gap.jEnd + n);
    return std::move(m_steps);
  }

 private:
  void Step(Kind kind, std::size_t i, std::size_t j) { m_steps.push_back({kind, i, j}); }

  // Takes the pairs of a gap as steps, and what lies between them by `between`.
  template <class Between>
  void Follow(const Gap& gap, const std::vector<Pair>& pairs, Kind kind, Between between) {
    Gap rest = gap;
    for (const Pair& pair : pairs) {
      between(Gap{rest.iBegin, pair.i, rest.jBegin, pair.j});
      Step(kind, pair.i, pair.j);
      rest.iBegin = pair.i + 1;
      rest.jBegin = pair.j + 1;
    }
    between(rest);
  }

  void ByContent(const Gap& gap) {
    if (gap.IsOneSided()) return ByPlace(gap);
    const std::vector<Pair> pairs = PairByNumber(gap, m_comparison.oldHash, m_comparison.newHash, m_comparison.same);
    Follow(gap, pairs, Kind::kept, [this](const Gap& between) { ByName(between); });
  }
  void ByName(const Gap& gap) {
    if (gap.IsOneSided() || !m_comparison.oldName) return ByPlace(gap);
    const std::vector<Pair> pairs =
        PairByNumber(gap, m_comparison.oldName, m_comparison.newName, [](std::size_t, std::size_t) { return true; });
    Follow(gap, pairs, Kind::changed, [this](const Gap& between) { ByPlace(between); });
  }
  void ByPlace(const Gap& gap) {
    std::size_t i = gap.iBegin;
    std::size_t j = gap.jBegin;
    // Where more went than came, or more came than went, only those at the ends can be told.
    for (; i != gap.iEnd && j != gap.jEnd && m_comparison.akin(i, j); ++i, ++j) Step(Kind::changed, i, j);
    std::size_t nTail = 0;
    while (gap.iEnd - nTail != i && gap.jEnd - nTail != j &&
           m_comparison.akin(gap.iEnd - nTail - 1, gap.jEnd - nTail - 1)) {
      ++nTail;
    }
    for (; i != gap.iEnd - nTail; ++i) Step(Kind::removed, i, j);
    for (; j != gap.jEnd - nTail; ++j) Step(Kind::added, i, j);
    for (; i != gap.iEnd; ++i, ++j) Step(Kind::changed, i, j);
  }

  const Comparison& m_comparison;
  std::vector<AlignedStep> m_steps;
};

}  // namespace

std::vector<AlignedStep> Align(const Comparison& comparison) { return Aligner(comparison).Run(); }

}  // namespace laminate
