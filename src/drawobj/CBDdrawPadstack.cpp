#include "drawobj/CBDdrawPadstack.h"

#include <cmath>

#include "base/TextOut.h"
#include "drawobj/ShapeGrammar.h"
#include "drawobj/ShapeTools.h"

CBDdrawPadstack::CBDdrawPadstack() {
  m_sKind = "DRAWPADSTACK";
  auto pShapes = std::make_unique<CBDdrawObjArray>();
  auto pRefLays = std::make_unique<CBDpadstackRefLayArray>();
  m_pHole = new CBDdrawObj;
  m_pShapes = pShapes.release();
  m_pRefLays = pRefLays.release();
}

CBDdrawPadstack::~CBDdrawPadstack() {
  delete m_pHole;
  delete m_pRefLays;
  delete m_pShapes;
}

namespace laminate {
namespace {

// ---- an entry of "conductive" or "nonConductive" ----

// The padstack that is being read. Its layer number and name are those of the latest entry that gave one, and later
// entries and shapes inherit them.
struct PadstackContext : ShapeContext {
  CBDdrawPadstack* pPadstack = nullptr;
  const CString* pSection = nullptr;
};

void ReadLayerNumber(Walk<PadstackContext>& walk, const CECadClsLvl& node, CBDpadstackRefLay& entry) {
  entry.m_nLayerNumber = Atoi(Token(node, 1).View());
  walk.context.nLayerNumber = entry.m_nLayerNumber;
}

void ReadVisible(Walk<NoContext>&, const CECadClsLvl& node, CBDpadstackRefLay& entry) {
  if (Token(node, 1) == "NO") entry.m_bVisible = 0;
}
constexpr auto kNamedLayer = MakeForm<CBDpadstackRefLay>(Custom<&ReadVisible>("visible", "m_bVisible"));

void ReadLayerName(Walk<PadstackContext>& walk, const CECadClsLvl& node, CBDpadstackRefLay& entry) {
  entry.m_sLayerName = Token(node, 1);
  walk.context.sLayerName = entry.m_sLayerName;
  WalkFirstByName(kNamedLayer, node, entry);
}

void ReadEntryShapes(Walk<PadstackContext>& walk, const CECadClsLvl& node, CBDpadstackRefLay&) {
  CBDdrawObjArray& shapes = *walk.context.pPadstack->m_pShapes;
  const INT_PTR nOld = shapes.GetSize();
  ReadShapes(node, walk.context, shapes);
  for (INT_PTR i = nOld; i < shapes.GetSize(); ++i) shapes.GetAt(i)->m_sSection = *walk.context.pSection;
}

constexpr auto kEntryTokens = MakeForm<CBDpadstackRefLay, PadstackContext>(
    Custom<&ReadLayerNumber>("layerNumber", "m_nLayerNumber, and the layer of what follows"),
    Custom<&ReadLayerName>("layer", "m_sLayerName, and the layer of what follows; kNamedLayer"));

constexpr auto kEntry = MakeForm<CBDpadstackRefLay, PadstackContext>(
    Text<&CBDpadstackRefLay::m_sStatus>("status"), Custom<&ReadEntryShapes>("geometry", "the padstack's m_pShapes"));

// ---- the padstack ----

// One number is the end of the span alone; any count but one and two is passed over.
void ReadSpan(Walk<PadstackContext>&, const CECadClsLvl& node, CBDdrawPadstack& padstack) {
  const INT_PTR nTokens = node.m_arrValues.GetSize();
  if (nTokens == 1) {
    padstack.m_nFrom = 0;
    padstack.m_nTo = Atoi(Token(node, 1).View());
  } else if (nTokens == 2) {
    padstack.m_nFrom = Atoi(Token(node, 1).View());
    padstack.m_nTo = Atoi(Token(node, 2).View());
  }
}

// Every form in a section is an entry, whatever its keyword.
void ReadSection(Walk<PadstackContext>& walk, const CECadClsLvl& node, CBDdrawPadstack& padstack) {
  walk.context.pPadstack = &padstack;
  walk.context.pSection = &node.m_sName;
  for (const CECadClsLvl* pChild : ChildrenOf(node)) {
    if (pChild == nullptr) continue;
    auto pEntry = std::make_unique<CBDpadstackRefLay>();
    ReadOwnTokens(kEntryTokens, *pChild, *pEntry, walk.context);
    WalkFirstByName(kEntry, *pChild, *pEntry, walk.context);
    AppendOwned(*padstack.m_pRefLays, std::move(pEntry));
  }
}

constexpr auto kTestPad = MakeForm<CBDdrawPadstack>(Text<&CBDdrawPadstack::m_sSide>("side"));
constexpr auto kPadstackGroup = MakeForm<CBDdrawPadstack>(Text<&CBDdrawPadstack::m_sPadstackName>("padstack"));

// "fpadstack" has no name token.
constexpr auto kPadstackTokens = MakeForm<CBDdrawPadstack>(Text<&CBDdrawPadstack::m_sPadstackName>("padstack"));

constexpr auto kPadstack = MakeForm<CBDdrawPadstack, PadstackContext>(
    Text<&CBDdrawPadstack::m_sNet>("net"), Point<&CBDdrawPadstack::m_pt>("pt"),
    Real<&CBDdrawPadstack::m_dAngle>("angle"), Custom<&ReadSpan>("fromTo", "m_nFrom, m_nTo"),
    Text<&CBDdrawPadstack::m_sSide>("side"), Text<&CBDdrawPadstack::m_sFlip>("flip"),
    Text<&CBDdrawPadstack::m_sBuildupVia>("isBuildupVia"), NestedByName<kTestPad>("isTestPad"),
    OptionalInteger<&CBDdrawPadstack::m_nDrillType>("drillType"),
    Custom<&ReadSection>("conductive", "m_pRefLays, m_pShapes; kEntryTokens, kEntry"),
    Custom<&ReadSection>("nonConductive", "m_pRefLays, m_pShapes; kEntryTokens, kEntry"),
    NestedByName<kPadstackGroup>("padstackGroup"));

}  // namespace

template <>
std::unique_ptr<CBDdrawObj> Make<CBDdrawPadstack>(const CECadClsLvl& node, const ShapeContext& context) {
  auto pPadstack = NewShape<CBDdrawPadstack>(context);
  ReadOwnTokens(kPadstackTokens, node, *pPadstack);
  PadstackContext own{context};
  WalkChildren(kPadstack, node, *pPadstack, own);
  pPadstack->m_pRefLays->FreeExtra();
  pPadstack->m_pShapes->FreeExtra();
  return pPadstack;
}

template <>
std::vector<FormView<CBDdrawPadstack>> Grammar() {
  return {View<kPadstackTokens>(), View<kPadstack>(), View<kTestPad>(), View<kPadstackGroup>()};
}
template <>
std::vector<FormView<CBDpadstackRefLay>> Grammar() {
  return {View<kEntryTokens>(), View<kNamedLayer>(), View<kEntry>()};
}

}  // namespace laminate

