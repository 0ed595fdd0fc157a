#include "designdata/CVRXoutPrfPart.h"

#include <algorithm>
#include <chrono>
#include <numeric>
#include <set>

#include "designdata/DesignDataTestSupport.h"

namespace {

void AddProperty(CVRXoutPrfPart& part, const char* szKey, const char* szValue) {
  laminate::AppendOwned(*part.m_pPropertyArray, std::make_unique<CLProperty>(szKey, szValue));
}
CVRXoutPrfPartPort& AddPort(CVRXoutPrfPart& part, const char* szNo, const char* szName, const char* szType) {
  auto p = std::make_unique<CVRXoutPrfPartPort>();
  p->m_sPortNo = szNo;
  p->m_sPortName = szName;
  p->m_sPortType = szType;
  return laminate::AppendOwned(*part.m_pPortArray, std::move(p));
}
std::string Written(CVRXoutPrfPart& part) {
  return StreamText([&](FILE* fp) { return part.nPrint2File(fp); });
}

// ---- look-ups ----
TEST(PartLookUp, GivesTheFirst) {
  CVRXoutPrfPart part;
  EXPECT_EQ(part.GetSymbolPinIDWithPortNo("1"), 0);
  EXPECT_EQ(part.sGetPropertyWithKeyWord("k"), "");
  part.m_pPortArray->SetSize(1);
  part.m_pPropertyArray->SetSize(1);
  AddPort(part, "1", "", "").m_nSymbPinId = 4;
  AddPort(part, "1", "", "").m_nSymbPinId = 5;
  AddProperty(part, "k", "first");
  AddProperty(part, "k", "second");
  EXPECT_EQ(part.GetSymbolPinIDWithPortNo("1"), 4);
  EXPECT_EQ(part.GetSymbolPinIDWithPortNo("2"), 0);
  EXPECT_EQ(part.sGetPropertyWithKeyWord("k"), "first");
  EXPECT_EQ(part.sGetPropertyWithKeyWord("K"), "");
}

TEST(PartLookUp, SkipList) {
  const CVRXoutPrfPart part;
  for (const char* sz : {"uver", "useInSchema", "useInLayout", "inPartsList", "partType", "placeRestriction",
                         "polarity", "designation"}) {
    EXPECT_EQ(part.bIsInSkipList(sz), 1) << sz;
  }
  for (const char* sz : {"", "Uver", "uver ", "partClass", "property", "polarity2"}) {
    EXPECT_EQ(part.bIsInSkipList(sz), 0) << sz;
  }
}

TEST(PartLookUp, OfTheArray) {
  const auto pData = Loaded(
      Kind::parts, "(part \"A\"\n(pinAssignRef \"Q\")\n)\n(part \"B\"\n(pinAssignRef \"Q\")\n)\n(part \"C\"\n)\n");
  CVRXoutPrfPartArray& parts = *pData->m_pPrfPartArray;
  parts.SetSize(4);
  std::rotate(parts.begin(), parts.end() - 1, parts.end());  // a null slot in front
  EXPECT_EQ(parts.bExistSameUpfWithPartName("B"), 1);
  EXPECT_EQ(parts.bExistSameUpfWithPartName("b"), 0);
  EXPECT_EQ(laminate::FindPartByPinAssign(&parts, "Q"), parts.GetAt(1));
  EXPECT_EQ(laminate::FindPartByPinAssign(&parts, ""), parts.GetAt(3));
  EXPECT_EQ(laminate::FindPartByPinAssign(&parts, "R"), nullptr);
}

TEST(PinAssignLookUp, GivesTheFirst) {
  const auto pData =
      Loaded(Kind::parts, "(pinAssign Q\n(interface\n(port 1 a 7 b N c IN\n(port 1 a 8 b N c OUT\n(port 2 a 9\n)\n)\n");
  const CVRXoutPrfPinAssign& pinAssign = *pData->m_pPrfPinAssignArray->GetAt(0);
  EXPECT_EQ(pinAssign.GetPinIDWithPortNo("1"), 7);
  EXPECT_EQ(pinAssign.GetPinIDWithPortNo("2"), 9);
  EXPECT_EQ(pinAssign.GetPinIDWithPortNo("3"), -1);
  EXPECT_EQ(pinAssign.GetPortTypeWithPortNo("1"), "IN");
  EXPECT_EQ(pinAssign.GetPortTypeWithPortNo("2"), "");
  EXPECT_EQ(pinAssign.GetPortTypeWithPortNo("3"), "INOUT");
}

// ---- writer ----
TEST(PartWriter, EmptyAndFull) {
  CVRXoutPrfPart part;
  EXPECT_EQ(Written(part), "(part \"\"\n(packageRef \"\")\n)\n");
  part.m_sName = "A B";
  part.m_sFootprintRef = "F";
  part.m_sPinAssignRef = "Q";
  part.m_sStockInfo = "S";
  part.m_sPartClass = "IC";
  part.m_sPackageRef = "P";
  AddProperty(part, "value", "(x)");
  AddProperty(part, "polarity", "(x)");
  AddProperty(part, "uver", "3");
  AddProperty(part, "a b", "c\"d");
  AddPort(part, "1", "N", "IN");
  AddPort(part, "2", "M", "").m_nSymbPinId = 9;
  laminate::AppendOwned(*part.m_pStockPropertyArray, std::make_unique<CLProperty>("s", "t"));
  laminate::AppendOwned(*part.m_pGateDefArray, std::make_unique<CVRXoutPrfPartGateDef>());
  const std::string expected =
      "(part \"A B\"\n(uver 3)\n(packageRef \"P\")\n(pinAssignRef \"Q\")\n(interface\n"
      "(port \"1\" (symbPinId 0) (portName \"N\") (portType IN))\n(port \"2\" (symbPinId 9) (portName \"M\"))\n)\n"
      "(partClass IC)\n(stockInfo \"S\" (default))\n(property \"value\" \"x\")\n(polarity (x))\n"
      "(property \"a b\" \"c\"d\")\n)\n";
  EXPECT_EQ(Written(part), expected);
  EXPECT_EQ(Written(part), expected);
  EXPECT_THROW(part.nPrint2File(nullptr), CInvalidArgException);
}

TEST(PartWriter, OfEqualPropertiesTheLastStays) {
  struct Case {
    const char* name;
    std::vector<std::pair<const char*, const char*>> properties;
    const char* left;
    const char* first;
    const char* second;
  };
  const Case kCases[] = {
      {"none", {}, "[]", "", ""},
      {"one twice", {{"k", "v"}, {"k", "v"}}, "[k=v]", "(property \"k\" \"v\")\n", "(property \"k\" \"v\")\n"},
      {"order of the last ones",
       {{"a", "1"}, {"b", "2"}, {"a", "1"}, {"c", "3"}, {"b", "2"}, {"a", "2"}},
       "[a=1,c=3,b=2,a=2]",
       "(property \"a\" \"1\")\n(property \"c\" \"3\")\n(property \"b\" \"2\")\n(property \"a\" \"2\")\n",
       "(property \"a\" \"1\")\n(property \"c\" \"3\")\n(property \"b\" \"2\")\n(property \"a\" \"2\")\n"},
      {"brackets make a difference",
       {{"k", "v"}, {"k", "(v)"}},
       "[k=v,k=(v)]",
       "(property \"k\" \"v\")\n(property \"k\" \"v\")\n",
       "(property \"k\" \"v\")\n(property \"k\" \"v\")\n"},
      {"key and value are not run together",
       {{"ab", "c"}, {"a", "bc"}},
       "[ab=c,a=bc]",
       "(property \"ab\" \"c\")\n(property \"a\" \"bc\")\n",
       "(property \"ab\" \"c\")\n(property \"a\" \"bc\")\n"},
      {"skip list too", {{"polarity", "x"}, {"polarity", "x"}}, "[polarity=x]", "(polarity x)\n", "(polarity x)\n"},
      {"brackets inside go too",
       {{"k", "a(b)c)("}},
       "[k=a(b)c)(]",
       "(property \"k\" \"abc\")\n",
       "(property \"k\" \"abc\")\n"},
      {"other spelling of the version",
       {{"Uver", "1"}},
       "[Uver=1]",
       "(property \"Uver\" \"1\")\n",
       "(property \"Uver\" \"1\")\n"},
      {"no key", {{"", "v"}}, "[=v]", "(property \"\" \"v\")\n", "(property \"\" \"v\")\n"},
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.name);
    CVRXoutPrfPart part;
    for (const auto& [key, value] : c.properties) AddProperty(part, key, value);
    EXPECT_EQ(Written(part), "(part \"\"\n(packageRef \"\")\n" + std::string(c.first) + ")\n");
    EXPECT_EQ(Show(*part.m_pPropertyArray), c.left);
    EXPECT_EQ(Written(part), "(part \"\"\n(packageRef \"\")\n" + std::string(c.second) + ")\n");
  }
}

