// Every table by which shapes are read, row by row: what a second reader of the same tables can rely on.
#include <gtest/gtest.h>

#include "drawobj/DrawObjTestSupport.h"
#include "drawobj/Fields.h"
#include "drawobj/ShapeGrammar.h"

namespace {

using laminate::Conversion;

struct Wanted {
  const char* key;
  Conversion conversion;
  const char* field;
};

// Rows as they must stand.
template <class T>
void Expect(const laminate::FormView<T>& form, const char* szName, const std::vector<Wanted>& wanted) {
  EXPECT_EQ(form.name, szName);
  ASSERT_EQ(form.rows.size(), wanted.size()) << szName;
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    EXPECT_EQ(form.rows[i].key, wanted[i].key) << szName;
    EXPECT_EQ(static_cast<int>(form.rows[i].conversion), static_cast<int>(wanted[i].conversion))
        << szName << " " << wanted[i].key;
    // A member of a base is spelled with the base's name.
    std::string_view field = form.rows[i].field;
    if (field.substr(0, 1) == "&") field.remove_prefix(field.find("::") + 2);
    EXPECT_EQ(field, wanted[i].field) << szName << " " << wanted[i].key;
  }
}

template <class T>
void ExpectAll(const char* szClass, const std::vector<std::pair<const char*, std::vector<Wanted>>>& wanted,
               const std::vector<laminate::FormView<T>>& forms = laminate::Grammar<T>()) {
  ASSERT_EQ(forms.size(), wanted.size()) << szClass;
  for (std::size_t i = 0; i < wanted.size(); ++i) Expect(forms[i], wanted[i].first, wanted[i].second);
}

using enum Conversion;

TEST(Grammar, Keywords) {
  ExpectAll<laminate::MadeShape>("", {{"kShapes",
                                       {{"basePoint", skip, ""},
                                        {"boardAssembly", object, "CBDdrawSubBoard"},
                                        {"circle", object, "CBDcircle"},
                                        {"delete", object, "CBDdelete"},
                                        {"dimension", skip, ""},
                                        {"dimLeader", skip, ""},
                                        {"donut", object, "CBDdonut"},
                                        {"hole", object, "CBDhole"},
                                        {"line", object, "CBDline"},
                                        {"shieldLine", object, "CBDline"},
                                        {"oblong", object, "CBDoblong"},
                                        {"oval", object, "CBDoval"},
                                        {"ovalHole", object, "CBDovalHole"},
                                        {"pad", object, "CBDdrawPad"},
                                        {"fPad", object, "CBDdrawPad"},
                                        {"padstack", object, "CBDdrawPadstack"},
                                        {"fpadstack", object, "CBDdrawPadstack"},
                                        {"rectangle", object, "CBDrectangle"},
                                        {"roundThermal", object, "CBDroundThermal"},
                                        {"squareHole", object, "CBDsquareHole"},
                                        {"squareThermal", object, "CBDsquareThermal"},
                                        {"area", object, "CBDsurface"},
                                        {"surface", object, "CBDsurface"},
                                        {"meshplane", object, "CBDsurface"},
                                        {"symbolText", object, "CBDsymbolText"},
                                        {"text", object, "CBDtext"},
                                        {"ruleArea", skip, ""},
                                        {"drawOf", skip, ""},
                                        {"cavityFrom", skip, ""},
                                        {"cavityTo", skip, ""}}}});
}

