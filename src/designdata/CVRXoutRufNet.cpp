#include "designdata/CVRXoutRufNet.h"

CVRXoutRufNetFuncTerm::CVRXoutRufNetFuncTerm(const CVRXoutRufNetFuncTerm& source) : CVRXoutRufNetFuncTerm() {
  *this = source;
}
CVRXoutRufNetFuncTerm& CVRXoutRufNetFuncTerm::operator=(const CVRXoutRufNetFuncTerm& source) {
  laminate::CopyRecord(*this, source);
  return *this;
}
void CVRXoutRufNetFuncTerm::Serialize(CArchive& ar) { laminate::SerializeRecord(ar, *this); }
CVRXoutRufNetFuncTerm* CVRXoutRufNetFuncTerm::clone() const { return new CVRXoutRufNetFuncTerm(*this); }
int CVRXoutRufNetFuncTerm::operator==(const CVRXoutRufNetFuncTerm& other) const {
  return laminate::EqualRecords(*this, other);
}

CVRXoutRufNet::CVRXoutRufNet() { laminate::MakeOwned(m_pPropertyArray, m_pFuncTermArray); }
CVRXoutRufNet::CVRXoutRufNet(const CVRXoutRufNet& source) : CVRXoutRufNet() { *this = source; }
CVRXoutRufNet& CVRXoutRufNet::operator=(const CVRXoutRufNet& source) {
  laminate::CopyRecord(*this, source);
  return *this;
}
CVRXoutRufNet::~CVRXoutRufNet() {
  delete m_pPropertyArray;
  delete m_pFuncTermArray;
}
void CVRXoutRufNet::Serialize(CArchive& ar) { laminate::SerializeRecord(ar, *this); }
CVRXoutRufNet* CVRXoutRufNet::clone() const { return new CVRXoutRufNet(*this); }
int CVRXoutRufNet::operator==(const CVRXoutRufNet& other) const { return laminate::EqualRecords(*this, other); }
