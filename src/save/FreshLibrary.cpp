// The technology section and the library as forms.
#include "base/CLProperty.h"
#include "board/LayerForms.h"
#include "drawobj/CBDhole.h"
#include "save/FreshShapes.h"
#include "save/RowPlan.h"
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
#include "technology/LibraryForms.h"

namespace laminate {

namespace {

using Scope = FormText::Form;
using Lines = FormText::Lines;
using Step = FormText::Step;

void PutToken(FormText& text, std::string_view sKey, std::string_view sField, const CString& s) {
  const Scope form(text, sKey);
  text.Token(sField, s);
}

template <auto kArray, class T>
void RefuseElements(FormText& text, const T& object, std::string_view sReason) {
  if (object.*kArray == nullptr || !(object.*kArray)->IsEmpty()) text.Refuse(kField<kArray>, sReason);
}

void RefuseProperties(FormText& text, std::string_view sField, const CLPropertyArray& properties) {
  if (!properties.IsEmpty()) text.Refuse(sField, "no form holds them");
}

using Technology = CBDtechnologyContainer;

}  // namespace

// ---- layers ----

void Put(FormText& text, const CBDfootprintLayer& layer) {
  const Scope form(text, "layer", Lines::one);
  text.Token(kField<&CBDfootprintLayer::m_sName>, layer.m_sName);
  PutToken(text, "type", kField<&CBDfootprintLayer::m_sType>, layer.m_sType);
}

void Put(FormText& text, const CBDnonConductiveLayer& layer) {
  RefuseProperties(text, kField<&CBDnonConductiveLayer::m_aProperties>, layer.m_aProperties);
  const Scope form(text, "layer", Lines::one);
  text.Token(kField<&CBDnonConductiveLayer::m_sName>, layer.m_sName);
  if (layer.m_nSortKey == Fresh<CBDnonConductiveLayer>().m_nSortKey) return;
  const Scope property(text, "propertyI");
  text.Word("sortKey");
  text.Token(layer.m_nSortKey);
}

void Put(FormText& text, const CBDcondLayer& layer) {
  RefuseProperties(text, kField<&CBDcondLayer::m_aProperties>, layer.m_aProperties);
  const Scope form(text, "layerNumber");
  text.Token(layer.m_nLayerNumber);
  PlanOf<CBDcondLayer, &CondLayerRows>().Put(text, layer);
  if (layer.m_nProperty != Fresh<CBDcondLayer>().m_nProperty) {
    const Scope property(text, "propertyI");
    text.Word("wiring");  // the reader looks at the number only
    text.Token(layer.m_nProperty);
  }
  PutEach<&CBDcondLayer::m_pRefArray>(text, layer, kNameOf, [&text](const CBDcondLayerRef& refer) {
    RefuseUnsaid<&CBDcondLayerRef::m_nUserDefType>(text, refer);
    const Scope reference(text, "refer", Lines::one);
    text.Token(kField<&CBDcondLayerRef::m_sName>, refer.m_sName);
    PutToken(text, "type", kField<&CBDcondLayerRef::m_sType>, refer.m_sType);
  });
}

void Put(FormText& text, const CBDsubLayer& layer) {
  RefuseUnsaid<&CBDsubLayer::m_sKind>(text, layer);
  constexpr std::string_view sField = kField<&CBDsubLayer::m_sName>;
  if (layer.m_sLayerKind == kSystemLayer) {
    const Scope form(text, kSystemLayer, Lines::one);
    if (!layer.m_sName.IsEmpty()) PutToken(text, "type", sField, layer.m_sName);
    return;
  }
  const Scope form(text, "drawLayerOf", Lines::one);
  if (layer.m_sLayerKind == kConductive || layer.m_sLayerKind == kNonConductive) {
    PutToken(text, layer.m_sLayerKind.View(), sField, layer.m_sName);
  } else if (!layer.m_sLayerKind.IsEmpty()) {
    text.Refuse(kField<&CBDsubLayer::m_sLayerKind>, "it is the keyword of one of three forms",
                LostValue(layer.m_sLayerKind));
  } else if (!layer.m_sName.IsEmpty()) {
    text.Refuse(sField, "a layer without a kind has no name", LostValue(layer.m_sName));
  }
}

void Put(FormText& text, const CBDcorrespondence& correspondence) {
  const Scope form(text, "correspondence");
  PutToken(text, "footLayer", kField<&CBDcorrespondence::m_sFootLayer>, correspondence.m_sFootLayer);
  const Scope boardLayer(text, "boardLayer");
  for (const CString& sName : correspondence.m_aBoardLayers)
    PutBoardLayerName(text, kField<&CBDcorrespondence::m_aBoardLayers>, sName);
}

void Put(FormText& text, const CBDmap& map) {
  const Scope form(text, "map");
  text.Token(kField<&CBDmap::m_sName>, map.m_sName);
  PutEach<&CBDmap::m_pCorrespondenceArray>(
      text, map, [](const CBDcorrespondence& c) { return c.m_sFootLayer.View(); }, PutInto<CBDcorrespondence>(text));
}

// ---- the technology section ----

void PutTechnology(FormText& text, const CBDtechnologyContainer& technology) {
  const Scope container(text, "technologyContainer");
  const Scope form(text, "technology");
  text.Token(kField<&Technology::m_sName>, technology.m_sName);
  {
    const Scope number(text, "numberOfConductorLayer");
    text.Token(technology.m_nConductorLayers);
  }
  PutSection<&Technology::m_pFootprintLayerArray, CBDfootprintLayer>(text, "footprintLayer", technology, kNameOf);
  PutSection<&Technology::m_pNonConductiveLayerArray, CBDnonConductiveLayer>(text, "nonConductiveLayer", technology,
                                                                             kNameOf);
  PutSection<&Technology::m_pCondLayerArray, CBDcondLayer>(text, "conductiveLayer", technology, kNoName);
  PutSection<&Technology::m_pSubLayerArray, CBDsubLayer>(text, "subLayer", technology, kNameOf);
  if (technology.m_pMapArray != nullptr && technology.m_pMapArray->IsEmpty()) return;
  PutSection<&Technology::m_pMapArray, CBDmap>(text, "layerMapping", technology, kNameOf);
}

void PutFootprintTechnology(FormText& text, const CBDtechnologyContainer& technology) {
  constexpr std::string_view sReason = "a footprint file has only footprint layers";
  RefuseUnsaid<&Technology::m_nConductorLayers>(text, technology, sReason);
  RefuseElements<&Technology::m_pNonConductiveLayerArray>(text, technology, sReason);
  RefuseElements<&Technology::m_pCondLayerArray>(text, technology, sReason);
  RefuseElements<&Technology::m_pSubLayerArray>(text, technology, sReason);
  RefuseElements<&Technology::m_pMapArray>(text, technology, sReason);
  const Scope container(text, "technologyContainer");
  const Scope form(text, "technology");
  text.Token(kField<&Technology::m_sName>, technology.m_sName);
  PutSection<&Technology::m_pFootprintLayerArray, CBDfootprintLayer>(text, "footprintLayer", technology, kNameOf);
}

// ---- the library ----

void Put(FormText& text, const CBDpad& pad) {
  RefuseUnsaid<&CBDpad::m_nUver, &CBDpad::m_rcArea>(text, pad);
  const Scope form(text, "pad");
  text.Token(kField<&CBDpad::m_sName>, pad.m_sName);
  if (pad.m_pDrawObjArray != nullptr && pad.m_pDrawObjArray->IsEmpty()) return;
  const Scope geometry(text, "geometry");
  PutShapeForms(text, {ShapePlace::geometry}, kField<&CBDpad::m_pDrawObjArray>, pad.m_pDrawObjArray);
}

void Put(FormText& text, const CBDpadSet& padSet) {
  const Scope form(text, "padSet");
  text.StayOnLine();
  PlanOf<CBDpadSet, &PadSetRows>().Put(text, padSet);
}

namespace {

// The drill is a hole of which nothing but the shape is read.
void PutDrill(FormText& text, const CBDpadstackHole& drill) {
  RefuseUnsaid<&CBDpadstackHole::m_sFootLayer>(text, drill);
  if (drill.m_pDrawObj == nullptr) return;
  const auto* pHole = dynamic_cast<const CBDhole*>(drill.m_pDrawObj);
  if (pHole == nullptr) return text.Refuse(kField<&CBDpadstackHole::m_pDrawObj>, "the drill is a hole");
  const Step step(text, "m_pDrawObj");
  RefuseUnsaid<&CBDhole::m_nFrom, &CBDhole::m_nTo, &CBDhole::m_sDrillType, &CBDhole::m_nHoleType>(
      text, *pHole, "of the drill of a padstack only the shape is read");
  RefuseUnlikeSurroundings(text, *pHole, Fresh<CBDhole>().m_sKind, {ShapePlace::geometry, {{}, "HOLE", 0}});
  const Scope form(text, "hole");
  if (pHole->m_pShape == nullptr) return text.Refuse(kField<&CBDhole::m_pShape>, "it is a shape, or the placeholder");
  const Step inner(text, "m_pShape");
  if (typeid(*pHole->m_pShape) == typeid(CBDdrawObj)) {
    RefuseUnlikeSurroundings(text, *pHole->m_pShape, Fresh<CBDdrawObj>().m_sKind, {ShapePlace::geometry});
  } else {
    const Scope geometry(text, "geometry");
    PutShapeForm(text, {ShapePlace::geometry}, *pHole->m_pShape);
  }
}

}  // namespace

void Put(FormText& text, const CBDpadstack& padstack) {
  RefuseUnsaid<&CBDpadstack::m_nUver, &CBDpadstack::m_rcArea, &CBDpadstack::m_aVerbatim>(text, padstack);
  const Scope form(text, "padstack");
  text.Token(kField<&CBDpadstack::m_sName>, padstack.m_sName);
  PlanOf<CBDpadstack, &PadstackRows>().Put(text, padstack);
  PlanOf<CBDpadstack, &PadstackWholeRows>().Put(text, padstack);
  if (padstack.m_pHole == nullptr) {
    text.Refuse(kField<&CBDpadstack::m_pHole>, "the object is missing");
  } else {
    const Step step(text, "m_pHole");
    PutDrill(text, *padstack.m_pHole);
  }
  PutEach<&CBDpadstack::m_pPadSetArray>(
      text, padstack, [](const CBDpadSet& padSet) { return padSet.m_sFootLayer.View(); }, PutInto<CBDpadSet>(text));
}

void Put(FormText& text, const CBDtoeprintPin& pin) {
  const Scope form(text, "pin");
  text.Token(kField<&CBDtoeprintPin::m_sName>, pin.m_sName);
  PlanOf<CBDtoeprintPin, &ToeprintPinRows>().Put(text, pin);
  if (pin.m_pDrawObjArray != nullptr && pin.m_pDrawObjArray->IsEmpty()) return;
  const Scope layout(text, "layout");
  PutLayers(text, ShapePlace::footprint, kField<&CBDtoeprintPin::m_pDrawObjArray>, pin.m_pDrawObjArray);
}

namespace {

void PutHeelprint(FormText& text, const CBDheelprint& heelprint) {
  if (heelprint.m_pDrawObjArray != nullptr && heelprint.m_pDrawObjArray->IsEmpty()) return;
  const Scope form(text, "heelprint");
  const Scope layout(text, "layout");
  PutLayers(text, ShapePlace::footprint, kField<&CBDheelprint::m_pDrawObjArray>, heelprint.m_pDrawObjArray);
}

void PutProperty(FormText& text, const CLProperty& property) {
  if (property.m_sKind != "propertyS" && property.m_sKind != "propertyI") {
    return text.Refuse(kField<&CLProperty::m_sKind>, "it is the keyword of one of two forms",
                       LostValue(property.m_sKind));
  }
  const Scope form(text, property.m_sKind.View());
  text.Token(kField<&CLProperty::m_sItem>, property.m_sItem, true);
  text.Token(kField<&CLProperty::m_sComment>, property.m_sComment);
}

}  // namespace

void Put(FormText& text, const CBDfootprint& footprint) {
  RefuseUnsaid<&CBDfootprint::m_rcArea, &CBDfootprint::m_aVerbatim>(text, footprint);
  const Scope form(text, "footprint");
  text.Token(kField<&CBDfootprint::m_sName>, footprint.m_sName);
  PlanOf<CBDfootprint, &FootprintWholeRows>().Put(text, footprint);
  PlanOf<CBDfootprint, &FootprintRows>().Put(text, footprint);
  if (footprint.m_pHeelprint == nullptr) {
    text.Refuse(kField<&CBDfootprint::m_pHeelprint>, "the object is missing");
  } else {
    const Step step(text, "m_pHeelprint");
    PutHeelprint(text, *footprint.m_pHeelprint);
  }
  if (footprint.m_pToeprintPinArray == nullptr || !footprint.m_pToeprintPinArray->IsEmpty()) {
    PutSection<&CBDfootprint::m_pToeprintPinArray, CBDtoeprintPin>(text, "toeprint", footprint, kNameOf);
  }
  PutEach<&CBDfootprint::m_pPropertyArray>(
      text, footprint, [](const CLProperty& property) { return property.m_sItem.View(); },
      [&text](const CLProperty& property) { PutProperty(text, property); });
}

void PutFootprintFile(FormText& text, const SavedDesign& design) {
  const CBDtechnologyContainer* pTechnology = design.pFtfTechnology;
  const CBDfootprintContainer* pFootprints = design.pFootprints;
  if (pTechnology == nullptr || pFootprints == nullptr) AfxThrowInvalidArgException();
  {
    const Scope file(text, "ftf");
    PutHeader(text, CString("2.0"));
    {
      const Step step(text, "m_pFtfTechnology");
      PutFootprintTechnology(text, *pTechnology);
    }
    const Step step(text, "m_pFootprintContainer");
    const Scope container(text, "footprintContainer");
    using Container = CBDfootprintContainer;
    PutSection<&Container::m_pPadArray, CBDpad>(text, "pads", *pFootprints, kNameOf);
    PutSection<&Container::m_pPadstackArray, CBDpadstack>(text, "padstacks", *pFootprints, kNameOf);
    PutSection<&Container::m_pFootprintArray, CBDfootprint>(text, "footprints", *pFootprints, kNameOf);
  }
  text.EndLine();
}

}  // namespace laminate
