#pragma once
#include <concepts>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>

#include "base/CPointD.h"
#include "base/CString.h"
#include "base/FileSystem.h"
#include "base/Number.h"

namespace laminate {

/// A print format as a template argument, so that the compiler checks it and lays out the write.
/// It knows "%s", "%d", "%f", "%.5f", "%g" and "%%".
template <std::size_t N>
struct PrintFormat {
  char text[N];
  consteval PrintFormat(const char (&sz)[N]) {
    for (std::size_t i = 0; i < N; ++i) text[i] = sz[i];
  }
  static constexpr std::size_t length = N - 1;
};

/// Where all written text of the library passes: a buffer before a stream, a string or a counter. Numbers come out as
/// the C library's printf family gives them in the C locale, whatever locale is set; text arguments end at their first
/// NUL and are never taken as a format. Printing raises nothing. A failing write is remembered by the stream
/// (`ferror`); `Failed` tells it too. A string that cannot grow makes `Flush` raise `CMemoryException`.
///
///   TextOut out(fp);
///   out.Print<"(pt %.5f %.5f)\n">(pt.x, pt.y);
class TextOut {
 public:
  /// Writes to a stream, which stays open and is the caller's. Null raises `CInvalidArgException`.
  explicit TextOut(std::FILE* fp) : m_fp(fp) {
    if (fp == nullptr) AfxThrowInvalidArgException();
    Start();
  }
  /// Writes to a handle of the file seam, which stays open and is the caller's.
  explicit TextOut(FileSystem::Handle h) : m_h(h) { Start(); }
  /// Appends to a string, which must outlive this object.
  explicit TextOut(std::string& sTarget) : m_pTarget(&sTarget) { Start(); }
  TextOut(const TextOut&) = delete;
  TextOut& operator=(const TextOut&) = delete;
  /// Hands over what is left. Whoever must know the outcome calls `Flush` before; with a string that is everybody.
  ~TextOut();

  /// Hands all that was written to the stream or string; false if that, or an earlier hand-over, failed.
  bool Flush();
  bool Failed() const { return m_bFailed; }
  /// The `errno` of the first failed hand-over; 0 when there was none.
  int Error() const { return m_nError; }

  template <PrintFormat kFormat, class... Args>
  void Print(const Args&... args) {
    static_assert(CountConversions<kFormat>() == sizeof...(Args), "the format and its arguments differ in number");
    Walk<kFormat, 0>(args...);
  }

  /// Text up to its first NUL, as "%s" takes it; a null pointer is the empty text.
  void Text(const CString& s) { Bytes(s.CView()); }
  void Text(const char* sz) {
    if (sz != nullptr) Bytes(sz);
  }
  void Text(std::string_view s) { Bytes(s.substr(0, s.find('\0'))); }
  /// All bytes, NULs included.
  void Bytes(std::string_view s) {
    if (s.size() > static_cast<std::size_t>(m_end - m_at)) {
      Long(s);
      return;
    }
    if (!s.empty()) std::memcpy(m_at, s.data(), s.size());
    m_at += s.size();
  }

 private:
  static constexpr std::size_t kBuffer = 64 * 1024;
  static constexpr std::size_t kSmallBuffer = 1024;

  static_assert(kMaxNumberLength <= kSmallBuffer);

  void Start();
  void Long(std::string_view s);
  void HandOver(std::string_view s) noexcept;
  char* Room(std::size_t n) {
    if (n > static_cast<std::size_t>(m_end - m_at)) Grow();
    return m_at;
  }
  // Room for `n` bytes, which the small buffer has.
  void Grow() noexcept;

  template <PrintFormat kFormat>
  static consteval std::size_t CountConversions() {
    std::size_t n = 0;
    for (std::size_t i = 0; i < kFormat.length; ++i) {
      if (kFormat.text[i] != '%') continue;
      if (kFormat.text[i + 1] == '%') {
        ++i;
      } else {
        ++n;
      }
    }
    return n;
  }
  template <PrintFormat kFormat, std::size_t kFrom>
  static consteval std::size_t LiteralEnd() {
    std::size_t i = kFrom;
    while (i < kFormat.length && kFormat.text[i] != '%') ++i;
    return i;
  }
  template <PrintFormat kFormat, std::size_t kAt>
  static consteval bool Is(std::string_view s) {
    return std::string_view(kFormat.text + kAt, kFormat.length - kAt).starts_with(s);
  }

