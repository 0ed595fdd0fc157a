#pragma once
#include "base/CLProperty.h"
#include "base/CString.h"
#include "base/Pool.h"
#include "base/RecordArray.h"
#include "designdata/RecordFields.h"

/// A port of a function.
class CVRXoutPrfFunctionPort : public laminate::Pooled {
 public:
  static constexpr int m_nVersion = 1;

  CVRXoutPrfFunctionPort() = default;
  CVRXoutPrfFunctionPort(const CVRXoutPrfFunctionPort& source);
  CVRXoutPrfFunctionPort& operator=(const CVRXoutPrfFunctionPort& source);
  virtual ~CVRXoutPrfFunctionPort() = default;
  virtual void Serialize(CArchive& ar);
  /// A copy; the caller deletes it.
  virtual CVRXoutPrfFunctionPort* clone() const;
  int operator==(const CVRXoutPrfFunctionPort& other) const;
  int operator!=(const CVRXoutPrfFunctionPort& other) const { return !(*this == other); }

  CString m_sPortType;   ///< as it stands in the file, closing brackets included when it is not quoted there
  int m_nSymbPinId = 0;  ///< pin of the symbol
  CString m_sPortNo;     ///< the port's number, a text

  static constexpr auto Fields() {
    using T = CVRXoutPrfFunctionPort;
    using namespace laminate;
    return FieldList<Field<&T::m_sPortType>, Field<&T::m_nSymbPinId>, Field<&T::m_sPortNo>>();
  }
};

/// Ports of a function; owns them.
class CVRXoutPrfFunctionPortArray : public laminate::RecordArray<CVRXoutPrfFunctionPort, CVRXoutPrfFunctionPortArray> {
};

/// A function: the logical symbol that parts realise.
///
///   (function "NAME"
///   (property "KEY" "VALUE")
///   (port "1" (symbPinId 1) (portType "IN" ))
///   )
///
/// Written functions have their ports in an "(interface" block. Its ")" ends the function when it is read again: what
/// stands behind it is lost.
class CVRXoutPrfFunction : public laminate::Pooled {
 public:
  static constexpr int m_nVersion = 1;

  CVRXoutPrfFunction();
  CVRXoutPrfFunction(const CVRXoutPrfFunction& source);
  CVRXoutPrfFunction& operator=(const CVRXoutPrfFunction& source);
  virtual ~CVRXoutPrfFunction();
  virtual void Serialize(CArchive& ar);
  /// A deep copy; the caller deletes it.
  virtual CVRXoutPrfFunction* clone() const;
  int operator==(const CVRXoutPrfFunction& other) const;
  int operator!=(const CVRXoutPrfFunction& other) const { return !(*this == other); }

  int m_nUver = 1;                                      ///< user version; not read from a file
  CString m_sName;                                      ///< the function's name
  CLPropertyArray* m_pPropertyArray = nullptr;          ///< owned, never null
  CVRXoutPrfFunctionPortArray* m_pPortArray = nullptr;  ///< owned, never null

  static constexpr auto Fields() {
    using T = CVRXoutPrfFunction;
    using namespace laminate;
    return FieldList<Field<&T::m_nUver>, Field<&T::m_sName>, Field<&T::m_pPropertyArray>, Field<&T::m_pPortArray>>();
  }
};

/// Functions in file order; owns them.
class CVRXoutPrfFunctionArray : public laminate::RecordArray<CVRXoutPrfFunction, CVRXoutPrfFunctionArray> {};
