#pragma once
#include <memory>
#include <optional>
#include <string>

#include "base/CString.h"
#include "base/FileSystem.h"
#include "base/TextOut.h"

namespace laminate {

/// A file that appears whole or not at all. Its text is written beside its name under a temporary one; `Commit` brings
/// it to the device and renames it into place, so that a file that stood there is either untouched or replaced whole.
/// Without `Commit` nothing remains. An existing regular file keeps its mode, though not its owner nor other names that
/// it has; a link is followed; what is no regular file, such as a device or a pipe, is written in place. A file
/// operation that fails raises `CFileException` with the file's name.
class WholeFile {
 public:
  explicit WholeFile(const CString& sPath);
  ~WholeFile();
  WholeFile(const WholeFile&) = delete;
  WholeFile& operator=(const WholeFile&) = delete;

  /// Where the text goes. Writes that fail are told by `Commit`.
  TextOut& Text() { return *m_pText; }
  void Commit();
  /// All of `Commit` but the renaming, for who renames several files at once; gives the temporary name, which goes with
  /// this object, or nothing for what was written in place.
  const std::string& Finish();

 private:
  void Open();
  [[noreturn]] void Fail(int nError);
  void Discard() noexcept;

  CString m_sPath;                  // as the caller named it
  std::string m_sTarget;            // behind all links
  std::string m_sTemporary;         // empty when the target is written in place
  std::optional<unsigned> m_nMode;  // of the file that is replaced
  OpenedFile m_file;
  std::unique_ptr<TextOut> m_pText;
};

}  // namespace laminate
