#include "designdata/RuleFile.h"

#include <memory>
#include <string>
#include <utility>

#include "designdata/CPC_BD_OutClsGet.h"
#include "designdata/FileRemarks.h"
#include "designdata/RecordLookup.h"
#include "reader/CECadCls.h"
#include "reader/Grammar.h"
#include "reader/ObjectRow.h"

// A rule file:
//
//   (design NAME
//     (boardSpec
//       (bareBoard
//         (physical ABOVE MEASURE... (material M))             MEASURE: (thickness d) (resistivity d)
//         (conductor 1 MEASURE... (material M...) (place P) (propertyS usage "WIRE"))   (lossTangent d)
//         (dielectric 1 MEASURE... (material M...) (place P))                           (dielectricConstant d)
//         (baseMaterial M))
//       (defaultGrid (KEY GRID)...)
//       (drillingRule (NAME n n)...)
//       (patternWidth (KEY d (KEY NAME))...)
//       (gridDef NAME (pitch x y) (pt x y)))
//     (rule
//       (placementRule (clearance d (element A B))...)         also testRule, buildupViaRule
//       (holeRule (clearance d (KEY A B))...)                  also markingRule
//       (designRuleUnit NAME (clearance d (element A B))... (sameNetClearance d (element A B))...)
//       (solderResistRule (flow (clearance d (KEY A B))...) (reflow ...))
//       (qualifiedPadstack NAME (from L) (to L)) (padstack NAME) (defaultPadstack NAME)
//       (layer L (direction D))
//       (net NAME (propertyS KEY VALUE)... (pinList (funcTerm COMP PIN)...))
//       (electricalNet NAME (KEY NET...)...) (enetPair NAME (electricalNetList (KEY NET...)...))
//       (board (KEY VALUE)...)
//       (designRuleStack NAME (KEY L (KEY RULE))...)
//       (traceRuleStack NAME (KEY L (width d) (minWidth d) (minLandOverlap d) (maxWireWidth d) (minWireWidth d))...))
//     (assign
//       (comp NAME (propertyS KEY VALUE)... (assign (KEY VALUE)...))...))
//
// Children are taken in file order, so a repeat overwrites; unknown ones are skipped. Values are read in the order in
// which the rows name them, and the first that is missing ends the walk.

