#include "base/Pool.h"

#include <cstdint>
#include <mutex>
#include <new>

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

constexpr std::size_t kStep = 8;  // every object of the library is at most 8-byte aligned
constexpr std::size_t kLists = kPoolLimit / kStep + 1;
constexpr std::size_t kChunk = 64 * 1024;

struct Free {
  Free* next;
};

struct Lists {
  Free* head[kLists];
  char* chunk;
  char* chunkEnd;
  bool registered;
};

// What threads that ended left over; the next threads start from it.
struct Depot {
  std::mutex guard;
  Free* head[kLists] = {};
};
Depot& TheDepot() {
  static Depot* depot = new Depot;  // never destroyed: objects may be freed while the process ends
  return *depot;
}

constinit thread_local Lists t_lists = {};

struct ThreadEnd {
  ~ThreadEnd() {
    Depot& depot = TheDepot();
    std::lock_guard lock(depot.guard);
    for (std::size_t i = 0; i < kLists; ++i) {
      while (Free* p = t_lists.head[i]) {
        t_lists.head[i] = p->next;
        p->next = depot.head[i];
        depot.head[i] = p;
      }
    }
  }
};

void RegisterThread() {
  thread_local ThreadEnd end;
  static_cast<void>(&end);
  t_lists.registered = true;
}

void* Refill(std::size_t list) {
  Lists& lists = t_lists;
  if (!lists.registered) RegisterThread();
  {
    Depot& depot = TheDepot();
    std::lock_guard lock(depot.guard);
    if (Free* p = depot.head[list]) {
      depot.head[list] = nullptr;
      lists.head[list] = p->next;
      return p;
    }
  }
  const std::size_t nBytes = list * kStep;
  if (static_cast<std::size_t>(lists.chunkEnd - lists.chunk) < nBytes) {
    // The rest of the old chunk serves a smaller list.
    const std::size_t rest = static_cast<std::size_t>(lists.chunkEnd - lists.chunk) / kStep;
    char* chunk = static_cast<char*>(HeapAllocate(kChunk));
    if (rest != 0) {
      Free* p = reinterpret_cast<Free*>(lists.chunk);
      p->next = lists.head[rest];
      lists.head[rest] = p;
    }
    lists.chunk = chunk;
    lists.chunkEnd = chunk + kChunk;
  }
  void* p = lists.chunk;
  lists.chunk += nBytes;
  return p;
}

}  // namespace

void* PoolAllocate(std::size_t nBytes) {
  if (nBytes > kPoolLimit) return HeapAllocate(nBytes);
  const std::size_t list = nBytes == 0 ? 1 : (nBytes + kStep - 1) / kStep;
  if (Free* p = t_lists.head[list]) [[likely]] {
    t_lists.head[list] = p->next;
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
  const std::size_t list = nBytes == 0 ? 1 : (nBytes + kStep - 1) / kStep;
  if (!t_lists.registered) [[unlikely]]
    RegisterThread();
  Free* block = static_cast<Free*>(p);
  block->next = t_lists.head[list];
  t_lists.head[list] = block;
}

#endif

}  // namespace laminate
