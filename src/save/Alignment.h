#pragma once
#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace laminate {

/// How two sequences are held against one another. An element of the old one is called `i`, of the new one `j`.
struct Comparison {
  std::size_t nOld = 0;
  std::size_t nNew = 0;
  /// Whether two elements are the same.
  std::function<bool(std::size_t i, std::size_t j)> same;
  /// A number that is equal where `same` holds.
  std::function<std::uint64_t(std::size_t i)> oldHash;
  std::function<std::uint64_t(std::size_t j)> newHash;
  /// The same for what elements are called; null where they have no names.
  std::function<std::uint64_t(std::size_t i)> oldName;
  std::function<std::uint64_t(std::size_t j)> newName;
  /// Whether the one may have become the other where neither content nor name tells.
  std::function<bool(std::size_t i, std::size_t j)> akin;
};

/// One step from the old sequence to the new one. In order, the steps hold every old and every new element once.
struct AlignedStep {
  enum class Kind { kept, changed, removed, added };
  Kind kind;
  std::size_t i;  ///< of no meaning in what was added
  std::size_t j;  ///< of no meaning in what was removed
};

/// Aligns the two by content, then by name, then by place. The order of both is kept: an element that has moved past
/// others is removed in one place and added in another. Needs about n log n comparisons of numbers.
std::vector<AlignedStep> Align(const Comparison& comparison);

}  // namespace laminate
