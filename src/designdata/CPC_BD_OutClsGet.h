#pragma once
#include <initializer_list>
#include <memory>
#include <string_view>

#include "base/CString.h"
#include "base/CStringArray.h"
#include "base/LoadStatus.h"
#include "base/Pool.h"
#include "designdata/CVRXoutLcdbCmpComp.h"
#include "designdata/CVRXoutPackage.h"
#include "designdata/CVRXoutPrfFunction.h"
#include "designdata/CVRXoutPrfPart.h"
#include "designdata/CVRXoutPrfPinAssign.h"
#include "designdata/CVRXoutRufBoardSpec.h"
#include "designdata/CVRXoutRufComp.h"
#include "designdata/CVRXoutRufNet.h"
#include "designdata/CVRXoutRufRule.h"
#include "designdata/CVRXoutRufRuleStack.h"
#include "designdata/CVRXoutRufStackup.h"
#include "designdata/RecordFields.h"

namespace laminate {
class NameReferences;
class ScanReport;
enum class NameKind;
}  // namespace laminate

/// The design data that stands beside a board: packages, parts, rules and library components, read from four text
/// files, looked up by name, and stored in or loaded from an archive. The facade owns all records. It holds no board
/// and is independent of `CPC_BD_Cls_Get`; a host keeps one beside the other.
///
/// Load operations append and never clear, in any order; loading a file twice gives every record twice. They give
/// nothing back: `GetLoadStatus` tells how the last one ended. Look-ups compare names exactly, give the first match or
/// null, and what they give stays the facade's. Where a host has set one of the pointers to null, every operation that
/// needs it raises `CInvalidArgException`. One thread at a time may use a facade.
class CPC_BD_OutClsGet : public laminate::Pooled {
 public:
  static constexpr int m_nVersion = 2;

  CPC_BD_OutClsGet();
  /// As assignment to an empty facade.
  CPC_BD_OutClsGet(const CPC_BD_OutClsGet& source);
  /// Copies all records, with what each of them leaves out: the stack-up is not copied, and parts share their arrays
  /// with the source's. `m_sUnit` becomes the source's `m_sHostText`, not its unit. The load status and the diagnostics
  /// stay the target's. A failure leaves some records copied and others not.
  CPC_BD_OutClsGet& operator=(const CPC_BD_OutClsGet& source);
  virtual ~CPC_BD_OutClsGet();
  /// Stores the facade or loads it, as the archive's mode says. A load replaces the contents of the arrays it reads.
  /// The ports and gates of parts, loss tangents and whether an electrical net is a pair do not come back. A truncated
  /// image raises `CArchiveException` with the cause end of file (and see RecordFields.h); an unknown version word ends
  /// the load of that object silently; what was loaded by then stays. The load status is that of the text files alone.
  virtual void Serialize(CArchive& ar);
  /// A copy; the caller deletes it.
  virtual CPC_BD_OutClsGet* clone() const;
  /// 1 on identity, else 0 at the first difference. Since two distinct stack-ups are never equal, two distinct facades
  /// are not either.
  int operator==(const CPC_BD_OutClsGet& other) const;
  int operator!=(const CPC_BD_OutClsGet& other) const { return !(*this == other); }

  // ---- loads ----
  // A file that cannot be read changes nothing and says nothing but in the status. The three files that are read line
  // by line raise for no content; a line that has no place where it stands is skipped. What an exception ends, for want
  // of memory too, leaves what was appended by then. The files' forms stand at the classes of the records.

  /// Reads a package file: appends to `m_pPackageArray`, and "(unit mm)" sets `m_sUnit`.
  void vGetOutPackageArray(CString sPath);
  /// Reads a parts file: appends to `m_pPrfPartArray`, `m_pPrfPinAssignArray` and `m_pPrfFunctionArray`.
  void vGetOutPrfPartArray(CString sPath);
  /// Reads a rule file, (design NAME (boardSpec ...) (rule ...) (assign ...)): appends to the arrays of the classes
  /// whose names begin with `CVRXoutRuf` and to those in `m_pStackup` and `m_pBoardSpec`; a second file adds to the
  /// same stack-up and replaces its base material. Only the first "design" counts. A form without a value or child that
  /// it needs raises `CInvalidArgException` with its line. Where the file is not well formed, which the status tells
  /// (and a box when forms nest too deep), its completed forms are read all the same.
  void vGetOutRufCompAndNetArray(CString sPath);
  /// Reads a component database file: appends to `m_pLcdbCmpCompArray`.
  void vGetOutLcdbCmpCompArray(CString sPath);
  /// How the last load ended; ok before the first. One that raised `CInvalidArgException` counts as invalid content,
  /// with line 0 where a null pointer was the cause.
  const laminate::LoadStatus& GetLoadStatus() const { return m_status; }
  /// Where loads put what they notice: lines that are skipped, blocks left open, lines that act on no record. The
  /// object is the host's and must live as long as the facade or be replaced; null, as at the start: nothing is
  /// noticed.
  void SetDiagnostics(laminate::Diagnostics* pDiagnostics);
  /// Puts a remark into the diagnostics for each name that the files read since `SetDiagnostics` refer to and none of
  /// them defines. Packages and functions count as undefined only if a file that can define them was read.
  void ReportUndefinedNames() const;

