#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <string>

#include "base/CArrayN.h"
#include "base/CArrayPointD.h"
#include "base/CGProperty.h"
#include "base/CLProperty.h"
#include "base/CPoint3D.h"
#include "base/CPointD.h"
#include "base/CPointF.h"
#include "base/CRectD.h"
#include "base/CRectF.h"
#include "base/CStringEx.h"
#include "base/CTokenizer.h"

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

TEST(CPointD, HoldsTwoNumbers) {
  CPointD pt;
  EXPECT_EQ(pt.x, 0);
  EXPECT_EQ(pt.y, 0);
  pt.SetX(1.5);
  pt.SetY(-2);
  double dX = 0;
  double dY = 0;
  pt.GetX(dX);
  pt.GetY(dY);
  EXPECT_EQ(pt.GetX(), 1.5);
  EXPECT_EQ(pt.GetY(), -2);
  EXPECT_EQ(dX, 1.5);
  EXPECT_EQ(dY, -2);
  pt.SetData(3, 4);
  const CPointD copy(pt);
  pt.x = 9;
  EXPECT_EQ(copy.x, 3);
  EXPECT_TRUE(copy == CPointD(3, 4));
  EXPECT_FALSE(copy == CPointD(3, std::nextafter(4.0, 5.0))) << "equality is exact";
}

// Every value type may be deleted through a pointer to it by whoever derives from it.
template <class... T>
constexpr bool kAllDeletable = (std::has_virtual_destructor_v<T> && ...);
static_assert(kAllDeletable<CPointD, CPoint3D, CRectD, CPointF, CRectF, CStringEx, CStringExArray, CGProperty,
                            CLProperty, CArrayN, CArrayPointD, CArrayArrayN>);

TEST(CPointD, MovesAndTurns) {
  struct Row {
    double x, y, dX, dY, dAngle, xExpected, yExpected;
  };
  // Multiples of a right angle are exact.
  for (const Row& row : {Row{1, 2, 0, 0, 0, 1, 2},
                         {1, 2, 10, 20, 0, -9, -18},
                         {1, 2, 0, 0, 90, -2, 1},
                         {1, 2, 0, 0, 180, -1, -2},
                         {1, 2, 0, 0, 270, 2, -1},
                         {1, 2, 0, 0, 360, 1, 2},
                         {1, 2, 0, 0, -90, 2, -1},
                         {1, 2, 0, 0, -180, -1, -2},
                         {1, 2, 0, 0, -270, -2, 1},
                         {1, 2, 0, 0, 450, -2, 1},
                         {1, 2, 0, 0, 3600090, -2, 1},
                         {0.1, 0.7, 0, 0, 90, -0.7, 0.1},
                         {1, 2, 5, 7, 90, -7, -6},  // first turned, then moved
                         {1, 2, -5, -7, 180, 4, 5}}) {
    CPointD pt(row.x, row.y);
    pt.MoveRotate(row.dX, row.dY, row.dAngle);
    EXPECT_EQ(pt.x, row.xExpected) << row.dAngle;
    EXPECT_EQ(pt.y, row.yExpected) << row.dAngle;
  }
  CPointD pt(2, 0);
  pt.MoveRotate(0, 0, 30);
  EXPECT_NEAR(pt.x, std::sqrt(3.0), 1e-15);
  EXPECT_NEAR(pt.y, 1, 1e-15);
  pt.MoveRotate(1, 1, -30);
  EXPECT_NEAR(pt.x, 1, 1e-15);
  EXPECT_NEAR(pt.y, -1, 1e-15);
}

TEST(CPointD, ChangesNoBitByNothing) {
  for (const double d : {-0.0, 0.0, 1e-320, 1e308, 0.1}) {
    for (const double zero : {0.0, -0.0}) {
      CPointD pt(d, -d);
      pt.MoveRotate(zero, zero, zero);
      EXPECT_EQ(pt.x, d);
      EXPECT_EQ(std::signbit(pt.x), std::signbit(d));
      EXPECT_EQ(std::signbit(pt.y), std::signbit(-d));
    }
  }
  CPointD pt(kNan, 1);
  pt.MoveRotate(0, 0, 0);
  EXPECT_TRUE(std::isnan(pt.x));
  // A right angle makes no negative zero of a positive one.
  CPointD axis(1, 0);
  axis.MoveRotate(0, 0, 90);
  EXPECT_FALSE(std::signbit(axis.x));
  EXPECT_EQ(axis.y, 1);
}

