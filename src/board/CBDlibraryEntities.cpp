#include "board/CBDlibraryEntities.h"

#include <algorithm>
#include <set>

#include "base/TextOut.h"
#include "base/WriterText.h"
#include "board/BoardForms.h"
#include "board/CBDboardContainer.h"
#include "board/CBDcomponent.h"
#include "technology/CBDfootprint.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDpad.h"
#include "technology/CBDpadstack.h"

using namespace laminate;

// ---- reading ----

namespace {

constexpr auto kLibFootprint = MakeForm<CBDlibFootprint>(Text<&CBDlibFootprint::m_sSide>("side"));
constexpr auto kLibPadstack = MakeForm<CBDlibPadstack>(  //
    Text<&CBDlibPadstack::m_sSide>("side"),              //
    Text<&CBDlibPadstack::m_sFlip>("flip"));
constexpr auto kLibPad = MakeForm<CBDlibPad>(  //
    Text<&CBDlibPad::m_sSide>("side"),         //
    Text<&CBDlibPad::m_sFlip>("flip"));

template <auto kList>
void AddName(Walk<NoContext>&, const CECadClsLvl& node, CBDlibraryEntities& entities) {
  (entities.*kList).Add(Token(node, 1));
}

constexpr auto kLibraryEntities =
    MakeForm<CBDlibraryEntities>(Custom<AddName<&CBDlibraryEntities::m_aParts>>("part", "m_aParts"),              //
                                 Custom<AddName<&CBDlibraryEntities::m_aPackages>>("package", "m_aPackages"),     //
                                 Each<&CBDlibraryEntities::m_pLibFootprintArray, ReadLibFootprint>("footprint"),  //
                                 Each<&CBDlibraryEntities::m_pLibPadArray, ReadLibPad>("pad"),                    //
                                 Each<&CBDlibraryEntities::m_pLibPadstackArray, ReadLibPadstack>("padstack"));

// All three name themselves by their first value.
template <const auto& kForm>
auto ReadNamed(const CECadClsLvl& node) {
  auto p = std::make_unique<typename std::remove_cvref_t<decltype(kForm)>::Object>();
  p->m_sName = Token(node, 1);
  WalkFirstByName(kForm, node, *p);
  return p;
}

}  // namespace

std::unique_ptr<CBDlibFootprint> laminate::ReadLibFootprint(const CECadClsLvl& node) {
  return ReadNamed<kLibFootprint>(node);
}
std::unique_ptr<CBDlibPadstack> laminate::ReadLibPadstack(const CECadClsLvl& node) {
  return ReadNamed<kLibPadstack>(node);
}
std::unique_ptr<CBDlibPad> laminate::ReadLibPad(const CECadClsLvl& node) { return ReadNamed<kLibPad>(node); }

RowSpan<CBDlibFootprint> laminate::LibFootprintRows() { return kLibFootprint.Rows(); }
RowSpan<CBDlibPadstack> laminate::LibPadstackRows() { return kLibPadstack.Rows(); }
RowSpan<CBDlibPad> laminate::LibPadRows() { return kLibPad.Rows(); }
RowSpan<CBDlibraryEntities> laminate::LibraryEntitiesRows() { return kLibraryEntities.Rows(); }

void laminate::ReadLibraryEntities(const CECadClsLvl& node, CBDlibraryEntities& entities) {
  WalkChildren(kLibraryEntities, node, entities);
}

CBDlibraryEntities::CBDlibraryEntities() { MakeOwned(m_pLibFootprintArray, m_pLibPadstackArray, m_pLibPadArray); }

CBDlibraryEntities::~CBDlibraryEntities() {
  delete m_pLibFootprintArray;
  delete m_pLibPadstackArray;
  delete m_pLibPadArray;
}

int CBDlibraryEntities::bIsStringInArray(CStringArray& arr, CString s) {
  return std::find(arr.begin(), arr.end(), s) != arr.end() ? 1 : 0;
}

// ---- writing ----

namespace {

// Calls `write` with each name of the array's objects that is not empty, at its first occurrence. The names are kept in
// order, for a file may choose them so that those of a hash table collide.
template <auto kName, class Array, class Write>
void ForEachNewName(const Array* pArray, Write&& write) {
  if (pArray == nullptr) return;
  std::set<std::string_view> seen;
  for (const auto* p : *pArray) {
    if (p == nullptr) continue;
    const CString& sName = p->*kName;
    if (sName.IsEmpty()) continue;
    if (WithPlatformFailures([&] { return seen.insert(sName.View()).second; })) write(sName);
  }
}

}  // namespace

void CBDlibraryEntities::Write(TextOut& out, const CBDboardContainer& board,
                               const CBDfootprintContainer& footprints) const {
  const auto form = Form<"(libraryEntities\n">(out);
  ForEachNewName<&CBDcomponent::m_sPart>(board.m_pComponentArray, [&out](const CString& s) {
    const auto quote = QuoteIf(HoldsBracketOrBlank(s));
    out.Print<"(part %s%s%s)\n">(quote, s, quote);
  });
  ForEachNewName<&CBDcomponent::m_sPackage>(board.m_pComponentArray,
                                            [&out](const CString& s) { out.Print<"(package %s)\n">(s); });
  // Each library object is claimed for both sides, whatever the board uses.
  ForEachNewName<&CBDfootprint::m_sName>(footprints.m_pFootprintArray, [&out](const CString& s) {
    out.Print<"(footprint %s)\n(footprint %s (side B))\n">(s, s);
  });
  ForEachNewName<&CBDpadstack::m_sName>(footprints.m_pPadstackArray, [&out](const CString& s) {
    out.Print<"(padstack %s)\n(padstack %s (side B) (flip X))\n">(s, s);
  });
  ForEachNewName<&CBDpad::m_sName>(
      footprints.m_pPadArray, [&out](const CString& s) { out.Print<"(pad %s)\n(pad %s (side B) (flip X))\n">(s, s); });
}
