#include "export/DesignExport.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>

#include "base/CException.h"
#include "base/FileSystem.h"
#include "board/CBDboardContainer.h"
#include "board/CBDcomponent.h"
#include "board/CBDlibraryEntities.h"
#include "board/CBDnet.h"
#include "board/CBDparameter.h"
#include "designdata/CVRXoutPackage.h"
#include "designdata/CVRXoutPrfFunction.h"
#include "designdata/CVRXoutPrfPart.h"
#include "designdata/CVRXoutPrfPinAssign.h"
#include "reader/CECadCls.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDtechnologyContainer.h"

namespace {

namespace fs = std::filesystem;

// A design without a root, which is a room above.
struct Design {
  CBDtechnologyContainer technology;
  CBDboardContainer board;
  CBDparameter parameter;
  CBDlibraryEntities libraryEntities;
  CBDfootprintContainer footprints;
  CVRXoutPackageArray packages;
  CVRXoutPrfPartArray parts;
  CVRXoutPrfPinAssignArray pinAssigns;
  CVRXoutPrfFunctionArray functions;

  laminate::ExportSet Set(bool bPackages = true) {
    return {&technology, &board,      &parameter, &libraryEntities, &footprints, bPackages ? &packages : nullptr,
            &parts,      &pinAssigns, &functions};
  }
  CBDnet& Net(const char* szName) {
    auto* pNet = new CBDnet;
    pNet->m_sName = szName;
    board.m_pNetArray->Add(pNet);
    return *pNet;
  }
};

class DesignExportTest : public testing::Test {
 protected:
  void SetUp() override {
    std::string sFolder = testing::TempDir() + "export-XXXXXX";
    ASSERT_NE(mkdtemp(sFolder.data()), nullptr);
    m_folder = sFolder;
  }
  void TearDown() override {
    fs::permissions(m_folder, fs::perms::owner_all, fs::perm_options::add);
    fs::remove_all(m_folder);
  }
  CString Path(const char* szName) const { return (m_folder / szName).c_str(); }
  std::string Get(const char* szName) const {
    std::ifstream in(m_folder / szName, std::ios::binary);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
  }
  void Put(const char* szName, const std::string& sText) const {
    std::ofstream(m_folder / szName, std::ios::binary) << sText;
  }
  std::set<std::string> Names() const {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(m_folder)) names.insert(entry.path().filename());
    return names;
  }

  fs::path m_folder;
  Design m_design;
};

using Names = std::set<std::string>;

constexpr char kEmptyTechnology[] =
    "(technologyContainer\n(technology \n(numberOfConductorLayer 0)\n(padstackGroup default)\n(footprintLayer\n)\n"
    "(nonConductiveLayer\n)\n(conductiveLayer\n)\n(subLayer\n)\n(layerMapping\n)\n)\n)\n";

TEST_F(DesignExportTest, WritesTheSetOfAnEmptyDesign) {
  laminate::ExportDesign(Path("board.pcf"), m_design.Set());
  EXPECT_EQ(Names(), (::Names{"board.pcf", "board.ftf", "board.tcf", "board.pkf", "board.cdf"}));
  EXPECT_EQ(Get("board.pcf"), std::string("(pcf\n(header\n(version 2.0)\n(unit MM)\n(timeZone \"\")\n)\n") +
                                  kEmptyTechnology +
                                  "(boardContainer\n(components\n)\n(nets\n)\n(boardLayout\n(layout\n)\n)\n)\n"
                                  "(parameter\n)\n(libraryEntities\n)\n)\n");
  EXPECT_EQ(Get("board.cdf"), "(Japanese_coding: sjis)\n");
  EXPECT_EQ(Get("board.pkf"), "(Japanese_coding: sjis)\n(unit mm)\n\n");
}

TEST_F(DesignExportTest, TheHeadersAreConstantsAndOnlyTheTechnologyFileHasNoUnit) {
  laminate::ExportDesign(Path("board"), m_design.Set());
  EXPECT_TRUE(Get("board.ftf").starts_with("(ftf\n(header\n(version 2.0)\n(unit MM)\n(timeZone \"\")\n)\n"));
  EXPECT_TRUE(Get("board.tcf")
                  .starts_with("(tcf\n  (header\n    (version 2.0)\n    (timeZone \"\")\n  )\n  (technologyContainer\n "
                               "   (technology\n"));
}

TEST_F(DesignExportTest, TheEndingOfThePathMakesNoDifference) {
  laminate::ExportDesign(Path("a.pcf"), m_design.Set());
  laminate::ExportDesign(Path("b"), m_design.Set());
  for (const char* szEnding : {".pcf", ".ftf", ".tcf", ".pkf", ".cdf"}) {
    EXPECT_EQ(Get((std::string("a") + szEnding).c_str()), Get((std::string("b") + szEnding).c_str())) << szEnding;
  }
}

