#include "facade/ExportLosses.h"

#include "base/CException.h"
#include "board/CBDboardContainer.h"
#include "board/CBDlibraryEntities.h"
#include "board/CBDparameter.h"
#include "facade/BoardLosses.h"
#include "facade/CBDesigner.h"
#include "facade/LibraryLosses.h"
#include "facade/LossTables.h"
#include "facade/RecordLosses.h"
#include "facade/ShapeLosses.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDtechnologyContainer.h"

namespace laminate {

namespace {

constexpr auto kRoot =
    Losses<CBDesigner>("CBDesigner", Kept<&CBDesigner::m_pTechnology>(),
                       Told<&CBDesigner::m_pFtfTechnology>(Fate::dropped, "the board's technology stands in its place"),
                       Kept<&CBDesigner::m_pFootprintContainer>(), Kept<&CBDesigner::m_pBoardContainer>(),
                       Kept<&CBDesigner::m_pParameter>(), Kept<&CBDesigner::m_pLibraryEntities>(),
                       Constant<&CBDesigner::m_sVersion, "2.0">());

}  // namespace

std::vector<RecordLedgerLine> RecordLedger() {
  std::vector<RecordLedgerLine> lines;
  kRoot.List(lines);
  ListLibraryLedger(lines);
  ListBoardLedger(lines);
  ListRecordLedger(lines);
  return lines;
}

void FindExportLosses(const CBDesigner& root, const ExportRecords& records,
                      const std::function<void(const ExportLoss&)>& tell) {
  const CBDtechnologyContainer& technology = Required(root.m_pTechnology);
  const CBDboardContainer& board = Required(root.m_pBoardContainer);
  const CBDfootprintContainer& library = Required(root.m_pFootprintContainer);
  LossFinder finder(tell);
  kRoot.Find(root, finder);
  const auto in = [&finder](std::string_view sField, auto&& find) {
    const LossFinder::Step step(finder, sField);
    find();
  };
  in("m_pTechnology", [&] { FindTechnologyLosses(technology, finder); });
  in("m_pFtfTechnology", [&] { FindFootprintTechnologyLosses(Required(root.m_pFtfTechnology), technology, finder); });
  in("m_pFootprintContainer", [&] { FindLibraryLosses(library, finder); });
  in("m_pBoardContainer", [&] { FindBoardLosses(board, finder); });
  in("m_pParameter", [&] { FindParameterLosses(Required(root.m_pParameter), finder); });
  in("m_pLibraryEntities", [&] { FindEntityLosses(Required(root.m_pLibraryEntities), board, library, finder); });
  FindRecordLosses(records, finder);
}

}  // namespace laminate
