#include "base/Pool.h"

#include <atomic>
#include <cstdint>
#include <mutex>
#include <new>
#include <type_traits>

#include "base/CException.h"

namespace laminate {
namespace {

void* HeapAllocate(std::size_t nBytes) {
  void* p = ::operator new(nBytes, std::nothrow);
  if (p == nullptr) AfxThrowMemoryException();
  return p;
}

}  // namespace

#ifdef LAMINATE_NO_POOL

void* PoolAllocate(std::size_t nBytes) { return HeapAllocate(nBytes); }
void PoolFree(void* p, std::size_t) noexcept { ::operator delete(p); }

#else

namespace {

constexpr std::size_t kLists = kPoolLimit / kPoolAlignment + 1;
constexpr std::size_t kChunk = 64 * 1024;
constexpr std::size_t kBatchBytes = 16 * 1024;

// A free block. The first of a batch in the depot leads to the next batch too, so no block is smaller than this.
struct Free {
  Free* next;
  Free* nextBatch;
};

constexpr std::size_t ListOf(std::size_t nBytes) {
  return nBytes <= sizeof(Free) ? sizeof(Free) / kPoolAlignment : (nBytes + kPoolAlignment - 1) / kPoolAlignment;
}
constexpr std::uint32_t BatchOf(std::size_t list) {
  return static_cast<std::uint32_t>(kBatchBytes / (list * kPoolAlignment));
}

// Fresh memory that nobody has cut into blocks yet. At rest it describes itself in its first bytes.
struct Chunk {
  Chunk* next;
  char* end;
};

// Where threads leave whole batches of free blocks, and take them. A batch is a chain of up to `BatchOf` blocks.
struct Depot {
  std::mutex guard;
  std::atomic<Free*> batches[kLists] = {};
  Chunk* chunks = nullptr;

