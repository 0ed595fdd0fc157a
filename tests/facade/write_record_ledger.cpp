// Prints docs/ledger-records.md.
#include <cstdio>

#include "facade/RecordLedgerPage.h"

int main() { return std::fputs(RecordLedgerPage().c_str(), stdout) < 0 ? 1 : 0; }
