#include "drawobj/CBDdrawPad.h"

#include "base/TextOut.h"
#include "drawobj/ShapeGrammar.h"
#include "drawobj/ShapeTools.h"

CBDdrawPad::CBDdrawPad() : m_pShapes(new CBDdrawObjArray) { m_sKind = "DRAWPAD"; }
CBDdrawPad::~CBDdrawPad() { delete m_pShapes; }

namespace laminate {
namespace {

constexpr auto kPadTokens =
    MakeForm<CBDdrawPad>(Text<&CBDdrawPad::m_sPadName>("pad"), Text<&CBDdrawPad::m_sPadName>("fPad"));

constexpr auto kPad = MakeForm<CBDdrawPad, const ShapeContext>(
    Point<&CBDdrawPad::m_pt>("pt"), Real<&CBDdrawPad::m_dAngle>("angle"), Text<&CBDdrawPad::m_sNet>("net"),
    Shapes<&CBDdrawPad::m_pShapes>("geometry"));

}  // namespace

template <>
std::unique_ptr<CBDdrawObj> Make<CBDdrawPad>(const CECadClsLvl& node, const ShapeContext& context) {
  auto pPad = NewShape<CBDdrawPad>(context);
  ReadOwnTokens(kPadTokens, node, *pPad);
  WalkChildren(kPad, node, *pPad, context);
  pPad->m_pShapes->FreeExtra();
  return pPad;
}

template <>
std::vector<FormView<CBDdrawPad>> Grammar() {
  return {View<kPadTokens>(), View<kPad>()};
}

}  // namespace laminate

int CBDdrawPad::nPrint2File(FILE* fp, int mode) {
  return laminate::PrintTo(fp, [&](laminate::TextOut& out) { Write(out, mode); });
}

void CBDdrawPad::Write(laminate::TextOut& out, int nMode) const {
  if (nMode == 1) {
    out.Print<"(pad %s\n">(m_sPadName);
  } else {
    out.Print<"(fPad %s\n">(m_sPadName);
  }
  PrintPt(out, m_pt);
  if (m_dAngle != 0) out.Print<"(angle %.5f)\n">(m_dAngle);
  out.Print<")\n">();
}

CBDdrawPad* CBDdrawPad::pCopy() const {
  auto pCopy = std::make_unique<CBDdrawPad>();
  pCopy->m_dAngle = m_dAngle;
  pCopy->m_sPadName = m_sPadName;
  pCopy->m_pt = m_pt;
  if (m_pShapes != nullptr) laminate::CopyElements(*m_pShapes, *pCopy->m_pShapes);
  return pCopy.release();
}

void CBDdrawPad::vMoveRotate(double dX, double dY, double dAngle, CString sSide) {
  laminate::MoveMirroringX(m_pt, dX, dY, dAngle, sSide);
  laminate::MoveElements(laminate::Required(m_pShapes), dX, dY, dAngle, sSide);
}

void CBDdrawPad::vSetScale(double dScale) {
  laminate::Scale(m_pt, dScale);
  if (m_pShapes != nullptr) laminate::ScaleElements(*m_pShapes, dScale);
}
