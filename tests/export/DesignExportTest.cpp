#include "export/DesignExport.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <thread>
#include <utility>

#include "base/AllocationFault.h"
#include "base/CException.h"
#include "base/FaultyFileSystem.h"
#include "base/TestFolder.h"
#include "board/CBDboardContainer.h"
#include "board/CBDcomponent.h"
#include "board/CBDgate.h"
#include "board/CBDlibraryEntities.h"
#include "board/CBDnet.h"
#include "board/CBDparameter.h"
#include "board/CBDpin.h"
#include "designdata/CVRXoutPackage.h"
#include "designdata/CVRXoutPrfFunction.h"
#include "designdata/CVRXoutPrfPart.h"
#include "designdata/CVRXoutPrfPinAssign.h"
#include "drawobj/CBDline.h"
#include "drawobj/CBDsurface.h"
#include "drawobj/CBDtext.h"
#include "reader/ReaderTestSupport.h"
#include "technology/CBDfootprint.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDpad.h"
#include "technology/CBDpadstack.h"
#include "technology/CBDtechnologyContainer.h"

namespace {

namespace fs = std::filesystem;
using laminate::test::FaultyFileSystem;

using Names = std::set<std::string>;
const Names kSet = {"board.pcf", "board.ftf", "board.tcf", "board.pkf", "board.cdf"};

// A design without a root, which is a room above.
struct Design {
  CBDtechnologyContainer technology;
  CBDboardContainer board;
  CBDparameter parameter;
  CBDlibraryEntities libraryEntities;
  CBDfootprintContainer footprints;
  CVRXoutPackageArray packages;
  CVRXoutPrfPartArray parts;
  CVRXoutPrfPinAssignArray pinAssigns;
  CVRXoutPrfFunctionArray functions;

  laminate::ExportSet Set(bool bPackages = true) {
    return {&technology, &board,      &parameter, &libraryEntities, &footprints, bPackages ? &packages : nullptr,
            &parts,      &pinAssigns, &functions};
  }
  template <class Array>
  static auto& Add(Array* pArray) {
    pArray->Add(new std::remove_pointer_t<decltype(pArray->GetAt(0))>);
    return *pArray->GetLastElement();
  }
  template <class Array>
  static auto& Add(Array* pArray, const std::string& sName) {
    auto& element = Add(pArray);
    element.m_sName = CString(sName);
    return element;
  }
  CBDnet& Net(const std::string& sName) { return Add(board.m_pNetArray, sName); }
  template <class Shape>
  Shape& OnLayer(int nLayer) {
    auto* p = new Shape;
    p->m_nLayerNumber = nLayer;
    board.m_pDrawObjArray->Add(p);
    return *p;
  }

