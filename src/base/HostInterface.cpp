#include "base/HostInterface.h"

#include <cstdio>

namespace {

thread_local CHostInterface* t_pHost = nullptr;

int ToStandardError(const CString& sText) {
  std::fprintf(stderr, "%s\n", sText.GetString());
  return IDOK;
}

}  // namespace

int CHostInterface::OnAfxMessageBox(const CString& sText, UINT, UINT) { return ToStandardError(sText); }
int CHostInterface::OnMessageBox(HWND, const CString& sText, const CString&, UINT) { return ToStandardError(sText); }

CHostInterfaceScope::CHostInterfaceScope(CHostInterface& host) : m_pOuter(t_pHost) { t_pHost = &host; }
CHostInterfaceScope::~CHostInterfaceScope() { t_pHost = m_pOuter; }

int AfxMessageBox(const CString& sText, UINT nType, UINT nIDHelp) {
  return t_pHost ? t_pHost->OnAfxMessageBox(sText, nType, nIDHelp) : ToStandardError(sText);
}
int MessageBoxA(HWND hOwner, const CString& sText, const CString& sCaption, UINT nType) {
  return t_pHost ? t_pHost->OnMessageBox(hOwner, sText, sCaption, nType) : ToStandardError(sText);
}
