#pragma once
#include <optional>
#include <string>

#include "base/FileSystem.h"

namespace laminate {

/// For those who open a file several times: what is no regular file, such as a pipe, gives its content only once. Such
/// a file is read at once, and while the object lives its path gives that content to the calling thread as often as it
/// is opened for reading. Any other file is left alone.
class HeldFile {
 public:
  explicit HeldFile(const char* szPath);
  HeldFile(const HeldFile&) = delete;
  HeldFile& operator=(const HeldFile&) = delete;
  /// 0, or the negative `errno` of the reading: then nothing is held.
  int Result() const { return m_nResult; }

 private:
  class Files : public FileSystem {
   public:
    Handle OpenForReading(const char* szPath) override;
    std::string path;
    OpenedFile content;
  };
  int Hold();

  Files m_files;
  std::optional<FileSystemScope> m_scope;
  int m_nResult = 0;
};

}  // namespace laminate
