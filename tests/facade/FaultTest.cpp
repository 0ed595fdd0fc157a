// What a host sees of a whole design's load and export when a file operation or an allocation fails, whichever it is.
#include <algorithm>
#include <array>
#include <cerrno>
#include <map>

#include "base/AllocationFault.h"
#include "base/FaultyFileSystem.h"
#include "base/TestFolder.h"
#include "designdata/CVRXoutPackage.h"
#include "facade/CPC_BD_Cls_Get.h"
#include "facade/FacadeTestSupport.h"
#include "facade/WholeDesign.h"

namespace {

namespace fs = std::filesystem;
using laminate::test::AllocationFault;
using laminate::test::FaultyFileSystem;
using laminate::test::ForEachFailingAllocation;
using laminate::test::ForEachFailingFileOperation;
using laminate::test::OnlyPlatforms;
using Result = laminate::LoadStatus::Result;
using Duration = FaultyFileSystem::Duration;

constexpr std::array kEndings = {".pcf", ".ftf", ".tcf", ".pkf", ".cdf"};

class WholeDesignFaults : public laminate::test::DescriptorTest {
 protected:
  WholeDesignFaults() {
    m_sPcf = m_folder.Write("board.pcf", Numbered(kWholeBoard, 1));
    m_sFtf = m_folder.Write("board.ftf", Numbered(kWholeLibrary, 1));
    m_sSet = CString(m_folder.Path("out/set.pcf"));
    fs::create_directory(m_folder.Path("out"));
  }

  void Load(CPC_BD_Cls_Get& facade) const {
    facade.vSetFtfFilePath(m_sFtf);
    facade.vSetPcfFilePath(m_sPcf);
    facade.vParseFtfAndPcf(0);
  }
  void Export(CBDesigner& root) const {
    CVRXoutPackageArray packages;
    root.nPrint2File(m_sSet, nullptr, &packages, nullptr, nullptr, nullptr);
  }
  // Whatever happened before: a load reads everything, also over what a failed one left behind.
  void ExpectAllGoesWell() const {
    FaultyFileSystem whole;
    const laminate::FileSystemScope scope(whole);
    CPC_BD_Cls_Get facade;
    Load(facade);
    EXPECT_TRUE(facade.GetLoadStatus().IsOk()) << facade.GetLoadStatus().m_sText;
    EXPECT_EQ(Counted(*facade.pGetBDesigner()), CountedWhole(1));
    EXPECT_FALSE(fs::exists(m_folder.WorkingFolder(m_sPcf)));
  }

  // The working folder stays only where it could not be removed: a piece that cannot be read counts as empty, which
  // does not end the load.
  void ExpectFolder(const FaultyFileSystem& files) const {
    EXPECT_EQ(fs::exists(m_folder.WorkingFolder(m_sPcf)), Failed(files, "DeleteTree") || Failed(files, "RemoveFolder"));
  }
  static bool Failed(const FaultyFileSystem& files, const char* szOperation) {
    return std::count(files.Failed().begin(), files.Failed().end(), szOperation) != 0;
  }

  using Files = std::map<std::string, std::string>;
  Files Written() const {
    Files files;
    for (const auto& entry : fs::directory_iterator(m_folder.Path("out"))) {
      files[entry.path().extension()] = laminate::test::ReadFile(entry.path());
    }
    return files;
  }
  // The set that a good export writes.
  Files GoodSet() const {
    CPC_BD_Cls_Get facade;
    Load(facade);
    Export(*facade.pGetBDesigner());
    return Written();
  }
  void PutOldFiles() const {
    fs::remove_all(m_folder.Path("out"));
    fs::create_directory(m_folder.Path("out"));
    for (const char* szEnding : kEndings) m_folder.Write(std::string("out/set") + szEnding, "old");
  }
  // Files are replaced in their order, each whole; none comes beside them, unless it cannot be removed.
  void ExpectOldOrWhole(const Files& good, bool bCannotRemove = false) const {
    const Files files = Written();
    EXPECT_EQ(files.size(), kEndings.size() + (bCannotRemove ? 1 : 0));
    bool bOld = false;
    for (const char* szEnding : kEndings) {
      const std::string& sText = files.at(szEnding);
      if (sText == "old") bOld = true;
      EXPECT_EQ(sText, bOld ? "old" : good.at(szEnding)) << szEnding;
    }
  }