TEST(CPointD, MayBeMovedByItsOwnNumbers) {
  CPointD pt(3, 4);
  pt.MoveRotate(pt.x, pt.y, 0);
  EXPECT_TRUE(pt == CPointD(0, 0));
  CPointD turned(90, 4);
  turned.MoveRotate(turned.x, turned.y, turned.x);
  EXPECT_TRUE(turned == CPointD(-4 - 90, 90 - 4));
  CPointD odd(1, 2);
  odd.MoveRotate(0, 0, kNan);
  EXPECT_TRUE(std::isnan(odd.x));
  odd = CPointD(1, 2);
  odd.MoveRotate(0, 0, std::numeric_limits<double>::infinity());
  EXPECT_TRUE(std::isnan(odd.y));
}

TEST(CPoint3D, HoldsThreeNumbers) {
  CPoint3D pt;
  EXPECT_TRUE(pt == CPoint3D(0, 0, 0));
  pt.SetData(1, 2, 3);
  double x = 0;
  double y = 0;
  double z = 0;
  pt.GetData(x, y, z);
  EXPECT_EQ(x + 10 * y + 100 * z, 321);
  pt.SetX(4);
  pt.SetY(5);
  pt.SetZ(6);
  pt.GetX(x);
  pt.GetY(y);
  pt.GetZ(z);
  EXPECT_EQ(x + 10 * y + 100 * z, 654);
  EXPECT_EQ(pt.GetX() + 10 * pt.GetY() + 100 * pt.GetZ(), 654);
  const std::unique_ptr<CPoint3D> copy(pt.clone());
  EXPECT_TRUE(*copy == pt);
  for (const CPoint3D& other : {CPoint3D(0, 5, 6), CPoint3D(4, 0, 6), CPoint3D(4, 5, 0)}) {
    EXPECT_TRUE(pt != other);
    EXPECT_FALSE(pt == other);
  }
  const CPoint3D odd(kNan, 0, 0);
  const CPoint3D same(odd);
  EXPECT_TRUE(odd == odd) << "the same object";
  EXPECT_FALSE(odd == same);
  pt.SetData(1, 2, 3);
  pt.MoveRotate(0, 0, 90);
  EXPECT_TRUE(pt == CPoint3D(-2, 1, 3));
  pt.SetData(1, 2, 3);
  pt.MoveRotate(5, 7, 90);
  EXPECT_TRUE(pt == CPoint3D(-7, -6, 3)) << "first turned, then moved";
}

TEST(CRectD, HoldsFourNumbers) {
  CRectD rect;
  EXPECT_TRUE(rect == CRectD(0, 0, 0, 0));
  rect = CRectD(1, 2, 3, 4);
  EXPECT_EQ(rect.GetWidth(), 3);
  EXPECT_EQ(rect.GetHeight(), 4);
  EXPECT_EQ(rect.GetArea(), 12);
  const std::unique_ptr<CRectD> copy(rect.clone());
  EXPECT_TRUE(*copy == rect);
  for (const CRectD& other : {CRectD(0, 2, 3, 4), CRectD(1, 0, 3, 4), CRectD(1, 2, 0, 4), CRectD(1, 2, 3, 0)}) {
    EXPECT_TRUE(rect != other);
  }
  rect.Init();
  EXPECT_TRUE(rect == CRectD());
  EXPECT_FALSE(*copy == rect);
  CRectD assigned(9, 9, 9, 9);
  assigned = *copy;
  EXPECT_TRUE(assigned == CRectD(1, 2, 3, 4));
  assigned.x = 5;
  EXPECT_TRUE(*copy == CRectD(1, 2, 3, 4));
  const CRectD odd(kNan, 0, 0, 0);
  EXPECT_FALSE(odd == odd) << "a rectangle is compared by its numbers, also with itself";
}

