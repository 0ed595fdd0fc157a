#include "base/HeldFile.h"

#include <sys/mman.h>

#include <cerrno>

namespace laminate {

HeldFile::HeldFile(const char* szPath) {
  FileSystem::FileInfo info;
  if (TheFileSystem().Describe(szPath, info) != 0 || info.kind != FileSystem::FileInfo::Kind::other) return;
  m_files.path = szPath;
  m_nResult = Hold();
  if (m_nResult == 0) m_scope.emplace(m_files);
}

int HeldFile::Hold() {
  std::string sContent;
  if (const int nError = ReadWholeFile(m_files.path.c_str(), sContent); nError != 0) return nError;
  m_files.content = OpenedFile(::memfd_create("laminate", MFD_CLOEXEC));
  if (!m_files.content.IsOpen()) return -errno;
  return WriteAll(m_files.content.Get(), sContent);
}

FileSystem::Handle HeldFile::Files::OpenForReading(const char* szPath) {
  if (szPath == nullptr || path != szPath) return FileSystem::OpenForReading(szPath);
  // By a name, not as a copy of the handle: each reader has a position of its own.
  return FileSystem::OpenForReading(("/proc/self/fd/" + std::to_string(content.Get())).c_str());
}

}  // namespace laminate
