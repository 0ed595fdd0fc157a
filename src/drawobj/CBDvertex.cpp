#include "drawobj/CBDvertex.h"

#include "base/TextOut.h"
#include "drawobj/CBDvertexArc.h"
#include "drawobj/CBDvertexPt.h"
#include "drawobj/ShapeGrammar.h"
#include "drawobj/ShapeTools.h"

CBDvertex::~CBDvertex() = default;

namespace {

using laminate::As;

// Calls the function with the vertex as what its type says; not at all when it does not fit its class.
template <class Vertex, class Function>
void AsItsKind(Vertex& vertex, Function&& function) {
  using Point = std::conditional_t<std::is_const_v<Vertex>, const CBDvertexPt, CBDvertexPt>;
  using Arc = std::conditional_t<std::is_const_v<Vertex>, const CBDvertexArc, CBDvertexArc>;
  if (laminate::SaysPoint(vertex)) {
    if (Point* p = As<Point>(vertex)) function(*p);
  } else {
    if (Arc* p = As<Arc>(vertex)) function(*p);
  }
}

}  // namespace

int CBDvertex::nPrint2File(FILE* fp, int form, int flag) {
  return laminate::PrintTo(fp, [&](laminate::TextOut& out) { Write(out, form, flag); });
}

void CBDvertex::Write(laminate::TextOut& out, int nForm, int nFlag) const {
  AsItsKind(*this, [&](const auto& vertex) {
    if constexpr (std::is_same_v<decltype(vertex), const CBDvertexPt&>) {
      vertex.Write(out, nForm, nFlag);
    } else {
      vertex.Write(out, nForm);
    }
  });
}

CBDvertex* CBDvertex::pCopy() const {
  CBDvertex* pCopy = nullptr;
  AsItsKind(*this, [&](const auto& vertex) {
    pCopy = vertex.pCopy();
    pCopy->m_dWidth = vertex.m_dWidth;
  });
  return pCopy;
}

void CBDvertex::vMoveRotate(double dX, double dY, double dAngle, CString sSide) {
  AsItsKind(*this, [&](auto& vertex) { vertex.vMoveRotate(dX, dY, dAngle, sSide); });
}

void CBDvertex::vSetScale(double dScale) {
  AsItsKind(*this, [&](auto& vertex) { vertex.vSetScale(dScale); });
}

void CBDvertex::DeleteVertexArray(void* p) {
  auto& vertices = laminate::Required(static_cast<CBDvertexArray*>(p));
  for (CBDvertex* pVertex : vertices) {
    if (pVertex != nullptr && (laminate::SaysPoint(*pVertex) || pVertex->m_sType == "ARC")) delete pVertex;
  }
  vertices.SetSize(0, -1);
  delete &vertices;
}

namespace laminate {
namespace {

// The array is sized once for all that the section can hold; slots not filled are null, and go in the end. Their room
// stays, since more sections may follow: whoever made the array gives it back.
struct Filling {
  Filling(CBDvertexArray& to, INT_PTR nAtMost) : vertices(to), nFilled(to.GetSize()) {
    vertices.SetSize(nFilled + nAtMost);
  }
  Filling(const Filling&) = delete;
  Filling& operator=(const Filling&) = delete;
  ~Filling() { vertices.SetSize(nFilled); }

  void Take(std::unique_ptr<CBDvertex> p) { vertices.GetData()[nFilled++] = p.release(); }

  CBDvertexArray& vertices;
  INT_PTR nFilled;
};

void AppendPoint(Walk<Filling>& walk, const CECadClsLvl& node, CBDvertexArray&) {
  auto pPoint = std::make_unique<CBDvertexPt>();
  ReadVertexPt(node, *pPoint);
  walk.context.Take(std::move(pPoint));
}

void AppendArc(Walk<Filling>& walk, const CECadClsLvl& node, CBDvertexArray&) {
  auto pArc = std::make_unique<CBDvertexArc>();
  ReadVertexArc(node, *pArc);
  walk.context.Take(std::move(pArc));
}

constexpr auto kVertex = MakeForm<CBDvertexArray, Filling>(Custom<&AppendPoint>("pt", "a CBDvertexPt"),
                                                           Custom<&AppendArc>("arc", "a CBDvertexArc"));

}  // namespace

void ReadVertices(const CECadClsLvl& vertexNode, CBDvertexArray& vertices) {
  Filling filling(vertices, ChildrenOf(vertexNode).GetSize());
  WalkChildren(kVertex, vertexNode, vertices, filling);
}

template <>
std::vector<FormView<CBDvertexArray>> Grammar() {
  return {View<kVertex>()};
}

}  // namespace laminate
