#include "drawobj/CBDcircle.h"

#include "base/TextOut.h"
#include "drawobj/ShapeGrammar.h"
#include "drawobj/ShapeTools.h"

CBDcircle::CBDcircle() { m_sKind = "CIRCLE"; }
CBDcircle::~CBDcircle() = default;

namespace laminate {
namespace {

constexpr auto kCircleTokens = MakeForm<CBDcircle>(Length<&CBDcircle::m_dRadius>("circle"));
constexpr auto kCircle = MakeForm<CBDcircle>(Point<&CBDcircle::m_ptCenter>("pt"));

}  // namespace

void ReadCircle(const CECadClsLvl& node, CBDcircle& circle) {
  ReadOwnTokens(kCircleTokens, node, circle);
  WalkFirstByName(kCircle, node, circle);
}

template <>
std::unique_ptr<CBDdrawObj> Make<CBDcircle>(const CECadClsLvl& node, const ShapeContext& context) {
  auto pCircle = NewShape<CBDcircle>(context);
  ReadCircle(node, *pCircle);
  return pCircle;
}

template <>
std::vector<FormView<CBDcircle>> Grammar() {
  return {View<kCircleTokens>(), View<kCircle>()};
}

}  // namespace laminate

int CBDcircle::nPrint2File(FILE* fp, int mode) {
  return laminate::PrintTo(fp, [&](laminate::TextOut& out) { Write(out, mode); });
}

void CBDcircle::Write(laminate::TextOut& out, int nMode) const {
  if (nMode != 2) out.Print<"(geometry\n">();
  out.Print<"(circle %.5f\n">(m_dRadius);
  PrintPt(out, m_ptCenter);
  out.Print<")\n">();
  if (nMode != 2) out.Print<")\n">();
}

CBDcircle* CBDcircle::pCopy() const {
  auto pCopy = std::make_unique<CBDcircle>();
  pCopy->m_ptCenter = m_ptCenter;
  pCopy->m_dRadius = m_dRadius;
  return pCopy.release();
}

void CBDcircle::vMoveRotate(double dX, double dY, double dAngle, CString sSide) {
  laminate::MoveMirroringX(m_ptCenter, dX, dY, dAngle, sSide);
}

void CBDcircle::vSetScale(double dScale) { laminate::Scale(m_ptCenter, dScale); }
