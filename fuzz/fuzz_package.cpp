// A package file of any bytes.
#include "fuzz/DesignDataFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize) {
  return laminate::fuzz::LoadText(&CPC_BD_OutClsGet::vGetOutPackageArray, pData, nSize);
}
