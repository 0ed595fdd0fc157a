#pragma once
#include <cstdio>

#include "base/CExPtrArray.h"
#include "base/CString.h"
#include "base/CStringArray.h"
#include "base/Pool.h"

class CBDboardContainer;
class CBDesigner;
class CBDfootprintContainer;

namespace laminate {
class TextOut;
}

/// A footprint that a board file claims from the library.
class CBDlibFootprint : public laminate::Pooled {
 public:
  CBDlibFootprint() = default;
  CBDlibFootprint(const CBDlibFootprint&) = default;
  CBDlibFootprint& operator=(const CBDlibFootprint&) = default;
  virtual ~CBDlibFootprint() = default;

  CString m_sName;
  CString m_sSide;
};

class CBDlibFootprintArray : public laminate::NamedArray<CBDlibFootprint> {};

/// A padstack that a board file claims from the library.
class CBDlibPadstack final : public laminate::Pooled {
 public:
  CString m_sName;
  CString m_sSide;
  CString m_sFlip;
};

class CBDlibPadstackArray : public laminate::NamedArray<CBDlibPadstack> {};

/// A pad that a board file claims from the library.
class CBDlibPad : public laminate::Pooled {
 public:
  CBDlibPad() = default;
  CBDlibPad(const CBDlibPad&) = default;
  CBDlibPad& operator=(const CBDlibPad&) = default;
  virtual ~CBDlibPad() = default;

  CString m_sName;
  CString m_sSide;
  CString m_sFlip;
};

class CBDlibPadArray : public laminate::NamedArray<CBDlibPad> {};

/// The library objects that a board file claims. Read as
///   (libraryEntities (part NAME) ... (package NAME) ... (footprint NAME (side SIDE)?) ...
///     (padstack NAME (side SIDE)? (flip AXIS)?) ... (pad NAME (side SIDE)? (flip AXIS)?) ...)
/// in any order. What was read stays here and is not written: the written section comes from the components and the
/// library. A part's name is written between quotes if it holds a bracket or a blank, the other names are not quoted.
class CBDlibraryEntities : public laminate::Pooled {
 public:
  /// Creates the three arrays, empty.
  CBDlibraryEntities();
  CBDlibraryEntities(const CBDlibraryEntities&) = delete;
  CBDlibraryEntities& operator=(const CBDlibraryEntities&) = delete;
  virtual ~CBDlibraryEntities();

  /// Writes the "libraryEntities" form from the root's board and footprint containers. Always 0; a null stream or root
  /// raises `CInvalidArgException`.
  int nPrint2File(FILE* fp, CBDesigner* pBDesigner);
  /// The parts and packages of the components, then every footprint, padstack and pad of the library for both sides,
  ///   (pad NAME) (pad NAME (side B) (flip X))
  /// where a footprint has no flip; each name once in its group, an empty one never. Null arrays are empty ones.
  /// Failing memory raises `CMemoryException`.
  void Write(laminate::TextOut& out, const CBDboardContainer& board, const CBDfootprintContainer& footprints) const;
  /// 1 if the list holds exactly that text, else 0.
  int bIsStringInArray(CStringArray& arr, CString s);

  CStringArray m_aParts;  ///< as read, in file order; so are the other four
  CStringArray m_aPackages;
  CBDlibFootprintArray* m_pLibFootprintArray;  ///< owned
  CBDlibPadstackArray* m_pLibPadstackArray;    ///< owned
  CBDlibPadArray* m_pLibPadArray;              ///< owned
};
