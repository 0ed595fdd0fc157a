#pragma once
#include <cstdint>
#include <string_view>
#include <vector>

#include "base/CString.h"
#include "base/FileSystem.h"
#include "base/LoadStatus.h"

namespace laminate {

/// Net count of "(" over ")" on a line, outside strings. `bInQuote` is the string state that goes from line to line: a
/// string may span lines. A quote after a backslash leaves the state alone, but for one that only a ")" follows at the
/// line's end. Comments are lines like any other, and double-byte text is not known.
int BraceCount(std::string_view sLine, int& bInQuote);

/// Where the lines of working files stand in the host's own file. Pieces are numbered from 1; "others.txt" is piece 0.
class PieceLines {
 public:
  /// From line `nLine` of the piece on, lines follow one another as from line `nHostLine` on in the host's file. Calls
  /// come in the order of pieces and lines.
  void Add(int nPiece, std::int64_t nLine, std::int64_t nHostLine) { m_runs.push_back({nPiece, nLine, nHostLine}); }
  void Clear() { m_runs.clear(); }
  /// The line in the host's file; 0 when the piece is not known or `nLine` is no line.
  int HostLine(int nPiece, int nLine) const;

 private:
  struct Run {
    int nPiece;
    std::int64_t nLine;
    std::int64_t nHostLine;
  };
  std::vector<Run> m_runs;
};

/// What a split works on and what it leaves behind. The first three refer to the root's own fields.
struct SplitState {
  int& bInQuote;             ///< string state of the brace count; no split resets it
  int& nComponentFileCount;  ///< set where the components section ends; a footprint split leaves it alone
  int& nLayerFileCount;      ///< set where the board layout ends; a footprint split leaves it alone
  LoadStatus& status;        ///< told when the source cannot be read or a piece cannot be written

  CString sFolder = {};        ///< the working folder
  OpenedFile lock = {};        ///< holds the working folder's lock until it is closed or this state dies
  PieceLines others = {};      ///< "others.txt"
  PieceLines components = {};  ///< component pieces, or those of a footprint file's padstacks
  PieceLines layers = {};      ///< layer pieces, or those of a footprint file's footprints
};

/// The working folder of a board file: "Data" and the path's segment under the data path.
CString BoardWorkingFolder(const CString& sPath);

/// Cuts a board file by bracket depth into "others.txt", one numbered "component%d.txt" for each component form and one
/// "layer%d.txt" for each layer form of the board layout, in its working folder, which is locked meanwhile. False, with
/// the status telling why, when the source cannot be read (no folder is made then) or the folder or a piece cannot be
/// written; the split then stops and closes its files.
bool SplitBoardFile(const CString& sPath, SplitState& state);

/// Cuts the padstack and footprint forms of a footprint file into "PadStack%d.txt" and "Footprint%d.txt" in the folder
/// "Data/Tmp" under the data path, where they stay for the host. Fails as `SplitBoardFile` does.
bool SplitFootprintFile(const CString& sPath, SplitState& state);

/// The lines of a text that belong to one piece.
class TextPiece {
 public:
  /// Adds what follows in the piece, a stretch of the text.
  void Append(std::string_view run);
  /// The lines, with their ends as they stand; they read as the piece's file does. Where the stretches do not follow
  /// one another they are put together in `sJoined`. `LineReader::kPadding` bytes are readable behind it.
  std::string_view Text(std::string& sJoined) const;
  /// Where a byte of `Text`, or its end, stands in the text that was cut.
  const char* Source(std::size_t nOffset) const;
  std::size_t Size() const { return m_nSize; }
  /// Equal texts, wherever they stand.
  friend bool operator==(const TextPiece& a, const TextPiece& b);

 private:
  struct Run {
    std::size_t nOffset;  // in the piece
    std::string_view text;
  };
  std::vector<Run> m_runs;
  std::size_t m_nSize = 0;
};

/// The pieces of a board file's text, as `SplitBoardFile` writes them for a root that split nothing before.
struct BoardText {
  TextPiece others;
  std::vector<TextPiece> components;
  std::vector<TextPiece> layers;
};

/// Cuts a board file's text that is at hand; `LineReader::kPadding` bytes must be readable behind it. The pieces refer
/// to the text.
BoardText CutBoardText(std::string_view text);

}  // namespace laminate
