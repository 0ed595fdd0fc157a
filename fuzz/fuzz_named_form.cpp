// The parse of one section against its plain transcription. The first byte holds the options, the first line is the
// section's name; the rest is the file.
#include "fuzz/FuzzSupport.h"
#include "reader/ReaderTestSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize) {
  laminate::fuzz::Input input(pData, nSize);
  const unsigned options = input.Byte();
  const std::string name = input.UpTo('\n');
  const std::string text = input.Rest();
  laminate::Diagnostics diagnostics;
  TextParser parser;
  laminate::fuzz::RequireSame(parser.Named(text, name, (options & 1) != 0 ? &diagnostics : nullptr),
                              ToOutcome(plain::ParseNamedForm(text, name)));
  return 0;
}
