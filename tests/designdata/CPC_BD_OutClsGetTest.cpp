#include "designdata/CPC_BD_OutClsGet.h"

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <functional>

#include "base/BKUtility.h"
#include "base/LocaleScope.h"
#include "designdata/DesignDataTestSupport.h"
#include "designdata/LineScanner.h"

namespace {

using laminate::LoadStatus;
using testing::ElementsAre;
using testing::HasSubstr;

TEST(DesignDataFacade, IsEmptyWhenNew) {
  CPC_BD_OutClsGet data;
  EXPECT_EQ(Show(data), "{,,[],{[],},[],[],[],[],[],[],[],[],[],[],[],[],{[],[],[],[],[]},[]}");
  EXPECT_TRUE(data.GetLoadStatus().IsOk());
  EXPECT_EQ(data.m_nVersion + 0, 2);
  EXPECT_EQ(data.pGetOutPackageFromArray("a"), nullptr);
  EXPECT_EQ(data.pGetOutPackageFromArrayWithFootprintName("a"), nullptr);
  EXPECT_EQ(data.pGetOutPrfFunctionWithName("a"), nullptr);
  EXPECT_EQ(data.pGetOutPrfPinAssignWithName("a"), nullptr);
  EXPECT_EQ(data.pGetOutRufCompFromArray("a"), nullptr);
  EXPECT_EQ(data.pGetOutRufNetFromName("a"), nullptr);
  EXPECT_EQ(data.pGetOutPrfPartFromPackageRefName("a"), nullptr);
  EXPECT_EQ(data.pGetBDoutPrfPartFromArrayWithPackageName("a"), nullptr);
  EXPECT_EQ(data.pGetOutPrfPartFromArray("a"), nullptr);
  EXPECT_EQ(data.GetPinTypeWithPinNo("a", 1), "");
}

// ---- text helpers ----
TEST(DesignDataFacade, CutsColumns) {
  struct Case {
    const char* name;
    std::string_view line;
    std::vector<std::string> columns;
  };
  const Case kCases[] = {
      {"words", "a b c", {"a", "b", "c"}},
      {"runs of blanks", "  a   b  ", {"a", "b"}},
      {"tab at the ends only", "\ta\tb \t", {"a\tb"}},
      {"unit", "(unit mm)", {"(unit", "mm)"}},
      {"quoted", "(part \"A B\"", {"(part", "A B"}},
      {"quoted and bracket", "(packageRef \"A\")", {"(packageRef", "A", ")"}},
      {"empty quotes", "(spec \"\")", {"(spec", "", ")"}},
      {"unclosed quote", "a \"b c", {"a", "b c"}},
      {"text before a quote", "x\"b c\"y", {"x", "b c", "y"}},
      {"nine columns of a port",
       "(port \"1\" (symbPinId 2) (portName \"A\") (portType INOUT))",
       {"(port", "1", "(symbPinId", "2)", "(portName", "A", ")", "(portType", "INOUT))"}},
      {"NUL", "a \0b c"sv, {"a", "\0b"s, "c"}},
  };
  const CPC_BD_OutClsGet data;
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(data.sGetNthColumn(CString(c.line), 0), "");
    for (std::size_t i = 0; i < c.columns.size(); ++i) {
      EXPECT_EQ(std::string(data.sGetNthColumn(CString(c.line), static_cast<int>(i) + 1).View()), c.columns[i]);
    }
    EXPECT_EQ(data.sGetNthColumn(CString(c.line), static_cast<int>(c.columns.size()) + 1), "");
    EXPECT_THROW(data.sGetNthColumn(CString(c.line), -1), CInvalidArgException);
  }
  // A scanner's line gives the same, in whatever order its columns are asked for.
  laminate::ScannedLine line;
  for (const Case& c : kCases) {
    ASSERT_TRUE(line.Take(c.line, 1));
    EXPECT_EQ(line.Column(0), "");
    for (const bool bAgain : {false, true}) {
      EXPECT_EQ(line.Column(c.columns.size() + 1), "") << bAgain;
      for (std::size_t i = c.columns.size(); i > 0; --i) EXPECT_EQ(line.Column(i), c.columns[i - 1]);
    }
  }
  EXPECT_EQ(data.sGetNthColumn("", 1), "");
  EXPECT_THROW(data.sGetNthColumn("", -1), CInvalidArgException);
}

TEST(DesignDataFacade, CountsColumnsByBlanksAlone) {
  const auto words = [](int n, const std::string& sLast = "w") {
    std::string s;
    for (int i = 1; i < n; ++i) s += "w ";
    return s + sLast;
  };
  struct Case {
    std::string line;
    int count;
  };
  const Case kCases[] = {
      {"", 1},
      {"   ", 1},
      {"a", 1},
      {"a b", 2},
      {"  a   b ", 2},
      {"a\tb", 1},
      {"\ta b", 2},
      {"\"a b\" c", 3},
      {words(99), 99},
      {words(100), 100},
      // The hundredth blank still stands behind the first letter of the rest.
      {words(101), 1},
      {words(102), 1},
      {words(100, "abc d"), 3},
      {words(100, "abcdefghij   d e f"), 10},
  };
  const CPC_BD_OutClsGet data;
  for (const Case& c : kCases) EXPECT_EQ(data.nGetColumnCount(c.line.c_str()), c.count) << c.line;
}

TEST(DesignDataFacade, CleansStrings) {
  struct Case {
    const char* text;
    const char* clean;
  };
  const Case kCases[] = {
      {"\"ABC\"", "ABC"}, {"ABC)", "ABC"},  {"ABC\")", "ABC"},    {"\"ABC\")", "ABC)"},
      {"", ""},           {")))", ""},      {"\"", ""},           {"A\"B)\")", "A\"B)"},
      {"ABC)\"", "ABC)"}, {"A)B))", "A)B"}, {"ABC\"\"))", "ABC"}, {"\"A\"B\"", "AB"},
  };
  const CPC_BD_OutClsGet data;
  for (const Case& c : kCases) {
    CString s = c.text;
    data.vCleanString(s);
    EXPECT_EQ(s, c.clean) << c.text;
  }
}

