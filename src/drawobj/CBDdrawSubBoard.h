#pragma once
#include "drawobj/CBDdrawObj.h"

/// A sub-board that is placed on the board, tag "DRAWSUBBOARD".
///
/// Form read: (boardAssembly (subBoard N) (angle A) (pt X Y) (flip T) (geometry SHAPE...)). The shapes go to the board,
/// not to this object, and stay there when the rest of the form fails; without a board it raises. Written as
/// "(subBoard\n)\n", without its fields.
class CBDdrawSubBoard : public CBDdrawObj {
 public:
  CBDdrawSubBoard();
  CBDdrawSubBoard(const CBDdrawSubBoard&) = default;
  CBDdrawSubBoard& operator=(const CBDdrawSubBoard&) = default;
  ~CBDdrawSubBoard() override;

  CPointD m_pt;
  int m_nSubBoard = 0;  ///< number of the sub-board
  double m_dAngle = 0;
  CString m_sFlip;
  CBDdrawObjArray* m_pShapes = nullptr;  ///< owned, made by the constructor; the reader leaves it empty

  /// The text of its own; see `CBDdrawObj`.
  int nPrint2File(FILE* fp, int mode);
  static void Write(laminate::TextOut& out, int nMode);
  /// A deep copy; shapes that copy to null are left out. A null array raises.
  CBDdrawSubBoard* pCopy() const;
};
