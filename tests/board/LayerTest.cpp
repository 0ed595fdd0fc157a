#include "board/CBDboardContainer.h"
#include "board/LayerForms.h"
#include "board/LayerTranslator.h"
#include "technology/RecordTestSupport.h"

namespace {

TEST(LayerHeader, TheFirstInAFixedOrderDecides) {
  CheckReading(
      {
          {"system", "(layer (systemLayer (type HOLE)))", "systemLayer/HOLE/0"},
          {"system without type", "(layer (systemLayer))", "systemLayer//0"},
          {"system with an empty type form", "(layer (systemLayer (type)))", "raises \"type\" has no value 1"},
          {"system's own value does not count", "(layer (systemLayer X))", "systemLayer//0"},
          {"conductive", "(layer (conductive 12))", "conductive/12/12"},
          {"conductive name is the text", "(layer (conductive \"2 Sig\"))", "conductive/2 Sig/2"},
          {"a number as it is written", "(layer (conductive 07))", "conductive/07/7"},
          {"number 0", "(layer (conductive 0))", "conductive/0/0"},
          {"below 0", "(layer (conductive -3))", "conductive/-3/-3"},
          {"fractional", "(layer (conductive 2.9))", "conductive/2.9/2"},
          {"cut to 32 bits", "(layer (conductive 4294967297))", "conductive/4294967297/1"},
          {"the first value", "(layer (conductive 1 2))", "conductive/1/1"},
          {"the first type", "(layer (systemLayer (foo) (type A B) (type C)))", "systemLayer/A/0"},
          {"empty names", "(layer (nonConductive \"\"))", "nonConductive//0"},
          {"conductive of garbage", "(layer (conductive x))", "conductive/x/0"},
          {"conductive without number", "(layer (conductive))", "raises \"conductive\" has no value 1"},
          {"non-conductive", "(layer (nonConductive SILK))", "nonConductive/SILK/0"},
          {"non-conductive without name", "(layer (nonConductive))", "raises \"nonConductive\" has no value 1"},
          {"none", "(layer (foo))", "//0"},
          {"system before all", "(layer (nonConductive A) (conductive 1) (systemLayer (type S)))", "systemLayer/S/0"},
          {"conductive before non-conductive", "(layer (nonConductive A) (conductive 1))", "conductive/1/1"},
          {"the first of a name", "(layer (conductive 1) (conductive 2))", "conductive/1/1"},
      },
      [](const CECadClsLvl& node) {
        const laminate::ShapeContext context = laminate::ResolveLayer(node, nullptr);
        EXPECT_EQ(0, context.bRefer);
        return Str(context.sLayerType) + "/" + Str(context.sLayerName) + "/" + std::to_string(context.nLayerNumber);
      });
}

std::string Read(const CECadClsLvl& node) {
  CBDboardContainer board;
  EXPECT_EQ(0, laminate::ReadBoardLayer(&node, board));
  return Str(*board.m_pDrawObjArray);
}

TEST(LayerReading, Rows) {
  CheckReading(
      {
          {"shapes", "(layer (conductive 1) (circle 1.0) (oval))", "CIRCLE@conductive/1/1 OVAL@conductive/1/1"},
          {"no layer", "(layer (circle 1.0))", "CIRCLE@//0"},
          {"the header may stand behind", "(layer (circle 1.0) (nonConductive A))", "CIRCLE@nonConductive/A/0"},
          {"draw layers are dropped", "(layer (drawOf 1) (circle) (refer))", ""},
          {"info layers too", "(layer (circle) (infoOf (conductive 1)))", ""},
          {"unless they name themselves", "(layer (conductive 1) (drawOf 2) (circle 1.0))", "CIRCLE@conductive/1/1"},
          {"remarks", "(layer (conductive 1) (ruleArea (circle)) (message x) (info) (circle 1.0))",
           "CIRCLE@conductive/1/1"},
          {"headers that do not count",
           "(layer (systemLayer (type H)) (conductive 1) (nonConductive A) (ruleArea (circle)) (message x) (info) "
           "(circle "
           "1.0))",
           "CIRCLE@systemLayer/H/0"},
          {"info and draw layers that name themselves by another",
           "(layer (infoOf 1) (nonConductive A) (circle 1.0))",
           "CIRCLE@nonConductive/A/0",
           {"New Draw Type : infoOf"}},
          {"and by a system layer", "(layer (drawOf 1) (systemLayer) (circle 1.0))", "CIRCLE@systemLayer//0"},
          {"a header raises before it is dropped", "(layer (drawOf 1) (conductive))",
           "raises \"conductive\" has no value 1"},
          {"nor may what makes it so lack a value", "(layer (infoOf) (drawOf))", ""},
          {"not even what would go to the board", "(layer (drawOf 1) (boardAssembly (geometry (circle 1.0))))", ""},
          {"two refers", "(layer (refer (circle 1.0)) (refer (oval)))", "CIRCLE@//0r OVAL@//0r"},
          {"a refer in a refer", "(layer (refer (refer (circle 1.0))))", "", {"New Draw Type : refer"}},
          {"a refer to a value", "(layer (refer x))", "raises \"refer\" has no form in it"},
          {"a refer to a board assembly", "(layer (refer (boardAssembly (geometry (circle 1.0)))))",
           "CIRCLE@//0r DRAWSUBBOARD@//0r"},
          {"whatever the keyword", "(foo (circle 1.0))", "CIRCLE@//0"},
          {"nothing of a dropped layer is read", "(layer (infoOf 2) (circle) (refer) (teapot))", ""},
          {"a refer to what is none", "(layer (refer (teapot) (oval)))", "", {"New Draw Type : teapot"}},
          {"what stands for no shape", "(layer (basePoint) (dimension) (circle 1.0))", "CIRCLE@//0"},
          {"refer", "(layer (refer (circle 1.0) (oval)) (oval))", "CIRCLE@//0r OVAL@//0"},
          {"refer to no shape", "(layer (refer (basePoint) (oval)))", ""},
          {"empty refer", "(layer (refer))", "raises \"refer\" has no form in it"},
          {"header without value", "(layer (conductive) (circle 1.0))", "raises \"conductive\" has no value 1"},
          {"nothing", "(layer)", ""},
      },
      Read);
}

TEST(LayerReading, AKeywordThatIsNoneShowsABox) {
  Tree tree("(layer (conductive 1) (foo) (infoOf 2) (circle 1.0))");
  EXPECT_EQ("CIRCLE@conductive/1/1", Read(tree.Form()));
  EXPECT_EQ((std::vector<std::string>{"New Draw Type : foo", "New Draw Type : infoOf"}), tree.Boxes());
}

TEST(LayerReading, ShapesBeforeAFaultStay) {
  const struct {
    const char* input;
    const char* raised;
    const char* shapes;
  } cases[] = {
      {"(layer (conductive 1) (circle 1.0) (oval (width)) (circle 2.0))", "\"width\" has no value 1",
       "CIRCLE@conductive/1/1"},
      {"(layer (circle 1.0) (refer) (oval))", "\"refer\" has no form in it", "CIRCLE@//0"},
      // The layer's own name comes first.
      {"(layer (circle 1.0) (conductive))", "\"conductive\" has no value 1", ""},
  };
  for (const auto& [input, raised, shapes] : cases) {
    Tree tree(input);
    CBDboardContainer board;
    EXPECT_EQ(raised, RaisedBy([&] { laminate::ReadBoardLayer(&tree.Form(), board); }));
    EXPECT_EQ(shapes, Str(*board.m_pDrawObjArray)) << input;
  }
}

TEST(LayerReading, ShapesOfABoardAssemblyComeFirst) {
  Tree tree("(layer (conductive 1) (boardAssembly (geometry (circle 1.0) (oval))))");
  EXPECT_EQ("CIRCLE@conductive/1/1 OVAL@conductive/1/1 DRAWSUBBOARD@conductive/1/1", Read(tree.Form()));
}

TEST(LayerReading, NeedsAFormAndAPlace) {
  CBDboardContainer board;
  EXPECT_NE("", RaisedBy([&] { laminate::ReadBoardLayer(nullptr, board); }));
  delete std::exchange(board.m_pDrawObjArray, nullptr);
  Tree tree("(layer)");
  EXPECT_NE("", RaisedBy([&] { laminate::ReadBoardLayer(&tree.Form(), board); }));
}

}  // namespace
