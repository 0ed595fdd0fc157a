#pragma once
#include <gtest/gtest.h>
#include <stdlib.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/BKUtility.h"
#include "base/CProgressCtrl.h"
#include "base/HostInterface.h"
#include "base/TestFolder.h"

/// A folder of its own for one test, and the library's data path in it.
class TempFolder {
 public:
  TempFolder() { BKUtility::GetInstance()->SetDataPath(CString(DataPath())); }
  ~TempFolder() { BKUtility::GetInstance()->SetDataPath(CString()); }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  std::string DataPath() const { return m_folder / "data"; }
  std::string Path(const std::string& sName) const { return m_folder / sName; }
  /// Writes a file and gives its path.
  CString Write(const std::string& sName, const std::string& sContent) const {
    return CString(m_folder.Write(sName, sContent));
  }
  /// The folder in which the pieces of a board file lie while it is loaded.
  std::string WorkingFolder(const CString& sPath) const {
    return DataPath() + "/Data/" + std::string(BKUtility::GetInstance()->GetSegmntFromFilePath(sPath, 2).View());
  }

 private:
  laminate::test::TestFolder m_folder;
};

/// What happened, in order: boxes, positions, and what a test adds.
using Events = std::vector<std::string>;

class RecordingHost : public CHostInterface {
 public:
  explicit RecordingHost(Events& events) : m_events(events), m_scope(*this) {}
  int OnAfxMessageBox(const CString& sText, UINT, UINT) override {
    m_events.push_back("box " + std::string(sText.View()));
    return IDOK;
  }
  int OnMessageBox(HWND hOwner, const CString& sText, const CString& sCaption, UINT nType) override {
    m_events.push_back("box " + std::string(sCaption.View()) + " " + std::to_string(nType) +
                       (hOwner == nullptr ? " " : " owned ") + std::string(sText.View()));
    return IDOK;
  }

 private:
  Events& m_events;
  CHostInterfaceScope m_scope;
};

class RecordingControl : public CProgressCtrl {
 public:
  RecordingControl(Events& events, std::string sName) : m_events(events), m_sName(std::move(sName)) {}
  void OnSetPos(int nPos) override { m_events.push_back(m_sName + " " + std::to_string(nPos)); }

 private:
  Events& m_events;
  std::string m_sName;
};

/// A log in memory.
class MemoryLog {
 public:
  MemoryLog() : m_fp(open_memstream(&m_sz, &m_nSize)) {}
  ~MemoryLog() {
    std::fclose(m_fp);
    free(m_sz);
  }
  MemoryLog(const MemoryLog&) = delete;
  MemoryLog& operator=(const MemoryLog&) = delete;
  std::FILE* Stream() { return m_fp; }
  std::string Text() {
    std::fflush(m_fp);
    return {m_sz, m_nSize};
  }

 private:
  char* m_sz = nullptr;
  std::size_t m_nSize = 0;
  std::FILE* m_fp;
};

/// A board file with the given sections in it.
inline std::string BoardText(const std::string& sBoardContainer, const std::string& sBehind = "") {
  return "(pcf\n(header\n(version 2.1)\n(unit MM)\n)\n(boardContainer\n" + sBoardContainer + ")\n" + sBehind + ")\n";
}

inline const char kNets[] =
    "(nets\n"
    "(net \"VCC 3V3\"\n(type POWER)\n(lockMode FIXED)\n(pen 2)\n(comp U1 (pin 4))\n(comp R1)\n)\n"
    "(net GND\n(drawRatsNest NO)\n(rebuildRatsNest YES)\n)\n"
    ")\n";
