#pragma once
#include "drawobj/CBDdrawObj.h"

/// A text, tag "TEXT".
///
/// Form read: (text (geometry (text (string T) (font N) (kFont N) (width L) (height L) (space L) (vSpace L)
/// (strokeWidth L) (pt X Y) (textAngle A) (dir T) (justify T) (flip T) (reverse T) (textFrameOffset L)))). Nothing
/// beside "geometry" is looked at, and the first "geometry" and "text" count: without them the text keeps its defaults.
/// An empty "string" gives an empty text. A string that itself began with a bracket is kept as "(" + its first word +
/// ")". Written with all of these but "textFrameOffset", the string in quotes as it stands, and with (font 0) beside
/// "geometry".
class CBDtext : public CBDdrawObj {
 public:
  CBDtext();
  CBDtext(const CBDtext&) = default;
  CBDtext& operator=(const CBDtext&) = default;
  ~CBDtext() override;

  CString m_sString;
  int m_nFont = 0;  ///< number of the font
  int m_nKFont = 200;
  double m_dWidth = 0;        ///< of a letter
  double m_dHeight = 0;       ///< of a letter
  double m_dSpace = 0;        ///< between letters
  double m_dVSpace = 0;       ///< between lines
  double m_dStrokeWidth = 0;  ///< of the pen
  CPointD m_pt;
  double m_dAngle = 0;      ///< degrees
  CString m_sDir = "LtoR";  ///< kept as text, as the next three
  CString m_sJustify = "CE_C";
  CString m_sFlip = "NONE";
  CString m_sReverse = "OFF";
  CString m_sSpare;  ///< only copied
  double m_dTextFrameOffset = 0;
  double m_dSpare = 0;  ///< only copied

  /// The text of its own; see `CBDdrawObj`.
  int nPrint2File(FILE* fp, int mode);
  void Write(laminate::TextOut& out, int nMode) const;
  /// The lines from "font" to "reverse", which a symbol text writes of its inner text too.
  void WriteInnerRows(laminate::TextOut& out) const;
  /// A copy of all own fields; see `CBDdrawObj`.
  CBDtext* pCopy() const;
  /// Moves the point; on side "B" its x is negated before.
  void vMoveRotate(double dX, double dY, double dAngle, CString sSide);
  /// Multiplies x of the point by `dScale` twice; y stays.
  void vSetScale(double dScale);
};
