#include "base/CFile.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "base/CMemFile.h"
#include "base/CStdioFile.h"
#include "base/FaultyFileSystem.h"
#include "base/TestFolder.h"

using namespace std::string_view_literals;
using laminate::FileSystemScope;
using laminate::test::FaultyFileSystem;
using laminate::test::ReadFile;
using laminate::test::TestFolder;

namespace {

class CFileTest : public laminate::test::DescriptorTest {
 protected:
  TestFolder m_folder;
};
using CStdioFileTest = CFileTest;

int CauseOf(const std::function<void()>& run) {
  try {
    run();
  } catch (const CFileException& e) {
    return e.m_cause;
  }
  return CFileException::none;
}

std::vector<std::string> Lines(CStdioFile& file) {
  std::vector<std::string> lines;
  CString sLine("old");
  while (file.ReadString(sLine)) lines.emplace_back(sLine.View());
  EXPECT_EQ(sLine, "");
  return lines;
}

TEST_F(CFileTest, Opens) {
  const std::string path = m_folder / "f";
  CFile file;
  CFileException error(CFileException::none, 0, "");
  EXPECT_FALSE(file.Open(path.c_str(), CFile::modeRead, &error));
  EXPECT_EQ(error.m_cause, CFileException::fileNotFound);
  EXPECT_EQ(error.m_lOsError, ENOENT);
  EXPECT_EQ(error.m_strFileName, path);
  EXPECT_NE(std::string(error.what()).find(path), std::string::npos);
  EXPECT_FALSE(file.Open(path.c_str(), CFile::modeRead));
  EXPECT_FALSE(file.Open("", CFile::modeRead));
  EXPECT_FALSE(file.Open(nullptr, CFile::modeRead));
  EXPECT_FALSE(file.Open(path.c_str(), CFile::modeWrite)) << "only modeCreate makes a file";
  EXPECT_THROW(CFile(path.c_str(), CFile::modeRead), CFileException);

  EXPECT_TRUE(file.Open(path.c_str(), CFile::modeWrite | CFile::modeCreate | CFile::shareDenyWrite));
  file.Write("0123456789", 10);
  EXPECT_EQ(CauseOf([&] {
              char ch;
              file.Read(&ch, 1);
            }),
            CFileException::accessDenied);
  file.Close();
  EXPECT_TRUE(file.Open(path.c_str(), CFile::modeWrite));
  file.Write("ab", 2);
  EXPECT_TRUE(file.Open(path.c_str(), CFile::modeReadWrite)) << "an open file is closed first";
  char buffer[16] = {};
  EXPECT_EQ(file.Read(buffer, 16), 10u);
  EXPECT_STREQ(buffer, "ab23456789");
  EXPECT_TRUE(file.Open(path.c_str(), CFile::modeReadWrite | CFile::modeCreate | CFile::modeNoTruncate));
  EXPECT_EQ(file.GetLength(), 10u);
  EXPECT_EQ(file.SeekToEnd(), 10u);
  file.Write("x", 1);
  file.SeekToBegin();
  EXPECT_EQ(file.Read(buffer, 16), 11u);
  EXPECT_TRUE(file.Open(path.c_str(), CFile::modeReadWrite | CFile::modeCreate));
  EXPECT_EQ(file.GetLength(), 0u);
  EXPECT_EQ(file.GetFilePath(), path.c_str());
  EXPECT_EQ(file.GetFileName(), "f");
  EXPECT_TRUE(file.Open(path.c_str(), CFile::modeRead));
  EXPECT_EQ(CauseOf([&] { file.Write("x", 1); }), CFileException::accessDenied);
  EXPECT_EQ(CauseOf([&] { file.SetLength(1); }), CFileException::accessDenied);
  EXPECT_EQ(file.Read(buffer, 1), 0u);
}

TEST_F(CFileTest, SeeksAndSetsItsLength) {
  CFile file((m_folder / "f").c_str(), CFile::modeReadWrite | CFile::modeCreate);
  file.Write("0123456789", 10);
  EXPECT_EQ(file.GetPosition(), 10u);
  EXPECT_EQ(file.Seek(-3, CFile::current), 7u);
  EXPECT_EQ(file.Seek(-1, CFile::end), 9u);
  EXPECT_EQ(file.Seek(2, CFile::begin), 2u);
  EXPECT_EQ(CauseOf([&] { file.Seek(-1, CFile::begin); }), CFileException::badSeek);
  EXPECT_THROW(file.Seek(0, 3), CInvalidArgException);
  file.SetLength(4);
  EXPECT_EQ(file.GetLength(), 4u);
  file.SetLength(6);
  EXPECT_THROW(file.SetLength(~ULONGLONG{0}), CInvalidArgException);
  file.Seek(8, CFile::begin);
  file.Write("x", 1);
  file.Flush();
  EXPECT_EQ(ReadFile(m_folder / "f"), "0123\0\0\0\0x"sv);
  EXPECT_THROW(file.Read(nullptr, 1), CInvalidArgException);
  EXPECT_THROW(file.Write(nullptr, 1), CInvalidArgException);
  EXPECT_EQ(file.Read(nullptr, 0), 0u);
  file.Write(nullptr, 0);
}

TEST_F(CFileTest, RefusesWhenItIsNotOpen) {
  CFile file;
  char ch = 0;
  for (const std::function<void()>& run : std::initializer_list<std::function<void()>>{
           [&] { file.Read(&ch, 1); }, [&] { file.Write(&ch, 1); }, [&] { file.SeekToBegin(); },
           [&] { file.GetPosition(); }, [&] { file.GetLength(); }, [&] { file.SetLength(1); }}) {
    EXPECT_EQ(CauseOf(run), CFileException::invalidFile);
  }
  file.Close();
  file.Abort();
}

TEST_F(CFileTest, TellsEveryFailure) {
  const std::string path = m_folder.Write("f", "0123456789");
  const int nFailures = laminate::test::ForEachFailingFileOperation(ENOSPC, [&](FaultyFileSystem& files) {
    bool bTold = false;
    try {
      CFile file(path.c_str(), CFile::modeReadWrite);
      char buffer[16];
      EXPECT_EQ(file.Read(buffer, 16), 10u);
      file.SeekToBegin();
      file.Write("abc", 3);
      file.GetLength();
      file.SetLength(10);
      file.Close();
    } catch (const CFileException& e) {
      bTold = true;
      EXPECT_EQ(e.m_lOsError, ENOSPC);
      EXPECT_EQ(e.m_strFileName, path);
    }
    EXPECT_EQ(bTold, files.HasFailed()) << files.Operations().back();
  });
  EXPECT_GE(nFailures, 14);
  FaultyFileSystem files(1, EIO, FaultyFileSystem::Duration::once);
  files.Only("Close");
  const FileSystemScope scope(files);
  CFile file(path.c_str(), CFile::modeRead);
  file.Abort();
  EXPECT_TRUE(files.HasFailed());
}

TEST_F(CStdioFileTest, ReadsLines) {
  struct Row {
    std::string_view content;
    std::vector<std::string> lines;
  };
  for (const Row& row : {Row{"", {}},
                         {"\n", {""}},
                         {"a", {"a"}},
                         {"a\n", {"a"}},
                         {"a\nb", {"a", "b"}},
                         {"a\r\nb\r\n", {"a", "b"}},
                         {"\r\n\r\n", {"", ""}},
                         {"a\rb\n", {"a\rb"}},
                         {"a\r", {"a\r"}},
                         {"a\r\r\n", {"a\r"}},
                         {"a\n\rb", {"a", "\rb"}},
                         {"a\x1A"
                          "b\n",
                          {"a\x1A"
                           "b"}},
                         {"a\0b\n"sv, {std::string("a\0b", 3)}},
                         {"\n\n\n", {"", "", ""}}}) {
    const std::string path = m_folder.Write("f", row.content);
    CStdioFile file(path.c_str(), CFile::modeRead | CFile::typeText);
    EXPECT_EQ(Lines(file), row.lines);
    CString s;
    EXPECT_FALSE(file.ReadString(s)) << "at the end it stays";
  }
  CStdioFile none;
  EXPECT_FALSE(none.Open((m_folder / "none").c_str(), 0, nullptr));
  CString s;
  EXPECT_EQ(CauseOf([&] { none.ReadString(s); }), CFileException::invalidFile);
}

TEST_F(CStdioFileTest, ReadsLongLinesAcrossItsBuffer) {
  std::string content;
  std::vector<std::string> expected;
  for (const std::size_t n : {65535u, 65536u, 65534u, 1u, 200000u, 0u, 65533u}) {
    expected.emplace_back(n, 'x');
    content += expected.back() + "\r\n";
  }
  const std::string path = m_folder.Write("f", content);
  CStdioFile file(path.c_str(), CFile::modeRead);
  EXPECT_TRUE(Lines(file) == expected);
}

TEST_F(CStdioFileTest, MixesLinesAndBytes) {
  const std::string path = m_folder.Write("f", "first\nsecond\nthird\n");
  CStdioFile file(path.c_str(), CFile::modeReadWrite);
  CString s;
  EXPECT_TRUE(file.ReadString(s));
  EXPECT_EQ(file.GetPosition(), 6u);
  char buffer[4] = {};
  EXPECT_EQ(file.Read(buffer, 3), 3u);
  EXPECT_STREQ(buffer, "sec");
  EXPECT_EQ(file.Seek(3, CFile::current), 12u);
  EXPECT_TRUE(file.ReadString(s));
  EXPECT_EQ(s, "");
  file.Write("THI", 3);
  EXPECT_EQ(file.GetPosition(), 16u);
  EXPECT_TRUE(file.ReadString(s));
  EXPECT_EQ(s, "rd");
  file.WriteString("more\n");
  EXPECT_EQ(file.GetLength(), 24u);
  file.SeekToBegin();
  EXPECT_EQ(Lines(file), (std::vector<std::string>{"first", "second", "THIrd", "more"}));
  file.SetLength(5);
  file.Close();
  EXPECT_EQ(ReadFile(path), "first");
  EXPECT_THROW(file.WriteString(nullptr), CInvalidArgException);
}

TEST_F(CStdioFileTest, WritesAndTells) {
  const std::string path = m_folder / "f";
  {
    CStdioFile file(path.c_str(), CFile::modeWrite | CFile::modeCreate);
    file.WriteString("a\n");
    file.WriteString("%s%n\r\n");
    const std::string big(100000, 'x');
    file.Write(big.data(), static_cast<UINT>(big.size()));
  }
  EXPECT_EQ(ReadFile(path), "a\n%s%n\r\n" + std::string(100000, 'x')) << "its end hands the rest over";
  const int nFailures = laminate::test::ForEachFailingFileOperation(ENOSPC, [&](FaultyFileSystem& files) {
    bool bTold = false;
    try {
      CStdioFile file(path.c_str(), CFile::modeWrite | CFile::modeCreate);
      for (int i = 0; i < 30000; ++i) file.WriteString("a line\n");
      file.Flush();
      file.WriteString("the last one\n");
      file.Close();
    } catch (const CFileException& e) {
      bTold = true;
      EXPECT_EQ(e.m_cause, CFileException::diskFull);
    }
    EXPECT_EQ(bTold, files.HasFailed()) << files.Operations().back();
  });
  EXPECT_GE(nFailures, 10);
  CStdioFile reading;
  EXPECT_TRUE(reading.Open(path.c_str(), CFile::modeRead));
  EXPECT_EQ(CauseOf([&] { reading.WriteString("x"); }), CFileException::accessDenied);
  EXPECT_TRUE(reading.Open(m_folder.Path().c_str(), CFile::modeRead));
  CString s;
  EXPECT_EQ(CauseOf([&] { reading.ReadString(s); }), CFileException::accessDenied) << "a folder";
}

TEST(CMemFile, GrowsWithWhatIsWritten) {
  CMemFile file;
  EXPECT_EQ(file.GetLength(), 0u);
  char buffer[16] = {};
  EXPECT_EQ(file.Read(buffer, 16), 0u);
  file.Write("0123456789", 10);
  EXPECT_EQ(file.GetPosition(), 10u);
  EXPECT_EQ(file.Read(buffer, 16), 0u);
  file.SeekToBegin();
  EXPECT_EQ(file.Read(buffer, 4), 4u);
  EXPECT_EQ(file.Read(buffer, 16), 6u);
  EXPECT_STREQ(buffer, "456789");
  EXPECT_EQ(file.Seek(-3, CFile::end), 7u);
  file.Write("abcdef", 6);
  EXPECT_EQ(file.GetLength(), 13u);
  file.Seek(15, CFile::begin);
  file.Write("x", 1);
  file.SeekToBegin();
  std::memset(buffer, '#', sizeof buffer);
  EXPECT_EQ(file.Read(buffer, 16), 16u);
  EXPECT_EQ(std::string_view(buffer, 16), "0123456abcdef\0\0x"sv) << "a gap is filled with zeros";
  EXPECT_EQ(CauseOf([&] { file.Seek(-17, CFile::end); }), CFileException::badSeek);
  EXPECT_EQ(CauseOf([&] { file.Seek(INT64_MAX, CFile::end); }), CFileException::badSeek);
  EXPECT_THROW(file.Seek(0, 7), CInvalidArgException);
  file.SeekToBegin();
  EXPECT_THROW(file.Read(nullptr, 1), CInvalidArgException);
  file.Seek(INT64_MAX, CFile::begin);
  EXPECT_EQ(file.Read(buffer, 1), 0u);
  EXPECT_THROW(file.Write("x", 1), CMemoryException);
  EXPECT_THROW(file.Write(nullptr, 1), CInvalidArgException);
  file.SetLength(2);
  EXPECT_EQ(file.GetLength(), 2u);
  file.Close();
  EXPECT_EQ(file.GetLength(), 0u);
  file.Write("a", 1);
  EXPECT_EQ(file.GetLength(), 1u) << "it may be used again";
}

TEST(CMemFile, WorksOnTheCallersBlock) {
  char block[] = "0123456789";
  {
    CMemFile file(reinterpret_cast<BYTE*>(block), 10);
    EXPECT_EQ(file.GetLength(), 10u);
    file.Seek(8, CFile::begin);
    file.Write("ab", 2);
    EXPECT_THROW(file.Write("c", 1), CMemoryException) << "it cannot grow";
    file.SetLength(5);
    EXPECT_EQ(file.Detach(), reinterpret_cast<BYTE*>(block));
    file.Attach(reinterpret_cast<BYTE*>(block), 3);
    EXPECT_EQ(file.GetLength(), 3u);
  }
  EXPECT_STREQ(block, "01234567ab");
  CMemFile none(nullptr, 0);
  EXPECT_EQ(none.GetLength(), 0u);
  EXPECT_THROW(none.Attach(nullptr, 1), CInvalidArgException);
}

TEST(CMemFile, TakesAndGivesBlocks) {
  CMemFile file(static_cast<BYTE*>(std::malloc(4)), 4, 16);
  EXPECT_EQ(file.GetLength(), 0u) << "the block is room";
  file.Write("0123456789", 10);
  BYTE* pBlock = file.Detach();
  EXPECT_EQ(std::memcmp(pBlock, "0123456789", 10), 0);
  std::free(pBlock);
  EXPECT_EQ(file.GetLength(), 0u);
  file.Write("x", 1);
  CMemFile small(1);
  for (int i = 0; i < 200000; ++i) small.Write("x", 1);
  EXPECT_EQ(small.GetLength(), 200000u);
}

}  // namespace
