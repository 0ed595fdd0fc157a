#pragma once
// What the objects of the library consist of, for everything that shows or addresses them by name. A class's list names
// its fields by pointer to member, in the order of the class; their names come from the compiler, so that none can be
// misspelt. Fields without a meaning ("Reserved", "Spare"), log streams, progress controls and working state are left
// out.
//
//   template <> struct FieldsOf<CBDnet> : Fields<&CBDnet::m_sName, &CBDnet::m_pRefPinArray> {};
//   template <> struct FieldsOf<CBDcircle> : Fields<&CBDcircle::m_ptCenter, &CBDcircle::m_dRadius> {
//     using Base = CBDdrawObj;
//   };
#include <concepts>
#include <string_view>

namespace laminate {

namespace fields_detail {

// The compiler's spelling of a template argument, from the last "::" on.
constexpr std::string_view LastName(std::string_view s) {
  s = s.substr(0, s.find_first_of(";]"));
  const std::size_t n = s.rfind(':');
  if (n != std::string_view::npos) s = s.substr(n + 1);
  const std::size_t nAssign = s.find("= ");
  return nAssign == std::string_view::npos ? s : s.substr(nAssign + 2);
}
template <auto kMember>
constexpr std::string_view MemberName() {
  std::string_view s = __PRETTY_FUNCTION__;
  return LastName(s.substr(s.find("kMember = ") + 10));
}

// Worked out once, by the compiler: whoever compares designs visits very many fields.
template <auto kMember>
inline constexpr std::string_view kMemberName = MemberName<kMember>();

}  // namespace fields_detail

/// The name of a class, as the code spells it.
template <class TheClass>
constexpr std::string_view ClassName() {
  std::string_view s = __PRETTY_FUNCTION__;
  return fields_detail::LastName(s.substr(s.find("TheClass = ") + 11));
}

template <auto... kMembers>
struct Fields {
  /// Calls `visit(name, pointer to member)` for each field of the class itself.
  template <class Visitor>
  static constexpr void ForEachOwn(Visitor&& visit) {
    (visit(fields_detail::kMemberName<kMembers>, kMembers), ...);
  }
};

/// Specialised for every class that is shown.
template <class T>
struct FieldsOf;

template <class T>
concept HasFields = requires {
  FieldsOf<T>::ForEachOwn([](std::string_view, auto) {});
};

/// Calls `visit(name, pointer to member)` for each field, those of the base class first.
template <HasFields T, class Visitor>
constexpr void ForEachField(Visitor&& visit) {
  if constexpr (requires { typename FieldsOf<T>::Base; }) ForEachField<typename FieldsOf<T>::Base>(visit);
  FieldsOf<T>::ForEachOwn(visit);
}

}  // namespace laminate
