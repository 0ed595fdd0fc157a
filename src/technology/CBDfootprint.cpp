#include "technology/CBDfootprint.h"

#include "base/TextOut.h"
#include "base/WriterText.h"
#include "drawobj/CBDdrawPadstack.h"
#include "drawobj/ShapeTools.h"
#include "technology/AreaForms.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDheelprint.h"
#include "technology/CBDpadstack.h"
#include "technology/CBDtoeprintPin.h"
#include "technology/LibraryForms.h"

using namespace laminate;

// ---- reading ----

namespace {

constexpr auto kBox = MakeForm<CBDfootprint>(PointSequence<&CBDfootprint::m_ptBox1, &CBDfootprint::m_ptBox2>("pt"));
constexpr auto kArea = MakeForm<CBDfootprint>(Nested<kBox>("box"));

void ReadHeelprintOf(Walk<LibraryContext>& walk, const CECadClsLvl& node, CBDfootprint& footprint) {
  ReadHeelprint(node, *footprint.m_pHeelprint, walk.context);
}

constexpr auto kToeprint =
    MakeForm<CBDfootprint, LibraryContext>(Each<&CBDfootprint::m_pToeprintPinArray, ReadToeprintPin>("pin"));

void AddProperty(Walk<LibraryContext>&, const CECadClsLvl& node, CBDfootprint& footprint) {
  auto p = std::make_unique<CLProperty>();
  p->SetKind(node.m_sName);
  p->SetItem(Token(node, 1));
  p->SetComment(Token(node, 2));
  AppendOwned(*footprint.m_pPropertyArray, std::move(p));
}

constexpr auto kFootprint = MakeForm<CBDfootprint, LibraryContext>(  //
    NestedByName<kArea>("area"),                                     //
    Custom<ReadHeelprintOf>("heelprint", "m_pHeelprint"),            //
    Nested<kToeprint>("toeprint"));

constexpr auto kFootprintWhole = MakeForm<CBDfootprint, LibraryContext>(  //
    Integer<&CBDfootprint::m_nUver>("uver"),                              //
    Custom<AddProperty>("propertyS", "m_pPropertyArray"),                 //
    Custom<AddProperty>("propertyI", "m_pPropertyArray"));

}  // namespace

CBDfootprint::CBDfootprint() { MakeOwned(m_pPropertyArray, m_pHeelprint, m_pToeprintPinArray); }

CBDfootprint::~CBDfootprint() {
  delete m_pHeelprint;
  delete m_pToeprintPinArray;
  delete m_pPropertyArray;
}

RowSpan<CBDfootprint, LibraryContext> laminate::FootprintRows() { return kFootprint.Rows(); }
RowSpan<CBDfootprint, LibraryContext> laminate::FootprintWholeRows() { return kFootprintWhole.Rows(); }

std::unique_ptr<CBDfootprint> laminate::ReadFootprint(const CECadClsLvl& node, LibraryContext& context) {
  auto p = std::make_unique<CBDfootprint>();
  p->m_sName = Token(node, 1);
  context.Tell(node, p->m_sName);
  WalkWithWhole(kFootprint, kFootprintWhole, node, *p, context);
  p->m_pHeelprint->m_pDrawObjArray->FreeExtra();
  p->m_pToeprintPinArray->FreeExtra();
  p->m_pPropertyArray->FreeExtra();
  return p;
}

// ---- writing ----

void CBDfootprint::Write(TextOut& out) {
  out.Print<"(footprint %s\n">(m_sName);
  if (!m_aVerbatim.IsEmpty()) {
    for (const CString& sLine : m_aVerbatim) out.Print<"%s\n">(sLine);
    return;
  }
  constexpr double kMinRectDivisor = 1.2;
  out.Print<"(uver %d)\n">(m_nUver);
  WriteArea(out, m_rcArea);
  WriteGrid(out, m_rcArea.GetWidth(), m_rcArea.GetHeight());
  WriteMinRect(out, m_rcArea, kMinRectDivisor);
  out.Print<"(polarity NO)\n">();
  out.Print<"(panelUse NO)\n">();
  if (m_pHeelprint != nullptr) m_pHeelprint->Write(out);
  if (CountOf(m_pToeprintPinArray) != 0) {
    const auto toeprint = Form<"(toeprint\n">(out);
    WriteEach(out, m_pToeprintPinArray);
  }
  if (m_pPropertyArray != nullptr) {
    for (const CLProperty* p : *m_pPropertyArray) {
      if (p == nullptr) continue;
      const CString sKind = p->GetKind();
      const CString sComment = p->GetComment();
      out.Print<"(%s %s %s)\n">(sKind.IsEmpty() ? "propertyS" : sKind.View(), p->GetItem(),
                                sComment.IsEmpty() ? "\"\"" : sComment.View());
    }
  }
  out.Print<")\n">();
}

int CBDfootprint::nPrint2File(FILE* fp) {
  return PrintTo(fp, [this](TextOut& out) { Write(out); });
}

// ---- looking up ----

namespace {

bool IsDrilled(const CString& sPadstack, CBDfootprintContainer* pContainer) {
  const CBDpadstack* pPadstack = Required(pContainer).pGetPadstackFromName(sPadstack);
  return pPadstack != nullptr && Required(pPadstack->m_pHole).m_pDrawObj != nullptr;
}

}  // namespace

CString CBDfootprint::sGetInsertionTypeOfFootprint(CBDfootprintContainer* pContainer) {
  // Pins mostly have one padstack, which is looked up once then.
  const CString* psUndrilled = nullptr;
  for (const CBDtoeprintPin* pPin : Required(m_pToeprintPinArray)) {
    if (pPin == nullptr) continue;
    for (const CBDdrawObj* pShape : Required(pPin->m_pDrawObjArray)) {
      if (pShape == nullptr) continue;
      if (pShape->m_sKind == "DRAWPAD") return "SMD";
      const auto* pPlaced = dynamic_cast<const CBDdrawPadstack*>(pShape);
      if (pPlaced == nullptr || pShape->m_sKind != "DRAWPADSTACK") continue;
      if (psUndrilled != nullptr && *psUndrilled == pPlaced->m_sPadstackName) continue;
      if (IsDrilled(pPlaced->m_sPadstackName, pContainer)) return "DIP";
      psUndrilled = &pPlaced->m_sPadstackName;
    }
  }
  return "SMD";
}
