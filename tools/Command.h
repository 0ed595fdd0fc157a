#pragma once
#include <CLI/CLI.hpp>
#include <functional>
#include <string>
#include <vector>

#include "Console.h"
#include "Host.h"
#include "LoadBoard.h"

namespace laminate::cli {

/// A command that has been declared: what runs when it was chosen.
struct Command {
  CLI::App* app;
  std::function<int(Console&, const Settings&)> run;
};

// One source each declares a command with its options, its help and what it does.
Command DeclareCheck(CLI::App& parent);
Command DeclareComponents(CLI::App& parent);
Command DeclareDesignData(CLI::App& parent);
Command DeclareDump(CLI::App& parent);
Command DeclareEdit(CLI::App& parent);
Command DeclareExport(CLI::App& parent);
Command DeclareInfo(CLI::App& parent);
Command DeclareNets(CLI::App& parent);
Command DeclarePlace(CLI::App& parent);
Command DeclareRender(CLI::App& parent);
Command DeclareSave(CLI::App& parent);
Command DeclareTree(CLI::App& parent);
Command DeclareWhere(CLI::App& parent);

/// "Example:" and the call, as the end of a help text.
std::string Example(std::string_view sCall);

/// An option of many commands: the file that takes the result.
void AddOutputOption(CLI::App& app, std::string& sOutput);
CLI::Option* AddJsonOption(CLI::App& app, bool& bJson);

/// The options of commands that save a board.
void AddSaveOptions(CLI::App& app, std::string& sStem, std::vector<std::string>& allowedLosses);

/// The files of a board: the board file alone, or with the footprint library as an option.
void AddBoardFile(CLI::App& app, BoardFiles& files);
void AddBoardOptions(CLI::App& app, BoardFiles& files);

}  // namespace laminate::cli
