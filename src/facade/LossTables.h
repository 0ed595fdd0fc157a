#pragma once
// The engine that finds what an export loses: tables that say, per class and field, what is left of the field when the
// written file is read again, and that find the values for which that is a loss.
//
//   constexpr auto kNet = Losses<CBDnet>("CBDnet", QuotedDoubled<&CBDnet::m_sName, false>(),
//                                        Constant<&CBDnet::m_sLockMode, "UNFIXED">());
//   ...
//   kNet.Find(net, finder);
#include <array>
#include <cmath>
#include <string>
#include <string_view>
#include <vector>

#include "base/CArrayN.h"
#include "base/CExPtrArray.h"
#include "base/CPointD.h"
#include "base/CString.h"
#include "base/CStringArray.h"
#include "base/Number.h"
#include "base/ObjectPath.h"
#include "facade/ExportLosses.h"
#include "reader/Grammar.h"

namespace laminate {

/// Where a walk of the database is, and whom it tells of losses.
class LossFinder {
 public:
  explicit LossFinder(const std::function<void(const ExportLoss&)>& tell) : m_tell(tell) {}

  /// Steps into a field, or an element of an array, for a scope.
  class Step : public ObjectPath::Step {
   public:
    Step(LossFinder& finder, std::string_view sField) : ObjectPath::Step(finder.m_path, sField) {}
    Step(LossFinder& finder, std::string_view sField, std::string_view sName, INT_PTR nIndex)
        : ObjectPath::Step(finder.m_path, sField, sName, nIndex) {}
  };

  void Tell(std::string_view sClass, std::string_view sField, Fate fate, std::string_view sNote, std::string sValue) {
    m_tell({m_path.Text(), sClass, sField, fate, sNote, std::move(sValue)});
  }

