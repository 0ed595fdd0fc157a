#include "drawobj/CBDroundThermal.h"

#include "base/TextOut.h"
#include "drawobj/ShapeGrammar.h"
#include "drawobj/ShapeTools.h"

CBDroundThermal::CBDroundThermal() { m_sKind = "ROUNDTHERMAL"; }
CBDroundThermal::~CBDroundThermal() = default;

namespace laminate {
namespace {

constexpr auto kRoundThermal = MakeForm<CBDroundThermal>(
    Point<&CBDroundThermal::m_pt>("pt"), Length<&CBDroundThermal::m_dOut>("out"), Length<&CBDroundThermal::m_dIn>("in"),
    Integer<&CBDroundThermal::m_nBridge>("nBridge"), Length<&CBDroundThermal::m_dBridgeWidth>("bridgeWidth"),
    Integer<&CBDroundThermal::m_nBridgeAngle>("bridgeAngle"));

}  // namespace

template <>
std::unique_ptr<CBDdrawObj> Make<CBDroundThermal>(const CECadClsLvl& node, const ShapeContext& context) {
  auto pThermal = NewShape<CBDroundThermal>(context);
  WalkChildren(kRoundThermal, node, *pThermal);
  return pThermal;
}

template <>
std::vector<FormView<CBDroundThermal>> Grammar() {
  return {View<kRoundThermal>()};
}

}  // namespace laminate

int CBDroundThermal::nPrint2File(FILE* fp) {
  return laminate::PrintTo(fp, [&](laminate::TextOut& out) { Write(out); });
}

void CBDroundThermal::Write(laminate::TextOut& out) const {
  out.Print<
      "(roundThermal\n"
      "(out %.5f)\n"
      "(in %.5f)\n">(m_dOut, m_dIn);
  PrintPt(out, m_pt);
  out.Print<
      "(nBridge %d)\n"
      "(bridgeWidth %.5f)\n"
      "(bridgeAngle %d)\n"
      ")\n">(m_nBridge, m_dBridgeWidth, m_nBridgeAngle);
}

void CBDroundThermal::vMoveRotate(double dX, double dY, double dAngle, CString sSide) {
  laminate::MoveMirroringY(m_pt, dX, dY, dAngle, sSide);
}

void CBDroundThermal::vSetScale(double dScale) { laminate::Scale(m_pt, dScale); }
