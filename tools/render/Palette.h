#pragma once
#include <string_view>
#include <vector>

#include "render/BoardLayers.h"
#include "render/Painter.h"

namespace laminate::cli {

inline constexpr Colour kGround{0x14, 0x18, 0x1c};
inline constexpr Colour kScale{0xd8, 0xd8, 0xd8};

struct LayerStyle {
  Colour colour;
  double opacity = 1;
};

/// A colour for each layer, all different for as long as there are colours: those of copper by number, those of other
/// layers by type and side, and where two would be alike the next of a row that comes to each colour.
std::vector<LayerStyle> StylesOf(const BoardLayers& layers);

/// The smaller, the more a layer of this type covers of what it lies on.
int CoverRank(std::string_view sType);

}  // namespace laminate::cli
