#pragma once
// Boards of any size for benchmarks: sound board files with a technology, components with placed pads and texts, nets,
// tracks, vias, surfaces and texts on 16 conductive layers. The same arguments always give the same text.
#include <cstdint>
#include <string>
#include <string_view>

namespace laminate::bench {

/// How a generated board is laid out in lines.
enum class Lines {
  shortOnes,  ///< one form or bracket a line, about 13 bytes each
  longOnes    ///< a point with its width, or a form with its few values, on one line
};

class BoardGenerator {
 public:
  static constexpr int kConductiveLayers = 16;
  static constexpr int kComponentsPerScale = 150;

  /// A board of about 1.5 MB times the scale.
  static std::string Generate(int nScale, Lines lines = Lines::shortOnes) {
    BoardGenerator generator(nScale, lines);
    return generator.Board();
  }

  static constexpr int kScatteredLayers = 30;
  /// The number of the n-th layer of a scattered board, counted from 0; 0 where it goes by its name.
  static int ScatteredNumber(int n) { return n < kConductiveLayers ? n + 1 : 0; }
  static std::string ScatteredName(int n) {
    return n < kConductiveLayers ? std::to_string(n + 1) : "Drawing-" + std::to_string(n + 1);
  }

  /// A board without components, whose tracks come in short runs, of 1 to 50, on layers in random order. About 120
  /// bytes a track.
  static std::string Scattered(int nTracks) {
    BoardGenerator generator(1 + nTracks / 13000, Lines::shortOnes);
    return generator.ScatteredBoard(nTracks);
  }

 private:
  BoardGenerator(int nScale, Lines lines) : m_nScale(nScale), m_lines(lines) {
    m_text.reserve(static_cast<std::size_t>(nScale) * 1700000);
  }

  static constexpr int kPinsPerComponent = 6;
  static constexpr int kNetsPerScale = 120;
  static constexpr int kLayerBytesPerScale = 66000;

  std::uint32_t Random(std::uint32_t nBelow) {
    m_state = m_state * 1664525u + 1013904223u;
    return static_cast<std::uint32_t>((std::uint64_t{m_state >> 4} * nBelow) >> 28);
  }
  // Database units, between 10 and 300 mm.
  std::string Coordinate() { return std::to_string(1000000 + Random(29000000)); }
  std::string Net() {
    return "NET" + std::to_string(10000 + Random(static_cast<std::uint32_t>(kNetsPerScale * m_nScale)));
  }

  // A line of its own.
  void Line(std::string_view s) {
    m_text += s;
    m_text += '\n';
  }
  void Close(int n = 1) {
    for (int i = 0; i < n; ++i) Line(")");
  }
  // A form without forms in it.
  void Form(std::string_view sName, std::string_view sValues) {
    m_text += '(';
    m_text += sName;
    m_text += ' ';
    m_text += sValues;
    m_text += ")\n";
  }
  // Forms that stand side by side where lines are long.
  void Forms(std::initializer_list<std::string_view> forms) {
    bool bFirst = true;
    for (std::string_view s : forms) {
      if (!bFirst) m_text += m_lines == Lines::longOnes ? ' ' : '\n';
      m_text += s;
      bFirst = false;
    }
    m_text += '\n';
  }
  void Point() { Form("pt", Coordinate() + " " + Coordinate()); }
  void WidePoint() {
    const std::string point = "(pt " + Coordinate() + " " + Coordinate();
    if (m_lines == Lines::longOnes) {
      Line(point + " (width 15000))");
    } else if (Random(6) != 0) {
      Line(point + ")");
    } else {
      Line(point);
      Form("width", "15000");
      Close();
    }
  }

  void Header() {
    Line("(pcf");
    Line("(header");
    Line("(version 2.0)");
    Line("(unit MM)");
    Line("(timeZone \"\")");
    Close();
  }
  void Technology() {
    Line("(technologyContainer");
    Line("(technology GENERATED");
    Form("numberOfConductorLayer", std::to_string(kConductiveLayers));
    Line("(padstackGroup default)");
    Line("(footprintLayer");
    Line("(layer TopCu (type CONDUCTIVE))");
    Line("(layer Silk (type SYMBOL))");
    Line("(layer Hole (type HOLE))");
    Close();
    Line("(nonConductiveLayer");
    Line("(layer Silk-A");
    Line("(propertyI sortKey 1)");
    Close();
    Line("(layer Silk-B");
    Line("(propertyI sortKey 2)");
    Close(2);
    Line("(conductiveLayer");
    for (int n = 1; n <= kConductiveLayers; ++n) {
      Line("(layerNumber " + std::to_string(n));
      Line("(type POSI)");
      Form("propertyI", "wiring " + std::to_string(n));
      Close();
    }
    Close();
    Line("(subLayer");
    Line("(systemLayer (type PADSTACK))");
    Line("(systemLayer (type HOLE))");
    for (int n = 1; n <= kConductiveLayers; ++n) Line("(drawLayerOf (conductive " + std::to_string(n) + "))");
    Line("(drawLayerOf (nonConductive Silk-A))");
    Line("(drawLayerOf (nonConductive Silk-B))");
    Close();
    Line("(layerMapping");
    Line("(map A");
    Line("(correspondence (footLayer TopCu) (boardLayer (conductive 1)))");
    Line("(correspondence (footLayer Silk) (boardLayer (nonConductive Silk-A)))");
    Close(2);
    Close(2);
  }

