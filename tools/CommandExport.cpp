#include <sys/stat.h>

#include <cstring>
#include <map>
#include <memory>
#include <optional>
#include <tuple>
#include <utility>
#include <vector>

#include "Command.h"
#include "DesignData.h"
#include "FileSet.h"
#include "JsonWriter.h"
#include "LoadBoard.h"
#include "base/CException.h"
#include "facade/ExportLosses.h"
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

// The losses of an export: grouped for a person, and one by one for a file.
class LossReport {
 public:
  LossReport(Console& console, const std::string& sFile) : m_console(console) {
    if (sFile.empty()) return;
    m_file.emplace(console, sFile);
    m_json.emplace(*m_file);
    m_json->BeginArray();
  }

  void Add(const ExportLoss& loss) {
    std::string sWhat(loss.className);
    if (!loss.field.empty()) sWhat += "." + std::string(loss.field);
    ++m_groups[{sWhat, loss.fate, std::string(loss.note)}];
    ++m_nLosses;
    if (!m_json) return;
    JsonObject object(*m_json);
    const auto text = [this](std::string_view sKey, std::string_view s) {
      m_json->Key(sKey);
      m_json->Text(s);
    };
    text("object", loss.object);
    text("class", loss.className);
    text("field", loss.field);
    text("fate", ToText(loss.fate));
    text("note", loss.note);
    text("value", loss.value);
  }
  /// Tells the groups, in the order of their names.
  void Tell(const std::string& sBoard) const {
    if (m_nLosses == 0) return;
    m_console.Note({sBoard},
                   "values of the design that the written files do not hold as they are: " + std::to_string(m_nLosses));
    for (const auto& [group, n] : m_groups) {
      const auto& [sWhat, fate, sNote] = group;
      std::string sLine = sWhat + ", " + std::to_string(n) + (n == 1 ? " time: " : " times: ");
      sLine += ToText(fate);
      if (!sNote.empty()) sLine += " (" + sNote + ")";
      m_console.Note({sBoard}, sLine);
    }
  }
  void Complete(FilePlacer& placer) {
    if (!m_json) return;
    m_json->EndArray();
    m_json->Finish();
    m_file->Complete(placer);
  }

 private:
  Console& m_console;
  std::map<std::tuple<std::string, Fate, std::string>, std::size_t> m_groups;
  std::size_t m_nLosses = 0;
  std::optional<OutputFile> m_file;
  std::optional<JsonWriter> m_json;
};

// Loads every written file again, before it takes its place. Gives what is wrong with those that do not load.
std::vector<LoadStatus> LoadAgain(Console& console, const FileSet& set) {
  FileCheck check;
  std::vector<LoadStatus> faults;
  for (const std::string& sFile : set.Written()) {
    const std::string sName = set.FinalName(sFile);
    LoadStatus status = check.Check(CString(std::string_view(sFile)));
    console.Settle({sName});
    if (status.IsOk()) continue;
    status.m_sFile = CString(std::string_view(set.FinalName(std::string(status.m_sFile.View()))));
    // What cannot be read tells nothing of what was written.
    using Result = LoadStatus::Result;
    if (status.m_result == Result::cannotOpen || status.m_result == Result::cannotWriteWorkingFolder) {
      console.Fail({sName}, "cannot be checked: " + std::string(status.m_sText.View()));
    }
    faults.push_back(std::move(status));
  }
  return faults;
}

// What to say of the old files that make way for empty ones, because the design was loaded without such a file.
std::vector<std::pair<std::string, const char*>> Emptied(const FileSet& set, const Options& options) {
  std::vector<std::pair<std::string, const char*>> notes;
  const auto add = [&](const char* szEnding, const std::string& sLoaded, const char* szNote) {
    struct stat st {};
    const std::string sFile = set.Path(szEnding);
    if (sLoaded.empty() && stat(sFile.c_str(), &st) == 0 && S_ISREG(st.st_mode)) notes.emplace_back(sFile, szNote);
  };
  add(".cdf", options.data.parts, "replaced by one without parts: none were loaded (--parts)");
  add(".ftf", options.files.ftf, "replaced by one without footprints: none were loaded (--ftf)");
  return notes;
}

int Run(Console& console, const Settings& settings, const Options& options) {
  std::vector<std::string> inputs = options.files.List();
  for (const std::string& sFile : options.data.List()) inputs.push_back(sFile);
  FileSet set(console, options.stem, inputs);
  if (!options.lossReport.empty()) {
    RefuseOutputOverInputs(console, options.lossReport, inputs);
    set.RefuseSameFile(options.lossReport);
  }
  set.RefuseSameFile(settings.log);
  Host host(console, settings, inputs, {options.lossReport});
  const std::unique_ptr<CPC_BD_Cls_Get> pFacade = RequireBoard(console, host, options.files);
  CPC_BD_OutClsGet data;
  LoadDesignData(console, host, options.data, data);

  CBDesigner& root = *pFacade->pGetBDesigner();
  LossReport report(console, options.lossReport);
  if (!options.quiet || !options.lossReport.empty()) {
    const ExportRecords records{options.data.package.empty() ? nullptr : data.m_pPackageArray, data.m_pPrfPartArray,
                                data.m_pPrfPinAssignArray, data.m_pPrfFunctionArray};
    FindExportLosses(root, records, [&report](const ExportLoss& loss) { report.Add(loss); });
  }
  Write(console, set, root, options, data);
  const auto emptied = Emptied(set, options);
  const std::vector<LoadStatus> faults = LoadAgain(console, set);
  FilePlacer placer(console);
  set.Complete(placer);
  report.Complete(placer);
  placer.Commit();
  if (!options.quiet) {
    report.Tell(options.files.pcf);
    for (const auto& [sFile, szNote] : emptied) console.Note({sFile}, szNote);
  }
  for (const LoadStatus& fault : faults) ReportFault(console, fault);
  return faults.empty() ? kDone : kFindings;
}

}  // namespace

Command DeclareExport(CLI::App& parent) {
  auto pOptions = std::make_shared<Options>();
  CLI::App* pApp = parent.add_subcommand(
      "export",
      "Writes a design as a set of files: STEM.pcf, .ftf, .tcf, .cdf and, with a package file, .pkf. Says what "
      "of the design they do not hold, and loads them again: status 3 when one of them does not load, with the first "
      "fault of each. Without --ftf or --parts, an old STEM.ftf or STEM.cdf is replaced by one without footprints or "
      "parts, with a note.");
  AddBoardOptions(*pApp, pOptions->files);
  pApp->add_option("--package", pOptions->data.package, "Package file, whose records go to STEM.pkf")
      ->type_name("FILE");
  pApp->add_option("--parts", pOptions->data.parts, "Parts file, whose records go to STEM.cdf")->type_name("FILE");
  pApp->add_option("--loss-report", pOptions->lossReport, "File that takes the full list of losses as JSON")
      ->type_name("FILE");
  pApp->add_flag("--quiet", pOptions->quiet, "Tell neither losses nor files that lose their contents");
  pApp->add_option("-o,--output", pOptions->stem, "Stem of the files to write")->required()->type_name("STEM");
  pApp->footer(Example("laminate export board.pcf --ftf footprints.ftf -o out/board"));
  return {pApp, [pOptions](Console& console, const Settings& settings) { return Run(console, settings, *pOptions); }};
}

}  // namespace laminate::cli