// The removal comes behind the lines of the versions.
TEST(PartWriter, EqualVersionsAreWrittenTwiceTheFirstTime) {
  CVRXoutPrfPart part;
  AddProperty(part, "uver", "1");
  AddProperty(part, "k", "v");
  AddProperty(part, "uver", "1");
  EXPECT_EQ(Written(part), "(part \"\"\n(uver 1)\n(uver 1)\n(packageRef \"\")\n(property \"k\" \"v\")\n)\n");
  EXPECT_EQ(Written(part), "(part \"\"\n(uver 1)\n(packageRef \"\")\n(property \"k\" \"v\")\n)\n");
}

TEST(PartWriter, NullSlotsAreNotThere) {
  CVRXoutPrfPart part;
  part.m_pPropertyArray->SetSize(2);
  part.m_pPortArray->SetSize(2);
  AddProperty(part, "k", "v");
  EXPECT_EQ(Written(part), "(part \"\"\n(packageRef \"\")\n(property \"k\" \"v\")\n)\n");
  AddPort(part, "1", "", "");
  AddProperty(part, "k", "v");
  EXPECT_EQ(Written(part),
            "(part \"\"\n(packageRef \"\")\n(interface\n(port \"1\" (symbPinId 0) (portName \"\"))\n)\n(property "
            "\"k\" \"v\")\n)\n");
}

