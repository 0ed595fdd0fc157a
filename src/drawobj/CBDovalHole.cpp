#include "drawobj/CBDovalHole.h"

#include "base/TextOut.h"
#include "drawobj/ShapeGrammar.h"
#include "drawobj/ShapeTools.h"

CBDovalHole::CBDovalHole() { m_sKind = "OVALHOLE"; }
CBDovalHole::~CBDovalHole() = default;

namespace laminate {
namespace {

constexpr auto kInnerOval =
    MakeForm<CBDovalHole>(Point<&CBDovalHole::m_pt>("pt"), Length<&CBDovalHole::m_dWidth>("width"),
                          Length<&CBDovalHole::m_dHeight>("height"), Real<&CBDovalHole::m_dAngle>("ovalAngle"));

constexpr auto kOvalHoleGeometry = MakeForm<CBDovalHole>(Nested<kInnerOval>("oval"));

constexpr auto kOvalHole =
    MakeForm<CBDovalHole>(Integer<&CBDovalHole::m_nHoleType>("holeType"), FirstForm<kOvalHoleGeometry>("geometry"));

}  // namespace

template <>
std::unique_ptr<CBDdrawObj> Make<CBDovalHole>(const CECadClsLvl& node, const ShapeContext& context) {
  auto pHole = NewShape<CBDovalHole>(context);
  WalkChildren(kOvalHole, node, *pHole);
  return pHole;
}

template <>
std::vector<FormView<CBDovalHole>> Grammar() {
  return {View<kOvalHole>(), View<kOvalHoleGeometry>(), View<kInnerOval>()};
}

}  // namespace laminate

int CBDovalHole::nPrint2File(FILE* fp, int mode) {
  return laminate::PrintTo(fp, [&](laminate::TextOut& out) { Write(out, mode); });
}

void CBDovalHole::Write(laminate::TextOut& out, int nMode) const {
  if (nMode == 1) {
    out.Print<
        "(ovalHole\n"
        "(geometry\n">();
  }
  out.Print<
      "(oval\n"
      "(pt %g %g)\n"
      "(width %g)\n"
      "(height %g)\n"
      "(ovalAngle %g)\n"
      ")\n">(m_pt.x, m_pt.y, m_dWidth, m_dHeight, m_dAngle);
  if (nMode == 1) {
    out.Print<
        ")\n"
        ")\n">();
  }
}

CBDovalHole* CBDovalHole::pCopy() const {
  auto pCopy = std::make_unique<CBDovalHole>();
  pCopy->m_pt = m_pt;
  pCopy->m_dWidth = m_dWidth;
  pCopy->m_dHeight = m_dHeight;
  pCopy->m_dAngle = m_dAngle;
  pCopy->m_nHoleType = m_nHoleType;
  return pCopy.release();
}

void CBDovalHole::vMoveRotate(double dX, double dY, double dAngle, CString sSide) {
  laminate::MoveMirroringX(m_pt, dX, dY, dAngle, sSide);
}

void CBDovalHole::vSetScale(double dScale) { laminate::Scale(m_pt, dScale); }
