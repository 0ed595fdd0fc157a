#include "facade/ShapeLosses.h"

#include <cmath>
#include <typeindex>
#include <typeinfo>
#include <unordered_map>

#include "base/CLProperty.h"
#include "board/LayerGathering.h"
#include "board/LayoutBlocks.h"
#include "drawobj/CBDareaz.h"
#include "drawobj/CBDcircle.h"
#include "drawobj/CBDdelete.h"
#include "drawobj/CBDdonut.h"
#include "drawobj/CBDdrawObj.h"
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
#include "drawobj/CBDpadstackRefLay.h"
#include "drawobj/CBDrectangle.h"
#include "drawobj/CBDroundThermal.h"
#include "drawobj/CBDsquareHole.h"
#include "drawobj/CBDsquareThermal.h"
#include "drawobj/CBDsurface.h"
#include "drawobj/CBDsymbolText.h"
#include "drawobj/CBDtext.h"
#include "drawobj/CBDvertexArc.h"
#include "drawobj/CBDvertexPt.h"
#include "drawobj/DrawObjLedger.h"
#include "drawobj/ShapeTools.h"

namespace laminate {

namespace {

// Below this a line width or a padstack's angle is not written.
constexpr double kNotWritten = 0.001;

// What the shapes' ledger says of a field stands there; the tables here say only how a loss of it is found.
template <class T>
constexpr LossRow<T> Where(std::string_view field, bool (*lost)(const T&, std::string&)) {
  return {field, Fate::dropped, {}, lost};
}

struct ShapeWalk {
  ExportPlace place;
  int mode;  // 1: the shape stands by itself, 2: inside a form; of vertices 1: on a line, 2: in an outline
  bool inHole;
  LossFinder& finder;
};

template <class T, std::size_t N>
void FindBy(const LossTable<T, N>& table, const T& object, const ShapeWalk& walk) {
  std::string sValue;
  for (const LossRow<T>& row : table.rows) {
    if (row.lost == nullptr || !row.lost(object, sValue)) continue;
    const LedgerRow* pRow = FindLedgerRow(table.className, row.field);
    if (pRow == nullptr) AfxThrowInvalidArgException();
    walk.finder.Tell(table.className, row.field, walk.mode == 1 ? pRow->byItself : pRow->inGeometry, pRow->rule,
                     std::move(sValue));
  }
}

template <auto kArray, class T>
bool LosesArray(const T& object, std::string& sValue) {
  const auto* pArray = object.*kArray;
  if (pArray == nullptr || pArray->IsEmpty()) return false;
  sValue = std::to_string(pArray->GetSize());
  return true;
}

// ---- vertices ----

bool LosesFaintWidth(const CBDvertexPt& pt, std::string& sValue) {
  if (pt.m_dWidth == 0 || (std::abs(pt.m_dWidth) > kNotWritten && SurvivesLength(pt.m_dWidth))) return false;
  sValue = ValueText(pt.m_dWidth);
  return true;
}
bool LosesFillet(const CBDvertexPt& pt, std::string& sValue) {
  const CBDfillet* p = pt.m_pFillet;
  if (p == nullptr || p->m_dFilletWidth != 0) return false;
  if (p->m_sType.IsEmpty() && p->m_sDir.IsEmpty() && p->m_dWidth == 0 && p->m_dLength == 0) return false;
  sValue = ValueText(p->m_sType);
  return true;
}
bool LosesEndWidth(const CBDvertexArc& arc, std::string& sValue) {
  if (arc.m_dEndWidth == (arc.m_dBeginWidth != 0 ? arc.m_dBeginWidth : arc.m_dWidth)) return false;
  sValue = ValueText(arc.m_dEndWidth);
  return true;
}

constexpr auto kPoint =
    Losses<CBDvertexPt>("CBDvertexPt", Length<&CBDvertexPt::m_dTarc>(), Where<CBDvertexPt>("m_pFillet", &LosesFillet),
                        Length<&CBDvertexPt::m_pt>());
constexpr auto kPointOnLine = Losses<CBDvertexPt>("CBDvertexPt", Where<CBDvertexPt>("m_dWidth", &LosesFaintWidth));
constexpr auto kPointInOutline = Losses<CBDvertexPt>("CBDvertexPt", Dropped<&CBDvertex::m_dWidth>());
constexpr auto kArc = Losses<CBDvertexArc>("CBDvertexArc", Bare<&CBDvertexArc::m_sDirection>(),
                                           Length<&CBDvertexArc::m_dR>(), Length<&CBDvertexArc::m_ptBegin>(),
                                           Length<&CBDvertexArc::m_ptCenter>(), Length<&CBDvertexArc::m_ptEnd>());
constexpr auto kArcOnLine =
    Losses<CBDvertexArc>("CBDvertexArc", Dropped<&CBDvertex::m_dWidth>(),
                         Where<CBDvertexArc>("m_dEndWidth", &LosesEndWidth), Length<&CBDvertexArc::m_dBeginWidth>());
constexpr auto kArcInOutline =
    Losses<CBDvertexArc>("CBDvertexArc", Dropped<&CBDvertex::m_dWidth>(), Dropped<&CBDvertexArc::m_dEndWidth>(),
                         Dropped<&CBDvertexArc::m_dBeginWidth>());
constexpr auto kFillet = Losses<CBDfillet>("CBDfillet", Bare<&CBDfillet::m_sType>(), Length<&CBDfillet::m_dWidth>(),
                                           Length<&CBDfillet::m_dLength>(), Length<&CBDfillet::m_dFilletWidth>());
constexpr auto kFilletWithDirection = Losses<CBDfillet>("CBDfillet", Bare<&CBDfillet::m_sDir>());
constexpr auto kFilletAtEnd = Losses<CBDfillet>("CBDfillet", Dropped<&CBDfillet::m_sDir>());

void FindVertexLosses(const CBDvertexArray* pVertices, bool bLine, LossFinder& finder) {
  if (pVertices == nullptr) return;
  const ShapeWalk walk{ExportPlace::inside, bLine ? 1 : 2, false, finder};
  // Null slots are not written, so they are no ends of a line.
  INT_PTR nFirst = 0;
  INT_PTR nLast = pVertices->GetLastIndex();
  while (nFirst < nLast && pVertices->GetAt(nFirst) == nullptr) ++nFirst;
  while (nFirst < nLast && pVertices->GetAt(nLast) == nullptr) --nLast;
  for (INT_PTR i = nFirst; i <= nLast; ++i) {
    const CBDvertex* p = pVertices->GetAt(i);
    if (p == nullptr) continue;
    const LossFinder::Step step(finder, "m_pVertices", {}, i);
    const auto* pPoint = dynamic_cast<const CBDvertexPt*>(p);
    const auto* pArc = dynamic_cast<const CBDvertexArc*>(p);
    if (SaysPoint(*p) ? pPoint == nullptr : pArc == nullptr) {
      finder.Tell("CBDvertex", {}, Fate::dropped, "its type is not that of its class", ValueText(p->m_sType));
    } else if (pPoint != nullptr) {
      FindBy(kPoint, *pPoint, walk);
      bLine ? FindBy(kPointOnLine, *pPoint, walk) : FindBy(kPointInOutline, *pPoint, walk);
      const CBDfillet* pFillet = pPoint->m_pFillet;
      if (pFillet == nullptr || pFillet->m_dFilletWidth == 0) continue;
      const LossFinder::Step inner(finder, "m_pFillet");
      FindBy(kFillet, *pFillet, walk);
      bLine && (i == nFirst || i == nLast) ? FindBy(kFilletAtEnd, *pFillet, walk)
                                           : FindBy(kFilletWithDirection, *pFillet, walk);
    } else {
      FindBy(kArc, *pArc, walk);
      bLine ? FindBy(kArcOnLine, *pArc, walk) : FindBy(kArcInOutline, *pArc, walk);
    }
  }
}

// ---- the classes ----

constexpr auto kShape =
    Losses<CBDdrawObj>("CBDdrawObj", Dropped<&CBDdrawObj::m_nCavityFrom>(), Dropped<&CBDdrawObj::m_nCavityTo>());
constexpr auto kCircle =
    Losses<CBDcircle>("CBDcircle", Length<&CBDcircle::m_ptCenter>(), Length<&CBDcircle::m_dRadius>());
constexpr auto kDonut =
    Losses<CBDdonut>("CBDdonut", Length<&CBDdonut::m_dOut>(), Length<&CBDdonut::m_dIn>(), Length<&CBDdonut::m_pt>());
constexpr auto kOblong = Losses<CBDoblong>("CBDoblong", Length<&CBDoblong::m_ptSecond>(),
                                           Length<&CBDoblong::m_ptFirst>(), Length<&CBDoblong::m_dWidth>());
constexpr auto kOval = Losses<CBDoval>("CBDoval", Length<&CBDoval::m_dAngle>(), Length<&CBDoval::m_dHeight>(),
                                       Length<&CBDoval::m_dWidth>(), Length<&CBDoval::m_pt>());
constexpr auto kOvalHole = Losses<CBDovalHole>(
    "CBDovalHole", SixDigits<&CBDovalHole::m_pt>(), SixDigits<&CBDovalHole::m_dWidth>(),
    SixDigits<&CBDovalHole::m_dHeight>(), Significant<&CBDovalHole::m_dAngle>(), Dropped<&CBDovalHole::m_nHoleType>());
constexpr auto kRectangle = Losses<CBDrectangle>(
    "CBDrectangle", Angle<&CBDrectangle::m_dFillAngle>(), Length<&CBDrectangle::m_dFillWidth>(),
    Length<&CBDrectangle::m_dOutlineWidth>(), Angle<&CBDrectangle::m_dAngle>(), Length<&CBDrectangle::m_dHeight>(),
    Length<&CBDrectangle::m_dWidth>(), Length<&CBDrectangle::m_pt>());
constexpr auto kRoundThermal = Losses<CBDroundThermal>(
    "CBDroundThermal", Length<&CBDroundThermal::m_dBridgeWidth>(), Length<&CBDroundThermal::m_pt>(),
    Length<&CBDroundThermal::m_dIn>(), Length<&CBDroundThermal::m_dOut>());
constexpr auto kSquareThermal = Losses<CBDsquareThermal>(
    "CBDsquareThermal", Dropped<&CBDsquareThermal::m_dOut>(), Dropped<&CBDsquareThermal::m_dIn>(),
    Dropped<&CBDsquareThermal::m_pt>(), Dropped<&CBDsquareThermal::m_nBridge>(),
    Dropped<&CBDsquareThermal::m_dBridgeWidth>(), Dropped<&CBDsquareThermal::m_dBridgeAngle>());
constexpr auto kSquareHole = Losses<CBDsquareHole>(
    "CBDsquareHole", Length<&CBDsquareHole::m_dCorner>(), Length<&CBDsquareHole::m_dHeight>(),
    Length<&CBDsquareHole::m_dWidth>(), Length<&CBDsquareHole::m_dAngle>(), Length<&CBDsquareHole::m_pt>());
constexpr auto kHole = Losses<CBDhole>("CBDhole", Dropped<&CBDhole::m_nFrom>(), Dropped<&CBDhole::m_nTo>(),
                                       Dropped<&CBDhole::m_sDrillType>(), Dropped<&CBDhole::m_nHoleType>());
constexpr auto kDrawPad =
    Losses<CBDdrawPad>("CBDdrawPad", Where<CBDdrawPad>("m_pShapes", &LosesArray<&CBDdrawPad::m_pShapes, CBDdrawPad>),
                       Bare<&CBDdrawPad::m_sPadName>(), Length<&CBDdrawPad::m_pt>(), Length<&CBDdrawPad::m_dAngle>());

bool LosesFaintAngle(const CBDdrawPadstack& p, std::string& sValue) {
  if (p.m_dAngle == 0 || (std::abs(p.m_dAngle) > kNotWritten && SurvivesLength(p.m_dAngle))) return false;
  sValue = ValueText(p.m_dAngle);
  return true;
}
// One number alone reads back as the end of the span.
bool LosesFrom(const CBDdrawPadstack& p, std::string& sValue) {
  if (p.m_nFrom == 0 || (p.m_nTo != 0 && p.m_nTo != p.m_nFrom)) return false;
  sValue = std::to_string(p.m_nFrom);
  return true;
}
bool LosesTo(const CBDdrawPadstack& p, std::string& sValue) {
  sValue = std::to_string(p.m_nTo);
  return p.m_nTo == 0 && p.m_nFrom != 0;
}

constexpr auto kPadstack = Losses<CBDdrawPadstack>(
    "CBDdrawPadstack", Where<CBDdrawPadstack>("m_pShapes", &LosesArray<&CBDdrawPadstack::m_pShapes, CBDdrawPadstack>),
    Where<CBDdrawPadstack>("m_dAngle", &LosesFaintAngle), Dropped<&CBDdrawPadstack::m_nDrillType>(),
    Length<&CBDdrawPadstack::m_pt>(), Bare<&CBDdrawPadstack::m_sPadstackName>(), Dropped<&CBDdrawPadstack::m_sSide>(),
    Dropped<&CBDdrawPadstack::m_sFlip>(), Dropped<&CBDdrawPadstack::m_sBuildupVia>());
constexpr auto kPadstackByItself = Losses<CBDdrawPadstack>(
    "CBDdrawPadstack", Where<CBDdrawPadstack>("m_nFrom", &LosesFrom), Where<CBDdrawPadstack>("m_nTo", &LosesTo));
constexpr auto kPadstackInGeometry = Losses<CBDdrawPadstack>(
    "CBDdrawPadstack", Where<CBDdrawPadstack>("m_pRefLays", &LosesArray<&CBDdrawPadstack::m_pRefLays, CBDdrawPadstack>),
    Dropped<&CBDdrawPadstack::m_nFrom>(), Dropped<&CBDdrawPadstack::m_nTo>());
constexpr auto kRefLay =
    Losses<CBDpadstackRefLay>("CBDpadstackRefLay", Bare<&CBDpadstackRefLay::m_sStatus>(),
                              Dropped<&CBDpadstackRefLay::m_sLayerName>(), Dropped<&CBDpadstackRefLay::m_bVisible>());

constexpr auto kText = Losses<CBDtext>(
    "CBDtext", Quoted<&CBDtext::m_sString>(), Length<&CBDtext::m_dWidth>(), Length<&CBDtext::m_dHeight>(),
    Length<&CBDtext::m_dSpace>(), Length<&CBDtext::m_dVSpace>(), Length<&CBDtext::m_dStrokeWidth>(),
    Length<&CBDtext::m_pt>(), Length<&CBDtext::m_dAngle>(), Bare<&CBDtext::m_sDir>(), Bare<&CBDtext::m_sJustify>(),
    Bare<&CBDtext::m_sFlip>(), Bare<&CBDtext::m_sReverse>(), Dropped<&CBDtext::m_dTextFrameOffset>());
constexpr auto kLine = Losses<CBDline>("CBDline", Dropped<&CBDline::m_sThermalData>(), Dropped<&CBDline::m_sLineType>(),
                                       Dropped<&CBDline::m_dDash>(), Dropped<&CBDline::m_dBlank>());
constexpr auto kOpenShape = Losses<CBDopenShape>("CBDopenShape", Length<&CBDopenShape::m_dOutlineWidth>());

template <auto kHeight>
bool LosesHeight(const CBDsurface& s, std::string& sValue) {
  const double d = s.*kHeight;
  if (s.m_bArea == 1 ? SurvivesLength(d) : d == 0) return false;
  sValue = ValueText(d);
  return true;
}

constexpr auto kSurface = Losses<CBDsurface>(
    "CBDsurface", Dropped<&CBDsurface::m_bArea>(), Dropped<&CBDsurface::m_nMeshFlagXCount>(),
    Where<CBDsurface>("m_dLowerHeight", &LosesHeight<&CBDsurface::m_dLowerHeight>),
    Where<CBDsurface>("m_dUpperHeight", &LosesHeight<&CBDsurface::m_dUpperHeight>),
    Length<&CBDsurface::m_dOutlineWidth>(), Dropped<&CBDsurface::m_dMeshPitch>(), Length<&CBDsurface::m_dFillWidth>(),
    Angle<&CBDsurface::m_dFillAngle>(), Dropped<&CBDsurface::m_dMeshShapeDiameter>(),
    Dropped<&CBDsurface::m_dMeshFigureAngle>(), Dropped<&CBDsurface::m_dMeshWindowClearance>(),
    Dropped<&CBDsurface::m_dMeshFigureClearance>(), Dropped<&CBDsurface::m_dMeshAngle>(),
    Dropped<&CBDsurface::m_dMeshOutlineClearance>(), Dropped<&CBDsurface::m_sMeshShape>(),
    Dropped<&CBDsurface::m_sMeshArrangeType>(), Dropped<&CBDsurface::m_ptMeshBase>(),
    Dropped<&CBDsurface::m_ptMeshRotate>(), Dropped<&CBDsurface::m_arrMeshFlags>(), Dropped<&CBDsurface::m_bSubmesh>(),
    Dropped<&CBDsurface::m_nParamFlagXCount>(), Dropped<&CBDsurface::m_dParamPitch>(),
    Dropped<&CBDsurface::m_dParamShapeDiameter>(), Dropped<&CBDsurface::m_dParamFigureAngle>(),
    Dropped<&CBDsurface::m_dParamWindowClearance>(), Dropped<&CBDsurface::m_dParamFigureClearance>(),
    Dropped<&CBDsurface::m_dParamAngle>(), Dropped<&CBDsurface::m_dParamOutlineClearance>(),
    Dropped<&CBDsurface::m_sParamShape>(), Dropped<&CBDsurface::m_sParamArrangeType>(),
    Dropped<&CBDsurface::m_ptParamBase>(), Dropped<&CBDsurface::m_ptParamRotate>(),
    Dropped<&CBDsurface::m_arrParamFlags>(),
    Where<CBDsurface>("m_pProperties", &LosesArray<&CBDsurface::m_pProperties, CBDsurface>));

bool LosesAlreadySpread(const CBDsurface& s, std::string& sValue) {
  sValue = std::to_string(s.m_bAlreadySpread);
  return s.m_bAlreadySpread != 0 && s.m_bMesh != 1;
}
constexpr auto kSurfaceInGeometry =
    Losses<CBDsurface>("CBDsurface", Where<CBDsurface>("m_bAlreadySpread", &LosesAlreadySpread));

// ---- walks ----

void Find(const CBDdrawObj& shape, const ShapeWalk& walk);

template <const auto& kTable, class T>
void FindPlain(const CBDdrawObj& shape, const ShapeWalk& walk) {
  FindBy(kTable, static_cast<const T&>(shape), walk);
}
// Of a class that never reads back there is nothing more to tell.
void FindNothing(const CBDdrawObj&, const ShapeWalk&) {}

void FindHole(const CBDdrawObj& shape, const ShapeWalk& walk) {
  const auto& hole = static_cast<const CBDhole&>(shape);
  FindBy(kHole, hole, walk);
  if (hole.m_pShape == nullptr) return;
  const LossFinder::Step step(walk.finder, "m_pShape");
  Find(*hole.m_pShape, {walk.place, walk.mode, true, walk.finder});
}
void FindPadstack(const CBDdrawObj& shape, const ShapeWalk& walk) {
  const auto& padstack = static_cast<const CBDdrawPadstack&>(shape);
  FindBy(kPadstack, padstack, walk);
  if (walk.mode != 1) {
    FindBy(kPadstackInGeometry, padstack, walk);
    return;
  }
  FindBy(kPadstackByItself, padstack, walk);
  ForEachElement(walk.finder, "m_pRefLays", padstack.m_pRefLays, [&](const CBDpadstackRefLay& entry) {
    const int n = entry.m_nLayerNumber;
    if (padstack.IsInSpan(n)) {
      FindBy(kRefLay, entry, walk);
    } else {
      walk.finder.Tell("CBDpadstackRefLay", {}, Fate::dropped, "outside the span of layers",
                       n != 0 ? std::to_string(n) : ValueText(entry.m_sLayerName));
    }
  });
}
void FindLine(const CBDdrawObj& shape, const ShapeWalk& walk) {
  const auto& line = static_cast<const CBDline&>(shape);
  FindBy(kLine, line, walk);
  FindVertexLosses(line.m_pVertices, true, walk.finder);
}
void FindSurface(const CBDdrawObj& shape, const ShapeWalk& walk) {
  const auto& surface = static_cast<const CBDsurface&>(shape);
  if (surface.m_bMesh != 1 && !surface.HasOutline()) {
    walk.finder.Tell("CBDsurface", {}, Fate::dropped, "fewer than three points", {});
    return;
  }
  FindBy(kSurface, surface, walk);
  if (walk.mode != 1) FindBy(kSurfaceInGeometry, surface, walk);
  FindVertexLosses(surface.m_pVertices, false, walk.finder);
  ForEachElement(walk.finder, "m_pOpenShapes", surface.m_pOpenShapes, [&walk](const CBDopenShape& open) {
    FindBy(kOpenShape, open, walk);
    FindVertexLosses(open.m_pVertices, false, walk.finder);
  });
}

struct ClassEntry {
  std::string_view name;
  void (*find)(const CBDdrawObj&, const ShapeWalk&);
};
const std::unordered_map<std::type_index, ClassEntry>& Classes() {
  static const std::unordered_map<std::type_index, ClassEntry> classes = {
      {typeid(CBDareaz), {"CBDareaz", &FindNothing}},
      {typeid(CBDcircle), {"CBDcircle", &FindPlain<kCircle, CBDcircle>}},
      {typeid(CBDdelete), {"CBDdelete", &FindNothing}},
      {typeid(CBDdonut), {"CBDdonut", &FindPlain<kDonut, CBDdonut>}},
      {typeid(CBDdrawPad), {"CBDdrawPad", &FindPlain<kDrawPad, CBDdrawPad>}},
      {typeid(CBDdrawPadstack), {"CBDdrawPadstack", &FindPadstack}},
      {typeid(CBDdrawSubBoard), {"CBDdrawSubBoard", &FindNothing}},
      {typeid(CBDhole), {"CBDhole", &FindHole}},
      {typeid(CBDline), {"CBDline", &FindLine}},
      {typeid(CBDoblong), {"CBDoblong", &FindPlain<kOblong, CBDoblong>}},
      {typeid(CBDoval), {"CBDoval", &FindPlain<kOval, CBDoval>}},
      {typeid(CBDovalHole), {"CBDovalHole", &FindPlain<kOvalHole, CBDovalHole>}},
      {typeid(CBDrectangle), {"CBDrectangle", &FindPlain<kRectangle, CBDrectangle>}},
      {typeid(CBDroundThermal), {"CBDroundThermal", &FindPlain<kRoundThermal, CBDroundThermal>}},
      {typeid(CBDsquareHole), {"CBDsquareHole", &FindPlain<kSquareHole, CBDsquareHole>}},
      {typeid(CBDsquareThermal), {"CBDsquareThermal", &FindPlain<kSquareThermal, CBDsquareThermal>}},
      {typeid(CBDsurface), {"CBDsurface", &FindSurface}},
      {typeid(CBDsymbolText), {"CBDsymbolText", &FindNothing}},
      {typeid(CBDtext), {"CBDtext", &FindPlain<kText, CBDtext>}}};
  return classes;
}

// Why a shape as a whole does not read back; empty where it does, or where its fields tell it.
std::string_view WholeLoss(std::string_view sClass, int nMode) {
  for (const LedgerClass& row : DrawObjLedgerClasses()) {
    if (row.className != sClass) continue;
    switch (nMode == 1 ? row.byItself : row.inGeometry) {
      case ReadsBack::same:
      case ReadsBack::within:
        return {};
      case ReadsBack::defaults:
        return "reads back without its values";
      case ReadsBack::other:
        return "reads back as a shape of another class";
      case ReadsBack::unknownKeyword:
        return "does not read back: its keyword is unknown where it stands";
      case ReadsBack::raises:
        return "ends a load for want of a value";
    }
  }
  return {};
}

void Find(const CBDdrawObj& shape, const ShapeWalk& walk) {
  const auto it = Classes().find(typeid(shape));
  if (it == Classes().end()) return;
  const auto& [sName, find] = it->second;
  // A hole is the one place where the form of a circle by itself is right.
  const bool bCircleInHole = walk.inHole && sName == "CBDcircle";
  const std::string_view sWhole = bCircleInHole ? std::string_view() : WholeLoss(sName, walk.mode);
  // What never had other than default values loses none.
  if (!sWhole.empty() && sName != "CBDsquareThermal") {
    walk.finder.Tell(sName, {}, Fate::dropped, sWhole, {});
  } else {
    find(shape, walk);
  }
}

// ---- layer, net and the like, by the place of the shape ----

class Shared {
 public:
  /// `pHeader`: the shape for which the block was opened that this one stands in, or null; of the layout only.
  Shared(const CBDdrawObj& shape, ExportPlace place, int nMode, const CBDdrawObj* pHeader, LossFinder& finder)
      : m_shape(shape), m_place(place), m_nMode(nMode), m_pHeader(pHeader), m_finder(finder) {}

