#include "technology/FootprintFileLoad.h"

#include "base/AllocationFault.h"
#include "base/FaultyFileSystem.h"
#include "base/TestFolder.h"
#include "technology/CBDcondLayer.h"
#include "technology/CBDfootprint.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDfootprintLayer.h"
#include "technology/CBDheelprint.h"
#include "technology/CBDmap.h"
#include "technology/CBDnonConductiveLayer.h"
#include "technology/CBDpad.h"
#include "technology/CBDpadstack.h"
#include "technology/CBDsubLayer.h"
#include "technology/CBDtechnologyContainer.h"
#include "technology/CBDtoeprintPin.h"
#include "technology/RecordTestSupport.h"

using laminate::FootprintFileTarget;
using laminate::LoadStatus;

namespace {

/// A library that is filled from texts in memory, with a log.
class Library {
 public:
  Library() : m_files(m_memory), m_host(m_boxes) {}
  ~Library() {
    std::fclose(m_fpLog);
    std::free(m_pLog);
    EXPECT_EQ(0u, m_memory.OpenCount());
  }

  std::string Load(const std::string& text) {
    return Run(text, [&](FootprintFileTarget& target) { laminate::LoadFootprintFile("f.ftf", target); });
  }
  std::string LoadNamed(const std::string& text, const std::vector<std::string>& names) {
    CStringArray arrNames;
    for (const std::string& s : names) arrNames.Add(CString(s));
    return Run(text, [&](FootprintFileTarget& target) { laminate::LoadFootprintsByName("f.ftf", arrNames, target); });
  }
  std::string LoadPads(const std::string& text) {
    return Run(text, [&](FootprintFileTarget& target) { laminate::LoadPadsAndPadstacks("f.ftf", target); });
  }

  std::string Log() {
    std::fflush(m_fpLog);
    return std::string(m_pLog, m_nLog);
  }
  std::vector<std::string>& Boxes() { return m_boxes.texts; }
  MemoryFileSystem& Files() { return m_memory; }
  /// Everything that the log holds without a flush of the test's own.
  std::string FlushedLog() const { return std::string(m_pLog, m_nLog); }

  std::string Show() const {
    std::string s = Str(technology.m_sName) + ":";
    for (const CBDfootprintLayer* p : *technology.m_pFootprintLayerArray)
      s += " l" + Str(p->m_sName) + "/" + Str(p->m_sType);
    for (const CBDpad* p : *container.m_pPadArray) s += " p" + Str(p->m_sName);
    for (const CBDpadstack* p : *container.m_pPadstackArray) s += " s" + Str(p->m_sName) + Str(p->m_sIsBuildupVia);
    for (const CBDfootprint* p : *container.m_pFootprintArray) {
      s += " f" + Str(p->m_sName) + std::to_string(p->m_nUver);
      for (const CLProperty* pProperty : *p->m_pPropertyArray) s += "+" + Str(pProperty->GetItem());
      for (const CBDtoeprintPin* pPin : *p->m_pToeprintPinArray) {
        s += "." + Str(pPin->m_sName) + std::to_string(pPin->m_pDrawObjArray->GetSize());
      }
    }
    return s;
  }
  std::string Status() const {
    return std::to_string(static_cast<int>(status.m_result)) + "@" + std::to_string(status.m_nLine);
  }

  CBDtechnologyContainer technology;
  CBDfootprintContainer container;
  CBDdrawObjArray boardShapes;
  CBDdrawObjArray* pBoardShapes = &boardShapes;  // as a host keeps them
  LoadStatus status;
  bool bNoFile = false;
  std::FILE* fpLog = nullptr;  // as a host keeps it
  int nRaisedLine = 0;

 private:
  template <class Step>
  std::string Run(const std::string& text, Step&& step) {
    if (!bNoFile) m_memory.files["f.ftf"] = text;
    FootprintFileTarget target{technology, container, [this] { return pBoardShapes; }, &fpLog, status};
    fpLog = m_fpLog;
    return RaisedBy([&] {
      try {
        step(target);
      } catch (const CInvalidArgException& e) {
        nRaisedLine = e.m_nLine;
        throw;
      }
    });
  }