TEST_F(DesignExportTest, AnyOtherEndingStaysPartOfTheStem) {
  laminate::ExportDesign(Path("board.PCF"), m_design.Set(false));
  EXPECT_EQ(Names(), (::Names{"board.PCF.pcf", "board.PCF.ftf", "board.PCF.tcf", "board.PCF.cdf"}));
}

TEST_F(DesignExportTest, NoPackageFileWithoutAPackageArray) {
  laminate::ExportDesign(Path("board"), m_design.Set(false));
  EXPECT_EQ(Names(), (::Names{"board.pcf", "board.ftf", "board.tcf", "board.cdf"}));
}

TEST_F(DesignExportTest, NullRecordArraysAreEmptyOnes) {
  laminate::ExportSet set = m_design.Set(false);
  set.pParts = nullptr;
  set.pPinAssigns = nullptr;
  set.pFunctions = nullptr;
  laminate::ExportDesign(Path("board"), set);
  EXPECT_EQ(Get("board.cdf"), "(Japanese_coding: sjis)\n");
}

TEST_F(DesignExportTest, NullContainersRaiseBeforeAnythingIsWritten) {
  for (int i = 0; i < 5; ++i) {
    laminate::ExportSet set = m_design.Set();
    if (i == 0) set.pTechnology = nullptr;
    if (i == 1) set.pBoard = nullptr;
    if (i == 2) set.pParameter = nullptr;
    if (i == 3) set.pLibraryEntities = nullptr;
    if (i == 4) set.pFootprints = nullptr;
    EXPECT_THROW(laminate::ExportDesign(Path("board"), set), CInvalidArgException) << i;
  }
  EXPECT_TRUE(Names().empty());
}

TEST_F(DesignExportTest, OnlyTheTechnologyAndPackageFilesAreIndented) {
  auto* pPackage = new CVRXoutPackage;
  pPackage->m_sName = "P";
  m_design.packages.Add(pPackage);
  laminate::ExportDesign(Path("board"), m_design.Set());
  EXPECT_NE(Get("board.tcf").find("\n  (header\n    (version 2.0)\n"), std::string::npos);
  EXPECT_NE(Get("board.pkf").find("(package \"P\"\n    (type )\n    (uver 1)\n)\n"), std::string::npos);
  for (const char* szName : {"board.pcf", "board.ftf", "board.cdf"}) {
    EXPECT_EQ(Get(szName).find("\n "), std::string::npos) << szName;
  }
}

TEST_F(DesignExportTest, PercentSignsInNetNamesDoubleWithEachExport) {
  CBDnet& net = m_design.Net("A%B");
  laminate::ExportDesign(Path("board"), m_design.Set());
  EXPECT_NE(Get("board.pcf").find("(net \"A%%B\"\n"), std::string::npos);
  EXPECT_EQ(net.m_sName, "A%%B");
  laminate::ExportDesign(Path("board"), m_design.Set());
  EXPECT_NE(Get("board.pcf").find("(net \"A%%%%B\"\n"), std::string::npos);
}

TEST_F(DesignExportTest, FileTextIsNeverAFormat) {
  m_design.technology.m_sName = "%n%s%s%s%s%*d%99999999d%";
  laminate::ExportDesign(Path("board"), m_design.Set());
  EXPECT_NE(Get("board.tcf").find("(technology %n%s%s%s%s%*d%99999999d%\n"), std::string::npos);
  EXPECT_NE(Get("board.pcf").find("(technology %n%s%s%s%s%*d%99999999d%\n"), std::string::npos);
}

TEST_F(DesignExportTest, TheBoardFileOfAnEmptyDesignReadsBack) {
  laminate::ExportDesign(Path("board"), m_design.Set());
  for (const char* szEnding : {"pcf", "ftf", "tcf"}) {
    CECadCls reader;
    reader.m_sFileName = Path((std::string("board.") + szEnding).c_str());
    EXPECT_EQ(reader.nParseFile(0), 0) << szEnding;
    EXPECT_NE(reader.m_pRootArray->pFindByName(szEnding), nullptr) << szEnding;
  }
}

TEST_F(DesignExportTest, ReplacesFilesAndKeepsTheirMode) {
  Put("board.pcf", "old");
  fs::permissions(m_folder / "board.pcf", fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_write);
  laminate::ExportDesign(Path("board"), m_design.Set());
  EXPECT_TRUE(Get("board.pcf").starts_with("(pcf\n"));
  EXPECT_EQ(fs::status(m_folder / "board.pcf").permissions(),
            fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_write);
}

TEST_F(DesignExportTest, FollowsALink) {
  fs::create_directory(m_folder / "elsewhere");
  Put("elsewhere/real.pcf", "old");
  fs::create_symlink("elsewhere/real.pcf", m_folder / "board.pcf");
  fs::create_symlink("elsewhere/new.ftf", m_folder / "board.ftf");  // leads to nothing yet
  laminate::ExportDesign(Path("board"), m_design.Set());
  EXPECT_TRUE(fs::is_symlink(m_folder / "board.pcf"));
  EXPECT_TRUE(Get("elsewhere/real.pcf").starts_with("(pcf\n"));
  EXPECT_TRUE(fs::is_symlink(m_folder / "board.ftf"));
  EXPECT_TRUE(Get("elsewhere/new.ftf").starts_with("(ftf\n"));
}

