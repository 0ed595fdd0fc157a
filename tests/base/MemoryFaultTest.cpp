// Every operation of the foundations with each of its allocations failing, one by one.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "base/AllocationFault.h"
#include "base/BKUtility.h"
#include "base/CArchive.h"
#include "base/CArrayN.h"
#include "base/CArrayPointD.h"
#include "base/CGProperty.h"
#include "base/CLProperty.h"
#include "base/CMemFile.h"
#include "base/CPoint3D.h"
#include "base/CRectD.h"
#include "base/CStdioFile.h"
#include "base/CStringArray.h"
#include "base/CStringEx.h"
#include "base/FileSystem.h"
#include "base/Pool.h"
#include "base/TestFolder.h"
#include "base/TextOut.h"
#include "base/WholeFile.h"
#include "base/XTokenString.h"

using laminate::test::AllocationFault;
using laminate::test::ForEachFailingAllocation;
using laminate::test::OnlyPlatforms;
using laminate::test::TestFolder;

namespace {

// Below this size a build with the pool seldom reaches the heap.
const std::string kLong(2000, 'x');
constexpr bool kPool =
#ifdef LAMINATE_NO_POOL
    false;
#else
    true;
#endif

TEST(AllocationFault, FailsWhatItIsTold) {
  {
    const AllocationFault fault(2, AllocationFault::Duration::once);
    ::operator delete(::operator new(10));
    EXPECT_THROW(::operator delete(::operator new(10)), std::bad_alloc);
    void* p = ::operator new(10, std::nothrow);
    const bool bThird = p != nullptr;
    ::operator delete(p);
    EXPECT_TRUE(bThird);
    EXPECT_TRUE(fault.HasFailed());
  }
  {
    const AllocationFault fault(1, AllocationFault::Duration::forever);
    void* p = ::operator new(10, std::nothrow);
    void* q = ::operator new[](10, std::nothrow);
    void* r = ::operator new (64, std::align_val_t{64}, std::nothrow);
    const bool bNone = p == nullptr && q == nullptr && r == nullptr;
    const long nCount = fault.Count();
    EXPECT_EQ(nCount, 3);
    EXPECT_TRUE(bNone);
  }
  ::operator delete(::operator new(10));
}

TEST(MemoryFault, MakesThePoolRaise) {
  for (const std::size_t nBytes : {std::size_t{8}, laminate::kPoolLimit, laminate::kPoolLimit + 1}) {
    std::vector<void*> blocks;
    blocks.reserve(20000);
    bool bRaised = false;
    {
      const AllocationFault fault(1, AllocationFault::Duration::forever);
      try {
        // What the pool has at hand goes first.
        while (blocks.size() < blocks.capacity()) blocks.push_back(laminate::PoolAllocate(nBytes));
      } catch (const CMemoryException&) {
        bRaised = true;
      }
    }
    EXPECT_TRUE(bRaised) << nBytes;
    laminate::PoolFree(laminate::PoolAllocate(nBytes), nBytes);
    for (void* p : blocks) laminate::PoolFree(p, nBytes);
  }
}

TEST(MemoryFault, LeavesStringsAsTheyWere) {
  const std::vector<std::pair<const char*, std::function<void(CString&)>>> operations = {
      {"assign", [](CString& s) { s = std::string_view(kLong).substr(0, 1500); }},
      {"append", [](CString& s) { s += std::string_view(kLong); }},
      {"append itself", [](CString& s) { s += s; }},
      {"append a byte", [](CString& s) { s += 'y'; }},
      {"insert", [](CString& s) { s.Insert(1, std::string_view(kLong)); }},
      {"insert itself", [](CString& s) { s.Insert(1, s.View()); }},
      {"delete", [](CString& s) { s.Delete(5, 5); }},
      {"truncate", [](CString& s) { s.Truncate(900); }},
      {"replace", [](CString& s) { s.Replace("x", "yy"); }},
      {"replace a byte", [](CString& s) { s.Replace('x', 'y'); }},
      {"remove", [](CString& s) { s.Remove('q'); }},
      {"set", [](CString& s) { s.SetAt(0, 'y'); }},
      {"upper", [](CString& s) { s.MakeUpper(); }},
      {"trim", [](CString& s) { s.Trim('q'); }},
      {"format", [](CString& s) { s.Format("%s%s", kLong.c_str(), kLong.c_str()); }},
      {"append format", [](CString& s) { s.AppendFormat("%s", kLong.c_str()); }},
      {"buffer", [](CString& s) { s.GetBuffer(5000); }},
      {"buffer of a length", [](CString& s) { s.GetBufferSetLength(5000); }},
      {"preallocate", [](CString& s) { s.Preallocate(5000); }},
      {"part", [](CString& s) { s = s.Mid(1, 1200); }},
      {"sum", [](CString& s) { s = s + s; }},
      {"repeat", [](CString& s) { s = CString('x', 3000); }},
      {"token", [](CString& s) {
         int nAt = 0;
         s = s.Tokenize("q", nAt);
       }}};
  const CString original("q" + CString(kLong.c_str()) + "q");
  for (const auto& [szName, run] : operations) {
    CString s;
    bool bOk = true;
    const int nFailures = ForEachFailingAllocation(OnlyPlatforms([&, &step = run] {
                                                     s = original;
                                                     step(s);
                                                   }),
                                                   [&] { bOk = bOk && s == original; });
    EXPECT_TRUE(bOk) << szName;
    EXPECT_GT(nFailures, 0) << szName;
  }
}

TEST(MemoryFault, LeavesArraysAsTheyWere) {
  const std::vector<std::pair<const char*, std::function<void(CStringArray&, const CStringArray&)>>> operations = {
      {"Add", [](CStringArray& a, const CStringArray& b) { a.Add(b[0]); }},
      {"Append", [](CStringArray& a, const CStringArray& b) { a.Append(b); }},
      {"Append itself", [](CStringArray& a, const CStringArray&) { a.Append(a); }},
      {"Copy", [](CStringArray& a, const CStringArray& b) { a.Copy(b); }},
      {"assign", [](CStringArray& a, const CStringArray& b) { a = b; }},
      {"InsertAt", [](CStringArray& a, const CStringArray& b) { a.InsertAt(1, b[0], 3); }},
      {"InsertAt an array", [](CStringArray& a, const CStringArray& b) { a.InsertAt(1, &b); }},
      {"SetSize", [](CStringArray& a, const CStringArray&) { a.SetSize(500); }},
      {"SetAtGrow", [](CStringArray& a, const CStringArray& b) { a.SetAtGrow(500, b[0]); }},
      {"FreeExtra", [](CStringArray& a, const CStringArray&) { a.FreeExtra(); }},
  };
  CStringArray big;
  for (int i = 0; i < 100; ++i) big.Add(CString(kLong.c_str()));
  for (const auto& [szName, run] : operations) {
    CStringArray array;
    bool bOk = true;
    const int nFailures = ForEachFailingAllocation(OnlyPlatforms([&, &step = run] {
                                                     array.RemoveAll();
                                                     for (int i = 0; i < 70; ++i) array.Emplace("short");
                                                     array.RemoveAt(69);
                                                     step(array, big);
                                                   }),
                                                   [&] {
                                                     // The failure may stand in the first steps.
                                                     if (array.GetSize() > 70) bOk = false;
                                                     for (const CString& s : array) bOk = bOk && s == "short";
                                                   });
    EXPECT_TRUE(bOk) << szName;
    EXPECT_GT(nFailures, 0) << szName;
  }
}

TEST(MemoryFault, LeavesPointerArraysAsTheyWere) {
  CExPtrArray<CObject*, CObject*> original;
  for (std::uintptr_t i = 0; i < 300; ++i) original.Add(reinterpret_cast<CObject*>((i % 100 + 1) * 16));
  CExPtrArray<CObject*, CObject*> list;
  for (std::uintptr_t i = 0; i < 50; ++i) list.Add(reinterpret_cast<CObject*>((i + 1) * 16));
  using Array = CExPtrArray<CObject*, CObject*>;
  const std::vector<std::pair<const char*, std::function<void(Array&)>>> operations = {
      {"RemoveDuplicatedElements", [](Array& a) { a.RemoveDuplicatedElements(); }},
      {"Subtract", [&](Array& a) { a.Subtract(list); }},
      {"MoveElementTo",
       [](Array& a) {
         Array dest;
         a.MoveElementTo(dest, 10, 200);
         dest.SetSize(0, -1);
       }},
      {"Add_if_only_do_not_exists", [](Array& a) { a.Add_if_only_do_not_exists(nullptr); }}};
  for (const auto& [szName, run] : operations) {
    Array array;
    bool bOk = true;
    const int nFailures =
        ForEachFailingAllocation(OnlyPlatforms([&, &step = run] {
                                   array.SetSize(0, -1);
                                   array.Copy(original);
                                   array.FreeExtra();
                                   step(array);
                                 }),
                                 [&] { bOk = bOk && (array.IsElementEqual(original) || array.IsEmpty()); });
    EXPECT_TRUE(bOk) << szName;
    EXPECT_GT(nFailures, 0) << szName;
  }
  // Without a failure in its way nothing needs memory.
  Array array;
  array.Copy(original);
  const AllocationFault fault(1, AllocationFault::Duration::forever);
  array.RemoveNullElement();
  array.Reverse();
  array.Remove(nullptr);
  array.SetSize(10, -1);
  array.SetSize(0, -1);
}

TEST(MemoryFault, LeavesRecordArraysAsTheyWere) {
  CLPropertyArray source;
  CLPropertyArray target;
  for (int i = 0; i < 40; ++i) source.Add(new CLProperty(kLong.c_str(), "value", "kind"));
  target.Add(new CLProperty("a", "b", "c"));
  const CLPropertyArray before(target);
  bool bOk = true;
  const int nCopies = ForEachFailingAllocation(OnlyPlatforms([&] {
                                                 CLPropertyArray copy(before);
                                                 copy = source;
                                                 delete copy.clone();
                                               }),
                                               [&] { bOk = bOk && target == before; });
  EXPECT_TRUE(bOk);
  EXPECT_TRUE(kPool || nCopies > 80);
  ForEachFailingAllocation(OnlyPlatforms([&] {
    CLPropertyArray assigned(before);
    try {
      assigned = source;
    } catch (...) {
      bOk = bOk && assigned == before;
      throw;
    }
  }));
  EXPECT_TRUE(bOk);

  CMemFile file;
  {
    CArchive ar(&file, CArchive::store);
    source.Serialize(ar);
    ar.Close();
  }
  bool bSound = true;
  const int nLoads = ForEachFailingAllocation(OnlyPlatforms([&] {
                                                file.SeekToBegin();
                                                CArchive ar(&file, CArchive::load);
                                                target.Serialize(ar);
                                              }),
                                              [&] {
                                                // Elements that were loaded before stay, each of them whole.
                                                for (const CLProperty* p : target)
                                                  bSound = bSound && p->m_sKind.GetLength() > 0;
                                              });
  EXPECT_TRUE(bSound);
  EXPECT_GT(nLoads, kPool ? 1 : 80);
  EXPECT_TRUE(target == source);
}

TEST(MemoryFault, NeedsNoneToRaise) {
  const AllocationFault fault(1, AllocationFault::Duration::forever);
  bool bRaised = false;
  try {
    laminate::Required(static_cast<CObject*>(nullptr));
  } catch (const CInvalidArgException& e) {
    bRaised = std::string_view(e.what()) == "an invalid argument was encountered";
  }
  EXPECT_TRUE(bRaised);
}

TEST(MemoryFault, LeavesCopiesOfLongTextsAlone) {
  const CString s(kLong.c_str());
  const AllocationFault fault(1, AllocationFault::Duration::forever);
  CString copy(s);
  copy = s;
  const bool bSame = copy == s;
  EXPECT_TRUE(bSame);
  EXPECT_FALSE(fault.HasFailed());
}

TEST(MemoryFault, LeavesValuesAsTheyWere) {
  CArrayN numbers;
  for (int i = 0; i < 1000; ++i) numbers.Add(i);
  CArrayArrayN nested;
  for (int i = 0; i < 30; ++i) nested.Add(numbers);
  CStringExArray texts;
  CStringEx text(kLong.c_str());
  for (int i = 0; i < 30; ++i) texts.Add(text);
  CArrayPointD points;
  CPointD pt(1, 2);
  for (int i = 0; i < 100; ++i) points.Add(pt);
  CArrayArrayPointD outlines;
  outlines.Add(points.clone());
  CGPropertyArray properties;
  properties.Add(new CGProperty(kLong.c_str(), "b"));
  CArrayPoint3D places;
  CArrayRectD rectangles;
  for (int i = 0; i < 20; ++i) {
    places.Add(new CPoint3D(1, 2, i));
    rectangles.Add(new CRectD(1, 2, 3, i));
  }
  const int nFailures = ForEachFailingAllocation(OnlyPlatforms([&] {
    CArrayArrayN nestedCopy(nested);
    nestedCopy.Add(nestedCopy[0]);
    CStringExArray textsCopy(texts);
    textsCopy = texts;
    CArrayArrayPointD outlinesCopy(outlines);
    delete outlinesCopy.clone();
    CGPropertyArray propertiesCopy;
    propertiesCopy = properties;
    CArrayPoint3D placesCopy(places);
    delete placesCopy.clone();
    CArrayRectD rectanglesCopy;
    rectanglesCopy = rectangles;
    CStringArray columns;
    XTokenString("a \"b c\" and a column of more than sixteen bytes", " ", columns, 0, 0, 0, 1, 0);
    laminate::LineColumns cut("a b c d e f g h i j k l m n o p");
    laminate::NthColumn(std::string_view(kLong), 1);
  }));
  EXPECT_GT(nFailures, kPool ? 20 : 60);
}

TEST(MemoryFault, EndsFilesAndArchivesSoundly) {
  const TestFolder folder;
  const std::string path = folder.Write("f", kLong + "\n" + kLong + "\n");
  const int nBefore = laminate::test::CountDescriptors();
  std::string content;
  EXPECT_GT(ForEachFailingAllocation(OnlyPlatforms([&] {
              content = {};
              content.shrink_to_fit();
              laminate::ReadWholeFile(path.c_str(), content);
            })),
            0);
  EXPECT_GT(ForEachFailingAllocation(OnlyPlatforms([&] {
              CStdioFile file(path.c_str(), CFile::modeRead);
              CString s;
              while (file.ReadString(s)) {
              }
            })),
            0);
  const std::string out = folder / "out";
  EXPECT_GT(ForEachFailingAllocation(OnlyPlatforms([&] {
              CStdioFile file(out.c_str(), CFile::modeCreate | CFile::modeWrite);
              file.WriteString(kLong.c_str());
              file.Close();
            })),
            0);
  EXPECT_GT(ForEachFailingAllocation(OnlyPlatforms([&] {
              CFile file(out.c_str(), CFile::modeCreate | CFile::modeWrite);
              CArchive ar(&file, CArchive::store);
              for (int i = 0; i < 100; ++i) ar << CString(kLong.c_str());
              ar.Close();
            })),
            0);
  EXPECT_GT(ForEachFailingAllocation(OnlyPlatforms([&] {
              CMemFile file;
              CArchive ar(&file, CArchive::store);
              ar << CString(kLong.c_str());
              ar.Close();
              file.SeekToBegin();
              CArchive loading(&file, CArchive::load);
              CString s;
              loading >> s;
            })),
            0);
  EXPECT_GT(ForEachFailingAllocation([&] {
              std::FILE* fp = laminate::OpenStreamForWriting(out.c_str());
              if (fp == nullptr) throw std::bad_alloc();
              laminate::TextOut text(fp);
              for (int i = 0; i < 100; ++i) text.Print<"%s %d\n">(kLong, i);
              const bool bOk = text.Flush();
              std::fclose(fp);
              if (!bOk) std::abort();  // a stream needs no memory of the heap to write
            }),
            0);
  EXPECT_EQ(laminate::test::CountDescriptors(), nBefore);
  EXPECT_EQ(laminate::test::ReadFile(out).size(), 100 * (kLong.size() + 4) - 10);
}

TEST(MemoryFault, TellsThatAStringCannotTakeTheText) {
  bool bTold = true;
  const int nFailures = ForEachFailingAllocation([&] {
    std::string target;
    laminate::TextOut out(target);
    for (int i = 0; i < 1000; ++i) out.Print<"%s">(kLong);
    try {
      out.Flush();
    } catch (const CMemoryException&) {
      throw;
    }
    if (target.size() != 1000 * kLong.size()) bTold = false;
  });
  EXPECT_TRUE(bTold);
  EXPECT_GT(nFailures, 5);
}

TEST(MemoryFault, LeavesFoldersBehindAtWorst) {
  const TestFolder folder;
  BKUtility& utility = *BKUtility::GetInstance();
  utility.SetDataPath((folder / "data").c_str());
  const int nBefore = laminate::test::CountDescriptors();
  EXPECT_GT(ForEachFailingAllocation(OnlyPlatforms([&] {
              const CString sFolder = utility.BKPathCombine(
                  utility.GetDataPath(), "Data\\" + utility.GetSegmntFromFilePath("/a/long/path/of/a/board.pcf", 2));
              utility.MakeDirectory(sFolder);
              utility.DeleteDirectory(sFolder);
            })),
            0);
  // A missing file is told by an exception, which needs memory for the name.
  const std::string missing = folder / "a file that is not there";
  const CString lost(folder / "no such folder/and no file in it");
  const CString whole(folder / "a whole file");
  EXPECT_GT(ForEachFailingAllocation(OnlyPlatforms([&] {
              try {
                CFile file(missing.c_str(), CFile::modeRead);
              } catch (const CFileException&) {
              }
              try {
                laminate::WholeFile file(lost);
              } catch (const CFileException&) {
              }
              laminate::WholeFile file(whole);
              file.Text().Print<"%s">(kLong);
              file.Commit();
            })),
            0);
  utility.SetDataPath("");
  EXPECT_EQ(laminate::test::CountDescriptors(), nBefore);
}

}  // namespace
