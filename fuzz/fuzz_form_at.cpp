// The parse of a form at an offset against its plain transcription. Three bytes hold the options and the offset; the
// rest is the file.
#include "fuzz/FuzzSupport.h"
#include "reader/ReaderTestSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize) {
  laminate::fuzz::Input input(pData, nSize);
  const unsigned options = input.Byte();
  const std::size_t offset = input.Byte() + 256 * input.Byte();
  const std::string text = input.Rest();
  laminate::Diagnostics diagnostics;
  TextParser parser;
  laminate::fuzz::RequireSame(parser.At(text, offset, (options & 1) != 0 ? &diagnostics : nullptr),
                              ToOutcome(plain::ParseFormAt(text, offset)));
  return 0;
}
