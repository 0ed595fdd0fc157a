// A whole board: loaded to objects, exported, its layout gathered by layer, and the memory that it takes. Each figure
// stands beside that of a plain version in the same run, which does less: its load ends with the trees, and its export
// writes the layout alone.
//
//   bench_design [<board.pcf>...]
#include <cstring>
#include <map>
#include <memory>
#include <random>
#include <utility>
#include <vector>

#include "base/CGProperty.h"
#include "base/CLProperty.h"
#include "bench/BenchSupport.h"
#include "bench/BoardGenerator.h"
#include "bench/PlainLoad.h"
#include "bench/PlainShapes.h"
#include "board/CBDboardContainer.h"
#include "drawobj/CBDcircle.h"
#include "facade/CBDesigner.h"
#include "save/FieldsBoard.h"
#include "save/FieldsDrawObj.h"
#include "save/FieldsTechnology.h"

namespace {

using laminate::bench::BenchFolder;
using laminate::bench::BoardGenerator;
using laminate::bench::CpuSeconds;

std::unique_ptr<CBDesigner> Load(const std::string& sPath) {
  auto pRoot = std::make_unique<CBDesigner>();
  pRoot->vParsePCF(CString(sPath));
  return pRoot;
}

// ---- the plain export: a line a call, then the lines again, indented ----

void PlainIndent(const std::string& sFrom, const std::string& sTo) {
  std::FILE* const pFrom = std::fopen(sFrom.c_str(), "r");
  std::FILE* const pTo = std::fopen(sTo.c_str(), "w");
  char szLine[1024];
  int nDepth = 0;
  while (std::fgets(szLine, sizeof szLine, pFrom) != nullptr) {
    int nOpen = 0;
    int nClosed = 0;
    bool bQuoted = false;
    for (const char* p = szLine; *p != '\0'; ++p) {
      if (*p == '"') bQuoted = !bQuoted;
      if (!bQuoted && *p == '(') ++nOpen;
      if (!bQuoted && *p == ')') ++nClosed;
    }
    if (nClosed > nOpen) nDepth -= nClosed - nOpen;
    for (int i = 0; i < nDepth; ++i) std::fprintf(pTo, "  ");
    std::fprintf(pTo, "%s", szLine);
    if (nOpen > nClosed) nDepth += nOpen - nClosed;
  }
  std::fclose(pFrom);
  std::fclose(pTo);
}

// Gives the bytes written.
std::uintmax_t PlainExport(const CBDesigner& root, const std::string& sPath) {
  const std::string sFlat = sPath + ".flat";
  std::FILE* const fp = std::fopen(sFlat.c_str(), "w");
  int nLayer = -1;
  for (const CBDdrawObj* p : *root.m_pBoardContainer->m_pDrawObjArray) {
    if (p->m_nLayerNumber != nLayer) {
      std::fprintf(fp, "%s(layer\n", nLayer == -1 ? "" : ")\n");
      std::fprintf(fp, "(conductive %d)\n", nLayer = p->m_nLayerNumber);
    }
    laminate::bench::plain::Write(fp, *p);
  }
  std::fclose(fp);
  PlainIndent(sFlat, sPath);
  std::filesystem::remove(sFlat);
  return std::filesystem::file_size(sPath);
}

// ---- the memory of objects ----

// Adds up what an object and all that it owns take, without the allocator's own share.
class Measure {
 public:
  std::size_t nBytes = 0;

  template <class T>
  void Value(const T& object) {
    if constexpr (std::is_same_v<T, CString>) {
      if (object.GetLength() > 15) nBytes += static_cast<std::size_t>(object.GetLength()) + 17;
    } else if constexpr (std::is_pointer_v<T>) {
      Pointee(object);
    } else if constexpr (requires { object.GetData(); }) {
      nBytes += static_cast<std::size_t>(object.GetSize()) * sizeof object[0];
      for (const auto& element : object) Value(element);
    } else if constexpr (laminate::HasFields<T>) {
      laminate::ForEachField<T>([&](std::string_view, auto pMember) { Value(object.*pMember); });
    } else if constexpr (requires { object.m_sItem; }) {
      Value(object.m_sItem);
      Value(object.m_sComment);
    }
  }

