#include "save/FreshShapes.h"

#include <algorithm>
#include <type_traits>
#include <typeindex>
#include <typeinfo>
#include <unordered_map>

#include "base/CLProperty.h"
#include "base/Number.h"
#include "board/LayerForms.h"
#include "drawobj/CBDcircle.h"
#include "drawobj/CBDdelete.h"
#include "drawobj/CBDdonut.h"
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
#include "drawobj/CBDrectangle.h"
#include "drawobj/CBDroundThermal.h"
#include "drawobj/CBDsquareHole.h"
#include "drawobj/CBDsquareThermal.h"
#include "drawobj/CBDsurface.h"
#include "drawobj/CBDsymbolText.h"
#include "drawobj/CBDtext.h"
#include "drawobj/CBDvertexArc.h"
#include "drawobj/CBDvertexPt.h"
#include "drawobj/ShapeGrammar.h"
#include "save/RowPlan.h"
#include "save/Spelling.h"
#include "technology/FootprintLayers.h"

namespace laminate {

namespace {

using Scope = FormText::Form;
using Lines = FormText::Lines;
using Step = FormText::Step;

// ---- the rows of the classes ----

template <class T, std::size_t kTable>
std::vector<RowView<T>> RowsOf() {
  return Grammar<T>()[kTable].rows;
}
/// One of the tables of a class, in the order of its `Grammar`.
template <class T, std::size_t kTable>
const RowPlan<T>& Plan() {
  return PlanOf<T, &RowsOf<T, kTable>>();
}

// ---- what a shape takes over ----

void RefuseUnlike(FormText& text, std::string_view sField, bool bLike, std::string sValue) {
  if (!bLike) text.Refuse(sField, "it is given by where the shape stands", std::move(sValue));
}

bool IsInComponentRefer(const Surroundings& around) {
  return around.place == ShapePlace::component && around.bRefer != 0;
}

}  // namespace

void RefuseUnlikeSurroundings(FormText& text, const CBDdrawObj& shape, const CString& sKind, const Surroundings& around,
                              SaidItself said) {
  const auto unlike = [&text]<auto kMember>(const CBDdrawObj& object, const auto& value) {
    RefuseUnlike(text, kField<kMember>, object.*kMember == value, LostValue(object.*kMember));
  };
  if (shape.m_sKind != sKind)
    text.Refuse(kField<&CBDdrawObj::m_sKind>, "it is that of the class", LostValue(shape.m_sKind));
  unlike.operator()<&CBDdrawObj::m_bRefer>(shape, around.bRefer);
  unlike.operator()<&CBDdrawObj::m_sLayerName>(shape, around.layer.sName);
  unlike.operator()<&CBDdrawObj::m_sLayerType>(shape, around.layer.sType);
  unlike.operator()<&CBDdrawObj::m_nLayerNumber>(shape, around.layer.nNumber);
  unlike.operator()<&CBDdrawObj::m_sSection>(shape, around.sSection);
  if (!said.bNet && !IsInComponentRefer(around)) unlike.operator()<&CBDdrawObj::m_sNet>(shape, CString());
  if (!said.bPenShape) unlike.operator()<&CBDdrawObj::m_sPenShape>(shape, CString());
  if (!IsInComponentRefer(around)) {
    unlike.operator()<&CBDdrawObj::m_nCavityFrom>(shape, -1);
    unlike.operator()<&CBDdrawObj::m_nCavityTo>(shape, -1);
  } else if ((shape.m_nCavityFrom == -1) != (shape.m_nCavityTo == -1)) {
    text.Refuse(kField<&CBDdrawObj::m_nCavityFrom>, "the two ends of a cavity are given both or not at all",
                LostValue(shape.m_nCavityFrom));
  }
}

namespace {

// Of a shape that takes over nothing.
void RefuseAnySurroundings(FormText& text, const CBDdrawObj& shape, const CString& sKind) {
  RefuseUnlikeSurroundings(text, shape, sKind, {ShapePlace::geometry});
}

template <class T>
const CString& KindOf() {
  return Fresh<T>().m_sKind;
}

// ---- vertices ----

void PutPoint(FormText& text, const CBDvertexPt& point) {
  const Scope form(text, "pt", Lines::one);
  Plan<CBDvertexPt, 0>().PutTokens(text, point);
  if (point.m_sType != "PT")
    text.Refuse(kField<&CBDvertex::m_sType>, "it is that of the class", LostValue(point.m_sType));
  if (point.m_pFillet == nullptr) {
    text.Refuse(kField<&CBDvertexPt::m_pFillet>, "the object is missing");
  } else {
    Plan<CBDvertexPt, 1>().Put(text, point);
  }
}

void PutArc(FormText& text, const CBDvertexArc& arc) {
  const Scope form(text, "arc", Lines::one);
  Plan<CBDvertexArc, 0>().PutTokens(text, arc);
  if (arc.m_sType != "ARC") text.Refuse(kField<&CBDvertex::m_sType>, "it is that of the class", LostValue(arc.m_sType));
  if (arc.m_dWidth != 0)
    text.Refuse(kField<&CBDvertex::m_dWidth>, "an arc has its widths at its ends", LostValue(arc.m_dWidth));
  Plan<CBDvertexArc, 1>().Put(text, arc);
}

template <auto kVertices, class T>
void PutVertices(FormText& text, const T& object) {
  if (object.*kVertices != nullptr && (object.*kVertices)->IsEmpty()) return;
  const Scope form(text, "vertex");
  PutEach<kVertices>(
      text, object, [](const CBDvertex&) { return std::string_view(); }, [&text](const CBDvertex& v) { Put(text, v); });
}

// ---- shapes whose tables say all ----

template <class T>
concept HasTokens = std::is_same_v<T, CBDcircle>;

template <class T>
void PutPlain(FormText& text, std::string_view sKey, const Surroundings& around, const T& shape) {
  RefuseUnlikeSurroundings(text, shape, KindOf<T>(), around);
  const Scope form(text, sKey);
  if constexpr (HasTokens<T>) {
    Plan<T, 0>().PutTokens(text, shape);
    Plan<T, 1>().Put(text, shape);
  } else {
    Plan<T, 0>().Put(text, shape);
  }
}

// ---- the others ----

// It takes over nothing, but what stands in a component's "refer" is marked.
void PutDelete(FormText& text, std::string_view sKey, const Surroundings& around, const CBDdelete& shape) {
  Surroundings none{around.place};
  none.sSection = around.sSection;
  if (IsInComponentRefer(around)) none.bRefer = around.bRefer;
  RefuseUnlikeSurroundings(text, shape, KindOf<CBDdelete>(), none);
  const Scope form(text, sKey);
}

void PutHole(FormText& text, std::string_view sKey, const Surroundings& around, const CBDhole& hole) {
  RefuseUnlikeSurroundings(text, hole, KindOf<CBDhole>(), around);
  const Scope form(text, sKey);
  Plan<CBDhole, 0>().Put(text, hole);
  if (const auto* pCircle = dynamic_cast<const CBDcircle*>(hole.m_pShape)) {
    const Step step(text, "m_pShape");
    const Scope geometry(text, "geometry");
    PutShapeForm(text, {ShapePlace::geometry}, *pCircle);
  } else if (hole.m_pShape == nullptr || typeid(*hole.m_pShape) != typeid(CBDdrawObj)) {
    text.Refuse(kField<&CBDhole::m_pShape>, "it is a circle, or the placeholder");
  } else {
    const Step step(text, "m_pShape");
    RefuseAnySurroundings(text, *hole.m_pShape, KindOf<CBDdrawObj>());
  }
}

void PutLine(FormText& text, std::string_view sKey, const Surroundings& around, const CBDline& line) {
  RefuseUnlikeSurroundings(text, line, KindOf<CBDline>(), around, {.bNet = true, .bPenShape = true});
  const Scope form(text, sKey);
  Plan<CBDline, 0>().Put(text, line);
  PutVertices<&CBDline::m_pVertices>(text, line);
}

void PutOpenShape(FormText& text, const CBDopenShape& shape) {
  RefuseAnySurroundings(text, shape, KindOf<CBDopenShape>());
  const Scope form(text, "openShape");
  Plan<CBDopenShape, 0>().Put(text, shape);
  PutVertices<&CBDopenShape::m_pVertices>(text, shape);
}

void RefuseUnlessFlag(FormText& text, std::string_view sField, int n) {
  if (n != 0 && n != 1) text.Refuse(sField, "the form says 1 by being there", LostValue(n));
}

void PutSurface(FormText& text, std::string_view, const Surroundings& around, const CBDsurface& surface) {
  RefuseUnlikeSurroundings(text, surface, KindOf<CBDsurface>(), around, {.bNet = true});
  RefuseUnlessFlag(text, kField<&CBDsurface::m_bMesh>, surface.m_bMesh);
  RefuseUnlessFlag(text, kField<&CBDsurface::m_bSubmesh>, surface.m_bSubmesh);
  RefuseUnsaid<&CBDsurface::m_bArea>(text, surface);
  if (surface.m_bSubmesh == 0) {
    RefuseUnsaid<&CBDsurface::m_nParamFlagXCount, &CBDsurface::m_dParamPitch, &CBDsurface::m_dParamShapeDiameter,
                 &CBDsurface::m_dParamFigureAngle, &CBDsurface::m_dParamWindowClearance,
                 &CBDsurface::m_dParamFigureClearance, &CBDsurface::m_dParamAngle,
                 &CBDsurface::m_dParamOutlineClearance, &CBDsurface::m_sParamShape, &CBDsurface::m_sParamArrangeType,
                 &CBDsurface::m_ptParamBase, &CBDsurface::m_ptParamRotate, &CBDsurface::m_arrParamFlags>(
        text, surface, "it stands in the form of a sub-mesh");
  }
  if (surface.m_pProperties == nullptr || !surface.m_pProperties->IsEmpty()) {
    text.Refuse(kField<&CBDsurface::m_pProperties>, "no form holds them");
  }
  const bool bArea = surface.m_bArea != 0 || surface.m_dLowerHeight != 0 || surface.m_dUpperHeight != 0;
  const Scope form(text, surface.m_bMesh != 0 ? "meshplane" : bArea ? "area" : "surface");
  Plan<CBDsurface, 1>().Put(text, surface);
  PutVertices<&CBDsurface::m_pVertices>(text, surface);
  PutEach<&CBDsurface::m_pOpenShapes>(
      text, surface, [](const CBDopenShape&) { return std::string_view(); },
      [&text](const CBDopenShape& shape) { PutOpenShape(text, shape); });
}

void PutSymbolText(FormText& text, std::string_view sKey, const Surroundings& around, const CBDsymbolText& symbol) {
  RefuseUnlikeSurroundings(text, symbol, KindOf<CBDsymbolText>(), around);
  RefuseUnsaid<&CBDsymbolText::m_sString>(text, symbol);
  const Scope form(text, sKey);
  if (symbol.m_pText == nullptr) return text.Refuse(kField<&CBDsymbolText::m_pText>, "the object is missing");
  {
    const Step step(text, "m_pText");
    RefuseAnySurroundings(text, *symbol.m_pText, KindOf<CBDtext>());
  }
  Plan<CBDsymbolText, 0>().Put(text, symbol);
}

// The shapes of an assembly are the board's own.
void PutSubBoard(FormText& text, std::string_view sKey, const Surroundings& around, const CBDdrawSubBoard& subBoard) {
  if (subBoard.m_pShapes == nullptr || !subBoard.m_pShapes->IsEmpty()) {
    text.Refuse(kField<&CBDdrawSubBoard::m_pShapes>, "the reader gives them to the board");
  }
  PutPlain(text, sKey, around, subBoard);
}

bool IsOfLibrary(const Surroundings& around) {
  return around.place == ShapePlace::geometry || around.place == ShapePlace::footprint;
}

void PutPad(FormText& text, std::string_view sKey, const Surroundings& around, const CBDdrawPad& pad) {
  RefuseUnlikeSurroundings(text, pad, KindOf<CBDdrawPad>(), around, {.bNet = true});
  const Scope form(text, IsOfLibrary(around) ? "fPad" : sKey);
  text.Token(kField<&CBDdrawPad::m_sPadName>, pad.m_sPadName);
  Plan<CBDdrawPad, 1>().Put(text, pad);
  if (pad.m_pShapes != nullptr && pad.m_pShapes->IsEmpty()) return;
  const Scope geometry(text, "geometry");
  PutShapeForms(text, {ShapePlace::geometry, around.layer, around.bRefer}, kField<&CBDdrawPad::m_pShapes>,
                pad.m_pShapes);
}

// ---- placed padstacks ----

// An entry with the shapes that stand in it.
struct Entry {
  const CBDpadstackRefLay* p = nullptr;
  std::string_view sKey = {};
  CString sSection = {};  // of its shapes; empty while it has none
  std::vector<const CBDdrawObj*> shapes = {};
  std::vector<INT_PTR> places = {};  // of the shapes in their array
  ShapeLayer layer = {};             // that shapes in it take over
};

constexpr std::string_view kByNumber = "layerNumber";
constexpr std::string_view kByName = "layer";
constexpr std::string_view kByNothing = "entry";  // any other keyword does

// Deals the shapes of a padstack out to its entries. An entry that names its layer changes the layer that it and all
// behind it give to their shapes: by number or by name, the other one staying.
class EntryDealer {
 public:
  EntryDealer(FormText& text, const CBDdrawPadstack& padstack, const ShapeLayer& layer)
      : m_text(text), m_shapes(*padstack.m_pShapes), m_layer(layer) {}

