#pragma once
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace laminate {

/// Changes of a text, collected in any order and made at once. Places are addresses in the text.
class SourceEdits {
 public:
  explicit SourceEdits(std::string_view text);

  std::string_view Text() const { return m_text; }
  /// How the lines of the text end, as its first one does.
  std::string_view LineEnd() const { return m_lineEnd; }
  bool IsEmpty() const { return m_edits.empty(); }

  /// What stands between two places gives way.
  void Replace(const char* begin, const char* end, std::string s);
  /// A form goes, with the lines that it has for itself.
  void Remove(const char* begin, const char* end);
  /// A form comes to stand behind what ends at a place, on lines of its own.
  void AddBehind(const char* place, std::string_view sIndent, std::string_view s);
  /// The same before what begins at a place.
  void AddBefore(const char* place, std::string_view s);

  /// The white space between the beginning of a place's line and the place; empty when something else stands there.
  std::string_view IndentAt(const char* place) const;

  /// To undo what was collected behind a mark.
  std::size_t Mark() const { return m_edits.size(); }
  void BackTo(std::size_t nMark) { m_edits.resize(nMark); }

  /// The text between two places with those changes that lie there and were collected behind a mark.
  std::string Apply(const char* begin, const char* end, std::size_t nMark) const;
  std::string Apply() const { return Apply(m_text.data(), m_text.data() + m_text.size(), 0); }

 private:
  struct Edit {
    const char* begin;
    const char* end;
    std::string text;
  };
  std::string_view m_text;
  std::string_view m_lineEnd;
  std::vector<Edit> m_edits;
};

}  // namespace laminate
