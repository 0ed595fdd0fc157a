#pragma once
// The engine that walks the tree of a text file by tables. A form of the file is a `Form` of rows; a row names the
// keyword, how its tokens are converted, and the field that they set, by pointer to member, so that a wrong field or
// conversion does not compile:
//
//   constexpr auto kOval = MakeForm<CBDoval>(
//       Point<&CBDoval::m_pt>("pt"),
//       Length<&CBDoval::m_dWidth>("width"),
//       Real<&CBDoval::m_dAngle>("ovalAngle"));
//
// Two walks exist, named for their rule: `WalkChildren` takes all children in file order, so that a repeated key
// overwrites, and `WalkFirstByName` looks each row's keyword up and takes its first child only. Tokens are read from
// left to right straight into the field, so what stood before a missing token has taken effect when it raises.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

#include "base/CArrayN.h"
#include "base/CPointD.h"
#include "base/CString.h"
#include "base/CStringArray.h"
#include "base/Number.h"
#include "reader/CECadClsLvl.h"

namespace laminate {

/// Raises `CInvalidArgException` that names the form, the missing token (from 1) and the form's line.
[[noreturn]] void RaiseMissingValue(const CECadClsLvl& node, int nToken);
/// The same for a required child.
[[noreturn]] void RaiseMissingChild(const CECadClsLvl& node, std::string_view sChild);

/// The n-th token of a form behind its name, from 1; raises when the form has fewer.
inline const CString& Token(const CECadClsLvl& node, int n) {
  if (n > node.m_arrValues.GetSize()) [[unlikely]]
    RaiseMissingValue(node, n);
  return node.m_arrValues.GetData()[n - 1];
}
inline bool HasToken(const CECadClsLvl& node, int n = 1) { return n <= node.m_arrValues.GetSize(); }

/// The forms in a form. A node that a host has robbed of its array raises.
inline CECadClsLvlArray& ChildrenOf(const CECadClsLvl& node) {
  if (node.m_pChildren == nullptr) [[unlikely]]
    AfxThrowInvalidArgException();
  return *node.m_pChildren;
}

/// The first child of that name, or null.
inline CECadClsLvl* FindChild(const CECadClsLvl& node, std::string_view sName) { return ChildrenOf(node).pFind(sName); }
/// The first child of that name; raises when there is none.
CECadClsLvl& RequireChild(const CECadClsLvl& node, std::string_view sName);
/// The first child, whatever its name; raises when there is none.
CECadClsLvl& RequireFirstChild(const CECadClsLvl& node);

/// A length in mm: a text with a "." is taken as it stands, any other is a count of database units, of which 100000
/// make one mm. Only the "." is looked for: "1e3" counts as having none.
double LengthOf(std::string_view s);

/// How the tokens of a row are converted, and what a missing token does where it does not raise.
enum class Conversion {
  length,        ///< one token, `LengthOf`
  real,          ///< one token, `Atof`
  integer,       ///< one token, `Atoi`
  text,          ///< one token as it stands
  point,         ///< two tokens, lengths, x and y
  optionalText,  ///< as text, but a form without token is passed over
  optionalLength,
  optionalInteger,
  integers,         ///< every token, appended; none is no fault
  texts,            ///< every token, appended; none is no fault
  setFlag,          ///< sets the field to 1; the tokens are not looked at
  integerPair,      ///< two tokens, integers, into two fields
  pointSequence,    ///< as point; the first form sets one field, each later one another
  firstChildPoint,  ///< the tokens of the first form in it, whatever its name, as a point
  form,             ///< a nested form with rows of its own, walked in file order
  formByName,       ///< a nested form with rows of its own, each looked up by name
  firstForm,        ///< only the first form in it counts; that one has rows of its own
  object,           ///< becomes an object of its own
  objects,          ///< each form in it becomes an object of its own
  custom,           ///< a function says what happens
  skip              ///< known, and of no effect
};

/// What a walk hands to its rows beside the object: the surroundings of the form, and whether the row's keyword came
/// for the first time in this walk.
template <class Context>
struct Walk {
  Context& context;
  bool first = true;
};

/// For forms that need nothing of their surroundings.
struct NoContext {};

/// A second reader of the rows: it is shown what an object holds for each row, in the row's own terms. Rows that make
/// objects, and custom ones that do not say how they are shown, show nothing here; whoever visits a form says itself
/// what becomes of them.
class RowVisitor {
 public:
  virtual ~RowVisitor() = default;
  virtual void OnLength(std::string_view key, double dValue) = 0;
  virtual void OnReal(std::string_view key, double dValue) = 0;
  virtual void OnInteger(std::string_view key, int nValue) = 0;
  virtual void OnText(std::string_view key, const CString& sValue) = 0;
  virtual void OnPoint(std::string_view key, const CPointD& pt) = 0;
  virtual void OnIntegers(std::string_view key, const CArrayN& values) = 0;
  virtual void OnTexts(std::string_view key, const CStringArray& values) = 0;
  virtual void OnFlag(std::string_view key, int nValue) = 0;
  /// The first form of that keyword sets one field, each later one another.
  virtual void OnPoints(std::string_view key, const CPointD& first, const CPointD& later) {
    OnPoint(key, first);
    OnPoint(key, later);
  }
  virtual void OnIntegerPair(std::string_view key, int nFirst, int nSecond) {
    OnInteger(key, nFirst);
    OnInteger(key, nSecond);
  }
  /// A nested form: the rows between the two belong in it.
  virtual void OnForm(std::string_view /*key*/) {}
  virtual void OnFormEnd() {}
  /// A nested form with a point of its own for tokens, which ends like any other.
  virtual void OnPointForm(std::string_view key, const CPointD& pt) {
    OnForm(key);
    OnPoint(key, pt);
  }
  /// Comes before each value: the field that holds it, as the code spells it.
  virtual void OnField(std::string_view /*field*/) {}
};

template <class T, class Context>
struct Row;

namespace grammar_detail {

// "&CBDoval::m_dWidth", as the compiler spells a template argument.
template <auto kMember>
constexpr std::string_view MemberName() {
  std::string_view s = __PRETTY_FUNCTION__;
  const std::size_t n = s.find("kMember = ");
  s = s.substr(n + 10);
  return s.substr(0, s.find_first_of(";]"));
}

template <auto kMember>
inline constexpr std::string_view kMemberName = MemberName<kMember>();

template <class M>
struct MemberOf;
template <class C, class F>
struct MemberOf<F C::*> {
  using Class = C;
  using Field = F;
};
template <auto kMember>
using FieldType = typename MemberOf<decltype(kMember)>::Field;

template <Conversion kConversion, auto kMember, class T>
void ReadField(const CECadClsLvl& node, T& object) {
  auto& field = object.*kMember;
  if constexpr (kConversion == Conversion::length) {
    field = LengthOf(Token(node, 1).View());
  } else if constexpr (kConversion == Conversion::real) {
    field = Atof(Token(node, 1).View());
  } else if constexpr (kConversion == Conversion::integer) {
    field = Atoi(Token(node, 1).View());
  } else if constexpr (kConversion == Conversion::text) {
    field = Token(node, 1);
  } else if constexpr (kConversion == Conversion::point) {
    field.x = LengthOf(Token(node, 1).View());
    field.y = LengthOf(Token(node, 2).View());
  } else if constexpr (kConversion == Conversion::optionalText) {
    if (HasToken(node)) field = Token(node, 1);
  } else if constexpr (kConversion == Conversion::optionalLength) {
    if (HasToken(node)) field = LengthOf(Token(node, 1).View());
  } else if constexpr (kConversion == Conversion::optionalInteger) {
    if (HasToken(node)) field = Atoi(Token(node, 1).View());
  } else if constexpr (kConversion == Conversion::integers) {
    for (const CString& s : node.m_arrValues) field.Add(Atoi(s.View()));
  } else if constexpr (kConversion == Conversion::texts) {
    field.Append(node.m_arrValues);
  } else {
    static_assert(kConversion == Conversion::setFlag);
    field = 1;
  }
}

template <Conversion kConversion, auto kMember, class T>
void ShowField(std::string_view key, const T& object, RowVisitor& visitor) {
  const auto& field = object.*kMember;
  visitor.OnField(kMemberName<kMember>);
  if constexpr (kConversion == Conversion::length || kConversion == Conversion::optionalLength) {
    visitor.OnLength(key, field);
  } else if constexpr (kConversion == Conversion::real) {
    visitor.OnReal(key, field);
  } else if constexpr (kConversion == Conversion::integer || kConversion == Conversion::optionalInteger) {
    visitor.OnInteger(key, field);
  } else if constexpr (kConversion == Conversion::text || kConversion == Conversion::optionalText) {
    visitor.OnText(key, field);
  } else if constexpr (kConversion == Conversion::point) {
    visitor.OnPoint(key, field);
  } else if constexpr (kConversion == Conversion::integers) {
    visitor.OnIntegers(key, field);
  } else if constexpr (kConversion == Conversion::texts) {
    visitor.OnTexts(key, field);
  } else {
    visitor.OnFlag(key, field);
  }
}

// What a row factory returns; it becomes a row of any form whose class has the field.
template <Conversion kConversion, auto kMember>
struct FieldSpec {
  std::string_view key;
};
template <auto kFunction, Conversion kShown, auto kMember>
struct CustomSpec {
  std::string_view key;
  std::string_view field;
};
struct SkipSpec {
  std::string_view key;
};

}  // namespace grammar_detail

/// One row of a form. `read` converts a child whose name is `key` into the object.
template <class T, class Context>
struct Row {
  std::string_view key;
  Conversion conversion = Conversion::skip;
  std::string_view field;  ///< the field as the code spells it; of a custom row what it fills, in words
  void (*read)(Walk<Context>&, const CECadClsLvl&, T&) = nullptr;
  void (*show)(std::string_view key, const T&, RowVisitor&) = nullptr;  ///< null for custom and skipped rows

