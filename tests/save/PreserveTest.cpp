// What a save leaves alone, and what it writes anew, on a board small enough to say every byte.
#include <algorithm>
#include <limits>
#include <random>

#include "base/CException.h"
#include "save/PreserveTestSupport.h"

namespace laminate::test {

namespace {

constexpr char kBoard[] =
    "// a board\n"
    "(pcf\n"
    "(header (version 2.0) (unit MM))\n"
    "// comments may stand anywhere\n"
    "(boardContainer\n"
    "(compGroups\n"
    "(compGroup G1 (list R1 R2) (side A)\n"
    "(layout\n"
    "(layer (conductive 1) (circle 100 (pt 1 2)))\n"
    ")\n"
    ")\n"
    ")\n"
    "(nets\n"
    "(net \"GND\"   (type POWER) (unknown (of nobody))\n"
    "  (comp R1 (pin 1))\n"
    "// between\n"
    "  (comp R2 (pin 1))\n"
    ")\n"
    "(net NC)\n"
    ")\n"
    "(components\n"
    "(component (reference R1)\n"
    "(part 10k)\n"
    "// what is not read stays\n"
    "(minRect (box (pt 0 0) (pt 1 1)))\n"
    "(location (pt 100000 250000))\n"
    "(angle 0.000)\n"
    "(layout\n"
    "(layer (infoOf (conductive 1))\n"
    "(text (string \"R1\"))\n"
    ")\n"
    "(layer (conductive 1)\n"
    "(refer (net GND) (line (geometry (line (penShape CIRCLE) (vertex (pt 0 0 (width 10)) (pt 5 5)))))\n"
    ")\n"
    ")\n"
    ")\n"
    "(pin 1 (pt 50000 250000))\n"
    "(propertyF Odd 7)\n"
    "(propertyS Maker \"A & B\")\n"
    ")\n"
    "   (component   (reference R2)\n"
    "     (part 10k)\n"
    "     (pin 1 (pt 7 8))\n"
    "   )\n"
    ")\n"
    "(boardLayout\n"
    "(layout\n"
    "(layer (conductive 1)\n"
    "(line (net GND)\n"
    "(geometry (line (vertex (pt 0 0) (pt 100000 0))))\n"
    ")\n"
    "(ruleArea (nobody reads this))\n"
    "(circle 1.0 (pt 1.0 2.0))\n"
    "(circle 2.0 (pt 3.0 4.0))\n"
    ")\n"
    "(layer (nonConductive Outline)\n"
    "(circle 3.0 (pt 5.0 6.0))\n"
    ")\n"
    ")\n"
    ")\n"
    ")\n"
    "(parameter)\n"
    ")\n";

std::string Replaced(std::string s, std::string_view sOld, std::string_view sNew) {
  const std::size_t n = s.find(sOld);
  EXPECT_NE(n, s.npos) << sOld;
  EXPECT_EQ(s.find(sOld, n + 1), s.npos) << sOld << " is not alone";
  return s.replace(n, sOld.size(), sNew);
}

std::string WithCrLf(const std::string& s) {
  std::string result;
  for (char c : s) {
    if (c == '\n') result += '\r';
    result += c;
  }
  return result;
}

// An edit, and what it does to the text.
struct Case {
  const char* name;
  std::function<void(EditedBoard&)> edit;
  std::function<std::string(std::string)> wanted;
};

void PrintTo(const Case& c, std::ostream* out) { *out << c.name; }

template <class... Pairs>
auto Changes(Pairs... pairs) {
  std::vector<std::pair<std::string, std::string>> list{pairs...};
  return [list](std::string s) {
    for (const auto& [sOld, sNew] : list) s = Replaced(s, sOld, sNew);
    return s;
  };
}
using P = std::pair<std::string, std::string>;

CBDdrawObj* Circle(double dX, const CBDdrawObj& like) {
  CBDdrawObj* p = like.pCopy();
  p->vMoveRotate(-dX, 0, 0, "A");
  return p;
}

const Case kCases[] = {
    {"Nothing", [](EditedBoard&) {}, [](std::string s) { return s; }},
    {"AValueOfAComponent", [](EditedBoard& b) { b.Component(0).m_sPart = "22k"; },
     Changes(P{"(component (reference R1)\n(part 10k)", "(component (reference R1)\n(part 22k)"})},
    {"APlace", [](EditedBoard& b) { b.Component(0).m_ptLocation = CPointD(1.25, 2.5); },
     Changes(P{"(location (pt 100000 250000))", "(location (pt 1.25 2.5))"})},
    {"AValueThatSaidTheDefault", [](EditedBoard& b) { b.Component(0).m_dAngle = 90; },
     Changes(P{"(angle 0.000)", "(angle 90)"})},
    {"AValueThatWasNotSaid", [](EditedBoard& b) { b.Component(1).m_dAngle = 90; },
     Changes(P{"     (part 10k)\n", "     (part 10k)\n     (angle 90)\n"})},
    {"APinThatIsGone", [](EditedBoard& b) { b.Component(0).m_pPinArray->DeleteAt(0, 1); },
     Changes(P{"(pin 1 (pt 50000 250000))\n", ""})},
    {"APropertyThatIsGone", [](EditedBoard& b) { b.Component(0).m_pPropertyArray->DeleteAt(0, 1); },
     Changes(P{"(propertyS Maker \"A & B\")\n", ""})},
    {"AShapeOfAComponent", [](EditedBoard& b) { b.Component(0).m_pDrawObjArray->GetAt(0)->m_sNet = "NC"; },
     Changes(P{"(refer (net GND) (line (geometry", "(refer (net NC) (line (net NC) (geometry"})},
    {"ANetsName", [](EditedBoard& b) { b.Net(0).m_sName = "A B"; }, Changes(P{"(net \"GND\"   (", "(net \"A B\"   ("})},
    {"APinOfANet", [](EditedBoard& b) { b.Net(0).m_pRefPinArray->DeleteAt(1, 1); },
     Changes(P{"  (comp R2 (pin 1))\n", ""})},
    {"ANetThatIsNew",
     [](EditedBoard& b) {
       auto* p = new CBDnet;
       p->m_sName = "NEW";
       b.Board().m_pNetArray->InsertAt(1, p);
     },
     Changes(P{"(net NC)\n", "(net NEW)\n(net NC)\n"})},
    {"ANetThatIsGone", [](EditedBoard& b) { b.Board().m_pNetArray->DeleteAt(1, 1); }, Changes(P{"(net NC)\n", ""})},
    {"AComponentThatIsGone", [](EditedBoard& b) { b.Board().m_pComponentArray->DeleteAt(1, 1); },
     Changes(P{"   (component   (reference R2)\n     (part 10k)\n     (pin 1 (pt 7 8))\n   )\n", ""})},
    {"AComponentThatIsNew",
     [](EditedBoard& b) {
       auto* p = new CBDcomponent;
       p->m_sReference = "R9";
       b.Board().m_pComponentArray->Add(p);
     },
     Changes(
         P{"     (pin 1 (pt 7 8))\n   )\n", "     (pin 1 (pt 7 8))\n   )\n   (component\n   (reference R9)\n   )\n"})},
    {"AComponentThatMovedInTheOrder",
     [](EditedBoard& b) {
       CBDcomponentArray& components = *b.Board().m_pComponentArray;
       std::swap(components.GetData()[0], components.GetData()[1]);
     },
     [](std::string s) {
       const std::string sMoved = "(component   (reference R2)\n     (part 10k)\n     (pin 1 (pt 7 8))\n   )\n";
       s = Replaced(s, "   " + sMoved, "");
       return Replaced(s, "(component (reference R1)", sMoved + "(component (reference R1)");
     }},
    {"AShapeThatIsGone", [](EditedBoard& b) { b.Board().m_pDrawObjArray->DeleteAt(1, 1); },
     Changes(P{"(ruleArea (nobody reads this))\n(circle 1.0 (pt 1.0 2.0))\n", "(ruleArea (nobody reads this))\n"})},
    {"TheLastShapeOfALayer", [](EditedBoard& b) { b.Board().m_pDrawObjArray->DeleteAt(3, 1); },
     Changes(P{"(layer (nonConductive Outline)\n(circle 3.0 (pt 5.0 6.0))\n)\n", ""})},
    {"AShapeThatMoved", [](EditedBoard& b) { b.Shape(2).vMoveRotate(-1, 0, 0, "A"); },
     Changes(P{"(circle 2.0 (pt 3.0 4.0))", "(circle 2.0 (pt 4.0 4.0))"})},
    {"AShapeThatIsNew", [](EditedBoard& b) { b.Board().m_pDrawObjArray->InsertAt(2, Circle(1, b.Shape(1))); },
     Changes(P{"(circle 1.0 (pt 1.0 2.0))\n(circle 2.0",
               "(circle 1.0 (pt 1.0 2.0))\n(circle 1.0 (pt 2.0 2.0))\n(circle 2.0"})},
    {"AShapeOnAnotherLayerBetweenTwo",
     [](EditedBoard& b) {
       CBDdrawObj* p = Circle(1, b.Shape(3));
       b.Board().m_pDrawObjArray->InsertAt(2, p);
     },
     Changes(P{"(circle 1.0 (pt 1.0 2.0))\n(circle 2.0",
               "(circle 1.0 (pt 1.0 2.0))\n)\n(layer\n(nonConductive Outline)\n(circle 3.0 (pt 6.0 6.0))\n)\n"
               "(layer (conductive 1)\n(circle 2.0"})},
    {"AShapeOnANewLayer",
     [](EditedBoard& b) {
       CBDdrawObj* p = Circle(1, b.Shape(3));
       p->m_sLayerName = "Silk";
       b.Board().m_pDrawObjArray->Add(p);
     },
     Changes(P{"(circle 3.0 (pt 5.0 6.0))\n)\n",
               "(circle 3.0 (pt 5.0 6.0))\n)\n(layer\n(nonConductive Silk)\n(circle 3.0 (pt 6.0 6.0))\n)\n"})},
    {"AMemberOfAGroup", [](EditedBoard& b) { b.Board().m_pCompGroupArray->GetAt(0)->m_aList.RemoveAt(0); },
     Changes(P{"(list R1 R2)", "(list R2)"})},
    {"TheVersion", [](EditedBoard& b) { const_cast<OwnedDesign&>(b.Design()).sVersion = "2.1"; },
     Changes(P{"(version 2.0)", "(version 2.1)"})},
};

// Blanks and the places of brackets are for the writer to choose.
std::string Loosely(const std::string& s) {
  std::string result;
  for (char c : s) {
    if (c == '\n' || c == ' ') {
      if (!result.empty() && result.back() != ' ') result += ' ';
    } else {
      if (c == ')' && !result.empty() && result.back() == ' ') result.pop_back();
      result += c;
    }
  }
  return result;
}

struct Preserve : testing::TestWithParam<Case> {};

TEST_P(Preserve, WritesOnlyWhatHasChanged) {
  EditedBoard board(kBoard);
  GetParam().edit(board);
  const std::string sSaved = board.Save();
  EXPECT_FALSE(board.losses.IsRefused());
  EXPECT_EQ(Loosely(sSaved), Loosely(GetParam().wanted(kBoard)));
  EXPECT_TRUE(ReadsAs(sSaved, board.Design()));
}

TEST_P(Preserve, KeepsTheEndsOfLines) {
  EditedBoard board(WithCrLf(kBoard));
  GetParam().edit(board);
  const std::string sSaved = board.Save();
  std::string sWithoutCr = sSaved;
  std::erase(sWithoutCr, '\r');
  EXPECT_EQ(Loosely(sWithoutCr), Loosely(GetParam().wanted(kBoard)));
  EXPECT_EQ(std::count(sSaved.begin(), sSaved.end(), '\r'), std::count(sSaved.begin(), sSaved.end(), '\n'));
  EXPECT_TRUE(ReadsAs(sSaved, board.Design()));
}

TEST_P(Preserve, SavesWhatWasSavedByteForByte) {
  EditedBoard board(kBoard);
  GetParam().edit(board);
  const std::string sSaved = board.Save();
  EXPECT_EQ(EditedBoard(sSaved).Save(), sSaved);
}

INSTANTIATE_TEST_SUITE_P(Edits, Preserve, testing::ValuesIn(kCases),
                         [](const auto& test) { return std::string(test.param.name); });

// ---- to the byte ----

std::string Board(const std::string& sContent) { return "(pcf\n(boardContainer\n" + sContent + ")\n)\n"; }

struct ExactCase {
  const char* what;
  const char* before;
  std::function<void(EditedBoard&)> edit;
  const char* after;
};

TEST(PreserveText, StandsAsItsNeighboursDo) {
  const auto addNet = [](EditedBoard& b) {
    auto* p = new CBDnet;
    p->m_sName = "X";
    b.Board().m_pNetArray->InsertAt(1, p);
  };
  const ExactCase cases[] = {
      {"indented as they are", "(components\n   (component (reference R1)\n   )\n)\n",
       [](EditedBoard& b) {
         auto* p = new CBDcomponent;
         p->m_sReference = "R9";
         b.Board().m_pComponentArray->Add(p);
       },
       "(components\n   (component (reference R1)\n   )\n   (component\n   (reference R9)\n   )\n)\n"},
      {"on a line of its own", "(nets\n (net A)\n (net B)\n)\n", addNet, "(nets\n (net A)\n (net X)\n (net B)\n)\n"},
      {"between two of one line", "(nets\n (net A) (net B)\n)\n", addNet, "(nets\n (net A)\n (net X)\n  (net B)\n)\n"},
      {"two of one line go", "(nets\n(net A (comp R1 (pin 1)) (comp R2 (pin 1)) (type POWER))\n)\n",
       [](EditedBoard& b) { b.Net(0).m_pRefPinArray->DeleteAt(0, 2); }, "(nets\n(net A (type POWER))\n)\n"},
      {"what stands last stays in place when its order behind others tells it",
       "(boardLayout\n(layout\n(layer (conductive 1)\n(line (vertex (pt 0.0 0.0) (pt 1.0 0.0)))\n"
       "(circle 1.0 (pt 1.0 2.0))\n(circle 2.0 (pt 3.0 4.0))\n)\n)\n)\n",
       [](EditedBoard& b) {
         b.Board().m_pDrawObjArray->DeleteAt(0, 1);
         for (const int n : {0, 1}) b.Shape(n).vMoveRotate(-1, 0, 0, "A");
       },
       "(boardLayout\n(layout\n(layer (conductive 1)\n"
       "(circle 1.0 (pt 2.0 2.0))\n(circle 2.0 (pt 4.0 4.0))\n)\n)\n)\n"},
      {"beside one of its keyword that is not read",
       "(components\n(component (reference R1)\n(propertyF Scale 2)\n(propertyF Odd 7)\n)\n)\n",
       [](EditedBoard& b) {
         b.Component(0).m_dScale = 3;
         b.Component(0).m_pPropertyArray->GetAt(0)->m_sComment = "3";
       },
       "(components\n(component (reference R1)\n(propertyF Scale 3)\n(propertyF Odd 7)\n)\n)\n"},
      {"another part in the place of one that went",
       "(components\n(component   (reference R1)\n(part   10k)\n(package P)\n(footprint F)\n)\n)\n",
       [](EditedBoard& b) {
         CBDcomponentArray& components = *b.Board().m_pComponentArray;
         components.DeleteAt(0, 1);
         auto* p = new CBDcomponent;
         p->m_sReference = "C7";
         p->m_sPart = "1u";
         p->m_sPackage = "Q";
         p->m_sFootprint = "G";
         components.Add(p);
       },
       "(components\n(component\n(reference C7)\n(part 1u)\n(package Q)\n(footprint G)\n)\n)\n"},
  };
  for (const ExactCase& test : cases) {
    EditedBoard board(Board(test.before));
    test.edit(board);
    EXPECT_EQ(board.Save(), Board(test.after)) << test.what;
  }
}

// ---- texts of all kinds, unedited ----

TEST(PreserveUnedited, GivesTheSameBytes) {
  for (const std::string& s :
       {std::string("(pcf)"), std::string("(pcf (header (version 3)))"), std::string("(tcf\n)\n\n\n"),
        std::string("noise (pcf) (pcf (header (version 9)))"), std::string("(pcf\n(x \"\x83\x5c\"))\n// \x95\\\n"),
        std::string("\r\n(pcf\r\n(header (version \"1\r\n2\"))\r\n)\r"), std::string("(pcf (nets (net)))\0\x1a", 20)}) {
    EXPECT_EQ(EditedBoard(s).Save(), s);
  }
}

TEST(PreserveUnedited, ASourceThatIsNotWellFormedIsNone) {
  for (const char* sz : {"(pcf", "(pcf))", "(other)", "", "(pcf (boardContainer (nets (net))))"}) {
    const HeldText text{std::string(sz)};
    SourceDesign source;
    EXPECT_FALSE(source.ReadBoardFile(text.View())) << sz;
    EXPECT_FALSE(source.Status().IsOk()) << sz;
  }
}

// ---- sections that the source does not have ----

TEST(PreserveSections, AreMadeForWhatIsNew) {
  for (const char* sz : {"(pcf\n(header (version 2.0))\n)\n", "(pcf\n(boardContainer\n)\n)\n",
                         "(pcf\n(boardContainer\n(nets\n(net N)\n)\n)\n)\n"}) {
    EditedBoard board(sz);
    auto* pComponent = new CBDcomponent;
    pComponent->m_sReference = "R1";
    board.Board().m_pComponentArray->Add(pComponent);
    EditedBoard other(kBoard);
    for (int n : {0, 3, 1}) board.Board().m_pDrawObjArray->Add(other.Shape(n).pCopy());
    const std::string sSaved = board.Save();
    EXPECT_TRUE(ReadsAs(sSaved, board.Design())) << sSaved;
  }
}

// ---- what cannot be said ----

TEST(PreserveLosses, WhatCannotBeSaidIsNamedAndNothingComesOut) {
  EditedBoard board(kBoard);
  board.Component(1).m_dAngle = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(board.Save(), "");
  ASSERT_EQ(board.losses.Refused().size(), 1u);
  EXPECT_EQ(board.losses.Refused()[0].name, "CBDcomponent.m_dAngle");
  EXPECT_EQ(board.losses.Refused()[0].object, "m_pBoardContainer.m_pComponentArray[R2]");
}

TEST(PreserveLosses, AValueThatNoFormCarriesIsNamed) {
  EditedBoard board(kBoard);
  board.Component(0).m_ptMinRect1 = CPointD(1, 1);
  EXPECT_EQ(board.Save(), "");
  ASSERT_EQ(board.losses.Refused().size(), 1u);
  EXPECT_EQ(board.losses.Refused()[0].name, "CBDcomponent.m_ptMinRect1");
}

TEST(PreserveLosses, AnAllowedLossLeavesTheRestSaved) {
  EditedBoard board(kBoard);
  board.losses.Allow("CBDcomponent.m_ptMinRect1");
  board.Component(0).m_ptMinRect1 = CPointD(1, 1);
  board.Component(0).m_sPart = "22k";
  const std::string sSaved = board.Save();
  EXPECT_NE(sSaved.find("(part 22k)"), std::string::npos);
  EXPECT_EQ(board.losses.Allowed().size(), 1u);
}

// ---- edits at random ----

// Whatever a host does to the order of components and shapes, the saved text reads as the design.
TEST(PreserveRandom, OrdersAreSaved) {
  std::mt19937 random(5);
  for (int n = 0; n < 300; ++n) {
    EditedBoard board(n % 2 == 0 ? std::string(kBoard) : WithCrLf(kBoard));
    CBDdrawObjArray& shapes = *board.Board().m_pDrawObjArray;
    CBDcomponentArray& components = *board.Board().m_pComponentArray;
    for (unsigned i = 1 + random() % 6; i > 0; --i) {
      const auto nShape = static_cast<INT_PTR>(random() % static_cast<unsigned>(shapes.GetSize()));
      switch (random() % 6) {
        case 0:
          if (shapes.GetSize() > 1) shapes.DeleteAt(static_cast<int>(nShape), 1);
          break;
        case 1:
          std::swap(shapes.GetData()[nShape], shapes.GetData()[shapes.GetSize() - 1]);
          break;
        case 2: {
          CBDdrawObj* p = Circle(static_cast<double>(random() % 5), *shapes.GetAt(nShape));
          if (random() % 2 == 0) p->m_sLayerType = "nonConductive";
          if (p->m_sLayerType == "nonConductive") p->m_nLayerNumber = 0;
          if (random() % 3 == 0 && p->m_sLayerType == "nonConductive") p->m_sLayerName = "Silk (top)";
          shapes.InsertAt(static_cast<INT_PTR>(random() % static_cast<unsigned>(shapes.GetSize() + 1)), p);
          break;
        }
        case 3:
          shapes.GetAt(nShape)->vMoveRotate(1, 2, 90, "A");
          break;
        case 4: {
          auto* p = new CBDcomponent;
          p->m_sReference.Format("C%d", static_cast<int>(random() % 9));
          components.InsertAt(static_cast<INT_PTR>(random() % static_cast<unsigned>(components.GetSize() + 1)), p);
          break;
        }
        default:
          if (!components.IsEmpty()) components.DeleteAt(0, 1);
      }
    }
    const std::string sSaved = board.Save();
    ASSERT_TRUE(ReadsAs(sSaved, board.Design())) << n << "\n" << sSaved;
  }
}

}  // namespace

}  // namespace laminate::test
