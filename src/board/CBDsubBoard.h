#pragma once
#include "base/CExPtrArray.h"
#include "base/CString.h"
#include "base/Pool.h"

/// A board that this board holds; `CBDdrawSubBoard::m_nSubBoard` of a shape in the layout is its number. Read and never
/// written. The form is "(subBoard ID (relativePath PATH))", where the path may be absent; one without its number, or
/// "relativePath" without a value, raises `CInvalidArgException` when it is read.
class CBDsubBoard : public laminate::Pooled {
 public:
  CBDsubBoard() = default;
  CBDsubBoard(const CBDsubBoard&) = default;
  CBDsubBoard& operator=(const CBDsubBoard&) = default;
  virtual ~CBDsubBoard() = default;

  int m_nId = 0;            ///< its number
  CString m_sRelativePath;  ///< where its own file is, as this file says; the library does not open it
};

class CBDsubBoardArray : public laminate::NamedArray<CBDsubBoard> {};
