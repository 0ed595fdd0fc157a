#include "base/Number.h"

#include <gtest/gtest.h>
#include <locale.h>

#include <bit>
#include <cfloat>
#include <cinttypes>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "base/LocaleScope.h"

using namespace std::string_view_literals;
using laminate::Atof;
using laminate::Atoi;

namespace {

locale_t CLocale() {
  static const locale_t theLocale = newlocale(LC_ALL_MASK, "C", nullptr);
  return theLocale;
}
double LibraryValue(const std::string& s) { return strtod_l(s.c_str(), nullptr, CLocale()); }

std::uint64_t Bits(double d) { return std::bit_cast<std::uint64_t>(d); }

// Equal to the last bit; any two that are no numbers are equal.
::testing::AssertionResult SameDouble(double a, double b) {
  if (Bits(a) == Bits(b) || (std::isnan(a) && std::isnan(b))) return ::testing::AssertionSuccess();
  char sz[120];
  std::snprintf(sz, sizeof sz, "%a is not %a", a, b);
  return ::testing::AssertionFailure() << sz;
}

template <class Format>
std::string Formatted(Format format) {
  char sz[laminate::kMaxNumberLength + 8];
  std::memset(sz, '#', sizeof sz);
  char* end = format(sz);
  EXPECT_LE(end - sz, laminate::kMaxNumberLength);
  EXPECT_EQ(*end, '#') << "nothing is written behind the end";
  return std::string(sz, end);
}
std::string Fixed(double d, int nDecimals) {
  return Formatted([=](char* p) { return laminate::FormatFixed(p, d, nDecimals); });
}
std::string General(double d) {
  return Formatted([=](char* p) { return laminate::FormatGeneral(p, d); });
}
std::string Shortest(double d) {
  return Formatted([=](char* p) { return laminate::FormatShortest(p, d); });
}
std::string Integer(long long n) {
  return Formatted([=](char* p) { return laminate::FormatInteger(p, n); });
}
template <class... Args>
std::string Printed(const char* szFormat, Args... args) {
  char sz[1024];
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#pragma GCC diagnostic ignored "-Wformat-security"
  const int n = std::snprintf(sz, sizeof sz, szFormat, args...);
#pragma GCC diagnostic pop
  return std::string(sz, static_cast<std::size_t>(n));
}

TEST(Atof, ReadsWhatTheLibraryReads) {
  struct Row {
    std::string_view text;
    double expected;
  };
  constexpr double kInf = std::numeric_limits<double>::infinity();
  const double kNan = std::numeric_limits<double>::quiet_NaN();
  const Row rows[] = {
      {"", 0},
      {" ", 0},
      {"0", 0},
      {"-0", -0.0},
      {"-0.0", -0.0},
      {"+0", 0},
      {"1", 1},
      {"+2", 2},
      {"-3.25", -3.25},
      {" \t\n\v\f\r1.5", 1.5},
      {"\xA0"
       "1.5",
       0},
      {"1.5x", 1.5},
      {"1.5 2", 1.5},
      {"1,5", 1},
      {"1.", 1},
      {".5", 0.5},
      {"-.5", -0.5},
      {".", 0},
      {"-", 0},
      {"+", 0},
      {"+-1", 0},
      {"- 1", 0},
      {"-.", 0},
      {".e5", 0},
      {"e5", 0},
      {"1e3", 1000},
      {"1E+3", 1000},
      {"1e-3", 0.001},
      {"1e", 1},
      {"1e+", 1},
      {"1e+x", 1},
      {"1.5e2.5", 150},
      {"0x10", 16},
      {"0X1.8p1", 3},
      {"0x", 0},
      {"0xg", 0},
      {"-0x10", -16},
      {"inf", kInf},
      {"-Infinity", -kInf},
      {"INFINITE", kInf},
      {"in", 0},
      {"nan", kNan},
      {"-NaN", kNan},
      {"nan(12)", kNan},
      {"na", 0},
      {"1e400", kInf},
      {"-1e400", -kInf},
      {"1e-320", 1e-320},
      {"4.9e-324", 4.9e-324},
      {"1e-400", 0},
      {"-1e-400", -0.0},
      {"1.7976931348623157e308", DBL_MAX},
      {"2.2250738585072011e-308", 2.2250738585072011e-308},
      {"9007199254740992", 9007199254740992.0},
      {"9007199254740993", 9007199254740992.0},
      {"9007199254740994", 9007199254740994.0},
      {"9007199254740993.00000000000000000000001", 9007199254740994.0},
      {"9999999999999999999", 1e19},
      {"99999999999999999999", 1e20},
      {"18446744073709551616", 18446744073709551616.0},
      {"0.1", 0.1},
      {"0.30000000000000004", 0.30000000000000004},
      {"123456789012345678", 123456789012345680.0},
      {"00000000000000000000000000000001", 1},
      {"0.00000000000000000000000000000000001", 1e-35},
      {"1\0002"sv, 1},
      {"1.5\0"
       "5"sv,
       1.5},
      {"\0001"sv, 0},
      {"1e\0003"sv, 1},
      {"1_000", 1},
      {"0b1", 0},
      {"\xEF\xBB\xBF"
       "1",
       0},
  };
  for (const Row& row : rows) {
    EXPECT_TRUE(SameDouble(Atof(row.text), row.expected)) << row.text;
    if (row.text.find('\0') == std::string_view::npos) {
      EXPECT_TRUE(SameDouble(Atof(row.text), LibraryValue(std::string(row.text)))) << row.text;
    }
  }
}

TEST(Atof, ReadsLongTexts) {
  for (const std::size_t n : {200u, 253u, 254u, 255u, 256u, 257u, 400u, 1000u, 20000u}) {
    for (const std::string& s :
         {std::string(n, '9'), "0." + std::string(n, '0') + "1", "0." + std::string(n, '1'), std::string(n, '0') + "7",
          "1" + std::string(n, '0') + "e-" + std::to_string(n), "0." + std::string(n, '0') + "5e" + std::to_string(n),
          "0x" + std::string(n, '1'),
          // Half-way between two doubles but for the last digit.
          "9007199254740993." + std::string(n, '0') + "1", "9007199254740993." + std::string(n, '0'),
          "nan(" + std::string(n, 'a') + ")", "-" + std::string(n, '0') + ".25" + std::string(n, 'x')}) {
      EXPECT_TRUE(SameDouble(Atof(s), LibraryValue(s))) << n << ": " << s.substr(0, 30);
    }
  }
  // A text of many bytes behind the number is not walked through for each number.
  const std::string sLong = "1e5 " + std::string(10000000, 'x');
  for (int i = 0; i < 1000; ++i) ASSERT_EQ(Atof(sLong), 1e5);
}

TEST(Atof, AgreesWithTheLibraryOnRandomTexts) {
  std::mt19937_64 random(1);
  const auto pick = [&random](std::uint64_t n) { return random() % n; };
  for (int i = 0; i < 1000000; ++i) {
    char sz[80];
    switch (i % 8) {
      case 0:
        std::snprintf(sz, sizeof sz, "%" PRId64, static_cast<std::int64_t>(random() >> pick(64)));
        break;
      case 1:
        std::snprintf(sz, sizeof sz, "%.5f", static_cast<double>(pick(2000000000)) / 100000 - 1000);
        break;
      case 2:
        std::snprintf(sz, sizeof sz, "%" PRIu64 ".%0*" PRIu64, pick(100000), static_cast<int>(pick(18)), pick(1000000));
        break;
      case 3:
        std::snprintf(sz, sizeof sz, "-%" PRIu64 ".%" PRIu64, pick(1000), random());
        break;
      case 4:
        std::snprintf(sz, sizeof sz, "%.17g", std::bit_cast<double>(random()));
        break;
      case 5:
        std::snprintf(sz, sizeof sz, "%.*f", static_cast<int>(pick(12)),
                      std::ldexp(static_cast<double>(random()), -static_cast<int>(pick(80))));
        break;
      case 6:
        std::snprintf(sz, sizeof sz, "%" PRIu64 "e%d", random() >> pick(64), static_cast<int>(pick(700)) - 350);
        break;
      case 7: {
        const std::size_t n = pick(12);
        for (std::size_t k = 0; k < n; ++k) sz[k] = "0123456789.-+eExn ia"[pick(20)];
        sz[n] = '\0';
        break;
      }
    }
    ASSERT_TRUE(SameDouble(Atof(sz), strtod_l(sz, nullptr, CLocale()))) << sz;
  }
}

TEST(Atoi, HasADefinedResultForEveryText) {
  struct Row {
    std::string_view text;
    int expected;
  };
  const Row rows[] = {
      {"", 0},
      {"0", 0},
      {"-0", 0},
      {"7", 7},
      {"+7", 7},
      {"-7", -7},
      {" \t\n\v\f\r7", 7},
      {"\xA0"
       "7",
       0},
      {"7x", 7},
      {"7 8", 7},
      {"x7", 0},
      {"+-7", 0},
      {"- 7", 0},
      {"1.9", 1},
      {"1e3", 1},
      {"0x10", 0},
      {"007", 7},
      {"2147483647", INT_MAX},
      {"2147483648", INT_MIN},
      {"-2147483648", INT_MIN},
      {"-2147483649", INT_MAX},
      {"4294967295", -1},
      {"4294967296", 0},
      {"4294967297", 1},
      {"-4294967297", -1},
      {"9223372036854775806", -2},
      {"9223372036854775807", -1},
      {"9223372036854775808", -1},
      {"99999999999999999999", -1},
      {"-9223372036854775807", 1},
      {"-9223372036854775808", 0},
      {"-9223372036854775809", 0},
      {"-99999999999999999999", 0},
      {"00000000000000000000000000000012", 12},
      {"1\0002"sv, 1},
      {"\0001"sv, 0},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Atoi(row.text), row.expected) << row.text;
    EXPECT_EQ(Atoi(row.text), static_cast<int>(std::strtoll(std::string(row.text).c_str(), nullptr, 10))) << row.text;
  }
  EXPECT_EQ(Atoi(std::string(1000000, '9')), -1);
  std::mt19937_64 random(2);
  for (int i = 0; i < 300000; ++i) {
    char sz[60];
    std::snprintf(sz, sizeof sz, "%s%" PRIu64 "%s", random() % 2 != 0 ? "-" : "", random() >> (random() % 64),
                  random() % 8 == 0 ? "123" : "");
    ASSERT_EQ(Atoi(sz), static_cast<int>(std::strtoll(sz, nullptr, 10))) << sz;
  }
}

