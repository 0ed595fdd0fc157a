#include "drawobj/CBDcircle.h"
#include "drawobj/CBDdrawPad.h"
#include "drawobj/CBDdrawPadstack.h"
#include "drawobj/CBDhole.h"
#include "drawobj/CBDoval.h"
#include "drawobj/CBDsquareHole.h"
#include "technology/CBDfootprint.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDheelprint.h"
#include "technology/CBDpad.h"
#include "technology/CBDpadstack.h"
#include "technology/CBDtechnologyContainer.h"
#include "technology/CBDtoeprintPin.h"
#include "technology/LibraryForms.h"
#include "technology/RecordTestSupport.h"

using laminate::LibraryContext;
using laminate::ReadFootprint;

namespace {

std::string Show(const CBDfootprint& footprint) {
  std::string s = Str(footprint.m_sName) + " " + std::to_string(footprint.m_nUver) + " " + Str(footprint.m_ptBox1) +
                  " " + Str(footprint.m_ptBox2) + " " + Str(*footprint.m_pHeelprint->m_pDrawObjArray);
  for (const CBDtoeprintPin* p : *footprint.m_pToeprintPinArray) {
    s += " pin " + Str(p->m_sName) + " " + Str(p->m_ptLocation) + " " + Str(*p->m_pDrawObjArray);
  }
  for (const CLProperty* p : *footprint.m_pPropertyArray) {
    s += " " + Str(p->GetKind()) + ":" + Str(p->GetItem()) + "=" + Str(p->GetComment());
  }
  return s;
}

std::string Read(const CECadClsLvl& node, bool bWhole) {
  LibraryContext context;
  context.bWhole = bWhole;
  return Show(*ReadFootprint(node, context));
}

std::string Box(const std::string& pts) { return "(footprint F (area (box " + pts + ")))"; }
std::string Heel(const std::string& layers) { return "(footprint F (heelprint (layout " + layers + ")))"; }
std::string Pin(const std::string& s) { return "(footprint F (toeprint (pin 1 " + s + ")))"; }

const std::vector<ReadCase>& CommonCases() {
  static const std::vector<ReadCase> cases = {
      {"nothing", "(footprint F)", "F 1 0;0 0;0 "},
      {"no name", "(footprint)", "raises \"footprint\" has no value 1"},
      {"the rest does not count", "(footprint F (grid) (minRect (box (pt 1.0 1.0))) (polarity YES) (panelUse YES) (x))",
       "F 1 0;0 0;0 "},
      // area
      {"box", Box("(pt 1.0 100000) (pt 3.5 4.5)"), "F 1 1;1 3.5;4.5 "},
      {"one point", Box("(pt 1.0 2.0)"), "F 1 1;2 0;0 "},
      {"three points", Box("(pt 1.0 2.0) (pt 3.0 4.0) (pt 5.0 6.0)"), "F 1 1;2 5;6 "},
      {"no box", "(footprint F (area (pt 1.0 2.0)))", "F 1 0;0 0;0 "},
      {"first box counts", "(footprint F (area (box (pt 1.0 2.0)) (box (pt 3.0 4.0))))", "F 1 1;2 0;0 "},
      {"a later area", "(footprint F (area (box (pt 1.0 2.0))) (area (box (pt 3.0 4.0))))", "F 1 3;4 0;0 "},
      {"other forms in the box", Box("(foo 1.0 2.0)"), "F 1 0;0 0;0 "},
      {"no y", Box("(pt 1.0)"), "raises \"pt\" has no value 2"},
      {"no x", Box("(pt)"), "raises \"pt\" has no value 1"},
      {"no y of a later point", Box("(pt 1.0 1.0) (pt 1.0)"), "raises \"pt\" has no value 2"},
      // heelprint
      {"a layer of any keyword", Heel("(layer (footLayer BODY) (circle 1.0)) (foo (footLayer SILK) (oval))"),
       "F 1 0;0 0;0 CIRCLE@/BODY/0 OVAL@/SILK/0"},
      {"without a name", Heel("(layer (circle 1.0))"), "F 1 0;0 0;0 CIRCLE@//0"},
      {"pad layer", Heel("(layer (FPADSTACK) (footLayer BODY) (circle 1.0))"), "F 1 0;0 0;0 CIRCLE@/FPADSTACK/0"},
      {"what stands for no shape", Heel("(layer (footLayer A) (basePoint) (circle 1.0))"), "F 1 0;0 0;0 CIRCLE@/A/0"},
      {"layer without value", Heel("(layer (footLayer))"), "raises \"footLayer\" has no value 1"},
      {"no layout", "(footprint F (heelprint (layer (circle 1.0))))", "F 1 0;0 0;0 "},
      {"first layout counts", "(footprint F (heelprint (layout (l (circle 1.0))) (layout (l (oval)))))",
       "F 1 0;0 0;0 CIRCLE@//0"},
      {"two heelprints add up", "(footprint F (heelprint (layout (l (circle 1.0)))) (heelprint (layout (l (oval)))))",
       "F 1 0;0 0;0 CIRCLE@//0 OVAL@//0"},
      {"a shape without what it needs", Heel("(layer (circle))"), "raises \"circle\" has no value 1"},
      // toeprint
      {"pin", Pin("(pt 1.0 2.0) (layout (layer (FPADSTACK) (fPad P (pt 0.0 0.0))))"),
       "F 1 0;0 0;0  pin 1 1;2 DRAWPAD@/FPADSTACK/0"},
      {"bare pin", Pin(""), "F 1 0;0 0;0  pin 1 0;0 "},
      {"first point counts", Pin("(pt 1.0 2.0) (pt 3.0 4.0)"), "F 1 0;0 0;0  pin 1 1;2 "},
      {"only layers", Pin("(layout (foo (fPad P)))"), "F 1 0;0 0;0  pin 1 0;0 "},
      {"only pins", "(footprint F (toeprint (foo 1) (pin 2)))", "F 1 0;0 0;0  pin 2 0;0 "},
      {"pin without name", "(footprint F (toeprint (pin)))", "raises \"pin\" has no value 1"},
      {"pin without y", Pin("(pt 1.0)"), "raises \"pt\" has no value 2"},
      {"pad without name", Pin("(layout (layer (fPad)))"), "raises \"fPad\" has no value 1"},
  };
  return cases;
}

TEST(FootprintReading, RowsOfAWholeLoad) {
  const auto read = [](const CECadClsLvl& node) { return Read(node, true); };
  CheckReading(CommonCases(), read);
  CheckReading(
      {
          {"uver", "(footprint F (uver 7) (uver 8))", "F 8 0;0 0;0 "},
          {"uver without value", "(footprint F (uver))", "raises \"uver\" has no value 1"},
          {"properties", "(footprint F (propertyS A \"b c\") (propertyI N 5) (propertyS A x))",
           "F 1 0;0 0;0  propertyS:A=b c propertyI:N=5 propertyS:A=x"},
          {"property without comment", "(footprint F (propertyS A))", "raises \"propertyS\" has no value 2"},
          {"number without anything", "(footprint F (propertyI))", "raises \"propertyI\" has no value 1"},
          {"every layer of a pin", Pin("(layout (layer (fPad P)) (x) (layer (footLayer L) (circle 1.0)))"),
           "F 1 0;0 0;0  pin 1 0;0 DRAWPAD@//0 CIRCLE@/L/0"},
      },
      read);
}

TEST(FootprintReading, RowsOfALoadOfParts) {
  const auto read = [](const CECadClsLvl& node) { return Read(node, false); };
  CheckReading(CommonCases(), read);
  CheckReading(
      {
          {"no uver", "(footprint F (uver 7))", "F 1 0;0 0;0 "},
          {"uver needs no value", "(footprint F (uver))", "F 1 0;0 0;0 "},
          {"no properties", "(footprint F (propertyS A b) (propertyI))", "F 1 0;0 0;0 "},
          {"the first layer of a pin", Pin("(layout (x) (layer (fPad P)) (layer (circle)))"),
           "F 1 0;0 0;0  pin 1 0;0 DRAWPAD@//0"},
      },
      read);
}

// ---- writing ----

constexpr const char* kNoBox = "(box\n(pt 0.00000 -0.00000)\n(pt 0.00000 0.00000)\n)\n";
const std::string kNoMinRect = std::string("(minRect\n") + kNoBox + ")\n";
const std::string kEmptyHeelprint = "(heelprint\n" + kNoMinRect + "(layout\n)\n)\n";

CBDdrawObj* Shape(CBDdrawObj* p, const char* szLayer) {
  p->m_sLayerName = szLayer;
  return p;
}

std::string HeelprintText(const std::string& layers) {
  return "(heelprint\n" + kNoMinRect + "(layout\n" + layers + ")\n)\n";
}
std::string Printed2(CBDheelprint& heelprint) {
  return Printed([&](std::FILE* fp) { return heelprint.nPrint2File(fp, 7); });
}

constexpr const char* kCircle1 = "(geometry\n(circle 0.00000\n(pt 0.00000 0.00000)\n)\n)\n";

TEST(HeelprintWriting, Layers) {
  CBDheelprint heelprint;
  EXPECT_EQ(kEmptyHeelprint, Printed2(heelprint));
  // Shapes without a layer name are left out, and alone they open nothing.
  heelprint.m_pDrawObjArray->Add(Shape(new CBDcircle, ""));
  heelprint.m_pDrawObjArray->Add(nullptr);
  EXPECT_EQ(kEmptyHeelprint, Printed2(heelprint));
  heelprint.m_pDrawObjArray->Add(Shape(new CBDcircle, "A"));
  heelprint.m_pDrawObjArray->Add(Shape(new CBDcircle, ""));
  heelprint.m_pDrawObjArray->Add(Shape(new CBDcircle, "A"));
  heelprint.m_pDrawObjArray->Add(Shape(new CBDcircle, "B(1)"));
  heelprint.m_pDrawObjArray->Add(Shape(new CBDcircle, "FPADSTACK"));
  heelprint.m_pDrawObjArray->Add(Shape(new CBDcircle, "C D"));
  heelprint.m_pDrawObjArray->Add(Shape(new CBDcircle, ""));
  const std::string c = kCircle1;
  const std::string expected = HeelprintText("(layer (footLayer A)\n" + c + c + ")\n(layer (footLayer \"B(1)\")\n" + c +
                                             ")\n(layer (FPADSTACK)\n" + c + ")\n(layer (footLayer C D)\n" + c + ")\n");
  EXPECT_EQ(expected, Printed2(heelprint));
  // The quotes are of this write alone.
  EXPECT_EQ("B(1)", heelprint.m_pDrawObjArray->GetAt(5)->m_sLayerName);
  EXPECT_EQ(expected, Printed2(heelprint));
}

TEST(HeelprintWriting, NamesAreComparedWithTheirQuotes) {
  CBDheelprint heelprint;
  heelprint.m_pDrawObjArray->Add(Shape(new CBDcircle, "B(1)"));
  heelprint.m_pDrawObjArray->Add(Shape(new CBDcircle, "\"B[1]\""));
  heelprint.m_pDrawObjArray->Add(Shape(new CBDcircle, "\"B(1)\""));
  const std::string c = kCircle1;
  EXPECT_EQ(HeelprintText("(layer (footLayer \"B(1)\")\n" + c + ")\n(layer (footLayer \"B[1]\")\n" + c +
                          ")\n(layer (footLayer \"\"B(1)\"\")\n" + c + ")\n"),
            Printed2(heelprint));
}

TEST(HeelprintWriting, ModesAndSquareHoles) {
  CBDheelprint heelprint;
  heelprint.m_pDrawObjArray->Add(Shape(new CBDdrawPad, "A"));
  heelprint.m_pDrawObjArray->Add(Shape(new CBDdrawPadstack, "A"));
  heelprint.m_pDrawObjArray->Add(Shape(new CBDoval, "A"));
  auto* pSquare = new CBDhole;
  delete std::exchange(pSquare->m_pShape, new CBDsquareHole);
  heelprint.m_pDrawObjArray->Add(Shape(pSquare, "A"));
  auto* pRound = new CBDhole;
  delete std::exchange(pRound->m_pShape, new CBDcircle);
  heelprint.m_pDrawObjArray->Add(Shape(pRound, "A"));
  const std::string oval = "(oval\n(pt 0.00000 0.00000)\n(width 0.00000)\n(height 0.00000)\n)\n";
  EXPECT_EQ(HeelprintText("(layer (footLayer A)\n"
                          "(fPad \n(pt 0.00000 0.00000)\n)\n"
                          "(fpadstack\n(pt 0.00000 0.00000)\n(padstackGroup default (padstack ))\n)\n"
                          "(oval\n(geometry\n" +
                          oval +
                          ")\n)\n"
                          "(squareHole\n(geometry\n(squareHole\n(pt 0.00000 0.00000)\n(width 0.00000)\n"
                          "(height 0.00000)\n(r 0.00000)\n)\n)\n)\n"
                          "(hole\n" +
                          kCircle1 + ")\n)\n"),
            Printed2(heelprint));
}

TEST(ToeprintPinWriting, EverythingUnderThePadLayer) {
  CBDtoeprintPin pin;
  pin.m_sName = "1 A";
  pin.m_ptLocation = CPointD(1, -2);
  EXPECT_EQ("(pin 1 A\n(pt 1.00000 -2.00000)\n" + kNoMinRect + "(layout\n(layer (FPADSTACK)\n)\n)\n)\n", Printed(pin));
  pin.m_pDrawObjArray->Add(Shape(new CBDcircle, "ELSEWHERE"));
  pin.m_pDrawObjArray->Add(nullptr);
  pin.m_pDrawObjArray->Add(Shape(new CBDdrawPad, ""));
  EXPECT_EQ("(pin 1 A\n(pt 1.00000 -2.00000)\n" + kNoMinRect +
                "(layout\n(layer (FPADSTACK)\n(circle 0.00000\n(pt 0.00000 0.00000)\n)\n"
                "(fPad \n(pt 0.00000 0.00000)\n)\n)\n)\n)\n",
            Printed(pin));
}

TEST(FootprintWriting, AfterARead) {
  Tree tree("(footprint \"F (1)\" (uver 4) (area (box (pt 1.0 1.0) (pt 9.0 9.0))))");
  LibraryContext context;
  const auto p = ReadFootprint(tree.Form(), context);
  // The box that was read is not written.
  EXPECT_EQ(std::string("(footprint F (1)\n(uver 4)\n(area\n") + kNoBox +
                ")\n(grid\n(rectGrid\n(origin\n(pt 0 0)\n)\n(x 0.00000)\n(y 0.00000)\n)\n)\n" + kNoMinRect +
                "(polarity NO)\n(panelUse NO)\n" + kEmptyHeelprint + ")\n",
            Printed(*p));
}

TEST(FootprintWriting, AllOfIt) {
  CBDfootprint footprint;
  footprint.m_sName = "F";
  footprint.m_rcArea = CRectD(12, 6, 30, 60);
  footprint.m_pToeprintPinArray->Add(nullptr);
  footprint.m_pToeprintPinArray->Add(new CBDtoeprintPin);
  footprint.m_pPropertyArray->Add(new CLProperty("Name", ""));
  footprint.m_pPropertyArray->Add(new CLProperty("Name", "a b"));
  footprint.m_pPropertyArray->Add(nullptr);
  footprint.m_pPropertyArray->Add(new CLProperty("N", "", "propertyI"));
  footprint.m_pPropertyArray->Add(new CLProperty("N", "5", "propertyI"));
  EXPECT_EQ(
      "(footprint F\n(uver 1)\n(area\n(box\n(pt 12.00000 -6.00000)\n(pt 42.00000 54.00000)\n)\n)\n"
      "(grid\n(rectGrid\n(origin\n(pt 0 0)\n)\n(x 1.00000)\n(y 2.00000)\n)\n)\n"
      "(minRect\n(box\n(pt 10.00000 -5.00000)\n(pt 35.00000 45.00000)\n)\n)\n"
      "(polarity NO)\n(panelUse NO)\n" +
          kEmptyHeelprint + "(toeprint\n(pin \n(pt 0.00000 0.00000)\n" + kNoMinRect +
          "(layout\n(layer (FPADSTACK)\n)\n)\n)\n)\n"
          "(propertyS Name \"\")\n(propertyS Name a b)\n(propertyI N \"\")\n(propertyI N 5)\n)\n",
      Printed(footprint));
}

TEST(FootprintWriting, VerbatimLinesReplaceTheRest) {
  CBDfootprint footprint;
  footprint.m_sName = "F";
  footprint.m_aVerbatim.Add("(a %d)");
  EXPECT_EQ("(footprint F\n(a %d)\n", Printed(footprint));
}

TEST(FootprintWriting, NullParts) {
  CBDfootprint footprint;
  delete std::exchange(footprint.m_pHeelprint, nullptr);
  delete std::exchange(footprint.m_pToeprintPinArray, nullptr);
  delete std::exchange(footprint.m_pPropertyArray, nullptr);
  EXPECT_EQ(std::string("(footprint \n(uver 1)\n(area\n") + kNoBox +
                ")\n(grid\n(rectGrid\n(origin\n(pt 0 0)\n)\n(x 0.00000)\n(y 0.00000)\n)\n)\n" + kNoMinRect +
                "(polarity NO)\n(panelUse NO)\n)\n",
            Printed(footprint));
  EXPECT_NE("", RaisedBy([&] { footprint.sGetInsertionTypeOfFootprint(nullptr); }));
  CBDheelprint heelprint;
  delete std::exchange(heelprint.m_pDrawObjArray, nullptr);
  EXPECT_EQ(kEmptyHeelprint, Printed2(heelprint));
}

TEST(FootprintContainerWriting, EmptyAndFull) {
  const std::string constants =
      "(footprintContainer\n(commonParameters\n(dimensionParameters\n(arrowLength 1000000)\n(arrowAngle 15.000000)\n"
      "(dotDiameter 100000)\n(textFrameOffset 100000)\n(arrowOffset 100000)\n(dimAssistOffset 100000)\n"
      "(dimLineWidth 20000)\n(drawTextFrame NO)\n(textClip NO)\n(standard JIS)\n)\n)\n"
      "(padstackGroups\n(padstackGroup default)\n)\n";
  const std::string technologyText = "(technologyContainer\n(technology T\n(footprintLayer\n)\n)\n)\n";
  CBDtechnologyContainer technology;
  technology.m_sName = "T";
  CBDfootprintContainer container;
  const auto printed = [&] { return Printed([&](std::FILE* fp) { return container.nPrint2File(fp, &technology); }); };
  EXPECT_EQ(technologyText + constants + "(pads\n)\n(padstacks\n)\n(footprints\n)\n)\n", printed());
  container.m_pPadArray->Add(new CBDpad);
  container.m_pPadArray->Add(nullptr);
  container.m_pPadstackArray->Add(new CBDpadstack);
  container.m_pFootprintArray->Add(new CBDfootprint);
  const std::string expected = technologyText + constants + "(pads\n" + Printed(*container.m_pPadArray->GetAt(0)) +
                               ")\n(padstacks\n" + Printed(*container.m_pPadstackArray->GetAt(0)) + ")\n(footprints\n" +
                               Printed(*container.m_pFootprintArray->GetAt(0)) + ")\n)\n";
  EXPECT_EQ(expected, printed());
  EXPECT_NE("", RaisedBy([&] { container.nPrint2File(stdout, nullptr); }));
  EXPECT_NE("", RaisedBy([&] { container.nPrint2File(nullptr, &technology); }));
}

// ---- look-ups ----

template <class Array>
auto* AddNamed(Array& array, const char* szName) {
  array.Add(new std::remove_pointer_t<decltype(array.GetAt(0))>);
  array.GetLastElement()->m_sName = szName;
  return array.GetLastElement();
}

TEST(FootprintContainerLookUp, TakesTheFirstExactMatch) {
  CBDfootprintContainer container;
  container.m_pFootprintArray->Add(nullptr);
  container.m_pPadArray->Add(nullptr);
  container.m_pPadstackArray->Add(nullptr);
  const auto* pFootprint = AddNamed(*container.m_pFootprintArray, "A");
  const auto* pPad = AddNamed(*container.m_pPadArray, "A");
  const auto* pPadstack = AddNamed(*container.m_pPadstackArray, "A");
  AddNamed(*container.m_pFootprintArray, "A");
  AddNamed(*container.m_pPadArray, "A");
  AddNamed(*container.m_pPadstackArray, "A");
  EXPECT_EQ(1, container.nGetFootprintIDFromName("A"));
  EXPECT_EQ(pFootprint, container.pGetFootprintWithName("A"));
  EXPECT_EQ(pPad, container.pGetPadFromName("A"));
  EXPECT_EQ(pPadstack, container.pGetPadstackFromName("A"));
  for (const char* szName : {"a", "", "AA"}) {
    EXPECT_EQ(-1, container.nGetFootprintIDFromName(szName));
    EXPECT_EQ(nullptr, container.pGetFootprintWithName(szName));
    EXPECT_EQ(nullptr, container.pGetPadFromName(szName));
    EXPECT_EQ(nullptr, container.pGetPadstackFromName(szName));
  }
  delete std::exchange(container.m_pFootprintArray, nullptr);
  delete std::exchange(container.m_pPadArray, nullptr);
  delete std::exchange(container.m_pPadstackArray, nullptr);
  EXPECT_NE("", RaisedBy([&] { container.nGetFootprintIDFromName("A"); }));
  EXPECT_NE("", RaisedBy([&] { container.pGetFootprintWithName("A"); }));
  EXPECT_NE("", RaisedBy([&] { container.pGetPadFromName("A"); }));
  EXPECT_NE("", RaisedBy([&] { container.pGetPadstackFromName("A"); }));
}

TEST(ToeprintPinArray, GivesTheFirstPinOfAName) {
  CBDtoeprintPinArray pins;
  pins.Add(nullptr);
  const auto* pPin = AddNamed(pins, "1");
  AddNamed(pins, "1");
  EXPECT_EQ(pPin, pins.GetToeprintPin("1"));
  const auto* pLetter = AddNamed(pins, "A1");
  for (const char* szName : {"2", "", "a1", "A", "A1 "}) EXPECT_EQ(nullptr, pins.GetToeprintPin(szName)) << szName;
  EXPECT_EQ(pLetter, pins.GetToeprintPin("A1"));
  const auto* pNameless = AddNamed(pins, "");
  EXPECT_EQ(pNameless, pins.GetToeprintPin(""));
}

TEST(FootprintInsertionType, TheFirstPadThatDecides) {
  CBDfootprintContainer container;
  AddNamed(*container.m_pPadstackArray, "DRILLED")->m_pHole->m_pDrawObj = new CBDhole;
  AddNamed(*container.m_pPadstackArray, "FLAT");
  // A pin per word, a shape per letter: P a pad, D, F, U a padstack that is drilled, flat or unknown, O something else,
  // X something else that says it is a padstack, 0 an empty slot.
  const auto type = [&](const std::string& pins) {
    CBDfootprint footprint;
    footprint.m_pToeprintPinArray->Add(nullptr);
    auto* pPin = AddNamed(*footprint.m_pToeprintPinArray, "1");
    for (const char c : pins) {
      if (c == ' ') {
        pPin = AddNamed(*footprint.m_pToeprintPinArray, "2");
        continue;
      }
      CBDdrawObj* pShape = nullptr;
      if (c == 'P') pShape = new CBDdrawPad;
      if (c == 'O' || c == 'X') pShape = new CBDcircle;
      if (c == 'X') pShape->m_sKind = "DRAWPADSTACK";
      if (std::string("DFU").find(c) != std::string::npos) {
        auto* pPlaced = new CBDdrawPadstack;
        pPlaced->m_sPadstackName = c == 'D' ? "DRILLED" : c == 'F' ? "FLAT" : "UNKNOWN";
        pShape = pPlaced;
      }
      pPin->m_pDrawObjArray->Add(pShape);
    }
    return Str(footprint.sGetInsertionTypeOfFootprint(&container));
  };
  for (const char* szPins : {"D", "FD", "OD", "F D", "U D", "0D", "X D", " D"})
    EXPECT_EQ("DIP", type(szPins)) << szPins;
  for (const char* szPins : {"", "P", "P D", "FP D", "F", "U", "O", "X", "0"}) EXPECT_EQ("SMD", type(szPins)) << szPins;

  CBDfootprint footprint;
  auto* pPlaced = new CBDdrawPadstack;
  pPlaced->m_sPadstackName = "FLAT";
  CBDtoeprintPin& pin = *AddNamed(*footprint.m_pToeprintPinArray, "1");
  pin.m_pDrawObjArray->Add(pPlaced);
  EXPECT_NE("", RaisedBy([&] { footprint.sGetInsertionTypeOfFootprint(nullptr); }));
  delete std::exchange(container.m_pPadstackArray->GetAt(1)->m_pHole, nullptr);
  EXPECT_NE("", RaisedBy([&] { footprint.sGetInsertionTypeOfFootprint(&container); }));
  delete std::exchange(pin.m_pDrawObjArray, nullptr);
  EXPECT_NE("", RaisedBy([&] { footprint.sGetInsertionTypeOfFootprint(&container); }));
}

TEST(FootprintObjects, StartAsTold) {
  const CBDfootprint footprint;
  EXPECT_EQ(1, footprint.m_nUver);
  EXPECT_EQ(CRectD(), footprint.m_rcArea);
  EXPECT_EQ(0, footprint.m_pHeelprint->m_pDrawObjArray->GetSize());
  const CBDfootprintContainer container;
  ASSERT_NE(nullptr, container.m_pCommonParameter);
  for (const __int64 n : container.m_pCommonParameter->m_aReserved1) EXPECT_EQ(0, n);
}

}  // namespace