 private:
  const std::function<void(const ExportLoss&)>& m_tell;
  ObjectPath m_path;
};

// ---- how texts are written, and what reading gives back for them ----

/// Whether a word that is written without quotes reads back as itself. An empty one is none, and so none is lost.
bool ReadsBackBare(std::string_view s);
/// The same between quotes. `bBracketFollows`: the closing quote has a ")" behind it.
bool ReadsBackQuoted(std::string_view s, bool bBracketFollows);

/// Whether a length survives five decimals, an angle six, a number six digits.
bool SurvivesLength(double d);
bool SurvivesAngle(double d);
bool SurvivesSignificant(double d);
/// The same where it is read as a length, so that a whole one becomes a count of database units.
bool SurvivesSixDigits(double d);

// ---- values as texts ----
std::string ValueText(const CString& s);
std::string ValueText(double d);
std::string ValueText(const CPointD& pt);
std::string ValueText(const CStringArray& texts);
std::string ValueText(const CArrayN& numbers);
inline std::string ValueText(int n) { return std::to_string(n); }

/// One row: a field, its fate, and the test that finds a loss. A null test: never lost, or told elsewhere.
template <class T>
struct LossRow {
  std::string_view field;
  Fate fate = Fate::kept;
  std::string_view note;
  bool (*lost)(const T&, std::string& sValue) = nullptr;
};

namespace ledger_detail {

template <auto kMember>
constexpr std::string_view FieldName() {
  constexpr std::string_view s = grammar_detail::MemberName<kMember>();
  return s.substr(s.rfind(':') + 1);
}

// An object of its class as it is made: what a field holds that no file has set.
template <class T>
const T& Fresh() {
  // Never destroyed: it may outlive what its destructor would need.
  static const T* const pFresh = new T;
  return *pFresh;
}

template <class F>
bool Same(const F& a, const F& b) {
  return a == b;
}
inline bool Same(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

// A field on its own, to be turned into a row of the ledger's class.
template <auto kMember, class Test>
struct Spec {
  Fate fate;
  std::string_view note;

  template <class T>
  constexpr operator LossRow<T>() const {
    LossRow<T> row{FieldName<kMember>(), fate, note, nullptr};
    row.lost = [](const T& object, std::string& sValue) {
      const auto& value = object.*kMember;
      if (!Test::Lost(value, Fresh<T>().*kMember)) return false;
      sValue = ValueText(value);
      return true;
    };
    return row;
  }
};
template <auto kMember>
struct KeptSpec {
  Fate fate;
  std::string_view note;
  template <class T>
  constexpr operator LossRow<T>() const {
    return {FieldName<kMember>(), fate, note, nullptr};
  }
};

struct DroppedTest {
  template <class F>
  static bool Lost(const F& value, const F& fresh) {
    return !Same(value, fresh);
  }
};
template <std::size_t N>
struct Literal {
  char text[N];
  consteval Literal(const char (&sz)[N]) {
    for (std::size_t i = 0; i < N; ++i) text[i] = sz[i];
  }
};
template <Literal kText>
struct ConstantTest {
  static bool Lost(const CString& value, const CString& fresh) { return value != fresh && value != kText.text; }
  static bool Lost(int n, int nFresh) { return n != nFresh && n != Atoi(kText.text); }
};
struct LengthTest {
  static bool Lost(double d, double) { return !SurvivesLength(d); }
  static bool Lost(const CPointD& pt, const CPointD&) { return !SurvivesLength(pt.x) || !SurvivesLength(pt.y); }
};
struct AngleTest {
  static bool Lost(double d, double) { return !SurvivesAngle(d); }
};
struct SignificantTest {
  static bool Lost(double d, double) { return !SurvivesSignificant(d); }
};
struct SixDigitsTest {
  static bool Lost(double d, double) { return !SurvivesSixDigits(d); }
  static bool Lost(const CPointD& pt, const CPointD&) { return !SurvivesSixDigits(pt.x) || !SurvivesSixDigits(pt.y); }
};
struct BareTest {
  static bool Lost(const CString& s, const CString&) { return !ReadsBackBare(s.View()); }
  // An empty text is no element when it is read.
  static bool Lost(const CStringArray& texts, const CStringArray&) {
    for (const CString& s : texts) {
      if (s.IsEmpty() || !ReadsBackBare(s.View())) return true;
    }
    return false;
  }
};
// Between quotes where the text holds one of these characters, bare elsewhere.
template <Literal kSigns, bool kBracketFollows>
struct QuotedIfTest {
  static bool Lost(const CString& s, const CString&) {
    return s.View().find_first_of(kSigns.text) == std::string_view::npos ? !ReadsBackBare(s.View())
                                                                         : !ReadsBackQuoted(s.View(), kBracketFollows);
  }
};
template <bool kBracketFollows>
struct QuotedTest {
  static bool Lost(const CString& s, const CString&) { return !ReadsBackQuoted(s.View(), kBracketFollows); }
};
// A percent sign stands twice in the file.
template <class Test>
struct DoubledTest {
  static bool Lost(const CString& s, const CString& fresh) {
    return s.View().find('%') != std::string_view::npos || Test::Lost(s, fresh);
  }
};

}  // namespace ledger_detail

// ---- the rows ----
template <auto kMember>
constexpr auto Kept(std::string_view note = {}) {
  return ledger_detail::KeptSpec<kMember>{Fate::kept, note};
}
/// A row whose losses a walk finds by itself.
template <auto kMember>
constexpr auto Told(Fate fate, std::string_view note) {
  return ledger_detail::KeptSpec<kMember>{fate, note};
}
template <auto kMember>
constexpr auto Dropped(std::string_view note = {}) {
  return ledger_detail::Spec<kMember, ledger_detail::DroppedTest>{Fate::dropped, note};
}
template <auto kMember, ledger_detail::Literal kText>
constexpr auto Constant(std::string_view note = {}) {
  return ledger_detail::Spec<kMember, ledger_detail::ConstantTest<kText>>{Fate::constant,
                                                                          note.empty() ? kText.text : note};
}
/// Five decimals.
template <auto kMember>
constexpr auto Length() {
  return ledger_detail::Spec<kMember, ledger_detail::LengthTest>{Fate::normalised, "five decimals"};
}
/// Six decimals.
template <auto kMember>
constexpr auto Angle() {
  return ledger_detail::Spec<kMember, ledger_detail::AngleTest>{Fate::normalised, "six decimals"};
}
/// Six digits.
template <auto kMember>
constexpr auto Significant() {
  return ledger_detail::Spec<kMember, ledger_detail::SignificantTest>{Fate::normalised, "six digits"};
}
/// Six digits, without a point where it is whole, so that it reads back as a count of database units.
template <auto kMember>
constexpr auto SixDigits() {
  return ledger_detail::Spec<kMember, ledger_detail::SixDigitsTest>{
      Fate::normalised, "six digits; a whole number reads back as a count of database units"};
}
/// Without quotes.
template <auto kMember>
constexpr auto Bare() {
  return ledger_detail::Spec<kMember, ledger_detail::BareTest>{Fate::normalised, "without quotes"};
}
template <auto kMember, bool kBracketFollows = true, ledger_detail::Literal kSigns = "()">
constexpr auto QuotedIf(std::string_view note = "in quotes only if it holds a bracket") {
  return ledger_detail::Spec<kMember, ledger_detail::QuotedIfTest<kSigns, kBracketFollows>>{Fate::normalised, note};
}
template <auto kMember, bool kBracketFollows = true>
constexpr auto Quoted() {
  return ledger_detail::Spec<kMember, ledger_detail::QuotedTest<kBracketFollows>>{Fate::normalised, "in quotes"};
}
template <auto kMember>
constexpr auto BareDoubled() {
  return ledger_detail::Spec<kMember, ledger_detail::DoubledTest<ledger_detail::BareTest>>{
      Fate::normalised, "without quotes, percent signs doubled"};
}
template <auto kMember, bool kBracketFollows = true>
constexpr auto QuotedDoubled() {
  return ledger_detail::Spec<kMember, ledger_detail::DoubledTest<ledger_detail::QuotedTest<kBracketFollows>>>{
      Fate::normalised, "in quotes, percent signs doubled"};
}
/// A test of its own: (const T&, std::string& value) gives whether something is lost.
template <class T>
constexpr LossRow<T> Custom(std::string_view field, Fate fate, std::string_view note,
                            bool (*lost)(const T&, std::string&)) {
  return {field, fate, note, lost};
}

/// The table of a class.
template <class T, std::size_t N>
struct LossTable {
  std::string_view className;
  std::array<LossRow<T>, N> rows;

