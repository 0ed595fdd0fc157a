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
  if (n > node.m_arrValues.GetSize()) [[unlikely]] RaiseMissingValue(node, n);
  return node.m_arrValues.GetData()[n - 1];
}
inline bool HasToken(const CECadClsLvl& node, int n = 1) { return n <= node.m_arrValues.GetSize(); }

/// The first child of that name, or null.
inline CECadClsLvl* FindChild(const CECadClsLvl& node, std::string_view sName) { return node.m_pChildren->pFind(sName); }
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
  integers,    ///< every token, appended; none is no fault
  texts,       ///< every token, appended; none is no fault
  setFlag,     ///< sets the field to 1; the tokens are not looked at
  form,        ///< a nested form with rows of its own
  custom,      ///< a function says what happens
  skip         ///< known, and of no effect
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

/// A second reader of the rows: it is shown what an object holds for each row, in the row's own terms. Custom rows show
/// nothing here; whoever visits a form says itself what becomes of them.
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
template <auto kFunction>
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
  template <auto kFunction>
  constexpr Row(grammar_detail::CustomSpec<kFunction> spec)
      : key(spec.key), conversion(Conversion::custom), field(spec.field) {
    read = [](Walk<Context>& walk, const CECadClsLvl& node, T& object) { kFunction(walk, node, object); };
  }
  constexpr Row(grammar_detail::SkipSpec spec) : key(spec.key) {}
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
/// `kFunction` is callable as (Walk<Context>&, const CECadClsLvl& child, T& object); `field` says what it fills.
template <auto kFunction>
constexpr auto Custom(std::string_view key, std::string_view field) {
  return grammar_detail::CustomSpec<kFunction>{key, field};
}
constexpr auto Skip(std::string_view key) { return grammar_detail::SkipSpec{key}; }

/// The rows of a form with an index over their keywords: one hash and one comparison per child.
template <class T, class Context, std::size_t N>
class FormTable {
 public:
  using Object = T;
  using RowType = Row<T, Context>;

  consteval explicit FormTable(const RowType (&rows)[N]) {
    static_assert(N < 64);
    for (std::size_t i = 0; i < N; ++i) {
      m_rows[i] = rows[i];
      std::size_t slot = Hash(rows[i].key);
      while (m_slots[slot] != 0) slot = (slot + 1) % kSlots;
      m_slots[slot] = static_cast<std::uint8_t>(i + 1);
    }
  }

  constexpr const std::array<RowType, N>& Rows() const { return m_rows; }
  constexpr auto begin() const { return m_rows.begin(); }
  constexpr auto end() const { return m_rows.end(); }

  /// The row's index, or -1. Of two rows with one keyword the first counts.
  int Find(std::string_view key) const {
    for (std::size_t slot = Hash(key); m_slots[slot] != 0; slot = (slot + 1) % kSlots) {
      const std::size_t i = m_slots[slot] - 1u;
      if (m_rows[i].key == key) return static_cast<int>(i);
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
  std::array<RowType, N> m_rows{};
  std::array<std::uint8_t, kSlots> m_slots{};
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
  for (const CECadClsLvl* pChild : *node.m_pChildren) {
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

}  // namespace laminate
