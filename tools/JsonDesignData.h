#pragma once
#include "JsonWriter.h"

class CPC_BD_OutClsGet;

namespace laminate::cli {

/// The facade of the design data with all records.
void WriteDesignData(JsonWriter& json, const CPC_BD_OutClsGet& data);

}  // namespace laminate::cli
