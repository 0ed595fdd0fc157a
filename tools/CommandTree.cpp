#include <memory>

#include "Command.h"
#include "JsonWriter.h"
#include "LoadBoard.h"
#include "OutputFile.h"
#include "reader/CECadCls.h"

namespace laminate::cli {

namespace {

struct Options {
  std::string file;
  std::string output;
  bool json = false;
};

// A token as it could stand in a file; bytes that would break the line are shown as blanks.
std::string Shown(const CString& sToken) {
  const std::string s = OneLine(sToken.View());
  const bool bQuote = s.empty() || s.find_first_of(" ()") != std::string::npos;
  return bQuote ? '"' + s + '"' : s;
}

// Forms nest at most 20 deep, so the recursion is short.
void PrintPlain(OutputFile& out, const CECadClsLvlArray& nodes, std::size_t nIndent) {
  for (const CECadClsLvl* pNode : nodes) {
    std::string s(nIndent, ' ');
    s += Shown(pNode->m_sName);
    for (const CString& sValue : pNode->m_arrValues) s += " " + Shown(sValue);
    s += '\n';
    out.Write(s);
    PrintPlain(out, *pNode->m_pChildren, nIndent + 2);
  }
}

void PrintJson(JsonWriter& json, const CECadClsLvlArray& nodes) {
  JsonArray array(json);
  for (const CECadClsLvl* pNode : nodes) {
    JsonObject object(json);
    json.Key("name");
    json.Text(pNode->m_sName.View());
    json.Key("level");
    json.Number(pNode->m_nLevel);
    json.Key("values");
    {
      JsonArray values(json);
      for (const CString& sValue : pNode->m_arrValues) json.Text(sValue.View());
    }
    json.Key("children");
    PrintJson(json, *pNode->m_pChildren);
  }
}

int Run(Console& console, const Settings& settings, const Options& options) {
  RefuseOutputOverInputs(console, options.output, {options.file});
  Host host(console, settings, {options.file}, {options.output});
  CECadCls reader;
  reader.m_sFileName = CString(std::string_view(options.file));
  const bool bBalanced = reader.nParseFile(0) == 0;
  host.Settle();
  const bool bFault = ReportFault(console, reader.m_status);
  if (bFault && bBalanced) return kFailed;

  OutputFile out(console, options.output);
  if (options.json) {
    JsonWriter json(out);
    PrintJson(json, *reader.m_pRootArray);
    json.Finish();
  } else {
    PrintPlain(out, *reader.m_pRootArray, 0);
  }
  out.Commit();
  return bBalanced ? kDone : kFailed;
}

}  // namespace

Command DeclareTree(CLI::App& parent) {
  auto pOptions = std::make_shared<Options>();
  CLI::App* pApp = parent.add_subcommand(
      "tree",
      "Prints the forms of any bracketed text file as a tree. Of a file whose brackets do not balance the forms "
      "that were completed are printed, and the status is 1.");
  pApp->add_option("FILE", pOptions->file, "The file to read")->required();
  AddJsonOption(*pApp, pOptions->json);
  AddOutputOption(*pApp, pOptions->output);
  pApp->footer(Example("laminate tree footprints.ftf --json"));
  return {pApp, [pOptions](Console& console, const Settings& settings) { return Run(console, settings, *pOptions); }};
}

}  // namespace laminate::cli
