#include "drawobj/CBDsurface.h"

#include "base/CLProperty.h"
#include "base/TextOut.h"
#include "drawobj/CBDvertexArc.h"
#include "drawobj/CBDvertexPt.h"
#include "drawobj/ShapeGrammar.h"
#include "drawobj/ShapeTools.h"

CBDsurface::CBDsurface() {
  m_sKind = "SURFACE";
  auto pProperties = std::make_unique<CLPropertyArray>();
  auto pVertices = std::make_unique<CBDvertexArray>();
  m_pOpenShapes = new CBDopenShapeArray;
  m_pProperties = pProperties.release();
  m_pVertices = pVertices.release();
}

CBDsurface::~CBDsurface() {
  delete m_pOpenShapes;
  delete m_pVertices;
  delete m_pProperties;
}

namespace laminate {
namespace {

void AppendOpenShape(Walk<NoContext>&, const CECadClsLvl& node, CBDsurface& surface) {
  AppendOwned(*surface.m_pOpenShapes, ReadOpenShape(node));
}

constexpr auto kSubmeshParameter = MakeForm<CBDsurface>(
    FirstChildPoint<&CBDsurface::m_ptParamBase>("meshParamBasePoint"),
    FirstChildPoint<&CBDsurface::m_ptParamRotate>("meshParamRotatePoint"),
    Length<&CBDsurface::m_dParamPitch>("meshParamPitch"), Text<&CBDsurface::m_sParamShape>("meshParamShape"),
    Length<&CBDsurface::m_dParamShapeDiameter>("meshParamShapeDiameter"),
    Text<&CBDsurface::m_sParamArrangeType>("meshParamArrangeType"), Real<&CBDsurface::m_dParamAngle>("meshParamAngle"),
    Real<&CBDsurface::m_dParamFigureAngle>("meshParamFigureAngle"),
    Length<&CBDsurface::m_dParamWindowClearance>("meshParamWindowClearance"),
    Length<&CBDsurface::m_dParamFigureClearance>("meshParamFigureClearance"),
    Length<&CBDsurface::m_dParamOutlineClearance>("meshParamOutlineClearance"),
    Integers<&CBDsurface::m_arrParamFlags>("meshParamFlags"),
    Integer<&CBDsurface::m_nParamFlagXCount>("meshParamFlagXCount"));

constexpr auto kSubmeshplane = MakeForm<CBDsurface>(Nested<kSubmeshParameter>("submeshparameter"));

// The first form in "geometry".
constexpr auto kInnerSurface = MakeForm<CBDsurface>(
    Length<&CBDsurface::m_dOutlineWidth>("outlineWidth"), Length<&CBDsurface::m_dFillWidth>("fillWidth"),
    Real<&CBDsurface::m_dFillAngle>("fillAngle"), SetFlag<&CBDsurface::m_bAlreadySpread>("alreadySpread"),
    Vertices<&CBDsurface::m_pVertices>("vertex"), Custom<&AppendOpenShape>("openShape", "m_pOpenShapes; kOpenShape"),
    FirstChildPoint<&CBDsurface::m_ptMeshBase>("meshBasePoint"),
    FirstChildPoint<&CBDsurface::m_ptMeshRotate>("meshRotatePoint"), Length<&CBDsurface::m_dMeshPitch>("meshPitch"),
    Text<&CBDsurface::m_sMeshShape>("meshShape"), Length<&CBDsurface::m_dMeshShapeDiameter>("meshShapeDiameter"),
    Text<&CBDsurface::m_sMeshArrangeType>("meshArrangeType"), Real<&CBDsurface::m_dMeshAngle>("meshAngle"),
    Real<&CBDsurface::m_dMeshFigureAngle>("meshFigureAngle"),
    Length<&CBDsurface::m_dMeshWindowClearance>("meshWindowClearance"),
    Length<&CBDsurface::m_dMeshFigureClearance>("meshFigureClearance"),
    Length<&CBDsurface::m_dMeshOutlineClearance>("meshOutlineClearance"),
    Integers<&CBDsurface::m_arrMeshFlags>("meshFlags"), Integer<&CBDsurface::m_nMeshFlagXCount>("meshFlagXCount"),
    Flagged<&CBDsurface::m_bSubmesh, kSubmeshplane>("submeshplane"));

constexpr auto kSurface = MakeForm<CBDsurface>(
    Length<&CBDsurface::m_dLowerHeight>("lowerHeight"), Length<&CBDsurface::m_dUpperHeight>("upperHeight"),
    Text<&CBDsurface::m_sNet>("net"), Length<&CBDsurface::m_dOutlineWidth>("outlineWidth"),
    Length<&CBDsurface::m_dFillWidth>("fillWidth"), Real<&CBDsurface::m_dFillAngle>("fillAngle"),
    Vertices<&CBDsurface::m_pVertices>("vertex"), Custom<&AppendOpenShape>("openShape", "m_pOpenShapes; kOpenShape"),
    AnyFirstForm<kInnerSurface, "surface">("geometry"));

// What the keyword itself says; "area" and "surface" say nothing.
constexpr auto kSurfaceKeyword = MakeForm<CBDsurface>(SetFlag<&CBDsurface::m_bMesh>("meshplane"));

}  // namespace

template <>
std::unique_ptr<CBDdrawObj> Make<CBDsurface>(const CECadClsLvl& node, const ShapeContext& context) {
  auto pSurface = NewShape<CBDsurface>(context);
  ReadOwnTokens(kSurfaceKeyword, node, *pSurface);
  WalkChildren(kSurface, node, *pSurface);
  pSurface->m_pVertices->FreeExtra();
  pSurface->m_pOpenShapes->FreeExtra();
  pSurface->m_arrMeshFlags.FreeExtra();
  pSurface->m_arrParamFlags.FreeExtra();
  return pSurface;
}

template <>
std::vector<FormView<CBDsurface>> Grammar() {
  return {View<kSurfaceKeyword>(), View<kSurface>(), View<kInnerSurface>(), View<kSubmeshplane>(),
          View<kSubmeshParameter>()};
}

}  // namespace laminate

