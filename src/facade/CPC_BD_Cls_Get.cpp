#include "facade/CPC_BD_Cls_Get.h"

#include <utility>

#include "base/CException.h"
#include "base/XTokenString.h"
#include "board/CBDboardContainer.h"
#include "board/CBDnet.h"
#include "facade/CBDesigner.h"

using laminate::Required;
using laminate::SendPosition;

namespace {

// Runs a load of the root and keeps its fault, also when it ends by an exception.
template <class Load>
void Run(CBDesigner& root, laminate::LoadStatus& status, Load&& load) {
  try {
    load();
  } catch (...) {
    status.Set(root.GetLoadStatus());
    throw;
  }
  status.Set(root.GetLoadStatus());
}

}  // namespace

CPC_BD_Cls_Get::CPC_BD_Cls_Get() : m_pBDesigner(new CBDesigner) {}

CPC_BD_Cls_Get::~CPC_BD_Cls_Get() {
  delete m_pBDesigner;
  m_pLogFile = nullptr;
}

void CPC_BD_Cls_Get::vParseFtfAndPcf(const int& bProgress) {
  // The host may have lent a variable that its progress control changes.
  const bool bSend = bProgress != 0;
  m_status = {};
  if (m_sFtfFilePath.IsEmpty() || m_sPcfFilePath.IsEmpty()) {
    const CString sText = "No definition for PCF/FTF file path";
    m_status.Set(laminate::LoadStatus::Result::cannotOpen, CString(), 0, 0, sText);
    MessageBoxA(nullptr, sText, "WARNING", MB_OK | MB_ICONEXCLAMATION);
    return;
  }
  CBDesigner& root = Required(m_pBDesigner);
  if (m_pLogFile != nullptr) root.m_pLogFile = m_pLogFile;
  Run(root, m_status, [&] { root.vParseFTF(m_sFtfFilePath); });
  if (bSend) {
    SendPosition(m_pFtfProgress, 100);
    root.vSetPCFProgressPtr(m_pPcfProgress);
  }
  Run(root, m_status, [&] { root.vParsePCF(m_sPcfFilePath); });
  if (bSend) SendPosition(m_pPcfProgress, 100);
  root.m_pLogFile = nullptr;
}

CBDnetArray* CPC_BD_Cls_Get::pGetNetArrayFromPcf(CString sPcfPath) {
  m_status = {};
  CBDesigner& root = Required(m_pBDesigner);
  Run(root, m_status, [&] { root.vParsePCF(sPcfPath); });
  CBDnetArray* pNets = std::exchange(Required(root.m_pBoardContainer).m_pNetArray, nullptr);
  // A control may have taken them from within the load.
  return pNets != nullptr ? pNets : new CBDnetArray;
}

CString CPC_BD_Cls_Get::sGetNthColumn(CString sLine, int nColumn) {
  return CString(laminate::NthColumn(sLine.View(), nColumn));
}
