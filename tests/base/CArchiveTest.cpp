#include "base/CArchive.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "base/CArrayN.h"
#include "base/CExPtrArray.h"
#include "base/CMemFile.h"
#include "base/CStdioFile.h"
#include "base/CStringArray.h"
#include "base/FaultyFileSystem.h"
#include "base/TestFolder.h"

using namespace std::string_view_literals;
using laminate::test::FaultyFileSystem;
using laminate::test::TestFolder;

namespace {

// "01 ff" for the bytes 0x01 0xFF.
std::string Hex(std::string_view bytes) {
  std::string s;
  for (const char ch : bytes) {
    char sz[4];
    std::snprintf(sz, sizeof sz, "%02x ", static_cast<unsigned char>(ch));
    s += sz;
  }
  if (!s.empty()) s.pop_back();
  return s;
}
std::string Unhex(std::string_view s) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < s.size(); i += 2) {
    if (s[i] == ' ') ++i;
    bytes += static_cast<char>(std::stoi(std::string(s.substr(i, 2)), nullptr, 16));
  }
  return bytes;
}

std::string Content(CMemFile& file) {
  std::string s(file.GetLength(), '\0');
  file.SeekToBegin();
  EXPECT_EQ(file.Read(s.data(), static_cast<UINT>(s.size())), s.size());
  return s;
}

template <class Store>
std::string Stored(Store store) {
  CMemFile file;
  CArchive ar(&file, CArchive::store);
  store(ar);
  ar.Close();
  return Content(file);
}

// Loads from bytes; `load` is given the archive.
template <class Load>
void LoadFrom(std::string bytes, Load load) {
  CMemFile file(reinterpret_cast<BYTE*>(bytes.data()), static_cast<UINT>(bytes.size()));
  CArchive ar(&file, CArchive::load);
  load(ar);
}
template <class T>
T Loaded(const std::string& bytes) {
  T value{};
  LoadFrom(bytes, [&value](CArchive& ar) { ar >> value; });
  return value;
}

// What an operation raises: "archive 3", "ole 80070216", "" for nothing.
template <class Run>
std::string Raised(Run run) {
  try {
    run();
  } catch (const CArchiveException& e) {
    return "archive " + std::to_string(e.m_cause);
  } catch (const COleException& e) {
    char sz[24];
    std::snprintf(sz, sizeof sz, "ole %08x", e.m_sc);
    return sz;
  } catch (const CFileException& e) {
    return "file " + std::to_string(e.m_cause);
  } catch (const CInvalidArgException&) {
    return "argument";
  } catch (const CMemoryException&) {
    return "memory";
  }
  return "";
}

