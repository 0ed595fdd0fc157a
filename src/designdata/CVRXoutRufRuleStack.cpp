#include "designdata/CVRXoutRufRuleStack.h"

#include "designdata/RecordLookup.h"

namespace {
template <class Array>
void AppendNames(const Array& stacks, CStringArray& arrNames) {
  for (const auto* p : stacks) {
    if (p != nullptr) arrNames.Add(p->m_sName);
  }
}
}  // namespace

CVRXoutRufRuleDesignRuleStackEachLayer::CVRXoutRufRuleDesignRuleStackEachLayer(
    const CVRXoutRufRuleDesignRuleStackEachLayer& source)
    : CVRXoutRufRuleDesignRuleStackEachLayer() {
  *this = source;
}
CVRXoutRufRuleDesignRuleStackEachLayer& CVRXoutRufRuleDesignRuleStackEachLayer::operator=(
    const CVRXoutRufRuleDesignRuleStackEachLayer& source) {
  laminate::CopyRecord(*this, source);
  return *this;
}
void CVRXoutRufRuleDesignRuleStackEachLayer::Serialize(CArchive& ar) { laminate::SerializeRecord(ar, *this); }
CVRXoutRufRuleDesignRuleStackEachLayer* CVRXoutRufRuleDesignRuleStackEachLayer::clone() const {
  return new CVRXoutRufRuleDesignRuleStackEachLayer(*this);
}
int CVRXoutRufRuleDesignRuleStackEachLayer::operator==(const CVRXoutRufRuleDesignRuleStackEachLayer& other) const {
  return laminate::EqualRecords(*this, other);
}

CVRXoutRufRuleDesignRuleStackEachLayer* CVRXoutRufRuleDesignRuleStackEachLayerArray::Find(int nLayerNo) const {
  return laminate::FindFirst(*this, &CVRXoutRufRuleDesignRuleStackEachLayer::m_nLayerNo, nLayerNo);
}

CString CVRXoutRufRuleDesignRuleStackEachLayerArray::GetRuleNameByLayer(int nLayerNo) const {
  const CVRXoutRufRuleDesignRuleStackEachLayer* p = Find(nLayerNo);
  return p == nullptr ? CString() : p->m_sRuleName;
}

CVRXoutRufRuleDesignRuleStack::CVRXoutRufRuleDesignRuleStack(const CVRXoutRufRuleDesignRuleStack& source)
    : CVRXoutRufRuleDesignRuleStack() {
  *this = source;
}
CVRXoutRufRuleDesignRuleStack& CVRXoutRufRuleDesignRuleStack::operator=(const CVRXoutRufRuleDesignRuleStack& source) {
  laminate::CopyRecord(*this, source);
  return *this;
}
void CVRXoutRufRuleDesignRuleStack::Serialize(CArchive& ar) { laminate::SerializeRecord(ar, *this); }
CVRXoutRufRuleDesignRuleStack* CVRXoutRufRuleDesignRuleStack::clone() const {
  return new CVRXoutRufRuleDesignRuleStack(*this);
}
int CVRXoutRufRuleDesignRuleStack::operator==(const CVRXoutRufRuleDesignRuleStack& other) const {
  return laminate::EqualRecords(*this, other);
}

CVRXoutRufRuleDesignRuleStack* CVRXoutRufRuleDesignRuleStackArray::Find(CString sName) const {
  return laminate::FindFirst(*this, &CVRXoutRufRuleDesignRuleStack::m_sName, sName);
}

void CVRXoutRufRuleDesignRuleStackArray::GetDesignRuleStackNames(CStringArray& arrNames) const {
  AppendNames(*this, arrNames);
}

CVRXoutRufRuleTraceRuleStackEachLayer::CVRXoutRufRuleTraceRuleStackEachLayer(
    const CVRXoutRufRuleTraceRuleStackEachLayer& source)
    : CVRXoutRufRuleTraceRuleStackEachLayer() {
  *this = source;
}
CVRXoutRufRuleTraceRuleStackEachLayer& CVRXoutRufRuleTraceRuleStackEachLayer::operator=(
    const CVRXoutRufRuleTraceRuleStackEachLayer& source) {
  laminate::CopyRecord(*this, source);
  return *this;
}
void CVRXoutRufRuleTraceRuleStackEachLayer::Serialize(CArchive& ar) { laminate::SerializeRecord(ar, *this); }
CVRXoutRufRuleTraceRuleStackEachLayer* CVRXoutRufRuleTraceRuleStackEachLayer::clone() const {
  return new CVRXoutRufRuleTraceRuleStackEachLayer(*this);
}
int CVRXoutRufRuleTraceRuleStackEachLayer::operator==(const CVRXoutRufRuleTraceRuleStackEachLayer& other) const {
  return laminate::EqualRecords(*this, other);
}

CVRXoutRufRuleTraceRuleStackEachLayer* CVRXoutRufRuleTraceRuleStackEachLayerArray::Find(int nLayerNo) const {
  return laminate::FindFirst(*this, &CVRXoutRufRuleTraceRuleStackEachLayer::m_nLayerNo, nLayerNo);
}

CVRXoutRufRuleTraceRuleStack::CVRXoutRufRuleTraceRuleStack(const CVRXoutRufRuleTraceRuleStack& source)
    : CVRXoutRufRuleTraceRuleStack() {
  *this = source;
}
CVRXoutRufRuleTraceRuleStack& CVRXoutRufRuleTraceRuleStack::operator=(const CVRXoutRufRuleTraceRuleStack& source) {
  laminate::CopyRecord(*this, source);
  return *this;
}
void CVRXoutRufRuleTraceRuleStack::Serialize(CArchive& ar) { laminate::SerializeRecord(ar, *this); }
CVRXoutRufRuleTraceRuleStack* CVRXoutRufRuleTraceRuleStack::clone() const {
  return new CVRXoutRufRuleTraceRuleStack(*this);
}
int CVRXoutRufRuleTraceRuleStack::operator==(const CVRXoutRufRuleTraceRuleStack& other) const {
  return laminate::EqualRecords(*this, other);
}

CVRXoutRufRuleTraceRuleStack* CVRXoutRufRuleTraceRuleStackArray::Find(CString sName) const {
  return laminate::FindFirst(*this, &CVRXoutRufRuleTraceRuleStack::m_sName, sName);
}

void CVRXoutRufRuleTraceRuleStackArray::GetTraceRuleStackNames(CStringArray& arrNames) const {
  AppendNames(*this, arrNames);
}
