// What an export loses of a design: each row sets one thing and expects exactly what is told of it.
#include "facade/ExportLosses.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <random>
#include <set>

#include "base/Designs.h"
#include "base/TestFolder.h"
#include "board/CBDboardContainer.h"
#include "board/CBDcompGroup.h"
#include "board/CBDcomponent.h"
#include "board/CBDgate.h"
#include "board/CBDlayerParameter.h"
#include "board/CBDlibraryEntities.h"
#include "board/CBDnet.h"
#include "board/CBDparameter.h"
#include "board/CBDpin.h"
#include "board/CBDsubBoard.h"
#include "board/CBDtextSize.h"
#include "board/CBDvisibleLayerSet.h"
#include "designdata/CPC_BD_OutClsGet.h"
#include "designdata/CVRXoutPackage.h"
#include "designdata/CVRXoutPrfFunction.h"
#include "designdata/CVRXoutPrfPart.h"
#include "designdata/CVRXoutPrfPinAssign.h"
#include "drawobj/CBDcircle.h"
#include "drawobj/CBDdonut.h"
#include "drawobj/CBDdrawPad.h"
#include "drawobj/CBDdrawPadstack.h"
#include "drawobj/CBDdrawSubBoard.h"
#include "drawobj/CBDfillet.h"
#include "drawobj/CBDhole.h"
#include "drawobj/CBDline.h"
#include "drawobj/CBDoval.h"
#include "drawobj/CBDovalHole.h"
#include "drawobj/CBDpadstackRefLay.h"
#include "drawobj/CBDrectangle.h"
#include "drawobj/CBDsquareThermal.h"
#include "drawobj/CBDsurface.h"
#include "drawobj/CBDsymbolText.h"
#include "drawobj/CBDtext.h"
#include "drawobj/CBDvertexArc.h"
#include "drawobj/CBDvertexPt.h"
#include "export/CExportFormatter.h"
#include "export/CompanionFiles.h"
#include "facade/CBDesigner.h"
#include "facade/FacadeTestSupport.h"
#include "facade/RecordLedgerPage.h"
#include "facade/ShapeLosses.h"
#include "technology/CBDcondLayer.h"
#include "technology/CBDfootprint.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDfootprintLayer.h"
#include "technology/CBDheelprint.h"
#include "technology/CBDmap.h"
#include "technology/CBDnonConductiveLayer.h"
#include "technology/CBDpad.h"
#include "technology/CBDpadstack.h"
#include "technology/CBDsubLayer.h"
#include "technology/CBDtechnologyContainer.h"
#include "technology/CBDtoeprintPin.h"

