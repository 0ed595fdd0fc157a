#include "reader/TreeMemory.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <random>
#include <thread>
#include <vector>

#include "reader/ReaderTestSupport.h"

namespace {

void* TreeAllocate(std::size_t nBytes) { return laminate::TreeMemory::OfThisThread().Allocate(nBytes); }
void TreeFree(void* p) { laminate::TreeMemory::OfThisThread().Free(p); }

TEST(TreeMemory, BlocksKeepApart) {
  std::mt19937 random(3);
  struct Block {
    unsigned char* p;
    std::size_t n;
    unsigned char fill;
  };
  std::vector<Block> blocks;
  for (int i = 0; i < 200000; ++i) {
    if (blocks.empty() || random() % 5 < 3) {
      // Small ones mostly, and some that are larger than any stretch.
      const std::size_t n = random() % 2000 == 0 ? 100000 + random() % 400000 : 1 + random() % 300;
      auto* p = static_cast<unsigned char*>(TreeAllocate(n));
      ASSERT_EQ(reinterpret_cast<std::uintptr_t>(p) % 8, 0u);
      blocks.push_back({p, n, static_cast<unsigned char>(random())});
      std::memset(p, blocks.back().fill, n);
    } else {
      const std::size_t k = random() % blocks.size();
      const Block block = blocks[k];
      ASSERT_EQ(block.p[0], block.fill);
      ASSERT_EQ(block.p[block.n / 2], block.fill);
      ASSERT_EQ(block.p[block.n - 1], block.fill);
      TreeFree(block.p);
      blocks[k] = blocks.back();
      blocks.pop_back();
    }
  }
  for (const Block& block : blocks) TreeFree(block.p);
  TreeFree(nullptr);
}

TEST(TreeMemory, AnyThreadMayFree) {
  constexpr int kBlocks = 30000;
  std::vector<void*> made(kBlocks);
  for (int round = 0; round < 5; ++round) {
    std::thread maker([&] {
      for (void*& p : made) p = TreeAllocate(64);
    });
    maker.join();
    // Of each stretch some blocks go here and some there, at the same time.
    std::vector<std::thread> threads;
    for (int t = 0; t < 3; ++t) {
      threads.emplace_back([&made, t] {
        for (int i = t; i < kBlocks; i += 3) {
          TreeFree(made[static_cast<std::size_t>(i)]);
          TreeFree(TreeAllocate(40));
        }
      });
    }
    for (std::thread& thread : threads) thread.join();
  }
}

// ---- nodes ----

class Nodes : public testing::Test {
 protected:
  CECadClsLvlArray& Parse(const std::string& text) {
    m_parser.File(text);
    return *m_parser.Reader().m_pRootArray;
  }
  TextParser m_parser;
};

TEST_F(Nodes, CanBeChangedAsAnyOther) {
  CECadClsLvl& node = *Parse("(a 1 2 \"a value that is too long to be held inside\" (b) (c 3) (d))")[0];
  node.m_arrValues.Add(node.m_arrValues[2]);
  node.m_arrValues.RemoveAt(0);
  EXPECT_EQ(node.m_arrValues.GetSize(), 3);
  EXPECT_EQ(node.m_arrValues[2], "a value that is too long to be held inside");
  delete node.m_pChildren->GetAt(1);
  node.m_pChildren->RemoveAt(1);
  auto* pNew = new CECadClsLvl;
  pNew->m_sName = "e";
  node.m_pChildren->Add(pNew);
  node.m_pChildren->FreeExtra();
  EXPECT_EQ(Brief(node),
            "a[2,a value that is too long to be held inside,a value that is too long to be held inside]"
            "{b[]}{d[]}{e[]}");
  node.m_arrValues.SetSize(1);
  node.m_arrValues.FreeExtra();
  node.m_arrValues.InsertAt(0, "first");
  EXPECT_EQ(Brief(node), "a[first,2]{b[]}{d[]}{e[]}");
  CStringArray copy(node.m_arrValues);
  node.m_arrValues.RemoveAll();
  EXPECT_EQ(copy[1], "2");
}

TEST_F(Nodes, MayOutliveTheirReader) {
  CECadClsLvlArray& roots = Parse("(a (b 1)) (c 2)");
  const std::unique_ptr<CECadClsLvl> kept(roots[0]);
  roots.RemoveAt(0);
  CECadClsLvl* pInner = kept->m_pChildren->RemoveLastElement();
  Parse("(x 1)(y 2)(z 3)");
  EXPECT_EQ(Brief(*kept), "a[]");
  EXPECT_EQ(Brief(*pInner), "b[1]");
  delete pInner;
}

TEST_F(Nodes, MayBeGivenAnotherArray) {
  auto* pArray = new CECadClsLvlArray;
  pArray->Add(new CECadClsLvl);
  auto node = std::make_unique<CECadClsLvl>();
  EXPECT_TRUE(node->m_pChildren->IsEmpty());
  node->m_pChildren = pArray;
}

TEST_F(Nodes, MayDieOnAnotherThread) {
  std::string text;
  for (int i = 0; i < 20000; ++i) text += "(a " + std::to_string(i) + " (b \"some text of more than a few bytes\"))\n";
  for (int i = 0; i < 3; ++i) {
    CECadClsLvlArray taken;
    CECadClsLvlArray& roots = Parse(text);
    taken.Append(roots);
    roots.SetSize(0, -1);
    std::thread([&] { taken.DeleteAll(); }).join();
  }
}

}  // namespace
