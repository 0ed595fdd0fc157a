#include "base/BKUtility.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <mutex>
#include <random>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "base/DataFolder.h"
#include "base/FaultyFileSystem.h"
#include "base/TestFolder.h"

using namespace std::string_view_literals;
using laminate::DataFolder;
using laminate::FileSystemScope;
using laminate::test::FaultyFileSystem;
using laminate::test::TestFolder;

namespace {

BKUtility& Utility() { return *BKUtility::GetInstance(); }
std::string Text(const CString& s) { return std::string(s.View()); }
bool IsThere(const std::string& path) {
  struct stat info;
  return ::lstat(path.c_str(), &info) == 0;
}
std::vector<std::string> NamesIn(const std::string& path) {
  std::vector<std::string> names;
  EXPECT_EQ(laminate::TheFileSystem().ListFolder(path.c_str(), names), 0);
  std::sort(names.begin(), names.end());
  return names;
}
// Runs `run` in a child process and gives its exit status.
template <class Run>
int InChild(Run run) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(run());
  int nStatus = -1;
  EXPECT_EQ(::waitpid(child, &nStatus, 0), child);
  return WIFEXITED(nStatus) ? WEXITSTATUS(nStatus) : -1;
}

// The process's own folder is made before the descriptors are counted: its lock stays open.
class BKUtilityTest : public laminate::test::DescriptorTest {
 protected:
  void SetUp() override {
    Utility().GetDataPath();
    DescriptorTest::SetUp();
  }
  void TearDown() override {
    Utility().SetDataPath("");
    DescriptorTest::TearDown();
  }
  TestFolder m_folder;
};

TEST_F(BKUtilityTest, IsOneObject) {
  ASSERT_NE(BKUtility::GetInstance(), nullptr);
  EXPECT_EQ(BKUtility::GetInstance(), BKUtility::GetInstance());
}

TEST_F(BKUtilityTest, CombinesPaths) {
  struct Row {
    const char *szPath, *szMore, *szExpected;
  };
  for (const Row& row : {Row{"/a", "b", "/a/b"},
                         {"/a/", "b", "/a/b"},
                         {"/a//", "b", "/a/b"},
                         {"/a", "/b", "/a/b"},
                         {"/a", "//b", "/a/b"},
                         {"/a", "\\b", "/a/b"},
                         {"/a", "\\/\\b", "/a/b"},
                         {"/a", "Data\\Tmp", "/a/Data/Tmp"},
                         {"/a", "\\component1.txt", "/a/component1.txt"},
                         {"/a\\b", "c", "/a\\b/c"},  // in the first part a backslash is part of a name
                         {"/a\\", "c", "/a\\/c"},
                         {"/", "b", "/b"},
                         {"", "b", "b"},
                         {"", "/b", "b"},
                         {"/a", "", "/a"},
                         {"/a/", "", "/a/"},
                         {"/a", "\\", "/a"},
                         {"/a", "b/", "/a/b/"},
                         {"/a", "b\\\\c", "/a/b//c"},
                         {"/a", "b c%s", "/a/b c%s"},
                         {"", "", ""}}) {
    EXPECT_EQ(Text(Utility().BKPathCombine(row.szPath, row.szMore)), row.szExpected);
    EXPECT_EQ(Text(Utility().BKPathCombine(row.szPath, row.szMore, "file.cpp", 12)), row.szExpected);
  }
}

TEST_F(BKUtilityTest, MakesNamesFitForFolders) {
  struct Row {
    std::string_view text, expected;
  };
  for (const Row& row : {Row{"", ""},
                         {"plain name.1-2_3", "plain name.1-2_3"},
                         {"\\/:*?\"<>|", "_________"},
                         {"a/b", "a_b"},
                         {"\x01\t\n\x1F \x7F\x80\xFF", "____ \x7F\x80\xFF"},
                         {"a\0b"sv, "a_b"},
                         {"..", ".."},
                         {"\x95\x5C", "\x95_"},
                         {"a text of more than sixteen bytes: yes?", "a text of more than sixteen bytes_ yes_"}}) {
    CString s(row.text);
    const CString shared(s);
    Utility().ConvertStringForVaildFolderName(s);
    EXPECT_EQ(Text(s), row.expected);
    EXPECT_EQ(Text(shared), row.text);
  }
}

