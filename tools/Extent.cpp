#include "Extent.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <set>

#include "board/CBDboardContainer.h"
#include "drawobj/CBDcircle.h"
#include "drawobj/CBDdonut.h"
#include "drawobj/CBDdrawPad.h"
#include "drawobj/CBDdrawPadstack.h"
#include "drawobj/CBDhole.h"
#include "drawobj/CBDline.h"
#include "drawobj/CBDoblong.h"
#include "drawobj/CBDoval.h"
#include "drawobj/CBDovalHole.h"
#include "drawobj/CBDrectangle.h"
#include "drawobj/CBDroundThermal.h"
#include "drawobj/CBDsquareHole.h"
#include "drawobj/CBDsquareThermal.h"
#include "drawobj/CBDsurface.h"
#include "drawobj/CBDsymbolText.h"
#include "drawobj/CBDtext.h"
#include "drawobj/CBDvertexArc.h"
#include "drawobj/CBDvertexPt.h"
#include "facade/CBDesigner.h"
#include "technology/CBDfootprintLayer.h"
#include "technology/CBDmap.h"
#include "technology/CBDtechnologyContainer.h"

namespace laminate::cli {

namespace {

// An angle in radians, from 0 to below a full turn.
double Positive(double dAngle) {
  const double dTurn = 2 * std::numbers::pi;
  const double d = std::fmod(dAngle, dTurn);
  return d < 0 ? d + dTurn : d;
}

void TakeArc(Extent& extent, const CBDvertexArc& arc) {
  extent.Take(arc.m_ptBegin);
  extent.Take(arc.m_ptEnd);
  const double dRadius = std::hypot(arc.m_ptBegin.x - arc.m_ptCenter.x, arc.m_ptBegin.y - arc.m_ptCenter.y);
  const bool bClockwise = arc.m_sDirection == "CW";
  const CPointD& from = bClockwise ? arc.m_ptEnd : arc.m_ptBegin;
  const CPointD& to = bClockwise ? arc.m_ptBegin : arc.m_ptEnd;
  const double dFrom = std::atan2(from.y - arc.m_ptCenter.y, from.x - arc.m_ptCenter.x);
  const double dTo = std::atan2(to.y - arc.m_ptCenter.y, to.x - arc.m_ptCenter.x);
  // Equal ends stand for a full circle.
  double dSweep = Positive(dTo - dFrom);
  if (arc.m_ptBegin == arc.m_ptEnd) dSweep = 2 * std::numbers::pi;
  for (int i = 0; i < 4; ++i) {
    if (Positive(i * std::numbers::pi / 2 - dFrom) > dSweep) continue;
    constexpr int kX[] = {1, 0, -1, 0};
    constexpr int kY[] = {0, 1, 0, -1};
    extent.Take(arc.m_ptCenter.x + kX[i] * dRadius, arc.m_ptCenter.y + kY[i] * dRadius);
  }
}

void TakeVertices(Extent& extent, const CBDvertexArray* pVertices) {
  if (pVertices == nullptr) return;
  for (const CBDvertex* pVertex : *pVertices) {
    if (const auto* pPoint = dynamic_cast<const CBDvertexPt*>(pVertex)) {
      extent.Take(pPoint->m_pt);
    } else if (const auto* pArc = dynamic_cast<const CBDvertexArc*>(pVertex)) {
      TakeArc(extent, *pArc);
    }
  }
}

// A box around `pt` that is turned by `dAngle` degrees.
void TakeBox(Extent& extent, const CPointD& pt, double dWidth, double dHeight, double dAngle) {
  const double dTurn = dAngle * std::numbers::pi / 180;
  const double dCos = std::abs(std::cos(dTurn));
  const double dSin = std::abs(std::sin(dTurn));
  const double dX = (std::abs(dWidth) * dCos + std::abs(dHeight) * dSin) / 2;
  const double dY = (std::abs(dWidth) * dSin + std::abs(dHeight) * dCos) / 2;
  extent.Take(pt.x - dX, pt.y - dY);
  extent.Take(pt.x + dX, pt.y + dY);
}

template <class T>
bool TakeAs(Extent& extent, const CBDdrawObj& shape, void (*take)(Extent&, const T&)) {
  const auto* p = dynamic_cast<const T*>(&shape);
  if (p == nullptr) return false;
  take(extent, *p);
  return true;
}

}  // namespace

void Extent::Take(double x, double y) {
  if (!std::isfinite(x) || !std::isfinite(y)) return;
  m_dLeft = m_bEmpty ? x : std::min(m_dLeft, x);
  m_dRight = m_bEmpty ? x : std::max(m_dRight, x);
  m_dBottom = m_bEmpty ? y : std::min(m_dBottom, y);
  m_dTop = m_bEmpty ? y : std::max(m_dTop, y);
  m_bEmpty = false;
}

void Extent::Take(const CBDdrawObj& shape) {
  // Ovals are as long as their height says, along their angle.
  TakeAs<CBDline>(*this, shape, [](Extent& e, const CBDline& s) { TakeVertices(e, s.m_pVertices); }) ||
      TakeAs<CBDsurface>(*this, shape, [](Extent& e, const CBDsurface& s) { TakeVertices(e, s.m_pVertices); }) ||
      TakeAs<CBDdrawPadstack>(*this, shape, [](Extent& e, const CBDdrawPadstack& s) { e.Take(s.m_pt); }) ||
      TakeAs<CBDdrawPad>(*this, shape, [](Extent& e, const CBDdrawPad& s) { e.Take(s.m_pt); }) ||
      TakeAs<CBDtext>(*this, shape, [](Extent& e, const CBDtext& s) { e.Take(s.m_pt); }) ||
      TakeAs<CBDcircle>(
          *this, shape,
          [](Extent& e, const CBDcircle& s) { TakeBox(e, s.m_ptCenter, 2 * s.m_dRadius, 2 * s.m_dRadius, 0); }) ||
      TakeAs<CBDdonut>(*this, shape, [](Extent& e, const CBDdonut& s) { TakeBox(e, s.m_pt, s.m_dOut, s.m_dOut, 0); }) ||
      TakeAs<CBDrectangle>(
          *this, shape,
          [](Extent& e, const CBDrectangle& s) { TakeBox(e, s.m_pt, s.m_dWidth, s.m_dHeight, s.m_dAngle); }) ||
      TakeAs<CBDoval>(*this, shape,
                      [](Extent& e, const CBDoval& s) { TakeBox(e, s.m_pt, s.m_dHeight, s.m_dWidth, s.m_dAngle); }) ||
      TakeAs<CBDoblong>(*this, shape,
                        [](Extent& e, const CBDoblong& s) {
                          TakeBox(e, s.m_ptFirst, s.m_dWidth, s.m_dWidth, 0);
                          TakeBox(e, s.m_ptSecond, s.m_dWidth, s.m_dWidth, 0);
                        }) ||
      TakeAs<CBDovalHole>(
          *this, shape,
          [](Extent& e, const CBDovalHole& s) { TakeBox(e, s.m_pt, s.m_dHeight, s.m_dWidth, s.m_dAngle); }) ||
      TakeAs<CBDsquareHole>(
          *this, shape,
          [](Extent& e, const CBDsquareHole& s) { TakeBox(e, s.m_pt, s.m_dWidth, s.m_dHeight, s.m_dAngle); }) ||
      TakeAs<CBDroundThermal>(*this, shape,
                              [](Extent& e, const CBDroundThermal& s) { TakeBox(e, s.m_pt, s.m_dOut, s.m_dOut, 0); }) ||
      TakeAs<CBDsquareThermal>(
          *this, shape, [](Extent& e, const CBDsquareThermal& s) { TakeBox(e, s.m_pt, s.m_dOut, s.m_dOut, 0); }) ||
      TakeAs<CBDsymbolText>(*this, shape,
                            [](Extent& e, const CBDsymbolText& s) {
                              if (s.m_pText != nullptr) e.Take(s.m_pText->m_pt);
                            }) ||
      TakeAs<CBDhole>(*this, shape, [](Extent& e, const CBDhole& s) {
        if (s.m_pShape != nullptr) e.Take(*s.m_pShape);
      });
}

std::vector<std::string> OutlineLayers(const CBDesigner& root) {
  const CBDtechnologyContainer& technology = *root.m_pTechnology;
  std::set<std::string_view> footprintLayers;
  for (const CBDfootprintLayer* pLayer : *technology.m_pFootprintLayerArray) {
    if (pLayer->m_sType == "OUTLINE") footprintLayers.insert(pLayer->m_sName.View());
  }
  std::set<std::string> layers;
  for (const CBDmap* pMap : *technology.m_pMapArray) {
    for (const CBDcorrespondence* p : *pMap->m_pCorrespondenceArray) {
      if (!footprintLayers.contains(p->m_sFootLayer.View())) continue;
      for (const CString& sLayer : p->m_aBoardLayers) layers.emplace(sLayer.View());
    }
  }
  return {layers.begin(), layers.end()};
}

Extent BoardExtent(const CBDesigner& root) {
  const std::vector<std::string> layers = OutlineLayers(root);
  Extent outline;
  Extent all;
  for (const CBDdrawObj* pShape : *root.m_pBoardContainer->m_pDrawObjArray) {
    all.Take(*pShape);
    if (std::binary_search(layers.begin(), layers.end(), pShape->m_sLayerName.View())) outline.Take(*pShape);
  }
  return outline.IsEmpty() ? all : outline;
}

}  // namespace laminate::cli
