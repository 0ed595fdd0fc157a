#include "drawobj/CBDcircle.h"
#include "drawobj/CBDhole.h"
#include "drawobj/CBDline.h"
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

TEST(PadWriting, EmptySlotsAreNoShapes) {
  CBDpad pad;
  pad.m_pDrawObjArray->Add(nullptr);
  EXPECT_EQ(std::string::npos, Printed(pad).find("geometry"));
  delete std::exchange(pad.m_pDrawObjArray, nullptr);
  EXPECT_EQ(std::string::npos, Printed(pad).find("geometry"));
  EXPECT_NE("", RaisedBy([&] { pad.nPrint2File(nullptr); }));
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
          {"first pad counts", "(padSet (connect (pad A) (pad B)))", ":A///"},
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
      {"the rest does not count", "(padstack V (uver 7) (area (box)) (panelUse YES) (foo))", "V //"},
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
          {"buildup via", "(padstack V (isBuildupVia YES))", "V //YES"},
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

TEST(PadstackWriting, VerbatimLinesReplaceTheRest) {
  CBDpadstack padstack;
  padstack.m_sName = "V";
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
  // A host may give any tag to anything.
  hole.m_pDrawObj->m_sKind = "HOLE";
  EXPECT_EQ("(hole (footLayer L)\n(geometry\n)\n)\n", Printed(hole));
}

TEST(PadstackWriting, NullParts) {
  CBDpadstack padstack;
  delete std::exchange(padstack.m_pHole, nullptr);
  delete std::exchange(padstack.m_pPadSetArray, nullptr);
  EXPECT_EQ(std::string("(padstack \n(uver 1)\n") + kNoArea + "(type )\n(throughMode )\n(panelUse NO)\n)\n",
            Printed(padstack));
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
  EXPECT_EQ(1, CBDpad().m_nUver);
  EXPECT_EQ(0, CBDpad().m_pDrawObjArray->GetSize());
  const CBDpadstack padstack;
  EXPECT_EQ(1, padstack.m_nUver);
  EXPECT_EQ(nullptr, padstack.m_pHole->m_pDrawObj);
  EXPECT_EQ(nullptr, padstack.m_pHole->m_pReserved);
}

TEST(PadObjects, CopiesShare) {
  CBDpad pad;
  CBDpad copy(pad);
  EXPECT_EQ(pad.m_pDrawObjArray, copy.m_pDrawObjArray);
  copy.m_pDrawObjArray = nullptr;
  CBDpadstackHole hole;
  hole.m_pDrawObj = new CBDcircle;
  CBDpadstackHole copyOfHole(hole);
  EXPECT_EQ(hole.m_pDrawObj, copyOfHole.m_pDrawObj);
  copyOfHole.m_pDrawObj = nullptr;
}

}  // namespace
