#include "Interrupt.h"

#include <csignal>
#include <initializer_list>

namespace laminate::cli {

namespace {

volatile std::sig_atomic_t g_nGuards = 0;
volatile std::sig_atomic_t g_nPending = 0;

void EndBy(int nSignal) {
  std::signal(nSignal, SIG_DFL);
  std::raise(nSignal);
}

void OnSignal(int nSignal) {
  // Whoever insists ends the process at once.
  if (g_nGuards == 0 || g_nPending != 0) {
    EndBy(nSignal);
  } else {
    g_nPending = nSignal;
  }
}

}  // namespace

InterruptGuard::InterruptGuard() { g_nGuards = g_nGuards + 1; }

InterruptGuard::~InterruptGuard() {
  g_nGuards = g_nGuards - 1;
  if (g_nGuards == 0 && g_nPending != 0) EndBy(g_nPending);
}

bool InterruptGuard::Pending() { return g_nPending != 0; }

void InterruptGuard::Install() {
  for (int nSignal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction action {};
    // A caller that had them ignored, such as nohup, is obeyed.
    if (sigaction(nSignal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) continue;
    action = {};
    action.sa_handler = OnSignal;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    sigaction(nSignal, &action, nullptr);
  }
}

}  // namespace laminate::cli
