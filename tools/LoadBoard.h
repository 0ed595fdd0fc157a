#pragma once
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Console.h"
#include "Host.h"
#include "facade/CBDesigner.h"
#include "facade/CPC_BD_Cls_Get.h"

namespace laminate::cli {

/// The files of a board; without a footprint file only the board file is loaded.
struct BoardFiles {
  std::string pcf;
  std::string ftf;
  std::vector<std::string> List() const { return ftf.empty() ? std::vector{pcf} : std::vector{ftf, pcf}; }
};

/// Tells the fault of a load as an error. False when there is none.
bool ReportFault(Console& console, const LoadStatus& status);

/// Runs a load, telling the library's exceptions and the status's fault as errors. False when there was any.
bool RunLoad(Console& console, Host& host, const std::string& sFile, const std::function<void()>& load,
             const std::function<const LoadStatus&()>& status);

/// The facade behind a load of these files, footprints first. `bGood` is false when the load had a fault, which has
/// been told; the facade then holds what was read before and after it.
std::unique_ptr<CPC_BD_Cls_Get> LoadBoard(Console& console, Host& host, const BoardFiles& files, bool& bGood);
/// The same for those who need a sound board: a fault ends the command.
std::unique_ptr<CPC_BD_Cls_Get> RequireBoard(Console& console, Host& host, const BoardFiles& files);

/// Prepares a facade for a load: its log and its progress controls.
void Prepare(CPC_BD_Cls_Get& facade, Host& host);

}  // namespace laminate::cli