TEST(CArchive, StoresAndLoadsNumbers) {
  struct Row {
    const char* szHex;
    void (*store)(CArchive&);
    bool (*load)(CArchive&);
  };
  const Row rows[] = {
      {"01 00 00 00", [](CArchive& ar) { ar << 1; },
       [](CArchive& ar) {
         int n = 0;
         ar >> n;
         return n == 1;
       }},
      {"fe ff ff ff", [](CArchive& ar) { ar << -2; },
       [](CArchive& ar) {
         int n = 0;
         ar >> n;
         return n == -2;
       }},
      {"00 00 00 80", [](CArchive& ar) { ar << 0x80000000u; },
       [](CArchive& ar) {
         UINT n = 0;
         ar >> n;
         return n == 0x80000000u;
       }},
      {"00 00 00 00 00 00 f8 3f", [](CArchive& ar) { ar << 1.5; },
       [](CArchive& ar) {
         double d = 0;
         ar >> d;
         return d == 1.5;
       }},
      {"00 00 00 00 00 00 00 80", [](CArchive& ar) { ar << -0.0; },
       [](CArchive& ar) {
         double d = 1;
         ar >> d;
         return d == 0 && std::signbit(d);
       }},
      {"00 00 c0 3f", [](CArchive& ar) { ar << 1.5f; },
       [](CArchive& ar) {
         float f = 0;
         ar >> f;
         return f == 1.5f;
       }},
      {"61", [](CArchive& ar) { ar << 'a'; },
       [](CArchive& ar) {
         char ch = 0;
         ar >> ch;
         return ch == 'a';
       }},
      {"ff", [](CArchive& ar) { ar << BYTE{255}; },
       [](CArchive& ar) {
         BYTE n = 0;
         ar >> n;
         return n == 255;
       }},
      {"01", [](CArchive& ar) { ar << true; },
       [](CArchive& ar) {
         bool b = false;
         ar >> b;
         return b;
       }},
      {"34 12", [](CArchive& ar) { ar << static_cast<unsigned short>(0x1234); },
       [](CArchive& ar) {
         unsigned short n = 0;
         ar >> n;
         return n == 0x1234;
       }},
      {"ff ff", [](CArchive& ar) { ar << static_cast<short>(-1); },
       [](CArchive& ar) {
         short n = 0;
         ar >> n;
         return n == -1;
       }},
      {"08 07 06 05 04 03 02 01", [](CArchive& ar) { ar << __int64{0x0102030405060708}; },
       [](CArchive& ar) {
         __int64 n = 0;
         ar >> n;
         return n == 0x0102030405060708;
       }},
      {"ff ff ff ff ff ff ff ff", [](CArchive& ar) { ar << ~ULONGLONG{0}; },
       [](CArchive& ar) {
         ULONGLONG n = 0;
         ar >> n;
         return n == ~ULONGLONG{0};
       }},
  };
  for (const Row& row : rows) {
    const std::string bytes = Unhex(row.szHex);
    EXPECT_EQ(Hex(Stored(row.store)), row.szHex);
    LoadFrom(bytes, [&row](CArchive& ar) { EXPECT_TRUE(row.load(ar)) << row.szHex; });
    // Cut at every byte.
    for (std::size_t n = 0; n < bytes.size(); ++n) {
      LoadFrom(bytes.substr(0, n), [&row, n](CArchive& ar) {
        EXPECT_EQ(Raised([&] { row.load(ar); }), "archive 3") << row.szHex << " cut at " << n;
      });
    }
  }
  LoadFrom("\x02", [](CArchive& ar) {
    bool b = false;
    ar >> b;
    EXPECT_TRUE(b);
    EXPECT_EQ(*reinterpret_cast<unsigned char*>(&b), 1) << "a truth value holds no other bits";
  });
}

TEST(CArchive, WritesCountsInTheShortestForm) {
  struct Row {
    ULONGLONG n;
    const char* szHex;
  };
  for (const Row& row : {Row{0, "00 00"},
                         {1, "01 00"},
                         {254, "fe 00"},
                         {255, "ff 00"},
                         {65534, "fe ff"},
                         {65535, "ff ff ff ff 00 00"},
                         {65536, "ff ff 00 00 01 00"},
                         {0xFFFFFFFE, "ff ff fe ff ff ff"},
                         {0xFFFFFFFF, "ff ff ff ff ff ff ff ff ff ff 00 00 00 00"},
                         {0x100000000, "ff ff ff ff ff ff 00 00 00 00 01 00 00 00"},
                         {~ULONGLONG{0}, "ff ff ff ff ff ff ff ff ff ff ff ff ff ff"}}) {
    const std::string bytes = Unhex(row.szHex);
    EXPECT_EQ(Hex(Stored([&](CArchive& ar) { ar.WriteCount(row.n); })), row.szHex);
    LoadFrom(bytes, [&](CArchive& ar) { EXPECT_EQ(ar.ReadCount(), row.n) << row.szHex; });
    for (std::size_t n = 0; n < bytes.size(); ++n) {
      LoadFrom(bytes.substr(0, n), [&](CArchive& ar) { EXPECT_EQ(Raised([&] { ar.ReadCount(); }), "archive 3"); });
    }
  }
}

