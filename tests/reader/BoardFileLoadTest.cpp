#include "reader/BoardFileLoad.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <functional>
#include <set>
#include <sstream>
#include <thread>

#include "base/BKUtility.h"
#include "base/CException.h"
#include "base/HostInterface.h"
#include "base/TestFolder.h"
#include "reader/BoardFileSplitter.h"
#include "reader/CECadCls.h"
#include "reader/LoadTestSupport.h"
#include "reader/ReaderTestSupport.h"

namespace {

namespace fs = std::filesystem;
using laminate::LoadStatus;
using laminate::test::ReadFile;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const std::string kBoard =
    "(pcf\n"
    "(header\n"
    "(version 2.0)\n"
    ")\n"
    "(boardContainer\n"
    "(components\n"
    "(component (reference R1)\n"
    ")\n"
    "(component (reference R2)\n"
    "(pin 1)\n"
    ")\n"
    ")\n"
    "(boardLayout\n"
    "(layout\n"
    "(layer (conductive 1)\n"
    ")\n"
    "(layer (conductive 2)\n"
    "(line 3)\n"
    ")\n"
    ")\n"
    ")\n"
    "(nets\n"
    ")\n"
    ")\n"
    ")\n";

// The second component with another body; what `body` opens it closes for the split's count.
std::string BoardWith(const std::string& body) {
  std::string text = kBoard;
  const std::string old = "(component (reference R2)\n(pin 1)\n)\n";
  return text.replace(text.find(old), old.size(), body);
}

// A data path of its own for each test, and a load whose every step is written down.
class BoardFile : public laminate::test::DescriptorTest {
 protected:
  BoardFile() : m_path(m_folder / "board.pcf") {
    BKUtility::GetInstance()->SetDataPath(CString(m_folder / "data"));
    m_root.others = [this](CECadCls* pReader) { return Others(pReader); };
    m_root.component = [this](CECadClsLvl* pForm) { Translate("component", pForm); };
    m_root.layer = [this](CECadClsLvl* pForm) { Translate("layer", pForm); };
  }
  ~BoardFile() override { BKUtility::GetInstance()->SetDataPath(""); }

  // What happens in a load, in order; log lines as far as they have been flushed.
  class Progress : public CProgressCtrl {
   public:
    explicit Progress(BoardFile& test) : m_test(test) {}
    void OnSetPos(int nPos) override {
      m_test.Note("position " + std::to_string(nPos));
      if (m_test.m_onPosition) m_test.m_onPosition(nPos);
    }

   private:
    BoardFile& m_test;
  };

  void Note(const std::string& event) {
    if (m_log != nullptr) {
      const std::string log = ReadFile(m_folder / "log");
      std::string line;
      std::istringstream lines(log.substr(m_nLogged));
      while (std::getline(lines, line)) m_events.push_back("log " + WithoutFolder(line));
      m_nLogged = log.size();
    }
    m_events.push_back(event);
  }
  std::string WithoutFolder(std::string s) const {
    const std::string working = WorkingFolder();
    for (const std::string& folder : {working, m_folder.Path()}) {
      const std::size_t n = s.find(folder);
      if (n != std::string::npos) s.replace(n, folder.size(), folder == working ? "WORK" : "TEST");
    }
    return s;
  }

  // Loads the text as a board file of the test's folder.
  void Load(const std::string& text) {
    m_folder.Write("board.pcf", text);
    LoadPath(m_folder / "board.pcf");
  }
  void LoadPath(const std::string& path) {
    m_path = path;
    m_events.clear();
    m_nLogged = 0;
    m_root.status = LoadStatus();
    Progress progress(*this);
    if (m_bProgress) m_root.pProgress = &progress;
    if (m_bLog) m_root.pLogFile = m_log = std::fopen((m_folder / "log").c_str(), "w");
    try {
      m_root.Load(CString(path));
    } catch (...) {
      EndLog();
      throw;
    }
    EndLog();
  }
  void EndLog() {
    m_root.pProgress = nullptr;
    m_root.pLogFile = nullptr;
    if (m_log == nullptr) return;
    Note("end");
    std::fclose(m_log);
    Note("closed");
    m_log = nullptr;
  }
  int Others(CECadCls* pReader) {
    Note("others " + Brief(*pReader->m_pRootArray));
    if (m_onTree) m_onTree(pReader->m_pRootArray->GetAt(0));
    if (m_bOthersKnowsRoot) return 0;
    delete pReader;
    return -1;
  }
  void Translate(const char* szKind, CECadClsLvl* pForm) {
    Note(std::string(szKind) + " " + Brief(*pForm));
    if (m_onTree) m_onTree(pForm);
  }
  static std::set<std::string> FilesIn(const std::string& folder) {
    std::set<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) names.insert(entry.path().filename());
    return names;
  }
  std::string WorkingFolder() const {
    const CString sName = BKUtility::GetInstance()->GetSegmntFromFilePath(CString(m_path), 2);
    return m_folder / ("data/Data/" + std::string(sName.View()));
  }
  bool FolderStands() const { return fs::exists(WorkingFolder()); }

