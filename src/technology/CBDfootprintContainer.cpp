#include "technology/CBDfootprintContainer.h"

#include "base/TextOut.h"
#include "base/WriterText.h"
#include "drawobj/ShapeTools.h"
#include "technology/CBDfootprint.h"
#include "technology/CBDpad.h"
#include "technology/CBDpadstack.h"
#include "technology/CBDtechnologyContainer.h"

using namespace laminate;

CBDfootprintContainer::CBDfootprintContainer() {
  MakeOwned(m_pCommonParameter, m_pPadArray, m_pPadstackArray, m_pFootprintArray);
}

CBDfootprintContainer::~CBDfootprintContainer() {
  delete m_pCommonParameter;
  delete m_pPadArray;
  delete m_pPadstackArray;
  delete m_pFootprintArray;
}

namespace {

template <class Array>
int IndexOfName(const Array* pArray, const CString& sName) {
  const Array& array = Required(pArray);
  const auto it =
      std::find_if(array.begin(), array.end(), [&sName](const auto* p) { return p != nullptr && p->m_sName == sName; });
  return it == array.end() ? -1 : static_cast<int>(it - array.begin());
}

template <class Array>
auto WithName(const Array* pArray, const CString& sName) {
  const int n = IndexOfName(pArray, sName);
  return n < 0 ? nullptr : pArray->GetAt(n);
}

}  // namespace

int CBDfootprintContainer::nGetFootprintIDFromName(CString sName) { return IndexOfName(m_pFootprintArray, sName); }
CBDfootprint* CBDfootprintContainer::pGetFootprintWithName(CString sName) { return WithName(m_pFootprintArray, sName); }
CBDpad* CBDfootprintContainer::pGetPadFromName(CString sName) { return WithName(m_pPadArray, sName); }
CBDpadstack* CBDfootprintContainer::pGetPadstackFromName(CString sName) { return WithName(m_pPadstackArray, sName); }

namespace {

void WriteCommonParameters(TextOut& out) {
  const auto common = Form<"(commonParameters\n">(out);
  const auto dimension = Form<"(dimensionParameters\n">(out);
  out.Print<"(arrowLength 1000000)\n">();
  out.Print<"(arrowAngle 15.000000)\n">();
  out.Print<"(dotDiameter 100000)\n">();
  out.Print<"(textFrameOffset 100000)\n">();
  out.Print<"(arrowOffset 100000)\n">();
  out.Print<"(dimAssistOffset 100000)\n">();
  out.Print<"(dimLineWidth 20000)\n">();
  out.Print<"(drawTextFrame NO)\n">();
  out.Print<"(textClip NO)\n">();
  out.Print<"(standard JIS)\n">();
}

}  // namespace

void CBDfootprintContainer::Write(TextOut& out, const CBDtechnologyContainer& technology) {
  technology.Write(out, TechnologySection::footprint);
  const auto container = Form<"(footprintContainer\n">(out);
  WriteCommonParameters(out);
  {
    const auto groups = Form<"(padstackGroups\n">(out);
    out.Print<"(padstackGroup default)\n">();
  }
  {
    const auto pads = Form<"(pads\n">(out);
    WriteEach(out, m_pPadArray);
  }
  {
    const auto padstacks = Form<"(padstacks\n">(out);
    WriteEach(out, m_pPadstackArray);
  }
  const auto footprints = Form<"(footprints\n">(out);
  WriteEach(out, m_pFootprintArray);
}

int CBDfootprintContainer::nPrint2File(FILE* fp, CBDtechnologyContainer* pTechnology) {
  if (pTechnology == nullptr) AfxThrowInvalidArgException();
  return PrintTo(fp, [&](TextOut& out) { Write(out, *pTechnology); });
}
