#include "base/CFile.h"

#include <cerrno>

CFile::CFile(const char* szPath, UINT nFlags) {
  CFileException error(CFileException::none, 0, "");
  if (!CFile::Open(szPath, nFlags, &error)) throw error;
}

CFile::~CFile() { m_file.Close(); }

BOOL CFile::Open(const char* szPath, UINT nFlags, CFileException* pError) {
  m_file.Close();
  const std::string_view path = szPath ? std::string_view(szPath) : std::string_view();
  laminate::FileSystem& files = laminate::TheFileSystem();
  laminate::FileSystem::Handle h = -EINVAL;
  if (path.empty()) {
    h = -ENOENT;
  } else if (nFlags & (modeWrite | modeReadWrite)) {
    const bool bCreate = (nFlags & modeCreate) != 0;
    const bool bTruncate = bCreate && (nFlags & modeNoTruncate) == 0;
    const bool bUpdate = (nFlags & modeReadWrite) != 0 || !bTruncate;
    h = bUpdate ? files.OpenForUpdate(szPath, bCreate, bTruncate) : files.OpenForWriting(szPath);
  } else {
    if (nFlags & modeCreate) {
      // Made or emptied, then read: of little use, but what the flags say.
      h = files.OpenForUpdate(szPath, true, (nFlags & modeNoTruncate) == 0);
    } else {
      h = files.OpenForReading(szPath);
    }
  }
  if (h < 0) {
    if (pError != nullptr) {
      *pError = laminate::WithPlatformFailures(
          [&] { return CFileException(CFileException::OsErrorToException(-h), -h, std::string(path)); });
    }
    return FALSE;
  }
  m_file = laminate::OpenedFile(h);
  m_strFileName = szPath;
  m_nFlags = nFlags;
  return TRUE;
}

void CFile::Raise(std::int64_t nResult) const {
  const int nError = static_cast<int>(-nResult);
  AfxThrowFileException(CFileException::OsErrorToException(nError), nError, m_strFileName.GetString());
}
void CFile::RequireReadable() const {
  if (!m_file.IsOpen()) Raise(-EBADF);
  if ((m_nFlags & (modeWrite | modeReadWrite)) == modeWrite) Raise(-EACCES);
}
void CFile::RequireWritable() const {
  if (!m_file.IsOpen()) Raise(-EBADF);
  if ((m_nFlags & (modeWrite | modeReadWrite)) == 0) Raise(-EACCES);
}

UINT CFile::Read(void* pBuffer, UINT nCount) {
  RequireReadable();
  if (nCount == 0) return 0;
  if (pBuffer == nullptr) AfxThrowInvalidArgException();
  const std::int64_t nRead = laminate::ReadAll(m_file.Get(), pBuffer, nCount);
  if (nRead < 0) Raise(nRead);
  return static_cast<UINT>(nRead);
}

void CFile::Write(const void* pBuffer, UINT nCount) {
  RequireWritable();
  if (nCount == 0) return;
  if (pBuffer == nullptr) AfxThrowInvalidArgException();
  const int nResult = laminate::WriteAll(m_file.Get(), {static_cast<const char*>(pBuffer), nCount});
  if (nResult != 0) Raise(nResult);
}

ULONGLONG CFile::Seek(__int64 nOffset, UINT nFrom) {
  if (!m_file.IsOpen()) Raise(-EBADF);
  if (nFrom > end) AfxThrowInvalidArgException();
  const std::int64_t nAt = laminate::TheFileSystem().Seek(m_file.Get(), nOffset, static_cast<int>(nFrom));
  if (nAt < 0) {
    AfxThrowFileException(CFileException::badSeek, static_cast<int>(-nAt), m_strFileName.GetString());
  }
  return static_cast<ULONGLONG>(nAt);
}

ULONGLONG CFile::GetPosition() const {
  if (!m_file.IsOpen()) Raise(-EBADF);
  const std::int64_t nAt = laminate::TheFileSystem().Seek(m_file.Get(), 0, current);
  if (nAt < 0) Raise(nAt);
  return static_cast<ULONGLONG>(nAt);
}

ULONGLONG CFile::GetLength() const {
  if (!m_file.IsOpen()) Raise(-EBADF);
  const std::int64_t nSize = laminate::TheFileSystem().SizeOf(m_file.Get());
  if (nSize < 0) Raise(nSize);
  return static_cast<ULONGLONG>(nSize);
}

void CFile::SetLength(ULONGLONG nLength) {
  RequireWritable();
  if (nLength > static_cast<ULONGLONG>(INT64_MAX)) AfxThrowInvalidArgException();
  const int nResult = laminate::TheFileSystem().SetLength(m_file.Get(), static_cast<std::int64_t>(nLength));
  if (nResult != 0) Raise(nResult);
}

void CFile::Flush() {}

void CFile::Close() {
  const int nResult = m_file.Close();
  if (nResult != 0) Raise(nResult);
}

void CFile::Abort() { m_file.Close(); }

CString CFile::GetFileName() const {
  const CString sPath = GetFilePath();
  return sPath.Mid(sPath.ReverseFind('/') + 1);
}