  laminate::test::TestFolder m_folder;
  std::string m_path;
  bool m_bLog = true;
  bool m_bProgress = true;
  bool m_bOthersKnowsRoot = true;
  std::function<void(CECadClsLvl*)> m_onTree;
  std::function<void(int)> m_onPosition;
  LoadRoot m_root;

  std::FILE* m_log = nullptr;
  std::size_t m_nLogged = 0;
  std::vector<std::string> m_events;
};

TEST_F(BoardFile, TheStepsOfALoad) {
  Load(kBoard);
  EXPECT_THAT(m_events, ElementsAre("log separate PCF file into several file.",  //
                                    "position 40",                               //
                                    "log Parsing - WORK/others.txt",
                                    "others {pcf[]{header[]{version[2.0]}}{boardContainer[]{nets[]}}}",
                                    "log Parsing - WORK/component1.txt",     //
                                    "component component[]{reference[R1]}",  //
                                    "log Parsing - WORK/component2.txt",     //
                                    "component component[]{reference[R2]}{pin[1]}",
                                    "position 60",                    //
                                    "log Parsing - WORK/layer1.txt",  //
                                    "layer layer[]{conductive[1]}",   //
                                    "log Parsing - WORK/layer2.txt",  //
                                    "layer layer[]{conductive[2]}{line[3]}",
                                    "position 80",   //
                                    "position 100",  //
                                    "log Complete PCF file Parsing", "end", "closed"));
  EXPECT_TRUE(m_root.status.IsOk());
  EXPECT_EQ(m_root.nComponents, 2);
  EXPECT_EQ(m_root.nLayers, 2);
  EXPECT_FALSE(FolderStands());
}

TEST_F(BoardFile, TheFolderGoesBeforePosition100) {
  std::vector<std::pair<int, bool>> stood;
  m_onPosition = [&](int nPos) { stood.emplace_back(nPos, FolderStands()); };
  Load(kBoard);
  EXPECT_THAT(stood, ElementsAre(std::pair(40, true), std::pair(60, true), std::pair(80, true), std::pair(100, false)));
}

TEST_F(BoardFile, WithoutLogAndProgress) {
  m_bLog = m_bProgress = false;
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  Load(kBoard);
  EXPECT_EQ(testing::internal::GetCapturedStdout() + testing::internal::GetCapturedStderr(), "");
  EXPECT_THAT(m_events,
              ElementsAre("others {pcf[]{header[]{version[2.0]}}{boardContainer[]{nets[]}}}",
                          "component component[]{reference[R1]}", "component component[]{reference[R2]}{pin[1]}",
                          "layer layer[]{conductive[1]}", "layer layer[]{conductive[2]}{line[3]}"));
  EXPECT_THAT(FilesIn(m_folder.Path()), ElementsAre("board.pcf", "data"));
}

TEST_F(BoardFile, ItsHostMayChangeControlAndLogOnTheWay) {
  class Other : public CProgressCtrl {
   public:
    void OnSetPos(int nPos) override { positions.push_back(nPos); }
    std::vector<int> positions;
  };
  Other other;
  for (CProgressCtrl* pNext : {static_cast<CProgressCtrl*>(nullptr), static_cast<CProgressCtrl*>(&other)}) {
    m_onPosition = [&](int) {
      m_root.pProgress = pNext;
      m_root.pLogFile = nullptr;
    };
    Load(kBoard);
    EXPECT_THAT(m_events, Contains("position 40"));
    EXPECT_THAT(m_events, Not(Contains("position 60")));
    EXPECT_EQ(ReadFile(m_folder / "log"), "separate PCF file into several file.\n");
    EXPECT_TRUE(m_root.status.IsOk());
    EXPECT_FALSE(FolderStands());
  }
  EXPECT_THAT(other.positions, ElementsAre(60, 80, 100));
}

