#pragma once
#include "drawobj/CBDdrawObj.h"

/// A straight stroke with round ends, tag "OBLONG".
///
/// Form: (oblong (width L) (pt X Y) (pt X Y)). Of more points the first and the last are kept.
class CBDoblong : public CBDdrawObj {
 public:
  CBDoblong();
  CBDoblong(const CBDoblong&) = default;
  CBDoblong& operator=(const CBDoblong&) = default;
  ~CBDoblong() override;

  CPointD m_ptSecond;   ///< one end: the last "pt" behind the first
  CPointD m_ptFirst;    ///< the other: the first "pt"
  double m_dWidth = 0;  ///< across

  /// The text of its own; see `CBDdrawObj`.
  int nPrint2File(FILE* fp, int mode);
  void Write(laminate::TextOut& out, int nMode) const;
  /// A copy of all own fields; see `CBDdrawObj`.
  CBDoblong* pCopy() const;
};
