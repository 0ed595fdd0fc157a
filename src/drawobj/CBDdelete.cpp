#include "drawobj/CBDdelete.h"

#include "base/TextOut.h"
#include "drawobj/ShapeGrammar.h"

CBDdelete::CBDdelete() { m_sKind = "DELETE"; }
CBDdelete::~CBDdelete() = default;

namespace laminate {

// The one shape that takes over nothing of its layer.
template <>
std::unique_ptr<CBDdrawObj> Make<CBDdelete>(const CECadClsLvl&, const ShapeContext&) {
  return std::make_unique<CBDdelete>();
}

}  // namespace laminate

int CBDdelete::nPrint2File(FILE* fp, int mode) {
  return laminate::PrintTo(fp, [&](laminate::TextOut& out) { Write(out, mode); });
}

void CBDdelete::Write(laminate::TextOut& out, int) {
  out.Print<
      "(delete\n"
      ")\n">();
}

CBDdelete* CBDdelete::pCopy() const { return new CBDdelete; }