  /// Names with the sign behind them in every place that a name can have.
  void Fill(const std::string& sSign) {
    const auto name = [&sSign](const char* sz) { return CString(sz + sSign); };
    technology.m_sName = name("T");
    CBDcomponent& component = Add(board.m_pComponentArray);
    component.m_sReference = name("R");
    component.m_sPart = name("PART");
    component.m_sPackage = name("PACKAGE");
    component.m_sFootprint = name("F");
    CBDgate& gate = Add(component.m_pGateArray);
    gate.m_sId = name("ID");
    Add(gate.m_pGatePinArray, "GATEPIN" + sSign);
    CBDpin& pin = Add(component.m_pPinArray, "PIN" + sSign);
    Add(pin.m_pPinGateArray, "PINGATE" + sSign);
    CBDnet& net = Net("NET" + sSign);
    net.m_sType = name("TYPE");
    net.m_sPen = name("PEN");
    CBDrefPin& refPin = Add(net.m_pRefPinArray);
    refPin.m_sComp = name("R");
    refPin.m_sPin = name("REFPIN");
    OnLayer<CBDline>(1).m_sNet = name("LINE");
    auto& surface = OnLayer<CBDsurface>(1);
    surface.m_bMesh = 1;
    surface.m_sNet = name("SURFACE");
    auto& text = OnLayer<CBDtext>(0);
    text.m_sLayerType = "nonConductive";
    text.m_sLayerName = name("LAYER");
    text.m_sString = name("TEXT");
    Add(footprints.m_pFootprintArray, "F" + sSign);
    Add(footprints.m_pPadstackArray, "PADSTACK" + sSign);
    Add(footprints.m_pPadArray, "PAD" + sSign);
    Add(&packages, "PACKAGE" + sSign).m_sType = name("KIND");
    CVRXoutPrfPart& part = Add(&parts, "PART" + sSign);
    part.m_sPinAssignRef = name("ASSIGN");
    part.m_sPackageRef = name("PACKAGE");
    CVRXoutPrfPartPort& port = Add(part.m_pPortArray);
    port.m_sPortNo = name("NO");
    port.m_sPortName = name("PORT");
    auto& instance = Add(Add(&pinAssigns, "ASSIGN" + sSign).m_pFuncInstArray);
    instance.m_sFunctionRef = name("FUNCTION");
    auto& instancePort = Add(instance.m_pPortArray);
    instancePort.m_sPortNo = name("INSTANCE");
    instancePort.m_sMatch = name("MATCH");
    Add(&functions, "FUNCTION" + sSign);
  }
};

class DesignExportTest : public laminate::test::DescriptorTest {
 protected:
  CString Path(const std::string& sName) const { return CString(m_folder / sName); }
  std::string Get(const std::string& sName) const { return laminate::test::ReadFile(m_folder / sName); }
  void Put(const std::string& sName, const std::string& sText) const { m_folder.Write(sName, sText); }
  Names NamesIn(const std::string& sFolder = ".") const {
    Names names;
    for (const auto& entry : fs::directory_iterator(m_folder / sFolder)) names.insert(entry.path().filename());
    return names;
  }
  void Export(const char* szName = "board") { laminate::ExportDesign(Path(szName), m_design.Set()); }

  const laminate::test::TestFolder m_folder;
  BoxRecorder m_boxes;
  const CHostInterfaceScope m_host{m_boxes};
  Design m_design;
};

const std::string kEmptyTechnology =
    "(technologyContainer\n(technology \n(numberOfConductorLayer 0)\n(padstackGroup default)\n(footprintLayer\n)\n"
    "(nonConductiveLayer\n)\n(conductiveLayer\n)\n(subLayer\n)\n(layerMapping\n)\n)\n)\n";
const std::string kHeader = "(header\n(version 2.0)\n(unit MM)\n(timeZone \"\")\n)\n";

TEST_F(DesignExportTest, WritesTheSetOfAnEmptyDesign) {
  Export("board.pcf");
  EXPECT_EQ(NamesIn(), kSet);
  EXPECT_EQ(Get("board.pcf"), "(pcf\n" + kHeader + kEmptyTechnology +
                                  "(boardContainer\n(components\n)\n(nets\n)\n(boardLayout\n(layout\n)\n)\n)\n"
                                  "(parameter\n)\n(libraryEntities\n)\n)\n");
  EXPECT_EQ(
      Get("board.ftf"),
      "(ftf\n" + kHeader +
          "(technologyContainer\n(technology \n(footprintLayer\n)\n)\n)\n"
          "(footprintContainer\n(commonParameters\n(dimensionParameters\n(arrowLength 1000000)\n"
          "(arrowAngle 15.000000)\n(dotDiameter 100000)\n(textFrameOffset 100000)\n(arrowOffset 100000)\n"
          "(dimAssistOffset 100000)\n(dimLineWidth 20000)\n(drawTextFrame NO)\n(textClip NO)\n(standard JIS)\n)\n)\n"
          "(padstackGroups\n(padstackGroup default)\n)\n(pads\n)\n(padstacks\n)\n(footprints\n)\n)\n)\n");
  // Only this one has no unit, and it is indented.
  EXPECT_EQ(Get("board.tcf"), R"((tcf
  (header
    (version 2.0)
    (timeZone "")
  )
  (technologyContainer
    (technology
      (numberOfConductorLayer 0)
      (padstackGroup default)
      (footprintLayer
      )
      (nonConductiveLayer
      )
      (conductiveLayer
      )
      (subLayer
      )
      (layerMapping
      )
    )
  )
)
)");
  EXPECT_EQ(Get("board.cdf"), "(Japanese_coding: sjis)\n");
  EXPECT_EQ(Get("board.pkf"), "(Japanese_coding: sjis)\n(unit mm)\n\n");
  EXPECT_TRUE(m_boxes.texts.empty());
}

