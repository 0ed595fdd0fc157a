#pragma once
// A small board in memory, edited by a test and saved over its own text.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "board/CBDboardContainer.h"
#include "board/CBDcompGroup.h"
#include "board/CBDcomponent.h"
#include "board/CBDlibraryEntities.h"
#include "board/CBDnet.h"
#include "board/CBDparameter.h"
#include "board/CBDpin.h"
#include "drawobj/CBDline.h"
#include "save/Content.h"
#include "save/PreservedBoard.h"
#include "save/PreservedFootprints.h"
#include "save/SourceDesign.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDtechnologyContainer.h"

namespace laminate::test {

/// A text with the readings of it: the one that a host edits, and the one that a save makes.
class EditedBoard {
 public:
  explicit EditedBoard(const std::string& sText) : m_text{std::string(sText)} {
    EXPECT_TRUE(m_design.ReadBoardFile(m_text.View())) << m_design.Status().m_sText.GetString();
  }
  const OwnedDesign& Design() const { return m_design.Design(); }
  CBDboardContainer& Board() { return *Design().pBoard; }
  CBDcomponent& Component(int n) { return *Board().m_pComponentArray->GetAt(n); }
  CBDnet& Net(int n) { return *Board().m_pNetArray->GetAt(n); }
  CBDdrawObj& Shape(int n) { return *Board().m_pDrawObjArray->GetAt(n); }

  /// The saved text; what is told of losses is left in `losses`.
  std::string Save() {
    SourceDesign source;
    EXPECT_TRUE(source.ReadBoardFile(m_text.View()));
    return PreservedBoard(Design().View(), source, m_text.View(), losses).Text();
  }
  SaveLosses losses;

 private:
  HeldText m_text;
  SourceDesign m_design;
};

/// Whether a text reads as the design.
inline bool ReadsAs(const std::string& sText, const OwnedDesign& design) {
  const HeldText text{std::string(sText)};
  SourceDesign got;
  if (!got.ReadBoardFile(text.View())) return false;
  const OwnedDesign& a = got.Design();
  return a.sVersion == design.sVersion && SameContent(*a.pTechnology, *design.pTechnology) &&
         SameRecords(*a.pBoard, *design.pBoard) && SameContent(*a.pParameter, *design.pParameter) &&
         SameContent(*a.pLibraryEntities, *design.pLibraryEntities) && SameComponents(*a.pBoard, *design.pBoard) &&
         SameShapes(*a.pBoard, *design.pBoard);
}

}  // namespace laminate::test
