#include "facade/CBDesigner.h"

#include <memory>

#include "base/CException.h"
#include "board/CBDboardContainer.h"
#include "board/CBDlibraryEntities.h"
#include "board/CBDnet.h"
#include "board/CBDparameter.h"
#include "board/ComponentTranslator.h"
#include "board/LayerTranslator.h"
#include "board/OthersTranslator.h"
#include "designdata/CVRXoutPrfPart.h"
#include "drawobj/DrawObjReader.h"
#include "export/DesignExport.h"
#include "reader/BoardFileLoad.h"
#include "reader/BoardFileSplitter.h"
#include "reader/CECadCls.h"
#include "reader/Grammar.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDtechnologyContainer.h"
#include "technology/FootprintFileLoad.h"

using laminate::Required;

namespace {

// The shapes inside board assemblies go to the layout. Without one, only such a shape raises.
CBDdrawObjArray* BoardShapes(const CBDesigner& root) {
  return root.m_pBoardContainer == nullptr ? nullptr : root.m_pBoardContainer->m_pDrawObjArray;
}

laminate::FootprintFileTarget FootprintTarget(const CBDesigner& root, std::FILE* const* pLogFile,
                                              laminate::LoadStatus& status) {
  return {Required(root.m_pFtfTechnology), Required(root.m_pFootprintContainer), [&root] { return BoardShapes(root); },
          pLogFile, status};
}

}  // namespace

CBDesigner::CBDesigner()
    : m_bInQuote(0), m_pPCFProgress(nullptr), m_nComponentFileCount(0), m_nLayerFileCount(0), m_pLogFile(nullptr) {
  auto pTechnology = std::make_unique<CBDtechnologyContainer>();
  auto pFtfTechnology = std::make_unique<CBDtechnologyContainer>();
  auto pFootprintContainer = std::make_unique<CBDfootprintContainer>();
  auto pBoardContainer = std::make_unique<CBDboardContainer>();
  auto pParameter = std::make_unique<CBDparameter>();
  auto pLibraryEntities = std::make_unique<CBDlibraryEntities>();
  m_sVersion = "2.0";
  m_pTechnology = pTechnology.release();
  m_pFtfTechnology = pFtfTechnology.release();
  m_pFootprintContainer = pFootprintContainer.release();
  m_pBoardContainer = pBoardContainer.release();
  m_pParameter = pParameter.release();
  m_pLibraryEntities = pLibraryEntities.release();
}

CBDesigner::~CBDesigner() {
  delete m_pFootprintContainer;
  delete m_pTechnology;
  delete m_pFtfTechnology;
  delete m_pBoardContainer;
  delete m_pParameter;
  delete m_pLibraryEntities;
}

double CBDesigner::dDBUnit2Double(CString sToken) { return laminate::LengthOf(sToken.View()); }

CString CBDesigner::sGetLayerTypeFromSubLayer(CString sName) {
  return Required(m_pTechnology).sGetLayerTypeFromSubLayer(sName);
}

CVRXoutPrfPart* CBDesigner::pGetBDoutPrfPart(CVRXoutPrfPartArray* pParts, CString sPinAssign) {
  return laminate::FindPartByPinAssign(pParts, sPinAssign);
}

int CBDesigner::nGetBraceCount(CString sLine) { return laminate::BraceCount(sLine.View(), m_bInQuote); }

void CBDesigner::vSeparaePCFIntoSeveralFile(CString sPath) {
  m_status = {};
  laminate::SplitState state{m_bInQuote, m_nComponentFileCount, m_nLayerFileCount, m_status};
  laminate::SplitBoardFile(sPath, state);
}

void CBDesigner::vSeparaeFTFIntoSeveralFile(CString sPath) {
  m_status = {};
  laminate::SplitState state{m_bInQuote, m_nComponentFileCount, m_nLayerFileCount, m_status};
  laminate::SplitFootprintFile(sPath, state);
}

