#include "base/CMemFile.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

CMemFile::CMemFile(UINT nGrowBytes) : m_nGrowBytes(nGrowBytes) {}
CMemFile::CMemFile(BYTE* pBuffer, UINT nBufferSize, UINT nGrowBytes) : m_nGrowBytes(0) {
  CMemFile::Attach(pBuffer, nBufferSize, nGrowBytes);
}
CMemFile::~CMemFile() { CMemFile::Abort(); }

void CMemFile::Attach(BYTE* pBuffer, UINT nBufferSize, UINT nGrowBytes) {
  if (pBuffer == nullptr && nBufferSize != 0) AfxThrowInvalidArgException();
  Abort();
  m_pData = pBuffer;
  m_nCapacity = nBufferSize;
  m_nLength = nGrowBytes == 0 ? nBufferSize : 0;
  m_nGrowBytes = nGrowBytes;
  m_bOwned = nGrowBytes != 0;
}

BYTE* CMemFile::Detach() {
  m_nCapacity = m_nLength = m_nPosition = 0;
  m_bOwned = true;
  return std::exchange(m_pData, nullptr);
}

void CMemFile::Reserve(ULONGLONG nLength) {
  if (nLength <= m_nCapacity) return;
  if (m_nGrowBytes == 0 || !m_bOwned) AfxThrowMemoryException();
  constexpr ULONGLONG kMaximum = ULONGLONG{1} << 62;
  if (nLength > kMaximum) AfxThrowMemoryException();
  // By half of what there is, so that many small writes stay linear, in whole steps.
  const ULONGLONG nWanted = std::max(nLength, m_nCapacity + m_nCapacity / 2);
  const ULONGLONG nNew = (nWanted + m_nGrowBytes - 1) / m_nGrowBytes * m_nGrowBytes;
  auto* pNew = static_cast<BYTE*>(std::realloc(m_pData, nNew));
  if (pNew == nullptr) AfxThrowMemoryException();
  m_pData = pNew;
  m_nCapacity = nNew;
}

UINT CMemFile::Read(void* pBuffer, UINT nCount) {
  if (nCount == 0 || m_nPosition >= m_nLength) return 0;
  if (pBuffer == nullptr) AfxThrowInvalidArgException();
  const auto nRead = static_cast<UINT>(std::min<ULONGLONG>(nCount, m_nLength - m_nPosition));
  std::memcpy(pBuffer, m_pData + m_nPosition, nRead);
  m_nPosition += nRead;
  return nRead;
}

void CMemFile::Write(const void* pBuffer, UINT nCount) {
  if (nCount == 0) return;
  if (pBuffer == nullptr) AfxThrowInvalidArgException();
  if (m_nPosition > m_nLength) SetLength(m_nPosition);
  Reserve(m_nPosition + nCount);
  std::memcpy(m_pData + m_nPosition, pBuffer, nCount);
  m_nPosition += nCount;
  m_nLength = std::max(m_nLength, m_nPosition);
}

ULONGLONG CMemFile::Seek(__int64 nOffset, UINT nFrom) {
  if (nFrom > end) AfxThrowInvalidArgException();
  const ULONGLONG nBase = nFrom == begin ? 0 : nFrom == current ? m_nPosition : m_nLength;
  __int64 nNew = 0;
  if (__builtin_add_overflow(static_cast<__int64>(nBase), nOffset, &nNew) || nNew < 0) {
    AfxThrowFileException(CFileException::badSeek);
  }
  m_nPosition = static_cast<ULONGLONG>(nNew);
  return m_nPosition;
}

void CMemFile::SetLength(ULONGLONG nLength) {
  Reserve(nLength);
  if (nLength > m_nLength) std::memset(m_pData + m_nLength, 0, nLength - m_nLength);
  m_nLength = nLength;
}

void CMemFile::Close() { Abort(); }

void CMemFile::Abort() {
  BYTE* pData = std::exchange(m_pData, nullptr);
  if (m_bOwned) std::free(pData);
  m_nCapacity = m_nLength = m_nPosition = 0;
  m_bOwned = true;
}