  /// False when nothing of the shape is read again.
  bool Find() {
    if (m_place == ExportPlace::layout && m_pHeader == nullptr) {
      Tell("", Fate::dropped, "written into no layer, and so not read", ValueText(m_shape.m_sKind));
      return false;
    }
    const bool bNeedsName = m_place == ExportPlace::component || m_place == ExportPlace::pin ||
                            m_place == ExportPlace::group || m_place == ExportPlace::heelprint;
    if (bNeedsName && m_shape.m_sLayerName.IsEmpty()) {
      Tell("", Fate::dropped, "without a layer name", ValueText(m_shape.m_sKind));
      return false;
    }
    Layer();
    Refer();
    Net();
    const bool bPenWritten = Is("LINE") && m_shape.m_sPenShape == "SQUARE";
    if (!m_shape.m_sPenShape.IsEmpty() && !bPenWritten) {
      Tell("m_sPenShape", Fate::dropped, "of lines \"SQUARE\" only", ValueText(m_shape.m_sPenShape));
    }
    FindBy(kShape, m_shape, {m_place, m_nMode, false, m_finder});
    return true;
  }

 private:
  bool Is(const char* szKind) const { return m_shape.m_sKind == szKind; }
  void Tell(std::string_view sField, Fate fate, std::string_view sNote, std::string sValue) {
    m_finder.Tell("CBDdrawObj", sField, fate, sNote, std::move(sValue));
  }
  void Name(bool bReadsBack, std::string_view sNote) {
    if (!bReadsBack) Tell("m_sLayerName", Fate::normalised, sNote, ValueText(m_shape.m_sLayerName));
  }
  void Type(std::string_view sWritten, std::string_view sNote) {
    if (m_shape.m_sLayerType.View() != sWritten) {
      Tell("m_sLayerType", Fate::normalised, sNote, ValueText(m_shape.m_sLayerType));
    }
  }
  static bool ReadsBackNamed(std::string_view s, std::string_view sSigns) {
    return s.find_first_of(sSigns) == std::string_view::npos ? ReadsBackBare(s) : ReadsBackQuoted(s, true);
  }

