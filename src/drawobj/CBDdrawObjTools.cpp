// The tools for hosts among the operations of `CBDdrawObj`. Each keeps the constant for pi that its results are known
// by; they differ in the last digits and are not interchangeable.
#include <cmath>
#include <memory>

#include "base/CArrayPointD.h"
#include "drawobj/CBDdrawObj.h"
#include "drawobj/CBDline.h"
#include "drawobj/CBDoblong.h"
#include "drawobj/CBDoval.h"
#include "drawobj/CBDsurface.h"
#include "drawobj/CBDvertexArc.h"
#include "drawobj/CBDvertexPt.h"
#include "drawobj/ShapeTools.h"

using laminate::As;
using laminate::Required;

namespace {

// The foot of the perpendicular from `m` on the line through `a` and the origin.
CPointD FootOn(const CPointD& a, const CPointD& m) {
  if (a.x == 0 && a.y == 0) return {0, 0};
  if (a.x == 0) return {0, m.y};
  if (a.y == 0) return {m.x, 0};
  const double dSlope = a.y / a.x;
  const double dX = (m.x * a.x / a.y + m.y) / (a.x / a.y + dSlope);
  return {dX, dX * dSlope};
}

}  // namespace

double CBDdrawObj::dGetDistanceFrom2Points(CPointD a, CPointD b) {
  const double dX = a.x - b.x;
  const double dY = a.y - b.y;
  return std::sqrt(dY * dY + dX * dX);
}

double CBDdrawObj::dChgPts2Angle(CPointD a, CPointD b) {
  constexpr double kDegrees = 57.2957763671875;
  const double dX = b.x - a.x;
  const double dY = b.y - a.y;
  if (dX == 0 && dY == 0) return 0;
  if (dX == 0 && dY > 0) return 90;
  if (dY == 0 && dX < 0) return 180;
  if (dX == 0 && dY < 0) return 270;
  if (dX > 0 && dY > 0) return std::atan(dY / dX) * kDegrees;
  if (dX < 0 && dY > 0) return 180 - std::fabs(std::atan(dY / dX)) * kDegrees;
  if (dX < 0 && dY < 0) return std::fabs(std::atan(dY / dX)) * kDegrees + 180;
  if (dX > 0 && dY < 0) return 360 - std::fabs(std::atan(dY / dX)) * kDegrees;
  return 0;
}

CArrayPointD* CBDdrawObj::GetPtArrayFrom3Points(double dRadius, CPointD p1, CPointD p2, CPointD p3) {
  constexpr double kPi = 3.1415927410125732;
  constexpr double kNoTurn = 0.01;  // degrees between the legs below which they count as one

  // All relative to the corner.
  const CPointD a(p1.x - p2.x, p1.y - p2.y);
  const CPointD c(p3.x - p2.x, p3.y - p2.y);
  const CPointD origin(0, 0);
  const double dAngleA = dChgPts2Angle(origin, a);
  const double dTurn = dChgPts2Angle(origin, c) - dAngleA;
  const double dHalf = dTurn * 0.5;
  const double dMiddle = dHalf + dAngleA;

  // Two candidates on the bisector, on either side of the corner.
  CPointD p, q;
  if (dMiddle == 0 || dMiddle == 180) {
    p.SetData(dRadius, 0);
    q.SetData(-dRadius, 0);
  } else if (dMiddle == 90 || dMiddle == 270) {
    const double d = std::sqrt(dRadius * dRadius + dRadius * dRadius);
    p.SetData(0, d);
    q.SetData(0, -d);
  } else {
    const double dRadians = dMiddle * kPi / 180;
    const double dTangent = std::tan(dRadians);
    double dAlong = std::cos(dRadians) * dRadius;
    if (std::fabs(dTurn) >= kNoTurn) dAlong /= std::sin(dHalf * kPi / 180);
    p.SetData(dAlong, dTangent * dAlong);
    q.SetData(-dAlong, dTangent * -dAlong);
  }
  const double dFromP = dGetDistanceFrom2Points(p, a) + dGetDistanceFrom2Points(p, c);
  const double dFromQ = dGetDistanceFrom2Points(q, a) + dGetDistanceFrom2Points(q, c);
  const CPointD& middle = dFromP > dFromQ ? q : p;

  auto pPoints = std::make_unique<CArrayPointD>();
  for (CPointD pt : {FootOn(a, middle), middle, FootOn(c, middle)}) {
    pt.SetData(pt.x + p2.x, pt.y + p2.y);
    pPoints->Add(pt);
  }
  return pPoints.release();
}

