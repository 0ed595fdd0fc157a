#pragma once
// How a grammar table writes: each row shows what an object holds, and what an object that no file has filled holds
// anyway is left out.
#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "reader/Grammar.h"
#include "save/FormText.h"

namespace laminate {

/// The field, as the losses name it.
template <auto kMember>
inline constexpr std::string_view kField = grammar_detail::kMemberName<kMember>;

/// An object as it is made.
template <class T>
const T& Fresh() {
  // Never destroyed: it may outlive what its destructor would need.
  static const T* const pFresh = new T;
  return *pFresh;
}

/// A value that a row shows of an object as it is made.
struct ShownValue {
  double x = 0;
  double y = 0;
  int n = 0;
  int n2 = 0;
  CString s = {};
  bool bSaid = false;  ///< an earlier row of the table says the field
};

namespace save_detail {

/// Shows an object as it is made.
class DefaultsRecorder final : public RowVisitor {
 public:
  explicit DefaultsRecorder(std::vector<std::string_view>& saidFields) : m_saidFields(saidFields) {}
  std::vector<ShownValue> Take() { return std::move(m_values); }

  void OnLength(std::string_view, double d) override { Add({.x = d}); }
  void OnReal(std::string_view, double d) override { Add({.x = d}); }
  void OnInteger(std::string_view, int n) override { Add({.n = n}); }
  void OnText(std::string_view, const CString& s) override { Add({.s = s}); }
  void OnPoint(std::string_view, const CPointD& pt) override { Add({.x = pt.x, .y = pt.y}); }
  void OnIntegers(std::string_view, const CArrayN&) override { Add({}); }
  void OnTexts(std::string_view, const CStringArray&) override { Add({}); }
  void OnFlag(std::string_view, int n) override { Add({.n = n}); }
  void OnPoints(std::string_view, const CPointD& pt, const CPointD&) override { Add({.x = pt.x, .y = pt.y}); }
  void OnIntegerPair(std::string_view, int n, int n2) override { Add({.n = n, .n2 = n2}); }
  void OnPointForm(std::string_view, const CPointD& pt) override { Add({.x = pt.x, .y = pt.y}); }
  void OnField(std::string_view field) override { m_field = field; }

 private:
  void Add(ShownValue value);

  std::vector<std::string_view>& m_saidFields;
  std::string_view m_field;
  std::vector<ShownValue> m_values;
};

/// Writes what a row shows.
class RowWriter final : public RowVisitor {
 public:
  RowWriter(FormText& text, bool bTokens) : m_text(text), m_bTokens(bTokens) {}
  void Begin(const std::vector<ShownValue>& defaults) {
    m_pDefaults = &defaults;
    m_nNext = 0;
  }

  void OnLength(std::string_view key, double d) override;
  void OnReal(std::string_view key, double d) override;
  void OnInteger(std::string_view key, int n) override;
  void OnText(std::string_view key, const CString& s) override;
  void OnPoint(std::string_view key, const CPointD& pt) override;
  void OnIntegers(std::string_view key, const CArrayN& values) override;
  void OnTexts(std::string_view key, const CStringArray& values) override;
  void OnFlag(std::string_view key, int n) override;
  void OnPoints(std::string_view key, const CPointD& first, const CPointD& later) override;
  void OnIntegerPair(std::string_view key, int n, int n2) override;
  void OnForm(std::string_view key) override { m_forms.push_back({key}); }
  void OnFormEnd() override;
  void OnPointForm(std::string_view key, const CPointD& pt) override;
  void OnField(std::string_view field) override { m_field = field; }

 private:
  struct NestedForm {
    std::string_view key;
    std::string_view field = {};
    const CPointD* pPoint = nullptr;
  };

  // The value's default, or null where there is none.
  const ShownValue* Default();
  bool IsDirect() const { return m_forms.empty(); }
  void OpenForms();
  // Writes "(key ...)" around what `put` writes; as a token `put` stands alone.
  template <class Put>
  void Leaf(std::string_view key, Put&& put) {
    if (m_bTokens) return put();
    OpenForms();
    const FormText::Form form(m_text, key, FormText::Lines::one);
    put();
  }

