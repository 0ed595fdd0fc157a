// Placing a footprint: the component that comes of it, and the four look-ups of layer names.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/AllocationFault.h"
#include "base/HostInterface.h"
#include "board/CBDcomponent.h"
#include "board/CBDgate.h"
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
#include "drawobj/CBDopenShape.h"
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
#include "technology/CBDfootprint.h"
#include "technology/CBDfootprintLayer.h"
#include "technology/CBDheelprint.h"
#include "technology/CBDmap.h"
#include "technology/CBDsubLayer.h"
#include "technology/CBDtechnologyContainer.h"
#include "technology/CBDtoeprintPin.h"

namespace {

constexpr double kExact = 0;
constexpr double kRounding = 1e-12;
constexpr const char* kNoLayerText = "Mult-Layer Or Zero Size Board Layer Found!";
constexpr const char* kOblongText = "You tried to MoveRotate() for UNKNOWN drawObj type - OBLONG.";

// Keeps the texts of message boxes.
class Boxes : public CHostInterface {
 public:
  int OnAfxMessageBox(const CString& sText, UINT nType, UINT nIDHelp) override {
    EXPECT_EQ(nType, MB_OK);
    EXPECT_EQ(nIDHelp, 0u);
    texts.emplace_back(sText.GetString());
    return IDOK;
  }
  std::vector<std::string> texts;

