#pragma once
#include <string>

#include "base/CFile.h"

/// A buffered file of lines. A line ends at LF or CR LF; a CR elsewhere and 0x1A are ordinary bytes. What is written is
/// not changed: a "\n" is one LF.
class CStdioFile : public CFile {
 public:
  CStdioFile() = default;
  CStdioFile(const char* szPath, UINT nFlags);
  ~CStdioFile() override;

  BOOL Open(const char* szPath, UINT nFlags, CFileException* pError = nullptr) override;
  /// The next line without its end; false, with an empty text, at the file's end. Memory grows with what the file
  /// holds, never ahead of it.
  virtual BOOL ReadString(CString& sLine);
  /// The text up to its first NUL; no line end is added.
  virtual void WriteString(const char* szText);

  UINT Read(void* pBuffer, UINT nCount) override;
  void Write(const void* pBuffer, UINT nCount) override;
  ULONGLONG Seek(__int64 nOffset, UINT nFrom) override;
  ULONGLONG GetPosition() const override;
  ULONGLONG GetLength() const override;
  void SetLength(ULONGLONG nLength) override;
  void Flush() override;
  void Close() override;
  void Abort() override;

 private:
  bool Fill();
  void GiveBack();
  void HandOver();

  std::string m_sRead;     // what was read ahead
  std::size_t m_nAt = 0;   // where the next byte of it is
  std::string m_sWritten;  // what is still to be written; only one of the two holds bytes
};
