#include "base/AllocationFault.h"

#include <cstdlib>

namespace {

struct Fault {
  bool bArmed;
  bool bForever;
  bool bFailed;
  long nFirst;
  long nCount;
};
constinit thread_local Fault t_fault = {};

bool Fails() noexcept {
  if (!t_fault.bArmed) return false;
  const long n = ++t_fault.nCount;
  if (n != t_fault.nFirst && !(t_fault.bForever && n > t_fault.nFirst)) return false;
  t_fault.bFailed = true;
  return true;
}

void* Allocate(std::size_t nBytes, std::size_t nAlignment) noexcept {
  if (Fails()) return nullptr;
  if (nBytes == 0) nBytes = 1;
  if (nAlignment <= __STDCPP_DEFAULT_NEW_ALIGNMENT__) return std::malloc(nBytes);
  return std::aligned_alloc(nAlignment, (nBytes + nAlignment - 1) / nAlignment * nAlignment);
}

void* AllocateOrThrow(std::size_t nBytes, std::size_t nAlignment = 1) {
  void* p = Allocate(nBytes, nAlignment);
  if (p == nullptr) throw std::bad_alloc();
  return p;
}

std::size_t Number(std::align_val_t nAlignment) { return static_cast<std::size_t>(nAlignment); }

}  // namespace

// All forms, since a sanitizer's own versions of those that are left out would not come here.
void* operator new(std::size_t n) { return AllocateOrThrow(n); }
void* operator new[](std::size_t n) { return AllocateOrThrow(n); }
void* operator new(std::size_t n, const std::nothrow_t&) noexcept { return Allocate(n, 1); }
void* operator new[](std::size_t n, const std::nothrow_t&) noexcept { return Allocate(n, 1); }
void* operator new(std::size_t n, std::align_val_t a) { return AllocateOrThrow(n, Number(a)); }
void* operator new[](std::size_t n, std::align_val_t a) { return AllocateOrThrow(n, Number(a)); }
void* operator new(std::size_t n, std::align_val_t a, const std::nothrow_t&) noexcept { return Allocate(n, Number(a)); }
void* operator new[](std::size_t n, std::align_val_t a, const std::nothrow_t&) noexcept {
  return Allocate(n, Number(a));
}
void operator delete(void* p) noexcept { std::free(p); }
void operator delete[](void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t) noexcept { std::free(p); }
void operator delete(void* p, const std::nothrow_t&) noexcept { std::free(p); }
void operator delete[](void* p, const std::nothrow_t&) noexcept { std::free(p); }
void operator delete(void* p, std::align_val_t) noexcept { std::free(p); }
void operator delete[](void* p, std::align_val_t) noexcept { std::free(p); }
void operator delete(void* p, std::size_t, std::align_val_t) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t, std::align_val_t) noexcept { std::free(p); }
void operator delete(void* p, std::align_val_t, const std::nothrow_t&) noexcept { std::free(p); }
void operator delete[](void* p, std::align_val_t, const std::nothrow_t&) noexcept { std::free(p); }

namespace laminate::test {

AllocationFault::AllocationFault(long nFirst, Duration duration) {
  t_fault = {true, duration == Duration::forever, false, nFirst, 0};
}
AllocationFault::~AllocationFault() { t_fault.bArmed = false; }
long AllocationFault::Count() const { return t_fault.nCount; }
bool AllocationFault::HasFailed() const { return t_fault.bFailed; }

}  // namespace laminate::test
