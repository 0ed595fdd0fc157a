#pragma once
// What the classes of the family share to say their grammars: the rows that only shapes have, and the way in which a
// class offers its tables to others.
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "drawobj/CBDdrawObj.h"
#include "drawobj/CBDvertex.h"
#include "drawobj/DrawObjReader.h"
#include "reader/Grammar.h"

class CBDcircle;
class CBDdelete;
class CBDdonut;
class CBDdrawPad;
class CBDdrawPadstack;
class CBDdrawSubBoard;
class CBDfillet;
class CBDhole;
class CBDline;
class CBDoblong;
class CBDopenShape;
class CBDoval;
class CBDovalHole;
class CBDpadstackRefLay;
class CBDrectangle;
class CBDroundThermal;
class CBDsquareHole;
class CBDsquareThermal;
class CBDsurface;
class CBDsymbolText;
class CBDtext;
class CBDvertexArc;
class CBDvertexPt;

namespace laminate {

/// Reads one class of shape from its node, with the layer that it stands in. Each class has it beside its grammar.
template <class T>
std::unique_ptr<CBDdrawObj> Make(const CECadClsLvl& node, const ShapeContext& context);

/// A new shape that takes over its layer.
template <class T>
std::unique_ptr<T> NewShape(const ShapeContext& context) {
  auto pShape = std::make_unique<T>();
  pShape->m_nLayerNumber = context.nLayerNumber;
  pShape->m_sLayerName = context.sLayerName;
  pShape->m_sLayerType = context.sLayerType;
  pShape->m_bRefer = context.bRefer;
  return pShape;
}

namespace shape_rows {

template <auto kMember>
struct VerticesSpec {
  static constexpr Conversion kConversion = Conversion::objects;
  static constexpr std::string_view Field() { return grammar_detail::MemberName<kMember>(); }
  std::string_view key;

  template <class Context, class T>
  static void Read(Walk<Context>&, const CECadClsLvl& node, T& object) {
    ReadVertices(node, *(object.*kMember));
  }
};

template <auto kMember>
struct ShapesSpec {
  static constexpr Conversion kConversion = Conversion::objects;
  static constexpr std::string_view Field() { return grammar_detail::MemberName<kMember>(); }
  std::string_view key;

  template <class Context, class T>
  static void Read(Walk<Context>& walk, const CECadClsLvl& node, T& object) {
    ReadShapes(node, walk.context, *(object.*kMember));
  }
};

template <auto kMember, const auto& kForm>
struct PointWithSpec {
  static constexpr Conversion kConversion = Conversion::point;
  static constexpr std::string_view Field() { return grammar_detail::MemberName<kMember>(); }
  std::string_view key;

  template <class Context, class T>
  static void Read(Walk<Context>&, const CECadClsLvl& node, T& object) {
    grammar_detail::ReadField<Conversion::point, kMember>(node, object);
    WalkFirstByName(kForm, node, object);
  }
  template <class T>
  static void Show(std::string_view sKey, const T& object, RowVisitor& visitor) {
    visitor.OnField(grammar_detail::kMemberName<kMember>);
    visitor.OnPointForm(sKey, object.*kMember);
    for (const auto& row : kForm) {
      if (row.show != nullptr) row.show(row.key, object, visitor);
    }
    visitor.OnFormEnd();
  }
};

template <auto kFlag, const auto& kForm>
struct FlaggedSpec {
  static constexpr Conversion kConversion = Conversion::form;
  static constexpr std::string_view Field() { return grammar_detail::MemberName<kFlag>(); }
  std::string_view key;

