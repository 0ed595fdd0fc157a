#pragma once
#include <string>
#include <string_view>

#include "save/FreshForms.h"
#include "save/SaveLosses.h"
#include "save/SourceDesign.h"

namespace laminate {

/// The text of a footprint file in which a design is saved: that of its source, from which `source` was read, changed
/// where the design has changed. As `PreservedBoard::Text` otherwise.
std::string PreservedFootprints(const SavedDesign& design, const OwnedDesign& source, std::string_view text,
                                SaveLosses& losses);

}  // namespace laminate
