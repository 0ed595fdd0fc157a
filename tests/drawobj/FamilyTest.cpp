// The table of the family against the lists of its operations and against every class; tags that a host sets.
#include <gtest/gtest.h>

#include <functional>
#include <map>

#include "base/TextOut.h"
#include "drawobj/DrawObjFamily.h"
#include "drawobj/DrawObjTestSupport.h"
#include "drawobj/Fields.h"

namespace {

using laminate::DrawObjFamily;
using laminate::FamilyRow;
using Tags = std::vector<std::string>;

// The tags of one operation's list, in its order.
template <class Cell>
Tags ListOf(Cell FamilyRow::*cell) {
  std::map<int, std::string> places;
  for (const FamilyRow& row : DrawObjFamily()) {
    const auto& c = row.*cell;
    EXPECT_EQ(c.nPlace != 0, c.act != nullptr) << row.tag;
    if (c.nPlace == 0) continue;
    EXPECT_TRUE(places.emplace(c.nPlace, row.tag).second) << row.tag << " has another's place";
  }
  Tags tags;
  int nPlace = 0;
  for (const auto& [place, tag] : places) {
    EXPECT_EQ(place, ++nPlace) << tag;
    tags.push_back(tag);
  }
  return tags;
}

TEST(Family, ListsInTheirOrder) {
  EXPECT_EQ(ListOf(&FamilyRow::copy), (Tags{"CIRCLE", "AREA", "SURFACE", "RECTANGLE", "ROUNDTHERMAL", "SQUAREHOLE",
                                            "OVAL", "LINE", "TEXT", "DRAWPAD", "DRAWPADSTACK", "DONUT", "SQUARETHERMAL",
                                            "SYMBOLTEXT", "HOLE", "OVALHOLE", "DRAWSUBBOARD", "DELETE", "OBLONG"}));
  EXPECT_EQ(ListOf(&FamilyRow::print),
            (Tags{"CIRCLE", "AREA", "SURFACE", "RECTANGLE", "ROUNDTHERMAL", "SQUAREHOLE", "OVAL", "LINE", "TEXT",
                  "DRAWPAD", "DRAWPADSTACK", "DONUT", "SQUARETHERMAL", "SYMBOLTEXT", "HOLE", "OVALHOLE", "OBLONG",
                  "DRAWSUBBOARD", "DELETE"}));
  EXPECT_EQ(
      ListOf(&FamilyRow::header),
      (Tags{"CIRCLE", "SURFACE", "RECTANGLE", "ROUNDTHERMAL", "SQUAREHOLE", "OVAL", "LINE", "TEXT", "AREA", "DRAWPAD",
            "DRAWPADSTACK", "DONUT", "SQUARETHERMAL", "SYMBOLTEXT", "HOLE", "OVALHOLE", "DRAWSUBBOARD", "DELETE"}));
  const Tags moving{"CIRCLE",        "AREA",       "SURFACE", "RECTANGLE", "ROUNDTHERMAL", "SQUAREHOLE",
                    "OVAL",          "LINE",       "TEXT",    "DRAWPAD",   "DRAWPADSTACK", "DONUT",
                    "SQUARETHERMAL", "SYMBOLTEXT", "HOLE",    "OVALHOLE",  "DRAWSUBBOARD", "DELETE"};
  EXPECT_EQ(ListOf(&FamilyRow::move), moving);
  EXPECT_EQ(ListOf(&FamilyRow::scale), moving);
  EXPECT_EQ(
      ListOf(&FamilyRow::remove),
      (Tags{"CIRCLE", "SURFACE", "RECTANGLE", "ROUNDTHERMAL", "SQUAREHOLE", "OVAL", "LINE", "TEXT", "AREA", "DRAWPAD",
            "DRAWPADSTACK", "DONUT", "SQUARETHERMAL", "SYMBOLTEXT", "HOLE", "OVALHOLE", "DRAWSUBBOARD", "DELETE"}));
}

TEST(Family, EveryClassHasItsRow) {
  EXPECT_EQ(DrawObjFamily().size(), 21u);
  EachShapeClass([]<class T>(const char* szName) {
    const T object;
    const FamilyRow* pRow = laminate::FindFamilyRow(object.m_sKind.View());
    ASSERT_NE(pRow, nullptr) << szName;
    EXPECT_EQ(pRow->tag, object.m_sKind.View());
  });
  EXPECT_NE(laminate::FindFamilyRow("NONE"), nullptr);
  for (const char* sz : {"", "circle", "CIRCLE ", "XIRCLE", "LINES"}) {
    EXPECT_EQ(laminate::FindFamilyRow(sz), nullptr) << sz;
  }
  EXPECT_EQ(laminate::FindFamilyRow(std::string(70000, 'A')), nullptr);
}

// The dispatchers read the table: an operation has an effect exactly where its cell is filled.
TEST(Family, DispatchersFollowTheTable) {
  EachShapeClass([]<class T>(const char* szName) {
    T object;
    Fill(object);
    CBDdrawObj& shape = object;
    const FamilyRow& row = *laminate::FindFamilyRow(object.m_sKind.View());
    SCOPED_TRACE(szName);
    EXPECT_EQ(Print(shape, 1).empty(), row.print.act == nullptr);
    EXPECT_EQ(Printed([&](std::FILE* fp) { shape.nPrint2Header2File(fp); }).empty(), row.header.act == nullptr);
    {
      Boxes boxes;
      shape.vMoveRotate(1, 1, 0, "A");
      EXPECT_EQ(boxes.texts.size(), row.move.act == nullptr ? 1u : 0u);
      shape.vSetScale(2);
      EXPECT_EQ(boxes.texts.size(), row.scale.act == nullptr ? 2u : 0u);
    }
    if (row.tag == "ROUNDTHERMAL") {
      EXPECT_THROW(shape.pCopy(), CInvalidArgException);
    } else {
      const std::unique_ptr<CBDdrawObj> copy(shape.pCopy());
      EXPECT_EQ(copy == nullptr, row.copy.act == nullptr);
      if (copy != nullptr) {
        EXPECT_TRUE(IsExactly<T>(*copy));
      }
    }
  });
}

// The members of each class, by their types: hosts call them, and what is missing is the base's.
template <class T, class Print, bool bOwnCopy, bool bMoves>
constexpr bool kHasMembers = [] {
  using Base = CBDdrawObj;
  using Move = void (T::*)(double, double, double, CString);
  using BaseMove = void (Base::*)(double, double, double, CString);
  static_assert(std::is_same_v<decltype(&T::nPrint2File), Print>);
  if constexpr (bOwnCopy) {
    static_assert(std::is_same_v<decltype(&T::pCopy), T* (T::*)() const>);
  } else {
    static_assert(std::is_same_v<decltype(&T::pCopy), Base* (Base::*)() const>);
  }
  if constexpr (bMoves) {
    static_assert(std::is_same_v<decltype(&T::vMoveRotate), Move>);
    static_assert(std::is_same_v<decltype(&T::vSetScale), void (T::*)(double)>);
  } else {
    static_assert(std::is_same_v<decltype(&T::vMoveRotate), BaseMove>);
    static_assert(std::is_same_v<decltype(&T::vSetScale), void (Base::*)(double)>);
  }
  static_assert(std::is_same_v<decltype(&T::nPrint2Header2File), int (Base::*)(FILE*) const>);
  static_assert(std::has_virtual_destructor_v<T>);
  return std::is_copy_constructible_v<T> && std::is_copy_assignable_v<T>;
}();

TEST(Family, MembersByClass) {
  EachShapeClass([]<class T>(const char* szName) {
    constexpr bool bNoMode = std::is_same_v<T, CBDopenShape> || std::is_same_v<T, CBDroundThermal>;
    constexpr bool bMoves =
        !std::is_same_v<T, CBDoblong> && !std::is_same_v<T, CBDdelete> && !std::is_same_v<T, CBDdrawSubBoard>;
    using Print = std::conditional_t<bNoMode, int (T::*)(FILE*), int (T::*)(FILE*, int)>;
    EXPECT_TRUE((kHasMembers<T, Print, !std::is_same_v<T, CBDroundThermal>, bMoves>)) << szName;
  });
  EXPECT_TRUE((std::is_same_v<decltype(&CBDpadstackRefLay::nPrint2File), int (CBDpadstackRefLay::*)(FILE*)>));
  EXPECT_TRUE((std::is_same_v<decltype(&CBDpadstackRefLay::pCopy), CBDpadstackRefLay* (CBDpadstackRefLay::*)() const>));
  EXPECT_TRUE((std::is_same_v<decltype(&CBDfillet::pCopy), CBDfillet* (CBDfillet::*)() const>));
  EXPECT_TRUE((std::is_same_v<decltype(&CBDvertex::nPrint2File), int (CBDvertex::*)(FILE*, int, int)>));
  EXPECT_TRUE((std::is_same_v<decltype(&CBDvertexArc::nPrint2File), int (CBDvertexArc::*)(FILE*, int)>));
}

// ---- tags that a host sets ----

// What each operation does to an object, as one text.
struct Effects {
  std::string copy, print, header, move, scale;
};

template <class T>
Effects EffectsOf(const char* szTag) {
  Effects e;
  const auto make = [szTag] {
    auto p = std::make_unique<T>();
    p->m_sKind = szTag;
    return p;
  };
  {
    auto p = make();
    const CBDdrawObj& shape = *p;
    try {
      const std::unique_ptr<CBDdrawObj> copy(shape.pCopy());
      e.copy = copy == nullptr ? "null" : std::string(copy->m_sKind.View());
    } catch (const CInvalidArgException&) {
      e.copy = "raises";
    }
  }
  {
    auto p = make();
    e.print = Print(*p, 2);
    e.header = Printed([&](std::FILE* fp) { p->CBDdrawObj::nPrint2Header2File(fp); });
  }
  {
    auto p = make();
    Boxes boxes;
    static_cast<CBDdrawObj&>(*p).vMoveRotate(1, 2, 90, "B");
    e.move = boxes.texts.empty() ? "quiet" : boxes.texts[0];
  }
  {
    auto p = make();
    Boxes boxes;
    static_cast<CBDdrawObj&>(*p).vSetScale(2);
    e.scale = boxes.texts.empty() ? "quiet" : boxes.texts[0];
  }
  return e;
}

TEST(HostTags, ATagOfAnotherClassTakesNoPart) {
  EachShapeClass([]<class T>(const char* szName) {
    const T own;
    for (const FamilyRow& row : DrawObjFamily()) {
      if (row.tag == own.m_sKind.View()) continue;
      const std::string tag(row.tag);
      SCOPED_TRACE(std::string(szName) + " as " + tag);
      const Effects e = EffectsOf<T>(tag.c_str());
      const std::string box = "You tried to MoveRotate() for UNKNOWN drawObj type - " + tag + ".";
      // Where an operation needs nothing of the class, the tag alone decides.
      const std::map<std::string, std::string> printed = {{"AREA", "(area\n)\n"},
                                                          {"DELETE", "(delete\n)\n"},
                                                          {"DRAWSUBBOARD", "(subBoard\n)\n"},
                                                          {"SQUARETHERMAL", "(squareThermal\n)\n"}};
      const auto it = printed.find(tag);
      EXPECT_EQ(e.print, it == printed.end() ? "" : it->second);
      EXPECT_EQ(e.header.empty(), row.header.act == nullptr || tag == "SURFACE");
      EXPECT_EQ(e.copy, tag == "AREA"           ? "AREA"
                        : tag == "DELETE"       ? "DELETE"
                        : tag == "ROUNDTHERMAL" ? "raises"
                                                : "null");
      const bool bQuiet = tag == "AREA" || tag == "DELETE" || tag == "DRAWSUBBOARD";
      EXPECT_EQ(e.move, bQuiet ? "quiet" : box);
      EXPECT_EQ(e.scale, bQuiet ? "quiet" : box);
    }
  });
}

TEST(HostTags, NoObjectChangesUnderATagThatDoesNotFit) {
  EachShapeClass([]<class T>(const char* szName) {
    const T own;
    for (const FamilyRow& row : DrawObjFamily()) {
      if (row.tag == own.m_sKind.View()) continue;
      T object;
      Fill(object);
      object.m_sKind = CString(row.tag);
      const std::string before = Describe(object);
      Boxes boxes;
      static_cast<CBDdrawObj&>(object).vMoveRotate(1, 2, 90, "B");
      static_cast<CBDdrawObj&>(object).vSetScale(2);
      EXPECT_EQ(Describe(object), before) << szName << " as " << row.tag;
    }
  });
}

// Where the tag alone decides on a copy: the class's own fields at their defaults, and the shared fields that copies
// take.
TEST(HostTags, ACopyByTheTagAloneIsOfItsClass) {
  EachShapeClass([]<class T>(const char* szName) {
    for (const char* szTag : {"AREA", "DELETE"}) {
      SCOPED_TRACE(std::string(szName) + " as " + szTag);
      T object;
      if (object.m_sKind == szTag) continue;
      Fill(object);
      object.m_sKind = szTag;
      const std::unique_ptr<CBDdrawObj> copy(static_cast<CBDdrawObj&>(object).pCopy());
      ASSERT_NE(copy, nullptr);
      const auto expect = [&](auto wanted) {
        wanted.m_bRefer = object.m_bRefer;
        wanted.m_sLayerName = object.m_sLayerName;
        wanted.m_sLayerType = object.m_sLayerType;
        wanted.m_nLayerNumber = object.m_nLayerNumber;
        wanted.m_sNet = object.m_sNet;
        wanted.m_sPenShape = object.m_sPenShape;
        ASSERT_TRUE(IsExactly<decltype(wanted)>(*copy));
        EXPECT_EQ(Text(copy.get()), Describe(wanted));
      };
      std::string_view(szTag) == "AREA" ? expect(CBDareaz()) : expect(CBDdelete());
    }
  });
}

TEST(HostTags, LongEmptyAndStrangeTags) {
  for (const std::string& tag :
       {std::string(), std::string(65536, 'C'), std::string("CIRCLE\0", 7), std::string("%n")}) {
    CBDcircle circle;
    circle.m_sKind = CString(std::string_view(tag));
    CBDdrawObj& shape = circle;
    EXPECT_EQ(shape.pCopy(), nullptr);
    EXPECT_EQ(Print(shape, 1), "");
    Boxes boxes;
    shape.vMoveRotate(1, 1, 0, "");
    ASSERT_EQ(boxes.texts.size(), 1u);
    EXPECT_EQ(boxes.texts[0], "You tried to MoveRotate() for UNKNOWN drawObj type - " + std::string(tag.c_str()) + ".");
    EXPECT_EQ(circle.m_ptCenter.x, 0);
    shape.DeleteDrawObj(&shape);
  }
}

TEST(HostTags, AnAreaIsReachedByItsTag) {
  CBDcircle circle;
  Fill(circle);
  circle.m_sKind = "AREA";
  const std::unique_ptr<CBDdrawObj> copy(static_cast<CBDdrawObj&>(circle).pCopy());
  const auto* pArea = dynamic_cast<CBDareaz*>(copy.get());
  ASSERT_NE(pArea, nullptr);
  EXPECT_EQ(pArea->m_pVertices, nullptr);
  EXPECT_EQ(pArea->m_sNet, circle.m_sNet);
  EXPECT_EQ(pArea->m_sLayerName, circle.m_sLayerName);

  CBDareaz area;
  Fill(area);
  const std::unique_ptr<CBDdrawObj> deep(static_cast<CBDdrawObj&>(area).pCopy());
  const auto* pDeep = dynamic_cast<CBDareaz*>(deep.get());
  ASSERT_NE(pDeep, nullptr);
  ASSERT_NE(pDeep->m_pVertices, nullptr);
  EXPECT_NE(pDeep->m_pVertices, area.m_pVertices);
  EXPECT_EQ(pDeep->m_pVertices->GetSize(), 3);
  EXPECT_EQ(pDeep->m_adSpare[4], area.m_adSpare[4]);
}

// A class of a host that derives from one of the family counts as that one.
struct HostLine : CBDline {
  int nMine = 5;
};

TEST(HostTags, ADerivedClassCountsAsItsBase) {
  HostLine line;
  auto* pPoint = new CBDvertexPt;
  pPoint->m_pt.SetData(1, 2);
  line.m_pVertices->Add(pPoint);
  CBDdrawObj& shape = line;
  EXPECT_EQ(Print(shape, 2), "(line\n(vertex\n(pt 1.00000 2.00000)\n)\n)\n");
  const std::unique_ptr<CBDdrawObj> copy(shape.pCopy());
  ASSERT_NE(copy, nullptr);
  EXPECT_TRUE(IsExactly<CBDline>(*copy));
  shape.vMoveRotate(1, 0, 0, "");
  EXPECT_EQ(pPoint->m_pt.x, 0);
}

struct HostPoint : CBDvertexPt {};

TEST(HostTags, ADerivedVertexCountsAsItsBase) {
  HostPoint point;
  CBDvertex& vertex = point;
  EXPECT_EQ(Printed([&](std::FILE* fp) { vertex.nPrint2File(fp, 1, 0); }), "(pt 0.00000 0.00000)\n");
  delete vertex.pCopy();
  vertex.vMoveRotate(1, 0, 0, "");
  EXPECT_EQ(point.m_pt.x, -1);
}

}  // namespace
