// Setting a value by its path in the words of a dump.
#include <charconv>
#include <climits>

#include "DesignEdit.h"
#include "FieldsDesign.h"
#include "Suggestions.h"
#include "base/CArrayPointD.h"
#include "base/CRectD.h"
#include "save/FieldsDrawObj.h"

namespace laminate::cli {

namespace {

// What an object of an array is called; nothing where its class has no names.
template <class X>
const CString* NameOf(const X& object) {
  if constexpr (requires { object.m_sReference; }) {
    return &object.m_sReference;
  } else if constexpr (requires { object.m_sName; }) {
    return &object.m_sName;
  } else if constexpr (requires { object.m_sItem; }) {
    return &object.m_sItem;
  } else {
    return nullptr;
  }
}

class Setter {
 public:
  Setter(const std::string& sPath, const std::string& sValue) : m_sPath(sPath), m_rest(sPath), m_sValue(sValue) {}

  void Set(CString& s) {
    AtEnd("text");
    s = std::string_view(m_sValue);
  }
  void Set(std::integral auto& n) {
    AtEnd("number");
    auto value = n;
    const auto [pEnd, error] = std::from_chars(m_sValue.data(), m_sValue.data() + m_sValue.size(), value);
    if (error != std::errc() || pEnd != m_sValue.data() + m_sValue.size()) Refuse("a whole number");
    n = value;
  }
  void Set(double& d) {
    AtEnd("number");
    double value = 0;
    if (!ReadNumber(m_sValue, value)) Refuse("a number");
    d = value;
  }
  void Set(CPointD& pt) {
    AtEnd("point");
    CPointD value;
    if (!ReadPoint(m_sValue, value)) Refuse("a point X,Y");
    pt = value;
  }
  void Set(CRectD&) { throw EditError{Here() + " is a rectangle, which no file holds"}; }
  void Set(CGProperty& property) { SetProperty(property); }
  void Set(CLProperty& property) { SetProperty(property); }
  template <class X>
  void Set(X*& p) {
    if (p == nullptr) throw EditError{Here() + " is null"};
    Set(*p);
  }
  void Set(CBDdrawObj*& p) { SetAsItsClass(p, ShapeClasses()); }
  void Set(CBDvertex*& p) { SetAsItsClass(p, VertexClasses()); }
  template <class TYPE, class ARG_TYPE>
  void Set(CArray<TYPE, ARG_TYPE>& array) {
    if (!m_rest.starts_with('[')) throw EditError{Here() + " is an array: a name or an index in brackets must follow"};
    // A name may hold brackets.
    std::size_t nEnd = m_rest.find("].");
    if (nEnd == m_rest.npos) nEnd = m_rest.ends_with(']') ? m_rest.size() - 1 : m_rest.npos;
    if (nEnd == m_rest.npos) throw EditError{Here() + ": a closing bracket is missing"};
    const std::string_view sKey = m_rest.substr(1, nEnd - 1);
    const INT_PTR n = IndexOf(array, sKey);
    m_rest.remove_prefix(nEnd + 1);
    Set(array.GetData()[n]);
  }
  template <HasFields T>
  void Set(T& object) {
    SetField(object);
  }

 private:
  template <class T>
  void SetField(T& object) {
    if (!m_rest.empty() && &m_rest.front() != m_sPath.data()) {
      if (!m_rest.starts_with('.')) throw EditError{Here() + ": a point and a field must follow"};
      m_rest.remove_prefix(1);
    }
    const std::string_view sName = m_rest.substr(0, m_rest.find_first_of(".["));
    bool bFound = false;
    std::vector<std::string> names;
    ForEachField<T>([&](std::string_view sField, auto pMember) {
      names.emplace_back(sField);
      if (sField != sName || bFound) return;
      bFound = true;
      m_rest.remove_prefix(sName.size());
      Set(object.*pMember);
    });
    if (bFound) return;
    throw EditError{std::string(ClassName<T>()) + " has no field '" + std::string(sName) + "'" +
                    DidYouMean(std::string(sName), names)};
  }
  template <class Base, class List>
  void SetAsItsClass(Base* p, List list) {
    if (p == nullptr) throw EditError{Here() + " is null"};
    AsItsClass(*p, list, [this](auto& object) { this->SetField(object); });
  }
  template <class Property>
  void SetProperty(Property& property) {
    const std::string_view sName = m_rest.starts_with('.') ? m_rest.substr(1) : m_rest;
    CString* p = sName == "item" ? &property.m_sItem : sName == "comment" ? &property.m_sComment : nullptr;
    if constexpr (requires { property.m_sKind; }) {
      if (sName == "kind") p = &property.m_sKind;
    }
    if (p == nullptr) throw EditError{Here() + " is a property: its item or its comment can be set"};
    *p = std::string_view(m_sValue);
  }

  // An object of that name goes before one of that place.
  template <class TYPE, class ARG_TYPE>
  INT_PTR IndexOf(const CArray<TYPE, ARG_TYPE>& array, std::string_view sKey) const {
    std::vector<std::string> names;
    if constexpr (std::is_pointer_v<TYPE>) {
      for (INT_PTR i = 0; i < array.GetSize(); ++i) {
        const auto* p = array.GetData()[i];
        const CString* psName = p == nullptr ? nullptr : NameOf(*p);
        if (psName == nullptr) continue;
        if (psName->View() == sKey) return i;
        names.emplace_back(psName->View());
      }
    }
    INT_PTR n = 0;
    const auto [pEnd, error] = std::from_chars(sKey.data(), sKey.data() + sKey.size(), n);
    if (error != std::errc() || pEnd != sKey.data() + sKey.size()) {
      throw EditError{Here() + " has no '" + std::string(sKey) + "'" + DidYouMean(std::string(sKey), names)};
    }
    if (n < 0 || n >= array.GetSize()) {
      throw EditError{Here() + " has " + std::to_string(array.GetSize()) + " elements, counted from 0"};
    }
    return n;
  }

  // The path up to what is being looked at.
  std::string Here() const { return m_sPath.substr(0, m_sPath.size() - m_rest.size()); }
  void AtEnd(const char* szWhat) const {
    if (!m_rest.empty()) throw EditError{Here() + " is a " + szWhat + ": nothing can follow"};
  }
  [[noreturn]] void Refuse(const char* szWanted) const {
    throw EditError{m_sPath + " takes " + szWanted + ", not '" + m_sValue + "'"};
  }

  const std::string& m_sPath;
  std::string_view m_rest;
  const std::string& m_sValue;
};

}  // namespace

void SetValue(CBDesigner& root, const std::string& sPath, const std::string& sValue) {
  Setter(sPath, sValue).Set(root);
}

}  // namespace laminate::cli