 private:
  CHostInterfaceScope m_scope{*this};
};

// ---- designs ----

struct Correspondence {
  const char* footLayer;
  std::vector<const char*> boardLayers;
};

void AddMap(CBDtechnologyContainer& technology, const char* szName, const std::vector<Correspondence>& rows) {
  auto* pMap = new CBDmap;
  technology.m_pMapArray->Add(pMap);
  pMap->m_sName = szName;
  for (const Correspondence& row : rows) {
    auto* p = new CBDcorrespondence;
    pMap->m_pCorrespondenceArray->Add(p);
    p->m_sFootLayer = row.footLayer;
    for (const char* sz : row.boardLayers) p->m_aBoardLayers.Add(sz);
  }
}
void AddFootprintLayer(CBDtechnologyContainer& technology, const char* szName, const char* szType) {
  auto* p = new CBDfootprintLayer;
  technology.m_pFootprintLayerArray->Add(p);
  p->m_sName = szName;
  p->m_sType = szType;
}
void AddSubLayer(CBDtechnologyContainer& technology, const char* szName, const char* szKind) {
  auto* p = new CBDsubLayer;
  technology.m_pSubLayerArray->Add(p);
  p->m_sName = szName;
  p->m_sLayerKind = szKind;
}

// Two sides, copper on 1 and 4, and what goes through.
std::unique_ptr<CBDtechnologyContainer> TwoSides() {
  auto p = std::make_unique<CBDtechnologyContainer>();
  AddFootprintLayer(*p, "Top", "CONDUCTIVE");
  AddFootprintLayer(*p, "Inner", "CONDUCTIVE");
  AddFootprintLayer(*p, "Legend", "SYMBOL");
  AddFootprintLayer(*p, "Body", "COMPAREA");
  AddFootprintLayer(*p, "Carbon", "CONDUCTIVE");
  AddSubLayer(*p, "1", "conductive");
  AddSubLayer(*p, "4", "conductive");
  AddSubLayer(*p, "Carbon-A", "nonConductive");
  AddSubLayer(*p, "Legend-A", "nonConductive");
  AddMap(*p, "A",
         {{"Top", {"1"}}, {"Legend", {"Legend-A"}}, {"Body", {"Body-A"}}, {"Carbon", {"Carbon-A"}}, {"Void", {}}});
  AddMap(*p, "B", {{"Top", {"4"}}, {"Legend", {"Legend-B"}}, {"Body", {"Body-B"}}});
  AddMap(*p, "A_THRU", {{"Inner", {"2", "3"}}, {"FPADSTACK", {"Elsewhere"}}, {"Legend", {"Elsewhere"}}});
  AddMap(*p, "B_THRU", {{"Inner", {"2", "3"}}, {"FPADSTACK", {"Elsewhere"}}, {"Top", {"Last"}}});
  return p;
}

CBDtoeprintPin& AddPin(CBDfootprint& footprint, const char* szName, CPointD pt) {
  auto* p = new CBDtoeprintPin;
  footprint.m_pToeprintPinArray->Add(p);
  p->m_sName = szName;
  p->m_ptLocation = pt;
  return *p;
}
template <class Shape>
Shape& AddTo(CBDdrawObjArray* pArray, Shape* p, const char* szLayer = "") {
  pArray->Add(p);
  p->m_sLayerName = szLayer;
  return *p;
}
CBDdrawPad* NewPad(CPointD pt, double dAngle) {
  auto* p = new CBDdrawPad;
  p->m_pt = pt;
  p->m_dAngle = dAngle;
  p->m_sPadName = "P1";
  return p;
}
CBDdrawPadstack* NewPadstack(CPointD pt, double dAngle) {
  auto* p = new CBDdrawPadstack;
  p->m_pt = pt;
  p->m_dAngle = dAngle;
  p->m_sPadstackName = "S1";
  return p;
}
CBDvertexPt* NewPoint(CPointD pt) {
  auto* p = new CBDvertexPt;
  p->m_pt = pt;
  p->m_dWidth = 0.25;
  return p;
}
CBDvertexArc* NewArc(CPointD begin, CPointD center, CPointD end) {
  auto* p = new CBDvertexArc;
  p->m_ptBegin = begin;
  p->m_ptCenter = center;
  p->m_ptEnd = end;
  p->m_dR = 0.5;
  p->m_sDirection = "CCW";
  return p;
}

std::unique_ptr<CBDcomponent> Put(CBDfootprint& footprint, CBDtechnologyContainer* pTechnology, const char* szSide,
                                  double dAngle, CPointD ptLocation = {}, double dScale = 1.0) {
  return std::unique_ptr<CBDcomponent>(
      footprint.pGetComponentFromFootprint(pTechnology, szSide, dAngle, ptLocation, dScale));
}

void ExpectPoint(const CPointD& pt, CPointD expected, double dTolerance, const std::string& sWhat) {
  EXPECT_NEAR(pt.x, expected.x, dTolerance) << sWhat;
  EXPECT_NEAR(pt.y, expected.y, dTolerance) << sWhat;
}

// ---- every kind of shape, and the points of it that placing moves ----

enum class Negated { x, y, none };  // on side B, before the turn; none: the point does not move at all
struct Anchor {
  CPointD* point;
  Negated negated;
};
using Anchors = std::vector<Anchor>;

Anchors AnchorsOf(CBDdrawObj& shape);

void Append(Anchors& anchors, const Anchors& more) { anchors.insert(anchors.end(), more.begin(), more.end()); }

Anchors AnchorsOf(const CBDvertexArray& vertices) {
  Anchors anchors;
  for (CBDvertex* p : vertices) {
    if (auto* pPoint = dynamic_cast<CBDvertexPt*>(p)) anchors.push_back({&pPoint->m_pt, Negated::y});
    if (auto* pArc = dynamic_cast<CBDvertexArc*>(p)) {
      for (CPointD* pt : {&pArc->m_ptBegin, &pArc->m_ptCenter, &pArc->m_ptEnd}) anchors.push_back({pt, Negated::y});
    }
  }
  return anchors;
}

template <class Shape>
Shape* As(CBDdrawObj& shape) {
  return dynamic_cast<Shape*>(&shape);
}

Anchors AnchorsOf(CBDdrawObj& shape) {
  if (auto* p = As<CBDcircle>(shape)) return {{&p->m_ptCenter, Negated::x}};
  if (auto* p = As<CBDovalHole>(shape)) return {{&p->m_pt, Negated::x}};
  if (auto* p = As<CBDdonut>(shape)) return {{&p->m_pt, Negated::x}};
  if (auto* p = As<CBDrectangle>(shape)) return {{&p->m_pt, Negated::x}};
  if (auto* p = As<CBDtext>(shape)) return {{&p->m_pt, Negated::x}};
  if (auto* p = As<CBDsymbolText>(shape)) return {{&p->m_pText->m_pt, Negated::x}};
  if (auto* p = As<CBDoval>(shape)) return {{&p->m_pt, Negated::y}};
  if (auto* p = As<CBDsquareHole>(shape)) return {{&p->m_pt, Negated::y}};
  if (auto* p = As<CBDsquareThermal>(shape)) return {{&p->m_pt, Negated::y}};
  if (auto* p = As<CBDoblong>(shape)) return {{&p->m_ptFirst, Negated::none}, {&p->m_ptSecond, Negated::none}};
  if (auto* p = As<CBDdrawSubBoard>(shape)) return {{&p->m_pt, Negated::none}};
  if (auto* p = As<CBDline>(shape)) return AnchorsOf(*p->m_pVertices);
  if (auto* p = As<CBDareaz>(shape)) return AnchorsOf(*p->m_pVertices);
  if (auto* p = As<CBDhole>(shape)) return p->m_pShape == nullptr ? Anchors{} : AnchorsOf(*p->m_pShape);
  Anchors anchors;
  if (auto* p = As<CBDsurface>(shape)) {
    for (CBDopenShape* pOpen : *p->m_pOpenShapes) Append(anchors, AnchorsOf(*pOpen->m_pVertices));
    Append(anchors, AnchorsOf(*p->m_pVertices));
  } else if (auto* pPad = As<CBDdrawPad>(shape)) {
    anchors.push_back({&pPad->m_pt, Negated::x});
    for (CBDdrawObj* pInner : *pPad->m_pShapes) Append(anchors, AnchorsOf(*pInner));
  } else if (auto* pPadstack = As<CBDdrawPadstack>(shape)) {
    anchors.push_back({&pPadstack->m_pt, Negated::x});
    for (CBDdrawObj* pInner : *pPadstack->m_pShapes) Append(anchors, AnchorsOf(*pInner));
  }
  return anchors;
}

template <class Shape>
CBDdrawObj* At(CPointD Shape::*point, CPointD pt) {
  auto* p = new Shape;
  p->*point = pt;
  return p;
}
CBDdrawObj* NewLine() {
  auto* p = new CBDline;
  p->m_pVertices->Add(NewPoint({1, 2}));
  p->m_pVertices->Add(NewArc({1, 3}, {2, 3}, {2, 4}));
  return p;
}
CBDdrawObj* NewSurface() {
  auto* p = new CBDsurface;
  for (const CPointD& pt : {CPointD(1, 2), CPointD(5, 2), CPointD(5, 6)}) p->m_pVertices->Add(NewPoint(pt));
  auto* pOpen = new CBDopenShape;
  p->m_pOpenShapes->Add(pOpen);
  pOpen->m_pVertices->Add(NewArc({3, 3}, {4, 3}, {4, 4}));
  return p;
}
CBDdrawObj* NewArea() {
  auto* p = new CBDareaz;
  p->m_pVertices = new CBDvertexArray;
  p->m_pVertices->Add(NewPoint({1, 2}));
  return p;
}
CBDdrawObj* NewHole() {
  auto* p = new CBDhole;
  delete p->m_pShape;
  p->m_pShape = At(&CBDcircle::m_ptCenter, {1, 2});
  return p;
}
CBDdrawObj* NewFullPad() {
  CBDdrawPad* p = NewPad({1, 2}, 15);
  p->m_pShapes->Add(At(&CBDoval::m_pt, {3, 4}));
  return p;
}
CBDdrawObj* NewFullPadstack() {
  CBDdrawPadstack* p = NewPadstack({1, 2}, 15);
  p->m_pShapes->Add(At(&CBDcircle::m_ptCenter, {3, 4}));
  return p;
}
CBDdrawObj* NewSymbolText() {
  auto* p = new CBDsymbolText;
  p->m_pText->m_pt = {1, 2};
  return p;
}
CBDdrawObj* NewOblong() {
  auto* p = new CBDoblong;
  p->m_ptFirst = {1, 2};
  p->m_ptSecond = {3, 4};
  return p;
}

struct Kind {
  const char* tag;
  std::function<CBDdrawObj*()> make;
};
const std::vector<Kind>& Kinds() {
  static const std::vector<Kind> kinds = {
      {"AREA", NewArea},
      {"CIRCLE",
       [] {
         return At(&CBDcircle::m_ptCenter, {1, 2});
       }},
      {"DELETE", [] { return new CBDdelete; }},
      {"DONUT",
       [] {
         return At(&CBDdonut::m_pt, {1, 2});
       }},
      {"DRAWPAD", NewFullPad},
      {"DRAWPADSTACK", NewFullPadstack},
      {"DRAWSUBBOARD",
       [] {
         return At(&CBDdrawSubBoard::m_pt, {1, 2});
       }},
      {"HOLE", NewHole},
      {"LINE", NewLine},
      {"OBLONG", NewOblong},
      {"OVAL",
       [] {
         return At(&CBDoval::m_pt, {1, 2});
       }},
      {"OVALHOLE",
       [] {
         return At(&CBDovalHole::m_pt, {1, 2});
       }},
      {"RECTANGLE",
       [] {
         return At(&CBDrectangle::m_pt, {1, 2});
       }},
      {"SQUAREHOLE",
       [] {
         return At(&CBDsquareHole::m_pt, {1, 2});
       }},
      {"SQUARETHERMAL",
       [] {
         return At(&CBDsquareThermal::m_pt, {1, 2});
       }},
      {"SURFACE", NewSurface},
      {"SYMBOLTEXT", NewSymbolText},
      {"TEXT",
       [] {
         return At(&CBDtext::m_pt, {1, 2});
       }},
  };
  return kinds;
}
CBDdrawObj* Make(const std::string& sTag) {
  for (const Kind& kind : Kinds()) {
    if (sTag == kind.tag) return kind.make();
  }
  ADD_FAILURE() << "no kind " << sTag;
  return new CBDdelete;
}

double* AngleOf(CBDdrawObj& shape) {
  if (auto* p = As<CBDdrawPad>(shape)) return &p->m_dAngle;
  if (auto* p = As<CBDdrawPadstack>(shape)) return &p->m_dAngle;
  return nullptr;
}

constexpr double kAngles[] = {0, 30, 90, 180, 270, 360, 450, -90};
constexpr double kScales[] = {1, 2, 0.5};

// The turn that the points of a placed shape make, told row by row.
double TurnOf(bool bBack, double dAngle) {
  struct Row {
    double angle;
    double back;
  };
  constexpr Row kRows[] = {{0, 0}, {30, 330}, {90, 270}, {180, 180}, {270, 90}, {360, 0}, {450, -90}, {-90, 90}};
  for (const Row& row : kRows) {
    if (row.angle == dAngle) return bBack ? row.back : dAngle;
  }
  ADD_FAILURE() << dAngle;
  return 0;
}

CPointD Turned(CPointD pt, double dAngle, CPointD shift) {
  const long double d = static_cast<long double>(dAngle) * 3.14159265358979323846264338327950288L / 180;
  return {static_cast<double>(pt.x * std::cos(d) - pt.y * std::sin(d)) + shift.x,
          static_cast<double>(pt.x * std::sin(d) + pt.y * std::cos(d)) + shift.y};
}

CPointD Expected(const Anchor& source, bool bBack, double dAngle, CPointD location) {
  CPointD pt = *source.point;
  if (source.negated == Negated::none) return pt;
  if (bBack && source.negated == Negated::x) pt.x = -pt.x;
  if (bBack && source.negated == Negated::y) pt.y = -pt.y;
  return Turned(pt, TurnOf(bBack, dAngle), location);
}

}  // namespace

