#include "base/CExPtrArray.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <ctime>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "base/CArrayN.h"
#include "base/CArrayPointD.h"
#include "base/CGProperty.h"
#include "base/CLProperty.h"
#include "base/CPoint3D.h"
#include "base/CRectD.h"

// The forms that the value types' own arrays stand on.
template class CExPtrArray<CArrayN*, CArrayN*>;
template class CExPtrArray<CArrayPointD*, CArrayPointD*>;
template class CExPtrArray<CPoint3D*, CPoint3D*>;
template class CExPtrArray<CRectD*, CRectD*>;
template class CExPtrArray<CGProperty*, CGProperty*>;
template class CExPtrArray<CLProperty*, CLProperty*>;

namespace {

// Tells when it is deleted, and in which order.
struct Thing {
  explicit Thing(int n = 0) : id(n) { ++s_nAlive; }
  virtual ~Thing() {
    --s_nAlive;
    s_deleted.push_back(id);
  }
  int id;
  static int s_nAlive;
  static std::vector<int> s_deleted;
};
int Thing::s_nAlive = 0;
std::vector<int> Thing::s_deleted;
struct SpecialThing : Thing {
  using Thing::Thing;
  std::string text = "a member that a deletion by the wrong type would leak";
};

using Things = CExPtrArray<Thing*, Thing*>;
class ThingArray : public laminate::NamedArray<Thing> {};

class CExPtrArrayTest : public ::testing::Test {
 protected:
  void SetUp() override {
    Thing::s_deleted.clear();
    ASSERT_EQ(Thing::s_nAlive, 0);
  }
  void TearDown() override { EXPECT_EQ(Thing::s_nAlive, 0) << "leaked or deleted twice"; }
};

std::vector<Thing*> Elements(const CArray<Thing*, Thing*>& array) { return {array.begin(), array.end()}; }

TEST_F(CExPtrArrayTest, GivesNullForABadIndex) {
  Thing a;
  Things array;
  EXPECT_EQ(array.GetAt(0), nullptr);
  array.Add(&a);
  EXPECT_EQ(array.GetAt(0), &a);
  EXPECT_EQ(array.GetAt(-1), nullptr);
  EXPECT_EQ(array.GetAt(1), nullptr);
  EXPECT_EQ(array.GetAt(LLONG_MAX), nullptr);
  EXPECT_EQ(array.GetAt(LLONG_MIN), nullptr);
  EXPECT_THROW(array[1], CInvalidArgException) << "the platform's own access still raises";
  EXPECT_THROW(array.ElementAt(-1), CInvalidArgException);
}

TEST_F(CExPtrArrayTest, SetsOnlyInRange) {
  Thing a(1);
  Thing b(2);
  Things array;
  array.Add(&a);
  array.SetAt(-1, &b);
  array.SetAt(1, &b);
  array.SetAt(LLONG_MAX, &b);
  EXPECT_EQ(Elements(array), std::vector<Thing*>{&a});
  array.SetAt(0, &b);
  EXPECT_EQ(Elements(array), std::vector<Thing*>{&b});
  EXPECT_TRUE(Thing::s_deleted.empty()) << "the old element is not deleted";
}

TEST_F(CExPtrArrayTest, TellsItsLastElementAndIndexes) {
  Thing a;
  Things array;
  EXPECT_EQ(array.GetLastElement(), nullptr);
  EXPECT_EQ(array.GetLastIndex(), -1);
  EXPECT_FALSE(array.IsValidIndex(0));
  array.Add(&a);
  array.Add(nullptr);
  EXPECT_EQ(array.GetLastElement(), nullptr);
  EXPECT_EQ(array.GetLastIndex(), 1);
  EXPECT_TRUE(array.IsValidIndex(0));
  EXPECT_TRUE(array.IsValidIndex(1));
  EXPECT_FALSE(array.IsValidIndex(2));
  EXPECT_FALSE(array.IsValidIndex(-1));
  EXPECT_FALSE(array.IsValidIndex(INT_MAX));
  EXPECT_FALSE(array.IsValidIndex(INT_MIN));
}

TEST_F(CExPtrArrayTest, FindsByPointer) {
  Thing a(1);
  Thing b(1);
  Things array;
  array.Add(&a);
  array.Add(nullptr);
  array.Add(&a);
  EXPECT_EQ(array.FindIndex(&a), 0);
  EXPECT_EQ(array.FindIndex(nullptr), 1);
  EXPECT_EQ(array.FindIndex(&b), -1);
  EXPECT_TRUE(array.Exists(&a));
  EXPECT_FALSE(array.Exists(&b));
  EXPECT_EQ(array.Add_if_only_do_not_exists(&a), -1);
  EXPECT_EQ(array.GetSize(), 3);
  EXPECT_EQ(array.Add_if_only_do_not_exists(&b), 3);
  EXPECT_EQ(array.Add_if_only_do_not_exists(nullptr), -1);
  EXPECT_EQ(array.GetSize(), 4);
}

TEST_F(CExPtrArrayTest, RemovesWithoutDeleting) {
  Thing a(1);
  Thing b(2);
  Things array;
  EXPECT_FALSE(array.Remove(&a));
  EXPECT_EQ(array.RemoveLastElement(), nullptr);
  array.Add(&a);
  array.Add(&b);
  array.Add(&a);
  EXPECT_TRUE(array.Remove(&a));
  EXPECT_EQ(Elements(array), (std::vector<Thing*>{&b, &a})) << "the first occurrence";
  EXPECT_EQ(array.RemoveLastElement(), &a);
  EXPECT_FALSE(array.Remove(&a));
  EXPECT_EQ(array.RemoveLastElement(), &b);
  EXPECT_TRUE(array.IsEmpty());
  EXPECT_TRUE(Thing::s_deleted.empty());
}

TEST_F(CExPtrArrayTest, DeletesOne) {
  Things array;
  auto* a = new SpecialThing(1);
  auto* b = new SpecialThing(2);
  Thing stranger(99);
  array.Add(a);
  array.Add(nullptr);
  array.Add(b);
  EXPECT_FALSE(array.Delete(&stranger));
  EXPECT_TRUE(array.Delete(b));
  EXPECT_EQ(Thing::s_deleted, std::vector{2});
  EXPECT_TRUE(array.Delete(nullptr)) << "a null slot goes";
  EXPECT_EQ(Elements(array), std::vector<Thing*>{a});
  EXPECT_EQ(Thing::s_deleted, std::vector{2}) << "and nothing is deleted";
  EXPECT_FALSE(array.Delete(nullptr));
  EXPECT_TRUE(array.DeleteLastElement());
  EXPECT_EQ(Thing::s_deleted, (std::vector{2, 1}));
  EXPECT_FALSE(array.DeleteLastElement());
  array.Add(nullptr);
  EXPECT_TRUE(array.DeleteLastElement()) << "a null slot counts";
  EXPECT_TRUE(array.IsEmpty());
}

TEST_F(CExPtrArrayTest, DeletesAtAnIndex) {
  Things array;
  for (int i = 0; i < 5; ++i) array.Add(i == 2 ? nullptr : new Thing(i));
  array.DeleteAt(1, 2);
  EXPECT_EQ(Thing::s_deleted, std::vector{1});
  EXPECT_EQ(array.GetSize(), 3);
  array.DeleteAt(0, 0);
  array.DeleteAt(7, 0);
  array.DeleteAt(7, -1);
  EXPECT_EQ(array.GetSize(), 3);
  EXPECT_THROW(array.DeleteAt(-1, 1), CInvalidArgException);
  EXPECT_THROW(array.DeleteAt(3, 1), CInvalidArgException);
  EXPECT_EQ(array.GetSize(), 3);
  // What stands at the index goes before the index is a bad one.
  EXPECT_THROW(array.DeleteAt(1, 5), CInvalidArgException);
  EXPECT_EQ(Thing::s_deleted, (std::vector{1, 3, 4}));
  array.DeleteAll();
}

TEST_F(CExPtrArrayTest, DeletesAllFromFrontToBack) {
  Things array;
  for (int i = 0; i < 4; ++i) array.Add(i == 2 ? nullptr : new SpecialThing(i));
  array.DeleteAll();
  EXPECT_TRUE(array.IsEmpty());
  EXPECT_EQ(Thing::s_deleted, (std::vector{0, 1, 3}));
  array.DeleteAll();
}

TEST_F(CExPtrArrayTest, LeavesItsElementsAliveAndANamedArrayDoesNot) {
  auto* a = new Thing(1);
  {
    Things array;
    array.Add(a);
  }
  EXPECT_EQ(Thing::s_nAlive, 1);
  {
    ThingArray array;
    array.Add(a);
    array.Add(nullptr);
    array.Add(new SpecialThing(2));
  }
  EXPECT_EQ(Thing::s_deleted, (std::vector{1, 2}));
  // Through a pointer to the base.
  CArray<Thing*, Thing*>* pBase = new ThingArray;
  pBase->Add(new Thing(3));
  delete pBase;
  EXPECT_EQ(Thing::s_deleted, (std::vector{1, 2, 3}));
  // Emptied slots are forgotten.
  Thing stays(4);
  {
    ThingArray array;
    array.Add(&stays);
    array.SetSize(0, -1);
    array.Add(&stays);
    array.RemoveAll();
  }
  EXPECT_EQ(Thing::s_nAlive, 1);
}

TEST_F(CExPtrArrayTest, RemovesNullsAndDuplicates) {
  Thing a(1);
  Thing b(2);
  Things array;
  for (Thing* p : {&a, &b, &a, static_cast<Thing*>(nullptr), &b, static_cast<Thing*>(nullptr)}) array.Add(p);
  array.RemoveDuplicatedElements();
  EXPECT_EQ(Elements(array), (std::vector<Thing*>{&a, &b, nullptr}));
  array.Add(nullptr);
  array.Add(&a);
  array.RemoveNullElement();
  EXPECT_EQ(Elements(array), (std::vector<Thing*>{&a, &b, &a}));
  Things empty;
  empty.RemoveNullElement();
  empty.RemoveDuplicatedElements();
  EXPECT_TRUE(empty.IsEmpty());
  empty.Add(nullptr);
  empty.RemoveNullElement();
  EXPECT_TRUE(empty.IsEmpty());
  EXPECT_TRUE(Thing::s_deleted.empty());
}

TEST_F(CExPtrArrayTest, Reverses) {
  Thing a(1);
  Thing b(2);
  Thing c(3);
  Things array;
  array.Reverse();
  EXPECT_TRUE(array.IsEmpty());
  array.Add(&a);
  array.Reverse();
  EXPECT_EQ(Elements(array), std::vector<Thing*>{&a});
  array.Add(&b);
  array.Add(&c);
  array.Reverse();
  EXPECT_EQ(Elements(array), (std::vector<Thing*>{&c, &b, &a}));
}

TEST_F(CExPtrArrayTest, ComparesByPointer) {
  Thing a(1);
  Thing b(1);
  Things x;
  Things y;
  EXPECT_TRUE(x.IsElementEqual(y));
  x.Add(&a);
  EXPECT_FALSE(x.IsElementEqual(y));
  y.Add(&b);
  EXPECT_FALSE(x.IsElementEqual(y)) << "equal things are not the same thing";
  y.SetAt(0, &a);
  EXPECT_TRUE(x.IsElementEqual(y));
  x.Add(&b);
  x.Add(nullptr);
  y.Add(nullptr);
  y.Add(&b);
  EXPECT_FALSE(x.IsElementEqual(y)) << "the order counts";
  EXPECT_TRUE(x.IsElementEqual(x));
}

TEST_F(CExPtrArrayTest, SubtractsOneOccurrenceEach) {
  Thing a(1);
  Thing b(2);
  Thing c(3);
  Things array;
  for (Thing* p : {&a, &b, &a, &c, &a}) array.Add(p);
  Things list;
  list.Add(&a);
  list.Add(&a);
  list.Add(nullptr);
  array.Subtract(list);
  EXPECT_EQ(Elements(array), (std::vector<Thing*>{&b, &c, &a})) << "a pointer named twice takes out two";
  array.Subtract(Things());
  EXPECT_EQ(array.GetSize(), 3);
  array.Add(nullptr);
  array.Subtract(list);
  EXPECT_EQ(Elements(array), (std::vector<Thing*>{&b, &c}));
  Things nulls;
  nulls.SetSize(2);
  array.InsertAt(1, static_cast<Thing*>(nullptr));
  array.Subtract(nulls);
  EXPECT_EQ(Elements(array), (std::vector<Thing*>{&b, &c})) << "null is subtracted like any pointer";
  array.Subtract(array);
  EXPECT_TRUE(array.IsEmpty());
  EXPECT_TRUE(Thing::s_deleted.empty());
}

TEST_F(CExPtrArrayTest, MovesElements) {
  std::vector<std::unique_ptr<Thing>> things;
  Things source;
  Things dest;
  for (int i = 0; i < 6; ++i) {
    things.push_back(std::make_unique<Thing>(i));
    source.Add(things.back().get());
  }
  Thing x(10);
  Thing y(11);
  dest.Add(&x);
  dest.Add(&y);
  EXPECT_FALSE(source.MoveElementTo(dest, 4, 2));
  EXPECT_EQ(source.GetSize(), 6);
  EXPECT_EQ(dest.GetSize(), 2);
  EXPECT_TRUE(source.MoveElementTo(dest, 2, 4));
  const auto at = [&things](std::size_t i) { return things[i].get(); };
  EXPECT_EQ(Elements(source), (std::vector<Thing*>{at(0), at(1), at(5)}));
  EXPECT_EQ(Elements(dest), (std::vector<Thing*>{&x, &y, at(2), at(3), at(4)}));
  const auto sourceBefore = Elements(source);
  const auto destBefore = Elements(dest);
  for (const auto& [nFrom, nTo] : {std::pair{-1, 1}, {0, 3}, {3, 3}, {-2, -1}, {0, INT_MAX}, {INT_MIN, 0}}) {
    EXPECT_THROW(source.MoveElementTo(dest, nFrom, nTo), CInvalidArgException) << nFrom << " to " << nTo;
    EXPECT_EQ(Elements(source), sourceBefore);
    EXPECT_EQ(Elements(dest), destBefore);
  }
  EXPECT_THROW(source.MoveElementTo(source, 0, 1), CInvalidArgException);
  EXPECT_EQ(Elements(source), sourceBefore);
  EXPECT_FALSE(source.MoveElementTo(source, 1, 0)) << "nothing was to be moved";
  EXPECT_TRUE(source.MoveElementTo(dest, 0, 2));
  EXPECT_TRUE(source.IsEmpty());
  EXPECT_EQ(dest.GetSize(), 8);
}

TEST_F(CExPtrArrayTest, BehavesLikeAVectorOfPointers) {
  std::mt19937 random(11);
  const auto pick = [&random](std::size_t n) { return static_cast<std::size_t>(random()) % n; };
  std::vector<std::unique_ptr<Thing>> pool;
  for (int i = 0; i < 8; ++i) pool.push_back(std::make_unique<Thing>(i));
  Things tested[2];
  std::vector<Thing*> model[2];
  for (int nStep = 0; nStep < 60000; ++nStep) {
    const std::size_t k = pick(2);
    Things& t = tested[k];
    auto& m = model[k];
    Thing* p = pick(6) == 0 ? nullptr : pool[pick(8)].get();
    const auto first = std::find(m.begin(), m.end(), p);
    switch (pick(11)) {
      case 0:
      case 1:
      case 2:
        t.Add(p);
        m.push_back(p);
        break;
      case 3:
        ASSERT_EQ(t.Add_if_only_do_not_exists(p), first == m.end() ? static_cast<INT_PTR>(m.size()) : -1);
        if (first == m.end()) m.push_back(p);
        break;
      case 4:
        ASSERT_EQ(t.Remove(p), first != m.end());
        if (first != m.end()) m.erase(first);
        break;
      case 5:
        ASSERT_EQ(t.RemoveLastElement(), m.empty() ? nullptr : m.back());
        if (!m.empty()) m.pop_back();
        break;
      case 6:
        t.RemoveNullElement();
        std::erase(m, nullptr);
        break;
      case 7: {
        t.RemoveDuplicatedElements();
        std::vector<Thing*> kept;
        for (Thing* q : m) {
          if (std::find(kept.begin(), kept.end(), q) == kept.end()) kept.push_back(q);
        }
        m = kept;
        break;
      }
      case 8:
        t.Subtract(tested[1 - k]);
        for (Thing* q : model[1 - k]) {
          if (const auto it = std::find(m.begin(), m.end(), q); it != m.end()) m.erase(it);
        }
        break;
      case 9:
        t.Reverse();
        std::reverse(m.begin(), m.end());
        break;
      case 10: {
        const int nFrom = static_cast<int>(pick(m.size() + 1));
        const int nTo = static_cast<int>(pick(m.size() + 1));
        if (nFrom <= nTo && nTo >= static_cast<int>(m.size())) break;
        ASSERT_EQ(t.MoveElementTo(tested[1 - k], nFrom, nTo), nFrom <= nTo);
        if (nFrom > nTo) break;
        model[1 - k].insert(model[1 - k].end(), m.begin() + nFrom, m.begin() + nTo + 1);
        m.erase(m.begin() + nFrom, m.begin() + nTo + 1);
        break;
      }
    }
    if (m.size() > 40) {
      t.SetSize(3);
      m.resize(3);
    }
    ASSERT_EQ(Elements(t), m) << "step " << nStep;
    ASSERT_EQ(t.FindIndex(p), std::find(m.begin(), m.end(), p) == m.end()
                                  ? -1
                                  : static_cast<int>(std::find(m.begin(), m.end(), p) - m.begin()));
    ASSERT_EQ(t.GetLastElement(), m.empty() ? nullptr : m.back());
    ASSERT_EQ(t.IsElementEqual(tested[1 - k]), m == model[1 - k]);
  }
}

TEST_F(CExPtrArrayTest, TakesLinearTimeForLongLists) {
  // Each of these visits every pair of elements when done the plain way, which takes minutes here.
  std::vector<std::unique_ptr<Thing>> things;
  Things array;
  Things list;
  for (int i = 0; i < 300000; ++i) {
    things.push_back(std::make_unique<Thing>(i));
    array.Add(things.back().get());
    array.Add(things.back().get());
    list.Add(things.back().get());
  }
  const std::clock_t start = std::clock();
  array.RemoveDuplicatedElements();
  EXPECT_EQ(array.GetSize(), 300000);
  list.Reverse();
  array.Subtract(list);
  EXPECT_TRUE(array.IsEmpty());
  EXPECT_TRUE(list.MoveElementTo(array, 0, 299999));
  EXPECT_TRUE(list.IsEmpty());
  Things nulls;
  nulls.SetSize(1000000);
  nulls.DeleteAt(0, 999999);
  EXPECT_EQ(nulls.GetSize(), 1);
  EXPECT_LT((std::clock() - start) / CLOCKS_PER_SEC, 5);
}

TEST(OwnedHelpers, AppendAndMake) {
  ThingArray array;
  Thing& thing = laminate::AppendOwned(array, std::make_unique<Thing>(5));
  EXPECT_EQ(array.GetAt(0), &thing);
  Thing* a = nullptr;
  SpecialThing* b = nullptr;
  laminate::MakeOwned(a, b);
  array.Add(a);
  array.Add(b);
  EXPECT_EQ(Thing::s_nAlive, 3);
}

}  // namespace
