#include <algorithm>
#include <string>
#include <unordered_map>
#include <utility>

#include "base/Number.h"
#include "render/Painter.h"

namespace laminate::cli {

namespace {

constexpr double kFullTurn = 2 * kPi - 1e-9;

// A viewer fits the letters of a font to the cells of the text; this is the height of their capitals in ems.
constexpr double kCapitalHeight = 0.72;

class SvgPainter : public Painter {
 public:
  SvgPainter(const Sheet& sheet, Sink sink) : m_sheet(sheet), m_sink(std::move(sink)) {
    m_text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\"";
    Attribute("width", sheet.width, "mm");
    Attribute("height", sheet.height, "mm");
    m_text += " viewBox=\"0 0 ";
    Number(sheet.width);
    m_text += ' ';
    Number(sheet.height);
    m_text +=
        "\" fill-rule=\"evenodd\" stroke-linecap=\"round\" stroke-linejoin=\"round\" font-family=\"monospace\">\n";
    m_text += "<rect width=\"100%\" height=\"100%\"";
    Attribute("fill", sheet.ground);
    m_text += "/>\n";
  }

  void BeginGroup(const Group& group) override {
    m_text += "<g";
    if (!group.layer.empty()) Attribute("data-layer", group.layer);
    Attribute("color", group.colour);
    m_text += " fill=\"currentColor\"";
    if (group.opacity < 1) Attribute("opacity", group.opacity);
    m_text += ">\n";
    m_hatches.clear();
  }
  void EndGroup() override {
    m_text += "</g>\n";
    HandOverWhenFull();
  }

  void Fill(const Path& path, const Owner& owner, double dOpacity) override {
    Shape(path);
    if (dOpacity < 1) Attribute("fill-opacity", dOpacity);
    End(owner);
  }
  void Hatch(const Path& path, const Owner& owner, double dPitch) override {
    const std::string sId = HatchId(dPitch);
    Shape(path);
    Attribute("fill", "url(#" + sId + ")");
    End(owner);
  }
  void Stroke(const Path& path, const Owner& owner, const Pen& pen) override {
    Shape(path);
    m_text += " fill=\"none\" stroke=\"currentColor\"";
    Attribute("stroke-width", pen.width);
    if (pen.opacity < 1) Attribute("stroke-opacity", pen.opacity);
    if (pen.square) m_text += " stroke-linecap=\"square\" stroke-linejoin=\"miter\"";
    if (pen.dash > 0) {
      m_text += " stroke-dasharray=\"";
      Number(pen.dash);
      m_text += ' ';
      Number(pen.blank);
      m_text += '"';
    }
    End(owner);
  }
  void Cut(const Path& path, const Owner& owner, double dRim) override {
    Shape(path);
    Attribute("fill", m_sheet.ground);
    m_text += " stroke=\"currentColor\"";
    Attribute("stroke-width", dRim);
    End(owner);
  }
  void Text(const TextLine& line, const Owner& owner) override {
    if (line.text.empty()) return;
    m_text += "<text transform=\"matrix(";
    const Vec x = line.place.XAxis();
    const Vec y = line.place.YAxis();
    for (const double d : {x.x, x.y, -y.x, -y.y, line.place.Shift().x}) {
      Number(d);
      m_text += ' ';
    }
    Number(line.place.Shift().y);
    m_text += ")\"";
    Attribute("font-size", line.glyphHeight / kCapitalHeight);
    if (line.Length() > 0) {
      Attribute("textLength", line.Length());
      m_text += " lengthAdjust=\"spacingAndGlyphs\"";
    }
    Owners(owner);
    m_text += " xml:space=\"preserve\">";
    Escaped(line.text);
    m_text += "</text>\n";
    HandOverWhenFull();
  }
  void Finish() override {
    m_text += "</svg>\n";
    m_sink(std::exchange(m_text, {}));
  }

 private:
  static constexpr std::size_t kPiece = 64 * 1024;

  void HandOverWhenFull() {
    if (m_text.size() < kPiece) return;
    m_sink(m_text);
    m_text.clear();
  }

