#include "base/RecordArray.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "base/CLProperty.h"
#include "base/CMemFile.h"

namespace {

// A record as the design data has them: a version word, then its fields.
class Record final {
 public:
  Record() { ++s_nAlive; }
  explicit Record(int n) : m_n(n) { ++s_nAlive; }
  Record(const Record& s) : m_n(s.m_n) {
    if (s_nClonesLeft-- == 0) throw std::runtime_error("clone");
    ++s_nAlive;
  }
  ~Record() { --s_nAlive; }
  static const int m_nVersion = 1;
  virtual void Serialize(CArchive& ar) {
    if (ar.IsStoring()) {
      ar << m_nVersion << m_n;
      return;
    }
    int nVersion = 0;
    ar >> nVersion;
    if (nVersion == 1) ar >> m_n;
  }
  virtual Record* clone() const { return new Record(*this); }
  bool operator==(const Record& other) const { return m_n == other.m_n; }
  bool operator!=(const Record& other) const {
    ++s_nCompared;
    return !(*this == other);
  }

  int m_n = -1;
  static int s_nAlive;
  static int s_nClonesLeft;
  static int s_nCompared;
};
int Record::s_nAlive = 0;
int Record::s_nClonesLeft = -1;
int Record::s_nCompared = 0;

class RecordList : public laminate::RecordArray<Record, RecordList> {};

class RecordArrayTest : public ::testing::Test {
 protected:
  void TearDown() override {
    Record::s_nClonesLeft = -1;
    EXPECT_EQ(Record::s_nAlive, 0) << "leaked or deleted twice";
  }
};

std::string Bytes(std::initializer_list<int> values) {
  std::string s;
  for (const int n : values) s += static_cast<char>(n);
  return s;
}
const std::string kMarker = Bytes({1, 0, 0, 0x80});

template <class Array>
std::string Stored(Array& array) {
  CMemFile file;
  {
    CArchive ar(&file, CArchive::store);
    array.Serialize(ar);
    ar.Close();
  }
  std::string s(file.GetLength(), '\0');
  file.SeekToBegin();
  file.Read(s.data(), static_cast<UINT>(s.size()));
  return s;
}
// Gives how many bytes were taken; -1 for the end before its time.
template <class Array>
__int64 Load(Array& array, std::string bytes) {
  CMemFile file(reinterpret_cast<BYTE*>(bytes.data()), static_cast<UINT>(bytes.size()));
  CArchive ar(&file, CArchive::load);
  try {
    array.Serialize(ar);
  } catch (const CArchiveException& e) {
    EXPECT_EQ(e.m_cause, CArchiveException::endOfFile);
    return -1;
  }
  ar.Close();
  return static_cast<__int64>(file.GetPosition());
}
void Fill(RecordList& list, std::initializer_list<int> values) {
  for (const int n : values) list.Add(n < 0 ? nullptr : new Record(n));
}
std::vector<int> Values(const RecordList& list) {
  std::vector<int> values;
  for (const Record* p : list) values.push_back(p ? p->m_n : -1);
  return values;
}

TEST_F(RecordArrayTest, HasTheFormOfTheArchive) {
  RecordList list;
  EXPECT_EQ(RecordList::m_nVersion, 1);
  EXPECT_EQ(Stored(list), kMarker + std::string(8, '\0')) << "the marker and a zero count";
  Fill(list, {5, -1, 258});
  const std::string bytes =
      kMarker + Bytes({2, 0, 0, 0, 0, 0, 0, 0}) + Bytes({1, 0, 0, 0, 5, 0, 0, 0}) + Bytes({1, 0, 0, 0, 2, 1, 0, 0});
  EXPECT_EQ(Stored(list), bytes) << "an empty slot is not there, nor counted";
  RecordList back;
  Fill(back, {9, -1});
  EXPECT_EQ(Load(back, bytes + "rest"), static_cast<__int64>(bytes.size()));
  EXPECT_EQ(Values(back), (std::vector{5, 258})) << "what was there goes first";
}

TEST_F(RecordArrayTest, TakesAShortCountToo) {
  const std::string records = Bytes({1, 0, 0, 0, 5, 0, 0, 0, 1, 0, 0, 0, 6, 0, 0, 0});
  RecordList list;
  EXPECT_EQ(Load(list, Bytes({1, 0, 0, 0, 2, 0, 0, 0}) + records), 24);
  EXPECT_EQ(Values(list), (std::vector{5, 6}));
  for (const std::string& count : {Bytes({0, 0, 0, 0}), Bytes({0xFF, 0xFF, 0xFF, 0xFF}), Bytes({0, 0, 0, 0x80})}) {
    EXPECT_EQ(Load(list, Bytes({1, 0, 0, 0}) + count + records), 8) << "a negative count loads nothing";
    EXPECT_TRUE(list.IsEmpty());
  }
}

TEST_F(RecordArrayTest, EndsBehindAMarkerItDoesNotKnow) {
  for (const std::string& marker : {Bytes({2, 0, 0, 0x80}), Bytes({2, 0, 0, 0}), Bytes({0, 0, 0, 0}),
                                    Bytes({0, 0, 0, 0x80}), Bytes({1, 0, 0, 0xC0}), Bytes({0xFF, 0xFF, 0xFF, 0xFF})}) {
    RecordList list;
    Fill(list, {1});
    EXPECT_EQ(Load(list, marker + Bytes({1, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 7, 0, 0, 0})), 4);
    EXPECT_TRUE(list.IsEmpty()) << "the elements went before";
  }
}

TEST_F(RecordArrayTest, KeepsWhatCameBeforeTheEnd) {
  RecordList list;
  Fill(list, {1, 2, 3});
  const std::string bytes = Stored(list);
  for (std::size_t n = 0; n < bytes.size(); ++n) {
    RecordList cut;
    Fill(cut, {9});
    EXPECT_EQ(Load(cut, bytes.substr(0, n)), -1) << n;
    EXPECT_EQ(cut.GetSize(), n < 12 ? 0 : static_cast<INT_PTR>((n - 12) / 8)) << n;
  }
  // A count that lies.
  EXPECT_EQ(Load(list, kMarker + std::string(8, '\xFF') + bytes.substr(12)), -1);
  EXPECT_EQ(list.GetSize(), 3);
  EXPECT_EQ(Load(list, Bytes({1, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0x7F}) + bytes.substr(12)), -1);
  EXPECT_EQ(list.GetSize(), 3);
  // A record of an unknown version is left as it was made, and the next begins right behind its version.
  EXPECT_EQ(Load(list, kMarker + Bytes({2, 0, 0, 0, 0, 0, 0, 0, 9, 0, 0, 0, 1, 0, 0, 0, 5, 0, 0, 0})), 24);
  EXPECT_EQ(list.GetAt(0)->m_n, -1);
  EXPECT_EQ(list.GetAt(1)->m_n, 5);
}

TEST_F(RecordArrayTest, IsCopiedDeeply) {
  RecordList list;
  Fill(list, {1, -1, 2});
  RecordList copy(list);
  EXPECT_EQ(Values(copy), (std::vector{1, 2})) << "empty slots are not copied";
  copy.GetAt(0)->m_n = 7;
  EXPECT_EQ(list.GetAt(0)->m_n, 1);
  list = copy;
  EXPECT_EQ(Values(list), (std::vector{7, 2}));
  RecordList& same = list;
  Record* const p = list.GetAt(0);
  list = same;
  EXPECT_EQ(list.GetAt(0), p);
  const RecordList& constant = list;
  const std::unique_ptr<RecordList> cloned(constant.clone());
  EXPECT_EQ(Values(*cloned), (std::vector{7, 2}));
}

TEST_F(RecordArrayTest, IsAsBeforeWhenACloneFails) {
  RecordList source;
  RecordList target;
  Fill(source, {1, 2, 3});
  Fill(target, {8, 9});
  for (int n = 0; n < 3; ++n) {
    Record::s_nClonesLeft = n;
    EXPECT_THROW(target = source, std::runtime_error);
    EXPECT_EQ(Values(target), (std::vector{8, 9}));
    Record::s_nClonesLeft = n;
    EXPECT_THROW(RecordList{source}, std::runtime_error);
    Record::s_nClonesLeft = n;
    EXPECT_THROW(source.clone(), std::runtime_error);
  }
  Record::s_nClonesLeft = -1;
  target = source;
  EXPECT_EQ(Values(target), (std::vector{1, 2, 3}));
}

TEST_F(RecordArrayTest, IsComparedElementByElement) {
  RecordList a;
  RecordList b;
  EXPECT_TRUE(a == b);
  EXPECT_FALSE(a != b);
  Fill(a, {1, 2});
  Fill(b, {1, 2});
  EXPECT_TRUE(a == b);
  EXPECT_FALSE(a != b);
  Record::s_nCompared = 0;
  EXPECT_TRUE(a == a);
  EXPECT_EQ(Record::s_nCompared, 0) << "the same object is equal without a look";
  Fill(b, {3});
  EXPECT_TRUE(a != b);
  EXPECT_FALSE(a == b);
  Fill(a, {4});
  EXPECT_TRUE(a != b);
  a.GetAt(2)->m_n = 3;
  EXPECT_TRUE(a == b);
  std::swap(*a.begin(), *(a.begin() + 1));
  EXPECT_TRUE(a != b) << "the order counts";
  RecordList c;
  RecordList d;
  Fill(c, {-1, 1, -1, -1, 2, -1});
  Fill(d, {1, 2});
  EXPECT_TRUE(c == d);
  EXPECT_TRUE(d == c);
  d.DeleteLastElement();
  EXPECT_TRUE(c != d);
  EXPECT_TRUE(d != c);
}

TEST(CLPropertyArray, HasAnArchiveForm) {
  CLPropertyArray array;
  EXPECT_EQ(Stored(array), kMarker + std::string(8, '\0'));
  array.Add(new CLProperty("key", "", "propertyS"));
  array.Add(nullptr);
  const std::string bytes =
      kMarker + Bytes({1, 0, 0, 0, 0, 0, 0, 0}) + "\x03key" + std::string(1, '\0') + "\x09propertyS";
  EXPECT_EQ(Stored(array), bytes);
  CLPropertyArray back;
  back.Add(new CLProperty("goes", "away"));
  EXPECT_EQ(Load(back, bytes), static_cast<__int64>(bytes.size()));
  EXPECT_TRUE(back == array);
  for (std::size_t n = 0; n < bytes.size(); ++n) {
    EXPECT_EQ(Load(back, bytes.substr(0, n)), -1);
    EXPECT_TRUE(back.IsEmpty());
  }
}

}  // namespace
