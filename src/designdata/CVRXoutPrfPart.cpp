#include "designdata/CVRXoutPrfPart.h"

#include <algorithm>
#include <array>
#include <functional>
#include <initializer_list>
#include <new>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "base/WriterText.h"
#include "designdata/RecordLookup.h"

namespace {

constexpr std::string_view kUver = "uver";

// Properties that stand in the file as a keyword of their own, with the value as it is.
constexpr std::string_view kSkipList[] = {"uver",     "useInSchema",      "useInLayout", "inPartsList",
                                          "partType", "placeRestriction", "polarity",    "designation"};

bool IsInSkipList(std::string_view sKey) {
  return std::find(std::begin(kSkipList), std::end(kSkipList), sKey) != std::end(kSkipList);
}

struct KeyAndValue {
  std::string_view key;
  std::string_view value;
  bool operator==(const KeyAndValue&) const = default;
};
struct KeyAndValueHash {
  std::size_t operator()(const KeyAndValue& s) const {
    const std::hash<std::string_view> hash;
    return hash(s.key) * 31 + hash(s.value);
  }
};

// Tells which properties have a later one of equal key and value.
std::vector<bool> FindDuplicates(const CLPropertyArray& properties) {
  try {
    std::unordered_set<KeyAndValue, KeyAndValueHash> seen;
    std::vector<bool> bDuplicate(static_cast<std::size_t>(properties.GetSize()));
    for (std::size_t i = bDuplicate.size(); i-- > 0;) {
      const CLProperty* p = properties.GetData()[i];
      bDuplicate[i] = p != nullptr && !seen.insert({p->m_sItem.View(), p->m_sComment.View()}).second;
    }
    return bDuplicate;
  } catch (const std::bad_alloc&) {
    AfxThrowMemoryException();
  }
}

// Of properties with equal key and value the last one stays; the others keep their order.
void RemoveDuplicates(CLPropertyArray& properties) {
  const std::vector<bool> bDuplicate = FindDuplicates(properties);
  INT_PTR nKept = 0;
  for (std::size_t i = 0; i < bDuplicate.size(); ++i) {
    CLProperty* p = properties.GetData()[i];
    if (bDuplicate[i]) {
      delete p;
    } else {
      properties.GetData()[nKept++] = p;
    }
  }
  properties.SetSize(nKept);
}

}  // namespace

void CVRXoutPrfPartPort::Write(laminate::TextOut& out) const {
  if (m_sPortType.IsEmpty()) {
    out.Print<"(port \"%s\" (symbPinId %d) (portName \"%s\"))\n">(m_sPortNo, m_nSymbPinId, m_sPortName);
  } else {
    out.Print<"(port \"%s\" (symbPinId %d) (portName \"%s\") (portType %s))\n">(m_sPortNo, m_nSymbPinId, m_sPortName,
                                                                                m_sPortType);
  }
}

CVRXoutPrfPartGateDef::CVRXoutPrfPartGateDef() { laminate::MakeOwned(m_pPropertyArray); }
CVRXoutPrfPartGateDef::~CVRXoutPrfPartGateDef() { delete m_pPropertyArray; }

void CVRXoutPrfPartGateDef::Write(laminate::TextOut& out) {
  for (CString& s : m_aPortRefs) {
    laminate::DoublePercents(s);
    out.Print<"(gateTermDef (portRef \"%s\"))\n">(s);
  }
}

int CVRXoutPrfPartGateDef::nPrint2File(FILE* fp) {
  return laminate::PrintTo(fp, [&](laminate::TextOut& out) { Write(out); });
}

// The parts that hold an array sit in a circle, and the array dies with the last of them. A host may have put another
// array into a field since: such a part holds its seat in vain, and loses it to whoever asks round, so that each seat
// is asked in vain only once.
struct CVRXoutPrfPart::Sharing final : laminate::Pooled {
  struct Seat {
    const void* pArray = nullptr;  // none: the seat is free
    const CVRXoutPrfPart* pPart = nullptr;
    Seat* pNext = this;
    Seat* pPrevious = this;

    void Leave() {
      pNext->pPrevious = pPrevious;
      pPrevious->pNext = pNext;
      pNext = pPrevious = this;
      pArray = nullptr;
    }
    void SitBeside(Seat& other) {
      pArray = other.pArray;
      pPrevious = &other;
      pNext = other.pNext;
      pNext->pPrevious = this;
      other.pNext = this;
    }
  };

  explicit Sharing(const CVRXoutPrfPart& part) {
    for (Seat& seat : seats) seat.pPart = &part;
  }
  ~Sharing() { LeaveAll(); }
  void LeaveAll() {
    for (Seat& seat : seats) seat.Leave();
  }
  Seat* Find(const void* pArray) {
    const auto it = std::find_if(seats.begin(), seats.end(), [=](const Seat& seat) { return seat.pArray == pArray; });
    return it == seats.end() ? nullptr : &*it;
  }
  // Seats for the arrays that the part holds now, and for no others.
  void Update(const CVRXoutPrfPart& part) {
    for (Seat& seat : seats) {
      if (seat.pArray != nullptr && !part.Holds(seat.pArray)) seat.Leave();
    }
    for (const void* p : std::initializer_list<const void*>{part.m_pPortArray, part.m_pGateDefArray,
                                                            part.m_pPropertyArray, part.m_pStockPropertyArray}) {
      if (Find(p) == nullptr) Find(nullptr)->pArray = p;
    }
  }

  std::array<Seat, 4> seats;
};

CVRXoutPrfPart::CVRXoutPrfPart() {
  laminate::MakeOwned(m_pPortArray, m_pGateDefArray, m_pPropertyArray, m_pStockPropertyArray);
}

