#include <memory>
#include <set>

#include "Command.h"
#include "LoadBoard.h"
#include "OutputFile.h"
#include "Suggestions.h"
#include "reader/CECadCls.h"

namespace laminate::cli {

namespace {

struct Options {
  BoardFiles files;
  std::string name;
};

// Where objects with names stand: in which form, as what form; an empty keyword is any. The name is the form's first
// value, or the value of one of the forms in it.
struct NamedForm {
  std::string_view section;
  std::string_view keyword;
  std::string_view nameIn;
  const char* szKind;
};
constexpr NamedForm kNamedForms[] = {{"technologyContainer", "technology", "", "technology"},
                                     {"footprintLayer", "", "", "footprint layer"},
                                     {"nonConductiveLayer", "", "", "non-conductive layer"},
                                     {"conductiveLayer", "layerNumber", "", "conductive layer"},
                                     {"layerMapping", "", "", "layer map"},
                                     {"subBoards", "subBoard", "", "sub-board"},
                                     {"compGroups", "compGroup", "", "component group"},
                                     {"nets", "net", "", "net"},
                                     {"components", "component", "reference", "component"},
                                     {"component", "pin", "", "pin of a component"},
                                     {"visibleLayerSet", "set", "", "set of visible layers"},
                                     {"textSizeParameters", "textSize", "", "text size"},
                                     {"libraryEntities", "part", "", "part of the library"},
                                     {"libraryEntities", "package", "", "package of the library"},
                                     {"libraryEntities", "footprint", "", "footprint of the library"},
                                     {"libraryEntities", "pad", "", "pad of the library"},
                                     {"libraryEntities", "padstack", "", "padstack of the library"},
                                     {"pads", "pad", "", "pad"},
                                     {"padstacks", "padstack", "", "padstack"},
                                     {"footprints", "footprint", "", "footprint"},
                                     {"toeprint", "pin", "", "pin of a footprint"}};

const CString* NameOf(const CECadClsLvl& node, const NamedForm& form) {
  const CECadClsLvl* p = form.nameIn.empty() ? &node : node.m_pChildren->pFind(form.nameIn);
  return p == nullptr || p->m_arrValues.IsEmpty() ? nullptr : &p->m_arrValues.GetData()[0];
}

// Prints the objects of one file that are called so, and notes the names of all.
class Search {
 public:
  Search(OutputFile& out, const std::string& sFile, const std::string& sName, std::set<std::string>& names)
      : m_out(out), m_sFile(sFile), m_sName(sName), m_names(names) {}

  // Forms nest at most 20 deep, so the recursion is short.
  bool In(const CECadClsLvl& node) {
    bool bFound = false;
    for (const CECadClsLvl* pChild : *node.m_pChildren) {
      for (const NamedForm& form : kNamedForms) {
        if (node.m_sName != form.section || (!form.keyword.empty() && pChild->m_sName != form.keyword)) continue;
        const CString* psName = NameOf(*pChild, form);
        if (psName == nullptr) continue;
        if (psName->View() == m_sName) {
          m_out.Write(ToText({m_sFile, pChild->m_nLine}) + ": " + form.szKind + "\n");
          bFound = true;
        } else {
          m_names.emplace(psName->View());
        }
      }
      bFound = In(*pChild) || bFound;
    }
    return bFound;
  }

 private:
  OutputFile& m_out;
  const std::string& m_sFile;
  const std::string& m_sName;
  std::set<std::string>& m_names;
};

int Run(Console& console, const Settings& settings, const Options& options) {
  std::vector<std::string> files{options.files.pcf};
  if (!options.files.ftf.empty()) files.push_back(options.files.ftf);
  Host host(console, settings, files, {});
  std::vector<std::unique_ptr<CECadCls>> readers;
  for (const std::string& sFile : files) {
    readers.push_back(std::make_unique<CECadCls>());
    readers.back()->m_sFileName = CString(std::string_view(sFile));
    readers.back()->nParseFile(0);
    if (!readers.back()->m_status.IsOk()) {
      host.Settle();
      ReportFault(console, readers.back()->m_status);
      return kFailed;
    }
  }
  host.Settle();

  OutputFile out(console, "-");
  std::set<std::string> names;
  bool bFound = false;
  for (std::size_t i = 0; i < files.size(); ++i) {
    Search search(out, files[i], options.name, names);
    for (const CECadClsLvl* pRoot : *readers[i]->m_pRootArray) bFound = search.In(*pRoot) || bFound;
  }
  if (!bFound) {
    console.Fail({options.files.pcf}, "nothing is called '" + OneLine(options.name) + "'" +
                                          DidYouMean(options.name, {names.begin(), names.end()}));
  }
  out.Commit();
  return kDone;
}

}  // namespace

Command DeclareWhere(CLI::App& parent) {
  auto pOptions = std::make_shared<Options>();
  CLI::App* pApp = parent.add_subcommand(
      "where",
      "Says file, line and kind of every object of that name: component, net, pad, padstack, footprint and so on.");
  AddBoardOptions(*pApp, pOptions->files);
  pApp->add_option("NAME", pOptions->name, "The name")->required()->type_name("");
  pApp->footer(Example("laminate where board.pcf --ftf footprints.ftf R12"));
  return {pApp, [pOptions](Console& console, const Settings& settings) { return Run(console, settings, *pOptions); }};
}

}  // namespace laminate::cli
