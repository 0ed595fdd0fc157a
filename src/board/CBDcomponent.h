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
///
///   (component (reference U1) (gateCount 1) (pinCount 2) (part P) (footprint F) ... (location (pt X Y)) (angle A)
///     (layout (layer (conductive N) (refer SHAPE) ...) ...) (gate 1 ...) ... (pin NAME ...) ...
///     (propertyF Scale S) (propertyS ITEM COMMENT) ...)
class CBDcomponent : public laminate::Pooled {
 public:
  /// Makes an unnamed component, placed on side "A", with empty arrays.
  CBDcomponent();
  CBDcomponent(const CBDcomponent&) = delete;
  CBDcomponent& operator=(const CBDcomponent&) = delete;
  /// Deletes the arrays with all in them.
  virtual ~CBDcomponent();

  /// Writes the "component" form. Many of its lines are constants or come from another field than the one that was read
  /// from them. In this object an empty reference becomes two double quotes; in its shapes, gates and pins, layer names
  /// are quoted and "%" doubled, at every call anew. With `m_aVerbatim` the opening line is followed by its lines and
  /// nothing else: they hold the rest of the record with its bracket. Always 0; a null stream raises
  /// `CInvalidArgException`.
  int nPrint2File(FILE* fp);
  /// The same into the text of a file that is being written.
  void Write(laminate::TextOut& out);

  /// Name of the first pin that stands in gate `nGate` under the name `sGateName`; empty when there is none.
  CString sGetPinName(int nGate, CString sGateName);

  double m_dScale = 1.0;  ///< of the last numeric property "Scale", which is kept too; the shapes are not scaled by it
  void* m_pReserved = nullptr;  ///< not used
  CString m_sReference;         ///< "U1"; written as the original reference, too
  int m_nGateCount = 0;         ///< as read; the number of gates is written
  int m_nPinCount = 0;          ///< as read, and written
  CString m_sPart;
  CString m_sStockId;
  CString m_sPackage;
  CString m_sFootprintSpec = "default";
  CString m_sFootprint;
  CString m_sReverseFootprint;
  CString m_sOriginalReference;         ///< of the key "originalReferecne", spelled so in the format; not written
  CString m_sPlaced = "YES";            ///< "YES" or "NO"
  CString m_sPlacementSide = "A";       ///< "A" or "B"
  CString m_sLocationLock;              ///< "YES" or "NO"; empty when not told
  CString m_sAngleLock;                 ///< "YES" or "NO"; empty when not told
  CString m_sPlacementSideLock = "NO";  ///< "YES" or "NO"
  CString m_sPackageSymbol;             ///< as read; written is "YES" for a component of one gate
  CString m_sOutOfBoard;                ///< as read; "NO" is written
  CString m_sReserved1;                 ///< not used
  CPointD m_ptOutOfBoardLocation;
  CPointD m_ptLocation;
  CPointD m_ptMinRect1;  ///< written, never read
  CPointD m_ptMinRect2;  ///< written, never read
  double m_dAngle = 0;
  CString m_sDrawRefDes;              ///< as read; "NO" is written
  CBDdrawObjArray* m_pDrawObjArray;   ///< shapes outside the pins; owned
  CBDgateArray* m_pGateArray;         ///< owned
  CBDpinArray* m_pPinArray;           ///< owned
  CGPropertyArray* m_pPropertyArray;  ///< owned
  CStringArray m_aVerbatim;           ///< filled by the host only
};

class CBDcomponentArray : public laminate::NamedArray<CBDcomponent> {};
