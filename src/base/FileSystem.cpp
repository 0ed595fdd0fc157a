#include "base/FileSystem.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstddef>
#include <memory>
#include <new>
#include <stdexcept>
#include <utility>

namespace laminate {
namespace {

thread_local FileSystem* t_pFileSystem = nullptr;

template <class Call>
auto Repeated(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}
template <class Result>
Result Outcome(Result result) {
  return result < 0 ? static_cast<Result>(-errno) : result;
}

const char* Arg(const char* szPath) { return szPath ? szPath : ""; }

int OpenAt(int folder, const char* szPath, int nFlags, unsigned nMode = 0) {
  return Outcome(Repeated([=] { return ::openat(folder, szPath, nFlags | O_CLOEXEC | O_NOCTTY, nMode); }));
}

// A descriptor of the system itself: what an operation of the seam opens for its own use is no operation more.
struct Descriptor {
  int fd = -1;
  void reset(int n) {
    if (fd >= 0) ::close(fd);
    fd = n;
  }
  Descriptor() = default;
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { reset(-1); }
};

constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW;

bool IsDotOrDots(const char* szName) {
  return szName[0] == '.' && (szName[1] == '\0' || (szName[1] == '.' && szName[2] == '\0'));
}

// The names in an open folder, which stays open. 0 or the negative errno.
int NamesIn(int folder, std::vector<std::string>& names) {
  const int own = OpenAt(folder, ".", O_RDONLY | O_DIRECTORY);
  if (own < 0) return own;
  DIR* dir = ::fdopendir(own);
  if (dir == nullptr) {
    const int nError = -errno;
    ::close(own);
    return nError;
  }
  const std::unique_ptr<DIR, int (*)(DIR*)> closer(dir, ::closedir);
  for (;;) {
    errno = 0;
    const dirent* entry = ::readdir(dir);
    if (entry == nullptr) return -errno;
    if (!IsDotOrDots(entry->d_name)) names.emplace_back(entry->d_name);
  }
}

// Removes the content of a folder. Only two descriptors are open at any time, however deep the folders nest: the way
// back up is "..", held against the identity of the folder that the way down came from.
class TreeRemover {
 public:
  // Takes the descriptor over.
  int Run(int folder) {
    m_at.reset(folder);
    struct stat info;
    if (::fstat(folder, &info) != 0) return -errno;
    m_volume = info.st_dev;
    Push({}, info);
    while (!m_levels.empty()) {
      if (m_levels.back().names.empty()) {
        if (!LeaveFolder()) break;
      } else {
        std::string name = std::move(m_levels.back().names.back());
        m_levels.back().names.pop_back();
        RemoveEntry(std::move(name));
      }
    }
    return m_nResult;
  }

 private:
  struct Level {
    std::string name;  // in the folder above
    ino_t inode;
    std::vector<std::string> names;  // still to be removed
  };
  void Fail(int nError) {
    if (m_nResult == 0) m_nResult = nError;
  }
  void Push(std::string name, const struct stat& info) {
    Level level{std::move(name), info.st_ino, {}};
    if (const int nError = NamesIn(m_at.fd, level.names)) Fail(nError);
    m_levels.push_back(std::move(level));
  }

  void RemoveEntry(std::string name) {
    if (::unlinkat(m_at.fd, name.c_str(), 0) == 0 || errno == ENOENT) return;
    // Some systems say EPERM where a folder stands.
    const int nUnlinkError = -errno;
    if (nUnlinkError != -EISDIR && nUnlinkError != -EPERM) return Fail(nUnlinkError);
    if (::unlinkat(m_at.fd, name.c_str(), AT_REMOVEDIR) == 0) return;
    const int folder = OpenAt(m_at.fd, name.c_str(), kFolderFlags);
    if (folder < 0) return Fail(folder == -ENOTDIR || folder == -ELOOP ? nUnlinkError : folder);
    struct stat info;
    if (::fstat(folder, &info) != 0 || info.st_dev != m_volume) {
      ::close(folder);
      return Fail(-EXDEV);
    }
    m_at.reset(folder);
    Push(std::move(name), info);
  }

  // Back to the folder above, where the one that was left is removed. False when there is no way back.
  bool LeaveFolder() {
    const std::string name = std::move(m_levels.back().name);
    m_levels.pop_back();
    if (m_levels.empty()) return true;
    const int above = OpenAt(m_at.fd, "..", O_RDONLY | O_DIRECTORY);
    if (above < 0) {
      Fail(above);
      return false;
    }
    m_at.reset(above);
    struct stat info;
    if (::fstat(above, &info) != 0 || info.st_dev != m_volume || info.st_ino != m_levels.back().inode) {
      Fail(-ESTALE);  // somebody moved the folder meanwhile
      return false;
    }
    if (::unlinkat(above, name.c_str(), AT_REMOVEDIR) != 0 && errno != ENOENT) Fail(-errno);
    return true;
  }

