#pragma once
#include <string>
#include <vector>

#include "Console.h"
#include "FileSet.h"
#include "LoadBoard.h"
#include "facade/CBDesigner.h"

namespace laminate::cli {

/// The files of a board on their way to be saved under a stem, which may be that of the board itself.
class SavedBoard {
 public:
  /// Refuses a stem that would replace an input by a file of another kind.
  SavedBoard(Console& console, const std::string& sStem, const BoardFiles& files);

  /// Fields whose loss is allowed, by their names.
  std::vector<std::string> allowedLosses;

  /// Refuses another output that has the name of a file that is written.
  void RefuseSameFile(const std::string& sOutput) const { m_set.RefuseSameFile(sOutput); }
  /// Writes the board beside its place, with `bFresh` as if it had not been loaded from files. What cannot be saved is
  /// told and ends the command.
  void Prepare(const CBDesigner& root, bool bFresh = false);
  /// Puts the files in their place.
  void Commit() { m_set.Commit(); }
  /// The same together with other files.
  void Complete(FilePlacer& placer) const { m_set.Complete(placer); }

 private:
  Console& m_console;
  const BoardFiles m_files;
  FileSet m_set;
};

}  // namespace laminate::cli