  MemoryFileSystem m_memory;
  BoxRecorder m_boxes;
  laminate::FileSystemScope m_files;
  CHostInterfaceScope m_host;
  char* m_pLog = nullptr;
  std::size_t m_nLog = 0;
  std::FILE* m_fpLog = open_memstream(&m_pLog, &m_nLog);
};

CBDdrawObjArray* NoBoard() { return nullptr; }

const std::string kHead =
    "FTF file parsing\nComplete FTF file parsing\nTranslating technologyContainer to BD Data base\n"
    "Translating footprintContainer to BD Data base\n";
const std::string kTail = "Complete Translating FTF file to BD Database\n";

// One form a line, as the two partial loads need it.
const std::string kText =
    "(ftf\n"
    "(header (version 2.0))\n"
    "(technologyContainer\n"
    "(technology T\n"
    "(footprintLayer (layer TOP (type CONDUCTIVE)) (layer BODY))\n"
    ")\n"
    "(technology U (footprintLayer (layer X)))\n"
    ")\n"
    "(footprintContainer\n"
    "(commonParameters (x))\n"
    "(pads\n"
    "(pad P1 (geometry (circle 1.0)))\n"
    "(foo Q)\n"
    "(pad P2)\n"
    ")\n"
    "(padstacks\n"
    "(padstack V1 (isBuildupVia YES))\n"
    ")\n"
    "(footprints\n"
    "(footprint F1\n"
    "(uver 5)\n"
    "(propertyS A b)\n"
    "(toeprint (pin 1 (layout (layer (fPad P1)) (layer (fPad P2)))))\n"
    ")\n"
    "(footprint F2\n"
    ")\n"
    "(footprint F1\n"
    "(uver 6)\n"
    ")\n"
    ")\n"
    ")\n"
    ")\n";

TEST(FootprintFileLoad, WholeFile) {
  Library library;
  EXPECT_EQ("", library.Load(kText));
  EXPECT_EQ("T: lTOP/CONDUCTIVE lBODY/ pP1 pP2 sV1YES fF15+A.12 fF21 fF16", library.Show());
  EXPECT_EQ(kHead +
                "commonParameters\npads\npad-P1\npad-P2\npadstacks\npadstack-V1\nfootprints\nfootprint-F1\n"
                "footprint-F2\nfootprint-F1\n" +
                kTail,
            library.FlushedLog());
  EXPECT_TRUE(library.status.IsOk());
}

std::string WithTwoByteLineEnds(const std::string& text) {
  std::string s;
  for (const char c : text) s += c == '\n' ? "\r\n" : std::string(1, c);
  return s;
}

TEST(FootprintFileLoad, OneOrTwoBytesEndALine) {
  for (const auto load : {&Library::Load, &Library::LoadPads}) {
    const auto found = [load](const std::string& text) {
      Library library;
      EXPECT_EQ("", (library.*load)(text));
      EXPECT_TRUE(library.status.IsOk());
      return library.Show() + "\n" + library.Log();
    };
    EXPECT_EQ(found(kText), found(WithTwoByteLineEnds(kText)));
  }
}

TEST(FootprintFileLoad, WhatIsNotReadStaysAsItWas) {
  Library library;
  EXPECT_EQ("",
            library.Load("(ftf (header (version 9.9)) (technologyContainer (technology T (numberOfConductorLayer 4) "
                         "(nonConductiveLayer (layer N)) (conductiveLayer (layerNumber 1 (type POSI))) (subLayer "
                         "(systemLayer (type X))) (layerMapping (map A)))))"));
  EXPECT_EQ("T:", library.Show());
  EXPECT_EQ(0, library.technology.m_nConductorLayers);
  EXPECT_EQ(0, library.technology.m_pNonConductiveLayerArray->GetSize() +
                   library.technology.m_pCondLayerArray->GetSize() + library.technology.m_pSubLayerArray->GetSize() +
                   library.technology.m_pMapArray->GetSize());
}

TEST(FootprintFileLoad, WhatIsTakenOfAFile) {
  const struct {
    const char* text;
    const char* shown;
  } cases[] = {
      {"(x)\n(ftf (footprintContainer (pads (pad P))) (footprintContainer (pads (pad Q))))\n"
       "(ftf (footprintContainer (pads (pad R))))",
       ": pP"},
      {"(ftf (technologyContainer (technology T)) (technologyContainer (technology U)))", "T:"},
      {"(ftf (technologyContainer (technology T (footprintLayer (l A)) (footprintLayer (l B)))))", "T: lA/"},
      // A quote behind a backslash does not end its string, at a line's end either.
      {"(ftf (footprintContainer (pads (pad \"a\\\"\n\"))))", ": pa\\\"\n"},
      {"(ftf (footprintContainer pads (pads (pad P)) (Pads (pad Q)) (footprint F)))", ": pP"},
  };
  for (const auto& test : cases) {
    Library library;
    EXPECT_EQ("", library.Load(test.text));
    EXPECT_EQ(test.shown, library.Show()) << test.text;
  }
}

// A host looks at the log in the middle of a load.
TEST(FootprintFileLoad, EachLineOfTheLogIsThereAtOnce) {
  struct Looks : CHostInterface {
    explicit Looks(const Library& l) : library(l) {}
    int OnAfxMessageBox(const CString&, UINT, UINT) override {
      logs.push_back(library.FlushedLog());
      return IDOK;
    }
    const Library& library;
    std::vector<std::string> logs;
  };
  Library library;
  Looks host(library);
  const CHostInterfaceScope scope(host);
  EXPECT_EQ("", library.Load("(ftf (footprintContainer (pads (pad P (geometry (teapot)))) (x) (footprints (footprint F "
                             "(heelprint (layout (l (teapot))))))))"));
  const std::string first = kHead + "pads\npad-P\n";
  EXPECT_EQ((std::vector<std::string>{first, first + "x\nfootprints\nfootprint-F\n"}), host.logs);
}

TEST(FootprintFileLoad, TheLogBeginsBeforeTheFileIsOpened) {
  struct Opens : MemoryFileSystem {
    Handle OpenForReading(const char* szPath) override {
      log = pLibrary->FlushedLog();
      return MemoryFileSystem::OpenForReading(szPath);
    }
    const Library* pLibrary = nullptr;
    std::string log;
  };
  Library library;
  Opens files;
  files.pLibrary = &library;
  files.files["f.ftf"] = "(ftf)";
  const laminate::FileSystemScope scope(files);
  EXPECT_EQ("", library.Load(""));
  EXPECT_EQ("FTF file parsing\n", files.log);
}

TEST(FootprintFileLoad, AParseThatStopsLeavesWhatClosed) {
  const std::string sTooDeep(21, '(');
  Library library;
  EXPECT_EQ("", library.Load("(ftf (footprintContainer (pads (pad P))))\n" + sTooDeep));
  EXPECT_EQ(": pP", library.Show());
  EXPECT_EQ((std::vector<std::string>{"Parser meet unexpected Brace Counting Number, 21 at line number 2.!"}),
            library.Boxes());
  EXPECT_EQ(kHead + "pads\npad-P\n" + kTail, library.Log());
  EXPECT_EQ(LoadStatus::Result::notWellFormed, library.status.m_result);
  EXPECT_EQ(2, library.status.m_nLine);
  Library parts;
  EXPECT_EQ("", parts.LoadPads("(ftf\n(pads\n(pad P)\n" + sTooDeep + "\n(padstacks\n(padstack V)\n)\n)\n"));
  EXPECT_EQ(": sV", parts.Show());
  EXPECT_EQ(1u, parts.Boxes().size());
}

TEST(FootprintFileLoad, AFootprintThatFailsIsLostAndWhatItGaveTheBoardStays) {
  Library library;
  EXPECT_EQ("\"pin\" has no value 1",
            library.Load("(ftf (footprintContainer (footprints (footprint A) (footprint B (heelprint (layout (l "
                         "(boardAssembly (geometry (circle 1.0)))))) (toeprint (pin 1) (pin))) (footprint C))))"));
  EXPECT_EQ(": fA1", library.Show());
  EXPECT_EQ(kHead + "footprints\nfootprint-A\nfootprint-B\n", library.Log());
  EXPECT_EQ("CIRCLE@//0", Str(library.boardShapes));
}

TEST(FootprintFileLoad, WhatIsWrittenReadsBackButForWhatTheFormLoses) {
  Library library;
  EXPECT_EQ("",
            library.Load("(ftf (technologyContainer (technology T (footprintLayer (layer TOP (type CONDUCTIVE))))) "
                         "(footprintContainer (pads (pad P (geometry (oval)))) (padstacks (padstack V (type T) "
                         "(throughMode M) (hole (geometry (circle 0.5))) (padSet (footLayer TOP) (connect (pad "
                         "P))))) (footprints (footprint F (uver 4) (area (box (pt 1.0 1.0) (pt 2.0 2.0))) "
                         "(propertyS A b) (heelprint (layout (layer (footLayer \"A(1)\") (oval (geometry (oval)))) "
                         "(layer (oval)) (layer (footLayer B) (circle 1.0)))) (toeprint (pin 1 (pt 1.0 2.0) (layout "
                         "(layer (footLayer X) (fPad P (pt 0.0 0.0))))))))))"));
  const auto text = [](Library& of) {
    const std::string s = Printed([&](std::FILE* fp) { return of.container.nPrint2File(fp, &of.technology); });
    return "(ftf\n" + s + ")\n";
  };
  const std::string first = text(library);
  Library again;
  EXPECT_EQ("", again.Load(first));
  EXPECT_TRUE(again.status.IsOk());
  EXPECT_EQ(library.Show(), again.Show());
  const CBDfootprint& footprint = *again.container.m_pFootprintArray->GetAt(0);
  const CBDfootprint& before = *library.container.m_pFootprintArray->GetAt(0);
  EXPECT_EQ("1;1 2;2", Str(before.m_ptBox1) + " " + Str(before.m_ptBox2));
  EXPECT_EQ("0;-0 0;0", Str(footprint.m_ptBox1) + " " + Str(footprint.m_ptBox2)) << "no area of its own";
  EXPECT_EQ("OVAL@/A(1)/0 OVAL@//0 CIRCLE@/B/0", Str(*before.m_pHeelprint->m_pDrawObjArray));
  EXPECT_EQ("OVAL@/A(1)/0", Str(*footprint.m_pHeelprint->m_pDrawObjArray))
      << "a shape without a layer is not written, and a circle's form is not read";
  EXPECT_EQ((std::vector<std::string>{"New Draw Type : geometry"}), again.Boxes());
  EXPECT_EQ("DRAWPAD@/X/0", Str(*before.m_pToeprintPinArray->GetAt(0)->m_pDrawObjArray));
  EXPECT_EQ("DRAWPAD@/FPADSTACK/0", Str(*footprint.m_pToeprintPinArray->GetAt(0)->m_pDrawObjArray));
}

TEST(FootprintFileLoad, ASecondLoadAdds) {
  Library library;
  library.Load("(ftf (footprintContainer (footprints (footprint F))))");
  library.Load("(ftf (footprintContainer (footprints (footprint F))))");
  EXPECT_EQ(": fF1 fF1", library.Show());
  EXPECT_EQ(library.container.m_pFootprintArray->GetAt(0), library.container.pGetFootprintWithName("F"));
}

TEST(FootprintFileLoad, SectionsInTheOrderOfTheFile) {
  Library library;
  EXPECT_EQ("",
            library.Load("(ftf (footprintContainer (footprints (footprint F)) (x) (pads (pad P)) (pads (pad Q))))"));
  EXPECT_EQ(kHead + "footprints\nfootprint-F\nx\npads\npad-P\npads\npad-Q\n" + kTail, library.Log());
  EXPECT_EQ(": pP pQ fF1", library.Show());
}

TEST(FootprintFileLoad, WithoutContainer) {
  Library library;
  EXPECT_EQ("", library.Load("(ftf (technologyContainer (technology T)))"));
  EXPECT_EQ("T:", library.Show());
  EXPECT_EQ(kHead + kTail, library.Log());
}

TEST(FootprintFileLoad, WithoutTechnology) {
  Library library;
  EXPECT_EQ("", library.Load("(ftf (technologyContainer (foo)) (footprintContainer))"));
  EXPECT_EQ(kHead + kTail, library.Log());
}

TEST(FootprintFileLoad, AnotherRootGivesNothing) {
  Library library;
  EXPECT_EQ("", library.Load("(pcf (footprintContainer (pads (pad P))))"));
  EXPECT_EQ(":", library.Show());
  EXPECT_EQ("FTF file parsing\nComplete FTF file parsing\n", library.Log());
  EXPECT_EQ(LoadStatus::Result::notWellFormed, library.status.m_result);
}

TEST(FootprintFileLoad, AFileThatCannotBeOpened) {
  Library library;
  library.bNoFile = true;
  EXPECT_EQ("", library.Load(""));
  EXPECT_EQ("FTF file parsing\nComplete FTF file parsing\n", library.Log());
  EXPECT_EQ(LoadStatus::Result::cannotOpen, library.status.m_result);
  EXPECT_EQ("f.ftf", library.status.m_sFile);
}

TEST(FootprintFileLoad, WorksWithWhatTheParseLeft) {
  Library library;
  // A bracket too many behind the form.
  EXPECT_EQ("", library.Load("(ftf (footprintContainer (pads (pad P))))\n)\n"));
  EXPECT_EQ(": pP", library.Show());
  EXPECT_EQ("1@2", std::to_string(library.status.m_result == LoadStatus::Result::notWellFormed) + "@" +
                       std::to_string(library.status.m_nLine));
}

TEST(FootprintFileLoad, AMissingValueEndsIt) {
  Library library;
  EXPECT_EQ("\"pad\" has no value 1",
            library.Load("(ftf\n(footprintContainer\n(pads (pad P)\n(pad)\n(pad Q))\n(footprints (footprint F))))"));
  EXPECT_EQ(": pP", library.Show());
  EXPECT_EQ(kHead + "pads\npad-P\n", library.FlushedLog());
  EXPECT_EQ(LoadStatus::Result::invalidContent, library.status.m_result);
  EXPECT_EQ(4, library.status.m_nLine);
  EXPECT_EQ("\"pad\" has no value 1", library.status.m_sText);
  // The record's name is told before what is in it is read.
  EXPECT_NE("", library.Load("(ftf (footprintContainer (padstacks (padstack V (type)))))"));
  EXPECT_EQ(kHead + "pads\npad-P\n" + kHead + "padstacks\npadstack-V\n", library.FlushedLog());
}

// Pads and padstacks as either load reads them; "foo" takes the place of a section that is left out.
std::string Sections(const std::string& pads, const std::string& padstacks) {
  const auto section = [](const char* szName, const std::string& s) {
    return "(" + std::string(s.empty() ? "foo" : szName) + "\n" + s + ")\n";
  };
  return "(ftf\n(footprintContainer\n" + section("pads", pads) + section("padstacks", padstacks) + ")\n)\n";
}

TEST(FootprintFileLoad, OnlyRecordsOfTheSectionsOwnKindCount) {
  const std::string text = Sections("(padstack V)\n(pad P)\n(Pad Q)\n", "(pad P)\n(foo Q)\n(padstack V)\n");
  Library whole;
  EXPECT_EQ("", whole.Load(text));
  EXPECT_EQ(": pP sV", whole.Show());
  EXPECT_EQ(kHead + "pads\npad-P\npadstacks\npadstack-V\n" + kTail, whole.Log());
  Library parts;
  EXPECT_EQ("", parts.LoadPads(text));
  EXPECT_EQ(": pP sV", parts.Show());
}

TEST(FootprintFileLoad, AFaultLosesItsRecordAndWhatFollows) {
  const struct {
    std::string text;
    const char* raised;
    const char* shown;
    const char* log;
    int nLine;
  } cases[] = {
      {Sections("(pad P)\n(pad Q\n(geometry\n(circle)\n)\n)\n(pad R)\n", "(padstack V)\n"), "\"circle\" has no value 1",
       ": pP", "pads\npad-P\npad-Q\n", 7},
      {Sections("(pad P)\n", "(padstack V)\n(padstack W\n(padSet (connect (pad)))\n)\n"), "\"pad\" has no value 1",
       ": pP sV", "pads\npad-P\npadstacks\npadstack-V\npadstack-W\n", 9},
      {Sections("", "(padstack V\n(hole (geometry (circle)))\n)\n"), "\"circle\" has no value 1", ":",
       "foo\npadstacks\npadstack-V\n", 7},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.text);
    Library whole;
    EXPECT_EQ(test.raised, whole.Load(test.text));
    EXPECT_EQ(test.shown, whole.Show());
    EXPECT_EQ(kHead + test.log, whole.FlushedLog());
    Library parts;
    EXPECT_EQ(test.raised, parts.LoadPads(test.text));
    EXPECT_EQ(test.shown, parts.Show());
    for (const Library* p : {&whole, &parts}) {
      EXPECT_EQ(LoadStatus::Result::invalidContent, p->status.m_result);
      EXPECT_EQ(test.nLine, p->status.m_nLine);
      EXPECT_EQ(test.nLine, p->nRaisedLine);
    }
  }
}

