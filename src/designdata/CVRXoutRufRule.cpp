#include "designdata/CVRXoutRufRule.h"

#include <string_view>

#include "designdata/RecordLookup.h"

namespace {
constexpr std::string_view kDesignRuleUnit = "designRuleUnit";
}

CVRXoutRufRule::CVRXoutRufRule(const CVRXoutRufRule& source) : CVRXoutRufRule() { *this = source; }
CVRXoutRufRule& CVRXoutRufRule::operator=(const CVRXoutRufRule& source) {
  laminate::CopyRecord(*this, source);
  return *this;
}
void CVRXoutRufRule::Serialize(CArchive& ar) { laminate::SerializeRecord(ar, *this); }
CVRXoutRufRule* CVRXoutRufRule::clone() const { return new CVRXoutRufRule(*this); }
int CVRXoutRufRule::operator==(const CVRXoutRufRule& other) const { return laminate::EqualRecords(*this, other); }

CVRXoutRufRuleArray::CVRXoutRufRuleArray(const CVRXoutRufRuleArray& source) : RecordArray(source) {}

// The name stays the target's.
CVRXoutRufRuleArray& CVRXoutRufRuleArray::operator=(const CVRXoutRufRuleArray& source) {
  RecordArray::operator=(source);
  return *this;
}

double CVRXoutRufRuleArray::GetClearanceValue(const CString& sFirst, const CString& sSecond,
                                              const CString& sItem) const {
  constexpr double kNoRule = -1.0;
  for (const CVRXoutRufRule* p : *this) {
    if (p != nullptr && p->m_sRuleKind == kDesignRuleUnit && p->m_sRuleItem == sItem && p->m_sFirst == sFirst &&
        p->m_sSecond == sSecond) {
      return p->m_dValue;
    }
  }
  return kNoRule;
}

void CVRXoutRufRuleArray::GetDesignRuleUnit(CString& sName, CVRXoutRufRuleArray* pResult) const {
  CVRXoutRufRuleArray& result = laminate::Required(pResult);
  // By index and size at the start, so that the array may be its own result.
  const INT_PTR nSize = GetSize();
  for (INT_PTR i = 0; i < nSize; ++i) {
    CVRXoutRufRule* p = GetAt(i);
    if (p != nullptr && p->m_sRuleKind == kDesignRuleUnit && p->m_sRuleName == sName) result.Add(p);
  }
}

CVRXoutRufRuleArray* CVRXoutRufRuleArrayArray::Find(CString sName) const {
  return laminate::FindFirst(*this, &CVRXoutRufRuleArray::m_sName, sName);
}

void CVRXoutRufRuleArrayArray::RemoveAllRuleArrayItem() {
  for (CVRXoutRufRuleArray* p : *this) {
    if (p != nullptr) p->SetSize(0, -1);
  }
}

CVRXoutRufRuleBoard::CVRXoutRufRuleBoard(const CVRXoutRufRuleBoard& source) : CVRXoutRufRuleBoard() { *this = source; }
CVRXoutRufRuleBoard& CVRXoutRufRuleBoard::operator=(const CVRXoutRufRuleBoard& source) {
  laminate::CopyRecord(*this, source);
  return *this;
}
void CVRXoutRufRuleBoard::Serialize(CArchive& ar) { laminate::SerializeRecord(ar, *this); }
CVRXoutRufRuleBoard* CVRXoutRufRuleBoard::clone() const { return new CVRXoutRufRuleBoard(*this); }
int CVRXoutRufRuleBoard::operator==(const CVRXoutRufRuleBoard& other) const {
  return laminate::EqualRecords(*this, other);
}

CVRXoutRufRuleBoard* CVRXoutRufRuleBoardArray::Find(CString sName) const {
  return laminate::FindFirst(*this, &CVRXoutRufRuleBoard::m_sName, sName);
}

CVRXoutRufRuleElectricalNet::CVRXoutRufRuleElectricalNet(const CVRXoutRufRuleElectricalNet& source)
    : CVRXoutRufRuleElectricalNet() {
  *this = source;
}
CVRXoutRufRuleElectricalNet& CVRXoutRufRuleElectricalNet::operator=(const CVRXoutRufRuleElectricalNet& source) {
  laminate::CopyRecord(*this, source);
  return *this;
}
void CVRXoutRufRuleElectricalNet::Serialize(CArchive& ar) { laminate::SerializeRecord(ar, *this); }
CVRXoutRufRuleElectricalNet* CVRXoutRufRuleElectricalNet::clone() const {
  return new CVRXoutRufRuleElectricalNet(*this);
}
// The comparison has always come out equal, whatever the names; hosts that compare facades count on it.
int CVRXoutRufRuleElectricalNet::operator==(const CVRXoutRufRuleElectricalNet&) const { return 1; }
