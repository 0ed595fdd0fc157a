#include "base/CObject.h"

CRuntimeClass* CObject::GetRuntimeClass() const {
  static CRuntimeClass theClass = {"CObject", static_cast<int>(sizeof(CObject))};
  return &theClass;
}

void CObject::Serialize(CArchive&) {}
