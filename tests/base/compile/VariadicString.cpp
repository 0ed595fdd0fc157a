// Compiled by two tests: with REFUSED it must not compile, without it must.
#include <cstdio>

#include "base/CString.h"

int main() {
  const CString s("text");
#ifdef REFUSED
  std::printf("%s\n", s);
#else
  std::printf("%s\n", s.GetString());
#endif
  return 0;
}
