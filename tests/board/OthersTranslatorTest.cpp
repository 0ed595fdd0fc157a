#include "board/OthersTranslator.h"

#include <ctime>

#include "base/AllocationFault.h"
#include "board/CBDboardContainer.h"
#include "board/CBDcompGroup.h"
#include "board/CBDlayerParameter.h"
#include "board/CBDlibraryEntities.h"
#include "board/CBDnet.h"
#include "board/CBDparameter.h"
#include "board/CBDsubBoard.h"
#include "board/CBDtextSize.h"
#include "board/CBDvisibleLayerSet.h"
#include "reader/Grammar.h"
#include "technology/CBDtechnologyContainer.h"
#include "technology/RecordTestSupport.h"

namespace {

struct Database {
  CString sVersion = "2.0";
  CBDtechnologyContainer technology;
  CBDboardContainer board;
  CBDparameter parameter;
  CBDlibraryEntities libraryEntities;

  int Read(const std::string& text) {
    MemoryFileSystem memory;
    laminate::FileSystemScope scope(memory);
    memory.files["t"] = text;
    auto pReader = std::make_unique<CECadCls>();
    pReader->m_sFileName = "t";
    pReader->nParseFile(0);
    laminate::OthersTarget target{sVersion, &technology, &board, &parameter, &libraryEntities};
    const int nResult = laminate::ReadOthers(pReader.get(), target);
    // The reader of an unknown file is gone.
    if (nResult == -1) static_cast<void>(pReader.release());
    return nResult;
  }
  std::string Show() const {
    std::string s = Str(sVersion) + " " + Str(technology.m_sName) + " nets";
    if (board.m_pNetArray == nullptr) return s;
    for (const CBDnet* p : *board.m_pNetArray) s += " " + Str(p->m_sName);
    s += " groups";
    for (const CBDcompGroup* p : *board.m_pCompGroupArray) s += " " + Str(p->m_sName);
    s += " boards";
    for (const CBDsubBoard* p : *board.m_pSubBoardArray) s += " " + std::to_string(p->m_nId) + Str(p->m_sRelativePath);
    s += " parts " + Str(libraryEntities.m_aParts) + " sizes " + std::to_string(parameter.m_pTextSizeArray->GetSize());
    if (!board.m_pDrawObjArray->IsEmpty()) s += " shapes " + Str(*board.m_pDrawObjArray);
    return s;
  }
};

const std::string kTechnology =
    "(technologyContainer (technology T (numberOfConductorLayer 2) (footprintLayer) (nonConductiveLayer) "
    "(conductiveLayer) (subLayer)))";

TEST(OthersTranslation, EverySectionWhateverTheOrder) {
  const std::string sections[] = {
      "(header (version 3.1) (unit MM))",
      kTechnology,
      "(boardContainer (nets (net N1) (foo) (net N2)) (compGroups (foo) (compGroup G)) "
      "(subBoards (foo 1) (subBoard 4 (relativePath p))))",
      "(parameter (textSizeParameters (textSize 1)))",
      "(libraryEntities (part A))",
  };
  const std::string expected = "3.1 T nets N1 N2 groups G boards 4p parts 'A' sizes 1";
  Database forward;
  EXPECT_EQ(0, forward.Read("(pcf " + sections[0] + sections[1] + sections[2] + sections[3] + sections[4] + ")"));
  EXPECT_EQ(expected, forward.Show());
  Database backward;
  EXPECT_EQ(0, backward.Read("(pcf " + sections[4] + sections[3] + sections[2] + sections[1] + sections[0] + ")"));
  EXPECT_EQ(expected, backward.Show());
}

TEST(OthersTranslation, Roots) {
  const struct {
    const char* text;
    int result;
    const char* expected;
  } cases[] = {
      {"(pcf (boardContainer (nets (net A))))", 0, "2.0  nets A groups boards parts  sizes 0"},
      {"(tcf (boardContainer (nets (net A))))", 0, "2.0  nets A groups boards parts  sizes 0"},
      {"(pnf (boardContainer (nets (net A))))", 0, "2.0  nets A groups boards parts  sizes 0"},
      {"(ftf (boardContainer (nets (net A))))", -1, "2.0  nets groups boards parts  sizes 0"},
      {"(PCF (boardContainer (nets (net A))))", -1, "2.0  nets groups boards parts  sizes 0"},
      {"", -1, "2.0  nets groups boards parts  sizes 0"},
      // "pcf" is looked for first, wherever it stands.
      {"(pnf (header (version 1)))(tcf (header (version 2)))(pcf (header (version 3)))", 0,
       "3  nets groups boards parts  sizes 0"},
      {"(pnf (header (version 1)))(tcf (header (version 2)))", 0, "2  nets groups boards parts  sizes 0"},
      {"(pcf (header (version 3)))(pcf (header (version 4)))", 0, "3  nets groups boards parts  sizes 0"},
      {"(pcf)", 0, "2.0  nets groups boards parts  sizes 0"},
      {"(pcf (boardContainer))", 0, "2.0  nets groups boards parts  sizes 0"},
      // Sections are looked for at their own level only, and exactly.
      {"(a (pcf (boardContainer (nets (net A)))))", -1, "2.0  nets groups boards parts  sizes 0"},
      {"(pcf (nets (net A)) (subBoards (subBoard 1)) (version 9))", 0, "2.0  nets groups boards parts  sizes 0"},
      {"(pcf (x (boardContainer (nets (net A)))))", 0, "2.0  nets groups boards parts  sizes 0"},
      {"(pcf (boardContainer (header (version 9)) (x (nets (net A)))))", 0, "2.0  nets groups boards parts  sizes 0"},
      {"(pcf (boardContainer (nets (x (net A)))))", 0, "2.0  nets groups boards parts  sizes 0"},
      {"(pcf (Header) (BoardContainer (nets (net A))) (boardContainer (Nets (net A)) (nets (Net B))))", 0,
       "2.0  nets groups boards parts  sizes 0"},
      {"(pcf (boardContainer (nets) (subBoards) (compGroups)))", 0, "2.0  nets groups boards parts  sizes 0"},
      {"(pcf (boardContainer (nets (net \"\"))))", 0, "2.0  nets  groups boards parts  sizes 0"},
      // Only the first section of a name counts.
      {"(pcf (boardContainer (subBoards (subBoard 1)) (subBoards (subBoard 2))))", 0,
       "2.0  nets groups boards 1 parts  sizes 0"},
      {"(pcf (boardContainer (nets (net A)) (nets (net B))) (boardContainer (nets (net C))))", 0,
       "2.0  nets A groups boards parts  sizes 0"},
      {"(pcf (parameter (textSizeParameters (textSize 1))) (parameter (textSizeParameters (textSize 1) (textSize 2))) "
       "(libraryEntities (part A)) (libraryEntities (part B)))",
       0, "2.0  nets groups boards parts 'A' sizes 1"},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.text);
    Database database;
    EXPECT_EQ(test.result, database.Read(test.text));
    EXPECT_EQ(test.expected, database.Show());
  }
}

