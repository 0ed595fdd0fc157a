#pragma once
#include <exception>
#include <new>
#include <string>

#include "base/Platform.h"

/// Base of the platform's exceptions. They are thrown by value; every concrete one is also a `std::exception`
/// (the memory exception a `std::bad_alloc`), so a host may catch either family. `what()` is text for a person.
class CException {
 public:
  virtual ~CException() = default;
  virtual const char* what() const noexcept = 0;

 protected:
  CException() = default;
  CException(const CException&) = default;
  CException& operator=(const CException&) = default;
};

/// An argument, index or text that an operation cannot work with: among others the bounds-checked element access of
/// the arrays, and so a form of a file that lacks a value. Where it comes from the content of a file, `m_nLine`
/// tells the line (from 1) of the text that was being read, 0 when unknown.
class CInvalidArgException : public CException, public std::exception {
 public:
  /// Needs no memory.
  CInvalidArgException() = default;
  explicit CInvalidArgException(std::string sText, int nLine = 0);
  const char* what() const noexcept override {
    return m_sText.empty() ? "an invalid argument was encountered" : m_sText.c_str();
  }
  int m_nLine = 0;

 private:
  std::string m_sText;
};

/// No memory was to be had.
class CMemoryException : public CException, public std::bad_alloc {
 public:
  const char* what() const noexcept override { return "out of memory"; }
};

/// A file operation failed.
class CFileException : public CException, public std::exception {
 public:
  enum Cause {
    none,
    genericException,
    fileNotFound,
    badPath,
    tooManyOpenFiles,
    accessDenied,
    invalidFile,
    removeCurrentDir,
    directoryFull,
    badSeek,
    hardIO,
    sharingViolation,
    lockViolation,
    diskFull,
    endOfFile
  };
  CFileException(int nCause, int nOsError, std::string sFileName);
  const char* what() const noexcept override { return m_sText.c_str(); }
  /// The platform's cause for an `errno` value.
  static int OsErrorToException(int nOsError);

  int m_cause = none;
  int m_lOsError = 0;
  std::string m_strFileName;

 private:
  std::string m_sText;
};

/// A binary archive was used against its mode or ended too early.
class CArchiveException : public CException, public std::exception {
 public:
  enum Cause { none, genericException, readOnly, endOfFile, writeOnly, badIndex, badClass, badSchema };
  CArchiveException(int nCause, std::string sFileName);
  const char* what() const noexcept override { return m_sText.c_str(); }

  int m_cause = none;
  std::string m_strFileName;

 private:
  std::string m_sText;
};

/// A failure that the platform reports by a 32-bit result code, such as 0x80070216 for an arithmetic overflow.
class COleException : public CException, public std::exception {
 public:
  explicit COleException(std::uint32_t nCode);
  const char* what() const noexcept override { return m_sText.c_str(); }
  std::uint32_t m_sc = 0;

 private:
  std::string m_sText;
};

[[noreturn]] void AfxThrowInvalidArgException();
[[noreturn]] void AfxThrowMemoryException();
[[noreturn]] void AfxThrowFileException(int nCause, int nOsError = 0, const char* szFileName = nullptr);
[[noreturn]] void AfxThrowArchiveException(int nCause, const char* szFileName = nullptr);
[[noreturn]] void AfxThrowOleException(std::uint32_t nCode);

namespace laminate {

/// What an operation needs; null raises `CInvalidArgException`.
template <class X>
X& Required(X* p) {
  if (p == nullptr) [[unlikely]]
    AfxThrowInvalidArgException();
  return *p;
}

/// Runs an operation; the standard library's failure to get memory becomes the platform's.
template <class Operation>
auto WithPlatformFailures(Operation&& operation) -> decltype(operation()) {
  try {
    return operation();
  } catch (const std::bad_alloc&) {
    AfxThrowMemoryException();
  }
}

}  // namespace laminate
