#include "JsonText.h"

#include <iconv.h>

#include <algorithm>
#include <cstddef>

namespace laminate::cli {

namespace {

// The C library's converter; one per process, which has one thread.
class Converter {
 public:
  Converter() : m_handle(iconv_open("UTF-8", "CP932")) {}
  ~Converter() {
    if (IsOpen()) iconv_close(m_handle);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  bool Convert(std::string_view s, std::string& sResult) {
    if (!IsOpen()) return false;
    iconv(m_handle, nullptr, nullptr, nullptr, nullptr);
    // No character grows to more than three bytes for each of its own.
    sResult.resize(3 * s.size() + 4);
    char* pIn = const_cast<char*>(s.data());
    std::size_t nIn = s.size();
    char* pOut = sResult.data();
    std::size_t nOut = sResult.size();
    if (iconv(m_handle, &pIn, &nIn, &pOut, &nOut) == static_cast<std::size_t>(-1) || nIn != 0) return false;
    sResult.resize(sResult.size() - nOut);
    return true;
  }

 private:
  bool IsOpen() const { return m_handle != reinterpret_cast<iconv_t>(-1); }
  iconv_t m_handle;
};

bool IsAscii(std::string_view s) {
  return std::all_of(s.begin(), s.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

}  // namespace

std::string ToUtf8(std::string_view s) {
  if (IsAscii(s)) return std::string(s);
  static Converter converter;
  std::string sResult;
  if (converter.Convert(s, sResult)) return sResult;
  sResult.clear();
  for (char c : s) {
    const auto n = static_cast<unsigned char>(c);
    if (n < 0x80) {
      sResult += c;
    } else {
      sResult += static_cast<char>(0xC0 | (n >> 6));
      sResult += static_cast<char>(0x80 | (n & 0x3F));
    }
  }
  return sResult;
}

bool IsUtf8(std::string_view s) {
  for (std::size_t i = 0; i < s.size();) {
    const auto lead = static_cast<unsigned char>(s[i]);
    const std::size_t nMore = lead < 0x80   ? 0
                              : lead < 0xC2 ? 4
                              : lead < 0xE0 ? 1
                              : lead < 0xF0 ? 2
                              : lead < 0xF5 ? 3
                                            : 4;
    if (nMore == 4 || i + nMore >= s.size()) return false;
    for (std::size_t k = 1; k <= nMore; ++k) {
      if ((static_cast<unsigned char>(s[i + k]) & 0xC0) != 0x80) return false;
    }
    // Overlong forms, surrogates, and what lies behind the last character.
    const auto second = nMore > 0 ? static_cast<unsigned char>(s[i + 1]) : 0u;
    if ((lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) || (lead == 0xF0 && second < 0x90) ||
        (lead == 0xF4 && second > 0x8F)) {
      return false;
    }
    i += nMore + 1;
  }
  return true;
}

void AppendJsonString(std::string& sTarget, std::string_view s) {
  if (IsAscii(s)) {
    AppendQuoted(sTarget, s);
  } else {
    AppendQuoted(sTarget, ToUtf8(s));
  }
}

void AppendQuoted(std::string& sTarget, std::string_view s) {
  static constexpr char kHex[] = "0123456789abcdef";
  sTarget += '"';
  std::size_t nFrom = 0;
  for (std::size_t i = 0; i < s.size(); ++i) {
    const auto c = static_cast<unsigned char>(s[i]);
    if (c >= 0x20 && c != '"' && c != '\\' && c != 0x7F) continue;
    sTarget.append(s, nFrom, i - nFrom);
    nFrom = i + 1;
    switch (c) {
      case '"':
        sTarget += "\\\"";
        break;
      case '\\':
        sTarget += "\\\\";
        break;
      case '\n':
        sTarget += "\\n";
        break;
      case '\r':
        sTarget += "\\r";
        break;
      case '\t':
        sTarget += "\\t";
        break;
      default:
        sTarget += "\\u00";
        sTarget += kHex[c >> 4];
        sTarget += kHex[c & 15];
    }
  }
  sTarget.append(s, nFrom);
  sTarget += '"';
}

}  // namespace laminate::cli
