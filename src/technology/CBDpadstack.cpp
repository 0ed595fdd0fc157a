#include "technology/CBDpadstack.h"

#include "base/TextOut.h"
#include "base/WriterText.h"
#include "drawobj/CBDhole.h"
#include "drawobj/DrawObjReader.h"
#include "technology/AreaForms.h"
#include "technology/LibraryForms.h"

using namespace laminate;

// ---- CBDpadSet ----

namespace {

constexpr auto kConnectPad = MakeForm<CBDpadSet>(Text<&CBDpadSet::m_sConnect>("pad"));
constexpr auto kNoConnectPad = MakeForm<CBDpadSet>(Text<&CBDpadSet::m_sNoConnect>("pad"));
constexpr auto kThermalPad = MakeForm<CBDpadSet>(Text<&CBDpadSet::m_sThermal>("pad"));
constexpr auto kClearancePad = MakeForm<CBDpadSet>(Text<&CBDpadSet::m_sClearance>("pad"));

constexpr auto kPadSet = MakeForm<CBDpadSet>(     //
    Text<&CBDpadSet::m_sFootLayer>("footLayer"),  //
    NestedByName<kConnectPad>("connect"),         //
    NestedByName<kNoConnectPad>("noconnect"),     //
    NestedByName<kThermalPad>("thermal"),         //
    NestedByName<kClearancePad>("clearance"));

}  // namespace

RowSpan<CBDpadSet> laminate::PadSetRows() { return kPadSet.Rows(); }

std::unique_ptr<CBDpadSet> laminate::ReadPadSet(const CECadClsLvl& node) {
  auto p = std::make_unique<CBDpadSet>();
  WalkChildren(kPadSet, node, *p);
  return p;
}

void CBDpadSet::Write(TextOut& out) const {
  if (m_sConnect.IsEmpty() && m_sNoConnect.IsEmpty() && m_sThermal.IsEmpty() && m_sClearance.IsEmpty()) return;
  const auto padSet = Form<"(padSet (footLayer %s)\n">(out, m_sFootLayer);
  if (!m_sConnect.IsEmpty()) out.Print<"(connect (pad %s))\n">(m_sConnect);
  if (!m_sNoConnect.IsEmpty()) out.Print<"(noconnect (pad %s))\n">(m_sNoConnect);
  if (!m_sThermal.IsEmpty()) out.Print<"(thermal (pad %s))\n">(m_sThermal);
  if (!m_sClearance.IsEmpty()) out.Print<"(clearance (pad %s))\n">(m_sClearance);
}

int CBDpadSet::nPrint2File(FILE* fp) {
  return PrintTo(fp, [this](TextOut& out) { Write(out); });
}

// ---- CBDpadstackHole ----

CBDpadstackHole::~CBDpadstackHole() { delete m_pDrawObj; }

void CBDpadstackHole::Write(TextOut& out) {
  if (m_pDrawObj == nullptr) return;
  const auto hole = Form<"(hole (footLayer %s)\n">(out, m_sFootLayer);
  const auto geometry = Form<"(geometry\n">(out);
  CBDdrawObj* pShape = m_pDrawObj;
  if (pShape->m_sKind == "HOLE") {
    if (const auto* pHole = dynamic_cast<const CBDhole*>(pShape)) pShape = pHole->m_pShape;
  }
  if (pShape != nullptr) pShape->Write(out, 2);
}

int CBDpadstackHole::nPrint2File(FILE* fp) {
  return PrintTo(fp, [this](TextOut& out) { Write(out); });
}

// ---- CBDpadstack ----

namespace {

// A later hole takes the place of an earlier one, and one without geometry keeps its placeholder for a shape.
void ReadHole(Walk<LibraryContext>& walk, const CECadClsLvl& node, CBDpadstack& padstack) {
  auto pHole = std::make_unique<CBDhole>();
  pHole->m_sLayerName = "HOLE";
  const CECadClsLvl* pGeometry = FindChild(node, "geometry");
  // Only a load of the whole file bears a geometry with nothing in it.
  const bool bEmpty = pGeometry != nullptr && ChildrenOf(*pGeometry).IsEmpty();
  if (pGeometry != nullptr && !(bEmpty && walk.context.bWhole)) {
    ShapeContext shapeContext;
    shapeContext.pBoardShapes = walk.context.pBoardShapes;
    if (auto pShape = ReadDrawObj(RequireFirstChild(*pGeometry), shapeContext)) {
      delete std::exchange(pHole->m_pShape, pShape.release());
    }
  }
  delete std::exchange(padstack.m_pHole->m_pDrawObj, pHole.release());
}

constexpr auto kPadstack = MakeForm<CBDpadstack, LibraryContext>(  //
    Text<&CBDpadstack::m_sType>("type"),                           //
    Text<&CBDpadstack::m_sThroughMode>("throughMode"),             //
    Custom<ReadHole>("hole", "m_pHole"),                           //
    Each<&CBDpadstack::m_pPadSetArray, ReadPadSet>("padSet"));

constexpr auto kPadstackWhole = MakeForm<CBDpadstack, LibraryContext>(  //
    Text<&CBDpadstack::m_sIsBuildupVia>("isBuildupVia"));

}  // namespace

CBDpadstack::CBDpadstack() { MakeOwned(m_pHole, m_pPadSetArray); }

CBDpadstack::~CBDpadstack() {
  delete m_pHole;
  delete m_pPadSetArray;
}

RowSpan<CBDpadstack, LibraryContext> laminate::PadstackRows() { return kPadstack.Rows(); }
RowSpan<CBDpadstack, LibraryContext> laminate::PadstackWholeRows() { return kPadstackWhole.Rows(); }

std::unique_ptr<CBDpadstack> laminate::ReadPadstack(const CECadClsLvl& node, LibraryContext& context) {
  auto p = std::make_unique<CBDpadstack>();
  p->m_sName = Token(node, 1);
  context.Tell(node, p->m_sName);
  WalkWithWhole(kPadstack, kPadstackWhole, node, *p, context);
  p->m_pPadSetArray->FreeExtra();
  return p;
}

void CBDpadstack::Write(TextOut& out) {
  out.Print<"(padstack %s\n">(m_sName);
  if (!m_aVerbatim.IsEmpty()) {
    for (const CString& sLine : m_aVerbatim) out.Print<"%s\n">(sLine);
    return;
  }
  out.Print<"(uver %d)\n">(m_nUver);
  WriteArea(out, m_rcArea);
  out.Print<"(type %s)\n">(m_sType);
  out.Print<"(throughMode %s)\n">(m_sThroughMode);
  out.Print<"(panelUse NO)\n">();
  if (!m_sIsBuildupVia.IsEmpty()) out.Print<"(isBuildupVia %s)\n">(m_sIsBuildupVia);
  if (m_pHole != nullptr) m_pHole->Write(out);
  WriteEach(out, m_pPadSetArray);
  out.Print<")\n">();
}

int CBDpadstack::nPrint2File(FILE* fp) {
  return PrintTo(fp, [this](TextOut& out) { Write(out); });
}

int CBDpadstackArray::bIsExistInArray(CString sName) {
  return std::any_of(begin(), end(), [&](const CBDpadstack* p) { return p != nullptr && p->m_sName == sName; }) ? 1 : 0;
}
