// Reading shapes: every row of every form, for its value, a missing and a wrong token, and a repeated key.
#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <random>
#include <set>

#include "drawobj/DrawObjTestSupport.h"
#include "drawobj/Fields.h"
#include "reader/Grammar.h"

namespace {

// ---- the rows ----

enum class Kind { length, real, integer, text, point, optionalText, optionalLength, optionalInteger, firstChildPoint };
enum class Repeat { lastWins, firstWins };

struct RowCase {
  const char* around;  // the form; the row stands in place of "@"
  const char* key;
  Kind kind;
  const char* path;  // the field that it sets
  Repeat repeat = Repeat::lastWins;
};

constexpr char kFilletForm[] = "(line (vertex (pt 1 2 (fillet @))))";
constexpr char kSurfaceInner[] = "(surface (geometry (surface @)))";
constexpr char kMeshInner[] = "(meshplane (geometry (anything @)))";
constexpr char kSubmesh[] = "(meshplane (geometry (meshplane (submeshplane (submeshparameter @)))))";
constexpr char kTextInner[] = "(text (geometry (text @)))";
constexpr char kSymbolInner[] = "(symbolText (geometry (text (string s) @)))";

constexpr RowCase kRows[] = {
    {"(circle 1 @)", "pt", Kind::point, "m_ptCenter", Repeat::firstWins},

    {"(donut @)", "in", Kind::length, "m_dIn"},
    {"(donut @)", "out", Kind::length, "m_dOut"},
    {"(donut @)", "pt", Kind::point, "m_pt"},

    {"(hole @)", "drillType", Kind::text, "m_sDrillType"},
    {"(hole @)", "holeType", Kind::integer, "m_nHoleType"},
    {"(hole (geometry (circle 1 @)))", "pt", Kind::point, "m_pShape/m_ptCenter", Repeat::firstWins},

    {"(line @)", "net", Kind::text, "m_sNet"},
    {"(line @)", "penShape", Kind::text, "m_sPenShape"},
    {"(line @)", "thermalData", Kind::text, "m_sThermalData"},
    {"(shieldLine @)", "net", Kind::text, "m_sNet"},
    {"(line (geometry (line @)))", "penShape", Kind::text, "m_sPenShape", Repeat::firstWins},
    {"(line (geometry (line @)))", "type", Kind::text, "m_sLineType", Repeat::firstWins},
    {"(line (geometry (other @)))", "type", Kind::text, "m_sLineType", Repeat::firstWins},
    {"(line (geometry (line (dashLine @))))", "dash", Kind::real, "m_dDash", Repeat::firstWins},
    {"(line (geometry (line (dashLine @))))", "blank", Kind::real, "m_dBlank", Repeat::firstWins},

    {"(oblong @)", "width", Kind::length, "m_dWidth"},
    {"(oblong (pt 7 7) @)", "pt", Kind::point, "m_ptSecond"},

    {"(oval @)", "pt", Kind::point, "m_pt"},
    {"(oval @)", "width", Kind::length, "m_dWidth"},
    {"(oval @)", "height", Kind::length, "m_dHeight"},
    {"(oval @)", "ovalAngle", Kind::real, "m_dAngle"},

    {"(ovalHole @)", "holeType", Kind::integer, "m_nHoleType"},
    {"(ovalHole (geometry (oval @)))", "pt", Kind::point, "m_pt"},
    {"(ovalHole (geometry (oval @)))", "width", Kind::length, "m_dWidth"},
    {"(ovalHole (geometry (oval @)))", "height", Kind::length, "m_dHeight"},
    {"(ovalHole (geometry (oval @)))", "ovalAngle", Kind::real, "m_dAngle"},

    {"(rectangle @)", "pt", Kind::point, "m_pt"},
    {"(rectangle @)", "width", Kind::length, "m_dWidth"},
    {"(rectangle @)", "height", Kind::length, "m_dHeight"},
    {"(rectangle @)", "rAngle", Kind::real, "m_dAngle"},
    {"(rectangle @)", "outlineWidth", Kind::length, "m_dOutlineWidth"},
    {"(rectangle @)", "fillWidth", Kind::length, "m_dFillWidth"},
    {"(rectangle @)", "fillAngle", Kind::real, "m_dFillAngle"},

    {"(roundThermal @)", "pt", Kind::point, "m_pt"},
    {"(roundThermal @)", "out", Kind::length, "m_dOut"},
    {"(roundThermal @)", "in", Kind::length, "m_dIn"},
    {"(roundThermal @)", "nBridge", Kind::integer, "m_nBridge"},
    {"(roundThermal @)", "bridgeWidth", Kind::length, "m_dBridgeWidth"},
    {"(roundThermal @)", "bridgeAngle", Kind::integer, "m_nBridgeAngle"},

    {"(squareThermal @)", "pt", Kind::point, "m_pt"},
    {"(squareThermal @)", "out", Kind::length, "m_dOut"},
    {"(squareThermal @)", "in", Kind::length, "m_dIn"},
    {"(squareThermal @)", "nBridge", Kind::integer, "m_nBridge"},
    {"(squareThermal @)", "bridgeWidth", Kind::length, "m_dBridgeWidth"},
    {"(squareThermal @)", "bridgeAngle", Kind::real, "m_dBridgeAngle"},

    {"(squareHole @)", "pt", Kind::point, "m_pt"},
    {"(squareHole @)", "width", Kind::length, "m_dWidth"},
    {"(squareHole @)", "height", Kind::length, "m_dHeight"},
    {"(squareHole @)", "holeAngle", Kind::real, "m_dAngle"},
    {"(squareHole @)", "r", Kind::length, "m_dCorner"},

    // the vertex section
    {"(line (vertex (pt 1 2 @)))", "width", Kind::length, "m_pVertices/0/m_dWidth"},
    {"(line (vertex (pt 1 2 (tarc ON @))))", "r", Kind::length, "m_pVertices/0/m_dTarc", Repeat::firstWins},
    {kFilletForm, "filletWidth", Kind::length, "m_pVertices/0/m_pFillet/m_dFilletWidth"},
    {kFilletForm, "length", Kind::length, "m_pVertices/0/m_pFillet/m_dLength"},
    {kFilletForm, "width", Kind::length, "m_pVertices/0/m_pFillet/m_dWidth"},
    {kFilletForm, "dir", Kind::text, "m_pVertices/0/m_pFillet/m_sDir"},
    {kFilletForm, "type", Kind::text, "m_pVertices/0/m_pFillet/m_sType"},
    {"(line (vertex (arc CW @)))", "r", Kind::length, "m_pVertices/0/m_dR"},
    {"(line (vertex (arc CW @)))", "center", Kind::point, "m_pVertices/0/m_ptCenter"},
    {"(line (vertex (arc CW (begin @))))", "pt", Kind::point, "m_pVertices/0/m_ptBegin"},
    {"(line (vertex (arc CW (end @))))", "pt", Kind::point, "m_pVertices/0/m_ptEnd"},
    {"(line (vertex (arc CW (begin (pt 1 2 @)))))", "width", Kind::length, "m_pVertices/0/m_dBeginWidth",
     Repeat::firstWins},
    {"(line (vertex (arc CW (end (pt 1 2 @)))))", "width", Kind::length, "m_pVertices/0/m_dEndWidth",
     Repeat::firstWins},

    // surfaces, outer level
    {"(surface @)", "lowerHeight", Kind::length, "m_dLowerHeight"},
    {"(surface @)", "upperHeight", Kind::length, "m_dUpperHeight"},
    {"(surface @)", "net", Kind::text, "m_sNet"},
    {"(surface @)", "outlineWidth", Kind::length, "m_dOutlineWidth"},
    {"(surface @)", "fillWidth", Kind::length, "m_dFillWidth"},
    {"(surface @)", "fillAngle", Kind::real, "m_dFillAngle"},
    {"(area @)", "upperHeight", Kind::length, "m_dUpperHeight"},
    {"(meshplane @)", "net", Kind::text, "m_sNet"},
    // inner level
    {kSurfaceInner, "outlineWidth", Kind::length, "m_dOutlineWidth"},
    {kSurfaceInner, "fillWidth", Kind::length, "m_dFillWidth"},
    {kSurfaceInner, "fillAngle", Kind::real, "m_dFillAngle"},
    {kMeshInner, "meshBasePoint", Kind::firstChildPoint, "m_ptMeshBase"},
    {kMeshInner, "meshRotatePoint", Kind::firstChildPoint, "m_ptMeshRotate"},
    {kMeshInner, "meshPitch", Kind::length, "m_dMeshPitch"},
    {kMeshInner, "meshShape", Kind::text, "m_sMeshShape"},
    {kMeshInner, "meshShapeDiameter", Kind::length, "m_dMeshShapeDiameter"},
    {kMeshInner, "meshArrangeType", Kind::text, "m_sMeshArrangeType"},
    {kMeshInner, "meshAngle", Kind::real, "m_dMeshAngle"},
    {kMeshInner, "meshFigureAngle", Kind::real, "m_dMeshFigureAngle"},
    {kMeshInner, "meshWindowClearance", Kind::length, "m_dMeshWindowClearance"},
    {kMeshInner, "meshFigureClearance", Kind::length, "m_dMeshFigureClearance"},
    {kMeshInner, "meshOutlineClearance", Kind::length, "m_dMeshOutlineClearance"},
    {kMeshInner, "meshFlagXCount", Kind::integer, "m_nMeshFlagXCount"},
    {kSubmesh, "meshParamBasePoint", Kind::firstChildPoint, "m_ptParamBase"},
    {kSubmesh, "meshParamRotatePoint", Kind::firstChildPoint, "m_ptParamRotate"},
    {kSubmesh, "meshParamPitch", Kind::length, "m_dParamPitch"},
    {kSubmesh, "meshParamShape", Kind::text, "m_sParamShape"},
    {kSubmesh, "meshParamShapeDiameter", Kind::length, "m_dParamShapeDiameter"},
    {kSubmesh, "meshParamArrangeType", Kind::text, "m_sParamArrangeType"},
    {kSubmesh, "meshParamAngle", Kind::real, "m_dParamAngle"},
    {kSubmesh, "meshParamFigureAngle", Kind::real, "m_dParamFigureAngle"},
    {kSubmesh, "meshParamWindowClearance", Kind::length, "m_dParamWindowClearance"},
    {kSubmesh, "meshParamFigureClearance", Kind::length, "m_dParamFigureClearance"},
    {kSubmesh, "meshParamOutlineClearance", Kind::length, "m_dParamOutlineClearance"},
    {kSubmesh, "meshParamFlagXCount", Kind::integer, "m_nParamFlagXCount"},
    {"(surface (openShape @))", "outlineWidth", Kind::length, "m_pOpenShapes/0/m_dOutlineWidth"},
    {"(surface (geometry (surface (openShape @))))", "outlineWidth", Kind::length, "m_pOpenShapes/0/m_dOutlineWidth"},

    // pads and padstacks
    {"(pad P @)", "pt", Kind::point, "m_pt"},
    {"(pad P @)", "angle", Kind::real, "m_dAngle"},
    {"(pad P @)", "net", Kind::text, "m_sNet"},
    {"(fPad P @)", "pt", Kind::point, "m_pt"},
    {"(fPad P @)", "angle", Kind::real, "m_dAngle"},
    {"(fPad P @)", "net", Kind::text, "m_sNet"},
    {"(padstack P @)", "net", Kind::text, "m_sNet"},
    {"(padstack P @)", "pt", Kind::point, "m_pt"},
    {"(padstack P @)", "angle", Kind::real, "m_dAngle"},
    {"(padstack P @)", "side", Kind::text, "m_sSide"},
    {"(padstack P @)", "flip", Kind::text, "m_sFlip"},
    {"(padstack P @)", "isBuildupVia", Kind::text, "m_sBuildupVia"},
    {"(padstack P (isTestPad @))", "side", Kind::text, "m_sSide", Repeat::firstWins},
    {"(padstack P @)", "drillType", Kind::optionalInteger, "m_nDrillType"},
    {"(padstack P (padstackGroup @))", "padstack", Kind::text, "m_sPadstackName", Repeat::firstWins},
    {"(fpadstack @)", "net", Kind::text, "m_sNet"},
    {"(fpadstack @)", "pt", Kind::point, "m_pt"},
    {"(fpadstack @)", "angle", Kind::real, "m_dAngle"},
    {"(fpadstack @)", "side", Kind::text, "m_sSide"},
    {"(fpadstack @)", "flip", Kind::text, "m_sFlip"},
    {"(fpadstack @)", "isBuildupVia", Kind::text, "m_sBuildupVia"},
    {"(fpadstack (isTestPad @))", "side", Kind::text, "m_sSide", Repeat::firstWins},
    {"(fpadstack @)", "drillType", Kind::optionalInteger, "m_nDrillType"},
    {"(fpadstack (conductive (layerNumber 2 @)))", "status", Kind::text, "m_pRefLays/0/m_sStatus", Repeat::firstWins},
    {"(fpadstack (padstackGroup default @))", "padstack", Kind::text, "m_sPadstackName", Repeat::firstWins},
    {"(padstack P (conductive (layerNumber 2 @)))", "status", Kind::text, "m_pRefLays/0/m_sStatus", Repeat::firstWins},
    {"(padstack P (nonConductive (layer L @)))", "status", Kind::text, "m_pRefLays/0/m_sStatus", Repeat::firstWins},
    {"(padstack P (conductive (other @)))", "status", Kind::text, "m_pRefLays/0/m_sStatus", Repeat::firstWins},

    // texts
    {kTextInner, "font", Kind::integer, "m_nFont"},
    {kTextInner, "kFont", Kind::integer, "m_nKFont"},
    {kTextInner, "width", Kind::length, "m_dWidth"},
    {kTextInner, "height", Kind::length, "m_dHeight"},
    {kTextInner, "space", Kind::length, "m_dSpace"},
    {kTextInner, "vSpace", Kind::length, "m_dVSpace"},
    {kTextInner, "strokeWidth", Kind::length, "m_dStrokeWidth"},
    {kTextInner, "pt", Kind::point, "m_pt"},
    {kTextInner, "textAngle", Kind::real, "m_dAngle"},
    {kTextInner, "dir", Kind::text, "m_sDir"},
    {kTextInner, "justify", Kind::text, "m_sJustify"},
    {kTextInner, "flip", Kind::text, "m_sFlip"},
    {kTextInner, "reverse", Kind::text, "m_sReverse"},
    {kTextInner, "textFrameOffset", Kind::length, "m_dTextFrameOffset"},
    {"(symbolText @)", "symbolTextType", Kind::text, "m_sSymbolType"},
    {kSymbolInner, "string", Kind::text, "m_pText/m_sString"},
    {kSymbolInner, "font", Kind::integer, "m_pText/m_nFont"},
    {kSymbolInner, "kFont", Kind::integer, "m_pText/m_nKFont"},
    {kSymbolInner, "width", Kind::length, "m_pText/m_dWidth"},
    {kSymbolInner, "height", Kind::length, "m_pText/m_dHeight"},
    {kSymbolInner, "space", Kind::length, "m_pText/m_dSpace"},
    {kSymbolInner, "vSpace", Kind::length, "m_pText/m_dVSpace"},
    {kSymbolInner, "strokeWidth", Kind::length, "m_pText/m_dStrokeWidth"},
    {kSymbolInner, "pt", Kind::point, "m_pText/m_pt"},
    {kSymbolInner, "textAngle", Kind::real, "m_pText/m_dAngle"},
    {kSymbolInner, "dir", Kind::text, "m_pText/m_sDir"},
    {kSymbolInner, "justify", Kind::optionalText, "m_pText/m_sJustify"},
    {kSymbolInner, "flip", Kind::optionalText, "m_pText/m_sFlip"},
    {kSymbolInner, "reverse", Kind::optionalText, "m_pText/m_sReverse"},
    {kSymbolInner, "textFrameOffset", Kind::optionalLength, "m_pText/m_dTextFrameOffset"},

    {"(boardAssembly @)", "subBoard", Kind::integer, "m_nSubBoard"},
    {"(boardAssembly @)", "angle", Kind::real, "m_dAngle"},
    {"(boardAssembly @)", "pt", Kind::point, "m_pt"},
    {"(boardAssembly @)", "flip", Kind::text, "m_sFlip"},
};

struct Sample {
  const char* tokens;
  const char* value;
};

std::vector<Sample> SamplesOf(Kind kind) {
  switch (kind) {
    case Kind::length:
    case Kind::optionalLength:
      return {{"150000", "1.5"},  {"1.5", "1.5"}, {"1", "1e-05"},   {"1.0", "1"}, {"-2.5", "-2.5"}, {"-50000", "-0.5"},
              {"2.5 7 7", "2.5"}, {"abc", "0"},   {"3.5mm", "3.5"}, {".", "0"},   {"1e5", "1"},     {"12x.5", "12"}};
    case Kind::real:
      return {{"150000", "150000"}, {"45.5", "45.5"}, {"-90", "-90"}, {"90 1", "90"}, {"abc", "0"}, {"7deg", "7"}};
    case Kind::integer:
    case Kind::optionalInteger:
      return {{"12", "12"}, {"-3", "-3"}, {"12.7", "12"}, {"5 6", "5"}, {"abc", "0"}, {"7x", "7"}};
    case Kind::text:
    case Kind::optionalText:
      return {{"abc", "'abc'"}, {"abc def", "'abc'"}, {"\"a b\"", "'a b'"}, {"12.50", "'12.50'"}, {"\"\"", "''"}};
    case Kind::point:
    case Kind::firstChildPoint:
      return {{"150000 2.5", "(1.5,2.5)"}, {"-1.0 -2.0 3", "(-1,-2)"}, {"x y", "(0,0)"}, {"1.5 y", "(1.5,0)"}};
  }
  return {};
}

std::string RowText(const RowCase& row, const std::string& tokens) {
  // Of the forms in it only the first counts, and a later one may lack its values.
  if (row.kind == Kind::firstChildPoint) {
    return "(" + std::string(row.key) + " (any " + tokens + ") (later 9.0 9.0) (last))";
  }
  return "(" + std::string(row.key) + " " + tokens + ")";
}
std::string With(const RowCase& row, const std::string& inner) {
  std::string s = row.around;
  s.replace(s.find('@'), 1, inner);
  return s;
}

class ReadRow : public testing::TestWithParam<RowCase> {
 protected:
  // The field after reading the form with `inner` in it.
  std::string Value(const std::string& inner) {
    CBDdrawObjArray board;
    laminate::ShapeContext context = OnLayer3();
    context.pBoardShapes = &board;
    const auto shape = ReadAny(With(GetParam(), inner), context);
    return shape == nullptr ? "null" : At(*shape, GetParam().path);
  }
  // None of what a form may hold or lack is told to the user.
  void TearDown() override { EXPECT_EQ(m_boxes.texts, std::vector<std::string>()); }

