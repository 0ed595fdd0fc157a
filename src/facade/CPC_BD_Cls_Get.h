#pragma once
#include <cstdio>
#include <utility>

#include "base/CProgressCtrl.h"
#include "base/CString.h"
#include "base/LoadStatus.h"
#include "base/Pool.h"

class CBDesigner;
class CBDnetArray;

/// What a host holds to load a board: the two file paths, two progress controls, a log, and the root of the database.
///
///   CPC_BD_Cls_Get facade;
///   facade.vSetFtfFilePath("board.ftf");
///   facade.vSetPcfFilePath("board.pcf");
///   facade.vParseFtfAndPcf(0);
///   for (CBDnet* pNet : *facade.pGetBDesigner()->m_pBoardContainer->m_pNetArray) ...
///
/// A facade is meant for one load: nothing empties the database between loads, so a second one adds to it. Deleting the
/// facade deletes the whole database. One facade serves one thread at a time; two facades are independent.
class CPC_BD_Cls_Get : public laminate::Pooled {
 public:
  /// Creates the root with its empty database.
  CPC_BD_Cls_Get();
  /// Copies member by member: the copy shares the root. Only one of the objects that share it may be destroyed; the
  /// host sets `m_pBDesigner` of the others to null.
  CPC_BD_Cls_Get(const CPC_BD_Cls_Get&) = default;
  /// As the copy constructor. The root that this object held is not deleted: it is the host's to delete.
  CPC_BD_Cls_Get& operator=(const CPC_BD_Cls_Get&) = default;
  /// Deletes the root, and with it the database. The log is left open.
  virtual ~CPC_BD_Cls_Get();

  /// The controls for the board file and the footprint file, in this order; null for none. Not owned. A load with
  /// progress leaves the board file's control with the root, whose later loads move it: it must outlive the root or be
  /// cleared with `CBDesigner::vSetPCFProgressPtr`.
  void SetProgressPtr(CProgressCtrl* pPcf, CProgressCtrl* pFtf) {
    m_pPcfProgress = pPcf;
    m_pFtfProgress = pFtf;
  }
  /// The paths of the footprint file (.ftf) and the board file (.pcf) that `vParseFtfAndPcf` reads.
  void vSetFtfFilePath(CString sPath) { m_sFtfFilePath = std::move(sPath); }
  void vSetPcfFilePath(CString sPath) { m_sPcfFilePath = std::move(sPath); }
  /// The normal load: the footprint file, then the board file, into the root. With `bProgress` not 0 the controls
  /// receive positions from 0 to 100; a null control is skipped. Where a path is empty a message box says so and
  /// nothing is read.
  ///
  /// Raises `CInvalidArgException` when a form lacks a value that it needs; what was read stays, and so does the root's
  /// log pointer; the same holds for `CMemoryException` and for what a control or a message box raises. Faults of the
  /// files otherwise end the load quietly: `GetLoadStatus` tells of them.
  void vParseFtfAndPcf(const int& bProgress);
  /// The root; stays the facade's.
  CBDesigner* pGetBDesigner() const { return m_pBDesigner; }
  /// Loads a board file and hands over the nets of the root, those of earlier loads included: the caller owns the array
  /// and its elements. Everything else stays in the root, whose `m_pNetArray` is null until a later load makes a new
  /// one. Never null; empty for a file without nets. No footprint file is read, and positions and log lines go to the
  /// control and the log that the root holds, not to this object's.
  ///
  /// Raises as `vParseFtfAndPcf` does; the nets then stay in the root.
  CBDnetArray* pGetNetArrayFromPcf(CString sPcfPath);
  /// Column `nColumn`, counted from 1, of a line that is split at blanks; a quoted stretch is one column without its
  /// quotes. Empty for column 0 and behind the last one; a negative column raises `CInvalidArgException`.
  CString sGetNthColumn(CString sLine, int nColumn);
  /// Always empty: see `GetLoadStatus`.
  CString sGetErrorMsg() const { return m_sErrorMsg; }
  /// How the last load of this object ended, over both files: the first fault, or `ok`. What raised is told as
  /// `CBDesigner::GetLoadStatus` says.
  const laminate::LoadStatus& GetLoadStatus() const { return m_status; }

  CProgressCtrl* m_pPcfProgress = nullptr;  ///< control for the board file, or null; the host's
  CProgressCtrl* m_pFtfProgress = nullptr;  ///< control for the footprint file, or null; the host's
  CBDesigner* m_pBDesigner;                 ///< the root; owned
  FILE* m_pLogFile = nullptr;  ///< log stream that the host assigns, or null; the host's, never closed here
  CString m_sFtfFilePath;      ///< path of the footprint file
  CString m_sPcfFilePath;      ///< path of the board file
  CString m_sErrorMsg;         ///< nothing assigns it

 private:
  laminate::LoadStatus m_status;
};
