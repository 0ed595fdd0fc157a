#include "render/Outline.h"

#include <algorithm>

#include "drawobj/CBDvertexArc.h"
#include "drawobj/CBDvertexPt.h"

namespace laminate::cli {

namespace {

// Below the resolution of the files: what is nearer than this is one point.
constexpr double kSamePoint = 1e-6;

// A vertex as the drawing needs it: a point begins and ends where it is.
struct Node {
  bool arc = false;
  Vec begin;
  Vec end;
  Vec center;
  bool clockwise = false;
  double rounding = 0;
  double width = 0;
};

std::vector<Node> NodesOf(const CBDvertexArray* pVertices) {
  std::vector<Node> nodes;
  if (pVertices == nullptr) return nodes;
  nodes.reserve(static_cast<std::size_t>(pVertices->GetSize()));
  for (const CBDvertex* pVertex : *pVertices) {
    Node node;
    if (const auto* pPoint = dynamic_cast<const CBDvertexPt*>(pVertex)) {
      node.begin = node.end = Vec(pPoint->m_pt);
      node.rounding = std::abs(pPoint->m_dTarc);
      node.width = pPoint->m_dWidth;
    } else if (const auto* pArc = dynamic_cast<const CBDvertexArc*>(pVertex)) {
      node.arc = true;
      node.begin = Vec(pArc->m_ptBegin);
      node.end = Vec(pArc->m_ptEnd);
      node.center = Vec(pArc->m_ptCenter);
      node.clockwise = pArc->m_sDirection == "CW";
      node.width = pArc->m_dBeginWidth != 0 ? pArc->m_dBeginWidth
                   : pArc->m_dWidth != 0    ? pArc->m_dWidth
                                            : pArc->m_dEndWidth;
    } else {
      continue;
    }
    nodes.push_back(node);
  }
  return nodes;
}

// Goes to a point, or begins there.
void Go(Path& path, Vec to) {
  if (path.IsEmpty() || path.Segments().back().step == Path::Step::close) {
    path.Move(to);
  } else {
    path.Line(to);
  }
}

bool Same(Vec a, Vec b) { return (a - b).Length() < kSamePoint; }

bool StandsAt(const Path& path, Vec p) {
  return !path.IsEmpty() && path.Segments().back().step != Path::Step::close && Same(path.Segments().back().to, p);
}

void GoAlongArc(Path& path, const Node& node) {
  const Vec from = node.begin - node.center;
  const double dRadius = from.Length();
  if (dRadius < kSamePoint) {
    Go(path, node.end);
    return;
  }
  double dSweep = std::fmod((node.end - node.center).Angle() - from.Angle(), 2 * kPi);
  if (Same(node.begin, node.end)) {
    dSweep = node.clockwise ? -2 * kPi : 2 * kPi;
  } else if (node.clockwise) {
    if (dSweep >= 0) dSweep -= 2 * kPi;
  } else {
    if (dSweep <= 0) dSweep += 2 * kPi;
  }
  path.Arc(node.center, dRadius, from.Angle(), dSweep);
  // An end that is not on the circle is joined to it.
  if (!Same(path.Segments().back().to, node.end)) path.Line(node.end);
}

// How much of a leg a rounded corner may take up: half of it where the other end is rounded too.
double LegFor(Vec corner, Vec other, bool bOtherRounded) {
  return (other - corner).Length() * (bOtherRounded ? 0.5 : 1);
}

void GoRoundCorner(Path& path, const Node& node, const Node& previous, const Node& next) {
  const Vec corner = node.begin;
  const Vec back = previous.end - corner;
  const Vec ahead = next.begin - corner;
  const double dBack = back.Length();
  const double dAhead = ahead.Length();
  if (!(dBack > kSamePoint && dAhead > kSamePoint)) {
    Go(path, corner);
    return;
  }
  const Vec u = back * (1 / dBack);
  const Vec v = ahead * (1 / dAhead);
  const double dHalf = std::acos(std::clamp(Dot(u, v), -1.0, 1.0)) / 2;  // half the angle between the legs
  constexpr double kStraight = 1e-6;
  if (dHalf < kStraight || dHalf > kPi / 2 - kStraight) {
    Go(path, corner);
    return;
  }
  const double dRoom =
      std::min(LegFor(corner, previous.end, previous.rounding > 0), LegFor(corner, next.begin, next.rounding > 0));
  const double dTangent = std::min(node.rounding / std::tan(dHalf), dRoom);
  const double dRadius = dTangent * std::tan(dHalf);
  const Vec bisector = u + v;
  const Vec center = corner + bisector * (dRadius / std::sin(dHalf) / bisector.Length());
  const Vec begin = corner + u * dTangent;
  Go(path, begin);
  const double dSweep = kPi - 2 * dHalf;
  path.Arc(center, dRadius, (begin - center).Angle(), Cross(u, v) < 0 ? dSweep : -dSweep);
}

// Goes to where a vertex begins, around its corner if that is rounded.
void GoTo(Path& path, const std::vector<Node>& nodes, std::size_t i, bool bRing) {
  const Node& node = nodes[i];
  const std::size_t nLast = nodes.size() - 1;
  const bool bCorner = nodes.size() > 2 && (bRing || (i != 0 && i != nLast));
  if (!node.arc && node.rounding > 0 && bCorner) {
    GoRoundCorner(path, node, nodes[i == 0 ? nLast : i - 1], nodes[i == nLast ? 0 : i + 1]);
  } else if (!node.arc || !StandsAt(path, node.begin)) {
    Go(path, node.begin);
  }
}

}  // namespace

void AppendClosed(Path& path, const CBDvertexArray* pVertices) {
  const std::vector<Node> nodes = NodesOf(pVertices);
  if (nodes.empty()) return;
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    GoTo(path, nodes, i, true);
    if (nodes[i].arc) GoAlongArc(path, nodes[i]);
  }
  path.Close();
}

std::vector<Track> TracksOf(const CBDvertexArray* pVertices) {
  const std::vector<Node> nodes = NodesOf(pVertices);
  std::vector<Track> tracks;
  if (nodes.empty()) return tracks;
  if (nodes.size() == 1 && !nodes[0].arc) {
    // A line of one point is a dot of its pen.
    tracks.emplace_back().width = nodes[0].width;
    tracks.back().path.Move(nodes[0].begin);
    tracks.back().path.Line(nodes[0].begin);
    return tracks;
  }
  const auto widthAfter = [&nodes](std::size_t i) {
    return nodes[i].width != 0 || i + 1 == nodes.size() ? nodes[i].width : nodes[i + 1].width;
  };
  const auto take = [&tracks](double dWidth, Vec from) -> Path& {
    if (tracks.empty() || tracks.back().width != dWidth) {
      tracks.emplace_back().width = dWidth;
      tracks.back().path.Move(from);
    }
    return tracks.back().path;
  };
  Vec at = nodes[0].begin;
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    if (i > 0) GoTo(take(widthAfter(i - 1), at), nodes, i, false);
    if (nodes[i].arc) {
      Path& path = take(nodes[i].width, nodes[i].begin);
      if (!StandsAt(path, nodes[i].begin)) path.Line(nodes[i].begin);
      GoAlongArc(path, nodes[i]);
    }
    if (!tracks.empty()) at = tracks.back().path.Segments().back().to;
  }
  return tracks;
}

}  // namespace laminate::cli
