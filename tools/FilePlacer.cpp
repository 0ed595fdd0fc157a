#include "FilePlacer.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "Paths.h"
#include "base/FileSystem.h"

namespace laminate::cli {

namespace {

// Fills a file from another; gives 0 or the `errno`. `nTarget` is closed in any case.
int Fill(FileSystem::Handle hTarget, const std::string& sSource, bool bSync) {
  if (hTarget < 0) return -hTarget;
  FileSystem& fileSystem = TheFileSystem();
  std::string sContent;
  int n = ReadWholeFile(sSource.c_str(), sContent);
  if (n == 0) n = WriteAll(hTarget, sContent);
  if (n == 0 && bSync) n = fileSystem.Sync(hTarget);
  const int nClosed = fileSystem.Close(hTarget);
  return n != 0 ? -n : -nClosed;
}

}  // namespace

FilePlacer::~FilePlacer() {
  for (const std::string& s : m_leftovers) unlink(s.c_str());
}

void FilePlacer::Fail(const std::string& sName, int nError) const {
  m_console.Fail({sName}, std::string("cannot write: ") + std::strerror(nError));
}

void FilePlacer::Add(const std::string& sSource, const std::string& sName) {
  m_steps.push_back({.source = sSource, .name = sName, .target = {}, .backup = {}});
}

std::string FilePlacer::Beside(const std::string& sTarget) {
  std::string s = FolderOf(sTarget) + "/.laminate-XXXXXX";
  const int h = mkstemp(s.data());
  if (h < 0) Fail(sTarget, errno);
  close(h);
  m_leftovers.push_back(s);
  return s;
}

void FilePlacer::Prepare(Step& step) {
  FileSystem& fileSystem = TheFileSystem();
  step.target = ResolveLinks(step.name);
  if (step.target.empty()) Fail(step.name, errno);
  struct stat source {};
  if (stat(step.source.c_str(), &source) != 0) Fail(step.name, errno);
  struct stat old {};
  const bool bExists = stat(step.target.c_str(), &old) == 0;
  if (!bExists && errno != ENOENT) Fail(step.name, errno);
  if (bExists && S_ISDIR(old.st_mode)) Fail(step.name, EISDIR);
  if (bExists && access(step.target.c_str(), W_OK) != 0) Fail(step.name, errno);
  step.inPlace = bExists && !S_ISREG(old.st_mode);
  if (step.inPlace) return;
  if (step.target != step.name) {
    // A link may lead to another device, where only a copy can be renamed into place.
    const std::string sCopy = Beside(step.target);
    if (const int n = Fill(fileSystem.OpenForWriting(sCopy.c_str()), step.source, true); n != 0) Fail(step.name, n);
    step.source = sCopy;
  }
  if (chmod(step.source.c_str(), (bExists ? old : source).st_mode & 07777) != 0) Fail(step.name, errno);
  if (!bExists) return;
  // The old file keeps its name until the new one takes it, and has a second one until all are in place.
  step.backup = Beside(step.target);
  unlink(step.backup.c_str());
  if (link(step.target.c_str(), step.backup.c_str()) == 0) return;
  // A file system without second names.
  const int n = Fill(fileSystem.CreateNew(step.backup.c_str(), old.st_mode & 07777), step.target, true);
  if (n != 0) Fail(step.name, n);
}

void FilePlacer::Undo() {
  for (const Step& step : m_steps) {
    if (!step.done || step.inPlace) continue;
    if (step.backup.empty()) {
      unlink(step.target.c_str());
    } else if (std::rename(step.backup.c_str(), step.target.c_str()) != 0) {
      std::erase(m_leftovers, step.backup);
      m_console.Error({step.name}, "cannot be put back; its old text is in " + step.backup);
    }
  }
}

void FilePlacer::Commit() {
  for (Step& step : m_steps) Prepare(step);
  if (InterruptGuard::Pending() && !m_steps.empty()) m_console.Fail({m_steps.front().name}, "interrupted");

  // Those that cannot be undone come last.
  std::stable_partition(m_steps.begin(), m_steps.end(), [](const Step& step) { return !step.inPlace; });
  for (Step& step : m_steps) {
    int nError = 0;
    if (step.inPlace) {
      nError = Fill(TheFileSystem().OpenForWriting(step.target.c_str()), step.source, false);
    } else if (std::rename(step.source.c_str(), step.target.c_str()) != 0) {
      nError = errno;
    }
    if (nError != 0) {
      Undo();
      Fail(step.name, nError);
    }
    step.done = true;
  }
}

}  // namespace laminate::cli
