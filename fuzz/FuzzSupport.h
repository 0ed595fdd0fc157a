#pragma once
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

namespace laminate::fuzz {

/// Takes an input apart from its front.
class Input {
 public:
  Input(const std::uint8_t* pData, std::size_t nSize) : m_rest(reinterpret_cast<const char*>(pData), nSize) {}
  /// The next byte; 0 behind the end.
  unsigned Byte() {
    if (m_rest.empty()) return 0;
    const auto n = static_cast<unsigned char>(m_rest[0]);
    m_rest.remove_prefix(1);
    return n;
  }
  /// What stands before the next such byte, which goes too; all that is left if there is none.
  std::string UpTo(char c) {
    const std::size_t n = m_rest.find(c);
    std::string s(m_rest.substr(0, n));
    m_rest.remove_prefix(n == m_rest.npos ? m_rest.size() : n + 1);
    return s;
  }
  bool IsEmpty() const { return m_rest.empty(); }
  std::string Rest() const { return std::string(m_rest); }

 private:
  std::string_view m_rest;
};

/// Stops the program when two ways to the same end differ.
template <class T>
void RequireSame(const T& outcome, const T& expected) {
  if (outcome == expected) return;
  std::cerr << "gives    " << outcome << "\nexpected " << expected << "\n";
  std::abort();
}
inline void Require(bool b) {
  if (!b) std::abort();
}

}  // namespace laminate::fuzz
