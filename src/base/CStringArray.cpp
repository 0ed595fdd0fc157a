#include "base/CStringArray.h"

#include <algorithm>
#include <utility>

#include "base/CArchive.h"

void CStringArray::Serialize(CArchive& ar) {
  if (ar.IsStoring()) {
    ar.WriteCount(static_cast<ULONGLONG>(GetSize()));
    for (const CString& s : *this) ar << s;
    return;
  }
  RemoveAll();
  ULONGLONG nLeft = ar.ReadCount();
  // The count may lie: room is made for no more texts than the bytes at hand can be.
  Preallocate(std::min<ULONGLONG>(nLeft, ar.BytesAhead()));
  for (; nLeft != 0; --nLeft) {
    CString& s = Emplace();
    try {
      ar >> s;
    } catch (...) {
      RemoveAt(GetUpperBound());
      throw;
    }
  }
}