  void Text(const std::string& sString) {
    Line("(text");
    Line("(font 0)");
    Line("(geometry");
    Line("(text");
    Form("string", "\"" + sString + "\"");
    Forms({"(font 0)", "(kFont 200)", "(width 75000)", "(height 75000)", "(space 15000)", "(vSpace 45000)",
           "(strokeWidth 10000)"});
    Point();
    Forms({"(textAngle 90.0)", "(dir LtoR)", "(justify CE_C)", "(flip NONE)", "(reverse OFF)"});
    Close(3);
  }
  void Padstack(const char* szName, int nLastLayer) {
    Line(std::string("(padstack ") + szName);
    Form("net", Net());
    Point();
    Forms({"(angle 90.0)", "(fromTo 1 " + std::to_string(nLastLayer) + ")", "(drillType 1)"});
    Line("(conductive");
    for (int n = 1; n <= nLastLayer; n += 5) {
      Line("(layerNumber " + std::to_string(n));
      Line("(status CONNECT)");
      Close();
    }
    Close(2);
  }
  void Track() {
    Line("(line");
    Form("net", Net());
    Line("(vertex");
    for (std::uint32_t n = 2 + Random(4); n > 0; --n) WidePoint();
    Close(2);
  }
  void Surface() {
    Line("(surface");
    Form("net", Net());
    Line("(geometry");
    Line("(surface");
    Forms({"(outlineWidth 10000)", "(fillWidth 10000)", "(fillAngle 45.0)"});
    Line("(vertex");
    for (std::uint32_t n = 6 + Random(30); n > 0; --n) Point();
    Close(4);
  }

  void Component(int n) {
    const std::string number = std::to_string(n);
    Line("(component (reference U" + number + ")");
    Forms({"(gateCount 1)", "(pinCount " + std::to_string(kPinsPerComponent) + ")"});
    Form("part", "PART-" + std::to_string(n % 40));
    Form("package", "SOT-" + std::to_string(n % 9));
    Form("footprintSpec", "default");
    Form("footprint", "SOT-" + std::to_string(n % 9));
    Forms({"(placed YES)", "(placementSide A)"});
    Line("(location");
    Point();
    Close();
    Forms({"(angle 90.00000)", "(drawRefDes YES)"});
    Line("(layout");
    Line("(layer (nonConductive Silk-A)");
    for (int i = 0; i < 4; ++i) {
      Line("(refer");
      Line("(line");
      Line("(vertex");
      WidePoint();
      WidePoint();
      Close(3);
    }
    Text("U" + number);
    Close(2);
    Line("(gate 1");
    for (int pin = 1; pin <= kPinsPerComponent; ++pin) {
      Line("(pin \"" + std::to_string(pin) + "\"");
      Line("(lockMode UNFIXED)");
      Close();
    }
    Close();
    for (int pin = 1; pin <= kPinsPerComponent; ++pin) {
      Line("(pin " + std::to_string(pin));
      Point();
      Line("(gate 1");
      Form("name", "\"" + std::to_string(pin) + "\"");
      Close();
      Line("(layout");
      Line("(layer (systemLayer (type PADSTACK))");
      Padstack("SMD60X90", 1);
      Close(3);
    }
    Close();
  }

  void Nets() {
    Line("(nets");
    const int nNets = kNetsPerScale * m_nScale;
    const int nComponents = kComponentsPerScale * m_nScale;
    for (int i = 0; i < nNets; ++i) {
      Line("(net NET" + std::to_string(10000 + i));
      Forms({"(type NORMAL)", "(lockMode UNFIXED)", "(pen 0)", "(drawRatsNest NO)"});
      for (int pin = 0; pin < kPinsPerComponent; ++pin) {
        Line("(comp U" + std::to_string(1 + (i * 7 + pin * 31) % nComponents) + " (pin " + std::to_string(1 + pin) +
             "))");
      }
      Close();
    }
    Close();
  }

  void Layer(int n) {
    Line("(layer (conductive " + std::to_string(n) + ")");
    const std::size_t end =
        m_text.size() + static_cast<std::size_t>(kLayerBytesPerScale) * static_cast<std::size_t>(m_nScale);
    for (int i = 0; m_text.size() < end; ++i) {
      Track();
      if (i % 10 == 3) {
        Line("(pad ROUND60");
        Point();
        Close();
      }
      if (i % 40 == 7) Surface();
      if (i % 60 == 9) Text("Layer " + std::to_string(n));
    }
    Close();
  }
  void Vias() {
    Line("(layer (systemLayer (type PADSTACK))");
    for (int i = 0; i < 150 * m_nScale; ++i) Padstack("VIA60", kConductiveLayers);
    Close();
  }

  std::string Board() {
    Header();
    Technology();
    Line("(boardContainer");
    Line("(components");
    for (int n = 1; n <= kComponentsPerScale * m_nScale; ++n) Component(n);
    Close();
    Nets();
    Line("(boardLayout");
    Line("(layout");
    for (int n = 1; n <= kConductiveLayers; ++n) Layer(n);
    Vias();
    Close(2);
    Close(2);
    return std::move(m_text);
  }

  std::string ScatteredBoard(int nTracks) {
    Header();
    Technology();
    Line("(boardContainer");
    Line("(components");
    Close();
    Nets();
    Line("(boardLayout");
    Line("(layout");
    while (nTracks > 0) {
      const int nLayer = static_cast<int>(Random(kScatteredLayers));
      Line((ScatteredNumber(nLayer) != 0 ? "(layer (conductive " : "(layer (nonConductive ") + ScatteredName(nLayer) +
           ")");
      for (int n = 1 + static_cast<int>(Random(50)); n > 0 && nTracks > 0; --n, --nTracks) Track();
      Close();
    }
    Close(2);
    Close(2);
    return std::move(m_text);
  }

  const int m_nScale;
  const Lines m_lines;
  std::uint32_t m_state = 1;
  std::string m_text;
};

}  // namespace laminate::bench
