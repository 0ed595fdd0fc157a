#pragma once
// The records of a technology section and of a footprint file, as this room reads them. A name in capitals is a value,
// "..." stands for more of the same, "?" marks what may be absent. Children come in any order, and one that is not
// named here is passed over.
//
// clang-format off
//   (ftf
//     (technologyContainer (technology NAME (footprintLayer (LAYER NAME (type TYPE)?) ...)?)?)?    CBDtechnologyContainer
//     (footprintContainer                                                                          FootprintFileLoad
//       (pads (pad NAME (geometry SHAPE ...)?) ...)                                                CBDpad
//       (padstacks                                                                                 CBDpadstack
//         (padstack NAME (type T)? (throughMode M)? (isBuildupVia B)? (hole (geometry SHAPE)?)?
//           (padSet (footLayer NAME)? (connect (pad NAME)?)? (noconnect (pad NAME)?)? (thermal (pad NAME)?)?
//                   (clearance (pad NAME)?)?) ...) ...)
//       (footprints                                                                                CBDfootprint
//         (footprint NAME (area (box (pt X Y) ...)?)? (uver N)? (propertyS ITEM COMMENT)? (propertyI ITEM COMMENT)?
//           (heelprint (layout LAYER ...)?)?                                                       CBDheelprint
//           (toeprint (pin NAME (pt X Y)? (layout (layer ...) ...)?) ...)?) ...))?)                CBDtoeprintPin
//
// where LAYER is a form of any name, ((footLayer NAME)? (FPADSTACK)? SHAPE ...). "isBuildupVia", "uver", the
// properties and all layers of a pin but the first count in a load of a whole file only.
//
// The technology section of a board file, of which one "technology" is read:
//
//   (technologyContainer
//     (technology NAME (numberOfConductorLayer N)
//       (footprintLayer (LAYER NAME (type TYPE)) ...)                                              CBDfootprintLayer
//       (nonConductiveLayer (LAYER NAME (propertyI sortKey N)?) ...)                               CBDnonConductiveLayer
//       (conductiveLayer                                                                           CBDcondLayer
//         (layerNumber N (type T)? (propertyI ITEM N)? (soldering S)? (refer NAME (type T)) ...) ...)
//       (subLayer                                                                                  CBDsubLayer
//         (systemLayer (type NAME)?) ...
//         (drawLayerOf | infoLayerOf (conductive N)? (nonConductive NAME)?) ...)
//       (layerMapping                                                                              CBDmap
//         (MAP NAME
//           (correspondence (footLayer NAME)
//             (boardLayer (conductive N) (nonConductive NAME) (systemLayer (type NAME)) ...)) ...) ...)?) ...)
// clang-format on
#include <functional>
#include <memory>

#include "reader/ObjectRow.h"

class CBDcondLayer;
class CBDdrawObjArray;
class CBDfootprint;
class CBDfootprintLayer;
class CBDheelprint;
class CBDmap;
class CBDnonConductiveLayer;
class CBDpad;
class CBDpadSet;
class CBDpadstack;
class CBDsubLayer;
class CBDtechnologyContainer;
class CBDtoeprintPin;

namespace laminate {

/// What the readers of library records need to know of the load that they serve.
struct LibraryContext {
  CBDdrawObjArray* pBoardShapes = nullptr;  ///< gets the shapes inside board assemblies
  bool bWhole = true;                       ///< false in the loads of parts of a file, which leave some things out
  /// Told of each pad, padstack and footprint as soon as its name is known: the form's keyword and the name.
  std::function<void(const CString& sKeyword, const CString& sName)> onRecord;

  void Tell(const CECadClsLvl& node, const CString& sName) const {
    if (onRecord) onRecord(node.m_sName, sName);
  }
};

// Each reader makes a new object. A value that a form needs and lacks raises `CInvalidArgException`; nothing leaks.
std::unique_ptr<CBDfootprintLayer> ReadFootprintLayer(const CECadClsLvl& node);
/// The same for a footprint file, where the type may be absent.
std::unique_ptr<CBDfootprintLayer> ReadFootprintLayerOfLibrary(const CECadClsLvl& node);
std::unique_ptr<CBDnonConductiveLayer> ReadNonConductiveLayer(const CECadClsLvl& node);
std::unique_ptr<CBDcondLayer> ReadCondLayer(const CECadClsLvl& node);
std::unique_ptr<CBDsubLayer> ReadSystemSubLayer(const CECadClsLvl& node);
std::unique_ptr<CBDsubLayer> ReadDrawnSubLayer(const CECadClsLvl& node);
std::unique_ptr<CBDmap> ReadMap(const CECadClsLvl& node);
std::unique_ptr<CBDpad> ReadPad(const CECadClsLvl& node, LibraryContext& context);
std::unique_ptr<CBDpadstack> ReadPadstack(const CECadClsLvl& node, LibraryContext& context);
std::unique_ptr<CBDpadSet> ReadPadSet(const CECadClsLvl& node);
std::unique_ptr<CBDfootprint> ReadFootprint(const CECadClsLvl& node, LibraryContext& context);
std::unique_ptr<CBDtoeprintPin> ReadToeprintPin(const CECadClsLvl& node, LibraryContext& context);
/// Adds to the heelprint; what stood before a fault stays.
void ReadHeelprint(const CECadClsLvl& node, CBDheelprint& heelprint, LibraryContext& context);

/// Translates the shapes of a layer of a footprint, whose name is that of its "footLayer", or "FPADSTACK" where it
/// holds a form of that name, and appends them.
void ReadFootprintLayerShapes(const CECadClsLvl& layer, CBDdrawObjArray& shapes, const LibraryContext& context);

// The tables that the readers walk. Those named "Whole" hold the rows that the loads of parts leave out.
RowSpan<CBDcondLayer> CondLayerRows();
RowSpan<CBDtechnologyContainer> SubLayerRows();
RowSpan<CBDpadstack, LibraryContext> PadstackRows();
RowSpan<CBDpadstack, LibraryContext> PadstackWholeRows();
RowSpan<CBDpadSet> PadSetRows();
RowSpan<CBDfootprint, LibraryContext> FootprintRows();
RowSpan<CBDfootprint, LibraryContext> FootprintWholeRows();
RowSpan<CBDtoeprintPin> ToeprintPinRows();

/// All children in file order by two tables, of which the second counts only in a load of a whole file.
template <class Form, class WholeForm, class T>
void WalkWithWhole(const Form& form, const WholeForm& whole, const CECadClsLvl& node, T& object,
                   LibraryContext& context) {
  std::uint64_t seen = 0;
  WalkChildren(form, node, object, context, [&](const CECadClsLvl& child) {
    if (context.bWhole) ReadChild(whole, child, object, context, seen);
  });
}

}  // namespace laminate
