#include "board/LayerForms.h"

#include "base/Number.h"
#include "reader/Grammar.h"

namespace laminate {

ShapeContext ResolveLayer(const CECadClsLvl& layer, CBDdrawObjArray* pBoardShapes) {
  ShapeContext context;
  context.pBoardShapes = pBoardShapes;
  if (const CECadClsLvl* pSystem = FindChild(layer, kSystemLayer)) {
    context.sLayerType = kSystemLayer;
    if (const CECadClsLvl* pType = FindChild(*pSystem, "type")) context.sLayerName = Token(*pType, 1);
  } else if (const CECadClsLvl* pConductive = FindChild(layer, kConductive)) {
    context.sLayerType = kConductive;
    context.sLayerName = Token(*pConductive, 1);
    context.nLayerNumber = Atoi(context.sLayerName.View());
  } else if (const CECadClsLvl* pNonConductive = FindChild(layer, kNonConductive)) {
    context.sLayerType = kNonConductive;
    context.sLayerName = Token(*pNonConductive, 1);
  }
  return context;
}

void AppendShape(const CECadClsLvl& node, const ShapeContext& context, CBDdrawObjArray& shapes) {
  if (auto p = ReadDrawObj(node, context)) AppendOwned(shapes, std::move(p));
}

void AppendFirstOfRefer(const CECadClsLvl& refer, const ShapeContext& context, CBDdrawObjArray& shapes) {
  ShapeContext inRefer = context;
  inRefer.bRefer = 1;
  AppendShape(RequireFirstChild(refer), inRefer, shapes);
}

void WriteLayerBlocks(TextOut& out, CBDdrawObjArray* pShapes) {
  if (pShapes == nullptr) return;
  const CString* psOpen = nullptr;
  bool bLastWritten = false;
  for (CBDdrawObj* p : *pShapes) {
    if (p == nullptr) continue;
    bLastWritten = !p->m_sLayerName.IsEmpty();
    if (!bLastWritten) continue;
    if (psOpen == nullptr || p->m_sLayerName != *psOpen) {
      if (psOpen != nullptr) out.Print<")\n">();
      out.Print<"(layer (%s (type %s))\n">(p->m_sLayerType, p->m_sLayerName);
      psOpen = &p->m_sLayerName;
    }
    p->Write(out, 1);
  }
  if (bLastWritten) out.Print<")\n">();
}

}  // namespace laminate
