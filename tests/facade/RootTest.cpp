// The root by itself: units, look-ups, shapes made from nodes, copies, destruction, writing.
#include <cmath>

#include "board/CBDboardContainer.h"
#include "board/CBDlibraryEntities.h"
#include "board/CBDparameter.h"
#include "designdata/CVRXoutPrfPart.h"
#include "drawobj/CBDcircle.h"
#include "drawobj/CBDvertexPt.h"
#include "facade/CBDesigner.h"
#include "facade/FacadeTestSupport.h"
#include "reader/CECadClsLvl.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDsubLayer.h"
#include "technology/CBDtechnologyContainer.h"

namespace {

TEST(Root, ConvertsDatabaseUnits) {
  struct Row {
    const char* text;
    double expected;
  };
  CBDesigner root;
  for (const Row& row : {Row{"50000", 0.5}, Row{"50000.0", 50000.0}, Row{"1e3", 0.01}, Row{"1.e3", 1000.0},
                         Row{"-100000", -1.0}, Row{".5", 0.5}, Row{"abc", 0.0}, Row{"", 0.0}, Row{".", 0.0}}) {
    EXPECT_EQ(root.dDBUnit2Double(row.text), row.expected) << row.text;
  }
}

TEST(Root, FindsTheKindOfASubLayer) {
  CBDesigner root;
  const auto add = [&root](const char* szKind, const char* szName) {
    auto* p = new CBDsubLayer;
    p->m_sLayerKind = szKind;
    p->m_sName = szName;
    root.m_pTechnology->m_pSubLayerArray->Add(p);
  };
  add("conductive", "1");
  add("type", "HOLE");
  add("nonConductive", "1");
  EXPECT_EQ(root.sGetLayerTypeFromSubLayer("1"), "conductive");
  EXPECT_EQ(root.sGetLayerTypeFromSubLayer("HOLE"), "systemLayer");
  EXPECT_EQ(root.sGetLayerTypeFromSubLayer("2"), "");
}

TEST(Root, FindsAPartByItsPinAssign) {
  CBDesigner root;
  CVRXoutPrfPartArray parts;
  for (const char* szPinAssign : {"PA1", "PA2", "PA2"}) {
    auto* p = new CVRXoutPrfPart;
    p->m_sPinAssignRef = szPinAssign;
    parts.Add(p);
    parts.Add(nullptr);
  }
  EXPECT_EQ(root.pGetBDoutPrfPart(&parts, "PA2"), parts.GetAt(2));
  EXPECT_EQ(root.pGetBDoutPrfPart(&parts, "pa2"), nullptr);
  EXPECT_THROW(root.pGetBDoutPrfPart(nullptr, "PA2"), CInvalidArgException);
}

// A form by hand.
std::unique_ptr<CECadClsLvl> Node(const char* szName, std::initializer_list<const char*> values) {
  auto p = std::make_unique<CECadClsLvl>();
  p->m_sName = szName;
  for (const char* sz : values) p->m_arrValues.Add(sz);
  return p;
}

TEST(Root, MakesShapesOfNodes) {
  CBDesigner root;
  const auto pNode = Node("circle", {"50000"});
  pNode->m_pChildren->Add(Node("pt", {"100000", "2.5"}).release());
  const std::unique_ptr<CBDdrawObj> pShape(root.pCECadClsLvl2CBDdrawObj(pNode.get(), 3, "3", "conductive", 1));
  const auto* pCircle = dynamic_cast<const CBDcircle*>(pShape.get());
  ASSERT_NE(pCircle, nullptr);
  EXPECT_EQ(pCircle->m_ptCenter, CPointD(1.0, 2.5));
  EXPECT_EQ(pCircle->m_dRadius, 0.5);
  EXPECT_EQ(pCircle->m_nLayerNumber, 3);
  EXPECT_EQ(pCircle->m_sLayerName, "3");
  EXPECT_EQ(pCircle->m_sLayerType, "conductive");
  EXPECT_EQ(pCircle->m_bRefer, 1);
  EXPECT_THROW(root.pCECadClsLvl2CBDdrawObj(nullptr, 0, "", "", 0), CInvalidArgException);
}

TEST(Root, PutsTheShapesOfABoardAssemblyOnTheBoard) {
  CBDesigner root;
  const auto pCircle = Node("circle", {"50000"});
  const auto pAssembly = Node("boardAssembly", {});
  pAssembly->m_pChildren->Add(Node("geometry", {}).release());
  pAssembly->m_pChildren->GetAt(0)->m_pChildren->Add(Node("circle", {"50000"}).release());
  const auto read = [&root](const std::unique_ptr<CECadClsLvl>& pNode) {
    return std::unique_ptr<CBDdrawObj>(root.pCECadClsLvl2CBDdrawObj(pNode.get(), 3, "3", "conductive", 0));
  };
  EXPECT_EQ(read(pAssembly)->m_sKind, "DRAWSUBBOARD");
  const CBDdrawObjArray& shapes = *root.m_pBoardContainer->m_pDrawObjArray;
  ASSERT_EQ(shapes.GetSize(), 1);
  EXPECT_EQ(shapes.GetAt(0)->m_sKind, "CIRCLE");
  EXPECT_EQ(shapes.GetAt(0)->m_nLayerNumber, 3);
  // Without a board only such a shape raises.
  delete std::exchange(root.m_pBoardContainer->m_pDrawObjArray, nullptr);
  EXPECT_THROW(read(pAssembly), CInvalidArgException);
  EXPECT_NE(read(pCircle), nullptr);
  delete std::exchange(root.m_pBoardContainer, nullptr);
  EXPECT_THROW(read(pAssembly), CInvalidArgException);
  EXPECT_NE(read(pCircle), nullptr);
}

TEST(Root, ShowsAKeywordThatStandsForNoShape) {
  Events events;
  RecordingHost host(events);
  CBDesigner root;
  EXPECT_EQ(root.pCECadClsLvl2CBDdrawObj(Node("teapot", {}).get(), 0, "", "", 0), nullptr);
  EXPECT_EQ(events, Events{"box New Draw Type : teapot"});
}

TEST(Root, AppendsVertices) {
  CBDesigner root;
  CBDvertexArray vertices;
  const auto pNode = Node("vertex", {});
  pNode->m_pChildren->Add(Node("pt", {"100000", "0"}).release());
  pNode->m_pChildren->Add(Node("other", {}).release());
  root.vInsertVertexIntoCBDvertexArray(pNode.get(), &vertices);
  ASSERT_EQ(vertices.GetSize(), 1);
  EXPECT_EQ(dynamic_cast<const CBDvertexPt&>(*vertices.GetAt(0)).m_pt, CPointD(1.0, 0.0));
  EXPECT_THROW(root.vInsertVertexIntoCBDvertexArray(nullptr, &vertices), CInvalidArgException);
  EXPECT_THROW(root.vInsertVertexIntoCBDvertexArray(pNode.get(), nullptr), CInvalidArgException);
}

TEST(Root, SharesItsContainersWithItsCopies) {
  CBDesigner root;
  Events events;
  RecordingControl control(events, "c");
  root.vSetPCFProgressPtr(&control);
  root.m_sSpare = "spare";
  root.m_sVersion = "3";
  root.m_bInQuote = 1;
  root.m_nComponentFileCount = 2;
  root.m_nLayerFileCount = 5;
  root.m_pLogFile = stderr;
  const auto expectShared = [&](CBDesigner& copy) {
    EXPECT_EQ(copy.m_pTechnology, root.m_pTechnology);
    EXPECT_EQ(copy.m_pFtfTechnology, root.m_pFtfTechnology);
    EXPECT_EQ(copy.m_pFootprintContainer, root.m_pFootprintContainer);
    EXPECT_EQ(copy.m_pBoardContainer, root.m_pBoardContainer);
    EXPECT_EQ(copy.m_pParameter, root.m_pParameter);
    EXPECT_EQ(copy.m_pLibraryEntities, root.m_pLibraryEntities);
    EXPECT_EQ(copy.m_pPCFProgress, &control);
    EXPECT_EQ(copy.m_sSpare, "spare");
    EXPECT_EQ(copy.m_sVersion, "3");
    EXPECT_EQ(copy.m_bInQuote, 1);
    EXPECT_EQ(copy.m_nComponentFileCount, 2);
    EXPECT_EQ(copy.m_nLayerFileCount, 5);
    EXPECT_EQ(copy.m_pLogFile, stderr);
    // Only one of the two may delete what they share; a null container is passed over.
    copy.m_pTechnology = copy.m_pFtfTechnology = nullptr;
    copy.m_pFootprintContainer = nullptr;
    copy.m_pBoardContainer = nullptr;
    copy.m_pParameter = nullptr;
    copy.m_pLibraryEntities = nullptr;
  };
  CBDesigner copy(root);
  expectShared(copy);
  CBDesigner assigned;
  const CBDesigner old(assigned);  // deletes what the assignment leaves behind
  assigned = root;
  expectShared(assigned);
}

TEST(Root, WritesItsLibrarySectionFromItsContainers) {
  CBDesigner root;
  MemoryLog text;
  EXPECT_EQ(root.m_pLibraryEntities->nPrint2File(text.Stream(), &root), 0);
  EXPECT_EQ(text.Text(), "(libraryEntities\n)\n");
  EXPECT_THROW(root.m_pLibraryEntities->nPrint2File(text.Stream(), nullptr), CInvalidArgException);
  EXPECT_THROW(root.m_pLibraryEntities->nPrint2File(nullptr, &root), CInvalidArgException);
}

}  // namespace