TEST(OthersTranslation, FaultsEndItAndWhatWasReadStays) {
  const struct {
    const char* name;
    std::string text;
    const char* raised;
    const char* expected;
  } cases[] = {
      {"header without version", "(pcf (header) " + kTechnology + ")", "\"header\" has no \"version\" in it",
       "2.0  nets groups boards parts  sizes 0"},
      {"empty version", "(pcf (header (version)))", "\"version\" has no value 1",
       "2.0  nets groups boards parts  sizes 0"},
      {"technology before nets", "(pcf (boardContainer (nets (net A))) (technologyContainer))",
       "\"technologyContainer\" has no \"technology\" in it", "2.0  nets groups boards parts  sizes 0"},
      {"sub-boards before groups",
       "(pcf (boardContainer (nets (net A)) (compGroups (compGroup G)) (subBoards (subBoard 1) (subBoard))))",
       "\"subBoard\" has no value 1", "2.0  nets groups boards 1 parts  sizes 0"},
      {"a later sub-board's path",
       "(pcf (boardContainer (subBoards (subBoard 1) (subBoard 2 (relativePath)) (subBoard 3))))",
       "\"relativePath\" has no value 1", "2.0  nets groups boards 1 parts  sizes 0"},
      {"a net with pins in it already", "(pcf (boardContainer (nets (net A) (net B (comp R1 (pin 1)) (type)))))",
       "\"type\" has no value 1", "2.0  nets A groups boards parts  sizes 0"},
      {"groups before nets",
       "(pcf (boardContainer (nets (net A)) (compGroups (compGroup G) (compGroup)) (subBoards (subBoard 1))))",
       "\"compGroup\" has no value 1", "2.0  nets groups G boards 1 parts  sizes 0"},
      {"a group with shapes in it already",
       "(pcf (boardContainer (compGroups (compGroup G) (compGroup H (list A) (layout (layer (circle 1.0) "
       "(boardAssembly "
       "(geometry (oval))) (oval (width)))))) (nets (net A))))",
       "\"width\" has no value 1", "2.0  nets groups G boards parts  sizes 0 shapes OVAL@//0"},
      {"nets before parameters",
       "(pcf (parameter (textSizeParameters (textSize 1))) (boardContainer (nets (net A) (net B (type)))))",
       "\"type\" has no value 1", "2.0  nets A groups boards parts  sizes 0"},
      {"parameters before the library",
       "(pcf (libraryEntities (part A)) (parameter (textSizeParameters (textSize 1) (textSize))))",
       "\"textSize\" has no value 1", "2.0  nets groups boards parts  sizes 1"},
      {"the library last", "(pcf (libraryEntities (part A) (part)) (parameter (textSizeParameters (textSize 1))))",
       "\"part\" has no value 1", "2.0  nets groups boards parts 'A' sizes 1"},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.name);
    Database database;
    EXPECT_EQ(test.raised, RaisedBy([&] { database.Read(test.text); }));
    EXPECT_EQ(test.expected, database.Show());
  }
}

