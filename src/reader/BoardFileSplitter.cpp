#include "reader/BoardFileSplitter.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <limits>
#include <string>
#include <utility>

#include "base/BKUtility.h"
#include "base/CException.h"
#include "reader/ByteScan.h"
#include "reader/LineReader.h"

namespace laminate {
namespace {

// A line within a text: `end` is where its LF stands, or where the text ends; one CR before the LF is no part of it.
struct Line {
  const char* begin;
  const char* end;

  // Whether the line with its end as it stands reads as it does with a LF behind its text. A text that ends in a CR
  // needs another one before the LF.
  bool MayStandAsItIs(const char* textEnd) const {
    if (end == textEnd) return false;
    return end == begin || end[-1] != '\r' || (end - begin > 1 && end[-2] == '\r');
  }
};

bool OnlyWhiteSpace(const char* p, const char* end) { return std::all_of(p, end, IsWhiteSpace); }

// The string state behind a quote. `closesForm` tells whether it and a closing bracket end the line.
template <class ClosesForm>
bool BehindQuote(const char* quote, const char* lineBegin, bool bInQuote, ClosesForm closesForm) {
  if (quote == lineBegin || quote[-1] != '\\') return !bInQuote;
  // A string that ends in a backslash.
  return bInQuote && !closesForm();
}

CString WhyNot(const char* szWhat, const CString& sPath, int nError) {
  std::string what = szWhat;
  what += sPath.View();
  return CFileException(CFileException::OsErrorToException(-nError), -nError, std::move(what)).what();
}

bool CannotWrite(SplitState& state, const CString& sPath, const CString& sText) {
  state.status.Set(LoadStatus::Result::cannotWriteWorkingFolder, sPath, 0, 0, sText);
  return false;
}

// A file that lines of the source are copied to. Lines that follow one another in the source's buffer are kept as one
// stretch of it, and are written from there.
class CopiedLines {
 public:
  explicit CopiedLines(PieceLines& lines) : m_lines(lines) {}

  // Begins the piece of that number, or the one without numbers, in the folder. 0 or the negative errno. What stands at
  // the path is replaced; a link there is not followed.
  int Create(const CString& sFolder, const char* szPiece, int nPiece) {
    CString sName = "others.txt";
    if (nPiece != 0) sName.Format("\\%s%d.txt", szPiece, nPiece);
    const CString sPath = BKUtility::GetInstance()->BKPathCombine(sFolder, sName, __FILE__, __LINE__);
    FileSystem& files = TheFileSystem();
    m_sPath = sPath;
    m_nPiece = nPiece;
    m_nLine = 0;
    m_nNextHostLine = 0;
    m_file = OpenedFile(files.CreateNew(sPath));
    if (m_file.Get() == -EEXIST) {
      if (const int nError = files.Remove(sPath); nError != 0) return nError;
      m_file = OpenedFile(files.CreateNew(sPath));
    }
    return m_file.IsOpen() ? 0 : m_file.Get();
  }
  bool IsOpen() const { return m_file.IsOpen(); }
  const CString& Path() const { return m_sPath; }

  // Appends a line so that it reads as it did, and ends it with a LF. NULs in it are bytes like others: a piece cut at
  // one would lose brackets that were counted.
  int Append(const Line& line, const char* textEnd, std::int64_t nHostLine) {
    ++m_nLine;
    if (nHostLine != m_nNextHostLine) m_lines.Add(m_nPiece, m_nLine, nHostLine);
    m_nNextHostLine = nHostLine + 1;
    const bool bAsItIs = line.MayStandAsItIs(textEnd);
    if (line.begin == m_runEnd && bAsItIs) {
      m_runEnd = line.end + 1;
      return 0;
    }
    const int nError = EndRun();
    if (bAsItIs) {
      m_runBegin = line.begin;
      m_runEnd = line.end + 1;
    } else {
      m_gathered.append(line.begin, line.end);
      if (line.end != textEnd) {
        m_gathered.pop_back();
      } else if (line.end[-1] == '\r') {
        m_gathered += '\r';
      }
      m_gathered += '\n';
    }
    return nError;
  }
  // What is kept of the source's buffer does not outlive it.
  int EndRun() {
    const std::string_view run(m_runBegin, static_cast<std::size_t>(m_runEnd - m_runBegin));
    m_runBegin = m_runEnd = nullptr;
    if (m_gathered.empty() && run.size() >= kWorthWriting) return WriteAll(m_file.Get(), run);
    m_gathered += run;
    return m_gathered.size() >= kWorthWriting ? WriteGathered() : 0;
  }
  int Close() {
    int nError = 0;
    if (m_gathered.empty()) {
      nError = WriteAll(m_file.Get(), {m_runBegin, static_cast<std::size_t>(m_runEnd - m_runBegin)});
      m_runBegin = m_runEnd = nullptr;
    } else {
      nError = EndRun();
      if (nError == 0) nError = WriteGathered();
    }
    const int nClosed = m_file.Close();
    return nError != 0 ? nError : nClosed;
  }

