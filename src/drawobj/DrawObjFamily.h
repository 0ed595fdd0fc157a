#pragma once
// The family in one table: a row per tag, and in it a cell for each operation that `CBDdrawObj` hands on by the tag. An
// empty cell means that the operation's list does not hold the tag. The dispatchers do nothing but read this table.
#include <memory>
#include <span>
#include <string_view>

#include "drawobj/CBDdrawObj.h"

namespace laminate {

/// Membership in the list of one operation.
template <class Function>
struct FamilyCell {
  int nPlace = 0;  ///< in the operation's list, from 1; 0: not in it
  Function act = nullptr;
};

struct FamilyRow {
  std::string_view tag;
  /// The class's own fields only; null when the tag does not fit the object's class.
  FamilyCell<std::unique_ptr<CBDdrawObj> (*)(const CBDdrawObj&)> copy;
  /// Writes nothing when the tag does not fit.
  FamilyCell<void (*)(CBDdrawObj&, TextOut&, int nMode)> print;
  FamilyCell<void (*)(const CBDdrawObj&, TextOut&)> header;
  /// False when the tag does not fit.
  FamilyCell<bool (*)(CBDdrawObj&, double dX, double dY, double dAngle, const CString& sSide)> move;
  FamilyCell<bool (*)(CBDdrawObj&, double dScale)> scale;
  FamilyCell<void (*)(CBDdrawObj*)> remove;
};

/// All rows, in the order of the copying list; what that does not hold stands last.
std::span<const FamilyRow> DrawObjFamily();

/// The row of a tag, or null.
const FamilyRow* FindFamilyRow(std::string_view tag);

}  // namespace laminate