TEST_F(BKUtilityTest, GivesThePieceOfAPath) {
  const auto segment = [](std::string_view path) { return Text(Utility().GetSegmntFromFilePath(CString(path), 2)); };
  // The name, "_", and sixteen digits that do not depend on the machine or the day.
  EXPECT_EQ(segment("/designs/board.pcf"), "board_1862559241d1bda1");
  EXPECT_EQ(segment("/designs/board.pcf"), segment("/designs/board.pcf"));
  EXPECT_EQ(segment("/designs/./board.pcf"), segment("/designs/board.pcf"));
  EXPECT_EQ(segment("//designs//board.pcf"), segment("/designs/board.pcf"));
  EXPECT_NE(segment("/designs/board.pcf"), segment("/other/board.pcf"));
  EXPECT_NE(segment("/designs/board.pcf"), segment("/designs/board.ftf"));
  EXPECT_NE(segment("/designs/a/../board.pcf"), segment("/designs/board.pcf"))
      << "what \"..\" leads to depends on links";
  const std::string name(segment("/designs/board.pcf"));
  char szCurrent[4096];
  ASSERT_NE(::getcwd(szCurrent, sizeof szCurrent), nullptr);
  EXPECT_EQ(segment("board.pcf"), segment(std::string(szCurrent) + "/board.pcf"));
  EXPECT_EQ(segment("./board.pcf"), segment("board.pcf"));

  struct Row {
    std::string path;
    std::string stem;
  };
  for (const Row& row : {Row{"/d/a.b.pcf", "a.b"},
                         {"/d/noextension", "noextension"},
                         {"/d.e/noextension", "noextension"},
                         {"/d/.hidden", ""},
                         {"/d/a.", "a"},
                         {"/d/a:b?.pcf", "a_b_"},
                         {"/d/a\\b.pcf", "a_b"},
                         {"C:\\designs\\board.pcf", "C__designs_board"},
                         {"", ""},
                         {"/", ""},
                         {"/d/", ""},
                         {".", ""},
                         {"..", "."},
                         {"/d/..", "."},
                         {"a/../../b", "b"},
                         {"-rf", "-rf"},
                         {"/d/...", ".."},
                         {"CON", "CON"},
                         {"/d/\xFF\xFE.pcf", "\xFF\xFE"},
                         {"/d/" + std::string(199, 'x') + ".pcf", std::string(199, 'x')},
                         {"/d/" + std::string(200, 'x') + ".pcf", std::string(200, 'x')},
                         {"/d/" + std::string(201, 'x') + ".pcf", std::string(200, 'x')},
                         {"/d/" + std::string(4096, 'x'), std::string(200, 'x')}}) {
    const std::string s = segment(row.path);
    ASSERT_EQ(s.size(), row.stem.size() + 17) << row.path;
    EXPECT_EQ(s.substr(0, row.stem.size()), row.stem);
    EXPECT_EQ(s[row.stem.size()], '_');
    EXPECT_EQ(s.find_first_not_of("0123456789abcdef", row.stem.size() + 1), std::string::npos) << s;
  }
  for (const int nMode : {-1, 0, 1, 3}) {
    EXPECT_THROW(Utility().GetSegmntFromFilePath("/d/a.pcf", nMode), CInvalidArgException);
  }
}

TEST_F(BKUtilityTest, LetsNoNameLeadOut) {
  std::mt19937 random(23);
  const std::string base = Text(Utility().GetDataPath());
  for (int i = 0; i < 3000; ++i) {
    std::string path(random() % 40, ' ');
    for (char& ch : path) ch = "./\\:.. \0\n\xFFx-"[random() % 12];
    if (i % 50 == 0) path += std::string(5000, '.');
    const CString sSegment = Utility().GetSegmntFromFilePath(CString(path), 2);
    ASSERT_EQ(sSegment.View().find_first_of("/\\\0"sv), std::string_view::npos);
    ASSERT_NE(sSegment, ".");
    ASSERT_NE(sSegment, "..");
    ASSERT_LE(sSegment.GetLength(), 217);
    const CString sFolder = Utility().BKPathCombine(Utility().GetDataPath(), "Data\\" + sSegment);
    if (i % 20 != 0) continue;
    ASSERT_TRUE(Utility().MakeDirectory(sFolder)) << Text(sFolder);
    ASSERT_EQ(std::filesystem::canonical(Text(sFolder)).parent_path(), std::filesystem::canonical(base) / "Data");
    ASSERT_TRUE(Utility().DeleteDirectory(sFolder));
  }
  EXPECT_TRUE(Utility().DeleteDirectory(Utility().BKPathCombine(Utility().GetDataPath(), "Data")));
}