  FormText& m_text;
  const bool m_bTokens;
  const std::vector<ShownValue>* m_pDefaults = nullptr;
  std::size_t m_nNext = 0;
  std::string_view m_field;
  std::vector<NestedForm> m_forms;
  std::size_t m_nOpen = 0;  // of `m_forms`; the others open when something stands in them
};

}  // namespace save_detail

/// The rows of a table that write, each with what it shows of a new object. Made once for each table.
template <class T>
class RowPlan {
 public:
  /// Leaves out the rows of these keywords, beside those that show nothing. Of several rows that say one field the
  /// first writes.
  template <class Rows>
  explicit RowPlan(const Rows& rows, std::initializer_list<std::string_view> without = {}) {
    std::vector<std::string_view> saidFields;
    for (const auto& row : rows) {
      if (row.show == nullptr || std::find(without.begin(), without.end(), row.key) != without.end()) continue;
      save_detail::DefaultsRecorder recorder(saidFields);
      row.show(row.key, Fresh<T>(), recorder);
      m_lines.push_back({row.key, row.show, recorder.Take()});
    }
  }

  /// The forms of all rows, where the object differs from a new one. Points of the object itself are always written.
  void Put(FormText& text, const T& object) const { Show(text, object, false); }
  /// What the rows show as tokens of the form at hand, whatever it is.
  void PutTokens(FormText& text, const T& object) const { Show(text, object, true); }

 private:
  struct Line {
    std::string_view key;
    void (*show)(std::string_view, const T&, RowVisitor&);
    std::vector<ShownValue> defaults;
  };
  void Show(FormText& text, const T& object, bool bTokens) const {
    save_detail::RowWriter writer(text, bTokens);
    for (const Line& line : m_lines) {
      writer.Begin(line.defaults);
      line.show(line.key, object, writer);
    }
  }

  std::vector<Line> m_lines;
};

/// The plan of a table, made at its first use. `kRows` gives the rows.
template <class T, auto kRows>
const RowPlan<T>& PlanOf() {
  static const RowPlan<T>* const pPlan = new RowPlan<T>(kRows());
  return *pPlan;
}

// ---- what no form says ----
/// A negative zero is another value than zero.
bool SameNumber(double a, double b);
template <class X>
bool SameValue(const X& a, const X& b) {
  return a == b;
}
inline bool SameValue(double a, double b) { return SameNumber(a, b); }
inline bool SameValue(const CPointD& a, const CPointD& b) { return SameNumber(a.x, b.x) && SameNumber(a.y, b.y); }
std::string LostValue(int n);
std::string LostValue(double d);
std::string LostValue(const CString& s);
template <class X>
std::string LostValue(const X&) {
  return {};
}
/// Refuses each of the fields that differs from that of a new object.
template <auto... kMembers, class T>
void RefuseUnsaid(FormText& text, const T& object, std::string_view sReason = "no form holds it") {
  const T& fresh = Fresh<T>();
  const auto check = [&]<auto kMember>() {
    if (SameValue(object.*kMember, fresh.*kMember)) return;
    text.Refuse(kField<kMember>, sReason, LostValue(object.*kMember));
  };
  (check.template operator()<kMembers>(), ...);
}

/// Calls `put(element)` for each element of an array, inside a step that is called by `name(element)`. A null array
/// and null slots are refused: the reader makes none.
template <auto kArray, class T, class Name, class Put>
void PutEach(FormText& text, const T& object, Name&& name, Put&& put) {
  constexpr std::string_view sMember = kField<kArray>.substr(kField<kArray>.rfind(':') + 1);
  const auto* pArray = object.*kArray;
  if (pArray == nullptr) return text.Refuse(kField<kArray>, "the array is missing");
  for (INT_PTR i = 0; i < pArray->GetSize(); ++i) {
    const auto* p = pArray->GetAt(i);
    if (p == nullptr) {
      text.Refuse(kField<kArray>, "a slot of the array is empty", std::to_string(i));
      continue;
    }
    const FormText::Step step(text, sMember, name(*p), i);
    put(*p);
  }
}

/// What elements of an array are called by.
inline constexpr auto kNameOf = [](const auto& object) { return object.m_sName.View(); };
inline constexpr auto kNoName = [](const auto&) { return std::string_view(); };

/// Writes an element by its own form.
template <class X>
auto PutInto(FormText& text) {
  return [&text](const X& object) { Put(text, object); };
}

/// A section with a form for each element of an array.
template <auto kArray, class X, class T, class Name>
void PutSection(FormText& text, std::string_view sKey, const T& object, Name name) {
  const FormText::Form section(text, sKey);
  PutEach<kArray>(text, object, name, PutInto<X>(text));
}

}  // namespace laminate
