#include "technology/CBDtechnologyContainer.h"

#include "technology/CBDcondLayer.h"
#include "technology/CBDfootprintLayer.h"
#include "technology/CBDmap.h"
#include "technology/CBDnonConductiveLayer.h"
#include "technology/CBDsubLayer.h"
#include "technology/LibraryForms.h"
#include "technology/RecordTestSupport.h"

using laminate::ReadFootprintTechnology;
using laminate::ReadTechnology;

namespace {

std::string Show(const CBDtechnologyContainer& t) {
  std::string s = Str(t.m_sName) + " " + std::to_string(t.m_nConductorLayers);
  for (const CBDfootprintLayer* p : *t.m_pFootprintLayerArray) s += " F:" + Str(p->m_sName) + "/" + Str(p->m_sType);
  for (const CBDnonConductiveLayer* p : *t.m_pNonConductiveLayerArray) {
    s += " N:" + Str(p->m_sName) + "/" + std::to_string(p->m_nSortKey);
  }
  for (const CBDcondLayer* p : *t.m_pCondLayerArray) {
    s += " C:" + std::to_string(p->m_nLayerNumber) + "/" + Str(p->m_sType) + "/" + std::to_string(p->m_nProperty) +
         "/" + Str(p->m_sSoldering);
    for (const CBDcondLayerRef* pRef : *p->m_pRefArray) s += "(" + Str(pRef->m_sName) + "/" + Str(pRef->m_sType) + ")";
  }
  for (const CBDsubLayer* p : *t.m_pSubLayerArray) s += " S:" + Str(p->m_sLayerKind) + "/" + Str(p->m_sName);
  for (const CBDmap* p : *t.m_pMapArray) {
    s += " M:" + Str(p->m_sName);
    for (const CBDcorrespondence* pc : *p->m_pCorrespondenceArray) {
      s += "(" + Str(pc->m_sFootLayer) + "=" + Str(pc->m_aBoardLayers) + ")";
    }
  }
  return s;
}

std::string ReadAndShow(const CECadClsLvl& node) {
  CBDtechnologyContainer technology;
  ReadTechnology(node, technology);
  return Show(technology);
}

/// A technology section that has what it must have, with one part of it replaced.
std::string Section(const std::string& footprint = "", const std::string& nonConductive = "",
                    const std::string& conductive = "", const std::string& sub = "", const std::string& more = "") {
  return "(technologyContainer (technology T (numberOfConductorLayer 2) (footprintLayer " + footprint +
         ") (nonConductiveLayer " + nonConductive + ") (conductiveLayer " + conductive + ") (subLayer " + sub + ") " +
         more + "))";
}
std::string Map(const std::string& correspondence) {
  return Section("", "", "", "", "(layerMapping (map A " + correspondence + "))");
}
std::string Board(const std::string& layers) {
  return Map("(correspondence (footLayer L) (boardLayer " + layers + "))");
}

TEST(TechnologyReading, FootprintLayers) {
  CheckReading(
      {
          {"any keyword", Section("(layer TOP (type CONDUCTIVE)) (x BODY (type COMPAREA))"),
           "T 2 F:TOP/CONDUCTIVE F:BODY/COMPAREA"},
          {"unknown child", Section("(layer TOP (color 1) (type A))"), "T 2 F:TOP/A"},
          {"first type counts", Section("(layer TOP (type A) (type B))"), "T 2 F:TOP/A"},
          {"first values count", Section("(layer \"TOP SIDE\" MORE (type \"A B\" C))"), "T 2 F:TOP SIDE/A B"},
          {"no name", Section("(layer (type A))"), "raises \"layer\" has no value 1"},
          {"no type", Section("(layer TOP)"), "raises \"layer\" has no \"type\""},
          {"empty type", Section("(layer TOP (type))"), "raises \"type\" has no value 1"},
      },
      ReadAndShow);
}

TEST(TechnologyReading, NonConductiveLayers) {
  CheckReading(
      {
          {"any keyword", Section("", "(layer SILK) (foo MASK)"), "T 2 N:SILK/-1 N:MASK/-1"},
          {"sort key", Section("", "(layer SILK (propertyI sortKey 5))"), "T 2 N:SILK/5"},
          {"repeated", Section("", "(layer SILK (propertyI sortKey 5) (propertyI sortKey 6))"), "T 2 N:SILK/6"},
          {"other property", Section("", "(layer SILK (propertyI width 5))"), "T 2 N:SILK/-1"},
          {"property without number", Section("", "(layer SILK (propertyI sortKey))"), "T 2 N:SILK/-1"},
          {"property without anything", Section("", "(layer SILK (propertyI))"), "T 2 N:SILK/-1"},
          {"unknown child", Section("", "(layer SILK (color 3))"), "T 2 N:SILK/-1"},
          {"garbage number", Section("", "(layer SILK (propertyI sortKey x))"), "T 2 N:SILK/0"},
          {"number with a tail", Section("", "(layer SILK MORE (propertyI sortKey -7x 9))"), "T 2 N:SILK/-7"},
          {"the item as it is spelled", Section("", "(layer SILK (propertyI SortKey 5) (propertyS sortKey 6))"),
           "T 2 N:SILK/-1"},
          {"no name", Section("", "(layer)"), "raises \"layer\" has no value 1"},
      },
      ReadAndShow);
}

TEST(TechnologyReading, ConductiveLayers) {
  CheckReading(
      {
          {"defaults", Section("", "", "(layerNumber 1)"), "T 2 C:1/POSI/-1/"},
          {"all", Section("", "", "(layerNumber 2 (type NEGA) (propertyI width 7) (soldering FLOW))"),
           "T 2 C:2/NEGA/7/FLOW"},
          {"repeated", Section("", "", "(layerNumber 2 (type A) (type B) (propertyI x 1) (propertyI y 2))"),
           "T 2 C:2/B/2/"},
          {"references", Section("", "", "(layerNumber 2 (refer MASK (type RESIST)) (refer PASTE (type P)))"),
           "T 2 C:2/POSI/-1/(MASK/RESIST)(PASTE/P)"},
          {"other forms", Section("", "", "(foo 3) (layerNumber 1 (foo 2))"), "T 2 C:1/POSI/-1/"},
          {"garbage number", Section("", "", "(layerNumber x)"), "T 2 C:0/POSI/-1/"},
          {"numbers with tails", Section("", "", "(layerNumber 3x 4) (layerNumber -2 (propertyI a b 9))"),
           "T 2 C:3/POSI/-1/ C:-2/POSI/0/"},
          {"first values count", Section("", "", "(layerNumber 1 (type A B) (soldering C D) (refer E F (type G H)))"),
           "T 2 C:1/A/-1/C(E/G)"},
          {"first type of a reference counts", Section("", "", "(layerNumber 1 (refer E (type G) (type)))"),
           "T 2 C:1/POSI/-1/(E/G)"},
          {"no number", Section("", "", "(layerNumber)"), "raises \"layerNumber\" has no value 1"},
          {"no type", Section("", "", "(layerNumber 1 (type))"), "raises \"type\" has no value 1"},
          {"no property number", Section("", "", "(layerNumber 1 (propertyI width))"),
           "raises \"propertyI\" has no value 2"},
          {"no soldering", Section("", "", "(layerNumber 1 (soldering))"), "raises \"soldering\" has no value 1"},
          {"reference without name", Section("", "", "(layerNumber 1 (refer (type A)))"),
           "raises \"refer\" has no value 1"},
          {"reference without type", Section("", "", "(layerNumber 1 (refer MASK))"),
           "raises \"refer\" has no \"type\""},
          {"reference with empty type", Section("", "", "(layerNumber 1 (refer MASK (type)))"),
           "raises \"type\" has no value 1"},
      },
      ReadAndShow);
}

TEST(TechnologyReading, SubLayers) {
  CheckReading(
      {
          {"system", Section("", "", "", "(systemLayer (type HOLE))"), "T 2 S:systemLayer/HOLE"},
          {"system without type", Section("", "", "", "(systemLayer)"), "T 2 S:systemLayer/"},
          {"first type counts", Section("", "", "", "(systemLayer (type HOLE MORE) (type))"), "T 2 S:systemLayer/HOLE"},
          {"a system layer's own value is none", Section("", "", "", "(systemLayer HOLE)"), "T 2 S:systemLayer/"},
          {"system with empty type", Section("", "", "", "(systemLayer (type))"), "raises \"type\" has no value 1"},
          {"drawn", Section("", "", "", "(drawLayerOf (conductive 1)) (infoLayerOf (nonConductive X))"),
           "T 2 S:conductive/1 S:nonConductive/X"},
          {"the last one counts", Section("", "", "", "(drawLayerOf (conductive 1) (nonConductive X))"),
           "T 2 S:nonConductive/X"},
          {"also conductive", Section("", "", "", "(drawLayerOf (nonConductive X) (conductive 1))"),
           "T 2 S:conductive/1"},
          {"neither", Section("", "", "", "(drawLayerOf (foo 1))"), "T 2 S:/"},
          {"no name", Section("", "", "", "(drawLayerOf (conductive))"), "raises \"conductive\" has no value 1"},
          {"others make none", Section("", "", "", "(conductive 1) (foo)"), "T 2"},
      },
      ReadAndShow);
}

TEST(TechnologyReading, Maps) {
  CheckReading(
      {
          {"any keyword", Section("", "", "", "", "(layerMapping (map A) (x A_THRU))"), "T 2 M:A M:A_THRU"},
          {"no map", Section("", "", "", "", "(layerMapping)"), "T 2"},
          {"no name", Section("", "", "", "", "(layerMapping (map))"), "raises \"map\" has no value 1"},
          {"board layers", Board("(conductive 1) (nonConductive SILK) (systemLayer (type HOLE))"),
           "T 2 M:A(L='1','SILK','HOLE')"},
          {"other board layers", Board("(foo 1) (drawLayerOf (conductive 1))"), "T 2 M:A(L=)"},
          {"board layers in the order of the file", Board("(nonConductive B) (conductive 2) (nonConductive A)"),
           "T 2 M:A(L='B','2','A')"},
          {"first values count", Board("(conductive 1x 2) (systemLayer (type HOLE MORE) (type))"),
           "T 2 M:A(L='1x','HOLE')"},
          {"first layers count",
           Map("(correspondence (footLayer L M) (footLayer) (boardLayer (conductive 1)) (boardLayer (conductive)))"),
           "T 2 M:A(L='1')"},
          {"several correspondences",
           Map("(correspondence (footLayer L) (boardLayer)) (correspondence (boardLayer) (footLayer L))"),
           "T 2 M:A(L=)(L=)"},
          {"only correspondences", Map("(foo (footLayer L))"), "T 2 M:A"},
          {"no foot layer", Map("(correspondence (boardLayer))"), "raises \"correspondence\" has no \"footLayer\""},
          {"empty foot layer", Map("(correspondence (footLayer) (boardLayer))"), "raises \"footLayer\" has no value 1"},
          {"no board layer", Map("(correspondence (footLayer L))"), "raises \"correspondence\" has no \"boardLayer\""},
          {"conductive without number", Board("(conductive)"), "raises \"conductive\" has no value 1"},
          {"non-conductive without name", Board("(nonConductive)"), "raises \"nonConductive\" has no value 1"},
          {"system without type", Board("(systemLayer)"), "raises \"systemLayer\" has no \"type\""},
          {"system with empty type", Board("(systemLayer (type))"), "raises \"type\" has no value 1"},
      },
      ReadAndShow);
}

std::string Technology(const std::string& name, const std::string& number, bool bMapped) {
  return "(technology " + name + " (numberOfConductorLayer " + number +
         ") (footprintLayer) (nonConductiveLayer) (conductiveLayer) (subLayer)" + (bMapped ? " (layerMapping))" : ")");
}

TEST(TechnologyReading, TheOneWithMostConductorLayersCounts) {
  const auto container = [](const std::string& s) { return "(technologyContainer " + s + ")"; };
  CheckReading(
      {
          {"the first of equals",
           container(Technology("A", "4", true) + Technology("B", "6", true) + Technology("C", "6", true)), "B 6"},
          {"only those that map layers",
           container(Technology("A", "4", true) + Technology("B", "6", false) + Technology("C", "8", false)), "A 4"},
          {"a later one that maps", container(Technology("A", "9", false) + Technology("B", "1", true)), "B 1"},
          {"the first one if none maps", container(Technology("A", "2", false) + Technology("B", "6", false)), "A 2"},
          {"negative numbers", container(Technology("A", "-5", true) + Technology("B", "-2", true)), "B -2"},
          {"numbers and not texts", container(Technology("A", "9", true) + Technology("B", "10", true)), "B 10"},
          {"numbers as far as they read", container(Technology("A", "6x", true) + Technology("B", "6", true)), "A 6"},
          {"the first that maps in any case",
           container(Technology("A", "2", false) + Technology("B", "0", true) + Technology("C", "0", true)), "B 0"},
          {"also below zero",
           container(Technology("A", "2", false) + Technology("B", "-3", true) + Technology("C", "-5", true)), "B -3"},
          {"also without digits", container(Technology("A", "2", false) + Technology("B", "x", true)), "B 0"},
          {"the first value counts", container(Technology("A", "4 9", true) + Technology("B", "5", true)), "B 5"},
          {"names are no matter", container(Technology("A", "4", true) + Technology("A", "6", true)), "A 6"},
          {"other forms", container("(foo)" + Technology("A", "2", true)), "A 2"},
          {"none at all", container("(foo)"), "raises \"technologyContainer\" has no \"technology\""},
          {"a candidate without number", container(Technology("A", "2", true) + "(technology B (layerMapping))"),
           "raises \"technology\" has no \"numberOfConductorLayer\""},
          {"one that is no candidate needs none", container(Technology("A", "2", true) + "(technology B)"), "A 2"},
          {"an empty number", container(Technology("A", "", true)), "raises \"numberOfConductorLayer\" has no value 1"},
          {"no name", container(Technology("", "2", true)), "raises \"technology\" has no value 1"},
      },
      ReadAndShow);
}

const std::vector<std::string> kSections = {"(numberOfConductorLayer 2)", "(footprintLayer (l F (type A)))",
                                            "(nonConductiveLayer (l N))", "(conductiveLayer (layerNumber 1))",
                                            "(subLayer (systemLayer))",   "(layerMapping (map A))"};
const std::string kAllSections = "T 2 F:F/A N:N/-1 C:1/POSI/-1/ S:systemLayer/ M:A";

std::string Joined(const std::vector<std::string>& sections, const std::string& more = "") {
  std::string s = "(technologyContainer (technology T ";
  for (const std::string& section : sections) s += section + " ";
  return s + more + "))";
}

TEST(TechnologyReading, SectionsCountInAnyOrderAndTheFirstOfEachKind) {
  std::vector<ReadCase> cases = {
      {"in order", Joined(kSections), kAllSections},
      {"in the reverse order", Joined({kSections.rbegin(), kSections.rend()}), kAllSections},
  };
  // What would add to the first or lack a value.
  for (const char* szSecond :
       {"(numberOfConductorLayer 8)", "(numberOfConductorLayer)", "(footprintLayer (l G (type B)))",
        "(footprintLayer (l))", "(nonConductiveLayer (l M))", "(nonConductiveLayer (l))",
        "(conductiveLayer (layerNumber 2))", "(conductiveLayer (layerNumber))", "(subLayer (drawLayerOf))",
        "(subLayer (systemLayer (type)))", "(layerMapping (map B))", "(layerMapping (map))", "(foo)"}) {
    cases.push_back({"a second", Joined(kSections, szSecond), kAllSections});
  }
  CheckReading(cases, ReadAndShow);
}

TEST(TechnologyReading, WhatStandsBeforeAFaultHasTakenEffect) {
  const struct {
    std::string sections;
    const char* expected;
    const char* raised;
  } cases[] = {
      // Without its number nothing of a technology is stored, not even the name.
      {"T", " 0", "\"technology\" has no \"numberOfConductorLayer\" in it"},
      {"(numberOfConductorLayer 2)", " 0", "\"technology\" has no value 1"},
      // Sections are looked up in a fixed order, each when its turn comes.
      {"T (numberOfConductorLayer 2)", "T 2", "\"technology\" has no \"footprintLayer\" in it"},
      {"T (numberOfConductorLayer 2) (subLayer (systemLayer)) (footprintLayer (l F (type A)))", "T 2 F:F/A",
       "\"technology\" has no \"nonConductiveLayer\" in it"},
      {"T (numberOfConductorLayer 2) (footprintLayer (l F (type A)) (l G)) (nonConductiveLayer (l N))", "T 2 F:F/A",
       "\"l\" has no \"type\" in it"},
      {"T (numberOfConductorLayer 2) (footprintLayer) (nonConductiveLayer (l N)) (subLayer (systemLayer)) "
       "(layerMapping (map A))",
       "T 2 N:N/-1", "\"technology\" has no \"conductiveLayer\" in it"},
      {"T (numberOfConductorLayer 2) (footprintLayer) (nonConductiveLayer (l N)) (conductiveLayer (layerNumber 1) "
       "(layerNumber 2 (type)))",
       "T 2 N:N/-1 C:1/POSI/-1/", "\"type\" has no value 1"},
      {"T (numberOfConductorLayer 2) (footprintLayer) (nonConductiveLayer) (conductiveLayer (layerNumber 1))",
       "T 2 C:1/POSI/-1/", "\"technology\" has no \"subLayer\" in it"},
      {"T (numberOfConductorLayer 2) (footprintLayer) (nonConductiveLayer) (conductiveLayer) (subLayer (systemLayer)) "
       "(layerMapping (map A) (map))",
       "T 2 S:systemLayer/ M:A", "\"map\" has no value 1"},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.sections);
    Tree tree("(technologyContainer (technology " + test.sections + "))");
    CBDtechnologyContainer technology;
    EXPECT_EQ(test.raised, RaisedBy([&] { ReadTechnology(tree.Form(), technology); }));
    EXPECT_EQ(test.expected, Show(technology));
    EXPECT_TRUE(tree.Boxes().empty());
  }
}