TEST(PartWriter, TextIsNeverAFormatAndEndsAtItsFirstNul) {
  CVRXoutPrfPart part;
  part.m_sName = "%s%n";
  part.m_sPartClass = CString("a\0b"sv);
  AddProperty(part, "%d", "(\0x)");
  part.m_pPropertyArray->GetAt(0)->m_sComment = CString("(a\0x)"sv);
  EXPECT_EQ(Written(part), "(part \"%s%n\"\n(packageRef \"\")\n(partClass a)\n(property \"%d\" \"a\")\n)\n");
  EXPECT_EQ(part.m_pPropertyArray->GetAt(0)->m_sComment, "(a\0x)"sv);
}

TEST(PartWriter, ComesBackButForWhatTheFormatDrops) {
  CVRXoutPrfPart part;
  part.m_sName = "A";
  part.m_sFootprintRef = "F";
  part.m_sPinAssignRef = "Q";
  part.m_sStockInfo = "S";
  part.m_sPartClass = "IC";
  part.m_sPackageRef = "P";
  AddProperty(part, "uver", "3");
  AddProperty(part, "polarity", "both");
  AddProperty(part, "k", "v w");
  AddPort(part, "1", "N", "IN").m_nSymbPinId = 7;
  const auto pData = Loaded(Kind::parts, Written(part));
  EXPECT_EQ(Show(*pData->m_pPrfPartArray), "[{A,,Q,,IC,P,[uver=3,polarity=both,k=v w],[],[{1,IN,N,0}],[]}]");
}