TEST(DesignDataFacade, FindsTextsInALists) {
  CPC_BD_OutClsGet data;
  CStringArray arr;
  arr.Add("One");
  arr.Add("");
  EXPECT_EQ(data.bIsInCStringArray(arr, "One"), 1);
  EXPECT_EQ(data.bIsInCStringArray(arr, "one"), 0);
  EXPECT_EQ(data.bIsInCStringArray(arr, ""), 1);
  arr.RemoveAt(1);
  EXPECT_EQ(data.bIsInCStringArray(arr, ""), 0);
}

// ---- look-ups ----
template <class X>
void PutNullFirst(laminate::NamedArray<X>& arr) {
  X* p = nullptr;
  arr.InsertAt(0, p);
}

TEST(DesignDataFacade, LookUpsGiveTheFirstExactMatch) {
  CPC_BD_OutClsGet data;
  Load(data, Kind::package, "(package \"P\"\n)\n(package \"p\"\n)\n(package \"P\"\n)\n");
  Load(data, Kind::parts,
       "(part \"A\"\n(packageRef \"P\")\n)\n(part \"B\"\n(packageRef \"P\")\n)\n"
       "(function \"F\"\n)\n(function \"F\"\n)\n(pinAssign \"Q\"\n)\n(pinAssign \"Q\"\n)\n");
  Load(data, Kind::rules, "(design d (rule (net N) (net N)) (assign (comp C) (comp C)))");
  // A host may have put a null slot in front.
  PutNullFirst(*data.m_pPackageArray);
  PutNullFirst(*data.m_pPrfPartArray);
  PutNullFirst(*data.m_pPrfFunctionArray);
  PutNullFirst(*data.m_pPrfPinAssignArray);
  PutNullFirst(*data.m_pRufNetArray);
  PutNullFirst(*data.m_pRufCompArray);
  EXPECT_EQ(data.pGetOutPackageFromArray("P"), data.m_pPackageArray->GetAt(1));
  EXPECT_EQ(data.pGetOutPackageFromArray("p"), data.m_pPackageArray->GetAt(2));
  EXPECT_EQ(data.pGetOutPackageFromArray("P "), nullptr);
  EXPECT_EQ(data.pGetOutPrfFunctionWithName("F"), data.m_pPrfFunctionArray->GetAt(1));
  EXPECT_EQ(data.pGetOutPrfFunctionWithName("f"), nullptr);
  EXPECT_EQ(data.pGetOutPrfPinAssignWithName("Q"), data.m_pPrfPinAssignArray->GetAt(1));
  EXPECT_EQ(data.pGetOutPrfPinAssignWithName("q"), nullptr);
  EXPECT_EQ(data.pGetOutRufNetFromName("N"), data.m_pRufNetArray->GetAt(1));
  EXPECT_EQ(data.pGetOutRufNetFromName("n"), nullptr);
  EXPECT_EQ(data.pGetOutRufCompFromArray("C"), data.m_pRufCompArray->GetAt(1));
  EXPECT_EQ(data.pGetOutRufCompFromArray("c"), nullptr);
  EXPECT_EQ(data.pGetOutPrfPartFromPackageRefName("P"), data.m_pPrfPartArray->GetAt(1));
  EXPECT_EQ(data.pGetBDoutPrfPartFromArrayWithPackageName("P"), data.m_pPrfPartArray->GetAt(1));
  EXPECT_EQ(data.pGetBDoutPrfPartFromArrayWithPackageName("p"), nullptr);
}

TEST(DesignDataFacade, FindsAPartByItsNameAndThenByItsFolderName) {
  const auto pData = Loaded(Kind::parts, "(part \"A/B\"\n)\n(part \"A_B\"\n)\n(part \"C:D\"\n)\n(part \"C?D\"\n)\n");
  const CVRXoutPrfPartArray& parts = *pData->m_pPrfPartArray;
  EXPECT_EQ(pData->pGetOutPrfPartFromArray("A_B"), parts.GetAt(1));  // the exact match counts, though it stands later
  EXPECT_EQ(pData->pGetOutPrfPartFromArray("A/B"), parts.GetAt(0));
  EXPECT_EQ(pData->pGetOutPrfPartFromArray("C_D"), parts.GetAt(2));
  EXPECT_EQ(pData->pGetOutPrfPartFromArray("C?D"), parts.GetAt(3));
  EXPECT_EQ(pData->pGetOutPrfPartFromArray("C/D"), nullptr);
  EXPECT_EQ(parts.GetAt(2)->m_sName, "C:D");
}

TEST(DesignDataFacade, FootprintLookUpIgnoresItsArgument) {
  const auto pData = Loaded(Kind::package,
                            "(package \"FULL\"\n(mountForm a\n(footprintRef \"F\")\n(bottomFootprint \"B\")\n)\n)\n"
                            "(package \"NONE\"\n)\n"
                            "(package \"TOP\"\n(mountForm a\n(footprintRef \"F\")\n(bottomFootprint \"B\")\n)\n"
                            "(mountForm b\n(footprintRef \"F\")\n)\n)\n");
  EXPECT_EQ(pData->pGetOutPackageFromArrayWithFootprintName("F")->m_sName, "TOP");
  EXPECT_EQ(pData->pGetOutPackageFromArrayWithFootprintName("")->m_sName, "TOP");
  pData->m_pPackageArray->GetAt(2)->m_pMountFormArray->GetAt(1)->m_sBottomFootprint = "B";
  EXPECT_EQ(pData->pGetOutPackageFromArrayWithFootprintName("F"), nullptr);
  pData->m_pPackageArray->GetAt(0)->m_pMountFormArray->GetAt(0)->m_sFootprintRef = "";
  EXPECT_EQ(pData->pGetOutPackageFromArrayWithFootprintName("F")->m_sName, "FULL");
}

