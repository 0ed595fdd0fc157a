#include "base/WholeFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <vector>

#include "base/FaultyFileSystem.h"
#include "base/TestFolder.h"

using laminate::WholeFile;
using laminate::test::FaultyFileSystem;
using laminate::test::ReadFile;
using laminate::test::TestFolder;

namespace {

class WholeFileTest : public laminate::test::DescriptorTest {
 protected:
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    laminate::FileSystem real;
    EXPECT_EQ(real.ListFolder(m_folder.Path().c_str(), names), 0);
    std::sort(names.begin(), names.end());
    return names;
  }
  static unsigned Mode(const std::string& path) {
    struct stat info = {};
    EXPECT_EQ(::stat(path.c_str(), &info), 0);
    return info.st_mode & 07777;
  }
  static void Write(const std::string& path, const std::string& text) {
    WholeFile file(path.c_str());
    file.Text().Bytes(text);
    file.Commit();
  }
  // The `errno` for which a write is refused; 0 for none.
  static int Refused(const std::string& path) {
    try {
      Write(path, "new");
    } catch (const CFileException& e) {
      EXPECT_EQ(e.m_strFileName, path);
      return e.m_lOsError;
    }
    return 0;
  }
  TestFolder m_folder;
};

TEST_F(WholeFileTest, AppearsWholeOrNotAtAll) {
  const std::string path = m_folder / "f";
  {
    WholeFile file(path.c_str());
    file.Text().Print<"%s %d\n">("text", 5);
    EXPECT_FALSE(std::filesystem::exists(path));
    file.Commit();
    EXPECT_EQ(ReadFile(path), "text 5\n");
  }
  {
    WholeFile file(path.c_str());
    file.Text().Bytes(std::string(300000, 'x'));
    file.Text().Flush();
    EXPECT_EQ(ReadFile(path), "text 5\n");
  }
  EXPECT_EQ(ReadFile(path), "text 5\n") << "without a commit nothing changes";
  EXPECT_EQ(Names(), std::vector<std::string>{"f"}) << "and nothing stays";
}

TEST_F(WholeFileTest, KeepsModeAndLinks) {
  const std::string path = m_folder.Write("f", "old");
  ASSERT_EQ(::chmod(path.c_str(), 0640), 0);
  Write(path, "new");
  EXPECT_EQ(Mode(path), 0640u);
  std::filesystem::create_directories(m_folder / "d");
  ASSERT_EQ(::symlink("d/inner", (m_folder / "link").c_str()), 0);
  ASSERT_EQ(::symlink("../f", (m_folder / "d/inner").c_str()), 0);
  Write(m_folder / "link", "through links");
  EXPECT_EQ(ReadFile(path), "through links");
  EXPECT_TRUE(std::filesystem::is_symlink(m_folder / "link"));
  ASSERT_EQ(::symlink("d/new", (m_folder / "dangling").c_str()), 0);
  Write(m_folder / "dangling", "made");
  EXPECT_EQ(ReadFile(m_folder / "d/new"), "made");
  EXPECT_EQ(Names(), (std::vector<std::string>{"d", "dangling", "f", "link"}));
}

TEST_F(WholeFileTest, WhatOnlySomeMayReadStaysSoWhileItIsWritten) {
  const std::string path = m_folder.Write("f", "old");
  ASSERT_EQ(::chmod(path.c_str(), 0600), 0);
  WholeFile file(path.c_str());
  for (const std::string& name : Names()) EXPECT_EQ(Mode(m_folder / name), 0600u) << name;
  EXPECT_EQ(Names().size(), 2u);
  // A file that was closed to all stays so, too.
  ASSERT_EQ(::chmod(path.c_str(), 0), 0);
  class Open : public laminate::FileSystem {
    int Describe(const char* szPath, FileInfo& info) override {
      const int nResult = FileSystem::Describe(szPath, info);
      info.bWritable = true;
      return nResult;
    }
  } files;
  const laminate::FileSystemScope scope(files);
  Write(path, "new");
  EXPECT_EQ(Mode(path), 0u);
}

TEST_F(WholeFileTest, TakesNamesAsLongAsTheSystemDoes) {
  for (const std::size_t n : {std::size_t{200}, std::size_t{201}, std::size_t{244}, std::size_t{255}}) {
    const std::string path = m_folder / std::string(n, 'n');
    EXPECT_EQ(Refused(path), 0) << n;
    EXPECT_EQ(ReadFile(path), "new") << n;
  }
  EXPECT_EQ(Refused(m_folder / std::string(256, 'n')), ENAMETOOLONG);
  EXPECT_EQ(Names().size(), 4u);
}

TEST_F(WholeFileTest, RefusesWhatItCannotReplace) {
  EXPECT_EQ(Refused(""), ENOENT);
  EXPECT_EQ(Refused(m_folder / "none/f"), ENOENT);
  EXPECT_EQ(Refused(m_folder.Path()), EISDIR);
  m_folder.Write("f", "x");
  EXPECT_EQ(Refused(m_folder / "f/g"), ENOTDIR);
  ASSERT_EQ(::symlink("loop", (m_folder / "loop").c_str()), 0);
  EXPECT_EQ(Refused(m_folder / "loop"), ELOOP);
  EXPECT_EQ(Refused("/dev/full"), ENOSPC);
  EXPECT_EQ(Refused("/dev/null"), 0);
  EXPECT_EQ(Names(), (std::vector<std::string>{"f", "loop"}));
}

TEST_F(WholeFileTest, LeavesAProtectedFileAlone) {
  // The system's administrator may write everything, so the seam says it here.
  class Protecting : public laminate::FileSystem {
    int Describe(const char* szPath, FileInfo& info) override {
      const int nResult = FileSystem::Describe(szPath, info);
      info.bWritable = false;
      return nResult;
    }
  } files;
  const laminate::FileSystemScope scope(files);
  const std::string path = m_folder.Write("f", "old");
  EXPECT_EQ(Refused(path), EACCES);
  EXPECT_EQ(ReadFile(path), "old");
}

TEST_F(WholeFileTest, DamagesNothingWhateverFails) {
  const std::string path = m_folder / "f";
  for (const bool bExists : {false, true}) {
    const int nFailures = laminate::test::ForEachFailingFileOperation(ENOSPC, [&](FaultyFileSystem& files) {
      ::unlink(path.c_str());
      if (bExists) m_folder.Write("f", "old");
      bool bTold = false;
      try {
        Write(path, std::string(200000, 'x'));
      } catch (const CFileException& e) {
        bTold = true;
        EXPECT_EQ(e.m_lOsError, ENOSPC);
      }
      EXPECT_EQ(bTold, files.HasFailed()) << files.Operations().back();
      if (bTold) {
        EXPECT_EQ(std::filesystem::exists(path), bExists);
        EXPECT_EQ(ReadFile(path), bExists ? "old" : "");
      } else {
        EXPECT_EQ(ReadFile(path).size(), 200000u);
      }
      // What cannot be removed may stay; nothing else may.
      const auto names = Names();
      const std::size_t nExpected = std::filesystem::exists(path) ? 1 : 0;
      const auto& operations = files.Operations();
      const bool bRemoveFailed = files.HasFailed() && operations.back() == "Remove" && names.size() > nExpected;
      EXPECT_TRUE(names.size() == nExpected || bRemoveFailed) << operations.back();
      for (const std::string& name : names) {
        if (name != "f") ::unlink((m_folder / name).c_str());
      }
    });
    EXPECT_GE(nFailures, 14);
  }
}

}  // namespace
