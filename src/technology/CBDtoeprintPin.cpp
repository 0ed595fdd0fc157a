#include "technology/CBDtoeprintPin.h"

#include "base/TextOut.h"
#include "base/WriterText.h"
#include "drawobj/DrawObjReader.h"
#include "technology/AreaForms.h"
#include "technology/LibraryForms.h"

using namespace laminate;

namespace {
constexpr auto kToeprintPin = MakeForm<CBDtoeprintPin>(Point<&CBDtoeprintPin::m_ptLocation>("pt"));
}

CBDtoeprintPin::CBDtoeprintPin() : m_pDrawObjArray(new CBDdrawObjArray) {}
CBDtoeprintPin::~CBDtoeprintPin() { delete m_pDrawObjArray; }

RowSpan<CBDtoeprintPin> laminate::ToeprintPinRows() { return kToeprintPin.Rows(); }

std::unique_ptr<CBDtoeprintPin> laminate::ReadToeprintPin(const CECadClsLvl& node, LibraryContext& context) {
  auto p = std::make_unique<CBDtoeprintPin>();
  p->m_sName = Token(node, 1);
  WalkFirstByName(kToeprintPin, node, *p);
  if (const CECadClsLvl* pLayout = FindChild(node, "layout")) {
    bool bFirst = true;
    ForEachChild(*pLayout, "layer", [&](const CECadClsLvl& layer) {
      if (bFirst || context.bWhole) ReadFootprintLayerShapes(layer, *p->m_pDrawObjArray, context);
      bFirst = false;
    });
  }
  p->m_pDrawObjArray->FreeExtra();
  return p;
}

void CBDtoeprintPin::Write(TextOut& out) {
  const auto pin = Form<"(pin %s\n">(out, m_sName);
  PrintPt(out, m_ptLocation);
  WriteMinRect(out, CRectD());
  const auto layout = Form<"(layout\n">(out);
  const auto layer = Form<"(layer (FPADSTACK)\n">(out);
  if (m_pDrawObjArray == nullptr) return;
  for (CBDdrawObj* p : *m_pDrawObjArray) {
    if (p != nullptr) p->Write(out, 2);
  }
}

int CBDtoeprintPin::nPrint2File(FILE* fp) {
  return PrintTo(fp, [this](TextOut& out) { Write(out); });
}

CBDtoeprintPin* CBDtoeprintPinArray::GetToeprintPin(CString sName) {
  for (CBDtoeprintPin* p : *this) {
    if (p != nullptr && p->m_sName == sName) return p;
  }
  return nullptr;
}
