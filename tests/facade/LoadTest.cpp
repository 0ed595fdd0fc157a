// How loads and splits of a root end: positions, log, working folder, status.
#include <functional>

#include <set>

#include "base/AllocationFault.h"
#include "base/FaultyFileSystem.h"
#include "board/CBDboardContainer.h"
#include "board/CBDcomponent.h"
#include "board/CBDlibraryEntities.h"
#include "board/CBDnet.h"
#include "board/CBDparameter.h"
#include "drawobj/CBDdrawObj.h"
#include "facade/CBDesigner.h"
#include "facade/CPC_BD_Cls_Get.h"
#include "facade/FacadeTestSupport.h"
#include "reader/CECadCls.h"
#include "technology/CBDfootprint.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDpad.h"
#include "technology/CBDpadstack.h"
#include "technology/CBDtechnologyContainer.h"

namespace {

using Result = laminate::LoadStatus::Result;
namespace fs = std::filesystem;

const char kComponents[] =
    "(components\n"
    "(component (reference R1)\n(pinCount 2)\n)\n"
    "(component (reference R2)\n(pinCount 2)\n)\n"
    ")\n";
const char kLayout[] =
    "(boardLayout\n(layout\n"
    "(layer (conductive 1)\n(line (geometry (line (vertex (pt 0 0) (pt 100000 0)))))\n)\n"
    ")\n)\n";

struct Load : testing::Test {
  TempFolder folder;
  Events events;
  RecordingHost host{events};
  RecordingControl control{events, "pcf"};
  MemoryLog log;
  CBDesigner root;

