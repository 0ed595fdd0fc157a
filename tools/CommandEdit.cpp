#include <functional>
#include <memory>

#include "Command.h"
#include "DesignEdit.h"
#include "LoadBoard.h"
#include "SaveBoard.h"

namespace laminate::cli {

namespace {

struct Edit {
  std::string said;  // as the user said it
  std::function<void(CBDesigner&)> make;
};

struct Options {
  BoardFiles files;
  std::string stem;
  std::vector<std::string> allowedLosses;
  std::vector<Edit> edits;  // in the order of the command line
};

int Run(Console& console, const Settings& settings, const Options& options) {
  SavedBoard saved(console, options.stem, options.files);
  saved.allowedLosses = options.allowedLosses;
  saved.RefuseSameFile(settings.log);
  Host host(console, settings, options.files.List(), {});
  const std::unique_ptr<CPC_BD_Cls_Get> pFacade = RequireBoard(console, host, options.files);
  CBDesigner& root = *pFacade->pGetBDesigner();
  for (const Edit& edit : options.edits) {
    try {
      edit.make(root);
    } catch (const EditError& e) {
      console.Fail({options.files.pcf}, edit.said + ": " + OneLine(e.reason));
    }
  }
  saved.Prepare(root);
  saved.Commit();
  return kDone;
}

// "A=B", cut at the last sign where `bLast`, since a name may hold one.
bool Cut(const std::string& s, bool bLast, std::string& sLeft, std::string& sRight) {
  const std::size_t n = bLast ? s.rfind('=') : s.find('=');
  if (n == std::string::npos || n == 0) return false;
  sLeft = s.substr(0, n);
  sRight = s.substr(n + 1);
  return true;
}

// Where the "=" stands that ends a path: not in brackets, where a name may hold one.
std::size_t PathEnd(const std::string& s) {
  for (std::size_t i = 0; i < s.size(); ++i) {
    if (s[i] == '=') return i;
    if (s[i] != '[') continue;
    do {
      i = s.find(']', i + 1);
    } while (i != s.npos && i + 1 < s.size() && s[i + 1] != '.' && s[i + 1] != '=');
    if (i == s.npos) break;
  }
  return s.npos;
}

// An option that adds an edit each time it is given. `parse(text, edit)` is false for what it cannot make sense of.
template <class Parse>
void AddEdit(CLI::App& app, std::vector<Edit>& edits, const char* szName, const char* szType, const char* szHelp,
             Parse parse) {
  const auto read = [&edits, szName, parse](const CLI::results_t& values) {
    for (const std::string& s : values) {
      Edit edit{std::string(szName) + " " + OneLine(s), {}};
      if (!parse(s, edit.make)) return false;
      edits.push_back(std::move(edit));
    }
    return true;
  };
  app.add_option(szName, read, szHelp)
      ->type_name(szType)
      ->expected(1)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
      ->trigger_on_parse();
}

}  // namespace

Command DeclareEdit(CLI::App& parent) {
  auto pOptions = std::make_shared<Options>();
  std::vector<Edit>& edits = pOptions->edits;
  CLI::App* pApp = parent.add_subcommand(
      "edit",
      "Edits a board and saves it: only the forms of what has changed are written anew. Edits are made in the order in "
      "which they are given.");
  AddBoardOptions(*pApp, pOptions->files);
  using Make = std::function<void(CBDesigner&)>;
  AddEdit(*pApp, edits, "--move", "REF=X,Y",
          "Move a component with its pins and shapes to a location in mm (repeatable)",
          [](const std::string& s, Make& make) {
            std::string sReference;
            std::string sPlace;
            CPointD pt;
            if (!Cut(s, true, sReference, sPlace) || !ReadPoint(sPlace, pt)) return false;
            make = [sReference, pt](CBDesigner& root) { MoveComponent(root, sReference, pt); };
            return true;
          });
  AddEdit(*pApp, edits, "--rotate", "REF=DEG",
          "Turn a component with its pins and shapes about its location to an angle in degrees (repeatable)",
          [](const std::string& s, Make& make) {
            std::string sReference;
            std::string sAngle;
            double dAngle = 0;
            if (!Cut(s, true, sReference, sAngle) || !ReadNumber(sAngle, dAngle)) return false;
            make = [sReference, dAngle](CBDesigner& root) { RotateComponent(root, sReference, dAngle); };
            return true;
          });
  AddEdit(*pApp, edits, "--rename-net", "OLD=NEW", "Rename a net wherever it is named (repeatable)",
          [](const std::string& s, Make& make) {
            std::string sOld;
            std::string sNew;
            if (!Cut(s, false, sOld, sNew)) return false;
            make = [sOld, sNew](CBDesigner& root) { RenameNet(root, sOld, sNew); };
            return true;
          });
  AddEdit(*pApp, edits, "--rename", "REF=NEW", "Rename a component wherever it is named (repeatable)",
          [](const std::string& s, Make& make) {
            std::string sOld;
            std::string sNew;
            if (!Cut(s, false, sOld, sNew)) return false;
            make = [sOld, sNew](CBDesigner& root) { RenameComponent(root, sOld, sNew); };
            return true;
          });
  AddEdit(*pApp, edits, "--remove", "REF", "Remove a component, also from nets and groups (repeatable)",
          [](const std::string& s, Make& make) {
            make = [s](CBDesigner& root) { RemoveComponent(root, s); };
            return true;
          });
  AddEdit(
      *pApp, edits, "--set", "PATH=VALUE",
      "Set a value; PATH is in the words of a dump, with the name of an object or its index in brackets (repeatable)",
      [](const std::string& s, Make& make) {
        const std::size_t n = PathEnd(s);
        if (n == s.npos || n == 0) return false;
        const std::string sPath = s.substr(0, n);
        const std::string sValue = s.substr(n + 1);
        make = [sPath, sValue](CBDesigner& root) { SetValue(root, sPath, sValue); };
        return true;
      });
  AddSaveOptions(*pApp, pOptions->stem, pOptions->allowedLosses);
  pApp->footer(Example("laminate edit board.pcf --move R12=10.5,-3 --rename-net N1=GND -o board"));
  return {pApp, [pOptions](Console& console, const Settings& settings) { return Run(console, settings, *pOptions); }};
}

}  // namespace laminate::cli
