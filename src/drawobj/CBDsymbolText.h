#pragma once
#include "drawobj/CBDdrawObj.h"
#include "drawobj/CBDtext.h"

/// A text that names its component, footprint or the like, tag "SYMBOLTEXT".
///
/// Form read: (symbolText (symbolTextType T) (font N) (geometry (text ...))), the rows of "text" going to `m_pText`. Of
/// "geometry" the first form counts, and only if it is "text"; none at all raises, and so does a "string" without a
/// token, while an empty "justify", "flip", "reverse" or "textFrameOffset" is passed over. Written with "type" in place
/// of "symbolTextType", with (font 0), and with the outer `m_sString`, which reading does not set, without quotes.
class CBDsymbolText : public CBDdrawObj {
 public:
  CBDsymbolText();
  CBDsymbolText(const CBDsymbolText&) = default;
  CBDsymbolText& operator=(const CBDsymbolText&) = default;
  ~CBDsymbolText() override;

  CString m_sSymbolType;
  CString m_sString;           ///< for hosts: the string that is written
  CBDtext* m_pText = nullptr;  ///< owned, made by the constructor; holds the string that was read

  /// The text of its own; see `CBDdrawObj`.
  int nPrint2File(FILE* fp, int mode);
  void Write(laminate::TextOut& out, int nMode) const;
  /// A deep copy without `m_sSymbolType`. A null text raises.
  CBDsymbolText* pCopy() const;
  /// Moves the inner text, if there is one.
  void vMoveRotate(double dX, double dY, double dAngle, CString sSide);
  /// Scales what `vMoveRotate` moves; sizes stay.
  void vSetScale(double dScale);
};
