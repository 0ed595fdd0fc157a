#pragma once
#include <string_view>
#include <utility>
#include <vector>

#include "facade/LossTables.h"

class CBDdrawObj;
class CBDdrawObjArray;

namespace laminate {

/// Where a shape is written: that decides how its layer, its form and its "refer" come out.
enum class ExportPlace {
  layout,     ///< in a block of the board layout
  component,  ///< in a component's own layout
  pin,        ///< in a pin's layout
  group,      ///< in a component group's layout
  heelprint,  ///< in a footprint's outline
  toeprint,   ///< in a footprint's pin
  inside      ///< in a pad or in the hole of a padstack
};

/// Tells what is lost of a shape, or of those of an array, which stand in any place but the board layout.
void FindShapeLosses(const CBDdrawObj& shape, ExportPlace place, LossFinder& finder);
void FindShapeLosses(std::string_view sField, const CBDdrawObjArray* pShapes, ExportPlace place, LossFinder& finder);
/// The same for the board layout, whose shapes may come to stand in the blocks of others.
void FindLayoutLosses(std::string_view sField, const CBDdrawObjArray* pShapes, LossFinder& finder);
/// The same for what stands in a padstack as its hole.
void FindHoleLosses(const CBDdrawObj& shape, LossFinder& finder);

/// The fields of shapes whose losses are looked for: class and field.
std::vector<std::pair<std::string_view, std::string_view>> ShapeFieldsLookedFor();

}  // namespace laminate
