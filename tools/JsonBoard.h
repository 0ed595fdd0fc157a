#pragma once
#include "JsonWriter.h"

class CBDcomponent;
class CBDesigner;
class CBDnetArray;

namespace laminate::cli {

/// The array of a board's nets.
void WriteNets(JsonWriter& json, const CBDnetArray& nets);
/// The whole database.
void WriteDesign(JsonWriter& json, const CBDesigner& root);
void WriteComponent(JsonWriter& json, const CBDcomponent& component);

}  // namespace laminate::cli
