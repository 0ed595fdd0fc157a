#pragma once
#include <string_view>

#include "base/CString.h"
#include "base/LoadStatus.h"

namespace laminate {

/// The remarks of one load. A line of two bytes is enough for a remark, which takes far more memory: they end at a
/// number that tells enough. Without diagnostics nothing is remarked.
class FileRemarks {
 public:
  FileRemarks(const CString& sFile, Diagnostics* pDiagnostics) : m_sFile(sFile), m_pDiagnostics(pDiagnostics) {}

  bool IsWanted() const { return m_pDiagnostics != nullptr; }
  void Add(Diagnostic::Severity severity, int nLine, int nColumn, std::string_view sReason) {
    constexpr int kMost = 1000;
    if (!IsWanted() || m_nCount > kMost) return;
    if (m_nCount++ == kMost) {
      severity = Diagnostic::Severity::note;
      sReason = "what else there is to remark of this file is not told";
    }
    m_pDiagnostics->Add(severity, m_sFile, nLine, nColumn, CString(sReason));
  }

 private:
  CString m_sFile;
  Diagnostics* m_pDiagnostics;
  int m_nCount = 0;
};

}  // namespace laminate