TEST(PartWriter, DuplicatesAreRemovedInLinearTime) {
  const auto seconds = [](int n) {
    CVRXoutPrfPart part;
    for (int i = 0; i < n; ++i) AddProperty(part, "key", std::to_string(i % (n / 2)).c_str());
    std::string s;
    const auto start = std::chrono::steady_clock::now();
    {
      laminate::TextOut out(s);
      part.Write(out);
    }
    EXPECT_EQ(part.m_pPropertyArray->GetSize(), n / 2);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  };
  seconds(20000);
  // Comparing each with each would take minutes.
  EXPECT_LT(seconds(400000), 20.0);
}

TEST(GateWriter, DoublesPercentSigns) {
  CVRXoutPrfPartGateDef gate;
  gate.m_sGateName = "G";
  laminate::AppendOwned(*gate.m_pPropertyArray, std::make_unique<CLProperty>("k", "v"));
  EXPECT_EQ(StreamText([&](FILE* fp) { return gate.nPrint2File(fp); }), "");
  gate.m_aPortRefs.Add("1");
  gate.m_aPortRefs.Add("5%");
  gate.m_aPortRefs.Add("");
  EXPECT_EQ(StreamText([&](FILE* fp) { return gate.nPrint2File(fp); }),
            "(gateTermDef (portRef \"1\"))\n(gateTermDef (portRef \"5%%\"))\n(gateTermDef (portRef \"\"))\n");
  EXPECT_EQ(Show(gate.m_aPortRefs), "[1,5%%,]");
  EXPECT_EQ(StreamText([&](FILE* fp) { return gate.nPrint2File(fp); }),
            "(gateTermDef (portRef \"1\"))\n(gateTermDef (portRef \"5%%%%\"))\n(gateTermDef (portRef \"\"))\n");
  EXPECT_THROW(gate.nPrint2File(nullptr), CInvalidArgException);
}

// ---- copies share their arrays; whichever dies last frees them (the sanitizers see to that) ----
std::unique_ptr<CVRXoutPrfPart> FullPart() {
  auto p = std::make_unique<CVRXoutPrfPart>();
  p->m_sName = "A";
  AddProperty(*p, "k", "v");
  AddPort(*p, "1", "N", "IN");
  laminate::AppendOwned(*p->m_pStockPropertyArray, std::make_unique<CLProperty>("s", "t"));
  laminate::AppendOwned(*p->m_pGateDefArray, std::make_unique<CVRXoutPrfPartGateDef>());
  return p;
}

TEST(PartCopy, SharesItsArraysAndIsEqual) {
  const auto a = FullPart();
  CVRXoutPrfPart b(*a);
  EXPECT_EQ(b.m_pPortArray, a->m_pPortArray);
  EXPECT_EQ(b.m_pGateDefArray, a->m_pGateDefArray);
  EXPECT_EQ(b.m_pPropertyArray, a->m_pPropertyArray);
  EXPECT_EQ(b.m_pStockPropertyArray, a->m_pStockPropertyArray);
  EXPECT_EQ(b == *a, 1);
  EXPECT_EQ(b != *a, 0);
  AddPort(b, "2", "", "");
  EXPECT_EQ(a->m_pPortArray->GetSize(), 2);
  b.m_sName = "B";
  EXPECT_EQ(b == *a, 0);
  // Equal content in arrays of its own is not equal.
  EXPECT_EQ(*FullPart() == *FullPart(), 0);
  EXPECT_EQ(CVRXoutPrfPart() == CVRXoutPrfPart(), 0);
  EXPECT_EQ(*a == *a, 1);
}

