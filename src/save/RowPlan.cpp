#include "save/RowPlan.h"

#include <algorithm>
#include <bit>

#include "base/Number.h"

namespace laminate {

namespace {

bool SamePoint(const CPointD& pt, const ShownValue* pValue) {
  return pValue != nullptr && SameNumber(pt.x, pValue->x) && SameNumber(pt.y, pValue->y);
}

// A nested form of no more values stands on one line.
constexpr std::size_t kValuesOnLine = 2;

}  // namespace

bool SameNumber(double a, double b) { return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b); }

std::string LostValue(int n) { return std::to_string(n); }
std::string LostValue(double d) {
  char buffer[kMaxNumberLength];
  return std::string(buffer, FormatShortest(buffer, d));
}
std::string LostValue(const CString& s) { return std::string(s.View()); }

namespace save_detail {

void DefaultsRecorder::Add(ShownValue value) {
  value.bSaid = std::find(m_saidFields.begin(), m_saidFields.end(), m_field) != m_saidFields.end();
  if (!value.bSaid) m_saidFields.push_back(m_field);
  m_values.push_back(std::move(value));
}

const ShownValue* RowWriter::Default() { return m_nNext < m_pDefaults->size() ? &(*m_pDefaults)[m_nNext++] : nullptr; }

void RowWriter::OpenForms() {
  const auto lines =
      m_pDefaults->size() > kValuesOnLine || m_pDefaults->empty() ? FormText::Lines::forms : FormText::Lines::one;
  for (; m_nOpen < m_forms.size(); ++m_nOpen) {
    const NestedForm& form = m_forms[m_nOpen];
    m_text.Open(form.key, lines);
    if (form.pPoint != nullptr) m_text.Point(form.field, *form.pPoint);
  }
}

void RowWriter::OnFormEnd() {
  if (m_nOpen == m_forms.size()) {
    m_text.Close();
    --m_nOpen;
  }
  m_forms.pop_back();
}

void RowWriter::OnLength(std::string_view key, double d) {
  const ShownValue* pDefault = Default();
  if (!m_bTokens && pDefault != nullptr && (pDefault->bSaid || SameNumber(d, pDefault->x))) return;
  Leaf(key, [&] { m_text.Length(m_field, d); });
}

void RowWriter::OnReal(std::string_view key, double d) {
  const ShownValue* pDefault = Default();
  if (!m_bTokens && pDefault != nullptr && (pDefault->bSaid || SameNumber(d, pDefault->x))) return;
  Leaf(key, [&] { m_text.Real(m_field, d); });
}

void RowWriter::OnInteger(std::string_view key, int n) {
  const ShownValue* pDefault = Default();
  if (!m_bTokens && pDefault != nullptr && (pDefault->bSaid || n == pDefault->n)) return;
  Leaf(key, [&] { m_text.Token(n); });
}

void RowWriter::OnText(std::string_view key, const CString& s) {
  const ShownValue* pDefault = Default();
  if (!m_bTokens && pDefault != nullptr && (pDefault->bSaid || s == pDefault->s)) return;
  Leaf(key, [&] { m_text.Token(m_field, s); });
}

void RowWriter::OnPoint(std::string_view key, const CPointD& pt) {
  const ShownValue* pDefault = Default();
  if (!m_bTokens && pDefault != nullptr && (pDefault->bSaid || (!IsDirect() && SamePoint(pt, pDefault)))) return;
  Leaf(key, [&] { m_text.Point(m_field, pt); });
}

void RowWriter::OnIntegers(std::string_view key, const CArrayN& values) {
  const ShownValue* pDefault = Default();
  if ((pDefault != nullptr && pDefault->bSaid) || values.IsEmpty()) return;
  Leaf(key, [&] {
    for (const int n : values) m_text.Token(n);
  });
}

void RowWriter::OnTexts(std::string_view key, const CStringArray& values) {
  const ShownValue* pDefault = Default();
  if ((pDefault != nullptr && pDefault->bSaid) || values.IsEmpty()) return;
  Leaf(key, [&] {
    for (INT_PTR i = 0; i < values.GetSize(); ++i) {
      m_text.Token(m_field, values.GetData()[i], i + 1 < values.GetSize());
    }
  });
}

void RowWriter::OnFlag(std::string_view key, int n) {
  const ShownValue* pDefault = Default();
  if (pDefault != nullptr && (pDefault->bSaid || n == pDefault->n)) return;
  if (n != 1) m_text.Refuse(m_field, "the form says 1 by being there", std::to_string(n));
  Leaf(key, [] {});
}

void RowWriter::OnPoints(std::string_view key, const CPointD& first, const CPointD& later) {
  const ShownValue* pDefault = Default();
  if (!IsDirect() && SamePoint(first, pDefault) && SamePoint(later, pDefault)) return;
  Leaf(key, [&] { m_text.Point(m_field, first); });
  Leaf(key, [&] { m_text.Point(m_field, later); });
}

void RowWriter::OnIntegerPair(std::string_view key, int n, int n2) {
  const ShownValue* pDefault = Default();
  if (pDefault != nullptr && n == pDefault->n && n2 == pDefault->n2) return;
  Leaf(key, [&] {
    m_text.Token(n);
    m_text.Token(n2);
  });
}

void RowWriter::OnPointForm(std::string_view key, const CPointD& pt) {
  const ShownValue* pDefault = Default();
  m_forms.push_back({key, m_field, &pt});
  if (!SamePoint(pt, pDefault)) OpenForms();
}

}  // namespace save_detail
}  // namespace laminate
