#include "base/Pool.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <deque>
#include <mutex>
#include <random>
#include <thread>
#include <utility>
#include <vector>

namespace {

struct Block {
  unsigned char* p;
  std::size_t nBytes;
  unsigned char fill;
};

Block Take(std::size_t nBytes, unsigned char fill) {
  auto* p = static_cast<unsigned char*>(laminate::PoolAllocate(nBytes));
  std::memset(p, fill, nBytes);
  return {p, nBytes, fill};
}
bool IsWhole(const Block& block) {
  for (std::size_t i = 0; i < block.nBytes; ++i) {
    if (block.p[i] != block.fill) return false;
  }
  return true;
}
void Give(const Block& block) { laminate::PoolFree(block.p, block.nBytes); }

TEST(Pool, KeepsBlocksApart) {
  std::mt19937 random(1);
  std::vector<Block> blocks;
  for (int i = 0; i < 100000; ++i) {
    if (blocks.size() < 2000 && random() % 5 != 0) {
      const std::size_t nBytes = random() % 10 == 0 ? random() % 5000 : random() % 600;
      blocks.push_back(Take(nBytes, static_cast<unsigned char>(i)));
      ASSERT_EQ(reinterpret_cast<std::uintptr_t>(blocks.back().p) % laminate::kPoolAlignment, 0u);
    } else if (!blocks.empty()) {
      std::swap(blocks[random() % blocks.size()], blocks.back());
      ASSERT_TRUE(IsWhole(blocks.back()));
      Give(blocks.back());
      blocks.pop_back();
    }
  }
  for (const Block& block : blocks) {
    ASSERT_TRUE(IsWhole(block));
    Give(block);
  }
  laminate::PoolFree(nullptr, 100);
  laminate::PoolFree(nullptr, 1000);
}

// Blocks made in one thread, freed in another, which makes some itself.
TEST(Pool, ServesThreadsTogether) {
  std::mutex guard;
  std::condition_variable changed;
  std::deque<Block> queue;
  bool bDone = false;
  int nWrong = 0;
  std::thread consumer([&] {
    std::vector<Block> own;
    for (unsigned i = 0;; ++i) {
      Block block;
      {
        std::unique_lock lock(guard);
        changed.wait(lock, [&] { return bDone || !queue.empty(); });
        if (queue.empty()) break;
        block = queue.front();
        queue.pop_front();
      }
      if (!IsWhole(block)) ++nWrong;
      Give(block);
      if (i % 3 == 0) own.push_back(Take(i % 512, static_cast<unsigned char>(i)));
    }
    for (const Block& block : own) {
      if (!IsWhole(block)) ++nWrong;
      Give(block);
    }
  });
  for (unsigned i = 0; i < 60000; ++i) {
    const Block block = Take(8 + i % 300, static_cast<unsigned char>(i));
    const std::lock_guard lock(guard);
    queue.push_back(block);
    changed.notify_one();
  }
  {
    const std::lock_guard lock(guard);
    bDone = true;
    changed.notify_one();
  }
  consumer.join();
  EXPECT_EQ(nWrong, 0);
}

// What a sanitizer keeps back is its own matter.
constexpr bool kPool =
#ifdef LAMINATE_NO_POOL
    false;
#else
    true;
#endif

std::size_t ResidentBytes() {
  long nPages = 0;
  long nResident = 0;
  std::FILE* fp = std::fopen("/proc/self/statm", "r");
  EXPECT_EQ(std::fscanf(fp, "%ld %ld", &nPages, &nResident), 2);
  std::fclose(fp);
  return static_cast<std::size_t>(nResident) * 4096;
}

// A design that one thread loads and another one frees, again and again: the memory of one is enough.
TEST(Pool, GivesMemoryOnFromThreadToThread) {
  constexpr std::size_t kDesign = 16 * 1024 * 1024;
  std::size_t nFirst = 0;
  for (int nRound = 0; nRound < 12; ++nRound) {
    std::vector<Block> blocks;
    std::thread loader([&] {
      for (std::size_t n = 0; n < kDesign; n += 48) blocks.push_back(Take(48, 7));
    });
    loader.join();
    for (const Block& block : blocks) Give(block);
    std::vector<Block>().swap(blocks);
    if (nRound == 1) nFirst = ResidentBytes();
  }
  if (kPool) {
    EXPECT_LT(ResidentBytes(), nFirst + kDesign);
  }
}

// Threads that come and go leave what they did not use to the next ones.
TEST(Pool, LosesNothingWithThreads) {
  std::size_t nBefore = 0;
  for (int i = 0; i < 2000; ++i) {
    if (i == 100) nBefore = ResidentBytes();
    std::thread([] {
      std::vector<Block> blocks;
      for (std::size_t n = 8; n <= 256; n += 8) blocks.push_back(Take(n, 1));
      for (const Block& block : blocks) Give(block);
    }).join();
  }
  if (kPool) {
    EXPECT_LT(ResidentBytes(), nBefore + 8 * 1024 * 1024);
  }
}

struct Freed {
  ~Freed() {
    for (int i = 0; i < 3000; ++i) Give(Take(64, 3));
    for (const Block& block : blocks) Give(block);
  }
  std::vector<Block> blocks;
};
thread_local Freed t_freed;

TEST(Pool, ServesObjectsThatOutliveTheirThread) {
  for (int i = 0; i < 50; ++i) {
    std::thread([] {
      for (int n = 0; n < 2000; ++n) t_freed.blocks.push_back(Take(64, 3));
    }).join();
  }
}

struct Small : laminate::Pooled {
  virtual ~Small() = default;
  int n = 5;
};
struct Large : Small {
  char text[600] = {};
};

TEST(Pool, MakesAndFreesItsHeirs) {
  for (int i = 0; i < 1000; ++i) {
    Small* p = i % 2 != 0 ? new Small : new Large;
    EXPECT_EQ(p->n, 5);
    delete p;
  }
  alignas(Small) char room[sizeof(Small)];
  auto* p = new (room) Small;
  p->~Small();
}

}  // namespace
