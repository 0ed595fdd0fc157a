#include "base/CException.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

CInvalidArgException::CInvalidArgException(std::string sText, int nLine) : m_nLine(nLine), m_sText(std::move(sText)) {}

namespace {

const char* FileCauseText(int nCause) {
  switch (nCause) {
    case CFileException::none:
      return "no error";
    case CFileException::fileNotFound:
      return "the file does not exist";
    case CFileException::badPath:
      return "the path is not valid";
    case CFileException::tooManyOpenFiles:
      return "too many open files";
    case CFileException::accessDenied:
      return "access is denied";
    case CFileException::invalidFile:
      return "the file handle is not valid";
    case CFileException::removeCurrentDir:
      return "the current folder cannot be removed";
    case CFileException::directoryFull:
      return "the folder is full";
    case CFileException::badSeek:
      return "the position in the file is not valid";
    case CFileException::hardIO:
      return "the device reported an error";
    case CFileException::sharingViolation:
      return "the file is in use";
    case CFileException::lockViolation:
      return "the file is locked";
    case CFileException::diskFull:
      return "the disk is full";
    case CFileException::endOfFile:
      return "the file ended too early";
    default:
      return "an unknown error";
  }
}

const char* ArchiveCauseText(int nCause) {
  switch (nCause) {
    case CArchiveException::none:
      return "no error";
    case CArchiveException::readOnly:
      return "it is open for reading and cannot be written";
    case CArchiveException::endOfFile:
      return "it ended too early";
    case CArchiveException::writeOnly:
      return "it is open for writing and cannot be read";
    case CArchiveException::badIndex:
      return "its content is damaged";
    case CArchiveException::badClass:
      return "it holds an object of another class";
    case CArchiveException::badSchema:
      return "it was written by another version";
    default:
      return "an unknown error";
  }
}

}  // namespace

CFileException::CFileException(int nCause, int nOsError, std::string sFileName)
    : m_cause(nCause), m_lOsError(nOsError), m_strFileName(std::move(sFileName)) {
  m_sText = m_strFileName.empty() ? "file" : m_strFileName;
  m_sText += ": ";
  m_sText += FileCauseText(nCause);
  if (nOsError != 0) {
    m_sText += " (";
    m_sText += std::strerror(nOsError);
    m_sText += ")";
  }
}

int CFileException::OsErrorToException(int nOsError) {
  switch (nOsError) {
    case 0:
      return none;
    case ENOENT:
      return fileNotFound;
    case ENOTDIR:
    case ENAMETOOLONG:
    case ELOOP:
      return badPath;
    case EMFILE:
    case ENFILE:
      return tooManyOpenFiles;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
      return accessDenied;
    case EBADF:
      return invalidFile;
    case ENOTEMPTY:
    case EEXIST:
      return genericException;
    case ESPIPE:
      return badSeek;
    case EIO:
      return hardIO;
    case EBUSY:
    case ETXTBSY:
      return sharingViolation;
    case EDEADLK:
      return lockViolation;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return diskFull;
    default:
      return genericException;
  }
}

CArchiveException::CArchiveException(int nCause, std::string sFileName)
    : m_cause(nCause), m_strFileName(std::move(sFileName)) {
  m_sText = m_strFileName.empty() ? "archive" : m_strFileName;
  m_sText += ": ";
  m_sText += ArchiveCauseText(nCause);
}

COleException::COleException(std::uint32_t nCode) : m_sc(nCode) {
  char szText[64];
  std::snprintf(szText, sizeof szText, "the platform reported code 0x%08X", static_cast<unsigned>(nCode));
  m_sText = szText;
}

void AfxThrowInvalidArgException() { throw CInvalidArgException(); }
void AfxThrowMemoryException() { throw CMemoryException(); }
void AfxThrowFileException(int nCause, int nOsError, const char* szFileName) {
  throw laminate::WithPlatformFailures([&] { return CFileException(nCause, nOsError, szFileName ? szFileName : ""); });
}
void AfxThrowArchiveException(int nCause, const char* szFileName) {
  throw laminate::WithPlatformFailures([&] { return CArchiveException(nCause, szFileName ? szFileName : ""); });
}
void AfxThrowOleException(std::uint32_t nCode) {
  throw laminate::WithPlatformFailures([&] { return COleException(nCode); });
}
