// The design data of real boards: read, written, archived, read back. LAMINATE_DESIGNS names the folder of the designs.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "base/Designs.h"
#include "designdata/DesignDataTestSupport.h"

namespace {

namespace fs = std::filesystem;
using laminate::test::DesignFile;
using laminate::test::DesignNames;
using laminate::test::NameOfDesignTest;

std::string Content(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file.good()) << path;
  return {std::istreambuf_iterator<char>(file), {}};
}

class DesignFiles : public testing::TestWithParam<std::string> {
 protected:
  DesignFiles() {
    for (const auto& [szEnding, kind] : {std::pair(".pkf", Kind::package), std::pair(".cdf", Kind::parts),
                                         std::pair(".rul", Kind::rules), std::pair(".cmp", Kind::components)}) {
      LoadPath(m_data, kind, DesignFile(GetParam(), szEnding).c_str());
      EXPECT_TRUE(m_data.GetLoadStatus().IsOk()) << szEnding << ": " << m_data.GetLoadStatus().m_sText.GetString();
    }
  }
  CPC_BD_OutClsGet m_data;
};

// Every opening line of a record, counted by itself, gave a record.
TEST_P(DesignFiles, HoldAsManyRecordsAsOpeningLines) {
  const auto count = [](const char* szEnding, std::string_view sKeyword) {
    const std::string text = "\n" + Content(DesignFile(GetParam(), szEnding));
    const std::string wanted = "\n" + std::string(sKeyword) + " ";
    INT_PTR n = 0;
    for (std::size_t i = text.find(wanted); i != std::string::npos; i = text.find(wanted, i + 1)) ++n;
    return n;
  };
  EXPECT_GT(m_data.m_pPackageArray->GetSize(), 0);
  EXPECT_EQ(m_data.m_pPackageArray->GetSize(), count(".pkf", "(package"));
  EXPECT_EQ(m_data.m_pPrfPartArray->GetSize(), count(".cdf", "(part"));
  EXPECT_EQ(m_data.m_pPrfPinAssignArray->GetSize(), count(".cdf", "(pinAssign"));
  EXPECT_EQ(m_data.m_pPrfFunctionArray->GetSize(), count(".cdf", "(function"));
  EXPECT_EQ(m_data.m_pRufNetArray->GetSize(), count(".rul", "(net"));
  EXPECT_EQ(m_data.m_pRufCompArray->GetSize(), count(".rul", "(comp"));
  INT_PTR nLayers = 0;
  for (const char* szKind : {"(conductor", "(dielectric", "(physical"}) nLayers += count(".rul", szKind);
  EXPECT_GT(nLayers, 0);
  EXPECT_EQ(m_data.m_pStackup->m_pLayerArray->GetSize(), nLayers);
  EXPECT_EQ(m_data.m_pBoardSpec->m_aGridDef.GetSize(), count(".rul", "(gridDef"));
  EXPECT_EQ(m_data.m_pLcdbCmpCompArray->GetSize(), count(".cmp", "$COMP"));
}

TEST_P(DesignFiles, ComeBackFromAnArchive) {
  const std::string image = Image(m_data);
  CPC_BD_OutClsGet loaded;
  EXPECT_EQ(LoadImage(loaded, image), 0u);
  // What an image leaves out: ports and gates of parts, the loss tangents, whether electrical nets are a pair.
  for (CVRXoutPrfPart* p : *m_data.m_pPrfPartArray) {
    p->m_pPortArray->DeleteAll();
    p->m_pGateDefArray->DeleteAll();
  }
  EXPECT_TRUE(Show(loaded, laminate::kNotInImage) == Show(m_data, laminate::kNotInImage));
  for (const CVRXoutRufStackupLayer* p : *loaded.m_pStackup->m_pLayerArray) EXPECT_EQ(p->m_dLossTangent, 0.0);
  for (const CVRXoutRufRuleElectricalNet* p : *loaded.m_pElectricalNetArray) EXPECT_EQ(p->m_bPair, 0);
  EXPECT_TRUE(*loaded.m_pPackageArray == *m_data.m_pPackageArray);
  EXPECT_TRUE(*loaded.m_pLcdbCmpCompArray == *m_data.m_pLcdbCmpCompArray);
  EXPECT_TRUE(*loaded.m_pPrfFunctionArray == *m_data.m_pPrfFunctionArray);
  EXPECT_TRUE(*loaded.m_pPrfPinAssignArray == *m_data.m_pPrfPinAssignArray);
  EXPECT_TRUE(*loaded.m_pRufCompArray == *m_data.m_pRufCompArray);
  EXPECT_TRUE(*loaded.m_pRufNetArray == *m_data.m_pRufNetArray);
  EXPECT_TRUE(*loaded.m_pRufRuleArray == *m_data.m_pRufRuleArray);
  EXPECT_TRUE(*loaded.m_pRufRuleBoardArray == *m_data.m_pRufRuleBoardArray);
  EXPECT_TRUE(*loaded.m_pDesignRuleStackArray == *m_data.m_pDesignRuleStackArray);
  EXPECT_TRUE(*loaded.m_pTraceRuleStackArray == *m_data.m_pTraceRuleStackArray);
  // Parts of different facades never share their arrays.
  EXPECT_FALSE(*loaded.m_pPrfPartArray == *m_data.m_pPrfPartArray);
  EXPECT_TRUE(Image(loaded) == Image(m_data));
}

