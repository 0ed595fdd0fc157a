#include "reader/BoardFileSplitter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <random>

#include "base/BKUtility.h"
#include "reader/LineReader.h"
#include "reader/MemoryFileSystem.h"
#include "reader/PlainReader.h"
#include "reader/ReaderTestSupport.h"
#include "reader/SplitTestSupport.h"
#include "reader/TextParse.h"
#include "reader/TextVariety.h"

namespace {

using laminate::LoadStatus;
using laminate::SplitState;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Key;
using testing::Pair;
using testing::SizeIs;
using testing::UnorderedElementsAre;

struct CountCase {
  const char* line;
  int inQuote;
  int count;
  int inQuoteBehind;
};
const CountCase kCounts[] = {
    {"", 0, 0, 0},
    {"(a (b)", 0, 1, 0},
    {")) (", 0, -1, 0},
    {"(a \"(\" b)", 0, 0, 0},
    {"(a \"x\\\")", 0, 0, 0},         // the string ends in a backslash, its form ends the line
    {"(a \"x\\\") \t\r\n", 0, 0, 0},  // trimmed at its end
    {"(a \"x\\\"))", 0, 1, 1},        // not recognised as closing
    {"(a \"x\\\")x", 0, 1, 1},
    {"(a \"x\\\"", 0, 1, 1},
    {"(a \"x\\\"y\")", 0, 0, 0},
    {"(a x\\\")", 0, 0, 0},  // outside a string a quote after a backslash has no effect
    {"(a \\\"(\\\" b)", 0, 1, 0},
    {"(a \"b", 0, 1, 1},
    {"( ( ) b\" )", 1, -1, 0},  // inside a string that an earlier line left open
    {"\"(", 0, 0, 1},
    {"  \"(", 1, 1, 0},
    {"\\\")", 1, -1, 0},
    {"// (comment", 0, 1, 0},      // comments are lines like any other
    {"(a \"\x95\\\" b", 0, 1, 1},  // and a trail byte is a backslash
    {"(a \"\")", 0, 0, 0},
};

TEST(BraceCount, Cases) {
  for (const CountCase& c : kCounts) {
    int inQuote = c.inQuote;
    EXPECT_EQ(laminate::BraceCount(c.line, inQuote), c.count) << c.line;
    EXPECT_EQ(inQuote, c.inQuoteBehind) << c.line;
  }
  int inQuote = 2;
  EXPECT_EQ(laminate::BraceCount("(\"(", inQuote), 1) << "any value but 0 is a string's inside";
  EXPECT_EQ(inQuote, 0);
}

TEST(BraceCount, EveryShortLine) {
  ForEveryText("()\"\\ \na\x95", 6, [](const std::string& line) {
    for (int inQuote : {0, 1}) {
      int plainInQuote = inQuote;
      int fastInQuote = inQuote;
      const int plainCount = plain::BraceCount(line, plainInQuote);
      ASSERT_EQ(laminate::BraceCount(line, fastInQuote), plainCount) << Escaped(line);
      ASSERT_EQ(fastInQuote, plainInQuote) << Escaped(line);
    }
  });
}

TEST(BraceCount, LongLines) {
  int inQuote = 0;
  EXPECT_EQ(laminate::BraceCount(std::string(1000000, '('), inQuote), 1000000);
  EXPECT_EQ(laminate::BraceCount(std::string(1000000, ')'), inQuote), -1000000);
  std::string quotes = "\"";
  for (int i = 0; i < 500000; ++i) quotes += "\\\")";
  EXPECT_EQ(laminate::BraceCount(quotes + "x", inQuote), 0);
  EXPECT_EQ(inQuote, 1);
}

// Splits texts that are kept in memory, as files of one board.
class Splits : public testing::Test {
 protected:
  Splits() { BKUtility::GetInstance()->SetDataPath("/data"); }
  ~Splits() override { BKUtility::GetInstance()->SetDataPath(""); }

