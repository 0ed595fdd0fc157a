#pragma once
#include <vector>

#include "drawobj/CBDvertex.h"
#include "render/Path.h"

namespace laminate::cli {

/// Appends the vertices as one closed figure. Corners with a rounding radius are rounded, arcs turn as they say
/// ("CW" clockwise, anything else counter-clockwise) from their begin to their end about their centre.
void AppendClosed(Path& path, const CBDvertexArray* pVertices);

/// A piece of a line that has one width throughout.
struct Track {
  Path path;
  double width = 0;
};
/// The vertices as an open line, cut where its width changes: the way from a vertex to the next has the width of the
/// former, or where that has none of the latter; an arc has that of its begin.
std::vector<Track> TracksOf(const CBDvertexArray* pVertices);

}  // namespace laminate::cli