  void Add(const CBDpadstackRefLay& layer) {
    Entry& entry = m_entries.emplace_back();
    entry.p = &layer;
    entry.sKey = KeyOf(layer);
    m_layer = LayerBehind(entry.sKey, layer);
    entry.layer = m_layer;
    for (; m_nNext < m_shapes.GetSize(); ++m_nNext) {
      const CBDdrawObj* pShape = m_shapes.GetAt(m_nNext);
      if (pShape == nullptr) {
        m_text.Refuse(kField<&CBDdrawPadstack::m_pShapes>, "a slot of the array is empty", std::to_string(m_nNext));
        continue;
      }
      if (!Fits(*pShape, m_layer) || (!entry.shapes.empty() && pShape->m_sSection != entry.sSection)) break;
      entry.sSection = pShape->m_sSection;
      entry.shapes.push_back(pShape);
      entry.places.push_back(m_nNext);
    }
    if (!entry.shapes.empty()) return;
    entry.sSection = CString(entry.sKey == kByName ? kNonConductive : kConductive);
  }

  const std::vector<Entry>& Finish() {
    if (m_nNext < m_shapes.GetSize()) {
      m_text.Refuse(kField<&CBDdrawPadstack::m_pShapes>, "each stands in the entry of its layer, in their order",
                    std::to_string(m_nNext));
    }
    return m_entries;
  }