  void Give(std::size_t list, Free* batch) {
    if (batch == nullptr) return;
    const std::lock_guard lock(guard);
    batch->nextBatch = batches[list].load(std::memory_order_relaxed);
    batches[list].store(batch, std::memory_order_relaxed);
  }
  Free* Take(std::size_t list) {
    // A look without the lock: most of the time there is nothing.
    if (batches[list].load(std::memory_order_relaxed) == nullptr) return nullptr;
    const std::lock_guard lock(guard);
    Free* batch = batches[list].load(std::memory_order_relaxed);
    if (batch != nullptr) batches[list].store(batch->nextBatch, std::memory_order_relaxed);
    return batch;
  }
  void GiveChunk(char* begin, char* end) {
    if (static_cast<std::size_t>(end - begin) < sizeof(Chunk)) return;
    const std::lock_guard lock(guard);
    auto* chunk = reinterpret_cast<Chunk*>(begin);
    chunk->next = chunks;
    chunk->end = end;
    chunks = chunk;
  }
  // One with room for a block of any size that is asked for here.
  Chunk* TakeChunk() {
    const std::lock_guard lock(guard);
    Chunk* chunk = chunks;
    if (chunk != nullptr) chunks = chunk->next;
    return chunk;
  }
};
// Has no destructor: objects may be freed while the process ends.
static_assert(std::is_trivially_destructible_v<Depot>);
constinit Depot g_depot = {};
Depot& TheDepot() { return g_depot; }

// The free blocks of one size that a thread holds: those at hand, and at most one batch in reserve. What comes beyond
// goes to the depot, so a thread that only frees what others made does not hoard it.
struct List {
  Free* head;
  Free* reserve;
  std::uint32_t count;  // of `head`, at most
};

enum class State : std::uint8_t { fresh, live, ended };

struct Lists {
  List list[kLists];
  char* chunk;
  char* chunkEnd;
  State state;
};
constinit thread_local Lists t_lists = {};

struct ThreadEnd {
  ~ThreadEnd() {
    Depot& depot = TheDepot();
    Lists& lists = t_lists;
    for (std::size_t i = 0; i < kLists; ++i) {
      depot.Give(i, lists.list[i].head);
      depot.Give(i, lists.list[i].reserve);
      lists.list[i] = {};
    }
    depot.GiveChunk(lists.chunk, lists.chunkEnd);
    lists.chunk = lists.chunkEnd = nullptr;
    lists.state = State::ended;
  }
};

void RegisterThread() {
  thread_local ThreadEnd end;
  static_cast<void>(&end);
  t_lists.state = State::live;
}

// Cuts a block from fresh memory.
void* Carve(Lists& lists, std::size_t list) {
  const std::size_t nBytes = list * kPoolAlignment;
  while (static_cast<std::size_t>(lists.chunkEnd - lists.chunk) < nBytes) {
    // Got first, so that a failure changes nothing.
    char* begin = nullptr;
    char* end = nullptr;
    if (Chunk* chunk = TheDepot().TakeChunk()) {
      begin = reinterpret_cast<char*>(chunk);
      end = chunk->end;
    } else {
      begin = static_cast<char*>(HeapAllocate(kChunk));
      end = begin + kChunk;
    }
    // The rest of the old chunk serves a smaller size.
    const std::size_t rest = static_cast<std::size_t>(lists.chunkEnd - lists.chunk) / kPoolAlignment;
    if (rest >= ListOf(0)) {
      auto* p = reinterpret_cast<Free*>(lists.chunk);
      p->next = lists.list[rest].head;
      lists.list[rest].head = p;
      ++lists.list[rest].count;
    }
    lists.chunk = begin;
    lists.chunkEnd = end;
  }
  void* p = lists.chunk;
  lists.chunk += nBytes;
  return p;
}

[[gnu::noinline]] void* Refill(std::size_t list) {
  Lists& lists = t_lists;
  if (lists.state == State::fresh) RegisterThread();
  List& own = lists.list[list];
  if (lists.state == State::ended) {
    // The last objects of a thread that is going; nothing is kept for it any more.
    if (Free* batch = TheDepot().Take(list)) {
      TheDepot().Give(list, batch->next);
      return batch;
    }
    return HeapAllocate(list * kPoolAlignment);
  }
  own.count = 0;
  Free* p = own.reserve;
  own.reserve = nullptr;
  if (p == nullptr) p = TheDepot().Take(list);
  if (p == nullptr) return Carve(lists, list);
  own.head = p->next;
  own.count = BatchOf(list) - 1;
  return p;
}

[[gnu::noinline]] void FreeSlowly(Lists& lists, std::size_t list, Free* p) {
  if (lists.state == State::fresh) RegisterThread();
  List& own = lists.list[list];
  if (lists.state == State::ended) {
    p->next = nullptr;
    TheDepot().Give(list, p);
    return;
  }
  if (own.count >= BatchOf(list)) {
    TheDepot().Give(list, own.reserve);
    own.reserve = own.head;
    own.head = nullptr;
    own.count = 0;
  }
  p->next = own.head;
  own.head = p;
  ++own.count;
}

}  // namespace

void* PoolAllocate(std::size_t nBytes) {
  if (nBytes > kPoolLimit) return HeapAllocate(nBytes);
  const std::size_t list = ListOf(nBytes);
  List& own = t_lists.list[list];
  if (Free* p = own.head) [[likely]] {
    own.head = p->next;
    // The next block of this size will be asked for soon.
    __builtin_prefetch(own.head);
    --own.count;
    return p;
  }
  return Refill(list);
}

void PoolFree(void* p, std::size_t nBytes) noexcept {
  if (p == nullptr) return;
  if (nBytes > kPoolLimit) {
    ::operator delete(p);
    return;
  }
  const std::size_t list = ListOf(nBytes);
  Lists& lists = t_lists;
  List& own = lists.list[list];
  auto* block = static_cast<Free*>(p);
  if (lists.state != State::live || own.count >= BatchOf(list)) [[unlikely]] {
    FreeSlowly(lists, list, block);
    return;
  }
  block->next = own.head;
  own.head = block;
  ++own.count;
}

#endif

}  // namespace laminate
