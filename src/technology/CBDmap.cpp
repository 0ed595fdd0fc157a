#include "technology/CBDmap.h"

#include "base/Number.h"
#include "base/TextOut.h"
#include "base/WriterText.h"
#include "technology/LibraryForms.h"

using namespace laminate;

// ---- CBDcorrespondence ----

namespace {

void AddBoardLayer(Walk<NoContext>&, const CECadClsLvl& node, CBDcorrespondence& correspondence) {
  correspondence.m_aBoardLayers.Add(Token(node, 1));
}
void AddSystemLayer(Walk<NoContext>&, const CECadClsLvl& node, CBDcorrespondence& correspondence) {
  correspondence.m_aBoardLayers.Add(Token(RequireChild(node, "type"), 1));
}

constexpr auto kBoardLayer = MakeForm<CBDcorrespondence>(      //
    Custom<AddBoardLayer>("conductive", "m_aBoardLayers"),     //
    Custom<AddBoardLayer>("nonConductive", "m_aBoardLayers"),  //
    Custom<AddSystemLayer>("systemLayer", "m_aBoardLayers"));

std::unique_ptr<CBDcorrespondence> ReadCorrespondence(const CECadClsLvl& node) {
  auto p = std::make_unique<CBDcorrespondence>();
  p->m_sFootLayer = Token(RequireChild(node, "footLayer"), 1);
  WalkChildren(kBoardLayer, RequireChild(node, "boardLayer"), *p);
  return p;
}

void WriteBoardLayer(TextOut& out, const CString& sName) {
  const int nNumber = Atoi(sName.View());
  if (nNumber >= 1 && nNumber <= kMaxConductiveLayer) {
    out.Print<"(conductive %d)\n">(nNumber);
  } else if (HoldsBracket(sName)) {
    out.Print<"(nonConductive \"%s\")\n">(sName);
  } else if (sName == "PADSTACK") {
    // The one system layer that keeps its form.
    out.Print<"(systemLayer (type PADSTACK))\n">();
  } else {
    out.Print<"(nonConductive %s)\n">(sName);
  }
}

}  // namespace

void CBDcorrespondence::Write(TextOut& out) const {
  const auto correspondence = Form<"(correspondence\n">(out);
  const auto quote = QuoteIf(HoldsBracket(m_sFootLayer));
  out.Print<"(footLayer %s%s%s)\n">(quote, m_sFootLayer, quote);
  const auto boardLayer = Form<"(boardLayer\n">(out);
  for (const CString& sName : m_aBoardLayers) WriteBoardLayer(out, sName);
}

int CBDcorrespondence::nPrint2File(FILE* fp) {
  return PrintTo(fp, [this](TextOut& out) { Write(out); });
}

// ---- CBDmap ----

CBDmap::CBDmap() : m_pCorrespondenceArray(new CBDcorrespondenceArray) {}
CBDmap::~CBDmap() { delete m_pCorrespondenceArray; }

std::unique_ptr<CBDmap> laminate::ReadMap(const CECadClsLvl& node) {
  auto p = std::make_unique<CBDmap>();
  p->m_sName = Token(node, 1);
  ForEachChild(node, "correspondence",
               [&p](const CECadClsLvl& child) { AppendOwned(*p->m_pCorrespondenceArray, ReadCorrespondence(child)); });
  return p;
}

void CBDmap::Write(TextOut& out) const {
  const auto map = Form<"(map %s\n">(out, m_sName);
  WriteEach(out, m_pCorrespondenceArray);
}

int CBDmap::nPrint2File(FILE* fp) {
  return PrintTo(fp, [this](TextOut& out) { Write(out); });
}