TEST_F(DesignExportTest, OneEndingOfABoardFileIsNoPartOfTheStem) {
  const struct {
    const char* path;
    const char* stem;
  } cases[] = {{"a", "a"},
               {"a.pcf", "a"},
               {"a.PCF", "a.PCF"},
               {"a.ftf", "a.ftf"},
               {"a.pcf.pcf", "a.pcf"},
               {"a.pcf ", "a.pcf "},
               {".pcf", ""},
               {"", ""}};
  for (const auto& [path, stem] : cases) {
    const laminate::test::TestFolder folder;
    laminate::ExportDesign(CString(folder / path), m_design.Set(false));
    Names names;
    for (const auto& entry : fs::directory_iterator(folder.Path())) names.insert(entry.path().filename());
    const std::string s = stem;
    EXPECT_EQ(names, (Names{s + ".pcf", s + ".ftf", s + ".tcf", s + ".cdf"})) << path;
  }
}

TEST_F(DesignExportTest, NoPackageFileWithoutAPackageArray) {
  Put("board.pkf", "old");
  laminate::ExportDesign(Path("board"), m_design.Set(false));
  EXPECT_EQ(Get("board.pkf"), "old");
  EXPECT_EQ(NamesIn(), kSet);
}

TEST_F(DesignExportTest, NullRecordArraysAreEmptyOnes) {
  laminate::ExportSet set = m_design.Set(false);
  set.pParts = nullptr;
  set.pPinAssigns = nullptr;
  set.pFunctions = nullptr;
  laminate::ExportDesign(Path("board"), set);
  EXPECT_EQ(Get("board.cdf"), "(Japanese_coding: sjis)\n");
}

TEST_F(DesignExportTest, NullContainersRaiseBeforeAnythingIsWritten) {
  const auto raises = [this](auto pContainer) {
    laminate::ExportSet set = m_design.Set();
    set.*pContainer = nullptr;
    EXPECT_THROW(laminate::ExportDesign(Path("board"), set), CInvalidArgException);
  };
  raises(&laminate::ExportSet::pTechnology);
  raises(&laminate::ExportSet::pBoard);
  raises(&laminate::ExportSet::pParameter);
  raises(&laminate::ExportSet::pLibraryEntities);
  raises(&laminate::ExportSet::pFootprints);
  EXPECT_TRUE(NamesIn().empty());
}

TEST_F(DesignExportTest, OnlyTheTechnologyAndPackageFilesAreIndented) {
  m_design.Fill("");
  Export();
  EXPECT_NE(Get("board.tcf").find("\n  (technologyContainer\n    (technology T\n      (number"), std::string::npos);
  EXPECT_NE(Get("board.pkf").find("(package \"PACKAGE\"\n    (type KIND)\n    (uver 1)\n)\n"), std::string::npos);
  const struct {
    const char* file;
    const char* deep;  // a form within others
  } cases[] = {
      {"board.pcf", "\n(pin PIN\n"}, {"board.ftf", "\n(padstack PADSTACK\n"}, {"board.cdf", "\n(port \"INSTANCE\" "}};
  for (const auto& [file, deep] : cases) {
    EXPECT_NE(Get(file).find(deep), std::string::npos) << Get(file);
    for (const char* szIndented : {"\n ", "\n\t"}) EXPECT_EQ(Get(file).find(szIndented), std::string::npos) << file;
  }
  EXPECT_TRUE(m_boxes.texts.empty());
}