  Load() {
    root.vSetPCFProgressPtr(&control);
    root.m_pLogFile = log.Stream();
  }
  CString Board(const std::string& sText) { return folder.Write("board.pcf", sText); }
  CBDboardContainer& Contents() { return *root.m_pBoardContainer; }
  void ExpectStatus(Result result, const CString& sFile, int nLine, const std::string& sPart) {
    const laminate::LoadStatus& status = root.GetLoadStatus();
    EXPECT_EQ(status.m_result, result);
    EXPECT_EQ(status.m_sFile, sFile);
    EXPECT_EQ(status.m_nLine, nLine) << status.m_sText;
    EXPECT_NE(status.m_sText.View().find(sPart), std::string_view::npos) << status.m_sText;
  }
};

TEST_F(Load, ReadsAllThreeKindsOfPieces) {
  const CString sPath = Board(BoardText(std::string(kComponents) + kNets + kLayout));
  const std::string sPieces = folder.WorkingFolder(sPath);
  root.vParsePCF(sPath);
  EXPECT_EQ(Contents().m_pNetArray->GetSize(), 2);
  ASSERT_EQ(Contents().m_pComponentArray->GetSize(), 2);
  EXPECT_EQ(Contents().m_pComponentArray->GetAt(1)->m_sReference, "R2");
  EXPECT_EQ(Contents().m_pDrawObjArray->GetSize(), 1);
  EXPECT_EQ(root.m_nComponentFileCount, 2);
  EXPECT_EQ(root.m_nLayerFileCount, 1);
  EXPECT_EQ(root.m_sVersion, "2.1");
  EXPECT_EQ(events, (Events{"pcf 40", "pcf 60", "pcf 80", "pcf 100"}));
  EXPECT_EQ(log.Text(),
            "separate PCF file into several file.\n"
            "Parsing - " +
                sPieces +
                "/others.txt\n"
                "Parsing - " +
                sPieces +
                "/component1.txt\n"
                "Parsing - " +
                sPieces +
                "/component2.txt\n"
                "Parsing - " +
                sPieces +
                "/layer1.txt\n"
                "Complete PCF file Parsing\n");
  EXPECT_FALSE(fs::exists(sPieces));
  EXPECT_TRUE(root.GetLoadStatus().IsOk());
}

TEST_F(Load, ReachesItsEndWithoutTheTwoBigSections) {
  root.vParsePCF(Board(BoardText("")));
  EXPECT_EQ(events, (Events{"pcf 40", "pcf 60", "pcf 80", "pcf 100"}));
  EXPECT_EQ(root.m_nComponentFileCount, 0);
  EXPECT_TRUE(Contents().m_pComponentArray->IsEmpty());
}

TEST_F(Load, IsTheSameWithoutControlAndLog) {
  root.vSetPCFProgressPtr(nullptr);
  root.m_pLogFile = nullptr;
  root.vParsePCF(Board(BoardText(std::string(kComponents) + kNets)));
  EXPECT_EQ(events, Events{});
  EXPECT_EQ(log.Text(), "");
  EXPECT_EQ(Contents().m_pComponentArray->GetSize(), 2);
}

TEST_F(Load, StopsAtABracketTooMany) {
  const CString sPath = Board(BoardText(kNets) + ")\n");
  root.vParsePCF(sPath);
  const std::string sOthers = folder.WorkingFolder(sPath) + "/others.txt";
  EXPECT_EQ(log.Text(), "separate PCF file into several file.\nParsing - " + sOthers + "\n" + sOthers +
                            " file is not in regular format.\n");
  EXPECT_EQ(events, Events{"pcf 40"});
  EXPECT_TRUE(Contents().m_pNetArray->IsEmpty());
  EXPECT_TRUE(fs::exists(sOthers));
  ExpectStatus(Result::notWellFormed, sPath, 22, "closing bracket");
}

TEST_F(Load, StopsAtAFormLeftOpen) {
  const CString sPath = Board("(pcf\n(boardContainer\n(nets\n(net A\n)\n)\n" + std::string(kComponents));
  root.vParsePCF(sPath);
  EXPECT_EQ(events, Events{"pcf 40"});
  const std::string sOthers = folder.WorkingFolder(sPath) + "/others.txt";
  EXPECT_EQ(log.Text(), "separate PCF file into several file.\nParsing - " + sOthers + "\n" + sOthers +
                            " file is not in regular format.\n");
  EXPECT_EQ(root.m_nComponentFileCount, 2);
  EXPECT_TRUE(Contents().m_pComponentArray->IsEmpty());
  EXPECT_TRUE(Contents().m_pNetArray->IsEmpty());
  EXPECT_TRUE(fs::exists(sOthers));
  ExpectStatus(Result::notWellFormed, sPath, 2, "boardContainer");
}

TEST_F(Load, TellsOfADepthByBoxAndStatus) {
  std::string sText = "(pcf\n(header (version 1))\n";
  for (int i = 0; i < 20; ++i) sText += "(a";
  sText += std::string(20, ')') + "\n)\n";
  const CString sPath = Board(sText);
  root.vParsePCF(sPath);
  EXPECT_EQ(events, (Events{"pcf 40", "box Parser meet unexpected Brace Counting Number, 21 at line number 3.!"}));
  ExpectStatus(Result::notWellFormed, sPath, 3, "deep");
}

TEST_F(Load, RunsOnOverABadPiece) {
  // The second component nests too deep for the reader; the splitter only counts brackets.
  const std::string sDeep = std::string(20, '(') + std::string(20, ')');
  const CString sPath = Board(BoardText("(components\n(component (reference R1)\n)\n(component (reference R2)\n" +
                                        sDeep + "\n)\n(component (reference R3)\n)\n)\n"));
  root.vParsePCF(sPath);
  ASSERT_EQ(Contents().m_pComponentArray->GetSize(), 2);
  EXPECT_EQ(Contents().m_pComponentArray->GetAt(1)->m_sReference, "R3");
  EXPECT_EQ(events.back(), "pcf 100");
  // Lines are those of the board file, not of the piece.
  ExpectStatus(Result::notWellFormed, sPath, 11, "deep");
}

TEST_F(Load, RunsOnOverAnUnknownRoot) {
  const CString sPath = Board("(xyz\n(boardContainer\n" + std::string(kComponents) + ")\n)\n");
  root.vParsePCF(sPath);
  EXPECT_EQ(Contents().m_pComponentArray->GetSize(), 2);
  EXPECT_EQ(events.back(), "pcf 100");
  EXPECT_EQ(root.GetLoadStatus().m_result, Result::notWellFormed);
}

TEST_F(Load, SkipsAPieceWithoutAForm) {
  // The closing bracket of the component stands in a comment, which the splitter counts and the reader does not.
  const CString sPath = Board(BoardText("(components\n(component (reference R1)\n//)\n)\n"));
  root.vParsePCF(sPath);
  EXPECT_TRUE(Contents().m_pComponentArray->IsEmpty());
  EXPECT_EQ(root.m_nComponentFileCount, 1);
}

TEST_F(Load, TellsTheLineOfAMissingValueInEachKindOfPiece) {
  struct Row {
    const char* name;
    std::string text;
    int line;
    // What stands in the root then, and how far the load came.
    INT_PTR nets;
    INT_PTR components;
    INT_PTR shapes;
    Events events;
  };
  const std::string nets = "(nets\n(net A\n)\n(net B\n(pen)\n)\n)\n";
  const std::string components =
      "(components\n(component (reference R1)\n)\n(component (reference R2)\n(angle)\n)\n)\n";
  const std::string layers =
      "(boardLayout\n(layout\n(layer (conductive 1)\n"
      "(line (geometry (line (vertex (pt 0 0) (pt 100000 0)))))\n)\n(layer (conductive)\n(line)\n)\n)\n)\n";
  const Row rows[] = {{"others.txt", BoardText(nets), 11, 1, 0, 0, {"pcf 40"}},
                      {"component2.txt", BoardText(components), 11, 0, 1, 0, {"pcf 40"}},
                      {"layer2.txt", BoardText(kComponents + layers), 20, 0, 2, 1, {"pcf 40", "pcf 60"}}};
  for (const Row& row : rows) {
    MemoryLog itsLog;
    CBDesigner fresh;
    fresh.m_pLogFile = itsLog.Stream();
    fresh.vSetPCFProgressPtr(&control);
    events.clear();
    const CString sPath = Board(row.text);
    EXPECT_THROW(fresh.vParsePCF(sPath), CInvalidArgException) << row.name;
    const laminate::LoadStatus& status = fresh.GetLoadStatus();
    EXPECT_EQ(status.m_result, Result::invalidContent) << row.name;
    EXPECT_EQ(status.m_sFile, sPath);
    EXPECT_EQ(status.m_nLine, row.line) << row.name << ": " << status.m_sText;
    // What was read before stays, and the folder does for the host to look at.
    const CBDboardContainer& board = *fresh.m_pBoardContainer;
    EXPECT_EQ(board.m_pNetArray->GetSize(), row.nets) << row.name;
    EXPECT_EQ(board.m_pComponentArray->GetSize(), row.components) << row.name;
    EXPECT_EQ(board.m_pDrawObjArray->GetSize(), row.shapes) << row.name;
    EXPECT_EQ(events, row.events) << row.name;
    const std::string sPieces = folder.WorkingFolder(sPath);
    EXPECT_TRUE(itsLog.Text().ends_with("Parsing - " + sPieces + "/" + row.name + "\n")) << itsLog.Text();
    EXPECT_TRUE(fs::exists(sPieces)) << row.name;
  }
}

TEST_F(Load, EndsWithoutAFile) {
  fs::create_directory(folder.Path("dir.pcf"));
  for (const std::string& sPath : {folder.Path("none.pcf"), folder.Path("dir.pcf")}) {
    MemoryLog itsLog;
    CBDesigner fresh;
    fresh.m_pLogFile = itsLog.Stream();
    fresh.vSetPCFProgressPtr(&control);
    fresh.m_nComponentFileCount = 3;
    fresh.m_nLayerFileCount = 4;
    const CString sArg{std::string_view(sPath)};
    fresh.vParsePCF(sArg);
    EXPECT_EQ(itsLog.Text(), "separate PCF file into several file.\n" + sPath + " file is not in regular format.\n");
    EXPECT_EQ(fresh.m_nComponentFileCount, 0);
    EXPECT_EQ(fresh.m_nLayerFileCount, 0);
    EXPECT_FALSE(fs::exists(folder.WorkingFolder(sArg)));
    EXPECT_EQ(fresh.GetLoadStatus().m_result, Result::cannotOpen);
    EXPECT_EQ(fresh.GetLoadStatus().m_sFile, sArg);
  }
  EXPECT_EQ(events, Events{});
}

TEST_F(Load, EndsWhenTheWorkingFolderCannotBeMade) {
  // A file stands where the folder has to be.
  folder.Write("data", "x");
  const CString sPath = Board(BoardText(kNets));
  root.vParsePCF(sPath);
  EXPECT_EQ(root.GetLoadStatus().m_result, Result::cannotWriteWorkingFolder);
  EXPECT_TRUE(Contents().m_pNetArray->IsEmpty());
  EXPECT_EQ(events, Events{});
}

TEST_F(Load, EndsWhenAnotherLoadHoldsTheWorkingFolder) {
  const CString sPath = Board(BoardText(kNets));
  // The control is called while the folder is in use.
  class Reentering : public CProgressCtrl {
   public:
    explicit Reentering(const CString& s) : m_sPath(s) {}
    void OnSetPos(int nPos) override {
      if (nPos == 40) inner.vParsePCF(m_sPath);
    }
    CBDesigner inner;

   private:
    CString m_sPath;
  };
  Reentering reentering(sPath);
  root.vSetPCFProgressPtr(&reentering);
  root.vParsePCF(sPath);
  EXPECT_EQ(reentering.inner.GetLoadStatus().m_result, Result::cannotWriteWorkingFolder);
  EXPECT_TRUE(root.GetLoadStatus().IsOk());
  EXPECT_EQ(Contents().m_pNetArray->GetSize(), 2);
}

TEST_F(Load, ForgetsTheFaultOfTheOneBefore) {
  root.vParsePCF("/nowhere.pcf");
  EXPECT_FALSE(root.GetLoadStatus().IsOk());
  root.vParsePCF(Board(BoardText(kNets)));
  EXPECT_TRUE(root.GetLoadStatus().IsOk());
}

TEST_F(Load, PassesOnWhatAControlRaises) {
  class Throwing : public CProgressCtrl {
   public:
    void OnSetPos(int nPos) override {
      if (nPos == 60) throw std::runtime_error("no more");
    }
  };
  Throwing throwing;
  root.vSetPCFProgressPtr(&throwing);
  EXPECT_THROW(root.vParsePCF(Board(BoardText(kNets))), std::runtime_error);
  root.vSetPCFProgressPtr(nullptr);
  root.vParsePCF(Board(BoardText(kNets)));
  EXPECT_TRUE(root.GetLoadStatus().IsOk());
}

TEST_F(Load, RaisesWithoutTheContainersItFills) {
  const CString sPath = Board(BoardText(kNets));
  const std::unique_ptr<CBDboardContainer> pBoard(std::exchange(root.m_pBoardContainer, nullptr));
  EXPECT_THROW(root.vParsePCF(sPath), CInvalidArgException);
  EXPECT_THROW(root.nReadComponentAndPutInVDB(nullptr), CInvalidArgException);
  EXPECT_THROW(root.nReadBoardLayerAndPutInVDB(nullptr), CInvalidArgException);
  const std::unique_ptr<CBDfootprintContainer> pLibrary(std::exchange(root.m_pFootprintContainer, nullptr));
  EXPECT_THROW(root.vParseFTF(sPath), CInvalidArgException);
}

// Calls back for every form of a tree with its array of children gone.
template <class Callback>
void ForEachRobbed(CECadClsLvl& node, Callback callback) {
  CECadClsLvlArray* const pChildren = std::exchange(node.m_pChildren, nullptr);
  callback(node);
  node.m_pChildren = pChildren;
  for (CECadClsLvl* pChild : *pChildren) ForEachRobbed(*pChild, callback);
}

TEST_F(Load, PutsTheShapesOfAllLayersInTheirOrder) {
  const CString sPath = Board(BoardText(
      "(boardLayout\n(layout\n(layer (conductive 1)\n(circle 1.0)\n(oval)\n)\n(layer (infoOf 1)\n(circle 1.0)\n)\n"
      "(layer (nonConductive S)\n(donut)\n)\n)\n)\n"));
  std::string sExpected;
  for (int i = 0; i < 2; ++i) {
    root.vParsePCF(sPath);
    sExpected += "CIRCLE@1 OVAL@1 DONUT@S ";
    std::string s;
    for (const CBDdrawObj* p : *Contents().m_pDrawObjArray) {
      s += std::string(p->m_sKind.View()) + "@" + std::string(p->m_sLayerName.View()) + " ";
    }
    EXPECT_EQ(s, sExpected);
  }
}

TEST_F(Load, RaisesForANodeWithoutItsArray) {
  CECadCls reader;
  reader.m_sFileName = folder.Write(
      "forms",
      "(component (reference R1) (gate 1 (id A)) (pin 1 (layout (layer (conductive 1) (padstack P (pt 1 2) (conductive "
      "(layerNumber 1 (geometry (circle 1))))))) (layout (layer (nonConductive N) (refer (line (geometry (line (vertex "
      "(pt 0 0))))))))))\n"
      "(layer (conductive 1) (boardAssembly (geometry (circle 1))) (hole (geometry (oval))) (squareHole (width 1)) "
      "(text (geometry (text (string (A))))))\n");
  ASSERT_EQ(reader.nParseFile(0), 0);
  std::set<std::string> raised;
  const auto robbed = [&](CECadClsLvl& form, auto translate) {
    ForEachRobbed(form, [&](const CECadClsLvl& node) {
      try {
        translate(&form);
      } catch (const CInvalidArgException&) {
        raised.insert(std::string(node.m_sName.View()));
      }
    });
  };
  robbed(*reader.m_pRootArray->GetAt(0), [&](CECadClsLvl* p) { root.nReadComponentAndPutInVDB(p); });
  robbed(*reader.m_pRootArray->GetAt(1), [&](CECadClsLvl* p) { root.nReadBoardLayerAndPutInVDB(p); });
  EXPECT_EQ(raised, (std::set<std::string>{"boardAssembly", "circle", "component", "conductive", "gate", "geometry",
                                           "hole", "layer", "layerNumber", "layout", "line", "padstack", "pin", "pt",
                                           "refer", "squareHole", "string", "text", "vertex"}));
}

// Only a section that is there needs its container, and a missing container is no fault of the file.
TEST_F(Load, NeedsOnlyTheContainersOfItsSections) {
  const std::string sTechnology =
      "(technologyContainer (technology T (numberOfConductorLayer 2) (footprintLayer) (nonConductiveLayer) "
      "(conductiveLayer) (subLayer)))\n";
  struct Row {
    const char* section;
    std::function<void(CBDesigner&)> remove;
    std::string text;
  };
  const Row rows[] = {
      {"technology", [](CBDesigner& r) { delete std::exchange(r.m_pTechnology, nullptr); }, sTechnology},
      {"parameter", [](CBDesigner& r) { delete std::exchange(r.m_pParameter, nullptr); }, "(parameter)\n"},
      {"library", [](CBDesigner& r) { delete std::exchange(r.m_pLibraryEntities, nullptr); }, "(libraryEntities)\n"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.section);
    CBDesigner fresh;
    row.remove(fresh);
    fresh.vParsePCF(Board(BoardText(kNets)));
    EXPECT_TRUE(fresh.GetLoadStatus().IsOk());
    EXPECT_EQ(fresh.m_pBoardContainer->m_pNetArray->GetSize(), 2);
    EXPECT_THROW(fresh.vParsePCF(Board(BoardText(kNets, row.text))), CInvalidArgException);
    EXPECT_TRUE(fresh.GetLoadStatus().IsOk());
  }
  CBDesigner fresh;
  delete std::exchange(fresh.m_pTechnology, nullptr);
  EXPECT_THROW(fresh.sGetLayerTypeFromSubLayer("1"), CInvalidArgException);
  delete std::exchange(fresh.m_pFtfTechnology, nullptr);
  CStringArray names;
  const CString sLibrary = folder.Write("l.ftf", "(ftf\n)\n");
  EXPECT_THROW(fresh.vParseFTF(sLibrary), CInvalidArgException);
  EXPECT_THROW(fresh.vParseFTFInKOTRAndGetFootprints(sLibrary, names), CInvalidArgException);
  EXPECT_THROW(fresh.vParseFTFInKOTRAndGetPadsAndPadstacks(sLibrary), CInvalidArgException);
  EXPECT_TRUE(fresh.GetLoadStatus().IsOk());
}

// ---- footprint files ----

const char kLibrary[] =
    "(ftf\n(header (version 9.9))\n(technologyContainer\n(technology lib\n(footprintLayer\n(layer TOP (type "
    "CONDUCTIVE))\n)\n)\n)\n"
    "(footprintContainer\n(pads\n(pad P1\n)\n)\n(padstacks\n(padstack S1\n(isBuildupVia YES)\n)\n)\n"
    "(footprints\n(footprint F1\n(propertyS a b)\n)\n(footprint F2\n)\n)\n)\n)\n";

TEST_F(Load, OfALibraryFillsItsContainers) {
  root.vParseFTF(folder.Write("l.ftf", kLibrary));
  EXPECT_EQ(root.m_pFtfTechnology->m_sName, "lib");
  EXPECT_EQ(root.m_pTechnology->m_sName, "");
  const CBDfootprintContainer& library = *root.m_pFootprintContainer;
  EXPECT_EQ(library.m_pPadArray->GetSize(), 1);
  EXPECT_EQ(library.m_pPadstackArray->GetSize(), 1);
  ASSERT_EQ(library.m_pFootprintArray->GetSize(), 2);
  EXPECT_EQ(library.m_pFootprintArray->GetAt(0)->m_pPropertyArray->GetSize(), 1);
  EXPECT_TRUE(root.GetLoadStatus().IsOk());
  EXPECT_EQ(root.m_sVersion, "2.0") << "the header is the board's";
  EXPECT_EQ(log.Text(),
            "FTF file parsing\nComplete FTF file parsing\nTranslating technologyContainer to BD Data base\n"
            "Translating footprintContainer to BD Data base\npads\npad-P1\npadstacks\npadstack-S1\nfootprints\n"
            "footprint-F1\nfootprint-F2\nComplete Translating FTF file to BD Database\n");
}

// A host that exchanges its board, or takes it away, when a message box comes.
TEST_F(Load, OfALibraryPutsShapesOfBoardAssembliesOnTheBoardThatThereIs) {
  const std::string sAssembly = "(boardAssembly (geometry (circle 1.0)))";
  const auto library = [&](const std::string& sFirst, const std::string& sSecond) {
    return folder.Write("l.ftf", "(ftf\n(header (version 9.9))\n(footprintContainer\n(pads\n(pad P (geometry " +
                                     sFirst + "))\n(pad Q (geometry " + sSecond + "))\n)\n)\n)\n");
  };
  struct Exchanges : CHostInterface {
    explicit Exchanges(CBDesigner& r) : root(r) {}
    int OnAfxMessageBox(const CString&, UINT, UINT) override {
      delete std::exchange(root.m_pBoardContainer, pNext);
      return IDOK;
    }
    CBDesigner& root;
    CBDboardContainer* pNext = new CBDboardContainer;
  };
  Exchanges exchanges(root);
  const CHostInterfaceScope scope(exchanges);
  root.vParseFTF(library("(teapot)", sAssembly));
  EXPECT_EQ(root.m_pBoardContainer, exchanges.pNext);
  EXPECT_EQ(Contents().m_pDrawObjArray->GetSize(), 1);
  EXPECT_EQ(root.m_sVersion, "2.0");
  exchanges.pNext = nullptr;
  EXPECT_THROW(root.vParseFTF(library("(teapot)", sAssembly)), CInvalidArgException);
  root.vParseFTF(library("", ""));
  EXPECT_TRUE(root.GetLoadStatus().IsOk()) << "without a board only a board assembly raises";
}

TEST_F(Load, OfALibraryTellsItsFaults) {
  struct Row {
    const char* name;
    std::string text;
    Result result;
    bool raises;
  };
  const Row rows[] = {
      {"other root", "(pcf\n)\n", Result::notWellFormed, false},
      {"open form", "(ftf\n(footprintContainer\n", Result::notWellFormed, false},
      {"missing value", "(ftf\n(footprintContainer\n(pads\n(pad)\n)\n)\n)\n", Result::invalidContent, true}};
  for (const Row& row : rows) {
    CBDesigner fresh;
    const CString sPath = folder.Write("l.ftf", row.text);
    if (row.raises) {
      EXPECT_THROW(fresh.vParseFTF(sPath), CInvalidArgException) << row.name;
    } else {
      fresh.vParseFTF(sPath);
    }
    EXPECT_EQ(fresh.GetLoadStatus().m_result, row.result) << row.name;
    EXPECT_EQ(fresh.GetLoadStatus().m_sFile, sPath) << row.name;
  }
  root.vParseFTF("/nowhere.ftf");
  EXPECT_EQ(root.GetLoadStatus().m_result, Result::cannotOpen);
}

TEST_F(Load, OfPartsOfALibrary) {
  const CString sPath = folder.Write("l.ftf", kLibrary);
  CStringArray names;
  root.vParseFTFInKOTRAndGetFootprints(sPath, names);
  EXPECT_TRUE(root.m_pFootprintContainer->m_pFootprintArray->IsEmpty());
  names.Add("F1");
  names.Add("F9");
  root.vParseFTFInKOTRAndGetFootprints(sPath, names);
  ASSERT_EQ(root.m_pFootprintContainer->m_pFootprintArray->GetSize(), 1);
  EXPECT_TRUE(root.m_pFootprintContainer->m_pFootprintArray->GetAt(0)->m_pPropertyArray->IsEmpty());
  root.vParseFTFInKOTRAndGetPadsAndPadstacks(sPath);
  EXPECT_EQ(root.m_pFtfTechnology->m_sName, "lib");
  EXPECT_EQ(root.m_pFootprintContainer->m_pPadArray->GetSize(), 1);
  ASSERT_EQ(root.m_pFootprintContainer->m_pPadstackArray->GetSize(), 1);
  EXPECT_EQ(root.m_pFootprintContainer->m_pPadstackArray->GetAt(0)->m_sIsBuildupVia, "");
  EXPECT_EQ(log.Text(), "");
  EXPECT_TRUE(root.GetLoadStatus().IsOk());
  root.vParseFTFInKOTRAndGetPadsAndPadstacks("/nowhere.ftf");
  EXPECT_EQ(root.GetLoadStatus().m_result, Result::cannotOpen);
  root.vParseFTFInKOTRAndGetFootprints("/nowhere.ftf", names);
  EXPECT_EQ(root.GetLoadStatus().m_result, Result::cannotOpen);
}

// ---- the facade over both files ----

TEST_F(Load, OfBothFilesKeepsTheFirstFault) {
  const CString sBoard = Board(BoardText(kNets));
  const CString sLibrary = folder.Write("l.ftf", "(ftf\n(open\n");
  struct Row {
    CString ftf;
    CString pcf;
    Result result;
    CString file;
  };
  const Row rows[] = {{sLibrary, sBoard, Result::notWellFormed, sLibrary},
                      {sLibrary, "/nowhere.pcf", Result::notWellFormed, sLibrary},
                      {folder.Write("good.ftf", kLibrary), "/nowhere.pcf", Result::cannotOpen, "/nowhere.pcf"},
                      {folder.Write("good.ftf", kLibrary), sBoard, Result::ok, ""}};
  for (const Row& row : rows) {
    CPC_BD_Cls_Get facade;
    facade.vSetFtfFilePath(row.ftf);
    facade.vSetPcfFilePath(row.pcf);
    facade.vParseFtfAndPcf(0);
    EXPECT_EQ(facade.GetLoadStatus().m_result, row.result) << row.file;
    EXPECT_EQ(facade.GetLoadStatus().m_sFile, row.file);
    EXPECT_EQ(facade.sGetErrorMsg(), "");
  }
}

TEST_F(Load, OfBothFilesKeepsTheFaultOfOneThatRaises) {
  CPC_BD_Cls_Get facade;
  facade.vSetFtfFilePath(folder.Write("l.ftf", "(ftf\n(footprintContainer\n(pads\n(pad)\n)\n)\n)\n"));
  facade.vSetPcfFilePath(Board(BoardText(kNets)));
  EXPECT_THROW(facade.vParseFtfAndPcf(0), CInvalidArgException);
  EXPECT_EQ(facade.GetLoadStatus().m_result, Result::invalidContent);
  EXPECT_EQ(facade.GetLoadStatus().m_nLine, 4);
  EXPECT_TRUE(facade.pGetBDesigner()->m_pBoardContainer->m_pNetArray->IsEmpty());
}

TEST_F(Load, OfBothFilesToldWhateverFails) {
  const CString sLibrary = folder.Write("l.ftf", kLibrary);
  const CString sBoard = Board(BoardText(std::string(kComponents) + kNets + kLayout));
  bool bWhole = false;
  bool bTold = false;
  const auto load = [&] {
    bWhole = bTold = false;
    CPC_BD_Cls_Get facade;
    facade.vSetFtfFilePath(sLibrary);
    facade.vSetPcfFilePath(sBoard);
    facade.vParseFtfAndPcf(0);
    bTold = !facade.GetLoadStatus().IsOk();
    const CBDesigner& loaded = *facade.pGetBDesigner();
    const CBDboardContainer& board = *loaded.m_pBoardContainer;
    bWhole = loaded.m_pFootprintContainer->m_pFootprintArray->GetSize() == 2 && board.m_pNetArray->GetSize() == 2 &&
             board.m_pComponentArray->GetSize() == 2 && board.m_pDrawObjArray->GetSize() == 1;
  };
  const int nOperations = laminate::test::ForEachFailingFileOperation(EIO, [&](laminate::test::FaultyFileSystem&) {
    fs::remove_all(folder.DataPath());
    load();
    EXPECT_NE(bWhole, bTold);
  });
  EXPECT_GT(nOperations, 80);
  bool bRaised = false;
  const int nAllocations = laminate::test::ForEachFailingAllocation(
      [&] {
        bRaised = true;
        load();
        bRaised = false;
      },
      [&] { EXPECT_TRUE(bRaised || bWhole || bTold); });
  EXPECT_GT(nAllocations, 50);
  load();
  EXPECT_TRUE(bWhole);
  EXPECT_FALSE(bTold) << "nothing stays locked";
}

TEST_F(Load, OfBothFilesTellsOfAFolderThatStays) {
  laminate::test::FaultyFileSystem files(1, EACCES, laminate::test::FaultyFileSystem::Duration::once);
  files.Only("DeleteTree");
  const laminate::FileSystemScope scope(files);
  CPC_BD_Cls_Get facade;
  facade.vSetFtfFilePath(folder.Write("l.ftf", kLibrary));
  facade.vSetPcfFilePath(Board(BoardText(kNets)));
  facade.vParseFtfAndPcf(0);
  EXPECT_TRUE(facade.GetLoadStatus().IsOk());
  EXPECT_EQ(facade.GetLoadStatus().m_sText.Find("cannot remove the working folder "), 0);
}

// ---- splits by themselves ----

TEST_F(Load, ASplitLeavesItsPieces) {
  const CString sPath = Board(BoardText(std::string(kComponents) + kNets + kLayout));
  root.vSeparaePCFIntoSeveralFile(sPath);
  const fs::path pieces = folder.WorkingFolder(sPath);
  EXPECT_TRUE(fs::exists(pieces / "others.txt"));
  EXPECT_TRUE(fs::exists(pieces / "component2.txt"));
  EXPECT_FALSE(fs::exists(pieces / "component3.txt"));
  EXPECT_TRUE(fs::exists(pieces / "layer1.txt"));
  EXPECT_EQ(root.m_nComponentFileCount, 2);
  EXPECT_EQ(root.m_nLayerFileCount, 1);
  EXPECT_TRUE(root.GetLoadStatus().IsOk());
  EXPECT_EQ(events, Events{});
  // The lock went with the call: a load can follow.
  root.vParsePCF(sPath);
  EXPECT_TRUE(root.GetLoadStatus().IsOk());
}

TEST_F(Load, ASplitOfALibraryLeavesItsPieces) {
  root.m_nComponentFileCount = 7;
  root.vSeparaeFTFIntoSeveralFile(
      folder.Write("l.ftf",
                   "(ftf\n(footprintContainer\n(padstacks\n(padstack S1\n)\n)\n(footprints\n(footprint F1\n)\n"
                   "(footprint F2\n)\n)\n)\n)\n"));
  const fs::path pieces = folder.DataPath() + "/Data/Tmp";
  EXPECT_TRUE(fs::exists(pieces / "PadStack1.txt"));
  EXPECT_TRUE(fs::exists(pieces / "Footprint2.txt"));
  EXPECT_FALSE(fs::exists(pieces / "Footprint3.txt"));
  EXPECT_EQ(root.m_nComponentFileCount, 7);
  EXPECT_TRUE(root.GetLoadStatus().IsOk());
}

TEST_F(Load, ASplitWithoutAFileSaysSo) {
  root.vSeparaePCFIntoSeveralFile("/nowhere.pcf");
  EXPECT_EQ(root.GetLoadStatus().m_result, Result::cannotOpen);
  root.vSeparaeFTFIntoSeveralFile("/nowhere.ftf");
  EXPECT_EQ(root.GetLoadStatus().m_result, Result::cannotOpen);
}

TEST_F(Load, BraceCountsKeepTheirStringFromLineToLine) {
  struct Row {
    const char* line;
    int count;
    int inQuote;
  };
  for (const Row& row :
       {Row{"(a \"(\" b)", 0, 0}, Row{"(a \"x\\\")", 0, 0}, Row{"(a \"x\\\"))", 1, 1}, Row{"((( \" )", -1, 0}}) {
    EXPECT_EQ(root.nGetBraceCount(row.line), row.count) << row.line;
    EXPECT_EQ(root.m_bInQuote, row.inQuote) << row.line;
  }
}

}  // namespace
