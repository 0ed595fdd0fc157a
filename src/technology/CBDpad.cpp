#include "technology/CBDpad.h"

#include "base/TextOut.h"
#include "base/WriterText.h"
#include "drawobj/DrawObjReader.h"
#include "technology/AreaForms.h"
#include "technology/LibraryForms.h"

using namespace laminate;

CBDpad::CBDpad() : m_pDrawObjArray(new CBDdrawObjArray) {}
CBDpad::~CBDpad() { delete m_pDrawObjArray; }

std::unique_ptr<CBDpad> laminate::ReadPad(const CECadClsLvl& node, LibraryContext& context) {
  auto p = std::make_unique<CBDpad>();
  p->m_sName = Token(node, 1);
  context.Tell(node, p->m_sName);
  if (const CECadClsLvl* pGeometry = FindChild(node, "geometry")) {
    ShapeContext shapeContext;
    shapeContext.pBoardShapes = context.pBoardShapes;
    ReadShapes(*pGeometry, shapeContext, *p->m_pDrawObjArray);
  }
  return p;
}

void CBDpad::Write(TextOut& out) {
  const auto pad = Form<"(pad %s\n">(out, m_sName);
  out.Print<"(uver %d)\n">(m_nUver);
  WriteArea(out, m_rcArea);
  // In a pad the step in x comes from the height; in a footprint it is the other way round.
  WriteGrid(out, m_rcArea.GetHeight(), m_rcArea.GetWidth());
  out.Print<"(photo FLASH)\n">();
  out.Print<"(panelUse NO)\n">();
  if (CountOf(m_pDrawObjArray) == 0) return;
  const auto geometry = Form<"(geometry\n">(out);
  for (CBDdrawObj* p : *m_pDrawObjArray) {
    if (p != nullptr) p->Write(out, 2);
  }
}

int CBDpad::nPrint2File(FILE* fp) {
  return PrintTo(fp, [this](TextOut& out) { Write(out); });
}
