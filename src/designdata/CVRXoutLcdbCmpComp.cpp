#include "designdata/CVRXoutLcdbCmpComp.h"

#include "designdata/RecordLookup.h"

CVRXoutLcdbCmpCompPin::CVRXoutLcdbCmpCompPin(const CVRXoutLcdbCmpCompPin& source) : CVRXoutLcdbCmpCompPin() {
  *this = source;
}
CVRXoutLcdbCmpCompPin& CVRXoutLcdbCmpCompPin::operator=(const CVRXoutLcdbCmpCompPin& source) {
  laminate::CopyRecord(*this, source);
  return *this;
}
void CVRXoutLcdbCmpCompPin::Serialize(CArchive& ar) { laminate::SerializeRecord(ar, *this); }
CVRXoutLcdbCmpCompPin* CVRXoutLcdbCmpCompPin::clone() const { return new CVRXoutLcdbCmpCompPin(*this); }
int CVRXoutLcdbCmpCompPin::operator==(const CVRXoutLcdbCmpCompPin& other) const {
  return laminate::EqualRecords(*this, other);
}

CVRXoutLcdbCmpComp::CVRXoutLcdbCmpComp() { laminate::MakeOwned(m_pPinArray); }
CVRXoutLcdbCmpComp::CVRXoutLcdbCmpComp(const CVRXoutLcdbCmpComp& source) : CVRXoutLcdbCmpComp() { *this = source; }
CVRXoutLcdbCmpComp& CVRXoutLcdbCmpComp::operator=(const CVRXoutLcdbCmpComp& source) {
  laminate::CopyRecord(*this, source);
  return *this;
}
CVRXoutLcdbCmpComp::~CVRXoutLcdbCmpComp() { delete m_pPinArray; }
void CVRXoutLcdbCmpComp::Serialize(CArchive& ar) { laminate::SerializeRecord(ar, *this); }
CVRXoutLcdbCmpComp* CVRXoutLcdbCmpComp::clone() const { return new CVRXoutLcdbCmpComp(*this); }
int CVRXoutLcdbCmpComp::operator==(const CVRXoutLcdbCmpComp& other) const {
  return laminate::EqualRecords(*this, other);
}

CVRXoutLcdbCmpCompPin* CVRXoutLcdbCmpComp::pGetLcdbCmpCompPinWithPinID(int nPinId) const {
  return laminate::FindFirst(laminate::Required(m_pPinArray), &CVRXoutLcdbCmpCompPin::m_nPinId, nPinId);
}

CString CVRXoutLcdbCmpComp::sGetLcdbCmpCompPinGatePinNameWithPinName(CString sPinName) const {
  for (const CVRXoutLcdbCmpCompPin* pPin : laminate::Required(m_pPinArray)) {
    if (pPin == nullptr) continue;
    for (const CString& s : pPin->m_aPinNames) {
      if (s == sPinName) return pPin->m_sGatePinName;
    }
  }
  return CString();
}

CVRXoutLcdbCmpComp* CVRXoutLcdbCmpCompArray::pGetBDOutLcdbCmpCompFromCompName(CString sCompName) const {
  return laminate::FindFirst(*this, &CVRXoutLcdbCmpComp::m_sCompName, sCompName);
}

CVRXoutLcdbCmpComp* CVRXoutLcdbCmpCompArray::pGetBDOutLcdbCmpCompFromFunctionName(CString sFunctionName) const {
  return laminate::FindFirst(*this, &CVRXoutLcdbCmpComp::m_sFunctionName, sFunctionName);
}
