#include "SaveBoard.h"

#include <cstring>

#include "base/CException.h"
#include "facade/SavedRoot.h"
#include "save/DesignSaver.h"

namespace laminate::cli {

namespace {

CString Text(const std::string& s) { return CString(std::string_view(s)); }

std::vector<FileSet::Replacement> Replacements(const BoardFiles& files) {
  std::vector<FileSet::Replacement> list{{".pcf", files.pcf}};
  if (!files.ftf.empty()) list.push_back({".ftf", files.ftf});
  return list;
}

std::string ToText(const SaveLoss& loss) {
  std::string s = loss.object + ": " + loss.name + " cannot be saved: " + loss.reason;
  if (!loss.value.empty()) s += ": " + OneLine(loss.value);
  return s;
}

}  // namespace

SavedBoard::SavedBoard(Console& console, const std::string& sStem, const BoardFiles& files)
    : m_console(console), m_files(files), m_set(console, sStem, Replacements(files)) {}

void SavedBoard::Prepare(const CBDesigner& root, bool bFresh) {
  const std::string sStem(m_set.Begin().View());
  DesignSaver saver(SavedRoot(root));
  saver.SetBoardFile(Text(sStem + ".pcf"), bFresh ? CString() : Text(m_files.pcf));
  if (!m_files.ftf.empty()) saver.SetFootprintFile(Text(sStem + ".ftf"), bFresh ? CString() : Text(m_files.ftf));
  for (const std::string& sName : allowedLosses) saver.AllowLoss(sName);
  bool bSaved = false;
  try {
    bSaved = saver.Save();
  } catch (const CFileException& e) {
    const std::string sFinal = m_set.FinalName(e.m_strFileName);
    m_console.Fail({sFinal}, (sFinal == e.m_strFileName ? "cannot read: " : "cannot write: ") +
                                 std::string(std::strerror(e.m_lOsError)));
  } catch (const CInvalidArgException& e) {
    m_console.Fail({m_files.pcf, e.m_nLine}, e.what());
  }
  for (const SaveLoss& loss : saver.Losses().Refused()) m_console.Error({m_files.pcf}, ToText(loss));
  if (!bSaved) throw Failure{kFailed};
  for (const SaveLoss& loss : saver.Losses().Allowed()) m_console.Warning({m_files.pcf}, ToText(loss));
}

}  // namespace laminate::cli
