#include "reader/TreeMemory.h"

#include <atomic>
#include <cstdint>
#include <mutex>
#include <new>
#include <type_traits>

#include "base/CException.h"

namespace laminate {

namespace {

constexpr std::size_t kStretch = 256 * 1024;
constexpr std::size_t kHead = 64;
// How many stretches without use are kept for later trees.
constexpr std::size_t kMostKept = 512;
// While a thread cuts from a stretch, it counts so many blocks more than are live.
constexpr std::uint32_t kCutting = 1u << 30;

constinit thread_local TreeMemory t_memory;

}  // namespace

// The head of a stretch, which lies at a multiple of its size, so that a block leads to it.
struct TreeMemory::Stretch {
  std::atomic<std::uint32_t> nLive;  // blocks not yet free
  bool bOneBlock;
  Stretch* next;

  char* Begin() { return reinterpret_cast<char*>(this) + kHead; }
  char* End() { return reinterpret_cast<char*>(this) + kStretch; }

  static Stretch* New(std::size_t nBytes) {
    void* p = ::operator new(nBytes, std::align_val_t(kStretch), std::nothrow);
    if (p == nullptr) AfxThrowMemoryException();
    return ::new (p) Stretch;
  }
  static void Delete(Stretch* stretch) { ::operator delete(stretch, std::align_val_t(kStretch)); }
};

// Stretches without use, for all threads. It has no destructor: trees may be freed while the process ends.
struct TreeMemory::Store {
  std::mutex guard;
  Stretch* first = nullptr;
  std::size_t nCount = 0;

  static Store& Get() {
    static_assert(std::is_trivially_destructible_v<Store>);
    static constinit Store theStore;
    return theStore;
  }
  Stretch* Take() {
    {
      const std::lock_guard lock(guard);
      if (Stretch* stretch = first) {
        first = stretch->next;
        --nCount;
        return stretch;
      }
    }
    return Stretch::New(kStretch);
  }
  void Give(Stretch* stretch) {
    if (!stretch->bOneBlock) {
      const std::lock_guard lock(guard);
      if (nCount < kMostKept) {
        stretch->next = first;
        first = stretch;
        ++nCount;
        return;
      }
    }
    Stretch::Delete(stretch);
  }
};

struct TreeMemory::ThreadEnd {
  ~ThreadEnd() {
    t_memory.StopCutting();
    t_memory.TellFreed();
    t_memory.m_state = State::ended;
  }
};

TreeMemory& TreeMemory::OfThisThread() noexcept { return t_memory; }

void TreeMemory::Register() {
  thread_local ThreadEnd end;
  static_cast<void>(&end);
  m_state = State::live;
}

TreeMemory::Stretch* TreeMemory::StretchOf(void* p) noexcept {
  return reinterpret_cast<Stretch*>(reinterpret_cast<std::uintptr_t>(p) & ~std::uintptr_t{kStretch - 1});
}

void TreeMemory::Subtract(Stretch* stretch, std::uint32_t n) noexcept {
  if (stretch->nLive.fetch_sub(n, std::memory_order_acq_rel) == n) Store::Get().Give(stretch);
}

void TreeMemory::TellFreed() noexcept {
  if (m_freeing == nullptr) return;
  if (m_freeing == m_cutting) {
    m_nMade -= m_nFreed;
  } else {
    Subtract(m_freeing, m_nFreed);
  }
  m_freeing = nullptr;
  m_nFreed = 0;
}

void TreeMemory::StopCutting() noexcept {
  if (m_cutting == nullptr) return;
  if (m_freeing == m_cutting) TellFreed();
  Subtract(m_cutting, kCutting - m_nMade);
  m_cutting = nullptr;
  m_at = m_end = nullptr;
  m_nMade = 0;
}

#ifdef LAMINATE_NO_POOL

void* TreeMemory::AllocateSlowly(std::size_t nBytes) {
  void* p = ::operator new(nBytes, std::nothrow);
  if (p == nullptr) AfxThrowMemoryException();
  return p;
}
void TreeMemory::Free(void* p) noexcept { ::operator delete(p); }

#else

void* TreeMemory::AllocateSlowly(std::size_t nBytes) {
  // A larger block gets a stretch of its own.
  constexpr std::size_t kLargest = kStretch / 8;
  if (m_state == State::fresh) Register();
  // Too large, or for a thread that is going.
  if (nBytes > kLargest || m_state == State::ended) {
    Stretch* stretch = Stretch::New(kHead + nBytes);
    stretch->nLive.store(1, std::memory_order_relaxed);
    stretch->bOneBlock = true;
    return stretch->Begin();
  }
  Stretch* stretch = Store::Get().Take();
  StopCutting();
  stretch->nLive.store(kCutting, std::memory_order_relaxed);
  stretch->bOneBlock = false;
  m_cutting = stretch;
  m_nMade = 1;
  m_at = stretch->Begin() + nBytes;
  m_end = stretch->End();
  return stretch->Begin();
}

void TreeMemory::Free(void* p) noexcept {
  if (p == nullptr) return;
  Stretch* stretch = StretchOf(p);
  if (stretch != m_freeing) [[unlikely]] {
    if (m_state == State::fresh) Register();
    if (m_state == State::ended) {
      Subtract(stretch, 1);
      return;
    }
    TellFreed();
    m_freeing = stretch;
  }
  // Trees are freed in the order in which they were made.
  PrefetchForWriting(p);
  // Where all is free that was cut so far, the stretch serves from its beginning.
  if (++m_nFreed == m_nMade && stretch == m_cutting) {
    m_at = stretch->Begin();
    m_nMade = m_nFreed = 0;
  }
}

#endif

}  // namespace laminate
