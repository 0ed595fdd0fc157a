#include "drawobj/CBDdrawSubBoard.h"

#include "base/TextOut.h"
#include "drawobj/ShapeGrammar.h"
#include "drawobj/ShapeTools.h"

CBDdrawSubBoard::CBDdrawSubBoard() : m_pShapes(new CBDdrawObjArray) { m_sKind = "DRAWSUBBOARD"; }
CBDdrawSubBoard::~CBDdrawSubBoard() { delete m_pShapes; }

namespace laminate {
namespace {

// The shapes of an assembly are the board's own; they stand there before the assembly itself.
void ReadAssembly(Walk<const ShapeContext>& walk, const CECadClsLvl& node, CBDdrawSubBoard&) {
  ReadShapes(node, walk.context, *walk.context.pBoardShapes);
}

constexpr auto kBoardAssembly = MakeForm<CBDdrawSubBoard, const ShapeContext>(
    Integer<&CBDdrawSubBoard::m_nSubBoard>("subBoard"), Real<&CBDdrawSubBoard::m_dAngle>("angle"),
    Point<&CBDdrawSubBoard::m_pt>("pt"), Text<&CBDdrawSubBoard::m_sFlip>("flip"),
    Custom<&ReadAssembly>("geometry", "the board's shapes"));

}  // namespace

template <>
std::unique_ptr<CBDdrawObj> Make<CBDdrawSubBoard>(const CECadClsLvl& node, const ShapeContext& context) {
  if (context.pBoardShapes == nullptr) throw CInvalidArgException("\"boardAssembly\" needs a board", node.m_nLine);
  auto pSubBoard = NewShape<CBDdrawSubBoard>(context);
  WalkChildren(kBoardAssembly, node, *pSubBoard, context);
  return pSubBoard;
}

template <>
std::vector<FormView<CBDdrawSubBoard>> Grammar() {
  return {View<kBoardAssembly>()};
}

}  // namespace laminate

int CBDdrawSubBoard::nPrint2File(FILE* fp, int mode) {
  return laminate::PrintTo(fp, [&](laminate::TextOut& out) { Write(out, mode); });
}

void CBDdrawSubBoard::Write(laminate::TextOut& out, int) {
  out.Print<
      "(subBoard\n"
      ")\n">();
}

CBDdrawSubBoard* CBDdrawSubBoard::pCopy() const {
  auto pCopy = std::make_unique<CBDdrawSubBoard>();
  pCopy->m_dAngle = m_dAngle;
  pCopy->m_pt = m_pt;
  pCopy->m_sFlip = m_sFlip;
  pCopy->m_nSubBoard = m_nSubBoard;
  laminate::CopyElements(laminate::Required(m_pShapes), *pCopy->m_pShapes);
  return pCopy.release();
}
