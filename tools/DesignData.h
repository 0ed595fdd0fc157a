#pragma once
#include <string>
#include <vector>

#include "Console.h"
#include "Host.h"
#include "OutputFile.h"
#include "designdata/CPC_BD_OutClsGet.h"

namespace laminate::cli {

/// The files of the design data; each may be absent.
struct DesignDataFiles {
  std::string archive;
  std::string package;
  std::string parts;
  std::string rules;
  std::string components;
  std::vector<std::string> List() const;
};

/// Loads the files that are named into a facade: the archive first, then packages, parts, rules, components. A fault is
/// told and ends the command.
void LoadDesignData(Console& console, Host& host, const DesignDataFiles& files, CPC_BD_OutClsGet& data);

/// Stores the archive image.
void StoreArchive(OutputFile& out, CPC_BD_OutClsGet& data);

}  // namespace laminate::cli
