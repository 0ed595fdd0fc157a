#include "technology/FootprintFileLoad.h"

#include "base/AllocationFault.h"
#include "technology/CBDfootprint.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDfootprintLayer.h"
#include "technology/CBDheelprint.h"
#include "technology/CBDpad.h"
#include "technology/CBDpadstack.h"
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
  LoadStatus status;
  bool bNoFile = false;
  std::FILE* fpLog = nullptr;  // as a host keeps it
  int nRaisedLine = 0;

 private:
  template <class Step>
  std::string Run(const std::string& text, Step&& step) {
    if (!bNoFile) m_memory.files["f.ftf"] = text;
    FootprintFileTarget target{technology, container, &boardShapes, &fpLog, status};
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
  FootprintFileTarget target{technology, container, nullptr, nullptr, status};
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
  FootprintFileTarget target{technology, container, nullptr, nullptr, status};
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

TEST(FootprintFileLoad, ShapesOfABoardAssemblyGoToTheBoard) {
  Library library;
  EXPECT_EQ("",
            library.Load("(ftf (footprintContainer (footprints (footprint F (heelprint (layout (layer (footLayer L) "
                         "(boardAssembly (geometry (circle 1.0))))))))))"));
  EXPECT_EQ("CIRCLE@/L/0", Str(library.boardShapes));
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