// ---- the table: sides, angles, scales, kinds ----

TEST(FootprintPlacing, PinShapesGoToTheirPlaceAtEverySideAngleAndScale) {
  const Boxes boxes;
  const CPointD location(10, 20);
  for (const Kind& kind : Kinds()) {
    CBDfootprint footprint;
    CBDtoeprintPin& toeprint = AddPin(footprint, "7", {1, 2});
    CBDdrawObj& source = AddTo(toeprint.m_pDrawObjArray, kind.make(), "FPADSTACK");
    ASSERT_EQ(source.m_sKind, kind.tag);
    for (const char* szSide : {"A", "B"}) {
      for (const double dAngle : kAngles) {
        for (const double dScale : kScales) {
          const std::string sWhat = std::string(kind.tag) + " on " + szSide + " at " + std::to_string(dAngle) +
                                    " scaled by " + std::to_string(dScale);
          const bool bBack = *szSide == 'B';
          const auto pComponent = Put(footprint, nullptr, szSide, dAngle, location, dScale);
          ASSERT_EQ(pComponent->m_pPinArray->GetSize(), 1) << sWhat;
          const CBDpin& pin = *pComponent->m_pPinArray->GetAt(0);
          EXPECT_EQ(pin.m_sName, "7") << sWhat;
          // One shape: the place is scaled once before the move and once after it.
          const CPointD moved = Turned({bBack ? -dScale : dScale, 2 * dScale}, TurnOf(bBack, dAngle), location);
          ExpectPoint(pin.m_ptLocation, {moved.x * dScale, moved.y * dScale}, kRounding, sWhat);

          ASSERT_EQ(pin.m_pDrawObjArray->GetSize(), 1) << sWhat;
          CBDdrawObj& copy = *pin.m_pDrawObjArray->GetAt(0);
          EXPECT_EQ(copy.m_sKind, kind.tag) << sWhat;
          EXPECT_EQ(copy.m_sLayerName, "FPADSTACK") << sWhat;
          const Anchors from = AnchorsOf(source);
          const Anchors to = AnchorsOf(copy);
          ASSERT_EQ(from.size(), to.size()) << sWhat;
          for (std::size_t i = 0; i < from.size(); ++i) {
            ExpectPoint(*to[i].point, Expected(from[i], bBack, dAngle, location), kRounding, sWhat);
          }
          if (const double* pAngle = AngleOf(copy)) {
            const double dSum = 15 + TurnOf(bBack, dAngle);
            EXPECT_NEAR(*pAngle, dSum >= 360 ? dSum - 360 : dSum, kRounding) << sWhat;
          }
        }
      }
    }
  }
  // Of the oblong at each of two sides, eight angles and three scales.
  EXPECT_EQ(boxes.texts, std::vector<std::string>(48, kOblongText));
}

TEST(FootprintPlacing, BodyShapesStayButForPadsAtEverySideAngleAndScale) {
  const Boxes boxes;
  const CPointD location(10, 20);
  const auto pTechnology = TwoSides();
  for (const Kind& kind : Kinds()) {
    CBDfootprint footprint;
    CBDdrawObj& source = AddTo(footprint.m_pHeelprint->m_pDrawObjArray, kind.make(), "Legend");
    for (const char* szSide : {"A", "B"}) {
      for (const double dAngle : kAngles) {
        for (const double dScale : kScales) {
          const std::string sWhat = std::string(kind.tag) + " on " + szSide + " at " + std::to_string(dAngle);
          const bool bBack = *szSide == 'B';
          const auto pComponent = Put(footprint, pTechnology.get(), szSide, dAngle, location, dScale);
          ASSERT_EQ(pComponent->m_pDrawObjArray->GetSize(), 1) << sWhat;
          CBDdrawObj& copy = *pComponent->m_pDrawObjArray->GetAt(0);
          EXPECT_EQ(copy.m_sLayerName, bBack ? "Legend-B" : "Legend-A") << sWhat;
          const double* pAngle = AngleOf(copy);
          const Anchors from = AnchorsOf(source);
          const Anchors to = AnchorsOf(copy);
          ASSERT_EQ(from.size(), to.size()) << sWhat;
          for (std::size_t i = 0; i < from.size(); ++i) {
            const CPointD expected = pAngle != nullptr ? Expected(from[i], bBack, dAngle, location) : *from[i].point;
            ExpectPoint(*to[i].point, expected, pAngle != nullptr ? kRounding : kExact, sWhat);
          }
          if (pAngle != nullptr) {
            double dSum = 15 + TurnOf(bBack, dAngle);
            if (dSum <= 0) dSum += 360;
            EXPECT_NEAR(*pAngle, dSum >= 360 ? dSum - 360 : dSum, kRounding) << sWhat;
          }
        }
      }
    }
  }
  EXPECT_TRUE(boxes.texts.empty());
}

TEST(FootprintPlacing, PointsWorkedOutByHand) {
  struct Row {
    const char* tag;
    const char* side;
    double angle;
    std::vector<CPointD> points;  // in the order of the shape's anchors
    double padAngle = 0;
  };
  const Row rows[] = {
      {"CIRCLE", "A", 0, {{11, 22}}},
      {"CIRCLE", "A", 90, {{8, 21}}},
      {"CIRCLE", "B", 0, {{9, 22}}},
      {"CIRCLE", "B", 90, {{12, 21}}},
      {"OVAL", "B", 0, {{11, 18}}},
      {"OVAL", "B", 90, {{8, 19}}},
      {"RECTANGLE", "A", 180, {{9, 18}}},
      {"TEXT", "A", 270, {{12, 19}}},
      {"SYMBOLTEXT", "B", 180, {{11, 18}}},
      {"DONUT", "A", 30, {{9.8660254037844387, 22.232050807568877}}},
      {"SQUAREHOLE", "B", 30, {{9.8660254037844387, 17.767949192431123}}},
      {"SQUARETHERMAL", "B", 360, {{11, 18}}},
      {"OVALHOLE", "B", -90, {{8, 19}}},
      {"HOLE", "A", -90, {{12, 19}}},
      {"LINE", "A", 90, {{8, 21}, {7, 21}, {7, 22}, {6, 22}}},
      {"LINE", "B", 180, {{9, 22}, {9, 23}, {8, 23}, {8, 24}}},
      {"SURFACE", "B", 0, {{13, 17}, {14, 17}, {14, 16}, {11, 18}, {15, 18}, {15, 14}}},
      {"AREA", "B", 270, {{12, 21}}},
      {"DRAWPAD", "A", 90, {{8, 21}, {6, 23}}, 105},
      {"DRAWPAD", "B", 0, {{9, 22}, {13, 16}}, 15},
      {"DRAWPADSTACK", "A", 360, {{11, 22}, {13, 24}}, 15},
      {"DRAWPADSTACK", "A", 450, {{8, 21}, {6, 23}}, 105},
      {"DRAWPADSTACK", "B", -90, {{8, 19}, {6, 17}}, 105},
      {"DRAWPADSTACK", "B", 450, {{12, 21}, {14, 23}}, -75},
      {"DRAWSUBBOARD", "B", 90, {{1, 2}}},
      {"OBLONG", "B", 90, {{1, 2}, {3, 4}}},
  };
  const Boxes boxes;
  for (const Row& row : rows) {
    CBDfootprint footprint;
    AddTo(AddPin(footprint, "1", {}).m_pDrawObjArray, Make(row.tag));
    const auto pComponent = Put(footprint, nullptr, row.side, row.angle, {10, 20});
    CBDdrawObj& copy = *pComponent->m_pPinArray->GetAt(0)->m_pDrawObjArray->GetAt(0);
    const std::string sWhat = std::string(row.tag) + " on " + row.side + " at " + std::to_string(row.angle);
    const Anchors anchors = AnchorsOf(copy);
    ASSERT_EQ(anchors.size(), row.points.size()) << sWhat;
    for (std::size_t i = 0; i < anchors.size(); ++i) ExpectPoint(*anchors[i].point, row.points[i], kRounding, sWhat);
    if (const double* pAngle = AngleOf(copy)) {
      EXPECT_EQ(*pAngle, row.padAngle) << sWhat;
    }
  }
}