 private:
  template <class T>
  void Pointee(T* p) {
    if (p == nullptr) return;
    const auto add = [this](const auto& object) {
      nBytes += sizeof object;
      Value(object);
    };
    if constexpr (std::is_same_v<std::remove_const_t<T>, CBDdrawObj>) {
      laminate::AsItsClass(*p, laminate::ShapeClasses(), add);
    } else if constexpr (std::is_same_v<std::remove_const_t<T>, CBDvertex>) {
      laminate::AsItsClass(*p, laminate::VertexClasses(), add);
    } else {
      add(*p);
    }
  }
};

template <class T>
double BytesPer(const T& object, double nFile) {
  Measure measure;
  measure.Value(object);
  return static_cast<double>(measure.nBytes) / nFile;
}

// ---- the benchmarks ----

struct Board {
  std::string name;
  std::string path;
  double nBytes = 0;
};

void BenchLoad(benchmark::State& state, const Board& board, const std::string& sPieces) {
  laminate::bench::InTurn(
      state, board.nBytes, [&] { Load(board.path); }, [&] { laminate::bench::PlainLoad(board.path, sPieces); });
  const auto pRoot = Load(board.path);
  const CBDboardContainer& content = *pRoot->m_pBoardContainer;
  state.counters["components_B/B"] = BytesPer(content.m_pComponentArray, board.nBytes);
  state.counters["layout_B/B"] = BytesPer(content.m_pDrawObjArray, board.nBytes);
  state.counters["nets_B/B"] = BytesPer(content.m_pNetArray, board.nBytes);
  state.counters["all_B/B"] = BytesPer(content, board.nBytes) + BytesPer(*pRoot->m_pTechnology, board.nBytes);
  state.counters["peak_B/B"] = laminate::bench::PeakOfItsOwn("'" + board.path + "'") * 1048576 / board.nBytes;
}

void BenchExport(benchmark::State& state, const Board& board, const std::string& sStem) {
  const auto pRoot = Load(board.path);
  double nLibrary = 0;
  double nPlain = 0;
  double nWritten = 0;
  double nPlainWritten = 0;
  for (auto _ : state) {
    const double nStart = CpuSeconds();
    pRoot->nPrint2File(CString(sStem), nullptr, nullptr, nullptr, nullptr, nullptr);
    const double nMiddle = CpuSeconds();
    nPlainWritten += static_cast<double>(PlainExport(*pRoot, sStem + ".plain"));
    nPlain += CpuSeconds() - nMiddle;
    nLibrary += nMiddle - nStart;
    nWritten += static_cast<double>(std::filesystem::file_size(sStem + ".pcf"));
    state.SetIterationTime(nMiddle - nStart);
  }
  // Both by what they write: the plain way writes less.
  state.counters["MB/s"] = nWritten / 1e6 / nLibrary;
  state.counters["plain"] = nPlainWritten / 1e6 / nPlain;
  state.counters["ratio"] = nWritten / nLibrary / (nPlainWritten / nPlain);
  state.counters["input_MB/s"] = board.nBytes * static_cast<double>(state.iterations()) / 1e6 / nLibrary;
}

// Elements of one layer are moved up behind its head, one at a time.
void PlainGather(CBDdrawObjArray& shapes) {
  std::vector<CBDdrawObj*> list(shapes.begin(), shapes.end());
  int nHead = -1;
  for (std::size_t i = 0; i < list.size(); ++i) {
    const int n = list[i]->m_nLayerNumber;
    if (n == nHead) continue;
    nHead = n;
    for (std::size_t j = i + 1; j < list.size(); ++j) {
      if (list[j]->m_nLayerNumber != n) continue;
      CBDdrawObj* const p = list[j];
      list.erase(list.begin() + static_cast<std::ptrdiff_t>(j));
      list.insert(list.begin() + static_cast<std::ptrdiff_t>(++i), p);
    }
  }
  benchmark::DoNotOptimize(list.data());
}

void BenchGather(benchmark::State& state, int nShapes, bool bPlainly) {
  constexpr int kLayers = 30;
  std::mt19937 random(7);
  CBDboardContainer board;
  std::vector<int> layers(static_cast<std::size_t>(nShapes));
  for (int& n : layers) n = 1 + static_cast<int>(random() % kLayers);
  for (const int n : layers) {
    auto pShape = std::make_unique<CBDcircle>();
    pShape->m_nLayerNumber = n;
    laminate::AppendOwned(*board.m_pDrawObjArray, std::move(pShape));
  }
  const std::vector<CBDdrawObj*> order(board.m_pDrawObjArray->begin(), board.m_pDrawObjArray->end());
  for (auto _ : state) {
    std::copy(order.begin(), order.end(), board.m_pDrawObjArray->begin());
    const double nStart = CpuSeconds();
    if (bPlainly) {
      PlainGather(*board.m_pDrawObjArray);
    } else {
      board.vSortDrawObjForLayerOrder();
    }
    state.SetIterationTime(CpuSeconds() - nStart);
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 3 && std::strcmp(argv[1], "--peak") == 0) {
    return laminate::bench::ReportPeak([&] { Load(argv[2]); });
  }
  benchmark::Initialize(&argc, argv);
  const BenchFolder folder;
  std::vector<Board> boards;
  const auto addBoard = [&boards](const std::string& sName, const std::string& sPath) {
    boards.push_back({sName, sPath, static_cast<double>(std::filesystem::file_size(sPath))});
  };
  for (const int nScale : {1, 10, 100}) {
    const std::string sName = std::to_string(nScale) + "x";
    addBoard(sName, folder.Write(sName + ".pcf", BoardGenerator::Generate(nScale)));
  }
  for (int i = 1; i < argc; ++i) addBoard(std::filesystem::path(argv[i]).stem(), argv[i]);

  const auto add = [](const std::string& sName, auto run) {
    return benchmark::RegisterBenchmark(sName.c_str(), run)->UseManualTime()->Unit(benchmark::kMillisecond);
  };
  for (const Board& board : boards) {
    add("load/" + board.name, [&](benchmark::State& state) { BenchLoad(state, board, folder.Path() / "pieces"); });
  }
  for (const Board& board : boards) {
    add("export/" + board.name, [&](benchmark::State& state) { BenchExport(state, board, folder.Path() / "out"); });
  }
  for (const int nShapes : {35000, 350000, 1000000}) {
    add("gather/" + std::to_string(nShapes), [=](benchmark::State& state) { BenchGather(state, nShapes, false); });
  }
  add("gather-plainly/35000", [](benchmark::State& state) { BenchGather(state, 35000, true); });
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
