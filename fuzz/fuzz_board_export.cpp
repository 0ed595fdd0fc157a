// A board file of any bytes, to the database, to the files of an export.
#include "fuzz/DesignExportFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize) {
  laminate::fuzz::DesignExport({reinterpret_cast<const char*>(pData), nSize}, {}).Run();
  return 0;
}
