#include "reader/CECadCls.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/CException.h"
#include "base/FileSystem.h"
#include "base/HostInterface.h"
#include "reader/ByteScan.h"
#include "reader/FormReader.h"
#include "reader/LineReader.h"
#include "reader/RestOfLine.h"
#include "reader/TextParse.h"
#include "reader/TreeBuilder.h"

using laminate::Diagnostic;
using laminate::LineReader;
using laminate::LoadStatus;
using laminate::TreeBuilder;
using laminate::WithPlatformFailures;

namespace {

using Opened = TreeBuilder::Opened;

bool IsComment(std::string_view sLine) { return sLine.starts_with("//"); }

// The left trim of all but the whole-file parse: blanks, and then tabs.
std::string_view TrimLeft(std::string_view s) {
  s.remove_prefix(std::min(s.find_first_not_of(' '), s.size()));
  s.remove_prefix(std::min(s.find_first_not_of('\t'), s.size()));
  return s;
}

// Lines are counted in 32 bits; a text of more lines stays at the last number.
void CountLine(int& nLine) {
  if (nLine != std::numeric_limits<int>::max()) ++nLine;
}

int Column(std::size_t nInLine) {
  return static_cast<int>(std::min<std::size_t>(nInLine + 1, std::numeric_limits<int>::max()));
}

// Tells of a fault in the status, and to whom it may concern.
void Fault(CECadCls& reader, int nLine, int nColumn, const CString& sText) {
  reader.m_status.Set(LoadStatus::Result::notWellFormed, reader.m_sFileName, nLine, nColumn, sText);
  if (reader.m_pDiagnostics != nullptr) {
    reader.m_pDiagnostics->Add(Diagnostic::Severity::error, reader.m_sFileName, nLine, nColumn, sText);
  }
}
void Remark(CECadCls& reader, int nLine, int nColumn, const char* szText) {
  reader.m_pDiagnostics->Add(Diagnostic::Severity::warning, reader.m_sFileName, nLine, nColumn, szText);
}

constexpr char kClosedTooOften[] = "there is a closing bracket too many";
constexpr char kTooDeep[] = "forms nest deeper than 20 levels";
constexpr char kStringLeftOpen[] = "the string is not closed";
constexpr char kCommentInString[] = "a comment line inside a string is dropped";
constexpr char kTextLost[] = "text directly before an opening quote is lost";
constexpr char kTabInToken[] = "a tab does not separate tokens and is part of this one";

void LeftOpen(CECadCls& reader, const TreeBuilder& builder) {
  const TreeBuilder::Place form = builder.Innermost();
  Fault(reader, form.nLine, Column(form.nInLine),
        form.sName.empty() ? CString("the form is not closed")
                           : "the form \"" + CString(form.sName) + "\" is not closed");
}

void BadOpening(CECadCls& reader, Opened opened, int nLine, int nColumn) {
  if (opened == Opened::tooDeep) Fault(reader, nLine, nColumn, kTooDeep);
}

void ShowBadNesting(const CECadCls& reader, const TreeBuilder& builder) {
  using Limits = std::numeric_limits<int>;
  CString sText;
  sText.Format("Parser meet unexpected Brace Counting Number, %d at line number %d.!",
               static_cast<int>(std::clamp<std::int64_t>(builder.Level(), Limits::min(), Limits::max())),
               reader.m_nLineNo);
  AfxMessageBox(sText);
}

void CannotRead(CECadCls& reader, int nError) {
  const CFileException failure(CFileException::OsErrorToException(-nError), -nError, "cannot read the file");
  reader.m_status.Set(LoadStatus::Result::cannotOpen, reader.m_sFileName, 0, 0, failure.what());
  if (reader.m_pDiagnostics != nullptr) {
    reader.m_pDiagnostics->Add(Diagnostic::Severity::error, reader.m_sFileName, 0, 0, reader.m_status.m_sText);
  }
}

// Hosts may set the array of roots to null: a parse that adds to it then raises before it reads.
void RequireRoots(const CECadCls& reader) {
  if (reader.m_pRootArray == nullptr) AfxThrowInvalidArgException();
}

// What begins each parse.
void Restart(CECadCls& reader) {
  reader.m_nLineNo = 0;
  reader.m_status = LoadStatus();
}

// ---- the whole file ----

// One pass over the text, block by block. A token is a stretch of it; only a string that spans lines is put together
// elsewhere.
template <bool kDiagnose, bool kRanges = false>
class WholeFile {
  using Scan = laminate::ByteScan<' ', '(', ')', '"', '\n'>;

