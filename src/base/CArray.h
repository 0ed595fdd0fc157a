#pragma once
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

#include "base/CException.h"
#include "base/CObject.h"
#include "base/Platform.h"
#include "base/Pool.h"

namespace laminate {

/// The archive form of an array of plain values or of pointers: the count, then each element's bytes. Pointers mean
/// nothing in another process: they are stored as zeros, and on loading they are read over and none is kept.
void StoreRawElements(CArchive& ar, const void* pData, std::uint64_t nCount, std::size_t nElementSize, bool bPointers);
std::uint64_t LoadRawCount(CArchive& ar);
void LoadRawBytes(CArchive& ar, void* pData, std::uint64_t nBytes);
void SkipRawBytes(CArchive& ar, std::uint64_t nCount, std::size_t nElementSize);
bool ArchiveIsStoring(const CArchive& ar);

}  // namespace laminate

/// The platform's growing array of values. Element access by index, `SetAt`, `RemoveAt` and `InsertAt` raise
/// `CInvalidArgException` when the index is out of range; failed allocation raises `CMemoryException`. Whatever is
/// raised while an array grows, by an element's copy too, leaves it as it was; only elements whose move or assignment
/// raises may be left in disorder by `RemoveAt`. Growth is geometric, so appending is linear in all. The array cannot
/// be copied (`Copy` and `Append` copy elements); classes with value semantics derive from it.
template <class TYPE, class ARG_TYPE = const TYPE&>
class CArray : public CObject {
 public:
  CArray() = default;
  ~CArray() override { Free(); }

  INT_PTR GetSize() const noexcept { return static_cast<INT_PTR>(m_nSize); }
  INT_PTR GetCount() const noexcept { return static_cast<INT_PTR>(m_nSize); }
  INT_PTR GetUpperBound() const noexcept { return static_cast<INT_PTR>(m_nSize) - 1; }
  bool IsEmpty() const noexcept { return m_nSize == 0; }

  /// Grows with default elements or shrinks; a negative size raises. `nGrowBy` is taken and has no effect.
  void SetSize(INT_PTR nNewSize, INT_PTR nGrowBy = -1);
  /// Gives unused capacity back; when there is no memory for a smaller block, the array keeps what it has.
  void FreeExtra();
  void RemoveAll() { SetSize(0, -1); }
  /// Makes room for so many elements in all, so that adding up to them moves none.
  void Preallocate(std::size_t nSize) { Reserve(nSize); }

  const TYPE& GetAt(INT_PTR n) const { return At(n); }
  TYPE& GetAt(INT_PTR n) { return At(n); }
  const TYPE& ElementAt(INT_PTR n) const { return At(n); }
  TYPE& ElementAt(INT_PTR n) { return At(n); }
  const TYPE& operator[](INT_PTR n) const { return At(n); }
  TYPE& operator[](INT_PTR n) { return At(n); }
  void SetAt(INT_PTR n, ARG_TYPE value) { At(n) = value; }
  /// As `SetAt`, but an index at or behind the end makes the array grow to it; a negative index raises.
  void SetAtGrow(INT_PTR n, ARG_TYPE value);

  const TYPE* GetData() const noexcept { return m_pData; }
  TYPE* GetData() noexcept { return m_pData; }

