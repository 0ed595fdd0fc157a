#pragma once
#include <string_view>

#include "drawobj/CBDdrawObj.h"

namespace laminate {

/// The name of the pad layer of a footprint's pin, which stands as a form of its own in a layer form.
inline constexpr std::string_view kPadstackLayer = "FPADSTACK";

/// True for a hole whose shape is a square hole: writers put a "squareHole" form around it.
bool IsSquareHole(const CBDdrawObj& shape);

}  // namespace laminate
