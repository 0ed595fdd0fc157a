#pragma once
#include <string>
#include <vector>

#include "base/CString.h"

namespace laminate {

/// How the last load of a root or facade ended. Lines and columns count from 1 in the host's own file, not in a working
/// file; 0 where none applies. The first fault of a load is kept; a load may run on after it and still hold data.
struct LoadStatus {
  enum class Result {
    ok,                        ///< the design was read; a text tells of a working folder that could not be removed
    cannotOpen,                ///< the file cannot be opened or read
    notWellFormed,             ///< brackets out of balance, nesting too deep, or a root form that is not known
    cannotWriteWorkingFolder,  ///< the pieces of a board file cannot be written
    invalidContent             ///< a form lacks a value that it needs
  };
  Result m_result = Result::ok;
  CString m_sFile;
  int m_nLine = 0;
  int m_nColumn = 0;
  CString m_sText;

  bool IsOk() const { return m_result == Result::ok; }
  /// Keeps the first fault: does nothing when there is one already.
  void Set(Result result, const CString& sFile, int nLine, int nColumn, const CString& sText) {
    if (!IsOk()) return;
    m_result = result;
    m_sFile = sFile;
    m_nLine = nLine;
    m_nColumn = nColumn;
    m_sText = sText;
  }
  /// The same with what another status tells.
  void Set(const LoadStatus& other) {
    Set(other.m_result, other.m_sFile, other.m_nLine, other.m_nColumn, other.m_sText);
  }
};

/// One remark about a file.
struct Diagnostic {
  enum class Severity { error, warning, note };
  Severity severity = Severity::warning;
  CString file;
  int line = 0;
  int column = 0;
  CString reason;
};

/// Where readers and scanners put what they notice about a file. Without one they notice nothing.
class Diagnostics {
 public:
  void Add(Diagnostic::Severity severity, const CString& file, int line, int column, const CString& reason) {
    list.push_back({severity, file, line, column, reason});
  }
  std::vector<Diagnostic> list;
};

}  // namespace laminate
