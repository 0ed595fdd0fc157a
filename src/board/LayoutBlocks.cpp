#include "board/LayoutBlocks.h"

#include <utility>

#include "board/LayerForms.h"

namespace laminate {

LayoutBlocks::Step LayoutBlocks::Next(const CBDdrawObj& shape) {
  const bool bFirst = std::exchange(m_bFirst, false);
  if (shape.m_nLayerNumber != 0) {
    if (!bFirst && shape.m_nLayerNumber == m_nNumber) return {false, Header::none};
    m_nNumber = shape.m_nLayerNumber;
    return {!bFirst, Header::conductive};
  }
  if (!bFirst && shape.m_sLayerName == m_sName) return {false, Header::none};
  m_sName = shape.m_sLayerName;
  if (shape.m_sLayerType == kNonConductive) return {!bFirst, Header::nonConductive};
  if (shape.m_sLayerType == kSystemLayer) return {!bFirst, Header::systemLayer};
  // Any other type opens nothing, and yet a bracket closes it in the end: the form is like that.
  return {!bFirst, Header::none};
}

}  // namespace laminate
