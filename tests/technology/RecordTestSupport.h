#pragma once
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <initializer_list>
#include <memory>
#include <ostream>
#include <string>
#include <type_traits>
#include <vector>

#include "base/CException.h"
#include "base/Number.h"
#include "drawobj/CBDdrawObj.h"
#include "reader/ReaderTestSupport.h"

/// The tree of a text. Message boxes that are shown while it lives are kept.
class Tree {
 public:
  explicit Tree(const std::string& text) { m_parser.File(text); }
  /// The first form.
  CECadClsLvl& Form() { return *m_parser.Reader().m_pRootArray->GetAt(0); }
  CECadCls& Reader() { return m_parser.Reader(); }
  std::vector<std::string>& Boxes() { return m_parser.Boxes(); }

 private:
  TextParser m_parser;
};

/// What a writer puts into a stream.
template <class Writer>
std::string Printed(Writer&& writer) {
  char* pText = nullptr;
  std::size_t nLength = 0;
  std::FILE* fp = open_memstream(&pText, &nLength);
  EXPECT_EQ(0, writer(fp));
  std::fflush(fp);
  std::string s(pText, nLength);
  std::fclose(fp);
  std::free(pText);
  return s;
}

/// The text that a record writes.
template <class Record>
std::string Printed(Record& record) {
  return Printed([&record](std::FILE* fp) { return record.nPrint2File(fp); });
}

/// Each record raises when it is written nowhere.
template <class... Records>
void ExpectRaisesWithoutStream() {
  const auto expectRaises = [](auto&& record) { EXPECT_THROW(record.nPrint2File(nullptr), CInvalidArgException); };
  (..., expectRaises(Records()));
}

template <class... Classes>
inline constexpr bool kVirtuallyDestroyed = (... && std::has_virtual_destructor_v<Classes>);

/// A record that counts its end.
template <class Record>
struct Ending : Record {
  explicit Ending(int& nEnded) : m_nEnded(nEnded) {}
  ~Ending() override { ++m_nEnded; }
  int& m_nEnded;
};
/// Puts a record of the array's kind into it that counts its end.
template <class Record>
void AddEnding(laminate::NamedArray<Record>* pArray, int& nEnded) {
  laminate::AppendOwned(*pArray, std::make_unique<Ending<Record>>(nEnded));
}

/// The text of what raised, or empty when nothing did.
template <class Step>
std::string RaisedBy(Step&& step) {
  try {
    step();
  } catch (const CInvalidArgException& e) {
    return e.what();
  }
  return {};
}

inline std::string Str(const CString& s) { return std::string(s.View()); }
inline std::string Str(const CStringArray& arr) {
  std::string s;
  for (const CString& each : arr) s += (s.empty() ? "" : ",") + ("'" + Str(each) + "'");
  return s;
}
/// A number as short as it reads back.
inline std::string Str(double d) {
  char buffer[laminate::kMaxNumberLength];
  return std::string(buffer, laminate::FormatShortest(buffer, d));
}
inline std::string Str(const CPointD& pt) { return Str(pt.x) + ";" + Str(pt.y); }

/// Shapes as `KIND@type/name/number`, with "r" for the refer flag, and net and cavities where they are set.
inline std::string Str(const CBDdrawObjArray& shapes) {
  std::string s;
  for (const CBDdrawObj* p : shapes) {
    if (!s.empty()) s += " ";
    s += Str(p->m_sKind) + "@" + Str(p->m_sLayerType) + "/" + Str(p->m_sLayerName) + "/" +
         std::to_string(p->m_nLayerNumber);
    if (p->m_bRefer != 0) s += "r";
    if (!p->m_sNet.IsEmpty()) s += "=" + Str(p->m_sNet);
    if (p->m_nCavityFrom != -1 || p->m_nCavityTo != -1) {
      s += "[" + std::to_string(p->m_nCavityFrom) + "," + std::to_string(p->m_nCavityTo) + "]";
    }
  }
  return s;
}

/// The fields of a record stand in memory in this order, which hosts count on.
inline void ExpectInOrder(std::initializer_list<const void*> fields) {
  EXPECT_EQ(fields.end(), std::adjacent_find(fields.begin(), fields.end(), std::greater_equal<const void*>()));
}

/// A form and what is read from it; an expectation that begins with "raises " names a part of what the failure says.
struct ReadCase {
  const char* name;
  std::string input;
  std::string expected;
  std::vector<std::string> boxes = {};  // the message boxes that the reading shows
};
inline std::ostream& operator<<(std::ostream& out, const ReadCase& test) { return out << test.name; }

/// Reads each case's form by `read`, which gives what it found as text, and compares.
inline void CheckReading(const std::vector<ReadCase>& cases,
                         const std::function<std::string(const CECadClsLvl&)>& read) {
  for (const ReadCase& test : cases) {
    SCOPED_TRACE(std::string(test.name) + ": " + test.input);
    Tree tree(test.input);
    std::string found;
    const std::string raised = RaisedBy([&] { found = read(tree.Form()); });
    if (test.expected.starts_with("raises ")) {
      EXPECT_TRUE(!raised.empty() && raised.find(test.expected.substr(7)) != std::string::npos)
          << "raised: " << raised << " found: " << found;
    } else {
      EXPECT_EQ("", raised);
      EXPECT_EQ(test.expected, found);
    }
    EXPECT_EQ(test.boxes, tree.Boxes());
  }
}
