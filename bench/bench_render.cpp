// Drawing: boards of growing size as SVG and as PNG, with their pads and vias through a library. The cost for each
// shape that is drawn stays the same when drawing is linear.
#include <malloc.h>

#include <memory>
#include <string_view>

#include "base/BKUtility.h"
#include "bench/BenchSupport.h"
#include "bench/BoardGenerator.h"
#include "drawobj/CBDcircle.h"
#include "drawobj/CBDhole.h"
#include "facade/CBDesigner.h"
#include "render/Picture.h"
#include "render/Scene.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDmap.h"
#include "technology/CBDpad.h"
#include "technology/CBDpadstack.h"
#include "technology/CBDtechnologyContainer.h"

namespace {

using laminate::bench::BenchFolder;
using laminate::bench::BoardGenerator;
using laminate::bench::CpuSeconds;
using laminate::cli::BoundsOf;
using laminate::cli::DrawPicture;
using laminate::cli::PictureFormat;
using laminate::cli::Scene;

CBDcircle* Circle(double dRadius) {
  auto* p = new CBDcircle;
  p->m_dRadius = dRadius;
  return p;
}

void AddPadstack(CBDfootprintContainer& library, const char* szName, const char* szFootLayer, double dHole) {
  auto* pPadstack = new CBDpadstack;
  library.m_pPadstackArray->Add(pPadstack);
  pPadstack->m_sName = szName;
  auto* pSet = new CBDpadSet;
  pPadstack->m_pPadSetArray->Add(pSet);
  pSet->m_sFootLayer = szFootLayer;
  pSet->m_sConnect = "ROUND60";
  if (dHole == 0) return;
  auto* pHole = new CBDhole;
  delete std::exchange(pHole->m_pShape, Circle(dHole));
  pPadstack->m_pHole->m_pDrawObj = pHole;
}

// The library that generated boards refer to, and a map by which a via has a pad on each layer.
void AddLibrary(CBDesigner& root) {
  CBDfootprintContainer& library = *root.m_pFootprintContainer;
  auto* pPad = new CBDpad;
  library.m_pPadArray->Add(pPad);
  pPad->m_sName = "ROUND60";
  pPad->m_pDrawObjArray->Add(Circle(0.3));
  AddPadstack(library, "SMD60X90", "TopCu", 0);
  AddPadstack(library, "VIA60", "Every", 0.15);
  auto* pMap = new CBDmap;
  root.m_pTechnology->m_pMapArray->Add(pMap);
  pMap->m_sName = "A_THRU";
  auto* pEvery = new CBDcorrespondence;
  pMap->m_pCorrespondenceArray->Add(pEvery);
  pEvery->m_sFootLayer = "Every";
  for (int n = 1; n <= BoardGenerator::kConductiveLayers; ++n) {
    pEvery->m_aBoardLayers.Add(CString(std::to_string(n)));
  }
}

std::unique_ptr<CBDesigner> Load(int nScale) {
  const BenchFolder folder;
  auto pRoot = std::make_unique<CBDesigner>();
  pRoot->vParsePCF(CString(folder.Write("board.pcf", BoardGenerator::Generate(nScale))));
  AddLibrary(*pRoot);
  return pRoot;
}

// Generated shapes lie across the whole board, so that what a large picture costs are its points.
constexpr int kPixels = 400;

struct Drawn {
  std::size_t shapes = 0;
  std::size_t bytes = 0;
};

Drawn Draw(const CBDesigner& root, PictureFormat format) {
  Drawn drawn;
  Scene scene(root, {});
  scene.AddBoard();
  DrawPicture(scene, BoundsOf(scene), {.format = format, .pixels = kPixels, .step = [&drawn] { ++drawn.shapes; }},
              [&drawn](std::string_view s) { drawn.bytes += s.size(); });
  return drawn;
}

void Render(benchmark::State& state, int nScale, PictureFormat format) {
  const auto pRoot = Load(nScale);
  Drawn drawn;
  double nSeconds = 0;
  int nRuns = 0;
  for (auto _ : state) {
    const double nStart = CpuSeconds();
    drawn = Draw(*pRoot, format);
    const double n = CpuSeconds() - nStart;
    state.SetIterationTime(n);
    nSeconds += n;
    ++nRuns;
  }
  state.counters["shapes"] = static_cast<double>(drawn.shapes);
  state.counters["ns/shape"] = nSeconds * 1e9 / nRuns / static_cast<double>(drawn.shapes);
  state.counters["MB"] = static_cast<double>(drawn.bytes) / 1e6;
  state.counters["peak MiB"] =
      laminate::bench::PeakOfItsOwn(std::to_string(nScale) + " " + std::to_string(static_cast<int>(format)));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 4 && std::string_view(argv[1]) == "--peak") {
    const auto pRoot = Load(std::atoi(argv[2]));
    // What the load took and gave back is not the drawing's.
    ::malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << 5;
    return laminate::bench::ReportPeak([&] { Draw(*pRoot, static_cast<PictureFormat>(std::atoi(argv[3]))); });
  }
  for (int nScale : {1, 10, 100}) {
    for (const auto& [szFormat, format] :
         {std::pair("SVG", PictureFormat::svg), std::pair("PNG", PictureFormat::png)}) {
      benchmark::RegisterBenchmark(
          (std::string("render ") + szFormat + ", " + std::to_string(nScale) + "x").c_str(),
          [nScale, format = format](benchmark::State& state) { Render(state, nScale, format); })
          ->UseManualTime()
          ->Unit(benchmark::kMillisecond)
          ->Iterations(nScale == 1 ? 5 : 1);
    }
  }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