TEST_F(BoardFile, WithoutSections) {
  Load("(pcf\n(header\n)\n)\n");
  EXPECT_THAT(m_events, ElementsAre("log separate PCF file into several file.", "position 40",
                                    "log Parsing - WORK/others.txt", "others {pcf[]{header[]}}", "position 60",
                                    "position 80", "position 100", "log Complete PCF file Parsing", "end", "closed"));
  EXPECT_EQ(m_root.nComponents, 0);
}

TEST_F(BoardFile, CountsLeftStandingAskForPiecesThatAreNotThere) {
  m_root.nComponents = 1;
  m_root.nLayers = 1;
  Load("(pcf\n)\n");
  EXPECT_THAT(m_events, testing::IsSupersetOf({"log Parsing - WORK/component1.txt", "log Parsing - WORK/layer1.txt",
                                               "log Complete PCF file Parsing"}));
  EXPECT_EQ(m_root.nComponents, 1);
  EXPECT_TRUE(m_root.status.IsOk()) << "which is no fault of this file";
}

TEST_F(BoardFile, CountsLeftStandingAskForPiecesOfAnEarlierLoad) {
  for (const bool bSoundPiece : {true, false}) {
    Load(bSoundPiece ? kBoard + ")\n" : BoardWith("(component (reference R2)\n// (\n))\n") + ")\n");
    ASSERT_TRUE(FolderStands());
    // The pieces are there still; where the file has the section they are not asked for.
    Load("(pcf\n(b\n(components\n)\n)\n)\n");
    EXPECT_THAT(m_events, Not(Contains(HasSubstr("component1.txt"))));
    Load(bSoundPiece ? kBoard + ")\n" : BoardWith("(component (reference R2)\n// (\n))\n") + ")\n");
    Load("(pcf\n)\n");
    EXPECT_THAT(m_events, testing::IsSupersetOf({"component component[]{reference[R1]}",
                                                 "layer layer[]{conductive[2]}{line[3]}", "position 100"}));
    EXPECT_TRUE(m_root.status.IsOk()) << "a fault in them has no line in this file";
  }
}

TEST_F(BoardFile, ARootThatNobodyKnows) {
  m_bOthersKnowsRoot = false;
  Load("\n" + kBoard);
  EXPECT_EQ(m_events.size(), 18u) << "the load runs on";
  EXPECT_EQ(m_root.status.m_result, LoadStatus::Result::notWellFormed);
  EXPECT_EQ(m_root.status.m_nLine, 2);
  EXPECT_EQ(m_root.status.m_sText, "no form of the file is the root of a board; the first is \"pcf\"");
  EXPECT_FALSE(FolderStands());
  Load("");
  EXPECT_EQ(m_root.status.m_result, LoadStatus::Result::notWellFormed);
  EXPECT_EQ(m_root.status.m_nLine, 0);
  EXPECT_EQ(m_root.status.m_sText, "there is no form in the file");
}

TEST_F(BoardFile, OthersOutOfBalanceEndTheLoad) {
  Load(kBoard + ")\n");
  EXPECT_THAT(m_events,
              ElementsAre("log separate PCF file into several file.", "position 40", "log Parsing - WORK/others.txt",
                          "end", "log WORK/others.txt file is not in regular format.", "closed"))
      << "the last line is not flushed";
  EXPECT_TRUE(FolderStands());
  EXPECT_TRUE(fs::exists(WorkingFolder() + "/component2.txt"));
  EXPECT_EQ(m_root.status.m_result, LoadStatus::Result::notWellFormed);
  EXPECT_EQ(m_root.status.m_sFile, CString(m_path));
  EXPECT_EQ(m_root.status.m_nLine, 26);
  EXPECT_EQ(m_root.status.m_nColumn, 1);
  EXPECT_EQ(m_root.status.m_sText, "there is a closing bracket too many");
  Load(kBoard);
  EXPECT_FALSE(FolderStands()) << "the next load takes the folder over";
}

