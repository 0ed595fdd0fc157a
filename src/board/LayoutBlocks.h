#pragma once
#include "base/CString.h"
#include "drawobj/CBDdrawObj.h"

namespace laminate {

/// The blocks in which the gathered shapes of a layout are written. Copper layers are known by their number, all others
/// by their name. The two are remembered apart: a number stays known while shapes of other layers pass, and so its next
/// shape opens no block anew, but stands in the one that is open.
class LayoutBlocks {
 public:
  enum class Header { none, conductive, nonConductive, systemLayer };
  struct Step {
    bool closes;  ///< the bracket of the block before stands in front of the shape
    Header opens;
  };

  /// What stands in front of the next shape.
  Step Next(const CBDdrawObj& shape);
  /// Whether a closing bracket ends the last block: once a shape has been met.
  bool CloseLast() const { return !m_bFirst; }

 private:
  bool m_bFirst = true;
  int m_nNumber = 0;
  CString m_sName;
};

}  // namespace laminate