TEST(CArchive, WritesStringLengthsInTheShortestForm) {
  struct Row {
    ULONGLONG n;
    const char* szHex;
  };
  for (const Row& row : {Row{0, "00"},
                         {1, "01"},
                         {254, "fe"},
                         {255, "ff ff 00"},
                         {256, "ff 00 01"},
                         {65533, "ff fd ff"},
                         {65534, "ff ff ff fe ff 00 00"},
                         {65535, "ff ff ff ff ff 00 00"},
                         {65536, "ff ff ff 00 00 01 00"},
                         {0xFFFFFFFE, "ff ff ff fe ff ff ff"},
                         {0xFFFFFFFF, "ff ff ff ff ff ff ff ff ff ff ff 00 00 00 00"},
                         {~ULONGLONG{0}, "ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff"}}) {
    EXPECT_EQ(Hex(Stored([&](CArchive& ar) { AfxWriteStringLength(ar, row.n, FALSE); })), row.szHex);
    const std::string wide = Hex(Stored([&](CArchive& ar) { AfxWriteStringLength(ar, row.n, TRUE); }));
    EXPECT_EQ(wide, "ff fe ff " + std::string(row.szHex));
    for (const bool bWide : {false, true}) {
      const std::string bytes = Unhex(bWide ? wide : row.szHex);
      LoadFrom(bytes, [&](CArchive& ar) {
        int nCharSize = 0;
        EXPECT_EQ(AfxReadStringLength(ar, nCharSize), row.n);
        EXPECT_EQ(nCharSize, bWide ? 2 : 1);
      });
      for (std::size_t n = 0; n < bytes.size(); ++n) {
        LoadFrom(bytes.substr(0, n), [&](CArchive& ar) {
          int nCharSize = 0;
          EXPECT_EQ(Raised([&] { AfxReadStringLength(ar, nCharSize); }), "archive 3");
        });
      }
    }
  }
  // Behind the wide mark its value is a length like any other.
  LoadFrom(Unhex("ff fe ff ff fe ff 41"), [](CArchive& ar) {
    int nCharSize = 0;
    EXPECT_EQ(AfxReadStringLength(ar, nCharSize), 65534u);
    EXPECT_EQ(nCharSize, 2);
    BYTE next = 0;
    ar >> next;
    EXPECT_EQ(next, 0x41);
  });
  // Longer forms than needed are taken.
  for (const char* szHex : {"ff 02 00", "ff ff ff 02 00 00 00", "ff ff ff ff ff ff ff 02 00 00 00 00 00 00 00"}) {
    EXPECT_EQ(Loaded<CString>(Unhex(szHex) + "ab"), "ab") << szHex;
  }
}

TEST(CArchive, StoresAndLoadsStrings) {
  struct Row {
    std::string text;
    std::string prefix;
  };
  const auto row = [](std::size_t n, const char* szPrefix) { return Row{std::string(n, 'x'), szPrefix}; };
  for (const Row& r : {Row{"", "00"}, Row{"abc", "03"}, Row{std::string("a\0b", 3), "03"}, row(15, "0f"), row(16, "10"),
                       row(254, "fe"), row(255, "ff ff 00"), row(65533, "ff fd ff"), row(65534, "ff ff ff fe ff 00 00"),
                       row(65535, "ff ff ff ff ff 00 00"), row(200000, "ff ff ff 40 0d 03 00")}) {
    const std::string bytes = Stored([&](CArchive& ar) { ar << CString(r.text); });
    EXPECT_EQ(Hex(bytes.substr(0, bytes.size() - r.text.size())), r.prefix);
    EXPECT_TRUE(bytes.substr(bytes.size() - r.text.size()) == r.text);
    EXPECT_TRUE(Loaded<CString>(bytes).View() == r.text);
    // A string cut short leaves the old value.
    for (const std::size_t n : {std::size_t{0}, std::size_t{1}, bytes.size() / 2, bytes.size() - 1}) {
      if (n >= bytes.size()) continue;
      LoadFrom(bytes.substr(0, n), [](CArchive& ar) {
        CString s("the old value");
        EXPECT_EQ(Raised([&] { ar >> s; }), "archive 3");
        EXPECT_EQ(s, "the old value");
      });
    }
  }
}

