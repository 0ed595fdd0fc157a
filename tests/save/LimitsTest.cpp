// What cannot be said is refused, by name, and left out where that is allowed.
#include "save/LimitsPage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "base/TestFolder.h"
#include "save/FieldsBoard.h"
#include "save/FieldsDrawObj.h"
#include "save/FieldsTechnology.h"
#include "save/RandomDesign.h"

namespace laminate::test {
namespace {

TEST(Limits, ASpoiledDesignIsRefusedByTheNameOfTheField) {
  for (const Spoiling& spoiling : Spoilings()) {
    SCOPED_TRACE(spoiling.sField);
    Design design;
    spoiling.spoil(design);
    SaveLosses losses;
    FreshTexts(design, losses);
    ASSERT_TRUE(losses.IsRefused());
    for (const SaveLoss& loss : losses.Refused()) EXPECT_EQ(loss.name, spoiling.sField) << loss.object;
  }
}

TEST(Limits, AnAllowedLossIsLeftOutOfFilesThatRead) {
  for (const Spoiling& spoiling : Spoilings()) {
    SCOPED_TRACE(spoiling.sField);
    Design design;
    spoiling.spoil(design);
    SaveLosses losses;
    losses.Allow(spoiling.sField);
    const DesignTexts texts = FreshTexts(design, losses);
    EXPECT_FALSE(losses.IsRefused());
    EXPECT_FALSE(losses.Allowed().empty());
    Design again;
    EXPECT_TRUE(Load(texts, again)) << texts.sBoard << texts.sFootprints;
    SaveLosses none;
    FreshTexts(again, none);
    EXPECT_FALSE(none.IsRefused());
  }
}

TEST(Limits, ARefusalTellsTheObjectByItsPath) {
  Design design;
  auto* const pComponent = new CBDcomponent;
  pComponent->m_sReference = "R12";
  auto* const pPin = new CBDpin;
  pPin->m_sName = "2";
  auto* const pOval = new CBDoval;
  pOval->m_sNet = "GND";
  pPin->m_pDrawObjArray->Add(pOval);
  pComponent->m_pPinArray->Add(pPin);
  design.board.m_pComponentArray->Add(pComponent);
  SaveLosses losses;
  FreshTexts(design, losses);
  ASSERT_EQ(losses.Refused().size(), 1u);
  EXPECT_EQ(losses.Refused()[0].object, "m_pBoardContainer.m_pComponentArray[R12].m_pPinArray[2].m_pDrawObjArray[0]");
  EXPECT_EQ(losses.Refused()[0].value, "GND");
}

TEST(Limits, EmptySlotsAndMissingArraysAreRefused) {
  {
    Design design;
    design.board.m_pNetArray->Add(nullptr);
    SaveLosses losses;
    FreshTexts(design, losses);
    ASSERT_EQ(losses.Refused().size(), 1u);
    EXPECT_EQ(losses.Refused()[0].name, "CBDboardContainer.m_pNetArray");
  }
  Design design;
  delete std::exchange(design.board.m_pNetArray, nullptr);
  SaveLosses losses;
  FreshTexts(design, losses);
  ASSERT_EQ(losses.Refused().size(), 1u);
  EXPECT_EQ(losses.Refused()[0].reason, "the array is missing");
}

// ---- no field is forgotten ----

template <class X>
struct IsCArray {
  template <class TYPE, class ARG_TYPE>
  static std::true_type Test(const CArray<TYPE*, ARG_TYPE>*);
  static std::false_type Test(...);
  static constexpr bool value = decltype(Test(static_cast<X*>(nullptr)))::value;
};

// The names of the fields that hold values and no objects.
template <class T>
void ListFields(std::set<std::string>& names) {
  FieldsOf<T>::ForEachOwn([&](std::string_view sName, auto pMember) {
    using Field = std::remove_reference_t<decltype(std::declval<T&>().*pMember)>;
    if (!std::is_pointer_v<Field> && !IsCArray<Field>::value) {
      names.insert(std::string(ClassName<T>()) + "." + std::string(sName));
    }
  });
}

TEST(Limits, EveryFieldIsSaidOrRefused) {
  std::set<std::string> fields;
  const auto list = [&fields]<class... T>() { (ListFields<T>(fields), ...); };
  list.operator()<CBDdrawObj, CBDcircle, CBDdelete, CBDdonut, CBDdrawPad, CBDdrawPadstack, CBDdrawSubBoard, CBDhole,
                  CBDline, CBDoblong, CBDopenShape, CBDoval, CBDovalHole, CBDrectangle, CBDroundThermal, CBDsquareHole,
                  CBDsquareThermal, CBDsurface, CBDsymbolText, CBDtext, CBDpadstackRefLay, CBDfillet, CBDvertex,
                  CBDvertexPt, CBDvertexArc>();
  list.operator()<CBDtechnologyContainer, CBDfootprintLayer, CBDnonConductiveLayer, CBDcondLayer, CBDcondLayerRef,
                  CBDsubLayer, CBDmap, CBDcorrespondence, CBDfootprintContainer, CBDpad, CBDpadstack, CBDpadstackHole,
                  CBDpadSet, CBDfootprint, CBDheelprint, CBDtoeprintPin>();
  list.operator()<CBDboardContainer, CBDcomponent, CBDgate, CBDgatePin, CBDpin, CBDpinGate, CBDbondwire, CBDcompGroup,
                  CBDnet, CBDrefPin, CBDsubBoard, CBDparameter, CBDvisibleLayerSet, CBDtextSize, CBDlayerParameter,
                  CBDlibraryEntities, CBDlibFootprint, CBDlibPadstack, CBDlibPad>();
  std::set<std::string> known;
  for (const Spoiling& spoiling : Spoilings()) known.insert(spoiling.sField);
  for (unsigned nSeed = 0; nSeed < 20; ++nSeed) {
    Design design;
    RandomDesign random(nSeed);
    random.Fill(design);
    known.insert(random.FilledFields().begin(), random.FilledFields().end());
  }
  for (const std::string& sField : fields) EXPECT_TRUE(known.contains(sField)) << sField;
}

TEST(Limits, ThePageIsUpToDate) { EXPECT_EQ(ReadFile(SAVE_PAGE), LimitsPage()) << "write_limits > docs/save.md"; }

}  // namespace
}  // namespace laminate::test
