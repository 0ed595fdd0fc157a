#include "JsonBoard.h"

#include "FieldsDesign.h"
#include "JsonObjects.h"
#include "drawobj/CBDdrawObj.h"

namespace laminate::cli {

void WriteNets(JsonWriter& json, const CBDnetArray& nets) { WriteValue(json, nets); }

void WriteDesign(JsonWriter& json, const CBDesigner& root) { WriteValue(json, root); }

void WriteComponent(JsonWriter& json, const CBDcomponent& component) { WriteValue(json, component); }

}  // namespace laminate::cli