TEST(Grammar, SimpleShapes) {
  ExpectAll<CBDcircle>(
      "CBDcircle", {{"kCircleTokens", {{"circle", length, "m_dRadius"}}}, {"kCircle", {{"pt", point, "m_ptCenter"}}}});
  ExpectAll<CBDdonut>("CBDdonut",
                      {{"kDonut", {{"in", length, "m_dIn"}, {"out", length, "m_dOut"}, {"pt", point, "m_pt"}}}});
  ExpectAll<CBDhole>("CBDhole", {{"kHole",
                                  {{"fromTo", integerPair, "m_nFrom"},
                                   {"drillType", text, "m_sDrillType"},
                                   {"holeType", integer, "m_nHoleType"},
                                   {"geometry", firstForm, "kHoleGeometry"}}},
                                 {"kHoleGeometry", {{"circle", custom, "m_pShape"}}}});
  ExpectAll<CBDline>("CBDline", {{"kLine",
                                  {{"net", text, "m_sNet"},
                                   {"penShape", text, "m_sPenShape"},
                                   {"thermalData", text, "m_sThermalData"},
                                   {"vertex", objects, "m_pVertices"},
                                   {"geometry", firstForm, "kLineGeometry"}}},
                                 {"kLineGeometry",
                                  {{"penShape", text, "m_sPenShape"},
                                   {"vertex", objects, "m_pVertices"},
                                   {"type", text, "m_sLineType"},
                                   {"dashLine", formByName, "kDashLine"}}},
                                 {"kDashLine", {{"dash", real, "m_dDash"}, {"blank", real, "m_dBlank"}}}});
  ExpectAll<CBDoblong>("CBDoblong", {{"kOblong", {{"width", length, "m_dWidth"}, {"pt", pointSequence, "m_ptFirst"}}}});
  ExpectAll<CBDoval>("CBDoval", {{"kOval",
                                  {{"pt", point, "m_pt"},
                                   {"width", length, "m_dWidth"},
                                   {"height", length, "m_dHeight"},
                                   {"ovalAngle", real, "m_dAngle"}}}});
  ExpectAll<CBDovalHole>(
      "CBDovalHole",
      {{"kOvalHole", {{"holeType", integer, "m_nHoleType"}, {"geometry", firstForm, "kOvalHoleGeometry"}}},
       {"kOvalHoleGeometry", {{"oval", form, "kInnerOval"}}},
       {"kInnerOval",
        {{"pt", point, "m_pt"},
         {"width", length, "m_dWidth"},
         {"height", length, "m_dHeight"},
         {"ovalAngle", real, "m_dAngle"}}}});
  ExpectAll<CBDrectangle>("CBDrectangle", {{"kRectangle",
                                            {{"pt", point, "m_pt"},
                                             {"width", length, "m_dWidth"},
                                             {"height", length, "m_dHeight"},
                                             {"rAngle", real, "m_dAngle"},
                                             {"outlineWidth", length, "m_dOutlineWidth"},
                                             {"fillWidth", length, "m_dFillWidth"},
                                             {"fillAngle", real, "m_dFillAngle"}}}});
  ExpectAll<CBDroundThermal>("CBDroundThermal", {{"kRoundThermal",
                                                  {{"pt", point, "m_pt"},
                                                   {"out", length, "m_dOut"},
                                                   {"in", length, "m_dIn"},
                                                   {"nBridge", integer, "m_nBridge"},
                                                   {"bridgeWidth", length, "m_dBridgeWidth"},
                                                   {"bridgeAngle", integer, "m_nBridgeAngle"}}}});
  ExpectAll<CBDsquareThermal>("CBDsquareThermal", {{"kSquareThermal",
                                                    {{"pt", point, "m_pt"},
                                                     {"out", length, "m_dOut"},
                                                     {"in", length, "m_dIn"},
                                                     {"nBridge", integer, "m_nBridge"},
                                                     {"bridgeWidth", length, "m_dBridgeWidth"},
                                                     {"bridgeAngle", real, "m_dBridgeAngle"}}}});
  ExpectAll<CBDsquareHole>("CBDsquareHole", {{"kSquareHole",
                                              {{"pt", point, "m_pt"},
                                               {"width", length, "m_dWidth"},
                                               {"height", length, "m_dHeight"},
                                               {"holeAngle", real, "m_dAngle"},
                                               {"r", length, "m_dCorner"},
                                               {"geometry", custom, "the result in place of this shape"}}}});
}

TEST(Grammar, Vertices) {
  ExpectAll<CBDvertexArray>("CBDvertexArray",
                            {{"kVertex", {{"pt", custom, "a CBDvertexPt"}, {"arc", custom, "a CBDvertexArc"}}}});
  ExpectAll<CBDvertexPt>(
      "CBDvertexPt",
      {{"kPointTokens", {{"pt", point, "m_pt"}}},
       {"kPoint", {{"width", length, "m_dWidth"}, {"tarc", formByName, "kTarc"}, {"fillet", form, "kFillet"}}},
       {"kTarc", {{"r", length, "m_dTarc"}}}});
  ExpectAll<CBDfillet>("CBDfillet", {{"kFillet",
                                      {{"filletWidth", length, "m_dFilletWidth"},
                                       {"length", length, "m_dLength"},
                                       {"width", length, "m_dWidth"},
                                       {"dir", text, "m_sDir"},
                                       {"type", text, "m_sType"}}}});
  ExpectAll<CBDvertexArc>(
      "CBDvertexArc",
      {{"kArcTokens", {{"arc", text, "m_sDirection"}}},
       {"kArc",
        {{"r", length, "m_dR"}, {"begin", form, "kBegin"}, {"center", point, "m_ptCenter"}, {"end", form, "kEnd"}}},
       {"kBegin", {{"pt", point, "m_ptBegin"}}},
       {"kBeginWidth", {{"width", length, "m_dBeginWidth"}}},
       {"kEnd", {{"pt", point, "m_ptEnd"}}},
       {"kEndWidth", {{"width", length, "m_dEndWidth"}}}});
}

