#include "drawobj/CBDoval.h"

#include "base/TextOut.h"
#include "drawobj/ShapeGrammar.h"
#include "drawobj/ShapeTools.h"

CBDoval::CBDoval() { m_sKind = "OVAL"; }
CBDoval::~CBDoval() = default;

namespace laminate {
namespace {

constexpr auto kOval = MakeForm<CBDoval>(Point<&CBDoval::m_pt>("pt"), Length<&CBDoval::m_dWidth>("width"),
                                         Length<&CBDoval::m_dHeight>("height"), Real<&CBDoval::m_dAngle>("ovalAngle"));

}  // namespace

template <>
std::unique_ptr<CBDdrawObj> Make<CBDoval>(const CECadClsLvl& node, const ShapeContext& context) {
  auto pOval = NewShape<CBDoval>(context);
  WalkChildren(kOval, node, *pOval);
  return pOval;
}

template <>
std::vector<FormView<CBDoval>> Grammar() {
  return {View<kOval>()};
}

}  // namespace laminate

int CBDoval::nPrint2File(FILE* fp, int mode) {
  return laminate::PrintTo(fp, [&](laminate::TextOut& out) { Write(out, mode); });
}

void CBDoval::Write(laminate::TextOut& out, int nMode) const {
  if (nMode == 1) {
    out.Print<
        "(oval\n"
        "(geometry\n">();
  }
  out.Print<"(oval\n">();
  PrintPt(out, m_pt);
  out.Print<
      "(width %.5f)\n"
      "(height %.5f)\n">(m_dWidth, m_dHeight);
  if (m_dAngle != 0) out.Print<"(ovalAngle %.5f)\n">(m_dAngle);
  out.Print<")\n">();
  if (nMode == 1) {
    out.Print<
        ")\n"
        ")\n">();
  }
}

CBDoval* CBDoval::pCopy() const {
  auto pCopy = std::make_unique<CBDoval>();
  pCopy->m_dAngle = m_dAngle;
  pCopy->m_dHeight = m_dHeight;
  pCopy->m_dWidth = m_dWidth;
  pCopy->m_pt = m_pt;
  return pCopy.release();
}

void CBDoval::vMoveRotate(double dX, double dY, double dAngle, CString sSide) {
  laminate::MoveMirroringY(m_pt, dX, dY, dAngle, sSide);
}

void CBDoval::vSetScale(double dScale) { laminate::Scale(m_pt, dScale); }
