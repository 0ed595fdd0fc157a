#pragma once
#include "base/CExPtrArray.h"
#include "base/CString.h"
#include "base/Pool.h"

/// A board that this board holds: a `CBDdrawSubBoard` in the layout names it by its number. Read and never written.
class CBDsubBoard : public laminate::Pooled {
 public:
  CBDsubBoard() = default;
  CBDsubBoard(const CBDsubBoard&) = default;
  CBDsubBoard& operator=(const CBDsubBoard&) = default;
  virtual ~CBDsubBoard() = default;

  int m_nId = 0;
  CString m_sRelativePath;
};

class CBDsubBoardArray : public laminate::NamedArray<CBDsubBoard> {};
