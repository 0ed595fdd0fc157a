// Preloaded into the command: the call of the system with the number LAMINATE_FAILING_CALL, counted from 1, fails. The
// file LAMINATE_FAILED_CALL then holds its name.
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

bool Fails(const char* szName) {
  static const char* const szCall = std::getenv("LAMINATE_FAILING_CALL");
  static const int nFailing = szCall == nullptr ? 0 : std::atoi(szCall);
  static std::atomic<int> nCall = 0;
  if (++nCall != nFailing) return false;
  const char* const szFile = std::getenv("LAMINATE_FAILED_CALL");
  const auto h = static_cast<int>(syscall(SYS_openat, AT_FDCWD, szFile, O_WRONLY | O_CREAT, 0600));
  const long nWritten = syscall(SYS_write, h, szName, std::strlen(szName));
  syscall(SYS_close, h);
  if (nWritten < 0) std::abort();
  errno = EIO;
  return true;
}

template <class Function>
Function* Real(const char* szName, Function*) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, szName));
}

}  // namespace

#define CALL(result, failure, name, parameters, arguments) \
  extern "C" result name parameters {                      \
    static auto* const real = Real(#name, &name);          \
    return Fails(#name) ? failure : real arguments;        \
  }
#define OPENING_CALL(name, parameters, arguments) \
  extern "C" int name parameters {                \
    static auto* const real = Real(#name, &name); \
    va_list rest;                                 \
    va_start(rest, nFlags);                       \
    const mode_t nMode = va_arg(rest, mode_t);    \
    va_end(rest);                                 \
    return Fails(#name) ? -1 : real arguments;    \
  }

OPENING_CALL(open, (const char* szPath, int nFlags, ...), (szPath, nFlags, nMode))
OPENING_CALL(openat, (int hFolder, const char* szPath, int nFlags, ...), (hFolder, szPath, nFlags, nMode))
CALL(ssize_t, -1, read, (int h, void* p, std::size_t n), (h, p, n))
CALL(ssize_t, -1, write, (int h, const void* p, std::size_t n), (h, p, n))
CALL(off_t, -1, lseek, (int h, off_t nOffset, int nWhence) noexcept, (h, nOffset, nWhence))
CALL(int, -1, fsync, (int h), (h))
CALL(int, -1, ftruncate, (int h, off_t n) noexcept, (h, n))
CALL(int, -1, rename, (const char* szFrom, const char* szTo) noexcept, (szFrom, szTo))
CALL(int, -1, link, (const char* szFrom, const char* szTo) noexcept, (szFrom, szTo))
CALL(int, -1, unlink, (const char* szPath) noexcept, (szPath))
CALL(int, -1, unlinkat, (int hFolder, const char* szPath, int nFlags) noexcept, (hFolder, szPath, nFlags))
CALL(int, -1, mkdir, (const char* szPath, mode_t nMode) noexcept, (szPath, nMode))
CALL(int, -1, rmdir, (const char* szPath) noexcept, (szPath))
CALL(int, -1, mkstemp, (char* szPath), (szPath))
CALL(char*, nullptr, mkdtemp, (char* szPath) noexcept, (szPath))
CALL(int, -1, chmod, (const char* szPath, mode_t nMode) noexcept, (szPath, nMode))
CALL(int, -1, fchmod, (int h, mode_t nMode) noexcept, (h, nMode))
CALL(int, -1, stat, (const char* szPath, struct stat* p) noexcept, (szPath, p))
CALL(int, -1, access, (const char* szPath, int nMode) noexcept, (szPath, nMode))
CALL(ssize_t, -1, readlink, (const char* szPath, char* p, std::size_t n) noexcept, (szPath, p, n))

// It closes all the same, as the system does.
extern "C" int close(int h) {
  static auto* const real = Real("close", &close);
  const bool bFails = Fails("close");
  const int nResult = real(h);
  if (!bFails) return nResult;
  errno = EIO;
  return -1;
}
