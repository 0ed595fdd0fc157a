#pragma once
#include <type_traits>
#include <typeinfo>

#include "drawobj/CBDareaz.h"
#include "drawobj/CBDcircle.h"
#include "drawobj/CBDdelete.h"
#include "drawobj/CBDdonut.h"
#include "drawobj/CBDdrawObj.h"
#include "drawobj/CBDdrawPad.h"
#include "drawobj/CBDdrawPadstack.h"
#include "drawobj/CBDdrawSubBoard.h"
#include "drawobj/CBDfillet.h"
#include "drawobj/CBDhole.h"
#include "drawobj/CBDline.h"
#include "drawobj/CBDoblong.h"
#include "drawobj/CBDopenShape.h"
#include "drawobj/CBDoval.h"
#include "drawobj/CBDovalHole.h"
#include "drawobj/CBDpadstackRefLay.h"
#include "drawobj/CBDrectangle.h"
#include "drawobj/CBDroundThermal.h"
#include "drawobj/CBDsquareHole.h"
#include "drawobj/CBDsquareThermal.h"
#include "drawobj/CBDsurface.h"
#include "drawobj/CBDsymbolText.h"
#include "drawobj/CBDtext.h"
#include "drawobj/CBDvertex.h"
#include "drawobj/CBDvertexArc.h"
#include "drawobj/CBDvertexPt.h"
#include "save/Fields.h"