TEST(FootprintFileLoad, OnlyASectionThatIsThereNeedsItsArray) {
  const struct {
    void (*remove)(CBDfootprintContainer&);
    std::string without;
    std::string with;
  } cases[] = {
      {[](CBDfootprintContainer& c) { delete std::exchange(c.m_pPadArray, nullptr); }, Sections("", "(padstack V)\n"),
       Sections("(pad P)\n", "")},
      {[](CBDfootprintContainer& c) { delete std::exchange(c.m_pPadstackArray, nullptr); }, Sections("(pad P)\n", ""),
       Sections("", "(padstack V)\n")},
  };
  for (const auto& test : cases) {
    Library library;
    test.remove(library.container);
    EXPECT_EQ("", library.Load(test.without));
    EXPECT_EQ("", library.LoadPads(test.without));
    EXPECT_NE("", library.Load(test.with));
    EXPECT_NE("", library.LoadPads(test.with));
  }
}

TEST(FootprintFileLoad, LogTextIsNoFormat) {
  Library library;
  EXPECT_EQ("", library.Load("(ftf (footprintContainer (pads (pad %s%n)) (%d%n)))"));
  EXPECT_EQ(kHead + "pads\npad-%s%n\n%d%n\n" + kTail, library.Log());
}

TEST(FootprintFileLoad, WithoutALog) {
  MemoryFileSystem memory;
  memory.files["f.ftf"] = kText;
  laminate::FileSystemScope scope(memory);
  CBDtechnologyContainer technology;
  CBDfootprintContainer container;
  LoadStatus status;
  FootprintFileTarget target{technology, container, NoBoard, nullptr, status};
  laminate::LoadFootprintFile("f.ftf", target);
  EXPECT_EQ(3, container.m_pFootprintArray->GetSize());
}

