#pragma once
// What layer forms have in common, wherever they stand.
#include <algorithm>
#include <initializer_list>
#include <string_view>

#include "base/TextOut.h"
#include "drawobj/DrawObjReader.h"
#include "reader/CECadClsLvl.h"
#include "reader/ObjectRow.h"

namespace laminate {

/// The keywords by which a layer form names its layer, which are also the layer types.
inline constexpr std::string_view kSystemLayer = "systemLayer";
inline constexpr std::string_view kConductive = "conductive";
inline constexpr std::string_view kNonConductive = "nonConductive";

/// True for the children of a layer form that name the layer.
inline bool NamesLayer(std::string_view sKeyword) {
  return sKeyword == kSystemLayer || sKeyword == kConductive || sKeyword == kNonConductive;
}

/// The layer that a "layer" form stands for, by the first of these that is among its children, in this order:
///   (systemLayer (type NAME)?)    the name is empty without a "type"
///   (conductive NUMBER)           the name is the number's text
///   (nonConductive NAME)
/// Without any, type and name are empty. The number is 0 for all but the second. A value that is absent raises
/// `CInvalidArgException`.
ShapeContext ResolveLayer(const CECadClsLvl& layer, CBDdrawObjArray* pBoardShapes);

/// Translates a form and appends the shape, if it stands for one.
void AppendShape(const CECadClsLvl& node, const ShapeContext& context, CBDdrawObjArray& shapes);

/// The same for the first form in a "refer", with the refer flag set; the others do not count. An empty "refer" raises.
void AppendFirstOfRefer(const CECadClsLvl& refer, const ShapeContext& context, CBDdrawObjArray& shapes);

/// Translates what stands in a layer form and appends the shapes, in order. Forms that name the layer are passed over,
/// and so are `others`. What a "refer" gives is up to `appendRefer(refer, context, shapes)`.
template <class AppendRefer>
void AppendShapesOfLayer(const CECadClsLvl& layer, const ShapeContext& context, CBDdrawObjArray& shapes,
                         AppendRefer&& appendRefer, std::initializer_list<std::string_view> others = {}) {
  ForEachChild(layer, [&](const CECadClsLvl& child) {
    const std::string_view sKeyword = child.m_sName.View();
    if (NamesLayer(sKeyword) || std::find(others.begin(), others.end(), sKeyword) != others.end()) return;
    if (sKeyword == "refer") {
      appendRefer(child, context, shapes);
    } else {
      AppendShape(child, context, shapes);
    }
  });
}

/// Writes the shapes of a pin or a group: a block for each run of shapes of one layer name,
///   (layer (TYPE (type NAME)) SHAPE ...)
/// whatever the layer type. A shape without a layer name is left out; when that is the last one, the block before it
/// stays open.
void WriteLayerBlocks(TextOut& out, CBDdrawObjArray* pShapes);

}  // namespace laminate
