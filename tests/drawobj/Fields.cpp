#include "drawobj/Fields.h"

#include <charconv>
#include <cmath>
#include <random>
#include <typeinfo>

namespace {

// The object as what it is, by its class and not by its tag.
template <class Base, class... Classes>
std::string ByClass(const Base& o) {
  std::string s;
  const bool bFound =
      ((typeid(o) == typeid(Classes) ? (s = Describe(static_cast<const Classes&>(o)), true) : false) || ...);
  return bFound ? s : "?";
}

template <class T>
std::string AtField(const T& o, std::string_view path);

template <class Base, class... Classes>
std::string AtByClass(const Base& o, std::string_view path) {
  std::string s = "?";
  const bool bFound =
      ((typeid(o) == typeid(Classes) ? (s = AtField(static_cast<const Classes&>(o), path), true) : false) || ...);
  return bFound ? s : "?";
}
std::string AtObject(const CBDdrawObj& o, std::string_view path) {
  return AtByClass<CBDdrawObj, CBDdrawObj, CBDareaz, CBDcircle, CBDdelete, CBDdonut, CBDdrawPad, CBDdrawPadstack,
                   CBDdrawSubBoard, CBDhole, CBDline, CBDoblong, CBDopenShape, CBDoval, CBDovalHole, CBDrectangle,
                   CBDroundThermal, CBDsquareHole, CBDsquareThermal, CBDsurface, CBDsymbolText, CBDtext>(o, path);
}
std::string AtObject(const CBDvertex& o, std::string_view path) {
  return AtByClass<CBDvertex, CBDvertex, CBDvertexPt, CBDvertexArc>(o, path);
}
std::string AtObject(const CBDfillet& o, std::string_view path) { return AtField(o, path); }
std::string AtObject(const CBDpadstackRefLay& o, std::string_view path) { return AtField(o, path); }

template <class Array>
concept ArrayOfObjects = requires(const Array& a) {
  AtObject(*a.GetAt(0), "");
};

template <class T>
std::string AtField(const T& o, std::string_view path) {
  const std::size_t n = path.find('/');
  const std::string_view first = path.substr(0, n);
  const std::string_view rest = n == std::string_view::npos ? std::string_view() : path.substr(n + 1);
  std::string s = "?";
  AllFields(o, [&](const char* szName, const auto& field) {
    using Field = std::remove_cvref_t<decltype(field)>;
    if (first != szName) return;
    if (rest.empty()) {
      s = Text(field);
    } else if constexpr (std::is_pointer_v<Field>) {
      if (field == nullptr) return;
      if constexpr (ArrayOfObjects<std::remove_pointer_t<Field>>) {
        const std::size_t nSlash = rest.find('/');
        const auto* p = field->GetAt(rest[0] - '0');
        if (p == nullptr) {
          s = "absent";
        } else if (nSlash == std::string_view::npos) {
          s = Text(p);
        } else {
          s = AtObject(*p, rest.substr(nSlash + 1));
        }
      } else if constexpr (requires { AtObject(*field, rest); }) {
        s = AtObject(*field, rest);
      }
    }
  });
  return s;
}

}  // namespace

std::string At(const CBDdrawObj& shape, std::string_view path) { return AtObject(shape, path); }

std::string Text(double d) {
  char sz[64];
  return std::string(sz, std::to_chars(sz, sz + sizeof sz, d).ptr);
}
std::string Text(int n) { return std::to_string(n); }
std::string Text(const CString& s) { return "'" + std::string(s.View()) + "'"; }
std::string Text(const CPointD& pt) { return "(" + Text(pt.x) + "," + Text(pt.y) + ")"; }
std::string Text(const CArrayN& numbers) {
  std::string s = "[";
  for (int n : numbers) s += Text(n) + ",";
  return s + "]";
}
std::string Text(const CLPropertyArray* pProperties) {
  if (pProperties == nullptr) return "null";
  std::string s = "[";
  for (const CLProperty* p : *pProperties) s += Text(p->GetItem()) + ":" + Text(p->GetComment()) + ";";
  return s + "]";
}
std::string Text(const CBDdrawObj* p) {
  if (p == nullptr) return "null";
  return ByClass<CBDdrawObj, CBDdrawObj, CBDareaz, CBDcircle, CBDdelete, CBDdonut, CBDdrawPad, CBDdrawPadstack,
                 CBDdrawSubBoard, CBDhole, CBDline, CBDoblong, CBDopenShape, CBDoval, CBDovalHole, CBDrectangle,
                 CBDroundThermal, CBDsquareHole, CBDsquareThermal, CBDsurface, CBDsymbolText, CBDtext>(*p);
}
std::string Text(const CBDvertex* p) {
  return p == nullptr ? "null" : ByClass<CBDvertex, CBDvertex, CBDvertexPt, CBDvertexArc>(*p);
}
std::string Text(const CBDfillet* p) { return p == nullptr ? "null" : Describe(*p); }
std::string Text(const CBDpadstackRefLay* p) { return p == nullptr ? "null" : Describe(*p); }