// Behind other bytes, so that strings stand across every border of the buffer.
TEST(CArchive, LoadsStringsAcrossItsBuffer) {
  constexpr std::size_t kBuffer = 64 * 1024;
  for (std::size_t nBefore = kBuffer - 300; nBefore <= kBuffer + 2; ++nBefore) {
    for (const std::size_t nLength : {0u, 1u, 15u, 16u, 254u, 255u, 300u}) {
      std::string text(nLength, ' ');
      for (std::size_t i = 0; i < nLength; ++i) text[i] = static_cast<char>('a' + i % 26);
      CMemFile file;
      {
        CArchive ar(&file, CArchive::store);
        const std::string before(nBefore, '#');
        ar.Write(before.data(), static_cast<UINT>(nBefore));
        ar << CString(text) << 0x12345678;
        ar.Close();
      }
      file.SeekToBegin();
      CArchive ar(&file, CArchive::load);
      ar.Skip(nBefore);
      CString s;
      int n = 0;
      ar >> s >> n;
      ASSERT_EQ(s.View(), text) << nBefore;
      ASSERT_EQ(n, 0x12345678) << nBefore;
    }
  }
}

TEST(CArchive, NarrowsWideStrings) {
  struct Row {
    const char* szUnits;  // little-endian
    std::string_view expected;
  };
  const Row rows[] = {
      {"", ""},
      {"41 00 42 00", "AB"},
      {"41 00 00 00 42 00", "A\0B"sv},
      {"42 30", "\x82\xA0"},         // HIRAGANA A
      {"71 ff", "\xB1"},             // half-width katakana
      {"e9 00 2c 67", "?\x96\x7B"},  // one that has no place, then one that has
      {"68 88", "\x95\x5C"},         // its second byte is a backslash
      {"5c 00", "\\"},
      {"7e 00", "~"},
      {"5e ff", "\x81\x60"},  // FULLWIDTH TILDE
      {"60 24", "\x87\x40"},  // CIRCLED DIGIT ONE, of the makers' rows
      {"8a 7e", "\xFA\x5C"},  // of the extension at the end
      {"e9 00", "?"},         // LATIN SMALL LETTER E WITH ACUTE
      {"00 d8", "?"},         // half a pair alone
      {"00 dc", "?"},
      {"00 d8 41 00", "?A"},
      {"3d d8 00 de", "?"},  // a pair is one character
      {"3d d8 3d d8 00 de", "??"},
      {"00 dc 00 d8", "??"},
      {"ff fe", "?"},
      {"ff ff", "?"},
  };
  for (const Row& row : rows) {
    const std::string units = Unhex(row.szUnits);
    const std::string bytes = Unhex("ff fe ff") + static_cast<char>(units.size() / 2) + units;
    EXPECT_EQ(Hex(Loaded<CString>(bytes).View()), Hex(row.expected)) << row.szUnits;
    for (std::size_t n = 0; n < bytes.size(); ++n) {
      LoadFrom(bytes.substr(0, n), [](CArchive& ar) {
        CString s("old");
        EXPECT_EQ(Raised([&] { ar >> s; }), "archive 3");
        EXPECT_EQ(s, "old");
      });
    }
  }
  // Longer than the buffer, with a unit across its border.
  std::string units;
  for (int i = 0; i < 70000; ++i) units += std::string("\x42\x30", 2);
  std::string expected;
  for (int i = 0; i < 70000; ++i) expected += "\x82\xA0";
  const std::string bytes = Unhex("ff fe ff ff ff ff 70 11 01 00") + units;
  EXPECT_TRUE(Loaded<CString>(bytes).View() == expected);
}

TEST(CArchive, SurvivesHostileLengths) {
  struct Row {
    const char* szHex;
    const char* szRaised;
  };
  for (const Row& row : {
           Row{"ff ff ff fe ff ff ff 61", "archive 3"},                          // 4 GiB announced, one byte there
           Row{"ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff 61", "archive 3"},  // 2^64 - 1
           Row{"ff ff ff ff ff ff ff 00 00 00 00 00 00 00 80", "archive 3"},     // 2^63
           Row{"ff fe ff ff ff ff ff ff ff 7f 61 00", "archive 3"},              // twice 2^31 - 1 fits 32 bits
           Row{"ff fe ff ff ff ff 00 00 00 80 61 00", "ole 80070216"},
           Row{"ff fe ff ff ff ff fe ff ff ff 61 00", "ole 80070216"},
           Row{"ff fe ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff", "ole 80070216"},
           Row{"ff fe ff ff ff ff ff ff ff ff 00 00 00 00 00 00 00 80", "ole 80070216"},
           Row{"ff fe ff ff fe ff ff fe ff", "archive 3"},  // the mark again and again
       }) {
    LoadFrom(Unhex(row.szHex), [&](CArchive& ar) {
      CString s("old");
      EXPECT_EQ(Raised([&] { ar >> s; }), row.szRaised) << row.szHex;
      EXPECT_EQ(s, "old");
    });
  }
  std::string marks;
  for (int i = 0; i < 100000; ++i) marks += Unhex("ff fe ff");
  LoadFrom(marks, [](CArchive& ar) {
    CString s;
    while (Raised([&] { ar >> s; }).empty()) {
    }
  });
}

