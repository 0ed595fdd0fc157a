#pragma once
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace laminate::test {

/// The folder of the real designs. The build sets its variable for the tests; run by hand they need it, too.
inline std::filesystem::path DesignsFolder() {
  const char* szFolder = std::getenv("LAMINATE_DESIGNS");
  if (szFolder == nullptr) throw std::runtime_error("LAMINATE_DESIGNS is not set");
  return szFolder;
}

/// The names of the designs, in order. Each is a folder, and its files bear its name.
inline std::vector<std::string> DesignNames() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(DesignsFolder())) {
    if (entry.is_directory()) names.push_back(entry.path().filename());
  }
  std::sort(names.begin(), names.end());
  return names;
}

inline std::string DesignFile(const std::string& sDesign, const std::string& sEnding) {
  return (DesignsFolder() / sDesign / (sDesign + sEnding)).string();
}

/// A text as it may stand in the name of a test.
inline std::string AsTestName(std::string s) {
  std::replace_if(
      s.begin(), s.end(), [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; }, '_');
  return s;
}
inline std::string NameOfDesignTest(const testing::TestParamInfo<std::string>& info) { return AsTestName(info.param); }

}  // namespace laminate::test