// Every order of destruction of a part and copies of copies, with the content read until the last one goes.
TEST(PartCopy, AnyOrderOfDestruction) {
  std::vector<int> order(4);
  std::iota(order.begin(), order.end(), 0);
  do {
    std::vector<std::unique_ptr<CVRXoutPrfPart>> parts(4);
    parts[0] = FullPart();
    parts[1].reset(parts[0]->clone());
    parts[2].reset(parts[1]->clone());
    parts[3] = std::make_unique<CVRXoutPrfPart>();
    *parts[3] = *parts[0];
    for (const int i : order) {
      for (const auto& p : parts) {
        if (p != nullptr) {
          EXPECT_EQ(Show(*p), "{A,,,,,,[k=v],[s=t],[{1,IN,N,0}],[{,[],[]}]}");
        }
      }
      parts[static_cast<std::size_t>(i)].reset();
    }
  } while (std::next_permutation(order.begin(), order.end()));
}

TEST(PartCopy, AssignmentLetsGoOfWhatWasThere) {
  auto a = FullPart();
  auto b = FullPart();
  auto c = std::make_unique<CVRXoutPrfPart>(*b);
  *b = *a;  // c keeps b's arrays
  EXPECT_NE(c->m_pPortArray, b->m_pPortArray);
  EXPECT_EQ(c->m_pPortArray->GetAt(0)->m_sPortName, "N");
  *b = *c;
  EXPECT_EQ(*b == *c, 1);
  *b = static_cast<const CVRXoutPrfPart&>(*b);
  EXPECT_EQ(Show(*b), Show(*c));
  *a = *c;  // nobody else holds what a had
  c.reset();
  b.reset();
  EXPECT_EQ(Show(*a), "{A,,,,,,[k=v],[s=t],[{1,IN,N,0}],[{,[],[]}]}");
  // Assigning between parts that share already.
  const auto d = std::make_unique<CVRXoutPrfPart>(*a);
  *d = *a;
  *a = *d;
  EXPECT_EQ(*a == *d, 1);
}

// What a host puts in is its part's alone; what it took out is its own, unless a copy still holds it.
TEST(PartCopy, AHostMayReplaceAnArray) {
  std::vector<int> order(3);
  std::iota(order.begin(), order.end(), 0);
  for (int nReplaced = 0; nReplaced < 8; ++nReplaced) {
    std::sort(order.begin(), order.end());
    do {
      std::vector<std::unique_ptr<CVRXoutPrfPart>> parts(3);
      parts[0] = FullPart();
      parts[1].reset(parts[0]->clone());
      parts[2].reset(parts[0]->clone());
      CVRXoutPrfPartPortArray* const pShared = parts[0]->m_pPortArray;
      for (std::size_t i = 0; i < 3; ++i) {
        if ((nReplaced >> i & 1) == 0) continue;
        parts[i]->m_pPortArray = new CVRXoutPrfPartPortArray;
        AddPort(*parts[i], "own", "", "");
      }
      // When every part got another one, the host is the last that knows the shared array.
      if (nReplaced == 7) delete pShared;
      for (const int i : order) {
        for (std::size_t j = 0; j < 3; ++j) {
          if (parts[j] != nullptr) {
            EXPECT_EQ(parts[j]->m_pPortArray->GetAt(0)->m_sPortNo, (nReplaced >> j & 1) != 0 ? "own" : "1");
            EXPECT_EQ(Show(*parts[j]->m_pPropertyArray), "[k=v]");
          }
        }
        parts[static_cast<std::size_t>(i)].reset();
      }
    } while (std::next_permutation(order.begin(), order.end()));
  }
}

TEST(PartCopy, TheLastOwnerMayDeleteAndReplace) {
  auto a = FullPart();
  auto b = std::make_unique<CVRXoutPrfPart>(*a);
  a.reset();
  delete b->m_pPortArray;
  b->m_pPortArray = new CVRXoutPrfPartPortArray;
  delete b->m_pStockPropertyArray;
  b->m_pStockPropertyArray = nullptr;
  b.reset();
  // A part that was never copied is as free.
  auto c = FullPart();
  delete std::exchange(c->m_pPropertyArray, new CLPropertyArray);
  c.reset();
}

