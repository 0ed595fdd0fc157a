#pragma once
// The rules of the reader and the splitters once more, said as plainly as they can be: byte by byte, a std::string per
// token, a new per node, copies of lines. The tests hold the library against it, and the benchmarks take it as the
// measure of what the plain way costs.
#include <algorithm>
#include <cstdio>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace plain {

struct Node {
  std::string name;
  std::vector<std::string> values;
  std::vector<std::unique_ptr<Node>> children;
  int level = 0;
  int line = 0;
};
using Nodes = std::vector<std::unique_ptr<Node>>;

struct Parsed {
  int result = 0;
  Nodes roots;
  std::vector<std::string> messages;
  int lineNo = 0;
};

// The lines of a text without their ends, which are LF or CR LF.
class Lines {
 public:
  explicit Lines(const std::string& text) : m_text(text) {}
  bool Next(std::string& line) {
    if (m_at >= m_text.size()) return false;
    std::size_t n = m_text.find('\n', m_at);
    if (n == std::string::npos) {
      line = m_text.substr(m_at);
      m_at = m_text.size();
      return true;
    }
    line = m_text.substr(m_at, n - m_at);
    m_at = n + 1;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    return true;
  }
  std::size_t Position() const { return m_at; }

 private:
  const std::string& m_text;
  std::size_t m_at = 0;
};

inline bool IsWhite(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
inline void TrimLeft(std::string& s) {
  std::size_t n = 0;
  while (n < s.size() && IsWhite(s[n])) ++n;
  s.erase(0, n);
}
inline void TrimRight(std::string& s) {
  while (!s.empty() && IsWhite(s.back())) s.pop_back();
}
inline void TrimLeft(std::string& s, char c) {
  std::size_t n = 0;
  while (n < s.size() && s[n] == c) ++n;
  s.erase(0, n);
}
inline void TrimRight(std::string& s, char c) {
  while (!s.empty() && s.back() == c) s.pop_back();
}
inline bool StartsWith(const std::string& s, const std::string& prefix) {
  return s.compare(0, prefix.size(), prefix) == 0;
}
inline void ReplaceAll(std::string& s, const std::string& from, const std::string& to) {
  std::string out;
  std::size_t at = 0;
  for (;;) {
    const std::size_t n = s.find(from, at);
    if (n == std::string::npos) break;
    out += s.substr(at, n - at);
    out += to;
    at = n + from.size();
  }
  out += s.substr(at);
  s = out;
}

// What the three parses share.
struct Builder {
  enum class Depth { ok, tooDeep, negative };

  int level = 0;
  int lineNo = 0;
  std::string token;
  std::unique_ptr<Node> table[21];
  Nodes closed;

  Node* Current() { return level >= 1 && level <= 20 ? table[level].get() : nullptr; }
  void AddToken(std::string s) {
    Node* node = Current();
    if (s.empty() || node == nullptr) return;
    if (node->name.empty()) {
      node->name = s;
      return;
    }
    if (s == " ") s = "";
    node->values.push_back(s);
  }
  void Deliver() {
    AddToken(token);
    token.clear();
  }
  Depth Open() {
    const int before = level;
    if (before < 0) {
      ++level;
      return Depth::negative;
    }
    if (before > 19) {
      ++level;
      return Depth::tooDeep;
    }
    if (!token.empty()) AddToken(token);
    ++level;
    table[level] = std::make_unique<Node>();
    table[level]->level = level;
    table[level]->line = lineNo;
    token.clear();
    return Depth::ok;
  }
  // True when a top-level form closed.
  bool Close() {
    AddToken(token);
    std::unique_ptr<Node> node;
    if (level >= 1) node = std::move(table[level]);
    --level;
    token.clear();
    if (level < 0) return false;
    if (level == 0) {
      closed.push_back(std::move(node));
      return true;
    }
    table[level]->children.push_back(std::move(node));
    return false;
  }
  std::string Message() const {
    char text[200];
    std::snprintf(text, sizeof text, "Parser meet unexpected Brace Counting Number, %d at line number %d.!", level,
                  lineNo);
    return text;
  }
};

inline Parsed ParseFile(const std::string& text, bool quoteEndsAtLineEnd = false, bool stopAtFormEnd = false) {
  Parsed parsed;
  Builder b;
  bool inString = false;
  bool embedded = false;
  char previous = '\0';
  bool first = true;
  std::vector<int> classes;
  std::string stringText;
  std::string line;
  Lines lines(text);
  const auto end = [&](int result) {
    parsed.result = result;
    parsed.roots = std::move(b.closed);
    parsed.lineNo = b.lineNo;
  };
  while (lines.Next(line)) {
    classes.clear();
    stringText.clear();
    bool isFirst = first;
    first = false;
    if (StartsWith(line, "//")) {
      ++b.lineNo;
      continue;
    }
    if (!inString) {
      b.Deliver();
      TrimLeft(line);
    } else {
      b.token += '\n';
    }
    ++b.lineNo;
    bool lead = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
      const char c = line[i];
      if (lead) {
        classes.push_back(-1);
        lead = false;
      } else if ((c & 0x80) != 0) {
        classes.push_back(-1);
        lead = true;
      } else {
        classes.push_back(+1);
      }
      int previousClass = +1;
      if (i > 0) {
        previous = line[i - 1];
        previousClass = classes[i - 1];
      }
      if (!inString) {
        if (c == '"') {
          if (!b.token.empty() && b.token.back() == '\\') {
            b.token += c;
          } else {
            inString = true;
            b.token.clear();
            stringText.clear();
          }
        } else if (c == '(') {
          if (b.Open() != Builder::Depth::ok) {
            parsed.messages.push_back(b.Message());
            end(-1);
            return parsed;
          }
        } else if (c == ')') {
          b.Close();
        } else if (c == ' ') {
          b.Deliver();
        } else {
          b.token += c;
        }
        continue;
      }
      stringText += c;
      if (c != '"') {
        b.token += c;
        embedded = false;
        continue;
      }
      const auto normalClose = [&] {
        if (b.token.empty() || stringText == "\"") b.token += ' ';
        b.Deliver();
        inString = false;
      };
      if (previousClass == -1) {
        normalClose();
        continue;
      }
      if (previous != '\\') {
        embedded = false;
        normalClose();
        continue;
      }
      std::string rest = line;
      rest.erase(0, rest.find(stringText));
      ReplaceAll(rest, stringText, "");
      if (!rest.empty() && rest[0] == ')') {
        b.Deliver();
        inString = false;
      } else if (!rest.empty() || !quoteEndsAtLineEnd) {
        b.token += c;
        embedded = true;
      } else {
        b.Deliver();
        inString = false;
        if (embedded) {
          b.token += '"';
        } else {
          normalClose();
        }
      }
    }
    if (stopAtFormEnd && !isFirst && b.level == 0) {
      end(0);
      return parsed;
    }
  }
  end(b.level == 0 ? 0 : -1);
  return parsed;
}

