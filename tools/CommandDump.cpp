#include <memory>

#include "Command.h"
#include "JsonBoard.h"
#include "LoadBoard.h"
#include "OutputFile.h"

namespace laminate::cli {

namespace {

struct Options {
  BoardFiles files;
  std::string output;
  bool partial = false;
};

int Run(Console& console, const Settings& settings, const Options& options) {
  RefuseOutputOverInputs(console, options.output, options.files.List());
  Host host(console, settings, options.files.List(), {options.output});
  bool bGood = false;
  const std::unique_ptr<CPC_BD_Cls_Get> pFacade = LoadBoard(console, host, options.files, bGood);
  if (!bGood && !options.partial) return kFailed;
  OutputFile out(console, options.output);
  JsonWriter json(out);
  WriteDesign(json, *pFacade->pGetBDesigner());
  json.Finish();
  out.Commit();
  return bGood ? kDone : kFailed;
}

}  // namespace

Command DeclareDump(CLI::App& parent) {
  auto pOptions = std::make_shared<Options>();
  CLI::App* pApp = parent.add_subcommand("dump",
                                         "Prints the whole database as JSON. With a footprint library, that is "
                                         "loaded first, and then the board.");
  AddBoardOptions(*pApp, pOptions->files);
  pApp->add_flag("--partial", pOptions->partial,
                 "Print what a failed load left in the database, too; the status stays 1");
  AddOutputOption(*pApp, pOptions->output);
  pApp->footer(Example("laminate dump board.pcf --ftf footprints.ftf -o board.json"));
  return {pApp, [pOptions](Console& console, const Settings& settings) { return Run(console, settings, *pOptions); }};
}

}  // namespace laminate::cli
