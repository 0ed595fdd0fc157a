#include "drawobj/CBDline.h"

#include "base/TextOut.h"
#include "drawobj/CBDsurface.h"
#include "drawobj/CBDvertexPt.h"
#include "drawobj/ShapeGrammar.h"
#include "drawobj/ShapeTools.h"

CBDline::CBDline() : m_pVertices(new CBDvertexArray) { m_sKind = "LINE"; }
CBDline::~CBDline() { delete m_pVertices; }

namespace laminate {
namespace {

constexpr auto kDashLine = MakeForm<CBDline>(Real<&CBDline::m_dDash>("dash"), Real<&CBDline::m_dBlank>("blank"));

constexpr auto kLineGeometry =
    MakeForm<CBDline>(Text<&CBDline::m_sPenShape>("penShape"), Vertices<&CBDline::m_pVertices>("vertex"),
                      Text<&CBDline::m_sLineType>("type"), NestedByName<kDashLine>("dashLine"));

constexpr auto kLine =
    MakeForm<CBDline>(Text<&CBDline::m_sNet>("net"), Text<&CBDline::m_sPenShape>("penShape"),
                      Text<&CBDline::m_sThermalData>("thermalData"), Vertices<&CBDline::m_pVertices>("vertex"),
                      AnyFirstFormByName<kLineGeometry, "line">("geometry"));

}  // namespace

template <>
std::unique_ptr<CBDdrawObj> Make<CBDline>(const CECadClsLvl& node, const ShapeContext& context) {
  auto pLine = NewShape<CBDline>(context);
  WalkChildren(kLine, node, *pLine);
  pLine->m_pVertices->FreeExtra();
  return pLine;
}

template <>
std::vector<FormView<CBDline>> Grammar() {
  return {View<kLine>(), View<kLineGeometry>(), View<kDashLine>()};
}

}  // namespace laminate

int CBDline::nPrint2File(FILE* fp, int mode) {
  return laminate::PrintTo(fp, [&](laminate::TextOut& out) { Write(out, mode); });
}

void CBDline::Write(laminate::TextOut& out, int nMode) const {
  if (nMode == 1) {
    out.Print<"(line\n">();
    if (!m_sNet.IsEmpty()) out.Print<"(net %s)\n">(m_sNet);
    out.Print<"(geometry\n">();
  }
  out.Print<"(line\n">();
  if (m_sPenShape == "SQUARE") out.Print<"(penShape SQUARE)\n">();
  out.Print<"(vertex\n">();
  if (m_pVertices != nullptr) {
    const CBDvertex* pFirst = nullptr;
    const CBDvertex* pWaiting = nullptr;  // written once it is known whether another one follows
    for (const CBDvertex* p : *m_pVertices) {
      if (p == nullptr) continue;
      if (pFirst == nullptr) pFirst = p;
      if (pWaiting != nullptr) pWaiting->Write(out, 1, pWaiting == pFirst ? 1 : 0);
      pWaiting = p;
    }
    if (pWaiting != nullptr) pWaiting->Write(out, 1, 1);
  }
  out.Print<
      ")\n"
      ")\n">();
  if (nMode == 1) {
    out.Print<
        ")\n"
        ")\n">();
  }
}

CBDline* CBDline::pCopy() const {
  auto pCopy = std::make_unique<CBDline>();
  pCopy->m_sThermalData = m_sThermalData;
  laminate::CopyElements(laminate::Required(m_pVertices), *pCopy->m_pVertices);
  return pCopy.release();
}

void CBDline::vMoveRotate(double dX, double dY, double dAngle, CString sSide) {
  if (m_pVertices != nullptr) laminate::MoveElements(*m_pVertices, dX, dY, dAngle, sSide);
}

void CBDline::vSetScale(double dScale) {
  if (m_pVertices != nullptr) laminate::ScaleElements(*m_pVertices, dScale);
}

CBDsurface* CBDline::pChangeCBDline2CBDsurface(CBDline* pLine) {
  laminate::Required(pLine);
  auto pSurface = std::make_unique<CBDsurface>();
  delete pSurface->m_pVertices;
  pSurface->m_pVertices = std::exchange(pLine->m_pVertices, nullptr);
  delete pLine;
  return pSurface.release();
}

// The writer asks for the fillet's `m_dFilletWidth`; this asks for its `m_dWidth`.
int CBDline::nGetFilletPtIndex() const {
  const CBDvertexArray& vertices = laminate::Required(m_pVertices);
  for (INT_PTR i = 0; i < vertices.GetSize(); ++i) {
    const CBDvertex* p = vertices.GetAt(i);
    if (p == nullptr || !laminate::SaysPoint(*p)) continue;
    const auto* pPoint = laminate::As<const CBDvertexPt>(*p);
    if (pPoint != nullptr && laminate::Required(pPoint->m_pFillet).m_dWidth != 0) return static_cast<int>(i);
  }
  return -1;
}
