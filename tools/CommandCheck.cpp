#include <algorithm>
#include <map>
#include <memory>

#include "Command.h"
#include "JsonWriter.h"
#include "LoadBoard.h"
#include "OutputFile.h"
#include "facade/FileCheck.h"

namespace laminate::cli {

namespace {

struct Options {
  std::vector<std::string> files;
  std::string output;
  bool strict = false;
  bool json = false;
};

struct CheckedFile {
  std::string path;
  LoadStatus status;
  std::vector<Diagnostic> findings;

  bool IsGood() const {
    return status.IsOk() && std::none_of(findings.begin(), findings.end(), [](const Diagnostic& finding) {
             return finding.severity == Diagnostic::Severity::error;
           });
  }
  bool IsRead() const { return status.m_result != LoadStatus::Result::cannotOpen; }
};

const char* Name(Diagnostic::Severity severity) {
  switch (severity) {
    case Diagnostic::Severity::error:
      return "error";
    case Diagnostic::Severity::warning:
      return "warning";
    case Diagnostic::Severity::note:
      return "note";
  }
  return "";
}

Place PlaceOf(const CheckedFile& file, const Diagnostic& finding) {
  return {finding.file.IsEmpty() ? file.path : std::string(finding.file.View()), finding.line, finding.column};
}

std::vector<CheckedFile> CheckAll(Host& host, const std::vector<std::string>& paths) {
  FileCheck check;
  std::vector<CheckedFile> files;
  std::map<std::string, std::size_t> byPath;
  files.reserve(paths.size());
  for (const std::string& sPath : paths) {
    // One file named twice is one file.
    if (!byPath.try_emplace(sPath, files.size()).second) continue;
    files.push_back({sPath, check.Check(CString(std::string_view(sPath))), {}});
  }
  check.ReportUndefinedNames();
  host.Settle();
  for (const Diagnostic& remark : check.Remarks().list) {
    const auto it = byPath.find(std::string(remark.file.View()));
    CheckedFile& file = files[it == byPath.end() ? 0 : it->second];
    file.findings.push_back(remark);
  }
  for (CheckedFile& file : files) {
    const LoadStatus& status = file.status;
    // The reader tells the fault among its remarks, too.
    const bool bTold = std::any_of(file.findings.begin(), file.findings.end(), [&status](const Diagnostic& finding) {
      return finding.line == status.m_nLine && finding.column == status.m_nColumn && finding.reason == status.m_sText;
    });
    if (!status.IsOk() && !bTold) {
      file.findings.push_back(
          {Diagnostic::Severity::error, status.m_sFile, status.m_nLine, status.m_nColumn, status.m_sText});
    }
    std::stable_sort(file.findings.begin(), file.findings.end(), [](const Diagnostic& a, const Diagnostic& b) {
      return a.line != b.line ? a.line < b.line : a.column < b.column;
    });
  }
  return files;
}

void PrintPlain(Console& console, OutputFile& out, const std::vector<CheckedFile>& files) {
  for (const CheckedFile& file : files) {
    for (const Diagnostic& finding : file.findings) {
      const Place place = PlaceOf(file, finding);
      if (finding.severity == Diagnostic::Severity::error) {
        console.Error(place, finding.reason.View());
      } else {
        out.Write(ToText(place) + ": " + Name(finding.severity) + ": " + OneLine(finding.reason.View()) + "\n");
      }
    }
    if (file.IsRead()) out.Write(OneLine(file.path) + (file.IsGood() ? ": well formed\n" : ": not well formed\n"));
  }
}

void PrintJson(JsonWriter& json, const std::vector<CheckedFile>& files) {
  JsonArray array(json);
  for (const CheckedFile& file : files) {
    JsonObject object(json);
    json.Key("file");
    json.Name(file.path);
    json.Key("wellFormed");
    json.Boolean(file.IsGood());
    json.Key("findings");
    JsonArray findings(json);
    for (const Diagnostic& finding : file.findings) {
      JsonObject item(json);
      json.Key("severity");
      json.Text(Name(finding.severity));
      json.Key("line");
      json.Number(finding.line);
      json.Key("column");
      json.Number(finding.column);
      json.Key("reason");
      json.Text(finding.reason.View());
    }
  }
}

int Run(Console& console, const Settings& settings, const Options& options) {
  RefuseOutputOverInputs(console, options.output, options.files);
  Host host(console, settings, options.files, {options.output});
  const std::vector<CheckedFile> files = CheckAll(host, options.files);
  OutputFile out(console, options.output);
  if (options.json) {
    JsonWriter json(out);
    PrintJson(json, files);
    json.Finish();
  } else {
    PrintPlain(console, out, files);
  }
  out.Commit();
  if (!std::all_of(files.begin(), files.end(), [](const CheckedFile& file) { return file.IsGood(); })) return kFailed;
  const bool bFindings =
      std::any_of(files.begin(), files.end(), [](const CheckedFile& file) { return !file.findings.empty(); });
  return bFindings && options.strict ? kFindings : kDone;
}

}  // namespace

Command DeclareCheck(CLI::App& parent) {
  auto pOptions = std::make_shared<Options>();
  CLI::App* pApp = parent.add_subcommand(
      "check",
      "Says of each file whether it is well formed and what in it is suspicious. The kind of a file goes by the "
      "ending of its name, else by its first form. Status 1 when a file is not well formed.");
  pApp->add_option("FILE", pOptions->files, "The files to check, taken as one design")->required();
  pApp->add_flag("--strict", pOptions->strict, "Status 3 when anything is suspicious");
  AddJsonOption(*pApp, pOptions->json);
  AddOutputOption(*pApp, pOptions->output);
  pApp->footer(Example("laminate check --strict board.pcf footprints.ftf"));
  return {pApp, [pOptions](Console& console, const Settings& settings) { return Run(console, settings, *pOptions); }};
}

}  // namespace laminate::cli