std::vector<double> NotableDoubles() {
  std::vector<double> values;
  const auto add = [&values](double d) {
    values.push_back(d);
    values.push_back(-d);
  };
  for (const double d : {0.0,
                         1.0,
                         0.5,
                         DBL_MAX,
                         DBL_MIN,
                         DBL_TRUE_MIN,
                         DBL_EPSILON,
                         1e308,
                         1e300,
                         1e22,
                         1e23,
                         1e-5,
                         5e-6,
                         4.9999999999999999e-6,
                         0.1,
                         0.2,
                         0.3,
                         123456.789,
                         99999.999995,
                         99999.9999949999,
                         999999.5,
                         999999.4999999,
                         0.00001,
                         0.000001,
                         0.0000005,
                         1e15,
                         1e16,
                         1e17,
                         std::numeric_limits<double>::infinity(),
                         std::numeric_limits<double>::quiet_NaN()}) {
    add(d);
  }
  // Exact ties at the fifth and sixth decimal: n/64, n/128, ... with an odd numerator.
  for (int nShift = 1; nShift <= 20; ++nShift) {
    for (int n = 1; n < 64; n += 2) {
      add(std::ldexp(n, -nShift));
      add(std::ldexp(n, -nShift) + 1000);
    }
  }
  // Powers of two and ten and their neighbours, over the border where the scaled value stops to fit.
  for (int n = -1074; n < 1024; ++n) {
    const double d = std::ldexp(1.0, n);
    add(d);
    add(std::nextafter(d, 0));
    add(std::nextafter(d, DBL_MAX));
  }
  for (int n = -30; n < 40; ++n) {
    const double d = std::pow(10.0, n);
    add(d);
    add(std::nextafter(d, 0));
    add(std::nextafter(d, DBL_MAX));
    add(d * 0.5);
    add(d * 1.5);
  }
  return values;
}

