#include "designdata/CVRXoutRufStackup.h"

CVRXoutRufStackupLayer::CVRXoutRufStackupLayer(const CVRXoutRufStackupLayer& source) : CVRXoutRufStackupLayer() {
  *this = source;
}
CVRXoutRufStackupLayer& CVRXoutRufStackupLayer::operator=(const CVRXoutRufStackupLayer& source) {
  laminate::CopyRecord(*this, source);
  return *this;
}
void CVRXoutRufStackupLayer::Serialize(CArchive& ar) { laminate::SerializeRecord(ar, *this); }
CVRXoutRufStackupLayer* CVRXoutRufStackupLayer::clone() const { return new CVRXoutRufStackupLayer(*this); }
int CVRXoutRufStackupLayer::operator==(const CVRXoutRufStackupLayer& other) const {
  return laminate::EqualRecords(*this, other);
}

CVRXoutRufStackup::CVRXoutRufStackup() { laminate::MakeOwned(m_pLayerArray); }
// Hosts rely on a stack-up staying with its facade: neither a copy nor an assignment takes its layers along.
CVRXoutRufStackup::CVRXoutRufStackup(const CVRXoutRufStackup&) : CVRXoutRufStackup() {}
CVRXoutRufStackup& CVRXoutRufStackup::operator=(const CVRXoutRufStackup&) { return *this; }
CVRXoutRufStackup::~CVRXoutRufStackup() { delete m_pLayerArray; }
void CVRXoutRufStackup::Serialize(CArchive& ar) { laminate::SerializeRecord(ar, *this); }
CVRXoutRufStackup* CVRXoutRufStackup::clone() const { return new CVRXoutRufStackup(*this); }
// Only identity counts: equal content has always been answered with 0 too.
int CVRXoutRufStackup::operator==(const CVRXoutRufStackup& other) const { return this == &other; }
