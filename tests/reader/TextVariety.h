#pragma once
#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

#if defined(LAMINATE_NO_POOL)
/// Sanitizers make every step cost more: they see one byte less.
inline constexpr std::size_t kShorter = 1;
#else
inline constexpr std::size_t kShorter = 0;
#endif

/// Calls back with every text of up to `length` bytes of the alphabet.
template <class Callback>
void ForEveryText(const std::string& alphabet, std::size_t length, Callback callback) {
  std::vector<std::size_t> digits;
  for (std::size_t n = 0; n + kShorter <= length; ++n) {
    digits.assign(n, 0);
    std::string text(n, alphabet[0]);
    for (;;) {
      callback(text);
      std::size_t i = 0;
      while (i < n && ++digits[i] == alphabet.size()) {
        digits[i] = 0;
        text[i] = alphabet[0];
        ++i;
      }
      if (i == n) break;
      text[i] = alphabet[digits[i]];
    }
  }
}

/// A text that can be printed in a message.
inline std::string Escaped(const std::string& text) {
  std::string s;
  for (unsigned char c : text) {
    if (c == '\n') {
      s += "\\n";
    } else if (c < 0x20 || c > 0x7E) {
      char hex[8];
      std::snprintf(hex, sizeof hex, "<%02X>", c);
      s += hex;
    } else {
      s += static_cast<char>(c);
    }
  }
  return s;
}
