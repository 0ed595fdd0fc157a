#pragma once
#include <vector>

#include "facade/LossTables.h"

class CBDboardContainer;
class CBDfootprintContainer;
class CBDlibraryEntities;
class CBDparameter;

namespace laminate {

void FindBoardLosses(const CBDboardContainer& board, LossFinder& finder);
void FindParameterLosses(const CBDparameter& parameter, LossFinder& finder);
/// Tells which of the claims on the library are not among those that are written: these come from the components and
/// the library.
void FindEntityLosses(const CBDlibraryEntities& entities, const CBDboardContainer& board,
                      const CBDfootprintContainer& library, LossFinder& finder);
void ListBoardLedger(std::vector<RecordLedgerLine>& lines);

}  // namespace laminate
