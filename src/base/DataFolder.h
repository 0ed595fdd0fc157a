#pragma once
#include <string>
#include <vector>

#include "base/FileSystem.h"

namespace laminate {

/// A folder of this process alone that goes when the object does. Its name tells the user, its lock that the process
/// lives: what is found without a lock was left by a process that was killed, and is removed.
class DataFolder {
 public:
  struct Place {
    std::string sFolder;
    bool bOnlyInMemory = false;      ///< passed over unless it is memory-backed storage
    std::uint64_t nMinimumFree = 0;  ///< passed over with less
  };

  /// Makes the folder in the first place that suits, after removing what dead processes of the same user left in any of
  /// them. Raises `CFileException` when no place takes it.
  explicit DataFolder(const std::vector<Place>& places);
  /// Removes the folder with all that is in it, unless this is another process than the one that made it.
  ~DataFolder();
  DataFolder(const DataFolder&) = delete;
  DataFolder& operator=(const DataFolder&) = delete;

  const std::string& Path() const { return m_sPath; }
  /// Whether the calling process made it.
  bool IsOwn() const;

  /// Memory-backed storage with at least 1 GiB free, then the system's temporary folders.
  static std::vector<Place> SystemPlaces();

 private:
  int MakeIn(const std::string& sPlace);

  std::string m_sPath;
  OpenedFile m_lock;
  long m_nProcess = 0;
};

}  // namespace laminate