TEST(SinglePrecision, HoldsPointsAndRectangles) {
  CPointF pt(1.5f, -2);
  const CPointF copy(pt);
  EXPECT_TRUE(pt == copy);
  for (const CPointF& other : {CPointF(0, -2), CPointF(1.5f, 3)}) {
    EXPECT_TRUE(pt != other);
    EXPECT_FALSE(pt == other);
  }
  CPointF assigned;
  assigned = pt;
  pt.y = 3;
  EXPECT_TRUE(pt != copy);
  EXPECT_TRUE(assigned == copy) << "a copy owns its own data";
  const CPointF odd(std::numeric_limits<float>::quiet_NaN(), 0);
  EXPECT_FALSE(odd == odd);
  EXPECT_TRUE(CPointF() == CPointF(0, 0));
  CRectF rect(1, 2, 3, 4);
  const CRectF rectCopy(rect);
  EXPECT_TRUE(rect == rectCopy);
  for (const CRectF& other : {CRectF(0, 2, 3, 4), CRectF(1, 0, 3, 4), CRectF(1, 2, 0, 4), CRectF(1, 2, 3, 0)}) {
    EXPECT_TRUE(rect != other);
  }
  CRectF rectAssigned;
  rectAssigned = rect;
  rect = CRectD(0.1, 1e300, -1e300, 16777217);
  EXPECT_TRUE(rectAssigned == rectCopy);
  EXPECT_TRUE(rect == CRectF(0.1f, std::numeric_limits<float>::infinity(), -std::numeric_limits<float>::infinity(),
                             16777216.0f));
  EXPECT_TRUE(CRectF() == CRectF(0, 0, 0, 0));
}

TEST(CStringEx, IsTakenAsANumber) {
  struct Row {
    const char* szText;
    int nExpected;
    double dExpected;
  };
  for (const Row& row : {Row{"", 0, 0},
                         {"12", 12, 12},
                         {" -3.75x", -3, -3.75},
                         {"abc", 0, 0},
                         {"1e3", 1, 1000},
                         {"4294967297", 1, 4294967297.0},
                         {"1e300", 1, 1e300}}) {
    const CStringEx s(row.szText);
    EXPECT_EQ(s.ToInteger(), row.nExpected) << row.szText;
    EXPECT_EQ(s.ToDouble(), row.dExpected) << row.szText;
    EXPECT_EQ(s.operator int(), row.nExpected);
    EXPECT_EQ(s.operator unsigned long(), static_cast<unsigned long>(row.nExpected));
    EXPECT_EQ(s.operator double(), row.dExpected);
  }
  EXPECT_EQ(CStringEx("0.1").operator float(), 0.1f);
  EXPECT_EQ(CStringEx("1e300").operator float(), std::numeric_limits<float>::infinity());
}

TEST(CStringExArray, FindsTextsExactly) {
  CStringExArray array;
  EXPECT_EQ(array.bStringInArray(""), 0);
  for (const char* sz : {"GND", "a text of more than sixteen bytes", ""}) {
    CStringEx s(sz);
    array.Add(s);
  }
  EXPECT_EQ(array.bStringInArray("GND"), 1);
  EXPECT_EQ(array.bStringInArray("gnd"), 0) << "case counts";
  EXPECT_EQ(array.bStringInArray("GN"), 0);
  EXPECT_EQ(array.bStringInArray("GND "), 0);
  EXPECT_EQ(array.bStringInArray(""), 1);
  EXPECT_EQ(array.bStringInArray("a text of more than sixteen bytes"), 1);
  CStringExArray copy(array);
  copy[0] = CStringEx("VCC");
  EXPECT_EQ(array.bStringInArray("VCC"), 0);
  array = copy;
  EXPECT_EQ(array.bStringInArray("VCC"), 1);
}

TEST(CGProperty, HoldsTwoTexts) {
  CGProperty property;
  property.SetItem("key");
  property.SetComment("value");
  EXPECT_EQ(property.GetItem(), "key");
  EXPECT_EQ(property.GetComment(), "value");
  EXPECT_EQ(property.m_sItem, "key");
  const std::unique_ptr<CGProperty> copy(property.clone());
  EXPECT_TRUE(*copy == property);
  copy->SetComment("Value");
  EXPECT_TRUE(*copy != property);
  EXPECT_EQ(property.GetComment(), "value");
  EXPECT_TRUE(CGProperty("a", "b") != CGProperty("b", "b"));
  EXPECT_TRUE(property == property);
}

