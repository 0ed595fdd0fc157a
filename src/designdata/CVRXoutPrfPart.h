#pragma once
#include <cstdio>
#include <memory>

#include "base/CLProperty.h"
#include "base/CString.h"
#include "base/CStringArray.h"
#include "base/Pool.h"
#include "base/RecordArray.h"
#include "base/TextOut.h"
#include "designdata/RecordFields.h"

/// A port of a part's interface. It has no archive form.
class CVRXoutPrfPartPort : public laminate::Pooled {
 public:
  CVRXoutPrfPartPort() = default;
  CVRXoutPrfPartPort(const CVRXoutPrfPartPort&) = default;
  CVRXoutPrfPartPort& operator=(const CVRXoutPrfPartPort&) = default;
  virtual ~CVRXoutPrfPartPort() = default;

  /// Writes the port's line, without "(portType" where the type is empty.
  void Write(laminate::TextOut& out) const;

  CString m_sPortNo;  ///< the port's number, a text
  CString
      m_sPortType;  ///< INOUT, IN, ...; empty is not the same as INOUT: the written files tell them apart. It comes
                    ///< from the ninth column, or the sixth without a name, so that behind an unquoted name it is lost
  CString m_sPortName;   ///< the port's name
  int m_nSymbPinId = 0;  ///< pin of the symbol; written, but not read from a file
};

/// Ports of a part; owns them. In an archive only their number remains: a loaded array is empty.
class CVRXoutPrfPartPortArray : public laminate::NamedArray<CVRXoutPrfPartPort> {};

/// A gate of a part. It has no archive form and is not written with its part.
///
///   (gateDef (gateName "G")
///   (property "KEY" "VALUE")
///   (gateTermDef (portRef "1"))      skipped, as is a block of several lines that does not end in two brackets
///   (KEY (KEY "1"))                  any other line is a port reference: its third column
///   )
class CVRXoutPrfPartGateDef : public laminate::Pooled {
 public:
  CVRXoutPrfPartGateDef();
  CVRXoutPrfPartGateDef(const CVRXoutPrfPartGateDef&) = delete;
  CVRXoutPrfPartGateDef& operator=(const CVRXoutPrfPartGateDef&) = delete;
  virtual ~CVRXoutPrfPartGateDef();

  /// Writes a line per port reference, and nothing else; gives 0. Each percent sign of a reference is doubled, in the
  /// record too, so it doubles again with every call. A null stream raises.
  int nPrint2File(FILE* fp);
  /// The same to a text.
  void Write(laminate::TextOut& out);

  CStringArray m_aPortRefs;                     ///< the third column of each line of the block, empty ones included
  CString m_sGateName;                          ///< the third column of the opening line
  CLPropertyArray* m_pPropertyArray = nullptr;  ///< owned, never null
};

/// Gates of a part; owns them. In an archive only their number remains: a loaded array is empty.
class CVRXoutPrfPartGateDefArray : public laminate::NamedArray<CVRXoutPrfPartGateDef> {};

/// A logical part of the design: which package houses it, its ports, gates and properties.
///
///   (part "NAME"
///   (uver 1)
///   (packageRef "PACKAGE")
///   (pinAssignRef "PIN ASSIGN")
///   (interface
///   (port "1" (symbPinId 1) (portName "A") (portType IN))
///   )
///   (partClass CLASS)
///   (stockInfo "S" (default))
///   (property "KEY" "VALUE")
///   )
///
/// A copy shares the four arrays with its original: what one changes in them the other sees, and only parts that share
/// their arrays are equal. The arrays live as long as the last part that holds them. A host may put an array of its own
/// into a field, one that no other part holds; the part then owns it alone, and the array that stood there is the
/// host's unless a copy still holds it. A part and its copies belong to one thread.
class CVRXoutPrfPart : public laminate::Pooled {
 public:
  static constexpr int m_nVersion = 1;

  CVRXoutPrfPart();
  CVRXoutPrfPart(const CVRXoutPrfPart& source);
  CVRXoutPrfPart& operator=(const CVRXoutPrfPart& source);
  virtual ~CVRXoutPrfPart();
  virtual void Serialize(CArchive& ar);
  /// A copy that shares the arrays; the caller deletes it.
  virtual CVRXoutPrfPart* clone() const;
  int operator==(const CVRXoutPrfPart& other) const;
  int operator!=(const CVRXoutPrfPart& other) const { return !(*this == other); }

  /// Writes the part; gives 0. Of properties with equal key and value it keeps the last one only, in the record too.
  /// Gates, the footprint and the stock properties are not written. A null stream raises, and so does a null array of
  /// ports or properties, with nothing written.
  int nPrint2File(FILE* fp);
  /// The same to a text.
  void Write(laminate::TextOut& out);
  /// `m_nSymbPinId` of the first port of that number, else 0.
  int GetSymbolPinIDWithPortNo(CString sPortNo) const;
  /// The value of the first property of that key, else the empty text.
  CString sGetPropertyWithKeyWord(CString sKey) const;
  /// 1 for the keys that are written as a keyword of their own and not as a "(property" line, else 0: "uver",
  /// "useInSchema", "useInLayout", "inPartsList", "partType", "placeRestriction", "polarity", "designation".
  int bIsInSkipList(CString sKey) const;

  CString m_sName;                                        ///< the part's name
  CString m_sFootprintRef;                                ///< read, not written
  CString m_sPinAssignRef;                                ///< the pin assign that belongs to the part
  CString m_sStockInfo;                                   ///< written, not read: only a host fills it
  CString m_sPartClass;                                   ///< class of the part
  CString m_sPackageRef;                                  ///< the package that houses it
  CVRXoutPrfPartPortArray* m_pPortArray = nullptr;        ///< never null; owned, or shared with copies
  CVRXoutPrfPartGateDefArray* m_pGateDefArray = nullptr;  ///< the same
  CLPropertyArray* m_pPropertyArray = nullptr;            ///< generic keywords included; the same
  CLPropertyArray* m_pStockPropertyArray = nullptr;       ///< those of a "(stockInfo" block; the same

  static constexpr auto Fields() {
    using T = CVRXoutPrfPart;
    using namespace laminate;
    return FieldList<Field<&T::m_sName>, Field<&T::m_sFootprintRef>, Field<&T::m_sPinAssignRef>,
                     Field<&T::m_sStockInfo>, Field<&T::m_sPartClass>, Field<&T::m_sPackageRef>,
                     Field<&T::m_pPropertyArray, kShared>, Field<&T::m_pStockPropertyArray, kShared>,
                     Field<&T::m_pPortArray, kShared>, Field<&T::m_pGateDefArray, kShared>>();
  }

 private:
  struct Sharing;

  bool Holds(const void* p) const;
  bool HeldByACopy(const void* p) const;
  // Deletes the arrays that no copy holds, and leaves the circles of those that are shared.
  void LetGo();
  Sharing& TheSharing() const;

  // Who else holds the arrays; none before the first copying from or to this part.
  mutable std::unique_ptr<Sharing> m_pSharing;
};

/// Parts in file order; owns them.
class CVRXoutPrfPartArray : public laminate::RecordArray<CVRXoutPrfPart, CVRXoutPrfPartArray> {
 public:
  /// 1 when a part of exactly that name exists, else 0.
  int bExistSameUpfWithPartName(CString sName) const;
};

namespace laminate {
/// The first part whose `m_sPinAssignRef` equals `sPinAssign`, or null. A null array raises.
CVRXoutPrfPart* FindPartByPinAssign(const CVRXoutPrfPartArray* pParts, const CString& sPinAssign);
}  // namespace laminate
