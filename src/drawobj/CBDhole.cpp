#include "drawobj/CBDhole.h"

#include "base/TextOut.h"
#include "drawobj/CBDcircle.h"
#include "drawobj/ShapeGrammar.h"
#include "drawobj/ShapeTools.h"

CBDhole::CBDhole() : m_pShape(new CBDdrawObj) { m_sKind = "HOLE"; }
CBDhole::~CBDhole() { delete m_pShape; }

namespace laminate {

namespace {

// The inner circle takes over nothing of the layer.
void ReadHoleCircle(Walk<NoContext>&, const CECadClsLvl& node, CBDhole& hole) {
  auto pCircle = std::make_unique<CBDcircle>();
  ReadCircle(node, *pCircle);
  delete hole.m_pShape;
  hole.m_pShape = pCircle.release();
}

constexpr auto kHoleGeometry = MakeForm<CBDhole>(Custom<&ReadHoleCircle>("circle", "m_pShape"));

constexpr auto kHole = MakeForm<CBDhole>(
    IntegerPair<&CBDhole::m_nFrom, &CBDhole::m_nTo>("fromTo"), Text<&CBDhole::m_sDrillType>("drillType"),
    Integer<&CBDhole::m_nHoleType>("holeType"), FirstForm<kHoleGeometry>("geometry"));

}  // namespace

template <>
std::unique_ptr<CBDdrawObj> Make<CBDhole>(const CECadClsLvl& node, const ShapeContext& context) {
  auto pHole = NewShape<CBDhole>(context);
  WalkChildren(kHole, node, *pHole);
  return pHole;
}

template <>
std::vector<FormView<CBDhole>> Grammar() {
  return {View<kHole>(), View<kHoleGeometry>()};
}

}  // namespace laminate

int CBDhole::nPrint2File(FILE* fp, int mode) {
  return laminate::PrintTo(fp, [&](laminate::TextOut& out) { Write(out, mode); });
}

void CBDhole::Write(laminate::TextOut& out, int nMode) {
  if (m_pShape != nullptr && m_pShape->m_sKind == "SQUAREHOLE") {
    m_pShape->Write(out, nMode);
    return;
  }
  out.Print<"(hole\n">();
  if (m_pShape != nullptr) m_pShape->Write(out, nMode);
  out.Print<")\n">();
}

CBDhole* CBDhole::pCopy() const {
  auto pCopy = std::make_unique<CBDhole>();
  pCopy->m_sDrillType = m_sDrillType;
  pCopy->m_nFrom = m_nFrom;
  pCopy->m_nTo = m_nTo;
  pCopy->m_nHoleType = m_nHoleType;
  auto pShape = laminate::CopyDrawObj(laminate::Required(m_pShape));
  delete pCopy->m_pShape;
  pCopy->m_pShape = pShape.release();
  return pCopy.release();
}

void CBDhole::vMoveRotate(double dX, double dY, double dAngle, CString sSide) {
  if (m_pShape != nullptr) m_pShape->vMoveRotate(dX, dY, dAngle, sSide);
}

void CBDhole::vSetScale(double dScale) {
  if (m_pShape != nullptr) m_pShape->vSetScale(dScale);
}
