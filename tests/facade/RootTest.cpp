// The root by itself: units, look-ups, shapes and records made from nodes, copies, destruction, writing.
#include <locale.h>
#include <stdlib.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <random>
#include <sstream>

#include "base/LocaleScope.h"
#include "board/CBDboardContainer.h"
#include "board/CBDlibraryEntities.h"
#include "board/CBDnet.h"
#include "board/CBDparameter.h"
#include "board/CBDsubBoard.h"
#include "designdata/CVRXoutPackage.h"
#include "designdata/CVRXoutPrfFunction.h"
#include "designdata/CVRXoutPrfPart.h"
#include "designdata/CVRXoutPrfPinAssign.h"
#include "drawobj/CBDcircle.h"
#include "drawobj/CBDvertexPt.h"
#include "facade/CBDesigner.h"
#include "facade/FacadeTestSupport.h"
#include "facade/WholeDesign.h"
#include "reader/CECadCls.h"
#include "reader/CECadClsLvl.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDfootprintLayer.h"
#include "technology/CBDsubLayer.h"
#include "technology/CBDtechnologyContainer.h"

namespace {

TEST(Root, ConvertsDatabaseUnits) {
  struct Row {
    const char* text;
    double expected;
  };
  CBDesigner root;
  const laminate::test::LocaleScope comma("de_DE.UTF-8");
  ASSERT_TRUE(comma.IsSet());
  for (const Row& row : {Row{"50000", 0.5}, Row{"50000.0", 50000.0}, Row{"1e3", 0.01}, Row{"1.e3", 1000.0},
                         Row{"-100000", -1.0}, Row{".5", 0.5}, Row{"abc", 0.0}, Row{"", 0.0}, Row{".", 0.0},
                         Row{"5.", 5.0}, Row{"-", 0.0}, Row{"-.", 0.0}, Row{"1.5.5", 1.5}, Row{"12abc", 0.00012},
                         Row{"+50000", 0.5}, Row{" 50000", 0.5}, Row{"1x.", 1.0}, Row{"1,5", 0.00001}}) {
    EXPECT_EQ(root.dDBUnit2Double(row.text), row.expected) << row.text;
  }
}

// The C library's reading and the one division, in the C locale.
double PlainLength(const std::string& s) {
  static const locale_t c = ::newlocale(LC_ALL_MASK, "C", nullptr);
  const double d = ::strtod_l(s.c_str(), nullptr, c);
  return s.find('.') == std::string::npos ? d / 100000.0 : d;
}

TEST(Root, ConvertsDatabaseUnitsAsTheCLibraryDoes) {
  CBDesigner root;
  const auto check = [&root](const std::string& s) {
    const double dFound = root.dDBUnit2Double(CString(s));
    const double dExpected = PlainLength(s);
    // Bit for bit, so that the sign of a zero counts.
    EXPECT_TRUE(std::isnan(dExpected) ? std::isnan(dFound)
                                      : std::bit_cast<std::uint64_t>(dFound) == std::bit_cast<std::uint64_t>(dExpected))
        << s << ": " << dFound << " for " << dExpected;
  };
  for (const char* sz : {"-0",
                         "-0.",
                         "-.0",
                         "123456789.12345",
                         "123456789.123456",
                         "-12345678901234",
                         "-123456789012345",
                         "999999999999999",
                         "9999999999999999",
                         "0.00000000000001",
                         "0x10",
                         "0x1.8",
                         "1e400",
                         "-1e400",
                         "1e-400",
                         "nan",
                         "inf",
                         "-inf",
                         "1e5.",
                         "00000000000000.1",
                         "- 5"}) {
    check(sz);
  }
  std::mt19937 random(5);
  const std::string sAlphabet = "0123456789.-+eE x";
  const std::string sDigits = "0123456789.";
  for (int i = 0; i < 100000; ++i) {
    const std::string& sFrom = i % 2 == 0 ? sAlphabet : sDigits;
    std::string s(1 + random() % 20, ' ');
    for (char& ch : s) ch = sFrom[random() % sFrom.size()];
    check(s);
  }
}

TEST(Root, FindsTheKindOfASubLayer) {
  CBDesigner root;
  const auto add = [&root](const char* szKind, const char* szName) {
    auto* p = new CBDsubLayer;
    p->m_sLayerKind = szKind;
    p->m_sName = szName;
    root.m_pTechnology->m_pSubLayerArray->Add(p);
  };
  add("conductive", "1");
  add("type", "HOLE");
  add("nonConductive", "1");
  EXPECT_EQ(root.sGetLayerTypeFromSubLayer("1"), "conductive");
  EXPECT_EQ(root.sGetLayerTypeFromSubLayer("HOLE"), "systemLayer");
  EXPECT_EQ(root.sGetLayerTypeFromSubLayer("2"), "");
}

TEST(Root, FindsAPartByItsPinAssign) {
  CBDesigner root;
  CVRXoutPrfPartArray parts;
  for (const char* szPinAssign : {"PA1", "PA2", "PA2"}) {
    auto* p = new CVRXoutPrfPart;
    p->m_sPinAssignRef = szPinAssign;
    parts.Add(p);
    parts.Add(nullptr);
  }
  EXPECT_EQ(root.pGetBDoutPrfPart(&parts, "PA2"), parts.GetAt(2));
  EXPECT_EQ(root.pGetBDoutPrfPart(&parts, "pa2"), nullptr);
  EXPECT_THROW(root.pGetBDoutPrfPart(nullptr, "PA2"), CInvalidArgException);
}

// A form by hand.
std::unique_ptr<CECadClsLvl> Node(const char* szName, std::initializer_list<const char*> values) {
  auto p = std::make_unique<CECadClsLvl>();
  p->m_sName = szName;
  for (const char* sz : values) p->m_arrValues.Add(sz);
  return p;
}

TEST(Root, MakesShapesOfNodes) {
  CBDesigner root;
  const auto pNode = Node("circle", {"50000"});
  pNode->m_pChildren->Add(Node("pt", {"100000", "2.5"}).release());
  const std::unique_ptr<CBDdrawObj> pShape(root.pCECadClsLvl2CBDdrawObj(pNode.get(), 3, "3", "conductive", 1));
  const auto* pCircle = dynamic_cast<const CBDcircle*>(pShape.get());
  ASSERT_NE(pCircle, nullptr);
  EXPECT_EQ(pCircle->m_ptCenter, CPointD(1.0, 2.5));
  EXPECT_EQ(pCircle->m_dRadius, 0.5);
  EXPECT_EQ(pCircle->m_nLayerNumber, 3);
  EXPECT_EQ(pCircle->m_sLayerName, "3");
  EXPECT_EQ(pCircle->m_sLayerType, "conductive");
  EXPECT_EQ(pCircle->m_bRefer, 1);
  EXPECT_THROW(root.pCECadClsLvl2CBDdrawObj(nullptr, 0, "", "", 0), CInvalidArgException);
}

TEST(Root, PutsTheShapesOfABoardAssemblyOnTheBoard) {
  CBDesigner root;
  const auto pCircle = Node("circle", {"50000"});
  const auto pAssembly = Node("boardAssembly", {});
  pAssembly->m_pChildren->Add(Node("geometry", {}).release());
  pAssembly->m_pChildren->GetAt(0)->m_pChildren->Add(Node("circle", {"50000"}).release());
  const auto read = [&root](const std::unique_ptr<CECadClsLvl>& pNode) {
    return std::unique_ptr<CBDdrawObj>(root.pCECadClsLvl2CBDdrawObj(pNode.get(), 3, "3", "conductive", 0));
  };
  EXPECT_EQ(read(pAssembly)->m_sKind, "DRAWSUBBOARD");
  const CBDdrawObjArray& shapes = *root.m_pBoardContainer->m_pDrawObjArray;
  ASSERT_EQ(shapes.GetSize(), 1);
  EXPECT_EQ(shapes.GetAt(0)->m_sKind, "CIRCLE");
  EXPECT_EQ(shapes.GetAt(0)->m_nLayerNumber, 3);
  // Without a board only such a shape raises.
  delete std::exchange(root.m_pBoardContainer->m_pDrawObjArray, nullptr);
  EXPECT_THROW(read(pAssembly), CInvalidArgException);
  EXPECT_NE(read(pCircle), nullptr);
  delete std::exchange(root.m_pBoardContainer, nullptr);
  EXPECT_THROW(read(pAssembly), CInvalidArgException);
  EXPECT_NE(read(pCircle), nullptr);
}

// A tree of a text, whose reader counts its end.
struct CountedReader : CECadCls {
  CountedReader(const TempFolder& folder, const std::string& sText, int& nEnds) : m_nEnds(nEnds) {
    m_sFileName = folder.Write("tree", sText);
    EXPECT_EQ(nParseFile(0), 0);
  }
  ~CountedReader() override { ++m_nEnds; }
  int& m_nEnds;
};

TEST(Root, RaisesOnNodesWhoseFormsAreGone) {
  CBDesigner root;
  CBDvertexArray vertices;
  CECadCls reader;
  reader.m_pRootArray->Add(Node("pcf", {}).release());
  reader.m_pRootArray->GetAt(0)->m_pChildren = nullptr;
  EXPECT_THROW(root.nReadOtherAndPutInVDB(&reader), CInvalidArgException);
  const auto pNode = Node("surface", {});
  pNode->m_pChildren = nullptr;
  EXPECT_THROW(root.nReadComponentAndPutInVDB(pNode.get()), CInvalidArgException);
  EXPECT_THROW(root.nReadBoardLayerAndPutInVDB(pNode.get()), CInvalidArgException);
  EXPECT_THROW(root.pCECadClsLvl2CBDdrawObj(pNode.get(), 1, "1", "conductive", 0), CInvalidArgException);
  EXPECT_THROW(root.vInsertVertexIntoCBDvertexArray(pNode.get(), &vertices), CInvalidArgException);
}

TEST(Root, ReadsWhatStandsOutsideTheTwoSections) {
  const TempFolder folder;
  CBDesigner root;
  int nEnds = 0;
  {
    CountedReader reader(folder, Numbered(kWholeBoard, 7), nEnds);
    EXPECT_EQ(root.nReadOtherAndPutInVDB(&reader), 0);
    EXPECT_EQ(nEnds, 0);
    EXPECT_EQ(Counted(root),
              "BOARD7  components 0 boards 1 groups 1 nets 2 shapes 0 sizes 1 parts 1 pads 0 padstacks 0 footprints 0");
    EXPECT_EQ(root.m_sVersion, "2.1");
    EXPECT_NE(reader.m_pRootArray->pFind("pcf"), nullptr) << "the tree stays";
  }
  {
    // One that raises stays the caller's.
    CountedReader reader(folder, "(pcf\n(header\n)\n)\n", nEnds = 0);
    EXPECT_THROW(root.nReadOtherAndPutInVDB(&reader), CInvalidArgException);
    EXPECT_EQ(nEnds, 0);
  }
  EXPECT_EQ(root.nReadOtherAndPutInVDB(new CountedReader(folder, "(x\n(header\n(version 9)\n)\n)\n", nEnds = 0)), -1);
  EXPECT_EQ(nEnds, 1);
  EXPECT_EQ(root.m_sVersion, "2.1");
  // An unknown file asks for no container.
  const std::unique_ptr<CBDboardContainer> pBoard(std::exchange(root.m_pBoardContainer, nullptr));
  EXPECT_EQ(root.nReadOtherAndPutInVDB(new CountedReader(folder, "(x\n)\n", nEnds = 0)), -1);
  EXPECT_EQ(nEnds, 1);
  EXPECT_THROW(root.nReadOtherAndPutInVDB(nullptr), CInvalidArgException);
}

TEST(Root, ReadsOntoABoardWhoseNetsWereTaken) {
  const TempFolder folder;
  CBDesigner root;
  int nEnds = 0;
  delete std::exchange(root.m_pBoardContainer->m_pNetArray, nullptr);
  CountedReader reader(folder, "(pcf\n(boardContainer\n(nets\n(net A\n)\n)\n)\n)\n", nEnds);
  EXPECT_EQ(root.nReadOtherAndPutInVDB(&reader), 0);
  EXPECT_EQ(root.m_pBoardContainer->m_pNetArray->GetSize(), 1);
}

TEST(Root, ReadsComponentsAndLayers) {
  CBDesigner root;
  const auto pComponent = Node("component", {});
  pComponent->m_pChildren->Add(Node("reference", {"R1"}).release());
  EXPECT_EQ(root.nReadComponentAndPutInVDB(pComponent.get()), 0);
  EXPECT_EQ(root.m_pBoardContainer->m_pComponentArray->GetAt(0)->m_sReference, "R1");
  const auto pLayer = Node("layer", {});
  pLayer->m_pChildren->Add(Node("conductive", {"2"}).release());
  pLayer->m_pChildren->Add(Node("circle", {"1.0"}).release());
  EXPECT_EQ(root.nReadBoardLayerAndPutInVDB(pLayer.get()), 0);
  EXPECT_EQ(root.m_pBoardContainer->m_pDrawObjArray->GetAt(0)->m_nLayerNumber, 2);
  // A layer that gives nothing is read as well as any other.
  const auto pInfo = Node("layer", {});
  pInfo->m_pChildren->Add(Node("infoOf", {}).release());
  EXPECT_EQ(root.nReadBoardLayerAndPutInVDB(pInfo.get()), 0);
  EXPECT_EQ(root.m_pBoardContainer->m_pDrawObjArray->GetSize(), 1);
  EXPECT_THROW(root.nReadComponentAndPutInVDB(nullptr), CInvalidArgException);
  EXPECT_THROW(root.nReadBoardLayerAndPutInVDB(nullptr), CInvalidArgException);
  delete std::exchange(root.m_pBoardContainer, nullptr);
  EXPECT_THROW(root.nReadComponentAndPutInVDB(pComponent.get()), CInvalidArgException);
  EXPECT_THROW(root.nReadBoardLayerAndPutInVDB(pLayer.get()), CInvalidArgException);
}

TEST(Root, ShowsAKeywordThatStandsForNoShape) {
  Events events;
  RecordingHost host(events);
  CBDesigner root;
  EXPECT_EQ(root.pCECadClsLvl2CBDdrawObj(Node("teapot", {}).get(), 0, "", "", 0), nullptr);
  EXPECT_EQ(events, Events{"box New Draw Type : teapot"});
}

TEST(Root, AppendsVertices) {
  CBDesigner root;
  CBDvertexArray vertices;
  const auto pNode = Node("vertex", {});
  pNode->m_pChildren->Add(Node("pt", {"100000", "0"}).release());
  pNode->m_pChildren->Add(Node("other", {}).release());
  root.vInsertVertexIntoCBDvertexArray(pNode.get(), &vertices);
  ASSERT_EQ(vertices.GetSize(), 1);
  EXPECT_EQ(dynamic_cast<const CBDvertexPt&>(*vertices.GetAt(0)).m_pt, CPointD(1.0, 0.0));
  EXPECT_THROW(root.vInsertVertexIntoCBDvertexArray(nullptr, &vertices), CInvalidArgException);
  EXPECT_THROW(root.vInsertVertexIntoCBDvertexArray(pNode.get(), nullptr), CInvalidArgException);
}

TEST(Root, SharesItsContainersWithItsCopies) {
  CBDesigner root;
  Events events;
  RecordingControl control(events, "c");
  root.vSetPCFProgressPtr(&control);
  root.m_sSpare = "spare";
  root.m_sVersion = "3";
  root.m_bInQuote = 1;
  root.m_nComponentFileCount = 2;
  root.m_nLayerFileCount = 5;
  root.m_pLogFile = stderr;
  const auto expectShared = [&](CBDesigner& copy) {
    EXPECT_EQ(copy.m_pTechnology, root.m_pTechnology);
    EXPECT_EQ(copy.m_pFtfTechnology, root.m_pFtfTechnology);
    EXPECT_EQ(copy.m_pFootprintContainer, root.m_pFootprintContainer);
    EXPECT_EQ(copy.m_pBoardContainer, root.m_pBoardContainer);
    EXPECT_EQ(copy.m_pParameter, root.m_pParameter);
    EXPECT_EQ(copy.m_pLibraryEntities, root.m_pLibraryEntities);
    EXPECT_EQ(copy.m_pPCFProgress, &control);
    EXPECT_EQ(copy.m_sSpare, "spare");
    EXPECT_EQ(copy.m_sVersion, "3");
    EXPECT_EQ(copy.m_bInQuote, 1);
    EXPECT_EQ(copy.m_nComponentFileCount, 2);
    EXPECT_EQ(copy.m_nLayerFileCount, 5);
    EXPECT_EQ(copy.m_pLogFile, stderr);
    // Only one of the two may delete what they share; a null container is passed over.
    copy.m_pTechnology = copy.m_pFtfTechnology = nullptr;
    copy.m_pFootprintContainer = nullptr;
    copy.m_pBoardContainer = nullptr;
    copy.m_pParameter = nullptr;
    copy.m_pLibraryEntities = nullptr;
  };
  CBDesigner copy(root);
  expectShared(copy);
  CBDesigner assigned;
  const CBDesigner old(assigned);  // deletes what the assignment leaves behind
  assigned = root;
  expectShared(assigned);
}

// A container that tells its end.
template <class Container>
struct Ending : Container {
  Ending(Events& events, std::string sName) : m_events(events), m_sName(std::move(sName)) {}
  ~Ending() override { m_events.push_back(m_sName); }
  Events& m_events;
  std::string m_sName;
};

TEST(Root, DeletesItsContainersInOrderEachIfNotNull) {
  for (const bool bAll : {true, false}) {
    Events events;
    auto pRoot = std::make_unique<CBDesigner>();
    const auto put = [&events](auto*& pField, const char* szName, bool bKeep) {
      using Container = std::remove_pointer_t<std::remove_reference_t<decltype(pField)>>;
      delete pField;
      pField = bKeep ? new Ending<Container>(events, szName) : nullptr;
    };
    put(pRoot->m_pTechnology, "technology", true);
    put(pRoot->m_pFtfTechnology, "footprint technology", bAll);
    put(pRoot->m_pFootprintContainer, "footprints", bAll);
    put(pRoot->m_pBoardContainer, "board", true);
    put(pRoot->m_pParameter, "parameter", bAll);
    put(pRoot->m_pLibraryEntities, "library entities", true);
    pRoot.reset();
    const Events all{"footprints", "technology", "footprint technology", "board", "parameter", "library entities"};
    EXPECT_EQ(events, bAll ? all : (Events{"technology", "board", "library entities"}));
  }
}

// ---- writing the set ----

struct RootSet : testing::Test {
  TempFolder folder;
  CBDesigner root;
  CVRXoutPackageArray packages;
  CVRXoutPrfPartArray parts;
  CVRXoutPrfPinAssignArray pinAssigns;
  CVRXoutPrfFunctionArray functions;

