#pragma once
#include <cstddef>

namespace laminate {

/// Memory for the many small objects of a design. Blocks of up to `kPoolLimit` bytes come from free lists of the
/// calling thread, larger ones from the C++ heap; either way a failure raises `CMemoryException`. A block may be
/// freed on another thread than its own: what a thread frees beyond its own need, and what it leaves when it ends,
/// serves the others. Small blocks are aligned to 8 bytes. The pool keeps its memory until the process ends. Sanitizer
/// builds take every block from the heap, so that they see it.
void* PoolAllocate(std::size_t nBytes);
/// `nBytes` is what the block was made with. Null is no block.
void PoolFree(void* p, std::size_t nBytes) noexcept;

inline constexpr std::size_t kPoolLimit = 512;
inline constexpr std::size_t kPoolAlignment = 8;

/// Empty mixin: its heirs are made and freed through the pool. The size that reaches `operator delete` is that of the
/// object's own class, since all heirs have virtual destructors or are final. An heir whose members need a stricter
/// alignment than `kPoolAlignment` declares operators of its own. There is no form of `new` that gives null.
struct Pooled {
  static void* operator new(std::size_t nBytes) { return PoolAllocate(nBytes); }
  static void* operator new(std::size_t, void* p) noexcept { return p; }
  static void operator delete(void* p, std::size_t nBytes) noexcept { PoolFree(p, nBytes); }
  static void operator delete(void*, void*) noexcept {}
};

}  // namespace laminate
