#pragma once
#include "base/CArray.h"
#include "base/CString.h"
#include "base/Number.h"

/// A text that can be taken as a number.
class CStringEx {
 public:
  CStringEx() = default;
  CStringEx(const CString& s) : m_s(s) {}
  CStringEx(const char* sz) : m_s(sz) {}
  CStringEx(const CStringEx&) = default;
  CStringEx(CStringEx&&) = default;
  CStringEx& operator=(const CStringEx&) = default;
  CStringEx& operator=(CStringEx&&) = default;
  virtual ~CStringEx() = default;

  /// As `laminate::Atoi`: a text that is no number gives 0.
  int ToInteger() const { return laminate::Atoi(m_s.View()); }
  /// As `laminate::Atof`.
  double ToDouble() const { return laminate::Atof(m_s.View()); }

  operator int() const { return ToInteger(); }
  operator unsigned long() const { return static_cast<unsigned long>(ToInteger()); }
  operator double() const { return ToDouble(); }
  /// To the nearest of single precision; what is too large becomes infinite.
  operator float() const { return laminate::Narrowed(ToDouble()); }

  CString m_s;
};

/// Array of such texts, which it holds by value, with value semantics.
class CStringExArray : public CArray<CStringEx, CStringEx&> {
 public:
  CStringExArray() = default;
  CStringExArray(const CStringExArray& s) : CArray() { Append(s); }
  CStringExArray(CStringExArray&& s) noexcept : CArray() { Swap(s); }
  CStringExArray& operator=(const CStringExArray& s) {
    Copy(s);
    return *this;
  }
  CStringExArray& operator=(CStringExArray&& s) noexcept {
    Swap(s);
    return *this;
  }
  /// 1 if an element equals the text exactly, case and all; otherwise 0.
  int bStringInArray(CString s) const {
    for (const CStringEx& element : *this) {
      if (element.m_s == s) return 1;
    }
    return 0;
  }
};