TEST_F(BKUtilityTest, MakesAndDeletesDirectories) {
  const std::string path = m_folder / "a/b/c";
  EXPECT_FALSE(Utility().DoesFileOrDirExist(path.c_str()));
  EXPECT_TRUE(Utility().MakeDirectory(path.c_str()));
  EXPECT_TRUE(Utility().DoesFileOrDirExist(path.c_str()));
  EXPECT_TRUE(Utility().DoesFileOrDirExist(path.c_str(), "file.cpp", 3));
  EXPECT_TRUE(Utility().MakeDirectory(path.c_str())) << "one that exists is accepted";
  EXPECT_TRUE(Utility().MakeDirectory((m_folder / "d//e///").c_str()));
  EXPECT_TRUE(IsThere(m_folder / "d/e"));
  EXPECT_TRUE(Utility().MakeDirectory("/"));
  EXPECT_FALSE(Utility().MakeDirectory(""));
  m_folder.Write("file", "x");
  EXPECT_FALSE(Utility().MakeDirectory((m_folder / "file").c_str())) << "a file in its place";
  EXPECT_FALSE(Utility().MakeDirectory((m_folder / "file/x").c_str()));
  ASSERT_EQ(::symlink("nowhere", (m_folder / "dangling").c_str()), 0);
  EXPECT_FALSE(Utility().MakeDirectory((m_folder / "dangling").c_str()));
  EXPECT_FALSE(Utility().MakeDirectory("/proc/no/folder"));
  EXPECT_TRUE(Utility().DeleteDirectory((m_folder / "a").c_str()));
  EXPECT_FALSE(IsThere(m_folder / "a"));
  EXPECT_TRUE(Utility().DeleteDirectory((m_folder / "a").c_str())) << "an absent one is none";
  EXPECT_FALSE(Utility().DeleteDirectory("/proc/self"));
  // Relative, below the current folder.
  char szCurrent[4096];
  ASSERT_NE(::getcwd(szCurrent, sizeof szCurrent), nullptr);
  ASSERT_EQ(::chdir(m_folder.Path().c_str()), 0);
  EXPECT_TRUE(Utility().MakeDirectory("r/s"));
  EXPECT_TRUE(IsThere(m_folder / "r/s"));
  EXPECT_TRUE(Utility().DeleteDirectory("r"));
  ASSERT_EQ(::chdir(szCurrent), 0);
}

TEST_F(BKUtilityTest, FollowsNoPlantedLink) {
  const std::string outside = m_folder / "outside";
  ASSERT_TRUE(Utility().MakeDirectory(outside.c_str()));
  m_folder.Write("outside/precious", "x");
  const std::string working = m_folder / "working";
  ASSERT_EQ(::symlink(outside.c_str(), working.c_str()), 0);
  EXPECT_TRUE(Utility().DeleteDirectory(working.c_str()));
  EXPECT_FALSE(IsThere(working));
  EXPECT_TRUE(Utility().MakeDirectory(working.c_str()));
  ASSERT_EQ(::symlink(outside.c_str(), (working + "/link").c_str()), 0);
  EXPECT_TRUE(Utility().DeleteDirectory(working.c_str()));
  EXPECT_EQ(laminate::test::ReadFile(outside + "/precious"), "x");
}