TEST(DesignDataFacade, PinTypeIsThatOfTheLastPort) {
  const auto pData = Loaded(Kind::parts,
                            "(function \"F\"\n(port \"A\" (symbPinId 1) (portType \"IN\" ))\n"
                            "(port \"B\" (symbPinId 2) (portType \"OUT\" ))\n"
                            "(port \"C\" (symbPinId 1) (portType \"POWER\" ))\n)\n");
  EXPECT_EQ(pData->GetPinTypeWithPinNo("F", 1), "POWER");
  EXPECT_EQ(pData->GetPinTypeWithPinNo("F", 2), "OUT");
  EXPECT_EQ(pData->GetPinTypeWithPinNo("F", 3), "");
  EXPECT_EQ(pData->GetPinTypeWithPinNo("G", 1), "");
  // Though it has none.
  const auto pEmpty = Loaded(Kind::parts, "(function F\n(port A a 1 b IN\n(port B a 1\n)\n");
  EXPECT_EQ(pEmpty->GetPinTypeWithPinNo("F", 1), "");
}

// Null slots stand in front of what is asked for.
TEST(DesignDataFacade, LookUpsPassOverNullSlots) {
  CPC_BD_OutClsGet data;
  Load(data, Kind::package, "(package P\n(mountForm m\n(footprintRef F)\n)\n)\n");
  Load(data, Kind::parts, "(part \"A:B\"\n)\n(function F\n(port 1 a 2 b T\n)\n");
  PutNullFirst(*data.m_pPackageArray->GetAt(0)->m_pMountFormArray);
  PutNullFirst(*data.m_pPackageArray);
  PutNullFirst(*data.m_pPrfPartArray);
  PutNullFirst(*data.m_pPrfFunctionArray->GetAt(0)->m_pPortArray);
  EXPECT_EQ(data.pGetOutPackageFromArrayWithFootprintName("x"), data.m_pPackageArray->GetAt(1));
  EXPECT_EQ(data.pGetOutPrfPartFromArray("A:B"), data.m_pPrfPartArray->GetAt(1));
  CString sFolder = "A:B";
  BKUtility::GetInstance()->ConvertStringForVaildFolderName(sFolder);
  ASSERT_NE(sFolder, "A:B");
  EXPECT_EQ(data.pGetOutPrfPartFromArray(sFolder), data.m_pPrfPartArray->GetAt(1));
  EXPECT_EQ(data.GetPinTypeWithPinNo("F", 2), "T");
}

TEST(DesignDataFacade, LookUpsAndLoadsNeedTheirArrays) {
  using D = CPC_BD_OutClsGet;
  struct Row {
    void (*clear)(D&);
    std::function<void(D&)> use;
  };
  const auto load = [](Kind kind, const char* szText) { return [=](D& d) { Load(d, kind, szText); }; };
  const Row kRows[] = {
      {[](D& d) { delete std::exchange(d.m_pPackageArray, nullptr); }, [](D& d) { d.pGetOutPackageFromArray("P"); }},
      {[](D& d) { delete std::exchange(d.m_pPackageArray, nullptr); },
       [](D& d) { d.pGetOutPackageFromArrayWithFootprintName("P"); }},
      {[](D& d) { delete std::exchange(d.m_pPackageArray->GetAt(0)->m_pMountFormArray, nullptr); },
       [](D& d) { d.pGetOutPackageFromArrayWithFootprintName("P"); }},
      {[](D& d) { delete std::exchange(d.m_pPrfFunctionArray, nullptr); },
       [](D& d) { d.pGetOutPrfFunctionWithName("F"); }},
      {[](D& d) { delete std::exchange(d.m_pPrfFunctionArray, nullptr); }, [](D& d) { d.GetPinTypeWithPinNo("F", 1); }},
      {[](D& d) { delete std::exchange(d.m_pPrfFunctionArray->GetAt(0)->m_pPortArray, nullptr); },
       [](D& d) { d.GetPinTypeWithPinNo("F", 1); }},
      {[](D& d) { delete std::exchange(d.m_pPrfPinAssignArray, nullptr); },
       [](D& d) { d.pGetOutPrfPinAssignWithName("Q"); }},
      {[](D& d) { delete std::exchange(d.m_pRufCompArray, nullptr); }, [](D& d) { d.pGetOutRufCompFromArray("C"); }},
      {[](D& d) { delete std::exchange(d.m_pRufNetArray, nullptr); }, [](D& d) { d.pGetOutRufNetFromName("N"); }},
      {[](D& d) { delete std::exchange(d.m_pPrfPartArray, nullptr); },
       [](D& d) { d.pGetOutPrfPartFromPackageRefName("P"); }},
      {[](D& d) { delete std::exchange(d.m_pPackageArray, nullptr); }, load(Kind::package, "(package A\n)\n")},
      {[](D& d) { delete std::exchange(d.m_pPrfPartArray, nullptr); }, load(Kind::parts, "(part A\n")},
      {[](D& d) { delete std::exchange(d.m_pPrfPinAssignArray, nullptr); }, load(Kind::parts, "(pinAssign Q\n")},
      {[](D& d) { delete std::exchange(d.m_pPrfFunctionArray, nullptr); }, load(Kind::parts, "(function F\n")},
      {[](D& d) { delete std::exchange(d.m_pLcdbCmpCompArray, nullptr); },
       load(Kind::components, "$COMP C\n$COMP_END\n")},
      {[](D& d) { delete std::exchange(d.m_pRufNetArray, nullptr); }, load(Kind::rules, "(design d (rule (net N)))")},
      {[](D& d) { delete std::exchange(d.m_pRufCompArray, nullptr); }, [](D& d) { d = D(); }},
  };
  for (const Row& row : kRows) {
    D data;
    Load(data, Kind::package, "(package P\n)\n");
    Load(data, Kind::parts, "(function F\n)\n");
    row.clear(data);
    EXPECT_THROW(row.use(data), CInvalidArgException) << &row - kRows;
  }
}