TEST_P(DesignFiles, CopiesHoldTheSame) {
  const std::unique_ptr<CPC_BD_OutClsGet> pCopy(m_data.clone());
  EXPECT_TRUE(Show(*pCopy->m_pPackageArray) == Show(*m_data.m_pPackageArray));
  EXPECT_TRUE(Show(*pCopy->m_pPrfPartArray) == Show(*m_data.m_pPrfPartArray));
  EXPECT_TRUE(Show(*pCopy->m_pRufNetArray) == Show(*m_data.m_pRufNetArray));
  EXPECT_TRUE(*pCopy->m_pPrfPartArray == *m_data.m_pPrfPartArray);
  EXPECT_TRUE(*pCopy->m_pPrfPinAssignArray == *m_data.m_pPrfPinAssignArray);
}

template <class Array>
std::string WrittenAll(Array& arr) {
  return StreamText([&](FILE* fp) {
    for (auto* p : arr) p->nPrint2File(fp);
    return 0;
  });
}

TEST_P(DesignFiles, WrittenPackagesComeBackButForWhatTheFormatDrops) {
  const auto pAgain = Loaded(Kind::package, WrittenAll(*m_data.m_pPackageArray));
  for (CVRXoutPackage* p : *m_data.m_pPackageArray) {
    if (p->m_sType == "user-defined" || p->m_sName.IsEmpty()) p->m_sType = "UNDEF";
    bool bFirst = true;
    for (CVRXoutPackageMountForm* pForm : *p->m_pMountFormArray) {
      if (!std::exchange(bFirst, false)) pForm->m_sMountForm = "";
      if (pForm->m_sSpec.IsEmpty()) pForm->m_sSpec = "default";
    }
  }
  EXPECT_EQ(Show(*pAgain->m_pPackageArray), Show(*m_data.m_pPackageArray));
  EXPECT_EQ(WrittenAll(*pAgain->m_pPackageArray), WrittenAll(*m_data.m_pPackageArray));
}

TEST_P(DesignFiles, WrittenPartsComeBackButForWhatTheFormatDrops) {
  const std::string first = WrittenAll(*m_data.m_pPrfPartArray);
  const auto pAgain = Loaded(Kind::parts, first);
  for (CVRXoutPrfPart* p : *m_data.m_pPrfPartArray) {
    p->m_sFootprintRef = "";
    p->m_pGateDefArray->DeleteAll();
    p->m_pStockPropertyArray->DeleteAll();
    for (CVRXoutPrfPartPort* pPort : *p->m_pPortArray) pPort->m_nSymbPinId = 0;
    std::vector<CLProperty*> versions;
    for (CLProperty* pProperty : *p->m_pPropertyArray) {
      if (pProperty->m_sItem == "uver") {
        versions.push_back(pProperty);
      } else if (!p->bIsInSkipList(pProperty->m_sItem)) {
        pProperty->m_sComment.Remove('(');
        pProperty->m_sComment.Remove(')');
      }
    }
    // The versions come first.
    for (CLProperty* pVersion : versions) p->m_pPropertyArray->Remove(pVersion);
    for (std::size_t i = 0; i < versions.size(); ++i) {
      p->m_pPropertyArray->InsertAt(static_cast<INT_PTR>(i), versions[i]);
    }
  }
  EXPECT_EQ(Show(*pAgain->m_pPrfPartArray), Show(*m_data.m_pPrfPartArray));
  // A second write of what came back is the same text.
  EXPECT_EQ(WrittenAll(*pAgain->m_pPrfPartArray), first);
}

#ifdef LAMINATE_WITH_EXPECTED
TEST_P(DesignFiles, GiveTheExpectedImage) {
  const fs::path folder = fs::path(std::getenv("LAMINATE_EXPECTED")) / GetParam();
  const std::string expected = Content(folder / "design-data.bin");
  const std::string image = Image(m_data);
  const auto where = std::mismatch(image.begin(), image.end(), expected.begin(), expected.end());
  EXPECT_TRUE(image == expected) << image.size() << " bytes against " << expected.size() << ", different from byte "
                                 << where.first - image.begin();
}
#endif

INSTANTIATE_TEST_SUITE_P(Designs, DesignFiles, testing::ValuesIn(DesignNames()), NameOfDesignTest);

}  // namespace
