#pragma once
#include <cstddef>
#include <string_view>
#include <vector>

class CECadCls;

namespace laminate {

/// Where a form stands in a text: from its opening bracket to behind its closing one.
struct FormRange {
  std::size_t nBegin;
  std::size_t nEnd;
};

/// Reads a text as `CECadCls::nParseFile(0)` reads a file of that content, without a message box and without opening
/// the reader's file, whose name only serves the status. `LineReader::kPadding` bytes must be readable behind the text.
///
/// `pRanges`, where given, gets the range of each node, in the order in which the forms close: those in a form stand
/// before it. They fit the tree when the result is 0.
int ParseText(CECadCls& reader, std::string_view text, std::vector<FormRange>* pRanges = nullptr);

}  // namespace laminate