// The status is that of the last load, though an exception ends it.
TEST(DesignDataFacade, AStatusOfAnEarlierLoadDoesNotStay) {
  const auto check = [](Kind kind, const char* szText, auto clear, auto shown) {
    SCOPED_TRACE(szText);
    CPC_BD_OutClsGet data;
    for (const bool bMissing : {true, false}) {
      if (bMissing) {
        LoadPath(data, kind, "/nowhere/at/all");
        EXPECT_EQ(data.GetLoadStatus().m_result, LoadStatus::Result::cannotOpen);
      } else {
        Load(data, kind, "");
        EXPECT_TRUE(data.GetLoadStatus().IsOk());
      }
      clear(data);
      EXPECT_THROW(Load(data, kind, szText), CInvalidArgException);
      EXPECT_EQ(data.GetLoadStatus().m_result, LoadStatus::Result::invalidContent);
      EXPECT_EQ(data.GetLoadStatus().m_sFile, "file");
      EXPECT_EQ(data.GetLoadStatus().m_nLine, 0);
    }
    EXPECT_EQ(shown(data), "[{A,,,,,,[],[],[],[]},{A,,,,,,[],[],[],[]}]");
  };
  // What stood before it is kept.
  const auto parts = [](const CPC_BD_OutClsGet& data) { return Show(*data.m_pPrfPartArray); };
  check(
      Kind::parts, "(part A\n(pinAssign Q\n", [](auto& d) { delete std::exchange(d.m_pPrfPinAssignArray, nullptr); },
      parts);
  check(
      Kind::parts, "(part A\n(function Q\n(part B\n",
      [](auto& d) { delete std::exchange(d.m_pPrfFunctionArray, nullptr); }, parts);
  const auto none = [](const auto&) { return "[{A,,,,,,[],[],[],[]},{A,,,,,,[],[],[],[]}]"; };
  check(
      Kind::package, "(package A\n)\n", [](auto& d) { delete std::exchange(d.m_pPackageArray, nullptr); }, none);
  check(
      Kind::components, "$COMP C\n$COMP_END\n", [](auto& d) { delete std::exchange(d.m_pLcdbCmpCompArray, nullptr); },
      none);
  check(
      Kind::rules, "(design d (rule (net N)))", [](auto& d) { delete std::exchange(d.m_pRufNetArray, nullptr); }, none);
}

TEST(DesignDataFacade, NullArraysRaise) {
  CPC_BD_OutClsGet data;
  delete std::exchange(data.m_pPackageArray, nullptr);
  delete std::exchange(data.m_pPrfPartArray, nullptr);
  EXPECT_THROW(data.pGetOutPackageFromArray("a"), CInvalidArgException);
  EXPECT_THROW(data.pGetOutPrfPartFromArray("a"), CInvalidArgException);
  EXPECT_THROW(Load(data, Kind::parts, "(part \"A\"\n"), CInvalidArgException);
  EXPECT_THROW(Image(data), CInvalidArgException);
  CPC_BD_OutClsGet other;
  EXPECT_THROW(other = data, CInvalidArgException);
  EXPECT_THROW(laminate::FindPartByPinAssign(nullptr, "a"), CInvalidArgException);
}

// ---- loads in common ----
TEST(DesignDataFacade, LoadsAppend) {
  CPC_BD_OutClsGet data;
  for (int i = 1; i <= 2; ++i) {
    Load(data, Kind::parts, "(part \"A\"\n)\n(function \"F\"\n)\n(pinAssign \"Q\"\n)\n");
    Load(data, Kind::package, "(package \"P\"\n)\n");
    Load(data, Kind::components, "$COMP \"C\"\n$COMP_END\n");
    Load(data, Kind::rules, "(design d (rule (net N)))");
    EXPECT_EQ(data.m_pPrfPartArray->GetSize(), i);
    EXPECT_EQ(data.m_pPrfFunctionArray->GetSize(), i);
    EXPECT_EQ(data.m_pPrfPinAssignArray->GetSize(), i);
    EXPECT_EQ(data.m_pPackageArray->GetSize(), i);
    EXPECT_EQ(data.m_pLcdbCmpCompArray->GetSize(), i);
    EXPECT_EQ(data.m_pRufNetArray->GetSize(), i);
  }
}

/// Fails the n-th call of reading, or opening.
class FailingFileSystem : public MemoryFileSystem {
 public:
  int openError = 0;
  int readsUntilError = 1000;
  Handle OpenForReading(const char* szPath) override {
    return openError != 0 ? openError : MemoryFileSystem::OpenForReading(szPath);
  }
  std::int64_t Read(Handle h, void* pBuffer, std::size_t nBytes) override {
    if (readsUntilError-- == 0) return -EIO;
    // In small bites, so that a file takes several reads.
    return MemoryFileSystem::Read(h, pBuffer, std::min<std::size_t>(nBytes, 8));
  }
};

