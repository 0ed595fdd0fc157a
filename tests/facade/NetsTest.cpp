// From a board file to its nets: facade, splitter, reader, translator.
#include "board/CBDboardContainer.h"
#include "board/CBDnet.h"
#include "board/CBDsubBoard.h"
#include "facade/CBDesigner.h"
#include "facade/CPC_BD_Cls_Get.h"
#include "facade/FacadeTestSupport.h"
#include "facade/WholeDesign.h"

namespace {

struct Nets : testing::Test {
  TempFolder folder;
  Events events;
  RecordingHost host{events};
  CPC_BD_Cls_Get facade;
  CBDesigner& Root() { return *facade.pGetBDesigner(); }
  std::unique_ptr<CBDnetArray> Take(const std::string& sText) {
    return std::unique_ptr<CBDnetArray>(facade.pGetNetArrayFromPcf(folder.Write("b.pcf", sText)));
  }
};

// "NAME TYPE LOCK PEN RATS: COMP.PIN ..."
std::string Show(const CBDnet& net) {
  std::string s;
  for (const CString* ps : {&net.m_sName, &net.m_sType, &net.m_sLockMode, &net.m_sPen, &net.m_sRatsNest}) {
    s += std::string(ps->View()) + "|";
  }
  for (const CBDrefPin* pPin : *net.m_pRefPinArray) {
    s += " " + std::string(pPin->m_sComp.View()) + "." + std::string(pPin->m_sPin.View());
  }
  return s;
}

TEST_F(Nets, AreHandedOver) {
  std::unique_ptr<CBDnetArray> pNets = Take(BoardText(kNets));
  ASSERT_EQ(pNets->GetSize(), 2);
  EXPECT_EQ(Show(*pNets->GetAt(0)), "VCC 3V3|POWER|FIXED|2|| U1.4 R1.");
  EXPECT_EQ(Show(*pNets->GetAt(1)), "GND||||YES|");
  EXPECT_EQ(Root().m_pBoardContainer->m_pNetArray, nullptr);
  // All else of the file stays in the root.
  EXPECT_EQ(Root().m_sVersion, "2.1");
  EXPECT_TRUE(facade.GetLoadStatus().IsOk());
}

TEST_F(Nets, OutliveTheFacade) {
  auto pFacade = std::make_unique<CPC_BD_Cls_Get>();
  std::unique_ptr<CBDnetArray> pNets(pFacade->pGetNetArrayFromPcf(folder.Write("b.pcf", BoardText(kNets))));
  pFacade.reset();
  EXPECT_EQ(pNets->GetAt(0)->m_sName, "VCC 3V3");
}

TEST_F(Nets, AreAnEmptyArrayWithoutTheirSection) {
  const std::unique_ptr<CBDnetArray> pNets = Take(BoardText(""));
  ASSERT_NE(pNets, nullptr);
  EXPECT_TRUE(pNets->IsEmpty());
}

TEST_F(Nets, ComeFromAnyOfTheThreeRoots) {
  const std::string sBody = "(boardContainer\n(nets\n(net A\n)\n)\n)\n)\n";
  for (const char* szRoot : {"pcf", "tcf", "pnf"}) {
    EXPECT_EQ(Take("(" + std::string(szRoot) + "\n" + sBody)->GetSize(), 1) << szRoot;
  }
  EXPECT_EQ(Take("(ftf\n" + sBody)->GetSize(), 0);
  EXPECT_EQ(facade.GetLoadStatus().m_result, laminate::LoadStatus::Result::notWellFormed);
}

TEST_F(Nets, TakeTheLaterOfTheTwoRatsNestKeys) {
  const auto pNets =
      Take(BoardText("(nets\n(net A\n(drawRatsNest D)\n(rebuildRatsNest R)\n)\n"
                     "(net B\n(rebuildRatsNest R)\n(drawRatsNest D)\n)\n)\n"));
  EXPECT_EQ(pNets->GetAt(0)->m_sRatsNest, "R");
  EXPECT_EQ(pNets->GetAt(1)->m_sRatsNest, "D");
}

TEST_F(Nets, SkipOtherChildren) {
  const auto pNets = Take(BoardText("(nets\n(bus X\n)\n(net A\n(colour RED)\n(comp R1 (pin 1) (pin 2))\n)\n)\n"));
  ASSERT_EQ(pNets->GetSize(), 1);
  EXPECT_EQ(Show(*pNets->GetAt(0)), "A||||| R1.1");
}

TEST_F(Nets, AreWrittenWithConstantsAndDoubledPercentSigns) {
  const auto pNets =
      Take(BoardText("(nets\n(net A%B\n(type T)\n(lockMode FIXED)\n(pen 3)\n(rebuildRatsNest NO)\n"
                     "(comp R1)\n(comp U1 (pin 2))\n)\n)\n"));
  MemoryLog text;
  EXPECT_EQ(pNets->GetAt(0)->nPrint2File(text.Stream()), 0);
  EXPECT_EQ(text.Text(),
            "(net \"A%%B\"\n(type T)\n(lockMode UNFIXED)\n(pen 3)\n(drawRatsNest NO)\n(rebuildRatsNest YES)\n"
            "(comp R1 (pin ))\n(comp U1 (pin 2))\n)\n");
  EXPECT_EQ(pNets->GetAt(0)->m_sName, "A%%B");
}

TEST_F(Nets, RaiseWithoutAValueAndKeepThoseBefore) {
  const char* const kRows[] = {"(net)\n",
                               "(net A\n(type)\n)\n",
                               "(net A\n(lockMode)\n)\n",
                               "(net A\n(pen)\n)\n",
                               "(net A\n(drawRatsNest)\n)\n",
                               "(net A\n(rebuildRatsNest)\n)\n",
                               "(net A\n(comp)\n)\n",
                               "(net A\n(comp R1 (pin))\n)\n"};
  for (const char* szRow : kRows) {
    CPC_BD_Cls_Get fresh;
    const CString sPath = folder.Write("b.pcf", BoardText("(nets\n(net FIRST\n)\n" + std::string(szRow) + ")\n"));
    EXPECT_THROW(fresh.pGetNetArrayFromPcf(sPath), CInvalidArgException) << szRow;
    const CBDnetArray* pNets = fresh.pGetBDesigner()->m_pBoardContainer->m_pNetArray;
    ASSERT_NE(pNets, nullptr);
    ASSERT_EQ(pNets->GetSize(), 1) << szRow;
    EXPECT_EQ(pNets->GetAt(0)->m_sName, "FIRST");
    EXPECT_EQ(fresh.GetLoadStatus().m_result, laminate::LoadStatus::Result::invalidContent);
  }
}

TEST_F(Nets, CanBeTakenAgainFromALaterLoad) {
  Take(BoardText(kNets));
  const auto pSecond = Take(BoardText(kNets));
  ASSERT_NE(pSecond, nullptr);
  EXPECT_EQ(pSecond->GetSize(), 2);
  // A load that finds no file hands over an array, too.
  const std::unique_ptr<CBDnetArray> pThird(facade.pGetNetArrayFromPcf("/nowhere/b.pcf"));
  ASSERT_NE(pThird, nullptr);
  EXPECT_TRUE(pThird->IsEmpty());
}

TEST_F(Nets, UseTheRootsOwnControlAndLog) {
  RecordingControl control(events, "root");
  MemoryLog log;
  Root().vSetPCFProgressPtr(&control);
  Root().m_pLogFile = log.Stream();
  Take(BoardText(kNets));
  EXPECT_EQ(events, (Events{"root 40", "root 60", "root 80", "root 100"}));
  EXPECT_TRUE(log.Text().starts_with("separate PCF file into several file.\n"));
  EXPECT_TRUE(log.Text().ends_with("Complete PCF file Parsing\n"));
  EXPECT_EQ(Root().m_pLogFile, log.Stream());
}

TEST_F(Nets, LeaveTheFacadesOwnSettingsAndTheOtherFileAlone) {
  RecordingControl pcf(events, "pcf");
  RecordingControl ftf(events, "ftf");
  MemoryLog log;
  facade.SetProgressPtr(&pcf, &ftf);
  facade.m_pLogFile = log.Stream();
  facade.vSetFtfFilePath(folder.Write("l.ftf", Numbered(kWholeLibrary, 4)));
  facade.vSetPcfFilePath(folder.Write("other.pcf", BoardText("")));
  EXPECT_EQ(Take(BoardText(kNets))->GetSize(), 2);
  EXPECT_EQ(events, Events{});
  EXPECT_EQ(log.Text(), "");
  EXPECT_EQ(Root().m_pFtfTechnology->m_sName, "");
  EXPECT_TRUE(Root().m_pFootprintContainer->m_pFootprintArray->IsEmpty());
  EXPECT_EQ(Root().m_pPCFProgress, nullptr);
  EXPECT_EQ(Root().m_pLogFile, nullptr);
  EXPECT_EQ(facade.m_pLogFile, log.Stream());
}

TEST_F(Nets, LeaveAllElseInTheRoot) {
  EXPECT_EQ(Take(Numbered(kWholeBoard, 3))->GetSize(), 2);
  EXPECT_EQ(Counted(Root()),
            "BOARD3  components 2 boards 1 groups 1 nets - shapes 6 sizes 1 parts 1 pads 0 padstacks 0 footprints 0");
}

TEST_F(Nets, ComeBehindThoseOfEarlierLoads) {
  Root().vParsePCF(folder.Write("first.pcf", BoardText(kNets)));
  const auto pNets = Take(BoardText("(nets\n(net LATER\n)\n)\n"));
  ASSERT_EQ(pNets->GetSize(), 3);
  EXPECT_EQ(pNets->GetAt(0)->m_sName, "VCC 3V3");
  EXPECT_EQ(pNets->GetAt(2)->m_sName, "LATER");
}

// A control may take the nets of the load that it watches; each call gives an array of its own.
TEST_F(Nets, AreGivenOnceWhenAControlTakesThem) {
  class Taking : public CProgressCtrl {
   public:
    Taking(CPC_BD_Cls_Get& facade, CString sPath) : m_facade(facade), m_sPath(std::move(sPath)) {}
    void OnSetPos(int nPos) override {
      if (nPos != 60 || m_pTaken != nullptr) return;
      m_facade.pGetBDesigner()->vSetPCFProgressPtr(nullptr);
      m_pTaken.reset(m_facade.pGetNetArrayFromPcf(m_sPath));
    }
    std::unique_ptr<CBDnetArray> m_pTaken;

   private:
    CPC_BD_Cls_Get& m_facade;
    CString m_sPath;
  };
  Taking taking(facade, folder.Write("inner.pcf", BoardText("")));
  Root().vSetPCFProgressPtr(&taking);
  const auto pNets = Take(BoardText(kNets));
  ASSERT_NE(taking.m_pTaken, nullptr);
  EXPECT_EQ(taking.m_pTaken->GetSize(), 2);
  ASSERT_NE(pNets, nullptr);
  EXPECT_TRUE(pNets->IsEmpty());
}

TEST_F(Nets, WorkWithTextOfTwoLineEnds) {
  std::string sText = BoardText(kNets);
  std::string sWithCr;
  for (char c : sText) sWithCr += c == '\n' ? std::string("\r\n") : std::string(1, c);
  const auto pNets = Take(sWithCr);
  ASSERT_EQ(pNets->GetSize(), 2);
  EXPECT_EQ(Show(*pNets->GetAt(0)), "VCC 3V3|POWER|FIXED|2|| U1.4 R1.");
}

TEST_F(Nets, KeepShiftJisBytes) {
  // A trail byte that equals a backslash, before the closing quote.
  const auto pNets = Take(BoardText("(nets\n(net \"\x95\x5C\"\n)\n(net \xB1\xB2\n)\n)\n"));
  ASSERT_EQ(pNets->GetSize(), 2);
  EXPECT_EQ(pNets->GetAt(0)->m_sName, "\x95\x5C");
  EXPECT_EQ(pNets->GetAt(1)->m_sName, "\xB1\xB2");
}

// ---- what stands beside the nets ----

TEST_F(Nets, SubBoardsAreRead) {
  Take(BoardText("(subBoards\n(subBoard 3 (relativePath \"a b\"))\n(other 9)\n(subBoard 4)\n)\n"));
  const CBDsubBoardArray& subBoards = *Root().m_pBoardContainer->m_pSubBoardArray;
  ASSERT_EQ(subBoards.GetSize(), 2);
  EXPECT_EQ(subBoards.GetAt(0)->m_nId, 3);
  EXPECT_EQ(subBoards.GetAt(0)->m_sRelativePath, "a b");
  EXPECT_EQ(subBoards.GetAt(1)->m_nId, 4);
  EXPECT_EQ(subBoards.GetAt(1)->m_sRelativePath, "");
}

TEST_F(Nets, SubBoardsAreNotWritten) {
  Take(BoardText("(subBoards\n(subBoard 3 (relativePath p))\n)\n"));
  ASSERT_EQ(Root().m_pBoardContainer->m_pSubBoardArray->GetSize(), 1);
  Root().m_pBoardContainer->m_pNetArray = new CBDnetArray;
  MemoryLog text;
  Root().m_pBoardContainer->nPrint2File(text.Stream());
  EXPECT_EQ(text.Text().find("subBoard"), std::string::npos);
  EXPECT_NE(text.Text().find("(nets\n)\n"), std::string::npos);
}

TEST_F(Nets, ASubBoardWithoutANumberRaises) {
  EXPECT_THROW(Take(BoardText("(subBoards\n(subBoard 1)\n(subBoard)\n)\n")), CInvalidArgException);
  EXPECT_EQ(Root().m_pBoardContainer->m_pSubBoardArray->GetSize(), 1);
}

TEST_F(Nets, AHeaderWithoutItsVersionRaises) {
  EXPECT_THROW(Take("(pcf\n(header\n)\n)\n"), CInvalidArgException);
  EXPECT_EQ(Take("(pcf\n)\n")->GetSize(), 0);
  EXPECT_EQ(Root().m_sVersion, "2.0");
}

TEST_F(Nets, TheBoardWritesAnEmptySectionOnceTheyWereTaken) {
  Take(BoardText(kNets));
  MemoryLog text;
  EXPECT_EQ(Root().m_pBoardContainer->nPrint2File(text.Stream()), 0);
  EXPECT_NE(text.Text().find("(nets\n)\n"), std::string::npos);
}

}  // namespace
