#include "export/CExportFormatter.h"

#include <algorithm>
#include <cstdarg>
#include <string>

#include "base/FileSystem.h"
#include "base/HostInterface.h"

namespace laminate {
namespace {

constexpr std::size_t kBuffer = 1024;  // of the reads and of a line: 1023 bytes and an end

std::string_view TrimmedView(std::string_view s) {
  constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";
  const std::size_t first = s.find_first_not_of(kWhiteSpace);
  if (first == std::string_view::npos) return {};
  return s.substr(first, s.find_last_not_of(kWhiteSpace) - first + 1);
}

void Indent(TextOut& out, long long nBlanks) {
  constexpr std::string_view kBlanks = "                                                                ";
  for (; nBlanks > 0; nBlanks -= static_cast<long long>(kBlanks.size())) {
    out.Bytes(kBlanks.substr(0, static_cast<std::size_t>(nBlanks)));
  }
}

// Makes "%%" to "%" and ends the text at its first NUL, as the expansion of a format does.
std::string_view Expand(std::string_view s, char (&buffer)[kBuffer]) {
  s = s.substr(0, s.find('\0'));
  if (s.find('%') == std::string_view::npos) return s;
  std::size_t n = 0;
  for (std::size_t i = 0; i < s.size(); ++i) {
    buffer[n++] = s[i];
    if (s[i] == '%' && i + 1 < s.size() && s[i + 1] == '%') ++i;
  }
  return {buffer, n};
}

// Wraps around where a level or a line number leaves its range, for a host may set them to any value.
int Moved(int n, std::ptrdiff_t nSteps) {
  return static_cast<int>(static_cast<unsigned>(n) + static_cast<unsigned>(nSteps));
}

}  // namespace

void Indenter::Line(TextOut& out, std::string_view sLine) const {
  nLineNo = Moved(nLineNo, 1);
  if (!sLine.empty() && sLine.front() == ' ') {
    CString sText;
    sText.Format("CExportFormatter::Print() error!, Line No : %d !!", nLineNo);
    AfxMessageBox(sText);
  }
  const std::string_view sTrimmed = TrimmedView(sLine);
  bCloserOnly = sTrimmed == ")" ? 1 : 0;
  if (bCloserOnly) nLevel = Moved(nLevel, -1);
  Indent(out, static_cast<long long>(nLevel) * nIndentWidth);
  out.Print<"%s\n">(sTrimmed);
  nLevel = Moved(nLevel, std::count(sTrimmed.begin(), sTrimmed.end(), '(') -
                             std::count(sTrimmed.begin(), sTrimmed.end(), ')') +
                             bCloserOnly);  // a lone ")" has been counted twice
}

void Indenter::AllLines(TextOut& out, std::string_view sText) const {
  char piece[kBuffer];
  char expanded[kBuffer];
  while (!sText.empty()) {
    // One read: up to and with the line's end, two bytes of which count as one, and at most 1023 bytes. A line end
    // farther off is none of this read's.
    const std::string_view sAhead = sText.substr(0, kBuffer);
    std::string_view sLine = sAhead.substr(0, std::min(sAhead.find('\n'), sAhead.size() - 1) + 1);
    std::string_view sRead;
    if (sLine.ends_with("\r\n") && sLine.size() <= kBuffer) {
      std::copy_n(sLine.begin(), sLine.size() - 2, piece);
      piece[sLine.size() - 2] = '\n';
      sRead = std::string_view(piece, sLine.size() - 1);
    } else {
      sLine = sLine.substr(0, kBuffer - 1);
      sRead = sLine;
    }
    sText.remove_prefix(sLine.size());
    Line(out, Expand(sRead, expanded));
  }
}

void IndentText(TextOut& out, std::string_view sText, int nIndentWidth) {
  int nLevel = 0;
  int bCloserOnly = 0;
  int nLineNo = 0;
  Indenter{nLevel, nIndentWidth, bCloserOnly, nLineNo}.AllLines(out, sText);
}

}  // namespace laminate

CExportFormatter::CExportFormatter(CString sFileName, int nIndentWidth)
    : m_sFileName(sFileName), m_sBackupName(sFileName + ".bak~"), m_nIndentWidth(nIndentWidth) {
  laminate::FileSystem& fileSystem = laminate::TheFileSystem();
  fileSystem.Rename(m_sFileName, m_sBackupName);
  m_fpOut = laminate::OpenStreamForWriting(m_sFileName);
  if (m_fpOut == nullptr) return;
  try {
    std::string sText;
    if (laminate::ReadWholeFile(m_sBackupName, sText) != 0) return;
    laminate::TextOut out(m_fpOut);
    laminate::Indenter{m_nLevel, m_nIndentWidth, m_bCloserOnly, m_nLineNo}.AllLines(out, sText);
    // On a full disk the backup is the only whole text.
    if (out.Flush() && std::fflush(m_fpOut) == 0) fileSystem.Remove(m_sBackupName);
  } catch (...) {
    std::fclose(m_fpOut);
    throw;
  }
}

CExportFormatter::~CExportFormatter() {
  if (m_fpOut != nullptr) std::fclose(m_fpOut);
}

void CExportFormatter::Print(const char* szFormat, ...) {
  CString sLine;
  std::va_list args;
  va_start(args, szFormat);
  sLine.FormatV(szFormat, args);
  va_end(args);
  laminate::TextOut out(m_fpOut);
  laminate::Indenter{m_nLevel, m_nIndentWidth, m_bCloserOnly, m_nLineNo}.Line(
      out, sLine.CView().substr(0, laminate::kBuffer - 1));
  out.Flush();
}