TEST(Grammar, Surfaces) {
  ExpectAll<CBDopenShape>(
      "CBDopenShape",
      {{"kOpenShape", {{"outlineWidth", length, "m_dOutlineWidth"}, {"vertex", objects, "m_pVertices"}}}});
  ExpectAll<CBDsurface>("CBDsurface", {{"kSurfaceKeyword", {{"meshplane", setFlag, "m_bMesh"}}},
                                       {"kSurface",
                                        {{"lowerHeight", length, "m_dLowerHeight"},
                                         {"upperHeight", length, "m_dUpperHeight"},
                                         {"net", text, "m_sNet"},
                                         {"outlineWidth", length, "m_dOutlineWidth"},
                                         {"fillWidth", length, "m_dFillWidth"},
                                         {"fillAngle", real, "m_dFillAngle"},
                                         {"vertex", objects, "m_pVertices"},
                                         {"openShape", custom, "m_pOpenShapes; kOpenShape"},
                                         {"geometry", firstForm, "kInnerSurface"}}},
                                       {"kInnerSurface",
                                        {{"outlineWidth", length, "m_dOutlineWidth"},
                                         {"fillWidth", length, "m_dFillWidth"},
                                         {"fillAngle", real, "m_dFillAngle"},
                                         {"alreadySpread", setFlag, "m_bAlreadySpread"},
                                         {"vertex", objects, "m_pVertices"},
                                         {"openShape", custom, "m_pOpenShapes; kOpenShape"},
                                         {"meshBasePoint", firstChildPoint, "m_ptMeshBase"},
                                         {"meshRotatePoint", firstChildPoint, "m_ptMeshRotate"},
                                         {"meshPitch", length, "m_dMeshPitch"},
                                         {"meshShape", text, "m_sMeshShape"},
                                         {"meshShapeDiameter", length, "m_dMeshShapeDiameter"},
                                         {"meshArrangeType", text, "m_sMeshArrangeType"},
                                         {"meshAngle", real, "m_dMeshAngle"},
                                         {"meshFigureAngle", real, "m_dMeshFigureAngle"},
                                         {"meshWindowClearance", length, "m_dMeshWindowClearance"},
                                         {"meshFigureClearance", length, "m_dMeshFigureClearance"},
                                         {"meshOutlineClearance", length, "m_dMeshOutlineClearance"},
                                         {"meshFlags", integers, "m_arrMeshFlags"},
                                         {"meshFlagXCount", integer, "m_nMeshFlagXCount"},
                                         {"submeshplane", form, "m_bSubmesh"}}},
                                       {"kSubmeshplane", {{"submeshparameter", form, "kSubmeshParameter"}}},
                                       {"kSubmeshParameter",
                                        {{"meshParamBasePoint", firstChildPoint, "m_ptParamBase"},
                                         {"meshParamRotatePoint", firstChildPoint, "m_ptParamRotate"},
                                         {"meshParamPitch", length, "m_dParamPitch"},
                                         {"meshParamShape", text, "m_sParamShape"},
                                         {"meshParamShapeDiameter", length, "m_dParamShapeDiameter"},
                                         {"meshParamArrangeType", text, "m_sParamArrangeType"},
                                         {"meshParamAngle", real, "m_dParamAngle"},
                                         {"meshParamFigureAngle", real, "m_dParamFigureAngle"},
                                         {"meshParamWindowClearance", length, "m_dParamWindowClearance"},
                                         {"meshParamFigureClearance", length, "m_dParamFigureClearance"},
                                         {"meshParamOutlineClearance", length, "m_dParamOutlineClearance"},
                                         {"meshParamFlags", integers, "m_arrParamFlags"},
                                         {"meshParamFlagXCount", integer, "m_nParamFlagXCount"}}}});
}

