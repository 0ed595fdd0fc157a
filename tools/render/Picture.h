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
};

/// Draws a scene, framed to a part of the board with a margin, and a scale in mm below it. An empty frame stands for a
/// small square at the origin.
void DrawPicture(const Scene& scene, const Box& frame, const PictureSettings& settings, Sink sink);

}  // namespace laminate::cli