namespace laminate {
namespace {

/// What a walk has around it.
struct Rules {
  CPC_BD_OutClsGet& data;
  FileRemarks remarks;
};
using RuleWalk = Walk<Rules>;

void Note(Rules& rules, const CECadClsLvl& node, std::string_view s) {
  rules.remarks.Add(Diagnostic::Severity::note, node.m_nLine, 0, s);
}
std::string Quoted(const CECadClsLvl& node) { return '"' + std::string(node.m_sName.View()) + '"'; }

void SkipChild(Rules& rules, const CECadClsLvl& node, const CECadClsLvl& child) {
  if (!rules.remarks.IsWanted()) return;
  Note(rules, child, Quoted(child) + " means nothing inside " + Quoted(node) + ": it is skipped");
}
// All children but those, which may be null.
void SkipOthers(Rules& rules, const CECadClsLvl& node, const CECadClsLvl* pFirst, const CECadClsLvl* pSecond) {
  if (!rules.remarks.IsWanted()) return;
  ForEachChild(node, [&](const CECadClsLvl& child) {
    if (&child != pFirst && &child != pSecond) SkipChild(rules, node, child);
  });
}
void SkipAll(Rules& rules, const CECadClsLvl& node) { SkipOthers(rules, node, nullptr, nullptr); }
// A form whose value the next one overwrites.
void SkipRepeated(Rules& rules, const CECadClsLvl& node, const CECadClsLvl& child) {
  if (!rules.remarks.IsWanted()) return;
  Note(rules, child, "only the last form inside " + Quoted(node) + " counts: " + Quoted(child) + " is skipped");
}
// The values of a form of which only the first ones are read.
void SkipValues(Rules& rules, const CECadClsLvl& node, int nRead) {
  if (!rules.remarks.IsWanted() || node.m_arrValues.GetSize() <= nRead) return;
  Note(rules, node,
       '"' + std::string(Token(node, nRead + 1).View()) + "\" means nothing as a value of " + Quoted(node) +
           ": it is skipped");
}
// What stands beside the first "design" is lost.
void SkipOtherRoots(Rules& rules, const CECadCls& reader, const CECadClsLvl* pDesign) {
  if (!rules.remarks.IsWanted()) return;
  if (pDesign == nullptr && reader.m_status.IsOk()) {
    rules.remarks.Add(Diagnostic::Severity::warning, 0, 0, "there is no \"design\" in the file: nothing is read of it");
  }
  for (const CECadClsLvl* p : *reader.m_pRootArray) {
    if (p == pDesign) continue;
    Note(rules, *p,
         p->m_sName == "design" ? "only the first \"design\" counts: this one is skipped"
                                : Quoted(*p) + " means nothing outside \"design\": it is skipped");
  }
}

template <class Form, class T>
void Take(const Form& form, RuleWalk& walk, const CECadClsLvl& node, T& object) {
  WalkChildren(form, node, object, walk.context,
               [&](const CECadClsLvl& child) { SkipChild(walk.context, node, child); });
}

// ---- records of a fixed make: each field comes from the keyword or from a value of the form itself ----

/// The form's keyword.
template <auto kMember>
struct Keyword {
  static void Read(const CECadClsLvl& node, auto& record) { record.*kMember = node.m_sName; }
};
/// The form's n-th value, as the field's type wants it.
template <int n, auto kMember>
struct Value {
  static void Read(const CECadClsLvl& node, auto& record) {
    auto& field = record.*kMember;
    if constexpr (std::is_same_v<std::remove_reference_t<decltype(field)>, CString>) {
      field = Token(node, n);
    } else if constexpr (std::is_same_v<std::remove_reference_t<decltype(field)>, int>) {
      field = Atoi(Token(node, n).View());
    } else {
      field = Atof(Token(node, n).View());
    }
  }
};
/// The n-th value of the form's first child, whatever its keyword. A form without a child raises.
template <int n, auto kMember>
struct FirstChildValue {
  static void Read(const CECadClsLvl& node, auto& record) { Value<n, kMember>::Read(RequireFirstChild(node), record); }
};

template <class T, class... Sources>
struct RecordForm {
  static std::unique_ptr<T> Make(const CECadClsLvl& node) {
    auto p = std::make_unique<T>();
    (Sources::Read(node, *p), ...);
    return p;
  }
};
template <class Form, class Array>
void AddEachChild(Rules& rules, const CECadClsLvl& node, Array& arr) {
  ForEachChild(node, [&](const CECadClsLvl& child) {
    AppendOwned(arr, Form::Make(child));
    SkipAll(rules, child);
  });
}

// ---- properties: the key is the item, the value the comment ----
void AddProperty(CLPropertyArray* pArray, const CString& sKey, const CString& sValue) {
  AppendOwned(Required(pArray), std::make_unique<CLProperty>(sKey, sValue));
}
/// The form's first two values are the key and the value.
void AddProperty(CLPropertyArray* pArray, const CECadClsLvl& node) {
  const CString& sKey = Token(node, 1);
  AddProperty(pArray, sKey, Token(node, 2));
}
bool NameContains(const CECadClsLvl& node, std::string_view s) {
  return node.m_sName.View().find(s) != std::string_view::npos;
}

// ---- boardSpec ----
using DefaultGridForm = RecordForm<CVRXoutRufBoardSpecDefaultGrid, Keyword<&CVRXoutRufBoardSpecDefaultGrid::m_sName>,
                                   Value<1, &CVRXoutRufBoardSpecDefaultGrid::m_sValue>>;
using DrillingRuleForm = RecordForm<CVRXoutRufBoardSpecDrillingRule, Keyword<&CVRXoutRufBoardSpecDrillingRule::m_sName>,
                                    Value<1, &CVRXoutRufBoardSpecDrillingRule::m_nValue1>,
                                    Value<2, &CVRXoutRufBoardSpecDrillingRule::m_nValue2>>;
using PatternWidthForm =
    RecordForm<CVRXoutRufBoardSpecpatternWidth, Value<1, &CVRXoutRufBoardSpecpatternWidth::m_dWidth>,
               FirstChildValue<1, &CVRXoutRufBoardSpecpatternWidth::m_sName>>;
using GridDefForm = RecordForm<CVRXoutRufBoardSpecGridDef, Value<1, &CVRXoutRufBoardSpecGridDef::m_sName>>;

void ReadPitch(RuleWalk&, const CECadClsLvl& node, CVRXoutRufBoardSpecGridDef& grid) {
  Value<1, &CVRXoutRufBoardSpecGridDef::m_dPitchX>::Read(node, grid);
  Value<2, &CVRXoutRufBoardSpecGridDef::m_dPitchY>::Read(node, grid);
}
void ReadOrigin(RuleWalk&, const CECadClsLvl& node, CVRXoutRufBoardSpecGridDef& grid) {
  Value<1, &CVRXoutRufBoardSpecGridDef::m_dPtX>::Read(node, grid);
  Value<2, &CVRXoutRufBoardSpecGridDef::m_dPtY>::Read(node, grid);
}
constexpr auto kGridDef = MakeForm<CVRXoutRufBoardSpecGridDef, Rules>(  //
    Custom<&ReadPitch>("pitch", "m_dPitchX, m_dPitchY"),                //
    Custom<&ReadOrigin>("pt", "m_dPtX, m_dPtY"));

// One value gives the material without blanks, and replaces what is there. Several are joined to it.
void ReadMaterial(RuleWalk&, const CECadClsLvl& node, CVRXoutRufStackupLayer& layer) {
  if (node.m_arrValues.GetSize() == 1) {
    layer.m_sMaterial = Token(node, 1);
    layer.m_sMaterial.Replace(' ', '_');
    return;
  }
  bool bFirst = true;
  for (const CString& s : node.m_arrValues) {
    if (!std::exchange(bFirst, false)) layer.m_sMaterial += '_';
    layer.m_sMaterial += s;
  }
}

/// What the usage of a layer makes of it.
struct LayerRole {
  std::string_view usage;
  std::string_view role;
};
constexpr LayerRole kLayerRoles[] = {{"WIRE", "SIGNAL"}, {"GROUND", "GROUND"}, {"POWER", "POWER"}};

void ReadRole(RuleWalk&, const CECadClsLvl& node, CVRXoutRufStackupLayer& layer) {
  const CString& sUsage = Token(node, 2);
  for (const LayerRole& r : kLayerRoles) {
    if (sUsage == r.usage) layer.m_sLayerRole = r.role;
  }
}

using Layer = CVRXoutRufStackupLayer;
template <class... Specs>
consteval auto MakeLayerForm(const Specs&... more) {
  return MakeForm<Layer, Rules>(                                  //
      Real<&Layer::m_dThickness>("thickness"),                    //
      Real<&Layer::m_dResistivity>("resistivity"),                //
      Real<&Layer::m_dLossTangent>("lossTangent"),                //
      Real<&Layer::m_dDielectricConstant>("dielectricConstant"),  //
      Custom<&ReadMaterial>("material", "m_sMaterial"), more...);
}
constexpr auto kPhysicalLayer = MakeLayerForm();
constexpr auto kPlainLayer =
    MakeLayerForm(Text<&Layer::m_sPlace>("place"), Custom<&ReadRole>("propertyS", "m_sLayerRole"));

using PlainLayerForm = RecordForm<Layer, Keyword<&Layer::m_sLayerKind>, Value<1, &Layer::m_nLayerNo>>;
using PhysicalLayerForm = RecordForm<Layer, Value<1, &Layer::m_sPlace>>;

void ReadPlainLayer(RuleWalk& walk, const CECadClsLvl& node, CVRXoutRufStackup& stackup) {
  auto p = PlainLayerForm::Make(node);
  Take(kPlainLayer, walk, node, *p);
  AppendOwned(Required(stackup.m_pLayerArray), std::move(p));
}

// A coating without a material is named after its electrical constants.
CString SolderResistName(const Layer& layer) {
  CString s;
  s.Format("Solder_Resist_%g_%g", layer.m_dDielectricConstant, layer.m_dLossTangent);
  return s;
}

void ReadPhysicalLayer(RuleWalk& walk, const CECadClsLvl& node, CVRXoutRufStackup& stackup) {
  auto p = PhysicalLayerForm::Make(node);
  p->m_bPhysical = 1;
  if (p->m_sPlace == "ABOVE") p->m_sLayerKind = "Solder_Resist_Top";
  if (p->m_sPlace == "BELOW") p->m_sLayerKind = "Solder_Resist_Bottom";
  Take(kPhysicalLayer, walk, node, *p);
  if (p->m_sMaterial.IsEmpty()) p->m_sMaterial = SolderResistName(*p);
  AppendOwned(Required(stackup.m_pLayerArray), std::move(p));
}

constexpr auto kBareBoard = MakeForm<CVRXoutRufStackup, Rules>(  //
    Custom<&ReadPlainLayer>("conductor", "m_pLayerArray"),       //
    Custom<&ReadPlainLayer>("dielectric", "m_pLayerArray"),      //
    Custom<&ReadPhysicalLayer>("physical", "m_pLayerArray"),     //
    Text<&CVRXoutRufStackup::m_sBaseMaterial>("baseMaterial"));

void ReadBareBoard(RuleWalk& walk, const CECadClsLvl& node, CVRXoutRufBoardSpec&) {
  Take(kBareBoard, walk, node, Required(walk.context.data.m_pStackup));
}
void ReadDefaultGrid(RuleWalk& walk, const CECadClsLvl& node, CVRXoutRufBoardSpec& spec) {
  AddEachChild<DefaultGridForm>(walk.context, node, spec.m_aDefaultGrid);
}
void ReadDrillingRule(RuleWalk& walk, const CECadClsLvl& node, CVRXoutRufBoardSpec& spec) {
  AddEachChild<DrillingRuleForm>(walk.context, node, spec.m_aDrillingRule);
}
void ReadPatternWidth(RuleWalk& walk, const CECadClsLvl& node, CVRXoutRufBoardSpec& spec) {
  ForEachChild(node, [&](const CECadClsLvl& child) {
    AppendOwned(spec.m_aPatternWidth, PatternWidthForm::Make(child));
    SkipOthers(walk.context, child, &RequireFirstChild(child), nullptr);
  });
}
void ReadGridDef(RuleWalk& walk, const CECadClsLvl& node, CVRXoutRufBoardSpec& spec) {
  auto p = GridDefForm::Make(node);
  Take(kGridDef, walk, node, *p);
  AppendOwned(spec.m_aGridDef, std::move(p));
}

constexpr auto kBoardSpec = MakeForm<CVRXoutRufBoardSpec, Rules>(  //
    Custom<&ReadBareBoard>("bareBoard", "the stack-up"),           //
    Custom<&ReadDefaultGrid>("defaultGrid", "m_aDefaultGrid"),     //
    Custom<&ReadDrillingRule>("drillingRule", "m_aDrillingRule"),  //
    Custom<&ReadPatternWidth>("patternWidth", "m_aPatternWidth"),  //
    Custom<&ReadGridDef>("gridDef", "m_aGridDef"));

// ---- rule: sections of clearances ----
using Rule = CVRXoutRufRule;

std::unique_ptr<Rule> MakeRule(const CECadClsLvl& section) {
  auto p = std::make_unique<Rule>();
  p->m_sRuleKind = section.m_sName;
  return p;
}

/// What a section makes rules of. A pair is the first child of a clearance.
struct Clearances {
  bool sameNet = false;        ///< takes "sameNetClearance" beside "clearance"
  bool onlyElement = false;    ///< a pair must have the keyword "element"
  bool named = false;          ///< the section's value is the name of its rules
  std::string_view item = {};  ///< the item of its rules, if not the keyword
};
constexpr Clearances kPlacementRule{.onlyElement = true};
constexpr Clearances kHoleRule{};
constexpr Clearances kMarkingRule{};
constexpr Clearances kDesignRuleUnit{.sameNet = true, .onlyElement = true, .named = true};
constexpr Clearances kTestRule{.sameNet = true, .onlyElement = true};
constexpr Clearances kBuildupViaRule{.sameNet = true, .onlyElement = true};
constexpr Clearances kFlow{.item = "clearanceFlow"};
constexpr Clearances kReflow{.item = "clearanceReflow"};

void AddClearances(Rules& rules, const Clearances& how, const CECadClsLvl& section, const CECadClsLvl& parent) {
  ForEachChild(parent, [&](const CECadClsLvl& child) {
    if (child.m_sName != "clearance" && !(how.sameNet && child.m_sName == "sameNetClearance")) {
      SkipChild(rules, parent, child);
      return;
    }
    const CECadClsLvl& pair = RequireFirstChild(child);
    SkipOthers(rules, child, &pair, nullptr);
    if (how.onlyElement && pair.m_sName != "element") {
      SkipChild(rules, child, pair);
      return;
    }
    auto p = MakeRule(section);
    if (how.named) Value<1, &Rule::m_sRuleName>::Read(section, *p);
    p->m_sRuleItem = how.item.empty() ? child.m_sName : CString(how.item);
    Value<1, &Rule::m_sFirst>::Read(pair, *p);
    Value<2, &Rule::m_sSecond>::Read(pair, *p);
    Value<1, &Rule::m_dValue>::Read(child, *p);
    AppendOwned(Required(rules.data.m_pRufRuleArray), std::move(p));
  });
}

template <const Clearances& kHow>
void ReadClearances(RuleWalk& walk, const CECadClsLvl& section, CPC_BD_OutClsGet&) {
  AddClearances(walk.context, kHow, section, section);
}
// Only the first "flow" and the first "reflow" count; either may be missing.
void ReadSolderResistRule(RuleWalk& walk, const CECadClsLvl& section, CPC_BD_OutClsGet&) {
  const CECadClsLvl* pFlow = FindChild(section, "flow");
  const CECadClsLvl* pReflow = FindChild(section, "reflow");
  SkipOthers(walk.context, section, pFlow, pReflow);
  if (pFlow != nullptr) AddClearances(walk.context, kFlow, section, *pFlow);
  if (pReflow != nullptr) AddClearances(walk.context, kReflow, section, *pReflow);
}

// ---- rule: sections of one rule ----
constexpr auto kQualifiedPadstack = MakeForm<Rule, Rules>(  //
    Text<&Rule::m_sFirst>("from"),                          //
    Text<&Rule::m_sSecond>("to"));
constexpr auto kLayer = MakeForm<Rule, Rules>(Text<&Rule::m_sFirst>("direction"));

void ReadPadstack(RuleWalk& walk, const CECadClsLvl& section, CPC_BD_OutClsGet& data) {
  SkipAll(walk.context, section);
  auto p = MakeRule(section);
  Value<1, &Rule::m_sRuleName>::Read(section, *p);
  AppendOwned(Required(data.m_pRufRuleArray), std::move(p));
}
template <auto kMember, const auto& kForm>
void ReadRule(RuleWalk& walk, const CECadClsLvl& section, CPC_BD_OutClsGet& data) {
  auto p = MakeRule(section);
  Value<1, kMember>::Read(section, *p);
  Take(kForm, walk, section, *p);
  AppendOwned(Required(data.m_pRufRuleArray), std::move(p));
}

// ---- rule: sections with records of their own ----
using FuncTermForm = RecordForm<CVRXoutRufNetFuncTerm, Value<1, &CVRXoutRufNetFuncTerm::m_sValue1>,
                                Value<2, &CVRXoutRufNetFuncTerm::m_sValue2>>;
using NetForm = RecordForm<CVRXoutRufNet, Value<1, &CVRXoutRufNet::m_sName>>;

void ReadNetProperty(Rules&, const CECadClsLvl& node, CVRXoutRufNet& net) {
  if (Token(node, 1) == "colorId") {
    net.m_sColorId = Token(node, 2);
  } else {
    AddProperty(net.m_pPropertyArray, node);
  }
}
void ReadPinList(Rules& rules, const CECadClsLvl& node, CVRXoutRufNet& net) {
  ForEachChild(node, [&](const CECadClsLvl& child) {
    if (child.m_sName == "funcTerm") {
      AppendOwned(Required(net.m_pFuncTermArray), FuncTermForm::Make(child));
    } else {
      SkipChild(rules, node, child);
    }
  });
}
void ReadCompProperty(Rules&, const CECadClsLvl& node, CVRXoutRufComp& comp) {
  AddProperty(comp.m_pPropertyArray, node);
}
void ReadCompAssign(Rules&, const CECadClsLvl& node, CVRXoutRufComp& comp) {
  ForEachChild(node,
               [&](const CECadClsLvl& child) { AddProperty(comp.m_pAssignArray, child.m_sName, Token(child, 1)); });
}

/// Children that are known by a text somewhere in their keyword ("propertyS", "propertyI"), or by all of it. The first
/// row that fits takes a child.
template <class T>
struct LooseRow {
  enum Match { contains, whole } match;
  std::string_view text;
  void (*read)(Rules&, const CECadClsLvl&, T&);
};
constexpr LooseRow<CVRXoutRufNet> kNet[] = {
    {LooseRow<CVRXoutRufNet>::contains, "property", &ReadNetProperty},
    {LooseRow<CVRXoutRufNet>::contains, "pinList", &ReadPinList},
};
constexpr LooseRow<CVRXoutRufComp> kComp[] = {
    {LooseRow<CVRXoutRufComp>::contains, "property", &ReadCompProperty},
    {LooseRow<CVRXoutRufComp>::whole, "assign", &ReadCompAssign},
};
template <class T, std::size_t N>
void TakeLoosely(const LooseRow<T> (&rows)[N], Rules& rules, const CECadClsLvl& node, T& object) {
  ForEachChild(node, [&](const CECadClsLvl& child) {
    for (const LooseRow<T>& row : rows) {
      if (row.match == LooseRow<T>::whole ? child.m_sName == row.text : NameContains(child, row.text)) {
        row.read(rules, child, object);
        return;
      }
    }
    SkipChild(rules, node, child);
  });
}

void ReadNet(RuleWalk& walk, const CECadClsLvl& node, CPC_BD_OutClsGet& data) {
  auto p = NetForm::Make(node);
  TakeLoosely(kNet, walk.context, node, *p);
  AppendOwned(Required(data.m_pRufNetArray), std::move(p));
}

using ElectricalNet = CVRXoutRufRuleElectricalNet;
using ElectricalNetForm = RecordForm<ElectricalNet, Value<1, &ElectricalNet::m_sName>>;

void AddValuesOfChildren(Rules& rules, const CECadClsLvl& node, ElectricalNet& net) {
  ForEachChild(node, [&](const CECadClsLvl& child) {
    net.m_aNetNames.Append(child.m_arrValues);
    SkipAll(rules, child);
  });
}
void ReadElectricalNet(RuleWalk& walk, const CECadClsLvl& node, CPC_BD_OutClsGet& data) {
  auto p = ElectricalNetForm::Make(node);
  SkipValues(walk.context, node, 1);
  AddValuesOfChildren(walk.context, node, *p);
  AppendOwned(Required(data.m_pElectricalNetArray), std::move(p));
}
void ReadNetList(RuleWalk& walk, const CECadClsLvl& node, ElectricalNet& net) {
  SkipValues(walk.context, node, 0);
  AddValuesOfChildren(walk.context, node, net);
}
constexpr auto kPair = MakeForm<ElectricalNet, Rules>(Custom<&ReadNetList>("electricalNetList", "m_aNetNames"));
void ReadPair(RuleWalk& walk, const CECadClsLvl& node, CPC_BD_OutClsGet& data) {
  auto p = ElectricalNetForm::Make(node);
  p->m_bPair = 1;
  SkipValues(walk.context, node, 1);
  Take(kPair, walk, node, *p);
  AppendOwned(Required(data.m_pElectricalNetArray), std::move(p));
}

// The one place where a value may be missing.
void ReadBoard(RuleWalk&, const CECadClsLvl& node, CPC_BD_OutClsGet& data) {
  ForEachChild(node, [&](const CECadClsLvl& child) {
    auto p = std::make_unique<CVRXoutRufRuleBoard>();
    p->m_sName = child.m_sName;
    if (HasToken(child)) p->m_sValue = Token(child, 1);
    AppendOwned(Required(data.m_pRufRuleBoardArray), std::move(p));
  });
}

using DesignStack = CVRXoutRufRuleDesignRuleStack;
using DesignStackLayer = CVRXoutRufRuleDesignRuleStackEachLayer;
using DesignStackForm = RecordForm<DesignStack, Value<1, &DesignStack::m_sName>>;
using DesignStackLayerForm = RecordForm<DesignStackLayer, Value<1, &DesignStackLayer::m_nLayerNo>>;

void ReadDesignRuleStack(RuleWalk& walk, const CECadClsLvl& node, CPC_BD_OutClsGet& data) {
  auto p = DesignStackForm::Make(node);
  ForEachChild(node, [&](const CECadClsLvl& child) {
    auto pLayer = DesignStackLayerForm::Make(child);
    const CECadClsLvl* pLast = nullptr;
    ForEachChild(child, [&](const CECadClsLvl& rule) {
      if (pLast != nullptr) SkipRepeated(walk.context, child, *pLast);
      pLast = &rule;
      pLayer->m_sRuleName = Token(rule, 1);
    });
    AppendOwned(p->m_aEachLayer, std::move(pLayer));
  });
  AppendOwned(Required(data.m_pDesignRuleStackArray), std::move(p));
}

using TraceStack = CVRXoutRufRuleTraceRuleStack;
using TraceStackLayer = CVRXoutRufRuleTraceRuleStackEachLayer;
using TraceStackForm = RecordForm<TraceStack, Value<1, &TraceStack::m_sName>>;
using TraceStackLayerForm = RecordForm<TraceStackLayer, Value<1, &TraceStackLayer::m_nLayerNo>>;

constexpr auto kTraceStackLayer = MakeForm<TraceStackLayer, Rules>(
    Real<&TraceStackLayer::m_dWidth>("width"), Real<&TraceStackLayer::m_dMinWidth>("minWidth"),
    Real<&TraceStackLayer::m_dMinLandOverlap>("minLandOverlap"),
    Real<&TraceStackLayer::m_dMaxWireWidth>("maxWireWidth"), Real<&TraceStackLayer::m_dMinWireWidth>("minWireWidth"));

void ReadTraceRuleStack(RuleWalk& walk, const CECadClsLvl& node, CPC_BD_OutClsGet& data) {
  auto p = TraceStackForm::Make(node);
  ForEachChild(node, [&](const CECadClsLvl& child) {
    auto pLayer = TraceStackLayerForm::Make(child);
    Take(kTraceStackLayer, walk, child, *pLayer);
    AppendOwned(p->m_aEachLayer, std::move(pLayer));
  });
  AppendOwned(Required(data.m_pTraceRuleStackArray), std::move(p));
}

constexpr auto kRule = MakeForm<CPC_BD_OutClsGet, Rules>(
    Custom<&ReadClearances<kPlacementRule>>("placementRule", "m_pRufRuleArray"),
    Custom<&ReadClearances<kHoleRule>>("holeRule", "m_pRufRuleArray"),
    Custom<&ReadClearances<kMarkingRule>>("markingRule", "m_pRufRuleArray"),
    Custom<&ReadClearances<kDesignRuleUnit>>("designRuleUnit", "m_pRufRuleArray"),
    Custom<&ReadClearances<kTestRule>>("testRule", "m_pRufRuleArray"),
    Custom<&ReadClearances<kBuildupViaRule>>("buildupViaRule", "m_pRufRuleArray"),
    Custom<&ReadSolderResistRule>("solderResistRule", "m_pRufRuleArray"),
    Custom<&ReadRule<&Rule::m_sRuleItem, kQualifiedPadstack>>("qualifiedPadstack", "m_pRufRuleArray"),
    Custom<&ReadPadstack>("padstack", "m_pRufRuleArray"), Custom<&ReadPadstack>("defaultPadstack", "m_pRufRuleArray"),
    Custom<&ReadRule<&Rule::m_sRuleItem, kLayer>>("layer", "m_pRufRuleArray"),
    Custom<&ReadNet>("net", "m_pRufNetArray"),  //
    Custom<&ReadElectricalNet>("electricalNet", "m_pElectricalNetArray"),
    Custom<&ReadPair>("enetPair", "m_pElectricalNetArray"),  //
    Custom<&ReadBoard>("board", "m_pRufRuleBoardArray"),
    Custom<&ReadDesignRuleStack>("designRuleStack", "m_pDesignRuleStackArray"),
    Custom<&ReadTraceRuleStack>("traceRuleStack", "m_pTraceRuleStackArray"));

// ---- assign ----
using CompForm = RecordForm<CVRXoutRufComp, Value<1, &CVRXoutRufComp::m_sName>>;

void ReadComp(RuleWalk& walk, const CECadClsLvl& node, CPC_BD_OutClsGet& data) {
  auto p = CompForm::Make(node);
  TakeLoosely(kComp, walk.context, node, *p);
  AppendOwned(Required(data.m_pRufCompArray), std::move(p));
}
constexpr auto kAssign = MakeForm<CPC_BD_OutClsGet, Rules>(Custom<&ReadComp>("comp", "m_pRufCompArray"));

// ---- design ----
void ReadBoardSpec(RuleWalk& walk, const CECadClsLvl& node, CPC_BD_OutClsGet& data) {
  Take(kBoardSpec, walk, node, Required(data.m_pBoardSpec));
}
void ReadRules(RuleWalk& walk, const CECadClsLvl& node, CPC_BD_OutClsGet& data) { Take(kRule, walk, node, data); }
void ReadAssign(RuleWalk& walk, const CECadClsLvl& node, CPC_BD_OutClsGet& data) { Take(kAssign, walk, node, data); }

constexpr auto kDesign = MakeForm<CPC_BD_OutClsGet, Rules>(          //
    Custom<&ReadBoardSpec>("boardSpec", "board spec and stack-up"),  //
    Custom<&ReadRules>("rule", "rules and nets"),                    //
    Custom<&ReadAssign>("assign", "component settings"));

}  // namespace

void ReadRuleFile(CPC_BD_OutClsGet& data, const CECadCls& reader, Diagnostics* pDiagnostics) {
  const CECadClsLvl* pDesign = reader.m_pRootArray->pFind("design");
  Rules rules{data, {reader.m_sFileName, pDiagnostics}};
  SkipOtherRoots(rules, reader, pDesign);
  if (pDesign == nullptr) return;
  RuleWalk walk{rules};
  Take(kDesign, walk, *pDesign, data);
}

}  // namespace laminate