enum class Byte { ok, tooDeep, negative };

// The byte rules of the two parses that read one form. Sets `closed` when a top-level form closes.
inline Byte SimpleLine(Builder& b, bool& inString, bool& closed, std::string line) {
  if (inString) {
    b.token += '\n';
  } else {
    b.Deliver();
  }
  TrimLeft(line, ' ');
  TrimLeft(line, '\t');
  ReplaceAll(line, "\\\")", "\")");
  ReplaceAll(line, "\\\")", "\")");
  for (char c : line) {
    if (inString) {
      if (c != '"') {
        b.token += c;
      } else if (b.token.empty()) {
        b.token = " ";
        inString = false;
      } else if (b.token.back() == '\\') {
        b.token += c;
      } else {
        inString = false;
      }
    } else if (c == '"') {
      inString = true;
      b.token.clear();
    } else if (c == '(') {
      const Builder::Depth depth = b.Open();
      if (depth == Builder::Depth::tooDeep) return Byte::tooDeep;
      if (depth == Builder::Depth::negative) return Byte::negative;
    } else if (c == ')') {
      if (b.Close()) closed = true;
    } else if (c == ' ') {
      b.Deliver();
    } else {
      b.token += c;
    }
  }
  return Byte::ok;
}

inline Parsed ParseNamedForm(const std::string& text, const std::string& name) {
  Parsed parsed;
  Builder b;
  const std::string pattern = "(" + name;
  bool found = false;
  bool inString = false;
  bool closed = false;
  std::string line;
  Lines lines(text);
  parsed.result = 2;
  while (parsed.result == 2 && lines.Next(line)) {
    ++b.lineNo;
    if (StartsWith(line, "//")) continue;
    if (!found) {
      std::string trimmed = line;
      TrimLeft(trimmed, ' ');
      TrimLeft(trimmed, '\t');
      TrimRight(trimmed, ' ');
      if (trimmed != pattern) continue;
      found = true;
    }
    if (closed) break;
    if (SimpleLine(b, inString, closed, line) != Byte::ok) {
      parsed.messages.push_back(b.Message());
      parsed.result = -1;
    }
  }
  if (parsed.result == 2) parsed.result = b.level == 0 ? 0 : -1;
  parsed.roots = std::move(b.closed);
  parsed.lineNo = b.lineNo;
  return parsed;
}

// The result is the last root, or none.
inline Parsed ParseFormAt(const std::string& text, std::size_t offset) {
  Parsed parsed;
  if (offset >= text.size()) return parsed;
  const std::string part = text.substr(offset);
  Builder b;
  bool inString = false;
  bool closed = false;
  std::string line;
  Lines lines(part);
  while (lines.Next(line)) {
    ++b.lineNo;
    if (StartsWith(line, "//")) continue;
    if (closed) break;
    const Byte byte = SimpleLine(b, inString, closed, line);
    if (byte == Byte::tooDeep) b.closed.clear();
    if (byte != Byte::ok) break;
  }
  if (!b.closed.empty()) {
    parsed.roots.push_back(std::move(b.closed.back()));
  }
  parsed.lineNo = b.lineNo;
  return parsed;
}