TEST(FootprintPlacing, SizesDirectionsAndOtherAnglesStay) {
  CBDfootprint footprint;
  CBDdrawObjArray* pShapes = AddPin(footprint, "1", {}).m_pDrawObjArray;
  auto& rectangle = AddTo(pShapes, new CBDrectangle);
  rectangle.m_dWidth = 3;
  rectangle.m_dHeight = 2;
  rectangle.m_dAngle = 25;
  AddTo(pShapes, new CBDcircle).m_dRadius = 4;
  auto& line = AddTo(pShapes, new CBDline);
  line.m_pVertices->Add(NewArc({0, 0}, {1, 0}, {2, 0}));
  const auto pComponent = Put(footprint, nullptr, "B", 90, {}, 2);
  CBDdrawObjArray& copies = *pComponent->m_pPinArray->GetAt(0)->m_pDrawObjArray;
  const auto& copy = dynamic_cast<const CBDrectangle&>(*copies.GetAt(0));
  EXPECT_EQ(copy.m_dWidth, 3);
  EXPECT_EQ(copy.m_dHeight, 2);
  EXPECT_EQ(copy.m_dAngle, 25);
  EXPECT_EQ(dynamic_cast<const CBDcircle&>(*copies.GetAt(1)).m_dRadius, 4);
  CBDvertex* pVertex = dynamic_cast<const CBDline&>(*copies.GetAt(2)).m_pVertices->GetAt(0);
  EXPECT_EQ(dynamic_cast<const CBDvertexArc&>(*pVertex).m_sDirection, "CCW");
  EXPECT_EQ(dynamic_cast<const CBDvertexArc&>(*pVertex).m_dR, 0.5);
}

// ---- angles ----

TEST(FootprintPlacing, TheAngleIsKeptAsItWasPassed) {
  struct Row {
    const char* side;
    double angle;
    CPointD pin;      // where a pin at (1, 2) comes to lie, and a pad of it that stands there
    double padAngle;  // of the pad, which has none
  };
  const Row rows[] = {
      {"B", 90, {2, 1}, 270},     // turned by 270 after mirroring
      {"B", 0, {-1, 2}, 0},       // a turn of 360 is none
      {"A", 450, {-2, 1}, 90},    // as it stands on side A
      {"B", 450, {2, 1}, -90},    // -450 lifted once
      {"B", -450, {-2, -1}, 90},  //
      {"A", 90, {-2, 1}, 90},     //
      {"b", 90, {-2, 1}, 90},     // no side B: compared exactly
      {"", 90, {-2, 1}, 90},      //
      {"BOTH", 90, {-2, 1}, 90},
  };
  for (const Row& row : rows) {
    CBDfootprint footprint;
    AddTo(AddPin(footprint, "1", {1, 2}).m_pDrawObjArray, NewPad({1, 2}, 0));
    const auto pComponent = Put(footprint, nullptr, row.side, row.angle);
    EXPECT_EQ(pComponent->m_dAngle, row.angle);
    EXPECT_EQ(pComponent->m_sPlacementSide, row.side);
    const std::string sWhat = row.side + std::string(" ") + std::to_string(row.angle);
    const CBDpin& pin = *pComponent->m_pPinArray->GetAt(0);
    ExpectPoint(pin.m_ptLocation, row.pin, kExact, sWhat);
    const auto& pad = dynamic_cast<const CBDdrawPad&>(*pin.m_pDrawObjArray->GetAt(0));
    ExpectPoint(pad.m_pt, row.pin, kExact, sWhat);
    EXPECT_EQ(pad.m_dAngle, row.padAngle) << sWhat;
  }
}

TEST(FootprintPlacing, PinsAndBodyWrapTheAnglesOfPadsEachInTheirWay) {
  struct Row {
    const char* side;
    double angle;
    double rotation;
    double inPin;
    double inBody;
  };
  const Row rows[] = {
      {"A", 450, 30, 120, 120},    // 480
      {"A", 200, 300, 140, 140},   // 500
      {"A", 450, 350, 440, 80},    // 800: one subtraction, or the remainder
      {"A", 180, 180, 0, 0},       // 360
      {"A", 0, 0, 0, 0},           // lifted to 360, and back to 0
      {"A", 0, -30, -30, 330},     //
      {"A", -90, 30, -60, 300},    //
      {"A", -720, 0, -720, -0.0},  // -360 after one lift: nothing is left of it
      {"A", -750, 0, -750, -30},   //
      {"B", 90, 90, 0, 0},         // 270 and 90
      {"B", 0, 45, 45, 45},        //
      {"B", 30, 0, 330, 330},      //
  };
  const auto pTechnology = TwoSides();
  for (const Row& row : rows) {
    for (const bool bPadstack : {false, true}) {
      CBDfootprint footprint;
      const auto add = [&](CBDdrawObjArray* pArray) {
        if (bPadstack) {
          AddTo(pArray, NewPadstack({}, row.rotation), "Top");
        } else {
          AddTo(pArray, NewPad({}, row.rotation), "Top");
        }
      };
      add(AddPin(footprint, "1", {}).m_pDrawObjArray);
      add(footprint.m_pHeelprint->m_pDrawObjArray);
      const auto pComponent = Put(footprint, pTechnology.get(), row.side, row.angle);
      const std::string sWhat = std::to_string(row.angle) + " and " + std::to_string(row.rotation) + " on " + row.side;
      EXPECT_EQ(*AngleOf(*pComponent->m_pPinArray->GetAt(0)->m_pDrawObjArray->GetAt(0)), row.inPin) << sWhat;
      EXPECT_EQ(*AngleOf(*pComponent->m_pDrawObjArray->GetAt(0)), row.inBody) << sWhat;
    }
  }
}

TEST(FootprintPlacing, NoTurnOfTheBackIsAPositiveZero) {
  CBDfootprint footprint;
  AddTo(AddPin(footprint, "1", {}).m_pDrawObjArray, NewPad({}, -0.0));
  const auto pComponent = Put(footprint, nullptr, "B", 0);
  EXPECT_FALSE(std::signbit(*AngleOf(*pComponent->m_pPinArray->GetAt(0)->m_pDrawObjArray->GetAt(0))));
}

// ---- scale ----

