#pragma once
#include <concepts>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "base/CException.h"
#include "base/Platform.h"

/// The platform's narrow string: a sequence of bytes with no encoding of its own and value semantics.
///
/// - 16 bytes in size; up to 15 bytes are held inside, longer texts are shared between copies by an atomic count, so
///   that copies may be used in different threads.
/// - NUL is an ordinary byte where text is stored and compared. Operations that take a `const char*` see it up to
///   its first NUL; a null pointer is the empty text.
/// - White space is the six bytes of the C locale and letters are those of ASCII, whatever the locale.
/// - Positions and counts are in bytes. A negative or too large position raises `CInvalidArgException` where the
///   operation's comment says so and is clamped to the text elsewhere.
/// - Failed allocation raises `CMemoryException`; the text is then as before.
/// - A `CString` cannot be passed to a variadic C function: use `GetString()` there. With g++ this header makes any
///   conditionally-supported construct behind it an error for that; a host that has others of them defines
///   `LAMINATE_NO_VARIADIC_CHECK`.
class CString {
 public:
  CString() noexcept { SetInline(0); }
  CString(const CString& s) noexcept { CopyFrom(s); }
  CString(CString&& s) noexcept {
    std::memcpy(&m_rep, &s.m_rep, sizeof m_rep);
    s.SetInline(0);
  }
  CString(const char* sz) : CString(sz ? std::string_view(sz) : std::string_view()) {}
  CString(const char* sz, int nLength)
      : CString(sz && nLength > 0 ? std::string_view(sz, static_cast<std::size_t>(nLength)) : std::string_view()) {}
  explicit CString(std::string_view s) { Assign(s); }
  /// The same for a text from whose first byte on at least 16 bytes can be read: a short one is copied in one step.
  struct FromPadded {};
  CString(FromPadded, std::string_view s) {
    if (s.size() <= kInlineLength) [[likely]] {
      std::memcpy(m_rep.text, s.data(), sizeof m_rep.text);
      SetInline(s.size());
    } else {
      AssignHeap(s);
    }
  }
  explicit CString(char ch, int nRepeat = 1);
  ~CString() {
    if (IsHeap()) Release();
  }

  CString& operator=(const CString& s) noexcept {
    if (this != &s) {
      if (IsHeap()) Release();
      CopyFrom(s);
    }
    return *this;
  }
  CString& operator=(CString&& s) noexcept {
    if (this != &s) {
      if (IsHeap()) Release();
      std::memcpy(&m_rep, &s.m_rep, sizeof m_rep);
      s.SetInline(0);
    }
    return *this;
  }
  CString& operator=(const char* sz) { return *this = sz ? std::string_view(sz) : std::string_view(); }
  CString& operator=(std::string_view s) {
    if (s.size() > kInlineLength || IsHeap()) return AssignSlowly(s);
    CopyShort(m_rep.text, s);
    SetInline(s.size());
    return *this;
  }
  /// The same for a text of which `FromPadded` holds. It is not this text's own.
  void AssignPadded(std::string_view s) {
    if (s.size() > kInlineLength) {
      AssignSlowly(s);
      return;
    }
    if (IsHeap()) Release();
    std::memcpy(m_rep.text, s.data(), sizeof m_rep.text);
    SetInline(s.size());
  }
  CString& operator=(char ch) { return *this = std::string_view(&ch, 1); }

  // ---- reading ----
  int GetLength() const noexcept { return static_cast<int>(Size()); }
  bool IsEmpty() const noexcept { return Size() == 0; }
  /// The bytes, followed by a NUL. Valid until the text changes.
  const char* GetString() const noexcept { return IsHeap() ? m_rep.heap.block->Text() : m_rep.text; }
  operator const char*() const noexcept { return GetString(); }
  /// All bytes, NULs included. Valid until the text changes.
  std::string_view View() const noexcept { return {GetString(), Size()}; }
  /// The bytes up to the first NUL.
  std::string_view CView() const noexcept {
    const std::string_view s = View();
    const std::size_t n = s.find('\0');
    return n == std::string_view::npos ? s : s.substr(0, n);
  }
  /// The byte at a position from 0 to the length, where NUL stands; any other position raises.
  char GetAt(int n) const {
    if (n < 0 || static_cast<std::size_t>(n) > Size()) AfxThrowInvalidArgException();
    return GetString()[n];
  }
  template <std::integral Index>
  char operator[](Index n) const {
    if (!IndexFits(n)) AfxThrowInvalidArgException();
    return GetString()[n];
  }

