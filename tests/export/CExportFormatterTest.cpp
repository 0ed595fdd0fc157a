#include "export/CExportFormatter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <fstream>
#include <limits>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "base/FaultyFileSystem.h"
#include "base/HostInterface.h"
#include "base/TestFolder.h"

namespace {

class BoxRecorder : public CHostInterface {
 public:
  int OnAfxMessageBox(const CString& sText, UINT, UINT) override {
    texts.emplace_back(sText.View());
    return IDOK;
  }
  std::vector<std::string> texts;
};

class FormatterTest : public laminate::test::DescriptorTest {
 protected:
  static void Put(const std::string& sPath, const std::string& sText) {
    std::ofstream(sPath, std::ios::binary) << sText;
  }
  static std::string Get(const std::string& sPath) { return laminate::test::ReadFile(sPath); }
  static bool Exists(const std::string& sPath) { return std::filesystem::exists(sPath); }
  std::string Format(const std::string& sText, int nWidth = 2) {
    Put(m_sFile, sText);
    { const CExportFormatter formatter(m_sFile.c_str(), nWidth); }
    return Get(m_sFile);
  }

  const laminate::test::TestFolder m_folder;
  const std::string m_sFile = m_folder / "text.tcf";
  const std::string m_sBackup = m_sFile + ".bak~";
  BoxRecorder m_boxes;
  CHostInterfaceScope m_scope{m_boxes};
};

TEST_F(FormatterTest, IndentsByTheBracketsOpenBeforeTheLine) {
  EXPECT_EQ(Format("(tcf\n(header\n(version 2.0)\n)\n)\n"), "(tcf\n  (header\n    (version 2.0)\n  )\n)\n");
  EXPECT_EQ(Format("(pkf\n(a\n)\n)\n", 4), "(pkf\n    (a\n    )\n)\n");
  EXPECT_TRUE(m_boxes.texts.empty());
}

TEST_F(FormatterTest, FieldsTellTheOutcome) {
  Put(m_sFile, "(a\n(b\n");
  const CExportFormatter formatter(m_sFile.c_str(), 3);
  EXPECT_EQ(formatter.m_sFileName, m_sFile.c_str());
  EXPECT_EQ(formatter.m_sBackupName, (m_sBackup).c_str());
  EXPECT_EQ(formatter.m_nLevel, 2);
  EXPECT_EQ(formatter.m_nIndentWidth, 3);
  EXPECT_EQ(formatter.m_nLineNo, 2);
  EXPECT_EQ(formatter.m_bCloserOnly, 0);
  EXPECT_NE(formatter.m_fpOut, nullptr);
}

TEST_F(FormatterTest, RemovesTheBackup) {
  Format("(a\n)\n");
  EXPECT_FALSE(Exists(m_sBackup));
}

TEST_F(FormatterTest, BracketsInStringsCount) {
  // The line leaves the level one deeper than it found it, and the level stays out of step.
  EXPECT_EQ(Format("(x\n(a \"(\")\n(b)\n)\n"), "(x\n  (a \"(\")\n    (b)\n  )\n");
}

TEST_F(FormatterTest, ALoneCloserAtTheMarginStaysBelowIt) {
  Put(m_sFile, ")\n(a\n(b)\n)\n");
  std::unique_ptr<CExportFormatter> pFormatter = std::make_unique<CExportFormatter>(m_sFile.c_str(), 2);
  EXPECT_EQ(pFormatter->m_nLevel, -1);
  pFormatter.reset();
  EXPECT_EQ(Get(m_sFile), ")\n(a\n(b)\n)\n");
}

TEST_F(FormatterTest, ALineOfBlanksShowsTheBoxAndBecomesAnIndent) {
  EXPECT_EQ(Format("(a\n   \n)\n"), "(a\n  \n)\n");
  ASSERT_EQ(m_boxes.texts.size(), 1u);
  EXPECT_EQ(m_boxes.texts[0], "CExportFormatter::Print() error!, Line No : 2 !!");
}

TEST_F(FormatterTest, AnEmptyLineIsAnIndentWithoutABox) {
  EXPECT_EQ(Format("(a\n\n)\n"), "(a\n  \n)\n");
  EXPECT_TRUE(m_boxes.texts.empty());
}

TEST_F(FormatterTest, TwoClosersOnALineAreNoLoneCloser) {
  EXPECT_EQ(Format("(a\n(b\n) )\n(c)\n"), "(a\n  (b\n    ) )\n(c)\n");
}

TEST_F(FormatterTest, AClosingBracketAtTheEndOfALongerLineStaysIn) {
  EXPECT_EQ(Format("(a\n(b c))\n(d)\n"), "(a\n  (b c))\n(d)\n");
}

TEST_F(FormatterTest, ASecondRunShowsABoxPerIndentedLine) {
  const std::string sOnce = Format("(tcf\n(header\n(version 2.0)\n)\n)\n");
  EXPECT_EQ(Format(sOnce), sOnce);
  ASSERT_EQ(m_boxes.texts.size(), 3u);
  EXPECT_EQ(m_boxes.texts[0], "CExportFormatter::Print() error!, Line No : 2 !!");
  EXPECT_EQ(m_boxes.texts[1], "CExportFormatter::Print() error!, Line No : 3 !!");
  EXPECT_EQ(m_boxes.texts[2], "CExportFormatter::Print() error!, Line No : 4 !!");
}

TEST_F(FormatterTest, BreaksLinesOfMoreThan1023Bytes) {
  struct Case {
    std::size_t nLength;
    std::size_t nFirst;
  };
  for (const Case& c : {Case{1022, 1022}, Case{1023, 1023}, Case{1024, 1023}, Case{1025, 1023}, Case{4096, 1023}}) {
    const std::string sLine(c.nLength, 'x');
    const std::string sResult = Format(sLine + "\n");
    EXPECT_EQ(sResult.find('\n'), c.nFirst) << c.nLength;
    std::string sJoined = sResult;
    std::erase(sJoined, '\n');
    EXPECT_EQ(sJoined, sLine) << c.nLength;
  }
  // 1023 bytes leave their line end for a read of its own: an empty line.
  EXPECT_EQ(Format(std::string(1023, 'x') + "\n(a)\n"), std::string(1023, 'x') + "\n\n(a)\n");
  EXPECT_EQ(Format(std::string(1022, 'x') + "\n(a)\n"), std::string(1022, 'x') + "\n(a)\n");
}

TEST_F(FormatterTest, TrimsTheBlanksAroundABreak) {
  const std::string sLeft(1022, 'x');
  EXPECT_EQ(Format(sLeft + "  y\n"), sLeft + "\ny\n");
  ASSERT_EQ(m_boxes.texts.size(), 1u);  // the second piece begins with a blank
}

TEST_F(FormatterTest, PercentSigns) {
  EXPECT_EQ(Format("100%%\n"), "100%\n");
  EXPECT_EQ(Format("100%\n"), "100%\n");
  EXPECT_EQ(Format("%%%\n"), "%%\n");
  EXPECT_EQ(Format("%%%%\n"), "%%\n");
  EXPECT_EQ(Format("%n%s%s%*d%99999999d\n"), "%n%s%s%*d%99999999d\n");
}

TEST_F(FormatterTest, APairOfPercentSignsAcrossABreakStaysApart) {
  EXPECT_EQ(Format(std::string(1022, 'x') + "%%y\n"), std::string(1022, 'x') + "%\n%y\n");
}

TEST_F(FormatterTest, ALineEndsAtItsFirstNul) { EXPECT_EQ(Format(std::string("(a\0(b\n(c)\n", 10)), "(a\n  (c)\n"); }

TEST_F(FormatterTest, TwoByteLineEndsAndAMissingLastOne) {
  EXPECT_EQ(Format("(a\r\n(b)\r\n)"), "(a\n  (b)\n)\n");
  EXPECT_EQ(Format(std::string(1022, 'x') + "\r\n(a)\r\n"), std::string(1022, 'x') + "\n(a)\n");
}

TEST_F(FormatterTest, AnEmptyFileStaysEmpty) { EXPECT_EQ(Format(""), ""); }

TEST_F(FormatterTest, AMissingFileBecomesAnEmptyOne) {
  { const CExportFormatter formatter(m_sFile.c_str(), 2); }
  EXPECT_TRUE(Exists(m_sFile));
  EXPECT_EQ(Get(m_sFile), "");
  EXPECT_FALSE(Exists(m_sBackup));
}

TEST_F(FormatterTest, AnOldBackupIsReplaced) {
  Put(m_sBackup, "old\n");
  EXPECT_EQ(Format("(a)\n"), "(a)\n");
  EXPECT_FALSE(Exists(m_sBackup));
}

TEST_F(FormatterTest, AFolderThatCannotBeWrittenLeavesNoStream) {
  const CExportFormatter formatter((m_folder / "none/text.tcf").c_str(), 2);
  EXPECT_EQ(formatter.m_fpOut, nullptr);
}

TEST_F(FormatterTest, PrintFormatsALineBehindTheIndent) {
  Put(m_sFile, "(a\n");
  {
    CExportFormatter formatter(m_sFile.c_str(), 2);
    formatter.Print("(b %d %s)\n", 3, "x%%y");
    formatter.Print("%s", std::string(2000, 'z').c_str());
    formatter.Print(")");
    EXPECT_EQ(formatter.m_bCloserOnly, 1);
    EXPECT_EQ(formatter.m_nLevel, 0);
    EXPECT_EQ(formatter.m_nLineNo, 4);
  }
  EXPECT_EQ(Get(m_sFile), "(a\n  (b 3 x%%y)\n  " + std::string(1023, 'z') + "\n)\n");
}

TEST_F(FormatterTest, AWidthThatIsNotPositiveGivesNoIndent) {
  EXPECT_EQ(Format("(a\n(b)\n)\n", 0), "(a\n(b)\n)\n");
  EXPECT_EQ(Format("(a\n(b)\n)\n", -2), "(a\n(b)\n)\n");
}

TEST_F(FormatterTest, OnlyABlankAtTheBeginningShowsTheBox) {
  EXPECT_EQ(Format("\t(a)\t\v\f\n"), "(a)\n") << "tabs and the like are trimmed";
  EXPECT_EQ(Format("(a\n\t\n"), "(a\n  \n") << "a line of a tab is an indent alone";
  EXPECT_EQ(Format("(a\n\t)\n"), "(a\n)\n");
  EXPECT_EQ(Format("x\x85\xa0\x81\x40\n"), "x\x85\xa0\x81\x40\n") << "no other byte is a white space";
  EXPECT_TRUE(m_boxes.texts.empty());
  EXPECT_EQ(Format("(a\n )\n"), "(a\n)\n");
  EXPECT_EQ(m_boxes.texts, (std::vector<std::string>{"CExportFormatter::Print() error!, Line No : 2 !!"}));
}

TEST_F(FormatterTest, CountsThePiecesOfALongLine) {
  Put(m_sFile, std::string(1023, 'x') + " " + std::string(976, 'y') + "\n (b)\n");
  const CExportFormatter formatter(m_sFile.c_str(), 2);
  EXPECT_EQ(formatter.m_nLineNo, 3);
  EXPECT_EQ(m_boxes.texts, (std::vector<std::string>{"CExportFormatter::Print() error!, Line No : 2 !!",
                                                     "CExportFormatter::Print() error!, Line No : 3 !!"}));
}

TEST_F(FormatterTest, EveryBreakCutsAndATornPairCountsByItsParts) {
  std::vector<std::size_t> lengths;
  const std::string sResult = Format(std::string(4096, 'x') + "\n");
  for (std::size_t at = 0; at < sResult.size();) {
    const std::size_t end = sResult.find('\n', at);
    lengths.push_back(end - at);
    at = end + 1;
  }
  EXPECT_EQ(lengths, (std::vector<std::size_t>{1023, 1023, 1023, 1023, 4}));
  EXPECT_EQ(Format(std::string(1023, 'x') + "\r\n"), std::string(1023, 'x') + "\n\n");
  EXPECT_EQ(Format(std::string(1022, 'x') + "\ry\n"), std::string(1022, 'x') + "\ny\n") << "a lone CR is trimmed";
  EXPECT_EQ(Format(std::string(1022, 'x') + "()\n(b)\n"), std::string(1022, 'x') + "(\n)\n(b)\n");
}

TEST_F(FormatterTest, ALoneCloserAtTheMarginKeepsAllBelowIt) {
  EXPECT_EQ(Format(")\n(a\n(b\n(c)\n"), ")\n(a\n(b\n  (c)\n");
}

TEST_F(FormatterTest, WhatStandsBehindANulIsNotLookedAt) {
  EXPECT_EQ(Format(std::string("\0abc\n(b)\n", 9)), "\n(b)\n");
  EXPECT_EQ(Format(std::string("\0 \n", 3)), "\n");
  EXPECT_TRUE(m_boxes.texts.empty());
  EXPECT_EQ(Format(std::string(" \0\n", 3)), "\n");
  EXPECT_EQ(m_boxes.texts.size(), 1u);
}

TEST_F(FormatterTest, ABackupWithoutItsFileIsFormatted) {
  Put(m_sBackup, "(a\n(b\n");
  { const CExportFormatter formatter(m_sFile.c_str(), 2); }
  EXPECT_EQ(Get(m_sFile), "(a\n  (b\n");
  EXPECT_FALSE(Exists(m_sBackup));
}

TEST_F(FormatterTest, WhateverFailsTheTextIsStillThere) {
  const std::string sText = "(a\n(b)\n)\n";
  const std::string sFormatted = "(a\n  (b)\n)\n";
  const int nFailures = laminate::test::ForEachFailingFileOperation(EIO, [&](auto& files) {
    std::filesystem::remove(m_sBackup);
    Put(m_sFile, sText);
    { const CExportFormatter formatter(m_sFile.c_str(), 2); }
    // Whether the renaming succeeded is not asked for: the file is emptied, if it can be.
    if (files.HasFailed() && files.Operations()[files.FirstFailed() - 1] == "Rename") {
      EXPECT_THAT(Get(m_sFile), testing::AnyOf("", sText));
      return;
    }
    EXPECT_TRUE((Exists(m_sBackup) && Get(m_sBackup) == sText) || Get(m_sFile) == sText || Get(m_sFile) == sFormatted);
  });
  EXPECT_GE(nFailures, 5);
}

TEST_F(FormatterTest, AFileThatCannotBeMadeLeavesTheBackupAndNoStream) {
  Put(m_sFile, "(a)\n");
  laminate::test::FaultyFileSystem files(1, EACCES, laminate::test::FaultyFileSystem::Duration::forever);
  files.Only("OpenForWriting");
  const laminate::FileSystemScope scope(files);
  const CExportFormatter formatter(m_sFile.c_str(), 2);
  EXPECT_EQ(formatter.m_fpOut, nullptr);
  EXPECT_EQ(formatter.m_nLineNo, 0);
  EXPECT_FALSE(Exists(m_sFile));
  EXPECT_EQ(Get(m_sBackup), "(a)\n");
}

TEST_F(FormatterTest, ABackupThatCannotBeReadStays) {
  for (const char* szOperation : {"OpenForReading", "Read"}) {
    Put(m_sFile, "(a)\n");
    laminate::test::FaultyFileSystem files(1, EIO, laminate::test::FaultyFileSystem::Duration::forever);
    files.Only(szOperation);
    const laminate::FileSystemScope scope(files);
    const CExportFormatter formatter(m_sFile.c_str(), 2);
    EXPECT_NE(formatter.m_fpOut, nullptr) << szOperation;
    EXPECT_EQ(formatter.m_nLineNo, 0) << szOperation;
    EXPECT_EQ(Get(m_sFile), "") << szOperation;
    EXPECT_EQ(Get(m_sBackup), "(a)\n") << szOperation;
  }
}

TEST_F(FormatterTest, AHostsFailureInTheBoxPassesAndTheTextStays) {
  struct Refuses : CHostInterface {
    int OnAfxMessageBox(const CString&, UINT, UINT) override { throw std::runtime_error("no"); }
  } refuses;
  const CHostInterfaceScope scope(refuses);
  Put(m_sFile, "(a\n (b)\n");
  EXPECT_THROW(CExportFormatter(m_sFile.c_str(), 2), std::runtime_error);
  EXPECT_EQ(Get(m_sBackup), "(a\n (b)\n");
}

TEST_F(FormatterTest, LongTextsGoThroughWhole) {
  std::string sText;
  std::string sExpected;
  for (int i = 0; i < 40000; ++i) {
    sText += i % 2 == 0 ? "(x\n" : ")\n";
    sExpected += i % 2 == 0 ? "(x\n" : ")\n";
  }
  EXPECT_EQ(Format(sText), sExpected);
}

TEST_F(FormatterTest, PrintsWhatAHostGivesIt) {
  Put(m_sFile, "(a\n");
  {
    CExportFormatter formatter(m_sFile.c_str(), 2);
    formatter.Print(" (b)");
    formatter.Print("%s", "");
    formatter.Print("%s", std::string(1024, 'z').c_str());
    formatter.Print("x%cy", 0);
    EXPECT_EQ(formatter.m_nLineNo, 5);
  }
  EXPECT_EQ(Get(m_sFile), "(a\n  (b)\n  \n  " + std::string(1023, 'z') + "\n  x\n");
  EXPECT_EQ(m_boxes.texts, (std::vector<std::string>{"CExportFormatter::Print() error!, Line No : 2 !!"}));
  CExportFormatter closed((m_folder / "none/text.tcf").c_str(), 2);
  EXPECT_THROW(closed.Print("x"), CInvalidArgException);
}

TEST(Indenting, CountsWrapAround) {
  std::string sOut;
  laminate::TextOut out(sOut);
  int nLevel = std::numeric_limits<int>::min();
  int bCloserOnly = 0;
  int nLineNo = std::numeric_limits<int>::max();
  const laminate::Indenter indenter{nLevel, 0, bCloserOnly, nLineNo};
  indenter.Line(out, "))");
  EXPECT_EQ(nLevel, std::numeric_limits<int>::max() - 1);
  EXPECT_EQ(nLineNo, std::numeric_limits<int>::min());
  nLevel = std::numeric_limits<int>::min();
  indenter.Line(out, ")");
  EXPECT_EQ(nLevel, std::numeric_limits<int>::max());
  indenter.Line(out, "((");
  EXPECT_EQ(nLevel, std::numeric_limits<int>::min() + 1);
}

TEST(Indenting, CostsAsMuchForOneLineAsForMany) {
  // Far more than any line that is looked at again for each of its pieces would allow within the test's time.
  const std::string sText(std::size_t{64} << 20, 'x');
  std::string sOut;
  {
    laminate::TextOut out(sOut);
    laminate::IndentText(out, sText, 2);
  }
  EXPECT_EQ(sOut.size(), sText.size() + (sText.size() + 1022) / 1023);
}

static_assert(std::has_virtual_destructor_v<CExportFormatter>);
static_assert(!std::is_copy_constructible_v<CExportFormatter> && !std::is_copy_assignable_v<CExportFormatter>);
static_assert(std::is_same_v<decltype(CExportFormatter::m_nLevel), int> &&
              std::is_same_v<decltype(CExportFormatter::m_nLineNo), int>);

}  // namespace
