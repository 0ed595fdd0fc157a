#include "drawobj/CBDsymbolText.h"

#include "base/TextOut.h"
#include "drawobj/ShapeGrammar.h"
#include "drawobj/ShapeTools.h"
#include "drawobj/TextRows.h"

CBDsymbolText::CBDsymbolText() : m_pText(new CBDtext) { m_sKind = "SYMBOLTEXT"; }
CBDsymbolText::~CBDsymbolText() { delete m_pText; }

namespace laminate {
namespace {

constexpr auto kSymbolInnerText =
    MakeTextForm(Text<&CBDtext::m_sString>("string"), OptionalText<&CBDtext::m_sJustify>("justify"),
                 OptionalText<&CBDtext::m_sFlip>("flip"), OptionalText<&CBDtext::m_sReverse>("reverse"),
                 OptionalLength<&CBDtext::m_dTextFrameOffset>("textFrameOffset"));

constexpr auto kSymbolGeometry = MakeForm<CBDsymbolText>(Nested<kSymbolInnerText, &CBDsymbolText::m_pText>("text"));

constexpr auto kSymbolText = MakeForm<CBDsymbolText>(Text<&CBDsymbolText::m_sSymbolType>("symbolTextType"),
                                                     Skip("font"), FirstForm<kSymbolGeometry>("geometry"));

}  // namespace

template <>
std::unique_ptr<CBDdrawObj> Make<CBDsymbolText>(const CECadClsLvl& node, const ShapeContext& context) {
  auto pText = NewShape<CBDsymbolText>(context);
  WalkChildren(kSymbolText, node, *pText);
  return pText;
}

template <>
std::vector<FormView<CBDsymbolText>> Grammar() {
  return {View<kSymbolText>(), View<kSymbolGeometry>()};
}
std::vector<FormView<CBDtext>> SymbolTextGrammar() { return {View<kSymbolInnerText>()}; }

}  // namespace laminate

int CBDsymbolText::nPrint2File(FILE* fp, int mode) {
  return laminate::PrintTo(fp, [&](laminate::TextOut& out) { Write(out, mode); });
}

void CBDsymbolText::Write(laminate::TextOut& out, int) const {
  out.Print<
      "(symbolText\n"
      "(type %s)\n"
      "(font 0)\n"
      "(geometry\n"
      "(text\n"
      "(string %s)\n">(m_sSymbolType, m_sString);
  if (m_pText != nullptr) m_pText->WriteInnerRows(out);
  out.Print<
      ")\n"
      ")\n"
      ")\n">();
}

CBDsymbolText* CBDsymbolText::pCopy() const {
  auto pCopy = std::make_unique<CBDsymbolText>();
  pCopy->m_sString = m_sString;
  std::unique_ptr<CBDtext> pText(laminate::Required(m_pText).pCopy());
  delete pCopy->m_pText;
  pCopy->m_pText = pText.release();
  return pCopy.release();
}

void CBDsymbolText::vMoveRotate(double dX, double dY, double dAngle, CString sSide) {
  if (m_pText != nullptr) m_pText->vMoveRotate(dX, dY, dAngle, sSide);
}

void CBDsymbolText::vSetScale(double dScale) {
  if (m_pText != nullptr) m_pText->vSetScale(dScale);
}
