#pragma once
#include <vector>

#include "facade/LossTables.h"

class CBDfootprintContainer;
class CBDtechnologyContainer;

namespace laminate {

/// Tells what is lost of the board's technology.
void FindTechnologyLosses(const CBDtechnologyContainer& technology, LossFinder& finder);
/// Tells what of a footprint file's technology the board's does not hold: that of the board is written in its place.
void FindFootprintTechnologyLosses(const CBDtechnologyContainer& ofFile, const CBDtechnologyContainer& ofBoard,
                                   LossFinder& finder);
void FindLibraryLosses(const CBDfootprintContainer& library, LossFinder& finder);
void ListLibraryLedger(std::vector<RecordLedgerLine>& lines);

}  // namespace laminate
