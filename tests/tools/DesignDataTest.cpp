#include <thread>

#include "CommandRunner.h"
#include "Json.h"

namespace {

const char kPackages[] =
    "(unit mm)\n(package \"PACK\"\n(type SMD)\n(uver 2)\n(mountForm default\n(footprintRef \"F\")\n(spec "
    "\"s\")\n)\n)\n";
const char kParts[] =
    "(part \"P\"\n(packageRef \"PACK\")\n(polarity both)\n(gateDef (gateName \"G\")\n(x (y \"1\"))\n)\n(interface\n"
    "(port \"1\" (symbPinId 2) (portName \"N\") (portType IN))\n)\n)\n";
const char kRules[] =
    "(design x\n(boardSpec\n(bareBoard\n(conductor 1\n(thickness 0.035)\n)\n(physical ABOVE\n(lossTangent "
    "0.02)\n)\n(baseMaterial FR4)\n)\n(defaultGrid (g 0.1))\n(drillingRule (d 1 2))\n(patternWidth (w 0.5 (n "
    "W)))\n(gridDef G (pitch 1 2) (pt 3 4))\n)\n(rule\n(net A\n(propertyI colorId 4)\n(property k v)\n(pinList "
    "(funcTerm U 1))\n)\n(designRuleUnit D (clearance 0.5 (element L P)))\n(board (b 1))\n(designRuleStack S (l 1 (r "
    "D)))\n(traceRuleStack T (l 2 (width 0.5)))\n(enetPair E (electricalNetList (x A B)))\n)\n(assign\n(comp C "
    "(property a b) (assign (c d)))\n)\n)\n";
const char kComponents[] = "$COMP \"C\"\n  functionName = FN\n  pin 1 = INOUT 1 1 A\n$COMP_END\n";

struct DesignData : CommandTest {
  DesignData() {
    folder.Write("p.pkf", kPackages);
    folder.Write("p.cdf", kParts);
    folder.Write("p.rul", kRules);
    folder.Write("p.cmp", kComponents);
  }
  Json Parsed(std::vector<std::string> call) {
    call.insert(call.begin(), "design-data");
    call.push_back("--json");
    const CommandResult result = run(call);
    EXPECT_EQ(result.status, 0) << result.err;
    return Json::parse(result.out);
  }
};

TEST_F(DesignData, ShowsWhatWasLoaded) {
  const CommandResult result = run({"design-data", "--package", "p.pkf", "--parts", "p.cdf"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "");
  EXPECT_TRUE(result.out.starts_with("unit                mm\npackages            1\nparts               1\n"))
      << result.out;
}

TEST_F(DesignData, ShowsWhatARuleFileHolds) {
  EXPECT_EQ(run({"design-data", "--rules", "p.rul"}).out,
            "unit                none\npackages            0\nparts               0\npin assigns         0\n"
            "functions           0\nbase material       FR4\nstack-up layers     2\ndefault grids       1\n"
            "grid definitions    1\ndrilling rules      1\npattern widths      1\nrules               1\n"
            "board settings      1\ndesign rule stacks  1\ntrace rule stacks   1\nnets                1\n"
            "electrical nets     1\ncomponent settings  1\nlibrary components  0\n");
}

TEST_F(DesignData, IsTheFacadeInJson) {
  const Json data = Parsed({"--package", "p.pkf", "--parts", "p.cdf", "--rules", "p.rul", "--components", "p.cmp"});
  std::vector<std::string> keys;
  for (const auto& item : data.items()) keys.push_back(item.key());
  EXPECT_EQ(keys, (std::vector<std::string>{
                      "class", "m_sUnit", "m_pPackageArray", "m_pStackup", "m_pLcdbCmpCompArray", "m_pPrfFunctionArray",
                      "m_pPrfPinAssignArray", "m_pRufCompArray", "m_pPrfPartArray", "m_pRufNetArray", "m_pRufRuleArray",
                      "m_pRufRuleBoardArray", "m_pDesignRuleStackArray", "m_pTraceRuleStackArray",
                      "m_pElectricalNetArray", "m_pBoardSpec", "m_aHostList1", "m_aHostList2", "m_sHostText"}));
  EXPECT_EQ(data["class"], "CPC_BD_OutClsGet");
  EXPECT_EQ(data["m_pPackageArray"][0],
            Json::parse(R"({"class": "CVRXoutPackage", "m_sType": "SMD", "m_nUver": 2, "m_sName": "PACK",
                            "m_pMountFormArray": [{"class": "CVRXoutPackageMountForm", "m_sSpec": "s",
                            "m_sBottomFootprint": "", "m_sFootprintRef": "F", "m_sMountForm": "default"}]})"));
  EXPECT_EQ(data["m_pPrfPartArray"][0],
            Json::parse(R"({"class": "CVRXoutPrfPart", "m_sName": "P", "m_sFootprintRef": "", "m_sPinAssignRef": "",
                            "m_sStockInfo": "", "m_sPartClass": "", "m_sPackageRef": "PACK",
                            "m_pPortArray": [{"class": "CVRXoutPrfPartPort", "m_sPortNo": "1", "m_sPortType": "IN",
                                              "m_sPortName": "N", "m_nSymbPinId": 0}],
                            "m_pGateDefArray": [{"class": "CVRXoutPrfPartGateDef", "m_aPortRefs": ["1"],
                                                 "m_sGateName": "G", "m_pPropertyArray": []}],
                            "m_pPropertyArray": [{"class": "CLProperty", "item": "polarity", "comment": "both",
                                                  "kind": ""}],
                            "m_pStockPropertyArray": []})"));
  EXPECT_EQ(data["m_pLcdbCmpCompArray"][0]["m_sCompName"], "C");
}

TEST_F(DesignData, ShowsEveryRecordOfARuleFile) {
  const Json data = Parsed({"--rules", "p.rul"});
  const std::pair<const char*, const char*> kRows[] = {
      {"m_pStackup", R"({"class": "CVRXoutRufStackup", "m_pLayerArray": [
          {"class": "CVRXoutRufStackupLayer", "m_sLayerKind": "conductor", "m_sMaterial": "", "m_sLayerRole": "",
           "m_sPlace": "", "m_bPhysical": 0, "m_nLayerNo": 1, "m_nAuxNo": 1, "m_dThickness": 0.035,
           "m_dResistivity": 0, "m_dDielectricConstant": 0, "m_dLossTangent": 0},
          {"class": "CVRXoutRufStackupLayer", "m_sLayerKind": "Solder_Resist_Top",
           "m_sMaterial": "Solder_Resist_0_0.02", "m_sLayerRole": "", "m_sPlace": "ABOVE", "m_bPhysical": 1,
           "m_nLayerNo": 1, "m_nAuxNo": 1, "m_dThickness": 0, "m_dResistivity": 0, "m_dDielectricConstant": 0,
           "m_dLossTangent": 0.02}], "m_sBaseMaterial": "FR4"})"},
      {"m_pBoardSpec", R"({"class": "CVRXoutRufBoardSpec",
          "m_aDefaultGrid": [{"class": "CVRXoutRufBoardSpecDefaultGrid", "m_sName": "g", "m_sValue": "0.1"}],
          "m_aDrillingRule": [{"class": "CVRXoutRufBoardSpecDrillingRule", "m_sName": "d", "m_nValue1": 1,
                               "m_nValue2": 2}],
          "m_aPatternWidth": [{"class": "CVRXoutRufBoardSpecpatternWidth", "m_sName": "W", "m_dWidth": 0.5}],
          "m_aGridDef": [{"class": "CVRXoutRufBoardSpecGridDef", "m_sName": "G", "m_dPitchX": 1, "m_dPitchY": 2,
                          "m_dPtX": 3, "m_dPtY": 4}],
          "m_aProperty": []})"},
      {"m_pRufNetArray", R"([{"class": "CVRXoutRufNet", "m_sName": "A", "m_sColorId": "4",
          "m_pPropertyArray": [{"class": "CLProperty", "item": "k", "comment": "v", "kind": ""}],
          "m_pFuncTermArray": [{"class": "CVRXoutRufNetFuncTerm", "m_sValue1": "U", "m_sValue2": "1"}]}])"},
      {"m_pRufRuleArray", R"([{"class": "CVRXoutRufRule", "m_sRuleKind": "designRuleUnit", "m_sRuleName": "D",
          "m_sRuleItem": "clearance", "m_sFirst": "L", "m_sSecond": "P", "m_dValue": 0.5}])"},
      {"m_pRufRuleBoardArray", R"([{"class": "CVRXoutRufRuleBoard", "m_sName": "b", "m_sValue": "1"}])"},
      {"m_pDesignRuleStackArray", R"([{"class": "CVRXoutRufRuleDesignRuleStack", "m_sName": "S", "m_aEachLayer": [
          {"class": "CVRXoutRufRuleDesignRuleStackEachLayer", "m_nLayerNo": 1, "m_sRuleName": "D"}]}])"},
      {"m_pTraceRuleStackArray", R"([{"class": "CVRXoutRufRuleTraceRuleStack", "m_sName": "T", "m_aEachLayer": [
          {"class": "CVRXoutRufRuleTraceRuleStackEachLayer", "m_nLayerNo": 2, "m_dWidth": 0.5, "m_dMinWidth": 0,
           "m_dMinLandOverlap": 0, "m_dMaxWireWidth": 0, "m_dMinWireWidth": 0}]}])"},
      {"m_pElectricalNetArray", R"([{"class": "CVRXoutRufRuleElectricalNet", "m_bPair": 1, "m_sName": "E",
          "m_aNetNames": ["A", "B"]}])"},
      {"m_pRufCompArray", R"([{"class": "CVRXoutRufComp",
          "m_pAssignArray": [{"class": "CLProperty", "item": "c", "comment": "d", "kind": ""}],
          "m_pPropertyArray": [{"class": "CLProperty", "item": "a", "comment": "b", "kind": ""}], "m_sName": "C"}])"},
  };
  for (const auto& [key, text] : kRows) EXPECT_EQ(FirstDifference(data[key], Json::parse(text)), "") << key;
}

