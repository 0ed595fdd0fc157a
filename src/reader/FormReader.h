#pragma once
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>

#include "base/Platform.h"
#include "reader/CECadClsLvl.h"
#include "reader/LineReader.h"

class CECadCls;

namespace laminate {

/// `CECadCls::pParseFormAt` for many offsets of one file, which is read once when they ascend. It makes no remarks.
///
/// Many forms may begin in what is a string that never ends when it is read from an earlier one; reading each to the
/// file's end would take quadratic time.
class FormReader {
 public:
  /// The reader names the file and gets the status and line of each parse; it must outlive this.
  explicit FormReader(CECadCls& reader) : m_reader(reader) {}
  std::unique_ptr<CECadClsLvl> At(ULONGLONG nOffset);

 private:
  CECadCls& m_reader;
  std::optional<LineReader> m_lines;
  // From the beginning of this line on what is in a string stays in it up to the file's end.
  std::uint64_t m_nStringToEnd = std::numeric_limits<std::uint64_t>::max();
};

}  // namespace laminate
