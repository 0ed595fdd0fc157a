#include <algorithm>

#include "base/HostInterface.h"
#include "base/LocaleScope.h"
#include "designdata/DesignDataTestSupport.h"

namespace {

using laminate::LoadStatus;

// What a rule file left in the facade, without what is empty. A layer of the stack-up shows as
// {kind,material,role,number,aux,thickness,resistivity,dielectric,physical,place,loss}, a rule as
// {kind,item,first,second,value,name}.
std::string ShowAll(const CPC_BD_OutClsGet& data) {
  std::string s;
  const auto add = [&s](const char* szName, const auto& arr) {
    if (!arr.IsEmpty()) s += (s.empty() ? "" : " ") + std::string(szName) + " " + Show(arr);
  };
  add("layers", *data.m_pStackup->m_pLayerArray);
  if (!data.m_pStackup->m_sBaseMaterial.IsEmpty()) s += " base " + Show(data.m_pStackup->m_sBaseMaterial);
  add("grids", data.m_pBoardSpec->m_aDefaultGrid);
  add("drills", data.m_pBoardSpec->m_aDrillingRule);
  add("widths", data.m_pBoardSpec->m_aPatternWidth);
  add("gridDefs", data.m_pBoardSpec->m_aGridDef);
  add("properties", data.m_pBoardSpec->m_aProperty);
  add("rules", *data.m_pRufRuleArray);
  add("nets", *data.m_pRufNetArray);
  add("enets", *data.m_pElectricalNetArray);
  add("board", *data.m_pRufRuleBoardArray);
  add("design", *data.m_pDesignRuleStackArray);
  add("trace", *data.m_pTraceRuleStackArray);
  add("comps", *data.m_pRufCompArray);
  return s;
}

// A form that lacks what it needs raises; what was appended by then is shown behind "!".
std::string Read(const std::string& sText) {
  CPC_BD_OutClsGet data;
  bool bRaised = false;
  try {
    Load(data, Kind::rules, sText);
  } catch (const CInvalidArgException& e) {
    bRaised = true;
    EXPECT_GT(e.m_nLine, 0);
    EXPECT_EQ(data.GetLoadStatus().m_result, LoadStatus::Result::invalidContent);
    EXPECT_EQ(data.GetLoadStatus().m_nLine, e.m_nLine);
    EXPECT_EQ(data.GetLoadStatus().m_sFile, "file");
    EXPECT_FALSE(data.GetLoadStatus().m_sText.IsEmpty());
  }
  if (!bRaised) {
    EXPECT_TRUE(data.GetLoadStatus().IsOk());
  }
  return (bRaised ? "!" : "") + ShowAll(data);
}

struct Case {
  const char* text;
  const char* records;
};
template <std::size_t N>
void Check(const std::string& sBefore, const std::string& sBehind, const Case (&cases)[N]) {
  for (const Case& c : cases) EXPECT_EQ(Read(sBefore + c.text + sBehind), c.records) << c.text;
}

TEST(RuleFile, Frame) {
  const Case kCases[] = {
      {"", ""},
      {"(other (rule (net N)))", ""},
      {"(x (design d (rule (net N))))", ""},
      {"(rule (net N))", ""},
      {"(design d (rule (padstack N)))", "rules [{padstack,,,,0,N}]"},
      {"(other) (design (rule (padstack N)))", "rules [{padstack,,,,0,N}]"},
      // Only the first "design" counts; of its children each.
      {"(design d (rule (padstack N))) (design d (rule (padstack M)))", "rules [{padstack,,,,0,N}]"},
      {"(design d (rule (padstack N)) (x (rule (padstack X))) (rule (padstack M)))",
       "rules [{padstack,,,,0,N},{padstack,,,,0,M}]"},
      {"(design d (boardSpec (defaultGrid (a b))) (boardSpec (defaultGrid (c d))) (assign (comp A)) (assign (comp B)))",
       "grids [{a,b},{c,d}] comps [{A,[],[]},{B,[],[]}]"},
      {"(DESIGN d (rule (padstack N)))", ""},
      // In file order, whatever the keywords.
      {"(design d (assign (comp C)) (rule (layer)) (boardSpec (defaultGrid (a b))))", "!comps [{C,[],[]}]"},
      {"(design d (Rule (padstack N)) (boardspec (defaultGrid (a b))))", ""},
  };
  Check("", "\n", kCases);
}

TEST(RuleFile, ASecondLoadAddsToTheSameObjects) {
  CPC_BD_OutClsGet data;
  CVRXoutRufStackup* const pStackup = data.m_pStackup;
  CVRXoutRufBoardSpec* const pSpec = data.m_pBoardSpec;
  for (int i = 0; i < 2; ++i) {
    Load(data, Kind::rules, "(design d (boardSpec (bareBoard (conductor 1) (baseMaterial B)) (defaultGrid (a b))))");
  }
  EXPECT_EQ(ShowAll(data),
            "layers [{conductor,,,1,1,0,0,0,0,,0},{conductor,,,1,1,0,0,0,0,,0}] base B grids [{a,b},{a,b}]");
  EXPECT_EQ(data.m_pStackup, pStackup);
  EXPECT_EQ(data.m_pBoardSpec, pSpec);
}

TEST(RuleFile, NotWellFormed) {
  // The tree holds no completed "design".
  CPC_BD_OutClsGet data;
  Load(data, Kind::rules, "(design d\n(rule (net N))\n");
  EXPECT_EQ(ShowAll(data), "");
  EXPECT_EQ(data.GetLoadStatus().m_result, LoadStatus::Result::notWellFormed);
  // A completed one is walked, whatever follows.
  Load(data, Kind::rules, "(design d (rule (padstack N)))\n(x\n");
  EXPECT_EQ(ShowAll(data), "rules [{padstack,,,,0,N}]");
  EXPECT_EQ(data.GetLoadStatus().m_result, LoadStatus::Result::notWellFormed);
}

TEST(RuleFile, BoardSpec) {
  const Case kCases[] = {
      {"", ""},
      {"(x y)", ""},
      // defaultGrid
      {"(defaultGrid)", ""},
      {"(defaultGrid (a b c) (d e))", "grids [{a,b},{d,e}]"},
      {"(defaultGrid (a b) (d))", "!grids [{a,b}]"},
      // drillingRule
      {"(drillingRule (a 1 2) (b x 3x) (c -1 +2 3))", "drills [{a,1,2},{b,0,3},{c,-1,2}]"},
      {"(drillingRule (a 1 2) (b 1))", "!drills [{a,1,2}]"},
      {"(drillingRule (a 1 2) (b))", "!drills [{a,1,2}]"},
      // patternWidth
      {"(patternWidth (w 0.5 (n W1)) (x 1e1 (y W2 z)))", "widths [{W1,0.5},{W2,10}]"},
      {"(patternWidth (w 0.5 (n W1) (m W2)))", "widths [{W1,0.5}]"},
      {"(patternWidth (w 0.5 (n W1)) (w (n W2)))", "!widths [{W1,0.5}]"},
      {"(patternWidth (w 0.5 (n W1)) (w 1 (n)))", "!widths [{W1,0.5}]"},
      {"(patternWidth (w 0.5 (n W1)) (w 1))", "!widths [{W1,0.5}]"},
      // gridDef
      {"(patternWidth (w -1.5x 7 (n W)))", "widths [{W,-1.5}]"},
      // in file order, each of several
      {"(gridDef G) (drillingRule (a)) (defaultGrid (a b))", "!gridDefs [{G,0,0,0,0}]"},
      {"(bareBoard (conductor 1) (baseMaterial A)) (gridDef G) (bareBoard (dielectric 2)) (defaultGrid (a b))"
       " (drillingRule (r 1 2)) (defaultGrid (c d)) (drillingRule (s 3 4)) (patternWidth (w 1 (n A)))"
       " (patternWidth (w 2 (n B))) (gridDef H)",
       "layers [{conductor,,,1,1,0,0,0,0,,0},{dielectric,,,2,1,0,0,0,0,,0}] base A grids [{a,b},{c,d}]"
       " drills [{r,1,2},{s,3,4}] widths [{A,1},{B,2}] gridDefs [{G,0,0,0,0},{H,0,0,0,0}]"},
      // gridDef
      {"(gridDef G H (pitch 0.5 1.25x 9) (pt -0.5 x))", "gridDefs [{G,0.5,1.25,-0.5,0}]"},
      {"(gridDef G (pitch 1 2) (pitch 0.5 3))", "gridDefs [{G,0.5,3,0,0}]"},
      {"(gridDef G (pitch 1 2) (pt 3 4))", "gridDefs [{G,1,2,3,4}]"},
      {"(gridDef G)", "gridDefs [{G,0,0,0,0}]"},
      {"(gridDef G (x 1) (pt 3 4) (pt 5 6))", "gridDefs [{G,0,0,5,6}]"},
      {"(gridDef)", "!"},
      {"(gridDef G (pitch 1))", "!"},
      {"(gridDef G (pitch))", "!"},
      {"(gridDef G (pt 1))", "!"},
      {"(gridDef A) (gridDef G (pt))", "!gridDefs [{A,0,0,0,0}]"},
  };
  Check("(design d (boardSpec ", "))", kCases);
}

TEST(RuleFile, StackUp) {
  const Case kCases[] = {
      {"", ""},
      {"(x 1) (Conductor 1)", ""},
      {"(baseMaterial FR4)", " base FR4"},
      {"(baseMaterial A) (baseMaterial B C)", " base B"},
      {"(baseMaterial)", "!"},
      {"(conductor 2)", "layers [{conductor,,,2,1,0,0,0,0,,0}]"},
      {"(conductor)", "!"},
      {"(conductor (thickness 1))", "!"},
      {"(dielectric x)", "layers [{dielectric,,,0,1,0,0,0,0,,0}]"},
      {"(dielectric 3 (thickness 0.5) (resistivity 2) (lossTangent 0.25) (dielectricConstant 4.5))",
       "layers [{dielectric,,,3,1,0.5,2,4.5,0,,0.25}]"},
      {"(conductor 1 (thickness 1) (thickness 2x))", "layers [{conductor,,,1,1,2,0,0,0,,0}]"},
      {"(conductor 1 (thickness))", "!"},
      {"(conductor 1 (resistivity))", "!"},
      {"(conductor 1 (lossTangent))", "!"},
      {"(conductor 1 (dielectricConstant))", "!"},
      {"(conductor 1 (x 1) (Thickness 2))", "layers [{conductor,,,1,1,0,0,0,0,,0}]"},
      // place
      {"(conductor 1 (place TOP))", "layers [{conductor,,,1,1,0,0,0,0,TOP,0}]"},
      {"(conductor 1 (place))", "!"},
      // propertyS: the second value decides
      {"(conductor 1 (place A) (place B C))", "layers [{conductor,,,1,1,0,0,0,0,B,0}]"},
      // both kinds take all
      {"(dielectric 1 (material \"F R\") (place X) (propertyS u POWER))",
       "layers [{dielectric,F_R,POWER,1,1,0,0,0,0,X,0}]"},
      {"(conductor 1 (dielectricConstant 2) (lossTangent 0.5) (resistivity 3))",
       "layers [{conductor,,,1,1,0,3,2,0,,0.5}]"},
      // propertyS: the second value decides
      {"(conductor 1 (propertyS WIRE x))", "layers [{conductor,,,1,1,0,0,0,0,,0}]"},
      {"(conductor 1 (propertyS u WIRE) (propertyS u GROUND))", "layers [{conductor,,GROUND,1,1,0,0,0,0,,0}]"},
      {"(conductor 1 (propertyS u wire) (propertyS a b WIRE))", "layers [{conductor,,,1,1,0,0,0,0,,0}]"},
      {"(conductor 1 (propertyS u POWER WIRE))", "layers [{conductor,,POWER,1,1,0,0,0,0,,0}]"},
      {"(conductor 1 (propertyS usage WIRE))", "layers [{conductor,,SIGNAL,1,1,0,0,0,0,,0}]"},
      {"(conductor 1 (propertyS usage GROUND))", "layers [{conductor,,GROUND,1,1,0,0,0,0,,0}]"},
      {"(conductor 1 (propertyS x POWER))", "layers [{conductor,,POWER,1,1,0,0,0,0,,0}]"},
      {"(conductor 1 (propertyS usage SIGNAL))", "layers [{conductor,,,1,1,0,0,0,0,,0}]"},
      {"(conductor 1 (propertyS usage POWER) (propertyS usage x))", "layers [{conductor,,POWER,1,1,0,0,0,0,,0}]"},
      {"(conductor 1 (propertyS GROUND))", "!"},
      {"(conductor 1 (propertyS))", "!"},
      {"(conductor 1 (propertyI usage WIRE))", "layers [{conductor,,,1,1,0,0,0,0,,0}]"},
      // material
      {"(conductor 1 (material \"FR 4 x\"))", "layers [{conductor,FR_4_x,,1,1,0,0,0,0,,0}]"},
      {"(conductor 1 (material FR 4))", "layers [{conductor,FR_4,,1,1,0,0,0,0,,0}]"},
      {"(conductor 1 (material \"F R\" 4 x))", "layers [{conductor,F R_4_x,,1,1,0,0,0,0,,0}]"},
      {"(conductor 1 (material))", "layers [{conductor,,,1,1,0,0,0,0,,0}]"},
      {"(conductor 1 (material A \"\" B))", "layers [{conductor,A__B,,1,1,0,0,0,0,,0}]"},
      {"(conductor 1 (material \"\" B))", "layers [{conductor,_B,,1,1,0,0,0,0,,0}]"},
      {"(conductor 1 (material A) (material B))", "layers [{conductor,B,,1,1,0,0,0,0,,0}]"},
      {"(conductor 1 (material A) (material B C))", "layers [{conductor,AB_C,,1,1,0,0,0,0,,0}]"},
      {"(conductor 1 (material A B) (material C))", "layers [{conductor,C,,1,1,0,0,0,0,,0}]"},
      {"(conductor 1 (material A) (material \"\"))", "layers [{conductor,,,1,1,0,0,0,0,,0}]"},
      // physical
      {"(physical ABOVE)", "layers [{Solder_Resist_Top,Solder_Resist_0_0,,1,1,0,0,0,1,ABOVE,0}]"},
      {"(physical BELOW (lossTangent 0.02) (dielectricConstant 4))",
       "layers [{Solder_Resist_Bottom,Solder_Resist_4_0.02,,1,1,0,0,4,1,BELOW,0.02}]"},
      {"(physical BELOW (material A B))", "layers [{Solder_Resist_Bottom,A_B,,1,1,0,0,0,1,BELOW,0}]"},
      {"(physical ABOVE (material \"\") (dielectricConstant 1e-7))",
       "layers [{Solder_Resist_Top,Solder_Resist_1e-07_0,,1,1,0,0,9.9999999999999995e-08,1,ABOVE,0}]"},
      {"(physical above (dielectricConstant 3.5))", "layers [{,Solder_Resist_3.5_0,,1,1,0,0,3.5,1,above,0}]"},
      {"(physical X (dielectricConstant 4.125) (lossTangent 1234567))",
       "layers [{,Solder_Resist_4.125_1.23457e+06,,1,1,0,0,4.125,1,X,1234567}]"},
      {"(physical ABOVE (material \"FR 4\"))", "layers [{Solder_Resist_Top,FR_4,,1,1,0,0,0,1,ABOVE,0}]"},
      {"(physical X (material A B) (material C D))", "layers [{,A_BC_D,,1,1,0,0,0,1,X,0}]"},
      {"(physical X (material A) (material \"\"))", "layers [{,Solder_Resist_0_0,,1,1,0,0,0,1,X,0}]"},
      {"(physical X (material))", "layers [{,Solder_Resist_0_0,,1,1,0,0,0,1,X,0}]"},
      {"(physical X (material \"\" \"\"))", "layers [{,_,,1,1,0,0,0,1,X,0}]"},
      {"(physical X (material \"F  R\tx\"))", "layers [{,F__R\tx,,1,1,0,0,0,1,X,0}]"},
      {"(physical ABOVE BELOW)", "layers [{Solder_Resist_Top,Solder_Resist_0_0,,1,1,0,0,0,1,ABOVE,0}]"},
      {"(physical 7)", "layers [{,Solder_Resist_0_0,,1,1,0,0,0,1,7,0}]"},
      {"(baseMaterial B) (conductor) (dielectric 1)", "! base B"},
      {"(physical X (thickness 1) (resistivity 2) (place TOP) (propertyS usage WIRE))",
       "layers [{,Solder_Resist_0_0,,1,1,1,2,0,1,X,0}]"},
      {"(physical X (place) (propertyS))", "layers [{,Solder_Resist_0_0,,1,1,0,0,0,1,X,0}]"},
      {"(physical)", "!"},
      {"(conductor 1) (physical ABOVE (thickness))", "!layers [{conductor,,,1,1,0,0,0,0,,0}]"},
      // file order
      {"(dielectric 1) (physical X (material m)) (conductor 2) (dielectric 2)",
       "layers [{dielectric,,,1,1,0,0,0,0,,0},{,m,,1,1,0,0,0,1,X,0},{conductor,,,2,1,0,0,0,0,,0},"
       "{dielectric,,,2,1,0,0,0,0,,0}]"},
  };
  Check("(design d (boardSpec (bareBoard ", ")))", kCases);
}

TEST(RuleFile, Clearances) {
  struct Section {
    const char* keyword;
    bool sameNet;
    bool onlyElement;
  };
  const Section kSections[] = {{"placementRule", false, true}, {"holeRule", false, false},
                               {"markingRule", false, false},  {"testRule", true, true},
                               {"buildupViaRule", true, true}, {"designRuleUnit", true, true}};
  for (const Section& section : kSections) {
    const std::string k = section.keyword;
    SCOPED_TRACE(k);
    const bool bNamed = k == "designRuleUnit";
    const std::string name = bNamed ? "N" : "";
    const std::string open = "(" + k + (bNamed ? " N " : " ");
    const auto read = [&](const std::string& sChildren) { return Read("(design d (rule " + open + sChildren + ")))"); };
    const std::string ab = "rules [{" + k + ",clearance,A,B,0.5," + name + "}]";
    EXPECT_EQ(read(""), "");
    EXPECT_EQ(read("(clearance 0.5 (element A B))"), ab);
    EXPECT_EQ(read("(x 0.5 (element A B)) (Clearance 1 (element A B))"), "");
    EXPECT_EQ(read("(clearance 0.5 (element A B) (element C D))"), ab);
    EXPECT_EQ(read("(clearance 0.5 (pair A B))"), section.onlyElement ? "" : ab);
    EXPECT_EQ(read("(clearance 0.5 (pair A B) (element C D))"), section.onlyElement ? "" : ab);
    EXPECT_EQ(read("(sameNetClearance 0.5 (element A B))"),
              section.sameNet ? "rules [{" + k + ",sameNetClearance,A,B,0.5," + name + "}]" : "");
    EXPECT_EQ(read("(clearance x (element \"A 1\" \"\"))"), "rules [{" + k + ",clearance,A 1,,0," + name + "}]");
    // Missing values and forms.
    const std::string more =
        "{" + k + ",clearance,C,D,2," + name + "},{" + k + ",sameNetClearance,E,F,3," + name + "}]";
    if (section.sameNet) {
      EXPECT_EQ(
          read("(sameNetClearance 1 (element A B)) (clearance 2 (element C D)) (sameNetClearance 3 (element E F))"),
          "rules [{" + k + ",sameNetClearance,A,B,1," + name + "}," + more);
    }
    EXPECT_EQ(read("(clearance 0.5 9 (element A B C))"), ab);
    // Missing values and forms.
    EXPECT_EQ(read("(clearance 0.5 (element A B)) (clearance (element A B))"), "!" + ab);
    EXPECT_EQ(read("(clearance 0.5 (element A B)) (clearance 1 (element A))"), "!" + ab);
    EXPECT_EQ(read("(clearance 0.5 (element A B)) (clearance 1 (element))"), "!" + ab);
    EXPECT_EQ(read("(clearance 0.5 (element A B)) (clearance 1)"), "!" + ab);
    EXPECT_EQ(read("(sameNetClearance 1)"), section.sameNet ? "!" : "");
    // A pair that is not taken is not read.
    EXPECT_EQ(read("(clearance (pair))"), section.onlyElement ? "" : "!");
  }
}

TEST(RuleFile, ClearancesAreReadFromTheirPairFirst) {
  CPC_BD_OutClsGet data;
  const auto text = [&](const char* szClearance) {
    try {
      Load(data, Kind::rules, "(design d (rule (testRule\n" + std::string(szClearance) + "\n)))");
    } catch (const CInvalidArgException& e) {
      return std::to_string(e.m_nLine) + ": " + e.what();
    }
    return std::string();
  };
  // Where both lack a value, it is the pair on line 3 that is told.
  EXPECT_THAT(text("(clearance\n(element A))"), testing::StartsWith("3: "));
  EXPECT_THAT(text("(clearance\n(element))"), testing::StartsWith("3: "));
  EXPECT_THAT(text("(clearance\n(element A B))"), testing::StartsWith("2: "));
  EXPECT_EQ(text("(clearance 1 (element))"), "2: \"element\" has no value 1");
  EXPECT_EQ(text("(clearance 1 (element A))"), "2: \"element\" has no value 2");
  EXPECT_EQ(text("(clearance (element A B))"), "2: \"clearance\" has no value 1");
}

TEST(RuleFile, TheNameOfADesignRuleIsReadWhenARuleIsMade) {
  const Case kCases[] = {
      {"(designRuleUnit)", ""},
      {"(designRuleUnit (clearance 1 (pair A B)) (x))", ""},
      {"(designRuleUnit (clearance 1 (element A B)))", "!"},
      {"(designRuleUnit N M (clearance 1 (element A B)))", "rules [{designRuleUnit,clearance,A,B,1,N}]"},
      {"(designRuleUnit \"\" (clearance 1 (element A B)))", "rules [{designRuleUnit,clearance,A,B,1,}]"},
  };
  Check("(design d (rule ", "))", kCases);
}

TEST(RuleFile, SolderResistRule) {
  const Case kCases[] = {
      {"", ""},
      {"(flow) (reflow)", ""},
      {"(flow (clearance 1 (x A B)))", "rules [{solderResistRule,clearanceFlow,A,B,1,}]"},
      {"(reflow (clearance 2 (element A B)))", "rules [{solderResistRule,clearanceReflow,A,B,2,}]"},
      {"(reflow (clearance 2 (e A B))) (flow (clearance 1 (e C D)))",
       "rules [{solderResistRule,clearanceFlow,C,D,1,},{solderResistRule,clearanceReflow,A,B,2,}]"},
      {"(flow (clearance 1 (e A B)) (clearance 2 (e C D))) (flow (clearance 3 (e E F)))",
       "rules [{solderResistRule,clearanceFlow,A,B,1,},{solderResistRule,clearanceFlow,C,D,2,}]"},
      {"(flow (sameNetClearance 1 (e A B)))", ""},
      {"(flow) (flow (clearance 3 (e E F)))", ""},
      {"(reflow (clearance 1 (e A B))) (reflow (clearance 2 (e C D)))",
       "rules [{solderResistRule,clearanceReflow,A,B,1,}]"},
      {"(Flow (clearance 1 (e A B)))", ""},
      {"(reflow (clearance 1))", "!"},
      {"(reflow (clearance 2 (e A B)))) (solderResistRule (flow (clearance 1 (e C D)))",
       "rules [{solderResistRule,clearanceReflow,A,B,2,},{solderResistRule,clearanceFlow,C,D,1,}]"},
      {"(clearance 1 (e A B))", ""},
      {"(flow (clearance 1))", "!"},
      {"(flow (clearance 1 (e A B))) (reflow (clearance (e A B)))", "!rules [{solderResistRule,clearanceFlow,A,B,1,}]"},
  };
  Check("(design d (rule (solderResistRule ", ")))", kCases);
}

TEST(RuleFile, SectionsOfOneRule) {
  const Case kCases[] = {
      {"(qualifiedPadstack P (from 1) (to 4))", "rules [{qualifiedPadstack,P,1,4,0,}]"},
      {"(qualifiedPadstack P)", "rules [{qualifiedPadstack,P,,,0,}]"},
      {"(qualifiedPadstack P (x 1) (to 4) (to 5) (from 1))", "rules [{qualifiedPadstack,P,1,5,0,}]"},
      {"(qualifiedPadstack)", "!"},
      {"(qualifiedPadstack P (from))", "!"},
      {"(qualifiedPadstack P (to))", "!"},
      {"(padstack P (from 1))", "rules [{padstack,,,,0,P}]"},
      {"(padstack)", "!"},
      {"(defaultPadstack P Q)", "rules [{defaultPadstack,,,,0,P}]"},
      {"(defaultPadstack)", "!"},
      {"(layer 1 (direction HORIZONTAL))", "rules [{layer,1,HORIZONTAL,,0,}]"},
      {"(layer 1 (x y))", "rules [{layer,1,,,0,}]"},
      // in file order, whatever the keywords
      {"(layer 1) (holeRule (clearance 1 (e A B))) (padstack P) (placementRule (clearance 2 (element A B))) (layer 2)",
       "rules "
       "[{layer,1,,,0,},{holeRule,clearance,A,B,1,},{padstack,,,,0,P},{placementRule,clearance,A,B,2,},{layer,2,,,0,}"
       "]"},
      // further values
      {"(padstack P Q)", "rules [{padstack,,,,0,P}]"},
      {"(qualifiedPadstack P Q (from 1 2) (to 3 4))", "rules [{qualifiedPadstack,P,1,3,0,}]"},
      {"(qualifiedPadstack \"\" (from \"\"))", "rules [{qualifiedPadstack,,,,0,}]"},
      {"(layer 1 2 (direction H V))", "rules [{layer,1,H,,0,}]"},
      {"(layer 1 (direction H) (direction V))", "rules [{layer,1,V,,0,}]"},
      {"(layer)", "!"},
      {"(layer 1 (direction))", "!"},
      {"(padstack P) (x) (Layer 1) (padstack Q)", "rules [{padstack,,,,0,P},{padstack,,,,0,Q}]"},
  };
  Check("(design d (rule ", "))", kCases);
}

TEST(RuleFile, Nets) {
  // A net shows as {name,color,[properties],[terminals]}.
  const Case kCases[] = {
      {"(net N)", "nets [{N,,[],[]}]"},
      {"(net)", "!"},
      {"(net \"\")", "nets [{,,[],[]}]"},
      {"(net N (property k v) (propertyS a b c) (Xproperty e f))", "nets [{N,,[k=v,a=b,e=f],[]}]"},
      {"(net N (Property k v) (prop k v))", "nets [{N,,[],[]}]"},
      {"(net N (propertyI colorId 4) (propertyI colorId 5))", "nets [{N,5,[],[]}]"},
      {"(net N (property colorid 4))", "nets [{N,,[colorid=4],[]}]"},
      {"(net A) (net N (property colorId))", "!nets [{A,,[],[]}]"},
      {"(net A) (net N (property k))", "!nets [{A,,[],[]}]"},
      {"(net A) (net N (property))", "!nets [{A,,[],[]}]"},
      {"(net N (pinList (funcTerm A 1) (x) (funcTerm B 2 3)))", "nets [{N,,[],[{A,1},{B,2}]}]"},
      {"(net N (pinListX (funcTerm A 1)) (XpinList (funcTerm B 2)))", "nets [{N,,[],[{A,1},{B,2}]}]"},
      {"(net N (pinList (funcTerms A 1)))", "nets [{N,,[],[]}]"},
      {"(net N (pinList (funcTerm A)))", "!"},
      {"(net N (pinList (funcTerm)))", "!"},
      {"(net N (pinList))", "nets [{N,,[],[]}]"},
      {"(net N (PinList (funcTerm A 1)) (assign (a 1)) (pinList A (FuncTerm A 1)))", "nets [{N,,[],[]}]"},
      {"(net N (property \"\" \"\"))", "nets [{N,,[=],[]}]"},
      // Where a keyword holds both words it is a property.
      {"(net N (pinListproperty k v))", "nets [{N,,[k=v],[]}]"},
      {"(net N (x (property k v)))", "nets [{N,,[],[]}]"},
  };
  Check("(design d (rule ", "))", kCases);
}

TEST(RuleFile, ElectricalNets) {
  // An electrical net shows as {name,[nets],pair}.
  const Case kCases[] = {
      {"(electricalNet E)", "enets [{E,[],0}]"},
      {"(electricalNet)", "!"},
      {"(electricalNet E (x A B) (y) (z C))", "enets [{E,[A,B,C],0}]"},
      {"(electricalNet E (x A (y B)) C)", "enets [{E,[A],0}]"},
      {"(electricalNet E F (x A))", "enets [{E,[A],0}]"},
      {"(electricalNet E (x \"\" \"A B\"))", "enets [{E,[,A B],0}]"},
      {"(enetPair E)", "enets [{E,[],1}]"},
      {"(enetPair)", "!"},
      {"(enetPair E (electricalNetList (x A B) (y C)) (z D) (electricalNetList (v D)))", "enets [{E,[A,B,C,D],1}]"},
      {"(enetPair E (electricalNetList A B))", "enets [{E,[],1}]"},
      {"(enetPair E (x (y A)))", "enets [{E,[],1}]"},
  };
  Check("(design d (rule ", "))", kCases);
}

TEST(RuleFile, BoardSettings) {
  const Case kCases[] = {
      {"(board)", ""},
      {"(board (a 1 2) (b) (a \"\"))", "board [{a,1},{b,},{a,}]"},
      {"(board (b (x 1)))", "board [{b,}]"},
  };
  Check("(design d (rule ", "))", kCases);
}

TEST(RuleFile, RuleStacks) {
  const Case kCases[] = {
      // A layer shows as {rule,number}.
      {"(designRuleStack S)", "design [{S,[]}]"},
      {"(designRuleStack)", "!"},
      {"(designRuleStack S (layerNumber 1 (designRuleUnit D)) (x 2 (y E) (z F)))", "design [{S,[{D,1},{F,2}]}]"},
      {"(designRuleStack S (l x) (l 3))", "design [{S,[{,0},{,3}]}]"},
      {"(designRuleStack S T (l 1 2 (y D E)))", "design [{S,[{D,1}]}]"},
      {"(designRuleStack S (l))", "!"},
      {"(designRuleStack S (l 1 (y E) (z)))", "!"},
      // A layer shows as {number,width,min,overlap,max wire,min wire}.
      {"(traceRuleStack S)", "trace [{S,[]}]"},
      {"(traceRuleStack)", "!"},
      {"(traceRuleStack S (l 1 (width 0.5) (minWidth 0.25) (minLandOverlap 2) (maxWireWidth 4) (minWireWidth 8)) (m "
       "x))",
       "trace [{S,[{1,0.5,0.25,2,4,8},{0,0,0,0,0,0}]}]"},
      {"(traceRuleStack S (l 1 (x 1) (width 1) (width 2)))", "trace [{S,[{1,2,0,0,0,0}]}]"},
      {"(traceRuleStack S (l))", "!"},
      {"(traceRuleStack S (l 1 (width)))", "!"},
      {"(traceRuleStack S (l 1 (minWidth)))", "!"},
      {"(traceRuleStack S (l 1 (minLandOverlap)))", "!"},
      {"(traceRuleStack S (l 1 (maxWireWidth)))", "!"},
      {"(traceRuleStack S (l 1 (minWireWidth)))", "!"},
  };
  Check("(design d (rule ", "))", kCases);
}

TEST(RuleFile, Components) {
  // A component shows as {name,[properties],[assignments]}.
  const Case kCases[] = {
      {"", ""},
      {"(x A) (Comp A)", ""},
      {"(comp C)", "comps [{C,[],[]}]"},
      {"(comp)", "!"},
      {"(comp C (property k v) (propertyS a b))", "comps [{C,[k=v,a=b],[]}]"},
      {"(comp C (property colorId v))", "comps [{C,[colorId=v],[]}]"},
      {"(comp C (property k))", "!"},
      {"(comp C (property))", "!"},
      {"(comp C (assign (a 1 2) (b 3)) (assign (c 4)))", "comps [{C,[],[a=1,b=3,c=4]}]"},
      {"(comp C (assign (a)))", "!"},
      {"(comp C D (assign (a 1 2)))", "comps [{C,[],[a=1]}]"},
      {"(comp C (assign (property k v) (assign x)))", "comps [{C,[],[property=k,assign=x]}]"},
      {"(comp C (assign a b))", "comps [{C,[],[]}]"},
      {"(comp C (pinList (funcTerm A 1)) (Assign (a 1)))", "comps [{C,[],[]}]"},
      {"(comp C (assign (a \"\")))", "comps [{C,[],[a=]}]"},
      {"(comp C (assigns (a 1)) (x (y 1)))", "comps [{C,[],[]}]"},
      {"(comp C (assignproperty k v))", "comps [{C,[k=v],[]}]"},
      {"(comp A) (comp C (assign (a)))", "!comps [{A,[],[]}]"},
  };
  Check("(design d (assign ", "))", kCases);
}

TEST(RuleFile, WhatWasAppendedBeforeAFaultStays) {
  EXPECT_EQ(
      Read("(design d (boardSpec (bareBoard (conductor 1))) (rule (net N) (padstack P)\n(layer)) (assign (comp C)))"),
      "!layers [{conductor,,,1,1,0,0,0,0,,0}] rules [{padstack,,,,0,P}] nets [{N,,[],[]}]");
}

TEST(RuleFile, DefaultsOfRecords) {
  EXPECT_EQ(Show(CVRXoutRufStackup()), "{[],}");
  EXPECT_EQ(Show(CVRXoutRufStackupLayer()), "{,,,1,1,0,0,0,0,,0}");
  EXPECT_EQ(Show(CVRXoutRufBoardSpec()), "{[],[],[],[],[]}");
  EXPECT_EQ(Show(CVRXoutRufBoardSpecDefaultGrid()), "{,}");
  EXPECT_EQ(Show(CVRXoutRufBoardSpecDrillingRule()), "{,0,0}");
  EXPECT_EQ(Show(CVRXoutRufBoardSpecGridDef()), "{,0,0,0,0}");
  EXPECT_EQ(Show(CVRXoutRufBoardSpecpatternWidth()), "{,0}");
  EXPECT_EQ(Show(CVRXoutRufRule()), "{,,,,0,}");
  EXPECT_EQ(Show(CVRXoutRufRuleBoard()), "{,}");
  EXPECT_EQ(Show(CVRXoutRufRuleDesignRuleStack()), "{,[]}");
  EXPECT_EQ(Show(CVRXoutRufRuleDesignRuleStackEachLayer()), "{,0}");
  EXPECT_EQ(Show(CVRXoutRufRuleTraceRuleStack()), "{,[]}");
  EXPECT_EQ(Show(CVRXoutRufRuleTraceRuleStackEachLayer()), "{0,0,0,0,0,0}");
  EXPECT_EQ(Show(CVRXoutRufRuleElectricalNet()), "{,[],0}");
  EXPECT_EQ(Show(CVRXoutRufNet()), "{,,[],[]}");
  EXPECT_EQ(Show(CVRXoutRufNetFuncTerm()), "{,}");
  EXPECT_EQ(Show(CVRXoutRufComp()), "{,[],[]}");
}

// ---- look-ups ----
TEST(RuleLookUp, Clearance) {
  const auto pData = Loaded(Kind::rules,
                            "(design d (rule (holeRule (clearance 9 (element A B)))\n"
                            "(designRuleUnit U (clearance 1 (element A B)) (clearance 2 (element A B))"
                            " (sameNetClearance 3 (element A B)) (clearance 4 (element C C)))))");
  CVRXoutRufRuleArray& rules = *pData->m_pRufRuleArray;
  rules.SetSize(rules.GetSize() + 1);
  std::rotate(rules.begin(), rules.end() - 1, rules.end());  // a null slot in front
  EXPECT_EQ(rules.GetClearanceValue("A", "B", "clearance"), 1.0);
  EXPECT_EQ(rules.GetClearanceValue("A", "B", "sameNetClearance"), 3.0);
  EXPECT_EQ(rules.GetClearanceValue("B", "A", "clearance"), -1.0);
  EXPECT_EQ(rules.GetClearanceValue("C", "C", "clearance"), 4.0);
  EXPECT_EQ(rules.GetClearanceValue("C", "C", "sameNetClearance"), -1.0);
  // A rule of another section is never found.
  const auto pOther = Loaded(Kind::rules, "(design d (rule (holeRule (clearance 9 (element A B)))))");
  EXPECT_EQ(pOther->m_pRufRuleArray->GetClearanceValue("A", "B", "clearance"), -1.0);
  // What is found is given as it stands; of several units the first in the file.
  const auto pValues =
      Loaded(Kind::rules,
             "(design d (rule (designRuleUnit U (clearance 0 (element Z Z)) (clearance -5 (element Y Y))"
             " (clearance 1 (element A B))) (designRuleUnit V (clearance 2 (element A B)))))");
  EXPECT_EQ(pValues->m_pRufRuleArray->GetClearanceValue("Z", "Z", "clearance"), 0.0);
  EXPECT_EQ(pValues->m_pRufRuleArray->GetClearanceValue("Y", "Y", "clearance"), -5.0);
  EXPECT_EQ(pValues->m_pRufRuleArray->GetClearanceValue("A", "B", "clearance"), 1.0);
  EXPECT_EQ(pValues->m_pRufRuleArray->GetClearanceValue("a", "B", "clearance"), -1.0);
}

TEST(RuleLookUp, RulesOfAName) {
  const auto pData = Loaded(Kind::rules,
                            "(design d (rule (padstack U)\n(designRuleUnit U (clearance 1 (element A B)))"
                            "(designRuleUnit V (clearance 2 (element A B)))"
                            "(designRuleUnit U (clearance 3 (element A B)))))");
  CVRXoutRufRuleArray& rules = *pData->m_pRufRuleArray;
  const std::string before = Show(rules);
  CString sName = "U";
  CVRXoutRufRuleArrayArray holder;
  EXPECT_EQ(holder.Find(""), nullptr);
  holder.SetSize(1);
  CVRXoutRufRuleArray& result = laminate::AppendOwned(holder, std::make_unique<CVRXoutRufRuleArray>());
  result.m_sName = "units";
  rules.GetDesignRuleUnit(sName, &result);
  EXPECT_EQ(result.GetSize(), 2);
  EXPECT_EQ(result.GetAt(0), rules.GetAt(1));
  EXPECT_EQ(result.GetAt(1), rules.GetAt(3));
  EXPECT_EQ(holder.Find("units"), &result);
  EXPECT_EQ(holder.Find("Units"), nullptr);
  laminate::AppendOwned(holder, std::make_unique<CVRXoutRufRuleArray>()).m_sName = "units";
  EXPECT_EQ(holder.Find("units"), &result);
  holder.RemoveAllRuleArrayItem();
  EXPECT_EQ(result.GetSize(), 0);
  // The arrays themselves stay.
  EXPECT_EQ(holder.GetSize(), 3);
  EXPECT_EQ(holder.Find("units"), &result);
  EXPECT_EQ(Show(rules), before);
  EXPECT_THROW(rules.GetDesignRuleUnit(sName, nullptr), CInvalidArgException);
  // Onto itself it appends what was there once.
  rules.GetDesignRuleUnit(sName, &rules);
  EXPECT_EQ(rules.GetSize(), 6);
  rules.SetSize(4);
}

TEST(RuleLookUp, ByNameAndLayer) {
  const auto pData = Loaded(
      Kind::rules,
      "(design d (rule (board (a 1) (a 2)) (designRuleStack S (l 2 (r D)) (l 2 (r E)) (l x (r Z)) (l 7) (l 7 (r "
      "G)))\n(designRuleStack T)"
      " (designRuleStack S) (traceRuleStack V (l 3 (width 1)) (l 3 (width 2)) (l y (width 5))) (traceRuleStack W)))");
  EXPECT_EQ(pData->m_pRufRuleBoardArray->Find("a"), pData->m_pRufRuleBoardArray->GetAt(0));
  EXPECT_EQ(pData->m_pRufRuleBoardArray->Find("b"), nullptr);
  const CVRXoutRufRuleDesignRuleStackArray& design = *pData->m_pDesignRuleStackArray;
  EXPECT_EQ(design.Find("S"), design.GetAt(0));
  EXPECT_EQ(design.Find("s"), nullptr);
  const CVRXoutRufRuleDesignRuleStackEachLayerArray& layers = design.GetAt(0)->m_aEachLayer;
  EXPECT_EQ(layers.Find(2), layers.GetAt(0));
  EXPECT_EQ(layers.Find(0), layers.GetAt(2));
  EXPECT_EQ(layers.Find(1), nullptr);
  EXPECT_EQ(layers.GetRuleNameByLayer(2), "D");
  EXPECT_EQ(layers.GetRuleNameByLayer(1), "");
  EXPECT_EQ(layers.GetRuleNameByLayer(7), "");  // the first of them has no name
  const CVRXoutRufRuleTraceRuleStackArray& trace = *pData->m_pTraceRuleStackArray;
  EXPECT_EQ(trace.Find("V"), trace.GetAt(0));
  EXPECT_EQ(trace.Find("v"), nullptr);
  EXPECT_EQ(trace.GetAt(0)->Find(3)->m_dWidth, 1.0);
  EXPECT_EQ(trace.GetAt(0)->m_aEachLayer.Find(0)->m_dWidth, 5.0);
  EXPECT_EQ(trace.GetAt(1)->Find(3), nullptr);
  CStringArray names;
  names.Add("first");
  pData->m_pDesignRuleStackArray->SetSize(4);
  pData->m_pTraceRuleStackArray->SetSize(3);
  design.GetDesignRuleStackNames(names);
  trace.GetTraceRuleStackNames(names);
  EXPECT_EQ(Show(names), "[first,S,T,S,V,W]");
}

TEST(RuleLookUp, RulesOfANameAreDesignRules) {
  const auto pData = Loaded(Kind::rules,
                            "(design d (rule (padstack U) (designRuleUnit U (clearance 1 (element A B))"
                            " (sameNetClearance 2 (element A B)))))");
  CVRXoutRufRuleArray& rules = *pData->m_pRufRuleArray;
  rules.SetSize(4);
  std::rotate(rules.begin(), rules.end() - 1, rules.end());  // a null slot in front
  CVRXoutRufRuleArray result;
  for (CString sName : {"u", "", "padstack", "U"}) rules.GetDesignRuleUnit(sName, &result);
  EXPECT_EQ(Show(result), "[{designRuleUnit,clearance,A,B,1,U},{designRuleUnit,sameNetClearance,A,B,2,U}]");
  result.SetSize(0);
}

TEST(RuleFile, TheFirstMissingValueIsTold) {
  const auto what = [](const char* szForms) -> std::string {
    CPC_BD_OutClsGet data;
    try {
      Load(data, Kind::rules, "(design d " + std::string(szForms) + ")");
    } catch (const CInvalidArgException& e) {
      return e.what();
    }
    return "";
  };
  const std::pair<const char*, const char*> kCases[] = {
      {"(assign (comp C (property)))", "\"property\" has no value 1"},
      {"(assign (comp C (property k)))", "\"property\" has no value 2"},
      {"(rule (net N (property)))", "\"property\" has no value 1"},
      {"(rule (net N (property k)))", "\"property\" has no value 2"},
      {"(rule (net N (pinList (funcTerm))))", "\"funcTerm\" has no value 1"},
      {"(rule (net N (pinList (funcTerm A))))", "\"funcTerm\" has no value 2"},
      {"(boardSpec (drillingRule (a)))", "\"a\" has no value 1"},
      {"(boardSpec (gridDef G (pitch)))", "\"pitch\" has no value 1"},
  };
  for (const auto& [forms, text] : kCases) EXPECT_EQ(what(forms), text) << forms;
}

TEST(RuleFile, ReadsItsTextAsTheWholeFileParseDoes) {
  // A quote behind a backslash does not end a text where its line ends.
  EXPECT_EQ(Read("(design d (rule (padstack \"a\\\"\nb\")))\n"), "rules [{padstack,,,,0,a\\\"\nb}]");
}

TEST(RuleFile, NestingTooDeepBehindADesign) {
  struct Host : CHostInterface {
    std::vector<std::string> boxes;
    int OnAfxMessageBox(const CString& s, UINT, UINT) override {
      boxes.emplace_back(s.View());
      return IDOK;
    }
  } host;
  const CHostInterfaceScope scope(host);
  CPC_BD_OutClsGet data;
  Load(data, Kind::rules, "(design d (rule (padstack N)))\n" + std::string(21, '(') + "\n");
  EXPECT_EQ(ShowAll(data), "rules [{padstack,,,,0,N}]");
  EXPECT_EQ(data.GetLoadStatus().m_result, LoadStatus::Result::notWellFormed);
  EXPECT_THAT(host.boxes, testing::ElementsAre("Parser meet unexpected Brace Counting Number, 21 at line number 2.!"));
}

TEST(RuleFile, TheFirstOfTwoFaultsIsKept) {
  CPC_BD_OutClsGet data;
  EXPECT_THROW(Load(data, Kind::rules, "(design d (rule (padstack P) (layer)))\n(x\n"), CInvalidArgException);
  EXPECT_EQ(ShowAll(data), "rules [{padstack,,,,0,P}]");
  EXPECT_EQ(data.GetLoadStatus().m_result, LoadStatus::Result::notWellFormed);
  Load(data, Kind::rules, "(design d (rule (padstack Q)))\n");
  EXPECT_EQ(ShowAll(data), "rules [{padstack,,,,0,P},{padstack,,,,0,Q}]");
  EXPECT_TRUE(data.GetLoadStatus().IsOk());
}

TEST(RuleFile, NumbersDoNotGoByTheLocale) {
  CPC_BD_OutClsGet data;
  {
    const laminate::test::LocaleScope locale("de_DE.UTF-8");
    ASSERT_TRUE(locale.IsSet());
    Load(data, Kind::rules,
         "(design d (boardSpec (bareBoard (physical X (lossTangent 0.5) (dielectricConstant 3.5)))))");
  }
  EXPECT_EQ(ShowAll(data), "layers [{,Solder_Resist_3.5_0.5,,1,1,0,0,3.5,1,X,0.5}]");
}

// A section that makes a record needs the array that it goes to; one that makes none does not.
TEST(RuleFile, NullArraysRaise) {
  using D = CPC_BD_OutClsGet;
  struct Row {
    void (*clear)(D&);
    const char* text;
    const char* harmless;
    const char* kept = "";
  };
  const Row kRows[] = {
      {[](D& d) { delete std::exchange(d.m_pBoardSpec, nullptr); }, "(boardSpec)", "(rule)"},
      {[](D& d) { delete std::exchange(d.m_pStackup, nullptr); }, "(boardSpec (bareBoard))", "(boardSpec (gridDef G))"},
      {[](D& d) { delete std::exchange(d.m_pStackup->m_pLayerArray, nullptr); },
       "(boardSpec (bareBoard (conductor 1)))", "(boardSpec (bareBoard (baseMaterial B)))"},
      {[](D& d) { delete std::exchange(d.m_pRufRuleArray, nullptr); }, "(rule (layer 1))", "(rule (holeRule))"},
      {[](D& d) { delete std::exchange(d.m_pRufRuleArray, nullptr); }, "(rule (padstack P))", "(rule (testRule (x)))"},
      {[](D& d) { delete std::exchange(d.m_pRufRuleArray, nullptr); }, "(rule (holeRule (clearance 1 (e A B))))",
       "(rule (solderResistRule (flow)))"},
      {[](D& d) { delete std::exchange(d.m_pRufNetArray, nullptr); }, "(rule (net N))", "(rule (layer 1))"},
      {[](D& d) { delete std::exchange(d.m_pElectricalNetArray, nullptr); }, "(rule (electricalNet N))",
       "(rule (net N))"},
      {[](D& d) { delete std::exchange(d.m_pElectricalNetArray, nullptr); }, "(rule (enetPair N))", "(rule (net N))"},
      {[](D& d) { delete std::exchange(d.m_pRufRuleBoardArray, nullptr); }, "(rule (board (a 1)))", "(rule (board))"},
      {[](D& d) { delete std::exchange(d.m_pDesignRuleStackArray, nullptr); }, "(rule (designRuleStack S))", "(rule)"},
      {[](D& d) { delete std::exchange(d.m_pTraceRuleStackArray, nullptr); }, "(rule (traceRuleStack S))", "(rule)"},
      {[](D& d) { delete std::exchange(d.m_pRufCompArray, nullptr); }, "(assign (comp C))", "(assign)"},
  };
  for (const Row& row : kRows) {
    CPC_BD_OutClsGet data;
    row.clear(data);
    EXPECT_NO_THROW(Load(data, Kind::rules, "(design d " + std::string(row.harmless) + ")")) << row.harmless;
    EXPECT_THROW(Load(data, Kind::rules, "(design d " + std::string(row.text) + ")"), CInvalidArgException) << row.text;
    EXPECT_EQ(data.GetLoadStatus().m_result, LoadStatus::Result::invalidContent);
  }
}

TEST(RuleFile, RemarksOfWhatIsSkippedEndAtANumber) {
  std::string text = "(design d (rule\n";
  for (int i = 0; i < 2000; ++i) text += "()\n";
  const std::vector<std::string> remarks = RemarksOf(Kind::rules, text + "))\n");
  ASSERT_EQ(remarks.size(), 1001u);
  EXPECT_EQ(remarks[999], "file:1001:0: note: \"\" means nothing inside \"rule\": it is skipped");
  EXPECT_EQ(remarks[1000], "file:1002:0: note: what else there is to remark of this file is not told");
}

TEST(RuleFile, RemarksOfValuesThatAreLost) {
  struct Row {
    const char* text;
    std::vector<std::string> remarks;
  };
  const Row kRows[] = {
      {"(boardSpec (defaultGrid (g 1)) (patternWidth (w 1 (n W))) (drillingRule (d 1 2)))\n(rule (enetPair E "
       "(electricalNetList (x A B))) (electricalNet F (x A B)) (designRuleStack S (l 1 (r D))))",
       {}},
      {"(rule (enetPair E (electricalNetList A B)))", {"\"A\" means nothing as a value of \"electricalNetList\""}},
      {"(rule (enetPair E A (electricalNetList (x B))))", {"\"A\" means nothing as a value of \"enetPair\""}},
      {"(rule (electricalNet F G H))", {"\"G\" means nothing as a value of \"electricalNet\""}},
      {"(rule (electricalNet F (x A (y B))))", {"\"y\" means nothing inside \"x\""}},
      {"(boardSpec (patternWidth (w 1 (n W) (m X))))", {"\"m\" means nothing inside \"w\""}},
      {"(boardSpec (defaultGrid (g 1 (h 2))))", {"\"h\" means nothing inside \"g\""}},
      {"(boardSpec (drillingRule (d 1 2 (h 2))))", {"\"h\" means nothing inside \"d\""}},
  };
  for (const Row& row : kRows) {
    std::vector<std::string> expected;
    for (const std::string& s : row.remarks) expected.push_back("file:2:0: note: " + s + ": it is skipped");
    EXPECT_EQ(RemarksOf(Kind::rules, "(design d\n" + std::string(row.text) + ")\n"), expected) << row.text;
  }
  EXPECT_THAT(RemarksOf(Kind::rules, "(design d (rule (designRuleStack S (l 1\n(a A)\n(b B)\n(c C)\n))))\n"),
              testing::ElementsAre("file:2:0: note: only the last form inside \"l\" counts: \"a\" is skipped",
                                   "file:3:0: note: only the last form inside \"l\" counts: \"b\" is skipped"));
}

TEST(RuleFile, RemarksOfWhatIsSkipped) {
  // Each line is of no effect but for what opens and closes forms.
  const std::string sText =
      "(other)\n"                                                                              // 1
      "(design d\n(x)\n"                                                                       // 3
      "(boardSpec (y)\n(bareBoard (z)\n(conductor 1 (u)\n)\n"                                  // 4, 5, 6
      "(physical ABOVE (place TOP)\n(propertyS a b)\n))\n(gridDef G (v)\n))\n"                 // 8, 9, 11
      "(rule (solderResistRule (w)\n(flow)\n(flow)\n)\n"                                       // 13, 15
      "(padstack P (p)\n)\n(holeRule (sameNetClearance 1)\n(clearance 1 (e A B)\n(e C D)))\n"  // 17, 19, 21
      "(testRule (sameNetClearance 1 (s A B)\n))\n"                                            // 22
      "(qualifiedPadstack P (q)\n)\n(layer 1 (l)\n)\n(enetPair E (n)\n)\n"                     // 24, 26, 28
      "(traceRuleStack T (l 1 (t)\n))\n)\n"                                                    // 30
      "(assign (a)\n(comp C (c)\n))\n)\n"                                                      // 33, 34
      "(design e)\n";                                                                          // 37
  const auto skipped = [](int nLine, const std::string& sWhat) {
    return "file:" + std::to_string(nLine) + ":0: note: " + sWhat + ": it is skipped";
  };
  const auto inside = [&](int nLine, const std::string& s, const std::string& sOuter) {
    return skipped(nLine, "\"" + s + "\" means nothing inside \"" + sOuter + "\"");
  };
  EXPECT_THAT(
      RemarksOf(Kind::rules, sText),
      testing::ElementsAre(
          skipped(1, "\"other\" means nothing outside \"design\""),
          "file:37:0: note: only the first \"design\" counts: this one is skipped", inside(3, "x", "design"),
          inside(4, "y", "boardSpec"), inside(5, "z", "bareBoard"), inside(6, "u", "conductor"),
          inside(8, "place", "physical"), inside(9, "propertyS", "physical"), inside(11, "v", "gridDef"),
          inside(13, "w", "solderResistRule"), inside(15, "flow", "solderResistRule"), inside(17, "p", "padstack"),
          inside(19, "sameNetClearance", "holeRule"), inside(21, "e", "clearance"), inside(22, "s", "sameNetClearance"),
          inside(24, "q", "qualifiedPadstack"), inside(26, "l", "layer"), inside(28, "n", "enetPair"),
          inside(30, "t", "l"), inside(33, "a", "assign"), inside(34, "c", "comp")));
  EXPECT_THAT(RemarksOf(Kind::rules, "(Design d)\n"),
              testing::ElementsAre("file:0:0: warning: there is no \"design\" in the file: nothing is read of it",
                                   skipped(1, "\"Design\" means nothing outside \"design\"")));
  EXPECT_THAT(RemarksOf(Kind::rules, ""),
              testing::ElementsAre("file:0:0: warning: there is no \"design\" in the file: nothing is read of it"));
}

}  // namespace
