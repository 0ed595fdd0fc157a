#include <memory>
#include <optional>

#include "Command.h"
#include "DesignData.h"
#include "JsonDesignData.h"

namespace laminate::cli {

namespace {

struct Options {
  DesignDataFiles files;
  std::string archive;
  std::string output;
  bool json = false;
};

void PrintPlain(OutputFile& out, const CPC_BD_OutClsGet& data) {
  const auto line = [&out](std::string sLabel, const std::string& sValue) {
    sLabel.resize(std::max<std::size_t>(sLabel.size() + 1, 20), ' ');
    out.Write(sLabel + sValue + "\n");
  };
  const auto count = [&line](const char* szLabel, const auto& array) {
    line(szLabel, std::to_string(array.GetSize()));
  };
  line("unit", data.m_sUnit.IsEmpty() ? "none" : OneLine(data.m_sUnit.View()));
  count("packages", *data.m_pPackageArray);
  count("parts", *data.m_pPrfPartArray);
  count("pin assigns", *data.m_pPrfPinAssignArray);
  count("functions", *data.m_pPrfFunctionArray);
  line("base material",
       data.m_pStackup->m_sBaseMaterial.IsEmpty() ? "none" : OneLine(data.m_pStackup->m_sBaseMaterial.View()));
  count("stack-up layers", *data.m_pStackup->m_pLayerArray);
  count("default grids", data.m_pBoardSpec->m_aDefaultGrid);
  count("grid definitions", data.m_pBoardSpec->m_aGridDef);
  count("drilling rules", data.m_pBoardSpec->m_aDrillingRule);
  count("pattern widths", data.m_pBoardSpec->m_aPatternWidth);
  count("rules", *data.m_pRufRuleArray);
  count("board settings", *data.m_pRufRuleBoardArray);
  count("design rule stacks", *data.m_pDesignRuleStackArray);
  count("trace rule stacks", *data.m_pTraceRuleStackArray);
  count("nets", *data.m_pRufNetArray);
  count("electrical nets", *data.m_pElectricalNetArray);
  count("component settings", *data.m_pRufCompArray);
  count("library components", *data.m_pLcdbCmpCompArray);
}

bool IsSameOutput(const std::string& sA, const std::string& sB) {
  const auto isStandard = [](const std::string& s) { return s.empty() || s == "-"; };
  if (isStandard(sA) || isStandard(sB)) return isStandard(sA) == isStandard(sB);
  return SameFile(sA, sB);
}

int Run(Console& console, const Settings& settings, const Options& options) {
  const std::vector<std::string> inputs = options.files.List();
  if (inputs.empty()) console.Fail({"laminate design-data"}, "no file is named", kUsage);
  RefuseOutputOverInputs(console, options.output, inputs);
  RefuseOutputOverInputs(console, options.archive, inputs);
  const bool bShow = options.archive.empty() || options.json || !options.output.empty();
  if (bShow && !options.archive.empty() && IsSameOutput(options.output, options.archive)) {
    console.Fail({options.archive}, "the archive and what is shown cannot both go there", kUsage);
  }
  Host host(console, settings, inputs, {options.output, options.archive});
  CPC_BD_OutClsGet data;
  LoadDesignData(console, host, options.files, data);

  std::optional<OutputFile> archive;
  if (!options.archive.empty()) {
    archive.emplace(console, options.archive);
    StoreArchive(*archive, data);
  }
  std::optional<OutputFile> out;
  if (bShow) {
    out.emplace(console, options.output);
    if (options.json) {
      JsonWriter json(*out);
      WriteDesignData(json, data);
      json.Finish();
    } else {
      PrintPlain(*out, data);
    }
  }
  FilePlacer placer(console);
  if (archive) archive->Complete(placer);
  if (out) out->Complete(placer);
  placer.Commit();
  return kDone;
}

}  // namespace

Command DeclareDesignData(CLI::App& parent) {
  auto pOptions = std::make_shared<Options>();
  CLI::App* pApp = parent.add_subcommand(
      "design-data",
      "Loads the design data that stands beside a board: an archive first, then packages, parts, rules and "
      "components; shows what was loaded, or archives it.");
  const auto file = [pApp](const char* szName, std::string& sPath, const char* szHelp) {
    pApp->add_option(szName, sPath, szHelp)->type_name("FILE");
  };
  file("--package", pOptions->files.package, "Package file");
  file("--parts", pOptions->files.parts, "Parts file");
  file("--rules", pOptions->files.rules, "Rule file");
  file("--components", pOptions->files.components, "Component database file");
  file("--archive-in", pOptions->files.archive, "Archive to load first");
  file("--archive-out", pOptions->archive, "Archive to write; \"-\" is standard output");
  AddJsonOption(*pApp, pOptions->json);
  AddOutputOption(*pApp, pOptions->output);
  pApp->footer(Example("laminate design-data --package board.pkf --parts board.cdf --rules board.rul --json"));
  return {pApp, [pOptions](Console& console, const Settings& settings) { return Run(console, settings, *pOptions); }};
}

}  // namespace laminate::cli