TEST_F(BoardFile, OthersTooDeep) {
  BoxRecorder boxes;
  const CHostInterfaceScope host(boxes);
  Load(kBoard.substr(0, kBoard.size() - 2) + " " + std::string(20, '(') + "\n");
  EXPECT_THAT(boxes.texts, ElementsAre("Parser meet unexpected Brace Counting Number, 21 at line number 9.!"));
  EXPECT_THAT(m_events,
              ElementsAre("log separate PCF file into several file.", "position 40", "log Parsing - WORK/others.txt",
                          "end", "log WORK/others.txt file is not in regular format.", "closed"));
  EXPECT_THAT(FilesIn(WorkingFolder()), testing::SizeIs(5));
  EXPECT_EQ(m_root.status.m_nLine, 25) << "the host's line, where the box tells the piece's";
  EXPECT_EQ(m_root.status.m_nColumn, 21);
  EXPECT_EQ(m_root.status.m_sText, "forms nest deeper than 20 levels");
}

TEST_F(BoardFile, APieceThatIsPartlyUsed) {
  // A comment's bracket counts for the split and not for the reader.
  Load(BoardWith("(component (reference R2)\n// (\n))\n"));
  EXPECT_THAT(m_events, testing::IsSupersetOf({"component component[]{reference[R2]}", "layer layer[]{conductive[1]}",
                                               "log Complete PCF file Parsing"}));
  EXPECT_EQ(m_root.status.m_result, LoadStatus::Result::notWellFormed) << "kept as the first fault";
  EXPECT_EQ(m_root.status.m_sFile, CString(m_path));
  EXPECT_EQ(m_root.status.m_nLine, 11);
  EXPECT_EQ(m_root.status.m_nColumn, 2);
  EXPECT_EQ(m_root.status.m_sText, "there is a closing bracket too many");
  EXPECT_FALSE(FolderStands());
}

TEST_F(BoardFile, APieceWithoutAFormIsSkipped) {
  BoxRecorder boxes;
  const CHostInterfaceScope host(boxes);
  Load(BoardWith("(component (reference R2)\n// )\n"));
  EXPECT_THAT(m_events, Contains("log Parsing - WORK/component2.txt"));
  EXPECT_THAT(m_events, Not(Contains(HasSubstr("R2"))));
  EXPECT_THAT(m_events, Contains("log Complete PCF file Parsing"));
  EXPECT_THAT(boxes.texts, IsEmpty());
  EXPECT_EQ(m_root.status.m_nLine, 9);
  EXPECT_EQ(m_root.status.m_sText, "the form \"component\" is not closed");
}

TEST_F(BoardFile, APieceThatNestsTooDeep) {
  BoxRecorder boxes;
  const CHostInterfaceScope host(boxes);
  Load(BoardWith("(component (reference R2)\n" + std::string(20, '(') + std::string(20, ')') + "\n)\n"));
  EXPECT_THAT(boxes.texts, ElementsAre("Parser meet unexpected Brace Counting Number, 21 at line number 2.!"));
  EXPECT_THAT(m_events, Contains("log Complete PCF file Parsing"));
  EXPECT_EQ(m_root.status.m_nLine, 10);
  EXPECT_EQ(m_root.status.m_nColumn, 20);
}

TEST_F(BoardFile, OfAPieceTheFirstFormCounts) {
  Load(BoardWith("(component (reference R2)\n) (component (reference R3))\n"));
  EXPECT_THAT(m_events, Contains("component component[]{reference[R2]}"));
  EXPECT_THAT(m_events, Not(Contains(HasSubstr("R3"))));
  EXPECT_TRUE(m_root.status.IsOk());
}

