#include "designdata/CVRXoutPrfPinAssign.h"

#include "designdata/RecordLookup.h"

CVRXoutPrfPinAssignPort::CVRXoutPrfPinAssignPort(const CVRXoutPrfPinAssignPort& source) : CVRXoutPrfPinAssignPort() {
  *this = source;
}
CVRXoutPrfPinAssignPort& CVRXoutPrfPinAssignPort::operator=(const CVRXoutPrfPinAssignPort& source) {
  laminate::CopyRecord(*this, source);
  return *this;
}
void CVRXoutPrfPinAssignPort::Serialize(CArchive& ar) { laminate::SerializeRecord(ar, *this); }
CVRXoutPrfPinAssignPort* CVRXoutPrfPinAssignPort::clone() const { return new CVRXoutPrfPinAssignPort(*this); }
int CVRXoutPrfPinAssignPort::operator==(const CVRXoutPrfPinAssignPort& other) const {
  return laminate::EqualRecords(*this, other);
}

CVRXoutPrfPinAssignFuncInstPort::CVRXoutPrfPinAssignFuncInstPort(const CVRXoutPrfPinAssignFuncInstPort& source)
    : CVRXoutPrfPinAssignFuncInstPort() {
  *this = source;
}
CVRXoutPrfPinAssignFuncInstPort& CVRXoutPrfPinAssignFuncInstPort::operator=(
    const CVRXoutPrfPinAssignFuncInstPort& source) {
  laminate::CopyRecord(*this, source);
  return *this;
}
void CVRXoutPrfPinAssignFuncInstPort::Serialize(CArchive& ar) { laminate::SerializeRecord(ar, *this); }
CVRXoutPrfPinAssignFuncInstPort* CVRXoutPrfPinAssignFuncInstPort::clone() const {
  return new CVRXoutPrfPinAssignFuncInstPort(*this);
}
int CVRXoutPrfPinAssignFuncInstPort::operator==(const CVRXoutPrfPinAssignFuncInstPort& other) const {
  return laminate::EqualRecords(*this, other);
}

CVRXoutPrfPinAssignFuncInst::CVRXoutPrfPinAssignFuncInst() { laminate::MakeOwned(m_pPortArray); }
CVRXoutPrfPinAssignFuncInst::CVRXoutPrfPinAssignFuncInst(const CVRXoutPrfPinAssignFuncInst& source)
    : CVRXoutPrfPinAssignFuncInst() {
  *this = source;
}
CVRXoutPrfPinAssignFuncInst& CVRXoutPrfPinAssignFuncInst::operator=(const CVRXoutPrfPinAssignFuncInst& source) {
  laminate::CopyRecord(*this, source);
  return *this;
}
CVRXoutPrfPinAssignFuncInst::~CVRXoutPrfPinAssignFuncInst() { delete m_pPortArray; }
void CVRXoutPrfPinAssignFuncInst::Serialize(CArchive& ar) { laminate::SerializeRecord(ar, *this); }
CVRXoutPrfPinAssignFuncInst* CVRXoutPrfPinAssignFuncInst::clone() const {
  return new CVRXoutPrfPinAssignFuncInst(*this);
}
int CVRXoutPrfPinAssignFuncInst::operator==(const CVRXoutPrfPinAssignFuncInst& other) const {
  return laminate::EqualRecords(*this, other);
}

CVRXoutPrfPinAssign::CVRXoutPrfPinAssign() { laminate::MakeOwned(m_pPropertyArray, m_pFuncInstArray, m_pPortArray); }
CVRXoutPrfPinAssign::CVRXoutPrfPinAssign(const CVRXoutPrfPinAssign& source) : CVRXoutPrfPinAssign() { *this = source; }
CVRXoutPrfPinAssign& CVRXoutPrfPinAssign::operator=(const CVRXoutPrfPinAssign& source) {
  laminate::CopyRecord(*this, source);
  return *this;
}
CVRXoutPrfPinAssign::~CVRXoutPrfPinAssign() {
  delete m_pPropertyArray;
  delete m_pFuncInstArray;
  delete m_pPortArray;
}
void CVRXoutPrfPinAssign::Serialize(CArchive& ar) { laminate::SerializeRecord(ar, *this); }
CVRXoutPrfPinAssign* CVRXoutPrfPinAssign::clone() const { return new CVRXoutPrfPinAssign(*this); }
int CVRXoutPrfPinAssign::operator==(const CVRXoutPrfPinAssign& other) const {
  return laminate::EqualRecords(*this, other);
}

int CVRXoutPrfPinAssign::GetPinIDWithPortNo(CString sPortNo) const {
  constexpr int kNoPin = -1;
  const auto* pPort =
      laminate::FindFirst(laminate::Required(m_pPortArray), &CVRXoutPrfPinAssignPort::m_sPortNo, sPortNo);
  return pPort == nullptr ? kNoPin : pPort->m_nPinId;
}

CString CVRXoutPrfPinAssign::GetPortTypeWithPortNo(CString sPortNo) const {
  const auto* pPort =
      laminate::FindFirst(laminate::Required(m_pPortArray), &CVRXoutPrfPinAssignPort::m_sPortNo, sPortNo);
  return pPort == nullptr ? CString("INOUT") : pPort->m_sPortType;
}
