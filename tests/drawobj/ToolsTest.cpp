// The tools for hosts, with numbers worked out by hand from their given constants.
#include <gtest/gtest.h>

#include <cmath>

#include "base/CArrayPointD.h"
#include "drawobj/DrawObjTestSupport.h"
#include "drawobj/Fields.h"

namespace {

// Far below what the constants, which are slightly off, make of the exact values.
constexpr double kTiny = 1e-12;

TEST(Tools, Angle) {
  struct Case {
    double x, y, angle;
  };
  const Case cases[] = {{0, 0, 0},
                        {0, 2, 90},
                        {-2, 0, 180},
                        {0, -2, 270},
                        {2, 0, 0},
                        {1, 1, 44.99999752921998},
                        {-1, 1, 135.00000247078003},
                        {-1, -1, 224.99999752921997},
                        {1, -1, 315.00000247078003},
                        {3, 4, 53.13009943698275},
                        {-3, 4, 126.86990056301724}};
  CBDdrawObj any;
  for (const Case& c : cases) {
    EXPECT_NEAR(any.dChgPts2Angle(CPointD(0, 0), CPointD(c.x, c.y)), c.angle, kTiny) << c.x << " " << c.y;
    EXPECT_NEAR(any.dChgPts2Angle(CPointD(16, -8), CPointD(16 + c.x, -8 + c.y)), c.angle, kTiny);
  }
  const double dNan = std::nan("");
  EXPECT_EQ(any.dChgPts2Angle(CPointD(0, 0), CPointD(dNan, 1)), 0);
  // Just below the x axis it rounds up to the whole turn.
  EXPECT_EQ(any.dChgPts2Angle(CPointD(0, 0), CPointD(1, -1e-20)), 360);
}

TEST(Tools, Distance) {
  CBDdrawObj any;
  EXPECT_EQ(any.dGetDistanceFrom2Points(CPointD(1, 2), CPointD(4, 6)), 5);
  EXPECT_EQ(any.dGetDistanceFrom2Points(CPointD(4, 6), CPointD(1, 2)), 5);
  EXPECT_EQ(any.dGetDistanceFrom2Points(CPointD(1, 1), CPointD(1, 1)), 0);
  // The plain root of the squares, which can be too large.
  EXPECT_EQ(any.dGetDistanceFrom2Points(CPointD(0, 0), CPointD(3e200, 4e200)), HUGE_VAL);
}

struct Corner {
  double radius;
  double p1x, p1y, p2x, p2y, p3x, p3y;
  double wanted[6];
};

TEST(Tools, RoundedCorner) {
  const Corner cases[] = {
      // a right angle between +x and +y
      {1, 5, 0, 0, 0, 0, 5, {0.9999999562886109, 0, 0.9999999562886109, 1, 0, 1}},
      // between +x and -y: the bisector points away, and the nearer candidate is taken
      {1, 5, 0, 0, 0, 0, -5, {1.0000001311341786, 0, 1.0000001311341786, -1, 0, -1}},
      // a leg of no length
      {1, 2, 2, 2, 2, 2, 7, {2, 2, 2.999999956288611, 3, 2, 3}},
      // no radius
      {0, 5, 0, 1, 2, 0, 5, {1, 2, 1, 2, 1, 2}},
      // a straight line: the bisector is the y axis
      {2, -5, 0, 0, 0, 5, 0, {0, 0, 0, 2.8284271247461903, 0, 0}},
      // a bisector along the x axis, where the radius itself is the distance; the angles sum up to 180 here
      {1, 3, 3, 0, 0, 3, -3, {0.5, 0.5, 1, 0, 0.5, -0.5}},
      // along the y axis
      {1,
       5,
       5,
       0,
       0,
       -5,
       5,
       {0.7071067811865476, 0.7071067811865476, 0, 1.4142135623730951, -0.7071067811865476, 0.7071067811865476}},
      // a corner away from the origin, between +y and +x
      {1, 10, 10, 10, 0, 20, 0, {10, 1, 10.999999956288612, 1, 10.999999956288612, 0}},
      // any angle
      {0.5, 4, 1, 1, 1, 3, 4, {1.9342585757925175, 1, 1.9342585757925175, 1.5, 1.5182334079361595, 1.777350111904239}},
      // legs that fold on each other: no division by the sine of nothing
      {1,
       5,
       0,
       0,
       0,
       5,
       0.0001,
       {0.99999999995, 0, 0.99999999995, 9.999999727713111e-06, 0.9999999997499999, 1.9999999995e-05}},
      // a bisector along an axis, the legs on its other side: the far candidate
      {1, -5, 0, 0, 0, -3, 0, {-1, 0, -1, 0, -1, 0}},
      {1,
       5,
       -5,
       0,
       0,
       -5,
       -5,
       {0.7071067811865476, -0.7071067811865476, 0, -1.4142135623730951, -0.7071067811865476, -0.7071067811865476}},
      {1, 5, 0, 0, 0, 3, 0, {1, 0, 1, 0, 1, 0}},
      // straight lines along the y axis and across both
      {1, 0, 5, 0, 0, 0, -5, {0, 0, 1, 0, 0, 0}},
      {1,
       5,
       1,
       0,
       0,
       -5,
       -1,
       {-3.76211317227187e-08, -7.52422634454374e-09, -0.1961161727593158, 0.9805806681666941, -3.76211317227187e-08,
        -7.52422634454374e-09}},
      // the other leg of no length, and both
      {1, 7, 2, 2, 2, 2, 2, {3, 2, 3, 2, 2, 2}},
      {1, 2, 2, 2, 2, 2, 2, {2, 2, 3, 2, 2, 2}},
  };
  CBDdrawObj any;
  for (const Corner& c : cases) {
    const std::unique_ptr<CArrayPointD> points(
        any.GetPtArrayFrom3Points(c.radius, CPointD(c.p1x, c.p1y), CPointD(c.p2x, c.p2y), CPointD(c.p3x, c.p3y)));
    ASSERT_EQ(points->GetSize(), 3);
    for (int i = 0; i < 3; ++i) {
      EXPECT_NEAR((*points)[i].x, c.wanted[2 * i], kTiny) << i;
      EXPECT_NEAR((*points)[i].y, c.wanted[2 * i + 1], kTiny) << i;
    }
  }
  // A hundredth of a degree between the legs is enough for the sine.
  const std::unique_ptr<CArrayPointD> points(
      any.GetPtArrayFrom3Points(1, CPointD(1, 0), CPointD(0, 0), CPointD(1, 0.0002)));
  EXPECT_NEAR((*points)[0].x, 10000.0003707869, 1e-5);
}

TEST(Tools, CentreOfAnArc) {
  struct Case {
    double cx, cy, x, y;
  };
  const Case cases[] = {{3, 4, 4, 6},
                        {-3, 4, -2.00000034969111, 5.999999737731644},
                        {-3, -4, -1.9999996503088684, -2.0000002622683253},
                        {3, -4, 4.000000699382194, -1.9999994754632588},
                        {0, 7, 1, 7},
                        {0, -7, 1, -3},
                        {7, 0, 6, 2},
                        {-7, 0, -4, 2}};
  CBDdrawObj any;
  for (const Case& c : cases) {
    CBDvertexArc arc;
    arc.m_ptBegin.SetData(1, 2);
    arc.m_dR = 5;
    arc.m_ptCenter.SetData(c.cx, c.cy);
    const CPointD pt = any.ptFindBDvertexArcCenterPt(&arc);
    EXPECT_NEAR(pt.x, c.x, kTiny) << c.cx << " " << c.cy;
    EXPECT_NEAR(pt.y, c.y, kTiny) << c.cx << " " << c.cy;
  }
  CBDvertexArc arc;
  arc.m_ptBegin.SetData(1, 2);
  arc.m_dR = 5;
  const CPointD pt = any.ptFindBDvertexArcCenterPt(&arc);
  EXPECT_EQ(pt.x, 1);
  EXPECT_TRUE(std::isnan(pt.y));
  EXPECT_THROW(any.ptFindBDvertexArcCenterPt(nullptr), CInvalidArgException);
}

CBDvertexPt& AddPt(CBDvertexArray& vertices, double dWidth) {
  auto* p = new CBDvertexPt;
  p->m_dWidth = dWidth;
  vertices.Add(p);
  return *p;
}
CBDvertexArc& AddArc(CBDvertexArray& vertices, double dX1 = 0, double dX2 = 0) {
  auto* p = new CBDvertexArc;
  p->m_ptBegin.SetData(dX1, 0);
  p->m_ptEnd.SetData(dX2, 0);
  vertices.Add(p);
  return *p;
}

TEST(Tools, WidthOfALine) {
  CBDdrawObj any;
  CBDline line;
  EXPECT_EQ(any.GetLineWidthFromDrawObj(&line), 0);
  AddPt(*line.m_pVertices, 0.0005);
  line.m_pVertices->Add(nullptr);
  AddPt(*line.m_pVertices, 0.001);
  EXPECT_EQ(any.GetLineWidthFromDrawObj(&line), 0);
  AddPt(*line.m_pVertices, 0.2);
  EXPECT_EQ(any.GetLineWidthFromDrawObj(&line), 0.2);
  // The width of an arc is not looked at, its begin width is, a negative one too.
  CBDline arcs;
  AddArc(*arcs.m_pVertices).m_dWidth = 7;
  AddArc(*arcs.m_pVertices).m_dBeginWidth = -0.5;
  AddPt(*arcs.m_pVertices, 3);
  EXPECT_EQ(any.GetLineWidthFromDrawObj(&arcs), -0.5);
  CBDline thin;
  AddArc(*thin.m_pVertices).m_dBeginWidth = 0.0005;
  EXPECT_EQ(any.GetLineWidthFromDrawObj(&thin), 0.0005);
  // A negative width of a point is none, however large.
  CBDline negative;
  AddPt(*negative.m_pVertices, -5);
  EXPECT_EQ(any.GetLineWidthFromDrawObj(&negative), 0);
  AddPt(*negative.m_pVertices, 0.2);
  EXPECT_EQ(any.GetLineWidthFromDrawObj(&negative), 0.2);
}

TEST(Tools, WidthOfASurface) {
  CBDdrawObj any;
  CBDsurface surface;
  surface.m_dOutlineWidth = 0.75;
  EXPECT_EQ(any.GetLineWidthFromDrawObj(&surface), 0.75);
  AddPt(*surface.m_pVertices, 0.001);
  AddPt(*surface.m_pVertices, -5);
  AddArc(*surface.m_pVertices).m_dBeginWidth = 9;
  EXPECT_EQ(any.GetLineWidthFromDrawObj(&surface), 0.75);
  AddArc(*surface.m_pVertices).m_dWidth = 0.3;
  AddPt(*surface.m_pVertices, 0.2);
  EXPECT_EQ(any.GetLineWidthFromDrawObj(&surface), 0.3);
}

TEST(Tools, WidthOfAnythingElse) {
  CBDdrawObj any;
  CBDoval oval;
  oval.m_dWidth = 3;
  EXPECT_EQ(any.GetLineWidthFromDrawObj(&oval), 0);
  for (const char* szTag : {"LINE", "SURFACE"}) {
    oval.m_sKind = szTag;
    EXPECT_EQ(any.GetLineWidthFromDrawObj(&oval), 0) << szTag;
  }
  EXPECT_THROW(any.GetLineWidthFromDrawObj(nullptr), CInvalidArgException);
  CBDline line;
  delete line.m_pVertices;
  line.m_pVertices = nullptr;
  EXPECT_THROW(any.GetLineWidthFromDrawObj(&line), CInvalidArgException);
  CBDsurface surface;
  delete std::exchange(surface.m_pVertices, nullptr);
  EXPECT_THROW(any.GetLineWidthFromDrawObj(&surface), CInvalidArgException);
  // Vertices with widths count for the two tags alone.
  CBDopenShape open;
  CBDareaz area;
  area.m_pVertices = new CBDvertexArray;
  CBDline lower;
  lower.m_sKind = "line";
  for (CBDvertexArray* p : {open.m_pVertices, area.m_pVertices, lower.m_pVertices}) AddPt(*p, 3);
  for (CBDdrawObj* p : std::vector<CBDdrawObj*>{&open, &area, &lower}) EXPECT_EQ(any.GetLineWidthFromDrawObj(p), 0);
}

TEST(Tools, OblongToOval) {
  struct Case {
    double x1, y1, x2, y2, angle;
  };
  const Case cases[] = {{0, 0, 3, 4, 53.13010235415598},
                        {3, 4, 0, 0, 233.13010235415598},
                        {0, 0, 0, 0, 0},
                        {1, 1, 1, 5, 90},
                        {1, 1, -3, 1, 180},
                        {0, 0, 1, -1, 315}};
  CBDdrawObj any;
  for (const Case& c : cases) {
    CBDoblong oblong;
    Fill(oblong);
    oblong.m_dWidth = 2;
    oblong.m_ptFirst.SetData(c.x1, c.y1);
    oblong.m_ptSecond.SetData(c.x2, c.y2);
    const std::string before = Describe(oblong);
    const std::unique_ptr<CBDoval> oval(any.pChangeOblong2Oval(&oblong));
    EXPECT_EQ(Text(oval->m_pt), Text(CPointD((c.x1 + c.x2) / 2, (c.y1 + c.y2) / 2)));
    EXPECT_EQ(oval->m_dWidth, 2);
    EXPECT_NEAR(oval->m_dHeight, std::hypot(c.x2 - c.x1, c.y2 - c.y1) + 2, kTiny);
    EXPECT_NEAR(oval->m_dAngle, c.angle, kTiny);
    EXPECT_EQ(Describe(oblong), before);
    // Nothing but the four.
    CBDoval fresh;
    fresh.m_pt = oval->m_pt;
    fresh.m_dWidth = oval->m_dWidth;
    fresh.m_dHeight = oval->m_dHeight;
    fresh.m_dAngle = oval->m_dAngle;
    EXPECT_EQ(Describe(*oval), Describe(fresh));
  }
  EXPECT_THROW(any.pChangeOblong2Oval(nullptr), CInvalidArgException);
}

struct MournedLine : CBDline {
  explicit MournedLine(bool& bDead) : m_bDead(bDead) {}
  ~MournedLine() override { m_bDead = true; }
  bool& m_bDead;
};

TEST(Tools, LineToSurface) {
  bool bDead = false;
  auto* pLine = new MournedLine(bDead);
  Fill(static_cast<CBDline&>(*pLine));
  CBDvertexArray* pVertices = pLine->m_pVertices;
  CBDline any;
  const std::unique_ptr<CBDsurface> surface(any.pChangeCBDline2CBDsurface(pLine));
  EXPECT_TRUE(bDead);
  EXPECT_EQ(surface->m_pVertices, pVertices);
  EXPECT_EQ(surface->m_pVertices->GetSize(), 3);
  // Nothing but the vertices.
  CBDsurface fresh;
  CBDvertexArray* const pEmpty = std::exchange(fresh.m_pVertices, pVertices);
  EXPECT_EQ(Describe(*surface), Describe(fresh));
  fresh.m_pVertices = pEmpty;
  EXPECT_THROW(any.pChangeCBDline2CBDsurface(nullptr), CInvalidArgException);
}

TEST(Tools, ALineMayBecomeASurfaceByItself) {
  bool bDead = false;
  auto* pLine = new MournedLine(bDead);
  AddPt(*pLine->m_pVertices, 0.5);
  const std::unique_ptr<CBDsurface> surface(pLine->pChangeCBDline2CBDsurface(pLine));
  EXPECT_TRUE(bDead);
  EXPECT_EQ(surface->m_pVertices->GetSize(), 1);
  auto* pBare = new CBDline;
  delete std::exchange(pBare->m_pVertices, nullptr);
  const std::unique_ptr<CBDsurface> bare(pBare->pChangeCBDline2CBDsurface(pBare));
  EXPECT_EQ(bare->m_pVertices, nullptr);
}

TEST(Tools, FirstPointWithAFillet) {
  CBDline line;
  EXPECT_EQ(line.nGetFilletPtIndex(), -1);
  AddPt(*line.m_pVertices, 1).m_pFillet->m_dFilletWidth = 9;  // which the writer asks for
  line.m_pVertices->Add(nullptr);
  AddArc(*line.m_pVertices);
  AddPt(*line.m_pVertices, 1).m_pFillet->m_dWidth = 9;
  line.m_pVertices->GetAt(3)->m_sType = "ARC";
  EXPECT_EQ(line.nGetFilletPtIndex(), -1);
  AddPt(*line.m_pVertices, 1).m_pFillet->m_dWidth = -1;
  EXPECT_EQ(line.nGetFilletPtIndex(), 4);
  line.m_pVertices->GetAt(3)->m_sType = "PT";
  EXPECT_EQ(line.nGetFilletPtIndex(), 3);
  CBDvertex plain;
  plain.m_sType = "PT";
  CBDline odd;
  odd.m_pVertices->Add(&plain);
  EXPECT_EQ(odd.nGetFilletPtIndex(), -1);
  odd.m_pVertices->RemoveAll();
}

TEST(Tools, TwoArcsHeadToTail) {
  CBDsurface surface;
  EXPECT_EQ(surface.bChkArcAndArc(), 0);
  AddArc(*surface.m_pVertices, 1, 2);
  EXPECT_EQ(surface.bChkArcAndArc(), 0);
  AddPt(*surface.m_pVertices, 0);
  AddArc(*surface.m_pVertices, 2, 3);
  EXPECT_EQ(surface.bChkArcAndArc(), 0);
  CBDvertexArc& last = AddArc(*surface.m_pVertices, 3, 4);
  EXPECT_EQ(surface.bChkArcAndArc(), 1);
  last.m_ptBegin.SetData(std::nextafter(3.0, 4.0), 0);
  EXPECT_EQ(surface.bChkArcAndArc(), 0);
  last.m_ptBegin.SetData(3, 0.5);
  EXPECT_EQ(surface.bChkArcAndArc(), 0);
  // The list is a ring, and null slots are not in it.
  last.m_ptEnd.SetData(1, 0);
  EXPECT_EQ(surface.bChkArcAndArc(), 1);
  surface.m_pVertices->Add(nullptr);
  surface.m_pVertices->InsertAt(0, static_cast<CBDvertex*>(nullptr));
  EXPECT_EQ(surface.bChkArcAndArc(), 1);
  last.m_sType = "PT";
  EXPECT_EQ(surface.bChkArcAndArc(), 0);
  // One arc is held against itself.
  CBDsurface one;
  AddArc(*one.m_pVertices, 5, 5);
  EXPECT_EQ(one.bChkArcAndArc(), 1);
  CBDsurface points;
  AddPt(*points.m_pVertices, 0);
  EXPECT_EQ(points.bChkArcAndArc(), 0);
  // A point that says it is an arc is none.
  points.m_pVertices->GetAt(0)->m_sType = "ARC";
  EXPECT_EQ(points.bChkArcAndArc(), 0);
}

TEST(Tools, MissingArraysAndFilletsRaise) {
  CBDline line;
  delete std::exchange(AddPt(*line.m_pVertices, 1).m_pFillet, nullptr);
  EXPECT_THROW(line.nGetFilletPtIndex(), CInvalidArgException);
  delete std::exchange(line.m_pVertices, nullptr);
  EXPECT_THROW(line.nGetFilletPtIndex(), CInvalidArgException);
  CBDsurface surface;
  delete std::exchange(surface.m_pVertices, nullptr);
  EXPECT_THROW(surface.bChkArcAndArc(), CInvalidArgException);
  EXPECT_THROW(surface.vGiveTarcValueForAllElement(1), CInvalidArgException);
}

TEST(Tools, TarcOfEveryPoint) {
  CBDsurface surface;
  CBDvertexPt& first = AddPt(*surface.m_pVertices, 0);
  surface.m_pVertices->Add(nullptr);
  CBDvertexArc& arc = AddArc(*surface.m_pVertices);
  CBDvertexPt& second = AddPt(*surface.m_pVertices, 0);
  CBDvertexPt& odd = AddPt(*surface.m_pVertices, 0);
  odd.m_sType = "ARC";
  arc.m_sType = "PT";  // says so, but has no such field
  const std::string before = Text(&arc);
  surface.vGiveTarcValueForAllElement(0.25);
  EXPECT_EQ(first.m_dTarc, 0.25);
  EXPECT_EQ(second.m_dTarc, 0.25);
  EXPECT_EQ(odd.m_dTarc, 0);
  EXPECT_EQ(Text(&arc), before);
}

}  // namespace
