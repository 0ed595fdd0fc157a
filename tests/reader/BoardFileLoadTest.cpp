#include "reader/BoardFileLoad.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <optional>
#include <thread>

#include "base/BKUtility.h"
#include "base/CException.h"
#include "base/FileSystem.h"
#include "base/HostInterface.h"
#include "reader/BoardFileSplitter.h"
#include "reader/CECadCls.h"
#include "reader/ReaderTestSupport.h"

namespace {

namespace fs = std::filesystem;
using laminate::LoadStatus;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

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

std::string Slurp(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}
void Spit(const fs::path& path, const std::string& text) { std::ofstream(path, std::ios::binary) << text; }

int CountDescriptors() {
  int n = 0;
  for ([[maybe_unused]] const auto& entry : fs::directory_iterator("/proc/self/fd")) ++n;
  return n;
}

// A folder of its own for each test, with a data path in it, and a load whose every step is written down.
class BoardFile : public testing::Test {
 protected:
  BoardFile() {
    std::string name = (fs::temp_directory_path() / "laminate-load-XXXXXX").string();
    m_folder = ::mkdtemp(name.data());
    BKUtility::GetInstance()->SetDataPath(CString((m_folder / "data").string()));
    m_nDescriptors = CountDescriptors();
  }
  ~BoardFile() override {
    EXPECT_EQ(CountDescriptors(), m_nDescriptors) << "no file stays open";
    BKUtility::GetInstance()->SetDataPath("");
    fs::remove_all(m_folder);
  }

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
      const std::string log = Slurp(m_folder / "log");
      std::string line;
      std::istringstream lines(log.substr(m_nLogged));
      while (std::getline(lines, line)) m_events.push_back("log " + WithoutFolder(line));
      m_nLogged = log.size();
    }
    m_events.push_back(event);
  }
  std::string WithoutFolder(std::string s) const {
    const std::string working = WorkingFolder();
    for (const std::string& folder : {working, m_folder.string()}) {
      const std::size_t n = s.find(folder);
      if (n != std::string::npos) s.replace(n, folder.size(), folder == working ? "WORK" : "TEST");
    }
    return s;
  }

  // Loads the text as a board file of the test's folder.
  void Load(const std::string& text) {
    Spit(m_path, text);
    LoadPath(m_path);
  }
  void LoadPath(const std::string& path) {
    m_path = path;
    m_events.clear();
    m_nLogged = 0;
    m_status = LoadStatus();
    if (m_bLog) m_log = std::fopen((m_folder / "log").c_str(), "w");
    Progress progress(*this);
    laminate::BoardFileLoad load{
        .sPath = CString(path),
        .pLogFile = m_log,
        .pProgress = m_bProgress ? &progress : nullptr,
        .bInQuote = m_bInQuote,
        .nComponentFileCount = m_nComponents,
        .nLayerFileCount = m_nLayers,
        .status = m_status,
        .others = [this](CECadCls* pReader) { return Others(pReader); },
        .component = [this](CECadClsLvl* pForm) { Translate("component", pForm); },
        .layer = [this](CECadClsLvl* pForm) { Translate("layer", pForm); },
    };
    try {
      laminate::LoadBoardFile(load);
    } catch (...) {
      EndLog();
      throw;
    }
    EndLog();
  }
  void EndLog() {
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
  std::string WorkingFolder() const {
    const CString sName = BKUtility::GetInstance()->GetSegmntFromFilePath(CString(m_path), 2);
    return (m_folder / "data/Data" / std::string(sName.View())).string();
  }
  bool FolderStands() const { return fs::exists(WorkingFolder()); }

  fs::path m_folder;
  std::string m_path;
  int m_nDescriptors = 0;
  bool m_bLog = true;
  bool m_bProgress = true;
  bool m_bOthersKnowsRoot = true;
  std::function<void(CECadClsLvl*)> m_onTree;
  std::function<void(int)> m_onPosition;

  std::FILE* m_log = nullptr;
  std::size_t m_nLogged = 0;
  std::vector<std::string> m_events;
  int m_bInQuote = 0;
  int m_nComponents = 0;
  int m_nLayers = 0;
  LoadStatus m_status;

  void SetUp() override { m_path = (m_folder / "board.pcf").string(); }
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
  EXPECT_TRUE(m_status.IsOk());
  EXPECT_EQ(m_nComponents, 2);
  EXPECT_EQ(m_nLayers, 2);
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
  Load(kBoard);
  EXPECT_THAT(m_events,
              ElementsAre("others {pcf[]{header[]{version[2.0]}}{boardContainer[]{nets[]}}}",
                          "component component[]{reference[R1]}", "component component[]{reference[R2]}{pin[1]}",
                          "layer layer[]{conductive[1]}", "layer layer[]{conductive[2]}{line[3]}"));
  EXPECT_FALSE(fs::exists(m_folder / "log"));
}