  constexpr Row() = default;
  template <Conversion kConversion, auto kMember>
  constexpr Row(grammar_detail::FieldSpec<kConversion, kMember> spec)
      : key(spec.key), conversion(kConversion), field(grammar_detail::MemberName<kMember>()) {
    read = [](Walk<Context>&, const CECadClsLvl& node, T& object) {
      grammar_detail::ReadField<kConversion, kMember, T>(node, object);
    };
    show = [](std::string_view sKey, const T& object, RowVisitor& visitor) {
      grammar_detail::ShowField<kConversion, kMember, T>(sKey, object, visitor);
    };
  }
  template <auto kFunction, Conversion kShown, auto kMember>
  constexpr Row(grammar_detail::CustomSpec<kFunction, kShown, kMember> spec)
      : key(spec.key), conversion(Conversion::custom), field(spec.field) {
    read = [](Walk<Context>& walk, const CECadClsLvl& node, T& object) { kFunction(walk, node, object); };
    if constexpr (kShown != Conversion::custom) {
      show = [](std::string_view sKey, const T& object, RowVisitor& visitor) {
        grammar_detail::ShowField<kShown, kMember, T>(sKey, object, visitor);
      };
    }
  }
  constexpr Row(grammar_detail::SkipSpec spec) : key(spec.key) {}
  /// Any other kind of row: a class with `key`, `kConversion`, `Field()`, `Read(walk, child, object)` and, if what it
  /// reads can be shown, `Show(key, object, visitor)`.
  template <class Spec>
  requires requires { Spec::kConversion; }
  constexpr Row(Spec spec) : key(spec.key), conversion(Spec::kConversion), field(Spec::Field()) {
    read = [](Walk<Context>& walk, const CECadClsLvl& node, T& object) { Spec::Read(walk, node, object); };
    if constexpr (requires(std::string_view s, const T& t, RowVisitor& v) { Spec::Show(s, t, v); }) {
      show = [](std::string_view sKey, const T& object, RowVisitor& visitor) { Spec::Show(sKey, object, visitor); };
    }
  }
};

// ---- the rows' factories ----
template <auto kMember>
constexpr auto Length(std::string_view key) {
  static_assert(std::is_same_v<grammar_detail::FieldType<kMember>, double>);
  return grammar_detail::FieldSpec<Conversion::length, kMember>{key};
}
template <auto kMember>
constexpr auto Real(std::string_view key) {
  static_assert(std::is_same_v<grammar_detail::FieldType<kMember>, double>);
  return grammar_detail::FieldSpec<Conversion::real, kMember>{key};
}
template <auto kMember>
constexpr auto Integer(std::string_view key) {
  static_assert(std::is_same_v<grammar_detail::FieldType<kMember>, int>);
  return grammar_detail::FieldSpec<Conversion::integer, kMember>{key};
}
template <auto kMember>
constexpr auto Text(std::string_view key) {
  static_assert(std::is_same_v<grammar_detail::FieldType<kMember>, CString>);
  return grammar_detail::FieldSpec<Conversion::text, kMember>{key};
}
template <auto kMember>
constexpr auto Point(std::string_view key) {
  static_assert(std::is_same_v<grammar_detail::FieldType<kMember>, CPointD>);
  return grammar_detail::FieldSpec<Conversion::point, kMember>{key};
}
template <auto kMember>
constexpr auto OptionalText(std::string_view key) {
  static_assert(std::is_same_v<grammar_detail::FieldType<kMember>, CString>);
  return grammar_detail::FieldSpec<Conversion::optionalText, kMember>{key};
}
template <auto kMember>
constexpr auto OptionalLength(std::string_view key) {
  static_assert(std::is_same_v<grammar_detail::FieldType<kMember>, double>);
  return grammar_detail::FieldSpec<Conversion::optionalLength, kMember>{key};
}
template <auto kMember>
constexpr auto OptionalInteger(std::string_view key) {
  static_assert(std::is_same_v<grammar_detail::FieldType<kMember>, int>);
  return grammar_detail::FieldSpec<Conversion::optionalInteger, kMember>{key};
}
template <auto kMember>
constexpr auto Integers(std::string_view key) {
  static_assert(std::is_same_v<grammar_detail::FieldType<kMember>, CArrayN>);
  return grammar_detail::FieldSpec<Conversion::integers, kMember>{key};
}
template <auto kMember>
constexpr auto Texts(std::string_view key) {
  static_assert(std::is_same_v<grammar_detail::FieldType<kMember>, CStringArray>);
  return grammar_detail::FieldSpec<Conversion::texts, kMember>{key};
}
template <auto kMember>
constexpr auto SetFlag(std::string_view key) {
  static_assert(std::is_same_v<grammar_detail::FieldType<kMember>, int>);
  return grammar_detail::FieldSpec<Conversion::setFlag, kMember>{key};
}
/// `kFunction` is callable as (Walk<Context>&, const CECadClsLvl& child, T& object); `field` says what it fills. A row
/// that gives a field back as another conversion would read it names that one and the field.
template <auto kFunction, Conversion kShown = Conversion::custom, auto kMember = nullptr>
constexpr auto Custom(std::string_view key, std::string_view field) {
  return grammar_detail::CustomSpec<kFunction, kShown, kMember>{key, field};
}
constexpr auto Skip(std::string_view key) { return grammar_detail::SkipSpec{key}; }

/// Equality of two short texts, without a call.
inline bool SameWord(std::string_view a, std::string_view b) {
  const std::size_t n = a.size();
  if (n != b.size()) return false;
  const auto same = [](const char* p, const char* q, auto word) {
    auto other = word;
    std::memcpy(&word, p, sizeof word);
    std::memcpy(&other, q, sizeof other);
    return word == other;
  };
  const char* p = a.data();
  const char* q = b.data();
  // The last word may overlap the first.
  if (n >= 8) {
    if (n > 16) return a == b;
    return same(p, q, std::uint64_t{}) && same(p + n - 8, q + n - 8, std::uint64_t{});
  }
  if (n >= 4) return same(p, q, std::uint32_t{}) && same(p + n - 4, q + n - 4, std::uint32_t{});
  if (n >= 2) return same(p, q, std::uint16_t{}) && p[n - 1] == q[n - 1];
  return n == 0 || *p == *q;
}

/// Finds one of N keywords that are known when compiling: one hash and, as a rule, one comparison.
template <std::size_t N>
class KeywordIndex {
 public:
  template <class KeyOf>
  consteval explicit KeywordIndex(KeyOf keyOf) {
    static_assert(N < 64);
    for (std::size_t i = 0; i < N; ++i) {
      std::size_t slot = Hash(keyOf(i));
      while (m_slots[slot] != 0) slot = (slot + 1) % kSlots;
      m_slots[slot] = static_cast<std::uint8_t>(i + 1);
    }
  }
  /// The index of the keyword, or -1. Of two equal keywords the first counts.
  template <class KeyOf>
  int Find(std::string_view key, KeyOf keyOf) const {
    for (std::size_t slot = Hash(key); m_slots[slot] != 0; slot = (slot + 1) % kSlots) {
      const std::size_t i = m_slots[slot] - 1u;
      if (SameWord(keyOf(i), key)) return static_cast<int>(i);
    }
    return -1;
  }

