#pragma once
#include <string_view>

class CPC_BD_OutClsGet;

namespace laminate {

class ScanReport;

/// Reads the text of a component-database file into the facade.
void ScanComponentFile(CPC_BD_OutClsGet& data, std::string_view sText, const ScanReport& report);

}  // namespace laminate