 public:
  WholeFile(CECadCls& reader, bool bQuoteEndsAtLineEnd, CECadClsLvlArray* pComplete)
      : m_reader(reader), m_bQuoteEndsAtLineEnd(bQuoteEndsAtLineEnd), m_builder(pComplete) {}

  TreeBuilder& Builder() { return m_builder; }
  // Where the forms stand goes here, each behind those in it. The text must be at hand as a whole.
  void TellRanges(std::string_view text, std::vector<laminate::FormRange>& ranges) requires kRanges {
    m_text = text.data();
    m_pRanges = &ranges;
  }

  // False when a bracket stops the parse.
  bool Read(LineReader& lines) {
    std::string_view block;
    m_bGoesOn = true;
    while (m_bGoesOn && lines.NextBlock(block)) {
      if (!Block(block)) return false;
      m_builder.KeepTokens(block);
    }
    if constexpr (kDiagnose) {
      if (m_bInString) Remark(m_reader, m_nStringLine, m_nStringColumn, kStringLeftOpen);
    }
    if (m_builder.Level() > 0) LeftOpen(m_reader, m_builder);
    return true;
  }

 private:
  bool Block(std::string_view block) {
    m_end = block.data() + block.size();
    Scan scan(block.data(), m_end);
    m_rest.Start({});
    const char* line = block.data();
    while (line != m_end) {
      CountLine(m_reader.m_nLineNo);
      m_line = line;
      if (*line == '/' && line[1] == '/') {
        if constexpr (kDiagnose) {
          if (m_bInString) Remark(m_reader, m_reader.m_nLineNo, 1, kCommentInString);
        }
        const char* p = scan.Next();
        while (p != m_end && *p != '\n') p = scan.Next();
        line = p == m_end ? p : p + 1;
        continue;
      }
      const char* lineEnd = Line(scan);
      if (lineEnd == nullptr) return false;
      if (m_reader.m_bStopAtFormEnd && m_reader.m_nLineNo != 1 && m_builder.Level() == 0) {
        m_bGoesOn = false;
        return true;
      }
      line = lineEnd == m_end ? lineEnd : lineEnd + 1;
    }
    return true;
  }

  // Handles the line from `m_line` on; gives its end, or null when a bracket stops the parse.
  const char* Line(Scan& scan) {
    m_first = m_line;
    if (m_bInString) {
      m_carried += '\n';
    } else {
      while (m_first != m_end && *m_first != '\n' && laminate::IsWhiteSpace(*m_first)) ++m_first;
    }
    const char* token = m_first;
    for (;;) {
      if (m_bInString) {
        token = String(scan, token);
        if (token == nullptr) return m_stringLineEnd;
        continue;
      }
      const char* p = scan.Next();
      if (p < token) continue;  // a blank that was trimmed
      switch (*p) {
        case ' ':
          Token(token, p);
          break;
        case '(': {
          Token(token, p);
          const Opened opened = m_builder.Open(m_reader.m_nLineNo, static_cast<std::size_t>(p - m_line));
          if (opened != Opened::ok) [[unlikely]] {
            BadOpening(m_reader, opened, m_reader.m_nLineNo, Column(static_cast<std::size_t>(p - m_line)));
            return nullptr;
          }
          if constexpr (kRanges) m_openAt.push_back(static_cast<std::size_t>(p - m_text));
          break;
        }
        case ')':
          Token(token, p);
          if constexpr (kRanges) {
            if (m_builder.Level() > 0) {
              m_pRanges->push_back({m_openAt.back(), static_cast<std::size_t>(p + 1 - m_text)});
              m_openAt.pop_back();
            }
          }
          m_builder.Close();
          if (m_builder.Level() == -1) [[unlikely]] {
            Fault(m_reader, m_reader.m_nLineNo, Column(static_cast<std::size_t>(p - m_line)), kClosedTooOften);
          }
          break;
        case '"':
          if (p != token && p[-1] == '\\') continue;  // taken literally: the token goes on
          if constexpr (kDiagnose) {
            if (p != token)
              Remark(m_reader, m_reader.m_nLineNo, Column(static_cast<std::size_t>(token - m_line)), kTextLost);
          }
          m_bInString = true;
          m_carried.clear();
          m_nStringLine = m_reader.m_nLineNo;
          m_nStringColumn = Column(static_cast<std::size_t>(p - m_line));
          break;
        default: {
          const char* end = ContentEnd(p);
          if (end > token) Token(token, end);
          LineEnds(end);
          return p;
        }
      }
      token = p + 1;
    }
  }

