#include "JsonDesignData.h"

#include "FieldsDesignData.h"
#include "JsonObjects.h"

namespace laminate::cli {

void WriteDesignData(JsonWriter& json, const CPC_BD_OutClsGet& data) { WriteValue(json, data); }

}  // namespace laminate::cli