// The lines of a text that differ from those of another, which has as many.
std::vector<std::string> Differences(const std::string& sBefore, const std::string& sAfter) {
  std::vector<std::string> differences;
  std::istringstream before(sBefore);
  std::istringstream after(sAfter);
  std::string s;
  for (std::string t; std::getline(before, s) && std::getline(after, t);) {
    if (s != t) differences.push_back(s + " | " + t);
  }
  EXPECT_TRUE(!std::getline(before, s) && !std::getline(after, s)) << "not the same number of lines";
  return differences;
}

// Signs double in these places, in the records themselves, and in no others; so each further set has more of them.
TEST_F(DesignExportTest, PercentSignsDoubleWithEachExportWhereTheFormatAsksForIt) {
  Design plain;
  plain.Fill("");
  laminate::ExportDesign(Path("plain"), plain.Set());
  m_design.Fill("%");
  Export("first");
  Export("second");
  using Lines = std::vector<std::string>;
  const Lines board = {"(pin \"GATEPIN%%\" | (pin \"GATEPIN%%%%\"",
                       "(pin PIN%% | (pin PIN%%%%",
                       "(gate 0 (name PINGATE%%)) | (gate 0 (name PINGATE%%%%))",
                       "(net \"NET%%\" | (net \"NET%%%%\"",
                       "(net \"LINE%%\") | (net \"\"LINE%%%%\"\")",
                       "(net \"SURFACE%%\") | (net \"\"SURFACE%%%%\"\")"};
  EXPECT_EQ(Differences(Get("first.pcf"), Get("second.pcf")), board);
  const Lines parts = {
      "(port \"NO%\" (symbPinId 0) (portName \"PORT%%\") (portType INOUT)) | "
      "(port \"NO%\" (symbPinId 0) (portName \"PORT%%%%\") (portType INOUT))",
      "(port \"INSTANCE%%\" (match \"MATCH%\")) | (port \"INSTANCE%%%%\" (match \"MATCH%\"))",
      "(port \"NO%\" (symbPinId 0) (portName \"PORT%%\") (portType INOUT)) | "
      "(port \"NO%\" (symbPinId 0) (portName \"PORT%%%%\") (portType INOUT))"};
  EXPECT_EQ(Differences(Get("first.cdf"), Get("second.cdf")), parts);
  for (const char* szEnding : {".ftf", ".tcf", ".pkf"}) {
    EXPECT_EQ(Get(std::string("first") + szEnding), Get(std::string("second") + szEnding)) << szEnding;
  }
  // All other names of the first set have their one sign.
  for (const char* szEnding : {".pcf", ".ftf", ".tcf", ".pkf", ".cdf"}) {
    std::string s = Get(std::string("first") + szEnding);
    EXPECT_NE(s.find('%'), std::string::npos) << szEnding;
    std::erase(s, '%');
    EXPECT_EQ(s, Get(std::string("plain") + szEnding)) << szEnding;
  }
}

// What is re-indented is taken as a format that has nothing to fill in.
TEST_F(DesignExportTest, PairsOfPercentSignsBecomeOneInIndentedFiles) {
  m_design.technology.m_sName = "50%% %d %n%s%*d%99999999d%";
  Design::Add(&m_design.packages, "P%%Q%");
  for (int i = 0; i < 2; ++i) {
    Export();
    EXPECT_NE(Get("board.pcf").find("(technology 50%% %d %n%s%*d%99999999d%\n"), std::string::npos);
    EXPECT_NE(Get("board.ftf").find("(technology 50%% %d %n%s%*d%99999999d%\n"), std::string::npos);
    EXPECT_NE(Get("board.tcf").find("    (technology 50% %d %n%s%*d%99999999d%\n"), std::string::npos);
    EXPECT_NE(Get("board.pkf").find("(package \"P%Q%\"\n"), std::string::npos);
  }
  EXPECT_EQ(m_design.technology.m_sName, "50%% %d %n%s%*d%99999999d%");
}