 private:
  Boxes m_boxes;
};

// The text with each byte changed in turn, each letter in the other case, the last byte missing, and one more.
std::vector<std::string> NearMisses(const std::string& key) {
  std::vector<std::string> misses{key.substr(0, key.size() - 1), key + "s", "X" + key};
  for (std::size_t i = 0; i < key.size(); ++i) {
    misses.push_back(key);
    misses.back()[i] ^= 1;
    misses.push_back(key);
    misses.back()[i] ^= 'a' - 'A';
  }
  return misses;
}

TEST_P(ReadRow, TakesItsValue) {
  for (const Sample& sample : SamplesOf(GetParam().kind)) {
    EXPECT_EQ(Value(RowText(GetParam(), sample.tokens)), sample.value) << sample.tokens;
  }
}

TEST_P(ReadRow, AMissingTokenRaisesOrIsPassedOver) {
  const Kind kind = GetParam().kind;
  const bool bOptional = kind == Kind::optionalText || kind == Kind::optionalLength || kind == Kind::optionalInteger;
  const std::string empty = RowText(GetParam(), "");
  if (bOptional) {
    EXPECT_EQ(Value(empty), Value(""));
    const Sample sample = SamplesOf(kind)[0];
    EXPECT_EQ(Value(RowText(GetParam(), sample.tokens) + empty), sample.value);
  } else {
    EXPECT_THROW(Value(empty), CInvalidArgException);
  }
  if (kind == Kind::point || kind == Kind::firstChildPoint) {
    EXPECT_THROW(Value(RowText(GetParam(), "1.5")), CInvalidArgException);
  }
  if (kind == Kind::firstChildPoint) {
    EXPECT_THROW(Value("(" + std::string(GetParam().key) + " 1 2)"), CInvalidArgException);
  }
}

TEST_P(ReadRow, ARepeatedKeyOverwritesInAWalkAndIsIgnoredInALookUp) {
  const std::vector<Sample> samples = SamplesOf(GetParam().kind);
  const std::string both = RowText(GetParam(), samples[1].tokens) + RowText(GetParam(), samples[2].tokens);
  EXPECT_EQ(Value(both), GetParam().repeat == Repeat::lastWins ? samples[2].value : samples[1].value);
}

TEST_P(ReadRow, KeywordsAreComparedExactly) {
  const std::string unread = Value("");
  for (const std::string& key : NearMisses(GetParam().key)) {
    EXPECT_EQ(Value("(" + key + " 1.5 2.5 (any 1.5 2.5))"), unread) << key;
  }
}

std::string RowName(const testing::TestParamInfo<RowCase>& info) {
  std::string s;
  for (const char ch : std::string(info.param.around) + "_" + info.param.key) {
    if (std::isalnum(static_cast<unsigned char>(ch))) s += ch;
    if (ch == '(' && !s.empty()) s += '_';
  }
  return std::to_string(info.index) + "_" + s;
}
INSTANTIATE_TEST_SUITE_P(AllForms, ReadRow, testing::ValuesIn(kRows), RowName);

// ---- keywords ----

TEST(ReadKeyword, EachYieldsItsClass) {
  struct Case {
    const char* text;
    const char* tag;
  };
  const Case cases[] = {{"(boardAssembly)", "DRAWSUBBOARD"},
                        {"(circle 1)", "CIRCLE"},
                        {"(delete)", "DELETE"},
                        {"(donut)", "DONUT"},
                        {"(hole)", "HOLE"},
                        {"(line)", "LINE"},
                        {"(shieldLine)", "LINE"},
                        {"(oblong)", "OBLONG"},
                        {"(oval)", "OVAL"},
                        {"(ovalHole)", "OVALHOLE"},
                        {"(pad P)", "DRAWPAD"},
                        {"(fPad P)", "DRAWPAD"},
                        {"(padstack P)", "DRAWPADSTACK"},
                        {"(fpadstack)", "DRAWPADSTACK"},
                        {"(rectangle)", "RECTANGLE"},
                        {"(roundThermal)", "ROUNDTHERMAL"},
                        {"(squareHole)", "SQUAREHOLE"},
                        {"(squareThermal)", "SQUARETHERMAL"},
                        {"(area)", "SURFACE"},
                        {"(surface)", "SURFACE"},
                        {"(meshplane)", "SURFACE"},
                        {"(symbolText)", "SYMBOLTEXT"},
                        {"(text)", "TEXT"}};
  Boxes boxes;
  CBDdrawObjArray board;
  laminate::ShapeContext context = OnLayer3();
  context.pBoardShapes = &board;
  for (const Case& c : cases) {
    const auto shape = ReadAny(c.text, context);
    ASSERT_NE(shape, nullptr) << c.text;
    EXPECT_EQ(shape->m_sKind, c.tag) << c.text;
    const bool bDelete = shape->m_sKind == "DELETE";
    EXPECT_EQ(shape->m_nLayerNumber, bDelete ? 0 : 3) << c.text;
    EXPECT_EQ(shape->m_sLayerName, bDelete ? "" : "three") << c.text;
    EXPECT_EQ(shape->m_sLayerType, bDelete ? "" : "conductive") << c.text;
    EXPECT_EQ(shape->m_bRefer, bDelete ? 0 : 1) << c.text;
    EXPECT_EQ(shape->m_nCavityFrom, -1);
    EXPECT_EQ(shape->m_sSection, "");
  }
  // A form that no row names changes nothing.
  for (const Case& c : cases) {
    std::string with = c.text;
    with.insert(with.size() - 1, " (unknown (circle) (pt))");
    EXPECT_EQ(Text(ReadAny(with, context).get()), Text(ReadAny(c.text, context).get())) << with;
  }
  EXPECT_TRUE(boxes.texts.empty());
}

TEST(ReadKeyword, NearMissesAreUnknown) {
  const std::set<std::string> keywords = {
      "basePoint",  "boardAssembly", "circle",       "delete",     "dimension",     "dimLeader", "donut",   "hole",
      "line",       "shieldLine",    "oblong",       "oval",       "ovalHole",      "pad",       "fPad",    "padstack",
      "fpadstack",  "rectangle",     "roundThermal", "squareHole", "squareThermal", "area",      "surface", "meshplane",
      "symbolText", "text",          "ruleArea",     "drawOf",     "cavityFrom",    "cavityTo"};
  EXPECT_EQ(keywords.size(), 30u);
  for (const std::string& keyword : keywords) {
    for (const std::string& near : NearMisses(keyword)) {
      if (keywords.count(near) != 0) continue;
      Boxes boxes;
      EXPECT_EQ(ReadAny("(" + near + " 1)"), nullptr) << near;
      EXPECT_EQ(boxes.texts, std::vector<std::string>{"New Draw Type : " + near});
    }
  }
}

TEST(ReadKeyword, SomeAreReadOverWithAllThatIsInThem) {
  Boxes boxes;
  for (const char* sz : {"basePoint", "dimension", "dimLeader", "ruleArea", "drawOf", "cavityFrom", "cavityTo"}) {
    EXPECT_EQ(ReadAny(std::string("(") + sz + " (circle) (geometry (circle)))"), nullptr) << sz;
  }
  EXPECT_TRUE(boxes.texts.empty());
}

TEST(ReadKeyword, AnUnknownOneShowsABoxWithItsText) {
  Boxes boxes;
  EXPECT_EQ(ReadAny("(geometry (circle 1))"), nullptr);
  EXPECT_EQ(ReadAny("(Circle 1)"), nullptr);
  EXPECT_EQ(ReadAny("()"), nullptr);
  EXPECT_EQ(ReadAny("(100%s%n)"), nullptr);
  EXPECT_EQ(ReadAny("(openShape (outlineWidth 1.0))"), nullptr);
  EXPECT_EQ(boxes.texts,
            (std::vector<std::string>{"New Draw Type : geometry", "New Draw Type : Circle",
                                      "New Draw Type : ", "New Draw Type : 100%s%n", "New Draw Type : openShape"}));
  EXPECT_TRUE(boxes.allPlain);
}

TEST(ReadKeyword, ABoxThatThrowsPassesThrough) {
  struct Throwing : CHostInterface {
    int OnAfxMessageBox(const CString&, UINT, UINT) override { throw 7; }
  } host;
  CHostInterfaceScope scope(host);
  EXPECT_THROW(ReadAny("(pad P (geometry (circle 1) (nothing)))"), int);
}

// ---- forms beside their rows ----

TEST(ReadCircle, TheRadiusIsATokenOfTheForm) {
  EXPECT_EQ(Read<CBDcircle>("(circle 150000)")->m_dRadius, 1.5);
  EXPECT_EQ(Read<CBDcircle>("(circle 1.5 9 (pt 1.0 2.0))")->m_dRadius, 1.5);
  EXPECT_EQ(Text(Read<CBDcircle>("(circle 1.5)")->m_ptCenter), "(0,0)");
  EXPECT_EQ(Read<CBDcircle>("(circle x)")->m_dRadius, 0);
  ExpectRaises("(circle)");
  ExpectRaises("(circle (pt 1 2))");
}

TEST(ReadDelete, LooksAtNothing) { EXPECT_NE(Read<CBDdelete>("(delete (pt) (circle))"), nullptr); }

TEST(ReadHole, FromAndTo) {
  const auto hole = Read<CBDhole>("(hole (fromTo 2 5))");
  EXPECT_EQ(hole->m_nFrom, 2);
  EXPECT_EQ(hole->m_nTo, 5);
  EXPECT_EQ(Read<CBDhole>("(hole (fromTo 2 5 9))")->m_nTo, 5);
  EXPECT_EQ(Read<CBDhole>("(hole (fromTo x y))")->m_nTo, 0);
  EXPECT_EQ(Read<CBDhole>("(hole (fromTo 1 2) (fromTo 3 4))")->m_nFrom, 3);
  ExpectRaises("(hole (fromTo))");
  ExpectRaises("(hole (fromTo 2))");
}

TEST(ReadHole, OnlyACircleReplacesThePlaceholder) {
  const auto hole = Read<CBDhole>("(hole (geometry (circle 2.0 (pt 3.0 4.0)) (circle 9.0)))");
  ASSERT_EQ(hole->m_pShape->m_sKind, "CIRCLE");
  EXPECT_EQ(At(*hole, "m_pShape/m_dRadius"), "2");
  EXPECT_EQ(At(*hole, "m_pShape/m_ptCenter"), "(3,4)");
  // The inner circle takes over nothing of the layer.
  EXPECT_EQ(hole->m_pShape->m_nLayerNumber, 0);
  EXPECT_EQ(hole->m_pShape->m_sLayerName, "");
  EXPECT_EQ(hole->m_pShape->m_bRefer, 0);
  for (const char* sz : {"(squareHole)", "(oval)", "(circles 1)", "(unknown)"}) {
    Boxes boxes;
    const auto other = Read<CBDhole>("(hole (geometry " + std::string(sz) + " (circle 1)))");
    EXPECT_EQ(other->m_pShape->m_sKind, "NONE") << sz;
    EXPECT_TRUE(boxes.texts.empty());
  }
  EXPECT_EQ(At(*Read<CBDhole>("(hole (geometry (circle 1.0)) (geometry (circle 2.0)))"), "m_pShape/m_dRadius"), "2");
  // A circle stays when a later geometry holds something else.
  EXPECT_EQ(At(*Read<CBDhole>("(hole (geometry (circle 1.0)) (geometry (oval)))"), "m_pShape/m_dRadius"), "1");
  ExpectRaises("(hole (geometry))");
  ExpectRaises("(hole (geometry (circle)))");
  ExpectRaises("(hole (geometry (circle 1 (pt 1))))");
}

TEST(ReadLine, BothPlacesOfPenShapeAndVerticesCount) {
  const auto line = Read<CBDline>(
      "(line (net N) (penShape ROUND) (vertex (pt 1.0 1.0)) (geometry (line (penShape SQUARE) (vertex (pt 2.0 2.0)) "
      "(vertex (pt 9.0 9.0)) (type DASH) (dashLine (dash 1.5) (blank 0.5))) (line (type LATER))) (vertex (pt 3.0 "
      "3.0)))");
  EXPECT_EQ(line->m_sPenShape, "SQUARE");
  EXPECT_EQ(line->m_sLineType, "DASH");
  EXPECT_EQ(line->m_dDash, 1.5);
  EXPECT_EQ(line->m_dBlank, 0.5);
  ASSERT_EQ(line->m_pVertices->GetSize(), 3);
  EXPECT_EQ(At(*line, "m_pVertices/0/m_pt"), "(1,1)");
  EXPECT_EQ(At(*line, "m_pVertices/1/m_pt"), "(2,2)");
  EXPECT_EQ(At(*line, "m_pVertices/2/m_pt"), "(3,3)");
  EXPECT_EQ(Read<CBDline>("(line (geometry (line (penShape A))) (penShape B))")->m_sPenShape, "B");
  ExpectRaises("(line (geometry))");
  // The two are optional.
  EXPECT_EQ(Read<CBDline>("(line (geometry (line (dashLine))))")->m_dDash, 0);
  EXPECT_EQ(Read<CBDline>("(line (geometry (line (dashLine (blank 2)))))")->m_dBlank, 2);
}

TEST(ReadOblong, TheFirstPointAndTheLastOfTheOthers) {
  const auto oblong = Read<CBDoblong>("(oblong (pt 1.0 1.0) (width 2.0) (pt 2.0 2.0) (pt 3.0 3.0))");
  EXPECT_EQ(Text(oblong->m_ptFirst), "(1,1)");
  EXPECT_EQ(Text(oblong->m_ptSecond), "(3,3)");
  const auto one = Read<CBDoblong>("(oblong (pt 1.0 1.0))");
  EXPECT_EQ(Text(one->m_ptFirst), "(1,1)");
  EXPECT_EQ(Text(one->m_ptSecond), "(0,0)");
  ExpectRaises("(oblong (pt 1))");
  ExpectRaises("(oblong (pt 1 2) (pt 1))");
}

TEST(ReadFlatForms, AnOuterGeometryIsNoKey) {
  Boxes boxes;
  EXPECT_EQ(Read<CBDoval>("(oval (geometry (oval (pt 1.0 2.0) (width 3.0))))")->m_dWidth, 0);
  EXPECT_EQ(Read<CBDrectangle>("(rectangle (geometry (rectangle (width 3.0))))")->m_dWidth, 0);
  EXPECT_TRUE(boxes.texts.empty());
}

TEST(ReadOvalHole, OnlyAnOvalThatComesFirstCounts) {
  EXPECT_EQ(Read<CBDovalHole>("(ovalHole (geometry (circle 1) (oval (width 3.0))))")->m_dWidth, 0);
  EXPECT_EQ(Read<CBDovalHole>("(ovalHole (width 3.0) (geometry (oval)))")->m_dWidth, 0);
  EXPECT_EQ(Read<CBDovalHole>("(ovalHole (geometry (oval (holeType 3))))")->m_nHoleType, 0);
  ExpectRaises("(ovalHole (geometry))");
}

TEST(ReadSquareHole, AGeometryTakesItsPlace) {
  const auto inner =
      Read<CBDsquareHole>("(squareHole (width 1.0) (geometry (squareHole (width 2.0)) (circle 1)) (height))");
  EXPECT_EQ(inner->m_dWidth, 2);
  EXPECT_EQ(inner->m_nLayerNumber, 3);
  EXPECT_EQ(inner->m_sLayerName, "three");
  EXPECT_EQ(inner->m_sLayerType, "conductive");
  EXPECT_EQ(inner->m_bRefer, 0);
  EXPECT_EQ(Read<CBDcircle>("(squareHole (geometry (circle 4.0)))")->m_dRadius, 4);
  EXPECT_EQ(ReadAny("(squareHole (geometry (dimension)))"), nullptr);
  // What stands before it is read, and raises when it lacks a value.
  ExpectRaises("(squareHole (height) (geometry (circle 1)))");
  ExpectRaises("(squareHole (geometry))");
  Boxes boxes;
  EXPECT_EQ(ReadAny("(squareHole (geometry (strange)))"), nullptr);
  EXPECT_EQ(boxes.texts, std::vector<std::string>{"New Draw Type : strange"});
}

TEST(ReadSquareHole, WhatTakesItsPlaceIsInNoRefer) {
  const auto mark = ReadAny("(squareHole (geometry (delete)))");
  ASSERT_TRUE(IsExactly<CBDdelete>(*mark));
  EXPECT_EQ(Text(mark.get()), Describe(CBDdelete()));
  // The shapes beside it stay in theirs.
  const auto pad = Read<CBDdrawPad>(
      "(pad P (geometry (squareHole (geometry (circle 1.0))) (squareHole (geometry (dimension))) (circle 2.0)))");
  ASSERT_EQ(pad->m_pShapes->GetSize(), 2);
  EXPECT_EQ(pad->m_pShapes->GetAt(0)->m_bRefer, 0);
  EXPECT_EQ(pad->m_pShapes->GetAt(1)->m_bRefer, 1);
  const auto inner =
      Read<CBDdrawPad>("(squareHole (geometry (squareHole (geometry (pad P (geometry (circle 1.0)))))))");
  EXPECT_EQ(inner->m_bRefer, 0);
  EXPECT_EQ(inner->m_pShapes->GetAt(0)->m_bRefer, 0);
  CBDdrawObjArray board;
  laminate::ShapeContext context = OnLayer3();
  context.pBoardShapes = &board;
  Read<CBDdrawSubBoard>("(squareHole (geometry (boardAssembly (geometry (circle 1.0)))))", context);
  ASSERT_EQ(board.GetSize(), 1);
  EXPECT_EQ(board.GetAt(0)->m_bRefer, 0);
}

TEST(ReadVertices, KeepTheirOrderAndSkipTheRest) {
  Boxes boxes;
  const auto line = Read<CBDline>(
      "(line (vertex (pt 1.0 2.0 9) (other 1) (arc CW (r 5.0) (begin (pt 1.0 2.0 (width 0.1))) (center 3.0 4.0) (end "
      "(pt 5.0 6.0 (width 0.2)))) (PT 1 2) (pt 7.0 8.0)))");
  ASSERT_EQ(line->m_pVertices->GetSize(), 3);
  EXPECT_EQ(At(*line, "m_pVertices/0/m_pt"), "(1,2)");
  EXPECT_EQ(At(*line, "m_pVertices/1/m_sDirection"), "'CW'");
  EXPECT_EQ(At(*line, "m_pVertices/1/m_dR"), "5");
  EXPECT_EQ(At(*line, "m_pVertices/1/m_ptBegin"), "(1,2)");
  EXPECT_EQ(At(*line, "m_pVertices/1/m_ptCenter"), "(3,4)");
  EXPECT_EQ(At(*line, "m_pVertices/1/m_ptEnd"), "(5,6)");
  EXPECT_EQ(At(*line, "m_pVertices/1/m_dBeginWidth"), Text(0.1));
  EXPECT_EQ(At(*line, "m_pVertices/1/m_dEndWidth"), Text(0.2));
  EXPECT_EQ(At(*line, "m_pVertices/1/m_dWidth"), "0");
  EXPECT_EQ(At(*line, "m_pVertices/2/m_pt"), "(7,8)");
  EXPECT_TRUE(boxes.texts.empty());
}

TEST(ReadVertices, MissingValuesRaise) {
  for (const char* sz : {"(pt)", "(pt 1)", "(arc)", "(arc (r 1))", "(arc CW (r))", "(arc CW (center 1))",
                         "(arc CW (begin (pt 1)))", "(arc CW (begin (pt 1 2 (width))))", "(arc CW (end (pt 1)))",
                         "(pt 1 2 (width))", "(pt 1 2 (tarc (r)))", "(pt 1 2 (fillet (length)))"}) {
    ExpectRaises("(line (vertex " + std::string(sz) + "))");
  }
}

TEST(ReadVertices, AbsentPartsKeepTheirDefaults) {
  const auto line = Read<CBDline>("(line (vertex (arc CCW (begin (width 1)) (end)) (pt 1 2 (tarc ON) (fillet))))");
  EXPECT_EQ(At(*line, "m_pVertices/0/m_ptBegin"), "(0,0)");
  EXPECT_EQ(At(*line, "m_pVertices/0/m_dBeginWidth"), "0");
  EXPECT_EQ(At(*line, "m_pVertices/1/m_dTarc"), "0");
  EXPECT_EQ(At(*line, "m_pVertices/1/m_pFillet"), Text(std::make_unique<CBDfillet>().get()));
  EXPECT_EQ(Read<CBDline>("(line (vertex (arc \"\")))")->m_pVertices->GetSize(), 1);
}

TEST(ReadVertices, APointWithoutFilletHasAnEmptyOne) {
  const auto line = Read<CBDline>("(line (vertex (pt 1.0 2.0)))");
  const CBDfillet fresh;
  EXPECT_EQ(At(*line, "m_pVertices/0/m_pFillet"), Text(&fresh));
  EXPECT_EQ(Print(*line, 2), "(line\n(vertex\n(pt 1.00000 2.00000)\n)\n)\n");
}

TEST(ReadVertices, WhatWasAppendedBeforeAFailureStays) {
  const Tree tree("(vertex (pt 1.0 2.0) (pt 3.0 4.0) (pt 5.0) (pt 7.0 8.0))");
  CBDvertexArray vertices;
  vertices.Add(new CBDvertexPt);
  EXPECT_THROW(laminate::ReadVertices(tree.Node(), vertices), CInvalidArgException);
  ASSERT_EQ(vertices.GetSize(), 3);
  EXPECT_EQ(static_cast<CBDvertexPt*>(vertices.GetAt(2))->m_pt.x, 3);
}

TEST(ReadSurface, TheThreeFormsDifferInTheMeshAlone) {
  const std::string inner =
      " (upperHeight 100000) (lowerHeight 0) (geometry (surface (outlineWidth 1.0) (vertex (pt 1 2)))))";
  const auto area = Read<CBDsurface>("(area" + inner);
  const auto surface = Read<CBDsurface>("(surface" + inner);
  const auto mesh = Read<CBDsurface>("(meshplane" + inner);
  EXPECT_EQ(area->m_dUpperHeight, 1);
  EXPECT_EQ(area->m_dLowerHeight, 0);
  EXPECT_EQ(area->m_bArea, 0);
  EXPECT_EQ(area->m_bMesh, 0);
  EXPECT_EQ(Describe(*area), Describe(*surface));
  EXPECT_EQ(mesh->m_bMesh, 1);
  EXPECT_EQ(mesh->m_bArea, 0);
  mesh->m_bMesh = 0;
  EXPECT_EQ(Describe(*mesh), Describe(*surface));
}

TEST(ReadSurface, FlatAndWrappedFormsGiveTheSame) {
  const auto flat = Read<CBDsurface>(
      "(surface (outlineWidth 1.0) (fillWidth 0.5) (fillAngle 45) (vertex (pt 1.0 2.0)) (openShape (outlineWidth 0.25) "
      "(vertex (pt 3.0 4.0))))");
  const auto wrapped = Read<CBDsurface>(
      "(surface (net A) (geometry (surface (outlineWidth 1.0) (fillWidth 0.5) (fillAngle 45) (vertex (pt 1.0 2.0)) "
      "(openShape (outlineWidth 0.25) (vertex (pt 3.0 4.0))))))");
  EXPECT_EQ(wrapped->m_sNet, "A");
  wrapped->m_sNet.Empty();
  EXPECT_EQ(Describe(*flat), Describe(*wrapped));
  EXPECT_EQ(At(*flat, "m_pOpenShapes/0/m_dOutlineWidth"), "0.25");
  EXPECT_EQ(At(*flat, "m_pOpenShapes/0/m_pVertices/0/m_pt"), "(3,4)");
}

TEST(ReadSurface, BothLevelsAppendVerticesAndCutOuts) {
  const auto surface = Read<CBDsurface>(
      "(surface (vertex (pt 1 1)) (openShape) (geometry (x (vertex (pt 2 2)) (openShape) (vertex (pt 3 3)))) (vertex "
      "(pt "
      "4 4)))");
  EXPECT_EQ(surface->m_pVertices->GetSize(), 4);
  EXPECT_EQ(surface->m_pOpenShapes->GetSize(), 2);
  // A cut-out takes over nothing of the layer.
  EXPECT_EQ(surface->m_pOpenShapes->GetAt(0)->m_sLayerName, "");
  EXPECT_EQ(surface->m_pOpenShapes->GetAt(0)->m_nLayerNumber, 0);
  EXPECT_EQ(surface->m_pOpenShapes->GetAt(0)->m_bRefer, 0);
}

TEST(ReadSurface, WhatBothLevelsAppendKeepsItsOrder) {
  const auto surface = Read<CBDsurface>(
      "(surface (vertex (pt 1.0 1)) (openShape (outlineWidth 0.25)) (geometry (x (vertex (pt 2.0 2)) (openShape "
      "(outlineWidth 0.5)) (vertex (pt 3.0 3)))) (vertex (pt 4.0 4)))");
  ASSERT_EQ(surface->m_pVertices->GetSize(), 4);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(static_cast<CBDvertexPt*>(surface->m_pVertices->GetAt(i))->m_pt.x, i + 1);
  CBDopenShape wanted;
  for (int i = 0; i < 2; ++i) {
    wanted.m_dOutlineWidth = i == 0 ? 0.25 : 0.5;
    EXPECT_EQ(Text(surface->m_pOpenShapes->GetAt(i)), Describe(wanted));
  }
}

TEST(ReadSurface, EveryFormTakesEveryKey) {
  const std::string inner =
      " (lowerHeight 1.0) (upperHeight 2.0) (openShape (outlineWidth 0.5)) (geometry (m (alreadySpread) (openShape) "
      "(meshPitch 1.0) (meshFlags 1) (meshBasePoint (pt 1.0 2.0)) (submeshplane (submeshparameter (meshParamPitch "
      "2.0))))))";
  const auto mesh = Read<CBDsurface>("(meshplane" + inner);
  EXPECT_EQ(At(*mesh, "m_dMeshPitch") + At(*mesh, "m_arrMeshFlags") + At(*mesh, "m_ptMeshBase") +
                At(*mesh, "m_bSubmesh") + At(*mesh, "m_dParamPitch") + At(*mesh, "m_dUpperHeight"),
            "1[1,](1,2)122");
  mesh->m_bMesh = 0;
  for (const char* szKeyword : {"(area", "(surface"}) {
    EXPECT_EQ(Describe(*Read<CBDsurface>(szKeyword + inner)), Describe(*mesh)) << szKeyword;
  }
}

TEST(ReadSurface, ParametersOfAllSubMeshesFillOneSet) {
  const auto mesh = Read<CBDsurface>(
      "(meshplane (geometry (m (submeshplane (submeshparameter (meshParamShape SQUARE) (meshParamPitch 1.0)) "
      "(submeshparameter (meshParamPitch 2.0) (meshParamFlags 6))) (submeshplane (submeshparameter (meshParamFlags "
      "7))))))");
  EXPECT_EQ(mesh->m_sParamShape, "SQUARE");
  EXPECT_EQ(mesh->m_dParamPitch, 2);
  EXPECT_EQ(Text(mesh->m_arrParamFlags), "[6,7,]");
}

TEST(ReadSurface, ACutOutKnowsItsTwoKeysAlone) {
  Boxes boxes;
  const auto surface = Read<CBDsurface>(
      "(surface (openShape (fillWidth) (net) (alreadySpread) (openShape (outlineWidth)) (geometry (s (outlineWidth "
      "9.0))) (outlineWidth 0.5) (vertex (pt 1.0 1.0)) (vertex (pt 2.0 2.0))))");
  ASSERT_EQ(surface->m_pOpenShapes->GetSize(), 1);
  EXPECT_EQ(surface->m_bAlreadySpread, 0);
  EXPECT_EQ(At(*surface, "m_pOpenShapes/0/m_dOutlineWidth"), "0.5");
  EXPECT_EQ(surface->m_pOpenShapes->GetAt(0)->m_pVertices->GetSize(), 2);
  EXPECT_EQ(At(*surface, "m_pOpenShapes/0/m_pVertices/1/m_pt"), "(2,2)");
  Read<CBDsurface>(
      "(meshplane (what) (geometry (m (what) (openShape (what)) (submeshplane (what) (submeshparameter (what))))))");
  Read<CBDsurface>("(surface (geometry (what)))");
  EXPECT_EQ(boxes.texts, std::vector<std::string>());
}

TEST(ReadSurface, AlreadySpreadCountsInsideWhateverItSays) {
  EXPECT_EQ(Read<CBDsurface>("(surface (geometry (surface (alreadySpread NO))))")->m_bAlreadySpread, 1);
  EXPECT_EQ(Read<CBDsurface>("(surface (geometry (surface (alreadySpread))))")->m_bAlreadySpread, 1);
  EXPECT_EQ(Read<CBDsurface>("(surface (alreadySpread YES))")->m_bAlreadySpread, 0);
}

TEST(ReadSurface, MeshKeysCountInsideOnly) {
  const auto flat = Read<CBDsurface>("(meshplane (meshPitch 1.0) (meshShape SQUARE) (meshFlags 1) (submeshplane))");
  EXPECT_EQ(flat->m_dMeshPitch, 0);
  EXPECT_EQ(flat->m_sMeshShape, "CIRCLE");
  EXPECT_EQ(flat->m_sMeshArrangeType, "5POINTS");
  EXPECT_EQ(flat->m_sParamShape, "CIRCLE");
  EXPECT_EQ(flat->m_arrMeshFlags.GetSize(), 0);
  EXPECT_EQ(flat->m_bSubmesh, 0);
}

TEST(ReadSurface, FlagsAddUp) {
  const auto mesh = Read<CBDsurface>(
      "(meshplane (geometry (meshplane (meshFlags 1 2 x) (meshFlags) (meshFlags 3) (submeshplane (submeshparameter "
      "(meshParamFlags 4 5)) (other) (submeshparameter (meshParamFlags 6) (meshParamPitch 2.0))))))");
  EXPECT_EQ(Text(mesh->m_arrMeshFlags), "[1,2,0,3,]");
  EXPECT_EQ(Text(mesh->m_arrParamFlags), "[4,5,6,]");
  EXPECT_EQ(mesh->m_bSubmesh, 1);
  EXPECT_EQ(mesh->m_dParamPitch, 2);
  EXPECT_EQ(Read<CBDsurface>("(meshplane (geometry (m (submeshplane))))")->m_bSubmesh, 1);
}

TEST(ReadSurface, EmptyGeometryAndMissingPointsRaise) {
  ExpectRaises("(surface (geometry))");
  ExpectRaises("(meshplane (geometry (m (meshBasePoint))))");
  ExpectRaises("(meshplane (geometry (m (meshRotatePoint 1 2))))");
  ExpectRaises("(meshplane (geometry (m (submeshplane (submeshparameter (meshParamBasePoint))))))");
  ExpectRaises("(meshplane (geometry (m (submeshplane (submeshparameter (meshParamRotatePoint))))))");
  ExpectRaises("(surface (openShape (outlineWidth)))");
  EXPECT_EQ(Read<CBDsurface>("(surface)")->m_pVertices->GetSize(), 0);
}

TEST(ReadPad, ItsNameIsATokenOfTheForm) {
  EXPECT_EQ(Read<CBDdrawPad>("(pad P1 (pt 0 0))")->m_sPadName, "P1");
  EXPECT_EQ(Describe(*Read<CBDdrawPad>("(fPad P1 (pt 0 0))")), Describe(*Read<CBDdrawPad>("(pad P1 (pt 0 0))")));
  ExpectRaises("(pad)");
  ExpectRaises("(fPad (pt 0 0))");
}

TEST(ReadPad, BothKeywordsReadTheSame) {
  const std::string all = " (pt 1.0 2.0) (angle 90) (net N) (geometry (circle 1.0)))";
  EXPECT_EQ(Describe(*Read<CBDdrawPad>("(fPad P" + all)), Describe(*Read<CBDdrawPad>("(pad P" + all)));
  const std::string group =
      " (net N) (pt 1.0 2.0) (angle 90) (fromTo 2 5) (side A) (flip F) (isBuildupVia YES) (drillType 3) (conductive "
      "(layerNumber 2 (status ON) (geometry (circle 1.0)))) (nonConductive (layer L (visible NO))) (padstackGroup g "
      "(padstack V)))";
  EXPECT_EQ(Describe(*Read<CBDdrawPadstack>("(fpadstack" + group)),
            Describe(*Read<CBDdrawPadstack>("(padstack V" + group)));
}

TEST(ReadPad, ShapesOfItsGeometry) {
  Boxes boxes;
  const auto pad = Read<CBDdrawPad>(
      "(pad P (geometry (circle 1.0) (dimension) (what) (pad Q (geometry (donut)))) (geometry (oval)))");
  ASSERT_EQ(pad->m_pShapes->GetSize(), 3);
  EXPECT_EQ(pad->m_pShapes->GetAt(0)->m_sKind, "CIRCLE");
  EXPECT_EQ(pad->m_pShapes->GetAt(0)->m_nLayerNumber, 3);
  EXPECT_EQ(pad->m_pShapes->GetAt(0)->m_sLayerName, "three");
  EXPECT_EQ(pad->m_pShapes->GetAt(0)->m_sLayerType, "conductive");
  EXPECT_EQ(pad->m_pShapes->GetAt(0)->m_bRefer, 1);
  EXPECT_EQ(At(*pad, "m_pShapes/1/m_pShapes/0/m_sKind"), "'DONUT'");
  EXPECT_EQ(pad->m_pShapes->GetAt(2)->m_sKind, "OVAL");
  EXPECT_EQ(boxes.texts, std::vector<std::string>{"New Draw Type : what"});
  EXPECT_EQ(Read<CBDdrawPad>("(pad P (geometry))")->m_pShapes->GetSize(), 0);
}

TEST(ReadPadstack, ItsName) {
  EXPECT_EQ(Read<CBDdrawPadstack>("(padstack V1)")->m_sPadstackName, "V1");
  EXPECT_EQ(Read<CBDdrawPadstack>("(fpadstack (padstackGroup default (padstack V1)))")->m_sPadstackName, "V1");
  EXPECT_EQ(Read<CBDdrawPadstack>("(fpadstack V9)")->m_sPadstackName, "");
  EXPECT_EQ(Read<CBDdrawPadstack>("(padstack V1 (padstackGroup x (padstack V2)))")->m_sPadstackName, "V2");
  EXPECT_EQ(Read<CBDdrawPadstack>("(padstack V1 (padstackGroup x))")->m_sPadstackName, "V1");
  ExpectRaises("(padstack)");
  ExpectRaises("(padstack (padstackGroup default (padstack V1)))");
}

TEST(ReadPadstack, ItsSpan) {
  const auto span = [](const char* szTokens) {
    const auto p = Read<CBDdrawPadstack>("(padstack V (fromTo 8 9) (fromTo " + std::string(szTokens) + "))");
    return std::pair(p->m_nFrom, p->m_nTo);
  };
  EXPECT_EQ(span("3"), std::pair(0, 3));
  EXPECT_EQ(span("2 5"), std::pair(2, 5));
  EXPECT_EQ(span("x 5"), std::pair(0, 5));
  EXPECT_EQ(span(""), std::pair(8, 9));
  EXPECT_EQ(span("1 2 3"), std::pair(8, 9));
}

TEST(ReadPadstack, TheTestPadSetsTheSide) {
  EXPECT_EQ(Read<CBDdrawPadstack>("(padstack V (side A) (isTestPad YES (side B)))")->m_sSide, "B");
  EXPECT_EQ(Read<CBDdrawPadstack>("(padstack V (side A) (isTestPad YES))")->m_sSide, "A");
  ExpectRaises("(padstack V (isTestPad (side)))");
}

TEST(ReadPadstack, EveryFormOfASectionIsAnEntry) {
  const auto p = Read<CBDdrawPadstack>(
      "(padstack V (conductive (layerNumber 2 (status ON)) (layer SILK (status OFF) (visible NO)) (foo)) "
      "(nonConductive (layer MASK (visible YES)) (layerNumber x) (layer A (visible no))))");
  ASSERT_EQ(p->m_pRefLays->GetSize(), 6);
  const auto entry = [&p](int n) {
    const CBDpadstackRefLay& e = *p->m_pRefLays->GetAt(n);
    return std::tuple(e.m_nLayerNumber, std::string(e.m_sLayerName.View()), std::string(e.m_sStatus.View()),
                      e.m_bVisible);
  };
  EXPECT_EQ(entry(0), std::tuple(2, "", "ON", 1));
  EXPECT_EQ(entry(1), std::tuple(0, "SILK", "OFF", 0));
  EXPECT_EQ(entry(2), std::tuple(0, "", "", 1));
  EXPECT_EQ(entry(3), std::tuple(0, "MASK", "", 1));
  EXPECT_EQ(entry(4), std::tuple(0, "", "", 1));
  EXPECT_EQ(entry(5), std::tuple(0, "A", "", 1));
  EXPECT_EQ(p->m_pShapes->GetSize(), 0);
}

TEST(ReadPadstack, LaterEntriesInheritTheLayer) {
  const auto p = Read<CBDdrawPadstack>(
      "(padstack V (conductive (foo (geometry (circle 1.0))) (layerNumber 7 (geometry (circle 2.0) (dimension) "
      "(donut))) "
      "(foo (geometry (oval)))) (nonConductive (layer MASK (geometry (circle 3.0))) (layerNumber 9) (x (geometry "
      "(oblong)))))");
  ASSERT_EQ(p->m_pShapes->GetSize(), 6);
  struct Wanted {
    const char* tag;
    int number;
    const char* name;
    const char* section;
  };
  const Wanted wanted[] = {{"CIRCLE", 3, "three", "conductive"},   {"CIRCLE", 7, "three", "conductive"},
                           {"DONUT", 7, "three", "conductive"},    {"OVAL", 7, "three", "conductive"},
                           {"CIRCLE", 7, "MASK", "nonConductive"}, {"OBLONG", 9, "MASK", "nonConductive"}};
  for (int i = 0; i < 6; ++i) {
    const CBDdrawObj& shape = *p->m_pShapes->GetAt(i);
    EXPECT_EQ(shape.m_sKind, wanted[i].tag) << i;
    EXPECT_EQ(shape.m_nLayerNumber, wanted[i].number) << i;
    EXPECT_EQ(shape.m_sLayerName, wanted[i].name) << i;
    EXPECT_EQ(shape.m_sSection, wanted[i].section) << i;
    EXPECT_EQ(shape.m_sLayerType, "conductive") << i;
    EXPECT_EQ(shape.m_bRefer, 1) << i;
  }
  // The padstack itself keeps the layer that it was given.
  EXPECT_EQ(p->m_nLayerNumber, 3);
  EXPECT_EQ(p->m_sLayerName, "three");
  // Entries that give no layer have none.
  EXPECT_EQ(p->m_pRefLays->GetAt(2)->m_nLayerNumber, 0);
}

// The number and the name that entries change are those of one padstack, and of what stands in it.
TEST(ReadPadstack, ItsLayerIsItsOwn) {
  const auto outer = Read<CBDdrawPadstack>(
      "(padstack V (conductive (layerNumber 2 (geometry (padstack W (nonConductive (layerNumber 9 (geometry (circle "
      "1.0))) (layer M (geometry (donut))))) (circle 2.0)))))");
  const auto describe = [](const CBDdrawObj& shape) {
    return Text(shape.m_nLayerNumber) + " " + std::string(shape.m_sLayerName.View()) + " " +
           std::string(shape.m_sSection.View());
  };
  ASSERT_EQ(outer->m_pShapes->GetSize(), 2);
  const auto& inner = dynamic_cast<const CBDdrawPadstack&>(*outer->m_pShapes->GetAt(0));
  EXPECT_EQ(describe(inner), "2 three conductive");
  ASSERT_EQ(inner.m_pShapes->GetSize(), 2);
  EXPECT_EQ(describe(*inner.m_pShapes->GetAt(0)), "9 three nonConductive");
  EXPECT_EQ(describe(*inner.m_pShapes->GetAt(1)), "9 M nonConductive");
  EXPECT_EQ(describe(*outer->m_pShapes->GetAt(1)), "2 three conductive");
  const auto pad =
      Read<CBDdrawPad>("(pad P (geometry (padstack V (conductive (layerNumber 7) (layer M))) (circle 1.0)))");
  EXPECT_EQ(describe(*pad->m_pShapes->GetAt(1)), "3 three ");
}

TEST(ReadPadstack, TheSectionIsThatOfItsOwnShapesAlone) {
  Boxes boxes;
  CBDdrawObjArray board;
  laminate::ShapeContext context = OnLayer3();
  context.pBoardShapes = &board;
  const auto p = Read<CBDdrawPadstack>(
      "(padstack V (conductive (layerNumber 2 (geometry (pad P (geometry (circle 1.0))) (delete) (squareHole (geometry "
      "(oval))) (boardAssembly (geometry (donut))) (what)))))",
      context);
  ASSERT_EQ(p->m_pShapes->GetSize(), 4);
  for (const CBDdrawObj* pShape : *p->m_pShapes) EXPECT_EQ(pShape->m_sSection, "conductive");
  EXPECT_EQ(At(*p, "m_pShapes/0/m_pShapes/0/m_sSection"), "''");
  EXPECT_EQ(At(*p, "m_pShapes/0/m_pShapes/0/m_nLayerNumber"), "2");
  CBDdelete mark;
  mark.m_sSection = "conductive";
  EXPECT_EQ(At(*p, "m_pShapes/1"), Describe(mark));
  EXPECT_EQ(At(*p, "m_pShapes/2/m_sKind"), "'OVAL'");
  EXPECT_EQ(At(*p, "m_pShapes/2/m_bRefer"), "0");
  EXPECT_EQ(At(*p, "m_pShapes/3/m_sKind"), "'DRAWSUBBOARD'");
  ASSERT_EQ(board.GetSize(), 1);
  EXPECT_EQ(board.GetAt(0)->m_sSection, "");
  EXPECT_EQ(board.GetAt(0)->m_nLayerNumber, 2);
  EXPECT_EQ(p->m_pRefLays->GetSize(), 1);
  EXPECT_EQ(boxes.texts, std::vector<std::string>{"New Draw Type : what"});
}

TEST(ReadPadstack, EntriesLackingAValueRaise) {
  for (const char* sz : {"(layerNumber)", "(layer)", "(layer A (visible))", "(x (status))", "(layerNumber (status ON))",
                         "(x (geometry (circle)))"}) {
    ExpectRaises("(padstack V (conductive " + std::string(sz) + "))");
  }
}

TEST(ReadText, OnlyTheTextInTheGeometryCounts) {
  for (const char* sz : {"(text)", "(text (font 7))", "(text (geometry))", "(text (geometry (line (string A))))",
                         "(text (string A))", "(text (geometry) (geometry (text (string A))))"}) {
    const auto text = Read<CBDtext>(sz);
    CBDtext fresh;
    fresh.m_nLayerNumber = 3;
    fresh.m_sLayerName = "three";
    fresh.m_sLayerType = "conductive";
    fresh.m_bRefer = 1;
    EXPECT_EQ(Describe(*text), Describe(fresh)) << sz;
  }
  EXPECT_EQ(Read<CBDtext>("(text (geometry (x) (text (string A)) (text (string B))))")->m_sString, "A");
}

TEST(ReadText, TheThreeFormsOfAString) {
  const auto string = [](const char* sz) {
    return Read<CBDtext>("(text (geometry (text (string old) " + std::string(sz) + ")))")->m_sString;
  };
  EXPECT_EQ(string("(string new more)"), "new");
  EXPECT_EQ(string("(string \"a b\")"), "a b");
  EXPECT_EQ(string("(string (A B) (C))"), "(A)");
  EXPECT_EQ(string("(string x (A))"), "x");
  EXPECT_EQ(string("(string)"), "");
  EXPECT_EQ(string("(string ())"), "()");
}

TEST(ReadSymbolText, ReadsIntoItsInnerText) {
  const auto text = Read<CBDsymbolText>(
      "(symbolText (symbolTextType REFERENCE) (font) (geometry (text (string \"R 1\") (font 3) (pt 1.0 2.0))))");
  EXPECT_EQ(text->m_sSymbolType, "REFERENCE");
  EXPECT_EQ(text->m_sString, "");
  EXPECT_EQ(text->m_pText->m_sString, "R 1");
  EXPECT_EQ(text->m_pText->m_nFont, 3);
  EXPECT_EQ(text->m_pText->m_sLayerName, "");
  EXPECT_EQ(text->m_pText->m_nLayerNumber, 0);
  EXPECT_EQ(Read<CBDsymbolText>("(symbolText (geometry (line) (text (string A))))")->m_pText->m_sString, "");
  ExpectRaises("(symbolText (geometry))");
  ExpectRaises("(symbolText (geometry (text (string))))");
  ExpectRaises("(symbolText (geometry (text (string (A B)))))");
}

TEST(ReadBoardAssembly, ItsShapesGoToTheBoardAheadOfIt) {
  CBDdrawObjArray board;
  laminate::ShapeContext context = OnLayer3();
  context.pBoardShapes = &board;
  const auto p = Read<CBDdrawSubBoard>(
      "(boardAssembly (subBoard 2) (geometry (circle 1.0) (dimension)) (angle 90) (geometry (line) (boardAssembly "
      "(geometry (donut)))))",
      context);
  EXPECT_EQ(p->m_nSubBoard, 2);
  EXPECT_EQ(p->m_dAngle, 90);
  EXPECT_EQ(p->m_pShapes->GetSize(), 0);
  ASSERT_EQ(board.GetSize(), 4);
  EXPECT_EQ(board.GetAt(0)->m_sKind, "CIRCLE");
  EXPECT_EQ(board.GetAt(1)->m_sKind, "LINE");
  EXPECT_EQ(board.GetAt(2)->m_sKind, "DONUT");
  EXPECT_EQ(board.GetAt(3)->m_sKind, "DRAWSUBBOARD");
  for (const CBDdrawObj* pShape : board) {
    EXPECT_EQ(pShape->m_nLayerNumber, 3);
    EXPECT_EQ(pShape->m_sLayerName, "three");
    EXPECT_EQ(pShape->m_sLayerType, "conductive");
    EXPECT_EQ(pShape->m_bRefer, 1);
  }
}

TEST(ReadBoardAssembly, AnUnknownKeywordInItIsTold) {
  CBDdrawObjArray board;
  laminate::ShapeContext context = OnLayer3();
  context.pBoardShapes = &board;
  Boxes boxes;
  Read<CBDdrawSubBoard>("(boardAssembly (geometry (what) (circle 1.0)))", context);
  EXPECT_EQ(boxes.texts, std::vector<std::string>{"New Draw Type : what"});
  EXPECT_EQ(board.GetSize(), 1);
}

TEST(ReadBoardAssembly, WhatReachedTheBoardBeforeAFailureStays) {
  CBDdrawObjArray board;
  laminate::ShapeContext context = OnLayer3();
  context.pBoardShapes = &board;
  EXPECT_THROW(ReadAny("(boardAssembly (geometry (circle 1.0) (circle)))", context), CInvalidArgException);
  EXPECT_EQ(board.GetSize(), 1);
  EXPECT_THROW(ReadAny("(boardAssembly (geometry (donut)) (angle))", context), CInvalidArgException);
  EXPECT_EQ(board.GetSize(), 2);
}

TEST(ReadBoardAssembly, NeedsABoard) {
  EXPECT_THROW(ReadAny("(boardAssembly)"), CInvalidArgException);
  EXPECT_THROW(ReadAny("(pad P (geometry (circle 1) (boardAssembly)))"), CInvalidArgException);
}

// ---- whole forms ----

struct FormCase {
  const char* text;
  const char* path;
  const char* value;
};

const FormCase kForms[] = {
    // tokens of vertices
    {"(line (vertex (pt 150000 250000)))", "m_pVertices/0/m_pt", "(1.5,2.5)"},
    {"(line (vertex (pt x y)))", "m_pVertices/0/m_pt", "(0,0)"},
    {"(line (vertex (pt 1.5 y)))", "m_pVertices/0/m_pt", "(1.5,0)"},
    {"(line (vertex (arc 12.50 MORE)))", "m_pVertices/0/m_sDirection", "'12.50'"},
    {"(line (vertex (arc \"\")))", "m_pVertices/0/m_sDirection", "''"},
    {"(line (vertex (arc ccw)))", "m_pVertices/0/m_sDirection", "'ccw'"},
    // an arc's width is on its ends, and a later point without one keeps that of the one before
    {"(line (vertex (arc CW (width 1.5))))", "m_pVertices/0/m_dWidth", "0"},
    {"(line (vertex (arc CW (width 1.5))))", "m_pVertices/0/m_dBeginWidth", "0"},
    {"(line (vertex (arc CW (width 1.5))))", "m_pVertices/0/m_dEndWidth", "0"},
    {"(line (vertex (arc CW (begin (pt 1 2 (width 0.5)) (pt 3.0 4.0)))))", "m_pVertices/0/m_ptBegin", "(3,4)"},
    {"(line (vertex (arc CW (begin (pt 1 2 (width 0.5)) (pt 3.0 4.0)))))", "m_pVertices/0/m_dBeginWidth", "0.5"},
    {"(line (vertex (arc CW (end (pt 1 2 (width 0.5)) (pt 3.0 4.0)))))", "m_pVertices/0/m_ptEnd", "(3,4)"},
    {"(line (vertex (arc CW (end (pt 1 2 (width 0.5)) (pt 3.0 4.0)))))", "m_pVertices/0/m_dEndWidth", "0.5"},
    {"(line (vertex (pt 1 2 (tarc ON (r 1.0)) (tarc OFF))))", "m_pVertices/0/m_dTarc", "1"},
    {"(line (vertex (pt 1 2 (fillet (length 1.0)) (fillet (width 2.0)))))", "m_pVertices/0/m_pFillet/m_dLength", "1"},
    {"(line (vertex (pt 1 2 (fillet (length 1.0)) (fillet (width 2.0)))))", "m_pVertices/0/m_pFillet/m_dWidth", "2"},
    // tokens of an oblong and a hole
    {"(oblong (pt 150000 2.5))", "m_ptFirst", "(1.5,2.5)"},
    {"(oblong (pt x y))", "m_ptFirst", "(0,0)"},
    {"(hole (fromTo 2.9 -1))", "m_nFrom", "2"},
    {"(hole (fromTo 2.9 -1))", "m_nTo", "-1"},
    {"(hole (fromTo 200000 1))", "m_nFrom", "200000"},

    // of a surface's geometry the first form counts
    {"(surface (geometry (s (outlineWidth 1.0)) (s (outlineWidth 2.0) (fillWidth 3.0) (vertex (pt 1 2)) (openShape))))",
     "m_dOutlineWidth", "1"},
    {"(surface (geometry (s) (s (outlineWidth 2.0))))", "m_dOutlineWidth", "0"},
    {"(surface (geometry (s) (s (vertex (pt 1 2)) (openShape))))", "m_pVertices", "[]"},
    {"(surface (geometry (s) (s (vertex (pt 1 2)) (openShape))))", "m_pOpenShapes", "[]"},
    // neither level wins as such: the later one does
    {"(surface (outlineWidth 2.0) (geometry (s (outlineWidth 1.0))))", "m_dOutlineWidth", "1"},
    {"(surface (geometry (s (outlineWidth 1.0))) (outlineWidth 2.0))", "m_dOutlineWidth", "2"},
    {"(surface (fillWidth 2.0) (geometry (s (fillWidth 1.0))))", "m_dFillWidth", "1"},
    {"(surface (geometry (s (fillWidth 1.0))) (fillWidth 2.0))", "m_dFillWidth", "2"},
    {"(surface (fillAngle 2) (geometry (s (fillAngle 1))))", "m_dFillAngle", "1"},
    {"(surface (geometry (s (fillAngle 1))) (fillAngle 2))", "m_dFillAngle", "2"},
    {"(surface (geometry (s (fillWidth 1.0) (vertex (pt 1.0 1.0)))) (geometry (t (vertex (pt 2.0 2.0)))))",
     "m_dFillWidth", "1"},
    {"(surface (geometry (s (vertex (pt 1.0 1.0)))) (geometry (t (vertex (pt 2.0 2.0)))))", "m_pVertices/1/m_pt",
     "(2,2)"},
    // what the inner level does not know
    {"(surface (geometry (s (net) (lowerHeight) (upperHeight) (geometry))))", "m_sNet", "''"},
    {"(surface (geometry (s (net A) (lowerHeight 1.0) (upperHeight 2.0))))", "m_sNet", "''"},
    {"(surface (geometry (s (net A) (lowerHeight 1.0) (upperHeight 2.0))))", "m_dLowerHeight", "0"},
    {"(surface (geometry (s (net A) (lowerHeight 1.0) (upperHeight 2.0))))", "m_dUpperHeight", "0"},
    {"(surface (geometry (s (geometry (t (outlineWidth 3.0) (vertex (pt 1 2)))))))", "m_dOutlineWidth", "0"},
    {"(surface (geometry (s (geometry (t (vertex (pt 1 2)))))))", "m_pVertices", "[]"},
    // mesh keys and those of a sub-mesh have their own levels
    {"(meshplane (geometry (m (submeshplane (meshParamPitch 3.0) (meshParamShape)))))", "m_dParamPitch", "0"},
    {"(meshplane (geometry (m (submeshplane (meshParamPitch 3.0) (meshParamShape)))))", "m_bSubmesh", "1"},
    {"(meshplane (geometry (m (meshParamPitch 1.0) (submeshplane (submeshparameter (meshPitch 2.0))))))",
     "m_dMeshPitch", "0"},
    {"(meshplane (geometry (m (meshParamPitch 1.0) (submeshplane (submeshparameter (meshPitch 2.0))))))",
     "m_dParamPitch", "0"},
    // flags are whole numbers without units
    {"(meshplane (geometry (m (meshFlags 12.7 -1 200000 \"\"))))", "m_arrMeshFlags", "[12,-1,200000,0,]"},
    {"(meshplane (geometry (m (meshFlags (pt 1) 5))))", "m_arrMeshFlags", "[5,]"},
    {"(meshplane (geometry (m (submeshplane (submeshparameter (meshParamFlags))))))", "m_arrParamFlags", "[]"},

    // names of pads and padstacks
    {"(pad 12.50 MORE)", "m_sPadName", "'12.50'"},
    {"(fPad \"a b\")", "m_sPadName", "'a b'"},
    {"(pad \"\")", "m_sPadName", "''"},
    {"(padstack 12.50 MORE)", "m_sPadstackName", "'12.50'"},
    {"(padstack \"\")", "m_sPadstackName", "''"},
    {"(padstack V (padstackGroup (other X) (padstack V2) (padstack V3)))", "m_sPadstackName", "'V2'"},
    {"(padstack V (padstackGroup (padstack V2)) (padstackGroup (padstack V3)))", "m_sPadstackName", "'V3'"},
    // the side of the padstack and that of its test pad are one field
    {"(padstack V (isTestPad (side B)) (side A))", "m_sSide", "'A'"},
    {"(padstack V (isTestPad NO (side B)))", "m_sSide", "'B'"},
    // a span is whole numbers
    {"(padstack V (fromTo 2.9))", "m_nTo", "2"},
    {"(padstack V (fromTo 200000 -1.5))", "m_nFrom", "200000"},
    {"(padstack V (fromTo 200000 -1.5))", "m_nTo", "-1"},
    {"(padstack V (fromTo (x) 5))", "m_nTo", "5"},
    {"(fpadstack (fromTo 2 5))", "m_nFrom", "2"},
    // entries of a padstack
    {"(padstack V (conductive (layerNumber 2.9 7)))", "m_pRefLays/0/m_nLayerNumber", "2"},
    {"(padstack V (conductive (layerNumber 200000)))", "m_pRefLays/0/m_nLayerNumber", "200000"},
    {"(padstack V (conductive (layer 12.50 X)))", "m_pRefLays/0/m_sLayerName", "'12.50'"},
    {"(padstack V (conductive (layer \"\" (geometry (circle 1)))))", "m_pShapes/0/m_sLayerName", "''"},
    {"(padstack V (conductive (layerNumber 2 (visible NO) (visible))))", "m_pRefLays/0/m_bVisible", "1"},
    {"(padstack V (conductive (foo (visible))))", "m_pRefLays/0/m_bVisible", "1"},
    {"(padstack V (conductive (foo (visible NO))))", "m_pRefLays/0/m_bVisible", "1"},
    {"(padstack V (conductive (layer A (visible YES) (visible))))", "m_pRefLays/0/m_bVisible", "1"},
    {"(padstack V (conductive (layerNumber 2 (geometry (circle 1.0)) (geometry (oval) (circle)))))", "m_pShapes/1",
     "absent"},
    {"(fpadstack (conductive (layerNumber 2) (layer L (visible NO))))", "m_pRefLays/1/m_bVisible", "0"},

    // of a text the geometry alone is looked at, and in it the first text
    {"(text (font 7) (geometry (text (kFont 3))))", "m_nFont", "0"},
    {"(text (geometry (text (font 1)) (text (font 2))))", "m_nFont", "1"},
    {"(text (geometry (width) (width 1.0) (text)))", "m_dWidth", "0"},
    {"(text (geometry (text (string old) (string \"\" (A)))))", "m_sString", "''"},
    {"(text (geometry (text (string (100%n%s)))))", "m_sString", "'(100%n%s)'"},
    {"(text (geometry (text (string ((B))))))", "m_sString", "'()'"},
    {"(symbolText (font 7) (geometry (text (string A))))", "m_pText/m_nFont", "0"},
    {"(symbolText (geometry (text (string A)) (text (string B))))", "m_pText/m_sString", "'A'"},
    {"(symbolText (geometry (text (string A))) (geometry (text (string B) (font 2))))", "m_pText/m_sString", "'B'"},
    {"(symbolText (geometry (text (string A))) (geometry (text (font 2))))", "m_pText/m_sString", "'A'"},
    {"(symbolText (geometry (what (string A))))", "m_pText/m_sString", "''"},
    {"(symbolText (geometry (text (string A))))", "m_pText/m_sLayerType", "''"},
    {"(symbolText (geometry (text (string A))))", "m_pText/m_bRefer", "0"},
    {"(symbolText (type REF))", "m_sSymbolType", "''"},
};

TEST(Read, FormsAsTheyStand) {
  Boxes boxes;
  for (const FormCase& c : kForms) {
    const auto shape = ReadAny(c.text);
    ASSERT_NE(shape, nullptr) << c.text;
    EXPECT_EQ(At(*shape, c.path), c.value) << c.text << " " << c.path;
  }
  EXPECT_EQ(boxes.texts, std::vector<std::string>());
}

// The line that a fault tells, or 0 when there is none.
int FaultLine(const std::string& text) {
  try {
    ReadAny(text);
  } catch (const CInvalidArgException& e) {
    return e.m_nLine;
  }
  return 0;
}

TEST(Read, AFaultTellsItsLine) {
  EXPECT_EQ(FaultLine("(line\n(vertex\n(pt 1 2)\n(pt 1)\n)\n)"), 4);
  EXPECT_EQ(FaultLine("(surface\n(openShape (vertex (pt 1 2)))\n(openShape (vertex (pt 1 2)\n(pt 3))))"), 4);
  EXPECT_EQ(FaultLine("(pad P\n(geometry\n(boardAssembly)))"), 3);
}

// Look-ups by name go by the table's order, not the file's.
TEST(Read, LookUpsOfALineStandInTheirOrder) {
  EXPECT_EQ(FaultLine("(line (geometry (line\n(dashLine (dash))\n(type)\n(vertex (pt))\n(penShape))))"), 5);
  EXPECT_EQ(FaultLine("(line (geometry (line\n(dashLine (dash))\n(type)\n(vertex (pt)))))"), 4);
  EXPECT_EQ(FaultLine("(line (geometry (line\n(dashLine (dash))\n(type))))"), 3);
  EXPECT_EQ(FaultLine("(line (geometry (line (dashLine\n(blank)\n(dash)))))"), 3);
}

// A length is what the C library makes of its text, divided where there is no point in it, to the last bit.
TEST(Read, LengthsAreThoseOfTheCLibrary) {
  const auto same = [](const std::string& text) {
    const double d = std::strtod(text.c_str(), nullptr);
    const double dWanted = text.find('.') == std::string::npos ? d / 100000.0 : d;
    const double dLength = laminate::LengthOf(text);
    return std::bit_cast<std::uint64_t>(dLength) == std::bit_cast<std::uint64_t>(dWanted);
  };
  for (const char* sz : {"",
                         "-",
                         "-.",
                         ".",
                         "-.5",
                         "1.",
                         "-0",
                         "-0.0",
                         "1.2.3",
                         "12-3",
                         "+1.5",
                         " 1.5",
                         "--1",
                         "- 1",
                         "999999999999999",
                         "9999999999999999",
                         "99999999999999",
                         "0.1234567890123",
                         "0.12345678901234",
                         "-0.123456789012",
                         "123456789012.34",
                         "0x10",
                         "0x1.8p1",
                         "inf",
                         "nan",
                         "-inf",
                         "1e5",
                         "1.e5",
                         "00000000000.1",
                         "18446744073709551616",
                         "0.000000000000001",
                         "4.9e-324",
                         "1e400"}) {
    EXPECT_TRUE(same(sz)) << sz;
  }
  static constexpr char kBytes[] = "00112233445566778899....--+ex ";
  std::mt19937 random(7);
  int nDiffer = 0;
  std::string text;
  for (int i = 0; i < 2000000 && nDiffer < 10; ++i) {
    text.resize(random() % 21);
    // Half of them well formed.
    const bool bNumber = random() % 2 == 0;
    for (char& ch : text) ch = bNumber ? kBytes[random() % 20] : kBytes[random() % (sizeof kBytes - 1)];
    if (bNumber && !text.empty()) {
      text[random() % text.size()] = '.';
      if (random() % 2 == 0) text[0] = '-';
    }
    if (!same(text)) {
      ADD_FAILURE() << "'" << text << "'";
      ++nDiffer;
    }
  }
}

TEST(Read, NullSlotsInATreeAreNotThere) {
  CECadClsLvl node;
  node.m_sName = "hole";
  node.m_pChildren->Add(nullptr);
  EXPECT_EQ(laminate::ReadDrawObj(node, OnLayer3())->m_sKind, "HOLE");
  auto* pGeometry = new CECadClsLvl;
  pGeometry->m_sName = "geometry";
  pGeometry->m_pChildren->Add(nullptr);
  node.m_pChildren->Add(pGeometry);
  EXPECT_THROW(laminate::ReadDrawObj(node, OnLayer3()), CInvalidArgException);
  for (const char* sz : {"surface", "line", "symbolText", "ovalHole", "squareHole"}) {
    node.m_sName = sz;
    EXPECT_THROW(laminate::ReadDrawObj(node, OnLayer3()), CInvalidArgException) << sz;
  }
  node.m_sName = "pad";
  node.m_arrValues.Add("P");
  EXPECT_EQ(laminate::ReadDrawObj(node, OnLayer3())->m_sKind, "DRAWPAD");
}

TEST(Read, SkippedFormsLeaveNoSlots) {
  // A thousand points and a thousand forms between them that are none.
  std::string text = "(line (vertex";
  for (int i = 0; i < 1000; ++i) text += " (pt 1 2) (skip)";
  const auto line = Read<CBDline>(text + "))");
  EXPECT_EQ(line->m_pVertices->GetSize(), 1000);
  for (const CBDvertex* p : *line->m_pVertices) EXPECT_NE(p, nullptr);
}

// Far above what a linear reading takes of 60000 forms, far below what a quadratic one does.
TEST(Read, ManyFormsTakeLinearTime) {
  struct Case {
    const char* begin;
    const char* form;
    const char* end;
    const char* path;  // of the array that they fill
  };
  const Case cases[] = {
      {"(line", " (vertex (pt 0 0))", ")", "m_pVertices"},
      {"(line (vertex", " (pt 0 0) (skip)", "))", "m_pVertices"},
      {"(surface", " (vertex (pt 0 0))", ")", "m_pVertices"},
      {"(surface", " (geometry (s (vertex (pt 0 0))))", ")", "m_pVertices"},
      {"(surface", " (openShape)", ")", "m_pOpenShapes"},
      {"(surface (openShape", " (vertex (pt 0 0))", "))", "m_pOpenShapes/0/m_pVertices"},
      {"(meshplane (geometry (m", " (meshFlags 1)", ")))", "m_arrMeshFlags"},
      {"(meshplane (geometry (m (submeshplane", " (submeshparameter (meshParamFlags 1))", "))))", "m_arrParamFlags"},
      {"(padstack V (conductive", " (layerNumber 1)", "))", "m_pRefLays"},
      {"(padstack V", " (conductive (layerNumber 1))", ")", "m_pRefLays"},
      {"(padstack V (conductive (layerNumber 1 (geometry", " (delete)", "))))", "m_pShapes"},
      {"(pad P", " (geometry (delete))", ")", "m_pShapes"}};
  constexpr std::size_t kCount = 60000;
  for (const Case& c : cases) {
    std::string text = c.begin;
    for (std::size_t i = 0; i < kCount; ++i) text += c.form;
    const Tree tree(text + c.end);
    const std::clock_t begin = std::clock();
    const auto shape = laminate::ReadDrawObj(tree.Node(), OnLayer3());
    EXPECT_LT(static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC, 3) << c.begin << c.form;
    EXPECT_GE(At(*shape, c.path).size(), kCount) << c.begin << c.form;
  }
}

}  // namespace