  RootSet() {
    std::filesystem::create_directory(folder.Path("out"));
    root.m_pTechnology->m_sName = "board";
    root.m_pFtfTechnology->m_sName = "OTHER";
    root.m_sVersion = "9";
    parts.Add(new CVRXoutPrfPart);
    parts.GetAt(0)->m_sName = "PART";
    parts.GetAt(0)->m_sPinAssignRef = "ASSIGN";
    pinAssigns.Add(new CVRXoutPrfPinAssign);
    pinAssigns.GetAt(0)->m_sName = "ASSIGN-2";
    functions.Add(new CVRXoutPrfFunction);
    functions.GetAt(0)->m_sName = "FUNCTION";
  }
  int Print(const std::string& sName, CBDesigner* pOther = nullptr, CVRXoutPackageArray* pPackages = nullptr) {
    return root.nPrint2File(CString(folder.Path("out/" + sName)), pOther, pPackages, &parts, &pinAssigns, &functions);
  }
  std::string Get(const std::string& sName) const { return laminate::test::ReadFile(folder.Path("out/" + sName)); }
  Events Names() const {
    Events names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path("out"))) {
      names.push_back(entry.path().filename());
    }
    std::sort(names.begin(), names.end());
    return names;
  }
};

TEST_F(RootSet, HoldsTheContainersAndTheRecords) {
  EXPECT_EQ(Print("a.pcf", nullptr, &packages), 0);
  EXPECT_EQ(Names(), (Events{"a.cdf", "a.ftf", "a.pcf", "a.pkf", "a.tcf"}));
  for (const char* szName : {"a.pcf", "a.tcf"}) {
    EXPECT_NE(Get(szName).find("(technology board\n"), std::string::npos) << szName;
    EXPECT_NE(Get(szName).find("(version 2.0)\n"), std::string::npos) << szName;
  }
  for (const std::string& sName : Names()) EXPECT_EQ(Get(sName).find("OTHER"), std::string::npos) << sName;
  for (const char* szRecord : {"PART", "ASSIGN-2", "FUNCTION"}) {
    EXPECT_NE(Get("a.cdf").find(szRecord), std::string::npos) << szRecord;
  }
  EXPECT_EQ(root.m_sVersion, "9");
}