TEST(CArchive, RefusesTheWrongDirection) {
  const TestFolder folder;
  const std::string path = folder.Write("board.bin", "0123456789");
  CFile file(path.c_str(), CFile::modeRead);
  CArchive loading(&file, CArchive::load);
  EXPECT_TRUE(loading.IsLoading());
  EXPECT_FALSE(loading.IsStoring());
  EXPECT_EQ(loading.m_strFileName, path.c_str());
  CMemFile memory;
  CArchive storing(&memory, CArchive::store);
  EXPECT_TRUE(storing.IsStoring());
  EXPECT_EQ(storing.m_strFileName, "");
  storing.m_strFileName = "out.bin";
  int n = 5;
  CString s("x");
  char buffer[4] = {};
  const std::pair<const char*, std::function<void()>> writes[] = {
      {"int", [&] { loading << n; }},
      {"double", [&] { loading << 1.5; }},
      {"string", [&] { loading << s; }},
      {"Write", [&] { loading.Write(buffer, 1); }},
      {"WriteCount", [&] { loading.WriteCount(1); }},
      {"length", [&] { AfxWriteStringLength(loading, 1, FALSE); }},
  };
  for (const auto& [szName, write] : writes) {
    try {
      write();
      ADD_FAILURE() << szName;
    } catch (const CArchiveException& e) {
      EXPECT_EQ(e.m_cause, 2) << szName;
      EXPECT_EQ(e.m_strFileName, path);
      EXPECT_NE(std::string(e.what()).find(path), std::string::npos);
    }
  }
  const std::pair<const char*, std::function<void()>> reads[] = {
      {"int", [&] { storing >> n; }},
      {"string", [&] { storing >> s; }},
      {"Read", [&] { storing.Read(buffer, 1); }},
      {"EnsureRead", [&] { storing.EnsureRead(buffer, 1); }},
      {"Skip", [&] { storing.Skip(1); }},
      {"ReadCount", [&] { storing.ReadCount(); }},
      {"length", [&] { AfxReadStringLength(storing, n); }},
  };
  for (const auto& [szName, read] : reads) {
    try {
      read();
      ADD_FAILURE() << szName;
    } catch (const CArchiveException& e) {
      EXPECT_EQ(e.m_cause, 4) << szName;
      EXPECT_EQ(e.m_strFileName, "out.bin");
    }
  }
  EXPECT_EQ(s, "x");
  loading >> buffer[0];
  EXPECT_EQ(buffer[0], '0') << "nothing was read or written by the failures";
}

TEST(CArchive, ReadsAndWritesBlocks) {
  std::string big(300000, ' ');
  std::mt19937 random(3);
  for (char& ch : big) ch = static_cast<char>(random());
  CMemFile file;
  {
    CArchive ar(&file, CArchive::store);
    ar << 'a';
    ar.Write(big.data(), static_cast<UINT>(big.size()));
    ar.Write(nullptr, 0);
    EXPECT_THROW(ar.Write(nullptr, 1), CInvalidArgException);
    ar << 'b';
    ar.Write(big.data(), 100);
  }
  EXPECT_EQ(Content(file), "a" + big + "b" + big.substr(0, 100));
  file.SeekToBegin();
  CArchive ar(&file, CArchive::load);
  std::string back(big.size(), ' ');
  char ch = 0;
  ar >> ch;
  EXPECT_THROW(ar.Read(nullptr, 1), CInvalidArgException);
  EXPECT_THROW(ar.EnsureRead(nullptr, 1), CInvalidArgException);
  EXPECT_EQ(ar.Read(back.data(), static_cast<UINT>(back.size())), back.size());
  EXPECT_TRUE(back == big);
  ar >> ch;
  EXPECT_EQ(ch, 'b');
  EXPECT_EQ(ar.Read(back.data(), 1000), 100u) << "less at the end of the file";
  EXPECT_EQ(ar.Read(back.data(), 1000), 0u);
  EXPECT_EQ(ar.Read(nullptr, 0), 0u);
  EXPECT_EQ(Raised([&] { ar.EnsureRead(back.data(), 1); }), "archive 3");
  EXPECT_EQ(Raised([&] { ar.Skip(1); }), "archive 3");
}