int CBDsurface::nPrint2File(FILE* fp, int mode) {
  return laminate::PrintTo(fp, [&](laminate::TextOut& out) { Write(out, mode); });
}

void CBDsurface::Write(laminate::TextOut& out, int nMode) const {
  if (m_bArea == 1) {
    out.Print<
        "(area\n"
        "(upperHeight %.5f)\n"
        "(lowerHeight %.5f)\n"
        "(geometry\n">(m_dUpperHeight, m_dLowerHeight);
  }
  if (m_bMesh == 1) {
    out.Print<"(meshplane\n">();
    if (!m_sNet.IsEmpty()) out.Print<"(net %s)\n">(m_sNet);
    out.Print<
        "(geometry\n"
        "(meshplane\n">();
    WriteOutline(out);
    WriteProperties(out);
    out.Print<
        ")\n"
        ")\n"
        ")\n">();
  } else if (HasOutline()) {
    const bool bByItself = m_bArea == 0 && nMode == 1;
    if (bByItself) {
      out.Print<"(surface\n">();
      if (!m_sNet.IsEmpty()) out.Print<"(net %s)\n">(m_sNet);
      out.Print<"(geometry\n">();
    }
    out.Print<"(surface\n">();
    WriteOutline(out);
    out.Print<")\n">();
    if (bByItself) {
      out.Print<
          ")\n"
          ")\n">();
    }
  }
  if (m_bArea == 1) {
    out.Print<
        ")\n"
        ")\n">();
  }
}

bool CBDsurface::HasOutline() const {
  if (m_pVertices == nullptr) return false;
  int nVertices = 0;
  for (const CBDvertex* p : *m_pVertices) {
    if (p != nullptr && (++nVertices == 3 || !laminate::SaysPoint(*p))) return true;
  }
  return false;
}

