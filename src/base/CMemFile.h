#pragma once
#include "base/CFile.h"

/// A file in memory, which grows with what is written to it.
class CMemFile : public CFile {
 public:
  explicit CMemFile(UINT nGrowBytes = 1024);
  /// Works on a block of the caller; see `Attach`.
  CMemFile(BYTE* pBuffer, UINT nBufferSize, UINT nGrowBytes = 0);
  ~CMemFile() override;

  /// Works on a block from now on, at its start. With `nGrowBytes` 0 the block is the file's whole content, stays the
  /// caller's and cannot grow. Otherwise the file is empty, the block is room for it, and must come from `malloc`: the
  /// file owns it.
  void Attach(BYTE* pBuffer, UINT nBufferSize, UINT nGrowBytes = 0);
  /// Hands the block over, to be freed by `free` if it is not the caller's own, and leaves the file empty. Its length
  /// is to be asked for before.
  BYTE* Detach();

  UINT Read(void* pBuffer, UINT nCount) override;
  void Write(const void* pBuffer, UINT nCount) override;
  ULONGLONG Seek(__int64 nOffset, UINT nFrom) override;
  ULONGLONG GetPosition() const override { return m_nPosition; }
  ULONGLONG GetLength() const override { return m_nLength; }
  void SetLength(ULONGLONG nLength) override;
  void Flush() override {}
  void Close() override;
  void Abort() override;

 private:
  void Reserve(ULONGLONG nLength);

  BYTE* m_pData = nullptr;
  ULONGLONG m_nCapacity = 0;
  ULONGLONG m_nLength = 0;
  ULONGLONG m_nPosition = 0;
  UINT m_nGrowBytes;
  bool m_bOwned = true;
};