TEST(DesignDataFacade, AFileThatCannotBeReadChangesNothing) {
  const std::pair<Kind, std::string> kFiles[] = {
      {Kind::package, "(package \"P\"\n)\n(package \"Q\"\n)\n"},
      {Kind::parts, "(part \"A\"\n)\n(part \"B\"\n)\n"},
      {Kind::components, "$COMP \"C\"\n$COMP_END\n$COMP \"D\"\n$COMP_END\n"},
      {Kind::rules, "(design d (rule (net N) (net M)))\n"},
  };
  for (const auto& [kind, text] : kFiles) {
    SCOPED_TRACE(text);
    for (const bool bOpen : {true, false}) {
      FailingFileSystem fileSystem;
      fileSystem.files["file"] = text;
      if (bOpen) {
        fileSystem.openError = -EACCES;
      } else {
        fileSystem.readsUntilError = 3;
      }
      const laminate::FileSystemScope scope(fileSystem);
      CPC_BD_OutClsGet data;
      const std::string before = Show(data);
      LoadPath(data, kind, "file");
      EXPECT_EQ(Show(data), before);
      EXPECT_EQ(data.GetLoadStatus().m_result, LoadStatus::Result::cannotOpen);
      EXPECT_EQ(data.GetLoadStatus().m_sFile, "file");
      EXPECT_EQ(data.GetLoadStatus().m_nLine, 0);
      EXPECT_FALSE(data.GetLoadStatus().m_sText.IsEmpty());
      EXPECT_EQ(fileSystem.OpenCount(), 0u);
    }
    // Missing; a folder; then a good one clears the status.
    CPC_BD_OutClsGet data;
    LoadPath(data, kind, "/nowhere/at/all");
    EXPECT_EQ(data.GetLoadStatus().m_result, LoadStatus::Result::cannotOpen);
    LoadPath(data, kind, "/tmp");
    EXPECT_EQ(data.GetLoadStatus().m_result, LoadStatus::Result::cannotOpen);
    Load(data, kind, text);
    EXPECT_TRUE(data.GetLoadStatus().IsOk());
    Load(data, kind, "");
    EXPECT_TRUE(data.GetLoadStatus().IsOk());
  }
}

TEST(DesignDataFacade, EmptyFilesChangeNothing) {
  for (const Kind kind : {Kind::package, Kind::parts, Kind::components, Kind::rules}) {
    for (const std::string_view text : {""sv, "\n"sv, "  \t\r\n\n"sv, "\0"sv}) {
      EXPECT_EQ(Show(*Loaded(kind, text)), Show(CPC_BD_OutClsGet()));
    }
  }
}

TEST(DesignDataFacade, LineEndsOfBothKinds) {
  const std::string lf =
      "(unit mm)\n(package \"A B\"\n\n  (type SMD)\n(mountForm m\n(footprintRef F)\n(spec \"s\")\n)\n)";
  std::string crlf;
  for (const char ch : lf) crlf += ch == '\n' ? "\r\n" : std::string(1, ch);
  const auto a = Loaded(Kind::package, lf);
  const auto b = Loaded(Kind::package, crlf);
  EXPECT_EQ(Show(*a), Show(*b));
  EXPECT_EQ(Show(*a->m_pPackageArray), "[{1,SMD,A B,[{m,s,,F}]}]");
  // A lone CR is a byte of its line.
  EXPECT_EQ(Show(*Loaded(Kind::package, "(package A\rB\n)\n)")->m_pPackageArray), "[{1,,A\rB,[]}]");
  // What a line ends in is looked at without its line end.
  const auto c = Loaded(Kind::parts, "(part P\r\n(stockInfo S)\r\n(partClass X)\r\n)\r\n");
  EXPECT_EQ(c->m_pPrfPartArray->GetAt(0)->m_sPartClass, "X");
}

TEST(DesignDataFacade, NulIsAByteLikeAnyOther) {
  const auto pData = Loaded(Kind::parts, "(part \"A\0B\"\n(polarity \0x)\n)\n"sv);
  const CVRXoutPrfPart& part = *pData->m_pPrfPartArray->GetAt(0);
  EXPECT_EQ(part.m_sName, "A\0B"sv);
  EXPECT_EQ(part.m_pPropertyArray->GetAt(0)->m_sComment, "\0x"sv);
  EXPECT_EQ(pData->m_pPrfPartArray->bExistSameUpfWithPartName(CString("A\0B"sv)), 1);
  EXPECT_EQ(pData->m_pPrfPartArray->bExistSameUpfWithPartName("A"), 0);
  // A keyword is compared whole.
  EXPECT_EQ(Loaded(Kind::parts, "(part\0 \"A\"\n"sv)->m_pPrfPartArray->GetSize(), 0);
}

TEST(DesignDataFacade, WhiteSpaceAndOddBytes) {
  const auto packages = [](std::string_view s) { return Show(*Loaded(Kind::package, s)->m_pPackageArray); };
  EXPECT_EQ(packages("\v\f(package A\n)\n"), "[{1,,A,[]}]");
  EXPECT_EQ(packages("(package A\n\v\f \t\n)\n"), "[{1,,A,[]}]");
  // What was the end of a text long ago is a byte like any other.
  EXPECT_EQ(packages("(package A\n)\n\x1A\n(package B\n)\n"), "[{1,,A,[]},{1,,B,[]}]");
  EXPECT_EQ(packages("(package A\n)\r"), "[{1,,A,[]}]");
  EXPECT_EQ(packages("(package \"\x95\x5C\"\n(type \"\xB1\")\n)\n"), "[{1,\xB1,\x95\x5C,[]}]");
  // Texts in other encodings bring nothing.
  EXPECT_EQ(Loaded(Kind::package, "\xEF\xBB\xBF(unit mm)\n")->m_sUnit, "");
  for (const Kind kind : {Kind::package, Kind::parts, Kind::components}) {
    EXPECT_EQ(Show(*Loaded(kind, "\xFF\xFE(\0p\0a\0r\0t\0 \0A\0\n\0)\0\n\0"sv)), Show(CPC_BD_OutClsGet()));
    EXPECT_EQ(Show(*Loaded(kind, "\x1A\n \v\n\x80\n")), Show(CPC_BD_OutClsGet()));
  }
  const auto pParts = Loaded(Kind::parts, "\v(part \"\x95\x5C\"\n\f\n(packageRef \"\xB1\")\n)\n\x1A\n(part B\n");
  EXPECT_EQ(Show(*pParts->m_pPrfPartArray), "[{\x95\x5C,,,,,\xB1,[],[],[],[]},{B,,,,,,[],[],[],[]}]");
  const auto pComps = Loaded(Kind::components, "\f$COMP \"\x95\x5C\"\n\x1A\n$COMP_END\r");
  EXPECT_EQ(Show(*pComps->m_pLcdbCmpCompArray), "[{\x95\x5C,parts,1,,[],[]}]");
}