void CBDsurface::WriteOutline(laminate::TextOut& out) const {
  out.Print<
      "(outlineWidth %.5f)\n"
      "(fillWidth %.5f)\n"
      "(fillAngle %f)\n">(m_dOutlineWidth, m_dFillWidth, m_dFillAngle);
  if (m_bAlreadySpread != 0) out.Print<"(alreadySpread YES)\n">();
  out.Print<"(vertex\n">();
  if (m_pVertices != nullptr) {
    for (const CBDvertex* p : *m_pVertices) {
      if (p != nullptr) p->Write(out, 2, 0);
    }
  }
  out.Print<")\n">();
  if (m_pOpenShapes != nullptr) {
    for (const CBDopenShape* p : *m_pOpenShapes) {
      if (p != nullptr) p->Write(out);
    }
  }
}

// Points and flags have their values on lines of their own.
void CBDsurface::WriteProperties(laminate::TextOut& out) const {
  if (m_pProperties == nullptr) return;
  for (const CLProperty* p : *m_pProperties) {
    if (p == nullptr) continue;
    const CString sName = p->GetItem();
    const CString sValue = p->GetComment();
    if (sName == "meshBasePoint" || sName == "meshRotatePoint" || sName == "meshFlags") {
      out.Print<
          "(%s\n"
          "%s\n"
          ")\n">(sName, sValue);
    } else {
      out.Print<"(%s %s)\n">(sName, sValue);
    }
  }
}

CBDsurface* CBDsurface::pCopy() const {
  auto pCopy = std::make_unique<CBDsurface>();
  pCopy->m_dLowerHeight = m_dLowerHeight;
  pCopy->m_dUpperHeight = m_dUpperHeight;
  pCopy->m_dFillAngle = m_dFillAngle;
  pCopy->m_dFillWidth = m_dFillWidth;
  pCopy->m_dOutlineWidth = m_dOutlineWidth;
  laminate::CopyElements(laminate::Required(m_pVertices), *pCopy->m_pVertices);
  laminate::CopyElements(laminate::Required(m_pOpenShapes), *pCopy->m_pOpenShapes);
  return pCopy.release();
}

void CBDsurface::vMoveRotate(double dX, double dY, double dAngle, CString sSide) {
  laminate::MoveElements(laminate::Required(m_pOpenShapes), dX, dY, dAngle, sSide);
  laminate::MoveElements(laminate::Required(m_pVertices), dX, dY, dAngle, sSide);
}

void CBDsurface::vSetScale(double dScale) {
  laminate::ScaleElements(laminate::Required(m_pOpenShapes), dScale);
  laminate::ScaleElements(laminate::Required(m_pVertices), dScale);
}

int CBDsurface::bChkArcAndArc() const {
  // The arc at a slot, or null for a point or a vertex that does not fit its class.
  const auto arcOf = [](const CBDvertex& vertex) {
    return laminate::SaysPoint(vertex) ? nullptr : laminate::As<const CBDvertexArc>(vertex);
  };
  const CBDvertex* pFirst = nullptr;
  const CBDvertexArc* pBefore = nullptr;
  for (const CBDvertex* p : laminate::Required(m_pVertices)) {
    if (p == nullptr) continue;
    const CBDvertexArc* pArc = arcOf(*p);
    if (pFirst == nullptr) {
      pFirst = p;
    } else if (pBefore != nullptr && pArc != nullptr && pBefore->m_ptEnd == pArc->m_ptBegin) {
      return 1;
    }
    pBefore = pArc;
  }
  if (pFirst == nullptr || pBefore == nullptr) return 0;
  const CBDvertexArc* pArc = arcOf(*pFirst);
  return pArc != nullptr && pBefore->m_ptEnd == pArc->m_ptBegin ? 1 : 0;
}

void CBDsurface::vGiveTarcValueForAllElement(double d) {
  for (CBDvertex* p : laminate::Required(m_pVertices)) {
    if (p == nullptr || !laminate::SaysPoint(*p)) continue;
    if (auto* pPoint = laminate::As<CBDvertexPt>(*p)) pPoint->m_dTarc = d;
  }
}
