#include "board/CBDcomponent.h"

#include "base/TextOut.h"
#include "base/WriterText.h"
#include "board/BoardForms.h"
#include "board/CBDgate.h"
#include "board/CBDpin.h"
#include "board/LayerForms.h"
#include "technology/FootprintLayers.h"

using namespace laminate;

// ---- reading ----

namespace {

constexpr auto kOutOfBoardPt = MakeForm<CBDcomponent>(Point<&CBDcomponent::m_ptOutOfBoardLocation>("pt"));
constexpr auto kLocationPt = MakeForm<CBDcomponent>(Point<&CBDcomponent::m_ptLocation>("pt"));

void AddProperty(const CECadClsLvl& node, CBDcomponent& component) {
  auto p = std::make_unique<CGProperty>();
  p->SetItem(Token(node, 1));
  p->SetComment(Token(node, 2));
  AppendOwned(*component.m_pPropertyArray, std::move(p));
}

// Of the numeric properties only the scale is kept.
void ReadNumericProperty(Walk<BoardContext>&, const CECadClsLvl& node, CBDcomponent& component) {
  if (Token(node, 1) != "Scale") return;
  component.m_dScale = Atof(Token(node, 2).View());
  AddProperty(node, component);
}

void ReadTextProperty(Walk<BoardContext>&, const CECadClsLvl& node, CBDcomponent& component) {
  AddProperty(node, component);
}

// (refer (net NAME)? (cavityFrom N)? (cavityTo N)? SHAPE ...): what stands before a shape is stored in it; the last
// shape counts.
void AppendRefer(const CECadClsLvl& refer, const ShapeContext& context, CBDdrawObjArray& shapes) {
  constexpr int kNoCavity = -1;
  int nCavityFrom = kNoCavity;
  int nCavityTo = kNoCavity;
  CString sNet;
  std::unique_ptr<CBDdrawObj> pLast;
  ShapeContext inRefer = context;
  inRefer.bRefer = 1;
  ForEachChild(refer, [&](const CECadClsLvl& child) {
    const std::string_view sKeyword = child.m_sName.View();
    const auto holds = [sKeyword](std::string_view s) { return sKeyword.find(s) != std::string_view::npos; };
    if (sKeyword == "msgTag" || holds("property")) return;
    if (holds("cavityFrom")) {
      nCavityFrom = Atoi(Token(child, 1).View());
    } else if (holds("cavityTo")) {
      nCavityTo = Atoi(Token(child, 1).View());
    } else if (sKeyword == "net") {
      sNet = Token(child, 1);
    } else if (auto p = ReadDrawObj(child, inRefer)) {
      if (nCavityFrom != kNoCavity && nCavityTo != kNoCavity) {
        p->m_nCavityFrom = nCavityFrom;
        p->m_nCavityTo = nCavityTo;
      }
      if (!sNet.IsEmpty()) p->m_sNet = sNet;
      p->m_bRefer = 1;
      pLast = std::move(p);
    }
  });
  if (pLast != nullptr) AppendOwned(shapes, std::move(pLast));
}

void ReadLayout(Walk<BoardContext>& walk, const CECadClsLvl& layout, CBDcomponent& component) {
  ForEachChild(layout, "layer", [&](const CECadClsLvl& layer) {
    if (FindChild(layer, "infoOf") != nullptr || FindChild(layer, "drawOf") != nullptr) return;
    const ShapeContext context = ResolveLayer(layer, walk.context.pBoardShapes);
    AppendShapesOfLayer(layer, context, *component.m_pDrawObjArray, AppendRefer);
  });
}

constexpr auto kComponent = MakeForm<CBDcomponent, BoardContext>(
    Text<&CBDcomponent::m_sReference>("reference"),                             //
    Integer<&CBDcomponent::m_nGateCount>("gateCount"),                          //
    Integer<&CBDcomponent::m_nPinCount>("pinCount"),                            //
    Text<&CBDcomponent::m_sPart>("part"),                                       //
    Text<&CBDcomponent::m_sStockId>("stockId"),                                 //
    Text<&CBDcomponent::m_sPackage>("package"),                                 //
    Text<&CBDcomponent::m_sFootprint>("footprint"),                             //
    Text<&CBDcomponent::m_sReverseFootprint>("reverseFootprint"),               //
    Text<&CBDcomponent::m_sFootprintSpec>("footprintSpec"),                     //
    Text<&CBDcomponent::m_sOriginalReference>("originalReferecne"),             // the format's own spelling
    Text<&CBDcomponent::m_sPlaced>("placed"),                                   //
    Text<&CBDcomponent::m_sPlacementSide>("placementSide"),                     //
    Text<&CBDcomponent::m_sLocationLock>("locationLock"),                       //
    Text<&CBDcomponent::m_sAngleLock>("angleLock"),                             //
    Text<&CBDcomponent::m_sPlacementSideLock>("placementSideLock"),             //
    Text<&CBDcomponent::m_sPackageSymbol>("packageSymbol"),                     //
    Text<&CBDcomponent::m_sOutOfBoard>("outOfBoard"),                           //
    Text<&CBDcomponent::m_sDrawRefDes>("drawRefDes"),                           //
    NestedByName<kOutOfBoardPt>("outOfBoardLocation"),                          //
    NestedByName<kLocationPt>("location"),                                      //
    Real<&CBDcomponent::m_dAngle>("angle"),                                     //
    Custom<ReadLayout>("layout", "m_pDrawObjArray"),                            //
    Each<&CBDcomponent::m_pGateArray, ReadGate>("gate"),                        //
    Custom<ReadNumericProperty>("propertyF", "m_dScale and m_pPropertyArray"),  //
    Custom<ReadTextProperty>("propertyS", "m_pPropertyArray"),                  //
    Each<&CBDcomponent::m_pPinArray, ReadPin>("pin"));

}  // namespace

