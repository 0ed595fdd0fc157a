// What a board becomes as a drawing: paths, layers, pads through their definitions. A painter that writes down what it
// is told stands for the sheet.
#include <gtest/gtest.h>

#include <cmath>
#include <ctime>
#include <functional>
#include <limits>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

#include "Png.h"
#include "board/CBDboardContainer.h"
#include "board/CBDcompGroup.h"
#include "board/CBDcomponent.h"
#include "board/CBDpin.h"
#include "drawobj/CBDareaz.h"
#include "drawobj/CBDcircle.h"
#include "drawobj/CBDdelete.h"
#include "drawobj/CBDdonut.h"
#include "drawobj/CBDdrawPad.h"
#include "drawobj/CBDdrawPadstack.h"
#include "drawobj/CBDdrawSubBoard.h"
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
#include "render/Outline.h"
#include "render/Palette.h"
#include "render/Picture.h"
#include "render/Scene.h"
#include "render/StrokeFont.h"
#include "technology/CBDcondLayer.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDfootprintLayer.h"
#include "technology/CBDmap.h"
#include "technology/CBDnonConductiveLayer.h"
#include "technology/CBDpad.h"
#include "technology/CBDpadstack.h"
#include "technology/CBDtechnologyContainer.h"

namespace laminate::cli {

namespace {

using Strings = std::vector<std::string>;

std::string Text(double d) {
  d = std::round(d * 1000) / 1000;
  std::string s = std::to_string(d == 0 ? 0.0 : d);
  while (s.back() == '0') s.pop_back();
  if (s.back() == '.') s.pop_back();
  return s;
}
std::string Text(Vec p) { return Text(p.x) + "," + Text(p.y); }

// A direction in degrees, above -180 up to 180.
std::string Direction(double dAngle) {
  const std::string sDegrees = Text(std::remainder(dAngle, 2 * kPi) * 180 / kPi);
  return sDegrees == "-180" ? "180" : sDegrees;
}

// "M0,0 L1,0 A(1,1 r1 -90 +90) Z": an arc by its centre, radius, begin and sweep in degrees.
std::string Text(const Path& path) {
  std::string s;
  for (const Path::Segment& segment : path.Segments()) {
    if (!s.empty()) s += ' ';
    switch (segment.step) {
      case Path::Step::move:
        s += "M" + Text(segment.to);
        break;
      case Path::Step::line:
        s += "L" + Text(segment.to);
        break;
      case Path::Step::close:
        s += "Z";
        break;
      case Path::Step::arc:
        s += "A(" + Text(segment.center) + " r" + Text(segment.radius) + " " + Direction(segment.from) + " " +
             (segment.sweep > 0 ? "+" : "") + Text(segment.sweep * 180 / kPi) + ")";
        break;
    }
  }
  return s;
}

class Notes : public Painter {
 public:
  Strings lines;
  std::vector<Colour> colours;

  void BeginGroup(const Group& group) override {
    lines.push_back("[" + std::string(group.layer) + "]");
    colours.push_back(group.colour);
  }
  void EndGroup() override {}
  void Fill(const Path& path, const Owner& owner, double dOpacity) override {
    Note("fill", path, owner, dOpacity < 1 ? " " + Text(dOpacity) : "");
  }
  void Hatch(const Path& path, const Owner& owner, double dPitch) override {
    Note("hatch", path, owner, " " + Text(dPitch));
  }
  void Stroke(const Path& path, const Owner& owner, const Pen& pen) override {
    std::string s = " " + Text(pen.width);
    if (pen.square) s += " square";
    if (pen.dash > 0) s += " dash " + Text(pen.dash) + "/" + Text(pen.blank);
    if (pen.opacity < 1) s += " " + Text(pen.opacity);
    Note("stroke", path, owner, s);
  }
  void Cut(const Path& path, const Owner& owner, double) override { Note("cut", path, owner, ""); }
  void Text(const TextLine& line, const Owner& owner) override {
    lines.push_back("text '" + std::string(line.text) + "' at " + cli::Text(line.place(Vec(0, 0))) + " to " +
                    cli::Text(line.place(Vec(line.Length(), line.glyphHeight))) + Of(owner));
  }

 private:
  static std::string Text(double d) { return cli::Text(d); }
  static std::string Of(const Owner& owner) {
    std::string s;
    if (!owner.reference.empty()) s += " of " + std::string(owner.reference);
    if (!owner.net.empty()) s += " in " + std::string(owner.net);
    return s;
  }
  void Note(const char* szWhat, const Path& path, const Owner& owner, const std::string& sMore) {
    lines.push_back(szWhat + sMore + ": " + cli::Text(path) + Of(owner));
  }
};

// ---- boards in memory ----

template <class Shape>
Shape* On(const char* szLayer, Shape* p, const char* szType = "nonConductive") {
  p->m_sLayerName = szLayer;
  p->m_sLayerType = szType;
  return p;
}
CBDvertexPt* Point(double x, double y, double dWidth = 0, double dTarc = 0) {
  auto* p = new CBDvertexPt;
  p->m_pt = {x, y};
  p->m_dWidth = dWidth;
  p->m_dTarc = dTarc;
  return p;
}
CBDvertexArc* Arc(CPointD begin, CPointD center, CPointD end, const char* szDirection, double dWidth = 0) {
  auto* p = new CBDvertexArc;
  p->m_ptBegin = begin;
  p->m_ptCenter = center;
  p->m_ptEnd = end;
  p->m_sDirection = szDirection;
  p->m_dBeginWidth = dWidth;
  return p;
}
template <class Shape>
Shape* With(Shape* p, std::initializer_list<CBDvertex*> vertices) {
  for (CBDvertex* pVertex : vertices) p->m_pVertices->Add(pVertex);
  return p;
}
CBDcircle* Circle(double x, double y, double dRadius) {
  auto* p = new CBDcircle;
  p->m_ptCenter = {x, y};
  p->m_dRadius = dRadius;
  return p;
}
CBDtext* Label(const char* sz, CPointD pt, const char* szJustify = "CE_C", double dAngle = 0,
               const char* szFlip = "NONE") {
  auto* p = new CBDtext;
  p->m_sString = sz;
  p->m_pt = pt;
  p->m_dWidth = 2;
  p->m_dHeight = 3;
  p->m_dSpace = 1;
  p->m_dVSpace = 1;
  p->m_sJustify = szJustify;
  p->m_dAngle = dAngle;
  p->m_sFlip = szFlip;
  return p;
}

struct Board {
  CBDesigner root;

  CBDtechnologyContainer& Technology() { return *root.m_pTechnology; }
  CBDdrawObjArray& Layout() { return *root.m_pBoardContainer->m_pDrawObjArray; }

  void AddFootprintLayer(const char* szName, const char* szType) {
    auto* p = new CBDfootprintLayer;
    Technology().m_pFootprintLayerArray->Add(p);
    p->m_sName = szName;
    p->m_sType = szType;
  }
  void AddMap(const char* szName, const std::vector<std::pair<const char*, std::vector<const char*>>>& rows) {
    auto* pMap = new CBDmap;
    Technology().m_pMapArray->Add(pMap);
    pMap->m_sName = szName;
    for (const auto& [szFootLayer, boardLayers] : rows) {
      auto* p = new CBDcorrespondence;
      pMap->m_pCorrespondenceArray->Add(p);
      p->m_sFootLayer = szFootLayer;
      for (const char* sz : boardLayers) p->m_aBoardLayers.Add(sz);
    }
  }
  // Four copper layers, a legend and resist on each side, an outline.
  void AddLayers() {
    AddFootprintLayer("Top", "CONDUCTIVE");
    AddFootprintLayer("Legend", "SYMBOL");
    AddFootprintLayer("Mask", "RESIST");
    AddFootprintLayer("Body", "COMPAREA");
    AddFootprintLayer("Inner", "CONDUCTIVE");
    AddFootprintLayer("Bottom", "CONDUCTIVE");
    AddFootprintLayer("Edge", "OUTLINE");
    AddFootprintLayer("Drill", "HOLE");
    for (int i = 1; i <= 4; ++i) {
      auto* p = new CBDcondLayer;
      Technology().m_pCondLayerArray->Add(p);
      p->m_nLayerNumber = i;
    }
    for (const char* sz : {"LegA", "LegB", "MaskA", "MaskB", "BodyA", "BodyB", "Contour"}) {
      auto* p = new CBDnonConductiveLayer;
      Technology().m_pNonConductiveLayerArray->Add(p);
      p->m_sName = sz;
    }
    AddMap("A",
           {{"Top", {"1"}}, {"Legend", {"LegA"}}, {"Mask", {"MaskA"}}, {"Body", {"BodyA"}}, {"Edge", {"Contour"}}});
    AddMap("B",
           {{"Top", {"4"}}, {"Legend", {"LegB"}}, {"Mask", {"MaskB"}}, {"Body", {"BodyB"}}, {"Edge", {"Contour"}}});
    AddMap("A_THRU", {{"Inner", {"2", "3", "2"}},
                      {"Inner", {"4"}},
                      {"Bottom", {"4"}},
                      {"Drill", {"HOLE"}},
                      {"FPADSTACK", {"PADSTACK"}}});
    AddMap("B_THRU", {{"Inner", {"2", "3"}}, {"Bottom", {"1"}}, {"Drill", {"HOLE"}}, {"FPADSTACK", {"PADSTACK"}}});
  }

