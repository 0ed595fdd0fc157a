#include "OutputFile.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "base/CException.h"

namespace laminate::cli {

namespace {

std::string CannotWrite(int nError) { return std::string("cannot write: ") + std::strerror(nError); }

}  // namespace

OutputFile::OutputFile(Console& console, const std::string& sPath) : m_console(console) {
  if (sPath.empty() || sPath == "-") {
    m_sName = "standard output";
    m_pStandard = std::make_unique<TextOut>(STDOUT_FILENO);
    m_pText = m_pStandard.get();
    return;
  }
  m_sName = sPath;
  try {
    m_pFile = std::make_unique<WholeFile>(CString(std::string_view(sPath)));
  } catch (const CFileException& e) {
    Fail(CannotWrite(e.m_lOsError));
  }
  m_pText = &m_pFile->Text();
}

void OutputFile::Fail(std::string_view sReason) { m_console.Fail({m_sName}, sReason); }

void OutputFile::Write(std::string_view s) {
  m_pText->Bytes(s);
  if (m_pText->Failed()) Fail(CannotWrite(m_pText->Error()));
  EndWhenInterrupted();
}

void OutputFile::EndWhenInterrupted() {
  if (InterruptGuard::Pending()) Fail("interrupted");
}

void OutputFile::CommitStandard() {
  // A copy of the handle is closed to hear of what the system found out late.
  const bool bWritten = m_pText->Flush();
  const int h = bWritten ? dup(STDOUT_FILENO) : -1;
  if (!bWritten) Fail(CannotWrite(m_pText->Error()));
  if (h >= 0 && close(h) != 0) Fail(CannotWrite(errno));
}

void OutputFile::Commit() {
  if (m_pFile == nullptr) return CommitStandard();
  try {
    m_pFile->Commit();
  } catch (const CFileException& e) {
    Fail(CannotWrite(e.m_lOsError));
  }
}

void OutputFile::Complete(FilePlacer& placer) {
  if (m_pFile == nullptr) return CommitStandard();
  try {
    const std::string& sTemporary = m_pFile->Finish();
    if (!sTemporary.empty()) placer.Add(sTemporary, m_sName);
  } catch (const CFileException& e) {
    Fail(CannotWrite(e.m_lOsError));
  }
}

}  // namespace laminate::cli
