#include "base/TextOut.h"

#include <gtest/gtest.h>
#include <locale.h>

#include <cerrno>
#include <cmath>
#include <limits>
#include <memory>
#include <random>
#include <string>

#include "base/FaultyFileSystem.h"
#include "base/LocaleScope.h"
#include "base/TestFolder.h"

using namespace std::string_view_literals;
using laminate::TextOut;
using laminate::test::FaultyFileSystem;
using laminate::test::TestFolder;

namespace {

template <class Writer>
std::string Written(Writer writer) {
  std::string s;
  TextOut out(s);
  writer(out);
  EXPECT_TRUE(out.Flush());
  EXPECT_FALSE(out.Failed());
  return s;
}

TEST(TextOut, PrintsEveryConversion) {
  const CString sText("a text");
  const std::string sStandard = "standard";
  EXPECT_EQ(Written([&](TextOut& out) { out.Print<"">(); }), "");
  EXPECT_EQ(Written([&](TextOut& out) { out.Print<"plain\n">(); }), "plain\n");
  EXPECT_EQ(Written([&](TextOut& out) { out.Print<"100%%%%">(); }), "100%%");
  EXPECT_EQ(Written([&](TextOut& out) { out.Print<"%s">(sText); }), "a text");
  EXPECT_EQ(Written([&](TextOut& out) { out.Print<"<%s>">("literal"); }), "<literal>");
  EXPECT_EQ(Written([&](TextOut& out) { out.Print<"<%s>">(sStandard); }), "<standard>");
  EXPECT_EQ(Written([&](TextOut& out) { out.Print<"<%s>">("view"sv); }), "<view>");
  EXPECT_EQ(Written([&](TextOut& out) { out.Print<"<%s>">(static_cast<const char*>(nullptr)); }), "<>");
  EXPECT_EQ(Written([&](TextOut& out) { out.Print<"%d %d %d">(5, -7LL, short{3}); }), "5 -7 3");
  EXPECT_EQ(Written([&](TextOut& out) { out.Print<"%d">(std::numeric_limits<long long>::min()); }),
            "-9223372036854775808");
  EXPECT_EQ(Written([&](TextOut& out) { out.Print<"%.5f %f %g">(1.5, 2.25, 0.1); }), "1.50000 2.250000 0.1");
  EXPECT_EQ(Written([&](TextOut& out) { out.Print<"%.5f|%g">(-0.0, -std::numeric_limits<double>::infinity()); }),
            "-0.00000|-inf");
  EXPECT_EQ(Written([&](TextOut& out) { out.Print<"(%s %d%%)\n(%.5f)">(sText, 50, 0.125); }),
            "(a text 50%)\n(0.12500)");
  EXPECT_EQ(Written([&](TextOut& out) { laminate::PrintPt(out, CPointD(1, -2.5)); }), "(pt 1.00000 -2.50000)\n");
}

TEST(TextOut, NeverTakesATextForAFormat) {
  for (const char* sz : {"%s%s%s", "%n", "%", "%%", "%*d", "%99999999d", "100%"}) {
    const CString s(sz);
    EXPECT_EQ(Written([&](TextOut& out) { out.Print<"<%s>">(s); }), "<" + std::string(sz) + ">");
    EXPECT_EQ(Written([&](TextOut& out) { out.Text(s); }), sz);
    EXPECT_EQ(Written([&](TextOut& out) { out.Bytes(s.View()); }), sz);
  }
}

TEST(TextOut, EndsTextsAtTheirFirstNul) {
  const CString s("ab\0cd"sv);
  EXPECT_EQ(Written([&](TextOut& out) { out.Print<"<%s>">(s); }), "<ab>");
  EXPECT_EQ(Written([&](TextOut& out) { out.Print<"<%s>">("ab\0cd"sv); }), "<ab>");
  EXPECT_EQ(Written([&](TextOut& out) { out.Print<"<%s>">(std::string("ab\0cd", 5)); }), "<ab>");
  EXPECT_EQ(Written([&](TextOut& out) { out.Text(s); }), "ab");
  EXPECT_EQ(Written([&](TextOut& out) { out.Text("ab\0cd"sv); }), "ab");
  EXPECT_EQ(Written([&](TextOut& out) { out.Bytes(s.View()); }), "ab\0cd"sv);
}

// Of every size around those of the two buffers, so that each hand-over is met at each of its borders.
TEST(TextOut, WritesTextsOfAnyLength) {
  for (const std::size_t nFirst : {0u, 1u, 1000u, 1023u, 1024u, 1025u, 65535u, 65536u, 65537u, 200000u}) {
    for (const std::size_t nSecond : {0u, 1u, 22u, 23u, 24u, 1024u, 65535u, 65536u, 65537u}) {
      const std::string a(nFirst, 'a');
      const std::string b(nSecond, 'b');
      const std::string s = Written([&](TextOut& out) {
        out.Bytes(a);
        out.Print<"(%s %d)">(b, 12);
        out.Print<"%.5f">(1e308);
        out.Bytes(a);
      });
      ASSERT_EQ(s.size(), 2 * nFirst + nSecond + 5 + 315);
      ASSERT_EQ(s.substr(0, nFirst), a);
      ASSERT_EQ(s.substr(nFirst, nSecond + 5), "(" + b + " 12)");
      ASSERT_EQ(s.substr(s.size() - nFirst), a);
    }
  }
}

TEST(TextOut, WritesTheSameAsThePrintFamily) {
  const TestFolder folder;
  const std::string path = folder / "out";
  std::FILE* fp = laminate::OpenStreamForWriting(path.c_str());
  ASSERT_NE(fp, nullptr);
  std::string sExpected;
  {
    TextOut out(fp);
    std::mt19937 random(5);
    for (int i = 0; i < 20000; ++i) {
      const double d = std::ldexp(static_cast<double>(random()) - 2147483648.0, static_cast<int>(random() % 60) - 45);
      const std::string s(random() % 40, 'x');
      const int n = static_cast<int>(random());
      out.Print<"(pt %.5f %g) %s %d %f\n">(d, d, s, n, d);
      char sz[600];
      std::snprintf(sz, sizeof sz, "(pt %.5f %g) %s %d %f\n", d, d, s.c_str(), n, d);
      sExpected += sz;
    }
    EXPECT_TRUE(out.Flush());
  }
  EXPECT_EQ(std::fclose(fp), 0);
  EXPECT_TRUE(laminate::test::ReadFile(path) == sExpected);
}

TEST(TextOut, IsTheSameUnderEveryLocale) {
  const laminate::test::LocaleScope german("de_DE.UTF-8");
  ASSERT_TRUE(german.IsSet());
  ASSERT_EQ(localeconv()->decimal_point[0], ',');
  EXPECT_EQ(Written([](TextOut& out) { out.Print<"%.5f %f %g %d">(1234.5, 0.5, 2.5, 1234567); }),
            "1234.50000 0.500000 2.5 1234567");
}

TEST(TextOut, ClosesForms) {
  EXPECT_EQ(Written([](TextOut& out) {
              const auto form = laminate::Form<"(outer %d\n">(out, 1);
              {
                const auto inner = laminate::Form<"(inner\n">(out);
                out.Print<"(x)\n">();
              }
              out.Print<"(y)\n">();
            }),
            "(outer 1\n(inner\n(x)\n)\n(y)\n)\n");
}

TEST(TextOut, HandsOverWhenItDies) {
  std::string s;
  { TextOut(s).Print<"%d">(5); }
  EXPECT_EQ(s, "5");
  const TestFolder folder;
  std::FILE* fp = laminate::OpenStreamForWriting((folder / "f").c_str());
  ASSERT_NE(fp, nullptr);
  { TextOut(fp).Print<"%d">(6); }
  EXPECT_EQ(std::fclose(fp), 0);
  EXPECT_EQ(laminate::test::ReadFile(folder / "f"), "6");
}

TEST(TextOut, RefusesANullStream) { EXPECT_THROW(TextOut(static_cast<std::FILE*>(nullptr)), CInvalidArgException); }

TEST(TextOut, TellsThatADeviceIsFull) {
  for (const bool bLong : {false, true}) {
    std::FILE* fp = std::fopen("/dev/full", "w");
    ASSERT_NE(fp, nullptr);
    {
      TextOut out(fp);
      if (bLong) out.Bytes(std::string(1000000, 'x'));
      out.Print<"(pt %.5f)\n">(1.5);
      // Short output still stands in the stream, and only its close can tell.
      EXPECT_EQ(out.Flush(), !bLong);
      EXPECT_EQ(out.Failed(), bLong);
      EXPECT_EQ(out.Error(), bLong ? ENOSPC : 0);
    }
    EXPECT_EQ(std::ferror(fp) != 0, bLong) << "the stream keeps the error";
    EXPECT_TRUE(std::fclose(fp) == EOF || bLong);
  }
}

TEST(TextOut, KeepsTheFirstErrorOfAStream) {
  const TestFolder folder;
  FaultyFileSystem files(1, ENOSPC, FaultyFileSystem::Duration::once);
  files.Only("Write");
  const laminate::FileSystemScope scope(files);
  std::FILE* fp = laminate::OpenStreamForWriting((folder / "f").c_str());
  ASSERT_NE(fp, nullptr);
  {
    TextOut out(fp);
    const std::string s(200000, 'x');
    out.Bytes(s);
    EXPECT_TRUE(out.Failed());
    EXPECT_EQ(out.Error(), ENOSPC);
    out.Bytes(s);
    EXPECT_FALSE(out.Flush()) << "later writes do not mend it";
  }
  EXPECT_NE(std::ferror(fp), 0);
  EXPECT_EQ(std::fclose(fp), EOF);
}

TEST(TextOut, WritesToAHandle) {
  const TestFolder folder;
  laminate::OpenedFile file(laminate::TheFileSystem().OpenForWriting((folder / "f").c_str()));
  ASSERT_TRUE(file.IsOpen());
  {
    TextOut out(file.Get());
    out.Print<"%s">(std::string(100000, 'x'));
    out.Print<"%d">(5);
    EXPECT_TRUE(out.Flush());
    out.Print<"%d">(6);
  }
  EXPECT_EQ(file.Close(), 0);
  EXPECT_EQ(laminate::test::ReadFile(folder / "f"), std::string(100000, 'x') + "56");

  FaultyFileSystem files(2, EIO, FaultyFileSystem::Duration::once);
  files.Only("Write");
  const laminate::FileSystemScope scope(files);
  file = laminate::OpenedFile(laminate::TheFileSystem().OpenForWriting((folder / "f").c_str()));
  {
    TextOut out(file.Get());
    out.Print<"%d">(1);
    EXPECT_TRUE(out.Flush());
    out.Print<"%d">(2);
    EXPECT_FALSE(out.Flush());
    EXPECT_EQ(out.Error(), EIO);
    out.Print<"%d">(3);
    EXPECT_FALSE(out.Flush());
  }
  EXPECT_EQ(file.Close(), 0);
  EXPECT_EQ(laminate::test::ReadFile(folder / "f"), "1") << "nothing is written behind a gap";
}

TEST(TextOut, HandsAllOverBeforeAPublicWriterReturns) {
  const TestFolder folder;
  std::FILE* fp = laminate::OpenStreamForWriting((folder / "f").c_str());
  ASSERT_NE(fp, nullptr);
  EXPECT_EQ(laminate::PrintTo(fp, [](TextOut& out) { out.Print<"%d">(1); }), 0);
  std::fputs("-", fp);
  EXPECT_EQ(laminate::PrintTo(fp, [](TextOut& out) { out.Print<"%d">(2); }), 0);
  EXPECT_EQ(std::fclose(fp), 0);
  EXPECT_EQ(laminate::test::ReadFile(folder / "f"), "1-2");
  EXPECT_THROW(laminate::PrintTo(nullptr, [](TextOut&) {}), CInvalidArgException);
}

}  // namespace
