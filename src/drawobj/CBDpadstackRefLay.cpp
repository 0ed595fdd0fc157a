#include "drawobj/CBDpadstackRefLay.h"

#include <memory>

#include "base/TextOut.h"

CBDpadstackRefLay::~CBDpadstackRefLay() = default;

int CBDpadstackRefLay::nPrint2File(FILE* fp) {
  return laminate::PrintTo(fp, [&](laminate::TextOut& out) { Write(out); });
}

void CBDpadstackRefLay::Write(laminate::TextOut& out) const {
  out.Print<"(layerNumber %d (status %s))\n">(m_nLayerNumber, m_sStatus);
}

// Visibility does not survive a copy.
CBDpadstackRefLay* CBDpadstackRefLay::pCopy() const {
  auto pCopy = std::make_unique<CBDpadstackRefLay>();
  pCopy->m_nLayerNumber = m_nLayerNumber;
  pCopy->m_sStatus = m_sStatus;
  pCopy->m_sLayerName = m_sLayerName;
  return pCopy.release();
}