  void Layer() {
    const std::string_view name = m_shape.m_sLayerName.View();
    switch (m_place) {
      case ExportPlace::layout:
        LayerOfLayout(name);
        break;
      case ExportPlace::component:
        Name(ReadsBackNamed(name, "() "), "in quotes only if it holds a bracket or a blank");
        if (name == "PADSTACK") {
          Type("systemLayer", "systemLayer, as the layer is PADSTACK");
        } else if (m_shape.m_sLayerType != "conductive" && m_shape.m_sLayerType != "systemLayer") {
          Type("nonConductive", "nonConductive, as it is none of the others");
        }
        if (m_shape.m_nLayerNumber != (m_shape.m_sLayerType == "conductive" ? Atoi(name) : 0)) {
          Tell("m_nLayerNumber", Fate::normalised, "read back from the name of the layer",
               std::to_string(m_shape.m_nLayerNumber));
        }
        break;
      case ExportPlace::pin:
      case ExportPlace::group:
        Name(ReadsBackBare(name), "without quotes");
        Type("systemLayer", "in a header that reads back for system layers only");
        break;
      case ExportPlace::heelprint:
        Name(ReadsBackNamed(name, "()"), "in quotes only if it holds a bracket");
        break;
      case ExportPlace::toeprint:
        Name(name == "FPADSTACK", "FPADSTACK");
        break;
      case ExportPlace::inside:
        break;
    }
  }

