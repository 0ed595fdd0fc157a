#pragma once
#include <cstdio>

#include "base/CExPtrArray.h"
#include "base/CPointD.h"
#include "base/CRectD.h"
#include "base/CString.h"
#include "base/CStringArray.h"
#include "base/Pool.h"

class CBDdrawObj;

namespace laminate {
class TextOut;
}

/// The pads of a padstack on one footprint layer, by the role in which the layer meets the padstack. A role without a
/// pad has an empty name.
class CBDpadSet : public laminate::Pooled {
 public:
  CBDpadSet() = default;
  CBDpadSet(const CBDpadSet&) = default;
  CBDpadSet& operator=(const CBDpadSet&) = default;
  virtual ~CBDpadSet() = default;

  /// Writes "(padSet (footLayer L) (connect (pad P)) ...)", no name in quotes; a set without any pad writes nothing.
  /// Always 0; a null stream raises `CInvalidArgException`.
  int nPrint2File(FILE* fp);
  /// The same into the text of a file that is being written.
  void Write(laminate::TextOut& out) const;

  CString m_sFootLayer;
  CString m_sConnect;    ///< name of the pad where the layer is connected
  CString m_sNoConnect;  ///< where it is not
  CString m_sThermal;    ///< where it is connected by a thermal relief
  CString m_sClearance;  ///< what is kept free where it is not connected
};

class CBDpadSetArray : public laminate::NamedArray<CBDpadSet> {};

/// The drill of a padstack.
class CBDpadstackHole : public laminate::Pooled {
 public:
  CBDpadstackHole() = default;
  /// Copies member by member and shares the shape: only one of the objects that share it may be destroyed; the host
  /// sets the pointer of the others to null.
  CBDpadstackHole(const CBDpadstackHole&) = default;
  /// As the copy constructor. The shape that this object held is not deleted: it is the host's to delete.
  CBDpadstackHole& operator=(const CBDpadstackHole&) = default;
  virtual ~CBDpadstackHole();

  /// Writes "(hole (footLayer L) (geometry SHAPE))" with the shape inside the hole; without a hole nothing. This
  /// changes the net name of the shape. Always 0; a null stream raises `CInvalidArgException`.
  int nPrint2File(FILE* fp);
  /// The same into the text of a file that is being written.
  void Write(laminate::TextOut& out);

  CString m_sFootLayer;              ///< no reader sets it
  CBDdrawObj* m_pDrawObj = nullptr;  ///< null: no drill; a `CBDhole` once one was read; owned
  void* m_pReserved = nullptr;
};

/// A padstack of the library: which pads stand on which footprint layers, and the drill.
class CBDpadstack : public laminate::Pooled {
 public:
  CBDpadstack();
  CBDpadstack(const CBDpadstack&) = delete;
  CBDpadstack& operator=(const CBDpadstack&) = delete;
  virtual ~CBDpadstack();

  /// Writes the "padstack" form. Its box comes from `m_rcArea`, and writing changes the net name of the hole's shape.
  /// Names and words are not quoted: one with a blank or a bracket, and an empty type or mode, does not load again.
  /// With `m_aVerbatim` the opening line is followed by its lines and nothing else: they hold the rest of the record
  /// with its bracket. Always 0; a null stream raises `CInvalidArgException`.
  int nPrint2File(FILE* fp);
  /// The same into the text of a file that is being written.
  void Write(laminate::TextOut& out);

  int m_nUver = 1;  ///< no reader sets it
  CString m_sName;
  CPointD m_ptReserved1;
  CPointD m_ptReserved2;
  CString m_sType;                 ///< a word of the file such as "SURFACE"
  CString m_sThroughMode;          ///< a word of the file such as "NOTHROUGH"
  CString m_sReserved1;            ///< not used
  CString m_sIsBuildupVia;         ///< "YES" or "NO"; empty when not told
  CBDpadstackHole* m_pHole;        ///< the drill, made with the padstack; null writes none; owned
  CBDpadSetArray* m_pPadSetArray;  ///< owned
  CRectD m_rcArea;                 ///< x, y, width and height in mm; no reader sets it
  CStringArray m_aVerbatim;        ///< filled by the host only
};

class CBDpadstackArray : public laminate::NamedArray<CBDpadstack> {
 public:
  /// 1 if an element has exactly that name, else 0.
  int bIsExistInArray(CString sName);
};