CVRXoutPrfPart::CVRXoutPrfPart(const CVRXoutPrfPart& source) : Pooled() { *this = source; }

CVRXoutPrfPart& CVRXoutPrfPart::operator=(const CVRXoutPrfPart& source) {
  if (this == &source) return *this;
  Sharing& ours = TheSharing();
  Sharing& theirs = source.TheSharing();
  LetGo();
  laminate::CopyRecord(*this, source);
  theirs.Update(source);
  for (std::size_t i = 0; i < theirs.seats.size(); ++i) {
    if (theirs.seats[i].pArray != nullptr) ours.seats[i].SitBeside(theirs.seats[i]);
  }
  return *this;
}

CVRXoutPrfPart::~CVRXoutPrfPart() { LetGo(); }
void CVRXoutPrfPart::Serialize(CArchive& ar) { laminate::SerializeRecord(ar, *this); }
CVRXoutPrfPart* CVRXoutPrfPart::clone() const { return new CVRXoutPrfPart(*this); }
int CVRXoutPrfPart::operator==(const CVRXoutPrfPart& other) const { return laminate::EqualRecords(*this, other); }

bool CVRXoutPrfPart::Holds(const void* p) const {
  return p == m_pPortArray || p == m_pGateDefArray || p == m_pPropertyArray || p == m_pStockPropertyArray;
}

bool CVRXoutPrfPart::HeldByACopy(const void* p) const {
  // An array that came in after the last copying has no seat: it is this part's alone.
  Sharing::Seat* const pSeat = m_pSharing == nullptr ? nullptr : m_pSharing->Find(p);
  if (pSeat == nullptr) return false;
  while (pSeat->pNext != pSeat) {
    if (pSeat->pNext->pPart->Holds(p)) return true;
    pSeat->pNext->Leave();
  }
  return false;
}

CVRXoutPrfPart::Sharing& CVRXoutPrfPart::TheSharing() const {
  if (m_pSharing == nullptr) m_pSharing = std::make_unique<Sharing>(*this);
  return *m_pSharing;
}

void CVRXoutPrfPart::LetGo() {
  const auto letGo = [this](auto*& pField) {
    auto* p = std::exchange(pField, nullptr);
    if (p != nullptr && !Holds(p) && !HeldByACopy(p)) delete p;
  };
  letGo(m_pPortArray);
  letGo(m_pGateDefArray);
  letGo(m_pPropertyArray);
  letGo(m_pStockPropertyArray);
  if (m_pSharing != nullptr) m_pSharing->LeaveAll();
}

void CVRXoutPrfPart::Write(laminate::TextOut& out) {
  CLPropertyArray& properties = laminate::Required(m_pPropertyArray);
  const CVRXoutPrfPartPortArray& ports = laminate::Required(m_pPortArray);
  const laminate::OpenForm part = laminate::Form<"(part \"%s\"\n">(out, m_sName);
  for (const CLProperty* p : properties) {
    if (p != nullptr && p->m_sItem == kUver) out.Print<"(%s %s)\n">(p->m_sItem, p->m_sComment);
  }
  out.Print<"(packageRef \"%s\")\n">(m_sPackageRef);
  if (!m_sPinAssignRef.IsEmpty()) out.Print<"(pinAssignRef \"%s\")\n">(m_sPinAssignRef);
  if (laminate::CountOf(&ports) != 0) {
    const laminate::OpenForm form = laminate::Form<"(interface\n">(out);
    laminate::WriteEach(out, &ports);
  }
  if (!m_sPartClass.IsEmpty()) out.Print<"(partClass %s)\n">(m_sPartClass);
  if (!m_sStockInfo.IsEmpty()) out.Print<"(stockInfo \"%s\" (default))\n">(m_sStockInfo);
  RemoveDuplicates(properties);
  for (const CLProperty* p : properties) {
    if (p == nullptr || p->m_sItem == kUver) continue;
    if (IsInSkipList(p->m_sItem.View())) {
      out.Print<"(%s %s)\n">(p->m_sItem, p->m_sComment);
    } else {
      CString sValue = p->m_sComment;
      sValue.Remove(')');
      sValue.Remove('(');
      out.Print<"(property \"%s\" \"%s\")\n">(p->m_sItem, sValue);
    }
  }
}

int CVRXoutPrfPart::nPrint2File(FILE* fp) {
  return laminate::PrintTo(fp, [&](laminate::TextOut& out) { Write(out); });
}

int CVRXoutPrfPart::GetSymbolPinIDWithPortNo(CString sPortNo) const {
  const auto* p = laminate::FindFirst(laminate::Required(m_pPortArray), &CVRXoutPrfPartPort::m_sPortNo, sPortNo);
  return p == nullptr ? 0 : p->m_nSymbPinId;
}

CString CVRXoutPrfPart::sGetPropertyWithKeyWord(CString sKey) const {
  const auto* p = laminate::FindFirst(laminate::Required(m_pPropertyArray), &CLProperty::m_sItem, sKey);
  return p == nullptr ? CString() : p->m_sComment;
}

int CVRXoutPrfPart::bIsInSkipList(CString sKey) const { return IsInSkipList(sKey.View()); }

int CVRXoutPrfPartArray::bExistSameUpfWithPartName(CString sName) const {
  return laminate::FindFirst(*this, &CVRXoutPrfPart::m_sName, sName) != nullptr;
}

CVRXoutPrfPart* laminate::FindPartByPinAssign(const CVRXoutPrfPartArray* pParts, const CString& sPinAssign) {
  return FindFirst(Required(pParts), &CVRXoutPrfPart::m_sPinAssignRef, sPinAssign);
}
