#include "designdata/CVRXoutPrfFunction.h"

CVRXoutPrfFunctionPort::CVRXoutPrfFunctionPort(const CVRXoutPrfFunctionPort& source) : CVRXoutPrfFunctionPort() {
  *this = source;
}
CVRXoutPrfFunctionPort& CVRXoutPrfFunctionPort::operator=(const CVRXoutPrfFunctionPort& source) {
  laminate::CopyRecord(*this, source);
  return *this;
}
void CVRXoutPrfFunctionPort::Serialize(CArchive& ar) { laminate::SerializeRecord(ar, *this); }
CVRXoutPrfFunctionPort* CVRXoutPrfFunctionPort::clone() const { return new CVRXoutPrfFunctionPort(*this); }
int CVRXoutPrfFunctionPort::operator==(const CVRXoutPrfFunctionPort& other) const {
  return laminate::EqualRecords(*this, other);
}

CVRXoutPrfFunction::CVRXoutPrfFunction() { laminate::MakeOwned(m_pPropertyArray, m_pPortArray); }
CVRXoutPrfFunction::CVRXoutPrfFunction(const CVRXoutPrfFunction& source) : CVRXoutPrfFunction() { *this = source; }
CVRXoutPrfFunction& CVRXoutPrfFunction::operator=(const CVRXoutPrfFunction& source) {
  laminate::CopyRecord(*this, source);
  return *this;
}
CVRXoutPrfFunction::~CVRXoutPrfFunction() {
  delete m_pPropertyArray;
  delete m_pPortArray;
}
void CVRXoutPrfFunction::Serialize(CArchive& ar) { laminate::SerializeRecord(ar, *this); }
CVRXoutPrfFunction* CVRXoutPrfFunction::clone() const { return new CVRXoutPrfFunction(*this); }
int CVRXoutPrfFunction::operator==(const CVRXoutPrfFunction& other) const {
  return laminate::EqualRecords(*this, other);
}