TEST(FootprintPlacing, AScaleWorksOnAPinOnceBeforeTheMoveAndOncePerShapeAfterIt) {
  struct Row {
    int shapes;
    double scale;
    CPointD expected;  // of a pin at (1, 2) that moves by (10, 20)
  };
  const Row rows[] = {{0, 2, {12, 24}},        {1, 2, {24, 48}},   {3, 2, {96, 192}}, {3, 1, {11, 22}},
                      {2, 0.5, {2.625, 5.25}}, {1, -1, {-9, -18}}, {1, 0, {0, 0}}};
  for (const Row& row : rows) {
    CBDfootprint footprint;
    CBDtoeprintPin& pin = AddPin(footprint, "1", {1, 2});
    for (int i = 0; i < row.shapes; ++i) AddTo(pin.m_pDrawObjArray, NewPadstack({1, 2}, 0));
    const auto pComponent = Put(footprint, nullptr, "A", 0, {10, 20}, row.scale);
    const CBDpin& placed = *pComponent->m_pPinArray->GetAt(0);
    const std::string sWhat = std::to_string(row.shapes) + " shapes scaled by " + std::to_string(row.scale);
    ExpectPoint(placed.m_ptLocation, row.expected, kExact, sWhat);
    for (CBDdrawObj* pShape : *placed.m_pDrawObjArray) {
      ExpectPoint(dynamic_cast<CBDdrawPadstack&>(*pShape).m_pt, {11, 22}, kExact, sWhat);
    }
    EXPECT_EQ(pComponent->m_dScale, 1.0);
  }
}

TEST(FootprintPlacing, AShapeWithoutACopyScalesItsPinAllTheSame) {
  CBDfootprint footprint;
  CBDtoeprintPin& pin = AddPin(footprint, "1", {1, 2});
  AddTo(pin.m_pDrawObjArray, new CBDdrawObj);
  AddTo(pin.m_pDrawObjArray, NewPad({}, 0));
  pin.m_pDrawObjArray->Add(nullptr);
  const auto pComponent = Put(footprint, nullptr, "A", 0, {}, 2);
  const CBDpin& placed = *pComponent->m_pPinArray->GetAt(0);
  ExpectPoint(placed.m_ptLocation, {8, 16}, kExact, "two shapes");
  ASSERT_EQ(placed.m_pDrawObjArray->GetSize(), 1);
  EXPECT_EQ(placed.m_pDrawObjArray->GetAt(0)->m_sKind, "DRAWPAD");
}

// ---- what is made ----

TEST(FootprintPlacing, TheComponentIsOtherwiseNew) {
  CBDfootprint footprint;
  footprint.m_sName = "F";
  AddPin(footprint, "1", {1, 2});
  AddPin(footprint, "2", {3, 4});
  const auto pComponent = Put(footprint, nullptr, "A", 0, {10, 20});
  EXPECT_EQ(pComponent->m_sReference, "");
  EXPECT_EQ(pComponent->m_sFootprint, "");
  EXPECT_EQ(pComponent->m_sFootprintSpec, "default");
  ExpectPoint(pComponent->m_ptLocation, {0, 0}, kExact, "location");
  EXPECT_EQ(pComponent->m_nPinCount, 0);
  EXPECT_EQ(pComponent->m_nGateCount, 0);
  EXPECT_EQ(pComponent->m_pGateArray->GetSize(), 0);
  EXPECT_EQ(pComponent->m_pDrawObjArray->GetSize(), 0);
  ASSERT_EQ(pComponent->m_pPinArray->GetSize(), 2);
  EXPECT_EQ(pComponent->m_pPinArray->GetAt(0)->m_sName, "1");
  EXPECT_EQ(pComponent->m_pPinArray->GetAt(1)->m_sName, "2");
}

TEST(FootprintPlacing, TheFootprintStaysAsItIs) {
  CBDfootprint footprint;
  auto& inPin = AddTo(AddPin(footprint, "1", {1, 2}).m_pDrawObjArray, NewPad({1, 2}, 30), "FPADSTACK");
  auto& inBody = AddTo(footprint.m_pHeelprint->m_pDrawObjArray, NewPad({3, 4}, 40), "Top");
  const auto pTechnology = TwoSides();
  Put(footprint, pTechnology.get(), "B", 90, {10, 20}, 2);
  ExpectPoint(inPin.m_pt, {1, 2}, kExact, "pin");
  EXPECT_EQ(inPin.m_dAngle, 30);
  ExpectPoint(inBody.m_pt, {3, 4}, kExact, "body");
  EXPECT_EQ(inBody.m_dAngle, 40);
  EXPECT_EQ(inBody.m_sLayerName, "Top");
  EXPECT_EQ(inBody.m_sLayerType, "");
}

TEST(FootprintPlacing, ALineOfTheBodyStaysWhereAPadBesideItIsMirroredAndMoved) {
  CBDfootprint footprint;
  AddTo(footprint.m_pHeelprint->m_pDrawObjArray, NewLine(), "Legend");
  AddTo(footprint.m_pHeelprint->m_pDrawObjArray, NewPad({1, 2}, 0), "Top");
  const auto pTechnology = TwoSides();
  const auto pComponent = Put(footprint, pTechnology.get(), "B", 0, {10, 20});
  const Anchors line = AnchorsOf(*pComponent->m_pDrawObjArray->GetAt(0));
  ExpectPoint(*line[0].point, {1, 2}, kExact, "line");
  ExpectPoint(*line[3].point, {2, 4}, kExact, "arc");
  ExpectPoint(*AnchorsOf(*pComponent->m_pDrawObjArray->GetAt(1))[0].point, {9, 22}, kExact, "pad");
}

TEST(FootprintPlacing, LayersOfTheBodyBecomeThoseOfTheBoard) {
  struct Row {
    const char* tag;
    const char* side;
    const char* layer;
    const char* expectedLayer;
    const char* expectedType;
  };
  const Row rows[] = {
      {"CIRCLE", "A", "Top", "1", "conductive"},
      {"CIRCLE", "B", "Top", "4", "conductive"},
      {"CIRCLE", "A", "Inner", "2", "conductive"},             // of the map of what goes through, its first layer
      {"CIRCLE", "A", "Carbon", "Carbon-A", "nonConductive"},  // the board says what it is
      {"CIRCLE", "B", "Carbon", "", "conductive"},             // on no layer of that side
      {"CIRCLE", "b", "Top", "Last", "conductive"},            // no such side: the last map serves
      {"CIRCLE", "A", "Legend", "Legend-A", "kept"},           // the type of other layers stays
      {"CIRCLE", "A", "FPADSTACK", "PADSTACK", "kept"},
      {"DRAWPADSTACK", "B", "FPADSTACK", "PADSTACK", "kept"},
      {"CIRCLE", "A", "Unknown", "", "kept"},
      {"SURFACE", "A", "Body", "Body-A", "kept"},
  };
  const auto pTechnology = TwoSides();
  for (const Row& row : rows) {
    CBDfootprint footprint;
    CBDtoeprintPin& pin = AddPin(footprint, "1", {});
    for (CBDdrawObjArray* pHome : {footprint.m_pHeelprint->m_pDrawObjArray, pin.m_pDrawObjArray}) {
      CBDdrawObj& shape = AddTo(pHome, Make(row.tag), row.layer);
      shape.m_sLayerType = "kept";
      shape.m_nLayerNumber = 7;
    }
    const auto pComponent = Put(footprint, pTechnology.get(), row.side, 0);
    const CBDdrawObj& copy = *pComponent->m_pDrawObjArray->GetAt(0);
    EXPECT_EQ(copy.m_sLayerName, row.expectedLayer) << row.layer;
    EXPECT_EQ(copy.m_sLayerType, row.expectedType) << row.layer;
    EXPECT_EQ(copy.m_nLayerNumber, 7) << row.layer;
    const CBDdrawObj& inPin = *pComponent->m_pPinArray->GetAt(0)->m_pDrawObjArray->GetAt(0);
    EXPECT_EQ(inPin.m_sLayerName, row.layer) << "shapes of pins keep the layer of the footprint";
    EXPECT_EQ(inPin.m_sLayerType, "kept") << row.layer;
    EXPECT_EQ(inPin.m_nLayerNumber, 7) << row.layer;
  }
}

