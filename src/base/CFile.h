#pragma once
#include "base/CObject.h"
#include "base/CString.h"
#include "base/FileSystem.h"
#include "base/Platform.h"

/// The platform's unbuffered file. Failures raise `CFileException`, but for `Open` with an exception to fill. The
/// sharing modes and the text modes are taken and have no effect: files are not locked against others, and bytes are
/// written as they are.
class CFile : public CObject {
 public:
  enum OpenFlags {
    modeRead = 0x0000,
    modeWrite = 0x0001,
    modeReadWrite = 0x0002,
    shareCompat = 0x0000,
    shareExclusive = 0x0010,
    shareDenyWrite = 0x0020,
    shareDenyRead = 0x0030,
    shareDenyNone = 0x0040,
    modeNoInherit = 0x0080,
    modeCreate = 0x1000,      ///< makes the file, or empties one that exists
    modeNoTruncate = 0x2000,  ///< with `modeCreate`: keeps the content of one that exists
    typeText = 0x4000,
    typeBinary = 0x8000
  };
  enum SeekPosition { begin = 0, current = 1, end = 2 };

  CFile() = default;
  /// Opens; raises on failure.
  CFile(const char* szPath, UINT nFlags);
  /// Closes. A failure cannot be told here: a writer calls `Close`.
  ~CFile() override;

  /// Opens; false on failure, with the reason in `*pError` if there is one. An open file is closed first.
  virtual BOOL Open(const char* szPath, UINT nFlags, CFileException* pError = nullptr);
  /// Reads up to `nCount` bytes; fewer only at the file's end.
  virtual UINT Read(void* pBuffer, UINT nCount);
  /// Writes all bytes or raises.
  virtual void Write(const void* pBuffer, UINT nCount);
  /// Gives the new position, which may lie behind the end but not before the start.
  virtual ULONGLONG Seek(__int64 nOffset, UINT nFrom);
  virtual ULONGLONG GetPosition() const;
  virtual ULONGLONG GetLength() const;
  virtual void SetLength(ULONGLONG nLength);
  virtual void Flush();
  /// Closes; raises when what was written may not have reached the file. A file that is not open is no fault.
  virtual void Close();
  /// Closes whatever happens, and raises nothing.
  virtual void Abort();

  void SeekToBegin() { Seek(0, begin); }
  ULONGLONG SeekToEnd() { return Seek(0, end); }
  /// The path as it was given to `Open`; empty for a file without one.
  virtual CString GetFilePath() const { return m_strFileName; }
  /// The last component of the path.
  virtual CString GetFileName() const;

 protected:
  [[noreturn]] void Raise(std::int64_t nResult) const;
  void RequireReadable() const;
  void RequireWritable() const;

  CString m_strFileName;
  laminate::OpenedFile m_file;
  UINT m_nFlags = 0;
};
