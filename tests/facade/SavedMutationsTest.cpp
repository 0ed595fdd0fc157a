// Whatever text a root loads without a fault is saved byte for byte.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

#include "base/CException.h"
#include "base/HostInterface.h"
#include "facade/CBDesigner.h"
#include "facade/SavedRoot.h"
#include "save/DesignSaver.h"

namespace {

namespace fs = std::filesystem;

class Silence : public CHostInterface {
 public:
  int OnAfxMessageBox(const CString&, UINT, UINT) override { return IDOK; }

 private:
  CHostInterfaceScope m_scope{*this};
};

std::string Read(const std::string& sPath) {
  std::ifstream in(sPath, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

// A few bytes or a line come, go or change.
std::string Mutated(std::string s, std::mt19937& random) {
  static const std::string kBits[] = {
      "(",  ")",  "\"",     "\n",    "\r",      "\\",        "//", "(layer (conductive 1)",
      "))", "((", "\"\"",   "\\\")", " ",       "\t",        "-0", "(pt 1 2)",
      "()", "x",  "\x95\\", "1e400", "(refer)", "(component"};
  for (unsigned n = 1 + random() % 3; n > 0; --n) {
    const std::size_t nAt = random() % s.size();
    const std::size_t nLine = s.find('\n', nAt);
    const std::size_t nLineEnd = nLine == s.npos ? nLine : s.find('\n', nLine + 1);
    switch (random() % 4) {
      case 0:
        s.erase(nAt, random() % 5);
        break;
      case 1:
        s.insert(nAt, kBits[random() % std::size(kBits)]);
        break;
      case 2:
        if (nLineEnd != s.npos) s.erase(nLine, nLineEnd - nLine);
        break;
      default:
        s[nAt] = static_cast<char>(random());
    }
    if (s.empty()) s = "(";
  }
  return s;
}

TEST(SavedMutations, WhatLoadsIsSavedByteForByte) {
  const Silence silence;
  std::string sFolder = (fs::temp_directory_path() / "laminate-mutations-XXXXXX").string();
  ASSERT_NE(mkdtemp(sFolder.data()), nullptr);
  const std::string sSource = sFolder + "/board.pcf";
  const std::string sTarget = sFolder + "/saved.pcf";
  const std::string sBoard = Read(LAMINATE_EXAMPLE ".pcf");
  ASSERT_FALSE(sBoard.empty());
  std::mt19937 random(3);
  int nLoaded = 0;
  for (int i = 0; i < 300 && !testing::Test::HasFailure(); ++i) {
    const std::string s = Mutated(sBoard, random);
    std::ofstream(sSource, std::ios::binary) << s;
    CBDesigner root;
    try {
      root.vParsePCF(CString(sSource));
    } catch (const CException&) {
      continue;
    }
    if (!root.GetLoadStatus().IsOk()) continue;
    ++nLoaded;
    laminate::DesignSaver saver(laminate::SavedRoot(root));
    saver.SetBoardFile(CString(sTarget), CString(sSource));
    EXPECT_TRUE(saver.Save()) << i;
    EXPECT_TRUE(Read(sTarget) == s) << i;
  }
  EXPECT_GT(nLoaded, 100);
  fs::remove_all(sFolder);
}

}  // namespace