TEST(Format, WritesWhatTheLibraryWrites) {
  for (const double d : NotableDoubles()) {
    // The sign of what is no number is the library's own matter.
    for (int nDecimals = 0; nDecimals <= 20; ++nDecimals) {
      ASSERT_EQ(Fixed(d, nDecimals), Printed("%.*f", nDecimals, d));
    }
    ASSERT_EQ(General(d), Printed("%g", d));
    if (std::isfinite(d)) {
      ASSERT_TRUE(SameDouble(std::strtod(Shortest(d).c_str(), nullptr), d)) << Shortest(d);
    } else {
      ASSERT_EQ(Shortest(d), Printed("%g", d));
    }
  }
  EXPECT_EQ(Fixed(-0.0, 5), "-0.00000");
  EXPECT_EQ(Fixed(-0.000001, 5), "-0.00000");
  EXPECT_EQ(Fixed(0.000005, 5), "0.00001");  // the double lies above the half
  EXPECT_EQ(Fixed(0.000015, 5), "0.00002");  // and this one above it too
  EXPECT_EQ(Fixed(0.5, 0), "0");             // a tie goes to the even digit
  EXPECT_EQ(Fixed(1.5, 0), "2");
  EXPECT_EQ(Fixed(0.015625, 5), "0.01562");  // 1/64: a tie
  EXPECT_EQ(Fixed(0.046875, 5), "0.04688");  // 3/64: a tie
  EXPECT_EQ(Fixed(1e308, 5).size(), 315u);
  EXPECT_EQ(Fixed(-DBL_MAX, 20).size(), static_cast<std::size_t>(laminate::kMaxNumberLength));
  EXPECT_EQ(Fixed(std::numeric_limits<double>::infinity(), 5), "inf");
  EXPECT_EQ(Fixed(-std::numeric_limits<double>::infinity(), 5), "-inf");
  EXPECT_EQ(Shortest(0.1), "0.1");
  EXPECT_EQ(Shortest(1e100), "1e+100");
}

