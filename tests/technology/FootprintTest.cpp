#include "drawobj/CBDcircle.h"
#include "drawobj/CBDdrawPad.h"
#include "drawobj/CBDdrawPadstack.h"
#include "drawobj/CBDhole.h"
#include "drawobj/CBDline.h"
#include "drawobj/CBDoval.h"
#include "drawobj/CBDrectangle.h"
#include "drawobj/CBDsquareHole.h"
#include "drawobj/CBDsurface.h"
#include "drawobj/CBDtext.h"
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
      {"a later point in units", Box("(pt 1.0 1.0) (pt 350000 4.5)"), "F 1 1;1 3.5;4.5 "},
      {"a later area leaves the second point",
       "(footprint F (area (box (pt 1.0 1.0) (pt 2.0 2.0))) (area (box (pt 3.0 3.0))))", "F 1 3;3 2;2 "},
      {"unknown forms show nothing",
       "(footprint F (teapot) (area (teapot) (box (teapot))) (heelprint (teapot)) (toeprint (teapot) (pin 1 "
       "(teapot))))",
       "F 1 0;0 0;0  pin 1 0;0 "},
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
      {"first name of a layer counts", Heel("(layer (footLayer A) (footLayer B) (circle 1.0))"),
       "F 1 0;0 0;0 CIRCLE@/A/0"},
      {"names and marks of a layer are no shapes",
       Heel("(layer (footLayer A) (FPADSTACK) (circle 1.0) (footLayer B) (FPADSTACK))"),
       "F 1 0;0 0;0 CIRCLE@/FPADSTACK/0"},
      {"a shape that is not known",
       Heel("(layer (footLayer A) (teapot) (circle 1.0))"),
       "F 1 0;0 0;0 CIRCLE@/A/0",
       {"New Draw Type : teapot"}},
      {"no layout", "(footprint F (heelprint (layer (circle 1.0))))", "F 1 0;0 0;0 "},
      {"first layout counts", "(footprint F (heelprint (layout (l (circle 1.0))) (layout (l (oval)))))",
       "F 1 0;0 0;0 CIRCLE@//0"},
      {"two heelprints add up", "(footprint F (heelprint (layout (l (circle 1.0)))) (heelprint (layout (l (oval)))))",
       "F 1 0;0 0;0 CIRCLE@//0 OVAL@//0"},
      {"a shape without what it needs", Heel("(layer (circle))"), "raises \"circle\" has no value 1"},
      // toeprint
      {"pin", Pin("(pt 1.0 2.0) (layout (layer (FPADSTACK) (fPad P (pt 0.0 0.0))))"),
       "F 1 0;0 0;0  pin 1 1;2 DRAWPAD@/FPADSTACK/0"},
      {"a place in units", Pin("(pt 100000 250000)"), "F 1 0;0 0;0  pin 1 1;2.5 "},
      {"a shape of a pin that is not known",
       Pin("(layout (layer (footLayer A) (teapot) (circle 1.0)))"),
       "F 1 0;0 0;0  pin 1 0;0 CIRCLE@/A/0",
       {"New Draw Type : teapot"}},
      {"first layout of a pin counts", Pin("(layout (layer (circle 1.0))) (layout (layer (oval)))"),
       "F 1 0;0 0;0  pin 1 0;0 CIRCLE@//0"},
      {"two toeprints add up", "(footprint F (toeprint (pin 1)) (toeprint (pin 2) (pin 1)))",
       "F 1 0;0 0;0  pin 1 0;0  pin 2 0;0  pin 1 0;0 "},
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
          {"uver up to what is no digit", "(footprint F (uver 7x))", "F 7 0;0 0;0 "},
          {"uver that is no number", "(footprint F (uver x))", "F 0 0;0 0;0 "},
          {"uver beyond 32 bits", "(footprint F (uver 4294967297))", "F 1 0;0 0;0 "},
          {"properties around the body",
           "(footprint F (propertyI A b) (heelprint (layout (l (oval)))) (propertyS B c))",
           "F 1 0;0 0;0 OVAL@//0 propertyI:A=b propertyS:B=c"},
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

