#pragma once
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "drawobj/DrawObjLedger.h"

class CBDesigner;
class CVRXoutPackageArray;
class CVRXoutPrfFunctionArray;
class CVRXoutPrfPartArray;
class CVRXoutPrfPinAssignArray;

namespace laminate {

/// "kept", "normalised", ...
std::string_view ToText(Fate fate);

/// What is left of a field's value when the file that an export wrote is read again.
struct RecordLedgerLine {
  std::string_view className;
  std::string_view field;
  Fate fate;
  std::string_view note;  ///< what stands there instead, or when; may be empty
};

/// The ledger of everything that is no shape, class by class. `DrawObjLedger` is that of the shapes.
std::vector<RecordLedgerLine> RecordLedger();

/// A value that is not read again as it is from the written files.
struct ExportLoss {
  std::string object;  ///< where it is, in the names of the database: "m_pBoardContainer.m_pNetArray[GND]"
  std::string_view className;
  std::string_view field;  ///< empty when the object as a whole is lost
  Fate fate;
  std::string_view note;
  std::string value;  ///< as text
};

/// The records that are exported beside a database; null arrays take no part.
struct ExportRecords {
  const CVRXoutPackageArray* pPackages = nullptr;
  const CVRXoutPrfPartArray* pParts = nullptr;
  const CVRXoutPrfPinAssignArray* pPinAssigns = nullptr;
  const CVRXoutPrfFunctionArray* pFunctions = nullptr;
};

/// Tells every value of a design that the files of `CBDesigner::nPrint2File` would not hold, in the order of the
/// database. To be called before the export, which changes some of them. A value that is that of a fresh object is no
/// loss where the file has nothing of it. What a load passed over is not in the database, and so it is not told. The
/// cost is linear in the size of the design.
void FindExportLosses(const CBDesigner& root, const ExportRecords& records,
                      const std::function<void(const ExportLoss&)>& tell);

}  // namespace laminate
