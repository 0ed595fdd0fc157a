#include "LoadBoard.h"

#include <string_view>

#include "base/CException.h"

namespace laminate::cli {

bool ReportFault(Console& console, const LoadStatus& status) {
  if (status.IsOk()) return false;
  console.Error({std::string(status.m_sFile.View()), status.m_nLine, status.m_nColumn}, status.m_sText.View());
  return true;
}

bool RunLoad(Console& console, Host& host, const std::string& sFile, const std::function<void()>& load,
             const std::function<const LoadStatus&()>& status) {
  std::string sRaised;
  try {
    load();
  } catch (const CInvalidArgException& e) {
    sRaised = e.what();
  }
  host.Settle();
  if (ReportFault(console, status())) return false;
  if (!sRaised.empty()) console.Error({sFile}, sRaised);
  // A good load may still have left its working folder behind.
  if (const CString& sText = status().m_sText; !sText.IsEmpty()) console.Warning({sFile}, sText.View());
  return sRaised.empty();
}

void Prepare(CPC_BD_Cls_Get& facade, Host& host) {
  facade.m_pLogFile = host.Log();
  facade.SetProgressPtr(host.BoardProgress(), host.FootprintProgress());
  CBDesigner& root = *facade.pGetBDesigner();
  root.m_pLogFile = host.Log();
  root.vSetPCFProgressPtr(host.BoardProgress());
}

std::unique_ptr<CPC_BD_Cls_Get> LoadBoard(Console& console, Host& host, const BoardFiles& files, bool& bGood) {
  auto pFacade = std::make_unique<CPC_BD_Cls_Get>();
  Prepare(*pFacade, host);
  const CString sPcf(std::string_view(files.pcf));
  if (files.ftf.empty()) {
    CBDesigner& board = *pFacade->pGetBDesigner();
    bGood = RunLoad(
        console, host, files.pcf, [&] { board.vParsePCF(sPcf); },
        [&]() -> const LoadStatus& { return board.GetLoadStatus(); });
  } else {
    pFacade->vSetFtfFilePath(CString(std::string_view(files.ftf)));
    pFacade->vSetPcfFilePath(sPcf);
    bGood = RunLoad(
        console, host, files.pcf, [&] { pFacade->vParseFtfAndPcf(1); },
        [&]() -> const LoadStatus& { return pFacade->GetLoadStatus(); });
  }
  // The log is closed by now, and the controls die with the host.
  pFacade->m_pLogFile = nullptr;
  pFacade->SetProgressPtr(nullptr, nullptr);
  CBDesigner& root = *pFacade->pGetBDesigner();
  root.m_pLogFile = nullptr;
  root.vSetPCFProgressPtr(nullptr);
  return pFacade;
}

std::unique_ptr<CPC_BD_Cls_Get> RequireBoard(Console& console, Host& host, const BoardFiles& files) {
  bool bGood = false;
  auto pFacade = LoadBoard(console, host, files, bGood);
  if (!bGood) throw Failure{kFailed};
  return pFacade;
}

}  // namespace laminate::cli
