#pragma once
// Rows and walks for forms that become objects of their own.
#include <memory>
#include <span>
#include <string_view>
#include <type_traits>

#include "base/CExPtrArray.h"
#include "reader/Grammar.h"

namespace laminate {

/// The rows of a form, for readers of the table other than the walk.
template <class T, class Context = NoContext>
using RowSpan = std::span<const Row<T, Context>>;

/// Calls `function` for each child, in file order.
template <class Function>
void ForEachChild(const CECadClsLvl& node, Function&& function) {
  for (const CECadClsLvl* pChild : ChildrenOf(node)) {
    if (pChild != nullptr) function(*pChild);
  }
}
/// The same for the children of one name.
template <class Function>
void ForEachChild(const CECadClsLvl& node, std::string_view sName, Function&& function) {
  ForEachChild(node, [&](const CECadClsLvl& child) {
    if (child.m_sName.View() == sName) function(child);
  });
}

namespace grammar_detail {

template <auto kArray, auto kRead>
struct EachSpec {
  static constexpr Conversion kConversion = Conversion::object;
  static constexpr std::string_view Field() { return MemberName<kArray>(); }
  std::string_view key;

  template <class Context, class T>
  static void Read(Walk<Context>& walk, const CECadClsLvl& node, T& object) {
    if (object.*kArray == nullptr) AfxThrowInvalidArgException();
    if constexpr (std::is_invocable_v<decltype(kRead), const CECadClsLvl&, Context&>) {
      AppendOwned(*(object.*kArray), kRead(node, walk.context));
    } else {
      AppendOwned(*(object.*kArray), kRead(node));
    }
  }
};

}  // namespace grammar_detail

/// A form that becomes an object of its own: `kRead(child)` or `kRead(child, context)` makes it, and the owning array
/// that `kArray` points to takes it.
template <auto kArray, auto kRead>
constexpr auto Each(std::string_view key) {
  return grammar_detail::EachSpec<kArray, kRead>{key};
}

}  // namespace laminate