TEST(OthersTranslation, AddsToWhatIsThere) {
  Database database;
  const std::string settings = "(parameter (textSizeParameters (textSize 1))) (libraryEntities (part P))";
  database.Read("(pcf (boardContainer (nets (net A)) (subBoards (subBoard 1)) (compGroups (compGroup G)))" + settings +
                ")");
  database.Read(
      "(pcf (header (version 5)) (boardContainer (nets (net B)) (subBoards (subBoard 2)) (compGroups (compGroup H)))" +
      settings + ")");
  EXPECT_EQ("5  nets A B groups G H boards 1 2 parts 'P','P' sizes 2", database.Show());
}

TEST(OthersTranslation, MakesANewNetArrayWhereItWasTaken) {
  Database database;
  delete std::exchange(database.board.m_pNetArray, nullptr);
  EXPECT_EQ(0, database.Read("(pcf (boardContainer (nets (net A))))"));
  EXPECT_EQ("2.0  nets A groups boards parts  sizes 0", database.Show());
  delete std::exchange(database.board.m_pNetArray, nullptr);
  EXPECT_EQ(-1, database.Read("(x)"));
  EXPECT_NE(nullptr, database.board.m_pNetArray);
}

TEST(OthersTranslation, OtherArraysMustBeThereForTheirSections) {
  Database database;
  delete std::exchange(database.board.m_pCompGroupArray, nullptr);
  EXPECT_NE("", RaisedBy([&] { database.Read("(pcf (boardContainer (compGroups)))"); }));
  delete std::exchange(database.board.m_pSubBoardArray, nullptr);
  EXPECT_NE("", RaisedBy([&] { database.Read("(pcf (boardContainer (subBoards)))"); }));
  EXPECT_EQ("", RaisedBy([&] { database.Read("(pcf (boardContainer (nets (net A))))"); }));
  EXPECT_EQ(1, database.board.m_pNetArray->GetSize());
  laminate::OthersTarget target{database.sVersion, &database.technology, &database.board, &database.parameter,
                                &database.libraryEntities};
  EXPECT_NE("", RaisedBy([&] { laminate::ReadOthers(nullptr, target); }));
}

