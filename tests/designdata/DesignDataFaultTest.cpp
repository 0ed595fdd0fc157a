// Memory and files that fail while design data is loaded, copied, written and archived.
#include "base/AllocationFault.h"
#include "base/FaultyFileSystem.h"
#include "base/TestFolder.h"
#include "designdata/DesignDataTestSupport.h"

namespace {

using laminate::test::ForEachFailingAllocation;

// Texts of more than fifteen bytes are on the heap.
const std::string kLong = "a text that is too long to be held inside";

const std::pair<Kind, std::string> kFiles[] = {
    {Kind::package, "(unit " + kLong + ")\n(package \"" + kLong + "\"\n(type " + kLong +
                        ")\n(mountForm m\n(footprintRef \"" + kLong + "\")\n(bottomFootprint \"" + kLong +
                        "\")\n(spec \"" + kLong + "\")\n)\n(mountForm n\n)\n)\n(package \"Q\"\n)\n"},
    {Kind::parts,
     "(part \"" + kLong + "\"\n(packageRef \"" + kLong + "\")\n(k \"" + kLong + "\")\n(k \"" + kLong +
         "\")\n(interface\n(port \"1\" (symbPinId 2) (portName \"" + kLong +
         "\") (portType IN))\n)\n(gateDef a G\nx y 1\n(property k v)\n)\n(stockInfo\n(property k v)\n)\n)\n(pinAssign "
         "Q\n(property k \"" +
         kLong +
         "\")\n"
         "(interface\n(port 1 a 2\n)\n(internal\n(funcInst a F\n(port 1 m 2\n)\n)\n)\n(function F\n(property k "
         "v)\n(port 1\n)\n(part B\n(stockInfo x)\n(gateDef a \"" +
         kLong + "\"\n(gateTermDef (portRef 1))\nx y \"" + kLong +
         "\"\nx y 3\n)\n(interface\n(property k v\n)\n(port \"" + kLong + "\")\n)\n)\n"},
    {Kind::rules,
     "(design d (boardSpec (bareBoard (physical ABOVE) (conductor 1 (material \"" + kLong + "\") (place \"" + kLong +
         "\")) (dielectric 1 (material a \"" + kLong + "\")) (baseMaterial \"" + kLong + "\")) (gridDef \"" + kLong +
         "\") (defaultGrid (a \"" + kLong + "\")) (drillingRule (a 1 2)) (patternWidth (w 1 (n \"" + kLong +
         "\"))))\n(rule (holeRule (clearance 1 (e \"" + kLong +
         "\" B))) (solderResistRule (flow (clearance 1 (e A B))))"
         " (qualifiedPadstack P (from \"" +
         kLong + "\")) (layer 1) (enetPair E (electricalNetList (x \"" + kLong + "\"))) (board (a \"" + kLong +
         "\")) (traceRuleStack T (l 1)) (net \"" + kLong + "\" (property colorId \"" + kLong +
         "\") (property k v) (pinList (funcTerm A 1))) (electricalNet E (x A B)) (designRuleStack S (l 1 (r D))))"
         " (assign (comp C (property k \"" +
         kLong + "\") (assign (a b)))))"},
    {Kind::components, "$COMP \"" + kLong + "\"\nsymbolName = A \"" + kLong + "\"\ncomponentType = \"" + kLong +
                           "\"\nfunctionName = \"" + kLong + "\"\ngateCount = 2\npin 1 = IN A,B G 7\npin 2 = IN \"" +
                           kLong + ",B\" G 7\n$COMP_END\n$COMP D\n"},
};

std::unique_ptr<CPC_BD_OutClsGet> Full() {
  auto p = std::make_unique<CPC_BD_OutClsGet>();
  for (const auto& [kind, text] : kFiles) Load(*p, kind, text);
  // More than the pool serves in one block.
  for (int i = 0; i < 300; ++i) p->m_aHostList1.Add(kLong.c_str());
  return p;
}

TEST(DesignDataFault, MemoryFailsInALoad) {
  const laminate::test::TestFolder folder;
  for (const auto& file : kFiles) {
    // Lambdas do not capture structured bindings.
    const auto& kind = file.first;
    const auto& text = file.second;
    const std::string path = folder.Write("file", text);
    const std::string whole = Show(*Loaded(kind, text));
    std::unique_ptr<CPC_BD_OutClsGet> pData;
    const int nFailures = ForEachFailingAllocation(
        [&] {
          pData = nullptr;
          pData = std::make_unique<CPC_BD_OutClsGet>();
          LoadPath(*pData, kind, path.c_str());
        },
        [&] {
          // What is there is sound, and another facade loads the file.
          if (pData != nullptr) {
            const CPC_BD_OutClsGet copy(*pData);
            EXPECT_FALSE(Image(*pData).empty());
          }
          EXPECT_EQ(Show(*Loaded(kind, text)), whole);
        });
    EXPECT_GT(nFailures, 2);
    EXPECT_EQ(Show(*pData), whole);
  }
}

TEST(DesignDataFault, MemoryFailsInACopy) {
  const auto pData = Full();
  const std::string shown = Show(*pData);
  std::unique_ptr<CPC_BD_OutClsGet> pCopy;
  EXPECT_GT(ForEachFailingAllocation([&] { pCopy.reset(pData->clone()); }, [&] { EXPECT_EQ(Show(*pData), shown); }), 0);
  EXPECT_EQ(Show(*pCopy->m_pRufNetArray), Show(*pData->m_pRufNetArray));
}

TEST(DesignDataFault, MemoryFailsInAnArchive) {
  const auto pData = Full();
  const std::string shown = Show(*pData);
  const std::string image = Image(*pData);
  EXPECT_GT(ForEachFailingAllocation([&] { Image(*pData); }, [&] { EXPECT_EQ(Show(*pData), shown); }), 0);
  std::unique_ptr<CPC_BD_OutClsGet> pLoaded;
  EXPECT_GT(ForEachFailingAllocation(
                [&] {
                  pLoaded = nullptr;
                  pLoaded = std::make_unique<CPC_BD_OutClsGet>();
                  LoadImage(*pLoaded, image);
                },
                [&] {
                  if (pLoaded != nullptr) {
                    EXPECT_FALSE(Image(*pLoaded).empty());
                  }
                }),
            2);
  EXPECT_EQ(Show(*pLoaded->m_pRufNetArray), Show(*pData->m_pRufNetArray));
}

TEST(DesignDataFault, MemoryFailsInAWriter) {
  const auto pData = Full();
  CVRXoutPrfPart& part = *pData->m_pPrfPartArray->GetAt(0);
  std::string text;
  const int nFailures = ForEachFailingAllocation(
      [&] {
        // As many equal properties each time.
        part.m_pPropertyArray->DeleteAll();
        for (int i = 0; i < 4; ++i) {
          laminate::AppendOwned(*part.m_pPropertyArray, std::make_unique<CLProperty>("k", kLong.c_str()));
        }
        text.clear();
        laminate::TextOut out(text);
        part.Write(out);
        out.Flush();
      },
      [&] {
        for (const CLProperty* p : *part.m_pPropertyArray) EXPECT_EQ(p->m_sItem, "k");
      });
  EXPECT_GT(nFailures, 2);
  EXPECT_EQ(part.m_pPropertyArray->GetSize(), 1);
  EXPECT_THAT(text, testing::EndsWith("(property \"k\" \"" + kLong + "\")\n)\n"));
}

// Every single file operation of a load, once and for ever.
TEST(DesignDataFault, FilesFailInALoad) {
  using laminate::test::FaultyFileSystem;
  const laminate::test::TestFolder folder;
  for (const auto& [kind, text] : kFiles) {
    const std::string path = folder.Write("file", text);
    const std::string empty = Show(CPC_BD_OutClsGet());
    const std::string whole = Show(*Loaded(kind, text));
    int nFailures = 0;
    for (const auto duration : {FaultyFileSystem::Duration::once, FaultyFileSystem::Duration::forever}) {
      for (int n = 1;; ++n) {
        FaultyFileSystem files(n, EIO, duration);
        CPC_BD_OutClsGet data;
        {
          const laminate::FileSystemScope scope(files);
          LoadPath(data, kind, path.c_str());
        }
        if (!files.HasFailed()) break;
        ++nFailures;
        // All or nothing; a close that fails, and a size that cannot be told, do no harm.
        if (data.GetLoadStatus().IsOk()) {
          EXPECT_EQ(Show(data), whole);
        } else {
          EXPECT_EQ(Show(data), empty);
          EXPECT_EQ(data.GetLoadStatus().m_result, laminate::LoadStatus::Result::cannotOpen);
        }
        LoadPath(data, kind, path.c_str());
        EXPECT_TRUE(data.GetLoadStatus().IsOk());
      }
    }
    EXPECT_GE(nFailures, 4);
  }
}

// With diagnostics too every failure is the platform's.
TEST(DesignDataFault, MemoryFailsWhereRemarksAreMade) {
  const laminate::test::TestFolder folder;
  for (const auto& [kind, text] : kFiles) {
    const std::string path = folder.Write("file", text + "\n@\n(" + kLong + "\n");
    int nFailures = 0;
    for (long n = 1;; ++n) {
      laminate::Diagnostics diagnostics;
      CPC_BD_OutClsGet data;
      bool bFailed = false;
      bool bPlatforms = false;
      {
        const laminate::test::AllocationFault fault(n, laminate::test::AllocationFault::Duration::once);
        try {
          data.SetDiagnostics(&diagnostics);
          LoadPath(data, kind, path.c_str());
          data.ReportUndefinedNames();
          bPlatforms = true;
        } catch (const CMemoryException&) {
          bPlatforms = true;
        } catch (const std::bad_alloc&) {
        }
        bFailed = fault.HasFailed();
      }
      EXPECT_TRUE(bPlatforms) << n;
      if (!bFailed) {
        EXPECT_FALSE(diagnostics.list.empty());
        break;
      }
      ++nFailures;
    }
    EXPECT_GT(nFailures, 5);
  }
}

TEST(DesignDataFault, MemoryFailsInAnAssignment) {
  const auto pData = Full();
  const std::string rules = Show(*pData->m_pRufRuleArray);
  CPC_BD_OutClsGet target(*pData);
  Load(target, Kind::package, "(package mine\n)\n");
  EXPECT_GT(ForEachFailingAllocation(
                [&] {
                  target = *pData;
                  CVRXoutPackageArray packages(*pData->m_pPackageArray);
                  packages = *target.m_pPackageArray;
                },
                [&] {
                  // What the target holds is sound.
                  EXPECT_FALSE(Image(target).empty());
                  EXPECT_EQ(Show(*pData->m_pRufRuleArray), rules);
                }),
            0);
  EXPECT_TRUE(*target.m_pPackageArray == *pData->m_pPackageArray);
}

TEST(DesignDataFault, MemoryFailsInALoadOverAFullFacade) {
  const std::string image = Image(*Full());
  std::unique_ptr<CPC_BD_OutClsGet> pTarget;
  int nFailures = 0;
  for (long n = 1;; ++n) {
    pTarget = Full();
    bool bFailed = false;
    {
      const laminate::test::AllocationFault fault(n, laminate::test::AllocationFault::Duration::once);
      try {
        LoadImage(*pTarget, image);
      } catch (const CMemoryException&) {
      } catch (const std::bad_alloc&) {  // of the test's own copy of the image
      }
      bFailed = fault.HasFailed();
    }
    if (!bFailed) break;
    ++nFailures;
    EXPECT_FALSE(Image(*pTarget).empty());
  }
  EXPECT_GT(nFailures, 2);
  CPC_BD_OutClsGet fresh;
  LoadImage(fresh, image);
  EXPECT_EQ(Image(*pTarget), Image(fresh));
}

}  // namespace
