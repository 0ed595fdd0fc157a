// The brace count of line after line against its plain transcription. The first byte is the string state before.
#include "fuzz/FuzzSupport.h"
#include "reader/BoardFileSplitter.h"
#include "reader/PlainReader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize) {
  laminate::fuzz::Input input(pData, nSize);
  int inQuote = static_cast<int>(input.Byte() % 3);
  int plainInQuote = inQuote;
  // 0xFF ends a line here, so that a line may hold line feeds.
  while (!input.IsEmpty()) {
    const std::string line = input.UpTo('\xFF');
    laminate::fuzz::RequireSame(laminate::BraceCount(line, inQuote), plain::BraceCount(line, plainInQuote));
    laminate::fuzz::RequireSame(inQuote != 0, plainInQuote != 0);
  }
  return 0;
}