TEST(Grammar, PadsAndPadstacks) {
  ExpectAll<CBDdrawPad>("CBDdrawPad", {{"kPadTokens", {{"pad", text, "m_sPadName"}, {"fPad", text, "m_sPadName"}}},
                                       {"kPad",
                                        {{"pt", point, "m_pt"},
                                         {"angle", real, "m_dAngle"},
                                         {"net", text, "m_sNet"},
                                         {"geometry", objects, "m_pShapes"}}}});
  const char* const szSection = "m_pRefLays, m_pShapes; kEntryTokens, kEntry";
  ExpectAll<CBDdrawPadstack>("CBDdrawPadstack", {{"kPadstackTokens", {{"padstack", text, "m_sPadstackName"}}},
                                                 {"kPadstack",
                                                  {{"net", text, "m_sNet"},
                                                   {"pt", point, "m_pt"},
                                                   {"angle", real, "m_dAngle"},
                                                   {"fromTo", custom, "m_nFrom, m_nTo"},
                                                   {"side", text, "m_sSide"},
                                                   {"flip", text, "m_sFlip"},
                                                   {"isBuildupVia", text, "m_sBuildupVia"},
                                                   {"isTestPad", formByName, "kTestPad"},
                                                   {"drillType", optionalInteger, "m_nDrillType"},
                                                   {"conductive", custom, szSection},
                                                   {"nonConductive", custom, szSection},
                                                   {"padstackGroup", formByName, "kPadstackGroup"}}},
                                                 {"kTestPad", {{"side", text, "m_sSide"}}},
                                                 {"kPadstackGroup", {{"padstack", text, "m_sPadstackName"}}}});
  ExpectAll<CBDpadstackRefLay>(
      "CBDpadstackRefLay",
      {{"kEntryTokens",
        {{"layerNumber", custom, "m_nLayerNumber, and the layer of what follows"},
         {"layer", custom, "m_sLayerName, and the layer of what follows; kNamedLayer"}}},
       {"kNamedLayer", {{"visible", custom, "m_bVisible"}}},
       {"kEntry", {{"status", text, "m_sStatus"}, {"geometry", custom, "the padstack's m_pShapes"}}}});
  ExpectAll<CBDdrawSubBoard>("CBDdrawSubBoard", {{"kBoardAssembly",
                                                  {{"subBoard", integer, "m_nSubBoard"},
                                                   {"angle", real, "m_dAngle"},
                                                   {"pt", point, "m_pt"},
                                                   {"flip", text, "m_sFlip"},
                                                   {"geometry", custom, "the board's shapes"}}}});
}

TEST(Grammar, Texts) {
  const auto rows = [](Conversion ofString, Conversion ofText, Conversion ofOffset) {
    return std::vector<Wanted>{{"string", ofString, "m_sString"},
                               {"font", integer, "m_nFont"},
                               {"kFont", integer, "m_nKFont"},
                               {"width", length, "m_dWidth"},
                               {"height", length, "m_dHeight"},
                               {"space", length, "m_dSpace"},
                               {"vSpace", length, "m_dVSpace"},
                               {"strokeWidth", length, "m_dStrokeWidth"},
                               {"pt", point, "m_pt"},
                               {"textAngle", real, "m_dAngle"},
                               {"dir", text, "m_sDir"},
                               {"justify", ofText, "m_sJustify"},
                               {"flip", ofText, "m_sFlip"},
                               {"reverse", ofText, "m_sReverse"},
                               {"textFrameOffset", ofOffset, "m_dTextFrameOffset"}};
  };
  ExpectAll<CBDtext>("CBDtext", {{"kText", {{"geometry", formByName, "kTextGeometry"}}},
                                 {"kTextGeometry", {{"text", form, "kInnerText"}}},
                                 {"kInnerText", rows(custom, text, length)}});
  ExpectAll<CBDsymbolText>(
      "CBDsymbolText",
      {{"kSymbolText",
        {{"symbolTextType", text, "m_sSymbolType"}, {"font", skip, ""}, {"geometry", firstForm, "kSymbolGeometry"}}},
       {"kSymbolGeometry", {{"text", form, "kSymbolInnerText"}}}});
  ExpectAll<CBDtext>("CBDtext", {{"kSymbolInnerText", rows(text, optionalText, optionalLength)}},
                     laminate::SymbolTextGrammar());
}

// ---- the second reader ----