  template <PrintFormat kFormat, std::size_t kFrom, class... Args>
  void Walk(const Args&... args) {
    constexpr std::size_t kEnd = LiteralEnd<kFormat, kFrom>();
    if constexpr (kEnd > kFrom) {
      static_assert(kEnd - kFrom <= kSmallBuffer, "a literal must fit the buffer that needs no memory");
      std::memcpy(Room(kEnd - kFrom), kFormat.text + kFrom, kEnd - kFrom);
      m_at += kEnd - kFrom;
    }
    if constexpr (kEnd < kFormat.length) {
      if constexpr (Is<kFormat, kEnd>("%%")) {
        *Room(1) = '%';
        ++m_at;
        Walk<kFormat, kEnd + 2>(args...);
      } else {
        Convert<kFormat, kEnd>(args...);
      }
    }
  }

  template <PrintFormat kFormat, std::size_t kAt, class First, class... Rest>
  void Convert(const First& first, const Rest&... rest) {
    if constexpr (Is<kFormat, kAt>("%s")) {
      static_assert(
          std::is_convertible_v<const First&, const char*> || std::is_convertible_v<const First&, std::string_view>,
          "%s takes a text");
      Text(first);
      Walk<kFormat, kAt + 2>(rest...);
    } else if constexpr (Is<kFormat, kAt>("%d")) {
      static_assert(std::integral<First>, "%d takes an integer");
      m_at = FormatInteger(Room(kMaxNumberLength), static_cast<long long>(first));
      Walk<kFormat, kAt + 2>(rest...);
    } else if constexpr (Is<kFormat, kAt>("%.5f")) {
      static_assert(std::is_same_v<First, double>, "%.5f takes a double");
      m_at = FormatFixed(Room(kMaxNumberLength), first, 5);
      Walk<kFormat, kAt + 4>(rest...);
    } else if constexpr (Is<kFormat, kAt>("%f")) {
      static_assert(std::is_same_v<First, double>, "%f takes a double");
      m_at = FormatFixed(Room(kMaxNumberLength), first, 6);
      Walk<kFormat, kAt + 2>(rest...);
    } else {
      static_assert(Is<kFormat, kAt>("%g"), "an unknown conversion");
      static_assert(std::is_same_v<First, double>, "%g takes a double");
      m_at = FormatGeneral(Room(kMaxNumberLength), first);
      Walk<kFormat, kAt + 2>(rest...);
    }
  }

  std::FILE* m_fp = nullptr;
  std::string* m_pTarget = nullptr;
  FileSystem::Handle m_h = -1;
  int m_nError = 0;
  char* m_at = nullptr;
  char* m_end = nullptr;
  char* m_begin = nullptr;
  bool m_bFailed = false;
  std::unique_ptr<char[]> m_pBuffer;
  char m_small[kSmallBuffer];
};

/// A form that is being written: `kOpen` has been printed, and the scope's end writes ")\n".
class [[nodiscard]] OpenForm {
 public:
  explicit OpenForm(TextOut& out) : m_out(out) {}
  OpenForm(const OpenForm&) = delete;
  OpenForm& operator=(const OpenForm&) = delete;
  ~OpenForm() { m_out.Bytes(")\n"); }

 private:
  TextOut& m_out;
};

/// Prints the opening line of a form and gives the object whose end closes it.
template <PrintFormat kOpen, class... Args>
OpenForm Form(TextOut& out, const Args&... args) {
  out.Print<kOpen>(args...);
  return OpenForm(out);
}

/// "(pt %.5f %.5f)\n", the most frequent line of all.
inline void PrintPt(TextOut& out, const CPointD& pt) { out.Print<"(pt %.5f %.5f)\n">(pt.x, pt.y); }

/// Runs a writer on a stream and hands over all it wrote; the result is the writers' constant 0.
template <class Writer>
int PrintTo(std::FILE* fp, Writer&& writer) {
  TextOut out(fp);
  writer(out);
  out.Flush();
  return 0;
}

}  // namespace laminate
