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

  int nPrint2File(FILE* fp, int mode);
  void Write(laminate::TextOut& out, int nMode) const;
  CBDdelete* pCopy() const;
};
