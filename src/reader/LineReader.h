#pragma once
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "base/FileSystem.h"

namespace laminate {

/// Hands out a file line by line, without the line ends, which are LF or CR LF, holding no more of it than a block and
/// the line at hand. What stands behind the last line end is a line too, unless it is empty.
class LineReader {
 public:
  /// Starts at a byte offset. A file that cannot be opened has no lines, as has the part behind a file's end.
  explicit LineReader(const char* szPath, std::uint64_t nOffset = 0);
  /// Hands out a text at hand, behind which `kPadding` bytes are readable. It must outlive the reader.
  static LineReader OfText(std::string_view sText) { return LineReader(sText); }

  /// Goes on at a byte offset that is at hand; false, and nothing happens, for any other.
  bool GoTo(std::uint64_t nOffset);
  /// The next line, valid until the next call; false at the end or on a failure.
  bool Next(std::string_view& sLine);
  /// As many whole lines as are at hand, at least one, with their ends as they stand; only the file's last line may
  /// have none. Valid until the next call, as are `kPadding` bytes behind them; false at the end or on a failure.
  static constexpr std::size_t kPadding = 16;
  bool NextBlock(std::string_view& sLines);
  /// Offset of the first byte behind the line's end.
  std::uint64_t Position() const { return m_nBufferOffset + static_cast<std::uint64_t>(m_at - m_begin); }
  /// 0, or the negative `errno` of the opening or reading that failed.
  int Error() const { return m_nError; }

 private:
  explicit LineReader(std::string_view sText)
      : m_begin(sText.data()), m_at(sText.data()), m_end(sText.data() + sText.size()) {}

  // Makes the line from `m_at` on longer by what the file still has; false when that is nothing.
  bool ReadMore();

  OpenedFile m_file;
  int m_nError = 0;
  std::unique_ptr<char[]> m_buffer;
  std::size_t m_nCapacity = 0;
  std::uint64_t m_nBufferOffset = 0;  // of the buffer's first byte in the file
  const char* m_begin = nullptr;      // of the buffer, or of the text at hand
  const char* m_at = nullptr;         // what is not yet handed out
  const char* m_end = nullptr;
};

}  // namespace laminate
