#include "save/Content.h"

#include <bit>
#include <cmath>
#include <concepts>
#include <functional>
#include <string_view>
#include <typeinfo>

#include "base/CArrayN.h"
#include "base/CGProperty.h"
#include "base/CLProperty.h"
#include "base/CRectD.h"
#include "base/CStringArray.h"
#include "save/FieldsBoard.h"
#include "save/FieldsDrawObj.h"
#include "save/FieldsTechnology.h"

namespace laminate {

namespace {

// ---- sameness ----

bool Same(const CString& a, const CString& b) { return a == b; }
bool Same(std::integral auto a, std::integral auto b) { return a == b; }
bool Same(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) || (std::isnan(a) && std::isnan(b));
}
bool Same(const CPointD& a, const CPointD& b) { return Same(a.x, b.x) && Same(a.y, b.y); }
bool Same(const CRectD& a, const CRectD& b) {
  return Same(a.x, b.x) && Same(a.y, b.y) && Same(a.width, b.width) && Same(a.height, b.height);
}
bool Same(const CGProperty& a, const CGProperty& b) { return a == b; }
bool Same(const CLProperty& a, const CLProperty& b) { return a == b; }
template <HasFields T>
bool Same(const T& a, const T& b);
template <class TYPE, class ARG_TYPE>
bool Same(const CArray<TYPE, ARG_TYPE>& a, const CArray<TYPE, ARG_TYPE>& b);
bool Same(CBDdrawObj* const& a, CBDdrawObj* const& b);
bool Same(CBDvertex* const& a, CBDvertex* const& b);

template <class X>
bool Same(X* const& a, X* const& b) {
  return a == b || (a != nullptr && b != nullptr && Same(*a, *b));
}
template <class TYPE, class ARG_TYPE>
bool Same(const CArray<TYPE, ARG_TYPE>& a, const CArray<TYPE, ARG_TYPE>& b) {
  if (a.GetSize() != b.GetSize()) return false;
  const TYPE* pa = a.GetData();
  const TYPE* pb = b.GetData();
  for (INT_PTR i = 0; i < a.GetSize(); ++i) {
    if (!Same(pa[i], pb[i])) return false;
  }
  return true;
}
template <HasFields T>
bool Same(const T& a, const T& b) {
  bool bSame = true;
  ForEachField<T>([&](std::string_view, auto pMember) { bSame = bSame && Same(a.*pMember, b.*pMember); });
  return bSame;
}

// ---- hashes ----

class Hasher {
 public:
  std::uint64_t Value() const { return m_n; }

  void Mix(std::uint64_t n) {
    m_n = (m_n ^ n) * 0x9e3779b97f4a7c15u;
    m_n ^= m_n >> 29;
  }
  void Add(const CString& s) { Mix(std::hash<std::string_view>()(s.View())); }
  void Add(std::integral auto n) { Mix(static_cast<std::uint64_t>(n)); }
  void Add(double d) { Mix(std::isnan(d) ? std::uint64_t{1} : std::bit_cast<std::uint64_t>(d)); }
  void Add(const CPointD& pt) {
    Add(pt.x);
    Add(pt.y);
  }
  void Add(const CRectD& rc) {
    for (double d : {rc.x, rc.y, rc.width, rc.height}) Add(d);
  }
  void Add(const CGProperty& property) {
    Add(property.m_sItem);
    Add(property.m_sComment);
  }
  void Add(const CLProperty& property) {
    Add(property.m_sItem);
    Add(property.m_sComment);
    Add(property.m_sKind);
  }
  void Add(CBDdrawObj* const& p);
  void Add(CBDvertex* const& p);
  template <class X>
  void Add(X* const& p) {
    Add(p != nullptr);
    if (p != nullptr) Add(*p);
  }
  template <class TYPE, class ARG_TYPE>
  void Add(const CArray<TYPE, ARG_TYPE>& array) {
    Add(array.GetSize());
    for (const TYPE& element : array) Add(element);
  }
  template <HasFields T>
  void Add(const T& object) {
    ForEachField<T>([&](std::string_view, auto pMember) { Add(object.*pMember); });
  }

