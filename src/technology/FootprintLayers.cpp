#include "technology/FootprintLayers.h"

#include "drawobj/CBDhole.h"
#include "drawobj/DrawObjReader.h"
#include "technology/LibraryForms.h"

namespace laminate {

void ReadFootprintLayerShapes(const CECadClsLvl& layer, CBDdrawObjArray& shapes, const LibraryContext& context) {
  ShapeContext shapeContext;
  shapeContext.pBoardShapes = context.pBoardShapes;
  if (const CECadClsLvl* pName = FindChild(layer, "footLayer")) shapeContext.sLayerName = Token(*pName, 1);
  if (FindChild(layer, kPadstackLayer) != nullptr) shapeContext.sLayerName = kPadstackLayer;
  ForEachChild(layer, [&](const CECadClsLvl& child) {
    if (child.m_sName == "footLayer" || child.m_sName == kPadstackLayer) return;
    if (auto p = ReadDrawObj(child, shapeContext)) AppendOwned(shapes, std::move(p));
  });
}

bool IsSquareHole(const CBDdrawObj& shape) {
  if (shape.m_sKind != "HOLE") return false;
  const auto* pHole = dynamic_cast<const CBDhole*>(&shape);
  return pHole != nullptr && pHole->m_pShape != nullptr && pHole->m_pShape->m_sKind == "SQUAREHOLE";
}

}  // namespace laminate
