#pragma once
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace laminate {

/// The six bytes that are white space in the C locale, whatever the locale.
constexpr bool IsWhiteSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// Which of 64 bytes belong to the set, the first byte in the lowest bit.
template <char... kSet>
std::uint64_t MatchPlainly(const char* p) {
  std::uint64_t mask = 0;
  for (unsigned i = 0; i < 64; ++i) mask |= std::uint64_t{((p[i] == kSet) || ...)} << i;
  return mask;
}

#if defined(__SSE2__)
template <char... kSet>
std::uint64_t Match(const char* p) {
  std::uint64_t mask = 0;
  for (unsigned i = 0; i < 4; ++i) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 16 * i));
    __m128i found = _mm_setzero_si128();
    ((found = _mm_or_si128(found, _mm_cmpeq_epi8(bytes, _mm_set1_epi8(kSet)))), ...);
    mask |= std::uint64_t{static_cast<unsigned>(_mm_movemask_epi8(found))} << (16 * i);
  }
  return mask;
}
#else
template <char... kSet>
std::uint64_t Match(const char* p) {
  return MatchPlainly<kSet...>(p);
}
#endif

/// Walks over those bytes of a text that belong to a small set, 64 bytes at a time.
template <char... kSet>
class ByteScan {
 public:
  ByteScan() = default;
  ByteScan(const char* begin, const char* end) : m_block(begin), m_end(end) { Load(); }
  /// The next byte of the set; the text's end when there is none left.
  const char* Next() {
    while (m_mask == 0) {
      if (m_end - m_block <= 64) return m_end;
      m_block += 64;
      Load();
    }
    const char* p = m_block + std::countr_zero(m_mask);
    m_mask &= m_mask - 1;
    return p;
  }

 private:
  void Load() {
    const std::ptrdiff_t left = m_end - m_block;
    if (left >= 64) [[likely]] {
      m_mask = Match<kSet...>(m_block);
      return;
    }
    char last[64] = {};
    if (left > 0) std::memcpy(last, m_block, static_cast<std::size_t>(left));
    // Bytes behind the end do not count, even if the set holds NUL.
    m_mask = Match<kSet...>(last) & ((std::uint64_t{1} << left) - 1);
  }

  const char* m_block = nullptr;
  const char* m_end = nullptr;
  std::uint64_t m_mask = 0;
};

}  // namespace laminate
