#pragma once
#include "base/CArrayN.h"
#include "base/CString.h"
#include "base/CStringArray.h"
#include "base/LoadStatus.h"
#include "reader/CECadClsLvl.h"

/// Reader of the family's text files: forms in brackets that nest, hold words and quoted strings, and stretch over
/// lines. It knows no keyword. A reader lives for one file: assign `m_sFileName`, parse, walk `m_pRootArray`.
///
/// Text is bytes. LF and CR LF each end a line; only the blank separates tokens inside one; forms nest at most 20 deep.
/// A line that begins with "//" is dropped, also inside a string. Strings stand in quotes and may span lines, whose
/// feeds belong to them; nothing in them is undone: the backslash of an escaped quote stays. A file that cannot be
/// opened or read is as an empty one, and `m_status` tells of it.
///
/// A parse raises `CMemoryException`, and then adds nothing; what a host's message box raises passes through, with the
/// forms kept that were complete. The parses that add to the roots raise `CInvalidArgException` when the host has set
/// that array to null.
class CECadCls : public laminate::Pooled {
 public:
  CECadCls();
  virtual ~CECadCls();
  CECadCls(const CECadCls&) = delete;
  CECadCls& operator=(const CECadCls&) = delete;

  /// Reads the whole file and adds every top-level form to `m_pRootArray`. 0, or -1 when brackets do not balance or
  /// nest too deep (a message box tells of the latter); forms completed by then are kept. Tracks double-byte text.
  /// With `bQuoteEndsAtLineEnd` a quote after a backslash at a line's end closes its string.
  int nParseFile(int bQuoteEndsAtLineEnd);
  /// Reads from the first line that, trimmed, is "(" + `sName` up to the end of that form and adds it to
  /// `m_pRootArray`. 0 also when there is none; -1 as for the whole file. The rules are simpler here and for a form at
  /// an offset: blanks and then tabs are trimmed from each line, also inside a string; a quote behind a backslash never
  /// ends a string, but for `\")`, which loses its backslash; text behind a closing quote is glued to the string; and
  /// double-byte text is not known.
  int nParseNamedForm(CString sName);
  /// Reads one form from a byte offset, counting lines from there. The caller deletes the result; null when no form
  /// closed or the offset is behind the file's end. A form that nests too deep is null too, without a message.
  CECadClsLvl* pParseFormAt(ULONGLONG nOffset);
  /// Refills `m_arrOffset` with the offsets of the lines "(sKeyword value" whose value, quotes included, is in
  /// `arrNames`; a name that stands there twice gives its offset twice. Reads to the file's end and counts its lines.
  /// The offset counts one byte for each line's end: in a file of two-byte line ends it points to the line's second
  /// byte. None is below 0.
  void vCollectFormOffsets(CString sKeyword, CStringArray& arrNames);
  /// Delivers a finished token: the first non-empty one becomes the node's name, later ones its values; a token that is
  /// one blank stands for an empty string, and `sToken` is emptied then. Nothing happens without a node or with an
  /// empty token.
  void vAddToken(CECadClsLvl* pNode, CString& sToken);

  int m_bStopAtFormEnd = 0;                  ///< stop at the end of a line on which the nesting returned to 0
  CECadClsLvlArray* m_pRootArray;            ///< top-level forms; owned; parses add to it and never clear it
  CString m_sFileName;                       ///< the file to read
  int m_nLineNo = 0;                         ///< lines read so far in this parse, comments included
  CArrayN m_arrN;                            ///< not used
  CArray<ULONGLONG, ULONGLONG> m_arrOffset;  ///< the result of `vCollectFormOffsets`

  laminate::LoadStatus m_status;                    ///< how the last operation ended: file, line and column of a fault
  laminate::Diagnostics* m_pDiagnostics = nullptr;  ///< where remarks go; not owned; null: none are made
};