TEST(CArchive, LeavesTheBytesBehindTheImageAlone) {
  const TestFolder folder;
  const std::string path = folder.Write("f",
                                        "\x05\0\0\0\x03"
                                        "abcREST"sv);
  CFile file(path.c_str(), CFile::modeRead);
  {
    CArchive ar(&file, CArchive::load);
    int n = 0;
    CString s;
    ar >> n;
    ar.Flush();
    EXPECT_EQ(file.GetPosition(), 4u);
    ar >> s;
    EXPECT_EQ(s, "abc");
  }
  EXPECT_EQ(file.GetPosition(), 8u);
  char rest[8] = {};
  EXPECT_EQ(file.Read(rest, 8), 4u);
  EXPECT_STREQ(rest, "REST");

  // Two images in one file, and text around them.
  CMemFile memory;
  memory.Write("head", 4);
  for (const int n : {1, 2}) {
    CArchive ar(&memory, CArchive::store);
    ar << n;
    ar.Close();
  }
  memory.Write("tail", 4);
  EXPECT_EQ(Hex(Content(memory)), "68 65 61 64 01 00 00 00 02 00 00 00 74 61 69 6c");
}

TEST(CArchive, StoresAndLoadsLists) {
  CStringArray list;
  EXPECT_EQ(Hex(Stored([&](CArchive& ar) { list.Serialize(ar); })), "00 00");
  list.Add("ab");
  list.Add("");
  list.Add("c\0"sv.data());
  const std::string bytes = Stored([&](CArchive& ar) { list.Serialize(ar); });
  EXPECT_EQ(Hex(bytes), "03 00 02 61 62 00 01 63");
  CStringArray back;
  back.Add("goes");
  LoadFrom(bytes, [&](CArchive& ar) { back.Serialize(ar); });
  EXPECT_TRUE(back == list);
  // A list that is cut holds what was read of it.
  const INT_PTR held[] = {1, 1, 0, 0, 0, 1, 2, 2};
  for (std::size_t n = 0; n < bytes.size(); ++n) {
    CStringArray cut;
    cut.Add("goes");
    LoadFrom(bytes.substr(0, n), [&](CArchive& ar) { EXPECT_EQ(Raised([&] { cut.Serialize(ar); }), "archive 3"); });
    EXPECT_LE(cut.GetSize(), held[n]) << n;
    for (INT_PTR i = 0; i < cut.GetSize() && n > 1; ++i) EXPECT_EQ(cut[i], list[i]);
    if (n > 4) {
      EXPECT_EQ(cut.GetSize(), held[n]) << n;
    }
  }
  // A count that lies costs nothing.
  LoadFrom(Unhex("ff ff ff ff ff ff ff ff ff ff ff ff ff 7f 01 61"), [&](CArchive& ar) {
    EXPECT_EQ(Raised([&] { back.Serialize(ar); }), "archive 3");
    EXPECT_EQ(back.GetSize(), 1);
    EXPECT_EQ(back[0], "a");
  });
}

