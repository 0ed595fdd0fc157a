#include "base/FileSystem.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "base/FaultyFileSystem.h"
#include "base/TestFolder.h"

using laminate::FileSystem;
using laminate::FileSystemScope;
using laminate::OpenedFile;
using laminate::TheFileSystem;
using laminate::test::FaultyFileSystem;
using laminate::test::ReadFile;
using laminate::test::TestFolder;

namespace {

class FileSystemTest : public laminate::test::DescriptorTest {
 protected:
  TestFolder m_folder;
  FileSystem& m_files = TheFileSystem();
};

bool IsThere(const std::string& path) {
  struct stat info;
  return ::lstat(path.c_str(), &info) == 0;
}

TEST_F(FileSystemTest, OpensReadsAndWrites) {
  const std::string path = m_folder / "f";
  EXPECT_EQ(m_files.OpenForReading(path.c_str()), -ENOENT);
  EXPECT_EQ(m_files.OpenForReading(""), -ENOENT);
  EXPECT_EQ(m_files.OpenForReading(nullptr), -ENOENT);
  EXPECT_EQ(m_files.OpenForWriting((path + "/g").c_str()), -ENOENT);
  EXPECT_EQ(m_files.OpenForUpdate(path.c_str(), false, false), -ENOENT);
  {
    OpenedFile file(m_files.OpenForWriting(path.c_str()));
    ASSERT_TRUE(file.IsOpen());
    EXPECT_EQ(laminate::WriteAll(file.Get(), "0123456789"), 0);
    EXPECT_EQ(m_files.Sync(file.Get()), 0);
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(file.Close(), 0) << "nothing is open";
    EXPECT_FALSE(file.IsOpen());
  }
  {
    OpenedFile file(m_files.OpenForReading(path.c_str()));
    char buffer[32] = {};
    EXPECT_EQ(m_files.SizeOf(file.Get()), 10);
    EXPECT_EQ(m_files.Seek(file.Get(), 7, SEEK_SET), 7);
    EXPECT_EQ(m_files.Read(file.Get(), buffer, 32), 3);
    EXPECT_STREQ(buffer, "789");
    EXPECT_EQ(m_files.Read(file.Get(), buffer, 32), 0);
    EXPECT_EQ(m_files.Seek(file.Get(), -1, SEEK_SET), -EINVAL);
    EXPECT_EQ(m_files.Write(file.Get(), "x", 1), -EBADF);
  }
  {
    OpenedFile file(m_files.OpenForUpdate(path.c_str(), false, false));
    EXPECT_EQ(m_files.SetLength(file.Get(), 3), 0);
    EXPECT_EQ(ReadFile(path), "012");
    file = OpenedFile(m_files.OpenForUpdate(path.c_str(), true, true));
    EXPECT_EQ(ReadFile(path), "");
  }
  EXPECT_EQ(m_files.CreateNew(path.c_str()), -EEXIST);
  EXPECT_EQ(m_files.Rename(path.c_str(), (m_folder / "g").c_str()), 0);
  EXPECT_EQ(m_files.Rename(path.c_str(), (m_folder / "h").c_str()), -ENOENT);
  EXPECT_FALSE(m_files.Exists(path.c_str()));
  EXPECT_TRUE(m_files.Exists((m_folder / "g").c_str()));
  EXPECT_FALSE(m_files.FolderExists((m_folder / "g").c_str()));
  EXPECT_EQ(m_files.Remove((m_folder / "g").c_str()), 0);
  EXPECT_EQ(m_files.Remove((m_folder / "g").c_str()), -ENOENT);
  EXPECT_EQ(m_files.Close(-1), -EBADF);
}

TEST_F(FileSystemTest, GivesNewFilesTheirMode) {
  const mode_t nMask = ::umask(0);
  OpenedFile file(m_files.OpenForWriting((m_folder / "a").c_str(), 0600));
  file = OpenedFile(m_files.CreateNew((m_folder / "b").c_str(), 0640));
  EXPECT_EQ(m_files.MakeFolder((m_folder / "c").c_str(), 0700), 0);
  ::umask(nMask);
  const auto mode = [&](const char* szName) {
    struct stat info;
    EXPECT_EQ(::stat((m_folder / szName).c_str(), &info), 0);
    return info.st_mode & 07777;
  };
  EXPECT_EQ(mode("a"), 0600u);
  EXPECT_EQ(mode("b"), 0640u);
  EXPECT_EQ(mode("c"), 0700u);
  EXPECT_EQ(m_files.MakeFolder((m_folder / "c").c_str()), -EEXIST);
  EXPECT_EQ(m_files.MakeFolder((m_folder / "x/y").c_str()), -ENOENT);
}

TEST_F(FileSystemTest, MakesNoFileThroughALink) {
  const std::string link = m_folder / "link";
  ASSERT_EQ(::symlink((m_folder / "target").c_str(), link.c_str()), 0);
  EXPECT_EQ(m_files.CreateNew(link.c_str()), -EEXIST);
  EXPECT_FALSE(IsThere(m_folder / "target"));
}

TEST_F(FileSystemTest, LeavesNoDescriptorToOtherPrograms) {
  const OpenedFile file(m_files.OpenForWriting((m_folder / "f").c_str()));
  EXPECT_NE(::fcntl(file.Get(), F_GETFD) & FD_CLOEXEC, 0);
}

TEST_F(FileSystemTest, ReadsWholeFiles) {
  std::string s = "old";
  EXPECT_EQ(laminate::ReadWholeFile((m_folder / "none").c_str(), s), -ENOENT);
  EXPECT_EQ(s, "");
  EXPECT_EQ(laminate::ReadWholeFile(m_folder.Path().c_str(), s), -EISDIR);
  EXPECT_EQ(laminate::ReadWholeFile("", s), -ENOENT);
  for (const std::size_t n : {0u, 1u, 15u, 16u, 262143u, 262144u, 262145u, 1000000u}) {
    std::string content(n, ' ');
    for (std::size_t i = 0; i < n; ++i) content[i] = static_cast<char>(i * 7);
    const std::string path = m_folder.Write("f", content);
    ASSERT_EQ(laminate::ReadWholeFile(path.c_str(), s), 0);
    EXPECT_TRUE(s == content) << n;
    for (const std::uint64_t nOffset :
         {std::uint64_t{1}, std::uint64_t{n / 2}, std::uint64_t{n}, std::uint64_t{n + 5}}) {
      ASSERT_EQ(laminate::ReadWholeFile(path.c_str(), s, nOffset), 0);
      EXPECT_TRUE(s == (nOffset < n ? content.substr(nOffset) : "")) << n << " from " << nOffset;
    }
    EXPECT_EQ(laminate::ReadWholeFile(path.c_str(), s, ~std::uint64_t{0}), -EINVAL);
    FaultyFileSystem files;
    files.LimitTransfers(1 + n / 3);
    const FileSystemScope scope(files);
    ASSERT_EQ(laminate::ReadWholeFile(path.c_str(), s), 0);
    EXPECT_TRUE(s == content) << n << " in short reads";
  }
}

TEST_F(FileSystemTest, ReadsWhatHasNoSize) {
  std::string s;
  EXPECT_EQ(laminate::ReadWholeFile("/proc/self/status", s), 0);
  EXPECT_NE(s.find("Name:"), std::string::npos);
  EXPECT_EQ(laminate::ReadWholeFile("/dev/null", s), 0);
  EXPECT_EQ(s, "");
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  std::thread writer([&] {
    const std::string part(10000, 'x');
    for (int i = 0; i < 50; ++i) EXPECT_EQ(laminate::WriteAll(ends[1], part), 0);
    ::close(ends[1]);
  });
  EXPECT_EQ(laminate::ReadWholeFile(("/proc/self/fd/" + std::to_string(ends[0])).c_str(), s), 0);
  writer.join();
  ::close(ends[0]);
  EXPECT_EQ(s, std::string(500000, 'x'));
}

TEST_F(FileSystemTest, ReadsAtOffsetsBeyondFourGigabytes) {
  const std::string path = m_folder.Write("f", "");
  {
    OpenedFile file(m_files.OpenForUpdate(path.c_str(), false, false));
    ASSERT_EQ(m_files.Seek(file.Get(), 5'000'000'000, SEEK_SET), 5'000'000'000);
    ASSERT_EQ(laminate::WriteAll(file.Get(), "the end"), 0);
  }
  std::string s;
  EXPECT_EQ(laminate::ReadWholeFile(path.c_str(), s, 5'000'000'004), 0);
  EXPECT_EQ(s, "end");
}

TEST_F(FileSystemTest, TellsWhichReadFailed) {
  const std::string path = m_folder.Write("f", std::string(600000, 'x'));
  std::string s;
  const int nFailures = laminate::test::ForEachFailingFileOperation(EIO, [&](FaultyFileSystem& files) {
    const int nResult = laminate::ReadWholeFile(path.c_str(), s);
    // The size is a hint and the content was complete before the close.
    const std::string sLast = files.Operations().back();
    if (files.HasFailed() && sLast != "Close") {
      EXPECT_EQ(nResult, -EIO) << sLast;
    }
    if (!files.HasFailed()) {
      EXPECT_EQ(nResult, 0);
      EXPECT_EQ(s.size(), 600000u);
    }
  });
  EXPECT_GE(nFailures, 12);
}

TEST_F(FileSystemTest, WritesAllOrTells) {
  const std::string path = m_folder / "f";
  FaultyFileSystem files;
  files.LimitTransfers(3);
  {
    const FileSystemScope scope(files);
    OpenedFile file(TheFileSystem().OpenForWriting(path.c_str()));
    EXPECT_EQ(laminate::WriteAll(file.Get(), "0123456789"), 0);
    EXPECT_EQ(laminate::WriteAll(file.Get(), ""), 0);
    char buffer[16];
    EXPECT_EQ(laminate::WriteAll(-1, "x"), -EBADF);
    OpenedFile reading(TheFileSystem().OpenForReading(path.c_str()));
    EXPECT_EQ(laminate::ReadAll(reading.Get(), buffer, 8), 8);
    EXPECT_EQ(laminate::ReadAll(reading.Get(), buffer, 8), 2);
    EXPECT_EQ(laminate::ReadAll(reading.Get(), buffer, 8), 0);
    EXPECT_EQ(laminate::ReadAll(-1, buffer, 8), -EBADF);
  }
  EXPECT_EQ(ReadFile(path), "0123456789");
  OpenedFile full(m_files.OpenForWriting("/dev/full"));
  EXPECT_EQ(laminate::WriteAll(full.Get(), "x"), -ENOSPC);
  // A device that takes nothing and says nothing.
  class Deaf : public FileSystem {
    std::int64_t Write(Handle, const void*, std::size_t) override { return 0; }
  } deaf;
  const FileSystemScope scope(deaf);
  EXPECT_EQ(laminate::WriteAll(1, "x"), -EIO);
}

TEST_F(FileSystemTest, TellsThatAFileGrewTooLarge) {
  rlimit old;
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &old), 0);
  const auto oldHandler = ::signal(SIGXFSZ, SIG_IGN);
  rlimit small = old;
  small.rlim_cur = 100;
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
  int nResult = 0;
  {
    OpenedFile file(m_files.OpenForWriting((m_folder / "f").c_str()));
    nResult = laminate::WriteAll(file.Get(), std::string(1000, 'x'));
  }
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &old), 0);
  ::signal(SIGXFSZ, oldHandler);
  EXPECT_EQ(nResult, -EFBIG);
}

