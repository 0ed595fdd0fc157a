#pragma once
#include <cstdio>
#include <string_view>

#include "base/CString.h"
#include "base/TextOut.h"

/// Re-indents a finished text file in place, by the nesting of its brackets. Making the object does the whole job;
/// destroying it closes the file, which is complete on disk only then.
///
/// The file is renamed to its name + ".bak~" and written anew from there; the backup is removed at the end. Lines are
/// taken in pieces of at most 1023 bytes, so a longer one is broken. "%%" becomes "%", any other "%" stays. Brackets
/// inside strings count like others; n of them that stay open put n indents before each line that follows, so hostile
/// names make the file grow with the square. A line that begins with a blank shows a message box, which names its
/// number, and is handled all the same. What stands under the name is renamed whatever it is, a folder too; a renaming
/// that fails is not noticed, and the file is emptied. Write errors show in `ferror(m_fpOut)` alone; the backup then
/// stays.
class CExportFormatter {
 public:
  /// `nIndentWidth` is in blanks per level; without a positive one nothing is indented. When the file cannot be created
  /// anew, `m_fpOut` is null and the text stays in the backup; when the backup cannot be read, the new file stays empty
  /// and the backup is kept. Raises `CMemoryException` and what a host's message box raises; the backup then holds the
  /// text.
  CExportFormatter(CString sFileName, int nIndentWidth);
  virtual ~CExportFormatter();
  CExportFormatter(const CExportFormatter&) = delete;
  CExportFormatter& operator=(const CExportFormatter&) = delete;

  /// Formats and writes one line behind the indent of the present level; bytes beyond 1023 are cut off. Raises
  /// `CInvalidArgException` when there is no stream.
  void Print(const char* szFormat, ...) __attribute__((format(printf, 2, 3)));

  FILE* m_fpOut = nullptr;  ///< closed by the destructor; a host that closes it sets it to null
  CString m_sFileName;
  CString m_sBackupName;
  int m_nLevel = 0;  ///< may go below 0
  int m_nIndentWidth;
  int m_bCloserOnly = 0;  ///< the current line is a lone ")"
  int m_nLineNo = 0;      ///< lines handled so far
};

namespace laminate {

/// The formatter's work without its file: the state between lines, and how a line is written.
struct Indenter {
  int& nLevel;
  int nIndentWidth;
  int& bCloserOnly;
  int& nLineNo;

  /// One line, at most 1023 bytes, as it comes out of the format step.
  void Line(TextOut& out, std::string_view sLine) const;
  /// A whole text as the job takes it: in pieces of lines, "%%" made "%".
  void AllLines(TextOut& out, std::string_view sText) const;
};

/// Re-indents a text; message boxes as told above.
void IndentText(TextOut& out, std::string_view sText, int nIndentWidth);

}  // namespace laminate