TEST_F(DesignExportTest, ThePackageFileIsThatOfItsRecordsReIndented) {
  CVRXoutPackage& package = Design::Add(&m_design.packages, "P");
  package.m_sType = "SMD";
  package.vFindSpecWithNameAndNoneCaseRegister("s");
  CVRXoutPackageMountForm& form = *package.m_pMountFormArray->GetAt(0);
  form.m_sFootprintRef = "F";
  const auto expected = [](const std::string& sName, const std::string& sFootprint, const std::string& sSpec) {
    return "(Japanese_coding: sjis)\n(unit mm)\n\n(package \"" + sName +
           "\"\n    (type SMD)\n    (uver 1)\n    (mountForm default\n        (footprintRef \"" + sFootprint +
           "\")\n        (spec \"" + sSpec + "\")\n    )\n)\n\n";
  };
  Export();
  EXPECT_EQ(Get("board.pkf"), expected("P", "F", "s"));
  // Of two percent signs the file keeps one, and the record both.
  package.m_sName = "50%%";
  form.m_sFootprintRef = "F%";
  form.m_sSpec = "s%%%";
  for (int i = 0; i < 2; ++i) {
    Export();
    EXPECT_EQ(Get("board.pkf"), expected("50%", "F%", "s%%"));
  }
  EXPECT_EQ(package.m_sName, "50%%");
  EXPECT_EQ(form.m_sSpec, "s%%%");
}

// An array that a record lost is found out when its file is written: files before it are new, it and those behind old.
TEST_F(DesignExportTest, ARecordWithoutItsArrayEndsTheExportAtItsFile) {
  const auto expectOldFrom = [&](std::string_view sFirstOld) {
    for (const std::string& sName : kSet) Put(sName, "old");
    EXPECT_THROW(Export(), CInvalidArgException);
    bool bOld = false;
    for (const char* szName : {"board.pcf", "board.ftf", "board.tcf", "board.pkf", "board.cdf"}) {
      bOld = bOld || sFirstOld == szName;
      EXPECT_EQ(Get(szName) == "old", bOld) << szName;
    }
    EXPECT_EQ(NamesIn(), kSet);
  };
  delete std::exchange(Design::Add(&m_design.parts).m_pPropertyArray, nullptr);
  expectOldFrom("board.cdf");
  delete std::exchange(Design::Add(&m_design.packages).m_pMountFormArray, nullptr);
  expectOldFrom("board.pkf");
}

TEST_F(DesignExportTest, FailingMemoryLeavesFilesWhole) {
  const std::string sLong(1000, 'n');
  for (int i = 0; i < 12; ++i) {
    const std::string sName = sLong + std::to_string(i);
    Design::Add(&m_design.packages, sName);
    Design::Add(&m_design.pinAssigns, sName);
    CVRXoutPrfPart& part = Design::Add(&m_design.parts, sName);
    part.m_sPinAssignRef = CString(sName);
    part.m_pPropertyArray->Add(new CLProperty("k", CString(sLong)));
  }
  const CString sPath = Path("board");
  laminate::ExportDesign(sPath, m_design.Set());
  std::map<std::string, std::string> good;
  for (const std::string& sName : kSet) good[sName] = Get(sName);
  const int nFailures = laminate::test::ForEachFailingAllocation(
      laminate::test::OnlyPlatforms([&] { laminate::ExportDesign(sPath, m_design.Set()); }), [&] {
        EXPECT_EQ(NamesIn(), kSet);
        for (const auto& [sName, sText] : good) EXPECT_EQ(Get(sName), sText);
      });
  EXPECT_GT(nFailures, 20);
}

// A long line is broken, and a piece of it that begins with a blank is told by its number in its file.
TEST_F(DesignExportTest, LongLinesOfIndentedFilesShowABox) {
  const std::string sLong = "(technology " + std::string(1023 - 12, 'x');
  m_design.technology.m_sName = CString(sLong.substr(12) + " " + std::string(75, 'y'));
  Design::Add(&m_design.packages, std::string(1023 - 10, 'x') + " y");
  Export();
  EXPECT_EQ(m_boxes.texts, (std::vector<std::string>{"CExportFormatter::Print() error!, Line No : 8 !!",
                                                     "CExportFormatter::Print() error!, Line No : 5 !!"}));
  EXPECT_NE(Get("board.tcf").find("\n    " + sLong + "\n      " + std::string(75, 'y') + "\n"), std::string::npos);
  EXPECT_NE(Get("board.pcf").find(sLong + " yyy"), std::string::npos);
}