TEST(OthersTranslation, EmptySlotsOfATreeAreNothing) {
  Database database;
  Tree tree("(pcf (boardContainer (nets (net A (comp R1) (type T)))))");
  CECadClsLvl& board = *laminate::FindChild(tree.Form(), "boardContainer");
  CECadClsLvl& nets = *laminate::FindChild(board, "nets");
  CECadClsLvl& net = *laminate::FindChild(nets, "net");
  for (CECadClsLvlArray* pArray :
       {tree.Reader().m_pRootArray, tree.Form().m_pChildren, board.m_pChildren, nets.m_pChildren, net.m_pChildren}) {
    pArray->InsertAt(0, static_cast<CECadClsLvl*>(nullptr));
  }
  laminate::OthersTarget target{database.sVersion, &database.technology, &database.board, &database.parameter,
                                &database.libraryEntities};
  EXPECT_EQ(0, laminate::ReadOthers(&tree.Reader(), target));
  EXPECT_EQ("2.0  nets A groups boards parts  sizes 0", database.Show());
  EXPECT_EQ("T", database.board.m_pNetArray->GetAt(0)->m_sType);
  EXPECT_EQ(1, database.board.m_pNetArray->GetAt(0)->m_pRefPinArray->GetSize());
  CECadClsLvlArray* const pRoots = std::exchange(tree.Reader().m_pRootArray, nullptr);
  EXPECT_NE("", RaisedBy([&] { laminate::ReadOthers(&tree.Reader(), target); }));
  tree.Reader().m_pRootArray = pRoots;
}

TEST(OthersTranslation, ShapesInsideAGroupsBoardAssemblyGoToTheBoard) {
  Database database;
  database.Read(
      "(pcf (boardContainer (compGroups (compGroup G (layout (layer (conductive 1) (boardAssembly (geometry (circle "
      "1.0)))))))))");
  EXPECT_EQ("DRAWSUBBOARD@conductive/1/1", Str(*database.board.m_pCompGroupArray->GetAt(0)->m_pDrawObjArray));
  EXPECT_EQ("CIRCLE@conductive/1/1", Str(*database.board.m_pDrawObjArray));
  delete std::exchange(database.board.m_pDrawObjArray, nullptr);
  EXPECT_NE("", RaisedBy([&] {
              database.Read(
                  "(pcf (boardContainer (compGroups (compGroup G (layout (layer (boardAssembly (geometry "
                  "(circle 1.0)))))))))");
            }));
  EXPECT_EQ(1, database.board.m_pCompGroupArray->GetSize());
}

TEST(OthersTranslation, EndsSoundlyWithoutMemory) {
  const auto times = [](int n, const char* szForm) {
    std::string s;
    for (int i = 0; i < n; ++i) s += szForm;
    return s;
  };
  Tree tree("(pcf (header (version 1)) " + kTechnology +
            "(boardContainer (subBoards (subBoard 1 (relativePath p))) (compGroups" +
            times(40, "(compGroup G (list A B) (layout (layer (conductive 1) (oval) (refer (circle 1.0)))))") +
            ") (nets" + times(200, "(net N)") + " (net LAST (comp A) (comp B) (comp C)))) (parameter (layerParameters" +
            times(150, "(layer (conductive 1) (colorId 3))") + ") (visibleLayerSet" +
            times(100, "(set S (layer (conductive 1) (visible YES)))") + ") (textSizeParameters" +
            times(200, "(textSize 1)") + ")) (libraryEntities" +
            times(100, "(part A)(package K)(footprint F)(pad P)(padstack V)") + "))");
  std::unique_ptr<Database> pDatabase;
  int nFailures = 0;
  using laminate::test::AllocationFault;
  for (const auto duration : {AllocationFault::Duration::once, AllocationFault::Duration::forever}) {
    bool bFailed = true;
    for (long n = 1; bFailed; ++n) {
      pDatabase = std::make_unique<Database>();
      pDatabase->board.m_pNetArray->Add(new CBDnet);
      laminate::OthersTarget target{pDatabase->sVersion, &pDatabase->technology, &pDatabase->board,
                                    &pDatabase->parameter, &pDatabase->libraryEntities};
      {
        const AllocationFault fault(n, duration);
        try {
          laminate::test::OnlyPlatforms([&] { laminate::ReadOthers(&tree.Reader(), target); })();
        } catch (const CMemoryException&) {
        }
        bFailed = fault.HasFailed();
      }
      nFailures += bFailed ? 1 : 0;
      // What is there is whole: a later read comes behind it.
      const INT_PTR nNets = pDatabase->board.m_pNetArray->GetSize();
      EXPECT_EQ(0, laminate::ReadOthers(&tree.Reader(), target));
      ASSERT_EQ(nNets + 201, pDatabase->board.m_pNetArray->GetSize());
      EXPECT_EQ(3, pDatabase->board.m_pNetArray->GetLastElement()->m_pRefPinArray->GetSize());
      const auto expectWhole = [](const auto* pArray, INT_PTR nAtLeast, auto isWhole) {
        EXPECT_GE(pArray->GetSize(), nAtLeast);
        for (const auto* p : *pArray) ASSERT_TRUE(p != nullptr && isWhole(*p));
      };
      expectWhole(pDatabase->board.m_pCompGroupArray, 40, [](const CBDcompGroup& group) {
        return group.m_aList.GetSize() == 2 && group.m_pDrawObjArray->GetSize() == 2;
      });
      const CBDparameter& parameter = pDatabase->parameter;
      expectWhole(parameter.m_pLayerParameterArray, 150,
                  [](const CBDlayerParameter& layer) { return layer.m_nColorId == 3; });
      expectWhole(parameter.m_pVisibleLayerSetArray, 100,
                  [](const CBDvisibleLayerSet& set) { return set.m_aLayers.GetSize() == 1; });
      expectWhole(parameter.m_pTextSizeArray, 200, [](const CBDtextSize& size) { return size.m_nId == 1; });
      const CBDlibraryEntities& entities = pDatabase->libraryEntities;
      const auto isNamed = [](const auto& object) { return !object.m_sName.IsEmpty(); };
      expectWhole(entities.m_pLibFootprintArray, 100, isNamed);
      expectWhole(entities.m_pLibPadArray, 100, isNamed);
      expectWhole(entities.m_pLibPadstackArray, 100, isNamed);
    }
  }
  EXPECT_GT(nFailures, 20);
}

