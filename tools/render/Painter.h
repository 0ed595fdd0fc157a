#pragma once
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "render/Path.h"

namespace laminate::cli {

struct Colour {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
  friend bool operator==(const Colour&, const Colour&) = default;
};

/// The sheet that is drawn on: its size in mm and its ground.
struct Sheet {
  double width = 0;
  double height = 0;
  Colour ground;
};

/// What is drawn together in one colour: a layer of the board, or with an empty name something that is none.
struct Group {
  std::string_view layer;  ///< UTF-8
  Colour colour;
  double opacity = 1;
};

/// What a shape belongs to, in UTF-8; empty where it belongs to none.
struct Owner {
  std::string_view net;
  std::string_view reference;
};

struct Pen {
  double width = 0;
  bool square = false;
  double dash = 0;  ///< length of the dashes; 0: a full line
  double blank = 0;
  double opacity = 1;  ///< on top of the group's
};

/// One line of text. `place` maps its own plane to the sheet: the baseline begins at the origin and runs along x, y
/// points up the letters.
struct TextLine {
  std::string_view text;  ///< UTF-8
  Motion place;
  double glyphWidth = 0;
  double glyphHeight = 0;  ///< of a capital letter
  double space = 0;        ///< between letters
  double stroke = 0;

  double Length() const;
};
/// The number of characters of a UTF-8 text.
std::size_t CountCharacters(std::string_view sUtf8);

/// What pictures are drawn through. Coordinates are in mm on the sheet, from its upper left corner, y pointing down.
/// Everything is drawn inside a group and has its colour; what comes later covers what came before. Shapes that cannot
/// be drawn, since a number in them is not finite, are left out by the caller.
class Painter {
 public:
  virtual ~Painter() = default;
  virtual void BeginGroup(const Group& group) = 0;
  virtual void EndGroup() = 0;
  /// Fills what an odd number of the path's outlines goes around. `dOpacity` comes on top of the group's.
  virtual void Fill(const Path& path, const Owner& owner, double dOpacity) = 0;
  /// The same area with hatching at 45 degrees and a pitch.
  virtual void Hatch(const Path& path, const Owner& owner, double dPitch) = 0;
  virtual void Stroke(const Path& path, const Owner& owner, const Pen& pen) = 0;
  /// An opening: the ground shows, with a thin rim.
  virtual void Cut(const Path& path, const Owner& owner, double dRim) = 0;
  virtual void Text(const TextLine& line, const Owner& owner) = 0;
  /// Completes the picture.
  virtual void Finish() {}
};

/// Where the bytes of a picture go.
using Sink = std::function<void(std::string_view)>;

std::unique_ptr<Painter> MakeSvgPainter(const Sheet& sheet, Sink sink);
std::unique_ptr<Painter> MakePdfPainter(const Sheet& sheet, Sink sink);
/// `nPixels` is the length of the picture's longer side.
std::unique_ptr<Painter> MakePngPainter(const Sheet& sheet, int nPixels, Sink sink);

/// Draws nothing and tells what a drawing would cover: paths and texts without pen widths.
class BoundsPainter : public Painter {
 public:
  const Box& Bounds() const { return m_bounds; }

  void BeginGroup(const Group&) override {}
  void EndGroup() override {}
  void Fill(const Path& path, const Owner&, double) override { m_bounds.Add(path.Bounds()); }
  void Hatch(const Path& path, const Owner&, double) override { m_bounds.Add(path.Bounds()); }
  void Stroke(const Path& path, const Owner&, const Pen&) override { m_bounds.Add(path.Bounds()); }
  void Cut(const Path& path, const Owner&, double) override { m_bounds.Add(path.Bounds()); }
  void Text(const TextLine& line, const Owner&) override;

 private:
  Box m_bounds;
};

}  // namespace laminate::cli
