#include "board/BoardForms.h"
#include "board/CBDnet.h"
#include "board/CBDsubBoard.h"
#include "technology/RecordTestSupport.h"

using laminate::ReadNet;
using laminate::ReadSubBoard;

namespace {

std::string Show(const CBDnet& net) {
  std::string s = Str(net.m_sName) + " " + Str(net.m_sType) + "/" + Str(net.m_sLockMode) + "/" + Str(net.m_sPen) + "/" +
                  Str(net.m_sRatsNest);
  for (const CBDrefPin* p : *net.m_pRefPinArray) s += " " + Str(p->m_sComp) + "." + Str(p->m_sPin);
  return s;
}

TEST(NetReading, Rows) {
  CheckReading(
      {
          {"all",
           "(net N (type SIGNAL) (lockMode FIXED) (pen 3) (drawRatsNest YES) (comp R1 (pin 1)) (comp R2 (pin 2)))",
           "N SIGNAL/FIXED/3/YES R1.1 R2.2"},
          {"nothing", "(net N)", "N ///"},
          {"repeated", "(net N (type A) (type B) (lockMode C) (lockMode D) (pen 1) (pen 2))", "N B/D/2/"},
          {"the later rats nest counts", "(net N (drawRatsNest YES) (rebuildRatsNest NO))", "N ///NO"},
          {"in either order", "(net N (rebuildRatsNest NO) (drawRatsNest YES))", "N ///YES"},
          {"unknown", "(net N (foo 1) (pin 2) (Type A))", "N ///"},
          {"no pin", "(net N (comp R1))", "N /// R1."},
          {"first pin counts", "(net N (comp R1 (pin 1) (pin 2)))", "N /// R1.1"},
          {"one component twice", "(net N (comp R1 (pin 1)) (comp R1 (pin 1)))", "N /// R1.1 R1.1"},
          {"empty texts", "(net x (type \"\") (comp \"\"))", "x /// ."},
          {"no name", "(net (type A))", "raises \"net\" has no value 1"},
          {"no type", "(net N (type))", "raises \"type\" has no value 1"},
          {"no lock mode", "(net N (lockMode))", "raises \"lockMode\" has no value 1"},
          {"no pen", "(net N (pen))", "raises \"pen\" has no value 1"},
          {"no rats nest", "(net N (drawRatsNest))", "raises \"drawRatsNest\" has no value 1"},
          {"nor the other", "(net N (rebuildRatsNest))", "raises \"rebuildRatsNest\" has no value 1"},
          {"no component", "(net N (comp (pin 1)))", "raises \"comp\" has no value 1"},
          {"no pin name", "(net N (comp R1 (pin)))", "raises \"pin\" has no value 1"},
      },
      [](const CECadClsLvl& node) { return Show(*ReadNet(node)); });
}

TEST(NetWriting, ConstantsTakeThePlaceOfWhatWasRead) {
  Tree tree("(net N (type SIGNAL) (lockMode FIXED) (pen 3) (rebuildRatsNest NO) (comp R1 (pin 1)) (comp R2))");
  const auto p = ReadNet(tree.Form());
  EXPECT_EQ(
      "(net \"N\"\n(type SIGNAL)\n(lockMode UNFIXED)\n(pen 3)\n(drawRatsNest NO)\n(rebuildRatsNest YES)\n"
      "(comp R1 (pin 1))\n(comp R2 (pin ))\n)\n",
      Printed(*p));
}

TEST(NetWriting, PercentSignsDoubleWithEveryWrite) {
  CBDnet net;
  net.m_sName = "A%B%";
  net.m_sType = "%s";
  const auto text = [](const char* szName) {
    return std::string("(net \"") + szName +
           "\"\n(type %s)\n(lockMode UNFIXED)\n(pen )\n(drawRatsNest NO)\n(rebuildRatsNest YES)\n)\n";
  };
  EXPECT_EQ(text("A%%B%%"), Printed(net));
  EXPECT_EQ("A%%B%%", net.m_sName);
  EXPECT_EQ(text("A%%%%B%%%%"), Printed(net));
  EXPECT_EQ("%s", net.m_sType);
}

TEST(NetWriting, NothingIsEscaped) {
  CBDrefPin pin;
  pin.m_sComp = "R\"1)";
  pin.m_sPin = "a%b c";
  EXPECT_EQ("(comp R\"1) (pin a%b c))\n", Printed(pin));
  EXPECT_EQ("a%b c", pin.m_sPin);
}

TEST(NetWriting, NullsAreNothing) {
  CBDnet net;
  net.m_pRefPinArray->Add(nullptr);
  const std::string text =
      "(net \"\"\n(type )\n(lockMode UNFIXED)\n(pen )\n(drawRatsNest NO)\n(rebuildRatsNest YES)\n)\n";
  EXPECT_EQ(text, Printed(net));
  delete std::exchange(net.m_pRefPinArray, nullptr);
  EXPECT_EQ(text, Printed(net));
  EXPECT_NE("", RaisedBy([&] { net.nPrint2File(nullptr); }));
  EXPECT_NE("", RaisedBy([&] { CBDrefPin().nPrint2File(nullptr); }));
}

TEST(NetObjects, CopiesShareThePins) {
  CBDnet net;
  net.m_sName = "N";
  net.m_sRatsNest = "YES";
  CBDnet copy(net);
  EXPECT_EQ(net.m_pRefPinArray, copy.m_pRefPinArray);
  EXPECT_EQ("N", copy.m_sName);
  EXPECT_EQ("YES", copy.m_sRatsNest);
  copy.m_pRefPinArray = nullptr;
}

TEST(SubBoardReading, Rows) {
  CheckReading(
      {
          {"all", "(subBoard 3 (relativePath a/b.pcf))", "3 a/b.pcf"},
          {"no path", "(subBoard 3)", "3 "},
          {"first path counts", "(subBoard 3 (relativePath a) (relativePath b))", "3 a"},
          {"unknown", "(subBoard 3 (path a))", "3 "},
          {"garbage number", "(subBoard x)", "0 "},
          {"no number", "(subBoard (relativePath a))", "raises \"subBoard\" has no value 1"},
          {"empty path form", "(subBoard 3 (relativePath))", "raises \"relativePath\" has no value 1"},
      },
      [](const CECadClsLvl& node) {
        const auto p = ReadSubBoard(node);
        return std::to_string(p->m_nId) + " " + Str(p->m_sRelativePath);
      });
  EXPECT_EQ(0, CBDsubBoard().m_nId);
}

}  // namespace
