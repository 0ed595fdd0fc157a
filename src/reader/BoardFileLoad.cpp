#include "reader/BoardFileLoad.h"

#include <memory>
#include <utility>

#include "base/BKUtility.h"
#include "base/CException.h"
#include "base/TextOut.h"
#include "reader/BoardFileSplitter.h"
#include "reader/CECadCls.h"

namespace laminate {
namespace {

template <PrintFormat kFormat, class... Args>
void Log(const BoardFileLoad& load, const Args&... args) {
  if (load.pLogFile == nullptr) return;
  TextOut out(load.pLogFile);
  out.Print<kFormat>(args...);
}
void FlushLog(const BoardFileLoad& load) {
  if (load.pLogFile != nullptr) std::fflush(load.pLogFile);
}

CString InFolder(const CString& sFolder, const CString& sName) {
  return BKUtility::GetInstance()->BKPathCombine(sFolder, sName, __FILE__, __LINE__);
}

// One piece in work: which one it is, and the reader that holds its tree.
class Piece {
 public:
  Piece(BoardFileLoad& load, const PieceLines& lines, int nPiece, CString sPath)
      : m_load(load), m_lines(lines), m_nPiece(nPiece), m_sPath(std::move(sPath)), m_reader(new CECadCls) {}

  // Logs the path and parses; gives the parse's result.
  int Parse() {
    Log<"Parsing - %s\n">(m_load, m_sPath);
    FlushLog(m_load);
    m_reader->m_sFileName = m_sPath;
    const int nResult = m_reader->nParseFile(0);
    const LoadStatus& status = m_reader->m_status;
    // A piece of an earlier split that is gone is no fault: the count that asks for it was left standing.
    if (!status.IsOk() && IsOfThisSplit()) {
      const bool bUnreadable = status.m_result == LoadStatus::Result::cannotOpen;
      m_load.status.Set(status.m_result, m_load.sPath, HostLine(status.m_nLine), status.m_nColumn,
                        bUnreadable ? m_sPath + ": " + status.m_sText : status.m_sText);
    }
    return nResult;
  }

  CECadCls* Reader() { return m_reader.get(); }
  void ReaderIsGone() { m_reader.release(); }
  CECadClsLvl* FirstForm() { return m_reader->m_pRootArray->GetAt(0); }
  int HostLine(int nLine) const { return m_lines.HostLine(m_nPiece, nLine); }

  // Runs a translator, and tells the status of a form that it could not make sense of.
  template <class Translate>
  auto Hand(Translate translate) {
    try {
      return translate();
    } catch (CInvalidArgException& e) {
      // Every form of a file has a line: without one it is a host's pointer, or what a message box raised.
      if (e.m_nLine == 0) throw;
      e.m_nLine = HostLine(e.m_nLine);
      m_load.status.Set(LoadStatus::Result::invalidContent, m_load.sPath, e.m_nLine, 0, e.what());
      throw;
    }
  }

 private:
  bool IsOfThisSplit() const { return m_nPiece == 0 || HostLine(1) != 0; }

  BoardFileLoad& m_load;
  const PieceLines& m_lines;
  const int m_nPiece;
  const CString m_sPath;
  std::unique_ptr<CECadCls> m_reader;
};

// False when the load ends here.
bool ReadOthers(BoardFileLoad& load, const SplitState& state) {
  const CString sPath = InFolder(state.sFolder, "others.txt");
  Piece others(load, state.others, 0, sPath);
  if (others.Parse() == -1) {
    Log<"%s file is not in regular format.\n">(load, sPath);
    return false;
  }
  CString sRoot;
  int nLine = 0;
  if (const CECadClsLvl* pFirst = others.FirstForm()) {
    sRoot = pFirst->m_sName;
    nLine = others.HostLine(pFirst->m_nLine);
  }
  const int nResult = others.Hand([&] { return load.others(others.Reader()); });
  if (nResult != 0) {
    others.ReaderIsGone();
    load.status.Set(LoadStatus::Result::notWellFormed, load.sPath, nLine, 0,
                    nLine == 0 ? CString("there is no form in the file")
                               : "no form of the file is the root of a board; the first is \"" + sRoot + "\"");
  }
  return true;
}

void ReadPieces(BoardFileLoad& load, const CString& sFolder, const char* szName, const int& nCount,
                const PieceLines& lines, const std::function<void(CECadClsLvl*)>& translate) {
  for (int n = 1; n <= nCount; ++n) {
    CString sName;
    sName.Format("\\%s%d.txt", szName, n);
    Piece piece(load, lines, n, InFolder(sFolder, sName));
    piece.Parse();
    if (CECadClsLvl* pForm = piece.FirstForm()) piece.Hand([&] { translate(pForm); });
  }
}

void Load(BoardFileLoad& load) {
  Log<"separate PCF file into several file.\n">(load);
  FlushLog(load);
  SplitState state{load.bInQuote, load.nComponentFileCount, load.nLayerFileCount, load.status};
  if (!SplitBoardFile(load.sPath, state)) {
    load.nComponentFileCount = 0;
    load.nLayerFileCount = 0;
    // Another load's folder is left alone.
    if (state.lock.IsOpen()) BKUtility::GetInstance()->DeleteDirectory(state.sFolder);
    Log<"%s file is not in regular format.\n">(load, load.sPath);
    return;
  }
  SendPosition(load.pProgress, 40);
  if (!ReadOthers(load, state)) return;
  ReadPieces(load, state.sFolder, "component", load.nComponentFileCount, state.components, load.component);
  SendPosition(load.pProgress, 60);
  ReadPieces(load, state.sFolder, "layer", load.nLayerFileCount, state.layers, load.layer);
  SendPosition(load.pProgress, 80);
  if (!BKUtility::GetInstance()->DeleteDirectory(state.sFolder)) {
    load.status.Set(LoadStatus::Result::ok, load.sPath, 0, 0, "cannot remove the working folder " + state.sFolder);
  }
  state.lock.Close();
  SendPosition(load.pProgress, 100);
  Log<"Complete PCF file Parsing\n">(load);
  FlushLog(load);
}

}  // namespace

void LoadBoardFile(BoardFileLoad& load) {
  WithPlatformFailures([&] { Load(load); });
}

}  // namespace laminate