 private:
  static constexpr std::size_t kWorthWriting = 32 * 1024;

  int WriteGathered() {
    const int nError = WriteAll(m_file.Get(), m_gathered);
    m_gathered.clear();
    return nError;
  }

  PieceLines& m_lines;
  CString m_sPath;
  OpenedFile m_file;
  int m_nPiece = 0;
  std::int64_t m_nLine = 0;
  std::int64_t m_nNextHostLine = 0;
  const char* m_runBegin = nullptr;
  const char* m_runEnd = nullptr;
  std::string m_gathered;
};

// A piece that only remembers where its lines stand in the text.
class NotedLines {
 public:
  explicit NotedLines(std::vector<TextPiece>& pieces) : m_pieces(pieces) {}

  int Create(const CString&, const char*, int) {
    m_pieces.emplace_back();
    m_bOpen = true;
    return 0;
  }
  bool IsOpen() const { return m_bOpen; }
  CString Path() const { return {}; }
  int Append(const Line& line, const char* textEnd, std::int64_t) {
    const char* const behind = line.end == textEnd ? textEnd : line.end + 1;
    m_pieces.back().Append({line.begin, static_cast<std::size_t>(behind - line.begin)});
    return 0;
  }
  int EndRun() { return 0; }
  int Close() {
    m_bOpen = false;
    return 0;
  }

 private:
  std::vector<TextPiece>& m_pieces;
  bool m_bOpen = false;
};

// For lines and prefixes that begin with a bracket. The two bytes behind it tell most lines apart.
bool Begins(std::string_view s, std::string_view prefix) {
  return s.size() >= prefix.size() && s[1] == prefix[1] && s[2] == prefix[2] && s.starts_with(prefix);
}

// One of the two sections of a file that are cut into pieces.
template <class Piece>
struct Section {
  std::string_view sOpening;  // how the section's opening line begins
  bool bAlone;                // the line holds nothing else
  std::string_view sWanted;   // how the opening line of a wanted form begins
  std::int64_t nWantedDepth;  // and the depth behind it
  const char* szPiece;        // name of the pieces, before the number
  int* pCount;                // takes the number of pieces where the section ends; or null
  Piece piece;

  std::int64_t nDepth = 0;  // where the section stands; none when it is not above 0
  std::int64_t nForm = 0;   // where the open piece stands; 0 when none is open
  int nPieces = 0;

  bool Opens(std::string_view sLine) const {
    if (!Begins(sLine, sOpening)) return false;
    return !bAlone || OnlyWhiteSpace(sLine.data() + sOpening.size(), sLine.data() + sLine.size());
  }
};

// The decisions: which lines belong to which piece. `Piece` takes the lines.
template <class Piece>
class Splitter {
 public:
  Splitter(const CString& sPath, SplitState& state, Section<Piece> first, Section<Piece> second, Piece* pOthers)
      : m_sPath(sPath), m_state(state), m_first(std::move(first)), m_second(std::move(second)), m_pOthers(pOthers) {}

  // Begins the piece for what stands outside the sections.
  bool Begin() { return m_pOthers == nullptr || Create(*m_pOthers, nullptr, 0); }