void Nothing(int) {}

TEST_F(FileSystemTest, GoesOnAfterASignal) {
  struct sigaction action = {};
  struct sigaction old;
  action.sa_handler = Nothing;  // without SA_RESTART: the system's calls end early
  ASSERT_EQ(::sigaction(SIGUSR1, &action, &old), 0);
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  const pthread_t self = ::pthread_self();
  std::thread disturber([&] {
    for (int i = 0; i < 20; ++i) {
      ::usleep(2000);
      ::pthread_kill(self, SIGUSR1);
    }
    EXPECT_EQ(laminate::WriteAll(ends[1], "abc"), 0);
    ::close(ends[1]);
  });
  char buffer[8] = {};
  EXPECT_EQ(laminate::ReadAll(ends[0], buffer, 8), 3);
  disturber.join();
  ::close(ends[0]);
  ::sigaction(SIGUSR1, &old, nullptr);
}

TEST_F(FileSystemTest, DeletesTrees) {
  const std::string tree = m_folder / "tree";
  EXPECT_EQ(m_files.DeleteTree(tree.c_str()), -ENOENT);
  EXPECT_EQ(m_files.DeleteTree(""), -ENOENT);
  std::filesystem::create_directories(tree + "/a/b/c");
  std::filesystem::create_directories(tree + "/empty");
  for (const char* szFile : {"/x", "/a/y", "/a/b/z", "/a/b/c/w", "/.hidden", "/-rf", "/...", "/ "}) {
    m_folder.Write("tree" + std::string(szFile), "content");
  }
  ASSERT_EQ(::mkfifo((tree + "/fifo").c_str(), 0600), 0);
  EXPECT_EQ(m_files.DeleteTree((tree + "//").c_str()), 0);
  EXPECT_FALSE(IsThere(tree));
  // A file in the folder's place.
  const std::string file = m_folder.Write("file", "x");
  EXPECT_EQ(m_files.DeleteTree(file.c_str()), 0);
  EXPECT_FALSE(IsThere(file));
  EXPECT_TRUE(IsThere(m_folder.Path()));
}

