// The splitter of footprint files against its plain transcription.
#include "fuzz/SplitFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize) {
  laminate::fuzz::SplitFiles(pData, nSize, true);
  return 0;
}
