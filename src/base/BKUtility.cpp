#include "base/BKUtility.h"

#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "base/DataFolder.h"
#include "base/FileSystem.h"

namespace {

using laminate::DataFolder;
using laminate::TheFileSystem;
using laminate::WithPlatformFailures;

struct DataPath {
  std::mutex guard;
  CString sChosen;
  std::unique_ptr<DataFolder> pOwn;
};
// Its end removes the process's folder.
DataPath& TheDataPath() {
  static DataPath theDataPath;
  return theDataPath;
}

constexpr std::string_view kUnfit = "\\/:*?\"<>|";

char FolderNameByte(char ch) {
  return static_cast<unsigned char>(ch) < 0x20 || kUnfit.find(ch) != std::string_view::npos ? '_' : ch;
}

// Absolute, with single separators and without "." components. ".." stays: what it leads to depends on links.
std::string AbsolutePath(std::string_view path) {
  std::string full;
  if (path.empty() || path[0] != '/') {
    // Where the current folder cannot be told, the path as it stands still gives the same text each time.
    if (const std::unique_ptr<char, void (*)(void*)> current(::getcwd(nullptr, 0), std::free); current != nullptr) {
      full = current.get();
    }
    full += '/';
  }
  full += path;
  std::string result;
  std::size_t at = 0;
  while (at < full.size()) {
    std::size_t end = full.find('/', at);
    if (end == std::string::npos) end = full.size();
    const std::string_view part = std::string_view(full).substr(at, end - at);
    if (!part.empty() && part != ".") {
      result += '/';
      result += part;
    }
    at = end + 1;
  }
  return result;
}

std::uint64_t StableHash(std::string_view s) {
  std::uint64_t hash = 0xCBF29CE484222325;  // FNV-1a
  for (const char ch : s) {
    hash ^= static_cast<unsigned char>(ch);
    hash *= 0x100000001B3;
  }
  return hash;
}

}  // namespace

BKUtility* BKUtility::GetInstance() {
  static BKUtility theUtility;
  return &theUtility;
}

CString BKUtility::GetDataPath() {
  DataPath& data = TheDataPath();
  const std::lock_guard lock(data.guard);
  if (!data.sChosen.IsEmpty()) {
    const int nError = WithPlatformFailures([&data] { return laminate::MakeFolders(data.sChosen.GetString()); });
    if (nError != 0) {
      AfxThrowFileException(CFileException::OsErrorToException(-nError), -nError, data.sChosen.GetString());
    }
    return data.sChosen;
  }
  if (data.pOwn == nullptr || !data.pOwn->IsOwn()) {
    data.pOwn.reset();
    WithPlatformFailures([&data] { data.pOwn = std::make_unique<DataFolder>(DataFolder::SystemPlaces()); });
  }
  return CString(data.pOwn->Path());
}

void BKUtility::SetDataPath(const CString& sPath) {
  DataPath& data = TheDataPath();
  CString sChosen;
  if (!sPath.CView().empty()) sChosen = WithPlatformFailures([&] { return CString(AbsolutePath(sPath.CView())); });
  const std::lock_guard lock(data.guard);
  data.sChosen = std::move(sChosen);
}

CString BKUtility::BKPathCombine(CString sPath, CString sMore, CString, int) {
  std::string_view more = sMore.CView();
  while (!more.empty() && (more[0] == '/' || more[0] == '\\')) more.remove_prefix(1);
  CString result(sPath.CView());
  if (more.empty()) return result;
  if (!result.IsEmpty()) {
    result.TrimRight('/');
    result += '/';
  }
  CString added(more);
  added.Replace('\\', '/');
  return result + added;
}

CString BKUtility::GetSegmntFromFilePath(const CString& sPath, int nSegment) {
  constexpr int kNameMode = 2;
  constexpr std::size_t kNameLength = 200;
  if (nSegment != kNameMode) AfxThrowInvalidArgException();
  const std::string_view path = sPath.CView();
  std::string_view name = path.substr(path.rfind('/') + 1);
  const std::size_t dot = name.rfind('.');
  if (dot != std::string_view::npos) name = name.substr(0, dot);
  CString result(name.substr(0, kNameLength));
  ConvertStringForVaildFolderName(result);
  const std::uint64_t hash = WithPlatformFailures([&] { return StableHash(AbsolutePath(path)); });
  result.AppendFormat("_%016llx", static_cast<unsigned long long>(hash));
  return result;
}

bool BKUtility::DoesFileOrDirExist(const CString& sPath, CString, int) {
  return TheFileSystem().Exists(sPath.GetString());
}

bool BKUtility::MakeDirectory(const CString& sPath) {
  return WithPlatformFailures([&] { return laminate::MakeFolders(sPath.GetString()) == 0; });
}

bool BKUtility::DeleteDirectory(const CString& sPath) {
  const int nResult = WithPlatformFailures([&] { return TheFileSystem().DeleteTree(sPath.GetString()); });
  return nResult == 0 || nResult == -ENOENT;
}

void BKUtility::ConvertStringForVaildFolderName(CString& s) {
  for (int i = 0; i < s.GetLength(); ++i) {
    if (const char ch = s[i]; FolderNameByte(ch) != ch) s.SetAt(i, FolderNameByte(ch));
  }
}
