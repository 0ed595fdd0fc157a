#pragma once
#include <string_view>

class CPC_BD_OutClsGet;

namespace laminate {

class ScanReport;

/// Reads the text of a parts file into the facade.
void ScanPartsFile(CPC_BD_OutClsGet& data, std::string_view sText, const ScanReport& report);

}  // namespace laminate