TEST_F(FileSystemTest, MakesAndRemovesFoldersAndTellsWhyNot) {
  const std::string folder = m_folder / "a";
  EXPECT_EQ(laminate::MakeFolders(folder + "/b/c"), 0);
  EXPECT_EQ(laminate::MakeFolders(folder + "/b/c"), 0) << "one that exists";
  EXPECT_EQ(m_files.RemoveFolder((folder + "/b").c_str()), -ENOTEMPTY);
  EXPECT_EQ(m_files.RemoveFolder((folder + "/b/c").c_str()), 0);
  EXPECT_EQ(m_files.RemoveFolder((folder + "/b/c").c_str()), -ENOENT);
  EXPECT_EQ(laminate::MakeFolders(m_folder.Write("f", "")), -ENOTDIR);
  EXPECT_EQ(laminate::MakeFolders(m_folder / "f/x"), -ENOTDIR);
  EXPECT_EQ(laminate::MakeFolders(""), -ENOENT);
  EXPECT_EQ(laminate::MakeFolders("/proc/no/folder"), -ENOENT);
}

TEST_F(FileSystemTest, FollowsNoLinkWhenItDeletes) {
  const std::string outside = m_folder / "outside";
  std::filesystem::create_directories(outside + "/sub");
  m_folder.Write("outside/precious", "x");
  m_folder.Write("outside/sub/precious", "x");
  const std::string tree = m_folder / "tree";
  std::filesystem::create_directories(tree + "/in");
  for (const auto& [sTarget, szLink] : {std::pair{outside, "/link"},
                                        {outside, "/in/link"},
                                        {outside + "/precious", "/f"},
                                        {std::string("/"), "/root"},
                                        {std::string(".."), "/up"},
                                        {std::string("nowhere"), "/dangling"}}) {
    ASSERT_EQ(::symlink(sTarget.c_str(), (tree + szLink).c_str()), 0);
  }
  ASSERT_EQ(::link((outside + "/precious").c_str(), (tree + "/hard").c_str()), 0);
  EXPECT_EQ(m_files.DeleteTree(tree.c_str()), 0);
  EXPECT_FALSE(IsThere(tree));
  EXPECT_EQ(ReadFile(outside + "/precious"), "x");
  EXPECT_EQ(ReadFile(outside + "/sub/precious"), "x");
  // A link in the folder's own place goes itself, with separators behind it too.
  for (const char* szEnd : {"", "/", "//"}) {
    ASSERT_EQ(::symlink(outside.c_str(), tree.c_str()), 0);
    EXPECT_EQ(m_files.DeleteTree((tree + szEnd).c_str()), 0);
    EXPECT_FALSE(IsThere(tree));
    EXPECT_EQ(ReadFile(outside + "/precious"), "x");
  }
}