  /// Appends; gives the new element's index.
  INT_PTR Add(ARG_TYPE value) {
    if (m_nSize < m_nCapacity) [[likely]] {
      ::new (static_cast<void*>(m_pData + m_nSize)) TYPE(value);
    } else {
      // The value may lie in this array: it is copied before the elements move.
      TYPE copy(value);
      Reserve(std::size_t{m_nSize} + 1);
      ::new (static_cast<void*>(m_pData + m_nSize)) TYPE(std::move_if_noexcept(copy));
    }
    return static_cast<INT_PTR>(m_nSize++);
  }
  /// Appends a value that is made in place. The arguments must not lie in this array.
  template <class... Args>
  TYPE& Emplace(Args&&... args) {
    if (m_nSize >= m_nCapacity) Reserve(std::size_t{m_nSize} + 1);
    TYPE* p = ::new (static_cast<void*>(m_pData + m_nSize)) TYPE(std::forward<Args>(args)...);
    ++m_nSize;
    return *p;
  }
  /// Takes over elements that stand ready in storage of the caller, who keeps it for as long as the array lives. The
  /// array must be empty. It destroys the elements, and moves them to storage of its own when it grows.
  void Borrow(TYPE* pData, std::size_t nSize) noexcept {
    m_pData = pData;
    m_nSize = static_cast<std::uint32_t>(nSize);
  }
  /// False when the elements stand in borrowed storage, or when there are none and never were.
  bool OwnsStorage() const noexcept { return m_nCapacity != 0; }
  /// Appends all elements of another array, or of this one; gives the index of the first.
  INT_PTR Append(const CArray& src);
  /// Becomes equal to another array; itself changes nothing.
  void Copy(const CArray& src);
  /// Inserts the value `nCount` times; behind the end the array first grows to `n`. A count below 1 raises.
  void InsertAt(INT_PTR n, ARG_TYPE value, INT_PTR nCount = 1);
  /// Inserts all elements of another array, or of this one. A null array raises; an empty one changes nothing.
  void InsertAt(INT_PTR nStart, const CArray* pNewArray);
  /// Removes `nCount` elements, which must all be there; 0 of them may be removed at the end too.
  void RemoveAt(INT_PTR n, INT_PTR nCount = 1);

  /// The count in `WriteCount` form, then the elements' bytes; see `laminate::StoreRawElements`. Elements that are
  /// neither
  /// numbers nor pointers raise.
  void Serialize(CArchive& ar) override;

  TYPE* begin() noexcept { return m_pData; }
  TYPE* end() noexcept { return m_pData + m_nSize; }
  const TYPE* begin() const noexcept { return m_pData; }
  const TYPE* end() const noexcept { return m_pData + m_nSize; }

 protected:
  void Swap(CArray& other) noexcept {
    std::swap(m_pData, other.m_pData);
    std::swap(m_nSize, other.m_nSize);
    std::swap(m_nCapacity, other.m_nCapacity);
  }

 private:
  TYPE& At(INT_PTR n) const {
    if (static_cast<std::uint64_t>(n) >= m_nSize) [[unlikely]]
      AfxThrowInvalidArgException();
    return m_pData[n];
  }
  // Appends another array's elements; what is left of them there is of no use.
  void TakeAll(CArray& tail);
  // The same at a position up to the end.
  void InsertAll(INT_PTR n, CArray& added);
  void Reserve(std::size_t nMinimum);
  void Reallocate(std::size_t nCapacity);
  void Free() noexcept {
    std::destroy_n(m_pData, m_nSize);
    // Elements without capacity stand in borrowed storage.
    if (m_nCapacity != 0) laminate::PoolFree(m_pData, m_nCapacity * sizeof(TYPE));
    m_pData = nullptr;
    m_nSize = m_nCapacity = 0;
  }
  static constexpr std::size_t kMaxSize =
      std::min(static_cast<std::size_t>(std::numeric_limits<INT_PTR>::max()) / sizeof(TYPE),
               std::size_t{std::numeric_limits<std::uint32_t>::max()});

