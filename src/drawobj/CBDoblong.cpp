#include "drawobj/CBDoblong.h"

#include "base/TextOut.h"
#include "drawobj/ShapeGrammar.h"

CBDoblong::CBDoblong() { m_sKind = "OBLONG"; }
CBDoblong::~CBDoblong() = default;

namespace laminate {
namespace {

constexpr auto kOblong = MakeForm<CBDoblong>(Length<&CBDoblong::m_dWidth>("width"),
                                             PointSequence<&CBDoblong::m_ptFirst, &CBDoblong::m_ptSecond>("pt"));

}  // namespace

template <>
std::unique_ptr<CBDdrawObj> Make<CBDoblong>(const CECadClsLvl& node, const ShapeContext& context) {
  auto pOblong = NewShape<CBDoblong>(context);
  WalkChildren(kOblong, node, *pOblong);
  return pOblong;
}

template <>
std::vector<FormView<CBDoblong>> Grammar() {
  return {View<kOblong>()};
}

}  // namespace laminate

int CBDoblong::nPrint2File(FILE* fp, int mode) {
  return laminate::PrintTo(fp, [&](laminate::TextOut& out) { Write(out, mode); });
}

void CBDoblong::Write(laminate::TextOut& out, int) const {
  out.Print<
      "(oblong\n"
      "(width %.5f)\n">(m_dWidth);
  PrintPt(out, m_ptFirst);
  PrintPt(out, m_ptSecond);
  out.Print<")\n">();
}

CBDoblong* CBDoblong::pCopy() const {
  auto pCopy = std::make_unique<CBDoblong>();
  pCopy->m_ptSecond = m_ptSecond;
  pCopy->m_ptFirst = m_ptFirst;
  pCopy->m_dWidth = m_dWidth;
  return pCopy.release();
}