TEST(FootprintPlacing, TheLayerOfPadsIsLookedUpOnceForItsKindAndNeverForItsName) {
  CBDtechnologyContainer technology;
  AddFootprintLayer(technology, "FPADSTACK", "CONDUCTIVE");
  for (const char* sz : {"A", "A_THRU"}) AddMap(technology, sz, {{"FPADSTACK", {}}});
  CBDfootprint footprint;
  AddTo(footprint.m_pHeelprint->m_pDrawObjArray, new CBDcircle, "FPADSTACK");
  const Boxes boxes;
  const auto pComponent = Put(footprint, &technology, "A", 0);
  EXPECT_EQ(boxes.texts, (std::vector<std::string>{kNoLayerText, kNoLayerText}));
  EXPECT_EQ(pComponent->m_pDrawObjArray->GetAt(0)->m_sLayerName, "PADSTACK");
  EXPECT_EQ(pComponent->m_pDrawObjArray->GetAt(0)->m_sLayerType, "conductive");
}

TEST(FootprintPlacing, OnlySurfacesOfBodyAreasBecomeAreas) {
  const auto pTechnology = TwoSides();
  CBDfootprint footprint;
  CBDdrawObjArray* pShapes = footprint.m_pHeelprint->m_pDrawObjArray;
  AddTo(pShapes, NewSurface(), "Body");
  AddTo(pShapes, NewSurface(), "Legend");
  AddTo(pShapes, new CBDcircle, "Body");
  AddTo(AddPin(footprint, "1", {}).m_pDrawObjArray, NewSurface(), "Body");
  const auto pComponent = Put(footprint, pTechnology.get(), "A", 0);
  const auto areaOf = [](CBDdrawObj* p) { return dynamic_cast<CBDsurface&>(*p).m_bArea; };
  EXPECT_EQ(areaOf(pComponent->m_pDrawObjArray->GetAt(0)), 1);
  EXPECT_EQ(areaOf(pComponent->m_pDrawObjArray->GetAt(1)), 0);
  EXPECT_EQ(areaOf(pComponent->m_pPinArray->GetAt(0)->m_pDrawObjArray->GetAt(0)), 0);
}

TEST(FootprintPlacing, ALayerWithoutABoardLayerIsWarnedOfTwiceAndForPadsOfPinsNotAtAll) {
  CBDfootprint footprint;
  AddTo(footprint.m_pHeelprint->m_pDrawObjArray, new CBDcircle, "Void");
  AddTo(AddPin(footprint, "1", {}).m_pDrawObjArray, NewPad({}, 0), "Void");
  const auto pTechnology = TwoSides();
  const Boxes boxes;
  const auto pComponent = Put(footprint, pTechnology.get(), "A", 0);
  EXPECT_EQ(boxes.texts, (std::vector<std::string>{kNoLayerText, kNoLayerText}));
  EXPECT_EQ(pComponent->m_pDrawObjArray->GetAt(0)->m_sLayerName, "");
}

TEST(FootprintPlacing, AnOblongOfAPinStaysAndIsWarnedOf) {
  CBDfootprint footprint;
  AddTo(AddPin(footprint, "1", {}).m_pDrawObjArray, NewOblong());
  AddTo(footprint.m_pHeelprint->m_pDrawObjArray, NewOblong(), "Legend");  // is not moved: no warning
  const auto pTechnology = TwoSides();
  const Boxes boxes;
  const auto pComponent = Put(footprint, pTechnology.get(), "B", 90, {10, 20});
  EXPECT_EQ(boxes.texts, std::vector<std::string>{kOblongText});
  ExpectPoint(*AnchorsOf(*pComponent->m_pPinArray->GetAt(0)->m_pDrawObjArray->GetAt(0))[0].point, {1, 2}, kExact, "");
}

// The placeholder of a new hole or padstack would be warned of when it moves, but a copy has none.
TEST(FootprintPlacing, PlaceholdersAreLeftBehindWithoutAWarning) {
  CBDfootprint footprint;
  CBDdrawObjArray* pShapes = AddPin(footprint, "1", {}).m_pDrawObjArray;
  ASSERT_NE(AddTo(pShapes, new CBDhole).m_pShape, nullptr);
  ASSERT_NE(AddTo(pShapes, new CBDdrawPadstack).m_pHole, nullptr);
  const Boxes boxes;
  const auto pComponent = Put(footprint, nullptr, "B", 90, {10, 20});
  EXPECT_EQ(boxes.texts, std::vector<std::string>{});
  CBDdrawObjArray& copies = *pComponent->m_pPinArray->GetAt(0)->m_pDrawObjArray;
  EXPECT_EQ(As<CBDhole>(*copies.GetAt(0))->m_pShape, nullptr);
  EXPECT_EQ(As<CBDdrawPadstack>(*copies.GetAt(1))->m_pHole, nullptr);
}

TEST(FootprintPlacing, WhatHasNoCopyIsLeftOut) {
  CBDfootprint footprint;
  CBDdrawObjArray* pBody = footprint.m_pHeelprint->m_pDrawObjArray;
  pBody->Add(nullptr);
  AddTo(pBody, new CBDdrawObj, "Legend");
  AddTo(pBody, new CBDopenShape, "Legend");
  AddTo(pBody, new CBDcircle, "Legend").m_sKind = "OVAL";  // a tag that is not its class's
  AddTo(pBody, new CBDdonut, "Legend");
  footprint.m_pToeprintPinArray->Add(nullptr);
  AddTo(AddPin(footprint, "1", {}).m_pDrawObjArray, new CBDopenShape);
  const auto pTechnology = TwoSides();
  const auto pComponent = Put(footprint, pTechnology.get(), "A", 0);
  ASSERT_EQ(pComponent->m_pDrawObjArray->GetSize(), 1);
  EXPECT_EQ(pComponent->m_pDrawObjArray->GetAt(0)->m_sKind, "DONUT");
  ASSERT_EQ(pComponent->m_pPinArray->GetSize(), 1);
  EXPECT_EQ(pComponent->m_pPinArray->GetAt(0)->m_pDrawObjArray->GetSize(), 0);
}

// The sanitizers watch that nothing of what was begun is left.
TEST(FootprintPlacing, ARoundThermalRaises) {
  const auto pTechnology = TwoSides();
  const auto expectRaise = [&](const std::function<CBDdrawObjArray*(CBDfootprint&)>& home) {
    CBDfootprint footprint;
    AddTo(AddPin(footprint, "1", {}).m_pDrawObjArray, NewFullPad());
    AddTo(footprint.m_pHeelprint->m_pDrawObjArray, NewSurface(), "Body");
    AddTo(home(footprint), new CBDroundThermal, "Legend");
    EXPECT_THROW(Put(footprint, pTechnology.get(), "A", 0), CInvalidArgException);
  };
  expectRaise([](CBDfootprint& f) { return f.m_pHeelprint->m_pDrawObjArray; });
  expectRaise([](CBDfootprint& f) { return f.m_pToeprintPinArray->GetAt(0)->m_pDrawObjArray; });
  expectRaise([](CBDfootprint& f) { return AddPin(f, "2", {}).m_pDrawObjArray; });
  // One inside a pad is met by the copy of the pad.
  expectRaise([](CBDfootprint& f) {
    return dynamic_cast<CBDdrawPad&>(*f.m_pToeprintPinArray->GetAt(0)->m_pDrawObjArray->GetAt(0)).m_pShapes;
  });
}

