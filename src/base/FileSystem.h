#pragma once
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "base/CString.h"

namespace laminate {

/// The seam through which all file access of the library goes. The object that serves a thread can be replaced for a
/// scope, which is how tests make any single operation fail. Every operation gives 0 or a count for success and the
/// negative `errno` for failure; interrupted calls are repeated, short reads and writes are continued by the functions
/// below the class. Handles are the process's file descriptors, also in a replacement. Paths are bytes.
class FileSystem {
 public:
  virtual ~FileSystem() = default;
  using Handle = int;

  virtual Handle OpenForReading(const char* szPath);
  /// Creates or truncates. A new file gets `nMode` less the process's mask.
  virtual Handle OpenForWriting(const char* szPath, unsigned nMode = 0666);
  /// For reading and writing: without `bCreate` the file must exist, with `bTruncate` its content goes.
  virtual Handle OpenForUpdate(const char* szPath, bool bCreate, bool bTruncate, unsigned nMode = 0666);
  /// Creates a file that must not exist yet; never follows a link at the last step.
  virtual Handle CreateNew(const char* szPath, unsigned nMode = 0666);
  virtual std::int64_t Read(Handle h, void* pBuffer, std::size_t nBytes);
  virtual std::int64_t Write(Handle h, const void* pBuffer, std::size_t nBytes);
  /// Gives the new position.
  virtual std::int64_t Seek(Handle h, std::int64_t nOffset, int nWhence);
  virtual int SetLength(Handle h, std::int64_t nLength);
  /// Brings the written bytes to the device.
  virtual int Sync(Handle h);
  /// The handle is gone whatever the result.
  virtual int Close(Handle h);
  virtual int Rename(const char* szFrom, const char* szTo);
  virtual int Remove(const char* szPath);
  /// One folder; its parent must exist. -EEXIST when there is something of that name.
  virtual int MakeFolder(const char* szPath, unsigned nMode = 0777);
  /// An empty folder; -ENOTEMPTY when there is something in it.
  virtual int RemoveFolder(const char* szPath);
  /// The folder and all that is in it, as far as it can be removed; the first failure is the result, -ENOENT when there
  /// is nothing. Follows no link: a link in the folder's place or inside is removed itself. Enters no other volume.
  virtual int DeleteTree(const char* szPath);
  virtual bool Exists(const char* szPath);
  /// Whether a folder, or a link to one, stands there.
  virtual bool FolderExists(const char* szPath);
  /// Opens a folder, following no link at the last step, and locks it for as long as the handle is open. -EWOULDBLOCK
  /// when another handle of any process holds the lock, or when the folder was removed meanwhile. A forked child
  /// shares the lock.
  virtual Handle LockFolder(const char* szPath);
  /// The names in a folder without "." and "..", in no order.
  virtual int ListFolder(const char* szPath, std::vector<std::string>& names);
  /// 0 when a folder, and no link, of the calling user stands there; -EPERM when it is another user's.
  virtual int CheckOwnFolder(const char* szPath);

  struct Volume {
    bool bInMemory = false;
    std::uint64_t nFreeBytes = 0;  ///< what the calling user may still write
  };
  virtual int DescribeVolume(const char* szPath, Volume& volume);
  /// How many bytes a file holds; 0 for what has no size, such as a pipe.
  virtual std::int64_t SizeOf(Handle h);

  struct FileInfo {
    enum class Kind { file, folder, other };
    Kind kind = Kind::other;
    unsigned nMode = 0;      ///< the permissions
    bool bWritable = false;  ///< by the calling user
  };
  /// What a path leads to, behind all links; -ENOENT when there is nothing.
  virtual int Describe(const char* szPath, FileInfo& info);
  /// What a link says; -EINVAL for what is no link.
  virtual int ReadLink(const char* szPath, std::string& sTarget);
  virtual int SetMode(Handle h, unsigned nMode);
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

/// A handle that closes itself. It may be made of an operation's result as it comes: a negative one is no open file.
class OpenedFile {
 public:
  OpenedFile() = default;
  explicit OpenedFile(FileSystem::Handle h) : m_h(h) {}
  OpenedFile(OpenedFile&& f) noexcept : m_h(f.m_h) { f.m_h = -1; }
  OpenedFile& operator=(OpenedFile&& f) noexcept;
  ~OpenedFile();
  bool IsOpen() const { return m_h >= 0; }
  FileSystem::Handle Get() const { return m_h; }
  /// Gives the close's result: 0 or the negative `errno`; 0 when nothing is open.
  int Close();

 private:
  FileSystem::Handle m_h = -1;
};

/// Reads a whole file from an offset to its end, growing with what comes (so a pipe works too, from offset 0). Gives 0
/// or the negative `errno`; a folder is -EISDIR. On failure `sContent` holds what was read. Raises only
/// `CMemoryException`.
int ReadWholeFile(const char* szPath, std::string& sContent, std::uint64_t nOffset = 0);

/// Makes a folder with its missing parents; one that exists is as good. Gives 0 or the negative `errno`;
/// -ENOTDIR when something else stands there.
int MakeFolders(const std::string& sPath);

/// Reads until `nBytes` have come or the file ends; gives their number or the negative `errno`.
std::int64_t ReadAll(FileSystem::Handle h, void* pBuffer, std::size_t nBytes);

/// Writes all bytes; gives 0 or the negative `errno`.
int WriteAll(FileSystem::Handle h, std::string_view s);

/// A C stream for writing whose bytes go through the seam: what a writer that takes a `FILE*` is given. Truncates or
/// creates. Null on failure, with `errno` set. A failed write shows in `ferror`; `std::fclose` gives EOF when a write
/// or the close failed.
std::FILE* OpenStreamForWriting(const char* szPath);

}  // namespace laminate