// Room that cannot be given back is kept: it must not cost a section that was read.
TEST(OthersTranslation, KeepsItsDataWhenOnlyTheTrimLacksMemory) {
  std::string text = "(pcf (boardContainer (nets";
  for (int i = 0; i < 100; ++i) text += " (net N)";
  Tree tree(text + ")))");
  long nAllocations = 0;
  {
    Database database;
    laminate::OthersTarget target{database.sVersion, nullptr, &database.board, nullptr, nullptr};
    const laminate::test::AllocationFault count(1000000, laminate::test::AllocationFault::Duration::once);
    laminate::ReadOthers(&tree.Reader(), target);
    nAllocations = count.Count();
  }
  Database database;
  laminate::OthersTarget target{database.sVersion, nullptr, &database.board, nullptr, nullptr};
  {
    // The last block that is asked for is the trimmed array.
    const laminate::test::AllocationFault fault(nAllocations, laminate::test::AllocationFault::Duration::forever);
    EXPECT_NO_THROW(laminate::ReadOthers(&tree.Reader(), target));
  }
  EXPECT_EQ(100, database.board.m_pNetArray->GetSize());
}

TEST(OthersTranslation, TakesLinearTime) {
  const auto seconds = [](int nNets, int nPins) {
    std::string text = "(pcf (boardContainer (nets";
    for (int i = 0; i < nNets; ++i) {
      text += "\n(net N" + std::to_string(i);
      for (int k = 0; k < nPins; ++k) text += " (comp R1 (pin " + std::to_string(k) + "))";
      text += ")";
    }
    Tree tree(text + ")))");
    Database database;
    laminate::OthersTarget target{database.sVersion, nullptr, &database.board, nullptr, nullptr};
    const std::clock_t start = std::clock();
    laminate::ReadOthers(&tree.Reader(), target);
    EXPECT_EQ(nNets, database.board.m_pNetArray->GetSize());
    EXPECT_EQ(nPins, database.board.m_pNetArray->GetAt(0)->m_pRefPinArray->GetSize());
    Printed(database.board);
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
  };
  // A look through all that is there for each new one takes minutes.
  EXPECT_LT(seconds(200000, 1), 5);
  EXPECT_LT(seconds(1, 200000), 5);
}

TEST(OthersTranslation, ANetWithoutPinsHasAnEmptyArray) {
  Database database;
  database.Read("(pcf (boardContainer (nets (net A))))");
  EXPECT_TRUE(database.board.m_pNetArray->GetAt(0)->m_pRefPinArray->IsEmpty());
}

}  // namespace
