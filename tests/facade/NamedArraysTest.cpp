// Every named array of the library, held against what all of them promise.
#include <gtest/gtest.h>

#include <concepts>
#include <type_traits>

#include "laminate.h"

namespace {

template <class Array, class Element>
struct Named {
  using ArrayType = Array;
  using ElementType = Element;
};

template <class T>
struct NamedArrays : testing::Test {};
template <class T>
struct PlainArrays : testing::Test {};
template <class T>
struct PersistedArrays : testing::Test {};

// Those that add at most a look-up: 36 of the 63.
using PlainTypes = testing::Types<
    Named<CBDbondwireArray, CBDbondwire>, Named<CBDcompGroupArray, CBDcompGroup>,
    Named<CBDcomponentArray, CBDcomponent>, Named<CBDcondLayerArray, CBDcondLayer>,
    Named<CBDcondLayerRefArray, CBDcondLayerRef>, Named<CBDcorrespondenceArray, CBDcorrespondence>,
    Named<CBDdrawObjArray, CBDdrawObj>, Named<CBDfootprintArray, CBDfootprint>,
    Named<CBDfootprintLayerArray, CBDfootprintLayer>, Named<CBDgateArray, CBDgate>, Named<CBDgatePinArray, CBDgatePin>,
    Named<CBDlayerParameterArray, CBDlayerParameter>, Named<CBDlibFootprintArray, CBDlibFootprint>,
    Named<CBDlibPadArray, CBDlibPad>, Named<CBDlibPadstackArray, CBDlibPadstack>, Named<CBDmapArray, CBDmap>,
    Named<CBDnetArray, CBDnet>, Named<CBDnonConductiveLayerArray, CBDnonConductiveLayer>,
    Named<CBDopenShapeArray, CBDopenShape>, Named<CBDpadArray, CBDpad>, Named<CBDpadSetArray, CBDpadSet>,
    Named<CBDpadstackRefLayArray, CBDpadstackRefLay>, Named<CBDpinArray, CBDpin>, Named<CBDpinGateArray, CBDpinGate>,
    Named<CBDrefPinArray, CBDrefPin>, Named<CBDsubBoardArray, CBDsubBoard>, Named<CBDsubLayerArray, CBDsubLayer>,
    Named<CBDtextSizeArray, CBDtextSize>, Named<CBDvertexArray, CBDvertex>,
    Named<CBDvisibleLayerSetArray, CBDvisibleLayerSet>, Named<CVRXoutPrfPartGateDefArray, CVRXoutPrfPartGateDef>,
    Named<CVRXoutPrfPartPortArray, CVRXoutPrfPartPort>, Named<CECadClsLvlArray, CECadClsLvl>,
    Named<CBDpadstackArray, CBDpadstack>, Named<CBDtoeprintPinArray, CBDtoeprintPin>,
    Named<CWOQBDLayerForExportArray, CWOQBDLayerForExport>>;

// Those that also copy, compare and go to an archive: 27 of the 63.
using PersistedTypes = testing::Types<
    Named<CVRXoutLcdbCmpCompPinArray, CVRXoutLcdbCmpCompPin>, Named<CVRXoutPackageArray, CVRXoutPackage>,
    Named<CVRXoutPackageMountFormArray, CVRXoutPackageMountForm>, Named<CVRXoutPrfFunctionArray, CVRXoutPrfFunction>,
    Named<CVRXoutPrfFunctionPortArray, CVRXoutPrfFunctionPort>, Named<CVRXoutPrfPinAssignArray, CVRXoutPrfPinAssign>,
    Named<CVRXoutPrfPinAssignFuncInstArray, CVRXoutPrfPinAssignFuncInst>,
    Named<CVRXoutPrfPinAssignFuncInstPortArray, CVRXoutPrfPinAssignFuncInstPort>,
    Named<CVRXoutPrfPinAssignPortArray, CVRXoutPrfPinAssignPort>,
    Named<CVRXoutRufBoardSpecDefaultGridArray, CVRXoutRufBoardSpecDefaultGrid>,
    Named<CVRXoutRufBoardSpecDrillingRuleArray, CVRXoutRufBoardSpecDrillingRule>,
    Named<CVRXoutRufBoardSpecGridDefArray, CVRXoutRufBoardSpecGridDef>,
    Named<CVRXoutRufBoardSpecpatternWidthArray, CVRXoutRufBoardSpecpatternWidth>,
    Named<CVRXoutRufCompArray, CVRXoutRufComp>, Named<CVRXoutRufNetArray, CVRXoutRufNet>,
    Named<CVRXoutRufNetFuncTermArray, CVRXoutRufNetFuncTerm>,
    Named<CVRXoutRufRuleElectricalNetArray, CVRXoutRufRuleElectricalNet>,
    Named<CVRXoutRufStackupLayerArray, CVRXoutRufStackupLayer>, Named<CVRXoutRufRuleBoardArray, CVRXoutRufRuleBoard>,
    Named<CVRXoutRufRuleTraceRuleStackEachLayerArray, CVRXoutRufRuleTraceRuleStackEachLayer>,
    Named<CVRXoutRufRuleDesignRuleStackArray, CVRXoutRufRuleDesignRuleStack>,
    Named<CVRXoutRufRuleDesignRuleStackEachLayerArray, CVRXoutRufRuleDesignRuleStackEachLayer>,
    Named<CVRXoutRufRuleTraceRuleStackArray, CVRXoutRufRuleTraceRuleStack>, Named<CVRXoutRufRuleArray, CVRXoutRufRule>,
    Named<CVRXoutRufRuleArrayArray, CVRXoutRufRuleArray>, Named<CVRXoutLcdbCmpCompArray, CVRXoutLcdbCmpComp>,
    Named<CVRXoutPrfPartArray, CVRXoutPrfPart>>;

template <class, class>
struct Join;
template <class... A, class... B>
struct Join<testing::Types<A...>, testing::Types<B...>> {
  using Type = testing::Types<A..., B...>;
  static_assert(sizeof...(A) == 36 && sizeof...(B) == 27, "an array was lost or is new");
};
using AllTypes = Join<PlainTypes, PersistedTypes>::Type;
TYPED_TEST_SUITE(NamedArrays, AllTypes);
TYPED_TEST_SUITE(PlainArrays, PlainTypes);
TYPED_TEST_SUITE(PersistedArrays, PersistedTypes);

int g_nDestroyed = 0;

// An element that counts its end, where the element's class allows heirs.
template <class Element>
struct Counted : Element {
  ~Counted() { ++g_nDestroyed; }
};

template <class Element>
using CountedIfItCan = typename std::conditional_t<std::is_final_v<Element>, std::type_identity<Element>,
                                                   std::type_identity<Counted<Element>>>::type;

TYPED_TEST(NamedArrays, IsAClassOfItsOwnOverPointersOfItsElement) {
  using Array = typename TypeParam::ArrayType;
  using Element = typename TypeParam::ElementType;
  static_assert(std::is_base_of_v<CExPtrArray<Element*, Element*>, Array>);
  static_assert(std::has_virtual_destructor_v<Array>);
  static_assert(std::is_default_constructible_v<Array>);
  static_assert(!std::is_same_v<Array, laminate::NamedArray<Element>>);
  const Array array;
  EXPECT_TRUE(array.IsEmpty());
  EXPECT_EQ(array.GetAt(0), nullptr);
  EXPECT_EQ(array.GetAt(-1), nullptr);
}

TYPED_TEST(NamedArrays, DeletesItsElementsWithItself) {
  using Array = typename TypeParam::ArrayType;
  using Element = typename TypeParam::ElementType;
  if constexpr (std::is_final_v<Element> || !std::has_virtual_destructor_v<Element>) {
    // No heir can count here: the leak checker of the sanitizer run tells whether the elements went.
    Array array;
    array.Add(new Element);
    array.Add(nullptr);
    array.Add(new Element);
    EXPECT_EQ(array.GetSize(), 3);
  } else {
    g_nDestroyed = 0;
    {
      Array array;
      array.Add(new Counted<Element>);
      array.Add(nullptr);
      array.Add(new Counted<Element>);
      EXPECT_EQ(g_nDestroyed, 0);
    }
    EXPECT_EQ(g_nDestroyed, 2);
  }
}

TYPED_TEST(NamedArrays, GivesItsElementsAwayWhenSizedToNothing) {
  using Array = typename TypeParam::ArrayType;
  using Element = typename TypeParam::ElementType;
  g_nDestroyed = 0;
  CountedIfItCan<Element> element;
  {
    Array array;
    array.Add(&element);
    array.SetSize(0, -1);
  }
  // Of a class that allows no heirs the deletion would be a fault in itself: the object is none of the heap.
  EXPECT_EQ(g_nDestroyed, 0);
}

TYPED_TEST(NamedArrays, HasTheOperationsOfItsTemplate) {
  using Array = typename TypeParam::ArrayType;
  using Element = typename TypeParam::ElementType;
  Array array;
  CExPtrArray<Element*, Element*> taken;
  auto* const p = new Element;
  auto* const q = new Element;
  EXPECT_EQ(array.Add_if_only_do_not_exists(p), 0);
  EXPECT_EQ(array.Add_if_only_do_not_exists(p), -1);
  array.Add(q);
  array.Add(nullptr);
  array.Add(q);
  array.RemoveNullElement();
  array.RemoveDuplicatedElements();
  array.Reverse();
  EXPECT_EQ(array.GetAt(0), q);
  EXPECT_EQ(array.GetLastElement(), p);
  EXPECT_EQ(array.GetLastIndex(), 1);
  EXPECT_TRUE(array.IsValidIndex(1));
  EXPECT_EQ(array.FindIndex(p), 1);
  EXPECT_TRUE(array.Exists(q));
  array.SetAt(2, p);
  EXPECT_TRUE(array.MoveElementTo(taken, 0, 0));
  EXPECT_FALSE(array.IsElementEqual(taken));
  array.Append(taken);
  array.Subtract(taken);
  EXPECT_TRUE(array.Remove(p));
  array.Add(p);
  EXPECT_EQ(array.RemoveLastElement(), p);
  EXPECT_FALSE(array.Delete(p));
  EXPECT_FALSE(array.DeleteLastElement());
  array.Add(p);
  array.DeleteAt(0, 1);
  array.Add(q);
  array.DeleteAll();
  EXPECT_TRUE(array.IsEmpty());
}

TYPED_TEST(PlainArrays, AreNeitherCopiedNorCompared) {
  using Array = typename TypeParam::ArrayType;
  static_assert(!std::is_copy_constructible_v<Array> && !std::is_copy_assignable_v<Array>);
  static_assert(!std::equality_comparable<Array>);
}

TYPED_TEST(PersistedArrays, CopiesComparesAndClones) {
  using Array = typename TypeParam::ArrayType;
  using Element = typename TypeParam::ElementType;
  static_assert(std::is_copy_constructible_v<Array> && std::is_copy_assignable_v<Array>);
  EXPECT_EQ(Array::m_nVersion, 1);
  Array array;
  Array empty;
  EXPECT_TRUE(array == empty);
  EXPECT_FALSE(array != empty);
  array.Add(new Element);
  EXPECT_TRUE(array == array);
  EXPECT_FALSE(array == empty);
  EXPECT_TRUE(array != empty);
  Array copy(array);
  ASSERT_EQ(copy.GetSize(), 1);
  EXPECT_NE(copy.GetAt(0), array.GetAt(0));
  Array assigned;
  assigned.Add(new Element);
  assigned = array;
  ASSERT_EQ(assigned.GetSize(), 1);
  EXPECT_NE(assigned.GetAt(0), array.GetAt(0));
  assigned = *&assigned;
  EXPECT_EQ(assigned.GetSize(), 1);
  auto* pClone = array.clone();
  ASSERT_NE(pClone, nullptr);
  EXPECT_EQ(pClone->GetSize(), 1);
  EXPECT_NE(pClone->GetAt(0), array.GetAt(0));
  delete pClone;
}

}  // namespace
