#include "base/CodePage932.h"

#include <iconv.h>

#include <array>
#include <memory>
#include <new>

namespace laminate {
namespace {

// A character's bytes, the first one above the second; one byte alone is below 256.
using Table = std::array<std::uint16_t, 65536>;

bool IsHigh(std::uint32_t n) { return (n & 0xFC00) == 0xD800; }
bool IsLow(std::uint32_t n) { return (n & 0xFC00) == 0xDC00; }

std::unique_ptr<const Table> MakeTable() {
  std::unique_ptr<Table> table(new (std::nothrow) Table);
  if (table == nullptr) AfxThrowMemoryException();
  table->fill('?');
  // What holds even where the C library comes without its converters.
  for (std::uint32_t n = 0; n < 0x80; ++n) (*table)[n] = static_cast<std::uint16_t>(n);
  for (std::uint32_t n = 0xFF61; n <= 0xFF9F; ++n) (*table)[n] = static_cast<std::uint16_t>(n - 0xFF61 + 0xA1);

  iconv_t converter = ::iconv_open("CP932", "UTF-16LE");
  if (converter == reinterpret_cast<iconv_t>(-1)) return table;
  for (std::uint32_t n = 0x80; n < 0x10000; ++n) {
    if (IsHigh(n) || IsLow(n)) continue;
    char unit[2] = {static_cast<char>(n & 0xFF), static_cast<char>(n >> 8)};
    char bytes[8] = {};
    char* pIn = unit;
    char* pOut = bytes;
    std::size_t nIn = sizeof unit;
    std::size_t nOut = sizeof bytes;
    if (::iconv(converter, &pIn, &nIn, &pOut, &nOut) == static_cast<std::size_t>(-1) || nIn != 0) {
      ::iconv(converter, nullptr, nullptr, nullptr, nullptr);
      continue;
    }
    const auto byte = [&bytes](int i) { return static_cast<std::uint16_t>(static_cast<unsigned char>(bytes[i])); };
    const std::size_t nLength = sizeof bytes - nOut;
    if (nLength == 1) (*table)[n] = byte(0);
    if (nLength == 2) (*table)[n] = static_cast<std::uint16_t>(byte(0) << 8 | byte(1));
  }
  ::iconv_close(converter);
  return table;
}

const Table& TheTable() {
  static const std::unique_ptr<const Table> theTable = MakeTable();
  return *theTable;
}

}  // namespace

void CodePage932Narrower::Add(std::uint16_t nUnit) {
  if (m_bHigh) {
    m_bHigh = false;
    m_sTarget.AppendChar('?');
    if (IsLow(nUnit)) return;
  }
  if (IsHigh(nUnit)) {
    m_bHigh = true;
    return;
  }
  const std::uint16_t n = TheTable()[nUnit];
  if (n > 0xFF) m_sTarget.AppendChar(static_cast<char>(n >> 8));
  m_sTarget.AppendChar(static_cast<char>(n & 0xFF));
}

void CodePage932Narrower::Finish() {
  if (m_bHigh) m_sTarget.AppendChar('?');
  m_bHigh = false;
}

}  // namespace laminate