TEST_F(BKUtilityTest, TellsWhatFailed) {
  const std::string path = m_folder / "x/y";
  laminate::test::ForEachFailingFileOperation(ENOSPC, [&](FaultyFileSystem& files) {
    const bool bMade = Utility().MakeDirectory(path.c_str());
    // Only what the folder itself needs may fail the whole.
    EXPECT_EQ(bMade, IsThere(path) && !(files.HasFailed() && files.Operations().back() == "FolderExists"));
    const bool bDeleted = Utility().DeleteDirectory((m_folder / "x").c_str());
    EXPECT_TRUE(!bDeleted || !IsThere(m_folder / "x"));
    EXPECT_TRUE(bDeleted || files.Operations().back() == "DeleteTree");
    laminate::FileSystem real;
    real.DeleteTree((m_folder / "x").c_str());
  });
}

TEST_F(BKUtilityTest, HasADataPathOfTheProcess) {
  const std::string path = Text(Utility().GetDataPath());
  EXPECT_EQ(Text(Utility().GetDataPath()), path);
  struct stat info;
  ASSERT_EQ(::lstat(path.c_str(), &info), 0);
  EXPECT_TRUE(S_ISDIR(info.st_mode));
  EXPECT_EQ(info.st_mode & 07777, 0700u) << "for its owner only";
  EXPECT_EQ(info.st_uid, ::geteuid());
  laminate::FileSystem::Volume volume;
  if (laminate::TheFileSystem().DescribeVolume("/dev/shm", volume) == 0 && volume.bInMemory &&
      volume.nFreeBytes >= (std::uint64_t{1} << 30)) {
    EXPECT_TRUE(path.starts_with("/dev/shm/")) << path;
  } else {
    EXPECT_TRUE(path.starts_with("/tmp/")) << path;
  }
  EXPECT_EQ(laminate::TheFileSystem().LockFolder(path.c_str()), -EWOULDBLOCK)
      << "the lock tells that the process lives";
  std::set<std::string> seen;
  std::mutex guard;
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&] {
      const std::lock_guard lock(guard);
      seen.insert(Text(Utility().GetDataPath()));
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(seen, std::set<std::string>{path});
}

TEST_F(BKUtilityTest, GivesAForkedChildItsOwn) {
  const std::string path = Text(Utility().GetDataPath());
  m_folder.Write("child", "");
  const pid_t child = ::fork();
  if (child == 0) {
    const std::string own = Text(Utility().GetDataPath());
    if (own == path || !IsThere(own) || !IsThere(path)) ::_exit(1);
    m_folder.Write("child", own);
    std::exit(0);  // the way on which a process ends orderly
  }
  int nStatus = 0;
  ASSERT_EQ(::waitpid(child, &nStatus, 0), child);
  EXPECT_EQ(nStatus, 0);
  EXPECT_TRUE(IsThere(path)) << "the child left its parent's folder alone";
  EXPECT_FALSE(IsThere(laminate::test::ReadFile(m_folder / "child"))) << "and took its own along";
  // A child that never asks for one.
  EXPECT_EQ(InChild([]() -> int { std::exit(0); }), 0);
  EXPECT_TRUE(IsThere(path));
}

TEST_F(BKUtilityTest, TakesAFolderOfTheHost) {
  const std::string chosen = m_folder / "chosen/deep";
  Utility().SetDataPath(chosen.c_str());
  EXPECT_FALSE(IsThere(chosen)) << "it is made when it is needed";
  EXPECT_EQ(Text(Utility().GetDataPath()), chosen);
  EXPECT_TRUE(IsThere(chosen));
  EXPECT_EQ(InChild([&]() -> int { std::exit(Text(Utility().GetDataPath()) == chosen ? 0 : 1); }), 0);
  EXPECT_TRUE(IsThere(chosen)) << "and never removed";
  m_folder.Write("file", "x");
  Utility().SetDataPath((m_folder / "file").c_str());
  EXPECT_THROW(Utility().GetDataPath(), CFileException);
  Utility().SetDataPath("");
  EXPECT_NE(Text(Utility().GetDataPath()), chosen);
  char szCurrent[4096];
  ASSERT_NE(::getcwd(szCurrent, sizeof szCurrent), nullptr);
  ASSERT_EQ(::chdir(m_folder.Path().c_str()), 0);
  Utility().SetDataPath("relative");
  ASSERT_EQ(::chdir(szCurrent), 0);
  EXPECT_EQ(Text(Utility().GetDataPath()), std::filesystem::canonical(m_folder.Path()).string() + "/relative")
      << "the current folder may change later";
  EXPECT_TRUE(IsThere(m_folder / "relative"));
}

