#pragma once
#include "base/CString.h"

class CBDboardContainer;
class CBDlibraryEntities;
class CBDparameter;
class CBDtechnologyContainer;
class CECadCls;

namespace laminate {

/// Where the part of a board file outside components and layout goes. Everything is added to; only the version is
/// replaced. A null container raises when the file has something for it.
struct OthersTarget {
  CString& sVersion;
  CBDtechnologyContainer* pTechnology;
  CBDboardContainer* pBoard;
  CBDparameter* pParameter;
  CBDlibraryEntities* pLibraryEntities;
};

/// Reads the tree of that part: header version, technology, sub-boards, component groups, nets, parameters and library
/// entities, in this order, each of which may be absent. The root form is "pcf", "tcf" or "pnf", looked for in this
/// order; when there is none, the reader is deleted and the result is -1. Otherwise the reader stays the caller's, and
/// the result is 0.
///
/// A board whose net array was taken gets a new one first. A null reader, or a form that lacks what it needs, raises
/// `CInvalidArgException`; the reader then stays the caller's, what was read stays, and the object that was under
/// construction is lost.
int ReadOthers(CECadCls* pReader, OthersTarget& target);

}  // namespace laminate