TEST_F(BoardFile, WithoutSections) {
  Load("(pcf\n(header\n)\n)\n");
  EXPECT_THAT(m_events, ElementsAre("log separate PCF file into several file.", "position 40",
                                    "log Parsing - WORK/others.txt", "others {pcf[]{header[]}}", "position 60",
                                    "position 80", "position 100", "log Complete PCF file Parsing", "end", "closed"));
  EXPECT_EQ(m_nComponents, 0);
}

TEST_F(BoardFile, CountsLeftStandingAskForPiecesThatAreNotThere) {
  m_nComponents = 1;
  m_nLayers = 1;
  Load("(pcf\n)\n");
  EXPECT_THAT(m_events, testing::IsSupersetOf({"log Parsing - WORK/component1.txt", "log Parsing - WORK/layer1.txt",
                                               "log Complete PCF file Parsing"}));
  EXPECT_EQ(m_nComponents, 1);
  EXPECT_TRUE(m_status.IsOk()) << "which is no fault of this file";
}

TEST_F(BoardFile, ARootThatNobodyKnows) {
  m_bOthersKnowsRoot = false;
  Load("\n" + kBoard);
  EXPECT_EQ(m_events.size(), 18u) << "the load runs on";
  EXPECT_EQ(m_status.m_result, LoadStatus::Result::notWellFormed);
  EXPECT_EQ(m_status.m_nLine, 2);
  EXPECT_EQ(m_status.m_sText, "no form of the file is the root of a board; the first is \"pcf\"");
  EXPECT_FALSE(FolderStands());
  Load("");
  EXPECT_EQ(m_status.m_result, LoadStatus::Result::notWellFormed);
  EXPECT_EQ(m_status.m_nLine, 0);
  EXPECT_EQ(m_status.m_sText, "there is no form in the file");
}

TEST_F(BoardFile, OthersOutOfBalanceEndTheLoad) {
  Load(kBoard + ")\n");
  EXPECT_THAT(m_events,
              ElementsAre("log separate PCF file into several file.", "position 40", "log Parsing - WORK/others.txt",
                          "end", "log WORK/others.txt file is not in regular format.", "closed"))
      << "the last line is not flushed";
  EXPECT_TRUE(FolderStands());
  EXPECT_TRUE(fs::exists(WorkingFolder() + "/component2.txt"));
  EXPECT_EQ(m_status.m_result, LoadStatus::Result::notWellFormed);
  EXPECT_EQ(m_status.m_sFile, CString(m_path));
  EXPECT_EQ(m_status.m_nLine, 26);
  EXPECT_EQ(m_status.m_nColumn, 1);
  EXPECT_EQ(m_status.m_sText, "there is a closing bracket too many");
  Load(kBoard);
  EXPECT_FALSE(FolderStands()) << "the next load takes the folder over";
}

TEST_F(BoardFile, OthersTooDeep) {
  BoxRecorder boxes;
  const CHostInterfaceScope host(boxes);
  Load(kBoard.substr(0, kBoard.size() - 2) + " " + std::string(20, '(') + "\n");
  EXPECT_THAT(boxes.texts, ElementsAre("Parser meet unexpected Brace Counting Number, 21 at line number 9.!"));
  EXPECT_EQ(m_status.m_nLine, 25) << "the host's line, where the box tells the piece's";
  EXPECT_EQ(m_status.m_nColumn, 21);
  EXPECT_EQ(m_status.m_sText, "forms nest deeper than 20 levels");
}

// The second component with another body; what `body` opens it closes for the split's count.
std::string BoardWith(const std::string& body) {
  std::string text = kBoard;
  const std::string old = "(component (reference R2)\n(pin 1)\n)\n";
  return text.replace(text.find(old), old.size(), body);
}