  void LayerOfLayout(std::string_view name) {
    const bool bNumber = m_shape.m_nLayerNumber != 0;
    const bool bOwn = m_pHeader->m_nLayerNumber == m_shape.m_nLayerNumber &&
                      (bNumber || (m_pHeader->m_sLayerName == m_shape.m_sLayerName &&
                                   m_pHeader->m_sLayerType == m_shape.m_sLayerType));
    if (!bOwn) {
      LayerBefore();
    } else if (bNumber) {
      Name(name == std::to_string(m_shape.m_nLayerNumber), "the number of the layer");
      Type("conductive", "conductive, as the layer has a number");
    } else {
      Name(!name.empty() && ReadsBackNamed(name, "()"), "in quotes only if it holds a bracket");
    }
  }
  // What the shape has of a layer that is not its own.
  void LayerBefore() {
    constexpr std::string_view kNote = "written into the layer before it";
    const int nNumber = m_pHeader->m_nLayerNumber;
    const std::string sName = nNumber != 0 ? std::to_string(nNumber) : ValueText(m_pHeader->m_sLayerName);
    const std::string_view sType = nNumber != 0 ? "conductive" : m_pHeader->m_sLayerType.View();
    if (m_shape.m_nLayerNumber != nNumber) {
      Tell("m_nLayerNumber", Fate::dropped, kNote, std::to_string(m_shape.m_nLayerNumber));
    }
    if (m_shape.m_sLayerName.View() != sName) {
      Tell("m_sLayerName", Fate::dropped, kNote, ValueText(m_shape.m_sLayerName));
    }
    if (m_shape.m_sLayerType.View() != sType) {
      Tell("m_sLayerType", Fate::dropped, kNote, ValueText(m_shape.m_sLayerType));
    }
  }

