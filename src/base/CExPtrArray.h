#pragma once
#include <algorithm>
#include <memory>
#include <tuple>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "base/CArray.h"

/// Array of pointers with look-ups that never raise on a bad index. Elements are compared by pointer. The template
/// owns nothing: destroying it leaves its elements alive; the named arrays (`laminate::NamedArray`) own theirs.
/// Deleting an element calls its virtual destructor.
template <class TYPE, class ARG_TYPE>
class CExPtrArray : public CArray<TYPE, ARG_TYPE> {
 public:
  using Base = CArray<TYPE, ARG_TYPE>;

  /// The element, or null if `n` is out of range.
  TYPE GetAt(__int64 n) const { return InRange(n) ? this->GetData()[n] : nullptr; }
  /// Stores `p` if `n` is in range; the old element is not deleted.
  void SetAt(__int64 n, TYPE p) {
    if (InRange(n)) this->GetData()[n] = p;
  }
  /// Null if empty.
  TYPE GetLastElement() const { return GetAt(GetLastIndex()); }
  /// Size minus 1; -1 if empty.
  __int64 GetLastIndex() const { return this->GetSize() - 1; }
  /// Whether an element stands there, be it null.
  bool IsValidIndex(const int& n) const { return InRange(n); }
  /// First index of `p`, or -1.
  int FindIndex(TYPE const p) const { return static_cast<int>(Find(p)); }
  bool Exists(TYPE const p) const { return Find(p) != -1; }
  /// -1 if `p` is in the array already; otherwise appends it and gives its index.
  __int64 Add_if_only_do_not_exists(TYPE p) { return Exists(p) ? -1 : this->Add(p); }

  /// Takes the first occurrence out without deleting; false if absent.
  bool Remove(TYPE const p) {
    const INT_PTR n = Find(p);
    if (n < 0) return false;
    this->RemoveAt(n);
    return true;
  }
  /// Takes the last element out and gives it; null if empty.
  TYPE RemoveLastElement() {
    if (this->IsEmpty()) return nullptr;
    TYPE p = GetLastElement();
    this->RemoveAt(GetLastIndex());
    return p;
  }
  /// Deletes the first occurrence of `p` (nothing if `p` is null) and its slot; false if absent.
  bool Delete(TYPE p) {
    if (!Remove(p)) return false;
    delete p;
    return true;
  }
  /// `nCount` times: deletes the object at `n`, if there is one, and removes the slot. A bad index raises, when what
  /// stood from there to the end has gone.
  void DeleteAt(int n, int nCount) {
    if (nCount <= 0) return;
    if (!InRange(n)) AfxThrowInvalidArgException();
    const INT_PTR nThere = std::min<INT_PTR>(nCount, this->GetSize() - n);
    for (INT_PTR i = n; i < n + nThere; ++i) delete std::exchange(this->GetData()[i], nullptr);
    this->RemoveAt(n, nThere);
    if (nThere < nCount) AfxThrowInvalidArgException();
  }
  /// Deletes the last object and its slot; false if empty.
  bool DeleteLastElement() {
    if (this->IsEmpty()) return false;
    delete RemoveLastElement();
    return true;
  }
  /// Deletes every element, front to back, then sets the size to 0.
  void DeleteAll() {
    for (INT_PTR i = 0; i < this->GetSize(); ++i) delete std::exchange(this->GetData()[i], nullptr);
    this->SetSize(0, -1);
  }

