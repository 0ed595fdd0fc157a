// Writing shapes, byte for byte, in every mode.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <map>
#include <random>

#include "base/TextOut.h"
#include "drawobj/DrawObjTestSupport.h"
#include "drawobj/Fields.h"

namespace {

// What the class's own member writes.
template <class T>
std::string Own(T& shape, int nMode) {
  return Printed([&](std::FILE* fp) { EXPECT_EQ(shape.nPrint2File(fp, nMode), 0); });
}

// The member and the way through a buffer give the same text, and so does the family's entry for a shape without net.
template <class T>
void ExpectText(T& shape, int nMode, const std::string& wanted) {
  EXPECT_EQ(Own(shape, nMode), wanted) << "mode " << nMode;
  std::string s;
  {
    laminate::TextOut out(s);
    shape.Write(out, nMode);
  }
  EXPECT_EQ(s, wanted) << "mode " << nMode;
  if (shape.m_sNet.IsEmpty()) {
    EXPECT_EQ(Print(shape, nMode), wanted) << "mode " << nMode;
  }
}

TEST(Write, Circle) {
  CBDcircle circle;
  circle.m_dRadius = 1.5;
  circle.m_ptCenter.SetData(-2, 0.123456);
  const std::string form = "(circle 1.50000\n(pt -2.00000 0.12346)\n)\n";
  ExpectText(circle, 2, form);
  ExpectText(circle, 1, "(geometry\n" + form + ")\n");
  ExpectText(circle, 3, "(geometry\n" + form + ")\n");
}

TEST(Write, FormsWithoutFields) {
  CBDareaz area;
  Fill(area);
  CBDdelete del;
  CBDdrawSubBoard subBoard;
  CBDsquareThermal thermal;
  Fill(subBoard);
  Fill(thermal);
  area.m_sNet = subBoard.m_sNet = thermal.m_sNet = "";
  for (int nMode : {1, 2, 3}) {
    ExpectText(area, nMode, "(area\n)\n");
    ExpectText(del, nMode, "(delete\n)\n");
    ExpectText(subBoard, nMode, "(subBoard\n)\n");
    ExpectText(thermal, nMode, "(squareThermal\n)\n");
  }
}

TEST(Write, Donut) {
  CBDdonut donut;
  donut.m_dOut = 3;
  donut.m_dIn = 2;
  donut.m_pt.SetData(1, -1);
  for (int nMode : {1, 2, 3}) {
    ExpectText(donut, nMode, "(donut\n(out 3.00000)\n(in 2.00000)\n(pt 1.00000 -1.00000)\n)\n");
  }
}

TEST(Write, Oblong) {
  CBDoblong oblong;
  oblong.m_dWidth = 0.5;
  oblong.m_ptFirst.SetData(1, 2);
  oblong.m_ptSecond.SetData(3, 4);
  for (int nMode : {1, 2, 3}) {
    ExpectText(oblong, nMode, "(oblong\n(width 0.50000)\n(pt 1.00000 2.00000)\n(pt 3.00000 4.00000)\n)\n");
  }
}

TEST(Write, Oval) {
  CBDoval oval;
  oval.m_pt.SetData(1, 2);
  oval.m_dWidth = 3;
  oval.m_dHeight = 4;
  const std::string plain = "(oval\n(pt 1.00000 2.00000)\n(width 3.00000)\n(height 4.00000)\n)\n";
  ExpectText(oval, 2, plain);
  ExpectText(oval, 3, plain);
  ExpectText(oval, 1, "(oval\n(geometry\n" + plain + ")\n)\n");
  oval.m_dAngle = -45;
  const std::string turned =
      "(oval\n(pt 1.00000 2.00000)\n(width 3.00000)\n(height 4.00000)\n(ovalAngle -45.00000)\n)\n";
  ExpectText(oval, 2, turned);
  ExpectText(oval, 1, "(oval\n(geometry\n" + turned + ")\n)\n");
}

TEST(Write, OvalHole) {
  CBDovalHole hole;
  hole.m_pt.SetData(1.5, -1234567.25);
  hole.m_dWidth = 12;
  hole.m_dHeight = 0.00001;
  hole.m_nHoleType = 4;
  const std::string form = "(oval\n(pt 1.5 -1.23457e+06)\n(width 12)\n(height 1e-05)\n(ovalAngle 0)\n)\n";
  ExpectText(hole, 2, form);
  ExpectText(hole, 3, form);
  ExpectText(hole, 1, "(ovalHole\n(geometry\n" + form + ")\n)\n");
}

TEST(Write, Rectangle) {
  CBDrectangle rectangle;
  rectangle.m_pt.SetData(1, 2);
  rectangle.m_dWidth = 3;
  rectangle.m_dHeight = 4;
  rectangle.m_dAngle = 30;
  rectangle.m_dOutlineWidth = 0.1;
  rectangle.m_dFillWidth = 0.2;
  rectangle.m_dFillAngle = 45;
  const std::string form =
      "(rectangle\n(pt 1.00000 2.00000)\n(width 3.00000)\n(height 4.00000)\n(rAngle 30.000000)\n(outlineWidth "
      "0.10000)\n(fillWidth 0.20000)\n(fillAngle 45.000000)\n)\n";
  ExpectText(rectangle, 2, form);
  ExpectText(rectangle, 1, "(rectangle\n(geometry\n" + form + ")\n)\n");
  ExpectText(rectangle, 3, "(rectangle\n(geometry\n" + form + ")\n)\n");
}

TEST(Write, RoundThermal) {
  CBDroundThermal thermal;
  thermal.m_dOut = 3;
  thermal.m_dIn = 2;
  thermal.m_pt.SetData(1, 1);
  thermal.m_nBridge = 4;
  thermal.m_dBridgeWidth = 0.25;
  thermal.m_nBridgeAngle = 45;
  const std::string form =
      "(roundThermal\n(out 3.00000)\n(in 2.00000)\n(pt 1.00000 1.00000)\n(nBridge 4)\n(bridgeWidth "
      "0.25000)\n(bridgeAngle 45)\n)\n";
  EXPECT_EQ(Printed([&](std::FILE* fp) { EXPECT_EQ(thermal.nPrint2File(fp), 0); }), form);
  for (int nMode : {1, 2, 3}) EXPECT_EQ(Print(thermal, nMode), form);
}

TEST(Write, SquareHole) {
  CBDsquareHole hole;
  hole.m_pt.SetData(1, 2);
  hole.m_dWidth = 3;
  hole.m_dHeight = 4;
  hole.m_dCorner = 0.5;
  for (int nMode : {1, 2, 3}) {
    ExpectText(hole, nMode, "(squareHole\n(pt 1.00000 2.00000)\n(width 3.00000)\n(height 4.00000)\n(r 0.50000)\n)\n");
  }
  hole.m_dAngle = 0.00001;
  ExpectText(hole, 1,
             "(squareHole\n(pt 1.00000 2.00000)\n(holeAngle 0.00001)\n(width 3.00000)\n(height 4.00000)\n(r "
             "0.50000)\n)\n");
}

TEST(Write, Hole) {
  CBDhole hole;
  hole.m_nFrom = 1;
  hole.m_nTo = 2;
  hole.m_nHoleType = 3;
  hole.m_sDrillType = "T";
  // The placeholder writes nothing.
  for (int nMode : {1, 2, 3}) ExpectText(hole, nMode, "(hole\n)\n");
  delete hole.m_pShape;
  auto* pCircle = new CBDcircle;
  hole.m_pShape = pCircle;
  const std::string circle = "(circle 0.00000\n(pt 0.00000 0.00000)\n)\n";
  ExpectText(hole, 1, "(hole\n(geometry\n" + circle + ")\n)\n");
  ExpectText(hole, 2, "(hole\n" + circle + ")\n");
  ExpectText(hole, 3, "(hole\n(geometry\n" + circle + ")\n)\n");
  // A square hole stands for itself.
  delete hole.m_pShape;
  hole.m_pShape = new CBDsquareHole;
  const std::string square = "(squareHole\n(pt 0.00000 0.00000)\n(width 0.00000)\n(height 0.00000)\n(r 0.00000)\n)\n";
  for (int nMode : {1, 2, 3}) ExpectText(hole, nMode, square);
  // The tag alone decides on the wrapper; the shape is written only if the tag fits it.
  delete hole.m_pShape;
  hole.m_pShape = new CBDcircle;
  hole.m_pShape->m_sKind = "SQUAREHOLE";
  ExpectText(hole, 1, "");
  delete hole.m_pShape;
  hole.m_pShape = nullptr;
  for (int nMode : {1, 2, 3}) ExpectText(hole, nMode, "(hole\n)\n");
}

TEST(Write, HolePreparesTheNetOfItsShape) {
  CBDhole hole;
  delete hole.m_pShape;
  hole.m_pShape = new CBDcircle;
  hole.m_pShape->m_sNet = "A";
  Print(hole, 1);
  EXPECT_EQ(hole.m_pShape->m_sNet, "\"A\"");
  // Of a square hole too, and by the hole's own member, which leaves the hole's name alone.
  delete hole.m_pShape;
  hole.m_pShape = new CBDsquareHole;
  hole.m_pShape->m_sNet = "A%";
  hole.m_sNet = "H%";
  Own(hole, 1);
  EXPECT_EQ(hole.m_pShape->m_sNet, "\"A%%\"");
  EXPECT_EQ(hole.m_sNet, "H%");
  Print(hole, 1);
  EXPECT_EQ(hole.m_pShape->m_sNet, "\"\"A%%%%\"\"");
  EXPECT_EQ(hole.m_sNet, "\"H%%\"");
}

CBDvertexPt* AddPt(CBDvertexArray& vertices, double dX, double dY, double dWidth = 0) {
  auto* p = new CBDvertexPt;
  p->m_pt.SetData(dX, dY);
  p->m_dWidth = dWidth;
  vertices.Add(p);
  return p;
}

TEST(Write, Line) {
  CBDline line;
  line.m_sThermalData = "T";
  line.m_sLineType = "DASH";
  line.m_dDash = line.m_dBlank = 1;
  AddPt(*line.m_pVertices, 1, 2, 0.5);
  AddPt(*line.m_pVertices, 3, 4);
  const std::string inner = "(line\n(vertex\n(pt 1.00000 2.00000\n(width 0.50000)\n)\n(pt 3.00000 4.00000)\n)\n)\n";
  ExpectText(line, 2, inner);
  ExpectText(line, 3, inner);
  ExpectText(line, 1, "(line\n(geometry\n" + inner + ")\n)\n");
  line.m_sPenShape = "ROUND";
  ExpectText(line, 2, inner);
  line.m_sPenShape = "SQUARE";
  std::string square = inner;
  square.insert(6, "(penShape SQUARE)\n");
  ExpectText(line, 2, square);
  line.m_sPenShape = "";
  line.m_sNet = "GND";
  EXPECT_EQ(Own(line, 2), inner);
  EXPECT_EQ(Own(line, 1), "(line\n(net GND)\n(geometry\n" + inner + ")\n)\n");
}

TEST(Write, LineWithoutVertices) {
  CBDline line;
  ExpectText(line, 2, "(line\n(vertex\n)\n)\n");
  delete line.m_pVertices;
  line.m_pVertices = nullptr;
  ExpectText(line, 2, "(line\n(vertex\n)\n)\n");
}

TEST(Write, NetNameIsQuotedAndItsPercentDoubledInTheObjectEachTime) {
  CBDline line;
  line.m_sNet = "A%1";
  EXPECT_EQ(Print(line, 1), "(line\n(net \"A%%1\")\n(geometry\n(line\n(vertex\n)\n)\n)\n)\n");
  EXPECT_EQ(line.m_sNet, "\"A%%1\"");
  EXPECT_EQ(Print(line, 1), "(line\n(net \"\"A%%%%1\"\")\n(geometry\n(line\n(vertex\n)\n)\n)\n)\n");
  EXPECT_EQ(line.m_sNet, "\"\"A%%%%1\"\"");
  // Also where the mode, the class or the tag writes no net.
  CBDcircle circle;
  circle.m_sNet = "%";
  Print(circle, 2);
  EXPECT_EQ(circle.m_sNet, "\"%%\"");
  circle.m_sKind = "UNKNOWN";
  EXPECT_EQ(Print(circle, 2), "");
  EXPECT_EQ(circle.m_sNet, "\"\"%%%%\"\"");
  // The class's own member leaves it alone.
  circle.m_sKind = "CIRCLE";
  Own(circle, 2);
  EXPECT_EQ(circle.m_sNet, "\"\"%%%%\"\"");
  CBDline empty;
  Print(empty, 1);
  EXPECT_EQ(empty.m_sNet, "");
}

TEST(Write, ANetGrowsWithEachWriteAsItIs) {
  struct Case {
    std::string net;
    std::string quoted;
  };
  const std::string nPercents(20, '%');
  const std::string nDoubled(40, '%');
  for (const Case& c :
       {Case{"A\"B", "\"A\"B\""}, Case{"\"", "\"\"\""}, Case{"A B", "\"A B\""},
        Case{"a name that is not held inside" + nPercents, "\"a name that is not held inside" + nDoubled + "\""}}) {
    CBDline line;
    line.m_sNet = CString(c.net);
    EXPECT_EQ(Print(line, 1), "(line\n(net " + c.quoted + ")\n(geometry\n(line\n(vertex\n)\n)\n)\n)\n");
    EXPECT_EQ(line.m_sNet.View(), c.quoted);
  }
  CBDline line;
  CBDdrawPadstack padstack;
  CBDsurface mesh;
  mesh.m_bMesh = 1;
  for (CBDdrawObj* p : std::vector<CBDdrawObj*>{&line, &padstack, &mesh}) {
    p->m_sNet = "A%";
    for (int i = 1; i <= 10; ++i) {
      const std::string quotes(static_cast<std::size_t>(i), '"');
      const std::string net = quotes + "A" + std::string(std::size_t{1} << i, '%') + quotes;
      EXPECT_NE(Print(*p, 1).find("(net " + net + ")\n"), std::string::npos) << i;
      EXPECT_EQ(p->m_sNet.View(), net);
    }
  }
}

// Of all texts: each that is written stands in the text as it is, and no field changes but the net.
TEST(Write, OnlyTheNetHasItsPercentDoubled) {
  const std::map<std::string, int> written = {{"CBDdrawPad", 1}, {"CBDdrawPadstack", 1}, {"CBDsymbolText", 6},
                                              {"CBDtext", 5},    {"CBDline", 3},         {"CBDsurface", 12}};
  const char* const szText = "100%s%n%%";
  const auto setTexts = [szText](auto& o) {
    AllFields(o, [szText](const char* szName, auto& field) {
      if constexpr (std::is_same_v<std::remove_reference_t<decltype(field)>, CString>) {
        const std::string_view name(szName);
        if (name != "m_sKind" && name != "m_sNet" &&
            (name != "m_sType" || !std::is_base_of_v<CBDvertex, std::remove_reference_t<decltype(o)>>))
          field = szText;
      }
    });
  };
  const auto setVertices = [&](CBDvertexArray& vertices) {
    for (CBDvertex* p : vertices) {
      if (auto* pPoint = dynamic_cast<CBDvertexPt*>(p)) {
        setTexts(*pPoint->m_pFillet);
      } else {
        setTexts(dynamic_cast<CBDvertexArc&>(*p));
      }
    }
  };
  EachShapeClass([&]<class T>(const char* szName) {
    T shape;
    Fill(shape);
    setTexts(shape);
    if constexpr (std::is_same_v<T, CBDdrawPadstack>) {
      shape.m_nFrom = shape.m_nTo = 1;
      shape.m_pRefLays->GetAt(0)->m_nLayerNumber = 1;
      setTexts(*shape.m_pRefLays->GetAt(0));
    }
    if constexpr (std::is_same_v<T, CBDsymbolText>) setTexts(*shape.m_pText);
    if constexpr (std::is_same_v<T, CBDline> || std::is_same_v<T, CBDsurface>) setVertices(*shape.m_pVertices);
    if constexpr (std::is_same_v<T, CBDsurface>) {
      shape.m_bMesh = 1;
      setVertices(*shape.m_pOpenShapes->GetAt(0)->m_pVertices);
      shape.m_pProperties->Add(new CLProperty(szText, szText));
    }
    if constexpr (std::is_same_v<T, CBDhole>) shape.m_pShape->m_sNet = "";
    shape.m_sNet = "";
    const std::string before = Describe(shape);
    for (const int nMode : {1, 2}) {
      const std::string s = Print(shape, nMode);
      std::size_t n = 0;
      for (std::size_t at = 0; (at = s.find(szText, at)) != std::string::npos; ++at) ++n;
      const auto it = written.find(szName);
      const bool bEntry = std::is_same_v<T, CBDdrawPadstack> && nMode == 1;
      EXPECT_EQ(n, (it == written.end() ? 0u : static_cast<unsigned>(it->second)) + (bEntry ? 1u : 0u))
          << szName << " mode " << nMode << "\n"
          << s;
    }
    EXPECT_EQ(Describe(shape), before) << szName;
  });
}

TEST(Write, OpenShape) {
  CBDopenShape shape;
  shape.m_dOutlineWidth = 0.25;
  AddPt(*shape.m_pVertices, 1, 2, 0.5);
  const auto own = [&] { return Printed([&](std::FILE* fp) { EXPECT_EQ(shape.nPrint2File(fp), 0); }); };
  EXPECT_EQ(own(), "(openShape\n(outlineWidth 0.25000)\n(vertex\n(pt 1.00000 2.00000)\n)\n)\n");
  EXPECT_EQ(Print(shape, 1), "");
  delete shape.m_pVertices;
  shape.m_pVertices = nullptr;
  EXPECT_EQ(own(), "(openShape\n(outlineWidth 0.25000)\n(vertex\n)\n)\n");
}

TEST(Write, DrawPad) {
  CBDdrawPad pad;
  pad.m_sPadName = "P1";
  pad.m_pt.SetData(1, 2);
  pad.m_pShapes->Add(new CBDcircle);
  pad.m_sNet = "";
  ExpectText(pad, 1, "(pad P1\n(pt 1.00000 2.00000)\n)\n");
  ExpectText(pad, 2, "(fPad P1\n(pt 1.00000 2.00000)\n)\n");
  ExpectText(pad, 3, "(fPad P1\n(pt 1.00000 2.00000)\n)\n");
  pad.m_dAngle = 0.0001;
  ExpectText(pad, 1, "(pad P1\n(pt 1.00000 2.00000)\n(angle 0.00010)\n)\n");
}

CBDdrawPadstack& Padstack(CBDdrawPadstack& padstack) {
  padstack.m_sPadstackName = "V1";
  padstack.m_pt.SetData(1, 2);
  for (int n = 0; n <= 6; ++n) {
    auto* p = new CBDpadstackRefLay;
    p->m_nLayerNumber = n;
    p->m_sStatus = "ON";
    padstack.m_pRefLays->Add(p);
  }
  return padstack;
}

TEST(Write, DrawPadstackInAGeometry) {
  CBDdrawPadstack padstack;
  Padstack(padstack);
  const std::string form = "(fpadstack\n(pt 1.00000 2.00000)\n(padstackGroup default (padstack V1))\n)\n";
  ExpectText(padstack, 2, form);
  ExpectText(padstack, 3, form);
  padstack.m_dAngle = 0.001;
  ExpectText(padstack, 2, form);
  padstack.m_dAngle = -0.0011;
  ExpectText(padstack, 2,
             "(fpadstack\n(pt 1.00000 2.00000)\n(angle -0.00110)\n(padstackGroup default (padstack V1))\n)\n");
}

TEST(Write, DrawPadstackByItself) {
  struct Case {
    int from, to;
    const char* span;
    std::vector<int> entries;
  };
  const Case cases[] = {{2, 5, "(fromTo 2 5)\n", {2, 3, 4, 5}},
                        {0, 0, "(fromTo 0)\n", {}},
                        {0, 3, "(fromTo 3)\n", {3}},
                        {3, 0, "(fromTo 3)\n", {3}},
                        {4, 4, "(fromTo 4)\n", {4}},
                        {5, 2, "(fromTo 5 2)\n", {}},
                        {-1, 1, "(fromTo -1 1)\n", {0, 1}},
                        {9, 12, "(fromTo 9 12)\n", {}}};
  for (const Case& c : cases) {
    CBDdrawPadstack padstack;
    Padstack(padstack);
    padstack.m_nFrom = c.from;
    padstack.m_nTo = c.to;
    std::string wanted = "(padstack V1\n(pt 1.00000 2.00000)\n" + std::string(c.span) + "(conductive\n";
    for (int n : c.entries) wanted += "(layerNumber " + std::to_string(n) + " (status ON))\n";
    ExpectText(padstack, 1, wanted + ")\n)\n");
  }
}

TEST(Write, DrawPadstackParts) {
  CBDdrawPadstack padstack;
  padstack.m_sPadstackName = "V1";
  padstack.m_sNet = "N";
  padstack.m_dAngle = 90;
  padstack.m_sSide = "A";
  padstack.m_nDrillType = 7;
  padstack.m_pShapes->Add(new CBDcircle);
  EXPECT_EQ(Own(padstack, 1),
            "(padstack V1\n(net N)\n(pt 0.00000 0.00000)\n(angle 90.00000)\n(fromTo 0)\n(conductive\n)\n)\n");
  delete padstack.m_pRefLays;
  padstack.m_pRefLays = nullptr;
  EXPECT_EQ(Own(padstack, 1), "(padstack V1\n(net N)\n(pt 0.00000 0.00000)\n(angle 90.00000)\n(fromTo 0)\n)\n");
  CBDpadstackRefLay entry;
  entry.m_nLayerNumber = -4;
  entry.m_sStatus = "X Y";
  entry.m_sLayerName = "unused";
  EXPECT_EQ(Printed([&](std::FILE* fp) { EXPECT_EQ(entry.nPrint2File(fp), 0); }), "(layerNumber -4 (status X Y))\n");
}

const char kInnerRows[] =
    "(font 3)\n(kFont 200)\n(width 1.00000)\n(height 2.00000)\n(space 0.10000)\n(vSpace 0.20000)\n(strokeWidth "
    "0.30000)\n(pt 4.00000 5.00000)\n(textAngle 45.00000)\n(dir LtoR)\n(justify CE_C)\n(flip NONE)\n(reverse OFF)\n";

void SetInnerRows(CBDtext& text) {
  text.m_nFont = 3;
  text.m_dWidth = 1;
  text.m_dHeight = 2;
  text.m_dSpace = 0.1;
  text.m_dVSpace = 0.2;
  text.m_dStrokeWidth = 0.3;
  text.m_pt.SetData(4, 5);
  text.m_dAngle = 45;
  text.m_dTextFrameOffset = 9;
}

TEST(Write, Text) {
  CBDtext text;
  SetInnerRows(text);
  text.m_sString = "say \"hello\"";
  const std::string form =
      "(text\n(font 0)\n(geometry\n(text\n(string \"say \"hello\"\")\n" + std::string(kInnerRows) + ")\n)\n)\n";
  for (int nMode : {1, 2, 3}) ExpectText(text, nMode, form);
}

TEST(Write, SymbolText) {
  CBDsymbolText text;
  SetInnerRows(*text.m_pText);
  text.m_sSymbolType = "REFERENCE";
  text.m_sString = "R1";
  text.m_pText->m_sString = "inner";
  const std::string begin = "(symbolText\n(type REFERENCE)\n(font 0)\n(geometry\n(text\n(string R1)\n";
  for (int nMode : {1, 2, 3}) ExpectText(text, nMode, begin + kInnerRows + ")\n)\n)\n");
  delete text.m_pText;
  text.m_pText = nullptr;
  ExpectText(text, 1, begin + ")\n)\n)\n");
}

// ---- surfaces ----

std::string Outline(int nPoints) {
  std::string s = "(outlineWidth 0.50000)\n(fillWidth 0.25000)\n(fillAngle 45.000000)\n(vertex\n";
  for (int i = 0; i < nPoints; ++i) s += "(pt " + std::to_string(i) + ".00000 1.00000)\n";
  return s + ")\n";
}

struct TestSurface : CBDsurface {
  explicit TestSurface(int nPoints) {
    m_dOutlineWidth = 0.5;
    m_dFillWidth = 0.25;
    m_dFillAngle = 45;
    for (int i = 0; i < nPoints; ++i) AddPt(*m_pVertices, i, 1, 0.5);
  }
};

TEST(WriteSurface, Modes) {
  TestSurface surface(3);
  const std::string inner = "(surface\n" + Outline(3) + ")\n";
  ExpectText(surface, 2, inner);
  ExpectText(surface, 3, inner);
  ExpectText(surface, 1, "(surface\n(geometry\n" + inner + ")\n)\n");
  surface.m_sNet = "GND";
  EXPECT_EQ(Own(surface, 1), "(surface\n(net GND)\n(geometry\n" + inner + ")\n)\n");
  EXPECT_EQ(Own(surface, 2), inner);
  surface.m_sNet = "";
  surface.m_bAlreadySpread = 2;
  std::string spread = inner;
  spread.insert(spread.find("(vertex"), "(alreadySpread YES)\n");
  ExpectText(surface, 2, spread);
}

TEST(WriteSurface, FewPointsWriteNothing) {
  for (int nPoints : {0, 1, 2}) {
    for (int nMode : {1, 2, 3}) {
      TestSurface surface(nPoints);
      ExpectText(surface, nMode, "");
      surface.m_pVertices->Add(nullptr);
      surface.m_pVertices->Add(nullptr);
      ExpectText(surface, nMode, "");
      surface.m_bArea = 1;
      ExpectText(surface, nMode, "(area\n(upperHeight 0.00000)\n(lowerHeight 0.00000)\n(geometry\n)\n)\n");
    }
  }
  TestSurface surface(0);
  delete surface.m_pVertices;
  surface.m_pVertices = nullptr;
  ExpectText(surface, 1, "");
}

TEST(WriteSurface, AnArcAmongFewPointsGoesOn) {
  TestSurface surface(0);
  auto* pArc = new CBDvertexArc;
  pArc->m_dR = 1;
  surface.m_pVertices->Add(pArc);
  ExpectText(surface, 2,
             "(surface\n(outlineWidth 0.50000)\n(fillWidth 0.25000)\n(fillAngle 45.000000)\n(vertex\n(arc CCW\n(r "
             "1.00000)\n(begin\n(pt 0.00000 0.00000)\n)\n(center 0.00000 0.00000)\n(end\n(pt 0.00000 "
             "0.00000)\n)\n)\n)\n)\n");
}

// The text says what a point is: anything else goes on, whether or not it is written then.
TEST(WriteSurface, WhatIsAnArcAmongFewPoints) {
  const std::string begin = "(surface\n(outlineWidth 0.50000)\n(fillWidth 0.25000)\n(fillAngle 45.000000)\n(vertex\n";
  const std::string point = "(pt 0.00000 1.00000)\n";
  const std::string arc =
      "(arc CCW\n(r 0.00000)\n(begin\n(pt 0.00000 0.00000)\n)\n(center 0.00000 0.00000)\n(end\n(pt 0.00000 "
      "0.00000)\n)\n)\n";
  // p and a fit their classes, x is an arc of another word, P an arc that says "PT", A a point that says "ARC".
  for (const auto& [kinds, wanted] : {std::pair<std::string, std::string>{"pa", begin + point + arc + ")\n)\n"},
                                      {"ap", begin + arc + point + ")\n)\n"},
                                      {"x", begin + arc + ")\n)\n"},
                                      {"P", ""},
                                      {"pP", ""},
                                      {"A", begin + ")\n)\n"},
                                      {"pA", begin + point + ")\n)\n"}}) {
    TestSurface surface(0);
    for (const char kind : kinds) {
      if (kind == 'p' || kind == 'A') {
        AddPt(*surface.m_pVertices, 0, 1)->m_sType = kind == 'p' ? "PT" : "ARC";
      } else {
        surface.m_pVertices->Add(new CBDvertexArc);
        surface.m_pVertices->GetLastElement()->m_sType = kind == 'a' ? "ARC" : kind == 'x' ? "any" : "PT";
      }
    }
    ExpectText(surface, 2, wanted);
  }
}

TEST(WriteSurface, CutOuts) {
  TestSurface surface(3);
  surface.m_pOpenShapes->Add(new CBDopenShape);
  surface.m_pOpenShapes->Add(nullptr);
  surface.m_pOpenShapes->Add(new CBDopenShape);
  const std::string hole = "(openShape\n(outlineWidth 0.00000)\n(vertex\n)\n)\n";
  ExpectText(surface, 2, "(surface\n" + Outline(3) + hole + hole + ")\n");
  delete surface.m_pOpenShapes;
  surface.m_pOpenShapes = nullptr;
  ExpectText(surface, 2, "(surface\n" + Outline(3) + ")\n");
}

TEST(WriteSurface, Area) {
  TestSurface surface(3);
  surface.m_bArea = 1;
  surface.m_dUpperHeight = 2;
  surface.m_dLowerHeight = 1;
  surface.m_sNet = "";
  for (int nMode : {1, 2, 3}) {
    ExpectText(surface, nMode,
               "(area\n(upperHeight 2.00000)\n(lowerHeight 1.00000)\n(geometry\n(surface\n" + Outline(3) + ")\n)\n)\n");
  }
  // Any other value is neither an area nor a surface by itself.
  surface.m_bArea = 2;
  ExpectText(surface, 1, "(surface\n" + Outline(3) + ")\n");
  // The net is a surface's by itself, not an area's.
  surface.m_sNet = "N";
  EXPECT_EQ(Own(surface, 1), "(surface\n" + Outline(3) + ")\n");
  surface.m_bArea = 1;
  EXPECT_EQ(Own(surface, 1).find("(net"), std::string::npos);
}

TEST(WriteSurface, OnlyAMeshOfOneIsAMeshPlane) {
  TestSurface surface(3);
  surface.m_bMesh = 2;
  ExpectText(surface, 1, "(surface\n(geometry\n(surface\n" + Outline(3) + ")\n)\n)\n");
  TestSurface few(2);
  few.m_bMesh = 2;
  ExpectText(few, 1, "");
}

TEST(WriteSurface, MeshPlane) {
  TestSurface surface(0);
  Fill(static_cast<CBDsurface&>(surface));
  surface.m_pVertices->DeleteAll();
  surface.m_pOpenShapes->DeleteAll();
  surface.m_pProperties->DeleteAll();
  surface.m_dOutlineWidth = 0.5;
  surface.m_dFillWidth = 0.25;
  surface.m_dFillAngle = 45;
  surface.m_bArea = surface.m_bAlreadySpread = 0;
  surface.m_bMesh = 1;
  surface.m_sNet = "";
  // Also without vertices, and in the same way in every mode.
  const std::string begin = "(meshplane\n(geometry\n(meshplane\n" + Outline(0);
  for (int nMode : {1, 2, 3}) ExpectText(surface, nMode, begin + ")\n)\n)\n");
  const auto add = [&surface](const char* szName, const char* szValue) {
    surface.m_pProperties->Add(new CLProperty(szName, szValue));
  };
  add("meshPitch", "1.0");
  add("meshBasePoint", "(pt 1 2)");
  add("meshRotatePoint", "(pt 3 4)");
  surface.m_pProperties->Add(nullptr);
  add("meshFlags", "1 0 1");
  add("", "");
  const std::string properties =
      "(meshPitch 1.0)\n(meshBasePoint\n(pt 1 2)\n)\n(meshRotatePoint\n(pt 3 4)\n)\n(meshFlags\n1 0 1\n)\n( )\n";
  ExpectText(surface, 1, begin + properties + ")\n)\n)\n");
  surface.m_bArea = 1;
  surface.m_dUpperHeight = surface.m_dLowerHeight = 0;
  const std::string area = "(area\n(upperHeight 0.00000)\n(lowerHeight 0.00000)\n(geometry\n";
  for (int nMode : {1, 2, 3}) ExpectText(surface, nMode, area + begin + properties + ")\n)\n)\n)\n)\n");
  // An area that is a mesh plane has its net.
  surface.m_sNet = "N";
  std::string named = area + begin + properties + ")\n)\n)\n)\n)\n";
  named.insert(named.find("(meshplane\n") + 11, "(net N)\n");
  EXPECT_EQ(Own(surface, 1), named);
  surface.m_sNet = "";
  surface.m_bArea = 0;
  delete surface.m_pProperties;
  surface.m_pProperties = nullptr;
  surface.m_sNet = "N";
  EXPECT_EQ(Own(surface, 2), "(meshplane\n(net N)\n(geometry\n(meshplane\n" + Outline(0) + ")\n)\n)\n");
}

TEST(WriteSurface, TheOrderInAMeshPlane) {
  TestSurface surface(1);
  surface.m_bMesh = 1;
  surface.m_bAlreadySpread = 1;
  surface.m_pOpenShapes->Add(new CBDopenShape);
  surface.m_pProperties->Add(new CLProperty("meshPitch", "1.0"));
  ExpectText(surface, 2,
             "(meshplane\n(geometry\n(meshplane\n(outlineWidth 0.50000)\n(fillWidth 0.25000)\n(fillAngle "
             "45.000000)\n(alreadySpread YES)\n(vertex\n(pt 0.00000 1.00000)\n)\n(openShape\n(outlineWidth "
             "0.00000)\n(vertex\n)\n)\n(meshPitch 1.0)\n)\n)\n)\n");
}

// ---- vertices ----

std::string PrintVertex(CBDvertex& vertex, int nForm, int nFlag) {
  return Printed([&](std::FILE* fp) { EXPECT_EQ(vertex.nPrint2File(fp, nForm, nFlag), 0); });
}

struct PointCase {
  double width, tarc, filletWidth;
  const char* type;
  const char* dir;
  int form, flag;
  const char* wanted;
};

TEST(WriteVertex, Points) {
  const PointCase cases[] = {
      {0, 0, 0, "", "", 1, 0, "(pt 1.00000 2.00000)\n"},
      {0.001, 0, 0, "", "", 1, 0, "(pt 1.00000 2.00000)\n"},
      {0.0011, 0, 0, "", "", 1, 0, "(pt 1.00000 2.00000\n(width 0.00110)\n)\n"},
      {-0.5, 0, 0, "", "", 1, 1, "(pt 1.00000 2.00000\n(width -0.50000)\n)\n"},
      {0.5, 0, 0, "", "", 2, 0, "(pt 1.00000 2.00000)\n"},
      {0.5, -1, 0, "", "", 2, 0, "(pt 1.00000 2.00000\n(tarc ON (r -1.00000))\n)\n"},
      {0.5, 2, 0, "", "", 1, 0, "(pt 1.00000 2.00000\n(width 0.50000)\n(tarc ON (r 2.00000))\n)\n"},
      {0, 0, 0, "T", "D", 1, 0, "(pt 1.00000 2.00000)\n"},
      {0, 0, 3, "", "", 1, 0,
       "(pt 1.00000 2.00000\n(fillet\n(filletWidth 3.00000)\n(length 4.00000)\n(width 5.00000)\n)\n)\n"},
      {0, 0, -3, "T", "", 2, 0,
       "(pt 1.00000 2.00000\n(fillet (type T)\n(filletWidth -3.00000)\n(length 4.00000)\n(width 5.00000)\n)\n)\n"},
      {0, 0, 3, "", "D", 2, 0,
       "(pt 1.00000 2.00000\n(fillet\n(dir D)\n(filletWidth 3.00000)\n(length 4.00000)\n(width 5.00000)\n)\n)\n"},
      {0, 0, 3, "T", "D", 1, 1,
       "(pt 1.00000 2.00000\n(fillet (type T)\n(filletWidth 3.00000)\n(length 4.00000)\n(width 5.00000)\n)\n)\n"},
      {0.5, 1, 3, "T", "D", 1, 0,
       "(pt 1.00000 2.00000\n(width 0.50000)\n(tarc ON (r 1.00000))\n(fillet (type T)\n(dir D)\n(filletWidth "
       "3.00000)\n(length 4.00000)\n(width 5.00000)\n)\n)\n"},
  };
  for (const PointCase& c : cases) {
    CBDvertexPt point;
    point.m_pt.SetData(1, 2);
    point.m_dWidth = c.width;
    point.m_dTarc = c.tarc;
    point.m_pFillet->m_dFilletWidth = c.filletWidth;
    point.m_pFillet->m_dLength = 4;
    point.m_pFillet->m_dWidth = 5;
    point.m_pFillet->m_sType = c.type;
    point.m_pFillet->m_sDir = c.dir;
    EXPECT_EQ(PrintVertex(point, c.form, c.flag), c.wanted);
    EXPECT_EQ(Printed([&](std::FILE* fp) { EXPECT_EQ(point.nPrint2File(fp, c.form, c.flag), 0); }), c.wanted);
  }
  CBDvertexPt bare;
  delete bare.m_pFillet;
  bare.m_pFillet = nullptr;
  EXPECT_EQ(PrintVertex(bare, 1, 0), "(pt 0.00000 0.00000)\n");
}

TEST(WriteVertex, Arcs) {
  CBDvertexArc arc;
  arc.m_dR = 3;
  arc.m_ptBegin.SetData(1, 2);
  arc.m_ptCenter.SetData(5, 6);
  arc.m_ptEnd.SetData(7, 8);
  arc.m_dEndWidth = 0.75;
  const std::string plain =
      "(arc CCW\n(r 3.00000)\n(begin\n(pt 1.00000 2.00000)\n)\n(center 5.00000 6.00000)\n(end\n(pt 7.00000 "
      "8.00000)\n)\n)\n";
  const auto wide = [](const char* szWidth) {
    const std::string width = std::string("\n(width ") + szWidth + ")\n)\n";
    return "(arc CCW\n(r 3.00000)\n(begin\n(pt 1.00000 2.00000" + width + ")\n(center 5.00000 6.00000)\n(end\n(pt " +
           "7.00000 8.00000" + width + ")\n)\n";
  };
  EXPECT_EQ(PrintVertex(arc, 1, 0), plain);
  arc.m_dBeginWidth = -0.0001;
  EXPECT_EQ(PrintVertex(arc, 1, 1), wide("-0.00010"));
  EXPECT_EQ(PrintVertex(arc, 2, 0), plain);
  arc.m_dBeginWidth = 0;
  arc.m_dWidth = 0.5;
  EXPECT_EQ(PrintVertex(arc, 1, 0), wide("0.50000"));
  arc.m_dBeginWidth = 0.25;
  EXPECT_EQ(Printed([&](std::FILE* fp) { EXPECT_EQ(arc.nPrint2File(fp, 1), 0); }), wide("0.25000"));
}

TEST(WriteVertex, OneThatDoesNotFitItsClassWritesNothing) {
  CBDvertexPt point;
  CBDvertexArc arc;
  CBDvertex plain;
  EXPECT_EQ(PrintVertex(plain, 1, 0), "");
  plain.m_sType = "PT";
  EXPECT_EQ(PrintVertex(plain, 1, 0), "");
  point.m_sType = "ARC";
  EXPECT_EQ(PrintVertex(point, 1, 0), "");
  arc.m_sType = "PT";
  EXPECT_EQ(PrintVertex(arc, 1, 0), "");
  // An arc of any other word is written as one.
  arc.m_dBeginWidth = 0.5;
  for (const int nForm : {1, 2}) {
    arc.m_sType = "ARC";
    const std::string text = PrintVertex(arc, nForm, 0);
    arc.m_sType = "anything";
    EXPECT_EQ(PrintVertex(arc, nForm, 0), text);
  }
}

// The ends of a line are the first and the last vertex, not the first and the last point.
TEST(WriteVertex, AnArcAtItsEndIsALinesEnd) {
  const auto add = [](CBDline& line, const char* szDir) {
    if (szDir == nullptr) {
      line.m_pVertices->Add(new CBDvertexArc);
      return;
    }
    CBDvertexPt* p = AddPt(*line.m_pVertices, 0, 0);
    p->m_pFillet->m_dFilletWidth = 1;
    p->m_pFillet->m_sDir = szDir;
  };
  CBDline inside, ends;
  for (const char* sz : {static_cast<const char*>(nullptr), "D0", static_cast<const char*>(nullptr)}) add(inside, sz);
  for (const char* sz : {"D0", static_cast<const char*>(nullptr), "D1"}) add(ends, sz);
  EXPECT_NE(Print(inside, 2).find("(dir D0)"), std::string::npos);
  EXPECT_EQ(Print(ends, 2).find("(dir"), std::string::npos);
}

TEST(WriteVertex, ALineKeepsTheDirectionOfFilletsBetweenItsEnds) {
  CBDline line;
  for (int i = 0; i < 4; ++i) {
    CBDvertexPt* p = AddPt(*line.m_pVertices, i, 0);
    p->m_pFillet->m_dFilletWidth = 1;
    p->m_pFillet->m_sDir = CString("D" + std::to_string(i));
  }
  line.m_pVertices->InsertAt(0, static_cast<CBDvertex*>(nullptr));
  line.m_pVertices->Add(nullptr);
  const std::string s = Print(line, 2);
  EXPECT_EQ(s.find("D0"), std::string::npos);
  EXPECT_NE(s.find("(dir D1)"), std::string::npos);
  EXPECT_NE(s.find("(dir D2)"), std::string::npos);
  EXPECT_EQ(s.find("D3"), std::string::npos);
  CBDline one;
  AddPt(*one.m_pVertices, 0, 0)->m_pFillet->m_dFilletWidth = 1;
  static_cast<CBDvertexPt*>(one.m_pVertices->GetAt(0))->m_pFillet->m_sDir = "D";
  EXPECT_EQ(Print(one, 2).find("D"), std::string::npos);
}

TEST(WriteVertex, AnOutlineKeepsTheDirectionOfEveryFillet) {
  TestSurface surface(3);
  for (CBDvertex* p : *surface.m_pVertices) {
    static_cast<CBDvertexPt*>(p)->m_pFillet->m_dFilletWidth = 1;
    static_cast<CBDvertexPt*>(p)->m_pFillet->m_sDir = "D";
  }
  const std::string s = Print(surface, 2);
  std::size_t n = 0;
  for (std::size_t at = 0; (at = s.find("(dir D)", at)) != std::string::npos; ++at) ++n;
  EXPECT_EQ(n, 3u);
}

// ---- header lines ----

TEST(WriteHeader, EachTagHasItsLine) {
  struct Case {
    const char* tag;
    const char* text;
  };
  const Case cases[] = {{"CIRCLE", "(circle\n"},
                        {"RECTANGLE", "(rectangle\n"},
                        {"ROUNDTHERMAL", "(roundThermal\n"},
                        {"SQUAREHOLE", "(squareHole\n"},
                        {"OVAL", "(oval\n"},
                        {"LINE", "(line\n"},
                        {"TEXT", "(text\n"},
                        {"AREA", "(area\n"},
                        {"DRAWPAD", "(pad\n"},
                        {"DRAWPADSTACK", "(padstack\n"},
                        {"DONUT", "(donut\n"},
                        {"SQUARETHERMAL", "(squareThermal\n"},
                        {"SYMBOLTEXT", "(symbolText\n"},
                        {"HOLE", "(hole\n"},
                        {"OVALHOLE", "(ovalHole\n"},
                        {"DRAWSUBBOARD", "subBoard\n"},
                        {"DELETE", "(delete\n"},
                        {"SURFACE", ""},  // on an object that is none
                        {"OBLONG", ""},
                        {"OPENSHAPE", ""},
                        {"NONE", ""},
                        {"", ""},
                        {"circle", ""}};
  CBDdrawObj shape;
  for (const Case& c : cases) {
    shape.m_sKind = c.tag;
    shape.m_sNet = "A%";
    EXPECT_EQ(Printed([&](std::FILE* fp) { EXPECT_EQ(shape.nPrint2Header2File(fp), 0); }), c.text) << c.tag;
    EXPECT_EQ(shape.m_sNet, "A%");
  }
}

TEST(WriteHeader, ASurfaceWithoutOutlineWidthIsAnArea) {
  CBDsurface surface;
  const auto header = [&] { return Printed([&](std::FILE* fp) { surface.nPrint2Header2File(fp); }); };
  EXPECT_EQ(header(), "(area\n(upperHeight 100000)\n(lowerHeight 0)\n");
  surface.m_dOutlineWidth = -0.00099;
  EXPECT_EQ(header(), "(area\n(upperHeight 100000)\n(lowerHeight 0)\n");
  surface.m_dOutlineWidth = 0.001;
  EXPECT_EQ(header(), "(surface\n");
  surface.m_dOutlineWidth = -0.001;
  EXPECT_EQ(header(), "(surface\n");
}

// ---- numbers, streams ----

TEST(Write, NumbersAreThoseOfTheCLibrary) {
  const double values[] = {0.0,
                           -0.0,
                           0.000005,
                           0.000015,
                           0.125,
                           1e22,
                           1e300,
                           -1e-300,
                           2.5e-6,
                           12345.678905,
                           1.234565,
                           1.2345650000000001,
                           99999.999995,
                           5e-324,
                           std::numeric_limits<double>::max(),
                           std::numeric_limits<double>::infinity(),
                           -std::numeric_limits<double>::infinity(),
                           std::numeric_limits<double>::quiet_NaN()};
  for (const double d : values) {
    CBDdonut donut;
    donut.m_dOut = d;
    donut.m_pt.SetData(d, -d);
    char sz[4096];
    std::snprintf(sz, sizeof sz, "(donut\n(out %.5f)\n(in 0.00000)\n(pt %.5f %.5f)\n)\n", d, d, -d);
    ExpectText(donut, 1, sz);
    CBDrectangle rectangle;
    rectangle.m_dAngle = d;
    std::snprintf(sz, sizeof sz, "(rAngle %f)\n", d);
    EXPECT_NE(Own(rectangle, 2).find(sz), std::string::npos) << d;
    CBDovalHole hole;
    hole.m_dWidth = d;
    std::snprintf(sz, sizeof sz, "(width %g)\n", d);
    EXPECT_NE(Own(hole, 2).find(sz), std::string::npos) << d;
  }
}

// What a file gives with at most five decimals, or in database units, comes back to the last bit, with a ".".
TEST(Write, LengthsOfAFileComeBackUnchanged) {
  std::mt19937 random(1);
  std::vector<int> units{
      0, 1, -1, 99999, 100000, 100001, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()};
  while (units.size() < 20000) units.push_back(static_cast<int>(random()) >> random() % 32);
  for (const int n : units) {
    const long long nWhole = n < 0 ? -static_cast<long long>(n) : n;
    char sz[64];
    std::snprintf(sz, sizeof sz, "%s%lld.%05lld", n < 0 ? "-" : "", nWhole / 100000, nWhole % 100000);
    const auto donut = Read<CBDdonut>("(donut (out " + std::to_string(n) + ") (in " + sz + "))");
    EXPECT_EQ(donut->m_dOut, donut->m_dIn) << n;
    const std::string text = Print(*donut, 1);
    EXPECT_EQ(text, std::string("(donut\n(out ") + sz + ")\n(in " + sz + ")\n(pt 0.00000 0.00000)\n)\n");
    EXPECT_EQ(Read<CBDdonut>(text)->m_dOut, donut->m_dOut) << n;
  }
}

TEST(Write, TextsEndAtTheirFirstNul) {
  CBDdrawPad pad;
  pad.m_sPadName = CString("P\0Q", 3);
  ExpectText(pad, 1, "(pad P\n(pt 0.00000 0.00000)\n)\n");
}

TEST(Write, ANullStreamRaisesAndChangesNothing) {
  CBDline line;
  line.m_sNet = "A";
  CBDdrawObj& shape = line;
  EXPECT_THROW(shape.nPrint2File(nullptr, 1), CInvalidArgException);
  EXPECT_THROW(shape.nPrint2Header2File(nullptr), CInvalidArgException);
  EXPECT_EQ(line.m_sNet, "A");
  const auto raises = [](auto& o, const char* szName) {
    if constexpr (requires { o.nPrint2File(nullptr, 1, 0); }) {
      EXPECT_THROW(o.nPrint2File(nullptr, 1, 0), CInvalidArgException) << szName;
    } else if constexpr (requires { o.nPrint2File(nullptr, 1); }) {
      EXPECT_THROW(o.nPrint2File(nullptr, 1), CInvalidArgException) << szName;
    } else if constexpr (requires { o.nPrint2File(nullptr); }) {
      EXPECT_THROW(o.nPrint2File(nullptr), CInvalidArgException) << szName;
    } else {
      EXPECT_EQ(std::string_view(szName), "CBDfillet");  // which is written by its point
    }
  };
  const auto check = [&raises]<class T>(const char* szName) {
    T object;
    raises(object, szName);
    if constexpr (std::is_base_of_v<CBDvertex, T>) raises(static_cast<CBDvertex&>(object), "CBDvertex");
  };
  EachShapeClass(check);
  EachPartClass(check);
  check.template operator()<CBDvertex>("CBDvertex");  // which fits no kind
}

TEST(Write, AFailingStreamKeepsItsErrorAndTheResultIsZero) {
  std::FILE* fp = std::fopen("/dev/full", "w");
  ASSERT_NE(fp, nullptr);
  std::setvbuf(fp, nullptr, _IONBF, 0);
  CBDcircle circle;
  CBDdrawObj& shape = circle;
  EXPECT_EQ(shape.nPrint2File(fp, 1), 0);
  EXPECT_NE(std::ferror(fp), 0);
  std::fclose(fp);
}

TEST(Write, NothingIsHeldBack) {
  char* p = nullptr;
  std::size_t n = 0;
  std::FILE* fp = open_memstream(&p, &n);
  CBDcircle circle;
  circle.nPrint2File(fp, 2);
  std::fprintf(fp, "next\n");
  std::fclose(fp);
  EXPECT_EQ(std::string(p, n), "(circle 0.00000\n(pt 0.00000 0.00000)\n)\nnext\n");
  std::free(p);
}

}  // namespace
