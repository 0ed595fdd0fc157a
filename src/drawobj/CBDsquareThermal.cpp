#include "drawobj/CBDsquareThermal.h"

#include "base/TextOut.h"
#include "drawobj/ShapeGrammar.h"
#include "drawobj/ShapeTools.h"

CBDsquareThermal::CBDsquareThermal() { m_sKind = "SQUARETHERMAL"; }
CBDsquareThermal::~CBDsquareThermal() = default;

namespace laminate {
namespace {

constexpr auto kSquareThermal = MakeForm<CBDsquareThermal>(
    Point<&CBDsquareThermal::m_pt>("pt"), Length<&CBDsquareThermal::m_dOut>("out"),
    Length<&CBDsquareThermal::m_dIn>("in"), Integer<&CBDsquareThermal::m_nBridge>("nBridge"),
    Length<&CBDsquareThermal::m_dBridgeWidth>("bridgeWidth"), Real<&CBDsquareThermal::m_dBridgeAngle>("bridgeAngle"));

}  // namespace

template <>
std::unique_ptr<CBDdrawObj> Make<CBDsquareThermal>(const CECadClsLvl& node, const ShapeContext& context) {
  auto pThermal = NewShape<CBDsquareThermal>(context);
  WalkChildren(kSquareThermal, node, *pThermal);
  return pThermal;
}

template <>
std::vector<FormView<CBDsquareThermal>> Grammar() {
  return {View<kSquareThermal>()};
}

}  // namespace laminate

int CBDsquareThermal::nPrint2File(FILE* fp, int mode) {
  return laminate::PrintTo(fp, [&](laminate::TextOut& out) { Write(out, mode); });
}

void CBDsquareThermal::Write(laminate::TextOut& out, int) {
  out.Print<
      "(squareThermal\n"
      ")\n">();
}

CBDsquareThermal* CBDsquareThermal::pCopy() const {
  auto pCopy = std::make_unique<CBDsquareThermal>();
  pCopy->m_dOut = m_dOut;
  pCopy->m_dIn = m_dIn;
  pCopy->m_pt = m_pt;
  pCopy->m_nBridge = m_nBridge;
  pCopy->m_dBridgeWidth = m_dBridgeWidth;
  pCopy->m_dBridgeAngle = m_dBridgeAngle;
  return pCopy.release();
}

void CBDsquareThermal::vMoveRotate(double dX, double dY, double dAngle, CString sSide) {
  laminate::MoveMirroringY(m_pt, dX, dY, dAngle, sSide);
}

void CBDsquareThermal::vSetScale(double dScale) { laminate::Scale(m_pt, dScale); }
