#pragma once
// The proof of a save: what was put together is read and held against the design, before any file is touched.
#include <string>

#include "save/FreshForms.h"
#include "save/SaveLosses.h"

namespace laminate {

/// Raises `CInvalidArgException`: a text that was put together does not read back as what was to be said.
[[noreturn]] void RaiseDoesNotReadBack(const std::string& sWhat);

/// Whether two designs hold the same of all that stands outside components and layout of a board file.
bool HasSameRecords(const SavedDesign& a, const SavedDesign& b);

/// Raise where the whole file does not read back as the design. What was allowed to be lost need not come back.
void RequireBoardReadsBack(const SavedDesign& design, const std::string& sText, const SaveLosses& losses);
void RequireFootprintsReadBack(const SavedDesign& design, const std::string& sText, const SaveLosses& losses);

}  // namespace laminate
