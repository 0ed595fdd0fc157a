#include "base/CArray.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <new>
#include <random>
#include <string>
#include <vector>

#include "base/CArrayN.h"
#include "base/CArrayPointD.h"
#include "base/CPointF.h"
#include "base/CRectF.h"
#include "base/CStringArray.h"
#include "base/CStringEx.h"

// The forms that hosts may link.
template class CArray<CPointF, CPointF&>;
template class CArray<CRectF, CRectF&>;
template class CArray<CStringEx, CStringEx&>;
template class CArray<CStringExArray, CStringExArray&>;
template class CArray<ULONGLONG, ULONGLONG>;

namespace {

using Ints = CArray<int, int>;

template <class Array>
auto Elements(const Array& array) {
  return std::vector(array.begin(), array.end());
}
std::vector<std::string> Texts(const CArray<CString, const CString&>& array) {
  std::vector<std::string> texts;
  for (const CString& s : array) texts.emplace_back(s.View());
  return texts;
}
void Fill(Ints& array, std::initializer_list<int> values) {
  for (const int n : values) array.Add(n);
}

TEST(CArray, IsEmptyAtFirst) {
  const Ints array;
  EXPECT_EQ(array.GetSize(), 0);
  EXPECT_EQ(array.GetCount(), 0);
  EXPECT_EQ(array.GetUpperBound(), -1);
  EXPECT_TRUE(array.IsEmpty());
  EXPECT_EQ(array.GetData(), nullptr);
}

TEST(CArray, GivesElementsByIndex) {
  Ints array;
  EXPECT_EQ(array.Add(10), 0);
  EXPECT_EQ(array.Add(11), 1);
  EXPECT_EQ(array.GetUpperBound(), 1);
  EXPECT_FALSE(array.IsEmpty());
  const Ints& constant = array;
  EXPECT_EQ(constant[0], 10);
  EXPECT_EQ(constant.GetAt(1), 11);
  EXPECT_EQ(constant.ElementAt(1), 11);
  EXPECT_EQ(constant.GetData()[1], 11);
  array[0] = 20;
  array.GetAt(1) = 21;
  EXPECT_EQ(Elements(array), (std::vector{20, 21}));
  array.ElementAt(1) = 22;
  array.SetAt(0, 19);
  EXPECT_EQ(Elements(array), (std::vector{19, 22}));
}

TEST(CArray, RaisesOnABadIndex) {
  Ints array;
  Fill(array, {1, 2});
  const Ints& constant = array;
  for (const INT_PTR n :
       {INT_PTR{-1}, INT_PTR{2}, std::numeric_limits<INT_PTR>::min(), std::numeric_limits<INT_PTR>::max()}) {
    EXPECT_THROW(array[n], CInvalidArgException);
    EXPECT_THROW(constant[n], CInvalidArgException);
    EXPECT_THROW(array.GetAt(n), CInvalidArgException);
    EXPECT_THROW(constant.GetAt(n), CInvalidArgException);
    EXPECT_THROW(array.ElementAt(n), CInvalidArgException);
    EXPECT_THROW(constant.ElementAt(n), CInvalidArgException);
    EXPECT_THROW(array.SetAt(n, 0), CInvalidArgException);
    EXPECT_THROW(array.RemoveAt(n), CInvalidArgException);
  }
  EXPECT_THROW(array.SetAtGrow(-1, 0), CInvalidArgException);
  EXPECT_THROW(array.SetSize(-1), CInvalidArgException);
  EXPECT_THROW(array.InsertAt(-1, 0), CInvalidArgException);
  EXPECT_THROW(array.InsertAt(0, 0, 0), CInvalidArgException);
  EXPECT_THROW(array.InsertAt(0, 0, -1), CInvalidArgException);
  EXPECT_THROW(array.InsertAt(-1, &array), CInvalidArgException);
  EXPECT_THROW(array.InsertAt(0, static_cast<const Ints*>(nullptr)), CInvalidArgException);
  EXPECT_THROW(array.RemoveAt(0, 3), CInvalidArgException);
  EXPECT_THROW(array.RemoveAt(1, 2), CInvalidArgException);
  EXPECT_THROW(array.RemoveAt(0, -1), CInvalidArgException);
  EXPECT_THROW(array.RemoveAt(1, std::numeric_limits<INT_PTR>::max()), CInvalidArgException);
  EXPECT_THROW(array.RemoveAt(3, 0), CInvalidArgException);
  EXPECT_EQ(Elements(array), (std::vector{1, 2})) << "a failure changes nothing";
}

TEST(CStringArray, RaisesOnABadIndex) {
  CStringArray array;
  array.Add("a");
  array.Add("b");
  const CStringArray& constant = array;
  for (const INT_PTR n : {INT_PTR{-1}, INT_PTR{2}}) {
    EXPECT_THROW(array[n], CInvalidArgException);
    EXPECT_THROW(constant[n], CInvalidArgException);
    EXPECT_THROW(array.GetAt(n), CInvalidArgException);
    EXPECT_THROW(array.ElementAt(n), CInvalidArgException);
  }
  EXPECT_EQ(array[1], "b");
}

TEST(CArray, RaisesBeforeItsSizeOverflows) {
  Ints array;
  Fill(array, {1, 2});
  constexpr INT_PTR kMost = std::numeric_limits<INT_PTR>::max();
  EXPECT_THROW(array.SetSize(kMost), CMemoryException);
  EXPECT_THROW(array.SetSize(kMost / 4), CMemoryException);
  EXPECT_THROW(array.SetAtGrow(kMost, 0), CMemoryException);
  EXPECT_THROW(array.SetAtGrow(kMost - 1, 0), CMemoryException);
  EXPECT_THROW(array.InsertAt(0, 0, kMost), CMemoryException);
  EXPECT_THROW(array.InsertAt(kMost, 0, kMost), CMemoryException);
  EXPECT_THROW(array.InsertAt(kMost, 0), CMemoryException);
  EXPECT_THROW(array.InsertAt(kMost, &array), CMemoryException);
  EXPECT_EQ(Elements(array), (std::vector{1, 2}));
}

TEST(CArray, SetsItsSize) {
  Ints array;
  array.SetSize(3);
  EXPECT_EQ(Elements(array), (std::vector{0, 0, 0}));
  array[1] = 5;
  array.SetSize(2, 100);
  EXPECT_EQ(Elements(array), (std::vector{0, 5}));
  array.SetSize(4);
  EXPECT_EQ(Elements(array), (std::vector{0, 5, 0, 0})) << "what comes back must be fresh";
  array.SetSize(0, -1);
  EXPECT_TRUE(array.IsEmpty());
  EXPECT_EQ(array.GetData(), nullptr) << "no slots are kept";
  array.Add(1);
  array.RemoveAll();
  EXPECT_EQ(array.GetSize(), 0);
}

TEST(CArray, GrowsToWhereAnElementIsSet) {
  Ints array;
  array.SetAtGrow(0, 7);
  EXPECT_EQ(Elements(array), std::vector{7}) << "at the current size it appends";
  array.SetAtGrow(1, 8);
  array.SetAtGrow(0, 6);
  EXPECT_EQ(Elements(array), (std::vector{6, 8}));
  array.SetAtGrow(5, 9);
  EXPECT_EQ(Elements(array), (std::vector{6, 8, 0, 0, 0, 9}));
}

TEST(CArray, AppendsAndCopies) {
  Ints a;
  Ints b;
  Fill(a, {1, 2});
  Fill(b, {3, 4, 5});
  EXPECT_EQ(a.Append(b), 2);
  EXPECT_EQ(Elements(a), (std::vector{1, 2, 3, 4, 5}));
  EXPECT_EQ(b.Append(Ints()), 3);
  EXPECT_EQ(b.Append(b), 3);
  EXPECT_EQ(Elements(b), (std::vector{3, 4, 5, 3, 4, 5})) << "to itself";
  a.Copy(b);
  EXPECT_EQ(Elements(a), Elements(b));
  a.Copy(a);
  EXPECT_EQ(Elements(a), Elements(b));
  a.Copy(Ints());
  EXPECT_TRUE(a.IsEmpty());
}

TEST(CArray, Inserts) {
  Ints array;
  array.InsertAt(0, 1);
  array.InsertAt(0, 2);
  array.InsertAt(2, 3);
  array.InsertAt(1, 4, 2);
  EXPECT_EQ(Elements(array), (std::vector{2, 4, 4, 1, 3}));
  array.InsertAt(7, 5);
  EXPECT_EQ(Elements(array), (std::vector{2, 4, 4, 1, 3, 0, 0, 5})) << "behind the end it grows";
  Ints other;
  other.InsertAt(0, &array);
  EXPECT_EQ(Elements(other), Elements(array));
  Ints little;
  Fill(little, {7, 8});
  other.InsertAt(1, &little);
  EXPECT_EQ(Elements(other), (std::vector{2, 7, 8, 4, 4, 1, 3, 0, 0, 5}));
  little.InsertAt(1, &little);
  EXPECT_EQ(Elements(little), (std::vector{7, 7, 8, 8})) << "itself";
  little.InsertAt(5, &little);
  EXPECT_EQ(Elements(little), (std::vector{7, 7, 8, 8, 0, 7, 7, 8, 8}));
  const Ints empty;
  little.InsertAt(100, &empty);
  EXPECT_EQ(little.GetSize(), 9) << "nothing is inserted, so nothing grows";
}

TEST(CArray, Removes) {
  Ints array;
  Fill(array, {0, 1, 2, 3, 4, 5});
  array.RemoveAt(2);
  array.RemoveAt(3, 2);
  array.RemoveAt(0, 0);
  array.RemoveAt(3, 0);
  EXPECT_EQ(Elements(array), (std::vector{0, 1, 3}));
  array.RemoveAt(0, 3);
  EXPECT_TRUE(array.IsEmpty());

  CStringArray texts;
  texts.Add("a text of more than sixteen bytes");
  texts.Add("b");
  texts.RemoveAt(0, 0);
  EXPECT_EQ(Texts(texts), (std::vector<std::string>{"a text of more than sixteen bytes", "b"}))
      << "no element is moved onto itself";
}

TEST(CArray, TakesElementsOfItself) {
  CStringArray array;
  array.Add("the first text of the array");
  for (int i = 0; i < 40; ++i) array.Add(array[0]);
  for (int i = 0; i < 40; ++i) array.InsertAt(0, array[array.GetUpperBound()]);
  array.InsertAt(1, array[0], 5);
  array.SetAtGrow(array.GetSize(), array[3]);
  array.SetAtGrow(array.GetSize() + 10, array[3]);
  array.SetAt(0, array[1]);
  int nFilled = 0;
  for (const CString& s : array) nFilled += s == "the first text of the array" ? 1 : 0;
  EXPECT_EQ(nFilled, 88);
  EXPECT_EQ(array.GetSize(), 98);
}

TEST(CArray, GivesUnusedRoomBack) {
  CStringArray array;
  for (int i = 0; i < 100; ++i) array.Add("a text of more than sixteen bytes");
  array.RemoveAt(1, 99);
  array.FreeExtra();
  EXPECT_EQ(Texts(array), std::vector<std::string>{"a text of more than sixteen bytes"});
  array.RemoveAt(0);
  array.FreeExtra();
  EXPECT_EQ(array.GetData(), nullptr);
  array.FreeExtra();
}

TEST(CArray, MakesElementsInPlace) {
  CStringArray array;
  array.Emplace("xyz", 2);
  array.Emplace() = "b";
  EXPECT_EQ(Texts(array), (std::vector<std::string>{"xy", "b"}));
}

// Elements in storage of the caller: every operation goes on from there to storage of the array's own.
TEST(CArray, BorrowsStorage) {
  using Operation = void (*)(CStringArray&);
  const std::pair<const char*, Operation> operations[] = {
      {"none", [](CStringArray&) {}},
      {"Add", [](CStringArray& a) { a.Add("new"); }},
      {"Add of its own", [](CStringArray& a) { a.Add(a[0]); }},
      {"Emplace", [](CStringArray& a) { a.Emplace("new"); }},
      {"Append", [](CStringArray& a) { a.Append(a); }},
      {"InsertAt", [](CStringArray& a) { a.InsertAt(1, "new", 3); }},
      {"RemoveAt", [](CStringArray& a) { a.RemoveAt(0); }},
      {"RemoveAt and Add",
       [](CStringArray& a) {
         a.RemoveAt(0);
         a.Add("new");
       }},
      {"shrink", [](CStringArray& a) { a.SetSize(1); }},
      {"empty", [](CStringArray& a) { a.SetSize(0, -1); }},
      {"grow", [](CStringArray& a) { a.SetSize(9); }},
      {"SetAtGrow", [](CStringArray& a) { a.SetAtGrow(7, "new"); }},
      {"FreeExtra", [](CStringArray& a) { a.FreeExtra(); }},
      {"Copy", [](CStringArray& a) { a.Copy(CStringArray()); }},
      {"copied to", [](CStringArray& a) {
         CStringArray other;
         other.Add("other");
         a = other;
       }}};
  for (const auto& [szName, operation] : operations) {
    alignas(CString) std::byte storage[3 * sizeof(CString)];
    auto* pStorage = reinterpret_cast<CString*>(storage);
    CStringArray plain;
    CStringArray borrowing;
    int i = 0;
    for (const char* sz : {"a", "a text of more than sixteen bytes", "c"}) {
      plain.Add(sz);
      ::new (static_cast<void*>(pStorage + i++)) CString(sz);
    }
    borrowing.Borrow(pStorage, 3);
    ASSERT_TRUE(borrowing == plain);
    operation(plain);
    operation(borrowing);
    EXPECT_TRUE(borrowing == plain) << szName;
    CStringArray copy(borrowing);
    EXPECT_TRUE(copy == plain) << szName;
  }
}

TEST(CArray, HasValueSemanticsInItsHeirs) {
  CStringArray strings;
  strings.Add("a");
  CStringArray stringsCopy(strings);
  strings.Add("b");
  EXPECT_EQ(stringsCopy.GetSize(), 1);
  EXPECT_FALSE(strings == stringsCopy);
  stringsCopy = strings;
  EXPECT_TRUE(strings == stringsCopy);
  stringsCopy[1] = "B";
  EXPECT_FALSE(strings == stringsCopy);
  EXPECT_EQ(strings[1], "b");
  CStringArray& same = strings;
  strings = same;
  EXPECT_EQ(strings.GetSize(), 2);

  CArrayN numbers;
  numbers.Add(1);
  CArrayN numbersCopy(numbers);
  EXPECT_TRUE(numbers == numbersCopy);
  numbersCopy.Add(2);
  EXPECT_TRUE(numbers != numbersCopy);
  numbers = numbersCopy;
  EXPECT_TRUE(numbers == numbersCopy);
  numbers[0] = 9;
  EXPECT_TRUE(numbers != numbersCopy);
  EXPECT_TRUE(CArrayN() == CArrayN());
  CArrayN taken(std::move(numbers));
  EXPECT_EQ(Elements(taken), (std::vector{9, 2}));

  CArrayArrayN nested;
  nested.Add(taken);
  nested.Add(numbersCopy);
  CArrayArrayN nestedCopy(nested);
  EXPECT_TRUE(nested == nestedCopy);
  nestedCopy[1].Add(5);
  EXPECT_TRUE(nested != nestedCopy);
  EXPECT_EQ(nested[1].GetSize(), 2) << "a copy owns its data";
  for (int i = 0; i < 20; ++i) nested.Add(nested[0]);
  EXPECT_TRUE(nested[21] == taken);

  CArrayPointD points;
  CPointD pt(1, 2);
  points.Add(pt);
  CArrayPointD pointsCopy(points);
  pointsCopy[0].x = 5;
  EXPECT_EQ(points[0].x, 1);
  pointsCopy = points;
  EXPECT_EQ(pointsCopy[0].x, 1);
}

// An element that can be told to raise when it is copied, and that counts its objects.
struct Fragile {
  explicit Fragile(int n = 0) : value(n) { ++s_nAlive; }
  Fragile(const Fragile& s) : value(s.value) {
    if (s_nCopiesLeft-- == 0) throw std::runtime_error("copy");
    ++s_nAlive;
  }
  Fragile& operator=(const Fragile& s) {
    if (s_nCopiesLeft-- == 0) throw std::runtime_error("copy");
    value = s.value;
    return *this;
  }
  ~Fragile() { --s_nAlive; }
  int value;
  static int s_nAlive;
  static int s_nCopiesLeft;
};
int Fragile::s_nAlive = 0;
int Fragile::s_nCopiesLeft = -1;

TEST(CArray, IsAsBeforeWhenAnElementsCopyRaises) {
  using Array = CArray<Fragile, const Fragile&>;
  struct Operation {
    const char* szName;
    void (*run)(Array&, const Array&);
  };
  const Operation operations[] = {
      {"Add", [](Array& a, const Array& b) { a.Add(b[0]); }},
      {"Add of its own", [](Array& a, const Array&) { a.Add(a[1]); }},
      {"Append", [](Array& a, const Array& b) { a.Append(b); }},
      {"Append of itself", [](Array& a, const Array&) { a.Append(a); }},
      {"Copy", [](Array& a, const Array& b) { a.Copy(b); }},
      {"SetAtGrow at the end", [](Array& a, const Array& b) { a.SetAtGrow(a.GetSize(), b[0]); }},
      {"SetAtGrow behind it", [](Array& a, const Array& b) { a.SetAtGrow(a.GetSize() + 3, b[0]); }},
      {"SetAt", [](Array& a, const Array& b) { a.SetAt(0, b[0]); }},
      {"InsertAt", [](Array& a, const Array& b) { a.InsertAt(1, b[0], 3); }},
      {"InsertAt behind the end", [](Array& a, const Array& b) { a.InsertAt(a.GetSize() + 2, b[0], 2); }},
      {"InsertAt of an array", [](Array& a, const Array& b) { a.InsertAt(1, &b); }},
      {"InsertAt of itself", [](Array& a, const Array&) { a.InsertAt(1, &a); }},
      {"SetSize", [](Array& a, const Array&) { a.SetSize(20); }},
      {"FreeExtra", [](Array& a, const Array&) { a.FreeExtra(); }},
      {"Emplace", [](Array& a, const Array&) { a.Emplace(5); }},
  };
  for (const Operation& operation : operations) {
    int nRaised = 0;
    for (int nSize : {2, 3, 6}) {
      for (int nCopies = 0;; ++nCopies) {
        ASSERT_LT(nCopies, 200);
        Fragile::s_nCopiesLeft = -1;
        Array a;
        Array b;
        for (int i = 0; i < nSize; ++i) a.Emplace(i);
        for (int i = 0; i < 3; ++i) b.Emplace(100 + i);
        Fragile::s_nCopiesLeft = nCopies;
        bool bRaised = false;
        try {
          operation.run(a, b);
        } catch (const std::runtime_error&) {
          bRaised = true;
        }
        Fragile::s_nCopiesLeft = -1;
        if (!bRaised) break;
        ++nRaised;
        ASSERT_EQ(a.GetSize(), nSize) << operation.szName << ", copy " << nCopies;
        for (int i = 0; i < nSize; ++i) ASSERT_EQ(a[i].value, i) << operation.szName << ", copy " << nCopies;
        ASSERT_EQ(b.GetSize(), 3);
      }
    }
    EXPECT_TRUE(nRaised > 0 || operation.szName == std::string("Emplace")) << operation.szName;
    EXPECT_EQ(Fragile::s_nAlive, 0) << operation.szName;
  }
}

TEST(CArray, BehavesLikeAStandardVector) {
  std::mt19937 random(7);
  const auto pick = [&random](std::size_t n) { return static_cast<std::size_t>(random()) % n; };
  CStringArray tested[2];
  std::vector<std::string> model[2];
  for (int nStep = 0; nStep < 60000; ++nStep) {
    const std::size_t k = pick(2);
    CStringArray& t = tested[k];
    auto& m = model[k];
    const std::string s =
        pick(2) != 0 ? std::to_string(nStep) : "a longer text that is shared " + std::to_string(nStep);
    const CString cs(s);
    const std::size_t at = pick(m.size() + 3);
    const auto n = static_cast<INT_PTR>(at);
    const std::size_t count = pick(4);
    switch (pick(13)) {
      case 0:
      case 1:
      case 2:
        ASSERT_EQ(t.Add(cs), static_cast<INT_PTR>(m.size()));
        m.push_back(s);
        break;
      case 3:
        t.InsertAt(n, cs, static_cast<INT_PTR>(count) + 1);
        if (at > m.size()) m.resize(at);
        m.insert(m.begin() + n, count + 1, s);
        break;
      case 4:
        if (at + count <= m.size()) {
          t.RemoveAt(n, static_cast<INT_PTR>(count));
          m.erase(m.begin() + n, m.begin() + n + static_cast<INT_PTR>(count));
        } else {
          ASSERT_THROW(t.RemoveAt(n, static_cast<INT_PTR>(count)), CInvalidArgException);
        }
        break;
      case 5:
        t.SetAtGrow(n, cs);
        if (at >= m.size()) m.resize(at + 1);
        m[at] = s;
        break;
      case 6:
        if (at < m.size()) {
          t.SetAt(n, cs);
          m[at] = s;
        } else {
          ASSERT_THROW(t.SetAt(n, cs), CInvalidArgException);
        }
        break;
      case 7:
        t.SetSize(n);
        m.resize(at);
        break;
      case 8:
        t.Append(tested[1 - k]);
        m.insert(m.end(), model[1 - k].begin(), model[1 - k].end());
        break;
      case 9:
        t.Copy(tested[1 - k]);
        m = model[1 - k];
        break;
      case 10:
        t.FreeExtra();
        break;
      case 11: {
        t.InsertAt(n, &tested[1 - k]);
        if (model[1 - k].empty()) break;
        if (at > m.size()) m.resize(at);
        const auto copy = model[1 - k];
        m.insert(m.begin() + n, copy.begin(), copy.end());
        break;
      }
      case 12:
        if (at < m.size()) {
          t.Add(t[n]);
          m.push_back(std::string(m[at]));
        }
        break;
    }
    if (m.size() > 60) {
      t.SetSize(5);
      m.resize(5);
    }
    ASSERT_EQ(t.GetSize(), static_cast<INT_PTR>(m.size())) << "step " << nStep;
    for (std::size_t i = 0; i < m.size(); ++i) ASSERT_EQ(t[static_cast<INT_PTR>(i)].View(), m[i]) << "step " << nStep;
  }
}

TEST(CArray, AppendsInLinearTime) {
  Ints array;
  for (int i = 0; i < 3000000; ++i) array.Add(i);
  EXPECT_EQ(array[2999999], 2999999);
}

}  // namespace