TEST_F(DesignExportTest, WritesWhatIsNoRegularFileInPlace) {
  fs::create_symlink("/dev/null", m_folder / "board.pcf");
  laminate::ExportDesign(Path("board"), m_design.Set());
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
  EXPECT_EQ(Names(), (::Names{"board.pcf", "board.ftf", "board.tcf", "board.pkf", "board.cdf"}));
}

TEST_F(DesignExportTest, AFolderInTheWayRaisesAndFilesBeforeItStay) {
  fs::create_directory(m_folder / "board.tcf");
  try {
    laminate::ExportDesign(Path("board"), m_design.Set());
    FAIL() << "the folder was taken for a file";
  } catch (const CFileException& e) {
    EXPECT_EQ(e.m_strFileName, Path("board.tcf").GetString());
    EXPECT_EQ(e.m_lOsError, EISDIR);
    EXPECT_EQ(e.m_cause, CFileException::accessDenied);
  }
  EXPECT_EQ(Names(), (::Names{"board.pcf", "board.ftf", "board.tcf"}));
}

TEST_F(DesignExportTest, AMissingFolderAndAnEmptyPathRaise) {
  EXPECT_THROW(laminate::ExportDesign(Path("none/board"), m_design.Set()), CFileException);
  EXPECT_TRUE(Names().empty());
}

TEST_F(DesignExportTest, AFullDeviceRaises) {
  fs::create_symlink("/dev/full", m_folder / "board.pcf");
  try {
    laminate::ExportDesign(Path("board"), m_design.Set());
    FAIL() << "a full device went unnoticed";
  } catch (const CFileException& e) {
    EXPECT_EQ(e.m_cause, CFileException::diskFull);
    EXPECT_EQ(e.m_lOsError, ENOSPC);
  }
}

// Fails one operation, or all from one on.
class FailingFileSystem : public laminate::FileSystem {
 public:
  FailingFileSystem(int nFail, bool bForEver) : m_nFail(nFail), m_bForEver(bForEver) {}
  Handle OpenForWriting(const char* sz, unsigned nMode) override {
    return Fails() ? -EIO : FileSystem::OpenForWriting(sz, nMode);
  }
  Handle CreateNew(const char* sz, unsigned nMode) override {
    return Fails() ? -ENOSPC : FileSystem::CreateNew(sz, nMode);
  }
  std::int64_t Write(Handle h, const void* p, std::size_t n) override {
    return Fails() ? -ENOSPC : FileSystem::Write(h, p, n);
  }
  int Sync(Handle h) override { return Fails() ? -EIO : FileSystem::Sync(h); }
  int Close(Handle h) override {
    const int n = FileSystem::Close(h);
    return Fails() ? -EIO : n;
  }
  int Rename(const char* szFrom, const char* szTo) override {
    return Fails() ? -EACCES : FileSystem::Rename(szFrom, szTo);
  }
  int Count() const { return m_nCount; }

 private:
  bool Fails() {
    ++m_nCount;
    return m_bForEver ? m_nCount >= m_nFail : m_nCount == m_nFail;
  }
  int m_nFail;
  bool m_bForEver;
  int m_nCount = 0;
};

TEST_F(DesignExportTest, EachFailingOperationLeavesOldFilesWholeAndNothingHalf) {
  m_design.Net("N");
  FailingFileSystem counting(0, false);
  {
    const laminate::FileSystemScope scope(counting);
    laminate::ExportDesign(Path("board"), m_design.Set());
  }
  const int nOperations = counting.Count();
  ASSERT_GT(nOperations, 20);  // five files of at least create, write, sync, close, rename
  const std::string sNew = Get("board.pcf");
  for (const bool bForEver : {false, true}) {
    for (int i = 1; i <= nOperations; ++i) {
      for (const char* szName : {"board.pcf", "board.ftf", "board.tcf", "board.pkf", "board.cdf"}) Put(szName, "old");
      FailingFileSystem failing(i, bForEver);
      {
        const laminate::FileSystemScope scope(failing);
        EXPECT_THROW(laminate::ExportDesign(Path("board"), m_design.Set()), CFileException) << i;
      }
      EXPECT_EQ(Names(), (::Names{"board.pcf", "board.ftf", "board.tcf", "board.pkf", "board.cdf"})) << i;
      bool bOld = false;
      for (const char* szName : {"board.pcf", "board.ftf", "board.tcf", "board.pkf", "board.cdf"}) {
        const std::string s = Get(szName);
        // Files are replaced in their order: once one is the old one, so are all behind it.
        if (s == "old") bOld = true;
        EXPECT_EQ(s == "old", bOld) << i << szName;
      }
      EXPECT_TRUE(bOld) << i;
    }
  }
  laminate::ExportDesign(Path("board"), m_design.Set());
  EXPECT_EQ(Get("board.pcf"), sNew);
}

}  // namespace
