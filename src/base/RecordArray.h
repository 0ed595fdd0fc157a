#pragma once
#include <algorithm>
#include <memory>
#include <utility>

#include "base/CArchive.h"
#include "base/CExPtrArray.h"

namespace laminate {

/// A named array that is copied with its elements, by their `clone`, and is compared by them. `Self` is the class that
/// derives from it. Null slots are treated as if they were not there.
///
/// Only the classes that derive from it have objects; what `Self` adds as fields of its own is not copied by the
/// operations here, but by the operations that `Self` has or that the language gives it.
template <class X, class Self>
class ClonedArray : public NamedArray<X> {
 public:
  ClonedArray() = default;
  ClonedArray(const ClonedArray& s) : NamedArray<X>() { *this = s; }
  /// Every element of this array is deleted, and a clone of each element of `s` takes their place. A failure leaves
  /// this array as it was.
  ClonedArray& operator=(const ClonedArray& s) {
    if (this == &s) return *this;
    ClonedArray fresh;
    for (const X* p : s) {
      if (p == nullptr) continue;
      std::unique_ptr<X> copy(p->clone());
      fresh.Add(copy.get());
      copy.release();
    }
    this->Swap(fresh);
    return *this;
  }

  /// As many elements, and equal ones in the same order; an array always equals itself.
  bool operator==(const ClonedArray& other) const { return Equals(other); }
  bool operator!=(const ClonedArray& other) const { return !Equals(other); }

  /// A copy that the caller owns.
  virtual Self* clone() const { return new Self(static_cast<const Self&>(*this)); }

 protected:
  /// The number of elements, null slots left out.
  ULONGLONG CountElements() const {
    ULONGLONG n = 0;
    for (const X* p : *this) n += p != nullptr ? 1 : 0;
    return n;
  }

 private:
  bool Equals(const ClonedArray& other) const {
    if (this == &other) return true;
    if (CountElements() != other.CountElements()) return false;
    const X* const* a = this->begin();
    const X* const* b = other.begin();
    for (;; ++a, ++b) {
      while (a != this->end() && *a == nullptr) ++a;
      while (b != other.end() && *b == nullptr) ++b;
      if (a == this->end() || b == other.end()) return true;
      if (**a != **b) return false;
    }
  }
};

/// The arrays of records that have a form in an archive. Each is a class of one line:
///
///   class CVRXoutPackageArray : public laminate::RecordArray<CVRXoutPackage, CVRXoutPackageArray> {};
///
/// The form: the 32-bit value 0x80000001 (version 1, and the top bit for a count of 64 bits), the count, and each
/// element's own form. On loading a count of 32 bits, signed, is taken too; a negative one loads nothing.
template <class X, class Self>
class RecordArray : public ClonedArray<X, Self> {
 public:
  static constexpr int m_nVersion = 1;

  /// Loading deletes all elements first. A version that is not known ends it there, behind the marker; the rest of the
  /// archive is then read out of step. When something raises, the elements loaded before it stay.
  void Serialize(CArchive& ar) override {
    if (ar.IsStoring()) {
      ar << (kWideCount | static_cast<UINT>(m_nVersion)) << this->CountElements();
      for (X* p : *this) {
        if (p != nullptr) p->Serialize(ar);
      }
      return;
    }
    this->DeleteAll();
    UINT nMarker = 0;
    ar >> nMarker;
    if ((nMarker & ~kWideCount) != static_cast<UINT>(m_nVersion)) return;
    ULONGLONG nLeft = LoadCount(ar, (nMarker & kWideCount) != 0);
    // A count may lie: room is made for no more elements than the bytes at hand can be.
    this->Preallocate(std::min<ULONGLONG>(nLeft, ar.BytesAhead() / kLeastBytes));
    for (; nLeft != 0; --nLeft) {
      auto p = std::make_unique<X>();
      p->Serialize(ar);
      this->Add(p.get());
      p.release();
    }
  }

 private:
  static constexpr UINT kWideCount = 0x80000000;
  static constexpr std::size_t kLeastBytes = 3;  // of an element: three empty texts

  static ULONGLONG LoadCount(CArchive& ar, bool bWide) {
    if (bWide) {
      ULONGLONG nCount = 0;
      ar >> nCount;
      return nCount;
    }
    int nCount = 0;
    ar >> nCount;
    return nCount > 0 ? static_cast<ULONGLONG>(nCount) : 0;
  }
};

}  // namespace laminate
