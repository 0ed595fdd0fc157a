#include "CommandRunner.h"
#include "Json.h"

namespace {

using Strings = std::vector<std::string>;

const std::string kExample = LAMINATE_EXAMPLE;

struct Place : CommandTest {
  // The call with the example's files.
  Strings Call(Strings more) const {
    Strings all{"place", more.front(), "--pcf", kExample + ".pcf", "--ftf", kExample + ".ftf"};
    all.insert(all.end(), more.begin() + 1, more.end());
    return all;
  }
};

TEST_F(Place, PrintsTheRecord) {
  const CommandResult result =
      run(Call({"CHIP0603", "--at=12.5,-3", "--reference", "R9", "--side", "B", "--angle", "30"}));
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "");
  EXPECT_TRUE(result.out.starts_with("(component (reference R9)\n(gateCount 0)\n(pinCount 0)\n(part )\n"))
      << result.out;
  EXPECT_TRUE(result.out.ends_with(")\n"));
  for (const char* sz : {"(footprint CHIP0603)\n", "(placementSide B)\n", "(location\n(pt 12.50000 -3.00000)\n)\n",
                         "(angle 30.00000)\n", "(layer (nonConductive Legend-B)\n", "(pin 1\n"}) {
    EXPECT_NE(result.out.find(sz), std::string::npos) << sz << "in\n" << result.out;
  }
}

TEST_F(Place, PrintsJson) {
  const CommandResult result = run(Call({"CHIP0603", "--json"}));
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.out.back(), '\n');
  const Json component = Json::parse(result.out);
  EXPECT_EQ(component["class"], "CBDcomponent");
  EXPECT_EQ(component["m_sReference"], "");
  EXPECT_EQ(component["m_sFootprint"], "CHIP0603");
  EXPECT_EQ(component["m_sPlacementSide"], "A");
  EXPECT_EQ(component["m_dAngle"], 0.0);
  EXPECT_EQ(component["m_ptLocation"], Json({0.0, 0.0}));
  EXPECT_EQ(component["m_pPinArray"].size(), 2u);
}

TEST_F(Place, PlacesPinsOnTheirSideAtTheirAngleAndScale) {
  struct Row {
    Strings options;
    double x;  // of the first pin, which the footprint has at (-0.8, 0)
    double y;
  };
  const Row rows[] = {{{}, -0.8, 0},
                      {{"--at", "1,2"}, 0.2, 2},
                      {{"--at", "+1e1,2.5"}, 9.2, 2.5},
                      {{"--angle", "90"}, 0, -0.8},
                      {{"--angle=-90"}, 0, 0.8},
                      {{"--side", "B"}, 0.8, 0},
                      {{"--side", "B", "--angle", "90"}, 0, -0.8},
                      {{"--scale", "2"}, -3.2, 0},  // twice: before the move, and for the pin's one shape
                      {{"--at", "1,0", "--scale", "2"}, -1.2, 0}};
  for (const Row& row : rows) {
    Strings call{"CHIP0603", "--json"};
    call.insert(call.end(), row.options.begin(), row.options.end());
    const CommandResult result = run(Call(call));
    ASSERT_EQ(result.status, 0) << result.err;
    const Json pt = Json::parse(result.out)["m_pPinArray"][0]["m_ptLocation"];
    EXPECT_NEAR(pt[0].get<double>(), row.x, 1e-12) << testing::PrintToString(row.options);
    EXPECT_NEAR(pt[1].get<double>(), row.y, 1e-12) << testing::PrintToString(row.options);
  }
}

