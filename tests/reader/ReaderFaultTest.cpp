// What the reader, the splitters and the load do when a file operation or an allocation fails, whichever it is.
#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>

#include "base/AllocationFault.h"
#include "base/BKUtility.h"
#include "base/FaultyFileSystem.h"
#include "base/TestFolder.h"
#include "reader/BoardFileLoad.h"
#include "reader/BoardFileSplitter.h"
#include "reader/ReaderTestSupport.h"

namespace {

using laminate::LoadStatus;
using laminate::test::FaultyFileSystem;

const std::string kBoard =
    "(pcf\n(header\n)\n(b\n(components\n(component (reference \"a name that is long enough for the heap\")\n)\n"
    "(component (x)\n)\n)\n(boardLayout\n(layout\n(layer (y)\n)\n)\n)\n)\n)\n";
const std::string kFootprints =
    "(ftf\n(c\n(padstacks\n(padstack (a)\n)\n(padstack (b)\n)\n)\n(footprints\n(footprint (c)\n)\n)\n)\n)\n";

class Faults : public laminate::test::DescriptorTest {
 protected:
  Faults() {
    BKUtility::GetInstance()->SetDataPath(CString(m_folder / "data"));
    m_sBoard = CString(m_folder.Write("board.pcf", kBoard));
    m_sFootprints = CString(m_folder.Write("lib.ftf", kFootprints));
  }
  ~Faults() override { BKUtility::GetInstance()->SetDataPath(""); }

  struct Loaded {
    LoadStatus status;
    int nComponents = 5;
    int nLayers = 5;
    int nForms = 0;
    int nLastPosition = 0;
  };
  void Load(Loaded& loaded) {
    class Progress : public CProgressCtrl {};
    Progress progress;
    int bInQuote = 0;
    laminate::BoardFileLoad load{.sPath = m_sBoard,
                                 .pProgress = &progress,
                                 .bInQuote = bInQuote,
                                 .nComponentFileCount = loaded.nComponents,
                                 .nLayerFileCount = loaded.nLayers,
                                 .status = loaded.status,
                                 .others = [&](CECadCls*) { return ++loaded.nForms, 0; },
                                 .component = [&](CECadClsLvl*) { ++loaded.nForms; },
                                 .layer = [&](CECadClsLvl*) { ++loaded.nForms; }};
    laminate::LoadBoardFile(load);
    loaded.nLastPosition = progress.GetPos();
  }
  bool FolderStands() const {
    return std::filesystem::exists((m_folder / "data/Data/") +
                                   BKUtility::GetInstance()->GetSegmntFromFilePath(m_sBoard, 2).GetString());
  }
  std::string DataFolder() const { return m_folder / "data"; }