  CBDpad& AddPad(const char* szName, CBDdrawObj* pShape) {
    auto* p = new CBDpad;
    root.m_pFootprintContainer->m_pPadArray->Add(p);
    p->m_sName = szName;
    p->m_pDrawObjArray->Add(pShape);
    return *p;
  }
  CBDpadstack& AddPadstack(const char* szName, double dHole = 0) {
    auto* p = new CBDpadstack;
    root.m_pFootprintContainer->m_pPadstackArray->Add(p);
    p->m_sName = szName;
    if (dHole > 0) {
      auto* pHole = new CBDhole;
      delete pHole->m_pShape;
      pHole->m_pShape = Circle(0, 0, dHole);
      p->m_pHole->m_pDrawObj = pHole;
    }
    return *p;
  }
  static CBDpadSet& AddSet(CBDpadstack& padstack, const char* szFootLayer, const char* szConnect) {
    auto* p = new CBDpadSet;
    padstack.m_pPadSetArray->Add(p);
    p->m_sFootLayer = szFootLayer;
    p->m_sConnect = szConnect;
    return *p;
  }
  CBDdrawPadstack& Place(const char* szPadstack, CPointD pt, double dAngle = 0) {
    auto* p = On("PADSTACK", new CBDdrawPadstack, "systemLayer");
    Layout().Add(p);
    p->m_sPadstackName = szPadstack;
    p->m_pt = pt;
    p->m_dAngle = dAngle;
    return *p;
  }
  static void AddEntry(CBDdrawPadstack& padstack, int nLayer, const char* szLayer, const char* szStatus, int bVisible) {
    auto* p = new CBDpadstackRefLay;
    padstack.m_pRefLays->Add(p);
    p->m_nLayerNumber = nLayer;
    p->m_sLayerName = szLayer;
    p->m_sStatus = szStatus;
    p->m_bVisible = bVisible;
  }
  CBDcomponent& AddComponent(const char* szReference, const char* szSide) {
    auto* p = new CBDcomponent;
    root.m_pBoardContainer->m_pComponentArray->Add(p);
    p->m_sReference = szReference;
    p->m_sPlacementSide = szSide;
    return *p;
  }

