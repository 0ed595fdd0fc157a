#pragma once
#include <cstdio>

#include "base/CExPtrArray.h"
#include "base/CGProperty.h"
#include "base/CPointD.h"
#include "base/CString.h"
#include "base/CStringArray.h"
#include "base/Pool.h"

class CBDdrawObjArray;
class CBDgateArray;
class CBDpinArray;
class CECadClsLvl;

namespace laminate {
class TextOut;
}

/// A part placed on the board. It is tied to the library by names alone: `m_sFootprint` is that of a `CBDfootprint`, a
/// pin's name that of a `CBDtoeprintPin`. Points are in mm, angles in degrees.
class CBDcomponent : public laminate::Pooled {
 public:
  CBDcomponent();
  CBDcomponent(const CBDcomponent&) = delete;
  CBDcomponent& operator=(const CBDcomponent&) = delete;
  virtual ~CBDcomponent();

  /// Writes the "component" form. Many of its lines are constants or come from another field than the one that was read
  /// from them. In this object an empty reference becomes two double quotes; in its shapes, gates and pins, layer names
  /// are quoted and "%" doubled, at every call anew. With `m_aVerbatim` the opening line is followed by its lines and
  /// nothing else: they hold the rest of the record with its bracket. Always 0; a null stream raises
  /// `CInvalidArgException`.
  int nPrint2File(FILE* fp);
  void Write(laminate::TextOut& out);

  /// Name of the first pin that stands in gate `nGate` under the name `sGateName`; empty when there is none.
  CString sGetPinName(int nGate, CString sGateName);

  double m_dScale = 1.0;
  void* m_pReserved = nullptr;
  CString m_sReference;
  int m_nGateCount = 0;  ///< as read; the number of gates is written
  int m_nPinCount = 0;   ///< as read, and written
  CString m_sPart;
  CString m_sStockId;
  CString m_sPackage;
  CString m_sFootprintSpec = "default";
  CString m_sFootprint;
  CString m_sReverseFootprint;
  CString m_sOriginalReference;  ///< value of the key "originalReferecne", which is spelled so in the format
  CString m_sPlaced = "YES";
  CString m_sPlacementSide = "A";
  CString m_sLocationLock;
  CString m_sAngleLock;
  CString m_sPlacementSideLock = "NO";
  CString m_sPackageSymbol;
  CString m_sOutOfBoard;
  CString m_sReserved1;
  CPointD m_ptOutOfBoardLocation;
  CPointD m_ptLocation;
  CPointD m_ptMinRect1;  ///< written, never read
  CPointD m_ptMinRect2;  ///< written, never read
  double m_dAngle = 0;
  CString m_sDrawRefDes;
  CBDdrawObjArray* m_pDrawObjArray;   ///< shapes outside the pins; owned
  CBDgateArray* m_pGateArray;         ///< owned
  CBDpinArray* m_pPinArray;           ///< owned
  CGPropertyArray* m_pPropertyArray;  ///< owned
  CStringArray m_aVerbatim;           ///< filled by the host only
};

class CBDcomponentArray : public laminate::NamedArray<CBDcomponent> {};
