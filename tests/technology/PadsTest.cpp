#include "drawobj/CBDcircle.h"
#include "drawobj/CBDdrawPad.h"
#include "drawobj/CBDhole.h"
#include "drawobj/CBDrectangle.h"
#include "drawobj/CBDsquareHole.h"
#include "technology/CBDpad.h"
#include "technology/CBDpadstack.h"
#include "technology/LibraryForms.h"
#include "technology/RecordTestSupport.h"

using laminate::LibraryContext;
using laminate::ReadPad;
using laminate::ReadPadSet;
using laminate::ReadPadstack;

namespace {

std::string Show(const CBDpadSet& set) {
  return Str(set.m_sFootLayer) + ":" + Str(set.m_sConnect) + "/" + Str(set.m_sNoConnect) + "/" + Str(set.m_sThermal) +
         "/" + Str(set.m_sClearance);
}

std::string Show(const CBDpadstack& padstack) {
  std::string s = Str(padstack.m_sName) + " " + Str(padstack.m_sType) + "/" + Str(padstack.m_sThroughMode) + "/" +
                  Str(padstack.m_sIsBuildupVia);
  if (const auto* pHole = dynamic_cast<const CBDhole*>(padstack.m_pHole->m_pDrawObj)) {
    s += " hole " + Str(pHole->m_sLayerName) + " of " + Str(pHole->m_pShape->m_sKind);
    if (const auto* pCircle = dynamic_cast<const CBDcircle*>(pHole->m_pShape)) s += " " + Str(pCircle->m_dRadius);
  }
  for (const CBDpadSet* p : *padstack.m_pPadSetArray) s += " " + Show(*p);
  return s + (padstack.m_pHole->m_sFootLayer.IsEmpty() ? "" : " !");
}

std::string ReadAsPadstack(const CECadClsLvl& node, bool bWhole) {
  LibraryContext context;
  context.bWhole = bWhole;
  return Show(*ReadPadstack(node, context));
}

// ---- pads ----

TEST(PadReading, Rows) {
  const auto read = [](const CECadClsLvl& node) {
    LibraryContext context;
    const auto p = ReadPad(node, context);
    return Str(p->m_sName) + " " + Str(*p->m_pDrawObjArray);
  };
  CheckReading(
      {
          {"shapes", "(pad P (geometry (circle 1.0) (oval (width 1.0)) (basePoint)))", "P CIRCLE@//0 OVAL@//0"},
          {"no geometry", "(pad P)", "P "},
          {"empty geometry", "(pad P (geometry))", "P "},
          {"only the first geometry", "(pad P (geometry (circle 1.0)) (geometry (circle 2.0)))", "P CIRCLE@//0"},
          {"the rest does not count",
           "(pad P (uver 7) (area (box (pt 1.0 1.0) (pt 2.0 2.0))) (grid) (photo X) (panelUse YES) (circle 1.0))",
           "P "},
          {"first value is the name", "(pad P Q)", "P "},
          {"a name in quotes", "(pad \"P (1)\" (geometry (circle 1.0)))", "P (1) CIRCLE@//0"},
          {"an unknown shape", "(pad P (geometry (foo) (circle 1.0)))", "P CIRCLE@//0", {"New Draw Type : foo"}},
          {"unknown children", "(pad P (foo) (Geometry (circle 1.0)) (hole))", "P "},
          {"a reference to a pad", "(pad P (geometry (fPad Q)))", "P DRAWPAD@//0"},
          {"no name", "(pad (geometry))", "raises \"pad\" has no value 1"},
          {"a shape without what it needs", "(pad P (geometry (circle)))", "raises \"circle\" has no value 1"},
      },
      read);
}

TEST(PadReading, LeavesVersionAndAreaAlone) {
  Tree tree("(pad P (uver 7) (area (box (pt 1.0 1.0) (pt 2.0 2.0))))");
  LibraryContext context;
  const auto p = ReadPad(tree.Form(), context);
  EXPECT_EQ(1, p->m_nUver);
  EXPECT_EQ(CRectD(), p->m_rcArea);
}

TEST(PadReading, ShapesOfABoardAssemblyGoToTheBoard) {
  Tree tree("(pad P (geometry (boardAssembly (geometry (circle 1.0)))))");
  CBDdrawObjArray board;
  LibraryContext context;
  context.pBoardShapes = &board;
  const auto p = ReadPad(tree.Form(), context);
  EXPECT_EQ("CIRCLE@//0", Str(board));
  EXPECT_EQ("DRAWSUBBOARD@//0", Str(*p->m_pDrawObjArray));
}

constexpr const char* kNoArea = "(area\n(box\n(pt 0.00000 -0.00000)\n(pt 0.00000 0.00000)\n)\n)\n";

TEST(PadWriting, AfterARead) {
  CBDpad pad;
  pad.m_sName = "P(1) x";
  EXPECT_EQ(std::string("(pad P(1) x\n(uver 1)\n") + kNoArea +
                "(grid\n(rectGrid\n(origin\n(pt 0 0)\n)\n(x 0.00000)\n(y 0.00000)\n)\n)\n"
                "(photo FLASH)\n(panelUse NO)\n)\n",
            Printed(pad));
}

TEST(PadWriting, AreaGridAndShapes) {
  CBDpad pad;
  pad.m_sName = "P";
  pad.m_nUver = 3;
  pad.m_rcArea = CRectD(1, 2, 30, 60);
  pad.m_pDrawObjArray->Add(nullptr);
  auto* pCircle = new CBDcircle;
  pCircle->m_dRadius = 0.5;
  pad.m_pDrawObjArray->Add(pCircle);
  // The step in x comes from the height, that in y from the width.
  EXPECT_EQ(
      "(pad P\n(uver 3)\n(area\n(box\n(pt 1.00000 -2.00000)\n(pt 31.00000 58.00000)\n)\n)\n"
      "(grid\n(rectGrid\n(origin\n(pt 0 0)\n)\n(x 2.00000)\n(y 1.00000)\n)\n)\n"
      "(photo FLASH)\n(panelUse NO)\n"
      "(geometry\n(circle 0.50000\n(pt 0.00000 0.00000)\n)\n)\n)\n",
      Printed(pad));
}

TEST(PadWriting, AreasOfAnySign) {
  CBDpad pad;
  pad.m_rcArea = CRectD(-1, -2, -30, -60);
  EXPECT_EQ(
      "(pad \n(uver 1)\n(area\n(box\n(pt -1.00000 2.00000)\n(pt -31.00000 -58.00000)\n)\n)\n"
      "(grid\n(rectGrid\n(origin\n(pt 0 0)\n)\n(x -2.00000)\n(y -1.00000)\n)\n)\n(photo FLASH)\n(panelUse NO)\n)\n",
      Printed(pad));
}

// The text of the "geometry" of a pad of one shape.
std::string GeometryOfPad(CBDpad& pad) {
  const std::string s = Printed(pad);
  const std::size_t nBegin = s.find("(geometry\n");
  return s.substr(nBegin, s.size() - nBegin - 2);
}

TEST(PadWriting, ShapesInTheFormOfLibraries) {
  CBDpad pad;
  auto* pPad = new CBDdrawPad;
  pPad->m_sPadName = "Q";
  pad.m_pDrawObjArray->Add(pPad);
  pad.m_pDrawObjArray->Add(nullptr);
  auto* pRectangle = new CBDrectangle;
  pRectangle->m_sNet = "A%";
  pad.m_pDrawObjArray->Add(pRectangle);
  EXPECT_EQ(
      "(geometry\n(fPad Q\n(pt 0.00000 0.00000)\n)\n"
      "(rectangle\n(pt 0.00000 0.00000)\n(width 0.00000)\n(height 0.00000)\n(rAngle 0.000000)\n(outlineWidth 0.00000)\n"
      "(fillWidth 0.00000)\n(fillAngle 0.000000)\n)\n)\n",
      GeometryOfPad(pad));
  EXPECT_EQ("\"A%%\"", pRectangle->m_sNet);
  Printed(pad);
  EXPECT_EQ("\"\"A%%%%\"\"", pRectangle->m_sNet);
}

TEST(PadWriting, EmptySlotsAreNoShapes) {
  CBDpad pad;
  pad.m_pDrawObjArray->Add(nullptr);
  EXPECT_EQ(std::string::npos, Printed(pad).find("geometry"));
  delete std::exchange(pad.m_pDrawObjArray, nullptr);
  EXPECT_EQ(std::string::npos, Printed(pad).find("geometry"));
  ExpectRaisesWithoutStream<CBDpad, CBDpadSet, CBDpadstackHole, CBDpadstack>();
}

// ---- pad sets ----

TEST(PadSetReading, Rows) {
  const auto read = [](const CECadClsLvl& node) { return Show(*ReadPadSet(node)); };
  CheckReading(
      {
          {"all", "(padSet (footLayer L) (connect (pad A)) (noconnect (pad B)) (thermal (pad C)) (clearance (pad D)))",
           "L:A/B/C/D"},
          {"nothing", "(padSet)", ":///"},
          {"without pads", "(padSet (connect) (noconnect (foo X)) (thermal X) (clearance))", ":///"},
          {"repeated", "(padSet (footLayer L) (footLayer M) (connect (pad A)) (connect (pad B)))", "M:B///"},
          {"first pad counts", "(padSet (connect (pad A) (pad)))", ":A///"},
          {"first value counts", "(padSet (footLayer L M) (connect (pad A B)))", "L:A///"},
          {"empty names are names", "(padSet (connect (pad A)) (connect (pad \"\")))", ":///"},
          {"a later one without pad leaves it", "(padSet (connect (pad A)) (connect))", ":A///"},
          {"unknown", "(padSet (foo (pad A)) (noConnect (pad A)))", ":///"},
          {"no layer", "(padSet (footLayer))", "raises \"footLayer\" has no value 1"},
          {"connect", "(padSet (connect (pad)))", "raises \"pad\" has no value 1"},
          {"noconnect", "(padSet (noconnect (pad)))", "raises \"pad\" has no value 1"},
          {"thermal", "(padSet (thermal (pad)))", "raises \"pad\" has no value 1"},
          {"clearance", "(padSet (clearance (pad)))", "raises \"pad\" has no value 1"},
      },
      read);
}

TEST(PadSetWriting, NamesThatAreThere) {
  CBDpadSet set;
  set.m_sFootLayer = "L(1)";
  EXPECT_EQ("", Printed(set));
  set.m_sClearance = "D";
  EXPECT_EQ("(padSet (footLayer L(1))\n(clearance (pad D))\n)\n", Printed(set));
  set.m_sConnect = "A B";
  set.m_sNoConnect = "B";
  set.m_sThermal = "C";
  EXPECT_EQ(
      "(padSet (footLayer L(1))\n(connect (pad A B))\n(noconnect (pad B))\n(thermal (pad C))\n(clearance (pad D))\n)\n",
      Printed(set));
}

// ---- padstacks ----

const std::vector<ReadCase>& CommonPadstackCases() {
  static const std::vector<ReadCase> cases = {
      {"all", "(padstack V (type T) (throughMode M) (hole (geometry (circle 0.5))) (padSet (footLayer L)))",
       "V T/M/ hole HOLE of CIRCLE 0.5 L:///"},
      {"nothing", "(padstack V)", "V //"},
      {"repeated", "(padstack V (type T) (type U) (throughMode M) (throughMode N))", "V U/N/"},
      {"several sets", "(padstack V (padSet (footLayer L)) (padSet) (padSet (connect (pad A))))",
       "V // L:/// :/// :A///"},
      {"the rest does not count", "(padstack V (uver) (area (box)) (panelUse YES) (foo))", "V //"},
      {"first values count", "(padstack \"V 1\" W (type T U) (throughMode M N))", "V 1 T/M/"},
      {"an empty name", "(padstack \"\")", " //"},
      {"an unknown shape is the first one all the same",
       "(padstack V (hole (geometry (foo) (circle))))",
       "V // hole HOLE of NONE",
       {"New Draw Type : foo"}},
      {"unknown children of a hole", "(padstack V (hole (foo) (circle 0.5)))", "V // hole HOLE of NONE"},
      {"a later hole counts", "(padstack V (hole (geometry (circle 0.5))) (hole (geometry (circle 0.7))))",
       "V // hole HOLE of CIRCLE 0.7"},
      {"a later hole without geometry too", "(padstack V (hole (geometry (circle 0.5))) (hole))",
       "V // hole HOLE of NONE"},
      {"a hole's layer is passed over", "(padstack V (hole (footLayer L)))", "V // hole HOLE of NONE"},
      {"a shape that is none", "(padstack V (hole (geometry (basePoint))))", "V // hole HOLE of NONE"},
      {"only the first shape", "(padstack V (hole (geometry (circle 0.5) (oval))))", "V // hole HOLE of CIRCLE 0.5"},
      {"only the first geometry", "(padstack V (hole (geometry (circle 0.5)) (geometry (circle 0.6))))",
       "V // hole HOLE of CIRCLE 0.5"},
      {"square", "(padstack V (hole (geometry (squareHole (width 1.0)))))", "V // hole HOLE of SQUAREHOLE"},
      {"no name", "(padstack)", "raises \"padstack\" has no value 1"},
      {"no type", "(padstack V (type))", "raises \"type\" has no value 1"},
      {"no mode", "(padstack V (throughMode))", "raises \"throughMode\" has no value 1"},
      {"no pad name", "(padstack V (padSet (connect (pad))))", "raises \"pad\" has no value 1"},
      {"no radius", "(padstack V (hole (geometry (circle))))", "raises \"circle\" has no value 1"},
  };
  return cases;
}

TEST(PadstackReading, RowsOfAWholeLoad) {
  const auto read = [](const CECadClsLvl& node) { return ReadAsPadstack(node, true); };
  CheckReading(CommonPadstackCases(), read);
  CheckReading(
      {
          {"buildup via", "(padstack V (isBuildupVia YES X))", "V //YES"},
          {"the last one counts", "(padstack V (isBuildupVia YES) (isBuildupVia NO))", "V //NO"},
          {"no buildup value", "(padstack V (isBuildupVia))", "raises \"isBuildupVia\" has no value 1"},
          {"an empty geometry is none", "(padstack V (hole (geometry)))", "V // hole HOLE of NONE"},
      },
      read);
}

TEST(PadstackReading, RowsOfALoadOfParts) {
  const auto read = [](const CECadClsLvl& node) { return ReadAsPadstack(node, false); };
  CheckReading(CommonPadstackCases(), read);
  CheckReading(
      {
          {"buildup via", "(padstack V (isBuildupVia YES))", "V //"},
          {"no buildup value", "(padstack V (isBuildupVia))", "V //"},
          {"an empty geometry is missed", "(padstack V (hole (geometry)))", "raises \"geometry\" has no form in it"},
      },
      read);
}

TEST(PadstackReading, LeavesVersionAreaAndFootLayerAlone) {
  for (const bool bWhole : {true, false}) {
    Tree tree("(padstack V (uver 7) (area (box (pt 1.0 1.0) (pt 2.0 2.0))) (hole (footLayer L)))");
    LibraryContext context;
    context.bWhole = bWhole;
    const auto p = ReadPadstack(tree.Form(), context);
    EXPECT_EQ(1, p->m_nUver);
    EXPECT_EQ(CRectD(), p->m_rcArea);
    EXPECT_TRUE(p->m_aVerbatim.IsEmpty());
    EXPECT_EQ("", p->m_pHole->m_sFootLayer);
    EXPECT_TRUE(Printed(*p).starts_with("(padstack V\n(uver 1)\n(area\n(box\n(pt 0.00000 -0.00000)\n"));
  }
}

// Only the hole itself is of a layer of that name; the shape in it is of none.
TEST(PadstackReading, TheShapeOfAHoleHasNoLayer) {
  Tree tree("(padstack V (hole (geometry (circle 0.5))))");
  LibraryContext context;
  const auto p = ReadPadstack(tree.Form(), context);
  auto& hole = dynamic_cast<CBDhole&>(*p->m_pHole->m_pDrawObj);
  CBDdrawObjArray shapes;
  shapes.Add(&hole);
  shapes.Add(hole.m_pShape);
  EXPECT_EQ("HOLE@/HOLE/0 CIRCLE@//0", Str(shapes));
  EXPECT_EQ("0 0", std::to_string(hole.m_nFrom) + " " + std::to_string(hole.m_nTo));
  shapes.RemoveAll();
}

TEST(PadstackReading, ShapesOfABoardAssemblyGoToTheBoard) {
  Tree tree("(padstack V (hole (geometry (boardAssembly (geometry (circle 1.0))))))");
  CBDdrawObjArray board;
  LibraryContext context;
  EXPECT_NE("", RaisedBy([&] { ReadPadstack(tree.Form(), context); }));
  context.pBoardShapes = &board;
  EXPECT_EQ("V // hole HOLE of DRAWSUBBOARD", Show(*ReadPadstack(tree.Form(), context)));
  EXPECT_EQ("CIRCLE@//0", Str(board));
}

TEST(PadstackWriting, AfterARead) {
  Tree tree("(padstack V (type T) (throughMode M) (hole (geometry (circle 0.5))) (padSet (footLayer L)))");
  LibraryContext context;
  const auto p = ReadPadstack(tree.Form(), context);
  EXPECT_EQ(std::string("(padstack V\n(uver 1)\n") + kNoArea +
                "(type T)\n(throughMode M)\n(panelUse NO)\n"
                "(hole (footLayer )\n(geometry\n(circle 0.50000\n(pt 0.00000 0.00000)\n)\n)\n)\n)\n",
            Printed(*p));
}

TEST(PadstackWriting, AllOfIt) {
  CBDpadstack padstack;
  padstack.m_sName = "V(1)";
  padstack.m_nUver = 2;
  padstack.m_rcArea = CRectD(1, 2, 3, 4);
  padstack.m_sIsBuildupVia = "YES";
  padstack.m_pPadSetArray->Add(nullptr);
  padstack.m_pPadSetArray->Add(new CBDpadSet);
  padstack.m_pPadSetArray->Add(new CBDpadSet);
  padstack.m_pPadSetArray->GetAt(2)->m_sConnect = "A";
  EXPECT_EQ(
      "(padstack V(1)\n(uver 2)\n(area\n(box\n(pt 1.00000 -2.00000)\n(pt 4.00000 2.00000)\n)\n)\n"
      "(type )\n(throughMode )\n(panelUse NO)\n(isBuildupVia YES)\n(padSet (footLayer )\n(connect (pad A))\n)\n)\n",
      Printed(padstack));
}

TEST(PadstackWriting, TheHoleStandsBeforeThePads) {
  Tree tree(
      "(padstack V (padSet (footLayer A) (connect (pad P))) (padSet (footLayer B) (clearance (pad Q))) (throughMode M) "
      "(isBuildupVia NO) (type T) (hole))");
  LibraryContext context;
  EXPECT_EQ(std::string("(padstack V\n(uver 1)\n") + kNoArea +
                "(type T)\n(throughMode M)\n(panelUse NO)\n(isBuildupVia NO)\n(hole (footLayer )\n(geometry\n)\n)\n"
                "(padSet (footLayer A)\n(connect (pad P))\n)\n(padSet (footLayer B)\n(clearance (pad Q))\n)\n)\n",
            Printed(*ReadPadstack(tree.Form(), context)));
}

TEST(PadstackWriting, HolesAfterARead) {
  const struct {
    const char* geometry;
    const char* written;
  } cases[] = {
      {"", ""},
      {"(geometry (basePoint))", ""},
      {"(geometry (circle 0.5))", "(circle 0.50000\n(pt 0.00000 0.00000)\n)\n"},
      {"(geometry (squareHole (pt 1.0 2.0) (width 1.0)))",
       "(squareHole\n(pt 1.00000 2.00000)\n(width 1.00000)\n(height 0.00000)\n(r 0.00000)\n)\n"},
      {"(geometry (ovalHole (geometry (oval (pt 1.0 2.5) (width 12.0)))))",
       "(oval\n(pt 1 2.5)\n(width 12)\n(height 0)\n(ovalAngle 0)\n)\n"},
      // Only the outer one is taken off.
      {"(geometry (hole (geometry (circle 0.5))))", "(hole\n(circle 0.50000\n(pt 0.00000 0.00000)\n)\n)\n"},
  };
  for (const auto& [geometry, written] : cases) {
    Tree tree(std::string("(padstack V (hole ") + geometry + "))");
    LibraryContext context;
    EXPECT_EQ(std::string("(hole (footLayer )\n(geometry\n") + written + ")\n)\n",
              Printed(*ReadPadstack(tree.Form(), context)->m_pHole))
        << geometry;
  }
}

TEST(PadstackWriting, VerbatimLinesReplaceTheRest) {
  CBDpadstack padstack;
  padstack.m_sName = "V";
  padstack.m_sIsBuildupVia = "YES";
  padstack.m_pHole->m_pDrawObj = new CBDcircle;
  padstack.m_pPadSetArray->Add(new CBDpadSet);
  padstack.m_pPadSetArray->GetAt(0)->m_sConnect = "A";
  padstack.m_aVerbatim.Add("");
  EXPECT_EQ("(padstack V\n\n", Printed(padstack));
  padstack.m_aVerbatim.RemoveAll();
  padstack.m_aVerbatim.Add("(type X)");
  padstack.m_aVerbatim.Add("100%s)");
  EXPECT_EQ("(padstack V\n(type X)\n100%s)\n", Printed(padstack));
}

TEST(PadstackWriting, Holes) {
  CBDpadstackHole hole;
  hole.m_sFootLayer = "L";
  EXPECT_EQ("", Printed(hole));
  // A hole's placeholder writes nothing in the geometry.
  auto* pHole = new CBDhole;
  hole.m_pDrawObj = pHole;
  EXPECT_EQ("(hole (footLayer L)\n(geometry\n)\n)\n", Printed(hole));
  // Neither does a hole without a shape.
  delete std::exchange(pHole->m_pShape, nullptr);
  EXPECT_EQ("(hole (footLayer L)\n(geometry\n)\n)\n", Printed(hole));
  // What is no hole is written itself.
  delete std::exchange(hole.m_pDrawObj, new CBDcircle);
  EXPECT_EQ("(hole (footLayer L)\n(geometry\n(circle 0.00000\n(pt 0.00000 0.00000)\n)\n)\n)\n", Printed(hole));
  delete std::exchange(hole.m_pDrawObj, new CBDsquareHole);
  EXPECT_TRUE(Printed(hole).starts_with("(hole (footLayer L)\n(geometry\n(squareHole\n(pt ")) << Printed(hole);
  delete std::exchange(hole.m_pDrawObj, new CBDcircle);
  // A host may give any tag to anything.
  hole.m_pDrawObj->m_sKind = "HOLE";
  EXPECT_EQ("(hole (footLayer L)\n(geometry\n)\n)\n", Printed(hole));
  pHole = new CBDhole;
  delete std::exchange(hole.m_pDrawObj, pHole);
  delete std::exchange(pHole->m_pShape, new CBDcircle);
  pHole->m_sKind = "OTHER";
  EXPECT_EQ("(hole (footLayer L)\n(geometry\n)\n)\n", Printed(hole));
}

TEST(PadstackWriting, NullParts) {
  CBDpadstack padstack;
  delete std::exchange(padstack.m_pHole, nullptr);
  delete std::exchange(padstack.m_pPadSetArray, nullptr);
  EXPECT_EQ(std::string("(padstack \n(uver 1)\n") + kNoArea + "(type )\n(throughMode )\n(panelUse NO)\n)\n",
            Printed(padstack));
}

// What is written is read and written again.
TEST(PadstackWriting, ReadsBack) {
  const auto again = [](const std::string& text) {
    Tree tree(text);
    LibraryContext context;
    if (text.starts_with("(padstack")) {
      const auto p = ReadPadstack(tree.Form(), context);
      return Show(*p) + "\n" + Printed(*p);
    }
    const auto p = ReadPad(tree.Form(), context);
    return Str(p->m_sName) + " " + Str(*p->m_pDrawObjArray) + "\n" + Printed(*p);
  };
  for (const char* szText :
       {"(pad P)",
        "(pad P (geometry (circle 0.5) (rectangle (pt 1.0 2.0) (width 3.0) (height 4.0)) (oval (pt 1.0 2.0))))",
        "(padstack V (type T) (throughMode M))",
        "(padstack V (type T) (throughMode M) (isBuildupVia YES) (hole (geometry (squareHole (width 1.0)))) (padSet "
        "(footLayer L) (connect (pad A)) (noconnect (pad B)) (thermal (pad C)) (clearance (pad D))) (padSet (footLayer "
        "M) (thermal (pad A))))"}) {
    const std::string first = again(szText);
    EXPECT_EQ(first, again(first.substr(first.find('\n') + 1)));
  }
  // A record that lacks its type or mode, or a set that lacks its layer, is written in a form that does not load.
  for (const auto& [text, raised] : {
           std::pair{"(padstack V (throughMode M))", "\"type\" has no value 1"},
           {"(padstack V (type T))", "\"throughMode\" has no value 1"},
           {"(padstack V (type T) (throughMode M) (padSet (connect (pad A))))", "\"footLayer\" has no value 1"},
       }) {
    const std::string first = again(text);
    EXPECT_EQ(raised, RaisedBy([&] { again(first.substr(first.find('\n') + 1)); })) << text;
  }
}

TEST(PadstackArray, TellsWhetherANameExists) {
  CBDpadstackArray padstacks;
  padstacks.Add(nullptr);
  padstacks.Add(new CBDpadstack);
  padstacks.GetAt(1)->m_sName = "V1";
  EXPECT_EQ(1, padstacks.bIsExistInArray("V1"));
  EXPECT_EQ(0, padstacks.bIsExistInArray("v1"));
  EXPECT_EQ(0, padstacks.bIsExistInArray("V1 "));
  EXPECT_EQ(0, padstacks.bIsExistInArray(""));
  padstacks.Add(new CBDpadstack);
  EXPECT_EQ(1, padstacks.bIsExistInArray(""));
}

TEST(PadObjects, StartAsTold) {
  const CBDpad pad;
  EXPECT_EQ(1, pad.m_nUver);
  ASSERT_NE(nullptr, pad.m_pDrawObjArray);
  EXPECT_TRUE(pad.m_pDrawObjArray->IsEmpty());
  EXPECT_EQ(CRectD(), pad.m_rcArea);
  for (const CPointD& pt : {pad.m_ptReserved1, pad.m_ptReserved2, pad.m_ptReserved3, pad.m_ptReserved4}) {
    EXPECT_EQ(CPointD(0, 0), pt);
  }
  EXPECT_EQ("", Str(pad.m_sName) + Str(pad.m_sReserved1) + Str(pad.m_sReserved2));
  const CBDpadstack padstack;
  EXPECT_EQ(1, padstack.m_nUver);
  EXPECT_EQ(" //", Show(padstack));
  EXPECT_EQ("", padstack.m_sReserved1);
  EXPECT_EQ(CPointD(0, 0), padstack.m_ptReserved1);
  EXPECT_EQ(CPointD(0, 0), padstack.m_ptReserved2);
  EXPECT_EQ(CRectD(), padstack.m_rcArea);
  EXPECT_TRUE(padstack.m_aVerbatim.IsEmpty());
  EXPECT_EQ(nullptr, padstack.m_pHole->m_pDrawObj);
  EXPECT_EQ(nullptr, padstack.m_pHole->m_pReserved);
  static_assert(sizeof padstack.m_pHole->m_pReserved == 8);
  static_assert(kVirtuallyDestroyed<CBDpad, CBDpadSet, CBDpadstackHole, CBDpadstack>);
}

TEST(PadObjects, HoldTheirFieldsInOrder) {
  const CBDpad p;
  ExpectInOrder({&p.m_nUver, &p.m_sName, &p.m_ptReserved1, &p.m_ptReserved2, &p.m_ptReserved3, &p.m_ptReserved4,
                 &p.m_sReserved1, &p.m_sReserved2, &p.m_pDrawObjArray, &p.m_rcArea});
  const CBDpadSet s;
  ExpectInOrder({&s.m_sFootLayer, &s.m_sConnect, &s.m_sNoConnect, &s.m_sThermal, &s.m_sClearance});
  const CBDpadstack v;
  ExpectInOrder({&v.m_nUver, &v.m_sName, &v.m_ptReserved1, &v.m_ptReserved2, &v.m_sType, &v.m_sThroughMode,
                 &v.m_sReserved1, &v.m_sIsBuildupVia, &v.m_pHole, &v.m_pPadSetArray, &v.m_rcArea, &v.m_aVerbatim});
  const CBDpadstackHole h;
  ExpectInOrder({&h.m_sFootLayer, &h.m_pDrawObj, &h.m_pReserved});
}

TEST(PadObjects, DeleteWhatTheyOwn) {
  int nEnded = 0;
  {
    CBDpad pad;
    pad.m_pDrawObjArray->Add(new Ending<CBDcircle>(nEnded));
    CBDpadstack padstack;
    AddEnding(padstack.m_pPadSetArray, nEnded);
    delete std::exchange(padstack.m_pHole, new Ending<CBDpadstackHole>(nEnded));
    padstack.m_pHole->m_pDrawObj = new Ending<CBDcircle>(nEnded);
  }
  EXPECT_EQ(4, nEnded);
}

TEST(PadObjects, CopiesShare) {
  CBDpad pad;
  pad.m_nUver = 3;
  pad.m_sName = "P";
  pad.m_rcArea = CRectD(1, 2, 3, 4);
  const auto expectShared = [&pad](CBDpad& copy) {
    EXPECT_EQ("3 P", std::to_string(copy.m_nUver) + " " + Str(copy.m_sName));
    EXPECT_EQ(pad.m_rcArea, copy.m_rcArea);
    EXPECT_EQ(pad.m_pDrawObjArray, std::exchange(copy.m_pDrawObjArray, nullptr));
  };
  CBDpad copy(pad);
  expectShared(copy);
  copy = pad;
  expectShared(copy);
  CBDpadstackHole hole;
  hole.m_sFootLayer = "L";
  hole.m_pDrawObj = new CBDcircle;
  const auto expectSharedHole = [&hole](CBDpadstackHole& ofHole) {
    EXPECT_EQ("L", ofHole.m_sFootLayer);
    EXPECT_EQ(hole.m_pDrawObj, std::exchange(ofHole.m_pDrawObj, nullptr));
  };
  CBDpadstackHole copyOfHole(hole);
  expectSharedHole(copyOfHole);
  copyOfHole = hole;
  expectSharedHole(copyOfHole);
  CBDpadSet set;
  set.m_sFootLayer = "L";
  set.m_sConnect = "A";
  set.m_sNoConnect = "B";
  set.m_sThermal = "C";
  set.m_sClearance = "D";
  EXPECT_EQ("L:A/B/C/D", Show(CBDpadSet(set)));
  static_assert(!std::is_copy_constructible_v<CBDpadstack> && !std::is_copy_assignable_v<CBDpadstack>);
}

}  // namespace
