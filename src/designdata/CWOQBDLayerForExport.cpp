#include "designdata/CWOQBDLayerForExport.h"

#include "designdata/RecordLookup.h"

CString CWOQBDLayerForExportArray::sGetBDLayerNameFromWOQLayID(int nID) const {
  const CWOQBDLayerForExport* p = laminate::FindFirst(*this, &CWOQBDLayerForExport::m_nWOQLayID, nID);
  return p == nullptr ? CString() : p->m_sBDLayerName;
}