TEST_F(DesignExportTest, AHostsFailureInTheBoxLeavesTheOldFilesFromThereOn) {
  struct Refuses : CHostInterface {
    int OnAfxMessageBox(const CString&, UINT, UINT) override { throw std::runtime_error("no"); }
  } refuses;
  const CHostInterfaceScope scope(refuses);
  m_design.technology.m_sName = CString(std::string(1023 - 12, 'x') + " y");
  for (const std::string& sName : kSet) Put(sName, "old");
  EXPECT_THROW(Export(), std::runtime_error);
  EXPECT_EQ(NamesIn(), kSet);
  EXPECT_TRUE(Get("board.pcf").starts_with("(pcf\n") && Get("board.ftf").starts_with("(ftf\n"));
  for (const char* szName : {"board.tcf", "board.pkf", "board.cdf"}) EXPECT_EQ(Get(szName), "old") << szName;
}

TEST_F(DesignExportTest, AllFilesReadBack) {
  for (const bool bFilled : {false, true}) {
    if (bFilled) m_design.Fill("");
    Export();
    for (const char* szEnding : {"pcf", "ftf", "tcf"}) {
      CECadCls reader;
      reader.m_sFileName = Path(std::string("board.") + szEnding);
      EXPECT_EQ(reader.nParseFile(0), 0) << szEnding;
      EXPECT_EQ(reader.m_pRootArray->GetSize(), 1) << szEnding;
      EXPECT_NE(reader.m_pRootArray->pFindByName(szEnding), nullptr) << szEnding;
    }
  }
}

TEST_F(DesignExportTest, ReplacesFilesAndKeepsTheirMode) {
  const fs::perms mode = fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_write;
  Put("board.pcf", "old");
  fs::permissions(m_folder / "board.pcf", mode);
  Export();
  EXPECT_TRUE(Get("board.pcf").starts_with("(pcf\n"));
  EXPECT_EQ(fs::status(m_folder / "board.pcf").permissions(), mode);
}

TEST_F(DesignExportTest, FollowsALink) {
  fs::create_directory(m_folder / "elsewhere");
  Put("elsewhere/real.pcf", "old");
  fs::create_symlink("elsewhere/real.pcf", m_folder / "board.pcf");
  fs::create_symlink("elsewhere/new.ftf", m_folder / "board.ftf");  // leads to nothing yet
  Export();
  EXPECT_TRUE(fs::is_symlink(m_folder / "board.pcf"));
  EXPECT_TRUE(Get("elsewhere/real.pcf").starts_with("(pcf\n"));
  EXPECT_TRUE(fs::is_symlink(m_folder / "board.ftf"));
  EXPECT_TRUE(Get("elsewhere/new.ftf").starts_with("(ftf\n"));
  EXPECT_EQ(NamesIn("elsewhere"), (Names{"real.pcf", "new.ftf"}));
}

TEST_F(DesignExportTest, WritesWhatIsNoRegularFileInPlace) {
  Export("plain");
  for (const std::string sEnding : {".pcf", ".tcf"}) {
    const std::string sStem = "to" + sEnding.substr(1);
    const std::string sPipe = m_folder / (sStem + sEnding);
    ASSERT_EQ(mkfifo(sPipe.c_str(), 0600), 0);
    std::string sRead;
    std::thread reader([&] { sRead = laminate::test::ReadFile(sPipe); });
    Export(sStem.c_str());
    reader.join();
    EXPECT_EQ(sRead, Get("plain" + sEnding));
    EXPECT_TRUE(fs::is_fifo(sPipe));
  }
  EXPECT_EQ(NamesIn().size(), 15u);
}

