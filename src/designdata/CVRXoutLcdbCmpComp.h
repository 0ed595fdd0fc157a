#pragma once
#include "base/CString.h"
#include "base/CStringArray.h"
#include "base/Pool.h"
#include "base/RecordArray.h"
#include "designdata/RecordFields.h"

/// A pin of a library component.
class CVRXoutLcdbCmpCompPin : public laminate::Pooled {
 public:
  static constexpr int m_nVersion = 1;

  CVRXoutLcdbCmpCompPin() = default;
  CVRXoutLcdbCmpCompPin(const CVRXoutLcdbCmpCompPin& source);
  CVRXoutLcdbCmpCompPin& operator=(const CVRXoutLcdbCmpCompPin& source);
  virtual ~CVRXoutLcdbCmpCompPin() = default;
  virtual void Serialize(CArchive& ar);
  /// A copy; the caller deletes it.
  virtual CVRXoutLcdbCmpCompPin* clone() const;
  int operator==(const CVRXoutLcdbCmpCompPin& other) const;
  int operator!=(const CVRXoutLcdbCmpCompPin& other) const { return !(*this == other); }

  CString m_sSeventhColumn;  ///< the line's seventh column
  CString m_sGatePinName;    ///< name of the gate's pin
  CStringArray m_aPinNames;  ///< the pins of the part that stand for it, at most 100 from one line; one that is empty
                             ///< when the line has none
  int m_nPinId = -1;         ///< number of the pin; 0 from a line whose second column is no number

  static constexpr auto Fields() {
    using T = CVRXoutLcdbCmpCompPin;
    using namespace laminate;
    return FieldList<Field<&T::m_sSeventhColumn>, Field<&T::m_sGatePinName>, Field<&T::m_nPinId>,
                     Field<&T::m_aPinNames>>();
  }
};

/// Pins of a library component; owns them.
class CVRXoutLcdbCmpCompPinArray : public laminate::RecordArray<CVRXoutLcdbCmpCompPin, CVRXoutLcdbCmpCompPinArray> {};

/// A library component: its function, its symbols and its pins.
///
///   $COMP "NAME"
///     componentType = parts
///     functionName = FUNCTION
///     symbolName = SYMBOL1 SYMBOL2
///     gateCount = 1
///     pin 1 = INOUT A1,A2 GATEPIN SEVENTH        columns 3 and 4 are not read
///   $COMP_END
///
/// Settings behind the end reach the component that it closed.
class CVRXoutLcdbCmpComp : public laminate::Pooled {
 public:
  static constexpr int m_nVersion = 1;

  CVRXoutLcdbCmpComp();
  CVRXoutLcdbCmpComp(const CVRXoutLcdbCmpComp& source);
  CVRXoutLcdbCmpComp& operator=(const CVRXoutLcdbCmpComp& source);
  virtual ~CVRXoutLcdbCmpComp();
  virtual void Serialize(CArchive& ar);
  /// A deep copy; the caller deletes it.
  virtual CVRXoutLcdbCmpComp* clone() const;
  int operator==(const CVRXoutLcdbCmpComp& other) const;
  int operator!=(const CVRXoutLcdbCmpComp& other) const { return !(*this == other); }

  /// The first pin of that number, or null; it stays the component's.
  CVRXoutLcdbCmpCompPin* pGetLcdbCmpCompPinWithPinID(int nPinId) const;
  /// `m_sGatePinName` of the first pin that has exactly that name among its names, else the empty text.
  CString sGetLcdbCmpCompPinGatePinNameWithPinName(CString sPinName) const;

  CString m_sCompName;                 ///< the component's name
  int m_nGateCount = 1;                ///< number of gates
  CString m_sFunctionName;             ///< the function that it realises
  CString m_sComponentType = "parts";  ///< kind of component
  CStringArray m_aSymbolNames;  ///< the symbols that stand for it; each blank inside quotes brings an empty one along
  CVRXoutLcdbCmpCompPinArray* m_pPinArray = nullptr;  ///< owned, never null

  static constexpr auto Fields() {
    using T = CVRXoutLcdbCmpComp;
    using namespace laminate;
    return FieldList<Field<&T::m_sCompName>, Field<&T::m_sComponentType>, Field<&T::m_nGateCount>,
                     Field<&T::m_sFunctionName>, Field<&T::m_aSymbolNames>, Field<&T::m_pPinArray>>();
  }
};

/// Library components in file order; owns them.
class CVRXoutLcdbCmpCompArray : public laminate::RecordArray<CVRXoutLcdbCmpComp, CVRXoutLcdbCmpCompArray> {
 public:
  /// The first component of exactly that name, or null; it stays the array's.
  CVRXoutLcdbCmpComp* pGetBDOutLcdbCmpCompFromCompName(CString sCompName) const;
  /// The first component of exactly that function, or null; it stays the array's.
  CVRXoutLcdbCmpComp* pGetBDOutLcdbCmpCompFromFunctionName(CString sFunctionName) const;
};
