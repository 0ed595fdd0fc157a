#pragma once
#include "base/CLProperty.h"
#include "base/CString.h"
#include "base/Pool.h"
#include "base/RecordArray.h"
#include "designdata/RecordFields.h"

/// A port of a pin assign's interface.
class CVRXoutPrfPinAssignPort : public laminate::Pooled {
 public:
  static constexpr int m_nVersion = 1;

  CVRXoutPrfPinAssignPort() = default;
  CVRXoutPrfPinAssignPort(const CVRXoutPrfPinAssignPort& source);
  CVRXoutPrfPinAssignPort& operator=(const CVRXoutPrfPinAssignPort& source);
  virtual ~CVRXoutPrfPinAssignPort() = default;
  virtual void Serialize(CArchive& ar);
  /// A copy; the caller deletes it.
  virtual CVRXoutPrfPinAssignPort* clone() const;
  int operator==(const CVRXoutPrfPinAssignPort& other) const;
  int operator!=(const CVRXoutPrfPinAssignPort& other) const { return !(*this == other); }

  CString m_sPortType;  ///< IN, OUT, ..., with the brackets that stand behind it; "(portType" behind a quoted name
  CString m_sPortName;  ///< the port's name, with its bracket when it is not quoted
  int m_nPinId = -1;    ///< pin of the part
  CString m_sPortNo;    ///< the port's number, a text

  static constexpr auto Fields() {
    using T = CVRXoutPrfPinAssignPort;
    using namespace laminate;
    return FieldList<Field<&T::m_sPortType>, Field<&T::m_sPortName>, Field<&T::m_nPinId>, Field<&T::m_sPortNo>>();
  }
};

/// Ports of a pin assign; owns them.
class CVRXoutPrfPinAssignPortArray
    : public laminate::RecordArray<CVRXoutPrfPinAssignPort, CVRXoutPrfPinAssignPortArray> {};

/// A port of a function instance, and the port of the part that it is matched with.
class CVRXoutPrfPinAssignFuncInstPort : public laminate::Pooled {
 public:
  static constexpr int m_nVersion = 1;

  CVRXoutPrfPinAssignFuncInstPort() = default;
  CVRXoutPrfPinAssignFuncInstPort(const CVRXoutPrfPinAssignFuncInstPort& source);
  CVRXoutPrfPinAssignFuncInstPort& operator=(const CVRXoutPrfPinAssignFuncInstPort& source);
  virtual ~CVRXoutPrfPinAssignFuncInstPort() = default;
  virtual void Serialize(CArchive& ar);
  /// A copy; the caller deletes it.
  virtual CVRXoutPrfPinAssignFuncInstPort* clone() const;
  int operator==(const CVRXoutPrfPinAssignFuncInstPort& other) const;
  int operator!=(const CVRXoutPrfPinAssignFuncInstPort& other) const { return !(*this == other); }

  CString m_sMatch;   ///< the part's port
  CString m_sPortNo;  ///< the function's port

  static constexpr auto Fields() {
    using T = CVRXoutPrfPinAssignFuncInstPort;
    using namespace laminate;
    return FieldList<Field<&T::m_sMatch>, Field<&T::m_sPortNo>>();
  }
};

/// Ports of a function instance; owns them.
class CVRXoutPrfPinAssignFuncInstPortArray
    : public laminate::RecordArray<CVRXoutPrfPinAssignFuncInstPort, CVRXoutPrfPinAssignFuncInstPortArray> {};

/// An instance of a function inside a pin assign.
class CVRXoutPrfPinAssignFuncInst : public laminate::Pooled {
 public:
  static constexpr int m_nVersion = 1;

  CVRXoutPrfPinAssignFuncInst();
  CVRXoutPrfPinAssignFuncInst(const CVRXoutPrfPinAssignFuncInst& source);
  CVRXoutPrfPinAssignFuncInst& operator=(const CVRXoutPrfPinAssignFuncInst& source);
  virtual ~CVRXoutPrfPinAssignFuncInst();
  virtual void Serialize(CArchive& ar);
  /// A deep copy; the caller deletes it.
  virtual CVRXoutPrfPinAssignFuncInst* clone() const;
  int operator==(const CVRXoutPrfPinAssignFuncInst& other) const;
  int operator!=(const CVRXoutPrfPinAssignFuncInst& other) const { return !(*this == other); }

  CVRXoutPrfPinAssignFuncInstPortArray* m_pPortArray = nullptr;  ///< owned, never null
  CString m_sFunctionRef;                                        ///< the function

  static constexpr auto Fields() {
    using T = CVRXoutPrfPinAssignFuncInst;
    using namespace laminate;
    return FieldList<Field<&T::m_sFunctionRef>, Field<&T::m_pPortArray>>();
  }
};

/// Function instances of a pin assign; owns them.
class CVRXoutPrfPinAssignFuncInstArray
    : public laminate::RecordArray<CVRXoutPrfPinAssignFuncInst, CVRXoutPrfPinAssignFuncInstArray> {};

/// How the ports of a part map to functions.
///
///   (pinAssign "NAME"
///   (property "KEY" "VALUE")
///   (interface
///   (port "1" (pinId 1) (portName A) (portType IN))
///   )
///   (internal
///   (funcInst (functionRef "FUNCTION")
///   (port "1" (match "2"))
///   )
///   )
///   )
class CVRXoutPrfPinAssign : public laminate::Pooled {
 public:
  static constexpr int m_nVersion = 1;

  CVRXoutPrfPinAssign();
  CVRXoutPrfPinAssign(const CVRXoutPrfPinAssign& source);
  CVRXoutPrfPinAssign& operator=(const CVRXoutPrfPinAssign& source);
  virtual ~CVRXoutPrfPinAssign();
  virtual void Serialize(CArchive& ar);
  /// A deep copy; the caller deletes it.
  virtual CVRXoutPrfPinAssign* clone() const;
  int operator==(const CVRXoutPrfPinAssign& other) const;
  int operator!=(const CVRXoutPrfPinAssign& other) const { return !(*this == other); }

  /// `m_nPinId` of the first port of that number, else -1.
  int GetPinIDWithPortNo(CString sPortNo) const;
  /// `m_sPortType` of the first port of that number, even if it is empty; "INOUT" when there is none.
  CString GetPortTypeWithPortNo(CString sPortNo) const;

  int m_nUver = 1;                                               ///< user version; not read from a file
  CString m_sName;                                               ///< the name under which parts refer to it
  CLPropertyArray* m_pPropertyArray = nullptr;                   ///< owned, never null
  CVRXoutPrfPinAssignFuncInstArray* m_pFuncInstArray = nullptr;  ///< owned, never null
  CVRXoutPrfPinAssignPortArray* m_pPortArray = nullptr;          ///< owned, never null

  static constexpr auto Fields() {
    using T = CVRXoutPrfPinAssign;
    using namespace laminate;
    return FieldList<Field<&T::m_nUver>, Field<&T::m_sName>, Field<&T::m_pFuncInstArray>, Field<&T::m_pPortArray>,
                     Field<&T::m_pPropertyArray>>();
  }
};

/// Pin assigns in file order; owns them.
class CVRXoutPrfPinAssignArray : public laminate::RecordArray<CVRXoutPrfPinAssign, CVRXoutPrfPinAssignArray> {};
