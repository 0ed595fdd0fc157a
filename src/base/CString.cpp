#include "base/CString.h"

#include <locale.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <functional>

#include "base/Pool.h"

namespace {

constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";

std::string_view Arg(const char* sz) { return sz ? std::string_view(sz) : std::string_view(); }

char AsciiUpper(char ch) { return ch >= 'a' && ch <= 'z' ? static_cast<char>(ch - 'a' + 'A') : ch; }
char AsciiLower(char ch) { return ch >= 'A' && ch <= 'Z' ? static_cast<char>(ch - 'A' + 'a') : ch; }

// Formats in the C locale for as long as the object lives; other threads keep theirs.
class CLocaleScope {
 public:
  CLocaleScope() : m_old(uselocale(TheCLocale())) {}
  ~CLocaleScope() { uselocale(m_old); }
  CLocaleScope(const CLocaleScope&) = delete;
  CLocaleScope& operator=(const CLocaleScope&) = delete;

 private:
  static locale_t TheCLocale() {
    static const locale_t theLocale = newlocale(LC_ALL_MASK, "C", nullptr);
    return theLocale;
  }
  locale_t m_old;
};

}  // namespace

CString::CString(char ch, int nRepeat) {
  SetInline(0);
  if (nRepeat > 0) {
    const auto n = static_cast<std::size_t>(nRepeat);
    std::memset(Writable(n), ch, n);
    SetSize(n);
  }
}

CString::Block* CString::NewBlock(std::size_t nCapacity) {
  if (nCapacity > kMaxLength) AfxThrowMemoryException();
  // The whole of the last step of memory is room.
  constexpr std::size_t kStep = laminate::kPoolAlignment;
  static_assert(alignof(Block) <= kStep);
  const std::size_t nBytes = (sizeof(Block) + nCapacity + 1 + kStep - 1) / kStep * kStep;
  auto* block = static_cast<Block*>(laminate::PoolAllocate(nBytes));
  block->count = 1;
  block->length = 0;
  block->capacity = static_cast<std::uint32_t>(nBytes - sizeof(Block) - 1);
  return block;
}

void CString::AssignHeap(std::string_view s) {
  Block* block = NewBlock(s.size());
  char* text = block->Text();
  std::memcpy(text, s.data(), s.size());
  text[s.size()] = '\0';
  block->length = static_cast<std::uint32_t>(s.size());
  Adopt(block);
}

void CString::Release() noexcept {
  Block* block = m_rep.heap.block;
  if (__atomic_sub_fetch(&block->count, 1, __ATOMIC_ACQ_REL) == 0) laminate::PoolFree(block, block->Bytes());
}

bool CString::IsShared() const noexcept { return __atomic_load_n(&m_rep.heap.block->count, __ATOMIC_ACQUIRE) > 1; }

char* CString::Writable(std::size_t nCapacity) {
  std::size_t nLength = 0;
  std::size_t nNew = nCapacity;
  if (!IsHeap()) {
    if (nCapacity <= kInlineLength) return m_rep.text;
    nLength = Size();
  } else {
    Block* block = m_rep.heap.block;
    const bool bShared = IsShared();
    if (!bShared && block->capacity >= nCapacity) return block->Text();
    nLength = block->length;
    nNew = std::max(nCapacity, nLength);
    // Growing by half makes repeated appending linear.
    if (!bShared) nNew = std::max(nNew, std::min(kMaxLength, block->capacity + std::size_t{block->capacity} / 2));
  }
  Block* fresh = NewBlock(nNew);
  std::memcpy(fresh->Text(), GetString(), nLength + 1);
  fresh->length = static_cast<std::uint32_t>(nLength);
  if (IsHeap()) Release();
  Adopt(fresh);
  return fresh->Text();
}

void CString::SetSize(std::size_t nLength) noexcept {
  if (IsHeap()) {
    m_rep.heap.block->length = static_cast<std::uint32_t>(nLength);
    m_rep.heap.block->Text()[nLength] = '\0';
  } else {
    SetInline(nLength);
  }
}

bool CString::Aliases(std::string_view s) const noexcept {
  const char* first = GetString();
  return !std::less<>()(s.data(), first) && !std::less<>()(first + Size(), s.data());
}

