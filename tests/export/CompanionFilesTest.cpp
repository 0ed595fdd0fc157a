#include "export/CompanionFiles.h"

#include <gtest/gtest.h>

#include <ctime>
#include <string>
#include <utility>

#include "designdata/CPC_BD_OutClsGet.h"
#include "reader/MemoryFileSystem.h"

namespace {

using laminate::TextOut;

std::string PackageText(const CVRXoutPackageArray& packages) {
  std::string s;
  TextOut out(s);
  laminate::WritePackageFile(out, packages);
  out.Flush();
  return s;
}

struct Records {
  CVRXoutPrfPartArray parts;
  CVRXoutPrfPinAssignArray pinAssigns;
  CVRXoutPrfFunctionArray functions;

  std::string Text() {
    std::string s;
    TextOut out(s);
    laminate::WriteComponentDefinitionFile(out, &parts, &pinAssigns, &functions);
    out.Flush();
    return s;
  }
  CVRXoutPrfPart& Part(const char* szName, const char* szPinAssign) {
    auto* pPart = new CVRXoutPrfPart;
    pPart->m_sName = szName;
    pPart->m_sPinAssignRef = szPinAssign;
    parts.Add(pPart);
    return *pPart;
  }
  static void Port(CVRXoutPrfPart& part, const char* szNo, const char* szName, const char* szType) {
    auto* pPort = new CVRXoutPrfPartPort;
    pPort->m_sPortNo = szNo;
    pPort->m_sPortName = szName;
    pPort->m_sPortType = szType;
    part.m_pPortArray->Add(pPort);
  }
  CVRXoutPrfPinAssign& PinAssign(const char* szName) {
    auto* pPinAssign = new CVRXoutPrfPinAssign;
    pPinAssign->m_sName = szName;
    pinAssigns.Add(pPinAssign);
    return *pPinAssign;
  }
  static CVRXoutPrfPinAssignFuncInst& Instance(CVRXoutPrfPinAssign& pinAssign, const char* szFunction,
                                               const char* szPort, const char* szMatch) {
    auto* pInstance = new CVRXoutPrfPinAssignFuncInst;
    pInstance->m_sFunctionRef = szFunction;
    auto* pPort = new CVRXoutPrfPinAssignFuncInstPort;
    pPort->m_sPortNo = szPort;
    pPort->m_sMatch = szMatch;
    pInstance->m_pPortArray->Add(pPort);
    pinAssign.m_pFuncInstArray->Add(pInstance);
    return *pInstance;
  }
  CVRXoutPrfFunction& Function(const char* szName, const char* szPort, const char* szType) {
    auto* pFunction = new CVRXoutPrfFunction;
    pFunction->m_sName = szName;
    auto* pPort = new CVRXoutPrfFunctionPort;
    pPort->m_sPortNo = szPort;
    pPort->m_nSymbPinId = 7;
    pPort->m_sPortType = szType;
    pFunction->m_pPortArray->Add(pPort);
    functions.Add(pFunction);
    return *pFunction;
  }
};

TEST(PackageFile, HasOnlyItsHeadWithoutPackages) {
  EXPECT_EQ(PackageText(CVRXoutPackageArray()), "(Japanese_coding: sjis)\n(unit mm)\n\n");
}

TEST(PackageFile, SeparatesPackagesByEmptyLines) {
  CVRXoutPackageArray packages;
  packages.Add(nullptr);
  packages.Add(new CVRXoutPackage);
  packages.GetAt(1)->m_sName = "P";
  packages.GetAt(1)->m_sType = "SMD";
  EXPECT_EQ(PackageText(packages), "(Japanese_coding: sjis)\n(unit mm)\n\n(package \"P\"\n(type SMD)\n(uver 1)\n)\n\n");
}

TEST(PartsFile, HasOnlyItsHeadWithoutRecords) {
  EXPECT_EQ(Records().Text(), "(Japanese_coding: sjis)\n");
  std::string s;
  {
    TextOut out(s);
    laminate::WriteComponentDefinitionFile(out, nullptr, nullptr, nullptr);
  }
  EXPECT_EQ(s, "(Japanese_coding: sjis)\n");
}

TEST(PartsFile, WritesFunctionsWithTheirPorts) {
  Records records;
  auto* pEmpty = new CVRXoutPrfFunction;
  pEmpty->m_sName = "E";
  records.functions.Add(pEmpty);
  records.functions.Add(nullptr);
  auto* pFunction = new CVRXoutPrfFunction;
  pFunction->m_sName = "F";
  pFunction->m_nUver = 3;
  auto* pTyped = new CVRXoutPrfFunctionPort;
  pTyped->m_sPortNo = "1";
  pTyped->m_nSymbPinId = 7;
  pTyped->m_sPortType = "IN))";
  auto* pPlain = new CVRXoutPrfFunctionPort;
  pPlain->m_sPortNo = "2";
  pFunction->m_pPortArray->Add(pTyped);
  pFunction->m_pPortArray->Add(pPlain);
  records.functions.Add(pFunction);
  EXPECT_EQ(records.Text(),
            "(Japanese_coding: sjis)\n"
            "(function \"E\"\n(uver 1)\n(interface\n)\n)\n\n"
            "(function \"F\"\n(uver 3)\n(interface\n(port \"1\" (symbPinId 7) (portType IN))))\n"
            "(port \"2\" (symbPinId 0))\n)\n)\n\n");
}

TEST(PartsFile, APinAssignTakesThePortsOfItsFirstPartAndChangesThem) {
  Records records;
  CVRXoutPrfPart& first = records.Part("A", "PA");
  Records::Port(first, "1", "100%", "");
  Records::Port(first, "2", "N", "OUT");
  CVRXoutPrfPart& second = records.Part("B", "PA");
  Records::Port(second, "9", "50%", "");
  CVRXoutPrfPinAssign& pinAssign = records.PinAssign("PA");
  pinAssign.m_nUver = 2;
  auto* pOwnPort = new CVRXoutPrfPinAssignPort;
  pOwnPort->m_sPortNo = "own";
  pinAssign.m_pPortArray->Add(pOwnPort);
  auto* pInstance = new CVRXoutPrfPinAssignFuncInst;
  pInstance->m_sFunctionRef = "F";
  auto* pInstancePort = new CVRXoutPrfPinAssignFuncInstPort;
  pInstancePort->m_sPortNo = "1%";
  pInstancePort->m_sMatch = "2%";
  pInstance->m_pPortArray->Add(pInstancePort);
  pinAssign.m_pFuncInstArray->Add(pInstance);
  const std::string sOnce = records.Text();
  EXPECT_EQ(sOnce,
            "(Japanese_coding: sjis)\n"
            "(pinAssign \"PA\"\n(uver 2)\n(interface\n"
            "(port \"1\" (symbPinId 0) (portName \"100%%\") (portType INOUT))\n"
            "(port \"2\" (symbPinId 0) (portName \"N\") (portType OUT))\n)\n"
            "(internal\n(funcInst (functionRef \"F\")\n(port \"1%%\" (match \"2%\"))\n)\n)\n)\n\n"
            "(part \"A\"\n(packageRef \"\")\n(pinAssignRef \"PA\")\n(interface\n"
            "(port \"1\" (symbPinId 0) (portName \"100%%\") (portType INOUT))\n"
            "(port \"2\" (symbPinId 0) (portName \"N\") (portType OUT))\n)\n)\n\n"
            "(part \"B\"\n(packageRef \"\")\n(pinAssignRef \"PA\")\n(interface\n"
            "(port \"9\" (symbPinId 0) (portName \"50%\"))\n)\n)\n\n");
  EXPECT_EQ(first.m_pPortArray->GetAt(0)->m_sPortName, "100%%");
  EXPECT_EQ(first.m_pPortArray->GetAt(0)->m_sPortType, "INOUT");
  EXPECT_EQ(second.m_pPortArray->GetAt(0)->m_sPortType, "");
  // Each further writing doubles what stands in the records by then.
  EXPECT_NE(records.Text().find("(portName \"100%%%%\")"), std::string::npos);
  EXPECT_EQ(pInstancePort->m_sPortNo, "1%%%%");
}

TEST(PartsFile, TwoPinAssignsOfOnePartDoubleTwice) {
  Records records;
  Records::Port(records.Part("A", "PA"), "1", "%", "IN");
  records.PinAssign("PA");
  records.PinAssign("PA");
  const std::string s = records.Text();
  EXPECT_NE(s.find("(portName \"%%\")"), std::string::npos);
  EXPECT_NE(s.find("(portName \"%%%%\")"), std::string::npos);
  EXPECT_EQ(records.parts.GetAt(0)->m_pPortArray->GetAt(0)->m_sPortName, "%%%%");
}

TEST(PartsFile, APinAssignWithoutPartHasAnEmptyPortList) {
  Records records;
  records.PinAssign("LONELY");
  EXPECT_EQ(records.Text(),
            "(Japanese_coding: sjis)\n(pinAssign \"LONELY\"\n(uver 1)\n(interface\n)\n(internal\n)\n)\n\n");
}

TEST(PartsFile, EmptySlotsCountAsNotThere) {
  Records records;
  records.parts.Add(nullptr);
  records.pinAssigns.Add(nullptr);
  CVRXoutPrfPart& part = records.Part("A", "PA");
  part.m_pPortArray->Add(nullptr);
  CVRXoutPrfPinAssign& pinAssign = records.PinAssign("PA");
  pinAssign.m_pFuncInstArray->Add(nullptr);
  auto* pInstance = new CVRXoutPrfPinAssignFuncInst;
  pInstance->m_pPortArray->Add(nullptr);
  pinAssign.m_pFuncInstArray->Add(pInstance);
  EXPECT_EQ(records.Text(),
            "(Japanese_coding: sjis)\n(pinAssign \"PA\"\n(uver 1)\n(interface\n)\n"
            "(internal\n(funcInst (functionRef \"\")\n)\n)\n)\n\n"
            "(part \"A\"\n(packageRef \"\")\n(pinAssignRef \"PA\")\n)\n\n");
}

// Functions, pin assigns, parts, each in the order of its array; what has no line of its own is left out.
TEST(PartsFile, WritesAllKindsInTheirOrder) {
  Records records;
  CVRXoutPrfPart& part = records.Part("A", "Q");
  Records::Port(part, "1", "N", "");
  part.m_pPortArray->GetAt(0)->m_nSymbPinId = 5;
  records.Part("B", "");
  CVRXoutPrfPinAssign& pinAssign = records.PinAssign("Q");
  pinAssign.m_nUver = 4;
  Records::Instance(pinAssign, "F", "1", "2");
  records.PinAssign("");
  CVRXoutPrfFunction& function = records.Function("F", "1", "IN");
  function.m_nUver = 3;
  records.Function("G", "2", "");
  const std::string expected =
      "(Japanese_coding: sjis)\n"
      "(function \"F\"\n(uver 3)\n(interface\n(port \"1\" (symbPinId 7) (portType IN))\n)\n)\n\n"
      "(function \"G\"\n(uver 1)\n(interface\n(port \"2\" (symbPinId 7))\n)\n)\n\n"
      "(pinAssign \"Q\"\n(uver 4)\n(interface\n(port \"1\" (symbPinId 5) (portName \"N\") (portType INOUT))\n)\n"
      "(internal\n(funcInst (functionRef \"F\")\n(port \"1\" (match \"2\"))\n)\n)\n)\n\n"
      "(pinAssign \"\"\n(uver 1)\n(interface\n)\n(internal\n)\n)\n\n"
      "(part \"A\"\n(packageRef \"\")\n(pinAssignRef \"Q\")\n(interface\n"
      "(port \"1\" (symbPinId 5) (portName \"N\") (portType INOUT))\n)\n)\n\n"
      "(part \"B\"\n(packageRef \"\")\n)\n\n";
  EXPECT_EQ(records.Text(), expected);
  function.m_pPropertyArray->Add(new CLProperty("k", "v"));
  pinAssign.m_pPropertyArray->Add(new CLProperty("k", "v"));
  part.m_sFootprintRef = "FP";
  part.m_pStockPropertyArray->Add(new CLProperty("k", "v"));
  part.m_pGateDefArray->Add(new CVRXoutPrfPartGateDef);
  part.m_pGateDefArray->GetAt(0)->m_aPortRefs.Add("1");
  EXPECT_EQ(records.Text(), expected);
}

TEST(PartsFile, OnlyNamesOfPortsAndPortsOfInstancesAreDoubled) {
  Records records;
  records.Function("F%", "1%", "T%");
  CVRXoutPrfPart& part = records.Part("A%", "Q%");
  part.m_sPackageRef = "P%";
  Records::Port(part, "1%", "N%", "T%");
  Records::Instance(records.PinAssign("Q%"), "F%", "1%", "2%");
  EXPECT_EQ(records.Text(),
            "(Japanese_coding: sjis)\n"
            "(function \"F%\"\n(uver 1)\n(interface\n(port \"1%\" (symbPinId 7) (portType T%))\n)\n)\n\n"
            "(pinAssign \"Q%\"\n(uver 1)\n(interface\n(port \"1%\" (symbPinId 0) (portName \"N%%\") (portType T%))\n)\n"
            "(internal\n(funcInst (functionRef \"F%\")\n(port \"1%%\" (match \"2%\"))\n)\n)\n)\n\n"
            "(part \"A%\"\n(packageRef \"P%\")\n(pinAssignRef \"Q%\")\n(interface\n"
            "(port \"1%\" (symbPinId 0) (portName \"N%%\") (portType T%))\n)\n)\n\n");
}

// A part that no pin assign refers to keeps its empty types and single signs. Names are compared exactly, and an empty
// one is a name.
TEST(PartsFile, PartsWithoutAPinAssignStayAsTheyAre) {
  for (const char* szPinAssign : {"q", "Q ", "R"}) {
    Records records;
    Records::Port(records.Part("A", "Q"), "1", "%", "");
    records.PinAssign(szPinAssign);
    const std::string s = records.Text();
    EXPECT_NE(s.find("(interface\n)\n(internal"), std::string::npos) << s;
    EXPECT_NE(s.find("(port \"1\" (symbPinId 0) (portName \"%\"))\n"), std::string::npos) << s;
  }
  Records records;
  Records::Port(records.Part("A", "Q"), "1", "%", "");
  Records::Port(records.Part("B", ""), "2", "%", "");
  records.PinAssign("");
  const std::string s = records.Text();
  EXPECT_NE(s.find("(portName \"%%\") (portType INOUT))\n)\n(internal"), std::string::npos) << s;
  EXPECT_NE(s.find("(port \"1\" (symbPinId 0) (portName \"%\"))\n"), std::string::npos) << s;
}

TEST(PartsFile, SignsGrowWithEachWriting) {
  Records records;
  Records::Port(records.Part("A", "Q"), "1", "%\"(", "IN");
  records.PinAssign("Q");
  std::string signs = "%";
  for (int i = 0; i < 10; ++i) {
    signs += signs;
    const std::string port = "(port \"1\" (symbPinId 0) (portName \"" + signs + "\"(\") (portType IN))\n";
    EXPECT_EQ(records.Text(),
              "(Japanese_coding: sjis)\n(pinAssign \"Q\"\n(uver 1)\n(interface\n" + port +
                  ")\n(internal\n)\n)\n\n(part \"A\"\n(packageRef \"\")\n(pinAssignRef \"Q\")\n(interface\n" + port +
                  ")\n)\n\n");
  }
}

TEST(PartsFile, SignsGrowWithEachPinAssignOfOneName) {
  Records records;
  Records::Port(records.Part("A", "Q"), "1", "%", "IN");
  for (int i = 0; i < 12; ++i) records.PinAssign("Q");
  records.Text();
  EXPECT_EQ(records.parts.GetAt(0)->m_pPortArray->GetAt(0)->m_sPortName, std::string_view(std::string(4096, '%')));
}

TEST(PartsFile, NullArraysOfRecordsRaise) {
  const auto raises = [](auto clear) {
    Records records;
    Records::Port(records.Part("A", "Q"), "1", "N", "");
    Records::Instance(records.PinAssign("Q"), "F", "1", "2");
    records.Function("F", "1", "");
    clear(records);
    EXPECT_THROW(records.Text(), CInvalidArgException);
  };
  raises([](Records& r) { delete std::exchange(r.functions.GetAt(0)->m_pPortArray, nullptr); });
  raises([](Records& r) { delete std::exchange(r.pinAssigns.GetAt(0)->m_pFuncInstArray, nullptr); });
  raises([](Records& r) {
    delete std::exchange(r.pinAssigns.GetAt(0)->m_pFuncInstArray->GetAt(0)->m_pPortArray, nullptr);
  });
  raises([](Records& r) { delete std::exchange(r.parts.GetAt(0)->m_pPortArray, nullptr); });
  raises([](Records& r) { delete std::exchange(r.parts.GetAt(0)->m_pPropertyArray, nullptr); });
}

// What the scanner makes of a written file, and what is written of that.
TEST(PartsFile, ComesBackWithDifferences) {
  Records records;
  records.Function("F", "1", "IN").m_nUver = 3;
  Records::Port(records.Part("A", "Q"), "1", "N", "");
  records.parts.GetAt(0)->m_pPortArray->GetAt(0)->m_nSymbPinId = 5;
  CVRXoutPrfPinAssign& pinAssign = records.PinAssign("Q");
  pinAssign.m_nUver = 4;
  Records::Instance(pinAssign, "F", "1", "2");
  MemoryFileSystem fileSystem;
  fileSystem.files["file"] = records.Text();
  const laminate::FileSystemScope scope(fileSystem);
  CPC_BD_OutClsGet data;
  data.vGetOutPrfPartArray("file");
  ASSERT_EQ(data.m_pPrfFunctionArray->GetSize(), 1);
  const CVRXoutPrfFunction& function = *data.m_pPrfFunctionArray->GetAt(0);
  EXPECT_EQ(function.m_nUver, 1);
  ASSERT_EQ(function.m_pPortArray->GetSize(), 1);
  EXPECT_EQ(function.m_pPortArray->GetAt(0)->m_sPortType, "IN))");
  EXPECT_EQ(function.m_pPortArray->GetAt(0)->m_nSymbPinId, 7);
  ASSERT_EQ(data.m_pPrfPinAssignArray->GetSize(), 1);
  const CVRXoutPrfPinAssign& read = *data.m_pPrfPinAssignArray->GetAt(0);
  EXPECT_EQ(read.m_nUver, 1);
  ASSERT_EQ(read.m_pPortArray->GetSize(), 1);
  EXPECT_EQ(read.m_pPortArray->GetAt(0)->m_nPinId, 5);
  EXPECT_EQ(read.m_pPortArray->GetAt(0)->m_sPortName, "N");
  EXPECT_EQ(read.m_pPortArray->GetAt(0)->m_sPortType, "(portType");
  ASSERT_EQ(read.m_pFuncInstArray->GetSize(), 1);
  EXPECT_EQ(read.m_pFuncInstArray->GetAt(0)->m_sFunctionRef, "F");
  EXPECT_EQ(read.m_pFuncInstArray->GetAt(0)->m_pPortArray->GetAt(0)->m_sMatch, "2");
  ASSERT_EQ(data.m_pPrfPartArray->GetSize(), 1);
  const CVRXoutPrfPartPort& port = *data.m_pPrfPartArray->GetAt(0)->m_pPortArray->GetAt(0);
  EXPECT_EQ(port.m_sPortType, "INOUT");
  EXPECT_EQ(port.m_nSymbPinId, 0);
  EXPECT_TRUE(data.m_pPrfPartArray->GetAt(0)->m_pPropertyArray->IsEmpty());
  std::string s;
  TextOut out(s);
  laminate::WriteComponentDefinitionFile(out, data.m_pPrfPartArray, data.m_pPrfPinAssignArray,
                                         data.m_pPrfFunctionArray);
  out.Flush();
  EXPECT_NE(s.find("(port \"1\" (symbPinId 7) (portType IN))))\n"), std::string::npos) << s;
  // The head of a package file names the unit.
  fileSystem.files["file"] = PackageText(*data.m_pPackageArray);
  data.m_sUnit = "inch";
  data.vGetOutPackageArray("file");
  EXPECT_EQ(data.m_sUnit, "mm");
}

// Looking the part up anew for each pin assign would take minutes.
TEST(PartsFile, TakesTimeByItsLength) {
  Records records;
  for (int i = 0; i < 100000; ++i) {
    const std::string name = std::to_string(i);
    records.Part("A", name.c_str());
    records.PinAssign(name.c_str());
  }
  const std::clock_t nStart = std::clock();
  records.Text();
  EXPECT_LT(static_cast<double>(std::clock() - nStart) / CLOCKS_PER_SEC, 10.0);
}

}  // namespace
