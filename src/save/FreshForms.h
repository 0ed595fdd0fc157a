#pragma once
// Forms that are written anew: all that reading keeps of an object, by the tables that read it. Each function writes
// one form; what the form cannot say goes to the losses of the text. A value is left out where the reader gives it
// anyway.
#include <span>

#include "save/FormText.h"

class CBDbondwire;
class CBDboardContainer;
class CBDcompGroup;
class CBDcomponent;
class CBDcondLayer;
class CBDcorrespondence;
class CBDdrawObj;
class CBDfootprint;
class CBDfootprintContainer;
class CBDfootprintLayer;
class CBDgate;
class CBDlayerParameter;
class CBDlibFootprint;
class CBDlibPad;
class CBDlibPadstack;
class CBDlibraryEntities;
class CBDmap;
class CBDnet;
class CBDnonConductiveLayer;
class CBDpad;
class CBDpadSet;
class CBDpadstack;
class CBDparameter;
class CBDpin;
class CBDpinGate;
class CBDrefPin;
class CBDsubBoard;
class CBDsubLayer;
class CBDtechnologyContainer;
class CBDtextSize;
class CBDtoeprintPin;
class CBDvertex;
class CBDvisibleLayerSet;

namespace laminate {

/// What is saved. Everything stays the caller's; null raises `CInvalidArgException`.
struct SavedDesign {
  const CString* pVersion = nullptr;
  const CBDtechnologyContainer* pTechnology = nullptr;
  const CBDtechnologyContainer* pFtfTechnology = nullptr;
  const CBDfootprintContainer* pFootprints = nullptr;
  const CBDboardContainer* pBoard = nullptr;
  const CBDparameter* pParameter = nullptr;
  const CBDlibraryEntities* pLibraryEntities = nullptr;
  /// How many layer forms the layout has at least, empty ones among them: the reader counts them.
  int nLayers = 0;
};

/// Where a shape stands, which decides what its form may say.
enum class ShapePlace {
  geometry,   ///< in a pad, a padstack, or another shape
  footprint,  ///< in a layer of a footprint or of its pin
  layout,     ///< in a layer of the board layout
  compGroup,  ///< in a layer of a component group
  component,  ///< in a layer of a component
  pin         ///< in a layer of a component's pin
};

/// The layer form that a shape stands in.
struct ShapeLayer {
  CString sType;
  CString sName;
  int nNumber = 0;
};

/// The whole files, with the end of the last line.
void PutBoardFile(FormText& text, const SavedDesign& design);
void PutFootprintFile(FormText& text, const SavedDesign& design);

// ---- sections ----
/// "technologyContainer" of a board file, and of a footprint file.
void PutTechnology(FormText& text, const CBDtechnologyContainer& technology);
void PutFootprintTechnology(FormText& text, const CBDtechnologyContainer& technology);
/// "parameter" and "libraryEntities".
void Put(FormText& text, const CBDparameter& parameter);
void Put(FormText& text, const CBDlibraryEntities& entities);

// ---- shapes ----
/// A run of shapes of one layer as a "layer" form; see `RunOfLayer`.
/// `nFirst` is the index of the first one in its array, for what is told of losses.
void PutLayer(FormText& text, ShapePlace place, std::span<CBDdrawObj* const> shapes, std::size_t nFirst = 0);
/// Whether a shape can stand in the layer form of another one. One that bears no layer stands in any.
bool SameLayer(const CBDdrawObj& a, const CBDdrawObj& b);
/// How many of the shapes, from the first one on, make a run of one layer.
std::size_t RunOfLayer(std::span<CBDdrawObj* const> shapes);
/// One shape in such a form, with its "refer" where it has one.
void PutShape(FormText& text, ShapePlace place, const ShapeLayer& layer, const CBDdrawObj& shape);
void Put(FormText& text, const CBDvertex& vertex);

// ---- records of a board file ----
void Put(FormText& text, const CBDsubBoard& subBoard);
void Put(FormText& text, const CBDcompGroup& group);
void Put(FormText& text, const CBDnet& net);
void Put(FormText& text, const CBDrefPin& refPin);
void Put(FormText& text, const CBDcomponent& component);
/// `nNumber` is the gate's place in its component, from 1; the reader drops it.
void Put(FormText& text, const CBDgate& gate, int nNumber = 1);
void Put(FormText& text, const CBDpin& pin);
void Put(FormText& text, const CBDpinGate& pinGate);
void Put(FormText& text, const CBDbondwire& bondwire);
void Put(FormText& text, const CBDlayerParameter& layerParameter);
void Put(FormText& text, const CBDvisibleLayerSet& set);
void Put(FormText& text, const CBDtextSize& textSize);
void Put(FormText& text, const CBDlibFootprint& footprint);
void Put(FormText& text, const CBDlibPad& pad);
void Put(FormText& text, const CBDlibPadstack& padstack);

// ---- records of a technology section and of a footprint file ----
void Put(FormText& text, const CBDfootprintLayer& layer);
void Put(FormText& text, const CBDnonConductiveLayer& layer);
void Put(FormText& text, const CBDcondLayer& layer);
void Put(FormText& text, const CBDsubLayer& layer);
void Put(FormText& text, const CBDmap& map);
void Put(FormText& text, const CBDcorrespondence& correspondence);
void Put(FormText& text, const CBDpad& pad);
void Put(FormText& text, const CBDpadstack& padstack);
void Put(FormText& text, const CBDpadSet& padSet);
void Put(FormText& text, const CBDfootprint& footprint);
void Put(FormText& text, const CBDtoeprintPin& pin);

}  // namespace laminate