TEST_F(DesignExportTest, AFolderInTheWayRaisesAndFilesBeforeItStay) {
  fs::create_directory(m_folder / "board.tcf");
  try {
    Export();
    FAIL() << "the folder was taken for a file";
  } catch (const CFileException& e) {
    EXPECT_EQ(e.m_strFileName, Path("board.tcf").GetString());
    EXPECT_EQ(e.m_lOsError, EISDIR);
    EXPECT_EQ(e.m_cause, CFileException::accessDenied);
  }
  EXPECT_EQ(NamesIn(), (Names{"board.pcf", "board.ftf", "board.tcf"}));
}

TEST_F(DesignExportTest, AMissingFolderRaises) {
  EXPECT_THROW(Export("none/board"), CFileException);
  EXPECT_TRUE(NamesIn().empty());
}

TEST_F(DesignExportTest, TakesNamesAsLongAsTheSystemDoes) {
  Export(std::string(251, 'n').c_str());
  EXPECT_EQ(NamesIn().size(), 5u);
  EXPECT_TRUE(NamesIn().contains(std::string(251, 'n') + ".pcf"));
  EXPECT_THROW(Export(std::string(252, 'm').c_str()), CFileException);
  EXPECT_EQ(NamesIn().size(), 5u);
}

TEST_F(DesignExportTest, AFullDiskRaises) {
  FaultyFileSystem files(1, ENOSPC, FaultyFileSystem::Duration::forever);
  files.Only("Write");
  const laminate::FileSystemScope scope(files);
  try {
    Export();
    FAIL() << "a full disk went unnoticed";
  } catch (const CFileException& e) {
    EXPECT_EQ(e.m_strFileName, Path("board.pcf").GetString());
    EXPECT_EQ(e.m_cause, CFileException::diskFull);
    EXPECT_EQ(e.m_lOsError, ENOSPC);
  }
  EXPECT_TRUE(NamesIn().empty());
}

// Files that are longer than any buffer, over old ones.
TEST_F(DesignExportTest, EachFailingOperationLeavesOldFilesWholeAndNothingHalf) {
  for (int i = 0; i < 1200; ++i) m_design.Net("net number " + std::to_string(i));
  Export("good");
  std::map<std::string, std::string> good;
  for (const std::string& sName : kSet) good[sName] = Get("good" + sName.substr(5));
  EXPECT_GT(good["board.pcf"].size(), 100000u);
  const int nFailures = laminate::test::ForEachFailingFileOperation(ENOSPC, [&](FaultyFileSystem& files) {
    for (const std::string& sName : kSet) Put(sName, "old");
    bool bRaised = false;
    try {
      Export();
    } catch (const CFileException&) {
      bRaised = true;
    }
    bool bOld = false;
    // Files are replaced in their order: once one is the old one, so are all behind it.
    for (const char* szName : {"board.pcf", "board.ftf", "board.tcf", "board.pkf", "board.cdf"}) {
      const std::string s = Get(szName);
      bOld = bOld || s == "old";
      EXPECT_TRUE(s == (bOld ? "old" : good[szName])) << szName;
    }
    EXPECT_EQ(bRaised, bOld);
    const std::vector<std::string>& failed = files.Failed();
    if (std::find(failed.begin(), failed.end(), "Remove") == failed.end()) {
      EXPECT_EQ(NamesIn().size(), 10u);
    } else {
      // A temporary file that cannot be removed stays.
      for (const std::string& sName : NamesIn()) {
        if (sName.find(".tmp") != std::string::npos) fs::remove(m_folder / sName);
      }
    }
  });
  EXPECT_GT(nFailures, 80);
}

TEST_F(DesignExportTest, ShortTransfersMakeNoDifference) {
  for (int i = 0; i < 4000; ++i) m_design.Net("net number " + std::to_string(i));
  Export("good");
  FaultyFileSystem files;
  files.LimitTransfers(1009);
  {
    const laminate::FileSystemScope scope(files);
    Export();
  }
  for (const std::string& sName : kSet) EXPECT_EQ(Get(sName), Get("good" + sName.substr(5))) << sName;
}

}  // namespace