TEST(TechnologyReading, LeavesAloneWhatIsFilledByTheHost) {
  Tree tree(Section("", "(layer SILK (propertyI sortKey 5))", "(layerNumber 1 (propertyI width 7) (refer M (type R)))",
                    "(drawLayerOf (conductive 1)) (infoLayerOf (nonConductive X)) (systemLayer)"));
  CBDtechnologyContainer technology;
  ReadTechnology(tree.Form(), technology);
  EXPECT_TRUE(technology.m_pNonConductiveLayerArray->GetAt(0)->m_aProperties.IsEmpty());
  EXPECT_TRUE(technology.m_pCondLayerArray->GetAt(0)->m_aProperties.IsEmpty());
  EXPECT_EQ(0, technology.m_pCondLayerArray->GetAt(0)->m_pRefArray->GetAt(0)->m_nUserDefType);
  for (const CBDsubLayer* p : *technology.m_pSubLayerArray) EXPECT_EQ("systemLayer", p->m_sKind);
}

TEST(TechnologyReading, ASecondSectionAdds) {
  CBDtechnologyContainer technology;
  Tree tree(Section("(l A (type B))"));
  ReadTechnology(tree.Form(), technology);
  ReadTechnology(tree.Form(), technology);
  EXPECT_EQ("T 2 F:A/B F:A/B", Show(technology));
}

