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

/// The platform's event object. It exists for hosts; nothing in the library waits on one.
class CEvent final {
 public:
  CEvent() = default;
  BOOL SetEvent() {
    m_bSignalled = true;
    return TRUE;
  }
  BOOL ResetEvent() {
    m_bSignalled = false;
    return TRUE;
  }
  bool IsSignalled() const { return m_bSignalled; }

 private:
  bool m_bSignalled = false;
};
