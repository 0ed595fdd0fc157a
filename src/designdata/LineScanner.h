#pragma once
// The package, parts and component-database files are read line by line: what a line means depends on its first column
// and on the block that is open. A scanner is a class with an enum of those blocks and a table of transitions; this
// engine cuts each line into its columns once, finds the row, runs its action and goes to the next block.
//
// A keyword stands first on its line, and so does a ")" that closes a block. Keywords match whole, with their opening
// bracket. A line that no row takes is skipped.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/CString.h"
#include "base/LoadStatus.h"
#include "base/Number.h"
#include "designdata/FileRemarks.h"
#include "designdata/NameReferences.h"

namespace laminate {

/// A line of such a file with its columns, which are cut as far as they are asked for.
class ScannedLine {
 public:
  /// Takes a line without its end. False when nothing but white space is in it.
  bool Take(std::string_view sLine, int nNumber);

  /// Where the line's text begins, for remarks.
  const TextPlace& Place() const { return m_place; }
  /// The line without its leading white space; trailing blanks are still there.
  std::string_view Text() const { return m_sText; }
  /// Column `n`, from 1; empty for 0 and beyond the last.
  std::string_view Column(std::size_t n) const { return n - 1 < m_columns.size() ? m_columns[n - 1] : Cut(n); }
  /// A column without the brackets that close its forms.
  std::string_view TrimmedColumn(std::size_t n) const {
    std::string_view s = Column(n);
    while (s.ends_with(')')) s.remove_suffix(1);
    return s;
  }
  int Integer(std::size_t n) const { return Atoi(Column(n)); }
  bool Contains(std::string_view s) const { return m_sText.find(s) != std::string_view::npos; }
  /// What the line ends in, trailing blanks included: a blank behind a bracket makes a difference.
  bool EndsIn(std::string_view s) const { return m_sText.ends_with(s); }
  bool HasOpenQuote() const { return std::count(m_sText.begin(), m_sText.end(), '"') % 2 != 0; }

 private:
  std::string_view Cut(std::size_t n) const;

  std::string_view m_sText;
  TextPlace m_place;
  mutable std::string_view m_sUncut;  // what no column is cut of yet
  mutable std::vector<std::string_view> m_columns;
};

/// What an action says of its line.
enum class Outcome {
  next,     ///< done: the row's next block is entered
  stays,    ///< done, but the block stays
  noRecord  ///< there is no record for the line to act on: it is skipped
};

/// Number of columns by blanks alone, without any notion of quotes; an empty text counts as one. The count ends at a
/// hundred: for more columns the result is the position, from 0, of the hundredth blank in what is left behind the
/// ninety-ninth.
std::size_t CountColumns(std::string_view s);

/// Stands for the first column of all lines of a block that no other row takes.
inline constexpr std::string_view kAnythingElse{};

/// A row of a scanner's table.
template <class Scanner>
struct Transition {
  using State = typename Scanner::State;
  using Action = Outcome (Scanner::*)(const ScannedLine&);

  std::optional<State> state;   ///< the open block; none: the row counts in every one and is tried first
  std::string_view column;      ///< the first column
  Action action = nullptr;      ///< none: the line has no effect but the transition
  std::optional<State> next{};  ///< none: the block stays
};

/// The rows of a scanner with an index over block and keyword.
template <class Scanner, std::size_t N>
class TransitionTable {
 public:
  using Row = Transition<Scanner>;
  using State = typename Scanner::State;

  consteval explicit TransitionTable(const Row (&rows)[N]) {
    for (std::size_t i = 0; i < N; ++i) {
      m_rows[i] = rows[i];
      const auto n = static_cast<std::uint8_t>(i + 1);
      if (rows[i].column.data() == nullptr) {
        m_else[static_cast<std::size_t>(*rows[i].state)] = n;
        continue;
      }
      std::size_t slot = Hash(rows[i].state, rows[i].column);
      while (m_slots[slot] != 0) slot = (slot + 1) % kSlots;
      m_slots[slot] = n;
    }
  }

  const std::array<Row, N>& Rows() const { return m_rows; }

  /// The row that takes a line, or null.
  const Row* Find(State state, std::string_view column) const {
    if (const Row* p = Exact(std::nullopt, column)) return p;
    if (const Row* p = Exact(state, column)) return p;
    const std::size_t n = m_else[static_cast<std::size_t>(state)];
    return n == 0 ? nullptr : &m_rows[n - 1];
  }

 private:
  static_assert(N < 100);
  static constexpr std::size_t kSlots = 256;
  static constexpr std::size_t kMaxStates = 16;

  static constexpr std::size_t Hash(std::optional<State> state, std::string_view column) {
    const std::size_t nState = state.has_value() ? static_cast<std::size_t>(*state) + 1 : 0;
    if (column.empty()) return nState;
    const auto byte = [column](std::size_t i) {
      return static_cast<std::size_t>(static_cast<unsigned char>(column[i]));
    };
    return (nState * 37 + column.size() * 7 + byte(column.size() / 2) * 5 + byte(column.size() - 1) * 3) % kSlots;
  }
  const Row* Exact(std::optional<State> state, std::string_view column) const {
    for (std::size_t slot = Hash(state, column); m_slots[slot] != 0; slot = (slot + 1) % kSlots) {
      const Row& row = m_rows[m_slots[slot] - 1u];
      if (row.state == state && row.column == column) return &row;
    }
    return nullptr;
  }

