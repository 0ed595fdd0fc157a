#pragma once
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/LoadStatus.h"

namespace laminate::cli {

/// The exit statuses of the command.
enum Exit : int {
  kDone = 0,
  kFailed = 1,   ///< an input could not be read or is not well formed, or an output could not be written
  kUsage = 2,    ///< the command was called wrongly
  kFindings = 3  ///< done, but the caller must hear of something
};

/// Ends the command with a status. Whoever throws it has told the reason.
struct Failure {
  Exit status;
};

/// A place in a file, or the file alone where line or column are 0.
struct Place {
  std::string file;
  int line = 0;
  int column = 0;
};

/// "FILE:LINE:COL", without what does not apply.
std::string ToText(const Place& place);

/// Bytes of a file or of a name, fit for one line of a terminal: control bytes become blanks.
std::string OneLine(std::string_view s);

/// Standard error: everything that is not a result. One line per message.
class Console {
 public:
  Console();
  ~Console() { Settle(); }
  Console(const Console&) = delete;
  Console& operator=(const Console&) = delete;

  bool IsTerminal() const { return m_bTerminal; }

  void Error(const Place& place, std::string_view sReason) { Report("error", kRed, place, sReason); }
  void Warning(const Place& place, std::string_view sReason) { Report("warning", kYellow, place, sReason); }
  void Note(const Place& place, std::string_view sReason) { Report("note", kBlue, place, sReason); }
  /// An error, and the exception that ends the command with it.
  [[noreturn]] void Fail(const Place& place, std::string_view sReason, Exit status = kFailed);

  /// The text of a message box. Equal ones are counted; `Settle` prints each once.
  void Box(std::string_view sText);
  /// Prints the boxes collected so far, with the file that they are about where one is given.
  void Settle(const Place& place = {});

  /// A bar from 0 to 100 in the last line; any message takes it away.
  void ShowBar(std::string_view sLabel, int nPos);
  void HideBar();

 private:
  static constexpr const char* kRed = "\033[1;31m";
  static constexpr const char* kYellow = "\033[1;33m";
  static constexpr const char* kBlue = "\033[1;34m";
  void Report(const char* szKind, const char* szColour, const Place& place, std::string_view sReason);
  void Line(std::string_view s);

  struct CountedBox {
    std::string text;
    std::size_t count;
  };
  std::vector<CountedBox> m_boxes;
  std::unordered_map<std::string, std::size_t> m_boxIndex;
  bool m_bTerminal;
  bool m_bColour;
  bool m_bBar = false;
};

}  // namespace laminate::cli
