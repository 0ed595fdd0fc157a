#pragma once
// The reader's road walked plainly, for figures to stand beside: text to tree, a board to its pieces, and both.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "reader/PlainReader.h"

namespace laminate::bench {

inline std::string Read(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

inline void PlainTree(const std::string& path) { benchmark::DoNotOptimize(plain::ParseFile(Read(path)).result); }

inline plain::Split PlainPieces(const std::string& path, const std::string& folder) {
  plain::Split split;
  plain::SplitBoardFile(Read(path), split);
  std::filesystem::create_directories(folder);
  for (const auto& [name, text] : split.files) std::ofstream(folder + "/" + name, std::ios::binary) << text;
  return split;
}
inline void PlainSplit(const std::string& path, const std::string& folder) {
  PlainPieces(path, folder);
  std::filesystem::remove_all(folder);
}
/// `use` gets the trees of each piece.
template <class Use>
void PlainLoad(const std::string& path, const std::string& folder, Use use) {
  const plain::Split split = PlainPieces(path, folder);
  for (const auto& file : split.files) use(plain::ParseFile(Read(folder + "/" + file.first)).roots);
  std::filesystem::remove_all(folder);
}

}  // namespace laminate::bench