TEST(TechnologyReading, OfAFootprintFile) {
  const auto read = [](const CECadClsLvl& node) {
    CBDtechnologyContainer technology;
    ReadFootprintTechnology(node, technology);
    return Show(technology);
  };
  CheckReading(
      {
          {"name and layers",
           "(technologyContainer (technology T (numberOfConductorLayer 9) (footprintLayer (layer TOP (type A)) (x B)) "
           "(subLayer (systemLayer))))",
           "T 0 F:TOP/A F:B/"},
          {"only the first", "(technologyContainer (technology T) (technology U (layerMapping)))", "T 0"},
          {"none", "(technologyContainer (foo))", " 0"},
          {"no name", "(technologyContainer (technology))", "raises \"technology\" has no value 1"},
          {"layer without name", "(technologyContainer (technology T (footprintLayer (layer))))",
           "raises \"layer\" has no value 1"},
          {"layer with empty type", "(technologyContainer (technology T (footprintLayer (layer A (type)))))",
           "raises \"type\" has no value 1"},
      },
      read);
}

// ---- writing ----

template <class T>
T* Add(laminate::NamedArray<T>& array) {
  return &laminate::AppendOwned(array, std::make_unique<T>());
}

struct WriteCase {
  const char* name;
  const char* type;
  const char* expected;
};

