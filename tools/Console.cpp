#include "Console.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>

namespace laminate::cli {

std::string ToText(const Place& place) {
  std::string s = OneLine(place.file);
  if (place.line > 0) {
    s += ":" + std::to_string(place.line);
    if (place.column > 0) s += ":" + std::to_string(place.column);
  }
  return s;
}

std::string OneLine(std::string_view s) {
  std::string sLine(s);
  while (!sLine.empty() && (sLine.back() == '\n' || sLine.back() == '\r')) sLine.pop_back();
  std::replace_if(
      sLine.begin(), sLine.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }, ' ');
  return sLine;
}

Console::Console() : m_bTerminal(isatty(STDERR_FILENO) == 1) {
  const char* szNoColour = std::getenv("NO_COLOR");
  const char* szTerm = std::getenv("TERM");
  m_bColour = m_bTerminal && (szNoColour == nullptr || *szNoColour == '\0') &&
              (szTerm == nullptr || std::string_view(szTerm) != "dumb");
}

void Console::Line(std::string_view s) {
  // One write per line, so that lines of processes that share the terminal do not mix.
  std::string sLine(s);
  sLine += '\n';
  std::string_view left = sLine;
  while (!left.empty()) {
    const ssize_t n = write(STDERR_FILENO, left.data(), left.size());
    if (n <= 0) return;
    left.remove_prefix(static_cast<std::size_t>(n));
  }
}

void Console::Report(const char* szKind, const char* szColour, const Place& place, std::string_view sReason) {
  HideBar();
  const std::string sAt = ToText(place);
  std::string sLine = sAt.empty() ? "" : sAt + ": ";
  if (m_bColour) sLine += szColour;
  sLine += szKind;
  sLine += ':';
  if (m_bColour) sLine += "\033[0m";
  Line(sLine + " " + OneLine(sReason));
}

void Console::Fail(const Place& place, std::string_view sReason, Exit status) {
  Settle();
  Error(place, sReason);
  throw Failure{status};
}

void Console::Box(std::string_view sText) {
  const auto [it, bNew] = m_boxIndex.try_emplace(std::string(sText), m_boxes.size());
  if (bNew) {
    m_boxes.push_back({std::string(sText), 1});
  } else {
    ++m_boxes[it->second].count;
  }
}

void Console::Settle(const Place& place) {
  HideBar();
  for (const CountedBox& box : m_boxes) {
    Warning(place, box.count == 1 ? box.text : OneLine(box.text) + " (" + std::to_string(box.count) + " times)");
  }
  m_boxes.clear();
  m_boxIndex.clear();
}

void Console::ShowBar(std::string_view sLabel, int nPos) {
  constexpr int kWidth = 40;
  const int n = std::clamp(nPos, 0, 100);
  const int nFull = n * kWidth / 100;
  std::string s = "\r" + std::string(sLabel) + " [" + std::string(static_cast<std::size_t>(nFull), '#') +
                  std::string(static_cast<std::size_t>(kWidth - nFull), ' ') + "] " + std::to_string(n) + " %\033[K";
  if (write(STDERR_FILENO, s.data(), s.size()) > 0) m_bBar = true;
}

void Console::HideBar() {
  if (!m_bBar) return;
  m_bBar = false;
  constexpr std::string_view kClear = "\r\033[K";
  if (write(STDERR_FILENO, kClear.data(), kClear.size()) < 0) return;
}

}  // namespace laminate::cli
