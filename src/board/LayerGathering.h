#pragma once
#include <vector>

#include "drawobj/CBDdrawObj.h"

namespace laminate {

/// Gathers shapes by layer, in place and at near-linear cost; see `CBDboardContainer::vSortDrawObjForLayerOrder`. Empty
/// slots stay where they are. Failing memory raises `CMemoryException`, and nothing has changed.
void GatherByLayer(CBDdrawObjArray& shapes);

/// The slots of an array's shapes in the order that gathering gives them; empty slots are left out.
std::vector<INT_PTR> GatheredSlots(const CBDdrawObjArray& shapes);

}  // namespace laminate
