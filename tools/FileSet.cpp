#include "FileSet.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <iterator>

#include "Paths.h"
#include "base/FileSystem.h"

namespace laminate::cli {

namespace {

constexpr const char* kEndings[] = {".pcf", ".ftf", ".tcf", ".pkf", ".cdf"};

}  // namespace

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

std::vector<std::string> FileSet::Written() const {
  std::vector<std::string> files;
  if (const int n = TheFileSystem().ListFolder(m_sPrivate.c_str(), files); n != 0) Fail(m_sStem, -n);
  for (std::string& sFile : files) sFile = m_sPrivate + "/" + sFile;
  std::sort(files.begin(), files.end());
  return files;
}

void FileSet::Complete(FilePlacer& placer) const {
  for (const std::string& sFile : Written()) placer.Add(sFile, FinalName(sFile));
}

void FileSet::Commit() {
  FilePlacer placer(m_console);
  Complete(placer);
  placer.Commit();
}

}  // namespace laminate::cli
