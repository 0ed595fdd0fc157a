#include "DesignEdit.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <functional>

#include "FieldsDesign.h"
#include "Suggestions.h"
#include "save/FieldsDrawObj.h"

namespace laminate::cli {

namespace {

// ---- walks over what an object consists of ----

// The mesh points of a surface without a mesh, or without a sub-mesh, are no places.
template <class T, class Member>
bool IsUsed(const T&, Member) {
  return true;
}
bool IsUsed(const CBDsurface& surface, CPointD CBDsurface::*pMember) {
  if (pMember == &CBDsurface::m_ptMeshBase || pMember == &CBDsurface::m_ptMeshRotate) return surface.m_bMesh != 0;
  return surface.m_bSubmesh != 0;
}

// Calls `visit` with each value in use that is no object itself, and `shape` with each shape before what is in it.
template <class Visit, class Shape>
class Walker {
 public:
  Walker(Visit visit, Shape shape) : m_visit(visit), m_shape(shape) {}

  template <class T>
  void Value(T& value) {
    if constexpr (std::is_pointer_v<T>) {
      if (value != nullptr) Held(*value);
    } else if constexpr (requires { *value.GetData(); }) {
      for (auto& element : value) Value(element);
    } else if constexpr (HasFields<T>) {
      Fields(value);
    } else {
      m_visit(value);
    }
  }