TEST(FootprintPlacing, WhatIsMissingRaisesWhereItIsNeeded) {
  const auto pTechnology = TwoSides();
  {
    CBDfootprint footprint;  // without a body no technology is needed
    AddTo(AddPin(footprint, "1", {}).m_pDrawObjArray, NewPad({}, 0));
    EXPECT_EQ(Put(footprint, nullptr, "A", 0)->m_pPinArray->GetSize(), 1);
    AddTo(footprint.m_pHeelprint->m_pDrawObjArray, new CBDcircle);
    EXPECT_THROW(Put(footprint, nullptr, "A", 0), CInvalidArgException);
  }
  {
    CBDfootprint footprint;  // a body may be absent
    delete footprint.m_pHeelprint->m_pDrawObjArray;
    footprint.m_pHeelprint->m_pDrawObjArray = nullptr;
    EXPECT_EQ(Put(footprint, nullptr, "A", 0)->m_pDrawObjArray->GetSize(), 0);
    delete footprint.m_pHeelprint;
    footprint.m_pHeelprint = nullptr;
    EXPECT_EQ(Put(footprint, nullptr, "A", 0)->m_pDrawObjArray->GetSize(), 0);
  }
  {
    CBDfootprint footprint;  // pins may not
    CBDtoeprintPin& pin = AddPin(footprint, "1", {});
    delete pin.m_pDrawObjArray;
    pin.m_pDrawObjArray = nullptr;
    EXPECT_THROW(Put(footprint, pTechnology.get(), "A", 0), CInvalidArgException);
    delete footprint.m_pToeprintPinArray;
    footprint.m_pToeprintPinArray = nullptr;
    EXPECT_THROW(Put(footprint, pTechnology.get(), "A", 0), CInvalidArgException);
  }
}

// A footprint with something of everything, and a technology for it.
void Fill(CBDfootprint& footprint) {
  for (const Kind& kind : Kinds()) {
    if (std::string_view(kind.tag) == "OBLONG") continue;  // which warns
    AddTo(AddPin(footprint, kind.tag, {1, 2}).m_pDrawObjArray, kind.make(), "FPADSTACK");
    AddTo(footprint.m_pHeelprint->m_pDrawObjArray, kind.make(), "Body");
  }
}

TEST(FootprintPlacing, EachPlacingStandsForItself) {
  CBDfootprint footprint;
  Fill(footprint);
  const auto pTechnology = TwoSides();
  auto pFirst = Put(footprint, pTechnology.get(), "A", 0, {10, 20});
  const auto pSecond = Put(footprint, pTechnology.get(), "A", 0, {10, 20});
  pFirst.reset();
  ASSERT_EQ(pSecond->m_pPinArray->GetSize(), footprint.m_pToeprintPinArray->GetSize());
  for (INT_PTR i = 0; i < pSecond->m_pPinArray->GetSize(); ++i) {
    CBDdrawObj& source = *footprint.m_pToeprintPinArray->GetAt(i)->m_pDrawObjArray->GetAt(0);
    const Anchors from = AnchorsOf(source);
    const Anchors to = AnchorsOf(*pSecond->m_pPinArray->GetAt(i)->m_pDrawObjArray->GetAt(0));
    ASSERT_EQ(from.size(), to.size()) << source.m_sKind.GetString();
    for (std::size_t k = 0; k < to.size(); ++k) ExpectPoint(*to[k].point, Expected(from[k], false, 0, {10, 20}), 0, "");
  }
  EXPECT_EQ(pSecond->m_pDrawObjArray->GetSize(), footprint.m_pHeelprint->m_pDrawObjArray->GetSize());
}

TEST(FootprintPlacing, AHostThatRaisesEndsIt) {
  class Raising : public CHostInterface {
   public:
    int OnAfxMessageBox(const CString&, UINT, UINT) override { throw std::out_of_range("a box"); }

   private:
    CHostInterfaceScope m_scope{*this};
  };
  CBDfootprint footprint;
  Fill(footprint);
  AddTo(footprint.m_pHeelprint->m_pDrawObjArray, new CBDcircle, "Void");
  const auto pTechnology = TwoSides();
  const Raising host;
  EXPECT_THROW(Put(footprint, pTechnology.get(), "A", 0), std::out_of_range);
}

TEST(FootprintPlacing, EndsSoundlyWithoutMemory) {
  CBDfootprint footprint;
  for (int i = 0; i < 20; ++i) Fill(footprint);
  AddPin(footprint, "a name that is kept apart from its string", {});
  const auto pTechnology = TwoSides();
  EXPECT_GT(laminate::test::ForEachFailingAllocation(
                laminate::test::OnlyPlatforms([&] {
                  Put(footprint, pTechnology.get(), "B", 90, {10, 20}, 2);
                }),
                [&] { ASSERT_EQ(footprint.m_pHeelprint->m_pDrawObjArray->GetSize(), 20 * (std::ssize(Kinds()) - 1)); }),
            10);
  EXPECT_EQ(Put(footprint, pTechnology.get(), "A", 0)->m_pPinArray->GetSize(),
            footprint.m_pToeprintPinArray->GetSize());
}

// ---- footprint layer to board layer ----

TEST(FootprintLayerNames, ToTheBoard) {
  CBDtechnologyContainer technology;
  AddMap(technology, "A",
         {{"Top", {"1"}}, {"Many", {"1", "2"}}, {"Twice", {}}, {"Twice", {"5"}}, {"None", {}}, {"Blank", {""}}});
  AddMap(technology, "A_THRU", {{"Inner", {"2", "3"}}, {"Top", {"9"}}, {"None", {"7"}}, {"Blank", {"8"}}});
  struct Row {
    const char* name;
    const char* footLayer;
    const char* side;
    const char* expected;
    int warnings;
  };
  const Row rows[] = {
      {"of the side's map", "Top", "A", "1", 0},
      {"of the map of what goes through", "Inner", "A", "2", 0},
      {"the first of several, without a warning", "Many", "A", "1", 0},
      {"a correspondence without board layers is passed over", "Twice", "A", "5", 1},
      {"and the search goes on in the other map", "None", "A", "7", 1},
      {"an empty name is a name", "Blank", "A", "", 0},
      {"unknown", "Sky", "A", "", 0},
      {"what goes through has no other map", "Sky", "A_THRU", "", 0},
      {"asked for by its own name", "Inner", "A_THRU", "2", 0},
      {"no map of the side: the last one", "Top", "B", "9", 0},
      {"and again the last one", "Many", "B", "", 0},
      {"no map of any such name", "Inner", "Z", "2", 0},
      {"the mark of what goes through may stand anywhere", "Top", "THRU", "9", 0},
      {"names are exact", "top", "A", "", 0},
  };
  CBDfootprint footprint;
  for (const Row& row : rows) {
    const Boxes boxes;
    EXPECT_EQ(footprint.sGetBDBoardLayNameFromFootprintLayName(&technology, row.footLayer, row.side), row.expected)
        << row.name;
    EXPECT_EQ(boxes.texts, std::vector<std::string>(static_cast<std::size_t>(row.warnings), kNoLayerText)) << row.name;
  }
}