  // Goes on in a string whose text on this line begins at `text`; gives where the next token begins, or null at the
  // end of the line.
  const char* String(Scan& scan, const char* text) {
    const char* run = text;  // bytes from here on that are no quotes
    for (;;) {
      const char* p = scan.Next();
      if (p != m_end && *p != '"' && *p != '\n') continue;
      if (p == m_end || *p == '\n') {
        const char* end = ContentEnd(p);
        if (end > run) m_bEmbedded = false;
        m_carried.append(text, end);
        LineEnds(end);
        m_stringLineEnd = p;
        return nullptr;
      }
      if (p > run) m_bEmbedded = false;
      run = p + 1;
      const bool bFirst = p == m_first;
      if ((bFirst ? m_previous : p[-1]) != '\\' || (!bFirst && EndsDoubleByte(p - 1))) {
        // A quote that is the trail byte's successor leaves the mark of an embedded quote as it is.
        if (m_bEmbedded && (bFirst || !EndsDoubleByte(p - 1))) m_bEmbedded = false;
        CloseNormally(text, p);
        return p + 1;
      }
      const int nRest = FirstByteOfRest(text, p);
      if (nRest == ')') {
        Deliver(text, p);
        return p + 1;
      }
      if (nRest != laminate::RestOfLine::kNothing || !m_bQuoteEndsAtLineEnd) {
        m_bEmbedded = true;
        continue;
      }
      Deliver(text, p);
      if (m_bEmbedded) return p;  // the quote begins the next token
      m_builder.EmptyString();
      return p + 1;
    }
  }

  void CloseNormally(const char* text, const char* p) {
    if (text != p) {
      Deliver(text, p);
    } else if (m_carried.empty()) {
      m_builder.EmptyString();
      m_bInString = false;
    } else {
      m_carried += ' ';
      Deliver(text, p);
    }
  }
  void Deliver(const char* text, const char* p) {
    if (m_carried.empty()) {
      m_builder.Token({text, static_cast<std::size_t>(p - text)});
    } else {
      m_carried.append(text, p);
      m_builder.TokenToKeep(m_carried);
    }
    m_bInString = false;
  }

  // Whether the byte, a backslash or an embedded quote and so without a high bit, is the second one of a double-byte
  // character, whose first one has its high bit set. A stretch of such bytes begins with a first one, so counting back
  // tells.
  bool EndsDoubleByte(const char* p) const {
    const char* high = p;
    while (high != m_first && (high[-1] & 0x80) != 0) --high;
    return (p - high) % 2 != 0;
  }

  int FirstByteOfRest(const char* text, const char* quote) {
    if (m_rest.Line().data() != m_first) {
      const char* lineEnd = static_cast<const char*>(std::memchr(quote, '\n', static_cast<std::size_t>(m_end - quote)));
      m_rest.Start({m_first, ContentEnd(lineEnd == nullptr ? m_end : lineEnd)});
    }
    return m_rest.FirstByte(static_cast<std::size_t>(text - m_first), static_cast<std::size_t>(quote - m_first));
  }

  // Where the line's content ends whose end is at `p`: one CR belongs to a LF.
  const char* ContentEnd(const char* p) const { return p != m_end && p != m_first && p[-1] == '\r' ? p - 1 : p; }
  // "The previous byte" at the first byte of a later line.
  void LineEnds(const char* end) {
    if (end - m_first >= 2) m_previous = end[-2];
  }

  void Token(const char* token, const char* p) {
    const std::string_view s(token, static_cast<std::size_t>(p - token));
    if constexpr (kDiagnose) {
      const std::size_t nTab = s.find('\t');
      if (nTab != s.npos) {
        Remark(m_reader, m_reader.m_nLineNo, Column(static_cast<std::size_t>(token - m_line) + nTab), kTabInToken);
      }
    }
    m_builder.Token(s);
  }

  CECadCls& m_reader;
  const bool m_bQuoteEndsAtLineEnd;
  TreeBuilder m_builder;
  laminate::RestOfLine m_rest;
  bool m_bGoesOn = true;