TEST_F(RootSet, HasTheBoardsTechnologyInTheFootprintFileToo) {
  root.m_pTechnology->m_nConductorLayers = 4;
  for (const auto& [pTechnology, szLayer] : {std::pair{root.m_pTechnology, "L1"}, {root.m_pFtfTechnology, "L2"}}) {
    pTechnology->m_pFootprintLayerArray->Add(new CBDfootprintLayer);
    pTechnology->m_pFootprintLayerArray->GetAt(0)->m_sName = szLayer;
  }
  EXPECT_EQ(Print("a"), 0);
  EXPECT_NE(
      Get("a.ftf").find("(technologyContainer\n(technology board\n(footprintLayer\n(layer L1 (type ))\n)\n)\n)\n"),
      std::string::npos)
      << Get("a.ftf");
  for (const char* szName : {"a.pcf", "a.tcf"}) {
    EXPECT_NE(Get(szName).find("(numberOfConductorLayer 4)\n"), std::string::npos) << szName;
    EXPECT_NE(Get(szName).find("(layer L1 (type ))\n"), std::string::npos) << szName;
    EXPECT_EQ(Get(szName).find("L2"), std::string::npos) << szName;
  }
}

// Percent signs, blanks and brackets in all kinds of names.
const char kPercentBoard[] = R"x((components
(component (reference R%)
(part "10k, 1%")
(footprint F%)
(layout
(layer (nonConductive "Silk%(A)")
(refer (line (net "N 1%") (geometry (line (vertex (pt 0 0))))))
)
(layer (systemLayer (type PADSTACK))
(padstack V% (net N%) (pt 0 0))
)
)
(gate 1 (pin "1%"))
(pin 1%
(gate 1 (name A%))
(layout
(layer (systemLayer (type "S%(A)"))
(padstack V% (net N%) (pt 0 0))
)
)
)
(propertyS a% b%)
)
(component (reference "")
)
)
(compGroups
(compGroup G%
(list R%)
(layout
(layer (systemLayer (type S%))
(line (net N%) (geometry (line (vertex (pt 0 0)))))
)
)
)
)
(nets
(net "100% A"
(type T%)
(pen 1%)
(comp R% (pin 1%))
)
)
(boardLayout
(layout
(layer (conductive 1)
(line (net N%) (geometry (line (vertex (pt 0 0)))))
(text (geometry (text (string "%"))))
)
(layer (nonConductive "Silk%(A)")
(donut (out 1.0))
)
)
)
)x";
const char kPercentLibrary[] = R"x((ftf
(footprintContainer
(pads
(pad P% (geometry (line (net N%) (geometry (line (vertex (pt 0 0)))))))
)
(padstacks
(padstack V% (type T%) (throughMode M) (padSet (footLayer L%) (connect (pad P%))))
)
(footprints
(footprint F%
(heelprint (layout (layer (footLayer "B%(1)") (line (net N%) (geometry (line (vertex (pt 0 0))))))))
)
)
)
)
)x";