  // ---- look-ups ----
  CVRXoutPackage* pGetOutPackageFromArray(CString sName) const;
  /// The argument plays no part: gives the first package with a mount form that lacks one of its two footprints.
  CVRXoutPackage* pGetOutPackageFromArrayWithFootprintName(CString sFootprintName) const;
  CVRXoutPrfFunction* pGetOutPrfFunctionWithName(CString sName) const;
  CVRXoutPrfPinAssign* pGetOutPrfPinAssignWithName(CString sName) const;
  CVRXoutRufComp* pGetOutRufCompFromArray(CString sName) const;
  CVRXoutRufNet* pGetOutRufNetFromName(CString sName) const;
  /// The first part housed in that package.
  CVRXoutPrfPart* pGetOutPrfPartFromPackageRefName(CString sPackageRef) const;
  /// The same under its second name.
  CVRXoutPrfPart* pGetBDoutPrfPartFromArrayWithPackageName(CString sPackageRef) const;
  /// The first part of that name; failing that the first whose name, made fit for a folder name, equals it.
  CVRXoutPrfPart* pGetOutPrfPartFromArray(CString sName) const;
  /// The type of the last port of that function whose symbol pin is `nPinNo`; empty when there is no such function or
  /// port.
  CString GetPinTypeWithPinNo(CString sFunctionName, int nPinNo) const;

  // ---- text helpers of the line scanners ----
  /// 1 when an element equals the text exactly, else 0.
  int bIsInCStringArray(CStringArray& arr, CString s) const;
  /// Column `n`, from 1, of a line cut at blanks, where a quoted stretch is one column without its quotes; empty for 0
  /// and beyond the last. A negative `n` raises.
  CString sGetNthColumn(CString sLine, int n) const;
  /// Number of columns by blanks alone; of a line of 101 and more the position of the hundredth blank in what is left.
  int nGetColumnCount(CString sLine) const;
  /// A text that begins with a quote loses all quotes; any other loses its trailing ")" and then its trailing quotes.
  void vCleanString(CString& s) const;

  CString m_sUnit;                                                        ///< unit that the package file names
  CVRXoutPackageArray* m_pPackageArray = nullptr;                         ///< owned, never null, as all that follow
  CVRXoutRufStackup* m_pStackup = nullptr;                                ///< physical build-up
  CVRXoutLcdbCmpCompArray* m_pLcdbCmpCompArray = nullptr;                 ///< library components
  CVRXoutPrfFunctionArray* m_pPrfFunctionArray = nullptr;                 ///< functions
  CVRXoutPrfPinAssignArray* m_pPrfPinAssignArray = nullptr;               ///< pin assigns
  CVRXoutRufCompArray* m_pRufCompArray = nullptr;                         ///< component settings
  CVRXoutPrfPartArray* m_pPrfPartArray = nullptr;                         ///< parts
  CVRXoutRufNetArray* m_pRufNetArray = nullptr;                           ///< nets
  CVRXoutRufRuleArray* m_pRufRuleArray = nullptr;                         ///< rules of all sections
  CVRXoutRufRuleBoardArray* m_pRufRuleBoardArray = nullptr;               ///< board settings
  CVRXoutRufRuleDesignRuleStackArray* m_pDesignRuleStackArray = nullptr;  ///< design rules by layer
  CVRXoutRufRuleTraceRuleStackArray* m_pTraceRuleStackArray = nullptr;    ///< track widths by layer
  CVRXoutRufRuleElectricalNetArray* m_pElectricalNetArray = nullptr;      ///< electrical nets
  CVRXoutRufBoardSpec* m_pBoardSpec = nullptr;                            ///< board-level settings
  CStringArray m_aHostList1;                                              ///< the host's; nothing here fills it
  CStringArray m_aHostList2;                                              ///< the host's; nothing here fills it
  CString m_sHostText;                                                    ///< the host's; nothing here fills it

  static constexpr auto Fields() {
    using T = CPC_BD_OutClsGet;
    using namespace laminate;
    return FieldList<Field<&T::m_sHostText>, Field<&T::m_sUnit, kNotCopied | kNotCompared>, Field<&T::m_pPackageArray>,
                     Field<&T::m_pStackup>, Field<&T::m_pLcdbCmpCompArray>, Field<&T::m_pPrfFunctionArray>,
                     Field<&T::m_pPrfPinAssignArray>, Field<&T::m_pRufCompArray>, Field<&T::m_pPrfPartArray>,
                     Field<&T::m_pRufNetArray>, Field<&T::m_pRufRuleArray>, Field<&T::m_aHostList1>,
                     Field<&T::m_aHostList2>, Field<&T::m_pRufRuleBoardArray, kSinceVersion2>,
                     Field<&T::m_pDesignRuleStackArray, kSinceVersion2>,
                     Field<&T::m_pTraceRuleStackArray, kSinceVersion2>, Field<&T::m_pBoardSpec, kSinceVersion2>,
                     Field<&T::m_pElectricalNetArray, kSinceVersion2>>();
  }

 private:
  using Scan = void(CPC_BD_OutClsGet&, std::string_view, const laminate::ScanReport&);
  // Runs a load, with the status and the failures that all of them have.
  template <class Read>
  void Load(const CString& sPath, Read read);
  // Reads a line-scanned file whole and scans it. `defined` are the names that such a file can define.
  void LoadLines(const CString& sPath, Scan* pScan, std::initializer_list<laminate::NameKind> defined);

  laminate::LoadStatus m_status;
  laminate::Diagnostics* m_pDiagnostics = nullptr;
  std::unique_ptr<laminate::NameReferences> m_pReferences;  // what the files define and refer to; only with diagnostics
};