TEST(FootprintFileLoad, TheHostMayTakeTheLogAway) {
  struct TakesLog : CHostInterface {
    explicit TakesLog(std::FILE*& fpLog) : fp(fpLog) {}
    int OnAfxMessageBox(const CString&, UINT, UINT) override {
      fp = nullptr;
      return IDOK;
    }
    std::FILE*& fp;
  };
  Library library;
  TakesLog host(library.fpLog);
  const CHostInterfaceScope scope(host);
  EXPECT_EQ("", library.Load("(ftf (footprintContainer (pads (pad P (geometry (teapot))) (pad Q))))"));
  EXPECT_EQ(kHead + "pads\npad-P\n", library.Log());
  EXPECT_EQ(": pP pQ", library.Show());
}

TEST(FootprintFileLoad, FailingMemoryRaisesThePlatformsException) {
  MemoryFileSystem memory;
  memory.files["f.ftf"] = kText;
  memory.files["bad.ftf"] = "(ftf\n(footprint F2\n(toeprint\n(pin)\n)\n)\n)\n";
  laminate::FileSystemScope scope(memory);
  CBDtechnologyContainer technology;
  CBDfootprintContainer container;
  LoadStatus status;
  FootprintFileTarget target{technology, container, NoBoard, nullptr, status};
  CStringArray names;
  names.Add("F2");
  const auto loads = {+[](FootprintFileTarget& t, CStringArray&) { laminate::LoadFootprintFile("f.ftf", t); },
                      +[](FootprintFileTarget& t, CStringArray& n) { laminate::LoadFootprintsByName("f.ftf", n, t); },
                      +[](FootprintFileTarget& t, CStringArray& n) { laminate::LoadFootprintsByName("bad.ftf", n, t); },
                      +[](FootprintFileTarget& t, CStringArray&) { laminate::LoadPadsAndPadstacks("f.ftf", t); }};
  int nPlain = 0;
  for (const auto load : loads) {
    const auto run = [&] {
      try {
        load(target, names);
      } catch (const CException&) {
      } catch (const std::bad_alloc&) {
        ++nPlain;
      }
    };
    EXPECT_GT(laminate::test::ForEachFailingAllocation(run), 0);
  }
  EXPECT_EQ(0, nPlain);
}