TEST(FootprintLayerNames, AMapWithoutAResultIsSearchedAgainUnderTheOtherName) {
  CBDtechnologyContainer technology;
  AddMap(technology, "A", {{"None", {}}});
  CBDfootprint footprint;
  struct Row {
    const char* side;
    std::size_t warnings;
  };
  // There is but one map, which serves every name: both searches of a side warn, the one of what goes through only
  // once.
  for (const Row& row : {Row{"A", 2}, Row{"B", 2}, Row{"A_THRU", 1}}) {
    const Boxes boxes;
    EXPECT_EQ(footprint.sGetBDBoardLayNameFromFootprintLayName(&technology, "None", row.side), "");
    EXPECT_EQ(boxes.texts.size(), row.warnings) << row.side;
  }
}

TEST(FootprintLayerNames, WithoutMapsThereIsNoBoardLayer) {
  CBDtechnologyContainer technology;
  CBDfootprint footprint;
  EXPECT_EQ(footprint.sGetBDBoardLayNameFromFootprintLayName(&technology, "Top", "A"), "");
  technology.m_pMapArray->Add(nullptr);
  EXPECT_EQ(footprint.sGetBDBoardLayNameFromFootprintLayName(&technology, "Top", "A"), "");
}

TEST(FootprintLayerNames, TheFirstMapOfANameCounts) {
  CBDtechnologyContainer technology;
  technology.m_pMapArray->Add(nullptr);
  AddMap(technology, "A", {{"Top", {"1"}}});
  technology.m_pMapArray->GetAt(1)->m_pCorrespondenceArray->InsertAt(0, static_cast<CBDcorrespondence*>(nullptr));
  AddMap(technology, "A", {{"Top", {"2"}}});
  technology.m_pMapArray->Add(nullptr);
  CBDfootprint footprint;
  EXPECT_EQ(footprint.sGetBDBoardLayNameFromFootprintLayName(&technology, "Top", "A"), "1");
  EXPECT_EQ(footprint.sGetBDBoardLayNameFromFootprintLayName(&technology, "Top", "B"), "2");
}

// ---- the other look-ups ----

TEST(FootprintLayerNames, FromTheBoard) {
  CBDtechnologyContainer technology;
  technology.m_pMapArray->Add(nullptr);
  AddMap(technology, "A", {{"Top", {"1", "5"}}, {"Other", {"1"}}});
  technology.m_pMapArray->GetAt(1)->m_pCorrespondenceArray->InsertAt(0, static_cast<CBDcorrespondence*>(nullptr));
  AddMap(technology, "B", {{"Bottom", {"4", "1"}}});
  struct Row {
    const char* boardLayer;
    const char* mapName;
    const char* expected;
  };
  const Row rows[] = {{"1", "A", "Top"},       {"5", "A", "Top"}, {"4", "A", "Bottom"}, {"4", "A_THRU", "Bottom"},
                      {"1", "nowhere", "Top"}, {"6", "A", ""},    {"6", "A_THRU", ""},  {"", "A", ""}};
  CBDfootprint footprint;
  for (const Row& row : rows) {
    EXPECT_EQ(footprint.sGetBDfootprintLayNameFromBDBoardLayName(technology.m_pMapArray, row.boardLayer, row.mapName),
              row.expected)
        << row.boardLayer << " " << row.mapName;
  }
}

TEST(FootprintLayerNames, TypesOfLayersAndSubLayers) {
  CBDtechnologyContainer technology;
  technology.m_pFootprintLayerArray->Add(nullptr);
  AddFootprintLayer(technology, "Top", "CONDUCTIVE");
  AddFootprintLayer(technology, "Top", "SYMBOL");
  technology.m_pSubLayerArray->Add(nullptr);
  AddSubLayer(technology, "1", "conductive");
  AddSubLayer(technology, "1", "nonConductive");
  AddSubLayer(technology, "", "systemLayer");
  CBDfootprint footprint;
  EXPECT_EQ(footprint.sGetFootprintLayTypeFromFootprintLayName(&technology, "Top"), "CONDUCTIVE");
  EXPECT_EQ(footprint.sGetFootprintLayTypeFromFootprintLayName(&technology, "TOP"), "");
  EXPECT_EQ(footprint.sGetSubLayTypeFromBoardLayName(&technology, "1"), "conductive");
  EXPECT_EQ(footprint.sGetSubLayTypeFromBoardLayName(&technology, "2"), "");
  EXPECT_EQ(footprint.sGetSubLayTypeFromBoardLayName(&technology, ""), "systemLayer");
}

TEST(FootprintLayerNames, NullPointersRaise) {
  CBDfootprint footprint;
  EXPECT_THROW(footprint.sGetBDBoardLayNameFromFootprintLayName(nullptr, "Top", "A"), CInvalidArgException);
  EXPECT_THROW(footprint.sGetBDfootprintLayNameFromBDBoardLayName(nullptr, "1", "A"), CInvalidArgException);
  EXPECT_THROW(footprint.sGetFootprintLayTypeFromFootprintLayName(nullptr, "Top"), CInvalidArgException);
  EXPECT_THROW(footprint.sGetSubLayTypeFromBoardLayName(nullptr, "1"), CInvalidArgException);
  CBDtechnologyContainer technology;
  AddMap(technology, "A", {});
  CBDmap& map = *technology.m_pMapArray->GetAt(0);
  delete map.m_pCorrespondenceArray;
  map.m_pCorrespondenceArray = nullptr;
  EXPECT_THROW(footprint.sGetBDBoardLayNameFromFootprintLayName(&technology, "Top", "A"), CInvalidArgException);
  EXPECT_THROW(footprint.sGetBDfootprintLayNameFromBDBoardLayName(technology.m_pMapArray, "1", "A"),
               CInvalidArgException);
}

TEST(FootprintLayerNames, ArraysThatATechnologyLacksRaise) {
  struct Row {
    const char* name;
    std::function<void(CBDtechnologyContainer&)> rob;
    std::function<void(CBDfootprint&, CBDtechnologyContainer&)> look;
  };
  const Row rows[] = {
      {"maps", [](CBDtechnologyContainer& t) { delete std::exchange(t.m_pMapArray, nullptr); },
       [](CBDfootprint& f, CBDtechnologyContainer& t) { f.sGetBDBoardLayNameFromFootprintLayName(&t, "Top", "A"); }},
      {"footprint layers", [](CBDtechnologyContainer& t) { delete std::exchange(t.m_pFootprintLayerArray, nullptr); },
       [](CBDfootprint& f, CBDtechnologyContainer& t) { f.sGetFootprintLayTypeFromFootprintLayName(&t, "Top"); }},
      {"sub-layers", [](CBDtechnologyContainer& t) { delete std::exchange(t.m_pSubLayerArray, nullptr); },
       [](CBDfootprint& f, CBDtechnologyContainer& t) { f.sGetSubLayTypeFromBoardLayName(&t, "1"); }},
  };
  for (const Row& row : rows) {
    const auto pTechnology = TwoSides();
    CBDfootprint footprint;
    AddTo(AddPin(footprint, "1", {}).m_pDrawObjArray, NewFullPad());
    row.rob(*pTechnology);
    EXPECT_THROW(row.look(footprint, *pTechnology), CInvalidArgException) << row.name;
    EXPECT_EQ(Put(footprint, pTechnology.get(), "A", 0)->m_pPinArray->GetSize(), 1) << row.name << ": no body";
    AddTo(footprint.m_pHeelprint->m_pDrawObjArray, NewSurface(), "Top");
    EXPECT_THROW(Put(footprint, pTechnology.get(), "A", 0), CInvalidArgException) << row.name;
  }
}
