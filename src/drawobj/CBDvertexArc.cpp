#include "drawobj/CBDvertexArc.h"

#include <memory>

#include "base/TextOut.h"
#include "drawobj/ShapeGrammar.h"
#include "drawobj/ShapeTools.h"

CBDvertexArc::~CBDvertexArc() = default;

namespace laminate {
namespace {

constexpr auto kBeginWidth = MakeForm<CBDvertexArc>(Length<&CBDvertexArc::m_dBeginWidth>("width"));
constexpr auto kEndWidth = MakeForm<CBDvertexArc>(Length<&CBDvertexArc::m_dEndWidth>("width"));

constexpr auto kBegin = MakeForm<CBDvertexArc>(PointWith<&CBDvertexArc::m_ptBegin, kBeginWidth>("pt"));
constexpr auto kEnd = MakeForm<CBDvertexArc>(PointWith<&CBDvertexArc::m_ptEnd, kEndWidth>("pt"));

constexpr auto kArcTokens = MakeForm<CBDvertexArc>(Text<&CBDvertexArc::m_sDirection>("arc"));

// The centre is two tokens of "center" itself.
constexpr auto kArc = MakeForm<CBDvertexArc>(Length<&CBDvertexArc::m_dR>("r"), Nested<kBegin>("begin"),
                                             Point<&CBDvertexArc::m_ptCenter>("center"), Nested<kEnd>("end"));

}  // namespace

void ReadVertexArc(const CECadClsLvl& node, CBDvertexArc& arc) {
  ReadOwnTokens<0>(kArcTokens, node, arc);
  WalkChildren(kArc, node, arc);
}

template <>
std::vector<FormView<CBDvertexArc>> Grammar() {
  return {View<kArcTokens>(), View<kArc>(), View<kBegin>(), View<kBeginWidth>(), View<kEnd>(), View<kEndWidth>()};
}

}  // namespace laminate

int CBDvertexArc::nPrint2File(FILE* fp, int form) {
  return laminate::PrintTo(fp, [&](laminate::TextOut& out) { Write(out, form); });
}

void CBDvertexArc::Write(laminate::TextOut& out, int nForm) const {
  // One width for both ends; that of the end point is not written.
  const double dWidth = m_dBeginWidth != 0 ? m_dBeginWidth : m_dWidth;
  const auto writeEnd = [&](const CPointD& pt) {
    if (nForm == 1 && dWidth != 0) {
      out.Print<
          "(pt %.5f %.5f\n"
          "(width %.5f)\n"
          ")\n">(pt.x, pt.y, dWidth);
    } else {
      PrintPt(out, pt);
    }
  };
  out.Print<
      "(arc %s\n"
      "(r %.5f)\n"
      "(begin\n">(m_sDirection, m_dR);
  writeEnd(m_ptBegin);
  out.Print<
      ")\n"
      "(center %.5f %.5f)\n"
      "(end\n">(m_ptCenter.x, m_ptCenter.y);
  writeEnd(m_ptEnd);
  out.Print<
      ")\n"
      ")\n">();
}

CBDvertexArc* CBDvertexArc::pCopy() const {
  auto pCopy = std::make_unique<CBDvertexArc>();
  pCopy->m_ptBegin = m_ptBegin;
  pCopy->m_ptCenter = m_ptCenter;
  pCopy->m_dBeginWidth = m_dBeginWidth;
  pCopy->m_sDirection = m_sDirection;
  pCopy->m_ptEnd = m_ptEnd;
  pCopy->m_nSpare = m_nSpare;
  pCopy->m_dR = m_dR;
  return pCopy.release();
}

void CBDvertexArc::vMoveRotate(double dX, double dY, double dAngle, CString sSide) {
  laminate::MoveMirroringY(m_ptBegin, dX, dY, dAngle, sSide);
  laminate::MoveMirroringY(m_ptCenter, dX, dY, dAngle, sSide);
  laminate::MoveMirroringY(m_ptEnd, dX, dY, dAngle, sSide);
}

void CBDvertexArc::vSetScale(double dScale) {
  laminate::Scale(m_ptBegin, dScale);
  laminate::Scale(m_ptCenter, dScale);
  laminate::Scale(m_ptEnd, dScale);
}
