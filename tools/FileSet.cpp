#include "FileSet.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>

#include "Paths.h"
#include "base/FileSystem.h"

namespace laminate::cli {

namespace {

constexpr const char* kEndings[] = {".pcf", ".ftf", ".tcf", ".pkf", ".cdf"};

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

// One file on its way into place.
struct FileSet::Step {
  std::string source;  // as the library wrote it, or a copy beside the target
  std::string name;    // as the user calls it
  std::string target;  // behind all links
  std::string backup;  // the old file under a second name; empty when there was none
  bool inPlace = false;
  bool done = false;
};

FileSet::FileSet(Console& console, const std::string& sStem, const std::vector<std::string>& inputs)
    : m_console(console), m_endings(std::begin(kEndings), std::end(kEndings)), m_sStem(sStem) {
  TakeStem();
  for (const char* szEnding : m_endings) RefuseOutputOverInputs(console, Path(szEnding), inputs);
}

FileSet::FileSet(Console& console, const std::string& sStem, const std::vector<Replacement>& replacements)
    : m_console(console), m_sStem(sStem) {
  TakeStem();
  for (const Replacement& file : replacements) {
    m_endings.push_back(file.szEnding);
    for (const Replacement& other : replacements) {
      if (&other != &file) RefuseOutputOverInputs(console, Path(file.szEnding), {other.input});
    }
  }
}

void FileSet::TakeStem() {
  if (m_sStem == "-") m_console.Fail({"-"}, "a set of files cannot go to standard output", kUsage);
  const std::string sGiven = m_sStem;
  if (m_sStem.ends_with(".pcf")) m_sStem.resize(m_sStem.size() - 4);
  if (NameOf(m_sStem).empty()) m_console.Fail({sGiven}, "the stem names no file", kUsage);
}

void FileSet::RefuseSameFile(const std::string& sOutput) const {
  for (const char* szEnding : m_endings) {
    if (sOutput != "-" && SameFile(sOutput, Path(szEnding))) {
      m_console.Fail({sOutput}, "two outputs have the same name", kUsage);
    }
  }
}

FileSet::~FileSet() {
  for (const std::string& s : m_leftovers) unlink(s.c_str());
  if (!m_sPrivate.empty()) TheFileSystem().DeleteTree(m_sPrivate.c_str());
}

void FileSet::Fail(const std::string& sName, int nError) const {
  m_console.Fail({sName}, std::string("cannot write: ") + std::strerror(nError));
}

CString FileSet::Begin() {
  std::string s = FolderOf(m_sStem) + "/.laminate-XXXXXX";
  if (mkdtemp(s.data()) == nullptr) Fail(FolderOf(m_sStem), errno);
  m_sPrivate = s;
  return CString(std::string_view(m_sPrivate + "/" + NameOf(m_sStem)));
}

std::string FileSet::FinalName(const std::string& sPrivate) const {
  if (m_sPrivate.empty() || FolderOf(sPrivate) != m_sPrivate) return sPrivate;
  return m_sStem.substr(0, m_sStem.size() - NameOf(m_sStem).size()) + NameOf(sPrivate);
}

std::string FileSet::Beside(const std::string& sTarget) {
  std::string s = FolderOf(sTarget) + "/.laminate-XXXXXX";
  const int h = mkstemp(s.data());
  if (h < 0) Fail(sTarget, errno);
  close(h);
  m_leftovers.push_back(s);
  return s;
}

// Everything that is likely to fail is done before the first file is touched.
void FileSet::Prepare(Step& step) {
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

void FileSet::Undo(const std::vector<Step>& steps) {
  for (const Step& step : steps) {
    if (!step.done || step.inPlace) continue;
    if (step.backup.empty()) {
      unlink(step.target.c_str());
    } else if (std::rename(step.backup.c_str(), step.target.c_str()) != 0) {
      std::erase(m_leftovers, step.backup);
      m_console.Error({step.name}, "cannot be put back; its old text is in " + step.backup);
    }
  }
}

std::vector<std::string> FileSet::Written() const {
  std::vector<std::string> files;
  if (const int n = TheFileSystem().ListFolder(m_sPrivate.c_str(), files); n != 0) Fail(m_sStem, -n);
  for (std::string& sFile : files) sFile = m_sPrivate + "/" + sFile;
  std::sort(files.begin(), files.end());
  return files;
}

void FileSet::Commit() {
  std::vector<Step> steps;
  for (const std::string& sSource : Written()) {
    steps.push_back({.source = sSource, .name = FinalName(sSource), .target = {}, .backup = {}});
    Prepare(steps.back());
  }
  if (InterruptGuard::Pending()) m_console.Fail({m_sStem}, "interrupted");

  // Those that cannot be undone come last.
  std::stable_partition(steps.begin(), steps.end(), [](const Step& step) { return !step.inPlace; });
  for (Step& step : steps) {
    int nError = 0;
    if (step.inPlace) {
      nError = Fill(TheFileSystem().OpenForWriting(step.target.c_str()), step.source, false);
    } else if (std::rename(step.source.c_str(), step.target.c_str()) != 0) {
      nError = errno;
    }
    if (nError != 0) {
      Undo(steps);
      Fail(step.name, nError);
    }
    step.done = true;
  }
}

}  // namespace laminate::cli