  std::array<Row, N> m_rows{};
  std::array<std::uint8_t, kSlots> m_slots{};
  std::array<std::uint8_t, kMaxStates> m_else{};
};

template <class Scanner, std::size_t N>
consteval TransitionTable<Scanner, N> MakeTransitions(const Transition<Scanner> (&rows)[N]) {
  return TransitionTable<Scanner, N>(rows);
}

/// The record that lines act on. It is the scanner's own until it enters its array, and stays current behind that.
template <class T>
class CurrentRecord {
 public:
  /// A new record takes the place of the present one, which is freed if it entered no array.
  T& Make(const ScannedLine& line) {
    m_pOwn = std::make_unique<T>();
    m_p = m_pOwn.get();
    m_place = line.Place();
    return *m_p;
  }
  /// Appends the record, once: false when it was appended before.
  template <class Array>
  bool Enter(Array& arr) {
    if (m_pOwn == nullptr) return false;
    arr.Add(m_p);
    m_pOwn.release();
    return true;
  }
  void Forget() {
    m_pOwn.reset();
    m_p = nullptr;
  }
  explicit operator bool() const { return m_p != nullptr; }
  T* operator->() const { return m_p; }
  T& operator*() const { return *m_p; }
  /// Whether it entered no array yet.
  bool IsOpen() const { return m_pOwn != nullptr; }
  /// Where it was opened.
  const TextPlace& Place() const { return m_place; }

 private:
  std::unique_ptr<T> m_pOwn;
  T* m_p = nullptr;
  TextPlace m_place;
};

/// What a scan has around it: the file, and where remarks go.
class ScanReport {
 public:
  ScanReport(const CString& sFile, Diagnostics* pDiagnostics, NameReferences* pReferences)
      : m_sFile(sFile), m_remarks(sFile, pDiagnostics), m_pReferences(pReferences) {}

  bool IsWanted() const { return m_remarks.IsWanted(); }
  /// The block that was opened there is lost or ends otherwise than by its closing line.
  void NotClosed(const TextPlace& place, std::string_view sWhat, const CString& sName, std::string_view sEffect) const;
  /// What the line says is lost, or means something else than it seems to.
  void Warn(const ScannedLine& line, std::string_view sReason) const;
  /// No row takes the line.
  void Skipped(const ScannedLine& line, std::string_view sWhere) const;
  /// The line acts on a record, and there is none.
  void OnNothing(const ScannedLine& line) const;
  /// The line acts on a record that was closed before.
  void BehindEnd(const ScannedLine& line) const;
  void Defines(NameKind kind, const TextPlace& place, std::string_view sName) const {
    if (m_pReferences != nullptr) m_pReferences->Define(kind, sName, {m_sFile, place});
  }
  void RefersTo(NameKind kind, const TextPlace& place, std::string_view sName) const {
    if (m_pReferences != nullptr) m_pReferences->Refer(kind, sName, {m_sFile, place});
  }

 private:
  void Add(Diagnostic::Severity severity, const TextPlace& place, std::string_view sReason) const {
    m_remarks.Add(severity, place.line, place.column, sReason);
  }

  CString m_sFile;
  mutable FileRemarks m_remarks;
  NameReferences* m_pReferences;
};

/// Calls `take(line, number)` for each line of a text; LF and CR LF end a line. Lines beyond the largest number have
/// it.
template <class Take>
void ForEachLine(std::string_view sText, Take&& take) {
  int nNumber = 0;
  while (!sText.empty()) {
    const std::size_t n = sText.find('\n');
    std::string_view sLine = sText.substr(0, n);
    sText.remove_prefix(n == std::string_view::npos ? sText.size() : n + 1);
    if (n != std::string_view::npos && sLine.ends_with('\r')) sLine.remove_suffix(1);
    if (nNumber < std::numeric_limits<int>::max()) ++nNumber;
    take(sLine, nNumber);
  }
}

/// Runs a scanner over a text by its table. `Scanner` has `State`, `m_state`, and `Describe(state)` for remarks.
template <class Scanner, std::size_t N>
void ScanText(const TransitionTable<Scanner, N>& transitions, Scanner& scanner, std::string_view sText,
              const ScanReport& report) {
  ScannedLine line;
  ForEachLine(sText, [&](std::string_view sLine, int nNumber) {
    if (!line.Take(sLine, nNumber)) return;
    const Transition<Scanner>* pRow = transitions.Find(scanner.m_state, line.Column(1));
    if (pRow == nullptr) {
      if (report.IsWanted()) report.Skipped(line, Scanner::Describe(scanner.m_state));
      return;
    }
    if (pRow->action != nullptr && report.IsWanted() && line.HasOpenQuote()) {
      report.Warn(line, "a quote is not closed: it runs to the end of the line");
    }
    const Outcome outcome = pRow->action == nullptr ? Outcome::next : (scanner.*pRow->action)(line);
    if (outcome == Outcome::next && pRow->next.has_value()) scanner.m_state = *pRow->next;
    if (outcome == Outcome::noRecord && report.IsWanted()) report.OnNothing(line);
  });
}

}  // namespace laminate