  laminate::test::TestFolder m_folder;
  CString m_sBoard;
  CString m_sFootprints;
};

TEST_F(Faults, EachFileOperationOfALoad) {
  for (int nError : {EIO, ENOSPC, EACCES}) {
    const int nFailures = laminate::test::ForEachFailingFileOperation(nError, [&](FaultyFileSystem& files) {
      std::filesystem::remove_all(DataFolder());
      Loaded loaded;
      Load(loaded);
      const std::string last = files.HasFailed() ? files.Operations().back() : "";
      if (loaded.status.IsOk()) {
        EXPECT_EQ(loaded.nForms, 4);
        EXPECT_EQ(loaded.nLastPosition, 100);
        EXPECT_EQ(loaded.nComponents, 2);
        // What is left behind is told.
        EXPECT_EQ(FolderStands(), !loaded.status.m_sText.IsEmpty());
      } else {
        EXPECT_EQ(loaded.status.m_sFile, m_sBoard);
        EXPECT_FALSE(loaded.status.m_sText.IsEmpty());
        EXPECT_LT(loaded.nForms, 4 + (loaded.nLastPosition == 100 ? 1 : 0));
        EXPECT_TRUE(loaded.nLastPosition == 0 || loaded.nLastPosition == 100);
        if (loaded.nLastPosition == 0) {
          EXPECT_EQ(loaded.nForms, 0);
          EXPECT_EQ(loaded.nComponents, 0);
          EXPECT_EQ(loaded.nLayers, 0);
        }
      }
    });
    EXPECT_GT(nFailures, 60);
  }
  Loaded after;
  Load(after);
  EXPECT_TRUE(after.status.IsOk());
  EXPECT_EQ(after.nForms, 4);
}

TEST_F(Faults, AFailedSplitTakesItsFolderAway) {
  for (const char* szOperation : {"Write", "CreateNew", "Close"}) {
    for (int n = 1;; ++n) {
      FaultyFileSystem files(n, ENOSPC, FaultyFileSystem::Duration::once);
      files.Only(szOperation);
      const laminate::FileSystemScope scope(files);
      Loaded loaded;
      Load(loaded);
      if (!files.HasFailed()) {
        EXPECT_GE(n, 5);
        break;
      }
      EXPECT_FALSE(FolderStands()) << szOperation << n;
      if (loaded.status.IsOk()) continue;  // the close of a file that was read
      EXPECT_EQ(loaded.status.m_result, LoadStatus::Result::cannotWriteWorkingFolder) << szOperation << n;
      EXPECT_NE(loaded.status.m_sText.Find("the disk is full"), -1) << loaded.status.m_sText.GetString();
      EXPECT_EQ(loaded.nForms, 0);
    }
  }
}

TEST_F(Faults, ShortReadsAndWrites) {
  FaultyFileSystem files;
  files.LimitTransfers(1);
  const laminate::FileSystemScope scope(files);
  Loaded loaded;
  Load(loaded);
  EXPECT_TRUE(loaded.status.IsOk());
  EXPECT_EQ(loaded.nForms, 4);
}

TEST_F(Faults, EachFileOperationOfTheSplitters) {
  for (bool bFootprints : {false, true}) {
    const int nFailures = laminate::test::ForEachFailingFileOperation(ENOSPC, [&](FaultyFileSystem&) {
      std::filesystem::remove_all(DataFolder());
      int bInQuote = 0;
      int nComponents = 5;
      int nLayers = 5;
      LoadStatus status;
      laminate::SplitState state{bInQuote, nComponents, nLayers, status};
      const bool bOk =
          bFootprints ? laminate::SplitFootprintFile(m_sFootprints, state) : laminate::SplitBoardFile(m_sBoard, state);
      EXPECT_EQ(bOk, status.IsOk());
      if (bOk && bFootprints) {
        EXPECT_EQ(laminate::test::ReadFile(DataFolder() + "/Data/Tmp/Footprint1.txt"), "(footprint (c)\n)\n");
        EXPECT_EQ(laminate::test::ReadFile(DataFolder() + "/Data/Tmp/PadStack2.txt"), "(padstack (b)\n)\n");
      }
    });
    EXPECT_GT(nFailures, 20);
  }
}

TEST_F(Faults, EachFileOperationOfTheParses) {
  const std::string path = m_folder.Write("text", "(a\n)\n(b x\n)\n(b x\n)\n");
  laminate::test::ForEachFailingFileOperation(EIO, [&](FaultyFileSystem& files) {
    CECadCls reader;
    reader.m_sFileName = CString(path);
    const auto expect = [&](bool bGood) {
      if (!reader.m_status.IsOk()) {
        EXPECT_TRUE(files.HasFailed());
        EXPECT_FALSE(bGood);
        EXPECT_EQ(reader.m_status.m_result, LoadStatus::Result::cannotOpen);
      } else {
        EXPECT_TRUE(bGood);
      }
    };
    EXPECT_EQ(reader.nParseFile(0), 0);
    expect(Brief(*reader.m_pRootArray) == "{a[]}{b[x]}{b[x]}");
    reader.m_pRootArray->DeleteAll();
    EXPECT_EQ(reader.nParseNamedForm("a"), 0);
    expect(Brief(*reader.m_pRootArray) == "{a[]}");
    const std::unique_ptr<CECadClsLvl> form(reader.pParseFormAt(5));
    expect(form != nullptr);
    CStringArray names;
    names.Add("x");
    reader.vCollectFormOffsets("b", names);
    expect(reader.m_arrOffset.GetSize() == 2);
  });
}

TEST_F(Faults, EachAllocationOfALoad) {
  Loaded loaded;
  bool bRaised = false;
  const int nFailures = laminate::test::ForEachFailingAllocation(
      [&] {
        loaded = Loaded();
        bRaised = true;
        Load(loaded);
        bRaised = false;
      },
      [&] { EXPECT_TRUE(bRaised || loaded.nForms == 4 || !loaded.status.IsOk()); });
  EXPECT_GT(nFailures, 20);
  loaded = Loaded();
  Load(loaded);
  EXPECT_EQ(loaded.nForms, 4) << "nothing stays locked";
}

TEST_F(Faults, EachAllocationOfTheParses) {
  std::string strings;
  for (int i = 0; i < 40; ++i) strings += " \"a string with a quote \\\" in it that no string holds inside\"";
  const CString sPath(
      m_folder.Write("text", "(a" + strings + "\n(b \"over\ntwo lines, and rather long\")\n)\n(c\n(d 1 2)\n)\n"));
  // One reader outlives all failures: what they leave in it is sound.
  CECadCls reader;
  reader.m_sFileName = sPath;
  CStringArray names;
  names.Add("x");
  laminate::Diagnostics diagnostics;
  laminate::test::ForEachFailingAllocation([&] { reader.nParseFile(0); });
  laminate::test::ForEachFailingAllocation([&] { reader.nParseNamedForm("c"); });
  laminate::test::ForEachFailingAllocation([&] { delete reader.pParseFormAt(0); });
  laminate::test::ForEachFailingAllocation([&] { reader.vCollectFormOffsets("b", names); });
  reader.m_pDiagnostics = &diagnostics;
  laminate::test::ForEachFailingAllocation([&] { reader.nParseFile(0); });
  for (const CECadClsLvl* node : *reader.m_pRootArray) EXPECT_EQ(node->m_nLevel, 1);
  EXPECT_FALSE(reader.m_pRootArray->IsEmpty());
}

}  // namespace