namespace {

using laminate::ExportLoss;
using laminate::ExportRecords;

// "OBJECT CLASS.FIELD fate=VALUE"
std::string Show(const ExportLoss& loss) {
  return loss.object + " " + std::string(loss.className) + "." + std::string(loss.field) + " " +
         std::string(laminate::ToText(loss.fate)) + "=" + loss.value;
}

std::vector<std::string> LossesOf(const CBDesigner& root, const ExportRecords& records = {}) {
  std::vector<std::string> losses;
  laminate::FindExportLosses(root, records, [&losses](const ExportLoss& loss) { losses.push_back(Show(loss)); });
  return losses;
}

template <class T, class Array>
T& Add(Array* pArray) {
  auto* p = new T;
  pArray->Add(p);
  return *p;
}

// ---- objects that lose nothing by themselves ----

CBDcomponent& Component(CBDesigner& root) {
  auto& component = Add<CBDcomponent>(root.m_pBoardContainer->m_pComponentArray);
  component.m_sReference = "R1";
  return component;
}
CBDpin& Pin(CBDesigner& root) {
  auto& pin = Add<CBDpin>(Component(root).m_pPinArray);
  pin.m_sName = "1";
  return pin;
}
CBDnet& Net(CBDesigner& root) {
  auto& net = Add<CBDnet>(root.m_pBoardContainer->m_pNetArray);
  net.m_sName = "GND";
  return net;
}
CBDfootprint& Footprint(CBDesigner& root) {
  auto& footprint = Add<CBDfootprint>(root.m_pFootprintContainer->m_pFootprintArray);
  footprint.m_sName = "F";
  return footprint;
}
CBDpadstack& Padstack(CBDesigner& root) {
  auto& padstack = Add<CBDpadstack>(root.m_pFootprintContainer->m_pPadstackArray);
  padstack.m_sName = "S";
  return padstack;
}
CBDpad& Pad(CBDesigner& root) {
  auto& pad = Add<CBDpad>(root.m_pFootprintContainer->m_pPadArray);
  pad.m_sName = "P";
  return pad;
}
CBDcompGroup& Group(CBDesigner& root) {
  auto& group = Add<CBDcompGroup>(root.m_pBoardContainer->m_pCompGroupArray);
  group.m_sName = "G";
  return group;
}
CBDlayerParameter& LayerParameter(CBDesigner& root) {
  auto& parameter = Add<CBDlayerParameter>(root.m_pParameter->m_pLayerParameterArray);
  parameter.m_sLayerType = "conductive";
  parameter.m_sLayerName = "2";
  parameter.m_nLayerNumber = 2;
  return parameter;
}
// On conductive layer 2 of the layout.
template <class T>
T& OnCopper(CBDesigner& root) {
  T& shape = Add<T>(root.m_pBoardContainer->m_pDrawObjArray);
  shape.m_sLayerName = "2";
  shape.m_sLayerType = "conductive";
  shape.m_nLayerNumber = 2;
  return shape;
}
CBDdonut& OnLayer(CBDesigner& root, int nNumber, const char* szName, const char* szType) {
  auto& shape = Add<CBDdonut>(root.m_pBoardContainer->m_pDrawObjArray);
  shape.m_nLayerNumber = nNumber;
  shape.m_sLayerName = szName;
  shape.m_sLayerType = szType;
  return shape;
}
template <class T>
T& InPad(CBDesigner& root) {
  return Add<T>(Pad(root).m_pDrawObjArray);
}
template <class T>
T& InComponent(CBDesigner& root) {
  T& shape = Add<T>(Component(root).m_pDrawObjArray);
  shape.m_sLayerName = "Silk";
  shape.m_sLayerType = "nonConductive";
  shape.m_bRefer = 1;
  return shape;
}
CBDvertexPt& Point(CBDvertexArray* pVertices) { return Add<CBDvertexPt>(pVertices); }
CBDsurface& Surface(CBDesigner& root) {
  auto& surface = OnCopper<CBDsurface>(root);
  for (int i = 0; i < 3; ++i) Point(surface.m_pVertices);
  return surface;
}

struct Row {
  const char* name;
  void (*set)(CBDesigner&);
  std::vector<std::string> expected;
};

const char kLayout0[] = "m_pBoardContainer.m_pDrawObjArray[0]";
std::string Layout0(const std::string& sMore) { return kLayout0 + sMore; }
std::string Layout(int nSlot, const std::string& sMore) {
  return "m_pBoardContainer.m_pDrawObjArray[" + std::to_string(nSlot) + "] CBDdrawObj" + sMore;
}
std::string InR1(const std::string& sMore) { return "m_pBoardContainer.m_pComponentArray[R1]" + sMore; }

class ExportLosses : public testing::TestWithParam<Row> {};

TEST_P(ExportLosses, AreTold) {
  CBDesigner root;
  GetParam().set(root);
  EXPECT_EQ(LossesOf(root), GetParam().expected) << GetParam().name;
}

const Row kRows[] = {
    {"nothing", [](CBDesigner&) {}, {}},
    {"version", [](CBDesigner& root) { root.m_sVersion = "2.1"; }, {" CBDesigner.m_sVersion constant=2.1"}},

    // technology
    {"names that are written bare",
     [](CBDesigner& root) { root.m_pTechnology->m_sName = "two words"; },
     {"m_pTechnology CBDtechnologyContainer.m_sName normalised=two words"}},
    {"a footprint layer in quotes for its bracket",
     [](CBDesigner& root) { Add<CBDfootprintLayer>(root.m_pTechnology->m_pFootprintLayerArray).m_sName = "Top (1)"; },
     {}},
    {"a footprint layer with a blank",
     [](CBDesigner& root) { Add<CBDfootprintLayer>(root.m_pTechnology->m_pFootprintLayerArray).m_sName = "Top 1"; },
     {"m_pTechnology.m_pFootprintLayerArray[Top 1] CBDfootprintLayer.m_sName normalised=Top 1"}},
    {"a backslash before a quote that no bracket follows",
     [](CBDesigner& root) {
       CBDtechnologyContainer& p = *root.m_pTechnology;
       for (const char* sz : {"(A\\", "(A\\B"}) {
         Add<CBDfootprintLayer>(p.m_pFootprintLayerArray).m_sName = sz;
         Add<CBDcondLayerRef>(Add<CBDcondLayer>(p.m_pCondLayerArray).m_pRefArray).m_sName = sz;
         Add<CBDnonConductiveLayer>(p.m_pNonConductiveLayerArray).m_sName = sz;
       }
     },
     {"m_pTechnology.m_pFootprintLayerArray[(A\\] CBDfootprintLayer.m_sName normalised=(A\\",
      "m_pTechnology.m_pCondLayerArray[0].m_pRefArray[0] CBDcondLayerRef.m_sName normalised=(A\\"}},
    {"sort key of a non-conductive layer",
     [](CBDesigner& root) {
       Add<CBDnonConductiveLayer>(root.m_pTechnology->m_pNonConductiveLayerArray).m_nSortKey = 5;
     },
     {"m_pTechnology.m_pNonConductiveLayerArray[0] CBDnonConductiveLayer.m_nSortKey dropped=5"}},
    {"property of a conductive layer",
     [](CBDesigner& root) { Add<CBDcondLayer>(root.m_pTechnology->m_pCondLayerArray).m_nProperty = 7; },
     {"m_pTechnology.m_pCondLayerArray[0] CBDcondLayer.m_nProperty dropped=7"}},
    {"a sub-layer of no kind",
     [](CBDesigner& root) { Add<CBDsubLayer>(root.m_pTechnology->m_pSubLayerArray).m_sName = "X"; },
     {"m_pTechnology.m_pSubLayerArray[X] CBDsubLayer. dropped="}},
    {"board layers by name and number",
     [](CBDesigner& root) {
       auto& p = Add<CBDcorrespondence>(Add<CBDmap>(root.m_pTechnology->m_pMapArray).m_pCorrespondenceArray);
       for (const char* sz : {"3", "37", "Silk", "Silk (A)"}) p.m_aBoardLayers.Add(sz);
     },
     {}},
    {"a board layer that begins with a number",
     [](CBDesigner& root) {
       Add<CBDcorrespondence>(Add<CBDmap>(root.m_pTechnology->m_pMapArray).m_pCorrespondenceArray)
           .m_aBoardLayers.Add("3 Sig");
     },
     {"m_pTechnology.m_pMapArray[0].m_pCorrespondenceArray[0] CBDcorrespondence.m_aBoardLayers normalised=3 Sig"}},
    {"technology of the footprint file",
     [](CBDesigner& root) {
       root.m_pFtfTechnology->m_sName = "lib";
       Add<CBDfootprintLayer>(root.m_pFtfTechnology->m_pFootprintLayerArray).m_sName = "Top";
     },
     {"m_pFtfTechnology CBDtechnologyContainer.m_sName dropped=lib",
      "m_pFtfTechnology.m_pFootprintLayerArray[Top] CBDfootprintLayer. dropped=Top"}},
    {"technology of the footprint file that is the board's",
     [](CBDesigner& root) {
       for (CBDtechnologyContainer* p : {root.m_pTechnology, root.m_pFtfTechnology}) {
         p->m_sName = "lib";
         Add<CBDfootprintLayer>(p->m_pFootprintLayerArray).m_sName = "Top";
       }
     },
     {}},

    // library
    {"area of a footprint",
     [](CBDesigner& root) { Footprint(root).m_ptBox2 = CPointD(1, 2); },
     {"m_pFootprintContainer.m_pFootprintArray[F] CBDfootprint.m_ptBox2 dropped=1 2"}},
    {"properties of a footprint",
     [](CBDesigner& root) {
       CLPropertyArray& properties = *Footprint(root).m_pPropertyArray;
       properties.Add(new CLProperty("good", "word", "propertyS"));
       properties.Add(new CLProperty("bad", "two words", "propertyS"));
     },
     {"m_pFootprintContainer.m_pFootprintArray[F].m_pPropertyArray[bad] CLProperty. normalised=bad two words"}},
    {"an outline shape without a layer",
     [](CBDesigner& root) { Add<CBDline>(Footprint(root).m_pHeelprint->m_pDrawObjArray); },
     {"m_pFootprintContainer.m_pFootprintArray[F].m_pHeelprint.m_pDrawObjArray[0] CBDdrawObj. dropped=LINE"}},
    {"a pin's shape on another layer",
     [](CBDesigner& root) {
       auto& pin = Add<CBDtoeprintPin>(Footprint(root).m_pToeprintPinArray);
       pin.m_sName = "1";
       Add<CBDdrawPadstack>(pin.m_pDrawObjArray).m_sLayerName = "Top";
     },
     {"m_pFootprintContainer.m_pFootprintArray[F].m_pToeprintPinArray[1].m_pDrawObjArray[0] "
      "CBDdrawObj.m_sLayerName normalised=Top"}},
    {"a pad set without a pad",
     [](CBDesigner& root) { Add<CBDpadSet>(Padstack(root).m_pPadSetArray).m_sFootLayer = "Top"; },
     {"m_pFootprintContainer.m_pPadstackArray[S].m_pPadSetArray[0] CBDpadSet. dropped=Top"}},
    {"a hole's drill type, and its shape",
     [](CBDesigner& root) {
       auto* pHole = new CBDhole;
       Padstack(root).m_pHole->m_pDrawObj = pHole;
       pHole->m_sDrillType = "laser";
       delete std::exchange(pHole->m_pShape, new CBDcircle);
       static_cast<CBDcircle*>(pHole->m_pShape)->m_dRadius = 0.0000001;
     },
     {"m_pFootprintContainer.m_pPadstackArray[S].m_pHole.m_pDrawObj CBDhole.m_sDrillType dropped=laser",
      "m_pFootprintContainer.m_pPadstackArray[S].m_pHole.m_pDrawObj.m_pShape CBDcircle.m_dRadius normalised=1e-07"}},
    {"a square thermal's values",
     [](CBDesigner& root) { InPad<CBDsquareThermal>(root).m_dOut = 2; },
     {"m_pFootprintContainer.m_pPadArray[P].m_pDrawObjArray[0] CBDsquareThermal.m_dOut dropped=2"}},
    {"shapes of a pad that are read again",
     [](CBDesigner& root) {
       InPad<CBDcircle>(root).m_dRadius = 0.12345;
       InPad<CBDrectangle>(root).m_dAngle = 0.123456;
       InPad<CBDoval>(root).m_dAngle = 45;
     },
     {}},
    {"more decimals than the file has",
     [](CBDesigner& root) {
       InPad<CBDcircle>(root).m_ptCenter = CPointD(1.000001, 0);
       InPad<CBDrectangle>(root).m_dFillAngle = 0.1234567;
     },
     {"m_pFootprintContainer.m_pPadArray[P].m_pDrawObjArray[0] CBDcircle.m_ptCenter normalised=1.000001 0",
      "m_pFootprintContainer.m_pPadArray[P].m_pDrawObjArray[0] CBDrectangle.m_dFillAngle normalised=0.1234567"}},

    // components
    {"a component's constants",
     [](CBDesigner& root) {
       CBDcomponent& p = Component(root);
       p.m_sOutOfBoard = "YES";
       p.m_sDrawRefDes = "YES";
     },
     {InR1(" CBDcomponent.m_sOutOfBoard constant=YES"), InR1(" CBDcomponent.m_sDrawRefDes constant=YES")}},
    {"constants that agree",
     [](CBDesigner& root) {
       CBDcomponent& p = Component(root);
       p.m_sOutOfBoard = "NO";
       p.m_sDrawRefDes = "NO";
       p.m_sOriginalReference = "R1";
       Add<CBDgate>(p.m_pGateArray);
       p.m_nGateCount = 1;
       p.m_sPackageSymbol = "YES";
     },
     {}},
    {"empty slots, which count for nothing",
     [](CBDesigner& root) {
       CBDcomponent& p = Component(root);
       p.m_pGateArray->Add(nullptr);
       Add<CBDgate>(p.m_pGateArray);
       p.m_nGateCount = 1;
       p.m_sPackageSymbol = "YES";
       auto& pin = Add<CBDpin>(p.m_pPinArray);
       pin.m_sName = "1";
       pin.m_pBondwireArray->Add(nullptr);
     },
     {}},
    {"what stands for another field",
     [](CBDesigner& root) {
       CBDcomponent& p = Component(root);
       p.m_sOriginalReference = "R9";
       p.m_nGateCount = 4;
       p.m_sPackageSymbol = "YES";
     },
     {InR1(" CBDcomponent.m_nGateCount normalised=4"), InR1(" CBDcomponent.m_sOriginalReference normalised=R9"),
      InR1(" CBDcomponent.m_sPackageSymbol normalised=YES")}},
    {"a scale without its property",
     [](CBDesigner& root) { Component(root).m_dScale = 2.5; },
     {InR1(" CBDcomponent.m_dScale dropped=2.5")}},
    {"a scale with its property",
     [](CBDesigner& root) {
       CBDcomponent& p = Component(root);
       p.m_dScale = 2.5;
       p.m_pPropertyArray->Add(new CGProperty("Scale", "2.5"));
     },
     {}},
    {"a part's name in quotes, a package's bare",
     [](CBDesigner& root) {
       CBDcomponent& p = Component(root);
       p.m_sPart = "A B";
       p.m_sPackage = "A B";
     },
     {InR1(" CBDcomponent.m_sPackage normalised=A B")}},
    {"a component's property with a blank",
     [](CBDesigner& root) { Component(root).m_pPropertyArray->Add(new CGProperty("a", "b c")); },
     {InR1(".m_pPropertyArray[a] CGProperty. normalised=a b c")}},
    {"gates",
     [](CBDesigner& root) {
       auto& gate = Add<CBDgate>(Component(root).m_pGateArray);
       gate.m_sLockMode = "FIXED";
       auto& pin = Add<CBDgatePin>(gate.m_pGatePinArray);
       pin.m_sName = "10%";
       pin.m_sLockMode = "FIXED";
     },
     {InR1(".m_pGateArray[0] CBDgate.m_sLockMode constant=FIXED"),
      InR1(".m_pGateArray[0].m_pGatePinArray[0] CBDgatePin.m_sName normalised=10%"),
      InR1(".m_pGateArray[0].m_pGatePinArray[0] CBDgatePin.m_sLockMode constant=FIXED")}},
    {"bond wires",
     [](CBDesigner& root) { Add<CBDbondwire>(Pin(root).m_pBondwireArray); },
     {InR1(".m_pPinArray[1] CBDpin.m_pBondwireArray dropped=1")}},
    {"names of pins and of their gates",
     [](CBDesigner& root) {
       CBDpin& pin = Pin(root);
       pin.m_sName = "1%";
       Add<CBDpinGate>(pin.m_pPinGateArray).m_sName = "a b";
     },
     {InR1(".m_pPinArray[1%] CBDpin.m_sName normalised=1%"),
      InR1(".m_pPinArray[1%].m_pPinGateArray[0] CBDpinGate.m_sName normalised=a b")}},
    {"a pin's shape on copper",
     [](CBDesigner& root) {
       auto& shape = Add<CBDdrawPadstack>(Pin(root).m_pDrawObjArray);
       shape.m_sLayerName = "1";
       shape.m_sLayerType = "conductive";
     },
     {InR1(".m_pPinArray[1].m_pDrawObjArray[0] CBDdrawObj.m_sLayerType normalised=conductive")}},
    {"a pin's shape on a system layer",
     [](CBDesigner& root) {
       auto& shape = Add<CBDdrawPadstack>(Pin(root).m_pDrawObjArray);
       shape.m_sLayerName = "PADSTACK";
       shape.m_sLayerType = "systemLayer";
     },
     {}},
    {"a component's shape without a layer",
     [](CBDesigner& root) { InComponent<CBDline>(root).m_sLayerName = ""; },
     {InR1(".m_pDrawObjArray[0] CBDdrawObj. dropped=LINE")}},
    {"a component's shape of no layer type",
     [](CBDesigner& root) { InComponent<CBDline>(root).m_sLayerType = ""; },
     {InR1(".m_pDrawObjArray[0] CBDdrawObj.m_sLayerType normalised=")}},
    {"a component's shape that stood in no refer",
     [](CBDesigner& root) { InComponent<CBDline>(root).m_bRefer = 0; },
     {InR1(".m_pDrawObjArray[0] CBDdrawObj.m_bRefer normalised=0")}},
    {"a component's pad that stood in a refer",
     [](CBDesigner& root) { InComponent<CBDdrawPad>(root); },
     {InR1(".m_pDrawObjArray[0] CBDdrawObj.m_bRefer normalised=1")}},
    {"cavities",
     [](CBDesigner& root) {
       auto& line = InComponent<CBDline>(root);
       line.m_nCavityFrom = 1;
       line.m_nCavityTo = 2;
     },
     {InR1(".m_pDrawObjArray[0] CBDdrawObj.m_nCavityFrom dropped=1"),
      InR1(".m_pDrawObjArray[0] CBDdrawObj.m_nCavityTo dropped=2")}},
    {"a symbol text",
     [](CBDesigner& root) { InComponent<CBDsymbolText>(root).m_bRefer = 0; },
     {InR1(".m_pDrawObjArray[0] CBDsymbolText. dropped=")}},

    // groups, nets, parameters, claims
    {"a group's constants",
     [](CBDesigner& root) {
       CBDcompGroup& group = Group(root);
       group.m_sSide = "TOP";
       group.m_nPen = 7;
       group.m_aList.Add("R1");
       group.m_aList.Add("R 2");
     },
     {"m_pBoardContainer.m_pCompGroupArray[G] CBDcompGroup.m_aList normalised=R1 R 2",
      "m_pBoardContainer.m_pCompGroupArray[G] CBDcompGroup.m_sSide constant=TOP",
      "m_pBoardContainer.m_pCompGroupArray[G] CBDcompGroup.m_nPen constant=7"}},
    {"a group's reference without a name",
     [](CBDesigner& root) {
       CBDcompGroup& group = Group(root);
       group.m_aList.Add("R1");
       group.m_aList.Add("");
     },
     {"m_pBoardContainer.m_pCompGroupArray[G] CBDcompGroup.m_aList normalised=R1 "}},
    {"a net's constants",
     [](CBDesigner& root) {
       CBDnet& net = Net(root);
       net.m_sLockMode = "FIXED";
       net.m_sRatsNest = "NO";
     },
     {"m_pBoardContainer.m_pNetArray[GND] CBDnet.m_sLockMode constant=FIXED",
      "m_pBoardContainer.m_pNetArray[GND] CBDnet.m_sRatsNest constant=NO"}},
    {"a net's name in quotes",
     [](CBDesigner& root) {
       Net(root).m_sName = "VCC (3V3) \\\"x\\\"";
       Net(root).m_sLockMode = "UNFIXED";
     },
     {}},
    {"names of nets that change",
     [](CBDesigner& root) {
       Net(root).m_sName = "50%";
       Net(root).m_sName = "a\"b";
       Net(root).m_sName = "end\\";
     },
     {"m_pBoardContainer.m_pNetArray[50%] CBDnet.m_sName normalised=50%",
      "m_pBoardContainer.m_pNetArray[a\"b] CBDnet.m_sName normalised=a\"b",
      "m_pBoardContainer.m_pNetArray[end\\] CBDnet.m_sName normalised=end\\"}},
    {"a net's pin with a blank",
     [](CBDesigner& root) { Add<CBDrefPin>(Net(root).m_pRefPinArray).m_sPin = "1 2"; },
     {"m_pBoardContainer.m_pNetArray[GND].m_pRefPinArray[0] CBDrefPin.m_sPin normalised=1 2"}},
    {"sub-boards",
     [](CBDesigner& root) { Add<CBDsubBoard>(root.m_pBoardContainer->m_pSubBoardArray).m_nId = 3; },
     {"m_pBoardContainer.m_pSubBoardArray[0] CBDsubBoard. dropped=3 "}},
    {"visible layers and text sizes",
     [](CBDesigner& root) {
       Add<CBDvisibleLayerSet>(root.m_pParameter->m_pVisibleLayerSetArray).m_sName = "all";
       Add<CBDtextSize>(root.m_pParameter->m_pTextSizeArray).m_nId = 4;
     },
     {"m_pParameter.m_pVisibleLayerSetArray[all] CBDvisibleLayerSet. dropped=all",
      "m_pParameter.m_pTextSizeArray[0] CBDtextSize. dropped=4"}},
    {"a layer parameter as it is read",
     [](CBDesigner& root) {
       CBDlayerParameter& p = LayerParameter(root);
       p.m_sLayerType = p.m_sLayerName = "";
       p.m_nHatchAngle = 30;
       p.m_nHatchPitch = 20;
       p.m_sMrcMode = "ON";
       p.m_sDisplayMode = "FILL";
     },
     {"m_pParameter.m_pLayerParameterArray[0] CBDlayerParameter.m_sLayerType normalised=",
      "m_pParameter.m_pLayerParameterArray[0] CBDlayerParameter.m_sDisplayMode dropped=FILL",
      "m_pParameter.m_pLayerParameterArray[0] CBDlayerParameter.m_nHatchAngle constant=30",
      "m_pParameter.m_pLayerParameterArray[0] CBDlayerParameter.m_sMrcMode constant=ON"}},
    {"a display mode that is the written one",
     [](CBDesigner& root) { LayerParameter(root).m_sDisplayMode = "EMPTY"; },
     {"m_pParameter.m_pLayerParameterArray[0] CBDlayerParameter.m_sDisplayMode dropped=EMPTY"}},
    {"a layer parameter with its layer", [](CBDesigner& root) { LayerParameter(root); }, {}},
    {"a layer parameter with its number alone", [](CBDesigner& root) { LayerParameter(root).m_sLayerName = ""; }, {}},
    {"a layer parameter with another name than its number",
     [](CBDesigner& root) { LayerParameter(root).m_sLayerName = "top"; },
     {"m_pParameter.m_pLayerParameterArray[0] CBDlayerParameter.m_sLayerName normalised=top"}},
    {"claims on the library",
     [](CBDesigner& root) {
       CBDlibraryEntities& claims = *root.m_pLibraryEntities;
       Component(root).m_sPart = "used";
       Footprint(root);
       claims.m_aParts.Add("used");
       claims.m_aParts.Add("unused");
       claims.m_aPackages.Add("gone");
       for (const char* szSide : {"", "B", "A"}) {
         auto& footprint = Add<CBDlibFootprint>(claims.m_pLibFootprintArray);
         footprint.m_sName = "F";
         footprint.m_sSide = szSide;
       }
       Add<CBDlibPad>(claims.m_pLibPadArray).m_sName = "P";
     },
     {"m_pLibraryEntities CBDlibraryEntities.m_aParts dropped=unused",
      "m_pLibraryEntities CBDlibraryEntities.m_aPackages dropped=gone",
      "m_pLibraryEntities CBDlibraryEntities.m_pLibFootprintArray dropped=F A",
      "m_pLibraryEntities CBDlibraryEntities.m_pLibPadArray dropped=P"}},

    {"claims whose names do not read back without quotes",
     [](CBDesigner& root) {
       CBDlibraryEntities& claims = *root.m_pLibraryEntities;
       for (const char* sz : {"x 1", "x\"1"}) {
         CBDcomponent& component = Add<CBDcomponent>(root.m_pBoardContainer->m_pComponentArray);
         component.m_sPart = component.m_sPackage = sz;
         claims.m_aParts.Add(sz);
         claims.m_aPackages.Add(sz);
         Footprint(root).m_sName = sz;
         Add<CBDlibFootprint>(claims.m_pLibFootprintArray).m_sName = sz;
       }
     },
     {"m_pFootprintContainer.m_pFootprintArray[x 1] CBDfootprint.m_sName normalised=x 1",
      "m_pFootprintContainer.m_pFootprintArray[x\"1] CBDfootprint.m_sName normalised=x\"1",
      "m_pBoardContainer.m_pComponentArray[0] CBDcomponent.m_sPackage normalised=x 1",
      "m_pBoardContainer.m_pComponentArray[1] CBDcomponent.m_sPart normalised=x\"1",
      "m_pBoardContainer.m_pComponentArray[1] CBDcomponent.m_sPackage normalised=x\"1",
      "m_pLibraryEntities CBDlibraryEntities.m_aParts dropped=x\"1",
      "m_pLibraryEntities CBDlibraryEntities.m_aPackages dropped=x 1",
      "m_pLibraryEntities CBDlibraryEntities.m_aPackages dropped=x\"1",
      "m_pLibraryEntities CBDlibraryEntities.m_pLibFootprintArray dropped=x 1",
      "m_pLibraryEntities CBDlibraryEntities.m_pLibFootprintArray dropped=x\"1"}},

    // shapes of the layout
    {"a line that is kept",
     [](CBDesigner& root) {
       auto& line = OnCopper<CBDline>(root);
       line.m_sNet = "GND (1)";
       line.m_sPenShape = "SQUARE";
       Point(line.m_pVertices).m_dWidth = 0.2;
       Point(line.m_pVertices).m_dTarc = -1;
     },
     {}},
    {"what a line loses",
     [](CBDesigner& root) {
       auto& line = OnCopper<CBDline>(root);
       line.m_bRefer = 1;
       line.m_sNet = "50%";
       line.m_sPenShape = "ROUND";
       line.m_sThermalData = "t";
       line.m_sLineType = "dash";
       line.m_dDash = 1;
       line.m_dBlank = 2;
     },
     {Layout0(" CBDdrawObj.m_bRefer normalised=1"), Layout0(" CBDdrawObj.m_sNet normalised=50%"),
      Layout0(" CBDdrawObj.m_sPenShape dropped=ROUND"), Layout0(" CBDline.m_sThermalData dropped=t"),
      Layout0(" CBDline.m_sLineType dropped=dash"), Layout0(" CBDline.m_dDash dropped=1"),
      Layout0(" CBDline.m_dBlank dropped=2")}},
    {"layers of the layout",
     [](CBDesigner& root) {
       OnCopper<CBDdonut>(root).m_sLayerName = "two";
       auto& silk = OnCopper<CBDdonut>(root);
       silk.m_sLayerType = "nonConductive";
       silk.m_sLayerName = "Silk A";
       silk.m_nLayerNumber = 0;
       OnCopper<CBDdonut>(root).m_nLayerNumber = 0;
     },
     {Layout0(" CBDdrawObj.m_sLayerName normalised=two"),
      "m_pBoardContainer.m_pDrawObjArray[1] CBDdrawObj.m_sLayerName normalised=Silk A",
      "m_pBoardContainer.m_pDrawObjArray[2] CBDdrawObj. dropped=DONUT"}},
    {"copper that comes to stand in the layer of a name",
     [](CBDesigner& root) {
       for (const auto& [nNumber, szName] :
            {std::pair(1, "1"), std::pair(2, "2"), std::pair(0, "S"), std::pair(2, "2")})
         OnLayer(root, nNumber, szName, nNumber == 0 ? "nonConductive" : "conductive");
     },
     {Layout(3, ".m_nLayerNumber dropped=2"), Layout(3, ".m_sLayerName dropped=2"),
      Layout(3, ".m_sLayerType dropped=conductive")}},
    {"a name that comes to stand in copper",
     [](CBDesigner& root) {
       OnLayer(root, 1, "1", "conductive");
       OnLayer(root, 0, "2", "nonConductive");
       OnLayer(root, 2, "2", "conductive");
       OnLayer(root, 0, "2", "nonConductive");
     },
     {Layout(3, ".m_nLayerNumber dropped=0"), Layout(3, ".m_sLayerType dropped=nonConductive")}},
    {"layers of one name and two types",
     [](CBDesigner& root) {
       OnLayer(root, 0, "X", "nonConductive");
       OnLayer(root, 0, "X", "systemLayer");
     },
     {Layout(1, ".m_sLayerType dropped=systemLayer")}},
    {"a layer without a name behind copper",
     [](CBDesigner& root) {
       OnLayer(root, 1, "1", "conductive");
       OnLayer(root, 0, "", "systemLayer");
     },
     {Layout(1, ".m_nLayerNumber dropped=0"), Layout(1, ".m_sLayerName dropped="),
      Layout(1, ".m_sLayerType dropped=systemLayer")}},
    {"a layer without a name at the start",
     [](CBDesigner& root) { OnLayer(root, 0, "", "systemLayer"); },
     {Layout(0, ".m_sLayerName normalised=")}},
    {"a shape of no layer at the start",
     [](CBDesigner& root) { OnLayer(root, 0, "", ""); },
     {Layout(0, ". dropped=DONUT")}},
    {"points and arcs of a line",
     [](CBDesigner& root) {
       auto& line = OnCopper<CBDline>(root);
       Point(line.m_pVertices).m_dWidth = 0.0005;
       auto& second = Point(line.m_pVertices);
       second.m_pFillet->m_dLength = 1;
       auto& arc = Add<CBDvertexArc>(line.m_pVertices);
       arc.m_dBeginWidth = 0.2;
       arc.m_dEndWidth = 0.3;
       auto& last = Point(line.m_pVertices);
       last.m_pFillet->m_dFilletWidth = 1;
       last.m_pFillet->m_sDir = "IN";
     },
     {Layout0(".m_pVertices[0] CBDvertexPt.m_dWidth normalised=5e-04"),
      Layout0(".m_pVertices[1] CBDvertexPt.m_pFillet normalised="),
      Layout0(".m_pVertices[2] CBDvertexArc.m_dEndWidth dropped=0.3"),
      Layout0(".m_pVertices[3].m_pFillet CBDfillet.m_sDir normalised=IN")}},
    {"points and arcs of an outline",
     [](CBDesigner& root) {
       auto& surface = Surface(root);
       static_cast<CBDvertexPt*>(surface.m_pVertices->GetAt(1))->m_dWidth = 0.2;
       Add<CBDvertexArc>(surface.m_pVertices).m_dBeginWidth = 0.2;
     },
     {Layout0(".m_pVertices[1] CBDvertexPt.m_dWidth dropped=0.2"),
      Layout0(".m_pVertices[3] CBDvertexArc.m_dBeginWidth dropped=0.2")}},
    {"a surface of two points",
     [](CBDesigner& root) { Point(OnCopper<CBDsurface>(root).m_pVertices); },
     {Layout0(" CBDsurface. dropped=")}},
    {"a mesh plane",
     [](CBDesigner& root) {
       auto& surface = Surface(root);
       surface.m_bMesh = 1;
       surface.m_dMeshPitch = 0.5;
       surface.m_arrMeshFlags.Add(1);
       surface.m_arrMeshFlags.Add(0);
       surface.m_sParamShape = "SQUARE";
       surface.m_pProperties->Add(new CLProperty("meshPitch", "1"));
     },
     {Layout0(" CBDsurface.m_dMeshPitch dropped=0.5"), Layout0(" CBDsurface.m_arrMeshFlags dropped=1 0"),
      Layout0(" CBDsurface.m_sParamShape dropped=SQUARE"), Layout0(" CBDsurface.m_pProperties dropped=1")}},
    {"heights of an area",
     [](CBDesigner& root) { Surface(root).m_dUpperHeight = 1.5; },
     {Layout0(" CBDsurface.m_dUpperHeight dropped=1.5")}},
    {"heights of an area that is written as one",
     [](CBDesigner& root) {
       auto& surface = Surface(root);
       surface.m_bArea = 1;
       surface.m_dUpperHeight = 1.5;
       surface.m_sNet = "GND";
     },
     {Layout0(" CBDdrawObj.m_sNet dropped=GND"), Layout0(" CBDsurface.m_bArea dropped=1")}},
    {"forms that are right elsewhere only",
     [](CBDesigner& root) {
       OnCopper<CBDcircle>(root);
       OnCopper<CBDrectangle>(root);
       OnCopper<CBDdrawSubBoard>(root);
     },
     {Layout0(" CBDcircle. dropped="), "m_pBoardContainer.m_pDrawObjArray[1] CBDrectangle. dropped=",
      "m_pBoardContainer.m_pDrawObjArray[2] CBDdrawSubBoard. dropped="}},
    {"a circle in a hole",
     [](CBDesigner& root) {
       auto& hole = OnCopper<CBDhole>(root);
       hole.m_nFrom = 1;
       delete std::exchange(hole.m_pShape, new CBDcircle);
     },
     {Layout0(" CBDhole.m_nFrom dropped=1")}},
    {"six digits of an oval hole",
     [](CBDesigner& root) {
       auto& hole = OnCopper<CBDovalHole>(root);
       hole.m_dWidth = 12;
       hole.m_dHeight = 0.5;
       hole.m_dAngle = 90;
     },
     {Layout0(" CBDovalHole.m_dWidth normalised=12")}},
    {"a placed padstack",
     [](CBDesigner& root) {
       auto& padstack = OnCopper<CBDdrawPadstack>(root);
       padstack.m_nFrom = 2;
       padstack.m_nTo = 3;
       padstack.m_sSide = "B";
       padstack.m_nDrillType = 1;
       padstack.m_dAngle = 0.0001;
       Add<CBDcircle>(padstack.m_pShapes);
       for (int n : {1, 2, 3}) Add<CBDpadstackRefLay>(padstack.m_pRefLays).m_nLayerNumber = n;
       padstack.m_pRefLays->GetAt(1)->m_bVisible = 0;
     },
     {Layout0(" CBDdrawPadstack.m_pShapes dropped=1"), Layout0(" CBDdrawPadstack.m_dAngle normalised=1e-04"),
      Layout0(" CBDdrawPadstack.m_nDrillType dropped=1"), Layout0(" CBDdrawPadstack.m_sSide dropped=B"),
      Layout0(".m_pRefLays[0] CBDpadstackRefLay. dropped=1"),
      Layout0(".m_pRefLays[1] CBDpadstackRefLay.m_bVisible dropped=0")}},
    {"a span of one layer",
     [](CBDesigner& root) {
       auto& padstack = OnCopper<CBDdrawPadstack>(root);
       padstack.m_nFrom = padstack.m_nTo = 2;
     },
     {Layout0(" CBDdrawPadstack.m_nFrom normalised=2")}},
    {"a text",
     [](CBDesigner& root) {
       auto& text = OnCopper<CBDtext>(root);
       text.m_sString = "two words";
       text.m_dTextFrameOffset = 1;
     },
     {Layout0(" CBDtext.m_dTextFrameOffset dropped=1")}},
};

std::string NameOfRow(const testing::TestParamInfo<Row>& row) { return laminate::test::AsTestName(row.param.name); }
INSTANTIATE_TEST_SUITE_P(Rows, ExportLosses, testing::ValuesIn(kRows), NameOfRow);

// ---- layers of the layout, by writing and reading ----

// Number, name and type of each shape that a load gives; the shape's own number is its radius.
using LayerOfShape = std::map<int, std::string>;
LayerOfShape LayersOf(const CBDesigner& root) {
  LayerOfShape layers;
  for (const CBDdrawObj* p : *root.m_pBoardContainer->m_pDrawObjArray) {
    const auto* pDonut = dynamic_cast<const CBDdonut*>(p);
    if (pDonut == nullptr) continue;
    layers[static_cast<int>(std::lround(pDonut->m_dOut))] = std::to_string(p->m_nLayerNumber) + "/" +
                                                            std::string(p->m_sLayerName.View()) + "/" +
                                                            std::string(p->m_sLayerType.View());
  }
  return layers;
}

TEST(ExportLossesOfLayouts, AreThoseOfWritingAndReading) {
  const TempFolder folder;
  std::mt19937 random(6);
  const auto below = [&random](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
  int nLost = 0;
  for (int nRound = 0; nRound < 150; ++nRound) {
    CBDesigner root;
    const int nShapes = 1 + below(9);
    for (int i = 0; i < nShapes; ++i) {
      const int nNumber = below(2) == 0 ? 0 : 1 + below(3);
      const std::string name = nNumber != 0 ? std::to_string(nNumber) : std::to_string(1 + below(3));
      const char* szType = nNumber != 0 ? "conductive" : below(2) == 0 ? "nonConductive" : "systemLayer";
      OnLayer(root, nNumber, name.c_str(), szType).m_dOut = i + 1.0;
    }
    const LayerOfShape before = LayersOf(root);
    std::set<std::string> told;
    for (const std::string& s : LossesOf(root)) told.insert(s.substr(0, s.find(' ')));
    const CString sFile{std::string_view(folder.Path("layout.pcf"))};
    {
      std::FILE* fp = std::fopen(sFile, "wb");
      std::fputs("(pcf\n", fp);
      root.m_pBoardContainer->nPrint2File(fp);
      std::fputs(")\n", fp);
      std::fclose(fp);
    }
    CBDesigner again;
    again.vParsePCF(sFile);
    const LayerOfShape after = LayersOf(again);
    std::set<std::string> changed;
    for (const auto& [nShape, sLayer] : before) {
      const auto it = after.find(nShape);
      if (it != after.end() && it->second == sLayer) continue;
      changed.insert("m_pBoardContainer.m_pDrawObjArray[" + std::to_string(nShape - 1) + "]");
    }
    ASSERT_EQ(changed, told) << "round " << nRound;
    nLost += static_cast<int>(changed.size());
  }
  EXPECT_GT(nLost, 50);
}

// ---- records ----

TEST(ExportLossesOfRecords, AreTold) {
  CVRXoutPackageArray packages;
  CVRXoutPrfPartArray parts;
  CVRXoutPrfPinAssignArray pinAssigns;
  CVRXoutPrfFunctionArray functions;
  auto& package = Add<CVRXoutPackage>(&packages);
  package.m_sName = "PACK";
  package.m_sType = "user-defined";
  for (const char* szForm : {"first", "second"}) {
    auto& form = Add<CVRXoutPackageMountForm>(package.m_pMountFormArray);
    form.m_sMountForm = szForm;
    form.m_sSpec = szForm == std::string("first") ? "" : "flow";
  }
  auto& function = Add<CVRXoutPrfFunction>(&functions);
  function.m_sName = "FN";
  function.m_pPropertyArray->Add(new CLProperty("a", "b"));
  auto& assign = Add<CVRXoutPrfPinAssign>(&pinAssigns);
  assign.m_sName = "PA";
  Add<CVRXoutPrfPinAssignPort>(assign.m_pPortArray);
  for (const char* szName : {"P1", "P2"}) {
    auto& part = Add<CVRXoutPrfPart>(&parts);
    part.m_sName = szName;
    part.m_sPinAssignRef = "PA";
    Add<CVRXoutPrfPartPort>(part.m_pPortArray).m_sPortName = "50%";
  }
  CVRXoutPrfPart& part = *parts.GetAt(0);
  part.m_sFootprintRef = "F";
  Add<CVRXoutPrfPartGateDef>(part.m_pGateDefArray);
  part.m_pPropertyArray->Add(new CLProperty("k", "same"));
  part.m_pPropertyArray->Add(new CLProperty("k", "same"));
  part.m_pPropertyArray->Add(new CLProperty("note", "(x)"));

  CBDesigner root;
  const std::vector<std::string> expected = {
      "m_pPackageArray[PACK] CVRXoutPackage.m_sType normalised=user-defined",
      "m_pPackageArray[PACK].m_pMountFormArray[0] CVRXoutPackageMountForm.m_sSpec normalised=",
      "m_pPackageArray[PACK].m_pMountFormArray[1] CVRXoutPackageMountForm.m_sMountForm dropped=second",
      "m_pPrfFunctionArray[FN] CVRXoutPrfFunction.m_pPropertyArray dropped=1",
      "m_pPrfPinAssignArray[PA] CVRXoutPrfPinAssign.m_pPortArray dropped=1",
      "m_pPrfPartArray[P1] CVRXoutPrfPart.m_sFootprintRef dropped=F",
      "m_pPrfPartArray[P1] CVRXoutPrfPart.m_pGateDefArray dropped=1",
      // Only the first part that a pin assign finds has its ports changed.
      "m_pPrfPartArray[P1].m_pPortArray[0] CVRXoutPrfPartPort.m_sPortName normalised=50%",
      "m_pPrfPartArray[P1].m_pPropertyArray[k] CLProperty. dropped=same",
      "m_pPrfPartArray[P1].m_pPropertyArray[note] CLProperty.comment normalised=(x)"};
  EXPECT_EQ(LossesOf(root, {&packages, &parts, &pinAssigns, &functions}), expected);
  EXPECT_EQ(LossesOf(root), std::vector<std::string>{});
}

// Every text field of a record on its own, with texts that its file may not be able to hold: a loss is told if, and
// only if, the text does not come back.
TEST(ExportLossesOfRecords, AreThoseOfTheFilesReadBack) {
  using D = CPC_BD_OutClsGet;
  using Set = void (*)(D&, const CString&);
  using Get = CString (*)(const D&);
  struct Field {
    const char* name;
    Set set;
    Get get;
  };
  static const auto kForm = [](const D& d) -> CVRXoutPackageMountForm& {
    return *d.m_pPackageArray->GetAt(0)->m_pMountFormArray->GetAt(0);
  };
  static const auto kPart = [](const D& d) -> CVRXoutPrfPart& { return *d.m_pPrfPartArray->GetAt(0); };
  const Field kFields[] = {
      {"package name", [](D& d, const CString& s) { d.m_pPackageArray->GetAt(0)->m_sName = s; },
       [](const D& d) { return d.m_pPackageArray->GetAt(0)->m_sName; }},
      {"package type", [](D& d, const CString& s) { d.m_pPackageArray->GetAt(0)->m_sType = s; },
       [](const D& d) { return d.m_pPackageArray->GetAt(0)->m_sType; }},
      {"mount form", [](D& d, const CString& s) { kForm(d).m_sMountForm = s; },
       [](const D& d) { return kForm(d).m_sMountForm; }},
      {"footprint", [](D& d, const CString& s) { kForm(d).m_sFootprintRef = s; },
       [](const D& d) { return kForm(d).m_sFootprintRef; }},
      {"bottom footprint", [](D& d, const CString& s) { kForm(d).m_sBottomFootprint = s; },
       [](const D& d) { return kForm(d).m_sBottomFootprint; }},
      {"spec", [](D& d, const CString& s) { kForm(d).m_sSpec = s; }, [](const D& d) { return kForm(d).m_sSpec; }},
      {"part name", [](D& d, const CString& s) { kPart(d).m_sName = s; }, [](const D& d) { return kPart(d).m_sName; }},
      {"package of a part", [](D& d, const CString& s) { kPart(d).m_sPackageRef = s; },
       [](const D& d) { return kPart(d).m_sPackageRef; }},
      {"pin assign of a part", [](D& d, const CString& s) { kPart(d).m_sPinAssignRef = s; },
       [](const D& d) { return kPart(d).m_sPinAssignRef; }},
      {"class of a part", [](D& d, const CString& s) { kPart(d).m_sPartClass = s; },
       [](const D& d) { return kPart(d).m_sPartClass; }},
      {"number of a port", [](D& d, const CString& s) { kPart(d).m_pPortArray->GetAt(0)->m_sPortNo = s; },
       [](const D& d) { return kPart(d).m_pPortArray->GetAt(0)->m_sPortNo; }},
      {"name of a port", [](D& d, const CString& s) { kPart(d).m_pPortArray->GetAt(0)->m_sPortName = s; },
       [](const D& d) { return kPart(d).m_pPortArray->GetAt(0)->m_sPortName; }},
      {"type of a port", [](D& d, const CString& s) { kPart(d).m_pPortArray->GetAt(0)->m_sPortType = s; },
       [](const D& d) { return kPart(d).m_pPortArray->GetAt(0)->m_sPortType; }},
      {"key", [](D& d, const CString& s) { kPart(d).m_pPropertyArray->GetAt(0)->m_sItem = s; },
       [](const D& d) { return kPart(d).m_pPropertyArray->GetAt(0)->m_sItem; }},
      {"value", [](D& d, const CString& s) { kPart(d).m_pPropertyArray->GetAt(0)->m_sComment = s; },
       [](const D& d) { return kPart(d).m_pPropertyArray->GetAt(0)->m_sComment; }},
      {"value of a keyword of its own",
       [](D& d, const CString& s) {
         kPart(d).m_pPropertyArray->GetAt(0)->m_sItem = "polarity";
         kPart(d).m_pPropertyArray->GetAt(0)->m_sComment = s;
       },
       [](const D& d) { return kPart(d).m_pPropertyArray->GetAt(0)->m_sComment; }},
  };
  const std::string_view kTexts[] = {"a",        "",
                                     "a b",      " a",
                                     "a ",       "a\"b",
                                     "\"",       "a)",
                                     "a))",      ")",
                                     "a)b",      "(a",
                                     "a(b",      "%",
                                     "a%%b",     "%%%",
                                     "a%d",      "a\tb",
                                     "a\t",      "a\nb",
                                     "//",       "\\",
                                     "UNDEF",    "user-defined",
                                     "\x95\x5C", std::string_view("a\0b", 3)};
  const laminate::test::TestFolder folder;
  for (const Field& field : kFields) {
    for (const std::string_view text : kTexts) {
      SCOPED_TRACE(std::string(field.name) + " <" + std::string(text) + ">");
      D data;
      auto& package = Add<CVRXoutPackage>(data.m_pPackageArray);
      package.m_sType = "UNDEF";  // what a package without a name gets
      Add<CVRXoutPackageMountForm>(package.m_pMountFormArray).m_sSpec = "flow";
      Add<CVRXoutPrfPartPort>(Add<CVRXoutPrfPart>(data.m_pPrfPartArray).m_pPortArray).m_sPortType = "IN";
      kPart(data).m_pPropertyArray->Add(new CLProperty("k", "v"));
      field.set(data, CString(text));
      CBDesigner root;
      const std::size_t nLosses = LossesOf(root, {data.m_pPackageArray, data.m_pPrfPartArray, nullptr, nullptr}).size();
      {
        std::string sPackages;
        std::string sParts;
        laminate::TextOut packages(sPackages);
        laminate::TextOut parts(sParts);
        laminate::WritePackageFile(packages, *data.m_pPackageArray);
        laminate::WriteComponentDefinitionFile(parts, data.m_pPrfPartArray, nullptr, nullptr);
        packages.Flush();
        parts.Flush();
        folder.Write("p.pkf", sPackages);
        folder.Write("p.cdf", sParts);
      }
      { CExportFormatter formatter(CString((folder / "p.pkf").c_str()), 4); }
      D again;
      again.vGetOutPackageArray((folder / "p.pkf").c_str());
      again.vGetOutPrfPartArray((folder / "p.cdf").c_str());
      bool bCame = !again.m_pPackageArray->IsEmpty() &&
                   !again.m_pPackageArray->GetAt(0)->m_pMountFormArray->IsEmpty() &&
                   !again.m_pPrfPartArray->IsEmpty() && !kPart(again).m_pPortArray->IsEmpty() &&
                   !kPart(again).m_pPropertyArray->IsEmpty();
      bCame = bCame && field.get(again) == CString(text);
      EXPECT_EQ(nLosses == 0, bCame);
    }
  }
}

// ---- the ledgers and what is looked for ----

TEST(ExportLedgers, OfShapesAreLookedForInFull) {
  std::set<std::pair<std::string, std::string>> lookedFor;
  for (const auto& [sClass, sField] : laminate::ShapeFieldsLookedFor()) {
    lookedFor.emplace(sClass, sField);
    EXPECT_NE(laminate::FindLedgerRow(sClass, sField), nullptr) << sClass << "." << sField;
  }
  // Told for all shapes together, by what they hold, or as the loss of the object.
  const std::set<std::pair<std::string, std::string>> otherwise = {
      {"CBDdrawPad", "m_sNet"},   {"CBDdrawPadstack", "m_sNet"},  {"CBDline", "m_sNet"},
      {"CBDline", "m_sPenShape"}, {"CBDline", "m_pVertices"},     {"CBDopenShape", "m_pVertices"},
      {"CBDsurface", "m_sNet"},   {"CBDsurface", "m_pVertices"},  {"CBDsurface", "m_pOpenShapes"},
      {"CBDhole", "m_pShape"},    {"CBDdrawPadstack", "m_pHole"}, {"CBDtext", "m_sSpare"},
      {"CBDtext", "m_dSpare"},    {"CBDvertexArc", "m_nSpare"},   {"CBDpadstackRefLay", "m_nLayerNumber"},
      {"CBDsurface", "m_bMesh"}};
  for (const laminate::LedgerRow& row : laminate::DrawObjLedger()) {
    const bool bKept = row.byItself == laminate::Fate::kept && row.inGeometry == laminate::Fate::kept;
    const bool bField = row.field.starts_with("m_");
    const std::set<std::string> asWhole = {"CBDdrawObj", "CBDareaz", "CBDdrawSubBoard", "CBDsymbolText"};
    if (bKept || !bField || asWhole.contains(std::string(row.className))) continue;
    const std::pair<std::string, std::string> key(row.className, row.field);
    EXPECT_TRUE(lookedFor.contains(key) || otherwise.contains(key)) << key.first << "." << key.second;
  }
}

TEST(ExportLedgers, OfRecordsNameEachFieldOnce) {
  std::set<std::pair<std::string_view, std::string_view>> seen;
  for (const laminate::RecordLedgerLine& line : laminate::RecordLedger()) {
    EXPECT_TRUE(seen.emplace(line.className, line.field).second) << line.className << "." << line.field;
    EXPECT_TRUE(line.field.starts_with("m_")) << line.field;
  }
  EXPECT_GT(seen.size(), 100u);
}

TEST(ExportLedgers, OfRecordsIsShownToUsers) {
  EXPECT_EQ(laminate::test::ReadFile(LEDGER_PAGE), RecordLedgerPage())
      << "the page is made by: write_record_ledger > " LEDGER_PAGE;
}

}  // namespace
