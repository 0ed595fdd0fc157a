#include <algorithm>

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
                      {{"--angle", "-90"}, 0, 0.8},
                      {{"--at", "-3,7"}, -3.8, 7},
                      {{"--scale", "0"}, 0, 0},
                      {{"--scale", "-1"}, -0.8, 0},
                      {{"--at", "1,0", "--scale", "-1"}, -1.8, 0},
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

// A board and a library in which each side has a legend, bodies land on the back alone, and one footprint has a pin, a
// line, a body and a pad of its body.
struct SmallPlace : Place {
  SmallPlace() {
    WriteLibrary("(layer (FPADSTACK)\n(fpadstack (pt 5.0 0.0) (angle 30) (padstackGroup default (padstack STACK))))\n");
    folder.Write("b.pcf",
                 "(pcf\n(technologyContainer\n(technology T\n(numberOfConductorLayer 2)\n"
                 "(footprintLayer\n(layer Legend (type SYMBOL))\n(layer Body (type COMPAREA))\n)\n(subLayer\n)\n"
                 "(nonConductiveLayer\n(layer Legend-A)\n(layer Legend-B)\n(layer Body-B)\n)\n"
                 "(conductiveLayer\n(layerNumber 1 (type POSI))\n(layerNumber 2 (type POSI))\n)\n"
                 "(layerMapping\n(map A\n"
                 "(correspondence (footLayer Legend) (boardLayer (nonConductive Legend-A)))\n)\n"
                 "(map B\n(correspondence (footLayer Legend) (boardLayer (nonConductive Legend-B)))\n"
                 "(correspondence (footLayer Body) (boardLayer (nonConductive Body-B)))\n)\n(map A_THRU\n)\n)\n)\n)\n"
                 "(boardContainer\n(components\n)\n)\n)\n");
  }
  void WriteLibrary(const std::string& sLastLayer, const std::string& sName = "F") const {
    folder.Write("l.ftf",
                 "(ftf\n(technologyContainer\n(technology T\n(footprintLayer\n(layer Legend (type SYMBOL))\n"
                 "(layer Body (type COMPAREA))\n)\n)\n)\n(footprintContainer\n"
                 "(padstacks\n(padstack STACK)\n)\n(footprints\n(footprint " +
                     sName +
                     "\n(heelprint\n(layout\n"
                     "(layer (footLayer Legend)\n(line (geometry (line (vertex (pt 1.0 2.0 (width 0.1)) (pt 3.0 "
                     "2.0)))))\n)\n"
                     "(layer (footLayer Body)\n(surface (geometry (surface (vertex (pt 0.0 0.0) (pt 4.0 0.0) (pt 4.0 "
                     "3.0)))))\n)\n" +
                     sLastLayer +
                     ")\n)\n(toeprint\n(pin 1\n(pt 1.0 2.0)\n(layout\n(layer (FPADSTACK)\n"
                     "(fpadstack (pt 1.0 2.0) (angle 100) (padstackGroup default (padstack STACK)))\n)\n)\n)\n)\n"
                     ")\n)\n)\n)\n");
  }
  CommandResult PlaceF(const Strings& more) const {
    Strings call{"place", "F", "--pcf", "b.pcf", "--ftf", "l.ftf"};
    call.insert(call.end(), more.begin(), more.end());
    return run(call);
  }
};

TEST_F(SmallPlace, PrintsTheWholeRecord) {
  const CommandResult result = PlaceF({"--side", "B", "--angle", "90", "--scale", "2", "--at", "10,20"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "");
  // The turn is 270 after the mirroring. The pin at (1, 2) is scaled, goes to (14, 22) and is scaled for its one shape.
  EXPECT_EQ(result.out,
            "(component (reference \"\")\n(gateCount 0)\n(pinCount 0)\n(part )\n(footprintSpec default)\n"
            "(footprint F)\n(originalReference \"\")\n(placed YES)\n(placementSide B)\n(placementSideLock NO)\n"
            "(outOfBoard NO)\n(outOfBoardLocation\n(pt 0.00000 0.00000)\n)\n(location\n(pt 10.00000 20.00000)\n)\n"
            "(minRect\n(box\n(pt 0.00000 0.00000)\n(pt 0.00000 0.00000)\n)\n)\n(angle 90.00000)\n(drawRefDes NO)\n"
            "(layout\n"
            "(layer (nonConductive Legend-B)\n(refer\n(line\n(geometry\n(line\n(vertex\n"
            "(pt 1.00000 2.00000\n(width 0.10000)\n)\n(pt 3.00000 2.00000)\n)\n)\n)\n)\n)\n)\n"
            "(layer (nonConductive Body-B)\n(refer\n(area\n(upperHeight 0.00000)\n(lowerHeight 0.00000)\n(geometry\n"
            "(surface\n(outlineWidth 0.00000)\n(fillWidth 0.00000)\n(fillAngle 0.000000)\n(vertex\n"
            "(pt 0.00000 0.00000)\n(pt 4.00000 0.00000)\n(pt 4.00000 3.00000)\n)\n)\n)\n)\n)\n)\n"
            "(layer (systemLayer (type PADSTACK))\n(padstack STACK\n(pt 10.00000 25.00000)\n(angle 300.00000)\n"
            "(fromTo 0)\n(conductive\n)\n)\n)\n)\n"
            "(pin 1\n(pt 28.00000 44.00000)\n(layout\n(layer ( (type FPADSTACK))\n(padstack STACK\n"
            "(pt 12.00000 21.00000)\n(angle 10.00000)\n(fromTo 0)\n(conductive\n)\n)\n)\n)\n)\n)\n");
}

TEST_F(SmallPlace, AShapeWithoutALayerOnTheBoardIsPassedOver) {
  const CommandResult result = PlaceF({});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.out.find("surface"), std::string::npos) << "bodies do not land on side A";
  EXPECT_EQ(std::ranges::count(result.out, '('), std::ranges::count(result.out, ')'));
  const Json shapes = Json::parse(PlaceF({"--json"}).out)["m_pDrawObjArray"];
  ASSERT_EQ(shapes.size(), 3u);
  EXPECT_EQ(shapes[1]["m_sKind"], "SURFACE");
  EXPECT_EQ(shapes[1]["m_sLayerName"], "");
}