TEST(TechnologyWriting, FootprintLayers) {
  for (const auto& [name, type, expected] : {
           WriteCase{"TOP", "CONDUCTIVE", "(layer TOP (type CONDUCTIVE))\n"},
           WriteCase{"TOP(1)", "CONDUCTIVE", "(layer \"TOP(1)\" (type CONDUCTIVE))\n"},
           WriteCase{"TOP)", "", "(layer \"TOP)\" (type ))\n"},
           WriteCase{"TOP SIDE", "A", "(layer TOP SIDE (type A))\n"},
           WriteCase{"100%", "%s", "(layer 100% (type %s))\n"},
       }) {
    CBDfootprintLayer layer;
    layer.m_sName = name;
    layer.m_sType = type;
    EXPECT_EQ(expected, Printed(layer));
  }
}

TEST(TechnologyWriting, NonConductiveLayers) {
  CBDnonConductiveLayer layer;
  layer.m_sName = "SILK";
  layer.m_nSortKey = 5;
  EXPECT_EQ("(layer SILK)\n", Printed(layer));
  layer.m_sName = "SILK(A)";
  EXPECT_EQ("(layer \"SILK(A)\")\n", Printed(layer));
  layer.m_aProperties.Add(new CLProperty("width", "3"));
  layer.m_aProperties.Add(nullptr);
  layer.m_aProperties.Add(new CLProperty("color", ""));
  EXPECT_EQ("(layer \"SILK(A)\"\n(width 3)\n(color )\n)\n", Printed(layer));
}

TEST(TechnologyWriting, ConductiveLayers) {
  CBDcondLayer layer;
  layer.m_nLayerNumber = 3;
  layer.m_nProperty = 7;
  EXPECT_EQ("(layerNumber 3\n(type POSI)\n)\n", Printed(layer));
  layer.m_sSoldering = "FLOW";
  layer.m_aProperties.Add(new CLProperty("width", "3"));
  auto* pRef = Add(*layer.m_pRefArray);
  pRef->m_sName = "MASK";
  pRef->m_sType = "RESIST";
  pRef->m_nUserDefType = 9;
  layer.m_pRefArray->Add(nullptr);
  Add(*layer.m_pRefArray)->m_sName = "PASTE(B)";
  EXPECT_EQ(
      "(layerNumber 3\n(type POSI)\n(soldering FLOW)\n"
      "(refer MASK\n(type RESIST)\n(userDefType 0)\n)\n"
      "(refer \"PASTE(B)\"\n(type )\n(userDefType 0)\n)\n"
      "(width 3)\n)\n",
      Printed(layer));
  EXPECT_EQ("(refer MASK\n(type RESIST)\n(userDefType 0)\n)\n", Printed(*pRef));
}

