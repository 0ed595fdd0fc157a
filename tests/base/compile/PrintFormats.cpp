// Compiled by several tests: WRONG selects a print that must be refused; without it all must compile.
#include <string>

#include "base/TextOut.h"

void Print(laminate::TextOut& out) {
  const CString s("text");
#ifndef WRONG
  out.Print<"%s %d %.5f %f %g %%\n">(s, 1, 1.5, 1.5, 1.5);
#elif WRONG == 1
  out.Print<"%s %d\n">(s);  // too few arguments
#elif WRONG == 2
  out.Print<"%s\n">(s, 1);  // too many
#elif WRONG == 3
  out.Print<"%d\n">(1.5);  // a number of the wrong kind
#elif WRONG == 4
  out.Print<"%.5f\n">(1);
#elif WRONG == 5
  out.Print<"%s\n">(5);
#elif WRONG == 6
  out.Print<"%x\n">(5);  // a conversion that is not known
#elif WRONG == 7
  const char* szFormat = s.GetString();
  out.Print<szFormat>();  // a text that is not known in advance
#elif WRONG == 8
  out.Print<"100%">();  // half a conversion
#elif WRONG == 9
  out.Print<"%.6f\n">(1.5);
#endif
}

int main() {
  std::string target;
  laminate::TextOut out(target);
  Print(out);
  return 0;
}
