#include "designdata/CPC_BD_OutClsGet.h"

#include <algorithm>
#include <string>
#include <system_error>

#include "base/BKUtility.h"
#include "base/FileSystem.h"
#include "base/XTokenString.h"
#include "designdata/ComponentFile.h"
#include "designdata/LineScanner.h"
#include "designdata/NameReferences.h"
#include "designdata/PackageFile.h"
#include "designdata/PartsFile.h"
#include "designdata/RecordLookup.h"
#include "designdata/RuleFile.h"
#include "reader/CECadCls.h"

using laminate::FindFirst;
using laminate::LoadStatus;
using laminate::NameKind;
using laminate::Required;
using laminate::WithPlatformFailures;

CPC_BD_OutClsGet::CPC_BD_OutClsGet() {
  laminate::MakeOwned(m_pPackageArray, m_pStackup, m_pLcdbCmpCompArray, m_pPrfFunctionArray, m_pPrfPinAssignArray,
                      m_pRufCompArray, m_pPrfPartArray, m_pRufNetArray, m_pRufRuleArray, m_pRufRuleBoardArray,
                      m_pDesignRuleStackArray, m_pTraceRuleStackArray, m_pElectricalNetArray, m_pBoardSpec);
}

CPC_BD_OutClsGet::CPC_BD_OutClsGet(const CPC_BD_OutClsGet& source) : CPC_BD_OutClsGet() { *this = source; }

CPC_BD_OutClsGet& CPC_BD_OutClsGet::operator=(const CPC_BD_OutClsGet& source) {
  if (this == &source) return *this;
  // The unit takes the host's text: hosts that copy a facade keep what they want to know of it there.
  m_sUnit = source.m_sHostText;
  laminate::CopyRecord(*this, source);
  return *this;
}

CPC_BD_OutClsGet::~CPC_BD_OutClsGet() {
  delete m_pPackageArray;
  delete m_pStackup;
  delete m_pLcdbCmpCompArray;
  delete m_pPrfFunctionArray;
  delete m_pPrfPinAssignArray;
  delete m_pRufCompArray;
  delete m_pPrfPartArray;
  delete m_pRufNetArray;
  delete m_pRufRuleArray;
  delete m_pRufRuleBoardArray;
  delete m_pDesignRuleStackArray;
  delete m_pTraceRuleStackArray;
  delete m_pElectricalNetArray;
  delete m_pBoardSpec;
}

void CPC_BD_OutClsGet::Serialize(CArchive& ar) { laminate::SerializeRecord(ar, *this); }
CPC_BD_OutClsGet* CPC_BD_OutClsGet::clone() const { return new CPC_BD_OutClsGet(*this); }

// The host's own texts are held against each other before any record. The unit is held against what the assignment
// gives it, so that a copy's unit counts as equal.
int CPC_BD_OutClsGet::operator==(const CPC_BD_OutClsGet& other) const {
  return this == &other ||
         (m_sHostText == other.m_sHostText && m_aHostList1 == other.m_aHostList1 &&
          m_aHostList2 == other.m_aHostList2 && m_sUnit == other.m_sHostText && laminate::EqualRecords(*this, other));
}

template <class Read>
void CPC_BD_OutClsGet::Load(const CString& sPath, Read read) {
  m_status = LoadStatus();
  try {
    WithPlatformFailures(read);
  } catch (const CInvalidArgException& e) {
    m_status.Set(LoadStatus::Result::invalidContent, sPath, e.m_nLine, 0, CString(e.what()));
    throw;
  }
}

void CPC_BD_OutClsGet::LoadLines(const CString& sPath, Scan* pScan, std::initializer_list<NameKind> defined) {
  Load(sPath, [&] {
    std::string sText;
    if (const int nError = laminate::ReadWholeFile(sPath.GetString(), sText); nError != 0) {
      m_status.Set(LoadStatus::Result::cannotOpen, sPath, 0, 0,
                   CString(std::generic_category().message(-nError).c_str()));
      return;
    }
    if (m_pReferences != nullptr) {
      for (const NameKind kind : defined) m_pReferences->CanDefine(kind);
    }
    pScan(*this, sText, {sPath, m_pDiagnostics, m_pReferences.get()});
  });
}

void CPC_BD_OutClsGet::vGetOutPackageArray(CString sPath) {
  LoadLines(sPath, &laminate::ScanPackageFile, {NameKind::package});
}

void CPC_BD_OutClsGet::vGetOutPrfPartArray(CString sPath) {
  LoadLines(sPath, &laminate::ScanPartsFile, {NameKind::pinAssign, NameKind::function});
}

void CPC_BD_OutClsGet::vGetOutLcdbCmpCompArray(CString sPath) { LoadLines(sPath, &laminate::ScanComponentFile, {}); }

void CPC_BD_OutClsGet::vGetOutRufCompAndNetArray(CString sPath) {
  Load(sPath, [&] {
    CECadCls reader;
    reader.m_sFileName = sPath;
    reader.m_pDiagnostics = m_pDiagnostics;
    reader.nParseFile(0);
    m_status = reader.m_status;
    laminate::ReadRuleFile(*this, reader, m_pDiagnostics);
  });
}

