#include "Host.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "OutputFile.h"
#include "base/BKUtility.h"

namespace laminate::cli {

Host::Host(Console& console, const Settings& settings, const std::vector<std::string>& inputs,
           const std::vector<std::string>& outputs)
    : m_console(console),
      m_boxes(console),
      m_scope(m_boxes),
      m_boardBar(console, "board"),
      m_footprintBar(console, "footprints"),
      m_bProgress(settings.progress || (console.IsTerminal() && !settings.noProgress)),
      m_sLog(settings.log) {
  if (!settings.workFolder.empty()) {
    struct stat st {};
    if (stat(settings.workFolder.c_str(), &st) == 0 && !S_ISDIR(st.st_mode)) {
      console.Fail({settings.workFolder}, "not a folder");
    }
    BKUtility::GetInstance()->SetDataPath(CString(std::string_view(settings.workFolder)));
  }
  if (m_sLog.empty()) return;
  RefuseOutputOverInputs(console, m_sLog, inputs);
  RefuseOutputOverOutputs(console, m_sLog, outputs);
  m_pLog = std::fopen(m_sLog.c_str(), "we");
  if (m_pLog == nullptr) console.Fail({m_sLog}, std::string("cannot write: ") + std::strerror(errno));
}

Host::~Host() {
  if (m_pLog != nullptr) std::fclose(m_pLog);
  m_console.Settle();
}

void Host::Settle() {
  m_console.Settle();
  if (m_pLog == nullptr) return;
  std::FILE* pLog = std::exchange(m_pLog, nullptr);
  const bool bBad = std::ferror(pLog) != 0;
  // A log on a full device is worth a word, but the load is sound without it.
  if ((std::fclose(pLog) != 0) || bBad) m_console.Warning({m_sLog}, "the log is not complete");
}

}  // namespace laminate::cli
