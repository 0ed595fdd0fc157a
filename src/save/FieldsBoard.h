#pragma once
#include "board/CBDboardContainer.h"
#include "board/CBDcompGroup.h"
#include "board/CBDcomponent.h"
#include "board/CBDgate.h"
#include "board/CBDlayerParameter.h"
#include "board/CBDlibraryEntities.h"
#include "board/CBDnet.h"
#include "board/CBDparameter.h"
#include "board/CBDpin.h"
#include "board/CBDsubBoard.h"
#include "board/CBDtextSize.h"
#include "board/CBDvisibleLayerSet.h"
#include "save/Fields.h"

namespace laminate {

template <>
struct FieldsOf<CBDboardContainer> : Fields<&CBDboardContainer::m_pComponentArray,
                                            &CBDboardContainer::m_pCompGroupArray, &CBDboardContainer::m_pNetArray,
                                            &CBDboardContainer::m_pDrawObjArray, &CBDboardContainer::m_pSubBoardArray> {
};
template <>
struct FieldsOf<CBDcomponent>
    : Fields<&CBDcomponent::m_dScale, &CBDcomponent::m_sReference, &CBDcomponent::m_nGateCount,
             &CBDcomponent::m_nPinCount, &CBDcomponent::m_sPart, &CBDcomponent::m_sStockId, &CBDcomponent::m_sPackage,
             &CBDcomponent::m_sFootprintSpec, &CBDcomponent::m_sFootprint, &CBDcomponent::m_sReverseFootprint,
             &CBDcomponent::m_sOriginalReference, &CBDcomponent::m_sPlaced, &CBDcomponent::m_sPlacementSide,
             &CBDcomponent::m_sLocationLock, &CBDcomponent::m_sAngleLock, &CBDcomponent::m_sPlacementSideLock,
             &CBDcomponent::m_sPackageSymbol, &CBDcomponent::m_sOutOfBoard, &CBDcomponent::m_ptOutOfBoardLocation,
             &CBDcomponent::m_ptLocation, &CBDcomponent::m_ptMinRect1, &CBDcomponent::m_ptMinRect2,
             &CBDcomponent::m_dAngle, &CBDcomponent::m_sDrawRefDes, &CBDcomponent::m_pDrawObjArray,
             &CBDcomponent::m_pGateArray, &CBDcomponent::m_pPinArray, &CBDcomponent::m_pPropertyArray,
             &CBDcomponent::m_aVerbatim> {};
template <>
struct FieldsOf<CBDgate> : Fields<&CBDgate::m_sId, &CBDgate::m_sLockMode, &CBDgate::m_pGatePinArray> {};
template <>
struct FieldsOf<CBDgatePin> : Fields<&CBDgatePin::m_sName, &CBDgatePin::m_sLockMode> {};
template <>
struct FieldsOf<CBDpin> : Fields<&CBDpin::m_pBondwireArray, &CBDpin::m_pPinGateArray, &CBDpin::m_sName,
                                 &CBDpin::m_pDrawObjArray, &CBDpin::m_ptLocation> {};
template <>
struct FieldsOf<CBDpinGate> : Fields<&CBDpinGate::m_nGate, &CBDpinGate::m_sName> {};
template <>
struct FieldsOf<CBDbondwire> : Fields<&CBDbondwire::m_ptTo, &CBDbondwire::m_ptFrom> {};
template <>
struct FieldsOf<CBDcompGroup> : Fields<&CBDcompGroup::m_sName, &CBDcompGroup::m_aList, &CBDcompGroup::m_sSide,
                                       &CBDcompGroup::m_nPen, &CBDcompGroup::m_pDrawObjArray> {};
template <>
struct FieldsOf<CBDnet> : Fields<&CBDnet::m_sName, &CBDnet::m_sType, &CBDnet::m_sLockMode, &CBDnet::m_sPen,
                                 &CBDnet::m_sRatsNest, &CBDnet::m_pRefPinArray> {};
template <>
struct FieldsOf<CBDrefPin> : Fields<&CBDrefPin::m_sComp, &CBDrefPin::m_sPin> {};
template <>
struct FieldsOf<CBDsubBoard> : Fields<&CBDsubBoard::m_nId, &CBDsubBoard::m_sRelativePath> {};

template <>
struct FieldsOf<CBDparameter> : Fields<&CBDparameter::m_pVisibleLayerSetArray, &CBDparameter::m_pTextSizeArray,
                                       &CBDparameter::m_pLayerParameterArray> {};
template <>
struct FieldsOf<CBDvisibleLayerSet> : Fields<&CBDvisibleLayerSet::m_sName, &CBDvisibleLayerSet::m_aLayers> {};
template <>
struct FieldsOf<CBDtextSize> : Fields<&CBDtextSize::m_nId, &CBDtextSize::m_nWidth, &CBDtextSize::m_nHeight,
                                      &CBDtextSize::m_nSpace, &CBDtextSize::m_nVSpace, &CBDtextSize::m_nStrokeWidth> {};
template <>
struct FieldsOf<CBDlayerParameter>
    : Fields<&CBDlayerParameter::m_sLayerType, &CBDlayerParameter::m_sLayerName, &CBDlayerParameter::m_nLayerNumber,
             &CBDlayerParameter::m_nColorId, &CBDlayerParameter::m_nPriority, &CBDlayerParameter::m_sDisplayMode,
             &CBDlayerParameter::m_nHatchAngle, &CBDlayerParameter::m_nHatchPitch, &CBDlayerParameter::m_sMrcMode> {};
template <>
struct FieldsOf<CBDlibraryEntities>
    : Fields<&CBDlibraryEntities::m_aParts, &CBDlibraryEntities::m_aPackages, &CBDlibraryEntities::m_pLibFootprintArray,
             &CBDlibraryEntities::m_pLibPadstackArray, &CBDlibraryEntities::m_pLibPadArray> {};
template <>
struct FieldsOf<CBDlibFootprint> : Fields<&CBDlibFootprint::m_sName, &CBDlibFootprint::m_sSide> {};
template <>
struct FieldsOf<CBDlibPadstack> : Fields<&CBDlibPadstack::m_sName, &CBDlibPadstack::m_sSide, &CBDlibPadstack::m_sFlip> {
};
template <>
struct FieldsOf<CBDlibPad> : Fields<&CBDlibPad::m_sName, &CBDlibPad::m_sSide, &CBDlibPad::m_sFlip> {};

}  // namespace laminate
