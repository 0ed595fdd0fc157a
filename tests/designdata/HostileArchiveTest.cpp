// Images that are cut, damaged or made to harm.
#include <sys/resource.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <random>

#include "base/CFile.h"
#include "base/TestFolder.h"
#include "designdata/DesignDataTestSupport.h"

namespace {

constexpr int kEndOfFile = CArchiveException::endOfFile;

// Bytes of address space that the process has.
rlim_t AddressSpace() {
  std::ifstream in("/proc/self/statm");
  rlim_t nPages = 0;
  in >> nPages;
  return nPages * static_cast<rlim_t>(::sysconf(_SC_PAGESIZE));
}

// Every kind of record at least once, with texts and lists.
std::unique_ptr<CPC_BD_OutClsGet> SmallFacade() {
  auto p = std::make_unique<CPC_BD_OutClsGet>();
  p->m_sHostText = "host";
  p->m_aHostList1.Add("one");
  p->m_aHostList2.Add("");
  Load(
      *p, Kind::package,
      "(unit mm)\n(package \"P\"\n(type SMD)\n(mountForm m\n(footprintRef \"F\")\n(spec \"s\")\n)\n)\n(package Q\n)\n");
  Load(*p, Kind::parts,
       "(part A\n(uver 1)\n(packageRef P\n(stockInfo\n(property k v\n)\n(gateDef a G\nx y 1\n)\n(interface\n(port 1 a "
       "2 b "
       "N c\n(port 2\n)\n)\n(pinAssign Q\n(property k v\n(interface\n(port 1 a 2 b N c T\n)\n(internal\n(funcInst a "
       "F\n(port 1 m 2\n)\n)\n)\n(function F\n(property k v\n(port 1 a 2 b T\n)\n");
  Load(*p, Kind::rules,
       "(design d (boardSpec (bareBoard (conductor 1 (material M) (thickness 0.5)) (physical ABOVE) (baseMaterial B))"
       "(defaultGrid (a b)) (drillingRule (a 1 2)) (patternWidth (w 1 (n W))) (gridDef G (pitch 1 2) (pt 3 4)))\n"
       "(rule (holeRule (clearance 1 (p A B))) (padstack P) (net N (property k v) (pinList (funcTerm A 1)))\n"
       "(electricalNet E (x A B)) (enetPair F) (board (a 1)) (designRuleStack S (l 1 (r D)))"
       "(traceRuleStack T (l 1 (width 1)))) (assign (comp C (property k v) (assign (a b)))))");
  Load(*p, Kind::components, "$COMP C\nfunctionName = F\nsymbolName = S T\npin 1 = IN A,B G 7\n$COMP_END\n");
  return p;
}

class HostileArchive : public testing::Test {
 protected:
  const std::unique_ptr<CPC_BD_OutClsGet> m_pData = SmallFacade();
  const std::string m_sImage = Image(*m_pData);
};

TEST_F(HostileArchive, TheImageItselfLoads) {
  ASSERT_LE(m_sImage.size(), 10u * 1024);
  ASSERT_GE(m_sImage.size(), 1000u);
  CPC_BD_OutClsGet loaded;
  EXPECT_EQ(LoadImage(loaded, m_sImage), 0u);
  EXPECT_EQ(loaded.m_pRufRuleArray->GetSize(), 2);
  EXPECT_EQ(loaded.m_pPrfPartArray->GetAt(0)->m_pPropertyArray->GetSize(), 1);
  // Bytes behind the image are left alone.
  CPC_BD_OutClsGet again;
  EXPECT_EQ(LoadImage(again, m_sImage + "behind"), 6u);
  EXPECT_EQ(Show(again), Show(loaded));
}

TEST_F(HostileArchive, CutAtEveryByte) {
  for (std::size_t n = 0; n < m_sImage.size(); ++n) {
    // Into an empty facade, and over one that is full.
    CPC_BD_OutClsGet loaded;
    ASSERT_EQ(LoadCause(loaded, m_sImage.substr(0, n)), kEndOfFile) << n;
    if (n % 7 != 0) continue;
    const auto pFull = SmallFacade();
    ASSERT_EQ(LoadCause(*pFull, m_sImage.substr(0, n)), kEndOfFile) << n;
  }
}

// Whatever a damaged image does to the facade, that is sound: it can be stored, shown and loaded into again.
void CheckSound(CPC_BD_OutClsGet& facade, const std::string& sImage) {
  const CPC_BD_OutClsGet copy(facade);
  CPC_BD_OutClsGet again;
  LoadImage(again, Image(facade));
  const std::string stored = Image(again);
  CPC_BD_OutClsGet third;
  LoadImage(third, stored);
  EXPECT_EQ(Image(third), stored);
  // Over what is there the sound image loads as into an empty facade.
  EXPECT_EQ(LoadImage(facade, sImage), 0u);
  CPC_BD_OutClsGet fresh;
  LoadImage(fresh, sImage);
  EXPECT_EQ(Show(facade, laminate::kNotInImage), Show(fresh, laminate::kNotInImage));
}

template <class Damage>
void LoadDamaged(const std::string& sImage, const std::string& sDamaged, Damage&& where) {
  CPC_BD_OutClsGet loaded;
  try {
    LoadImage(loaded, sDamaged);
  } catch (const CArchiveException& e) {
    ASSERT_EQ(e.m_cause, kEndOfFile) << where();
  } catch (const COleException& e) {
    ASSERT_EQ(e.m_sc, 0x80070216u) << where();
  }
  CheckSound(loaded, sImage);
}

TEST_F(HostileArchive, EveryBitFlipped) {
  for (std::size_t i = 0; i < m_sImage.size() * 8; ++i) {
    std::string damaged = m_sImage;
    damaged[i / 8] = static_cast<char>(damaged[i / 8] ^ (1 << i % 8));
    LoadDamaged(m_sImage, damaged, [i] { return "bit " + std::to_string(i); });
  }
}

TEST_F(HostileArchive, EveryVersionWordAtEveryPlace) {
  for (std::size_t i = 0; i + 4 <= m_sImage.size(); ++i) {
    for (const int nVersion : {0, 1, 2, 3, -1}) {
      std::string damaged = m_sImage;
      damaged.replace(i, 4, Bytes().Int(nVersion).Str());
      LoadDamaged(m_sImage, damaged, [i] { return "offset " + std::to_string(i); });
    }
  }
}

TEST_F(HostileArchive, EveryCountAtEveryPlace) {
  for (std::size_t i = 0; i + 8 <= m_sImage.size(); ++i) {
    for (const std::uint64_t n : {1ull << 31, 1ull << 32, 1ull << 61, 1ull << 63, ~0ull}) {
      std::string damaged = m_sImage;
      damaged.replace(i, 8, Bytes().Int64(n).Str());
      LoadDamaged(m_sImage, damaged, [i] { return "offset " + std::to_string(i); });
    }
  }
}

TEST_F(HostileArchive, RandomDamage) {
  std::mt19937 random(7);
  for (int i = 0; i < 3000; ++i) {
    std::string damaged = m_sImage;
    for (int n = 0; n < 1 + i % 8; ++n) damaged[random() % damaged.size()] = static_cast<char>(random());
    if (i % 3 == 0) damaged.resize(random() % damaged.size());
    if (i % 5 == 0) damaged += m_sImage;
    LoadDamaged(m_sImage, damaged, [i] { return "round " + std::to_string(i); });
  }
}

// ---- counts ----
/// The process takes hardly more memory than before, whatever the count promises.
class CountCase : public testing::TestWithParam<std::uint64_t> {};

TEST_P(CountCase, TakesNoMemoryAhead) {
  const std::uint64_t nCount = GetParam();
  struct rusage before {};
  getrusage(RUSAGE_SELF, &before);
  const auto start = std::chrono::steady_clock::now();
  {
    CVRXoutPackageArray arr;
    CVRXoutPackage package;
    const std::string element = Image(package);
    const std::string image = Bytes().Array(nCount).Raw(element).Raw(element).Raw(element.substr(0, 7));
    EXPECT_EQ(LoadCause(arr, image), kEndOfFile);
    EXPECT_EQ(arr.GetSize(), 2);
  }
  {
    CLPropertyArray arr;
    EXPECT_EQ(LoadCause(arr, Bytes().Array(nCount).Text("a").Text("b").Text("c").Text("d").Str()), kEndOfFile);
    EXPECT_EQ(Show(arr), "[a=b:c]");
  }
  {
    // Pin names: the count has 16 bits, or 32 behind 0xFFFF, or 64 behind 0xFFFFFFFF.
    CVRXoutLcdbCmpCompPin pin;
    Bytes image = Bytes().Int(1).Text("").Text("").Int(5).Int16(0xFFFF);
    if (nCount < 0xFFFFFFFF) {
      image.Int(static_cast<std::int64_t>(nCount));
    } else {
      image.Int(-1).Int64(nCount);
    }
    EXPECT_EQ(LoadCause(pin, image.Text("A").Text("B").Raw("\x05x").Str()), kEndOfFile);
    EXPECT_EQ(Show(pin.m_aPinNames), "[A,B]");
    EXPECT_EQ(pin.m_nPinId, 5);
  }
  {
    // Ports, as raw pointers: eight times the count must not wrap around.
    CVRXoutPrfPart part;
    Bytes image = Bytes().Int(1).Text("").Text("").Text("").Text("").Text("").Text("").Array(0).Array(0).Int16(0xFFFF);
    if (nCount < 0xFFFFFFFF) {
      image.Int(static_cast<std::int64_t>(nCount));
    } else {
      image.Int(-1).Int64(nCount);
    }
    EXPECT_EQ(LoadCause(part, image.Int64(0x1000).Int64(0x2000).Str()), kEndOfFile);
    EXPECT_EQ(part.m_pPortArray->GetSize(), 0);
  }
  struct rusage after {};
  getrusage(RUSAGE_SELF, &after);
  EXPECT_LT(after.ru_maxrss - before.ru_maxrss, 16 * 1024) << "KiB more at the peak";
  EXPECT_LT(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(), 5.0);
}
INSTANTIATE_TEST_SUITE_P(HostileArchive, CountCase,
                         testing::Values(1ull << 31, (1ull << 32) - 2, 1ull << 32, (1ull << 32) + 1, 1ull << 61,
                                         (1ull << 61) + 1, 1ull << 63, ~0ull));

#ifndef LAMINATE_NO_POOL
// A child may take as much as what it has, and a little more: room that a count makes ahead would not be there.
TEST(HostileCounts, NeedNoMoreRoomThanTheirBytes) {
  const std::string image = Bytes().Array(2000000).Raw(std::string(8000000, '\0'));
  const auto load = [&](std::uint64_t nCount) {
    CVRXoutPackageArray packages;
    LoadCause(packages, Bytes().Array(nCount).Raw(std::string(100, '\1')).Str());
    CLPropertyArray properties;
    LoadCause(properties, Bytes().Array(nCount).Raw(std::string(100, '\0')).Str());
    CStringArray texts;
    LoadCause(texts, Bytes().Int16(0xFFFF).Int(-1).Int64(nCount).Raw("\1a").Str());
    CVRXoutRufRuleBoard setting;
    LoadCause(setting, Bytes().Int(1).Raw("\xFF").Int16(0xFFFF).Int(-1).Int64(nCount).Raw("few").Str());
  };
  EXPECT_EXIT(
      {
        rlimit limit{};
        limit.rlim_cur = limit.rlim_max = AddressSpace() + (64u << 20);
        setrlimit(RLIMIT_AS, &limit);
        for (const std::uint64_t n : {1ull << 24, 1ull << 31, 1ull << 32, 1ull << 61, ~0ull}) load(n);
        std::_Exit(0);
      },
      testing::ExitedWithCode(0), "");
  // Four bytes that are no version make a whole record: at most 100 bytes for each byte of the image.
  EXPECT_EXIT(
      {
        rlimit limit{};
        limit.rlim_cur = limit.rlim_max = AddressSpace() + image.size() * 101;
        setrlimit(RLIMIT_AS, &limit);
        CVRXoutPrfPartArray parts;
        LoadImage(parts, image);
        std::_Exit(parts.GetSize() == 2000000 ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}
#endif

// Copying, comparing and archiving an array takes time by its size.
TEST(RecordArrays, TakeTimeByTheirSize) {
  CVRXoutPackageArray packages;
  for (int i = 0; i < 200000; ++i) {
    laminate::AppendOwned(packages, std::make_unique<CVRXoutPackage>()).vFindSpecWithNameAndNoneCaseRegister("s");
  }
  const auto start = std::chrono::steady_clock::now();
  const CVRXoutPackageArray copy(packages);
  EXPECT_TRUE(copy == packages);
  const std::string image = Image(packages);
  CVRXoutPackageArray loaded;
  EXPECT_EQ(LoadImage(loaded, image), 0u);
  EXPECT_TRUE(loaded == packages);
  EXPECT_LT(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(), 20.0);
}

// The exception names the archive's file.
TEST_F(HostileArchive, ACutImageNamesItsFile) {
  const laminate::test::TestFolder folder;
  const auto check = [&](const std::string& image, auto load) {
    const std::string path = folder.Write("cut.bin", image);
    CFile file(path.c_str(), CFile::modeRead | CFile::typeBinary);
    CArchive ar(&file, CArchive::load);
    try {
      load(ar);
      ADD_FAILURE() << image.size();
    } catch (const CArchiveException& e) {
      EXPECT_EQ(e.m_cause, kEndOfFile);
      EXPECT_EQ(e.m_strFileName, path.c_str());
    }
  };
  const auto serialize = [&check](const std::string& image, auto loaded) {
    check(image, [&loaded](CArchive& ar) { loaded.Serialize(ar); });
  };
  for (std::size_t n = 0; n < m_sImage.size(); n += 13) serialize(m_sImage.substr(0, n), CPC_BD_OutClsGet());
  serialize(m_sImage.substr(0, m_sImage.size() - 1), CPC_BD_OutClsGet());
  check("123", [](CArchive& ar) {
    int n = 0;
    ar >> n;
  });
  // A text without its length's end, and without its own.
  for (const char* sz : {"", "\xFF\1", "\5four"}) {
    check(sz, [](CArchive& ar) {
      CString s;
      ar >> s;
    });
  }
  // A list without its count, and without its second text.
  for (const std::string& image : {Bytes().Raw("\2").Str(), Bytes().Int16(2).Text("one").Str()}) {
    serialize(image, CStringArray());
  }
  serialize(Bytes().Array(1).Str(), CVRXoutPackageArray());
}

// ---- raw pointers ----
TEST(RawPointerArray, AreReadOverAndNeverFollowed) {
  CVRXoutPrfPart part;
  laminate::AppendOwned(*part.m_pPortArray, std::make_unique<CVRXoutPrfPartPort>());
  const std::string image = Bytes()
                                .Int(1)
                                .Text("A")
                                .Text("")
                                .Text("")
                                .Text("")
                                .Text("")
                                .Text("")
                                .Array(0)
                                .Array(0)
                                .Int16(3)
                                .Int64(0xDEADBEEFDEADBEEF)
                                .Int64(1)
                                .Int64(reinterpret_cast<std::uintptr_t>(&part))
                                .Int16(1)
                                .Int64(0x4141414141414141)
                                .Raw("behind");
  EXPECT_EQ(LoadImage(part, image), 6u);
  EXPECT_EQ(Show(part), "{A,,,,,,[],[],[],[]}");
}

TEST(RawPointerArray, CountForms) {
  struct Case {
    int count;
    std::string head;
  };
  const Case kCases[] = {
      {0, Bytes().Int16(0)},
      {1, Bytes().Int16(1)},
      {65534, Bytes().Int16(65534)},
      {65535, Bytes().Int16(65535).Int(65535)},
      {65536, Bytes().Int16(65535).Int(65536)},
  };
  for (const Case& c : kCases) {
    CVRXoutPrfPartPortArray arr;
    for (int i = 0; i < c.count; ++i) laminate::AppendOwned(arr, std::make_unique<CVRXoutPrfPartPort>());
    arr.SetSize(arr.GetSize() + 1);  // a null slot is not there
    const std::string image = c.head + std::string(static_cast<std::size_t>(c.count) * 8, '\0');
    EXPECT_TRUE(Image(arr) == image) << c.count;
    EXPECT_EQ(LoadImage(arr, image + "x"), 1u) << c.count;
    EXPECT_EQ(arr.GetSize(), 0);
  }
  // The widest form of a count is read too.
  CVRXoutPrfPartGateDefArray gates;
  EXPECT_EQ(LoadImage(gates, Bytes().Int16(0xFFFF).Int(-1).Int64(1).Int64(7).Raw("x").Str()), 1u);
}

// ---- strings ----
TEST(ArchiveString, LengthPrefixes) {
  struct Case {
    int length;
    std::string prefix;
  };
  const Case kCases[] = {
      {0, "\0"s},
      {1, "\1"s},
      {254, "\xFE"s},
      {255, Bytes().Raw("\xFF").Int16(255)},
      {256, Bytes().Raw("\xFF").Int16(256)},
      {65533, Bytes().Raw("\xFF").Int16(65533)},
      {65534, Bytes().Raw("\xFF").Int16(65535).Int(65534)},
      {65535, Bytes().Raw("\xFF").Int16(65535).Int(65535)},
      {65536, Bytes().Raw("\xFF").Int16(65535).Int(65536)},
      {200000, Bytes().Raw("\xFF").Int16(65535).Int(200000)},
  };
  for (const Case& c : kCases) {
    std::string text(static_cast<std::size_t>(c.length), 't');
    if (c.length > 10) text[5] = '\0';
    CVRXoutRufRuleBoard r;
    r.m_sName = std::string_view(text);
    r.m_sValue = "end";
    const std::string image = Bytes().Int(1).Raw(c.prefix).Raw(text).Text("end");
    EXPECT_TRUE(Image(r) == image) << c.length;
    CVRXoutRufRuleBoard loaded;
    EXPECT_EQ(LoadImage(loaded, image), 0u) << c.length;
    EXPECT_EQ(loaded.m_sName.View(), text) << c.length;
    EXPECT_EQ(loaded.m_sValue, "end");
  }
}

TEST(ArchiveString, OtherPrefixesAreReadToo) {
  struct Case {
    const char* name;
    std::string string;
    std::string text;
  };
  const Case kCases[] = {
      {"16 bits for a short one", Bytes().Raw("\xFF").Int16(3).Raw("abc"), "abc"},
      {"32 bits for a short one", Bytes().Raw("\xFF").Int16(0xFFFF).Int(3).Raw("abc"), "abc"},
      {"64 bits for a short one", Bytes().Raw("\xFF").Int16(0xFFFF).Int(-1).Int64(3).Raw("abc"), "abc"},
      {"UTF-16, length of a byte", Bytes().Raw("\xFF\xFE\xFF\x02").Raw("a\0b\0"sv), "ab"},
      {"UTF-16, length of 16 bits", Bytes().Raw("\xFF\xFE\xFF\xFF").Int16(2).Raw("a\0b\0"sv), "ab"},
      {"UTF-16, empty", Bytes().Raw("\xFF\xFE\xFF").Raw("\0"sv), ""},
      {"UTF-16, Japanese", Bytes().Raw("\xFF\xFE\xFF\x02").Raw("\x42\x30\x9E\x8A"sv), "\x82\xA0\x8C\xEA"},
      {"UTF-16, half-width", Bytes().Raw("\xFF\xFE\xFF\x01").Raw("\x71\xFF"sv), "\xB1"},
      {"UTF-16, no such character",
       Bytes()
           .Raw("\xFF\xFE\xFF\x03")
           .Raw("a\0\x00\x0E"
                "b\0"sv),
       "a?b"},
      {"UTF-16, a pair outside the page", Bytes().Raw("\xFF\xFE\xFF\x02").Raw("\x3D\xD8\x00\xDE"sv), "?"},
  };
  for (const Case& c : kCases) {
    CVRXoutRufRuleBoard loaded;
    EXPECT_EQ(LoadImage(loaded, Bytes().Int(1).Raw(c.string).Text("end").Str()), 0u) << c.name;
    EXPECT_EQ(Hex(loaded.m_sName.View()), Hex(c.text)) << c.name;
    EXPECT_EQ(loaded.m_sValue, "end") << c.name;
  }
}

// A second 65534 behind the wide marker is a plain length: 131068 bytes are wanted, and come.
TEST(ArchiveString, TheWideMarkerCountsOnce) {
  std::string units;
  for (int i = 0; i < 65534; ++i) units += "w\0"sv;
  CVRXoutRufRuleBoard loaded;
  const std::string image = Bytes().Int(1).Raw("\xFF\xFE\xFF\xFF\xFE\xFF").Raw(units).Text("end");
  EXPECT_EQ(LoadImage(loaded, image), 0u);
  EXPECT_EQ(loaded.m_sName, std::string_view(std::string(65534, 'w')));
  EXPECT_EQ(LoadCause(loaded, image.substr(0, 1000)), kEndOfFile);
}

TEST(ArchiveString, LengthsThatNoArchiveHolds) {
  for (const std::uint64_t n : {1ull << 31, 1ull << 32, 1ull << 62, ~0ull}) {
    CVRXoutRufRuleBoard loaded;
    loaded.m_sName = "old";
    Bytes narrow = Bytes().Int(1).Raw("\xFF").Int16(0xFFFF);
    Bytes wide = Bytes().Int(1).Raw("\xFF\xFE\xFF\xFF").Int16(0xFFFF);
    for (Bytes* p : {&narrow, &wide}) {
      if (n < 0xFFFFFFFF) {
        p->Int(static_cast<std::int64_t>(n));
      } else {
        p->Int(-1).Int64(n);
      }
      p->Raw("few bytes");
    }
    EXPECT_EQ(LoadCause(loaded, narrow.Str()), kEndOfFile) << n;
    EXPECT_EQ(loaded.m_sName, "old") << n;
    // Twice as many bytes as units do not fit 32 bits.
    try {
      LoadImage(loaded, wide.Str());
      ADD_FAILURE() << n;
    } catch (const COleException& e) {
      EXPECT_EQ(e.m_sc, 0x80070216u) << n;
    }
    EXPECT_EQ(loaded.m_sName, "old") << n;
  }
}

TEST(ArchiveString, ATextCutShortKeepsItsOldValue) {
  CVRXoutPackageMountForm r;
  r.m_sMountForm = "old m";
  r.m_sSpec = "old s";
  EXPECT_EQ(LoadCause(r, Bytes().Int(1).Text("new").Raw("\x05spec").Str()), kEndOfFile);
  EXPECT_EQ(Show(r), "{new,old s,,}");
}

// ---- failing stores ----
class FullFile : public CMemFile {
 public:
  explicit FullFile(UINT nRoom) : m_nRoom(nRoom) {}
  void Write(const void* pBuffer, UINT nCount) override {
    if (nCount > m_nRoom) AfxThrowFileException(CFileException::diskFull);
    m_nRoom -= nCount;
    CMemFile::Write(pBuffer, nCount);
  }

 private:
  UINT m_nRoom;
};

TEST_F(HostileArchive, AStoreThatFailsIsTold) {
  FullFile file(100);
  CArchive ar(&file, CArchive::store);
  EXPECT_THROW(
      {
        m_pData->Serialize(ar);
        ar.Close();
      },
      CFileException);
  ar.Abort();
  CheckSound(*m_pData, m_sImage);
}

// An image replaces what a full facade holds; the objects that hold it stay.
TEST_F(HostileArchive, AnImageReplacesWhatIsThere) {
  CPC_BD_OutClsGet& data = *m_pData;
  const CVRXoutPackageArray* const pPackages = data.m_pPackageArray;
  const CVRXoutRufStackup* const pStackup = data.m_pStackup;
  const CVRXoutRufBoardSpec* const pSpec = data.m_pBoardSpec;
  CPC_BD_OutClsGet empty;
  EXPECT_NE(Show(data), Show(empty));
  EXPECT_EQ(LoadImage(data, Image(empty)), 0u);
  EXPECT_EQ(Show(data), Show(empty));
  EXPECT_EQ(data.m_pPackageArray, pPackages);
  EXPECT_EQ(data.m_pStackup, pStackup);
  EXPECT_EQ(data.m_pBoardSpec, pSpec);
}

// Four bytes make a record of an array whose elements have a version that is not known.
TEST(ArchiveRecords, OfAnUnknownVersionStayEmpty) {
  CVRXoutRufRuleBoardArray loaded;
  EXPECT_EQ(LoadImage(loaded, Bytes().Array(100000).Raw(std::string(400000, '\0')).Str()), 0u);
  EXPECT_EQ(loaded.GetSize(), 100000);
  EXPECT_EQ(Show(*loaded.GetLastElement()), "{,}");
}

}  // namespace
