#pragma once
#include <cstdio>

#include "base/CExPtrArray.h"
#include "base/CLProperty.h"
#include "base/CPointD.h"
#include "base/CRectD.h"
#include "base/CString.h"
#include "base/CStringArray.h"
#include "base/Pool.h"

class CBDcomponent;
class CBDfootprintContainer;
class CBDheelprint;
class CBDmapArray;
class CBDtechnologyContainer;
class CBDtoeprintPinArray;

namespace laminate {
class TextOut;
}

/// A land pattern of the library: pins with their pads, and the shapes of the body. Coordinates are the footprint's
/// own, in mm; layers are footprint layers, or "FPADSTACK" for the pad layer of a pin.
class CBDfootprint : public laminate::Pooled {
 public:
  CBDfootprint();
  CBDfootprint(const CBDfootprint&) = delete;
  CBDfootprint& operator=(const CBDfootprint&) = delete;
  virtual ~CBDfootprint();

  /// Writes the "footprint" form. Its box, grid and minimal rectangle come from `m_rcArea`; the box that was read is
  /// not written. With `m_aVerbatim` the opening line is followed by its lines and nothing else: they hold the rest of
  /// the record with its bracket. Always 0; a null stream raises `CInvalidArgException`.
  int nPrint2File(FILE* fp);
  void Write(laminate::TextOut& out);

  /// "DIP" when the first pad or drilled padstack among the pins' shapes is a drilled padstack, otherwise "SMD".
  /// Padstacks are looked up in the container by name; one that it does not hold is taken as not drilled. A null
  /// container raises `CInvalidArgException` where a look-up is needed.
  CString sGetInsertionTypeOfFootprint(CBDfootprintContainer* pContainer);

  /// A component made from this footprint, at a location (mm), turned by `dAngle` degrees, on side "B" mirrored, with
  /// its layers mapped to those of the board. The caller owns the result.
  CBDcomponent* pGetComponentFromFootprint(CBDtechnologyContainer* pTechnology, CString sSide, double dAngle,
                                           CPointD ptLocation, double dScale);
  /// The board layer on which a footprint layer lands on a side, by the map of that side or of the side with "_THRU"
  /// behind it; empty when there is none.
  CString sGetBDBoardLayNameFromFootprintLayName(CBDtechnologyContainer* pTechnology, CString sFootLayer,
                                                 CString sSide);
  /// The footprint layer that lands on a board layer, in the first map that tells one; empty when there is none.
  CString sGetBDfootprintLayNameFromBDBoardLayName(CBDmapArray* pMaps, CString sBoardLayer, CString sMapName);
  /// The type of the first footprint layer of that name; empty when there is none.
  CString sGetFootprintLayTypeFromFootprintLayName(CBDtechnologyContainer* pTechnology, CString sFootLayer);
  /// The layer kind of the first sub-layer of that name; empty when there is none.
  CString sGetSubLayTypeFromBoardLayName(CBDtechnologyContainer* pTechnology, CString sBoardLayer);

  CRectD m_rcArea;  ///< x, y, width and height in mm; source of all written geometry; no reader sets it
  CLPropertyArray* m_pPropertyArray;  ///< owned
  int m_nUver = 1;
  CString m_sName;
  CPointD m_ptBox1;  ///< first point of the area that was read, mm; no writer uses it
  CPointD m_ptBox2;  ///< last further point of it
  CPointD m_ptReserved1;
  CPointD m_ptReserved2;
  CPointD m_ptReserved3;
  CPointD m_ptReserved4;
  CString m_sReserved1;
  CString m_sReserved2;
  CBDheelprint* m_pHeelprint;                ///< owned
  CBDtoeprintPinArray* m_pToeprintPinArray;  ///< owned
  CStringArray m_aVerbatim;                  ///< filled by the host only
};

class CBDfootprintArray : public laminate::NamedArray<CBDfootprint> {};
