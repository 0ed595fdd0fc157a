#include "save/FormText.h"

#include <cmath>
#include <utility>

#include "base/Number.h"
#include "reader/TreeBuilder.h"
#include "save/Spelling.h"

namespace laminate {

FormText::FormText(TextOut& out, SaveLosses& losses, const FormStyle& style)
    : m_out(out), m_losses(losses), m_style(style), m_nLevel(style.nLevel) {}

void FormText::BreakLine(std::size_t nLevel) {
  m_out.Bytes(m_style.sLineEnd);
  m_out.Bytes(m_style.sIndent);
  if (!m_style.sStep.empty()) {
    while (nLevel-- > 0) m_out.Bytes(m_style.sStep);
  }
  m_bMustEndLine = false;
}

void FormText::Open(std::string_view sKey, Lines lines) {
  if (m_nLevel + static_cast<int>(m_open.size()) >= kDeepestLevel) {
    Refuse("forms", "the format allows " + std::to_string(kDeepestLevel) + " levels of forms");
  }
  if (!m_open.empty()) m_open.back().bHoldsForms = true;
  if (m_bBegun) {
    const bool bStay = m_bStay || (!m_open.empty() && m_open.back().lines == Lines::one);
    if (bStay && !m_bMustEndLine) {
      m_out.Bytes(" ");
    } else {
      BreakLine(m_open.size());
    }
  }
  m_bBegun = true;
  m_bStay = false;
  m_out.Bytes("(");
  m_out.Bytes(sKey);
  // What stands in a form of one line stands on that line too.
  const bool bOneLine = !m_open.empty() && m_open.back().lines == Lines::one;
  m_open.push_back({bOneLine ? Lines::one : lines, false, {}});
}

void FormText::Close() {
  const OpenForm form = std::move(m_open.back());
  m_open.pop_back();
  m_bStay = false;
  if (!form.sTail.empty()) {
    BreakLine(m_open.size() + 1);
    m_out.Bytes(form.sTail);
  } else if (m_bMustEndLine || (form.bHoldsForms && form.lines == Lines::forms)) {
    BreakLine(m_open.size());
  }
  m_out.Bytes(")");
  m_bMustEndLine = !form.sTail.empty();
}

void FormText::BeforeToken() {
  if (m_bMustEndLine) {
    BreakLine(m_open.size());
  } else {
    m_out.Bytes(" ");
  }
}

void FormText::Word(std::string_view s) {
  BeforeToken();
  m_out.Bytes(s);
}

void FormText::Token(int n) {
  char buffer[kMaxNumberLength];
  Word({buffer, static_cast<std::size_t>(FormatInteger(buffer, n) - buffer)});
}

void FormText::Token(std::string_view sField, const CString& s, bool bMore) {
  TokenPlace place = SpellText(s.View(), m_sToken);
  if (place == TokenPlace::closingLine && bMore) place = TokenPlace::nowhere;
  switch (place) {
    case TokenPlace::anywhere:
      Word(m_sToken);
      break;
    case TokenPlace::lineOfItsOwn:
      BreakLine(m_open.size());
      m_out.Bytes(m_sToken);
      m_bMustEndLine = true;
      break;
    case TokenPlace::closingLine:
      m_open.back().sTail = m_sToken;
      break;
    case TokenPlace::nowhere:
      Refuse(sField, "no quoting gives this text back", std::string(s.View()));
      Word("\"\"");
      break;
  }
}

void FormText::Number(std::string_view sField, double d, bool bLength) {
  if (!std::isfinite(d)) {
    Refuse(sField, "the format has finite numbers only", std::isnan(d) ? "nan" : d < 0 ? "-inf" : "inf");
    d = 0;
  }
  char buffer[kMaxNumberLength + 2];
  const char* const end = bLength ? SpellLength(buffer, d) : SpellReal(buffer, d);
  Word({buffer, static_cast<std::size_t>(end - buffer)});
}

void FormText::Point(std::string_view sField, const CPointD& pt) {
  Length(sField, pt.x);
  Length(sField, pt.y);
}

void FormText::Refuse(std::string_view sField, std::string_view sReason, std::string sValue) {
  std::string sName(sField.substr(sField.starts_with('&') ? 1 : 0));
  if (const std::size_t n = sName.find("::"); n != sName.npos) sName.replace(n, 2, ".");
  m_losses.Tell({m_path.Text(), std::move(sName), std::string(sReason), std::move(sValue)});
}

}  // namespace laminate
