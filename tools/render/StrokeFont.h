#pragma once
#include <string_view>

#include "render/Path.h"

namespace laminate::cli {

/// Appends the strokes of a line of text, to be drawn with a pen: the first letter stands at the origin, each in a cell
/// of the given size. Letters of ASCII have a form of their own; any other character is an empty cell's frame, and
/// control characters are blank.
void AppendText(Path& path, std::string_view sUtf8, double dGlyphWidth, double dGlyphHeight, double dSpace);

}  // namespace laminate::cli