TEST_F(DesignData, GoesToAnArchiveAndBack) {
  const std::vector<std::string> files{"--package", "p.pkf", "--parts",      "p.cdf",
                                       "--rules",   "p.rul", "--components", "p.cmp"};
  std::vector<std::string> call = files;
  call.insert(call.begin(), "design-data");
  call.insert(call.end(), {"--archive-out", "a.bin"});
  const CommandResult result = run(call);
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out, "");
  const Json data = Parsed(files);
  const Json again = Parsed({"--archive-in", "a.bin"});
  EXPECT_EQ(FirstDifference(again, WithoutWhatNoImageHolds(data)), "");
  EXPECT_EQ(data["m_pStackup"]["m_pLayerArray"][1]["m_dLossTangent"], 0.02);
  EXPECT_EQ(again["m_pStackup"]["m_pLayerArray"][1]["m_dLossTangent"], 0.0);
  EXPECT_EQ(data["m_pElectricalNetArray"][0]["m_bPair"], 1);
  EXPECT_EQ(data["m_pPrfPartArray"][0]["m_pPortArray"].size(), 1u);
  // An archive comes first, whatever the order of the options.
  EXPECT_EQ(Parsed({"--package", "p.pkf", "--archive-in", "a.bin"})["m_pPackageArray"].size(), 2u);
  // Of a port and of a gate an image has but eight bytes, which are not there when it is stored again.
  EXPECT_EQ(run({"design-data", "--archive-in", "a.bin", "--archive-out", "b.bin"}).status, 0);
  EXPECT_EQ(folder.Read("b.bin").size() + 16, folder.Read("a.bin").size());
  EXPECT_EQ(run({"design-data", "--archive-in", "b.bin", "--archive-out", "-"}).out, folder.Read("b.bin"));
}