TEST(TechnologyWriting, SubLayers) {
  for (const auto& [kind, name, expected] : {
           WriteCase{"systemLayer", "HOLE", "(systemLayer (type HOLE))\n"},
           WriteCase{"systemLayer", "H(", "(systemLayer (type \"H(\"))\n"},
           WriteCase{"conductive", "1", "(drawLayerOf (conductive 1))\n"},
           WriteCase{"conductive", "1)", "(drawLayerOf (conductive \"1)\"))\n"},
           WriteCase{"nonConductive", "A B", "(drawLayerOf (nonConductive A B))\n"},
           WriteCase{"nonConductive", "(A)", "(drawLayerOf (nonConductive \"(A)\"))\n"},
           WriteCase{"", "X", ""},
           WriteCase{"type", "X", ""},
       }) {
    CBDsubLayer layer;
    layer.m_sLayerKind = kind;
    layer.m_sName = name;
    EXPECT_EQ(expected, Printed(layer));
  }
}

TEST(TechnologyWriting, BoardLayersOfACorrespondence) {
  const struct {
    const char* name;
    const char* line;
  } cases[] = {
      {"1", "(conductive 1)\n"},
      {"36", "(conductive 36)\n"},
      {"37", "(nonConductive 37)\n"},
      {"0", "(nonConductive 0)\n"},
      {"-1", "(nonConductive -1)\n"},
      {"3 Sig", "(conductive 3)\n"},
      {"3(x)", "(conductive 3)\n"},
      {" 5", "(conductive 5)\n"},
      {"+7", "(conductive 7)\n"},
      {"4294967297", "(conductive 1)\n"},  // numbers wrap at 32 bits
      {"PADSTACK(", "(nonConductive \"PADSTACK(\")\n"},
      {"padstack", "(nonConductive padstack)\n"},
      {"100%d", "(nonConductive 100%d)\n"},
      {"SILK(A)", "(nonConductive \"SILK(A)\")\n"},
      {"PADSTACK", "(systemLayer (type PADSTACK))\n"},
      {"HOLE", "(nonConductive HOLE)\n"},
      {"A B", "(nonConductive A B)\n"},
      {"", "(nonConductive )\n"},
  };
  for (const auto& [name, line] : cases) {
    CBDcorrespondence correspondence;
    correspondence.m_sFootLayer = "L";
    correspondence.m_aBoardLayers.Add(name);
    EXPECT_EQ(std::string("(correspondence\n(footLayer L)\n(boardLayer\n") + line + ")\n)\n", Printed(correspondence));
  }
}

TEST(TechnologyWriting, Maps) {
  CBDmap map;
  map.m_sName = "A(B)";
  EXPECT_EQ("(map A(B)\n)\n", Printed(map));
  map.m_pCorrespondenceArray->Add(nullptr);
  Add(*map.m_pCorrespondenceArray)->m_sFootLayer = "TOP(1)";
  EXPECT_EQ("(map A(B)\n(correspondence\n(footLayer \"TOP(1)\")\n(boardLayer\n)\n)\n)\n", Printed(map));
  auto* pLast = Add(*map.m_pCorrespondenceArray);
  pLast->m_sFootLayer = "A B";
  for (const char* szLayer : {"SILK", "2", "PADSTACK", "3 Sig"}) pLast->m_aBoardLayers.Add(szLayer);
  EXPECT_EQ(
      "(map A(B)\n(correspondence\n(footLayer \"TOP(1)\")\n(boardLayer\n)\n)\n"
      "(correspondence\n(footLayer A B)\n(boardLayer\n(nonConductive SILK)\n(conductive 2)\n"
      "(systemLayer (type PADSTACK))\n(conductive 3)\n)\n)\n)\n",
      Printed(map));
}

std::string PrintedAs(CBDtechnologyContainer& technology, const char* szKind) {
  return Printed([&](std::FILE* fp) { return technology.nPrint2File(fp, szKind); });
}

TEST(TechnologyWriting, TheSectionInItsTwoForms) {
  CBDtechnologyContainer technology;
  technology.m_sName = "T";
  technology.m_nConductorLayers = 4;
  Add(*technology.m_pFootprintLayerArray)->m_sName = "TOP";
  Add(*technology.m_pNonConductiveLayerArray)->m_sName = "SILK";
  Add(*technology.m_pCondLayerArray)->m_nLayerNumber = 1;
  auto* pSub = Add(*technology.m_pSubLayerArray);
  pSub->m_sLayerKind = "systemLayer";
  pSub->m_sName = "HOLE";
  Add(*technology.m_pMapArray)->m_sName = "A";
  EXPECT_EQ(
      "(technologyContainer\n(technology T\n(numberOfConductorLayer 4)\n(padstackGroup default)\n"
      "(footprintLayer\n(layer TOP (type ))\n)\n"
      "(nonConductiveLayer\n(layer SILK)\n)\n"
      "(conductiveLayer\n(layerNumber 1\n(type POSI)\n)\n)\n"
      "(subLayer\n(systemLayer (type HOLE))\n)\n"
      "(layerMapping\n(map A\n)\n)\n"
      ")\n)\n",
      PrintedAs(technology, "PCF"));
  // Only the one word gives all of it.
  for (const char* szKind : {"FTF", "TCF", "pcf", "PCF ", ""}) {
    EXPECT_EQ("(technologyContainer\n(technology T\n(footprintLayer\n(layer TOP (type ))\n)\n)\n)\n",
              PrintedAs(technology, szKind))
        << szKind;
  }
  for (const char* szName : {"A", "B"}) {
    Add(*technology.m_pMapArray)->m_sName = szName;
    Add(*technology.m_pFootprintLayerArray)->m_sName = szName;
  }
  EXPECT_NE(std::string::npos,
            PrintedAs(technology, "PCF").find("(layerMapping\n(map A\n)\n(map A\n)\n(map B\n)\n)\n"));
  EXPECT_NE(std::string::npos,
            PrintedAs(technology, "FTF").find("(layer TOP (type ))\n(layer A (type ))\n(layer B (type ))\n)\n"));
}

