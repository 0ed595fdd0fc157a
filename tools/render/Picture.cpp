#include "render/Picture.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string>
#include <utility>

#include "base/Number.h"
#include "render/Palette.h"

namespace laminate::cli {

namespace {

// Parts of the picture, as shares of the frame's longer side.
constexpr double kMargin = 0.03;
constexpr double kScaleStrip = 0.05;
constexpr double kScaleText = 0.014;
constexpr double kHairline = 1.0 / 2000;
// What is smaller than this, in mm, is drawn in a frame of this size.
constexpr double kSmallestFrame = 1;
constexpr double kEmptyFrame = 10;
// Beyond this the numbers of a drawing cannot tell its shapes apart.
constexpr double kFarthestFrame = 1e12;

Box Sound(Box frame) {
  if (frame.IsEmpty()) {
    frame.Add({0, 0});
    frame.Add({kEmptyFrame, kEmptyFrame});
  }
  const auto widen = [](double& dLow, double& dHigh) {
    const double dMore = (kSmallestFrame - (dHigh - dLow)) / 2;
    if (dMore <= 0) return;
    dLow -= dMore;
    dHigh += dMore;
  };
  widen(frame.low.x, frame.high.x);
  widen(frame.low.y, frame.high.y);
  for (const double d : {frame.low.x, frame.low.y, frame.high.x, frame.high.y}) {
    if (!(std::abs(d) <= kFarthestFrame)) throw std::range_error("what is to be drawn lies too far from the origin");
  }
  return frame;
}

// The longest of 1, 2 and 5 times a power of ten that is at most `d`.
double RoundLength(double d) {
  const double dPower = std::pow(10.0, std::floor(std::log10(d)));
  for (const double dStep : {5.0, 2.0}) {
    if (dStep * dPower <= d) return dStep * dPower;
  }
  return dPower;
}

std::string Millimetres(double d) {
  char number[kMaxNumberLength];
  return std::string(number, FormatGeneral(number, d)) + " mm";
}

// A bar with ends and its length, from the lower left corner of the frame.
void DrawScale(Painter& painter, Vec begin, double dLength, double dSide) {
  const double dText = kScaleText * dSide;
  painter.BeginGroup({.layer = {}, .colour = kScale});
  Path path;
  path.Move(begin + Vec(0, -dText / 2));
  path.Line(begin + Vec(0, dText / 2));
  path.Move(begin);
  path.Line(begin + Vec(dLength, 0));
  path.Move(begin + Vec(dLength, -dText / 2));
  path.Line(begin + Vec(dLength, dText / 2));
  painter.Stroke(path, {}, {.width = 2 * kHairline * dSide});
  const std::string sLabel = Millimetres(dLength);
  painter.Text({.text = sLabel,
                .place = Motion::Flipping(begin + Vec(dLength + dText, dText / 2)),
                .glyphWidth = dText * 0.7,
                .glyphHeight = dText,
                .space = dText * 0.25,
                .stroke = dText / 8},
               {});
  painter.EndGroup();
}

std::unique_ptr<Painter> MakePainter(const Sheet& sheet, const PictureSettings& settings, Sink sink) {
  switch (settings.format) {
    case PictureFormat::png:
      return MakePngPainter(sheet, settings.pixels, std::move(sink));
    case PictureFormat::pdf:
      return MakePdfPainter(sheet, std::move(sink));
    case PictureFormat::svg:
      break;
  }
  return MakeSvgPainter(sheet, std::move(sink));
}

}  // namespace

std::optional<PictureFormat> FormatOf(std::string_view sFileName) {
  constexpr std::pair<std::string_view, PictureFormat> kEndings[] = {
      {".svg", PictureFormat::svg}, {".png", PictureFormat::png}, {".pdf", PictureFormat::pdf}};
  for (const auto& [sEnding, format] : kEndings) {
    if (sFileName.size() < sEnding.size()) continue;
    const std::string_view sTail = sFileName.substr(sFileName.size() - sEnding.size());
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    if (std::ranges::equal(sTail, sEnding, {}, lower)) return format;
  }
  return std::nullopt;
}

void DrawPicture(const Scene& scene, const Box& wanted, const PictureSettings& settings, Sink sink) {
  const Box frame = Sound(wanted);
  const double dSide = std::max(frame.Width(), frame.Height());
  const double dMargin = kMargin * dSide;
  const Sheet sheet{.width = frame.Width() + 2 * dMargin,
                    .height = frame.Height() + 2 * dMargin + kScaleStrip * dSide,
                    .ground = kGround};
  const std::unique_ptr<Painter> pPainter = MakePainter(sheet, settings, std::move(sink));
  // The sheet's y points down. Seen from side B, x is exchanged too, which makes half a turn.
  const double dTop = frame.high.y + dMargin;
  const Motion place = scene.Seen() == View::sideB ? Motion::Placing({frame.high.x + dMargin, dTop}, 180, false)
                                                   : Motion::Flipping({dMargin - frame.low.x, dTop});
  scene.Draw(*pPainter, place, kHairline * dSide, settings.step);
  DrawScale(*pPainter, {dMargin, sheet.height - (dMargin + kScaleStrip * dSide) / 2}, RoundLength(frame.Width() / 4),
            dSide);
  pPainter->Finish();
}

}  // namespace laminate::cli
