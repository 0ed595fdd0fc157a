#include "base/TextOut.h"

#include <cerrno>
#include <new>
#include <stdexcept>

namespace laminate {
namespace {

int AppendTo(std::string& sTarget, std::string_view s) noexcept {
  try {
    sTarget.append(s);
    return 0;
  } catch (const std::bad_alloc&) {
    return ENOMEM;
  } catch (const std::length_error&) {
    return ENOMEM;
  }
}

}  // namespace

// The first kilobyte needs no allocation: most public writers put out a few lines.
void TextOut::Start() {
  m_begin = m_at = m_small;
  m_end = m_small + sizeof m_small;
}

TextOut::~TextOut() { HandOver({m_begin, static_cast<std::size_t>(m_at - m_begin)}); }

bool TextOut::Flush() {
  const std::string_view pending(m_begin, static_cast<std::size_t>(m_at - m_begin));
  m_at = m_begin;
  HandOver(pending);
  // A stream can fail in many ways, a string in one.
  if (m_bFailed && m_pTarget != nullptr) AfxThrowMemoryException();
  return !m_bFailed;
}

void TextOut::HandOver(std::string_view s) noexcept {
  if (s.empty()) return;
  int nError = 0;
  if (m_fp != nullptr) {
    errno = 0;
    // The stream decides itself what follows a failure.
    if (std::fwrite(s.data(), 1, s.size(), m_fp) != s.size()) nError = errno != 0 ? errno : EIO;
  } else if (!m_bFailed) {
    // What would follow a gap is of no use.
    nError = m_pTarget != nullptr ? AppendTo(*m_pTarget, s) : -WriteAll(m_h, s);
  }
  if (nError == 0) return;
  if (!m_bFailed) m_nError = nError;
  m_bFailed = true;
}

void TextOut::Grow() noexcept {
  HandOver({m_begin, static_cast<std::size_t>(m_at - m_begin)});
  m_at = m_begin;
  if (m_begin == m_small) {
    if (char* p = new (std::nothrow) char[kBuffer]) {
      m_pBuffer.reset(p);
      m_begin = m_at = p;
      m_end = p + kBuffer;
    }
  }
}

void TextOut::Long(std::string_view s) {
  Grow();
  if (s.size() > static_cast<std::size_t>(m_end - m_at)) {
    HandOver(s);
    return;
  }
  std::memcpy(m_at, s.data(), s.size());
  m_at += s.size();
}

}  // namespace laminate
