#include "export/CExportFormatter.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "base/HostInterface.h"

namespace {

class BoxRecorder : public CHostInterface {
 public:
  int OnAfxMessageBox(const CString& sText, UINT, UINT) override {
    texts.emplace_back(sText.View());
    return IDOK;
  }
  std::vector<std::string> texts;
};

class FormatterTest : public testing::Test {
 protected:
  void SetUp() override {
    std::string sFolder = testing::TempDir() + "formatter-XXXXXX";
    ASSERT_NE(mkdtemp(sFolder.data()), nullptr);
    m_sFolder = sFolder;
    m_sFile = sFolder + "/text.tcf";
  }
  void TearDown() override { ASSERT_EQ(system(("rm -rf '" + m_sFolder + "'").c_str()), 0); }

  static void Put(const std::string& sPath, const std::string& sText) {
    std::ofstream(sPath, std::ios::binary) << sText;
  }
  static std::string Get(const std::string& sPath) {
    std::ifstream in(sPath, std::ios::binary);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
  }
  static bool Exists(const std::string& sPath) {
    struct stat info {};
    return ::stat(sPath.c_str(), &info) == 0;
  }
  std::string Format(const std::string& sText, int nWidth = 2) {
    Put(m_sFile, sText);
    { const CExportFormatter formatter(m_sFile.c_str(), nWidth); }
    return Get(m_sFile);
  }

  std::string m_sFolder;
  std::string m_sFile;
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
  EXPECT_EQ(formatter.m_sBackupName, (m_sFile + ".bak~").c_str());
  EXPECT_EQ(formatter.m_nLevel, 2);
  EXPECT_EQ(formatter.m_nIndentWidth, 3);
  EXPECT_EQ(formatter.m_nLineNo, 2);
  EXPECT_EQ(formatter.m_bCloserOnly, 0);
  EXPECT_NE(formatter.m_fpOut, nullptr);
}

TEST_F(FormatterTest, RemovesTheBackup) {
  Format("(a\n)\n");
  EXPECT_FALSE(Exists(m_sFile + ".bak~"));
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
  EXPECT_FALSE(Exists(m_sFile + ".bak~"));
}

TEST_F(FormatterTest, AnOldBackupIsReplaced) {
  Put(m_sFile + ".bak~", "old\n");
  EXPECT_EQ(Format("(a)\n"), "(a)\n");
  EXPECT_FALSE(Exists(m_sFile + ".bak~"));
}

TEST_F(FormatterTest, AFolderThatCannotBeWrittenLeavesNoStream) {
  const CExportFormatter formatter((m_sFolder + "/none/text.tcf").c_str(), 2);
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

}  // namespace
