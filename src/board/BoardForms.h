#pragma once
// The records of a board file, as this room reads them. A name in capitals is a value, "..." stands for more of the
// same, "?" marks what may be absent. Children come in any order, and one that is not named here is passed over.
//
//   (pcf | tcf | pnf
//     (header (version V))?                                               OthersTranslator
//     (technologyContainer ...)?                                          technology/CBDtechnologyContainer.h
//     (boardContainer
//       (subBoards (subBoard ID (relativePath PATH)?) ...)?               CBDsubBoard
//       (compGroups (compGroup NAME ...) ...)?                            CBDcompGroup
//       (nets (net NAME ... (comp REF (pin PIN)?) ...) ...)?              CBDnet
//       (components (component ...) ...)?                                 CBDcomponent, in pieces of their own
//       (boardLayout (layout (layer ...) ...))?)?                         LayerTranslator, in pieces of their own
//     (parameter (layerParameters ...) (visibleLayerSet ...) (textSizeParameters ...))?   CBDparameter
//     (libraryEntities ...)?)                                             CBDlibraryEntities
//
// A layer names itself by one of its children: LayerForms.h.
#include <memory>

#include "reader/ObjectRow.h"

class CBDbondwire;
class CBDcompGroup;
class CBDcomponent;
class CBDdrawObjArray;
class CBDgate;
class CBDgatePin;
class CBDlayerParameter;
class CBDlibPad;
class CBDlibPadstack;
class CBDlibFootprint;
class CBDlibraryEntities;
class CBDnet;
class CBDparameter;
class CBDpin;
class CBDpinGate;
class CBDrefPin;
class CBDsubBoard;
class CBDtextSize;
class CBDvisibleLayerSet;

namespace laminate {

/// What the readers of records with shapes need of the board.
struct BoardContext {
  CBDdrawObjArray* pBoardShapes;  ///< gets the shapes inside board assemblies
};

// Each reader makes a new object. A value that a form needs and lacks raises `CInvalidArgException`; nothing leaks.
std::unique_ptr<CBDnet> ReadNet(const CECadClsLvl& node);
std::unique_ptr<CBDrefPin> ReadRefPin(const CECadClsLvl& node);
std::unique_ptr<CBDsubBoard> ReadSubBoard(const CECadClsLvl& node);
std::unique_ptr<CBDcompGroup> ReadCompGroup(const CECadClsLvl& node, BoardContext& context);
std::unique_ptr<CBDcomponent> ReadComponentForm(const CECadClsLvl& node, BoardContext& context);
std::unique_ptr<CBDgate> ReadGate(const CECadClsLvl& node);
std::unique_ptr<CBDpin> ReadPin(const CECadClsLvl& node, BoardContext& context);
std::unique_ptr<CBDpinGate> ReadPinGate(const CECadClsLvl& node);
std::unique_ptr<CBDbondwire> ReadBondwire(const CECadClsLvl& node);
std::unique_ptr<CBDlayerParameter> ReadLayerParameter(const CECadClsLvl& node);
std::unique_ptr<CBDvisibleLayerSet> ReadVisibleLayerSet(const CECadClsLvl& node);
std::unique_ptr<CBDtextSize> ReadTextSize(const CECadClsLvl& node);
std::unique_ptr<CBDlibFootprint> ReadLibFootprint(const CECadClsLvl& node);
std::unique_ptr<CBDlibPadstack> ReadLibPadstack(const CECadClsLvl& node);
std::unique_ptr<CBDlibPad> ReadLibPad(const CECadClsLvl& node);
/// These two add to what the object holds; what stood before a fault stays.
void ReadParameter(const CECadClsLvl& node, CBDparameter& parameter);
void ReadLibraryEntities(const CECadClsLvl& node, CBDlibraryEntities& entities);

// The tables that the readers walk.
RowSpan<CBDnet> NetRows();
RowSpan<CBDrefPin> RefPinRows();
RowSpan<CBDsubBoard> SubBoardRows();
RowSpan<CBDcompGroup, BoardContext> CompGroupRows();
RowSpan<CBDcomponent, BoardContext> ComponentRows();
RowSpan<CBDgate> GateRows();
RowSpan<CBDgatePin> GatePinRows();
RowSpan<CBDpin, BoardContext> PinRows();
RowSpan<CBDpinGate> PinGateRows();
RowSpan<CBDparameter> ParameterRows();
RowSpan<CBDlayerParameter> LayerParameterRows();
RowSpan<CBDtextSize> TextSizeRows();
RowSpan<CBDlibraryEntities> LibraryEntitiesRows();
RowSpan<CBDlibFootprint> LibFootprintRows();
RowSpan<CBDlibPadstack> LibPadstackRows();
RowSpan<CBDlibPad> LibPadRows();

}  // namespace laminate