  // ---- comparing: byte values, then length; negative, 0 or positive ----
  int Compare(std::string_view s) const noexcept;
  int Compare(const CString& s) const noexcept { return Compare(s.View()); }
  int Compare(const char* sz) const noexcept { return Compare(sz ? std::string_view(sz) : std::string_view()); }
  int CompareNoCase(std::string_view s) const noexcept;
  int CompareNoCase(const CString& s) const noexcept { return CompareNoCase(s.View()); }
  int CompareNoCase(const char* sz) const noexcept {
    return CompareNoCase(sz ? std::string_view(sz) : std::string_view());
  }

  // ---- searching: a position, or -1 ----
  int Find(char ch, int nStart = 0) const noexcept;
  int Find(const char* szSub, int nStart = 0) const noexcept;
  int Find(const CString& sSub, int nStart = 0) const noexcept;
  int Find(std::string_view sSub, int nStart = 0) const noexcept;
  int ReverseFind(char ch) const noexcept;
  int FindOneOf(const char* szSet) const noexcept;

  // ---- parts: negative counts and positions count as 0, too large ones end at the text's end ----
  CString Left(int nCount) const;
  CString Right(int nCount) const;
  CString Mid(int nFirst) const;
  CString Mid(int nFirst, int nCount) const;
  CString SpanIncluding(const char* szSet) const;
  CString SpanExcluding(const char* szSet) const;
  /// The next token from `nStart`, at the bytes of `szSet`; runs of them yield no empty tokens. `nStart` moves
  /// behind the token, and becomes -1 with an empty result when there is none left. A negative `nStart` raises.
  CString Tokenize(const char* szSet, int& nStart) const;

  // ---- changing in place; those that give a reference give the text itself ----
  void Empty() noexcept;
  /// Replaces the byte at a position below the length; any other position raises.
  void SetAt(int n, char ch);
  CString& operator+=(const CString& s) { return *this += s.View(); }
  CString& operator+=(const char* sz) { return *this += sz ? std::string_view(sz) : std::string_view(); }
  CString& operator+=(std::string_view s);
  CString& operator+=(char ch) {
    AppendChar(ch);
    return *this;
  }
  void Append(const char* sz) { *this += sz; }
  void Append(const char* sz, int nLength);
  void Append(const CString& s) { *this += s; }
  void AppendChar(char ch);
  CString& Trim();
  CString& Trim(char ch);
  CString& Trim(const char* szSet);
  CString& TrimLeft();
  CString& TrimLeft(char ch);
  CString& TrimLeft(const char* szSet);
  CString& TrimRight();
  CString& TrimRight(char ch);
  CString& TrimRight(const char* szSet);
  CString& MakeUpper();
  CString& MakeLower();
  CString& MakeReverse();
  /// Replaces every occurrence, in one pass from left to right; gives their number. An empty `szOld` replaces nothing.
  int Replace(char chOld, char chNew);
  int Replace(const char* szOld, const char* szNew);
  int Replace(const CString& sOld, const CString& sNew) { return Replace(sOld.View(), sNew.View()); }
  int Replace(const CString& sOld, const char* szNew) { return Replace(sOld, CString(szNew)); }
  int Replace(const char* szOld, const CString& sNew) { return Replace(CString(szOld), sNew); }
  int Replace(std::string_view sOld, std::string_view sNew);
  /// Removes every `ch`; gives their number.
  int Remove(char ch);
  /// Inserts at a position clamped to the text; gives the new length.
  int Insert(int nPos, char ch);
  int Insert(int nPos, const char* sz);
  int Insert(int nPos, const CString& s) { return Insert(nPos, s.View()); }
  int Insert(int nPos, std::string_view s);
  /// Deletes up to `nCount` bytes from a position clamped to the text; gives the new length.
  int Delete(int nPos, int nCount = 1);
  /// Shortens the text to at most `nLength` bytes; a negative length raises.
  void Truncate(int nLength);
  /// Makes room for `nLength` bytes, so that growing to them allocates no more.
  void Preallocate(int nLength);

