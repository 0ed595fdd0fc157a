#pragma once
// What the tests of the design data share: loading from a text, records as short texts, archive images.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/CArchive.h"
#include "base/CMemFile.h"
#include "designdata/CPC_BD_OutClsGet.h"
#include "gmock/gmock.h"
#include "gtest/gtest.h"
#include "reader/MemoryFileSystem.h"

using namespace std::string_literals;
using namespace std::string_view_literals;

// ---- loading ----
enum class Kind { package, parts, rules, components };

inline void LoadPath(CPC_BD_OutClsGet& data, Kind kind, const char* szPath) {
  switch (kind) {
    case Kind::package:
      return data.vGetOutPackageArray(szPath);
    case Kind::parts:
      return data.vGetOutPrfPartArray(szPath);
    case Kind::rules:
      return data.vGetOutRufCompAndNetArray(szPath);
    case Kind::components:
      return data.vGetOutLcdbCmpCompArray(szPath);
  }
}
/// Loads a text as a file named "file".
inline void Load(CPC_BD_OutClsGet& data, Kind kind, std::string_view sText) {
  MemoryFileSystem fileSystem;
  fileSystem.files["file"] = sText;
  const laminate::FileSystemScope scope(fileSystem);
  LoadPath(data, kind, "file");
  EXPECT_EQ(fileSystem.OpenCount(), 0u);
}
inline std::unique_ptr<CPC_BD_OutClsGet> Loaded(Kind kind, std::string_view sText) {
  auto p = std::make_unique<CPC_BD_OutClsGet>();
  Load(*p, kind, sText);
  return p;
}

// ---- remarks ----
inline std::vector<std::string> Remarks(const laminate::Diagnostics& diagnostics) {
  std::vector<std::string> lines;
  for (const laminate::Diagnostic& d : diagnostics.list) {
    constexpr const char* kSeverities[] = {"error", "warning", "note"};
    lines.push_back(std::string(d.file.View()) + ":" + std::to_string(d.line) + ":" + std::to_string(d.column) + ": " +
                    kSeverities[static_cast<int>(d.severity)] + ": " + std::string(d.reason.View()));
  }
  return lines;
}
// ---- records as text: the values of the field list in its order, "{a,1,[{b},{c}]}" ----
/// Shows values and records; the fields that have one of the marks are left out.
class Shower {
 public:
  explicit Shower(unsigned nLeaveOut) : m_nLeaveOut(nLeaveOut) {}

  std::string operator()(const CString& s) const { return std::string(s.View()); }
  std::string operator()(int n) const { return std::to_string(n); }
  std::string operator()(double d) const {
    char sz[40];
    std::snprintf(sz, sizeof sz, "%.17g", d);
    return sz;
  }
  std::string operator()(const CLProperty& p) const {
    const std::string s = (*this)(p.m_sItem) + "=" + (*this)(p.m_sComment);
    return p.m_sKind.IsEmpty() ? s : s + ":" + (*this)(p.m_sKind);
  }
  std::string operator()(const CVRXoutPrfPartPort& p) const {
    return "{" + Joined(p.m_sPortNo, p.m_sPortType, p.m_sPortName, p.m_nSymbPinId) + "}";
  }
  std::string operator()(const CVRXoutPrfPartGateDef& p) const {
    return "{" + Joined(p.m_sGateName, p.m_aPortRefs, *p.m_pPropertyArray) + "}";
  }
  std::string operator()(const CStringArray& arr) const { return Items(arr); }
  template <class X>
  std::string operator()(const laminate::NamedArray<X>& arr) const {
    return Items(arr);
  }
  template <class T>
  requires requires { T::Fields(); }
  std::string operator()(const T& record) const {
    std::string s = "{";
    bool bFirst = true;
    T::Fields().ForEach([&](auto field) {
      if ((field.marks & m_nLeaveOut) != 0) return;
      if (!std::exchange(bFirst, false)) s += ",";
      const auto& value = record.*field.member;
      if constexpr (std::is_pointer_v<std::remove_cvref_t<decltype(value)>>) {
        s += (*this)(*value);
      } else {
        s += (*this)(value);
      }
    });
    return s + "}";
  }

