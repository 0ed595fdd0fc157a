#include "board/CBDtextSize.h"

#include "base/TextOut.h"
#include "board/BoardForms.h"

using namespace laminate;

namespace {
constexpr auto kTextSize = MakeForm<CBDtextSize>(  //
    Integer<&CBDtextSize::m_nWidth>("width"),      //
    Integer<&CBDtextSize::m_nHeight>("height"),    //
    Integer<&CBDtextSize::m_nSpace>("space"),      //
    Integer<&CBDtextSize::m_nVSpace>("vSpace"),    //
    Integer<&CBDtextSize::m_nStrokeWidth>("strokeWidth"));
}  // namespace

RowSpan<CBDtextSize> laminate::TextSizeRows() { return kTextSize.Rows(); }

std::unique_ptr<CBDtextSize> laminate::ReadTextSize(const CECadClsLvl& node) {
  auto p = std::make_unique<CBDtextSize>();
  p->m_nId = Atoi(Token(node, 1).View());
  WalkChildren(kTextSize, node, *p);
  return p;
}

int CBDtextSize::nPrint2File(FILE* fp, int nIndex) {
  return PrintTo(fp, [nIndex](TextOut& out) {
    out.Print<"(textSize %d)\n">(static_cast<long long>(nIndex) + 1);
    // Hosts know these lines with zeros and the closing bracket, whatever the sizes are.
    out.Print<"(width 0.00000)\n">();
    out.Print<"(height 0.00000)\n">();
    out.Print<"(space 0.00000)\n">();
    out.Print<"(vSpace 0.00000)\n">();
    out.Print<"(strokeWidth 0.00000)\n">();
    out.Print<")\n">();
  });
}
