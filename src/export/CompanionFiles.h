#pragma once
#include "base/TextOut.h"
#include "designdata/CVRXoutPackage.h"
#include "designdata/CVRXoutPrfFunction.h"
#include "designdata/CVRXoutPrfPart.h"
#include "designdata/CVRXoutPrfPinAssign.h"

namespace laminate {

/// The text of a package file (.pkf), flush left: coding and unit lines, then the packages.
void WritePackageFile(TextOut& out, const CVRXoutPackageArray& packages);

/// The text of a component definition file (.cdf): functions, pin assigns, parts. A pin assign's interface is that of
/// the first part that refers to it; in that part's ports "%" is doubled in the names and an empty type becomes
/// "INOUT", and "%" is doubled in the port numbers of function instances: in the records themselves, once for each pin
/// assign, and so they also stand in the part that follows. A pin assign without a part has no ports. Null arguments
/// are empty arrays; a null array of a record raises `CInvalidArgException`.
void WriteComponentDefinitionFile(TextOut& out, CVRXoutPrfPartArray* pParts, CVRXoutPrfPinAssignArray* pPinAssigns,
                                  CVRXoutPrfFunctionArray* pFunctions);

}  // namespace laminate