class DataFolderTest : public laminate::test::DescriptorTest {
 protected:
  std::vector<DataFolder::Place> Places() const { return {{m_folder.Path(), false, 0}}; }
  // A process that makes a folder with something in it and is killed.
  std::string LeaveBehind() {
    const std::string note = m_folder / "note";
    const pid_t child = ::fork();
    if (child == 0) {
      const DataFolder folder(Places());
      ::mkdir((folder.Path() + "/Data").c_str(), 0700);
      std::ofstream(folder.Path() + "/Data/others.txt") << "text";
      std::ofstream(note) << folder.Path();
      ::kill(::getpid(), SIGKILL);
    }
    int nStatus = 0;
    EXPECT_EQ(::waitpid(child, &nStatus, 0), child);
    EXPECT_TRUE(WIFSIGNALED(nStatus));
    const std::string path = laminate::test::ReadFile(note);
    ::unlink(note.c_str());
    EXPECT_TRUE(IsThere(path + "/Data/others.txt"));
    return path;
  }
  TestFolder m_folder;
};

TEST_F(DataFolderTest, IsMadeAndRemoved) {
  std::string path;
  {
    const DataFolder folder(Places());
    path = folder.Path();
    EXPECT_TRUE(folder.IsOwn());
    EXPECT_TRUE(path.starts_with(m_folder.Path() + "/laminate-" + std::to_string(::geteuid()) + "-")) << path;
    std::filesystem::create_directories(path + "/Data/deep");
    m_folder.Write(path.substr(m_folder.Path().size() + 1) + "/Data/f", "x");
    const DataFolder second(Places());
    EXPECT_NE(second.Path(), path);
    EXPECT_TRUE(IsThere(path + "/Data/f")) << "the folder of a living process";
  }
  EXPECT_FALSE(IsThere(path));
  EXPECT_TRUE(NamesIn(m_folder.Path()).empty());
}

TEST_F(DataFolderTest, RemovesWhatAKilledProcessLeft) {
  const std::string left = LeaveBehind();
  const DataFolder living(Places());
  EXPECT_FALSE(IsThere(left));
  EXPECT_TRUE(IsThere(living.Path()));
}

TEST_F(DataFolderTest, LeavesWhatIsNotALeftover) {
  const std::string prefix = m_folder / ("laminate-" + std::to_string(::geteuid()) + "-");
  std::filesystem::create_directories(m_folder / "outside");
  m_folder.Write("outside/precious", "x");
  ASSERT_EQ(::symlink((m_folder / "outside").c_str(), (prefix + "link").c_str()), 0);
  m_folder.Write(("laminate-" + std::to_string(::geteuid()) + "-file"), "x");
  std::filesystem::create_directories(m_folder / "laminate-99999-other");
  std::filesystem::create_directories(m_folder / "laminate");
  std::filesystem::create_directories(prefix + "foreign");
  if (::geteuid() == 0) {
    ASSERT_EQ(::chown((prefix + "foreign").c_str(), 12345, 12345), 0);
  }
  { const DataFolder folder(Places()); }
  EXPECT_EQ(laminate::test::ReadFile(m_folder / "outside/precious"), "x");
  EXPECT_TRUE(IsThere(prefix + "link")) << "a link proves nothing";
  EXPECT_TRUE(IsThere(prefix + "file"));
  EXPECT_TRUE(IsThere(m_folder / "laminate-99999-other"));
  EXPECT_TRUE(IsThere(m_folder / "laminate"));
  EXPECT_EQ(IsThere(prefix + "foreign"), ::geteuid() == 0) << "another user's is left alone";
}

TEST_F(DataFolderTest, LetsAForkedChildLeaveItAlone) {
  const DataFolder folder(Places());
  EXPECT_EQ(InChild([&] {
              const bool bOwn = folder.IsOwn();
              const_cast<DataFolder&>(folder).~DataFolder();
              return bOwn ? 1 : 0;
            }),
            0);
  EXPECT_TRUE(IsThere(folder.Path()));
  EXPECT_EQ(laminate::TheFileSystem().LockFolder(folder.Path().c_str()), -EWOULDBLOCK) << "the lock is still held";
}