CString& CString::AssignSlowly(std::string_view s) {
  if (s.size() <= kInlineLength) {
    // Over a copy: the bytes may be this text's own.
    char text[kInlineLength];
    if (!s.empty()) std::memcpy(text, s.data(), s.size());
    if (IsHeap()) Release();
    if (!s.empty()) std::memcpy(m_rep.text, text, s.size());
    SetInline(s.size());
  } else if (IsHeap() && !IsShared() && s.size() <= m_rep.heap.block->capacity &&
             m_rep.heap.block->capacity / 2 <= s.size()) {
    // A text that is set again and again keeps its memory, unless that has become far too large.
    std::memmove(m_rep.heap.block->Text(), s.data(), s.size());
    SetSize(s.size());
  } else {
    CString fresh(s);
    *this = std::move(fresh);
  }
  return *this;
}

int CString::Compare(std::string_view s) const noexcept {
  const int n = View().compare(s);
  return n < 0 ? -1 : n > 0 ? 1 : 0;
}

int CString::CompareNoCase(std::string_view s) const noexcept {
  const std::string_view a = View();
  const std::size_t n = std::min(a.size(), s.size());
  for (std::size_t i = 0; i < n; ++i) {
    const auto x = static_cast<unsigned char>(AsciiLower(a[i]));
    const auto y = static_cast<unsigned char>(AsciiLower(s[i]));
    if (x != y) return x < y ? -1 : 1;
  }
  return a.size() == s.size() ? 0 : a.size() < s.size() ? -1 : 1;
}

int CString::Find(char ch, int nStart) const noexcept {
  if (nStart < 0 || nStart >= GetLength()) return -1;
  const std::size_t n = View().find(ch, static_cast<std::size_t>(nStart));
  return n == std::string_view::npos ? -1 : static_cast<int>(n);
}
int CString::Find(std::string_view sSub, int nStart) const noexcept {
  if (nStart < 0 || nStart > GetLength()) return -1;
  const std::size_t n = View().find(sSub, static_cast<std::size_t>(nStart));
  return n == std::string_view::npos ? -1 : static_cast<int>(n);
}
int CString::Find(const char* szSub, int nStart) const noexcept {
  return szSub == nullptr ? -1 : Find(std::string_view(szSub), nStart);
}
int CString::Find(const CString& sSub, int nStart) const noexcept { return Find(sSub.View(), nStart); }
int CString::ReverseFind(char ch) const noexcept {
  const std::size_t n = View().rfind(ch);
  return n == std::string_view::npos ? -1 : static_cast<int>(n);
}
int CString::FindOneOf(const char* szSet) const noexcept {
  const std::size_t n = View().find_first_of(Arg(szSet));
  return n == std::string_view::npos ? -1 : static_cast<int>(n);
}

CString CString::Left(int nCount) const { return Mid(0, nCount); }
CString CString::Right(int nCount) const {
  const int nLength = GetLength();
  nCount = std::clamp(nCount, 0, nLength);
  return Mid(nLength - nCount, nCount);
}
CString CString::Mid(int nFirst) const { return Mid(nFirst, GetLength()); }
CString CString::Mid(int nFirst, int nCount) const {
  const int nLength = GetLength();
  nFirst = std::max(nFirst, 0);
  if (nFirst >= nLength || nCount <= 0) return CString();
  nCount = std::min(nCount, nLength - nFirst);
  if (nCount == nLength) return *this;
  return CString(View().substr(static_cast<std::size_t>(nFirst), static_cast<std::size_t>(nCount)));
}
CString CString::SpanIncluding(const char* szSet) const {
  const std::size_t n = View().find_first_not_of(Arg(szSet));
  return n == std::string_view::npos ? *this : CString(View().substr(0, n));
}
CString CString::SpanExcluding(const char* szSet) const {
  const std::size_t n = View().find_first_of(Arg(szSet));
  return n == std::string_view::npos ? *this : CString(View().substr(0, n));
}

CString CString::Tokenize(const char* szSet, int& nStart) const {
  if (nStart < 0) AfxThrowInvalidArgException();
  const std::string_view s = View();
  const std::string_view set = Arg(szSet);
  const auto start = static_cast<std::size_t>(nStart);
  if (start < s.size()) {
    if (set.empty()) {
      nStart = GetLength();
      return CString(s.substr(start));
    }
    const std::size_t first = s.find_first_not_of(set, start);
    if (first != std::string_view::npos) {
      std::size_t end = s.find_first_of(set, first);
      if (end == std::string_view::npos) end = s.size();
      nStart = static_cast<int>(std::min(end + 1, s.size()));
      return CString(s.substr(first, end - first));
    }
  }
  nStart = -1;
  return CString();
}

void CString::Empty() noexcept {
  if (IsHeap()) Release();
  SetInline(0);
}

void CString::SetAt(int n, char ch) {
  if (n < 0 || n >= GetLength()) AfxThrowInvalidArgException();
  Writable(Size())[n] = ch;
}

