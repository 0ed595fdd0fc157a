#include "Suggestions.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "Console.h"
#include "JsonText.h"

namespace laminate::cli {

std::size_t EditDistance(std::string_view a, std::string_view b) {
  // The distances of all beginnings of `b` from the beginning of `a` that was reached.
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t nDiagonal = row[0];
    row[0] = i + 1;
    for (std::size_t k = 0; k < b.size(); ++k) {
      const std::size_t nReplace = nDiagonal + (a[i] == b[k] ? 0 : 1);
      nDiagonal = row[k + 1];
      row[k + 1] = std::min({nReplace, row[k] + 1, nDiagonal + 1});
    }
  }
  return row.back();
}

bool Means(std::string_view sGiven, std::string_view sName) { return sGiven == sName || sGiven == ToUtf8(sName); }

std::string DidYouMean(std::string_view sWanted, const std::vector<std::string>& names) {
  constexpr std::size_t kMost = 3;
  struct Candidate {
    std::size_t distance;
    std::string name;
  };
  std::vector<Candidate> candidates;
  candidates.reserve(names.size());
  for (const std::string& sBytes : names) {
    std::string sName = ToUtf8(sBytes);
    candidates.push_back({EditDistance(sWanted, sName), std::move(sName)});
  }
  std::ranges::stable_sort(candidates, {}, &Candidate::distance);
  if (candidates.size() > kMost) candidates.resize(kMost);
  std::string s;
  for (std::size_t i = 0; i < candidates.size(); ++i) {
    s += i == 0 ? "; did you mean " : i + 1 == candidates.size() ? " or " : ", ";
    s += "'" + OneLine(candidates[i].name) + "'";
  }
  return s.empty() ? s : s + "?";
}

}  // namespace laminate::cli