 private:
  static constexpr std::size_t kSlots = N < 8 ? 32 : N < 24 ? 64 : 256;
  static constexpr std::size_t Hash(std::string_view key) {
    if (key.empty()) return 0;
    const auto byte = [key](std::size_t i) { return static_cast<std::size_t>(static_cast<unsigned char>(key[i])); };
    return (key.size() * 7 + byte(0) * 5 + byte(key.size() - 1) * 3 + byte(key.size() / 2)) % kSlots;
  }
  std::array<std::uint8_t, kSlots> m_slots{};
};

/// The rows of a form with an index over their keywords.
template <class T, class Context, std::size_t N>
class FormTable {
 public:
  using Object = T;
  using ContextType = Context;
  using RowType = Row<T, Context>;

  consteval explicit FormTable(const RowType (&rows)[N])
      : m_rows(std::to_array(rows)), m_index([&rows](std::size_t i) { return rows[i].key; }) {}

  constexpr const std::array<RowType, N>& Rows() const { return m_rows; }
  constexpr auto begin() const { return m_rows.begin(); }
  constexpr auto end() const { return m_rows.end(); }

  /// The row's index, or -1. Of two rows with one keyword the first counts.
  int Find(std::string_view key) const {
    return m_index.Find(key, [this](std::size_t i) { return m_rows[i].key; });
  }