TEST_F(Place, NamesTheClosestFootprintsForAnUnknownOne) {
  const CommandResult result = run(Call({"CHIP0683"}));
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err,
            kExample + ".ftf: error: no footprint 'CHIP0683'; did you mean 'CHIP0603', 'CHIP0805' or 'SOIC8'?\n");
  folder.Write("b.pcf", kBoard);
  folder.Write("l.ftf", kLibrary);
  EXPECT_EQ(run({"place", "x", "--pcf", "b.pcf", "--ftf", "l.ftf"}).err,
            "l.ftf: error: no footprint 'x'; did you mean 'F0402'?\n");
  folder.Write("empty.ftf", "(ftf\n(footprintContainer\n)\n)\n");
  EXPECT_EQ(run({"place", "x", "--pcf", "b.pcf", "--ftf", "empty.ftf"}).err, "empty.ftf: error: no footprint 'x'\n");
}

TEST_F(Place, RefusesWhatItCannotRead) {
  const Strings rows[] = {{"--side", "C"},    {"--side", "a"},    {"--angle", "x"},    {"--angle", "1x"},
                          {"--angle", "nan"}, {"--angle", "inf"}, {"--at", "1"},       {"--at", "1,"},
                          {"--at", "1,2,3"},  {"--at", "1;2"},    {"--at", "1,1e999"}, {"--scale", ""},
                          {"--render", "x"},  {"--render", "-"},  {"--unknown"},       {"--angle", "1", "2"}};
  for (const Strings& row : rows) {
    Strings call{"CHIP0603"};
    call.insert(call.end(), row.begin(), row.end());
    const CommandResult result = run(Call(call));
    EXPECT_EQ(result.status, 2) << testing::PrintToString(row);
    EXPECT_EQ(result.out, "");
    EXPECT_TRUE(result.err.starts_with("laminate place: error: ")) << result.err;
  }
  for (const Strings& row : {Strings{"place", "F", "--pcf", "b.pcf"}, Strings{"place", "F", "--ftf", "l.ftf"},
                             Strings{"place", "--pcf", "b.pcf", "--ftf", "l.ftf"}}) {
    EXPECT_EQ(run(row).status, 2) << testing::PrintToString(row);
  }
}

TEST_F(Place, PrintsNothingOfInputsThatAreNotWellFormed) {
  folder.Write("b.pcf", kBoard);
  folder.Write("l.ftf", kLibrary);
  folder.Write("bad.pcf", "(pcf\n");
  folder.Write("bad.ftf", "(ftf\n(footprintContainer\n(footprints\n(footprint F0402 (toeprint (pin 1 (pt 1)))))))\n");
  folder.Write("short.ftf", "(ftf\n(footprintContainer\n(footprints\n(footprint\n)\n)\n)\n)\n");
  for (const auto& [szPcf, szFtf] : {std::pair{"bad.pcf", "l.ftf"}, std::pair{"b.pcf", "bad.ftf"},
                                     std::pair{"b.pcf", "short.ftf"}, std::pair{"b.pcf", "none.ftf"}}) {
    const CommandResult result = run({"place", "F0402", "--pcf", szPcf, "--ftf", szFtf, "--render", "x.svg"});
    EXPECT_EQ(result.status, 1) << szPcf << " " << szFtf;
    EXPECT_EQ(result.out, "");
    EXPECT_NE(result.err.find(": error: "), std::string::npos) << result.err;
    EXPECT_FALSE(std::filesystem::exists(folder / "x.svg"));
  }
}

// A library with one footprint whose body is on two layers.
std::string LibraryWith(const std::string& sShape) {
  return "(ftf\n(header\n(version 2.0)\n)\n(technologyContainer\n(technology T\n(footprintLayer\n(layer Top (type "
         "CONDUCTIVE))\n)\n)\n)\n(footprintContainer\n(footprints\n(footprint F\n(heelprint\n(layout\n(layer "
         "(footLayer "
         "Top)\n" +
         sShape + "\n)\n)\n)\n)\n)\n)\n)\n";
}