// A pad, a padstack and a footprint, each with a board assembly, one form a line.
const std::string kAssemblies =
    "(ftf\n(footprintContainer\n"
    "(pads\n(pad P (geometry (boardAssembly (geometry (circle 1.0)))))\n)\n"
    "(padstacks\n(padstack V (hole (geometry (boardAssembly (geometry (oval))))))\n)\n"
    "(footprints\n(footprint F\n"
    "(heelprint (layout (layer (footLayer L) (boardAssembly (geometry (rectangle))))))\n)\n)\n)\n)\n";

TEST(FootprintFileLoad, ShapesOfBoardAssembliesGoToTheBoard) {
  Library library;
  EXPECT_EQ("", library.Load(kAssemblies));
  EXPECT_EQ("CIRCLE@//0 OVAL@//0 RECTANGLE@/L/0", Str(library.boardShapes));
  Library parts;
  EXPECT_EQ("", parts.LoadPads(kAssemblies));
  EXPECT_EQ("CIRCLE@//0 OVAL@//0", Str(parts.boardShapes));
  Library named;
  EXPECT_EQ("", named.LoadNamed(kAssemblies, {"F"}));
  EXPECT_EQ("RECTANGLE@/L/0", Str(named.boardShapes));
  Library none;
  none.pBoardShapes = nullptr;
  EXPECT_EQ("", none.Load(kText)) << "without a board only a board assembly raises";
  EXPECT_NE("", none.Load(kAssemblies));
  EXPECT_NE("", none.LoadPads(kAssemblies));
  EXPECT_NE("", none.LoadNamed(kAssemblies, {"F"}));
}

