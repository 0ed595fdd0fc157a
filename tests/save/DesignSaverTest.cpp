// The saver with files: what it writes, over what, and what is left when something fails.
#include "save/DesignSaver.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>

#include "base/CException.h"
#include "base/FaultyFileSystem.h"
#include "drawobj/CBDvertexArc.h"
#include "save/PreserveTestSupport.h"
#include "technology/CBDpad.h"

namespace laminate::test {

namespace {

namespace fs = std::filesystem;

constexpr char kBoard[] =
    "(pcf\n(header (version 2.0))\n(boardContainer\n(components\n(component (reference R1)\n(part A)\n)\n)\n)\n)\n";
constexpr char kFootprints[] = "// mine\n(ftf\n(footprintContainer\n(pads\n(pad P1\n(note (kept))\n)\n)\n)\n)\n";

class DesignSaving : public testing::Test {
 protected:
  DesignSaving() {
    std::string s = (fs::temp_directory_path() / "laminate-save-XXXXXX").string();
    EXPECT_NE(mkdtemp(s.data()), nullptr);
    m_folder = s;
    Write("b.pcf", kBoard);
    Write("b.ftf", kFootprints);
    EXPECT_TRUE(m_design.ReadFootprintFile(m_footprints.View()));
    EXPECT_TRUE(m_design.ReadBoardFile(m_board.View()));
  }
  ~DesignSaving() override { fs::remove_all(m_folder); }

  CString Path(const std::string& sName) const { return CString((m_folder / sName).string()); }
  void Write(const std::string& sName, const std::string& s) const {
    std::ofstream(m_folder / sName, std::ios::binary) << s;
  }
  std::string Read(const std::string& sName) const {
    std::ifstream in(m_folder / sName, std::ios::binary);
    if (!in) return "<none>";
    return {std::istreambuf_iterator<char>(in), {}};
  }
  int Files() const { return static_cast<int>(std::distance(fs::directory_iterator(m_folder), {})); }
  const OwnedDesign& Design() const { return m_design.Design(); }
  CBDcomponent& Component() { return *Design().pBoard->m_pComponentArray->GetAt(0); }
  CBDpad& Pad() { return *Design().pFootprints->m_pPadArray->GetAt(0); }

  DesignSaver Saver(const std::string& sStem) const {
    DesignSaver saver(Design().View());
    saver.SetBoardFile(Path(sStem + ".pcf"), Path("b.pcf"));
    saver.SetFootprintFile(Path(sStem + ".ftf"), Path("b.ftf"));
    return saver;
  }