 private:
  std::array<RowType, N> m_rows;
  KeywordIndex<N> m_index;
};

template <class T, class Context = NoContext, class... Specs>
consteval FormTable<T, Context, sizeof...(Specs)> MakeForm(Specs... specs) {
  const Row<T, Context> rows[] = {Row<T, Context>(specs)...};
  return FormTable<T, Context, sizeof...(Specs)>(rows);
}

/// Takes one child by the form's rows. False when no row has its name.
template <class T, class Context, std::size_t N>
bool ReadChild(const FormTable<T, Context, N>& form, const CECadClsLvl& child, T& object, Context& context,
               std::uint64_t& seen) {
  const int i = form.Find(child.m_sName.View());
  if (i < 0) return false;
  const auto& row = form.Rows()[static_cast<std::size_t>(i)];
  const std::uint64_t bit = std::uint64_t{1} << i;
  Walk<Context> walk{context, (seen & bit) == 0};
  seen |= bit;
  if (row.read != nullptr) row.read(walk, child, object);
  return true;
}

/// All children in file order; a child that no row names goes to `unknown`.
template <class T, class Context, std::size_t N, class Unknown>
void WalkChildren(const FormTable<T, Context, N>& form, const CECadClsLvl& node, T& object, Context& context,
                  Unknown&& unknown) {
  std::uint64_t seen = 0;
  for (const CECadClsLvl* pChild : ChildrenOf(node)) {
    if (pChild != nullptr && !ReadChild(form, *pChild, object, context, seen)) unknown(*pChild);
  }
}
/// The same; a child that no row names is skipped.
template <class T, class Context, std::size_t N>
void WalkChildren(const FormTable<T, Context, N>& form, const CECadClsLvl& node, T& object, Context& context) {
  WalkChildren(form, node, object, context, [](const CECadClsLvl&) {});
}
template <class T, std::size_t N>
void WalkChildren(const FormTable<T, NoContext, N>& form, const CECadClsLvl& node, T& object) {
  NoContext context;
  WalkChildren(form, node, object, context);
}

/// Each row in the table's order: its first child, if there is one.
template <class T, class Context, std::size_t N>
void WalkFirstByName(const FormTable<T, Context, N>& form, const CECadClsLvl& node, T& object, Context& context) {
  for (const auto& row : form) {
    const CECadClsLvl* pChild = FindChild(node, row.key);
    if (pChild == nullptr || row.read == nullptr) continue;
    Walk<Context> walk{context, true};
    row.read(walk, *pChild, object);
  }
}
template <class T, std::size_t N>
void WalkFirstByName(const FormTable<T, NoContext, N>& form, const CECadClsLvl& node, T& object) {
  NoContext context;
  WalkFirstByName(form, node, object, context);
}

/// The tokens of a form itself: a row of its own keyword is applied to it.
template <class T, class Context, std::size_t N>
void ReadOwnTokens(const FormTable<T, Context, N>& form, const CECadClsLvl& node, T& object, Context& context) {
  std::uint64_t seen = 0;
  ReadChild(form, node, object, context, seen);
}
template <class T, std::size_t N>
void ReadOwnTokens(const FormTable<T, NoContext, N>& form, const CECadClsLvl& node, T& object) {
  NoContext context;
  ReadOwnTokens(form, node, object, context);
}

/// The same for a form whose keyword is known to be that of the row.
template <std::size_t kRow, class T, std::size_t N>
void ReadOwnTokens(const FormTable<T, NoContext, N>& form, const CECadClsLvl& node, T& object) {
  NoContext context;
  Walk<NoContext> walk{context, true};
  form.Rows()[kRow].read(walk, node, object);
}

// ---- rows with rows of their own ----
// `kForm` is a table at namespace scope; `kInto` the member that its rows fill, a value or a pointer to one, where that
// is not the object itself.
namespace grammar_detail {

// "kFilletForm", as the compiler spells a template argument.
template <const auto& kForm>
constexpr std::string_view FormName() {
  std::string_view s = __PRETTY_FUNCTION__;
  s = s.substr(s.find("kForm = ") + 8);
  s = s.substr(0, s.find_first_of(";]"));
  return s.substr(s.rfind(':') + 1);  // npos + 1 is 0
}

template <auto kInto, class T>
auto& Inner(T& object) {
  if constexpr (std::is_null_pointer_v<decltype(kInto)>) {
    return object;
  } else if constexpr (std::is_pointer_v<FieldType<kInto>>) {
    return *(object.*kInto);
  } else {
    return object.*kInto;
  }
}

// Runs a walk with the context that the inner form's rows ask for.
template <const auto& kForm, class Context, class Function>
void WithContext(Context& context, Function&& function) {
  using Wanted = typename std::remove_cvref_t<decltype(kForm)>::ContextType;
  if constexpr (std::is_same_v<Wanted, NoContext>) {
    NoContext none;
    function(none);
  } else {
    function(context);
  }
}

template <const auto& kForm, auto kInto, class T>
void ShowForm(std::string_view key, const T& object, RowVisitor& visitor) {
  visitor.OnForm(key);
  for (const auto& row : kForm) {
    if (row.show != nullptr) row.show(row.key, Inner<kInto>(object), visitor);
  }
  visitor.OnFormEnd();
}

template <Conversion kHow, const auto& kForm, auto kInto>
struct FormSpec {
  static constexpr Conversion kConversion = kHow;
  static constexpr std::string_view Field() { return FormName<kForm>(); }
  std::string_view key;

