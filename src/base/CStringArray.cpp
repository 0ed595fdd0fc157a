#include "base/CStringArray.h"

#include <utility>

#include "base/CArchive.h"

void CStringArray::Serialize(CArchive& ar) {
  if (ar.IsStoring()) {
    ar.WriteCount(static_cast<ULONGLONG>(GetSize()));
    for (const CString& s : *this) ar << s;
    return;
  }
  RemoveAll();
  // Not sized in advance: the count may lie.
  for (ULONGLONG nLeft = ar.ReadCount(); nLeft != 0; --nLeft) {
    CString s;
    ar >> s;
    Emplace(std::move(s));
  }
}