TEST_F(FileSystemTest, DeletesFoldersOfAnyDepth) {
  // Deeper than descriptors, stack or one path would reach.
  const std::string tree = m_folder / "tree";
  ASSERT_EQ(::mkdir(tree.c_str(), 0700), 0);
  int at = ::open(tree.c_str(), O_RDONLY | O_DIRECTORY);
  for (int i = 0; i < 300; ++i) {
    ASSERT_EQ(::mkdirat(at, "a folder with a name of some length", 0700), 0);
    const int next = ::openat(at, "a folder with a name of some length", O_RDONLY | O_DIRECTORY);
    ASSERT_GE(next, 0);
    ::close(at);
    at = next;
  }
  ::close(::openat(at, "f", O_CREAT | O_WRONLY, 0600));
  ::close(at);
  rlimit old;
  ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &old), 0);
  rlimit few = old;
  few.rlim_cur = 20;
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
  const int nResult = m_files.DeleteTree(tree.c_str());
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &old), 0);
  EXPECT_EQ(nResult, 0);
  EXPECT_FALSE(IsThere(tree));
}

// As a user whom the system refuses something, in a process of its own where an administrator runs the test.
TEST_F(FileSystemTest, DeletesAsFarAsItMay) {
  const std::string tree = m_folder / "tree";
  std::filesystem::create_directories(tree + "/locked");
  m_folder.Write("tree/locked/f", "x");
  m_folder.Write("tree/g", "x");
  ASSERT_EQ(::chmod((tree + "/locked").c_str(), 0555), 0);
  if (::geteuid() != 0) {
    EXPECT_EQ(m_files.DeleteTree(tree.c_str()), -EACCES);
  } else {
    constexpr uid_t kOther = 12345;
    ASSERT_EQ(::chmod(m_folder.Path().c_str(), 0777), 0);
    ASSERT_EQ(::chown(tree.c_str(), kOther, kOther), 0);
    const pid_t child = ::fork();
    if (child == 0) {
      if (::setuid(kOther) != 0) ::_exit(99);
      ::_exit(m_files.DeleteTree(tree.c_str()) == -EACCES ? 0 : 1);
    }
    int nStatus = 0;
    ASSERT_EQ(::waitpid(child, &nStatus, 0), child);
    EXPECT_EQ(nStatus, 0);
    EXPECT_EQ(m_files.CheckOwnFolder(tree.c_str()), -EPERM);
  }
  EXPECT_FALSE(IsThere(tree + "/g"));
  EXPECT_TRUE(IsThere(tree + "/locked/f"));
  ASSERT_EQ(::chmod((tree + "/locked").c_str(), 0755), 0);
}