// Nets, pins, gates and layers of components are made ready in the objects themselves each time; all else stays.
TEST_F(RootSet, TheSecondOneHasPercentSignsAndQuotesOnceMore) {
  root.vParseFTF(folder.Write("b.ftf", kPercentLibrary));
  root.vParsePCF(folder.Write("b.pcf", BoardText(kPercentBoard)));
  ASSERT_TRUE(root.GetLoadStatus().IsOk()) << root.GetLoadStatus().m_sText;
  pinAssigns.GetAt(0)->m_sName = parts.GetAt(0)->m_sPinAssignRef;
  auto* pPort = new CVRXoutPrfPartPort;
  pPort->m_sPortNo = "1%";
  pPort->m_sPortName = "P%";
  parts.GetAt(0)->m_pPortArray->Add(pPort);
  EXPECT_EQ(Print("a", nullptr, &packages), 0);
  EXPECT_EQ(Print("b", nullptr, &packages), 0);
  // "FILE: LINE -> LINE"
  Events differences;
  for (const char* szEnding : {".pcf", ".ftf", ".tcf", ".pkf", ".cdf"}) {
    std::istringstream first(Get(std::string("a") + szEnding));
    std::istringstream second(Get(std::string("b") + szEnding));
    std::string a;
    std::string b;
    while (std::getline(first, a)) {
      ASSERT_TRUE(std::getline(second, b)) << szEnding;
      if (a != b) differences.push_back(szEnding + (": " + a) + " -> " + b);
    }
    EXPECT_FALSE(std::getline(second, b)) << szEnding << ": " << b;
  }
  const std::string sNet = R"((net "N%%") -> (net ""N%%%%""))";
  const std::string sPort = R"x(.cdf: (port "1%" (symbPinId 0) (portName "P%%") (portType INOUT)) -> )x"
                            R"x((port "1%" (symbPinId 0) (portName "P%%%%") (portType INOUT)))x";
  EXPECT_EQ(differences,
            (Events{R"x(.pcf: (layer (nonConductive "Silk%(A)") -> (layer (nonConductive ""Silk%(A)""))x",
                    R"(.pcf: (net "N 1%%") -> (net ""N 1%%%%""))", ".pcf: " + sNet,
                    R"(.pcf: (pin "1%%" -> (pin "1%%%%")", ".pcf: (pin 1%% -> (pin 1%%%%",
                    ".pcf: (gate 1 (name A%%)) -> (gate 1 (name A%%%%))", ".pcf: " + sNet, ".pcf: " + sNet,
                    R"(.pcf: (net "100%% A" -> (net "100%%%% A")", ".pcf: " + sNet, ".ftf: " + sNet, sPort, sPort}));
}

