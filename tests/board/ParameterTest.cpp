#include "board/CBDparameter.h"

#include "board/BoardForms.h"
#include "board/CBDlayerParameter.h"
#include "board/CBDtextSize.h"
#include "board/CBDvisibleLayerSet.h"
#include "technology/RecordTestSupport.h"

namespace {

std::string Show(const CBDparameter& parameter) {
  std::string s;
  for (const CBDlayerParameter* p : *parameter.m_pLayerParameterArray) {
    s += "L " + Str(p->m_sLayerType) + "/" + Str(p->m_sLayerName) + "/" + std::to_string(p->m_nLayerNumber) + " " +
         std::to_string(p->m_nColorId) + " " + std::to_string(p->m_nPriority) + " " + Str(p->m_sDisplayMode) + " " +
         std::to_string(p->m_nHatchAngle) + " " + std::to_string(p->m_nHatchPitch) + " " + Str(p->m_sMrcMode) + ";";
  }
  for (const CBDvisibleLayerSet* p : *parameter.m_pVisibleLayerSetArray) {
    s += "V " + Str(p->m_sName) + " " + Str(p->m_aLayers) + ";";
  }
  for (const CBDtextSize* p : *parameter.m_pTextSizeArray) {
    s += "T";
    for (const int n : {p->m_nId, p->m_nWidth, p->m_nHeight, p->m_nSpace, p->m_nVSpace, p->m_nStrokeWidth}) {
      s += " " + std::to_string(n);
    }
    s += ";";
  }
  return s;
}

std::string Read(const CECadClsLvl& node) {
  CBDparameter parameter;
  laminate::ReadParameter(node, parameter);
  return Show(parameter);
}

std::string Layer(const std::string& s) { return "(parameter (layerParameters (layer " + s + ")))"; }
std::string Set(const std::string& s) { return "(parameter (visibleLayerSet (set " + s + ")))"; }
std::string Size(const std::string& s) { return "(parameter (textSizeParameters (textSize " + s + ")))"; }

TEST(ParameterReading, Sections) {
  CheckReading(
      {
          {"nothing", "(parameter)", ""},
          {"unknown", "(parameter (foo (layer)) (layer) (set) (textSize))", ""},
          {"other children", "(parameter (layerParameters (foo)) (visibleLayerSet (foo)) (textSizeParameters (foo)))",
           ""},
          {"in any order and repeated",
           "(parameter (textSizeParameters (textSize 1)) (layerParameters (layer)) (layerParameters (layer)) "
           "(visibleLayerSet (set A) (set B)))",
           "L //0 0 0  0 0 ;L //0 0 0  0 0 ;V A ;V B ;T 1 0 0 0 0 0;"},
      },
      Read);
}

TEST(ParameterReading, LayerParameters) {
  CheckReading(
      {
          {"the layer is not kept", Layer("(conductive 3) (colorId 1)"), "L //0 1 0  0 0 ;"},
          {"of no kind", Layer("(nonConductive S)"), "L //0 0 0  0 0 ;"},
          {"nor a system layer", Layer("(systemLayer (type H))"), "L //0 0 0  0 0 ;"},
          {"but must be named properly", Layer("(conductive)"), "raises \"conductive\" has no value 1"},
          {"by a name", Layer("(nonConductive)"), "raises \"nonConductive\" has no value 1"},
          {"by a type", Layer("(systemLayer (type))"), "raises \"type\" has no value 1"},
          {"by the first that is there", Layer("(conductive) (systemLayer)"), "L //0 0 0  0 0 ;"},
          {"draw and info layers count", Layer("(drawOf 1) (infoOf 2) (colorId 4)"), "L //0 4 0  0 0 ;"},
          {"all", Layer("(colorId 5) (priority 6) (displayMode FILL) (hatch (angle 30) (pitch 10)) (mrcMode ON)"),
           "L //0 5 6 FILL 30 10 ON;"},
          {"repeated", Layer("(colorId 5) (colorId 7) (hatch (angle 30)) (hatch (pitch 2))"), "L //0 7 0  30 2 ;"},
          {"hatch with nothing", Layer("(hatch 45 20)"), "L //0 0 0  0 0 ;"},
          {"first angle counts", Layer("(hatch (angle 30) (angle 40))"), "L //0 0 0  30 0 ;"},
          {"unknown", Layer("(dispMode FILL) (foo)"), "L //0 0 0  0 0 ;"},
          {"garbage", Layer("(colorId x) (priority 2.9)"), "L //0 0 2  0 0 ;"},
          {"no color", Layer("(colorId)"), "raises \"colorId\" has no value 1"},
          {"no priority", Layer("(priority)"), "raises \"priority\" has no value 1"},
          {"no mode", Layer("(displayMode)"), "raises \"displayMode\" has no value 1"},
          {"no angle", Layer("(hatch (angle))"), "raises \"angle\" has no value 1"},
          {"no pitch", Layer("(hatch (pitch))"), "raises \"pitch\" has no value 1"},
          {"no mrc mode", Layer("(mrcMode)"), "raises \"mrcMode\" has no value 1"},
      },
      Read);
}

TEST(ParameterReading, VisibleLayerSets) {
  CheckReading(
      {
          {"layers", Set("A (layer (conductive 2) (visible YES)) (layer (nonConductive S) (visible YES))"),
           "V A '2','S';"},
          {"invisible", Set("A (layer (conductive 2) (visible NO))"), "V A ;"},
          {"their header is not looked at", Set("A (layer (conductive) (visible NO))"), "V A ;"},
          {"only the word counts", Set("A (layer (conductive 2) (visible yes))"), "V A ;"},
          {"not said", Set("A (layer (conductive 2))"), "V A ;"},
          {"no layer", Set("A (layer (systemLayer) (visible YES)) (layer (visible YES))"), "V A '','';"},
          {"a system layer", Set("A (layer (systemLayer (type HOLE)) (visible YES))"), "V A 'HOLE';"},
          {"a number as it is written", Set("A (layer (conductive \"02\") (visible YES))"), "V A '02';"},
          {"the first word counts", Set("A (layer (conductive 2) (visible NO) (visible YES))"), "V A ;"},
          {"and no other", Set("A (layer (conductive 2) (visible YES) (visible NO))"), "V A '2';"},
          {"draw layers count", Set("A (layer (drawOf 1) (visible YES))"), "V A '';"},
          {"two sections", "(parameter (visibleLayerSet (set A)) (visibleLayerSet (set B)))", "V A ;V B ;"},
          {"other children", Set("A (foo (visible YES))"), "V A ;"},
          {"no name", Set(""), "raises \"set\" has no value 1"},
          {"visible without value", Set("A (layer (conductive 2) (visible))"), "raises \"visible\" has no value 1"},
          {"header without value", Set("A (layer (conductive) (visible YES))"), "raises \"conductive\" has no value 1"},
      },
      Read);
}

TEST(ParameterReading, TextSizes) {
  CheckReading(
      {
          {"all", Size("3 (width 250) (height 2) (space 3) (vSpace 4) (strokeWidth 5)"), "T 3 250 2 3 4 5;"},
          {"whole numbers", Size("3 (width 2.5) (height x)"), "T 3 2 0 0 0 0;"},
          {"repeated", Size("3 (width 1) (width 2)"), "T 3 2 0 0 0 0;"},
          {"unknown", Size("3 (vspace 1)"), "T 3 0 0 0 0 0;"},
          {"garbage number", Size("x"), "T 0 0 0 0 0 0;"},
          {"fractional number", Size("3.9"), "T 3 0 0 0 0 0;"},
          {"no number", Size(""), "raises \"textSize\" has no value 1"},
          {"no width", Size("3 (width)"), "raises \"width\" has no value 1"},
          {"no height", Size("3 (height)"), "raises \"height\" has no value 1"},
          {"no space", Size("3 (space)"), "raises \"space\" has no value 1"},
          {"no line space", Size("3 (vSpace)"), "raises \"vSpace\" has no value 1"},
          {"no stroke", Size("3 (strokeWidth)"), "raises \"strokeWidth\" has no value 1"},
      },
      Read);
}

TEST(ParameterReading, WhatStandsBeforeAFaultStays) {
  Tree tree("(parameter (textSizeParameters (textSize 1) (textSize)) (layerParameters (layer)))");
  CBDparameter parameter;
  EXPECT_NE("", RaisedBy([&] { laminate::ReadParameter(tree.Form(), parameter); }));
  EXPECT_EQ("T 1 0 0 0 0 0;", Show(parameter));
  Tree sets("(parameter (visibleLayerSet (set A (layer (conductive 1) (visible YES))) (set B (layer (visible)))))");
  EXPECT_NE("", RaisedBy([&] { laminate::ReadParameter(sets.Form(), parameter); }));
  EXPECT_EQ("V A '1';T 1 0 0 0 0 0;", Show(parameter));
}

TEST(ParameterReading, AnArrayMustBeThereForItsForms) {
  const auto raised = [](auto pArray, const std::string& input) {
    Tree tree(input);
    CBDparameter parameter;
    delete std::exchange(parameter.*pArray, nullptr);
    return RaisedBy([&] { laminate::ReadParameter(tree.Form(), parameter); });
  };
  EXPECT_NE("", raised(&CBDparameter::m_pLayerParameterArray, Layer("")));
  EXPECT_NE("", raised(&CBDparameter::m_pVisibleLayerSetArray, Set("A")));
  EXPECT_NE("", raised(&CBDparameter::m_pTextSizeArray, Size("1")));
  EXPECT_EQ("", raised(&CBDparameter::m_pTextSizeArray, "(parameter (textSizeParameters) (layerParameters (layer)))"));
}

// ---- writing ----

std::string PrintedSection(CBDparameter& parameter) {
  return Printed([&](std::FILE* fp) { return parameter.nPrint2File(fp, nullptr); });
}

const std::string kConstants = "(dispMode EMPTY)\n(hatch (angle 45) (pitch 20))\n(mrcMode OFF)\n";

TEST(ParameterWriting, NothingButLayers) {
  CBDparameter parameter;
  EXPECT_EQ("(parameter\n)\n", PrintedSection(parameter));
  parameter.m_pTextSizeArray->Add(new CBDtextSize);
  parameter.m_pVisibleLayerSetArray->Add(new CBDvisibleLayerSet);
  parameter.m_pLayerParameterArray->Add(nullptr);
  EXPECT_EQ("(parameter\n)\n", PrintedSection(parameter));
  parameter.m_pLayerParameterArray->Add(new CBDlayerParameter);
  parameter.m_pLayerParameterArray->GetAt(1)->m_sLayerType = "conductive";
  EXPECT_EQ(
      "(parameter\n(layerParameters\n(layer (conductive 0)\n(colorId 0)\n(priority 0)\n" + kConstants + ")\n)\n)\n",
      PrintedSection(parameter));
  EXPECT_NE("", RaisedBy([&] { parameter.nPrint2File(nullptr, nullptr); }));
  delete std::exchange(parameter.m_pLayerParameterArray, nullptr);
  EXPECT_EQ("(parameter\n)\n", PrintedSection(parameter));
}

TEST(ParameterWriting, LayerHeaders) {
  const struct {
    const char* type;
    const char* name;
    const char* header;
  } cases[] = {
      {"conductive", "x", "(layer (conductive 7)\n"},
      {"nonConductive", "S", "(layer (nonConductive S)\n"},
      {"nonConductive", "S(1)", "(layer (nonConductive \"S(1)\")\n"},
      {"nonConductive", "S 1", "(layer (nonConductive S 1)\n"},
      {"systemLayer", "H", "(layer (systemLayer (type H))\n"},
      {"systemLayer", "H)", "(layer (systemLayer (type \"H)\"))\n"},
      // Any other type gives no header, and the form's bracket is one too many.
      {"", "S", ""},
      {"Conductive", "S", ""},
  };
  for (const auto& [type, name, header] : cases) {
    CBDlayerParameter layer;
    layer.m_sLayerType = type;
    layer.m_sLayerName = name;
    layer.m_nLayerNumber = 7;
    layer.m_nColorId = 5;
    layer.m_nPriority = -6;
    EXPECT_EQ(header + ("(colorId 5)\n(priority -6)\n" + kConstants) + ")\n", Printed(layer));
  }
}

TEST(ParameterWriting, AfterARead) {
  Tree tree(Layer("(conductive 3) (colorId 5) (hatch (angle 30) (pitch 10)) (mrcMode ON) (displayMode X)"));
  CBDparameter parameter;
  laminate::ReadParameter(tree.Form(), parameter);
  // The layer's opening line is missing.
  EXPECT_EQ("(parameter\n(layerParameters\n(colorId 5)\n(priority 0)\n" + kConstants + ")\n)\n)\n",
            PrintedSection(parameter));
}

TEST(ParameterWriting, ForHostsOnly) {
  CBDvisibleLayerSet set;
  set.m_sName = "A B";
  set.m_aLayers.Add("1");
  EXPECT_EQ("(set A B\n)\n", Printed(set));
  CBDtextSize size;
  size.m_nId = 9;
  size.m_nWidth = 250;
  const auto printed = [&size](int nIndex) {
    return Printed([&](std::FILE* fp) { return size.nPrint2File(fp, nIndex); });
  };
  const std::string sizes =
      "(width 0.00000)\n(height 0.00000)\n(space 0.00000)\n(vSpace 0.00000)\n(strokeWidth 0.00000)\n)\n";
  EXPECT_EQ("(textSize 3)\n" + sizes, printed(2));
  EXPECT_EQ("(textSize 2147483648)\n" + sizes, printed(2147483647));
  EXPECT_EQ("(textSize 0)\n" + sizes, printed(-1));
}

TEST(ParameterWriting, NeedsAStream) {
  EXPECT_NE("", RaisedBy([] { CBDlayerParameter().nPrint2File(nullptr); }));
  EXPECT_NE("", RaisedBy([] { CBDvisibleLayerSet().nPrint2File(nullptr); }));
  EXPECT_NE("", RaisedBy([] { CBDtextSize().nPrint2File(nullptr, 0); }));
}

// A host that fills in the layers gets what loads again, but for the display mode, whose keyword is another when read.
TEST(ParameterWriting, LayersThatAHostFilledInReadBack) {
  CBDparameter parameter;
  const struct {
    const char* type;
    const char* name;
    int number;
  } layers[] = {{"conductive", "3", 3}, {"nonConductive", "S(1)", 0}, {"systemLayer", "H", 0}};
  for (const auto& [type, name, number] : layers) {
    auto* p = new CBDlayerParameter;
    p->m_sLayerType = type;
    p->m_sLayerName = name;
    p->m_nLayerNumber = number;
    p->m_nColorId = 5;
    p->m_nPriority = -6;
    p->m_sDisplayMode = "FILL";
    p->m_nHatchAngle = 30;
    p->m_nHatchPitch = 10;
    p->m_sMrcMode = "ON";
    parameter.m_pLayerParameterArray->Add(p);
  }
  Tree tree(PrintedSection(parameter));
  EXPECT_EQ(1, tree.Reader().m_pRootArray->GetSize());
  EXPECT_EQ("L //0 5 -6  45 20 OFF;L //0 5 -6  45 20 OFF;L //0 5 -6  45 20 OFF;", Read(tree.Form()));
}

// What of the settings is the host's alone.
std::string Reserved(const CBDparameter& p) {
  std::string s;
  for (const int n : p.m_aReserved1) s += std::to_string(n) + " ";
  s += Str(p.m_dReserved1) + " ";
  for (const int n : p.m_aReserved2) s += std::to_string(n) + " ";
  for (const CString* pText : {&p.m_sReserved1, &p.m_sReserved2, &p.m_sReserved3}) s += "'" + Str(*pText) + "' ";
  return s + std::to_string(p.m_nReserved1) + " '" + Str(p.m_sReserved4) + "'";
}

TEST(ParameterObjects, StartAsToldWithTheirFieldsInOrder) {
  static_assert(std::has_virtual_destructor_v<CBDparameter> && std::has_virtual_destructor_v<CBDlayerParameter> &&
                std::has_virtual_destructor_v<CBDvisibleLayerSet> && std::has_virtual_destructor_v<CBDtextSize>);
  static_assert(sizeof(CBDparameter::m_nReserved1) == 8 && sizeof(CBDparameter::m_dReserved1) == 8);
  const CBDparameter p;
  EXPECT_EQ("0 0 0 0 0 0 0 0 0 0 0 0 '' '' '' 0 ''", Reserved(p));
  ASSERT_TRUE(p.m_pVisibleLayerSetArray != nullptr && p.m_pTextSizeArray != nullptr &&
              p.m_pLayerParameterArray != nullptr);
  EXPECT_EQ("", Show(p));
  ExpectInOrder({&p.m_pVisibleLayerSetArray, &p.m_aReserved1, &p.m_dReserved1, &p.m_aReserved2, &p.m_sReserved1,
                 &p.m_sReserved2, &p.m_sReserved3, &p.m_nReserved1, &p.m_sReserved4, &p.m_pTextSizeArray,
                 &p.m_pLayerParameterArray});
  p.m_pLayerParameterArray->Add(new CBDlayerParameter);
  p.m_pVisibleLayerSetArray->Add(new CBDvisibleLayerSet);
  p.m_pTextSizeArray->Add(new CBDtextSize);
  EXPECT_EQ("L //0 0 0  0 0 ;V  ;T 0 0 0 0 0 0;", Show(p));
  const CBDlayerParameter& layer = *p.m_pLayerParameterArray->GetAt(0);
  ExpectInOrder({&layer.m_sLayerType, &layer.m_sLayerName, &layer.m_nLayerNumber, &layer.m_nColorId, &layer.m_nPriority,
                 &layer.m_sDisplayMode, &layer.m_nHatchAngle, &layer.m_nHatchPitch, &layer.m_sMrcMode});
  const CBDvisibleLayerSet& set = *p.m_pVisibleLayerSetArray->GetAt(0);
  ExpectInOrder({&set.m_sName, &set.m_aLayers});
  const CBDtextSize& size = *p.m_pTextSizeArray->GetAt(0);
  ExpectInOrder({&size.m_nId, &size.m_nWidth, &size.m_nHeight, &size.m_nSpace, &size.m_nVSpace, &size.m_nStrokeWidth});
}

TEST(ParameterObjects, CopiesAreMemberByMember) {
  static_assert(!std::is_copy_constructible_v<CBDvisibleLayerSet> && !std::is_copy_assignable_v<CBDvisibleLayerSet>);
  CBDparameter parameter;
  std::fill_n(parameter.m_aReserved1, 6, 1);
  std::fill_n(parameter.m_aReserved2, 5, 2);
  parameter.m_dReserved1 = 1.5;
  parameter.m_sReserved1 = "a";
  parameter.m_sReserved2 = "b";
  parameter.m_sReserved3 = "c";
  parameter.m_nReserved1 = 1LL << 40;
  parameter.m_sReserved4 = "d";
  const auto expectShared = [&parameter](CBDparameter& copy) {
    EXPECT_EQ("1 1 1 1 1 1 1.5 2 2 2 2 2 'a' 'b' 'c' 1099511627776 'd'", Reserved(copy));
    EXPECT_EQ(parameter.m_pVisibleLayerSetArray, std::exchange(copy.m_pVisibleLayerSetArray, nullptr));
    EXPECT_EQ(parameter.m_pTextSizeArray, std::exchange(copy.m_pTextSizeArray, nullptr));
    EXPECT_EQ(parameter.m_pLayerParameterArray, std::exchange(copy.m_pLayerParameterArray, nullptr));
  };
  CBDparameter copy(parameter);
  expectShared(copy);
  CBDparameter assigned;
  const CBDparameter old(assigned);  // deletes what the assignment leaves behind
  assigned = parameter;
  expectShared(assigned);

  Tree tree(
      "(parameter (layerParameters (layer (colorId 1) (priority 2) (displayMode D) (hatch (angle 3) (pitch 4)) "
      "(mrcMode M))) (textSizeParameters (textSize 1 (width 2) (height 3) (space 4) (vSpace 5) (strokeWidth 6))))");
  laminate::ReadParameter(tree.Form(), parameter);
  CBDlayerParameter& layer = *parameter.m_pLayerParameterArray->GetAt(0);
  layer.m_sLayerType = "T";
  layer.m_sLayerName = "N";
  layer.m_nLayerNumber = 9;
  CBDparameter copies;
  copies.m_pLayerParameterArray->Add(new CBDlayerParameter(layer));
  copies.m_pTextSizeArray->Add(new CBDtextSize(*parameter.m_pTextSizeArray->GetAt(0)));
  EXPECT_EQ("L T/N/9 1 2 D 3 4 M;T 1 2 3 4 5 6;", Show(copies));
  *copies.m_pLayerParameterArray->GetAt(0) = CBDlayerParameter();
  *copies.m_pTextSizeArray->GetAt(0) = CBDtextSize();
  EXPECT_EQ("L //0 0 0  0 0 ;T 0 0 0 0 0 0;", Show(copies));
  EXPECT_EQ("L T/N/9 1 2 D 3 4 M;T 1 2 3 4 5 6;", Show(parameter));
}

}  // namespace
