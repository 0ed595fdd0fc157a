#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>

#include "AsRead.h"
#include "Command.h"
#include "DesignEdit.h"
#include "JsonBoard.h"
#include "JsonText.h"
#include "LoadBoard.h"
#include "OutputFile.h"
#include "Paths.h"
#include "SaveBoard.h"
#include "Suggestions.h"
#include "UndefinedPads.h"
#include "board/CBDboardContainer.h"
#include "board/CBDcomponent.h"
#include "drawobj/CBDdrawObj.h"
#include "render/Picture.h"
#include "render/Scene.h"
#include "technology/CBDfootprint.h"
#include "technology/CBDfootprintContainer.h"

namespace laminate::cli {

namespace {

struct Options {
  std::string footprint;
  BoardFiles files;
  std::string side = "A";
  double angle = 0;
  CPointD at;
  double scale = 1;
  std::string reference;
  std::string picture;
  std::string output;
  std::string stem;  // of the files that take the board with the component
  bool json = false;
};

CBDfootprint& RequireFootprint(Console& console, const Options& options, const CBDesigner& root) {
  std::vector<std::string> names;
  for (CBDfootprint* p : *root.m_pFootprintContainer->m_pFootprintArray) {
    if (Means(options.footprint, p->m_sName.View())) return *p;
    names.emplace_back(p->m_sName.View());
  }
  console.Fail({options.files.ftf},
               "no footprint '" + OneLine(options.footprint) + "'" + DidYouMean(options.footprint, names));
}

std::unique_ptr<CBDcomponent> PlaceFootprint(Console& console, const Options& options, const CBDesigner& root) {
  CBDfootprint& footprint = RequireFootprint(console, options, root);
  std::unique_ptr<CBDcomponent> pComponent;
  try {
    pComponent.reset(footprint.pGetComponentFromFootprint(root.m_pTechnology, CString(std::string_view(options.side)),
                                                          options.angle, options.at, options.scale));
  } catch (const CInvalidArgException& e) {
    console.Fail({options.files.ftf}, "footprint '" + OneLine(options.footprint) + "' cannot be placed: " + e.what());
  }
  pComponent->m_sReference = std::string_view(options.reference);
  pComponent->m_sFootprint = footprint.m_sName;
  pComponent->m_ptLocation = options.at;
  return pComponent;
}

// The record as the library writes it, which changes the component.
void WriteRecord(Console& console, OutputFile& out, CBDcomponent& component) {
  char* pText = nullptr;
  std::size_t nText = 0;
  std::FILE* fp = open_memstream(&pText, &nText);
  if (fp == nullptr) console.Fail({"laminate"}, "out of memory");
  component.nPrint2File(fp);
  const bool bGood = std::fclose(fp) == 0;
  const std::unique_ptr<char, decltype(&std::free)> text(pText, &std::free);
  if (!bGood) console.Fail({"laminate"}, "out of memory");
  out.Write({text.get(), nText});
}

void DrawComponent(Console& console, OutputFile& out, const Options& options, const CBDesigner& root,
                   const CBDcomponent& component) {
  Scene scene(root, {.layers = {}, .side = options.side == "B" ? View::sideB : View::sideA});
  scene.AddComponent(component);
  NoteUndefinedPads(console, options.files, scene);
  DrawPicture(scene, BoundsOf(scene),
              {.format = *FormatOf(options.picture), .step = [&out] { out.EndWhenInterrupted(); }},
              [&out](std::string_view s) { out.Write(s); });
}

// The writer leaves a record's last layer open when the last shape has none.
bool IsLeftOpen(const CBDcomponent& component) {
  const CBDdrawObjArray& shapes = *component.m_pDrawObjArray;
  return !shapes.IsEmpty() && shapes.GetLastElement()->m_sLayerName.IsEmpty() &&
         std::ranges::any_of(shapes, [](const CBDdrawObj* p) { return !p->m_sLayerName.IsEmpty(); });
}

void RefuseSecondOfName(Console& console, const Options& options, const CBDesigner& root) {
  for (const CBDcomponent* p : *root.m_pBoardContainer->m_pComponentArray) {
    if (p->m_sReference.View() != options.reference) continue;
    console.Fail({options.files.pcf}, "there is a component '" + OneLine(options.reference) + "' already");
  }
}

int Run(Console& console, const Settings& settings, const Options& options) {
  std::optional<SavedBoard> saved;
  if (!options.stem.empty()) {
    saved.emplace(console, options.stem, options.files);
    saved->RefuseSameFile(settings.log);
    saved->RefuseSameFile(options.picture);
    if (!options.output.empty()) saved->RefuseSameFile(options.output);
  }
  RefuseOutputOverInputs(console, options.output, options.files.List());
  RefuseOutputOverInputs(console, options.picture, options.files.List());
  if (!options.picture.empty() && !options.output.empty() && SameFile(options.picture, options.output)) {
    console.Fail({options.picture}, "the picture and the component cannot go into one file", kUsage);
  }
  Host host(console, settings, options.files.List(), {options.output, options.picture});
  const std::unique_ptr<CPC_BD_Cls_Get> pFacade = RequireBoard(console, host, options.files);
  const CBDesigner& root = *pFacade->pGetBDesigner();
  if (saved) RefuseSecondOfName(console, options, root);
  std::unique_ptr<CBDcomponent> pComponent = PlaceFootprint(console, options, root);
  console.Settle();
  // All is written before the first file takes its place.
  OutputFile out(console, options.output);
  std::optional<OutputFile> picture;
  if (!options.picture.empty()) {
    picture.emplace(console, options.picture);
    DrawComponent(console, *picture, options, root, *pComponent);
  }
  CBDcomponent& component = *pComponent;
  if (saved) {
    AppendOwned(*root.m_pBoardContainer->m_pComponentArray,
                MakeAsRead(console, {options.files.ftf}, *pComponent, root));
    console.Settle();
    saved->Prepare(root);
  }
  if (options.json) {
    JsonWriter json(out);
    WriteComponent(json, component);
    json.Finish();
  } else {
    WriteRecord(console, out, component);
    if (IsLeftOpen(component)) {
      console.Warning({options.files.ftf}, "the record does not close: the last shape of footprint '" +
                                               OneLine(ToUtf8(options.footprint)) + "' has no layer on the board");
    }
  }
  FilePlacer placer(console);
  out.Complete(placer);
  if (picture) picture->Complete(placer);
  if (saved) saved->Complete(placer);
  placer.Commit();
  return kDone;
}

void AddNumber(CLI::App& app, const char* szName, double& d, const char* szHelp) {
  const auto read = [&d](const CLI::results_t& values) { return ReadNumber(values.front(), d); };
  app.add_option(szName, read, szHelp)->type_name("NUMBER")->expected(1);
}

std::string CheckPicture(const std::string& sFile) {
  return FormatOf(sFile) ? "" : "the file's ending must be .svg, .png or .pdf";
}

}  // namespace

Command DeclarePlace(CLI::App& parent) {
  auto pOptions = std::make_shared<Options>();
  Options& options = *pOptions;
  CLI::App* pApp = parent.add_subcommand("place",
                                         "Places a footprint of the library with the layers of a board and prints the "
                                         "component that comes of it, as a board "
                                         "file has it or as JSON.");
  pApp->add_option("FOOTPRINT", options.footprint, "Name of the footprint")->required();
  pApp->add_option("--pcf", options.files.pcf, "The board file")->required()->type_name("BOARD.pcf");
  pApp->add_option("--ftf", options.files.ftf, "The footprint library")->required()->type_name("LIB.ftf");
  pApp->add_option("--side", options.side, "Side of the board")
      ->check(CLI::IsMember({"A", "B"}))
      ->capture_default_str();
  AddNumber(*pApp, "--angle", options.angle, "Angle in degrees, counter-clockwise (default 0)");
  pApp->add_option(
          "--at", [&options](const CLI::results_t& values) { return ReadPoint(values.front(), options.at); },
          "Location in mm (default 0,0)")
      ->type_name("X,Y")
      ->expected(1);
  AddNumber(*pApp, "--scale", options.scale, "Scale of the pins' places (default 1)");
  pApp->add_option("--reference", options.reference, "Reference of the component")->type_name("R");
  pApp->add_option("--render", options.picture,
                   "Draw the component, too: file whose ending .svg, .png or .pdf says its form")
      ->type_name("FILE")
      ->check(CheckPicture);
  pApp->add_option(
          "--into", options.stem,
          "Also add the component to the board and save that as STEM.pcf and STEM.ftf; the stem may be that of "
          "the board itself")
      ->type_name("STEM");
  AddJsonOption(*pApp, options.json);
  AddOutputOption(*pApp, options.output);
  pApp->footer(
      Example("laminate place CHIP0603 --pcf board.pcf --ftf footprints.ftf --side B --angle 90 --at=12.5,-3"));
  return {pApp, [pOptions](Console& console, const Settings& settings) { return Run(console, settings, *pOptions); }};
}

}  // namespace laminate::cli