CString& CString::operator+=(std::string_view s) {
  if (s.empty()) return *this;
  const std::size_t nOld = Size();
  if (s.size() > kMaxLength - nOld) AfxThrowMemoryException();
  if (Aliases(s)) {
    const CString copy(s);
    return *this += copy.View();
  }
  char* text = Writable(nOld + s.size());
  std::memcpy(text + nOld, s.data(), s.size());
  SetSize(nOld + s.size());
  return *this;
}
void CString::Append(const char* sz, int nLength) {
  if (sz != nullptr && nLength > 0) *this += std::string_view(sz, static_cast<std::size_t>(nLength));
}
void CString::AppendChar(char ch) {
  const std::size_t nOld = Size();
  Writable(nOld + 1)[nOld] = ch;
  SetSize(nOld + 1);
}

CString& CString::Trim() { return TrimRight().TrimLeft(); }
CString& CString::Trim(char ch) { return TrimRight(ch).TrimLeft(ch); }
CString& CString::Trim(const char* szSet) { return TrimRight(szSet).TrimLeft(szSet); }
CString& CString::TrimLeft() { return TrimLeft(kWhiteSpace.data()); }
CString& CString::TrimLeft(char ch) {
  const std::size_t n = View().find_first_not_of(ch);
  if (n != 0) Delete(0, n == std::string_view::npos ? GetLength() : static_cast<int>(n));
  return *this;
}
CString& CString::TrimLeft(const char* szSet) {
  const std::size_t n = View().find_first_not_of(Arg(szSet));
  if (n != 0) Delete(0, n == std::string_view::npos ? GetLength() : static_cast<int>(n));
  return *this;
}
CString& CString::TrimRight() { return TrimRight(kWhiteSpace.data()); }
CString& CString::TrimRight(char ch) {
  Truncate(static_cast<int>(View().find_last_not_of(ch) + 1));
  return *this;
}
CString& CString::TrimRight(const char* szSet) {
  Truncate(static_cast<int>(View().find_last_not_of(Arg(szSet)) + 1));
  return *this;
}

CString& CString::MakeUpper() {
  char* text = Writable(Size());
  std::transform(text, text + Size(), text, AsciiUpper);
  return *this;
}
CString& CString::MakeLower() {
  char* text = Writable(Size());
  std::transform(text, text + Size(), text, AsciiLower);
  return *this;
}
CString& CString::MakeReverse() {
  char* text = Writable(Size());
  std::reverse(text, text + Size());
  return *this;
}

int CString::Replace(char chOld, char chNew) {
  if (chOld == chNew || View().find(chOld) == std::string_view::npos) return 0;
  char* text = Writable(Size());
  int nCount = 0;
  for (std::size_t i = 0, n = Size(); i < n; ++i) {
    if (text[i] == chOld) {
      text[i] = chNew;
      ++nCount;
    }
  }
  return nCount;
}
int CString::Replace(const char* szOld, const char* szNew) { return Replace(Arg(szOld), Arg(szNew)); }
int CString::Replace(std::string_view sOld, std::string_view sNew) {
  const std::string_view s = View();
  std::size_t at = sOld.empty() ? std::string_view::npos : s.find(sOld);
  if (at == std::string_view::npos) return 0;
  CString result;
  int nCount = 0;
  std::size_t done = 0;
  for (; at != std::string_view::npos; at = s.find(sOld, done)) {
    result += s.substr(done, at - done);
    result += sNew;
    done = at + sOld.size();
    ++nCount;
  }
  result += s.substr(done);
  *this = std::move(result);
  return nCount;
}

int CString::Remove(char ch) {
  if (View().find(ch) == std::string_view::npos) return 0;
  char* text = Writable(Size());
  const std::size_t nOld = Size();
  const auto nNew = static_cast<std::size_t>(std::remove(text, text + nOld, ch) - text);
  SetSize(nNew);
  return static_cast<int>(nOld - nNew);
}

int CString::Insert(int nPos, char ch) { return Insert(nPos, std::string_view(&ch, 1)); }
int CString::Insert(int nPos, const char* sz) { return Insert(nPos, Arg(sz)); }
int CString::Insert(int nPos, std::string_view s) {
  const std::size_t nOld = Size();
  const std::size_t at = nPos < 0 ? 0 : std::min(static_cast<std::size_t>(nPos), nOld);
  if (s.empty()) return GetLength();
  if (s.size() > kMaxLength - nOld) AfxThrowMemoryException();
  if (Aliases(s)) {
    const CString copy(s);
    return Insert(nPos, copy.View());
  }
  char* text = Writable(nOld + s.size());
  std::memmove(text + at + s.size(), text + at, nOld - at);
  std::memcpy(text + at, s.data(), s.size());
  SetSize(nOld + s.size());
  return GetLength();
}

