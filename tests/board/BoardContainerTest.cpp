#include "board/CBDboardContainer.h"

#include <ctime>
#include <random>
#include <sstream>

#include "base/AllocationFault.h"
#include "board/CBDcompGroup.h"
#include "board/CBDcomponent.h"
#include "board/CBDnet.h"
#include "board/CBDsubBoard.h"
#include "board/LayerTranslator.h"
#include "board/PlainGathering.h"
#include "drawobj/CBDcircle.h"
#include "drawobj/CBDdelete.h"
#include "drawobj/CBDline.h"
#include "reader/ObjectRow.h"
#include "technology/RecordTestSupport.h"

namespace {

struct Layer {
  int number = 0;
  std::string name;
  std::string type;
};

CBDdrawObj* Shape(const Layer& layer, int nId = 0) {
  auto* p = new CBDdelete;
  p->m_nLayerNumber = layer.number;
  p->m_sLayerName = CString(layer.name);
  p->m_sLayerType = CString(layer.type);
  p->m_nCavityFrom = nId;  // tells the shapes apart
  return p;
}

void Fill(CBDboardContainer& board, const std::vector<Layer>& layers) {
  board.m_pDrawObjArray->DeleteAll();
  int nId = 0;
  for (const Layer& layer : layers) board.m_pDrawObjArray->Add(Shape(layer, nId++));
}

std::string Numbers(const CBDboardContainer& board) {
  std::string s;
  for (const CBDdrawObj* p : *board.m_pDrawObjArray) {
    s += p == nullptr ? "-" : p->m_nLayerNumber != 0 ? std::to_string(p->m_nLayerNumber) : Str(p->m_sLayerName);
    s += " ";
  }
  if (!s.empty()) s.pop_back();
  return s;
}

// ---- gathering ----

std::string Gathered(const std::string& layers) {
  CBDboardContainer board;
  std::vector<Layer> list;
  std::istringstream in(layers);
  for (std::string s; in >> s;) {
    const bool bNumber = s.find_first_not_of("0123456789") == std::string::npos;
    list.push_back({bNumber ? std::stoi(s) : 0, s == "_" ? "" : s, ""});
  }
  Fill(board, list);
  board.vSortDrawObjForLayerOrder();
  return Numbers(board);
}

TEST(LayoutGathering, ByNumber) {
  EXPECT_EQ("", Gathered(""));
  EXPECT_EQ("1", Gathered("1"));
  EXPECT_EQ("2 2 1 1", Gathered("2 1 2 1"));
  // The shape behind a gathered run leads none.
  EXPECT_EQ("1 2 3 3 2", Gathered("1 2 3 2 3"));
  EXPECT_EQ("1 1 1 2", Gathered("1 2 1 1"));
  EXPECT_EQ("1 2 3 3 2 4 2", Gathered("1 2 3 2 3 4 2"));
  // Nor does a gathered layout stay as it is: the second "a" leads now.
  EXPECT_EQ("2 2 a a 1 1 b", Gathered("2 a 1 1 b 2 a"));
  EXPECT_EQ("2 2 a a b 1 1", Gathered("2 2 a a 1 1 b"));
}

TEST(LayoutGathering, ByName) {
  EXPECT_EQ("a a b b", Gathered("a b a b"));
  // By number they are one run, and the second pass gathers: behind the run of "a", "b" leads none.
  EXPECT_EQ("a b c c b", Gathered("a b c b c"));
  // The empty name is the one that counts as gathered at the start.
  EXPECT_EQ("  a a ", Gathered("_ _ a _ a"));
}

TEST(LayoutGathering, NamesTakeShapesOfAnyNumberAlong) {
  CBDboardContainer board;
  Fill(board, {{0, "a", ""}, {3, "x", ""}, {3, "a", ""}});
  board.vSortDrawObjForLayerOrder();
  // "a" of layer 3 comes to the "a" that leads.
  std::string ids;
  for (const CBDdrawObj* p : *board.m_pDrawObjArray) ids += std::to_string(p->m_nCavityFrom);
  EXPECT_EQ("021", ids);
}

TEST(LayoutGathering, EqualsThePlainPassesOnRandomLayouts) {
  std::mt19937 random(20240611);
  const auto below = [&random](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
  const std::vector<std::string> names = {"", "a", "b", "c", "long name of a layer 1", "long name of a layer 2", "1"};
  for (int nRound = 0; nRound < 4000; ++nRound) {
    // Some have more layers than are found without a search.
    const bool bMany = nRound % 200 == 0;
    const int nShapes = bMany ? 900 : below(nRound % 10 == 0 ? 120 : 14);
    const int nNumbers = bMany ? 400 : 1 + below(5);
    const int nNames = 1 + below(static_cast<int>(names.size()));
    const int nZeros = below(4);  // how often a number is 0
    CBDboardContainer board;
    std::vector<Layer> layers;
    for (int i = 0; i < nShapes; ++i) {
      const int nNumber = below(4) < nZeros ? 0 : below(nNumbers) - 1;
      layers.push_back({nNumber, names[static_cast<std::size_t>(below(nNames))], ""});
      if (bMany && below(2) == 0) layers.back().name += std::to_string(below(nNumbers));
    }
    Fill(board, layers);
    const std::vector<CBDdrawObj*> expected = plain::Gathered(*board.m_pDrawObjArray);
    board.vSortDrawObjForLayerOrder();
    const std::vector<CBDdrawObj*> found(board.m_pDrawObjArray->begin(), board.m_pDrawObjArray->end());
    ASSERT_EQ(expected, found) << "round " << nRound;
  }
}

TEST(LayoutGathering, EmptySlotsStayWhereTheyAre) {
  CBDboardContainer board;
  board.m_pDrawObjArray->Add(nullptr);
  board.m_pDrawObjArray->Add(Shape({1, "", ""}));
  board.m_pDrawObjArray->Add(Shape({2, "", ""}));
  board.m_pDrawObjArray->Add(nullptr);
  board.m_pDrawObjArray->Add(Shape({1, "", ""}));
  board.vSortDrawObjForLayerOrder();
  EXPECT_EQ("- 1 1 - 2", Numbers(board));
  delete std::exchange(board.m_pDrawObjArray, nullptr);
  board.vSortDrawObjForLayerOrder();
}

TEST(LayoutGathering, TakesLinearTime) {
  // Moving elements one at a time takes a quarter of a minute in the fastest build, and minutes in others.
  std::mt19937 random(7);
  CBDboardContainer board;
  for (int i = 0; i < 300000; ++i) {
    const int nLayer = static_cast<int>(random() % 30);
    board.m_pDrawObjArray->Add(Shape(nLayer < 16 ? Layer{nLayer + 1, "", ""} : Layer{0, std::to_string(nLayer), ""}));
  }
  const std::clock_t start = std::clock();
  board.vSortDrawObjForLayerOrder();
  EXPECT_LT((std::clock() - start) / CLOCKS_PER_SEC, 5);
  int nChanges = 0;
  for (INT_PTR i = 1; i < board.m_pDrawObjArray->GetSize(); ++i) {
    const CBDdrawObj& a = *board.m_pDrawObjArray->GetAt(i - 1);
    const CBDdrawObj& b = *board.m_pDrawObjArray->GetAt(i);
    nChanges += a.m_nLayerNumber != b.m_nLayerNumber || a.m_sLayerName != b.m_sLayerName ? 1 : 0;
  }
  EXPECT_LT(nChanges, 100);
}

TEST(LayoutGathering, TakesNoLongerForManyLayers) {
  const auto seconds = [](auto layerOf) {
    CBDboardContainer board;
    for (int i = 0; i < 200000; ++i) board.m_pDrawObjArray->Add(Shape(layerOf(i)));
    const std::clock_t start = std::clock();
    board.vSortDrawObjForLayerOrder();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
  };
  EXPECT_LT(seconds([](int i) { return Layer{i, "", ""}; }), 3);
  EXPECT_LT(seconds([](int i) { return Layer{0, std::to_string(i), ""}; }), 3);
  // 50,000 numbers that fall into one bucket of a hash table of this prime size, four shapes of each.
  EXPECT_LT(seconds([](int i) { return Layer{(i % 50000 - 25000) * 85229, "", ""}; }), 3);
}

TEST(LayoutGathering, LeavesTheOrderWhenMemoryFails) {
  CBDboardContainer board;
  Fill(board, {{1, "", ""}, {2, "", ""}, {1, "", ""}, {0, "a", ""}, {0, "b", ""}, {0, "a", ""}});
  const auto fails = [&board](long n) {
    const laminate::test::AllocationFault fault(n, laminate::test::AllocationFault::Duration::once);
    try {
      board.vSortDrawObjForLayerOrder();
    } catch (const CMemoryException&) {
      return true;
    }
    return false;
  };
  long n = 1;
  for (; fails(n); ++n) EXPECT_EQ("1 2 1 a b a", Numbers(board));
  EXPECT_GT(n, 10);
  EXPECT_EQ("1 1 2 a a b", Numbers(board));
}

// ---- writing ----

std::string SectionText(const std::string& components, const std::string& groups, const std::string& nets,
                        const std::string& layers) {
  return "(boardContainer\n(components\n" + components + ")\n" +
         (groups.empty() ? "" : "(compGroups\n" + groups + ")\n") + "(nets\n" + nets + ")\n(boardLayout\n(layout\n" +
         layers + ")\n)\n)\n";
}

TEST(BoardWriting, AnEmptyBoard) {
  CBDboardContainer board;
  EXPECT_EQ(SectionText("", "", "", ""), Printed(board));
  board.m_pSubBoardArray->Add(new CBDsubBoard);
  board.m_pCompGroupArray->Add(nullptr);
  board.m_pComponentArray->Add(nullptr);
  board.m_pNetArray->Add(nullptr);
  board.m_pDrawObjArray->Add(nullptr);
  EXPECT_EQ(SectionText("", "", "", ""), Printed(board));
  EXPECT_NE("", RaisedBy([&] { board.nPrint2File(nullptr); }));
}

TEST(BoardWriting, WithoutTheNetsThatWereTaken) {
  CBDboardContainer board;
  delete std::exchange(board.m_pNetArray, nullptr);
  delete std::exchange(board.m_pComponentArray, nullptr);
  delete std::exchange(board.m_pCompGroupArray, nullptr);
  delete std::exchange(board.m_pDrawObjArray, nullptr);
  EXPECT_EQ(SectionText("", "", "", ""), Printed(board));
}

TEST(BoardWriting, Sections) {
  CBDboardContainer board;
  for (const char* szReference : {"U1", "U2"}) {
    board.m_pComponentArray->Add(new CBDcomponent);
    board.m_pComponentArray->GetLastElement()->m_sReference = szReference;
  }
  board.m_pCompGroupArray->Add(new CBDcompGroup);
  board.m_pNetArray->Add(new CBDnet);
  const std::string expected =
      SectionText(Printed(*board.m_pComponentArray->GetAt(0)) + Printed(*board.m_pComponentArray->GetAt(1)),
                  Printed(*board.m_pCompGroupArray->GetAt(0)), Printed(*board.m_pNetArray->GetAt(0)), "");
  EXPECT_EQ(expected, Printed(board));
}

std::string Layers(const std::vector<Layer>& layers) {
  CBDboardContainer board;
  Fill(board, layers);
  std::string s = Printed(board);
  const std::string head = "(boardContainer\n(components\n)\n(nets\n)\n(boardLayout\n(layout\n";
  EXPECT_TRUE(s.starts_with(head));
  EXPECT_TRUE(s.ends_with(")\n)\n)\n"));
  s = s.substr(head.size(), s.size() - head.size() - 6);
  // Short: a shape is "x", a closing bracket ")".
  for (const auto& [from, to] : {std::pair<std::string, std::string>{"(delete\n)\n", "x"}, {"\n", ""}}) {
    for (std::size_t n = 0; (n = s.find(from, n)) != std::string::npos; n += to.size()) s.replace(n, from.size(), to);
  }
  return s;
}

TEST(BoardWriting, LayerBlocks) {
  const Layer one{1, "1", "conductive"};
  const Layer two{2, "2", "conductive"};
  const Layer three{3, "3", "conductive"};
  const Layer silk{0, "SILK", "nonConductive"};
  const Layer mask{0, "M(1) x", "nonConductive"};
  const Layer hole{0, "HOLE", "systemLayer"};
  const Layer drill{0, "D)", "systemLayer"};
  const Layer odd{0, "ODD", "foo"};
  const Layer none{0, "", ""};
  EXPECT_EQ("", Layers({}));
  EXPECT_EQ("(layer (conductive 1)xx)", Layers({one, one}));
  EXPECT_EQ("(layer (conductive 1)x)(layer (conductive 2)x)(layer (conductive 3)xx)(layer (conductive 2)x)",
            Layers({one, two, three, two, three}));
  EXPECT_EQ("(layer (nonConductive SILK)xx)", Layers({silk, silk}));
  EXPECT_EQ("(layer (nonConductive \"M(1) x\")x)(layer (systemLayer (type HOLE))x)(layer (systemLayer (type \"D)\"))x)",
            Layers({mask, hole, drill}));
  EXPECT_EQ("(layer (nonConductive A B)x)", Layers({{0, "A B", "nonConductive"}}));
  // A first shape of another type opens nothing, but the bracket behind the last one stands.
  EXPECT_EQ("x)", Layers({odd}));
  EXPECT_EQ("x)(layer (conductive 1)x)", Layers({odd, one}));
  EXPECT_EQ("(layer (conductive 1)x)x)", Layers({one, odd}));
  EXPECT_EQ("x)", Layers({none}));
  // The empty name is the one that is remembered at the start, so it opens nothing behind copper.
  EXPECT_EQ("(layer (conductive 1)xx)", Layers({one, {0, "", "nonConductive"}}));
  EXPECT_EQ("(layer (nonConductive )x)", Layers({{0, "", "nonConductive"}}));
  // Number and name are remembered apart: back on layer 2 no layer opens.
  EXPECT_EQ("(layer (conductive 1)x)(layer (conductive 2)x)(layer (nonConductive SILK)xx)",
            Layers({one, two, silk, two}));
  // And a name stays remembered while copper passes.
  EXPECT_EQ("(layer (conductive 1)x)(layer (nonConductive SILK)x)(layer (conductive 2)xx)",
            Layers({one, silk, {2, "SILK", "conductive"}, silk}));
}

TEST(BoardWriting, HeadersOfLayerBlocks) {
  const struct {
    std::vector<Layer> layers;
    const char* text;
  } cases[] = {
      // The name decides, whatever the type; the number does, whatever name and type.
      {{{0, "X", "nonConductive"}, {0, "X", "systemLayer"}}, "(layer (nonConductive X)xx)"},
      {{{0, "X", "foo"}, {0, "X", "systemLayer"}}, "xx)"},
      {{{2, "SILK", "nonConductive"}}, "(layer (conductive 2)x)"},
      {{{2, "a", ""}, {2, "b", "systemLayer"}}, "(layer (conductive 2)xx)"},
      {{{-1, "", ""}}, "(layer (conductive -1)x)"},
      // Copper of number 0 is of no known type.
      {{{0, "x", "conductive"}}, "x)"},
      // Any kind may be first.
      {{{0, "HOLE", "systemLayer"}, {1, "", ""}}, "(layer (systemLayer (type HOLE))x)(layer (conductive 1)x)"},
      {{{0, "SILK", "nonConductive"}, {1, "", ""}}, "(layer (nonConductive SILK)x)(layer (conductive 1)x)"},
      {{{0, "", "systemLayer"}}, "(layer (systemLayer (type ))x)"},
      // Brackets alone bring quotes.
      {{{0, "S(", "nonConductive"}}, "(layer (nonConductive \"S(\")x)"},
      {{{0, "S)", "nonConductive"}}, "(layer (nonConductive \"S)\")x)"},
      {{{0, "S(", "systemLayer"}}, "(layer (systemLayer (type \"S(\"))x)"},
      {{{0, "S T", "systemLayer"}}, "(layer (systemLayer (type S T))x)"},
      {{{0, "50% %s\"", "nonConductive"}}, "(layer (nonConductive 50% %s\")x)"},
  };
  for (const auto& [layers, text] : cases) EXPECT_EQ(text, Layers(layers));
}

TEST(BoardWriting, EmptySlotsAreNothing) {
  CBDboardContainer board;
  const Layer one{1, "", ""};
  const Layer silk{0, "S", "nonConductive"};
  for (const Layer* p : {static_cast<const Layer*>(nullptr), &one, static_cast<const Layer*>(nullptr), &one, &silk,
                         static_cast<const Layer*>(nullptr)}) {
    board.m_pDrawObjArray->Add(p == nullptr ? nullptr : Shape(*p));
  }
  board.m_pCompGroupArray->Add(nullptr);
  board.m_pCompGroupArray->Add(new CBDcompGroup);
  EXPECT_EQ(SectionText("", Printed(*board.m_pCompGroupArray->GetAt(1)), "",
                        "(layer (conductive 1)\n(delete\n)\n(delete\n)\n)\n(layer (nonConductive S)\n(delete\n)\n)\n"),
            Printed(board));
}

// What was read stands in the same layers when it is read from what was written, in the gathered order.
TEST(BoardWriting, LayersComeBack) {
  const auto read = [](const std::string& text, CBDboardContainer& board) {
    Tree tree(text);
    const CECadClsLvl& layout = *laminate::FindChild(*laminate::FindChild(tree.Form(), "boardLayout"), "layout");
    laminate::ForEachChild(layout, [&board](const CECadClsLvl& layer) { laminate::ReadBoardLayer(&layer, board); });
  };
  CBDboardContainer board;
  read(
      "(boardContainer (boardLayout (layout (layer (conductive 2) (oval)) (layer (nonConductive \"S(1)\") (oval)) "
      "(layer (conductive 1) (oval) (oval)) (layer (systemLayer (type H)) (oval)) (layer (conductive 2) "
      "(oval)) "
      "(layer (nonConductive \"S(1)\") (oval)))))",
      board);
  const std::string text = Printed(board);
  const std::string shapes = Str(*board.m_pDrawObjArray);
  EXPECT_EQ(
      "OVAL@conductive/2/2 OVAL@conductive/2/2 OVAL@nonConductive/S(1)/0 OVAL@nonConductive/S(1)/0 "
      "OVAL@conductive/1/1 OVAL@conductive/1/1 OVAL@systemLayer/H/0",
      shapes);
  CBDboardContainer again;
  read(text, again);
  EXPECT_EQ(shapes, Str(*again.m_pDrawObjArray));
}

TEST(BoardWriting, LinesOfLayerBlocks) {
  CBDboardContainer board;
  Fill(board, {{1, "", ""},
               {0, "S", "nonConductive"},
               {0, "S(1)", "nonConductive"},
               {0, "H", "systemLayer"},
               {0, "H(", "systemLayer"}});
  EXPECT_EQ(SectionText("", "", "",
                        "(layer (conductive 1)\n(delete\n)\n)\n"
                        "(layer (nonConductive S)\n(delete\n)\n)\n"
                        "(layer (nonConductive \"S(1)\")\n(delete\n)\n)\n"
                        "(layer (systemLayer (type H))\n(delete\n)\n)\n"
                        "(layer (systemLayer (type \"H(\"))\n(delete\n)\n)\n"),
            Printed(board));
}

// The shapes stand by themselves, in the form with "geometry", and their nets are made ready each time.
TEST(BoardWriting, ShapesStandByThemselves) {
  CBDboardContainer board;
  board.m_pDrawObjArray->Add(new CBDcircle);
  auto* pLine = new CBDline;
  board.m_pDrawObjArray->Add(pLine);
  for (CBDdrawObj* p : *board.m_pDrawObjArray) p->m_nLayerNumber = 1;
  pLine->m_sNet = "A%";
  const std::string text = Printed(board);
  EXPECT_NE(std::string::npos,
            text.find("(layer (conductive 1)\n(geometry\n(circle 0.00000\n(pt 0.00000 0.00000)\n)\n)\n"));
  EXPECT_NE(std::string::npos, text.find("(net \"A%%\")\n")) << text;
  EXPECT_EQ("\"A%%\"", Str(pLine->m_sNet));
}

TEST(BoardWriting, GathersAndStaysGathered) {
  CBDboardContainer board;
  Fill(board, {{1, "", ""}, {2, "", ""}, {1, "", ""}});
  Printed(board);
  EXPECT_EQ("1 1 2", Numbers(board));
}

TEST(BoardObjects, CopiesShare) {
  CBDboardContainer board;
  board.m_sReserved1 = "x";
  board.m_sReserved2 = "y";
  const auto expectShared = [&board](CBDboardContainer& copy) {
    EXPECT_EQ("x", copy.m_sReserved1);
    EXPECT_EQ("y", copy.m_sReserved2);
    EXPECT_EQ(board.m_pComponentArray, copy.m_pComponentArray);
    EXPECT_EQ(board.m_pCompGroupArray, copy.m_pCompGroupArray);
    EXPECT_EQ(board.m_pNetArray, copy.m_pNetArray);
    EXPECT_EQ(board.m_pDrawObjArray, copy.m_pDrawObjArray);
    EXPECT_EQ(board.m_pSubBoardArray, copy.m_pSubBoardArray);
    copy.m_pComponentArray = nullptr;
    copy.m_pCompGroupArray = nullptr;
    copy.m_pNetArray = nullptr;
    copy.m_pDrawObjArray = nullptr;
    copy.m_pSubBoardArray = nullptr;
  };
  CBDboardContainer copy(board);
  expectShared(copy);
  CBDboardContainer assigned;
  const CBDboardContainer old(assigned);  // deletes what the assignment leaves behind
  assigned = board;
  expectShared(assigned);
}

TEST(BoardObjects, StartEmptyWithTheirFieldsInOrder) {
  static_assert(std::has_virtual_destructor_v<CBDboardContainer>);
  const CBDboardContainer board;
  EXPECT_EQ("", board.m_sReserved1);
  EXPECT_EQ("", board.m_sReserved2);
  const auto expectEmpty = [](const auto* pArray) {
    ASSERT_NE(nullptr, pArray);
    EXPECT_TRUE(pArray->IsEmpty());
  };
  expectEmpty(board.m_pComponentArray);
  expectEmpty(board.m_pCompGroupArray);
  expectEmpty(board.m_pNetArray);
  expectEmpty(board.m_pDrawObjArray);
  expectEmpty(board.m_pSubBoardArray);
  ExpectInOrder({&board.m_sReserved1, &board.m_pComponentArray, &board.m_pCompGroupArray, &board.m_pNetArray,
                 &board.m_pDrawObjArray, &board.m_sReserved2, &board.m_pSubBoardArray});
}

TEST(BoardObjects, DeleteTheirArraysWithAllInThem) {
  int nEnded = 0;
  {
    CBDboardContainer board;
    AddEnding(board.m_pComponentArray, nEnded);
    AddEnding(board.m_pCompGroupArray, nEnded);
    AddEnding(board.m_pNetArray, nEnded);
    board.m_pDrawObjArray->Add(new Ending<CBDdelete>(nEnded));
    AddEnding(board.m_pSubBoardArray, nEnded);
  }
  EXPECT_EQ(5, nEnded);
  {
    CBDboardContainer without;
    delete std::exchange(without.m_pNetArray, nullptr);
    AddEnding(without.m_pSubBoardArray, nEnded);
  }
  EXPECT_EQ(6, nEnded);
}

TEST(BoardObjects, EndSoundlyWithoutMemory) {
  EXPECT_GT(laminate::test::ForEachFailingAllocation(laminate::test::OnlyPlatforms([] {
              std::vector<std::unique_ptr<CBDboardContainer>> boards;
              laminate::WithPlatformFailures([&] { boards.reserve(1000); });
              for (int i = 0; i < 1000; ++i) boards.push_back(std::make_unique<CBDboardContainer>());
            })),
            1);
  CBDboardContainer board;
  for (int i = 0; i < 3000; ++i) board.m_pDrawObjArray->Add(Shape({i % 7, std::to_string(i % 5), ""}, i));
  const std::vector<CBDdrawObj*> before(board.m_pDrawObjArray->begin(), board.m_pDrawObjArray->end());
  bool bAsBefore = true;
  const int nFailures = laminate::test::ForEachFailingAllocation(
      laminate::test::OnlyPlatforms([&] {
        std::copy(before.begin(), before.end(), board.m_pDrawObjArray->begin());
        board.vSortDrawObjForLayerOrder();
      }),
      [&] { bAsBefore = bAsBefore && std::equal(before.begin(), before.end(), board.m_pDrawObjArray->begin()); });
  EXPECT_TRUE(bAsBefore);
  EXPECT_GT(nFailures, 10);
}

}  // namespace