TEST_F(SmallPlace, ARecordThatItsLastShapeLeavesOpenIsToldOf) {
  WriteLibrary("");
  const CommandResult result = PlaceF({});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(std::ranges::count(result.out, '('), std::ranges::count(result.out, ')') + 1);
  EXPECT_EQ(result.err,
            "l.ftf: warning: the record does not close: the last shape of footprint 'F' has no layer on the board\n");
  EXPECT_EQ(PlaceF({"--json"}).err, "");
  EXPECT_EQ(PlaceF({"--side", "B"}).err, "");
}

TEST_F(SmallPlace, ThePictureShowsTheSideAndTellsOfPadsWithoutADefinition) {
  const CommandResult result = PlaceF({"--side", "B", "--render", "p.svg"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err,
            "b.pcf: note: 2 pads have no definition in the footprint library: each is drawn as a small ring\n");
  const std::string sSvg = folder.Read("p.svg");
  EXPECT_NE(sSvg.find("data-layer=\"Legend-B\""), std::string::npos) << sSvg;
  EXPECT_EQ(sSvg.find("data-layer=\"Legend-A\""), std::string::npos) << sSvg;
  // From (-5, 0) to (4, 3), a margin of 0.27: from the back the line from 1 to 3 runs to the left.
  EXPECT_NE(sSvg.find("<path d=\"M3.27 1.27L1.27 1.27\""), std::string::npos) << sSvg;
}

TEST_F(SmallPlace, NamesMayBeGivenInUtf8) {
  WriteLibrary("", "\x95\x5c");  // U+8868 in the library's bytes
  const auto place = [&](const char* szName) {
    return run({"place", szName, "--pcf", "b.pcf", "--ftf", "l.ftf", "--side", "B"});
  };
  const CommandResult result = place("\xE8\xA1\xA8");
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_NE(result.out.find("(footprint \x95\x5c)\n"), std::string::npos) << "the record has the library's bytes";
  EXPECT_EQ(result.out, place("\x95\x5c").out);
  EXPECT_EQ(place("x").err, "l.ftf: error: no footprint 'x'; did you mean '\xE8\xA1\xA8'?\n");
}

TEST_F(SmallPlace, TakesTheSettingsOfEveryCommand) {
  std::filesystem::create_directory(folder / "work");
  const CommandResult result = PlaceF({"--log", "log", "--work-dir", "work", "-o", "record"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_NE(folder.Read("log").find("FTF file parsing\n"), std::string::npos);
  EXPECT_EQ(folder.Names(), (Strings{"b.pcf", "l.ftf", "log", "record", "work"}));
  EXPECT_TRUE(std::filesystem::exists(folder / "work" / "Data")) << "where the board was taken apart";
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

TEST_F(Place, WarnsAlsoWhenTheFootprintCannotBePlaced) {
  std::string sBoard = kBoard;
  const std::string sMapping = "(map A\n";
  sBoard.insert(sBoard.find(sMapping) + sMapping.size(), "(correspondence (footLayer Top) (boardLayer))\n");
  folder.Write("b.pcf", sBoard);
  folder.Write("l.ftf", LibraryWith("(circle 1.0 (pt 0 0))\n(roundThermal (out 2.0) (in 1.0) (pt 0 0))"));
  const CommandResult result = run({"place", "F", "--pcf", "b.pcf", "--ftf", "l.ftf"});
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.err.find("l.ftf: error: footprint 'F' cannot be placed: "), std::string::npos) << result.err;
  EXPECT_NE(result.err.find("warning: Mult-Layer Or Zero Size Board Layer Found! (4 times)\n"), std::string::npos)
      << result.err;
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
