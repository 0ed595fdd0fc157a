#pragma once
#include "facade/CBDesigner.h"
#include "save/FieldsBoard.h"
#include "save/FieldsTechnology.h"

namespace laminate {

template <>
struct FieldsOf<CBDesigner>
    : Fields<&CBDesigner::m_pTechnology, &CBDesigner::m_pFtfTechnology, &CBDesigner::m_pFootprintContainer,
             &CBDesigner::m_pBoardContainer, &CBDesigner::m_pParameter, &CBDesigner::m_pLibraryEntities,
             &CBDesigner::m_sVersion, &CBDesigner::m_nComponentFileCount, &CBDesigner::m_nLayerFileCount> {};

}  // namespace laminate
