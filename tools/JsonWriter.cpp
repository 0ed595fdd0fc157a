#include "JsonWriter.h"

#include <cmath>

#include "JsonText.h"
#include "base/Number.h"

namespace laminate::cli {

void JsonWriter::Separate() {
  if (!m_bFirst) m_text += ", ";
  m_bFirst = false;
  if (m_text.size() >= kPiece) HandOver();
}

void JsonWriter::Begin(char c) {
  const bool bNewLine = c == '{' && !m_open.empty() && m_open.back() == '[';
  if (!bNewLine) {
    Separate();
  } else {
    if (!m_bFirst) m_text += ',';
    m_text += '\n';
    if (m_text.size() >= kPiece) HandOver();
  }
  m_text += c;
  m_open += c;
  m_bFirst = true;
}

void JsonWriter::End(char c) {
  m_text += c;
  m_open.pop_back();
  m_bFirst = false;
}

void JsonWriter::Key(std::string_view sKey) {
  Separate();
  m_text += '"';
  m_text += sKey;
  m_text += "\": ";
  m_bFirst = true;
}

void JsonWriter::TextKey(std::string_view sKey) {
  Text(sKey);
  m_text += ": ";
  m_bFirst = true;
}

void JsonWriter::Name(std::string_view s) {
  Separate();
  if (IsUtf8(s)) {
    AppendQuoted(m_text, s);
  } else {
    AppendJsonString(m_text, s);
  }
}

void JsonWriter::Text(std::string_view s) {
  Separate();
  AppendJsonString(m_text, s);
}

void JsonWriter::Number(double d) {
  if (!std::isfinite(d)) {
    Null();
    return;
  }
  char number[kMaxNumberLength];
  const std::string_view s(number, static_cast<std::size_t>(FormatShortest(number, d) - number));
  Literal(s);
  if (s.find_first_of(".eE") == std::string_view::npos) m_text += ".0";
}

void JsonWriter::Finish() {
  m_text += '\n';
  HandOver();
}

void JsonWriter::HandOver() {
  m_out.Write(m_text);
  m_text.clear();
}

}  // namespace laminate::cli