 private:
  fs::path m_folder;
  HeldText m_board{std::string(kBoard)};
  HeldText m_footprints{std::string(kFootprints)};
  SourceDesign m_design;
};

TEST_F(DesignSaving, UneditedFilesAreCopied) {
  EXPECT_TRUE(Saver("out").Save());
  EXPECT_EQ(Read("out.pcf"), kBoard);
  EXPECT_EQ(Read("out.ftf"), kFootprints);
}

TEST_F(DesignSaving, ChangesOfBothFilesAreSavedOverTheSources) {
  Component().m_sPart = "B";
  Pad().m_sName = "P2";
  EXPECT_TRUE(Saver("b").Save());
  EXPECT_EQ(Read("b.pcf"), std::string(kBoard).replace(std::string(kBoard).find("(part A)"), 8, "(part B)"));
  EXPECT_EQ(Read("b.ftf"), std::string(kFootprints).replace(std::string(kFootprints).find("P1"), 2, "P2"));
  EXPECT_EQ(Files(), 2);
}

TEST_F(DesignSaving, WithoutSourcesEverythingIsWrittenAnew) {
  DesignSaver saver(Design().View());
  saver.SetBoardFile(Path("new.pcf"));
  saver.SetFootprintFile(Path("new.ftf"));
  EXPECT_TRUE(saver.Save());
  EXPECT_TRUE(ReadsAs(Read("new.pcf"), Design()));
  EXPECT_EQ(Read("new.ftf").find("note"), std::string::npos);
  EXPECT_NE(Read("new.ftf").find("(pad P1"), std::string::npos);
}

TEST_F(DesignSaving, WhatCannotBeSaidLeavesEveryFileAlone) {
  Component().m_dAngle = std::numeric_limits<double>::infinity();
  Write("out.ftf", "old");
  DesignSaver saver = Saver("out");
  EXPECT_FALSE(saver.Save());
  ASSERT_EQ(saver.Losses().Refused().size(), 1u);
  EXPECT_EQ(saver.Losses().Refused()[0].object, "m_pBoardContainer.m_pComponentArray[R1]");
  EXPECT_EQ(Read("out.pcf"), "<none>");
  EXPECT_EQ(Read("out.ftf"), "old");
  saver.AllowLoss("CBDcomponent.m_dAngle");
  EXPECT_TRUE(saver.Save());
  EXPECT_EQ(Read("out.pcf"), kBoard);
}

// A negative zero that no form says, and that is told of by no name.
TEST_F(DesignSaving, WhatDoesNotReadBackLeavesEveryFileAlone) {
  auto* const pArc = new CBDvertexArc;
  auto* const pLine = new CBDline;
  pLine->m_pVertices->Add(pArc);
  Component().m_pDrawObjArray->Add(pLine);
  EXPECT_TRUE(Saver("b").Save());
  EXPECT_TRUE(ReadsAs(Read("b.pcf"), Design()));
  const auto expectRefused = [this] {
    EXPECT_THROW(Saver("out").Save(), CInvalidArgException);
    DesignSaver saver(Design().View());
    saver.SetBoardFile(Path("out.pcf"));
    saver.SetFootprintFile(Path("out.ftf"));
    EXPECT_THROW(saver.Save(), CInvalidArgException);
    EXPECT_EQ(Files(), 2);
  };
  pArc->m_dWidth = -0.0;
  expectRefused();
  pArc->m_dWidth = 0;
  Pad().m_rcArea.width = -0.0;
  expectRefused();
  Pad().m_rcArea.width = 0;
  EXPECT_TRUE(Saver("out").Save());
}

TEST_F(DesignSaving, AFileThatCannotBeMadeLeavesTheOtherAlone) {
  Write("old.ftf", "old");
  for (const char* szBoard : {"none/b.pcf", "b.ftf/b.pcf"}) {
    DesignSaver saver = Saver("old");
    saver.SetBoardFile(Path(szBoard), Path("b.pcf"));
    EXPECT_THROW(saver.Save(), CFileException);
    EXPECT_EQ(Read("old.ftf"), "old");
  }
  EXPECT_EQ(Files(), 3);
}

TEST_F(DesignSaving, SourcesThatAreGoneOrNotWellFormedAreTold) {
  Write("b.pcf", "(pcf");
  EXPECT_THROW(Saver("out").Save(), CInvalidArgException);
  fs::remove(std::string(Path("b.pcf").View()));
  EXPECT_THROW(Saver("out").Save(), CFileException);
  EXPECT_EQ(Read("out.ftf"), "<none>");
}

// Each operation fails once: every file is what it was or what it was to be, and nothing else is left.
TEST_F(DesignSaving, EveryFileOperationMayFail) {
  Component().m_sPart = "B";
  Pad().m_sName = "P2";
  EXPECT_TRUE(Saver("wanted").Save());
  const std::string sBoard = Read("wanted.pcf");
  const std::string sFootprints = Read("wanted.ftf");
  bool bFailed = true;
  int nFailures = 0;
  for (int n = 1; bFailed; ++n) {
    Write("b.pcf", kBoard);
    Write("b.ftf", kFootprints);
    FaultyFileSystem files(n, EIO, FaultyFileSystem::Duration::once);
    bool bSaved = false;
    {
      const FileSystemScope scope(files);
      try {
        bSaved = Saver("b").Save();
      } catch (const CFileException&) {
        ++nFailures;
      }
    }
    bFailed = files.HasFailed();
    const std::string sNow = Read("b.pcf");
    const std::string sFootprintsNow = Read("b.ftf");
    EXPECT_TRUE(sNow == kBoard || sNow == sBoard) << n << ": " << sNow;
    EXPECT_TRUE(sFootprintsNow == kFootprints || sFootprintsNow == sFootprints) << n << ": " << sFootprintsNow;
    EXPECT_TRUE(!bSaved || (sNow == sBoard && sFootprintsNow == sFootprints)) << n;
    EXPECT_EQ(Files(), 4) << n;
  }
  EXPECT_GT(nFailures, 10);
}

}  // namespace

}  // namespace laminate::test