inline std::vector<unsigned long long> CollectFormOffsets(const std::string& text, const std::string& keyword,
                                                          const std::vector<std::string>& names) {
  std::vector<unsigned long long> offsets;
  const std::string pattern = "(" + keyword;
  std::string line;
  Lines lines(text);
  while (lines.Next(line)) {
    if (StartsWith(line, "//")) continue;
    const std::string raw = line;
    TrimLeft(line, ' ');
    TrimLeft(line, '\t');
    const std::size_t blank = line.find(' ');
    if (blank == std::string::npos) continue;
    if (line.substr(0, blank) != pattern) continue;
    const std::string value = line.substr(blank + 1);
    for (const std::string& name : names) {
      if (value != name) continue;
      const long long offset = static_cast<long long>(lines.Position()) - static_cast<long long>(raw.size() + 1);
      if (offset >= 0) offsets.push_back(static_cast<unsigned long long>(offset));
    }
  }
  return offsets;
}

inline int BraceCount(std::string line, int& inQuote) {
  TrimRight(line);
  TrimLeft(line);
  int count = 0;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    if (c == '"' && (i == 0 || line[i - 1] != '\\')) {
      inQuote = !inQuote;
    } else if (c == '"') {
      if (i + 2 == line.size() && line[i + 1] == ')' && inQuote) inQuote = 0;
    }
    if (c == '(' && !inQuote) ++count;
    if (c == ')' && !inQuote) --count;
  }
  return count;
}

struct Split {
  int inQuote = 0;
  int components = 0;  // the root's counts
  int layers = 0;
  std::map<std::string, std::string> files;       // by name, in the working folder
  std::map<std::string, std::vector<int>> lines;  // per file: the source's line of each of its lines
};

namespace detail {

// A line of a piece: a text that ends in a CR keeps it by another one, since CR LF ends a line.
inline std::string AsLine(const std::string& line) {
  return line + (!line.empty() && line.back() == '\r' ? "\r\n" : "\n");
}

struct Section {
  std::string pieceName;  // without number and ending
  std::string wanted;
  int wantedDepth;
  int section = 0;  // depth at which the section stands; 0 outside
  int form = 0;     // depth at which the open piece stands; 0 when none is open
  int counter = 0;
  std::string open = {};  // name of the open piece

  void Line(const std::string& line, const std::string& trimmed, int depth, int lineNo, Split& split, int* count) {
    if (StartsWith(trimmed, wanted) && depth == wantedDepth) {
      ++counter;
      open = pieceName + std::to_string(counter) + ".txt";
      split.files[open] = "";
      split.lines[open].clear();
      form = depth;
    }
    if (form > 0) {
      split.files[open] += AsLine(line);
      split.lines[open].push_back(lineNo);
      if (depth == form - 1) form = 0;
    }
    if (depth == section - 1) {
      if (count != nullptr) *count = counter;
      section = 0;
    }
  }
};

}  // namespace detail

inline void SplitBoardFile(const std::string& text, Split& split) {
  detail::Section components{"component", "(component", 4};
  detail::Section layers{"layer", "(layer", 5};
  int depth = 0;
  int lineNo = 0;
  split.files["others.txt"] = "";
  split.lines["others.txt"].clear();
  std::string line;
  Lines lines(text);
  while (lines.Next(line)) {
    ++lineNo;
    depth += BraceCount(line, split.inQuote);
    std::string trimmed = line;
    TrimLeft(trimmed);
    TrimRight(trimmed);
    if (StartsWith(trimmed, "(components")) {
      components.section = depth;
    } else if (StartsWith(trimmed, "(boardLayout")) {
      layers.section = depth;
    } else if (components.section > 0) {
      components.Line(line, trimmed, depth, lineNo, split, &split.components);
    } else if (layers.section > 0) {
      layers.Line(line, trimmed, depth, lineNo, split, &split.layers);
    } else {
      split.files["others.txt"] += detail::AsLine(line);
      split.lines["others.txt"].push_back(lineNo);
    }
  }
}

inline void SplitFootprintFile(const std::string& text, Split& split) {
  detail::Section padstacks{"PadStack", "(padstack", 4};
  detail::Section footprints{"Footprint", "(footprint", 4};
  int depth = 0;
  int lineNo = 0;
  std::string line;
  Lines lines(text);
  while (lines.Next(line)) {
    ++lineNo;
    depth += BraceCount(line, split.inQuote);
    std::string trimmed = line;
    TrimLeft(trimmed);
    TrimRight(trimmed);
    if (StartsWith(trimmed, "(padstacks")) {
      padstacks.section = depth;
    } else if (trimmed.substr(0, 12) == "(footprints") {
      footprints.section = depth;
    } else if (padstacks.section > 0) {
      padstacks.Line(line, trimmed, depth, lineNo, split, nullptr);
    } else if (footprints.section > 0) {
      footprints.Line(line, trimmed, depth, lineNo, split, nullptr);
    }
  }
}

}  // namespace plain
