// Compiled by two tests: with PASSES_STRING it must not compile, without it must.
#include <cstdio>

#include "base/CString.h"

int main() {
  const CString s("text");
#ifdef PASSES_STRING
  std::printf("%s\n", s);
#else
  std::printf("%s\n", s.GetString());
#endif
  return 0;
}