namespace laminate {

template <>
struct FieldsOf<CBDdrawObj>
    : Fields<&CBDdrawObj::m_bRefer, &CBDdrawObj::m_sLayerName, &CBDdrawObj::m_sLayerType, &CBDdrawObj::m_nLayerNumber,
             &CBDdrawObj::m_sKind, &CBDdrawObj::m_sNet, &CBDdrawObj::m_sPenShape, &CBDdrawObj::m_sSection,
             &CBDdrawObj::m_nCavityFrom, &CBDdrawObj::m_nCavityTo> {};

/// The fields of a class of the draw-object family.
template <auto... kMembers>
struct ShapeFields : Fields<kMembers...> {
  using Base = CBDdrawObj;
};

template <>
struct FieldsOf<CBDareaz> : ShapeFields<&CBDareaz::m_pVertices> {};
template <>
struct FieldsOf<CBDcircle> : ShapeFields<&CBDcircle::m_ptCenter, &CBDcircle::m_dRadius> {};
template <>
struct FieldsOf<CBDdelete> : ShapeFields<> {};
template <>
struct FieldsOf<CBDdonut> : ShapeFields<&CBDdonut::m_dOut, &CBDdonut::m_dIn, &CBDdonut::m_pt> {};
template <>
struct FieldsOf<CBDoblong> : ShapeFields<&CBDoblong::m_ptSecond, &CBDoblong::m_ptFirst, &CBDoblong::m_dWidth> {};
template <>
struct FieldsOf<CBDoval> : ShapeFields<&CBDoval::m_dAngle, &CBDoval::m_dHeight, &CBDoval::m_dWidth, &CBDoval::m_pt> {};
template <>
struct FieldsOf<CBDovalHole> : ShapeFields<&CBDovalHole::m_pt, &CBDovalHole::m_dWidth, &CBDovalHole::m_dHeight,
                                           &CBDovalHole::m_dAngle, &CBDovalHole::m_nHoleType> {};
template <>
struct FieldsOf<CBDrectangle>
    : ShapeFields<&CBDrectangle::m_dFillAngle, &CBDrectangle::m_dFillWidth, &CBDrectangle::m_dOutlineWidth,
                  &CBDrectangle::m_dAngle, &CBDrectangle::m_dHeight, &CBDrectangle::m_dWidth, &CBDrectangle::m_pt> {};
template <>
struct FieldsOf<CBDroundThermal>
    : ShapeFields<&CBDroundThermal::m_nBridgeAngle, &CBDroundThermal::m_dBridgeWidth, &CBDroundThermal::m_nBridge,
                  &CBDroundThermal::m_pt, &CBDroundThermal::m_dIn, &CBDroundThermal::m_dOut> {};
template <>
struct FieldsOf<CBDsquareHole> : ShapeFields<&CBDsquareHole::m_dCorner, &CBDsquareHole::m_dHeight,
                                             &CBDsquareHole::m_dWidth, &CBDsquareHole::m_dAngle, &CBDsquareHole::m_pt> {
};
template <>
struct FieldsOf<CBDsquareThermal>
    : ShapeFields<&CBDsquareThermal::m_dOut, &CBDsquareThermal::m_dIn, &CBDsquareThermal::m_pt,
                  &CBDsquareThermal::m_nBridge, &CBDsquareThermal::m_dBridgeWidth, &CBDsquareThermal::m_dBridgeAngle> {
};
template <>
struct FieldsOf<CBDhole> : ShapeFields<&CBDhole::m_nFrom, &CBDhole::m_nTo, &CBDhole::m_sDrillType, &CBDhole::m_pShape,
                                       &CBDhole::m_nHoleType> {};
template <>
struct FieldsOf<CBDdrawPad>
    : ShapeFields<&CBDdrawPad::m_pShapes, &CBDdrawPad::m_sPadName, &CBDdrawPad::m_pt, &CBDdrawPad::m_dAngle> {};
template <>
struct FieldsOf<CBDdrawPadstack>
    : ShapeFields<&CBDdrawPadstack::m_pShapes, &CBDdrawPadstack::m_dAngle, &CBDdrawPadstack::m_pRefLays,
                  &CBDdrawPadstack::m_nFrom, &CBDdrawPadstack::m_nTo, &CBDdrawPadstack::m_nDrillType,
                  &CBDdrawPadstack::m_pt, &CBDdrawPadstack::m_sPadstackName, &CBDdrawPadstack::m_sSide,
                  &CBDdrawPadstack::m_sFlip, &CBDdrawPadstack::m_sBuildupVia, &CBDdrawPadstack::m_pHole> {};
template <>
struct FieldsOf<CBDdrawSubBoard>
    : ShapeFields<&CBDdrawSubBoard::m_pt, &CBDdrawSubBoard::m_nSubBoard, &CBDdrawSubBoard::m_dAngle,
                  &CBDdrawSubBoard::m_sFlip, &CBDdrawSubBoard::m_pShapes> {};
template <>
struct FieldsOf<CBDline> : ShapeFields<&CBDline::m_sThermalData, &CBDline::m_sLineType, &CBDline::m_dDash,
                                       &CBDline::m_dBlank, &CBDline::m_pVertices> {};
template <>
struct FieldsOf<CBDopenShape> : ShapeFields<&CBDopenShape::m_dOutlineWidth, &CBDopenShape::m_pVertices> {};
template <>
struct FieldsOf<CBDsurface>
    : ShapeFields<&CBDsurface::m_bArea, &CBDsurface::m_bMesh, &CBDsurface::m_bAlreadySpread,
                  &CBDsurface::m_nMeshFlagXCount, &CBDsurface::m_dLowerHeight, &CBDsurface::m_dUpperHeight,
                  &CBDsurface::m_dOutlineWidth, &CBDsurface::m_dMeshPitch, &CBDsurface::m_dFillWidth,
                  &CBDsurface::m_dFillAngle, &CBDsurface::m_dMeshShapeDiameter, &CBDsurface::m_dMeshFigureAngle,
                  &CBDsurface::m_dMeshWindowClearance, &CBDsurface::m_dMeshFigureClearance, &CBDsurface::m_dMeshAngle,
                  &CBDsurface::m_dMeshOutlineClearance, &CBDsurface::m_sMeshShape, &CBDsurface::m_sMeshArrangeType,
                  &CBDsurface::m_ptMeshBase, &CBDsurface::m_ptMeshRotate, &CBDsurface::m_arrMeshFlags,
                  &CBDsurface::m_bSubmesh, &CBDsurface::m_nParamFlagXCount, &CBDsurface::m_dParamPitch,
                  &CBDsurface::m_dParamShapeDiameter, &CBDsurface::m_dParamFigureAngle,
                  &CBDsurface::m_dParamWindowClearance, &CBDsurface::m_dParamFigureClearance,
                  &CBDsurface::m_dParamAngle, &CBDsurface::m_dParamOutlineClearance, &CBDsurface::m_sParamShape,
                  &CBDsurface::m_sParamArrangeType, &CBDsurface::m_ptParamBase, &CBDsurface::m_ptParamRotate,
                  &CBDsurface::m_arrParamFlags, &CBDsurface::m_pProperties, &CBDsurface::m_pVertices,
                  &CBDsurface::m_pOpenShapes> {};
template <>
struct FieldsOf<CBDsymbolText>
    : ShapeFields<&CBDsymbolText::m_sSymbolType, &CBDsymbolText::m_sString, &CBDsymbolText::m_pText> {};
template <>
struct FieldsOf<CBDtext>
    : ShapeFields<&CBDtext::m_sString, &CBDtext::m_nFont, &CBDtext::m_nKFont, &CBDtext::m_dWidth, &CBDtext::m_dHeight,
                  &CBDtext::m_dSpace, &CBDtext::m_dVSpace, &CBDtext::m_dStrokeWidth, &CBDtext::m_pt, &CBDtext::m_dAngle,
                  &CBDtext::m_sDir, &CBDtext::m_sJustify, &CBDtext::m_sFlip, &CBDtext::m_sReverse,
                  &CBDtext::m_dTextFrameOffset> {};

template <>
struct FieldsOf<CBDpadstackRefLay> : Fields<&CBDpadstackRefLay::m_sStatus, &CBDpadstackRefLay::m_nLayerNumber,
                                            &CBDpadstackRefLay::m_sLayerName, &CBDpadstackRefLay::m_bVisible> {};
template <>
struct FieldsOf<CBDfillet> : Fields<&CBDfillet::m_sType, &CBDfillet::m_dWidth, &CBDfillet::m_dLength,
                                    &CBDfillet::m_dFilletWidth, &CBDfillet::m_sDir> {};
template <>
struct FieldsOf<CBDvertex> : Fields<&CBDvertex::m_dWidth, &CBDvertex::m_sType> {};
template <>
struct FieldsOf<CBDvertexPt> : Fields<&CBDvertexPt::m_dTarc, &CBDvertexPt::m_pFillet, &CBDvertexPt::m_pt> {
  using Base = CBDvertex;
};
template <>
struct FieldsOf<CBDvertexArc>
    : Fields<&CBDvertexArc::m_dEndWidth, &CBDvertexArc::m_dBeginWidth, &CBDvertexArc::m_sDirection, &CBDvertexArc::m_dR,
             &CBDvertexArc::m_ptBegin, &CBDvertexArc::m_ptCenter, &CBDvertexArc::m_ptEnd> {
  using Base = CBDvertex;
};

/// Classes whose objects are held by a common base class.
template <class... Classes>
struct ClassList {};
using ShapeClasses = ClassList<CBDareaz, CBDcircle, CBDdelete, CBDdonut, CBDdrawPad, CBDdrawPadstack, CBDdrawSubBoard,
                               CBDhole, CBDline, CBDoblong, CBDopenShape, CBDoval, CBDovalHole, CBDrectangle,
                               CBDroundThermal, CBDsquareHole, CBDsquareThermal, CBDsurface, CBDsymbolText, CBDtext>;
using VertexClasses = ClassList<CBDvertexPt, CBDvertexArc>;

/// Calls `function` with the object as one of its own class; as it is when the class is none of the list.
template <class Base, class... Classes, class Function>
void AsItsClass(Base& object, ClassList<Classes...>, Function&& function) {
  const auto is = [&](auto* pNone) {
    using Class = std::remove_pointer_t<decltype(pNone)>;
    if (typeid(object) != typeid(Class)) return false;
    function(static_cast<Class&>(object));
    return true;
  };
  if (!(is(static_cast<Classes*>(nullptr)) || ...)) function(object);
}

}  // namespace laminate
