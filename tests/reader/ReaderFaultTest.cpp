// What the reader, the splitters and the load do when a file operation or an allocation fails, whichever it is.
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <map>

#include "base/AllocationFault.h"
#include "base/BKUtility.h"
#include "base/CException.h"
#include "base/FaultyFileSystem.h"
#include "base/TestFolder.h"
#include "reader/BoardFileSplitter.h"
#include "reader/LoadTestSupport.h"
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

  class Progress : public CProgressCtrl {};
  struct Loaded : LoadRoot {
    Loaded() {
      nComponents = nLayers = 5;
      pProgress = &progress;
      others = [this](CECadCls*) { return ++nForms, 0; };
      component = layer = [this](CECadClsLvl*) { ++nForms; };
    }
    Progress progress;
    int nForms = 0;
  };
  // Counts are 0, no form came on, nothing was sent: as with a load that could not begin.
  static void ExpectNothing(const Loaded& loaded, LoadStatus::Result result) {
    EXPECT_EQ(loaded.status.m_result, result) << loaded.status.m_sText.GetString();
    EXPECT_EQ(loaded.nForms, 0);
    EXPECT_EQ(loaded.progress.GetPos(), 0);
    EXPECT_EQ(loaded.nComponents, 0);
    EXPECT_EQ(loaded.nLayers, 0);
  }
  // A split by itself.
  struct Split {
    Split(bool bFootprints, const CString& sPath) {
      laminate::SplitState state{bInQuote, nComponents, nLayers, status};
      bOk = bFootprints ? laminate::SplitFootprintFile(sPath, state) : laminate::SplitBoardFile(sPath, state);
    }
    int bInQuote = 0;
    int nComponents = 5;
    int nLayers = 5;
    LoadStatus status;
    bool bOk = false;
  };
  std::string WorkingFolder() const {
    return (m_folder / "data/Data/") + BKUtility::GetInstance()->GetSegmntFromFilePath(m_sBoard, 2).GetString();
  }
  bool FolderStands() const { return std::filesystem::exists(WorkingFolder()); }
  std::string DataFolder() const { return m_folder / "data"; }

  laminate::test::TestFolder m_folder;
  CString m_sBoard;
  CString m_sFootprints;
};

TEST_F(Faults, EachFileOperationOfALoad) {
  for (int nError : {EIO, ENOSPC, EACCES}) {
    int nLeft = 0;
    const int nFailures = laminate::test::ForEachFailingFileOperation(nError, [&](FaultyFileSystem& files) {
      std::filesystem::remove_all(DataFolder());
      Loaded loaded;
      loaded.Load(m_sBoard);
      if (loaded.status.IsOk()) {
        EXPECT_EQ(loaded.nForms, 4);
        EXPECT_EQ(loaded.progress.GetPos(), 100);
        EXPECT_EQ(loaded.nComponents, 2);
        // What is left behind is told.
        EXPECT_EQ(FolderStands(), !loaded.status.m_sText.IsEmpty());
      } else {
        EXPECT_EQ(loaded.status.m_sFile, m_sBoard);
        EXPECT_FALSE(loaded.status.m_sText.IsEmpty());
        EXPECT_LT(loaded.nForms, 4 + (loaded.progress.GetPos() == 100 ? 1 : 0));
        EXPECT_TRUE(loaded.progress.GetPos() == 0 || loaded.progress.GetPos() == 100);
        if (loaded.progress.GetPos() == 0) {
          EXPECT_EQ(loaded.nForms, 0);
          EXPECT_EQ(loaded.nComponents, 0);
          EXPECT_EQ(loaded.nLayers, 0);
        }
      }
      // The folder stays only where it could not be removed: a piece that cannot be read counts as empty, which does
      // not end the load.
      const auto failed = [&files](const char* szOperation) {
        return std::count(files.Failed().begin(), files.Failed().end(), szOperation) != 0;
      };
      EXPECT_EQ(FolderStands(), failed("DeleteTree") || failed("RemoveFolder"));
      nLeft += FolderStands() ? 1 : 0;
      // The next load goes over what this one left.
      FaultyFileSystem whole;
      const laminate::FileSystemScope scope(whole);
      Loaded after;
      after.Load(m_sBoard);
      EXPECT_TRUE(after.status.IsOk()) << after.status.m_sText.GetString();
      EXPECT_EQ(after.nForms, 4);
      EXPECT_FALSE(FolderStands());
    });
    EXPECT_GT(nFailures, 60);
    EXPECT_GT(nLeft, 3);
  }
}

