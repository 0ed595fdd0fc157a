#include "facade/RecordLosses.h"

#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "base/CLProperty.h"
#include "designdata/CVRXoutPackage.h"
#include "designdata/CVRXoutPrfFunction.h"
#include "designdata/CVRXoutPrfPart.h"
#include "designdata/CVRXoutPrfPinAssign.h"

namespace laminate {

namespace {

template <class Array>
bool IsFilled(const Array* pArray) {
  return pArray != nullptr && !pArray->IsEmpty();
}
template <auto kArray, class T>
bool LosesArray(const T& object, std::string& sValue) {
  if (!IsFilled(object.*kArray)) return false;
  sValue = std::to_string((object.*kArray)->GetSize());
  return true;
}
// A text between quotes: the scanners know no escape at all.
template <auto kField, class T>
bool LosesQuote(const T& object, std::string& sValue) {
  const CString& s = object.*kField;
  if (s.View().find_first_of(std::string_view("\"\n\0", 3)) == std::string_view::npos) return false;
  sValue = ValueText(s);
  return true;
}
// A text without quotes, with a bracket behind it that the scanners take away with all that stand before it.
template <auto kField, class T>
bool LosesBare(const T& object, std::string& sValue) {
  const std::string_view s = (object.*kField).View();
  if (s.find_first_of(std::string_view(" \"\n\0", 4)) == std::string_view::npos && !s.ends_with(')')) return false;
  sValue = ValueText(object.*kField);
  return true;
}
template <auto kField, class T>
bool LosesQuoteOrPercent(const T& object, std::string& sValue) {
  const CString& s = object.*kField;
  if (s.View().find('%') == std::string_view::npos) return LosesQuote<kField>(object, sValue);
  sValue = ValueText(s);
  return true;
}

constexpr std::string_view kInQuotes = "in quotes, which nothing escapes";
constexpr std::string_view kBare = "without quotes, and without closing brackets at its end";
constexpr std::string_view kDoubled = "in quotes, percent signs doubled";

template <auto kField, class T>
constexpr LossRow<T> InQuotes(std::string_view field) {
  return Custom<T>(field, Fate::normalised, kInQuotes, &LosesQuote<kField, T>);
}
template <auto kField, class T>
constexpr LossRow<T> InQuotesDoubled(std::string_view field) {
  return Custom<T>(field, Fate::normalised, kDoubled, &LosesQuoteOrPercent<kField, T>);
}
template <auto kArray, class T>
constexpr LossRow<T> DroppedArray(std::string_view field, std::string_view note = {}) {
  return Custom<T>(field, Fate::dropped, note, &LosesArray<kArray, T>);
}

// ---- packages: their file is re-indented, which makes one percent sign of two ----

template <auto kField, class T>
bool LosesQuoteOrPair(const T& object, std::string& sValue) {
  const CString& s = object.*kField;
  if (s.View().find("%%") == std::string_view::npos) return LosesQuote<kField>(object, sValue);
  sValue = ValueText(s);
  return true;
}
template <auto kField>
bool LosesInMountForm(const CVRXoutPackageMountForm& form, std::string& sValue) {
  if (!(form.*kField).View().ends_with(')')) return LosesQuoteOrPair<kField>(form, sValue);
  sValue = ValueText(form.*kField);
  return true;
}
template <auto kField>
constexpr LossRow<CVRXoutPackageMountForm> InMountForm(std::string_view field) {
  return Custom<CVRXoutPackageMountForm>(
      field, Fate::normalised,
      "in quotes, which nothing escapes; without closing brackets at its end, \"%\" for \"%%\"",
      &LosesInMountForm<kField>);
}
bool LosesPackageType(const CVRXoutPackage& p, std::string& sValue) {
  sValue = ValueText(p.m_sType);
  if (p.m_sName.IsEmpty() || sValue == "user-defined") return sValue != "UNDEF";
  return LosesBare<&CVRXoutPackage::m_sType>(p, sValue) || LosesQuoteOrPair<&CVRXoutPackage::m_sType>(p, sValue);
}
bool LosesSpec(const CVRXoutPackageMountForm& p, std::string& sValue) {
  return p.m_sSpec.IsEmpty() || LosesInMountForm<&CVRXoutPackageMountForm::m_sSpec>(p, sValue);
}
// The first form's name ends its line, so that white space at its end goes too.
bool LosesFirstName(const CVRXoutPackageMountForm& form, std::string& sValue) {
  sValue = ValueText(form.m_sMountForm);
  CString sTrimmed = form.m_sMountForm;
  return sTrimmed.TrimRight() != form.m_sMountForm || LosesBare<&CVRXoutPackageMountForm::m_sMountForm>(form, sValue) ||
         LosesQuoteOrPair<&CVRXoutPackageMountForm::m_sMountForm>(form, sValue);
}

constexpr auto kPackage = Losses<CVRXoutPackage>(
    "CVRXoutPackage",
    Custom<CVRXoutPackage>("m_sType", Fate::normalised, "UNDEF for user-defined, and for a package without a name",
                           &LosesPackageType),
    Kept<&CVRXoutPackage::m_nUver>(),
    Custom<CVRXoutPackage>("m_sName", Fate::normalised, "in quotes, which nothing escapes; \"%\" for \"%%\"",
                           &LosesQuoteOrPair<&CVRXoutPackage::m_sName, CVRXoutPackage>),
    Kept<&CVRXoutPackage::m_pMountFormArray>());
constexpr auto kMountForm = Losses<CVRXoutPackageMountForm>(
    "CVRXoutPackageMountForm",
    Custom<CVRXoutPackageMountForm>(
        "m_sSpec", Fate::normalised,
        "in quotes, which nothing escapes; without closing brackets at its end, \"%\" for \"%%\"; an "
        "empty one reads back as \"default\"",
        &LosesSpec),
    InMountForm<&CVRXoutPackageMountForm::m_sBottomFootprint>("m_sBottomFootprint"),
    InMountForm<&CVRXoutPackageMountForm::m_sFootprintRef>("m_sFootprintRef"),
    Told<&CVRXoutPackageMountForm::m_sMountForm>(Fate::dropped, "but for that of the first form"));

// ---- functions and pin assigns ----

constexpr auto kFunction = Losses<CVRXoutPrfFunction>(
    "CVRXoutPrfFunction", Kept<&CVRXoutPrfFunction::m_nUver>("not read"),
    InQuotes<&CVRXoutPrfFunction::m_sName, CVRXoutPrfFunction>("m_sName"),
    DroppedArray<&CVRXoutPrfFunction::m_pPropertyArray, CVRXoutPrfFunction>("m_pPropertyArray"),
    Kept<&CVRXoutPrfFunction::m_pPortArray>());
constexpr auto kFunctionPort = Losses<CVRXoutPrfFunctionPort>(
    "CVRXoutPrfFunctionPort", Kept<&CVRXoutPrfFunctionPort::m_sPortType>("reads back with the two brackets behind it"),
    Kept<&CVRXoutPrfFunctionPort::m_nSymbPinId>(),
    InQuotes<&CVRXoutPrfFunctionPort::m_sPortNo, CVRXoutPrfFunctionPort>("m_sPortNo"));
constexpr auto kPinAssign = Losses<CVRXoutPrfPinAssign>(
    "CVRXoutPrfPinAssign", Kept<&CVRXoutPrfPinAssign::m_nUver>("not read"),
    InQuotes<&CVRXoutPrfPinAssign::m_sName, CVRXoutPrfPinAssign>("m_sName"),
    DroppedArray<&CVRXoutPrfPinAssign::m_pPropertyArray, CVRXoutPrfPinAssign>("m_pPropertyArray"),
    Kept<&CVRXoutPrfPinAssign::m_pFuncInstArray>(),
    DroppedArray<&CVRXoutPrfPinAssign::m_pPortArray, CVRXoutPrfPinAssign>("m_pPortArray",
                                                                          "the part's ports stand in their place"));
constexpr auto kFuncInst = Losses<CVRXoutPrfPinAssignFuncInst>(
    "CVRXoutPrfPinAssignFuncInst", Kept<&CVRXoutPrfPinAssignFuncInst::m_pPortArray>(),
    InQuotes<&CVRXoutPrfPinAssignFuncInst::m_sFunctionRef, CVRXoutPrfPinAssignFuncInst>("m_sFunctionRef"));
constexpr auto kFuncInstPort = Losses<CVRXoutPrfPinAssignFuncInstPort>(
    "CVRXoutPrfPinAssignFuncInstPort",
    InQuotes<&CVRXoutPrfPinAssignFuncInstPort::m_sMatch, CVRXoutPrfPinAssignFuncInstPort>("m_sMatch"),
    InQuotesDoubled<&CVRXoutPrfPinAssignFuncInstPort::m_sPortNo, CVRXoutPrfPinAssignFuncInstPort>("m_sPortNo"));

// ---- parts ----

constexpr auto kPart = Losses<CVRXoutPrfPart>(
    "CVRXoutPrfPart", InQuotes<&CVRXoutPrfPart::m_sName, CVRXoutPrfPart>("m_sName"),
    Dropped<&CVRXoutPrfPart::m_sFootprintRef>(),
    InQuotes<&CVRXoutPrfPart::m_sPinAssignRef, CVRXoutPrfPart>("m_sPinAssignRef"),
    Kept<&CVRXoutPrfPart::m_sStockInfo>("not read"),
    Custom<CVRXoutPrfPart>("m_sPartClass", Fate::normalised, kBare,
                           &LosesBare<&CVRXoutPrfPart::m_sPartClass, CVRXoutPrfPart>),
    InQuotes<&CVRXoutPrfPart::m_sPackageRef, CVRXoutPrfPart>("m_sPackageRef"), Kept<&CVRXoutPrfPart::m_pPortArray>(),
    DroppedArray<&CVRXoutPrfPart::m_pGateDefArray, CVRXoutPrfPart>("m_pGateDefArray"),
    Told<&CVRXoutPrfPart::m_pPropertyArray>(Fate::normalised,
                                            "of equal ones the last; most without brackets in the value, some "
                                            "without quotes"),
    DroppedArray<&CVRXoutPrfPart::m_pStockPropertyArray, CVRXoutPrfPart>("m_pStockPropertyArray"));
constexpr auto kPartPort = Losses<CVRXoutPrfPartPort>(
    "CVRXoutPrfPartPort", InQuotes<&CVRXoutPrfPartPort::m_sPortNo, CVRXoutPrfPartPort>("m_sPortNo"),
    Custom<CVRXoutPrfPartPort>("m_sPortType", Fate::normalised,
                               "without quotes, and without closing brackets at its end; INOUT for an empty one that "
                               "a pin assign refers to",
                               &LosesBare<&CVRXoutPrfPartPort::m_sPortType, CVRXoutPrfPartPort>),
    Told<&CVRXoutPrfPartPort::m_sPortName>(Fate::normalised,
                                           "percent signs doubled where a pin assign refers to the part"),
    Kept<&CVRXoutPrfPartPort::m_nSymbPinId>("not read"));

void FindPropertyLosses(const CVRXoutPrfPart& part, LossFinder& finder) {
  if (!IsFilled(part.m_pPropertyArray)) return;
  std::unordered_map<std::string, INT_PTR> last;
  const auto key = [](const CLProperty& p) { return ValueText(p.m_sItem) + '\0' + ValueText(p.m_sComment); };
  for (INT_PTR i = 0; i < part.m_pPropertyArray->GetSize(); ++i) {
    if (const CLProperty* p = part.m_pPropertyArray->GetAt(i)) last[key(*p)] = i;
  }
  for (INT_PTR i = 0; i < part.m_pPropertyArray->GetSize(); ++i) {
    const CLProperty* p = part.m_pPropertyArray->GetAt(i);
    if (p == nullptr) continue;
    const LossFinder::Step step(finder, "m_pPropertyArray", p->m_sItem.View(), i);
    const std::string sValue = ValueText(p->m_sComment);
    std::string sLost;
    if (last[key(*p)] != i && p->m_sItem != "uver") {
      finder.Tell("CLProperty", {}, Fate::dropped, "of equal ones the last stays", sValue);
    } else if (part.bIsInSkipList(p->m_sItem) != 0) {
      // A keyword of its own; what is read of it is one column without any closing bracket.
      if (LosesBare<&CLProperty::m_sComment>(*p, sLost) || sValue.find(')') != std::string::npos) {
        finder.Tell("CLProperty", "comment", Fate::normalised, "without quotes and closing brackets", sValue);
      }
    } else {
      if (LosesQuote<&CLProperty::m_sItem>(*p, sLost)) {
        finder.Tell("CLProperty", "item", Fate::normalised, kInQuotes, sLost);
      }
      if (LosesQuote<&CLProperty::m_sComment>(*p, sLost)) {
        finder.Tell("CLProperty", "comment", Fate::normalised, kInQuotes, sLost);
      } else if (sValue.find_first_of("()") != std::string::npos) {
        finder.Tell("CLProperty", "comment", Fate::normalised, "without brackets", sValue);
      }
    }
  }
}

}  // namespace

void FindRecordLosses(const ExportRecords& records, LossFinder& finder) {
  const auto name = [](const auto& object) { return object.m_sName.View(); };
  ForEachElement(finder, "m_pPackageArray", records.pPackages, name, [&finder](const CVRXoutPackage& package) {
    kPackage.Find(package, finder);
    bool bFirst = true;
    ForEachElement(finder, "m_pMountFormArray", package.m_pMountFormArray, [&](const CVRXoutPackageMountForm& form) {
      kMountForm.Find(form, finder);
      std::string sValue;
      if (std::exchange(bFirst, false)) {
        if (LosesFirstName(form, sValue)) {
          finder.Tell("CVRXoutPackageMountForm", "m_sMountForm", Fate::normalised, kBare, sValue);
        }
      } else if (!form.m_sMountForm.IsEmpty()) {
        finder.Tell("CVRXoutPackageMountForm", "m_sMountForm", Fate::dropped, "but for that of the first form",
                    ValueText(form.m_sMountForm));
      }
    });
  });
  ForEachElement(finder, "m_pPrfFunctionArray", records.pFunctions, name,
                 [&finder](const CVRXoutPrfFunction& function) {
                   kFunction.Find(function, finder);
                   ForEachElement(finder, "m_pPortArray", function.m_pPortArray,
                                  [&finder](const CVRXoutPrfFunctionPort& port) { kFunctionPort.Find(port, finder); });
                 });
  // A pin assign writes the ports of the first part that refers to it, and changes them before that part is written.
  std::unordered_set<std::string_view> assigned;
  ForEachElement(finder, "m_pPrfPinAssignArray", records.pPinAssigns, name, [&](const CVRXoutPrfPinAssign& assign) {
    assigned.insert(assign.m_sName.View());
    kPinAssign.Find(assign, finder);
    ForEachElement(
        finder, "m_pFuncInstArray", assign.m_pFuncInstArray, [&finder](const CVRXoutPrfPinAssignFuncInst& inst) {
          kFuncInst.Find(inst, finder);
          ForEachElement(finder, "m_pPortArray", inst.m_pPortArray,
                         [&finder](const CVRXoutPrfPinAssignFuncInstPort& port) { kFuncInstPort.Find(port, finder); });
        });
  });
  ForEachElement(finder, "m_pPrfPartArray", records.pParts, name, [&](const CVRXoutPrfPart& part) {
    kPart.Find(part, finder);
    const bool bAssigned = assigned.erase(part.m_sPinAssignRef.View()) != 0;
    ForEachElement(finder, "m_pPortArray", part.m_pPortArray, [&](const CVRXoutPrfPartPort& port) {
      kPartPort.Find(port, finder);
      std::string sValue;
      if (bAssigned ? LosesQuoteOrPercent<&CVRXoutPrfPartPort::m_sPortName>(port, sValue)
                    : LosesQuote<&CVRXoutPrfPartPort::m_sPortName>(port, sValue)) {
        finder.Tell("CVRXoutPrfPartPort", "m_sPortName", Fate::normalised, kDoubled, sValue);
      }
    });
    FindPropertyLosses(part, finder);
  });
}

void ListRecordLedger(std::vector<RecordLedgerLine>& lines) {
  const auto list = [&lines](const auto&... tables) { (tables.List(lines), ...); };
  list(kPackage, kMountForm, kFunction, kFunctionPort, kPinAssign, kFuncInst, kFuncInstPort, kPart, kPartPort);
}

}  // namespace laminate