  TempFolder m_folder;
  CString m_sPcf;
  CString m_sFtf;
  CString m_sSet;
};

TEST_F(WholeDesignFaults, WithoutOneAllIsRead) {
  EXPECT_LE(sizeof kWholeBoard + sizeof kWholeLibrary, 10240u);
  ExpectAllGoesWell();
}

TEST_F(WholeDesignFaults, EachFileOperationOfALoad) {
  const std::string sFolder = m_folder.WorkingFolder(m_sPcf);
  for (const int nError : {EIO, ENOSPC, EMFILE}) {
    std::map<Result, int> results;
    int nLeft = 0;
    const int nFailures = ForEachFailingFileOperation(nError, [&](FaultyFileSystem& files) {
      fs::remove_all(m_folder.DataPath());
      CPC_BD_Cls_Get facade;
      Load(facade);
      const laminate::LoadStatus& status = facade.GetLoadStatus();
      const std::string sCounted = Counted(*facade.pGetBDesigner());
      if (files.HasFailed()) ++results[status.m_result];
      // What is missing is told, and what is told to be well is whole.
      EXPECT_EQ(status.IsOk(), sCounted == CountedWhole(1)) << sCounted << ": " << status.m_sText;
      if (status.IsOk()) {
        EXPECT_EQ(fs::exists(sFolder), !status.m_sText.IsEmpty());
      } else {
        EXPECT_TRUE(files.HasFailed());
        EXPECT_TRUE(status.m_sFile == m_sPcf || status.m_sFile == m_sFtf) << status.m_sFile;
        EXPECT_FALSE(status.m_sText.IsEmpty());
        EXPECT_EQ(facade.pGetBDesigner()->m_pLogFile, nullptr);
      }
      ExpectFolder(files);
      nLeft += fs::exists(sFolder) ? 1 : 0;
      ExpectAllGoesWell();
    });
    EXPECT_GT(nFailures, 80);
    EXPECT_GT(results[Result::cannotOpen], 0);
    EXPECT_GT(results[Result::cannotWriteWorkingFolder], 0);
    EXPECT_GT(results[Result::ok], 0) << "a folder that stays is no fault of the load";
    EXPECT_GT(nLeft, 3) << "later loads meet what earlier ones left";
  }
}

TEST_F(WholeDesignFaults, EachFileOperationOfALoadOfNets) {
  ForEachFailingFileOperation(EIO, [&](FaultyFileSystem& files) {
    fs::remove_all(m_folder.DataPath());
    CPC_BD_Cls_Get facade;
    const std::unique_ptr<CBDnetArray> pNets(facade.pGetNetArrayFromPcf(m_sPcf));
    ASSERT_NE(pNets, nullptr);
    if (facade.GetLoadStatus().IsOk()) {
      EXPECT_EQ(pNets->GetSize(), 2);
    }
    ExpectFolder(files);
    ExpectAllGoesWell();
  });
}

// In place of the file systems' own words, those of the status.
TEST_F(WholeDesignFaults, AFolderThatStaysIsToldByRootAndFacade) {
  const std::string sFolder = m_folder.WorkingFolder(m_sPcf);
  for (const bool bNets : {false, true}) {
    CPC_BD_Cls_Get facade;
    const auto load = [&] {
      if (bNets) {
        delete facade.pGetNetArrayFromPcf(m_sPcf);
      } else {
        Load(facade);
      }
    };
    FaultyFileSystem files(1, EIO, Duration::once);
    files.Only("DeleteTree");
    {
      const laminate::FileSystemScope scope(files);
      load();
    }
    ASSERT_TRUE(files.HasFailed());
    EXPECT_TRUE(fs::exists(sFolder));
    for (const laminate::LoadStatus& status : {facade.GetLoadStatus(), facade.pGetBDesigner()->GetLoadStatus()}) {
      EXPECT_TRUE(status.IsOk());
      EXPECT_EQ(status.m_sFile, m_sPcf);
      EXPECT_EQ(std::string(status.m_sText.View()), "cannot remove the working folder " + sFolder);
    }
    load();
    EXPECT_FALSE(fs::exists(sFolder));
    EXPECT_EQ(facade.GetLoadStatus().m_sText, "");
    EXPECT_EQ(facade.pGetBDesigner()->GetLoadStatus().m_sText, "");
  }
}

TEST_F(WholeDesignFaults, EachFileOperationOfAnExport) {
  const Files good = GoodSet();
  ASSERT_EQ(good.size(), kEndings.size());
  int nRaised = 0;
  const int nFailures = ForEachFailingFileOperation(ENOSPC, [&](FaultyFileSystem& files) {
    PutOldFiles();
    // Percent signs double with each export, so each is one of a fresh design.
    CPC_BD_Cls_Get facade;
    {
      FaultyFileSystem whole;
      const laminate::FileSystemScope scope(whole);
      Load(facade);
    }
    bool bRaised = false;
    try {
      Export(*facade.pGetBDesigner());
    } catch (const CFileException& e) {
      bRaised = true;
      EXPECT_TRUE(e.m_strFileName.starts_with(m_folder.Path("out/set."))) << e.m_strFileName;
      EXPECT_EQ(e.m_lOsError, ENOSPC);
    }
    nRaised += bRaised ? 1 : 0;
    EXPECT_EQ(bRaised, Written() != good);
    EXPECT_TRUE(!bRaised || files.HasFailed());
    ExpectOldOrWhole(good, Failed(files, "Remove"));
  });
  EXPECT_GT(nFailures, 60);
  EXPECT_GT(nRaised, 60);
  EXPECT_EQ(GoodSet(), good);
}

TEST_F(WholeDesignFaults, EachAllocationOfALoad) {
  ExpectAllGoesWell();
  std::unique_ptr<CPC_BD_Cls_Get> pFacade;
  bool bDone = false;
  const int nFailures = ForEachFailingAllocation(OnlyPlatforms([&] {
                                                   bDone = false;
                                                   pFacade.reset();
                                                   pFacade = std::make_unique<CPC_BD_Cls_Get>();
                                                   Load(*pFacade);
                                                   bDone = true;
                                                 }),
                                                 [&] {
                                                   // A failure that raised nothing was coped with or told.
                                                   EXPECT_TRUE(!bDone || !pFacade->GetLoadStatus().IsOk() ||
                                                               Counted(*pFacade->pGetBDesigner()) == CountedWhole(1));
                                                 });
  EXPECT_GT(nFailures, 40);
  fs::remove_all(m_folder.DataPath());
  ExpectAllGoesWell();
}

TEST_F(WholeDesignFaults, EachAllocationOfALoadOfNets) {
  EXPECT_GT(ForEachFailingAllocation(OnlyPlatforms([&] {
              CPC_BD_Cls_Get facade;
              delete facade.pGetNetArrayFromPcf(m_sPcf);
            })),
            20);
  ExpectAllGoesWell();
}

TEST_F(WholeDesignFaults, EachAllocationOfTheLoadsOfPartsOfALibrary) {
  CStringArray names;
  names.Add("F1");
  EXPECT_GT(ForEachFailingAllocation(OnlyPlatforms([&] {
              CBDesigner root;
              root.vParseFTFInKOTRAndGetFootprints(m_sFtf, names);
              root.vParseFTFInKOTRAndGetPadsAndPadstacks(m_sFtf);
              root.vSeparaeFTFIntoSeveralFile(m_sFtf);
              root.vSeparaePCFIntoSeveralFile(m_sPcf);
            })),
            20);
  ExpectAllGoesWell();
}

TEST_F(WholeDesignFaults, EachAllocationOfAnExport) {
  const Files good = GoodSet();
  int nFailures = 0;
  for (const auto duration : {AllocationFault::Duration::once, AllocationFault::Duration::forever}) {
    bool bFailed = true;
    for (long n = 1; bFailed; ++n) {
      PutOldFiles();
      CPC_BD_Cls_Get facade;
      Load(facade);
      {
        const AllocationFault fault(n, duration);
        try {
          OnlyPlatforms([&] { Export(*facade.pGetBDesigner()); })();
        } catch (const CMemoryException&) {
        }
        bFailed = fault.HasFailed();
      }
      nFailures += bFailed ? 1 : 0;
      ExpectOldOrWhole(good);
    }
    EXPECT_EQ(Written(), good);
  }
  EXPECT_GT(nFailures, 10);
}

}  // namespace