TEST(CLProperty, HoldsThreeTexts) {
  CLProperty property("key", "value");
  EXPECT_EQ(property.GetKind(), "");
  property.SetKind("propertyS");
  property.SetItem("k");
  property.SetComment("v");
  const std::unique_ptr<CLProperty> copy(property.clone());
  EXPECT_TRUE(*copy == property);
  for (const CLProperty& other :
       {CLProperty("x", "v", "propertyS"), CLProperty("k", "x", "propertyS"), CLProperty("k", "v", "x")}) {
    EXPECT_TRUE(property != other);
  }
}

TEST(CTokenizer, IsCopied) {
  CTokenizer a;
  a.m_sText = "text";
  a.m_aBlock[31] = 7;
  a.m_nValue = 5;
  CTokenizer b(a);
  a = CTokenizer();
  EXPECT_EQ(a.m_nValue, 0);
  EXPECT_EQ(b.m_sText, "text");
  EXPECT_EQ(b.m_aBlock[31], 7);
  EXPECT_EQ(b.m_nValue, 5);
  a = b;
  b.m_aBlock[31] = 8;
  EXPECT_EQ(a.m_sText, "text");
  EXPECT_EQ(a.m_aBlock[31], 7);
  EXPECT_EQ(a.m_nValue, 5);
  static_assert(sizeof(b.m_aBlock) == 32);
}

template <class Array, class X>
void CheckClonedArray(const X& first, const X& second) {
  Array array;
  array.Add(first.clone());
  array.Add(second.clone());
  const Array copy(array);
  ASSERT_EQ(copy.GetSize(), 2);
  EXPECT_NE(copy.GetAt(0), array.GetAt(0)) << "a copy owns its own data";
  const std::unique_ptr<Array> cloned(array.clone());
  EXPECT_EQ(cloned->GetSize(), 2);
  Array assigned;
  assigned.Add(first.clone());
  assigned = array;
  EXPECT_EQ(assigned.GetSize(), 2);
  Array& same = assigned;
  X* const p = assigned.GetAt(0);
  assigned = same;
  EXPECT_EQ(assigned.GetAt(0), p) << "onto itself nothing happens";
  assigned = Array();
  EXPECT_TRUE(assigned.IsEmpty());
}

template <class Array, class X>
void CheckComparedArray(const X& first, const X& second) {
  CheckClonedArray<Array>(first, second);
  Array a;
  Array b;
  EXPECT_TRUE(a == b) << "both empty";
  a.Add(first.clone());
  EXPECT_TRUE(a != b);
  EXPECT_TRUE(a == a);
  b.Add(first.clone());
  EXPECT_TRUE(a == b);
  a.Add(second.clone());
  EXPECT_FALSE(a == b) << "the size counts";
  b.Add(second.clone());
  EXPECT_TRUE(a == b);
  EXPECT_FALSE(a != b);
  b.Reverse();
  EXPECT_FALSE(a == b) << "the order counts";
  EXPECT_TRUE(a != b);
  // Empty slots are as if they were not there.
  Array c(a);
  c.InsertAt(0, static_cast<X*>(nullptr));
  c.Add(nullptr);
  EXPECT_TRUE(a == c);
  EXPECT_TRUE(c == a);
  EXPECT_EQ(Array(c).GetSize(), 2);
  EXPECT_EQ(Array(c).GetAt(0) != nullptr, true);
  Array nulls;
  nulls.Add(nullptr);
  EXPECT_TRUE(nulls == Array());
}

TEST(ValueArrays, AreCopiedAndCompared) {
  CheckComparedArray<CArrayRectD>(CRectD(1, 2, 3, 4), CRectD(1, 2, 3, 5));
  CheckComparedArray<CArrayPoint3D>(CPoint3D(1, 2, 3), CPoint3D(1, 2, 4));
  CheckComparedArray<CGPropertyArray>(CGProperty("a", "b"), CGProperty("a", "c"));
  CheckComparedArray<CLPropertyArray>(CLProperty("a", "b", "c"), CLProperty("a", "b", "d"));
  CArrayPointD points;
  CPointD pt(1, 2);
  points.Add(pt);
  CheckClonedArray<CArrayArrayPointD>(points, CArrayPointD());
  CArrayArrayPointD arrays;
  arrays.Add(points.clone());
  const CArrayArrayPointD copy(arrays);
  (*arrays.GetAt(0))[0].x = 9;
  EXPECT_EQ((*copy.GetAt(0))[0].x, 1) << "a copy is deep";
}

}  // namespace
