#pragma once
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include "base/CString.h"

namespace laminate {

/// The seam through which all file access of the library goes. The object that serves a thread can be replaced for a
/// scope, which is how tests make any single operation fail. Every operation gives 0 or a count for success and the
/// negative `errno` for failure; interrupted calls are repeated, short reads and writes are continued by the callers
/// below. Paths are bytes.
class FileSystem {
 public:
  virtual ~FileSystem() = default;
  using Handle = int;

  virtual Handle OpenForReading(const char* szPath);
  /// Creates or truncates. A new file gets `nMode` less the process's mask.
  virtual Handle OpenForWriting(const char* szPath, unsigned nMode = 0666);
  /// Creates a file that must not exist yet; never follows a link at the last step.
  virtual Handle CreateNew(const char* szPath, unsigned nMode = 0666);
  virtual std::int64_t Read(Handle h, void* pBuffer, std::size_t nBytes);
  virtual std::int64_t Write(Handle h, const void* pBuffer, std::size_t nBytes);
  virtual std::int64_t Seek(Handle h, std::int64_t nOffset, int nWhence);
  /// Brings the written bytes to the device.
  virtual int Sync(Handle h);
  virtual int Close(Handle h);
  virtual int Rename(const char* szFrom, const char* szTo);
  virtual int Remove(const char* szPath);
  /// One folder; its parent must exist. -EEXIST when there is one.
  virtual int MakeFolder(const char* szPath, unsigned nMode = 0777);
  /// The folder and all that is in it. Follows no link: a link in its place or inside is removed itself.
  virtual int DeleteTree(const char* szPath);
  virtual bool Exists(const char* szPath);
};

/// The file system that serves the calling thread.
FileSystem& TheFileSystem();

/// Replaces it for a scope.
class FileSystemScope {
 public:
  explicit FileSystemScope(FileSystem& fileSystem);
  ~FileSystemScope();
  FileSystemScope(const FileSystemScope&) = delete;
  FileSystemScope& operator=(const FileSystemScope&) = delete;

 private:
  FileSystem* m_pOuter;
};

/// A handle that closes itself.
class OpenedFile {
 public:
  OpenedFile() = default;
  explicit OpenedFile(FileSystem::Handle h) : m_h(h) {}
  OpenedFile(OpenedFile&& f) noexcept : m_h(f.m_h) { f.m_h = -1; }
  OpenedFile& operator=(OpenedFile&& f) noexcept;
  ~OpenedFile();
  bool IsOpen() const { return m_h >= 0; }
  FileSystem::Handle Get() const { return m_h; }
  /// Gives the close's result: 0 or the negative `errno`.
  int Close();

 private:
  FileSystem::Handle m_h = -1;
};

/// Reads a whole file from an offset to its end, growing with what comes (so a pipe works too). Gives 0 or the negative
/// `errno`; a folder is -EISDIR. On failure `sContent` holds what was read. Raises only `CMemoryException`.
int ReadWholeFile(const char* szPath, std::string& sContent, std::uint64_t nOffset = 0);

/// Writes all bytes; gives 0 or the negative `errno`.
int WriteAll(FileSystem::Handle h, std::string_view s);

/// A C stream for writing whose bytes go through the seam: what a writer that takes a `FILE*` is given. Truncates or
/// creates. Null on failure, with `errno` set. `std::fclose` closes it and gives EOF when a write or the close failed.
std::FILE* OpenStreamForWriting(const char* szPath);

}  // namespace laminate
