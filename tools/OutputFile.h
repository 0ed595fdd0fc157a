#pragma once
#include <memory>
#include <string>
#include <string_view>

#include "Console.h"
#include "FilePlacer.h"
#include "Interrupt.h"
#include "Paths.h"
#include "base/TextOut.h"
#include "base/WholeFile.h"

namespace laminate::cli {

/// Where a result goes: standard output, or a file that appears whole or not at all. Any failure is told and ends the
/// command; an interruption does so, too.
class OutputFile {
 public:
  /// "-" or an empty path is standard output.
  OutputFile(Console& console, const std::string& sPath);
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  void Write(std::string_view s);
  /// For those who work long between two writes.
  void EndWhenInterrupted();
  /// Completes the output: everything is written, on the device, and under its name.
  void Commit();
  /// The same, but the file is handed over to take its place together with others.
  void Complete(FilePlacer& placer);

 private:
  [[noreturn]] void Fail(std::string_view sReason);
  void CommitStandard();

  Console& m_console;
  std::string m_sName;                   // as messages call it
  InterruptGuard m_guard;                // outlives the file that it guards
  std::unique_ptr<WholeFile> m_pFile;    // null for standard output
  std::unique_ptr<TextOut> m_pStandard;  // null for a file
  TextOut* m_pText = nullptr;
};

}  // namespace laminate::cli
