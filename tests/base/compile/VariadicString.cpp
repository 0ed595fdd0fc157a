// Compiled by several tests: with PASSES_STRING it must not compile, without it must. With CASTS_FUNCTION it holds
// something else that is conditionally supported, which a host may ask for.
#ifdef CASTS_FUNCTION
#define LAMINATE_NO_VARIADIC_CHECK
#endif
#include <cstdio>

#include "base/CString.h"

int main() {
  const CString s("text");
#ifdef PASSES_STRING
  std::printf("%s\n", s);
#else
  std::printf("%s\n", s.GetString());
#endif
#ifdef CASTS_FUNCTION
  return reinterpret_cast<int (*)()>(reinterpret_cast<void*>(&main)) == nullptr ? 1 : 0;
#else
  return 0;
#endif
}
