// Prints docs/save.md.
#include <cstdio>

#include "save/LimitsPage.h"

int main() { return std::fputs(laminate::test::LimitsPage().c_str(), stdout) < 0 ? 1 : 0; }
