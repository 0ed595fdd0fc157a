#pragma once
#include <gtest/gtest.h>

#include <initializer_list>
#include <new>

#include "base/CException.h"

namespace laminate::test {

/// Makes allocations of the calling thread fail for as long as it lives. It works in every test program that has
/// base/AllocationFault.cpp among its sources, which replaces the program's `operator new`.
///
/// Where the library takes small blocks from its pool, only those allocations are seen that reach the heap; a build
/// with LAMINATE_NO_POOL sees them all.
class AllocationFault {
 public:
  enum class Duration { once, forever };

  /// The allocation number `nFirst`, from 1, fails: that one only, or it and all that follow.
  AllocationFault(long nFirst, Duration duration);
  ~AllocationFault();
  AllocationFault(const AllocationFault&) = delete;
  AllocationFault& operator=(const AllocationFault&) = delete;

  /// The allocations asked for since.
  long Count() const;
  /// Whether one has failed.
  bool HasFailed() const;
};

/// Runs an operation with its first allocation failing, then its second, and so on until it needs no more of them;
/// each once for that allocation alone and once for all from it on. `run` starts from the same state each time and
/// is to raise `std::bad_alloc` or to cope; what it raises else passes through. Gives the number of runs in which an
/// allocation failed. Assertions belong into `check`, which runs behind each failure, with memory again.
template <class Run, class Check>
int ForEachFailingAllocation(Run run, Check check) {
  int nFailures = 0;
  for (const auto duration : {AllocationFault::Duration::once, AllocationFault::Duration::forever}) {
    for (long n = 1;; ++n) {
      bool bFailed = false;
      {
        const AllocationFault fault(n, duration);
        try {
          run();
        } catch (const std::bad_alloc&) {
        }
        bFailed = fault.HasFailed();
      }
      if (!bFailed) break;
      ++nFailures;
      check();
    }
  }
  return nFailures;
}
/// An operation of which every failure for want of memory must be the platform's exception.
template <class Run>
auto OnlyPlatforms(Run run) {
  return [run] {
    try {
      run();
    } catch (const CMemoryException&) {
      throw;
    } catch (const std::bad_alloc&) {
      ADD_FAILURE() << "not the platform's exception";
      throw;
    }
  };
}
template <class Run>
int ForEachFailingAllocation(Run run) {
  return ForEachFailingAllocation(run, [] {});
}

}  // namespace laminate::test