TEST(TechnologyWriting, AnEmptySection) {
  CBDtechnologyContainer technology;
  EXPECT_EQ(
      "(technologyContainer\n(technology \n(numberOfConductorLayer 0)\n(padstackGroup default)\n(footprintLayer\n)\n"
      "(nonConductiveLayer\n)\n(conductiveLayer\n)\n(subLayer\n)\n(layerMapping\n)\n)\n)\n",
      PrintedAs(technology, "PCF"));
}

TEST(TechnologyWriting, WhatComesBackChanged) {
  const struct {
    const char* name;
    std::string section;
    const char* line;
    bool bWritten;
  } cases[] = {
      {"an info layer becomes a draw layer", Section("", "", "", "(infoLayerOf (conductive 2))"),
       "\n(drawLayerOf (conductive 2))\n", true},
      {"a system layer becomes non-conductive", Board("(systemLayer (type HOLE))"), "\n(nonConductive HOLE)\n", true},
      {"but not the padstacks' own", Board("(systemLayer (type PADSTACK))"), "\n(systemLayer (type PADSTACK))\n", true},
      {"a sort key is lost", Section("", "(layer SILK (propertyI sortKey 5))"), "sortKey", false},
      {"a property number is lost", Section("", "", "(layerNumber 1 (propertyI width 7))"), "width", false},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.name);
    Tree tree(test.section);
    CBDtechnologyContainer technology;
    ReadTechnology(tree.Form(), technology);
    EXPECT_EQ(test.bWritten, PrintedAs(technology, "PCF").find(test.line) != std::string::npos)
        << PrintedAs(technology, "PCF");
  }
}

TEST(TechnologyWriting, ReadsBack) {
  const std::string text =
      Section("(layer \"TOP(1)\" (type A)) (layer BODY (type B))", "(layer SILK) (layer \"S K(\")",
              "(layerNumber 1 (type NEGA) (soldering S) (refer M (type R)) (refer \"P(B)\" (type R))) (layerNumber 2)",
              "(systemLayer (type HOLE)) (systemLayer (type \"H)\")) (drawLayerOf (conductive 1)) (infoLayerOf "
              "(nonConductive X)) (drawLayerOf (nonConductive \"(X)\"))",
              "(layerMapping (map A (correspondence (footLayer F) (boardLayer (conductive 3) (nonConductive \"N(1)\") "
              "(systemLayer (type PADSTACK)))) (correspondence (footLayer \"F(2)\") (boardLayer))) (map B_THRU))");
  Tree tree(text);
  CBDtechnologyContainer first;
  ReadTechnology(tree.Form(), first);
  const std::string written = PrintedAs(first, "PCF");
  Tree again(written);
  CBDtechnologyContainer second;
  ReadTechnology(again.Form(), second);
  EXPECT_EQ(Show(first), Show(second));
  EXPECT_EQ(written, PrintedAs(second, "PCF"));
  // The short form as a footprint file's reader takes it.
  Tree shortForm(PrintedAs(first, "FTF"));
  CBDtechnologyContainer library;
  ReadFootprintTechnology(shortForm.Form(), library);
  EXPECT_EQ("T 0 F:TOP(1)/A F:BODY/B", Show(library));
}

// Behind a backslash a quote ends a name only where a bracket follows it.
TEST(TechnologyWriting, ANameThatEndsInABackslashReadsBackBeforeABracket) {
  static constexpr const char* kName = "(A\\";
  const struct {
    const char* name;
    void (*fill)(CBDtechnologyContainer&);
    bool bReadsBack;
  } cases[] = {
      {"footprint layer",
       [](CBDtechnologyContainer& t) {
         Add(*t.m_pFootprintLayerArray)->m_sName = kName;
         t.m_pFootprintLayerArray->GetAt(0)->m_sType = "X";
       },
       false},
      {"layer", [](CBDtechnologyContainer& t) { Add(*t.m_pNonConductiveLayerArray)->m_sName = kName; }, true},
      {"reference",
       [](CBDtechnologyContainer& t) {
         auto* pRef = Add(*Add(*t.m_pCondLayerArray)->m_pRefArray);
         pRef->m_sName = kName;
         pRef->m_sType = "X";
       },
       false},
      {"sub-layer",
       [](CBDtechnologyContainer& t) {
         for (const char* szKind : {"systemLayer", "conductive", "nonConductive"}) {
           auto* p = Add(*t.m_pSubLayerArray);
           p->m_sLayerKind = szKind;
           p->m_sName = kName;
         }
       },
       true},
      {"correspondence",
       [](CBDtechnologyContainer& t) {
         CBDmap* pMap = Add(*t.m_pMapArray);
         pMap->m_sName = "A";
         auto* p = Add(*pMap->m_pCorrespondenceArray);
         p->m_sFootLayer = kName;
         p->m_aBoardLayers.Add(kName);
       },
       true},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.name);
    CBDtechnologyContainer technology;
    technology.m_sName = "T";
    test.fill(technology);
    Tree tree(PrintedAs(technology, "PCF"));
    // The text behind such a name is part of it, so that the section has no end.
    const bool bComplete = !tree.Reader().m_pRootArray->IsEmpty();
    EXPECT_EQ(test.bReadsBack, bComplete);
    if (bComplete) {
      EXPECT_EQ(Show(technology), ReadAndShow(tree.Form()));
    }
  }
}

