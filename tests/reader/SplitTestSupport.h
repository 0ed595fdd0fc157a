#pragma once
#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "base/BKUtility.h"
#include "reader/BoardFileSplitter.h"
#include "reader/MemoryFileSystem.h"
#include "reader/PlainReader.h"

/// The part of a root that goes from split to split.
struct SplitRoot {
  int inQuote = 0;
  int components = 0;
  int layers = 0;
  bool operator==(const SplitRoot&) const = default;
};

/// What a split leaves: whether it came to its end, the root's part, the files of the working folder, and for each the
/// source's line of each line.
struct SplitOutcome {
  bool ok = false;
  SplitRoot root;
  std::map<std::string, std::string> files;
  std::map<std::string, std::vector<int>> lines;
  bool operator==(const SplitOutcome&) const = default;
};

inline SplitOutcome SplitPlainly(const std::string& text, bool footprints, const SplitRoot& root) {
  plain::Split split;
  split.inQuote = root.inQuote;
  split.components = root.components;
  split.layers = root.layers;
  if (footprints) {
    plain::SplitFootprintFile(text, split);
  } else {
    plain::SplitBoardFile(text, split);
  }
  return {true, {split.inQuote, split.components, split.layers}, split.files, split.lines};
}

/// Splits a text that is kept in memory as the file of an empty disk. The data path must have been set.
inline SplitOutcome SplitInMemory(const std::string& text, bool footprints, const SplitRoot& root) {
  MemoryFileSystem memory;
  const laminate::FileSystemScope scope(memory);
  memory.files["/file"] = text;
  SplitOutcome outcome{false, root, {}, {}};
  laminate::LoadStatus status;
  laminate::SplitState state{outcome.root.inQuote, outcome.root.components, outcome.root.layers, status};
  outcome.ok = (footprints ? laminate::SplitFootprintFile("/file", state) : laminate::SplitBoardFile("/file", state)) &&
               status.IsOk();
  const std::string prefix = std::string(state.sFolder.View()) + "/";
  for (const auto& [path, content] : memory.files) {
    if (!path.starts_with(prefix)) continue;
    const std::string name = path.substr(prefix.size());
    outcome.files[name] = content;
    const bool others = name == "others.txt";
    const int piece = others ? 0 : std::stoi(name.substr(name.find_first_of("0123456789")));
    const laminate::PieceLines& map = others                             ? state.others
                                      : name[0] == 'c' || name[0] == 'P' ? state.components
                                                                         : state.layers;
    std::vector<int>& lines = outcome.lines[name];
    const auto count = static_cast<int>(std::count(content.begin(), content.end(), '\n'));
    for (int i = 1; i <= count; ++i) lines.push_back(map.HostLine(piece, i));
  }
  return outcome;
}
