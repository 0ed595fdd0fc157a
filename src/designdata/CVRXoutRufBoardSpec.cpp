#include "designdata/CVRXoutRufBoardSpec.h"

CVRXoutRufBoardSpecDefaultGrid::CVRXoutRufBoardSpecDefaultGrid(const CVRXoutRufBoardSpecDefaultGrid& source)
    : CVRXoutRufBoardSpecDefaultGrid() {
  *this = source;
}
CVRXoutRufBoardSpecDefaultGrid& CVRXoutRufBoardSpecDefaultGrid::operator=(
    const CVRXoutRufBoardSpecDefaultGrid& source) {
  laminate::CopyRecord(*this, source);
  return *this;
}
void CVRXoutRufBoardSpecDefaultGrid::Serialize(CArchive& ar) { laminate::SerializeRecord(ar, *this); }
CVRXoutRufBoardSpecDefaultGrid* CVRXoutRufBoardSpecDefaultGrid::clone() const {
  return new CVRXoutRufBoardSpecDefaultGrid(*this);
}
int CVRXoutRufBoardSpecDefaultGrid::operator==(const CVRXoutRufBoardSpecDefaultGrid& other) const {
  return laminate::EqualRecords(*this, other);
}

CVRXoutRufBoardSpecDrillingRule::CVRXoutRufBoardSpecDrillingRule(const CVRXoutRufBoardSpecDrillingRule& source)
    : CVRXoutRufBoardSpecDrillingRule() {
  *this = source;
}
CVRXoutRufBoardSpecDrillingRule& CVRXoutRufBoardSpecDrillingRule::operator=(
    const CVRXoutRufBoardSpecDrillingRule& source) {
  laminate::CopyRecord(*this, source);
  return *this;
}
void CVRXoutRufBoardSpecDrillingRule::Serialize(CArchive& ar) { laminate::SerializeRecord(ar, *this); }
CVRXoutRufBoardSpecDrillingRule* CVRXoutRufBoardSpecDrillingRule::clone() const {
  return new CVRXoutRufBoardSpecDrillingRule(*this);
}
int CVRXoutRufBoardSpecDrillingRule::operator==(const CVRXoutRufBoardSpecDrillingRule& other) const {
  return laminate::EqualRecords(*this, other);
}

CVRXoutRufBoardSpecGridDef::CVRXoutRufBoardSpecGridDef(const CVRXoutRufBoardSpecGridDef& source)
    : CVRXoutRufBoardSpecGridDef() {
  *this = source;
}
CVRXoutRufBoardSpecGridDef& CVRXoutRufBoardSpecGridDef::operator=(const CVRXoutRufBoardSpecGridDef& source) {
  laminate::CopyRecord(*this, source);
  return *this;
}
void CVRXoutRufBoardSpecGridDef::Serialize(CArchive& ar) { laminate::SerializeRecord(ar, *this); }
CVRXoutRufBoardSpecGridDef* CVRXoutRufBoardSpecGridDef::clone() const { return new CVRXoutRufBoardSpecGridDef(*this); }
int CVRXoutRufBoardSpecGridDef::operator==(const CVRXoutRufBoardSpecGridDef& other) const {
  return laminate::EqualRecords(*this, other);
}

CVRXoutRufBoardSpecpatternWidth::CVRXoutRufBoardSpecpatternWidth(const CVRXoutRufBoardSpecpatternWidth& source)
    : CVRXoutRufBoardSpecpatternWidth() {
  *this = source;
}
CVRXoutRufBoardSpecpatternWidth& CVRXoutRufBoardSpecpatternWidth::operator=(
    const CVRXoutRufBoardSpecpatternWidth& source) {
  laminate::CopyRecord(*this, source);
  return *this;
}
void CVRXoutRufBoardSpecpatternWidth::Serialize(CArchive& ar) { laminate::SerializeRecord(ar, *this); }
CVRXoutRufBoardSpecpatternWidth* CVRXoutRufBoardSpecpatternWidth::clone() const {
  return new CVRXoutRufBoardSpecpatternWidth(*this);
}
int CVRXoutRufBoardSpecpatternWidth::operator==(const CVRXoutRufBoardSpecpatternWidth& other) const {
  return laminate::EqualRecords(*this, other);
}

CVRXoutRufBoardSpec::CVRXoutRufBoardSpec(const CVRXoutRufBoardSpec& source) : CVRXoutRufBoardSpec() { *this = source; }
CVRXoutRufBoardSpec& CVRXoutRufBoardSpec::operator=(const CVRXoutRufBoardSpec& source) {
  laminate::CopyRecord(*this, source);
  return *this;
}
void CVRXoutRufBoardSpec::Serialize(CArchive& ar) { laminate::SerializeRecord(ar, *this); }
CVRXoutRufBoardSpec* CVRXoutRufBoardSpec::clone() const { return new CVRXoutRufBoardSpec(*this); }
// Only identity counts: two specs of equal content differ, since each belongs to its facade.
int CVRXoutRufBoardSpec::operator==(const CVRXoutRufBoardSpec& other) const { return this == &other; }
