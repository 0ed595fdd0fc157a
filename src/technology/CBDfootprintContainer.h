#pragma once
#include <cstdio>

#include "base/CString.h"
#include "base/CStringArray.h"
#include "base/Platform.h"
#include "base/Pool.h"

class CBDfootprint;
class CBDfootprintArray;
class CBDpad;
class CBDpadArray;
class CBDpadstack;
class CBDpadstackArray;
class CBDtechnologyContainer;

namespace laminate {
class TextOut;
}

/// Values that no file fills: the section of this name that is written is made of constants.
class CBDcommonParameter : public laminate::Pooled {
 public:
  CBDcommonParameter() = default;
  CBDcommonParameter(const CBDcommonParameter&) = default;
  CBDcommonParameter& operator=(const CBDcommonParameter&) = default;
  virtual ~CBDcommonParameter() = default;

  __int64 m_aReserved1[5] = {};
  CString m_sReserved1;
  CString m_sReserved2;
  CString m_sReserved3;
};

/// The library of a design: pads, padstacks and footprints, as in a footprint file. Look-ups compare names exactly and
/// give the first match, which stays the container's; each walks its array, so that a host with many of them better
/// makes an index of its own. An array that is null raises `CInvalidArgException`.
class CBDfootprintContainer : public laminate::Pooled {
 public:
  CBDfootprintContainer();
  CBDfootprintContainer(const CBDfootprintContainer&) = delete;
  CBDfootprintContainer& operator=(const CBDfootprintContainer&) = delete;
  virtual ~CBDfootprintContainer();

  /// Writes the body of a footprint file: the technology section in its short form, then "footprintContainer". Always
  /// 0; a null stream or technology raises `CInvalidArgException`.
  int nPrint2File(FILE* fp, CBDtechnologyContainer* pTechnology);
  void Write(laminate::TextOut& out, const CBDtechnologyContainer& technology);

  /// Index of the footprint of that name, or -1.
  int nGetFootprintIDFromName(CString sName);
  /// The footprint of that name, or null.
  CBDfootprint* pGetFootprintWithName(CString sName);
  /// The pad of that name, or null.
  CBDpad* pGetPadFromName(CString sName);
  /// The padstack of that name, or null.
  CBDpadstack* pGetPadstackFromName(CString sName);

  CBDcommonParameter* m_pCommonParameter;  ///< owned
  CStringArray m_aReserved;                ///< nothing reads or writes it
  CBDpadArray* m_pPadArray;                ///< owned
  CBDpadstackArray* m_pPadstackArray;      ///< owned
  CBDfootprintArray* m_pFootprintArray;    ///< owned
};