TEST(Format, WritesWhatTheLibraryWritesForRandomNumbers) {
  std::mt19937_64 random(3);
  for (int i = 0; i < 400000; ++i) {
    double d = 0;
    switch (i % 4) {
      case 0:
        d = std::bit_cast<double>(random());
        break;
      case 1:
        d = static_cast<double>(static_cast<std::int64_t>(random() % 2000000000) - 1000000000) / 100000;
        break;
      case 2:
        d = static_cast<double>(static_cast<std::int64_t>(random()) >> (random() % 63)) / 1000000;
        break;
      // Half-way decimals as a file would spell them.
      case 3:
        d = (static_cast<double>(random() % 100000000) * 10 + 5) / 1000000;
        break;
    }
    ASSERT_EQ(Fixed(d, 5), Printed("%.5f", d));
    if (i % 4 == 0) {
      ASSERT_EQ(Fixed(d, 6), Printed("%f", d));
      ASSERT_EQ(Fixed(d, 2), Printed("%.2f", d));
      ASSERT_EQ(General(d), Printed("%g", d));
      if (std::isfinite(d)) {
        ASSERT_TRUE(SameDouble(Atof(Shortest(d)), d)) << Shortest(d);
        ASSERT_LE(Shortest(d).size(), Printed("%.17g", d).size());
      }
    }
  }
}

TEST(Format, WritesIntegers) {
  for (const long long n : {0LL, 1LL, -1LL, 9LL, 10LL, -10LL, 99LL, 100LL, 2147483647LL, -2147483648LL, LLONG_MAX,
                            LLONG_MIN, 1000000000000000000LL}) {
    EXPECT_EQ(Integer(n), std::to_string(n));
  }
  std::mt19937_64 random(4);
  for (int i = 0; i < 200000; ++i) {
    const auto n = static_cast<long long>(random()) >> (random() % 64);
    ASSERT_EQ(Integer(n), std::to_string(n));
  }
}

TEST(Narrowed, RoundsToTheNearestFloat) {
  struct Row {
    double d;
    float expected;
  };
  constexpr float kInf = std::numeric_limits<float>::infinity();
  const Row rows[] = {{0, 0},
                      {1.5, 1.5f},
                      {0.1, 0.1f},
                      {16777217, 16777216.0f},
                      {FLT_MAX, FLT_MAX},
                      {0x1.fffffefp127, FLT_MAX},
                      {std::nextafter(0x1.ffffffp127, 0), FLT_MAX},
                      {0x1.ffffffp127, kInf},
                      {1e300, kInf},
                      {std::numeric_limits<double>::infinity(), kInf},
                      {1e-300, 0},
                      {FLT_TRUE_MIN, FLT_TRUE_MIN}};
  for (const Row& row : rows) {
    EXPECT_EQ(laminate::Narrowed(row.d), row.expected) << row.d;
    EXPECT_EQ(laminate::Narrowed(-row.d), -row.expected) << row.d;
  }
  EXPECT_TRUE(std::signbit(laminate::Narrowed(-0.0)));
  EXPECT_TRUE(std::isnan(laminate::Narrowed(std::numeric_limits<double>::quiet_NaN())));
}

TEST(Number, IsTheSameUnderEveryLocale) {
  const laminate::test::LocaleScope german("de_DE.UTF-8");
  ASSERT_TRUE(german.IsSet());
  ASSERT_EQ(localeconv()->decimal_point[0], ',');
  ASSERT_EQ(std::strtod("1.5", nullptr), 1) << "the locale is not in force";
  EXPECT_EQ(Atof("1.5"), 1.5);
  EXPECT_EQ(Atof("1.5e1"), 15);
  EXPECT_EQ(Atof("1,5"), 1);
  EXPECT_EQ(Atof("9007199254740993.5"), 9007199254740994.0);
  EXPECT_EQ(Atof("1.5" + std::string(300, '0')), 1.5);
  EXPECT_EQ(Atoi("1.000"), 1);
  EXPECT_EQ(Fixed(1.5, 5), "1.50000");
  EXPECT_EQ(Fixed(1e20, 5), "100000000000000000000.00000");
  EXPECT_EQ(Fixed(0.25, 1), "0.2");
  EXPECT_EQ(General(1.5), "1.5");
  EXPECT_EQ(Shortest(1.5), "1.5");
  EXPECT_EQ(Integer(1000000), "1000000");
}

}  // namespace