TEST_F(Faults, AFailedSplitTakesItsFolderAway) {
  // Two components, a layer and "others.txt".
  for (const std::string operation : {"Write", "CreateNew", "Close"}) {
    int nTold = 0;
    for (int n = 1;; ++n) {
      FaultyFileSystem files(n, ENOSPC, FaultyFileSystem::Duration::once);
      files.Only(operation);
      const laminate::FileSystemScope scope(files);
      Loaded loaded;
      loaded.Load(m_sBoard);
      if (!files.HasFailed()) break;
      EXPECT_FALSE(FolderStands()) << operation << n;
      if (loaded.status.IsOk()) continue;  // the close of a file that was read
      ++nTold;
      ExpectNothing(loaded, LoadStatus::Result::cannotWriteWorkingFolder);
      EXPECT_NE(loaded.status.m_sText.Find("the disk is full"), -1) << loaded.status.m_sText.GetString();
    }
    EXPECT_EQ(nTold, 4) << operation;
  }
}

TEST_F(Faults, AFolderThatCannotBeLockedOrMadeIsNotLeftBehind) {
  struct Row {
    const char* operation;
    int error;
    const char* text;
  };
  for (const Row& row : {Row{"LockFolder", EMFILE, "cannot use the working folder "},
                         Row{"MakeFolder", EROFS, "cannot make the working folder "},
                         Row{"LockFolder", EWOULDBLOCK, "another load uses the working folder "}}) {
    FaultyFileSystem files(1, row.error, FaultyFileSystem::Duration::forever);
    files.Only(row.operation);
    const laminate::FileSystemScope scope(files);
    Loaded loaded;
    loaded.Load(m_sBoard);
    ExpectNothing(loaded, LoadStatus::Result::cannotWriteWorkingFolder);
    EXPECT_EQ(loaded.status.m_sText.Find(row.text), 0) << loaded.status.m_sText.GetString();
    EXPECT_EQ(FolderStands(), row.error == EWOULDBLOCK) << "another load's folder is left alone";
  }
  std::filesystem::remove_all(DataFolder());
  m_folder.Write("data", "");
  Loaded loaded;
  loaded.Load(m_sBoard);
  EXPECT_EQ(loaded.status.m_sText.Find("cannot make the data folder "), 0) << loaded.status.m_sText.GetString();
  EXPECT_NE(loaded.status.m_sText.Find("(Not a directory)"), -1) << loaded.status.m_sText.GetString();
}

TEST_F(Faults, WhatStandsInAPiecesPlace) {
  std::filesystem::create_directories(WorkingFolder() + "/component1.txt");
  const Split board(false, m_sBoard);
  EXPECT_EQ(board.status.m_result, LoadStatus::Result::cannotWriteWorkingFolder);
  EXPECT_EQ(board.status.m_sText.Find("cannot create " + CString(WorkingFolder()) + "/component1.txt"), 0)
      << board.status.m_sText.GetString();
  const std::string target = m_folder.Write("target", "precious");
  std::filesystem::create_directories(DataFolder() + "/Data/Tmp");
  std::filesystem::create_symlink(target, DataFolder() + "/Data/Tmp/PadStack1.txt");
  const Split footprints(true, m_sFootprints);
  EXPECT_TRUE(footprints.bOk);
  EXPECT_EQ(laminate::test::ReadFile(target), "precious") << "a link is replaced";
  EXPECT_EQ(laminate::test::ReadFile(DataFolder() + "/Data/Tmp/PadStack1.txt"), "(padstack (a)\n)\n");
}

TEST_F(Faults, AReadErrorBehindTheFirstBlock) {
  std::string text = kBoard;
  text.insert(text.find("(b\n"), std::string(300000, '\n'));
  m_folder.Write("board.pcf", text);
  m_folder.Write("lib.ftf", text);
  const std::string log = m_folder / "log";
  for (int n : {1, 2}) {
    FaultyFileSystem files(n, EIO, FaultyFileSystem::Duration::once);
    files.Only("Read");
    Loaded loaded;
    loaded.pLogFile = std::fopen(log.c_str(), "w");
    {
      const laminate::FileSystemScope scope(files);
      loaded.Load(m_sBoard);
    }
    std::fclose(loaded.pLogFile);
    ExpectNothing(loaded, LoadStatus::Result::cannotOpen);
    EXPECT_EQ(loaded.status.m_sFile, m_sBoard);
    EXPECT_FALSE(FolderStands());
    EXPECT_EQ(laminate::test::ReadFile(log), "separate PCF file into several file.\n" + std::string(m_sBoard.View()) +
                                                 " file is not in regular format.\n");
    FaultyFileSystem again(n, EIO, FaultyFileSystem::Duration::once);
    again.Only("Read");
    const laminate::FileSystemScope scope(again);
    Split split(true, m_sFootprints);
    EXPECT_FALSE(split.bOk);
    EXPECT_EQ(split.status.m_result, LoadStatus::Result::cannotOpen);
  }
}

