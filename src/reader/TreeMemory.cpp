#include "reader/TreeMemory.h"

#include <atomic>
#include <cstdint>
#include <mutex>
#include <new>
#include <type_traits>

#include "base/CException.h"

namespace laminate {

#ifdef LAMINATE_NO_POOL

void* TreeAllocate(std::size_t nBytes) {
  void* p = ::operator new(nBytes, std::nothrow);
  if (p == nullptr) AfxThrowMemoryException();
  return p;
}
void TreeFree(void* p) noexcept { ::operator delete(p); }

#else

namespace {

constexpr std::size_t kStretch = 256 * 1024;
constexpr std::size_t kAlignment = 8;
constexpr std::size_t kHead = 64;
// A larger block gets a stretch of its own.
constexpr std::size_t kLargest = kStretch / 8;
// How much memory without use is kept for later trees.
constexpr std::size_t kMostKept = 512;

// The head of a stretch, which lies at a multiple of its size, so that a block leads to it.
struct Stretch {
  std::atomic<std::uint32_t> nLive;  // blocks not yet free; while a thread cuts from it, that many more than kCutting
  bool bOneBlock;
  Stretch* next;

  char* Begin() { return reinterpret_cast<char*>(this) + kHead; }
  char* End() { return reinterpret_cast<char*>(this) + kStretch; }
};
static_assert(sizeof(Stretch) <= kHead);

constexpr std::uint32_t kCutting = 1u << 30;

Stretch* StretchOf(void* p) {
  return reinterpret_cast<Stretch*>(reinterpret_cast<std::uintptr_t>(p) & ~std::uintptr_t{kStretch - 1});
}

Stretch* NewStretch(std::size_t nBytes) {
  void* p = ::operator new(nBytes, std::align_val_t(kStretch), std::nothrow);
  if (p == nullptr) AfxThrowMemoryException();
  return ::new (p) Stretch;
}
void DeleteStretch(Stretch* stretch) { ::operator delete(stretch, std::align_val_t(kStretch)); }

// Stretches without use, for all threads.
struct Store {
  std::mutex guard;
  Stretch* first = nullptr;
  std::size_t nCount = 0;
};
// Has no destructor: trees may be freed while the process ends.
static_assert(std::is_trivially_destructible_v<Store>);
constinit Store g_store = {};

Stretch* TakeStretch() {
  {
    const std::lock_guard lock(g_store.guard);
    if (Stretch* stretch = g_store.first) {
      g_store.first = stretch->next;
      --g_store.nCount;
      return stretch;
    }
  }
  return NewStretch(kStretch);
}
void GiveStretch(Stretch* stretch) {
  if (!stretch->bOneBlock) {
    const std::lock_guard lock(g_store.guard);
    if (g_store.nCount < kMostKept) {
      stretch->next = g_store.first;
      g_store.first = stretch;
      ++g_store.nCount;
      return;
    }
  }
  DeleteStretch(stretch);
}
void Subtract(Stretch* stretch, std::uint32_t n) {
  if (stretch->nLive.fetch_sub(n, std::memory_order_acq_rel) == n) GiveStretch(stretch);
}

enum class State : std::uint8_t { fresh, live, ended };

// What comes next is on its way into the cache when it is needed.
void PrefetchForWriting(const void* p) {
  constexpr std::size_t kLine = 64;
  constexpr std::size_t kAhead = 2048;
  __builtin_prefetch(static_cast<const char*>(p) + kAhead, 1);
  __builtin_prefetch(static_cast<const char*>(p) + kAhead + kLine, 1);
}

struct Local {
  // The stretch that this thread cuts from, and how many of its blocks this thread has not freed.
  Stretch* cutting;
  char* at;
  char* end;
  std::uint32_t nMade;
  // The stretch whose blocks this thread frees, and how many it has freed without telling the stretch.
  std::uint32_t nFreed;
  Stretch* freeing;
  State state;
};
constinit thread_local Local t_local = {};

void TellFreed(Local& local) {
  if (local.freeing == nullptr) return;
  if (local.freeing == local.cutting) {
    local.nMade -= local.nFreed;
  } else {
    Subtract(local.freeing, local.nFreed);
  }
  local.freeing = nullptr;
  local.nFreed = 0;
}

void StopCutting(Local& local) {
  if (local.cutting == nullptr) return;
  if (local.freeing == local.cutting) TellFreed(local);
  Stretch* stretch = local.cutting;
  local.cutting = nullptr;
  local.at = local.end = nullptr;
  Subtract(stretch, kCutting - local.nMade);
  local.nMade = 0;
}

struct ThreadEnd {
  ~ThreadEnd() {
    StopCutting(t_local);
    TellFreed(t_local);
    t_local.state = State::ended;
  }
};
void RegisterThread() {
  thread_local ThreadEnd end;
  static_cast<void>(&end);
  t_local.state = State::live;
}

void* AllocateSlowly(std::size_t nBytes) {
  Local& local = t_local;
  if (local.state == State::fresh) RegisterThread();
  // Too large, or for a thread that is going.
  if (nBytes > kLargest || local.state == State::ended) {
    Stretch* stretch = NewStretch(kHead + nBytes);
    stretch->nLive.store(1, std::memory_order_relaxed);
    stretch->bOneBlock = true;
    return stretch->Begin();
  }
  Stretch* stretch = TakeStretch();
  StopCutting(local);
  stretch->nLive.store(kCutting, std::memory_order_relaxed);
  stretch->bOneBlock = false;
  local.cutting = stretch;
  local.nMade = 1;
  local.at = stretch->Begin() + nBytes;
  local.end = stretch->End();
  return stretch->Begin();
}

}  // namespace

void* TreeAllocate(std::size_t nBytes) {
  nBytes = (nBytes + kAlignment - 1) / kAlignment * kAlignment;
  Local& local = t_local;
  if (static_cast<std::size_t>(local.end - local.at) < nBytes) [[unlikely]] {
    return AllocateSlowly(nBytes);
  }
  void* p = local.at;
  local.at += nBytes;
  ++local.nMade;
  PrefetchForWriting(local.at);
  return p;
}

void TreeFree(void* p) noexcept {
  if (p == nullptr) return;
  Local& local = t_local;
  Stretch* stretch = StretchOf(p);
  if (stretch != local.freeing) [[unlikely]] {
    if (local.state == State::fresh) RegisterThread();
    if (local.state == State::ended) {
      Subtract(stretch, 1);
      return;
    }
    TellFreed(local);
    local.freeing = stretch;
  }
  // Trees are freed in the order in which they were made.
  PrefetchForWriting(p);
  // Where all is free that was cut so far, the stretch serves from its beginning.
  if (++local.nFreed == local.nMade && stretch == local.cutting) {
    local.at = stretch->Begin();
    local.nMade = local.nFreed = 0;
  }
}

#endif

}  // namespace laminate