  SplitState Board(const std::string& text, bool bOk = true) {
    m_files.files["/board.pcf"] = text;
    SplitState state{m_bInQuote, m_nComponents, m_nLayers, m_status};
    EXPECT_EQ(laminate::SplitBoardFile("/board.pcf", state), bOk);
    return state;
  }
  SplitState Footprints(const std::string& text, bool bOk = true) {
    m_files.files["/lib.ftf"] = text;
    SplitState state{m_bInQuote, m_nComponents, m_nLayers, m_status};
    EXPECT_EQ(laminate::SplitFootprintFile("/lib.ftf", state), bOk);
    return state;
  }
  // The lines of a board around those of its components section.
  SplitState Components(const std::string& lines) { return Board("(pcf\n(b\n(components\n" + lines + ")\n)\n)\n"); }
  // The files of a folder, by name.
  std::map<std::string, std::string> In(const CString& sFolder) {
    std::map<std::string, std::string> found;
    const std::string prefix = std::string(sFolder.View()) + "/";
    for (const auto& [path, text] : m_files.files) {
      if (path.starts_with(prefix)) found[path.substr(prefix.size())] = text;
    }
    return found;
  }

  MemoryFileSystem m_files;
  laminate::FileSystemScope m_scope{m_files};
  int m_bInQuote = 0;
  int m_nComponents = 7;
  int m_nLayers = 8;
  LoadStatus m_status;
};

const std::string kBoard =
    "(pcf\n"
    "(header\n"
    ")\n"
    "(boardContainer\n"
    "(components\n"
    "(component (reference R1)\n"
    "  (pin 1)\n"
    "// (a comment)\n"
    ")\n"
    "(component (reference R2)\n"
    ")\n"
    ")\n"
    "(boardLayout\n"
    "(layout\n"
    "(layer (conductive 1)\n"
    "(line\n"
    ")\n"
    ")\n"
    ")\n"
    ")\n"
    ")\n"
    ")\n";

TEST_F(Splits, ABoard) {
  const SplitState state = Board(kBoard);
  EXPECT_EQ(state.sFolder, laminate::BoardWorkingFolder("/board.pcf"));
  EXPECT_EQ(state.sFolder, "/data/Data/" + BKUtility::GetInstance()->GetSegmntFromFilePath("/board.pcf", 2));
  EXPECT_THAT(In(state.sFolder),
              ElementsAre(Pair("component1.txt", "(component (reference R1)\n  (pin 1)\n// (a comment)\n)\n"),
                          Pair("component2.txt", "(component (reference R2)\n)\n"),
                          Pair("layer1.txt", "(layer (conductive 1)\n(line\n)\n)\n"),
                          Pair("others.txt", "(pcf\n(header\n)\n(boardContainer\n)\n)\n")));
  EXPECT_EQ(m_nComponents, 2);
  EXPECT_EQ(m_nLayers, 1);
  EXPECT_EQ(m_bInQuote, 0);
  EXPECT_TRUE(m_status.IsOk());
}

TEST_F(Splits, TellsWhereLinesComeFrom) {
  const SplitState state = Board(kBoard);
  EXPECT_EQ(state.others.HostLine(0, 1), 1);
  EXPECT_EQ(state.others.HostLine(0, 4), 4);
  EXPECT_EQ(state.others.HostLine(0, 5), 21) << "behind both sections";
  EXPECT_EQ(state.others.HostLine(0, 6), 22);
  EXPECT_EQ(state.components.HostLine(1, 1), 6);
  EXPECT_EQ(state.components.HostLine(1, 4), 9);
  EXPECT_EQ(state.components.HostLine(2, 2), 11);
  EXPECT_EQ(state.components.HostLine(3, 1), 0);
  EXPECT_EQ(state.components.HostLine(1, 0), 0);
  EXPECT_EQ(state.layers.HostLine(1, 1), 15);
  EXPECT_EQ(state.others.HostLine(1, 1), 0);
}

TEST_F(Splits, LineEndsBecomeLineFeeds) {
  std::string text;
  for (char c : kBoard) text += c == '\n' ? "\r\n" : std::string(1, c);
  const auto expected = In(Board(kBoard).sFolder);
  EXPECT_EQ(In(Board(text).sFolder), expected);
  text.resize(text.size() - 2);
  EXPECT_EQ(In(Board(text).sFolder), expected) << "without the last one";
}

TEST_F(Splits, OtherBytesStayAsTheyAre) {
  using namespace std::string_literals;
  // A text that ends in a CR gets another one, or its own would be taken for a part of the line's end.
  const std::string lines = "(component (x)\n(v a\rb \x1A \"c\0d\")\n(w e\r\r\n)\r\n(last\r"s;
  const std::string copied = "(component (x)\n(v a\rb \x1A \"c\0d\")\n(w e\r\r\n)\n(last\r\r\n"s;
  EXPECT_THAT(In(Board("(pcf\n(b\n(components\n" + lines).sFolder), Contains(Pair("component1.txt", copied)));
  EXPECT_THAT(In(Board(lines).sFolder), Contains(Pair("others.txt", copied)));
}

TEST_F(Splits, AnEmptyFile) {
  EXPECT_THAT(In(Board("").sFolder), ElementsAre(Pair("others.txt", "")));
  EXPECT_EQ(m_nComponents, 7) << "a count stands where its section is missing";
  EXPECT_EQ(m_nLayers, 8);
}

TEST_F(Splits, EmptySections) {
  const SplitState state = Board("(pcf\n(b\n(components\n)\n(boardLayout\n(layout\n)\n)\n)\n)\n");
  EXPECT_THAT(In(state.sFolder), ElementsAre(Pair("others.txt", "(pcf\n(b\n)\n)\n")));
  EXPECT_EQ(m_nComponents, 0);
  EXPECT_EQ(m_nLayers, 0);
}

TEST_F(Splits, WhatIsLost) {
  const SplitState state = Board(
      "(pcf\n(b\n(components x\nlost\n(component)\n(component (x)\n)\n) lost\n"
      "(boardLayout\n(layout lost\n(layer (y)\n(line z)\n)\n)\n)\n)\n)\n");
  EXPECT_THAT(In(state.sFolder),
              ElementsAre(Pair("component1.txt", "(component (x)\n)\n"),
                          Pair("layer1.txt", "(layer (y)\n(line z)\n)\n"), Pair("others.txt", "(pcf\n(b\n)\n)\n")));
}

TEST_F(Splits, ASectionOnOneLineStandsADepthTooHigh) {
  // The line closes itself, so the section lasts until the form around it ends.
  const SplitState state = Board("(pcf\n(b\n(components)\n(nets\n)\n)\n)\n");
  EXPECT_THAT(In(state.sFolder), ElementsAre(Pair("others.txt", "(pcf\n(b\n)\n")));
  EXPECT_EQ(m_nComponents, 0);
}

TEST_F(Splits, OpeningLinesAreToldByTheirBeginnings) {
  const SplitState state =
      Board("(pcf\n(b\n(componentsX\n(componentGroup\n)\n)\n(boardLayoutX\n(layout\n(layerX\n)\n)\n)\n)\n)\n");
  EXPECT_THAT(In(state.sFolder),
              ElementsAre(Pair("component1.txt", "(componentGroup\n)\n"), Pair("layer1.txt", "(layerX\n)\n"),
                          Pair("others.txt", "(pcf\n(b\n)\n)\n")));
}

TEST_F(Splits, AStringOverLinesInAPiece) {
  const std::string piece = "(component (x)\n(v \"a\n) ( (\n(component (y)\nb\")\n)\n";
  EXPECT_THAT(In(Components(piece).sFolder), Contains(Pair("component1.txt", piece)));
  EXPECT_EQ(m_nComponents, 1);
}

TEST_F(Splits, ACommentsBracketsCount) {
  const SplitState state = Board("(pcf\n// (\n(components\n(component (x)\n)\n)\n)\n");
  EXPECT_THAT(In(state.sFolder),
              ElementsAre(Pair("component1.txt", "(component (x)\n)\n"), Pair("others.txt", "(pcf\n// (\n)\n")))
      << "they lift the depth to that of the wanted form";
}

TEST_F(Splits, IndentedLinesAreCopiedAsTheyStand) {
  const SplitState state = Board("(pcf\n (b\n\t(components\n\t (component (x)  \n\t\t)\t\n )\n)\n)\n");
  EXPECT_THAT(In(state.sFolder), ElementsAre(Pair("component1.txt", "\t (component (x)  \n\t\t)\t\n"),
                                             Pair("others.txt", "(pcf\n (b\n)\n)\n")));
}

TEST_F(Splits, AStringLeftOpenGoesOnInTheNextSplit) {
  Board("(a \"b");
  EXPECT_EQ(m_bInQuote, 1);
  EXPECT_THAT(In(Board(kBoard).sFolder), Contains(Pair("others.txt", testing::HasSubstr("(header"))));
  EXPECT_EQ(m_bInQuote, 1);
  EXPECT_EQ(m_nComponents, 7) << "no bracket counts, so no section ends";
}

TEST_F(Splits, AStringGoesOnFromAnyOperationToTheNext) {
  laminate::BraceCount("\"", m_bInQuote);
  EXPECT_THAT(In(Footprints("(ftf\n(c\n(padstacks\n(padstack (a)\n)\n)\n)\n)\n").sFolder), IsEmpty());
  EXPECT_THAT(In(Board("(pcf\n(components\n)\n(boardLayout\n)\n)\n").sFolder),
              ElementsAre(Pair("others.txt", "(pcf\n)\n)\n)\n")));
  EXPECT_EQ(m_bInQuote, 1);
}

TEST_F(Splits, ASmallerSplitLeavesOldPieces) {
  Board(kBoard);
  const SplitState state = Board("(pcf\n(b\n(components\n(component (x)\n)\n)\n)\n)\n");
  EXPECT_EQ(m_nComponents, 1);
  EXPECT_THAT(In(state.sFolder), UnorderedElementsAre(Pair("component1.txt", "(component (x)\n)\n"),
                                                      Pair("component2.txt", "(component (reference R2)\n)\n"),
                                                      Key("layer1.txt"), Key("others.txt")));
}

TEST_F(Splits, AWantedLineWhileAPieceIsOpen) {
  const SplitState state = Board("(pcf\n(b\n(components\n(component (x)\n(component y)\n)\n)\n)\n)\n");
  EXPECT_THAT(In(state.sFolder), testing::IsSupersetOf({Pair("component1.txt", std::string("(component (x)\n")),
                                                        Pair("component2.txt", std::string("(component y)\n)\n"))}));
}

TEST_F(Splits, ADepthThatNeverReturns) {
  const SplitState state = Board("(pcf\n(b\n(components\n(component (x)\n(y\n");
  EXPECT_THAT(In(state.sFolder), Contains(Pair("component1.txt", "(component (x)\n(y\n")))
      << "the end of the file closes the piece";
  EXPECT_EQ(m_nComponents, 7);
}

TEST_F(Splits, AFootprintFile) {
  SplitState state =
      Footprints("(ftf\n(c\n(padstacks x\n(padstack (a)\n)\n)\n(footprints \t\n(footprint (b)\n)\n)\n)\n)\n");
  EXPECT_EQ(state.sFolder, "/data/Data/Tmp");
  EXPECT_THAT(In(state.sFolder),
              ElementsAre(Pair("Footprint1.txt", "(footprint (b)\n)\n"), Pair("PadStack1.txt", "(padstack (a)\n)\n")));
  EXPECT_EQ(m_nComponents, 7) << "nothing records the counts";
  EXPECT_EQ(m_nLayers, 8);
  EXPECT_EQ(state.components.HostLine(1, 2), 5);
  EXPECT_EQ(state.layers.HostLine(1, 1), 8);
  EXPECT_EQ(m_files.folders.count("/data/Data/Tmp"), 1u) << "the pieces stay for the host";
}

TEST_F(Splits, TheFootprintsLineHoldsThatWordAlone) {
  for (const std::string opening : {"(footprints x", "(footprints)", "(footprintsX"}) {
    EXPECT_THAT(In(Footprints("(ftf\n(c\n" + opening + "\n(footprint (b)\n)\n)\n)\n)\n").sFolder), IsEmpty())
        << opening;
  }
  EXPECT_THAT(In(Footprints("(ftf\n(c\n\t (footprints\v\f \n(footprint (b)\n)\n)\n)\n)\n").sFolder), SizeIs(1));
  EXPECT_THAT(In(Footprints("(ftf\n(c\n(padstacksX\n(padstackX\n)\n)\n)\n)\n").sFolder),
              Contains(Pair("PadStack1.txt", "(padstackX\n)\n")))
      << "unlike the padstacks'";
}

TEST_F(Splits, ASmallerFootprintSplitLeavesOldPieces) {
  Footprints("(ftf\n(c\n(padstacks\n(padstack a\n)\n(padstack b\n)\n)\n(footprints\n(footprint c\n)\n)\n)\n)\n");
  const SplitState state = Footprints("(ftf\n(c\n(padstacks\n(padstack d\n)\n)\n)\n)\n");
  EXPECT_THAT(In(state.sFolder),
              ElementsAre(Pair("Footprint1.txt", "(footprint c\n)\n"), Pair("PadStack1.txt", "(padstack d\n)\n"),
                          Pair("PadStack2.txt", "(padstack b\n)\n")));
}

TEST_F(Splits, OneStateServesOneSplitAfterAnother) {
  SplitState state = Board(kBoard);
  EXPECT_TRUE(laminate::SplitBoardFile("/board.pcf", state)) << m_status.m_sText.GetString();
  EXPECT_EQ(m_files.OpenCount(), 1u) << "the lock";
}

// ---- pieces at hand ----

TEST(TextPieces, AreTheLinesOfTheirFormsAndKnowTheirPlace) {
  const std::string text = "(pcf\r\n(b\r\n(components\r\n(component\r\n(x)\r\n)\r\n)\r\n(n)\r\n)\r\n)" +
                           std::string(laminate::LineReader::kPadding, '\0');
  const std::string_view view = std::string_view(text).substr(0, text.size() - laminate::LineReader::kPadding);
  const laminate::BoardText pieces = laminate::CutBoardText(view);
  std::string joined;
  ASSERT_EQ(pieces.components.size(), 1u);
  EXPECT_EQ(pieces.components[0].Text(joined), "(component\r\n(x)\r\n)\r\n");
  EXPECT_EQ(pieces.components[0].Text(joined).data(), text.data() + text.find("(component\r"));
  EXPECT_EQ(pieces.others.Text(joined), "(pcf\r\n(b\r\n(n)\r\n)\r\n)");
  EXPECT_EQ(pieces.others.Source(pieces.others.Text(joined).find("(n)")), text.data() + text.find("(n)"));
  EXPECT_EQ(pieces.others.Source(0), text.data());
  EXPECT_EQ(pieces.others.Source(pieces.others.Size()), text.data() + view.size());
  EXPECT_TRUE(pieces.layers.empty());
}

TEST(TextPieces, AreEqualWhateverTheyAreCutFrom) {
  laminate::TextPiece whole;
  laminate::TextPiece cut;
  laminate::TextPiece other;
  const std::string text = "abcd";
  const std::string again = "ab-cd";
  whole.Append(text);
  cut.Append(std::string_view(again).substr(0, 2));
  cut.Append(std::string_view(again).substr(3));
  other.Append(std::string_view(again).substr(0, 4));
  EXPECT_TRUE(whole == cut);
  EXPECT_FALSE(whole == other);
}

// ---- against the plain transcription ----

class SplitDifferential : public Splits {
 protected:
  // The state goes on from one split to the next.
  bool Same(const std::string& text, bool bFootprints) {
    const SplitOutcome expected = SplitPlainly(text, bFootprints, m_root);
    const SplitOutcome outcome = SplitInMemory(text, bFootprints, m_root);
    m_root = outcome.root;
    if (outcome == expected) return bFootprints || SameAtHand(text);
    ADD_FAILURE() << Escaped(text);
    for (const auto& [name, content] : expected.files)
      std::cerr << "expected " << name << ": " << Escaped(content) << "\n";
    for (const auto& [name, content] : outcome.files) std::cerr << "got " << name << ": " << Escaped(content) << "\n";
    return false;
  }
  // What is cut at hand reads as the pieces of a first split do.
  static bool SameAtHand(const std::string& text) {
    const SplitOutcome expected = SplitPlainly(text, false, {});
    const std::string padded = text + std::string(laminate::LineReader::kPadding, '\0');
    const laminate::BoardText pieces = laminate::CutBoardText(std::string_view(padded).substr(0, text.size()));
    std::map<std::string, const laminate::TextPiece*> found{{"others.txt", &pieces.others}};
    for (const auto& [name, list] : {std::pair("component", &pieces.components), std::pair("layer", &pieces.layers)}) {
      for (const laminate::TextPiece& piece : *list) {
        found[name + std::to_string(&piece - list->data() + 1) + ".txt"] = &piece;
      }
    }
    EXPECT_EQ(static_cast<int>(pieces.components.size()), expected.root.components) << Escaped(text);
    EXPECT_EQ(static_cast<int>(pieces.layers.size()), expected.root.layers) << Escaped(text);
    for (const auto& [name, piece] : found) {
      const auto it = expected.files.find(name);
      if (it == expected.files.end()) {
        ADD_FAILURE() << "no " << name << " in " << Escaped(text);
        return false;
      }
      std::string joined;
      EXPECT_EQ(Parsed(piece->Text(joined)), Parsed(it->second)) << name << " of " << Escaped(text);
    }
    return !testing::Test::HasFailure();
  }
  static std::string Parsed(std::string_view text) {
    const std::string padded = std::string(text) + std::string(laminate::LineReader::kPadding, '\0');
    CECadCls reader;
    const int result = laminate::ParseText(reader, std::string_view(padded).substr(0, text.size()));
    return std::to_string(result) + Brief(*reader.m_pRootArray);
  }
  SplitRoot m_root;
};

TEST_F(SplitDifferential, EveryShortBoard) {
  bool same = true;
  ForEveryText("CcBLx)]", 6, [&](const std::string& letters) {
    std::string text = "(pcf\n(b\n";
    for (char c : letters) {
      text += c == 'C'   ? "(components\n"
              : c == 'c' ? "(component (x)\n"
              : c == 'B' ? "(boardLayout\n"
              : c == 'L' ? "(layer\n"
              : c == 'x' ? " (x\n"
              : c == ')' ? ")\n"
                         : "))\n";
    }
    same = same && Same(text, false);
  });
}

TEST_F(SplitDifferential, RandomFiles) {
  std::mt19937 random(11);
  const std::vector<std::string> lines = {"(components",
                                          "(component",
                                          "(boardLayout",
                                          "(layout",
                                          "(layer",
                                          "(padstacks",
                                          "(padstack",
                                          "(footprints",
                                          "(footprint",
                                          ")",
                                          "))",
                                          "(x",
                                          "\"",
                                          "\\\")",
                                          "(component )",
                                          "(footprints x",
                                          " \t",
                                          "//(",
                                          "(components)",
                                          "(boardLayout)",
                                          "(padstacks)",
                                          "(footprints)",
                                          "(componentsX",
                                          "(layerX",
                                          std::string(1, '\0'),
                                          "\x1A",
                                          "",
                                          "(a \"b\\\")",
                                          "\x95\\\")  ",
                                          "(layer (y)",
                                          ") \t",
                                          "\"(\""};
  bool same = true;
  for (int i = 0; i < 6000 && same; ++i) {
    std::string text = random() % 4 == 0 ? "" : "(pcf\n(b\n";
    for (std::size_t n = random() % 40; n > 0; --n) {
      if (random() % 5 == 0) text += random() % 2 == 0 ? " " : "\t";
      text += lines[random() % lines.size()];
      text += std::array{"\n", "\n", "\r\n", "\r\r\n", "\r"}[random() % 5];
    }
    if (random() % 3 == 0 && !text.empty()) text.pop_back();
    same = Same(text, false) && Same(text, true);
    if (i % 3 == 0) m_root.inQuote = 0;
  }
}

TEST_F(SplitDifferential, PiecesLongerThanABlock) {
  // Blocks end anywhere: within lines, pieces and line ends.
  std::mt19937 random(12);
  for (const char* end : {"\n", "\r\n"}) {
    std::string text = "(pcf" + std::string(end) + "(b" + end + "(components" + end;
    for (int i = 0; i < 6; ++i) {
      text += "(component (x)" + std::string(end);
      while (random() % 3000 != 0)
        text += "(pt " + std::to_string(random()) + " " + std::to_string(random()) + ")" + end;
      text += "(long \"" + std::string(200000 * (random() % 2), 'x') + "\")" + end;
      text += ")" + std::string(end);
    }
    text += ")" + std::string(end);
    for (int i = 0; i < 20000; ++i) text += "(other " + std::to_string(random()) + ")" + end;
    EXPECT_TRUE(Same(text, false));
  }
}

TEST_F(SplitDifferential, EveryPrefixOfABoard) {
  for (std::size_t n = 0; n <= kBoard.size(); ++n) {
    ASSERT_TRUE(Same(kBoard.substr(0, n), false));
    ASSERT_TRUE(Same(kBoard.substr(0, n), true));
  }
}

// ---- failures ----

TEST_F(Splits, ASourceThatCannotBeOpened) {
  SplitState state{m_bInQuote, m_nComponents, m_nLayers, m_status};
  EXPECT_FALSE(laminate::SplitBoardFile("/none.pcf", state));
  EXPECT_EQ(m_status.m_result, LoadStatus::Result::cannotOpen);
  EXPECT_EQ(m_status.m_sFile, "/none.pcf");
  EXPECT_THAT(std::string(m_status.m_sText.View()), testing::HasSubstr("does not exist"));
  EXPECT_EQ(m_files.folders.count(std::string(laminate::BoardWorkingFolder("/none.pcf").View())), 0u);
  EXPECT_EQ(m_nComponents, 7);
  m_status = LoadStatus();
  EXPECT_FALSE(laminate::SplitFootprintFile("/none.ftf", state));
  EXPECT_EQ(m_status.m_result, LoadStatus::Result::cannotOpen);
  EXPECT_EQ(m_files.folders.count("/data/Data/Tmp"), 0u);
  EXPECT_EQ(m_files.OpenCount(), 0u);
}

TEST_F(Splits, AFileInTheFoldersPlace) {
  m_files.files["/data/Data/Tmp"] = "";
  Footprints("(ftf\n)\n", false);
  EXPECT_EQ(m_status.m_result, LoadStatus::Result::cannotWriteWorkingFolder);
  EXPECT_EQ(m_status.m_sFile, "/lib.ftf");
  EXPECT_EQ(m_status.m_sText, "cannot make the working folder /data/Data/Tmp: the path is not valid (Not a directory)");
}

TEST_F(Splits, AFolderThatAnotherOneUses) {
  for (const bool bFootprints : {false, true}) {
    const SplitState first = bFootprints ? Footprints("(ftf\n)\n") : Board(kBoard);
    const auto before = In(first.sFolder);
    m_status = LoadStatus();
    bFootprints ? Footprints("(x\n", false) : Board("(x\n", false);
    EXPECT_EQ(m_status.m_result, LoadStatus::Result::cannotWriteWorkingFolder);
    EXPECT_EQ(m_status.m_sText, "another load uses the working folder " + first.sFolder);
    EXPECT_EQ(In(first.sFolder), before);
  }
}

}  // namespace
