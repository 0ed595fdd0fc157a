#pragma once
#include <cstdio>

#include "base/CExPtrArray.h"
#include "base/CString.h"
#include "base/CStringArray.h"
#include "base/Pool.h"

namespace laminate {
class TextOut;

/// The format allows copper layers from 1 up to this number.
inline constexpr int kMaxConductiveLayer = 36;
}  // namespace laminate

/// The board layers on which one footprint layer lands.
class CBDcorrespondence : public laminate::Pooled {
 public:
  CBDcorrespondence() = default;
  CBDcorrespondence(const CBDcorrespondence&) = delete;
  CBDcorrespondence& operator=(const CBDcorrespondence&) = delete;
  virtual ~CBDcorrespondence() = default;

  /// Writes "(correspondence (footLayer NAME) (boardLayer LAYER ...))", a name in quotes if it holds a bracket. A board
  /// layer whose name reads as a number from 1 to `kMaxConductiveLayer` is written as a conductive one, "PADSTACK" as a
  /// system layer, any other as a non-conductive one. Always 0; a null stream raises `CInvalidArgException`.
  int nPrint2File(FILE* fp);
  /// The same into the text of a file that is being written.
  void Write(laminate::TextOut& out) const;

  CString m_sFootLayer;
  CStringArray m_aBoardLayers;  ///< names of board layers; that of a conductive layer is its number as text
};

class CBDcorrespondenceArray : public laminate::NamedArray<CBDcorrespondence> {};

/// Where footprint layers land on one side of the board.
class CBDmap : public laminate::Pooled {
 public:
  CBDmap();
  /// Copies the name and shares `m_pCorrespondenceArray`: only one of the maps that share it may be destroyed; the host
  /// sets the pointer of the others to null.
  CBDmap(const CBDmap&) = default;
  /// As the copy constructor. The array that this map held is not deleted: it is the host's to delete.
  CBDmap& operator=(const CBDmap&) = default;
  virtual ~CBDmap();

  /// Writes "(map NAME CORRESPONDENCE ...)", the name without quotes. Always 0; a null stream raises
  /// `CInvalidArgException`.
  int nPrint2File(FILE* fp);
  /// The same into the text of a file that is being written.
  void Write(laminate::TextOut& out) const;

  CString m_sName;                                 ///< the side, "A" or "B", or such a letter with "_THRU" behind it
  CBDcorrespondenceArray* m_pCorrespondenceArray;  ///< owned
};

class CBDmapArray : public laminate::NamedArray<CBDmap> {};