TEST_F(BoardFile, AValueThatIsMissingIsToldWithTheHostsLine) {
  for (const std::string name : {"version", "reference", "line"}) {
    m_onTree = [&](CECadClsLvl* pNode) {
      std::function<void(const CECadClsLvl&)> walk = [&](const CECadClsLvl& node) {
        if (node.m_sName == CString(name)) throw CInvalidArgException("no value", node.m_nLine);
        for (const CECadClsLvl* child : *node.m_pChildren) walk(*child);
      };
      walk(*pNode);
    };
    const int nLine = name == "version" ? 3 : name == "reference" ? 7 : 18;
    try {
      Load(kBoard);
      FAIL() << "the failure passes through";
    } catch (const CInvalidArgException& e) {
      EXPECT_EQ(e.m_nLine, nLine);
    }
    EXPECT_EQ(m_root.status.m_result, LoadStatus::Result::invalidContent);
    EXPECT_EQ(m_root.status.m_sFile, CString(m_path));
    EXPECT_EQ(m_root.status.m_nLine, nLine);
    EXPECT_EQ(m_root.status.m_sText, "no value");
    EXPECT_TRUE(FolderStands());
  }
  m_onTree = nullptr;
  Load(kBoard);
  EXPECT_TRUE(m_root.status.IsOk()) << "the lock is free again";
}

TEST_F(BoardFile, TheFirstOfTwoFaultsIsKept) {
  BoxRecorder boxes;
  const CHostInterfaceScope host(boxes);
  std::string text = BoardWith("(component (reference R2)\n// (\n))\n");
  text.replace(text.find("R1"), 2, std::string(20, '(') + std::string(20, ')'));
  Load(text);
  EXPECT_THAT(m_events, Contains("component component[]{reference[R2]}"));
  EXPECT_EQ(m_root.status.m_nLine, 7);
  EXPECT_EQ(m_root.status.m_sText, "forms nest deeper than 20 levels");
  m_onTree = [](CECadClsLvl* pNode) {
    if (pNode->m_sName == "component") throw CInvalidArgException("no value", 1);
  };
  EXPECT_THROW(Load(text), CInvalidArgException);
  EXPECT_EQ(m_root.status.m_nLine, 7);
  EXPECT_EQ(m_root.status.m_result, LoadStatus::Result::notWellFormed);
}

TEST_F(BoardFile, APieceThatIsGoneIsTold) {
  for (const std::string name : {"others.txt", "component1.txt"}) {
    m_onPosition = [&](int nPos) {
      if (nPos == 40) fs::remove(WorkingFolder() + "/" + name);
    };
    Load(kBoard);
    EXPECT_THAT(m_events, testing::IsSupersetOf({"component component[]{reference[R2]}{pin[1]}",
                                                 "layer layer[]{conductive[2]}{line[3]}", "position 100"}));
    EXPECT_EQ(m_root.status.m_result, LoadStatus::Result::cannotOpen);
    EXPECT_EQ(m_root.status.m_sFile, CString(m_path));
    EXPECT_THAT(std::string(m_root.status.m_sText.View()), testing::StartsWith(WorkingFolder() + "/" + name + ": "));
  }
}

#ifndef LAMINATE_NO_POOL
TEST_F(BoardFile, OnlyOneTreeIsInMemory) {
  // Forms are cut one behind the other, and from the beginning again when all of them are gone.
  std::string components;
  for (int i = 0; i < 50; ++i) components += "(component (reference R)\n)\n";
  std::set<const void*> first;
  m_onTree = [&](CECadClsLvl* pNode) {
    while (!pNode->m_pChildren->IsEmpty()) pNode = pNode->m_pChildren->GetAt(0);
    first.insert(pNode);
  };
  Load("(pcf\n(b\n(components\n" + components + ")\n)\n)\n");
  EXPECT_EQ(m_root.nComponents, 50);
  EXPECT_EQ(first.size(), 1u);
}
#endif

TEST_F(BoardFile, OtherFailuresPassThroughUntold) {
  m_onTree = [](CECadClsLvl*) { throw std::runtime_error("the host's own"); };
  EXPECT_THROW(Load(kBoard), std::runtime_error);
  EXPECT_TRUE(m_root.status.IsOk());
  m_onTree = nullptr;
  m_onPosition = [](int nPos) {
    if (nPos == 60) throw CInvalidArgException("the host's own", 0);
  };
  EXPECT_THROW(Load(kBoard), CInvalidArgException);
  EXPECT_TRUE(m_root.status.IsOk());
  EXPECT_TRUE(FolderStands());
}

// ---- sources and folders that cannot be used ----