CBDcomponent::CBDcomponent() { MakeOwned(m_pDrawObjArray, m_pGateArray, m_pPinArray, m_pPropertyArray); }

CBDcomponent::~CBDcomponent() {
  delete m_pDrawObjArray;
  delete m_pGateArray;
  delete m_pPinArray;
  delete m_pPropertyArray;
}

RowSpan<CBDcomponent, BoardContext> laminate::ComponentRows() { return kComponent.Rows(); }

std::unique_ptr<CBDcomponent> laminate::ReadComponentForm(const CECadClsLvl& node, BoardContext& context) {
  auto p = std::make_unique<CBDcomponent>();
  WalkChildren(kComponent, node, *p, context);
  p->m_pDrawObjArray->FreeExtra();
  p->m_pPinArray->FreeExtra();
  p->m_pPropertyArray->FreeExtra();
  return p;
}

CString CBDcomponent::sGetPinName(int nGate, CString sGateName) {
  if (m_pPinArray == nullptr) return {};
  for (const CBDpin* pPin : *m_pPinArray) {
    if (pPin == nullptr || pPin->m_pPinGateArray == nullptr) continue;
    for (const CBDpinGate* pGate : *pPin->m_pPinGateArray) {
      if (pGate != nullptr && pGate->m_nGate == nGate && pGate->m_sName == sGateName) return pPin->m_sName;
    }
  }
  return {};
}

// ---- writing ----

namespace {

// Prepares a shape in the object itself: padstacks belong to a system layer, and a layer name that would fall apart is
// quoted, once more with every write.
void PrepareShape(CBDdrawObj& shape) {
  if (shape.m_sLayerName == "PADSTACK") shape.m_sLayerType = kSystemLayer;
  if (HoldsBracketOrBlank(shape.m_sLayerName)) Enquote(shape.m_sLayerName);
}

void WriteLayerHeader(TextOut& out, const CBDdrawObj& shape) {
  if (shape.m_sLayerType == kConductive) {
    out.Print<"(layer (conductive %s)\n">(shape.m_sLayerName);
  } else if (shape.m_sLayerType == kSystemLayer) {
    out.Print<"(layer (systemLayer (type %s))\n">(shape.m_sLayerName);
  } else {
    out.Print<"(layer (nonConductive %s)\n">(shape.m_sLayerName);
  }
}

bool StandsByItself(const CBDdrawObj& shape) {
  return shape.m_sKind == "DRAWPADSTACK" || shape.m_sKind == "DRAWPAD" || shape.m_sKind == "SYMBOLTEXT";
}

void WriteShape(TextOut& out, CBDdrawObj& shape) {
  if (IsSquareHole(shape)) {
    const auto hole = Form<"(squareHole\n">(out);
    const auto geometry = Form<"(geometry\n">(out);
    shape.Write(out, 1);
  } else {
    shape.Write(out, 1);
  }
}

void WriteShapes(TextOut& out, CBDdrawObjArray* pShapes) {
  if (pShapes == nullptr) return;
  const CString* psOpen = nullptr;
  bool bLastWritten = false;
  for (CBDdrawObj* p : *pShapes) {
    if (p == nullptr) continue;
    PrepareShape(*p);
    bLastWritten = !p->m_sLayerName.IsEmpty();
    if (!bLastWritten) continue;
    if (psOpen == nullptr || p->m_sLayerName != *psOpen) {
      if (psOpen != nullptr) out.Print<")\n">();
      WriteLayerHeader(out, *p);
      psOpen = &p->m_sLayerName;
    }
    if (StandsByItself(*p)) {
      WriteShape(out, *p);
    } else {
      const auto refer = Form<"(refer\n">(out);
      WriteShape(out, *p);
    }
  }
  // A last shape without a layer leaves the block open.
  if (bLastWritten) out.Print<")\n">();
}

template <PrintFormat kFormat>
void PrintUnlessEmpty(TextOut& out, const CString& s) {
  if (!s.IsEmpty()) out.Print<kFormat>(s);
}

}  // namespace

