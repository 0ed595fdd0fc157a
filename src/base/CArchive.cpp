#include "base/CArchive.h"

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

#include "base/CArray.h"
#include "base/CFile.h"
#include "base/CodePage932.h"

namespace {

// Marks by which a short length or count gives way to a longer one.
constexpr BYTE kLong8 = 0xFF;
constexpr unsigned short kWide16 = 0xFFFE;
constexpr unsigned short kLong16 = 0xFFFF;
constexpr UINT kLong32 = 0xFFFFFFFF;

constexpr std::uint32_t kArithmeticOverflow = 0x80070216;

}  // namespace

CArchive::CArchive(CFile* pFile, UINT nMode, int, void*) : m_pFile(pFile), m_nMode(nMode) {
  if (pFile == nullptr) AfxThrowInvalidArgException();
  m_strFileName = pFile->GetFilePath();
  m_pBuffer.reset(new (std::nothrow) BYTE[kBuffer]);
  if (m_pBuffer == nullptr) AfxThrowMemoryException();
  m_pAt = m_pEnd = m_pBuffer.get();
  if (IsStoring()) m_pEnd += kBuffer;
}

CArchive::~CArchive() {
  if (m_pFile == nullptr || (m_nMode & bNoFlushOnDelete)) return;
  try {
    Close();
  } catch (...) {
    // Told to those who call `Close` themselves.
  }
}

void CArchive::RaiseMode(int nCause) const { AfxThrowArchiveException(nCause, m_strFileName.GetString()); }
void CArchive::RaiseEnd() const { AfxThrowArchiveException(CArchiveException::endOfFile, m_strFileName.GetString()); }
CFile& CArchive::File() const {
  if (m_pFile == nullptr) AfxThrowInvalidArgException();
  return *m_pFile;
}

void CArchive::HandOver() {
  CFile& file = File();
  if (m_bFailed) AfxThrowArchiveException(CArchiveException::genericException, m_strFileName.GetString());
  const auto nBytes = static_cast<UINT>(m_pAt - m_pBuffer.get());
  m_pAt = m_pBuffer.get();
  m_bFailed = true;
  file.Write(m_pBuffer.get(), nBytes);
  m_bFailed = false;
}

// Reads ahead into the empty buffer; false at the end of the file.
bool CArchive::Fill() {
  CFile& file = File();
  m_pAt = m_pEnd = m_pBuffer.get();
  m_pEnd += file.Read(m_pBuffer.get(), kBuffer);
  return m_pAt != m_pEnd;
}

std::size_t CArchive::Available(ULONGLONG nWanted) {
  if (m_pAt == m_pEnd && !Fill()) RaiseEnd();
  return static_cast<std::size_t>(std::min<ULONGLONG>(nWanted, static_cast<ULONGLONG>(m_pEnd - m_pAt)));
}

UINT CArchive::Read(void* pBuffer, UINT nMax) {
  RequireLoading();
  if (nMax == 0) return 0;
  if (pBuffer == nullptr) AfxThrowInvalidArgException();
  auto* pTo = static_cast<BYTE*>(pBuffer);
  UINT nDone = 0;
  while (nDone < nMax) {
    if (m_pAt == m_pEnd) {
      if (nMax - nDone >= kBuffer) return nDone + File().Read(pTo + nDone, nMax - nDone);
      if (!Fill()) break;
    }
    const auto n = static_cast<UINT>(Available(nMax - nDone));
    std::memcpy(pTo + nDone, m_pAt, n);
    m_pAt += n;
    nDone += n;
  }
  return nDone;
}

void CArchive::Write(const void* pBuffer, UINT nCount) {
  RequireStoring();
  if (nCount == 0) return;
  if (pBuffer == nullptr) AfxThrowInvalidArgException();
  if (nCount > static_cast<std::size_t>(m_pEnd - m_pAt)) {
    HandOver();
    if (nCount > kBuffer) {
      m_bFailed = true;
      File().Write(pBuffer, nCount);
      m_bFailed = false;
      return;
    }
  }
  std::memcpy(m_pAt, pBuffer, nCount);
  m_pAt += nCount;
}

void CArchive::EnsureRead(void* pBuffer, std::uint64_t nCount) {
  constexpr std::uint64_t kMost = UINT{1} << 30;
  auto* pTo = static_cast<BYTE*>(pBuffer);
  while (nCount != 0) {
    const auto nNow = static_cast<UINT>(std::min(nCount, kMost));
    if (Read(pTo, nNow) != nNow) RaiseEnd();
    pTo += nNow;
    nCount -= nNow;
  }
}

void CArchive::Skip(std::uint64_t nCount) {
  RequireLoading();
  while (nCount != 0) {
    const std::size_t n = Available(nCount);
    m_pAt += n;
    nCount -= n;
  }
}

void CArchive::Flush() {
  if (IsStoring()) {
    HandOver();
    return;
  }
  CFile& file = File();
  if (m_pAt == m_pEnd) return;
  try {
    file.Seek(-static_cast<__int64>(m_pEnd - m_pAt), CFile::current);
  } catch (const CFileException&) {
    return;  // a pipe, say; what was read ahead stays to be loaded
  }
  m_pAt = m_pEnd = m_pBuffer.get();
}

void CArchive::Close() {
  if (m_pFile == nullptr) return;
  try {
    if (!m_bFailed) Flush();
  } catch (...) {
    Abort();
    throw;
  }
  Abort();
}

void CArchive::Abort() noexcept {
  m_pFile = nullptr;
  m_pAt = m_pEnd = nullptr;
  m_pBuffer.reset();
}

