#pragma once
#include "base/CString.h"

class CBDboardContainer;
class CBDfootprintContainer;
class CBDlibraryEntities;
class CBDparameter;
class CBDtechnologyContainer;
class CVRXoutPackageArray;
class CVRXoutPrfFunctionArray;
class CVRXoutPrfPartArray;
class CVRXoutPrfPinAssignArray;

namespace laminate {

/// What an export writes. Null containers raise; a null package array means no package file, other null arrays are
/// empty ones. Everything stays the caller's.
struct ExportSet {
  CBDtechnologyContainer* pTechnology = nullptr;
  CBDboardContainer* pBoard = nullptr;
  CBDparameter* pParameter = nullptr;
  CBDlibraryEntities* pLibraryEntities = nullptr;
  CBDfootprintContainer* pFootprints = nullptr;
  CVRXoutPackageArray* pPackages = nullptr;
  CVRXoutPrfPartArray* pParts = nullptr;
  CVRXoutPrfPinAssignArray* pPinAssigns = nullptr;
  CVRXoutPrfFunctionArray* pFunctions = nullptr;
};

/// Writes the files of a design one after another: stem + ".pcf", ".ftf", ".tcf", ".pkf", ".cdf", where the stem is
/// `sPath` without a ".pcf" at its end. The ".tcf" is indented by 2 and the ".pkf" by 4; the others are flush left.
/// Each file appears whole or not at all; one that cannot be written raises `CFileException` with its name, and those
/// before it stay. The writers change the database as their classes tell.
void ExportDesign(const CString& sPath, const ExportSet& set);

}  // namespace laminate