TEST(PartCopy, CopiesOfAPartWithAReplacedArrayShareThatOne) {
  auto a = FullPart();
  auto b = std::make_unique<CVRXoutPrfPart>(*a);
  b->m_pPortArray = new CVRXoutPrfPartPortArray;
  AddPort(*b, "own", "", "");
  auto c = std::make_unique<CVRXoutPrfPart>(*b);
  EXPECT_EQ(c->m_pPortArray, b->m_pPortArray);
  EXPECT_EQ(c->m_pPropertyArray, a->m_pPropertyArray);
  b.reset();
  EXPECT_EQ(c->m_pPortArray->GetAt(0)->m_sPortNo, "own");
  a.reset();
  EXPECT_EQ(Show(*c->m_pPropertyArray), "[k=v]");
}

TEST(PartCopy, ArraysMayChangePlaces) {
  auto a = FullPart();
  const auto b = std::make_unique<CVRXoutPrfPart>(*a);
  std::swap(a->m_pPropertyArray, a->m_pStockPropertyArray);
  a.reset();
  EXPECT_EQ(Show(*b->m_pPropertyArray), "[k=v]");
  EXPECT_EQ(Show(*b->m_pStockPropertyArray), "[s=t]");
  // One array in both fields is freed once.
  auto c = FullPart();
  delete c->m_pStockPropertyArray;
  c->m_pStockPropertyArray = c->m_pPropertyArray;
  c.reset();
}

TEST(PartCopy, ArraysAndFacadesOfParts) {
  auto pData = std::make_unique<CPC_BD_OutClsGet>();
  laminate::AppendOwned(*pData->m_pPrfPartArray, FullPart());
  std::unique_ptr<CPC_BD_OutClsGet> pCopy(pData->clone());
  EXPECT_EQ(*pCopy->m_pPrfPartArray == *pData->m_pPrfPartArray, true);
  *pCopy->m_pPrfPartArray = *pData->m_pPrfPartArray;
  pData.reset();
  EXPECT_EQ(Show(*pCopy->m_pPrfPartArray), "[{A,,,,,,[k=v],[s=t],[{1,IN,N,0}],[{,[],[]}]}]");
}

TEST(PartCopy, ManyCopiesWithArraysOfTheirOwn) {
  const auto a = FullPart();
  std::vector<std::unique_ptr<CVRXoutPrfPart>> copies;
  for (int i = 0; i < 100000; ++i) {
    copies.push_back(std::make_unique<CVRXoutPrfPart>(*a));
    CVRXoutPrfPart& copy = *copies.back();
    copy.m_pPortArray = new CVRXoutPrfPartPortArray;
    copy.m_pGateDefArray = new CVRXoutPrfPartGateDefArray;
    copy.m_pPropertyArray = new CLPropertyArray;
    copy.m_pStockPropertyArray = new CLPropertyArray;
  }
  const auto start = std::chrono::steady_clock::now();
  copies.clear();
  // Asking every copy at each death would take minutes.
  EXPECT_LT(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(), 10.0);
  EXPECT_EQ(Show(*a->m_pPropertyArray), "[k=v]");
}

// A part that gets another array before each copying leaves each copy the last that holds one; so does one that others
// were copied from before they got arrays of their own.
TEST(PartCopy, ManyCopiesOfAPartWithChangingArrays) {
  constexpr int kCopies = 50000;
  const auto start = std::chrono::steady_clock::now();
  for (const bool bBackwards : {false, true}) {
    const auto a = FullPart();
    std::vector<std::unique_ptr<CVRXoutPrfPart>> copies;
    for (int i = 0; i < kCopies; ++i) {
      if (i != 0) a->m_pPortArray = new CVRXoutPrfPartPortArray;  // the copy before has the one that stood there
      copies.push_back(std::make_unique<CVRXoutPrfPart>(*a));
    }
    for (int i = 0; i < kCopies / 2; ++i) copies[static_cast<std::size_t>(i)]->m_pPropertyArray = new CLPropertyArray;
    if (bBackwards) std::reverse(copies.begin(), copies.end());
    for (auto& p : copies) p.reset();
    EXPECT_EQ(Show(*a->m_pPropertyArray), "[k=v]");
    EXPECT_EQ(Show(*a->m_pStockPropertyArray), "[s=t]");
  }
  // Asking all of them each time would take minutes.
  EXPECT_LT(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(), 10.0);
}

