#include <map>
#include <memory>

#include "Command.h"
#include "Extent.h"
#include "JsonWriter.h"
#include "LoadBoard.h"
#include "OutputFile.h"
#include "base/Number.h"
#include "board/CBDboardContainer.h"
#include "board/CBDcompGroup.h"
#include "board/CBDcomponent.h"
#include "board/CBDnet.h"
#include "board/CBDpin.h"
#include "drawobj/CBDdrawObj.h"
#include "technology/CBDcondLayer.h"
#include "technology/CBDfootprint.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDnonConductiveLayer.h"
#include "technology/CBDpad.h"
#include "technology/CBDpadstack.h"
#include "technology/CBDtechnologyContainer.h"

namespace laminate::cli {

namespace {

struct Options {
  BoardFiles files;
  std::string output;
  bool json = false;
};

// A layer of the layout with the number of its shapes by kind.
struct LayerCount {
  std::string type;
  std::string name;
  std::map<std::string, std::size_t> kinds;
};

struct Summary {
  std::string version;
  std::string technology;
  int conductorLayers;
  std::size_t conductiveLayers;
  std::size_t otherLayers;
  std::size_t components;
  std::size_t sideA = 0;
  std::size_t sideB = 0;
  std::size_t pins = 0;
  std::size_t nets;
  std::size_t netPins = 0;
  std::size_t groups;
  std::size_t pads;
  std::size_t padstacks;
  std::size_t footprints;
  std::size_t shapes;
  std::map<std::string, std::size_t> kinds;
  std::vector<LayerCount> layers;  // in the order of the layout
  Extent extent;
};

template <class Array>
std::size_t Count(const Array& array) {
  return static_cast<std::size_t>(array.GetSize());
}

Summary Summarize(const CBDesigner& root) {
  const CBDtechnologyContainer& technology = *root.m_pTechnology;
  const CBDboardContainer& board = *root.m_pBoardContainer;
  const CBDfootprintContainer& library = *root.m_pFootprintContainer;
  Summary summary{.version = std::string(root.m_sVersion.View()),
                  .technology = std::string(technology.m_sName.View()),
                  .conductorLayers = technology.m_nConductorLayers,
                  .conductiveLayers = Count(*technology.m_pCondLayerArray),
                  .otherLayers = Count(*technology.m_pNonConductiveLayerArray),
                  .components = Count(*board.m_pComponentArray),
                  .nets = Count(*board.m_pNetArray),
                  .groups = Count(*board.m_pCompGroupArray),
                  .pads = Count(*library.m_pPadArray),
                  .padstacks = Count(*library.m_pPadstackArray),
                  .footprints = Count(*library.m_pFootprintArray),
                  .shapes = Count(*board.m_pDrawObjArray),
                  .kinds = {},
                  .layers = {},
                  .extent = BoardExtent(root)};
  for (const CBDcomponent* pComponent : *board.m_pComponentArray) {
    ++(pComponent->m_sPlacementSide == "B" ? summary.sideB : summary.sideA);
    summary.pins += Count(*pComponent->m_pPinArray);
  }
  for (const CBDnet* pNet : *board.m_pNetArray) summary.netPins += Count(*pNet->m_pRefPinArray);
  std::map<std::pair<std::string_view, std::string_view>, std::size_t> index;
  for (const CBDdrawObj* pShape : *board.m_pDrawObjArray) {
    const auto [it, bNew] =
        index.try_emplace({pShape->m_sLayerType.View(), pShape->m_sLayerName.View()}, summary.layers.size());
    if (bNew) {
      summary.layers.push_back(
          {std::string(pShape->m_sLayerType.View()), std::string(pShape->m_sLayerName.View()), {}});
    }
    const std::string sKind(pShape->m_sKind.View());
    ++summary.layers[it->second].kinds[sKind];
    ++summary.kinds[sKind];
  }
  return summary;
}

std::string Millimetres(double d) {
  char number[kMaxNumberLength];
  return {number, FormatFixed(number, d, 3)};
}

std::string KindList(const std::map<std::string, std::size_t>& kinds) {
  std::string s;
  for (const auto& [sKind, n] : kinds) s += (s.empty() ? "" : ", ") + OneLine(sKind) + " " + std::to_string(n);
  return s;
}

void PrintPlain(OutputFile& out, const Summary& summary, bool bLibrary) {
  const auto line = [&out](std::string sLabel, const std::string& sValue) {
    sLabel.resize(std::max<std::size_t>(sLabel.size() + 1, 18), ' ');
    out.Write(sLabel + sValue + "\n");
  };
  const auto n = [](std::size_t i) { return std::to_string(i); };
  line("version", OneLine(summary.version));
  line("technology", OneLine(summary.technology));
  line("layers", n(static_cast<std::size_t>(std::max(summary.conductorLayers, 0))) + " conductor layers, " +
                     n(summary.otherLayers) + " others");
  line("components", n(summary.components) + " (side A " + n(summary.sideA) + ", side B " + n(summary.sideB) + ")");
  line("pins", n(summary.pins));
  line("nets", n(summary.nets) + " with " + n(summary.netPins) + " pins");
  line("groups", n(summary.groups));
  if (bLibrary) {
    line("footprints",
         n(summary.footprints) + " (" + n(summary.padstacks) + " padstacks, " + n(summary.pads) + " pads)");
  }
  const Extent& extent = summary.extent;
  line("extent", extent.IsEmpty() ? "none"
                                  : Millimetres(extent.Right() - extent.Left()) + " x " +
                                        Millimetres(extent.Top() - extent.Bottom()) + " mm, from (" +
                                        Millimetres(extent.Left()) + ", " + Millimetres(extent.Bottom()) + ") to (" +
                                        Millimetres(extent.Right()) + ", " + Millimetres(extent.Top()) + ")");
  line("layout shapes", n(summary.shapes) + (summary.kinds.empty() ? "" : ": " + KindList(summary.kinds)));
  for (const LayerCount& layer : summary.layers) {
    const std::string sName = layer.name.empty() ? "(no name)" : OneLine(layer.name);
    line("  " + (layer.type == "conductive" ? "conductive " + sName : sName), KindList(layer.kinds));
  }
}

void PrintKinds(JsonWriter& json, const std::map<std::string, std::size_t>& kinds) {
  JsonObject object(json);
  for (const auto& [sKind, n] : kinds) {
    json.TextKey(sKind);
    json.Number(n);
  }
}

void PrintJson(JsonWriter& json, const Summary& summary) {
  JsonObject object(json);
  const auto text = [&json](std::string_view sKey, const std::string& s) {
    json.Key(sKey);
    json.Text(s);
  };
  const auto number = [&json](std::string_view sKey, auto n) {
    json.Key(sKey);
    json.Number(n);
  };
  text("version", summary.version);
  text("technology", summary.technology);
  number("conductorLayers", summary.conductorLayers);
  number("conductiveLayers", summary.conductiveLayers);
  number("nonConductiveLayers", summary.otherLayers);
  number("components", summary.components);
  number("componentsOnSideA", summary.sideA);
  number("componentsOnSideB", summary.sideB);
  number("pins", summary.pins);
  number("nets", summary.nets);
  number("netPins", summary.netPins);
  number("groups", summary.groups);
  number("pads", summary.pads);
  number("padstacks", summary.padstacks);
  number("footprints", summary.footprints);
  json.Key("extent");
  if (summary.extent.IsEmpty()) {
    json.Null();
  } else {
    JsonObject extent(json);
    number("left", summary.extent.Left());
    number("bottom", summary.extent.Bottom());
    number("right", summary.extent.Right());
    number("top", summary.extent.Top());
    number("width", summary.extent.Right() - summary.extent.Left());
    number("height", summary.extent.Top() - summary.extent.Bottom());
  }
  number("shapes", summary.shapes);
  json.Key("shapesByKind");
  PrintKinds(json, summary.kinds);
  json.Key("layers");
  JsonArray layers(json);
  for (const LayerCount& layer : summary.layers) {
    JsonObject item(json);
    text("type", layer.type);
    text("name", layer.name);
    json.Key("shapesByKind");
    PrintKinds(json, layer.kinds);
  }
}

int Run(Console& console, const Settings& settings, const Options& options) {
  RefuseOutputOverInputs(console, options.output, options.files.List());
  Host host(console, settings, options.files.List(), {options.output});
  const std::unique_ptr<CPC_BD_Cls_Get> pFacade = RequireBoard(console, host, options.files);
  const Summary summary = Summarize(*pFacade->pGetBDesigner());
  OutputFile out(console, options.output);
  if (options.json) {
    JsonWriter json(out);
    PrintJson(json, summary);
    json.Finish();
  } else {
    PrintPlain(out, summary, !options.files.ftf.empty());
  }
  out.Commit();
  return kDone;
}

}  // namespace

Command DeclareInfo(CLI::App& parent) {
  auto pOptions = std::make_shared<Options>();
  CLI::App* pApp = parent.add_subcommand(
      "info",
      "Prints a summary of a board: version, layers, counts of components, pins, nets and footprints, shapes by "
      "kind and layer, and the board's extent in mm.");
  AddBoardOptions(*pApp, pOptions->files);
  AddJsonOption(*pApp, pOptions->json);
  AddOutputOption(*pApp, pOptions->output);
  pApp->footer(Example("laminate info board.pcf --ftf footprints.ftf"));
  return {pApp, [pOptions](Console& console, const Settings& settings) { return Run(console, settings, *pOptions); }};
}

}  // namespace laminate::cli