TEST_F(BoardFile, ASourceThatCannotBeOpened) {
  m_root.nComponents = 3;
  m_root.nLayers = 4;
  const std::string path = m_folder / "missing.pcf";
  LoadPath(path);
  EXPECT_THAT(m_events, ElementsAre("log separate PCF file into several file.", "end",
                                    "log TEST/missing.pcf file is not in regular format.", "closed"));
  EXPECT_EQ(m_root.nComponents, 0);
  EXPECT_EQ(m_root.nLayers, 0);
  EXPECT_FALSE(FolderStands());
  EXPECT_EQ(m_root.status.m_result, LoadStatus::Result::cannotOpen);
  EXPECT_EQ(m_root.status.m_sFile, CString(path));
}

TEST_F(BoardFile, AFolderInTheSourcesPlace) {
  fs::create_directory(m_folder / "folder.pcf");
  LoadPath(m_folder / "folder.pcf");
  EXPECT_EQ(m_events.size(), 4u);
  EXPECT_EQ(m_root.status.m_result, LoadStatus::Result::cannotOpen);
  EXPECT_FALSE(FolderStands());
}

TEST_F(BoardFile, AWorkingFolderThatCannotBeMade) {
  m_folder.Write("data", "a file");
  Load(kBoard);
  EXPECT_THAT(m_events, ElementsAre("log separate PCF file into several file.", "end",
                                    "log TEST/board.pcf file is not in regular format.", "closed"));
  EXPECT_EQ(m_root.status.m_result, LoadStatus::Result::cannotWriteWorkingFolder);
}

TEST_F(BoardFile, ALinkInTheWorkingFoldersPlaceIsNotFollowed) {
  fs::create_directories(m_folder / "data/Data");
  fs::create_directory(m_folder / "elsewhere");
  m_folder.Write("elsewhere/others.txt", "precious");
  const std::string folder = WorkingFolder();
  fs::create_directory_symlink(m_folder / "elsewhere", folder);
  Load(kBoard);
  EXPECT_EQ(m_root.status.m_result, LoadStatus::Result::cannotWriteWorkingFolder);
  EXPECT_EQ(ReadFile(m_folder / "elsewhere/others.txt"), "precious");
}

TEST_F(BoardFile, ALinkInsideTheFolderIsNotFollowed) {
  const std::string folder = WorkingFolder();
  fs::create_directories(folder);
  fs::create_directory(m_folder / "elsewhere");
  m_folder.Write("elsewhere/precious", "precious");
  fs::create_symlink(m_folder / "elsewhere/precious", folder + "/component1.txt");
  fs::create_directory_symlink(m_folder / "elsewhere", folder + "/linked");
  Load(kBoard);
  EXPECT_TRUE(m_root.status.IsOk());
  EXPECT_EQ(m_events.size(), 18u);
  EXPECT_FALSE(FolderStands());
  EXPECT_EQ(ReadFile(m_folder / "elsewhere/precious"), "precious");
}

TEST_F(BoardFile, HostileNames) {
  fs::create_directory(m_folder / "in");
  for (const std::string name : {"../up.pcf", ".pcf", "...pcf", "-rf", "a b.pcf", "a%n%s.pcf", "CON.pcf",
                                 "a\\b..\\..\\c.pcf", "C:x.pcf", "\x95\x5C.pcf", "a\nb.pcf", "x..", "*?<>|\".pcf"}) {
    const std::string path = m_folder.Write("in/" + name, kBoard);
    m_path = path;
    const std::string working(laminate::BoardWorkingFolder(CString(path)).View());
    EXPECT_EQ(working, WorkingFolder());
    EXPECT_EQ(fs::path(working).parent_path(), m_folder / "data/Data") << name;
    EXPECT_EQ(fs::path(working).lexically_normal(), working) << name;
    LoadPath(path);
    EXPECT_TRUE(m_root.status.IsOk()) << name << ": " << m_root.status.m_sText.GetString();
    EXPECT_EQ(m_root.nComponents, 2) << name;
    EXPECT_FALSE(FolderStands()) << name;
    EXPECT_THAT(ReadFile(m_folder / "log"), HasSubstr("Parsing - " + working + "/others.txt\n")) << name;
  }
  LoadPath(m_folder.Write(std::string(251, 'n') + ".pcf", kBoard));
  EXPECT_TRUE(m_root.status.IsOk());
  LoadPath(m_folder / "a%n%s.pcf");
  EXPECT_THAT(m_events, Contains("log TEST/a%n%s.pcf file is not in regular format."));
  LoadPath("");
  EXPECT_EQ(m_root.status.m_result, LoadStatus::Result::cannotOpen);
}

