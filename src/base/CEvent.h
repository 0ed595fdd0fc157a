#pragma once
#include "base/Platform.h"

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