namespace filling {
namespace {

int g_n = 100;
std::mt19937* g_pRandom = nullptr;

int Random(int nBelow) { return static_cast<int>((*g_pRandom)() % static_cast<unsigned>(nBelow)); }

double RandomNumber() {
  // Nothing that rounding to five decimals turns into nothing.
  const double dSign = Random(2) == 0 ? 1 : -1;
  switch (Random(6)) {
    case 0:
      return dSign * Random(2) * 0.0;
    case 1:
      return dSign * (0.01 + Random(100000) / 100000.0);
    case 2:
      return dSign * Random(1000);
    case 3:
      return dSign * (1 + Random(1 << 30)) / 7.0;
    case 4:
      return dSign * std::ldexp(1 + Random(1 << 30), Random(40));
    default:
      return dSign * (1 + Random(30000000) / 100000.0);
  }
}

std::string RandomWord() {
  static constexpr char kBytes[] =
      "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-+*/.,:;#$&<>=@[]{}~^|!?'`";
  std::string s;
  for (int n = 1 + Random(Random(4) == 0 ? 40 : 8); n > 0; --n) s += kBytes[Random(sizeof kBytes - 1)];
  // Two of them begin a comment.
  for (std::size_t at = 0; (at = s.find("//", at)) != std::string::npos;) s[at] = '_';
  return s;
}

template <class X, class Array>
void Add(Array*& pArray) {
  if (pArray == nullptr) pArray = new Array;
  auto p = std::make_unique<X>();
  Fill(*p);
  laminate::AppendOwned(*pArray, std::move(p));
}
template <class X, class Base>
void Replace(Base*& p) {
  delete p;
  auto pNew = std::make_unique<X>();
  Fill(*pNew);
  p = pNew.release();
}

}  // namespace

RandomScope::RandomScope(unsigned nSeed) { g_pRandom = new std::mt19937(nSeed); }
RandomScope::~RandomScope() {
  delete g_pRandom;
  g_pRandom = nullptr;
}

int Next() { return ++g_n; }
void Restart() { g_n = 100; }
void Set(double& d) { d = g_pRandom != nullptr ? RandomNumber() : Next() + 0.25; }
void Set(int& n) { n = g_pRandom != nullptr ? Random(20) - 5 : Next(); }
void Set(CString& s) { s = CString(g_pRandom != nullptr ? RandomWord() : "t" + std::to_string(Next())); }
void Set(CPointD& pt) {
  Set(pt.x);
  Set(pt.y);
}
void Set(CArrayN& numbers) {
  numbers.Add(Next());
  numbers.Add(Next());
}
void Set(CLPropertyArray*& p) { laminate::AppendOwned(*p, std::make_unique<CLProperty>("item", "comment")); }
void Set(CBDdrawObjArray*& p) {
  Add<CBDcircle>(p);
  Add<CBDdonut>(p);
}
void Set(CBDvertexArray*& p) {
  if (g_pRandom == nullptr) {
    Add<CBDvertexPt>(p);
    Add<CBDvertexArc>(p);
    Add<CBDvertexPt>(p);
    return;
  }
  for (int n = Random(6); n > 0; --n) {
    if (Random(3) == 0) {
      Add<CBDvertexArc>(p);
    } else {
      Add<CBDvertexPt>(p);
    }
  }
}
void Set(CBDopenShapeArray*& p) {
  for (int n = g_pRandom != nullptr ? Random(3) : 1; n > 0; --n) Add<CBDopenShape>(p);
}
void Set(CBDpadstackRefLayArray*& p) {
  for (int n = g_pRandom != nullptr ? Random(6) : 1; n > 0; --n) Add<CBDpadstackRefLay>(p);
}
void Set(CBDdrawObj*& p) { Replace<CBDcircle>(p); }
void Set(CBDtext*& p) { Replace<CBDtext>(p); }
void Set(CBDfillet*& p) { Replace<CBDfillet>(p); }

}  // namespace filling
