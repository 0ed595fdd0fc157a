#pragma once
#include <cstdio>
#include <string>
#include <vector>

#include "Console.h"
#include "base/CProgressCtrl.h"
#include "base/HostInterface.h"

namespace laminate::cli {

/// The options that every command has.
struct Settings {
  std::string log;
  bool progress = false;
  bool noProgress = false;
  std::string workFolder;
};

/// What the library sees of this program for the time of one command: where its message boxes go, its log, its progress
/// controls, its working folder.
class Host {
 public:
  /// `inputs` are the files that the command reads, `outputs` those that it writes: the log must not be one of them.
  /// Sets of files are asked by their own `RefuseSameFile` before.
  Host(Console& console, const Settings& settings, const std::vector<std::string>& inputs,
       const std::vector<std::string>& outputs);
  ~Host();
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  /// Null without `--log`.
  std::FILE* Log() const { return m_pLog; }
  /// Null where no progress is shown.
  CProgressCtrl* BoardProgress() { return m_bProgress ? &m_boardBar : nullptr; }
  CProgressCtrl* FootprintProgress() { return m_bProgress ? &m_footprintBar : nullptr; }
  /// Ends the loading: bars go, message boxes are printed, the log is closed.
  void Settle();

 private:
  class Boxes : public CHostInterface {
   public:
    explicit Boxes(Console& console) : m_console(console) {}
    int OnAfxMessageBox(const CString& sText, UINT, UINT) override {
      m_console.Box(sText.View());
      return IDOK;
    }
    int OnMessageBox(HWND, const CString& sText, const CString&, UINT) override {
      m_console.Box(sText.View());
      return IDOK;
    }

   private:
    Console& m_console;
  };
  class Bar : public CProgressCtrl {
   public:
    Bar(Console& console, const char* szLabel) : m_console(console), m_szLabel(szLabel) {}
    void OnSetPos(int nPos) override {
      m_nPos = nPos;
      m_console.ShowBar(m_szLabel, nPos);
    }

   private:
    Console& m_console;
    const char* m_szLabel;
  };

  Console& m_console;
  Boxes m_boxes;
  CHostInterfaceScope m_scope;
  Bar m_boardBar;
  Bar m_footprintBar;
  bool m_bProgress;
  std::FILE* m_pLog = nullptr;
  std::string m_sLog;
};

}  // namespace laminate::cli
