#pragma once
#include "designdata/CPC_BD_OutClsGet.h"
#include "save/Fields.h"

namespace laminate {

template <>
struct FieldsOf<CPC_BD_OutClsGet>
    : Fields<&CPC_BD_OutClsGet::m_sUnit, &CPC_BD_OutClsGet::m_pPackageArray, &CPC_BD_OutClsGet::m_pStackup,
             &CPC_BD_OutClsGet::m_pLcdbCmpCompArray, &CPC_BD_OutClsGet::m_pPrfFunctionArray,
             &CPC_BD_OutClsGet::m_pPrfPinAssignArray, &CPC_BD_OutClsGet::m_pRufCompArray,
             &CPC_BD_OutClsGet::m_pPrfPartArray, &CPC_BD_OutClsGet::m_pRufNetArray, &CPC_BD_OutClsGet::m_pRufRuleArray,
             &CPC_BD_OutClsGet::m_pRufRuleBoardArray, &CPC_BD_OutClsGet::m_pDesignRuleStackArray,
             &CPC_BD_OutClsGet::m_pTraceRuleStackArray, &CPC_BD_OutClsGet::m_pElectricalNetArray,
             &CPC_BD_OutClsGet::m_pBoardSpec, &CPC_BD_OutClsGet::m_aHostList1, &CPC_BD_OutClsGet::m_aHostList2,
             &CPC_BD_OutClsGet::m_sHostText> {};

template <>
struct FieldsOf<CVRXoutPackage> : Fields<&CVRXoutPackage::m_sType, &CVRXoutPackage::m_nUver, &CVRXoutPackage::m_sName,
                                         &CVRXoutPackage::m_pMountFormArray> {};
template <>
struct FieldsOf<CVRXoutPackageMountForm>
    : Fields<&CVRXoutPackageMountForm::m_sSpec, &CVRXoutPackageMountForm::m_sBottomFootprint,
             &CVRXoutPackageMountForm::m_sFootprintRef, &CVRXoutPackageMountForm::m_sMountForm> {};

template <>
struct FieldsOf<CVRXoutPrfPart>
    : Fields<&CVRXoutPrfPart::m_sName, &CVRXoutPrfPart::m_sFootprintRef, &CVRXoutPrfPart::m_sPinAssignRef,
             &CVRXoutPrfPart::m_sStockInfo, &CVRXoutPrfPart::m_sPartClass, &CVRXoutPrfPart::m_sPackageRef,
             &CVRXoutPrfPart::m_pPortArray, &CVRXoutPrfPart::m_pGateDefArray, &CVRXoutPrfPart::m_pPropertyArray,
             &CVRXoutPrfPart::m_pStockPropertyArray> {};
template <>
struct FieldsOf<CVRXoutPrfPartPort> : Fields<&CVRXoutPrfPartPort::m_sPortNo, &CVRXoutPrfPartPort::m_sPortType,
                                             &CVRXoutPrfPartPort::m_sPortName, &CVRXoutPrfPartPort::m_nSymbPinId> {};
template <>
struct FieldsOf<CVRXoutPrfPartGateDef>
    : Fields<&CVRXoutPrfPartGateDef::m_aPortRefs, &CVRXoutPrfPartGateDef::m_sGateName,
             &CVRXoutPrfPartGateDef::m_pPropertyArray> {};
template <>
struct FieldsOf<CVRXoutPrfFunction> : Fields<&CVRXoutPrfFunction::m_nUver, &CVRXoutPrfFunction::m_sName,
                                             &CVRXoutPrfFunction::m_pPropertyArray, &CVRXoutPrfFunction::m_pPortArray> {
};
template <>
struct FieldsOf<CVRXoutPrfFunctionPort>
    : Fields<&CVRXoutPrfFunctionPort::m_sPortType, &CVRXoutPrfFunctionPort::m_nSymbPinId,
             &CVRXoutPrfFunctionPort::m_sPortNo> {};
template <>
struct FieldsOf<CVRXoutPrfPinAssign>
    : Fields<&CVRXoutPrfPinAssign::m_nUver, &CVRXoutPrfPinAssign::m_sName, &CVRXoutPrfPinAssign::m_pPropertyArray,
             &CVRXoutPrfPinAssign::m_pFuncInstArray, &CVRXoutPrfPinAssign::m_pPortArray> {};
template <>
struct FieldsOf<CVRXoutPrfPinAssignFuncInst>
    : Fields<&CVRXoutPrfPinAssignFuncInst::m_pPortArray, &CVRXoutPrfPinAssignFuncInst::m_sFunctionRef> {};
template <>
struct FieldsOf<CVRXoutPrfPinAssignFuncInstPort>
    : Fields<&CVRXoutPrfPinAssignFuncInstPort::m_sMatch, &CVRXoutPrfPinAssignFuncInstPort::m_sPortNo> {};
template <>
struct FieldsOf<CVRXoutPrfPinAssignPort>
    : Fields<&CVRXoutPrfPinAssignPort::m_sPortType, &CVRXoutPrfPinAssignPort::m_sPortName,
             &CVRXoutPrfPinAssignPort::m_nPinId, &CVRXoutPrfPinAssignPort::m_sPortNo> {};

template <>
struct FieldsOf<CVRXoutLcdbCmpComp>
    : Fields<&CVRXoutLcdbCmpComp::m_sCompName, &CVRXoutLcdbCmpComp::m_nGateCount, &CVRXoutLcdbCmpComp::m_sFunctionName,
             &CVRXoutLcdbCmpComp::m_sComponentType, &CVRXoutLcdbCmpComp::m_aSymbolNames,
             &CVRXoutLcdbCmpComp::m_pPinArray> {};
template <>
struct FieldsOf<CVRXoutLcdbCmpCompPin>
    : Fields<&CVRXoutLcdbCmpCompPin::m_sSeventhColumn, &CVRXoutLcdbCmpCompPin::m_sGatePinName,
             &CVRXoutLcdbCmpCompPin::m_aPinNames, &CVRXoutLcdbCmpCompPin::m_nPinId> {};

template <>
struct FieldsOf<CVRXoutRufStackup> : Fields<&CVRXoutRufStackup::m_pLayerArray, &CVRXoutRufStackup::m_sBaseMaterial> {};
template <>
struct FieldsOf<CVRXoutRufStackupLayer>
    : Fields<&CVRXoutRufStackupLayer::m_sLayerKind, &CVRXoutRufStackupLayer::m_sMaterial,
             &CVRXoutRufStackupLayer::m_sLayerRole, &CVRXoutRufStackupLayer::m_sPlace,
             &CVRXoutRufStackupLayer::m_bPhysical, &CVRXoutRufStackupLayer::m_nLayerNo,
             &CVRXoutRufStackupLayer::m_nAuxNo, &CVRXoutRufStackupLayer::m_dThickness,
             &CVRXoutRufStackupLayer::m_dResistivity, &CVRXoutRufStackupLayer::m_dDielectricConstant,
             &CVRXoutRufStackupLayer::m_dLossTangent> {};
template <>
struct FieldsOf<CVRXoutRufBoardSpec>
    : Fields<&CVRXoutRufBoardSpec::m_aDefaultGrid, &CVRXoutRufBoardSpec::m_aDrillingRule,
             &CVRXoutRufBoardSpec::m_aPatternWidth, &CVRXoutRufBoardSpec::m_aGridDef,
             &CVRXoutRufBoardSpec::m_aProperty> {};
template <>
struct FieldsOf<CVRXoutRufBoardSpecDefaultGrid>
    : Fields<&CVRXoutRufBoardSpecDefaultGrid::m_sName, &CVRXoutRufBoardSpecDefaultGrid::m_sValue> {};
template <>
struct FieldsOf<CVRXoutRufBoardSpecDrillingRule>
    : Fields<&CVRXoutRufBoardSpecDrillingRule::m_sName, &CVRXoutRufBoardSpecDrillingRule::m_nValue1,
             &CVRXoutRufBoardSpecDrillingRule::m_nValue2> {};
template <>
struct FieldsOf<CVRXoutRufBoardSpecpatternWidth>
    : Fields<&CVRXoutRufBoardSpecpatternWidth::m_sName, &CVRXoutRufBoardSpecpatternWidth::m_dWidth> {};
template <>
struct FieldsOf<CVRXoutRufBoardSpecGridDef>
    : Fields<&CVRXoutRufBoardSpecGridDef::m_sName, &CVRXoutRufBoardSpecGridDef::m_dPitchX,
             &CVRXoutRufBoardSpecGridDef::m_dPitchY, &CVRXoutRufBoardSpecGridDef::m_dPtX,
             &CVRXoutRufBoardSpecGridDef::m_dPtY> {};

template <>
struct FieldsOf<CVRXoutRufComp>
    : Fields<&CVRXoutRufComp::m_pAssignArray, &CVRXoutRufComp::m_pPropertyArray, &CVRXoutRufComp::m_sName> {};
template <>
struct FieldsOf<CVRXoutRufNet> : Fields<&CVRXoutRufNet::m_sName, &CVRXoutRufNet::m_sColorId,
                                        &CVRXoutRufNet::m_pPropertyArray, &CVRXoutRufNet::m_pFuncTermArray> {};
template <>
struct FieldsOf<CVRXoutRufNetFuncTerm> : Fields<&CVRXoutRufNetFuncTerm::m_sValue1, &CVRXoutRufNetFuncTerm::m_sValue2> {
};
template <>
struct FieldsOf<CVRXoutRufRule>
    : Fields<&CVRXoutRufRule::m_sRuleKind, &CVRXoutRufRule::m_sRuleName, &CVRXoutRufRule::m_sRuleItem,
             &CVRXoutRufRule::m_sFirst, &CVRXoutRufRule::m_sSecond, &CVRXoutRufRule::m_dValue> {};
template <>
struct FieldsOf<CVRXoutRufRuleBoard> : Fields<&CVRXoutRufRuleBoard::m_sName, &CVRXoutRufRuleBoard::m_sValue> {};
template <>
struct FieldsOf<CVRXoutRufRuleElectricalNet>
    : Fields<&CVRXoutRufRuleElectricalNet::m_bPair, &CVRXoutRufRuleElectricalNet::m_sName,
             &CVRXoutRufRuleElectricalNet::m_aNetNames> {};
template <>
struct FieldsOf<CVRXoutRufRuleDesignRuleStack>
    : Fields<&CVRXoutRufRuleDesignRuleStack::m_sName, &CVRXoutRufRuleDesignRuleStack::m_aEachLayer> {};
template <>
struct FieldsOf<CVRXoutRufRuleDesignRuleStackEachLayer> : Fields<&CVRXoutRufRuleDesignRuleStackEachLayer::m_nLayerNo,
                                                                 &CVRXoutRufRuleDesignRuleStackEachLayer::m_sRuleName> {
};
template <>
struct FieldsOf<CVRXoutRufRuleTraceRuleStack>
    : Fields<&CVRXoutRufRuleTraceRuleStack::m_sName, &CVRXoutRufRuleTraceRuleStack::m_aEachLayer> {};
template <>
struct FieldsOf<CVRXoutRufRuleTraceRuleStackEachLayer>
    : Fields<&CVRXoutRufRuleTraceRuleStackEachLayer::m_nLayerNo, &CVRXoutRufRuleTraceRuleStackEachLayer::m_dWidth,
             &CVRXoutRufRuleTraceRuleStackEachLayer::m_dMinWidth,
             &CVRXoutRufRuleTraceRuleStackEachLayer::m_dMinLandOverlap,
             &CVRXoutRufRuleTraceRuleStackEachLayer::m_dMaxWireWidth,
             &CVRXoutRufRuleTraceRuleStackEachLayer::m_dMinWireWidth> {};

}  // namespace laminate
