// A whole board: loaded to objects, exported, its layout gathered by layer, and the memory that it takes. Each figure
// stands beside that of a plain version in the same run, which does less: its load makes objects of the lines,
// padstacks and surfaces alone, and its export writes those of the layout alone.
//
//   bench_design [<board.pcf>...]
#include <malloc.h>

#include <algorithm>
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
#include "board/PlainGathering.h"
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

// ---- the plain ways ----

void PlainLoad(const std::string& sPath, const std::string& sPieces) {
  std::vector<std::unique_ptr<plain::Shape>> shapes;
  laminate::bench::PlainLoad(sPath, sPieces, [&shapes](const auto& forms) { plain::ReadLayers(forms, shapes); });
}

// Gives the bytes written. The layout was gathered by the library's export.
std::uintmax_t PlainExport(const CBDesigner& root, const std::string& sPath) {
  std::FILE* const fp = std::fopen(sPath.c_str(), "w");
  CString sLayer;
  for (const CBDdrawObj* p : *root.m_pBoardContainer->m_pDrawObjArray) {
    if (p->m_sLayerName != sLayer) {
      std::fprintf(fp, "%s(layer (%s %s)\n", sLayer.IsEmpty() ? "" : ")\n", p->m_sLayerType.GetString(),
                   p->m_sLayerName.GetString());
      sLayer = p->m_sLayerName;
    }
    plain::Write(fp, *p);
  }
  std::fclose(fp);
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

// What one more loaded board takes of the heap, the allocator's share included. The one before it pays for what the
// library keeps for any number of loads.
double HeapOf(const std::string& sPath) {
  const auto used = [] {
    const struct mallinfo2 info = ::mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
  };
  const auto pOther = Load(sPath);
  const double nBefore = used();
  const auto pRoot = Load(sPath);
  return used() - nBefore;
}

double LargestPiece(const std::string& sPath) {
  plain::Split split;
  plain::SplitBoardFile(laminate::bench::Read(sPath), split);
  std::size_t nLargest = 0;
  for (const auto& file : split.files) nLargest = std::max(nLargest, file.second.size());
  return static_cast<double>(nLargest);
}

// ---- the benchmarks ----

struct Board {
  std::string name;
  std::string path;
  double nBytes = 0;
};

// The cost per byte in that of the 1x board, which is measured first; 0 without it.
double Growth(const std::string& sOperation, const Board& board, double nRate) {
  static std::map<std::string, double> rates;
  if (board.name == "1x") rates[sOperation] = nRate;
  return rates[sOperation] / nRate;
}

void BenchLoad(benchmark::State& state, const Board& board, const std::string& sPieces) {
  laminate::bench::InTurn(
      state, board.nBytes, [&] { Load(board.path); }, [&] { PlainLoad(board.path, sPieces); });
  state.counters["growth"] = Growth("load", board, state.counters["MB/s"]);

  const auto pRoot = Load(board.path);
  const CBDboardContainer& content = *pRoot->m_pBoardContainer;
  double nAll = 0;
  const auto count = [&](const char* szName, const auto& object) {
    const double n = BytesPer(object, board.nBytes);
    state.counters[std::string(szName) + "_B/B"] = n;
    nAll += n;
  };
  count("components", content.m_pComponentArray);
  count("groups", content.m_pCompGroupArray);
  count("nets", content.m_pNetArray);
  count("layout", content.m_pDrawObjArray);
  count("technology", pRoot->m_pTechnology);
  count("parameter", pRoot->m_pParameter);
  count("entities", pRoot->m_pLibraryEntities);
  state.counters["all_B/B"] = nAll;

  const std::string sPath = "'" + board.path + "'";
  const double nHeap = laminate::bench::OfItsOwn("--heap " + sPath);
  const double nPeak = laminate::bench::PeakOfItsOwn(sPath) * 1048576;
  const double nLargest = LargestPiece(board.path);
  state.counters["heap_B/B"] = nHeap / board.nBytes;
  state.counters["peak_B/B"] = nPeak / board.nBytes;
  state.counters["largest_piece"] = nLargest;
  // Beyond the database and 16 MiB, in largest pieces.
  state.counters["peak_pieces"] = (nPeak - nHeap - 16 * 1048576) / nLargest;
}

// Each round exports a board that was just loaded, since an export puts quotes round the names of its nets.
void BenchExport(benchmark::State& state, const Board& board, const std::string& sStem) {
  double nLibrary = 0;
  double nPlain = 0;
  double nWritten = 0;
  double nPlainWritten = 0;
  for (auto _ : state) {
    const auto pRoot = Load(board.path);
    const double nStart = CpuSeconds();
    pRoot->nPrint2File(CString(sStem), nullptr, nullptr, nullptr, nullptr, nullptr);
    const double nMiddle = CpuSeconds();
    nPlainWritten += static_cast<double>(PlainExport(*pRoot, sStem + ".plain"));
    nPlain += CpuSeconds() - nMiddle;
    nLibrary += nMiddle - nStart;
    nWritten += static_cast<double>(std::filesystem::file_size(sStem + ".pcf"));
    state.SetIterationTime(nMiddle - nStart);
  }
  // Both by what they write: the plain way writes less. The set's small other files are not counted, though the time
  // that they take is.
  state.counters["MB/s"] = nWritten / 1e6 / nLibrary;
  state.counters["plain"] = nPlainWritten / 1e6 / nPlain;
  state.counters["ratio"] = nWritten / nLibrary / (nPlainWritten / nPlain);
  state.counters["input_MB/s"] = board.nBytes * static_cast<double>(state.iterations()) / 1e6 / nLibrary;
  state.counters["growth"] = Growth("export", board, state.counters["MB/s"]);
}

void BenchGather(benchmark::State& state, int nShapes, bool bPlainly) {
  std::mt19937 random(7);
  CBDboardContainer board;
  for (int i = 0; i < nShapes; ++i) {
    const int nLayer = static_cast<int>(random() % BoardGenerator::kScatteredLayers);
    auto pShape = std::make_unique<CBDcircle>();
    pShape->m_nLayerNumber = BoardGenerator::ScatteredNumber(nLayer);
    pShape->m_sLayerName = CString(BoardGenerator::ScatteredName(nLayer));
    laminate::AppendOwned(*board.m_pDrawObjArray, std::move(pShape));
  }
  const std::vector<CBDdrawObj*> order(board.m_pDrawObjArray->begin(), board.m_pDrawObjArray->end());
  for (auto _ : state) {
    std::copy(order.begin(), order.end(), board.m_pDrawObjArray->begin());
    const double nStart = CpuSeconds();
    if (bPlainly) {
      benchmark::DoNotOptimize(plain::Gathered(*board.m_pDrawObjArray));
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
  if (argc == 3 && std::strcmp(argv[1], "--heap") == 0) {
    std::printf("%f\n", HeapOf(argv[2]));
    return 0;
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
  addBoard("1M-scattered", folder.Write("scattered.pcf", BoardGenerator::Scattered(1000000)));
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
