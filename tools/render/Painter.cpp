#include "render/Painter.h"

#include <algorithm>

namespace laminate::cli {

std::size_t CountCharacters(std::string_view sUtf8) {
  return static_cast<std::size_t>(
      std::ranges::count_if(sUtf8, [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

double TextLine::Length() const {
  const auto n = static_cast<double>(CountCharacters(text));
  return n == 0 ? 0 : n * glyphWidth + (n - 1) * space;
}

void BoundsPainter::Text(const TextLine& line, const Owner&) {
  const double dLength = line.Length();
  for (const Vec corner : {Vec(0, 0), Vec(dLength, 0), Vec(0, line.glyphHeight), Vec(dLength, line.glyphHeight)}) {
    m_bounds.Add(line.place(corner));
  }
}

}  // namespace laminate::cli
