#pragma once
#include "base/CLProperty.h"
#include "base/CString.h"
#include "base/Pool.h"
#include "base/RecordArray.h"
#include "designdata/RecordFields.h"

/// The settings of a component in the rule file: (comp NAME (property KEY VALUE)... (assign (KEY VALUE)...)...). Their
/// properties have no kind.
class CVRXoutRufComp : public laminate::Pooled {
 public:
  static constexpr int m_nVersion = 2;

  CVRXoutRufComp();
  CVRXoutRufComp(const CVRXoutRufComp& source);
  CVRXoutRufComp& operator=(const CVRXoutRufComp& source);
  virtual ~CVRXoutRufComp();
  virtual void Serialize(CArchive& ar);
  /// A deep copy; the caller deletes it.
  virtual CVRXoutRufComp* clone() const;
  int operator==(const CVRXoutRufComp& other) const;
  int operator!=(const CVRXoutRufComp& other) const { return !(*this == other); }

  CLPropertyArray* m_pAssignArray = nullptr;    ///< what is assigned to it; owned, never null
  CLPropertyArray* m_pPropertyArray = nullptr;  ///< owned, never null
  CString m_sName;                              ///< the component

  static constexpr auto Fields() {
    using T = CVRXoutRufComp;
    using namespace laminate;
    return FieldList<Field<&T::m_sName>, Field<&T::m_pPropertyArray>, Field<&T::m_pAssignArray, kSinceVersion2>>();
  }
};

/// Component settings in file order; owns them.
class CVRXoutRufCompArray : public laminate::RecordArray<CVRXoutRufComp, CVRXoutRufCompArray> {};