  void Refer() {
    int bWritten = m_shape.m_bRefer;
    if (m_place == ExportPlace::component) {
      bWritten = Is("DRAWPADSTACK") || Is("DRAWPAD") || Is("SYMBOLTEXT") ? 0 : 1;
    } else if (m_place == ExportPlace::layout || m_place == ExportPlace::pin || m_place == ExportPlace::group) {
      bWritten = 0;
    }
    if (m_shape.m_bRefer != bWritten) {
      Tell("m_bRefer", Fate::normalised, bWritten != 0 ? "stands in a \"refer\"" : "stands in no \"refer\"",
           std::to_string(m_shape.m_bRefer));
    }
  }

  void Net() {
    const std::string_view net = m_shape.m_sNet.View();
    if (net.empty()) return;
    const auto* pSurface = dynamic_cast<const CBDsurface*>(&m_shape);
    const bool bWritten = pSurface != nullptr ? pSurface->m_bMesh == 1 || (pSurface->m_bArea == 0 && m_nMode == 1)
                                              : m_nMode == 1 && (Is("LINE") || Is("DRAWPADSTACK"));
    if (!bWritten) {
      Tell("m_sNet", Fate::dropped, {}, std::string(net));
    } else if (net.find('%') != std::string_view::npos || !ReadsBackQuoted(net, true)) {
      Tell("m_sNet", Fate::normalised, "in quotes, percent signs doubled", std::string(net));
    }
  }

