#pragma once
#include <string_view>

namespace laminate {

/// The value that the C library's `atof` gives in the C locale, whatever locale is set: leading white space is
/// skipped, the longest prefix that is a number counts (decimal, hexadecimal, "inf", "nan"), and 0 stands for a text
/// without one. The text ends at its first NUL. Raises `CMemoryException` when there is no memory for the copy that a
/// number of more than 255 bytes needs.
double Atof(std::string_view s);

/// The value of an `atoi` with defined results: the 64-bit value of the decimal prefix, saturated, cut to 32 bits;
/// so 4294967297 gives 1 and a run of twenty nines gives -1.
int Atoi(std::string_view s) noexcept;

/// The nearest value of single precision; infinite where that has none so large.
float Narrowed(double d) noexcept;

/// Longest text that `FormatFixed` and `FormatGeneral` write: the sign, 309 digits, the point and the decimals.
inline constexpr int kMaxNumberLength = 1 + 309 + 1 + 20;

/// Writes what "%.*f" with `nDecimals` (0 to 20) gives in the C locale, for every double, without a NUL; gives the end.
char* FormatFixed(char* p, double d, int nDecimals) noexcept;
/// The same for "%g".
char* FormatGeneral(char* p, double d) noexcept;
/// The same for "%d".
char* FormatInteger(char* p, long long n) noexcept;
/// The shortest text that reads back to the same double.
char* FormatShortest(char* p, double d) noexcept;

}  // namespace laminate
