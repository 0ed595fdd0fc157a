#pragma once
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/CPointD.h"
#include "base/CString.h"
#include "base/ObjectPath.h"
#include "base/Platform.h"
#include "base/TextOut.h"
#include "save/SaveLosses.h"

namespace laminate {

/// How forms are laid out: a line for each, and one for the closing bracket of a form that holds others.
struct FormStyle {
  std::string_view sLineEnd = "\n";
  std::string_view sIndent = {};  ///< stands before every line but the first
  std::string_view sStep = {};    ///< and this once more for every form that is open here
  int nLevel = 0;                 ///< how many forms the reader has open around the text
};

/// Writes forms so that the reader gives back what was put in, and tells of what it cannot: a text that no quoting
/// gives back, a number that is none. A form reaches from its opening to its closing bracket; line ends stand between
/// forms and not before the first or behind the last one.
class FormText {
 public:
  /// `out` and `losses` must outlive this object, and so must the style's texts.
  FormText(TextOut& out, SaveLosses& losses, const FormStyle& style = {});
  FormText(const FormText&) = delete;
  FormText& operator=(const FormText&) = delete;

  // ---- what is written ----
  enum class Lines {
    forms,  ///< each form in it stands on a line of its own
    one     ///< all stand on one line
  };
  /// A form, from its opening bracket and keyword on; its scope's end closes it. Its tokens come next, then the forms
  /// in it.
  class [[nodiscard]] Form {
   public:
    Form(FormText& text, std::string_view sKey, Lines lines = Lines::forms) : m_text(text) { text.Open(sKey, lines); }
    ~Form() { m_text.Close(); }
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

   private:
    FormText& m_text;
  };

  /// A form that the reader gets in a file of its own, where it counts levels anew, for a scope.
  class [[nodiscard]] Piece {
   public:
    explicit Piece(FormText& text) : m_text(text), m_nLevel(text.m_nLevel) {
      text.m_nLevel = -static_cast<int>(text.m_open.size());
    }
    ~Piece() { m_text.m_nLevel = m_nLevel; }
    Piece(const Piece&) = delete;
    Piece& operator=(const Piece&) = delete;

   private:
    FormText& m_text;
    const int m_nLevel;
  };

  /// For writers whose forms are no scopes.
  void Open(std::string_view sKey, Lines lines);
  void Close();
  /// What comes next stands on a line of its own.
  void BreakNext() { m_bMustEndLine = true; }
  /// The next form stands on the line at hand.
  void StayOnLine() { m_bStay = true; }

  // A token of the innermost open form. `sField` names the field, "&Class::field", for the case that it cannot be said.
  // `bMore`: a further token follows in the form.
  void Token(std::string_view sField, const CString& s, bool bMore = false);
  void Token(int n);
  void Length(std::string_view sField, double d) { Number(sField, d, true); }
  void Real(std::string_view sField, double d) { Number(sField, d, false); }
  void Point(std::string_view sField, const CPointD& pt);
  /// The end of the last line of a file.
  void EndLine() { BreakLine(0); }
  /// A word that needs no quotes.
  void Word(std::string_view s);

  /// True when what was written last reads back only if a line end follows directly.
  bool MustEndLine() const { return m_bMustEndLine; }

  // ---- where in the database the writer is ----
  /// Steps into a field, or into an element of an array, for a scope.
  class Step : public ObjectPath::Step {
   public:
    Step(FormText& text, std::string_view sField) : ObjectPath::Step(text.m_path, sField) {}
    Step(FormText& text, std::string_view sField, std::string_view sName, INT_PTR nIndex)
        : ObjectPath::Step(text.m_path, sField, sName, nIndex) {}
  };
  /// Tells of a value of the object stepped into that cannot be said. `sField` is "&Class::field".
  void Refuse(std::string_view sField, std::string_view sReason, std::string sValue = {});

 private:
  struct OpenForm {
    Lines lines;
    bool bHoldsForms = false;
    std::string sTail;  // the token that must stand before the closing bracket
  };

  void BreakLine(std::size_t nLevel);
  void BeforeToken();
  void Number(std::string_view sField, double d, bool bLength);

  TextOut& m_out;
  SaveLosses& m_losses;
  const FormStyle m_style;
  int m_nLevel;  // the reader's level outside the forms that are open here
  bool m_bBegun = false;
  bool m_bMustEndLine = false;
  bool m_bStay = false;
  std::vector<OpenForm> m_open;
  ObjectPath m_path;
  std::string m_sToken;
};

}  // namespace laminate