TEST(FootprintFileLoad, TheHostMayChangeTheBoard) {
  struct Changes : CHostInterface {
    int OnAfxMessageBox(const CString&, UINT, UINT) override {
      library.pBoardShapes = &other;
      return IDOK;
    }
    explicit Changes(Library& l) : library(l) {}
    Library& library;
    CBDdrawObjArray other;
  };
  const std::string text =
      "(ftf\n(footprintContainer\n(pads\n(pad P (geometry (boardAssembly (geometry (circle 1.0)))))\n"
      "(pad Q (geometry (teapot)))\n(pad R (geometry (boardAssembly (geometry (oval)))))\n)\n)\n)\n";
  for (const auto load : {&Library::Load, &Library::LoadPads}) {
    Library library;
    Changes host(library);
    const CHostInterfaceScope scope(host);
    EXPECT_EQ("", (library.*load)(text));
    EXPECT_EQ("CIRCLE@//0", Str(library.boardShapes));
    EXPECT_EQ("OVAL@//0", Str(host.other));
  }
  const std::string footprints =
      "(footprint A\n(heelprint (layout (l (teapot))))\n)\n"
      "(footprint B\n(heelprint (layout (l (boardAssembly (geometry (oval))))))\n)\n";
  Library library;
  Changes host(library);
  const CHostInterfaceScope scope(host);
  EXPECT_EQ("", library.LoadNamed(footprints, {"A", "B"}));
  EXPECT_EQ("OVAL@//0", Str(host.other));
}

// ---- footprints by name ----

TEST(FootprintsByName, OnlyThoseWanted) {
  Library library;
  EXPECT_EQ("", library.LoadNamed(kText, {"F2", "NONE"}));
  EXPECT_EQ(": fF21", library.Show());
  EXPECT_EQ("", library.Log());
  EXPECT_TRUE(library.status.IsOk());
}

TEST(FootprintsByName, ANameThatOccursTwiceGivesTwo) {
  Library library;
  EXPECT_EQ("", library.LoadNamed(kText, {"F1"}));
  // Neither version nor properties, and only the first layer of a pin.
  EXPECT_EQ(": fF11.11 fF11", library.Show());
}

TEST(FootprintsByName, AsTheyStandInTheFile) {
  struct Row {
    const char* name;
    std::string text;
    std::vector<std::string> names;
    const char* shown;
    LoadStatus::Result result = LoadStatus::Result::ok;
    int line = 0;
  };
  const std::string sTooDeep = "(footprint A\n" + std::string(20, '(') + "\n(footprint B\n)\n";
  const Row rows[] = {
      {"the order of the file", kText, {"F2", "F1"}, ": fF11.11 fF21 fF11"},
      {"a name given twice", kText, {"F2", "F2"}, ": fF21 fF21"},
      {"a name in quotes is written with them", "(footprint \"F 1\"\n)\n", {"\"F 1\""}, ": fF 11"},
      {"and not found without", "(footprint \"F 1\"\n)\n", {"F 1"}, ":"},
      {"more on the line", "(footprint F (uver 1)\n)\n", {"F"}, ":"},
      {"in a comment", "// (footprint F\n//(footprint F\n", {"F"}, ":"},
      {"capitals count", kText, {"f1"}, ":"},
      {"one that does not close", "(footprint A\n(uver 1)\n", {"A"}, ":", LoadStatus::Result::notWellFormed, 1},
      {"one that nests too deep, and a sound one", sTooDeep, {"A", "B"}, ": fB1", LoadStatus::Result::notWellFormed, 2},
      // The offset counts one byte for a line's end: the form's bracket is missed, and the next form is taken.
      {"behind line ends of two bytes",
       "(ftf\r\n(footprints\r\n(footprint F1\r\n(uver 5)\r\n)\r\n)\r\n)\r\n",
       {"F1"},
       ": f51"},
      {"or none is",
       "(ftf\r\n(footprint F1\r\n)\r\n(footprint F2\r\n)\r\n)\r\n",
       {"F1"},
       ":",
       LoadStatus::Result::notWellFormed,
       3},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Library library;
    EXPECT_EQ("", library.LoadNamed(row.text, row.names));
    EXPECT_EQ(row.shown, library.Show());
    EXPECT_EQ(row.result, library.status.m_result);
    EXPECT_EQ(row.line, library.status.m_nLine);
    EXPECT_TRUE(library.Boxes().empty());
  }
}

TEST(FootprintsByName, ASecondCallAdds) {
  Library library;
  for (int i = 0; i < 2; ++i) EXPECT_EQ("", library.LoadNamed(kText, {"F2"}));
  EXPECT_EQ(": fF21 fF21", library.Show());
}

