#pragma once
#include <string>
#include <string_view>

#include "base/Number.h"

namespace laminate {

/// Where on a line a token may stand so that the reader gives it back.
enum class TokenPlace {
  anywhere,
  lineOfItsOwn,  ///< alone on its line
  closingLine,   ///< alone on its line but for the bracket that closes its form
  nowhere        ///< no spelling gives the text back
};

/// Spells a text as a token: without quotes where it can stand so, else between them. What the reader and the splitter
/// make of backslashes, quotes and line ends in it is found out by asking them.
TokenPlace SpellText(std::string_view s, std::string& sToken);

/// Whether a text can stand on any line.
bool FitsAnywhere(std::string_view s);

/// The shortest spelling of a number that reads back to the same bits, of a length with a "." in it. The buffer has
/// room for `kMaxNumberLength` bytes; gives the end. Only finite numbers have one.
char* SpellReal(char* p, double d) noexcept;
char* SpellLength(char* p, double d) noexcept;

}  // namespace laminate
