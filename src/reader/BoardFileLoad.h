#pragma once
#include <cstdio>
#include <functional>

#include "base/CProgressCtrl.h"
#include "base/CString.h"
#include "base/LoadStatus.h"

class CECadCls;
class CECadClsLvl;

namespace laminate {

/// One load of a board file: what it reads, whom it tells, and who turns the trees into objects. The load itself knows
/// no keyword beyond those by which the file is split.
struct BoardFileLoad {
  CString sPath;

  // The root's own fields: a host may change them whenever the load calls it.
  std::FILE*& pLogFile;       ///< log stream, or null; not closed
  CProgressCtrl*& pProgress;  ///< receives 40, 60, 80 and 100, or null
  int& bInQuote;              ///< string state of the brace count
  int& nComponentFileCount;   ///< set to 0 when the split fails
  int& nLayerFileCount;       ///< set to 0 when the split fails
  LoadStatus& status;         ///< the first fault of the load, with lines of the host's own file

  /// Given the reader of all that stands outside the two big sections. Gives 0 and leaves the reader alone, or deletes
  /// the reader and gives -1 when it knows no form of the file; a failure it raises leaves the reader alone.
  std::function<int(CECadCls*)> others;
  /// Given each component form, in file order, after `others`. The tree is freed afterwards.
  std::function<void(CECadClsLvl*)> component;
  /// Given each layer form of the board layout, in file order, after the components.
  std::function<void(CECadClsLvl*)> layer;
};

/// Loads a board file: splits it into the working folder, reads the pieces one at a time, so that only one tree exists
/// at any moment, and hands each tree on. The working folder is locked for as long as the load runs and is removed at
/// its normal end. It stays, for the host to look at, when the part outside the two sections is not well formed or when
/// something raises; it is removed as far as possible when the split fails.
///
/// Whatever a callable or the progress control raises passes through. `CInvalidArgException` of a callable, when it has
/// a line, gets that of the host's file and is told in the status as invalid content, unless the status holds an
/// earlier fault.
void LoadBoardFile(BoardFileLoad& load);

}  // namespace laminate