 private:
  template <class First, class... Rest>
  std::string Joined(const First& first, const Rest&... rest) const {
    return (*this)(first) + (... + ("," + (*this)(rest)));
  }
  template <class T>
  std::string Items(const T& items) const {
    std::string s = "[";
    bool bFirst = true;
    for (const auto& item : items) {
      if (!std::exchange(bFirst, false)) s += ",";
      if constexpr (std::is_pointer_v<std::remove_cvref_t<decltype(item)>>) {
        s += item == nullptr ? "null" : (*this)(*item);
      } else {
        s += (*this)(item);
      }
    }
    return s + "]";
  }
  unsigned m_nLeaveOut;
};
template <class T>
std::string Show(const T& value, unsigned nLeaveOut = 0) {
  return Shower(nLeaveOut)(value);
}

/// What is remarked of a text as a file named "file". With remarks it gives the same records.
inline std::vector<std::string> RemarksOf(Kind kind, std::string_view sText) {
  CPC_BD_OutClsGet data;
  laminate::Diagnostics diagnostics;
  data.SetDiagnostics(&diagnostics);
  Load(data, kind, sText);
  EXPECT_EQ(Show(*Loaded(kind, sText)), Show(data));
  return Remarks(diagnostics);
}

// ---- written text ----
/// What a writer that takes a stream puts out.
template <class Writer>
std::string StreamText(Writer&& writer) {
  char* p = nullptr;
  std::size_t n = 0;
  std::FILE* fp = open_memstream(&p, &n);
  EXPECT_EQ(writer(fp), 0);
  std::fclose(fp);
  std::string s(p, n);
  std::free(p);
  return s;
}

// ---- archives ----
template <class T>
std::string Image(T& object) {
  CMemFile file;
  {
    CArchive ar(&file, CArchive::store);
    object.Serialize(ar);
    ar.Close();
  }
  const auto n = static_cast<std::size_t>(file.GetLength());
  const std::unique_ptr<BYTE, decltype(&std::free)> p(file.Detach(), &std::free);
  return {reinterpret_cast<const char*>(p.get()), n};
}
/// Loads an object from an image; gives the number of bytes behind what was loaded.
template <class T>
std::size_t LoadImage(T& object, std::string_view sImage) {
  std::vector<BYTE> bytes(sImage.begin(), sImage.end());
  bytes.push_back(0);  // so that there is an address for an empty image too
  CMemFile file(bytes.data(), static_cast<UINT>(sImage.size()), 0);
  CArchive ar(&file, CArchive::load);
  object.Serialize(ar);
  ar.Close();
  return sImage.size() - static_cast<std::size_t>(file.GetPosition());
}
/// The cause of the archive exception that a load raises; -1 when it raises none.
template <class T>
int LoadCause(T& object, std::string_view sImage) {
  try {
    LoadImage(object, sImage);
    return -1;
  } catch (const CArchiveException& e) {
    return e.m_cause;
  }
}

/// An image put together form by form.
class Bytes {
 public:
  Bytes& Int(std::int64_t n) { return Little(static_cast<std::uint64_t>(n), 4); }
  Bytes& Int16(std::uint64_t n) { return Little(n, 2); }
  Bytes& Int64(std::uint64_t n) { return Little(n, 8); }
  Bytes& Double(double d) {
    std::uint64_t n = 0;
    std::memcpy(&n, &d, sizeof n);
    return Little(n, 8);
  }
  /// A string of less than 255 bytes.
  Bytes& Text(std::string_view s) {
    Little(s.size(), 1);
    return Raw(s);
  }
  Bytes& Raw(std::string_view s) {
    m_s += s;
    return *this;
  }
  /// The head of a record array: its marker and its count.
  Bytes& Array(std::uint64_t nCount) { return Little(0x80000001, 4).Little(nCount, 8); }
  operator std::string() const { return m_s; }
  std::string Str() const { return m_s; }

 private:
  Bytes& Little(std::uint64_t n, int nBytes) {
    for (int i = 0; i < nBytes; ++i, n >>= 8) m_s += static_cast<char>(n & 0xFF);
    return *this;
  }
  std::string m_s;
};

/// Bytes as hexadecimal digits, for readable differences.
inline std::string Hex(std::string_view s) {
  std::string sHex;
  for (const char ch : s) {
    char sz[4];
    std::snprintf(sz, sizeof sz, "%02X ", static_cast<unsigned char>(ch));
    sHex += sz;
  }
  return sHex;
}
#define EXPECT_SAME_BYTES(a, b) EXPECT_EQ(Hex(a), Hex(b))
