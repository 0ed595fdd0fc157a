#pragma once
#include <string>
#include <string_view>

namespace laminate::cli {

/// The library's bytes as UTF-8: pure ASCII as it stands, other text as code page 932 (0x5C is a backslash in it), and
/// text that is not valid there with each byte above 0x7F as the code point of that value.
std::string ToUtf8(std::string_view s);

/// Whether the bytes are well-formed UTF-8.
bool IsUtf8(std::string_view s);

/// Appends a JSON string with its quotes. `s` is UTF-8.
void AppendQuoted(std::string& sTarget, std::string_view s);

/// The same of the library's bytes.
void AppendJsonString(std::string& sTarget, std::string_view s);

}  // namespace laminate::cli
