#pragma once
#include <memory>

#include "base/CString.h"
#include "base/LoadStatus.h"

class CPC_BD_OutClsGet;

namespace laminate {

/// The kinds of file that the library reads.
enum class FileKind {
  board,       ///< `.pcf`, and the technology files of that form, `.tcf`
  footprints,  ///< `.ftf`
  rules,       ///< `.rul`
  packages,    ///< `.pkf`
  parts,       ///< `.cdf`
  components,  ///< `.cmp`
  forms        ///< any other file of bracketed forms
};

/// The kind of a file: by the ending of its name, and where that says nothing by its first form.
FileKind KindOfFile(const CString& sPath);

/// Says of files whether they are well formed and what in them is suspicious, by reading them as a load does. Files
/// that are checked by one object are taken as one design: names of one may be defined in another.
///
///   FileCheck check;
///   const LoadStatus status = check.Check("board.pcf");
///   check.ReportUndefinedNames();
///   for (const Diagnostic& remark : check.Remarks().list) ...
class FileCheck {
 public:
  FileCheck();
  ~FileCheck();
  FileCheck(const FileCheck&) = delete;
  FileCheck& operator=(const FileCheck&) = delete;

  /// Checks one file. The result is ok when the file is well formed, and otherwise its first fault. What is suspicious
  /// is added to the remarks, the texts of message boxes among them; the boxes are shown too. What is no regular file,
  /// such as a pipe, is read once.
  LoadStatus Check(const CString& sPath);
  /// Adds a remark for each name that the files checked so far refer to and none of them defines.
  void ReportUndefinedNames();
  /// What was noticed so far.
  const Diagnostics& Remarks() const { return m_remarks; }

 private:
  LoadStatus CheckContent(const CString& sPath);

  Diagnostics m_remarks;
  std::unique_ptr<CPC_BD_OutClsGet> m_pDesignData;
};

}  // namespace laminate
