#pragma once
#include "base/CString.h"
#include "base/Platform.h"

inline constexpr UINT MB_OK = 0x00000000;
inline constexpr UINT MB_ICONEXCLAMATION = 0x00000030;
inline constexpr int IDOK = 1;
using HWND = void*;

/// What the library asks of the program that links it: to show a message box. An object of this kind serves the
/// calling thread for as long as a `CHostInterfaceScope` names it; scopes nest. Without one the text goes to standard
/// error, a line each. The load goes on when the operation returns; an exception thrown in it passes through the load.
class CHostInterface {
 public:
  virtual ~CHostInterface() = default;
  /// A box of the framework, without a caption.
  virtual int OnAfxMessageBox(const CString& sText, UINT nType, UINT nIDHelp);
  /// A box of the system, with a caption.
  virtual int OnMessageBox(HWND hOwner, const CString& sText, const CString& sCaption, UINT nType);
};

class CHostInterfaceScope {
 public:
  explicit CHostInterfaceScope(CHostInterface& host);
  ~CHostInterfaceScope();
  CHostInterfaceScope(const CHostInterfaceScope&) = delete;
  CHostInterfaceScope& operator=(const CHostInterfaceScope&) = delete;

 private:
  CHostInterface* m_pOuter;
};

/// Shows a box through the calling thread's host interface; gives the button, `IDOK`.
int AfxMessageBox(const CString& sText, UINT nType = MB_OK, UINT nIDHelp = 0);
int MessageBoxA(HWND hOwner, const CString& sText, const CString& sCaption, UINT nType);
