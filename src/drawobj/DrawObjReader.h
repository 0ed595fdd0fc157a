#pragma once
#include <memory>

#include "drawobj/CBDdrawObj.h"
#include "drawobj/CBDvertex.h"
#include "reader/CECadClsLvl.h"

namespace laminate {

/// What a shape takes over from the form that it stands in.
struct ShapeContext {
  int nLayerNumber = 0;
  CString sLayerName;
  CString sLayerType;
  int bRefer = 0;
  /// Where the shapes of a board assembly go. Not owned. Null: a board assembly that is read raises.
  CBDdrawObjArray* pBoardShapes = nullptr;
};

/// Turns the node of a shape into a draw object. Null for keywords that yield none ("basePoint", "dimension",
/// "dimLeader", "ruleArea", "drawOf", "cavityFrom", "cavityTo"); callers skip a null. An unknown keyword shows the
/// message box "New Draw Type : %s" and gives null. A key that lacks a value raises `CInvalidArgException`; nothing
/// leaks. It calls itself for shapes within shapes: a parsed tree is never deep, and that of a host is as deep as its
/// host makes it.
std::unique_ptr<CBDdrawObj> ReadDrawObj(const CECadClsLvl& node, const ShapeContext& context);

/// Reads every form in a node and appends the shapes; those that yield none are passed over. What was appended before a
/// missing value raises stays.
void ReadShapes(const CECadClsLvl& node, const ShapeContext& context, CBDdrawObjArray& shapes);

/// Appends the vertices of a "vertex" node; children other than "pt" and "arc" are skipped. What was appended before a
/// missing value raises stays.
void ReadVertices(const CECadClsLvl& vertexNode, CBDvertexArray& vertices);

}  // namespace laminate