// Arrays that changed places are known by their pointers, not by their fields, when the part is copied again.
TEST(PartCopy, ArraysMayChangePlacesBetweenCopies) {
  std::vector<int> order(3);
  std::iota(order.begin(), order.end(), 0);
  do {
    std::vector<std::unique_ptr<CVRXoutPrfPart>> parts(3);
    parts[0] = FullPart();
    parts[1] = std::make_unique<CVRXoutPrfPart>(*parts[0]);
    std::swap(parts[0]->m_pPropertyArray, parts[0]->m_pStockPropertyArray);
    parts[2] = std::make_unique<CVRXoutPrfPart>(*parts[0]);
    for (const int i : order) {
      for (std::size_t j = 0; j < 3; ++j) {
        if (parts[j] == nullptr) continue;
        EXPECT_EQ(Show(*parts[j]->m_pPropertyArray), j == 1 ? "[k=v]" : "[s=t]");
        EXPECT_EQ(Show(*parts[j]->m_pStockPropertyArray), j == 1 ? "[s=t]" : "[k=v]");
      }
      parts[static_cast<std::size_t>(i)].reset();
    }
  } while (std::next_permutation(order.begin(), order.end()));
}

struct CountedPort : CVRXoutPrfPartPort {
  explicit CountedPort(int& nDeleted) : m_nDeleted(nDeleted) {}
  ~CountedPort() override { ++m_nDeleted; }
  int& m_nDeleted;
};

TEST(PartCopy, TheLastThatHoldsAnArrayDeletesIt) {
  for (const bool bReplaced : {false, true}) {
    std::vector<int> order(3);
    std::iota(order.begin(), order.end(), 0);
    do {
      int nDeleted = 0;
      std::vector<std::unique_ptr<CVRXoutPrfPart>> parts(3);
      parts[0] = std::make_unique<CVRXoutPrfPart>();
      laminate::AppendOwned<CVRXoutPrfPartPortArray, CVRXoutPrfPartPort>(*parts[0]->m_pPortArray,
                                                                         std::make_unique<CountedPort>(nDeleted));
      parts[1] = std::make_unique<CVRXoutPrfPart>(*parts[0]);
      parts[2] = std::make_unique<CVRXoutPrfPart>(*parts[1]);
      std::set<int> holders{0, 1, 2};
      if (bReplaced) {
        parts[1]->m_pPortArray = new CVRXoutPrfPartPortArray;
        holders.erase(1);
      }
      for (const int i : order) {
        EXPECT_EQ(nDeleted, holders.empty() ? 1 : 0);
        parts[static_cast<std::size_t>(i)].reset();
        holders.erase(i);
      }
      EXPECT_EQ(nDeleted, 1);
    } while (std::next_permutation(order.begin(), order.end()));
  }
}

TEST(PartPort, CopiesAllFields) {
  CVRXoutPrfPart part;
  CVRXoutPrfPartPort& port = AddPort(part, "1", "N", "IN");
  port.m_nSymbPinId = 4;
  const CVRXoutPrfPartPort copy(port);
  EXPECT_EQ(Show(copy), "{1,IN,N,4}");
  CVRXoutPrfPartPort target;
  target = copy;
  EXPECT_EQ(Show(target), "{1,IN,N,4}");
}

