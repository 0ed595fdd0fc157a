// Designs that are written anew, read again, and held against what they were.
#include <gtest/gtest.h>

#include "board/CBDcomponent.h"
#include "save/RandomDesign.h"
#include "save/RoundTrip.h"

namespace laminate::test {
namespace {

TEST(Fresh, AnEmptyDesign) {
  const Design design;
  ExpectRoundTrip(design);
  SaveLosses losses;
  EXPECT_EQ(FreshTexts(design, losses).sBoard,
            "(pcf\n(header\n(version 2.0)\n(unit MM)\n(timeZone \"\")\n)\n"
            "(boardContainer\n(components\n)\n(boardLayout\n(layout)\n)\n)\n(parameter)\n(libraryEntities)\n)\n");
}

TEST(Fresh, ThereAreAsManyComponentAndLayerFormsAsTheReaderCounted) {
  Design design;
  design.nLayers = 3;
  design.board.m_pComponentArray->Add(new CBDcomponent);
  SaveLosses losses;
  Design again;
  ASSERT_TRUE(Load(FreshTexts(design, losses), again));
  EXPECT_EQ(again.nLayers, 3);
  EXPECT_EQ(again.nComponents, 1);
}

class FreshRandom : public ::testing::TestWithParam<unsigned> {};

TEST_P(FreshRandom, ReadsBackToTheSame) {
  Design design;
  RandomDesign(GetParam()).Fill(design);
  ExpectRoundTrip(design);
}

INSTANTIATE_TEST_SUITE_P(Seeds, FreshRandom, ::testing::Range(0u, 150u));

}  // namespace
}  // namespace laminate::test
