// Facades on threads of their own: they share nothing but the process's data folder.
#include <atomic>
#include <thread>

#include "base/TestFolder.h"
#include "facade/CPC_BD_Cls_Get.h"
#include "facade/FacadeTestSupport.h"
#include "facade/WholeDesign.h"

namespace {

namespace fs = std::filesystem;

TEST(Threads, LoadAndWriteDesignsOfOneName) {
  constexpr int kThreads = 2;
  constexpr int kRounds = 20;
  const TempFolder folder;
  std::vector<std::string> places;
  for (int n = 0; n < kThreads; ++n) {
    const std::string sPlace = "place" + std::to_string(n);
    fs::create_directory(folder.Path(sPlace));
    folder.Write(sPlace + "/board.pcf", Numbered(kWholeBoard, n));
    folder.Write(sPlace + "/board.ftf", Numbered(kWholeLibrary, n));
    places.push_back(folder.Path(sPlace));
  }
  std::atomic<int> nGood = 0;
  const auto work = [&](int n) {
    const std::string& sPlace = places[static_cast<std::size_t>(n)];
    for (int i = 0; i < kRounds; ++i) {
      CPC_BD_Cls_Get facade;
      facade.vSetFtfFilePath(CString(sPlace + "/board.ftf"));
      facade.vSetPcfFilePath(CString(sPlace + "/board.pcf"));
      facade.vParseFtfAndPcf(0);
      CBDesigner& root = *facade.pGetBDesigner();
      const CBDboardContainer& board = *root.m_pBoardContainer;
      const CString sN = CString(std::to_string(n));
      const bool bGood = facade.GetLoadStatus().IsOk() && Counted(root) == CountedWhole(n) &&
                         board.m_pNetArray->GetAt(1)->m_sName == "NET" + sN &&
                         board.m_pComponentArray->GetAt(1)->m_sReference == "C2" + sN &&
                         root.m_pFootprintContainer->m_pFootprintArray->GetAt(1)->m_sName == "F2" + sN;
      root.nPrint2File(CString(sPlace + "/written"), nullptr, nullptr, nullptr, nullptr, nullptr);
      nGood += bGood ? 1 : 0;
    }
  };
  std::vector<std::thread> threads;
  for (int n = 0; n < kThreads; ++n) threads.emplace_back(work, n);
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(nGood, kThreads * kRounds);
  for (int n = 0; n < kThreads; ++n) {
    const std::string sWritten = laminate::test::ReadFile(places[static_cast<std::size_t>(n)] + "/written.pcf");
    EXPECT_NE(sWritten.find("(net \"NET" + std::to_string(n) + "\"\n"), std::string::npos);
    EXPECT_EQ(sWritten.find("NET" + std::to_string(1 - n)), std::string::npos);
  }
}

TEST(Threads, MayDeleteWhatAnotherOneLoaded) {
  const TempFolder folder;
  const CString sPcf = folder.Write("board.pcf", Numbered(kWholeBoard, 1));
  const CString sFtf = folder.Write("board.ftf", Numbered(kWholeLibrary, 1));
  for (int i = 0; i < 5; ++i) {
    auto pFacade = std::make_unique<CPC_BD_Cls_Get>();
    std::thread([&] {
      pFacade->vSetFtfFilePath(sFtf);
      pFacade->vSetPcfFilePath(sPcf);
      pFacade->vParseFtfAndPcf(0);
    }).join();
    EXPECT_EQ(Counted(*pFacade->pGetBDesigner()), CountedWhole(1));
    std::thread([&] { pFacade.reset(); }).join();
    EXPECT_EQ(pFacade, nullptr);
  }
}

}  // namespace