  const char* m_end = nullptr;    // of the block
  const char* m_line = nullptr;   // where the line begins
  const char* m_first = nullptr;  // and where it begins when trimmed
  const char* m_stringLineEnd = nullptr;
  bool m_bInString = false;
  bool m_bEmbedded = false;
  char m_previous = '\0';
  std::string m_carried;  // what earlier lines hold of the string, line feeds included
  int m_nStringLine = 0;
  int m_nStringColumn = 0;

  const char* m_text = nullptr;  // where the ranges are counted from
  std::vector<std::size_t> m_openAt;
  std::vector<laminate::FormRange>* m_pRanges = nullptr;
};

// ---- one form ----

// The rules of the two parses that read one form, line by line.
template <bool kDiagnose>
class OneForm {
 public:
  OneForm(CECadCls& reader, LineReader& lines, CECadClsLvlArray* pComplete)
      : m_reader(reader), m_lines(lines), m_builder(pComplete) {}

  // The beginning of the first line from which a string goes on up to the file's end, as far as parses have found out.
  // Where a line begins, nothing but being in a string decides where that ends: what one parse found holds for all.
  void SetStringToEnd(std::uint64_t nOffset) { m_nStringToEnd = nOffset; }
  std::uint64_t StringToEnd() const { return m_nStringToEnd; }

  TreeBuilder& Builder() { return m_builder; }

  // Skips to the line that, trimmed, reads as the pattern; false when there is none.
  bool Find(std::string_view sPattern) {
    while (m_lines.Next(m_line)) {
      CountLine(m_reader.m_nLineNo);
      if (IsComment(m_line)) continue;
      std::string_view s = TrimLeft(m_line);
      s = s.substr(0, s.find_last_not_of(' ') + 1);
      if (s == sPattern) return true;
    }
    return false;
  }

  // Reads up to the first line behind the form, from the line at hand on or, without one, from the next line on.
  Opened Read(bool bLineAtHand) {
    while (bLineAtHand || NextLine()) {
      bLineAtHand = false;
      if (m_bClosed) break;
      const Opened opened = Line();
      if (opened != Opened::ok) return opened;
    }
    if constexpr (kDiagnose) {
      if (m_bInString) Remark(m_reader, m_nStringLine, m_nStringColumn, kStringLeftOpen);
    }
    if (m_bInString && !m_bClosed && m_lines.Error() == 0) m_nStringToEnd = std::min(m_nStringToEnd, m_nStringGoesOnAt);
    if (m_builder.Level() > 0) LeftOpen(m_reader, m_builder);
    return Opened::ok;
  }

 private:
  bool NextLine() {
    if (m_bInString) {
      const std::uint64_t nOffset = m_lines.Position();
      if (nOffset >= m_nStringToEnd) return false;
      m_nStringGoesOnAt = std::min(m_nStringGoesOnAt, nOffset);
    }
    while (m_lines.Next(m_line)) {
      CountLine(m_reader.m_nLineNo);
      if (!IsComment(m_line)) return true;
      if constexpr (kDiagnose) {
        if (m_bInString) Remark(m_reader, m_reader.m_nLineNo, 1, kCommentInString);
      }
    }
    return false;
  }

  Opened Line() {
    if (m_bInString) {
      m_token += '\n';
    } else {
      Deliver();
    }
    const std::string_view line = TrimLeft(m_line);
    const char* const end = line.data() + line.size();
    laminate::ByteScan<' ', '(', ')', '"', '\\'> scan(line.data(), end);
    const char* run = line.data();  // bytes from here on belong to the token
    for (;;) {
      const char* p = scan.Next();
      if (p < run) continue;
      if constexpr (kDiagnose) {
        const std::size_t nTab = std::string_view(run, p).find('\t');
        if (!m_bInString && nTab != std::string_view::npos) {
          Remark(m_reader, m_reader.m_nLineNo, ColumnOf(run + nTab), kTabInToken);
        }
      }
      m_token.append(run, p);
      if (p == end) return Opened::ok;
      run = p + 1;
      if (*p == '\\') {
        run = Backslashes(p, end);
      } else if (m_bInString) {
        InString(*p);
      } else if (*p == '"') {
        if constexpr (kDiagnose) {
          if (!m_token.empty()) Remark(m_reader, m_reader.m_nLineNo, ColumnOf(p), kTextLost);
        }
        m_bInString = true;
        m_nStringGoesOnAt = kNowhere;
        m_token.clear();
        m_nStringLine = m_reader.m_nLineNo;
        m_nStringColumn = ColumnOf(p);
      } else if (*p == '(') {
        Deliver();
        const Opened opened = m_builder.Open(m_reader.m_nLineNo, static_cast<std::size_t>(p - m_line.data()));
        if (opened != Opened::ok) {
          BadOpening(m_reader, opened, m_reader.m_nLineNo, ColumnOf(p));
          return opened;
        }
      } else if (*p == ')') {
        Deliver();
        if (m_builder.Close()) m_bClosed = true;
        if (m_builder.Level() == -1) Fault(m_reader, m_reader.m_nLineNo, ColumnOf(p), kClosedTooOften);
      } else {
        Deliver();
      }
    }
  }

