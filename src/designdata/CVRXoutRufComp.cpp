#include "designdata/CVRXoutRufComp.h"

CVRXoutRufComp::CVRXoutRufComp() { laminate::MakeOwned(m_pAssignArray, m_pPropertyArray); }
CVRXoutRufComp::CVRXoutRufComp(const CVRXoutRufComp& source) : CVRXoutRufComp() { *this = source; }
CVRXoutRufComp& CVRXoutRufComp::operator=(const CVRXoutRufComp& source) {
  laminate::CopyRecord(*this, source);
  return *this;
}
CVRXoutRufComp::~CVRXoutRufComp() {
  delete m_pAssignArray;
  delete m_pPropertyArray;
}
void CVRXoutRufComp::Serialize(CArchive& ar) { laminate::SerializeRecord(ar, *this); }
CVRXoutRufComp* CVRXoutRufComp::clone() const { return new CVRXoutRufComp(*this); }
int CVRXoutRufComp::operator==(const CVRXoutRufComp& other) const { return laminate::EqualRecords(*this, other); }
