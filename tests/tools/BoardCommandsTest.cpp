// info, components and dump.
#include "CommandRunner.h"
#include "Json.h"

namespace {

struct BoardCommands : CommandTest {
  BoardCommands() {
    folder.Write("b.pcf", kBoard);
    folder.Write("l.ftf", kLibrary);
  }
  Json Parsed(const std::vector<std::string>& call, int nStatus = 0) {
    const CommandResult result = run(call);
    EXPECT_EQ(result.status, nStatus) << result.err;
    EXPECT_TRUE(result.out.ends_with("\n"));
    return Json::parse(result.out);
  }
};

using Info = BoardCommands;
using Components = BoardCommands;
using Dump = BoardCommands;

TEST_F(Info, IsASummaryToRead) {
  const CommandResult result = run({"info", "b.pcf"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.out,
            "version           2.0\n"
            "technology        two\n"
            "layers            2 conductor layers, 1 others\n"
            "components        2 (side A 1, side B 1)\n"
            "pins              3\n"
            "nets              3 with 3 pins\n"
            "groups            0\n"
            "extent            20.000 x 10.000 mm, from (0.000, 0.000) to (20.000, 10.000)\n"
            "layout shapes     2: LINE 2\n"
            "  conductive 1    LINE 1\n"
            "  Outline         LINE 1\n");
  const CommandResult both = run({"info", "b.pcf", "--ftf", "l.ftf"});
  EXPECT_NE(both.out.find("\nfootprints        1 (1 padstacks, 1 pads)\n"), std::string::npos) << both.out;
}

TEST_F(Info, HoldsTheSameInJson) {
  const Json info = Parsed({"info", "b.pcf", "--ftf", "l.ftf", "--json"});
  EXPECT_EQ(info["version"], "2.0");
  EXPECT_EQ(info["conductorLayers"], 2);
  EXPECT_EQ(info["components"], 2);
  EXPECT_EQ(info["componentsOnSideB"], 1);
  EXPECT_EQ(info["pins"], 3);
  EXPECT_EQ(info["nets"], 3);
  EXPECT_EQ(info["netPins"], 3);
  EXPECT_EQ(info["footprints"], 1);
  EXPECT_EQ(info["padstacks"], 1);
  EXPECT_EQ(info["shapesByKind"], Json({{"LINE", 2}}));
  EXPECT_EQ(info["layers"][1]["name"], "Outline");
  EXPECT_EQ(info["extent"],
            Json({{"left", 0.0}, {"bottom", 0.0}, {"right", 20.0}, {"top", 10.0}, {"width", 20.0}, {"height", 10.0}}));
}

// What the extent of a board is made of: a layout of one shape each.
TEST_F(Info, MeasuresTheBoard) {
  struct Row {
    const char* name;
    std::string layer;
    std::vector<double> box;  // left, bottom, right, top
  };
  const auto line = [](const std::string& sVertices) {
    return "(line (geometry (line (vertex " + sVertices + "))))\n";
  };
  const std::string kOutline = "(layer (nonConductive Outline)\n";
  const std::string kCopper = "(layer (conductive 1)\n";
  const Row rows[] = {
      {"the outline alone counts",
       kCopper + line("(pt -99.0 0) (pt 99.0 0)") + ")\n" + kOutline + line("(pt 1.0 2.0) (pt 3.0 5.0)") + ")\n",
       {1, 2, 3, 5}},
      {"without an outline all shapes count", kCopper + line("(pt -9.0 0) (pt 9.0 1.0)") + ")\n", {-9, 0, 9, 1}},
      {"a counter-clockwise arc over the top",
       kOutline + line("(arc CCW (r 1.0) (begin (pt 1.0 0)) (center 0 0) (end (pt -1.0 0)))") + ")\n",
       {-1, 0, 1, 1}},
      {"a clockwise arc under the bottom",
       kOutline + line("(arc CW (r 1.0) (begin (pt 1.0 0)) (center 0 0) (end (pt -1.0 0)))") + ")\n",
       {-1, -1, 1, 0}},
      {"a short arc without an extreme",
       kOutline + line("(arc CCW (r 5.0) (begin (pt 4.0 3.0)) (center 0 0) (end (pt 3.0 4.0)))") + ")\n",
       {3, 3, 4, 4}},
      {"a full circle as an arc",
       kOutline + line("(arc CCW (r 1.0) (begin (pt 1.0 0)) (center 0 0) (end (pt 1.0 0)))") + ")\n",
       {-1, -1, 1, 1}},
      {"a donut by its outer size", kOutline + "(donut (out 4.0) (in 1.0) (pt 10.0 0))\n)\n", {8, -2, 12, 2}},
      {"a turned rectangle",
       kOutline + "(rectangle (pt 0 0) (width 4.0) (height 2.0) (rAngle 90))\n)\n",
       {-1, -2, 1, 2}},
      {"an oval, whose height is its length",
       kOutline + "(oval (pt 0 0) (width 2.0) (height 6.0))\n)\n",
       {-3, -1, 3, 1}},
      {"a turned oval hole",
       kOutline + "(ovalHole (geometry (oval (pt 0 0) (width 2.0) (height 6.0) (ovalAngle 90.0))))\n)\n",
       {-1, -3, 1, 3}},
      {"a text by its place", kCopper + "(text (geometry (text (string \"x\") (pt 3.0 4.0))))\n)\n", {3, 4, 3, 4}}};
  std::string sHead = kBoard;
  sHead.resize(sHead.find("(boardContainer"));
  for (const Row& row : rows) {
    folder.Write("b.pcf", sHead + "(boardContainer\n(boardLayout\n(layout\n" + row.layer + ")\n)\n)\n)\n");
    const Json extent = Parsed({"info", "b.pcf", "--json"})["extent"];
    ASSERT_TRUE(extent.is_object()) << row.name;
    EXPECT_NEAR(extent["left"], row.box[0], 1e-9) << row.name;
    EXPECT_NEAR(extent["bottom"], row.box[1], 1e-9) << row.name;
    EXPECT_NEAR(extent["right"], row.box[2], 1e-9) << row.name;
    EXPECT_NEAR(extent["top"], row.box[3], 1e-9) << row.name;
  }
  folder.Write("b.pcf", "(pcf\n)\n");
  EXPECT_TRUE(Parsed({"info", "b.pcf", "--json"})["extent"].is_null());
  EXPECT_NE(run({"info", "b.pcf"}).out.find("\nextent            none\n"), std::string::npos);
}

TEST_F(Components, AreATable) {
  const CommandResult result = run({"components", "b.pcf"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out,
            "reference  part     package  footprint  side  x mm   y mm  angle deg ccw\n"
            "R1         10k, 1%  P0402    F0402      A        1    2.5             90\n"
            "R2         X        P0402    F0402      B      1.5  -2.25              0\n");
}

TEST_F(Components, HaveUnitsInTheHeaderOfTheirCsv) {
  EXPECT_EQ(run({"components", "b.pcf", "--csv"}).out,
            "reference,part,package,footprint,side,x_mm,y_mm,angle_degrees_counterclockwise\r\n"
            "R1,\"10k, 1%\",P0402,F0402,A,1,2.5,90\r\n"
            "R2,X,P0402,F0402,B,1.5,-2.25,0\r\n");
}

TEST_F(Components, AreObjectsInJson) {
  EXPECT_EQ(Parsed({"components", "b.pcf", "--json"}),
            Json::parse(R"([{"reference": "R1", "part": "10k, 1%", "package": "P0402", "footprint": "F0402",
                             "side": "A", "x": 1.0, "y": 2.5, "angle": 90.0},
                            {"reference": "R2", "part": "X", "package": "P0402", "footprint": "F0402",
                             "side": "B", "x": 1.5, "y": -2.25, "angle": 0.0}])"));
}

TEST_F(Components, QuoteWhatWouldEndACsvField) {
  folder.Write("b.pcf",
               "(pcf\n(boardContainer\n(components\n(component (reference R1)\n(part \"a \\\"b\\\"\")\n"
               "(package \"two\nlines\")\n)\n)\n)\n)\n");
  EXPECT_NE(run({"components", "b.pcf", "--csv"}).out.find("\r\nR1,\"a \\\"\"b\\\"\"\",\"two\nlines\",,A,0,0,0\r\n"),
            std::string::npos);
}

TEST_F(Dump, HoldsTheWholeDatabase) {
  const Json dump = Parsed({"dump", "b.pcf", "--ftf", "l.ftf"});
  std::vector<std::string> keys;
  for (const auto& item : dump.items()) keys.push_back(item.key());
  EXPECT_EQ(keys, (std::vector<std::string>{"class", "m_pTechnology", "m_pFtfTechnology", "m_pFootprintContainer",
                                            "m_pBoardContainer", "m_pParameter", "m_pLibraryEntities", "m_sVersion",
                                            "m_nComponentFileCount", "m_nLayerFileCount"}));
  EXPECT_EQ(dump["class"], "CBDesigner");
  EXPECT_EQ(dump["m_nComponentFileCount"], 2);
  EXPECT_EQ(dump["m_pFtfTechnology"]["m_sName"], "two");
  EXPECT_EQ(dump["m_pFootprintContainer"]["m_pCommonParameter"], Json({{"class", "CBDcommonParameter"}}));
  EXPECT_EQ(dump["m_pFootprintContainer"]["m_pPadArray"][0]["m_pDrawObjArray"][0]["class"], "CBDcircle");
  EXPECT_EQ(dump["m_pFootprintContainer"]["m_pPadArray"][0]["m_rcArea"], Json::parse("[0.0, 0.0, 0.0, 0.0]"));
  EXPECT_TRUE(dump["m_pFootprintContainer"]["m_pPadstackArray"][0]["m_pHole"]["m_pDrawObj"].is_null());
  const Json& line = dump["m_pBoardContainer"]["m_pDrawObjArray"][0];
  keys.clear();
  for (const auto& item : line.items()) keys.push_back(item.key());
  EXPECT_EQ(keys,
            (std::vector<std::string>{"class", "m_bRefer", "m_sLayerName", "m_sLayerType", "m_nLayerNumber", "m_sKind",
                                      "m_sNet", "m_sPenShape", "m_sSection", "m_nCavityFrom", "m_nCavityTo",
                                      "m_sThermalData", "m_sLineType", "m_dDash", "m_dBlank", "m_pVertices"}));
  EXPECT_EQ(line["m_sNet"], "GND");
  EXPECT_EQ(line["m_pVertices"][0]["class"], "CBDvertexPt");
  EXPECT_EQ(line["m_pVertices"][0]["m_dWidth"], 0.2);
  EXPECT_EQ(line["m_pVertices"][1]["m_pt"], Json::parse("[1.0, 0.0]"));
  EXPECT_EQ(dump["m_pBoardContainer"]["m_pComponentArray"][0]["m_ptLocation"], Json::parse("[1.0, 2.5]"));
}

TEST_F(Dump, HoldsGroupsAndSettingsInTheirOrder) {
  std::string sBoard = kBoard;
  sBoard.insert(sBoard.find("(nets\n"),
                "(subBoards\n(subBoard 3 (relativePath p))\n)\n(compGroups\n(compGroup G\n(list R1 R2)\n(side TOP)\n"
                "(pen 7)\n(layout\n)\n)\n)\n");
  sBoard.insert(
      sBoard.rfind(")\n"),
      "(parameter\n(layerParameters\n(layer (conductive 1)\n(colorId 3)\n(priority 4)\n(displayMode FILL)\n"
      "(hatch (angle 30) (pitch 10))\n(mrcMode ON)\n)\n)\n(visibleLayerSet\n(set A\n(layer (conductive 1) "
      "(visible YES))\n(layer (nonConductive S) (visible YES))\n)\n)\n(textSizeParameters\n(textSize 1 (width 2) "
      "(height 3) (space 4) (vSpace 5) (strokeWidth 6))\n)\n)\n"
      "(libraryEntities\n(part P)\n(package K)\n(footprint F (side B))\n(pad D (side B) (flip X))\n"
      "(padstack V)\n)\n");
  folder.Write("b.pcf", sBoard);
  using Ordered = nlohmann::ordered_json;
  const Ordered dump = Ordered::parse(run({"dump", "b.pcf"}).out);
  const Ordered& board = dump["m_pBoardContainer"];
  EXPECT_EQ(board["m_pSubBoardArray"].dump(), R"([{"class":"CBDsubBoard","m_nId":3,"m_sRelativePath":"p"}])");
  EXPECT_EQ(board["m_pCompGroupArray"].dump(),
            R"([{"class":"CBDcompGroup","m_sName":"G","m_aList":["R1","R2"],"m_sSide":"TOP","m_nPen":7,)"
            R"("m_pDrawObjArray":[]}])");
  EXPECT_EQ(
      dump["m_pParameter"].dump(),
      R"({"class":"CBDparameter",)"
      R"("m_pVisibleLayerSetArray":[{"class":"CBDvisibleLayerSet","m_sName":"A","m_aLayers":["1","S"]}],)"
      R"("m_pTextSizeArray":[{"class":"CBDtextSize","m_nId":1,"m_nWidth":2,"m_nHeight":3,"m_nSpace":4,"m_nVSpace":5,)"
      R"("m_nStrokeWidth":6}],)"
      R"("m_pLayerParameterArray":[{"class":"CBDlayerParameter","m_sLayerType":"","m_sLayerName":"",)"
      R"("m_nLayerNumber":0,"m_nColorId":3,"m_nPriority":4,"m_sDisplayMode":"FILL","m_nHatchAngle":30,)"
      R"("m_nHatchPitch":10,"m_sMrcMode":"ON"}]})");
  EXPECT_EQ(dump["m_pLibraryEntities"].dump(),
            R"({"class":"CBDlibraryEntities","m_aParts":["P"],"m_aPackages":["K"],)"
            R"("m_pLibFootprintArray":[{"class":"CBDlibFootprint","m_sName":"F","m_sSide":"B"}],)"
            R"("m_pLibPadstackArray":[{"class":"CBDlibPadstack","m_sName":"V","m_sSide":"","m_sFlip":""}],)"
            R"("m_pLibPadArray":[{"class":"CBDlibPad","m_sName":"D","m_sSide":"B","m_sFlip":"X"}]})");
}

TEST_F(Dump, LoadsTheBoardAloneWithoutALibrary) {
  const Json dump = Parsed({"dump", "b.pcf"});
  EXPECT_EQ(dump["m_pFtfTechnology"]["m_sName"], "");
  EXPECT_EQ(dump["m_pFootprintContainer"]["m_pPadArray"], Json::array());
  EXPECT_EQ(dump["m_pBoardContainer"]["m_pNetArray"].size(), 3u);
}

TEST_F(Dump, LeavesOutWhatHasNoMeaning) {
  const std::string s = run({"dump", "b.pcf", "--ftf", "l.ftf"}).out;
  for (const char* szPart : {"Reserved", "Spare", "m_pLogFile", "m_pPCFProgress", "m_bInQuote"}) {
    EXPECT_EQ(s.find(szPart), std::string::npos) << szPart;
  }
}

// Doubles read back to the same value; those that are no number are null.
TEST_F(Dump, KeepsNumbers) {
  struct Row {
    const char* token;
    const char* expected;
  };
  const Row rows[] = {{"90", "90.0"},
                      {"0.1", "0.1"},
                      {"-0.0", "-0.0"},
                      {"1e300", "1e+300"},
                      {"1e-320", "1e-320"},
                      {"nan", "null"},
                      {"inf", "null"},
                      {"-inf", "null"},
                      {"1.7976931348623157e308", "1.7976931348623157e+308"},
                      {"123456789.125", "123456789.125"}};
  for (const Row& row : rows) {
    folder.Write("b.pcf", "(pcf\n(boardContainer\n(components\n(component (reference R)\n(angle " +
                              std::string(row.token) + ")\n)\n)\n)\n)\n");
    const std::string s = run({"dump", "b.pcf"}).out;
    EXPECT_NE(s.find("\"m_dAngle\": " + std::string(row.expected) + ","), std::string::npos) << row.token;
  }
}

TEST_F(Dump, PrintsWhatAFailedLoadLeft) {
  folder.Write("b.pcf", "(pcf\n(boardContainer\n(nets\n(net A\n)\n(net B\n(pen)\n)\n)\n)\n)\n");
  const CommandResult whole = run({"dump", "b.pcf"});
  EXPECT_EQ(whole.status, 1);
  EXPECT_EQ(whole.out, "");
  const CommandResult partial = run({"dump", "b.pcf", "--partial"});
  EXPECT_EQ(partial.status, 1);
  EXPECT_EQ(partial.err, whole.err);
  const Json dump = Json::parse(partial.out);
  ASSERT_EQ(dump["m_pBoardContainer"]["m_pNetArray"].size(), 1u);
  EXPECT_EQ(dump["m_pBoardContainer"]["m_pNetArray"][0]["m_sName"], "A");
  EXPECT_EQ(run({"dump", "none.pcf", "--partial", "-o", "out"}).status, 1);
  EXPECT_EQ(Json::parse(folder.Read("out"))["m_pBoardContainer"]["m_pNetArray"], Json::array());
}

TEST_F(Dump, IsTheSameUnderAnyLocale) {
  const std::string sExpected = run({"dump", "b.pcf"}).out;
  for (const char* szLocale : {"de_DE.UTF-8", "ja_JP.SJIS"}) {
    run.environment = {{"LC_ALL", szLocale}};
    EXPECT_EQ(run({"dump", "b.pcf"}).out, sExpected) << szLocale;
  }
}

TEST_F(Dump, ReadsTheExample) {
  const Json dump = Parsed({"dump", LAMINATE_EXAMPLE ".pcf", "--ftf", LAMINATE_EXAMPLE ".ftf"});
  EXPECT_GT(dump["m_pBoardContainer"]["m_pComponentArray"].size(), 10u);
  EXPECT_GT(dump["m_pFootprintContainer"]["m_pFootprintArray"].size(), 1u);
}

}  // namespace