TEST_F(BoardFile, ASecondLoadOfTheFileAtTheSameTime) {
  LoadRoot second{.nComponents = 5, .nLayers = 5};
  m_onTree = [&](CECadClsLvl*) { second.Load(CString(m_path)); };
  Load(kBoard);
  EXPECT_EQ(second.status.m_result, LoadStatus::Result::cannotWriteWorkingFolder);
  EXPECT_EQ(second.status.m_sText, "another load uses the working folder " + CString(WorkingFolder()));
  EXPECT_EQ(second.nComponents, 0);
  EXPECT_EQ(m_events.size(), 18u) << "the first load is not disturbed";
  EXPECT_TRUE(m_root.status.IsOk());
  EXPECT_EQ(m_root.nComponents, 2);
}

TEST_F(BoardFile, FilesOfOneNameInTwoFolders) {
  // 2 x 100 loads at the same time, of boards of one name that differ.
  std::vector<std::thread> threads;
  std::atomic<int> nWrong = 0;
  for (const std::string name : {"a", "b"}) {
    fs::create_directory(m_folder / name);
    std::string text = kBoard;
    text.replace(text.find("R1"), 2, name);
    threads.emplace_back([sPath = CString(m_folder.Write(name + "/board.pcf", text)), name, &nWrong] {
      for (int i = 0; i < 100; ++i) {
        std::string seen;
        LoadRoot root;
        root.component = [&](CECadClsLvl* p) { seen += Brief(*p); };
        root.Load(sPath);
        if (!root.status.IsOk() || seen != "component[]{reference[" + name + "]}component[]{reference[R2]}{pin[1]}")
          ++nWrong;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(nWrong, 0);
}

TEST_F(BoardFile, OfTwoLoadsOfOneFileAtLeastOneIsWhole) {
  const CString sPath(m_folder.Write("board.pcf", kBoard));
  std::atomic<int> nGood = 0;
  std::atomic<int> nWrong = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < 2; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 200; ++i) {
        int nForms = 0;
        LoadRoot root;
        root.others = [&](CECadCls*) { return ++nForms, 0; };
        root.component = root.layer = [&](CECadClsLvl*) { ++nForms; };
        root.Load(sPath);
        if (root.status.IsOk() && nForms == 5) {
          ++nGood;
        } else if (root.status.m_result != LoadStatus::Result::cannotWriteWorkingFolder || nForms != 0) {
          ++nWrong;
        }
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(nWrong, 0) << "a load is whole, or is refused before it begins";
  EXPECT_GE(nGood, 1);
  EXPECT_FALSE(FolderStands());
}

TEST_F(BoardFile, TheStringStateGoesOnFromLoadToLoad) {
  Load("(pcf \"");
  EXPECT_EQ(m_root.bInQuote, 1);
  EXPECT_EQ(m_root.status.m_result, LoadStatus::Result::notWellFormed);
  // No bracket counts for the split: all but the sections' opening lines goes to "others.txt".
  Load(kBoard);
  EXPECT_EQ(m_root.bInQuote, 1);
  EXPECT_EQ(m_root.nComponents, 0);
  EXPECT_THAT(FilesIn(WorkingFolder()), ElementsAre("others.txt"));
  EXPECT_EQ(m_root.status.m_sText, "there is a closing bracket too many");
  Load("(pcf\n// \"\n)\n");
  EXPECT_EQ(m_root.bInQuote, 0);
  Load(kBoard);
  EXPECT_EQ(m_events.size(), 18u);
}

TEST_F(BoardFile, ALogOnAFullDiskDoesNotMatter) {
  m_bLog = false;
  m_root.pLogFile = std::fopen("/dev/full", "w");
  ASSERT_NE(m_root.pLogFile, nullptr);
  std::FILE* const full = m_root.pLogFile;
  Load(kBoard);
  std::fclose(full);
  EXPECT_TRUE(m_root.status.IsOk());
  EXPECT_EQ(m_root.nLayers, 2);
}

}  // namespace
