#pragma once
#include <string>

/// The page for users that shows the ledger of the records.
std::string RecordLedgerPage();