  Descriptor m_at;
  dev_t m_volume = 0;
  std::vector<Level> m_levels;
  int m_nResult = 0;
};

}  // namespace

FileSystem::Handle FileSystem::OpenForReading(const char* szPath) { return OpenAt(AT_FDCWD, Arg(szPath), O_RDONLY); }
FileSystem::Handle FileSystem::OpenForWriting(const char* szPath, unsigned nMode) {
  return OpenAt(AT_FDCWD, Arg(szPath), O_WRONLY | O_CREAT | O_TRUNC, nMode);
}
FileSystem::Handle FileSystem::OpenForUpdate(const char* szPath, bool bCreate, bool bTruncate, unsigned nMode) {
  return OpenAt(AT_FDCWD, Arg(szPath), O_RDWR | (bCreate ? O_CREAT : 0) | (bTruncate ? O_TRUNC : 0), nMode);
}
FileSystem::Handle FileSystem::CreateNew(const char* szPath, unsigned nMode) {
  return OpenAt(AT_FDCWD, Arg(szPath), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, nMode);
}

std::int64_t FileSystem::Read(Handle h, void* pBuffer, std::size_t nBytes) {
  return Outcome(Repeated([=] { return static_cast<std::int64_t>(::read(h, pBuffer, nBytes)); }));
}
std::int64_t FileSystem::Write(Handle h, const void* pBuffer, std::size_t nBytes) {
  return Outcome(Repeated([=] { return static_cast<std::int64_t>(::write(h, pBuffer, nBytes)); }));
}
std::int64_t FileSystem::Seek(Handle h, std::int64_t nOffset, int nWhence) {
  return Outcome(static_cast<std::int64_t>(::lseek(h, nOffset, nWhence)));
}
int FileSystem::SetLength(Handle h, std::int64_t nLength) {
  return Outcome(Repeated([=] { return ::ftruncate(h, nLength); }));
}
int FileSystem::Sync(Handle h) {
  return Outcome(Repeated([=] { return ::fsync(h); }));
}
int FileSystem::Close(Handle h) {
  // Not repeated: the descriptor is free after an interrupted close too.
  return ::close(h) == 0 || errno == EINTR ? 0 : -errno;
}
int FileSystem::Rename(const char* szFrom, const char* szTo) { return Outcome(::rename(Arg(szFrom), Arg(szTo))); }
int FileSystem::Remove(const char* szPath) { return Outcome(::unlink(Arg(szPath))); }
int FileSystem::MakeFolder(const char* szPath, unsigned nMode) { return Outcome(::mkdir(Arg(szPath), nMode)); }

int FileSystem::RemoveFolder(const char* szPath) { return Outcome(::rmdir(Arg(szPath))); }

int FileSystem::DeleteTree(const char* szPath) {
  // Without the separators at its end, so that no link is followed there.
  std::string path(Arg(szPath));
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  const int folder = OpenAt(AT_FDCWD, path.c_str(), kFolderFlags);
  if (folder == -ENOTDIR || folder == -ELOOP) return Outcome(::unlink(path.c_str()));
  if (folder < 0) return folder;
  TreeRemover remover;
  const int nResult = remover.Run(folder);
  if (::rmdir(path.c_str()) == 0) return nResult;
  return nResult != 0 ? nResult : -errno;
}

bool FileSystem::Exists(const char* szPath) {
  struct stat info;
  return ::stat(Arg(szPath), &info) == 0;
}
bool FileSystem::FolderExists(const char* szPath) {
  struct stat info;
  return ::stat(Arg(szPath), &info) == 0 && S_ISDIR(info.st_mode);
}

FileSystem::Handle FileSystem::LockFolder(const char* szPath) {
  const int folder = OpenAt(AT_FDCWD, Arg(szPath), kFolderFlags);
  if (folder < 0) return folder;
  int nResult = Outcome(Repeated([=] { return ::flock(folder, LOCK_EX | LOCK_NB); }));
  if (nResult == 0) {
    // The holder before may have removed the folder between the opening and the lock.
    struct stat locked;
    struct stat present;
    if (::fstat(folder, &locked) != 0 || ::lstat(Arg(szPath), &present) != 0 || locked.st_dev != present.st_dev ||
        locked.st_ino != present.st_ino) {
      nResult = -EWOULDBLOCK;
    }
  }
  if (nResult == 0) return folder;
  ::close(folder);
  return nResult;
}

int FileSystem::ListFolder(const char* szPath, std::vector<std::string>& names) {
  Descriptor folder;
  folder.reset(OpenAt(AT_FDCWD, Arg(szPath), O_RDONLY | O_DIRECTORY));
  return folder.fd < 0 ? folder.fd : NamesIn(folder.fd, names);
}

int FileSystem::CheckOwnFolder(const char* szPath) {
  struct stat info;
  if (::lstat(Arg(szPath), &info) != 0) return -errno;
  if (!S_ISDIR(info.st_mode)) return -ENOTDIR;
  return info.st_uid == ::geteuid() ? 0 : -EPERM;
}

int FileSystem::DescribeVolume(const char* szPath, Volume& volume) {
  struct statfs info;
  if (const int nError = Outcome(Repeated([&] { return ::statfs(Arg(szPath), &info); })); nError < 0) return nError;
  constexpr std::uint32_t kTmpfs = 0x01021994;
  constexpr std::uint32_t kRamfs = 0x858458F6;
  const auto nType = static_cast<std::uint32_t>(info.f_type);
  volume.bInMemory = nType == kTmpfs || nType == kRamfs;
  volume.nFreeBytes = static_cast<std::uint64_t>(info.f_bavail) * static_cast<std::uint64_t>(info.f_bsize);
  return 0;
}

std::int64_t FileSystem::SizeOf(Handle h) {
  struct stat info;
  if (::fstat(h, &info) != 0) return -errno;
  return S_ISREG(info.st_mode) ? info.st_size : 0;
}

int FileSystem::Describe(const char* szPath, FileInfo& info) {
  struct stat status;
  if (::stat(Arg(szPath), &status) != 0) return -errno;
  info.kind = S_ISREG(status.st_mode)   ? FileInfo::Kind::file
              : S_ISDIR(status.st_mode) ? FileInfo::Kind::folder
                                        : FileInfo::Kind::other;
  info.nMode = status.st_mode & 07777;
  info.bWritable = ::access(Arg(szPath), W_OK) == 0;
  return 0;
}

int FileSystem::ReadLink(const char* szPath, std::string& sTarget) {
  char szTarget[PATH_MAX];
  const ssize_t n = ::readlink(Arg(szPath), szTarget, sizeof szTarget);
  if (n < 0) return -errno;
  sTarget.assign(szTarget, static_cast<std::size_t>(n));
  return 0;
}

int FileSystem::SetMode(Handle h, unsigned nMode) {
  return Outcome(Repeated([=] { return ::fchmod(h, nMode); }));
}

FileSystem& TheFileSystem() {
  // Never destroyed: files may be closed while the process ends.
  alignas(FileSystem) static std::byte place[sizeof(FileSystem)];
  static FileSystem* const theSystem = ::new (static_cast<void*>(place)) FileSystem;
  return t_pFileSystem != nullptr ? *t_pFileSystem : *theSystem;
}

FileSystemScope::FileSystemScope(FileSystem& fileSystem) : m_pOuter(t_pFileSystem) { t_pFileSystem = &fileSystem; }
FileSystemScope::~FileSystemScope() { t_pFileSystem = m_pOuter; }

OpenedFile& OpenedFile::operator=(OpenedFile&& f) noexcept {
  if (this != &f) {
    Close();
    m_h = std::exchange(f.m_h, -1);
  }
  return *this;
}
OpenedFile::~OpenedFile() { Close(); }
int OpenedFile::Close() { return m_h < 0 ? 0 : TheFileSystem().Close(std::exchange(m_h, -1)); }

int ReadWholeFile(const char* szPath, std::string& sContent, std::uint64_t nOffset) {
  sContent.clear();
  FileSystem& files = TheFileSystem();
  const OpenedFile file(files.OpenForReading(szPath));
  if (!file.IsOpen()) return file.Get();
  if (nOffset != 0) {
    if (nOffset > static_cast<std::uint64_t>(INT64_MAX)) return -EINVAL;
    const std::int64_t nAt = files.Seek(file.Get(), static_cast<std::int64_t>(nOffset), SEEK_SET);
    if (nAt < 0) return static_cast<int>(nAt);
  }
  try {
    // The size is a hint only: the file may grow or shrink, and what has no size may hold bytes all the same.
    const std::int64_t nSize = files.SizeOf(file.Get());
    const std::uint64_t nLeft =
        nSize > 0 && static_cast<std::uint64_t>(nSize) > nOffset ? static_cast<std::uint64_t>(nSize) - nOffset : 0;
    // With room for what a reader may want to put behind it.
    constexpr std::size_t kRoomBehind = 64;
    sContent.reserve(nLeft + kRoomBehind);
    // A string clears what it grows by; in steps that stay in the cache this costs little.
    constexpr std::size_t kStep = 256 * 1024;
    std::size_t nHave = 0;
    for (;;) {
      // One byte more than the hint, so that the end is seen without another step.
      const std::size_t nRoom = sContent.capacity() - nHave;
      const std::size_t nStep = nRoom == 0 ? kStep : std::min(kStep, nRoom);
      sContent.resize(nHave + nStep);
      const std::int64_t nRead = files.Read(file.Get(), sContent.data() + nHave, nStep);
      nHave += static_cast<std::size_t>(std::max<std::int64_t>(nRead, 0));
      sContent.resize(nHave);
      if (nRead <= 0) return static_cast<int>(nRead);
    }
  } catch (const std::bad_alloc&) {
    AfxThrowMemoryException();
  } catch (const std::length_error&) {
    AfxThrowMemoryException();
  }
}

int MakeFolders(const std::string& sPath) {
  FileSystem& files = TheFileSystem();
  if (files.FolderExists(sPath.c_str())) return 0;
  int nResult = -ENOENT;
  for (std::size_t end = sPath.find_first_not_of('/'); end != std::string::npos;) {
    end = sPath.find('/', end);
    // A parent may refuse new folders and yet exist, so only the last step's result counts.
    nResult = files.MakeFolder(sPath.substr(0, end).c_str());
    if (end != std::string::npos) end = sPath.find_first_not_of('/', end);
  }
  if (nResult == 0 || files.FolderExists(sPath.c_str())) return 0;
  return nResult == -EEXIST ? -ENOTDIR : nResult;
}

std::int64_t ReadAll(FileSystem::Handle h, void* pBuffer, std::size_t nBytes) {
  FileSystem& files = TheFileSystem();
  std::size_t nHave = 0;
  while (nHave < nBytes) {
    const std::int64_t nRead = files.Read(h, static_cast<char*>(pBuffer) + nHave, nBytes - nHave);
    if (nRead < 0) return nRead;
    if (nRead == 0) break;
    nHave += static_cast<std::size_t>(nRead);
  }
  return static_cast<std::int64_t>(nHave);
}

int WriteAll(FileSystem::Handle h, std::string_view s) {
  FileSystem& files = TheFileSystem();
  while (!s.empty()) {
    const std::int64_t nWritten = files.Write(h, s.data(), s.size());
    if (nWritten < 0) return static_cast<int>(nWritten);
    if (nWritten == 0) return -EIO;  // a device that takes nothing would otherwise be asked for ever
    s.remove_prefix(static_cast<std::size_t>(nWritten));
  }
  return 0;
}

namespace {

struct StreamCookie {
  OpenedFile file;
  int nResult = 0;         // of the first operation that failed: the stream stays failed, and so does its close
  char buffer[64 * 1024];  // the stream's own one is small
};

// A short count is how the stream learns of a failure.
ssize_t WriteToCookie(void* pCookie, const char* pBytes, size_t nBytes) {
  auto& cookie = *static_cast<StreamCookie*>(pCookie);
  if (cookie.nResult == 0) cookie.nResult = WriteAll(cookie.file.Get(), {pBytes, nBytes});
  if (cookie.nResult == 0) return static_cast<ssize_t>(nBytes);
  errno = -cookie.nResult;
  return 0;
}

int CloseCookie(void* pCookie) {
  const std::unique_ptr<StreamCookie> cookie(static_cast<StreamCookie*>(pCookie));
  const int nClosed = cookie->file.Close();
  if (cookie->nResult == 0) cookie->nResult = nClosed;
  if (cookie->nResult == 0) return 0;
  errno = -cookie->nResult;
  return EOF;
}

}  // namespace

std::FILE* OpenStreamForWriting(const char* szPath) {
  OpenedFile file(TheFileSystem().OpenForWriting(szPath));
  if (!file.IsOpen()) {
    errno = -file.Get();
    return nullptr;
  }
  std::unique_ptr<StreamCookie> cookie(new (std::nothrow) StreamCookie);
  if (cookie == nullptr) {
    errno = ENOMEM;
    return nullptr;
  }
  cookie->file = std::move(file);
  std::FILE* fp = ::fopencookie(cookie.get(), "w", {nullptr, WriteToCookie, nullptr, CloseCookie});
  if (fp == nullptr) return nullptr;
  std::setvbuf(fp, cookie->buffer, _IOFBF, sizeof cookie->buffer);
  cookie.release();
  return fp;
}

}  // namespace laminate