TEST_F(RootSet, IsThatOfTheRootItselfWhateverOtherIsGiven) {
  CBDesigner other;
  other.m_pTechnology->m_sName = "other";
  other.m_pBoardContainer->m_pNetArray->Add(new CBDnet);
  other.m_pBoardContainer->m_pNetArray->GetAt(0)->m_sName = "A%";
  EXPECT_EQ(Print("a"), 0);
  EXPECT_EQ(Print("b", &other), 0);
  EXPECT_EQ(Names(), (Events{"a.cdf", "a.ftf", "a.pcf", "a.tcf", "b.cdf", "b.ftf", "b.pcf", "b.tcf"}));
  for (const char* szEnding : {".pcf", ".ftf", ".tcf", ".cdf"}) {
    EXPECT_EQ(Get(std::string("a") + szEnding), Get(std::string("b") + szEnding)) << szEnding;
  }
  EXPECT_EQ(other.m_pBoardContainer->m_pNetArray->GetAt(0)->m_sName, "A%");
}

TEST_F(RootSet, NeedsAllContainersButTheFootprintTechnology) {
  delete std::exchange(root.m_pFtfTechnology, nullptr);
  delete std::exchange(root.m_pBoardContainer->m_pNetArray, nullptr);
  EXPECT_EQ(Print("a"), 0);
  EXPECT_NE(Get("a.pcf").find("(nets\n)\n"), std::string::npos);
  for (const std::string& sName : Names()) std::filesystem::remove(folder.Path("out/" + sName));
  const auto expectRaises = [this](auto*& pField) {
    auto* const p = std::exchange(pField, nullptr);
    EXPECT_THROW(Print("a"), CInvalidArgException);
    EXPECT_EQ(Names(), Events{});
    pField = p;
  };
  expectRaises(root.m_pTechnology);
  expectRaises(root.m_pFootprintContainer);
  expectRaises(root.m_pBoardContainer);
  expectRaises(root.m_pParameter);
  expectRaises(root.m_pLibraryEntities);
}

