#include "render/Palette.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <set>

namespace laminate::cli {

namespace {

struct TypeStyle {
  std::string_view type;
  Colour front;  // of side A, and of what is common
  Colour back;
  double opacity;
};
// From what covers most to what covers least.
constexpr TypeStyle kTypes[] = {
    {"COMPAREA", {0xc0, 0x60, 0xb0}, {0x80, 0x70, 0xc8}, 0.8},
    {"RESIST", {0x90, 0x50, 0xc0}, {0x50, 0x90, 0x98}, 0.35},
    {"METALMASK", {0xb0, 0xb4, 0xb8}, {0x88, 0x94, 0xa4}, 0.35},
    {"GLUE", {0xd0, 0x70, 0x90}, {0x90, 0x60, 0xa8}, 0.5},
    {"ASSEMBLY", {0x98, 0xb0, 0x90}, {0x88, 0x98, 0xb4}, 0.8},
    {"HOLE", {0xd0, 0xd4, 0xd8}, {0xd0, 0xd4, 0xd8}, 1},
    {"OUTLINE", {0xf0, 0xd0, 0x30}, {0xf0, 0xd0, 0x30}, 1},
    {"SYMBOL", {0xf4, 0xf4, 0xec}, {0xd8, 0xc0, 0xf0}, 1},
};

constexpr Colour kFirstCopper{0xc8, 0x40, 0x34};
constexpr Colour kLastCopper{0x44, 0x78, 0xd8};
constexpr std::array<Colour, 8> kInnerCopper = {{{0xb8, 0x9c, 0x38},
                                                 {0x50, 0xa0, 0x58},
                                                 {0xb0, 0x68, 0xb8},
                                                 {0x38, 0xa4, 0xa4},
                                                 {0xc8, 0x80, 0x40},
                                                 {0x8c, 0x8c, 0xe0},
                                                 {0xa8, 0xb8, 0x60},
                                                 {0xd0, 0x70, 0x94}}};

constexpr std::uint32_t kColours = 1u << 24;

std::uint32_t KeyOf(Colour colour) { return colour.red << 16 | colour.green << 8 | colour.blue; }

// A row in which each colour comes: first those of one strength around the colour circle, each far from those before
// it, then all, in steps that are prime to their count.
Colour Generated(std::uint32_t n) {
  constexpr std::uint32_t kHues = 360;
  if (n >= kHues) {
    const std::uint32_t nColour = (n - kHues) * 0x9e3779u % kColours;
    return {static_cast<std::uint8_t>(nColour >> 16), static_cast<std::uint8_t>(nColour >> 8),
            static_cast<std::uint8_t>(nColour)};
  }
  constexpr double kGoldenAngle = 137.508;
  const double dHue = std::fmod(20 + n * kGoldenAngle, 360.0) / 60;
  const auto channel = [dHue](double dShift) {
    const double d = std::clamp(std::abs(std::fmod(dHue + dShift, 6.0) - 3) - 1, 0.0, 1.0);
    return static_cast<std::uint8_t>(std::lround(90 + 130 * d));
  };
  return {channel(0), channel(4), channel(2)};
}

}  // namespace

int CoverRank(std::string_view sType) {
  const auto* it = std::ranges::find(kTypes, sType, &TypeStyle::type);
  return static_cast<int>(it - std::begin(kTypes));
}

std::vector<LayerStyle> StylesOf(const BoardLayers& layers) {
  int nLast = 1;
  for (const BoardLayer& layer : layers.All()) nLast = std::max(nLast, layer.number);
  std::vector<LayerStyle> styles;
  std::set<std::uint32_t> used{KeyOf(kGround), KeyOf(kScale)};
  std::uint32_t nGenerated = 0;
  for (const BoardLayer& layer : layers.All()) {
    LayerStyle style{.colour = kGround};
    if (layer.conductive) {
      style.colour = layer.number == 1       ? kFirstCopper
                     : layer.number == nLast ? kLastCopper
                                             : kInnerCopper[static_cast<unsigned>(layer.number) % kInnerCopper.size()];
    } else if (const auto* it = std::ranges::find(kTypes, layer.type, &TypeStyle::type); it != std::end(kTypes)) {
      style.colour = layer.place == LayerPlace::sideB ? it->back : it->front;
      style.opacity = it->opacity;
    }
    while (!used.insert(KeyOf(style.colour)).second && used.size() != kColours) style.colour = Generated(nGenerated++);
    styles.push_back(style);
  }
  return styles;
}

}  // namespace laminate::cli
