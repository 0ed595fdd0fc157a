#pragma once

namespace laminate::cli {

/// While an object of this kind lives, a signal that ends the process waits until the last of them has gone, so that
/// nothing unfinished remains on disk. Writers ask `Pending` between their steps and give up when it is set. A second
/// signal does not wait.
class InterruptGuard {
 public:
  InterruptGuard();
  /// Of the last one: ends the process by the signal that has come meanwhile.
  ~InterruptGuard();
  InterruptGuard(const InterruptGuard&) = delete;
  InterruptGuard& operator=(const InterruptGuard&) = delete;

  static bool Pending();
  /// Takes the signals over. Call once at the start.
  static void Install();
};

}  // namespace laminate::cli