TEST(DesignDataFacade, NothingGoesByTheLocale) {
  const auto outcome = [] {
    CPC_BD_OutClsGet data;
    Load(data, Kind::package, "(unit mm)\n(package I\xB1\x95\x5Ci\n(type smd)\n(mountForm m\n(spec s)\n)\n)\n");
    Load(data, Kind::parts, "(part I\n(partClass i)\n(uver 1.5)\n(interface\n(port 1 a 2 portType I))\n)\n)\n");
    Load(data, Kind::components, "$COMP I\ngateCount = 1234\n$COMP_END\n");
    Load(data, Kind::rules,
         "(design d (boardSpec (bareBoard (conductor 1 (thickness 1.5)) (physical X (lossTangent 0.25)))"
         " (gridDef G (pitch 1.5 -2.5))) (rule (holeRule (clearance 0.125 (e A B)))))");
    std::string s = Image(data);
    laminate::TextOut out(s);
    data.m_pPackageArray->GetAt(0)->Write(out);
    data.m_pPrfPartArray->GetAt(0)->Write(out);
    out.Flush();
    return s;
  };
  const std::string expected = outcome();
  for (const char* sz : {"de_DE.UTF-8", "ja_JP.SJIS", "tr_TR.UTF-8"}) {
    const laminate::test::LocaleScope locale(sz);
    ASSERT_TRUE(locale.IsSet()) << sz;
    EXPECT_EQ(Hex(outcome()), Hex(expected)) << sz;
  }
}

// Records that are looked for among all others make eight times the length take 64 times as long.
TEST(DesignDataFacade, LoadsTakeTimeByTheirLength) {
  struct File {
    Kind kind;
    std::string_view before;
    std::string repeated;
    std::string_view behind;
  };
  const File kFiles[] = {
      {Kind::package, "", "(package A\n(mountForm m\n(spec s)\n)\n)\n", ""},
      {Kind::package, "(package A\n", "(mountForm m\n)\n", ")\n"},
      {Kind::package, "", "(mountForm m\n", ""},
      {Kind::parts, "(part A\n(gateDef ", "a ", "\n"},
      {Kind::parts, "(part A\n(gateDef a G\n", "x y z\n", ""},
      {Kind::parts, "", "(part A\n(interface\n", ""},
      {Kind::components, "", "$COMP A\n$COMP_END\n", ""},
      {Kind::components, "$COMP A\n", "symbolName = s\n", "$COMP_END\n"},
      {Kind::components, "$COMP A\npin 1 = IN ", ",", "\n$COMP_END\n"},
      {Kind::rules, "(design d (rule ", "(net N (pinList (funcTerm A 1)))\n", "))"},
  };
  // The least of several runs is what other work on the machine disturbs least.
  const auto seconds = [](const File& file, int nTimes) {
    std::string sText(file.before);
    for (int i = 0; i < nTimes; ++i) sText += file.repeated;
    sText += file.behind;
    double dLeast = 0;
    for (int i = 0; i < 5; ++i) {
      CPC_BD_OutClsGet data;
      laminate::Diagnostics diagnostics;
      data.SetDiagnostics(&diagnostics);
      const std::clock_t nStart = std::clock();
      Load(data, file.kind, sText);
      data.ReportUndefinedNames();
      const double d = static_cast<double>(std::clock() - nStart) / CLOCKS_PER_SEC;
      dLeast = i == 0 ? d : std::min(dLeast, d);
    }
    return dLeast;
  };
  constexpr int kTimes = 25000;
  constexpr double kNoise = 0.005;
  for (const File& file : kFiles) {
    EXPECT_LT(seconds(file, 8 * kTimes), 8 * 2.5 * (seconds(file, kTimes) + kNoise)) << file.before << file.repeated;
  }
}

TEST(DesignDataFacade, LongLinesAndLastLinesWithoutEnd) {
  const std::string name(300000, 'n');
  const auto pData = Loaded(Kind::package, "(package \"" + name + "\"\n)");
  EXPECT_EQ(pData->m_pPackageArray->GetAt(0)->m_sName, std::string_view(name));
}

// ---- assignment and comparison of the facade as a whole ----
TEST(DesignDataFacade, AssignmentCrossesUnitAndHostText) {
  CPC_BD_OutClsGet a;
  CPC_BD_OutClsGet b;
  b.m_sUnit = "mm";
  b.m_sHostText = "text";
  b.m_aHostList1.Add("one");
  b.m_aHostList2.Add("two");
  a.m_sUnit = "inch";
  a = b;
  EXPECT_EQ(a.m_sUnit, "text");
  EXPECT_EQ(a.m_sHostText, "text");
  EXPECT_EQ(Show(a.m_aHostList1), "[one]");
  EXPECT_EQ(Show(a.m_aHostList2), "[two]");
  EXPECT_EQ(b.m_sUnit, "mm");
  b = static_cast<const CPC_BD_OutClsGet&>(b);
  EXPECT_EQ(b.m_sUnit, "mm");
}

