#pragma once
#include <string>
#include <vector>

#include "Console.h"
#include "Interrupt.h"

namespace laminate::cli {

/// Puts files that are complete under private names in their places, all of them or none: where one cannot be placed,
/// those that stood there before are put back. Existing files keep their mode, links are followed, and what is no
/// regular file is written in place. Failures are told and end the command.
class FilePlacer {
 public:
  explicit FilePlacer(Console& console) : m_console(console) {}
  ~FilePlacer();
  FilePlacer(const FilePlacer&) = delete;
  FilePlacer& operator=(const FilePlacer&) = delete;

  /// A private file, and the name that it is to have. The private one goes with `Commit` or stays its owner's.
  void Add(const std::string& sSource, const std::string& sName);
  /// Everything that is likely to fail is done before the first file is touched.
  void Commit();

 private:
  // One file on its way into place.
  struct Step {
    std::string source;  // under its private name, or a copy beside the target
    std::string name;    // as the user calls it
    std::string target;  // behind all links
    std::string backup;  // the old file under a second name; empty when there was none
    bool inPlace = false;
    bool done = false;
  };
  [[noreturn]] void Fail(const std::string& sName, int nError) const;
  void Prepare(Step& step);
  void Undo();
  // A fresh name beside a file, which goes with this object.
  std::string Beside(const std::string& sTarget);

  Console& m_console;
  InterruptGuard m_guard;
  std::vector<Step> m_steps;
  std::vector<std::string> m_leftovers;
};

}  // namespace laminate::cli