TEST(TechnologyWriting, NullStreamsAndArrays) {
  ExpectRaisesWithoutStream<CBDfootprintLayer, CBDnonConductiveLayer, CBDcondLayer, CBDcondLayerRef, CBDsubLayer,
                            CBDmap, CBDcorrespondence>();
  CBDtechnologyContainer technology;
  EXPECT_NE("", RaisedBy([&] { technology.nPrint2File(nullptr, "PCF"); }));
  delete std::exchange(technology.m_pMapArray, nullptr);
  delete std::exchange(technology.m_pSubLayerArray, nullptr);
  EXPECT_NE("", RaisedBy([&] { technology.pGetMap("A"); }));
  EXPECT_NE("", RaisedBy([&] { technology.sGetLayerTypeFromSubLayer("A"); }));
  // Reading into a container that lacks an array stops there.
  Tree tree(Section("(l A (type B))", "", "", "(systemLayer)"));
  EXPECT_NE("", RaisedBy([&] { ReadTechnology(tree.Form(), technology); }));
  EXPECT_EQ(1, technology.m_pFootprintLayerArray->GetSize());
  delete std::exchange(technology.m_pFootprintLayerArray, nullptr);
  EXPECT_NE("", RaisedBy([&] { technology.sGetFootprintLayNameFromTypeInFoorprintLayerArray("B"); }));
  // A null array is written as an empty one.
  delete std::exchange(technology.m_pNonConductiveLayerArray, nullptr);
  delete std::exchange(technology.m_pCondLayerArray, nullptr);
  CBDtechnologyContainer empty;
  empty.m_sName = technology.m_sName;
  empty.m_nConductorLayers = technology.m_nConductorLayers;
  for (const char* szKind : {"PCF", "FTF"}) EXPECT_EQ(PrintedAs(empty, szKind), PrintedAs(technology, szKind));
  CBDcondLayer layer;
  delete std::exchange(layer.m_pRefArray, nullptr);
  EXPECT_EQ("(layerNumber 0\n(type POSI)\n)\n", Printed(layer));
  CBDmap map;
  delete std::exchange(map.m_pCorrespondenceArray, nullptr);
  EXPECT_EQ("(map \n)\n", Printed(map));
}

// ---- look-ups ----

TEST(TechnologyLookUp, TakesTheFirstExactMatch) {
  CBDtechnologyContainer technology;
  technology.m_pMapArray->Add(nullptr);
  Add(*technology.m_pMapArray)->m_sName = "A";
  CBDmap* pFirst = technology.m_pMapArray->GetLastElement();
  Add(*technology.m_pMapArray)->m_sName = "A";
  EXPECT_EQ(pFirst, technology.pGetMap("A"));
  EXPECT_EQ(nullptr, technology.pGetMap("a"));
  EXPECT_EQ(nullptr, technology.pGetMap(""));

  technology.m_pFootprintLayerArray->Add(nullptr);
  for (const char* szName : {"BODY", "BODY2"}) {
    auto* p = Add(*technology.m_pFootprintLayerArray);
    p->m_sName = szName;
    p->m_sType = "COMPAREA";
  }
  EXPECT_EQ("BODY", technology.sGetFootprintLayNameFromTypeInFoorprintLayerArray("COMPAREA"));
  EXPECT_EQ("", technology.sGetFootprintLayNameFromTypeInFoorprintLayerArray("compArea"));

  technology.m_pSubLayerArray->Add(nullptr);
  for (const auto& [name, kind] : {std::pair{"1", "conductive"}, {"1", "nonConductive"}, {"HOLE", "type"}}) {
    auto* p = Add(*technology.m_pSubLayerArray);
    p->m_sName = name;
    p->m_sLayerKind = kind;
  }
  EXPECT_EQ("conductive", technology.sGetLayerTypeFromSubLayer("1"));
  EXPECT_EQ("systemLayer", technology.sGetLayerTypeFromSubLayer("HOLE"));
  EXPECT_EQ("", technology.sGetLayerTypeFromSubLayer("2"));
}

// ---- objects ----

TEST(TechnologyObjects, StartAsTold) {
  CBDtechnologyContainer technology;
  EXPECT_EQ(" 0", Show(technology));
  EXPECT_EQ("systemLayer", CBDsubLayer().m_sKind);
  EXPECT_EQ("", CBDsubLayer().m_sLayerKind);
  EXPECT_EQ("POSI", CBDcondLayer().m_sType);
  EXPECT_EQ(-1, CBDcondLayer().m_nProperty);
  EXPECT_EQ(0, CBDcondLayer().m_nLayerNumber);
  EXPECT_EQ(-1, CBDnonConductiveLayer().m_nSortKey);
  EXPECT_EQ(0, CBDcondLayerRef().m_nUserDefType);
}

TEST(TechnologyObjects, CopiesShareArrays) {
  CBDtechnologyContainer technology;
  technology.m_sName = "T";
  technology.m_nConductorLayers = 4;
  technology.m_sReserved1 = "r";
  Add(*technology.m_pMapArray)->m_sName = "A";
  const auto expectShared = [&technology](CBDtechnologyContainer& copy) {
    EXPECT_EQ("T", copy.m_sName);
    EXPECT_EQ(4, copy.m_nConductorLayers);
    EXPECT_EQ("r", copy.m_sReserved1);
    EXPECT_EQ(technology.m_pFootprintLayerArray, std::exchange(copy.m_pFootprintLayerArray, nullptr));
    EXPECT_EQ(technology.m_pNonConductiveLayerArray, std::exchange(copy.m_pNonConductiveLayerArray, nullptr));
    EXPECT_EQ(technology.m_pCondLayerArray, std::exchange(copy.m_pCondLayerArray, nullptr));
    EXPECT_EQ(technology.m_pSubLayerArray, std::exchange(copy.m_pSubLayerArray, nullptr));
    EXPECT_EQ(technology.m_pMapArray, std::exchange(copy.m_pMapArray, nullptr));
  };
  CBDtechnologyContainer copy(technology);
  expectShared(copy);
  copy = technology;
  expectShared(copy);

  CBDcondLayer layer;
  layer.m_nLayerNumber = 3;
  layer.m_nProperty = 4;
  layer.m_sReserved1 = "a";
  layer.m_sType = "b";
  layer.m_sSoldering = "c";
  layer.m_sReserved2 = "d";
  layer.m_aProperties.Add(new CLProperty("p", "q"));
  const auto expectSharedLayer = [&layer](CBDcondLayer& ofLayer) {
    EXPECT_EQ(3, ofLayer.m_nLayerNumber);
    EXPECT_EQ(4, ofLayer.m_nProperty);
    EXPECT_EQ("a b c d", Str(ofLayer.m_sReserved1) + " " + Str(ofLayer.m_sType) + " " + Str(ofLayer.m_sSoldering) +
                             " " + Str(ofLayer.m_sReserved2));
    ASSERT_EQ(1, ofLayer.m_aProperties.GetSize());
    EXPECT_NE(layer.m_aProperties.GetAt(0), ofLayer.m_aProperties.GetAt(0));
    EXPECT_EQ(layer.m_pRefArray, std::exchange(ofLayer.m_pRefArray, nullptr));
  };
  CBDcondLayer layerCopy(layer);
  expectSharedLayer(layerCopy);
  layerCopy = layer;
  expectSharedLayer(layerCopy);

  CBDmap map;
  map.m_sName = "A";
  CBDmap mapCopy(map);
  EXPECT_EQ("A", mapCopy.m_sName);
  EXPECT_EQ(map.m_pCorrespondenceArray, std::exchange(mapCopy.m_pCorrespondenceArray, nullptr));
  mapCopy = map;
  EXPECT_EQ(map.m_pCorrespondenceArray, std::exchange(mapCopy.m_pCorrespondenceArray, nullptr));
}