// ---- remarks ----
TEST(DesignDataRemarks, TellLinesThatHaveNoEffect) {
  struct Case {
    Kind kind;
    std::string_view text;
    std::vector<std::string> remarks;
  };
  const Case kCases[] = {
      {Kind::package, "// a comment\n(Japanese_coding: sjis)\n(unit mm)\n\n(package \"P\"\n)\n", {}},
      {Kind::package,
       "(uver 1)\n  (footprintRef F)\n(colour red)\n)\n",
       {"file:1:1: warning: there is nothing yet that \"(uver\" could belong to: the line is skipped",
        "file:2:3: warning: there is nothing yet that \"(footprintRef\" could belong to: the line is skipped",
        "file:3:1: note: \"(colour\" means nothing outside a package: the line is skipped",
        "file:4:1: note: \")\" means nothing outside a package: the line is skipped"}},
      {Kind::package,
       "(package \"P\"\n(spec \"s\")\n(mountForm a\n(mountForm b\n)\n(package \"Q\"\n)\n(package \"R\"\n",
       {"file:2:1: note: \"(spec\" means nothing inside a package: the line is skipped",
        "file:3:1: warning: mount form \"a\" is not closed: it is dropped",
        "file:5:1: note: \")\" means nothing inside a mount form that stands in another one: the line is skipped",
        "file:4:1: warning: mount form \"b\" is not closed: it is dropped",
        "file:1:1: warning: package \"P\" is not closed: it is dropped",
        "file:8:1: warning: package \"R\" is not closed: it is dropped"}},
      {Kind::parts,
       "(footprintRef F)\n(part \"A\"\n(interface\n(bus x)\n(function \"F\"\n(size 2)\n(shape\n)\nend\n(pinAssign "
       "\"Q\"\n",
       {"file:1:1: warning: there is nothing yet that \"(footprintRef\" could belong to: the line is skipped",
        "file:4:1: note: \"(bus\" means nothing inside a part's interface: the line is skipped",
        "file:2:1: warning: interface of part \"A\" is not closed: what was read of it is kept",
        "file:6:1: note: \"(size\" means nothing inside a function: the line is skipped",
        "file:7:1: note: \"(shape\" means nothing inside a function: the line is skipped",
        "file:9:1: note: \"end\" means nothing outside a block: the line is skipped",
        "file:10:1: warning: pin assign \"Q\" is not closed: what was read of it is kept"}},
      {Kind::parts,
       "(part \"A\"\n(interface\n (property k v)\n)\n)\n",
       {"file:3:2: warning: a property inside an interface is not kept, and takes the next \")\" for its own",
        "file:1:1: warning: part \"A\" is not closed: what was read of it is kept"}},
      // what a function and a pin assign are written with
      {Kind::parts,
       "// a comment\n(function \"F\"\n(uver 1)\n(interface\n(port \"1\" (symbPinId 1) (portType \"IN\" "
       "))\n)\n)\n(pinAssign "
       "\"Q\"\n(uver 1)\n)\n",
       {}},
      // what changes a record behind its end
      {Kind::parts,
       "(part A\n(footprintRef E)\n)\n(footprintRef F)\n(pinAssign Q\n(footprintRef G)\n)\n",
       {"file:4:1: note: \"(footprintRef\" stands behind the end of what it belongs to",
        "file:6:1: note: \"(footprintRef\" stands behind the end of what it belongs to"}},
      {Kind::package,
       "(package P\n(type A)\n(uver 1)\n)\n(type B)\n(uver 2)\n(package Q\n)\n",
       {"file:5:1: note: \"(type\" stands behind the end of what it belongs to",
        "file:6:1: note: \"(uver\" stands behind the end of what it belongs to"}},
      // a quote that is left open
      {Kind::parts,
       "(part \"A\"\n(packageRef \"P)\n)\n",
       {"file:2:1: warning: a quote is not closed: it runs to the end of the line"}},
      {Kind::components,
       "pin 1 = A B\n$COMP \"C\"\ncolour = red\n$COMP \"D\"\n$COMP_END\n$COMP \"E\"\n",
       {"file:1:1: warning: there is nothing yet that \"pin\" could belong to: the line is skipped",
        "file:3:1: note: \"colour\" means nothing in a component: the line is skipped",
        "file:2:1: warning: component \"C\" is not closed: it is dropped",
        "file:6:1: warning: component \"E\" is not closed: it is dropped"}},
      {Kind::rules,
       "(design d\n(rule\n(colour red)\n(net N (x) (pinList (y)))\n(testRule (clearance 1 (pair A B)))))\n",
       {"file:3:0: note: \"colour\" means nothing inside \"rule\": it is skipped",
        "file:4:0: note: \"x\" means nothing inside \"net\": it is skipped",
        "file:4:0: note: \"y\" means nothing inside \"pinList\": it is skipped",
        "file:5:0: note: \"pair\" means nothing inside \"clearance\": it is skipped"}},
  };
  for (const Case& c : kCases) EXPECT_EQ(RemarksOf(c.kind, c.text), c.remarks) << c.text;
}

TEST(DesignDataRemarks, TellNamesThatAreDefinedNowhere) {
  const std::string_view parts =
      "(part \"A\"\n(packageRef \"P\")\n(pinAssignRef \"Q\")\n)\n(part \"B\"\n(packageRef \"X\")\n(pinAssignRef "
      "\"Y\")\n)\n"
      "(pinAssign \"Q\"\n(internal\n(funcInst (functionRef \"F\")\n)\n(funcInst (functionRef \"G\")\n)\n)\n)\n"
      "(pinAssign \"Z\"\n)\n(function \"F\"\n)\n";
  {
    CPC_BD_OutClsGet data;
    laminate::Diagnostics diagnostics;
    data.SetDiagnostics(&diagnostics);
    Load(data, Kind::parts, parts);
    EXPECT_TRUE(diagnostics.list.empty());
    data.ReportUndefinedNames();
    // Without a package file no package can be missing.
    EXPECT_THAT(Remarks(diagnostics),
                ElementsAre("file:7:1: warning: pin assign \"Y\" is referred to and defined nowhere",
                            "file:13:1: warning: function \"G\" is referred to and defined nowhere",
                            "file:17:1: warning: pin assign \"Z\" belongs to no part: it is written without ports"));
  }
  {
    CPC_BD_OutClsGet data;
    laminate::Diagnostics diagnostics;
    data.SetDiagnostics(&diagnostics);
    Load(data, Kind::components,
         "$COMP \"C\"\n functionName = F\n$COMP_END\n$COMP \"D\"\n functionName = H\n$COMP_END\n");
    data.ReportUndefinedNames();
    EXPECT_TRUE(diagnostics.list.empty());
    Load(data, Kind::parts, parts);
    Load(data, Kind::package, "(package \"P\"\n)\n");
    data.ReportUndefinedNames();
    EXPECT_THAT(Remarks(diagnostics),
                ElementsAre("file:6:1: warning: package \"X\" is referred to and defined nowhere",
                            "file:7:1: warning: pin assign \"Y\" is referred to and defined nowhere",
                            "file:5:2: warning: function \"H\" is referred to and defined nowhere",
                            "file:13:1: warning: function \"G\" is referred to and defined nowhere",
                            "file:17:1: warning: pin assign \"Z\" belongs to no part: it is written without ports"));
    data.SetDiagnostics(nullptr);
    data.ReportUndefinedNames();
    EXPECT_EQ(diagnostics.list.size(), 5u);
  }
}

