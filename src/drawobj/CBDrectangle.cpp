#include "drawobj/CBDrectangle.h"

#include "base/TextOut.h"
#include "drawobj/ShapeGrammar.h"
#include "drawobj/ShapeTools.h"

CBDrectangle::CBDrectangle() { m_sKind = "RECTANGLE"; }
CBDrectangle::~CBDrectangle() = default;

namespace laminate {
namespace {

constexpr auto kRectangle = MakeForm<CBDrectangle>(
    Point<&CBDrectangle::m_pt>("pt"), Length<&CBDrectangle::m_dWidth>("width"),
    Length<&CBDrectangle::m_dHeight>("height"), Real<&CBDrectangle::m_dAngle>("rAngle"),
    Length<&CBDrectangle::m_dOutlineWidth>("outlineWidth"), Length<&CBDrectangle::m_dFillWidth>("fillWidth"),
    Real<&CBDrectangle::m_dFillAngle>("fillAngle"));

}  // namespace

template <>
std::unique_ptr<CBDdrawObj> Make<CBDrectangle>(const CECadClsLvl& node, const ShapeContext& context) {
  auto pRectangle = NewShape<CBDrectangle>(context);
  WalkChildren(kRectangle, node, *pRectangle);
  return pRectangle;
}

template <>
std::vector<FormView<CBDrectangle>> Grammar() {
  return {View<kRectangle>()};
}

}  // namespace laminate

int CBDrectangle::nPrint2File(FILE* fp, int mode) {
  return laminate::PrintTo(fp, [&](laminate::TextOut& out) { Write(out, mode); });
}

void CBDrectangle::Write(laminate::TextOut& out, int nMode) const {
  if (nMode != 2) {
    out.Print<
        "(rectangle\n"
        "(geometry\n">();
  }
  out.Print<"(rectangle\n">();
  PrintPt(out, m_pt);
  out.Print<
      "(width %.5f)\n"
      "(height %.5f)\n"
      "(rAngle %f)\n"
      "(outlineWidth %.5f)\n"
      "(fillWidth %.5f)\n"
      "(fillAngle %f)\n"
      ")\n">(m_dWidth, m_dHeight, m_dAngle, m_dOutlineWidth, m_dFillWidth, m_dFillAngle);
  if (nMode != 2) {
    out.Print<
        ")\n"
        ")\n">();
  }
}

CBDrectangle* CBDrectangle::pCopy() const {
  auto pCopy = std::make_unique<CBDrectangle>();
  pCopy->m_dFillAngle = m_dFillAngle;
  pCopy->m_dFillWidth = m_dFillWidth;
  pCopy->m_dOutlineWidth = m_dOutlineWidth;
  pCopy->m_dAngle = m_dAngle;
  pCopy->m_dHeight = m_dHeight;
  pCopy->m_dWidth = m_dWidth;
  pCopy->m_pt = m_pt;
  return pCopy.release();
}

void CBDrectangle::vMoveRotate(double dX, double dY, double dAngle, CString sSide) {
  laminate::MoveMirroringX(m_pt, dX, dY, dAngle, sSide);
}

void CBDrectangle::vSetScale(double dScale) { laminate::Scale(m_pt, dScale); }
