#include "base/WholeFile.h"

#include <unistd.h>

#include <cerrno>

namespace laminate {
namespace {

// The path behind all links; its last step need not exist. Gives 0 or the negative `errno`.
int FollowLinks(const CString& sPath, std::string& sTarget) {
  constexpr int kMaxLinks = 40;  // what the system itself follows
  sTarget = std::string(sPath.CView());
  for (int i = 0; i < kMaxLinks; ++i) {
    std::string sLink;
    const int nResult = TheFileSystem().ReadLink(sTarget.c_str(), sLink);
    if (nResult == -EINVAL || nResult == -ENOENT) return 0;
    if (nResult != 0) return nResult;
    const std::size_t nFolder = sTarget.rfind('/');
    sTarget = sLink.starts_with('/') || nFolder == std::string::npos ? sLink : sTarget.substr(0, nFolder + 1) + sLink;
  }
  return -ELOOP;
}

constexpr unsigned kNewFileMode = 0666;  // less what the process masks

// How temporary names for the target begin. They stay within what a file system allows where the target's name does.
std::string NameBeside(const std::string& sTarget) {
  constexpr std::size_t kLongest = 200;
  const std::size_t nFolder = sTarget.rfind('/') + 1;
  return sTarget.substr(0, nFolder) + sTarget.substr(nFolder, kLongest) + ".tmp" + std::to_string(::getpid()) + "-";
}

}  // namespace

WholeFile::WholeFile(const CString& sPath) : m_sPath(sPath) {
  WithPlatformFailures([this] { Open(); });
}

void WholeFile::Open() {
  if (m_sPath.IsEmpty()) Fail(ENOENT);
  FileSystem& fileSystem = TheFileSystem();
  if (const int n = FollowLinks(m_sPath, m_sTarget); n != 0) Fail(-n);
  FileSystem::FileInfo info;
  const int nFound = fileSystem.Describe(m_sTarget.c_str(), info);
  if (nFound != 0 && nFound != -ENOENT) Fail(-nFound);
  const bool bExists = nFound == 0;
  if (bExists && info.kind == FileSystem::FileInfo::Kind::folder) Fail(EISDIR);
  if (bExists && info.kind == FileSystem::FileInfo::Kind::other) {
    const FileSystem::Handle h = fileSystem.OpenForWriting(m_sTarget.c_str());
    if (h < 0) Fail(-h);
    m_file = OpenedFile(h);
  } else {
    if (bExists) {
      // Replacing it needs no right on the file itself; a write-protected one is left alone all the same.
      if (!info.bWritable) Fail(EACCES);
      m_nMode = info.nMode;
    }
    FileSystem::Handle h = -EEXIST;
    const std::string sBeside = NameBeside(m_sTarget);
    for (int i = 0; h == -EEXIST && i < 1000; ++i) {
      m_sTemporary = sBeside + std::to_string(i);
      // What only some may read stays so while it is written.
      h = fileSystem.CreateNew(m_sTemporary.c_str(), m_nMode.value_or(kNewFileMode) & kNewFileMode);
    }
    if (h < 0) {
      m_sTemporary.clear();
      Fail(-h);
    }
    m_file = OpenedFile(h);
  }
  try {
    m_pText = std::make_unique<TextOut>(m_file.Get());
  } catch (...) {
    Discard();
    throw;
  }
}

WholeFile::~WholeFile() {
  m_pText.reset();
  Discard();
}

const std::string& WholeFile::Finish() {
  FileSystem& fileSystem = TheFileSystem();
  if (!m_pText->Flush()) Fail(m_pText->Error());
  if (!m_sTemporary.empty()) {
    if (m_nMode) {
      if (const int n = fileSystem.SetMode(m_file.Get(), *m_nMode); n != 0) Fail(-n);
    }
    if (const int n = fileSystem.Sync(m_file.Get()); n != 0) Fail(-n);
  }
  if (const int n = m_file.Close(); n != 0) Fail(-n);
  return m_sTemporary;
}

void WholeFile::Commit() {
  if (Finish().empty()) return;
  if (const int n = TheFileSystem().Rename(m_sTemporary.c_str(), m_sTarget.c_str()); n != 0) Fail(-n);
  m_sTemporary.clear();
}

void WholeFile::Fail(int nError) {
  Discard();
  AfxThrowFileException(CFileException::OsErrorToException(nError), nError, m_sPath);
}

void WholeFile::Discard() noexcept {
  m_file.Close();
  if (m_sTemporary.empty()) return;
  TheFileSystem().Remove(m_sTemporary.c_str());
  m_sTemporary.clear();
}

}  // namespace laminate