  void Find(const T& object, LossFinder& finder) const {
    std::string sValue;
    for (const LossRow<T>& row : rows) {
      if (row.lost != nullptr && row.lost(object, sValue)) {
        finder.Tell(className, row.field, row.fate, row.note, sValue);
      }
    }
  }
  void List(std::vector<RecordLedgerLine>& lines) const {
    for (const LossRow<T>& row : rows) lines.push_back({className, row.field, row.fate, row.note});
  }
};
template <class T, class... Specs>
constexpr LossTable<T, sizeof...(Specs)> Losses(std::string_view className, Specs... specs) {
  return {className, {LossRow<T>(specs)...}};
}

/// Calls `walk(element)` for each element of an array, inside a step that is called by `name(element)`. Null arrays and
/// null slots are passed over.
template <class X, class Name, class Walk>
void ForEachElement(LossFinder& finder, std::string_view sField, const CExPtrArray<X*, X*>* pArray, Name&& name,
                    Walk&& walk) {
  if (pArray == nullptr) return;
  for (INT_PTR i = 0; i < pArray->GetSize(); ++i) {
    const X* p = pArray->GetAt(i);
    if (p == nullptr) continue;
    const LossFinder::Step step(finder, sField, name(*p), i);
    walk(*p);
  }
}
template <class X, class Walk>
void ForEachElement(LossFinder& finder, std::string_view sField, const CExPtrArray<X*, X*>* pArray, Walk&& walk) {
  ForEachElement(
      finder, sField, pArray, [](const X&) { return std::string_view(); }, walk);
}

}  // namespace laminate