TEST(FootprintsByName, NeedsTheArray) {
  Library library;
  delete std::exchange(library.container.m_pFootprintArray, nullptr);
  EXPECT_NE("", library.LoadNamed(kText, {}));
}

// One record at a time is in memory, and what is not wanted is only scanned.
TEST(FootprintsByName, ReadLittleMoreThanTheFileOnce) {
  struct Counts : MemoryFileSystem {
    std::int64_t Read(Handle h, void* pBuffer, std::size_t nBytes) override {
      const std::int64_t n = MemoryFileSystem::Read(h, pBuffer, nBytes);
      nRead += n;
      return n;
    }
    std::int64_t nRead = 0;
  };
  Counts files;
  const laminate::FileSystemScope scope(files);
  std::string& text = files.files["f.ftf"] = "(ftf\n";
  for (int i = 0; i < 2000; ++i) {
    text +=
        "(footprint F" + std::to_string(i) + "\n(toeprint (pin 1))\n(propertyS a " + std::string(1000, 'x') + ")\n)\n";
  }
  text += ")\n";
  CBDtechnologyContainer technology;
  CBDfootprintContainer container;
  LoadStatus status;
  FootprintFileTarget target{technology, container, NoBoard, nullptr, status};
  CStringArray names;
  for (const char* sz : {"F3", "F1000", "F1999"}) names.Add(sz);
  laminate::LoadFootprintsByName("f.ftf", names, target);
  EXPECT_EQ(3, container.m_pFootprintArray->GetSize());
  EXPECT_LT(files.nRead, static_cast<std::int64_t>(text.size()) + 4 * 65536);
  // All of them: once to find them, and once to read them.
  names.RemoveAll();
  for (int i = 0; i < 2000; ++i) names.Add(CString("F" + std::to_string(i)));
  files.nRead = 0;
  laminate::LoadFootprintsByName("f.ftf", names, target);
  EXPECT_EQ(2003, container.m_pFootprintArray->GetSize());
  EXPECT_LT(files.nRead, 2 * static_cast<std::int64_t>(text.size()) + 4 * 65536);
}

// Outside a string this quote opens one, inside it does not end it: none of the forms closes, and to read the file to
// its end from each of them would take hours.
TEST(FootprintsByName, StringsThatNeverEndAreReadOnce) {
  std::string text;
  for (int i = 0; i < 200000; ++i) text += "(footprint A\n\\\"\n";
  Library library;
  EXPECT_EQ("", library.LoadNamed(text, {"A"}));
  EXPECT_EQ(":", library.Show());
  EXPECT_EQ(LoadStatus::Result::notWellFormed, library.status.m_result);
  EXPECT_EQ(1, library.status.m_nLine);
  // Where such strings end after all, each form has its own end.
  Library some;
  EXPECT_EQ("", some.LoadNamed("(footprint A\n\\\"\n(footprint A\n\\\"\n\"\n)\n(footprint A\n)\n"
                               "(footprint A\n\\\"\n(footprint A\n)\n",
                               {"A"}));
  EXPECT_EQ(": fA1 fA1 fA1 fA1", some.Show());
}

TEST(FootprintsByName, NoneWanted) {
  Library library;
  EXPECT_EQ("", library.LoadNamed(kText, {}));
  EXPECT_EQ(":", library.Show());
}

TEST(FootprintsByName, AFaultIsToldWithItsLineInTheFile) {
  Library library;
  EXPECT_EQ("\"pin\" has no value 1",
            library.LoadNamed("(ftf\n(footprint A\n)\n(footprint B\n(toeprint\n(pin)\n)\n)\n)\n", {"A", "B"}));
  EXPECT_EQ(": fA1", library.Show());
  EXPECT_EQ(LoadStatus::Result::invalidContent, library.status.m_result);
  EXPECT_EQ(6, library.status.m_nLine);
  EXPECT_EQ(6, library.nRaisedLine);
}

TEST(FootprintsByName, AFileThatCannotBeOpened) {
  Library library;
  library.bNoFile = true;
  EXPECT_EQ("", library.LoadNamed("", {"A"}));
  EXPECT_EQ(LoadStatus::Result::cannotOpen, library.status.m_result);
}

// ---- pads and padstacks ----

TEST(PadsAndPadstacks, WithTheTechnologyButNoFootprints) {
  Library library;
  EXPECT_EQ("", library.LoadPads(kText));
  EXPECT_EQ("T: lTOP/CONDUCTIVE lBODY/ pP1 pP2 sV1", library.Show());
  EXPECT_EQ("", library.Log());
  EXPECT_TRUE(library.status.IsOk());
}

TEST(PadsAndPadstacks, EachOfThemMayBeAbsent) {
  for (const auto& [text, expected] : {
           std::pair<const char*, const char*>{"(ftf\n)\n", ":"},
           {"(ftf\n(pads\n(pad P)\n)\n)\n", ": pP"},
           {"(ftf\n(padstacks\n(padstack V)\n)\n)\n", ": sV"},
           {"(ftf\n(technologyContainer\n(foo)\n)\n)\n", ":"},
           {"(ftf\n(technologyContainer\n(technology T)\n)\n)\n", "T:"},
       }) {
    Library library;
    EXPECT_EQ("", library.LoadPads(text)) << text;
    EXPECT_EQ(expected, library.Show()) << text;
  }
}