TEST_F(FileSystemTest, LocksFolders) {
  const std::string folder = m_folder / "locked";
  EXPECT_EQ(m_files.LockFolder(folder.c_str()), -ENOENT);
  ASSERT_EQ(m_files.MakeFolder(folder.c_str()), 0);
  {
    OpenedFile lock(m_files.LockFolder(folder.c_str()));
    ASSERT_TRUE(lock.IsOpen());
    EXPECT_EQ(m_files.LockFolder(folder.c_str()), -EWOULDBLOCK);
    std::thread([&] { EXPECT_EQ(m_files.LockFolder(folder.c_str()), -EWOULDBLOCK); }).join();
    const pid_t child = ::fork();
    if (child == 0) ::_exit(m_files.LockFolder(folder.c_str()) == -EWOULDBLOCK ? 0 : 1);
    int nStatus = 0;
    ASSERT_EQ(::waitpid(child, &nStatus, 0), child);
    EXPECT_EQ(nStatus, 0);
    EXPECT_EQ(lock.Close(), 0);
    lock = OpenedFile(m_files.LockFolder(folder.c_str()));
    EXPECT_TRUE(lock.IsOpen()) << "free again";
    EXPECT_EQ(m_files.DeleteTree(folder.c_str()), 0) << "its holder may remove it";
  }
  ASSERT_EQ(::symlink(m_folder.Path().c_str(), folder.c_str()), 0);
  EXPECT_TRUE(m_files.LockFolder(folder.c_str()) == -ELOOP || m_files.LockFolder(folder.c_str()) == -ENOTDIR);
  const std::string file = m_folder.Write("file", "x");
  EXPECT_EQ(m_files.LockFolder(file.c_str()), -ENOTDIR);
}

