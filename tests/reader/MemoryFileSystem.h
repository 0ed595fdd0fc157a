#pragma once
#include <cerrno>
#include <cstring>
#include <map>
#include <set>
#include <string>

#include "base/FileSystem.h"

/// Files and folders that are kept in memory, for tests that make very many of them.
class MemoryFileSystem : public laminate::FileSystem {
 public:
  std::map<std::string, std::string> files;
  std::set<std::string> folders;

  Handle OpenForReading(const char* szPath) override {
    const auto it = files.find(szPath);
    return it == files.end() ? -ENOENT : Open(szPath);
  }
  Handle OpenForWriting(const char* szPath, unsigned) override {
    if (!folders.empty() && folders.count(FolderOf(szPath)) == 0) return -ENOENT;
    files[szPath].clear();
    return Open(szPath);
  }
  Handle CreateNew(const char* szPath, unsigned nMode) override {
    return files.count(szPath) != 0 ? -EEXIST : OpenForWriting(szPath, nMode);
  }
  std::int64_t Read(Handle h, void* pBuffer, std::size_t nBytes) override {
    Opened& opened = m_opened.at(h);
    const std::string& text = files[opened.path];
    const std::size_t n = opened.at < text.size() ? std::min(nBytes, text.size() - opened.at) : 0;
    if (n != 0) std::memcpy(pBuffer, text.data() + opened.at, n);
    opened.at += n;
    return static_cast<std::int64_t>(n);
  }
  std::int64_t Write(Handle h, const void* pBuffer, std::size_t nBytes) override {
    files[m_opened.at(h).path].append(static_cast<const char*>(pBuffer), nBytes);
    return static_cast<std::int64_t>(nBytes);
  }
  std::int64_t Seek(Handle h, std::int64_t nOffset, int) override {
    m_opened.at(h).at = static_cast<std::size_t>(nOffset);
    return nOffset;
  }
  std::int64_t SizeOf(Handle h) override { return static_cast<std::int64_t>(files[m_opened.at(h).path].size()); }
  int Close(Handle h) override { return m_opened.erase(h) == 1 ? 0 : -EBADF; }
  int Sync(Handle h) override { return m_opened.count(h) == 1 ? 0 : -EBADF; }
  int SetMode(Handle h, unsigned) override { return Sync(h); }
  int Rename(const char* szFrom, const char* szTo) override {
    const auto it = files.find(szFrom);
    if (it == files.end()) return -ENOENT;
    files[szTo] = std::move(it->second);
    files.erase(szFrom);
    return 0;
  }
  int Describe(const char* szPath, FileInfo& info) override {
    if (!Exists(szPath)) return -ENOENT;
    info = {FolderExists(szPath) ? FileInfo::Kind::folder : FileInfo::Kind::file, 0600, true};
    return 0;
  }
  int ReadLink(const char* szPath, std::string&) override { return Exists(szPath) ? -EINVAL : -ENOENT; }
  int Remove(const char* szPath) override { return files.erase(szPath) == 1 ? 0 : -ENOENT; }
  int MakeFolder(const char* szPath, unsigned) override {
    return files.count(szPath) == 0 && folders.insert(szPath).second ? 0 : -EEXIST;
  }
  int RemoveFolder(const char* szPath) override { return folders.erase(szPath) == 1 ? 0 : -ENOENT; }
  int DeleteTree(const char* szPath) override {
    const std::string prefix = std::string(szPath) + "/";
    std::erase_if(files, [&](const auto& file) { return file.first.starts_with(prefix); });
    std::erase_if(folders, [&](const auto& folder) { return folder.starts_with(prefix); });
    return folders.erase(szPath) == 1 ? 0 : -ENOENT;
  }
  bool Exists(const char* szPath) override { return files.count(szPath) != 0 || FolderExists(szPath); }
  bool FolderExists(const char* szPath) override { return folders.count(szPath) != 0 || std::string(szPath) == "/"; }
  Handle LockFolder(const char* szPath) override {
    if (!FolderExists(szPath)) return -ENOENT;
    for (const auto& [h, opened] : m_opened) {
      if (opened.path == szPath) return -EWOULDBLOCK;
    }
    return Open(szPath);
  }

  std::size_t OpenCount() const { return m_opened.size(); }

 private:
  struct Opened {
    std::string path;
    std::size_t at = 0;
  };
  static std::string FolderOf(const std::string& path) { return path.substr(0, path.rfind('/')); }
  Handle Open(const char* szPath) {
    m_opened[++m_nLast] = {szPath, 0};
    return m_nLast;
  }

  std::map<Handle, Opened> m_opened;
  Handle m_nLast = 1000;
};
