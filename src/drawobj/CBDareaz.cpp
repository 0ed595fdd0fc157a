#include "drawobj/CBDareaz.h"

#include <algorithm>

#include "base/TextOut.h"
#include "drawobj/ShapeTools.h"

CBDareaz::CBDareaz() { m_sKind = "AREA"; }
CBDareaz::~CBDareaz() { delete m_pVertices; }

int CBDareaz::nPrint2File(FILE* fp, int mode) {
  return laminate::PrintTo(fp, [&](laminate::TextOut& out) { Write(out, mode); });
}

void CBDareaz::Write(laminate::TextOut& out, int) {
  out.Print<
      "(area\n"
      ")\n">();
}

CBDareaz* CBDareaz::pCopy() const {
  auto pCopy = std::make_unique<CBDareaz>();
  std::copy(std::begin(m_adSpare), std::end(m_adSpare), std::begin(pCopy->m_adSpare));
  if (m_pVertices != nullptr) {
    pCopy->m_pVertices = new CBDvertexArray;
    laminate::CopyElements(*m_pVertices, *pCopy->m_pVertices);
  }
  return pCopy.release();
}

void CBDareaz::vMoveRotate(double dX, double dY, double dAngle, CString sSide) {
  if (m_pVertices != nullptr) laminate::MoveElements(*m_pVertices, dX, dY, dAngle, sSide);
}

void CBDareaz::vSetScale(double dScale) {
  if (m_pVertices != nullptr) laminate::ScaleElements(*m_pVertices, dScale);
}
