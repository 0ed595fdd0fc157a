// Saving: unedited, with one component or shape edited, in another order, and anew, beside a load of the same board in
// the same run.
#include <algorithm>
#include <memory>

#include "base/BKUtility.h"
#include "bench/BenchSupport.h"
#include "bench/BoardGenerator.h"
#include "board/CBDboardContainer.h"
#include "board/CBDcomponent.h"
#include "drawobj/CBDdrawObj.h"
#include "facade/CBDesigner.h"
#include "facade/SavedRoot.h"
#include "save/DesignSaver.h"

namespace {

using laminate::bench::BenchFolder;
using laminate::bench::BoardGenerator;
using laminate::bench::CpuSeconds;

enum class Way { unedited, oneComponent, oneShape, reversedComponents, fresh };

void Save(benchmark::State& state, int nScale, Way way) {
  const BenchFolder folder;
  const std::string sText = BoardGenerator::Generate(nScale);
  const std::string sSource = folder.Write("board.pcf", sText);
  double nLoad = 0;
  double nSave = 0;
  int nRuns = 0;
  for (auto _ : state) {
    const double nStart = CpuSeconds();
    auto pRoot = std::make_unique<CBDesigner>();
    pRoot->vParsePCF(CString(sSource));
    const double nLoaded = CpuSeconds();
    if (way == Way::oneComponent) {
      CBDcomponentArray& components = *pRoot->m_pBoardContainer->m_pComponentArray;
      components.GetAt(components.GetSize() / 2)->m_ptLocation.x += 1.25;
    } else if (way == Way::oneShape) {
      CBDdrawObjArray& shapes = *pRoot->m_pBoardContainer->m_pDrawObjArray;
      shapes.GetAt(shapes.GetSize() / 2)->vMoveRotate(-1.25, 0, 0, "A");
    } else if (way == Way::reversedComponents) {
      CBDcomponentArray& components = *pRoot->m_pBoardContainer->m_pComponentArray;
      std::reverse(components.begin(), components.end());
    }
    const double nEdited = CpuSeconds();
    laminate::DesignSaver saver(laminate::SavedRoot(*pRoot));
    saver.SetBoardFile(CString(sSource + ".out"), way == Way::fresh ? CString() : CString(sSource));
    if (!saver.Save()) state.SkipWithError("the board cannot be saved");
    const double nEnd = CpuSeconds();
    nLoad += nLoaded - nStart;
    nSave += nEnd - nEdited;
    ++nRuns;
  }
  const double nMegabytes = static_cast<double>(sText.size()) * nRuns / 1e6;
  state.counters["load MB/s"] = nMegabytes / nLoad;
  state.counters["save MB/s"] = nMegabytes / nSave;
  state.counters["save/load"] = nSave / nLoad;
}

}  // namespace

int main(int argc, char** argv) {
  for (int nScale : {1, 10, 100}) {
    for (const auto& [szWay, way] :
         {std::pair("unedited", Way::unedited), std::pair("one component", Way::oneComponent),
          std::pair("one shape", Way::oneShape), std::pair("components reversed", Way::reversedComponents),
          std::pair("fresh", Way::fresh)}) {
      benchmark::RegisterBenchmark((std::string("save ") + szWay + ", " + std::to_string(nScale) + "x").c_str(),
                                   [nScale, way = way](benchmark::State& state) { Save(state, nScale, way); })
          ->Unit(benchmark::kMillisecond)
          ->Iterations(nScale == 100 ? 1 : 5);
    }
  }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
