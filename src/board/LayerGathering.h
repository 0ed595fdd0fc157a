#pragma once
#include "drawobj/CBDdrawObj.h"

namespace laminate {

/// Gathers shapes by layer, in place and at linear cost; see `CBDboardContainer::vSortDrawObjForLayerOrder`. Empty
/// slots stay where they are. When memory fails, nothing has changed.
void GatherByLayer(CBDdrawObjArray& shapes);

}  // namespace laminate
