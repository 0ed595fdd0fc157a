#include "base/CStdioFile.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace {
constexpr std::size_t kBuffer = 64 * 1024;
}

CStdioFile::CStdioFile(const char* szPath, UINT nFlags) : CFile(szPath, nFlags) {}

CStdioFile::~CStdioFile() {
  try {
    HandOver();
  } catch (...) {
    // As with any file, only `Close` can tell.
  }
}

BOOL CStdioFile::Open(const char* szPath, UINT nFlags, CFileException* pError) {
  Abort();
  return CFile::Open(szPath, nFlags, pError);
}

// Reads ahead; false at the end of the file.
bool CStdioFile::Fill() {
  m_nAt = 0;
  laminate::WithPlatformFailures([this] { m_sRead.resize(kBuffer); });
  std::int64_t nRead = -1;
  try {
    RequireReadable();
    nRead = laminate::TheFileSystem().Read(m_file.Get(), m_sRead.data(), kBuffer);
  } catch (...) {
    m_sRead.clear();
    throw;
  }
  m_sRead.resize(static_cast<std::size_t>(std::max<std::int64_t>(nRead, 0)));
  if (nRead < 0) Raise(nRead);
  return nRead > 0;
}

// Moves the file's own position back to where reading stands.
void CStdioFile::GiveBack() {
  const std::size_t nLeft = m_sRead.size() - m_nAt;
  m_sRead.clear();
  m_nAt = 0;
  if (nLeft != 0) CFile::Seek(-static_cast<__int64>(nLeft), current);
}

void CStdioFile::HandOver() {
  if (m_sWritten.empty()) return;
  const std::string sPending = std::exchange(m_sWritten, {});
  CFile::Write(sPending.data(), static_cast<UINT>(sPending.size()));
}

BOOL CStdioFile::ReadString(CString& sLine) {
  sLine.Empty();
  HandOver();
  RequireReadable();
  bool bAny = false;
  for (;;) {
    if (m_nAt == m_sRead.size() && !Fill()) return bAny;
    bAny = true;
    const std::string_view ahead = std::string_view(m_sRead).substr(m_nAt);
    const std::size_t n = ahead.find('\n');
    sLine += ahead.substr(0, n);
    if (n != std::string_view::npos) {
      m_nAt += n + 1;
      if (!sLine.IsEmpty() && sLine[sLine.GetLength() - 1] == '\r') sLine.Truncate(sLine.GetLength() - 1);
      return TRUE;
    }
    m_nAt = m_sRead.size();
  }
}

void CStdioFile::WriteString(const char* szText) {
  if (szText == nullptr) AfxThrowInvalidArgException();
  std::string_view s(szText);
  while (!s.empty()) {
    const std::string_view part = s.substr(0, 1u << 30);
    Write(part.data(), static_cast<UINT>(part.size()));
    s.remove_prefix(part.size());
  }
}

UINT CStdioFile::Read(void* pBuffer, UINT nCount) {
  HandOver();
  RequireReadable();
  if (nCount == 0) return 0;
  if (pBuffer == nullptr) AfxThrowInvalidArgException();
  const auto nAhead = static_cast<UINT>(std::min<std::size_t>(nCount, m_sRead.size() - m_nAt));
  std::memcpy(pBuffer, m_sRead.data() + m_nAt, nAhead);
  m_nAt += nAhead;
  return nAhead == nCount ? nCount : nAhead + CFile::Read(static_cast<char*>(pBuffer) + nAhead, nCount - nAhead);
}

void CStdioFile::Write(const void* pBuffer, UINT nCount) {
  RequireWritable();
  if (nCount == 0) return;
  if (pBuffer == nullptr) AfxThrowInvalidArgException();
  GiveBack();
  if (m_sWritten.size() + nCount > kBuffer) HandOver();
  if (nCount > kBuffer) {
    CFile::Write(pBuffer, nCount);
  } else {
    laminate::WithPlatformFailures([&] { m_sWritten.append(static_cast<const char*>(pBuffer), nCount); });
  }
}

ULONGLONG CStdioFile::Seek(__int64 nOffset, UINT nFrom) {
  HandOver();
  GiveBack();
  return CFile::Seek(nOffset, nFrom);
}

ULONGLONG CStdioFile::GetPosition() const {
  return CFile::GetPosition() - (m_sRead.size() - m_nAt) + m_sWritten.size();
}

ULONGLONG CStdioFile::GetLength() const {
  const ULONGLONG nLength = CFile::GetLength();
  return m_sWritten.empty() ? nLength : std::max(nLength, GetPosition());
}

void CStdioFile::SetLength(ULONGLONG nLength) {
  HandOver();
  GiveBack();
  CFile::SetLength(nLength);
}

void CStdioFile::Flush() { HandOver(); }

void CStdioFile::Close() {
  try {
    HandOver();
  } catch (...) {
    Abort();
    throw;
  }
  m_sRead.clear();
  m_nAt = 0;
  CFile::Close();
}

void CStdioFile::Abort() {
  m_sRead.clear();
  m_sWritten.clear();
  m_nAt = 0;
  CFile::Abort();
}
