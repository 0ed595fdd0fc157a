// What is told of shapes that only a host can make: null slots, and vertices that are not what they say.
#include "facade/ShapeLosses.h"

#include <gtest/gtest.h>

#include "drawobj/CBDline.h"
#include "drawobj/CBDsurface.h"
#include "drawobj/CBDvertexArc.h"
#include "drawobj/CBDvertexPt.h"

namespace {

// Each loss as "where: field", or why it is one of the object as a whole.
std::vector<std::string> LossesOf(const CBDdrawObj& shape) {
  std::vector<std::string> losses;
  const std::function<void(const laminate::ExportLoss&)> tell = [&losses](const laminate::ExportLoss& loss) {
    losses.push_back(loss.object + ": " + std::string(loss.field.empty() ? loss.note : loss.field));
  };
  laminate::LossFinder finder(tell);
  laminate::FindShapeLosses(shape, laminate::ExportPlace::inside, finder);
  return losses;
}

CBDvertexPt& AddPt(CBDvertexArray& vertices) {
  vertices.Add(new CBDvertexPt);
  return static_cast<CBDvertexPt&>(*vertices.GetLastElement());
}

TEST(ShapeLosses, NullSlotsAreNoVertices) {
  CBDsurface surface;
  AddPt(*surface.m_pVertices);
  surface.m_pVertices->Add(nullptr);
  surface.m_pVertices->Add(nullptr);
  EXPECT_EQ(LossesOf(surface), std::vector<std::string>{": fewer than three points"});

  CBDline line;
  line.m_pVertices->Add(nullptr);
  for (int i = 0; i < 3; ++i) {
    CBDfillet& fillet = *AddPt(*line.m_pVertices).m_pFillet;
    fillet.m_dFilletWidth = 1;
    fillet.m_sDir = "D";
  }
  line.m_pVertices->Add(nullptr);
  // The first and the last point are the ends, which keep no direction.
  EXPECT_EQ(LossesOf(line),
            (std::vector<std::string>{"m_pVertices[1].m_pFillet: m_sDir", "m_pVertices[3].m_pFillet: m_sDir"}));
}

TEST(ShapeLosses, AVertexThatDoesNotFitItsClassIsToldAsAWhole) {
  CBDline line;
  AddPt(*line.m_pVertices).m_sType = "ARC";
  line.m_pVertices->Add(new CBDvertexArc);
  line.m_pVertices->GetAt(1)->m_sType = "PT";
  line.m_pVertices->Add(new CBDvertexArc);
  line.m_pVertices->GetAt(2)->m_sType = "BOW";
  EXPECT_EQ(LossesOf(line), (std::vector<std::string>{"m_pVertices[0]: its type is not that of its class",
                                                      "m_pVertices[1]: its type is not that of its class"}));
}

}  // namespace