 private:
  template <class X>
  void Held(X& object) {
    Value(object);
  }
  void Held(CBDdrawObj& shape) {
    m_shape(shape);
    AsItsClass(shape, ShapeClasses(), [this](auto& object) { this->Fields(object); });
  }
  void Held(CBDvertex& vertex) {
    AsItsClass(vertex, VertexClasses(), [this](auto& object) { this->Fields(object); });
  }
  template <class T>
  void Fields(T& object) {
    ForEachField<T>([&](std::string_view, auto pMember) {
      if (IsUsed(object, pMember)) Value(object.*pMember);
    });
  }
  Visit m_visit;
  Shape m_shape;
};

template <class T, class Shape>
void ForEachShape(T& object, Shape shape) {
  Walker(([](auto&) {}), shape).Value(object);
}
// Every place in the object, on its shapes and in what these hold.
template <class T, class Point>
void ForEachPoint(T& object, Point point) {
  Walker(
      [point](auto& value) {
        using Value = std::remove_reference_t<decltype(value)>;
        if constexpr (std::is_same_v<Value, CPointD>) point(value);
      },
      [](CBDdrawObj&) {})
      .Value(object);
}

// ---- looking up ----

template <class Array, class Name>
auto* Find(Array* pArray, Name name, const std::string& sName) {
  if (pArray == nullptr) throw EditError{"the board has none"};
  for (auto* p : *pArray) {
    if (p != nullptr && (p->*name).View() == sName) return p;
  }
  return static_cast<decltype(pArray->GetAt(0))>(nullptr);
}
template <class Array, class Name>
auto& Require(Array* pArray, Name name, const char* szWhat, const std::string& sName) {
  if (auto* p = Find(pArray, name, sName)) return *p;
  std::vector<std::string> names;
  for (const auto* p : *pArray) {
    if (p != nullptr) names.emplace_back((p->*name).View());
  }
  throw EditError{std::string("no ") + szWhat + " '" + sName + "'" + DidYouMean(sName, names)};
}

CBDcomponent& RequireComponent(CBDesigner& root, const std::string& sReference) {
  return Require(root.m_pBoardContainer->m_pComponentArray, &CBDcomponent::m_sReference, "component", sReference);
}

CString Text(const std::string& s) { return CString(std::string_view(s)); }

// ---- places ----

// Lengths of a file are whole numbers of database units; what arithmetic adds behind them is taken away again.
constexpr double kUnitsPerMm = 100000.0;
bool IsOnGrid(double d) { return std::fabs(d * kUnitsPerMm - std::round(d * kUnitsPerMm)) < 1e-4; }
double ToGrid(double d) { return std::round(d * kUnitsPerMm) / kUnitsPerMm; }

// Turns the points of pins and shapes about a place, and then moves the place.
void Transport(CBDcomponent& component, const CPointD& from, double dTurn, const CPointD& to) {
  const bool bToGrid = IsOnGrid(to.x) && IsOnGrid(to.y);
  const auto carry = [&](CPointD& pt) {
    const bool bOnGrid = bToGrid && IsOnGrid(pt.x) && IsOnGrid(pt.y);
    pt.x -= from.x;
    pt.y -= from.y;
    pt.MoveRotate(-to.x, -to.y, dTurn);
    // What was as exact as a file says it stays so.
    if (bOnGrid) pt = CPointD(ToGrid(pt.x), ToGrid(pt.y));
  };
  ForEachPoint(*component.m_pDrawObjArray, carry);
  ForEachPoint(*component.m_pPinArray, carry);
}

double Wrap(double dAngle) {
  constexpr double kFullTurn = 360.0;
  const double d = std::fmod(dAngle, kFullTurn);
  return d < 0 ? d + kFullTurn : d;
}

// The shapes that have an angle turn with it; those in pads and padstacks turn by what these are.
void TurnShape(CBDdrawObj& shape, double dTurn) {
  AsItsClass(shape, ShapeClasses(), [dTurn](auto& object) {
    if constexpr (requires { object.m_dAngle; }) object.m_dAngle = Wrap(object.m_dAngle + dTurn);
    if constexpr (requires { object.m_pText; }) object.m_pText->m_dAngle = Wrap(object.m_pText->m_dAngle + dTurn);
  });
}
void TurnShapes(CBDdrawObjArray* pShapes, double dTurn) {
  for (CBDdrawObj* p : *pShapes) {
    if (p != nullptr) TurnShape(*p, dTurn);
  }
}

void RenameIn(CStringArray& names, const CString& sOld, const CString& sNew) {
  for (CString& s : names) {
    if (s == sOld) s = sNew;
  }
}

}  // namespace

void MoveComponent(CBDesigner& root, const std::string& sReference, const CPointD& pt) {
  CBDcomponent& component = RequireComponent(root, sReference);
  Transport(component, component.m_ptLocation, 0, pt);
  component.m_ptLocation = pt;
}

void RotateComponent(CBDesigner& root, const std::string& sReference, double dAngle) {
  CBDcomponent& component = RequireComponent(root, sReference);
  const double dTurn = (component.m_sPlacementSide == "B" ? -1 : 1) * (dAngle - component.m_dAngle);
  Transport(component, component.m_ptLocation, dTurn, component.m_ptLocation);
  TurnShapes(component.m_pDrawObjArray, dTurn);
  for (CBDpin* pPin : *component.m_pPinArray) {
    if (pPin != nullptr) TurnShapes(pPin->m_pDrawObjArray, dTurn);
  }
  component.m_dAngle = dAngle;
}

void RenameComponent(CBDesigner& root, const std::string& sReference, const std::string& sNew) {
  CBDboardContainer& board = *root.m_pBoardContainer;
  CBDcomponent& component = RequireComponent(root, sReference);
  if (sNew == sReference) return;
  if (Find(board.m_pComponentArray, &CBDcomponent::m_sReference, sNew) != nullptr) {
    throw EditError{"there is a component '" + sNew + "' already"};
  }
  const CString sOldText = Text(sReference);
  const CString sNewText = Text(sNew);
  component.m_sReference = sNewText;
  for (CBDdrawObj* pShape : *component.m_pDrawObjArray) {
    auto* pSymbol = dynamic_cast<CBDsymbolText*>(pShape);
    if (pSymbol == nullptr || pSymbol->m_sSymbolType != "REFERENCE") continue;
    if (pSymbol->m_pText != nullptr && pSymbol->m_pText->m_sString == sOldText) pSymbol->m_pText->m_sString = sNewText;
  }
  for (CBDnet* pNet : *board.m_pNetArray) {
    for (CBDrefPin* pPin : *pNet->m_pRefPinArray) {
      if (pPin->m_sComp == sOldText) pPin->m_sComp = sNewText;
    }
  }
  for (CBDcompGroup* pGroup : *board.m_pCompGroupArray) RenameIn(pGroup->m_aList, sOldText, sNewText);
}

void RemoveComponent(CBDesigner& root, const std::string& sReference) {
  CBDboardContainer& board = *root.m_pBoardContainer;
  CBDcomponent& component = RequireComponent(root, sReference);
  const CString sOld = Text(sReference);
  for (CBDnet* pNet : *board.m_pNetArray) {
    CBDrefPinArray& pins = *pNet->m_pRefPinArray;
    for (INT_PTR i = pins.GetSize(); i-- > 0;) {
      if (pins.GetAt(i)->m_sComp == sOld) pins.DeleteAt(static_cast<int>(i), 1);
    }
  }
  for (CBDcompGroup* pGroup : *board.m_pCompGroupArray) {
    for (INT_PTR i = pGroup->m_aList.GetSize(); i-- > 0;) {
      if (pGroup->m_aList[i] == sOld) pGroup->m_aList.RemoveAt(i);
    }
  }
  board.m_pComponentArray->Delete(&component);
}

void RenameNet(CBDesigner& root, const std::string& sNet, const std::string& sNew) {
  CBDboardContainer& board = *root.m_pBoardContainer;
  CBDnet& net = Require(board.m_pNetArray, &CBDnet::m_sName, "net", sNet);
  if (sNew == sNet) return;
  if (Find(board.m_pNetArray, &CBDnet::m_sName, sNew) != nullptr) {
    throw EditError{"there is a net '" + sNew + "' already"};
  }
  const CString sOldText = Text(sNet);
  const CString sNewText = Text(sNew);
  net.m_sName = sNewText;
  ForEachShape(board, [&](CBDdrawObj& shape) {
    if (shape.m_sNet == sOldText) shape.m_sNet = sNewText;
  });
}

bool ReadNumber(std::string_view s, double& d) {
  if (s.starts_with('+')) s.remove_prefix(1);
  const auto [pEnd, error] = std::from_chars(s.data(), s.data() + s.size(), d);
  return error == std::errc() && pEnd == s.data() + s.size() && std::isfinite(d);
}

bool ReadPoint(std::string_view s, CPointD& pt) {
  const std::size_t n = s.find(',');
  return n != s.npos && ReadNumber(s.substr(0, n), pt.x) && ReadNumber(s.substr(n + 1), pt.y);
}

}  // namespace laminate::cli