 private:
  static bool Fits(const CBDdrawObj& shape, const ShapeLayer& layer) {
    if (typeid(shape) == typeid(CBDdelete)) return true;
    return shape.m_nLayerNumber == layer.nNumber && shape.m_sLayerName == layer.sName;
  }

  ShapeLayer LayerBehind(std::string_view sKey, const CBDpadstackRefLay& entry) const {
    ShapeLayer layer = m_layer;
    if (sKey == kByNumber) layer.nNumber = entry.m_nLayerNumber;
    if (sKey == kByName) layer.sName = entry.m_sLayerName;
    return layer;
  }

  std::string_view KeyOf(const CBDpadstackRefLay& entry) const {
    if (entry.m_nLayerNumber != 0) return kByNumber;
    if (!entry.m_sLayerName.IsEmpty() || entry.m_bVisible != 1) return kByName;
    // It says neither: the way that gives the next shape its layer, or that comes nearest to it.
    const CBDdrawObj* pNext = m_shapes.GetAt(m_nNext);
    if (pNext == nullptr) return kByNumber;
    for (const std::string_view sKey : {kByNumber, kByName, kByNothing}) {
      if (Fits(*pNext, LayerBehind(sKey, entry))) return sKey;
    }
    if (m_layer.nNumber != 0 && pNext->m_nLayerNumber == 0) return kByNumber;
    if (!m_layer.sName.IsEmpty() && pNext->m_sLayerName.IsEmpty()) return kByName;
    return kByNothing;
  }

