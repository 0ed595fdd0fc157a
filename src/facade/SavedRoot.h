#pragma once
#include "facade/CBDesigner.h"
#include "save/FreshForms.h"

namespace laminate {

/// What a saver takes of a root.
inline SavedDesign SavedRoot(const CBDesigner& root) {
  return {&root.m_sVersion,       root.m_pTechnology, root.m_pFtfTechnology,   root.m_pFootprintContainer,
          root.m_pBoardContainer, root.m_pParameter,  root.m_pLibraryEntities, root.m_nLayerFileCount};
}

}  // namespace laminate
