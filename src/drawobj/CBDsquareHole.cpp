#include "drawobj/CBDsquareHole.h"

#include "base/TextOut.h"
#include "drawobj/ShapeGrammar.h"
#include "drawobj/ShapeTools.h"

CBDsquareHole::CBDsquareHole() { m_sKind = "SQUAREHOLE"; }
CBDsquareHole::~CBDsquareHole() = default;

namespace laminate {
namespace {

// The walk ends at a "geometry": what its first form yields takes the square hole's place, outside any "refer".
struct SquareHoleContext {
  const ShapeContext& shape;
  std::unique_ptr<CBDdrawObj> pInstead;
  bool bEnded = false;
};

void ReadInstead(Walk<SquareHoleContext>& walk, const CECadClsLvl& node, CBDsquareHole&) {
  ShapeContext inner = walk.context.shape;
  inner.bRefer = 0;
  walk.context.pInstead = ReadDrawObj(RequireFirstChild(node), inner);
  walk.context.bEnded = true;
}

constexpr auto kSquareHole = MakeForm<CBDsquareHole, SquareHoleContext>(
    Point<&CBDsquareHole::m_pt>("pt"), Length<&CBDsquareHole::m_dWidth>("width"),
    Length<&CBDsquareHole::m_dHeight>("height"), Real<&CBDsquareHole::m_dAngle>("holeAngle"),
    Length<&CBDsquareHole::m_dCorner>("r"), Custom<&ReadInstead>("geometry", "the result in place of this shape"));

}  // namespace

template <>
std::unique_ptr<CBDdrawObj> Make<CBDsquareHole>(const CECadClsLvl& node, const ShapeContext& context) {
  auto pHole = NewShape<CBDsquareHole>(context);
  SquareHoleContext own{context, nullptr};
  std::uint64_t seen = 0;
  for (const CECadClsLvl* pChild : ChildrenOf(node)) {
    if (pChild == nullptr) continue;
    ReadChild(kSquareHole, *pChild, *pHole, own, seen);
    if (own.bEnded) return std::move(own.pInstead);
  }
  return pHole;
}

template <>
std::vector<FormView<CBDsquareHole>> Grammar() {
  return {View<kSquareHole>()};
}

}  // namespace laminate

int CBDsquareHole::nPrint2File(FILE* fp, int mode) {
  return laminate::PrintTo(fp, [&](laminate::TextOut& out) { Write(out, mode); });
}

void CBDsquareHole::Write(laminate::TextOut& out, int) const {
  out.Print<"(squareHole\n">();
  PrintPt(out, m_pt);
  if (m_dAngle != 0) out.Print<"(holeAngle %.5f)\n">(m_dAngle);
  out.Print<
      "(width %.5f)\n"
      "(height %.5f)\n"
      "(r %.5f)\n"
      ")\n">(m_dWidth, m_dHeight, m_dCorner);
}

CBDsquareHole* CBDsquareHole::pCopy() const {
  auto pCopy = std::make_unique<CBDsquareHole>();
  pCopy->m_dCorner = m_dCorner;
  pCopy->m_dHeight = m_dHeight;
  pCopy->m_dWidth = m_dWidth;
  pCopy->m_dAngle = m_dAngle;
  pCopy->m_pt = m_pt;
  return pCopy.release();
}

void CBDsquareHole::vMoveRotate(double dX, double dY, double dAngle, CString sSide) {
  laminate::MoveMirroringY(m_pt, dX, dY, dAngle, sSide);
}

void CBDsquareHole::vSetScale(double dScale) { laminate::Scale(m_pt, dScale); }