  // Of the backslashes that stand before a quote and a closing bracket up to two are lost.
  const char* Backslashes(const char* p, const char* end) {
    const char* behind = std::find_if(p, end, [](char c) { return c != '\\'; });
    auto nCount = static_cast<std::size_t>(behind - p);
    if (end - behind >= 2 && behind[0] == '"' && behind[1] == ')') nCount -= std::min<std::size_t>(nCount, 2);
    m_token.append(nCount, '\\');
    return behind;
  }

  void InString(char c) {
    if (c != '"') {
      m_token += c;
    } else if (m_token.empty()) {
      m_token = " ";
      m_bInString = false;
    } else if (m_token.back() == '\\') {
      m_token += c;
    } else {
      m_bInString = false;
    }
  }

  void Deliver() {
    m_builder.TokenToKeep(m_token);
    m_token.clear();
  }
  int ColumnOf(const char* p) const { return Column(static_cast<std::size_t>(p - m_line.data())); }

  static constexpr std::uint64_t kNowhere = std::numeric_limits<std::uint64_t>::max();

  CECadCls& m_reader;
  LineReader& m_lines;
  TreeBuilder m_builder;
  std::string_view m_line;
  std::string m_token;
  bool m_bInString = false;
  bool m_bClosed = false;
  std::uint64_t m_nStringGoesOnAt = kNowhere;  // the beginning of the first line that begins in the string
  std::uint64_t m_nStringToEnd = kNowhere;
  int m_nStringLine = 0;
  int m_nStringColumn = 0;
};

}  // namespace

CECadCls::CECadCls() : m_pRootArray(new CECadClsLvlArray) {}
CECadCls::~CECadCls() { delete m_pRootArray; }

void CECadCls::vAddToken(CECadClsLvl* pNode, CString& sToken) {
  if (pNode == nullptr || sToken.IsEmpty()) return;
  const bool bName = pNode->m_sName.IsEmpty();
  if (bName) {
    pNode->m_sName = sToken;
  } else {
    // One blank is the parses' mark for an empty string.
    if (sToken == " ") sToken.Empty();
    pNode->m_arrValues.Add(sToken);
  }
}

namespace {

// What a parse that adds to the roots ends with: a file that could not be read to its end adds nothing.
int AddToRoots(CECadCls& reader, const LineReader& lines, CECadClsLvlArray& complete, const TreeBuilder& builder,
               bool bStopped) {
  if (lines.Error() != 0) {
    Restart(reader);
    CannotRead(reader, lines.Error());
    return 0;
  }
  reader.m_pRootArray->Append(complete);
  complete.SetSize(0, -1);
  if (bStopped) ShowBadNesting(reader, builder);
  return !bStopped && builder.Level() == 0 ? 0 : -1;
}

template <bool kDiagnose>
int ParseFile(CECadCls& reader, bool bQuoteEndsAtLineEnd) {
  LineReader lines(reader.m_sFileName);
  CECadClsLvlArray complete;
  WholeFile<kDiagnose> parse(reader, bQuoteEndsAtLineEnd, &complete);
  const bool bStopped = !parse.Read(lines);
  return AddToRoots(reader, lines, complete, parse.Builder(), bStopped);
}

template <bool kDiagnose>
int ParseNamedForm(CECadCls& reader, std::string_view sPattern) {
  LineReader lines(reader.m_sFileName);
  CECadClsLvlArray complete;
  OneForm<kDiagnose> parse(reader, lines, &complete);
  const bool bStopped = parse.Find(sPattern) && parse.Read(true) != Opened::ok;
  return AddToRoots(reader, lines, complete, parse.Builder(), bStopped);
}

template <bool kDiagnose>
std::unique_ptr<CECadClsLvl> ReadFormAt(CECadCls& reader, LineReader& lines, OneForm<kDiagnose>& parse) {
  const Opened opened = parse.Read(false);
  if (lines.Error() != 0) {
    Restart(reader);
    CannotRead(reader, lines.Error());
    return nullptr;
  }
  return opened == Opened::tooDeep ? nullptr : parse.Builder().TakeLast();
}

template <bool kDiagnose>
CECadClsLvl* ParseFormAt(CECadCls& reader, ULONGLONG nOffset) {
  LineReader lines(reader.m_sFileName, nOffset);
  OneForm<kDiagnose> parse(reader, lines, nullptr);
  return ReadFormAt(reader, lines, parse).release();
}

}  // namespace

