#include "render/Brush.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <unordered_map>
#include <utility>

#include "JsonText.h"
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
#include "render/Outline.h"

namespace laminate::cli {

namespace {

constexpr double kPlaneOpacity = 0.35;
// In hairlines: the size of the ring that stands for a pad, the pitch of a hatching that is not told, and its limits.
constexpr double kRing = 8;
constexpr double kUsualPitch = 20;
constexpr double kFinestPitch = 6;
constexpr double kCoarsestPitch = 100;
// What lies farther away than this is far outside every picture; the drawing libraries' numbers and patience end there.
constexpr double kFarthest = 40000;
// More bridges than a thermal can have.
constexpr int kMostBridges = 64;

// The parts of a justification such as "CE_C": where the text's place is in its block.
struct Justification {
  double across = 0.5;  // 0: at the left end of the line; 1: at the right end
  double up = 0.5;      // 0: at the bottom of the block; 1: at its top
};
Justification JustificationOf(std::string_view s) {
  Justification result;
  if (s.starts_with("LO")) result.up = 0;
  if (s.starts_with("UP")) result.up = 1;
  if (s.ends_with("_L")) result.across = 0;
  if (s.ends_with("_R")) result.across = 1;
  return result;
}

double OrZero(double d) { return std::isfinite(d) ? d : 0; }

}  // namespace

double Brush::AtLeastHairline(double dWidth) const {
  if (!std::isfinite(dWidth)) return m_dHairline;
  return std::clamp(std::abs(dWidth), m_dHairline, m_dHairline > 0 ? kFarthest * m_dHairline : HUGE_VAL);
}

void Brush::Turn(Vec center, double dDegrees) { m_path.Apply(Motion::Placing(center, dDegrees, false)); }

bool Brush::Arrive() {
  m_path.Apply(m_place.After(m_motion));
  if (m_path.IsEmpty() || !m_path.IsFinite()) return false;
  if (m_dHairline > 0) m_path.Limit(kFarthest * m_dHairline);
  return true;
}

void Brush::StrokePath(const Pen& pen) {
  if (Arrive()) {
    Pen sound = pen;
    sound.width = AtLeastHairline(pen.width);
    // Dashes too short to be seen would cost time without end.
    if (!(pen.dash > 0 && pen.blank >= 0 && pen.dash + pen.blank >= m_dHairline)) sound.dash = sound.blank = 0;
    m_painter.Stroke(m_path, m_owner, sound);
  }
  m_path.Clear();
}

void Brush::FillPath() {
  if (m_look == Look::outline) {
    StrokePath({});
    return;
  }
  if (Arrive()) m_painter.Fill(m_path, m_owner, 1);
  m_path.Clear();
}

void Brush::CutPath() {
  if (Arrive()) m_painter.Cut(m_path, m_owner, m_dHairline);
  m_path.Clear();
}

void Brush::DrawLine(const CBDline& line) {
  for (Track& track : TracksOf(line.m_pVertices)) {
    std::swap(m_path, track.path);
    StrokePath(
        {.width = track.width, .square = line.m_sPenShape == "SQUARE", .dash = line.m_dDash, .blank = line.m_dBlank});
  }
}

void Brush::DrawSurface(const CBDsurface& surface) {
  AppendClosed(m_path, surface.m_pVertices);
  if (surface.m_pOpenShapes != nullptr) {
    for (const CBDopenShape* pOpen : *surface.m_pOpenShapes) {
      if (pOpen != nullptr) AppendClosed(m_path, pOpen->m_pVertices);
    }
  }
  const double dOutline = OrZero(surface.m_dOutlineWidth);
  if (m_look == Look::outline) {
    StrokePath({.width = dOutline});
    return;
  }
  if (Arrive()) {
    const double dOpacity = m_look == Look::plane ? kPlaneOpacity : 1;
    if (surface.m_bMesh != 0) {
      const double dPitch = surface.m_dMeshPitch > 0 ? surface.m_dMeshPitch : kUsualPitch * m_dHairline;
      m_painter.Hatch(m_path, m_owner, std::clamp(dPitch, kFinestPitch * m_dHairline, kCoarsestPitch * m_dHairline));
      m_painter.Stroke(m_path, m_owner, {.width = AtLeastHairline(dOutline), .opacity = dOpacity});
    } else {
      m_painter.Fill(m_path, m_owner, dOpacity);
      if (dOutline > 0) m_painter.Stroke(m_path, m_owner, {.width = AtLeastHairline(dOutline), .opacity = dOpacity});
    }
  }
  m_path.Clear();
}

void Brush::DrawRectangle(const CBDrectangle& rectangle) {
  m_path.Rectangle(rectangle.m_dWidth, rectangle.m_dHeight, 0);
  Turn(Vec(rectangle.m_pt), rectangle.m_dAngle);
  const double dOutline = OrZero(rectangle.m_dOutlineWidth);
  if (m_look == Look::outline || (m_look != Look::pad && dOutline > 0 && rectangle.m_dFillWidth == 0)) {
    StrokePath({.width = dOutline, .square = true});
    return;
  }
  if (Arrive()) {
    m_painter.Fill(m_path, m_owner, 1);
    if (dOutline > 0) m_painter.Stroke(m_path, m_owner, {.width = AtLeastHairline(dOutline)});
  }
  m_path.Clear();
}

bool Brush::IsNear(const TextLine& line) const {
  const Vec shift = line.place.Shift();
  const double dLargest = std::max({std::abs(shift.x), std::abs(shift.y), std::abs(line.Length()), line.glyphHeight});
  return line.place.XAxis().IsFinite() && shift.IsFinite() && std::isfinite(line.Length()) && std::isfinite(dLargest) &&
         (m_dHairline == 0 || dLargest <= kFarthest * m_dHairline);
}

void Brush::DrawText(const CBDtext& text) {
  const double dHeight = std::abs(text.m_dHeight);
  if (!(dHeight > 0) || text.m_sString.IsEmpty()) return;
  const std::string sText = ToUtf8(text.m_sString.View());
  TextLine line{.text = {},
                .place = {},
                .glyphWidth = text.m_dWidth != 0 ? std::abs(text.m_dWidth) : dHeight,
                .glyphHeight = dHeight,
                .space = text.m_dSpace,
                .stroke = AtLeastHairline(text.m_dStrokeWidth)};
  const bool bUpsideDown = text.m_sFlip == "Y";
  const Motion place = m_place.After(m_motion).After(
      Motion::Placing(Vec(text.m_pt), text.m_dAngle + (bUpsideDown ? 180 : 0), bUpsideDown || text.m_sFlip == "X"));
  const Justification justification = JustificationOf(text.m_sJustify.View());
  const double dAdvance = dHeight + text.m_dVSpace;
  const auto nLines = static_cast<double>(1 + std::ranges::count(sText, '\n'));
  const double dBlock = dHeight + (nLines - 1) * dAdvance;
  double dBaseline = dBlock - dHeight - justification.up * dBlock;
  std::string_view sRest = sText;
  for (;;) {
    const std::size_t n = sRest.find('\n');
    line.text = sRest.substr(0, n);
    if (line.text.ends_with('\r')) line.text.remove_suffix(1);
    line.place = place.After(Motion::Placing({-justification.across * line.Length(), dBaseline}, 0, false));
    if (!line.text.empty() && IsNear(line)) m_painter.Text(line, m_owner);
    if (n == std::string_view::npos) return;
    sRest.remove_prefix(n + 1);
    dBaseline -= dAdvance;
  }
}

void Brush::DrawThermal(const CBDroundThermal& thermal) {
  const Vec center(thermal.m_pt);
  const double dIn = std::abs(thermal.m_dIn) / 2;
  const double dOut = std::abs(thermal.m_dOut) / 2;
  const double dHalfBridge = std::abs(thermal.m_dBridgeWidth) / 2;
  const int nBridges = std::clamp(thermal.m_nBridge, 0, kMostBridges);
  if (nBridges == 0) {
    m_path.Circle(center, dIn);
    m_path.Circle(center, dOut);
  }
  // The pieces of the ring between two bridges, each of which begins and ends half a bridge's width beside its middle.
  const double dStep = 2 * kPi / std::max(nBridges, 1);
  const double dGapIn = dHalfBridge < dIn ? std::asin(dHalfBridge / dIn) : kPi;
  const double dGapOut = dHalfBridge < dOut ? std::asin(dHalfBridge / dOut) : kPi;
  for (int i = 0; i < nBridges && dStep > 2 * std::max(dGapIn, dGapOut); ++i) {
    const double dFrom = Radians(thermal.m_nBridgeAngle) + i * dStep;
    const double dTo = dFrom + dStep;
    m_path.Move(center + Polar(dOut, dFrom + dGapOut));
    m_path.Arc(center, dOut, dFrom + dGapOut, dStep - 2 * dGapOut);
    m_path.Line(center + Polar(dIn, dTo - dGapIn));
    m_path.Arc(center, dIn, dTo - dGapIn, 2 * dGapIn - dStep);
    m_path.Close();
  }
  StrokePath({});
}

void Brush::DrawThermal(const CBDsquareThermal& thermal) {
  const double dIn = std::abs(thermal.m_dIn);
  const double dOut = std::abs(thermal.m_dOut);
  m_path.Rectangle(dIn, dIn, 0);
  m_path.Rectangle(dOut, dOut, 0);
  // The bridges by their middle lines, from square to square.
  const auto onSquare = [](double dSize, double dAngle) {
    const Vec direction = Polar(1, dAngle);
    return direction * (dSize / 2 / std::max(std::abs(direction.x), std::abs(direction.y)));
  };
  const int nBridges = std::clamp(thermal.m_nBridge, 0, kMostBridges);
  for (int i = 0; i < nBridges; ++i) {
    const double dAngle = Radians(thermal.m_dBridgeAngle) + i * 2 * kPi / nBridges;
    m_path.Move(onSquare(dIn, dAngle));
    m_path.Line(onSquare(dOut, dAngle));
  }
  Turn(Vec(thermal.m_pt), 0);
  StrokePath({});
}

// Ovals here and below are as long as their height says, along their angle, and as thick as their width.
void Brush::DrawHole(const CBDdrawObj& shape) {
  if (const auto* pHole = dynamic_cast<const CBDhole*>(&shape)) {
    if (pHole->m_pShape != nullptr && pHole->m_pShape != &shape) DrawHole(*pHole->m_pShape);
  } else if (const auto* pCircle = dynamic_cast<const CBDcircle*>(&shape)) {
    m_path.Circle(Vec(pCircle->m_ptCenter), std::abs(pCircle->m_dRadius));
  } else if (const auto* pSquare = dynamic_cast<const CBDsquareHole*>(&shape)) {
    m_path.Rectangle(pSquare->m_dWidth, pSquare->m_dHeight, pSquare->m_dCorner);
    Turn(Vec(pSquare->m_pt), pSquare->m_dAngle);
  } else if (const auto* pOvalHole = dynamic_cast<const CBDovalHole*>(&shape)) {
    m_path.Oval(pOvalHole->m_dHeight, pOvalHole->m_dWidth);
    Turn(Vec(pOvalHole->m_pt), pOvalHole->m_dAngle);
  } else if (const auto* pOval = dynamic_cast<const CBDoval*>(&shape)) {
    m_path.Oval(pOval->m_dHeight, pOval->m_dWidth);
    Turn(Vec(pOval->m_pt), pOval->m_dAngle);
  } else if (const auto* pRectangle = dynamic_cast<const CBDrectangle*>(&shape)) {
    m_path.Rectangle(pRectangle->m_dWidth, pRectangle->m_dHeight, 0);
    Turn(Vec(pRectangle->m_pt), pRectangle->m_dAngle);
  }
  CutPath();
}

void Brush::Draw(const CBDdrawObj& shape, const Motion& motion, Look look, const Owner& owner) {
  m_motion = motion;
  m_look = look;
  m_owner = owner;
  if (look == Look::hole) {
    DrawHole(shape);
  } else if (look == Look::ring) {
    m_path.Circle({}, kRing / 2 * m_dHairline);
    StrokePath({});
  } else if (const auto* pLine = dynamic_cast<const CBDline*>(&shape)) {
    DrawLine(*pLine);
  } else if (const auto* pSurface = dynamic_cast<const CBDsurface*>(&shape)) {
    DrawSurface(*pSurface);
  } else if (const auto* pRectangle = dynamic_cast<const CBDrectangle*>(&shape)) {
    DrawRectangle(*pRectangle);
  } else if (const auto* pCircle = dynamic_cast<const CBDcircle*>(&shape)) {
    m_path.Circle(Vec(pCircle->m_ptCenter), std::abs(pCircle->m_dRadius));
    FillPath();
  } else if (const auto* pOval = dynamic_cast<const CBDoval*>(&shape)) {
    m_path.Oval(pOval->m_dHeight, pOval->m_dWidth);
    Turn(Vec(pOval->m_pt), pOval->m_dAngle);
    FillPath();
  } else if (const auto* pText = dynamic_cast<const CBDtext*>(&shape)) {
    DrawText(*pText);
  } else if (const auto* pSymbolText = dynamic_cast<const CBDsymbolText*>(&shape)) {
    if (pSymbolText->m_pText != nullptr) DrawText(*pSymbolText->m_pText);
  } else if (const auto* pDonut = dynamic_cast<const CBDdonut*>(&shape)) {
    m_path.Circle(Vec(pDonut->m_pt), std::abs(pDonut->m_dOut) / 2);
    if (pDonut->m_dIn != 0) m_path.Circle(Vec(pDonut->m_pt), std::abs(pDonut->m_dIn) / 2);
    FillPath();
  } else if (const auto* pOblong = dynamic_cast<const CBDoblong*>(&shape)) {
    m_path.Move(Vec(pOblong->m_ptFirst));
    m_path.Line(Vec(pOblong->m_ptSecond));
    StrokePath({.width = pOblong->m_dWidth});
  } else if (const auto* pRound = dynamic_cast<const CBDroundThermal*>(&shape)) {
    DrawThermal(*pRound);
  } else if (const auto* pSquare = dynamic_cast<const CBDsquareThermal*>(&shape)) {
    DrawThermal(*pSquare);
  }
  m_path.Clear();
}

}  // namespace laminate::cli
