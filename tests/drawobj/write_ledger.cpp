// Prints docs/ledger.md.
#include <cstdio>

#include "drawobj/LedgerPage.h"

int main() { return std::fputs(LedgerPage().c_str(), stdout) < 0 ? 1 : 0; }
