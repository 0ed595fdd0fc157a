#pragma once
#include <dirent.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace laminate::test {

/// The number of the process's open descriptors.
inline int CountDescriptors() {
  int n = 0;
  DIR* dir = ::opendir("/proc/self/fd");
  while (::readdir(dir) != nullptr) ++n;
  ::closedir(dir);
  return n;
}

/// A folder of its own for a test, which goes with all that is in it.
class TestFolder {
 public:
  TestFolder() {
    char szPath[] = "/tmp/laminate-test-XXXXXX";
    if (::mkdtemp(szPath) == nullptr) throw std::runtime_error("no folder for the test");
    m_sPath = szPath;
  }
  ~TestFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_sPath, ignored);
  }
  TestFolder(const TestFolder&) = delete;
  TestFolder& operator=(const TestFolder&) = delete;

  const std::string& Path() const { return m_sPath; }
  std::string operator/(std::string_view sName) const { return m_sPath + "/" + std::string(sName); }
  /// Makes a file with that content; gives its path.
  std::string Write(std::string_view sName, std::string_view sContent) const {
    const std::string path = *this / sName;
    std::ofstream(path, std::ios::binary) << sContent;
    return path;
  }

 private:
  std::string m_sPath;
};

inline std::string ReadFile(const std::string& sPath) {
  std::ifstream in(sPath, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

/// A fixture whose tests leave as many open descriptors as they found.
class DescriptorTest : public ::testing::Test {
 protected:
  void SetUp() override { m_nBefore = CountDescriptors(); }
  void TearDown() override { EXPECT_EQ(CountDescriptors(), m_nBefore) << "descriptors were left open"; }

 private:
  int m_nBefore = 0;
};

}  // namespace laminate::test
