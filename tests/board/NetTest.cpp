#include <cstdio>

#include "base/AllocationFault.h"
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
          {"only the first pin is looked at", "(net N (comp R1 (pin 1) (pin)))", "N /// R1.1"},
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

TEST(NetWriting, OnlyTheNameIsQuotedAndDoubled) {
  CBDnet net;
  net.m_sName = "a\"b\\";
  net.m_sType = "A (B)%";
  net.m_sPen = "1 %2";
  EXPECT_EQ(
      "(net \"a\"b\\\"\n(type A (B)%)\n(lockMode UNFIXED)\n(pen 1 %2)\n(drawRatsNest NO)\n(rebuildRatsNest YES)\n)\n",
      Printed(net));
  EXPECT_EQ("A (B)%", net.m_sType);
  EXPECT_EQ("1 %2", net.m_sPen);
}

TEST(NetWriting, WithoutAStreamNothingChanges) {
  CBDnet net;
  net.m_sName = "A%";
  EXPECT_NE("", RaisedBy([&] { net.nPrint2File(nullptr); }));
  EXPECT_EQ("A%", net.m_sName);
}

TEST(NetWriting, WithoutMemoryTheNameIsTheOldOrTheNewOne) {
  CBDnet net;
  const std::string old = std::string(600, 'x') + "%";
  bool bWhole = true;
  const int nFailures = laminate::test::ForEachFailingAllocation(
      laminate::test::OnlyPlatforms([&] {
        net.m_sName = CString(old);
        std::FILE* fp = std::fopen("/dev/null", "w");
        try {
          net.nPrint2File(fp);
        } catch (...) {
          std::fclose(fp);
          throw;
        }
        std::fclose(fp);
      }),
      [&] {
        bWhole = bWhole && (net.m_sName.View() == old || net.m_sName.View() == old + "%" || net.m_sName.IsEmpty());
      });
  EXPECT_TRUE(bWhole);
  EXPECT_GT(nFailures, 0);
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
  CString* const texts[] = {&net.m_sName, &net.m_sType,     &net.m_sLockMode,
                            &net.m_sPen,  &net.m_sRatsNest, &net.m_sReserved1};
  for (std::size_t i = 0; i < std::size(texts); ++i) *texts[i] = std::to_string(i);
  const auto expectShared = [&net](CBDnet& copy) {
    EXPECT_EQ("0", copy.m_sName);
    EXPECT_EQ("1", copy.m_sType);
    EXPECT_EQ("2", copy.m_sLockMode);
    EXPECT_EQ("3", copy.m_sPen);
    EXPECT_EQ("4", copy.m_sRatsNest);
    EXPECT_EQ("5", copy.m_sReserved1);
    EXPECT_EQ(net.m_pRefPinArray, copy.m_pRefPinArray);
    copy.m_pRefPinArray = nullptr;
    copy.m_sName = "changed";
    EXPECT_EQ("0", net.m_sName);
  };
  CBDnet copy(net);
  expectShared(copy);
  CBDnet assigned;
  const std::unique_ptr<CBDrefPinArray> pOld(assigned.m_pRefPinArray);
  assigned = net;
  expectShared(assigned);

  CBDrefPin pin;
  pin.m_sComp = "R1";
  pin.m_sPin = "2";
  CBDrefPin pinAssigned;
  pinAssigned = pin;
  for (const CBDrefPin& each : {CBDrefPin(pin), pinAssigned}) {
    EXPECT_EQ("R1", each.m_sComp);
    EXPECT_EQ("2", each.m_sPin);
  }
}

TEST(NetObjects, StartEmptyWithTheirFieldsInOrder) {
  static_assert(std::has_virtual_destructor_v<CBDnet> && std::has_virtual_destructor_v<CBDrefPin>);
  static_assert(std::has_virtual_destructor_v<CBDsubBoard>);
  const CBDnet net;
  const CString* const texts[] = {&net.m_sName, &net.m_sType,     &net.m_sLockMode,
                                  &net.m_sPen,  &net.m_sRatsNest, &net.m_sReserved1};
  for (std::size_t i = 0; i < std::size(texts); ++i) {
    EXPECT_EQ("", *texts[i]);
    EXPECT_TRUE(i == 0 || texts[i - 1] < texts[i]) << i;
  }
  EXPECT_LT(static_cast<const void*>(texts[5]), static_cast<const void*>(&net.m_pRefPinArray));
  ASSERT_NE(nullptr, net.m_pRefPinArray);
  EXPECT_TRUE(net.m_pRefPinArray->IsEmpty());
  const CBDrefPin pin;
  EXPECT_EQ("", pin.m_sComp);
  EXPECT_EQ("", pin.m_sPin);
  EXPECT_LT(&pin.m_sComp, &pin.m_sPin);
  const CBDsubBoard board;
  EXPECT_EQ(0, board.m_nId);
  EXPECT_EQ("", board.m_sRelativePath);
  EXPECT_LT(static_cast<const void*>(&board.m_nId), static_cast<const void*>(&board.m_sRelativePath));
}

TEST(SubBoardObjects, AreCopied) {
  CBDsubBoard board;
  board.m_nId = 3;
  board.m_sRelativePath = "p";
  CBDsubBoard copy(board);
  CBDsubBoard assigned;
  assigned = board;
  for (CBDsubBoard* p : {&copy, &assigned}) {
    EXPECT_EQ(3, p->m_nId);
    EXPECT_EQ("p", p->m_sRelativePath);
    p->m_sRelativePath = "q";
    EXPECT_EQ("p", board.m_sRelativePath);
  }
}

TEST(SubBoardReading, Rows) {
  CheckReading(
      {
          {"all", "(subBoard 3 (relativePath a/b.pcf))", "3 a/b.pcf"},
          {"no path", "(subBoard 3)", "3 "},
          {"first path counts", "(subBoard 3 (relativePath a) (relativePath b))", "3 a"},
          {"unknown", "(subBoard 3 (path a))", "3 "},
          {"garbage number", "(subBoard x)", "0 "},
          {"below 0", "(subBoard -3)", "-3 "},
          {"number and garbage", "(subBoard 12abc)", "12 "},
          {"cut to 32 bits", "(subBoard 4294967299)", "3 "},
          {"saturated, then cut", "(subBoard 99999999999999999999)", "-1 "},
          {"first value counts", "(subBoard 3 9)", "3 "},
          {"no number", "(subBoard (relativePath a))", "raises \"subBoard\" has no value 1"},
          {"empty path form", "(subBoard 3 (relativePath))", "raises \"relativePath\" has no value 1"},
      },
      [](const CECadClsLvl& node) {
        const auto p = ReadSubBoard(node);
        return std::to_string(p->m_nId) + " " + Str(p->m_sRelativePath);
      });
}

}  // namespace
