#include "designdata/DesignDataTestSupport.h"

namespace {

// A component shows as {name,type,gates,function,[symbols],[pins]}, a pin as {seventh,gate pin,id,[names]}.
struct Case {
  const char* name;
  std::string_view text;
  std::string components;
};

std::string Repeated(const char* sz, int n) {
  std::string s;
  for (int i = 0; i < n; ++i) s += sz;
  return s;
}

TEST(ComponentFile, EveryLine) {
  const Case kCases[] = {
      {"component", "$COMP \"A B\"\n$COMP_END\n", "[{A B,parts,1,,[],[]}]"},
      {"unquoted", "$COMP A\n$COMP_END\n", "[{A,parts,1,,[],[]}]"},
      {"no name", "$COMP\n$COMP_END\n", "[{,parts,1,,[],[]}]"},
      {"not closed", "$COMP A\ngateCount = 2\n", "[]"},
      {"replaced before it is closed", "$COMP A\n$COMP B\n$COMP_END\n", "[{B,parts,1,,[],[]}]"},
      {"closed twice enters once", "$COMP A\n$COMP_END\n$COMP_END\n", "[{A,parts,1,,[],[]}]"},
      {"closed without a component", "$COMP_END\n", "[]"},
      {"closed with text behind", "$COMP A X\n$COMP_END x\n", "[{A,parts,1,,[],[]}]"},
      {"keyword in quotes", "\"$COMP\" A\n$COMP_END\n", "[{A,parts,1,,[],[]}]"},
      {"keywords of other case", "$COMP A\n$COMP_end\n$COMP_END\ngatecount = 3\nPin 1\n", "[{A,parts,1,,[],[]}]"},
      {"keywords not whole or not first", "$COMPA A\n$COMP_ENDS\nx $COMP A\n$comp A\n", "[]"},
      {"componentType", "$COMP A\ncomponentType = ic\n$COMP_END\n", "[{A,ic,1,,[],[]}]"},
      {"componentType without a value", "$COMP A\ncomponentType =\n$COMP_END\n", "[{A,,1,,[],[]}]"},
      {"componentType quoted", "$COMP A\ncomponentType = \"a b\"\n$COMP_END\n", "[{A,a b,1,,[],[]}]"},
      {"componentType of two words", "$COMP A\ncomponentType = a b\n$COMP_END\n", "[{A,a,1,,[],[]}]"},
      {"the last componentType counts", "$COMP A\ncomponentType = a\ncomponentType = b\n$COMP_END\n",
       "[{A,b,1,,[],[]}]"},
      {"functionName of two words, twice", "$COMP A\nfunctionName = G\nfunctionName = F G\n$COMP_END\n",
       "[{A,parts,1,F,[],[]}]"},
      {"functionName", "$COMP A\n  functionName = \"F G\"\n$COMP_END\n", "[{A,parts,1,F G,[],[]}]"},
      {"functionName without a value", "$COMP A\nfunctionName = F\nfunctionName\n$COMP_END\n", "[{A,parts,1,,[],[]}]"},
      {"gateCount", "$COMP A\ngateCount = 4\n$COMP_END\n", "[{A,parts,4,,[],[]}]"},
      {"gateCount no number", "$COMP A\ngateCount = x\n$COMP_END\n", "[{A,parts,0,,[],[]}]"},
      {"gateCount with another sign", "$COMP A\ngateCount x 4\n$COMP_END\n", "[{A,parts,4,,[],[]}]"},
      {"gateCount with letters behind", "$COMP A\ngateCount = 4x\n$COMP_END\n", "[{A,parts,4,,[],[]}]"},
      {"gateCount quoted", "$COMP A\ngateCount = \"4\"\n$COMP_END\n", "[{A,parts,4,,[],[]}]"},
      {"gateCount of two numbers", "$COMP A\ngateCount = 4 5\n$COMP_END\n", "[{A,parts,4,,[],[]}]"},
      {"gateCount negative", "$COMP A\ngateCount = -2\n$COMP_END\n", "[{A,parts,-2,,[],[]}]"},
      {"gateCount without a value", "$COMP A\ngateCount\n$COMP_END\n", "[{A,parts,0,,[],[]}]"},
      {"no blanks around the sign: another column", "$COMP A\ngateCount=4\n$COMP_END\n", "[{A,parts,1,,[],[]}]"},
      // symbolName
      {"no symbol", "$COMP A\n$COMP_END\n", "[{A,parts,1,,[],[]}]"},
      {"three symbols", "$COMP A\nsymbolName = X Y Z\n$COMP_END\n", "[{A,parts,1,,[X,Y,Z],[]}]"},
      {"two lines", "$COMP A\nsymbolName = X\nsymbolName = Y X\n$COMP_END\n", "[{A,parts,1,,[X,Y,X],[]}]"},
      {"symbol line of three columns and trailing blanks", "$COMP A\nsymbolName = X   \n$COMP_END\n",
       "[{A,parts,1,,[X],[]}]"},
      {"a quoted blank counts as one more", "$COMP A\nsymbolName = \"X Y\" Z\n$COMP_END\n",
       "[{A,parts,1,,[X Y,Z,],[]}]"},
      {"a quoted run of blanks counts once", "$COMP A\nsymbolName = \"X  Y\"\n$COMP_END\n",
       "[{A,parts,1,,[X  Y,],[]}]"},
      {"a quoted blank in front", "$COMP A\nsymbolName = \" X\"\n$COMP_END\n", "[{A,parts,1,,[ X,],[]}]"},
      {"two quoted blanks", "$COMP A\nsymbolName = \"X Y Z\"\n$COMP_END\n", "[{A,parts,1,,[X Y Z,,],[]}]"},
      {"empty quotes", "$COMP A\nsymbolName = X \"\"\n$COMP_END\n", "[{A,parts,1,,[X,],[]}]"},
      {"two columns by blanks: the third by quotes", "$COMP A\nsymbolName \"A\"\"B\"\n$COMP_END\n",
       "[{A,parts,1,,[B],[]}]"},
      {"white space in front is not counted", "$COMP A\n\t symbolName = X\n$COMP_END\n", "[{A,parts,1,,[X],[]}]"},
      {"a tab behind is", "$COMP A\nsymbolName = X \t\n$COMP_END\n", "[{A,parts,1,,[X,],[]}]"},
      {"a tab inside is none", "$COMP A\nsymbolName = X\tY\n$COMP_END\n", "[{A,parts,1,,[X\tY],[]}]"},
      {"settings behind the end reach the component just closed, the next takes them over",
       "$COMP A\n$COMP_END\n$COMP_END\nsymbolName = S\nfunctionName = F\n$COMP_END\ncomponentType = T\n$COMP "
       "B\ngateCount = 2\n",
       "[{A,T,1,F,[S],[]}]"},
      {"glued quotes bring columns that are not counted", "$COMP A\nsymbolName = X\"Y\" Z\n$COMP_END\n",
       "[{A,parts,1,,[X,Y],[]}]"},
      // pin
      {"pin", "$COMP A\npin 1 = IN A,B,C G \"s v\"\n$COMP_END\n", "[{A,parts,1,,[],[{s v,G,1,[A,B,C]}]}]"},
      {"pin no number", "$COMP A\npin x = IN A G S\n$COMP_END\n", "[{A,parts,1,,[],[{S,G,0,[A]}]}]"},
      {"pin with a quoted list, and an eighth column", "$COMP A\npin 1 = IN \"A B,C\" G S T\n$COMP_END\n",
       "[{A,parts,1,,[],[{S,G,1,[A B,C]}]}]"},
      {"pin with an empty list", "$COMP A\npin 1 = IN \"\" G S\n$COMP_END\n", "[{A,parts,1,,[],[{S,G,1,[]}]}]"},
      {"pin with other words", "$COMP A\npin -3 x y A\npin 7x = IN A G\n$COMP_END\n",
       "[{A,parts,1,,[],[{,,-3,[A]},{,G,7,[A]}]}]"},
      {"pin with an empty name in its list", "$COMP A\npin 1 = IN A,,B G\n$COMP_END\n",
       "[{A,parts,1,,[],[{,G,1,[A,,B]}]}]"},
      {"lines that end in CR LF", "$COMP A\r\nsymbolName = X \r\npin 1 = IN A,B\r\n$COMP_END\r\n$COMP B\r\n$COMP_END",
       "[{A,parts,1,,[X],[{,,1,[A,B]}]},{B,parts,1,,[],[]}]"},
      {"commas at the ends", "$COMP A\npin 1 = IN ,A, G S\n$COMP_END\n", "[{A,parts,1,,[],[{S,G,1,[,A,]}]}]"},
      {"settings behind the end reach the component just closed", "$COMP A\n$COMP_END\ngateCount = 2\npin 1 = IN A\n",
       "[{A,parts,2,,[],[{,,1,[A]}]}]"},
      {"settings before the first component",
       "componentType = a\nfunctionName = b\ngateCount = 3\nsymbolName = c\npin 1 = IN A\n$COMP A\n$COMP_END\n",
       "[{A,parts,1,,[],[]}]"},
      {"all else is skipped", "hello\n$COMP A\n(part x\ncolour = red\n)\n$COMP_END\nPIN 1\n", "[{A,parts,1,,[],[]}]"},
  };
  for (const Case& c : kCases) {
    EXPECT_EQ(Show(*Loaded(Kind::components, c.text)->m_pLcdbCmpCompArray), c.components) << c.name;
  }
}

const CVRXoutLcdbCmpComp& Only(const CPC_BD_OutClsGet& data) {
  EXPECT_EQ(data.m_pLcdbCmpCompArray->GetSize(), 1);
  return *data.m_pLcdbCmpCompArray->GetAt(0);
}

// One empty name looks like none in the lines above.
TEST(ComponentFile, EmptyNames) {
  struct Count {
    const char* line;
    int symbols;
    int pinNames;
  };
  const Count kCounts[] = {
      {"symbolName", 1, -1},   {"symbolName =", 1, -1},     {"symbolName = ", 1, -1}, {"pin 1 = IN", 0, 1},
      {"pin", 0, 1},           {"pin 1 = IN \"\" G", 0, 1}, {"pin 1 = IN , G", 0, 2}, {"pin 1 = IN A,,B G", 0, 3},
      {"pin 1 = IN A G", 0, 1}};
  for (const Count& c : kCounts) {
    const auto pData = Loaded(Kind::components, "$COMP A\n" + std::string(c.line) + "\n$COMP_END\n");
    const CVRXoutLcdbCmpComp& comp = Only(*pData);
    EXPECT_EQ(comp.m_aSymbolNames.GetSize(), c.symbols) << c.line;
    EXPECT_EQ(comp.m_pPinArray->IsEmpty() ? -1 : comp.m_pPinArray->GetAt(0)->m_aPinNames.GetSize(), c.pinNames)
        << c.line;
  }
}

TEST(ComponentFile, AtMostAHundredNamesOfAPin) {
  for (const int n : {1, 99, 100, 101, 102, 300}) {
    std::string names = "n1";
    for (int i = 2; i <= n; ++i) names += ",n" + std::to_string(i);
    const auto pData = Loaded(Kind::components, "$COMP A\npin 1 = IN " + names + " G S\n$COMP_END\n");
    const CVRXoutLcdbCmpCompPin& pin = *Only(*pData).m_pPinArray->GetAt(0);
    const int nKept = std::min(n, 100);
    ASSERT_EQ(pin.m_aPinNames.GetSize(), nKept);
    EXPECT_EQ(pin.m_aPinNames[nKept - 1], ("n" + std::to_string(nKept)).c_str());
    EXPECT_EQ(pin.m_sGatePinName, "G");
  }
}

// Up to a hundred columns are counted; beyond that the count is a position.
TEST(ComponentFile, ManySymbols) {
  for (const int n : {97, 98}) {  // with the two columns in front, 99 and 100
    const auto pData = Loaded(Kind::components, "$COMP A\nsymbolName =" + Repeated(" s", n) + "\n$COMP_END\n");
    EXPECT_EQ(Only(*pData).m_aSymbolNames.GetSize(), n);
  }
  // The hundredth blank stands at position 1: less than three, so one name.
  auto pData = Loaded(Kind::components, "$COMP A\nsymbolName =" + Repeated(" s", 99) + "\n$COMP_END\n");
  EXPECT_EQ(Only(*pData).m_aSymbolNames.GetSize(), 1);
  // Behind a hundredth column of 150 bytes it stands at 150: so many columns are asked for.
  pData = Loaded(Kind::components,
                 "$COMP A\nsymbolName =" + Repeated(" s", 97) + " " + std::string(150, 't') + " u\n$COMP_END\n");
  const CStringArray& names = Only(*pData).m_aSymbolNames;
  ASSERT_EQ(names.GetSize(), 148);
  EXPECT_EQ(names[97].GetLength(), 150);
  EXPECT_EQ(names[98], "u");
  EXPECT_EQ(names[99], "");
}

TEST(ComponentLookUp, GivesTheFirst) {
  const auto pData =
      Loaded(Kind::components,
             "$COMP A\nfunctionName = F\npin 1 = IN A,B G1\npin 1 = IN C,B G2\npin 2 = IN D G3\n$COMP_END\n"
             "$COMP B\nfunctionName = F\n$COMP_END\n$COMP A\n$COMP_END\n");
  const CVRXoutLcdbCmpCompArray& comps = *pData->m_pLcdbCmpCompArray;
  EXPECT_EQ(comps.pGetBDOutLcdbCmpCompFromCompName("A"), comps.GetAt(0));
  EXPECT_EQ(comps.pGetBDOutLcdbCmpCompFromCompName("B"), comps.GetAt(1));
  EXPECT_EQ(comps.pGetBDOutLcdbCmpCompFromCompName("a"), nullptr);
  EXPECT_EQ(comps.pGetBDOutLcdbCmpCompFromFunctionName("F"), comps.GetAt(0));
  EXPECT_EQ(comps.pGetBDOutLcdbCmpCompFromFunctionName(""), comps.GetAt(2));
  EXPECT_EQ(comps.pGetBDOutLcdbCmpCompFromFunctionName("f"), nullptr);
  const CVRXoutLcdbCmpComp& comp = *comps.GetAt(0);
  comp.m_pPinArray->SetSize(4);
  EXPECT_EQ(comp.pGetLcdbCmpCompPinWithPinID(1), comp.m_pPinArray->GetAt(0));
  EXPECT_EQ(comp.pGetLcdbCmpCompPinWithPinID(2), comp.m_pPinArray->GetAt(2));
  EXPECT_EQ(comp.pGetLcdbCmpCompPinWithPinID(-1), nullptr);
  EXPECT_EQ(comp.sGetLcdbCmpCompPinGatePinNameWithPinName("B"), "G1");
  EXPECT_EQ(comp.sGetLcdbCmpCompPinGatePinNameWithPinName("C"), "G2");
  EXPECT_EQ(comp.sGetLcdbCmpCompPinGatePinNameWithPinName("D"), "G3");
  EXPECT_EQ(comp.sGetLcdbCmpCompPinGatePinNameWithPinName("b"), "");
}

TEST(ComponentFile, DefaultsOfRecords) {
  EXPECT_EQ(Show(CVRXoutLcdbCmpComp()), "{,parts,1,,[],[]}");
  EXPECT_EQ(Show(CVRXoutLcdbCmpCompPin()), "{,,-1,[]}");
}

TEST(ComponentFile, EachLoadStartsWithoutAComponent) {
  CPC_BD_OutClsGet data;
  Load(data, Kind::components, "$COMP A\n");
  Load(data, Kind::components, "gateCount = 2\n$COMP_END\n");
  EXPECT_EQ(data.m_pLcdbCmpCompArray->GetSize(), 0);
  Load(data, Kind::components, "$COMP A\n$COMP_END\n");
  Load(data, Kind::components, "gateCount = 9\npin 1 = IN A\n");
  EXPECT_EQ(Show(*data.m_pLcdbCmpCompArray), "[{A,parts,1,,[],[]}]");
}

// Behind a hundred columns the count is a position: a long hundredth column brings as many empty names.
TEST(ComponentFile, AsManyEmptyNamesAsBytes) {
  constexpr int kBytes = 1000000;
  const auto pData = Loaded(Kind::components, "$COMP A\nsymbolName =" + Repeated(" s", 97) + " " +
                                                  std::string(kBytes, 't') + " u\n$COMP_END\n");
  EXPECT_EQ(Only(*pData).m_aSymbolNames.GetSize(), kBytes - 2);
}

TEST(ComponentLookUp, GivesTheFirstThoughItIsEmpty) {
  const auto pData = Loaded(Kind::components,
                            "$COMP A\npin 1 = IN A\npin 2 = IN A G\npin x = IN X,,Y H\npin 4 = IN Z,Z I\n$COMP_END\n");
  const CVRXoutLcdbCmpComp& comp = Only(*pData);
  EXPECT_EQ(comp.sGetLcdbCmpCompPinGatePinNameWithPinName("A"), "");
  EXPECT_EQ(comp.sGetLcdbCmpCompPinGatePinNameWithPinName(""), "H");
  EXPECT_EQ(comp.sGetLcdbCmpCompPinGatePinNameWithPinName("Z"), "I");
  EXPECT_EQ(comp.pGetLcdbCmpCompPinWithPinID(0), comp.m_pPinArray->GetAt(2));
}

TEST(ComponentLookUp, NullSlotsAndNullArrays) {
  const auto pData = Loaded(Kind::components, "$COMP A\nfunctionName = F\npin 1 = IN A G\n$COMP_END\n");
  CVRXoutLcdbCmpCompArray& comps = *pData->m_pLcdbCmpCompArray;
  CVRXoutLcdbCmpComp& comp = *comps.GetAt(0);
  CVRXoutLcdbCmpComp* pNoComp = nullptr;
  comps.InsertAt(0, pNoComp);
  CVRXoutLcdbCmpCompPin* pNoPin = nullptr;
  comp.m_pPinArray->InsertAt(0, pNoPin);
  EXPECT_EQ(comps.pGetBDOutLcdbCmpCompFromCompName("A"), &comp);
  EXPECT_EQ(comps.pGetBDOutLcdbCmpCompFromFunctionName("F"), &comp);
  EXPECT_EQ(comp.pGetLcdbCmpCompPinWithPinID(1), comp.m_pPinArray->GetAt(1));
  EXPECT_EQ(comp.sGetLcdbCmpCompPinGatePinNameWithPinName("A"), "G");
  delete std::exchange(comp.m_pPinArray, nullptr);
  EXPECT_THROW(comp.pGetLcdbCmpCompPinWithPinID(1), CInvalidArgException);
  EXPECT_THROW(comp.sGetLcdbCmpCompPinGatePinNameWithPinName("A"), CInvalidArgException);
}

TEST(ComponentFile, RemarksOfLinesWithoutAComponent) {
  for (const char* sz : {"$COMP_END", "componentType", "functionName", "symbolName", "gateCount", "pin"}) {
    EXPECT_THAT(RemarksOf(Kind::components, std::string("\t") + sz + " = 1\n"),
                testing::ElementsAre("file:1:2: warning: there is nothing yet that \"" + std::string(sz) +
                                     "\" could belong to: the line is skipped"));
  }
}

TEST(ComponentFile, RemarksOfLinesBehindTheEnd) {
  for (const char* sz : {"$COMP_END", "componentType", "functionName", "symbolName", "gateCount", "pin"}) {
    EXPECT_THAT(RemarksOf(Kind::components, "// two\n$COMP A\n" + std::string(sz == "$COMP_END"s ? "pin" : sz) +
                                                " = 1\n$COMP_END\n " + sz + " = 1\n$COMP B\n$COMP_END\n"),
                testing::ElementsAre("file:5:2: note: \"" + std::string(sz) +
                                     "\" stands behind the end of what it belongs to"));
  }
}

}  // namespace