  template <class Context, class T>
  static void Read(Walk<Context>&, const CECadClsLvl& node, T& object) {
    object.*kFlag = 1;
    WalkChildren(kForm, node, object);
  }
  template <class T>
  static void Show(std::string_view sKey, const T& object, RowVisitor& visitor) {
    if (object.*kFlag != 0) grammar_detail::ShowForm<kForm, nullptr>(sKey, object, visitor);
  }
};

}  // namespace shape_rows

/// A vertex section, appended to the array.
template <auto kMember>
constexpr auto Vertices(std::string_view key) {
  return shape_rows::VerticesSpec<kMember>{key};
}
/// Every form in it is a shape; those that yield an object are appended to the array.
template <auto kMember>
constexpr auto Shapes(std::string_view key) {
  return shape_rows::ShapesSpec<kMember>{key};
}
/// A point, and in it the rows of `kForm`, each looked up by name.
template <auto kMember, const auto& kForm>
constexpr auto PointWith(std::string_view key) {
  return shape_rows::PointWithSpec<kMember, kForm>{key};
}
/// A nested form whose presence sets a field to 1.
template <auto kFlag, const auto& kForm>
constexpr auto Flagged(std::string_view key) {
  return shape_rows::FlaggedSpec<kFlag, kForm>{key};
}

/// A table as others see it.
template <class T>
struct RowView {
  std::string_view key;
  Conversion conversion = Conversion::skip;
  std::string_view field;
  void (*show)(std::string_view key, const T&, RowVisitor&) = nullptr;  ///< null: the row cannot show what it read
};
template <class T>
struct FormView {
  std::string_view name;  ///< the table's own name
  std::vector<RowView<T>> rows;
};

/// All tables by which a class is read. Each class has it beside its grammar.
template <class T>
std::vector<FormView<T>> Grammar();

template <const auto& kForm>
auto View() {
  using T = typename std::remove_cvref_t<decltype(kForm)>::Object;
  FormView<T> view{grammar_detail::FormName<kForm>(), {}};
  for (const auto& row : kForm) view.rows.push_back({row.key, row.conversion, row.field, row.show});
  return view;
}

/// The parts of a circle, for a hole's inner one.
void ReadCircle(const CECadClsLvl& node, CBDcircle& circle);
/// The two kinds of vertex.
void ReadVertexPt(const CECadClsLvl& node, CBDvertexPt& point);
void ReadVertexArc(const CECadClsLvl& node, CBDvertexArc& arc);
/// A cut-out of a surface.
std::unique_ptr<CBDopenShape> ReadOpenShape(const CECadClsLvl& node);

/// What the keyword of a shape leads to.
struct MadeShape {
  std::unique_ptr<CBDdrawObj> p;
};

template <>
std::unique_ptr<CBDdrawObj> Make<CBDcircle>(const CECadClsLvl&, const ShapeContext&);
template <>
std::unique_ptr<CBDdrawObj> Make<CBDdelete>(const CECadClsLvl&, const ShapeContext&);
template <>
std::unique_ptr<CBDdrawObj> Make<CBDdonut>(const CECadClsLvl&, const ShapeContext&);
template <>
std::unique_ptr<CBDdrawObj> Make<CBDdrawPad>(const CECadClsLvl&, const ShapeContext&);
template <>
std::unique_ptr<CBDdrawObj> Make<CBDdrawPadstack>(const CECadClsLvl&, const ShapeContext&);
template <>
std::unique_ptr<CBDdrawObj> Make<CBDdrawSubBoard>(const CECadClsLvl&, const ShapeContext&);
template <>
std::unique_ptr<CBDdrawObj> Make<CBDhole>(const CECadClsLvl&, const ShapeContext&);
template <>
std::unique_ptr<CBDdrawObj> Make<CBDline>(const CECadClsLvl&, const ShapeContext&);
template <>
std::unique_ptr<CBDdrawObj> Make<CBDoblong>(const CECadClsLvl&, const ShapeContext&);
template <>
std::unique_ptr<CBDdrawObj> Make<CBDoval>(const CECadClsLvl&, const ShapeContext&);
template <>
std::unique_ptr<CBDdrawObj> Make<CBDovalHole>(const CECadClsLvl&, const ShapeContext&);
template <>
std::unique_ptr<CBDdrawObj> Make<CBDrectangle>(const CECadClsLvl&, const ShapeContext&);
template <>
std::unique_ptr<CBDdrawObj> Make<CBDroundThermal>(const CECadClsLvl&, const ShapeContext&);
template <>
std::unique_ptr<CBDdrawObj> Make<CBDsquareHole>(const CECadClsLvl&, const ShapeContext&);
template <>
std::unique_ptr<CBDdrawObj> Make<CBDsquareThermal>(const CECadClsLvl&, const ShapeContext&);
template <>
std::unique_ptr<CBDdrawObj> Make<CBDsurface>(const CECadClsLvl&, const ShapeContext&);
template <>
std::unique_ptr<CBDdrawObj> Make<CBDsymbolText>(const CECadClsLvl&, const ShapeContext&);
template <>
std::unique_ptr<CBDdrawObj> Make<CBDtext>(const CECadClsLvl&, const ShapeContext&);

template <>
std::vector<FormView<MadeShape>> Grammar();
template <>
std::vector<FormView<CBDvertexArray>> Grammar();
template <>
std::vector<FormView<CBDcircle>> Grammar();
template <>
std::vector<FormView<CBDdonut>> Grammar();
template <>
std::vector<FormView<CBDdrawPad>> Grammar();
template <>
std::vector<FormView<CBDdrawPadstack>> Grammar();
template <>
std::vector<FormView<CBDdrawSubBoard>> Grammar();
template <>
std::vector<FormView<CBDfillet>> Grammar();
template <>
std::vector<FormView<CBDhole>> Grammar();
template <>
std::vector<FormView<CBDline>> Grammar();
template <>
std::vector<FormView<CBDoblong>> Grammar();
template <>
std::vector<FormView<CBDopenShape>> Grammar();
template <>
std::vector<FormView<CBDoval>> Grammar();
template <>
std::vector<FormView<CBDovalHole>> Grammar();
template <>
std::vector<FormView<CBDpadstackRefLay>> Grammar();
template <>
std::vector<FormView<CBDrectangle>> Grammar();
template <>
std::vector<FormView<CBDroundThermal>> Grammar();
template <>
std::vector<FormView<CBDsquareHole>> Grammar();
template <>
std::vector<FormView<CBDsquareThermal>> Grammar();
template <>
std::vector<FormView<CBDsurface>> Grammar();
template <>
std::vector<FormView<CBDsymbolText>> Grammar();
template <>
std::vector<FormView<CBDtext>> Grammar();
template <>
std::vector<FormView<CBDvertexArc>> Grammar();
template <>
std::vector<FormView<CBDvertexPt>> Grammar();

/// The table of a symbol text's inner text.
std::vector<FormView<CBDtext>> SymbolTextGrammar();

}  // namespace laminate