TEST_F(RootSet, HasNoSubBoards) {
  root.vParsePCF(folder.Write("b.pcf", Numbered(kWholeBoard, 0)));
  ASSERT_EQ(root.m_pBoardContainer->m_pSubBoardArray->GetSize(), 1);
  EXPECT_EQ(Print("a"), 0);
  EXPECT_EQ(Get("a.pcf").find("subBoards"), std::string::npos);
  EXPECT_EQ(Get("a.pcf").find("of the same.pcf"), std::string::npos);
  CBDesigner again;
  try {
    again.vParsePCF(CString(folder.Path("out/a.pcf")));
  } catch (const CInvalidArgException&) {
    // Written group and pin blocks do not all read back; sub-boards come before them.
  }
  EXPECT_TRUE(again.m_pBoardContainer->m_pSubBoardArray->IsEmpty());
}

TEST(Root, WritesItsLibrarySectionFromItsContainers) {
  CBDesigner root;
  MemoryLog text;
  EXPECT_EQ(root.m_pLibraryEntities->nPrint2File(text.Stream(), &root), 0);
  EXPECT_EQ(text.Text(), "(libraryEntities\n)\n");
  auto* pComponent = new CBDcomponent;
  pComponent->m_sPart = "A 1";
  pComponent->m_sPackage = "K";
  root.m_pBoardContainer->m_pComponentArray->Add(pComponent);
  const auto addNamed = [](auto* pArray, auto* pObject, const char* szName) {
    pObject->m_sName = szName;
    pArray->Add(pObject);
  };
  addNamed(root.m_pFootprintContainer->m_pFootprintArray, new CBDfootprint, "F");
  addNamed(root.m_pFootprintContainer->m_pPadstackArray, new CBDpadstack, "V");
  addNamed(root.m_pFootprintContainer->m_pPadArray, new CBDpad, "P");
  MemoryLog full;
  EXPECT_EQ(root.m_pLibraryEntities->nPrint2File(full.Stream(), &root), 0);
  EXPECT_EQ(full.Text(),
            "(libraryEntities\n(part \"A 1\")\n(package K)\n(footprint F)\n(footprint F (side B))\n(padstack V)\n"
            "(padstack V (side B) (flip X))\n(pad P)\n(pad P (side B) (flip X))\n)\n");
  const std::string written = full.Text();
  EXPECT_THROW(root.m_pLibraryEntities->nPrint2File(full.Stream(), nullptr), CInvalidArgException);
  EXPECT_THROW(root.m_pLibraryEntities->nPrint2File(nullptr, &root), CInvalidArgException);
  {
    const std::unique_ptr<CBDboardContainer> pBoard(std::exchange(root.m_pBoardContainer, nullptr));
    EXPECT_THROW(root.m_pLibraryEntities->nPrint2File(full.Stream(), &root), CInvalidArgException);
  }
  root.m_pBoardContainer = new CBDboardContainer;
  const std::unique_ptr<CBDfootprintContainer> pLibrary(std::exchange(root.m_pFootprintContainer, nullptr));
  EXPECT_THROW(root.m_pLibraryEntities->nPrint2File(full.Stream(), &root), CInvalidArgException);
  EXPECT_EQ(full.Text(), written);
}

}  // namespace
