#pragma once
#include <optional>
#include <string_view>

#include "render/Painter.h"
#include "render/Scene.h"

namespace laminate::cli {

enum class PictureFormat { svg, png, pdf };

/// The format that a file name's ending asks for, in capitals or not; none for an ending that is not known.
std::optional<PictureFormat> FormatOf(std::string_view sFileName);

struct PictureSettings {
  PictureFormat format = PictureFormat::svg;
  int pixels = 1600;  ///< length of the longer side of a PNG picture
  Step step = [] {};  ///< called now and then while the picture is drawn; what it raises ends that
};

/// Draws a scene, framed to a part of the board with a margin, and a scale in mm below it. An empty frame stands for a
/// small square at the origin; one that reaches farther than a million km from it raises `std::range_error`.
void DrawPicture(const Scene& scene, const Box& frame, const PictureSettings& settings, Sink sink);

}  // namespace laminate::cli
