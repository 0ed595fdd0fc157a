#pragma once
#include "base/CString.h"
#include "base/Pool.h"

/// The widening of a line where it meets a pad. Lengths are in mm.
///
/// Form, in a "pt" of a vertex section: (fillet (type T) (dir D) (filletWidth L) (length L) (width L)).
class CBDfillet : public laminate::Pooled {
 public:
  CBDfillet() = default;
  CBDfillet(const CBDfillet&) = default;
  CBDfillet& operator=(const CBDfillet&) = default;
  virtual ~CBDfillet();

  CString m_sType;            ///< "type", kept as text
  double m_dWidth = 0;        ///< "width"
  double m_dLength = 0;       ///< "length"
  double m_dFilletWidth = 0;  ///< "filletWidth"; a fillet is only written when this is not 0
  CString m_sDir;             ///< "dir", kept as text

  /// A copy of all fields, which the caller owns.
  CBDfillet* pCopy() const;
};
