#include "drawobj/CBDvertexPt.h"

#include <cmath>
#include <memory>

#include "base/TextOut.h"
#include "drawobj/ShapeGrammar.h"
#include "drawobj/ShapeTools.h"

CBDvertexPt::~CBDvertexPt() { delete m_pFillet; }

namespace laminate {
namespace {

// "ON" and the like beside the radius are not looked at.
constexpr auto kTarc = MakeForm<CBDvertexPt>(Length<&CBDvertexPt::m_dTarc>("r"));

constexpr auto kFillet = MakeForm<CBDfillet>(
    Length<&CBDfillet::m_dFilletWidth>("filletWidth"), Length<&CBDfillet::m_dLength>("length"),
    Length<&CBDfillet::m_dWidth>("width"), Text<&CBDfillet::m_sDir>("dir"), Text<&CBDfillet::m_sType>("type"));

constexpr auto kPointTokens = MakeForm<CBDvertexPt>(Point<&CBDvertexPt::m_pt>("pt"));

constexpr auto kPoint = MakeForm<CBDvertexPt>(Length<&CBDvertexPt::m_dWidth>("width"), NestedByName<kTarc>("tarc"),
                                              Nested<kFillet, &CBDvertexPt::m_pFillet>("fillet"));

}  // namespace

void ReadVertexPt(const CECadClsLvl& node, CBDvertexPt& point) {
  ReadOwnTokens<0>(kPointTokens, node, point);
  WalkChildren(kPoint, node, point);
}

template <>
std::vector<FormView<CBDvertexPt>> Grammar() {
  return {View<kPointTokens>(), View<kPoint>(), View<kTarc>()};
}
template <>
std::vector<FormView<CBDfillet>> Grammar() {
  return {View<kFillet>()};
}

}  // namespace laminate

int CBDvertexPt::nPrint2File(FILE* fp, int form, int flag) {
  return laminate::PrintTo(fp, [&](laminate::TextOut& out) { Write(out, form, flag); });
}

void CBDvertexPt::Write(laminate::TextOut& out, int nForm, int nFlag) const {
  // Widths up to this, in mm, count as none.
  constexpr double kNoWidth = 0.001;

  const bool bWidth = nForm == 1 && std::fabs(m_dWidth) > kNoWidth;
  const bool bTarc = std::fabs(m_dTarc) != 0;
  const bool bFillet = m_pFillet != nullptr && m_pFillet->m_dFilletWidth != 0;

  out.Print<"(pt %.5f %.5f">(m_pt.x, m_pt.y);
  if (bWidth) out.Print<"\n(width %.5f)">(m_dWidth);
  if (bTarc) out.Print<"\n(tarc ON (r %.5f))">(m_dTarc);
  if (!bFillet) {
    if (bWidth || bTarc) {
      out.Print<"\n)\n">();
    } else {
      out.Print<")\n">();
    }
    return;
  }
  if (m_pFillet->m_sType.IsEmpty()) {
    out.Print<"\n(fillet\n">();
  } else {
    out.Print<"\n(fillet (type %s)\n">(m_pFillet->m_sType);
  }
  if (nFlag == 0 && !m_pFillet->m_sDir.IsEmpty()) out.Print<"(dir %s)\n">(m_pFillet->m_sDir);
  out.Print<
      "(filletWidth %.5f)\n"
      "(length %.5f)\n"
      "(width %.5f)\n"
      ")\n"
      ")\n">(m_pFillet->m_dFilletWidth, m_pFillet->m_dLength, m_pFillet->m_dWidth);
}

CBDvertexPt* CBDvertexPt::pCopy() const {
  auto pCopy = std::make_unique<CBDvertexPt>();
  if (m_pFillet != nullptr) *pCopy->m_pFillet = *m_pFillet;
  pCopy->m_pt = m_pt;
  pCopy->m_dTarc = m_dTarc;
  return pCopy.release();
}

void CBDvertexPt::vMoveRotate(double dX, double dY, double dAngle, CString sSide) {
  laminate::MoveMirroringY(m_pt, dX, dY, dAngle, sSide);
}

void CBDvertexPt::vSetScale(double dScale) { laminate::Scale(m_pt, dScale); }