  FormText& m_text;
  const CBDdrawObjArray& m_shapes;
  ShapeLayer m_layer;
  INT_PTR m_nNext = 0;
  std::vector<Entry> m_entries;
};

void PutEntry(FormText& text, const Surroundings& around, const Entry& entry) {
  const CBDpadstackRefLay& layer = *entry.p;
  const Scope form(text, entry.sKey, entry.shapes.empty() ? Lines::one : Lines::forms);
  if (entry.sKey == kByNumber) {
    text.Token(layer.m_nLayerNumber);
    RefuseUnsaid<&CBDpadstackRefLay::m_sLayerName, &CBDpadstackRefLay::m_bVisible>(
        text, layer, "an entry that names its layer by number has neither name nor visibility");
  } else if (entry.sKey == kByName) {
    text.Token(kField<&CBDpadstackRefLay::m_sLayerName>, layer.m_sLayerName);
    RefuseUnlessFlag(text, kField<&CBDpadstackRefLay::m_bVisible>, layer.m_bVisible);
    if (layer.m_bVisible == 0) {
      const Scope visible(text, "visible");
      text.Word("NO");
    }
  }
  Plan<CBDpadstackRefLay, 2>().Put(text, layer);
  if (entry.shapes.empty()) return;
  const Scope geometry(text, "geometry");
  for (std::size_t i = 0; i < entry.shapes.size(); ++i) {
    const Step step(text, "m_pShapes", {}, entry.places[i]);
    PutShapeForm(text, {ShapePlace::geometry, entry.layer, around.bRefer, entry.sSection}, *entry.shapes[i]);
  }
}

void PutEntries(FormText& text, const Surroundings& around, const CBDdrawPadstack& padstack) {
  if (padstack.m_pShapes == nullptr) {
    return text.Refuse(kField<&CBDdrawPadstack::m_pShapes>, "the array is missing");
  }
  EntryDealer dealer(text, padstack, around.layer);
  PutEach<&CBDdrawPadstack::m_pRefLays>(
      text, padstack, [](const CBDpadstackRefLay&) { return std::string_view(); },
      [&dealer](const CBDpadstackRefLay& layer) { dealer.Add(layer); });
  const std::vector<Entry>& entries = dealer.Finish();
  for (auto it = entries.begin(); it != entries.end();) {
    const CString& sSection = it->sSection;
    if (sSection != kConductive && sSection != kNonConductive) {
      text.Refuse(kField<&CBDdrawObj::m_sSection>, "it is that of one of the two sections", LostValue(sSection));
    }
    const Scope section(text, sSection == kNonConductive ? kNonConductive : kConductive);
    for (; it != entries.end() && it->sSection == sSection; ++it) {
      const Step step(text, "m_pRefLays", {}, it - entries.begin());
      PutEntry(text, around, *it);
    }
  }
}

void PutPadstack(FormText& text, std::string_view sKey, const Surroundings& around, const CBDdrawPadstack& padstack) {
  RefuseUnlikeSurroundings(text, padstack, KindOf<CBDdrawPadstack>(), around, {.bNet = true});
  const bool bOfLibrary = IsOfLibrary(around);
  const Scope form(text, bOfLibrary ? "fpadstack" : sKey);
  if (!bOfLibrary) text.Token(kField<&CBDdrawPadstack::m_sPadstackName>, padstack.m_sPadstackName);
  static const auto* const pPlan =
      new RowPlan<CBDdrawPadstack>(RowsOf<CBDdrawPadstack, 1>(), {"padstackGroup"});  // never destroyed
  pPlan->Put(text, padstack);
  if (padstack.m_nFrom != 0 || padstack.m_nTo != 0) {
    const Scope fromTo(text, "fromTo");
    if (padstack.m_nFrom != 0) text.Token(padstack.m_nFrom);
    text.Token(padstack.m_nTo);
  }
  if (bOfLibrary && !padstack.m_sPadstackName.IsEmpty()) {
    const Scope group(text, "padstackGroup", Lines::one);
    text.Word("default");
    const Scope name(text, "padstack");
    text.Token(kField<&CBDdrawPadstack::m_sPadstackName>, padstack.m_sPadstackName);
  }
  if (padstack.m_pHole == nullptr || typeid(*padstack.m_pHole) != typeid(CBDdrawObj)) {
    text.Refuse(kField<&CBDdrawPadstack::m_pHole>, "it is the placeholder");
  } else {
    const Step step(text, "m_pHole");
    RefuseAnySurroundings(text, *padstack.m_pHole, KindOf<CBDdrawObj>());
  }
  PutEntries(text, around, padstack);
}

// ---- which class writes how ----

template <class T>
std::string_view ClassName() {
  std::string_view s = __PRETTY_FUNCTION__;
  s = s.substr(s.find("T = ") + 4);
  return s.substr(0, s.find_first_of(";]"));
}

struct ShapeWriter {
  std::string_view sKey;
  void (*put)(FormText&, std::string_view, const Surroundings&, const CBDdrawObj&);
};

template <class T>
using PutFunction = void(FormText&, std::string_view, const Surroundings&, const T&);

using ShapeWriters = std::unordered_map<std::type_index, ShapeWriter>;

// With the first keyword that leads to the class.
template <class T, PutFunction<T>* kPut>
void AddWriter(ShapeWriters& writers) {
  const auto rows = Grammar<MadeShape>()[0].rows;
  const auto row = std::find_if(rows.begin(), rows.end(), [](const auto& r) { return r.field == ClassName<T>(); });
  writers.emplace(typeid(T), ShapeWriter{row->key, [](FormText& text, std::string_view sKey, const Surroundings& around,
                                                      const CBDdrawObj& shape) {
                                           kPut(text, sKey, around, static_cast<const T&>(shape));
                                         }});
}

ShapeWriters MakeWriters() {
  ShapeWriters writers;
  const auto addPlain = [&writers]<class... T>() { (AddWriter<T, PutPlain<T>>(writers), ...); };
  addPlain.operator()<CBDcircle, CBDdonut, CBDoblong, CBDoval, CBDovalHole, CBDrectangle, CBDroundThermal,
                      CBDsquareHole, CBDsquareThermal, CBDtext>();
  AddWriter<CBDdelete, PutDelete>(writers);
  AddWriter<CBDdrawPad, PutPad>(writers);
  AddWriter<CBDdrawPadstack, PutPadstack>(writers);
  AddWriter<CBDdrawSubBoard, PutSubBoard>(writers);
  AddWriter<CBDhole, PutHole>(writers);
  AddWriter<CBDline, PutLine>(writers);
  AddWriter<CBDsurface, PutSurface>(writers);
  AddWriter<CBDsymbolText, PutSymbolText>(writers);
  return writers;
}

// ---- layers ----

bool BearsLayer(const CBDdrawObj& shape) { return typeid(shape) != typeid(CBDdelete); }

// The name of a layer stands behind its keyword, unless it needs a line of its own: the splitter sees the form only if
// its first line leaves no other one open.
void StayIfFits(FormText& text, const CString& sName) {
  if (FitsAnywhere(sName.View())) text.StayOnLine();
}

// The form that names the layer of a board. Gives the layer as the reader takes it from there.
ShapeLayer PutLayerName(FormText& text, const ShapeLayer& layer) {
  ShapeLayer said{layer.sType, layer.sName, 0};
  if (layer.sType == kSystemLayer) {
    StayIfFits(text, layer.sName);
    const Scope form(text, kSystemLayer, Lines::one);
    if (layer.sName.IsEmpty()) return said;
    const Scope type(text, "type");
    text.Token(kField<&CBDdrawObj::m_sLayerName>, layer.sName);
  } else if (layer.sType == kConductive || layer.sType == kNonConductive) {
    StayIfFits(text, layer.sName);
    const Scope form(text, layer.sType.View());
    text.Token(kField<&CBDdrawObj::m_sLayerName>, layer.sName);
    if (layer.sType == kConductive) said.nNumber = Atoi(layer.sName.View());
  } else {
    return {};
  }
  return said;
}

ShapeLayer PutFootprintLayerName(FormText& text, const ShapeLayer& layer) {
  if (layer.sName == kPadstackLayer) {
    text.StayOnLine();
    const Scope form(text, kPadstackLayer);
  } else if (!layer.sName.IsEmpty()) {
    StayIfFits(text, layer.sName);
    const Scope form(text, "footLayer");
    text.Token(kField<&CBDdrawObj::m_sLayerName>, layer.sName);
  }
  return {{}, layer.sName, 0};
}

}  // namespace

void Put(FormText& text, const CBDvertex& vertex) {
  if (const auto* pPoint = dynamic_cast<const CBDvertexPt*>(&vertex)) {
    PutPoint(text, *pPoint);
  } else if (const auto* pArc = dynamic_cast<const CBDvertexArc*>(&vertex)) {
    PutArc(text, *pArc);
  } else {
    text.Refuse(kField<&CBDvertex::m_sType>, "it is a point or an arc", LostValue(vertex.m_sType));
  }
}

void PutShapeForm(FormText& text, const Surroundings& around, const CBDdrawObj& shape) {
  static const auto* const pWriters = new ShapeWriters(MakeWriters());  // never destroyed
  const auto it = pWriters->find(typeid(shape));
  if (it == pWriters->end()) {
    return text.Refuse(kField<&CBDdrawObj::m_sKind>, "no form makes a shape of this class", LostValue(shape.m_sKind));
  }
  it->second.put(text, it->second.sKey, around, shape);
}

void PutShapeForms(FormText& text, const Surroundings& around, std::string_view sField,
                   const CBDdrawObjArray* pShapes) {
  if (pShapes == nullptr) return text.Refuse(sField, "the array is missing");
  for (INT_PTR i = 0; i < pShapes->GetSize(); ++i) {
    const CBDdrawObj* p = pShapes->GetAt(i);
    if (p == nullptr) {
      text.Refuse(sField, "a slot of the array is empty", std::to_string(i));
      continue;
    }
    const Step step(text, sField.substr(sField.rfind(':') + 1), {}, i);
    PutShapeForm(text, around, *p);
  }
}

void PutShape(FormText& text, ShapePlace place, const ShapeLayer& layer, const CBDdrawObj& shape) {
  Surroundings around{place, layer};
  if (shape.m_bRefer == 0 || IsOfLibrary(around)) return PutShapeForm(text, around, shape);
  around.bRefer = 1;
  const Scope refer(text, "refer");
  if (place == ShapePlace::component) {
    const bool bSaysNet = !shape.m_sNet.IsEmpty();
    if (bSaysNet) {
      const Scope net(text, "net");
      text.Token(kField<&CBDdrawObj::m_sNet>, shape.m_sNet);
    }
    if (shape.m_nCavityFrom != -1 && shape.m_nCavityTo != -1) {
      {
        const Scope from(text, "cavityFrom");
        text.Token(shape.m_nCavityFrom);
      }
      const Scope to(text, "cavityTo");
      text.Token(shape.m_nCavityTo);
    }
  }
  PutShapeForm(text, around, shape);
}

bool SameLayer(const CBDdrawObj& a, const CBDdrawObj& b) {
  if (!BearsLayer(a) || !BearsLayer(b)) return true;
  return a.m_nLayerNumber == b.m_nLayerNumber && a.m_sLayerName == b.m_sLayerName && a.m_sLayerType == b.m_sLayerType;
}

std::size_t RunOfLayer(std::span<CBDdrawObj* const> shapes) {
  const CBDdrawObj* pFirst = nullptr;
  for (std::size_t i = 0; i < shapes.size(); ++i) {
    const CBDdrawObj* p = shapes[i];
    if (p == nullptr || !BearsLayer(*p)) continue;
    if (pFirst == nullptr) {
      pFirst = p;
    } else if (!SameLayer(*pFirst, *p)) {
      return i;
    }
  }
  return shapes.size();
}

void PutLayer(FormText& text, ShapePlace place, std::span<CBDdrawObj* const> shapes, std::size_t nFirst) {
  const auto first =
      std::find_if(shapes.begin(), shapes.end(), [](const CBDdrawObj* p) { return p != nullptr && BearsLayer(*p); });
  ShapeLayer layer;
  if (first != shapes.end()) layer = {(*first)->m_sLayerType, (*first)->m_sLayerName, (*first)->m_nLayerNumber};
  const Scope form(text, "layer");
  layer = place == ShapePlace::footprint ? PutFootprintLayerName(text, layer) : PutLayerName(text, layer);
  for (std::size_t i = 0; i < shapes.size(); ++i) {
    const Step step(text, "m_pDrawObjArray", {}, static_cast<INT_PTR>(nFirst + i));
    if (shapes[i] != nullptr) {
      PutShape(text, place, layer, *shapes[i]);
    } else {
      text.Refuse("CBDdrawObjArray.slots", "a slot of the array is empty");
    }
  }
}

int PutLayers(FormText& text, ShapePlace place, std::string_view sField, const CBDdrawObjArray* pShapes) {
  if (pShapes == nullptr) {
    text.Refuse(sField, "the array is missing");
    return 0;
  }
  int nLayers = 0;
  std::span<CBDdrawObj* const> shapes(pShapes->GetData(), static_cast<std::size_t>(pShapes->GetSize()));
  for (std::size_t nAt = 0; nAt < shapes.size();) {
    const std::size_t nRun = RunOfLayer(shapes.subspan(nAt));
    PutLayer(text, place, shapes.subspan(nAt, nRun), nAt);
    nAt += nRun;
    ++nLayers;
  }
  return nLayers;
}

}  // namespace laminate