TEST_F(FileSystemTest, NeverLocksARemovedFolder) {
  // One thread makes, locks, removes and frees over and over; whoever gets a lock must see its folder there.
  const std::string folder = m_folder / "locked";
  std::atomic<int> nWrong = 0;
  std::atomic<int> nLocks = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < 3; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 300; ++i) {
        m_files.MakeFolder(folder.c_str());
        OpenedFile lock(m_files.LockFolder(folder.c_str()));
        if (!lock.IsOpen()) continue;
        ++nLocks;
        struct stat held;
        struct stat seen;
        if (::fstat(lock.Get(), &held) != 0 || ::stat(folder.c_str(), &seen) != 0 || held.st_ino != seen.st_ino)
          ++nWrong;
        if (m_files.DeleteTree(folder.c_str()) != 0) ++nWrong;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(nWrong, 0);
  EXPECT_GT(nLocks, 0);
}

TEST_F(FileSystemTest, TellsAboutFolders) {
  m_folder.Write("f", "x");
  ASSERT_EQ(m_files.MakeFolder((m_folder / "d").c_str()), 0);
  ASSERT_EQ(::symlink("d", (m_folder / "l").c_str()), 0);
  std::vector<std::string> names;
  EXPECT_EQ(m_files.ListFolder(m_folder.Path().c_str(), names), 0);
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (std::vector<std::string>{"d", "f", "l"}));
  EXPECT_EQ(m_files.ListFolder((m_folder / "none").c_str(), names), -ENOENT);
  EXPECT_EQ(m_files.ListFolder((m_folder / "f").c_str(), names), -ENOTDIR);
  EXPECT_TRUE(m_files.FolderExists((m_folder / "d").c_str()));
  EXPECT_TRUE(m_files.FolderExists((m_folder / "l").c_str()));
  EXPECT_FALSE(m_files.FolderExists((m_folder / "none").c_str()));
  EXPECT_EQ(m_files.CheckOwnFolder((m_folder / "d").c_str()), 0);
  EXPECT_EQ(m_files.CheckOwnFolder((m_folder / "l").c_str()), -ENOTDIR);
  EXPECT_EQ(m_files.CheckOwnFolder((m_folder / "none").c_str()), -ENOENT);
  FileSystem::Volume volume;
  EXPECT_EQ(m_files.DescribeVolume(m_folder.Path().c_str(), volume), 0);
  EXPECT_GT(volume.nFreeBytes, 0u);
  EXPECT_EQ(m_files.DescribeVolume((m_folder / "none").c_str(), volume), -ENOENT);
  EXPECT_EQ(m_files.DescribeVolume("/proc", volume), 0);
  EXPECT_FALSE(volume.bInMemory);
}

