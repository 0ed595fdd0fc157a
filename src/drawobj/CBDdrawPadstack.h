#pragma once
#include "drawobj/CBDdrawObj.h"
#include "drawobj/CBDpadstackRefLay.h"

/// A padstack (a via, a mounting hole) that is placed by the name of its definition, tag "DRAWPADSTACK".
///
/// Form read: (padstack NAME (net T) (pt X Y) (angle A) (fromTo [FROM] TO) (side T) (flip T) (isBuildupVia T)
/// (isTestPad (side T)) (drillType N) (padstackGroup (padstack NAME)) (conductive ENTRY...) (nonConductive ENTRY...)).
/// "fpadstack" is read likewise but has no name token; "padstack" without one raises. Every form in "conductive" and
/// "nonConductive" makes an entry, whatever its keyword; the number or name that one gives is that of the shapes in it
/// and in all entries behind it. A "fromTo" of no or more than two numbers is passed over, and "isTestPad" only sets
/// the side. Written as "padstack" in mode 1, with name, net, point, angle, "fromTo" and the entries of that span under
/// "conductive"; otherwise as "fpadstack" with point, angle and (padstackGroup default (padstack NAME)).
class CBDdrawPadstack : public CBDdrawObj {
 public:
  CBDdrawPadstack();
  CBDdrawPadstack(const CBDdrawPadstack&) = default;
  CBDdrawPadstack& operator=(const CBDdrawPadstack&) = default;
  ~CBDdrawPadstack() override;

  CBDdrawObjArray* m_pShapes = nullptr;  ///< shapes of all entries, in file order; owned, made by the constructor
  double m_dAngle = 0;                   ///< degrees
  CBDpadstackRefLayArray* m_pRefLays = nullptr;  ///< layer entries; owned, made by the constructor
  int m_nFrom = 0;                               ///< first conductive layer; 0: not given
  int m_nTo = 0;                                 ///< last conductive layer; 0: not given
  int m_nDrillType = 0;                          ///< kept as a number
  CPointD m_pt;                                  ///< where it stands
  CString m_sPadstackName;                       ///< of its definition, which is not looked up
  CString m_sSide;                               ///< kept as text, as the next two
  CString m_sFlip;
  CString m_sBuildupVia;
  CBDdrawObj* m_pHole = nullptr;  ///< owned; a placeholder of tag "NONE" that nothing in the library replaces

  /// The text of its own, the net name as it stands; see `CBDdrawObj`.
  int nPrint2File(FILE* fp, int mode);
  void Write(laminate::TextOut& out, int nMode) const;
  /// A deep copy; its hole is null when this one's is the placeholder, and its entries are all visible.
  CBDdrawPadstack* pCopy() const;
  /// Moves the point, on side "B" with its x negated before, then the shapes, then the hole. The angle stays. A null
  /// array raises; the point has moved by then.
  void vMoveRotate(double dX, double dY, double dAngle, CString sSide);
  /// Scales what `vMoveRotate` moves, and raises likewise.
  void vSetScale(double dScale);

  /// Whether the entry of a layer number is written: it lies from `m_nFrom` to `m_nTo`, or is the one of them that is
  /// not 0; none is when both are.
  bool IsInSpan(int nLayerNumber) const;
  /// The first entry of that layer number, or null. A null array raises.
  CBDpadstackRefLay* pGetPadstackRefLayFromNumber(int n) const;
};