void CPC_BD_OutClsGet::SetDiagnostics(laminate::Diagnostics* pDiagnostics) {
  WithPlatformFailures(
      [&] { m_pReferences.reset(pDiagnostics == nullptr ? nullptr : new laminate::NameReferences()); });
  m_pDiagnostics = pDiagnostics;
}

void CPC_BD_OutClsGet::ReportUndefinedNames() const {
  if (m_pReferences == nullptr) return;
  WithPlatformFailures([&] { m_pReferences->Report(*m_pDiagnostics); });
}

CVRXoutPackage* CPC_BD_OutClsGet::pGetOutPackageFromArray(CString sName) const {
  return FindFirst(Required(m_pPackageArray), &CVRXoutPackage::m_sName, sName);
}

CVRXoutPackage* CPC_BD_OutClsGet::pGetOutPackageFromArrayWithFootprintName(CString) const {
  // What is compared with is always empty, and hosts know the answers that this gives.
  for (CVRXoutPackage* pPackage : Required(m_pPackageArray)) {
    if (pPackage == nullptr) continue;
    for (const CVRXoutPackageMountForm* pForm : Required(pPackage->m_pMountFormArray)) {
      if (pForm != nullptr && (pForm->m_sFootprintRef.IsEmpty() || pForm->m_sBottomFootprint.IsEmpty())) {
        return pPackage;
      }
    }
  }
  return nullptr;
}

CVRXoutPrfFunction* CPC_BD_OutClsGet::pGetOutPrfFunctionWithName(CString sName) const {
  return FindFirst(Required(m_pPrfFunctionArray), &CVRXoutPrfFunction::m_sName, sName);
}

CVRXoutPrfPinAssign* CPC_BD_OutClsGet::pGetOutPrfPinAssignWithName(CString sName) const {
  return FindFirst(Required(m_pPrfPinAssignArray), &CVRXoutPrfPinAssign::m_sName, sName);
}

CVRXoutRufComp* CPC_BD_OutClsGet::pGetOutRufCompFromArray(CString sName) const {
  return FindFirst(Required(m_pRufCompArray), &CVRXoutRufComp::m_sName, sName);
}

CVRXoutRufNet* CPC_BD_OutClsGet::pGetOutRufNetFromName(CString sName) const {
  return FindFirst(Required(m_pRufNetArray), &CVRXoutRufNet::m_sName, sName);
}

CVRXoutPrfPart* CPC_BD_OutClsGet::pGetOutPrfPartFromPackageRefName(CString sPackageRef) const {
  return FindFirst(Required(m_pPrfPartArray), &CVRXoutPrfPart::m_sPackageRef, sPackageRef);
}

CVRXoutPrfPart* CPC_BD_OutClsGet::pGetBDoutPrfPartFromArrayWithPackageName(CString sPackageRef) const {
  return pGetOutPrfPartFromPackageRefName(sPackageRef);
}

CVRXoutPrfPart* CPC_BD_OutClsGet::pGetOutPrfPartFromArray(CString sName) const {
  const CVRXoutPrfPartArray& parts = Required(m_pPrfPartArray);
  if (CVRXoutPrfPart* pPart = FindFirst(parts, &CVRXoutPrfPart::m_sName, sName)) return pPart;
  for (CVRXoutPrfPart* pPart : parts) {
    if (pPart == nullptr) continue;
    CString sFolderName = pPart->m_sName;
    BKUtility::GetInstance()->ConvertStringForVaildFolderName(sFolderName);
    if (sFolderName == sName) return pPart;
  }
  return nullptr;
}

CString CPC_BD_OutClsGet::GetPinTypeWithPinNo(CString sFunctionName, int nPinNo) const {
  CString sType;
  const CVRXoutPrfFunction* pFunction = pGetOutPrfFunctionWithName(sFunctionName);
  if (pFunction == nullptr) return sType;
  // The last port of that number counts.
  for (const CVRXoutPrfFunctionPort* pPort : Required(pFunction->m_pPortArray)) {
    if (pPort != nullptr && pPort->m_nSymbPinId == nPinNo) sType = pPort->m_sPortType;
  }
  return sType;
}

int CPC_BD_OutClsGet::bIsInCStringArray(CStringArray& arr, CString s) const {
  return std::find(arr.begin(), arr.end(), s) != arr.end();
}

CString CPC_BD_OutClsGet::sGetNthColumn(CString sLine, int n) const { return laminate::NthColumn(sLine, n); }

int CPC_BD_OutClsGet::nGetColumnCount(CString sLine) const {
  return static_cast<int>(laminate::CountColumns(sLine.View()));
}

void CPC_BD_OutClsGet::vCleanString(CString& s) const {
  if (!s.IsEmpty() && s[0] == '"') {
    s.Remove('"');
  } else {
    s.TrimRight(')').TrimRight('"');
  }
}
