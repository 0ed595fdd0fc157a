// Where writing is no mirror of reading: what a file gives, and what is written of it.
#include <gtest/gtest.h>

#include "drawobj/CBDsurface.h"
#include "drawobj/DrawObjTestSupport.h"

namespace {

struct Difference {
  const char* name;
  const char* read;
  int mode;
  const char* written;
};

constexpr char kOutline[] = "(outlineWidth 0.00000)\n(fillWidth 0.00000)\n(fillAngle 0.000000)\n";

const Difference kDifferences[] = {
    {"ACircleByItselfHasAGeometryAroundIt", "(circle 1.0 (pt 2.0 3.0))", 1,
     "(geometry\n(circle 1.00000\n(pt 2.00000 3.00000)\n)\n)\n"},
    {"ARectangleByItselfHasAnOuterForm", "(rectangle (width 1.0))", 1,
     "(rectangle\n(geometry\n(rectangle\n(pt 0.00000 0.00000)\n(width 1.00000)\n(height 0.00000)\n(rAngle "
     "0.000000)\n(outlineWidth 0.00000)\n(fillWidth 0.00000)\n(fillAngle 0.000000)\n)\n)\n)\n"},
    {"AnOvalByItselfHasAnOuterForm", "(oval (width 1.0))", 1,
     "(oval\n(geometry\n(oval\n(pt 0.00000 0.00000)\n(width 1.00000)\n(height 0.00000)\n)\n)\n)\n"},
    {"ALineLosesThermalDataTypeDashAndPenShape",
     "(line (thermalData T) (penShape ROUND) (geometry (line (type DASH) (dashLine (dash 1) (blank 2)))))", 1,
     "(line\n(geometry\n(line\n(vertex\n)\n)\n)\n)\n"},
    {"ALineKeepsASquarePen", "(line (geometry (line (penShape SQUARE))))", 2,
     "(line\n(penShape SQUARE)\n(vertex\n)\n)\n"},
    {"AShieldLineIsWrittenAsALine", "(shieldLine (net N))", 1,
     "(line\n(net \"N\")\n(geometry\n(line\n(vertex\n)\n)\n)\n)\n"},
    {"AnAreaLosesItsHeights",
     "(area (upperHeight 1.0) (lowerHeight 0.5) (geometry (surface (vertex (pt 0 0) (pt 1.0 0) (pt 0 1.0)))))", 2,
     "(surface\n(outlineWidth 0.00000)\n(fillWidth 0.00000)\n(fillAngle 0.000000)\n(vertex\n(pt 0.00000 0.00000)\n(pt "
     "1.00000 0.00000)\n(pt 0.00000 1.00000)\n)\n)\n"},
    {"AMeshPlaneLosesItsMesh",
     "(meshplane (geometry (meshplane (meshPitch 1.0) (meshFlags 1 0) (submeshplane (submeshparameter "
     "(meshParamPitch 2.0))) (vertex (pt 0 0)))))",
     1,
     "(meshplane\n(geometry\n(meshplane\n(outlineWidth 0.00000)\n(fillWidth 0.00000)\n(fillAngle "
     "0.000000)\n(vertex\n(pt 0.00000 0.00000)\n)\n)\n)\n)\n"},
    {"ASurfaceOfTwoPointsIsLeftOut", "(surface (vertex (pt 0 0) (pt 1 1)))", 1, ""},
    {"ASquareThermalLosesAll", "(squareThermal (out 1.0) (in 0.5) (nBridge 4))", 1, "(squareThermal\n)\n"},
    {"ASubBoardLosesAll", "(boardAssembly (subBoard 2) (angle 90) (pt 1.0 2.0) (flip X))", 1, "(subBoard\n)\n"},
    {"AHoleLosesItsSpanAndTypes", "(hole (fromTo 1 2) (drillType T) (holeType 3) (geometry (circle 1.0)))", 1,
     "(hole\n(geometry\n(circle 1.00000\n(pt 0.00000 0.00000)\n)\n)\n)\n"},
    {"AnOvalHoleLosesItsType", "(ovalHole (holeType 3) (geometry (oval (width 1.5))))", 1,
     "(ovalHole\n(geometry\n(oval\n(pt 0 0)\n(width 1.5)\n(height 0)\n(ovalAngle 0)\n)\n)\n)\n"},
    {"APadLosesItsNetAndGeometry", "(pad P (net N) (geometry (circle 1.0)))", 1, "(pad P\n(pt 0.00000 0.00000)\n)\n"},
    {"APadstackKeepsOnlyItsSpanOfEntriesAsConductive",
     "(padstack V (fromTo 2 5) (side A) (flip B) (isBuildupVia YES) (isTestPad (side C)) (drillType 7) (conductive "
     "(layerNumber 2 (status ON) (geometry (circle 1.0))) (layer L (visible NO) (status OFF))) (nonConductive "
     "(layerNumber 4 (status X)) (layerNumber 6 (status Y))))",
     1,
     "(padstack V\n(pt 0.00000 0.00000)\n(fromTo 2 5)\n(conductive\n(layerNumber 2 (status ON))\n(layerNumber 4 "
     "(status X))\n)\n)\n"},
    {"ATextLosesItsFrameOffset", "(text (font 9) (geometry (text (string A) (textFrameOffset 1.0))))", 1,
     "(text\n(font 0)\n(geometry\n(text\n(string \"A\")\n(font 0)\n(kFont 200)\n(width 0.00000)\n(height "
     "0.00000)\n(space 0.00000)\n(vSpace 0.00000)\n(strokeWidth 0.00000)\n(pt 0.00000 0.00000)\n(textAngle "
     "0.00000)\n(dir LtoR)\n(justify CE_C)\n(flip NONE)\n(reverse OFF)\n)\n)\n)\n"},
    {"ASymbolTextLosesItsStringAndChangesItsKey", "(symbolText (symbolTextType REF) (geometry (text (string R1))))", 1,
     "(symbolText\n(type REF)\n(font 0)\n(geometry\n(text\n(string )\n(font 0)\n(kFont 200)\n(width 0.00000)\n(height "
     "0.00000)\n(space 0.00000)\n(vSpace 0.00000)\n(strokeWidth 0.00000)\n(pt 0.00000 0.00000)\n(textAngle "
     "0.00000)\n(dir LtoR)\n(justify CE_C)\n(flip NONE)\n(reverse OFF)\n)\n)\n)\n"},
    {"AnArcHasItsBeginWidthAtBothEnds",
     "(line (vertex (arc CW (r 1.0) (begin (pt 0 0 (width 0.5))) (center 0 0) (end (pt 0 0 (width 0.75))))))", 2,
     "(line\n(vertex\n(arc CW\n(r 1.00000)\n(begin\n(pt 0.00000 0.00000\n(width 0.50000)\n)\n)\n(center 0.00000 "
     "0.00000)\n(end\n(pt 0.00000 0.00000\n(width 0.50000)\n)\n)\n)\n)\n)\n"},
    {"APointOfALineKeepsItsWidth", "(line (vertex (pt 0 0 (width 0.5))))", 2,
     "(line\n(vertex\n(pt 0.00000 0.00000\n(width 0.50000)\n)\n)\n)\n"},
    {"APointOfAnOutlineLosesItsWidth",
     "(surface (vertex (pt 0 0 (width 0.5)) (pt 0 0 (width 0.5)) (pt 0 0 (width 0.5))))", 2,
     "(surface\n(outlineWidth 0.00000)\n(fillWidth 0.00000)\n(fillAngle 0.000000)\n(vertex\n(pt 0.00000 0.00000)\n(pt "
     "0.00000 0.00000)\n(pt 0.00000 0.00000)\n)\n)\n"},
    {"ATarcIsAlwaysOn", "(line (vertex (pt 0 0 (tarc OFF (r 1.0)))))", 2,
     "(line\n(vertex\n(pt 0.00000 0.00000\n(tarc ON (r 1.00000))\n)\n)\n)\n"},
    {"AFilletWithoutFilletWidthIsLeftOut", "(line (vertex (pt 0 0 (fillet (type T) (length 1.0) (width 1.0)))))", 2,
     "(line\n(vertex\n(pt 0.00000 0.00000)\n)\n)\n"},
    {"AFilletOfALinesEndLosesItsDirection", "(line (vertex (pt 0 0 (fillet (filletWidth 1.0) (dir D)))))", 2,
     "(line\n(vertex\n(pt 0.00000 0.00000\n(fillet\n(filletWidth 1.00000)\n(length 0.00000)\n(width "
     "0.00000)\n)\n)\n)\n)\n"},
    {"ANetIsQuotedAndItsPercentDoubled", "(line (net A%B))", 1,
     "(line\n(net \"A%%B\")\n(geometry\n(line\n(vertex\n)\n)\n)\n)\n"},
};

class DifferenceTest : public testing::TestWithParam<Difference> {};

TEST_P(DifferenceTest, IsAsItIs) {
  CBDdrawObjArray board;
  laminate::ShapeContext context;
  context.pBoardShapes = &board;
  const auto shape = ReadAny(GetParam().read, context);
  ASSERT_NE(shape, nullptr);
  EXPECT_EQ(Print(*shape, GetParam().mode), GetParam().written);
}
INSTANTIATE_TEST_SUITE_P(ReadingAndWriting, DifferenceTest, testing::ValuesIn(kDifferences),
                         [](const auto& test) { return test.param.name; });

TEST(Differences, ACircleByItselfReadsBackAsAnUnknownKeyword) {
  const auto circle = ReadAny("(circle 1.0)");
  Boxes boxes;
  EXPECT_EQ(ReadAny(Print(*circle, 1)), nullptr);
  EXPECT_EQ(boxes.texts, std::vector<std::string>{"New Draw Type : geometry"});
}

TEST(Differences, ASubBoardReadsBackAsAnUnknownKeyword) {
  Boxes boxes;
  EXPECT_EQ(ReadAny("(subBoard\n)\n"), nullptr);
  EXPECT_EQ(boxes.texts, std::vector<std::string>{"New Draw Type : subBoard"});
}

TEST(Differences, ASymbolTextDoesNotReadBack) {
  const auto text = ReadAny("(symbolText (symbolTextType REF) (geometry (text (string R1))))");
  EXPECT_THROW(ReadAny(Print(*text, 1)), CInvalidArgException);
}

TEST(Differences, AHoleWithAnyOtherShapeWritesNothingInIt) {
  const auto hole = ReadAny("(hole (geometry (squareHole (width 1.0))))");
  EXPECT_EQ(Print(*hole, 1), "(hole\n)\n");
}

TEST(Differences, OnlyAnAreaThatIsMarkedKeepsItsHeights) {
  const auto area = Read<CBDsurface>("(area (upperHeight 1.0) (lowerHeight 0.5) (vertex (pt 0 0) (pt 0 0) (pt 0 0)))");
  area->m_bArea = 1;
  EXPECT_EQ(Print(*area, 1), "(area\n(upperHeight 1.00000)\n(lowerHeight 0.50000)\n(geometry\n(surface\n" +
                                 std::string(kOutline) +
                                 "(vertex\n(pt 0.00000 0.00000)\n(pt 0.00000 0.00000)\n(pt 0.00000 "
                                 "0.00000)\n)\n)\n)\n)\n");
}

}  // namespace
