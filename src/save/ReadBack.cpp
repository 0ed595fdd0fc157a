#include "save/ReadBack.h"

#include "base/CException.h"
#include "board/CBDboardContainer.h"
#include "board/CBDlibraryEntities.h"
#include "board/CBDparameter.h"
#include "save/Content.h"
#include "save/SourceDesign.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDtechnologyContainer.h"

namespace laminate {

void RaiseDoesNotReadBack(const std::string& sWhat) {
  throw CInvalidArgException("what would be saved does not read back as the design: " + sWhat);
}

bool HasSameRecords(const SavedDesign& a, const SavedDesign& b) {
  return *a.pVersion == *b.pVersion && SameContent(*a.pTechnology, *b.pTechnology) &&
         SameRecords(*a.pBoard, *b.pBoard) && SameContent(*a.pParameter, *b.pParameter) &&
         SameContent(*a.pLibraryEntities, *b.pLibraryEntities);
}

void RequireBoardReadsBack(const SavedDesign& design, const std::string& sText, const SaveLosses& losses) {
  const HeldText held{std::string(sText)};
  SourceDesign got;
  if (!got.ReadBoardFile(held.View())) RaiseDoesNotReadBack("the board file");
  if (!losses.Allowed().empty()) return;
  const SavedDesign saved = got.Design().View();
  if (!HasSameRecords(saved, design)) RaiseDoesNotReadBack("the records of the board");
  if (!SameComponents(*saved.pBoard, *design.pBoard)) RaiseDoesNotReadBack("the components");
  if (!SameShapes(*saved.pBoard, *design.pBoard)) RaiseDoesNotReadBack("the shapes of the layout");
}

void RequireFootprintsReadBack(const SavedDesign& design, const std::string& sText, const SaveLosses& losses) {
  const HeldText held{std::string(sText)};
  OwnedDesign got;
  if (!ReadFootprintText(held.View(), got) ||
      (losses.Allowed().empty() && !(SameContent(*got.pFtfTechnology, *design.pFtfTechnology) &&
                                     SameContent(*got.pFootprints, *design.pFootprints)))) {
    RaiseDoesNotReadBack("the footprint file");
  }
}

}  // namespace laminate