  const CBDdrawObj& m_shape;
  ExportPlace m_place;
  int m_nMode;
  const CBDdrawObj* m_pHeader;
  LossFinder& m_finder;
};

int Mode(const CBDdrawObj& shape, ExportPlace place) {
  switch (place) {
    case ExportPlace::toeprint:
    case ExportPlace::inside:
      return 2;
    case ExportPlace::heelprint:
      return shape.m_sKind == "DRAWPAD" || shape.m_sKind == "DRAWPADSTACK" ? 2 : 1;
    default:
      return 1;
  }
}

void FindInBlock(const CBDdrawObj& shape, ExportPlace place, const CBDdrawObj* pHeader, LossFinder& finder) {
  const int nMode = Mode(shape, place);
  if (Shared(shape, place, nMode, pHeader, finder).Find()) Find(shape, {place, nMode, false, finder});
}

}  // namespace

void FindShapeLosses(const CBDdrawObj& shape, ExportPlace place, LossFinder& finder) {
  FindInBlock(shape, place, nullptr, finder);
}

void FindShapeLosses(std::string_view sField, const CBDdrawObjArray* pShapes, ExportPlace place, LossFinder& finder) {
  ForEachElement(finder, sField, pShapes, [&](const CBDdrawObj& shape) { FindShapeLosses(shape, place, finder); });
}

void FindLayoutLosses(std::string_view sField, const CBDdrawObjArray* pShapes, LossFinder& finder) {
  if (pShapes == nullptr) return;
  // The blocks follow one another in the order of writing, the losses in that of the array.
  std::vector<const CBDdrawObj*> headers(static_cast<std::size_t>(pShapes->GetSize()));
  LayoutBlocks blocks;
  const CBDdrawObj* pHeader = nullptr;
  for (const INT_PTR nSlot : GatheredSlots(*pShapes)) {
    const CBDdrawObj* p = pShapes->GetAt(nSlot);
    const LayoutBlocks::Step step = blocks.Next(*p);
    if (step.opens != LayoutBlocks::Header::none) {
      pHeader = p;
    } else if (step.closes) {
      pHeader = nullptr;
    }
    headers[static_cast<std::size_t>(nSlot)] = pHeader;
  }
  for (INT_PTR i = 0; i < pShapes->GetSize(); ++i) {
    const CBDdrawObj* p = pShapes->GetAt(i);
    if (p == nullptr) continue;
    const LossFinder::Step step(finder, sField, {}, i);
    FindInBlock(*p, ExportPlace::layout, headers[static_cast<std::size_t>(i)], finder);
  }
}

void FindHoleLosses(const CBDdrawObj& shape, LossFinder& finder) {
  // The form of the hole is the padstack's own; of a hole object its shape alone is written into it.
  const ShapeWalk walk{ExportPlace::inside, 2, false, finder};
  const auto* pHole = dynamic_cast<const CBDhole*>(&shape);
  if (pHole == nullptr) {
    Find(shape, walk);
  } else {
    FindHole(*pHole, walk);
  }
}

std::vector<std::pair<std::string_view, std::string_view>> ShapeFieldsLookedFor() {
  std::vector<std::pair<std::string_view, std::string_view>> fields;
  const auto list = [&fields](const auto&... tables) {
    const auto one = [&fields](const auto& table) {
      for (const auto& row : table.rows) fields.emplace_back(table.className, row.field);
    };
    (one(tables), ...);
  };
  list(kShape, kCircle, kDonut, kDrawPad, kPadstack, kPadstackByItself, kPadstackInGeometry, kRefLay, kHole, kLine,
       kOblong, kOpenShape, kOval, kOvalHole, kRectangle, kRoundThermal, kSquareHole, kSquareThermal, kSurface,
       kSurfaceInGeometry, kText, kPoint, kPointOnLine, kPointInOutline, kArc, kArcOnLine, kArcInOutline, kFillet,
       kFilletWithDirection, kFilletAtEnd);
  return fields;
}

}  // namespace laminate
