#include "board/CBDsubBoard.h"

#include "board/BoardForms.h"

using namespace laminate;

namespace {
constexpr auto kSubBoard = MakeForm<CBDsubBoard>(Text<&CBDsubBoard::m_sRelativePath>("relativePath"));
}

RowSpan<CBDsubBoard> laminate::SubBoardRows() { return kSubBoard.Rows(); }

std::unique_ptr<CBDsubBoard> laminate::ReadSubBoard(const CECadClsLvl& node) {
  auto p = std::make_unique<CBDsubBoard>();
  p->m_nId = Atoi(Token(node, 1).View());
  WalkFirstByName(kSubBoard, node, *p);
  return p;
}