TEST_F(FileSystemTest, IsReplacedForAScope) {
  FaultyFileSystem outer;
  FaultyFileSystem inner;
  {
    const FileSystemScope outerScope(outer);
    EXPECT_EQ(&TheFileSystem(), &outer);
    {
      const FileSystemScope innerScope(inner);
      EXPECT_EQ(&TheFileSystem(), &inner);
      std::thread([&] { EXPECT_NE(&TheFileSystem(), &inner) << "other threads keep theirs"; }).join();
    }
    EXPECT_EQ(&TheFileSystem(), &outer);
  }
  EXPECT_EQ(&TheFileSystem(), &m_files);
}

TEST_F(FileSystemTest, OwnsItsHandles) {
  OpenedFile none;
  EXPECT_FALSE(none.IsOpen());
  EXPECT_EQ(none.Close(), 0);
  OpenedFile failed(-ENOENT);
  EXPECT_FALSE(failed.IsOpen());
  EXPECT_EQ(failed.Get(), -ENOENT) << "the reason stays";
  OpenedFile a(m_files.OpenForReading("/dev/null"));
  OpenedFile b(std::move(a));
  EXPECT_FALSE(a.IsOpen());
  EXPECT_TRUE(b.IsOpen());
  OpenedFile c(m_files.OpenForReading("/dev/null"));
  c = std::move(b);
  EXPECT_TRUE(c.IsOpen());
  OpenedFile& same = c;
  c = std::move(same);
  EXPECT_TRUE(c.IsOpen());
}

TEST_F(FileSystemTest, GivesStreamsForWriting) {
  const std::string path = m_folder / "f";
  std::FILE* fp = laminate::OpenStreamForWriting(path.c_str());
  ASSERT_NE(fp, nullptr);
  std::fprintf(fp, "%d ", 5);
  const std::string big(300000, 'x');
  EXPECT_EQ(std::fwrite(big.data(), 1, big.size(), fp), big.size());
  EXPECT_EQ(std::fputs("end", fp) < 0, false);
  EXPECT_EQ(std::fflush(fp), 0);
  EXPECT_EQ(ReadFile(path), "5 " + big + "end");
  EXPECT_EQ(std::fclose(fp), 0);
  errno = 0;
  EXPECT_EQ(laminate::OpenStreamForWriting((m_folder / "no/f").c_str()), nullptr);
  EXPECT_EQ(errno, ENOENT);
}

TEST_F(FileSystemTest, TellsByTheStreamWhatFailed) {
  const std::string path = m_folder / "f";
  const int nFailures = laminate::test::ForEachFailingFileOperation(ENOSPC, [&](FaultyFileSystem& files) {
    std::FILE* fp = laminate::OpenStreamForWriting(path.c_str());
    if (fp == nullptr) {
      EXPECT_EQ(files.Operations().back(), "OpenForWriting");
      EXPECT_EQ(errno, ENOSPC);
      return;
    }
    const std::string s(100000, 'x');
    for (int i = 0; i < 3; ++i) std::fwrite(s.data(), 1, s.size(), fp);
    std::fputs("the last bytes", fp);
    const int nClosed = std::fclose(fp);
    EXPECT_EQ(nClosed, files.HasFailed() ? EOF : 0) << files.Operations().back();
    if (files.HasFailed()) {
      EXPECT_EQ(errno, ENOSPC);
    }
  });
  EXPECT_GE(nFailures, 8);
  std::FILE* fp = laminate::OpenStreamForWriting("/dev/full");
  ASSERT_NE(fp, nullptr);
  EXPECT_GE(std::fputs("x", fp), 0);
  EXPECT_EQ(std::fclose(fp), EOF);
}

}  // namespace
