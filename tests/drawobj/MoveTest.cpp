// Moving, rotating and scaling: the anchor points of each class, and nothing else.
#include <gtest/gtest.h>

#include "drawobj/DrawObjTestSupport.h"
#include "drawobj/Fields.h"

namespace {

// What is done to a point by hand: 90 degrees counter-clockwise, then (1, 2) is subtracted; other angles are left to
// the point. On the back side the coordinate that the class says is negated before.
struct Mover {
  bool bBack;
  double dAngle = 90;
  void X(CPointD& pt) const {
    if (bBack) pt.x = -pt.x;
    Turn(pt);
  }
  void Y(CPointD& pt) const {
    if (bBack) pt.y = -pt.y;
    Turn(pt);
  }
  void Turn(CPointD& pt) const {
    if (dAngle == 90) {
      pt.SetData(-pt.y - 1, pt.x - 2);
    } else {
      pt.MoveRotate(1, 2, dAngle);
    }
  }
  void Text(CPointD& pt) const { X(pt); }
};
struct Scaler {
  double dScale;
  void X(CPointD& pt) const { pt.SetData(pt.x * dScale, pt.y * dScale); }
  void Y(CPointD& pt) const { X(pt); }
  // x twice, y not at all.
  void Text(CPointD& pt) const { pt.x = pt.x * dScale * dScale; }
};

template <class By>
void Vertices(CBDvertexArray& vertices, const By& by) {
  for (CBDvertex* p : vertices) {
    if (auto* pPoint = dynamic_cast<CBDvertexPt*>(p)) {
      by.Y(pPoint->m_pt);
    } else if (auto* pArc = dynamic_cast<CBDvertexArc*>(p)) {
      by.Y(pArc->m_ptBegin);
      by.Y(pArc->m_ptCenter);
      by.Y(pArc->m_ptEnd);
    }
  }
}
// The shapes that `Fill` puts into an array.
template <class By>
void Shapes(CBDdrawObjArray& shapes, const By& by) {
  by.X(dynamic_cast<CBDcircle&>(*shapes.GetAt(0)).m_ptCenter);
  by.X(dynamic_cast<CBDdonut&>(*shapes.GetAt(1)).m_pt);
}

template <class T, class By>
void ByHand(T& o, const By& by) {
  if constexpr (std::is_same_v<T, CBDcircle>) {
    by.X(o.m_ptCenter);
  } else if constexpr (std::is_same_v<T, CBDovalHole> || std::is_same_v<T, CBDdonut> ||
                       std::is_same_v<T, CBDrectangle>) {
    by.X(o.m_pt);
  } else if constexpr (std::is_same_v<T, CBDtext>) {
    by.Text(o.m_pt);
  } else if constexpr (std::is_same_v<T, CBDdrawPad>) {
    by.X(o.m_pt);
    Shapes(*o.m_pShapes, by);
  } else if constexpr (std::is_same_v<T, CBDdrawPadstack>) {
    by.X(o.m_pt);
    Shapes(*o.m_pShapes, by);
    by.X(dynamic_cast<CBDcircle&>(*o.m_pHole).m_ptCenter);
  } else if constexpr (std::is_same_v<T, CBDoval> || std::is_same_v<T, CBDroundThermal> ||
                       std::is_same_v<T, CBDsquareHole> || std::is_same_v<T, CBDsquareThermal>) {
    by.Y(o.m_pt);
  } else if constexpr (std::is_same_v<T, CBDline> || std::is_same_v<T, CBDopenShape> || std::is_same_v<T, CBDareaz>) {
    Vertices(*o.m_pVertices, by);
  } else if constexpr (std::is_same_v<T, CBDsurface>) {
    for (CBDopenShape* p : *o.m_pOpenShapes) Vertices(*p->m_pVertices, by);
    Vertices(*o.m_pVertices, by);
  } else if constexpr (std::is_same_v<T, CBDsymbolText>) {
    by.Text(o.m_pText->m_pt);
  } else if constexpr (std::is_same_v<T, CBDhole>) {
    by.X(dynamic_cast<CBDcircle&>(*o.m_pShape).m_ptCenter);
  } else {
    static_assert(std::is_same_v<T, CBDdrawSubBoard> || std::is_same_v<T, CBDdelete>);
  }
}

template <class T>
constexpr bool kMoves = !std::is_same_v<T, CBDoblong>;

TEST(MoveRotate, EachClassMovesItsAnchorsAlone) {
  struct Case {
    const char* side;
    double angle;
  };
  for (const auto& [szSide, dAngle] : {Case{"A", 90}, Case{"B", 90}, Case{"", 90}, Case{"b", 90}, Case{"BOTTOM", 90},
                                       Case{"B", 30}, Case{"A", -450}}) {
    EachShapeClass([szSide = szSide, dAngle = dAngle]<class T>(const char* szName) {
      if constexpr (kMoves<T>) {
        T moved, wanted;
        filling::Restart();
        Fill(moved);
        filling::Restart();
        Fill(wanted);
        Boxes boxes;
        if constexpr (std::is_same_v<T, CBDopenShape>) {
          moved.vMoveRotate(1, 2, dAngle, szSide);
        } else {
          static_cast<CBDdrawObj&>(moved).vMoveRotate(1, 2, dAngle, szSide);
        }
        EXPECT_TRUE(boxes.texts.empty()) << szName;
        ByHand(wanted, Mover{std::string_view(szSide) == "B", dAngle});
        EXPECT_EQ(Describe(moved), Describe(wanted)) << szName << " on side '" << szSide << "'";
      }
    });
  }
}

TEST(SetScale, EachClassScalesItsAnchorsAlone) {
  EachShapeClass([]<class T>(const char* szName) {
    if constexpr (kMoves<T>) {
      T scaled, wanted;
      filling::Restart();
      Fill(scaled);
      filling::Restart();
      Fill(wanted);
      Boxes boxes;
      if constexpr (std::is_same_v<T, CBDopenShape>) {
        scaled.vSetScale(0.5);
      } else {
        static_cast<CBDdrawObj&>(scaled).vSetScale(0.5);
      }
      EXPECT_TRUE(boxes.texts.empty()) << szName;
      ByHand(wanted, Scaler{0.5});
      EXPECT_EQ(Describe(scaled), Describe(wanted)) << szName;
    }
  });
}

TEST(MoveRotate, TheMembersOfTheClassesDoTheSame) {
  CBDoval oval;
  oval.m_pt.SetData(1, 2);
  oval.vMoveRotate(10, 20, 0, "B");
  EXPECT_EQ(Text(oval.m_pt), "(-9,-22)");
  CBDcircle circle;
  circle.m_ptCenter.SetData(1, 2);
  circle.vMoveRotate(10, 20, 0, "B");
  EXPECT_EQ(Text(circle.m_ptCenter), "(-11,-18)");
  CBDcircle front;
  front.m_ptCenter.SetData(1, 2);
  front.vMoveRotate(10, 20, 0, "b");
  EXPECT_EQ(Text(front.m_ptCenter), "(-9,-18)");
}

TEST(MoveRotate, AFootprintPointLandsAtItsPlace) {
  // The placing passes minus the component's position and its angle.
  CBDcircle circle;
  circle.m_ptCenter.SetData(1, 0);
  static_cast<CBDdrawObj&>(circle).vMoveRotate(-100, -50, 90, "A");
  EXPECT_EQ(Text(circle.m_ptCenter), "(100,51)");
}

TEST(SetScale, TextAndCircleAndArc) {
  CBDtext text;
  text.m_pt.SetData(3, 4);
  static_cast<CBDdrawObj&>(text).vSetScale(2);
  EXPECT_EQ(Text(text.m_pt), "(12,4)");
  // Twice, and not once by the square.
  text.m_pt.SetData(3, 4);
  text.vSetScale(25.4);
  EXPECT_EQ(text.m_pt.x, 3 * 25.4 * 25.4);
  EXPECT_NE(text.m_pt.x, 3 * (25.4 * 25.4));
  CBDcircle circle;
  circle.m_ptCenter.SetData(3, 4);
  circle.m_dRadius = 1;
  static_cast<CBDdrawObj&>(circle).vSetScale(2);
  EXPECT_EQ(Text(circle.m_ptCenter), "(6,8)");
  EXPECT_EQ(circle.m_dRadius, 1);
  CBDvertexArc arc;
  arc.m_ptBegin.SetData(1, 1);
  arc.m_ptCenter.SetData(2, 2);
  arc.m_ptEnd.SetData(3, 3);
  arc.m_dR = 5;
  static_cast<CBDvertex&>(arc).vSetScale(2);
  EXPECT_EQ(Text(arc.m_ptBegin) + Text(arc.m_ptCenter) + Text(arc.m_ptEnd), "(2,2)(4,4)(6,6)");
  EXPECT_EQ(arc.m_dR, 5);
}

TEST(MoveRotate, UnknownTagsShowABoxAndStay) {
  struct Case {
    CBDdrawObj& shape;
    const char* text;
  };
  CBDoblong oblong;
  Fill(oblong);
  CBDopenShape open;
  Fill(open);
  CBDdrawObj none;
  Fill(none);
  const Case cases[] = {{oblong, "You tried to MoveRotate() for UNKNOWN drawObj type - OBLONG."},
                        {open, "You tried to MoveRotate() for UNKNOWN drawObj type - OPENSHAPE."},
                        {none, "You tried to MoveRotate() for UNKNOWN drawObj type - NONE."}};
  for (const Case& c : cases) {
    const std::string before = Text(&c.shape);
    Boxes boxes;
    c.shape.vMoveRotate(1, 2, 90, "B");
    c.shape.vSetScale(3);
    EXPECT_EQ(boxes.texts, std::vector<std::string>(2, c.text));
    EXPECT_TRUE(boxes.allPlain);
    EXPECT_EQ(Text(&c.shape), before);
  }
}

TEST(MoveRotate, ThePlaceholderShowsTheBoxOnceUntilItIsCopied) {
  const std::vector<std::string> box{"You tried to MoveRotate() for UNKNOWN drawObj type - NONE."};
  for (const char* sz : {"(hole)", "(padstack V)"}) {
    const auto shape = ReadAny(sz);
    {
      Boxes boxes;
      shape->vMoveRotate(1, 2, 0, "A");
      EXPECT_EQ(boxes.texts, box) << sz;
    }
    {
      Boxes boxes;
      shape->vSetScale(2);
      EXPECT_EQ(boxes.texts, box) << sz;
    }
    const std::unique_ptr<CBDdrawObj> copy(shape->pCopy());
    Boxes boxes;
    copy->vMoveRotate(1, 2, 0, "A");
    copy->vSetScale(2);
    EXPECT_TRUE(boxes.texts.empty()) << sz;
  }
}

TEST(MoveRotate, SubBoardsAndDeletesNeitherMoveNorComplain) {
  CBDdrawSubBoard subBoard;
  subBoard.m_pt.SetData(1, 2);
  Boxes boxes;
  static_cast<CBDdrawObj&>(subBoard).vMoveRotate(5, 5, 45, "B");
  static_cast<CBDdrawObj&>(subBoard).vSetScale(3);
  CBDdelete del;
  static_cast<CBDdrawObj&>(del).vMoveRotate(5, 5, 45, "B");
  static_cast<CBDdrawObj&>(del).vSetScale(3);
  EXPECT_EQ(Text(subBoard.m_pt), "(1,2)");
  EXPECT_TRUE(boxes.texts.empty());
}

TEST(MoveRotate, VerticesThatDoNotFitTheirClassStay) {
  CBDvertexPt point;
  point.m_pt.SetData(1, 2);
  point.m_sType = "ARC";
  CBDvertex& vertex = point;
  vertex.vMoveRotate(1, 1, 0, "");
  vertex.vSetScale(2);
  EXPECT_EQ(Text(point.m_pt), "(1,2)");
  point.m_sType = "PT";
  vertex.vMoveRotate(1, 1, 0, "");
  EXPECT_EQ(Text(point.m_pt), "(0,1)");
  CBDvertexArc arc;
  arc.m_ptBegin.SetData(1, 2);
  arc.m_sType = "PT";
  static_cast<CBDvertex&>(arc).vMoveRotate(1, 1, 0, "");
  static_cast<CBDvertex&>(arc).vSetScale(2);
  EXPECT_EQ(Text(arc.m_ptBegin), "(1,2)");
  arc.m_sType = "any";
  arc.m_ptBegin.SetData(1, 1);
  arc.m_ptCenter.SetData(2, 2);
  arc.m_ptEnd.SetData(3, 3);
  arc.m_dR = 5;
  static_cast<CBDvertex&>(arc).vSetScale(2);
  EXPECT_EQ(Text(arc.m_ptBegin) + Text(arc.m_ptCenter) + Text(arc.m_ptEnd), "(2,2)(4,4)(6,6)");
  EXPECT_EQ(arc.m_dR, 5);
  static_cast<CBDvertex&>(arc).vMoveRotate(1, 1, 0, "B");
  EXPECT_EQ(Text(arc.m_ptBegin) + Text(arc.m_ptCenter) + Text(arc.m_ptEnd), "(1,-3)(3,-5)(5,-7)");
}

// "PT" counts exactly as it stands; all else is an arc.
TEST(MoveRotate, AVertexIsAPointByTheExactWord) {
  for (const char* szType : {"pt", "Pt", "PT ", "PTX", "P", "", " PT"}) {
    CBDvertexPt point;
    CBDvertexArc arc;
    point.m_sType = arc.m_sType = szType;
    CBDvertex& asPoint = point;
    CBDvertex& asArc = arc;
    const auto print = [](CBDvertex& v) { return Printed([&](std::FILE* fp) { v.nPrint2File(fp, 1, 0); }); };
    EXPECT_EQ(print(asPoint), "") << szType;
    EXPECT_EQ(asPoint.pCopy(), nullptr) << szType;
    EXPECT_NE(print(asArc), "") << szType;
    const std::unique_ptr<CBDvertex> copy(asArc.pCopy());
    ASSERT_NE(copy, nullptr) << szType;
    EXPECT_EQ(copy->m_sType, "ARC") << szType;
    for (CBDvertex* p : {&asPoint, &asArc}) p->vMoveRotate(1, 1, 0, "");
    EXPECT_EQ(Text(point.m_pt) + Text(arc.m_ptBegin), "(0,0)(-1,-1)") << szType;
    for (CBDvertex* p : {&asPoint, &asArc}) p->vSetScale(2);
    EXPECT_EQ(Text(point.m_pt) + Text(arc.m_ptBegin), "(0,0)(-2,-2)") << szType;
  }
}

TEST(MoveRotate, MissingArrays) {
  CBDline line;
  delete line.m_pVertices;
  line.m_pVertices = nullptr;
  line.vMoveRotate(1, 1, 0, "");
  line.vSetScale(2);
  CBDareaz area;
  area.vMoveRotate(1, 1, 0, "");
  area.vSetScale(2);
  CBDhole hole;
  delete hole.m_pShape;
  hole.m_pShape = nullptr;
  hole.vMoveRotate(1, 1, 0, "");
  hole.vSetScale(2);
  CBDsymbolText text;
  delete text.m_pText;
  text.m_pText = nullptr;
  text.vMoveRotate(1, 1, 0, "");
  text.vSetScale(2);
  CBDdrawPad pad;
  delete pad.m_pShapes;
  pad.m_pShapes = nullptr;
  pad.m_pt.SetData(1, 2);
  pad.vSetScale(2);
  EXPECT_EQ(Text(pad.m_pt), "(2,4)");
  EXPECT_THROW(pad.vMoveRotate(1, 1, 0, ""), CInvalidArgException);
  CBDdrawPadstack padstack;
  delete padstack.m_pShapes;
  padstack.m_pShapes = nullptr;
  EXPECT_THROW(padstack.vMoveRotate(1, 1, 0, ""), CInvalidArgException);
  EXPECT_THROW(padstack.vSetScale(2), CInvalidArgException);
  CBDsurface surface;
  delete surface.m_pVertices;
  surface.m_pVertices = nullptr;
  EXPECT_THROW(surface.vMoveRotate(1, 1, 0, ""), CInvalidArgException);
  EXPECT_THROW(surface.vSetScale(2), CInvalidArgException);
  CBDsurface whole;
  Fill(whole);
  delete std::exchange(whole.m_pOpenShapes, nullptr);
  const std::string before = Describe(whole);
  EXPECT_THROW(whole.vMoveRotate(1, 1, 0, ""), CInvalidArgException);
  EXPECT_THROW(whole.vSetScale(2), CInvalidArgException);
  EXPECT_EQ(Describe(whole), before);
  CBDopenShape open;
  delete std::exchange(open.m_pVertices, nullptr);
  open.vMoveRotate(1, 1, 0, "");
  open.vSetScale(2);
  // Null slots are not there.
  CBDline gaps;
  gaps.m_pVertices->Add(nullptr);
  gaps.m_pVertices->Add(new CBDvertexPt);
  gaps.vMoveRotate(1, 1, 0, "");
  gaps.vSetScale(2);
  EXPECT_EQ(At(gaps, "m_pVertices/1/m_pt"), "(-2,-2)");
  CBDdrawPad shapes;
  shapes.m_pShapes->Add(nullptr);
  shapes.m_pShapes->Add(new CBDcircle);
  shapes.vMoveRotate(1, 1, 0, "");
  shapes.vSetScale(2);
  EXPECT_EQ(At(shapes, "m_pShapes/1/m_ptCenter"), "(-2,-2)");
  CBDsurface cuts;
  cuts.m_pOpenShapes->Add(nullptr);
  cuts.m_pOpenShapes->Add(new CBDopenShape);
  cuts.m_pOpenShapes->GetAt(1)->m_pVertices->Add(new CBDvertexPt);
  cuts.vMoveRotate(1, 1, 0, "");
  cuts.vSetScale(2);
  EXPECT_EQ(At(cuts, "m_pOpenShapes/1/m_pVertices/0/m_pt"), "(-2,-2)");
}

// The cut-outs have moved when the vertices turn out to be missing.
TEST(MoveRotate, CutOutsComeBeforeVertices) {
  CBDsurface surface;
  surface.m_pOpenShapes->Add(new CBDopenShape);
  auto* pPoint = new CBDvertexPt;
  pPoint->m_pt.SetData(1, 2);
  surface.m_pOpenShapes->GetAt(0)->m_pVertices->Add(pPoint);
  delete std::exchange(surface.m_pVertices, nullptr);
  EXPECT_THROW(surface.vMoveRotate(2, 4, 0, ""), CInvalidArgException);
  EXPECT_EQ(Text(pPoint->m_pt), "(-1,-2)");
  EXPECT_THROW(surface.vSetScale(2), CInvalidArgException);
  EXPECT_EQ(Text(pPoint->m_pt), "(-2,-4)");
}

// A child negates by its own class, whatever its holder negates, and one that takes no part does not stop the others.
TEST(MoveRotate, ChildrenMoveByTheirOwnRules) {
  const auto fill = [](CBDdrawObjArray& shapes) {
    shapes.Add(new CBDoblong);
    auto* pOval = new CBDoval;
    pOval->m_pt.SetData(1, 2);
    shapes.Add(pOval);
    auto* pCircle = new CBDcircle;
    pCircle->m_ptCenter.SetData(1, 2);
    shapes.Add(pCircle);
  };
  const std::string told = "You tried to MoveRotate() for UNKNOWN drawObj type - ";
  CBDdrawPad pad;
  CBDdrawPadstack padstack, placeholder;
  CBDhole hole;
  fill(*pad.m_pShapes);
  fill(*padstack.m_pShapes);
  fill(*placeholder.m_pShapes);
  delete padstack.m_pHole;
  delete hole.m_pShape;
  auto* pOval = new CBDoval;
  auto* pSquare = new CBDsquareHole;
  padstack.m_pHole = pOval;
  hole.m_pShape = pSquare;
  for (CPointD* p : {&pad.m_pt, &padstack.m_pt, &placeholder.m_pt, &pOval->m_pt, &pSquare->m_pt}) p->SetData(1, 2);
  const std::string oblong = At(pad, "m_pShapes/0");
  for (CBDdrawObj* p : std::vector<CBDdrawObj*>{&pad, &padstack, &placeholder}) {
    std::vector<std::string> wanted{told + "OBLONG."};
    if (p == &placeholder) wanted.push_back(told + "NONE.");
    Boxes boxes;
    p->vMoveRotate(0, 0, 0, "B");
    EXPECT_EQ(boxes.texts, wanted);
    EXPECT_EQ(At(*p, "m_pt") + At(*p, "m_pShapes/1/m_pt") + At(*p, "m_pShapes/2/m_ptCenter"), "(-1,2)(1,-2)(-1,2)");
    EXPECT_EQ(At(*p, "m_pShapes/0"), oblong);
    boxes.texts.clear();
    p->vSetScale(2);
    EXPECT_EQ(boxes.texts, wanted);
    EXPECT_EQ(At(*p, "m_pt") + At(*p, "m_pShapes/1/m_pt") + At(*p, "m_pShapes/2/m_ptCenter"), "(-2,4)(2,-4)(-2,4)");
  }
  EXPECT_EQ(Text(pOval->m_pt), "(2,-4)");
  static_cast<CBDdrawObj&>(hole).vMoveRotate(0, 0, 0, "B");
  EXPECT_EQ(Text(pSquare->m_pt), "(1,-2)");
}

}  // namespace
