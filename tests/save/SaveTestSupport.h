#pragma once
// Designs in memory, from texts and back, and what they hold as text.
#include <string>

#include "base/LoadStatus.h"
#include "board/CBDboardContainer.h"
#include "board/CBDlibraryEntities.h"
#include "board/CBDparameter.h"
#include "save/FreshForms.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDtechnologyContainer.h"

namespace laminate::test {

/// The two files of a design.
struct DesignTexts {
  std::string sBoard;
  std::string sFootprints;
};

/// A design with all that the root of one holds.
struct Design {
  CString sVersion = "2.0";
  CBDtechnologyContainer technology;
  CBDtechnologyContainer ftfTechnology;
  CBDfootprintContainer footprints;
  CBDboardContainer board;
  CBDparameter parameter;
  CBDlibraryEntities entities;
  int bInQuote = 0;
  int nComponents = 0;
  int nLayers = 0;
  LoadStatus status;

  SavedDesign Saved() const;
};

/// Loads files as the root of a design does; an empty path is no file. False when the loader tells a fault.
bool Load(const std::string& sBoardPath, const std::string& sFootprintPath, Design& design);
/// The same from texts, which become files for that time.
bool Load(const DesignTexts& texts, Design& design);

DesignTexts FreshTexts(const Design& design, SaveLosses& losses);

/// Every field of every object, a line each.
std::string Dump(const Design& design);

}  // namespace laminate::test