  template <class Context, class T>
  static void Read(Walk<Context>& walk, const CECadClsLvl& node, T& object) {
    WithContext<kForm>(walk.context, [&](auto& context) {
      auto& inner = Inner<kInto>(object);
      if constexpr (kHow == Conversion::form) {
        WalkChildren(kForm, node, inner, context);
      } else if constexpr (kHow == Conversion::formByName) {
        WalkFirstByName(kForm, node, inner, context);
      } else {
        static_assert(kHow == Conversion::firstForm);
        std::uint64_t seen = 0;
        ReadChild(kForm, RequireFirstChild(node), inner, context, seen);
      }
    });
  }
  template <class T>
  static void Show(std::string_view sKey, const T& object, RowVisitor& visitor) {
    ShowForm<kForm, kInto>(sKey, object, visitor);
  }
};

// A keyword as a template argument.
template <std::size_t N>
struct Keyword {
  char text[N];
  consteval Keyword(const char (&sz)[N]) {
    for (std::size_t i = 0; i < N; ++i) text[i] = sz[i];
  }
  constexpr std::string_view View() const { return {text, N - 1}; }
};

// The first form in a nested one, whatever its keyword; `kFirst` is the one under which it is shown.
template <Conversion kHow, const auto& kForm, Keyword kFirst, auto kInto>
struct AnyFirstSpec {
  static constexpr Conversion kConversion = Conversion::firstForm;
  static constexpr std::string_view Field() { return FormName<kForm>(); }
  std::string_view key;