void CBDesigner::vParsePCF(CString sPath) {
  m_status = {};
  CBDboardContainer& board = Required(m_pBoardContainer);
  // A host that took the nets may load again.
  if (board.m_pNetArray == nullptr) board.m_pNetArray = new CBDnetArray;
  laminate::BoardFileLoad load{sPath,
                               m_pLogFile,
                               m_pPCFProgress,
                               m_bInQuote,
                               m_nComponentFileCount,
                               m_nLayerFileCount,
                               m_status,
                               [this](CECadCls* pReader) { return nReadOtherAndPutInVDB(pReader); },
                               [this](CECadClsLvl* pNode) { nReadComponentAndPutInVDB(pNode); },
                               [this](CECadClsLvl* pNode) { nReadBoardLayerAndPutInVDB(pNode); }};
  laminate::LoadBoardFile(load);
}

int CBDesigner::nReadOtherAndPutInVDB(CECadCls* pReader) {
  laminate::OthersTarget target{m_sVersion, m_pTechnology, m_pBoardContainer, m_pParameter, m_pLibraryEntities};
  return laminate::ReadOthers(pReader, target);
}

int CBDesigner::nReadBoardLayerAndPutInVDB(CECadClsLvl* pNode) {
  return laminate::ReadBoardLayer(pNode, Required(m_pBoardContainer));
}

int CBDesigner::nReadComponentAndPutInVDB(CECadClsLvl* pNode) {
  return laminate::ReadComponent(pNode, Required(m_pBoardContainer));
}

void CBDesigner::vParseFTF(CString sPath) {
  m_status = {};
  laminate::FootprintFileTarget target = FootprintTarget(*this, &m_pLogFile, m_status);
  laminate::LoadFootprintFile(sPath, target);
}

void CBDesigner::vParseFTFInKOTRAndGetFootprints(CString sPath, CStringArray& arrNames) {
  m_status = {};
  laminate::FootprintFileTarget target = FootprintTarget(*this, nullptr, m_status);
  laminate::LoadFootprintsByName(sPath, arrNames, target);
}

void CBDesigner::vParseFTFInKOTRAndGetPadsAndPadstacks(CString sPath) {
  m_status = {};
  laminate::FootprintFileTarget target = FootprintTarget(*this, nullptr, m_status);
  laminate::LoadPadsAndPadstacks(sPath, target);
}

CBDdrawObj* CBDesigner::pCECadClsLvl2CBDdrawObj(CECadClsLvl* pNode, int nLayerNumber, CString sLayerName,
                                                CString sLayerType, int bRefer) {
  const laminate::ShapeContext context{nLayerNumber, sLayerName, sLayerType, bRefer, BoardShapes(*this)};
  return laminate::ReadDrawObj(Required(pNode), context).release();
}

void CBDesigner::vInsertVertexIntoCBDvertexArray(CECadClsLvl* pNode, CBDvertexArray* pArray) {
  laminate::ReadVertices(Required(pNode), Required(pArray));
}

int CBDesigner::nPrint2File(CString sPath, CBDesigner*, CVRXoutPackageArray* pPackages, CVRXoutPrfPartArray* pParts,
                            CVRXoutPrfPinAssignArray* pPinAssigns, CVRXoutPrfFunctionArray* pFunctions) {
  laminate::ExportDesign(sPath, {m_pTechnology, m_pBoardContainer, m_pParameter, m_pLibraryEntities,
                                 m_pFootprintContainer, pPackages, pParts, pPinAssigns, pFunctions});
  return 0;
}

// The writer of the library section needs the root's other containers, and so it stands where the root is known.
int CBDlibraryEntities::nPrint2File(FILE* fp, CBDesigner* pBDesigner) {
  const CBDesigner& root = Required(pBDesigner);
  return laminate::PrintTo(fp, [&](laminate::TextOut& out) {
    Write(out, Required(root.m_pBoardContainer), Required(root.m_pFootprintContainer));
  });
}
