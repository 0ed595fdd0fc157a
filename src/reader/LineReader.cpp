#include "reader/LineReader.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <new>
#include <utility>

#include "base/CException.h"

namespace laminate {
namespace {

constexpr std::size_t kBlock = 64 * 1024;

}  // namespace

LineReader::LineReader(const char* szPath, std::uint64_t nOffset) : m_nBufferOffset(nOffset) {
  FileSystem& files = TheFileSystem();
  m_file = OpenedFile(files.OpenForReading(szPath));
  if (!m_file.IsOpen()) {
    m_nError = m_file.Get();
  } else if (nOffset != 0) {
    const std::int64_t nAt = files.Seek(m_file.Get(), static_cast<std::int64_t>(nOffset), SEEK_SET);
    // An offset that no file can have is behind the end of this one.
    if (nAt == -EINVAL) {
      m_file.Close();
    } else if (nAt < 0) {
      m_nError = static_cast<int>(nAt);
    }
  }
  if (m_nError != 0) m_file.Close();
}

bool LineReader::GoTo(std::uint64_t nOffset) {
  if (m_nError != 0 || nOffset < m_nBufferOffset) return false;
  const std::uint64_t n = nOffset - m_nBufferOffset;
  if (m_begin == nullptr || n > static_cast<std::uint64_t>(m_end - m_begin)) return false;
  m_at = m_begin + n;
  return true;
}

bool LineReader::ReadMore() {
  if (!m_file.IsOpen()) return false;
  const auto nLeft = static_cast<std::size_t>(m_end - m_at);
  if (nLeft + kBlock > m_nCapacity) {
    // A line that outgrows the buffer doubles it.
    const std::size_t nCapacity = 2 * nLeft + kBlock;
    std::unique_ptr<char[]> buffer(new (std::nothrow) char[nCapacity + kPadding]);
    if (buffer == nullptr) AfxThrowMemoryException();
    if (nLeft != 0) std::memcpy(buffer.get(), m_at, nLeft);
    m_nBufferOffset = Position();
    m_buffer = std::move(buffer);
    m_nCapacity = nCapacity;
  } else {
    m_nBufferOffset = Position();
    std::memmove(m_buffer.get(), m_at, nLeft);
  }
  char* const free = m_buffer.get() + nLeft;
  const std::int64_t nRead = TheFileSystem().Read(m_file.Get(), free, m_nCapacity - nLeft);
  char* const end = nRead > 0 ? free + nRead : free;
  std::memset(end, 0, kPadding);
  m_begin = m_at = m_buffer.get();
  m_end = end;
  if (nRead > 0) return true;
  if (nRead < 0) m_nError = static_cast<int>(nRead);
  m_file.Close();
  return false;
}

bool LineReader::Next(std::string_view& sLine) {
  std::size_t nSearched = 0;
  for (;;) {
    const auto nHave = static_cast<std::size_t>(m_end - m_at);
    const void* found = nHave == nSearched ? nullptr : std::memchr(m_at + nSearched, '\n', nHave - nSearched);
    if (found != nullptr) {
      const char* end = static_cast<const char*>(found);
      sLine = {m_at, static_cast<std::size_t>(end - m_at)};
      if (sLine.ends_with('\r')) sLine.remove_suffix(1);
      m_at += end - m_at + 1;
      return true;
    }
    nSearched = nHave;
    if (!ReadMore()) break;
  }
  if (m_nError != 0 || m_at == m_end) return false;
  sLine = {m_at, static_cast<std::size_t>(m_end - m_at)};
  m_at = m_end;
  return true;
}

bool LineReader::NextBlock(std::string_view& sLines) {
  std::size_t nSearched = 0;
  for (;;) {
    const std::string_view have(m_at, static_cast<std::size_t>(m_end - m_at));
    const std::size_t nEnd = have.substr(nSearched).rfind('\n');
    if (nEnd != have.npos) {
      sLines = have.substr(0, nSearched + nEnd + 1);
      break;
    }
    nSearched = have.size();
    if (ReadMore()) continue;
    if (m_nError != 0 || have.empty()) return false;
    sLines = {m_at, nSearched};
    break;
  }
  m_at += sLines.size();
  return true;
}

}  // namespace laminate