  // The lines of a block, in one pass: brackets are counted as they come, and each line's end decides where it goes.
  bool Lines(std::string_view text) {
    const char* const end = text.data() + text.size();
    bool bInQuote = m_state.bInQuote != 0;
    std::int64_t nDepth = m_nDepth;
    ByteScan<'(', ')', '"', '\n'> scan(text.data(), end);
    Line line{text.data(), nullptr};
    bool bDone = true;
    while (bDone && line.begin != end) {
      const char* p = scan.Next();
      if (p == end || *p == '\n') {
        line.end = p;
        m_nDepth = nDepth;
        bDone = Handle(line, end);
        line.begin = p == end ? end : p + 1;
      } else if (*p == '"') {
        bInQuote = BehindQuote(p, line.begin, bInQuote, [p, end] {
          if (p + 1 == end || p[1] != ')') return false;
          const char* behind = std::find_if(p + 2, end, [](char c) { return c == '\n' || !IsWhiteSpace(c); });
          return behind == end || *behind == '\n';
        });
      } else if (!bInQuote) {
        nDepth += *p == '(' ? 1 : -1;
      }
    }
    m_state.bInQuote = bInQuote;
    ForEachOpen([&](Piece& piece) { bDone = bDone && Done(piece, piece.EndRun()); });
    return bDone;
  }

  bool End() {
    bool bDone = true;
    ForEachOpen([&](Piece& piece) { bDone = bDone && Done(piece, piece.Close()); });
    return bDone;
  }

 private:
  template <class Function>
  void ForEachOpen(Function function) {
    for (Piece* p : {&m_first.piece, &m_second.piece, m_pOthers}) {
      if (p != nullptr && p->IsOpen()) function(*p);
    }
  }

  // Where a line goes; the depth is that behind it.
  bool Handle(const Line& line, const char* textEnd) {
    ++m_nHostLine;
    const char* p = line.begin;
    while (p != line.end && IsWhiteSpace(*p)) ++p;
    const std::string_view trimmed(p, static_cast<std::size_t>(line.end - p));
    if (!trimmed.starts_with('(')) return Copy(line, {}, textEnd);
    if (m_first.Opens(trimmed)) {
      m_first.nDepth = m_nDepth;
      return true;
    }
    if (m_second.Opens(trimmed)) {
      m_second.nDepth = m_nDepth;
      return true;
    }
    return Copy(line, trimmed, textEnd);
  }

  bool Copy(const Line& line, std::string_view trimmed, const char* textEnd) {
    if (m_first.nDepth > 0) return InSection(m_first, line, trimmed, textEnd);
    if (m_second.nDepth > 0) return InSection(m_second, line, trimmed, textEnd);
    return m_pOthers == nullptr || Done(*m_pOthers, m_pOthers->Append(line, textEnd, m_nHostLine));
  }

  bool InSection(Section<Piece>& section, const Line& line, std::string_view trimmed, const char* textEnd) {
    Piece& piece = section.piece;
    if (m_nDepth == section.nWantedDepth && Begins(trimmed, section.sWanted)) {
      if (piece.IsOpen() && !Done(piece, piece.Close())) return false;
      ++section.nPieces;
      if (!Create(piece, section.szPiece, section.nPieces)) return false;
      section.nForm = m_nDepth;
    }
    if (section.nForm > 0) {
      if (!Done(piece, piece.Append(line, textEnd, m_nHostLine))) return false;
      if (m_nDepth == section.nForm - 1) {
        section.nForm = 0;
        if (!Done(piece, piece.Close())) return false;
      }
    }
    if (m_nDepth == section.nDepth - 1) {
      if (section.pCount != nullptr) *section.pCount = section.nPieces;
      section.nDepth = 0;
    }
    return true;
  }

  bool Create(Piece& piece, const char* szPiece, int nPiece) {
    const int nError = piece.Create(m_state.sFolder, szPiece, nPiece);
    return nError == 0 || CannotWrite(m_state, m_sPath, WhyNot("cannot create ", piece.Path(), nError));
  }
  bool Done(const Piece& piece, int nError) {
    return nError == 0 || CannotWrite(m_state, m_sPath, WhyNot("cannot write ", piece.Path(), nError));
  }

