#include "board/CBDcompGroup.h"

#include "board/BoardForms.h"
#include "drawobj/CBDdelete.h"
#include "drawobj/CBDline.h"
#include "technology/RecordTestSupport.h"

using laminate::BoardContext;
using laminate::ReadCompGroup;

namespace {

std::string Read(const CECadClsLvl& node) {
  BoardContext context{nullptr};
  const auto p = ReadCompGroup(node, context);
  return Str(p->m_sName) + " [" + Str(p->m_aList) + "] " + Str(p->m_sSide) + " " + std::to_string(p->m_nPen) + " " +
         Str(*p->m_pDrawObjArray);
}

std::string Layout(const std::string& layers) { return "(compGroup G (layout " + layers + "))"; }

TEST(CompGroupReading, Rows) {
  CheckReading(
      {
          {"all", "(compGroup G (list R1 R2) (side TOP) (pen 7) (layout (layer (conductive 1) (circle 1.0))))",
           "G ['R1','R2'] TOP 7 CIRCLE@conductive/1/1"},
          {"nothing", "(compGroup G)", "G []  0 "},
          {"lists add up", "(compGroup G (list R1) (list) (list R2 R1))", "G ['R1','R2','R1']  0 "},
          {"repeated", "(compGroup G (side A) (side B) (pen 1) (pen 2))", "G [] B 2 "},
          {"unknown", "(compGroup G (foo R1) (List R1))", "G []  0 "},
          {"only layers", Layout("(foo (circle 1.0)) (layer (oval))"), "G []  0 OVAL@//0"},
          {"no layer", Layout("(layer (circle 1.0))"), "G []  0 CIRCLE@//0"},
          {"draw layers are not dropped", Layout("(layer (drawOf 1) (circle 1.0))"), "G []  0 CIRCLE@//0"},
          {"refer", Layout("(layer (nonConductive S) (refer (circle 1.0) (oval)) (oval))"),
           "G []  0 CIRCLE@nonConductive/S/0r OVAL@nonConductive/S/0"},
          {"empty refer", Layout("(layer (refer))"), "raises \"refer\" has no form in it"},
          {"refer to no shape", Layout("(layer (refer (basePoint)) (oval))"), "G []  0 OVAL@//0"},
          {"each layer by itself",
           Layout("(layer (conductive 1) (refer (circle 1.0))) (layer (nonConductive S) (oval)) (layer (oval))"),
           "G []  0 CIRCLE@conductive/1/1r OVAL@nonConductive/S/0 OVAL@//0"},
          {"headers wherever they stand",
           Layout("(layer (oval) (conductive 1) (systemLayer) (nonConductive S) (conductive 2))"),
           "G []  0 OVAL@systemLayer//0"},
          {"nothing else is passed over",
           Layout("(layer (info x) (infoOf 1) (message y) (ruleArea) (teapot) (net N) (oval))"),
           "G []  0 OVAL@//0",
           {"New Draw Type : info", "New Draw Type : infoOf", "New Draw Type : message", "New Draw Type : teapot",
            "New Draw Type : net"}},
          {"nor in a refer",
           Layout("(layer (refer (net N) (oval)) (oval))"),
           "G []  0 OVAL@//0",
           {"New Draw Type : net"}},
          {"a written system layer", Layout("(layer (systemLayer (type H)) (oval))"), "G []  0 OVAL@systemLayer/H/0"},
          {"a written layer of names", Layout("(layer (nonConductive (type S)) (oval))"),
           "raises \"nonConductive\" has no value 1"},
          {"numbers", "(compGroup G (pen x))", "G []  0 "},
          {"fractional", "(compGroup G (pen 2.9))", "G []  2 "},
          {"below 0", "(compGroup G (pen -3))", "G []  -3 "},
          {"only values are references", "(compGroup G (list \"R 1\" (R2) R3) (side A B))", "G ['R 1','R3'] A 0 "},
          {"two layouts", "(compGroup G (layout (layer (circle 1.0))) (layout (layer (oval))))",
           "G []  0 CIRCLE@//0 OVAL@//0"},
          {"no name", "(compGroup)", "raises \"compGroup\" has no value 1"},
          {"no side", "(compGroup G (side))", "raises \"side\" has no value 1"},
          {"no pen", "(compGroup G (pen))", "raises \"pen\" has no value 1"},
          {"header without value", Layout("(layer (conductive (type 3)))"), "raises \"conductive\" has no value 1"},
      },
      Read);
}

TEST(CompGroupReading, ShapesOfABoardAssemblyGoToTheBoard) {
  Tree tree(Layout("(layer (boardAssembly (geometry (circle 1.0))))"));
  CBDdrawObjArray board;
  BoardContext context{&board};
  EXPECT_EQ("DRAWSUBBOARD@//0", Str(*ReadCompGroup(tree.Form(), context)->m_pDrawObjArray));
  EXPECT_EQ("CIRCLE@//0", Str(board));
  BoardContext nowhere{nullptr};
  EXPECT_NE("", RaisedBy([&] { ReadCompGroup(tree.Form(), nowhere); }));
}

CBDdrawObj* Shape(const char* szType, const char* szName) {
  auto* p = new CBDdelete;
  p->m_sLayerType = szType;
  p->m_sLayerName = szName;
  return p;
}

std::string Text(const std::string& layout, const std::string& list = "") {
  return "(compGroup G 1\n(list\n" + list + ")\n(side BOTH_SIDES)\n(pen 0)\n(layout\n" + layout + ")\n)\n";
}

TEST(CompGroupWriting, ConstantsTakeThePlaceOfWhatWasRead) {
  CBDcompGroup group;
  group.m_sName = "G 1";
  group.m_sSide = "TOP";
  group.m_nPen = 7;
  EXPECT_EQ(Text(""), Printed(group));
  group.m_aList.Add("R1");
  group.m_aList.Add("R(2) %d");
  EXPECT_EQ(Text("", "R1\nR(2) %d\n"), Printed(group));
  EXPECT_NE("", RaisedBy([&] { group.nPrint2File(nullptr); }));
}

TEST(CompGroupWriting, LayerBlocks) {
  CBDcompGroup group;
  group.m_sName = "G 1";
  const std::string d = "(delete\n)\n";
  const auto text = [&](std::vector<std::pair<const char*, const char*>> layers) {
    group.m_pDrawObjArray->DeleteAll();
    for (const auto& [type, name] : layers) group.m_pDrawObjArray->Add(type == nullptr ? nullptr : Shape(type, name));
    return Printed(group);
  };
  EXPECT_EQ(Text("(layer (conductive (type 3))\n" + d + d + ")\n(layer (nonConductive (type A(1) B))\n" + d + ")\n"),
            text({{"conductive", "3"}, {"nonConductive", "3"}, {"nonConductive", "A(1) B"}}));
  // Without a layer name a shape is left out; as the last one it leaves the block open.
  EXPECT_EQ(Text(""), text({{"conductive", ""}}));
  EXPECT_EQ(Text("(layer ( (type 3))\n" + d + d + ")\n"), text({{"x", ""}, {"", "3"}, {"", ""}, {"", "3"}}));
  EXPECT_EQ(Text("(layer ( (type 3))\n" + d), text({{"", "3"}, {"", ""}}));
  EXPECT_EQ(Text("(layer ( (type 3))\n" + d + ")\n"), text({{nullptr, ""}, {"", "3"}, {nullptr, ""}}));
  EXPECT_EQ(Text("(layer ( (type 3))\n" + d), text({{"", "3"}, {"", ""}, {nullptr, ""}}));
  // Blocks are runs: nothing is gathered.
  EXPECT_EQ(Text("(layer (t (type A))\n" + d + ")\n(layer (t (type B))\n" + d + ")\n(layer (t (type A))\n" + d + ")\n"),
            text({{"t", "A"}, {"t", "B"}, {"t", "A"}}));
  // A shape that writes nothing opens its block all the same.
  text({});
  group.m_pDrawObjArray->Add(new CBDdrawObj);
  group.m_pDrawObjArray->GetAt(0)->m_sLayerName = "3";
  EXPECT_EQ(Text("(layer ( (type 3))\n)\n"), Printed(group));
  // The layer's name is not changed.
  text({{"nonConductive", "A(1) B"}});
  EXPECT_EQ("A(1) B", group.m_pDrawObjArray->GetAt(0)->m_sLayerName);
}

TEST(CompGroupWriting, ShapesStandByThemselves) {
  CBDcompGroup group;
  group.m_sName = "G 1";
  auto* pLine = new CBDline;
  pLine->m_sLayerName = "3";
  pLine->m_sNet = "N";
  group.m_pDrawObjArray->Add(pLine);
  EXPECT_EQ(Text("(layer ( (type 3))\n(line\n(net \"N\")\n(geometry\n(line\n(vertex\n)\n)\n)\n)\n)\n"), Printed(group));
  EXPECT_EQ("\"N\"", pLine->m_sNet);
}

TEST(CompGroupWriting, ASystemLayerComesBack) {
  Tree tree(
      "(compGroup G (list R1 R2) (side TOP) (pen 7) (layout (layer (systemLayer (type H)) (oval) (line (geometry (line "
      "(vertex (pt 0 0))))))))");
  BoardContext context{nullptr};
  const auto pGroup = ReadCompGroup(tree.Form(), context);
  const std::string text = Printed(*pGroup);
  EXPECT_TRUE(
      text.starts_with("(compGroup G\n(list\nR1\nR2\n)\n(side BOTH_SIDES)\n(pen 0)\n(layout\n(layer (systemLayer (type "
                       "H))\n"))
      << text;
  Tree written(text);
  EXPECT_EQ("G ['R1','R2'] BOTH_SIDES 0 OVAL@systemLayer/H/0 LINE@systemLayer/H/0", Read(written.Form()));
  EXPECT_EQ(text, Printed(*pGroup));
  EXPECT_EQ(text, Printed(*ReadCompGroup(written.Form(), context)));
}

TEST(CompGroupWriting, WithoutShapes) {
  CBDcompGroup group;
  group.m_sName = "G 1";
  delete std::exchange(group.m_pDrawObjArray, nullptr);
  EXPECT_EQ(Text(""), Printed(group));
}

TEST(CompGroup, KnowsItsReferences) {
  CBDcompGroup group;
  EXPECT_EQ(0, group.bIsExistReference(""));
  group.m_aList.Add("R1");
  group.m_aList.Add("R2");
  EXPECT_EQ(1, group.bIsExistReference("R2"));
  EXPECT_EQ(0, group.bIsExistReference("r2"));
  EXPECT_EQ(0, group.bIsExistReference("R"));
}

TEST(CompGroup, StartsEmptyWithItsFieldsInOrder) {
  static_assert(!std::is_copy_constructible_v<CBDcompGroup> && !std::is_copy_assignable_v<CBDcompGroup>);
  static_assert(std::has_virtual_destructor_v<CBDcompGroup>);
  const CBDcompGroup group;
  EXPECT_EQ("", group.m_sName);
  EXPECT_TRUE(group.m_aList.IsEmpty());
  EXPECT_EQ("", group.m_sSide);
  EXPECT_EQ(0, group.m_nPen);
  ASSERT_NE(nullptr, group.m_pDrawObjArray);
  EXPECT_TRUE(group.m_pDrawObjArray->IsEmpty());
  ExpectInOrder({&group.m_sName, &group.m_aList, &group.m_sSide, &group.m_nPen, &group.m_pDrawObjArray});
}

}  // namespace