TEST(FootprintReading, ShapesOfABoardAssemblyGoToTheBoard) {
  for (const std::string& form : {Heel("(layer (footLayer L) (boardAssembly (geometry (circle 1.0))))"),
                                  Pin("(layout (layer (footLayer L) (boardAssembly (geometry (circle 1.0)))))")}) {
    Tree tree(form);
    CBDdrawObjArray board;
    LibraryContext context;
    EXPECT_NE("", RaisedBy([&] { ReadFootprint(tree.Form(), context); })) << form;
    context.pBoardShapes = &board;
    EXPECT_NE(Show(*ReadFootprint(tree.Form(), context)).find("DRAWSUBBOARD@/L/0"), std::string::npos) << form;
    EXPECT_EQ("CIRCLE@/L/0", Str(board)) << form;
  }
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

TEST(HeelprintWriting, ABlockForEachRunOfALayer) {
  const struct {
    std::vector<const char*> layers;
    std::vector<std::string> blocks;  // opening lines and how many shapes follow
  } cases[] = {
      {{"A", "B", "A"}, {"(layer (footLayer A)\n", "(layer (footLayer B)\n", "(layer (footLayer A)\n"}},
      {{"", "", "A"}, {"(layer (footLayer A)\n"}},
      {{"FPADSTACK", "A"}, {"(layer (FPADSTACK)\n", "(layer (footLayer A)\n"}},
      {{"FPAD(STACK)"}, {"(layer (footLayer \"FPAD(STACK)\")\n"}},
      {{"A)"}, {"(layer (footLayer \"A)\")\n"}},
  };
  for (const auto& test : cases) {
    CBDheelprint heelprint;
    for (const char* sz : test.layers) heelprint.m_pDrawObjArray->Add(Shape(new CBDcircle, sz));
    std::string expected;
    for (const std::string& s : test.blocks) expected += s + kCircle1 + ")\n";
    EXPECT_EQ(HeelprintText(expected), Printed2(heelprint));
  }
}

// Pads and padstacks have the form of a library, all else that of a board with a geometry; in a pin everything has the
// form of a library.
TEST(HeelprintWriting, EachKindHasItsForm) {
  const struct {
    std::function<CBDdrawObj*()> make;
    int nMode;
  } cases[] = {{[] { return new CBDdrawPad; }, 2},   {[] { return new CBDdrawPadstack; }, 2},
               {[] { return new CBDline; }, 1},      {[] { return new CBDrectangle; }, 1},
               {[] { return new CBDtext; }, 1},      {[] { return new CBDsurface; }, 1},
               {[] { return new CBDsquareHole; }, 1}};
  for (const auto& test : cases) {
    const auto printed = [&](int nMode) {
      const std::unique_ptr<CBDdrawObj> p(test.make());
      return Printed([&](std::FILE* fp) { return p->nPrint2File(fp, nMode); });
    };
    CBDheelprint heelprint;
    heelprint.m_pDrawObjArray->Add(Shape(test.make(), "A"));
    EXPECT_EQ(HeelprintText("(layer (footLayer A)\n" + printed(test.nMode) + ")\n"), Printed2(heelprint));
    CBDtoeprintPin pin;
    pin.m_pDrawObjArray->Add(test.make());
    EXPECT_EQ("(pin \n(pt 0.00000 0.00000)\n" + kNoMinRect + "(layout\n(layer (FPADSTACK)\n" + printed(2) + ")\n)\n)\n",
              Printed(pin));
  }
  CBDheelprint heelprint;
  auto* pEmpty = new CBDhole;
  delete std::exchange(pEmpty->m_pShape, nullptr);
  heelprint.m_pDrawObjArray->Add(Shape(pEmpty, "A"));
  EXPECT_EQ(HeelprintText("(layer (footLayer A)\n(hole\n)\n)\n"), Printed2(heelprint));
}

TEST(HeelprintWriting, WritingAShapeChangesItsNet) {
  CBDheelprint heelprint;
  auto* pLine = new CBDline;
  pLine->m_sNet = "A%";
  heelprint.m_pDrawObjArray->Add(Shape(pLine, "L"));
  EXPECT_NE(Printed2(heelprint).find("(net \"A%%\")\n"), std::string::npos);
  const CString sOnce = pLine->m_sNet;
  EXPECT_NE(sOnce, "A%");
  EXPECT_NE(Printed2(heelprint).find("(net \"\"A%%%%\"\")\n"), std::string::npos);
  CBDtoeprintPin pin;
  auto* pInPin = new CBDline;
  pInPin->m_sNet = "A%";
  pin.m_pDrawObjArray->Add(pInPin);
  EXPECT_EQ(Printed(pin).find("net"), std::string::npos);
  EXPECT_EQ(sOnce, pInPin->m_sNet) << "also where no net is written";
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
  EXPECT_EQ(CRectD(), p->m_rcArea);
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

TEST(FootprintWriting, Areas) {
  const struct {
    CRectD area;
    std::string box;  // the two points
    std::string grid;
    std::string minimal;
  } cases[] = {
      {{-12, -6, -30, -60},
       "(pt -12.00000 6.00000)\n(pt -42.00000 -54.00000)\n",
       "(x -1.00000)\n(y -2.00000)\n",
       "(pt -10.00000 5.00000)\n(pt -35.00000 -45.00000)\n"},
      {{0, 0, 6, 0},
       "(pt 0.00000 -0.00000)\n(pt 6.00000 0.00000)\n",
       "(x 0.20000)\n(y 0.00000)\n",
       "(pt 0.00000 -0.00000)\n(pt 5.00000 0.00000)\n"},
      {{12, -24, 0, 3},
       "(pt 12.00000 24.00000)\n(pt 12.00000 27.00000)\n",
       "(x 0.00000)\n(y 0.10000)\n",
       "(pt 10.00000 20.00000)\n(pt 10.00000 22.50000)\n"},
  };
  for (const auto& test : cases) {
    CBDfootprint footprint;
    footprint.m_rcArea = test.area;
    const std::string text = Printed(footprint);
    EXPECT_EQ("(footprint \n(uver 1)\n(area\n(box\n" + test.box + ")\n)\n(grid\n(rectGrid\n(origin\n(pt 0 0)\n)\n" +
                  test.grid + ")\n)\n(minRect\n(box\n" + test.minimal + ")\n)\n",
              text.substr(0, text.find("(polarity")));
  }
}

TEST(FootprintWriting, PropertiesOfTheHostsOwn) {
  CBDfootprint footprint;
  footprint.m_pPropertyArray->Add(new CLProperty("Name", "x", "Kind"));
  footprint.m_pPropertyArray->Add(new CLProperty("Name", "\"\""));
  footprint.m_pPropertyArray->Add(new CLProperty("", "5", "propertyI"));
  footprint.m_pPropertyArray->Add(new CLProperty("", "", "Kind"));
  footprint.m_pPropertyArray->Add(new CLProperty("%d", "%n", "%s"));
  const std::string text = Printed(footprint);
  EXPECT_EQ("(Kind Name x)\n(propertyS Name \"\")\n(propertyI  5)\n(Kind  \"\")\n(%s %d %n)\n)\n",
            text.substr(text.find("(Kind")));
}

TEST(FootprintWriting, VerbatimLinesReplaceTheRest) {
  CBDtechnologyContainer technology;
  CBDfootprintContainer container;
  auto* pFootprint = new CBDfootprint;
  container.m_pFootprintArray->Add(pFootprint);
  pFootprint->m_sName = "F";
  pFootprint->m_rcArea = CRectD(1, 2, 3, 4);
  pFootprint->m_pHeelprint->m_pDrawObjArray->Add(Shape(new CBDcircle, "A"));
  pFootprint->m_pToeprintPinArray->Add(new CBDtoeprintPin);
  pFootprint->m_pPropertyArray->Add(new CLProperty("Name", "x"));
  for (const char* sz : {"(a %d)", "", "(b))"}) pFootprint->m_aVerbatim.Add(sz);
  EXPECT_EQ("(footprint F\n(a %d)\n\n(b))\n", Printed(*pFootprint));
  container.m_pFootprintArray->Add(new CBDfootprint);
  const std::string text = Printed([&](std::FILE* fp) { return container.nPrint2File(fp, &technology); });
  EXPECT_NE(text.find("(footprints\n(footprint F\n(a %d)\n\n(b))\n(footprint \n(uver 1)\n"), std::string::npos);
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
  delete std::exchange(container.m_pPadArray, nullptr);
  delete std::exchange(container.m_pPadstackArray, nullptr);
  delete std::exchange(container.m_pFootprintArray, nullptr);
  EXPECT_EQ(technologyText + constants + "(pads\n)\n(padstacks\n)\n(footprints\n)\n)\n", printed());
}

TEST(FootprintWriting, ANullStreamRaisesAndChangesNothing) {
  CBDfootprint footprint;
  auto* pLine = new CBDline;
  pLine->m_sNet = "A%";
  footprint.m_pHeelprint->m_pDrawObjArray->Add(Shape(pLine, "L"));
  CBDtoeprintPin pin;
  delete std::exchange(pin.m_pDrawObjArray, nullptr);
  EXPECT_NE("", RaisedBy([&] { footprint.nPrint2File(nullptr); }));
  EXPECT_NE("", RaisedBy([&] { footprint.m_pHeelprint->nPrint2File(nullptr, 2); }));
  EXPECT_NE("", RaisedBy([&] { pin.nPrint2File(nullptr); }));
  EXPECT_EQ("A%", pLine->m_sNet);
  EXPECT_EQ("(pin \n(pt 0.00000 0.00000)\n" + kNoMinRect + "(layout\n(layer (FPADSTACK)\n)\n)\n)\n", Printed(pin))
      << "a pin without an array is one without shapes";
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
  EXPECT_EQ(-1, container.nGetFootprintIDFromName(""));
  EXPECT_EQ(nullptr, container.pGetFootprintWithName(""));
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

TEST(FootprintInsertionType, OfWhatWasRead) {
  CBDfootprintContainer container;
  LibraryContext context;
  const auto addPadstack = [&](const char* szForm) {
    Tree tree(szForm);
    container.m_pPadstackArray->Add(laminate::ReadPadstack(tree.Form(), context).release());
  };
  addPadstack("(padstack V (hole (geometry (circle 0.5))))");
  addPadstack("(padstack W (hole))");  // a placeholder is a shape too
  addPadstack("(padstack X (type SMD))");
  const auto type = [&](const std::string& form) {
    Tree tree(form);
    return Str(ReadFootprint(tree.Form(), context)->sGetInsertionTypeOfFootprint(&container));
  };
  const auto placed = [](const std::string& name) {
    return "(layout (layer (FPADSTACK) (fpadstack (pt 0.0 0.0) (padstackGroup default (padstack " + name + ")))))";
  };
  EXPECT_EQ("DIP", type(Pin(placed("V"))));
  EXPECT_EQ("DIP", type(Pin(placed("W"))));
  EXPECT_EQ("SMD", type(Pin(placed("X"))));
  EXPECT_EQ("DIP", type("(footprint F (heelprint (layout (l (fPad P)))) (toeprint (pin 1 " + placed("V") + ")))"))
      << "the body does not count";
  EXPECT_EQ("SMD", type("(footprint F (heelprint " + placed("V") + "))"));
}

TEST(FootprintObjects, StartAsTold) {
  const CBDfootprint f;
  EXPECT_EQ(" 1 0;0 0;0 ", Show(f));
  EXPECT_EQ(CRectD(), f.m_rcArea);
  for (const CPointD& pt : {f.m_ptReserved1, f.m_ptReserved2, f.m_ptReserved3, f.m_ptReserved4}) {
    EXPECT_EQ(CPointD(0, 0), pt);
  }
  EXPECT_EQ("", f.m_sReserved1 + f.m_sReserved2);
  EXPECT_TRUE(f.m_aVerbatim.IsEmpty());
  const CBDheelprint heelprint;
  EXPECT_EQ(0, heelprint.m_pDrawObjArray->GetSize());
  EXPECT_EQ(CPointD(0, 0), heelprint.m_ptReserved1);
  EXPECT_EQ(CPointD(0, 0), heelprint.m_ptReserved2);
  const CBDtoeprintPin pin;
  EXPECT_EQ("", pin.m_sName);
  for (const CPointD& pt : {pin.m_ptLocation, pin.m_ptReserved1, pin.m_ptReserved2}) EXPECT_EQ(CPointD(0, 0), pt);
  EXPECT_EQ(0, pin.m_pDrawObjArray->GetSize());
  const CBDfootprintContainer c;
  EXPECT_EQ(0, c.m_pPadArray->GetSize() + c.m_pPadstackArray->GetSize() + c.m_pFootprintArray->GetSize());
  EXPECT_TRUE(c.m_aReserved.IsEmpty());
  const CBDcommonParameter& parameter = *c.m_pCommonParameter;
  for (const __int64 n : parameter.m_aReserved1) EXPECT_EQ(0, n);
  EXPECT_EQ("", parameter.m_sReserved1 + parameter.m_sReserved2 + parameter.m_sReserved3);
  static_assert(
      kVirtuallyDestroyed<CBDfootprint, CBDheelprint, CBDtoeprintPin, CBDfootprintContainer, CBDcommonParameter>);
  static_assert(!std::is_copy_constructible_v<CBDfootprint> && !std::is_copy_assignable_v<CBDfootprint>);
  static_assert(!std::is_copy_constructible_v<CBDfootprintContainer> &&
                !std::is_copy_assignable_v<CBDfootprintContainer>);
}

TEST(FootprintObjects, HoldTheirFieldsInOrder) {
  const CBDfootprint f;
  ExpectInOrder({&f.m_rcArea, &f.m_pPropertyArray, &f.m_nUver, &f.m_sName, &f.m_ptBox1, &f.m_ptBox2, &f.m_ptReserved1,
                 &f.m_ptReserved2, &f.m_ptReserved3, &f.m_ptReserved4, &f.m_sReserved1, &f.m_sReserved2,
                 &f.m_pHeelprint, &f.m_pToeprintPinArray, &f.m_aVerbatim});
  const CBDheelprint h;
  ExpectInOrder({&h.m_ptReserved1, &h.m_ptReserved2, &h.m_pDrawObjArray});
  const CBDtoeprintPin p;
  ExpectInOrder({&p.m_sName, &p.m_ptLocation, &p.m_ptReserved1, &p.m_ptReserved2, &p.m_pDrawObjArray});
  const CBDfootprintContainer c;
  ExpectInOrder({&c.m_pCommonParameter, &c.m_aReserved, &c.m_pPadArray, &c.m_pPadstackArray, &c.m_pFootprintArray});
  const CBDcommonParameter& m = *c.m_pCommonParameter;
  ExpectInOrder({&m.m_aReserved1, &m.m_sReserved1, &m.m_sReserved2, &m.m_sReserved3});
}

TEST(FootprintObjects, CopiesShare) {
  CBDheelprint heelprint;
  heelprint.m_ptReserved1 = {1, 2};
  heelprint.m_ptReserved2 = {3, 4};
  const auto expectShared = [&heelprint](CBDheelprint& copy) {
    EXPECT_EQ("1;2 3;4", Str(copy.m_ptReserved1) + " " + Str(copy.m_ptReserved2));
    EXPECT_EQ(heelprint.m_pDrawObjArray, std::exchange(copy.m_pDrawObjArray, nullptr));
  };
  CBDheelprint copy(heelprint);
  expectShared(copy);
  copy = heelprint;
  expectShared(copy);
  CBDtoeprintPin pin;
  pin.m_sName = "1";
  pin.m_ptLocation = {1, 2};
  pin.m_ptReserved1 = {3, 4};
  pin.m_ptReserved2 = {5, 6};
  const auto expectSharedPin = [&pin](CBDtoeprintPin& ofPin) {
    EXPECT_EQ("1 1;2 3;4 5;6", Str(ofPin.m_sName) + " " + Str(ofPin.m_ptLocation) + " " + Str(ofPin.m_ptReserved1) +
                                   " " + Str(ofPin.m_ptReserved2));
    EXPECT_EQ(pin.m_pDrawObjArray, std::exchange(ofPin.m_pDrawObjArray, nullptr));
  };
  CBDtoeprintPin copyOfPin(pin);
  expectSharedPin(copyOfPin);
  copyOfPin = pin;
  expectSharedPin(copyOfPin);
  CBDcommonParameter parameter;
  parameter.m_aReserved1[4] = 7;
  parameter.m_sReserved3 = "x";
  CBDcommonParameter copyOfParameter(parameter);
  EXPECT_EQ(7, copyOfParameter.m_aReserved1[4]);
  copyOfParameter = CBDcommonParameter();
  EXPECT_EQ("", copyOfParameter.m_sReserved3);
}

TEST(FootprintObjects, DeleteWhatTheyOwn) {
  int nEnded = 0;
  {
    CBDfootprintContainer container;
    AddEnding(container.m_pPadArray, nEnded);
    AddEnding(container.m_pPadstackArray, nEnded);
    AddEnding(container.m_pFootprintArray, nEnded);
    delete std::exchange(container.m_pCommonParameter, new Ending<CBDcommonParameter>(nEnded));
    CBDfootprint footprint;
    AddEnding(footprint.m_pPropertyArray, nEnded);
    AddEnding(footprint.m_pToeprintPinArray, nEnded);
    delete std::exchange(footprint.m_pHeelprint, new Ending<CBDheelprint>(nEnded));
    footprint.m_pHeelprint->m_pDrawObjArray->Add(new Ending<CBDcircle>(nEnded));
    CBDtoeprintPin pin;
    pin.m_pDrawObjArray->Add(new Ending<CBDcircle>(nEnded));
  }
  EXPECT_EQ(9, nEnded);
  // What a host took away is not missed.
  CBDfootprintContainer container;
  delete std::exchange(container.m_pCommonParameter, nullptr);
  delete std::exchange(container.m_pPadArray, nullptr);
  delete std::exchange(container.m_pPadstackArray, nullptr);
  delete std::exchange(container.m_pFootprintArray, nullptr);
}

}  // namespace
