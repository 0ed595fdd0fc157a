#include <algorithm>
#include <memory>
#include <optional>

#include "Command.h"
#include "Extent.h"
#include "LoadBoard.h"
#include "OutputFile.h"
#include "Paths.h"
#include "Suggestions.h"
#include "UndefinedPads.h"
#include "board/CBDboardContainer.h"
#include "board/CBDcomponent.h"
#include "render/Picture.h"
#include "render/Scene.h"

namespace laminate::cli {

namespace {

struct Options {
  BoardFiles files;
  std::optional<std::string> component;
  std::vector<std::string> layers;
  std::string side;
  PictureSettings picture;
  std::string output;
};

// Names as the user gives them, separated by commas; what is the name of a layer as a whole stands for itself.
std::vector<std::string> SelectedLayers(Console& console, const Options& options, const BoardLayers& layers) {
  std::vector<std::string> selected;
  const auto take = [&](const std::string& sName) {
    const auto it = std::ranges::find_if(layers.All(), [&](const BoardLayer& l) { return Means(sName, l.name); });
    if (it != layers.All().end()) selected.push_back(it->name);
    return it != layers.All().end();
  };
  for (const std::string& sList : options.layers) {
    if (take(sList)) continue;
    for (std::size_t nFrom = 0; nFrom <= sList.size();) {
      const std::size_t n = std::min(sList.find(',', nFrom), sList.size());
      const std::string sName = sList.substr(nFrom, n - nFrom);
      nFrom = n + 1;
      if (sName.empty() || take(sName)) continue;
      std::vector<std::string> names;
      for (const BoardLayer& layer : layers.All()) names.push_back(layer.name);
      console.Fail({options.files.pcf}, "no layer '" + sName + "'" + DidYouMean(sName, names));
    }
  }
  if (selected.empty()) console.Fail({"laminate render"}, "--layers names no layer", kUsage);
  return selected;
}

const CBDcomponent& RequireComponent(Console& console, const Options& options, const CBDesigner& root) {
  std::vector<std::string> names;
  for (const CBDcomponent* pComponent : *root.m_pBoardContainer->m_pComponentArray) {
    if (Means(*options.component, pComponent->m_sReference.View())) return *pComponent;
    names.emplace_back(pComponent->m_sReference.View());
  }
  console.Fail({options.files.pcf},
               "no component '" + *options.component + "'" + DidYouMean(*options.component, names));
}

int Run(Console& console, const Settings& settings, Options options) {
  RefuseOutputOverInputs(console, options.output, options.files.List());
  if (const auto format = FormatOf(options.output)) options.picture.format = *format;
  Host host(console, settings, options.files.List(), {options.output});
  const std::unique_ptr<CPC_BD_Cls_Get> pFacade = RequireBoard(console, host, options.files);
  const CBDesigner& root = *pFacade->pGetBDesigner();

  Selection selection;
  if (!options.side.empty()) selection.side = options.side == "B" ? View::sideB : View::sideA;
  if (!options.layers.empty()) {
    // Which layers there are, only the shapes tell in full.
    Scene all(root, {});
    all.AddBoard();
    selection.layers = SelectedLayers(console, options, all.Layers());
  }
  Scene scene(root, selection);
  Box frame;
  if (!options.component) {
    scene.AddBoard();
    const Extent extent = BoardExtent(root);
    if (extent.IsEmpty()) {
      frame = BoundsOf(scene);
    } else {
      frame.Add({extent.Left(), extent.Bottom()});
      frame.Add({extent.Right(), extent.Top()});
    }
  } else {
    scene.AddComponent(RequireComponent(console, options, root));
    frame = BoundsOf(scene);
  }
  NoteUndefinedPads(console, options.files, scene);
  OutputFile out(console, options.output);
  options.picture.step = [&out] { out.EndWhenInterrupted(); };
  DrawPicture(scene, frame, options.picture, [&out](std::string_view s) { out.Write(s); });
  out.Commit();
  return kDone;
}

std::string CheckOutput(const std::string& sOutput) {
  if (sOutput == "-" || FormatOf(sOutput)) return {};
  return "the file's ending must be .svg, .png or .pdf";
}

}  // namespace

Command DeclareRender(CLI::App& parent) {
  auto pOptions = std::make_shared<Options>();
  CLI::App* pApp = parent.add_subcommand(
      "render",
      "Draws a board: the shapes of each layer in its colour, pads and vias through their definitions in the footprint "
      "library, drilled holes, texts and a scale, framed to the board's outline; y points up. Copper areas are "
      "translucent, mesh planes hatched, areas of component bodies and what planes keep free around pads outlined. In "
      "SVG "
      "each layer is a group with data-layer, and shapes have data-net and data-ref.");
  AddBoardOptions(*pApp, pOptions->files);
  pApp->add_option("--component", pOptions->component, "Draw one component alone, framed to it")->type_name("REF");
  pApp->add_option("--layers", pOptions->layers, "Draw these layers alone, their names separated by commas")
      ->type_name("L,...")
      ->allow_extra_args(false);
  pApp->add_option(
          "--side", pOptions->side,
          "See the board from this side and draw that side's layers and the common ones; without it all layers "
          "are drawn, seen from side A")
      ->check(CLI::IsMember({"A", "B"}));
  constexpr int kMostPixels = 20000;
  pApp->add_option("--pixels", pOptions->picture.pixels, "Length of the longer side of a PNG picture")
      ->check(CLI::Range(16, kMostPixels))
      ->capture_default_str();
  pApp->add_option(
          "-o,--output", pOptions->output,
          "File that takes the picture, whose ending .svg, .png or .pdf says its form; \"-\" is SVG on standard "
          "output")
      ->required()
      ->type_name("FILE")
      ->check(CheckOutput);
  pApp->footer(Example("laminate render board.pcf --ftf footprints.ftf --side A -o board.png"));
  return {pApp, [pOptions](Console& console, const Settings& settings) { return Run(console, settings, *pOptions); }};
}

}  // namespace laminate::cli