// The files that are read need not be the same.
TEST(DesignDataRemarks, TellNamesThatAreDefinedTwice) {
  CPC_BD_OutClsGet data;
  laminate::Diagnostics diagnostics;
  data.SetDiagnostics(&diagnostics);
  Load(data, Kind::package, "(package P\n)\n(package R\n)\n");
  Load(data, Kind::package, "\n(package P\n)\n");
  Load(data, Kind::parts,
       "(part A\n(pinAssignRef \"Q\")\n)\n(part Q\n)\n(pinAssign Q\n)\n(function Q\n)\n(function\n)\n(function\n)\n");
  data.ReportUndefinedNames();
  EXPECT_THAT(Remarks(diagnostics),
              ElementsAre("file:2:1: warning: package \"P\" is defined before: that one is found by its name"));
  diagnostics.list.clear();
  Load(data, Kind::parts, "\n\n(part A\n)\n(pinAssign Q\n)\n(function Q\n)\n(function Q\n)\n");
  data.ReportUndefinedNames();
  const auto twice = [](const char* szWhat) {
    return std::string(szWhat) + " is defined before: that one is found by its name";
  };
  EXPECT_THAT(Remarks(diagnostics),
              ElementsAre(twice("file:2:1: warning: package \"P\""), twice("file:5:1: warning: pin assign \"Q\""),
                          twice("file:7:1: warning: function \"Q\""), twice("file:9:1: warning: function \"Q\""),
                          twice("file:3:1: warning: part \"A\"")));
}

// A remark takes more memory than a line of two bytes.
TEST(DesignDataRemarks, EndAtANumber) {
  std::string skipped;
  std::string open;
  std::string nothing;
  for (int i = 0; i < 2000; ++i) {
    skipped += "x\n";
    open += "$COMP\n";
    nothing += "pin\n";
  }
  const std::pair<Kind, std::string> kFiles[] = {{Kind::package, skipped},
                                                 {Kind::parts, skipped},
                                                 {Kind::components, skipped},
                                                 {Kind::components, open},
                                                 {Kind::components, nothing}};
  for (const auto& [kind, text] : kFiles) {
    const std::vector<std::string> remarks = RemarksOf(kind, text);
    ASSERT_EQ(remarks.size(), 1001u);
    EXPECT_THAT(remarks[999], testing::StartsWith("file:1000:1: "));
    EXPECT_THAT(remarks[1000], testing::EndsWith(":1: note: what else there is to remark of this file is not told"));
  }
}

// What is never closed is dropped, and defines nothing. An empty name refers to nothing.
TEST(DesignDataRemarks, OnlyPackagesOfTheFacadeAreDefined) {
  CPC_BD_OutClsGet data;
  laminate::Diagnostics diagnostics;
  data.SetDiagnostics(&diagnostics);
  Load(data, Kind::package, "(package P\n)\n(package \"A\"\n");
  Load(data, Kind::parts,
       "(part 1\n(packageRef \"A\")\n(pinAssignRef \"\")\n)\n(part 2\n(packageRef \"\")\n)\n(part 3\n(packageRef "
       "\"P\")\n)\n");
  Load(data, Kind::components, "$COMP C\nfunctionName =\n$COMP_END\n");
  diagnostics.list.clear();
  data.ReportUndefinedNames();
  EXPECT_THAT(Remarks(diagnostics), ElementsAre("file:2:1: warning: package \"A\" is referred to and defined nowhere"));
  // Another object knows nothing of what was read before.
  laminate::Diagnostics later;
  data.SetDiagnostics(&later);
  data.ReportUndefinedNames();
  EXPECT_TRUE(later.list.empty());
}

TEST(DesignDataRemarks, TellWhereABlockWasOpened) {
  EXPECT_THAT(RemarksOf(Kind::package, "\n  (package P\n    (mountForm m\n"),
              ElementsAre("file:3:5: warning: mount form \"m\" is not closed: it is dropped",
                          "file:2:3: warning: package \"P\" is not closed: it is dropped"));
  EXPECT_THAT(RemarksOf(Kind::components, " $COMP C\n"),
              ElementsAre("file:1:2: warning: component \"C\" is not closed: it is dropped"));
}

// Status and diagnostics are a facade's own.
TEST(DesignDataRemarks, AreNotCopied) {
  CPC_BD_OutClsGet source;
  laminate::Diagnostics diagnostics;
  source.SetDiagnostics(&diagnostics);
  LoadPath(source, Kind::package, "/nowhere/at/all");
  CPC_BD_OutClsGet copy(source);
  CPC_BD_OutClsGet assigned;
  assigned = source;
  for (CPC_BD_OutClsGet* p : {&copy, &assigned}) {
    EXPECT_TRUE(p->GetLoadStatus().IsOk());
    Load(*p, Kind::package, "(package A\n");
    p->ReportUndefinedNames();
    EXPECT_TRUE(diagnostics.list.empty());
  }
  LoadPath(assigned, Kind::parts, "/nowhere/at/all");
  const CPC_BD_OutClsGet fresh;
  assigned = fresh;
  EXPECT_FALSE(assigned.GetLoadStatus().IsOk());
}

}  // namespace
