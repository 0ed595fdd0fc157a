#pragma once
// Arrays that a host made may hold null slots, which count as if they were not there.

namespace laminate {

/// The first element of an array whose field equals a value exactly, or null.
template <class Array, class T, class F, class Value>
T* FindFirst(const Array& arr, F T::*pField, const Value& value) {
  for (T* p : arr) {
    if (p != nullptr && p->*pField == value) return p;
  }
  return nullptr;
}

}  // namespace laminate