  /// As the C library's printf family in the C locale, whatever locale is set.
  void Format(const char* szFormat, ...) __attribute__((format(printf, 2, 3)));
  void AppendFormat(const char* szFormat, ...) __attribute__((format(printf, 2, 3)));
  void FormatV(const char* szFormat, std::va_list args) __attribute__((format(printf, 2, 0)));

  /// A writable buffer of at least `nMinLength` bytes and a NUL, holding the text. Only writing to it and
  /// `ReleaseBuffer` may follow. A negative length raises.
  char* GetBuffer(int nMinLength = 0);
  /// Ends the use of the buffer: the length is `nNewLength`, or with -1 that up to the first NUL. Any other negative
  /// length, or one beyond the buffer, raises.
  void ReleaseBuffer(int nNewLength = -1);
  /// The same with the length set at once; what the text grows by is NUL bytes.
  char* GetBufferSetLength(int nLength);

  friend bool operator==(const CString& a, const CString& b) noexcept { return a.View() == b.View(); }
  friend bool operator==(const CString& a, const char* b) noexcept {
    return a.View() == (b ? std::string_view(b) : std::string_view());
  }
  friend bool operator==(const CString& a, std::string_view b) noexcept { return a.View() == b; }
  friend bool operator<(const CString& a, const CString& b) noexcept { return a.Compare(b) < 0; }
  friend bool operator>(const CString& a, const CString& b) noexcept { return a.Compare(b) > 0; }
  friend bool operator<=(const CString& a, const CString& b) noexcept { return a.Compare(b) <= 0; }
  friend bool operator>=(const CString& a, const CString& b) noexcept { return a.Compare(b) >= 0; }
  friend bool operator<(const CString& a, const char* b) noexcept { return a.Compare(b) < 0; }
  friend bool operator>(const CString& a, const char* b) noexcept { return a.Compare(b) > 0; }
  friend bool operator<=(const CString& a, const char* b) noexcept { return a.Compare(b) <= 0; }
  friend bool operator>=(const CString& a, const char* b) noexcept { return a.Compare(b) >= 0; }
  friend bool operator<(const char* a, const CString& b) noexcept { return b.Compare(a) > 0; }
  friend bool operator>(const char* a, const CString& b) noexcept { return b.Compare(a) < 0; }
  friend bool operator<=(const char* a, const CString& b) noexcept { return b.Compare(a) >= 0; }
  friend bool operator>=(const char* a, const CString& b) noexcept { return b.Compare(a) <= 0; }
  friend CString operator+(const CString& a, const CString& b) { return Join(a.View(), b.View()); }
  friend CString operator+(const CString& a, const char* b) {
    return Join(a.View(), b ? std::string_view(b) : std::string_view());
  }
  friend CString operator+(const char* a, const CString& b) {
    return Join(a ? std::string_view(a) : std::string_view(), b.View());
  }
  friend CString operator+(const CString& a, char b) { return Join(a.View(), std::string_view(&b, 1)); }
  friend CString operator+(char a, const CString& b) { return Join(std::string_view(&a, 1), b.View()); }

  /// Longest text that is held without an allocation.
  static constexpr std::size_t kInlineLength = 15;