  template <class Context, class T>
  static void Read(Walk<Context>& walk, const CECadClsLvl& node, T& object) {
    FormSpec<kHow, kForm, kInto>::Read(walk, RequireFirstChild(node), object);
  }
  template <class T>
  static void Show(std::string_view sKey, const T& object, RowVisitor& visitor) {
    visitor.OnForm(sKey);
    ShowForm<kForm, kInto>(kFirst.View(), object, visitor);
    visitor.OnFormEnd();
  }
};

template <auto kFirst, auto kSecond>
struct IntegerPairSpec {
  static constexpr Conversion kConversion = Conversion::integerPair;
  static constexpr std::string_view Field() { return MemberName<kFirst>(); }
  std::string_view key;

  template <class Context, class T>
  static void Read(Walk<Context>&, const CECadClsLvl& node, T& object) {
    object.*kFirst = Atoi(Token(node, 1).View());
    object.*kSecond = Atoi(Token(node, 2).View());
  }
  template <class T>
  static void Show(std::string_view sKey, const T& object, RowVisitor& visitor) {
    visitor.OnField(kMemberName<kFirst>);
    visitor.OnIntegerPair(sKey, object.*kFirst, object.*kSecond);
  }
};

template <auto kFirst, auto kLater>
struct PointSequenceSpec {
  static constexpr Conversion kConversion = Conversion::pointSequence;
  static constexpr std::string_view Field() { return MemberName<kFirst>(); }
  std::string_view key;

