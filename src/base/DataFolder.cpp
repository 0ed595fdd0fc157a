#include "base/DataFolder.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <random>
#include <string_view>

#include "base/CException.h"

namespace laminate {
namespace {

std::string NamePrefix() { return "laminate-" + std::to_string(::geteuid()) + "-"; }

std::string RandomDigits() {
  std::random_device source;
  char szDigits[24];
  std::snprintf(szDigits, sizeof szDigits, "%08x%08x", source(), source());
  return szDigits;
}

void RemoveLeftovers(const std::string& sPlace) {
  FileSystem& files = TheFileSystem();
  std::vector<std::string> names;
  if (files.ListFolder(sPlace.c_str(), names) != 0) return;
  const std::string prefix = NamePrefix();
  for (const std::string& name : names) {
    if (!std::string_view(name).starts_with(prefix)) continue;
    const std::string path = sPlace + "/" + name;
    // In a place that all users share, a name proves nothing.
    if (files.CheckOwnFolder(path.c_str()) != 0) continue;
    const OpenedFile lock(files.LockFolder(path.c_str()));
    if (lock.IsOpen()) files.DeleteTree(path.c_str());
  }
}

bool Suits(const DataFolder::Place& place) {
  if (!place.bOnlyInMemory && place.nMinimumFree == 0) return true;
  FileSystem::Volume volume;
  if (TheFileSystem().DescribeVolume(place.sFolder.c_str(), volume) != 0) return false;
  return (volume.bInMemory || !place.bOnlyInMemory) && volume.nFreeBytes >= place.nMinimumFree;
}

}  // namespace

std::vector<DataFolder::Place> DataFolder::SystemPlaces() {
  constexpr std::uint64_t kGibibyte = std::uint64_t{1} << 30;
  return {{"/dev/shm", true, kGibibyte}, {P_tmpdir, false, 0}, {"/var/tmp", false, 0}};
}

DataFolder::DataFolder(const std::vector<Place>& places) : m_nProcess(::getpid()) {
  // First of all: what was left may be why a place has too little room.
  for (const Place& place : places) RemoveLeftovers(place.sFolder);
  int nResult = -ENOENT;
  for (const Place& place : places) {
    if (!Suits(place)) continue;
    nResult = MakeIn(place.sFolder);
    if (nResult == 0) return;
  }
  AfxThrowFileException(CFileException::OsErrorToException(-nResult), -nResult,
                        places.empty() ? "" : places.back().sFolder.c_str());
}

int DataFolder::MakeIn(const std::string& sPlace) {
  FileSystem& files = TheFileSystem();
  // Another process that starts may take the fresh folder for a leftover until it is locked.
  constexpr int kAttempts = 16;
  int nResult = 0;
  for (int i = 0; i < kAttempts; ++i) {
    const std::string path = sPlace + "/" + NamePrefix() + RandomDigits();
    nResult = files.MakeFolder(path.c_str(), 0700);
    if (nResult == -EEXIST) continue;
    if (nResult != 0) return nResult;
    OpenedFile lock(files.LockFolder(path.c_str()));
    if (lock.IsOpen()) {
      m_sPath = path;
      m_lock = std::move(lock);
      return 0;
    }
    nResult = lock.Get();
    if (nResult != -EWOULDBLOCK && nResult != -ENOENT) {
      files.DeleteTree(path.c_str());
      return nResult;
    }
  }
  return nResult;
}

bool DataFolder::IsOwn() const { return m_nProcess == ::getpid(); }

DataFolder::~DataFolder() {
  if (!IsOwn()) return;
  try {
    TheFileSystem().DeleteTree(m_sPath.c_str());
  } catch (...) {
    // Without memory the folder stays until the next process finds it.
  }
}

}  // namespace laminate
