#include "export/CompanionFiles.h"

#include <gtest/gtest.h>

#include <string>

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

}  // namespace
