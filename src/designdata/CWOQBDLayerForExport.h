#pragma once
#include "base/CExPtrArray.h"
#include "base/CString.h"

/// A board layer and the id that the target system of an export knows it by. A host fills a table of these; nothing in
/// the library reads it.
class CWOQBDLayerForExport : public laminate::Pooled {
 public:
  CWOQBDLayerForExport() = default;
  CWOQBDLayerForExport(const CWOQBDLayerForExport&) = default;
  CWOQBDLayerForExport& operator=(const CWOQBDLayerForExport&) = default;
  virtual ~CWOQBDLayerForExport() = default;

  CString m_sBDLayerName;  ///< name of the board layer
  int m_nWOQLayID = 0;     ///< id in the target system; 0 is one like any other
};

/// The table; owns its entries, which a host makes with `new` and adds. It has no archive form of its own.
class CWOQBDLayerForExportArray : public laminate::NamedArray<CWOQBDLayerForExport> {
 public:
  /// The layer name of the first entry with that id, which may be empty; without one the empty text. Null slots are
  /// passed over.
  CString sGetBDLayerNameFromWOQLayID(int nID) const;
};
