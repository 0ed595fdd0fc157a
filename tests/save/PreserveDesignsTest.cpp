// Every design of LAMINATE_DESIGNS is saved unedited and after each kind of edit.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

#include "base/Designs.h"
#include "save/FormTree.h"
#include "save/PreserveTestSupport.h"
#include "technology/CBDpad.h"

namespace laminate::test {

namespace {

namespace fs = std::filesystem;

std::string Read(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

using IsChanged = std::function<bool(const CECadClsLvl&)>;

void Cut(const FormNode& form, const IsChanged& isChanged, std::size_t& nAt, std::string_view text, std::string& rest) {
  if (isChanged(*form.pNode)) {
    rest += text.substr(nAt, form.range.nBegin - nAt);
    nAt = form.range.nEnd;
    return;
  }
  for (const FormNode& child : form.children) Cut(child, isChanged, nAt, text, rest);
}

// The text without the forms that may have changed and without lines that are empty then.
std::string Outside(const std::string& sText, const IsChanged& isChanged) {
  const HeldText held{std::string(sText)};
  const FormTree tree(held.View());
  EXPECT_TRUE(tree.IsSound());
  std::string rest;
  std::size_t nAt = 0;
  for (const FormNode& root : tree.Roots()) Cut(root, isChanged, nAt, held.View(), rest);
  rest += held.View().substr(nAt);
  std::string result;
  for (std::size_t n = 0; n < rest.size();) {
    const std::size_t nEnd = std::min(rest.find('\n', n), rest.size());
    const std::string_view line = std::string_view(rest).substr(n, nEnd - n);
    if (line.find_first_not_of(" \t\r") != line.npos) result += std::string(line) + "\n";
    n = nEnd + 1;
  }
  return result;
}

bool HoldsValue(const CECadClsLvl& node, std::string_view sKeyword, const std::set<std::string>& values) {
  for (const CECadClsLvl* p : *node.m_pChildren) {
    if (p->m_sName.View() == sKeyword && !p->m_arrValues.IsEmpty() &&
        values.count(std::string(p->m_arrValues[0].View())) != 0) {
      return true;
    }
  }
  return false;
}
bool FirstValueIn(const CECadClsLvl& node, const std::set<std::string>& values) {
  return !node.m_arrValues.IsEmpty() && values.count(std::string(node.m_arrValues[0].View())) != 0;
}
IsChanged Components(const std::set<std::string>& references) {
  return [references](const CECadClsLvl& node) {
    return (node.m_sName == "component" && HoldsValue(node, "reference", references)) ||
           (node.m_sName == "comp" && FirstValueIn(node, references));
  };
}

class PreserveDesigns : public testing::TestWithParam<std::string> {
 protected:
  PreserveDesigns() : stem(DesignFile(GetParam(), "")), text(Read(stem.string() + ".pcf")), board(text) {}

  // Saves, and holds the result against the design and, outside the forms that may change, against the source.
  void ExpectConfined(const IsChanged& isChanged) {
    const std::string sSaved = board.Save();
    EXPECT_FALSE(board.losses.IsRefused());
    EXPECT_NE(sSaved, text);
    EXPECT_TRUE(ReadsAs(sSaved, board.Design()));
    EXPECT_TRUE(Outside(sSaved, isChanged) == Outside(text, isChanged));
    // Saved, it is a source like any other.
    EXPECT_TRUE(EditedBoard(sSaved).Save() == sSaved);
  }
  CBDcomponent& AnyComponent() { return board.Component(static_cast<int>(Components().GetSize() / 2)); }
  CBDcomponentArray& Components() { return *board.Board().m_pComponentArray; }
  CBDdrawObjArray& Shapes() { return *board.Board().m_pDrawObjArray; }

  const fs::path stem;
  const std::string text;
  EditedBoard board;
};

std::string Name(const CString& s) { return std::string(s.View()); }

TEST_P(PreserveDesigns, UneditedGivesTheSameBytes) {
  EXPECT_TRUE(board.Save() == text);
  const std::string sFootprints = Read(stem.string() + ".ftf");
  const HeldText held{std::string(sFootprints)};
  SourceDesign design;
  SourceDesign source;
  ASSERT_TRUE(design.ReadFootprintFile(held.View()) && source.ReadFootprintFile(held.View()));
  SaveLosses losses;
  EXPECT_TRUE(PreservedFootprints(design.Design().View(), source.Design(), held.View(), losses) == sFootprints);
}

TEST_P(PreserveDesigns, AMovedComponent) {
  CBDcomponent& component = AnyComponent();
  component.m_ptLocation.x += 1.5;
  for (CBDpin* p : *component.m_pPinArray) p->m_ptLocation.x += 1.5;
  for (CBDdrawObj* p : *component.m_pDrawObjArray) p->vMoveRotate(-1.5, 0, 0, "A");
  ExpectConfined(test::Components({Name(component.m_sReference)}));
}

TEST_P(PreserveDesigns, ATurnedComponent) {
  AnyComponent().m_dAngle += 33.25;
  ExpectConfined(test::Components({Name(AnyComponent().m_sReference)}));
}

TEST_P(PreserveDesigns, ARenamedComponent) {
  CBDcomponent& component = AnyComponent();
  const CString sOld = component.m_sReference;
  component.m_sReference = "A NEW (ONE)";
  for (CBDnet* pNet : *board.Board().m_pNetArray) {
    for (CBDrefPin* pPin : *pNet->m_pRefPinArray) {
      if (pPin->m_sComp == sOld) pPin->m_sComp = component.m_sReference;
    }
  }
  ExpectConfined(test::Components({Name(sOld), "A NEW (ONE)"}));
}

TEST_P(PreserveDesigns, ARemovedComponent) {
  const std::string sName = Name(AnyComponent().m_sReference);
  Components().DeleteAt(static_cast<int>(Components().GetSize() / 2), 1);
  ExpectConfined(test::Components({sName}));
}

TEST_P(PreserveDesigns, AnAddedComponent) {
  auto* p = new CBDcomponent;
  p->m_sReference = "NEW1";
  p->m_ptLocation = CPointD(0.1, 1.0 / 3.0);
  Components().InsertAt(Components().GetSize() / 2, p);
  ExpectConfined(test::Components({"NEW1"}));
}

TEST_P(PreserveDesigns, ARenamedNet) {
  // The net with the most pins is sure to have shapes.
  CBDnetArray& nets = *board.Board().m_pNetArray;
  CBDnet& net = **std::max_element(nets.begin(), nets.end(), [](const CBDnet* a, const CBDnet* b) {
    return a->m_pRefPinArray->GetSize() < b->m_pRefPinArray->GetSize();
  });
  const CString sOld = net.m_sName;
  net.m_sName = "A NET (2)";
  for (CBDdrawObj* p : Shapes()) {
    if (p->m_sNet == sOld) p->m_sNet = net.m_sName;
  }
  const std::set<std::string> names{Name(sOld), Name(net.m_sName)};
  ExpectConfined([names](const CECadClsLvl& node) {
    return (node.m_sName == "net" && FirstValueIn(node, names)) || HoldsValue(node, "net", names);
  });
}

TEST_P(PreserveDesigns, ShapesThatCameWentAndChanged) {
  const INT_PTR n = Shapes().GetSize();
  ASSERT_GT(n, 20);
  std::unique_ptr<CBDdrawObj> pLine;
  for (CBDdrawObj* p : Shapes()) {
    if (p->m_sKind == "LINE" && pLine == nullptr) pLine.reset(p->pCopy());
  }
  ASSERT_NE(pLine, nullptr);
  pLine->vMoveRotate(-7, 0, 0, "A");
  Shapes().GetAt(n / 3)->vMoveRotate(1, 1, 0, "A");
  Shapes().DeleteAt(static_cast<int>(n / 2), 1);
  Shapes().InsertAt(n / 4, pLine.release());
  ExpectConfined([](const CECadClsLvl& node) { return node.m_sName == "boardLayout"; });
}

TEST_P(PreserveDesigns, ValuesOfOtherRecords) {
  board.Net(0).m_sPen = "17";
  board.Design().pTechnology->m_sName = "another";
  ExpectConfined(
      [](const CECadClsLvl& node) { return node.m_sName == "nets" || node.m_sName == "technologyContainer"; });
}

TEST_P(PreserveDesigns, AFootprintFilesPad) {
  const HeldText held(Read(stem.string() + ".ftf"));
  SourceDesign design;
  SourceDesign source;
  ASSERT_TRUE(design.ReadFootprintFile(held.View()) && source.ReadFootprintFile(held.View()));
  CBDpad& pad = *design.Design().pFootprints->m_pPadArray->GetAt(0);
  const std::set<std::string> names{Name(pad.m_sName), "PAD (new)"};
  pad.m_sName = "PAD (new)";
  pad.m_pDrawObjArray->GetAt(0)->vMoveRotate(0.5, 0, 0, "A");
  SaveLosses losses;
  const std::string sSaved = PreservedFootprints(design.Design().View(), source.Design(), held.View(), losses);
  const IsChanged isChanged = [names](const CECadClsLvl& node) {
    return node.m_sName == "pad" && FirstValueIn(node, names);
  };
  EXPECT_TRUE(Outside(sSaved, isChanged) == Outside(std::string(held.View()), isChanged));
  const HeldText savedText{std::string(sSaved)};
  OwnedDesign got;
  ASSERT_TRUE(ReadFootprintText(savedText.View(), got));
  EXPECT_TRUE(SameContent(*got.pFootprints, *design.Design().pFootprints));
}

INSTANTIATE_TEST_SUITE_P(All, PreserveDesigns, testing::ValuesIn(DesignNames()), NameOfDesignTest);

}  // namespace

}  // namespace laminate::test