TEST(CArchive, StoresAndLoadsNumberArrays) {
  CArrayN numbers;
  numbers.Add(1);
  numbers.Add(-1);
  const std::string bytes = Stored([&](CArchive& ar) { numbers.Serialize(ar); });
  EXPECT_EQ(Hex(bytes), "02 00 01 00 00 00 ff ff ff ff");
  CArrayN back;
  back.Add(7);
  LoadFrom(bytes, [&](CArchive& ar) { back.Serialize(ar); });
  EXPECT_TRUE(back == numbers);
  for (std::size_t n = 0; n < bytes.size(); ++n) {
    LoadFrom(bytes.substr(0, n), [&](CArchive& ar) { EXPECT_EQ(Raised([&] { back.Serialize(ar); }), "archive 3"); });
  }
  for (int i = 0; i < 100000; ++i) numbers.Add(i);
  LoadFrom(Stored([&](CArchive& ar) { numbers.Serialize(ar); }), [&](CArchive& ar) { back.Serialize(ar); });
  EXPECT_TRUE(back == numbers);
  LoadFrom(Unhex("ff ff ff ff ff ff ff ff ff ff ff ff ff ff 01 00 00 00"), [&](CArchive& ar) {
    EXPECT_EQ(Raised([&] { back.Serialize(ar); }), "archive 3");
    EXPECT_LT(back.GetSize(), 20000);
  });
  CStringArray list;
  CArray<CString, const CString&> texts;
  EXPECT_EQ(Raised([&] { Stored([&](CArchive& ar) { texts.Serialize(ar); }); }), "argument");
}

struct Thing {
  virtual ~Thing() = default;
};

// Addresses mean nothing elsewhere: zeros stand for them, and what an old image holds is read over.
TEST(CArchive, KeepsNoAddresses) {
  Thing a;
  CExPtrArray<Thing*, Thing*> things;
  things.Add(&a);
  things.Add(nullptr);
  const std::string bytes = Stored([&](CArchive& ar) {
    things.Serialize(ar);
    ar << 7;
  });
  EXPECT_EQ(Hex(bytes), "02 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 07 00 00 00");
  LoadFrom(Unhex("02 00 ef be ad de ef be ad de 01 02 03 04 05 06 07 08 07 00 00 00"), [&](CArchive& ar) {
    things.Serialize(ar);
    EXPECT_TRUE(things.IsEmpty());
    int n = 0;
    ar >> n;
    EXPECT_EQ(n, 7);
  });
  for (int i = 0; i < 20000; ++i) things.Add(&a);
  EXPECT_EQ(Stored([&](CArchive& ar) { things.Serialize(ar); }), Unhex("20 4e") + std::string(160000, '\0'));
  for (const char* szHex : {"02 00 01 02 03", "ff ff ff ff ff ff ff ff ff ff ff ff ff 7f 01",
                            "ff ff ff ff ff ff 01 00 00 00 00 00 00 20 01 02 03 04 05 06 07 08 09"}) {
    LoadFrom(Unhex(szHex), [&](CArchive& ar) { EXPECT_EQ(Raised([&] { things.Serialize(ar); }), "archive 3"); });
  }
}

TEST(CArchive, TellsThatAWriteFailed) {
  const TestFolder folder;
  const std::string path = folder / "f";
  const std::string big(100000, 'x');
  for (int n = 1; n <= 3; ++n) {
    FaultyFileSystem files(n, ENOSPC, FaultyFileSystem::Duration::once);
    files.Only("Write");
    const laminate::FileSystemScope scope(files);
    CFile file(path.c_str(), CFile::modeCreate | CFile::modeWrite);
    CArchive ar(&file, CArchive::store);
    int nRaised = 0;
    for (int i = 0; i < 30000; ++i) {
      if (Raised([&] { ar << i << CString("a text"); }) == "") continue;
      ++nRaised;
      break;
    }
    EXPECT_EQ(nRaised, 1);
    EXPECT_NE(Raised([&] { ar.Flush(); }), "") << "what follows a gap is not written";
    EXPECT_EQ(Raised([&] { ar.Close(); }), "") << "the failure was told";
    EXPECT_EQ(ar.GetFile(), nullptr);
    file.Close();
  }
  // In the last bytes, which only the close hands over.
  {
    FaultyFileSystem files(1, ENOSPC, FaultyFileSystem::Duration::once);
    files.Only("Write");
    const laminate::FileSystemScope scope(files);
    CFile file(path.c_str(), CFile::modeCreate | CFile::modeWrite);
    CArchive ar(&file, CArchive::store);
    ar << 5;
    EXPECT_EQ(Raised([&] { ar.Close(); }), "file " + std::to_string(CFileException::diskFull));
    EXPECT_EQ(Raised([&] { ar.Close(); }), "");
  }
  // Direct writes of large blocks.
  {
    CFile file("/dev/full", CFile::modeWrite | CFile::modeCreate);
    CArchive ar(&file, CArchive::store);
    EXPECT_EQ(Raised([&] { ar.Write(big.data(), static_cast<UINT>(big.size())); }),
              "file " + std::to_string(CFileException::diskFull));
  }
}

