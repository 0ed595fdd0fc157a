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
  /// not written. Names, items and comments are written as they stand, without quotes: one that is empty or holds a
  /// blank or a bracket does not read back. Writing a shape may change its net name, as `CBDdrawObj::nPrint2File`
  /// tells. With `m_aVerbatim` the opening line is followed by its lines and nothing else: they hold the rest of the
  /// record with its bracket. Always 0; a null stream raises `CInvalidArgException`.
  int nPrint2File(FILE* fp);
  void Write(laminate::TextOut& out);

  /// "DIP" when the first pad or drilled padstack among the pins' shapes is a drilled padstack, otherwise "SMD".
  /// Padstacks are looked up in the container by name; one that it does not hold is taken as not drilled. A null
  /// container raises `CInvalidArgException` where a look-up is needed.
  CString sGetInsertionTypeOfFootprint(CBDfootprintContainer* pContainer);

  /// A component made from this footprint, at a location (mm), turned counter-clockwise by `dAngle` degrees. On side
  /// "B" what moves is mirrored about the y axis first and turned the other way; every other side is the front. The
  /// caller owns the result and sets its reference, footprint name, part and location.
  ///
  /// Pins and their shapes move, and so do pads and padstacks of the body; other shapes of the body keep the
  /// coordinates of the footprint. Shapes of pins keep their footprint layer, those of the body get the layer of the
  /// board, or an empty name where there is none. The scale works on the places of the pins alone: once before they
  /// move and once more for each shape of the pin.
  ///
  /// The technology may be null when the body has no shapes. A message box tells of a layer that maps to nothing, and
  /// of a shape that cannot move. A round thermal, which cannot be copied, and an array that is null raise
  /// `CInvalidArgException`.
  CBDcomponent* pGetComponentFromFootprint(CBDtechnologyContainer* pTechnology, CString sSide, double dAngle,
                                           CPointD ptLocation, double dScale);
  // The four look-ups do not regard this footprint. Null pointers raise `CInvalidArgException`.

  /// The board layer on which a footprint layer lands on a side, by the map of that name or, where that tells nothing,
  /// of the side with "_THRU" behind it; the last map stands in for one that there is not. Of several board layers the
  /// first counts. A correspondence without board layers is told by a message box and passed over. Empty when there is
  /// no layer.
  CString sGetBDBoardLayNameFromFootprintLayName(CBDtechnologyContainer* pTechnology, CString sFootLayer,
                                                 CString sSide);
  /// The footprint layer that lands on a board layer, in the first map that tells one, whatever `sMapName` says; empty
  /// when there is none.
  CString sGetBDfootprintLayNameFromBDBoardLayName(CBDmapArray* pMaps, CString sBoardLayer, CString sMapName);
  /// The type of the first footprint layer of that name; empty when there is none.
  CString sGetFootprintLayTypeFromFootprintLayName(CBDtechnologyContainer* pTechnology, CString sFootLayer);
  /// The layer kind of the first sub-layer of that name; empty when there is none.
  CString sGetSubLayTypeFromBoardLayName(CBDtechnologyContainer* pTechnology, CString sBoardLayer);

  CRectD m_rcArea;  ///< x, y, width and height in mm; source of all written geometry; no reader sets it
  CLPropertyArray* m_pPropertyArray;  ///< owned; kinds "propertyS" and "propertyI"; others are written but never read
  int m_nUver = 1;                    ///< version of the record
  CString m_sName;
  CPointD m_ptBox1;  ///< first point of the area that was read, mm; no writer uses it
  CPointD m_ptBox2;  ///< last further point of it
  // Reserved: nothing reads or writes these.
  CPointD m_ptReserved1;
  CPointD m_ptReserved2;
  CPointD m_ptReserved3;
  CPointD m_ptReserved4;
  CString m_sReserved1;
  CString m_sReserved2;
  CBDheelprint* m_pHeelprint;                ///< owned
  CBDtoeprintPinArray* m_pToeprintPinArray;  ///< owned
  CStringArray m_aVerbatim;                  ///< filled by the host only; the rest of the record as written
};

class CBDfootprintArray : public laminate::NamedArray<CBDfootprint> {};
