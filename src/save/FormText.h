#pragma once
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/CString.h"
#include "base/TextOut.h"
#include "save/SaveLosses.h"

namespace laminate {

/// How forms are laid out: a line for each, and for the closing bracket of one that holds others.
struct FormStyle {
  std::string_view sLineEnd = "\n";
  std::string_view sIndent = {};  ///< stands before every line but the first
  std::string_view sStep = {};    ///< and this once more for every form that is open here
  int nLevel = 0;                 ///< how many forms the reader has open around the text; it takes 20
};

/// Writes forms so that the reader gives back what was put in, and tells of what it cannot: a text that no quoting
/// gives back, a number that is none. A form reaches from its opening to its closing bracket; line ends stand between
/// forms and not before the first or behind the last one.
class FormText {
 public:
  /// `out` and `losses` must outlive this object.
  FormText(TextOut& out, SaveLosses& losses, const FormStyle& style = {});
  FormText(const FormText&) = delete;
  FormText& operator=(const FormText&) = delete;

  SaveLosses& Losses() { return m_losses; }

  /// True when what was written last reads back only if a line end follows directly.
  bool MustEndLine() const { return m_bMustEndLine; }

  // ---- where in the database the writer is ----
  /// Steps into a field, or into an element of an array, for a scope.
  class Step {
   public:
    Step(FormText& text, std::string_view sField) : Step(text, {sField, {}, -1}) {}
    /// An element that is called by its name, or by its place where it has none.
    Step(FormText& text, std::string_view sField, std::string_view sName, INT_PTR nIndex)
        : Step(text, Place{sField, sName, nIndex}) {}
    ~Step() { m_text.m_path.pop_back(); }
    Step(const Step&) = delete;
    Step& operator=(const Step&) = delete;

   private:
    struct Place {
      std::string_view sField;
      std::string_view sName;
      INT_PTR nIndex;
    };
    friend class FormText;
    Step(FormText& text, const Place& place) : m_text(text) { text.m_path.push_back(place); }
    FormText& m_text;
  };
  /// Tells of a value that cannot be said. `sField` is that of the object stepped into, as "Class.field".
  void Refuse(std::string_view sField, std::string_view sReason, std::string sValue = {});

 private:
  TextOut& m_out;
  SaveLosses& m_losses;
  const FormStyle m_style;
  bool m_bMustEndLine = false;
  std::vector<Step::Place> m_path;
};

}  // namespace laminate
