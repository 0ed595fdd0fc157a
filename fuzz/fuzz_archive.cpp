// An archive image of any bytes, loaded into an empty facade and into a full one.
#include "fuzz/DesignDataFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize) {
  const std::string_view sImage(reinterpret_cast<const char*>(pData), nSize);
  CPC_BD_OutClsGet data;
  laminate::fuzz::LoadImage(data, sImage);
  laminate::fuzz::Use(data);
  laminate::fuzz::LoadImage(data, sImage);
  laminate::fuzz::Use(data);
  return 0;
}