TEST_F(DesignData, CanBeShownAndArchivedAtOnce) {
  const CommandResult result = run({"design-data", "--package", "p.pkf", "--archive-out", "a.bin", "--json"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(Json::parse(result.out)["m_sUnit"], "mm");
  EXPECT_NE(folder.Read("a.bin"), "");
}

TEST_F(DesignData, PrintsNothingOfRulesThatAreNotWellFormed) {
  for (const char* szText :
       {"(design x\n(net A\n", "(design x\n(boardSpec\n(drillingRule (d 1))\n)\n)\n", "(design x))\n"}) {
    folder.Write("p.rul", szText);
    const CommandResult result =
        run({"design-data", "--package", "p.pkf", "--rules", "p.rul", "--archive-out", "a.bin", "-o", "out"});
    EXPECT_EQ(result.status, 1) << szText;
    EXPECT_EQ(result.out, "");
    EXPECT_TRUE(result.err.starts_with("p.rul:")) << result.err;
  }
  EXPECT_EQ(folder.Names(), (std::vector<std::string>{"p.cdf", "p.cmp", "p.pkf", "p.rul"}));
}

TEST_F(DesignData, RefusesWhatIsNoWholeArchive) {
  ASSERT_EQ(run({"design-data", "--package", "p.pkf", "--archive-out", "a.bin"}).status, 0);
  const std::string sImage = folder.Read("a.bin");
  struct Row {
    const char* name;
    std::string image;
  };
  for (const Row& row : {Row{"empty", ""}, Row{"cut", sImage.substr(0, sImage.size() - 1)},
                         Row{"half", sImage.substr(0, sImage.size() / 2)}, Row{"text", kPackages},
                         Row{"later version", std::string("\x03\0\0\0", 4) + sImage.substr(4)}}) {
    folder.Write("bad.bin", row.image);
    const CommandResult result = run({"design-data", "--archive-in", "bad.bin", "--json"});
    EXPECT_EQ(result.status, 1) << row.name;
    EXPECT_EQ(result.out, "") << row.name;
    EXPECT_TRUE(result.err.starts_with("bad.bin: error: ")) << row.name << ": " << result.err;
  }
  folder.Write("more.bin", sImage + "behind");
  EXPECT_EQ(run({"design-data", "--archive-in", "more.bin"}).status, 0);
}

TEST_F(DesignData, ReadsAnArchiveFromAPipe) {
  ASSERT_EQ(run({"design-data", "--package", "p.pkf", "--archive-out", "a.bin"}).status, 0);
  const std::string sImage = folder.Read("a.bin");
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  std::thread writer([&] { folder.Write("pipe", sImage); });
  const CommandResult result = run({"design-data", "--archive-in", "pipe", "--archive-out", "-"});
  writer.join();
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out, sImage);
}

TEST_F(DesignData, WritesBothOutputsOrNone) {
  std::filesystem::create_directory(folder / "dir");
  for (const std::vector<std::string>& row :
       {std::vector<std::string>{"--archive-out", "a.bin", "-o", "dir"}, {"--archive-out", "dir", "-o", "out"}}) {
    std::vector<std::string> call{"design-data", "--package", "p.pkf"};
    call.insert(call.end(), row.begin(), row.end());
    EXPECT_EQ(run(call).status, 1);
    EXPECT_EQ(folder.Names(), (std::vector<std::string>{"dir", "p.cdf", "p.cmp", "p.pkf", "p.rul"}));
  }
}

}  // namespace
