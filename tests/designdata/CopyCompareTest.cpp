// Copying and comparing records: the rule for every field of every class, and the classes that depart from it.
#include <limits>
#include <set>
#include <type_traits>

#include "designdata/CWOQBDLayerForExport.h"
#include "designdata/DesignDataTestSupport.h"

namespace {

// ---- changing any field ----
void Change(CString& s) { s += "x"; }
void Change(int& n) { ++n; }
void Change(double& d) { d += 0.5; }
void Change(CStringArray& arr) { arr.Add("x"); }
template <class X>
void Change(laminate::NamedArray<X>& arr) {
  laminate::AppendOwned(arr, std::make_unique<X>());
}
template <class T>
requires requires { T::Fields(); }
void Change(T& record) {
  T::Fields().ForEach([&](auto field) {
    auto& value = record.*field.member;
    if constexpr (std::is_pointer_v<std::remove_reference_t<decltype(value)>>) {
      Change(*value);
    } else {
      Change(value);
    }
  });
}
template <class T>
void ChangeField(T& record, int nField) {
  int n = 0;
  T::Fields().ForEach([&](auto field) {
    if (n++ != nField) return;
    auto& value = record.*field.member;
    if constexpr (std::is_pointer_v<std::remove_reference_t<decltype(value)>>) {
      Change(*value);
    } else {
      Change(value);
    }
  });
}
template <class T>
int CountFields() {
  int n = 0;
  T::Fields().ForEach([&n](auto) { ++n; });
  return n;
}
template <class T>
std::string ShowField(const T& record, int nField) {
  std::string s;
  int n = 0;
  T::Fields().ForEach([&](auto field) {
    if (n++ != nField) return;
    const auto& value = record.*field.member;
    if constexpr (std::is_pointer_v<std::remove_cvref_t<decltype(value)>>) {
      s = Show(*value);
    } else {
      s = Show(value);
    }
  });
  return s;
}

// The fields, by their place in the list, that a copy or a comparison leaves out.
struct Deviations {
  std::set<int> notCopied = {};
  std::set<int> notCompared = {};
};

template <class T>
void CheckRule(const char* szName, const Deviations& deviations = {}) {
  SCOPED_TRACE(szName);
  const T fresh;
  T source;
  Change(source);
  Change(source);
  const int nFields = CountFields<T>();
  const auto checkCopy = [&](const T& copy, const T& before) {
    for (int i = 0; i < nFields; ++i) {
      EXPECT_EQ(ShowField(copy, i), ShowField(deviations.notCopied.contains(i) ? before : source, i)) << i;
    }
  };
  const std::string shown = Show(source);
  const T copied(source);
  checkCopy(copied, fresh);
  const std::unique_ptr<T> pClone(source.clone());
  checkCopy(*pClone, fresh);
  T assigned;
  Change(assigned);
  T before;
  Change(before);
  assigned = source;
  checkCopy(assigned, before);
  EXPECT_EQ(Show(source), shown);
  const T& self = assigned;
  assigned = self;
  checkCopy(assigned, before);
  // Comparison.
  EXPECT_EQ(copied == source, 1);
  EXPECT_EQ(copied != source, 0);
  EXPECT_EQ(source == copied, 1);
  EXPECT_EQ(source == source, 1);
  EXPECT_EQ(fresh == T(), 1);
  EXPECT_EQ(fresh == source, 0);
  for (int i = 0; i < nFields; ++i) {
    T other(source);
    const int bEqual = deviations.notCompared.contains(i);
    ChangeField(other, i);
    EXPECT_EQ(other == source, bEqual) << i;
    EXPECT_EQ(source == other, bEqual) << i;
    EXPECT_EQ(source != other, !bEqual) << i;
    // What the copy holds is its own.
    EXPECT_EQ(Show(source), shown) << i;
  }
}

TEST(RecordCopy, FollowsTheRule) {
  CheckRule<CVRXoutPackage>("package");
  CheckRule<CVRXoutPackageMountForm>("mount form");
  CheckRule<CVRXoutPrfFunction>("function");
  CheckRule<CVRXoutPrfFunctionPort>("function port");
  CheckRule<CVRXoutPrfPinAssign>("pin assign");
  CheckRule<CVRXoutPrfPinAssignPort>("pin-assign port");
  CheckRule<CVRXoutPrfPinAssignFuncInst>("function instance");
  CheckRule<CVRXoutPrfPinAssignFuncInstPort>("function-instance port");
  CheckRule<CVRXoutLcdbCmpComp>("library component");
  CheckRule<CVRXoutLcdbCmpCompPin>("library pin");
  CheckRule<CVRXoutRufBoardSpecDefaultGrid>("default grid");
  CheckRule<CVRXoutRufBoardSpecDrillingRule>("drilling rule");
  CheckRule<CVRXoutRufBoardSpecGridDef>("grid definition");
  CheckRule<CVRXoutRufBoardSpecpatternWidth>("pattern width");
  CheckRule<CVRXoutRufComp>("component settings");
  CheckRule<CVRXoutRufNet>("net");
  CheckRule<CVRXoutRufNetFuncTerm>("terminal");
  CheckRule<CVRXoutRufRule>("rule");
  CheckRule<CVRXoutRufRuleBoard>("board setting");
  CheckRule<CVRXoutRufRuleDesignRuleStack>("design-rule stack");
  CheckRule<CVRXoutRufRuleDesignRuleStackEachLayer>("design-rule layer");
  CheckRule<CVRXoutRufRuleTraceRuleStack>("trace-rule stack");
  CheckRule<CVRXoutRufRuleTraceRuleStackEachLayer>("trace-rule layer");
  // The loss tangent, last in the list, is left out of both.
  CheckRule<CVRXoutRufStackupLayer>("stack-up layer", {.notCopied = {10}, .notCompared = {10}});
}

TEST(RecordCopy, StackupLayerLeavesOutItsLossTangent) {
  CVRXoutRufStackupLayer a;
  a.m_dLossTangent = 0.5;
  a.m_sMaterial = "M";
  const CVRXoutRufStackupLayer b(a);
  EXPECT_EQ(b.m_dLossTangent, 0.0);
  EXPECT_EQ(b.m_sMaterial, "M");
  EXPECT_EQ(a == b, 1);
  CVRXoutRufStackupLayer c;
  c.m_dLossTangent = 0.25;
  c = a;
  EXPECT_EQ(c.m_dLossTangent, 0.25);
}

TEST(RecordCopy, ElectricalNetsAreAlwaysEqual) {
  CVRXoutRufRuleElectricalNet a;
  a.m_bPair = 1;
  a.m_sName = "E";
  a.m_aNetNames.Add("A");
  const CVRXoutRufRuleElectricalNet b(a);
  EXPECT_EQ(Show(b), "{E,[A],0}");
  const std::unique_ptr<CVRXoutRufRuleElectricalNet> pClone(a.clone());
  EXPECT_EQ(Show(*pClone), "{E,[A],0}");
  CVRXoutRufRuleElectricalNet c;
  c.m_bPair = 7;
  c = a;
  EXPECT_EQ(Show(c), "{E,[A],7}");
  const CVRXoutRufRuleElectricalNet other;
  EXPECT_EQ(other == a, 1);
  EXPECT_EQ(other != a, 0);
  EXPECT_EQ(a == a, 1);
  // Arrays of them differ by their size only.
  CVRXoutRufRuleElectricalNetArray x;
  CVRXoutRufRuleElectricalNetArray y;
  laminate::AppendOwned(x, std::make_unique<CVRXoutRufRuleElectricalNet>(a));
  EXPECT_FALSE(x == y);
  laminate::AppendOwned(y, std::make_unique<CVRXoutRufRuleElectricalNet>());
  EXPECT_TRUE(x == y);
}

TEST(RecordCopy, StackupsAreNeitherCopiedNorEqual) {
  CVRXoutRufStackup a;
  a.m_sBaseMaterial = "B";
  laminate::AppendOwned(*a.m_pLayerArray, std::make_unique<CVRXoutRufStackupLayer>());
  const CVRXoutRufStackup copy(a);
  EXPECT_EQ(Show(copy), "{[],}");
  EXPECT_NE(copy.m_pLayerArray, a.m_pLayerArray);
  const std::unique_ptr<CVRXoutRufStackup> pClone(a.clone());
  EXPECT_EQ(Show(*pClone), "{[],}");
  CVRXoutRufStackup target;
  target.m_sBaseMaterial = "T";
  EXPECT_EQ(&(target = a), &target);
  EXPECT_EQ(Show(target), "{[],T}");
  EXPECT_EQ(a == a, 1);
  EXPECT_EQ(a != a, 0);
  EXPECT_EQ(CVRXoutRufStackup() == CVRXoutRufStackup(), 0);
  EXPECT_EQ(CVRXoutRufStackup() != CVRXoutRufStackup(), 1);
  CVRXoutRufStackup differs;
  differs.m_sBaseMaterial = "C";
  EXPECT_EQ(differs == CVRXoutRufStackup(), 0);
}

TEST(RecordCopy, BoardSpecsAreCopiedButEqualOnlyToThemselves) {
  CVRXoutRufBoardSpec a;
  Change(a);
  CVRXoutRufBoardSpec copy(a);
  EXPECT_EQ(Show(copy), Show(a));
  EXPECT_EQ(copy == a, 0);
  EXPECT_EQ(copy != a, 1);
  EXPECT_EQ(a == a, 1);
  EXPECT_EQ(a != a, 0);
  const std::unique_ptr<CVRXoutRufBoardSpec> pClone(a.clone());
  EXPECT_EQ(Show(*pClone), Show(a));
  copy.m_aDefaultGrid.GetAt(0)->m_sName = "own";
  EXPECT_EQ(a.m_aDefaultGrid.GetAt(0)->m_sName, "");
  CVRXoutRufBoardSpec target;
  Change(target);
  Change(target);
  target = a;
  EXPECT_EQ(Show(target), Show(a));
}

TEST(RecordCopy, RuleArraysKeepTheirNames) {
  CVRXoutRufRuleArray a;
  a.m_sName = "a";
  Change(a);
  const CVRXoutRufRuleArray copy(a);
  EXPECT_EQ(copy.m_sName, "");
  EXPECT_EQ(Show(copy), Show(a));
  EXPECT_EQ(copy == a, true);
  const std::unique_ptr<CVRXoutRufRuleArray> pClone(a.clone());
  EXPECT_EQ(pClone->m_sName, "");
  EXPECT_EQ(pClone->GetSize(), 1);
  CVRXoutRufRuleArray target;
  target.m_sName = "t";
  target = a;
  EXPECT_EQ(target.m_sName, "t");
  EXPECT_EQ(target.GetSize(), 1);
  EXPECT_NE(target.GetAt(0), a.GetAt(0));
  CVRXoutRufRuleArrayArray arrays;
  laminate::AppendOwned(arrays, std::make_unique<CVRXoutRufRuleArray>(a));
  const CVRXoutRufRuleArrayArray copies(arrays);
  EXPECT_EQ(copies == arrays, true);
  EXPECT_EQ(Show(copies), "[[{,,,,0,}]]");
  arrays.GetAt(0)->GetAt(0)->m_dValue = 1;
  EXPECT_EQ(copies == arrays, false);
  EXPECT_EQ(copies != arrays, true);
}

TEST(RecordCopy, Arrays) {
  CVRXoutPackageArray a;
  CVRXoutPackageArray b;
  EXPECT_TRUE(a == b);
  EXPECT_TRUE(a == a);
  Change(a);
  Change(a);
  EXPECT_FALSE(a == b);
  b = a;
  EXPECT_TRUE(a == b);
  EXPECT_NE(a.GetAt(0), b.GetAt(0));
  b.GetAt(1)->vFindSpecWithNameAndNoneCaseRegister("s");
  EXPECT_TRUE(a != b);
  const CVRXoutPackageArray c(b);
  EXPECT_TRUE(c == b);
  const std::unique_ptr<CVRXoutPackageArray> pClone(b.clone());
  EXPECT_TRUE(*pClone == b);
  const CVRXoutPackageArray& self = b;
  b = self;
  EXPECT_EQ(b.GetSize(), 2);
  // Null slots are as if they were not there.
  CVRXoutPackageArray holes;
  holes.SetSize(1);
  EXPECT_TRUE(holes == CVRXoutPackageArray());
  a = holes;
  EXPECT_EQ(a.GetSize(), 0);
}

TEST(RecordCopy, AFacade) {
  CPC_BD_OutClsGet a;
  Change(a);
  a.m_sUnit = "unit";
  a.m_sHostText = "host";
  a.m_pElectricalNetArray->GetAt(0)->m_bPair = 1;
  const CPC_BD_OutClsGet copy(a);
  const std::unique_ptr<CPC_BD_OutClsGet> pClone(a.clone());
  CPC_BD_OutClsGet assigned;
  Change(assigned);
  Change(assigned);
  assigned = a;
  for (const CPC_BD_OutClsGet* p :
       {&copy, static_cast<const CPC_BD_OutClsGet*>(pClone.get()), static_cast<const CPC_BD_OutClsGet*>(&assigned)}) {
    EXPECT_EQ(p->m_sHostText, "host");
    EXPECT_EQ(p->m_sUnit, "host");
    EXPECT_EQ(Show(p->m_aHostList1), "[x]");
    EXPECT_EQ(Show(p->m_aHostList2), "[x]");
    EXPECT_EQ(*p->m_pPackageArray == *a.m_pPackageArray, true);
    EXPECT_EQ(*p->m_pLcdbCmpCompArray == *a.m_pLcdbCmpCompArray, true);
    EXPECT_EQ(*p->m_pPrfFunctionArray == *a.m_pPrfFunctionArray, true);
    EXPECT_EQ(*p->m_pPrfPinAssignArray == *a.m_pPrfPinAssignArray, true);
    EXPECT_EQ(*p->m_pRufCompArray == *a.m_pRufCompArray, true);
    EXPECT_EQ(*p->m_pPrfPartArray == *a.m_pPrfPartArray, true);
    EXPECT_EQ(*p->m_pRufNetArray == *a.m_pRufNetArray, true);
    EXPECT_EQ(*p->m_pRufRuleArray == *a.m_pRufRuleArray, true);
    EXPECT_EQ(*p->m_pRufRuleBoardArray == *a.m_pRufRuleBoardArray, true);
    EXPECT_EQ(*p->m_pDesignRuleStackArray == *a.m_pDesignRuleStackArray, true);
    EXPECT_EQ(*p->m_pTraceRuleStackArray == *a.m_pTraceRuleStackArray, true);
    EXPECT_EQ(Show(*p->m_pBoardSpec), Show(*a.m_pBoardSpec));
    EXPECT_EQ(Show(*p->m_pElectricalNetArray), "[{,[],0}]");
    EXPECT_NE(p->m_pRufRuleArray->GetAt(0), a.m_pRufRuleArray->GetAt(0));
    // Two facades are never equal, since their stack-ups are not.
    EXPECT_EQ(*p == a, 0);
    EXPECT_EQ(*p != a, 1);
  }
  // The stack-up stays that of the target.
  EXPECT_EQ(Show(*copy.m_pStackup), "{[],}");
  EXPECT_EQ(Show(*assigned.m_pStackup, laminate::kNotInImage), "{[{,,,1,1,0,0,0,0,},{,,,1,1,0,0,0,0,}],xx}");
  EXPECT_EQ(a == a, 1);
  EXPECT_EQ(a != a, 0);
}

// The list of fields names each class's form once; what departs from the rule is marked in it.
TEST(FieldList, MarksOfTheRecords) {
  const auto marks = [](auto fields) {
    std::vector<unsigned> list;
    fields.ForEach([&list](auto field) { list.push_back(field.marks); });
    return list;
  };
  using laminate::kNotCompared;
  using laminate::kNotCopied;
  using laminate::kNotInImage;
  using laminate::kShared;
  using laminate::kSinceVersion2;
  using List = std::vector<unsigned>;
  EXPECT_EQ(marks(CVRXoutRufStackupLayer::Fields()),
            (List{0, 0, 0, 0, 0, 0, 0, 0, kSinceVersion2, kSinceVersion2, kNotInImage | kNotCopied | kNotCompared}));
  EXPECT_EQ(marks(CVRXoutRufRuleElectricalNet::Fields()), (List{0, 0, kNotInImage | kNotCopied}));
  EXPECT_EQ(marks(CVRXoutPrfPart::Fields()), (List{0, 0, 0, 0, 0, 0, kShared, kShared, kShared, kShared}));
  EXPECT_EQ(marks(CVRXoutRufComp::Fields()), (List{0, 0, kSinceVersion2}));
  EXPECT_EQ(marks(CVRXoutRufRule::Fields()), (List{0, 0, 0, 0, 0, kSinceVersion2}));
  EXPECT_EQ(marks(CPC_BD_OutClsGet::Fields()),
            (List{0, kNotCopied | kNotCompared, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, kSinceVersion2, kSinceVersion2,
                  kSinceVersion2, kSinceVersion2, kSinceVersion2}));
}

// The unit is held against the other's host text.
TEST(RecordCopy, FacadesOfOneStackupCompareByTheirOtherFields) {
  // Two facades that a host made share one stack-up and one board spec: then the rest decides.
  CPC_BD_OutClsGet a;
  CPC_BD_OutClsGet b;
  delete std::exchange(b.m_pStackup, a.m_pStackup);
  delete std::exchange(b.m_pBoardSpec, a.m_pBoardSpec);
  EXPECT_EQ(a == b, 1);
  a.m_sUnit = "text";
  EXPECT_EQ(a == b, 0);
  b.m_sHostText = "text";
  EXPECT_EQ(a == b, 0);
  a.m_sHostText = "text";
  EXPECT_EQ(a == b, 1);
  EXPECT_EQ(b == a, 0);  // b's unit is empty
  b.m_sUnit = "text";
  EXPECT_EQ(b == a, 1);
  for (int i = 0; i < CountFields<CPC_BD_OutClsGet>(); ++i) {
    // Host text and unit are told above, stack-up and spec are one object; electrical nets differ by their number.
    if (i == 0 || i == 1 || i == 3 || i == 16) continue;
    CPC_BD_OutClsGet c(a);
    delete std::exchange(c.m_pStackup, a.m_pStackup);
    delete std::exchange(c.m_pBoardSpec, a.m_pBoardSpec);
    EXPECT_EQ(c == a, 1) << i;
    ChangeField(c, i);
    EXPECT_EQ(c == a, 0) << i;
    EXPECT_EQ(a != c, 1) << i;
    c.m_pStackup = nullptr;
    c.m_pBoardSpec = nullptr;
  }
  b.m_pStackup = nullptr;
  b.m_pBoardSpec = nullptr;
}

// The stack-up and the board spec decide each for itself.
TEST(RecordCopy, FacadesOfTwoStackupsOrTwoBoardSpecsDiffer) {
  CPC_BD_OutClsGet a;
  for (const bool bStackup : {true, false}) {
    CPC_BD_OutClsGet b;
    CVRXoutRufStackup* const pStackup = b.m_pStackup;
    CVRXoutRufBoardSpec* const pSpec = b.m_pBoardSpec;
    if (bStackup) {
      b.m_pStackup = a.m_pStackup;
    } else {
      b.m_pBoardSpec = a.m_pBoardSpec;
    }
    EXPECT_EQ(a == b, 0);
    b.m_pStackup = a.m_pStackup;
    b.m_pBoardSpec = a.m_pBoardSpec;
    EXPECT_EQ(a == b, 1);
    b.m_pStackup = pStackup;
    b.m_pBoardSpec = pSpec;
  }
}

// The host's texts are compared before any record, and so answer where records cannot.
TEST(RecordCopy, HostTextsOfFacadesAreComparedFirst) {
  CPC_BD_OutClsGet a;
  CPC_BD_OutClsGet b;
  delete std::exchange(b.m_pPackageArray, nullptr);
  EXPECT_THROW(static_cast<void>(a == b), CInvalidArgException);
  b.m_sHostText = "x";
  EXPECT_EQ(a == b, 0);
  b.m_sHostText = "";
  b.m_aHostList1.Add("x");
  EXPECT_EQ(a == b, 0);
  b.m_aHostList1.RemoveAll();
  b.m_aHostList2.Add("x");
  EXPECT_EQ(a == b, 0);
}

// Numbers are equal as numbers are.
TEST(RecordCopy, NumbersAreComparedExactly) {
  CVRXoutRufRule rule;
  rule.m_dValue = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(rule == CVRXoutRufRule(rule), 0);
  EXPECT_EQ(rule == rule, 1);
  rule.m_dValue = 0.0;
  CVRXoutRufRule other;
  other.m_dValue = -0.0;
  EXPECT_EQ(rule == other, 1);
  other.m_dValue = std::numeric_limits<double>::denorm_min();
  EXPECT_EQ(rule == other, 0);
}

// Arrays of different sizes differ before any element is looked at.
TEST(RecordCopy, ArraysAreComparedByTheirCountFirst) {
  CVRXoutPackageArray a;
  CVRXoutPackageArray b;
  for (CVRXoutPackageArray* p : {&a, &b, &b}) laminate::AppendOwned(*p, std::make_unique<CVRXoutPackage>());
  delete std::exchange(a.GetAt(0)->m_pMountFormArray, nullptr);
  EXPECT_FALSE(a == b);
  b.DeleteAt(1, 1);
  EXPECT_THROW(static_cast<void>(a == b), CInvalidArgException);
}

// Calls `check(holed, whole)` for each pointer of a record that it is without.
template <class T, class Check>
void ForEachHole(Check check) {
  int nField = 0;
  T::Fields().ForEach([&](auto field) {
    ++nField;
    if constexpr (std::is_pointer_v<std::remove_reference_t<decltype(std::declval<T&>().*field.member)>>) {
      SCOPED_TRACE(nField);
      T holed;
      T whole;
      delete std::exchange(holed.*field.member, nullptr);
      const std::string image = Image(whole);
      EXPECT_THROW(Image(holed), CInvalidArgException);
      EXPECT_THROW(LoadImage(holed, image), CInvalidArgException);
      check(holed, whole);
    }
  });
}
template <class T>
void ExpectCopiesRaise(T& holed, T& whole) {
  EXPECT_THROW(T copy(holed), CInvalidArgException);
  EXPECT_THROW(whole = holed, CInvalidArgException);
  EXPECT_THROW(holed = whole, CInvalidArgException);
}
template <class T>
void ExpectComparisonsRaise(const T& holed, const T& whole) {
  EXPECT_THROW(static_cast<void>(holed == whole), CInvalidArgException);
  EXPECT_THROW(static_cast<void>(whole == holed), CInvalidArgException);
}

template <class T>
void CheckNullPointers(const char* szName) {
  SCOPED_TRACE(szName);
  ForEachHole<T>([](T& holed, T& whole) {
    ExpectCopiesRaise(holed, whole);
    ExpectComparisonsRaise(holed, whole);
  });
}

TEST(RecordCopy, NullPointersRaise) {
  CheckNullPointers<CVRXoutPackage>("package");
  CheckNullPointers<CVRXoutPrfFunction>("function");
  CheckNullPointers<CVRXoutPrfPinAssign>("pin assign");
  CheckNullPointers<CVRXoutPrfPinAssignFuncInst>("function instance");
  CheckNullPointers<CVRXoutLcdbCmpComp>("library component");
  CheckNullPointers<CVRXoutRufComp>("component settings");
  CheckNullPointers<CVRXoutRufNet>("net");
}

// Parts copy and compare the pointers alone.
TEST(RecordCopy, NullPointersOfAPartAreShared) {
  ForEachHole<CVRXoutPrfPart>([](CVRXoutPrfPart& holed, CVRXoutPrfPart&) {
    const CVRXoutPrfPart copy(holed);
    EXPECT_EQ(copy == holed, 1);
  });
}

TEST(RecordCopy, NullPointersOfAFacadeRaise) {
  using D = CPC_BD_OutClsGet;
  ForEachHole<D>([](D& holed, D& whole) {
    ExpectCopiesRaise(holed, whole);
    // Facades of two stack-ups or two board specs differ, whatever else they hold.
    CVRXoutRufStackup* const pStackup = std::exchange(whole.m_pStackup, holed.m_pStackup);
    CVRXoutRufBoardSpec* const pBoardSpec = std::exchange(whole.m_pBoardSpec, holed.m_pBoardSpec);
    ExpectComparisonsRaise(holed, whole);
    whole.m_pStackup = pStackup;
    whole.m_pBoardSpec = pBoardSpec;
  });
}

// Its layers are read by archives alone.
TEST(RecordCopy, ANullLayerArrayOfAStackupRaisesInArchives) {
  CVRXoutRufStackup holed;
  CVRXoutRufStackup whole;
  delete std::exchange(holed.m_pLayerArray, nullptr);
  EXPECT_THROW(Image(holed), CInvalidArgException);
  EXPECT_THROW(LoadImage(holed, Image(whole)), CInvalidArgException);
  EXPECT_EQ(holed == whole, 0);
  EXPECT_EQ(whole == holed, 0);
  EXPECT_NE(CVRXoutRufStackup(holed).m_pLayerArray, nullptr);
}

// Ports and gates of a part have no form of their own.
template <class T>
concept HasForm = requires(T& t, CArchive& ar) {
  t.Serialize(ar);
}
|| requires(const T& t) { t.clone(); }
|| requires(const T& a, const T& b) { a == b; };
static_assert(HasForm<CVRXoutPrfFunctionPort>);
static_assert(!HasForm<CVRXoutPrfPartPort> && !HasForm<CVRXoutPrfPartGateDef> && !HasForm<CWOQBDLayerForExport>);
static_assert(!std::is_copy_constructible_v<CVRXoutPrfPartGateDef> &&
              !std::is_copy_assignable_v<CVRXoutPrfPartGateDef>);
template <class T>
concept HasVersion = requires {
  T::m_nVersion;
}
|| requires(const T& t) { t.clone(); };
static_assert(HasVersion<CVRXoutPrfFunctionPortArray>);
static_assert(!HasVersion<CVRXoutPrfPartPortArray> && !HasVersion<CVRXoutPrfPartGateDefArray> &&
              !HasVersion<CWOQBDLayerForExportArray>);

}  // namespace