void CBDcomponent::Write(TextOut& out) {
  if (m_sReference.IsEmpty()) m_sReference = "\"\"";
  out.Print<"(component (reference %s)\n">(m_sReference);
  if (!m_aVerbatim.IsEmpty()) {
    for (const CString& sLine : m_aVerbatim) out.Print<"%s\n">(sLine);
    return;
  }
  const INT_PTR nGates = CountOf(m_pGateArray);
  out.Print<"(gateCount %d)\n">(nGates);
  out.Print<"(pinCount %d)\n">(m_nPinCount);
  const auto quote = QuoteIf(HoldsBracketOrBlank(m_sPart));
  out.Print<"(part %s%s%s)\n">(quote, m_sPart, quote);
  PrintUnlessEmpty<"(stockId %s)\n">(out, m_sStockId);
  PrintUnlessEmpty<"(package %s)\n">(out, m_sPackage);
  out.Print<"(footprintSpec %s)\n">(m_sFootprintSpec);
  out.Print<"(footprint %s)\n">(m_sFootprint);
  PrintUnlessEmpty<"(reverseFootprint %s)\n">(out, m_sReverseFootprint);
  out.Print<"(originalReference %s)\n">(m_sReference);
  out.Print<"(placed %s)\n">(m_sPlaced);
  out.Print<"(placementSide %s)\n">(m_sPlacementSide);
  out.Print<"(placementSideLock %s)\n">(m_sPlacementSideLock);
  PrintUnlessEmpty<"(angleLock %s)\n">(out, m_sAngleLock);
  PrintUnlessEmpty<"(locationLock %s)\n">(out, m_sLocationLock);
  if (nGates == 1) out.Print<"(packageSymbol YES)\n">();
  out.Print<"(outOfBoard NO)\n">();
  {
    const auto location = Form<"(outOfBoardLocation\n">(out);
    PrintPt(out, m_ptOutOfBoardLocation);
  }
  {
    const auto location = Form<"(location\n">(out);
    PrintPt(out, m_ptLocation);
  }
  {
    const auto minRect = Form<"(minRect\n">(out);
    const auto box = Form<"(box\n">(out);
    PrintPt(out, m_ptMinRect1);
    PrintPt(out, m_ptMinRect2);
  }
  out.Print<"(angle %.5f)\n">(m_dAngle);
  out.Print<"(drawRefDes NO)\n">();
  {
    const auto layout = Form<"(layout\n">(out);
    WriteShapes(out, m_pDrawObjArray);
  }
  if (m_pGateArray != nullptr) {
    int nGate = 0;
    for (CBDgate* pGate : *m_pGateArray) {
      if (pGate == nullptr) continue;
      const auto gate = Form<"(gate %d\n">(out, ++nGate);
      pGate->Write(out);
    }
  }
  WriteEach(out, m_pPinArray);
  if (m_pPropertyArray != nullptr) {
    for (const CGProperty* p : *m_pPropertyArray) {
      if (p == nullptr) continue;
      if (p->GetItem() == "Scale") {
        out.Print<"(propertyF %s %s)\n">(p->GetItem(), p->GetComment());
      } else {
        out.Print<"(propertyS %s %s)\n">(p->GetItem(), p->GetComment());
      }
    }
  }
  out.Print<")\n">();
}

int CBDcomponent::nPrint2File(FILE* fp) {
  return PrintTo(fp, [this](TextOut& out) { Write(out); });
}
