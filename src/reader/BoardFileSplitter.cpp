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

// A file that lines of the source are copied to. Lines that follow one another in the source's buffer are kept as one
// stretch of it, and are written from there.
class CopiedLines {
 public:
  explicit CopiedLines(PieceLines& lines) : m_lines(lines) {}

  // 0 or the negative errno. What stands at the path is replaced; a link there is not followed.
  int Create(const CString& sPath, int nPiece) {
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

// For lines and prefixes that begin with a bracket. The two bytes behind it tell most lines apart.
bool Begins(std::string_view s, std::string_view prefix) {
  return s.size() >= prefix.size() && s[1] == prefix[1] && s[2] == prefix[2] && s.starts_with(prefix);
}

// One of the two sections of a file that are cut into pieces.
struct Section {
  std::string_view sOpening;  // how the section's opening line begins
  bool bAlone;                // the line holds nothing else
  std::string_view sWanted;   // how the opening line of a wanted form begins
  std::int64_t nWantedDepth;  // and the depth behind it
  const char* szPiece;        // name of the pieces, before the number
  int* pCount;                // takes the number of pieces where the section ends; or null
  CopiedLines piece;

  std::int64_t nDepth = 0;  // where the section stands; none when it is not above 0
  std::int64_t nForm = 0;   // where the open piece stands; 0 when none is open
  int nPieces = 0;

  bool Opens(std::string_view sLine) const {
    if (!Begins(sLine, sOpening)) return false;
    return !bAlone || OnlyWhiteSpace(sLine.data() + sOpening.size(), sLine.data() + sLine.size());
  }
};

class Splitter {
 public:
  Splitter(const CString& sPath, SplitState& state, Section first, Section second, bool bWithOthers)
      : m_sPath(sPath),
        m_state(state),
        m_first(std::move(first)),
        m_second(std::move(second)),
        m_others(state.others),
        m_bWithOthers(bWithOthers),
        m_source(sPath) {}

  // `folder` names the working folder, or raises when there is no place for it.
  template <class Folder>
  bool Run(Folder folder) {
    m_state.others.Clear();
    m_state.components.Clear();
    m_state.layers.Clear();
    m_state.sFolder.Empty();
    m_state.lock.Close();
    std::string_view block;
    bool bMore = m_source.NextBlock(block);
    if (m_source.Error() != 0) return CannotRead();
    try {
      m_state.sFolder = folder();
    } catch (const CFileException& e) {
      return CannotWrite(WhyNot("cannot make the data folder ", CString(e.m_strFileName), -e.m_lOsError));
    }
    FileSystem& files = TheFileSystem();
    if (const int nError = MakeFolders(m_state.sFolder.GetString()); nError != 0) {
      return CannotWrite(WhyNot("cannot make the working folder ", m_state.sFolder, nError));
    }
    m_state.lock = OpenedFile(files.LockFolder(m_state.sFolder));
    if (m_state.lock.Get() == -EWOULDBLOCK) {
      return CannotWrite("another load uses the working folder " + m_state.sFolder);
    }
    if (!m_state.lock.IsOpen()) {
      // Nothing is lost with it while it is empty.
      files.RemoveFolder(m_state.sFolder);
      return CannotWrite(WhyNot("cannot use the working folder ", m_state.sFolder, m_state.lock.Get()));
    }
    if (m_bWithOthers && !Create(m_others, "others.txt", 0)) return false;
    bool bDone = true;
    for (; bDone && bMore; bMore = bDone && m_source.NextBlock(block)) bDone = Lines(block);
    if (!bDone) return false;
    if (m_source.Error() != 0) return CannotRead();
    for (CopiedLines* pFile : {&m_first.piece, &m_second.piece, &m_others}) {
      if (pFile->IsOpen() && !Done(*pFile, pFile->Close())) return false;
    }
    return true;
  }

 private:
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
    for (CopiedLines* pFile : {&m_first.piece, &m_second.piece, &m_others}) {
      if (bDone && pFile->IsOpen()) bDone = Done(*pFile, pFile->EndRun());
    }
    return bDone;
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
    return !m_bWithOthers || Done(m_others, m_others.Append(line, textEnd, m_nHostLine));
  }

  bool InSection(Section& section, const Line& line, std::string_view trimmed, const char* textEnd) {
    CopiedLines& piece = section.piece;
    if (m_nDepth == section.nWantedDepth && Begins(trimmed, section.sWanted)) {
      if (piece.IsOpen() && !Done(piece, piece.Close())) return false;
      ++section.nPieces;
      CString sName;
      sName.Format("\\%s%d.txt", section.szPiece, section.nPieces);
      if (!Create(piece, sName, section.nPieces)) return false;
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

  bool Create(CopiedLines& file, const CString& sName, int nPiece) {
    const CString sPath = BKUtility::GetInstance()->BKPathCombine(m_state.sFolder, sName, __FILE__, __LINE__);
    const int nError = file.Create(sPath, nPiece);
    return nError == 0 || CannotWrite(WhyNot("cannot create ", sPath, nError));
  }
  bool Done(const CopiedLines& file, int nError) {
    return nError == 0 || CannotWrite(WhyNot("cannot write ", file.Path(), nError));
  }
  bool CannotWrite(const CString& sText) {
    m_state.status.Set(LoadStatus::Result::cannotWriteWorkingFolder, m_sPath, 0, 0, sText);
    return false;
  }
  bool CannotRead() {
    m_state.status.Set(LoadStatus::Result::cannotOpen, m_sPath, 0, 0,
                       WhyNot("cannot read the file", CString(), m_source.Error()));
    return false;
  }

  const CString& m_sPath;
  SplitState& m_state;
  Section m_first;
  Section m_second;
  CopiedLines m_others;
  const bool m_bWithOthers;
  LineReader m_source;
  std::int64_t m_nDepth = 0;
  std::int64_t m_nHostLine = 0;
};

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
  return static_cast<int>(
      std::min<std::int64_t>(run.nHostLine + (nLine - run.nLine), std::numeric_limits<int>::max()));
}

CString BoardWorkingFolder(const CString& sPath) {
  return FolderInDataPath(BKUtility::GetInstance()->GetSegmntFromFilePath(sPath, 2));
}

bool SplitBoardFile(const CString& sPath, SplitState& state) {
  return WithPlatformFailures([&] {
    Section components{
        "(components", false, "(component", 4, "component", &state.nComponentFileCount, CopiedLines(state.components)};
    Section layers{"(boardLayout", false, "(layer", 5, "layer", &state.nLayerFileCount, CopiedLines(state.layers)};
    Splitter splitter(sPath, state, std::move(components), std::move(layers), true);
    return splitter.Run([&] { return BoardWorkingFolder(sPath); });
  });
}

bool SplitFootprintFile(const CString& sPath, SplitState& state) {
  return WithPlatformFailures([&] {
    Section padstacks{"(padstacks", false, "(padstack", 4, "PadStack", nullptr, CopiedLines(state.components)};
    Section footprints{"(footprints", true, "(footprint", 4, "Footprint", nullptr, CopiedLines(state.layers)};
    Splitter splitter(sPath, state, std::move(padstacks), std::move(footprints), false);
    return splitter.Run([] { return FolderInDataPath("Tmp"); });
  });
}

}  // namespace laminate
