#pragma once
#include <cerrno>
#include <string>
#include <vector>

#include "base/FileSystem.h"

namespace laminate::test {

/// The real file system with one operation, or all from it on, failing. It counts every operation and keeps their
/// names. Used in a `FileSystemScope`:
///
///   FaultyFileSystem files(3, ENOSPC, FaultyFileSystem::Duration::once);
///   const FileSystemScope scope(files);
///
/// A failing `Close` closes all the same, and a failing `DeleteTree` removes nothing; `Exists` and `FolderExists` fail
/// by saying no. The process's own data folder is made by the first load of a program: a test that counts calls
/// `BKUtility::GetDataPath` before.
class FaultyFileSystem : public FileSystem {
 public:
  enum class Duration { once, forever };

  /// Fails nothing: only counts.
  FaultyFileSystem() = default;
  /// The operation number `nFirst`, from 1, gives `-nError`.
  FaultyFileSystem(int nFirst, int nError, Duration duration)
      : m_nFirst(nFirst), m_nError(nError), m_duration(duration) {}

  /// Counts and fails operations of this name only, such as "Write".
  void Only(std::string sOperation) { m_sOnly = std::move(sOperation); }
  /// Reads and writes no more than so many bytes at a time, as pipes and full disks do.
  void LimitTransfers(std::size_t nBytes) { m_nLimit = nBytes; }
  int Count() const { return static_cast<int>(m_operations.size()); }
  bool HasFailed() const { return m_nFailed != 0; }
  /// The number of the operation that failed first, from 1; 0 when none has.
  std::size_t FirstFailed() const { return m_nFailed; }
  const std::vector<std::string>& Failed() const { return m_failed; }
  const std::vector<std::string>& Operations() const { return m_operations; }

  Handle OpenForReading(const char* szPath) override {
    return Fails("OpenForReading") ? -m_nError : FileSystem::OpenForReading(szPath);
  }
  Handle OpenForWriting(const char* szPath, unsigned nMode) override {
    return Fails("OpenForWriting") ? -m_nError : FileSystem::OpenForWriting(szPath, nMode);
  }
  Handle OpenForUpdate(const char* szPath, bool bCreate, bool bTruncate, unsigned nMode) override {
    return Fails("OpenForUpdate") ? -m_nError : FileSystem::OpenForUpdate(szPath, bCreate, bTruncate, nMode);
  }
  Handle CreateNew(const char* szPath, unsigned nMode) override {
    return Fails("CreateNew") ? -m_nError : FileSystem::CreateNew(szPath, nMode);
  }
  std::int64_t Read(Handle h, void* pBuffer, std::size_t nBytes) override {
    return Fails("Read") ? -m_nError : FileSystem::Read(h, pBuffer, Limited(nBytes));
  }
  std::int64_t Write(Handle h, const void* pBuffer, std::size_t nBytes) override {
    return Fails("Write") ? -m_nError : FileSystem::Write(h, pBuffer, Limited(nBytes));
  }
  std::int64_t Seek(Handle h, std::int64_t nOffset, int nWhence) override {
    return Fails("Seek") ? -m_nError : FileSystem::Seek(h, nOffset, nWhence);
  }
  int SetLength(Handle h, std::int64_t nLength) override {
    return Fails("SetLength") ? -m_nError : FileSystem::SetLength(h, nLength);
  }
  /// What succeeds does not wait for the device: no test takes its power away.
  int Sync(Handle) override { return Fails("Sync") ? -m_nError : 0; }
  int Close(Handle h) override {
    const bool bFails = Fails("Close");
    const int nResult = FileSystem::Close(h);
    return bFails ? -m_nError : nResult;
  }
  int Rename(const char* szFrom, const char* szTo) override {
    return Fails("Rename") ? -m_nError : FileSystem::Rename(szFrom, szTo);
  }
  int Remove(const char* szPath) override { return Fails("Remove") ? -m_nError : FileSystem::Remove(szPath); }
  int MakeFolder(const char* szPath, unsigned nMode) override {
    return Fails("MakeFolder") ? -m_nError : FileSystem::MakeFolder(szPath, nMode);
  }
  int RemoveFolder(const char* szPath) override {
    return Fails("RemoveFolder") ? -m_nError : FileSystem::RemoveFolder(szPath);
  }
  int DeleteTree(const char* szPath) override {
    return Fails("DeleteTree") ? -m_nError : FileSystem::DeleteTree(szPath);
  }
  bool Exists(const char* szPath) override { return !Fails("Exists") && FileSystem::Exists(szPath); }
  bool FolderExists(const char* szPath) override { return !Fails("FolderExists") && FileSystem::FolderExists(szPath); }
  Handle LockFolder(const char* szPath) override {
    return Fails("LockFolder") ? -m_nError : FileSystem::LockFolder(szPath);
  }
  int ListFolder(const char* szPath, std::vector<std::string>& names) override {
    return Fails("ListFolder") ? -m_nError : FileSystem::ListFolder(szPath, names);
  }
  int CheckOwnFolder(const char* szPath) override {
    return Fails("CheckOwnFolder") ? -m_nError : FileSystem::CheckOwnFolder(szPath);
  }
  int DescribeVolume(const char* szPath, Volume& volume) override {
    return Fails("DescribeVolume") ? -m_nError : FileSystem::DescribeVolume(szPath, volume);
  }
  std::int64_t SizeOf(Handle h) override { return Fails("SizeOf") ? -m_nError : FileSystem::SizeOf(h); }
  int Describe(const char* szPath, FileInfo& info) override {
    return Fails("Describe") ? -m_nError : FileSystem::Describe(szPath, info);
  }
  int ReadLink(const char* szPath, std::string& sTarget) override {
    return Fails("ReadLink") ? -m_nError : FileSystem::ReadLink(szPath, sTarget);
  }
  int SetMode(Handle h, unsigned nMode) override {
    return Fails("SetMode") ? -m_nError : FileSystem::SetMode(h, nMode);
  }

 private:
  bool Fails(const char* szOperation) {
    if (!m_sOnly.empty() && m_sOnly != szOperation) return false;
    m_operations.emplace_back(szOperation);
    if (m_nFirst == 0) return false;
    const bool bFails = Count() == m_nFirst || (m_duration == Duration::forever && Count() > m_nFirst);
    if (bFails && m_nFailed == 0) m_nFailed = m_operations.size();
    if (bFails) m_failed.emplace_back(szOperation);
    return bFails;
  }
  std::size_t Limited(std::size_t nBytes) const { return m_nLimit == 0 || nBytes < m_nLimit ? nBytes : m_nLimit; }

  int m_nFirst = 0;
  int m_nError = EIO;
  Duration m_duration = Duration::once;
  std::size_t m_nFailed = 0;
  std::size_t m_nLimit = 0;
  std::string m_sOnly;
  std::vector<std::string> m_operations;
  std::vector<std::string> m_failed;
};

/// Runs an operation with its first file operation failing, then its second, and so on until no more fail; each once
/// for that operation alone and once for all from it on. `run(files)` starts from the same state each time; the file
/// system serves the calling thread while it runs. Gives the number of runs in which an operation failed.
template <class Run>
int ForEachFailingFileOperation(int nError, Run run) {
  int nFailures = 0;
  for (const auto duration : {FaultyFileSystem::Duration::once, FaultyFileSystem::Duration::forever}) {
    for (int n = 1;; ++n) {
      FaultyFileSystem files(n, nError, duration);
      {
        const FileSystemScope scope(files);
        run(files);
      }
      if (!files.HasFailed()) break;
      ++nFailures;
    }
  }
  return nFailures;
}

}  // namespace laminate::test
