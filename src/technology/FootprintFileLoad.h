#pragma once
#include <cstdio>
#include <functional>

#include "base/CString.h"
#include "base/CStringArray.h"
#include "base/LoadStatus.h"

class CBDdrawObjArray;
class CBDfootprintContainer;
class CBDtechnologyContainer;
class CECadCls;

namespace laminate {

/// Where the loads of a footprint file put what they read. They add and never clear.
struct FootprintFileTarget {
  CBDtechnologyContainer& technology;  ///< gets the technology's name and the footprint layers
  CBDfootprintContainer& footprints;   ///< gets pads, padstacks and footprints
  /// Asked at each record where the shapes inside board assemblies go, since a host may change its board whenever the
  /// load calls it; null: there is no board.
  std::function<CBDdrawObjArray*()> boardShapes;
  /// Where the host keeps the log of the full load, which is flushed line by line and not closed. The host may change
  /// the stream whenever the load calls it; without one nothing is logged.
  std::FILE* const* pLogFile = nullptr;
  LoadStatus& status;  ///< the first fault of the load
};

/// Loads a footprint file whole. A file without a root form "ftf" gives nothing. A value that a form needs and lacks
/// raises `CInvalidArgException` with its line, after the status has told it; what was read stays.
void LoadFootprintFile(const CString& sPath, FootprintFileTarget& target);

/// The same for a file that has been parsed whole. Nothing is logged.
void ReadFootprintFile(const CECadCls& reader, FootprintFileTarget& target);

/// Loads the footprints of the given names, each in one tree of its own; the rest of the file is only scanned. Their
/// "uver" and properties are left out, and only the first layer of each pin is read. Nothing is logged.
void LoadFootprintsByName(const CString& sPath, CStringArray& arrNames, FootprintFileTarget& target);

/// Loads the technology's name, the footprint layers, all pads and all padstacks, these without "isBuildupVia". Nothing
/// is logged.
void LoadPadsAndPadstacks(const CString& sPath, FootprintFileTarget& target);

}  // namespace laminate
