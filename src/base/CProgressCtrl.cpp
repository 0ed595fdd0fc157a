#include "base/CProgressCtrl.h"

#include <algorithm>

LRESULT SendMessageA(HWND hWnd, UINT nMessage, WPARAM wParam, LPARAM) {
  if (hWnd != nullptr && nMessage == PBM_SETPOS) {
    static_cast<CProgressCtrl*>(hWnd)->OnSetPos(static_cast<int>(std::min<WPARAM>(wParam, 0x7FFFFFFF)));
  }
  return 0;
}