 private:
  // A text outside: this head, then the bytes and room for a NUL.
  struct Block {
    int count;  // of the strings that share it; only touched atomically
    std::uint32_t length;
    std::uint32_t capacity;
    char* Text() noexcept { return reinterpret_cast<char*>(this + 1); }
    std::size_t Bytes() const noexcept { return sizeof(Block) + capacity + 1; }
  };
  struct HeapPart {
    Block* block;
    char unused[7];
    std::uint8_t tag;
  };
  union Rep {
    char text[16];  // the last byte is 15 minus the length: a text of 15 bytes ends in its own NUL
    HeapPart heap;
  };

  static constexpr std::uint8_t kHeapTag = 0xFF;
  // Without this the length would not fit the platform's 32-bit one.
  static constexpr std::size_t kMaxLength = 0x7FFFFFF0;

  static CString Join(std::string_view a, std::string_view b);
  template <std::integral Index>
  bool IndexFits(Index n) const noexcept {
    if constexpr (std::signed_integral<Index>) {
      if (n < 0) return false;
    }
    return static_cast<std::uint64_t>(n) <= Size();
  }

  bool IsHeap() const noexcept { return static_cast<std::uint8_t>(m_rep.text[15]) == kHeapTag; }
  std::size_t Size() const noexcept {
    return IsHeap() ? m_rep.heap.block->length : kInlineLength - static_cast<std::uint8_t>(m_rep.text[15]);
  }
  void SetInline(std::size_t nLength) noexcept {
    m_rep.text[nLength] = '\0';
    m_rep.text[15] = static_cast<char>(kInlineLength - nLength);
  }
  void CopyFrom(const CString& s) noexcept {
    std::memcpy(&m_rep, &s.m_rep, sizeof m_rep);
    if (IsHeap()) __atomic_add_fetch(&m_rep.heap.block->count, 1, __ATOMIC_RELAXED);
  }
  // Copies up to 15 bytes in pieces that the processor can forward as they are, where a copy of any length would be a
  // call. All are read before the first is written.
  static void CopyShort(char* pTo, std::string_view s) noexcept {
    const auto twice = [pTo, s]<class Piece>(Piece first) {
      Piece last;
      std::memcpy(&first, s.data(), sizeof first);
      std::memcpy(&last, s.data() + s.size() - sizeof last, sizeof last);
      std::memcpy(pTo, &first, sizeof first);
      std::memcpy(pTo + s.size() - sizeof last, &last, sizeof last);
    };
    if (s.size() >= sizeof(std::uint64_t)) {
      twice(std::uint64_t{});
    } else if (s.size() >= sizeof(std::uint32_t)) {
      twice(std::uint32_t{});
    } else if (s.size() >= sizeof(std::uint16_t)) {
      twice(std::uint16_t{});
    } else if (!s.empty()) {
      *pTo = s[0];
    }
  }
  void Assign(std::string_view s) {
    if (s.size() <= kInlineLength) {
      CopyShort(m_rep.text, s);
      SetInline(s.size());
    } else {
      AssignHeap(s);
    }
  }
  void AssignHeap(std::string_view s);
  CString& AssignSlowly(std::string_view s);
  void Release() noexcept;
  static Block* NewBlock(std::size_t nCapacity);
  void Adopt(Block* block) noexcept {
    m_rep.heap.block = block;
    m_rep.heap.tag = kHeapTag;
  }
  // Of a text outside.
  bool IsShared() const noexcept;
  // The bytes, owned by this string alone and with room for `nCapacity`.
  char* Writable(std::size_t nCapacity);
  void SetSize(std::size_t nLength) noexcept;
  bool Aliases(std::string_view s) const noexcept;
  void AppendFormatV(const char* szFormat, __builtin_va_list args);

  Rep m_rep;
};

static_assert(sizeof(CString) == 16);

// g++ passes an object through "..." by address, where it would be taken for the text itself. Other compilers refuse
// that by themselves; from here on it does too.
#if defined(__GNUC__) && !defined(__clang__) && !defined(LAMINATE_NO_VARIADIC_CHECK)
#pragma GCC diagnostic error "-Wconditionally-supported"
#endif
