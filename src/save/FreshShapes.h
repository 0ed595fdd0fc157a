#pragma once
// What the sources that write forms anew share about shapes.
#include <span>

#include "save/FreshForms.h"

class CBDdrawObjArray;

namespace laminate {

/// What a shape takes over from where it stands.
struct Surroundings {
  ShapePlace place;
  ShapeLayer layer = {};
  int bRefer = 0;
  CString sSection = {};
};

/// Refuses what a shape holds otherwise than its surroundings give it, but for what its form says itself.
struct SaidItself {
  bool bNet = false;
  bool bPenShape = false;
};
void RefuseUnlikeSurroundings(FormText& text, const CBDdrawObj& shape, const CString& sKind, const Surroundings& around,
                              SaidItself said = {});

/// The form of a shape; what it holds of its surroundings must be what these give.
void PutShapeForm(FormText& text, const Surroundings& around, const CBDdrawObj& shape);
/// The same for each shape, one form after the other. `sField` is that of the array, "&Class::field".
void PutShapeForms(FormText& text, const Surroundings& around, std::string_view sField, const CBDdrawObjArray* pShapes);
/// All shapes, in a layer form for each run of one layer; gives how many forms these are.
int PutLayers(FormText& text, ShapePlace place, std::string_view sField, const CBDdrawObjArray* pShapes);

/// The "header" of both files.
void PutHeader(FormText& text, const CString& sVersion);
/// A form that names a layer of the board: a conductive one by its number, any other as a non-conductive one.
void PutBoardLayerName(FormText& text, std::string_view sField, const CString& sName);

}  // namespace laminate
