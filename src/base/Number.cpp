#include "base/Number.h"

#include <locale.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <new>

#include "base/CException.h"

namespace laminate {
namespace {

bool IsSpace(char ch) { return ch == ' ' || (ch >= '\t' && ch <= '\r'); }
bool IsDigit(char ch) { return ch >= '0' && ch <= '9'; }

locale_t TheCLocale() {
  static const locale_t theLocale = newlocale(LC_ALL_MASK, "C", nullptr);
  return theLocale;
}

// The C library's own answer, for what the short form below does not cover.
double LibraryAtof(std::string_view s) {
  // What can belong to a number, "nan(...)" included; a long text behind it is not copied.
  s = s.substr(0, s.find_first_not_of("0123456789+-.()_"
                                      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"));
  char szShort[256];
  if (s.size() < sizeof szShort) {
    std::memcpy(szShort, s.data(), s.size());
    szShort[s.size()] = '\0';
    return strtod_l(szShort, nullptr, TheCLocale());
  }
  const std::unique_ptr<char[]> szLong(new (std::nothrow) char[s.size() + 1]);
  if (szLong == nullptr) AfxThrowMemoryException();
  std::memcpy(szLong.get(), s.data(), s.size());
  szLong[s.size()] = '\0';
  return strtod_l(szLong.get(), nullptr, TheCLocale());
}

constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                   1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

char* NonFinite(char* p, double d) noexcept {
  if (std::signbit(d)) *p++ = '-';
  std::memcpy(p, std::isnan(d) ? "nan" : "inf", 3);
  return p + 3;
}

char* Unsigned(char* p, std::uint64_t n) noexcept {
  char digits[20];
  char* q = digits + sizeof digits;
  do {
    *--q = static_cast<char>('0' + n % 10);
    n /= 10;
  } while (n != 0);
  const auto length = static_cast<std::size_t>(digits + sizeof digits - q);
  std::memcpy(p, q, length);
  return p + length;
}

// Exact fixed output of doubles whose scaled value fits 64 bits. Gives null where it does not apply.
template <int nDecimals>
char* ShortFixed(char* p, double d) noexcept {
  static_assert(nDecimals >= 1 && nDecimals <= 6);
  constexpr std::uint64_t kScale = nDecimals == 5 ? 100000 : nDecimals == 6 ? 1000000 : 0;
  static_assert(kScale != 0);
  const auto bits = std::bit_cast<std::uint64_t>(d);
  const int nExponent = static_cast<int>((bits >> 52) & 0x7FF);
  std::uint64_t mantissa = bits & ((std::uint64_t{1} << 52) - 1);
  // Up to 2^43 the scaled value stays below 2^63.
  if (nExponent >= 1023 + 43) return nullptr;
  if (nExponent != 0) mantissa |= std::uint64_t{1} << 52;
  const int nShift = 1075 - (nExponent == 0 ? 1 : nExponent);  // value = mantissa / 2^nShift, nShift > 9
  std::uint64_t scaled = 0;
  if (nShift < 100) {
    __extension__ using Wide = unsigned __int128;
    const Wide product = static_cast<Wide>(mantissa) * kScale;  // below 2^73
    scaled = static_cast<std::uint64_t>(product >> nShift);
    const Wide rest = product & ((Wide{1} << nShift) - 1);
    const Wide half = Wide{1} << (nShift - 1);
    // The C library rounds to nearest, and a tie to the even digit.
    if (rest > half || (rest == half && (scaled & 1) != 0)) ++scaled;
  }
  if (bits >> 63) *p++ = '-';
  p = Unsigned(p, scaled / kScale);
  *p++ = '.';
  auto fraction = static_cast<std::uint32_t>(scaled % kScale);
  for (int i = nDecimals - 1; i >= 0; --i) {
    p[i] = static_cast<char>('0' + fraction % 10);
    fraction /= 10;
  }
  return p + nDecimals;
}

}  // namespace

double Atof(std::string_view s) {
  const char* p = s.data();
  const char* const end = p + s.size();
  while (p != end && IsSpace(*p)) ++p;
  const char* const start = p;
  bool bNegative = false;
  if (p != end && (*p == '-' || *p == '+')) bNegative = *p++ == '-';
  // Up to 19 digits fit 64 bits; with at most 2^53 and a power of ten that is exact, one division is exactly rounded.
  std::uint64_t value = 0;
  int nDigits = 0;
  int nFraction = 0;
  const char* const first = p;
  for (; p != end && IsDigit(*p); ++p, ++nDigits) value = value * 10 + static_cast<std::uint64_t>(*p - '0');
  if (p != end && *p == '.') {
    const char* const point = ++p;
    for (; p != end && IsDigit(*p); ++p, ++nDigits) value = value * 10 + static_cast<std::uint64_t>(*p - '0');
    nFraction = static_cast<int>(p - point);
  }
  const bool bPlain = nDigits > 0 && nDigits <= 19 && value <= (std::uint64_t{1} << 53) && nFraction <= 22 &&
                      (p == end || ((*p | 0x20) != 'e' && (*p | 0x20) != 'x'));
  if (!bPlain) {
    if (nDigits == 0 && (first == end || !((*first | 0x20) == 'i' || (*first | 0x20) == 'n'))) return 0.0;
    const std::string_view rest(start, static_cast<std::size_t>(end - start));
    return LibraryAtof(rest.substr(0, rest.find('\0')));
  }
  const double d = static_cast<double>(value) / kPowersOfTen[nFraction];
  return bNegative ? -d : d;
}

int Atoi(std::string_view s) noexcept {
  const char* p = s.data();
  const char* const end = p + s.size();
  while (p != end && IsSpace(*p)) ++p;
  bool bNegative = false;
  if (p != end && (*p == '-' || *p == '+')) bNegative = *p++ == '-';
  std::uint64_t value = 0;
  const std::uint64_t limit = bNegative ? std::uint64_t{1} << 63 : (std::uint64_t{1} << 63) - 1;
  for (; p != end && IsDigit(*p); ++p) {
    const auto digit = static_cast<std::uint64_t>(*p - '0');
    if (value > (limit - digit) / 10) {
      value = limit;
      break;
    }
    value = value * 10 + digit;
  }
  return static_cast<int>(static_cast<std::uint32_t>(bNegative ? 0 - value : value));
}

float Narrowed(double d) noexcept {
  // A conversion out of range is left undefined by the language. From half a step above the largest value on, the
  // nearest one is infinite.
  constexpr double kLargest = std::numeric_limits<float>::max();
  constexpr double kInfinite = 0x1.ffffffp127;
  if (std::fabs(d) <= kLargest || std::isnan(d)) return static_cast<float>(d);
  const float f = std::fabs(d) < kInfinite ? std::numeric_limits<float>::max() : std::numeric_limits<float>::infinity();
  return d < 0 ? -f : f;
}

char* FormatFixed(char* p, double d, int nDecimals) noexcept {
  char* q = nullptr;
  if (nDecimals == 5) q = ShortFixed<5>(p, d);
  if (nDecimals == 6) q = ShortFixed<6>(p, d);
  if (q != nullptr) return q;
  if (!std::isfinite(d)) return NonFinite(p, d);
  return std::to_chars(p, p + kMaxNumberLength, d, std::chars_format::fixed, nDecimals).ptr;
}

char* FormatGeneral(char* p, double d) noexcept {
  if (!std::isfinite(d)) return NonFinite(p, d);
  return std::to_chars(p, p + kMaxNumberLength, d, std::chars_format::general, 6).ptr;
}

char* FormatInteger(char* p, long long n) noexcept {
  auto value = static_cast<std::uint64_t>(n);
  if (n < 0) {
    *p++ = '-';
    value = 0 - value;
  }
  return Unsigned(p, value);
}

char* FormatShortest(char* p, double d) noexcept {
  if (!std::isfinite(d)) return NonFinite(p, d);
  return std::to_chars(p, p + kMaxNumberLength, d).ptr;
}

}  // namespace laminate