  // A ten-thousandth of a mm is well below what any picture shows.
  void Number(double d) {
    char buffer[kMaxNumberLength];
    char* pEnd = FormatFixed(buffer, d, 4);
    while (pEnd[-1] == '0') --pEnd;
    if (pEnd[-1] == '.') --pEnd;
    const std::string_view s(buffer, static_cast<std::size_t>(pEnd - buffer));
    m_text += s == "-0" ? "0" : s;
  }
  void Begin(std::string_view sName) {
    m_text += ' ';
    m_text += sName;
    m_text += "=\"";
  }
  void Attribute(std::string_view sName, double d, std::string_view sUnit = {}) {
    Begin(sName);
    Number(d);
    m_text += sUnit;
    m_text += '"';
  }
  void Attribute(std::string_view sName, std::string_view sValue) {
    Begin(sName);
    Escaped(sValue);
    m_text += '"';
  }
  void Attribute(std::string_view sName, Colour colour) {
    Begin(sName);
    m_text += '#';
    for (const unsigned n : {colour.red, colour.green, colour.blue}) {
      constexpr const char* kDigits = "0123456789abcdef";
      m_text += kDigits[n / 16];
      m_text += kDigits[n % 16];
    }
    m_text += '"';
  }
  void Escaped(std::string_view s) {
    for (const char c : s) {
      switch (c) {
        case '&':
          m_text += "&amp;";
          break;
        case '<':
          m_text += "&lt;";
          break;
        case '>':
          m_text += "&gt;";
          break;
        case '"':
          m_text += "&quot;";
          break;
        default:
          if (static_cast<unsigned char>(c) < 0x20) {
            m_text += "\xEF\xBF\xBD";  // XML has no form for control characters
          } else {
            m_text += c;
          }
      }
    }
  }

  void Owners(const Owner& owner) {
    if (!owner.net.empty()) Attribute("data-net", owner.net);
    if (!owner.reference.empty()) Attribute("data-ref", owner.reference);
  }
  void End(const Owner& owner) {
    Owners(owner);
    m_text += "/>\n";
    HandOverWhenFull();
  }

  void Shape(const Path& path) {
    const auto segments = path.Segments();
    if (segments.size() == 3 && segments[1].step == Path::Step::arc && std::abs(segments[1].sweep) >= kFullTurn &&
        segments[2].step == Path::Step::close) {
      m_text += "<circle";
      Attribute("cx", segments[1].center.x);
      Attribute("cy", segments[1].center.y);
      Attribute("r", segments[1].radius);
      return;
    }
    m_text += "<path d=\"";
    for (const Path::Segment& segment : segments) {
      switch (segment.step) {
        case Path::Step::move:
          Point('M', segment.to);
          break;
        case Path::Step::line:
          Point('L', segment.to);
          break;
        case Path::Step::close:
          m_text += 'Z';
          break;
        case Path::Step::arc:
          // An arc is given by its end, which says nothing when that is where it began.
          if (std::abs(segment.sweep) > kPi) {
            const double dHalf = segment.sweep / 2;
            ArcTo(segment.radius, dHalf, segment.center + Polar(segment.radius, segment.from + dHalf));
            ArcTo(segment.radius, dHalf, segment.to);
          } else {
            ArcTo(segment.radius, segment.sweep, segment.to);
          }
          break;
      }
    }
    m_text += '"';
  }
  void Point(char cStep, Vec to) {
    m_text += cStep;
    Number(to.x);
    m_text += ' ';
    Number(to.y);
  }
  void ArcTo(double dRadius, double dSweep, Vec to) {
    m_text += 'A';
    Number(dRadius);
    m_text += ' ';
    Number(dRadius);
    m_text += dSweep > 0 ? " 0 0 1 " : " 0 0 0 ";
    Number(to.x);
    m_text += ' ';
    Number(to.y);
  }

  // The pattern of a pitch stands in the group that uses it, and so has its colour.
  std::string HatchId(double dPitch) {
    const auto [it, bNew] = m_hatches.try_emplace(dPitch);
    std::string& sId = it->second;
    if (!bNew) return sId;
    sId = "hatch" + std::to_string(++m_nHatches);
    m_text += "<pattern id=\"" + sId + "\" patternUnits=\"userSpaceOnUse\" patternTransform=\"rotate(45)\"";
    Attribute("width", dPitch);
    Attribute("height", dPitch);
    m_text += "><rect";
    Attribute("width", dPitch / 4);
    Attribute("height", dPitch);
    m_text += "/></pattern>\n";
    return sId;
  }

  Sheet m_sheet;
  Sink m_sink;
  std::string m_text;
  std::unordered_map<double, std::string> m_hatches;
  int m_nHatches = 0;
};

}  // namespace

std::unique_ptr<Painter> MakeSvgPainter(const Sheet& sheet, Sink sink) {
  return std::make_unique<SvgPainter>(sheet, std::move(sink));
}

}  // namespace laminate::cli
