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
          {"but must be named properly", Layer("(conductive)"), "raises \"conductive\" has no value 1"},
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
}

TEST(ParameterObjects, StartAsTold) {
  const CBDparameter parameter;
  for (const int n : parameter.m_aReserved1) EXPECT_EQ(0, n);
  for (const int n : parameter.m_aReserved2) EXPECT_EQ(0, n);
  EXPECT_EQ(0.0, parameter.m_dReserved1);
  EXPECT_EQ(0, parameter.m_nReserved1);
  CBDparameter copy(parameter);
  EXPECT_EQ(parameter.m_pTextSizeArray, copy.m_pTextSizeArray);
  copy.m_pVisibleLayerSetArray = nullptr;
  copy.m_pTextSizeArray = nullptr;
  copy.m_pLayerParameterArray = nullptr;
}

}  // namespace
