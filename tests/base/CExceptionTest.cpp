#include "base/CException.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

namespace {

// Each is caught by the platform's base, by the standard one, and by its own name.
template <class Exception, class Standard, class Raise>
std::string TextOf(Raise raise) {
  std::string text;
  try {
    raise();
    ADD_FAILURE() << "nothing was raised";
  } catch (const Exception& e) {
    text = e.what();
    EXPECT_EQ(text, static_cast<const CException&>(e).what());
    EXPECT_EQ(text, static_cast<const Standard&>(e).what());
  }
  EXPECT_THROW(raise(), CException);
  EXPECT_THROW(raise(), Standard);
  EXPECT_THROW(raise(), std::exception);
  EXPECT_FALSE(text.empty());
  return text;
}

TEST(CException, BelongsToBothFamilies) {
  TextOf<CInvalidArgException, std::exception>([] { AfxThrowInvalidArgException(); });
  TextOf<CMemoryException, std::bad_alloc>([] { AfxThrowMemoryException(); });
  const std::string file = TextOf<CFileException, std::exception>(
      [] { AfxThrowFileException(CFileException::diskFull, ENOSPC, "board.pcf"); });
  EXPECT_NE(file.find("board.pcf"), std::string::npos);
  EXPECT_NE(file.find("disk"), std::string::npos);
  const std::string archive = TextOf<CArchiveException, std::exception>(
      [] { AfxThrowArchiveException(CArchiveException::endOfFile, "a.bin"); });
  EXPECT_NE(archive.find("a.bin"), std::string::npos);
  const std::string ole = TextOf<COleException, std::exception>([] { AfxThrowOleException(0x80070216); });
  EXPECT_NE(ole.find("0x80070216"), std::string::npos);
}

TEST(CException, HasTextForEveryCause) {
  for (int nCause = -1; nCause <= CFileException::endOfFile + 1; ++nCause) {
    EXPECT_STRNE(CFileException(nCause, 0, "").what(), "");
  }
  for (int nCause = -1; nCause <= CArchiveException::badSchema + 1; ++nCause) {
    EXPECT_STRNE(CArchiveException(nCause, "").what(), "");
  }
  EXPECT_EQ(CArchiveException::readOnly, 2);
  EXPECT_EQ(CArchiveException::endOfFile, 3);
  EXPECT_EQ(CArchiveException::writeOnly, 4);
}

TEST(CException, TellsWhatTheSystemSaid) {
  struct Row {
    int nError, nCause;
  };
  for (const Row& row : {Row{0, CFileException::none},
                         {ENOENT, CFileException::fileNotFound},
                         {ENOTDIR, CFileException::badPath},
                         {EACCES, CFileException::accessDenied},
                         {EROFS, CFileException::accessDenied},
                         {EISDIR, CFileException::accessDenied},
                         {EMFILE, CFileException::tooManyOpenFiles},
                         {EBADF, CFileException::invalidFile},
                         {EIO, CFileException::hardIO},
                         {ENOSPC, CFileException::diskFull},
                         {EDQUOT, CFileException::diskFull},
                         {EFBIG, CFileException::diskFull},
                         {ESPIPE, CFileException::badSeek},
                         {ECHILD, CFileException::genericException}}) {
    EXPECT_EQ(CFileException::OsErrorToException(row.nError), row.nCause) << row.nError;
  }
  try {
    AfxThrowFileException(CFileException::accessDenied, EACCES, nullptr);
  } catch (const CFileException& e) {
    EXPECT_EQ(e.m_cause, CFileException::accessDenied);
    EXPECT_EQ(e.m_lOsError, EACCES);
    EXPECT_EQ(e.m_strFileName, "");
  }
}

TEST(CException, KeepsTheLineOfABadFile) {
  const CInvalidArgException e("\"pt\" has no value 2", 17);
  EXPECT_EQ(e.m_nLine, 17);
  EXPECT_STREQ(e.what(), "\"pt\" has no value 2");
  EXPECT_EQ(CInvalidArgException().m_nLine, 0);
}

}  // namespace
