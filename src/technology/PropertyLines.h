#pragma once
#include "base/CLProperty.h"
#include "base/TextOut.h"

namespace laminate {

/// Writes "(ITEM COMMENT)" for each property of a layer.
inline void WriteProperties(TextOut& out, const CLPropertyArray& properties) {
  for (const CLProperty* p : properties) {
    if (p != nullptr) out.Print<"(%s %s)\n">(p->GetItem(), p->GetComment());
  }
}

}  // namespace laminate
