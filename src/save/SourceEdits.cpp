#include "save/SourceEdits.h"

#include <algorithm>
#include <utility>

namespace laminate {

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

}  // namespace

SourceEdits::SourceEdits(std::string_view text) : m_text(text), m_lineEnd("\n") {
  const std::size_t n = text.find('\n');
  if (n != text.npos && n != 0 && text[n - 1] == '\r') m_lineEnd = "\r\n";
}

void SourceEdits::Replace(const char* begin, const char* end, std::string s) {
  m_edits.push_back({begin, end, std::move(s)});
}

void SourceEdits::Remove(const char* begin, const char* end) {
  const char* const textBegin = m_text.data();
  const char* const textEnd = textBegin + m_text.size();
  const char* lineBegin = begin;
  while (lineBegin != textBegin && IsBlank(lineBegin[-1])) --lineBegin;
  const char* lineEnd = end;
  while (lineEnd != textEnd && IsBlank(*lineEnd)) ++lineEnd;
  const bool bBegins = lineBegin == textBegin || lineBegin[-1] == '\n';
  const bool bEnds = lineEnd == textEnd || *lineEnd == '\n';
  if (bBegins && bEnds) {
    Replace(lineBegin, lineEnd == textEnd ? lineEnd : lineEnd + 1, {});
  } else if (bEnds) {
    // What stands before it on the line ends the line now.
    const char* const trailing = lineEnd != end && lineEnd[-1] == '\r' ? lineEnd - 1 : lineEnd;
    Replace(lineBegin, trailing, {});
  } else {
    Replace(begin, bBegins || lineBegin != begin ? lineEnd : end, {});
  }
}

void SourceEdits::AddBehind(const char* place, std::string_view sIndent, std::string_view s) {
  std::string text(m_lineEnd);
  text += sIndent;
  text += s;
  // What stands behind it goes to a line of its own.
  const char* const textEnd = m_text.data() + m_text.size();
  const char* rest = place;
  while (rest != textEnd && IsBlank(*rest)) ++rest;
  if (rest != textEnd && *rest != '\n') {
    text += m_lineEnd;
    text += sIndent;
  }
  Replace(place, place, std::move(text));
}

void SourceEdits::AddBefore(const char* place, std::string_view s) {
  std::string text(s);
  text += m_lineEnd;
  text += IndentAt(place);
  Replace(place, place, std::move(text));
}

std::string_view SourceEdits::IndentAt(const char* place) const {
  const char* begin = place;
  while (begin != m_text.data() && (begin[-1] == ' ' || begin[-1] == '\t')) --begin;
  if (begin != m_text.data() && begin[-1] != '\n') return {};
  return {begin, static_cast<std::size_t>(place - begin)};
}

std::string SourceEdits::Apply(const char* begin, const char* end, std::size_t nMark) const {
  std::vector<const Edit*> order;
  for (std::size_t n = nMark; n < m_edits.size(); ++n) {
    const Edit& edit = m_edits[n];
    if (edit.begin >= begin && edit.end <= end) order.push_back(&edit);
  }
  std::stable_sort(order.begin(), order.end(), [](const Edit* a, const Edit* b) {
    // What is added at a place stands before what gives way there.
    return a->begin != b->begin ? a->begin < b->begin : a->end < b->end;
  });
  std::string text;
  const char* at = begin;
  for (const Edit* pEdit : order) {
    if (pEdit->begin < at) {
      // Two forms that were removed share the blanks between them.
      if (pEdit->end > at) at = pEdit->end;
      text += pEdit->text;
      continue;
    }
    text.append(at, pEdit->begin);
    text += pEdit->text;
    at = pEdit->end;
  }
  text.append(at, end);
  return text;
}

}  // namespace laminate
