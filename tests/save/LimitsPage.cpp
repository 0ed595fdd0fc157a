#include "save/LimitsPage.h"

#include <map>
#include <memory>
#include <set>

#include "base/CGProperty.h"
#include "base/CLProperty.h"
#include "save/FieldsBoard.h"
#include "save/FieldsDrawObj.h"
#include "save/FieldsTechnology.h"

namespace laminate::test {

namespace {

template <class X, class Array>
X& Added(Array* pArray) {
  auto p = std::make_unique<X>();
  X& object = *p;
  pArray->Add(p.release());
  return object;
}

template <class X>
X& InLayout(Design& design) {
  return Added<X>(design.board.m_pDrawObjArray);
}
CBDcircle& InPad(Design& design) {
  return Added<CBDcircle>(Added<CBDpad>(design.footprints.m_pPadArray).m_pDrawObjArray);
}
CBDpadstack& Padstack(Design& design) { return Added<CBDpadstack>(design.footprints.m_pPadstackArray); }
CBDhole& Drill(Design& design) {
  auto p = std::make_unique<CBDhole>();
  p->m_sLayerName = "HOLE";
  CBDhole& hole = *p;
  Padstack(design).m_pHole->m_pDrawObj = p.release();
  return hole;
}
CBDpadstackRefLay& Entry(Design& design) {
  return Added<CBDpadstackRefLay>(InLayout<CBDdrawPadstack>(design).m_pRefLays);
}
CBDcomponent& Component(Design& design) { return Added<CBDcomponent>(design.board.m_pComponentArray); }
CBDfootprint& Footprint(Design& design) { return Added<CBDfootprint>(design.footprints.m_pFootprintArray); }
CBDcondLayer& CondLayer(Design& design) { return Added<CBDcondLayer>(design.technology.m_pCondLayerArray); }
CBDsubLayer& SubLayer(Design& design) { return Added<CBDsubLayer>(design.technology.m_pSubLayerArray); }
CBDlayerParameter& LayerParameter(Design& design) {
  return Added<CBDlayerParameter>(design.parameter.m_pLayerParameterArray);
}
template <class X>
void Drop(X*& p) {
  delete std::exchange(p, nullptr);
}

}  // namespace

std::vector<Spoiling> Spoilings() {
  return {
      // shapes
      {"CBDdrawObj.m_sKind", [](Design& d) { InLayout<CBDareaz>(d); }},
      {"CBDdrawObj.m_sKind", [](Design& d) { InLayout<CBDoval>(d).m_sKind = "CIRCLE"; }},
      {"CBDdrawObj.m_bRefer", [](Design& d) { InPad(d).m_bRefer = 1; }},
      {"CBDdrawObj.m_sLayerName", [](Design& d) { InPad(d).m_sLayerName = "Silk"; }},
      {"CBDdrawObj.m_sLayerType", [](Design& d) { InLayout<CBDoval>(d).m_sLayerType = "other"; }},
      {"CBDdrawObj.m_nLayerNumber", [](Design& d) { InLayout<CBDoval>(d).m_nLayerNumber = 4; }},
      {"CBDdrawObj.m_sNet", [](Design& d) { InLayout<CBDoval>(d).m_sNet = "GND"; }},
      {"CBDdrawObj.m_sPenShape", [](Design& d) { InLayout<CBDoval>(d).m_sPenShape = "CIRCLE"; }},
      {"CBDdrawObj.m_sSection", [](Design& d) { InLayout<CBDoval>(d).m_sSection = "conductive"; }},
      {"CBDdrawObj.m_nCavityFrom", [](Design& d) { InLayout<CBDoval>(d).m_nCavityFrom = 1; }},
      {"CBDdrawObj.m_nCavityTo", [](Design& d) { InLayout<CBDoval>(d).m_nCavityTo = 1; }},
      {"CBDdrawObj.m_nCavityFrom",
       [](Design& d) {
         auto& oval = Added<CBDoval>(Component(d).m_pDrawObjArray);
         oval.m_bRefer = 1;
         oval.m_nCavityFrom = 1;
       }},
      {"CBDvertex.m_dWidth", [](Design& d) { Added<CBDvertexArc>(InLayout<CBDline>(d).m_pVertices).m_dWidth = 1; }},
      {"CBDvertex.m_sType", [](Design& d) { Added<CBDvertexPt>(InLayout<CBDline>(d).m_pVertices).m_sType = "ARC"; }},
      {"CBDvertexPt.m_pFillet",
       [](Design& d) { Drop(Added<CBDvertexPt>(InLayout<CBDline>(d).m_pVertices).m_pFillet); }},
      {"CBDsurface.m_bArea", [](Design& d) { InLayout<CBDsurface>(d).m_bArea = 1; }},
      {"CBDsurface.m_bMesh", [](Design& d) { InLayout<CBDsurface>(d).m_bMesh = 2; }},
      {"CBDsurface.m_bSubmesh", [](Design& d) { InLayout<CBDsurface>(d).m_bSubmesh = 2; }},
      {"CBDsurface.m_bAlreadySpread", [](Design& d) { InLayout<CBDsurface>(d).m_bAlreadySpread = 2; }},
      {"CBDsurface.m_nParamFlagXCount", [](Design& d) { InLayout<CBDsurface>(d).m_nParamFlagXCount = 2; }},
      {"CBDsurface.m_dParamPitch", [](Design& d) { InLayout<CBDsurface>(d).m_dParamPitch = 2; }},
      {"CBDsurface.m_dParamShapeDiameter", [](Design& d) { InLayout<CBDsurface>(d).m_dParamShapeDiameter = 2; }},
      {"CBDsurface.m_dParamFigureAngle", [](Design& d) { InLayout<CBDsurface>(d).m_dParamFigureAngle = 2; }},
      {"CBDsurface.m_dParamWindowClearance", [](Design& d) { InLayout<CBDsurface>(d).m_dParamWindowClearance = 2; }},
      {"CBDsurface.m_dParamFigureClearance", [](Design& d) { InLayout<CBDsurface>(d).m_dParamFigureClearance = 2; }},
      {"CBDsurface.m_dParamAngle", [](Design& d) { InLayout<CBDsurface>(d).m_dParamAngle = 2; }},
      {"CBDsurface.m_dParamOutlineClearance", [](Design& d) { InLayout<CBDsurface>(d).m_dParamOutlineClearance = 2; }},
      {"CBDsurface.m_sParamShape", [](Design& d) { InLayout<CBDsurface>(d).m_sParamShape = "SQUARE"; }},
      {"CBDsurface.m_sParamArrangeType", [](Design& d) { InLayout<CBDsurface>(d).m_sParamArrangeType = "4POINTS"; }},
      {"CBDsurface.m_ptParamBase", [](Design& d) { InLayout<CBDsurface>(d).m_ptParamBase.x = 2; }},
      {"CBDsurface.m_ptParamRotate", [](Design& d) { InLayout<CBDsurface>(d).m_ptParamRotate.y = 2; }},
      {"CBDsurface.m_arrParamFlags", [](Design& d) { InLayout<CBDsurface>(d).m_arrParamFlags.Add(1); }},
      {"CBDsurface.m_pProperties", [](Design& d) { Added<CLProperty>(InLayout<CBDsurface>(d).m_pProperties); }},
      {"CBDsymbolText.m_sString", [](Design& d) { InLayout<CBDsymbolText>(d).m_sString = "R12"; }},
      {"CBDsymbolText.m_pText", [](Design& d) { Drop(InLayout<CBDsymbolText>(d).m_pText); }},
      {"CBDhole.m_pShape", [](Design& d) { delete std::exchange(InLayout<CBDhole>(d).m_pShape, new CBDoval); }},
      {"CBDdrawSubBoard.m_pShapes", [](Design& d) { Added<CBDoval>(InLayout<CBDdrawSubBoard>(d).m_pShapes); }},
      {"CBDdrawPadstack.m_pHole", [](Design& d) { Drop(InLayout<CBDdrawPadstack>(d).m_pHole); }},
      {"CBDdrawPadstack.m_pShapes", [](Design& d) { Added<CBDoval>(InLayout<CBDdrawPadstack>(d).m_pShapes); }},
      {"CBDpadstackRefLay.m_sLayerName",
       [](Design& d) {
         CBDpadstackRefLay& entry = Entry(d);
         entry.m_nLayerNumber = 1;
         entry.m_sLayerName = "Silk";
       }},
      {"CBDpadstackRefLay.m_bVisible", [](Design& d) { Entry(d).m_bVisible = 2; }},
      // the technology section
      {"CBDnonConductiveLayer.m_aProperties",
       [](Design& d) {
         Added<CLProperty>(&Added<CBDnonConductiveLayer>(d.technology.m_pNonConductiveLayerArray).m_aProperties);
       }},
      {"CBDcondLayer.m_aProperties", [](Design& d) { Added<CLProperty>(&CondLayer(d).m_aProperties); }},
      {"CBDcondLayerRef.m_nUserDefType",
       [](Design& d) { Added<CBDcondLayerRef>(CondLayer(d).m_pRefArray).m_nUserDefType = 1; }},
      {"CBDsubLayer.m_sKind", [](Design& d) { SubLayer(d).m_sKind = "other"; }},
      {"CBDsubLayer.m_sLayerKind", [](Design& d) { SubLayer(d).m_sLayerKind = "other"; }},
      {"CBDsubLayer.m_sName", [](Design& d) { SubLayer(d).m_sName = "Silk"; }},
      {"CBDtechnologyContainer.m_nConductorLayers", [](Design& d) { d.ftfTechnology.m_nConductorLayers = 4; }},
      {"CBDtechnologyContainer.m_pNonConductiveLayerArray",
       [](Design& d) { Added<CBDnonConductiveLayer>(d.ftfTechnology.m_pNonConductiveLayerArray); }},
      {"CBDtechnologyContainer.m_pCondLayerArray",
       [](Design& d) { Added<CBDcondLayer>(d.ftfTechnology.m_pCondLayerArray); }},
      {"CBDtechnologyContainer.m_pSubLayerArray",
       [](Design& d) { Added<CBDsubLayer>(d.ftfTechnology.m_pSubLayerArray); }},
      {"CBDtechnologyContainer.m_pMapArray", [](Design& d) { Added<CBDmap>(d.ftfTechnology.m_pMapArray); }},
      // the library
      {"CBDpad.m_nUver", [](Design& d) { Added<CBDpad>(d.footprints.m_pPadArray).m_nUver = 2; }},
      {"CBDpad.m_rcArea", [](Design& d) { Added<CBDpad>(d.footprints.m_pPadArray).m_rcArea.width = 2; }},
      {"CBDpadstack.m_nUver", [](Design& d) { Padstack(d).m_nUver = 2; }},
      {"CBDpadstack.m_rcArea", [](Design& d) { Padstack(d).m_rcArea.width = 2; }},
      {"CBDpadstack.m_aVerbatim", [](Design& d) { Padstack(d).m_aVerbatim.Add(")"); }},
      {"CBDpadstack.m_pHole", [](Design& d) { Drop(Padstack(d).m_pHole); }},
      {"CBDpadstackHole.m_sFootLayer", [](Design& d) { Padstack(d).m_pHole->m_sFootLayer = "Hole"; }},
      {"CBDpadstackHole.m_pDrawObj", [](Design& d) { Padstack(d).m_pHole->m_pDrawObj = new CBDcircle; }},
      {"CBDhole.m_nFrom", [](Design& d) { Drill(d).m_nFrom = 1; }},
      {"CBDhole.m_nTo", [](Design& d) { Drill(d).m_nTo = 1; }},
      {"CBDhole.m_sDrillType", [](Design& d) { Drill(d).m_sDrillType = "T"; }},
      {"CBDhole.m_nHoleType", [](Design& d) { Drill(d).m_nHoleType = 1; }},
      {"CBDhole.m_pShape", [](Design& d) { Drop(Drill(d).m_pShape); }},
      {"CBDfootprint.m_rcArea", [](Design& d) { Footprint(d).m_rcArea.width = 2; }},
      {"CBDfootprint.m_aVerbatim", [](Design& d) { Footprint(d).m_aVerbatim.Add(")"); }},
      {"CBDfootprint.m_pHeelprint", [](Design& d) { Drop(Footprint(d).m_pHeelprint); }},
      {"CLProperty.m_sKind", [](Design& d) { Added<CLProperty>(Footprint(d).m_pPropertyArray); }},
      // the board
      {"CBDcomponent.m_dScale", [](Design& d) { Component(d).m_dScale = 2; }},
      {"CBDcomponent.m_ptMinRect1", [](Design& d) { Component(d).m_ptMinRect1.x = 2; }},
      {"CBDcomponent.m_ptMinRect2", [](Design& d) { Component(d).m_ptMinRect2.y = 2; }},
      {"CBDcomponent.m_aVerbatim", [](Design& d) { Component(d).m_aVerbatim.Add(")"); }},
      {"CBDgate.m_sLockMode", [](Design& d) { Added<CBDgate>(Component(d).m_pGateArray).m_sLockMode = "FIXED"; }},
      {"CBDlayerParameter.m_sLayerType", [](Design& d) { LayerParameter(d).m_sLayerType = "conductive"; }},
      {"CBDlayerParameter.m_sLayerName", [](Design& d) { LayerParameter(d).m_sLayerName = "1"; }},
      {"CBDlayerParameter.m_nLayerNumber", [](Design& d) { LayerParameter(d).m_nLayerNumber = 1; }},
  };
}

std::string LimitsPage() {
  std::map<std::string, std::set<std::string>> reasons;
  for (const Spoiling& spoiling : Spoilings()) {
    Design design;
    spoiling.spoil(design);
    SaveLosses losses;
    FreshTexts(design, losses);
    for (const SaveLoss& loss : losses.Refused()) reasons[loss.name].insert(loss.reason);
  }
  std::string s =
      "# What the files of a design cannot hold\n"
      "\n"
      "A saved file reads back to the database that it was saved from. What no file can say is refused: nothing is\n"
      "written then, and each refusal names the object, the field, the reason and the value. A caller may allow the "
      "loss\n"
      "of a field by its name, as it stands in the table; the file then holds what a new object holds in its place. A "
      "form\n"
      "that is copied from the file that it came from needs nothing of this.\n"
      "\n"
      "This page is printed by `write_limits`, which tries each row, and a test holds it to that.\n"
      "\n"
      "## In any field\n"
      "\n"
      "- A length or another real number that is infinite or not a number.\n"
      "- A text that no quoting gives back: a single blank; one with a quote in it that has no backslash before it; "
      "one in\n"
      "  which a closing bracket follows such a pair; one that ends with a line end, has a CR before a line end, a "
      "line that\n"
      "  begins with two slashes, or one that begins like a section of a board file. One that ends with a backslash "
      "and\n"
      "  needs quotes stands only as the last text of its form.\n"
      "- An empty slot of an array of objects, or an array that is missing.\n"
      "- Forms in forms beyond 20 levels, which is told by the name `forms`.\n"
      "\n"
      "Fields without a meaning (\"Reserved\", \"Spare\") and the counts of the pieces of the last load are not "
      "saved.\n"
      "\n"
      "## Field by field\n"
      "\n"
      "A value other than that of a new object is refused for these reasons.\n"
      "\n"
      "| field | reason |\n"
      "|---|---|\n";
  for (const auto& [sField, ofField] : reasons) {
    s += "| `" + sField + "` | ";
    const char* szBetween = "";
    for (const std::string& sReason : ofField) {
      s += szBetween + sReason;
      szBetween = "; ";
    }
    s += " |\n";
  }
  return s;
}

}  // namespace laminate::test