  Strings Draw(const Selection& selection = {}) {
    Scene scene(root, selection);
    scene.AddBoard();
    undefined = scene.CountUndefined();
    Notes notes;
    scene.Draw(notes, Motion(), 0.01);
    colours = notes.colours;
    return notes.lines;
  }
  std::size_t undefined = 0;
  std::vector<Colour> colours;
};

// One shape on a layer that the technology does not know.
Strings DrawOne(CBDdrawObj* pShape, const char* szType = "nonConductive") {
  Board board;
  board.Layout().Add(On("L", pShape, szType));
  Strings lines = board.Draw();
  if (!lines.empty()) lines.erase(lines.begin());  // the group
  return lines;
}

// ---- shapes ----

TEST(RenderShapes, EachKindIsDrawnAsItSays) {
  struct Row {
    const char* name;
    std::function<CBDdrawObj*()> make;
    Strings expected;
  };
  const Row rows[] = {
      {"circle", [] { return Circle(1, 2, 3); }, {"fill: M4,2 A(1,2 r3 0 +360) Z"}},
      {"donut, by its outer and inner size",
       [] {
         auto* p = new CBDdonut;
         p->m_pt = {1, 2};
         p->m_dOut = 6;
         p->m_dIn = 2;
         return p;
       },
       {"fill: M4,2 A(1,2 r3 0 +360) Z M2,2 A(1,2 r1 0 +360) Z"}},
      {"rectangle",
       [] {
         auto* p = new CBDrectangle;
         p->m_pt = {10, 20};
         p->m_dWidth = 4;
         p->m_dHeight = 2;
         return p;
       },
       {"fill: M8,19 L12,19 L12,21 L8,21 Z"}},
      {"rectangle, turned",
       [] {
         auto* p = new CBDrectangle;
         p->m_pt = {10, 20};
         p->m_dWidth = 4;
         p->m_dHeight = 2;
         p->m_dAngle = 90;
         p->m_dFillWidth = 0.1;
         p->m_dOutlineWidth = 0.2;
         return p;
       },
       {"fill: M11,18 L11,22 L9,22 L9,18 Z", "stroke 0.2: M11,18 L11,22 L9,22 L9,18 Z"}},
      {"rectangle with an outline width and no fill width: its outline",
       [] {
         auto* p = new CBDrectangle;
         p->m_dWidth = 4;
         p->m_dHeight = 2;
         p->m_dOutlineWidth = 0.2;
         return p;
       },
       {"stroke 0.2 square: M-2,-1 L2,-1 L2,1 L-2,1 Z"}},
      {"oval: its height is its length, along its angle",
       [] {
         auto* p = new CBDoval;
         p->m_pt = {10, 0};
         p->m_dWidth = 2;
         p->m_dHeight = 6;
         return p;
       },
       {"fill: M12,-1 A(12,0 r1 -90 +90) L13,0 A(12,0 r1 0 +90) L8,1 A(8,0 r1 90 +90) L7,0 A(8,0 r1 180 +90) Z"}},
      {"oval with equal sides",
       [] {
         auto* p = new CBDoval;
         p->m_dWidth = 2;
         p->m_dHeight = 2;
         return p;
       },
       {"fill: M1,0 A(0,0 r1 0 +360) Z"}},
      {"oblong",
       [] {
         auto* p = new CBDoblong;
         p->m_ptFirst = {1, 2};
         p->m_ptSecond = {3, 4};
         p->m_dWidth = 0.5;
         return p;
       },
       {"stroke 0.5: M1,2 L3,4"}},
      {"hole",
       [] {
         auto* p = new CBDhole;
         delete p->m_pShape;
         p->m_pShape = Circle(1, 2, 3);
         return p;
       },
       {"cut: M4,2 A(1,2 r3 0 +360) Z"}},
      {"hole with a radius below zero",
       [] {
         auto* p = new CBDhole;
         delete p->m_pShape;
         p->m_pShape = Circle(1, 2, -3);
         return p;
       },
       {"cut: M4,2 A(1,2 r3 0 +360) Z"}},
      {"hole of an oval",
       [] {
         auto* p = new CBDhole;
         delete p->m_pShape;
         auto* pInner = new CBDoval;
         pInner->m_dWidth = 2;
         pInner->m_dHeight = 6;
         p->m_pShape = pInner;
         return p;
       },
       {"cut: M2,-1 A(2,0 r1 -90 +90) L3,0 A(2,0 r1 0 +90) L-2,1 A(-2,0 r1 90 +90) L-3,0 A(-2,0 r1 180 +90) Z"}},
      {"hole without a shape", [] { return new CBDhole; }, {}},
      {"hole that holds another",
       [] {
         auto* p = new CBDhole;
         delete p->m_pShape;
         auto* pInner = new CBDsquareHole;
         pInner->m_dWidth = 4;
         pInner->m_dHeight = 2;
         p->m_pShape = pInner;
         return p;
       },
       {"cut: M-2,-1 L2,-1 L2,1 L-2,1 Z"}},
      {"oval hole, turned",
       [] {
         auto* p = new CBDovalHole;
         p->m_dWidth = 2;
         p->m_dHeight = 6;
         p->m_dAngle = 90;
         return p;
       },
       {"cut: M1,2 A(0,2 r1 0 +90) L0,3 A(0,2 r1 90 +90) L-1,-2 A(0,-2 r1 180 +90) L0,-3 A(0,-2 r1 -90 +90) Z"}},
      {"square hole with round corners",
       [] {
         auto* p = new CBDsquareHole;
         p->m_pt = {10, 10};
         p->m_dWidth = 4;
         p->m_dHeight = 4;
         p->m_dCorner = 1;
         return p;
       },
       {"cut: M11,8 A(11,9 r1 -90 +90) L12,11 A(11,11 r1 0 +90) L9,12 A(9,11 r1 90 +90) L8,9 A(9,9 r1 180 +90) Z"}},
      {"round thermal with two bridges: the ring between them, as hairlines",
       [] {
         auto* p = new CBDroundThermal;
         p->m_dIn = 2;
         p->m_dOut = 4;
         p->m_nBridge = 2;
         return p;
       },
       {"stroke 0.01: M2,0 A(0,0 r2 0 +180) L-1,0 A(0,0 r1 180 -180) Z M-2,0 A(0,0 r2 180 +180) L1,0 A(0,0 r1 0 -180) "
        "Z"}},
      {"round thermal without bridges",
       [] {
         auto* p = new CBDroundThermal;
         p->m_dIn = 2;
         p->m_dOut = 4;
         return p;
       },
       {"stroke 0.01: M1,0 A(0,0 r1 0 +360) Z M2,0 A(0,0 r2 0 +360) Z"}},
      {"round thermal whose bridges leave nothing",
       [] {
         auto* p = new CBDroundThermal;
         p->m_dIn = 2;
         p->m_dOut = 4;
         p->m_nBridge = 4;
         p->m_dBridgeWidth = 3;
         return p;
       },
       {}},
      {"square thermal",
       [] {
         auto* p = new CBDsquareThermal;
         p->m_pt = {10, 0};
         p->m_dIn = 2;
         p->m_dOut = 4;
         p->m_nBridge = 2;
         p->m_dBridgeAngle = 45;
         return p;
       },
       {"stroke 0.01: M9,-1 L11,-1 L11,1 L9,1 Z M8,-2 L12,-2 L12,2 L8,2 Z M11,1 L12,2 M9,-1 L8,-2"}},
      {"text, in the middle of its point",
       [] {
         return Label("AB", {10, 20});
       },
       {"text 'AB' at 7.5,18.5 to 12.5,21.5"}},
      {"symbol text",
       [] {
         auto* p = new CBDsymbolText;
         delete p->m_pText;
         p->m_pText = Label("U1", {10, 20});
         return p;
       },
       {"text 'U1' at 7.5,18.5 to 12.5,21.5"}},
      {"line of one point: a dot", [] { return With(new CBDline, {Point(1, 2, 0.5)}); }, {"stroke 0.5: M1,2 L1,2"}},
      {"line without points", [] { return new CBDline; }, {}},
      {"surface without points", [] { return new CBDsurface; }, {}},
      {"deleted shape", [] { return new CBDdelete; }, {}},
      {"sub-board", [] { return new CBDdrawSubBoard; }, {}},
      {"area by its tag", [] { return new CBDareaz; }, {}},
      {"plain shape", [] { return new CBDdrawObj; }, {}},
  };
  for (const Row& row : rows) EXPECT_EQ(DrawOne(row.make()), row.expected) << row.name;
}

TEST(RenderShapes, LinesHaveTheWidthsOfTheirVertices) {
  struct Row {
    const char* name;
    std::vector<CBDvertex*> vertices;
    Strings expected;
  };
  const Row rows[] = {
      {"one width", {Point(0, 0, 0.2), Point(1, 0, 0.2), Point(1, 1, 0.2)}, {"stroke 0.2: M0,0 L1,0 L1,1"}},
      {"a way has the width of its begin",
       {Point(0, 0, 0.2), Point(1, 0, 0.3), Point(1, 1, 0.2)},
       {"stroke 0.2: M0,0 L1,0", "stroke 0.3: M1,0 L1,1"}},
      {"or where that has none of its end",
       {Point(0, 0), Point(1, 0, 0.3), Point(2, 0, 0.3)},
       {"stroke 0.3: M0,0 L1,0 L2,0"}},
      {"no width: a hairline", {Point(0, 0), Point(1, 0)}, {"stroke 0.01: M0,0 L1,0"}},
      {"an arc counter-clockwise",
       {Point(0, 0, 0.2), Arc({0, 0}, {0, 1}, {1, 1}, "CCW", 0.2), Point(1, 2, 0.2)},
       {"stroke 0.2: M0,0 L0,0 A(0,1 r1 -90 +90) L1,2"}},
      {"an arc clockwise", {Arc({0, 0}, {0, 1}, {1, 1}, "CW", 0.2)}, {"stroke 0.2: M0,0 A(0,1 r1 -90 -270)"}},
      {"an arc of its own width, joined to what stands before it",
       {Point(0, 0, 0.2), Arc({1, 0}, {1, 1}, {2, 1}, "CCW", 0.5)},
       {"stroke 0.2: M0,0 L1,0", "stroke 0.5: M1,0 A(1,1 r1 -90 +90)"}},
      {"any other direction is counter-clockwise",
       {Arc({1, 0}, {0, 0}, {0, 1}, "", 0.2)},
       {"stroke 0.2: M1,0 A(0,0 r1 0 +90)"}},
      {"equal ends: a full turn", {Arc({1, 0}, {0, 0}, {1, 0}, "CW", 0.2)}, {"stroke 0.2: M1,0 A(0,0 r1 0 -360)"}},
      {"an end off the circle is joined",
       {Arc({1, 0}, {0, 0}, {0, 3}, "CCW", 0.2)},
       {"stroke 0.2: M1,0 A(0,0 r1 0 +90) L0,3"}},
      {"an arc without radius is a line", {Arc({1, 0}, {1, 0}, {0, 3}, "CCW", 0.2)}, {"stroke 0.2: M1,0 L0,3"}},
      {"a round corner",
       {Point(0, 0, 0.2), Point(4, 0, 0.2, 1), Point(4, 4, 0.2)},
       {"stroke 0.2: M0,0 L3,0 A(3,1 r1 -90 +90) L4,4"}},
      {"the ends of a line have no corner",
       {Point(0, 0, 0.2, 1), Point(4, 0, 0.2), Point(4, 4, 0.2, 1)},
       {"stroke 0.2: M0,0 L4,0 L4,4"}},
  };
  for (const Row& row : rows) {
    auto* pLine = new CBDline;
    for (CBDvertex* p : row.vertices) pLine->m_pVertices->Add(p);
    Strings expected = row.expected;
    // A way of no length before an arc that begins where the line stands is not drawn.
    for (std::string& s : expected) {
      if (const std::size_t n = s.find(" L0,0 A("); n != std::string::npos) s.erase(n, 5);
    }
    EXPECT_EQ(DrawOne(pLine), expected) << row.name;
  }
}

TEST(RenderShapes, PensAndDashes) {
  auto* pLine = With(new CBDline, {Point(0, 0, 0.2), Point(9, 0, 0.2)});
  pLine->m_sPenShape = "SQUARE";
  pLine->m_dDash = 1;
  pLine->m_dBlank = 0.5;
  EXPECT_EQ(DrawOne(pLine), (Strings{"stroke 0.2 square dash 1/0.5: M0,0 L9,0"}));
  pLine = With(new CBDline, {Point(0, 0, 0.2), Point(9, 0, 0.2)});
  pLine->m_dDash = 1e-9;  // would be dots without number
  EXPECT_EQ(DrawOne(pLine), (Strings{"stroke 0.2: M0,0 L9,0"}));
  pLine = With(new CBDline, {Point(0, 0, 0.2), Point(9, 0, 0.2)});
  pLine->m_dDash = 1;
  pLine->m_dBlank = -2;
  EXPECT_EQ(DrawOne(pLine), (Strings{"stroke 0.2: M0,0 L9,0"}));
}

TEST(RenderShapes, SurfacesAreFilledWithTheirCutOutsOpen) {
  const auto make = [] {
    auto* p = With(new CBDsurface, {Point(0, 0), Point(4, 0), Point(4, 4), Point(0, 4)});
    p->m_pOpenShapes->Add(With(new CBDopenShape, {Point(1, 1), Point(2, 1), Point(2, 2)}));
    return p;
  };
  const std::string sPath = "M0,0 L4,0 L4,4 L0,4 Z M1,1 L2,1 L2,2 Z";
  EXPECT_EQ(DrawOne(make()), (Strings{"fill: " + sPath}));
  auto* p = make();
  p->m_dOutlineWidth = 0.3;
  EXPECT_EQ(DrawOne(p), (Strings{"fill: " + sPath, "stroke 0.3: " + sPath}));
  // Copper areas of the layout let what lies below show.
  p = make();
  p->m_dOutlineWidth = 0.3;
  EXPECT_EQ(DrawOne(p, "conductive"), (Strings{"fill 0.35: " + sPath, "stroke 0.3 0.35: " + sPath}));
  p = make();
  p->m_bMesh = 1;
  p->m_dMeshPitch = 0.5;
  EXPECT_EQ(DrawOne(p, "conductive"), (Strings{"hatch 0.5: " + sPath, "stroke 0.01 0.35: " + sPath}));
  p = make();
  p->m_bMesh = 1;
  p->m_dMeshPitch = 1e-9;
  EXPECT_EQ(DrawOne(p)[0], "hatch 0.06: " + sPath);
  p = make();
  p->m_bMesh = 1;
  EXPECT_EQ(DrawOne(p)[0], "hatch 0.2: " + sPath);
}

TEST(RenderShapes, OutlinesCloseAndRoundTheirCorners) {
  struct Row {
    const char* name;
    std::vector<CBDvertex*> vertices;
    const char* expected;
  };
  const Row rows[] = {
      {"all corners",
       {Point(0, 0, 0, 1), Point(4, 0, 0, 1), Point(4, 4, 0, 1), Point(0, 4, 0, 1)},
       "M0,1 A(1,1 r1 180 +90) L3,0 A(3,1 r1 -90 +90) L4,3 A(3,3 r1 0 +90) L1,4 A(1,3 r1 90 +90) Z"},
      {"the other way round",
       {Point(0, 4, 0, 1), Point(4, 4), Point(4, 0), Point(0, 0)},
       "M0,3 A(1,3 r1 180 -90) L4,4 L4,0 L0,0 Z"},
      {"a radius that two corners share the leg for",
       {Point(0, 0, 0, 5), Point(4, 0, 0, 5), Point(4, 4, 0, 5), Point(0, 4, 0, 5)},
       "M0,2 A(2,2 r2 180 +90) L2,0 A(2,2 r2 -90 +90) L4,2 A(2,2 r2 0 +90) L2,4 A(2,2 r2 90 +90) Z"},
      {"a negative radius counts as positive",
       {Point(0, 0, 0, -1), Point(4, 0), Point(0, 4)},
       "M0,1 A(1,1 r1 180 +90) L4,0 L0,4 Z"},
      {"a straight corner stays", {Point(0, 0), Point(2, 0, 0, 1), Point(4, 0), Point(4, 4)}, "M0,0 L2,0 L4,0 L4,4 Z"},
      {"a corner on its neighbour stays", {Point(0, 0), Point(0, 0, 0, 1), Point(4, 4)}, "M0,0 L0,0 L4,4 Z"},
      {"two arcs",
       {Arc({-1, 0}, {0, 0}, {1, 0}, "CW"), Arc({1, 0}, {0, 0}, {-1, 0}, "CW")},
       "M-1,0 A(0,0 r1 180 -180) A(0,0 r1 0 -180) Z"},
  };
  for (const Row& row : rows) {
    auto* p = new CBDsurface;
    for (CBDvertex* pVertex : row.vertices) p->m_pVertices->Add(pVertex);
    EXPECT_EQ(DrawOne(p), Strings{std::string("fill: ") + row.expected}) << row.name;
  }
}

TEST(RenderShapes, TextsStandAsTheyAreJustified) {
  struct Row {
    const char* name;
    std::function<CBDdrawObj*()> make;
    Strings expected;
  };
  const Row rows[] = {
      {"low left",
       [] {
         return Label("AB", {10, 20}, "LO_L");
       },
       {"text 'AB' at 10,20 to 15,23"}},
      {"up right",
       [] {
         return Label("AB", {10, 20}, "UP_R");
       },
       {"text 'AB' at 5,17 to 10,20"}},
      {"turned",
       [] {
         return Label("AB", {10, 20}, "LO_L", 90);
       },
       {"text 'AB' at 10,20 to 7,25"}},
      {"mirrored",
       [] {
         return Label("AB", {10, 20}, "LO_L", 0, "X");
       },
       {"text 'AB' at 10,20 to 5,23"}},
      {"upside down",
       [] {
         return Label("AB", {10, 20}, "LO_L", 0, "Y");
       },
       {"text 'AB' at 10,20 to 15,17"}},
      {"lines",
       [] {
         return Label("AB\r\nC", {10, 20}, "LO_L");
       },
       {"text 'AB' at 10,24 to 15,27", "text 'C' at 10,20 to 12,23"}},
      {"an empty line takes its place",
       [] {
         return Label("A\n\nC", {0, 0}, "LO_L");
       },
       {"text 'A' at 0,8 to 2,11", "text 'C' at 0,0 to 2,3"}},
      {"Shift-JIS",
       [] {
         return Label("\x95\x5c", {0, 0}, "LO_L");
       },
       {"text '\xE8\xA1\xA8' at 0,0 to 2,3"}},
      {"nothing",
       [] {
         return Label("", {0, 0});
       },
       {}},
      {"without height",
       [] {
         CBDtext* p = Label("A", {0, 0});
         p->m_dHeight = 0;
         return p;
       },
       {}},
  };
  for (const Row& row : rows) EXPECT_EQ(DrawOne(row.make()), row.expected) << row.name;
}

TEST(RenderShapes, WhatIsNotFiniteIsLeftOut) {
  const double dInfinity = HUGE_VAL;
  EXPECT_EQ(DrawOne(Circle(NAN, 0, 1)), Strings{});
  EXPECT_EQ(DrawOne(Circle(0, 0, dInfinity)), Strings{});
  EXPECT_EQ(DrawOne(With(new CBDline, {Point(0, 0), Point(dInfinity, 0)})), Strings{});
  EXPECT_EQ(DrawOne(With(new CBDsurface, {Point(0, 0), Point(1, NAN), Point(1, 1)})), Strings{});
  EXPECT_EQ(DrawOne(Label("A", {NAN, 0})), Strings{});
  EXPECT_EQ(DrawOne(With(new CBDline, {Point(0, 0, NAN), Point(1, 0, NAN)})), Strings{"stroke 0.01: M0,0 L1,0"})
      << "a width is made a hairline";
}

// ---- layers ----

TEST(RenderLayers, AreFoundInTheTechnologyWithTheirPlaces) {
  Board board;
  board.AddLayers();
  BoardLayers layers(board.Technology());
  struct Row {
    const char* name;
    LayerPlace place;
    const char* type;
  };
  const Row rows[] = {
      {"1", LayerPlace::sideA, "CONDUCTIVE"},     {"2", LayerPlace::inside, "CONDUCTIVE"},
      {"4", LayerPlace::sideB, "CONDUCTIVE"},     {"LegA", LayerPlace::sideA, "SYMBOL"},
      {"LegB", LayerPlace::sideB, "SYMBOL"},      {"MaskB", LayerPlace::sideB, "RESIST"},
      {"Contour", LayerPlace::common, "OUTLINE"}, {"HOLE", LayerPlace::common, ""},
  };
  for (const Row& row : rows) {
    const int n = layers.Find(row.name);
    ASSERT_GE(n, 0) << row.name;
    EXPECT_EQ(layers[static_cast<std::size_t>(n)].place, row.place) << row.name;
    EXPECT_EQ(layers[static_cast<std::size_t>(n)].type, row.type) << row.name;
  }
  EXPECT_EQ(layers.Find("5"), -1);
  const auto landing = [&layers](const char* szFootLayer, const char* szSide) {
    Strings names;
    for (const std::size_t n : layers.LandsOn(szFootLayer, szSide)) names.push_back(layers[n].name);
    return names;
  };
  EXPECT_EQ(landing("Top", "A"), Strings{"1"});
  EXPECT_EQ(landing("Top", "B"), Strings{"4"});
  for (const char* sz : {"A", "B"}) EXPECT_EQ(landing("Inner", sz), (Strings{"2", "3"})) << sz;
  EXPECT_EQ(landing("Bottom", "B"), Strings{"1"});
  EXPECT_EQ(landing("Unknown", "A"), Strings{});
  board.AddMap("A", {{"Top", {"9"}}});
  board.AddMap("A_THRU", {{"Never", {"9"}}});
  EXPECT_EQ(landing("Never", "A"), Strings{}) << "the first map of a name counts";
}

TEST(RenderLayers, WithLayersOfBothSidesInOneMapTheFirstIsThatOfTheSide) {
  Board board;
  board.AddMap("A", {{"SilkTop", {"Silk-A"}}, {"SilkBottom", {"Silk-B"}}});
  board.AddMap("B", {{"SilkTop", {"Silk-B"}}, {"SilkBottom", {"Silk-A"}}});
  board.Layout().Add(On("Silk-A", Circle(0, 0, 1)));
  board.Layout().Add(On("Silk-B", Circle(0, 0, 1)));
  for (const char* sz : {"Silk-A", "Silk-B"}) {
    auto* p = new CBDnonConductiveLayer;
    board.Technology().m_pNonConductiveLayerArray->Add(p);
    p->m_sName = sz;
  }
  EXPECT_EQ(board.Draw({.layers = {}, .side = View::sideA})[0], "[Silk-A]");
  EXPECT_EQ(board.Draw({.layers = {}, .side = View::sideB})[0], "[Silk-B]");
}

Strings Groups(const Strings& lines) {
  Strings groups;
  for (const std::string& s : lines) {
    if (s.front() == '[') groups.push_back(s.substr(1, s.size() - 2));
  }
  return groups;
}

TEST(RenderLayers, AreDrawnFromTheBackToTheFrontEachInAColourOfItsOwn) {
  Board board;
  board.AddLayers();
  for (const char* sz : {"Contour", "LegA", "MaskA", "BodyA", "LegB", "MaskB", "Notes", "Remarks", "More"}) {
    board.Layout().Add(On(sz, Circle(0, 0, 1)));
  }
  for (const char* sz : {"1", "2", "3", "4"}) board.Layout().Add(On(sz, Circle(0, 0, 1), "conductive"));
  board.Layout().Add(On("LegA", Circle(0, 0, 1)));  // a second run of a layer joins the first
  auto* pHole = On("HOLE", new CBDsquareHole, "systemLayer");
  pHole->m_dWidth = pHole->m_dHeight = 1;
  board.Layout().Add(pHole);
  EXPECT_EQ(Groups(board.Draw()), (Strings{"MaskB", "LegB", "4", "3", "2", "MaskA", "1", "More", "Remarks", "Notes",
                                           "BodyA", "LegA", "Contour", "HOLE"}));
  for (std::size_t i = 0; i < board.colours.size(); ++i) {
    for (std::size_t k = 0; k < i; ++k) EXPECT_NE(board.colours[i], board.colours[k]) << i << " " << k;
  }
  EXPECT_EQ(Groups(board.Draw({.layers = {}, .side = View::sideA})),
            (Strings{"MaskA", "1", "More", "Remarks", "Notes", "BodyA", "LegA", "Contour", "HOLE"}));
  EXPECT_EQ(Groups(board.Draw({.layers = {}, .side = View::sideB})),
            (Strings{"MaskB", "4", "More", "Remarks", "Notes", "LegB", "Contour", "HOLE"}));
  EXPECT_EQ(Groups(board.Draw({.layers = {"LegA", "3"}, .side = {}})), (Strings{"3", "LegA"}));
  EXPECT_EQ(Groups(board.Draw({.layers = {"1", "3"}, .side = View::sideB})), (Strings{"1", "3"}));
}

TEST(RenderLayers, NumbersMayBeAsLargeAsTheyCan) {
  Board board;
  for (const char* sz : {"-2147483648", "1", "2147483647"}) board.Layout().Add(On(sz, Circle(0, 0, 1), "conductive"));
  EXPECT_EQ(Groups(board.Draw({.layers = {}, .side = {}})), (Strings{"2147483647", "1", "-2147483648"}));
}

TEST(RenderLayers, AnyNumberOfThemHaveColoursOfTheirOwn) {
  Board board;
  for (int i = 0; i < 5000; ++i) board.Layout().Add(On(("L" + std::to_string(i)).c_str(), Circle(0, 0, 1)));
  for (int i = 1; i < 30; ++i) board.Layout().Add(On(std::to_string(i).c_str(), Circle(0, 0, 1), "conductive"));
  board.Draw();
  ASSERT_EQ(board.colours.size(), 5029u);
  std::set<std::tuple<int, int, int>> seen{{kGround.red, kGround.green, kGround.blue}};
  for (const Colour& colour : board.colours) {
    EXPECT_TRUE(seen.emplace(colour.red, colour.green, colour.blue).second)
        << int{colour.red} << " " << int{colour.green} << " " << int{colour.blue};
  }
}

TEST(RenderPainters, HatchingIsNotDashedByALineBeforeIt) {
  const auto draw = [](bool bLineFirst) {
    std::string sPicture;
    const auto pPainter = MakePngPainter({.width = 20, .height = 10, .ground = kGround}, 200,
                                         [&sPicture](std::string_view s) { sPicture += s; });
    Path line;
    line.Move({11, 5});
    line.Line({19, 5});
    Path square;
    square.Move({1, 1});
    for (const Vec pt : {Vec{9, 1}, Vec{9, 9}, Vec{1, 9}}) square.Line(pt);
    square.Close();
    pPainter->BeginGroup({.layer = "1", .colour = {255, 255, 255}});
    if (bLineFirst) pPainter->Stroke(line, {}, {.width = 0.5, .dash = 1, .blank = 2});
    pPainter->Hatch(square, {}, 1);
    if (!bLineFirst) pPainter->Stroke(line, {}, {.width = 0.5, .dash = 1, .blank = 2});
    pPainter->EndGroup();
    pPainter->Finish();
    return sPicture;
  };
  EXPECT_TRUE(draw(false) == draw(true));
}

// Points of a picture of 10 x 10 mm, 20 of them to the mm.
TEST(RenderPainters, PointsOfAPng) {
  std::string sPicture;
  const auto pPainter = MakePngPainter({.width = 10, .height = 10, .ground = {0, 0, 0}}, 200,
                                       [&sPicture](std::string_view s) { sPicture += s; });
  const auto square = [](Path& path, double x, double y, double dSize) {
    path.Move({x, y});
    for (const Vec pt : {Vec(x + dSize, y), Vec(x + dSize, y + dSize), Vec(x, y + dSize)}) path.Line(pt);
    path.Close();
  };
  const auto line = [](Vec from, Vec to) {
    Path path;
    path.Move(from);
    path.Line(to);
    return path;
  };
  Path frame;
  square(frame, 1, 1, 3);
  square(frame, 2, 2, 1);
  Path disc;
  disc.Circle({7, 2.5}, 1.2);
  Path hole;
  hole.Circle({7, 2.5}, 0.5);
  Path mesh;
  square(mesh, 6, 6.5, 3);
  pPainter->BeginGroup({.layer = "1", .colour = {200, 100, 50}});
  pPainter->Fill(frame, {}, 1);
  pPainter->Stroke(line({1, 5}, {5, 5}), {}, {.width = 0.5, .dash = 1, .blank = 2});
  pPainter->Stroke(line({1, 7}, {3, 7}), {}, {.width = 1});
  pPainter->Stroke(line({1, 9}, {3, 9}), {}, {.width = 1, .square = true});
  pPainter->Fill(disc, {}, 1);
  pPainter->Cut(hole, {}, 0.1);
  Path bareHole;
  bareHole.Circle({7, 5.2}, 0.5);
  pPainter->Cut(bareHole, {}, 0.2);
  pPainter->Hatch(mesh, {}, 1);
  pPainter->EndGroup();
  // What lies twice in one group is no denser for it; within a group each shape has its own opacity.
  Path overlap;
  square(overlap, 8, 0.2, 0.6);
  Path pale;
  square(pale, 9, 0.2, 0.6);
  pPainter->BeginGroup({.layer = "2", .colour = {200, 100, 50}, .opacity = 0.5});
  pPainter->Fill(overlap, {}, 1);
  pPainter->Fill(overlap, {}, 1);
  pPainter->EndGroup();
  pPainter->BeginGroup({.layer = "3", .colour = {200, 100, 50}});
  pPainter->Fill(pale, {}, 0.25);
  pPainter->EndGroup();
  pPainter->Finish();

  const PngPicture picture(sPicture);
  ASSERT_EQ(picture.width, 200);
  ASSERT_EQ(picture.height, 200);
  struct Row {
    const char* name;
    Vec at;
    double share;  // of the colour
  };
  const Row rows[] = {
      {"ground", {0.5, 0.5}, 0},
      {"a fill", {1.5, 1.5}, 1},
      {"inside a second outline", {2.5, 2.5}, 0},
      {"a dash", {1.5, 5}, 1},
      {"a blank", {3, 5}, 0},
      {"the next dash", {4.5, 5}, 1},
      {"beyond the round end of a line", {0.6, 6.6}, 0},
      {"its round end", {0.6, 7}, 1},
      {"the corner of a square end", {0.6, 8.6}, 1},
      {"a disc", {7.9, 2.5}, 1},
      {"a hole in it", {7, 2.5}, 0},
      {"the rim of a hole", {7.5, 5.2}, 1},
      {"a hole in nothing", {7.2, 5.2}, 0},
      {"a line of the hatching", {7.78, 7.78}, 1},
      {"along it, up to the right", {8.28, 7.28}, 1},
      {"between two", {8.13, 8.13}, 0},
      {"outside of what is hatched", {5.7, 9.86}, 0},
      {"twice in a pale group", {8.3, 0.5}, 0.5},
      {"a pale shape", {9.3, 0.5}, 0.25},
  };
  for (const Row& row : rows) {
    const auto point = picture.At(static_cast<int>(row.at.x * 20), static_cast<int>(row.at.y * 20));
    EXPECT_NEAR(point[0], 200 * row.share, 2) << row.name;
    EXPECT_NEAR(point[1], 100 * row.share, 2) << row.name;
    EXPECT_NEAR(point[2], 50 * row.share, 2) << row.name;
  }
}

TEST(RenderLayers, ComponentsAndGroupsDrawOnThemToo) {
  Board board;
  board.AddLayers();
  CBDcomponent& component = board.AddComponent("U1", "A");
  component.m_pDrawObjArray->Add(On("LegA", Circle(0, 0, 1)));
  component.m_pDrawObjArray->Add(On("", Circle(0, 0, 2)));  // landed nowhere
  component.m_pDrawObjArray->Add(On("BodyA", With(new CBDsurface, {Point(0, 0), Point(1, 0), Point(1, 1)})));
  auto* pGroup = new CBDcompGroup;
  board.root.m_pBoardContainer->m_pCompGroupArray->Add(pGroup);
  pGroup->m_pDrawObjArray->Add(On("LegA", Circle(0, 0, 3)));
  board.Layout().Add(On("", Circle(0, 0, 4)));
  board.root.m_pBoardContainer->m_pComponentArray->Add(nullptr);
  board.Layout().Add(nullptr);
  EXPECT_EQ(board.Draw(), (Strings{"[]", "fill: M4,0 A(0,0 r4 0 +360) Z",             //
                                   "[BodyA]", "stroke 0.01: M0,0 L1,0 L1,1 Z of U1",  //
                                   "[LegA]", "fill: M3,0 A(0,0 r3 0 +360) Z",         //
                                   "fill: M1,0 A(0,0 r1 0 +360) Z of U1"}));
}

// ---- pads ----

struct RenderPads : testing::Test {
  Board board;
  RenderPads() {
    board.AddLayers();
    // A pad that shows how it is turned and mirrored.
    board.AddPad("FLAG", With(new CBDsurface, {Point(0, 0), Point(2, 0), Point(2, 1)}));
    board.AddPad("ROUND", Circle(0, 0, 1));
    board.AddPad("SMALL", Circle(0, 0, 0.5));
    auto* pThermal = new CBDroundThermal;
    pThermal->m_dIn = 2;
    pThermal->m_dOut = 4;
    board.AddPad("THERMAL", pThermal);
    auto* pFrame = new CBDrectangle;
    pFrame->m_dWidth = pFrame->m_dHeight = 2;
    pFrame->m_dOutlineWidth = 0.2;
    board.AddPad("FRAME", pFrame);
    CBDpadstack& flat = board.AddPadstack("FLAT");
    Board::AddSet(flat, "Top", "FLAG");
    Board::AddSet(flat, "Mask", "ROUND");
    CBDpadstack& through = board.AddPadstack("THROUGH", 0.25);
    for (const char* sz : {"Top", "Inner", "Bottom"}) {
      CBDpadSet& set = Board::AddSet(through, sz, "ROUND");
      set.m_sNoConnect = "SMALL";
      set.m_sThermal = "THERMAL";
    }
  }
  const std::string kRound = "M1,0 A(0,0 r1 0 +360) Z";
  const std::string kSmall = "M0.5,0 A(0,0 r0.5 0 +360) Z";
  const std::string kHole = "M0.25,0 A(0,0 r0.25 0 +360) Z";
};

TEST_F(RenderPads, PadstacksAreDrawnThroughTheirDefinitions) {
  struct Row {
    const char* name;
    double angle;
    const char* side;
    const char* flip;
    Strings expected;
  };
  const Row rows[] = {
      {"as it is", 0, "A", "", {"[MaskA]", "fill: M11,20 A(10,20 r1 0 +360) Z", "[1]", "fill: M10,20 L12,20 L12,21 Z"}},
      {"turned", 90, "A", "", {"[MaskA]", "fill: M10,21 A(10,20 r1 90 +360) Z", "[1]", "fill: M10,20 L10,22 L9,22 Z"}},
      {"on the back, mirrored",
       0,
       "B",
       "X",
       {"[MaskB]", "fill: M9,20 A(10,20 r1 180 -360) Z", "[4]", "fill: M10,20 L8,20 L8,21 Z"}},
      {"on the back, mirrored, then turned",
       90,
       "B",
       "X",
       {"[MaskB]", "fill: M10,19 A(10,20 r1 -90 -360) Z", "[4]", "fill: M10,20 L10,18 L9,18 Z"}},
      {"a back side is mirrored without being told",
       0,
       "B",
       "",
       {"[MaskB]", "fill: M9,20 A(10,20 r1 180 -360) Z", "[4]", "fill: M10,20 L8,20 L8,21 Z"}},
      {"but not against being told",
       0,
       "B",
       "NONE",
       {"[MaskB]", "fill: M11,20 A(10,20 r1 0 +360) Z", "[4]", "fill: M10,20 L12,20 L12,21 Z"}},
      {"flipped about the other axis",
       0,
       "A",
       "Y",
       {"[MaskA]", "fill: M11,20 A(10,20 r1 0 -360) Z", "[1]", "fill: M10,20 L12,20 L12,19 Z"}},
      {"any other side is that of the board's front",
       0,
       "BOTH_SIDES",
       "",
       {"[MaskA]", "fill: M11,20 A(10,20 r1 0 +360) Z", "[1]", "fill: M10,20 L12,20 L12,21 Z"}},
  };
  for (const Row& row : rows) {
    board.Layout().DeleteAll();
    CBDdrawPadstack& padstack = board.Place("FLAT", {10, 20}, row.angle);
    padstack.m_sSide = row.side;
    padstack.m_sFlip = row.flip;
    EXPECT_EQ(board.Draw(), row.expected) << row.name;
    EXPECT_EQ(board.undefined, 0u);
  }
}

TEST_F(RenderPads, AThroughPadstackHasAPadOnEachLayerAndAHole) {
  board.Place("THROUGH", {0, 0}).m_sNet = "GND";
  EXPECT_EQ(board.Draw(), (Strings{"[4]", "fill: " + kRound + " in GND", "[3]", "fill: " + kRound + " in GND", "[2]",
                                   "fill: " + kRound + " in GND", "[1]", "fill: " + kRound + " in GND", "[HOLE]",
                                   "cut: " + kHole + " in GND"}));
  // Its hole is drawn with any of its copper, and by its own layer.
  EXPECT_EQ(Groups(board.Draw({.layers = {"2"}, .side = {}})), (Strings{"2", "HOLE"}));
  EXPECT_EQ(Groups(board.Draw({.layers = {"LegA"}, .side = {}})), Strings{});
  EXPECT_EQ(Groups(board.Draw({.layers = {"HOLE"}, .side = {}})), Strings{"HOLE"});
}

TEST_F(RenderPads, TheStateOnALayerChoosesThePad) {
  CBDdrawPadstack& padstack = board.Place("THROUGH", {0, 0});
  Board::AddEntry(padstack, 1, "", "CONNECT", 1);
  Board::AddEntry(padstack, 2, "", "NOCONNECT", 1);
  Board::AddEntry(padstack, 3, "", "THERMAL", 1);
  Board::AddEntry(padstack, 4, "", "CONNECT", 0);
  EXPECT_EQ(board.Draw(), (Strings{"[3]", "fill: " + kRound,  //
                                   "stroke 0.01: M1,0 A(0,0 r1 0 +360) Z M2,0 A(0,0 r2 0 +360) Z", "[2]",
                                   "fill: " + kSmall, "[1]", "fill: " + kRound, "[HOLE]", "cut: " + kHole}));
}

TEST_F(RenderPads, WithoutAPadForNoConnectionTheUsualOneIsDrawn) {
  CBDdrawPadstack& padstack = board.Place("FLAT", {0, 0});
  Board::AddEntry(padstack, 1, "", "NOCONNECT", 1);
  Board::AddEntry(padstack, 0, "MaskA", "", 0);
  EXPECT_EQ(board.Draw(), (Strings{"[1]", "fill: M0,0 L2,0 L2,1 Z"}));
}

TEST_F(RenderPads, ASpanLimitsTheCopper) {
  struct Row {
    int from;
    int to;
    Strings expected;
  };
  const Row rows[] = {{0, 0, {"4", "3", "2", "1", "HOLE"}},
                      {1, 2, {"2", "1", "HOLE"}},
                      {3, 2, {"3", "2", "HOLE"}},
                      {0, 3, {"3", "HOLE"}},
                      {4, 0, {"4", "HOLE"}}};
  for (const Row& row : rows) {
    board.Layout().DeleteAll();
    CBDdrawPadstack& padstack = board.Place("THROUGH", {0, 0});
    padstack.m_nFrom = row.from;
    padstack.m_nTo = row.to;
    EXPECT_EQ(Groups(board.Draw()), row.expected) << row.from << " " << row.to;
  }
}

TEST_F(RenderPads, ShapesOfItsOwnStandOnTheirLayersWhereTheyAre) {
  CBDdrawPadstack& padstack = board.Place("FLAT", {10, 20}, 90);
  auto* pCopper = On("PADSTACK", Circle(1, 2, 3));
  pCopper->m_sSection = "conductive";
  pCopper->m_nLayerNumber = 2;
  padstack.m_pShapes->Add(pCopper);
  auto* pOther = On("MaskB", Circle(4, 5, 6));
  pOther->m_sSection = "nonConductive";
  padstack.m_pShapes->Add(pOther);
  padstack.m_pShapes->Add(nullptr);
  const Strings lines = board.Draw();
  EXPECT_EQ(lines[0], "[MaskB]");
  EXPECT_EQ(lines[1], "fill: M10,5 A(4,5 r6 0 +360) Z");
  EXPECT_EQ(lines[2], "[2]");
  EXPECT_EQ(lines[3], "fill: M4,2 A(1,2 r3 0 +360) Z");
}

TEST_F(RenderPads, PadsAreDrawnOnTheLayerThatTheyStandOn) {
  auto* pPad = On("MaskA", new CBDdrawPad);
  pPad->m_sPadName = "FLAG";
  pPad->m_pt = {10, 20};
  pPad->m_dAngle = 90;
  board.Layout().Add(pPad);
  CBDcomponent& component = board.AddComponent("U1", "B");
  auto* pBack = On("LegB", new CBDdrawPad);
  pBack->m_sPadName = "FLAG";
  component.m_pDrawObjArray->Add(pBack);
  EXPECT_EQ(board.Draw(),
            (Strings{"[LegB]", "fill: M0,0 L-2,0 L-2,1 Z of U1", "[MaskA]", "fill: M10,20 L10,22 L9,22 Z"}));
  pPad->m_pShapes->Add(Circle(1, 2, 3));
  EXPECT_EQ(board.Draw()[3], "fill: M4,2 A(1,2 r3 0 +360) Z") << "shapes of its own count in place of the library's";
}

TEST_F(RenderPads, APadIsFilledWhateverItsOutline) {
  auto* pPad = On("1", new CBDdrawPad, "conductive");
  pPad->m_sPadName = "FRAME";
  board.Layout().Add(pPad);
  EXPECT_EQ(board.Draw(), (Strings{"[1]", "fill: M-1,-1 L1,-1 L1,1 L-1,1 Z", "stroke 0.2: M-1,-1 L1,-1 L1,1 L-1,1 Z"}));
}

TEST_F(RenderPads, WithoutADefinitionARingStandsForThem) {
  board.Place("UNKNOWN", {1, 2});
  auto* pPad = On("LegA", new CBDdrawPad);
  pPad->m_sPadName = "UNKNOWN";
  board.Layout().Add(pPad);
  EXPECT_EQ(board.Draw(), (Strings{"[PADSTACK]", "stroke 0.01: M1.04,2 A(1,2 r0.04 0 +360) Z", "[LegA]",
                                   "stroke 0.01: M0.04,0 A(0,0 r0.04 0 +360) Z"}));
  EXPECT_EQ(board.undefined, 2u);
}

TEST_F(RenderPads, ADefinitionThatLacksSomethingIsToldOf) {
  struct Row {
    const char* name;
    const char* footLayer;  // of the padstack's one pad
    const char* pad;
    double hole;
    Selection selection;
    Strings expected;
    std::size_t undefined;
  };
  const std::string kRing = "stroke 0.01: M0.04,0 A(0,0 r0.04 0 +360) Z";
  const Row rows[] = {
      {"a pad that the library lacks", "Top", "NONE", 0, {}, {"[1]", kRing}, 1},
      {"one on two layers counts once", "Inner", "NONE", 0, {}, {"[3]", kRing, "[2]", kRing}, 1},
      {"on a layer that is not drawn it does not count", "Top", "NONE", 0, {{"LegA"}, {}}, {}, 0},
      {"no pad is none to miss", "Top", "", 0, {}, {}, 0},
      {"pads on no layer of the board", "Elsewhere", "ROUND", 0, {}, {"[PADSTACK]", kRing}, 1},
      {"a hole alone is something", "Elsewhere", "ROUND", 0.25, {}, {"[HOLE]", "cut: " + kHole}, 0},
  };
  int n = 0;
  for (const Row& row : rows) {
    const std::string sName = "GAP" + std::to_string(n++);
    Board::AddSet(board.AddPadstack(sName.c_str(), row.hole), row.footLayer, row.pad);
    board.Layout().DeleteAll();
    board.Place(sName.c_str(), {0, 0});
    EXPECT_EQ(board.Draw(row.selection), row.expected) << row.name;
    EXPECT_EQ(board.undefined, row.undefined) << row.name;
  }
}

TEST_F(RenderPads, WhatAPinPlacesOnSeveralLayersCountsOnce) {
  CBDcomponent& component = board.AddComponent("U1", "A");
  auto* pPin = new CBDpin;
  component.m_pPinArray->Add(pPin);
  auto* pPad = On("Inner", new CBDdrawPad);
  pPad->m_sPadName = "UNKNOWN";
  pPin->m_pDrawObjArray->Add(pPad);
  auto* pPadstack = On("Inner", new CBDdrawPadstack);
  pPadstack->m_sPadstackName = "FLAT";
  pPin->m_pDrawObjArray->Add(pPadstack);
  const std::string kRing = "stroke 0.01: M0.04,0 A(0,0 r0.04 0 +360) Z of U1";
  EXPECT_EQ(board.Draw(), (Strings{"[3]", kRing, "[2]", kRing, "[MaskA]", "fill: " + kRound + " of U1", "[1]",
                                   "fill: M0,0 L2,0 L2,1 Z of U1"}));
  EXPECT_EQ(board.undefined, 1u);
}

TEST_F(RenderPads, PinsOfAPlacedComponentStillBearTheLayersOfTheFootprint) {
  CBDcomponent& component = board.AddComponent("U1", "B");
  auto* pPin = new CBDpin;
  component.m_pPinArray->Add(pPin);
  pPin->m_pDrawObjArray->Add(On("Legend", Circle(0, 0, 1), ""));
  auto* pPadstack = On("FPADSTACK", new CBDdrawPadstack, "");
  pPadstack->m_sPadstackName = "FLAT";
  pPin->m_pDrawObjArray->Add(pPadstack);
  EXPECT_EQ(board.Draw(), (Strings{"[MaskB]", "fill: M-1,0 A(0,0 r1 180 -360) Z of U1", "[LegB]",
                                   "fill: M1,0 A(0,0 r1 0 +360) Z of U1", "[4]", "fill: M0,0 L-2,0 L-2,1 Z of U1"}));
}

// ---- the sheet ----

std::string Svg(const Scene& scene, const Box& frame) {
  std::string s;
  DrawPicture(scene, frame, {}, [&s](std::string_view piece) { s += piece; });
  return s;
}
Box Frame(double x0, double y0, double x1, double y1) {
  Box box;
  box.Add({x0, y0});
  box.Add({x1, y1});
  return box;
}

TEST(RenderPicture, IsFramedWithAMarginAndAScaleBelow) {
  Board board;
  board.Layout().Add(On("L", Circle(10, 20, 1)));
  for (const View view : {View::sideA, View::sideB}) {
    Scene scene(board.root, {.layers = {}, .side = view});
    scene.AddBoard();
    const std::string s = Svg(scene, Frame(0, 0, 100, 50));
    // 100 x 50, 3 on each side, 5 for the scale.
    EXPECT_NE(s.find("width=\"106mm\" height=\"61mm\" viewBox=\"0 0 106 61\""), std::string::npos) << s;
    EXPECT_NE(
        s.find(view == View::sideA ? "<circle cx=\"13\" cy=\"33\" r=\"1\"/>" : "<circle cx=\"93\" cy=\"33\" r=\"1\"/>"),
        std::string::npos)
        << s;
    EXPECT_NE(s.find(">20 mm</text>"), std::string::npos) << s;
    EXPECT_NE(s.find("M3 56.3L3 57.7"), std::string::npos) << s;
    EXPECT_NE(s.find("M3 57L23 57"), std::string::npos) << s;
  }
}

TEST(RenderPicture, HasAScaleOfARoundLength) {
  Board board;
  Scene scene(board.root, {});
  const std::pair<double, const char*> rows[] = {{4, "1 mm"},    {7, "1 mm"},     {8, "2 mm"},
                                                 {19, "2 mm"},   {20, "5 mm"},    {40, "10 mm"},
                                                 {399, "50 mm"}, {400, "100 mm"}, {1, "0.2 mm"}};
  for (const auto& [dWidth, szLabel] : rows) {
    const std::string s = Svg(scene, Frame(0, 0, dWidth, 1));
    EXPECT_NE(s.find(std::string(">") + szLabel + "</text>"), std::string::npos) << dWidth << s;
  }
}

TEST(RenderPicture, OfNothingIsASmallSheet) {
  Board board;
  Scene scene(board.root, {});
  scene.AddBoard();
  EXPECT_NE(Svg(scene, Box()).find("viewBox=\"0 0 10.6 11.1\""), std::string::npos);
  EXPECT_NE(Svg(scene, Frame(5, 5, 5, 5)).find("viewBox=\"0 0 1.06 1.11\""), std::string::npos);
  EXPECT_TRUE(BoundsOf(scene).IsEmpty());
}

TEST(RenderPicture, FramesAreDrawnUpToAMillionKilometres) {
  Board board;
  Scene scene(board.root, {});
  constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
  struct Row {
    Box frame;
    bool drawn;
  };
  const Row rows[] = {{Frame(0, 0, 1e-12, 1e-12), true},  {Frame(kNone, kNone, kNone, 0), true},
                      {Frame(-1e12, 0, 1e12, 1), true},   {Frame(1e11, 1e11, 1e11, 1e11), true},
                      {Frame(0, 0, 2e12, 1), false},      {Frame(0, -2e12, 0, 0), false},
                      {Frame(1e300, 0, 1e300, 0), false}, {Frame(0, 0, 1e308, 1e308), false},
                      {Frame(-1e308, 0, 1e308, 1), false}};
  for (const PictureFormat format : {PictureFormat::svg, PictureFormat::png, PictureFormat::pdf}) {
    for (const Row& row : rows) {
      std::string s;
      const auto draw = [&] {
        DrawPicture(scene, row.frame, {.format = format, .pixels = 64}, [&s](std::string_view piece) { s += piece; });
      };
      const std::string sWhat = Text(row.frame.low) + " to " + Text(row.frame.high);
      if (row.drawn) {
        draw();
        EXPECT_GT(s.size(), 100u) << sWhat;
        EXPECT_EQ(s.find("nan"), std::string::npos) << sWhat;
        EXPECT_EQ(s.find("inf"), std::string::npos) << sWhat;
      } else {
        EXPECT_THROW(draw(), std::range_error) << sWhat;
        EXPECT_EQ(s, "") << sWhat;
      }
    }
  }
}

TEST(RenderPicture, AStepMayEndTheDrawing) {
  Board board;
  for (int i = 0; i < 10; ++i) board.Layout().Add(On("L", Circle(5, 5, 1)));
  Scene scene(board.root, {});
  scene.AddBoard();
  for (const PictureFormat format : {PictureFormat::svg, PictureFormat::png, PictureFormat::pdf}) {
    int nSteps = 0;
    const auto step = [&nSteps] {
      if (++nSteps == 4) throw std::out_of_range("enough");
    };
    EXPECT_THROW(DrawPicture(scene, Frame(0, 0, 10, 10), {.format = format, .pixels = 64, .step = step},
                             [](std::string_view) {}),
                 std::out_of_range);
    EXPECT_EQ(nSteps, 4);
  }
}

TEST(RenderPicture, BoundsTakeArcsAndTexts) {
  const auto bounds = [](CBDdrawObj* pShape) {
    Board board;
    board.Layout().Add(On("L", pShape));
    Scene scene(board.root, {});
    scene.AddBoard();
    const Box box = BoundsOf(scene);
    return Text(box.low) + " " + Text(box.high);
  };
  EXPECT_EQ(bounds(Circle(1, 2, 3)), "-2,-1 4,5");
  EXPECT_EQ(bounds(With(new CBDline, {Arc({1, 0}, {0, 0}, {0, 1}, "CCW")})), "0,0 1,1");
  EXPECT_EQ(bounds(With(new CBDline, {Arc({1, 0}, {0, 0}, {0, 1}, "CW")})), "-1,-1 1,1");
  EXPECT_EQ(bounds(Label("AB", {10, 20}, "LO_L", 90)), "7,20 10,25");
}

TEST(RenderSvg, ShapesTellLayerNetAndReference) {
  Board board;
  auto* pLine = On("1", With(new CBDline, {Point(0, 0, 0.5), Arc({1, 0}, {1, 1}, {1, 2}, "CCW", 0.5)}), "conductive");
  pLine->m_sNet = "A&B<\"\x95\x5c\">\n";
  board.Layout().Add(pLine);
  CBDcomponent& component = board.AddComponent("U1", "A");
  component.m_pDrawObjArray->Add(On("Leg&end", Circle(1, 1, 1)));
  component.m_pDrawObjArray->Add(On("Leg&end", Label("a<b", {1, 1}, "LO_L", 90)));
  Scene scene(board.root, {});
  scene.AddBoard();
  const std::string s = Svg(scene, Frame(0, 0, 10, 10));
  EXPECT_TRUE(s.starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\""))
      << s;
  EXPECT_TRUE(s.ends_with("</svg>\n"));
  for (const char* sz : {
           "<g data-layer=\"1\" color=\"#c84034\" fill=\"currentColor\">\n",
           "<path d=\"M0.3 10.3L1.3 10.3A1 1 0 0 0 1.3 8.3\" fill=\"none\" stroke=\"currentColor\" "
           "stroke-width=\"0.5\" "
           "data-net=\"A&amp;B&lt;&quot;\xE8\xA1\xA8&quot;&gt;\xEF\xBF\xBD\"/>\n",
           "<g data-layer=\"Leg&amp;end\" color=\"#",
           "<circle cx=\"1.3\" cy=\"9.3\" r=\"1\" data-ref=\"U1\"/>\n",
           "<text transform=\"matrix(0 -1 1 0 1.3 9.3)\" font-size=\"4.1667\" textLength=\"8\" "
           "lengthAdjust=\"spacingAndGlyphs\" data-ref=\"U1\" xml:space=\"preserve\">a&lt;b</text>\n",
       }) {
    EXPECT_NE(s.find(sz), std::string::npos) << sz << "\nin\n" << s;
  }
}

TEST(RenderSvg, HatchingIsAPatternOfTheLayersColour) {
  Board board;
  for (const double dPitch : {0.5, 0.5, 0.25}) {
    auto* p = On("1", With(new CBDsurface, {Point(0, 0), Point(4, 0), Point(4, 4)}), "conductive");
    p->m_bMesh = 1;
    p->m_dMeshPitch = dPitch;
    board.Layout().Add(p);
  }
  Scene scene(board.root, {});
  scene.AddBoard();
  const std::string s = Svg(scene, Frame(0, 0, 10, 10));
  EXPECT_NE(
      s.find("<pattern id=\"hatch1\" patternUnits=\"userSpaceOnUse\" patternTransform=\"rotate(45)\" width=\"0.5\" "
             "height=\"0.5\"><rect width=\"0.125\" height=\"0.5\"/></pattern>\n"),
      std::string::npos)
      << s;
  EXPECT_NE(s.find("<pattern id=\"hatch2\""), std::string::npos);
  EXPECT_EQ(s.find("hatch3"), std::string::npos);
  EXPECT_EQ(std::string::npos, s.find("fill=\"url(#hatch2)\"", s.rfind("url(#hatch2)") + 1));
}

TEST(RenderFormats, GoByTheEnding) {
  EXPECT_EQ(FormatOf("a.svg"), PictureFormat::svg);
  EXPECT_EQ(FormatOf("b/a.b.PNG"), PictureFormat::png);
  EXPECT_EQ(FormatOf(".pdf"), PictureFormat::pdf);
  EXPECT_EQ(FormatOf("svg"), std::nullopt);
  EXPECT_EQ(FormatOf("a.svgz"), std::nullopt);
  EXPECT_EQ(FormatOf("-"), std::nullopt);
}

TEST(RenderFormats, BytesOfPicturesAndTheirFailures) {
  Board board;
  board.AddLayers();
  board.Layout().Add(On("MaskA", Circle(5, 5, 1)));
  board.Layout().Add(On("LegA", Label("~A\x95\x5c", {5, 5})));
  auto* pMesh = On("2", With(new CBDsurface, {Point(0, 0), Point(4, 0), Point(4, 4)}), "conductive");
  pMesh->m_bMesh = 1;
  board.Layout().Add(pMesh);
  Scene scene(board.root, {});
  scene.AddBoard();
  const std::pair<PictureFormat, const char*> rows[] = {
      {PictureFormat::svg, "<?xml "}, {PictureFormat::png, "\x89PNG\r\n"}, {PictureFormat::pdf, "%PDF-1."}};
  for (const auto& [format, szBegin] : rows) {
    std::string s;
    DrawPicture(scene, Frame(0, 0, 10, 10), {.format = format, .pixels = 200},
                [&s](std::string_view piece) { s += piece; });
    EXPECT_TRUE(s.starts_with(szBegin)) << szBegin;
    // A sink that fails ends the drawing with its own exception, wherever it does.
    for (const std::size_t nRoom : {std::size_t{0}, s.size() / 2, s.size() - 1}) {
      std::size_t nTaken = 0;
      EXPECT_THROW(DrawPicture(scene, Frame(0, 0, 10, 10), {.format = format, .pixels = 200},
                               [&](std::string_view piece) {
                                 nTaken += piece.size();
                                 if (nTaken > nRoom) throw std::out_of_range("full");
                               }),
                   std::out_of_range)
          << szBegin << nRoom;
    }
  }
}

TEST(RenderFormats, CoordinatesFarOutsideDoNoHarm) {
  Board board;
  board.AddLayers();
  for (const double d : {1e9, 1e15, 1e300}) {
    board.Layout().Add(On("LegA", With(new CBDline, {Point(-d, 0, 0.1), Point(d, d, 0.1)})));
    board.Layout().Add(On("LegA", With(new CBDsurface, {Point(-d, -d), Point(d, -d), Point(0, d)})));
    board.Layout().Add(On("LegA", Circle(0, 0, d)));
    board.Layout().Add(On("LegA", Label("far", {d, d})));
    auto* pMesh = On("2", With(new CBDsurface, {Point(-d, -d), Point(d, -d), Point(0, d)}), "conductive");
    pMesh->m_bMesh = 1;
    board.Layout().Add(pMesh);
    auto* pDashed = On("LegA", With(new CBDline, {Point(-d, 1, 0.1), Point(d, 1, 0.1)}));
    pDashed->m_dDash = pDashed->m_dBlank = 0.1;
    board.Layout().Add(pDashed);
  }
  Scene scene(board.root, {});
  scene.AddBoard();
  for (const PictureFormat format : {PictureFormat::svg, PictureFormat::png, PictureFormat::pdf}) {
    std::size_t nBytes = 0;
    DrawPicture(scene, Frame(0, 0, 10, 10), {.format = format, .pixels = 100},
                [&nBytes](std::string_view piece) { nBytes += piece.size(); });
    EXPECT_GT(nBytes, 100u);
  }
}

// ---- the font ----

TEST(RenderFont, EveryLetterStaysInItsCell) {
  for (char c = 0x20; c < 0x7F; ++c) {
    Path path;
    AppendText(path, std::string(1, c), 4, 6, 1);
    EXPECT_EQ(path.IsEmpty(), c == ' ') << c;
    if (path.IsEmpty()) continue;
    const Box box = path.Bounds();
    EXPECT_GE(box.low.x, 0) << c;
    EXPECT_LE(box.high.x, 4) << c;
    EXPECT_GE(box.low.y, -2) << c;
    EXPECT_LE(box.high.y, 6) << c;
    for (std::size_t i = 0; i < path.Segments().size(); ++i) {
      const bool bMove = path.Segments()[i].step == Path::Step::move;
      EXPECT_TRUE(i > 0 || bMove) << c;
      EXPECT_FALSE(bMove && (i + 1 == path.Segments().size() || path.Segments()[i + 1].step == Path::Step::move))
          << c << " lifts the pen twice";
    }
    for (char d = 0x21; d < c; ++d) {
      Path other;
      AppendText(other, std::string(1, d), 4, 6, 1);
      EXPECT_NE(Text(path), Text(other)) << c << " and " << d << " look alike";
    }
  }
}

TEST(RenderFont, LettersFollowAtTheirPitch) {
  const auto text = [](const char* sz) {
    Path path;
    AppendText(path, sz, 4, 6, 1);
    return Text(path);
  };
  EXPECT_EQ(text("L"), "M0,6 L0,0 L4,0");
  EXPECT_EQ(text("LL"), "M0,6 L0,0 L4,0 M5,6 L5,0 L9,0");
  EXPECT_EQ(text(" \tL"), "M10,6 L10,0 L14,0");
  EXPECT_EQ(text("\xE8\xA1\xA8L"), "M0,0 L4,0 L4,6 L0,6 L0,0 M5,6 L5,0 L9,0") << "a frame for what is not ASCII";
  EXPECT_EQ(CountCharacters("a\xE8\xA1\xA8"), 2u);
}

// ---- cost ----

double SecondsFor(int nShapes, PictureFormat format) {
  Board board;
  board.AddLayers();
  board.AddPad("P", Circle(0, 0, 0.1));
  CBDpadstack& via = board.AddPadstack("VIA", 0.05);
  for (const char* sz : {"Top", "Inner", "Bottom"}) Board::AddSet(via, sz, "P");
  for (int i = 0; i < nShapes; ++i) {
    const double x = i % 100;
    const double y = (i / 100) % 100;  // NOLINT(bugprone-integer-division)
    board.Layout().Add(On(std::to_string(1 + i % 4).c_str(),
                          With(new CBDline, {Point(x, y, 0.1), Point(x + 1, y, 0.1)}), "conductive"));
    board.Place("VIA", {x, y});
    CBDcomponent& component = board.AddComponent(("U" + std::to_string(i)).c_str(), i % 2 == 0 ? "A" : "B");
    component.m_pDrawObjArray->Add(On(("L" + std::to_string(i % 500)).c_str(), Label("U", {x, y})));
    component.m_pDrawObjArray->Add(On("BodyA", With(new CBDsurface, {Point(x, y), Point(x + 1, y), Point(x, y + 1)})));
    auto* pPin = new CBDpin;
    component.m_pPinArray->Add(pPin);
    auto* pPad = On("FPADSTACK", new CBDdrawPadstack);
    pPad->m_sPadstackName = "VIA";
    pPad->m_sNet = ("N" + std::to_string(i)).c_str();
    pPad->m_pt = {x, y};
    pPin->m_pDrawObjArray->Add(pPad);
  }
  const std::clock_t begin = std::clock();
  Scene scene(board.root, {});
  scene.AddBoard();
  DrawPicture(scene, Frame(0, 0, 100, 100), {.format = format, .pixels = 400}, [](std::string_view) {});
  return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

TEST(RenderCost, GrowsWithTheNumberOfShapes) {
  for (const PictureFormat format : {PictureFormat::svg, PictureFormat::png}) {
    SecondsFor(1000, format);  // warm
    const double dOne = SecondsFor(1000, format);
    const double dMany = SecondsFor(16000, format);
    // 16 times as much; what is quadratic would take 256 times as long.
    EXPECT_LT(dMany, 64 * dOne + 0.1);
  }
}

}  // namespace

}  // namespace laminate::cli