TEST(TechnologyObjects, DeleteTheirArraysWithAllInThem) {
  int nEnded = 0;
  {
    CBDtechnologyContainer technology;
    AddEnding(technology.m_pFootprintLayerArray, nEnded);
    AddEnding(technology.m_pNonConductiveLayerArray, nEnded);
    AddEnding(technology.m_pCondLayerArray, nEnded);
    AddEnding(technology.m_pSubLayerArray, nEnded);
    AddEnding(technology.m_pMapArray, nEnded);
    AddEnding(Add(*technology.m_pCondLayerArray)->m_pRefArray, nEnded);
    AddEnding(Add(*technology.m_pMapArray)->m_pCorrespondenceArray, nEnded);
  }
  EXPECT_EQ(7, nEnded);
}

TEST(TechnologyObjects, ANonConductiveLayerCopiesItsProperties) {
  CBDnonConductiveLayer layer;
  layer.m_nSortKey = 4;
  layer.m_sName = "n";
  layer.m_sReserved1 = "r";
  layer.m_sReserved2 = "s";
  layer.m_aProperties.Add(new CLProperty("a", "b"));
  const auto expectEqual = [&layer](const CBDnonConductiveLayer& copy) {
    ASSERT_EQ(1, copy.m_aProperties.GetSize());
    EXPECT_NE(layer.m_aProperties.GetAt(0), copy.m_aProperties.GetAt(0));
    EXPECT_EQ("b", copy.m_aProperties.GetAt(0)->GetComment());
    EXPECT_EQ(4, copy.m_nSortKey);
    EXPECT_EQ("n r s", Str(copy.m_sName) + " " + Str(copy.m_sReserved1) + " " + Str(copy.m_sReserved2));
  };
  CBDnonConductiveLayer copy(layer);
  expectEqual(copy);
  CBDnonConductiveLayer assigned;
  assigned.m_aProperties.Add(new CLProperty("old", ""));
  assigned.m_aProperties.Add(new CLProperty("old", ""));
  assigned = layer;
  expectEqual(assigned);
}

TEST(TechnologyObjects, PlainRecordsCopyAllTheyHold) {
  CBDfootprintLayer layer;
  layer.m_sName = "a";
  layer.m_sType = "b";
  EXPECT_EQ("(layer a (type b))\n", Printed(*std::make_unique<CBDfootprintLayer>(layer)));
  CBDcondLayerRef ref;
  ref.m_sName = "a";
  ref.m_sType = "b";
  ref.m_nUserDefType = 7;
  const CBDcondLayerRef refCopy(ref);
  EXPECT_EQ("a b 7", Str(refCopy.m_sName) + " " + Str(refCopy.m_sType) + " " + std::to_string(refCopy.m_nUserDefType));
  CBDsubLayer sub;
  sub.m_sKind = "a";
  sub.m_sLayerKind = "b";
  sub.m_sName = "c";
  const CBDsubLayer subCopy(sub);
  EXPECT_EQ("a b c", Str(subCopy.m_sKind) + " " + Str(subCopy.m_sLayerKind) + " " + Str(subCopy.m_sName));
  static_assert(!std::is_copy_constructible_v<CBDcorrespondence> && !std::is_copy_assignable_v<CBDcorrespondence>);
}

static_assert(kVirtuallyDestroyed<CBDtechnologyContainer, CBDfootprintLayer, CBDnonConductiveLayer, CBDcondLayer,
                                  CBDcondLayerRef, CBDsubLayer, CBDmap, CBDcorrespondence>);
static_assert(sizeof(CBDcondLayerRef::m_nUserDefType) == 8);

TEST(TechnologyObjects, HoldTheirFieldsInOrder) {
  const CBDtechnologyContainer t;
  ExpectInOrder({&t.m_sName, &t.m_nConductorLayers, &t.m_sReserved1, &t.m_pFootprintLayerArray,
                 &t.m_pNonConductiveLayerArray, &t.m_pCondLayerArray, &t.m_pSubLayerArray, &t.m_pMapArray});
  const CBDnonConductiveLayer n;
  ExpectInOrder({&n.m_nSortKey, &n.m_sName, &n.m_sReserved1, &n.m_sReserved2, &n.m_aProperties});
  const CBDcondLayer c;
  ExpectInOrder({&c.m_nLayerNumber, &c.m_nProperty, &c.m_sReserved1, &c.m_sType, &c.m_sSoldering, &c.m_sReserved2,
                 &c.m_aProperties, &c.m_pRefArray});
  const CBDsubLayer s;
  ExpectInOrder({&s.m_sKind, &s.m_sLayerKind, &s.m_sName});
}

}  // namespace