 private:
  std::uint64_t m_n = 0x243f6a8885a308d3u;
};

// ---- objects that are held by their base class ----

// What can be done with an object of each class; one of a class that only a host knows shows what it has of the base.
template <class Base>
struct ByClass {
  bool (*same)(const Base&, const Base&);
  void (*hash)(Hasher&, const Base&);
};
template <class Base, class T>
constexpr ByClass<Base> kByClass = {
    [](const Base& a, const Base& b) { return Same(static_cast<const T&>(a), static_cast<const T&>(b)); },
    [](Hasher& hasher, const Base& object) { hasher.Add(static_cast<const T&>(object)); }};

template <class Base, class... Classes>
const ByClass<Base>& ClassIn(const Base& object, ClassList<Classes...>) {
  const std::type_info& type = typeid(object);
  const ByClass<Base>* p = &kByClass<Base, Base>;
  static_cast<void>(((type == typeid(Classes) && (p = &kByClass<Base, Classes>) != nullptr) || ...));
  return *p;
}
const ByClass<CBDdrawObj>& ClassOf(const CBDdrawObj& shape) { return ClassIn(shape, ShapeClasses()); }
const ByClass<CBDvertex>& ClassOf(const CBDvertex& vertex) { return ClassIn(vertex, VertexClasses()); }

template <class Base>
bool SameByClass(const Base* a, const Base* b) {
  if (a == b) return true;
  return a != nullptr && b != nullptr && typeid(*a) == typeid(*b) && ClassOf(*a).same(*a, *b);
}
bool Same(CBDdrawObj* const& a, CBDdrawObj* const& b) { return SameByClass<CBDdrawObj>(a, b); }
bool Same(CBDvertex* const& a, CBDvertex* const& b) { return SameByClass<CBDvertex>(a, b); }

void Hasher::Add(CBDdrawObj* const& p) {
  Add(p != nullptr);
  if (p != nullptr) ClassOf(*p).hash(*this, *p);
}
void Hasher::Add(CBDvertex* const& p) {
  Add(p != nullptr);
  if (p != nullptr) ClassOf(*p).hash(*this, *p);
}

}  // namespace

bool SameContent(const CBDcomponent& a, const CBDcomponent& b) { return Same(a, b); }
bool SameContent(const CBDdrawObj& a, const CBDdrawObj& b) { return SameByClass(&a, &b); }
bool SameContent(const CBDtechnologyContainer& a, const CBDtechnologyContainer& b) { return Same(a, b); }
bool SameContent(const CBDparameter& a, const CBDparameter& b) { return Same(a, b); }
bool SameContent(const CBDlibraryEntities& a, const CBDlibraryEntities& b) { return Same(a, b); }
bool SameContent(const CBDfootprintContainer& a, const CBDfootprintContainer& b) { return Same(a, b); }
bool SameRecords(const CBDboardContainer& a, const CBDboardContainer& b) {
  return Same(a.m_pCompGroupArray, b.m_pCompGroupArray) && Same(a.m_pNetArray, b.m_pNetArray) &&
         Same(a.m_pSubBoardArray, b.m_pSubBoardArray);
}
bool SameComponents(const CBDboardContainer& a, const CBDboardContainer& b) {
  return Same(a.m_pComponentArray, b.m_pComponentArray);
}
bool SameShapes(const CBDboardContainer& a, const CBDboardContainer& b) {
  return Same(a.m_pDrawObjArray, b.m_pDrawObjArray);
}

std::uint64_t ContentHash(const CBDcomponent& component) {
  Hasher hasher;
  hasher.Add(component);
  return hasher.Value();
}
std::uint64_t ContentHash(const CBDdrawObj& shape) {
  Hasher hasher;
  ClassOf(shape).hash(hasher, shape);
  return hasher.Value();
}

int CountDifferences(const CBDcomponent& a, const CBDcomponent& b) {
  int n = 0;
  ForEachField<CBDcomponent>([&](std::string_view, auto pMember) { n += Same(a.*pMember, b.*pMember) ? 0 : 1; });
  return n;
}

}  // namespace laminate
