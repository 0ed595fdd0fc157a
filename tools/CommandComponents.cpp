#include <array>
#include <memory>

#include "Command.h"
#include "JsonWriter.h"
#include "LoadBoard.h"
#include "OutputFile.h"
#include "base/Number.h"
#include "board/CBDboardContainer.h"
#include "board/CBDcomponent.h"

namespace laminate::cli {

namespace {

struct Options {
  BoardFiles files;
  std::string output;
  bool csv = false;
  bool json = false;
};

std::string Shortest(double d) {
  char number[kMaxNumberLength];
  return {number, FormatShortest(number, d)};
}

// A field of a CSV record: quoted where it holds what would end it.
std::string CsvField(std::string_view s) {
  if (s.find_first_of(",\"\r\n") == std::string_view::npos) return std::string(s);
  std::string sQuoted = "\"";
  for (char c : s) {
    if (c == '"') sQuoted += '"';
    sQuoted += c;
  }
  return sQuoted + '"';
}

void PrintCsv(OutputFile& out, const CBDcomponentArray& components) {
  out.Write("reference,part,package,footprint,side,x_mm,y_mm,angle_degrees_counterclockwise\r\n");
  for (const CBDcomponent* p : components) {
    for (const CString* ps : {&p->m_sReference, &p->m_sPart, &p->m_sPackage, &p->m_sFootprint, &p->m_sPlacementSide}) {
      out.Write(CsvField(ps->View()));
      out.Write(",");
    }
    out.Write(Shortest(p->m_ptLocation.x) + "," + Shortest(p->m_ptLocation.y) + "," + Shortest(p->m_dAngle) + "\r\n");
  }
}

void PrintJson(JsonWriter& json, const CBDcomponentArray& components) {
  JsonArray array(json);
  for (const CBDcomponent* p : components) {
    JsonObject object(json);
    const auto text = [&json](std::string_view sKey, const CString& s) {
      json.Key(sKey);
      json.Text(s.View());
    };
    const auto number = [&json](std::string_view sKey, double d) {
      json.Key(sKey);
      json.Number(d);
    };
    text("reference", p->m_sReference);
    text("part", p->m_sPart);
    text("package", p->m_sPackage);
    text("footprint", p->m_sFootprint);
    text("side", p->m_sPlacementSide);
    number("x", p->m_ptLocation.x);
    number("y", p->m_ptLocation.y);
    number("angle", p->m_dAngle);
  }
}

// A table whose columns are as wide as their longest entry.
void PrintTable(OutputFile& out, const CBDcomponentArray& components) {
  constexpr std::size_t kColumns = 8;
  constexpr std::size_t kFirstNumber = 5;
  using Line = std::array<std::string, kColumns>;
  std::vector<Line> lines{{"reference", "part", "package", "footprint", "side", "x mm", "y mm", "angle deg ccw"}};
  for (const CBDcomponent* p : components) {
    lines.push_back({OneLine(p->m_sReference.View()), OneLine(p->m_sPart.View()), OneLine(p->m_sPackage.View()),
                     OneLine(p->m_sFootprint.View()), OneLine(p->m_sPlacementSide.View()), Shortest(p->m_ptLocation.x),
                     Shortest(p->m_ptLocation.y), Shortest(p->m_dAngle)});
  }
  std::array<std::size_t, kColumns> widths{};
  for (const Line& line : lines) {
    for (std::size_t i = 0; i < kColumns; ++i) widths[i] = std::max(widths[i], line[i].size());
  }
  for (const Line& line : lines) {
    std::string s;
    for (std::size_t i = 0; i < kColumns; ++i) {
      if (i > 0) s += "  ";
      const std::string sFill(widths[i] - line[i].size(), ' ');
      s += i < kFirstNumber ? line[i] + sFill : sFill + line[i];
    }
    out.Write(s + "\n");
  }
}

int Run(Console& console, const Settings& settings, const Options& options) {
  RefuseOutputOverInputs(console, options.output, options.files.List());
  Host host(console, settings, options.files.List(), {options.output});
  const std::unique_ptr<CPC_BD_Cls_Get> pFacade = RequireBoard(console, host, options.files);
  const CBDcomponentArray& components = *pFacade->pGetBDesigner()->m_pBoardContainer->m_pComponentArray;
  OutputFile out(console, options.output);
  if (options.json) {
    JsonWriter json(out);
    PrintJson(json, components);
    json.Finish();
  } else if (options.csv) {
    PrintCsv(out, components);
  } else {
    PrintTable(out, components);
  }
  out.Commit();
  return kDone;
}

}  // namespace

Command DeclareComponents(CLI::App& parent) {
  auto pOptions = std::make_shared<Options>();
  CLI::App* pApp = parent.add_subcommand(
      "components",
      "Prints reference, part, package, footprint, side, location in mm (y points up) and angle in degrees "
      "(counter-clockwise) of every component.");
  AddBoardFile(*pApp, pOptions->files);
  CLI::Option* pCsv = pApp->add_flag("--csv", pOptions->csv, "Print comma-separated values");
  AddJsonOption(*pApp, pOptions->json)->excludes(pCsv);
  AddOutputOption(*pApp, pOptions->output);
  pApp->footer(Example("laminate components board.pcf --csv -o components.csv"));
  return {pApp, [pOptions](Console& console, const Settings& settings) { return Run(console, settings, *pOptions); }};
}

}  // namespace laminate::cli
