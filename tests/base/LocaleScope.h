#pragma once
#include <locale.h>

#include <string>

namespace laminate::test {

/// Sets the program's locale for a scope. A test that needs one fails when it cannot be set; the build makes
/// de_DE.UTF-8, which writes a decimal comma, and ja_JP.SJIS.
class LocaleScope {
 public:
  explicit LocaleScope(const char* szName) : m_sOld(::setlocale(LC_ALL, nullptr)) {
    m_bSet = ::setlocale(LC_ALL, szName) != nullptr;
  }
  ~LocaleScope() { ::setlocale(LC_ALL, m_sOld.c_str()); }
  LocaleScope(const LocaleScope&) = delete;
  LocaleScope& operator=(const LocaleScope&) = delete;
  bool IsSet() const { return m_bSet; }

 private:
  std::string m_sOld;
  bool m_bSet;
};

}  // namespace laminate::test
