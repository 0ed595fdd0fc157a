#pragma once
#include <cstdint>

#include "base/HostInterface.h"
#include "base/Platform.h"

using WPARAM = std::uint64_t;
using LPARAM = std::int64_t;
using LRESULT = std::int64_t;

/// The message by which a position reaches a control.
inline constexpr UINT PBM_SETPOS = 1026;

/// A progress control that a host lends the library. The host overrides `OnSetPos`, which receives the positions of a
/// load, 0 to 100, on the loading thread; an exception thrown in it passes through the load.
class CProgressCtrl {
 public:
  virtual ~CProgressCtrl() = default;
  virtual void OnSetPos(int nPos) { m_nPos = nPos; }
  int GetPos() const { return m_nPos; }
  /// The control's window: the handle under which messages reach it.
  HWND GetSafeHwnd() { return this; }

 protected:
  int m_nPos = 0;
};

/// Sends a message to a control's window and waits for it. Only `PBM_SETPOS` has an effect; a null window takes
/// nothing.
LRESULT SendMessageA(HWND hWnd, UINT nMessage, WPARAM wParam, LPARAM lParam);

namespace laminate {

/// Sends a position, 0 to 100, to a control; null is none.
inline void SendPosition(CProgressCtrl* pControl, int nPos) {
  if (pControl != nullptr) SendMessageA(pControl->GetSafeHwnd(), PBM_SETPOS, static_cast<WPARAM>(nPos), 0);
}

}  // namespace laminate
