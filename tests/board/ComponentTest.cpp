#include "board/BoardForms.h"
#include "board/CBDboardContainer.h"
#include "board/CBDcomponent.h"
#include "board/CBDgate.h"
#include "board/CBDpin.h"
#include "board/ComponentTranslator.h"
#include "drawobj/CBDcircle.h"
#include "drawobj/CBDdelete.h"
#include "drawobj/CBDdrawPad.h"
#include "drawobj/CBDdrawPadstack.h"
#include "drawobj/CBDhole.h"
#include "drawobj/CBDline.h"
#include "drawobj/CBDsquareHole.h"
#include "drawobj/CBDsymbolText.h"
#include "technology/RecordTestSupport.h"

using laminate::BoardContext;
using laminate::ReadComponentForm;

namespace {

// Fields that differ from those of a new component, by name.
std::string Show(const CBDcomponent& c) {
  const CBDcomponent fresh;
  std::string s;
  const auto text = [&s](const char* szName, const CString& value, const CString& start) {
    if (value != start) s += std::string(szName) + "=" + Str(value) + " ";
  };
  const auto number = [&s](const char* szName, const auto& value, const auto& start) {
    if (!(value == start)) s += std::string(szName) + "=" + Str(value) + " ";
  };
  number("scale", c.m_dScale, fresh.m_dScale);
  text("reference", c.m_sReference, fresh.m_sReference);
  if (c.m_nGateCount != 0) s += "gateCount=" + std::to_string(c.m_nGateCount) + " ";
  if (c.m_nPinCount != 0) s += "pinCount=" + std::to_string(c.m_nPinCount) + " ";
  text("part", c.m_sPart, fresh.m_sPart);
  text("stockId", c.m_sStockId, fresh.m_sStockId);
  text("package", c.m_sPackage, fresh.m_sPackage);
  text("footprintSpec", c.m_sFootprintSpec, fresh.m_sFootprintSpec);
  text("footprint", c.m_sFootprint, fresh.m_sFootprint);
  text("reverseFootprint", c.m_sReverseFootprint, fresh.m_sReverseFootprint);
  text("originalReferecne", c.m_sOriginalReference, fresh.m_sOriginalReference);
  text("placed", c.m_sPlaced, fresh.m_sPlaced);
  text("placementSide", c.m_sPlacementSide, fresh.m_sPlacementSide);
  text("locationLock", c.m_sLocationLock, fresh.m_sLocationLock);
  text("angleLock", c.m_sAngleLock, fresh.m_sAngleLock);
  text("placementSideLock", c.m_sPlacementSideLock, fresh.m_sPlacementSideLock);
  text("packageSymbol", c.m_sPackageSymbol, fresh.m_sPackageSymbol);
  text("outOfBoard", c.m_sOutOfBoard, fresh.m_sOutOfBoard);
  number("outOfBoardLocation", c.m_ptOutOfBoardLocation, CPointD());
  number("location", c.m_ptLocation, CPointD());
  number("minRect1", c.m_ptMinRect1, CPointD());
  number("minRect2", c.m_ptMinRect2, CPointD());
  number("angle", c.m_dAngle, 0.0);
  text("drawRefDes", c.m_sDrawRefDes, fresh.m_sDrawRefDes);
  if (!c.m_pDrawObjArray->IsEmpty()) s += "{" + Str(*c.m_pDrawObjArray) + "} ";
  for (const CBDgate* pGate : *c.m_pGateArray) {
    s += "gate " + Str(pGate->m_sId) + (pGate->m_sLockMode == "UNFIXED" ? "" : "!");
    for (const CBDgatePin* pPin : *pGate->m_pGatePinArray) s += "," + Str(pPin->m_sName) + "/" + Str(pPin->m_sLockMode);
    s += " ";
  }
  for (const CBDpin* pPin : *c.m_pPinArray) {
    s += "pin " + Str(pPin->m_sName) + "@" + Str(pPin->m_ptLocation);
    for (const CBDpinGate* p : *pPin->m_pPinGateArray) s += " g" + std::to_string(p->m_nGate) + "/" + Str(p->m_sName);
    for (const CBDbondwire* p : *pPin->m_pBondwireArray) s += " w" + Str(p->m_ptFrom) + ">" + Str(p->m_ptTo);
    if (!pPin->m_pDrawObjArray->IsEmpty()) s += " {" + Str(*pPin->m_pDrawObjArray) + "}";
    s += " ";
  }
  for (const CGProperty* p : *c.m_pPropertyArray) s += "+" + Str(p->GetItem()) + "=" + Str(p->GetComment()) + " ";
  if (!s.empty()) s.pop_back();
  return s;
}

CBDdrawObjArray& Board() {
  static CBDdrawObjArray board;
  return board;
}

std::string Read(const CECadClsLvl& node) {
  BoardContext context{&Board()};
  return Show(*ReadComponentForm(node, context));
}

std::string Component(const std::string& s) { return "(component " + s + ")"; }
std::string Layout(const std::string& layers) { return "(component (layout " + layers + "))"; }
std::string Refer(const std::string& s) { return Layout("(layer (conductive 1) (refer " + s + "))"); }
std::string PinLayout(const std::string& layers) { return "(component (pin 1 (layout " + layers + ")))"; }
std::string PinRefer(const std::string& s) { return PinLayout("(layer (conductive 1) (refer " + s + "))"); }

TEST(ComponentReading, Texts) {
  std::vector<ReadCase> cases;
  for (const char* szKey : {"reference", "part", "stockId", "package", "footprint", "reverseFootprint", "footprintSpec",
                            "originalReferecne", "placed", "placementSide", "locationLock", "angleLock",
                            "placementSideLock", "packageSymbol", "outOfBoard", "drawRefDes"}) {
    const std::string key = szKey;
    cases.push_back({szKey, Component("(" + key + " x)"), key + "=x"});
    cases.push_back({szKey, Component("(" + key + " x y (foo))"), key + "=x"});
    cases.push_back({szKey, Component("(" + key + " x) (" + key + " y)"), key + "=y"});
    cases.push_back({szKey, Component("(" + key + ")"), "raises \"" + key + "\" has no value 1"});
  }
  CheckReading(cases, Read);
}

TEST(ComponentReading, Rows) {
  CheckReading(
      {
          {"nothing", "(component)", ""},
          {"its own value does not count", "(component U1)", ""},
          {"unknown", Component("(foo 1) (Reference U1) (minRect (box (pt 1.0 1.0))) (originalReference U7)"), ""},
          {"counts", Component("(gateCount 3) (pinCount 4x)"), "gateCount=3 pinCount=4"},
          {"no gate count", Component("(gateCount)"), "raises \"gateCount\" has no value 1"},
          {"no pin count", Component("(pinCount)"), "raises \"pinCount\" has no value 1"},
          {"location in units", Component("(location (pt 1000000 1000000.0))"), "location=10;1e+06"},
          {"first point counts", Component("(location (pt 1.0 2.0) (pt 3.0 4.0))"), "location=1;2"},
          {"location without point", Component("(location 1.0 2.0) (outOfBoardLocation (foo))"), ""},
          {"location without y", Component("(location (pt 1.0))"), "raises \"pt\" has no value 2"},
          {"location without x", Component("(location (pt))"), "raises \"pt\" has no value 1"},
          {"out of board", Component("(outOfBoardLocation (pt 1.0 2.0))"), "outOfBoardLocation=1;2"},
          {"out of board without y", Component("(outOfBoardLocation (pt 1.0))"), "raises \"pt\" has no value 2"},
          {"angle is no length", Component("(angle 90)"), "angle=90"},
          {"no angle", Component("(angle)"), "raises \"angle\" has no value 1"},
          {"scale", Component("(propertyF Scale 2.5)"), "scale=2.5 +Scale=2.5"},
          {"another number is dropped", Component("(propertyF Height 3)"), ""},
          {"whatever else it lacks", Component("(propertyF Height)"), ""},
          {"scale without value", Component("(propertyF Scale)"), "raises \"propertyF\" has no value 2"},
          {"number without item", Component("(propertyF)"), "raises \"propertyF\" has no value 1"},
          {"texts", Component("(propertyS A b) (propertyS Scale c)"), "+A=b +Scale=c"},
          {"text without comment", Component("(propertyS A)"), "raises \"propertyS\" has no value 2"},
          {"text without item", Component("(propertyS)"), "raises \"propertyS\" has no value 1"},
      },
      Read);
}

TEST(ComponentReading, Gates) {
  CheckReading(
      {
          {"one value, one child", Component("(gate 1 (id A) (pin 1))"), "gate A"},
          {"two values, two children", Component("(gate 1 2 (id A) (pin 1) (pin 2))"), "gate A,1/UNFIXED"},
          {"no value, no child", Component("(gate (id A))"), "gate "},
          {"lock mode of a pin", Component("(gate 1 2 (pin 1 (lockMode FIXED)) (pin 2 (foo)))"),
           "gate ,1/FIXED,2/UNFIXED"},
          {"a gate's lock mode is passed over", Component("(gate 1 (lockMode FIXED))"), "gate "},
          {"fewer children than values", Component("(gate 1 2 (id A))"),
           "raises \"gate\" has fewer forms in it than values"},
          {"none", Component("(gate 1)"), "raises \"gate\" has fewer forms in it than values"},
          {"no id", Component("(gate 1 (id))"), "raises \"id\" has no value 1"},
          {"no pin name", Component("(gate 1 (pin))"), "raises \"pin\" has no value 1"},
          {"no lock mode", Component("(gate 1 (pin 1 (lockMode)))"), "raises \"lockMode\" has no value 1"},
      },
      Read);
}

TEST(ComponentReading, Pins) {
  CheckReading(
      {
          {"nothing", Component("(pin 1)"), "pin 1@0;0"},
          {"no name", Component("(pin)"), "raises \"pin\" has no value 1"},
          {"point", Component("(pin 1 (pt 1.0 200000))"), "pin 1@1;2"},
          {"repeated point", Component("(pin 1 (pt 1.0 2.0) (pt 3.0 4.0))"), "pin 1@3;4"},
          {"no y", Component("(pin 1 (pt 1.0))"), "raises \"pt\" has no value 2"},
          {"no x", Component("(pin 1 (pt))"), "raises \"pt\" has no value 1"},
          {"gates", Component("(pin 1 (gate 2 (name A)) (gate 3))"), "pin 1@0;0 g2/A g3/"},
          {"a name without value is none", Component("(pin 1 (gate 2 (name)))"), "pin 1@0;0 g2/"},
          {"first name counts", Component("(pin 1 (gate 2 (name A) (name B)))"), "pin 1@0;0 g2/A"},
          {"gate without number", Component("(pin 1 (gate (name A)))"), "raises \"gate\" has no value 1"},
          {"bond wire", Component("(pin 1 (bondWire (from 1.0 2.0) (x 3.0 400000) (y)))"), "pin 1@0;0 w1;2>3;4"},
          {"bond wire of one point", Component("(pin 1 (bondWire (from 1.0 2.0)))"), "pin 1@0;0 w1;2>0;0"},
          {"bond wire of none", Component("(pin 1 (bondWire))"), "pin 1@0;0 w0;0>0;0"},
          {"bond wire without y", Component("(pin 1 (bondWire (a 1.0 2.0) (b 1.0)))"), "raises \"b\" has no value 2"},
          {"unknown", Component("(pin 1 (foo) (net A))"), "pin 1@0;0"},
      },
      Read);
}

TEST(ComponentReading, ShapesOfAComponent) {
  CheckReading(
      {
          {"by layer", Layout("(layer (conductive 2) (circle 1.0)) (layer (nonConductive SILK) (oval))"),
           "{CIRCLE@conductive/2/2 OVAL@nonConductive/SILK/0}"},
          {"only layers", Layout("(foo (conductive 2) (circle 1.0))"), ""},
          {"two layouts add up", "(component (layout (layer (circle 1.0))) (layout (layer (oval))))",
           "{CIRCLE@//0 OVAL@//0}"},
          {"info layers are passed over", Layout("(layer (infoOf 1) (circle 1.0))"), ""},
          {"draw layers too, whatever else they say", Layout("(layer (conductive 1) (drawOf 1) (circle))"), ""},
          {"before their header can fail", Layout("(layer (conductive) (infoOf))"), ""},
          {"header without value", Layout("(layer (conductive))"), "raises \"conductive\" has no value 1"},
          {"what names the layer is no shape",
           Layout("(layer (systemLayer (type HOLE)) (conductive 1) (nonConductive X) (circle 1.0))"),
           "{CIRCLE@systemLayer/HOLE/0}"},
          {"what stands for no shape", Layout("(layer (basePoint) (circle 1.0))"), "{CIRCLE@//0}"},
          {"a shape that lacks a value", Layout("(layer (circle))"), "raises \"circle\" has no value 1"},
      },
      Read);
}

TEST(ComponentReading, RefersOfAComponent) {
  CheckReading(
      {
          {"a shape", Refer("(circle 1.0)"), "{CIRCLE@conductive/1/1r}"},
          {"the last one counts", Refer("(circle 1.0) (oval)"), "{OVAL@conductive/1/1r}"},
          {"none", Refer(""), ""},
          {"none that is a shape", Refer("(basePoint) (net A)"), ""},
          {"a null does not clear the last one", Refer("(circle 1.0) (basePoint)"), "{CIRCLE@conductive/1/1r}"},
          {"net before", Refer("(net A) (circle 1.0)"), "{CIRCLE@conductive/1/1r=A}"},
          {"net behind", Refer("(circle 1.0) (net A)"), "{CIRCLE@conductive/1/1r}"},
          {"an empty net leaves the shape's own", Refer("(net \"\") (line (net B))"), "{LINE@conductive/1/1r=B}"},
          {"net without value", Refer("(net)"), "raises \"net\" has no value 1"},
          {"cavities", Refer("(cavityFrom 1) (cavityTo 2) (circle 1.0)"), "{CIRCLE@conductive/1/1r[1,2]}"},
          {"any keyword that holds the word", Refer("(xcavityFromy 1) (cavityTo2 3) (circle 1.0)"),
           "{CIRCLE@conductive/1/1r[1,3]}"},
          {"one cavity alone", Refer("(cavityFrom 1) (circle 1.0)"), "{CIRCLE@conductive/1/1r}"},
          {"the other alone", Refer("(cavityTo 1) (circle 1.0)"), "{CIRCLE@conductive/1/1r}"},
          {"cavities behind", Refer("(circle 1.0) (cavityFrom 1) (cavityTo 2)"), "{CIRCLE@conductive/1/1r}"},
          {"minus one is none", Refer("(cavityFrom -1) (cavityTo 2) (circle 1.0)"), "{CIRCLE@conductive/1/1r}"},
          {"cavity without value", Refer("(cavityFrom)"), "raises \"cavityFrom\" has no value 1"},
          {"the other too", Refer("(cavityTo)"), "raises \"cavityTo\" has no value 1"},
          {"tags and properties", Refer("(msgTag x) (propertyS) (myproperty) (circle 1.0)"),
           "{CIRCLE@conductive/1/1r}"},
          {"property comes before cavity", Refer("(propertycavityFrom) (circle 1.0)"), "{CIRCLE@conductive/1/1r}"},
      },
      Read);
}

TEST(ComponentReading, AReferWithoutShapeAddsNothing) {
  CheckReading(
      {
          {"behind a shape", Layout("(layer (conductive 1) (circle 1.0) (refer (net A)))"), "{CIRCLE@conductive/1/1}"},
          {"behind a refer", Layout("(layer (conductive 1) (refer (circle 1.0)) (refer) (oval))"),
           "{CIRCLE@conductive/1/1r OVAL@conductive/1/1}"},
          {"in another layer", Layout("(layer (conductive 1) (refer (circle 1.0))) (layer (conductive 2) (refer))"),
           "{CIRCLE@conductive/1/1r}"},
          {"in a pin behind the component's own",
           "(component (layout (layer (refer (circle 1.0)))) (pin 1 (layout (layer (refer)))))",
           "{CIRCLE@//0r} pin 1@0;0"},
          {"in the component behind a pin's",
           "(component (pin 1 (layout (layer (refer (circle 1.0))))) (layout (layer (refer))))",
           "pin 1@0;0 {CIRCLE@//0r}"},
      },
      Read);
}

TEST(ComponentReading, ShapesOfAPin) {
  CheckReading(
      {
          {"by layer", PinLayout("(layer (conductive 2) (pad P)) (layer (systemLayer (type S)) (circle 1.0))"),
           "pin 1@0;0 {DRAWPAD@conductive/2/2 CIRCLE@systemLayer/S/0}"},
          {"the foot layer is no shape", PinLayout("(layer (footLayer L) (circle 1.0))"), "pin 1@0;0 {CIRCLE@//0}"},
          {"info and draw layers are read", PinLayout("(layer (conductive 1) (drawOf 1) (circle 1.0))"),
           "pin 1@0;0 {CIRCLE@conductive/1/1}"},
          {"header without value", PinLayout("(layer (conductive (type 3)))"), "raises \"conductive\" has no value 1"},
          {"the last of a refer", PinRefer("(net A) (msgTag) (circle 1.0) (oval) (basePoint)"),
           "pin 1@0;0 {OVAL@conductive/1/1r}"},
          {"cavities give no shape here", PinRefer("(circle 1.0) (cavityFrom 1)"),
           "pin 1@0;0 {CIRCLE@conductive/1/1r}"},
          {"none", PinRefer(""), "pin 1@0;0"},
      },
      Read);
}

TEST(ComponentReading, KeywordsThatAreNoneShowABox) {
  Tree tree(Layout("(layer (footLayer L) (foo))"));
  Read(tree.Form());
  EXPECT_EQ((std::vector<std::string>{"New Draw Type : footLayer", "New Draw Type : foo"}), tree.Boxes());
  // In a pin's refer a property is a keyword like any other.
  Tree pin(PinRefer("(propertyS A b) (circle 1.0)"));
  EXPECT_EQ("pin 1@0;0 {CIRCLE@conductive/1/1r}", Read(pin.Form()));
  EXPECT_EQ((std::vector<std::string>{"New Draw Type : propertyS"}), pin.Boxes());
}

TEST(ComponentReading, ShapesOfABoardAssemblyGoToTheBoard) {
  Tree tree(Layout("(layer (conductive 1) (boardAssembly (geometry (circle 1.0))))"));
  EXPECT_EQ("{DRAWSUBBOARD@conductive/1/1}", Read(tree.Form()));
  EXPECT_EQ("CIRCLE@conductive/1/1", Str(Board()));
  Board().DeleteAll();
}

TEST(ComponentTranslation, AppendsAFinishedComponent) {
  CBDboardContainer board;
  Tree good("(component (reference U1))");
  EXPECT_EQ(0, laminate::ReadComponent(&good.Form(), board));
  Tree bad("(component (reference U2) (pin))");
  EXPECT_NE("", RaisedBy([&] { laminate::ReadComponent(&bad.Form(), board); }));
  ASSERT_EQ(1, board.m_pComponentArray->GetSize());
  EXPECT_EQ("U1", board.m_pComponentArray->GetAt(0)->m_sReference);
  EXPECT_NE("", RaisedBy([&] { laminate::ReadComponent(nullptr, board); }));
  delete std::exchange(board.m_pComponentArray, nullptr);
  EXPECT_NE("", RaisedBy([&] { laminate::ReadComponent(&good.Form(), board); }));
}

// ---- look-up ----

TEST(ComponentLookUp, PinNameOfAGate) {
  CBDcomponent component;
  component.m_pPinArray->Add(nullptr);
  const auto add = [&](const char* szPin, int nGate, const char* szGate) {
    auto* pPin = new CBDpin;
    pPin->m_sName = szPin;
    pPin->m_pPinGateArray->Add(nullptr);
    pPin->m_pPinGateArray->Add(new CBDpinGate);
    pPin->m_pPinGateArray->GetAt(1)->m_nGate = nGate;
    pPin->m_pPinGateArray->GetAt(1)->m_sName = szGate;
    component.m_pPinArray->Add(pPin);
  };
  add("1", 1, "A");
  add("2", 2, "A");
  add("3", 2, "B");
  add("4", 2, "B");
  EXPECT_EQ("1", component.sGetPinName(1, "A"));
  EXPECT_EQ("2", component.sGetPinName(2, "A"));
  EXPECT_EQ("3", component.sGetPinName(2, "B"));
  EXPECT_EQ("", component.sGetPinName(3, "A"));
  EXPECT_EQ("", component.sGetPinName(1, "a"));
  delete std::exchange(component.m_pPinArray->GetAt(1)->m_pPinGateArray, nullptr);
  EXPECT_EQ("", component.sGetPinName(1, "A"));
  delete std::exchange(component.m_pPinArray, nullptr);
  EXPECT_EQ("", component.sGetPinName(2, "A"));
}

// ---- writing ----

CBDdrawObj* Shape(CBDdrawObj* p, const char* szType, const char* szName) {
  p->m_sLayerType = szType;
  p->m_sLayerName = szName;
  return p;
}
template <class T>
T* Add(laminate::NamedArray<T>& array) {
  return &laminate::AppendOwned(array, std::make_unique<T>());
}

std::string ComponentText(const std::string& layout = "", const std::string& behind = "") {
  return "(component (reference U1)\n(gateCount 0)\n(pinCount 0)\n(part )\n(footprintSpec default)\n(footprint )\n"
         "(originalReference U1)\n(placed YES)\n(placementSide A)\n(placementSideLock NO)\n(outOfBoard NO)\n"
         "(outOfBoardLocation\n(pt 0.00000 0.00000)\n)\n(location\n(pt 0.00000 0.00000)\n)\n"
         "(minRect\n(box\n(pt 0.00000 0.00000)\n(pt 0.00000 0.00000)\n)\n)\n(angle 0.00000)\n(drawRefDes NO)\n"
         "(layout\n" +
         layout + ")\n" + behind + ")\n";
}

TEST(ComponentWriting, ANewOne) {
  CBDcomponent component;
  component.m_sReference = "U1";
  EXPECT_EQ(ComponentText(), Printed(component));
  EXPECT_NE("", RaisedBy([&] { component.nPrint2File(nullptr); }));
}

TEST(ComponentWriting, AllOfIt) {
  CBDcomponent c;
  c.m_sReference = "U 1";
  c.m_nGateCount = 9;
  c.m_nPinCount = 12;
  c.m_sPart = "P";
  c.m_sStockId = "S(1)";
  c.m_sPackage = "K";
  c.m_sFootprintSpec = "";
  c.m_sFootprint = "F(2)";
  c.m_sReverseFootprint = "R";
  c.m_sOriginalReference = "U7";
  c.m_sPlaced = "NO";
  c.m_sPlacementSide = "B";
  c.m_sLocationLock = "LL";
  c.m_sAngleLock = "AL";
  c.m_sPlacementSideLock = "YES";
  c.m_sPackageSymbol = "NO";
  c.m_sOutOfBoard = "YES";
  c.m_ptOutOfBoardLocation = CPointD(1, 2);
  c.m_ptLocation = CPointD(3, 4);
  c.m_ptMinRect1 = CPointD(5, 6);
  c.m_ptMinRect2 = CPointD(7, 8);
  c.m_dAngle = 90.5;
  c.m_sDrawRefDes = "YES";
  c.m_pGateArray->Add(nullptr);
  auto* pGate = Add(*c.m_pGateArray);
  pGate->m_sId = "A";
  Add(*c.m_pPinArray)->m_sName = "1";
  c.m_pPropertyArray->Add(new CGProperty("Scale", "2.5"));
  c.m_pPropertyArray->Add(nullptr);
  c.m_pPropertyArray->Add(new CGProperty("a b", "\"x\""));
  EXPECT_EQ(
      "(component (reference U 1)\n(gateCount 1)\n(pinCount 12)\n(part P)\n(stockId S(1))\n(package K)\n"
      "(footprintSpec )\n(footprint F(2))\n(reverseFootprint R)\n(originalReference U 1)\n(placed NO)\n"
      "(placementSide B)\n(placementSideLock YES)\n(angleLock AL)\n(locationLock LL)\n(packageSymbol YES)\n"
      "(outOfBoard NO)\n(outOfBoardLocation\n(pt 1.00000 2.00000)\n)\n(location\n(pt 3.00000 4.00000)\n)\n"
      "(minRect\n(box\n(pt 5.00000 6.00000)\n(pt 7.00000 8.00000)\n)\n)\n(angle 90.50000)\n(drawRefDes NO)\n"
      "(layout\n)\n(gate 1\n(id A)\n(lockMode UNFIXED)\n)\n(pin 1\n(pt 0.00000 0.00000)\n(layout\n)\n)\n"
      "(propertyF Scale 2.5)\n(propertyS a b \"x\")\n)\n",
      Printed(c));
}

TEST(ComponentWriting, PartNamesAreQuotedWhereTheyMust) {
  for (const auto& [part, line] : {
           std::pair{"A", "(part A)\n"},
           {"A B", "(part \"A B\")\n"},
           {"A(B", "(part \"A(B\")\n"},
           {"A)B", "(part \"A)B\")\n"},
           {"A%sB", "(part A%sB)\n"},
       }) {
    CBDcomponent component;
    component.m_sPart = part;
    EXPECT_NE(std::string::npos, Printed(component).find(std::string("\n") + line)) << part;
    EXPECT_EQ(part, component.m_sPart);
  }
}

TEST(ComponentWriting, AnEmptyReferenceBecomesTwoQuotes) {
  CBDcomponent component;
  const std::string text = Printed(component);
  EXPECT_TRUE(text.starts_with("(component (reference \"\")\n"));
  EXPECT_NE(std::string::npos, text.find("(originalReference \"\")\n"));
  EXPECT_EQ("\"\"", component.m_sReference);
  EXPECT_EQ(text, Printed(component));
}

TEST(ComponentWriting, VerbatimLinesReplaceTheRest) {
  CBDcomponent component;
  component.m_aVerbatim.Add("(part %s)");
  component.m_aVerbatim.Add("");
  component.m_aVerbatim.Add(")");
  EXPECT_EQ("(component (reference \"\")\n(part %s)\n\n)\n", Printed(component));
}

TEST(ComponentWriting, OneGateMakesAPackageSymbol) {
  for (const int nGates : {0, 1, 2}) {
    CBDcomponent component;
    for (int i = 0; i < nGates; ++i) Add(*component.m_pGateArray);
    const std::string text = Printed(component);
    EXPECT_EQ(nGates == 1, text.find("(packageSymbol YES)\n") != std::string::npos);
    EXPECT_NE(std::string::npos, text.find("(gateCount " + std::to_string(nGates) + ")\n"));
    EXPECT_EQ(nGates == 2, text.find("(gate 2\n(lockMode UNFIXED)\n)\n") != std::string::npos);
  }
}

constexpr const char* kCircle = "(geometry\n(circle 0.00000\n(pt 0.00000 0.00000)\n)\n)\n";
const std::string kReferCircle = std::string("(refer\n") + kCircle + ")\n";

TEST(ComponentWriting, LayerBlocks) {
  CBDcomponent component;
  component.m_sReference = "U1";
  CBDdrawObjArray& shapes = *component.m_pDrawObjArray;
  shapes.Add(Shape(new CBDcircle, "conductive", ""));
  shapes.Add(nullptr);
  shapes.Add(Shape(new CBDcircle, "conductive", "1"));
  shapes.Add(Shape(new CBDcircle, "", ""));
  // The name alone tells blocks apart, the type of the first shape gives the header.
  shapes.Add(Shape(new CBDcircle, "nonConductive", "1"));
  shapes.Add(Shape(new CBDcircle, "systemLayer", "HOLE"));
  shapes.Add(Shape(new CBDcircle, "nonConductive", "SILK"));
  shapes.Add(Shape(new CBDcircle, "", "X"));
  EXPECT_EQ(ComponentText("(layer (conductive 1)\n" + kReferCircle + kReferCircle +
                          ")\n(layer (systemLayer (type HOLE))\n" + kReferCircle + ")\n(layer (nonConductive SILK)\n" +
                          kReferCircle + ")\n(layer (nonConductive X)\n" + kReferCircle + ")\n"),
            Printed(component));
  // A last shape that is left out leaves the block open; an empty slot behind it changes nothing.
  shapes.DeleteAll();
  shapes.Add(Shape(new CBDcircle, "conductive", "1"));
  shapes.Add(Shape(new CBDcircle, "conductive", ""));
  shapes.Add(nullptr);
  EXPECT_EQ(ComponentText("(layer (conductive 1)\n" + kReferCircle), Printed(component));
}

TEST(ComponentWriting, LayersArePreparedInPlace) {
  CBDcomponent component;
  component.m_sReference = "U1";
  CBDdrawObjArray& shapes = *component.m_pDrawObjArray;
  shapes.Add(Shape(new CBDdelete, "conductive", "PADSTACK"));
  shapes.Add(Shape(new CBDdelete, "nonConductive", "A B"));
  shapes.Add(Shape(new CBDdelete, "nonConductive", "A(B)"));
  const std::string d = "(refer\n(delete\n)\n)\n";
  EXPECT_EQ(ComponentText("(layer (systemLayer (type PADSTACK))\n" + d + ")\n(layer (nonConductive \"A B\")\n" + d +
                          ")\n(layer (nonConductive \"A(B)\")\n" + d + ")\n"),
            Printed(component));
  EXPECT_EQ("DELETE@systemLayer/PADSTACK/0 DELETE@nonConductive/\"A B\"/0 DELETE@nonConductive/\"A(B)\"/0",
            Str(shapes));
  EXPECT_EQ(ComponentText("(layer (systemLayer (type PADSTACK))\n" + d + ")\n(layer (nonConductive \"\"A B\"\")\n" + d +
                          ")\n(layer (nonConductive \"\"A(B)\"\")\n" + d + ")\n"),
            Printed(component));
}

TEST(ComponentWriting, WhatStandsInARefer) {
  CBDcomponent component;
  component.m_sReference = "U1";
  CBDdrawObjArray& shapes = *component.m_pDrawObjArray;
  shapes.Add(Shape(new CBDdrawPad, "conductive", "1"));
  shapes.Add(Shape(new CBDdrawPadstack, "conductive", "1"));
  shapes.Add(Shape(new CBDsymbolText, "conductive", "1"));
  auto* pLine = new CBDline;
  pLine->m_sNet = "A%";
  shapes.Add(Shape(pLine, "conductive", "1"));
  auto* pSquare = new CBDhole;
  delete std::exchange(pSquare->m_pShape, new CBDsquareHole);
  shapes.Add(Shape(pSquare, "conductive", "1"));
  auto* pRound = new CBDhole;
  delete std::exchange(pRound->m_pShape, new CBDcircle);
  shapes.Add(Shape(pRound, "conductive", "1"));
  EXPECT_EQ(ComponentText(
                "(layer (conductive 1)\n"
                "(pad \n(pt 0.00000 0.00000)\n)\n"
                "(padstack \n(pt 0.00000 0.00000)\n(fromTo 0)\n(conductive\n)\n)\n"
                "(symbolText\n(type )\n(font 0)\n(geometry\n(text\n(string )\n(font 0)\n(kFont 200)\n(width 0.00000)\n"
                "(height 0.00000)\n(space 0.00000)\n(vSpace 0.00000)\n(strokeWidth 0.00000)\n(pt 0.00000 0.00000)\n"
                "(textAngle 0.00000)\n(dir LtoR)\n(justify CE_C)\n(flip NONE)\n(reverse OFF)\n)\n)\n)\n"
                "(refer\n(line\n(net \"A%%\")\n(geometry\n(line\n(vertex\n)\n)\n)\n)\n)\n"
                "(refer\n(squareHole\n(geometry\n(squareHole\n(pt 0.00000 0.00000)\n(width 0.00000)\n"
                "(height 0.00000)\n(r 0.00000)\n)\n)\n)\n)\n"
                "(refer\n(hole\n" +
                std::string(kCircle) + ")\n)\n)\n"),
            Printed(component));
}

TEST(ComponentWriting, WhatTheReaderKeepsAndTheWriterInvents) {
  const struct {
    const char* form;
    const char* line;
  } cases[] = {
      {"(pinCount 12) (pin 1) (pin 2) (pin 3)", "(pinCount 12)\n"},
      {"(gateCount 12) (gate 1 (id A))", "(gateCount 1)\n"},
      {"(reference U1) (originalReferecne U7)", "(originalReference U1)\n"},
      {"(reference U1) (originalReference U7)", "(originalReference U1)\n"},
      {"(outOfBoard YES)", "(outOfBoard NO)\n"},
      {"(drawRefDes YES)", "(drawRefDes NO)\n"},
      {"(propertyF Scale 2.5)", "(propertyF Scale 2.5)\n"},
      {"(location (pt 1000000 -1000000))", "(location\n(pt 10.00000 -10.00000)\n)\n"},
  };
  for (const auto& [form, line] : cases) {
    Tree tree(Component(form));
    BoardContext context{nullptr};
    const auto p = ReadComponentForm(tree.Form(), context);
    EXPECT_NE(std::string::npos, Printed(*p).find(std::string("\n") + line)) << form << "\n" << Printed(*p);
  }
}

TEST(GateWriting, PercentSignsDoubleWithEveryWrite) {
  CBDgate gate;
  gate.m_sLockMode = "FIXED";
  EXPECT_EQ("(lockMode UNFIXED)\n", Printed(gate));
  gate.m_sId = "A B%";
  gate.m_pGatePinArray->Add(nullptr);
  auto* pPin = Add(*gate.m_pGatePinArray);
  pPin->m_sName = "1%";
  pPin->m_sLockMode = "FIXED";
  EXPECT_EQ("(id A B%)\n(lockMode UNFIXED)\n(pin \"1%%\"\n(lockMode UNFIXED)\n)\n", Printed(gate));
  EXPECT_EQ("(id A B%)\n(lockMode UNFIXED)\n(pin \"1%%%%\"\n(lockMode UNFIXED)\n)\n", Printed(gate));
  EXPECT_EQ("1%%%%", pPin->m_sName);
  delete std::exchange(gate.m_pGatePinArray, nullptr);
  EXPECT_EQ("(id A B%)\n(lockMode UNFIXED)\n", Printed(gate));
}

TEST(PinWriting, AllOfIt) {
  CBDpin pin;
  pin.m_sName = "1%";
  pin.m_ptLocation = CPointD(1, 2);
  auto* pGate = Add(*pin.m_pPinGateArray);
  pGate->m_nGate = 2;
  pGate->m_sName = "%A";
  Add(*pin.m_pBondwireArray);
  pin.m_pDrawObjArray->Add(Shape(new CBDdelete, "conductive", "3"));
  EXPECT_EQ(
      "(pin 1%%\n(pt 1.00000 2.00000)\n(gate 2 (name %%A))\n"
      "(layout\n(layer (conductive (type 3))\n(delete\n)\n)\n)\n)\n",
      Printed(pin));
  EXPECT_EQ("1%%", pin.m_sName);
  EXPECT_EQ("%%A", pGate->m_sName);
  EXPECT_EQ("(gate 2 (name %%%%A))\n", Printed(*pGate));
}

TEST(PinWriting, AConductiveLayerDoesNotReadBack) {
  CBDpin pin;
  pin.m_sName = "1";
  pin.m_pDrawObjArray->Add(Shape(new CBDdelete, "conductive", "3"));
  CBDcomponent component;
  Tree tree("(component " + Printed(pin) + ")");
  BoardContext context{nullptr};
  EXPECT_EQ("\"conductive\" has no value 1", RaisedBy([&] { ReadComponentForm(tree.Form(), context); }));
}

TEST(PinWriting, NullParts) {
  CBDpin pin;
  delete std::exchange(pin.m_pPinGateArray, nullptr);
  delete std::exchange(pin.m_pDrawObjArray, nullptr);
  EXPECT_EQ("(pin \n(pt 0.00000 0.00000)\n(layout\n)\n)\n", Printed(pin));
}

TEST(ComponentWriting, NullParts) {
  CBDcomponent component;
  component.m_sReference = "U1";
  delete std::exchange(component.m_pDrawObjArray, nullptr);
  delete std::exchange(component.m_pGateArray, nullptr);
  delete std::exchange(component.m_pPinArray, nullptr);
  delete std::exchange(component.m_pPropertyArray, nullptr);
  EXPECT_EQ(ComponentText(), Printed(component));
}

TEST(ComponentObjects, StartAsTold) {
  const CBDcomponent c;
  EXPECT_EQ(1.0, c.m_dScale);
  EXPECT_EQ("default", c.m_sFootprintSpec);
  EXPECT_EQ("YES", c.m_sPlaced);
  EXPECT_EQ("A", c.m_sPlacementSide);
  EXPECT_EQ("NO", c.m_sPlacementSideLock);
  EXPECT_EQ("", c.m_sReference);
  EXPECT_EQ("", c.m_sAngleLock);
  EXPECT_EQ(nullptr, c.m_pReserved);
  EXPECT_EQ("UNFIXED", CBDgate().m_sLockMode);
  EXPECT_EQ("UNFIXED", CBDgatePin().m_sLockMode);
  EXPECT_EQ(0, CBDpinGate().m_nGate);
}

TEST(ComponentObjects, CopiesOfPinsAndGatesShare) {
  CBDpin pin;
  CBDpin pinCopy(pin);
  EXPECT_EQ(pin.m_pDrawObjArray, pinCopy.m_pDrawObjArray);
  pinCopy.m_pBondwireArray = nullptr;
  pinCopy.m_pPinGateArray = nullptr;
  pinCopy.m_pDrawObjArray = nullptr;
  CBDgate gate;
  CBDgate gateCopy(gate);
  EXPECT_EQ(gate.m_pGatePinArray, gateCopy.m_pGatePinArray);
  gateCopy.m_pGatePinArray = nullptr;
}

}  // namespace