TEST_F(Place, PassesTheWarningsOfTheLibraryOn) {
  std::string sBoard = kBoard;
  const std::string sMapping = "(map A\n";
  sBoard.insert(sBoard.find(sMapping) + sMapping.size(), "(correspondence (footLayer Top) (boardLayer))\n");
  folder.Write("b.pcf", sBoard);
  folder.Write("l.ftf", LibraryWith("(circle 1.0 (pt 0 0))"));
  const CommandResult result = run({"place", "F", "--pcf", "b.pcf", "--ftf", "l.ftf", "--json"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_NE(result.err.find("warning: Mult-Layer Or Zero Size Board Layer Found! (4 times)\n"), std::string::npos)
      << result.err;
}

TEST_F(Place, TellsWhenAFootprintCannotBePlaced) {
  folder.Write("b.pcf", kBoard);
  folder.Write("l.ftf", LibraryWith("(roundThermal (out 2.0) (in 1.0) (pt 0 0))"));
  const CommandResult result =
      run({"place", "F", "--pcf", "b.pcf", "--ftf", "l.ftf", "-o", "out", "--render", "out.svg"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out, "");
  EXPECT_TRUE(result.err.starts_with("l.ftf: error: footprint 'F' cannot be placed: ")) << result.err;
  EXPECT_EQ(folder.Names(), (Strings{"b.pcf", "l.ftf"}));
}

TEST_F(Place, WritesFiles) {
  EXPECT_EQ(run(Call({"CHIP0603", "-o", "record"})).out, "");
  EXPECT_EQ(folder.Read("record"), run(Call({"CHIP0603"})).out);
  for (const char* sz : {"p.svg", "p.png", "p.pdf"}) {
    EXPECT_EQ(run(Call({"CHIP0603", "--json", "--render", sz})).status, 0);
    EXPECT_GT(folder.Read(sz).size(), 500u) << sz;
  }
  const std::string sSvg = folder.Read("p.svg");
  EXPECT_NE(sSvg.find("<g data-layer=\"1\""), std::string::npos) << sSvg;
  EXPECT_NE(sSvg.find("<g data-layer=\"Legend-A\""), std::string::npos) << sSvg;
  // An output must not be an input.
  std::filesystem::copy(kExample + ".ftf", folder / "l.ftf");
  const std::string sBefore = folder.Read("l.ftf");
  for (const char* sz : {"-o", "--output"}) {
    EXPECT_EQ(run({"place", "CHIP0603", "--pcf", kExample + ".pcf", "--ftf", "l.ftf", sz, "l.ftf"}).status, 2);
  }
  EXPECT_EQ(folder.Read("l.ftf"), sBefore);
  const CommandResult result = run(Call({"CHIP0603", "-o", "none/record"}));
  EXPECT_EQ(result.status, 1);
  EXPECT_TRUE(result.err.starts_with("none/record: error: cannot write: ")) << result.err;
}

TEST_F(Place, LeavesThePictureWhenTheRecordCannotBeWritten) {
  EXPECT_EQ(run(Call({"CHIP0603", "--render", "p.svg", "-o", "none/record"})).status, 1);
  EXPECT_EQ(folder.Names(), Strings{});
  folder.Write("p.svg", "old");
  EXPECT_EQ(run(Call({"CHIP0603", "--render", "p.svg", "-o", "none/record"})).status, 1);
  EXPECT_EQ(folder.Read("p.svg"), "old");
  EXPECT_EQ(run(Call({"CHIP0603", "--render", "none/p.svg", "-o", "record"})).status, 1);
  EXPECT_EQ(folder.Names(), Strings{"p.svg"});
}

TEST_F(Place, RefusesOneFileForTwoOutputs) {
  const CommandResult result = run(Call({"CHIP0603", "--render", "x.svg", "-o", "./x.svg"}));
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.err, "x.svg: error: the picture and the component cannot go into one file\n");
  EXPECT_EQ(folder.Names(), Strings{});
}

TEST_F(Place, HasAHelpWithAnExample) {
  const CommandResult result = run({"place", "--help"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "");
  EXPECT_NE(result.out.find("Example:\n  laminate place "), std::string::npos) << result.out;
}

}  // namespace