int CString::Delete(int nPos, int nCount) {
  const std::size_t nOld = Size();
  const std::size_t at = nPos < 0 ? 0 : static_cast<std::size_t>(nPos);
  if (nCount <= 0 || at >= nOld) return GetLength();
  const std::size_t n = std::min(static_cast<std::size_t>(nCount), nOld - at);
  if (at == 0 || at + n == nOld) {
    // What is left is one piece, which becomes short or need not be copied twice when the text is shared.
    *this = View().substr(at == 0 ? n : 0, nOld - n);
    return GetLength();
  }
  char* text = Writable(nOld);
  std::memmove(text + at, text + at + n, nOld - at - n);
  SetSize(nOld - n);
  return GetLength();
}

void CString::Truncate(int nLength) {
  if (nLength < 0) AfxThrowInvalidArgException();
  const auto n = static_cast<std::size_t>(nLength);
  if (n < Size()) *this = View().substr(0, n);
}

void CString::Preallocate(int nLength) {
  if (nLength > GetLength()) Writable(static_cast<std::size_t>(nLength));
}

void CString::Format(const char* szFormat, ...) {
  CString result;
  va_list args;
  va_start(args, szFormat);
  result.AppendFormatV(szFormat, args);
  va_end(args);
  *this = std::move(result);
}
void CString::FormatV(const char* szFormat, std::va_list args) {
  CString result;
  result.AppendFormatV(szFormat, args);
  *this = std::move(result);
}
void CString::AppendFormat(const char* szFormat, ...) {
  va_list args;
  va_start(args, szFormat);
  AppendFormatV(szFormat, args);
  va_end(args);
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"  // the callers' attribute has checked it
void CString::AppendFormatV(const char* szFormat, __builtin_va_list args) {
  if (szFormat == nullptr) AfxThrowInvalidArgException();
  const CLocaleScope scope;
  va_list again;
  va_copy(again, args);
  char szShort[512];
  const int n = std::vsnprintf(szShort, sizeof szShort, szFormat, args);
  // Into a text of its own: an argument may be this one.
  CString sLong;
  if (n >= static_cast<int>(sizeof szShort)) {
    try {
      std::vsnprintf(sLong.GetBuffer(n), static_cast<std::size_t>(n) + 1, szFormat, again);
      sLong.ReleaseBuffer(n);
    } catch (...) {
      va_end(again);
      throw;
    }
  }
  va_end(again);
  if (n < 0) AfxThrowInvalidArgException();
  *this += sLong.IsEmpty() ? std::string_view(szShort, static_cast<std::size_t>(n)) : sLong.View();
}
#pragma GCC diagnostic pop

char* CString::GetBuffer(int nMinLength) {
  if (nMinLength < 0) AfxThrowInvalidArgException();
  // Always on the heap: the last byte of an inside text is not the caller's to write.
  return Writable(std::max({static_cast<std::size_t>(nMinLength), Size(), kInlineLength + 1}));
}

void CString::ReleaseBuffer(int nNewLength) {
  if (nNewLength < -1) AfxThrowInvalidArgException();
  const std::size_t nCapacity = IsHeap() ? m_rep.heap.block->capacity : kInlineLength;
  char* text = Writable(nCapacity);
  std::size_t nLength = nNewLength == -1 ? strnlen(text, nCapacity) : static_cast<std::size_t>(nNewLength);
  if (nLength > nCapacity) AfxThrowInvalidArgException();
  if (IsHeap() && nLength <= kInlineLength) {
    *this = CString(std::string_view(text, nLength));
  } else {
    SetSize(nLength);
  }
}

char* CString::GetBufferSetLength(int nLength) {
  const std::size_t nOld = Size();
  const auto nNew = static_cast<std::size_t>(std::max(nLength, 0));
  char* text = GetBuffer(nLength);
  if (nNew > nOld) std::memset(text + nOld, 0, nNew - nOld);
  SetSize(nNew);
  return text;
}

CString CString::Join(std::string_view a, std::string_view b) {
  if (b.size() > kMaxLength - std::min(a.size(), kMaxLength)) AfxThrowMemoryException();
  CString result;
  char* text = result.Writable(a.size() + b.size());
  if (!a.empty()) std::memcpy(text, a.data(), a.size());
  if (!b.empty()) std::memcpy(text + a.size(), b.data(), b.size());
  result.SetSize(a.size() + b.size());
  return result;
}
