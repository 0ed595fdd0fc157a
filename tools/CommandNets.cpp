#include <memory>

#include "Command.h"
#include "JsonBoard.h"
#include "LoadBoard.h"
#include "OutputFile.h"
#include "board/CBDnet.h"

namespace laminate::cli {

namespace {

struct Options {
  BoardFiles files;
  std::string output;
  bool json = false;
};

// The array is the caller's.
std::unique_ptr<CBDnetArray> LoadNets(Console& console, Host& host, const BoardFiles& files) {
  CPC_BD_Cls_Get facade;
  Prepare(facade, host);
  std::unique_ptr<CBDnetArray> pNets;
  const bool bGood = RunLoad(
      console, host, files.pcf, [&] { pNets.reset(facade.pGetNetArrayFromPcf(CString(std::string_view(files.pcf)))); },
      [&]() -> const LoadStatus& { return facade.GetLoadStatus(); });
  if (!bGood) throw Failure{kFailed};
  return pNets;
}

void PrintPlain(OutputFile& out, const CBDnetArray& nets) {
  for (const CBDnet* pNet : nets) {
    out.Write(OneLine(pNet->m_sName.View()));
    std::string_view sBefore = "\t";
    for (const CBDrefPin* pPin : *pNet->m_pRefPinArray) {
      out.Write(sBefore);
      out.Write(OneLine(pPin->m_sComp.View()));
      out.Write(".");
      out.Write(OneLine(pPin->m_sPin.View()));
      sBefore = " ";
    }
    out.Write(sBefore == " " ? "\n" : "\t\n");
  }
}

int Run(Console& console, const Settings& settings, const Options& options) {
  RefuseOutputOverInputs(console, options.output, options.files.List());
  Host host(console, settings, options.files.List(), {options.output});
  const std::unique_ptr<CBDnetArray> pNets = LoadNets(console, host, options.files);
  OutputFile out(console, options.output);
  if (options.json) {
    JsonWriter json(out);
    WriteNets(json, *pNets);
    json.Finish();
  } else {
    PrintPlain(out, *pNets);
  }
  out.Commit();
  return kDone;
}

}  // namespace

Command DeclareNets(CLI::App& parent) {
  auto pOptions = std::make_shared<Options>();
  CLI::App* pApp = parent.add_subcommand("nets",
                                         "Prints every net of a board with its pins, a line each: the name, a tab, "
                                         "then COMPONENT.PIN for each pin, separated by blanks.");
  AddBoardFile(*pApp, pOptions->files);
  AddJsonOption(*pApp, pOptions->json);
  AddOutputOption(*pApp, pOptions->output);
  pApp->footer(Example("laminate nets board.pcf"));
  return {pApp, [pOptions](Console& console, const Settings& settings) { return Run(console, settings, *pOptions); }};
}

}  // namespace laminate::cli