int laminate::ParseText(CECadCls& reader, std::string_view text, std::vector<FormRange>* pRanges) {
  return WithPlatformFailures([&] {
    Restart(reader);
    LineReader lines = LineReader::OfText(text);
    const auto read = [&](auto& parse) { return parse.Read(lines) && parse.Builder().Level() == 0 ? 0 : -1; };
    if (pRanges == nullptr) {
      WholeFile<false> parse(reader, false, reader.m_pRootArray);
      return read(parse);
    }
    WholeFile<false, true> parse(reader, false, reader.m_pRootArray);
    parse.TellRanges(text, *pRanges);
    return read(parse);
  });
}

int CECadCls::nParseFile(int bQuoteEndsAtLineEnd) {
  return WithPlatformFailures([&] {
    RequireRoots(*this);
    Restart(*this);
    return m_pDiagnostics != nullptr ? ParseFile<true>(*this, bQuoteEndsAtLineEnd != 0)
                                     : ParseFile<false>(*this, bQuoteEndsAtLineEnd != 0);
  });
}

int CECadCls::nParseNamedForm(CString sName) {
  return WithPlatformFailures([&] {
    RequireRoots(*this);
    Restart(*this);
    const CString sPattern = "(" + sName;
    return m_pDiagnostics != nullptr ? ParseNamedForm<true>(*this, sPattern.View())
                                     : ParseNamedForm<false>(*this, sPattern.View());
  });
}

CECadClsLvl* CECadCls::pParseFormAt(ULONGLONG nOffset) {
  return WithPlatformFailures([&] {
    Restart(*this);
    return m_pDiagnostics != nullptr ? ParseFormAt<true>(*this, nOffset) : ParseFormAt<false>(*this, nOffset);
  });
}

std::unique_ptr<CECadClsLvl> laminate::FormReader::At(ULONGLONG nOffset) {
  return WithPlatformFailures([&] {
    Restart(m_reader);
    if (!m_lines || !m_lines->GoTo(nOffset)) m_lines.emplace(m_reader.m_sFileName, nOffset);
    OneForm<false> parse(m_reader, *m_lines, nullptr);
    parse.SetStringToEnd(m_nStringToEnd);
    std::unique_ptr<CECadClsLvl> pForm = ReadFormAt(m_reader, *m_lines, parse);
    m_nStringToEnd = parse.StringToEnd();
    return pForm;
  });
}

void CECadCls::vCollectFormOffsets(CString sKeyword, CStringArray& arrNames) {
  WithPlatformFailures([&] {
    Restart(*this);
    m_arrOffset.SetSize(0);
    const CString sPattern = "(" + sKeyword;
    // A name that is wanted twice gives its offset twice.
    std::unordered_map<std::string_view, int> wanted;
    for (const CString& sName : arrNames) ++wanted[sName.View()];
    LineReader lines(m_sFileName);
    std::string_view line;
    while (lines.Next(line)) {
      CountLine(m_nLineNo);
      if (IsComment(line)) continue;
      const std::string_view s = TrimLeft(line);
      const std::size_t nBlank = s.find(' ');
      if (nBlank == s.npos || s.substr(0, nBlank) != sPattern.View()) continue;
      const auto it = wanted.find(s.substr(nBlank + 1));
      // Behind a last line without an end this lands one byte before the line.
      if (it == wanted.end() || lines.Position() < line.size() + 1) continue;
      for (int i = 0; i < it->second; ++i) m_arrOffset.Add(lines.Position() - (line.size() + 1));
    }
    if (lines.Error() != 0) {
      Restart(*this);
      m_arrOffset.SetSize(0);
      CannotRead(*this, lines.Error());
    }
  });
}
