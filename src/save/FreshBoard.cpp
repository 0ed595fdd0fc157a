// The records of a board file as forms.
#include <algorithm>

#include "base/CGProperty.h"
#include "base/Number.h"
#include "board/BoardForms.h"
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
#include "board/LayerForms.h"
#include "save/FreshShapes.h"
#include "save/RowPlan.h"
#include "save/Spelling.h"
#include "technology/CBDcondLayer.h"
#include "technology/CBDfootprintLayer.h"
#include "technology/CBDmap.h"
#include "technology/CBDnonConductiveLayer.h"
#include "technology/CBDsubLayer.h"
#include "technology/CBDtechnologyContainer.h"

namespace laminate {

namespace {

using Scope = FormText::Form;
using Lines = FormText::Lines;
using Piece = FormText::Piece;
using Step = FormText::Step;

template <class Array>
bool HoldsNone(const Array* pArray) {
  return pArray != nullptr && pArray->IsEmpty();
}

// A section with a form for each element; no element, no section.
template <auto kArray, class X, class T, class Name>
void PutSectionIfAny(FormText& text, std::string_view sKey, const T& object, Name name) {
  if (!HoldsNone(object.*kArray)) PutSection<kArray, X>(text, sKey, object, name);
}

template <auto kShapes, class T>
void PutLayout(FormText& text, ShapePlace place, const T& object) {
  if (HoldsNone(object.*kShapes)) return;
  const Scope layout(text, "layout");
  PutLayers(text, place, kField<kShapes>, object.*kShapes);
}

}  // namespace

void PutHeader(FormText& text, const CString& sVersion) {
  const Scope header(text, "header");
  {
    const Scope version(text, "version");
    text.Token("CBDesigner.m_sVersion", sVersion);
  }
  {
    const Scope unit(text, "unit");
    text.Word("MM");
  }
  const Scope timeZone(text, "timeZone");
  text.Word("\"\"");
}

void PutBoardLayerName(FormText& text, std::string_view sField, const CString& sName) {
  const bool bNumber = !sName.IsEmpty() && sName.View().find_first_not_of("0123456789") == std::string_view::npos;
  const Scope form(text, bNumber ? kConductive : kNonConductive);
  text.Token(sField, sName);
}

// ---- sub-boards, groups and nets ----

void Put(FormText& text, const CBDsubBoard& subBoard) {
  const Scope form(text, "subBoard", Lines::one);
  text.Token(subBoard.m_nId);
  PlanOf<CBDsubBoard, &SubBoardRows>().Put(text, subBoard);
}

void Put(FormText& text, const CBDcompGroup& group) {
  const Scope form(text, "compGroup");
  text.Token(kField<&CBDcompGroup::m_sName>, group.m_sName);
  PlanOf<CBDcompGroup, &CompGroupRows>().Put(text, group);
  PutLayout<&CBDcompGroup::m_pDrawObjArray>(text, ShapePlace::compGroup, group);
}

void Put(FormText& text, const CBDrefPin& refPin) {
  const Scope form(text, "comp", Lines::one);
  text.Token(kField<&CBDrefPin::m_sComp>, refPin.m_sComp);
  PlanOf<CBDrefPin, &RefPinRows>().Put(text, refPin);
}

void Put(FormText& text, const CBDnet& net) {
  const Scope form(text, "net");
  text.Token(kField<&CBDnet::m_sName>, net.m_sName);
  PlanOf<CBDnet, &NetRows>().Put(text, net);
  PutEach<&CBDnet::m_pRefPinArray>(text, net, kNoName, PutInto<CBDrefPin>(text));
}

// ---- components ----

// The reader takes as many of the forms in a gate as it has values, so each of them needs one.
void Put(FormText& text, const CBDgate& gate, int nNumber) {
  RefuseUnsaid<&CBDgate::m_sLockMode>(text, gate);
  const INT_PTR nPins = gate.m_pGatePinArray == nullptr ? 0 : gate.m_pGatePinArray->GetSize();
  const Scope form(text, "gate");
  for (INT_PTR i = gate.m_sId.IsEmpty() ? 0 : -1; i < nPins; ++i) text.Token(nNumber);
  PlanOf<CBDgate, &GateRows>().Put(text, gate);
  PutEach<&CBDgate::m_pGatePinArray>(text, gate, kNameOf, [&text](const CBDgatePin& pin) {
    const Scope gatePin(text, "pin", Lines::one);
    text.Token(kField<&CBDgatePin::m_sName>, pin.m_sName);
    PlanOf<CBDgatePin, &GatePinRows>().Put(text, pin);
  });
}

void Put(FormText& text, const CBDpinGate& pinGate) {
  const Scope form(text, "gate", Lines::one);
  text.Token(pinGate.m_nGate);
  PlanOf<CBDpinGate, &PinGateRows>().Put(text, pinGate);
}

void Put(FormText& text, const CBDbondwire& bondwire) {
  const Scope form(text, "bondWire", Lines::one);
  {
    const Scope from(text, "pt");
    text.Point(kField<&CBDbondwire::m_ptFrom>, bondwire.m_ptFrom);
  }
  const Scope to(text, "pt");
  text.Point(kField<&CBDbondwire::m_ptTo>, bondwire.m_ptTo);
}

void Put(FormText& text, const CBDpin& pin) {
  const Scope form(text, "pin");
  text.Token(kField<&CBDpin::m_sName>, pin.m_sName);
  PlanOf<CBDpin, &PinRows>().Put(text, pin);
  PutEach<&CBDpin::m_pPinGateArray>(text, pin, kNameOf, PutInto<CBDpinGate>(text));
  PutLayout<&CBDpin::m_pDrawObjArray>(text, ShapePlace::pin, pin);
  PutEach<&CBDpin::m_pBondwireArray>(text, pin, kNoName, PutInto<CBDbondwire>(text));
}

namespace {

bool SaysScale(const CGProperty& property, double dScale) {
  if (property.m_sItem != "Scale") return false;
  const double d = Atof(property.m_sComment.View());
  return d == dScale || (d != d && dScale != dScale);
}

// The scale is that of the last numeric property "Scale"; those behind it are textual.
void PutProperties(FormText& text, const CBDcomponent& component) {
  const CGProperty* pScale = nullptr;
  if (component.m_pPropertyArray != nullptr) {
    for (const CGProperty* p : *component.m_pPropertyArray) {
      if (p != nullptr && SaysScale(*p, component.m_dScale)) pScale = p;
    }
  }
  if (pScale == nullptr && component.m_dScale != Fresh<CBDcomponent>().m_dScale) {
    text.Refuse(kField<&CBDcomponent::m_dScale>, "a property \"Scale\" of that value says it",
                LostValue(component.m_dScale));
  }
  bool bNumeric = pScale != nullptr;
  PutEach<&CBDcomponent::m_pPropertyArray>(
      text, component, [](const CGProperty& property) { return property.m_sItem.View(); },
      [&](const CGProperty& property) {
        const Scope form(text, bNumeric && property.m_sItem == "Scale" ? "propertyF" : "propertyS");
        if (&property == pScale) bNumeric = false;
        text.Token(kField<&CGProperty::m_sItem>, property.m_sItem, true);
        text.Token(kField<&CGProperty::m_sComment>, property.m_sComment);
      });
}

}  // namespace

void Put(FormText& text, const CBDcomponent& component) {
  RefuseUnsaid<&CBDcomponent::m_ptMinRect1, &CBDcomponent::m_ptMinRect2, &CBDcomponent::m_aVerbatim>(text, component);
  const Scope form(text, "component");
  // The splitter sees the form only if its first line leaves no other one open, nor itself closed.
  if (!component.m_sReference.IsEmpty() && FitsAnywhere(component.m_sReference.View())) {
    text.StayOnLine();
  } else {
    text.BreakNext();
  }
  PlanOf<CBDcomponent, &ComponentRows>().Put(text, component);
  PutLayout<&CBDcomponent::m_pDrawObjArray>(text, ShapePlace::component, component);
  int nGate = 0;
  PutEach<&CBDcomponent::m_pGateArray>(text, component, kNoName,
                                       [&](const CBDgate& gate) { Put(text, gate, ++nGate); });
  PutEach<&CBDcomponent::m_pPinArray>(text, component, kNameOf, PutInto<CBDpin>(text));
  PutProperties(text, component);
}

// ---- settings ----

void Put(FormText& text, const CBDlayerParameter& layerParameter) {
  using Parameter = CBDlayerParameter;
  RefuseUnsaid<&Parameter::m_sLayerType, &Parameter::m_sLayerName, &Parameter::m_nLayerNumber>(text, layerParameter);
  const Scope form(text, "layer");
  PlanOf<CBDlayerParameter, &LayerParameterRows>().Put(text, layerParameter);
}

void Put(FormText& text, const CBDvisibleLayerSet& set) {
  const Scope form(text, "set");
  text.Token(kField<&CBDvisibleLayerSet::m_sName>, set.m_sName);
  for (const CString& sName : set.m_aLayers) {
    const Scope layer(text, "layer", Lines::one);
    PutBoardLayerName(text, kField<&CBDvisibleLayerSet::m_aLayers>, sName);
    const Scope visible(text, "visible");
    text.Word("YES");
  }
}

void Put(FormText& text, const CBDtextSize& textSize) {
  const Scope form(text, "textSize");
  text.Token(textSize.m_nId);
  PlanOf<CBDtextSize, &TextSizeRows>().Put(text, textSize);
}

void Put(FormText& text, const CBDparameter& parameter) {
  const Scope form(text, "parameter");
  PutSectionIfAny<&CBDparameter::m_pLayerParameterArray, CBDlayerParameter>(text, "layerParameters", parameter,
                                                                            kNoName);
  PutSectionIfAny<&CBDparameter::m_pVisibleLayerSetArray, CBDvisibleLayerSet>(text, "visibleLayerSet", parameter,
                                                                              kNameOf);
  PutSectionIfAny<&CBDparameter::m_pTextSizeArray, CBDtextSize>(text, "textSizeParameters", parameter, kNoName);
}

// ---- what the board claims of the library ----

namespace {

template <auto kRows, class X>
void PutClaim(FormText& text, std::string_view sKey, const X& claim) {
  const Scope form(text, sKey, Lines::one);
  text.Token(kField<&X::m_sName>, claim.m_sName);
  PlanOf<X, kRows>().Put(text, claim);
}

template <auto kList>
void PutNames(FormText& text, std::string_view sKey, const CBDlibraryEntities& entities) {
  for (const CString& sName : entities.*kList) {
    const Scope form(text, sKey);
    text.Token(kField<kList>, sName);
  }
}

}  // namespace

void Put(FormText& text, const CBDlibFootprint& footprint) {
  PutClaim<&LibFootprintRows>(text, "footprint", footprint);
}
void Put(FormText& text, const CBDlibPad& pad) { PutClaim<&LibPadRows>(text, "pad", pad); }
void Put(FormText& text, const CBDlibPadstack& padstack) { PutClaim<&LibPadstackRows>(text, "padstack", padstack); }

void Put(FormText& text, const CBDlibraryEntities& entities) {
  using Entities = CBDlibraryEntities;
  const Scope form(text, "libraryEntities");
  PutNames<&Entities::m_aParts>(text, "part", entities);
  PutNames<&Entities::m_aPackages>(text, "package", entities);
  PutEach<&Entities::m_pLibFootprintArray>(text, entities, kNameOf, PutInto<CBDlibFootprint>(text));
  PutEach<&Entities::m_pLibPadstackArray>(text, entities, kNameOf, PutInto<CBDlibPadstack>(text));
  PutEach<&Entities::m_pLibPadArray>(text, entities, kNameOf, PutInto<CBDlibPad>(text));
}

// ---- the file ----

namespace {

// The splitter hands components and layers of the layout to the reader one by one.
void PutBoard(FormText& text, const CBDboardContainer& board, int nLayers) {
  const Scope container(text, "boardContainer");
  PutSectionIfAny<&CBDboardContainer::m_pSubBoardArray, CBDsubBoard>(text, "subBoards", board, kNoName);
  {
    const Scope components(text, "components");
    text.BreakNext();  // the splitter takes it that the section goes on behind its first line
    const Piece piece(text);
    PutEach<&CBDboardContainer::m_pComponentArray>(
        text, board, [](const CBDcomponent& component) { return component.m_sReference.View(); },
        PutInto<CBDcomponent>(text));
  }
  PutSectionIfAny<&CBDboardContainer::m_pCompGroupArray, CBDcompGroup>(text, "compGroups", board, kNameOf);
  PutSectionIfAny<&CBDboardContainer::m_pNetArray, CBDnet>(text, "nets", board, kNameOf);
  const Scope boardLayout(text, "boardLayout");
  const Scope layout(text, "layout");
  const Piece piece(text);
  nLayers -= PutLayers(text, ShapePlace::layout, kField<&CBDboardContainer::m_pDrawObjArray>, board.m_pDrawObjArray);
  for (; nLayers > 0; --nLayers) {
    const Scope layer(text, "layer");
    text.BreakNext();  // as with a component
  }
}

bool HoldsNothing(const CBDtechnologyContainer& technology) {
  return technology.m_sName.IsEmpty() && technology.m_nConductorLayers == 0 &&
         HoldsNone(technology.m_pFootprintLayerArray) && HoldsNone(technology.m_pNonConductiveLayerArray) &&
         HoldsNone(technology.m_pCondLayerArray) && HoldsNone(technology.m_pSubLayerArray) &&
         HoldsNone(technology.m_pMapArray);
}

}  // namespace

void PutBoardFile(FormText& text, const SavedDesign& design) {
  const CBDtechnologyContainer& technology = Required(design.pTechnology);
  {
    const Scope file(text, "pcf");
    PutHeader(text, Required(design.pVersion));
    if (!HoldsNothing(technology)) {
      const Step step(text, "m_pTechnology");
      PutTechnology(text, technology);
    }
    {
      const Step step(text, "m_pBoardContainer");
      PutBoard(text, Required(design.pBoard), design.nLayers);
    }
    {
      const Step step(text, "m_pParameter");
      Put(text, Required(design.pParameter));
    }
    const Step step(text, "m_pLibraryEntities");
    Put(text, Required(design.pLibraryEntities));
  }
  text.EndLine();
}

}  // namespace laminate