TEST(PartWriter, KeysOfTheSkipListAreKeywords) {
  for (const char* sz :
       {"useInSchema", "useInLayout", "inPartsList", "partType", "placeRestriction", "polarity", "designation"}) {
    CVRXoutPrfPart part;
    AddProperty(part, sz, "(x)");
    EXPECT_EQ(Written(part), "(part \"\"\n(packageRef \"\")\n(" + std::string(sz) + " (x))\n)\n");
  }
}

TEST(PartWriter, DifferentVersionsAreAllWritten) {
  CVRXoutPrfPart part;
  AddProperty(part, "uver", "1");
  AddProperty(part, "uver", "(2)");
  for (int i = 0; i < 2; ++i) EXPECT_EQ(Written(part), "(part \"\"\n(uver 1)\n(uver (2))\n(packageRef \"\")\n)\n");
}

TEST(PartWriter, TheKindOfAPropertyDoesNotCount) {
  CVRXoutPrfPart part;
  for (const char* szKind : {"a", "b"}) {
    laminate::AppendOwned(*part.m_pPropertyArray, std::make_unique<CLProperty>("k", "v", szKind));
  }
  Written(part);
  EXPECT_EQ(Show(*part.m_pPropertyArray), "[k=v:b]");
}

// An empty type and INOUT differ.
TEST(PartWriter, TypesOfPorts) {
  CVRXoutPrfPart part;
  AddPort(part, "1", "N", "INOUT");
  AddPort(part, "2", "N", "");
  EXPECT_EQ(Written(part),
            "(part \"\"\n(packageRef \"\")\n(interface\n(port \"1\" (symbPinId 0) (portName \"N\") (portType INOUT))\n"
            "(port \"2\" (symbPinId 0) (portName \"N\"))\n)\n)\n");
}

TEST(PartLookUp, GivesTheFirstThoughItIsEmpty) {
  CVRXoutPrfPart part;
  AddProperty(part, "k", "");
  AddProperty(part, "k", "x");
  EXPECT_EQ(part.sGetPropertyWithKeyWord("k"), "");
  AddPort(part, "1", "", "");
  AddPort(part, "1", "", "").m_nSymbPinId = 5;
  EXPECT_EQ(part.GetSymbolPinIDWithPortNo("1"), 0);
}

TEST(PartLookUp, NeedsItsArrays) {
  CVRXoutPrfPart part;
  part.m_sName = "A";
  std::string s;
  const auto write = [&] {
    laminate::TextOut out(s);
    part.Write(out);
  };
  // Nothing is written of it.
  CVRXoutPrfPartPortArray* const pPorts = std::exchange(part.m_pPortArray, nullptr);
  EXPECT_THROW(write(), CInvalidArgException);
  EXPECT_THROW(part.GetSymbolPinIDWithPortNo("1"), CInvalidArgException);
  part.m_pPortArray = pPorts;
  delete std::exchange(part.m_pPropertyArray, nullptr);
  EXPECT_THROW(write(), CInvalidArgException);
  EXPECT_THROW(part.sGetPropertyWithKeyWord("k"), CInvalidArgException);
  EXPECT_EQ(s, "");
}

TEST(PinAssignLookUp, NullSlotsAndNullArrays) {
  CVRXoutPrfPinAssign pinAssign;
  pinAssign.m_pPortArray->SetSize(1);
  auto pPort = std::make_unique<CVRXoutPrfPinAssignPort>();
  pPort->m_sPortNo = "1";
  pPort->m_nPinId = 7;
  laminate::AppendOwned(*pinAssign.m_pPortArray, std::move(pPort));
  EXPECT_EQ(pinAssign.GetPinIDWithPortNo("1"), 7);
  EXPECT_EQ(pinAssign.GetPortTypeWithPortNo("1"), "");
  delete std::exchange(pinAssign.m_pPortArray, nullptr);
  EXPECT_THROW(pinAssign.GetPinIDWithPortNo("1"), CInvalidArgException);
  EXPECT_THROW(pinAssign.GetPortTypeWithPortNo("1"), CInvalidArgException);
}

}  // namespace