TEST_F(DataFolderTest, ChoosesThePlaceThatSuits) {
  std::filesystem::create_directories(m_folder / "a");
  std::filesystem::create_directories(m_folder / "b");
  const auto chosen = [](const std::vector<DataFolder::Place>& places) {
    return std::filesystem::path(DataFolder(places).Path()).parent_path().string();
  };
  const std::string a = m_folder / "a";
  const std::string b = m_folder / "b";
  EXPECT_EQ(chosen({{a, false, 0}, {b, false, 0}}), a);
  EXPECT_EQ(chosen({{m_folder / "none", false, 0}, {b, false, 0}}), b);
  EXPECT_EQ(chosen({{a, false, 1000}, {b, false, 0}}), a);
  EXPECT_EQ(chosen({{a, false, ~std::uint64_t{0}}, {b, false, 0}}), b) << "too little room";
  laminate::FileSystem::Volume volume;
  ASSERT_EQ(laminate::TheFileSystem().DescribeVolume(a.c_str(), volume), 0);
  EXPECT_EQ(chosen({{a, true, 0}, {b, false, 0}}), volume.bInMemory ? a : b) << "no memory-backed storage";
  EXPECT_EQ(chosen({{"/proc", true, 0}, {"/proc", false, 0}, {b, false, 0}}), b) << "refused";
  EXPECT_THROW(DataFolder({{m_folder / "none", false, 0}}), CFileException);
  EXPECT_THROW(DataFolder({}), CFileException);
  const auto places = DataFolder::SystemPlaces();
  EXPECT_EQ(places[0].sFolder, "/dev/shm");
  EXPECT_TRUE(places[0].bOnlyInMemory);
  EXPECT_EQ(places[0].nMinimumFree, std::uint64_t{1} << 30);
  EXPECT_EQ(places[1].sFolder, "/tmp");
  EXPECT_EQ(places[1].nMinimumFree, 0u);
}

TEST_F(DataFolderTest, FreesAPlaceBeforeItMeasures) {
  // In a place that asks for room, the room that leftovers take counts as free: they go first.
  const std::string left = LeaveBehind();
  EXPECT_THROW(DataFolder({{m_folder.Path(), false, ~std::uint64_t{0}}}), CFileException);
  EXPECT_FALSE(IsThere(left));
}

TEST_F(DataFolderTest, SurvivesEveryFailure) {
  const int nFailures = laminate::test::ForEachFailingFileOperation(EIO, [&](FaultyFileSystem& files) {
    try {
      const DataFolder folder({{m_folder.Path(), false, 1}});
      EXPECT_TRUE(IsThere(folder.Path()));
    } catch (const CFileException& e) {
      EXPECT_TRUE(files.HasFailed());
      EXPECT_NE(std::string(e.what()).find(m_folder.Path()), std::string::npos);
    }
    laminate::FileSystem real;
    const FileSystemScope scope(real);
    for (const std::string& name : NamesIn(m_folder.Path())) real.DeleteTree((m_folder / name).c_str());
  });
  EXPECT_GE(nFailures, 6);
}

TEST_F(DataFolderTest, GivesEveryProcessItsOwn) {
  // Many start at once, each looking for leftovers while the others' folders appear.
  std::vector<pid_t> children;
  for (int i = 0; i < 12; ++i) {
    const pid_t child = ::fork();
    if (child == 0) {
      int nWrong = 0;
      for (int k = 0; k < 10; ++k) {
        try {
          const DataFolder folder(Places());
          std::ofstream(folder.Path() + "/f") << "x";
          ::usleep(500);
          if (!IsThere(folder.Path() + "/f")) ++nWrong;
        } catch (...) {
          ++nWrong;
        }
      }
      ::_exit(nWrong);
    }
    children.push_back(child);
  }
  for (const pid_t child : children) {
    int nStatus = 0;
    ASSERT_EQ(::waitpid(child, &nStatus, 0), child);
    EXPECT_EQ(nStatus, 0);
  }
  EXPECT_TRUE(NamesIn(m_folder.Path()).empty());
}

}  // namespace