void CArchive::WriteCount(ULONGLONG nCount) {
  if (nCount < kLong16) {
    *this << static_cast<unsigned short>(nCount);
    return;
  }
  *this << kLong16;
  if (nCount < kLong32) {
    *this << static_cast<UINT>(nCount);
    return;
  }
  *this << kLong32 << nCount;
}

ULONGLONG CArchive::ReadCount() {
  unsigned short n16 = 0;
  *this >> n16;
  if (n16 != kLong16) return n16;
  UINT n32 = 0;
  *this >> n32;
  if (n32 != kLong32) return n32;
  ULONGLONG n64 = 0;
  *this >> n64;
  return n64;
}

void AfxWriteStringLength(CArchive& ar, ULONGLONG nLength, BOOL bUnicode) {
  if (bUnicode) ar << kLong8 << kWide16;
  if (nLength < kLong8) {
    ar << static_cast<BYTE>(nLength);
    return;
  }
  ar << kLong8;
  if (nLength < kWide16) {
    ar << static_cast<unsigned short>(nLength);
    return;
  }
  ar << kLong16;
  if (nLength < kLong32) {
    ar << static_cast<UINT>(nLength);
    return;
  }
  ar << kLong32 << nLength;
}

ULONGLONG AfxReadStringLength(CArchive& ar, int& nCharSize) {
  nCharSize = 1;
  BYTE n8 = 0;
  ar >> n8;
  if (n8 != kLong8) return n8;
  unsigned short n16 = 0;
  ar >> n16;
  if (n16 == kWide16) {
    // The length starts anew; a second mark in it is no mark but the length that it spells.
    nCharSize = 2;
    ar >> n8;
    if (n8 != kLong8) return n8;
    ar >> n16;
  }
  if (n16 != kLong16) return n16;
  UINT n32 = 0;
  ar >> n32;
  if (n32 != kLong32) return n32;
  ULONGLONG n64 = 0;
  ar >> n64;
  return n64;
}

CArchive& CArchive::operator<<(const CString& s) {
  RequireStoring();
  std::string_view text = s.View();
  if (text.size() < kLong8 && text.size() < static_cast<std::size_t>(m_pEnd - m_pAt)) [[likely]] {
    *m_pAt++ = static_cast<BYTE>(text.size());
    std::memcpy(m_pAt, text.data(), text.size());
    m_pAt += text.size();
    return *this;
  }
  AfxWriteStringLength(*this, text.size(), FALSE);
  Write(text.data(), static_cast<UINT>(text.size()));
  return *this;
}

CArchive& CArchive::operator>>(CString& s) {
  RequireLoading();
  if (const auto nAhead = static_cast<std::size_t>(m_pEnd - m_pAt); nAhead != 0 && *m_pAt < nAhead && *m_pAt != kLong8)
      [[likely]] {
    const std::string_view text(reinterpret_cast<const char*>(m_pAt) + 1, *m_pAt);
    m_pAt += 1 + text.size();
    if (nAhead > sizeof(CString)) [[likely]] {
      s.AssignPadded(text);
    } else {
      s = text;
    }
    return *this;
  }
  int nCharSize = 0;
  const ULONGLONG nLength = AfxReadStringLength(*this, nCharSize);
  s = nCharSize == 1 ? LoadNarrow(nLength) : LoadWide(nLength);
  return *this;
}

CString CArchive::LoadNarrow(ULONGLONG nLength) {
  CString s;
  s.Preallocate(static_cast<int>(std::min<ULONGLONG>(nLength, kBuffer)));
  while (nLength != 0) {
    const std::size_t n = Available(nLength);
    s += std::string_view(reinterpret_cast<const char*>(m_pAt), n);
    m_pAt += n;
    nLength -= n;
  }
  return s;
}

CString CArchive::LoadWide(ULONGLONG nLength) {
  if (nLength > std::numeric_limits<UINT>::max() / 2) AfxThrowOleException(kArithmeticOverflow);
  CString s;
  laminate::CodePage932Narrower narrower(s);
  for (; nLength != 0; --nLength) {
    unsigned short nUnit = 0;
    *this >> nUnit;
    narrower.Add(nUnit);
  }
  narrower.Finish();
  return s;
}

namespace laminate {

bool ArchiveIsStoring(const CArchive& ar) { return ar.IsStoring(); }

void StoreRawElements(CArchive& ar, const void* pData, std::uint64_t nCount, std::size_t nElementSize, bool bPointers) {
  ar.WriteCount(nCount);
  constexpr std::uint64_t kMost = UINT{1} << 30;
  static constexpr BYTE kZeros[4096] = {};
  const auto* pFrom = static_cast<const BYTE*>(pData);
  for (std::uint64_t nLeft = nCount * nElementSize; nLeft != 0;) {
    const auto nNow = static_cast<UINT>(std::min(nLeft, bPointers ? sizeof kZeros : kMost));
    ar.Write(bPointers ? kZeros : pFrom, nNow);
    pFrom += bPointers ? 0 : nNow;
    nLeft -= nNow;
  }
}

std::uint64_t LoadRawCount(CArchive& ar) { return ar.ReadCount(); }
void LoadRawBytes(CArchive& ar, void* pData, std::uint64_t nBytes) { ar.EnsureRead(pData, nBytes); }

void SkipRawBytes(CArchive& ar, std::uint64_t nCount, std::size_t nElementSize) {
  std::uint64_t nBytes = 0;
  // More than any file holds: its end comes before.
  if (__builtin_mul_overflow(nCount, nElementSize, &nBytes)) nBytes = std::numeric_limits<std::uint64_t>::max();
  ar.Skip(nBytes);
}

}  // namespace laminate
