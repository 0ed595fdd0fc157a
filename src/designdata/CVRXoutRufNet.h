#pragma once
#include "base/CLProperty.h"
#include "base/CString.h"
#include "base/Pool.h"
#include "base/RecordArray.h"
#include "designdata/RecordFields.h"

/// A pin of a net.
class CVRXoutRufNetFuncTerm final : public laminate::Pooled {
 public:
  static constexpr int m_nVersion = 1;

  CVRXoutRufNetFuncTerm() = default;
  CVRXoutRufNetFuncTerm(const CVRXoutRufNetFuncTerm& source);
  CVRXoutRufNetFuncTerm& operator=(const CVRXoutRufNetFuncTerm& source);
  virtual void Serialize(CArchive& ar);
  /// A copy; the caller deletes it.
  virtual CVRXoutRufNetFuncTerm* clone() const;
  int operator==(const CVRXoutRufNetFuncTerm& other) const;
  int operator!=(const CVRXoutRufNetFuncTerm& other) const { return !(*this == other); }

  CString m_sValue1;  ///< the component
  CString m_sValue2;  ///< the pin

  static constexpr auto Fields() {
    using T = CVRXoutRufNetFuncTerm;
    using namespace laminate;
    return FieldList<Field<&T::m_sValue1>, Field<&T::m_sValue2>>();
  }
};

/// Owns its elements.
class CVRXoutRufNetFuncTermArray : public laminate::RecordArray<CVRXoutRufNetFuncTerm, CVRXoutRufNetFuncTermArray> {};

/// A net of the rule file: (net NAME (property KEY VALUE)... (pinList (funcTerm COMP PIN)...)).
class CVRXoutRufNet : public laminate::Pooled {
 public:
  static constexpr int m_nVersion = 1;

  CVRXoutRufNet();
  CVRXoutRufNet(const CVRXoutRufNet& source);
  CVRXoutRufNet& operator=(const CVRXoutRufNet& source);
  virtual ~CVRXoutRufNet();
  virtual void Serialize(CArchive& ar);
  /// A deep copy; the caller deletes it.
  virtual CVRXoutRufNet* clone() const;
  int operator==(const CVRXoutRufNet& other) const;
  int operator!=(const CVRXoutRufNet& other) const { return !(*this == other); }

  CString m_sName;                              ///< the net
  CString m_sColorId;                           ///< value of the property "colorId", which is not kept among the others
  CLPropertyArray* m_pPropertyArray = nullptr;  ///< owned, never null
  CVRXoutRufNetFuncTermArray* m_pFuncTermArray = nullptr;  ///< owned, never null

  static constexpr auto Fields() {
    using T = CVRXoutRufNet;
    using namespace laminate;
    return FieldList<Field<&T::m_sName>, Field<&T::m_sColorId>, Field<&T::m_pPropertyArray>,
                     Field<&T::m_pFuncTermArray>>();
  }
};

/// Nets in file order; owns them.
class CVRXoutRufNetArray : public laminate::RecordArray<CVRXoutRufNet, CVRXoutRufNetArray> {};