TEST_F(Faults, AWorkingFolderThatCannotBeRemovedIsToldByTheWay) {
  FaultyFileSystem files(1, EACCES, FaultyFileSystem::Duration::once);
  files.Only("DeleteTree");
  Loaded loaded;
  {
    const laminate::FileSystemScope scope(files);
    loaded.Load(m_sBoard);
  }
  EXPECT_TRUE(loaded.status.IsOk());
  EXPECT_EQ(loaded.status.m_sText, "cannot remove the working folder " + CString(WorkingFolder()));
  EXPECT_EQ(loaded.status.m_sFile, m_sBoard);
  EXPECT_EQ(loaded.nForms, 4);
  EXPECT_EQ(loaded.progress.GetPos(), 100);
  Loaded after;
  after.Load(m_sBoard);
  EXPECT_TRUE(after.status.IsOk());
  EXPECT_TRUE(after.status.m_sText.IsEmpty());
  EXPECT_FALSE(FolderStands());
}

TEST_F(Faults, ShortReadsAndWrites) {
  FaultyFileSystem files;
  files.LimitTransfers(1);
  const laminate::FileSystemScope scope(files);
  Loaded loaded;
  loaded.Load(m_sBoard);
  EXPECT_TRUE(loaded.status.IsOk());
  EXPECT_EQ(loaded.nForms, 4);
}

TEST_F(Faults, EachFileOperationOfTheSplitters) {
  for (bool bFootprints : {false, true}) {
    const std::string folder = bFootprints ? DataFolder() + "/Data/Tmp" : WorkingFolder();
    const std::map<std::string, std::string> pieces =
        bFootprints ? std::map<std::string, std::string>{{"PadStack1.txt", "(padstack (a)\n)\n"},
                                                         {"PadStack2.txt", "(padstack (b)\n)\n"},
                                                         {"Footprint1.txt", "(footprint (c)\n)\n"}}
                    : std::map<std::string, std::string>{{"component2.txt", "(component (x)\n)\n"},
                                                         {"layer1.txt", "(layer (y)\n)\n"},
                                                         {"others.txt", "(pcf\n(header\n)\n(b\n)\n)\n"}};
    const int nFailures = laminate::test::ForEachFailingFileOperation(ENOSPC, [&](FaultyFileSystem& files) {
      std::filesystem::remove_all(DataFolder());
      const Split split(bFootprints, bFootprints ? m_sFootprints : m_sBoard);
      EXPECT_EQ(split.bOk, split.status.IsOk());
      if (split.bOk) {
        for (const auto& [name, text] : pieces) EXPECT_EQ(laminate::test::ReadFile(folder + "/" + name), text);
        return;
      }
      const std::string& failed = files.Operations()[files.FirstFailed() - 1];
      EXPECT_EQ(split.status.m_result, failed == "OpenForReading" || failed == "Read"
                                           ? LoadStatus::Result::cannotOpen
                                           : LoadStatus::Result::cannotWriteWorkingFolder)
          << failed;
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
  int nForms = 0;
  bool bRaised = false;
  bool bOk = false;
  const int nFailures = laminate::test::ForEachFailingAllocation(
      [&] {
        bRaised = true;
        nForms = 0;
        Loaded loaded;
        try {
          loaded.Load(m_sBoard);
        } catch (const CMemoryException&) {
          throw;
        } catch (const std::bad_alloc&) {
          ADD_FAILURE() << "not the platform's failure";
        }
        bRaised = false;
        nForms = loaded.nForms;
        bOk = loaded.status.IsOk();
      },
      [&] { EXPECT_TRUE(bRaised || nForms == 4 || !bOk); });
  EXPECT_GT(nFailures, 20);
  Loaded loaded;
  loaded.Load(m_sBoard);
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
  // A parse that failed adds nothing: the file's two forms come together, and the named one once.
  const auto parseFile = [&] { reader.nParseFile(0); };
  const auto pairs = [&] { EXPECT_EQ(reader.m_pRootArray->GetSize() % 2, 0); };
  EXPECT_GT(laminate::test::ForEachFailingAllocation(parseFile, pairs), 5);
  INT_PTR nRoots = reader.m_pRootArray->GetSize();
  EXPECT_EQ(nRoots, 2 * 2) << "of the two parses in which nothing failed";
  laminate::test::ForEachFailingAllocation([&] { reader.nParseNamedForm("c"); },
                                           [&] { EXPECT_LE(reader.m_pRootArray->GetSize(), nRoots + 1); });
  reader.m_pRootArray->DeleteAll();
  laminate::test::ForEachFailingAllocation([&] { delete reader.pParseFormAt(0); });
  laminate::test::ForEachFailingAllocation([&] { reader.vCollectFormOffsets("b", names); });
  reader.m_pDiagnostics = &diagnostics;
  laminate::test::ForEachFailingAllocation(parseFile, pairs);
  for (const CECadClsLvl* node : *reader.m_pRootArray) EXPECT_EQ(node->m_nLevel, 1);
  EXPECT_FALSE(reader.m_pRootArray->IsEmpty());
}

}  // namespace
