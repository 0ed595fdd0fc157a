#pragma once
#include <string>

/// The page for users that shows the ledger.
std::string LedgerPage();