TEST_F(BoardFile, APieceThatIsPartlyUsed) {
  // A comment's bracket counts for the split and not for the reader.
  Load(BoardWith("(component (reference R2)\n// (\n))\n"));
  EXPECT_THAT(m_events, testing::IsSupersetOf({"component component[]{reference[R2]}", "layer layer[]{conductive[1]}",
                                               "log Complete PCF file Parsing"}));
  EXPECT_EQ(m_status.m_result, LoadStatus::Result::notWellFormed) << "kept as the first fault";
  EXPECT_EQ(m_status.m_sFile, CString(m_path));
  EXPECT_EQ(m_status.m_nLine, 11);
  EXPECT_EQ(m_status.m_nColumn, 2);
  EXPECT_EQ(m_status.m_sText, "there is a closing bracket too many");
  EXPECT_FALSE(FolderStands());
}

TEST_F(BoardFile, APieceWithoutAFormIsSkipped) {
  BoxRecorder boxes;
  const CHostInterfaceScope host(boxes);
  Load(BoardWith("(component (reference R2)\n// )\n"));
  EXPECT_THAT(m_events, testing::Contains("log Parsing - WORK/component2.txt"));
  EXPECT_THAT(m_events, testing::Not(testing::Contains(HasSubstr("R2"))));
  EXPECT_THAT(m_events, testing::Contains("log Complete PCF file Parsing"));
  EXPECT_THAT(boxes.texts, IsEmpty());
  EXPECT_EQ(m_status.m_nLine, 9);
  EXPECT_EQ(m_status.m_sText, "the form \"component\" is not closed");
}

TEST_F(BoardFile, APieceThatNestsTooDeep) {
  BoxRecorder boxes;
  const CHostInterfaceScope host(boxes);
  Load(BoardWith("(component (reference R2)\n" + std::string(20, '(') + std::string(20, ')') + "\n)\n"));
  EXPECT_THAT(boxes.texts, ElementsAre("Parser meet unexpected Brace Counting Number, 21 at line number 2.!"));
  EXPECT_THAT(m_events, testing::Contains("log Complete PCF file Parsing"));
  EXPECT_EQ(m_status.m_nLine, 10);
  EXPECT_EQ(m_status.m_nColumn, 20);
}

TEST_F(BoardFile, OfAPieceTheFirstFormCounts) {
  Load(BoardWith("(component (reference R2)\n) (component (reference R3))\n"));
  EXPECT_THAT(m_events, testing::Contains("component component[]{reference[R2]}"));
  EXPECT_THAT(m_events, testing::Not(testing::Contains(HasSubstr("R3"))));
  EXPECT_TRUE(m_status.IsOk());
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
    EXPECT_EQ(m_status.m_result, LoadStatus::Result::invalidContent);
    EXPECT_EQ(m_status.m_sFile, CString(m_path));
    EXPECT_EQ(m_status.m_nLine, nLine);
    EXPECT_EQ(m_status.m_sText, "no value");
    EXPECT_TRUE(FolderStands());
  }
  m_onTree = nullptr;
  Load(kBoard);
  EXPECT_TRUE(m_status.IsOk()) << "the lock is free again";
}

TEST_F(BoardFile, OtherFailuresPassThroughUntold) {
  m_onTree = [](CECadClsLvl*) { throw std::runtime_error("the host's own"); };
  EXPECT_THROW(Load(kBoard), std::runtime_error);
  EXPECT_TRUE(m_status.IsOk());
  m_onTree = nullptr;
  m_onPosition = [](int nPos) {
    if (nPos == 60) throw CInvalidArgException("the host's own", 0);
  };
  EXPECT_THROW(Load(kBoard), CInvalidArgException);
  EXPECT_TRUE(m_status.IsOk());
  EXPECT_TRUE(FolderStands());
}

// ---- sources and folders that cannot be used ----

TEST_F(BoardFile, ASourceThatCannotBeOpened) {
  m_nComponents = 3;
  m_nLayers = 4;
  const std::string path = (m_folder / "missing.pcf").string();
  LoadPath(path);
  EXPECT_THAT(m_events, ElementsAre("log separate PCF file into several file.", "end",
                                    "log TEST/missing.pcf file is not in regular format.", "closed"));
  EXPECT_EQ(m_nComponents, 0);
  EXPECT_EQ(m_nLayers, 0);
  EXPECT_FALSE(FolderStands());
  EXPECT_EQ(m_status.m_result, LoadStatus::Result::cannotOpen);
  EXPECT_EQ(m_status.m_sFile, CString(path));
}