int CBDdrawPadstack::nPrint2File(FILE* fp, int mode) {
  return laminate::PrintTo(fp, [&](laminate::TextOut& out) { Write(out, mode); });
}

namespace {

// Angles up to this, in degrees, count as none.
constexpr double kNoAngle = 0.001;

}  // namespace

bool CBDdrawPadstack::IsInSpan(int n) const {
  if (m_nFrom != 0 && m_nTo != 0) return m_nFrom <= n && n <= m_nTo;
  if (m_nFrom != 0) return n == m_nFrom;
  if (m_nTo != 0) return n == m_nTo;
  return false;
}

void CBDdrawPadstack::Write(laminate::TextOut& out, int nMode) const {
  const bool bHasAngle = std::fabs(m_dAngle) > kNoAngle;
  if (nMode != 1) {
    out.Print<"(fpadstack\n">();
    PrintPt(out, m_pt);
    if (bHasAngle) out.Print<"(angle %.5f)\n">(m_dAngle);
    out.Print<
        "(padstackGroup default (padstack %s))\n"
        ")\n">(m_sPadstackName);
    return;
  }
  out.Print<"(padstack %s\n">(m_sPadstackName);
  if (!m_sNet.IsEmpty()) out.Print<"(net %s)\n">(m_sNet);
  PrintPt(out, m_pt);
  if (bHasAngle) out.Print<"(angle %.5f)\n">(m_dAngle);
  if (m_nFrom == m_nTo || m_nFrom == 0) {
    out.Print<"(fromTo %d)\n">(m_nTo);
  } else if (m_nTo == 0) {
    out.Print<"(fromTo %d)\n">(m_nFrom);
  } else {
    out.Print<"(fromTo %d %d)\n">(m_nFrom, m_nTo);
  }
  if (m_pRefLays != nullptr) {
    out.Print<"(conductive\n">();
    for (const CBDpadstackRefLay* p : *m_pRefLays) {
      if (p != nullptr && IsInSpan(p->m_nLayerNumber)) p->Write(out);
    }
    out.Print<")\n">();
  }
  out.Print<")\n">();
}

CBDdrawPadstack* CBDdrawPadstack::pCopy() const {
  auto pCopy = std::make_unique<CBDdrawPadstack>();
  pCopy->m_dAngle = m_dAngle;
  pCopy->m_nFrom = m_nFrom;
  pCopy->m_nTo = m_nTo;
  pCopy->m_nDrillType = m_nDrillType;
  pCopy->m_pt = m_pt;
  pCopy->m_sPadstackName = m_sPadstackName;
  pCopy->m_sSide = m_sSide;
  pCopy->m_sFlip = m_sFlip;
  pCopy->m_sBuildupVia = m_sBuildupVia;
  if (m_pRefLays != nullptr) laminate::CopyElements(*m_pRefLays, *pCopy->m_pRefLays);
  if (m_pShapes != nullptr) laminate::CopyElements(*m_pShapes, *pCopy->m_pShapes);
  if (m_pHole != nullptr) {
    auto pHole = laminate::CopyDrawObj(*m_pHole);
    delete pCopy->m_pHole;
    pCopy->m_pHole = pHole.release();
  }
  return pCopy.release();
}

void CBDdrawPadstack::vMoveRotate(double dX, double dY, double dAngle, CString sSide) {
  laminate::MoveMirroringX(m_pt, dX, dY, dAngle, sSide);
  laminate::MoveElements(laminate::Required(m_pShapes), dX, dY, dAngle, sSide);
  if (m_pHole != nullptr) m_pHole->vMoveRotate(dX, dY, dAngle, sSide);
}

void CBDdrawPadstack::vSetScale(double dScale) {
  laminate::Scale(m_pt, dScale);
  laminate::ScaleElements(laminate::Required(m_pShapes), dScale);
  if (m_pHole != nullptr) m_pHole->vSetScale(dScale);
}

CBDpadstackRefLay* CBDdrawPadstack::pGetPadstackRefLayFromNumber(int n) const {
  for (CBDpadstackRefLay* p : laminate::Required(m_pRefLays)) {
    if (p != nullptr && p->m_nLayerNumber == n) return p;
  }
  return nullptr;
}
