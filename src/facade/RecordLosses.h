#pragma once
#include <vector>

#include "facade/LossTables.h"

namespace laminate {

/// Tells what is lost of the records that go to the package and parts files.
void FindRecordLosses(const ExportRecords& records, LossFinder& finder);
void ListRecordLedger(std::vector<RecordLedgerLine>& lines);

}  // namespace laminate