TEST_F(BoardFile, AFolderInTheSourcesPlace) {
  fs::create_directory(m_folder / "folder.pcf");
  LoadPath((m_folder / "folder.pcf").string());
  EXPECT_EQ(m_events.size(), 4u);
  EXPECT_EQ(m_status.m_result, LoadStatus::Result::cannotOpen);
  EXPECT_FALSE(FolderStands());
}

TEST_F(BoardFile, AWorkingFolderThatCannotBeMade) {
  Spit(m_folder / "data", "a file");
  Load(kBoard);
  EXPECT_THAT(m_events, ElementsAre("log separate PCF file into several file.", "end",
                                    "log TEST/board.pcf file is not in regular format.", "closed"));
  EXPECT_EQ(m_status.m_result, LoadStatus::Result::cannotWriteWorkingFolder);
}

TEST_F(BoardFile, ALinkInTheWorkingFoldersPlaceIsNotFollowed) {
  fs::create_directories(m_folder / "data/Data");
  fs::create_directory(m_folder / "elsewhere");
  Spit(m_folder / "elsewhere/others.txt", "precious");
  const std::string folder = WorkingFolder();
  fs::create_directory_symlink(m_folder / "elsewhere", folder);
  Load(kBoard);
  EXPECT_EQ(m_status.m_result, LoadStatus::Result::cannotWriteWorkingFolder);
  EXPECT_EQ(Slurp(m_folder / "elsewhere/others.txt"), "precious");
}

TEST_F(BoardFile, ALinkInsideTheFolderIsNotFollowed) {
  const std::string folder = WorkingFolder();
  fs::create_directories(folder);
  fs::create_directory(m_folder / "elsewhere");
  Spit(m_folder / "elsewhere/precious", "precious");
  fs::create_symlink(m_folder / "elsewhere/precious", folder + "/component1.txt");
  fs::create_directory_symlink(m_folder / "elsewhere", folder + "/linked");
  Load(kBoard);
  EXPECT_TRUE(m_status.IsOk());
  EXPECT_EQ(m_events.size(), 18u);
  EXPECT_FALSE(FolderStands());
  EXPECT_EQ(Slurp(m_folder / "elsewhere/precious"), "precious");
}

TEST_F(BoardFile, HostileNames) {
  const std::string board = kBoard;
  for (const std::string name : {"..", ".pcf", "...pcf", "-rf", "a b.pcf", "a%n%s.pcf", "CON.pcf", "a\\b..\\..\\c.pcf",
                                 "C:x.pcf", "\x95\x5C.pcf", "a\nb.pcf", "x..", "*?<>|\".pcf"}) {
    const fs::path folder = m_folder / "in";
    fs::create_directories(folder);
    const std::string path = name == ".." ? (folder / ".." / "up.pcf").string() : (folder / name).string();
    Spit(path, board);
    m_path = path;
    const std::string working(laminate::BoardWorkingFolder(CString(path)).View());
    EXPECT_EQ(working, WorkingFolder());
    EXPECT_EQ(fs::path(working).parent_path(), m_folder / "data/Data") << name;
    EXPECT_EQ(fs::path(working).lexically_normal(), working) << name;
    LoadPath(path);
    EXPECT_TRUE(m_status.IsOk()) << name << ": " << m_status.m_sText.GetString();
    EXPECT_EQ(m_nComponents, 2) << name;
    EXPECT_FALSE(FolderStands()) << name;
  }
  const std::string longName = std::string(251, 'n') + ".pcf";
  Spit(m_folder / longName, board);
  LoadPath((m_folder / longName).string());
  EXPECT_TRUE(m_status.IsOk());
  LoadPath("");
  EXPECT_EQ(m_status.m_result, LoadStatus::Result::cannotOpen);
}