// Puts out what it is shown, a line per row.
class Lines : public laminate::RowVisitor {
 public:
  std::string text;
  void OnLength(std::string_view key, double d) override { Line(key, "L" + Text(d)); }
  void OnReal(std::string_view key, double d) override { Line(key, Text(d)); }
  void OnInteger(std::string_view key, int n) override { Line(key, Text(n)); }
  void OnText(std::string_view key, const CString& s) override { Line(key, Text(s)); }
  void OnPoint(std::string_view key, const CPointD& pt) override { Line(key, Text(pt)); }
  void OnIntegers(std::string_view key, const CArrayN& n) override { Line(key, Text(n)); }
  void OnTexts(std::string_view key, const CStringArray&) override { Line(key, "texts"); }
  void OnFlag(std::string_view key, int n) override { Line(key, Text(n)); }
  void OnForm(std::string_view key) override { text += std::string(key) + "{"; }
  void OnFormEnd() override { text += "}"; }

 private:
  void Line(std::string_view key, const std::string& s) { text += std::string(key) + "=" + s + ";"; }
};

template <class T>
std::string Shown(const T& object, const laminate::FormView<T>& form) {
  Lines lines;
  for (const auto& row : form.rows) {
    if (row.show != nullptr) row.show(row.key, object, lines);
  }
  return lines.text;
}

TEST(Grammar, RowsShowWhatTheyRead) {
  const auto hole =
      Read<CBDovalHole>("(ovalHole (holeType 3) (geometry (oval (pt 1.0 2.0) (width 3.0) (ovalAngle 45))))");
  EXPECT_EQ(Shown(*hole, laminate::Grammar<CBDovalHole>()[0]),
            "holeType=3;geometry{oval{pt=(1,2);width=L3;height=L0;ovalAngle=45;}}");
  const auto oblong = Read<CBDoblong>("(oblong (width 1.0) (pt 1.0 2.0) (pt 3.0 4.0))");
  EXPECT_EQ(Shown(*oblong, laminate::Grammar<CBDoblong>()[0]), "width=L1;pt=(1,2);pt=(3,4);");
  const auto line = Read<CBDline>(
      "(line (net N) (vertex (pt 1.0 2.0 (width 0.5) (tarc ON (r 0.25)) (fillet (filletWidth 0.75) (dir D)))) "
      "(geometry "
      "(line (type T) (dashLine (dash 1) (blank 2)))))");
  EXPECT_EQ(Shown(*line, laminate::Grammar<CBDline>()[0]),
            "net='N';penShape='';thermalData='';geometry{line{penShape='';type='T';dashLine{dash=1;blank=2;}}}");
  EXPECT_EQ(Shown(*line, laminate::Grammar<CBDline>()[1]), "penShape='';type='T';dashLine{dash=1;blank=2;}");
  EXPECT_EQ(Shown(static_cast<const CBDvertexPt&>(*line->m_pVertices->GetAt(0)), laminate::Grammar<CBDvertexPt>()[1]),
            "width=L0.5;tarc{r=L0.25;}fillet{filletWidth=L0.75;length=L0;width=L0;dir='D';type='';}");
  const auto mesh = Read<CBDsurface>(
      "(meshplane (geometry (m (meshBasePoint (pt 1.0 2.0)) (meshFlags 1 0) (submeshplane (submeshparameter "
      "(meshParamPitch 2.0))))))");
  const std::string inner = Shown(*mesh, laminate::Grammar<CBDsurface>()[2]);
  EXPECT_NE(inner.find("meshBasePoint{pt=(1,2);}"), std::string::npos);
  EXPECT_NE(inner.find("meshFlags=[1,0,];"), std::string::npos);
  const std::string outer = Shown(*mesh, laminate::Grammar<CBDsurface>()[1]);
  EXPECT_EQ(outer.find("geometry{surface{outlineWidth=L0;"), outer.find("geometry"));
  EXPECT_EQ(Shown(*Read<CBDhole>("(hole (fromTo 1 2) (drillType T))"), laminate::Grammar<CBDhole>()[0]),
            "fromTo=1;fromTo=2;drillType='T';holeType=0;geometry{}");
  const auto arc = Read<CBDline>(
      "(line (vertex (arc CW (r 1.5) (begin (pt 1.0 2.0 (width 0.5))) (center 3.0 4.0) (end (pt 5.0 6.0)))))");
  EXPECT_EQ(Shown(static_cast<const CBDvertexArc&>(*arc->m_pVertices->GetAt(0)), laminate::Grammar<CBDvertexArc>()[1]),
            "r=L1.5;begin{pt{pt=(1,2);width=L0.5;}}center=(3,4);end{pt{pt=(5,6);width=L0;}}");
  EXPECT_EQ(
      Shown(*Read<CBDtext>("(text (geometry (text (string (A B)))))"), laminate::Grammar<CBDtext>()[2]).substr(0, 13),
      "string='(A)';");
}

}  // namespace
