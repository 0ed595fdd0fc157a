#include "base/AllocationFault.h"
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

std::string Read(const CECadClsLvl& node) {
  CBDdrawObjArray board;
  BoardContext context{&board};
  const auto p = ReadComponentForm(node, context);
  EXPECT_TRUE(p->m_aVerbatim.IsEmpty());
  EXPECT_EQ("", p->m_sReserved1);
  EXPECT_EQ(nullptr, p->m_pReserved);
  return Show(*p) + (board.IsEmpty() ? "" : " board{" + Str(board) + "}");
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
          {"angle of any form", Component("(angle -90.5 7)"), "angle=-90.5"},
          {"angle with an exponent", Component("(angle 1e2)"), "angle=100"},
          {"negative count", Component("(gateCount -3) (pinCount x)"), "gateCount=-3"},
          {"no angle", Component("(angle)"), "raises \"angle\" has no value 1"},
          {"scale", Component("(propertyF Scale 2.5)"), "scale=2.5 +Scale=2.5"},
          {"the later scale counts, both are kept", Component("(propertyF Scale 2.5) (propertyF Scale 3 4)"),
           "scale=3 +Scale=2.5 +Scale=3"},
          {"scale as it is spelled", Component("(propertyF scale 2.5)"), ""},
          {"another number is dropped", Component("(propertyF Height 3)"), ""},
          {"whatever else it lacks", Component("(propertyF Height)"), ""},
          {"scale without value", Component("(propertyF Scale)"), "raises \"propertyF\" has no value 2"},
          {"number without item", Component("(propertyF)"), "raises \"propertyF\" has no value 1"},
          {"texts", Component("(propertyS A b) (propertyS Scale c)"), "+A=b +Scale=c"},
          {"texts of one item", Component("(propertyS A b c) (propertyS A \"\")"), "+A=b +A="},
          {"other properties", Component("(propertyI A 1) (property A b)"), ""},
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
          {"an unknown child counts too", Component("(gate 1 2 (foo) (pin 1) (pin 2))"), "gate ,1/UNFIXED"},
          {"what stands behind is not looked at", Component("(gate 1 (pin 1) (id A) (pin) (pin 2))"),
           "gate ,1/UNFIXED"},
          {"the last id counts", Component("(gate 1 2 (id A) (id B))"), "gate B"},
          {"several", Component("(gate 1 (id A)) (gate 2 (id B))"), "gate A gate B"},
          {"first values count", Component("(gate 1 2 (id A B) (pin 1 2 (lockMode C D) (lockMode)))"), "gate A,1/C"},
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

// A host's tree may have gaps: they do not count.
TEST(ComponentReading, AGateWithGaps) {
  Tree tree(Component("(gate 1 2 (id A) (pin 1))"));
  tree.Form().m_pChildren->GetAt(0)->m_pChildren->InsertAt(0, static_cast<CECadClsLvl*>(nullptr));
  EXPECT_EQ("gate A,1/UNFIXED", Read(tree.Form()));
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
          {"gate numbers", Component("(pin 1 (gate 2x) (gate -1 7) (gate x))"), "pin 1@0;0 g2/ g-1/ g0/"},
          {"bond wires", Component("(pin 1 (bondWire (a 1.0 2.0)) (bondWire (a 3.0 4.0)))"),
           "pin 1@0;0 w1;2>0;0 w3;4>0;0"},
          {"two pins of one name", Component("(pin 1 2) (pin 1)"), "pin 1@0;0 pin 1@0;0"},
          {"layouts add up", Component("(pin 1 (layout (layer (circle 1.0))) (layout (layer (oval))))"),
           "pin 1@0;0 {CIRCLE@//0 OVAL@//0}"},
          {"only layers", Component("(pin 1 (layout (foo (circle 1.0)) (circle)))"), "pin 1@0;0"},
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
          {"and only they", Layout("(layer (infoOf 1) (circle 1.0)) (layer (circle 1.0))"), "{CIRCLE@//0}"},
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
          {"the flag is set by itself", Refer("(squareHole (geometry (circle 1.0)))"), "{CIRCLE@conductive/1/1r}"},
          {"a net behind belongs to what follows", Refer("(net A) (circle 1.0) (net B) (oval)"),
           "{OVAL@conductive/1/1r=B}"},
          {"an empty net behind does not take it away", Refer("(net A) (circle 1.0) (net \"\")"),
           "{CIRCLE@conductive/1/1r=A}"},
          {"an empty net forgets the one before", Refer("(net A) (net \"\") (circle 1.0)"), "{CIRCLE@conductive/1/1r}"},
          {"the net wins over the shape's own", Refer("(net A) (line (net B))"), "{LINE@conductive/1/1r=A}"},
          {"a later cavity counts", Refer("(cavityFrom 1) (cavityTo 2) (circle 1.0) (cavityFrom 3) (oval)"),
           "{OVAL@conductive/1/1r[3,2]}"},
          {"minus one takes it back", Refer("(cavityFrom 1) (cavityTo 2) (cavityFrom -1) (oval)"),
           "{OVAL@conductive/1/1r}"},
          {"either of them", Refer("(cavityFrom 1) (cavityTo -1) (circle 1.0)"), "{CIRCLE@conductive/1/1r}"},
          {"a later one too", Refer("(cavityFrom 1) (xcavityTo 3) (cavityTo 2x) (circle 1.0)"),
           "{CIRCLE@conductive/1/1r[1,2]}"},
          {"the word may stand behind others", Refer("(cavityFrom 1) (xcavityTo 3) (circle 1.0)"),
           "{CIRCLE@conductive/1/1r[1,3]}"},
          {"of two words the first kind counts", Refer("(cavityTocavityFrom 1) (cavityTo 3) (circle 1.0)"),
           "{CIRCLE@conductive/1/1r[1,3]}"},
          {"each refer begins anew",
           Layout("(layer (conductive 1) (refer (net A) (cavityFrom 1) (cavityTo 2) (circle 1.0)) (refer (oval)))"),
           "{CIRCLE@conductive/1/1r=A[1,2] OVAL@conductive/1/1r}"},
          {"an unknown shape", Refer("(foo) (circle 1.0)"), "{CIRCLE@conductive/1/1r}", {"New Draw Type : foo"}},
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
          {"what names the layer is no shape",
           PinLayout("(layer (conductive 1) (nonConductive X) (systemLayer (type HOLE)) (circle 1.0))"),
           "pin 1@0;0 {CIRCLE@systemLayer/HOLE/0}"},
          {"info layers too",
           PinLayout("(layer (infoOf 1) (circle 1.0))"),
           "pin 1@0;0 {CIRCLE@//0}",
           {"New Draw Type : infoOf"}},
          {"no flag behind a refer", PinLayout("(layer (conductive 1) (refer (circle 1.0)) (oval))"),
           "pin 1@0;0 {CIRCLE@conductive/1/1r OVAL@conductive/1/1}"},
          {"a shape that has no flag", PinRefer("(squareHole (geometry (circle 1.0)))"),
           "pin 1@0;0 {CIRCLE@conductive/1/1}"},
          {"the net is the shape's own", PinRefer("(net A) (line (net B))"), "pin 1@0;0 {LINE@conductive/1/1r=B}"},
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
  const std::string layer = "(layer (conductive 1) (boardAssembly (geometry (circle 1.0))))";
  CheckReading({{"component", Layout(layer), "{DRAWSUBBOARD@conductive/1/1} board{CIRCLE@conductive/1/1}"},
                {"refer", Refer("(boardAssembly (geometry (circle 1.0)))"),
                 "{DRAWSUBBOARD@conductive/1/1r} board{CIRCLE@conductive/1/1r}"},
                {"pin", PinLayout(layer), "pin 1@0;0 {DRAWSUBBOARD@conductive/1/1} board{CIRCLE@conductive/1/1}"}},
               Read);
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
  // What the lost one gave the board stays.
  Tree late(Component("(layout (layer (conductive 1) (boardAssembly (geometry (circle 1.0))))) (pin)"));
  EXPECT_NE("", RaisedBy([&] { laminate::ReadComponent(&late.Form(), board); }));
  EXPECT_EQ(1, board.m_pComponentArray->GetSize());
  EXPECT_EQ("CIRCLE@conductive/1/1", Str(*board.m_pDrawObjArray));
  // Only an assembly asks for the board's shapes.
  delete std::exchange(board.m_pDrawObjArray, nullptr);
  EXPECT_EQ(0, laminate::ReadComponent(&good.Form(), board));
  EXPECT_EQ(2, board.m_pComponentArray->GetSize());
  EXPECT_NE("", RaisedBy([&] { laminate::ReadComponent(&late.Form(), board); }));
  delete std::exchange(board.m_pComponentArray, nullptr);
  EXPECT_NE("", RaisedBy([&] { laminate::ReadComponent(&good.Form(), board); }));
}

// A component with all that one can hold, in the forms that are written.
std::string WholeComponent() {
  return Component(
      "(reference \"\") (gateCount 9) (pinCount 12) (part \"P 1\") (stockId S) (package K) (footprintSpec f) "
      "(footprint F) (reverseFootprint R) (originalReferecne U7) (placed NO) (placementSide B) (placementSideLock YES) "
      "(angleLock AL) (locationLock LL) (packageSymbol NO) (outOfBoard YES) (outOfBoardLocation (pt 1.0 2.0)) "
      "(location (pt 3.0 4.0)) (angle 90.5) (drawRefDes YES) "
      "(layout (layer (conductive 1) (refer (squareHole (width 1.0))) (refer (hole (geometry (squareHole (width "
      "2.0))))) "
      "(refer (net \"A B\") (line (geometry (line (vertex (pt 1.0 2.0) (pt 3.0 4.0))))))) "
      "(layer (nonConductive SILK) (pad P (pt 1.0 2.0)))) "
      "(gate 2 1 (id A) (pin 1)) "
      "(pin 1 (pt 5.0 6.0) (gate 1 (name)) (gate 2 (name B)) (bondWire (a 1.0 2.0) (b 3.0 4.0)) "
      "(layout (layer (systemLayer (type PADSTACK)) (padstack S (pt 5.0 6.0))))) "
      "(propertyF Scale 2.5) (propertyS A b)");
}

TEST(ComponentTranslation, FailingMemoryLeavesNothingHalf) {
  std::string text = WholeComponent();
  // Small blocks come from the pool; an array of so many pins does not.
  for (int i = 0; i < 80; ++i) text.insert(text.size() - 1, "(pin 1)");
  Tree tree(text);
  const std::string expected = Read(tree.Form());
  CBDboardContainer board;
  const int nFailures = laminate::test::ForEachFailingAllocation(
      laminate::test::OnlyPlatforms([&] { laminate::ReadComponent(&tree.Form(), board); }));
  EXPECT_GT(nFailures, 0);
  for (const CBDcomponent* p : *board.m_pComponentArray) EXPECT_EQ(expected, Show(*p));
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
  // Number and name are those of one entry, whichever of the pin's it is.
  auto* pSecond = new CBDpinGate;
  pSecond->m_nGate = 5;
  pSecond->m_sName = "C";
  component.m_pPinArray->GetAt(1)->m_pPinGateArray->Add(pSecond);
  EXPECT_EQ("1", component.sGetPinName(5, "C"));
  EXPECT_EQ("", component.sGetPinName(5, "A"));
  EXPECT_EQ("", component.sGetPinName(1, "C"));
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
  ExpectRaisesWithoutStream<CBDcomponent, CBDgate, CBDpin, CBDpinGate>();
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
  // Nothing else of the component is made ready.
  component.m_pDrawObjArray->Add(Shape(new CBDline, "nonConductive", "A B"));
  component.m_pDrawObjArray->GetAt(0)->m_sNet = "N%";
  Add(*component.m_pPinArray)->m_sName = "1%";
  EXPECT_EQ("(component (reference \"\")\n(part %s)\n\n)\n", Printed(component));
  EXPECT_EQ("LINE@nonConductive/A B/0=N%", Str(*component.m_pDrawObjArray));
  EXPECT_EQ("1%", component.m_pPinArray->GetAt(0)->m_sName);
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

TEST(ComponentWriting, GatesAndPinsInTheirOrder) {
  CBDcomponent c;
  c.m_sReference = "U1";
  for (const char* szId : {"A", "B"}) {
    CBDgate* pGate = Add(*c.m_pGateArray);
    pGate->m_sId = szId;
    for (const char* szPin : {"1", "2"}) Add(*pGate->m_pGatePinArray)->m_sName = szPin;
    c.m_pGateArray->Add(nullptr);
  }
  for (const char* szName : {"1", "2"}) {
    CBDpin* pPin = Add(*c.m_pPinArray);
    pPin->m_sName = szName;
    for (const int nGate : {1, 2}) Add(*pPin->m_pPinGateArray)->m_nGate = nGate;
    Add(*pPin->m_pBondwireArray)->m_ptTo = CPointD(1, 2);
  }
  const std::string gatePins =
      "(lockMode UNFIXED)\n(pin \"1\"\n(lockMode UNFIXED)\n)\n(pin \"2\"\n(lockMode UNFIXED)\n)\n)\n";
  const std::string pinRest = "\n(pt 0.00000 0.00000)\n(gate 1 (name ))\n(gate 2 (name ))\n(layout\n)\n)\n";
  const std::string text = Printed(c);
  EXPECT_EQ("(layout\n)\n(gate 1\n(id A)\n" + gatePins + "(gate 2\n(id B)\n" + gatePins + "(pin 1" + pinRest +
                "(pin 2" + pinRest + ")\n",
            text.substr(text.find("(layout\n")));
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
  // A block is a run of one name; a shape that is left out does not end it.
  shapes.DeleteAll();
  for (const char* szName : {"A", "B", "", "B", "A"}) shapes.Add(Shape(new CBDcircle, "nonConductive", szName));
  EXPECT_EQ(ComponentText("(layer (nonConductive A)\n" + kReferCircle + ")\n(layer (nonConductive B)\n" + kReferCircle +
                          kReferCircle + ")\n(layer (nonConductive A)\n" + kReferCircle + ")\n"),
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
  for (const char* szName : {"(", ")"}) {
    CBDcomponent other;
    other.m_pDrawObjArray->Add(Shape(new CBDdelete, "conductive", szName));
    Printed(other);
    EXPECT_EQ("DELETE@conductive/\"" + std::string(szName) + "\"/0", Str(*other.m_pDrawObjArray));
  }
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
      {"(propertyS Scale c)", "(propertyF Scale c)\n"},
      {"(minRect (box (pt 1.0 1.0) (pt 2.0 2.0)))",
       "(minRect\n(box\n(pt 0.00000 0.00000)\n(pt 0.00000 0.00000)\n)\n)\n"},
      {"(location (pt 1000000 -1000000))", "(location\n(pt 10.00000 -10.00000)\n)\n"},
  };
  for (const auto& [form, line] : cases) {
    Tree tree(Component(form));
    BoardContext context{nullptr};
    const auto p = ReadComponentForm(tree.Form(), context);
    EXPECT_NE(std::string::npos, Printed(*p).find(std::string("\n") + line)) << form << "\n" << Printed(*p);
  }
}

// A record read, written and read again.
TEST(ComponentWriting, ReadsBack) {
  Tree tree(WholeComponent());
  BoardContext context{nullptr};
  const auto first = ReadComponentForm(tree.Form(), context);
  const std::string rest = " LINE@conductive/1/1r=A B DRAWPAD@nonConductive/SILK/0}";
  const std::string fields = "pinCount=12 part=P 1 stockId=S package=K footprintSpec=f footprint=F reverseFootprint=R";
  const std::string locks = "placed=NO placementSide=B locationLock=LL angleLock=AL placementSideLock=YES";
  EXPECT_EQ("scale=2.5 gateCount=9 " + fields + " originalReferecne=U7 " + locks +
                " packageSymbol=NO outOfBoard=YES outOfBoardLocation=1;2 location=3;4 angle=90.5 drawRefDes=YES " +
                "{SQUAREHOLE@conductive/1/1r HOLE@conductive/1/1r" + rest +
                " gate A,1/UNFIXED pin 1@5;6 g1/ g2/B w1;2>3;4 {DRAWPADSTACK@systemLayer/PADSTACK/0} +Scale=2.5 +A=b",
            Show(*first));
  // A file's hole has no square in it, a placed one may; it comes back without the hole round it.
  auto& hole = dynamic_cast<CBDhole&>(*first->m_pDrawObjArray->GetAt(1));
  delete std::exchange(hole.m_pShape, new CBDsquareHole);
  Tree again(Printed(*first));
  const auto second = ReadComponentForm(again.Form(), context);
  // The counts are those of the writer, some words constants, and the gate's second form is its lock mode now.
  EXPECT_EQ("scale=2.5 gateCount=1 " + fields + " " + locks +
                " packageSymbol=YES outOfBoard=NO outOfBoardLocation=1;2 location=3;4 angle=90.5 drawRefDes=NO " +
                "{SQUAREHOLE@conductive/1/1r SQUAREHOLE@conductive/1/1r" + rest +
                " gate A pin 1@5;6 g1/ g2/B {DRAWPADSTACK@systemLayer/PADSTACK/0} +Scale=2.5 +A=b",
            Show(*second));
  EXPECT_TRUE(Printed(*first).starts_with("(component (reference \"\")\n"));
  EXPECT_TRUE(Printed(*second).starts_with("(component (reference \"\")\n"));
  // One that lacks its part or its footprint is written in a form that does not load.
  for (const auto field : {&CBDcomponent::m_sPart, &CBDcomponent::m_sFootprint, &CBDcomponent::m_sFootprintSpec}) {
    const CString sKept = std::exchange((*second).*field, CString());
    Tree without(Printed(*second));
    EXPECT_NE("", RaisedBy([&] { ReadComponentForm(without.Form(), context); }));
    (*second).*field = sKept;
  }
}

TEST(GateWriting, GatePinsDoNotComeBack) {
  for (const auto& [id, expected] : {std::pair{"A", "gate A"}, {"", "gate "}}) {
    CBDcomponent component;
    component.m_sPart = component.m_sFootprint = "x";
    CBDgate* pGate = Add(*component.m_pGateArray);
    pGate->m_sId = id;
    for (const char* szPin : {"1", "2"}) Add(*pGate->m_pGatePinArray)->m_sName = szPin;
    Tree tree(Printed(component));
    BoardContext context{nullptr};
    EXPECT_EQ("gateCount=1 part=x footprint=x packageSymbol=YES outOfBoard=NO drawRefDes=NO " + std::string(expected),
              Show(*ReadComponentForm(tree.Form(), context)));
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

// Nothing of what a component makes ready in its shapes is done here.
TEST(PinWriting, LayerBlocks) {
  CBDpin pin;
  CBDdrawObjArray& shapes = *pin.m_pDrawObjArray;
  const std::string d = "(delete\n)\n";
  for (const char* szName : {"A", "B", "", "B", "A", "A B", "PADSTACK"}) {
    shapes.Add(Shape(new CBDdelete, "nonConductive", szName));
    shapes.Add(nullptr);
  }
  const std::string before = "(pin \n(pt 0.00000 0.00000)\n(layout\n";
  const auto block = [](const std::string& type, const std::string& name, const std::string& text) {
    return "(layer (" + type + " (type " + name + "))\n" + text;
  };
  EXPECT_EQ(before + block("nonConductive", "A", d + ")\n") + block("nonConductive", "B", d + d + ")\n") +
                block("nonConductive", "A", d + ")\n") + block("nonConductive", "A B", d + ")\n") +
                block("nonConductive", "PADSTACK", d + ")\n") + ")\n)\n",
            Printed(pin));
  EXPECT_EQ("nonConductive/A B", Str(shapes.GetAt(10)->m_sLayerType) + "/" + Str(shapes.GetAt(10)->m_sLayerName));
  shapes.DeleteAll();
  shapes.Add(Shape(new CBDline, "", "A"));
  auto* pHole = new CBDhole;
  delete std::exchange(pHole->m_pShape, new CBDsquareHole);
  shapes.Add(Shape(pHole, "x", "A"));
  shapes.Add(Shape(new CBDdelete, "x", ""));
  // Without a wrapping of their own, and left open by the last one.
  EXPECT_EQ(before +
                block("", "A",
                      "(line\n(geometry\n(line\n(vertex\n)\n)\n)\n)\n"
                      "(squareHole\n(pt 0.00000 0.00000)\n(width 0.00000)\n(height 0.00000)\n(r 0.00000)\n)\n") +
                ")\n)\n",
            Printed(pin));
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

template <class... Arrays>
bool AreEmpty(const Arrays*... arrays) {
  return (... && (arrays != nullptr && arrays->IsEmpty()));
}

TEST(ComponentObjects, StartAsTold) {
  const CBDcomponent c;
  EXPECT_EQ(1.0, c.m_dScale);
  EXPECT_EQ(nullptr, c.m_pReserved);
  EXPECT_EQ(0, c.m_nGateCount);
  EXPECT_EQ(0, c.m_nPinCount);
  EXPECT_EQ(0.0, c.m_dAngle);
  EXPECT_EQ("default", c.m_sFootprintSpec);
  EXPECT_EQ("YES", c.m_sPlaced);
  EXPECT_EQ("A", c.m_sPlacementSide);
  EXPECT_EQ("NO", c.m_sPlacementSideLock);
  for (const CString* p : {&c.m_sReference, &c.m_sPart, &c.m_sStockId, &c.m_sPackage, &c.m_sFootprint,
                           &c.m_sReverseFootprint, &c.m_sOriginalReference, &c.m_sLocationLock, &c.m_sAngleLock,
                           &c.m_sPackageSymbol, &c.m_sOutOfBoard, &c.m_sReserved1, &c.m_sDrawRefDes}) {
    EXPECT_EQ("", *p);
  }
  for (const CPointD& pt : {c.m_ptOutOfBoardLocation, c.m_ptLocation, c.m_ptMinRect1, c.m_ptMinRect2}) {
    EXPECT_EQ(CPointD(0, 0), pt);
  }
  EXPECT_TRUE(c.m_aVerbatim.IsEmpty());
  EXPECT_TRUE(AreEmpty(c.m_pDrawObjArray, c.m_pGateArray, c.m_pPinArray, c.m_pPropertyArray));
  const CBDpin pin;
  EXPECT_EQ("", pin.m_sName);
  EXPECT_EQ(CPointD(0, 0), pin.m_ptLocation);
  EXPECT_TRUE(AreEmpty(pin.m_pBondwireArray, pin.m_pPinGateArray, pin.m_pDrawObjArray));
  const CBDgate gate;
  EXPECT_EQ("", gate.m_sId);
  EXPECT_EQ("UNFIXED", gate.m_sLockMode);
  EXPECT_TRUE(AreEmpty(gate.m_pGatePinArray));
  EXPECT_EQ("", CBDgatePin().m_sName);
  EXPECT_EQ("UNFIXED", CBDgatePin().m_sLockMode);
  EXPECT_EQ(0, CBDpinGate().m_nGate);
  EXPECT_EQ("", CBDpinGate().m_sName);
  EXPECT_EQ(CPointD(0, 0), CBDbondwire().m_ptFrom);
  EXPECT_EQ(CPointD(0, 0), CBDbondwire().m_ptTo);
  static_assert(sizeof c.m_pReserved == 8);
  static_assert(kVirtuallyDestroyed<CBDcomponent, CBDpin, CBDgate, CBDgatePin, CBDpinGate, CBDbondwire>);
}

TEST(ComponentObjects, HoldTheirFieldsInOrder) {
  const CBDcomponent c;
  ExpectInOrder({&c.m_dScale,      &c.m_pReserved,          &c.m_sReference,
                 &c.m_nGateCount,  &c.m_nPinCount,          &c.m_sPart,
                 &c.m_sStockId,    &c.m_sPackage,           &c.m_sFootprintSpec,
                 &c.m_sFootprint,  &c.m_sReverseFootprint,  &c.m_sOriginalReference,
                 &c.m_sPlaced,     &c.m_sPlacementSide,     &c.m_sLocationLock,
                 &c.m_sAngleLock,  &c.m_sPlacementSideLock, &c.m_sPackageSymbol,
                 &c.m_sOutOfBoard, &c.m_sReserved1,         &c.m_ptOutOfBoardLocation,
                 &c.m_ptLocation,  &c.m_ptMinRect1,         &c.m_ptMinRect2,
                 &c.m_dAngle,      &c.m_sDrawRefDes,        &c.m_pDrawObjArray,
                 &c.m_pGateArray,  &c.m_pPinArray,          &c.m_pPropertyArray,
                 &c.m_aVerbatim});
  const CBDpin pin;
  ExpectInOrder({&pin.m_pBondwireArray, &pin.m_pPinGateArray, &pin.m_sName, &pin.m_pDrawObjArray, &pin.m_ptLocation});
  const CBDgate gate;
  ExpectInOrder({&gate.m_sId, &gate.m_sLockMode, &gate.m_pGatePinArray});
  const CBDgatePin gatePin;
  ExpectInOrder({&gatePin.m_sName, &gatePin.m_sLockMode});
  const CBDpinGate pinGate;
  ExpectInOrder({&pinGate.m_nGate, &pinGate.m_sName});
  const CBDbondwire wire;
  ExpectInOrder({&wire.m_ptTo, &wire.m_ptFrom});
}

TEST(ComponentObjects, DeleteTheirArraysWithAllInThem) {
  int nEnded = 0;
  {
    CBDcomponent c;
    c.m_pDrawObjArray->Add(new Ending<CBDcircle>(nEnded));
    AddEnding(c.m_pGateArray, nEnded);
    AddEnding(c.m_pPinArray, nEnded);
    CBDpin* pPin = Add(*c.m_pPinArray);
    AddEnding(pPin->m_pBondwireArray, nEnded);
    AddEnding(pPin->m_pPinGateArray, nEnded);
    pPin->m_pDrawObjArray->Add(new Ending<CBDcircle>(nEnded));
    AddEnding(Add(*c.m_pGateArray)->m_pGatePinArray, nEnded);
  }
  EXPECT_EQ(7, nEnded);
}

TEST(ComponentObjects, CopiesOfPinsAndGatesShare) {
  CBDpin pin;
  pin.m_sName = "1";
  pin.m_ptLocation = CPointD(1, 2);
  const auto expectSharedPin = [&pin](CBDpin& copy) {
    EXPECT_EQ("1@1;2", Str(copy.m_sName) + "@" + Str(copy.m_ptLocation));
    EXPECT_EQ(pin.m_pBondwireArray, std::exchange(copy.m_pBondwireArray, nullptr));
    EXPECT_EQ(pin.m_pPinGateArray, std::exchange(copy.m_pPinGateArray, nullptr));
    EXPECT_EQ(pin.m_pDrawObjArray, std::exchange(copy.m_pDrawObjArray, nullptr));
  };
  CBDpin pinCopy(pin);
  expectSharedPin(pinCopy);
  pinCopy = pin;
  expectSharedPin(pinCopy);
  CBDgate gate;
  gate.m_sId = "A";
  gate.m_sLockMode = "x";
  const auto expectSharedGate = [&gate](CBDgate& copy) {
    EXPECT_EQ("A x", Str(copy.m_sId) + " " + Str(copy.m_sLockMode));
    EXPECT_EQ(gate.m_pGatePinArray, std::exchange(copy.m_pGatePinArray, nullptr));
  };
  CBDgate gateCopy(gate);
  expectSharedGate(gateCopy);
  gateCopy = gate;
  expectSharedGate(gateCopy);
  CBDgatePin gatePin;
  gatePin.m_sName = "1";
  gatePin.m_sLockMode = "x";
  const CBDgatePin gatePinCopy(gatePin);
  EXPECT_EQ("1 x", Str(gatePinCopy.m_sName) + " " + Str(gatePinCopy.m_sLockMode));
  CBDpinGate pinGate;
  pinGate.m_nGate = 2;
  pinGate.m_sName = "A";
  const CBDpinGate pinGateCopy(pinGate);
  EXPECT_EQ("2 A", std::to_string(pinGateCopy.m_nGate) + " " + Str(pinGateCopy.m_sName));
  CBDbondwire wire;
  wire.m_ptFrom = CPointD(1, 2);
  wire.m_ptTo = CPointD(3, 4);
  const CBDbondwire wireCopy(wire);
  EXPECT_EQ("1;2>3;4", Str(wireCopy.m_ptFrom) + ">" + Str(wireCopy.m_ptTo));
  static_assert(!std::is_copy_constructible_v<CBDcomponent> && !std::is_copy_assignable_v<CBDcomponent>);
}

}  // namespace