TEST_F(BoardFile, ASecondLoadOfTheFileAtTheSameTime) {
  std::optional<LoadStatus> second;
  int nComponents = 5;
  m_onTree = [&](CECadClsLvl*) {
    if (second.has_value()) return;
    second.emplace();
    int bInQuote = 0;
    int nLayers = 5;
    laminate::BoardFileLoad load{.sPath = CString(m_path),
                                 .bInQuote = bInQuote,
                                 .nComponentFileCount = nComponents,
                                 .nLayerFileCount = nLayers,
                                 .status = *second,
                                 .others = [](CECadCls*) { return 0; },
                                 .component = [](CECadClsLvl*) {},
                                 .layer = [](CECadClsLvl*) {}};
    laminate::LoadBoardFile(load);
  };
  Load(kBoard);
  ASSERT_TRUE(second.has_value());
  EXPECT_EQ(second->m_result, LoadStatus::Result::cannotWriteWorkingFolder);
  EXPECT_EQ(nComponents, 0);
  EXPECT_EQ(m_events.size(), 18u) << "the first load is not disturbed";
  EXPECT_TRUE(m_status.IsOk());
  EXPECT_EQ(m_nComponents, 2);
}

TEST_F(BoardFile, FilesOfOneNameInTwoFolders) {
  // 2 x 100 loads at the same time, of boards of one name that differ.
  std::vector<std::thread> threads;
  std::atomic<int> nWrong = 0;
  for (const std::string name : {"a", "b"}) {
    const fs::path folder = m_folder / name;
    fs::create_directory(folder);
    std::string text = kBoard;
    text.replace(text.find("R1"), 2, name);
    Spit(folder / "board.pcf", text);
    threads.emplace_back([folder, name, &nWrong] {
      for (int i = 0; i < 100; ++i) {
        int bInQuote = 0;
        int nComponents = 0;
        int nLayers = 0;
        LoadStatus status;
        std::string seen;
        laminate::BoardFileLoad load{.sPath = CString((folder / "board.pcf").string()),
                                     .bInQuote = bInQuote,
                                     .nComponentFileCount = nComponents,
                                     .nLayerFileCount = nLayers,
                                     .status = status,
                                     .others = [](CECadCls*) { return 0; },
                                     .component = [&](CECadClsLvl* p) { seen += Brief(*p); },
                                     .layer = [](CECadClsLvl*) {}};
        laminate::LoadBoardFile(load);
        if (!status.IsOk() || seen != "component[]{reference[" + name + "]}component[]{reference[R2]}{pin[1]}")
          ++nWrong;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(nWrong, 0);
}

TEST_F(BoardFile, OfTwoLoadsOfOneFileAtLeastOneIsWhole) {
  Spit(m_path, kBoard);
  std::atomic<int> nGood = 0;
  std::atomic<int> nWrong = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < 2; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 200; ++i) {
        int bInQuote = 0;
        int nComponents = 0;
        int nLayers = 0;
        LoadStatus status;
        int nForms = 0;
        laminate::BoardFileLoad load{.sPath = CString(m_path),
                                     .bInQuote = bInQuote,
                                     .nComponentFileCount = nComponents,
                                     .nLayerFileCount = nLayers,
                                     .status = status,
                                     .others = [&](CECadCls*) { return ++nForms, 0; },
                                     .component = [&](CECadClsLvl*) { ++nForms; },
                                     .layer = [&](CECadClsLvl*) { ++nForms; }};
        laminate::LoadBoardFile(load);
        if (status.IsOk() && nForms == 5) {
          ++nGood;
        } else if (status.m_result != LoadStatus::Result::cannotWriteWorkingFolder || nForms != 0) {
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
  EXPECT_EQ(m_bInQuote, 1);
  EXPECT_EQ(m_status.m_result, LoadStatus::Result::notWellFormed);
}

TEST_F(BoardFile, AnEmptyLogOrADiskThatIsFullDoesNotMatter) {
  m_bLog = false;
  m_log = std::fopen("/dev/full", "w");
  ASSERT_NE(m_log, nullptr);
  std::FILE* const full = m_log;
  m_log = nullptr;
  Spit(m_path, kBoard);
  laminate::BoardFileLoad load{.sPath = CString(m_path),
                               .pLogFile = full,
                               .bInQuote = m_bInQuote,
                               .nComponentFileCount = m_nComponents,
                               .nLayerFileCount = m_nLayers,
                               .status = m_status,
                               .others = [](CECadCls*) { return 0; },
                               .component = [](CECadClsLvl*) {},
                               .layer = [](CECadClsLvl*) {}};
  laminate::LoadBoardFile(load);
  std::fclose(full);
  EXPECT_TRUE(m_status.IsOk());
  EXPECT_EQ(m_nLayers, 2);
}

}  // namespace
