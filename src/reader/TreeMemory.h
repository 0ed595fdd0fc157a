#pragma once
#include <cstddef>
#include <cstdint>

namespace laminate {

/// Memory for the forms of trees. They are made one after another and die together, so blocks are cut from a stretch of
/// memory as they come and are never reused one by one: a stretch is used anew when all that was cut from it is free.
/// Up to 128 MiB of stretches without use stay with the process for later trees. Any thread may free a block. Failure
/// raises `CMemoryException`. Blocks are aligned to 8 bytes. Sanitizer builds take every block from the heap, so that
/// they see it.
class TreeMemory {
 public:
  /// That of the calling thread; it is the thread's alone.
  static TreeMemory& OfThisThread() noexcept;

  void* Allocate(std::size_t nBytes) {
    nBytes = (nBytes + kAlignment - 1) / kAlignment * kAlignment;
    if (static_cast<std::size_t>(m_end - m_at) < nBytes) [[unlikely]] {
      return AllocateSlowly(nBytes);
    }
    void* p = m_at;
    m_at += nBytes;
    ++m_nMade;
    PrefetchForWriting(m_at);
    return p;
  }
  /// Frees a block that any thread's memory gave; null is none.
  void Free(void* p) noexcept;

  constexpr TreeMemory() = default;
  TreeMemory(const TreeMemory&) = delete;
  TreeMemory& operator=(const TreeMemory&) = delete;

 private:
  struct Stretch;
  struct Store;
  struct ThreadEnd;
  enum class State : std::uint8_t { fresh, live, ended };

  static constexpr std::size_t kAlignment = 8;

  // What comes next is on its way into the cache when it is needed.
  static void PrefetchForWriting(const void* p) {
    // In numbers: what is ahead may lie behind the stretch.
    constexpr std::uintptr_t kLine = 64;
    const std::uintptr_t ahead = reinterpret_cast<std::uintptr_t>(p) + 2048;
    __builtin_prefetch(reinterpret_cast<const void*>(ahead), 1);
    __builtin_prefetch(reinterpret_cast<const void*>(ahead + kLine), 1);
  }
  static Stretch* StretchOf(void* p) noexcept;
  static void Subtract(Stretch* stretch, std::uint32_t n) noexcept;
  void* AllocateSlowly(std::size_t nBytes);
  void Register();
  void TellFreed() noexcept;
  void StopCutting() noexcept;

  // The stretch that this thread cuts from, and how many of its blocks this thread has not freed.
  char* m_at = nullptr;
  char* m_end = nullptr;
  Stretch* m_cutting = nullptr;
  std::uint32_t m_nMade = 0;
  // The stretch whose blocks this thread frees, and how many it has freed without telling the stretch.
  std::uint32_t m_nFreed = 0;
  Stretch* m_freeing = nullptr;
  State m_state = State::fresh;
};

}  // namespace laminate
