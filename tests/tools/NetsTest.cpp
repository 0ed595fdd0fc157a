#include "CommandRunner.h"

namespace {

struct Nets : CommandTest {
  Nets() { folder.Write("b.pcf", kBoard); }
};

TEST_F(Nets, AreALineEach) {
  const CommandResult result = run({"nets", "b.pcf"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.out, "VCC 3V3\tR1.1 R2.1\nGND\tR1.2\nNC\t\n");
}

TEST_F(Nets, AreAnArrayInJson) {
  const CommandResult result = run({"nets", "b.pcf", "--json"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out,
            "[\n"
            "{\"class\": \"CBDnet\", \"m_sName\": \"VCC 3V3\", \"m_sType\": \"POWER\", \"m_sLockMode\": \"\", "
            "\"m_sPen\": \"1\", \"m_sRatsNest\": \"\", \"m_pRefPinArray\": [\n"
            "{\"class\": \"CBDrefPin\", \"m_sComp\": \"R1\", \"m_sPin\": \"1\"},\n"
            "{\"class\": \"CBDrefPin\", \"m_sComp\": \"R2\", \"m_sPin\": \"1\"}]},\n"
            "{\"class\": \"CBDnet\", \"m_sName\": \"GND\", \"m_sType\": \"POWER\", \"m_sLockMode\": \"\", "
            "\"m_sPen\": \"2\", \"m_sRatsNest\": \"\", \"m_pRefPinArray\": [\n"
            "{\"class\": \"CBDrefPin\", \"m_sComp\": \"R1\", \"m_sPin\": \"2\"}]},\n"
            "{\"class\": \"CBDnet\", \"m_sName\": \"NC\", \"m_sType\": \"NORMAL\", \"m_sLockMode\": \"\", "
            "\"m_sPen\": \"0\", \"m_sRatsNest\": \"\", \"m_pRefPinArray\": []}]\n");
}

TEST_F(Nets, OfABoardWithoutAnyAreEmpty) {
  folder.Write("b.pcf", "(pcf\n)\n");
  EXPECT_EQ(run({"nets", "b.pcf"}).out, "");
  EXPECT_EQ(run({"nets", "b.pcf", "--json"}).out, "[]\n");
}

TEST_F(Nets, AreTheSameWithTwoByteLineEnds) {
  std::string s;
  for (char c : std::string(kBoard)) s += c == '\n' ? std::string("\r\n") : std::string(1, c);
  const std::string sExpected = run({"nets", "b.pcf", "--json"}).out;
  folder.Write("b.pcf", s);
  EXPECT_EQ(run({"nets", "b.pcf", "--json"}).out, sExpected);
}

TEST_F(Nets, KeepTheirBytesInThePlainFormAndAreConvertedInJson) {
  folder.Write("b.pcf", "(pcf\n(boardContainer\n(nets\n(net \"\x93\xFA\x96\x7B\"\n)\n)\n)\n)\n");
  EXPECT_EQ(run({"nets", "b.pcf"}).out, "\x93\xFA\x96\x7B\t\n");
  EXPECT_NE(run({"nets", "b.pcf", "--json"}).out.find("\"m_sName\": \"\u65E5\u672C\""), std::string::npos);
}

TEST_F(Nets, WithLineEndsInTheirNamesStayOnTheirLine) {
  folder.Write("b.pcf", "(pcf\n(boardContainer\n(nets\n(net \"A\nB\tC\"\n)\n)\n)\n)\n");
  EXPECT_EQ(run({"nets", "b.pcf"}).out, "A B C\t\n");
}

}  // namespace
