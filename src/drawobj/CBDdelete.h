#pragma once
#include "drawobj/CBDdrawObj.h"

/// The mark that what a footprint holds is deleted here, tag "DELETE".
///
/// Form: (delete). Nothing in it is read, and the layer is not set.
class CBDdelete : public CBDdrawObj {
 public:
  CBDdelete();
  CBDdelete(const CBDdelete&) = default;
  CBDdelete& operator=(const CBDdelete&) = default;
  ~CBDdelete() override;

  /// The text of its own; see `CBDdrawObj`.
  int nPrint2File(FILE* fp, int mode);
  static void Write(laminate::TextOut& out, int nMode);
  /// A new one; see `CBDdrawObj`.
  CBDdelete* pCopy() const;
};