TEST(CArchive, TellsThatAReadFailed) {
  const TestFolder folder;
  const std::string path = folder.Write("f", std::string(200000, '\x05'));
  FaultyFileSystem files(2, EIO, FaultyFileSystem::Duration::once);
  files.Only("Read");
  const laminate::FileSystemScope scope(files);
  CFile file(path.c_str(), CFile::modeRead);
  CArchive ar(&file, CArchive::load);
  EXPECT_EQ(Raised([&] {
              for (;;) {
                int n = 0;
                ar >> n;
              }
            }),
            "file " + std::to_string(CFileException::hardIO));
}

TEST(CArchive, PartsFromItsFile) {
  EXPECT_EQ(Raised([] { CArchive(nullptr, CArchive::load); }), "argument");
  CMemFile file;
  {
    CArchive ar(&file, CArchive::store);
    ar << 1;
    EXPECT_EQ(file.GetLength(), 0u) << "what is short stays in the buffer";
    ar.Flush();
    EXPECT_EQ(file.GetLength(), 4u);
    ar << 2;
    ar.Abort();
    EXPECT_EQ(Raised([&] { ar << 3; }), "argument");
    EXPECT_EQ(Raised([&] { ar << CString("x"); }), "argument");
    EXPECT_EQ(Raised([&] { ar.Flush(); }), "argument");
    EXPECT_EQ(Raised([&] { ar.Close(); }), "");
  }
  EXPECT_EQ(file.GetLength(), 4u);
  {
    CArchive ar(&file, CArchive::store | CArchive::bNoFlushOnDelete);
    ar << 4;
  }
  EXPECT_EQ(file.GetLength(), 4u);
  file.SeekToBegin();
  CArchive ar(&file, CArchive::load);
  ar.Close();
  int n = 0;
  EXPECT_EQ(Raised([&] { ar >> n; }), "argument");
}

TEST(CArchive, LoadsFromWhatCannotSeek) {
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  const std::string bytes = Stored([](CArchive& ar) { ar << 1 << CString("abc") << 2; });
  ASSERT_EQ(::write(ends[1], bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  ::close(ends[1]);
  {
    CFile file(("/proc/self/fd/" + std::to_string(ends[0])).c_str(), CFile::modeRead);
    CArchive ar(&file, CArchive::load);
    int n = 0;
    CString s;
    ar >> n;
    ar.Flush();
    ar >> s;
    EXPECT_EQ(s, "abc");
    ar >> n;
    EXPECT_EQ(n, 2);
    ar.Close();
  }
  ::close(ends[0]);
}

// Random images, cut and changed, loaded as another sequence than they were stored.
TEST(CArchive, EndsSoundlyOnRandomBytes) {
  std::mt19937 random(17);
  for (int nRound = 0; nRound < 20000; ++nRound) {
    std::string bytes(random() % 60, ' ');
    for (char& ch : bytes) {
      static const unsigned char kLikely[] = {0, 1, 2, 0xFE, 0xFF, 0xFF, 0x41};
      ch = static_cast<char>(random() % 4 == 0 ? random() : kLikely[random() % sizeof kLikely]);
    }
    LoadFrom(bytes, [&](CArchive& ar) {
      const std::string raised = Raised([&] {
        for (int i = 0; i < 50; ++i) {
          CString s;
          CStringArray list;
          CArrayN numbers;
          CExPtrArray<Thing*, Thing*> things;
          switch (random() % 4) {
            case 0:
              ar >> s;
              break;
            case 1:
              list.Serialize(ar);
              break;
            case 2:
              numbers.Serialize(ar);
              break;
            case 3:
              things.Serialize(ar);
              break;
          }
        }
      });
      ASSERT_TRUE(raised == "archive 3" || raised == "ole 80070216") << raised;
    });
  }
}

}  // namespace
