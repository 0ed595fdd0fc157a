#include "drawobj/CBDdonut.h"

#include "base/TextOut.h"
#include "drawobj/ShapeGrammar.h"
#include "drawobj/ShapeTools.h"

CBDdonut::CBDdonut() { m_sKind = "DONUT"; }
CBDdonut::~CBDdonut() = default;

namespace laminate {
namespace {

constexpr auto kDonut =
    MakeForm<CBDdonut>(Length<&CBDdonut::m_dIn>("in"), Length<&CBDdonut::m_dOut>("out"), Point<&CBDdonut::m_pt>("pt"));

}  // namespace

template <>
std::unique_ptr<CBDdrawObj> Make<CBDdonut>(const CECadClsLvl& node, const ShapeContext& context) {
  auto pDonut = NewShape<CBDdonut>(context);
  WalkChildren(kDonut, node, *pDonut);
  return pDonut;
}

template <>
std::vector<FormView<CBDdonut>> Grammar() {
  return {View<kDonut>()};
}

}  // namespace laminate

int CBDdonut::nPrint2File(FILE* fp, int mode) {
  return laminate::PrintTo(fp, [&](laminate::TextOut& out) { Write(out, mode); });
}

void CBDdonut::Write(laminate::TextOut& out, int) const {
  out.Print<
      "(donut\n"
      "(out %.5f)\n"
      "(in %.5f)\n">(m_dOut, m_dIn);
  PrintPt(out, m_pt);
  out.Print<")\n">();
}

CBDdonut* CBDdonut::pCopy() const {
  auto pCopy = std::make_unique<CBDdonut>();
  pCopy->m_dOut = m_dOut;
  pCopy->m_dIn = m_dIn;
  pCopy->m_pt = m_pt;
  return pCopy.release();
}

void CBDdonut::vMoveRotate(double dX, double dY, double dAngle, CString sSide) {
  laminate::MoveMirroringX(m_pt, dX, dY, dAngle, sSide);
}

void CBDdonut::vSetScale(double dScale) { laminate::Scale(m_pt, dScale); }
