#pragma once
#include <string>
#include <vector>

#include "Console.h"
#include "FilePlacer.h"
#include "Interrupt.h"
#include "base/CString.h"

namespace laminate::cli {

/// A set of files of one stem that appears as a whole or not at all. The library writes it under a private stem in a
/// folder beside the target, from where the files are put in their places. Until then nothing has changed, and without
/// it nothing remains. Failures are told and end the command.
class FileSet {
 public:
  /// The files that an export writes. Refuses standard output, and a set of which one file is also an input.
  FileSet(Console& console, const std::string& sStem, const std::vector<std::string>& inputs);
  /// A file for each input, of the input's kind, which may take the place of that input but of no other one.
  struct Replacement {
    const char* szEnding;
    std::string input;
  };
  FileSet(Console& console, const std::string& sStem, const std::vector<Replacement>& replacements);
  ~FileSet();
  FileSet(const FileSet&) = delete;
  FileSet& operator=(const FileSet&) = delete;

  /// Refuses another output that has the name of a file of the set.
  void RefuseSameFile(const std::string& sOutput) const;

  /// Makes the private folder; gives the stem under which to write.
  CString Begin();
  /// The private files that have been written.
  std::vector<std::string> Written() const;
  /// Hands what was written over, to take its place together with other files.
  void Complete(FilePlacer& placer) const;
  /// Puts what was written into place.
  void Commit();
  /// The name that a file of the set will have, for one of the private ones.
  std::string FinalName(const std::string& sPrivate) const;
  /// The path of the file with that ending, which need not exist.
  std::string Path(const char* szEnding) const { return m_sStem + szEnding; }

 private:
  [[noreturn]] void Fail(const std::string& sName, int nError) const;
  void TakeStem();

  Console& m_console;
  InterruptGuard m_guard;
  std::vector<const char*> m_endings;
  std::string m_sStem;     // without ".pcf"
  std::string m_sPrivate;  // the private folder; empty when there is none
};

}  // namespace laminate::cli
