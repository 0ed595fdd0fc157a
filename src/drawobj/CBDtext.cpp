#include "drawobj/CBDtext.h"

#include "base/TextOut.h"
#include "drawobj/ShapeGrammar.h"
#include "drawobj/ShapeTools.h"
#include "drawobj/TextRows.h"

CBDtext::CBDtext() { m_sKind = "TEXT"; }
CBDtext::~CBDtext() = default;

namespace laminate {
namespace {

// A string that began with a bracket has become a nested form; of that only the first word is left.
void ReadString(Walk<NoContext>&, const CECadClsLvl& node, CBDtext& text) {
  if (HasToken(node)) {
    text.m_sString = Token(node, 1);
    return;
  }
  text.m_sString.Empty();
  for (const CECadClsLvl* pChild : ChildrenOf(node)) {
    if (pChild == nullptr) continue;
    text.m_sString = "(" + CString(pChild->m_sName.CView()) + ")";
    return;
  }
}

constexpr auto kInnerText =
    MakeTextForm(Custom<&ReadString, Conversion::text, &CBDtext::m_sString>("string", "m_sString"),
                 Text<&CBDtext::m_sJustify>("justify"), Text<&CBDtext::m_sFlip>("flip"),
                 Text<&CBDtext::m_sReverse>("reverse"), Length<&CBDtext::m_dTextFrameOffset>("textFrameOffset"));

constexpr auto kTextGeometry = MakeForm<CBDtext>(Nested<kInnerText>("text"));

// Nothing beside the geometry is looked at.
constexpr auto kText = MakeForm<CBDtext>(NestedByName<kTextGeometry>("geometry"));

}  // namespace

template <>
std::unique_ptr<CBDdrawObj> Make<CBDtext>(const CECadClsLvl& node, const ShapeContext& context) {
  auto pText = NewShape<CBDtext>(context);
  WalkFirstByName(kText, node, *pText);
  return pText;
}

template <>
std::vector<FormView<CBDtext>> Grammar() {
  return {View<kText>(), View<kTextGeometry>(), View<kInnerText>()};
}

}  // namespace laminate

int CBDtext::nPrint2File(FILE* fp, int mode) {
  return laminate::PrintTo(fp, [&](laminate::TextOut& out) { Write(out, mode); });
}

void CBDtext::Write(laminate::TextOut& out, int) const {
  out.Print<
      "(text\n"
      "(font 0)\n"
      "(geometry\n"
      "(text\n"
      "(string \"%s\")\n">(m_sString);
  WriteInnerRows(out);
  out.Print<
      ")\n"
      ")\n"
      ")\n">();
}

void CBDtext::WriteInnerRows(laminate::TextOut& out) const {
  out.Print<
      "(font %d)\n"
      "(kFont %d)\n"
      "(width %.5f)\n"
      "(height %.5f)\n"
      "(space %.5f)\n"
      "(vSpace %.5f)\n"
      "(strokeWidth %.5f)\n">(m_nFont, m_nKFont, m_dWidth, m_dHeight, m_dSpace, m_dVSpace, m_dStrokeWidth);
  PrintPt(out, m_pt);
  out.Print<
      "(textAngle %.5f)\n"
      "(dir %s)\n"
      "(justify %s)\n"
      "(flip %s)\n"
      "(reverse %s)\n">(m_dAngle, m_sDir, m_sJustify, m_sFlip, m_sReverse);
}

CBDtext* CBDtext::pCopy() const {
  auto pCopy = std::make_unique<CBDtext>();
  pCopy->m_sString = m_sString;
  pCopy->m_nFont = m_nFont;
  pCopy->m_nKFont = m_nKFont;
  pCopy->m_dWidth = m_dWidth;
  pCopy->m_dHeight = m_dHeight;
  pCopy->m_dSpace = m_dSpace;
  pCopy->m_dVSpace = m_dVSpace;
  pCopy->m_dStrokeWidth = m_dStrokeWidth;
  pCopy->m_pt = m_pt;
  pCopy->m_dAngle = m_dAngle;
  pCopy->m_sDir = m_sDir;
  pCopy->m_sJustify = m_sJustify;
  pCopy->m_sFlip = m_sFlip;
  pCopy->m_sReverse = m_sReverse;
  pCopy->m_sSpare = m_sSpare;
  pCopy->m_dTextFrameOffset = m_dTextFrameOffset;
  pCopy->m_dSpare = m_dSpare;
  return pCopy.release();
}

void CBDtext::vMoveRotate(double dX, double dY, double dAngle, CString sSide) {
  laminate::MoveMirroringX(m_pt, dX, dY, dAngle, sSide);
}

// x takes the factor twice and y not at all: hosts rely on it.
void CBDtext::vSetScale(double dScale) {
  m_pt.x *= dScale;
  m_pt.x *= dScale;
}
