// The reader's road: text to tree, a board to its pieces, and a whole load without anything that takes the trees.
// Every figure stands beside that of a plain reader in the same run. Real board files can be named as arguments.
#include <map>
#include <utility>
#include <vector>

#include "base/BKUtility.h"
#include "bench/BenchSupport.h"
#include "bench/BoardGenerator.h"
#include "bench/PlainLoad.h"
#include "reader/BoardFileSplitter.h"
#include "reader/CECadCls.h"
#include "reader/LoadTestSupport.h"

namespace {

using laminate::bench::BenchFolder;
using laminate::bench::BoardGenerator;
using laminate::bench::Lines;
using laminate::bench::PlainLoad;
using laminate::bench::PlainSplit;
using laminate::bench::PlainTree;

void Tree(const std::string& path) {
  CECadCls reader;
  reader.m_sFileName = CString(path);
  benchmark::DoNotOptimize(reader.nParseFile(0));
}

void Split(const std::string& path) {
  int bInQuote = 0;
  int nComponents = 0;
  int nLayers = 0;
  laminate::LoadStatus status;
  laminate::SplitState split{bInQuote, nComponents, nLayers, status};
  laminate::SplitBoardFile(CString(path), split);
  BKUtility::GetInstance()->DeleteDirectory(split.sFolder);
}

void Load(const std::string& path) {
  LoadRoot root;
  root.Load(CString(path));
}

const std::map<std::string, void (*)(const std::string&)> kOperations = {
    {"tree", Tree}, {"split", Split}, {"load", Load}};

std::string OneStringOfQuotes(int nQuotes) {
  std::string text = "(a \"";
  for (int i = 0; i < nQuotes; ++i) text += "\\\"";
  return text + "x\")\n";
}
std::string ManyStringsOfAQuote(int nStrings) {
  std::string text = "(a";
  for (int i = 0; i < nStrings; ++i) text += " \"s" + std::to_string(i) + "\\\"x\"";
  return text + ")\n";
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 4 && std::string(argv[1]) == "--peak") {
    return laminate::bench::ReportPeak([&] { kOperations.at(argv[2])(argv[3]); });
  }
  benchmark::Initialize(&argc, argv);
  const BenchFolder folder;
  const std::string pieces = folder.Path() / "plain";
  std::vector<std::pair<std::string, std::string>> boards;
  for (int nScale : {1, 10, 100}) {
    const std::string name = std::to_string(nScale) + "x";
    boards.emplace_back(name, folder.Write(name + ".pcf", BoardGenerator::Generate(nScale)));
  }
  boards.emplace_back("10x-long-lines", folder.Write("long.pcf", BoardGenerator::Generate(10, Lines::longOnes)));
  for (int i = 1; i < argc; ++i) boards.emplace_back(std::filesystem::path(argv[i]).filename(), argv[i]);

  const auto add = [](const std::string& sOperation, const std::string& sName, const std::string& path, auto plainly) {
    const auto run = [=](benchmark::State& state) {
      const double nBytes = static_cast<double>(std::filesystem::file_size(path));
      const auto operation = kOperations.at(sOperation);
      laminate::bench::InTurn(
          state, nBytes, [&] { operation(path); }, [&] { plainly(path); });
      state.counters["peak_MiB"] = laminate::bench::PeakOfItsOwn(sOperation + " '" + path + "'");
      state.counters["input_MB"] = nBytes / 1e6;
    };
    return benchmark::RegisterBenchmark((sOperation + "/" + sName).c_str(), run)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
  };
  for (const auto& [name, path] : boards) add("tree", name, path, PlainTree);
  add("tree", "one-string-of-16000-quotes", folder.Write("quotes", OneStringOfQuotes(16000)), PlainTree)->Iterations(5);
  add("tree", "16000-strings-of-a-quote", folder.Write("strings", ManyStringsOfAQuote(16000)), PlainTree)
      ->Iterations(1);
  for (const auto& [name, path] : boards) {
    add("split", name, path, [=](const std::string& board) { PlainSplit(board, pieces); });
  }
  for (const auto& [name, path] : boards) {
    add("load", name, path, [=](const std::string& board) { PlainLoad(board, pieces, [](const auto&) {}); });
  }
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
