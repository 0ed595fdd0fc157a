#include "drawobj/DrawObjReader.h"

#include "base/HostInterface.h"
#include "drawobj/ShapeGrammar.h"

namespace laminate {
namespace {

// A shape of class T.
template <class T>
struct ShapeSpec {
  static constexpr Conversion kConversion = Conversion::object;
  static constexpr std::string_view Field() {
    // "CBDcircle", as the compiler spells a template argument.
    std::string_view s = __PRETTY_FUNCTION__;
    s = s.substr(s.find("T = ") + 4);
    return s.substr(0, s.find_first_of(";]"));
  }
  std::string_view key;

  static void Read(Walk<const ShapeContext>& walk, const CECadClsLvl& node, MadeShape& made) {
    made.p = Make<T>(node, walk.context);
  }
};
template <class T>
constexpr auto Shape(std::string_view key) {
  return ShapeSpec<T>{key};
}

// Skipped keywords yield no object, and nothing in them is kept.
constexpr auto kShapes = MakeForm<MadeShape, const ShapeContext>(
    Skip("basePoint"), Shape<CBDdrawSubBoard>("boardAssembly"), Shape<CBDcircle>("circle"), Shape<CBDdelete>("delete"),
    Skip("dimension"), Skip("dimLeader"), Shape<CBDdonut>("donut"), Shape<CBDhole>("hole"), Shape<CBDline>("line"),
    Shape<CBDline>("shieldLine"), Shape<CBDoblong>("oblong"), Shape<CBDoval>("oval"), Shape<CBDovalHole>("ovalHole"),
    Shape<CBDdrawPad>("pad"), Shape<CBDdrawPad>("fPad"), Shape<CBDdrawPadstack>("padstack"),
    Shape<CBDdrawPadstack>("fpadstack"), Shape<CBDrectangle>("rectangle"), Shape<CBDroundThermal>("roundThermal"),
    Shape<CBDsquareHole>("squareHole"), Shape<CBDsquareThermal>("squareThermal"), Shape<CBDsurface>("area"),
    Shape<CBDsurface>("surface"), Shape<CBDsurface>("meshplane"), Shape<CBDsymbolText>("symbolText"),
    Shape<CBDtext>("text"), Skip("ruleArea"), Skip("drawOf"), Skip("cavityFrom"), Skip("cavityTo"));

}  // namespace

std::unique_ptr<CBDdrawObj> ReadDrawObj(const CECadClsLvl& node, const ShapeContext& context) {
  MadeShape made;
  std::uint64_t seen = 0;
  if (!ReadChild(kShapes, node, made, context, seen)) {
    AfxMessageBox("New Draw Type : " + CString(node.m_sName.CView()), MB_OK, 0);
  }
  return std::move(made.p);
}

void ReadShapes(const CECadClsLvl& node, const ShapeContext& context, CBDdrawObjArray& shapes) {
  for (const CECadClsLvl* pChild : ChildrenOf(node)) {
    if (pChild == nullptr) continue;
    if (auto pShape = ReadDrawObj(*pChild, context)) AppendOwned(shapes, std::move(pShape));
  }
}

template <>
std::vector<FormView<MadeShape>> Grammar() {
  return {View<kShapes>()};
}

}  // namespace laminate
