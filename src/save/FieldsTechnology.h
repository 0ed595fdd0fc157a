#pragma once
#include "save/Fields.h"
#include "technology/CBDcondLayer.h"
#include "technology/CBDfootprint.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDfootprintLayer.h"
#include "technology/CBDheelprint.h"
#include "technology/CBDmap.h"
#include "technology/CBDnonConductiveLayer.h"
#include "technology/CBDpad.h"
#include "technology/CBDpadstack.h"
#include "technology/CBDsubLayer.h"
#include "technology/CBDtechnologyContainer.h"
#include "technology/CBDtoeprintPin.h"

namespace laminate {

template <>
struct FieldsOf<CBDtechnologyContainer>
    : Fields<&CBDtechnologyContainer::m_sName, &CBDtechnologyContainer::m_nConductorLayers,
             &CBDtechnologyContainer::m_pFootprintLayerArray, &CBDtechnologyContainer::m_pNonConductiveLayerArray,
             &CBDtechnologyContainer::m_pCondLayerArray, &CBDtechnologyContainer::m_pSubLayerArray,
             &CBDtechnologyContainer::m_pMapArray> {};
template <>
struct FieldsOf<CBDfootprintLayer> : Fields<&CBDfootprintLayer::m_sName, &CBDfootprintLayer::m_sType> {};
template <>
struct FieldsOf<CBDnonConductiveLayer> : Fields<&CBDnonConductiveLayer::m_nSortKey, &CBDnonConductiveLayer::m_sName,
                                                &CBDnonConductiveLayer::m_aProperties> {};
template <>
struct FieldsOf<CBDcondLayer>
    : Fields<&CBDcondLayer::m_nLayerNumber, &CBDcondLayer::m_nProperty, &CBDcondLayer::m_sType,
             &CBDcondLayer::m_sSoldering, &CBDcondLayer::m_aProperties, &CBDcondLayer::m_pRefArray> {};
template <>
struct FieldsOf<CBDcondLayerRef>
    : Fields<&CBDcondLayerRef::m_sName, &CBDcondLayerRef::m_sType, &CBDcondLayerRef::m_nUserDefType> {};
template <>
struct FieldsOf<CBDsubLayer> : Fields<&CBDsubLayer::m_sKind, &CBDsubLayer::m_sLayerKind, &CBDsubLayer::m_sName> {};
template <>
struct FieldsOf<CBDmap> : Fields<&CBDmap::m_sName, &CBDmap::m_pCorrespondenceArray> {};
template <>
struct FieldsOf<CBDcorrespondence> : Fields<&CBDcorrespondence::m_sFootLayer, &CBDcorrespondence::m_aBoardLayers> {};

template <>
struct FieldsOf<CBDfootprintContainer>
    : Fields<&CBDfootprintContainer::m_pCommonParameter, &CBDfootprintContainer::m_pPadArray,
             &CBDfootprintContainer::m_pPadstackArray, &CBDfootprintContainer::m_pFootprintArray> {};
template <>
struct FieldsOf<CBDcommonParameter> : Fields<> {};
template <>
struct FieldsOf<CBDpad> : Fields<&CBDpad::m_nUver, &CBDpad::m_sName, &CBDpad::m_pDrawObjArray, &CBDpad::m_rcArea> {};
template <>
struct FieldsOf<CBDpadstack>
    : Fields<&CBDpadstack::m_nUver, &CBDpadstack::m_sName, &CBDpadstack::m_sType, &CBDpadstack::m_sThroughMode,
             &CBDpadstack::m_sIsBuildupVia, &CBDpadstack::m_pHole, &CBDpadstack::m_pPadSetArray, &CBDpadstack::m_rcArea,
             &CBDpadstack::m_aVerbatim> {};
template <>
struct FieldsOf<CBDpadstackHole> : Fields<&CBDpadstackHole::m_sFootLayer, &CBDpadstackHole::m_pDrawObj> {};
template <>
struct FieldsOf<CBDpadSet> : Fields<&CBDpadSet::m_sFootLayer, &CBDpadSet::m_sConnect, &CBDpadSet::m_sNoConnect,
                                    &CBDpadSet::m_sThermal, &CBDpadSet::m_sClearance> {};
template <>
struct FieldsOf<CBDfootprint>
    : Fields<&CBDfootprint::m_rcArea, &CBDfootprint::m_pPropertyArray, &CBDfootprint::m_nUver, &CBDfootprint::m_sName,
             &CBDfootprint::m_ptBox1, &CBDfootprint::m_ptBox2, &CBDfootprint::m_pHeelprint,
             &CBDfootprint::m_pToeprintPinArray, &CBDfootprint::m_aVerbatim> {};
template <>
struct FieldsOf<CBDheelprint> : Fields<&CBDheelprint::m_pDrawObjArray> {};
template <>
struct FieldsOf<CBDtoeprintPin>
    : Fields<&CBDtoeprintPin::m_sName, &CBDtoeprintPin::m_ptLocation, &CBDtoeprintPin::m_pDrawObjArray> {};

}  // namespace laminate