  template <class Context, class T>
  static void Read(Walk<Context>& walk, const CECadClsLvl& node, T& object) {
    if (walk.first) {
      ReadField<Conversion::point, kFirst>(node, object);
    } else {
      ReadField<Conversion::point, kLater>(node, object);
    }
  }
  template <class T>
  static void Show(std::string_view sKey, const T& object, RowVisitor& visitor) {
    visitor.OnField(kMemberName<kFirst>);
    visitor.OnPoints(sKey, object.*kFirst, object.*kLater);
  }
};

template <auto kMember>
struct FirstChildPointSpec {
  static constexpr Conversion kConversion = Conversion::firstChildPoint;
  static constexpr std::string_view Field() { return MemberName<kMember>(); }
  std::string_view key;

  template <class Context, class T>
  static void Read(Walk<Context>&, const CECadClsLvl& node, T& object) {
    ReadField<Conversion::point, kMember>(RequireFirstChild(node), object);
  }
  template <class T>
  static void Show(std::string_view sKey, const T& object, RowVisitor& visitor) {
    visitor.OnForm(sKey);
    visitor.OnField(kMemberName<kMember>);
    visitor.OnPoint("pt", object.*kMember);
    visitor.OnFormEnd();
  }
};

}  // namespace grammar_detail

/// A nested form, walked in file order.
template <const auto& kForm, auto kInto = nullptr>
constexpr auto Nested(std::string_view key) {
  return grammar_detail::FormSpec<Conversion::form, kForm, kInto>{key};
}
/// A nested form, each of its rows looked up by name.
template <const auto& kForm, auto kInto = nullptr>
constexpr auto NestedByName(std::string_view key) {
  return grammar_detail::FormSpec<Conversion::formByName, kForm, kInto>{key};
}
/// A nested form of which the first form in it counts, and only if `kForm` has a row of its name. An empty one raises.
template <const auto& kForm, auto kInto = nullptr>
constexpr auto FirstForm(std::string_view key) {
  return grammar_detail::FormSpec<Conversion::firstForm, kForm, kInto>{key};
}
/// A nested form of which the first form in it is walked by `kForm`, whatever its name; `kFirst` is the usual one. An
/// empty one raises.
template <const auto& kForm, grammar_detail::Keyword kFirst, auto kInto = nullptr>
constexpr auto AnyFirstForm(std::string_view key) {
  return grammar_detail::AnyFirstSpec<Conversion::form, kForm, kFirst, kInto>{key};
}
/// The same, each row of the first form being looked up by name.
template <const auto& kForm, grammar_detail::Keyword kFirst, auto kInto = nullptr>
constexpr auto AnyFirstFormByName(std::string_view key) {
  return grammar_detail::AnyFirstSpec<Conversion::formByName, kForm, kFirst, kInto>{key};
}
template <auto kFirst, auto kSecond>
constexpr auto IntegerPair(std::string_view key) {
  return grammar_detail::IntegerPairSpec<kFirst, kSecond>{key};
}
template <auto kFirst, auto kLater>
constexpr auto PointSequence(std::string_view key) {
  return grammar_detail::PointSequenceSpec<kFirst, kLater>{key};
}
template <auto kMember>
constexpr auto FirstChildPoint(std::string_view key) {
  return grammar_detail::FirstChildPointSpec<kMember>{key};
}

}  // namespace laminate
