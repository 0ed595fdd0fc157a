#include "CommandRunner.h"
#include "Json.h"

namespace {

const char kPackages[] =
    "(unit mm)\n(package \"PACK\"\n(type SMD)\n(uver 2)\n(mountForm default\n(footprintRef \"F\")\n(spec "
    "\"s\")\n)\n)\n";
const char kParts[] = "(part \"P\"\n(packageRef \"PACK\")\n)\n";
const char kRules[] = "(design x\n(net A\n)\n)\n";
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
  EXPECT_EQ(data["m_pPrfPartArray"][0]["m_sPackageRef"], "PACK");
  EXPECT_EQ(data["m_pLcdbCmpCompArray"][0]["m_sCompName"], "C");
}

TEST_F(DesignData, GoesToAnArchiveAndBack) {
  const std::vector<std::string> files{"--package", "p.pkf", "--rules", "p.rul", "--components", "p.cmp"};
  std::vector<std::string> call = files;
  call.insert(call.begin(), "design-data");
  call.insert(call.end(), {"--archive-out", "a.bin"});
  const CommandResult result = run(call);
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(FirstDifference(Parsed({"--archive-in", "a.bin"}), Parsed(files)), "");
  // An archive comes first, whatever the order of the options.
  EXPECT_EQ(Parsed({"--package", "p.pkf", "--archive-in", "a.bin"})["m_pPackageArray"].size(), 2u);
  EXPECT_EQ(run({"design-data", "--archive-in", "a.bin", "--archive-out", "-"}).out, folder.Read("a.bin"));
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
