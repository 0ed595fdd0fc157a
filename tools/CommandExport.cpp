#include <cstring>
#include <memory>

#include "Command.h"
#include "DesignData.h"
#include "FileSet.h"
#include "LoadBoard.h"
#include "base/CException.h"
#include "facade/FileCheck.h"

namespace laminate::cli {

namespace {

struct Options {
  BoardFiles files;
  DesignDataFiles data;
  std::string stem;
  std::string lossReport;
  bool quiet = false;
};

void Write(Console& console, FileSet& set, CBDesigner& root, const Options& options, CPC_BD_OutClsGet& data) {
  try {
    root.nPrint2File(set.Begin(), &root, options.data.package.empty() ? nullptr : data.m_pPackageArray,
                     data.m_pPrfPartArray, data.m_pPrfPinAssignArray, data.m_pPrfFunctionArray);
  } catch (const CFileException& e) {
    console.Fail({set.FinalName(e.m_strFileName)}, std::string("cannot write: ") + std::strerror(e.m_lOsError));
  }
}

// Loads every written file again. Gives the number of those that do not load, which have been told.
int LoadAgain(Console& console, const std::vector<std::string>& files) {
  FileCheck check;
  int nBad = 0;
  for (const std::string& sFile : files) {
    const LoadStatus status = check.Check(CString(std::string_view(sFile)));
    console.Settle({sFile});
    if (ReportFault(console, status)) ++nBad;
  }
  return nBad;
}

int Run(Console& console, const Settings& settings, const Options& options) {
  std::vector<std::string> inputs = options.files.List();
  for (const std::string& sFile : options.data.List()) inputs.push_back(sFile);
  FileSet set(console, options.stem, inputs);
  Host host(console, settings, inputs);
  const std::unique_ptr<CPC_BD_Cls_Get> pFacade = RequireBoard(console, host, options.files);
  CPC_BD_OutClsGet data;
  LoadDesignData(console, host, options.data, data);

  Write(console, set, *pFacade->pGetBDesigner(), options, data);
  const std::vector<std::string> written = set.Commit();
  return LoadAgain(console, written) == 0 ? kDone : kFindings;
}

}  // namespace

Command DeclareExport(CLI::App& parent) {
  auto pOptions = std::make_shared<Options>();
  CLI::App* pApp = parent.add_subcommand(
      "export",
      "Writes a design as a set of files: STEM.pcf, .ftf, .tcf, .cdf and, with a package file, .pkf. Says what "
      "of the design they do not hold, and loads them again: status 3 when one of them does not load.");
  AddBoardOptions(*pApp, pOptions->files);
  pApp->add_option("--package", pOptions->data.package, "Package file, whose records go to STEM.pkf")
      ->type_name("FILE");
  pApp->add_option("--parts", pOptions->data.parts, "Parts file, whose records go to STEM.cdf")->type_name("FILE");
  pApp->add_option("--loss-report", pOptions->lossReport, "File that takes the full list of losses as JSON")
      ->type_name("FILE");
  pApp->add_flag("--quiet", pOptions->quiet, "Do not tell the losses");
  pApp->add_option("-o,--output", pOptions->stem, "Stem of the files to write")->required()->type_name("STEM");
  pApp->footer(Example("laminate export board.pcf --ftf footprints.ftf -o out/board"));
  return {pApp, [pOptions](Console& console, const Settings& settings) { return Run(console, settings, *pOptions); }};
}

}  // namespace laminate::cli
