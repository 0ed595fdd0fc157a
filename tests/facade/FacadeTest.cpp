// The facade of a board: settings, the order in which it loads, positions, boxes, copies.
#include <functional>
#include <stdexcept>
#include <type_traits>

#include "board/CBDboardContainer.h"
#include "board/CBDnet.h"
#include "board/CBDsubBoard.h"
#include "facade/CBDesigner.h"
#include "facade/CPC_BD_Cls_Get.h"
#include "facade/FacadeTestSupport.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDtechnologyContainer.h"

namespace {

using Result = laminate::LoadStatus::Result;

const char kLibrary[] = "(ftf\n(technologyContainer\n(technology lib4\n)\n)\n)\n";

struct Facade : testing::Test {
  TempFolder folder;
  Events events;
  RecordingHost host{events};
  CPC_BD_Cls_Get facade;
  CBDesigner& Root() { return *facade.pGetBDesigner(); }
};

TEST_F(Facade, StartsEmpty) {
  EXPECT_EQ(facade.m_pPcfProgress, nullptr);
  EXPECT_EQ(facade.m_pFtfProgress, nullptr);
  EXPECT_EQ(facade.m_pLogFile, nullptr);
  EXPECT_EQ(facade.m_sFtfFilePath, "");
  EXPECT_EQ(facade.m_sPcfFilePath, "");
  EXPECT_EQ(facade.sGetErrorMsg(), "");
  EXPECT_EQ(facade.pGetBDesigner(), facade.m_pBDesigner);
  EXPECT_TRUE(facade.GetLoadStatus().IsOk());
  const CBDesigner& root = Root();
  EXPECT_EQ(root.m_bInQuote, 0);
  EXPECT_EQ(root.m_pPCFProgress, nullptr);
  EXPECT_EQ(root.m_sSpare, "");
  EXPECT_EQ(root.m_sVersion, "2.0");
  EXPECT_EQ(root.m_nComponentFileCount, 0);
  EXPECT_EQ(root.m_nLayerFileCount, 0);
  EXPECT_EQ(root.m_pLogFile, nullptr);
  EXPECT_TRUE(root.GetLoadStatus().IsOk());
  for (const void* p :
       {static_cast<const void*>(root.m_pTechnology), static_cast<const void*>(root.m_pFtfTechnology),
        static_cast<const void*>(root.m_pFootprintContainer), static_cast<const void*>(root.m_pBoardContainer),
        static_cast<const void*>(root.m_pParameter), static_cast<const void*>(root.m_pLibraryEntities)}) {
    EXPECT_NE(p, nullptr);
  }
}

TEST_F(Facade, HasItsFieldsInOrderAndVirtualDestructors) {
  static_assert(std::has_virtual_destructor_v<CPC_BD_Cls_Get>);
  static_assert(std::has_virtual_destructor_v<CBDesigner>);
  const CBDesigner& root = Root();
  const void* fields[] = {&root.m_bInQuote,       &root.m_pPCFProgress,        &root.m_pTechnology,
                          &root.m_pFtfTechnology, &root.m_pFootprintContainer, &root.m_pBoardContainer,
                          &root.m_pParameter,     &root.m_pLibraryEntities,    &root.m_sSpare,
                          &root.m_sVersion,       &root.m_nComponentFileCount, &root.m_nLayerFileCount,
                          &root.m_pLogFile};
  for (std::size_t i = 1; i < std::size(fields); ++i) EXPECT_LT(fields[i - 1], fields[i]) << i;
  const void* own[] = {&facade.m_pPcfProgress, &facade.m_pFtfProgress, &facade.m_pBDesigner, &facade.m_pLogFile,
                       &facade.m_sFtfFilePath, &facade.m_sPcfFilePath, &facade.m_sErrorMsg};
  for (std::size_t i = 1; i < std::size(own); ++i) EXPECT_LT(own[i - 1], own[i]) << i;
}

TEST_F(Facade, KeepsControlsAndPaths) {
  RecordingControl pcf(events, "pcf");
  RecordingControl ftf(events, "ftf");
  facade.SetProgressPtr(&pcf, &ftf);
  EXPECT_EQ(facade.m_pPcfProgress, &pcf);
  EXPECT_EQ(facade.m_pFtfProgress, &ftf);
  facade.vSetFtfFilePath("a.ftf");
  facade.vSetPcfFilePath("b.pcf");
  EXPECT_EQ(facade.m_sFtfFilePath, "a.ftf");
  EXPECT_EQ(facade.m_sPcfFilePath, "b.pcf");
}

TEST_F(Facade, ReadsNeitherFileWhenAPathIsEmpty) {
  const CString sBoard = folder.Write("b.pcf", BoardText(kNets));
  const CString sLibrary = folder.Write("l.ftf", kLibrary);
  MemoryLog log;
  facade.m_pLogFile = log.Stream();
  struct Row {
    CString ftf;
    CString pcf;
  };
  for (const Row& row : {Row{"", ""}, Row{sLibrary, ""}, Row{"", sBoard}}) {
    events.clear();
    facade.vSetFtfFilePath(row.ftf);
    facade.vSetPcfFilePath(row.pcf);
    facade.vParseFtfAndPcf(0);
    // OK button and exclamation icon, no owner.
    EXPECT_EQ(events, Events{"box WARNING 48 No definition for PCF/FTF file path"});
    EXPECT_TRUE(Root().m_pBoardContainer->m_pNetArray->IsEmpty());
    EXPECT_EQ(Root().m_pFtfTechnology->m_sName, "");
    EXPECT_EQ(Root().m_pLogFile, nullptr);
    EXPECT_EQ(facade.GetLoadStatus().m_result, Result::cannotOpen);
  }
  EXPECT_EQ(log.Text(), "");
}

TEST_F(Facade, SendsPositionsInOrder) {
  RecordingControl pcf(events, "pcf");
  RecordingControl ftf(events, "ftf");
  facade.SetProgressPtr(&pcf, &ftf);
  facade.vSetFtfFilePath(folder.Write("l.ftf", kLibrary));
  facade.vSetPcfFilePath(folder.Write("b.pcf", BoardText(kNets)));
  facade.vParseFtfAndPcf(1);
  EXPECT_EQ(events, (Events{"ftf 100", "pcf 40", "pcf 60", "pcf 80", "pcf 100", "pcf 100"}));
  EXPECT_EQ(Root().m_pPCFProgress, &pcf);
  EXPECT_EQ(Root().m_pFtfTechnology->m_sName, "lib4");
  EXPECT_EQ(Root().m_pBoardContainer->m_pNetArray->GetSize(), 2);
}

// A control that runs a function.
struct CallingControl : CProgressCtrl {
  explicit CallingControl(std::function<void(int)> call) : onPos(std::move(call)) {}
  void OnSetPos(int nPos) override { onPos(nPos); }
  std::function<void(int)> onPos;
};

TEST_F(Facade, HasReadTheFootprintFileBeforeItTurnsToTheBoardFile) {
  MemoryLog log;
  RecordingControl earlier(events, "earlier");
  RecordingControl pcf(events, "pcf");
  std::string sLog;
  const CProgressCtrl* pThen = nullptr;
  CallingControl ftf([&](int) {
    sLog = log.Text();
    pThen = Root().m_pPCFProgress;
  });
  facade.SetProgressPtr(&pcf, &ftf);
  facade.m_pLogFile = log.Stream();
  Root().vSetPCFProgressPtr(&earlier);
  facade.vSetFtfFilePath(folder.Write("l.ftf", kLibrary));
  facade.vSetPcfFilePath(folder.Write("b.pcf", BoardText(kNets)));
  facade.vParseFtfAndPcf(1);
  EXPECT_TRUE(sLog.ends_with("\nComplete Translating FTF file to BD Database\n")) << sLog;
  EXPECT_EQ(pThen, &earlier);
  EXPECT_EQ(Root().m_pPCFProgress, &pcf);
}

TEST_F(Facade, EndsEachLoadAsFarAsItCame) {
  const Events whole{"ftf 100", "pcf 40", "pcf 60", "pcf 80", "pcf 100", "pcf 100"};
  const std::string sBoard = BoardText(kNets);
  struct Row {
    const char* name;
    std::string library;  // an empty one is missing
    std::string board;
    Events positions;
    int nets;
    bool raises;
  };
  const Row rows[] = {
      {"both good", kLibrary, sBoard, whole, 2, false},
      {"no footprint file", "", sBoard, whole, 2, false},
      {"another root in the footprint file", "(pcf\n)\n", sBoard, whole, 2, false},
      {"a footprint file left open", "(ftf\n(open\n", sBoard, whole, 2, false},
      {"no board file", kLibrary, "", {"ftf 100", "pcf 100"}, 0, false},
      {"a board file out of balance", kLibrary, sBoard + ")\n", {"ftf 100", "pcf 40", "pcf 100"}, 0, false},
      {"a value missing in the footprint file",
       "(ftf\n(footprintContainer\n(pads\n(pad)\n)\n)\n)\n",
       sBoard,
       {},
       0,
       true},
      {"a value missing in a component",
       kLibrary,
       BoardText(std::string(kNets) + "(components\n(component (reference)\n)\n)\n"),
       {"ftf 100", "pcf 40"},
       2,
       true},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    events.clear();
    MemoryLog log;
    RecordingControl pcf(events, "pcf");
    RecordingControl ftf(events, "ftf");
    CPC_BD_Cls_Get fresh;
    const CBDesigner& root = *fresh.pGetBDesigner();
    fresh.SetProgressPtr(&pcf, &ftf);
    fresh.m_pLogFile = log.Stream();
    fresh.vSetFtfFilePath(row.library.empty() ? CString("/nowhere.ftf") : folder.Write("l.ftf", row.library));
    fresh.vSetPcfFilePath(row.board.empty() ? CString("/nowhere.pcf") : folder.Write("b.pcf", row.board));
    if (row.raises) {
      EXPECT_THROW(fresh.vParseFtfAndPcf(1), CInvalidArgException);
    } else {
      fresh.vParseFtfAndPcf(1);
    }
    EXPECT_EQ(events, row.positions);
    EXPECT_EQ(root.m_pBoardContainer->m_pNetArray->GetSize(), row.nets);
    EXPECT_EQ(root.m_pLogFile, row.raises ? log.Stream() : nullptr);
    EXPECT_EQ(root.m_pPCFProgress, row.positions.empty() ? nullptr : &pcf);
  }
}

TEST_F(Facade, AsksOnlyOnceWhetherToSend) {
  int bProgress = 1;
  RecordingControl pcf(events, "pcf");
  CallingControl ftf([&](int) { bProgress = 0; });
  facade.SetProgressPtr(&pcf, &ftf);
  facade.vSetFtfFilePath(folder.Write("l.ftf", kLibrary));
  facade.vSetPcfFilePath(folder.Write("b.pcf", BoardText(kNets)));
  facade.vParseFtfAndPcf(bProgress);
  EXPECT_EQ(events, (Events{"pcf 40", "pcf 60", "pcf 80", "pcf 100", "pcf 100"}));
}

TEST_F(Facade, PassesOnWhatAHostRaises) {
  struct Busy : std::runtime_error {
    Busy() : std::runtime_error("the host is busy") {}
  };
  struct ThrowingHost : CHostInterface {
    int OnMessageBox(HWND, const CString&, const CString&, UINT) override { throw Busy(); }
  } throwing;
  {
    const CHostInterfaceScope scope(throwing);
    EXPECT_THROW(facade.vParseFtfAndPcf(0), Busy);
  }
  MemoryLog log;
  CallingControl ftf([](int) { throw Busy(); });
  facade.SetProgressPtr(nullptr, &ftf);
  facade.m_pLogFile = log.Stream();
  facade.vSetFtfFilePath(folder.Write("l.ftf", kLibrary));
  facade.vSetPcfFilePath(folder.Write("b.pcf", BoardText(kNets)));
  EXPECT_THROW(facade.vParseFtfAndPcf(1), Busy);
  EXPECT_EQ(log.Text().find("separate PCF"), std::string::npos) << "the board file was opened";
  EXPECT_EQ(Root().m_pLogFile, log.Stream());
  EXPECT_TRUE(facade.GetLoadStatus().IsOk()) << "it is no fault of a file";
  facade.vParseFtfAndPcf(0);
  EXPECT_EQ(Root().m_pBoardContainer->m_pNetArray->GetSize(), 2);
  EXPECT_EQ(Root().m_pLogFile, nullptr);
}

TEST_F(Facade, LeavesTheLogOpen) {
  // A stream that counts how often it is closed.
  int nClosed = 0;
  const auto write = [](void*, const char*, std::size_t nBytes) { return static_cast<ssize_t>(nBytes); };
  const auto close = [](void* p) { return ++*static_cast<int*>(p), 0; };
  std::FILE* const pLog = ::fopencookie(&nClosed, "w", {nullptr, write, nullptr, close});
  ASSERT_NE(pLog, nullptr);
  {
    CPC_BD_Cls_Get other;
    other.m_pLogFile = pLog;
    other.pGetBDesigner()->m_pLogFile = pLog;
  }
  EXPECT_EQ(nClosed, 0);
  std::fclose(pLog);
  EXPECT_EQ(nClosed, 1);
}

TEST_F(Facade, SendsNothingItselfWithoutProgress) {
  RecordingControl pcf(events, "pcf");
  RecordingControl ftf(events, "ftf");
  RecordingControl earlier(events, "earlier");
  facade.SetProgressPtr(&pcf, &ftf);
  facade.vSetFtfFilePath(folder.Write("l.ftf", kLibrary));
  facade.vSetPcfFilePath(folder.Write("b.pcf", BoardText(kNets)));
  facade.vParseFtfAndPcf(0);
  EXPECT_EQ(events, Events{});
  // A control that the root has from before is moved all the same.
  Root().vSetPCFProgressPtr(&earlier);
  facade.vParseFtfAndPcf(0);
  EXPECT_EQ(events, (Events{"earlier 40", "earlier 60", "earlier 80", "earlier 100"}));
  EXPECT_EQ(Root().m_pPCFProgress, &earlier);
}

TEST_F(Facade, SkipsNullControls) {
  RecordingControl pcf(events, "pcf");
  RecordingControl ftf(events, "ftf");
  RecordingControl earlier(events, "earlier");
  facade.vSetFtfFilePath(folder.Write("l.ftf", kLibrary));
  facade.vSetPcfFilePath(folder.Write("b.pcf", BoardText(kNets)));
  facade.SetProgressPtr(&pcf, nullptr);
  facade.vParseFtfAndPcf(1);
  EXPECT_EQ(events, (Events{"pcf 40", "pcf 60", "pcf 80", "pcf 100", "pcf 100"}));
  events.clear();
  Root().vSetPCFProgressPtr(&earlier);
  facade.SetProgressPtr(nullptr, &ftf);
  facade.vParseFtfAndPcf(2);
  EXPECT_EQ(events, Events{"ftf 100"});
  EXPECT_EQ(Root().m_pPCFProgress, nullptr);
}

TEST_F(Facade, LendsItsLogForTheTimeOfALoad) {
  MemoryLog log;
  const CString sBoard = folder.Write("b.pcf", BoardText(kNets));
  const std::string sPieces = folder.WorkingFolder(sBoard);
  facade.vSetFtfFilePath(folder.Write("l.ftf", kLibrary));
  facade.vSetPcfFilePath(sBoard);
  facade.m_pLogFile = log.Stream();
  facade.vParseFtfAndPcf(0);
  EXPECT_EQ(log.Text(),
            "FTF file parsing\n"
            "Complete FTF file parsing\n"
            "Translating technologyContainer to BD Data base\n"
            "Translating footprintContainer to BD Data base\n"
            "Complete Translating FTF file to BD Database\n"
            "separate PCF file into several file.\n"
            "Parsing - " +
                sPieces +
                "/others.txt\n"
                "Complete PCF file Parsing\n");
  EXPECT_EQ(Root().m_pLogFile, nullptr);
  EXPECT_EQ(facade.m_pLogFile, log.Stream());
}

TEST_F(Facade, LeavesTheRootsLogWithoutOneOfItsOwn) {
  MemoryLog log;
  Root().m_pLogFile = log.Stream();
  facade.vSetFtfFilePath(folder.Write("l.ftf", kLibrary));
  facade.vSetPcfFilePath(folder.Write("b.pcf", BoardText(kNets)));
  facade.vParseFtfAndPcf(0);
  EXPECT_NE(log.Text(), "");
  EXPECT_EQ(Root().m_pLogFile, nullptr);
}

TEST_F(Facade, AddsToWhatIsThereWithEveryLoad) {
  facade.vSetFtfFilePath(folder.Write("l.ftf", kLibrary));
  facade.vSetPcfFilePath(folder.Write("b.pcf", BoardText(kNets)));
  facade.vParseFtfAndPcf(0);
  facade.vParseFtfAndPcf(0);
  EXPECT_EQ(Root().m_pBoardContainer->m_pNetArray->GetSize(), 4);
}

TEST_F(Facade, GivesColumns) {
  struct Row {
    const char* line;
    int column;
    const char* expected;
  };
  const Row rows[] = {{"one two three", 3, "three"},
                      {"one two three", 4, ""},
                      {"one two three", 0, ""},
                      {" \t one   two\t", 2, "two"},
                      {"(part \"A B\" x)", 2, "A B"},
                      {"(port \"1\" (symbPinId 2) (portName \"A\") (portType INOUT))", 9, "INOUT))"},
                      {"", 1, ""}};
  for (const Row& row : rows) EXPECT_EQ(facade.sGetNthColumn(row.line, row.column), row.expected) << row.line;
  EXPECT_THROW(facade.sGetNthColumn("one", -1), CInvalidArgException);
}

TEST_F(Facade, SharesItsRootWithItsCopies) {
  RecordingControl pcf(events, "pcf");
  RecordingControl ftf(events, "ftf");
  facade.SetProgressPtr(&pcf, &ftf);
  facade.vSetPcfFilePath("b.pcf");
  facade.vSetFtfFilePath("l.ftf");
  facade.m_pLogFile = stderr;
  facade.m_sErrorMsg = "the host's own";
  EXPECT_EQ(facade.sGetErrorMsg(), "the host's own");
  const auto expectShared = [&](CPC_BD_Cls_Get& copy) {
    EXPECT_EQ(copy.pGetBDesigner(), facade.pGetBDesigner());
    EXPECT_EQ(copy.m_pPcfProgress, &pcf);
    EXPECT_EQ(copy.m_pFtfProgress, &ftf);
    EXPECT_EQ(copy.m_pLogFile, stderr);
    EXPECT_EQ(copy.m_sPcfFilePath, "b.pcf");
    EXPECT_EQ(copy.m_sFtfFilePath, "l.ftf");
    EXPECT_EQ(copy.m_sErrorMsg, "the host's own");
    copy.m_pBDesigner = nullptr;
  };
  CPC_BD_Cls_Get copy(facade);
  expectShared(copy);
  CPC_BD_Cls_Get assigned;
  const std::unique_ptr<CBDesigner> pOld(assigned.m_pBDesigner);
  assigned = facade;
  EXPECT_NE(pOld.get(), facade.pGetBDesigner());
  expectShared(assigned);
}

// What hosts are compiled against.
template <class Signature, auto kOperation>
constexpr bool kHas = std::is_same_v<decltype(kOperation), Signature>;
static_assert(sizeof(int) == 4);
static_assert(kHas<void (CPC_BD_Cls_Get::*)(CProgressCtrl*, CProgressCtrl*), &CPC_BD_Cls_Get::SetProgressPtr>);
static_assert(kHas<void (CPC_BD_Cls_Get::*)(CString), &CPC_BD_Cls_Get::vSetFtfFilePath>);
static_assert(kHas<void (CPC_BD_Cls_Get::*)(CString), &CPC_BD_Cls_Get::vSetPcfFilePath>);
static_assert(kHas<void (CPC_BD_Cls_Get::*)(const int&), &CPC_BD_Cls_Get::vParseFtfAndPcf>);
static_assert(kHas<CBDesigner* (CPC_BD_Cls_Get::*)() const, &CPC_BD_Cls_Get::pGetBDesigner>);
static_assert(kHas<CBDnetArray* (CPC_BD_Cls_Get::*)(CString), &CPC_BD_Cls_Get::pGetNetArrayFromPcf>);
static_assert(kHas<CString (CPC_BD_Cls_Get::*)(CString, int), &CPC_BD_Cls_Get::sGetNthColumn>);
static_assert(kHas<CString (CPC_BD_Cls_Get::*)() const, &CPC_BD_Cls_Get::sGetErrorMsg>);
static_assert(kHas<void (CBDesigner::*)(CProgressCtrl*), &CBDesigner::vSetPCFProgressPtr>);
static_assert(kHas<double (CBDesigner::*)(CString), &CBDesigner::dDBUnit2Double>);
static_assert(kHas<CString (CBDesigner::*)(CString), &CBDesigner::sGetLayerTypeFromSubLayer>);
static_assert(kHas<CVRXoutPrfPart* (CBDesigner::*)(CVRXoutPrfPartArray*, CString), &CBDesigner::pGetBDoutPrfPart>);
static_assert(kHas<int (CBDesigner::*)(CString), &CBDesigner::nGetBraceCount>);
static_assert(kHas<void (CBDesigner::*)(CString), &CBDesigner::vSeparaePCFIntoSeveralFile>);
static_assert(kHas<void (CBDesigner::*)(CString), &CBDesigner::vSeparaeFTFIntoSeveralFile>);
static_assert(kHas<void (CBDesigner::*)(CString), &CBDesigner::vParsePCF>);
static_assert(kHas<int (CBDesigner::*)(CECadCls*), &CBDesigner::nReadOtherAndPutInVDB>);
static_assert(kHas<int (CBDesigner::*)(CECadClsLvl*), &CBDesigner::nReadBoardLayerAndPutInVDB>);
static_assert(kHas<int (CBDesigner::*)(CECadClsLvl*), &CBDesigner::nReadComponentAndPutInVDB>);
static_assert(kHas<void (CBDesigner::*)(CString), &CBDesigner::vParseFTF>);
static_assert(kHas<void (CBDesigner::*)(CString, CStringArray&), &CBDesigner::vParseFTFInKOTRAndGetFootprints>);
static_assert(kHas<void (CBDesigner::*)(CString), &CBDesigner::vParseFTFInKOTRAndGetPadsAndPadstacks>);
static_assert(
    kHas<CBDdrawObj* (CBDesigner::*)(CECadClsLvl*, int, CString, CString, int), &CBDesigner::pCECadClsLvl2CBDdrawObj>);
static_assert(kHas<void (CBDesigner::*)(CECadClsLvl*, CBDvertexArray*), &CBDesigner::vInsertVertexIntoCBDvertexArray>);
static_assert(kHas<int (CBDesigner::*)(CString, CBDesigner*, CVRXoutPackageArray*, CVRXoutPrfPartArray*,
                                       CVRXoutPrfPinAssignArray*, CVRXoutPrfFunctionArray*),
                   &CBDesigner::nPrint2File>);

TEST_F(Facade, RaisesWithoutARoot) {
  CPC_BD_Cls_Get empty;
  const std::unique_ptr<CBDesigner> pRoot(std::exchange(empty.m_pBDesigner, nullptr));
  empty.vSetFtfFilePath("a");
  empty.vSetPcfFilePath("b");
  EXPECT_THROW(empty.vParseFtfAndPcf(0), CInvalidArgException);
  EXPECT_THROW(empty.pGetNetArrayFromPcf("b"), CInvalidArgException);
}

}  // namespace