  /// Removes all null slots.
  virtual void RemoveNullElement() {
    Keep([](TYPE p) { return p != nullptr; });
  }
  /// Keeps the first occurrence of each pointer, in order. Nothing is deleted. Without memory raises, and changes
  /// nothing; so does `Subtract`.
  virtual void RemoveDuplicatedElements() {
    // Which elements go is found out first: when memory runs out, the array is as it was.
    laminate::WithPlatformFailures([this] {
      std::unordered_set<TYPE> seen;
      std::vector<bool> first(static_cast<std::size_t>(this->GetSize()));
      for (INT_PTR i = 0; i < this->GetSize(); ++i) {
        first[static_cast<std::size_t>(i)] = seen.insert(this->GetData()[i]).second;
      }
      std::size_t i = 0;
      Keep([&first, &i](TYPE) -> bool { return first[i++]; });
    });
  }
  void Reverse() { std::reverse(this->begin(), this->end()); }
  /// Same size and the same pointers in the same order.
  bool IsElementEqual(const CArray<TYPE, ARG_TYPE>& other) const {
    return std::equal(this->begin(), this->end(), other.begin(), other.end());
  }
  /// Takes out one occurrence, the first that is left, per element of `other`. An array less itself is empty.
  void Subtract(const CArray<TYPE, ARG_TYPE>& other) {
    if (&other == this) {
      this->SetSize(0, -1);
      return;
    }
    std::unordered_map<TYPE, INT_PTR> toGo;
    laminate::WithPlatformFailures([&] {
      for (TYPE p : other) ++toGo[p];
    });
    Keep([&toGo](TYPE p) {
      const auto it = toGo.find(p);
      if (it == toGo.end() || it->second == 0) return true;
      --it->second;
      return false;
    });
  }
  /// Moves the elements `nFrom` to `nTo` to the end of `dest`, in order; ownership goes with them. False if `nTo` is
  /// below `nFrom`. An index out of range, or this array as `dest`, raises and moves nothing.
  bool MoveElementTo(CArray<TYPE, ARG_TYPE>& dest, const int& nFrom, const int& nTo) {
    const int nFirst = nFrom;
    const int nLast = nTo;
    if (nLast < nFirst) return false;
    if (&dest == this || !InRange(nFirst) || !InRange(nLast)) AfxThrowInvalidArgException();
    const INT_PTR nCount = static_cast<INT_PTR>(nLast) - nFirst + 1;
    const INT_PTR nOld = dest.GetSize();
    dest.SetSize(nOld + nCount);
    std::copy_n(this->GetData() + nFirst, nCount, dest.GetData() + nOld);
    this->RemoveAt(nFirst, nCount);
    return true;
  }

 private:
  INT_PTR Find(TYPE const p) const {
    const auto it = std::find(this->begin(), this->end(), p);
    return it == this->end() ? -1 : it - this->begin();
  }
  bool InRange(__int64 n) const { return n >= 0 && n < this->GetSize(); }
  // Asks about each element once, in order, and closes the gaps.
  template <class Predicate>
  void Keep(Predicate keep) {
    TYPE* pTo = this->begin();
    for (TYPE p : *this) {
      if (keep(p)) *pTo++ = p;
    }
    this->SetSize(pTo - this->begin());
  }
};

namespace laminate {

/// The named arrays: a `CExPtrArray` that owns its elements and deletes them with itself; a pointer that it holds twice
/// would be deleted twice. Each named array is a class
/// of its own, `class CBDnetArray : public laminate::NamedArray<CBDnet> {};`, beside its element's class.
template <class X>
class NamedArray : public CExPtrArray<X*, X*>, public Pooled {
 public:
  NamedArray() = default;
  ~NamedArray() override { this->DeleteAll(); }

  /// The raw form of the platform's pointer arrays, null slots left out. Loading deletes the elements and keeps nothing
  /// of what it reads over. The arrays whose elements have a form of their own override this.
  void Serialize(CArchive& ar) override {
    if (ArchiveIsStoring(ar)) {
      const auto nElements = this->GetSize() - std::count(this->begin(), this->end(), nullptr);
      StoreRawElements(ar, nullptr, static_cast<std::uint64_t>(nElements), sizeof(X*), true);
    } else {
      this->DeleteAll();
      CExPtrArray<X*, X*>::Serialize(ar);
    }
  }
};

/// Makes the objects that a record owns from its construction on: all of them or, when memory fails, none.
template <class... T>
void MakeOwned(T*&... fields) {
  std::tuple<std::unique_ptr<T>...> made{std::make_unique<T>()...};
  std::apply([&fields...](auto&... p) { ((fields = p.release()), ...); }, made);
}

/// Appends an object to an array that owns its elements; gives the object.
template <class Array, class X>
X& AppendOwned(Array& array, std::unique_ptr<X> p) {
  array.Add(p.get());
  return *p.release();
}

}  // namespace laminate
