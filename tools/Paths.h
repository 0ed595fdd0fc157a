#pragma once
#include <string>
#include <vector>

#include "Console.h"

namespace laminate::cli {

/// "." where the path has no folder.
std::string FolderOf(const std::string& sPath);
std::string NameOf(const std::string& sPath);

/// The path behind all links, which need not exist; empty with `errno` set when the links lead nowhere.
std::string ResolveLinks(const std::string& sPath);

/// Whether two paths name one file: the same device and inode, or, where neither exists yet, the same folder and name.
bool SameFile(const std::string& sA, const std::string& sB);

/// Refuses, as wrong usage, an output that is also an input. "-" and what is no regular file are let pass.
void RefuseOutputOverInputs(Console& console, const std::string& sOutput, const std::vector<std::string>& inputs);
/// The same for an output that is also another one.
void RefuseOutputOverOutputs(Console& console, const std::string& sOutput, const std::vector<std::string>& outputs);

}  // namespace laminate::cli
