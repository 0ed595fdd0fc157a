#include "save/DesignSaver.h"

#include <memory>
#include <optional>

#include "base/CException.h"
#include "base/WholeFile.h"
#include "save/Content.h"
#include "save/PreservedBoard.h"
#include "save/PreservedFootprints.h"
#include "save/ReadBack.h"
#include "save/SourceDesign.h"
#include "save/WrittenForms.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDtechnologyContainer.h"

namespace laminate {

namespace {

HeldText ReadSource(const CString& sPath) {
  HeldText text;
  if (const int n = text.Read(sPath); n != 0) {
    AfxThrowFileException(CFileException::OsErrorToException(-n), -n, sPath);
  }
  return text;
}

void RequireGood(bool bGood, const CString& sPath, const LoadStatus& status) {
  if (bGood) return;
  throw CInvalidArgException(std::string(sPath.View()) + " is not well formed: " + std::string(status.m_sText.View()),
                             status.m_nLine);
}

}  // namespace

DesignSaver::DesignSaver(const SavedDesign& design) : m_design(design) {
  if (design.pVersion == nullptr || design.pTechnology == nullptr || design.pFtfTechnology == nullptr ||
      design.pFootprints == nullptr || design.pBoard == nullptr || design.pParameter == nullptr ||
      design.pLibraryEntities == nullptr) {
    AfxThrowInvalidArgException();
  }
}

void DesignSaver::SetBoardFile(const CString& sTarget, const CString& sSource) { m_board = {sTarget, sSource}; }
void DesignSaver::SetFootprintFile(const CString& sTarget, const CString& sSource) {
  m_footprints = {sTarget, sSource};
}

bool DesignSaver::Save() {
  // What was found before is said anew.
  m_losses = m_allowances;
  HeldText boardSource;
  HeldText footprintSource;
  SourceDesign source;
  if (!m_footprints.sSource.IsEmpty()) {
    footprintSource = ReadSource(m_footprints.sSource);
    RequireGood(source.ReadFootprintFile(footprintSource.View()), m_footprints.sSource, source.Status());
  }
  if (!m_board.sSource.IsEmpty()) {
    boardSource = ReadSource(m_board.sSource);
    RequireGood(source.ReadBoardFile(boardSource.View()), m_board.sSource, source.Status());
  }
  std::string sBoard;
  std::string sFootprints;
  if (!m_board.sTarget.IsEmpty()) {
    sBoard = m_board.sSource.IsEmpty() ? FormsAsText(m_losses, [this](FormText& text) { PutBoardFile(text, m_design); })
                                       : PreservedBoard(m_design, source, boardSource.View(), m_losses).Text();
  }
  if (!m_footprints.sTarget.IsEmpty()) {
    sFootprints = m_footprints.sSource.IsEmpty()
                      ? FormsAsText(m_losses, [this](FormText& text) { PutFootprintFile(text, m_design); })
                      : PreservedFootprints(m_design, source.Design(), footprintSource.View(), m_losses);
  }
  if (m_losses.IsRefused()) return false;
  // What was preserved has been held against the design already.
  if (!m_board.sTarget.IsEmpty() && m_board.sSource.IsEmpty()) RequireBoardReadsBack(m_design, sBoard, m_losses);
  if (!m_footprints.sTarget.IsEmpty() && m_footprints.sSource.IsEmpty()) {
    RequireFootprintsReadBack(m_design, sFootprints, m_losses);
  }

  // Both are written out before either takes its place.
  std::optional<WholeFile> board;
  std::optional<WholeFile> footprints;
  const auto write = [](std::optional<WholeFile>& file, const CString& sTarget, const std::string& s) {
    if (sTarget.IsEmpty()) return;
    file.emplace(sTarget);
    file->Text().Bytes(s);
  };
  write(footprints, m_footprints.sTarget, sFootprints);
  write(board, m_board.sTarget, sBoard);
  if (footprints) footprints->Commit();
  if (board) board->Commit();
  return true;
}

}  // namespace laminate