TEST(PadsAndPadstacks, AreTheFirstFormsThatStandAlone) {
  struct Row {
    const char* name;
    const char* text;
    const char* shown;
    LoadStatus::Result result = LoadStatus::Result::ok;
    int line = 0;
  };
  const Row rows[] = {
      {"more on the line", "(ftf\n(pads (pad P)\n)\n)\n", ":"},
      {"indented, and with blanks behind", "(ftf\n  \t(pads  \n(pad P)\n)\n)\n", ": pP"},
      {"anywhere in the file", "(x\n(pads\n(pad P)\n)\n)\n(ftf\n(pads\n(pad Q)\n)\n)\n", ": pP"},
      {"a section that does not close", "(ftf\n(pads\n(pad P)\n(padstacks\n(padstack V)\n)\n", ": sV",
       LoadStatus::Result::notWellFormed, 2},
      {"a technology that is not there", "(ftf\n(technologyContainer\n)\n(pads\n(pad P)\n)\n)\n", ": pP"},
      {"an escaped quote before a blank", "(pads\n(pad \"x\\\"y\")\n)\n", ": px\\\"y"},
      {"a backslash before a closing quote and bracket is lost", "(pads\n(pad \"a\\\")\n)\n", ": pa"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Library library;
    EXPECT_EQ("", library.LoadPads(row.text));
    EXPECT_EQ(row.shown, library.Show());
    EXPECT_EQ(row.result, library.status.m_result);
    EXPECT_EQ(row.line, library.status.m_nLine);
  }
  Library whole;
  EXPECT_EQ("", whole.Load("(ftf (footprintContainer (pads (pad \"a\\\"))))\n"));
  EXPECT_EQ(": pa\\", whole.Show()) << "which a load of the whole file keeps";
}

TEST(PadsAndPadstacks, AFaultInTheTechnologyEndsIt) {
  Library library;
  EXPECT_EQ("\"technology\" has no value 1",
            library.LoadPads("(technologyContainer\n(technology\n)\n)\n(pads\n(pad P)\n)\n"));
  EXPECT_EQ(":", library.Show());
  EXPECT_EQ(2, library.status.m_nLine);
}

TEST(PadsAndPadstacks, ASecondCallAdds) {
  Library library;
  for (int i = 0; i < 2; ++i) EXPECT_EQ("", library.LoadPads("(pads\n(pad P)\n)\n"));
  EXPECT_EQ(": pP pP", library.Show());
}

// Each failing file operation leaves either everything or a fault that is told, and nothing open.
TEST(PartsOfAFootprintFile, AreReadOrToldWhateverFails) {
  const laminate::test::TestFolder folder;
  const std::string sPath = folder.Write("f.ftf", kText);
  using Load = void (*)(const CString&, FootprintFileTarget&);
  const std::pair<Load, const char*> loads[] = {
      {[](const CString& sFile, FootprintFileTarget& target) { laminate::LoadPadsAndPadstacks(sFile, target); },
       "T: 2 layers, 2 pads, 1 padstacks, 0 footprints"},
      {[](const CString& sFile, FootprintFileTarget& target) {
         CStringArray names;
         for (const char* sz : {"F1", "F2"}) names.Add(sz);
         laminate::LoadFootprintsByName(sFile, names, target);
       },
       ": 0 layers, 0 pads, 0 padstacks, 3 footprints"}};
  for (const auto& [load, expected] : loads) {
    const int nFailures = laminate::test::ForEachFailingFileOperation(EIO, [&](auto& files) {
      CBDtechnologyContainer technology;
      CBDfootprintContainer container;
      LoadStatus status;
      FootprintFileTarget target{technology, container, NoBoard, nullptr, status};
      load(CString(sPath), target);
      const std::string found = Str(technology.m_sName) + ": " +
                                std::to_string(technology.m_pFootprintLayerArray->GetSize()) + " layers, " +
                                std::to_string(container.m_pPadArray->GetSize()) + " pads, " +
                                std::to_string(container.m_pPadstackArray->GetSize()) + " padstacks, " +
                                std::to_string(container.m_pFootprintArray->GetSize()) + " footprints";
      if (status.IsOk()) {
        EXPECT_EQ(expected, found) << files.FirstFailed();
      } else {
        EXPECT_EQ(LoadStatus::Result::cannotOpen, status.m_result) << files.FirstFailed();
        EXPECT_EQ(sPath, Str(status.m_sFile));
      }
    });
    EXPECT_GT(nFailures, 10);
  }
}

TEST(PadsAndPadstacks, AFaultIsToldWithItsLine) {
  Library library;
  EXPECT_EQ("\"padstack\" has no value 1",
            library.LoadPads("(ftf\n(pads\n(pad P)\n)\n(padstacks\n(padstack V)\n(padstack)\n)\n)\n"));
  EXPECT_EQ(": pP sV", library.Show());
  EXPECT_EQ(LoadStatus::Result::invalidContent, library.status.m_result);
  EXPECT_EQ(7, library.status.m_nLine);
}

TEST(PadsAndPadstacks, TogetherWithTheFootprintsAllIsThere) {
  Library library;
  library.LoadPads(kText);
  library.LoadNamed(kText, {"F1", "F2"});
  EXPECT_EQ("T: lTOP/CONDUCTIVE lBODY/ pP1 pP2 sV1 fF11.11 fF21 fF11", library.Show());
}

}  // namespace