  const CString& m_sPath;
  SplitState& m_state;
  Section<Piece> m_first;
  Section<Piece> m_second;
  Piece* const m_pOthers;
  std::int64_t m_nDepth = 0;
  std::int64_t m_nHostLine = 0;
};

// Cuts a file into its working folder. `folder` names it, or raises when there is no place for it.
template <class Folder>
bool SplitFile(const CString& sPath, SplitState& state, Splitter<CopiedLines>& splitter, Folder folder) {
  LineReader source(sPath);
  const auto cannotRead = [&] {
    state.status.Set(LoadStatus::Result::cannotOpen, sPath, 0, 0,
                     WhyNot("cannot read the file", CString(), source.Error()));
    return false;
  };
  state.others.Clear();
  state.components.Clear();
  state.layers.Clear();
  state.sFolder.Empty();
  state.lock.Close();
  std::string_view block;
  bool bMore = source.NextBlock(block);
  if (source.Error() != 0) return cannotRead();
  try {
    state.sFolder = folder();
  } catch (const CFileException& e) {
    return CannotWrite(state, sPath, WhyNot("cannot make the data folder ", CString(e.m_strFileName), -e.m_lOsError));
  }
  FileSystem& files = TheFileSystem();
  if (const int nError = MakeFolders(state.sFolder.GetString()); nError != 0) {
    return CannotWrite(state, sPath, WhyNot("cannot make the working folder ", state.sFolder, nError));
  }
  state.lock = OpenedFile(files.LockFolder(state.sFolder));
  if (state.lock.Get() == -EWOULDBLOCK) {
    return CannotWrite(state, sPath, "another load uses the working folder " + state.sFolder);
  }
  if (!state.lock.IsOpen()) {
    // Nothing is lost with it while it is empty.
    files.RemoveFolder(state.sFolder);
    return CannotWrite(state, sPath, WhyNot("cannot use the working folder ", state.sFolder, state.lock.Get()));
  }
  if (!splitter.Begin()) return false;
  for (; bMore; bMore = source.NextBlock(block)) {
    if (!splitter.Lines(block)) return false;
  }
  if (source.Error() != 0) return cannotRead();
  return splitter.End();
}

template <class Piece>
Section<Piece> ComponentSection(SplitState& state, Piece piece) {
  return {"(components", false, "(component", 4, "component", &state.nComponentFileCount, std::move(piece)};
}
template <class Piece>
Section<Piece> LayerSection(SplitState& state, Piece piece) {
  return {"(boardLayout", false, "(layer", 5, "layer", &state.nLayerFileCount, std::move(piece)};
}

CString FolderInDataPath(const CString& sName) {
  BKUtility& utility = *BKUtility::GetInstance();
  return utility.BKPathCombine(utility.GetDataPath(), "Data\\" + sName, __FILE__, __LINE__);
}

}  // namespace

int BraceCount(std::string_view sLine, int& bInQuote) {
  const char* const begin = sLine.data();
  const char* const end = begin + sLine.size();
  bool bInside = bInQuote != 0;
  std::int64_t nCount = 0;
  ByteScan<'(', ')', '"'> scan(begin, end);
  for (const char* p = scan.Next(); p != end; p = scan.Next()) {
    if (*p == '"') {
      bInside = BehindQuote(p, begin, bInside,
                            [p, end] { return p + 1 != end && p[1] == ')' && OnlyWhiteSpace(p + 2, end); });
    } else if (!bInside) {
      nCount += *p == '(' ? 1 : -1;
    }
  }
  bInQuote = bInside;
  using Limits = std::numeric_limits<int>;
  return static_cast<int>(std::clamp<std::int64_t>(nCount, Limits::min(), Limits::max()));
}

int PieceLines::HostLine(int nPiece, int nLine) const {
  const auto behind =
      std::upper_bound(m_runs.begin(), m_runs.end(), std::pair(nPiece, std::int64_t{nLine}),
                       [](const auto& place, const Run& run) { return place < std::pair(run.nPiece, run.nLine); });
  if (behind == m_runs.begin()) return 0;
  const Run& run = *(behind - 1);
  if (run.nPiece != nPiece) return 0;
  return static_cast<int>(std::min<std::int64_t>(run.nHostLine + (nLine - run.nLine), std::numeric_limits<int>::max()));
}

CString BoardWorkingFolder(const CString& sPath) {
  return FolderInDataPath(BKUtility::GetInstance()->GetSegmntFromFilePath(sPath, 2));
}

bool SplitBoardFile(const CString& sPath, SplitState& state) {
  return WithPlatformFailures([&] {
    CopiedLines others(state.others);
    Splitter<CopiedLines> splitter(sPath, state, ComponentSection(state, CopiedLines(state.components)),
                                   LayerSection(state, CopiedLines(state.layers)), &others);
    return SplitFile(sPath, state, splitter, [&] { return BoardWorkingFolder(sPath); });
  });
}

bool SplitFootprintFile(const CString& sPath, SplitState& state) {
  return WithPlatformFailures([&] {
    Section<CopiedLines> padstacks{
        "(padstacks", false, "(padstack", 4, "PadStack", nullptr, CopiedLines(state.components)};
    Section<CopiedLines> footprints{
        "(footprints", true, "(footprint", 4, "Footprint", nullptr, CopiedLines(state.layers)};
    Splitter<CopiedLines> splitter(sPath, state, std::move(padstacks), std::move(footprints), nullptr);
    return SplitFile(sPath, state, splitter, [] { return FolderInDataPath("Tmp"); });
  });
}

BoardText CutBoardText(std::string_view text) {
  BoardText board;
  int bInQuote = 0;
  int nComponents = 0;
  int nLayers = 0;
  LoadStatus status;
  SplitState state{bInQuote, nComponents, nLayers, status};
  std::vector<TextPiece> others;
  const CString sNoPath;
  WithPlatformFailures([&] {
    NotedLines outside(others);
    Splitter<NotedLines> splitter(sNoPath, state, ComponentSection(state, NotedLines(board.components)),
                                  LayerSection(state, NotedLines(board.layers)), &outside);
    return splitter.Begin() && splitter.Lines(text) && splitter.End();
  });
  board.others = std::move(others.front());
  // Pieces of a section that never ends count for nothing.
  board.components.resize(std::min(board.components.size(), static_cast<std::size_t>(nComponents)));
  board.layers.resize(std::min(board.layers.size(), static_cast<std::size_t>(nLayers)));
  return board;
}

void TextPiece::Append(std::string_view run) {
  if (run.empty()) return;
  if (!m_runs.empty() && m_runs.back().text.data() + m_runs.back().text.size() == run.data()) {
    std::string_view& last = m_runs.back().text;
    last = {last.data(), last.size() + run.size()};
  } else {
    m_runs.push_back({m_nSize, run});
  }
  m_nSize += run.size();
}

std::string_view TextPiece::Text(std::string& sJoined) const {
  static constexpr char kNothing[LineReader::kPadding] = {};
  if (m_runs.size() <= 1) return m_runs.empty() ? std::string_view(kNothing, 0) : m_runs.front().text;
  sJoined.clear();
  sJoined.reserve(m_nSize + LineReader::kPadding);
  for (const Run& run : m_runs) sJoined += run.text;
  sJoined.append(LineReader::kPadding, '\0');
  return std::string_view(sJoined).substr(0, m_nSize);
}

const char* TextPiece::Source(std::size_t nOffset) const {
  const auto behind = std::upper_bound(m_runs.begin(), m_runs.end(), nOffset,
                                       [](std::size_t n, const Run& run) { return n < run.nOffset; });
  if (behind == m_runs.begin()) return nullptr;
  const Run& run = *(behind - 1);
  return run.text.data() + (nOffset - run.nOffset);
}

bool operator==(const TextPiece& a, const TextPiece& b) {
  if (a.m_nSize != b.m_nSize) return false;
  // The runs may be cut differently.
  auto ra = a.m_runs.begin();
  auto rb = b.m_runs.begin();
  std::string_view ta;
  std::string_view tb;
  for (std::size_t nLeft = a.m_nSize; nLeft != 0;) {
    if (ta.empty()) ta = (ra++)->text;
    if (tb.empty()) tb = (rb++)->text;
    const std::size_t n = std::min(ta.size(), tb.size());
    if (ta.substr(0, n) != tb.substr(0, n)) return false;
    ta.remove_prefix(n);
    tb.remove_prefix(n);
    nLeft -= n;
  }
  return true;
}

}  // namespace laminate