CPointD CBDdrawObj::ptFindBDvertexArcCenterPt(CBDvertexArc* pArc) {
  constexpr double kDegrees = 57.29577791868205;
  constexpr double kRadians = 0.017453293005625408;
  const CBDvertexArc& arc = Required(pArc);
  const CPointD& c = arc.m_ptCenter;
  const CPointD& begin = arc.m_ptBegin;
  if (c.x == 0) return {begin.x, c.y / std::fabs(c.y) * arc.m_dR + begin.y};
  if (c.y == 0) return {c.x / std::fabs(c.x) * arc.m_dR + begin.x, begin.y};
  double dAngle = std::atan(std::fabs(c.y) / std::fabs(c.x)) * kDegrees;
  if (c.x < 0 && c.y > 0) {
    dAngle = 180 - dAngle;
  } else if (c.x < 0 && c.y < 0) {
    dAngle += 180;
  } else if (c.x > 0 && c.y < 0) {
    dAngle = 360 - dAngle;
  }
  dAngle *= kRadians;
  return {std::cos(dAngle) * arc.m_dR + begin.x, std::sin(dAngle) * arc.m_dR + begin.y};
}

double CBDdrawObj::GetLineWidthFromDrawObj(CBDdrawObj* p) {
  constexpr double kNoWidth = 0.001;  // mm
  const CBDdrawObj& shape = Required(p);
  if (shape.m_sKind == "SURFACE") {
    const auto* pSurface = As<const CBDsurface>(shape);
    if (pSurface == nullptr) return 0;
    for (const CBDvertex* pVertex : Required(pSurface->m_pVertices)) {
      if (pVertex != nullptr && pVertex->m_dWidth > kNoWidth) return pVertex->m_dWidth;
    }
    return pSurface->m_dOutlineWidth;
  }
  if (shape.m_sKind == "LINE") {
    const auto* pLine = As<const CBDline>(shape);
    if (pLine == nullptr) return 0;
    for (const CBDvertex* pVertex : Required(pLine->m_pVertices)) {
      if (pVertex == nullptr) continue;
      if (laminate::SaysPoint(*pVertex)) {
        if (pVertex->m_dWidth > kNoWidth) return pVertex->m_dWidth;
      } else if (const auto* pArc = As<const CBDvertexArc>(*pVertex)) {
        if (pArc->m_dBeginWidth != 0) return pArc->m_dBeginWidth;
      }
    }
  }
  return 0;
}

CBDoval* CBDdrawObj::pChangeOblong2Oval(CBDoblong* pOblong) {
  constexpr double kPi = 3.141592653589793;
  const CBDoblong& oblong = Required(pOblong);
  const CPointD& first = oblong.m_ptFirst;
  const CPointD& second = oblong.m_ptSecond;
  auto pOval = std::make_unique<CBDoval>();
  pOval->m_pt.SetData((first.x + second.x) / 2, (first.y + second.y) / 2);
  pOval->m_dWidth = oblong.m_dWidth;
  pOval->m_dHeight = dGetDistanceFrom2Points(first, second) + oblong.m_dWidth;
  double dAngle = std::atan2(second.y - first.y, second.x - first.x) / kPi * 180;
  if (dAngle < 0) dAngle += 360;
  if (dAngle > 360) dAngle += -360;
  pOval->m_dAngle = dAngle;
  return pOval.release();
}
