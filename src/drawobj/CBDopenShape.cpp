#include "drawobj/CBDopenShape.h"

#include "base/TextOut.h"
#include "drawobj/ShapeGrammar.h"
#include "drawobj/ShapeTools.h"

CBDopenShape::CBDopenShape() : m_pVertices(new CBDvertexArray) { m_sKind = "OPENSHAPE"; }
CBDopenShape::~CBDopenShape() { delete m_pVertices; }

namespace laminate {
namespace {

constexpr auto kOpenShape = MakeForm<CBDopenShape>(Length<&CBDopenShape::m_dOutlineWidth>("outlineWidth"),
                                                   Vertices<&CBDopenShape::m_pVertices>("vertex"));

}  // namespace

// It takes over nothing of the layer of its surface.
std::unique_ptr<CBDopenShape> ReadOpenShape(const CECadClsLvl& node) {
  auto pShape = std::make_unique<CBDopenShape>();
  WalkChildren(kOpenShape, node, *pShape);
  pShape->m_pVertices->FreeExtra();
  return pShape;
}

template <>
std::vector<FormView<CBDopenShape>> Grammar() {
  return {View<kOpenShape>()};
}

}  // namespace laminate

int CBDopenShape::nPrint2File(FILE* fp) {
  return laminate::PrintTo(fp, [&](laminate::TextOut& out) { Write(out); });
}

void CBDopenShape::Write(laminate::TextOut& out) const {
  out.Print<
      "(openShape\n"
      "(outlineWidth %.5f)\n"
      "(vertex\n">(m_dOutlineWidth);
  if (m_pVertices != nullptr) {
    for (const CBDvertex* p : *m_pVertices) {
      if (p != nullptr) p->Write(out, 2, 0);
    }
  }
  out.Print<
      ")\n"
      ")\n">();
}

CBDopenShape* CBDopenShape::pCopy() const {
  auto pCopy = std::make_unique<CBDopenShape>();
  pCopy->m_dOutlineWidth = m_dOutlineWidth;
  laminate::CopyElements(laminate::Required(m_pVertices), *pCopy->m_pVertices);
  return pCopy.release();
}

void CBDopenShape::vMoveRotate(double dX, double dY, double dAngle, CString sSide) {
  if (m_pVertices != nullptr) laminate::MoveElements(*m_pVertices, dX, dY, dAngle, sSide);
}

void CBDopenShape::vSetScale(double dScale) {
  if (m_pVertices != nullptr) laminate::ScaleElements(*m_pVertices, dScale);
}
