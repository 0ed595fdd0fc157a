#include "render/StrokeFont.h"

#include <array>
#include <cstdint>

namespace laminate::cli {

namespace {

// The letters on a grid of 4 columns and 6 rows above the baseline. Each pair of characters is a point: the column, and
// the row as a digit or, below the baseline, 'a' for -1 and 'b' for -2. A blank lifts the pen; a stroke of one point
// that stands twice is a dot.
constexpr double kColumns = 4;
constexpr double kRows = 6;
constexpr int kFirst = 0x20;
constexpr std::array<std::string_view, 95> kGlyphs = {
    "",                                  // blank
    "2622 2020",                         // !
    "1614 3634",                         // "
    "1016 3036 0242 0444",               // #
    "453616050413334241301001 2620",     // $
    "0046 0616150506 3141403031",        // %
    "4004051625240201102042",            // &
    "2624",                              // '
    "36252130",                          // (
    "16252110",                          // )
    "2521 0442 0244",                    // *
    "2521 0343",                         // +
    "21201a",                            // ,
    "0343",                              // -
    "2020",                              // .
    "0046",                              // /
    "103041453616050110 0145",           // 0
    "152620 1030",                       // 1
    "05163645440040",                    // 2
    "05163645443313 334241301001",       // 3
    "30360242",                          // 4
    "460603334241301001",                // 5
    "453616050110304142331302",          // 6
    "064610",                            // 7
    "13040516364544331302011030414233",  // 8
    "011030414536160504133344",          // 9
    "2424 2121",                         // :
    "2424 21201a",                       // ;
    "450341",                            // <
    "0444 0242",                         // =
    "054301",                            // >
    "05163645442322 2020",               // ?
    "32341412324245361605011040",        // @
    "002640 1333",                       // A
    "00063645443303 3342413000",         // B
    "4536160501103041",                  // C
    "00062644422000",                    // D
    "46060040 0333",                     // E
    "460600 0333",                       // F
    "45361605011030414323",              // G
    "0006 4046 0343",                    // H
    "1030 2026 1636",                    // I
    "4641301001",                        // J
    "0006 4602 1340",                    // K
    "060040",                            // L
    "0006234640",                        // M
    "00064046",                          // N
    "103041453616050110",                // O
    "00063645443303",                    // P
    "103041453616050110 2240",           // Q
    "00063645443303 2340",               // R
    "453616050413334241301001",          // S
    "2026 0646",                         // T
    "060110304146",                      // U
    "062046",                            // V
    "0610233046",                        // W
    "0046 0640",                         // X
    "062346 2320",                       // Y
    "06460040",                          // Z
    "36161030",                          // [
    "0640",                              // backslash
    "16363010",                          // ]
    "042644",                            // ^
    "0a4a",                              // _
    "1625",                              // `
    "14344340 421201103041",             // a
    "0600304143341403",                  // b
    "4334140301103041",                  // c
    "4640100103143443",                  // d
    "024243341403011040",                // e
    "46362520 1434",                     // f
    "444a3b1b0a 4334140301103041",       // g
    "0600 0314344340",                   // h
    "2420 2626",                         // i
    "343a2b1b 3636",                     // j
    "0600 4401 1240",                    // k
    "162620 1030",                       // l
    "0004142320 23344340",               // m
    "0004 0314344340",                   // n
    "103041433414030110",                // o
    "0b04 0314344341301001",             // p
    "4b44 4334140301103041",             // q
    "0004 03143443",                     // r
    "43341403123241301001",              // s
    "1611203041 0434",                   // t
    "0401103041 4440",                   // u
    "042044",                            // v
    "0410233044",                        // w
    "0044 0440",                         // x
    "0420 441b",                         // y
    "04440040",                          // z
    "36252413222130",                    // {
    "262a",                              // |
    "16252433222110",                    // }
    "03143243",                          // ~
};
constexpr std::string_view kFrame = "0040460600";

std::string_view GlyphOf(char c, bool bAscii) {
  if (!bAscii) return kFrame;
  const int n = c - kFirst;
  return n >= 0 && n < static_cast<int>(kGlyphs.size()) ? kGlyphs[static_cast<std::size_t>(n)] : std::string_view();
}

int Row(char c) { return c >= 'a' ? 'a' - c - 1 : c - '0'; }

void AppendGlyph(Path& path, std::string_view sGlyph, Vec origin, Vec unit) {
  bool bDown = false;
  for (std::size_t i = 0; i + 1 < sGlyph.size(); i += 2) {
    if (sGlyph[i] == ' ') {
      bDown = false;
      ++i;
    }
    const Vec to = origin + Vec((sGlyph[i] - '0') * unit.x, Row(sGlyph[i + 1]) * unit.y);
    if (bDown) {
      path.Line(to);
    } else {
      path.Move(to);
    }
    bDown = true;
  }
}

}  // namespace

void AppendText(Path& path, std::string_view sUtf8, double dGlyphWidth, double dGlyphHeight, double dSpace) {
  const Vec unit(dGlyphWidth / kColumns, dGlyphHeight / kRows);
  Vec origin;
  for (const char c : sUtf8) {
    const auto byte = static_cast<std::uint8_t>(c);
    if ((byte & 0xC0) == 0x80) continue;  // the rest of a character that has been drawn
    AppendGlyph(path, GlyphOf(c, byte < 0x80), origin, unit);
    origin.x += dGlyphWidth + dSpace;
  }
}

}  // namespace laminate::cli
