#include "base/TextOut.h"

#include <cerrno>
#include <new>

namespace laminate {

// The first kilobyte needs no allocation: most public writers put out a few lines.
void TextOut::Start() {
  m_begin = m_at = m_small;
  m_end = m_small + sizeof m_small;
}

TextOut::~TextOut() {
  try {
    Flush();
  } catch (...) {
    m_bFailed = true;
  }
}

bool TextOut::Flush() {
  const std::string_view pending(m_begin, static_cast<std::size_t>(m_at - m_begin));
  m_at = m_begin;
  HandOver(pending);
  return !m_bFailed;
}

void TextOut::HandOver(std::string_view s) {
  if (s.empty()) return;
  if (m_pTarget != nullptr) {
    m_pTarget->append(s);
    return;
  }
  int nError = 0;
  if (m_fp == nullptr) {
    nError = m_bFailed ? 0 : -WriteAll(m_h, s);
  } else if (std::fwrite(s.data(), 1, s.size(), m_fp) != s.size()) {
    nError = errno != 0 ? errno : EIO;
  }
  if (nError != 0) {
    if (!m_bFailed) m_nError = nError;
    m_bFailed = true;
  }
}

void TextOut::Grow(std::size_t) {
  Flush();
  if (m_begin == m_small) {
    if (char* p = new (std::nothrow) char[kBuffer]) {
      m_pBuffer.reset(p);
      m_begin = m_at = p;
      m_end = p + kBuffer;
    }
  }
}

void TextOut::Long(std::string_view s) {
  Grow(s.size());
  if (s.size() > static_cast<std::size_t>(m_end - m_at)) {
    HandOver(s);
    return;
  }
  std::memcpy(m_at, s.data(), s.size());
  m_at += s.size();
}

}  // namespace laminate