  TYPE* m_pData = nullptr;
  // In 32 bits: most arrays of a design hold one or two elements, and there are very many of them.
  std::uint32_t m_nSize = 0;
  std::uint32_t m_nCapacity = 0;
};

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::Reallocate(std::size_t nCapacity) {
  static_assert(alignof(TYPE) <= laminate::kPoolAlignment);
  TYPE* pNew = nullptr;
  if (nCapacity != 0) {
    if (nCapacity > kMaxSize) AfxThrowMemoryException();
    pNew = static_cast<TYPE*>(laminate::PoolAllocate(nCapacity * sizeof(TYPE)));
    if constexpr (std::is_trivially_copyable_v<TYPE>) {
      if (m_nSize != 0) std::memcpy(static_cast<void*>(pNew), m_pData, m_nSize * sizeof(TYPE));
    } else if constexpr (std::is_nothrow_move_constructible_v<TYPE> || !std::is_copy_constructible_v<TYPE>) {
      std::uninitialized_move_n(m_pData, m_nSize, pNew);
    } else {
      try {
        std::uninitialized_copy_n(m_pData, m_nSize, pNew);
      } catch (...) {
        laminate::PoolFree(pNew, nCapacity * sizeof(TYPE));
        throw;
      }
    }
  }
  const std::uint32_t nSize = m_nSize;
  Free();
  m_pData = pNew;
  m_nSize = nSize;
  m_nCapacity = static_cast<std::uint32_t>(nCapacity);
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::Reserve(std::size_t nMinimum) {
  if (nMinimum <= m_nCapacity) return;
  // The first steps are small, since most arrays of a design hold one or two elements.
  const std::size_t nOld = m_nCapacity;
  const std::size_t nGrown = std::min(nOld < 4 ? 2 * nOld : nOld + nOld / 2, kMaxSize);
  Reallocate(std::max(nMinimum, nGrown));
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::SetSize(INT_PTR nNewSize, INT_PTR) {
  if (nNewSize < 0) AfxThrowInvalidArgException();
  const auto nNew = static_cast<std::size_t>(nNewSize);
  if (nNew == 0) {
    Free();
  } else if (nNew <= m_nSize) {
    std::destroy(m_pData + nNew, m_pData + m_nSize);
    m_nSize = static_cast<std::uint32_t>(nNew);
  } else {
    if (nNew > kMaxSize) AfxThrowMemoryException();
    Reserve(nNew);
    std::uninitialized_value_construct(m_pData + m_nSize, m_pData + nNew);
    m_nSize = static_cast<std::uint32_t>(nNew);
  }
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::FreeExtra() {
  if (m_nCapacity == m_nSize) return;
  try {
    Reallocate(m_nSize);
  } catch (const CMemoryException&) {
    // Nothing is lost: the room serves later elements.
  }
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::SetAtGrow(INT_PTR n, ARG_TYPE value) {
  if (n < 0) AfxThrowInvalidArgException();
  if (n == GetSize()) {
    Add(value);
  } else if (n < GetSize()) {
    m_pData[n] = value;
  } else {
    if (static_cast<std::size_t>(n) >= kMaxSize) AfxThrowMemoryException();
    CArray tail;
    tail.SetSize(n - GetSize());
    tail.Add(value);
    TakeAll(tail);
  }
}

template <class TYPE, class ARG_TYPE>
INT_PTR CArray<TYPE, ARG_TYPE>::Append(const CArray& src) {
  const std::size_t nOld = m_nSize;
  const std::size_t nMore = src.m_nSize;
  if (nMore > kMaxSize - nOld) AfxThrowMemoryException();
  Reserve(nOld + nMore);
  std::uninitialized_copy_n(src.m_pData, nMore, m_pData + nOld);
  m_nSize = static_cast<std::uint32_t>(nOld + nMore);
  return static_cast<INT_PTR>(nOld);
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::Copy(const CArray& src) {
  if (this == &src) return;
  CArray fresh;
  fresh.Append(src);
  Swap(fresh);
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::TakeAll(CArray& tail) {
  if (tail.m_nSize > kMaxSize - m_nSize) AfxThrowMemoryException();
  Reserve(std::size_t{m_nSize} + tail.m_nSize);
  if constexpr (std::is_nothrow_move_constructible_v<TYPE>) {
    std::uninitialized_move_n(tail.m_pData, tail.m_nSize, m_pData + m_nSize);
  } else {
    std::uninitialized_copy_n(tail.m_pData, tail.m_nSize, m_pData + m_nSize);
  }
  m_nSize += tail.m_nSize;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::InsertAt(INT_PTR n, ARG_TYPE value, INT_PTR nCount) {
  if (n < 0 || nCount <= 0) AfxThrowInvalidArgException();
  // Made apart: the value may lie in this array, and its copy may raise.
  CArray added;
  if (n > GetSize()) added.SetSize(n - GetSize());
  if (static_cast<std::size_t>(nCount) > kMaxSize - added.m_nSize) AfxThrowMemoryException();
  added.Reserve(std::size_t{added.m_nSize} + static_cast<std::size_t>(nCount));
  for (INT_PTR i = 0; i < nCount; ++i) added.Add(value);
  InsertAll(std::min(n, GetSize()), added);
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::InsertAt(INT_PTR nStart, const CArray* pNewArray) {
  if (pNewArray == nullptr || nStart < 0) AfxThrowInvalidArgException();
  if (pNewArray->IsEmpty()) return;
  CArray added;
  if (nStart > GetSize()) added.SetSize(nStart - GetSize());
  added.Append(*pNewArray);
  InsertAll(std::min(nStart, GetSize()), added);
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::InsertAll(INT_PTR n, CArray& added) {
  constexpr bool bSafe = std::is_nothrow_move_constructible_v<TYPE> && std::is_nothrow_move_assignable_v<TYPE>;
  if constexpr (bSafe) {
    TakeAll(added);
    std::rotate(m_pData + n, m_pData + m_nSize - added.m_nSize, m_pData + m_nSize);
  } else {
    CArray fresh;
    fresh.Reserve(std::size_t{m_nSize} + added.m_nSize);
    for (INT_PTR i = 0; i < n; ++i) fresh.Emplace(m_pData[i]);
    fresh.TakeAll(added);
    for (INT_PTR i = n; i < GetSize(); ++i) fresh.Emplace(m_pData[i]);
    Swap(fresh);
  }
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::RemoveAt(INT_PTR n, INT_PTR nCount) {
  if (n < 0 || nCount < 0 || n > GetSize() || nCount > GetSize() - n) AfxThrowInvalidArgException();
  if (nCount == 0) return;  // an element must not be moved onto itself
  std::move(m_pData + n + nCount, m_pData + m_nSize, m_pData + n);
  std::destroy(m_pData + m_nSize - nCount, m_pData + m_nSize);
  m_nSize -= static_cast<std::uint32_t>(nCount);
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::Serialize(CArchive& ar) {
  CObject::Serialize(ar);
  // A flag that holds neither 0 nor 1 must not come from a file.
  if constexpr (std::is_pointer_v<TYPE> || (std::is_arithmetic_v<TYPE> && !std::is_same_v<TYPE, bool>)) {
    constexpr bool bPointers = std::is_pointer_v<TYPE>;
    if (laminate::ArchiveIsStoring(ar)) {
      laminate::StoreRawElements(ar, m_pData, m_nSize, sizeof(TYPE), bPointers);
      return;
    }
    std::uint64_t nLeft = laminate::LoadRawCount(ar);
    if constexpr (bPointers) {
      SetSize(0, -1);
      laminate::SkipRawBytes(ar, nLeft, sizeof(TYPE));
    } else {
      SetSize(0, -1);
      // In steps, so that a count beyond what the archive holds does not take memory for it.
      constexpr std::uint64_t kStep = 64 * 1024 / sizeof(TYPE);
      while (nLeft != 0) {
        const std::uint64_t nNow = std::min(nLeft, kStep);
        const INT_PTR nOld = GetSize();
        SetSize(nOld + static_cast<INT_PTR>(nNow));
        try {
          laminate::LoadRawBytes(ar, m_pData + nOld, nNow * sizeof(TYPE));
        } catch (...) {
          SetSize(nOld);
          throw;
        }
        nLeft -= nNow;
      }
    }
  } else {
    AfxThrowInvalidArgException();
  }
}
