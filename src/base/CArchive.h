#pragma once
#include <bit>
#include <cstdint>
#include <cstring>
#include <memory>

#include "base/CException.h"
#include "base/CString.h"
#include "base/Platform.h"

class CFile;

/// The platform's binary stream over a file: numbers in little-endian order, strings and counts in the forms below,
/// with no names and no versions of its own. An archive either stores or loads; using it the other way raises
/// `CArchiveException`, `readOnly` for storing into one that loads and `writeOnly` for the reverse, with the file's
/// name.
///
/// What is loaded is not trusted: memory grows with the bytes that come, in steps of at most 64 KiB, whatever a count
/// or length in them says. An end before its time raises `endOfFile`.
///
/// Forms:
///   count    16 bits; from 65535 on 0xFFFF and 32 bits; from 4294967295 on also 0xFFFFFFFF and 64 bits
///   string   its length, then its bytes. The length is one byte; from 255 on 0xFF and 16 bits; from 65534 on also
///            0xFFFF and 32 bits; from 4294967295 on also 0xFFFFFFFF and 64 bits. 0xFF 0xFFFE in front tells a UTF-16
///            string, whose length counts its units; it is never written.
class CArchive {
 public:
  enum Mode { store = 0, load = 1, bNoFlushOnDelete = 2 };

  /// Works on an open file, which stays the caller's and must outlive the archive. A null file raises
  /// `CInvalidArgException`. The last two arguments are taken and have no effect.
  CArchive(CFile* pFile, UINT nMode, int nBufSize = 4096, void* pBuf = nullptr);
  /// Closes, unless made with `bNoFlushOnDelete`. A failure cannot be told here: whoever stores calls `Close`.
  ~CArchive();
  CArchive(const CArchive&) = delete;
  CArchive& operator=(const CArchive&) = delete;

  bool IsLoading() const { return (m_nMode & load) != 0; }
  bool IsStoring() const { return !IsLoading(); }
  /// While loading: bytes of the file that are at hand, so that so many at least are left.
  std::size_t BytesAhead() const noexcept { return static_cast<std::size_t>(m_pEnd - m_pAt); }
  /// The file; null after `Close` or `Abort`.
  CFile* GetFile() const { return m_pFile; }

  /// Up to `nMax` bytes; fewer only at the end of the file.
  UINT Read(void* pBuffer, UINT nMax);
  void Write(const void* pBuffer, UINT nCount);
  /// Exactly `nCount` bytes, or `endOfFile`.
  void EnsureRead(void* pBuffer, std::uint64_t nCount);
  /// Reads over `nCount` bytes, or `endOfFile`.
  void Skip(std::uint64_t nCount);

  /// Storing: hands all to the file. Loading: moves the file back to the first byte that was not loaded, where it can
  /// seek at all.
  void Flush();
  /// `Flush`, then parts from the file. After a failed write there is nothing left to hand over and it raises nothing.
  void Close();
  /// Parts from the file and drops what was not handed over. Raises nothing.
  void Abort() noexcept;

  void WriteCount(ULONGLONG nCount);
  ULONGLONG ReadCount();

  CArchive& operator<<(char v) { return Put(v); }
  CArchive& operator<<(BYTE v) { return Put(v); }
  CArchive& operator<<(bool v) { return Put(static_cast<BYTE>(v)); }
  CArchive& operator<<(short v) { return Put(v); }
  CArchive& operator<<(unsigned short v) { return Put(v); }
  CArchive& operator<<(int v) { return Put(v); }
  CArchive& operator<<(UINT v) { return Put(v); }
  CArchive& operator<<(__int64 v) { return Put(v); }
  CArchive& operator<<(ULONGLONG v) { return Put(v); }
  CArchive& operator<<(float v) { return Put(v); }
  CArchive& operator<<(double v) { return Put(v); }
  CArchive& operator<<(const CString& s);
  // A text would otherwise go out as a truth value.
  CArchive& operator<<(const char* sz) = delete;

  CArchive& operator>>(char& v) { return Get(v); }
  CArchive& operator>>(BYTE& v) { return Get(v); }
  CArchive& operator>>(bool& v) {
    BYTE n = 0;
    Get(n);
    v = n != 0;
    return *this;
  }
  CArchive& operator>>(short& v) { return Get(v); }
  CArchive& operator>>(unsigned short& v) { return Get(v); }
  CArchive& operator>>(int& v) { return Get(v); }
  CArchive& operator>>(UINT& v) { return Get(v); }
  CArchive& operator>>(__int64& v) { return Get(v); }
  CArchive& operator>>(ULONGLONG& v) { return Get(v); }
  CArchive& operator>>(float& v) { return Get(v); }
  CArchive& operator>>(double& v) { return Get(v); }
  /// A UTF-16 string becomes text of code page 932, "?" standing for each character that has no place there. A
  /// failure leaves `s` as it was. A length whose double does not fit 32 bits raises `COleException` 0x80070216.
  CArchive& operator>>(CString& s);

  /// Name of the file, for the exceptions.
  CString m_strFileName;

 private:
  static constexpr std::size_t kBuffer = 64 * 1024;

  static_assert(std::endian::native == std::endian::little, "numbers would have to be turned round");

  template <class T>
  CArchive& Put(T v) {
    RequireStoring();
    if (static_cast<std::size_t>(m_pEnd - m_pAt) < sizeof v) [[unlikely]]
      HandOver();
    std::memcpy(m_pAt, &v, sizeof v);
    m_pAt += sizeof v;
    return *this;
  }
  template <class T>
  CArchive& Get(T& v) {
    RequireLoading();
    if (static_cast<std::size_t>(m_pEnd - m_pAt) < sizeof v) [[unlikely]] {
      T got;
      EnsureRead(&got, sizeof got);
      v = got;
    } else {
      std::memcpy(&v, m_pAt, sizeof v);
      m_pAt += sizeof v;
    }
    return *this;
  }
  void RequireStoring() const {
    if (m_nMode & load) [[unlikely]]
      RaiseMode(CArchiveException::readOnly);
  }
  void RequireLoading() const {
    if (!(m_nMode & load)) [[unlikely]]
      RaiseMode(CArchiveException::writeOnly);
  }
  [[noreturn]] void RaiseMode(int nCause) const;
  [[noreturn]] void RaiseEnd() const;
  CFile& File() const;
  void HandOver();
  bool Fill();
  CString LoadNarrow(ULONGLONG nLength);
  CString LoadWide(ULONGLONG nLength);
  // What of the buffer the next `nWanted` bytes may use at once, filling it when it is empty; raises at the end.
  std::size_t Available(ULONGLONG nWanted);

  CFile* m_pFile;
  UINT m_nMode;
  bool m_bFailed = false;  // a write failed: what follows would stand in the wrong place
  BYTE* m_pAt = nullptr;   // storing: where the next byte goes; loading: where it comes from
  BYTE* m_pEnd = nullptr;  // storing: the end of the room; loading: the end of what was read
  std::unique_ptr<BYTE[]> m_pBuffer;
};

/// The length of a string in its archive form. Reading gives the size of a character too: 1, or 2 for UTF-16.
void AfxWriteStringLength(CArchive& ar, ULONGLONG nLength, BOOL bUnicode);
ULONGLONG AfxReadStringLength(CArchive& ar, int& nCharSize);
