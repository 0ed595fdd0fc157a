#include <memory>

#include "Command.h"
#include "LoadBoard.h"
#include "SaveBoard.h"

namespace laminate::cli {

namespace {

struct Options {
  BoardFiles files;
  std::string stem;
  std::vector<std::string> allowedLosses;
  bool fresh = false;
};

int Run(Console& console, const Settings& settings, const Options& options) {
  SavedBoard saved(console, options.stem, options.files);
  saved.allowedLosses = options.allowedLosses;
  saved.RefuseSameFile(settings.log);
  Host host(console, settings, options.files.List(), {});
  const std::unique_ptr<CPC_BD_Cls_Get> pFacade = RequireBoard(console, host, options.files);
  saved.Prepare(*pFacade->pGetBDesigner(), options.fresh);
  saved.Commit();
  return kDone;
}

}  // namespace

void AddSaveOptions(CLI::App& app, std::string& sStem, std::vector<std::string>& allowedLosses) {
  app.add_option("-o,--output", sStem, "Stem of the files to write; it may be that of the board itself")
      ->required()
      ->type_name("STEM");
  app.add_option("--allow-loss", allowedLosses,
                 "Save also where this field cannot be said in the files, such as CBDnet.m_sName (repeatable)")
      ->type_name("CLASS.FIELD")
      ->take_all()
      ->expected(1);
}

Command DeclareSave(CLI::App& parent) {
  auto pOptions = std::make_shared<Options>();
  CLI::App* pApp = parent.add_subcommand(
      "save",
      "Writes what was loaded as STEM.pcf and, with a library, STEM.ftf. The files are those that were loaded, byte "
      "for "
      "byte, with all that the library does not read; with --fresh everything in them is written anew.");
  AddBoardOptions(*pApp, pOptions->files);
  pApp->add_flag("--fresh", pOptions->fresh, "Write everything anew, as if there were no files to go by");
  AddSaveOptions(*pApp, pOptions->stem, pOptions->allowedLosses);
  pApp->footer(Example("laminate save board.pcf --ftf footprints.ftf -o out/board"));
  return {pApp, [pOptions](Console& console, const Settings& settings) { return Run(console, settings, *pOptions); }};
}

}  // namespace laminate::cli
