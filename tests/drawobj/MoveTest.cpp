// Moving, rotating and scaling: the anchor points of each class, and nothing else.
#include <gtest/gtest.h>

#include "drawobj/DrawObjTestSupport.h"
#include "drawobj/Fields.h"

namespace {

// What is done to a point by hand: 90 degrees counter-clockwise, then (1, 2) is subtracted. On the back side the
// coordinate that the class says is negated before.
struct Mover {
  bool bBack;
  void X(CPointD& pt) const {
    if (bBack) pt.x = -pt.x;
    Turn(pt);
  }
  void Y(CPointD& pt) const {
    if (bBack) pt.y = -pt.y;
    Turn(pt);
  }
  static void Turn(CPointD& pt) { pt.SetData(-pt.y - 1, pt.x - 2); }
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
  for (const char* szSide : {"A", "B", "", "b", "BOTTOM"}) {
    EachShapeClass([szSide]<class T>(const char* szName) {
      if constexpr (kMoves<T>) {
        T moved, wanted;
        filling::Restart();
        Fill(moved);
        filling::Restart();
        Fill(wanted);
        Boxes boxes;
        if constexpr (std::is_same_v<T, CBDopenShape>) {
          moved.vMoveRotate(1, 2, 90, szSide);
        } else {
          static_cast<CBDdrawObj&>(moved).vMoveRotate(1, 2, 90, szSide);
        }
        EXPECT_TRUE(boxes.texts.empty()) << szName;
        ByHand(wanted, Mover{std::string_view(szSide) == "B"});
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
  arc.m_sType = "any";
  static_cast<CBDvertex&>(arc).vMoveRotate(1, 1, 0, "");
  EXPECT_EQ(Text(arc.m_ptBegin), "(-1,-1)");
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
  pad.vSetScale(2);
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
  // Null slots are not there.
  CBDline gaps;
  gaps.m_pVertices->Add(nullptr);
  gaps.vMoveRotate(1, 1, 0, "");
  gaps.vSetScale(2);
  EXPECT_EQ(gaps.m_pVertices->GetSize(), 1);
}

}  // namespace
